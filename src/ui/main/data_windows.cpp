#include "ui/main/data_windows.h"

#include "forms/exp_data_form.h"
#include "forms/shell.h"
#include "session/data_files.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmQCmnDlg.h"
#include "ui/windows/frmQXYEdit.h"
#include "ui/windows/frmTpRhoEdit.h"

namespace quom {

namespace {

// Where a dialog starts: the file in force, else the folder that was used last, else the program's.
QString start_of(const Session& session, const std::string& file, const std::string& folder) {
    if (!file.empty()) return QString::fromStdString(file);
    return QString::fromStdString(folder.empty() ? session.ProgramPath : folder);
}

QString exp_start(mdiQUOM& frame) {
    const Session& session = frame.session();
    return start_of(session, session.document.exp.file.ExpFile, session.shell.ExpFolder);
}

QString xy_start(mdiQUOM& frame, const std::string& file) {
    return start_of(frame.session(), file, frame.session().shell.XYFolder);
}

Answer ask_to_save(mdiQUOM& frame, const char* text) {
    return frame.bench().tell({.title = "WARNING",
                               .text = text,
                               .buttons = Buttons::yes_no_cancel,
                               .default_button = Answer::yes,
                               .kind = MessageKind::warning});
}

FileQuestion xy_save_question(mdiQUOM& frame, const char* title, const std::string& file) {
    return {.title = QLatin1String(title),
            .start = xy_start(frame, file),
            .filter = QStringLiteral("x-y data (*.XY)"),
            .suffix = QStringLiteral("XY")};
}

}  // namespace

void new_exp_data(mdiQUOM& frame, int) {
    Workbench& bench = frame.bench();
    auto document = document_for_new_data(bench.session, bench.messages());
    if (!document) return;
    bench.commit(std::move(*document));
    frmTpRhoEdit::open(frame);
}

void edit_exp_data(mdiQUOM& frame, int) { frmTpRhoEdit::open(frame); }

void edit_xy_data(mdiQUOM& frame, int) { frmQXYEdit::open(frame); }

std::string ask_exp_data_file(mdiQUOM& frame, bool add) {
    const auto opened = open_with_preview(
        frame, {.title = add ? QStringLiteral("Join data from a file (with preview)")
                             : QStringLiteral("Load data file (with preview)"),
                .folder = frame.session().shell.ExpFolder,
                .mask = "*.BAQ",
                .name = add ? std::string() : name_part(frame.bench().document().exp.file.ExpFile)});
    return opened ? opened->path : std::string();
}

bool load_exp_data(mdiQUOM& frame, bool add) {
    Workbench& bench = frame.bench();
    const std::string path = ask_exp_data_file(frame, add);
    if (path.empty() || !LoadExpDataFile(bench.session, path, add, bench.messages())) return false;
    bench.announce({.data = true});
    return true;
}

bool save_exp_data(mdiQUOM& frame) {
    Workbench& bench = frame.bench();
    const std::string path =
        ask_save_path(frame, {.title = QStringLiteral("Save exper. data as text file *.BAQ"),
                              .start = exp_start(frame),
                              .filter = QStringLiteral("QUOM-specific file (*.BAQ)"),
                              .suffix = QStringLiteral("BAQ"),
                              .confirm_overwrite = false});
    if (path.empty() || !SaveExpData(bench.session, path, bench.messages())) return false;
    bench.announce({.data = true});
    return true;
}

bool load_xy_data(mdiQUOM& frame) {
    Workbench& bench = frame.bench();
    const std::string path =
        ask_open_path(frame, {.title = QStringLiteral("Load points from file"),
                              .start = xy_start(frame, bench.document().xy.XYFile),
                              .filter = QStringLiteral("x-y data (*.XY *.xy);;(*.LRG) (*LRG *lrg)"),
                              .suffix = {}});
    if (path.empty() || !LoadXYFile(bench.session, path, bench.messages())) return false;
    bench.announce({.xy = true});
    return true;
}

bool save_xy_data(mdiQUOM& frame) {
    Workbench& bench = frame.bench();
    const std::string path = ask_save_path(
        frame, xy_save_question(frame, "(Curve)Points save as ... ", bench.document().xy.XYFile));
    if (path.empty() || !SaveXYFile(bench.session, path, bench.messages())) return false;
    bench.announce({.xy = true});
    return true;
}

void save_exp_data_as_xy(mdiQUOM& frame) {
    Workbench& bench = frame.bench();
    if (data_point_count(bench.document().exp) == 0) {
        bench.tell(refusal_message("no data available "));
        return;
    }
    const std::string path = ask_save_path(frame, xy_save_question(frame, "Save T-y data as ...", {}));
    if (!path.empty()) SaveTYAsXY(bench.session, path, bench.messages());
}

bool BatchSaveFrage(mdiQUOM& frame) {
    if (!frame.bench().document().exp.ExpGeaendert) return true;
    switch (ask_to_save(frame, "The data has not yet been saved after modification.\nSave now as *.BAQ?")) {
        case Answer::yes:
            return save_exp_data(frame);
        case Answer::no:
            return true;
        default:
            return false;
    }
}

bool XYSaveFrage(mdiQUOM& frame) {
    if (!frame.bench().document().xy.XYGeaendert) return true;
    switch (ask_to_save(frame, "Data not yet saved.\nSave now?")) {
        case Answer::yes:
            return save_xy_data(frame);
        case Answer::no:
            return true;
        default:
            return false;
    }
}

}  // namespace quom

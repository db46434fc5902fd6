#include "ui/main/project_actions.h"

#include "base/files.h"
#include "forms/shell.h"
#include "report/project_status.h"
#include "session/data_diagnosis.h"
#include "session/project_file.h"
#include "session/substance_marks.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_actions.h"
#include "ui/main/recent_files.h"
#include "ui/widgets/dialogs.h"
#include "ui/windows/frmQCmnDlg.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {

namespace {

// A project names its data file without a folder; the last session finds it where the session before left it.
const QString DataFolderKey = QStringLiteral("folders/exp");

// The windows of the session before close, and what a project begins with opens.
void show_loaded_project(mdiQUOM& frame) {
    Workbench& bench = frame.bench();
    const Session& s = bench.session;
    frame.unload_session_windows();
    bench.announce({.substance = true,
                    .models = true,
                    .reference = true,
                    .units = true,
                    .options = true,
                    .data = true,
                    .inputs = true});
    frame.refresh();
    if (auto* choice = frame.child<frmQStoffWahl>(); choice && choice->isVisible())
        frmQStoffWahl::open(frame);  // of the database in force now
    else
        frame.unload(frmQStoffWahl::Name);
    DataDiagnosis(s.substance(), substance_marks(s.ProgramPath, s.substance()), bench.messages());
    open_models(frame, 0);
    if (auto* models = frame.child<frmQModell>(); models && s.document.models.EOSKode == Eos::virial_manual)
        models->type_virial_constants();  // no project holds them
}

bool take_project(mdiQUOM& frame, const std::string& path, const std::optional<std::string>& comment) {
    Workbench& bench = frame.bench();
    if (!LoadProject(bench.session, path, bench.messages()).success) return false;
    if (comment) {
        Document document = bench.document();
        document.ProjectComment = *comment;
        bench.commit(std::move(document));
    }
    remember_project(bench);
    show_loaded_project(frame);
    return true;
}

// Once in a run of the program.
void tell_before_saving(Workbench& bench) {
    bool& wanted = bench.session.shell.HinweisFlags[2];
    if (!wanted) return;
    wanted = false;
    bench.tell({.title = "one-time general note",
                .text = "Tip:\n"
                        "Before saving the project check the settings \n"
                        "under \"Models\" and \"Options\"."});
}

}  // namespace

bool load_project(mdiQUOM& frame, const std::string& path) { return take_project(frame, path, {}); }

void load_last_session(mdiQUOM& frame, int) {
    Workbench& bench = frame.bench();
    const QString folder = bench.memory.value(DataFolderKey).toString();
    if (!folder.isEmpty()) bench.session.shell.ExpFolder = folder.toStdString();
    if (LoadLastSession(bench.session, bench.messages()).success) show_loaded_project(frame);
}

void ask_for_project(mdiQUOM& frame, int) {
    const ShellState& shell = frame.session().shell;
    const auto picked = open_with_preview(frame, {.title = QStringLiteral("Load a project (*.QC6)"),
                                                  .folder = shell.ProjectFolder,
                                                  .mask = "*.QC6",
                                                  .name = shell.ProjectTitle});
    if (picked) take_project(frame, picked->path, picked->comment);
}

void save_project(mdiQUOM& frame, int) {
    Workbench& bench = frame.bench();
    tell_before_saving(bench);
    const ShellState& shell = bench.session.shell;
    const auto path = frame.dialogs().save_file(
        &frame, {.title = QStringLiteral("Save Present Project as ..."),
                 .start = QString::fromStdString(join_path(shell.ProjectFolder, shell.ProjectTitle)),
                 .filter = QStringLiteral("QUOM-project file (*.QC6)"),
                 .suffix = QStringLiteral("QC6")});
    if (!path) return;
    const auto ask_comment = [&frame](const CommentQuestion& question) -> std::optional<std::string> {
        const auto text = frame.dialogs().ask_text(&frame, QString::fromStdString(question.title),
                                                   QString::fromStdString(question.prompt),
                                                   QString::fromStdString(question.present));
        if (!text) return std::nullopt;
        return text->toStdString();
    };
    if (!SaveProjectAs(bench.session, path->toStdString(), ask_comment, bench.messages()).success) return;
    remember_project(bench);
    frame.refresh();
}

void show_project_status(mdiQUOM& frame, int) {
    Workbench& bench = frame.bench();
    auto* window = frmQTextEdit::open(frame, QLatin1String(project_status_caption), {},
                                      project_status_text(bench.session));
    QObject::connect(&bench, &Workbench::changed, window,
                     [window, &bench] { window->show_texts({}, project_status_text(bench.session)); });
}

void leave_session(mdiQUOM& frame) {
    Workbench& bench = frame.bench();
    bench.memory.set(DataFolderKey, QString::fromStdString(bench.session.shell.ExpFolder));
    SaveLastSession(bench.session, bench.messages());
}

}  // namespace quom

#include "ui/main/menu_actions.h"

#include <QFile>
#include <QProcess>

#include "forms/shell.h"
#include "forms/substance_form.h"
#include "report/eos_report.h"
#include "session/start_up.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/quick_start.h"
#include "ui/widgets/dialogs.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {

namespace {

void refuse(mdiQUOM& frame, std::string text) {
    frame.bench().tell(
        {.title = "Execution not possible", .text = std::move(text), .kind = MessageKind::warning});
}

}  // namespace

void open_database(mdiQUOM& frame, int kind) {
    Session& s = frame.session();
    const std::string present = database_path(s, kind);
    const QString extension = QStringLiteral("*.Q0%1").arg(kind);
    const auto picked = frame.dialogs().open_file(
        &frame, {.title = QString::fromStdString(database_dialog_title(s, kind)),
                 .start = QString::fromStdString(present.empty() ? s.ProgramPath : present),
                 .filter = QStringLiteral("Database (%1)").arg(extension),
                 .suffix = {}});
    if (picked && use_database(frame, kind, picked->toStdString())) select_substance(frame, 0);
}

void show_working_directory(mdiQUOM& frame, int) {
    frame.bench().tell({.title = "present working directory of QUOM", .text = frame.session().ProgramPath});
}

void leave_program(mdiQUOM& frame, int) { frame.close(); }

void select_substance(mdiQUOM& frame, int) { frmQStoffWahl::open(frame); }

void take_substance(mdiQUOM& frame, int index) {
    if (index < 1) return;
    frame.unload_session_windows();
    Workbench& bench = frame.bench();
    confirm_substance(bench.session, index, bench.messages());
    bench.announce({.substance = true});
    frame.refresh();
    if (!fulfilled(bench.session, Needs::substance)) {
        bench.tell(substance_not_readable());
        return;
    }
    if (auto* choice = frame.child<frmQStoffWahl>()) frame.hide_child(choice);
    open_models(frame, 0);
}

void open_models(mdiQUOM& frame, int) { frmQModell::open(frame); }

void show_eos_parameters(mdiQUOM& frame, int) {
    Workbench& bench = frame.bench();
    const EosReport report = eos_report(bench.fluid());
    auto* window = frmQTextEdit::open(frame, QStringLiteral(" Parameters of EOS"), report.head, report.text);
    QObject::connect(&bench, &Workbench::changed, window, [window, &bench](const Changes& changes) {
        if (!changes.fluid()) return;
        const EosReport now = eos_report(bench.fluid());
        window->show_texts(now.head, now.text);
    });
}

void start_unit_converter(mdiQUOM& frame, int) {
    const Session& s = frame.session();
    const char* name = s.document.options.Englisch ? "Konv3X_E.EXE" : "Konv3X.EXE";
    const std::string path = find_external_program(s.ProgramPath, name);
    if (!path.empty() &&
        QProcess::startDetached(QString::fromStdString(path), {}, QString::fromStdString(s.ProgramPath)))
        return;
    refuse(frame, s.document.options.Englisch ? "File Konv3X_E.EXE not found in the QUOM directory"
                                              : "file Konv3X.EXE not found in the directory QUOM");
}

void undo_step(mdiQUOM& frame, int) { frame.bench().undo(); }
void redo_step(mdiQUOM& frame, int) { frame.bench().redo(); }

void show_help_topic(mdiQUOM& frame, int topic) { frame.show_help(topic); }

void show_help_note(mdiQUOM& frame, int) {
    frame.bench().tell({.title = "Note on german HTML Help",
                        .text =
                            "The help pages are part of the program and open in a window of their own.\n"
                            "\n"
                            "If no page comes up: the window may lie behind this one, or the program\n"
                            "was built without its pages. F1 opens the page of the window in front, and the\n"
                            "index of all pages while there is none."});
}

void show_version(mdiQUOM& frame, int) {
    frame.bench().tell(
        {.title = "QUOM-6",
         .text = "QUOM-6   Thermodynamic Calculations of States and Processes for Pure Substances\n"
                 "Version " QUOM_VERSION "\n\n"
                 "Program folder: " +
                 frame.session().ProgramPath});
}

}  // namespace quom

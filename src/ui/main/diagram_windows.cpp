#include "ui/main/diagram_windows.h"

#include <QFileInfo>

#include "forms/diagram_form.h"
#include "ui/main/calculation_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/workbench.h"
#include "ui/widgets/dialogs.h"
#include "ui/windows/data_controls.h"
#include "ui/windows/frmCompare.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"
#include "ui/windows/frmTpVSInputBox.h"

namespace quom {

namespace {

void keep_folder(Session& session, const std::string& path) {
    session.diagram.Folder = QFileInfo(QString::fromStdString(path)).absolutePath().toStdString();
}

void drop_curve_in_hand(mdiQUOM& frame) {
    if (auto* box = frame.child<frmTpVSInputBox>()) box->drop_curve();
}

FileQuestion file_question(const Session& session, const char* title) {
    const std::string& folder = session.diagram.Folder;
    return {.title = QLatin1String(title),
            .start = QString::fromStdString(folder.empty() ? session.ProgramPath : folder),
            .filter = QStringLiteral("Diagram file (*.oc2)"),
            .suffix = QStringLiteral("oc2")};
}

void open_sheet(mdiQUOM& frame, Kind kind) {
    Workbench& bench = frame.bench();
    drop_curve_in_hand(frame);
    const DiagramOpening opening = choose_diagram(bench.session, kind, bench.messages());
    bench.announce(opening.changes);
    if (!bench.session.diagram.sheet) return close_diagram_windows(frame);
    if (!opening.open) return;
    frmQGraph2D::open(frame);
    show_parameter_box(frame, opening.parameter_box);
}

}  // namespace

void open_diagram(mdiQUOM& frame, int kind) {
    const Kind wanted = kind_of(kind);
    if (!needs_reference_point(frame.session(), wanted)) return open_sheet(frame, wanted);
    CalculationWindows::of(frame).select_for_diagram([&frame, wanted] { open_sheet(frame, wanted); });
}

void open_control_graph(mdiQUOM& frame, ControlGraph graph) {
    Workbench& bench = frame.bench();
    drop_curve_in_hand(frame);
    if (!show_control_graph(bench.session, graph, bench.messages())) return;
    show_parameter_box(frame, false);
    frmQGraph2D::open(frame);
}

void show_parameter_box(mdiQUOM& frame, bool wanted) {
    if (wanted)
        frmTpVSInputBox::open(frame);
    else
        frame.unload(frmTpVSInputBox::Name);
}

void close_diagram_windows(mdiQUOM& frame) {
    frame.unload(frmCompare::Name);
    frame.unload(frmTpVSInputBox::Name);
    frame.unload(frmQGraph2D_Gestaltung::Name);
    frame.unload(frmQGraph2D::Name);
}

void draw_next_curve(mdiQUOM& frame) {
    if (auto* box = frame.child<frmTpVSInputBox>()) box->settle();
    draw_curve(frame.session(), frame.bench().messages());
    auto* window = frame.child<frmQGraph2D>();
    if (!window) return;
    window->refresh();
    if (!window->isVisible()) frame.show_child(window);  // closed by its title bar in the meantime
}

bool save_diagram(mdiQUOM& frame) {
    Session& session = frame.session();
    Messages& messages = frame.bench().messages();
    if (!may_save_sheet(session, messages)) return false;
    const std::string path = ask_save_path(frame, file_question(session, "Save this 2D-diagram design"));
    if (path.empty() || !save_sheet(session, path, messages)) return false;
    keep_folder(session, path);
    return true;
}

bool load_diagram(mdiQUOM& frame) {
    Session& session = frame.session();
    Messages& messages = frame.bench().messages();
    tell_before_loading(session, messages);
    const std::string path = ask_open_path(frame, file_question(session, "Load a saved pattern (*.oc3)"));
    drop_curve_in_hand(frame);
    if (path.empty() || !load_sheet(session, path, messages)) return false;
    keep_folder(session, path);
    return true;
}

}  // namespace quom

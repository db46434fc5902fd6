#include "ui/main/calculation_windows.h"

#include <QApplication>
#include <QEvent>
#include <utility>

#include "ui/main/mdiQUOM.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmKessel.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"

namespace quom {

namespace {

ResultWindow make_result(Workbench& bench) {
    auto* window = new frmQCalcOut(bench);
    if (window->loaded()) return {window, [window] { window->refresh(); }};
    delete window;
    return {};
}

ResultWindow make_tank(Workbench& bench) {
    auto* window = new frmKessel(bench);
    return {window, [window] { window->refresh(); }};
}

}  // namespace

CalculationWindows::CalculationWindows(mdiQUOM& frame)
    : QObject(&frame), windows{make_result, make_tank, {}}, frame_(frame) {}

CalculationWindows& CalculationWindows::of(mdiQUOM& frame) {
    auto* windows = frame.findChild<CalculationWindows*>(QString(), Qt::FindDirectChildrenOnly);
    return windows ? *windows : *new CalculationWindows(frame);
}

void CalculationWindows::start(Mode mode) {
    frame_.unload_calculation_windows();
    Workbench& bench = frame_.bench();
    const bool without_data =
        !is_direct(bench.document(), mode) && !fulfilled(bench.session, Needs::data_points);
    if (without_data) {
        if (!frame_.told_of_missing_data()) opening_calculation_menu(bench.session, bench.messages());
        return;
    }
    const Dispatch way = CalcDispatch(bench.document(), mode, bench.messages());
    if (way.refused) return;
    if (way.process_input) {
        if (windows.process_input) windows.process_input();
    } else if (way.selection) {
        frmCalcIn* selection = open_selection(way.calc, false);
        connect(selection, &frmCalcIn::continued, this, [this, calc = way.calc](const PartialContinue& next) {
            CalculationInput chosen = calc;
            chosen.setup = next.setup;
            next.parameter_input ? open_input(next.ParInputKind, chosen) : show_results_of(chosen);
        });
    } else if (way.parameter_input) {
        open_input(way.ParInputKind, way.calc);
    } else {
        show_results_of(way.calc);
    }
}

void CalculationWindows::select_for_diagram(std::function<void()> go_on) {
    frame_.unload_calculation_windows();
    connect(open_selection(frame_.bench().document().calc, true), &frmCalcIn::continued, this,
            [this, go_on = std::move(go_on)](const PartialContinue& next) {
                Document document = frame_.bench().document();
                document.calc.setup = next.setup;
                frame_.bench().commit(std::move(document));
                go_on();
            });
}

frmCalcIn* CalculationWindows::open_selection(const CalculationInput& calc, bool diagram_pending) {
    auto* selection = new frmCalcIn(frame_.bench(), calc.CalcMode, calc.setup, diagram_pending);
    connect(selection, &frmCalcIn::reference_input, this,
            [this, selection](bool wanted) { open_reference_input(selection, wanted); });
    const auto close = [this, selection] {
        open_reference_input(selection, false);
        frame_.unload(frmCalcIn::Name);
    };
    connect(selection, &InputWindow::left, this, close);
    connect(selection, &frmCalcIn::continued, this, close);
    frame_.open_child(selection);
    selection->focus_first();
    return selection;
}

// Opens the input of the reference point, or closes it as if it had never been open.
void CalculationWindows::open_reference_input(frmCalcIn* selection, bool wanted) {
    auto* input = frame_.child<frmParinput>();
    if (!wanted) {
        if (input) input->disconnect(selection);
        return frame_.unload(frmParinput::Name);
    }
    if (input) return frame_.show_child(input);
    CalculationInput calc = frame_.bench().document().calc;
    calc.CalcMode = selection->selection().mode;
    calc.setup = selection->selection().setup;
    input = new frmParinput(frame_.bench(), input_reference_point, calc);
    connect(input, &frmParinput::taken, selection, [this, input, selection](const BensonReference& point) {
        input->disconnect(selection);
        frame_.unload(frmParinput::Name);
        selection->reference_taken(point);
    });
    connect(input, &InputWindow::left, selection, [this, selection] {
        selection->reference_left();
        frame_.unload(frmParinput::Name);
    });
    frame_.open_child(input, selection);
    input->focus_first();
    // An option that was reached by an arrow key takes the focus after its click.
    QMetaObject::invokeMethod(
        input,
        [this, input] {
            if (frame_.child<frmParinput>() != input || input->isAncestorOf(QApplication::focusWidget()))
                return;
            frame_.show_child(input);
            input->focus_first();
        },
        Qt::QueuedConnection);
}

void CalculationWindows::open_input(int kind, const CalculationInput& calc) {
    auto* input = new frmParinput(frame_.bench(), kind, calc);
    connect(input, &frmParinput::calculate, this, [this, input] {
        show_results();
        // The input stays in front, so that values can be typed one after the other.
        frame_.show_child(input);
        input->focus_first();
    });
    Workbench& bench = frame_.bench();
    connect(input, &frmParinput::input_changed, this, [&bench, input] {
        bench.tell_typed(input->has_uncalculated_input() ? QStringLiteral("a value of the input")
                                                         : QString());
    });
    connect(input, &InputWindow::left, this, [this, &bench] {
        bench.tell_typed({});
        frame_.unload_calculation_windows();
    });
    frame_.open_child(input);
    input->focus_first();
}

// Results without an input window: those of data points.
void CalculationWindows::show_results_of(const CalculationInput& calc) {
    Document document = frame_.bench().document();
    document.calc.CalcMode = calc.CalcMode;
    document.calc.setup = calc.setup;
    frame_.bench().commit(std::move(document));
    show_results();
}

bool CalculationWindows::is_open(const Shown& shown) const {
    return shown.widget && frame_.child(qPrintable(shown.widget->objectName())) == shown.widget;
}

void CalculationWindows::show_results() {
    if (!show_result(result_, windows.result, frame_.child<frmParinput>())) return;
    const Mode mode = frame_.bench().document().calc.CalcMode;
    if (mode_info(mode).family == ModeFamily::tank) show_result(tank_, windows.tank, result_.widget);
}

// Refreshes the window, or opens it; false when it has nothing to show.
bool CalculationWindows::show_result(Shown& shown, const std::function<ResultWindow(Workbench&)>& make,
                                     QWidget* beside) {
    if (is_open(shown)) {
        shown.refresh();
        return true;
    }
    if (!make) return false;
    const ResultWindow window = make(frame_.bench());
    if (!window.widget) return false;
    shown = {window.widget, window.refresh};
    if (&shown == &result_) window.widget->installEventFilter(this);
    frame_.open_child(window.widget, beside);
    return true;
}

// Closing the result ends the calculation.
bool CalculationWindows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && watched == result_.widget) frame_.unload_calculation_windows();
    return QObject::eventFilter(watched, event);
}

void start_calculation(mdiQUOM& frame, int CalcMode) {
    CalculationWindows::of(frame).start(mode_of(CalcMode));
}

void start_tank(mdiQUOM& frame, int) {
    const bool global = frame.bench().document().models.Konzept;
    CalculationWindows::of(frame).start(global ? Mode::tank_global : Mode::tank_partial);
}

}  // namespace quom

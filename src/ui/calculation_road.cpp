#include "ui/calculation_road.h"

#include <QEvent>
#include <algorithm>
#include <utility>

#include "ui/frmCalcIn.h"
#include "ui/frmKessel.h"
#include "ui/frmParinput.h"
#include "ui/frmQCalcOut.h"
#include "ui/mdiQUOM.h"

namespace quom {

namespace {

ResultWindow make_result(Session& s) {
    auto* window = new frmQCalcOut(s);
    if (window->loaded()) return {window, window->sizeHint(), [window] { window->refresh(); }};
    delete window;
    return {};
}

ResultWindow make_tank(Session& s) {
    auto* window = new frmKessel(s);
    return {window, window->sizeHint(), [window] { window->refresh(); }};
}

}  // namespace

CalculationRoad::CalculationRoad(mdiQUOM& frame)
    : QObject(&frame), windows{make_result, make_tank, {}}, frame_(frame) {}

CalculationRoad& CalculationRoad::of(mdiQUOM& frame) {
    auto* road = frame.findChild<CalculationRoad*>(QString(), Qt::FindDirectChildrenOnly);
    return road ? *road : *new CalculationRoad(frame);
}

void CalculationRoad::start(int CalcMode) {
    frame_.unload_calculation_windows();
    Session& s = frame_.session();
    const InputRecord before = input_record(s);
    s.calc.CalcMode = CalcMode;
    const Dispatch way = CalcDispatch(s);
    if (way.refused) return;
    if (way.process_input) {
        if (windows.process_input) windows.process_input();
    } else if (way.selection) {
        frmCalcIn* selection = open_selection(false);
        connect(selection, &InputWindow::left, this, [this, before] { put_back(frame_.session(), before); });
        connect(selection, &frmCalcIn::continued, this, [this, before](const PartialContinue& next) {
            next.parameter_input ? open_input(before) : show_results();
        });
    } else if (way.parameter_input) {
        open_input(before);
    } else {
        show_results();
    }
}

void CalculationRoad::select_for_diagram(std::function<void()> go_on) {
    frame_.unload_calculation_windows();
    connect(open_selection(true), &frmCalcIn::continued, this,
            [go_on = std::move(go_on)](const PartialContinue&) { go_on(); });
}

frmCalcIn* CalculationRoad::open_selection(bool diagram_pending) {
    auto* selection = new frmCalcIn(frame_.session(), diagram_pending);
    connect(selection, &frmCalcIn::reference_input, this,
            [this, selection](bool wanted) { open_reference_input(selection, wanted); });
    const auto close = [this, selection] {
        open_reference_input(selection, false);
        frame_.unload(frmCalcIn::Name);
    };
    connect(selection, &InputWindow::left, this, close);
    connect(selection, &frmCalcIn::continued, this, close);
    frame_.open_child(selection, selection->sizeHint(), Sizing::fixed);
    selection->focus_first();
    return selection;
}

// Opens the input of the reference point, or closes it as if it had never been open.
void CalculationRoad::open_reference_input(frmCalcIn* selection, bool wanted) {
    auto* input = frame_.child<frmParinput>();
    if (!wanted) {
        if (input) input->disconnect(selection);
        return frame_.unload(frmParinput::Name);
    }
    if (input) return frame_.show_child(input);
    input = new frmParinput(frame_.session(), input_reference_point);
    connect(input, &frmParinput::taken, selection, [this, input, selection] {
        input->disconnect(selection);
        frame_.unload(frmParinput::Name);
        selection->reference_taken();
    });
    connect(input, &InputWindow::left, selection, [this, selection] {
        selection->reference_left();
        frame_.unload(frmParinput::Name);
    });
    frame_.open_child(input, input->sizeHint(), Sizing::fixed, selection);
    input->focus_first();
}

void CalculationRoad::open_input(const InputRecord& before) {
    auto* input = new frmParinput(frame_.session(), frame_.session().calc.ParInputKind);
    connect(input, &frmParinput::calculate, this, [this, input] {
        show_results();
        // The input stays in front, so that values can be typed one after the other.
        frame_.show_child(input);
        input->focus_first();
    });
    connect(input, &InputWindow::left, this, [this, before] {
        if (!is_open(result_)) put_back(frame_.session(), before);
        frame_.unload_calculation_windows();
    });
    frame_.open_child(input, input->sizeHint(), Sizing::fixed);
    input->focus_first();
}

bool CalculationRoad::is_open(const Shown& shown) const {
    return shown.widget && frame_.child(qPrintable(shown.widget->objectName())) == shown.widget;
}

void CalculationRoad::show_results() {
    if (!show_result(result_, windows.result, frame_.child<frmParinput>())) return;
    const int mode = frame_.session().calc.CalcMode;
    if (mode == 9 || mode == 10) show_result(tank_, windows.tank, result_.widget);
}

// Refreshes the window, or opens it; false when it has nothing to show.
bool CalculationRoad::show_result(Shown& shown, const std::function<ResultWindow(Session&)>& make,
                                  QWidget* beside) {
    if (is_open(shown)) {
        shown.refresh();
        return true;
    }
    if (!make) return false;
    const ResultWindow window = make(frame_.session());
    if (!window.widget) return false;
    shown = {window.widget, window.refresh};
    const bool tank = &shown == &tank_;
    if (!tank) window.widget->installEventFilter(this);
    frame_.open_child(window.widget, window.first_size, Sizing::free, beside);
    // Over the result, where it has to be, the tank covers no column of the list.
    if (QWidget* frame = window.widget->parentWidget(); tank && beside)
        frame->move(std::max(frame->x(), frame->parentWidget()->width() - frame->width()), frame->y());
    return true;
}

// Closing the result ends the calculation.
bool CalculationRoad::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && watched == result_.widget) frame_.unload_calculation_windows();
    return QObject::eventFilter(watched, event);
}

void start_calculation(mdiQUOM& frame, int CalcMode) { CalculationRoad::of(frame).start(CalcMode); }

void start_tank(mdiQUOM& frame, int) { start_calculation(frame, frame.session().models.Konzept ? 9 : 10); }

}  // namespace quom

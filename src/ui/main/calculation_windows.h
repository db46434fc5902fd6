// The windows of a calculation: from an entry of the menu over the questions and inputs to
// the results.
#pragma once
#include <QObject>
#include <QPointer>
#include <functional>

#include "forms/calculation_form.h"
#include "forms/partial_form.h"
#include "session/session.h"

class QWidget;

namespace quom {

class mdiQUOM;
class Workbench;
class frmCalcIn;

// A window of results, made with its first calculation. Without a widget there is nothing to show, and the
// user was told why. refresh calculates anew, or shows what was calculated.
struct ResultWindow {
    QWidget* widget = nullptr;
    std::function<void()> refresh;
};

// What makes the windows of results; without one of them nothing opens there.
struct WindowMakers {
    std::function<ResultWindow(Workbench&)> result;  // frmQCalcOut
    std::function<ResultWindow(Workbench&)> tank;    // frmKessel, beside it
    std::function<void()> process_input;             // start of process lines
};

class CalculationWindows : public QObject {
    Q_OBJECT
 public:
    explicit CalculationWindows(mdiQUOM& frame);
    // That of the main window.
    static CalculationWindows& of(mdiQUOM& frame);

    WindowMakers windows;

    // An entry of mnuCalc. The windows of the calculation before are closed; the inputs of the mode open, and
    // after them its results.
    void start(Mode mode);
    // The choice between GLOBAL and PARTIAL on the way to a diagram; go_on runs after "Continue >".
    void select_for_diagram(std::function<void()> go_on);

 private:
    frmCalcIn* open_selection(const CalculationInput& calc, bool diagram_pending);
    void open_input(int kind, const CalculationInput& calc);
    void show_results_of(const CalculationInput& calc);
    void open_reference_input(frmCalcIn* selection, bool wanted);
    struct Shown {
        QPointer<QWidget> widget;
        std::function<void()> refresh;
    };
    bool is_open(const Shown& shown) const;
    void show_results();
    bool show_result(Shown& shown, const std::function<ResultWindow(Workbench&)>& make, QWidget* beside);
    bool eventFilter(QObject* watched, QEvent* event) override;

    mdiQUOM& frame_;
    Shown result_, tank_;
};

// Actions of the menu and the toolbar.
void start_calculation(mdiQUOM& frame, int CalcMode);
void start_tank(mdiQUOM& frame, int);  // GLOBAL or PARTIAL by the concept of the models

}  // namespace quom

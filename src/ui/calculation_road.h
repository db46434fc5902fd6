// The road of a calculation through its windows: from an entry of the menu over the questions and inputs to
// the results.
#pragma once
#include <QObject>
#include <QPointer>
#include <QSize>
#include <functional>

#include "calc/calc_input.h"
#include "session/session.h"

class QWidget;

namespace quom {

class mdiQUOM;
class frmCalcIn;

// A window of results, made with its first calculation. Without a widget there is nothing to show, and the
// user was told why. refresh runs CalcBatch anew, or shows what it left.
struct ResultWindow {
    QWidget* widget = nullptr;
    QSize first_size;
    std::function<void()> refresh;
};

// The windows at the end of the road; without one of them the road ends before it.
struct RoadWindows {
    std::function<ResultWindow(Session&)> result;  // frmQCalcOut
    std::function<ResultWindow(Session&)> tank;    // frmKessel, beside it
    std::function<void()> process_input;           // start of process lines
};

class CalculationRoad : public QObject {
    Q_OBJECT
 public:
    explicit CalculationRoad(mdiQUOM& frame);
    // The road of the main window.
    static CalculationRoad& of(mdiQUOM& frame);

    RoadWindows windows;

    // An entry of mnuCalc. The windows of the calculation before are closed; the inputs of the mode open, and
    // after them its results.
    void start(int CalcMode);
    // The choice between GLOBAL and PARTIAL on the way to a diagram; go_on runs after "Continue >".
    void select_for_diagram(std::function<void()> go_on);

 private:
    frmCalcIn* open_selection(bool diagram_pending);
    void open_input(const InputRecord& before);
    void open_reference_input(frmCalcIn* selection, bool wanted);
    struct Shown {
        QPointer<QWidget> widget;
        std::function<void()> refresh;
    };
    bool is_open(const Shown& shown) const;
    void show_results();
    bool show_result(Shown& shown, const std::function<ResultWindow(Session&)>& make, QWidget* beside);
    bool eventFilter(QObject* watched, QEvent* event) override;

    mdiQUOM& frame_;
    Shown result_, tank_;
};

// Actions of the menu and the toolbar.
void start_calculation(mdiQUOM& frame, int CalcMode);
void start_tank(mdiQUOM& frame, int);  // GLOBAL or PARTIAL by the concept of the models

}  // namespace quom

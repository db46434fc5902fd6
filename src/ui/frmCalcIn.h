// The choice between GLOBAL and PARTIAL for one calculation, and the reference point of Benson's method.
#pragma once
#include <array>

#include "calc/calc_input.h"
#include "calc/calc_partial.h"
#include "ui/input_window.h"

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quom {

class ResultList;

class frmCalcIn : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmCalcIn";
    explicit frmCalcIn(Session& session, bool diagram_pending = false, QWidget* parent = nullptr);
    void focus_first();

    QGroupBox *fraSituation = nullptr, *fraPartial = nullptr, *fraRef = nullptr;
    QLabel *lblAssumption = nullptr, *lblMethod = nullptr, *lblRange = nullptr, *lblStatus = nullptr,
           *lblRefHead = nullptr;
    ResultList* txtRef = nullptr;
    std::array<QRadioButton*, 2> opt_glob{};
    std::array<QRadioButton*, 2> optPartialBenson{};
    std::array<QRadioButton*, 3> Ref_opt{};
    QPushButton *OK = nullptr, *cancel = nullptr;

 signals:
    void continued(const PartialContinue& next);  // "Continue >"
    void reference_input(bool wanted);            // frmParinput of kind 4 is to open, or to close

 public slots:
    void reference_taken();  // frmParinput took the point
    void reference_left();   // ... or was left: the point of before is in force again

 private:
    QWidget* make_situation();
    QWidget* make_density();
    QWidget* make_reference();
    void show_view();
    void choose_concept(bool global);
    void choose_reference(int option);

    Session& session_;
    const InputRecord before_;
    PartialSelection selection_;
    struct {
        PartialSelection selection;
        BensonReference point;
    } before_input_;
    bool input_open_ = false;
};

}  // namespace quom

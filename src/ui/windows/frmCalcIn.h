// The choice between GLOBAL and PARTIAL for one calculation, and the reference point of Benson's method.
#pragma once
#include <array>

#include "forms/partial_form.h"
#include "ui/windows/input_window.h"

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quom {

class ResultList;
class Workbench;

class frmCalcIn : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmCalcIn";
    // Opens over the setup of the calculation to come.
    frmCalcIn(Workbench& bench, Mode mode, const CalcSetup& setup, bool diagram_pending = false,
              QWidget* parent = nullptr);
    const PartialSelection& selection() const { return selection_; }
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
    void reference_taken(const quom::BensonReference& point);  // frmParinput took the point
    void reference_left();  // ... or was left: the selection is that of before

 private:
    QWidget* make_situation();
    QWidget* make_density();
    QWidget* make_reference();
    void show_view();
    void follow();  // the fluid changed
    void choose_concept(bool global);
    void choose_reference(int option);

    Workbench& bench_;
    PartialSelection selection_;
    PartialSelection proposed_;  // the selection without a point that is being typed
    bool input_open_ = false;
};

}  // namespace quom

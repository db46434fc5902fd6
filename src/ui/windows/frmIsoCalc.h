// The Iso Calculator: which p at a given T, or which T at a given p, gives a function its value.
#pragma once
#include <QWidget>

#include "forms/freshness.h"
#include "forms/iso_form.h"

class QAbstractButton;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quom {

class Workbench;
class NumberBox;
class ResultList;
class StaleLine;
class ValueBox;

class frmIsoCalc : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmIsoCalc";
    frmIsoCalc(Workbench& bench, IsoCalculator calculator, QWidget* parent = nullptr);

    QRadioButton* optIsoTp[2];     // T given, p given
    QRadioButton* OptIsoFu[8];     // v, h, s, g, u, a, e of H, e of U
    QRadioButton* optIsoPhase[2];  // L, V
    QLabel *lblTpVorgabe, *lblFuConst, *lblTpCalc;
    NumberBox *txtTpVorgabe, *txtFuConst;
    ValueBox* txtTpCalc;
    ResultList* Liste;  // the state found
    QPushButton *cmdCalc, *cmdReset, *cmdShowManuInput, *cmdEsc;
    QAbstractButton* cmdIsoHelp;
    StaleLine* stale;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void build_layout();
    void connect_controls();
    void read_options();
    void choose();  // another function, phase or given quantity
    void calculate();
    void reset();
    void show_state(const Changes& changes);
    void show_calculator();
    void show_found_state();
    void document_changed();
    ShownResult state_in_force() const;

    Workbench& bench_;
    IsoCalculator calculator_;
    ShownResult shown_;
    bool own_change_ = false;  // the document changes by a state found here
    QLabel* lblFuUnit;
};

}  // namespace quom

// What the cubic equation of state says about the state of the last calculation: the isotherm, and its roots
// with their meaning.
#pragma once
#include <QWidget>

#include "calc/eos_diagnosis.h"

class QLabel;
class QPushButton;

namespace quom {

class Workbench;
class IsothermView;
class StaleLine;
class ValueBox;

class frmCEOSDiagnose : public QWidget {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmCEOSDiagnose";
    explicit frmCEOSDiagnose(Workbench& bench, QWidget* parent = nullptr);
    // Shows the state of a calculation.
    void show_outcome(const Outcome& outcome);
    // Greys what is shown and says why.
    void show_stale(const QString& reason);

    QLabel* lblEOS;
    ValueBox* lblState;
    IsothermView* picIsotherm;
    StaleLine* stale;
    QLabel* lblRoot[3];    // "v(1) ="
    ValueBox* txtRoot[3];  // value with unit and meaning
    QPushButton* cmdClose;

 private:
    class RootKey;
    void build_layout();
    Workbench& bench_;
    RootKey* key_[3];
};

}  // namespace quom

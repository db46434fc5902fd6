// Reference state of h and s, environment of the exergies.
#pragma once
#include <QDialog>
#include <array>

#include "calc/reference_input.h"

class QPushButton;
class QRadioButton;

namespace quom {

class NumberBox;
class ValueBox;

// Accepted: the reference state is in the record. Rejected: it is as it was.
class frmReferenz : public QDialog {
    Q_OBJECT
 public:
    explicit frmReferenz(Session& session, QWidget* parent = nullptr);

    std::array<QRadioButton*, 3> opt_HNull{};
    NumberBox *TRef0 = nullptr, *pRef0 = nullptr, *hOffset = nullptr, *sOffset = nullptr;
    NumberBox *TEnv = nullptr, *pEnv = nullptr;
    ValueBox *h0 = nullptr, *s0 = nullptr;
    QPushButton *OK = nullptr, *cancel = nullptr;

 private:
    QWidget* make_options();
    QWidget* make_state();
    QWidget* make_environment();
    void show_option(int option);
    void choose(int option);
    void take();

    Session& session_;
    ReferenceBoxes boxes_;
};

}  // namespace quom

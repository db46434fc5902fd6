// Reference state of h and s, environment of the exergies.
#pragma once
#include <QDialog>
#include <array>
#include <string_view>

#include "forms/reference_form.h"
#include "quantities/quantity_table.h"

class QGridLayout;
class QPushButton;
class QRadioButton;

namespace quom {

class NumberBox;
class ValueBox;
class Workbench;

// Accepted: the reference state is in the document. Rejected: it is as it was.
class frmReferenz : public QDialog {
    Q_OBJECT
 public:
    explicit frmReferenz(Workbench& bench, QWidget* parent = nullptr);

    std::array<QRadioButton*, 3> opt_HNull{};
    NumberBox *TRef0 = nullptr, *pRef0 = nullptr, *hOffset = nullptr, *sOffset = nullptr;
    NumberBox *TEnv = nullptr, *pEnv = nullptr;
    ValueBox *h0 = nullptr, *s0 = nullptr;
    QPushButton *OK = nullptr, *cancel = nullptr;

 private:
    QWidget* make_options();
    QWidget* make_state();
    QWidget* make_environment();
    void add_input(QGridLayout* grid, int row, std::string_view label, Quantity quantity, NumberBox* box,
                   std::string_view note = {});
    void show_document();
    void show_option(int option);
    void choose(int option);
    void take();

    Workbench& bench_;
    ReferenceBoxes boxes_;
};

}  // namespace quom

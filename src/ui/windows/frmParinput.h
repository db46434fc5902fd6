// The one input of values: reference point, tank, direct calculation.
#pragma once
#include <array>
#include <cstddef>

#include "forms/calculation_form.h"
#include "ui/windows/input_window.h"

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace quom {

class NumberBox;
class Workbench;

class frmParinput : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmParinput";
    // kind: 4, 33 or 100 + mode. calc: mode and setup of the calculation to come.
    frmParinput(Workbench& bench, int kind, const CalculationInput& calc, QWidget* parent = nullptr);
    void focus_first();

    QGroupBox* fraPar = nullptr;
    std::array<QLabel*, 4> Bz{};
    std::array<NumberBox*, 4> par{};
    std::array<QRadioButton*, 2> optm_n{};
    std::array<QRadioButton*, 2> optRhoV{};
    QPushButton* cmdParameter_OK = nullptr;
    QPushButton* cmdClose = nullptr;

 signals:
    void taken(const quom::BensonReference& point);  // the reference point as typed
    void calculate();                                // the values of a calculation are in the document

 private:
    QWidget* make_boxes();
    QWidget* make_options();
    void show_form();
    void show_value(std::size_t box, double value);
    BoxValues read_boxes() const;
    void choose(const InputOptions& options);
    void take();

    // The document with the calculation to come.
    Document with_calculation() const;

    Workbench& bench_;
    const int kind_;
    const CalculationInput calc_;
    InputOptions options_;
    InputForm form_;
};

}  // namespace quom

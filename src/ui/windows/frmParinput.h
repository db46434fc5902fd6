// The one input of values: reference point, tank, direct calculation.
#pragma once
#include <QStringList>
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
class UnitRow;
class Workbench;

class frmParinput : public InputWindow {
    Q_OBJECT
 public:
    static constexpr const char* Name = "frmParinput";
    // kind: 4, 33 or 100 + mode. calc: mode and setup of the calculation to come.
    frmParinput(Workbench& bench, int kind, const CalculationInput& calc, QWidget* parent = nullptr);
    void focus_first();
    // Whether the boxes say something else than what was taken from them last: the result that is shown, if
    // any, is not theirs.
    bool has_uncalculated_input() const;

    QGroupBox* fraPar = nullptr;
    std::array<QLabel*, 4> Bz{};
    std::array<NumberBox*, 4> par{};  // in the units of the captions
    std::array<UnitRow*, 4> rows{};   // par and the same value in other units
    std::array<QRadioButton*, 2> optm_n{};
    std::array<QRadioButton*, 2> optRhoV{};
    QPushButton* cmdParameter_OK = nullptr;
    QPushButton* cmdClose = nullptr;

 signals:
    void taken(const quom::BensonReference& point);  // the reference point as typed
    void calculate();                                // the values of a calculation are in the document
    void input_changed();                            // has_uncalculated_input() may be another one

 private:
    QWidget* make_boxes();
    QWidget* make_options();
    void show_form();
    void show_units(std::size_t box);
    void show_value(std::size_t box, double value);
    void show_document();
    BoxValues read_boxes() const;
    BoxTexts texts() const;
    QStringList input() const;
    void choose(const InputOptions& options);
    void choose_unit(const UnitRow& row, const QString& unit);
    void go_on_from(std::size_t box);
    void arrange();
    void document_changed(const Changes& changes);
    void take();

    // The document with the calculation to come.
    Document with_calculation() const;

    Workbench& bench_;
    const int kind_;
    const CalculationInput calc_;
    InputOptions options_;
    InputForm form_;
    QStringList taken_;    // what stood in the boxes when they were taken or filled
    bool taking_ = false;  // the document changes by what is typed here
};

}  // namespace quom

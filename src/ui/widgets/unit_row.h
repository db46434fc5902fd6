// A number box with the units of its quantity beside it. The box holds the unit of its caption; another unit
// adds a second box under it, and typing in one of them writes the other.
#pragma once
#include <QComboBox>
#include <vector>

#include "forms/calculation_form.h"
#include "forms/input_units.h"

class QGridLayout;
class QLabel;

namespace quom {

class NumberBox;

// A combo whose choice is made in its list: keys open the list, and a wheel needs the focus.
class UnitCombo : public QComboBox {
    Q_OBJECT
 public:
    explicit UnitCombo(QWidget* parent = nullptr);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

class UnitRow : public QObject {
    Q_OBJECT
 public:
    static constexpr int grid_rows = 7;
    // Takes grid_rows rows of a grid without vertical spacing, from `row` on, for the caption, its box and
    // what belongs to them; index is the last part of the names.
    UnitRow(QGridLayout* grid, int row, QLabel* caption, NumberBox* par, const QByteArray& index);

    // The units offered, first the caption's, and the one in force. No unit: a box without a choice.
    void set_units(std::optional<Quantity> quantity, std::vector<InputUnit> units, std::string_view chosen,
                   double M);
    void set_visible(bool visible);
    // above: the row before it in the window; none for the first.
    void keep_apart(const UnitRow* above);
    bool visible() const { return visible_; }
    std::optional<Quantity> quantity() const { return quantity_; }

    // The box to type in: the one in the chosen unit.
    NumberBox* typed_box() const;
    // What was typed, for the form; and the box to be marked when that is refused.
    BoxText text() const;
    NumberBox* refused_box() const;

    NumberBox* par;
    UnitCombo* unit;
    NumberBox* other;

 signals:
    void unit_chosen(const QString& name);  // by the user; empty: that of the caption
    void edited();                          // by the user, in one of the boxes

 private:
    void choose(int index);
    void place();
    void set_gaps();
    void write_other();
    bool other_shown() const { return unit->currentIndex() > 0; }

    QGridLayout* grid_;
    const int row_;
    QLabel *caption_, *equal_;
    std::optional<Quantity> quantity_;
    std::vector<InputUnit> units_;
    double M_ = 0;
    bool visible_ = true;
    bool writing_ = false;       // one box is written from the other
    NumberBox* last_ = nullptr;  // the box typed in last
};

}  // namespace quom

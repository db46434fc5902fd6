// The one box for numbers: the keys that it takes are digits, E, e, - and the point; a comma becomes a point;
// Enter goes on to the next box. What is pasted is read as a whole, or refused as a whole.
#pragma once
#include <QLineEdit>
#include <functional>
#include <optional>
#include <string>

#include "forms/input_units.h"

class QAbstractButton;

namespace quom {

class NumberBox : public QLineEdit {
    Q_OBJECT
 public:
    // Wide enough for so many digits: 14 for a state value, 16 for a parameter, 8 for a limit of an axis.
    explicit NumberBox(int digits = 14, QWidget* parent = nullptr);

    void set_value(double value);  // general form, 15 digits
    std::string typed() const { return text().toStdString(); }

    // The unit of the numbers: one that is pasted with another unit of the quantity is converted at once.
    // None: a unit is no part of a number.
    void set_unit(std::optional<Quantity> quantity, const InputUnit& unit = {}, double M = 0);
    // The same by the name of the unit; none when the quantity does not have it.
    void set_unit(Quantity quantity, std::string_view unit, double M);

    // What Enter does instead of going on to the next number box.
    void on_enter(std::function<void()> enter) { enter_ = std::move(enter); }
    // Enter presses the button: for the last box of a window. Null: it goes on.
    void press_on_enter(QAbstractButton* button);

    // Refuses the text: a ring in the colour of errors, focus and selection; the rule is told to who listens
    // (RefusalLine) and stands in the accessible description. The next key or change takes it back, and so
    // does the refusal of another box of the window.
    void refuse(const std::string& rule);
    void take_back_refusal();
    bool refused() const { return !rule_.isEmpty(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
    void refusal_changed(const QString& rule);  // empty: there is none

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    void go_on();
    void convert_pasted();
    void set_rule(const QString& rule);

    int digits_;
    std::function<void()> enter_;
    std::optional<Quantity> quantity_;
    InputUnit unit_;
    double M_ = 0;
    QString rule_;
    QString description_, tool_tip_;  // without a refusal
};

}  // namespace quom

// The one box for numbers: takes digits, E, e, - and the point; a comma becomes a point; Enter goes on to the
// next box.
#pragma once
#include <QLineEdit>

class QAbstractButton;

namespace quom {

class NumberBox : public QLineEdit {
    Q_OBJECT
 public:
    // Wide enough for so many digits: 14 for a state value, 16 for a parameter, 8 for a limit of an axis.
    explicit NumberBox(int digits = 14, QWidget* parent = nullptr);

    double value() const;          // the leading number of the text, 0 when there is none
    void set_value(double value);  // general form, 15 digits
    // Enter presses the button instead of going on: for the last box of a window.
    void press_on_enter(QAbstractButton* button) { button_ = button; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

 private:
    int digits_;
    QAbstractButton* button_ = nullptr;
};

}  // namespace quom

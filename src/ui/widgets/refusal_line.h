// The rule that a number box breaks, under the box: icon and sentence in the colour of errors.
#pragma once
#include <QLabel>

class QGridLayout;

namespace quom {

class NumberBox;

// Shows itself while its box is refused. As wide as the box and, where there is one, the control right of it.
class RefusalLine : public QLabel {
    Q_OBJECT
 public:
    explicit RefusalLine(NumberBox* box, QWidget* beside = nullptr, QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    QRect text_rect() const;
    NumberBox* box_;
    QWidget* beside_;
};

// Puts the line of a box of the grid's second column into a row, from the left edge of the box.
RefusalLine* add_refusal_line(QGridLayout* grid, int row, NumberBox* box, QWidget* beside = nullptr);

}  // namespace quom

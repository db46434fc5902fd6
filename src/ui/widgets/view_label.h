// Texts of a calculation as labels: their fixed colours follow the theme, and what does not fit is elided
// with the whole text as tool tip.
#pragma once
#include <QLabel>

#include "report/result_list.h"

class QLineEdit;
class QPlainTextEdit;

namespace quom {

class ViewLabel : public QLabel {
    Q_OBJECT
 public:
    explicit ViewLabel(QWidget* parent = nullptr);
    void show_text(const ViewText& text);
    // In the colour of what is not up to date.
    void set_stale(bool stale);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void take_colour();
    QColor on_light_ = Qt::black;
    bool stale_ = false;
};

// Heads of the two columns of values in a result list, over these columns wherever the list is scrolled to.
class ColumnHeads : public QWidget {
    Q_OBJECT
 public:
    ColumnHeads(QPlainTextEdit* list, QWidget* parent = nullptr);
    QLabel* L;
    QLabel* V;
    void set_stale(bool stale);  // in the colour of results that are not up to date
    QSize sizeHint() const override;

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void place();
    QPlainTextEdit* list_;
    bool stale_ = false;
};

// Shows a text of the view in a result box.
void show_in_box(QLineEdit* box, const ViewText& text);

}  // namespace quom

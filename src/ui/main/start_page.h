// The page in the empty area of the windows: what one can begin with, first steps, keys. It is there while no
// window is shown and no database is loaded.
#pragma once
#include <QAbstractButton>
#include <QIcon>
#include <QScrollArea>

#include "forms/start_page_form.h"

class QBoxLayout;
class QMdiArea;

namespace quom {

class mdiQUOM;

// One row of a card: icon, text, a line below it, a text at the right. Enter presses it, Up and Down go to
// the rows beside it.
class StartRowButton : public QAbstractButton {
    Q_OBJECT
 public:
    StartRowButton(const StartRow& row, QWidget* parent);
    QSize sizeHint() const override;
    // Never squeezed in height; texts are elided where the width is short.
    QSize minimumSizeHint() const override { return {200, sizeHint().height()}; }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void go(int step);
    QString second_, right_;
};

class StartPage : public QScrollArea {
    Q_OBJECT
 public:
    StartPage(mdiQUOM& frame, QMdiArea* area);
    // Shows or hides the page as the session and the windows are now.
    void refresh();
    // The first row that can act has the focus.
    void focus_first();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void build(const StartPageForm& form);
    QWidget* make_cards(const StartPageForm& form);
    void run(const StartRow& row);
    void cover_area();

    mdiQUOM& frame_;
    QMdiArea* area_;
    QBoxLayout* cards_ = nullptr;  // side by side, or below each other where the width is short
    StartPageForm form_;
};

}  // namespace quom

// Ctrl+K: a frame over the main window that finds substances, calculations, windows and help pages by what is
// typed, and runs them.
#pragma once
#include <QFrame>
#include <QPointer>
#include <memory>

class QLabel;
class QLineEdit;
class QListView;
class QStandardItemModel;

namespace quom {

class PaletteEntries;
class mdiMenus;
class mdiQUOM;

class Palette : public QFrame {
    Q_OBJECT
 public:
    Palette(mdiQUOM& frame, const mdiMenus& menus);
    ~Palette() override;

    void open();
    // Closes it; the focus goes back to the widget that had it.
    void leave();

    QLineEdit* txtFind;
    QListView* lstHits;
    QLabel* lblKeys;
    QLabel* lblHits;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    void fill();
    void place();
    void mark(int row, int step);  // the row, or the next one in that direction that can run
    void move(int rows);
    void run();
    bool key(int key);
    void drop();

    mdiQUOM& frame_;
    const mdiMenus& menus_;
    QStandardItemModel* rows_;
    std::unique_ptr<PaletteEntries> entries_;  // while it is open
    QPointer<QWidget> focus_before_;
};

}  // namespace quom

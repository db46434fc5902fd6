// Places and sizes of the windows in the area: given when a window opens, kept where the user has moved it,
// moved in when the area shrinks.
#pragma once
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QRect>

#include "ui/main/places.h"
#include "ui/main/window_table.h"

class QMdiSubWindow;

namespace quom {

class MdiArea;
class UiMemory;

class WindowPlaces : public QObject {
    Q_OBJECT
 public:
    WindowPlaces(MdiArea& area, UiMemory& memory);

    // A window that was put into the area and is not yet shown takes its size, by its row of the table of
    // windows, and its place. beside: the window that it belongs to, if any.
    void open(QMdiSubWindow* sub, const QWidget* beside);
    // A window has gone: models that were rolled up for a calculation come back after it.
    void closed();

    // Least sizes hold; what has no room is rolled up to its title. The window in front is served first.
    void tile();
    void cascade();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Entry {
        QSize first;
        Sizing sizing = Sizing::free;
        bool beside = false;  // belongs to another window than those of the three parts
    };
    QMdiSubWindow* with_part(Part part) const;
    QSize wanted_size(QMdiSubWindow* sub) const;
    QSize least_size(QMdiSubWindow* sub) const;
    PlaceSizes sizes_now() const;
    Places places_now() const;
    QRect kept_place(const QMdiSubWindow* sub) const;
    void keep_place(const QMdiSubWindow* sub);
    void roll_up(QMdiSubWindow* sub, const QRect& title);
    void arrange_calculation();
    void open_alone(QMdiSubWindow* sub, const QWidget* beside);
    bool hides_strip(const QMdiSubWindow* sub) const;
    void clear_strip(QMdiSubWindow* sub);
    void move_in();
    void spread(bool tiles);
    void activated(QMdiSubWindow* sub);

    MdiArea& area_;
    UiMemory& memory_;
    QHash<const QObject*, Entry> entries_;
    QPointer<QMdiSubWindow> rolled_;  // the models, rolled up for a calculation
    QRect pressed_;                   // geometry of the window that the mouse has taken
    QSize known_result_;              // least size of the last result
};

}  // namespace quom

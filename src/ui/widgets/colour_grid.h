// The colours of the slots as a menu: three rows of eight, with a dot on those in use, and one entry for any
// other colour.
#pragma once
#include <QColor>
#include <QIcon>
#include <QMenu>
#include <functional>

#include "diagrams/graph_document.h"

class QToolButton;

namespace quom {

inline QColor shown_colour(Color colour) { return {colour.r, colour.g, colour.b}; }
// A square of the colour, with a dot in it for one in use.
QIcon swatch(const QColor& colour, int side, qreal ratio, bool in_use = false);

class ColourGrid : public QMenu {
    Q_OBJECT
 public:
    explicit ColourGrid(QWidget* parent = nullptr);
    // Shows which slots of the sheet have a curve.
    void show_slots(const GraphDocument& sheet);
    QToolButton* colour[SlotColors];

 signals:
    void picked(const QColor& colour);
    void more_wanted();
};

}  // namespace quom

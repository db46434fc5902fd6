// The legend of a sheet.
#pragma once
#include <qcustomplot.h>

#include <QFont>
#include <QPen>
#include <QStringList>
#include <optional>
#include <vector>

#include "diagrams/sheet_design.h"

namespace quom {

struct LegendEntry {
    QString text;
    QPen pen{Qt::NoPen};
    QCPScatterStyle symbol{QCPScatterStyle::ssNone};
};

// Inside the axes where it was put, in columns when it is higher than they are. One in a corner that would
// cover too much of them stands right of the axes, in smaller letters when it takes those. Texts that are
// still too wide are cut.
class SheetLegend : public QCPAbstractItem {
 public:
    explicit SheetLegend(QCustomPlot& plot);
    void set(const LegendDesign& design, const SheetColors& colors, std::vector<LegendEntry> entries);
    const std::vector<LegendEntry>& entries() const { return entries_; }
    // In pixels of the picture that is drawn; empty when there is none.
    QRectF box() const;
    // What the layout keeps free right of the axes, 0 for a legend inside; before the axes have their size.
    double room_beside() const;
    double selectTest(const QPointF& pos, bool only_selectable, QVariant* details = nullptr) const override;

 protected:
    void draw(QCPPainter* painter) override;

 private:
    // Lines of each text, and the corner of each entry in the box.
    struct Layout {
        QFont font{};
        std::vector<QStringList> texts{};
        std::vector<QPointF> corners{};
        QSizeF size{};
        double row_height = 0, text_width = 0;
    };
    Layout layout_in(const QSizeF& room, int columns, float points) const;
    Layout inside(const QSizeF& axes) const;
    std::optional<Layout> beside() const;
    struct Place {
        Layout layout;
        QRectF box;
    };
    Place place() const;
    LegendDesign design_;
    QFont font_;
    QColor ground_, border_, ink_;
    std::vector<LegendEntry> entries_;
};

// Room in the layout for a legend beside the axes.
class LegendRoom : public QCPLayoutElement {
 public:
    LegendRoom(QCustomPlot& plot, const SheetLegend& legend) : QCPLayoutElement(&plot), legend_(legend) {}
    QSize minimumOuterSizeHint() const override;
    QSize maximumOuterSizeHint() const override;

 private:
    const SheetLegend& legend_;
};

}  // namespace quom

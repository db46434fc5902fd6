// The legend of a sheet.
#pragma once
#include <qcustomplot.h>

#include <QFont>
#include <QPen>
#include <vector>

#include "diagrams/sheet_design.h"

namespace quom {

struct LegendEntry {
    QString text;
    QPen pen{Qt::NoPen};
    QCPScatterStyle symbol{QCPScatterStyle::ssNone};
};

// Inside the axes, in columns when it is higher than they are; texts that are too wide are cut.
class SheetLegend : public QCPAbstractItem {
 public:
    explicit SheetLegend(QCustomPlot& plot);
    void set(const LegendDesign& design, const SheetColors& colors, std::vector<LegendEntry> entries);
    const std::vector<LegendEntry>& entries() const { return entries_; }
    // In pixels of the picture that is drawn; empty when there is none.
    QRectF box() const;
    double selectTest(const QPointF& pos, bool only_selectable, QVariant* details = nullptr) const override;

 protected:
    void draw(QCPPainter* painter) override;

 private:
    struct Layout {
        QRectF box;
        int rows = 0;
        double row_height = 0, column_width = 0, text_width = 0;
    };
    Layout layout() const;
    LegendDesign design_;
    QFont font_;
    QColor ground_, border_, ink_;
    std::vector<LegendEntry> entries_;
};

}  // namespace quom

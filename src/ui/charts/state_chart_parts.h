// What a state chart shows beside its lines: legend, labels, points, and the read-out at the pointer.
#pragma once
#include <qcustomplot.h>

#include <QColor>
#include <QFont>
#include <QPen>
#include <QStringList>
#include <vector>

#include "diagrams/chart_style.h"
#include "diagrams/label_placing.h"

namespace quom {

QColor chart_color(std::uint32_t rgb, int alpha = 255);
QFont chart_font(double points, bool bold = false);
// Pen of the lines of a family; dashes as the style has them.
QPen chart_pen(const LineStyle& style, bool black);

// A row of keys and texts, in the middle; as many rows as the picture needs.
class ChartLegendRow : public QCPLayoutElement {
 public:
    struct Entry {
        QString text;
        QPen pen;
    };
    explicit ChartLegendRow(QCustomPlot& plot) : QCPLayoutElement(&plot) {}
    void set(std::vector<Entry> entries, const QFont& font, const QColor& ink);
    std::vector<QRectF> boxes() const;  // of key and text of each entry

    void update(UpdatePhase phase) override;
    QSize minimumOuterSizeHint() const override;
    QSize maximumOuterSizeHint() const override;

 protected:
    void draw(QCPPainter* painter) override;

 private:
    double entry_width(const Entry& entry) const;
    double row_height() const;
    std::vector<Entry> entries_;
    std::vector<std::size_t> row_ends_;  // index behind the last entry of each row
    double pitch_ = 0;                   // between the beginnings of two entries; 0: by their widths
    QFont font_;
    QColor ink_;
};

// Labels of lines, critical point and marked states, over the lines and the frame.
class ChartInk : public QCPLayerable {
 public:
    explicit ChartInk(QCustomPlot& plot, const QString& layer);
    struct Label {
        PlacedLineLabel place;
        QColor color;
    };
    std::vector<Label> labels;
    std::vector<QPointF> critical, marked;  // pixels from the corner of the area
    QPointF corner;                         // of the area [pixels]
    QFont font;
    QColor ink, ground;

 protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    QRect clipRect() const override { return mParentPlot->axisRect()->rect(); }
    void draw(QCPPainter* painter) override;

 private:
    void draw_label(QCPPainter& painter, const Label& label) const;
};

// A cross and a box with the lines of a state beside it.
class ChartReadOut : public QCPLayerable {
 public:
    explicit ChartReadOut(QCustomPlot& plot, const QString& layer);
    void show(const QPointF& pixel, QStringList lines);
    QPointF at;
    QStringList lines;
    QFont font;
    QColor ink, ground;
    QRectF box() const;

 protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;
};

}  // namespace quom

// Ticks of a sheet's axes: as many numbers as have room.
#pragma once
#include <qcustomplot.h>

#include <functional>

#include "diagrams/sheet_design.h"
#include "diagrams/ticks.h"
#include "ui/charts/sheet_series.h"

namespace quom {

// What a number takes of the length of its axis.
using NumberExtent = std::function<double(const std::string&)>;

// The ticks of an axis of so many pixels whose numbers do not touch: at steps of the design where it has
// some, else at round steps. dense: decades of a logarithmic axis up to which 2 and 5 have numbers.
inline constexpr double usual_dense = 3;
Ticks sheet_ticks(const AxisDesign& design, const ShownAxis& axis, double length, const NumberExtent& extent,
                  double dense = usual_dense);

// Gives an axis of the chart library such ticks for the size of the plot that is drawn.
class SheetTicker : public QCPAxisTicker {
 public:
    // place: bottom, left or right. The one at the bottom leaves room for its last number right of the area.
    SheetTicker(QCustomPlot& plot, QCPAxisRect& area, QCPAxis::AxisType place)
        : plot_(plot), area_(area), place_(place) {}
    void set(const AxisDesign& design, const ShownAxis& axis, TextTurn number_turn,
             double dense = usual_dense);
    void generate(const QCPRange& range, const QLocale& locale, QChar format, int precision,
                  QVector<double>& at, QVector<double>* between, QVector<QString>* numbers) override;

 private:
    double length() const;  // of the axis in pixels, nearly
    Ticks ticks() const;
    void leave_room(const Ticks& ticks) const;
    QCustomPlot& plot_;
    QCPAxisRect& area_;
    QCPAxis::AxisType place_;
    AxisDesign design_;
    ShownAxis axis_;
    TextTurn turn_ = TextTurn::horizontal;
    double dense_ = usual_dense;
};

}  // namespace quom

#include "ui/charts/state_chart_picture.h"

#include <qcustomplot.h>

#include <QPrinter>
#include <algorithm>
#include <cmath>

#include "ui/charts/state_chart_plot.h"

namespace quom {
namespace {

constexpr double paper_resolution = 96;    // dots per inch in which charts are measured
constexpr double highest_on_paper = 0.75;  // of the width

}  // namespace

DrawChart state_chart_drawing(const StateChart& chart, bool black, std::vector<ChartState> marked) {
    return [&chart, black, marked = std::move(marked)](QCPPainter& painter, QSizeF size) {
        QCustomPlot plot;
        StateChartPlot drawn(plot);
        drawn.mark(marked);
        drawn.draw(chart, black, true);
        plot.toPainter(&painter, static_cast<int>(std::ceil(size.width())),
                       static_cast<int>(std::ceil(size.height())));
    };
}

PictureBytes state_chart_bytes(const StateChart& chart, const std::string& format, const PictureSize& size,
                               bool black) {
    if (!chart.exists()) return {{}, chart.fault};
    return chart_bytes(format, size, state_chart_drawing(chart, black));
}

std::string state_chart_picture(const StateChart& chart, const std::string& path, const PictureSize& size,
                                bool black) {
    if (!chart.exists()) return chart.fault;
    return write_chart(path, size, state_chart_drawing(chart, black));
}

bool print_state_chart(const StateChart& chart, QPrinter& printer, bool black) {
    if (!chart.exists()) return false;
    printer.setResolution(static_cast<int>(paper_resolution));  // fonts in points have their size
    QCPPainter painter;
    if (!painter.begin(&printer)) return false;
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    const double scale = printer.resolution() / paper_resolution;
    const QSizeF page = printer.pageLayout().paintRect(QPageLayout::Inch).size() * paper_resolution;
    if (scale != 1) painter.scale(scale, scale);
    state_chart_drawing(chart, black)(
        painter, {page.width(), std::min(page.height(), highest_on_paper * page.width())});
    return painter.end();
}

}  // namespace quom

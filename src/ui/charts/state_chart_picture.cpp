#include "ui/charts/state_chart_picture.h"

#include <qcustomplot.h>

#include <cmath>

#include "ui/charts/print_chart.h"
#include "ui/charts/state_chart_plot.h"

namespace quom {

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
    return print_chart(printer, state_chart_drawing(chart, black));
}

}  // namespace quom

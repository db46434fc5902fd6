#include "ui/charts/sheet_picture.h"

#include <qcustomplot.h>

#include <cmath>

#include "ui/charts/print_chart.h"
#include "ui/charts/sheet_plot.h"

namespace quom {
namespace {

DrawChart drawing_of(const GraphDocument& document) {
    return [&document](QCPPainter& painter, QSizeF size) {
        QCustomPlot plot;
        // Thin lines of one width at any scale.
        plot.setAntialiasedElements(QCP::aeAxes | QCP::aeGrid);
        SheetPlot sheet(plot);
        sheet.draw(document, true);
        plot.toPainter(&painter, static_cast<int>(std::ceil(size.width())),
                       static_cast<int>(std::ceil(size.height())));
    };
}

}  // namespace

std::string sheet_picture(const GraphDocument& document, const std::string& path, const PictureSize& size) {
    return write_chart(path, size, drawing_of(document));
}

PictureBytes sheet_picture_bytes(const GraphDocument& document, const std::string& format,
                                 const PictureSize& size) {
    return chart_bytes(format, size, drawing_of(document));
}

bool print_sheet(const GraphDocument& document, QPrinter& printer) {
    return print_chart(printer, drawing_of(document));
}

}  // namespace quom

#include "ui/charts/sheet_picture.h"

#include <qcustomplot.h>

#include <QPrinter>
#include <algorithm>
#include <cmath>

#include "ui/charts/sheet_plot.h"

namespace quom {
namespace {

constexpr double paper_resolution = 96;    // dots per inch in which sheets are measured
constexpr double highest_on_paper = 0.75;  // of the width

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
    printer.setResolution(static_cast<int>(paper_resolution));  // fonts in points have their size
    QCPPainter painter;
    if (!painter.begin(&printer)) return false;
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    const double scale = printer.resolution() / paper_resolution;
    const QSizeF page = printer.pageLayout().paintRect(QPageLayout::Inch).size() * paper_resolution;
    if (scale != 1) painter.scale(scale, scale);
    drawing_of(document)(painter, {page.width(), std::min(page.height(), highest_on_paper * page.width())});
    return painter.end();
}

}  // namespace quom

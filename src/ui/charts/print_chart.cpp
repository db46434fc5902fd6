#include "ui/charts/print_chart.h"

#include <qcustomplot.h>

#include <QPrinter>
#include <algorithm>

namespace quom {

namespace {

constexpr double paper_resolution = 96;    // dots per inch in which charts are measured
constexpr double highest_on_paper = 0.75;  // of the width

}  // namespace

bool print_chart(QPrinter& printer, const DrawChart& draw) {
    printer.setResolution(static_cast<int>(paper_resolution));  // fonts in points have their size
    QCPPainter painter;
    if (!painter.begin(&printer)) return false;
    painter.setModes(QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
    const double scale = printer.resolution() / paper_resolution;
    const QSizeF page = printer.pageLayout().paintRect(QPageLayout::Inch).size() * paper_resolution;
    if (scale != 1) painter.scale(scale, scale);
    draw(painter, {page.width(), std::min(page.height(), highest_on_paper * page.width())});
    return painter.end();
}

}  // namespace quom

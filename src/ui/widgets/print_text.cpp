#include "ui/widgets/print_text.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <algorithm>

#include "ui/look/look.h"

namespace quom {

namespace {

// The fixed font in points of the paper, smaller where the longest line needs it.
QFont page_font(QPrinter& printer, const PrintedText& text) {
    qsizetype longest = 1;
    for (const QStringList& lines : {text.head, text.lines})
        for (const QString& line : lines) longest = std::max(longest, line.size());
    QFont font = fixed_font();
    for (double size = 10; size > 5; size -= 0.5) {
        font.setPointSizeF(size);
        const double character = QFontMetricsF(font, &printer).horizontalAdvance(QLatin1Char('0'));
        if (character * static_cast<double>(longest) <= printer.pageRect(QPrinter::DevicePixel).width())
            break;
    }
    return font;
}

}  // namespace

void paint_pages(QPrinter& printer, const PrintedText& text) {
    QPainter painter(&printer);
    painter.setFont(page_font(printer, text));
    const QFontMetricsF metrics(painter.font(), &printer);
    const double height = metrics.lineSpacing();
    const QSizeF page = printer.pageRect(QPrinter::DevicePixel).size();
    const auto head = static_cast<qsizetype>(text.head.size());
    const auto room = static_cast<qsizetype>(page.height() / height) - head - 2;  // a line is the number
    const qsizetype on_page = std::max<qsizetype>(1, room);
    const qsizetype pages = std::max<qsizetype>(1, (text.lines.size() + on_page - 1) / on_page);
    for (qsizetype number = 0; number < pages; ++number) {
        if (number > 0 && !printer.newPage()) return;
        double y = metrics.ascent();
        const auto draw = [&](const QString& line) {
            painter.drawText(QPointF(0, y), line);
            y += height;
        };
        for (const QString& line : text.head) draw(line);
        for (qsizetype i = number * on_page; i < std::min((number + 1) * on_page, text.lines.size()); ++i)
            draw(text.lines[i]);
        const QRectF foot(0, page.height() - height, page.width(), height);
        painter.drawText(foot, Qt::AlignRight, QStringLiteral("%1 / %2").arg(number + 1).arg(pages));
    }
}

namespace {

template <class Paint>
void preview(QWidget* parent, QPrinter& printer, const QString& title, Paint paint) {
    printer.setDocName(title.simplified());
    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("print_preview"));
    dialog.setWindowTitle(title);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&paint](QPrinter* paper) { paint(*paper); });
    dialog.exec();
}

}  // namespace

void print_with_preview(QWidget* parent, const PrintedText& text) {
    QPrinter printer(QPrinter::HighResolution);
    preview(parent, printer, text.title, [&text](QPrinter& paper) { paint_pages(paper, text); });
}

bool print_with_preview(QWidget* parent, const PrintedPage& page) {
    constexpr double margin = 15;  // [mm]
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                      QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter));
    bool good = true;
    preview(parent, printer, page.title, [&](QPrinter& paper) { good = page.paint(paper) && good; });
    return good;
}

}  // namespace quom

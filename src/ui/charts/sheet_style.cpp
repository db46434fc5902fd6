#include "ui/charts/sheet_style.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <array>

namespace quom {
namespace {

constexpr double width_step = 0.8;  // pixels of an entry of the line width

// In widths of the pen.
QVector<qreal> dashes(LinePattern pattern) {
    if (pattern == LinePattern::dotted) return {2, 2.2};
    if (pattern == LinePattern::dashed) return {7, 3.5};
    return {7, 3, 1.5, 3};
}

QPen line_pen(const SeriesStyle& style, double width) {
    if (style.line == LinePattern::points_only) return QPen(Qt::NoPen);
    return QPen(sheet_color(style.color), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

struct SymbolRow {
    Symbol symbol;
    QCPScatterStyle::ScatterShape shape;
    double factor;  // of the size
    bool filled;
};
constexpr auto symbol_rows = std::to_array<SymbolRow>({
    {Symbol::dot, QCPScatterStyle::ssDisc, 0.6, true},
    {Symbol::box, QCPScatterStyle::ssSquare, 0.9, true},
    {Symbol::triangle, QCPScatterStyle::ssTriangle, 1, true},
    {Symbol::diamond, QCPScatterStyle::ssDiamond, 1, true},
    {Symbol::star, QCPScatterStyle::ssStar, 1.1, false},
    {Symbol::cross, QCPScatterStyle::ssPlus, 1.1, false},
    {Symbol::circle, QCPScatterStyle::ssCircle, 1, false},
    {Symbol::square, QCPScatterStyle::ssSquare, 0.9, false},
    {Symbol::inverted_triangle, QCPScatterStyle::ssTriangleInverted, 1, true},
    {Symbol::open_triangle, QCPScatterStyle::ssTriangle, 1, false},
    {Symbol::open_diamond, QCPScatterStyle::ssDiamond, 1, false},
    {Symbol::open_inverted_triangle, QCPScatterStyle::ssTriangleInverted, 1, false},
});

}  // namespace

QFont sheet_font(const Font& font) {
    QFont result = QApplication::font();
    if (!font.family.empty()) result.setFamily(sheet_text(font.family));
    result.setPointSizeF(std::max(1.0, static_cast<double>(font.size)));
    if (font.bold) result.setWeight(QFont::DemiBold);
    result.setItalic(font.italic);
    return result;
}

QFont label_font() { return sheet_font({.size = 8.5F}); }

QPen curve_pen(const SeriesStyle& style) {
    QPen pen = line_pen(style, width_step * style.width);
    if (pen.style() != Qt::NoPen && style.line != LinePattern::solid) pen.setDashPattern(dashes(style.line));
    return pen;
}

QPen mark_pen(const SeriesStyle& style) {
    QPen pen = line_pen(style, style.width == 1 ? 1.0 : width_step * style.width);
    if (style.line == LinePattern::dashed) pen.setDashPattern({4, 4});
    if (style.line == LinePattern::dotted || style.line == LinePattern::dash_dotted)
        pen.setDashPattern(dashes(style.line));
    return pen;
}

QCPScatterStyle symbol_of(const SeriesStyle& style) {
    const auto* row = std::ranges::find(symbol_rows, style.symbol, &SymbolRow::symbol);
    if (row == symbol_rows.end()) return QCPScatterStyle(QCPScatterStyle::ssNone);
    const QColor color = sheet_color(style.symbol_color);
    QPen pen(color, 1.4);
    pen.setJoinStyle(Qt::MiterJoin);
    return QCPScatterStyle(row->shape, pen, row->filled ? QBrush(color) : QBrush(Qt::NoBrush),
                           row->factor * style.symbol_size);
}

QStringList wrapped(const QString& text, const QFont& font, double width) {
    const QFontMetricsF metrics(font);
    QStringList lines;
    for (const QString& given : text.split(QLatin1Char('\n'))) {
        QString line;
        for (const QString& word : given.split(QLatin1Char(' '))) {
            const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
            if (!line.trimmed().isEmpty() && metrics.horizontalAdvance(longer) > width) {
                lines << line;
                line = word;
            } else {
                line = longer;
            }
        }
        lines << line;
    }
    for (QString& line : lines) line = metrics.elidedText(line, Qt::ElideRight, width);
    return lines;
}

}  // namespace quom

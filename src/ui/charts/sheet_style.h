// Colours, pens, symbols and fonts of a sheet's design for the chart library.
#pragma once
#include <qcustomplot.h>

#include <QColor>
#include <QFont>
#include <QPen>
#include <QStringList>

#include "diagrams/sheet_design.h"

namespace quom {

inline QString sheet_text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline QColor sheet_color(Color color, double alpha = 1) {
    QColor result(color.r, color.g, color.b);
    result.setAlphaF(static_cast<float>(alpha));
    return result;
}
QFont sheet_font(const Font& font);
QFont label_font();  // of the labels of curves and marks

// Line of a curve; no pen where it has points alone.
QPen curve_pen(const SeriesStyle& style);
// Line of a mark: thinner, with dashes of their own.
QPen mark_pen(const SeriesStyle& style);
QCPScatterStyle symbol_of(const SeriesStyle& style);

// Grounds behind texts let a little of the lines through.
inline constexpr double text_ground_alpha = 225.0 / 255.0;

// The text in lines of at most that width; a line ends at '\n' and between words.
QStringList wrapped(const QString& text, const QFont& font, double width);

}  // namespace quom

#include "ui/charts/sheet_legend.h"

#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>

#include "ui/charts/sheet_style.h"

namespace quom {
namespace {

constexpr double key_width = 28, least_row = 14, gap = 8, inset = 8, from_frame = 10;
constexpr double most_share = 0.94;       // of the width and the height of the axes
constexpr double most_covered = 1.0 / 3;  // of the axes by a legend inside
constexpr double column_share = 0.6;      // of one column alone
constexpr int most_columns = 6, most_lines = 3;
constexpr auto shares_beside = std::to_array<double>({0.24, 0.3, 0.36, 0.42});  // of the width of the picture
constexpr float least_points = 6.5F, points_step = 0.5F;
// Of the picture beside the axes: numbers, titles, margins.
constexpr double beside_width = 90, beside_height = 110;

QStringList lines_of(const QString& text, const QFont& font, double width) {
    QStringList lines = wrapped(text, font, width);
    if (lines.size() <= most_lines) return lines;
    const QString rest = lines.mid(most_lines - 1).join(QLatin1Char(' '));
    lines = lines.mid(0, most_lines - 1);
    return lines << QFontMetricsF(font).elidedText(rest, Qt::ElideRight, width);
}

}  // namespace

SheetLegend::SheetLegend(QCustomPlot& plot) : QCPAbstractItem(&plot) {
    setClipToAxisRect(false);
    setSelectable(false);
}

void SheetLegend::set(const LegendDesign& design, const SheetColors& colors,
                      std::vector<LegendEntry> entries) {
    design_ = design;
    font_ = sheet_font(design.font);
    ground_ = sheet_color(colors.legend, text_ground_alpha);
    border_ = sheet_color(colors.grid, colors.black ? 0.5 : 1);
    ink_ = sheet_color(colors.text);
    entries_ = std::move(entries);
    setVisible(design.visible && !entries_.empty());
}

// So many columns of entries, one below the other as evenly as they go.
SheetLegend::Layout SheetLegend::layout_in(const QSizeF& room, int columns, float points) const {
    Layout result;
    result.font = font_;
    result.font.setPointSizeF(static_cast<double>(points));
    const QFontMetricsF metrics(result.font);
    const bool is_small = points < design_.font.size;
    result.row_height = is_small ? metrics.height() : std::max(least_row, metrics.height()) + 2;
    const double most_text = (room.width() - 2 * inset + gap) / columns - 2 * gap - key_width;
    qsizetype lines = 0;
    for (const LegendEntry& entry : entries_) {
        result.texts.push_back(lines_of(entry.text, result.font, std::max(gap, most_text)));
        for (const QString& line : result.texts.back())
            result.text_width = std::max(result.text_width, std::ceil(metrics.horizontalAdvance(line)) + 1);
        lines += result.texts.back().size();
    }
    const double column_width = key_width + 2 * gap + result.text_width;
    const qsizetype most_rows = (lines + columns - 1) / columns;
    qsizetype row = 0, rows = 0;
    int column = 0;
    for (const QStringList& text : result.texts) {
        if (row > 0 && row + text.size() > most_rows && column + 1 < columns) {
            ++column;
            row = 0;
        }
        result.corners.emplace_back(inset + column * column_width,
                                    inset - 2 + static_cast<double>(row) * result.row_height);
        row += text.size();
        rows = std::max(rows, row);
    }
    result.size = {2 * inset + (column + 1) * column_width - gap,
                   2 * inset - 4 + static_cast<double>(rows) * result.row_height};
    return result;
}

SheetLegend::Layout SheetLegend::inside(const QSizeF& axes) const {
    const QSizeF room = most_share * axes;
    Layout result = layout_in({column_share * axes.width(), room.height()}, 1, design_.font.size);
    for (int columns = 2; result.size.height() > room.height() && columns <= most_columns; ++columns)
        result = layout_in(room, columns, design_.font.size);
    return result;
}

// The largest letters with which it has room right of the axes, and the least width; none while it stands
// inside them.
std::optional<SheetLegend::Layout> SheetLegend::beside() const {
    if (!visible() || design_.place == LegendPlace::free) return std::nullopt;
    const QRectF picture = mParentPlot->viewport();
    const QSizeF axes(std::max(1.0, picture.width() - beside_width),
                      std::max(1.0, picture.height() - beside_height));
    const QSizeF within = inside(axes).size;
    if (within.width() * within.height() <= most_covered * axes.width() * axes.height()) return std::nullopt;
    for (float points = design_.font.size; points >= least_points; points -= points_step)
        for (const double share : shares_beside) {
            Layout one = layout_in({share * picture.width(), axes.height()}, 1, points);
            if (one.size.height() <= axes.height()) return one;
        }
    return std::nullopt;
}

double SheetLegend::room_beside() const {
    const std::optional<Layout> layout = beside();
    return layout ? layout->size.width() + from_frame : 0;
}

SheetLegend::Place SheetLegend::place() const {
    const QRectF area = mParentPlot->axisRect()->rect();
    if (const std::optional<Layout> layout = beside())
        return {*layout, QRectF(area.topRight() + QPointF(from_frame, 0), layout->size)};
    const Layout layout = inside(area.size());
    const QSizeF size = layout.size;
    QPointF corner(design_.x * area.width(), design_.y * area.height());
    if (design_.place != LegendPlace::free) {
        const bool left = design_.place == LegendPlace::top_left || design_.place == LegendPlace::bottom_left;
        const bool top = design_.place == LegendPlace::top_left || design_.place == LegendPlace::top_right;
        corner = {left ? from_frame : area.width() - size.width() - from_frame,
                  top ? from_frame : area.height() - size.height() - from_frame};
    }
    const auto kept = [](double at, double most) { return std::clamp(at, 0.0, std::max(0.0, most)); };
    return {layout, QRectF(area.topLeft() + QPointF(kept(corner.x(), area.width() - size.width()),
                                                    kept(corner.y(), area.height() - size.height())),
                           size)};
}

QSize LegendRoom::minimumOuterSizeHint() const {
    return {static_cast<int>(std::ceil(legend_.room_beside())), 0};
}

QSize LegendRoom::maximumOuterSizeHint() const { return {minimumOuterSizeHint().width(), QWIDGETSIZE_MAX}; }

QRectF SheetLegend::box() const { return visible() ? place().box : QRectF(); }

double SheetLegend::selectTest(const QPointF& pos, bool, QVariant*) const {
    return visible() && box().contains(pos) ? 0 : -1;
}

void SheetLegend::draw(QCPPainter* painter) {
    const auto [place, box] = this->place();
    painter->setAntialiasing(true);
    painter->setPen(QPen(border_, 1));
    painter->setBrush(ground_);
    painter->drawRect(box);
    painter->setFont(place.font);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const LegendEntry& entry = entries_[i];
        const QPointF corner = box.topLeft() + place.corners[i];
        const double middle = corner.y() + place.row_height / 2;
        if (entry.pen.style() != Qt::NoPen) {
            painter->setPen(entry.pen);
            painter->drawLine(QPointF(corner.x(), middle), QPointF(corner.x() + key_width, middle));
        }
        if (!entry.symbol.isNone()) {
            entry.symbol.applyTo(painter, entry.pen);
            entry.symbol.drawShape(painter, QPointF(corner.x() + key_width / 2, middle));
        }
        painter->setPen(QPen(ink_));
        double top = corner.y();
        for (const QString& line : place.texts[i]) {
            painter->drawText(QRectF(corner.x() + key_width + gap, top, place.text_width, place.row_height),
                              static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextDontClip, line);
            top += place.row_height;
        }
    }
}

}  // namespace quom

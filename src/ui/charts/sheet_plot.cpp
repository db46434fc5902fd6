#include "ui/charts/sheet_plot.h"

#include <qcustomplot.h>

#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>

#include "diagrams/graph_view.h"
#include "ui/charts/sheet_axes.h"
#include "ui/charts/sheet_curve.h"
#include "ui/charts/sheet_labels.h"
#include "ui/charts/sheet_legend.h"
#include "ui/charts/sheet_series.h"
#include "ui/charts/sheet_style.h"
#include "ui/charts/sheet_texts.h"

namespace quom {
namespace {

constexpr int header_text = -1, footer_text = -2;  // in the list of free texts
constexpr std::size_t MostSymbols = 300;           // that labels keep clear of

double number_rotation(TextTurn turn) {
    return turn == TextTurn::horizontal ? 0 : turn == TextTurn::upwards ? -90 : 90;
}

bool is_moved(const SheetText& text) { return text.x != 0 || text.y != 0; }

// Pens, fonts and grounds of the whole sheet.
void style_axis(QCPAxis& axis, const AxisDesign& design, const SheetColors& colors) {
    const QPen line(sheet_color(colors.axes), 1);
    axis.setBasePen(line);
    axis.setTickPen(line);
    axis.setSubTickPen(line);
    axis.setTickLength(5, 0);
    axis.setSubTickLength(3, 0);
    axis.setTickLabelFont(sheet_font(design.number_font));
    axis.setTickLabelColor(sheet_color(colors.labels));
    axis.grid()->setVisible(design.grid);
    axis.grid()->setPen(QPen(sheet_color(colors.grid, colors.grid_alpha), 1));
    axis.grid()->setZeroLinePen(Qt::NoPen);
    axis.grid()->setSubGridVisible(false);
}

void style_sheet_of(QCustomPlot& plot, const GraphDocument& document) {
    const SheetColors& colors = document.colors;
    plot.setBackground(QBrush(sheet_color(colors.sheet)));
    plot.axisRect()->setBackground(QBrush(sheet_color(colors.area)));
    for (QCPAxis* axis : {plot.xAxis, plot.xAxis2}) style_axis(*axis, shown_x(document), colors);
    style_axis(*plot.yAxis, shown_y(document), colors);
    style_axis(*plot.yAxis2, document.y2, colors);
    // Turned texts belong to a place, not to a quantity.
    plot.xAxis->setTickLabelRotation(number_rotation(document.x.number_turn));
    plot.yAxis->setTickLabelRotation(number_rotation(document.y.number_turn));
    plot.yAxis2->setTickLabelRotation(number_rotation(document.y2.number_turn));
    // On the right there are numbers where their digits are told.
    plot.yAxis2->setTickLabels(document.y2.digits > 0);
    plot.xAxis2->setTickLabels(false);
    for (QCPAxis* axis : {plot.xAxis2, plot.yAxis2}) {
        axis->setVisible(true);
        axis->grid()->setVisible(false);
    }
}

void set_axis(QCPAxis& axis, const ShownAxis& shown, const QSharedPointer<QCPAxisTicker>& ticker) {
    axis.setScaleType(shown.log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
    axis.setRange(shown.low, shown.high);
    axis.setTicker(ticker);
}

// Of the series in place i of its list, among the lines that labels do not hide.
int line_number(SheetPart part, std::size_t i) {
    constexpr int first_set = CurveSlots, first_mark = CurveSlots + PointSlots;
    static_assert(first_mark + static_cast<int>(MarkSlots) <= LineCells::MostSeries);
    return static_cast<int>(i) + (part == SheetPart::curve_label    ? 0
                                  : part == SheetPart::points_label ? first_set
                                                                    : first_mark);
}

// Places of a mark's text along its line, from one end of what is in sight to the other.
std::vector<SeenPoint> along_mark(const GraphDocument& document, const Mark& mark, const ShownAxes& axes,
                                  std::size_t& wanted) {
    constexpr std::size_t Places = 48;
    const std::vector<SeenPoint> line = line_in_sight(document, mark.series, axes);
    if (line.empty()) return {};
    const SheetPoint at = shown_point(document, mark.label_at);
    const double x = static_cast<double>(at.X), y = static_cast<double>(at.Y);
    const bool seen = axes.x.contains(x) && axes.y.contains(y);
    std::vector<SeenPoint> places;
    for (std::size_t i = 0; i <= Places; ++i) {
        const double part = static_cast<double>(i) / Places;
        const auto between = [&](const ShownAxis& axis, double from, double to) {
            return axis.at(axis.share(from) + part * (axis.share(to) - axis.share(from)));
        };
        places.push_back({between(axes.x, line.front().x, line.back().x),
                          between(axes.y, line.front().y, line.back().y), i});
    }
    wanted = Places / 6;
    if (seen) places[wanted] = {x, y, wanted};
    return places;
}

}  // namespace

struct SheetPlot::Parts {
    explicit Parts(QCustomPlot& of);

    QCustomPlot& plot;
    QCPAxisRect& area;
    SheetLine *header, *footer, *x_title, *y_title, *y_title_above;
    std::array<QCPCurve*, MarkSlots> marks{};
    std::array<QCPCurve*, CurveSlots> curves{};
    std::array<QCPCurve*, PointSlots> set_lines{}, set_symbols{};
    QCPItemLine *x_origin, *y_origin;  // where the other axis crosses
    std::vector<SheetFreeText*> texts;
    std::vector<int> text_numbers;  // of the texts shown
    SheetLegend* legend;
    std::unique_ptr<SheetLabels> labels;
    QSharedPointer<SheetTicker> x_ticker, y_ticker, y2_ticker;

    GraphDocument drawn;
    bool has_drawn = false;
    std::array<std::vector<SeenPoint>, CurveSlots> curves_seen;
    std::array<std::vector<SeenPoint>, PointSlots> sets_seen;
    std::vector<SeenPoint> symbols;  // critical points and measured points, for the labels
    bool labels_stand = false;
    QRect labels_for;

    void lay_out();
    QCPCurve* new_curve();
    void draw_axes(const GraphDocument& document, const ShownAxes& axes);
    void draw_series(const GraphDocument& document, const ShownAxes& axes, bool all);
    void draw_texts(const GraphDocument& document);
    void draw_legend(const GraphDocument& document);
    void wish_labels(const GraphDocument& document, const ShownAxes& axes);
    LineCells line_cells() const;
    void place_labels();
    std::vector<std::pair<SheetHit, QRectF>> boxes() const;
};

SheetPlot::Parts::Parts(QCustomPlot& of)
    : plot(of),
      area(*of.axisRect()),
      header(new SheetLine(of, 6)),
      footer(new SheetLine(of, 0)),
      x_title(new SheetLine(of, 4, &area)),
      y_title(new SheetLine(of, 4, &area)),
      y_title_above(new SheetLine(of, 4)),
      x_origin(new QCPItemLine(&of)),
      y_origin(new QCPItemLine(&of)),
      legend(new SheetLegend(of)),
      x_ticker(QSharedPointer<SheetTicker>::create(of, area, QCPAxis::atBottom)),
      y_ticker(QSharedPointer<SheetTicker>::create(of, area, QCPAxis::atLeft)),
      y2_ticker(QSharedPointer<SheetTicker>::create(of, area, QCPAxis::atRight)) {
    plot.setAutoAddPlottableToLegend(false);
    plot.legend->setVisible(false);
    plot.addLayer(QStringLiteral("covered labels"), plot.layer(QStringLiteral("axes")));
    plot.addLayer(QStringLiteral("labels"), plot.layer(QStringLiteral("covered labels")));
    labels = std::make_unique<SheetLabels>(plot, *plot.layer(QStringLiteral("labels")),
                                           *plot.layer(QStringLiteral("covered labels")));
    legend->setLayer(QStringLiteral("legend"));
    for (QCPItemLine* line : {x_origin, y_origin}) {
        line->setSelectable(false);
        line->setVisible(false);
    }
    // In the order in which they lie over each other.
    for (std::size_t i = 0; i < MarkSlots; ++i)
        if (i + FirstMark < mark_crit_measured) marks[i] = new_curve();
    for (QCPCurve*& curve : curves) curve = new_curve();
    for (std::size_t i = 0; i < PointSlots; ++i) {
        set_lines[i] = new_curve();
        set_symbols[i] = new_curve();
    }
    for (QCPCurve*& mark : marks)
        if (mark == nullptr) mark = new_curve();
    lay_out();
}

QCPCurve* SheetPlot::Parts::new_curve() {
    auto* curve = new SheetCurve(plot.xAxis, plot.yAxis);
    curve->setSelectable(QCP::stNone);
    curve->setVisible(false);
    return curve;
}

// Header, title of y above, [title of y | area of the axes | room of a legend], title of x, footer.
void SheetPlot::Parts::lay_out() {
    QCPLayoutGrid& rows = *plot.plotLayout();
    rows.take(&area);
    rows.simplify();
    auto* middle = new QCPLayoutGrid;
    middle->addElement(0, 0, y_title);
    middle->addElement(0, 1, &area);
    middle->addElement(0, 2, new LegendRoom(plot, *legend));
    middle->setColumnSpacing(0);
    for (const int column : {0, 2}) middle->setColumnStretchFactor(column, 0.001);
    const std::array<QCPLayoutElement*, 5> all = {header, y_title_above, middle, x_title, footer};
    for (int row = 0; row < static_cast<int>(all.size()); ++row) {
        rows.addElement(row, 0, all[static_cast<std::size_t>(row)]);
        if (row != 2) rows.setRowStretchFactor(row, 0.001);
    }
    rows.setRowSpacing(0);
    rows.setMargins(QMargins(10, 8, 14, 8));
}

void SheetPlot::Parts::draw_axes(const GraphDocument& document, const ShownAxes& axes) {
    x_ticker->set(shown_x(document), axes.x, document.x.number_turn);
    y_ticker->set(shown_y(document), axes.y, document.y.number_turn);
    // The axis on the right has the steps of the left one.
    AxisDesign right = document.y2.digits > 0 ? document.y2 : shown_y(document);
    right.step = shown_y(document).step;
    y2_ticker->set(right, axes.y, document.y2.number_turn);
    for (QCPAxis* axis : {plot.xAxis, plot.xAxis2}) set_axis(*axis, axes.x, x_ticker);
    set_axis(*plot.yAxis, axes.y, y_ticker);
    set_axis(*plot.yAxis2, axes.y, y2_ticker);
    style_sheet_of(plot, document);
    const QPen line(sheet_color(document.colors.axes), 1);
    const auto cross = [&](QCPItemLine& item, const ShownAxis& axis, const std::optional<double>& origin) {
        const bool shown = origin && *origin > axis.low && *origin < axis.high;
        item.setVisible(shown);
        item.setPen(line);
        return shown;
    };
    if (const auto& at = shown_x(document).origin; cross(*x_origin, axes.x, at)) {
        x_origin->start->setCoords(*at, axes.y.low);
        x_origin->end->setCoords(*at, axes.y.high);
    }
    if (const auto& at = shown_y(document).origin; cross(*y_origin, axes.y, at)) {
        y_origin->start->setCoords(axes.x.low, *at);
        y_origin->end->setCoords(axes.x.high, *at);
    }
}

void SheetPlot::Parts::draw_series(const GraphDocument& document, const ShownAxes& axes, bool all) {
    const auto changed = [all](const Series& now, const Series& before) {
        return all || !(now.points == before.points) || !(now.style == before.style);
    };
    const auto set_line = [&](QCPCurve& curve, const Series& series, const QPen& pen) {
        curve.setPen(pen);
        curve.setVisible(pen.style() != Qt::NoPen && !series.points.empty());
        curve.setScatterStyle(QCPScatterStyle(QCPScatterStyle::ssNone));
        curve.setLineStyle(QCPCurve::lsLine);
        std::vector<SeenPoint> seen;
        if (curve.visible()) seen = line_in_sight(document, series, axes);
        set_points(curve, seen);
        return seen;
    };
    const auto set_symbols_of = [&](QCPCurve& curve, const Series& series) {
        const QCPScatterStyle symbol = symbol_of(series.style);
        curve.setPen(Qt::NoPen);
        curve.setLineStyle(QCPCurve::lsNone);
        curve.setScatterStyle(symbol);
        curve.setVisible(!symbol.isNone() && !series.points.empty());
        std::vector<SeenPoint> seen = points_in_sight(document, series, axes);
        set_points(curve, curve.visible() ? seen : std::vector<SeenPoint>());
        return seen;
    };
    const auto set_either = [&](QCPCurve& curve, const Series& series, const QPen& pen) {
        return series.style.line == LinePattern::points_only ? set_symbols_of(curve, series)
                                                             : set_line(curve, series, pen);
    };
    for (std::size_t i = 0; i < CurveSlots; ++i) {
        const Series& series = document.curves[i].series;
        if (changed(series, drawn.curves[i].series))
            curves_seen[i] = set_either(*curves[i], series, curve_pen(series.style));
    }
    for (std::size_t i = 0; i < PointSlots; ++i) {
        const Series& series = document.sets[i].series;
        if (!changed(series, drawn.sets[i].series)) continue;
        set_line(*set_lines[i], series, curve_pen(series.style));
        sets_seen[i] = set_symbols_of(*set_symbols[i], series);
    }
    for (std::size_t i = 0; i < MarkSlots; ++i) {
        const Series& series = document.marks[i].series;
        if (changed(series, drawn.marks[i].series)) set_either(*marks[i], series, mark_pen(series.style));
    }
    symbols.clear();
    const auto keep_clear = [&](const std::vector<SeenPoint>& seen) {
        for (const SeenPoint& point : seen)
            if (symbols.size() < MostSymbols) symbols.push_back(point);
    };
    for (const int number : {mark_crit_measured, mark_crit_calculated})
        keep_clear(points_in_sight(document, document.mark(number).series, axes));
    for (const std::vector<SeenPoint>& seen : sets_seen) keep_clear(seen);
}

void SheetPlot::Parts::draw_texts(const GraphDocument& document) {
    const auto color_of_text = [&](const SheetText& text) {
        return sheet_color(text.color.value_or(document.colors.text));
    };
    std::vector<std::pair<int, const SheetText*>> free;
    const auto set_line = [&](SheetLine& line, const SheetText& text, int number, Qt::Alignment alignment) {
        const bool in_line = text.visible && !is_moved(text);
        line.set(in_line ? sheet_text(text.text) : QString(), sheet_font(text.font), color_of_text(text),
                 TextTurn::horizontal, alignment);
        if (text.visible && is_moved(text)) free.emplace_back(number, &text);
    };
    set_line(*header, document.header, header_text, Qt::AlignHCenter);
    set_line(*footer, document.footer, footer_text, Qt::AlignLeft);
    for (std::size_t i = 0; i < document.texts.size(); ++i)
        free.emplace_back(static_cast<int>(i), &document.texts[i]);

    const QColor ink = sheet_color(document.colors.text);
    x_title->set(sheet_text(shown_x_title(document)), sheet_font(shown_x(document).title_font), ink);
    const TextTurn turn = document.y.title_turn;
    const QString y_text = sheet_text(shown_y_title(document));
    const QFont y_font = sheet_font(shown_y(document).title_font);
    const bool is_above = turn == TextTurn::horizontal;
    y_title->set(is_above ? QString() : y_text, y_font, ink, is_above ? TextTurn::upwards : turn);
    y_title_above->set(is_above ? y_text : QString(), y_font, ink, TextTurn::horizontal, Qt::AlignLeft);

    text_numbers.clear();
    while (texts.size() < free.size()) {
        texts.push_back(new SheetFreeText(plot));
        texts.back()->setLayer(QStringLiteral("legend"));
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i >= free.size()) {
            texts[i]->setVisible(false);
            continue;
        }
        const SheetText& text = *free[i].second;
        texts[i]->set(text, sheet_font(text.font), color_of_text(text));
        text_numbers.push_back(free[i].first);
    }
}

void SheetPlot::Parts::draw_legend(const GraphDocument& document) {
    std::vector<LegendEntry> entries;
    const auto add = [&](const Series& series, bool is_set) {
        if (series.points.empty() || !series.in_legend || series.legend.empty()) return;
        LegendEntry entry{.text = sheet_text(series.legend), .pen = curve_pen(series.style)};
        if (is_set || series.style.line == LinePattern::points_only) entry.symbol = symbol_of(series.style);
        entries.push_back(std::move(entry));
    };
    for (const CurveSlot& slot : document.curves) add(slot.series, false);
    for (const PointSlot& slot : document.sets) add(slot.series, true);
    legend->set(document.legend, document.colors, std::move(entries));
}

void SheetPlot::Parts::wish_labels(const GraphDocument& document, const ShownAxes& axes) {
    const QFont font = label_font();
    const QFontMetricsF metrics(font);
    const QColor ink = sheet_color(document.colors.labels);
    const QColor ground = sheet_color(document.colors.sheet, text_ground_alpha);
    std::vector<LabelWish> wishes;
    const auto wish = [&](const SheetHit& of, const SeriesLabel& label, const QPen& border) {
        LabelWish result;
        result.of = of;
        result.text = sheet_text(label.text);
        result.border = border;
        result.ink = ink;
        result.ground = ground;
        result.dx = label.dx;
        result.dy = label.dy;
        return result;
    };
    const auto add = [&](SheetPart part, std::size_t i, const Series& series,
                         const std::vector<SeenPoint>& seen) {
        const SeriesLabel& label = series.label;
        if (!label.visible || label.text.empty() || series.points.empty()) return;
        const bool is_line = part == SheetPart::curve_label && series.style.line != LinePattern::points_only;
        const Color color = is_line ? series.style.color : series.style.symbol_color;
        LabelWish one = wish({part, static_cast<int>(i) + 1}, label, QPen(sheet_color(color), 1));
        one.series = line_number(part, i);
        one.wanted = static_cast<std::size_t>(std::max(label.point, 1) - 1);
        one.points.reserve(seen.size());
        for (const SeenPoint& point : seen)
            if (!std::isnan(point.x)) one.points.push_back(point);
        wishes.push_back(std::move(one));
    };
    for (std::size_t i = 0; i < MarkSlots; ++i) {
        const Mark& mark = document.marks[i];
        const SeriesLabel& label = mark.series.label;
        if (!mark.shown() || !label.visible || label.text.empty()) continue;
        LabelWish one =
            wish({SheetPart::mark_label, static_cast<int>(i) + FirstMark}, label, QPen(Qt::NoPen));
        one.series = line_number(SheetPart::mark_label, i);
        one.points = along_mark(document, mark, axes, one.wanted);
        if (one.points.empty()) continue;
        one.beside = one.points.front().x == one.points.back().x;
        // Blanks before the text move it along.
        const QString text = one.text;
        one.text = text.trimmed();
        one.indent = metrics.horizontalAdvance(text.left(text.indexOf(one.text)));
        wishes.push_back(std::move(one));
    }
    for (std::size_t i = 0; i < CurveSlots; ++i)
        add(SheetPart::curve_label, i, document.curves[i].series, curves_seen[i]);
    for (std::size_t i = 0; i < PointSlots; ++i)
        add(SheetPart::points_label, i, document.sets[i].series, sets_seen[i]);
    labels->set(std::move(wishes), font);
    labels_stand = false;
}

// What is drawn, by the numbers of line_number.
LineCells SheetPlot::Parts::line_cells() const {
    LineCells cells(area.rect());
    std::vector<QPointF> line;
    const auto add = [&](const QCPCurve& curve, int series) {
        if (!curve.visible() || curve.lineStyle() == QCPCurve::lsNone) return;
        line.clear();
        for (const QCPCurveData& point : *curve.data())
            line.emplace_back(plot.xAxis->coordToPixel(point.key), plot.yAxis->coordToPixel(point.value));
        cells.add(line, series);
    };
    for (std::size_t i = 0; i < CurveSlots; ++i) add(*curves[i], line_number(SheetPart::curve_label, i));
    for (std::size_t i = 0; i < PointSlots; ++i) add(*set_lines[i], line_number(SheetPart::points_label, i));
    for (std::size_t i = 0; i < MarkSlots; ++i) add(*marks[i], line_number(SheetPart::mark_label, i));
    return cells;
}

void SheetPlot::Parts::place_labels() {
    if (!has_drawn || (labels_stand && labels_for == area.rect())) return;
    Surroundings around{QRectF(area.rect()), {}, {}, line_cells()};
    if (const QRectF box = legend->box(); !box.isEmpty()) around.taken.push_back(box);
    for (std::size_t i = 0; i < text_numbers.size(); ++i)
        if (texts[i]->visible()) around.taken.push_back(texts[i]->box());
    for (const SeenPoint& point : symbols)
        around.symbols.emplace_back(plot.xAxis->coordToPixel(point.x), plot.yAxis->coordToPixel(point.y));
    labels->place(std::move(around));
    labels_stand = true;
    labels_for = area.rect();
}

// What lies on top comes first.
std::vector<std::pair<SheetHit, QRectF>> SheetPlot::Parts::boxes() const {
    std::vector<std::pair<SheetHit, QRectF>> all;
    for (const PlacedLabel& label : labels->placed()) all.emplace_back(label.of, label.box);
    for (std::size_t i = 0; i < text_numbers.size(); ++i) {
        if (!texts[i]->visible()) continue;
        const int number = text_numbers[i];
        const SheetHit of = number == header_text   ? SheetHit{SheetPart::header}
                            : number == footer_text ? SheetHit{SheetPart::footer}
                                                    : SheetHit{SheetPart::text, number};
        all.emplace_back(of, texts[i]->box());
    }
    all.emplace_back(SheetHit{SheetPart::legend}, legend->box());
    const std::array<std::pair<const SheetLine*, SheetPart>, 5> lines = {
        {{header, SheetPart::header},
         {footer, SheetPart::footer},
         {x_title, SheetPart::x_title},
         {y_title, SheetPart::y_title},
         {y_title_above, SheetPart::y_title}}};
    for (const auto& [line, part] : lines) all.emplace_back(SheetHit{part}, line->text_box());
    return all;
}

SheetPlot::SheetPlot(QCustomPlot& plot) : QObject(&plot), parts_(std::make_unique<Parts>(plot)) {
    // Labels keep their distance in pixels, so they are placed when the area of the axes is known.
    connect(&plot, &QCustomPlot::afterLayout, this, [this] { parts_->place_labels(); });
}

SheetPlot::~SheetPlot() = default;

void SheetPlot::draw(const GraphDocument& document, bool queued) {
    Parts& parts = *parts_;
    if (parts.has_drawn && parts.drawn == document) return;
    const ShownAxes axes = shown_axes(document);
    const bool all = !parts.has_drawn || !(axes == shown_axes(parts.drawn)) ||
                     document.Interchanged != parts.drawn.Interchanged;
    parts.draw_axes(document, axes);
    parts.draw_series(document, axes, all);
    parts.draw_texts(document);
    parts.draw_legend(document);
    parts.wish_labels(document, axes);
    parts.drawn = document;
    parts.has_drawn = true;
    parts.plot.replot(queued ? QCustomPlot::rpQueuedReplot : QCustomPlot::rpRefreshHint);
}

void SheetPlot::draw_fast(bool on) {
    parts_->plot.setNotAntialiasedElements(on ? QCP::aeAll : QCP::aeNone);
    if (!on) parts_->plot.replot(QCustomPlot::rpQueuedReplot);
}

void SheetPlot::fonts_changed() {
    if (!parts_->has_drawn) return;
    const GraphDocument document = parts_->drawn;
    parts_->has_drawn = false;
    draw(document, true);
}

QRectF SheetPlot::area() const { return parts_->area.rect(); }

std::vector<PlacedLabel> SheetPlot::labels() const { return parts_->labels->placed(); }

QRectF SheetPlot::legend_box() const { return parts_->legend->box(); }

SheetHit SheetPlot::part_at(const QPointF& pixel) const {
    for (const auto& [part, box] : parts_->boxes())
        if (box.contains(pixel)) return part;
    if (area().contains(pixel)) return {SheetPart::area};
    return {};
}

QRectF SheetPlot::box_of(const SheetHit& part) const {
    for (const auto& [of, box] : parts_->boxes())
        if (of == part && !box.isEmpty()) return box;
    return {};
}

}  // namespace quom

#include "ui/charts/state_chart_plot.h"

#include <qcustomplot.h>

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "diagrams/chart_labels.h"
#include "diagrams/chart_style.h"
#include "diagrams/chart_texts.h"
#include "ui/charts/sheet_axes.h"
#include "ui/charts/sheet_texts.h"
#include "ui/charts/state_chart_parts.h"

namespace quom {
namespace {

constexpr double number_points = 9, title_points = 10, legend_points = 9, read_out_points = 8.5;
constexpr double log_decades = 6;   // up to which 2 and 5 have numbers
constexpr double label_margin = 3;  // ground left and right of a text
constexpr double marked_room = 21;  // that labels leave to a marked state
const QString labels_layer = QStringLiteral("labels"), pointer_layer = QStringLiteral("pointer");

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// Chart coordinates to pixels from the corner of an area.
QPointF place_in(const StateChart& chart, const ChartState& state, const QSizeF& area) {
    const double X = chart.x.place(chart.shown(state, chart.x.quantity)),
                 Y = chart.y.place(chart.shown(state, chart.y.quantity));
    return {X * area.width(), (1.0 - Y) * area.height()};
}

bool is_inside(const QPointF& point, const QSizeF& area) {
    return point.x() >= 0 && point.x() <= area.width() && point.y() >= 0 && point.y() <= area.height();
}

void style_axis(QCPAxis& axis, const SheetStyle& style) {
    const QPen line(chart_color(style.axis), 1);
    axis.setBasePen(line);
    axis.setTickPen(line);
    axis.setSubTickPen(line);
    axis.setTickLength(5, 0);
    axis.setSubTickLength(3, 0);
    axis.setTickLabelFont(chart_font(number_points));
    axis.setTickLabelColor(chart_color(style.ink));
    QCPGrid& grid = *axis.grid();
    grid.setPen(QPen(chart_color(style.grid_major, style.grid_major_alpha), 1));
    grid.setSubGridPen(QPen(chart_color(style.grid_minor, style.grid_minor_alpha), 1));
    grid.setZeroLinePen(Qt::NoPen);
    grid.setSubGridVisible(true);
}

void set_axis(QCPAxis& axis, QCPAxis& opposite, const ChartAxis& shown,
              const QSharedPointer<SheetTicker>& ticker) {
    ticker->set({.step = shown.log ? std::nullopt : std::optional(shown.major)},
                {.low = shown.low, .high = shown.high, .log = shown.log}, TextTurn::horizontal, log_decades);
    for (QCPAxis* one : {&axis, &opposite}) {
        one->setScaleType(shown.log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
        one->setRange(shown.low, shown.high);
        one->setTicker(ticker);
    }
}

}  // namespace

struct StateChartPlot::Parts {
    explicit Parts(QCustomPlot& of);

    QCustomPlot& plot;
    QCPAxisRect& area;
    SheetLine *header, *footer, *x_title, *y_title;
    ChartLegendRow* legend;
    ChartInk* ink;
    ChartReadOut* read_out;
    std::vector<QCPCurve*> curves;  // in the order in which they lie over each other; those behind are empty
    QSharedPointer<SheetTicker> x_ticker, y_ticker;

    StateChart chart;
    bool black = false;
    std::vector<ChartState> marked;
    std::vector<PlacedLineLabel> placed;
    bool stand = false;  // the labels, for this area:
    QRect stand_in;
    bool dragged = false;  // labels move with the lines

    const SheetStyle& style() const { return black ? black_sheet : light_sheet; }
    void lay_out();
    void draw_axes();
    void draw_lines();
    void draw_texts();
    void place();
    QPointF corner() const { return {double(area.left()), double(area.bottom() - area.height())}; }
    QSizeF size() const { return {double(area.width()), double(area.height())}; }
};

StateChartPlot::Parts::Parts(QCustomPlot& of)
    : plot(of),
      area(*of.axisRect()),
      header(new SheetLine(of, 4)),
      footer(new SheetLine(of, 0)),
      x_title(new SheetLine(of, 6, &area)),
      y_title(new SheetLine(of, 4, &area)),
      legend(new ChartLegendRow(of)),
      x_ticker(QSharedPointer<SheetTicker>::create(of, area, QCPAxis::atBottom)),
      y_ticker(QSharedPointer<SheetTicker>::create(of, area, QCPAxis::atLeft)) {
    plot.setAutoAddPlottableToLegend(false);
    plot.legend->setVisible(false);
    plot.addLayer(labels_layer, plot.layer(QStringLiteral("axes")));
    // Its own buffer: the pointer moves without a new drawing of the chart.
    plot.addLayer(pointer_layer, plot.layer(QStringLiteral("overlay")));
    plot.layer(pointer_layer)->setMode(QCPLayer::lmBuffered);
    ink = new ChartInk(plot, labels_layer);
    read_out = new ChartReadOut(plot, pointer_layer);
    for (QCPAxis* axis : {plot.xAxis2, plot.yAxis2}) {
        axis->setVisible(true);
        axis->setTickLabels(false);
        axis->grid()->setVisible(false);
    }
    lay_out();
}

// Header, legend, [title of y | area of the axes], title of x, footer.
void StateChartPlot::Parts::lay_out() {
    QCPLayoutGrid& rows = *plot.plotLayout();
    rows.take(&area);
    rows.simplify();
    auto* middle = new QCPLayoutGrid;
    middle->addElement(0, 0, y_title);
    middle->addElement(0, 1, &area);
    middle->setColumnSpacing(0);
    middle->setColumnStretchFactor(0, 0.001);
    QCPLayoutElement* const all[] = {header, legend, middle, x_title, footer};
    int row = 0;
    for (QCPLayoutElement* element : all) {
        rows.addElement(row, 0, element);
        if (element != middle) rows.setRowStretchFactor(row, 0.001);
        ++row;
    }
    rows.setRowSpacing(0);
    rows.setMargins(QMargins(10, 6, 14, 6));
}

void StateChartPlot::Parts::draw_axes() {
    plot.setBackground(QBrush(chart_color(style().ground)));
    for (QCPAxis* axis : {plot.xAxis, plot.xAxis2, plot.yAxis, plot.yAxis2}) style_axis(*axis, style());
    set_axis(*plot.xAxis, *plot.xAxis2, chart.x, x_ticker);
    set_axis(*plot.yAxis, *plot.yAxis2, chart.y, y_ticker);
}

void StateChartPlot::Parts::draw_lines() {
    while (curves.size() < chart.lines.size()) {
        curves.push_back(new QCPCurve(plot.xAxis, plot.yAxis));
        curves.back()->setSelectable(QCP::stNone);
    }
    for (std::size_t i = 0; i < curves.size(); ++i) {
        curves[i]->setVisible(i < chart.lines.size());
        if (i >= chart.lines.size()) {
            curves[i]->data()->clear();
            continue;
        }
        const ChartLine& line = chart.lines[i];
        QVector<QCPCurveData> data;
        data.reserve(static_cast<qsizetype>(line.vertices.size()));
        for (const ChartVertex& vertex : line.vertices)
            data.push_back({static_cast<double>(data.size()), vertex.x, vertex.y});
        curves[i]->data()->set(data, true);
        curves[i]->setPen(chart_pen(line_style(line.family), black));
    }
}

void StateChartPlot::Parts::draw_texts() {
    const QColor ink_color = chart_color(style().ink);
    header->set(text_of(chart.header), chart_font(header_points, true), ink_color);
    footer->set(text_of(chart.footer), chart_font(footer_points), chart_color(style().hint),
                TextTurn::horizontal, Qt::AlignLeft);
    x_title->set(text_of(chart.x.text), chart_font(title_points), ink_color);
    y_title->set(text_of(chart.y.text), chart_font(title_points), ink_color, TextTurn::upwards);
    std::vector<ChartLegendRow::Entry> entries;
    for (const LegendRow& row : chart_legend(chart))
        entries.push_back({text_of(row.text), chart_pen(line_style(row.family), black)});
    legend->set(std::move(entries), chart_font(legend_points), ink_color);
    ink->font = chart_font(label_points);
    read_out->font = chart_font(read_out_points);
    for (QColor* color : {&ink->ink, &read_out->ink}) *color = ink_color;
    for (QColor* color : {&ink->ground, &read_out->ground}) *color = chart_color(style().ground);
}

// Labels keep their distance in pixels, so they are placed when the area of the axes is known.
void StateChartPlot::Parts::place() {
    if (dragged || (stand && stand_in == area.rect())) return;
    stand = true;
    stand_in = area.rect();
    ink->labels.clear();
    ink->critical.clear();
    ink->marked.clear();
    placed.clear();
    ink->corner = corner();
    if (!chart.exists() || chart.lines.empty() || size().width() < 20 || size().height() < 20) return;
    const QFontMetricsF metrics(ink->font);
    LabelInput input =
        chart_label_input(chart, size().width(), size().height(), [&metrics](const std::string& text) {
            return TextSize{metrics.horizontalAdvance(text_of(text)) + 2 * label_margin, metrics.height()};
        });
    const QPointF critical = place_in(chart, chart.critical, size());
    if (is_inside(critical, size())) ink->critical.push_back(critical);
    for (const ChartState& state : marked) {
        const QPointF at = place_in(chart, state, size());
        if (!is_inside(at, size())) continue;
        ink->marked.push_back(at);
        input.blocked.push_back(
            {.centre = {at.x(), at.y()}, .width = marked_room, .height = marked_room, .angle = 0});
    }
    placed = place_labels(input);
    for (const PlacedLineLabel& label : placed) {
        const LineStyle& line = line_style(chart.lines[label.line].family);
        ink->labels.push_back({label, chart_color(black ? line.black : line.light)});
    }
}

StateChartPlot::StateChartPlot(QCustomPlot& plot) : QObject(&plot), parts_(std::make_unique<Parts>(plot)) {
    connect(&plot, &QCustomPlot::afterLayout, this, [this] { parts_->place(); });
}

StateChartPlot::~StateChartPlot() = default;

void StateChartPlot::draw(const StateChart& chart, bool black, bool queued) {
    Parts& parts = *parts_;
    parts.chart = chart;
    parts.black = black;
    parts.stand = parts.dragged = false;
    parts.read_out->lines.clear();
    parts.draw_axes();
    parts.draw_lines();
    parts.draw_texts();
    parts.plot.replot(queued ? QCustomPlot::rpQueuedReplot : QCustomPlot::rpRefreshHint);
}

void StateChartPlot::mark(std::vector<ChartState> states) {
    parts_->marked = std::move(states);
    parts_->stand = false;
}

void StateChartPlot::fonts_changed() {
    parts_->stand = false;
    parts_->draw_axes();
    parts_->draw_texts();
    parts_->plot.replot(QCustomPlot::rpQueuedReplot);
}

void StateChartPlot::show_cross(const QPointF& pixel, const ChartState& state) {
    QStringList lines;
    for (const std::string& line : state_lines(parts_->chart, state)) lines << text_of(line);
    parts_->read_out->show(pixel, lines);
    parts_->plot.layer(pointer_layer)->replot();
}

void StateChartPlot::hide_cross() {
    if (parts_->read_out->lines.isEmpty()) return;
    parts_->read_out->lines.clear();
    parts_->plot.layer(pointer_layer)->replot();
}

void StateChartPlot::drag(const QPointF& by) {
    Parts& parts = *parts_;
    const ChartAxis &x = parts.chart.x, &y = parts.chart.y;
    const double X = by.x() / parts.size().width(), Y = by.y() / parts.size().height();
    const auto shift = [&](QCPAxis& axis, QCPAxis& opposite, const ChartAxis& shown,
                           const QSharedPointer<SheetTicker>& ticker, double part) {
        ChartAxis moved = shown;
        moved.low = shown.shown_at(part);
        moved.high = shown.shown_at(1.0 + part);
        set_axis(axis, opposite, moved, ticker);
    };
    shift(*parts.plot.xAxis, *parts.plot.xAxis2, x, parts.x_ticker, -X);
    shift(*parts.plot.yAxis, *parts.plot.yAxis2, y, parts.y_ticker, Y);
    parts.read_out->lines.clear();
    parts.dragged = true;
    parts.ink->corner = parts.corner() + by;
    parts.plot.replot(QCustomPlot::rpQueuedReplot);
}

QRectF StateChartPlot::area() const { return parts_->area.rect(); }

const std::vector<PlacedLineLabel>& StateChartPlot::labels() const { return parts_->placed; }

std::vector<QRectF> StateChartPlot::texts_around() const {
    std::vector<QRectF> boxes = parts_->legend->boxes();
    for (const SheetLine* line : {parts_->header, parts_->footer, parts_->x_title, parts_->y_title})
        boxes.push_back(line->text_box());
    return boxes;
}

}  // namespace quom

// The drawing of state charts: thirteen substances in three charts with the fonts of the drawing.
#include "ui/charts/state_chart_plot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <cmath>

#include "diagrams/chart_fixture.h"
#include "diagrams/chart_style.h"
#include "diagrams/chart_texts.h"
#include "ui/charts/state_chart_picture.h"

namespace quom {
namespace {

using namespace test;
using ::testing::HasSubstr;

struct Drawn {
    explicit Drawn(const StateChart& chart, bool black = false, QSize size = {1280, 900},
                   std::vector<ChartState> marked = {})
        : sheet(plot) {
        plot.resize(size);
        plot.setViewport(QRect(QPoint(0, 0), size));
        sheet.mark(std::move(marked));
        sheet.draw(chart, black);
    }
    QColor pixel(const QPointF& at) {
        const QPixmap picture = plot.toPixmap();
        return picture.toImage().pixelColor(at.toPoint());
    }
    QPointF place(const StateChart& chart, const ChartState& state) const {
        return {plot.xAxis->coordToPixel(chart.shown(state, chart.x.quantity)),
                plot.yAxis->coordToPixel(chart.shown(state, chart.y.quantity))};
    }
    QCustomPlot plot;
    StateChartPlot sheet;
};

TEST(StateChartPlot, labels_never_overlap_and_every_text_is_inside_the_picture) {
    for (const QSize& size : {QSize(1280, 900), QSize(620, 430)}) {
        each_chart(
            [&](const StateChart& chart, const std::string& name) {
                const Drawn drawn(chart, false, size);
                const auto& labels = drawn.sheet.labels();
                EXPECT_GT(labels.size(), size.width() > 1000 ? 25u : 8u) << name;
                const QRectF area = drawn.sheet.area(), picture(QPointF(0, 0), size);
                for (std::size_t i = 0; i < labels.size(); ++i) {
                    for (std::size_t k = 0; k < i; ++k)
                        EXPECT_FALSE(boxes_meet(labels[i].box, labels[k].box, 1))
                            << name << ": " << labels[i].text << " and " << labels[k].text;
                    const LabelBox& box = labels[i].box;
                    QTransform turned;
                    turned.rotate(box.angle);
                    const QRectF around =
                        turned.mapRect(QRectF(-box.width / 2, -box.height / 2, box.width, box.height))
                            .translated(box.centre.x, box.centre.y);
                    EXPECT_TRUE(QRectF(QPointF(0, 0), area.size()).contains(around))
                        << name << ": " << labels[i].text;
                }
                for (const QRectF& box : drawn.sheet.texts_around())
                    EXPECT_TRUE(picture.contains(box) && !box.intersects(area.adjusted(1, 1, -1, -1)))
                        << name << ": text at " << box.left() << ' ' << box.top() << ' ' << box.width();
                // The numbers of the axes stand apart, and inside the picture.
                for (const QCPAxis* axis : {drawn.plot.xAxis, drawn.plot.yAxis}) {
                    const bool across = axis == drawn.plot.xAxis;
                    const QFontMetricsF metrics(axis->tickLabelFont());
                    double last = -1e9, count = 0;
                    for (qsizetype i = 0; i < axis->tickVector().size(); ++i) {
                        const QString text = axis->tickVectorLabels().value(i);
                        if (text.isEmpty()) continue;
                        ++count;
                        const double half =
                                         across ? metrics.horizontalAdvance(text) / 2 : metrics.height() / 2,
                                     at = axis->coordToPixel(axis->tickVector()[i]), low = across ? at : -at;
                        EXPECT_GT(low - half, last) << name << ": " << qPrintable(text);
                        last = low + half;
                        EXPECT_LE(at + half, (across ? size.width() : size.height())) << name;
                    }
                    EXPECT_GE(count, 2) << name;
                }
            },
            "T=C,p=bar");
    }
}

TEST(StateChartPlot, lines_have_the_style_and_the_place_of_their_family) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    for (const ChartKind kind : chart_kinds) {
        const StateChart chart = make_state_chart(*fluid, kind);
        for (const bool black : {false, true}) {
            Drawn drawn(chart, black);
            EXPECT_EQ(drawn.pixel({2, 2}), QColor(black ? "#000000" : "#FBFBFB"));
            EXPECT_EQ(drawn.plot.xAxis->scaleType(), QCPAxis::stLinear);
            EXPECT_EQ(drawn.plot.yAxis->scaleType(),
                      kind == ChartKind::log_ph ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
            ASSERT_EQ(drawn.plot.plottableCount(), static_cast<int>(chart.lines.size()));
            int last = -1;
            for (std::size_t i = 0; i < chart.lines.size(); ++i) {
                auto* curve = qobject_cast<QCPCurve*>(drawn.plot.plottable(static_cast<int>(i)));
                const ChartLine& line = chart.lines[i];
                const LineStyle& style = line_style(line.family);
                EXPECT_EQ(curve->pen().color().rgb() & 0xFFFFFF, black ? style.black : style.light);
                EXPECT_EQ(curve->pen().style(), style.dashes().empty() ? Qt::SolidLine : Qt::CustomDashLine);
                EXPECT_DOUBLE_EQ(curve->pen().widthF(), style.width);
                EXPECT_GE(static_cast<int>(line.family), last);
                last = static_cast<int>(line.family);
                ASSERT_EQ(curve->data()->size(), static_cast<int>(line.vertices.size()));
                EXPECT_DOUBLE_EQ(curve->data()->at(0)->key, line.vertices[0].x);
                EXPECT_DOUBLE_EQ(curve->data()->at(0)->value, line.vertices[0].y);
            }
        }
    }
}

// The critical point is drawn where T(cr), p(cr) are, a marked state with a ring, a label over its own line.
TEST(StateChartPlot, points_and_labels_stand_where_they_belong) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    for (const ChartKind kind : chart_kinds) {
        const StateChart chart = make_state_chart(*fluid, kind);
        const ChartState state = stable_state(*chart.fluid, 400, 1000);
        Drawn drawn(chart, true, {1280, 900}, {state});
        EXPECT_GT(drawn.pixel(drawn.place(chart, chart.critical)).lightness(), 200);
        const QPointF at = drawn.place(chart, state);
        EXPECT_GT(drawn.pixel(at).lightness(), 200);
        EXPECT_GT(drawn.pixel(at + QPointF(7.5, 0)).lightness(), 150);
        EXPECT_LT(drawn.pixel(at + QPointF(5, 0)).lightness(), 100);
        for (const PlacedLineLabel& label : drawn.sheet.labels()) {
            const QPointF centre =
                drawn.sheet.area().topLeft() + QPointF(label.box.centre.x, label.box.centre.y);
            const double x = drawn.plot.xAxis->pixelToCoord(centre.x()),
                         y = drawn.plot.yAxis->pixelToCoord(centre.y());
            const ChartLine& line = chart.lines[label.line];
            if (label.beside || line.family == ChartFamily::limit) continue;
            const ChartState there = state_at(chart, x, y);
            ASSERT_TRUE(there.exists()) << label.text;
            const double found = chart.shown(there, quantity_of(line.family));
            const double scale = line.family == ChartFamily::x   ? 1.0
                                 : line.family == ChartFamily::h ? 300.0
                                 : line.family == ChartFamily::s ? 2.0
                                                                 : std::fabs(line.value);
            EXPECT_NEAR(found, line.value, 0.04 * scale) << label.text << " at " << x << ", " << y;
        }
    }
}

TEST(StateChartPlot, pictures_of_every_format_and_a_fault_for_none) {
    const auto fluid = starter_fluid(water, Eos::peng_robinson);
    const StateChart chart = make_state_chart(*fluid, ChartKind::Ts);
    for (const char* format : {"png", "bmp", "svg", "pdf", "emf", "wmf"}) {
        const PictureBytes picture =
            state_chart_bytes(chart, format, {.width = 200, .height = 140, .dpi = 72});
        EXPECT_TRUE(picture.fault.empty()) << picture.fault;
        EXPECT_GT(picture.bytes.size(), 5000) << format;
    }
    const QString svg = QString::fromUtf8(state_chart_bytes(chart, "svg").bytes);
    for (const char* text : {"Water   T-s diagram   Peng/Robinson", "saturation", "T / K", "s / (kJ/(kg K))"})
        EXPECT_TRUE(svg.contains(QString::fromUtf8(text))) << text;
    EXPECT_THAT(state_chart_bytes(chart, "gif").fault, HasSubstr("gif"));
    StateChart none;
    none.fault = "no chart";
    EXPECT_EQ(state_chart_bytes(none, "png").fault, "no chart");
    EXPECT_EQ(state_chart_picture(none, "a.png"), "no chart");
}

}  // namespace
}  // namespace quom

// Sheets as the drawing routine draws them: what is there, where it stands, how it looks, and every format.
#include "ui/charts/sheet_plot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QImage>
#include <QPrinter>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <set>

#include "diagrams/graph_view.h"
#include "ui/charts/sheet_axes.h"
#include "ui/charts/sheet_legend.h"
#include "ui/charts/sheet_picture.h"
#include "ui/charts/sheet_style.h"
#include "ui/charts/sheet_texts.h"
#include "ui/metafile_reader.h"
#include "ui/sample_sheets.h"

namespace quom {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

const GraphDocument& sample(const std::string& name) {
    static const std::vector<test::SampleSheet> all = test::sample_sheets();
    return std::ranges::find(all, name, &test::SampleSheet::name)->sheet;
}

// A sheet on a plot of 160 x 110 mm at 144 dpi, nearly.
struct Drawn {
    explicit Drawn(const GraphDocument& document, QSize size = {900, 620}) : sheet(plot) {
        plot.resize(size);
        plot.setViewport(QRect(QPoint(0, 0), size));
        sheet.draw(document);
    }
    std::vector<QCPCurve*> curves() const {
        std::vector<QCPCurve*> result;
        for (int i = 0; i < plot.plottableCount(); ++i)
            if (auto* curve = qobject_cast<QCPCurve*>(const_cast<QCustomPlot&>(plot).plottable(i));
                curve && curve->visible() && !curve->data()->isEmpty())
                result.push_back(curve);
        return result;
    }
    QStringList numbers(QCPAxis* axis) const {
        QStringList result;
        for (const QString& number : axis->tickVectorLabels())
            if (!number.isEmpty()) result << number;
        return result;
    }
    QCustomPlot plot;
    SheetPlot sheet;
};

int series_in_sight(const GraphDocument& document) {
    const ShownAxes axes = shown_axes(document);
    int count = 0;
    const auto add = [&](const Series& series) {
        if (series.style.line == LinePattern::points_only)
            count += !points_in_sight(document, series, axes).empty();
        else
            count += !line_in_sight(document, series, axes).empty();
    };
    for (const CurveSlot& slot : document.curves) add(slot.series);
    for (const PointSlot& slot : document.sets) add(slot.series);
    for (const Mark& mark : document.marks) add(mark.series);
    return count;
}

TEST(SheetPlot, every_sample_shows_its_series_inside_the_axes_and_its_texts_inside_the_picture) {
    for (const test::SampleSheet& sample : test::sample_sheets()) {
        SCOPED_TRACE(sample.name);
        const Drawn drawn(sample.sheet);
        const ShownAxes axes = shown_axes(sample.sheet);
        EXPECT_EQ(static_cast<int>(drawn.curves().size()), series_in_sight(sample.sheet));
        EXPECT_EQ(sample.name == "without_curves", drawn.curves().empty());
        for (const QCPCurve* curve : drawn.curves())
            for (const QCPCurveData& point : *curve->data())
                EXPECT_TRUE(std::isnan(point.key) ||
                            (axes.x.contains(point.key) && axes.y.contains(point.value)))
                    << point.key << " " << point.value;

        const QRectF picture = drawn.plot.viewport();
        int texts = 0;
        for (const QCPLayoutElement* element : drawn.plot.plotLayout()->elements(true)) {
            const auto* line = dynamic_cast<const SheetLine*>(element);
            if (line == nullptr || line->text_box().isEmpty()) continue;
            ++texts;
            EXPECT_TRUE(picture.contains(line->text_box()))
                << line->lines().join(QLatin1Char('|')).toStdString();
            EXPECT_FALSE(line->text_box().intersects(drawn.sheet.area()));
        }
        EXPECT_EQ(texts, 3) << "heading or footer, and both titles";
        EXPECT_GT(drawn.sheet.area().united(drawn.sheet.legend_box()).width(), 0.6 * picture.width());
        EXPECT_GT(drawn.sheet.area().width(), 0.45 * picture.width()) << "beside a large legend";
        EXPECT_GT(drawn.sheet.area().height(), 0.6 * picture.height());
        for (QCPAxis* axis : {drawn.plot.xAxis, drawn.plot.yAxis}) {
            const QStringList numbers = drawn.numbers(axis);
            EXPECT_GE(numbers.size(), 2);
            EXPECT_EQ(std::set<QString>(numbers.begin(), numbers.end()).size(),
                      static_cast<std::size_t>(numbers.size()))
                << "two ticks of one number: " << numbers.join(QLatin1Char(' ')).toStdString();
        }
    }
}

TEST(SheetPlot, labels_stand_inside_the_axes_clear_of_each_other_and_of_the_legend) {
    for (const QSize size : {QSize(900, 620), QSize(605, 416)})
        for (const test::SampleSheet& sample : test::sample_sheets()) {
            SCOPED_TRACE(sample.name);
            const Drawn drawn(sample.sheet, size);
            const std::vector<PlacedLabel> labels = drawn.sheet.labels();
            // What was put somewhere by hand stays there, also below a legend that fills a small picture.
            const std::size_t by_hand = size.width() < 700 && sample.name == "designed" ? 1 : 0;
            const auto covered = std::ranges::count_if(labels, &PlacedLabel::is_covered);
            EXPECT_LE(covered, size.width() < 700 ? 4 : 0) << "on a small sheet full of series";
            for (std::size_t i = 0; i < labels.size(); ++i) {
                EXPECT_TRUE(drawn.sheet.area().contains(labels[i].box)) << i;
                EXPECT_TRUE(i < by_hand || labels[i].is_covered ||
                            !drawn.sheet.legend_box().intersects(labels[i].box))
                    << i;
                for (std::size_t k = 0; k < i && !labels[i].is_covered; ++k)
                    EXPECT_FALSE(labels[i].box.intersects(labels[k].box)) << k << " and " << i;
            }
            // A legend stands inside the axes, or beside them.
            const QRectF legend = drawn.sheet.legend_box(), area = drawn.sheet.area();
            EXPECT_TRUE(legend.isEmpty() || area.contains(legend) ||
                        (!area.intersects(legend) && QRectF(drawn.plot.viewport()).contains(legend)));
            EXPECT_TRUE(sample.name != "crowded_with_legend" || size.width() < 700 || !area.contains(legend));
        }
    const Drawn family(sample("p_v_family"));
    EXPECT_EQ(family.sheet.labels().size(), 16u) << "13 curves, p(cr), p(LV) and p(SLV)";
    EXPECT_EQ(Drawn(sample("crowded_with_legend")).sheet.labels().size(), 0u);
}

TEST(SheetPlot, a_label_moved_by_hand_keeps_its_way_from_its_point) {
    GraphDocument document = sample("p_v_family");
    const Drawn before(document);
    const auto box_of_3 = [](const Drawn& drawn) {
        for (const PlacedLabel& label : drawn.sheet.labels())
            if (label.of == SheetHit{SheetPart::curve_label, 3}) return label;
        return PlacedLabel();
    };
    document.curve(3).series.label.dx = -120;
    document.curve(3).series.label.dy = -60;
    const Drawn after(document);
    const PlacedLabel label = box_of_3(after);
    EXPECT_NEAR(label.box.center().x() - label.point.x(), -120, 1);
    EXPECT_NEAR(label.box.bottom() - label.point.y(), -63, 1);
    EXPECT_EQ(after.sheet.part_at(label.box.center()), (SheetHit{SheetPart::curve_label, 3}));
}

TEST(SheetPlot, numbers_of_the_axes_are_round_and_right) {
    const auto numbers = [](const char* name, bool of_x) {
        const Drawn drawn(sample(name));
        return drawn.numbers(of_x ? drawn.plot.xAxis : drawn.plot.yAxis);
    };
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    EXPECT_THAT(numbers("p_v_family", true), ElementsAre("0", "0.2", "0.4", "0.6", "0.8", "1", "1.2"));
    EXPECT_EQ(numbers("p_v_family", false).last(), text("7000"));
    EXPECT_THAT(numbers("log_axes", true), ElementsAre("0.1", "1", "10", "100"));
    EXPECT_THAT(numbers("narrow_log_axes", true),
                IsSupersetOf({text("0.1"), text("0.2"), text("0.5"), text("1")}));
    EXPECT_THAT(numbers("p_v_loops", false), Contains(text("\u22121000")));
    // Two digits were asked for; 4000 and 2000 take one, and none is rounded to another place.
    for (const QString& number : numbers("designed", false))
        EXPECT_TRUE(number == QLatin1String("0") || number.endsWith(QLatin1String("000")));
    EXPECT_THAT(numbers("zoomed", true), Contains(text("0.19995")));
}

TEST(SheetPlot, ticks_never_say_a_number_that_is_not_theirs) {
    const NumberExtent narrow = [](const std::string& number) {
        return 8.0 * static_cast<double>(number.size()) + 14;
    };
    const ShownAxis near_300{300, 310, false};
    const Ticks ticks = sheet_ticks({.digits = 2}, near_300, 600, narrow);
    ASSERT_GE(ticks.at.size(), 5u);
    for (std::size_t i = 0; i < ticks.at.size(); ++i) EXPECT_EQ(std::stod(ticks.numbers[i]), ticks.at[i]);
    // A step by hand; numbers that would run into each other are left out, ticks stay.
    const Ticks fine = sheet_ticks({.step = 0.5}, near_300, 300, narrow);
    EXPECT_EQ(fine.at.size(), 21u);
    EXPECT_LE(std::ranges::count_if(fine.numbers, [](const std::string& n) { return !n.empty(); }), 6);
    EXPECT_EQ(fine.numbers.front(), "300");
    for (const double length : {60.0, 150.0, 400.0, 1500.0})
        for (const ShownAxis& axis : {ShownAxis{0, 7e6, false}, ShownAxis{-3e-7, 2e-7, false},
                                      ShownAxis{1e-5, 1e9, true}, ShownAxis{0.8, 1.1, true}}) {
            const Ticks found = sheet_ticks({}, axis, length, narrow);
            double last_end = -1e9;
            for (std::size_t i = 0; i < found.at.size(); ++i) {
                if (found.numbers[i].empty()) continue;
                const double half = narrow(found.numbers[i]) / 2, middle = axis.share(found.at[i]) * length;
                EXPECT_GE(middle - half, last_end - 1e-9);
                last_end = middle + half;
            }
            EXPECT_GE(found.at.size(), 1u);
        }
}

TEST(SheetPlot, interchanged_axes_turn_data_ranges_scales_and_titles) {
    GraphDocument document = sample("log_axes");
    set_log_y(document, false);
    const Drawn straight(document);
    cmdChangeXY(document);
    const Drawn turned(document);
    EXPECT_EQ(turned.plot.xAxis->scaleType(), QCPAxis::stLinear);
    EXPECT_EQ(turned.plot.yAxis->scaleType(), QCPAxis::stLogarithmic);
    EXPECT_EQ(turned.plot.yAxis->range(), straight.plot.xAxis->range());
    EXPECT_EQ(turned.plot.xAxis->range(), straight.plot.yAxis->range());
    EXPECT_EQ(turned.plot.yAxis2->range(), turned.plot.yAxis->range());
    const auto curves = straight.curves(), turned_curves = turned.curves();
    ASSERT_EQ(curves.size(), turned_curves.size());
    for (std::size_t i = 0; i < curves.size(); ++i) {
        ASSERT_EQ(curves[i]->dataCount(), turned_curves[i]->dataCount());
        for (int k = 0; k < curves[i]->dataCount(); ++k) {
            const QCPCurveData &a = *curves[i]->data()->at(k), &b = *turned_curves[i]->data()->at(k);
            if (std::isnan(a.key)) continue;
            EXPECT_NEAR(a.key, b.value, 1e-9 * std::abs(a.key));
            EXPECT_NEAR(a.value, b.key, 1e-9 * std::abs(a.value));
        }
    }
    EXPECT_EQ(turned.sheet.part_at({5, 0}), SheetHit{});
    const auto titles = [](const Drawn& drawn) {
        QStringList list;
        for (const QCPLayoutElement* element : drawn.plot.plotLayout()->elements(true))
            if (const auto* line = dynamic_cast<const SheetLine*>(element)) list << line->lines();
        return list;
    };
    // Those of the rows, then that beside the axes.
    const QString x = sheet_text(document.diagram.XTitle), y = sheet_text(document.diagram.YTitle);
    EXPECT_EQ(titles(straight).mid(1), (QStringList{x, y}));
    EXPECT_EQ(titles(turned).mid(1), (QStringList{y, x}));
}

// A zigzag that leaves the axes on every side: each vertex is given or on the frame, on the line between its
// neighbours.
TEST(SheetPlot, lines_are_cut_at_the_frame) {
    for (const bool log : {false, true}) {
        GraphDocument document;
        document.diagram.range = {.XMin = 1, .YMin = 1, .XMax = 100, .YMax = 100};
        set_log_x(document, log);
        set_log_y(document, log);
        Series series;
        series.points = {{10, 10},     {1000, 10}, {1000, 1000}, {10, 1000}, {10, 10}, {0.1F, 10},
                         {0.1F, 0.1F}, {90, 0.1F}, {0.5F, 90},   {50, 50},   {0, 50},  {50, 60}};
        const ShownAxes axes = shown_axes(document);
        const std::vector<SeenPoint> line = line_in_sight(document, series, axes);
        std::vector<std::pair<double, double>> seen;
        int pieces = 1;
        for (const SeenPoint& point : line) {
            pieces += std::isnan(point.x);
            if (!std::isnan(point.x)) seen.emplace_back(point.x, point.y);
        }
        const auto has = [&](double x, double y) {
            return std::ranges::any_of(seen, [&](const auto& at) {
                return std::abs(at.first - x) < 1e-9 && std::abs(at.second - y) < 1e-9;
            });
        };
        for (const auto& [x, y] : {std::pair(10, 10), {100, 10}, {10, 100}, {1, 10}, {50, 50}, {50, 60}})
            EXPECT_TRUE(has(x, y)) << x << " " << y;
        EXPECT_EQ(has(1, 50), !log) << "on a logarithmic axis 0 has no place, and the line ends before it";
        EXPECT_EQ(pieces, 5);
        for (const auto& [x, y] : seen) EXPECT_TRUE(axes.x.contains(x) && axes.y.contains(y));
    }
}

TEST(SheetPlot, a_logarithmic_axis_from_0_begins_above_it) {
    GraphDocument document;
    document.diagram.range = {.XMin = 0, .YMin = -5, .XMax = 50, .YMax = -1};
    set_log_x(document, true);
    set_log_y(document, true);
    const ShownAxes axes = shown_axes(document);
    EXPECT_EQ(axes.x, (ShownAxis{0.05, 50, true}));
    EXPECT_EQ(axes.y, (ShownAxis{-5, -1, false})) << "no logarithm of what is below 0";
}

TEST(SheetPlot, symbols_lines_and_colours_are_those_of_the_design) {
    SeriesStyle style{.width = 3, .color = rgb(0xD2002D), .symbol_size = 10, .symbol_color = rgb(0x00785A)};
    const std::vector<std::tuple<Symbol, QCPScatterStyle::ScatterShape, bool, double>> symbols = {
        {Symbol::dot, QCPScatterStyle::ssDisc, true, 6},
        {Symbol::box, QCPScatterStyle::ssSquare, true, 9},
        {Symbol::star, QCPScatterStyle::ssStar, false, 11},
        {Symbol::circle, QCPScatterStyle::ssCircle, false, 10},
        {Symbol::open_diamond, QCPScatterStyle::ssDiamond, false, 10},
        {Symbol::inverted_triangle, QCPScatterStyle::ssTriangleInverted, true, 10}};
    for (const auto& [symbol, shape, filled, size] : symbols) {
        style.symbol = symbol;
        const QCPScatterStyle drawn = symbol_of(style);
        EXPECT_EQ(drawn.shape(), shape);
        EXPECT_EQ(drawn.brush().style() != Qt::NoBrush, filled);
        EXPECT_DOUBLE_EQ(drawn.size(), size);
        EXPECT_EQ(drawn.pen().color(), QColor(0x00, 0x78, 0x5A));
    }
    style.symbol = Symbol::hidden;
    EXPECT_TRUE(symbol_of(style).isNone());
    EXPECT_EQ(curve_pen(style).color(), QColor(0xD2, 0x00, 0x2D));
    EXPECT_DOUBLE_EQ(curve_pen(style).widthF(), 2.4);
    EXPECT_EQ(curve_pen(style).style(), Qt::SolidLine);
    style.line = LinePattern::dash_dotted;
    EXPECT_EQ(curve_pen(style).dashPattern(), (QList<qreal>{7, 3, 1.5, 3}));
    style.line = LinePattern::points_only;
    EXPECT_EQ(curve_pen(style).style(), Qt::NoPen);
    EXPECT_EQ(mark_pen(mark_line_style({})).dashPattern(), (QList<qreal>{4, 4}));

    const Drawn black(sample("black"));
    EXPECT_EQ(black.plot.axisRect()->backgroundBrush().color(), QColor(Qt::black));
    EXPECT_EQ(black.plot.xAxis->tickLabelColor(), QColor(Qt::white));
    EXPECT_EQ(black.plot.xAxis->grid()->pen().color().alpha(), 52);
    const Drawn designed(sample("designed"));
    EXPECT_FALSE(designed.plot.yAxis->grid()->visible());
    EXPECT_EQ(designed.plot.xAxis->tickLabelRotation(), -90);
}

TEST(SheetPlot, only_what_changed_is_drawn_anew) {
    GraphDocument document = sample("p_v_family");
    Drawn drawn(document);
    int replots = 0;
    QObject::connect(&drawn.plot, &QCustomPlot::afterReplot, [&] { ++replots; });
    drawn.sheet.draw(document);
    EXPECT_EQ(replots, 0);
    // A curve that was tampered with stays so while another one is deleted.
    QCPCurve* first = nullptr;
    for (QCPCurve* curve : drawn.curves())
        if (first == nullptr && curve->pen().color() == sheet_color(slot_color(1))) first = curve;
    ASSERT_NE(first, nullptr);
    const int count = first->dataCount();
    first->data()->removeAfter(5);
    const std::size_t before = drawn.curves().size();
    delete_curve(document, 4);
    drawn.sheet.draw(document);
    EXPECT_EQ(replots, 1);
    EXPECT_LT(first->dataCount(), 10);
    EXPECT_EQ(drawn.curves().size(), before - 1);
    zoom(document, {.XMin = 0, .YMin = 0, .XMax = 1.2F, .YMax = 6999});
    drawn.sheet.draw(document);
    EXPECT_NEAR(first->dataCount(), count, 2);
}

TEST(SheetPlot, a_sheet_is_written_in_every_format_with_its_texts) {
    const GraphDocument& document = sample("black");
    const PictureSize size{160, 110, 150};
    for (const char* format : {"png", "bmp"}) {
        const PictureBytes picture = sheet_picture_bytes(document, format, size);
        ASSERT_EQ(picture.fault, "");
        const QImage image = QImage::fromData(picture.bytes);
        EXPECT_EQ(image.size(), QSize(945, 650));
        for (const QPoint corner : {QPoint(0, 0), QPoint(944, 0), QPoint(0, 649), QPoint(944, 649)})
            EXPECT_EQ(image.pixelColor(corner), QColor(Qt::black)) << corner.x();
        std::set<QRgb> colors;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) colors.insert(image.pixel(x, y));
        EXPECT_TRUE(colors.contains(sheet_color(slot_color(4)).rgb()));
    }
    const auto texts = test::read_emf(sheet_picture_bytes(document, "emf", size).bytes).text_list();
    EXPECT_THAT(texts,
                IsSupersetOf({QString::fromStdString(document.header.text), QStringLiteral("C.1 290.00 K"),
                              QStringLiteral("p / kPa"), QStringLiteral("p(cr)"), QStringLiteral("7000")}));
    EXPECT_EQ(test::read_wmf(sheet_picture_bytes(document, "wmf", size).bytes).text_list().size(),
              texts.size());
    EXPECT_THAT(sheet_picture_bytes(document, "svg", size).bytes.toStdString(), HasSubstr("C.1 290.00 K"));
    EXPECT_TRUE(sheet_picture_bytes(document, "pdf", size).bytes.startsWith("%PDF"));
    EXPECT_NE(sheet_picture_bytes(document, "gif", size).fault, "");

    const QTemporaryDir folder;
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath(QStringLiteral("sheet.pdf")));
    EXPECT_TRUE(print_sheet(document, printer));
    QFile file(folder.filePath(QStringLiteral("sheet.pdf")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_GT(file.size(), 20000);
}

}  // namespace
}  // namespace quom

// Pictures as vector files: what is painted stands in the records, by numbers worked out by hand, and public
// converters read the files.
#include "ui/charts/vector_picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPainter>
#include <QPainterPath>
#include <QXmlStreamReader>
#include <QtEndian>
#include <cmath>
#include <functional>
#include <limits>

#include "ui/charts/vector_cutting.h"
#include "ui/metafile_reader.h"

namespace quom {
namespace {

using test::Metafile;
using test::read_emf;
using test::read_wmf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double mm_of_px = 25.4 / 96;

// 400 x 300 pixels: 8000 x 6000 units.
QByteArray painted(VectorFormat format, const std::function<void(QPainter&)>& draw,
                   QSizeF size = QSizeF(400, 300) * mm_of_px) {
    VectorPicture picture(format, size);
    QPainter painter(&picture);
    painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    draw(painter);
    painter.end();
    return picture.bytes();
}

struct SvgElement {
    QString name, text;
    QXmlStreamAttributes attributes;
    QString value(const char* key) const { return attributes.value(QLatin1String(key)).toString(); }
};

std::vector<SvgElement> read_svg(const QByteArray& bytes) {
    std::vector<SvgElement> elements;
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement)
            elements.push_back({xml.name().toString(), {}, xml.attributes()});
        else if (xml.isCharacters() && !elements.empty())
            elements.back().text += xml.text();
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString() << " in line " << xml.lineNumber();
    return elements;
}

std::vector<SvgElement> named(const std::vector<SvgElement>& elements, const char* name) {
    std::vector<SvgElement> found;
    for (const SvgElement& element : elements)
        if (element.name == QLatin1String(name)) found.push_back(element);
    return found;
}

TEST(VectorPicture, head_tells_size_and_resolution) {
    for (const QSizeF size : {QSizeF(160, 110), QSizeF(1, 1), QSizeF(297, 210), QSizeF(1200, 800)}) {
        const QByteArray emf = painted(
            VectorFormat::emf, [](QPainter&) {}, size);
        const Metafile e = read_emf(emf);
        EXPECT_EQ(e.window, e.viewport);
        EXPECT_NEAR(e.window.width(), size.width() / 25.4 * 1920, 1);
        const auto number = [&emf](int at) { return qFromLittleEndian<qint32>(emf.constData() + at); };
        EXPECT_NEAR(number(32), size.width() * 100, 1);  // frame of 0.01 mm
        EXPECT_NEAR(number(36), size.height() * 100, 1);
        EXPECT_NEAR(number(72) / static_cast<double>(number(80)), 1920 / 25.4, 1e-3);  // device: dots of a mm
        EXPECT_EQ(number(100), number(80) * 1000);  // its size in micrometres

        const QByteArray wmf = painted(
            VectorFormat::wmf, [](QPainter&) {}, size);
        const Metafile w = read_wmf(wmf);
        const int inch = qFromLittleEndian<quint16>(wmf.constData() + 14);
        EXPECT_EQ(inch, size.width() > 400 ? 677 : 1920);  // floor(32000 / (1200 / 25.4))
        EXPECT_NEAR(w.window.width(), size.width() / 25.4 * inch, 1);
        EXPECT_LT(w.window.width(), 0x8000);

        const SvgElement svg = read_svg(painted(
                                            VectorFormat::svg, [](QPainter&) {}, size))
                                   .front();
        EXPECT_NEAR(svg.value("width").chopped(2).toDouble(), size.width(), 0.02);
        EXPECT_TRUE(svg.value("width").endsWith(QLatin1String("mm")));
        EXPECT_NEAR(svg.value("viewBox").split(QLatin1Char(' ')).at(3).toDouble(), size.height() / mm_of_px,
                    0.05);
    }
}

TEST(VectorPicture, is_painted_once) {
    VectorPicture picture(VectorFormat::emf, {50, 50});
    QPainter painter(&picture);
    EXPECT_TRUE(picture.bytes().isEmpty()) << "while it is painted";
    painter.end();
    EXPECT_FALSE(picture.bytes().isEmpty());
    EXPECT_TRUE(picture.bytes().isEmpty());
}

TEST(VectorPicture, lines_have_width_colour_and_native_dashes) {
    struct Case {
        Qt::PenStyle style;
        QList<qreal> pattern;
        int native;
        const char* svg;  // in pixels, of a pen 2 wide
    };
    const Case cases[] = {{Qt::SolidLine, {}, 0, ""},
                          {Qt::DashLine, {}, 1, "8,4"},
                          {Qt::DotLine, {}, 2, "2,4"},
                          {Qt::DashDotLine, {}, 3, "8,4,2,4"},
                          {Qt::DashDotDotLine, {}, 4, "8,4,2,4,2,4"},
                          {Qt::CustomDashLine, {5, 3}, 1, "10,6"},
                          {Qt::CustomDashLine, {1, 1.2}, 2, "2,2.4"},
                          {Qt::CustomDashLine, {10, 2, 1, 2}, 3, "20,4,2,4"}};
    const auto draw = [&cases](QPainter& p) {
        int y = 10;
        for (const Case& c : cases) {
            QPen pen(QColor(10, 20, 200 + y / 10), 2, c.style);
            if (!c.pattern.isEmpty()) pen.setDashPattern(c.pattern);
            p.setPen(pen);
            p.drawPolyline(QPolygonF{QPointF(5, y), QPointF(50.5, y), QPointF(100, y + 7)});
            y += 10;
        }
    };
    const auto check = [&cases](const Metafile& file) {
        ASSERT_EQ(file.lines.size(), std::size(cases));
        for (std::size_t i = 0; i < std::size(cases); ++i) {
            const int y = 10 * (static_cast<int>(i) + 1);
            EXPECT_EQ(file.lines[i].pen.style, cases[i].native) << i;
            EXPECT_EQ(file.lines[i].pen.width, 40);
            EXPECT_EQ(file.lines[i].pen.color, QColor(10, 20, 200 + y / 10));
            EXPECT_THAT(file.lines[i].points,
                        ElementsAre(QPoint(100, 20 * y), QPoint(1010, 20 * y), QPoint(2000, 20 * y + 140)));
        }
    };
    check(read_emf(painted(VectorFormat::emf, draw)));
    check(read_wmf(painted(VectorFormat::wmf, draw)));
    const std::vector<SvgElement> lines = named(read_svg(painted(VectorFormat::svg, draw)), "polyline");
    ASSERT_EQ(lines.size(), std::size(cases));
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].value("stroke-dasharray"), cases[i].svg);
    EXPECT_EQ(lines[0].value("points"), "5,10 50.5,10 100,17");
    EXPECT_EQ(lines[0].value("stroke-width"), "2");
}

TEST(VectorPicture, areas_ellipses_and_pens_follow_the_transform) {
    const auto draw = [](QPainter& p) {
        p.setPen(QPen(Qt::red, 3));
        p.setBrush(Qt::yellow);
        p.translate(100, 50);
        p.scale(2, 2);
        p.drawRect(QRectF(0, 0, 10, 5));
        p.drawEllipse(QPointF(20, 20), 5, 4);
        p.setPen(QPen(Qt::blue, 0));
        p.rotate(90);
        p.drawLine(QPointF(0, 0), QPointF(10, 0));
        p.setPen(Qt::NoPen);
        QPainterPath ring;
        ring.addRect(0, 0, 20, 20);
        ring.addRect(5, 5, 10, 10);
        p.drawPath(ring);
        ring.setFillRule(Qt::WindingFill);
        p.drawPath(ring);
    };
    for (const Metafile& file :
         {read_emf(painted(VectorFormat::emf, draw)), read_wmf(painted(VectorFormat::wmf, draw))}) {
        ASSERT_EQ(file.areas.size(), 3u);
        EXPECT_THAT(file.areas[0].polygons[0], ElementsAre(QPoint(2000, 1000), QPoint(2400, 1000),
                                                           QPoint(2400, 1200), QPoint(2000, 1200)));
        EXPECT_EQ(file.areas[0].pen.width, 120);
        EXPECT_EQ(file.areas[0].brush.style, 0);
        EXPECT_EQ(file.areas[0].brush.color, QColor(Qt::yellow));
        ASSERT_EQ(file.ellipses.size(), 1u);
        EXPECT_THAT(file.ellipses[0].polygons[0], ElementsAre(QPoint(2600, 1640), QPoint(3000, 1960)));
        ASSERT_EQ(file.lines.size(), 1u);
        EXPECT_THAT(file.lines[0].points, ElementsAre(QPoint(2000, 1000), QPoint(2000, 1400)));
        EXPECT_EQ(file.lines[0].pen.width, 20) << "a hairline is one pixel wide";
        EXPECT_EQ(file.areas[1].polygons.size(), 2u);
        EXPECT_EQ(file.areas[1].pen.style, 5);
        EXPECT_EQ(file.areas[1].fill_mode, 1);
        EXPECT_EQ(file.areas[2].fill_mode, 2);
    }
    const std::vector<SvgElement> svg = read_svg(painted(VectorFormat::svg, draw));
    EXPECT_EQ(named(svg, "ellipse").at(0).value("rx"), "10");
    EXPECT_EQ(named(svg, "path").at(0).value("d"), "M100 50L120 50L120 60L100 60Z");
    EXPECT_EQ(named(svg, "path").at(1).value("fill-rule"), "evenodd");
}

TEST(VectorPicture, texts_stay_texts_on_their_base_line) {
    const auto draw = [](QPainter& p) {
        p.setPen(QColor(1, 2, 3));
        p.drawText(QPointF(20, 40), QStringLiteral("Δh = 2·10⁻³ m³ at λ ≤ 5 \u2212 x"));
        p.translate(100, 200);
        p.rotate(-90);
        p.setFont(QFont(QStringLiteral("DejaVu Sans"), 12, QFont::Bold));
        p.drawText(QPointF(0, 0), QStringLiteral("p / <kPa> & \u4E2D"));
    };
    const Metafile emf = read_emf(painted(VectorFormat::emf, draw));
    ASSERT_GE(emf.texts.size(), 2u);
    EXPECT_EQ(emf.texts[0].text, QStringLiteral("Δh = 2·10⁻³ m³ at λ ≤ 5 \u2212 x"));
    EXPECT_EQ(emf.texts[0].at, QPoint(400, 800));
    EXPECT_EQ(emf.texts[0].color, QColor(1, 2, 3));
    EXPECT_EQ(emf.texts[0].font.height, -240) << "9 pt are 12 px";
    EXPECT_EQ(emf.texts[0].font.family, "DejaVu Sans");
    EXPECT_EQ(emf.texts[0].font.tenths, 0);
    const QFontMetricsF metrics(QFont(QStringLiteral("DejaVu Sans"), 9));
    int width = 0;
    for (const int advance : emf.texts[0].advances) width += advance;
    EXPECT_NEAR(width, 20 * metrics.horizontalAdvance(emf.texts[0].text), 40);
    EXPECT_NEAR(emf.texts[0].advances[0], 20 * metrics.horizontalAdvance(QStringLiteral("Δ")), 20);
    EXPECT_TRUE(emf.texts[1].text.startsWith(QLatin1String("p / <kPa> & ")));
    EXPECT_EQ(emf.texts[1].at, QPoint(2000, 4000));
    EXPECT_EQ(emf.texts[1].font.tenths, 900);
    EXPECT_EQ(emf.texts[1].font.height, -320);
    EXPECT_EQ(emf.texts[1].font.weight, 700);

    // 8-bit characters: Greek and signs in the font Symbol, small letters above the line, areas for the rest.
    const Metafile wmf = read_wmf(painted(VectorFormat::wmf, draw));
    EXPECT_THAT(wmf.text_list(), ElementsAre("D", QStringLiteral("h = 2·10"), "-", QStringLiteral("³ m³ at "),
                                             QStringLiteral("l £ "), "5 - x", "p / <kPa> & "));
    EXPECT_EQ(wmf.texts[0].font.family, "Symbol");
    EXPECT_EQ(wmf.texts[1].font.family, "DejaVu Sans");
    EXPECT_EQ(wmf.texts[2].font.height, -156);
    EXPECT_EQ(wmf.texts[2].at.y(), 800 - 84);
    EXPECT_EQ(wmf.texts[1].at, QPoint(400 + wmf.texts[0].advances[0], 800));
    EXPECT_EQ(wmf.texts[6].at, QPoint(2000, 4000));
    EXPECT_EQ(wmf.texts[6].font.tenths, 900);
    ASSERT_EQ(wmf.areas.size(), 1u) << "the Chinese letter";
    const QPoint corner = wmf.areas[0].polygons[0][0];
    EXPECT_TRUE(corner.x() > 1600 && corner.x() < 2100 && corner.y() < 4000)
        << corner.x() << " " << corner.y();
    EXPECT_EQ(wmf.areas[0].brush.color, QColor(1, 2, 3));

    const std::vector<SvgElement> svg = named(read_svg(painted(VectorFormat::svg, draw)), "text");
    ASSERT_GE(svg.size(), 2u);
    EXPECT_EQ(svg[0].text.trimmed(), emf.texts[0].text);
    EXPECT_TRUE(svg[1].text.startsWith(QLatin1String("p / <kPa> & ")));
    EXPECT_EQ(svg[1].value("transform"), "translate(100 200) rotate(-90)");
    EXPECT_EQ(svg[1].value("font-size"), "16");
}

TEST(VectorPicture, clips_cut_and_end_where_the_painter_says) {
    const auto draw = [](QPainter& p) {
        p.drawLine(QPointF(0, 0), QPointF(400, 300));  // everywhere; the pen of a new painter
        p.save();
        p.setClipRect(QRectF(100, 50, 200, 100));
        p.drawLine(QPointF(-1000, 100), QPointF(1000, 100));  // 100 to 300
        p.setClipRect(QRectF(0, 0, 150.5, 300), Qt::IntersectClip);
        p.drawLine(QPointF(0, 60), QPointF(400, 60));    // 100 to 150.5
        p.drawLine(QPointF(200, 60), QPointF(400, 60));  // nowhere
        p.restore();
        p.drawLine(QPointF(0, 70), QPointF(400, 70));  // everywhere again
        QPainterPath triangle;
        triangle.addPolygon(QPolygonF{QPointF(0, 100), QPointF(200, 100), QPointF(0, 300), QPointF(0, 100)});
        p.setClipPath(triangle);
        p.drawLine(QPointF(-50, 200), QPointF(400, 200));  // 0 to 100
        p.setClipping(false);
        p.drawLine(QPointF(0, 80), QPointF(400, 80));
    };
    const Metafile emf = read_emf(painted(VectorFormat::emf, draw)),
                   wmf = read_wmf(painted(VectorFormat::wmf, draw));
    for (const Metafile& file : {emf, wmf}) {
        ASSERT_EQ(file.lines.size(), 6u);
        EXPECT_FALSE(file.lines[0].clip.isValid());
        EXPECT_EQ(file.lines[1].clip, QRect(2000, 1000, 4000, 2000));
        for (const QPoint& point : file.lines[1].points) {  // cut, a little beyond the clip
            EXPECT_GE(point.x(), 2000 - 100);
            EXPECT_LE(point.x(), 6000 + 100);
        }
        EXPECT_EQ(file.lines[2].clip, QRect(2000, 1000, 1010, 2000));
        EXPECT_FALSE(file.lines[3].clip.isValid());
        EXPECT_FALSE(file.lines[5].clip.isValid());
    }
    EXPECT_EQ(emf.path_clips, 1);
    EXPECT_THAT(wmf.lines[4].points, ElementsAre(QPoint(0, 4000), QPoint(2000, 4000)))
        << "cut at the outline";
    const QByteArray svg = painted(VectorFormat::svg, draw);
    EXPECT_THAT(svg.toStdString(),
                HasSubstr("<clipPath id=\"d1\"><rect x=\"100\" y=\"50\" width=\"200\" height=\"100\"/>"));
    EXPECT_THAT(svg.toStdString(),
                HasSubstr("<path d=\"M0 100L200 100L0 300Z\" clip-rule=\"evenodd\"/></clipPath>"));
    EXPECT_EQ(named(read_svg(svg), "polyline").size(), 6u);
}

TEST(VectorPicture, opacity_is_kept_or_seen_on_the_ground) {
    const auto draw = [](QPainter& p) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 0, 0, 51));  // a fifth
        p.drawRect(10, 10, 10, 10);
        p.fillRect(QRect(0, 0, 400, 300), Qt::black);
        p.setOpacity(0.5);
        p.setBrush(QColor(255, 200, 100));
        p.drawRect(10, 10, 10, 10);
        p.setPen(QPen(Qt::white, 1));
        p.drawLine(0, 0, 9, 9);
        p.setOpacity(0);
        p.drawLine(0, 0, 9, 9);
    };
    for (const Metafile& file :
         {read_emf(painted(VectorFormat::emf, draw)), read_wmf(painted(VectorFormat::wmf, draw))}) {
        ASSERT_EQ(file.areas.size(), 3u);
        EXPECT_EQ(file.areas[0].brush.color, QColor(255, 204, 204));  // on white: 255 - 255 / 5
        EXPECT_EQ(file.areas[2].brush.color, QColor(128, 100, 50));   // on black
        ASSERT_EQ(file.lines.size(), 1u);
        EXPECT_EQ(file.lines[0].pen.color, QColor(128, 128, 128));
    }
    const std::vector<SvgElement> svg = read_svg(painted(VectorFormat::svg, draw));
    EXPECT_EQ(named(svg, "path").at(0).value("fill-opacity"), "0.2");
    EXPECT_NEAR(named(svg, "polyline").at(0).value("stroke-opacity").toDouble(), 0.5, 0.003);
}

TEST(VectorPicture, images_have_their_place_and_only_the_pixels_seen) {
    const auto draw = [](QPainter& p) {
        QImage image(4, 2, QImage::Format_RGB32);
        image.fill(QColor(10, 20, 30));
        p.drawImage(QRectF(100, 50, 40, 20), image);
        p.drawImage(QRectF(-1e6, -1e6, 4e6, 2e6), image);
        p.drawImage(QRectF(1e5, 0, 10, 10), image);  // outside
    };
    for (const Metafile& file :
         {read_emf(painted(VectorFormat::emf, draw)), read_wmf(painted(VectorFormat::wmf, draw))}) {
        ASSERT_EQ(file.images.size(), 2u);
        EXPECT_EQ(file.images[0], QRect(2000, 1000, 800, 400));
    }
    const std::vector<SvgElement> svg = named(read_svg(painted(VectorFormat::svg, draw)), "image");
    ASSERT_EQ(svg.size(), 2u);
    const QString data = svg[0].value("xlink:href");
    QImage image = QImage::fromData(QByteArray::fromBase64(data.section(QLatin1Char(','), 1).toLatin1()));
    EXPECT_EQ(image.size(), QSize(4, 2));
    EXPECT_EQ(image.pixelColor(3, 1), QColor(10, 20, 30));
}

TEST(VectorPicture, cutting_keeps_what_lies_inside) {
    const QRectF box(0, 0, 10, 10);
    EXPECT_THAT(line_inside(QPolygonF{QPointF(-5, 5), QPointF(5, 5), QPointF(5, 25), QPointF(8, 25),
                                      QPointF(8, -1e300)},
                            box),
                ElementsAre(QPolygonF{QPointF(0, 5), QPointF(5, 5), QPointF(5, 10)},
                            QPolygonF{QPointF(8, 10), QPointF(8, 0)}));
    EXPECT_THAT(line_inside(QPolygonF{QPointF(-1, 5), QPointF(5, 11.1)}, box),
                ElementsAre(::testing::SizeIs(2)));
    EXPECT_TRUE(line_inside(QPolygonF{QPointF(-1, 5), QPointF(1, 25)}, box).empty());
    const QPolygonF cut =
        polygon_inside(QPolygonF{QPointF(-5, 5), QPointF(5, -5), QPointF(15, 5), QPointF(5, 15)}, box);
    double doubled_area = 0;
    for (int i = 0; i < cut.size(); ++i) {
        const QPointF a = cut[i], b = cut[(i + 1) % cut.size()];
        EXPECT_TRUE(box.contains(a));
        doubled_area += a.x() * b.y() - b.x() * a.y();
    }
    EXPECT_NEAR(std::fabs(doubled_area), 200, 1e-9) << "the whole square";
    EXPECT_TRUE(polygon_inside(QPolygonF{QPointF(20, 0), QPointF(30, 0), QPointF(20, 9)}, box).isEmpty());
}

// Whatever is painted, the file is whole and its numbers fit.
TEST(VectorPicture, bears_what_cannot_be_drawn) {
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 inf = std::numeric_limits<double>::infinity();
    const auto draw = [nan, inf](QPainter& p) {
        p.setPen(QPen(Qt::black, 1));
        p.setBrush(Qt::green);
        QPolygonF line;
        for (const double x : {10.0, nan, 20.0, 30.0, inf, 40.0, 1e300, -1e300, 50.0, 1e9})
            line << QPointF(x, x);
        p.drawPolyline(line);
        p.drawPolygon(line);
        p.drawEllipse(QRectF(nan, 0, 5, 5));
        p.drawEllipse(QRectF(-1e7, -1e7, 2e7, 2e7));
        p.drawPoint(QPointF(nan, inf));
        p.drawRect(QRectF(-1e12, -1e12, 2e12, 2e12));
        p.setPen(QPen(Qt::black, 1e30));
        p.drawLine(QPointF(0, 0), QPointF(10, 10));
        QPen odd(Qt::black, 1, Qt::CustomDashLine);
        odd.setDashPattern({0, 0});
        p.setPen(odd);
        p.drawLine(QPointF(0, 0), QPointF(nan, 10));
        p.drawText(QPointF(nan, 5), QStringLiteral("nowhere"));
        p.drawText(QPointF(1e30, 5), QStringLiteral("far"));
        QString text;
        for (char32_t c = 1; c < 0x3000; c += 7) text += QChar(static_cast<char16_t>(c));
        text += QStringLiteral("\U0001F600\uFFFE") + QChar(0xD800) + QStringLiteral("]]>");
        p.drawText(QPointF(5, 50), text);
        p.scale(1e9, 1e9);
        p.drawText(QPointF(0, 0), QStringLiteral("huge"));
        p.resetTransform();
        p.scale(0, 0);
        p.drawText(QPointF(0, 0), QStringLiteral("flat"));
        p.drawRect(0, 0, 5, 5);
        p.setTransform(QTransform(nan, 0, 0, nan, 0, 0));
        p.drawRect(0, 0, 5, 5);
    };
    const Metafile wmf = read_wmf(painted(VectorFormat::wmf, draw));
    for (const Metafile& file : {read_emf(painted(VectorFormat::emf, draw)), wmf}) {
        ASSERT_GE(file.lines.size(), 3u);
        EXPECT_THAT(file.lines[0].points, ElementsAre(QPoint(400, 400), QPoint(600, 600)));
        for (const test::ReadLine& line : file.lines)
            for (const QPoint& point : line.points)
                EXPECT_TRUE(std::abs(point.x()) <= 0x7FFF && std::abs(point.y()) <= 0x7FFF);
        EXPECT_THAT(file.text_list(), ::testing::Not(Contains(QStringLiteral("nowhere"))));
    }
    EXPECT_FALSE(read_svg(painted(VectorFormat::svg, draw)).empty());
    for (const QSizeF& size : {QSizeF(0, 0), QSizeF(-5, nan), QSizeF(1e300, 1)}) {
        read_emf(painted(VectorFormat::emf, draw, size));
        read_wmf(painted(VectorFormat::wmf, draw, size));
        read_svg(painted(VectorFormat::svg, draw, size));
    }
}

TEST(VectorPicture, many_points_and_many_pens) {
    constexpr int n = 100000;
    const auto draw = [](QPainter& p) {
        QPolygonF line;
        for (int i = 0; i < n; ++i) line << QPointF(i % 400, (i * 7) % 300);
        p.drawPolyline(line);
        p.setBrush(Qt::red);
        p.drawPolygon(line);
        for (int i = 0; i < 1000; ++i) {
            p.setPen(QPen(QColor::fromRgb(static_cast<QRgb>(i * 1000)), 1));
            p.drawLine(0, i, 10, i % 300);
        }
    };
    const Metafile emf = read_emf(painted(VectorFormat::emf, draw)),
                   wmf = read_wmf(painted(VectorFormat::wmf, draw));
    EXPECT_EQ(emf.lines[0].points.size(), static_cast<std::size_t>(n));
    EXPECT_EQ(emf.areas[0].polygons[0].size(), static_cast<std::size_t>(n));
    std::size_t points = 0, parts = 0;  // the records of a line share their ends
    while (parts < wmf.lines.size() && wmf.lines[parts].points.size() > 2)
        points += wmf.lines[parts++].points.size();
    EXPECT_EQ(points - (parts - 1), static_cast<std::size_t>(n));
    EXPECT_EQ(wmf.lines[1].points.front(), wmf.lines[0].points.back());
    EXPECT_GT(wmf.areas[0].polygons[0].size(), 10000u);
    for (const Metafile& file : {emf, wmf}) {
        EXPECT_LE(file.most_alive, 130);
        EXPECT_EQ(file.lines.back().pen.color, QColor::fromRgb(999000));
    }
}

}  // namespace
}  // namespace quom

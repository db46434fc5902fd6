// Charts written to files: the same lines and texts in every format, read back by public converters.
#include "ui/charts/picture_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "ui/charts/sheet_picture.h"
#include "ui/metafile_reader.h"
#include "ui/public_readers.h"
#include "ui/sample_sheets.h"

namespace quom {
namespace {

using test::converted;
using test::Metafile;
using test::read_svg;
using test::Svg;
using ::testing::Contains;
using ::testing::HasSubstr;

// Five curves of five styles that leave the axes, two sets of points, a legend and titles, one of them
// turned.
void draw_chart(QCPPainter& painter, QSizeF size) {
    QCustomPlot plot;
    plot.xAxis->setLabel(QStringLiteral("v / (m³/kmol)"));
    plot.yAxis->setLabel(QStringLiteral("p / kPa"));
    plot.xAxis->setRange(0, 10);
    plot.yAxis->setRange(-1, 1.2);
    plot.legend->setVisible(true);
    for (int k = 0; k < 5; ++k) {
        auto* curve = new QCPCurve(plot.xAxis, plot.yAxis);
        for (int i = 0; i <= 600; ++i) curve->addData(i, i / 100.0, (1 + k) * std::sin(i / 90.0 + k));
        curve->addData(601, std::numeric_limits<double>::quiet_NaN(), 0);
        curve->setPen(QPen(QColor(40 * k, 0, 255 - 40 * k), 1 + 0.5 * k, static_cast<Qt::PenStyle>(1 + k)));
        curve->setName(QStringLiteral("T = %1 K").arg(300 + 20 * k));
    }
    for (const auto shape : {QCPScatterStyle::ssDisc, QCPScatterStyle::ssDiamond}) {
        auto* points = new QCPCurve(plot.xAxis, plot.yAxis);
        points->setLineStyle(QCPCurve::lsNone);
        points->setScatterStyle(QCPScatterStyle(shape, Qt::darkGreen, Qt::white, 7));
        for (int i = 1; i < 10; ++i) points->addData(i, i, -0.5);
        points->setName(shape == QCPScatterStyle::ssDisc ? QStringLiteral("measured")
                                                         : QStringLiteral("calculated"));
    }
    plot.toPainter(&painter, qRound(size.width()), qRound(size.height()));
}

QByteArray chart(const char* format) {
    const PictureBytes picture = chart_bytes(format, {160, 110, 96}, draw_chart);
    EXPECT_EQ(picture.fault, "");
    return picture.bytes;
}

QStringList list_of(const Metafile& file) {
    const std::vector<QString> texts = file.text_list();
    return {texts.begin(), texts.end()};
}

TEST(PictureFile, a_chart_has_the_same_lines_and_texts_in_every_format) {
    const Metafile emf = test::read_emf(chart("emf")), wmf = test::read_wmf(chart("wmf"));
    const Svg svg = read_svg(chart("svg"));
    EXPECT_EQ(emf.lines.size(), wmf.lines.size());
    EXPECT_EQ(static_cast<int>(emf.lines.size()), svg.elements.at(QStringLiteral("polyline")));
    EXPECT_EQ(emf.text_list(), wmf.text_list());
    EXPECT_EQ(list_of(emf), svg.texts);
    for (const char* text : {"v / (m³/kmol)", "p / kPa", "T = 380 K", "calculated", "10", "-0.5"})
        EXPECT_THAT(emf.text_list(), Contains(QString::fromUtf8(text)));

    const auto title = std::find_if(emf.texts.begin(), emf.texts.end(), [](const test::ReadText& text) {
        return text.text == QLatin1String("p / kPa");
    });
    ASSERT_NE(title, emf.texts.end());
    EXPECT_EQ(title->font.tenths, 900);
    EXPECT_EQ(wmf.ellipses.size(), 10u) << "nine discs and one in the legend";
    EXPECT_EQ(emf.ellipses.size(), 10u);

    // Every curve: its style in the axes and in the legend, within the axes by the width of a line.
    std::map<int, int> styles;
    for (const test::ReadLine& line : emf.lines)
        if (line.pen.color.blue() > 50 && line.pen.color.green() == 0 && line.points.size() > 10) {
            ++styles[line.pen.style];
            ASSERT_TRUE(line.clip.isValid());
            const int more = 4 * line.pen.width + 20;
            for (const QPoint& point : line.points)
                EXPECT_TRUE(line.clip.adjusted(-more, -more, more, more).contains(point));
        }
    for (int style = 0; style < 5; ++style) EXPECT_GE(styles[style], 1) << style;
}

TEST(PictureFile, every_format_has_its_size) {
    QTemporaryDir folder;
    const PictureSize size{50.8, 25.4, 300};
    const auto draw = [](QPainter& p, QSizeF px) {
        EXPECT_NEAR(px.width(), 192, 1e-9);
        EXPECT_NEAR(px.height(), 96, 1e-9);
        p.fillRect(QRectF(96, 48, 96, 48), Qt::blue);
    };
    for (const char* name : {"a.emf", "a.WMF", "a.svg", "a.png", "a.BMP", "a.Pdf"}) {
        const std::string path = folder.filePath(QLatin1String(name)).toStdString();
        EXPECT_EQ(write_picture(path, size, draw), "");
        EXPECT_TRUE(QFile::exists(QString::fromStdString(path)));
    }
    for (const char* name : {"a.png", "a.BMP"}) {
        const QImage image(folder.filePath(QLatin1String(name)));
        EXPECT_EQ(image.size(), QSize(600, 300));
        EXPECT_NEAR(image.dotsPerMeterX(), 11811, 1);
        EXPECT_EQ(image.pixelColor(301, 151), QColor(Qt::blue));
        EXPECT_EQ(image.pixelColor(298, 148), QColor(Qt::white));
    }
    QFile pdf(folder.filePath(QStringLiteral("a.Pdf")));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const std::string text = pdf.readAll().toStdString();
    EXPECT_EQ(text.substr(0, 5), "%PDF-");
    EXPECT_THAT(text, HasSubstr("/MediaBox [0 0 144"));  // 2 inches
}

TEST(PictureFile, refuses_and_leaves_what_was_there) {
    QTemporaryDir folder;
    const std::string path = folder.filePath(QStringLiteral("chart.gif")).toStdString();
    const auto draw = [](QPainter&, QSizeF) { ADD_FAILURE() << "nothing is drawn"; };
    EXPECT_THAT(write_picture(path, {}, draw), HasSubstr("not as \".gif\""));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path)));
    EXPECT_THAT(write_picture(folder.filePath(QStringLiteral("chart")).toStdString(), {}, draw),
                HasSubstr("EMF"));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const PictureSize& size :
         {PictureSize{0, 100, 96}, PictureSize{100, nan, 96}, PictureSize{6000, 100, 96}})
        EXPECT_THAT(picture_bytes("svg", size, draw).fault, HasSubstr("1 to 5000 mm"));
    EXPECT_THAT(picture_bytes("png", {100, 100, 5}, draw).fault, HasSubstr("dpi"));
    EXPECT_THAT(picture_bytes("png", {5000, 5000, 300}, draw).fault, HasSubstr("200 million"));
    const auto nothing = [](QPainter&, QSizeF) {};
    EXPECT_NE(write_picture(folder.filePath(QStringLiteral("no/such/folder.svg")).toStdString(), {}, nothing),
              "");
}

// The chart of above, and sheets as users make them: full, and black with logarithmic axes, dome, points,
// labels and legend.
struct Drawing {
    std::string name;
    std::function<QByteArray(const char* format)> bytes;
};
std::vector<Drawing> drawings() {
    const auto of_sheet = [](const GraphDocument& sheet) {
        return [sheet](const char* format) {
            const PictureBytes picture = sheet_picture_bytes(sheet, format, {200, 140, 96});
            EXPECT_EQ(picture.fault, "");
            return picture.bytes;
        };
    };
    GraphDocument full = test::full_sheet();
    show_legend(full);
    return {{"chart", chart}, {"full", of_sheet(full)}, {"black", of_sheet(test::black_log_sheet())}};
}

TEST(PictureFile, emf_opens_in_another_program) {
    for (const Drawing& drawing : drawings()) {
        SCOPED_TRACE(drawing.name);
        const QByteArray emf = drawing.bytes("emf");
        const QByteArray bytes = converted("emf2svg-conv", emf, {"-p", "-i", "in", "-o", "out"});
        if (bytes.isEmpty()) GTEST_SKIP() << "emf2svg is not installed";
        Svg svg = read_svg(bytes);
        const Metafile file = test::read_emf(emf);
        EXPECT_EQ(svg.texts, list_of(file));
        EXPECT_EQ(svg.texts, read_svg(drawing.bytes("svg")).texts);
        const auto is_hollow = [](const test::ReadArea& area) { return area.brush.style == 1; };
        const auto hollow =
            std::ranges::count_if(file.areas, is_hollow) + std::ranges::count_if(file.ellipses, is_hollow);
        EXPECT_EQ(svg.open_paths, static_cast<int>(file.lines.size()) + static_cast<int>(hollow));
        EXPECT_EQ(svg.elements[QStringLiteral("ellipse")], static_cast<int>(file.ellipses.size()));
        EXPECT_EQ(bytes.contains("stroke-dasharray"), drawing.name != "full");
    }
}

TEST(PictureFile, wmf_opens_in_another_program) {
    for (const Drawing& drawing : drawings()) {
        SCOPED_TRACE(drawing.name);
        const QByteArray wmf = drawing.bytes("wmf");
        QByteArray bytes = converted("wmf2svg", wmf, {"-o", "out", "in"});
        if (bytes.isEmpty()) GTEST_SKIP() << "wmf2svg or its fonts are not installed";
        bytes = QString::fromLatin1(bytes).toUtf8();  // it says UTF-8 and writes the bytes of the metafile
        Svg svg = read_svg(bytes);
        const Metafile file = test::read_wmf(wmf);
        EXPECT_EQ(svg.elements[QStringLiteral("polyline")], static_cast<int>(file.lines.size()));
        QString letters;  // it writes letter by letter
        for (const QString& text : file.text_list()) letters += text;
        EXPECT_EQ(svg.texts.join(QString()), letters);
    }
}

// Every curve of a full sheet is a line of its own, with its text at it and in the legend.
TEST(PictureFile, a_full_sheet_keeps_its_curves) {
    const std::vector<Drawing> all = drawings();
    const Metafile file = test::read_emf(all[1].bytes("emf"));
    int curves = 0;
    for (const test::ReadLine& line : file.lines) curves += line.points.size() > 500;
    EXPECT_EQ(curves, CurveSlots);
    const std::vector<QString> texts = file.text_list();
    for (int slot = 1; slot <= CurveSlots; ++slot) {
        const QString text = QStringLiteral("C.%1 300.00 K").arg(slot);
        EXPECT_EQ(std::count(texts.begin(), texts.end(), text), 2) << slot;
    }
}

}  // namespace
}  // namespace quom

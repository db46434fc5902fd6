// Twenty sheets against stored pictures. After a wanted change of the drawing
//     QUOM_RENEW_PICTURES=1 build/release/tests/test_ui --gtest_filter='SheetPictures.*'
// writes those of tests/ui/pictures anew that differ; each is looked at before it is committed. A picture
// that differs is kept beside the test program as NAME.drawn.png.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <qcustomplot.h>

#include <QApplication>
#include <QFontInfo>
#include <QImage>
#include <QImageWriter>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <ostream>

#include "diagrams/graph_view.h"
#include "support/test_paths.h"
#include "ui/charts/sheet_picture.h"
#include "ui/charts/sheet_plot.h"
#include "ui/sample_sheets.h"

namespace quom {
namespace {

constexpr int width = 800, height = 560;
constexpr auto stored = std::to_array<const char*>({"p_v_family",
                                                    "p_v_loops",
                                                    "T_v_family",
                                                    "p_T_inversion",
                                                    "lnp_over_inverse_T",
                                                    "h_T_coexistence",
                                                    "h_s_chart",
                                                    "database_rhoL",
                                                    "database_cp",
                                                    "reduced_units",
                                                    "log_axes",
                                                    "narrow_log_axes",
                                                    "swapped",
                                                    "black",
                                                    "crowded",
                                                    "designed",
                                                    "bisector",
                                                    "joule_thomson",
                                                    "crowded_with_legend",
                                                    "energies_by_mass"});

// The windows' tests have this font on every machine; another one as the program's would move every text.
class SheetPictures : public ::testing::Test {
 protected:
    SheetPictures() : before_(QApplication::font()) {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    }
    ~SheetPictures() override { QApplication::setFont(before_); }
    void SetUp() override { ASSERT_EQ(QFontInfo(QApplication::font()).family(), "DejaVu Sans"); }
    QFont before_;
};

const GraphDocument& sample(const std::string& name) {
    static const std::vector<test::SampleSheet> all = test::sample_sheets();
    return std::ranges::find(all, name, &test::SampleSheet::name)->sheet;
}

QImage drawn(const GraphDocument& document) {
    const PictureSize size{width * 25.4 / 96, height * 25.4 / 96, 96};
    return QImage::fromData(sheet_picture_bytes(document, "png", size).bytes)
        .convertToFormat(QImage::Format_RGB32);
}

// Cells of 2 x 2 pixels: another rasteriser smooths edges otherwise and moves a letter by a pixel. What
// differs is counted twice: in colour, which letters do not have and lines, symbols and frames of labels do,
// with hardly any tolerance; and in all, where letters of another machine differ in up to 1.5 % of the cells
// of both pictures.
constexpr int cell = 2, reach = 2, far_apart = 36;
constexpr int most_in_color = 18;
constexpr double most_in_all = 0.015 * 2 * (width / cell) * (height / cell);

int distance_in_color(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qGreen(a) - qRed(b) + qGreen(b)) +
           std::abs(qGreen(a) - qBlue(a) - qGreen(b) + qBlue(b));
}
int distance_in_all(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
}

// Cells of one picture without a like cell near the same place of the other.
int lost_cells(const QImage& from, const QImage& in, int (*distance)(QRgb, QRgb)) {
    int lost = 0;
    for (int y = 0; y < from.height(); ++y)
        for (int x = 0; x < from.width(); ++x) {
            const QRgb color = from.pixel(x, y);
            bool found = distance(color, in.pixel(x, y)) < far_apart;
            for (int dy = -reach; dy <= reach && !found; ++dy)
                for (int dx = -reach; dx <= reach && !found; ++dx)
                    found = in.valid(x + dx, y + dy) && distance(color, in.pixel(x + dx, y + dy)) < far_apart;
            lost += !found;
        }
    return lost;
}

struct Difference {
    int in_color = 0, in_all = 0;
    bool is_fault() const { return in_color > most_in_color || in_all > most_in_all; }
};
std::ostream& operator<<(std::ostream& out, const Difference& difference) {
    return out << difference.in_color << " cells in colour, " << difference.in_all << " in all";
}

Difference difference(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) return {a.width() * a.height(), a.width() * a.height()};
    const auto cells_of = [](const QImage& picture) {
        return picture.scaled(width / cell, height / cell, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage first = cells_of(a), second = cells_of(b);
    const auto lost = [&](int (*distance)(QRgb, QRgb)) {
        return lost_cells(first, second, distance) + lost_cells(second, first, distance);
    };
    return {lost(distance_in_color), lost(distance_in_all)};
}

std::string path_of(const std::string& name) { return test::test_data() + "/ui/pictures/" + name + ".png"; }

void write(const QImage& picture, const QString& path) {
    QImageWriter writer(path, "png");
    writer.setCompression(100);
    ASSERT_TRUE(writer.write(picture)) << path.toStdString();
}

TEST_F(SheetPictures, are_those_that_were_looked_at) {
    const bool renews = qEnvironmentVariableIsSet("QUOM_RENEW_PICTURES");
    for (const char* name : stored) {
        const QImage now = drawn(sample(name));
        const QImage before(QString::fromStdString(path_of(name)));
        const Difference differs = difference(now, before.convertToFormat(QImage::Format_RGB32));
        if (!differs.is_fault()) continue;
        write(now, renews ? QString::fromStdString(path_of(name)) : QStringLiteral("%1.drawn.png").arg(name));
        if (!renews) ADD_FAILURE() << name << ": " << differs;
    }
}

// Each fault that a picture has to show.
TEST_F(SheetPictures, differ_with_every_fault_that_a_user_would_see) {
    using Change = void (*)(GraphDocument&);
    struct Fault {
        const char *name, *sheet;
        Change change;
    };
    const auto faults = std::to_array<Fault>({
        {"a curve is missing", "p_v_family", [](GraphDocument& s) { s.curve(8).series.points = {}; }},
        {"a tie line is missing", "p_v_family", [](GraphDocument& s) { s.curve(13).series.points = {}; }},
        {"a curve of 24 is missing", "crowded", [](GraphDocument& s) { s.curve(12).series.points = {}; }},
        {"a mark is missing", "T_v_family", [](GraphDocument& s) { s.mark(mark_TLV).series.points = {}; }},
        {"a limit of validity is missing", "database_cp",
         [](GraphDocument& s) { s.mark(mark_validity_high).series.points = {}; }},
        {"the critical point is missing", "p_v_family",
         [](GraphDocument& s) { s.mark(mark_crit_measured).series.points = {}; }},
        {"a set of points is missing", "crowded", [](GraphDocument& s) { s.set(7).series.points = {}; }},
        {"the axes are swapped", "p_v_family", [](GraphDocument& s) { cmdChangeXY(s); }},
        {"an axis is linear", "log_axes", [](GraphDocument& s) { set_log_x(s, false); }},
        {"a limit is 2 % off", "p_v_family", [](GraphDocument& s) { s.diagram.range.YMax *= 1.02F; }},
        {"a colour is another", "p_v_family",
         [](GraphDocument& s) { s.curve(3).series.style.color = slot_color(6); }},
        {"a symbol is another", "designed",
         [](GraphDocument& s) { s.set(2).series.style.symbol = Symbol::star; }},
        {"a label stands 30 px off", "p_v_family", [](GraphDocument& s) { s.curve(8).series.label.dx = 30; }},
        {"the legend is gone", "black", [](GraphDocument& s) { hide_legend(s); }},
        {"the legend stands elsewhere", "black",
         [](GraphDocument& s) { s.legend.place = LegendPlace::bottom_right; }},
        {"the sheet is black", "p_v_family", [](GraphDocument& s) { s.colors = full_black(); }},
    });
    for (const Fault& fault : faults) {
        const QImage good = drawn(sample(fault.sheet));
        GraphDocument changed = sample(fault.sheet);
        fault.change(changed);
        const Difference seen = difference(drawn(changed), good);
        EXPECT_TRUE(seen.is_fault()) << fault.name << ": " << seen;
    }
}

// Letters of the same widths with other edges, as another machine may draw them, are no fault.
TEST_F(SheetPictures, do_not_differ_with_other_letters) {
    for (const char* name : stored) {
        const QImage good = drawn(sample(name));
        QFont other = QApplication::font();
        other.setHintingPreference(QFont::PreferNoHinting);
        QApplication::setFont(other);
        const Difference seen = difference(drawn(sample(name)), good);
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
        EXPECT_FALSE(seen.is_fault()) << name << ": " << seen;
    }
}

// Sheets that change all the time, in one plot, leave nothing behind.
TEST_F(SheetPictures, take_no_more_memory_after_a_thousand_redraws) {
    const std::array<GraphDocument, 4> sheets = {sample("p_v_family"), sample("swapped"), sample("designed"),
                                                 sample("log_axes")};
    QCustomPlot plot;
    plot.resize(600, 400);
    plot.setViewport(QRect(0, 0, 600, 400));
    SheetPlot sheet(plot);
    const auto redraw = [&](int times) {
        for (int i = 0; i < times; ++i) {
            GraphDocument document = sheets[static_cast<std::size_t>(i) % sheets.size()];
            document.header.text += std::to_string(i);
            document.curve(2).series.label.dx = i % 7;
            sheet.draw(document);
        }
    };
    const auto in_use = [] { return static_cast<double>(mallinfo2().uordblks); };
    redraw(40);  // fonts, letters, the items of the largest sheet
    const double before = in_use();
    redraw(1000);
    EXPECT_LT(in_use() - before, 300e3) << "bytes more";
}

}  // namespace
}  // namespace quom

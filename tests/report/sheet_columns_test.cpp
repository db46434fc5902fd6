// The data of a sheet as columns: what stands where, and that it reads back as the points of the sheet.
#include "report/sheet_columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "base/number_text.h"
#include "diagrams/draw_curve.h"
#include "diagrams/graph_view.h"
#include "diagrams/marks.h"
#include "diagrams/sample_sheet.h"
#include "support/starter.h"

namespace quom {
namespace {

using test::hyperbola;
using test::p_v_sheet;
using test::starter_fluid;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::vector<std::string> texts(const std::vector<ExportCell>& row) {
    std::vector<std::string> list;
    for (const ExportCell& cell : row) list.push_back(cell.text);
    return list;
}

// Two curves of 3 and 1 points, with and without hidden values, a set of points and a mark.
GraphDocument small_sheet() {
    GraphDocument sheet = p_v_sheet();
    AddCurve(sheet,
             {{{0.25F, 1600, 300, 0.5F}, {0.5F, 1000.125F, 301, 0.75F}, {1, -3.456789e-5F, 302, 1}},
              par_T,
              par_fraction},
             {"300.00 K", "300.00 K, \"A\"; B\nC"});
    AddCurve(sheet, {{{0.75F, 800, 0, 0}}, par_none, par_none}, {"x", "x"});
    cmdExternPoints(sheet, std::vector<SheetPoint>{{1.5F, 20}, {1.75F, 10}}, PointSource::xy_editor);
    sheet.mark(mark_pcr).series.points = {{0, 4248}, {2, 4248}};
    sheet.mark(mark_pcr).series.label.text = "p(cr)";
    return sheet;
}

TEST(SheetColumns, every_series_has_its_columns) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    const ExportTable table = sheet_columns(small_sheet(), *fluid, {});
    EXPECT_THAT(table.title,
                ElementsAre("diagram: 1, p - v (isothermal section)", "substance: Propane  C3H8  74-98-6",
                            StartsWith("models in force: CEOS Peng / Robinson, GLOBAL concept, "),
                            "reference state: h = s = 0 of the ideal gas at 298.15 K, 101.325 kPa",
                            "C.1: 300.00 K, \"A\"; B C", "C.2: x", "P.1: from X-Y-editor", "M.29: p(cr)"));
    EXPECT_THAT(table.heads, ElementsAre("C.1 v", "C.1 p", "C.1 T", "C.1 eta(V)", "C.2 v", "C.2 p", "P.1 v",
                                         "P.1 p", "M.29 v", "M.29 p"));
    EXPECT_THAT(table.units, ElementsAre("m^3/kmol", "kPa", "K", "", "m^3/kmol", "kPa", "m^3/kmol", "kPa",
                                         "m^3/kmol", "kPa"));
    ASSERT_EQ(table.rows.size(), 3u);
    EXPECT_THAT(texts(table.rows[0]),
                ElementsAre("0.25", "1600", "300", "0.5", "0.75", "800", "1.5", "20", "0", "4248"));
    EXPECT_THAT(texts(table.rows[1]),
                ElementsAre("0.5", "1000.125", "301", "0.75", "", "", "1.75", "10", "2", "4248"));
    EXPECT_THAT(texts(table.rows[2]), ElementsAre("1", "-3.456789E-05", "302", "1", "", "", "", "", "", ""));
    EXPECT_TRUE(sheet_columns(p_v_sheet(), *fluid, {}).rows.empty());
}

TEST(SheetColumns, interchanged_axes_change_their_columns) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = small_sheet();
    cmdChangeXY(sheet);
    const ExportTable table = sheet_columns(sheet, *fluid, {});
    EXPECT_THAT(table.heads, ElementsAre("C.1 p", "C.1 v", "C.1 T", "C.1 eta(V)", "C.2 p", "C.2 v", "P.1 p",
                                         "P.1 v", "M.29 p", "M.29 v"));
    EXPECT_THAT(texts(table.rows[1]),
                ElementsAre("1000.125", "0.5", "301", "0.75", "", "", "10", "1.75", "4248", "2"));
    EXPECT_EQ(table.units[0], "kPa");
}

TEST(SheetColumns, heads_follow_the_axes) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    const auto heads = [&](Kind kind, const Units& units, std::int16_t par) {
        GraphDocument sheet = new_sheet(DiagramSetup(*fluid, units, {}, kind, false, false).state.rec);
        AddCurve(sheet, {{{1, 2, 3, 4}}, par, par_none}, {"a", "a"});
        const ExportTable table = sheet_columns(sheet, *fluid, units);
        std::string text;
        for (std::size_t i = 0; i < table.heads.size(); ++i)
            text += (i ? "|" : "") + table.heads[i] + "[" + (table.units.empty() ? "" : table.units[i]) + "]";
        return text;
    };
    const Units reduced{.VolumeMode = reduced_volume},
        mass{.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass};
    EXPECT_EQ(heads(Kind::p_v, reduced, par_none), "C.1 V(red)[]|C.1 p / p(cr)[]");
    EXPECT_EQ(heads(Kind::sat_lnp_invT, {}, par_T), "C.1 1/T[1/K]|C.1 ln(p/kPa)[]|C.1 T[K]");
    EXPECT_EQ(heads(Kind::sat_p_T, {}, par_T), "C.1 T[K]|C.1 p[kPa]|C.1 T (point)[K]");
    EXPECT_EQ(heads(Kind::h_T, mass, par_v), "C.1 T[K]|C.1 h[kJ/kg]|C.1 v[m^3/kmol]");
    // Graphs of data, and titles that the user changed, stand as they are.
    GraphDocument sheet = small_sheet();
    sheet.diagram.XTitle = "specific volume\n(molar) ";
    EXPECT_EQ(sheet_columns(sheet, *fluid, {}).heads[0], "C.1 specific volume (molar)");
    sheet.diagram.kind = Kind::none;
    const ExportTable graph = sheet_columns(sheet, *fluid, {}, "a.oc2");
    EXPECT_EQ(graph.heads[1], "C.1 p / kPa");
    EXPECT_EQ(graph.title[0], "diagram: p - v (isothermal section)");
    EXPECT_THAT(graph.title, Contains(StartsWith("loaded from a.oc2; ")));
}

TEST(SheetColumns, hidden_values_end_at_their_limit) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = p_v_sheet();
    AddCurve(sheet, hyperbola(1500, 1.9F), {"a", "a"});
    ExportTable table = sheet_columns(sheet, *fluid, {});
    ASSERT_EQ(table.rows.size(), 1500u);
    EXPECT_EQ(table.rows[1199][2].text, "1499");
    EXPECT_EQ(table.rows[1200][2].text, "");
    EXPECT_NE(table.rows[1499][1].text, "");
    sheet.curve(1).CurveHidden = {};  // as after loading
    table = sheet_columns(sheet, *fluid, {});
    EXPECT_THAT(table.heads, ElementsAre("C.1 v", "C.1 p"));
}

TEST(SheetColumns, text_reads_back_as_the_points) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = p_v_sheet();
    CurveInput input;
    input.kind = Kind::p_v;
    input.T = 400;
    cmdDraw(sheet, *fluid, input);
    const auto& points = sheet.curve(1).series.points;
    ASSERT_GT(points.size(), 100u);
    const std::string csv = sheet_csv(sheet_columns(sheet, *fluid, {}), '\t');
    std::istringstream lines(csv);
    std::string line;
    while (std::getline(lines, line) && line.starts_with("# ")) EXPECT_TRUE(line.ends_with('\r'));
    EXPECT_THAT(line, StartsWith("C.1 v\tC.1 p\t"));
    std::getline(lines, line);
    EXPECT_THAT(line, StartsWith("m^3/kmol\tkPa\t"));
    std::size_t i = 0;
    for (; std::getline(lines, line); ++i) {
        ASSERT_LT(i, points.size());
        const double v = Val(line), p = Val(line.substr(line.find('\t') + 1));
        EXPECT_NEAR(v, static_cast<double>(points[i].X), 5e-7 * v);
        EXPECT_NEAR(p, static_cast<double>(points[i].Y), 5e-7 * p);
    }
    EXPECT_EQ(i, points.size());
}

TEST(SheetColumns, text_by_delimiter_and_decimal_sign) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = small_sheet();
    sheet.diagram.XTitle = "a;\"b\"";
    const std::string csv = sheet_csv(sheet_columns(sheet, *fluid, {}), ';', ',');
    EXPECT_THAT(csv, HasSubstr("\r\n# C.1: 300.00 K, \"A\"; B C\r\n"));
    EXPECT_THAT(csv, HasSubstr("\r\n\"C.1 a;\"\"b\"\"\";C.1 p;C.1 T;"));
    EXPECT_THAT(csv, HasSubstr("\r\n0,5;1000,125;301;0,75;;;1,75;10;2;4248\r\n"));
    EXPECT_THAT(sheet_csv(sheet_columns(sheet, *fluid, {}), ',', ','),
                HasSubstr("\r\n\"0,5\",\"1000,125\",301,"));
    EXPECT_THAT(csv, Not(HasSubstr("(Error)")));
}

}  // namespace
}  // namespace quom

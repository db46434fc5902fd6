// The file of a sheet: what comes back, what is refused, what is kept of other versions.
#include "diagrams/diagram_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "diagrams/graph_view.h"
#include "sample_sheet.h"

namespace quom {
namespace {

using test::hyperbola;
using test::p_v_sheet;
using test::RandomSheet;
using ::testing::HasSubstr;

Oc2Read read(std::string_view bytes, const GraphDocument& before = p_v_sheet()) {
    return read_oc2(bytes, "sheet.oc2", before);
}

std::string with_head(const std::string& fields) {
    return R"({"format": "QUOM-OC2", "version": 1, )" + fields + "}";
}

TEST(DiagramFile, random_sheets_come_back) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        const GraphDocument sheet = RandomSheet(seed).sheet();
        const std::string bytes = oc2_bytes(sheet);
        const Oc2Read back = read(bytes, new_sheet(sheet.diagram));
        ASSERT_TRUE(back.sheet) << back.fault << "\n" << bytes;
        ASSERT_TRUE(*back.sheet == sheet) << seed << "\n" << bytes;
        ASSERT_EQ(oc2_bytes(*back.sheet), bytes);
    }
}

TEST(DiagramFile, loading_replaces_all_but_the_kind_and_forgets_hidden_values) {
    GraphDocument saved = p_v_sheet();
    AddCurve(saved, hyperbola(1500, 1), {"300.00 K", "legend"});
    zoom(saved, {.XMin = 0.1F, .YMin = 10, .XMax = 1, .YMax = 3000});
    cmdChangeXY(saved);
    saved.NextColor = rgb(1);
    saved.last.T = 300;
    GraphDocument before = p_v_sheet();
    before.diagram.kind = Kind::T_v;
    for (int i = 0; i < 3; ++i) AddCurve(before, hyperbola(9, 1), {"a", "b"});
    before.texts.emplace_back().text = "old";
    const Oc2Read back = read(oc2_bytes(saved), before);
    ASSERT_TRUE(back.sheet) << back.fault;
    const GraphDocument& sheet = *back.sheet;
    EXPECT_EQ(CurveCount(sheet), 1);
    EXPECT_TRUE(sheet.texts.empty());
    EXPECT_EQ(sheet.diagram.kind, Kind::T_v);
    EXPECT_EQ(sheet.curve(1).series, saved.curve(1).series);
    EXPECT_TRUE(sheet.curve(1).CurveHidden.empty());
    EXPECT_EQ(sheet.diagram.range, saved.diagram.range);
    EXPECT_EQ(sheet.diagram.initial, saved.diagram.range) << "a reset returns to the range of the file";
    EXPECT_TRUE(sheet.Interchanged);
    EXPECT_FALSE(sheet.NextColor);
    EXPECT_EQ(point_text(sheet, {false, 1, 1}).find("T/K"), std::string::npos);
}

TEST(DiagramFile, unknown_fields_survive) {
    const std::string later =
        R"({"format": "QUOM-OC2", "version": 1, "made_by": {"name": "a later version", "n": [1, 2.5]},
        "texts": {"1": {"text": "t", "angle": 30}},
        "axes": {"x": {"min": 0, "max": 1, "arrow": true}, "z": {"min": 3}},
        "curves": {"3": {"x": [1, 2], "y": [3, 4], "fit": "spline", "style": {"glow": 7, "width": 4}}},
        "marks": {"33": {"x": [1], "y": [1], "flag": null}}})";
    Oc2Read first = read(later);
    ASSERT_TRUE(first.sheet) << first.fault;
    EXPECT_EQ(first.sheet->curve(3).series.style.width, 4);
    const std::string saved = oc2_bytes(*first.sheet);
    for (const char* kept :
         {R"("made_by": {"n":[1,2.5],"name":"a later version"})", R"("arrow": true)", R"("z": {"min":3})",
          R"("fit": "spline")", R"("glow": 7)", R"("angle": 30)", R"("flag": null)"})
        EXPECT_THAT(saved, HasSubstr(kept));
    const Oc2Read second = read(saved);
    ASSERT_TRUE(second.sheet) << second.fault;
    EXPECT_EQ(*second.sheet, *first.sheet);
    EXPECT_EQ(oc2_bytes(*second.sheet), saved);
    // They go with the curve that they belong to.
    delete_curve(*first.sheet, 3);
    first.sheet->texts.clear();
    for (int i = 0; i < 3; ++i) AddCurve(*first.sheet, hyperbola(3, 1), {"a", "b"});
    const std::string other = oc2_bytes(*first.sheet);
    for (const char* gone : {"glow", "spline", "angle"}) EXPECT_THAT(other, ::testing::Not(HasSubstr(gone)));
    ASSERT_TRUE(read(other).sheet);
    EXPECT_TRUE(read(other).sheet->texts.empty());
    EXPECT_THAT(other, HasSubstr("made_by"));
}

TEST(DiagramFile, hostile_files_are_refused_with_what_is_wrong) {
    const std::string deep(100000, '['), objects = [] {
        std::string text = "[";
        for (int i = 0; i < 200000; ++i) text += "[],";
        return text + "0]";
    }();
    const std::tuple<std::string, const char*> cases[] = {
        {"", "line 1: this is no JSON"},
        {"\n\n{\"format\": ", "line 3: this is no JSON"},
        {"QUOM-OC2", "this is no JSON"},
        {std::string("{\"format\": \"QUOM-OC2\", \"version\": 1, \"a\": \"\xFF\"}"), "this is no JSON"},
        {std::string(10, '\0'), "this is no JSON"},
        {"[]", "is no diagram file: the mark"},
        {"{}", "is no diagram file: the mark"},
        {R"({"format": "QUOM-OC3", "version": 1})", "is no diagram file: the mark"},
        {R"({"format": 7, "version": 1})", "is no diagram file: the mark"},
        {R"({"format": "QUOM-OC2", "version": 2})", "is of another version"},
        {R"({"format": "QUOM-OC2"})", "is of another version"},
        {deep, "is nested too deeply"},
        {with_head("\"a\": " + deep), "is nested too deeply"},
        {with_head("\"a\": " + objects), "has too many objects"},
        {with_head(R"("curves": 5)"), "curves: must be an object"},
        {with_head(R"("curves": [{"x": [1], "y": [1]}])"), "curves: must be an object"},
        {with_head(R"("curves": {"25": {"x": [1], "y": [1]}})"),
         "curves: has an entry that is none of 1 to 24"},
        {with_head(R"("curves": {"01": {}})"), "curves: has an entry that is none of 1 to 24"},
        {with_head(R"("points": {"13": {}})"), "points: has an entry that is none of 1 to 12"},
        {with_head(R"("marks": {"24": {}})"), "marks: has an entry that is none of 25 to 34"},
        {with_head(R"("marks": {"26": {"x": [1,2,3], "y": [1,2,3]}})"),
         "marks.26: a mark has two points at most"},
        {with_head(R"("curves": {"2": 7})"), "curves.2: must be an object"},
        {with_head(R"("curves": {"2": {"x": [1, 2], "y": [1]}})"),
         "curves.2: x and y must have as many numbers"},
        {with_head(R"("curves": {"2": {"x": [1]}})"), "curves.2: x and y must have as many numbers"},
        {with_head(R"("curves": {"2": {"x": 1, "y": 1}})"), "curves.2.x: must be a list of numbers"},
        {with_head(R"("curves": {"2": {"x": [1, "2"], "y": [1, 2]}})"), "curves.2.x: must be a number"},
        {with_head(R"("curves": {"2": {"x": [null], "y": [2]}})"), "curves.2.x: must be a number"},
        {with_head(R"("curves": {"2": {"x": [1e39], "y": [2]}})"), "curves.2.x: is too large a number"},
        {with_head(R"("curves": {"2": {"x": [1e999], "y": [2]}})"), "a number is too large"},
        {with_head(R"("curves": {"2": {"style": {"width": 7}}})"),
         "curves.2.style.width: must be a whole number from 1 to 6"},
        {with_head(R"("curves": {"2": {"style": {"width": 1.5}}})"),
         "curves.2.style.width: must be a whole number"},
        {with_head(R"("curves": {"2": {"style": {"line": "wavy"}}})"),
         R"(curves.2.style.line: must be one of "points", "solid")"},
        {with_head(R"("curves": {"2": {"style": {"color": "red"}}})"),
         "curves.2.style.color: must be a colour"},
        {with_head(R"("curves": {"2": {"legend": 5}})"), "curves.2.legend: must be a text"},
        {with_head(R"("curves": {"2": {"label": {"point": -1}}})"),
         "curves.2.label.point: must be a whole number"},
        {with_head(R"("curves": {"2": {"label": {"point": 1e30}}})"),
         "curves.2.label.point: must be a whole number"},
        {with_head(R"("axes": {"y": {"min": 2, "max": 2}})"), "axes.y: min must be below max"},
        {with_head(R"("axes": {"x": {"log": 1}})"), "axes.x.log: must be true or false"},
        {with_head(R"("axes": {"x": {"title_font": {"size": 1000}}})"),
         "axes.x.title_font.size: must be a number from 4 to 96"},
        {with_head(R"("texts": {"1": {}, "3": {}})"), "texts.3: the text before it is missing"},
        {with_head(R"("interchanged": "no")"), "interchanged: must be true or false"},
    };
    for (const auto& [bytes, what] : cases) {
        const Oc2Read back = read(bytes);
        EXPECT_FALSE(back.sheet) << bytes.substr(0, 200);
        EXPECT_THAT(back.fault, ::testing::StartsWith("\"sheet.oc2\": ")) << bytes.substr(0, 200);
        EXPECT_THAT(back.fault, HasSubstr(what)) << bytes.substr(0, 200);
    }
}

TEST(DiagramFile, nesting_ends_at_32_levels) {
    for (const int lists : {31, 32}) {
        const std::string nested = std::string(static_cast<std::size_t>(lists), '[') +
                                   std::string(static_cast<std::size_t>(lists), ']');
        const Oc2Read back =
            read(with_head("\"a\": " + nested + R"(, "b": "[[[[[[[[[[[[[[[[[[[[\\\"[[[[[[[[[[[[[[[[")"));
        EXPECT_EQ(back.sheet.has_value(), lists == 31) << back.fault;
        if (!back.sheet) continue;
        EXPECT_EQ(*read(oc2_bytes(*back.sheet)).sheet, *back.sheet);
    }
}

TEST(DiagramFile, what_is_missing_has_its_default) {
    const Oc2Read back = read(with_head(R"("curves": {"4": {"x": [], "y": []}, "7": {"x": [1], "y": [2]}})"));
    ASSERT_TRUE(back.sheet) << back.fault;
    EXPECT_EQ(CurveCount(*back.sheet), 1);
    EXPECT_EQ(free_curve_slot(*back.sheet), 1);
    EXPECT_FALSE(back.sheet->curve(7).CurveFree);
    EXPECT_EQ(back.sheet->diagram.range, p_v_sheet().diagram.range);
    // A label that stands behind the last point moves to it.
    const Oc2Read far = read(with_head(R"("curves": {"7": {"x": [1], "y": [2], "label": {"point": 99}}})"));
    ASSERT_TRUE(far.sheet) << far.fault;
    EXPECT_EQ(far.sheet->curve(7).series.label.point, 1);
}

// What a program puts into a sheet by mistake is written so that it can be read.
TEST(DiagramFile, every_sheet_is_written_so_that_it_is_read) {
    GraphDocument sheet = p_v_sheet();
    AddCurve(sheet, hyperbola(3, 1), {"a\xFF", "b"});
    Series& series = sheet.curve(1).series;
    series.points.edit()[1].Y = NAN;
    series.style.width = 99;
    series.style.symbol_size = -1;
    series.label = {.text = "x", .point = 77, .dx = INFINITY};
    sheet.x.digits = 40;
    sheet.x.origin = NAN;
    sheet.header.font.size = NAN;
    const std::string bytes = oc2_bytes(sheet);
    const Oc2Read back = read(bytes);
    ASSERT_TRUE(back.sheet) << back.fault;
    EXPECT_EQ(back.sheet->curve(1).series.points.size(), 2u);
    EXPECT_EQ(oc2_bytes(*read(oc2_bytes(*back.sheet)).sheet), oc2_bytes(*back.sheet));
}

TEST(DiagramFile, files) {
    const std::string path = std::filesystem::temp_directory_path() / "quom_sheet_test.oc2";
    const GraphDocument sheet = RandomSheet(7).sheet();
    ASSERT_EQ(save_oc2(path, sheet), "");
    const Oc2Read back = load_oc2(path, new_sheet(sheet.diagram));
    ASSERT_TRUE(back.sheet) << back.fault;
    EXPECT_TRUE(*back.sheet == sheet);
    std::filesystem::remove(path);
    EXPECT_THAT(load_oc2(path, sheet).fault, HasSubstr("quom_sheet_test.oc2"));
}

TEST(DiagramFile, questions) {
    GraphDocument sheet = p_v_sheet();
    EXPECT_FALSE(save_question(sheet));
    EXPECT_FALSE(print_question(sheet));
    cmdChangeXY(sheet);
    sheet.colors = full_black();
    ASSERT_TRUE(save_question(sheet));
    EXPECT_EQ(save_question(sheet)->text,
              "Recommendation: Do not save the diagram in the rotated state (x<=>y).\nContinue?");
    EXPECT_EQ(save_question(sheet)->buttons, Buttons::yes_no);
    ASSERT_TRUE(print_question(sheet));
}

}  // namespace
}  // namespace quom

// Sizes of pictures, names of their files, and the data of a sheet.
#include "forms/picture_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "forms/diagram_form.h"
#include "forms/sample_session.h"
#include "forms/sheet_form.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(PictureForm, takes_sizes_or_says_which_box_is_wrong) {
    struct Row {
        PictureTexts texts;
        const char* format;
        std::size_t box;
        const char* rule;  // "": taken
    };
    const Row rows[] = {
        {{"160", "110", "300"}, "png", 0, ""},
        {{"160", "110", "x"}, "svg", 0, ""},  // has no resolution
        {{"160", "110", "9"}, "pdf", 0, ""},
        {{"", "110", "300"}, "png", picture_width, "is missing"},
        {{"0", "110", "300"}, "png", picture_width, "above 0"},
        {{"5001", "110", "300"}, "pdf", picture_width, "from 1 to 5000 mm"},
        {{"160", "1e400", "300"}, "pdf", picture_height, "Height"},
        {{"160", "0.5", "300"}, "svg", picture_height, "Height must be from 1 to 5000 mm."},
        {{"160", "110", "9"}, "png", picture_dpi, "10 to 2400 dpi"},
        {{"160", "110", "-"}, "bmp", picture_dpi, "is no number"},
        {{"5000", "5000", "300"}, "png", picture_dpi, "200 million"},
    };
    const PictureSize before{.width = 20, .height = 30, .dpi = 150};
    for (const Row& row : rows) {
        const PictureTaken taken = take_picture_size(row.texts, row.format, before);
        EXPECT_EQ(!taken.refusal, std::string(row.rule).empty()) << row.texts[0] << row.format << row.rule;
        if (!taken.refusal) {
            EXPECT_EQ(taken.size, (PictureSize{160, 110, has_pixels(row.format) ? 300.0 : 150.0}));
            continue;
        }
        EXPECT_EQ(taken.refusal->box, row.box) << row.rule;
        EXPECT_THAT(taken.refusal->rule, HasSubstr(row.rule));
        EXPECT_EQ(taken.size, before);
    }
    // 160 mm at 300 dots an inch of 25.4 mm: 1889.8; 110 mm: 1299.2.
    EXPECT_EQ(pixels_text({160, 110, 300}, "png"), "1890 x 1299 pixels");
    EXPECT_EQ(pixels_text({160, 110, 300}, "svg") + pixels_text({5000, 5000, 300}, "png"), "");
}

TEST(PictureForm, completes_names_without_an_ending) {
    constexpr const char* rows[][3] = {{"a/b", "emf", "a/b.emf"},
                                       {"a/b.EMF", "bmp", "a/b.EMF"},
                                       {"a.d/R 0.5", "png", "a.d/R 0.5.png"},
                                       {"a.", "svg", "a.svg"},
                                       {"a.gif", "png", "a.gif"},
                                       {"", "png", ""},
                                       {"a.old copy", "png", "a.old copy.png"}};
    for (const auto& [typed, format, path] : rows) EXPECT_EQ(picture_path(typed, format), path);
}

TEST(PictureForm, names_files_by_substance_and_axes) {
    Session session = sample::propane();
    QueuedMessages user;
    EXPECT_EQ(picture_name(session), "Propane");
    const std::pair<Kind, const char*> rows[] = {{Kind::p_v, "Propane p-v"},
                                                 {Kind::sat_lnp_invT, "Propane ln(p)-1_T"},
                                                 {Kind::eH_s_isobar, "Propane eH-T(surr)_s"}};
    for (const auto& [kind, name] : rows) {
        unload_sheet(session.diagram);
        choose_diagram(session, kind, user);
        EXPECT_EQ(picture_name(session), name);
    }
    session.diagram.sheet->diagram.kind = Kind::none;
    session.diagram.sheet->diagram.title = "a/b: \"c\"\n";
    EXPECT_EQ(picture_name(session), "Propane a_b_ _c__");
}

TEST(PictureForm, the_data_are_those_of_the_sheet) {
    Session session = sample::propane();
    QueuedMessages user;
    EXPECT_THAT(sheet_data(session).refusal->text, HasSubstr("no longer there"));
    choose_diagram(session, Kind::p_v, user);
    EXPECT_THAT(sheet_data(session).refusal->text, HasSubstr("neither curves nor points"));
    take_parameter(session, "400", user);
    draw_curve(session, user);
    session.diagram.LastFile = "a.oc2";
    const SheetData data = sheet_data(session);
    ASSERT_FALSE(data.refusal);
    EXPECT_EQ(data.table.heads.at(1), "C.1 p");
    EXPECT_EQ(data.table.rows.size(), session.diagram.sheet->curve(1).series.points.size());
    EXPECT_THAT(data.table.title, Contains(StartsWith("loaded from a.oc2")));
    // Another sheet does not come from the file.
    choose_diagram(session, Kind::T_v, user);
    EXPECT_EQ(session.diagram.LastFile, "");
}

}  // namespace
}  // namespace quom

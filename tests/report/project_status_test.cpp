#include "report/project_status.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/dates.h"
#include "session/project_file.h"
#include "substance/substance_support.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

std::vector<std::string> lines_of(const Session& session, const std::string& title) {
    for (const StatusSection& section : project_status(session))
        if (section.title == title) return section.lines;
    ADD_FAILURE() << "no section " << title;
    return {};
}

TEST(ProjectStatus, of_a_session_that_is_not_defined) {
    EXPECT_STREQ(project_status_caption, " Info Project");
    EXPECT_EQ(project_status_text({}),
              "project\n    (not yet completely defined)\n\n"
              "substance database\n    (none)\n\n"
              "substance\n    no substance\n\n"
              "exper. data T-p-rho-HLV-cp\n    none\n\n"
              "Default parameters for isothermal, isobaric, isochoric diagrams\n"
              "    T/K = 0, p/kPa = 0, v/(m^3/kmol) = 0\n\n"
              "(For more parameters cf. \"Models\" and \"Options\".)\n");
    Session session = test::starter_session();
    EXPECT_THAT(lines_of(session, "substance database"),
                ElementsAre("    quom.q07  with  " + std::to_string(session.database.StoffAnzahl()) +
                            " substance(s)"));
}

TEST(ProjectStatus, where_the_project_came_from) {
    const test::Folder folder;
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    session.ProgramPath = folder.path();
    EXPECT_THAT(lines_of(session, "project"), ElementsAre("    new (still unnamed)"));
    EXPECT_THAT(lines_of(session, "substance"), ElementsAre("    Propane  C3H8  74-98-6"));
    SilentMessages nobody;
    const std::string long_name = folder.path("x_" + std::string(40, 'n') + "_end.QC6");
    ASSERT_TRUE(SaveProjectAs(session, long_name, {}, nobody).success);
    const std::vector<std::string> named = lines_of(session, "project");
    EXPECT_EQ(named.at(0), "    " + long_name.substr(long_name.size() - 60));
    EXPECT_EQ(named.at(1), "    date of the file   " + today_text());
    EXPECT_EQ(named.at(2), "    Project comment: <>");
    ASSERT_TRUE(SaveLastSession(session, nobody).success);
    ASSERT_TRUE(LoadLastSession(session, nobody).success);
    EXPECT_THAT(lines_of(session, "project"), ElementsAre("    last session"));
}

TEST(ProjectStatus, measured_data) {
    const std::string title = "exper. data T-p-rho-HLV-cp";
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    change(session, [](Document& d) { d.exp.points.edit().resize(2); });
    EXPECT_THAT(lines_of(session, title), ElementsAre("    1 exper. point available, not yet saved."));
    change(session, [](Document& d) {
        d.exp.points.edit().resize(4);
        d.exp.file = {"/data/a.BAQ", "a.BAQ", "1.2.2003", "by hand", "74-98-6", "Propane"};
    });
    const std::string file = "    File a.BAQ  from  1.2.2003   with  3  experimental points  ";
    EXPECT_THAT(lines_of(session, title),
                ElementsAre(file, "    substance:  74-98-6  Propane", "    file comment: by hand"));
    change(session, [](Document& d) {
        d.exp.ExpGeaendert = true;
        d.exp.file.ExpCAS = "64-17-5";
    });
    EXPECT_THAT(lines_of(session, title),
                ElementsAre("    3 exper. points available, not yet saved.", file, HasSubstr("64-17-5"),
                            StartsWith("    file comment:"), "    WARNING:",
                            "    the substance of the data file is not identical with the presently loaded "
                            "component"));
}

TEST(ProjectStatus, start_values_of_diagrams) {
    const std::string title = "Default parameters for isothermal, isobaric, isochoric diagrams";
    Session session = test::substance_session(test::propane, Eos::peng_robinson);
    const auto with_vcr = [&](double difference) {
        change(session, [&](Document& d) {
            d.units.TcrStart = 300.5;
            d.units.pcrStart = 100;
            d.units.vcrStart = session.fluid->eos.vcrEOS + difference;
        });
        return lines_of(session, title);
    };
    EXPECT_EQ(with_vcr(0.0009).size(), 1u);
    EXPECT_THAT(with_vcr(0)[0], StartsWith("    T/K = 300.5, p/kPa = 100, v/(m^3/kmol) = 0.2"));
    EXPECT_THAT(with_vcr(-0.0011), ElementsAre(HasSubstr("T/K"),
                                               "  (The CEOS Peng / Robinson was applied to calculate the "
                                               "parameter v(crit))"));
}

}  // namespace
}  // namespace quom

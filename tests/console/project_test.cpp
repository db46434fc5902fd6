#include <gmock/gmock.h>

#include <filesystem>

#include "base/files.h"
#include "console/quomc_run.h"
#include "substance/substance_support.h"

namespace quom {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

nlohmann::json value_of(const nlohmann::json& json, const char* name) {
    return row(json["values"], "name", name);
}

TEST(QuomcProject, what_is_saved_is_told_again) {
    const test::Folder folder;
    const std::string file = folder.path("p.QC6");
    const std::string data = folder.write("a.BAQ",
                                          "1.2.2003\r\n<>\r\n74-98-6;Propane\r\n1\r\n"
                                          "300\r\n997\r\n490\r\n0\r\n0\r\n0\r\n");
    const auto saved =
        found("project --save " + file +
              " propane --eos 5 --evp 4 --concept partial --tref 273.15 --href 12.5 --energy 3 "
              "--comment für~später --data " +
              data);
    const auto again = found("project " + file + " --info");
    EXPECT_EQ(saved["project"], again["project"]);
    EXPECT_EQ(saved["values"], again["values"]);
    const nlohmann::json& project = again["project"];
    EXPECT_EQ(project["file"], file);
    EXPECT_EQ(project["comment"], "für später");
    EXPECT_EQ(project["StoffCAS"], "74-98-6");
    EXPECT_EQ(project["StoffName"], "Propane");
    EXPECT_EQ(project["database"], project["database_file"]);
    EXPECT_EQ(project["data"], "a.BAQ");
    EXPECT_EQ(project["data_file"], data);
    EXPECT_EQ(project["points"], 1);
    EXPECT_EQ(value_of(again, "EOSKode")["value"], "5");
    EXPECT_THAT(std::string(value_of(again, "EOSKode")["meaning"]), HasSubstr("Soave"));
    EXPECT_EQ(value_of(again, "EVPKode")["value"], "4");
    EXPECT_EQ(value_of(again, "Konzept")["meaning"], "PARTIAL");
    EXPECT_EQ(value_of(again, "EnergyMode")["value"], "3");
    EXPECT_EQ(value_of(again, "TRef0")["value"], "273.15");
    EXPECT_EQ(value_of(again, "hOffset")["value"], "12.5");
    EXPECT_EQ(value_of(again, "hOffset")["unit"], "kJ/kmol");
    EXPECT_THAT(again["missing"], IsEmpty());
    const CommandRun text = quomc("project " + file);
    EXPECT_THAT(text.out, AllOf(HasSubstr("Project p.QC6"), HasSubstr("für später"), HasSubstr("PARTIAL"),
                                Not(HasSubstr("Missing"))));
}

TEST(QuomcProject, what_is_missing_is_told) {
    const test::Folder folder;
    const std::string golden = test::golden("ethanol.QC6");
    const auto beside = found("project " + golden);  // its database lies beside it, its data do not
    EXPECT_EQ(beside["project"]["database_file"], test::golden("two_substances.q07"));
    EXPECT_EQ(beside["project"]["StoffName"], "Ethanol");
    ASSERT_EQ(beside["missing"].size(), 1u);
    EXPECT_EQ(beside["missing"][0]["what"], "data");

    // Away from it the substance is that of the database in force.
    const std::string alone = folder.write("alone.QC6", test::bytes_of(golden));
    const auto away = found("project " + alone);
    EXPECT_EQ(away["missing"][0]["what"], "database");
    EXPECT_TRUE(away["project"]["database_file"].is_null());
    EXPECT_EQ(away["project"]["StoffName"], "Ethanol");
    // No database at all: it cannot be loaded.
    const CommandRun none = quomc("--program-folder " + folder.path() + " project " + alone + " --json");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.json()["missing"].size(), 3u);
    EXPECT_THAT(none.err, AllOf(HasSubstr("was not found"), HasSubstr("64-17-5")));

    std::string odd = test::bytes_of(golden);
    odd.replace(odd.find("\r\n250\r\n"), 7, "\r\n0\r\n");
    const auto replaced = found("project " + folder.write("odd.QC6", odd));
    ASSERT_EQ(replaced["replaced"].size(), 1u);
    EXPECT_EQ(replaced["replaced"][0]["line"], 14);
    EXPECT_EQ(replaced["replaced"][0]["name"], "Dens");
    EXPECT_EQ(replaced["replaced"][0]["taken"], "500");
}

TEST(QuomcProject, refusals) {
    const test::Folder folder;
    const std::string short_file = folder.write("short.QC6", "1\r\n2\r\n");
    struct Case {
        std::string line;
        int status;
        const char* text;
    };
    const Case cases[] = {
        {"project", 2, "WHAT"},
        {"project " + folder.path("absent.QC6"), 3, "absent.QC6"},
        {"project " + short_file, 3, "before line 3 (database)"},
        {"project " + short_file + " --eos 5", 2, "--eos belongs to --save"},
        {"project " + short_file + " --comment x", 2, "--comment belongs to --save"},
        {"project --save " + folder.path("x.QC6") + " propane --info", 2, "one of them"},
        {"project --save " + folder.path("x.txt") + " propane", 2, "*.QC6"},
        {"project --save " + folder.path("x.QC6") + " no~such~thing", 1, "no such thing"},
        {"project --save " + folder.path("no/x.QC6") + " propane", 3, "x.QC6"},
        {"project --save " + folder.path("x.QC6") + " propane --data " + short_file, 2, "*.BAQ"},
        {"project --save " + folder.path("x.QC6") + " propane --data " + folder.path("no.BAQ"), 3, "no.BAQ"},
    };
    for (const Case& c : cases) {
        const CommandRun run = quomc(c.line);
        EXPECT_EQ(run.status, c.status) << c.line << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.text)) << c.line;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("x.QC6")));
    // A refused save keeps the file that is there.
    EXPECT_EQ(test::bytes_of(short_file), "1\r\n2\r\n");
}

TEST(QuomcProject, what_a_project_cannot_hold_is_noted) {
    const test::Folder folder;
    const auto typed = found("project --save " + folder.path("v.QC6") + " propane --eos 10 --b0 0.01");
    EXPECT_THAT(typed["notes"].dump(), HasSubstr("constants of this equation"));
    const auto units = found("project --save " + folder.path("u.QC6") + " propane --units h=kJ/kg");
    EXPECT_THAT(units["notes"].dump(), HasSubstr("--energy"));
}

}  // namespace
}  // namespace quom

// What quomc refuses, with which status and in which words.
#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "quomc_run.h"
#include "support/reduced_database.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

struct Refused {
    const char* line;
    int status;
    const char* sentence;
};

class Refusals : public ::testing::TestWithParam<Refused> {};

TEST_P(Refusals, status_and_sentence) {
    const CommandRun run = quomc(GetParam().line);
    EXPECT_EQ(run.status, GetParam().status);
    EXPECT_THAT(run.err, HasSubstr(GetParam().sentence));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err.find("Right: quomc ") != std::string::npos, run.status == 2);

    const CommandRun json = quomc(std::string("--json ") + GetParam().line);
    EXPECT_EQ(json.status, GetParam().status);
    EXPECT_THAT(json.json()["message"].get<std::string>(), HasSubstr(GetParam().sentence));
}

INSTANTIATE_TEST_SUITE_P(
    arguments, Refusals,
    ::testing::Values(
        Refused{"", 2, "A command is needed: list, find, show"},
        Refused{"melt water", 2, "A command is needed: list, find, show"},
        Refused{"state", 2, "SUBSTANCE is required"}, Refused{"state water --T", 2, "--T"},
        Refused{"state water --T 300 --p 100 --colour red", 2, "--colour"},
        Refused{"state water --T abc --p 100", 2, "\"abc\" is not a number; a number such as 300"},
        Refused{"state water --T 300,5 --p 100", 2, "with a decimal point is right"},
        Refused{"state water --T nan --p 100", 2, "\"nan\" is not a number"},
        Refused{"state water --T 1e999 --p 100", 2, "\"1e999\" is not a number"},
        Refused{"state water --T 300furlong --p 100", 2,
                "T has no unit \"furlong\"; it may be K, °C, °F, °R."},
        Refused{"state water --T 300bar --p 100", 2, "--T: T has no unit \"bar\""},
        Refused{"state water --T 300 --p 5~mPa", 2, "p has no unit \"mPa\"; it may be kPa, Pa, hPa, MPa"},
        Refused{"state water --T -300C --p 100", 2, "-300C is not possible; a value above 0 K is right."},
        Refused{"state water --T 20,5C --p 100", 2, "with a decimal point is right"},
        Refused{"state water --T C --p 100", 2, "\"C\" is not a number"},
        Refused{"state water --T 300 --rho 0m3/kg", 2, "0 m^3/kg is no rho"},
        Refused{"tank water --T 300 --V 1kg --m 1", 2, "V has no unit \"kg\"; it may be m^3, l"},
        Refused{"state water --T 300 --p 100 --units T", 2,
                "\"T\" names no unit; right is for example h=kJ/kg,T=C."},
        Refused{"state water --T 300 --p 100 --units x=C", 2, "\"x\" is no quantity; there are T, p, rho"},
        Refused{"state water --T 300 --p 100 --units p=C", 2, "p has no unit \"C\""},
        Refused{"state water --T 300 --p 1 --units s=J/g/K --energy 3", 2,
                "--energy and --units both give the unit of s"},
        Refused{"state water --T 300 --p 1 --units v=l/kg --volume 1", 2,
                "--volume and --units both give the unit of v"},
        Refused{"iso water --p 100 --hold h --value 5K", 2, "--value: h has no unit \"K\""},
        Refused{"iso water --p 100 --hold h --value 5kJ/kg --energy 3", 2,
                "choose the unit of the output by --units"},
        Refused{"state water --T 0 --p 100", 2, "a number above 0 is right [K]"},
        Refused{"state water --T 300 --p -1", 2, "a number above 0 is right [kPa]"},
        Refused{"state water --T 300", 2, "One value is not a state. Two of --T, --p, --rho are needed."},
        Refused{"state water --T 300 --p 1 --rho 1", 2, "Three values are too many."},
        Refused{"saturation water", 2, "--T or --p"},
        Refused{"saturation water --T 300 --p 3", 2, "one is needed"}, Refused{"virial water", 2, "--T"},
        Refused{"models water --eos 9", 2, "\"9\" is no code; there are 0, 2, 3"},
        Refused{"models water --eos 6.5", 2, "\"6.5\" is no code"},
        Refused{"models water --concept both", 2, "global|partial is right"},
        Refused{"models water --concept global --eos 16", 2, "needs a cubic equation of state"},
        Refused{"models water --eos 10", 2, "--b0 B0 --b1 B1 --b2 B2"},
        Refused{"models water --b1 3", 2, "add --eos 10"}, Refused{"models water --eos 7", 2, "--ji FILE"},
        Refused{"models water --ji par.dat", 2, "--eos 7 and 8"},
        Refused{"models water --hlv 2 --watson 0.4", 2, "exponent of --hlv 4"},
        Refused{"models water --hlv 4 --watson 12", 2, "below 10"},
        Refused{"models water --ref 2 --tref 300", 2, "belong to --ref 1"},
        Refused{"models water --benson --database-rhol", 2, "--benson"}));

INSTANTIATE_TEST_SUITE_P(
    substances, Refusals,
    ::testing::Values(
        Refused{"show watre", 1, "There is no substance \"watre\" in quom.q07; did you mean \"Water\"?"},
        Refused{"show C4H10", 1,
                "\"C4H10\" stands for 2 substances: \"Butane\" (106-97-8), \"Isobutane\" (75-28-5)"},
        Refused{"state etanol --T 300 --p 100", 1, "did you mean \"Ethanol\"?"},
        Refused{"find Etanol", 1, "contains \"Etanol\"; did you mean \"Ethanol\"?"},
        Refused{"show qqqqqqqq", 1, "\"quomc list\" shows all "},
        Refused{"show #0", 1, "the list goes from #1 to #"}, Refused{"show #99999", 1, "from #1 to #"},
        Refused{"show #one", 1, "from #1 to #"}, Refused{"find qqqqqqqq", 1, "contains \"qqqqqqqq\""},
        Refused{"state water --T 500 --rho 1500", 1, "is not above the covolume b = "},
        Refused{"saturation water --T 650", 1, "650 K is not below T(cr) = 647.096 K"},
        Refused{"saturation water --p 3e4", 1, "not below p(cr) = 22064 kPa"},
        Refused{"state water --T 300 --p 1 --volume 2 --eos 16", 1, "does not provide V(cr)"}));

INSTANTIATE_TEST_SUITE_P(
    files, Refusals,
    ::testing::Values(Refused{"list --db nowhere.q07", 3, "There is no database \"nowhere.q07\""},
                      Refused{"list --db SYNOM7.TXT", 3, "ends neither in .Q07 nor in .Q06"},
                      Refused{"list --program-folder /nowhere/at/all", 3,
                              "\"/nowhere/at/all\" of --program-folder is not a folder"},
                      Refused{"models water --eos 7 --ji nowhere.dat", 3, "nowhere.dat"}));

// A reference state without its data in the record.
TEST(ReferenceState, what_the_record_lacks_is_named) {
    for (const auto& [cell, ref, missing] : {std::tuple{89, 2, "conventional entropy"},
                                             {85, 2, "enthalpy of formation"},
                                             {85, 10, "enthalpy of formation"},
                                             {87, 10, "Gibbs energy of formation"}}) {
        const test::ReducedDatabase database(test::propane, {cell});
        const std::string line =
            "state propane --T 400 --p 10 --ref " + std::to_string(ref) + " --db " + database.path();
        const CommandRun run = quomc(line), json = quomc("--json " + line);
        EXPECT_EQ(run.status, 1) << missing;
        EXPECT_THAT(run.err, HasSubstr(missing));
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(json.status, 1) << missing;
        EXPECT_THAT(json.json()["message"].get<std::string>(), HasSubstr(missing));
    }
}

// A database that is cut, foreign or whole, in the current folder.
TEST(Databases, cut_foreign_and_whole) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("quomc-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    const fs::path file = folder / "mine.Q07";
    fs::copy_file(fs::path(test::starter_data()) / "quom.q07", file);
    const std::string line = "show water --db " + file.string();
    EXPECT_EQ(quomc(line).status, 0);

    fs::resize_file(file, 5000);
    CommandRun run = quomc(line);
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.err, HasSubstr("cut off"));

    std::ofstream(file) << "This is a letter to a friend.";
    run = quomc(line);
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.err, HasSubstr("\"mine.Q07\" is no database"));
    fs::remove_all(folder);
}

TEST(Help, every_command_has_its_form_and_example) {
    const CommandRun all = quomc("--help");
    EXPECT_EQ(all.status, 0);
    for (const char* command : {"list", "find", "show", "models", "state", "saturation", "virial"}) {
        EXPECT_THAT(all.out, HasSubstr(std::string("\n  ") + command + " "));
        const CommandRun one = quomc(std::string(command) + " --help");
        EXPECT_EQ(one.status, 0);
        EXPECT_THAT(one.out, HasSubstr(std::string("Usage: quomc ") + command));
        EXPECT_THAT(one.out, HasSubstr(std::string("  quomc ") + command));
    }
}

}  // namespace
}  // namespace quom

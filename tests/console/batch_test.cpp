// quomc batch against calc point by point; its files; what it refuses.
#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "base/files.h"
#include "console/quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class BatchCommand : public ::testing::Test {
 protected:
    BatchCommand() {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        // T, p, rho(L), rho(V), delta(LV)h, cp of four points; the third is above T(cr).
        std::ofstream(path("points.BAQ"), std::ios::binary)
            << "2026-11-22\r\nsample\r\n74-98-6   ;Propane\r\n4\r\n"
            << "300\r\n990\r\n490\r\n21\r\n14900\r\n0\r\n"
            << "310\r\n1200\r\n0\r\n0\r\n0\r\n0\r\n"
            << "400\r\n5000\r\n0\r\n0\r\n0\r\n0\r\n"
            << "320\r\n1700\r\n450\r\n0\r\n0\r\n0\r\n";
    }
    ~BatchCommand() override { std::filesystem::remove_all(folder); }
    std::string path(const std::string& name) const { return folder + "/" + name; }
    std::string bytes(const std::string& name) const { return read_file(path(name)).bytes.value_or("none"); }
    std::string line(const std::string& rest) const {
        return "batch propane --data " + path("points.BAQ") + " " + rest;
    }
    const std::string folder = (std::filesystem::temp_directory_path() / "quom_batch_test").string();
};

TEST_F(BatchCommand, counts_and_means_are_those_of_single_calculations) {
    const nlohmann::json answer = found(line("--mode 4"));
    EXPECT_EQ(answer["batch"]["points"], 4);
    EXPECT_EQ(answer["batch"]["calculated"], 3);
    EXPECT_EQ(answer["batch"]["failed"], 1);
    EXPECT_EQ(answer["batch"]["data"], "points.BAQ");
    const struct { double T, p, rhoL; } points[] = {{300, 990, 490}, {310, 1200, 0}, {320, 1700, 450}};
    double sum_p = 0, sum_rhoL = 0;
    for (const auto& point : points) {
        const nlohmann::json single = found("calc propane --mode 4 --T " + number(point.T));
        sum_p += std::fabs(at(single, "/slots/p") / point.p - 1.0) * 100.0;
        if (point.rhoL != 0)
            sum_rhoL += std::fabs(44.0956 / at(single, "/slots/v_L") / point.rhoL - 1.0) * 100.0;
    }
    // Lists keep singles; the molar mass of the record has its own digits.
    EXPECT_NEAR(row(answer["deviations"], "quantity", "p")["mean"].get<double>(), sum_p / 3, 1e-4);
    EXPECT_EQ(row(answer["deviations"], "quantity", "p")["count"], 3);
    EXPECT_NEAR(row(answer["deviations"], "quantity", "rho_L")["mean"].get<double>(), sum_rhoL / 2, 1e-2);
    EXPECT_EQ(row(answer["deviations"], "quantity", "hLV")["count"], 1);
    EXPECT_THAT(quomc(line("--mode 4")).out, HasSubstr("Calculated against measured"));
}

TEST_F(BatchCommand, list_and_record_on_the_disk) {
    ASSERT_EQ(quomc(line("--mode 4 --ext 4 --functions --lst " + path("a.LST") + " --csv " + path("a.CSV") +
                         " --sep ,"))
                  .status,
              0);
    const std::string list = bytes("a.LST");
    EXPECT_THAT(list, HasSubstr("\r\n  Name of Batchfile    : points.BAQ\r\n"));
    EXPECT_THAT(list, HasSubstr("\r\n2        310        1200 "));
    EXPECT_THAT(list, Not(HasSubstr("\r\n3        400 "))) << "a point without a result is left out";
    EXPECT_THAT(list, HasSubstr("\r\nfor data set 4\r\nT/K = 320 "));
    const std::string record = bytes("a.CSV");
    const auto rows = split_lines(record);
    ASSERT_EQ(rows.size(), 10u) << "three of the four points have a row";
    EXPECT_TRUE(rows[6].starts_with("T,p,v(V),h(V),"));
    EXPECT_TRUE(rows[7].starts_with("300,"));
    EXPECT_TRUE(rows[9].starts_with("320,"));
}

TEST_F(BatchCommand, functions_of_the_database_have_rows_without_a_phase) {
    const std::string csv = path("cp.CSV");
    EXPECT_EQ(found(line("--mode 16 --csv " + csv))["batch"]["calculated"], 4);
    const std::string record = bytes("cp.CSV");
    EXPECT_EQ(split_lines(record).at(6), "T;cp(idG);");
}

TEST_F(BatchCommand, refusals) {
    const struct {
        std::string line;
        int status;
        const char* says;
    } cases[] = {
        {"batch propane --mode 4", 2, "--data FILE.BAQ"},
        {"batch propane --mode 4 --data " + path("none.BAQ"), 3, "none.BAQ"},
        {line("--mode 4 --project x.QC6"), 2, "--project FILE"},
        {line("--mode 9"), 2, "quomc tank"},
        {line("--mode 4 --sep ;;"), 2, "one character"},
        {line("--mode 4 --functions"), 2, "--ext"},
        {line("--mode 2 --eos 0"), 1, "possible only using a cubic EOS"},
        {line("--mode 4 --lst /nowhere/at/all.LST"), 3, "/nowhere/at/all.LST"},
        {"batch --project " + path("none.QC6") + " --mode 4", 3, "none.QC6"},
        {"batch --project " + path("none.QC6") + " --mode 4 --eos 4", 2, "its own models"},
        {"batch propane --mode 4 --data " + path("hot.BAQ"), 1, "No point has a result"},
    };
    std::ofstream(path("hot.BAQ")) << "d\nc\n74-98-6;Propane\n1\n400\n0\n0\n0\n0\n0\n";
    std::ofstream(path("empty.BAQ")) << "d\nc\n74-98-6;Propane\n0\n";
    EXPECT_EQ(quomc("batch propane --mode 4 --data " + path("empty.BAQ")).status, 3);
    for (const auto& c : cases) {
        const CommandRun run = quomc(c.line);
        EXPECT_EQ(run.status, c.status) << c.line << "\n" << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.says)) << c.line;
    }
}

// A project that this program saved: the same batch as from its parts.
TEST_F(BatchCommand, from_a_project) {
    const CommandRun saved =
        quomc("project --save " + path("p.QC6") + " propane --data " + path("points.BAQ"));
    if (saved.status != 0) GTEST_SKIP() << saved.err;
    const nlohmann::json by_project = found("batch --project " + path("p.QC6") + " --mode 4");
    const nlohmann::json by_parts = found(line("--mode 4"));
    EXPECT_EQ(by_project["batch"], by_parts["batch"]);
    EXPECT_EQ(by_project["deviations"], by_parts["deviations"]);
}

}  // namespace
}  // namespace quom

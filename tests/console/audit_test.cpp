// audit: doubts on the records of a database file, as text and as JSON.
#include <gmock/gmock.h>

#include <cstdio>
#include <set>

#include "base/csv_rows.h"
#include "base/files.h"
#include "quomc_run.h"
#include "substance/record.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using Json = nlohmann::json;

// The starter database with one cell of water changed, on the disk.
std::string database_with(int cell, float value) {
    const FileBytes starter = read_file(test::starter_data() + "/quom.q07");
    EXPECT_TRUE(starter.bytes);
    const RecordLayout& layout = *record_layout(7);
    std::string bytes = *starter.bytes, water = bytes.substr(layout.length, layout.length);
    set_record_cell(water, layout, cell, value);
    bytes.replace(layout.length, layout.length, water);
    const std::string path = ::testing::TempDir() + "quom_audit_test.q07";
    EXPECT_EQ(write_file_atomic(path, bytes), "");
    return path;
}

// T(nb) 373.124 K with a wrong digit: at 372.124 K water has 97.74 kPa (steam tables).
TEST(Audit, a_wrong_digit_in_a_database_file) {
    const std::string path = database_with(10, 372.124f);
    const Json answer = found("audit water --db " + path);
    ASSERT_FALSE(answer["doubts"].empty());
    const Json doubt = row(answer["doubts"], "check", "boiling_p");
    EXPECT_EQ(doubt["StoffCAS"], "7732-18-5");
    EXPECT_EQ(doubt["StoffName"], "Water");
    EXPECT_NEAR(at(doubt, "/value"), 97.74, 0.1);
    EXPECT_NEAR(at(doubt, "/reference"), 101.325, 1e-9);
    EXPECT_NEAR(at(doubt, "/difference"), -3.5, 0.1);
    EXPECT_EQ(doubt["unit"], "kPa");
    EXPECT_EQ(doubt["difference_unit"], "%");
    EXPECT_EQ(answer["audit"]["records"], 1);
    EXPECT_EQ(answer["audit"]["count"], answer["doubts"].size());
    EXPECT_EQ(at(row(answer["rules"], "check", "boiling_p"), "/tolerance"), 1);

    const CommandRun text = quomc("audit water --db " + path);
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.out, HasSubstr("7732-18-5  Water"));
    EXPECT_THAT(text.out, EndsWith(" doubts in 1 of 1 record.\n"));

    // The whole database: the same doubts among those of the others.
    const Json all = found("audit --db " + path);
    EXPECT_GT(at(all, "/audit/records"), 400);
    EXPECT_EQ(row(all["doubts"], "StoffCAS", "7732-18-5"), answer["doubts"][0]);
    std::remove(path.c_str());
}

// What contradicts itself in the starter database is known, with its reason, and nothing else does.
TEST(Audit, the_starter_database_has_the_known_doubts_only) {
    const FileBytes file = read_file(test::test_data() + "/../data/known_doubts.csv");
    ASSERT_TRUE(file.bytes);
    std::set<std::string> known, seen;
    for (const CsvRow& row : csv_rows(*file.bytes)) {
        ASSERT_EQ(row.fields.size(), 3u) << row.line;
        EXPECT_FALSE(row.fields[2].empty()) << row.line;
        if (row.line == 1) continue;  // the head
        EXPECT_TRUE(known.insert(row.fields[0] + " " + row.fields[1]).second) << row.line;
    }
    const Json answer = found("audit");
    for (const Json& doubt : answer["doubts"])
        seen.insert(doubt["StoffCAS"].get<std::string>() + " " + doubt["check"].get<std::string>());
    EXPECT_EQ(seen, known);
}

TEST(Audit, no_doubt_and_refusals) {
    const CommandRun good = quomc("audit water");
    EXPECT_EQ(good.status, 0);
    EXPECT_THAT(good.out, EndsWith("No doubt in 1 record.\n"));
    EXPECT_TRUE(found("audit water")["doubts"].empty());
    EXPECT_THAT(quomc("audit water --rules").out, HasSubstr("critical_Z"));
    EXPECT_EQ(quomc("audit nosuchsubstance").status, 1);
    EXPECT_EQ(quomc("audit --db /nonexistent/file.q07").status, 3);
    EXPECT_EQ(quomc("audit water ethanol").status, 2);
}

}  // namespace
}  // namespace quom

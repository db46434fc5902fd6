#include "console/sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "base/files.h"
#include "calc/calc_batch.h"
#include "quomc_run.h"
#include "support/starter.h"

namespace quom::console {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Table {
    SweepTotals totals;
    std::vector<std::string> lines;  // head first
};

// Runs a sweep over text; read hands out pieces of the given size.
Table sweep(const Session& s, const SweepSettings& settings, std::string_view in,
            std::size_t piece = 1 << 20) {
    std::string out;
    const SweepStreams streams{.read =
                                   [&in, piece](char* into, std::size_t space) {
                                       const std::size_t n = std::min({space, piece, in.size()});
                                       in.copy(into, n);
                                       in.remove_prefix(n);
                                       return n;
                                   },
                               .write = [&out](std::string_view bytes) { return out.append(bytes), true; }};
    Table table;
    table.totals = run_sweep(s, settings, streams);
    for (const std::string_view line : split_lines(out)) table.lines.emplace_back(line);
    return table;
}

std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> list(1);
    for (const char c : line) {
        if (c == ';')
            list.emplace_back();
        else
            list.back() += c;
    }
    return list;
}
std::string cell(const Table& table, std::size_t row, const std::string& column) {
    const std::vector<std::string> head = cells(table.lines[0]), values = cells(table.lines[row]);
    for (std::size_t i = 0; i < head.size(); ++i)
        if (head[i] == column) return values[i];
    ADD_FAILURE() << "no column " << column;
    return {};
}

Session propane() { return test::substance_session(test::propane, 6); }

// The same numbers as CalcBatch, to the last digit.
TEST(Sweep, gives_the_results_of_single_calculations) {
    Session s = propane();
    const Table table =
        sweep(s, {.mode = 3, .functions = true}, "p;note;T/K\n500;a;300\r\n\n2000;b;300\n6000;c;450\n");
    ASSERT_EQ(table.lines.size(), 4u);
    EXPECT_EQ(table.totals.lines, 3u);
    struct Row {
        double T, p;
        const char* phase;
        const char* filled;  // the phase whose columns are filled
        int slot;
    };
    const Row rows[] = {{300, 500, "V", "h(V)", slot_hV},
                        {300, 2000, "L", "h(L)", slot_hL},
                        {450, 6000, "fluid", "h(V)", slot_hV}};
    for (std::size_t i = 0; i < 3; ++i) {
        const Row& row = rows[i];
        s.exp.points[0] = {};
        s.exp.points[0].T = row.T, s.exp.points[0].p = row.p;
        s.calc.ShowFunctions = true;
        const CalcBatchResult r = CalcBatch(s, {.Mode = 3, .Quiet = true, .want_text = false});
        EXPECT_EQ(cell(table, i + 1, "phase"), row.phase);
        EXPECT_EQ(std::strtod(cell(table, i + 1, row.filled).c_str(), nullptr), r.Result[row.slot]);
        EXPECT_EQ(cell(table, i + 1, row.filled == std::string("h(L)") ? "h(V)" : "h(L)"), "");
    }
}

// Pieces, jobs and blocks change nothing: every line in its place.
TEST(Sweep, keeps_the_order_however_it_is_cut) {
    const Session s = propane();
    std::string in = "T,p\n";
    for (int i = 0; i < 20000; ++i)
        in += std::to_string(250 + i % 300) + "." + std::to_string(i % 7) + "," + std::to_string(100 + i) +
              "\n";
    in.pop_back();  // the last line has no end
    const Table one = sweep(s, {.mode = 3}, in);
    ASSERT_EQ(one.lines.size(), 20001u);
    EXPECT_THAT(one.lines[20000], StartsWith("449,20099,"));
    for (const std::size_t piece : {std::size_t{999}, std::size_t{65536}}) {
        for (const int jobs : {1, 3})
            EXPECT_EQ(sweep(s, {.mode = 3, .jobs = jobs}, in, piece).lines, one.lines) << jobs;
    }
}

// A line that cannot be read or calculated leaves its neighbours alone; its number counts every line of the
// file.
TEST(Sweep, names_the_lines_that_it_cannot_read) {
    const Session s = propane();
    const char* good = "300;500";
    struct Case {
        const char* line;
        const char* message;
    };
    const Case cases[] = {{"abc;500", "line 3: T is no number: \"\"abc\"\"\""},
                          {"300;1,5", "line 3: p is no number"},
                          {";500", "line 3: T is no number"},
                          {"300", "line 3: only 1 of 2 columns"},
                          {"300;500;7", "line 3: more columns than the head"},
                          {"1e999;500", "line 3: T is no number"},
                          {"nan;500", "line 3: T is no number"}};
    const std::vector<std::string> alone = sweep(s, {.mode = 3}, "T;p\n" + std::string(good) + "\n").lines;
    for (const Case& c : cases) {
        const Table t =
            sweep(s, {.mode = 3}, "T;p\n" + std::string(good) + "\n" + c.line + "\n" + good + "\n");
        ASSERT_EQ(t.lines.size(), 4u) << c.line;
        EXPECT_THAT(cell(t, 2, "message"), HasSubstr(std::string(c.message).substr(0, 20))) << c.line;
        EXPECT_EQ(t.lines[1], alone[1]);
        EXPECT_EQ(t.lines[3], alone[1]);
        EXPECT_EQ(t.totals.malformed, 1u);
        ASSERT_EQ(t.totals.faults.size(), 1u);
        EXPECT_THAT(t.totals.faults[0], StartsWith("line 3: "));
    }
}

TEST(Sweep, tells_why_a_line_has_no_result_and_warns) {
    const Session s = propane();
    const Table t = sweep(s, {.mode = 4}, "T\n300\n500\n0\n80\n");
    ASSERT_EQ(t.lines.size(), 5u);
    EXPECT_EQ(cell(t, 1, "message"), "");
    EXPECT_THAT(cell(t, 2, "message"), HasSubstr("T(cr)"));
    EXPECT_EQ(cell(t, 2, "T"), "500");
    EXPECT_EQ(cell(t, 2, "p"), "");
    EXPECT_THAT(cell(t, 3, "message"), HasSubstr("no T"));
    EXPECT_EQ(t.totals.failed + t.totals.warned, 3u);
    const Table liquid = sweep(s, {.mode = 14}, "T\n300\n60\n");
    EXPECT_THAT(cell(liquid, 2, "message"), HasSubstr("more than 10 K outside"));
    EXPECT_EQ(cell(liquid, 1, "message"), "");
}

// Each mode has a column for what it delivers.
TEST(Sweep, has_the_columns_of_every_mode) {
    struct Case {
        int mode;
        const char* in;
        const char* column;
        double expected, tolerance;
    };
    const Case cases[] = {
        {1, "T;rho\n300;200\n", "eta(V)", 0.0685, 2e-3},  // between 508.7 and 21.6 kg/m^3
        {2, "T;rho(L)\n300;520\n", "rho(L)", 520.0, 1e-3},
        {4, "T\n300\n", "p", 997.4, 0.1},
        {5, "p\n997.426\n", "T", 300.0, 0.01},
        {6, "T\n300\n", "delta(LV)h", 14663.0, 60.0},
        {8, "T;p\n300;500\n", "sound speed(V)", 234.8, 0.1},
        {9, "V;m;T\n0.1;20;300\n", "m(L)", 18.63, 0.01},
        {13, "p;rho\n500;9.665957\n", "T", 300.0, 0.01},
        {16, "T\n298.15\n", "cp(idG)", 73.6, 0.3},  // Perry, 7th ed.: 73.6 kJ/(kmol K)
        {20, "T\n231.02\n", "p", 101.3, 1.0},       // boils at normal pressure
    };
    const Session s = propane();
    for (const Case& c : cases) {
        const Table t = sweep(s, {.mode = c.mode}, c.in);
        ASSERT_EQ(t.lines.size(), 2u) << c.mode << t.totals.broken;
        EXPECT_NEAR(std::strtod(cell(t, 1, c.column).c_str(), nullptr), c.expected, c.tolerance) << c.mode;
    }
}

TEST(Sweep, refuses_a_head_that_lacks_a_value) {
    const Session s = propane();
    EXPECT_THAT(sweep(s, {.mode = 3}, "T;x\n1;2\n").totals.broken, HasSubstr("no column p"));
    EXPECT_THAT(sweep(s, {.mode = 3}, "T;p;T\n1;2;3\n").totals.broken, HasSubstr("T twice"));
    EXPECT_THAT(sweep(s, {.mode = 3}, "").totals.broken, HasSubstr("no column T, p"));
    EXPECT_THAT(sweep(s, {.mode = 3}, "T;p\n1;2\n" + std::string(100000, '1')).totals.broken,
                HasSubstr("line 3 is longer"));
    EXPECT_EQ(sweep(s, {.mode = 3}, "\xEF\xBB\xBFT\tp\n300\t500\n").totals.lines, 1u);
}

// ---- The commands ----

TEST(Commands, calc_delivers_slots_by_name) {
    const Outcome run = quomc("calc propane --mode 4 --T 300 --functions --ext 4 --json");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    EXPECT_NEAR(json["slots"]["p"].get<double>(), 997.426, 0.01);
    EXPECT_EQ(json["state"]["phase"], "V+L");
    EXPECT_TRUE(json["slots"]["B"].is_null());
    EXPECT_LT(json["state"]["VRoot1"].get<double>(), json["state"]["VRoot3"].get<double>());
    EXPECT_LT(json["derivatives"]["(dp/dV) at T"]["V"].get<double>(), 0.0);  // mechanically stable
    EXPECT_EQ(json["units"]["slots"]["h(V)"], "kJ/kmol");
}

struct Refusal {
    const char* line;
    int status;
    const char* says;
};
TEST(Commands, say_what_is_wrong) {
    const Refusal cases[] = {
        {"calc propane --mode 3 --T 300", 2, "needs --p [kPa]"},
        {"calc propane --mode 3 --T 300 --p 500 --rho 5", 2, "--rho is no value of mode 3"},
        {"calc propane --mode 12", 2, "process line"},
        {"calc propane --mode 25", 2, "no mode of calculation"},
        {"calc propane --mode 2 --T 300 --rho 500 --eos 16", 1, "possible only using a cubic EOS"},
        {"calc propane --mode 4 --T 500", 1, "T(cr)"},
        {"calc propane --mode 3 --T 300 --p -1", 2, "above 0"},
        {"tank propane --T 300 --V 1", 2, "--m kg or --n kmol"},
        {"tank propane --T 300 --V 1 --m 9000", 1, ""},
        {"iso propane --T 300 --hold h", 2, "--value"},
        {"iso propane --T 300 --p 5 --hold h --value 1", 2, "one of --T and --p"},
        {"iso propane --T 300 --hold x --value 1", 2, "no function"},
        {"iso propane --T 300 --hold v --value 50 --phase L", 1, "No solution found"},
        {"sweep propane --mode 3 --in no_such_file --out -", 3, "cannot be read"},
        {"sweep propane --mode 3 --in - --out -", 3, "no column T, p"},
    };
    for (const Refusal& c : cases) {
        const Outcome run = quomc(c.line);
        EXPECT_EQ(run.status, c.status) << c.line << "\n" << run.out << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.says)) << c.line;
    }
}

// m and n of a tank, phases that add up, and the closed balance of volume.
TEST(Commands, tank_balances) {
    const auto json = quomc("tank propane --T 300 --V 0.1 --n 0.4535601 --json").json();
    const auto& c = json["contents"];
    EXPECT_NEAR(c["V"]["L"].get<double>() + c["V"]["V"].get<double>(), 0.1, 1e-7);
    EXPECT_NEAR(c["m"]["L"].get<double>() + c["m"]["V"].get<double>(), 20.0, 1e-3);
    EXPECT_NEAR(json["tank"]["LPercent"].get<double>(), 100 * c["V"]["L"].get<double>() / 0.1, 1e-3);
    const auto partial = quomc("tank propane --T 300 --V 0.1 --m 20 --concept partial --json").json();
    EXPECT_NEAR(partial["contents"]["m"]["L"].get<double>(), c["m"]["L"].get<double>(), 0.5);
}

// A throttle there and back ends at the same T.
TEST(Commands, iso_goes_there_and_back) {
    const auto there = quomc("iso propane --p 100 --hold h --T0 320 --p0 800 --json").json();
    const double T = there["iso"]["T"].get<double>();
    EXPECT_LT(T, 320.0);
    const auto back =
        quomc("iso propane --p 800 --hold h --T0 " + there["iso"]["T"].dump() + " --p0 100 --json").json();
    EXPECT_NEAR(back["iso"]["T"].get<double>(), 320.0, 320.0 * 3e-6);
}

TEST(Commands, sweep_writes_a_file_whole_or_not_at_all) {
    const std::string folder = ::testing::TempDir(), in = folder + "sweep_in.csv",
                      out = folder + "sweep_out.csv";
    std::ofstream(in) << "T;p\n300;500\nx;1\n";
    std::remove(out.c_str());
    const Outcome run = quomc("sweep propane --mode 3 --jobs 2 --in " + in + " --out " + out);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("line 3: T is no number"));
    const FileBytes written = read_file(out);
    ASSERT_TRUE(written.bytes);
    EXPECT_EQ(split_lines(*written.bytes).size(), 3u);
    // A head that is refused leaves the file of before.
    std::ofstream(in) << "T\n300\n";
    EXPECT_EQ(quomc("sweep propane --mode 3 --in " + in + " --out " + out).status, 3);
    EXPECT_EQ(read_file(out).bytes, written.bytes);
    EXPECT_EQ(quomc("sweep propane --mode 3 --in " + in + " --out " + folder + "no/such/file").status, 3);
}

}  // namespace
}  // namespace quom::console

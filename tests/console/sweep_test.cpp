#include "console/sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "base/files.h"
#include "quomc_run.h"
#include "report/calc_record.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct SweepTable {
    SweepTotals totals;
    std::string text;
    std::vector<std::string> lines;  // head first
};

struct SweepOf {
    Mode mode = Mode::T_p;
    bool functions = false;
    int jobs = 1;
};

// Runs a sweep over text; read hands out pieces of the given size.
SweepTable sweep(const Session& s, const SweepOf& of, std::string_view in, std::size_t piece = 1 << 20) {
    SweepTable table;
    const SweepStreams streams{
        .read = [&in, piece](char* into, std::size_t space) -> std::ptrdiff_t {
            const std::size_t n = std::min({space, piece, in.size()});
            in.copy(into, n);
            in.remove_prefix(n);
            return static_cast<std::ptrdiff_t>(n);
        },
        .write = [&table](std::string_view bytes) { return table.text.append(bytes), true; }};
    SweepSettings settings;
    settings.calculation = {.mode = of.mode, .setup = {}, .units = s.document.units, .factors = s.factors()};
    settings.calculation.setup.GlobalCalc = s.document.models.Konzept;
    settings.plan = make_sweep_plan(of.mode, of.functions, s.document.units, {}, {});
    settings.jobs = of.jobs;
    table.totals = run_sweep(s.fluid, settings, nullptr, streams);
    for (const std::string_view line : split_lines(table.text)) table.lines.emplace_back(line);
    return table;
}

std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> list(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') quoted = !quoted;
        if (c == ';' && !quoted) {
            list.emplace_back();
        } else {
            list.back() += c;
        }
    }
    return list;
}
std::string cell(const SweepTable& table, std::size_t row, const std::string& column) {
    const std::vector<std::string> head = cells(table.lines[0]), values = cells(table.lines[row]);
    for (std::size_t i = 0; i < head.size(); ++i)
        if (head[i].substr(0, head[i].find('/')) == column) return values[i];
    ADD_FAILURE() << "no column " << column;
    return {};
}

Session propane() { return test::substance_session(test::propane, Eos::peng_robinson); }

// Numbers of single calculations; a blank line stays one.
TEST(Sweep, gives_the_results_of_single_calculations) {
    const Session s = propane();
    const SweepTable table = sweep(s, {.mode = Mode::T_p, .functions = true},
                                   "p;note;T/K\n500;a;300\r\n2000;b;300\n6000;c;450\n\n500;d;300\n");
    ASSERT_EQ(table.lines.size(), 6u);
    EXPECT_EQ(table.lines[4], "");
    EXPECT_EQ(table.lines[5], table.lines[1]);
    EXPECT_EQ(table.totals.lines, 4u);
    struct Row {
        double T, p;
        const char* phase;
        const char* filled;  // the phase whose columns are filled
        const char* blank;
    };
    const Row rows[] = {
        {300, 500, "V", "h(V)", "h(L)"}, {300, 2000, "L", "h(L)", "h(V)"}, {450, 6000, "V", "h(V)", "h(L)"}};
    for (std::size_t i = 0; i < 3; ++i) {
        const Row& row = rows[i];
        const Outcome outcome = state_at(*s.fluid, row.T, row.p, {});
        const PhaseOutcome* const phase = phase_of(outcome, row.filled[2] == 'L' ? phase_L : phase_V);
        ASSERT_NE(phase, nullptr);
        EXPECT_EQ(cell(table, i + 1, "phase"), row.phase);
        EXPECT_NEAR(std::strtod(cell(table, i + 1, row.filled).c_str(), nullptr), *phase->h, 1e-8);
        EXPECT_EQ(cell(table, i + 1, row.blank), "");
    }
}

// A true zero is a value: h and s of the ideal gas at its reference point.
TEST(Sweep, writes_a_zero_and_leaves_the_unknown_blank) {
    const Session gas = test::substance_session(test::propane, Eos::ideal_gas);
    const SweepTable zero = sweep(gas, {.mode = Mode::functions}, "T;p\n298.1499938964844;101.325\n");
    ASSERT_EQ(zero.lines.size(), 2u);
    EXPECT_NEAR(std::strtod(cell(zero, 1, "h(V)").c_str(), nullptr), 0.0, 1e-9);
    EXPECT_NE(cell(zero, 1, "h(V)"), "");
    EXPECT_EQ(cell(zero, 1, "h(L)"), "");
    EXPECT_EQ(cell(zero, 1, "phase"), "V");
}

// States on both sides of the saturation curve and on it, rows that cannot be calculated or read, blank ones.
std::string mixed_table(int rows) {
    std::string in = "T,p\n";
    for (int i = 0; i < rows; ++i) {
        if (i % 97 == 50) in += "x,1";
        if (i % 89 == 30) in += "-5,100";
        if (i % 83 == 9) in += " ";
        if (i % 101 == 7) in += "300,997.4260";
        if (i % 97 != 50 && i % 89 != 30 && i % 101 != 7 && i % 83 != 9)
            in += std::to_string(250 + i % 300) + "." + std::to_string(i % 7) + "," + std::to_string(100 + i);
        in += i % 11 == 0 ? "\r\n" : i % 13 == 0 ? "\r" : "\n";
    }
    return in;
}

// Pieces, pauses and jobs change nothing: every line in its place, bytes alike.
TEST(Sweep, keeps_the_order_however_it_is_cut) {
    const Session s = propane();
    std::string in = mixed_table(20000) + "449,20099";  // the last line has no end
    const SweepTable one = sweep(s, {.mode = mode_of(3)}, in);
    ASSERT_EQ(one.lines.size(), 20002u);
    EXPECT_THAT(one.lines[20001], StartsWith("449,20099,"));
    for (const std::size_t piece : {std::size_t{999}, std::size_t{65536}}) {
        for (const int jobs : {1, 3, 70}) {
            const SweepTable other = sweep(s, {.mode = mode_of(3), .jobs = jobs}, in, piece);
            EXPECT_TRUE(other.text == one.text) << jobs << " " << piece;
            EXPECT_EQ(other.totals.failed, one.totals.failed);
            EXPECT_EQ(other.totals.faults, one.totals.faults);
            EXPECT_EQ(other.totals.warned, one.totals.warned);
        }
    }
}

// A row that comes goes out again before the next one is asked for.
TEST(Sweep, writes_what_it_has_when_the_input_pauses) {
    const Session s = propane();
    std::string out;
    std::vector<std::size_t> rows_before_read;
    const char* const pieces[] = {"T;p\n", "300;500\n", "310;500\n320;500\n", ""};
    std::size_t next = 0;
    SweepSettings settings;
    settings.calculation.mode = Mode::T_p;
    settings.plan = make_sweep_plan(Mode::T_p, false, s.document.units, {}, "h_V");
    const SweepStreams streams{
        .read = [&](char* into, std::size_t) -> std::ptrdiff_t {
            rows_before_read.push_back(static_cast<std::size_t>(std::ranges::count(out, '\n')));
            const std::string_view piece = pieces[next++];
            piece.copy(into, piece.size());
            return static_cast<std::ptrdiff_t>(piece.size());
        },
        .write = [&](std::string_view bytes) { return out.append(bytes), true; }};
    run_sweep(s.fluid, settings, nullptr, streams);
    EXPECT_THAT(rows_before_read, ::testing::ElementsAre(0, 1, 2, 4));
}

// An output that takes no more ends the sweep, whoever writes at that time; what a worker throws arrives.
TEST(Sweep, ends_when_the_output_does) {
    const Session s = propane();
    const std::string table = mixed_table(30000);
    for (const int jobs : {1, 4}) {
        for (const int limit : {0, 1, 3}) {
            std::string_view in = table;
            int writes = 0;
            bool throws = limit == 3;
            SweepSettings settings;
            settings.calculation.mode = Mode::T_p;
            settings.plan = make_sweep_plan(Mode::T_p, false, s.document.units, {}, {});
            settings.jobs = jobs;
            const SweepStreams streams{.read = [&in](char* into, std::size_t n) -> std::ptrdiff_t {
                                           n = std::min<std::size_t>({n, 4096, in.size()});
                                           in.copy(into, n);
                                           in.remove_prefix(n);
                                           return static_cast<std::ptrdiff_t>(n);
                                       },
                                       .write =
                                           [&](std::string_view) {
                                               if (++writes <= limit) return true;
                                               if (throws) throw std::bad_alloc();
                                               return false;
                                           }};
            if (throws) {
                EXPECT_THROW(run_sweep(s.fluid, settings, nullptr, streams), std::bad_alloc);
            } else {
                EXPECT_EQ(run_sweep(s.fluid, settings, nullptr, streams).broken,
                          "the output could not be written");
            }
        }
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
    const Case cases[] = {{"abc;500", "line 3: T is no number"},
                          {"300;1,5", "line 3: p is no number"},
                          {";500", "line 3: T is missing"},
                          {"300", "line 3: only 1 of 2 columns"},
                          {"300;500;7", "line 3: more columns than the head"},
                          {"1e999;500", "line 3: T is no number"},
                          {"nan;500", "line 3: T is no number"}};
    const std::vector<std::string> alone =
        sweep(s, {.mode = mode_of(3)}, "T;p\n" + std::string(good) + "\n").lines;
    for (const Case& c : cases) {
        const SweepTable t =
            sweep(s, {.mode = mode_of(3)}, "T;p\n" + std::string(good) + "\n" + c.line + "\n" + good + "\n");
        ASSERT_EQ(t.lines.size(), 4u) << c.line;
        EXPECT_THAT(cell(t, 2, "message"), HasSubstr(std::string(c.message).substr(0, 20))) << c.line;
        EXPECT_EQ(cell(t, 2, "reason"), "malformed");
        EXPECT_EQ(t.lines[1], alone[1]);
        EXPECT_EQ(t.lines[3], alone[1]);
        EXPECT_EQ(t.totals.malformed, 1u);
        ASSERT_EQ(t.totals.faults.size(), 1u);
        EXPECT_THAT(t.totals.faults[0], StartsWith("line 3: "));
    }
}

// Every line is counted once, and a reservation reaches columns, counts and totals.
TEST(Sweep, tells_why_a_line_has_no_result_and_warns) {
    const Session s = propane();
    const SweepTable t = sweep(s, {.mode = Mode::equilibrium_T}, "T\n300\n500\n0\n80\n85\n");
    ASSERT_EQ(t.lines.size(), 6u);
    EXPECT_EQ(cell(t, 1, "message"), "");
    EXPECT_EQ(cell(t, 1, "reason"), "");
    EXPECT_THAT(cell(t, 2, "message"), HasSubstr("T(cr) = 369.89 K"));
    EXPECT_EQ(cell(t, 2, "reason"), "above_critical_T");
    EXPECT_EQ(cell(t, 2, "T"), "500");
    EXPECT_EQ(cell(t, 2, "p"), "");
    EXPECT_THAT(cell(t, 3, "message"), HasSubstr("T"));
    EXPECT_THAT(cell(t, 4, "warnings"), HasSubstr("below_triple_point"));
    EXPECT_THAT(cell(t, 4, "message"), HasSubstr("T < T(TP)"));
    EXPECT_NE(cell(t, 4, "p"), "");
    EXPECT_EQ(t.totals.lines, 5u);
    EXPECT_EQ(t.totals.failed, 2u);
    EXPECT_EQ(t.totals.warned, 2u);
    ASSERT_EQ(std::ranges::count(t.totals.warnings, WarningKind::below_triple_point, &Warning::kind), 1);
    EXPECT_EQ(std::ranges::find(t.totals.warnings, WarningKind::below_triple_point, &Warning::kind)->value,
              80.0);

    const SweepTable liquid = sweep(s, {.mode = Mode::fn_rhoL}, "T\n300\n60\n");
    EXPECT_THAT(cell(liquid, 2, "warnings"), HasSubstr("function_range"));
    EXPECT_THAT(cell(liquid, 2, "message"), HasSubstr("26 K outside"));
    EXPECT_EQ(cell(liquid, 1, "warnings"), "");

    const Session virial = test::substance_session(test::water, Eos::pitzer_curl);
    const SweepTable vapor = sweep(virial, {.mode = Mode::T_p}, "T;p\n300;100\n300;2\n");
    EXPECT_EQ(cell(vapor, 1, "warnings"), "beyond_pLV");
    EXPECT_EQ(cell(vapor, 2, "warnings"), "");
    EXPECT_EQ(vapor.totals.warned, 1u);
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
        const SweepTable t = sweep(s, {.mode = mode_of(c.mode)}, c.in);
        ASSERT_EQ(t.lines.size(), 2u) << c.mode << t.totals.broken;
        EXPECT_NEAR(std::strtod(cell(t, 1, c.column).c_str(), nullptr), c.expected, c.tolerance) << c.mode;
    }
}

TEST(Sweep, refuses_a_head_that_lacks_a_value) {
    const Session s = propane();
    EXPECT_THAT(sweep(s, {.mode = mode_of(3)}, "T;x\n1;2\n").totals.broken, HasSubstr("no column p"));
    EXPECT_THAT(sweep(s, {.mode = mode_of(3)}, "T;p;T\n1;2;3\n").totals.broken, HasSubstr("T twice"));
    EXPECT_THAT(sweep(s, {.mode = mode_of(3)}, "").totals.broken, HasSubstr("no column T, p"));
    EXPECT_THAT(sweep(s, {.mode = mode_of(3)}, "T;p\n1;2\n" + std::string(100000, '1')).totals.broken,
                HasSubstr("line 3 is longer"));
    EXPECT_EQ(sweep(s, {.mode = mode_of(3)}, "\xEF\xBB\xBFT\tp\n300\t500\n").totals.lines, 1u);
}

// A row without a result is no failure of the program: status 0, unless it is asked for.
TEST(Commands, sweep_writes_a_file_whole_or_not_at_all) {
    const std::string folder = ::testing::TempDir(), in = folder + "sweep_in.csv",
                      out = folder + "sweep_out.csv";
    std::ofstream(in) << "T;p\n300;500\nx;1\n";
    std::remove(out.c_str());
    const CommandRun run = quomc("sweep propane --mode 3 --jobs 2 --in " + in + " --out " + out);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, HasSubstr("line 3: T is no number"));
    const FileBytes written = read_file(out);
    ASSERT_TRUE(written.bytes);
    EXPECT_EQ(split_lines(*written.bytes).size(), 3u);
    EXPECT_EQ(quomc("sweep propane --mode 3 --strict --in " + in + " --out " + out).status, 1);
    EXPECT_EQ(quomc("sweep propane --mode 3 --strict --in - --out -", "T;p\n300;500\n").status, 0);
    // A head that is refused leaves the file of before.
    std::ofstream(in) << "T\n300\n";
    EXPECT_EQ(quomc("sweep propane --mode 3 --in " + in + " --out " + out).status, 3);
    EXPECT_EQ(read_file(out).bytes, written.bytes);
    EXPECT_EQ(quomc("sweep propane --mode 3 --in " + in + " --out " + folder + "no/such/file").status, 3);
}

}  // namespace
}  // namespace quom

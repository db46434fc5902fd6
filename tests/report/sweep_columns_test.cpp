// Columns of a sweep: which ones a mode has, and what each of them reads.
#include "report/sweep_columns.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "report/sample_outcome.h"

namespace quom::test {
namespace {

const UnitFactors factors{.uFactor = 3, .vFactor = 7};

std::string heads(Mode mode, bool functions) {
    std::string text;
    for (const SweepColumn& column : sweep_columns(mode, functions)) text += std::string(column.name) + ";";
    return text;
}

TEST(SweepColumns, by_mode) {
    constexpr const char* state = "phase;region;rho(V);rho(L);v(V);v(L);";
    constexpr const char* functions =
        "h(V);s(V);g(V);u(V);a(V);eH(V);eU(V);cp(V);cV(V);sound speed(V);"
        "h(L);s(L);g(L);u(L);a(L);eH(L);eU(L);cp(L);cV(L);sound speed(L);";
    constexpr const char* heat = "delta(LV)h;delta(LV)s;";
    constexpr const char* end = "warnings;reason;message;";
    constexpr const char* tank = "eta(V);L-phase vol%;V(V);V(L);m(V);m(L);n(V);n(L);";
    const std::map<int, std::string> columns = {
        {1, std::string("T;p;rho;") + state + "eta(V);" + heat + end},
        {2, std::string("T;p;rho;") + state + "eta(V);" + heat + end},
        {3, std::string("T;p;") + state + end},
        {4, std::string("T;p;") + state + heat + end},
        {5, std::string("T;p;") + state + heat + end},
        {6, std::string("T;p;phase;region;") + heat + end},
        {7, std::string("T;p;phase;region;") + heat + end},
        {8, std::string("T;p;") + state + functions + end},
        {9, std::string("T;p;") + state + tank + heat + end},
        {10, std::string("T;p;") + state + tank + heat + end},
        {11, std::string("T;B;") + end},
        {12, ""},
        {13, std::string("T;p;rho;") + state + "eta(V);" + heat + end},
        {14, std::string("T;rho(L);") + end},
        {15, std::string("T;") + heat + end},
        {16, std::string("T;cp(idG);") + end},
        {17, std::string("T;cp(L);") + end},
        {18, std::string("T;cp(S);") + end},
        {19, std::string("T;p;") + end},
        {20, std::string("T;p;") + end},
        {21, std::string("T;p;") + end},
        {22, std::string("T;p;") + end},
        {23, std::string("T;") + end},
        {24, std::string("T;rho(S);") + end},
    };
    for (const auto& [mode, text] : columns) EXPECT_EQ(heads(mode_of(mode), false), text) << mode;
    EXPECT_EQ(heads(Mode::T_p, true), std::string("T;p;") + state + functions + end);
    EXPECT_EQ(heads(Mode::vaporization_T, true), columns.at(6));
    EXPECT_EQ(heads(Mode::none, true), "");
}

// The numbers of a row by the names of its columns; blank cells are left out.
std::map<std::string, double> numbers(const Fluid& fluid, const Outcome& outcome, bool functions = true) {
    std::map<std::string, double> cells;
    for (const SweepColumn& column : sweep_columns(outcome.mode, functions)) {
        if (column.cell != SweepCell::number) continue;
        const double x = column.number({fluid, outcome, factors});
        if (!std::isnan(x)) cells[std::string(column.name)] = x;
    }
    return cells;
}
TEST(SweepColumns, read_every_field) {
    Fluid fluid;
    fluid.VPhaseOnly = false;
    Outcome outcome = sample_outcome(Mode::tank_global, PhaseWord::VL);
    outcome.tank =
        TankContents{.y = 0.25, .VL = 61, .VV = 62, .mL = 63, .mV = 64, .nL = 65, .nV = 66, .fill = 0.42};
    const std::map<std::string, double> expected = {{"T", 300},
                                                    {"p", 500},
                                                    {"region", 0},
                                                    {"rho(V)", 2011},
                                                    {"rho(L)", 1011},
                                                    {"v(V)", 14000},
                                                    {"v(L)", 7000},
                                                    {"eta(V)", 0.25},
                                                    {"L-phase vol%", 42},
                                                    {"V(V)", 62},
                                                    {"V(L)", 61},
                                                    {"m(V)", 64},
                                                    {"m(L)", 63},
                                                    {"n(V)", 66},
                                                    {"n(L)", 65},
                                                    {"h(V)", 6003},
                                                    {"s(V)", 6006},
                                                    {"g(V)", 6009},
                                                    {"u(V)", 6012},
                                                    {"a(V)", 6015},
                                                    {"eH(V)", 6018},
                                                    {"eU(V)", 6021},
                                                    {"cp(V)", 6024},
                                                    {"cV(V)", 6027},
                                                    {"sound speed(V)", 2010},
                                                    {"h(L)", 3003},
                                                    {"s(L)", 3006},
                                                    {"g(L)", 3009},
                                                    {"u(L)", 3012},
                                                    {"a(L)", 3015},
                                                    {"eH(L)", 3018},
                                                    {"eU(L)", 3021},
                                                    {"cp(L)", 3024},
                                                    {"cV(L)", 3027},
                                                    {"sound speed(L)", 1010},
                                                    {"delta(LV)h", 45000},
                                                    {"delta(LV)s", 150}};
    EXPECT_EQ(numbers(fluid, outcome), expected);
    EXPECT_EQ(sweep_message(outcome), "");
}

TEST(SweepColumns, one_phase_a_gap_and_a_zero) {
    Fluid fluid;
    fluid.VPhaseOnly = true;  // no region is told
    Outcome outcome = sample_outcome(Mode::functions, PhaseWord::V);
    outcome.V->h = 0.0;
    outcome.V->s.reset();
    outcome.warnings = {{.kind = WarningKind::below_triple_point, .value = 80, .low = 85.5},
                        {.kind = WarningKind::no_environment}};
    const auto cells = numbers(fluid, outcome);
    EXPECT_EQ(cells.at("h(V)"), 0.0);
    EXPECT_FALSE(cells.contains("s(V)"));
    EXPECT_FALSE(cells.contains("h(L)"));
    EXPECT_FALSE(cells.contains("rho(L)"));
    EXPECT_FALSE(cells.contains("region"));
    EXPECT_EQ(sweep_warnings(outcome), "below_triple_point no_environment");
    EXPECT_EQ(sweep_message(outcome).substr(0, 25), "T < T(TP) (Triple Point);");
}

TEST(SweepColumns, a_failed_row_keeps_what_was_given) {
    const Fluid fluid;
    Outcome outcome;
    outcome.mode = Mode::T_rho;
    outcome.T = 300;
    outcome.rho = 2000;
    outcome.failure = {Reason::volume_below_b, 0.02, 0.05};
    const std::map<std::string, double> expected = {{"T", 300}, {"rho", 2000}};
    EXPECT_EQ(numbers(fluid, outcome), expected);
    EXPECT_EQ(sweep_message(outcome), failure_text(outcome.failure));
}

}  // namespace
}  // namespace quom::test

#include "calc/iso_search.h"

#include <gtest/gtest.h>

#include "calc/calc_batch.h"
#include "calc/eos_diagnosis.h"
#include "engine/thermo_functions.h"
#include "sample_substances.h"

namespace quom {
namespace {

CalcBatchResult functions_at(Session& s, double T, double p) {
    s.exp.points[0] = {};
    s.exp.points[0].T = T, s.exp.points[0].p = p;
    return CalcBatch(s, {.Mode = 8, .Point = 0, .Quiet = true, .want_text = false});
}

struct State {
    double T, p;
    int phase;
    double start;  // factor on the unknown from which the search starts
};

// Liquid and vapor far from and near to saturation, above the critical point, and a compressed liquid.
const State states[] = {
    {300.0, 500.0, phase_V, 0.5},    {300.0, 2000.0, phase_L, 1.5}, {360.0, 3400.0, phase_V, 0.9},
    {360.0, 3800.0, phase_L, 1.05},  {420.0, 8000.0, phase_V, 0.7}, {420.0, 8000.0, phase_L, 0.7},
    {250.0, 20000.0, phase_L, 0.95}, {600.0, 10.0, phase_V, 1.8},   {231.0, 0.5, phase_V, 1.2}};

// A state, one of its functions, and back: the unknown comes out within the limit of the search, or, where
// the function has the value twice, another state with the same value.
TEST(IsoSearch, finds_the_state_again) {
    for (const State& at : states) {
        for (int column = 0; column < 8; ++column) {
            for (const int what : {iso_find_p, iso_find_T}) {
                Session s = sample::propane();
                const CalcBatchResult known = functions_at(s, at.T, at.p);
                const int slot = (at.phase == phase_V ? slot_vV : slot_vL) + column;
                const double target = known.Result[slot];
                ASSERT_NE(target, 0.0);
                const double expected = what == iso_find_p ? at.p : at.T;
                double& unknown = what == iso_find_p ? s.exp.points[0].p : s.exp.points[0].T;
                unknown *= at.start;
                const std::string where =
                    std::string(iso_functions[static_cast<std::size_t>(column)].caption) + " at T " +
                    std::to_string(at.T) + " p " + std::to_string(at.p) +
                    (at.phase == phase_V ? " V" : " L") + " what " + std::to_string(what);
                const IsoResult found = IsoSearch(s, what, column, target, at.phase);
                ASSERT_EQ(found.err, 0) << where;
                EXPECT_EQ(unknown, found.value) << where;
                const CalcBatchResult again = CalcBatch(s, {.Mode = 8, .Point = 0, .want_text = false});
                EXPECT_TRUE(at.phase == phase_V ? again.IsV : again.IsL) << where;
                EXPECT_NEAR(again.Result[slot], target, 1e-5 * std::fabs(target) + 1e-7) << where;
                if (std::fabs(found.value / expected - 1.0) < 0.002) {
                    EXPECT_NEAR(found.value, expected, 1.5e-6 * expected) << where;
                }
            }
        }
    }
}

TEST(IsoSearch, works_in_specific_units) {
    Session s = sample::propane();
    s.units.EnergyMode = 3, s.units.VolumeMode = 1;
    s.units.vFactor = 1.0 / static_cast<double>(s.substance.MolMass);
    const double h = functions_at(s, 400.0, 1500.0).Result[slot_hV];
    s.exp.points[0].T = 350.0;
    EXPECT_NEAR(IsoSearch(s, iso_find_T, 1, h, phase_V).value, 400.0, 400.0 * 1.5e-6);
}

TEST(IsoSearch, fails_where_no_state_has_the_target) {
    Session s = sample::propane();
    functions_at(s, 300.0, 500.0);
    const CalcState before = s.calc;
    struct Case {
        int what, column;
        double target;
        int phase;
    };
    const Case cases[] = {{iso_find_T, 2, 1e6, phase_V},   // an entropy beyond every temperature
                          {iso_find_p, 0, -1.0, phase_V},  // a negative volume
                          {iso_find_p, 0, 50.0, phase_L},  // no liquid is that thin
                          {iso_find_p, 8, 1.0, phase_V},   // no such function
                          {iso_find_p, 1, NAN, phase_V}};
    for (const Case& c : cases) {
        EXPECT_EQ(IsoSearch(s, c.what, c.column, c.target, c.phase).err, -1) << c.column << " " << c.target;
        EXPECT_EQ(s.exp.points[0].T, 300.0);
        EXPECT_EQ(s.exp.points[0].p, 500.0);
        EXPECT_EQ(s.calc.state.p, before.state.p);
    }
}

// From a start in the other phase Newton sees no function at all; the range of the phase is searched then.
TEST(IsoSearch, crosses_into_the_chosen_phase) {
    Session s = sample::propane();
    const double v = functions_at(s, 300.0, 3000.0).Result[slot_vL];
    s.exp.points[0].p = 100.0;
    const IsoResult found = IsoSearch(s, iso_find_p, 0, v, phase_L);
    ASSERT_EQ(found.err, 0);
    EXPECT_NEAR(found.value, 3000.0, 0.1);
}

TEST(IsoCalculator, opens_calculates_and_resets) {
    Session s = sample::propane();
    ASSERT_TRUE(open_iso_calculator(s).refusal);
    functions_at(s, 320.0, 800.0);
    IsoOpened opened = open_iso_calculator(s);
    ASSERT_FALSE(opened.refusal);
    IsoCalculator& c = opened.calculator;
    EXPECT_EQ(c.txtTpVorgabe, 320.0);
    EXPECT_EQ(iso_given_label(c), "  T/K = ");
    iso_reset(s, c);
    EXPECT_EQ(c.txtTpCalc, "No solution");

    c.IsoFu = 1, c.IsoIn = iso_find_T;
    show_current_state(s, c);
    EXPECT_EQ(c.txtTpVorgabe, 800.0);
    EXPECT_EQ(iso_given_label(c), "p/kPa = ");
    const double h = c.txtFuConst;
    c.txtTpVorgabe = 400.0;  // throttled to 400 kPa
    ASSERT_TRUE(iso_calculate(s, c));
    EXPECT_EQ(c.result_label, "T/K =");
    const double T = s.exp.points[0].T;
    EXPECT_LT(T, 320.0);  // Joule-Thomson: below the inversion the gas cools
    EXPECT_GT(T, 310.0);

    c.txtFuConst = -1e9;
    EXPECT_FALSE(iso_calculate(s, c));
    EXPECT_EQ(c.txtTpCalc, "No solution found");
    iso_reset(s, c);
    EXPECT_EQ(s.exp.points[0].T, T);
    EXPECT_EQ(c.txtFuConst, h);
    EXPECT_EQ(c.txtTpVorgabe, 400.0);
}

TEST(EosDiagnosis, tells_the_meaning_of_each_root) {
    Session s = sample::propane();
    EXPECT_FALSE(diagnose_eos(s).available);
    using M = RootMeaning;
    struct Case {
        double T, p;
        std::vector<M> meanings;
    };
    const Case cases[] = {{300.0, 500.0, {M::metastable, M::unstable, M::stable_V}},
                          {300.0, 1100.0, {M::stable_L, M::unstable, M::metastable}},
                          {300.0, 9000.0, {M::stable_L}},
                          {360.0, 500.0, {M::stable_V}},
                          {450.0, 9000.0, {M::stable_V}}};
    for (const Case& c : cases) {
        functions_at(s, c.T, c.p);
        const EosDiagnosis d = diagnose_eos(s);
        ASSERT_EQ(d.lines.size(), c.meanings.size()) << c.T << " " << c.p;
        for (std::size_t i = 0; i < c.meanings.size(); ++i)
            EXPECT_EQ(d.lines[i].meaning, c.meanings[i]) << c.p;
        EXPECT_EQ(d.below_critical, c.T < 369.83);
    }
    // On the saturation curve both outer roots are stable.
    s.exp.points[0] = {};
    s.exp.points[0].T = 300.0;
    s.calc.GlobalCalc = true;
    CalcBatch(s, {.Mode = 4, .Point = 0, .want_text = false});
    const EosDiagnosis d = diagnose_eos(s);
    ASSERT_EQ(d.lines.size(), 3u);
    EXPECT_EQ(d.lines[0].meaning, M::stable_L);
    EXPECT_EQ(d.lines[2].meaning, M::stable_V);
    EXPECT_GT(d.lines[2].v, d.lines[1].v);
}

}  // namespace
}  // namespace quom

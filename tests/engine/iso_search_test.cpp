// The inverse search: a state from one of its functions.
#include "engine/iso_search.h"

#include "calc/calc_fixture.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

constexpr const char* names[] = {"v", "h", "s", "g", "u", "a", "eH", "eU"};

const PhaseOutcome& phase_of(const Outcome& r, Phase phase) { return phase == phase_L ? *r.L : *r.V; }

struct State {
    double T, p;
    Phase phase;
    double start;  // factor on the unknown from which the search starts; 0: without a start
};

// Liquid and vapor far from and near to saturation, above the critical point, and a compressed liquid.
constexpr State states[] = {
    {300.0, 500.0, phase_V, 0.5},    {300.0, 2000.0, phase_L, 1.5}, {360.0, 3400.0, phase_V, 0.9},
    {360.0, 3800.0, phase_L, 1.05},  {420.0, 8000.0, phase_V, 0.7}, {420.0, 8000.0, phase_L, 0.7},
    {250.0, 20000.0, phase_L, 0.95}, {600.0, 10.0, phase_V, 1.8},   {231.0, 0.5, phase_V, 1.2},
    {300.0, 500.0, phase_V, 0.0},    {300.0, 2000.0, phase_L, 0.0}, {420.0, 8000.0, phase_V, 0.0}};

// A state, one of its functions, and back: the state itself is the solution or one of the others, and the
// function has its value in the phase that was asked for.
TEST(IsoSearch, finds_the_state_again) {
    for (const Eos eos : {Eos::peng_robinson, Eos::soave}) {
        const Bench b(propane, eos);
        for (const State& at : states) {
            const Outcome known = b.run(Mode::functions, at.T, at.p);
            ASSERT_TRUE(at.phase == phase_L ? known.IsL : known.IsV);
            for (int column = 0; column < iso_function_count; ++column) {
                for (const int what : {iso_find_p, iso_find_T}) {
                    SCOPED_TRACE(::testing::Message()
                                 << names[column] << " at " << at.T << " K " << at.p << " kPa "
                                 << (at.phase == phase_V ? "V" : "L") << " what " << what);
                    const double target = *function_of(phase_of(known, at.phase), column);
                    const double expected = what == iso_find_p ? at.p : at.T;
                    IsoInput input{.What = what,
                                   .Column = column,
                                   .Target = target,
                                   .phase = at.phase,
                                   .given = what == iso_find_p ? at.T : at.p};
                    if (at.start > 0.0) input.start = at.start * expected;
                    const IsoResult found = IsoSearch(*b.fluid, input);
                    ASSERT_EQ(found.reason, Reason::none);
                    std::vector<double> all = found.others;
                    all.push_back(found.value);
                    bool again = false;
                    for (const double x : all) {
                        again = again || std::fabs(x / expected - 1.0) < 1e-7;
                        const Outcome r = what == iso_find_p ? b.run(Mode::functions, at.T, x)
                                                             : b.run(Mode::functions, x, at.p);
                        ASSERT_TRUE(at.phase == phase_V ? r.IsV : r.IsL);
                        EXPECT_NE(r.phase, at.phase == phase_V ? PhaseWord::L : PhaseWord::none);
                        EXPECT_NEAR(*function_of(phase_of(r, at.phase), column), target,
                                    1e-9 * (std::fabs(target) + RGas * at.T));
                    }
                    EXPECT_TRUE(again) << found.value;
                }
            }
        }
    }
}

// h of a gas at one T has a minimum (inversion of Joule and Thomson): the solution next to the start is told
// first.
TEST(IsoSearch, takes_the_nearest_of_several_solutions) {
    const Bench b(nitrogen);
    const double T = 300.0;
    const double target = *b.run(Mode::functions, T, 20000.0).V->h;
    const auto search = [&](double start) {
        return IsoSearch(*b.fluid,
                         {.What = iso_find_p, .Column = iso_h, .Target = target, .given = T, .start = start});
    };
    const IsoResult low = search(10000.0), high = search(90000.0);
    ASSERT_EQ(low.others.size(), 1u);
    ASSERT_EQ(high.others.size(), 1u);
    EXPECT_NEAR(low.value, 20000.0, 1e-4);
    EXPECT_GT(high.value, 35000.0);
    EXPECT_NEAR(low.others[0], high.value, 1e-6 * high.value);
    EXPECT_NEAR(high.others[0], low.value, 1e-6 * low.value);
    EXPECT_NEAR(*b.run(Mode::functions, T, high.value).V->h, target, 1e-6);
    // Where one will do it is still one of them, without the search for the other.
    const IsoResult one = IsoSearch(
        *b.fluid,
        {.What = iso_find_p, .Column = iso_h, .Target = target, .given = T, .start = 10000.0, .all = false});
    EXPECT_NEAR(one.value, 20000.0, 1e-4);
    EXPECT_TRUE(one.others.empty());
}

// A vapor is no liquid at 2000 MPa: below T(cr) it ends at p(LV), a liquid at given p ends at T(LV), and
// nothing lies beyond 300 p(cr) and 5 T(cr).
TEST(IsoSearch, does_not_leave_the_phase) {
    const Bench b(water);
    const double T = 373.15, pLV = pLV_EOS(*b.fluid, T).p;
    const double h0 = *b.run(Mode::functions, T, 1e-3 * pLV).V->h,
                 h1 = *b.run(Mode::functions, T, 0.999 * pLV).V->h;
    ASSERT_LT(h1, h0);
    const auto vapor = [&](double target, std::optional<double> start) {
        return IsoSearch(*b.fluid,
                         {.What = iso_find_p, .Column = iso_h, .Target = target, .given = T, .start = start});
    };
    for (const auto& start :
         {std::optional<double>(), std::optional<double>(90.0), std::optional<double>(2e6)}) {
        EXPECT_EQ(vapor(h0 + 2.0 * (h0 - h1), start).reason, Reason::no_solution);
        EXPECT_EQ(vapor(h1 - 2.0 * (h0 - h1), start).reason, Reason::no_solution);
        const IsoResult inside = vapor(0.5 * (h0 + h1), start);
        EXPECT_EQ(inside.reason, Reason::none);
        EXPECT_LT(inside.value, pLV);
    }
    const Outcome liquid = b.run(Mode::functions, 400.0, 5000.0);
    const auto at_p = [&](Phase phase, double target) {
        return IsoSearch(
            *b.fluid,
            {.What = iso_find_T, .Column = iso_h, .Target = target, .phase = phase, .given = 5000.0});
    };
    EXPECT_NEAR(at_p(phase_L, *liquid.L->h).value, 400.0, 1e-6);
    EXPECT_EQ(at_p(phase_V, *liquid.L->h).reason, Reason::no_solution);
    // The compressed liquid below T(cr) and above p(cr) is L alone, the gas above T(cr) and below p(cr) V
    // alone.
    const Outcome compressed = b.run(Mode::functions, 500.0, 30000.0),
                  gas = b.run(Mode::functions, 800.0, 5000.0);
    ASSERT_TRUE(compressed.V && gas.L);
    EXPECT_EQ(IsoSearch(*b.fluid, {.What = iso_find_T,
                                   .Column = iso_s,
                                   .Target = *compressed.V->s,
                                   .phase = phase_V,
                                   .given = 30000.0})
                  .reason,
              Reason::no_solution);
    EXPECT_EQ(
        IsoSearch(
            *b.fluid,
            {.What = iso_find_p, .Column = iso_s, .Target = *gas.L->s, .phase = phase_L, .given = 800.0})
            .reason,
        Reason::no_solution);
    // Borders of the range
    const double v = VolumeTp(*b.fluid, 500.0, 310.0 * b.substance().pcr).vL;
    EXPECT_EQ(IsoSearch(*b.fluid,
                        {.What = iso_find_p, .Column = iso_v, .Target = v, .phase = phase_L, .given = 500.0})
                  .reason,
              Reason::no_solution);
}

TEST(IsoSearch, fails_where_no_state_has_the_target) {
    const Bench b;
    const Bench virial(propane, Eos::virial_peng_robinson);
    const struct {
        const Bench& bench;
        IsoInput input;
    } cases[] = {
        {b, {.What = iso_find_T, .Column = iso_s, .Target = 1e6, .given = 500.0, .start = 300.0}},
        {b, {.What = iso_find_p, .Column = iso_v, .Target = -1.0, .given = 300.0, .start = 500.0}},
        {b, {.What = iso_find_p, .Column = iso_v, .Target = 50.0, .phase = phase_L, .given = 300.0}},
        {b, {.What = iso_find_p, .Column = 8, .Target = 1.0, .given = 300.0}},
        {b, {.What = iso_find_p, .Column = iso_h, .Target = NAN, .given = 300.0}},
        {b, {.What = iso_find_p, .Column = iso_h, .Target = 0.0, .given = 0.0}},
        {virial, {.What = iso_find_p, .Column = iso_h, .Target = 0.0, .phase = phase_L, .given = 300.0}},
    };
    for (const auto& c : cases) {
        const IsoResult r = IsoSearch(*c.bench.fluid, c.input);
        EXPECT_EQ(r.reason, Reason::no_solution) << c.input.Column << " " << c.input.Target;
        EXPECT_EQ(r.err(), -1);
    }
}

// From a start in the other phase, and with an equation of the vapor only.
TEST(IsoSearch, crosses_into_the_chosen_phase) {
    const Bench b;
    const Outcome liquid = b.run(Mode::functions, 300.0, 3000.0);
    const IsoResult found = IsoSearch(*b.fluid, {.What = iso_find_p,
                                                 .Column = iso_v,
                                                 .Target = liquid.L->v,
                                                 .phase = phase_L,
                                                 .given = 300.0,
                                                 .start = 100.0});
    EXPECT_NEAR(found.value, 3000.0, 1e-3);
    EXPECT_TRUE(found.bracketed);
    for (const Eos eos : {Eos::ideal_gas, Eos::virial_soave, Eos::pitzer_curl}) {
        const Bench vapor(propane, eos);
        const double h = *vapor.run(Mode::functions, 320.0, 800.0).V->h;
        for (const double start : {300.0, 500.0}) {
            const IsoResult T =
                IsoSearch(*vapor.fluid,
                          {.What = iso_find_T, .Column = iso_h, .Target = h, .given = 800.0, .start = start});
            EXPECT_NEAR(T.value, 320.0, 1e-6);
        }
        EXPECT_EQ(IsoSearch(*vapor.fluid, {.What = iso_find_T, .Column = iso_h, .Target = h, .given = 800.0})
                      .reason,
                  Reason::none);
    }
}

}  // namespace
}  // namespace quom::test

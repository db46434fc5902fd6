// What a commit makes anew and what it leaves, and the state input of a document.
#include "session/session.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>

#include "forms/sample_session.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;

// Propane at 300 K, 500 kPa in mode 3, with a measured point; both calculated, the one that is named last.
Session calculated(int last = 0) {
    Session session = sample::propane();
    change(session, [](Document& d) {
        d.calc.CalcMode = Mode::T_p;
        d.exp.points.edit().resize(2);
        d.exp.points.edit()[0] = {.T = 300, .p = 500};
        d.exp.points.edit()[1] = {.T = 320, .p = 800};
    });
    for (const int point : {1 - last, last}) EXPECT_TRUE(calculate(session, point).has_result());
    return session;
}

struct Case {
    const char* what;
    void (*make)(Document&);
    bool Changes::*changed;  // the one flag that is raised; null: none
    bool new_fluid;
    bool outcome0, outcome1;  // are kept
};

class Commit : public ::testing::TestWithParam<Case> {};

TEST_P(Commit, rebuilds_what_it_must_and_nothing_else) {
    const Case& c = GetParam();
    for (const int point : {0, 1}) {
        Session session = calculated(point);
        const auto fluid = session.fluid;
        const Changes changes = change(session, c.make);
        EXPECT_EQ(session.fluid != fluid, c.new_fluid);
        EXPECT_EQ(changes.fluid(), c.new_fluid);
        EXPECT_EQ(changes.any(), c.changed != nullptr);
        for (bool Changes::*flag : {&Changes::substance, &Changes::models, &Changes::reference,
                                    &Changes::units, &Changes::options, &Changes::data, &Changes::inputs})
            EXPECT_EQ(changes.*flag, flag == c.changed);
        const bool stays = point == 0 ? c.outcome0 : c.outcome1;
        EXPECT_EQ(session.outcome.has_value(), stays);
        session.batch.resize(2);
        EXPECT_EQ(session.batch[static_cast<std::size_t>(point)].has_result(), stays);
        // What is kept is what a new calculation would give.
        if (!session.outcome) continue;
        const Outcome kept = session.outcome->outcome;
        const Outcome& again = calculate(session, point);
        EXPECT_EQ(kept.phase, again.phase);
        EXPECT_EQ(kept.V->v, again.V->v);
        EXPECT_EQ(kept.V->h, again.V->h);
    }
}

INSTANTIATE_TEST_SUITE_P(
    documents, Commit,
    ::testing::Values(
        Case{"nothing", [](Document&) {}, nullptr, false, true, true},
        Case{"a constant of the substance", [](Document& d) { d.substance.constants.omega = 0.2; },
             &Changes::substance, true, false, false},
        Case{"models", [](Document& d) { d.models.EOSKode = Eos::soave; }, &Changes::models, true, false,
             false},
        Case{"typed constants", [](Document& d) { d.eos_input.b0 = 1; }, &Changes::models, true, false,
             false},
        Case{"reference", [](Document& d) { d.reference.hOffset = 7; }, &Changes::reference, true, false,
             false},
        Case{"environment", [](Document& d) { d.reference.TEnv = 280; }, &Changes::reference, true, false,
             false},
        Case{"units", [](Document& d) { d.units.EnergyMode = 3; }, &Changes::units, false, true, true},
        Case{"options", [](Document& d) { d.options.SepCSV = ','; }, &Changes::options, false, true, true},
        Case{"another mode", [](Document& d) { d.calc.CalcMode = Mode::functions; }, &Changes::inputs, false,
             false, false},
        Case{"concept of the calculation", [](Document& d) { d.calc.setup.VLEAssumed = true; },
             &Changes::inputs, false, false, false},
        Case{"extended output", [](Document& d) { d.calc.ExtLevel = 2; }, &Changes::inputs, false, false,
             false},
        Case{"table of functions", [](Document& d) { d.calc.ShowFunctions = true; }, &Changes::inputs, false,
             true, true},
        Case{"another point", [](Document& d) { d.calc.CurrentPoint = 1; }, &Changes::inputs, false, true,
             true},
        Case{"tank in mode 3", [](Document& d) { d.calc.tank.m = 5; }, &Changes::inputs, false, true, true},
        Case{"direct input", [](Document& d) { d.exp.points.edit()[0].p = 600; }, &Changes::inputs, false,
             false, true},
        Case{"a measured point", [](Document& d) { d.exp.points.edit()[1].T = 330; }, &Changes::data, false,
             true, false},
        Case{"a column that mode 3 does not read", [](Document& d) { d.exp.points.edit()[1].rhoL = 500; },
             &Changes::data, false, true, true},
        Case{"points deleted", [](Document& d) { d.exp.points.edit().resize(1); }, &Changes::data, false,
             true, false}),
    [](const auto& info) {
        std::string name = info.param.what;
        for (char& c : name)
            if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
        return name;
    });

TEST(SessionOutcomes, the_last_is_kept_and_the_list_result_of_each) {
    Session session = calculated();
    EXPECT_EQ(current_outcome(session), &session.outcome->outcome);
    change(session, [](Document& d) { d.calc.CurrentPoint = 1; });
    EXPECT_EQ(current_outcome(session), nullptr) << "point 0 was calculated last";
    EXPECT_FLOAT_EQ(session.batch[0].TCalc, 300);
    EXPECT_FLOAT_EQ(session.batch[1].TCalc, 320);
    ASSERT_TRUE(calculate(session, 1).has_result());
    EXPECT_EQ(current_outcome(session)->T, 320);
    change(session, [](Document& d) { d.exp.points.edit()[1].Aus = -1; });
    EXPECT_FALSE(session.batch[1].has_result()) << "lists leave a point out that was made inactive";
    EXPECT_TRUE(session.batch[0].has_result());
    change(session, [](Document& d) { d.calc.CurrentPoint = 7; });
    EXPECT_EQ(current_outcome(session), nullptr);
    EXPECT_TRUE(calculate(session, 7).failure) << "a point that is not there has no values";
    EXPECT_EQ(session.document.exp.points.size(), 2u);
    change(session, [](Document& d) { d.exp.points.edit().clear(); });
    EXPECT_EQ(session.document.exp.points.size(), 1u) << "the direct input is always there";
}

TEST(SessionFactors, reduced_quantities_refer_to_the_equation_in_force) {
    Session session = sample::propane(Eos::van_der_waals);
    change(session, [](Document& d) {
        d.units.VolumeMode = 2;
        d.units.TcrStart = 400;  // a start value of diagrams that was typed
        d.units.vcrStart = 9;
    });
    // v(cr) = 3/8 R T(cr)/p(cr)
    EXPECT_NEAR(1.0 / session.factors().vFactor, 0.375 * 8.31451 * 369.83 / 4248.0, 1e-6);
    EXPECT_NEAR(1.0 / session.factors().TFactor, 369.83, 1e-9);
    EXPECT_NEAR(1.0 / session.factors().pFactor, 4248.0, 1e-9);
    change(session, [](Document& d) { d.units.EnergyMode = 2; });
    EXPECT_NEAR(1.0 / session.factors(300).uFactor, 300 * 8.31451, 1e-6);
    change(session, [](Document& d) {
        d.units.EnergyMode = 3;
        d.units.VolumeMode = 1;
    });
    EXPECT_NEAR(1.0 / session.factors().vFactor, 44.0956, 1e-5);
    EXPECT_NEAR(1.0 / session.factors().uFactor, 44.0956, 1e-5);
}

struct Input {
    Mode mode;
    std::optional<double> T, p, rho, m, V;
};

// Every value of the document is another one, so that a value from the wrong place shows.
TEST(DocumentInput, each_mode_reads_its_own_values) {
    Document d;
    d.exp.points.edit()[0] = {.T = 301, .p = 502, .rhoV = 3, .rhoL = 504};
    d.calc.tank = {.m = 5, .V = 6, .T = 307};
    d.calc.ProcessT = 308;
    d.calc.ProcessP = 509;
    constexpr auto none = std::nullopt;
    const Input cases[] = {
        {Mode::T_rho, 301, none, 3, none, none},
        {Mode::T_rhoL, 301, none, 504, none, none},
        {Mode::T_p, 301, 502, none, none, none},
        {Mode::p_rho, none, 502, 3, none, none},
        {Mode::equilibrium_T, 301, 502, none, none, none},
        {Mode::equilibrium_p, 301, 502, none, none, none},
        {Mode::vaporization_T, 301, 502, none, none, none},
        {Mode::vaporization_p, 301, 502, none, none, none},
        {Mode::functions, 301, 502, none, none, none},
        {Mode::tank_global, 307, none, none, 5, 6},
        {Mode::tank_partial, 307, none, none, 5, 6},
        {Mode::virial, 301, none, none, none, none},
        {Mode::process, 308, 509, none, none, none},
        {Mode::fn_rhoS, 301, none, none, none, none},
        {Mode::none, none, none, none, none, none},
    };
    for (const Input& c : cases) {
        d.calc.CalcMode = c.mode;
        const StateInput in = state_input(d, 0);
        EXPECT_EQ(in.mode, c.mode);
        EXPECT_EQ(in.T, c.T) << number_of(c.mode);
        EXPECT_EQ(in.p, c.p) << number_of(c.mode);
        EXPECT_EQ(in.rho, c.rho) << number_of(c.mode);
        EXPECT_EQ(in.m, c.m) << number_of(c.mode);
        EXPECT_EQ(in.V, c.V) << number_of(c.mode);
    }
}

TEST(DocumentInput, what_is_not_above_a_millionth_is_not_given) {
    Document d;
    d.calc.CalcMode = Mode::T_p;
    d.exp.points.edit().resize(2);
    for (const double bad : {0.0, -1.0, 1e-7, HUGE_VAL, static_cast<double>(NAN)}) {
        d.exp.points.edit()[1] = {.T = bad, .p = 100};
        EXPECT_FALSE(state_input(d, 1).T) << bad;
        EXPECT_EQ(state_input(d, 1).p, 100) << bad;
    }
    for (const int outside : {-1, 2}) EXPECT_FALSE(state_input(d, outside).p);
    EXPECT_FALSE(state_input(d, 1).coefficients || state_input(d, 1).inflection);
    d.calc.ExtLevel = 3;
    d.calc.setup.BensonRhoL = false;
    EXPECT_TRUE(state_input(d, 1).coefficients && state_input(d, 1).inflection);
    EXPECT_FALSE(state_input(d, 1).setup.BensonRhoL);
}

TEST(DataPoints, one_inactive_point_is_skipped) {
    ExperimentalData data;
    EXPECT_EQ(data_point_count(data), 0);
    EXPECT_EQ(first_active_point(data), 0);
    data.points.edit().resize(6);
    for (const std::size_t inactive : {1u, 3u, 4u}) data.points.edit()[inactive].Aus = -1;
    EXPECT_EQ(data_point_count(data), 5);
    EXPECT_EQ(first_active_point(data), 2);
    EXPECT_EQ(stepped_point(data, 2, 1), 4) << "a second one is not skipped";
    EXPECT_EQ(stepped_point(data, 4, 1), 5);
    EXPECT_EQ(stepped_point(data, 5, 1), 5);
    EXPECT_EQ(stepped_point(data, 2, -1), 2) << "nothing before it";
    for (TpRhoPoint& point : data.points.edit()) point.Aus = -1;
    EXPECT_EQ(first_active_point(data), 0);
}

}  // namespace
}  // namespace quom

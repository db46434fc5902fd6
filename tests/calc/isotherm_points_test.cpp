#include "calc/isotherm_points.h"

#include <algorithm>

#include "calc/calc_fixture.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

struct State {
    const char* what;
    Eos eos;
    double T, p;
    std::size_t stretches, roots;
};
constexpr State states[] = {
    {"vapor", Eos::peng_robinson, 300.0, 500.0, 5, 3},
    {"compressed liquid", Eos::soave, 300.0, 20000.0, 5, 1},
    {"cold, minimum far below zero", Eos::redlich_kwong, 150.0, 0.5, 5, 3},
    {"near T(cr)", Eos::van_der_waals, 360.0, 3800.0, 5, 3},
    {"above T(cr)", Eos::peng_robinson, 400.0, 6000.0, 1, 1},
};

// Every point lies on p(T, v) of the engine, neighbours meet, and the ends of the stretches are what they are
// called: saturation at p(LV), spinodals with a slope of zero.
TEST(IsothermPoints, lie_on_the_equation_in_force) {
    for (const State& at : states) {
        SCOPED_TRACE(at.what);
        Bench b(propane, at.eos);
        const double M = b.fluid->M;
        const UnitFactors factors{.vFactor = 1.0 / M};
        const Outcome state = b.run(Mode::T_p, at.T, at.p);
        const IsothermPicture picture = diagnosis_picture(*b.fluid, state, factors, "m^3/kg");
        ASSERT_TRUE(picture.available);
        EXPECT_EQ(picture.v_unit, "m^3/kg");
        ASSERT_EQ(picture.isotherm.size(), at.stretches);
        ASSERT_EQ(picture.marks.size(), at.roots);
        EXPECT_LT(picture.p_low, picture.p_high);
        const double T = picture.T;
        const auto p = [&](double v) { return pTv(*b.fluid, T, v * M).p; };
        const VpPoint* last = nullptr;
        for (const IsothermStretch& stretch : picture.isotherm) {
            ASSERT_GE(stretch.points.size(), 2u);
            if (last) {
                EXPECT_EQ(stretch.points.front().v, last->v);
            }
            for (const VpPoint& point : stretch.points) {
                EXPECT_NEAR(point.p, p(point.v), 1e-9 * (std::abs(point.p) + picture.p_high));
                EXPECT_GE(point.v, last ? last->v : 0.0);
                last = &point;
            }
        }
        EXPECT_LT(picture.isotherm.front().points.front().v, picture.marks.front().at.v);
        EXPECT_GT(last->v, picture.marks.back().at.v);
        for (const VpPoint& extreme : picture.spinodals) {
            const double h = 1e-4 * extreme.v;
            const double curvature = std::abs(p(extreme.v + h) - 2.0 * p(extreme.v) + p(extreme.v - h));
            EXPECT_LE(std::abs(p(extreme.v + h) - p(extreme.v - h)), 0.1 * curvature);
        }
        if (at.stretches != 5) continue;
        EXPECT_DOUBLE_EQ(picture.pLV, pLV_EOS(*b.fluid, T).p);
        EXPECT_NEAR(picture.isotherm[0].points.back().p, picture.pLV, 1e-5 * picture.p_high);
        EXPECT_NEAR(picture.isotherm[4].points.front().p, picture.pLV, 1e-5 * picture.p_high);
    }
}

TEST(IsothermPoints, need_a_cubic_equation_and_a_state) {
    const Bench b, gas(propane, Eos::ideal_gas);
    EXPECT_FALSE(diagnosis_picture(*b.fluid, {}, {}, "").available);
    EXPECT_FALSE(diagnosis_picture(*b.fluid, b.run(Mode::T_p, 300.0, 0.0), {}, "").available);
    EXPECT_FALSE(diagnosis_picture(*gas.fluid, gas.run(Mode::T_p, 300.0, 500.0), {}, "").available);
    EXPECT_FALSE(region_picture(*gas.fluid, 400.0, 6000.0, {}, "").available);
}

TEST(IsothermPoints, regions_about_the_critical_point) {
    Bench b;
    const double Tcr = b.substance().Tcr, pcr = b.substance().pcr;
    const struct {
        double T, p;
        int region;
        bool log_p, isotherm, mark;
    } cases[] = {
        {400.0, 6000.0, 2, false, true, true}, {300.0, 6000.0, 1, false, true, true},
        {400.0, 1000.0, 3, false, true, true}, {400.0, 0.1, 3, true, true, true},
        {400.0, 90000.0, 2, true, true, true}, {Tcr, pcr, 4, false, true, true},
        {400.0, 0.0, 3, false, true, false},   {0.0, 6000.0, 1, false, false, false},
    };
    for (const auto& at : cases) {
        SCOPED_TRACE(at.T);
        const IsothermPicture picture = region_picture(*b.fluid, at.T, at.p, {}, "m^3/kmol");
        ASSERT_TRUE(picture.available);
        EXPECT_EQ(picture.region, at.region);
        EXPECT_EQ(picture.log_p, at.log_p);
        EXPECT_EQ(!picture.isotherm.empty(), at.isotherm);
        EXPECT_EQ(picture.marks.size(), at.mark ? 1u : 0u);
        for (const IsothermMark& mark : picture.marks) {
            EXPECT_GT(mark.at.v, picture.v_low);
            EXPECT_LT(mark.at.v, picture.v_high);
        }
        // The critical isotherm goes through the critical point, which is the top of the coexistence curve.
        const auto top = std::max_element(picture.coexistence.begin(), picture.coexistence.end(),
                                          [](const VpPoint& x, const VpPoint& y) { return x.p < y.p; });
        EXPECT_NEAR(top->p, pcr, 1e-9 * pcr);
        EXPECT_NEAR(top->v, picture.vcr, 1e-4 * picture.vcr);
        EXPECT_TRUE(std::is_sorted(picture.coexistence.begin(), picture.coexistence.end(),
                                   [](const VpPoint& x, const VpPoint& y) { return x.v < y.v; }));
    }
}

using M = RootMeaning;

TEST(EosDiagnosis, tells_the_meaning_of_each_root) {
    const Bench b;
    EXPECT_FALSE(diagnose_eos(*b.fluid, {}, {}, "").available);
    const struct {
        double T, p;
        std::vector<M> meanings;
    } cases[] = {{300.0, 500.0, {M::metastable, M::unstable, M::stable_V}},
                 {300.0, 1100.0, {M::stable_L, M::unstable, M::metastable}},
                 {300.0, 9000.0, {M::stable_L}},
                 {360.0, 500.0, {M::stable_V}},
                 {450.0, 9000.0, {M::stable_V}}};
    for (const auto& c : cases) {
        const Outcome r = b.run(Mode::T_p, c.T, c.p);
        const EosDiagnosis d = diagnose_eos(*b.fluid, r, {}, "m^3/kmol");
        ASSERT_EQ(d.lines.size(), c.meanings.size()) << c.T << " " << c.p;
        for (std::size_t i = 0; i < c.meanings.size(); ++i)
            EXPECT_EQ(d.lines[i].meaning, c.meanings[i]) << c.p;
        EXPECT_EQ(d.below_critical, c.T < b.substance().Tcr);
    }
    // On the saturation curve both outer roots are stable.
    const EosDiagnosis d =
        diagnose_eos(*b.fluid, b.run(Mode::equilibrium_T, 300.0, 0.0), {.vFactor = 2.0}, "m^3/kmol");
    ASSERT_EQ(d.lines.size(), 3u);
    EXPECT_EQ(d.lines[0].meaning, M::stable_L);
    EXPECT_EQ(d.lines[2].meaning, M::stable_V);
    EXPECT_DOUBLE_EQ(d.lines[2].v, 2.0 * pLV_EOS(*b.fluid, 300.0).vV);
}

TEST(EosDiagnosis, is_offered_for_states_of_the_equation) {
    Bench b;
    const auto offered = [&](Mode mode, double T, double p) {
        const bool tank = mode == Mode::tank_global;
        return diagnosis_offered(*b.fluid, b.setup,
                                 tank ? b.tank(mode, 1.0, 1.0, T) : b.run(mode, T, p, 100.0));
    };
    for (const Mode mode : {Mode::T_rho, Mode::T_p, Mode::equilibrium_T, Mode::vaporization_T,
                            Mode::functions, Mode::tank_global, Mode::p_rho})
        EXPECT_TRUE(offered(mode, 300.0, 500.0)) << static_cast<int>(mode);
    for (const Mode mode : {Mode::virial, Mode::process, Mode::fn_rhoL, Mode::fn_rhoS})
        EXPECT_FALSE(offered(mode, 300.0, 500.0)) << static_cast<int>(mode);
    EXPECT_FALSE(offered(Mode::T_p, 300.0, 0.0));
    b.change([](FluidInput& x) { x.models.HLVKode = Hlv::equation; });
    EXPECT_FALSE(offered(Mode::vaporization_T, 300.0, 0.0));
    b.setup.GlobalCalc = false;
    EXPECT_FALSE(offered(Mode::T_p, 300.0, 500.0));
}

}  // namespace
}  // namespace quom::test

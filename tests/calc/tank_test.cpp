// Contents of a tank: balances, the borders between the cases, and the failures.
#include "calc/tank.h"

#include "calc/calc_fixture.h"
#include "calc/eos_diagnosis.h"
#include "engine/condensed_phases.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

// The phases fill the tank and hold all of the mass; the densities are those of the phases.
void expect_balance(const Bench& b, const Outcome& r) {
    const double m = *r.tank_mass, V = *r.tank_volume, M = b.fluid->M;
    const TankContents& t = *r.tank;
    EXPECT_NEAR(t.VL + t.VV, V, 1e-9 * V);
    EXPECT_NEAR(t.mL + t.mV, m, 1e-9 * m);
    EXPECT_NEAR((t.nL + t.nV) * M, m, 1e-9 * m);
    EXPECT_NEAR(t.mV, t.y * m, 1e-9 * m);
    EXPECT_NEAR(t.fill, t.VL / V, 1e-12);
    EXPECT_EQ(t.y, *r.quality);
    if (r.two_phase()) {
        EXPECT_NEAR(t.mL / t.VL, M / r.L->v, 1e-9 * t.mL / t.VL);
        EXPECT_NEAR(t.mV / t.VV, M / r.V->v, 1e-9 * t.mV / t.VV);
        EXPECT_GT(t.mL / t.VL, t.mV / t.VV);
    } else {
        EXPECT_EQ(t.fill, r.phase == PhaseWord::L ? 1.0 : 0.0);
        EXPECT_EQ(r.phase == PhaseWord::L ? t.VV : t.VL, 0.0);
    }
}

struct Case {
    Mode mode;
    Eos eos;
    double m, V, T;
    PhaseWord phase;
    bool pressure;
};
class Tank : public ::testing::TestWithParam<Case> {};

TEST_P(Tank, is_balanced) {
    const Case& c = GetParam();
    Bench b(propane, c.eos);
    b.setup.GlobalCalc = c.mode == Mode::tank_global;
    const Outcome r = b.tank(c.mode, c.m, c.V, c.T);
    ASSERT_TRUE(r.has_result()) << failure_text(r.failure);
    EXPECT_EQ(phase_text(r.phase), phase_text(c.phase));
    EXPECT_EQ(r.p.has_value(), c.pressure);
    expect_balance(b, r);
    // The same density by mode 1 of the same equation, where the tank is decided by the equation of state.
    if (c.mode != Mode::tank_global || !b.fluid->eos_row().is_cubic()) return;
    const Outcome state = b.run(Mode::T_rho, c.T, 0.0, c.m / c.V);
    EXPECT_EQ(*state.p, *r.p);
    EXPECT_EQ(state.phase, r.phase);
    EXPECT_EQ(state.eos->roots.VRoot, r.eos->roots.VRoot);
    // The roots are those at the T and p of the tank.
    if (r.two_phase()) return;
    const VolumeResult volume = VolumeTp(*b.fluid, c.T, *r.p);
    EXPECT_EQ(r.eos->roots.VRoot, volume.roots.VRoot);
}
constexpr Mode global = Mode::tank_global, partial = Mode::tank_partial;
constexpr Eos PR = Eos::peng_robinson, virial_PR = Eos::virial_peng_robinson;
INSTANTIATE_TEST_SUITE_P(Contents, Tank,
                         ::testing::Values(Case{global, PR, 10, 0.1, 300, PhaseWord::VL, true},
                                           Case{global, PR, 52, 0.1, 300, PhaseWord::L, true},
                                           Case{global, PR, 1, 0.1, 300, PhaseWord::V, true},
                                           Case{global, PR, 1, 1.0, 300, PhaseWord::V, true},
                                           Case{global, PR, 10, 0.1, 400, PhaseWord::V, true},
                                           Case{partial, PR, 10, 0.1, 300, PhaseWord::VL, true},
                                           Case{partial, PR, 52, 0.1, 300, PhaseWord::L, false},
                                           Case{partial, PR, 1, 0.1, 300, PhaseWord::V, true},
                                           Case{global, virial_PR, 10, 0.1, 300, PhaseWord::VL, true},
                                           Case{global, virial_PR, 1, 0.1, 300, PhaseWord::V, true},
                                           Case{global, virial_PR, 10, 0.1, 400, PhaseWord::V, true}));

// 1 kg propane in 1 m^3 at 300 K is a thin gas: the largest root is the volume of the tank, M/rho.
TEST(TankRoots, are_those_of_the_pressure_in_the_tank) {
    const Bench b;
    const Outcome r = b.tank(global, 1.0, 1.0, 300.0);
    const EosDiagnosis d = diagnose_eos(*b.fluid, r, {}, "m^3/kmol");
    ASSERT_EQ(d.lines.size(), 3u);
    EXPECT_NEAR(d.lines[2].v, 44.0956, 1e-3);
    EXPECT_EQ(d.lines[2].meaning, RootMeaning::stable_V);
    EXPECT_EQ(d.lines[0].meaning, RootMeaning::metastable);
}

// A mean density exactly at a saturated one is the one-phase side.
TEST(TankBorders, belong_to_the_one_phase_side) {
    Bench b;
    b.setup = {.GlobalCalc = false, .BensonRhoL = false};
    const double rhoL = rhoL_Fu(b.substance(), 300.0f).rho;
    EXPECT_EQ(b.tank(partial, rhoL, 1.0, 300.0).phase, PhaseWord::L);
    EXPECT_EQ(b.tank(partial, rhoL * (1.0 - 1e-9), 1.0, 300.0).phase, PhaseWord::VL);
    const TankContents full = tank_contents(5.0, 2.0, 44.0, 0.0, 2.5, 0.0),
                       empty = tank_contents(5.0, 2.0, 44.0, 1.0, 0.0, 2.5);
    EXPECT_EQ(full.VL, 2.0);
    EXPECT_EQ(full.mL, 5.0);
    EXPECT_EQ(empty.VV, 2.0);
    EXPECT_EQ(empty.nV, 5.0 / 44.0);
}

// Benson's method with the reference point of the input gives another liquid than with the proposal.
TEST(TankPartial, takes_the_reference_point_of_the_input) {
    Bench b;
    b.setup.GlobalCalc = false;
    const Outcome proposal = b.tank(partial, 10.0, 0.1, 300.0);
    b.setup.benson = {.TRefL = 231.0f, .pLVRef = 101.3f, .rhoLRef = 700.0f, .rhoVRef = 2.4f};
    const Outcome chosen = b.tank(partial, 10.0, 0.1, 300.0);
    EXPECT_EQ(chosen.liquid, LiquidSource::benson);
    EXPECT_GT(*chosen.L->rho, *proposal.L->rho + 20.0);
    EXPECT_EQ(chosen.saturation, SaturationSource::evp);
}

TEST(TankFailures, have_their_reason) {
    Bench b;
    EXPECT_EQ(b.tank(global, 300.0, 0.1, 300.0).failure.reason, Reason::volume_below_b);
    for (const auto& [m, V, T] :
         {std::tuple{0.0, 1.0, 300.0}, {1.0, 0.0, 300.0}, {1.0, 1.0, 0.0}, {-1.0, -1.0, 300.0}}) {
        EXPECT_EQ(b.tank(global, m, V, T).failure.reason, Reason::no_tank_given);
    }
    const Outcome above = b.tank(partial, 10.0, 0.1, 400.0);
    EXPECT_EQ(above.failure.reason, Reason::partial_above_critical);
    EXPECT_EQ(above.failure.limit, b.substance().Tcr);
    EXPECT_EQ(*above.tank_mass, 10.0);
    EXPECT_FALSE(above.tank);
    b.change([](FluidInput& x) { x.models.EVPKode = Evp::none; });
    EXPECT_EQ(b.tank(partial, 10.0, 0.1, 300.0).failure.reason, Reason::no_vapor_pressure_equation);
    b.change([](FluidInput& x) {
        x.models.EVPKode = Evp::wagner;
        x.substance.Tnb = 0.0f;
        x.substance.RhoL = {};
        x.substance.RhoLTLo = 0;
    });
    EXPECT_EQ(b.tank(partial, 10.0, 0.1, 300.0).failure.reason, Reason::no_reference_point);
    b.setup.BensonRhoL = false;
    EXPECT_EQ(b.tank(partial, 10.0, 0.1, 300.0).failure.reason, Reason::no_liquid_density);
    const Bench virial(starter_substance(helium), Eos::virial_manual, {.b0 = 0.1});
    EXPECT_EQ(virial.tank(global, 4.0, 0.05, 300.0).failure.reason, Reason::volume_below_B);
}

}  // namespace
}  // namespace quom::test

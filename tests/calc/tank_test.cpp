// Contents of a tank: balances, the borders between the cases, and what each failure leaves behind.
#include "calc/tank.h"

#include <cmath>

#include "calc/calc_fixture.h"
#include "engine/condensed_phases.h"

namespace quom::test {
namespace {

// The phases fill the tank and hold all of the mass; the densities are those of the phases.
void expect_balance(const Bench& b, const CalcBatchResult& r) {
    const double m = static_cast<double>(b.s.calc.tank.m), V = static_cast<double>(b.s.calc.tank.V);
    const double M = static_cast<double>(b.s.substance.MolMass);
    const TankContents& t = r.tank;
    EXPECT_NEAR(t.VL + t.VV, V, 1e-9 * V);
    EXPECT_NEAR(t.mL + t.mV, m, 1e-9 * m);
    EXPECT_NEAR((t.nL + t.nV) * M, m, 1e-9 * m);
    EXPECT_NEAR(t.mV, t.y * m, 1e-9 * m);
    if (r.IsL && r.IsV) {
        EXPECT_NEAR(t.mL / t.VL, M / r.Result[slot_vL], 1e-9 * t.mL / t.VL);
        EXPECT_NEAR(t.mV / t.VV, M / r.Result[slot_vV], 1e-9 * t.mV / t.VV);
        EXPECT_NEAR(r.LPercent, t.VL / V * 100.0, 1e-5);
    } else {
        EXPECT_EQ(r.LPercent, r.IsL ? 100.0f : 0.0f);
        EXPECT_EQ(r.IsL ? t.VV : t.VL, 0.0);
    }
}

struct Case {
    int mode, eos;
    double m, V, T;
    bool L, V_phase;
    const char* text;
};
class Tank : public ::testing::TestWithParam<Case> {};

TEST_P(Tank, is_balanced) {
    const Case& c = GetParam();
    Bench b(propane, c.eos);
    b.s.calc.GlobalCalc = c.mode == 9;
    const CalcBatchResult r = b.tank(c.mode, c.m, c.V, c.T);
    ASSERT_EQ(r.err, 0) << r.fault;
    EXPECT_EQ(r.IsL, c.L);
    EXPECT_EQ(r.IsV, c.V_phase);
    EXPECT_EQ(r.Text, c.text);
    expect_balance(b, r);
    if (r.Text == "ERROR2") {
        EXPECT_EQ(r.p, 0.0);
        return;
    }
    // The same density by mode 1 of the same equation, where the tank is decided by the EOS.
    EXPECT_GT(r.p, 0.0);
    if (c.mode == 9 && is_cubic(c.eos)) {
        const CalcBatchResult state = b.run(1, c.T, 0.0, c.m / c.V);
        EXPECT_NEAR(state.p, r.p, 1e-5 * r.p);
    }
}
INSTANTIATE_TEST_SUITE_P(Contents, Tank,
                         ::testing::Values(Case{9, eos_peng_robinson, 10, 0.1, 300, true, true, ""},
                                           Case{9, eos_peng_robinson, 52, 0.1, 300, true, false, ""},
                                           Case{9, eos_peng_robinson, 1, 0.1, 300, false, true, ""},
                                           Case{9, eos_peng_robinson, 10, 0.1, 400, false, true, ""},
                                           Case{10, eos_peng_robinson, 10, 0.1, 300, true, true, ""},
                                           Case{10, eos_peng_robinson, 52, 0.1, 300, true, false, "ERROR2"},
                                           Case{10, eos_peng_robinson, 1, 0.1, 300, false, true, ""},
                                           Case{9, 15, 10, 0.1, 300, true, true, ""},
                                           Case{9, 15, 1, 0.1, 300, false, true, ""},
                                           Case{9, 15, 10, 0.1, 400, false, true, ""}));

// A mean density exactly at a saturated one is the one-phase side.
TEST(TankBorders, belong_to_the_one_phase_side) {
    Bench b;
    b.s.calc.GlobalCalc = false;
    b.s.calc.BensonRhoL = false;
    const double rhoL = rhoL_Fu(b.s, 300.0f).rho;
    // m and V as singles whose quotient is the density itself.
    b.s.calc.tank = {.m = static_cast<float>(rhoL), .V = 1.0f, .T = 300.0f};
    const double m = static_cast<double>(b.s.calc.tank.m);
    const CalcBatchResult r = CalcBatch(b.s, {.Mode = 10});
    EXPECT_EQ(r.Text == "ERROR2", m >= rhoL);
    const TankContents full = tank_contents(5.0, 2.0, 44.0, 0.0, 2.5, 0.0),
                       empty = tank_contents(5.0, 2.0, 44.0, 1.0, 0.0, 2.5);
    EXPECT_EQ(full.VL, 2.0);
    EXPECT_EQ(empty.VV, 2.0);
}

TEST(TankFailures, tell_and_leave_no_value) {
    Bench b;
    // v below the covolume
    CalcBatchResult r = b.tank(9, 300.0, 0.1, 300.0);
    EXPECT_EQ(r.Text, "ERROR1");
    EXPECT_EQ(r.err, -1);
    EXPECT_FALSE(b.record().has_result());
    // no tank at all: nothing is touched
    const auto list = b.s.calc.BatchResults.size();
    for (const auto& [m, V, T] :
         {std::tuple{0.0, 1.0, 300.0}, {1.0, 0.0, 300.0}, {1.0, 1.0, 0.0}, {-1.0, -1.0, 300.0}}) {
        r = b.tank(9, m, V, T);
        EXPECT_EQ(r.err, -1);
        EXPECT_TRUE(r.list.empty() && r.view.par1.text.empty());
    }
    EXPECT_EQ(b.s.calc.BatchResults.size(), list);
    // PARTIAL above the critical temperature closes the window
    r = b.tank(10, 10.0, 0.1, 400.0);
    EXPECT_EQ(r.Text, "EXIT");
    ASSERT_EQ(b.listener.asked.size(), 1u);
    EXPECT_EQ(b.listener.asked[0].title, "Execution not possible");
    EXPECT_EQ(b.listener.asked[0].text.find(
                  "\"PARTIAL Calculation\" - to use only for phase equilibria, i.e. T < T(cr)\n"),
              0u);
    // no vapor pressure equation
    b.s.models.EVPKode = 0;
    r = b.tank(10, 10.0, 0.1, 300.0);
    EXPECT_EQ(r.err, -1);
    EXPECT_EQ(r.p, 0.0);
    // no reference point
    b.s.models.EVPKode = 4;
    b.s.substance.Tnb = 0.0f;
    b.s.substance.RhoL = {};
    b.listener.asked.clear();
    r = b.tank(10, 10.0, 0.1, 300.0);
    ASSERT_EQ(b.listener.asked.size(), 1u);
    EXPECT_NE(b.listener.asked[0].text.find("no normal boiling temperature is available in the database!"),
              std::string::npos);
    // an EOS of the V-phase with v below B
    Bench virial(helium, eos_virial_manual);
    virial.s.eos.EOSb = 0.1;
    r = virial.tank(9, 4.0, 0.05, 300.0);
    EXPECT_EQ(r.Text, "ERROR3");
    EXPECT_EQ(r.err, -1);
}

}  // namespace
}  // namespace quom::test

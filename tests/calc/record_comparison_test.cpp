// The equation of state beside the equations of the record, against figures of other origin.
#include "calc/record_comparison.h"

#include <gtest/gtest.h>

#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "support/starter.h"

namespace quom {
namespace {

using test::starter_fluid;
using test::starter_substance;

// Water at 300 K. Peng/Robinson worked by hand from T(cr), p(cr), omega: equal fugacities at 3.005 kPa,
// 847.55 kg/m^3, 45630 kJ/kmol. Saturated water of IAPWS-95: 3.5368 kPa, 996.51 kg/m^3, 2437.3 kJ/kg.
TEST(RecordComparison, water_by_hand_and_by_published_figures) {
    const auto fluid = starter_fluid(test::water, Eos::peng_robinson);
    const RecordComparison c = compare_with_record(*fluid, 300.0);
    ASSERT_TRUE(c.p && c.rhoL && c.hLV);
    EXPECT_EQ(c.evp, Evp::wagner);
    EXPECT_NEAR(c.p->eos, 3.005, 0.005);
    EXPECT_NEAR(c.rhoL->eos, 847.55, 0.2);
    EXPECT_NEAR(c.hLV->eos, 45630.0, 30.0);
    EXPECT_NEAR(c.p->record, 3.5368, 0.01);
    EXPECT_NEAR(c.rhoL->record, 996.51, 1.0);
    EXPECT_NEAR(c.hLV->record, 2437.3 * 18.0153, 200.0);
    EXPECT_NEAR(c.rhoL->difference_percent(), -14.95, 0.05);
}

// The set that tells most, and none outside of limits: a T of the limits counts as inside.
TEST(RecordComparison, takes_what_the_record_itself_has_at_T) {
    SubstanceConstants k = starter_substance(test::water);
    k.WagnerTLo = 350;
    k.KFTLo = 320;
    k.AntLoTLo = 310;
    k.AntHiTLo = 0;
    struct Case {
        double T;
        Evp evp;
    };
    for (const Case c : {Case{350.0, Evp::wagner}, Case{349.9, Evp::frost_kalkwarf},
                         Case{319.9, Evp::antoine_low}, Case{309.9, Evp::none}})
        EXPECT_EQ(recorded_evp(k, c.T), c.evp) << c.T;

    k.RhoLTLo = 330;
    k.HLVTHi = 325;
    RecordComparison c = compare_with_record(*starter_fluid(k, Eos::peng_robinson), 315.0);
    EXPECT_TRUE(c.p && !c.rhoL && c.hLV) << "the correlated sets are no data of the record";
    EXPECT_EQ(c.p->record, pLV_EVP(k, 315.0, Evp::antoine_low).value);
    c = compare_with_record(*starter_fluid(k, Eos::peng_robinson), 331.0);
    EXPECT_TRUE(c.rhoL && !c.hLV);

    k = starter_substance(test::water);
    k.RhoLTLo = 0;  // no limits are known
    EXPECT_FALSE(compare_with_record(*starter_fluid(k, Eos::peng_robinson), 300.0).rhoL);
}

TEST(RecordComparison, nothing_where_the_equation_of_state_has_no_saturation) {
    const auto cubic = starter_fluid(test::water, Eos::soave);
    EXPECT_TRUE(compare_with_record(*cubic, 640.0).any());
    for (const double T : {cubic->substance.Tcr, 700.0, 0.0, -1.0, 200.0})
        EXPECT_FALSE(compare_with_record(*cubic, T).any()) << T;
    for (const Eos code : {Eos::ideal_gas, Eos::pitzer_curl, Eos::virial_soave})
        EXPECT_FALSE(compare_with_record(*starter_fluid(test::water, code), 300.0).any());
}

// Beside states that the equation of state gave alone; a compressed liquid is compared at its T.
TEST(RecordComparison, of_outcomes) {
    const auto fluid = starter_fluid(test::water, Eos::peng_robinson);
    const double saturated = compare_with_record(*fluid, 300.0).rhoL->eos;
    const Outcome compressed = state_at(*fluid, 300.0, 1e5, {});
    EXPECT_GT(*compressed.L->rho, saturated + 1.0);
    EXPECT_EQ(compare_with_record(*fluid, compressed).rhoL->eos, saturated);
    EXPECT_TRUE(compare_with_record(*fluid, state_at(*fluid, {}, 101.325, 0.59)).any());
    EXPECT_FALSE(compare_with_record(*fluid, state_at(*fluid, 700.0, 1e5, {})).any());
    EXPECT_FALSE(compare_with_record(*fluid, state_at(*fluid, 300.0, {}, 0.0)).any()) << "no result";

    StateInput input{.mode = Mode::equilibrium_T, .T = 300.0};
    input.setup.GlobalCalc = true;
    EXPECT_TRUE(compare_with_record(*fluid, CalcBatch(*fluid, input)).any());
    input.setup.GlobalCalc = false;  // p(LV) of the vapor pressure equation, rho(L) of the database
    input.setup.RhoLWanted = true;
    EXPECT_FALSE(compare_with_record(*fluid, CalcBatch(*fluid, input)).any());
    input.mode = Mode::fn_rhoL;
    EXPECT_FALSE(compare_with_record(*fluid, CalcBatch(*fluid, input)).any());
}

}  // namespace
}  // namespace quom

// Constants of the equations of state: published factors, the conditions at the critical point, T-derivatives
// against differences, and what is refused.
#include "engine/eos_parameters.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/tovarn_ji.h"
#include "engine/volume_solver.h"
#include "support/starter.h"

namespace quom {
namespace {

const EosInput JiInput{.JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = 1.2, .JiZc = 0.31, .JiB1 = 0.08};

// p = p(cr), dp/dv = 0 and d2p/dv2 = 0 at T(cr), v = Zc R T(cr)/p(cr), by differences of p over v.
void expect_critical_point(const Fluid& fluid, double Zc) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr, v = Zc * RGas * Tcr / pcr,
                 h = 1e-3 * v;
    const double low = pTv(fluid, Tcr, v - h).p, here = pTv(fluid, Tcr, v).p, high = pTv(fluid, Tcr, v + h).p;
    const auto what = fluid.eos_row().text;
    EXPECT_NEAR(here / pcr, 1.0, 1e-7) << what;
    EXPECT_NEAR((high - low) / pcr, 0.0, 1e-7) << what;  // of the order h^3 at a point of inflection
    EXPECT_NEAR((high - 2.0 * here + low) / pcr, 0.0, 1e-8) << what;
}

TEST(EosParameters, PublishedFactorsAndCriticalPoint) {
    // a p(cr)/(R^2 T(cr)^2) at T(cr), b p(cr)/(R T(cr)), Zc of the equation and Zc for v(cr): Poling,
    // Prausnitz and O'Connell, The Properties of Gases and Liquids, 5th ed. (2001), chapter 4
    const struct {
        Eos code;
        double a, b, Zc, Zv;
    } rows[] = {{Eos::van_der_waals, 0.421875, 0.125, 0.375, 0.375},
                {Eos::berthelot, 0.421875, 0.125, 0.375, 0.375},
                {Eos::redlich_kwong, 0.4274802335, 0.0866403500, 1.0 / 3.0, 1.0 / 3.0},
                {Eos::soave, 0.4274802335, 0.0866403500, 1.0 / 3.0, 1.0 / 3.0},
                {Eos::peng_robinson, 0.4572355289, 0.0777960739, 0.3074013087, 0.3074}};
    const SubstanceConstants propane = test::starter_substance(test::propane);
    const double RT = RGas * propane.Tcr, pcr = propane.pcr;
    for (const auto& row : rows) {
        const auto fluid = test::starter_fluid(propane, row.code);
        const EosAtT at = EOSParT(*fluid, propane.Tcr);
        EXPECT_NEAR(at.a * pcr / (RT * RT), row.a, 1e-9) << number_of(row.code);
        EXPECT_NEAR(at.b * pcr / RT, row.b, 1e-9) << number_of(row.code);
        EXPECT_NEAR(fluid->eos.vcrEOS * pcr / RT, row.Zv, 1e-9) << number_of(row.code);
        EXPECT_NEAR(fluid->eos.rhocrEOS * fluid->eos.vcrEOS, fluid->M, 1e-9) << number_of(row.code);
        expect_critical_point(*fluid, row.Zc);
        // the virial equation has the constants of its cubic one and no critical volume
        const auto virial = with_eos(*fluid, eos_info(row.code).virial);
        EXPECT_EQ(virial->eos.EOSb, fluid->eos.EOSb);
        EXPECT_EQ(virial->eos.EOSa, fluid->eos.EOSa);
        EXPECT_EQ(virial->eos.vcrEOS + virial->eos.rhocrEOS, 0.0);
    }
}

// Slope of alpha: Soave, Chem. Eng. Sci. 27 (1972) 1197; Peng and Robinson, Ind. Eng. Chem. Fundam. 15
// (1976) 59.
TEST(EosParameters, SlopeOfAlpha) {
    const struct {
        Eos code;
        double omega, m;
    } rows[] = {{Eos::soave, 0.0, 0.48},
                {Eos::soave, 0.2, 0.78776},
                {Eos::soave, 0.5, 1.223},
                {Eos::peng_robinson, 0.0, 0.37464},
                {Eos::peng_robinson, 0.2, 0.6722952},
                {Eos::peng_robinson, 0.5, 1.07829}};
    SubstanceConstants substance = test::starter_substance(test::propane);
    for (const auto& row : rows) {
        substance.omega = row.omega;
        const auto fluid = test::starter_fluid(substance, row.code);
        EXPECT_NEAR(fluid->eos.EOSna, row.m, 1e-9);
        // alpha at T/T(cr) = 0.25
        const double alpha = EOSParT(*fluid, 0.25 * substance.Tcr).a / EOSParT(*fluid, substance.Tcr).a;
        EXPECT_NEAR(alpha, std::pow(1.0 + 0.5 * row.m, 2), 1e-9);
    }
}

TEST(EosParameters, TDerivativesAgainstDifferences) {
    const SubstanceConstants propane = test::starter_substance(test::propane);
    for (const EosInfo& row : eos_list()) {
        if (row.family == EosFamily::manual) continue;
        const auto fluid = test::starter_fluid(propane, row.code, JiInput);
        for (const double Tr : {0.4, 0.75, 1.6, 3.0}) {
            const double T = Tr * propane.Tcr, h = 1e-3 * T;
            const EosAtT low = EOSParT(*fluid, T - h), at = EOSParT(*fluid, T), high = EOSParT(*fluid, T + h);
            const CubicDerivatives k = CubicTerme(*fluid, at);
            const auto expect = [&](double EosAtT::*value, double first, double second) {
                const double size = std::fabs(at.*value) + 1e-30;
                EXPECT_NEAR(first * T / size, (high.*value - low.*value) / (2 * h) * T / size, 1e-5)
                    << row.text << Tr;
                const double bend = (high.*value - 2 * at.*value + low.*value) / (h * h);
                EXPECT_NEAR(second * T * T / size, bend * T * T / size, 5e-5) << row.text << Tr;
            };
            expect(&EosAtT::a, k.a1, k.a2);
            expect(&EosAtT::b, k.b1, k.b2);
            expect(&EosAtT::c, k.c1, k.c2);
            expect(&EosAtT::d, k.d1, k.d2);
        }
    }
}

TEST(EosParameters, TovarnJi) {
    const SubstanceConstants propane = test::starter_substance(test::propane);
    EXPECT_EQ(InitEOSPar(propane, Eos::tovarn_ji_1, {}).reason, Reason::not_finite);  // no parameters yet
    EosInput input;
    // the number in front is ignored; form 2 has one more
    EXPECT_EQ(ReadDjipar("7\r\n0.1, 0.6, 0.08, -0.02, 0.31\r\n", Eos::tovarn_ji_1, input), "");
    EXPECT_EQ(input.JiP3 + input.JiP4 + input.JiP5, 0.6 + 0.08 - 0.02);
    input.JiB1 = 0.05;  // not of form 1
    const auto first = test::starter_fluid(propane, Eos::tovarn_ji_1, input);
    EXPECT_EQ(first->eos.JiB1, 0.0);
    EXPECT_EQ(EOSParT(*first, 200.0).b, EOSParT(*first, 400.0).b);
    expect_critical_point(*first, 0.31);

    EXPECT_EQ(ReadDjipar("8\n0.1,0.6,0.08,-0.02,0.29,0.05", Eos::tovarn_ji_2, input), "");
    const auto second = test::starter_fluid(propane, Eos::tovarn_ji_2, input);
    EXPECT_EQ(second->eos.JiB1, 0.05);
    expect_critical_point(*second, 0.29);
    // b = b(cr) (1 - B1 (1 - Tr)^2)
    const double b = EOSParT(*second, propane.Tcr).b;
    EXPECT_NEAR(EOSParT(*second, 0.5 * propane.Tcr).b / b, 1.0 - 0.05 * 0.25, 1e-12);
    EXPECT_NEAR(EOSParT(*second, 3.0 * propane.Tcr).d / EOSParT(*second, propane.Tcr).d, 1.0 - 0.05 * 4.0,
                1e-12);

    // the second bracket of alpha vanishes at T/T(cr) = 0.7, where p(LV) defines omega: P4, P5 have no effect
    EosInput other = input;
    other.JiP4 = 1.0;
    other.JiP5 = 2.0;
    const auto changed = test::starter_fluid(propane, Eos::tovarn_ji_2, other);
    EXPECT_NEAR(EOSParT(*changed, 0.7 * propane.Tcr).a / EOSParT(*second, 0.7 * propane.Tcr).a, 1.0, 1e-7);

    const EosInput before = input;
    for (const char* bad : {"", "8\n", "8\n0.1,0.6,0.08,-0.02,0.29", "8\n0.1,0.6,x,-0.02,0.29,0.05"}) {
        EXPECT_NE(ReadDjipar(bad, Eos::tovarn_ji_2, input), "") << bad;
        EXPECT_EQ(input, before) << "a fault leaves the input as it was";
    }
    input.JiZc = 0.4;  // c and d would be no numbers
    const EosConstants none = InitEOSPar(propane, Eos::tovarn_ji_1, input);
    EXPECT_EQ(none.reason, Reason::not_finite);
    EXPECT_EQ(none.block.vcrEOS + none.block.rhocrEOS, 0.0);
}

TEST(EosParameters, WhatAFluidLacks) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    EXPECT_EQ(EOSParT(*test::starter_fluid(substance, Eos::soave), 0.0).a, 0.0);
    EXPECT_EQ(InitEOSPar(substance, Eos::none, {}).reason, Reason::no_equation);
    substance.pcr = 0.0;
    for (const EosInfo& row : eos_list()) {
        const auto fluid = test::starter_fluid(substance, row.code, JiInput);
        const bool free = row.family == EosFamily::ideal_gas || row.family == EosFamily::manual;
        EXPECT_EQ(fluid->eos_reason, free ? Reason::none : Reason::no_critical_data) << row.text;
        EXPECT_EQ(VolumeTp(*fluid, 300.0, 100.0).reason, fluid->eos_reason) << row.text;
        EXPECT_EQ(phase_region(*fluid, 300.0, 100.0), 0) << row.text;
    }
}

}  // namespace
}  // namespace quom

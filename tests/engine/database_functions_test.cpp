// Equations of the record as functions of T, and the factors of displayed units.
#include "engine/database_functions.h"

#include <gtest/gtest.h>

#include <utility>

#include "engine/unit_factors.h"
#include "support/starter.h"

namespace quom::test {
namespace {

// Reduced quantities are those of the fluid, whatever start values the units hold.
TEST(UnitFactorsOfFluid, reduced_by_the_fluid) {
    const auto fluid = starter_fluid(propane, Eos::soave);
    const UnitFactors f = unit_factors(*fluid,
                                       {.EnergyMode = energy_per_RT,
                                        .VolumeMode = reduced_volume,
                                        .TcrStart = 1.0,
                                        .pcrStart = 2.0,
                                        .vcrStart = 3.0},
                                       400.0);
    EXPECT_DOUBLE_EQ(f.TFactor, 1.0 / fluid->substance.Tcr);
    EXPECT_DOUBLE_EQ(f.pFactor, 1.0 / fluid->substance.pcr);
    EXPECT_DOUBLE_EQ(f.vFactor, 1.0 / fluid->eos.vcrEOS);
    EXPECT_DOUBLE_EQ(f.uFactor, 1.0 / (8.31451 * 400.0));
    const UnitFactors mass =
        unit_factors(*fluid, {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass});
    EXPECT_NEAR(mass.uFactor * 44.1, 1.0, 1e-3);  // M of propane: 44.1 kg/kmol
    EXPECT_DOUBLE_EQ(mass.vFactor, mass.uFactor);
    EXPECT_DOUBLE_EQ(mass.TFactor, 1.0);
}

// Limits of equations with and without their own.
TEST(DatabaseFunctions, limits) {
    SubstanceConstants k = starter_substance(propane);
    const auto limits = [&k](DatabaseFunction function) {
        const DatabaseLimits r = database_limits(
            *make_fluid({.substance = k, .models = {}, .eos_input = {}, .reference = {}}), function);
        return std::pair(r.TLo, r.THi);
    };
    k.WagnerTLo = 100;
    k.WagnerTHi = 370;
    k.RhoLTLo = k.RhoLTHi = 0;
    k.RhoL = {600.0f, -1.2f, 255.4f};
    k.HLVTLo = 0;
    k.Ttr = 85.5f;
    k.Tcr = 369.8;
    k.Tnb = 231.1f;
    EXPECT_EQ(limits(DatabaseFunction::wagner), std::pair(100.0, 370.0));
    EXPECT_EQ(limits(DatabaseFunction::rhoL), std::pair(245.0, 265.0));
    EXPECT_EQ(limits(DatabaseFunction::hLV), std::pair(76.0, 380.0));  // 75.5 goes to the even number
    k.Ttr = 0.0f;
    EXPECT_EQ(limits(DatabaseFunction::hLV), std::pair(221.0, 380.0));
    const auto august = limits(DatabaseFunction::august);
    EXPECT_FLOAT_EQ(static_cast<float>(august.first), 231.1f);
    EXPECT_DOUBLE_EQ(august.second, 369.8);
    EXPECT_EQ(limits(DatabaseFunction::none), std::pair(0.0, 0.0));
}

// Every function has the limits of its own cells.
TEST(DatabaseFunctions, limits_of_the_record) {
    using C = SubstanceConstants;
    using D = DatabaseFunction;
    const struct {
        D function;
        std::int16_t C::*TLo;
        std::int16_t C::*THi;
    } cells[] = {
        {D::rhoL, &C::RhoLTLo, &C::RhoLTHi},
        {D::rhoS, &C::RhoSTLo, &C::RhoSTHi},
        {D::hLV, &C::HLVTLo, &C::HLVTHi},
        {D::cpId_polynomial, &C::cpPolyTLo, &C::cpPolyTHi},
        {D::cpId_sinh, &C::cpDIPPRTLo, &C::cpDIPPRTHi},
        {D::cpL, &C::cpLTLo, &C::cpLTHi},
        {D::cpS, &C::cpSTLo, &C::cpSTHi},
        {D::frost_kalkwarf, &C::KFTLo, &C::KFTHi},
        {D::wagner, &C::WagnerTLo, &C::WagnerTHi},
        {D::antoine_low, &C::AntLoTLo, &C::AntLoTHi},
        {D::antoine_high, &C::AntHiTLo, &C::AntHiTHi},
    };
    SubstanceConstants k = starter_substance(propane);
    std::int16_t T = 100;
    for (const auto& cell : cells) {
        k.*cell.TLo = T++;
        k.*cell.THi = T++;
    }
    for (const CpForm form : {CpForm::polynomial, CpForm::sinh_cosh}) {
        ModelSelection models;
        models.cpKode = form;
        const auto fluid = make_fluid({.substance = k, .models = models, .eos_input = {}, .reference = {}});
        for (const auto& cell : cells) {
            const DatabaseLimits r = database_limits(*fluid, cell.function);
            EXPECT_EQ(r.TLo, k.*cell.TLo) << static_cast<int>(cell.function);
            EXPECT_EQ(r.THi, k.*cell.THi) << static_cast<int>(cell.function);
        }
        EXPECT_EQ(database_limits(*fluid, D::cpIdG).TLo,
                  form == CpForm::polynomial ? k.cpPolyTLo : k.cpDIPPRTLo);
    }
}

// What a function without a value is refused with.
TEST(DatabaseFunctions, refusals) {
    SubstanceConstants k = starter_substance(propane);
    k.havePoly = k.HasCpS = false;
    k.KFTLo = 0;
    k.Tnb = 0.0f;
    const auto fluid = make_fluid({.substance = k, .models = {}, .eos_input = {}, .reference = {}});
    const auto reason = [&](DatabaseFunction function, double T) {
        const DatabaseValue r = database_value(*fluid, function, T);
        EXPECT_EQ(r.value > 0.0, r.reason == Reason::none);
        return r.reason;
    };
    EXPECT_EQ(reason(DatabaseFunction::none, 300.0), Reason::no_function);
    EXPECT_EQ(reason(DatabaseFunction::cpId_polynomial, 300.0), Reason::no_ideal_gas_cp);
    EXPECT_EQ(reason(DatabaseFunction::cpId_sinh, 300.0), Reason::none);
    EXPECT_EQ(reason(DatabaseFunction::cpId_sinh, -300.0), Reason::T_not_positive);
    EXPECT_EQ(reason(DatabaseFunction::frost_kalkwarf, 300.0), Reason::no_database_equation);
    EXPECT_EQ(reason(DatabaseFunction::cpS, 80.0), Reason::no_database_equation);
    EXPECT_EQ(reason(DatabaseFunction::wagner, 300.0), Reason::none);
    EXPECT_EQ(reason(DatabaseFunction::kfw, 300.0), Reason::no_vapor_pressure_equation);
}

}  // namespace
}  // namespace quom::test

#include "engine/database_functions.h"

#include <array>
#include <cmath>

#include "base/number_text.h"
#include "engine/condensed_phases.h"
#include "engine/ideal_gas.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

constexpr float Present = 1e-6f;  // a coefficient above this was given

// Limits of an equation without its own: 10 K around a reference temperature, or around triple (else boiling)
// point and critical point.
DatabaseLimits around(double low, double high) {
    return {static_cast<double>(to_i16(low - 10.0)), static_cast<double>(to_i16(high + 10.0))};
}

DatabaseLimits stored_or_default(const SubstanceConstants& k, TLimits stored, float reference = 0.0f) {
    if (stored.TLo != 0) return {static_cast<double>(stored.TLo), static_cast<double>(stored.THi)};
    if (reference > 0.0f) return around(static_cast<double>(reference), static_cast<double>(reference));
    return around(static_cast<double>(k.Ttr > 0.0f ? k.Ttr : k.Tnb), k.Tcr);
}

// The form in force, else the one that the record has.
CpForm cp_form(const Fluid& fluid) {
    if (fluid.models.cpKode != CpForm::none) return fluid.models.cpKode;
    if (fluid.substance.haveSinh) return CpForm::sinh_cosh;
    return fluid.substance.havePoly ? CpForm::polynomial : CpForm::none;
}

DatabaseValue rho_L(const Fluid& fluid, double T) {
    const DensityResult r = rhoL_Fu(fluid.substance, static_cast<float>(T));
    return {r.rho, r.reason == Reason::no_liquid_density ? Reason::no_value : r.reason};
}
DatabaseValue rho_S(const Fluid& fluid, double T) {
    const DensityResult r = rhoS_Fu(fluid.substance, static_cast<float>(T));
    return {r.rho, r.reason};
}
DatabaseValue h_LV(const Fluid& fluid, double T) {
    const SubstanceConstants& substance = fluid.substance;
    const HlvEquation r = hLV_Fu(substance, T);
    const bool beyond = substance.HLVTcr > 0.0f && T > static_cast<double>(substance.HLVTcr);
    return {static_cast<double>(r.value), beyond && r.reason != Reason::none ? Reason::no_value : r.reason};
}

DatabaseValue cp_by_form(const Fluid& fluid, double T, CpForm form, bool available) {
    if (!available) return {0.0, Reason::no_ideal_gas_cp};
    const CpResult r = cpIdG(fluid.substance, T, form);
    return {static_cast<double>(r.cp), r.reason};
}
DatabaseValue cp_idG(const Fluid& fluid, double T) {
    const CpForm form = cp_form(fluid);
    return cp_by_form(fluid, T, form, form != CpForm::none);
}
DatabaseValue cp_polynomial(const Fluid& fluid, double T) {
    return cp_by_form(fluid, T, CpForm::polynomial, fluid.substance.havePoly);
}
DatabaseValue cp_sinh(const Fluid& fluid, double T) {
    return cp_by_form(fluid, T, CpForm::sinh_cosh, fluid.substance.haveSinh);
}
DatabaseValue cp_L(const Fluid& fluid, double T) {
    if (!fluid.substance.HasCpL) return {0.0, Reason::no_database_equation};
    return {static_cast<double>(cpL_Fu(fluid.substance, T))};
}
DatabaseValue cp_S(const Fluid& fluid, double T) {
    if (!fluid.substance.HasCpS) return {0.0, Reason::no_database_equation};
    return {static_cast<double>(cpS_Fu(fluid.substance, T))};
}

bool is_given(const SubstanceConstants& k, Evp code) {
    switch (code) {
        case Evp::frost_kalkwarf:
            return k.KFTLo != 0;
        case Evp::wagner:
            return k.WagnerTLo != 0;
        case Evp::antoine_low:
            return std::fabs(k.AntLo[0]) > Present;
        case Evp::antoine_high:
            return std::fabs(k.AntHi[0]) > Present;
        default:
            return true;  // correlated: pLV_EVP itself tells whether T(nb) and the critical point are there
    }
}
template <Evp code>
DatabaseValue p_LV(const Fluid& fluid, double T) {
    if (!is_given(fluid.substance, code)) return {0.0, Reason::no_database_equation};
    const EvpResult r = pLV_EVP(fluid.substance, T, code);
    return {r.value, r.reason};
}
DatabaseValue no_value(const Fluid&, double) { return {0.0, Reason::no_function}; }

using C = SubstanceConstants;
template <std::int16_t C::*Lo, std::int16_t C::*Hi>
DatabaseLimits limits_of(const Fluid& fluid) {
    return stored_or_default(fluid.substance, {.TLo = fluid.substance.*Lo, .THi = fluid.substance.*Hi});
}
DatabaseLimits limits_rhoL(const Fluid& fluid) {
    const C& k = fluid.substance;
    return stored_or_default(k, {.TLo = k.RhoLTLo, .THi = k.RhoLTHi}, k.RhoL[2]);
}
DatabaseLimits limits_rhoS(const Fluid& fluid) {
    const C& k = fluid.substance;
    return stored_or_default(k, {.TLo = k.RhoSTLo, .THi = k.RhoSTHi}, k.RhoS[2]);
}
constexpr auto limits_polynomial = limits_of<&C::cpPolyTLo, &C::cpPolyTHi>;
constexpr auto limits_sinh = limits_of<&C::cpDIPPRTLo, &C::cpDIPPRTHi>;
DatabaseLimits limits_cpIdG(const Fluid& fluid) {
    return cp_form(fluid) == CpForm::polynomial ? limits_polynomial(fluid) : limits_sinh(fluid);
}
template <Evp code>
DatabaseLimits limits_p(const Fluid& fluid) {
    return stored_or_default(fluid.substance, evp_limits(fluid.substance, code));
}
DatabaseLimits limits_august(const Fluid& fluid) {
    return {static_cast<double>(fluid.substance.Tnb), fluid.substance.Tcr};
}
DatabaseLimits no_limits(const Fluid&) { return {}; }

struct FunctionRow {
    DatabaseFunction function;
    DatabaseValue (*value)(const Fluid& fluid, double T);
    DatabaseLimits (*limits)(const Fluid& fluid);
};

using D = DatabaseFunction;
constexpr auto functions = std::to_array<FunctionRow>({
    {D::none, no_value, no_limits},
    {D::rhoL, rho_L, limits_rhoL},
    {D::rhoS, rho_S, limits_rhoS},
    {D::hLV, h_LV, limits_of<&C::HLVTLo, &C::HLVTHi>},
    {D::cpIdG, cp_idG, limits_cpIdG},
    {D::cpId_polynomial, cp_polynomial, limits_polynomial},
    {D::cpId_sinh, cp_sinh, limits_sinh},
    {D::cpL, cp_L, limits_of<&C::cpLTLo, &C::cpLTHi>},
    {D::cpS, cp_S, limits_of<&C::cpSTLo, &C::cpSTHi>},
    {D::frost_kalkwarf, p_LV<Evp::frost_kalkwarf>, limits_p<Evp::frost_kalkwarf>},
    {D::wagner, p_LV<Evp::wagner>, limits_p<Evp::wagner>},
    {D::antoine_low, p_LV<Evp::antoine_low>, limits_p<Evp::antoine_low>},
    {D::antoine_high, p_LV<Evp::antoine_high>, limits_p<Evp::antoine_high>},
    {D::august, p_LV<Evp::august>, limits_august},
    {D::kfw, p_LV<Evp::kfw>, limits_p<Evp::kfw>},
    {D::kfr, p_LV<Evp::kfr>, limits_p<Evp::kfr>},
    {D::thompson, p_LV<Evp::thompson>, limits_p<Evp::thompson>},
});

const FunctionRow& row_of(DatabaseFunction function) {
    for (const FunctionRow& row : functions)
        if (row.function == function) return row;
    return functions[0];
}

}  // namespace

DatabaseValue database_value(const Fluid& fluid, DatabaseFunction function, double T) {
    if (!(T >= TinyT) || !std::isfinite(T)) return {0.0, Reason::T_not_positive};
    const DatabaseValue found = row_of(function).value(fluid, T);
    if (!found.found()) return {0.0, found.reason};
    if (!(found.value > 0.0) || !std::isfinite(found.value)) return {0.0, Reason::no_value};
    return found;
}

DatabaseLimits database_limits(const Fluid& fluid, DatabaseFunction function) {
    return row_of(function).limits(fluid);
}

}  // namespace quom

// Modes 14 to 24: the value of one equation of the database at T.
#include <array>

#include "calc/calc_run.h"
#include "engine/condensed_phases.h"
#include "engine/ideal_gas.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

constexpr int outside_allowed = 10;  // [K]
constexpr float Present = 1e-6f;     // a coefficient above this was given

// Value in molar units, or why there is none.
struct DatabaseValue {
    double value = 0.0;
    Reason reason = Reason::none;
};

struct DatabaseFunction {
    Mode mode;
    DatabaseValue (*evaluate)(const Fluid& fluid, double T);
    TLimits (*limits)(const Fluid& fluid);  // as stored; TLo 0: none
    void (*store)(Outcome& out, double value, double T);
};

// Limits of an equation without its own: 10 K around a reference temperature, or around triple (else boiling)
// point and critical point.
TLimits around(double low, double high) { return {.TLo = to_i16(low - 10.0), .THi = to_i16(high + 10.0)}; }

TLimits stored_or_default(const SubstanceConstants& k, TLimits stored, float reference = 0.0f) {
    if (stored.TLo != 0) return stored;
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
DatabaseValue cp_idG(const Fluid& fluid, double T) {
    const CpForm form = cp_form(fluid);
    if (form == CpForm::none) return {0.0, Reason::no_ideal_gas_cp};
    const CpResult r = cpIdG(fluid.substance, T, form);
    return {static_cast<double>(r.cp), r.reason};
}
DatabaseValue cp_L(const Fluid& fluid, double T) {
    if (!fluid.substance.HasCpL) return {0.0, Reason::no_database_equation};
    return {static_cast<double>(cpL_Fu(fluid.substance, T))};
}
DatabaseValue cp_S(const Fluid& fluid, double T) {
    if (!fluid.substance.HasCpS) return {0.0, Reason::no_database_equation};
    return {static_cast<double>(cpS_Fu(fluid.substance, T))};
}

DatabaseValue p_LV(const Fluid& fluid, double T, Evp code, bool available) {
    if (!available) return {0.0, Reason::no_database_equation};
    const EvpResult r = pLV_EVP(fluid.substance, T, code);
    return {r.value, r.reason};
}
DatabaseValue p_frost(const Fluid& fluid, double T) {
    return p_LV(fluid, T, Evp::frost_kalkwarf, fluid.substance.KFTLo != 0);
}
DatabaseValue p_wagner(const Fluid& fluid, double T) {
    return p_LV(fluid, T, Evp::wagner, fluid.substance.WagnerTLo != 0);
}
DatabaseValue p_antoine_low(const Fluid& fluid, double T) {
    return p_LV(fluid, T, Evp::antoine_low, std::fabs(fluid.substance.AntLo[0]) > Present);
}
DatabaseValue p_antoine_high(const Fluid& fluid, double T) {
    return p_LV(fluid, T, Evp::antoine_high, std::fabs(fluid.substance.AntHi[0]) > Present);
}
DatabaseValue no_value(const Fluid&, double) { return {0.0, Reason::no_function}; }

using C = SubstanceConstants;
template <std::int16_t C::*Lo, std::int16_t C::*Hi>
TLimits limits_of(const Fluid& fluid) {
    return stored_or_default(fluid.substance, {.TLo = fluid.substance.*Lo, .THi = fluid.substance.*Hi});
}
TLimits limits_rhoL(const Fluid& fluid) {
    const C& k = fluid.substance;
    return stored_or_default(k, {.TLo = k.RhoLTLo, .THi = k.RhoLTHi}, k.RhoL[2]);
}
TLimits limits_rhoS(const Fluid& fluid) {
    const C& k = fluid.substance;
    return stored_or_default(k, {.TLo = k.RhoSTLo, .THi = k.RhoSTHi}, k.RhoS[2]);
}
TLimits limits_cpIdG(const Fluid& fluid) {
    return cp_form(fluid) == CpForm::polynomial ? limits_of<&C::cpPolyTLo, &C::cpPolyTHi>(fluid)
                                                : limits_of<&C::cpDIPPRTLo, &C::cpDIPPRTHi>(fluid);
}
TLimits no_limits(const Fluid&) { return {}; }

void store_rhoL(Outcome& out, double value, double) { out.rhoL_fn = value; }
void store_rhoS(Outcome& out, double value, double) { out.rhoS_fn = value; }
void store_cpId(Outcome& out, double value, double) { out.cpId_fn = value; }
void store_cpL(Outcome& out, double value, double) { out.cpL_fn = value; }
void store_cpS(Outcome& out, double value, double) { out.cpS_fn = value; }
void store_p(Outcome& out, double value, double) {
    out.p = value;
    out.saturation = SaturationSource::evp;
}
void store_hLV(Outcome& out, double value, double T) {
    VaporizationOutcome& found = out.vaporization.emplace();
    found.hLV = value;
    found.sLV = value / T;
}
void store_nothing(Outcome&, double, double) {}

constexpr std::array<DatabaseFunction, 11> database_functions = {{
    {Mode::fn_rhoL, rho_L, limits_rhoL, store_rhoL},
    {Mode::fn_hLV, h_LV, limits_of<&C::HLVTLo, &C::HLVTHi>, store_hLV},
    {Mode::fn_cpIdG, cp_idG, limits_cpIdG, store_cpId},
    {Mode::fn_cpL, cp_L, limits_of<&C::cpLTLo, &C::cpLTHi>, store_cpL},
    {Mode::fn_cpS, cp_S, limits_of<&C::cpSTLo, &C::cpSTHi>, store_cpS},
    {Mode::fn_frost_kalkwarf, p_frost, limits_of<&C::KFTLo, &C::KFTHi>, store_p},
    {Mode::fn_wagner, p_wagner, limits_of<&C::WagnerTLo, &C::WagnerTHi>, store_p},
    {Mode::fn_antoine_low, p_antoine_low, limits_of<&C::AntLoTLo, &C::AntLoTHi>, store_p},
    {Mode::fn_antoine_high, p_antoine_high, limits_of<&C::AntHiTLo, &C::AntHiTHi>, store_p},
    {Mode::empty, no_value, no_limits, store_nothing},
    {Mode::fn_rhoS, rho_S, limits_rhoS, store_rhoS},
}};

const DatabaseFunction& function_of(Mode mode) {
    for (const DatabaseFunction& function : database_functions) {
        if (function.mode == mode) return function;
    }
    return database_functions[9];
}

void warn_outside(CalcRun& run, TLimits limits) {
    const double T = run.T();
    if (T >= limits.TLo - outside_allowed && T <= limits.THi + outside_allowed) return;
    run.warn({.kind = WarningKind::function_range,
              .value = T,
              .low = static_cast<double>(limits.TLo),
              .high = static_cast<double>(limits.THi),
              .offset = outside_by(T, limits.TLo, limits.THi)});
}

}  // namespace

void mode_database(CalcRun& run) {
    if (!take_T(run)) return;
    const DatabaseFunction& function = function_of(run.mode());
    run.out.limits = function.limits(run.fluid);
    warn_outside(run, run.out.limits);
    const DatabaseValue found = function.evaluate(run.fluid, run.T());
    if (found.reason != Reason::none) return run.fail(found.reason, run.T());
    if (!(found.value > 0.0) || !std::isfinite(found.value)) return run.fail(Reason::no_value, run.T());
    function.store(run.out, found.value, run.T());
}

}  // namespace quom

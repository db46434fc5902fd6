#include "engine/vaporization_enthalpy.h"

#include <cmath>
#include <limits>

#include "base/code_page.h"
#include "engine/condensed_phases.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

bool known(double x) { return x >= TinyT; }

void warn(HlvResult& r, const std::optional<Warning>& warning) {
    if (warning) r.warnings.push_back(*warning);
}

// p(LV) at r.T by the equation of state, or why there is none.
void p_of_eos(const Fluid& fluid, HlvResult& r) {
    const Saturation at = pLV_EOS(fluid, r.T);
    r.reason = at.reason;
    r.p = at.found() ? at.p : 0.0;
    r.source = at.found() ? "p = p(LV) using cubic EOS" : "p(LV) by EOS: Error " + genNum(at.err());
}

// p(LV) at r.T by the vapor pressure equation, else p of the data point; models that do without p leave it at
// 0.
void complete_p(const Fluid& fluid, const HlvInput& input, HlvResult& r) {
    r.p = 0.0;
    if (input.model == Hlv::eos) return p_of_eos(fluid, r);
    if (!hlv_info(input.model).uses_evp) return;
    const EvpResult at = pLV_EVP(fluid.substance, r.T, input.EVP);
    r.p = at.value;
    r.source = "p = p(LV) using vapor pressure equation:";
    if (known(r.p)) return warn(r, evp_warning(fluid.substance, r.T, input.EVP, at.dT, evp_warns_forward));
    r.p = input.point_p.value_or(0.0);
    r.source = "p(LV) = p from act. data point";
    if (known(r.p)) return;
    r.p = 0.0;
    r.source = "No p available";
    r.reason = Reason::no_p_available;
}

// T(LV) at r.p by the equation of state, or why there is none.
void T_of_eos(const Fluid& fluid, HlvResult& r) {
    const Saturation at = TLV_EOS(fluid, r.p);
    r.reason = at.reason;
    r.T = at.found() ? at.T : 0.0;
    r.source = at.found() ? "T = T(LV) from cubic  EOS" : "T(LV) using EOS: Error " + genNum(at.err());
}

// T(LV) at r.p by the vapor pressure equation, else T of the data point.
void complete_T(const Fluid& fluid, const HlvInput& input, HlvResult& r) {
    if (input.model == Hlv::eos) return T_of_eos(fluid, r);
    const EvpResult at = TLV_EVP(fluid.substance, r.p, input.EVP);
    r.T = at.value;
    r.source = "T = T(LV) from vapor pressure equation:" + std::string(trim(evp_info(input.EVP).text));
    if (known(r.T)) return warn(r, evp_warning(fluid.substance, r.T, input.EVP, at.dT, evp_warns_inverse));
    r.T = input.point_T.value_or(0.0);
    r.source = "(T(LV) from present data point)";
    if (known(r.T)) return;
    r.T = 0.0;
    r.source = "no T available";
    r.reason = Reason::no_T_available;
}

// What a model gave, not yet rounded [kJ/kmol].
struct Heat {
    double value = 0.0;
    Reason reason = Reason::none;
};
Heat failed(Reason reason) { return {0.0, reason}; }

// Chen (1965), whose constants in units of R are 3.978, 3.938 and 1.555 ln10:
//     delta(LV)h = T (33.08 Tr - 32.74 - 29.77 log10 pr)/(1.07 - Tr)
Heat chen(const SubstanceConstants& substance, double T, double p) {
    const double Tr = T / substance.Tcr, pr = p / substance.pcr;
    if (!(substance.pcr > 0.0)) return failed(Reason::no_critical_data);
    if (!(pr > 0.0)) return {};
    return {T * (33.08 * Tr - 32.74 - 29.77 * std::log10(pr)) / (1.07 - Tr)};
}

// Carruth and Kobayashi (1972):
//     delta(LV)h = (7.08 (1 - Tr)^0.354 + 10.95 omega (1 - Tr)^0.456) R Tcr
Heat carruth_kobayashi(const SubstanceConstants& substance, double T) {
    const double u = 1.0 - T / substance.Tcr;
    const double simple = 7.08 * std::pow(u, 0.354), acentric = 10.95 * substance.omega * std::pow(u, 0.456);
    return {(simple + acentric) * RGas * substance.Tcr};
}

// Watson (1943), through the reference pair h', T':
//     delta(LV)h = h' ((Tcr - T)/(Tcr - T'))^n
Heat watson(const Fluid& fluid, double T) {
    const SubstanceConstants& substance = fluid.substance;
    const double T1 = substance.WatsonT, h1 = substance.WatsonHLV, Tcr = substance.Tcr;
    if (!(T1 > TinyT) || !(h1 > TinyT) || Tcr <= T1) return failed(Reason::no_hlv_data);
    return {h1 * std::pow((Tcr - T) / (Tcr - T1), static_cast<double>(fluid.models.nWat))};
}

// rho(L) [kg/m^3] of a model with compressibility factors, 0 where there is none.
double liquid_density(const Fluid& fluid, const HlvInput& input, double rhoV, HlvResult& r) {
    const SubstanceConstants& substance = fluid.substance;
    if (input.model == Hlv::evp_benson) return rhoLBenson(substance, input.benson, r.T, rhoV);
    const DensityResult at = rhoL_Fu(substance, static_cast<float>(r.T));
    warn(r, range_warning(WarningKind::rhoL_range, r.T, {substance.RhoLTLo, substance.RhoLTHi}, at.dT,
                          density_warns));
    return at.rho;
}

// Why there are no compressibility factors.
Reason zeta_reason(const Fluid& fluid, const HlvInput& input, double rhoV) {
    if (!(fluid.M > TinyT)) return Reason::no_molar_mass;
    if (!(rhoV > 0.0)) return fluid.has_eos() ? Reason::no_vapor_density : fluid.eos_reason;
    if (input.model == Hlv::evp_benson && !input.benson.complete()) return Reason::no_reference_point;
    return Reason::no_liquid_density;
}

// Clapeyron (1834), with L = d(ln p)/d(1/T) of the vapor pressure equation, z(V) by the equation of state,
// z(L) by rho(L) = Fu(T) or Benson's method:
//     delta(LV)h = -R L (z(V) - z(L)),   z = M p/(rho R T)
Heat clapeyron(const Fluid& fluid, const HlvInput& input, HlvResult& r) {
    const double rhoV = VolumeTp(fluid, r.T, r.p).rhoV;
    const double rhoL = liquid_density(fluid, input, rhoV, r);
    if (!(rhoL * rhoV > TinyT)) return failed(zeta_reason(fluid, input, rhoV));
    const double ideal = fluid.M * r.p / RGas / r.T;
    r.ZV = ideal / rhoV;
    r.ZL = ideal / rhoL;
    const EvpSlope slope = dpLVdT_EVP(fluid.substance, r.T, input.EVP);
    if (slope.err()) return failed(slope.reason);
    return {-RGas * static_cast<double>(slope.value) * (r.ZV - r.ZL)};
}

// Difference of the residual enthalpies of both phases.
Heat from_eos(const Fluid& fluid, HlvResult& r) {
    const VolumeResult at = VolumeTp(fluid, r.T, r.p);
    r.fd = at.fd;
    r.g1 = at.g1;
    r.g2 = at.g2;
    if (at.err()) return failed(at.reason);
    if (!(at.rhoL * at.rhoV > TinyT))
        return failed(fluid.M > TinyT ? Reason::no_liquid_density : Reason::no_molar_mass);
    const double V = ThermoFunc(fluid, r.T, r.p, at.vV).FuncA[fu_h_res];
    const double L = ThermoFunc(fluid, r.T, r.p, at.vL).FuncA[fu_h_res];
    return {RGas * (V - L)};
}

struct Equation {
    Heat heat;
    std::int16_t dT = 0;
};
// delta(LV)h = A exp(-alpha t) (1 - t)^(beta + C t + D t^2 + E t^3), t = T/T(cr) of the set; the set is A,
// beta, C, D, E, alpha. Below the range the offset counts positive, as above it.
Equation equation(const SubstanceConstants& substance, double T) {
    const auto& set = substance.HLV;
    const double A = set[0], beta = set[1], C = set[2], D = set[3], E = set[4], alpha = set[5];
    const double Tcr = substance.HLVTcr, t = T / Tcr;
    Equation r;
    if (Tcr < TinyT || !(t <= 1.0)) {
        r.heat = failed(Reason::no_hlv_data);
    } else {
        const double exponent = beta + (C + (D + E * t) * t) * t;
        r.heat.value = A * std::exp(-alpha * t) * std::pow(1.0 - t, exponent);
    }
    r.dT = outside_by(T, substance.HLVTLo, substance.HLVTHi);
    if (T < substance.HLVTLo) r.dT = whole_kelvin(substance.HLVTLo - T);
    return r;
}

Heat by_equation(const SubstanceConstants& substance, HlvResult& r) {
    const Equation at = equation(substance, r.T);
    r.dT = at.dT;
    warn(r,
         range_warning(WarningKind::hlv_range, r.T, {substance.HLVTLo, substance.HLVTHi}, at.dT, hlv_warns));
    return at.heat;
}

Heat heat_of(const Fluid& fluid, const HlvInput& input, HlvResult& r) {
    const SubstanceConstants& substance = fluid.substance;
    switch (input.model) {
        case Hlv::equation:
            r.method = "delta(LV)h = Fu(T) (using database equation)";
            return by_equation(substance, r);
        case Hlv::chen:
            r.method = "Chen correlation";
            return chen(substance, r.T, r.p);
        case Hlv::carruth_kobayashi:
            r.method = "Carruth/Kobayashi correlation";
            return carruth_kobayashi(substance, r.T);
        case Hlv::watson:
            r.method = "WATSON correlation, n =" + strNum(fluid.models.nWat);
            return watson(fluid, r.T);
        case Hlv::evp_rhoL:
            r.method = "present vapor pressure equation and rho(L) = Fu(T)";
            return clapeyron(fluid, input, r);
        case Hlv::evp_benson:
            r.method = "present vapor pressure equation and Benson's method";
            return clapeyron(fluid, input, r);
        case Hlv::eos:
            r.method = trim(fluid.eos_row().text);
            return from_eos(fluid, r);
        case Hlv::none:
            break;
    }
    return failed(Reason::no_hlv_model);
}

// Why nothing is asked of a model at all.
Reason refusal(const Fluid& fluid, const HlvInput& input, double T) {
    if (hlv_info(input.model).code == Hlv::none) return Reason::no_hlv_model;
    if (T <= fluid.substance.Tcr) return Reason::none;
    if (std::isnan(T)) return Reason::T_not_positive;
    return fluid.substance.Tcr > TinyT ? Reason::above_critical_T : Reason::no_critical_data;
}

}  // namespace

HlvResult hLV(const Fluid& fluid, const HlvInput& input) {
    HlvResult r;
    r.T = input.T.value_or(0.0);
    r.p = input.p.value_or(0.0);
    r.reason = refusal(fluid, input, r.T);
    if (r.err()) return r;
    if (!known(r.p)) complete_p(fluid, input, r);
    if (!r.err() && !known(r.T)) complete_T(fluid, input, r);
    if (r.err()) return r;
    if (r.T > fluid.substance.Tcr) {
        r.source = "T > T(cr)!";
        r.reason = Reason::T_above_critical_found;
        return r;
    }
    const Heat heat = heat_of(fluid, input, r);
    r.reason = heat.reason;
    const bool fits = std::fabs(heat.value) <= static_cast<double>(std::numeric_limits<std::int32_t>::max());
    if (!r.err() && !fits) r.reason = Reason::not_finite;
    r.value = r.err() ? 0 : to_i32(heat.value);
    return r;
}

HlvEquation hLV_Fu(const SubstanceConstants& substance, double T) {
    const Equation at = equation(substance, T);
    const float value = static_cast<float>(at.heat.value);
    if (at.heat.reason != Reason::none) return {.dT = at.dT, .reason = at.heat.reason};
    if (!std::isfinite(value)) return {.dT = at.dT, .reason = Reason::not_finite};
    return {.value = value, .dT = at.dT};
}

}  // namespace quom

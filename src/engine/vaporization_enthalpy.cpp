#include "engine/vaporization_enthalpy.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "base/code_page.h"
#include "engine/condensed_phases.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr int WarnOutside = 5;  // [K] outside the validity without a box

bool uses_evp(int model) { return model == hlv_chen || model == hlv_evp_rhoL || model == hlv_evp_benson; }

TpRhoPoint current_point(const Session& s) {
    const auto index = static_cast<std::size_t>(s.exp.CurrentPoint);
    return s.exp.CurrentPoint >= 0 && index < s.exp.points.size() ? s.exp.points[index] : TpRhoPoint{};
}

// p of the vapor pressure curve at T, or of the current data point. False: r.err is set, r.source tells why.
bool complete_p(Session& s, int model, double T, double& p, int EVP, bool warn, HlvResult& r) {
    if (model == hlv_eos) {
        const Saturation at = pLV_EOS(s, T);
        r.err = at.err;
        p = at.err ? 0.0 : at.value;
        r.source = at.err ? "p(LV) by EOS: Error " + genNum(at.err) : "p = p(LV) using cubic EOS";
        return at.err == 0;
    }
    if (!uses_evp(model)) return true;
    p = pLV_EVP(s, T, EVP, warn).value;
    r.source = "p = p(LV) using vapor pressure equation:";
    if (p >= TinyT) return true;
    p = current_point(s).p;
    r.source = "p(LV) = p from act. data point";
    if (p >= TinyT) return true;
    p = 0.0;
    r.source = "No p available";
    r.err = -1;
    return false;
}

// T of the vapor pressure curve at p, or of the current data point.
bool complete_T(Session& s, int model, double& T, double p, int EVP, bool warn, HlvResult& r) {
    if (model == hlv_eos) {
        const Saturation at = TLV_EOS(s, p);
        r.err = at.err;
        T = at.err ? 0.0 : at.value;
        r.source = at.err ? "T(LV) using EOS: Error " + genNum(at.err) : "T = T(LV) from cubic  EOS";
        return at.err == 0;
    }
    T = TLV_EVP(s, p, EVP, warn).value;
    r.source = "T = T(LV) from vapor pressure equation:" + std::string(trim(evp_name(EVP)));
    if (T >= TinyT) return true;
    T = current_point(s).T;
    r.source = "(T(LV) from present data point)";
    if (T >= TinyT) return true;
    T = 0.0;
    r.source = "no T available";
    r.err = -1;
    return false;
}

// What a model gave, not yet rounded.
struct Heat {
    double value = 0.0;
    std::int16_t err = 0;
};
constexpr Heat Failed{0.0, -1};

// delta(LV)h = T (33.08 Tr - 32.74 - 29.77 log10 pr)/(1.07 - Tr)
Heat chen(const SubstanceConstants& c, double T, double p) {
    const double Tr = T / c.Tcr, pr = p / c.pcr;
    if (!(pr > 0.0)) return {};
    return {T * (33.08 * Tr - 32.74 - 29.77 * std::log10(pr)) / (1.07 - Tr)};
}

// delta(LV)h = (7.08 (1 - Tr)^0.354 + 10.95 omega (1 - Tr)^0.456) R Tcr
Heat carruth_kobayashi(const SubstanceConstants& c, double T) {
    const double u = 1.0 - T / c.Tcr;
    return {(7.08 * std::pow(u, 0.354) + 10.95 * c.omega * std::pow(u, 0.456)) * RGas * c.Tcr};
}

// delta(LV)h = h' ((Tcr - T)/(Tcr - T'))^n through the reference pair h', T'
Heat watson(const Session& s, double T) {
    const SubstanceConstants& c = s.substance;
    const double T1 = c.WatsonT, h1 = c.WatsonHLV;
    if (!(T1 > TinyT) || !(h1 > TinyT) || c.Tcr <= T1) return Failed;
    return {h1 * std::pow((c.Tcr - T) / (c.Tcr - T1), static_cast<double>(s.models.nWat))};
}

// Clapeyron: delta(LV)h = -R L (ZV - ZL), L = d(ln p)/d(1/T) of the vapor pressure equation, ZV by the EOS,
// ZL by rho(L) = Fu(T) or Benson's method.
Heat clapeyron(Session& s, int model, double T, double p, int EVP, HlvResult& r) {
    const double rhoV = VolumeTp(s, T, p).rhoV;
    const double rhoL =
        model == hlv_evp_rhoL ? rhoL_Fu(s, static_cast<float>(T)).rho : rhoLBenson(s, T, rhoV);
    if (!(rhoL * rhoV > TinyT)) return Failed;
    const double ideal = static_cast<double>(s.substance.MolMass) * p / RGas / T;
    r.ZV = ideal / rhoV;
    r.ZL = ideal / rhoL;
    const EvpSlope slope = dpLVdT_EVP(s, T, EVP);
    if (slope.err) return Failed;
    return {-RGas * static_cast<double>(slope.value) * (r.ZV - r.ZL)};
}

// Difference of the residual enthalpies of both phases.
Heat from_eos(Session& s, double T, double p, HlvResult& r) {
    const VolumeResult at = VolumeTp(s, T, p);
    r.fd = at.fd, r.g1 = at.g1, r.g2 = at.g2;
    if (at.err || !(at.rhoL * at.rhoV > TinyT)) return Failed;
    PhaseArrays arrays;
    ThermoFunc(s, phase_V, T, p, at.vV, arrays);
    ThermoFunc(s, phase_L, T, p, at.vL, arrays);
    return {RGas * (arrays.FuncA[phase_V][fu_h_res] - arrays.FuncA[phase_L][fu_h_res])};
}

struct Equation {
    Heat heat;
    std::int16_t dT = 0;
};
// delta(LV)h = A exp(-alpha t) (1 - t)^(beta + C t + D t^2 + E t^3), t = T/Tc'; the set is A, beta, C, D, E,
// alpha. Below the range the offset counts positive, as above it.
Equation equation(Session& s, double T, bool warn) {
    const SubstanceConstants& c = s.substance;
    const double Te = c.HLVTcr, t = T / Te;
    const auto k = [&](std::size_t i) { return static_cast<double>(c.HLV[i]); };
    Equation r;
    if (Te < TinyT || t > 1.0) {
        r.heat = Failed;
    } else {
        const double exponent = k(1) + (k(2) + (k(3) + k(4) * t) * t) * t;
        r.heat.value = k(0) * std::exp(-k(5) * t) * std::pow(1.0 - t, exponent);
    }
    r.dT = outside_by(T, c.HLVTLo, c.HLVTHi);
    if (T < c.HLVTLo) r.dT = whole_kelvin(c.HLVTLo - T);
    if (warn && std::abs(r.dT) > WarnOutside) {
        s.tell({.title = "Warning concerning equation delta(LV)h = Fu(T)",
                .text = "Temperature " + genNum(r.dT) +
                        " K outside parameter validity\n(cf. Data/Parameters delta(LV)h = Fu(T))",
                .kind = MessageKind::warning});
    }
    return r;
}

Heat heat_of(Session& s, int model, double T, double p, int EVP, bool warn, HlvResult& r) {
    const SubstanceConstants& c = s.substance;
    switch (model) {
        case hlv_equation: {
            r.method = "delta(LV)h = Fu(T) (using database equation)";
            const Equation at = equation(s, T, warn);
            r.dT = at.dT;
            return at.heat;
        }
        case hlv_chen:
            r.method = "Chen correlation";
            return chen(c, T, p);
        case hlv_carruth_kobayashi:
            r.method = "Carruth/Kobayashi correlation";
            return carruth_kobayashi(c, T);
        case hlv_watson:
            r.method = "WATSON correlation, n =" + strNum(s.models.nWat);
            return watson(s, T);
        case hlv_evp_rhoL:
            r.method = "present vapor pressure equation and rho(L) = Fu(T)";
            return clapeyron(s, model, T, p, EVP, r);
        case hlv_evp_benson:
            r.method = "present vapor pressure equation and Benson's method";
            return clapeyron(s, model, T, p, EVP, r);
        default:
            r.method = trim(eos_name(s.models.EOSKode));
            return from_eos(s, T, p, r);
    }
}

}  // namespace

HlvResult hLV(Session& s, int model, double& T, double& p, int EVP, bool warn) {
    HlvResult r;
    const double Tcr = s.substance.Tcr;
    if (!(T <= Tcr) || model < hlv_equation || model > hlv_eos) {
        r.err = -1;
        return r;
    }
    if (!(p >= TinyT) && !complete_p(s, model, T, p, EVP, warn, r)) return r;
    if (!(T >= TinyT) && !complete_T(s, model, T, p, EVP, warn, r)) return r;
    if (T > Tcr) {
        r.source = "T > T(cr)!";
        r.err = -1;
        return r;
    }
    const Heat heat = heat_of(s, model, T, p, EVP, warn, r);
    r.err = heat.err;
    if (!(std::fabs(heat.value) <= static_cast<double>(std::numeric_limits<std::int32_t>::max()))) r.err = -1;
    r.value = r.err ? 0 : to_i32(heat.value);
    return r;
}

HlvEquation hLV_Fu(Session& s, double T, bool warn) {
    const Equation at = equation(s, T, warn);
    const float value = static_cast<float>(at.heat.value);
    if (at.heat.err || !std::isfinite(value)) return {.dT = at.dT, .err = -1};
    return {.value = value, .dT = at.dT};
}

}  // namespace quom

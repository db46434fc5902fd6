#include "calc/reference_point.h"

#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/condensed_phases.h"
#include "engine/models.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

// Normal pressure as this method keeps it: the proposal computes with 101.3 kPa, Benson's formula stores
// 101.335 kPa, and both are shown as 101.325 kPa.
constexpr float ProposalPressure = 101.3f;
constexpr float BensonPressure = 101.335f;

std::string single(double x) { return strNum(static_cast<float>(x)); }

// rho(V) [kg/m^3] at T, p, and the text behind it; 0 without a pressure.
struct VaporDensity {
    double rho = 0;
    std::string source;
};

std::string eos_name(const Fluid& fluid) { return std::string(trim(fluid.eos_row().text)); }

// M/(R T/p + B) with B by Pitzer and Curl (1957); 0 without omega, critical data or a volume above 0.
double pitzer_curl_density(const Fluid& fluid, double T, double p) {
    if (fluid.substance.omega == 0.0) return 0.0;
    const std::shared_ptr<const Fluid> virial = with_eos(fluid, Eos::pitzer_curl);
    if (!virial->has_eos()) return 0.0;
    const double rho = fluid.M / (RGas * T / p + VirialB(*virial, T));
    return std::isfinite(rho) && rho > 0.0 ? rho : 0.0;
}

VaporDensity vapor_density(const Fluid& fluid, double T, double p) {
    if (!(p > 0.0)) return {};
    if (fluid.has_eos()) {
        const VolumeResult state = VolumeTp(fluid, T, p);
        if (state.reason == Reason::none && state.rhoV > TinyT)
            return {state.rhoV, " (from " + eos_name(fluid) + ")"};
    }
    if (const double rho = pitzer_curl_density(fluid, T, p); rho > 0.0)
        return {rho, " (using Virial-EOS, PITZER/CURL)"};
    return {fluid.M * p / RGas / T, " (using idealgas EOS)"};
}

void add_vapor_density(const Fluid& fluid, ReferencePointResult& r) {
    r.text += " rho(V)(ref)/kg/m^3 =";
    const VaporDensity vapor = vapor_density(fluid, r.T, r.p);
    r.rhoV = vapor.rho;
    r.text += single(r.rhoV) + vapor.source + "\n";
}

// rho(L) at the normal boiling T of the result; false when only the single point without a slope is left.
bool boiling_density(const SubstanceConstants& substance, const LiquidPoint& point, ReferencePointResult& r) {
    if (substance.RhoLTLo > 0) {
        const DensityResult equation = rhoL_Fu(substance, static_cast<float>(r.T));
        if (equation.reason == Reason::none && equation.rho > TinyT) {
            r.rhoL = equation.rho;
            r.text += " rho(L)(ref)/kg/m^3 =" + single(r.rhoL) + " (from database equ. rho(T))\n";
            return true;
        }
    }
    if (point.rho > TinyT && point.T > TinyT && std::fabs(point.drhodT) > TinyT) {
        const double rho = point.rho + point.drhodT * r.T - point.drhodT * point.T;
        if (rho > TinyT) {
            r.rhoL = rho;
            r.text += " rho(L)(ref)/kg/m^3 =" + single(r.rhoL) + " (calculated from drho/dT)\n";
            return true;
        }
    }
    return false;
}

// The single point of the record, at p(LV) of the vapor pressure equation in force.
void take_single_point(const Fluid& fluid, const LiquidPoint& point, ReferencePointResult& r) {
    r.T = point.T;
    r.rhoL = point.rho;
    const EvpResult boiling = pLV_EVP(fluid.substance, r.T, fluid.models.EVPKode);
    r.p = boiling.reason == Reason::none ? boiling.value : 0.0;
    r.text = "T(ref)/K         =" + single(r.T) + " (database: single point for density)\n" +
             " rho(L)(ref)/kg/m^3 =" + single(r.rhoL) + " (database: single point at T(ref))\n" +
             " pLV(ref)/kPa     =" + single(r.p) + "  (at T(ref) with  " +
             std::string(evp_info(fluid.models.EVPKode).tag) + "-equation)\n";
}

}  // namespace

LiquidPoint liquid_point(const SubstanceConstants& substance) {
    if (substance.RhoLTLo != 0) return {};
    const auto cell = [&](std::size_t i) { return static_cast<double>(substance.RhoL[i]); };
    return {.rho = cell(0), .T = cell(2), .drhodT = cell(1)};
}

bool has_liquid_density(const SubstanceConstants& substance) {
    if (substance.RhoLTLo > 0 && substance.RhoLTHi > 0) return true;
    const LiquidPoint point = liquid_point(substance);
    return point.rho > TinyT && point.T > TinyT;
}

BensonReference ReferencePointResult::reference() const {
    if (reason != Reason::none) return {};
    return {.TRefL = static_cast<float>(T),
            .pLVRef = static_cast<float>(p),
            .rhoLRef = static_cast<float>(rhoL),
            .rhoVRef = static_cast<float>(rhoV)};
}

ReferencePointResult ReferencePoint(const Fluid& fluid) {
    ReferencePointResult r;
    const LiquidPoint point = liquid_point(fluid.substance);
    bool have_rhoL = false;
    if (static_cast<double>(fluid.substance.Tnb) > TinyT) {
        r.T = static_cast<double>(fluid.substance.Tnb);
        r.p = static_cast<double>(ProposalPressure);
        r.text = " T(ref)/K           =" + single(r.T) + " (normal boiling T)\n" +
                 " p(LV)(ref)/kPa     = 101.325 (normal pressure)\n";
        have_rhoL = boiling_density(fluid.substance, point, r);
    }
    if (!have_rhoL && point.rho > TinyT && point.T > TinyT) take_single_point(fluid, point, r);
    if (!(r.T > TinyT)) {
        r.reason = Reason::no_reference_point;
        return r;
    }
    add_vapor_density(fluid, r);
    return r;
}

ReferencePointResult BensonReferencePoint(const Fluid& fluid) {
    ReferencePointResult r;
    const SubstanceConstants& x = fluid.substance;
    const double Tnb = static_cast<double>(x.Tnb);
    if (Tnb > TinyT && x.pcr > TinyT && x.rhocrDB > TinyT) {
        r.T = Tnb;
        r.p = static_cast<double>(BensonPressure);
        r.rhoL = static_cast<double>(rhoLRefBenson(r.p, x.pcr, x.rhocrDB));
        if (fluid.has_eos()) r.rhoV = VolumeTp(fluid, r.T, r.p).rhoV;
    }
    if (!(r.rhoL > TinyT)) {
        r = {};
        r.reason = Reason::no_reference_point;
        return r;
    }
    r.text = "Reference point calculated using BENSON's formula for rho(L):\n T(ref)/K           = " +
             formatMask(r.T, "####.#") + " (normal boiling temp.)\n" +
             " p(LV)(ref)/kPa     = 101.325  (normal pressure)\n" +
             " rho(L)(ref)/kg/m^3 = " + formatMask(r.rhoL, "####.#") + " (BENSON's approximation)\n" +
             " rho(V)(ref)/kg/m^3 = " + formatMask(r.rhoV, "##.###") + "  ( " + eos_name(fluid) + ")";
    return r;
}

}  // namespace quom

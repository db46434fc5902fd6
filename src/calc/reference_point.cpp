#include "calc/reference_point.h"

#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/condensed_phases.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
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

VaporDensity vapor_density(Session& s, double T, double p) {
    if (!(p > 0.0)) return {};
    const double M = static_cast<double>(s.substance.MolMass);
    if (s.models.EOSKode != eos_none) {
        const VolumeResult state = VolumeTp(s, T, p);
        if (state.err == 0 && state.rhoV > TinyT)
            return {state.rhoV, " (from " + std::string(trim(eos_name(s.models.EOSKode))) + ")"};
    }
    if (s.substance.omega != 0.0) {
        const double rho = M / (RGas * T / p + VirialB(s, eos_pitzer_curl, T));
        if (std::isfinite(rho) && rho > 0.0) return {rho, " (using Virial-EOS, PITZER/CURL)"};
    }
    return {M * p / RGas / T, " (using idealgas EOS)"};
}

void add_vapor_density(Session& s, ReferencePointResult& r) {
    r.text += " rho(V)(ref)/kg/m^3 =";
    const VaporDensity vapor = vapor_density(s, r.T, r.p);
    r.rhoV = vapor.rho;
    r.text += single(r.rhoV) + vapor.source + "\n";
}

// rho(L) at the normal boiling T of the result; false when only the single point without a slope is left.
bool boiling_density(Session& s, const LiquidPoint& point, ReferencePointResult& r) {
    const auto T = static_cast<float>(r.T);
    if (s.substance.RhoLTLo > 0) {
        const DensityResult equation = rhoL_Fu(s, T);
        if (equation.err == 0 && equation.rho > TinyT) {
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

}  // namespace

LiquidPoint liquid_point(const SubstanceConstants& substance) {
    if (substance.RhoLTLo != 0) return {};
    const auto cell = [&](std::size_t i) { return static_cast<double>(substance.RhoL[i]); };
    return {.rho = cell(0), .T = cell(2), .drhodT = cell(1)};
}

ReferencePointResult ReferencePoint(Session& s) {
    ReferencePointResult r;
    const LiquidPoint point = liquid_point(s.substance);
    bool have_rhoL = false;
    if (static_cast<double>(s.substance.Tnb) > TinyT) {
        r.T = static_cast<double>(s.substance.Tnb);
        r.p = static_cast<double>(ProposalPressure);
        r.text = " T(ref)/K           =" + single(r.T) + " (normal boiling T)\n" +
                 " p(LV)(ref)/kPa     = 101.325 (normal pressure)\n";
        have_rhoL = boiling_density(s, point, r);
    }
    if (!have_rhoL && point.rho > TinyT && point.T > TinyT) {
        r.T = point.T, r.rhoL = point.rho;
        const EvpResult boiling = pLV_EVP(s, r.T, s.models.EVPKode);
        r.p = boiling.err == 0 ? boiling.value : 0.0;
        r.text = "T(ref)/K         =" + single(r.T) + " (database: single point for density)\n" +
                 " rho(L)(ref)/kg/m^3 =" + single(r.rhoL) + " (database: single point at T(ref))\n" +
                 " pLV(ref)/kPa     =" + single(r.p) + "  (at T(ref) with  " + s.models.EVPTag +
                 "-equation)\n";
    }
    if (!(r.T > TinyT)) {
        r.err = -1;
        return r;
    }
    add_vapor_density(s, r);
    return r;
}

ReferencePointResult TakeReferencePoint(Session& s) {
    ReferencePointResult r = ReferencePoint(s);
    if (r.err == 0) store(s.benson, r);
    return r;
}

ReferencePointResult BensonReferencePoint(Session& s) {
    ReferencePointResult r;
    const SubstanceConstants& x = s.substance;
    const double Tnb = static_cast<double>(x.Tnb);
    if (Tnb > TinyT && x.pcr > TinyT && x.rhocrDB > TinyT) {
        r.T = Tnb;
        r.p = static_cast<double>(BensonPressure);
        r.rhoL = static_cast<double>(rhoLRefBenson(r.p, x.pcr, x.rhocrDB));
        const VolumeResult state = VolumeTp(s, r.T, r.p);
        if (state.err == 0) r.rhoV = state.rhoV;
    }
    if (!(r.rhoL > TinyT)) {
        r = {};
        r.err = -1;
        return r;
    }
    r.text = "Reference point calculated using BENSON's formula for rho(L):\n T(ref)/K           = " +
             formatMask(r.T, "####.#") + " (normal boiling temp.)\n" +
             " p(LV)(ref)/kPa     = 101.325  (normal pressure)\n" +
             " rho(L)(ref)/kg/m^3 = " + formatMask(r.rhoL, "####.#") + " (BENSON's approximation)\n" +
             " rho(V)(ref)/kg/m^3 = " + formatMask(r.rhoV, "##.###") + "  ( " +
             std::string(trim(eos_name(s.models.EOSKode))) + ")";
    return r;
}

void store(BensonReference& benson, const ReferencePointResult& point) {
    benson.TRefL = static_cast<float>(point.T);
    benson.pLVRef = static_cast<float>(point.p);
    benson.rhoLRef = static_cast<float>(point.rhoL);
    benson.rhoVRef = static_cast<float>(point.rhoV);
}

bool is_complete(const BensonReference& benson) {
    const double product = static_cast<double>(benson.TRefL) * static_cast<double>(benson.pLVRef) *
                           static_cast<double>(benson.rhoLRef) * static_cast<double>(benson.rhoVRef);
    return product > TinyT;
}

}  // namespace quom

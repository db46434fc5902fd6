#include "engine/condensed_phases.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "engine/validity.h"

namespace quom {
namespace {

constexpr int WarnOutside = 5;        // [K] outside the validity without a box
constexpr float Present = 1e-6f;      // a coefficient above this was given
constexpr double LargestHyper = 709;  // argument of sinh and cosh

void tell(const Session& s, const char* title, const std::string& text) {
    s.tell({.title = title, .text = text, .kind = MessageKind::warning});
}

// rho = B/C^(1 + (1 - T/H)^D); nothing above H.
DensityResult rackett(const SubstanceConstants& c, double T) {
    const double B = c.RhoL[1], C = c.RhoL[2], D = c.RhoL[3], H = c.RhoLTcr;
    if (!(B > 0.0) || !(C > 0.0) || !(H > 0.0)) return {.err = -1};
    if (T > H) return {};
    return {.rho = B / std::pow(C, 1.0 + std::pow(1.0 - T / H, D))};
}

// rho = A + B T + C T^2 + D T^3 + E/(F + T), and G (1 - T/H)^(1/3) where G is given and T < H.
DensityResult polynomial(const SubstanceConstants& c, double T) {
    const auto& k = c.RhoL;
    const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4], F = k[5], G = k[6], H = c.RhoLTcr;
    double rho = A + (B + (C + D * T) * T) * T;
    if (E != 0.0) rho += E / (F + T);
    if (std::fabs(G) > static_cast<double>(Present) && T < H) rho += G * std::cbrt(1.0 - T / H);
    if (!(rho >= 1e-10) || !std::isfinite(rho)) return {.err = -1};
    return {.rho = rho};
}

// (x/sinh x)^2 or (x/cosh x)^2 of Aly and Lee; 0 where the function overflows.
double hyper_term(double factor, double x, double (*function)(double)) {
    if (factor == 0.0 || std::fabs(x) > LargestHyper) return 0.0;
    const double y = x / function(x);
    return factor * y * y;
}

// cp of a condensed phase: a polynomial in three shapes, or the sinh/cosh form, told apart by the size of the
// coefficients themselves.
float cp_of(const std::array<float, 5>& P, const std::string& cas, double T) {
    if (!(T >= TinyT)) return 0.0f;
    const double P0 = P[0], P1 = P[1], P2 = P[2], P3 = P[3], P4 = P[4];
    const double limit = cas.starts_with("7440-59-7") ? 500.0 : 100.0;  // helium reaches larger slopes
    double cp = 0.0;
    if (std::fabs(P2) < limit) {
        if (std::fabs(P0) < 1e-8) {
            cp = P1 + (P2 + P3 * T) * T + P4 / (T * T);
        } else {
            cp = P0 + (P1 + (P2 + P3 * T) * T) * T;
            cp += std::fabs(P4) < 10.0 ? P4 * T * T * T * T : P4 / (T * T);
        }
    } else {
        cp = P0 + hyper_term(P1, P2 / T, std::sinh) + hyper_term(P3, P4 / T, std::cosh);
    }
    const float value = static_cast<float>(cp);
    return std::isfinite(value) ? value : 0.0f;
}

}  // namespace

DensityResult rhoL_Fu(Session& s, float T, bool warn) {
    const SubstanceConstants& c = s.substance;
    const auto& k = c.RhoL;
    if (c.RhoLTLo == 0 && k[0] > Present && k[2] > Present) {
        // Line through the density A at the temperature C with the slope B. (Not A + B T: A is the density at
        // C.)
        const double rho = static_cast<double>(k[0]) +
                           static_cast<double>(k[1]) * (static_cast<double>(T) - static_cast<double>(k[2]));
        return {.rho = rho};
    }
    DensityResult r = std::fabs(k[0]) > Present ? polynomial(c, T) : rackett(c, T);
    if (c.RhoLTLo > 0 && c.RhoLTHi > 0) r.dT = outside_by(T, c.RhoLTLo, c.RhoLTHi);
    if (warn && std::abs(r.dT) > WarnOutside) {
        tell(s, "Warning concerning the equation rho(L) = Fu(T)",
             " Temperature" + strNum(r.dT) +
                 " K outside parameter validity\n(for temperature range cf. window \"Models\")");
    }
    return r;
}

DensityResult rhoS_Fu(Session& s, float T, bool warn) {
    const SubstanceConstants& c = s.substance;
    const double A = c.RhoS[0], B = c.RhoS[1], C = c.RhoS[2], D = c.RhoS[3], t = T;
    DensityResult r;
    if (c.RhoSTLo > 0 && c.RhoSTHi > 0) {
        r.rho = static_cast<double>(static_cast<float>(A + (B + (C + D * t) * t) * t));
        r.dT = outside_by(t, c.RhoSTLo, c.RhoSTHi);
    } else if (c.RhoSTLo == 0 && c.RhoS[0] > Present) {
        r.rho = static_cast<double>(static_cast<float>(A + B * (t - C)));
    }
    if (warn && std::abs(r.dT) > WarnOutside) {
        tell(s, "Warning concerning the equ. rho(S) = Fu(T)",
             " Temperature" + strNum(r.dT) + " K outside T-range of the parameters\n(range of validity: " +
                 genNum(static_cast<int>(c.RhoSTLo)) + " ... " + genNum(static_cast<int>(c.RhoSTHi)) + " K)");
    }
    return r;
}

float cpL_Fu(const Session& s, double T) { return cp_of(s.substance.cpL, s.substance.StoffCAS, T); }

float cpS_Fu(const Session& s, double T) { return cp_of(s.substance.cpS, s.substance.StoffCAS, T); }

// rho(L) = (rhoLRef + rhoVRef) (T - Tcr)/(TRefL - Tcr) - rho(V) + 2 rho(cr) (TRefL - T)/(TRefL - Tcr)
double rhoLBenson(const Session& s, double T, double rhoV) {
    const BensonReference& ref = s.benson;
    const double Tcr = s.substance.Tcr, rhocr = s.substance.rhocrDB, TRef = ref.TRefL;
    const double span = TRef - Tcr;
    if (!(TRef > TinyT) || !(ref.rhoLRef > 0.0f) || rhocr < TinyT || span == 0.0) return 0.0;
    const double sum = static_cast<double>(ref.rhoLRef) + static_cast<double>(ref.rhoVRef);
    return sum * (T - Tcr) / span - rhoV + 2.0 * rhocr * (TRef - T) / span;
}

// rho(L) = (0.18327 ln(pcr/101.3) + 1.981) rho(cr); 101.3 and not the stored reference pressure.
float rhoLRefBenson([[maybe_unused]] double pRef, double pcr, double rhocrDB) {
    if (!(pcr > 0.0)) return 0.0f;
    return static_cast<float>((0.18327 * std::log(pcr / 101.3) + 1.981) * rhocrDB);
}

}  // namespace quom

#include "engine/condensed_phases.h"

#include <array>
#include <cmath>

#include "engine/validity.h"

namespace quom {
namespace {

constexpr float Present = 1e-6f;      // a coefficient above this was given
constexpr double LargestHyper = 709;  // argument of sinh and cosh

// Rackett (1970) in the form with constants of the substance; A is 0, nothing above H:
//     rho = B/C^(1 + (1 - T/H)^D)
DensityResult rackett(const SubstanceConstants& substance, double T) {
    const double B = substance.RhoL[1], C = substance.RhoL[2], D = substance.RhoL[3], H = substance.RhoLTcr;
    if (!(B > 0.0) || !(C > 0.0) || !(H > 0.0)) return {.reason = Reason::no_liquid_density};
    if (T > H) return {};
    return {.rho = B / std::pow(C, 1.0 + std::pow(1.0 - T / H, D))};
}

// rho = A + B T + C T^2 + D T^3 + E/(F + T), and + G (1 - T/H)^(1/3) where G is given and T < H
DensityResult polynomial(const SubstanceConstants& substance, double T) {
    const auto& k = substance.RhoL;
    const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4], F = k[5], G = k[6], H = substance.RhoLTcr;
    double rho = A + (B + (C + D * T) * T) * T;
    if (E != 0.0) rho += E / (F + T);
    if (std::fabs(G) > static_cast<double>(Present) && T < H) rho += G * std::cbrt(1.0 - T / H);
    if (!(rho >= 1e-10) || !std::isfinite(rho)) return {.reason = Reason::no_liquid_density};
    return {.rho = rho};
}

// factor (x/f(x))^2 with f = sinh or cosh; 0 where f overflows.
double hyper_term(double factor, double x, double (*f)(double)) {
    if (factor == 0.0 || std::fabs(x) > LargestHyper) return 0.0;
    const double y = x / f(x);
    return factor * y * y;
}

// cp of a condensed phase from P0 .. P4, the form told by the size of P2, P0 and P4:
//     |P2| below 100 (helium: 500), |P0| below 1e-8:  P1 + P2 T + P3 T^2 + P4/T^2
//     |P2| below 100 (helium: 500), |P4| below 10:    P0 + P1 T + P2 T^2 + P3 T^3 + P4 T^4
//     |P2| below 100 (helium: 500), |P4| from 10 up:  P0 + P1 T + P2 T^2 + P3 T^3 + P4/T^2
//     else, Aly and Lee (1981):  P0 + P1 ((P2/T)/sinh(P2/T))^2 + P3 ((P4/T)/cosh(P4/T))^2
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

// rho = A + B (T - C), the line through the density A at the temperature C, where no T(Lo) is given; else the
// polynomial or, without A, the Rackett form.
DensityResult rhoL_Fu(const SubstanceConstants& substance, float T) {
    const auto& k = substance.RhoL;
    if (substance.RhoLTLo == 0 && k[0] > Present && k[2] > Present) {
        const double A = k[0], B = k[1], C = k[2];
        return {.rho = A + B * (static_cast<double>(T) - C)};
    }
    if (k == std::array<float, 7>{}) return {.reason = Reason::no_database_equation};
    DensityResult r = std::fabs(k[0]) > Present ? polynomial(substance, T) : rackett(substance, T);
    if (substance.RhoLTLo > 0 && substance.RhoLTHi > 0)
        r.dT = outside_by(T, substance.RhoLTLo, substance.RhoLTHi);
    return r;
}

// rho = A + B T + C T^2 + D T^3 where limits are given, else the line rho = A + B (T - C)
DensityResult rhoS_Fu(const SubstanceConstants& substance, float T) {
    const auto& k = substance.RhoS;
    const double A = k[0], B = k[1], C = k[2], D = k[3], t = T;
    if (substance.RhoSTLo > 0 && substance.RhoSTHi > 0) {
        return {.rho = static_cast<double>(static_cast<float>(A + (B + (C + D * t) * t) * t)),
                .dT = outside_by(t, substance.RhoSTLo, substance.RhoSTHi)};
    }
    if (substance.RhoSTLo == 0 && k[0] > Present)
        return {.rho = static_cast<double>(static_cast<float>(A + B * (t - C)))};
    return {.reason = Reason::no_database_equation};
}

float cpL_Fu(const SubstanceConstants& substance, double T) {
    return cp_of(substance.cpL, substance.StoffCAS, T);
}

float cpS_Fu(const SubstanceConstants& substance, double T) {
    return cp_of(substance.cpS, substance.StoffCAS, T);
}

// The mean of both densities is a straight line in T through the reference point and the critical point:
//     rho(L) + rho(V) = (rhoLRef + rhoVRef) (T - Tcr)/(TRefL - Tcr) + 2 rho(cr) (TRefL - T)/(TRefL - Tcr)
double rhoLBenson(const SubstanceConstants& substance, const BensonReference& benson, double T, double rhoV) {
    const double Tcr = substance.Tcr, rhocr = substance.rhocrDB, TRef = benson.TRefL;
    const double span = TRef - Tcr;
    if (!(TRef > TinyT) || !(benson.rhoLRef > 0.0f) || rhocr < TinyT || span == 0.0) return 0.0;
    const double sum = static_cast<double>(benson.rhoLRef) + static_cast<double>(benson.rhoVRef);
    return sum * (T - Tcr) / span - rhoV + 2.0 * rhocr * (TRef - T) / span;
}

// Benson (1948), rho(L)/rho(cr) = 0.422 log10(pcr/atm) + 1.981 at the normal boiling point, with 1 atm as
// 101.3 kPa:
//     rho(L) = (0.18327 ln(pcr/101.3) + 1.981) rho(cr)
float rhoLRefBenson([[maybe_unused]] double pRef, double pcr, double rhocrDB) {
    if (!(pcr > 0.0)) return 0.0f;
    return static_cast<float>((0.18327 * std::log(pcr / 101.3) + 1.981) * rhocrDB);
}

}  // namespace quom

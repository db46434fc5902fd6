#include "fitting/fit_equations.h"

#include <array>
#include <cmath>
#include <limits>

#include "base/constants.h"

namespace quom {
namespace {

constexpr double NotComputable = std::numeric_limits<double>::quiet_NaN();
constexpr int MaxRounds = 900;        // of the search for the p of an implicit equation
constexpr double SmallestP = 1e-120;  // [kPa]
constexpr double SmallestSlope = 1e-50;
constexpr double Step = 1e-7;          // relative step that ends the search
constexpr double SmallestZ = 1e-6;     // smallest 1 - T/T(cr) of Wagner's equation
constexpr double LargestWagner = 50;   // of its sum of powers
constexpr double ExpLimit = 709.78;    // where an exponential overflows
constexpr double NoSinhTerms = 1e-35;  // |B C D E| below it leaves A alone

double sinh_below_limit(double x) { return x < ExpLimit ? (std::exp(x) - std::exp(-x)) / 2.0 : 0.0; }
double cosh_below_limit(double x) { return x < ExpLimit ? (std::exp(x) + std::exp(-x)) / 2.0 : 0.0; }

double cubed(double x) { return x * x * x; }

// z^a; exactly 0 in the critical point.
double power_of_z(const Abscissa& at, double a) {
    return at.z > 0.0 ? std::exp(a * at.lnz) : std::pow(at.z, a);
}
// y ln z of a y that goes to 0 with a power of z.
double times_lnz(double y, const Abscissa& at) { return y == 0.0 ? 0.0 : y * at.lnz; }

double frost_pressure(const FitConstants& constants, const Abscissa& at, const double* par, double D) {
    const double f = constants.f(), inverse_f = 1.0 / f, T = at.x;
    const double terms = par[0] + par[1] / (par[2] - TZeroC + T) + D * inverse_f * at.lnx;
    const double e = par[4] / (T * T);
    double p = std::exp(f * terms);
    for (int round = 0; round < MaxRounds; ++round) {
        if (!(std::fabs(p) >= SmallestP) || std::isinf(p)) return NotComputable;
        const double F = terms + e * p - std::log(p) * inverse_f;
        const double slope = e - inverse_f / p;
        if (!(std::fabs(slope) >= SmallestSlope)) return NotComputable;
        const double dp = -F / slope;
        p += dp;
        if (std::fabs(dp) < Step * std::fabs(p)) break;
    }
    return p >= SmallestP ? p : NotComputable;
}

void frost_slopes(const FitConstants& constants, const Abscissa& at, const double* par, double p,
                  double* slopes) {
    const double f = constants.f(), T = at.x, u = par[2] - TZeroC + T, a = p / (T * T);
    const double factor = p / (1.0 - f * par[4] * a);  // of d(ln p), p on both sides
    slopes[0] = f * factor;
    slopes[1] = f * factor / u;
    slopes[2] = -f * factor * par[1] / (u * u);
    slopes[3] = at.lnx * factor;
    slopes[4] = f * factor * a;
}

double wagner_pressure(double T, double z, const double* par, double TcFit, double pcFit) {
    const double z3 = cubed(z);
    const double S = par[0] * z + par[1] * z * std::sqrt(z) + par[2] * z3 + par[3] * z3 * z3;
    return std::fabs(S) < LargestWagner ? pcFit * std::exp(S * TcFit / T) : NotComputable;
}

bool below_critical(double T, double z, double TcFit) { return T < TcFit && T >= TinyT && z >= SmallestZ; }

}  // namespace

double FitConstants::f() const { return UseLg ? LnTen : 1.0; }

Abscissa::Abscissa(double abscissa, const FitConstants& constants) : x(abscissa), lnx(std::log(abscissa)) {
    if (!(constants.TcFit > 0.0)) return;
    z = 1.0 - abscissa / constants.TcFit;
    lnz = std::log(z);
}

double thodos_D(double B, const FitConstants& constants) {
    return 1.8 * (constants.UseLg ? B : B / LnTen) / constants.TcFit + 2.67;
}

FitPressure p0_FRO(double T, const double* par, bool correlated, const FitConstants& constants) {
    const double D = correlated ? thodos_D(par[1], constants) : par[3];
    const double p = frost_pressure(constants, Abscissa(T, constants), par, D);
    return std::isfinite(p) ? FitPressure{p, false} : FitPressure{0.0, true};
}

FitPressure p0_WAG(double T, const double* par, double TcFit, double pcFit) {
    const double z = 1.0 - T / TcFit;
    if (!below_critical(T, z, TcFit)) return {};
    const double p = wagner_pressure(T, z, par, TcFit, pcFit);
    return std::isfinite(p) ? FitPressure{p, false} : FitPressure{0.0, true};
}

double cpSinh(double T, const double* par) {
    if (std::fabs(par[1] * par[2] * par[3] * par[4]) < NoSinhTerms) return par[0];
    const double u = par[2] / T, w = par[4] / T;
    const double s = u / sinh_below_limit(u), c = w / cosh_below_limit(w);
    return par[0] + par[1] * s * s + par[3] * c * c;
}

namespace {
namespace equation {

double polynomial(const FitConstants&, const Abscissa& at, const double* par) {
    const double x = at.x;
    return ((((par[5] * x + par[4]) * x + par[3]) * x + par[2]) * x + par[1]) * x + par[0];
}
double combination(const FitConstants&, const Abscissa& at, const double* par) {
    const double x = at.x;
    return ((par[3] * x + par[2]) * x + par[1]) * x + par[0] + (par[5] / x + par[4]) / x + par[6] * at.lnx;
}
double august_rankine(const FitConstants& constants, const Abscissa& at, const double* par) {
    return std::exp(constants.f() * (par[0] - par[1] / at.x) + par[2] * at.lnx);
}
double antoine(const FitConstants& constants, const Abscissa& at, const double* par) {
    return std::exp(constants.f() * (par[0] - par[1] / (at.x + par[2] - TZeroC)));
}
double frost_kalkwarf(const FitConstants& constants, const Abscissa& at, const double* par) {
    return frost_pressure(constants, at, par, par[3]);
}
double frost_thodos(const FitConstants& constants, const Abscissa& at, const double* par) {
    return frost_pressure(constants, at, par, thodos_D(par[1], constants));
}
double dippr_pressure(const FitConstants& constants, const Abscissa& at, const double* par) {
    const double power = std::exp(par[4] * at.lnx);
    return std::exp(constants.f() * (par[0] + par[1] / at.x + par[3] * power) + par[2] * at.lnx);
}
double wagner(const FitConstants& constants, const Abscissa& at, const double* par) {
    if (!below_critical(at.x, at.z, constants.TcFit)) return 0.0;
    return wagner_pressure(at.x, at.z, par, constants.TcFit, constants.pcFit);
}
double rackett(const FitConstants&, const Abscissa& at, const double* par) {
    return par[0] * std::exp(-std::log(par[1]) * (1.0 + power_of_z(at, par[2])));
}
double cubic(const FitConstants&, const Abscissa& at, const double* par) {
    return ((par[3] * at.x + par[2]) * at.x + par[1]) * at.x + par[0];
}
double leuna(const FitConstants& constants, const Abscissa& at, const double* par) {
    return cubic(constants, at, par) + (at.z < 0.0 ? NotComputable : par[4] * std::cbrt(at.z));
}
double majer(const FitConstants&, const Abscissa& at, const double* par) {
    return par[0] * power_of_z(at, par[2]) * std::exp(-par[1] * (1.0 - at.z));
}
double dippr_vaporization(const FitConstants&, const Abscissa& at, const double* par) {
    const double Tr = 1.0 - at.z;
    return par[0] * power_of_z(at, ((par[4] * Tr + par[3]) * Tr + par[2]) * Tr + par[1]);
}
double shomate(const FitConstants& constants, const Abscissa& at, const double* par) {
    return cubic(constants, at, par) + par[4] / (at.x * at.x);
}
double dippr_cp(const FitConstants&, const Abscissa& at, const double* par) { return cpSinh(at.x, par); }

}  // namespace equation

namespace derivatives {

void powers(double x, int count, double* slopes) {
    slopes[0] = 1.0;
    for (int j = 1; j < count; ++j) slopes[j] = slopes[j - 1] * x;
}

void polynomial(const FitConstants&, const Abscissa& at, const double*, double, double* slopes) {
    powers(at.x, 6, slopes);
}
void combination(const FitConstants&, const Abscissa& at, const double*, double, double* slopes) {
    powers(at.x, 4, slopes);
    slopes[4] = 1.0 / at.x;
    slopes[5] = slopes[4] / at.x;
    slopes[6] = at.lnx;
}
void august_rankine(const FitConstants& constants, const Abscissa& at, const double*, double y,
                    double* slopes) {
    slopes[0] = constants.f() * y;
    slopes[1] = -slopes[0] / at.x;
    slopes[2] = at.lnx * y;
}
void antoine(const FitConstants& constants, const Abscissa& at, const double* par, double y, double* slopes) {
    const double u = at.x + par[2] - TZeroC;
    slopes[0] = constants.f() * y;
    slopes[1] = -slopes[0] / u;
    slopes[2] = slopes[0] * par[1] / (u * u);
}
void frost_kalkwarf(const FitConstants& constants, const Abscissa& at, const double* par, double y,
                    double* slopes) {
    frost_slopes(constants, at, par, y, slopes);
}
void frost_thodos(const FitConstants& constants, const Abscissa& at, const double* par, double y,
                  double* slopes) {
    frost_slopes(constants, at, par, y, slopes);
    const double dD_dB = 1.8 / ((constants.UseLg ? 1.0 : LnTen) * constants.TcFit);
    slopes[1] += slopes[3] * dD_dB;
    slopes[3] = 0.0;
}
void dippr_pressure(const FitConstants& constants, const Abscissa& at, const double* par, double y,
                    double* slopes) {
    slopes[0] = constants.f() * y;
    slopes[1] = slopes[0] / at.x;
    slopes[2] = at.lnx * y;
    slopes[3] = slopes[0] * std::exp(par[4] * at.lnx);
    slopes[4] = slopes[3] * par[3] * at.lnx;
}
void wagner(const FitConstants& constants, const Abscissa& at, const double*, double y, double* slopes) {
    const double z = at.z, z3 = cubed(z), factor = y == 0.0 ? 0.0 : y * constants.TcFit / at.x;
    slopes[0] = factor * z;
    slopes[1] = factor == 0.0 ? 0.0 : factor * z * std::sqrt(z);
    slopes[2] = factor * z3;
    slopes[3] = factor * z3 * z3;
}
void rackett(const FitConstants&, const Abscissa& at, const double* par, double y, double* slopes) {
    const double power = power_of_z(at, par[2]);
    slopes[0] = std::exp(-std::log(par[1]) * (1.0 + power));
    slopes[1] = -y * (1.0 + power) / par[1];
    slopes[2] = -y * std::log(par[1]) * times_lnz(power, at);
}
void leuna(const FitConstants&, const Abscissa& at, const double*, double, double* slopes) {
    powers(at.x, 4, slopes);
    slopes[4] = std::cbrt(at.z);
}
void cubic(const FitConstants&, const Abscissa& at, const double*, double, double* slopes) {
    powers(at.x, 4, slopes);
}
void majer(const FitConstants&, const Abscissa& at, const double* par, double y, double* slopes) {
    const double Tr = 1.0 - at.z;
    slopes[0] = power_of_z(at, par[2]) * std::exp(-par[1] * Tr);
    slopes[1] = -Tr * y;
    slopes[2] = times_lnz(y, at);
}
void dippr_vaporization(const FitConstants&, const Abscissa& at, const double* par, double y,
                        double* slopes) {
    const double Tr = 1.0 - at.z;
    slopes[0] = power_of_z(at, ((par[4] * Tr + par[3]) * Tr + par[2]) * Tr + par[1]);
    slopes[1] = times_lnz(y, at);
    for (int j = 2; j < 5; ++j) slopes[j] = slopes[j - 1] * Tr;
}
void cubic_of_five(const FitConstants&, const Abscissa& at, const double*, double, double* slopes) {
    powers(at.x, 4, slopes);
    slopes[4] = 0.0;
}
void shomate(const FitConstants&, const Abscissa& at, const double*, double, double* slopes) {
    powers(at.x, 4, slopes);
    slopes[4] = 1.0 / (at.x * at.x);
}
void dippr_cp(const FitConstants&, const Abscissa& at, const double* par, double, double* slopes) {
    slopes[0] = 1.0;
    for (int j = 1; j < 5; ++j) slopes[j] = 0.0;
    if (std::fabs(par[1] * par[2] * par[3] * par[4]) < NoSinhTerms) return;
    const double T = at.x, u = par[2] / T, w = par[4] / T;
    const double sinh_u = sinh_below_limit(u), cosh_w = cosh_below_limit(w);
    const double s = u / sinh_u, c = w / cosh_w;
    slopes[1] = s * s;
    slopes[2] = 2.0 * par[1] * s * s * (1.0 / u - cosh_below_limit(u) / sinh_u) / T;
    slopes[3] = c * c;
    slopes[4] = 2.0 * par[3] * c * c * (1.0 / w - sinh_below_limit(w) / cosh_w) / T;
}

}  // namespace derivatives

constexpr FitFunctions none{nullptr, nullptr};
constexpr std::array<FitFunctions, FitModelCount> functions{{
    {equation::polynomial, derivatives::polynomial},
    {equation::combination, derivatives::combination},
    none,
    {equation::august_rankine, derivatives::august_rankine},
    {equation::antoine, derivatives::antoine},
    {equation::frost_kalkwarf, derivatives::frost_kalkwarf},
    {equation::frost_thodos, derivatives::frost_thodos},
    {equation::dippr_pressure, derivatives::dippr_pressure},
    {equation::wagner, derivatives::wagner},
    {equation::rackett, derivatives::rackett},
    {equation::leuna, derivatives::leuna},
    {equation::cubic, derivatives::cubic},
    none,
    none,
    {equation::majer, derivatives::majer},
    {equation::dippr_vaporization, derivatives::dippr_vaporization},
    {equation::cubic, derivatives::cubic_of_five},
    {equation::shomate, derivatives::shomate},
    {equation::dippr_cp, derivatives::dippr_cp},
    none,
}};

}  // namespace

FitFunctions fit_functions(FitModel model) { return functions[static_cast<std::size_t>(model)]; }

}  // namespace quom

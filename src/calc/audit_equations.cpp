// The audit of the equations of a record.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "base/code_page.h"
#include "calc/audit_run.h"
#include "calc/calc_run.h"
#include "engine/condensed_phases.h"
#include "engine/ideal_gas.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

using enum AuditCheck;

constexpr int Samples = 15;
constexpr double Nothing = std::numeric_limits<double>::quiet_NaN();

TLimits common(TLimits a, TLimits b) { return {std::max(a.TLo, b.TLo), std::min(a.THi, b.THi)}; }

// T number i of Samples from TLo to THi.
double sample(TLimits limits, int i) {
    const double lo = limits.TLo, hi = limits.THi;
    return lo + (hi - lo) * i / (Samples - 1);
}

// H2, D2, He, Ne: the laws of corresponding states do not hold.
bool is_quantum_fluid(const SubstanceConstants& k) { return k.Tcr < 50.0; }

// The vapor is partly made of double molecules.
bool has_double_molecules(const SubstanceConstants& k) {
    const auto has = [&](const char* group) { return k.StoffStructure.find(group) != std::string::npos; };
    return has("COOH") || has("HOOC") || k.StoffFormulaCompact == "HF" || k.StoffFormulaCompact == "N2O4" ||
           k.StoffFormulaCompact == "NO2";
}

// p(LV) [kPa], NaN without a value.
double p_at(const SubstanceConstants& k, double T, Evp code) {
    const EvpResult r = pLV_EVP(k, T, code);
    return r.err() ? Nothing : r.value;
}

bool reaches(double T, TLimits limits) {
    constexpr double slack = 1.0;  // limits are whole kelvin, rounded inwards
    return limits.TLo > 0 && T > limits.TLo - slack && T < limits.THi + slack;
}

std::string p_of(Evp code) { return "p(LV) by " + evp_words(code); }

// The pair of the largest difference, as a multiple of what its rule allows.
void audit_pair(AuditRun& run, Evp first, Evp second) {
    const SubstanceConstants& k = run.substance;
    const TLimits limits = common(evp_limits(k, first), evp_limits(k, second));
    if (!(limits.TLo < limits.THi)) return;
    Doubt worst;
    double excess = 1.0;
    for (int i = 0; i < Samples; ++i) {
        const double T = sample(limits, i), p = p_at(k, T, first), reference = p_at(k, T, second);
        if (!(p > 0.01) || !(reference > 0.01) || T >= k.Tcr) continue;
        const AuditCheck check = p > 10.0 ? evp_pair : p > 1.0 ? evp_pair_low : evp_pair_lowest;
        const Doubt doubt{check, p_of(first) + " against " + evp_words(second) + at_T(T), p, reference};
        const double times = std::fabs(doubt.difference()) / audit_rule(check).tolerance;
        if (times <= excess) continue;
        excess = times;
        worst = doubt;
    }
    if (excess > 1.0) run.doubts.push_back(worst);
}

// A value above 0 that rises with T.
void audit_values(AuditRun& run, Evp code) {
    const SubstanceConstants& k = run.substance;
    const TLimits limits = evp_limits(k, code);
    double before = 0.0;
    for (int i = 0; i < Samples; ++i) {
        const double T = sample(limits, i), p = p_at(k, T, code);
        if (code == Evp::wagner && T > static_cast<double>(k.WagnerTcr) - 0.01) return;
        const char* const what = std::isfinite(p) ? " does not rise" : " has no value";
        if (!(p > before)) return run.add(evp_value, p_of(code) + at_T(T) + what, p, before);
        before = p;
    }
}

// At T(cr), where the set reaches it.
void audit_critical_p(AuditRun& run, Evp code) {
    const SubstanceConstants& k = run.substance;
    if (!(k.pcr > 0.0) || !reaches(k.Tcr, evp_limits(k, code))) return;
    double T = k.Tcr;
    if (code == Evp::wagner) T = std::min(T, (1.0 - 2e-6) * static_cast<double>(k.WagnerTcr));
    run.compare(critical_p, p_of(code) + " at T(cr)", p_at(k, T, code), k.pcr);
}

// omega = -log10(p(LV)/pcr) - 1 at 0.7 Tcr
void audit_omega(AuditRun& run, Evp code) {
    const SubstanceConstants& k = run.substance;
    const double T = 0.7 * k.Tcr;
    if (k.omega == 0.0 || !(k.pcr > 0.0) || !inside(T, evp_limits(k, code))) return;
    run.compare(omega, "omega against " + p_of(code) + " at 0.7 T(cr)", k.omega,
                -std::log10(p_at(k, T, code) / k.pcr) - 1.0);
}

// -d(ln p)/d(1/T) [K] passes a flat minimum at some 0.8 T(cr) and rises towards T(cr).
void audit_slope(AuditRun& run, Evp code) {
    const SubstanceConstants& k = run.substance;
    const double end = 0.985 * k.Tcr;
    if (is_quantum_fluid(k) || !inside(end, evp_limits(k, code))) return;
    const auto slope = [&](double T) { return -static_cast<double>(dpLVdT_EVP(k, T, code).value); };
    double flattest = std::numeric_limits<double>::infinity();
    for (int i = 60; i <= 98; ++i) {
        const double T = 0.01 * i * k.Tcr;
        if (inside(T, evp_limits(k, code))) flattest = std::min(flattest, slope(T));
    }
    run.compare(evp_slope, "slope of ln p by " + evp_words(code) + " near T(cr) against its least",
                slope(end), flattest);
}

// ln(p/pcr) = f0 + omega f1 + omega^2 f2, u = 1 - Tr (Ambrose and Walton 1989)
//     f = (c1 u + c2 u^1.5 + c3 u^2.5 + c4 u^5)/Tr
std::array<double, 3> ambrose_walton(double Tr) {
    constexpr double c[3][4] = {{-5.97616, 1.29874, -0.60394, -1.06841},
                                {-5.03365, 1.11505, -5.41217, -7.46628},
                                {-0.64771, 2.41539, -4.26979, 3.25259}};
    const double u = 1.0 - Tr, root = std::sqrt(u);
    std::array<double, 3> f{};
    for (std::size_t i = 0; i < 3; ++i)
        f[i] = (c[i][0] * u + c[i][1] * u * root + c[i][2] * u * u * root + c[i][3] * std::pow(u, 5)) / Tr;
    return f;
}

// p(cr) that p(LV) at 0.55 to 0.82 T(cr) leads to: least squares in ln pcr and omega, by Newton's method for
// the square of omega. None where the set covers less than half of the range.
std::optional<double> extrapolated_pcr(const SubstanceConstants& k, Evp code) {
    std::vector<std::array<double, 4>> points;  // f0, f1, f2, ln p
    for (int i = 0; i <= 18; ++i) {
        const double Tr = 0.55 + 0.015 * i;
        const double p = inside(Tr * k.Tcr, evp_limits(k, code)) ? p_at(k, Tr * k.Tcr, code) : Nothing;
        const auto f = ambrose_walton(Tr);
        if (p > 0.0) points.push_back({f[0], f[1], f[2], std::log(p)});
    }
    if (points.size() < 10) return std::nullopt;
    const double n = static_cast<double>(points.size());
    double w = 0.3, ln_pcr = std::log(k.pcr);
    for (int round = 0; round < 20; ++round) {
        double sx = 0, sy = 0, sxx = 0, sxy = 0;
        for (const auto& [f0, f1, f2, ln_p] : points) {
            const double x = f1 + 2.0 * w * f2, y = ln_p - f0 - w * f1 - w * w * f2;
            sx += x;
            sy += y;
            sxx += x * x;
            sxy += x * y;
        }
        const double step = (n * sxy - sx * sy) / (n * sxx - sx * sx);
        ln_pcr = (sy - step * sx) / n;
        w += step;
        if (!std::isfinite(w)) return std::nullopt;
        if (std::fabs(step) < 1e-9) break;
    }
    return std::exp(ln_pcr);
}

// By the first set that covers the range; associating liquids follow another law.
void audit_extrapolated_pcr(AuditRun& run, const std::vector<Evp>& sets) {
    const SubstanceConstants& k = run.substance;
    const bool hydroxyl = k.StoffStructure.find("OH") != std::string::npos;
    if (!(k.Tcr > 0.0 && k.pcr > 0.0) || hydroxyl || has_double_molecules(k) || is_quantum_fluid(k)) return;
    for (const Evp code : sets) {
        if (code != Evp::wagner && code != Evp::frost_kalkwarf) continue;
        const std::optional<double> pcr = extrapolated_pcr(k, code);
        if (!pcr) continue;
        const std::string what = "p(cr) against " + p_of(code) + " extrapolated from 0.82 T(cr)";
        return run.compare(critical_p_from_evp, what, k.pcr, *pcr);
    }
}

void audit_triple_p(AuditRun& run, Evp code) {
    const SubstanceConstants& k = run.substance;
    const double Ttr = static_cast<double>(k.Ttr), ptr = static_cast<double>(k.ptr);
    if (!(ptr > 1e-5) || !reaches(Ttr, evp_limits(k, code))) return;
    run.compare(ptr < 0.5 ? triple_p_low : triple_p, p_of(code) + " at T(tr)", p_at(k, Ttr, code), ptr);
}

// Clapeyron: delta(LV)h = -R L (z(V) - z(L)), L = d(ln p)/d(1/T) of the vapor pressure equation, z = p v/(R
// T), v(V) by Peng/Robinson at T, p(LV), v(L) = M/rho(L) of the record or, without one, by Peng/Robinson.
double clapeyron_heat(const AuditRun& run, double T, Evp code) {
    const SubstanceConstants& k = run.substance;
    const double p = p_at(k, T, code), L = static_cast<double>(dpLVdT_EVP(k, T, code).value);
    const double vV = partial_vapor_volume(*run.fluid, T, p);
    double vL = 0.0;
    if (inside(T, {k.RhoLTLo, k.RhoLTHi}))
        vL = static_cast<double>(k.MolMass) / rhoL_Fu(k, static_cast<float>(T)).rho;
    if (!(vL > 0.0)) vL = pLV_EOS(*run.fluid, T).vL;
    if (!(vV > vL)) return Nothing;
    return -L * p * (vV - vL) / T;
}

std::string against_clapeyron(Evp code, double T) { return " against the slope of " + p_of(code) + at_T(T); }

// The largest of the doubts up to 0.85 T(cr), and that at 0.9 T(cr).
void audit_clapeyron(AuditRun& run, Evp code) {
    const SubstanceConstants& k = run.substance;
    Doubt worst;
    for (const double Tr : {0.6, 0.65, 0.7, 0.75, 0.8, 0.85, 0.9}) {
        const double T = Tr * k.Tcr;
        if (!inside(T, {k.HLVTLo, k.HLVTHi}) || !inside(T, evp_limits(k, code))) continue;
        const double reference = clapeyron_heat(run, T, code);
        const std::string what = "delta(LV)h" + against_clapeyron(code, T);
        const double h = static_cast<double>(hLV_Fu(k, T).value);
        if (!std::isfinite(reference)) continue;
        if (Tr > 0.87) {
            run.compare(clapeyron_high, what, h, reference);
            continue;
        }
        const Doubt doubt{clapeyron, what, h, reference};
        if (worst.what.empty() || std::fabs(doubt.difference()) > std::fabs(worst.difference()))
            worst = doubt;
    }
    if (!worst.what.empty()) run.compare(clapeyron, worst.what, worst.value, worst.reference);
}

void audit_heat_point(AuditRun& run, const HeatPoint& point, const std::vector<Evp>& sets) {
    const SubstanceConstants& k = run.substance;
    const std::string what = "value of delta(LV)h";
    if (inside(point.T, {k.HLVTLo, k.HLVTHi}))
        run.compare(heat_point, what + " against its equation" + at_T(point.T), point.h,
                    static_cast<double>(hLV_Fu(k, point.T).value));
    if (has_double_molecules(k) || is_quantum_fluid(k) || !(point.T < 0.87 * k.Tcr)) return;
    for (const Evp code : sets) {
        if (code != Evp::wagner && code != Evp::frost_kalkwarf) continue;
        // At low pressures the slope is less certain than the value.
        if (!inside(point.T, evp_limits(k, code)) || !(p_at(k, point.T, code) > 1.0)) continue;
        const double reference = clapeyron_heat(run, point.T, code);
        if (std::isfinite(reference))
            run.compare(heat_point, what + against_clapeyron(code, point.T), point.h, reference);
    }
}

// Benson's method at 0.9 T(cr), from T(nb) and the critical point.
void audit_benson(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    const double T = 0.9 * k.Tcr, Tnb = static_cast<double>(k.Tnb);
    if (!inside(T, {k.RhoLTLo, k.RhoLTHi}) || !(Tnb > 0.0) || !(k.rhocrDB > 0.0) || Tnb >= T) return;
    const double M = static_cast<double>(k.MolMass);
    const Saturation at = pLV_EOS(*run.fluid, T);
    const double vV = partial_vapor_volume(*run.fluid, Tnb, pNorm);
    if (!at.found() || !(vV > 0.0)) return;
    const BensonReference reference{.TRefL = k.Tnb,
                                    .pLVRef = static_cast<float>(pNorm),
                                    .rhoLRef = rhoLRefBenson(pNorm, k.pcr, k.rhocrDB),
                                    .rhoVRef = static_cast<float>(M / vV)};
    run.compare(rhoL_benson, "rho(L) against Benson's method from rho(cr)" + at_T(T),
                rhoL_Fu(k, static_cast<float>(T)).rho, rhoLBenson(k, reference, T, M / at.vV));
}

// cp(idG) by a form within its limits; NaN outside.
double cp_ideal(const SubstanceConstants& k, double T, CpForm form) {
    const bool polynomial = form == CpForm::polynomial;
    const TLimits limits =
        polynomial ? TLimits{k.cpPolyTLo, k.cpPolyTHi} : TLimits{k.cpDIPPRTLo, k.cpDIPPRTHi};
    if (!(polynomial ? k.havePoly : k.haveSinh) || !inside(T, limits)) return Nothing;
    const CpResult r = cpIdG(k, T, form);
    return r.err() ? Nothing : static_cast<double>(r.cp);
}

}  // namespace

std::vector<Evp> recorded_sets(const SubstanceConstants& substance) {
    std::vector<Evp> sets;
    for (const Evp code : {Evp::wagner, Evp::frost_kalkwarf, Evp::antoine_low, Evp::antoine_high}) {
        const TLimits limits = evp_limits(substance, code);
        if (limits.TLo > 0 && limits.TLo < limits.THi) sets.push_back(code);
    }
    return sets;
}

std::string evp_words(Evp code) {
    switch (code) {
        case Evp::wagner:
            return "Wagner";
        case Evp::frost_kalkwarf:
            return "Frost/Kalkwarf";
        case Evp::antoine_low:
            return "Antoine, low pressure,";
        default:
            return "Antoine, high pressure,";
    }
}

void audit_vapor_pressure(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    const std::vector<Evp> sets = recorded_sets(k);
    const double Tnb = static_cast<double>(k.Tnb);
    for (std::size_t i = 0; i < sets.size(); ++i) {
        for (std::size_t j = i + 1; j < sets.size(); ++j) audit_pair(run, sets[j], sets[i]);
        audit_values(run, sets[i]);
        audit_triple_p(run, sets[i]);
        if (reaches(Tnb, evp_limits(k, sets[i])))
            run.compare(boiling_p, p_of(sets[i]) + " at T(nb)", p_at(k, Tnb, sets[i]), pNorm);
        if (sets[i] != Evp::wagner && sets[i] != Evp::frost_kalkwarf) continue;
        audit_critical_p(run, sets[i]);
        audit_omega(run, sets[i]);
        audit_slope(run, sets[i]);
    }
    audit_extrapolated_pcr(run, sets);
}

void audit_vaporization(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    if (!run.fluid->has_eos()) return;
    const std::vector<Evp> sets = recorded_sets(k);
    const bool holds = !has_double_molecules(k) && !is_quantum_fluid(k);
    for (const Evp code : sets) {
        if (holds && (code == Evp::wagner || code == Evp::frost_kalkwarf)) audit_clapeyron(run, code);
    }
    for (const HeatPoint& point : run.heats) audit_heat_point(run, point, sets);
}

void audit_liquid_density(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    const TLimits limits{k.RhoLTLo, k.RhoLTHi};
    if (!(limits.TLo > 0 && limits.TLo < limits.THi)) return;
    const auto rho = [&](double T) { return rhoL_Fu(k, static_cast<float>(T)).rho; };
    for (int i = 1; i < Samples; ++i) {
        const double T = sample(limits, i), before = rho(sample(limits, i - 1));
        if (rho(T) < before) continue;
        run.add(rhoL_falling, "rho(L)" + at_T(T) + " against a colder liquid", rho(T), before);
        break;
    }
    const double end = std::min(k.Tcr, static_cast<double>(k.RhoLTcr));
    if (k.rhocrDB > 0.0 && reaches(end, limits))
        run.compare(rhoL_critical, "rho(L) at T(cr) against rho(cr)", rho(end), k.rhocrDB);
    if (run.fluid->has_eos()) audit_benson(run);
}

void audit_heat_capacities(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    const TLimits ideal = common({k.cpPolyTLo, k.cpPolyTHi}, {k.cpDIPPRTLo, k.cpDIPPRTHi});
    Doubt worst;
    for (int i = 0; i < Samples && ideal.TLo < ideal.THi; ++i) {
        const double T = sample(ideal, i), first = cp_ideal(k, T, CpForm::polynomial),
                     second = cp_ideal(k, T, CpForm::sinh_cosh);
        const Doubt doubt{cpId_pair, "cp(idG) polynomial against sinh/cosh" + at_T(T), first, second};
        if (std::isfinite(doubt.difference()) &&
            (worst.what.empty() || std::fabs(doubt.difference()) > std::fabs(worst.difference())))
            worst = doubt;
    }
    if (!worst.what.empty()) run.compare(cpId_pair, worst.what, worst.value, worst.reference);
    if (!k.HasCpL || !(k.cpLTLo < k.cpLTHi) || is_quantum_fluid(k)) return;
    for (int i = 0; i < Samples; ++i) {
        const double T = sample({k.cpLTLo, k.cpLTHi}, i), liquid = static_cast<double>(cpL_Fu(k, T));
        const double sinh_cosh = cp_ideal(k, T, CpForm::sinh_cosh);
        const double gas = std::isfinite(sinh_cosh) ? sinh_cosh : cp_ideal(k, T, CpForm::polynomial);
        if (!(liquid <= gas)) continue;
        run.add(cpL_above_ideal, "cp(L) against cp(idG)" + at_T(T), liquid, gas);
        break;
    }
}

}  // namespace quom

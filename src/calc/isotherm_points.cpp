#include "calc/isotherm_points.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "engine/eos_parameters.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr int CurvePointCount = 400;
constexpr int CoexistenceCount = 80;
constexpr double LowestCoexistence = 0.3;  // T/T(cr)

// The isotherm of one T in molar volumes.
//
//     p = R T/(v - b) - a/((v + c)(v + d)),   dp/dv = -R T/(v - b)^2 + a (2 v + c + d)/((v + c)(v + d))^2
class Isotherm {
 public:
    Isotherm(const Fluid& fluid, double T) : T_(T) {
        const EosAtT at = EOSParT(fluid, T);
        a_ = at.a;
        b_ = at.b;
        c_ = at.c;
        d_ = at.d;
        // Every term has its pole at or below the largest of b, -c, -d.
        pole_ = std::max({b_, -c_, -d_, 0.0});
    }
    bool good() const { return T_ > 0.0 && std::isfinite(a_ + pole_) && pole_ > 0.0; }
    double pole() const { return pole_; }
    double p(double v) const { return RGas * T_ / (v - b_) - a_ / ((v + c_) * (v + d_)); }
    double slope(double v) const {
        const double denominator = (v + c_) * (v + d_);
        return -RGas * T_ / ((v - b_) * (v - b_)) + a_ * (2.0 * v + c_ + d_) / (denominator * denominator);
    }
    // v between the pole and infinity at an even step of ln(v - pole): dense where the isotherm is steep.
    double at(double low, double high, double fraction) const {
        return pole_ + (low - pole_) * std::pow((high - pole_) / (low - pole_), fraction);
    }

    // Places where dp/dv changes its sign: none, or minimum and maximum.
    std::vector<double> extremes() const {
        constexpr int Steps = 2000;
        const double low = pole_ * (1.0 + 1e-6), high = 1e6 * pole_;
        std::vector<double> found;
        for (int i = 0; i < Steps && found.size() < 2; ++i) {
            const double v0 = at(low, high, static_cast<double>(i) / Steps);
            const double v1 = at(low, high, static_cast<double>(i + 1) / Steps);
            if ((slope(v0) > 0.0) != (slope(v1) > 0.0)) {
                found.push_back(bisect(v0, v1, [this](double v) { return slope(v); }));
            }
        }
        if (found.size() < 2) found.clear();
        return found;
    }
    // v below `high` on the falling branch next to the pole at which p is `wanted`.
    double v_of(double wanted, double high) const {
        const double low = pole_ * (1.0 + 1e-9);
        if (!(p(high) < wanted) || !(p(low) > wanted)) return high;
        return bisect(low, high, [&](double v) { return p(v) - wanted; });
    }

 private:
    template <class F>
    static double bisect(double low, double high, F f) {
        const bool sign = f(low) > 0.0;
        for (int i = 0; i < 200 && high - low > 1e-14 * high; ++i) {
            const double middle = 0.5 * (low + high);
            ((f(middle) > 0.0) == sign ? low : high) = middle;
        }
        return 0.5 * (low + high);
    }
    double T_, a_ = 0, b_ = 0, c_ = 0, d_ = 0, pole_ = 0;
};

std::vector<VpPoint> sampled(const Isotherm& curve, double low, double high, int count, double vFactor) {
    std::vector<VpPoint> points;
    points.reserve(static_cast<std::size_t>(count) + 1);
    for (int i = 0; i <= count; ++i) {
        const double v = i == 0       ? low
                         : i == count ? high
                                      : curve.at(low, high, static_cast<double>(i) / count);
        points.push_back({v * vFactor, curve.p(v)});
    }
    return points;
}

// Ends of the stretches of an isotherm with a loop: v(L), minimum, maximum, v(V); without saturation the two
// phases go up to their extreme.
std::vector<IsothermStretch> stretches(const Isotherm& curve, double low, double high,
                                       const std::vector<double>& extremes, double vL, double vV,
                                       double vFactor) {
    struct Piece {
        Stretch kind;
        double end;
    };
    std::vector<Piece> pieces;
    if (extremes.empty()) {
        pieces = {{Stretch::one_phase, high}};
    } else if (vL > 0.0 && vL <= extremes[0] && vV >= extremes[1]) {
        pieces = {{Stretch::stable_L, vL},
                  {Stretch::metastable_L, extremes[0]},
                  {Stretch::unstable, extremes[1]},
                  {Stretch::metastable_V, vV},
                  {Stretch::stable_V, high}};
    } else {
        pieces = {
            {Stretch::stable_L, extremes[0]}, {Stretch::unstable, extremes[1]}, {Stretch::stable_V, high}};
    }
    std::vector<IsothermStretch> parts;
    double from = low;
    for (const Piece& piece : pieces) {
        const double to = std::min(piece.end, high);
        if (!(to > from)) continue;
        parts.push_back({piece.kind, sampled(curve, from, to, CurvePointCount / 4, vFactor)});
        from = to;
    }
    return parts;
}

// The isotherm as the fluid takes it in equilibrium: through the two-phase region at p(LV).
std::vector<IsothermStretch> stable_isotherm(const Fluid& fluid, const Isotherm& curve, double T, double low,
                                             double high, const std::vector<double>& extremes,
                                             double vFactor) {
    Saturation at;
    at.reason = Reason::above_critical_T;
    if (!extremes.empty()) at = pLV_EOS(fluid, T);
    if (!at.found()) return {{Stretch::one_phase, sampled(curve, low, high, CurvePointCount, vFactor)}};
    const double vL = at.vL, vV = at.vV;
    std::vector<VpPoint> points;
    if (vL > low) points = sampled(curve, low, vL, CurvePointCount / 2, vFactor);
    points.push_back({vL * vFactor, at.p});
    points.push_back({vV * vFactor, at.p});
    if (high > vV) {
        const std::vector<VpPoint> vapor = sampled(curve, vV, high, CurvePointCount / 2, vFactor);
        points.insert(points.end(), vapor.begin(), vapor.end());
    }
    return {{Stretch::one_phase, points}};
}

// What both pictures say alike. False: no picture.
bool begin_picture(const Fluid& fluid, double vFactor, std::string_view v_unit, IsothermPicture& picture) {
    const SubstanceConstants& substance = fluid.substance;
    if (!fluid.eos_row().is_cubic() || !fluid.has_eos()) return false;
    if (!(substance.Tcr > TinyT) || !(substance.pcr > TinyT)) return false;
    picture.eos = trim(fluid.eos_row().text);
    picture.v_unit = v_unit;
    picture.Tcr = substance.Tcr;
    picture.pcr = substance.pcr;
    picture.vcr = fluid.eos.vcrEOS * vFactor;
    return true;
}

// L and V side from the critical point down to p_low [kPa].
std::vector<VpPoint> coexistence_curve(const Fluid& fluid, double p_low, double vFactor) {
    const SubstanceConstants& substance = fluid.substance;
    std::vector<VpPoint> liquid, vapor;
    liquid.push_back({fluid.eos.vcrEOS * vFactor, substance.pcr});
    for (int i = 1; i <= CoexistenceCount; ++i) {
        // Dense at the critical point, where the curve is round.
        const double x = static_cast<double>(i) / CoexistenceCount;
        const double T = substance.Tcr * (1.0 - (1.0 - LowestCoexistence) * x * x * x);
        const Saturation at = pLV_EOS(fluid, T);
        if (!at.found()) continue;
        liquid.push_back({at.vL * vFactor, at.p});
        vapor.push_back({at.vV * vFactor, at.p});
        if (at.p < p_low) break;
    }
    std::reverse(liquid.begin(), liquid.end());
    liquid.insert(liquid.end(), vapor.begin(), vapor.end());
    return liquid;
}

}  // namespace

std::string_view stretch_name(Stretch kind) {
    constexpr std::string_view names[] = {"isotherm", "stable L",     "metastable L",
                                          "unstable", "metastable V", "stable V"};
    return names[static_cast<std::size_t>(kind)];
}

IsothermPicture diagnosis_picture(const Fluid& fluid, const Outcome& outcome, const UnitFactors& factors,
                                  std::string_view v_unit) {
    IsothermPicture picture;
    const double vFactor = factors.vFactor;
    const EosDiagnosis diagnosis = diagnose_eos(fluid, outcome, factors, v_unit);
    if (!diagnosis.available || !begin_picture(fluid, vFactor, v_unit, picture)) return picture;
    picture.T = *outcome.T;
    picture.p = diagnosis.p;
    double vL = 0.0, vV = 0.0;
    if (diagnosis.below_critical) {
        if (const Saturation at = pLV_EOS(fluid, picture.T); at.found()) {
            picture.pLV = at.p;
            vL = at.vL;
            vV = at.vV;
        }
    }
    const Isotherm curve(fluid, picture.T);
    if (!curve.good()) return picture;
    const std::vector<double> extremes = curve.extremes();
    double highest = std::max(picture.p, picture.pLV), lowest = 0.0;
    double largest = std::max(vV, curve.pole());
    for (const double v : extremes) {
        picture.spinodals.push_back({v * vFactor, curve.p(v)});
        highest = std::max(highest, curve.p(v));
        lowest = std::min(lowest, curve.p(v));
        largest = std::max(largest, v);
    }
    for (const RootLine& line : diagnosis.lines) {
        picture.marks.push_back({{line.v, picture.p}, line.label.substr(0, 4), line.meaning});
        largest = std::max(largest, line.v / vFactor);
    }
    if (!(highest > 0.0)) return picture;
    picture.p_high = 1.4 * highest;
    // A deep minimum of a cold liquid leaves the picture below, else nothing of the rest could be seen.
    picture.p_low = std::max(1.15 * lowest, -0.45 * picture.p_high);
    const double high = 4.0 * largest;
    const double low = curve.v_of(picture.p_high, extremes.empty() ? high : extremes[0]);
    picture.isotherm = stretches(curve, low, high, extremes, vL, vV, vFactor);
    picture.v_low = 0.85 * low * vFactor;
    picture.v_high = high * vFactor;
    picture.available = true;
    return picture;
}

IsothermPicture region_picture(const Fluid& fluid, double T, double p, const UnitFactors& factors,
                               std::string_view v_unit) {
    IsothermPicture picture;
    const double vFactor = factors.vFactor;
    if (!begin_picture(fluid, vFactor, v_unit, picture)) return picture;
    picture.T = T;
    picture.p = p;
    picture.region = phase_region(fluid, T, p);
    const Isotherm critical(fluid, picture.Tcr);
    if (!critical.good()) return picture;

    double largest = std::max(fluid.eos.vcrEOS, 3.0 * critical.pole());
    if (T > TinyT && p > TinyT) {
        const VolumeResult state = VolumeTp(fluid, T, p);
        const double v = state.vV > 0.0 ? state.vV : state.vL;
        if (state.reason == Reason::none && v > 0.0) {
            picture.marks.push_back({{v * vFactor, p}, {}, RootMeaning::stable_V});
            largest = std::max(largest, v);
        }
    }
    // Far from p(cr) only a logarithmic axis shows the state and the critical point at once.
    picture.log_p = p > 0.0 && (p > 6.0 * picture.pcr || p < 0.1 * picture.pcr);
    picture.p_high = (picture.log_p ? 6.0 : 1.8) * std::max(p, picture.pcr);
    picture.p_low = picture.log_p ? 0.25 * std::min(p, picture.pcr) : 0.0;
    picture.coexistence = coexistence_curve(fluid, std::max(picture.p_low, 0.001 * picture.pcr), vFactor);
    const double high = 10.0 * largest;
    double low = critical.v_of(picture.p_high, high);
    picture.critical_isotherm = sampled(critical, low, high, CurvePointCount, vFactor);
    if (T > TinyT) {
        const Isotherm curve(fluid, T);
        const std::vector<double> extremes = curve.extremes();
        const double start = curve.v_of(picture.p_high, extremes.empty() ? high : extremes[0]);
        picture.isotherm = stable_isotherm(fluid, curve, T, start, high, extremes, vFactor);
        low = std::min(low, start);
    }
    picture.v_low = 0.8 * low * vFactor;
    picture.v_high = high * vFactor;
    picture.available = true;
    return picture;
}

}  // namespace quom

#include "calc/isotherm_points.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "calc/quantities.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr int CurvePointCount = 400;
constexpr int CoexistenceCount = 80;
constexpr double LowestCoexistence = 0.3;  // T/T(cr)

// The scratch of the engine as it was, whatever a picture evaluates.
class KeptScratch {
 public:
    explicit KeptScratch(Session& s) : s_(s), kept_(s.scratch) {}
    ~KeptScratch() { s_.scratch = kept_; }
    KeptScratch(const KeptScratch&) = delete;
    KeptScratch& operator=(const KeptScratch&) = delete;

 private:
    Session& s_;
    Scratch kept_;
};

// The isotherm of one T in molar volumes.
//
//     p = R T/(v - b) - a/((v + c)(v + d)),   dp/dv = -R T/(v - b)^2 + a (2 v + c + d)/((v + c)(v + d))^2
class Isotherm {
 public:
    Isotherm(Session& s, double T) : T_(T) {
        EOSParT(s, T);
        a_ = s.scratch.aT, b_ = s.scratch.bT, c_ = s.scratch.cT, d_ = s.scratch.dT;
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
std::vector<IsothermStretch> stable_isotherm(Session& s, const Isotherm& curve, double T, double low,
                                             double high, const std::vector<double>& extremes) {
    const double vFactor = s.units.vFactor;
    const Saturation at = extremes.empty() ? Saturation{.err = -1} : pLV_EOS(s, T);
    if (at.err) return {{Stretch::one_phase, sampled(curve, low, high, CurvePointCount, vFactor)}};
    const double vL = s.scratch.VRoot[0], vV = s.scratch.VRoot[2];
    std::vector<VpPoint> points;
    if (vL > low) points = sampled(curve, low, vL, CurvePointCount / 2, vFactor);
    points.push_back({vL * vFactor, at.value});
    points.push_back({vV * vFactor, at.value});
    if (high > vV) {
        const std::vector<VpPoint> vapor = sampled(curve, vV, high, CurvePointCount / 2, vFactor);
        points.insert(points.end(), vapor.begin(), vapor.end());
    }
    return {{Stretch::one_phase, points}};
}

// What both pictures say alike. False: no picture.
bool begin_picture(const Session& s, IsothermPicture& picture) {
    if (!is_cubic(s.models.EOSKode) || !(s.substance.Tcr > TinyT) || !(s.substance.pcr > TinyT)) return false;
    picture.eos = trim(eos_name(s.models.EOSKode));
    picture.v_unit = VolumeName(s);
    picture.Tcr = s.substance.Tcr;
    picture.pcr = s.substance.pcr;
    picture.vcr = s.eos.vcrEOS * s.units.vFactor;
    return true;
}

// L and V side from the critical point down to p_low [kPa].
std::vector<VpPoint> coexistence_curve(Session& s, double p_low) {
    std::vector<VpPoint> liquid, vapor;
    liquid.push_back({s.eos.vcrEOS * s.units.vFactor, s.substance.pcr});
    for (int i = 1; i <= CoexistenceCount; ++i) {
        // Dense at the critical point, where the curve is round.
        const double x = static_cast<double>(i) / CoexistenceCount;
        const double T = s.substance.Tcr * (1.0 - (1.0 - LowestCoexistence) * x * x * x);
        const Saturation at = pLV_EOS(s, T);
        if (at.err) continue;
        liquid.push_back({s.scratch.VRoot[0] * s.units.vFactor, at.value});
        vapor.push_back({s.scratch.VRoot[2] * s.units.vFactor, at.value});
        if (at.value < p_low) break;
    }
    std::reverse(liquid.begin(), liquid.end());
    liquid.insert(liquid.end(), vapor.begin(), vapor.end());
    return liquid;
}

int region_of(double T, double p, double Tcr, double pcr) {
    const auto Ts = static_cast<float>(T), ps = static_cast<float>(p);
    const auto Tc = static_cast<float>(Tcr), pc = static_cast<float>(pcr);
    if (Ts == Tc && ps == pc) return 4;
    if (ps > pc) return Ts > Tc ? 2 : 1;
    return Ts > Tc ? 3 : 0;
}

}  // namespace

std::string_view stretch_name(Stretch kind) {
    constexpr std::string_view names[] = {"isotherm", "stable L",     "metastable L",
                                          "unstable", "metastable V", "stable V"};
    return names[static_cast<std::size_t>(kind)];
}

IsothermPicture diagnosis_picture(Session& s) {
    IsothermPicture picture;
    const KeptScratch kept(s);
    const EosDiagnosis diagnosis = diagnose_eos(s);
    if (!diagnosis.available || !begin_picture(s, picture)) return picture;
    picture.T = static_cast<double>(diagnosis.T);
    picture.p = diagnosis.p;
    double vL = 0.0, vV = 0.0;
    if (diagnosis.below_critical) {
        const Saturation at = pLV_EOS(s, picture.T);
        if (at.err == 0) picture.pLV = at.value, vL = s.scratch.VRoot[0], vV = s.scratch.VRoot[2];
    }
    const Isotherm curve(s, picture.T);
    if (!curve.good()) return picture;
    const double vFactor = s.units.vFactor;
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

IsothermPicture region_picture(Session& s, double T, double p) {
    IsothermPicture picture;
    const KeptScratch kept(s);
    if (!begin_picture(s, picture)) return picture;
    picture.T = T;
    picture.p = p;
    picture.region = region_of(T, p, picture.Tcr, picture.pcr);
    const double vFactor = s.units.vFactor;
    const Isotherm critical(s, picture.Tcr);
    if (!critical.good()) return picture;

    double largest = std::max(s.eos.vcrEOS, 3.0 * critical.pole());
    if (T > TinyT && p > TinyT) {
        const VolumeResult state = VolumeTp(s, T, p);
        const double v = state.vV > 0.0 ? state.vV : state.vL;
        if (state.err == 0 && v > 0.0) {
            picture.marks.push_back({{v * vFactor, p}, {}, RootMeaning::stable_V});
            largest = std::max(largest, v);
        }
    }
    // Far from p(cr) only a logarithmic axis shows the state and the critical point at once.
    picture.log_p = p > 0.0 && (p > 6.0 * picture.pcr || p < 0.1 * picture.pcr);
    picture.p_high = (picture.log_p ? 6.0 : 1.8) * std::max(p, picture.pcr);
    picture.p_low = picture.log_p ? 0.25 * std::min(p, picture.pcr) : 0.0;
    picture.coexistence = coexistence_curve(s, std::max(picture.p_low, 0.001 * picture.pcr));
    const double high = 10.0 * largest;
    double low = critical.v_of(picture.p_high, high);
    picture.critical_isotherm = sampled(critical, low, high, CurvePointCount, vFactor);
    if (T > TinyT) {
        const Isotherm curve(s, T);
        const std::vector<double> extremes = curve.extremes();
        const double start = curve.v_of(picture.p_high, extremes.empty() ? high : extremes[0]);
        picture.isotherm = stable_isotherm(s, curve, T, start, high, extremes);
        low = std::min(low, start);
    }
    picture.v_low = 0.8 * low * vFactor;
    picture.v_high = high * vFactor;
    picture.available = true;
    return picture;
}

}  // namespace quom

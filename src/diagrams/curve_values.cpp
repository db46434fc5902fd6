#include "diagrams/curve_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <span>

#include "diagrams/curve_run.h"
#include "diagrams/database_kinds.h"
#include "diagrams/inversion.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

using F = CurveFamily;
using Q = AxisQuantity;
using P = CurvePart;
using Values = std::vector<CurveValue>;

constexpr double LowestP = 1e-6;       // [kPa]; saturation below it is not drawn
constexpr double ReplacementP = 0.01;  // [kPa], for a p below 0 over v
constexpr double Margin = 1.04;        // of v over b, of functions over v

struct Point {
    double x = 0, y = 0;  // displayed units
};

// A stretch of a curve along its own parameter, T [K] or p [kPa], of one phase.
struct Stretch {
    double from = 0, to = 0;
    CurvePart part = P::curve;
    std::function<std::optional<Point>(double)> point;
};

// Where x passes X between two parameters, by the Illinois form of the false position; the sign of x - X
// differs at both.
double crossing(const Stretch& stretch, double X, double a, double b, double xa, double xb) {
    constexpr int MostRounds = 200;
    double fa = xa - X, fb = xb - X;
    for (int i = 0; i < MostRounds && std::fabs(b - a) > 4e-16 * std::fabs(b); ++i) {
        double t = i % 8 == 7 ? 0.5 * (a + b) : b - fb * (b - a) / (fb - fa);
        if (!(t > std::min(a, b) && t < std::max(a, b))) t = 0.5 * (a + b);
        const std::optional<Point> at = stretch.point(t);
        if (!at) break;
        const double f = at->x - X, moved = std::fabs(t - b);
        if ((f < 0.0) == (fb < 0.0)) {
            fa *= 0.5;
        } else {
            a = b;
            fa = fb;
        }
        b = t;
        fb = f;
        if (f == 0.0 || moved <= 4e-16 * std::fabs(t)) break;
    }
    return b;
}

// The places of a stretch in equal steps; x between two of them is taken as monotone.
struct Nodes {
    Stretch stretch;
    std::vector<double> t;
    std::vector<std::optional<Point>> at;
};

Nodes nodes_of(Stretch stretch) {
    constexpr int Cells = 500;
    Nodes nodes;
    for (int i = 0; i <= Cells; ++i) {
        const double t = i == Cells ? stretch.to : stretch.from + i * (stretch.to - stretch.from) / Cells;
        nodes.t.push_back(t);
        nodes.at.push_back(stretch.point(t));
    }
    nodes.stretch = std::move(stretch);
    return nodes;
}

void values_between(const Nodes& nodes, double X, Values& values) {
    for (std::size_t i = 0; i + 1 < nodes.t.size(); ++i) {
        const auto &a = nodes.at[i], &b = nodes.at[i + 1];
        if (!a || !b || (a->x < X) == (b->x < X)) continue;
        const std::optional<Point> at =
            nodes.stretch.point(crossing(nodes.stretch, X, nodes.t[i], nodes.t[i + 1], a->x, b->x));
        if (at) values.push_back({nodes.stretch.part, b->x < a->x, at->y});
    }
}

}  // namespace

class CurveValues::Rule {
 public:
    Rule(std::shared_ptr<const Fluid> fluid, const CurveInput& input)
        : fluid_(std::move(fluid)), input_(input), run_(*fluid_, input_), family_(run_.kind.family) {
        saturated_.reason = Reason::no_solution;
        const Section section = run_.kind.section;
        if (section == Section::isothermal && input_.T > 0.0) saturated_ = pLV_EOS(*fluid_, input_.T);
        if (section == Section::isobaric && input_.p > 0.0 && input_.p < run_.pcr)
            saturated_ = TLV_EOS(*fluid_, input_.p);
        for (Stretch& stretch : stretches()) nodes_.push_back(nodes_of(std::move(stretch)));
    }

    Values at(double x) const {
        Values values;
        if (!std::isfinite(x)) return values;
        if (!nodes_.empty()) {
            for (const Nodes& nodes : nodes_) values_between(nodes, x, values);
        } else if (const auto row = std::ranges::find(rules(), family_, &Row::family); row != rules().end()) {
            (this->*row->values)(x, values);
        }
        std::erase_if(values, [](const CurveValue& value) { return !std::isfinite(value.y); });
        return values;
    }

 private:
    struct Row {
        F family;
        void (Rule::*values)(double x, Values& values) const;
    };
    static std::span<const Row> rules();

    double T_of(double x) const { return x / run_.f.TFactor; }
    double v_of(double x) const {
        if (run_.kind.x == Q::rho) return x > 0.0 ? run_.M / x : 0.0;
        return x / run_.f.vFactor;
    }
    bool below_triple(double T) const { return input_.options.chkCurveTpRestricted && T < triple(); }
    double triple() const { return static_cast<double>(fluid_->substance.Ttr); }
    double shown(double T, double p, double v, Q q) const { return quantity_of_phase(run_, T, p, v, q); }
    bool cubic() const { return !fluid_->VPhaseOnly; }

    // The phase at T, p whose volume is the liquid or the vapor root.
    CurvePart part_at(double T, double p, bool liquid) const {
        if (!(T < run_.Tcr)) return P::any;
        if (!cubic()) return P::vapor;
        return liquid || !(p < run_.pcr) ? P::liquid : P::vapor;
    }

    // The stable state at T [K], p [kPa].
    struct Stable {
        double v = 0;
        CurvePart part = P::any;
    };
    std::optional<Stable> stable(double T, double p) const {
        if (!(p > 0.0) || !(T > 0.0)) return std::nullopt;
        const VolumeResult at = VolumeTp(*fluid_, T, p);
        if (at.reason != Reason::none || !(at.LFlag || at.VFlag)) return std::nullopt;
        bool liquid = at.LFlag;
        if (at.LFlag && at.VFlag) {  // near saturation both pass
            const bool isobar = run_.kind.section == Section::isobaric;
            liquid = saturated_.found() && (isobar ? T < saturated_.T : p > saturated_.p);
        }
        return Stable{liquid ? at.vL : at.vV, part_at(T, p, liquid)};
    }

    // Sections
    void isotherm_v(double x, Values& values) const;
    void isotherm_p(double x, Values& values) const;
    void isotherm_functions_v(double x, Values& values) const;
    void isobar_volume(double x, Values& values) const;
    void isobar_T(double x, Values& values) const;
    void isochore_p(double x, Values& values) const;
    void isochore_functions(double x, Values& values) const;
    // Of one variable
    void vapor_pressure(double x, Values& values) const;
    void vaporization(double x, Values& values) const;
    void inversion(double x, Values& values) const;
    void database(double x, Values& values) const;
    // Saturated states
    void dome_over_p(double x, Values& values) const;
    void densities(double x, Values& values) const;
    void bisector(double x, Values& values) const;
    void boundary_over_p(double x, Values& values) const;
    void boundary_over_T(double x, Values& values) const;

    CurvePart side() const {
        if (input_.VaporFraction == 0.0) return P::liquid;
        return input_.VaporFraction == 1.0 ? P::vapor : P::two_phase;
    }
    std::optional<Saturation> saturated(double T) const {
        if (!run_.knows_saturation() || !(T > TinyT) || T > run_.Tcr || below_triple(T)) return std::nullopt;
        Saturation at = pLV_EOS(*fluid_, T);
        if (!at.found() || at.p < LowestP) return std::nullopt;
        return at;
    }
    double saturated_function(double T, Q q) const;
    double saturated_coordinate(const Saturation& at, Q q) const;
    std::vector<Stretch> stretches() const;
    std::vector<Stretch> saturation_stretches() const;
    std::vector<Stretch> section_stretches() const;
    std::vector<Stretch> inversion_stretches() const;

    std::shared_ptr<const Fluid> fluid_;
    CurveInput input_;
    CurveRun run_;
    CurveFamily family_;
    Saturation saturated_;      // of an isotherm or an isobar
    std::vector<Nodes> nodes_;  // of a curve that is found along its parameter
};

std::span<const CurveValues::Rule::Row> CurveValues::Rule::rules() {
    static constexpr Row table[] = {
        {F::isotherm_v, &Rule::isotherm_v},
        {F::isotherm_p, &Rule::isotherm_p},
        {F::isotherm_functions_p, &Rule::isotherm_p},
        {F::isotherm_residual, &Rule::isotherm_p},
        {F::isotherm_functions_v, &Rule::isotherm_functions_v},
        {F::isobar_volume, &Rule::isobar_volume},
        {F::isobar_functions, &Rule::isobar_T},
        {F::isobar_cp, &Rule::isobar_T},
        {F::isobar_residual, &Rule::isobar_T},
        {F::joule_thomson, &Rule::isobar_T},
        {F::isochore_p, &Rule::isochore_p},
        {F::isochore_functions, &Rule::isochore_functions},
        {F::vapor_pressure, &Rule::vapor_pressure},
        {F::vaporization, &Rule::vaporization},
        {F::dome_p, &Rule::dome_over_p},
        {F::densities_T, &Rule::densities},
        {F::bisector, &Rule::bisector},
        {F::boundary_p, &Rule::boundary_over_p},
        {F::boundary_T, &Rule::boundary_over_T},
        {F::inversion_T, &Rule::inversion},
        {F::database, &Rule::database},
    };
    return table;
}

// p over v; between the phases p(LV), unless the loop is drawn there.
void CurveValues::Rule::isotherm_v(double x, Values& values) const {
    const double T = input_.T, v = v_of(x);
    if (below_triple(T)) return;
    const bool two_phases = T < run_.Tcr && cubic();
    if (two_phases && !saturated_.found()) return;
    if (two_phases && v > saturated_.vL && v < saturated_.vV) {
        if (!input_.options.chkSKurveOhneKonnode)
            values.push_back({P::two_phase, false, saturated_.p * run_.f.pFactor});
        return;
    }
    const PressureResult at = pTv(*fluid_, T, v);
    const bool liquid = two_phases && v <= saturated_.vL;
    if (at.reason == Reason::none) values.push_back({part_at(T, 0.0, liquid), false, at.p * run_.f.pFactor});
}

void CurveValues::Rule::isotherm_p(double x, Values& values) const {
    const double T = input_.T, p = x / run_.f.pFactor;
    if (below_triple(T)) return;
    if (run_.pLimit > 0.0 && T < run_.Tcr && p > run_.pLimit) return;
    if (const auto at = stable(T, p)) values.push_back({at->part, false, shown(T, p, at->v, run_.kind.y)});
}

void CurveValues::Rule::isotherm_functions_v(double x, Values& values) const {
    const double T = input_.T, v = v_of(x);
    if (below_triple(T) || !fluid_->has_eos()) return;
    const bool two_phases = T < run_.Tcr && cubic();
    if (two_phases && (!saturated_.found() || (v > saturated_.vL && v < saturated_.vV))) return;
    if (!(v > std::max({0.0, Margin * EOSParT(*fluid_, T).b, fluid_->eos.EOSb}))) return;
    const PressureResult at = pTv(*fluid_, T, v);
    if (at.reason != Reason::none) return;
    const double p = at.p > 0.0 ? at.p : ReplacementP;
    const bool liquid = two_phases && v <= saturated_.vL;
    values.push_back({part_at(T, 0.0, liquid), false, shown(T, p, v, run_.kind.y)});
}

// T over v or rho; between the phases T(LV).
void CurveValues::Rule::isobar_volume(double x, Values& values) const {
    const double p = input_.p, v = v_of(x);
    if (!(v > 0.0) || !(p > 0.0)) return;
    const bool two_phases = saturated_.found();
    const bool between = two_phases && v > saturated_.vL && v < saturated_.vV;
    const double T = between ? saturated_.T : TpV(*fluid_, p, run_.M / v, true).T;
    if (!(T > 0.0) || below_triple(T)) return;
    CurvePart part = P::any;
    if (two_phases) part = between ? P::two_phase : v <= saturated_.vL ? P::liquid : P::vapor;
    if (!two_phases) part = part_at(T, p, false);
    values.push_back({part, false, T * run_.f.TFactor});
}

void CurveValues::Rule::isobar_T(double x, Values& values) const {
    const double p = input_.p, T = T_of(x);
    if (below_triple(T)) return;
    const bool is_cut = family_ != F::joule_thomson && run_.TLimit > 0.0 && p < run_.pcr;
    if (is_cut && T < run_.TLimit) return;
    if (const auto at = stable(T, p)) values.push_back({at->part, false, shown(T, p, at->v, run_.kind.y)});
}

// p over T, p(LV) inside the phase boundary.
void CurveValues::Rule::isochore_p(double x, Values& values) const {
    const double v = input_.v, T = T_of(x);
    if (!(T > TinyT) || below_triple(T)) return;
    const Saturation boundary = pLV_EOS(*fluid_, T);
    const bool critical = std::fabs(v - run_.vcr) < std::fabs(run_.vcr / 1000.0) && !(T > run_.Tcr);
    if (boundary.reason == Reason::p_too_low) return;
    const bool between = boundary.found() && (critical || (v >= boundary.vL && v <= boundary.vV));
    if (between) {
        if (boundary.p > LowestP) values.push_back({P::two_phase, false, boundary.p * run_.f.pFactor});
        return;
    }
    const PressureResult at = pTv(*fluid_, T, v);
    if (at.reason == Reason::none && at.p > LowestP)
        values.push_back({part_at(T, 0.0, v < run_.vcr), false, at.p * run_.f.pFactor});
}

void CurveValues::Rule::isochore_functions(double x, Values& values) const {
    const double v = input_.v, T = T_of(x);
    if (!(T > TinyT) || below_triple(T)) return;
    if (cubic() && T < run_.Tcr) {
        const Saturation boundary = pLV_EOS(*fluid_, T);
        if (!boundary.found() || (v >= boundary.vL && v <= boundary.vV)) return;
    }
    const PressureResult at = pTv(*fluid_, T, v);
    if (at.reason != Reason::none || !(at.p > 0.0)) return;
    const double y = function_value(*fluid_, ThermoState(*fluid_, T, at.p, v), run_.kind.y);
    values.push_back({part_at(T, 0.0, v < run_.vcr), false, y * run_.uFactor_at(T)});
}

void CurveValues::Rule::vapor_pressure(double x, Values& values) const {
    const bool inverse = run_.kind.x == Q::inverse_T;
    double T = inverse ? 1.0 / (x * run_.f.TFactor) : T_of(x);
    if (T > run_.Tcr && T < run_.Tcr * (1.0 + 1e-12)) T = run_.Tcr;
    if (!(T > TinyT) || T > run_.Tcr || below_triple(T)) return;
    if (const auto y = vapor_pressure_value(run_, T)) values.push_back({P::curve, false, *y});
}

void CurveValues::Rule::vaporization(double x, Values& values) const {
    const double T = T_of(x);
    const ModelSelection& models = fluid_->models;
    if (!(T > TinyT) || below_triple(T)) return;
    const HlvResult at =
        hLV(*fluid_, {.model = models.HLVKode, .T = T, .EVP = models.EVPKode, .benson = input_.benson});
    if (at.err() == 0) values.push_back({P::curve, false, at.value * run_.uFactor_at(T)});
}

void CurveValues::Rule::inversion(double x, Values& values) const {
    const double T = T_of(x);
    if (!run_.knows_saturation() || !(T > TinyT) || below_triple(T)) return;
    const InversionPoint at = InversionP(*fluid_, T);
    if (!at.found() || !(at.p > 0.0)) return;
    if (T < run_.Tcr) {
        const Saturation boundary = pLV_EOS(*fluid_, T);
        if (!boundary.found() || at.p < boundary.p) return;
    }
    values.push_back({P::curve, false, at.p * run_.f.pFactor});
}

void CurveValues::Rule::database(double x, Values& values) const {
    const double T = T_of(x);
    const DatabaseValue found = database_value(*fluid_, database_function(run_.kind.kind), T);
    if (!found.found()) return;
    UnitFactors factors = run_.f;
    factors.uFactor = run_.uFactor_at(T);
    values.push_back({P::curve, false, database_displayed(run_.kind.kind, run_.M, factors, found.value)});
}

// A coordinate of the saturated states by the vapor fraction; v and rho of the mixed volume.
double CurveValues::Rule::saturated_coordinate(const Saturation& at, Q q) const {
    const double v = run_.between(at.vL, at.vV);
    switch (q) {
        case Q::T:
            return at.T * run_.f.TFactor;
        case Q::p:
            return at.p * run_.f.pFactor;
        case Q::v:
            return v * run_.f.vFactor;
        case Q::rho:
            return run_.M / v;
        case Q::pv:
            return at.p * run_.f.pFactor * v * run_.f.vFactor;
        default:
            return saturated_function(at.T, q);
    }
}

// In displayed units. cp and cV outside of 0 to 5000 kJ/(kmol K) are none.
double CurveValues::Rule::saturated_function(double T, Q q) const {
    constexpr double Largest = 5000.0;
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    SaturationColumns columns;
    saturation_at(*fluid_, std::array{T}, columns);
    if (!(columns.p[0] >= LowestP)) return none;
    const double L = function_value(*fluid_, columns.L, 0, q), V = function_value(*fluid_, columns.V, 0, q);
    const auto possible = [](double c) { return c >= 0.0 && c <= Largest; };
    if ((q == Q::cp || q == Q::cV) && !(possible(L) && possible(V))) return none;
    return run_.between(L, V) * run_.uFactor_at(T);
}

void CurveValues::Rule::dome_over_p(double x, Values& values) const {
    if (!run_.knows_saturation()) return;
    const Saturation at = TLV_EOS(*fluid_, x / run_.f.pFactor);
    if (at.found() && !below_triple(at.T))
        values.push_back({side(), false, saturated_coordinate(at, run_.kind.y)});
}

void CurveValues::Rule::densities(double x, Values& values) const {
    const auto at = saturated(T_of(x));
    if (!at) return;
    values.push_back({P::liquid, false, run_.M / at->vL});
    values.push_back({P::vapor, false, run_.M / at->vV});
}

void CurveValues::Rule::bisector(double x, Values& values) const {
    if (const auto at = saturated(T_of(x)))
        values.push_back({P::curve, false, 0.5 * (run_.M / at->vL + run_.M / at->vV)});
}

// cp of a saturated phase rises towards the critical point; where it falls there, it is not drawn.
void CurveValues::Rule::boundary_over_T(double x, Values& values) const {
    constexpr double NearCritical = 0.9;
    const auto at = saturated(T_of(x));
    if (!at) return;
    const double y = saturated_function(at->T, run_.kind.y);
    if (run_.kind.y == Q::cp && at->T > NearCritical * run_.Tcr &&
        y < saturated_function(T_of(x - run_.dx), Q::cp))
        return;
    values.push_back({side(), false, y});
}

void CurveValues::Rule::boundary_over_p(double x, Values& values) const {
    if (!run_.knows_saturation()) return;
    const Saturation at = TLV_EOS(*fluid_, x / run_.f.pFactor);
    if (!at.found() || below_triple(at.T)) return;
    const double y = saturated_function(at.T, run_.kind.y);
    if (run_.kind.y == Q::cp && at.T > 0.9 * run_.Tcr) {
        const Saturation before = TLV_EOS(*fluid_, (x - run_.dx) / run_.f.pFactor);
        if (before.found() && y < saturated_function(before.T, Q::cp)) return;
    }
    values.push_back({side(), false, y});
}

std::vector<Stretch> CurveValues::Rule::stretches() const {
    switch (family_) {
        case F::dome_p_v:
        case F::dome_T:
        case F::boundary_v:
        case F::boundary_pairs:
            return saturation_stretches();
        case F::isotherm_pairs:
        case F::isobar_pairs:
            return section_stretches();
        case F::inversion_p:
            return inversion_stretches();
        default:
            return {};
    }
}

// Along T up to the critical point; the boundary of two functions by the concept along p.
std::vector<Stretch> CurveValues::Rule::saturation_stretches() const {
    constexpr double Coldest = 0.2;  // T/T(cr) that no saturation above the lowest p lies below
    if (!run_.knows_saturation()) return {};
    const double low = std::max(Coldest * run_.Tcr, input_.options.chkCurveTpRestricted ? triple() : 0.0);
    const Q x = run_.kind.x, y = run_.kind.y;
    if (family_ == F::boundary_pairs && !fluid_->models.Konzept) {
        const auto by_evp = [this, x, y](double p) -> std::optional<Point> {
            const EvpResult at = TLV_EVP(fluid_->substance, p, fluid_->models.EVPKode);
            const auto sat = at.err() == 0 ? saturated(at.value) : std::nullopt;
            if (!sat) return std::nullopt;
            return Point{saturated_function(sat->T, x), saturated_function(sat->T, y)};
        };
        return {{0.05, run_.pcr * (1.0 - 1e-9), side(), by_evp}};
    }
    const auto at_T = [this, x, y](double T) -> std::optional<Point> {
        const auto sat = saturated(T);
        if (!sat) return std::nullopt;
        return Point{saturated_coordinate(*sat, x), saturated_coordinate(*sat, y)};
    };
    return {{low, run_.Tcr, side(), at_T}};
}

// One function over another along an isotherm or an isobar, parted at saturation.
std::vector<Stretch> CurveValues::Rule::section_stretches() const {
    const bool isobar = family_ == F::isobar_pairs;
    const auto [from, to] = std::minmax(input_.process.From, input_.process.To);
    if (!(from < to) || (!isobar && below_triple(input_.T))) return {};
    const auto point = [this, isobar](double t) -> std::optional<Point> {
        const double T = isobar ? t : input_.T, p = isobar ? input_.p : t;
        if (below_triple(T)) return std::nullopt;
        const auto at = stable(T, p);
        if (!at) return std::nullopt;
        return Point{shown(T, p, at->v, run_.kind.x), shown(T, p, at->v, run_.kind.y)};
    };
    const double boundary = isobar ? saturated_.T : saturated_.p;
    const CurvePart whole =
        isobar ? (input_.p < run_.pcr ? P::vapor : P::any) : part_at(input_.T, 0.0, false);
    if (!saturated_.found()) return {{from, to, whole, point}};
    constexpr double beside = 1e-12;
    const CurvePart below = isobar ? P::liquid : P::vapor, above = isobar ? P::vapor : P::liquid;
    std::vector<Stretch> parts;
    if (from < boundary) parts.push_back({from, std::min(to, boundary * (1.0 - beside)), below, point});
    if (to > boundary) parts.push_back({std::max(from, boundary * (1.0 + beside)), to, above, point});
    return parts;
}

// pv over p, from the boiling liquid to the thin gas.
std::vector<Stretch> CurveValues::Rule::inversion_stretches() const {
    const InversionDome dome = run_.knows_saturation() ? inversion_dome(*fluid_) : InversionDome{};
    if (!dome.found()) return {};
    const auto point = [this](double T) -> std::optional<Point> {
        const InversionPoint at = InversionP(*fluid_, T);
        if (!at.found() || !(at.p > 0.0) || below_triple(T)) return std::nullopt;
        const double p = at.p * run_.f.pFactor;
        return Point{p, p * at.v * run_.f.vFactor};
    };
    return {{dome.boiling.T, dome.Thighest, P::curve, point}};
}

std::string_view part_name(CurvePart part) {
    switch (part) {
        case P::liquid:
            return "liquid";
        case P::vapor:
            return "vapor";
        case P::two_phase:
            return "two-phase";
        default:
            return "";
    }
}

bool same_branch(const CurveValue& a, const CurveValue& b) {
    if (a.returning != b.returning) return false;
    const auto one_phase = [](CurvePart part) { return part == P::liquid || part == P::vapor; };
    return a.part == b.part || (a.part == P::any && one_phase(b.part)) ||
           (b.part == P::any && one_phase(a.part));
}

CurveValues::CurveValues(std::shared_ptr<const Fluid> fluid, const CurveInput& input)
    : rule_(std::make_unique<Rule>(std::move(fluid), input)) {}
CurveValues::~CurveValues() = default;
CurveValues::CurveValues(CurveValues&&) noexcept = default;
CurveValues& CurveValues::operator=(CurveValues&&) noexcept = default;

std::vector<CurveValue> CurveValues::at(double x) const { return rule_->at(x); }

}  // namespace quom

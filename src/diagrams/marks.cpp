#include "diagrams/marks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "diagrams/graph_view.h"
#include "engine/eos_parameters.h"
#include "engine/unit_factors.h"
#include "engine/vapor_pressure.h"

namespace quom {
namespace {

using Q = AxisQuantity;

// What the marks share.
struct MarkRun {
    MarkRun(GraphDocument& document, const Fluid& of, const Units& units)
        : sheet(document), fluid(of), kind(kind_info(document.diagram.kind)), f(unit_factors(of, units)) {}
    GraphDocument& sheet;
    const Fluid& fluid;
    const KindInfo& kind;
    UnitFactors f;
    Color color() const { return next_curve_color(sheet); }
};

float single(double x) { return static_cast<float>(x); }

// low + (high - low)/6
float sixth(float low, float high) { return low + (high - low) / 6.0F; }

// A line across the range in force, at a value of the axis of a quantity; none for a value that is not above
// 0, or where no axis shows the quantity.
void set_line(MarkRun& run, int number, Q quantity, double value, std::string_view text) {
    Mark& mark = run.sheet.mark(number);
    mark = {};
    const float at = single(value);
    if (!(value > 0.0) || !std::isfinite(at)) return;
    const CurveRange& range = run.sheet.diagram.range;
    if (run.kind.x == quantity) {
        mark.series.points = {{at, range.YMin}, {at, range.YMax}};
        mark.label_at = {at, sixth(range.YMin, range.YMax)};
    } else if (run.kind.y == quantity) {
        mark.series.points = {{range.XMin, at}, {range.XMax, at}};
        mark.label_at = {sixth(range.XMin, range.XMax), at};
    } else {
        return;
    }
    mark.series.label.text = text;
    mark.series.style = mark_line_style(run.color());
    mark.series.in_legend = false;
}

bool shows(const KindInfo& kind, Q quantity) { return kind.x == quantity || kind.y == quantity; }

// T [K] at the axis of T, or of 1/T.
void set_T_line(MarkRun& run, int number, double T, std::string_view text) {
    const double value = T * run.f.TFactor;
    if (shows(run.kind, Q::inverse_T))
        set_line(run, number, Q::inverse_T, value > 0.0 ? 1.0 / value : 0.0, text);
    else
        set_line(run, number, Q::T, value, text);
}

// v [m^3/kmol] at the axis of v, or of rho.
void set_v_line(MarkRun& run, int number, double v, std::string_view text) {
    if (shows(run.kind, Q::rho))
        set_line(run, number, Q::rho, v > 0.0 ? run.fluid.M / v : 0.0, text);
    else
        set_line(run, number, Q::v, v * run.f.vFactor, text);
}

constexpr auto b_line_kinds =
    std::to_array<Kind>({Kind::p_v, Kind::T_v, Kind::sat_p_v, Kind::sat_T_v, Kind::a_v, Kind::u_v, Kind::s_v,
                         Kind::T_rho, Kind::sat_rho_T});

// A critical point as coordinates; 0 where it is not known.
struct CriticalPoint {
    double T = 0, p = 0, v = 0, rho = 0;
};

// NaN: the axis shows something else.
double coordinate(const CriticalPoint& at, const UnitFactors& f, Q quantity) {
    switch (quantity) {
        case Q::T:
            return at.T * f.TFactor;
        case Q::p:
            return at.p * f.pFactor;
        case Q::v:
            return at.v * f.vFactor;
        case Q::rho:
            return at.rho;
        case Q::pv:
            return at.p * f.pFactor * at.v * f.vFactor;
        default:
            return std::nan("");
    }
}

// Why an overlay is refused: for an equation of the V-phase only, and outside the two-phase region.
struct OverlayTexts {
    Overlay overlay;
    std::string_view vapor_only, T, p, v;
};
constexpr std::string_view below_T = "only possible in two-phase area V-L (T < T(cr))";
constexpr std::string_view below_p = "only possible in two-phase area V-L (p < p(cr))";
constexpr std::string_view beside_v = "only possible in the two-phase area V-L (v <> v(cr)) ";
constexpr auto overlay_texts = std::to_array<OverlayTexts>({
    {Overlay::coexistence, "V-L coex. curve only possible for cubic EOS", "", "", ""},
    {Overlay::isohygric, "Isohygrics - possible only using cubic EOS", "", "", ""},
    {Overlay::inversion, "Inversion curve only possible with cubic EOS", "", "", ""},
    {Overlay::loop, "", below_T, below_p, ""},
    {Overlay::tie_line, "Tie line V-L only possible using a cubic EOS", below_T, below_p, beside_v},
    {Overlay::bisector, "", "", "", ""},
});

// Kinds whose coexistence curve is drawn at once.
constexpr auto drawn_once =
    std::to_array<Kind>({Kind::sat_rho_T, Kind::sat_p_T, Kind::bnd_g_p, Kind::sat_g_T});

// Rounded to two digits; a value that rounding makes smaller counts as it is.
double two_digits(double x) { return std::max(x, std::floor(100.0 * x + 0.5) / 100.0); }

// Whether the parameter of the section lies inside the two-phase region; the text of the refusal when not.
std::string_view outside_two_phases(const Fluid& fluid, const CurveInput& last, const OverlayTexts& texts) {
    const bool loop = texts.overlay == Overlay::loop;
    const double T = loop ? two_digits(last.T) : last.T, p = loop ? two_digits(last.p) : last.p;
    const double v_share = last.v / fluid.eos.vcrEOS;
    switch (kind_info(last.kind).section) {
        case Section::isothermal:
            return T >= fluid.substance.Tcr ? texts.T : "";
        case Section::isobaric:
            return p >= fluid.substance.pcr ? texts.p : "";
        case Section::isochoric:
            return v_share >= 0.999999 && v_share <= 1.000001 ? texts.v : "";
        default:
            return "";
    }
}

// Kind of the inversion curve that a diagram can show.
Kind inversion_kind(const KindInfo& kind) {
    if (kind.x == Q::T && kind.y == Q::p) return Kind::inversion_p_T;
    return kind.x == Q::p && kind.y == Q::pv ? Kind::inversion_pv_p : Kind::none;
}

std::vector<CurveInput> overlay_curves(const CurveInput& last, Overlay overlay) {
    CurveInput input = last;
    input.line = Kind::none;
    input.SCurve = overlay == Overlay::loop;
    input.TieLine = overlay == Overlay::tie_line;
    if (input.SCurve || input.TieLine) return {input};
    const KindInfo& kind = kind_info(last.kind);
    if (overlay == Overlay::inversion)
        input.kind = inversion_kind(kind);
    else
        input.kind = overlay == Overlay::bisector ? Kind::bisector : kind.boundary;
    if (overlay != Overlay::coexistence) return {input};
    input.VaporFraction = 0.0;
    std::vector<CurveInput> curves = {input};
    if (std::ranges::find(drawn_once, input.kind) == drawn_once.end()) {
        input.VaporFraction = 1.0;
        curves.push_back(input);
    }
    return curves;
}

}  // namespace

void mark_T(GraphDocument& sheet, const Fluid& fluid, const Units& units, const CurveOptions& options) {
    MarkRun run(sheet, fluid, units);
    const SubstanceConstants& substance = fluid.substance;
    set_T_line(run, mark_Tcr, substance.Tcr, "T(cr)");
    set_T_line(run, mark_Ttr, static_cast<double>(substance.Ttr), "T(Trip.P.)");
    if (options.chkPartialKurve && run.kind.section == Section::isobaric)
        set_T_line(run, mark_TLV, TLV_EVP(substance, sheet.last.p, fluid.models.EVPKode).value,
                   "                      T(LV) at p");
    else
        set_T_line(run, mark_TLV, static_cast<double>(substance.Tnb),
                   "                      T(LV) at normal pressure");
    sheet.NextColor.reset();
}

void mark_p(GraphDocument& sheet, const Fluid& fluid, const Units& units) {
    MarkRun run(sheet, fluid, units);
    const SubstanceConstants& substance = fluid.substance;
    const double T = sheet.last.T;
    const bool isotherm = run.kind.section == Section::isothermal && T > 0.0 && T < substance.Tcr;
    const double pLV = isotherm ? pLV_EVP(substance, T, fluid.models.EVPKode).value : 0.0;
    set_line(run, mark_pcr, Q::p, substance.pcr * run.f.pFactor, "p(cr)");
    set_line(run, mark_pLV, Q::p, pLV * run.f.pFactor, "p(LV) at T ");
    set_line(run, mark_pSLV, Q::p, static_cast<double>(substance.ptr) * run.f.pFactor, "p(SLV)");
    sheet.NextColor.reset();
}

void mark_v(GraphDocument& sheet, const Fluid& fluid, const Units& units) {
    MarkRun run(sheet, fluid, units);
    set_v_line(run, mark_vcr, fluid.eos.vcrEOS, "v(crit)");
    sheet.NextColor.reset();
}

void mark_b_line(GraphDocument& sheet, const Fluid& fluid, const Units& units) {
    MarkRun run(sheet, fluid, units);
    if (!has_b_line(run.kind.kind)) return;
    const double T = sheet.last.T > 0.0 ? sheet.last.T : fluid.substance.Tcr;
    set_v_line(run, mark_b, EOSParT(fluid, T).b, "v = b");
    sheet.NextColor.reset();
}

void mark_critical_point(GraphDocument& sheet, const Fluid& fluid, const Units& units, bool calculated) {
    MarkRun run(sheet, fluid, units);
    const SubstanceConstants& substance = fluid.substance;
    const CriticalPoint at{.T = substance.Tcr,
                           .p = substance.pcr,
                           .v = calculated ? fluid.eos.vcrEOS : substance.vcrDB,
                           .rho = calculated ? fluid.eos.rhocrEOS : substance.rhocrDB};
    Mark& mark = sheet.mark(calculated ? mark_crit_calculated : mark_crit_measured);
    mark = {};
    const float x = single(coordinate(at, run.f, run.kind.x)), y = single(coordinate(at, run.f, run.kind.y));
    if (!(x > 0.0F) || !(y > 0.0F) || !std::isfinite(x) || !std::isfinite(y)) return;
    mark.series.points = {{x, y}};
    mark.label_at = {x, y};
    mark.series.style = critical_point_style(run.color(), calculated);
    mark.series.in_legend = false;
    sheet.NextColor.reset();
}

void MarkTGrenzen(GraphDocument& sheet, const Fluid& fluid, const Units& units, float TMin, float TMax) {
    MarkRun run(sheet, fluid, units);
    const bool database = run.kind.section == Section::database;
    set_T_line(run, mark_validity_low, database ? static_cast<double>(TMin) : 0.0, "");
    set_T_line(run, mark_validity_high, database ? static_cast<double>(TMax) : 0.0, "");
}

bool has_b_line(Kind kind) { return std::ranges::find(b_line_kinds, kind) != b_line_kinds.end(); }

bool has_critical_mark(Kind kind) {
    const KindInfo& info = kind_info(kind);
    const CriticalPoint any{.T = 1, .p = 1, .v = 1, .rho = 1};
    return std::isfinite(coordinate(any, {}, info.x)) && std::isfinite(coordinate(any, {}, info.y));
}

void delete_marks(GraphDocument& sheet) {
    for (int number = mark_Tcr; number <= mark_vcr; ++number) sheet.mark(number) = {};
}

void hide_mark_labels(GraphDocument& sheet) {
    for (Mark& mark : sheet.marks) mark.series.label.visible = false;
}

void delete_critical_point(GraphDocument& sheet, bool calculated) {
    sheet.mark(calculated ? mark_crit_calculated : mark_crit_measured) = {};
}

bool has_marks(const GraphDocument& sheet) {
    for (int number = mark_Tcr; number <= mark_vcr; ++number)
        if (sheet.mark(number).shown()) return true;
    return false;
}

bool has_critical_point(const GraphDocument& sheet, bool calculated) {
    return sheet.mark(calculated ? mark_crit_calculated : mark_crit_measured).shown();
}

bool has_overlay(Kind number, Overlay overlay) {
    const KindInfo& kind = kind_info(number);
    switch (overlay) {
        case Overlay::coexistence:
        case Overlay::isohygric:
            return kind.boundary != Kind::none;
        case Overlay::inversion:
            return inversion_kind(kind) != Kind::none;
        case Overlay::loop:
            return kind.section == Section::isothermal || kind.section == Section::isobaric;
        case Overlay::tie_line:
            return kind.section == Section::isothermal || kind.section == Section::isobaric ||
                   kind.section == Section::isochoric;
        case Overlay::bisector:
            return number == Kind::sat_rho_T;
    }
    return false;
}

OverlayPlan plan_overlay(const Fluid& fluid, const CurveInput& last, Overlay overlay) {
    const auto* texts = std::ranges::find(overlay_texts, overlay, &OverlayTexts::overlay);
    std::string_view reason = fluid.VPhaseOnly ? texts->vapor_only : "";
    if (reason.empty() && !has_overlay(last.kind, overlay)) return {};
    if (reason.empty()) reason = outside_two_phases(fluid, last, *texts);
    if (!reason.empty())
        return {{},
                Message{.title = "Execution not possible",
                        .text = std::string(reason),
                        .kind = MessageKind::warning}};
    return {overlay_curves(last, overlay), std::nullopt};
}

}  // namespace quom

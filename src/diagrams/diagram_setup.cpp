#include "diagrams/diagram_setup.h"

#include <algorithm>
#include <iterator>

#include "diagrams/axis_texts.h"
#include "diagrams/database_kinds.h"
#include "diagrams/unload_question.h"
#include "engine/unit_factors.h"

namespace quom {
namespace {

using F = CurveFamily;

constexpr double known = 1e-6;  // above it a value was given

Message not_possible(std::string_view text) {
    return {.title = "Execution not possible", .text = std::string(text), .kind = MessageKind::warning};
}

// Rules that a kind can break, in the order in which they are told.

bool of_phase_equilibrium(const KindInfo& k) {
    constexpr F families[] = {F::dome_p_v,   F::dome_p,     F::dome_T,     F::densities_T,   F::bisector,
                              F::boundary_p, F::boundary_T, F::boundary_v, F::boundary_pairs};
    return k.kind == Kind::sat_p_T || std::ranges::find(families, k.family) != std::end(families);
}
bool of_inversion(const KindInfo& k) { return k.section == Section::inversion; }
bool of_slope(const KindInfo& k) { return k.kind == Kind::sat_slope_invT; }
bool of_vapor_pressure(const KindInfo& k) { return k.family == F::vapor_pressure; }
bool of_vaporization(const KindInfo& k) { return k.family == F::vaporization; }
bool of_heat_capacity(const KindInfo& k) { return k.section != Section::database && k.y == AxisQuantity::cp; }
bool of_any(const KindInfo& k) { return k.kind != Kind::none; }
bool of_state_equation(const KindInfo& k) {
    return k.section != Section::database && !of_vapor_pressure(k) && !of_vaporization(k);
}
template <Kind kind>
bool is(const KindInfo& k) {
    return k.kind == kind;
}
bool of_database(const KindInfo& k) { return k.section == Section::database; }

bool vapor_only(const Fluid& fluid, const Units&, Kind) { return fluid.VPhaseOnly; }
bool global(const Fluid& fluid, const Units&, Kind) { return fluid.models.Konzept; }
bool no_cp_form(const Fluid& fluid, const Units&, Kind) { return fluid.models.cpKode == CpForm::none; }
bool no_hlv(const Fluid& fluid, const Units&, Kind) { return fluid.models.HLVKode == Hlv::none; }
bool no_evp(const Fluid& fluid, const Units&, Kind) {
    return !fluid.models.Konzept && fluid.models.EVPKode == Evp::none;
}
bool no_equation(const Fluid& fluid, const Units&, Kind) { return !fluid.has_eos(); }
bool no_critical_volume(const Fluid& fluid, const Units& units, Kind) {
    return units.VolumeMode == reduced_volume && !(fluid.eos.vcrEOS > 0.0);
}
// No value anywhere in the validity.
bool no_function(const Fluid& fluid, const Units&, Kind kind) {
    const DatabaseFunction function = database_function(kind);
    const DatabaseLimits limits = database_limits(fluid, function);
    constexpr int parts = 8;
    for (int i = 0; i <= parts; ++i) {
        const double T = limits.TLo + i * (limits.THi - limits.TLo) / parts;
        if (database_value(fluid, function, T).found()) return false;
    }
    return true;
}

struct Rule {
    bool (*concerns)(const KindInfo&);
    bool (*broken)(const Fluid&, const Units&, Kind);
    std::string_view text;
    bool to_molar_volumes = false;
};
constexpr Rule rules[] = {
    {of_any, no_critical_volume,
     "The selected EOS does not provide V(cr) (critical molar volume).\n"
     "The desired option \"reduced quantities for T, p, v\" is thus not possible.",
     true},
    {of_phase_equilibrium, vapor_only, "Phase equlilibria calculations are only possible using a cubic EOS"},
    {of_inversion, vapor_only, "Inversion curve only possible with cubic EOS"},
    {of_slope, global,
     "only possible for vapor press. equations according to \"Models\"/PARTIAL concept,\n"
     "not for the vapor press. calculation using CEOS (GLOBAL concept)\n"
     "change to PARTIAL concept under \"Models\""},
    {of_heat_capacity, no_cp_form, "No cp(idGas) parameters available"},
    {is<Kind::db_cpId_polynomial>, no_function,
     "no polynomial function cpIdG)= Fu(T) available for this substance."},
    {is<Kind::db_cpId_sinh>, no_function,
     "no sinh/cosh function cpIdG)= Fu(T) available for this substance."},
    {is<Kind::db_cpL>, no_function, "for this substance no function cp(L)=Fu(T)available "},
    {is<Kind::db_cpS>, no_function, "for this substance no function cp(S)=Fu(T) available "},
    {is<Kind::db_rhoL>, no_function, "for this substance no function rho(L)=Fu(T) available "},
    {is<Kind::db_vL>, no_function, "for this substance no function rho(L)=Fu(T) available "},
    {is<Kind::db_rhoS>, no_function, "for this substance no function rho(S)=Fu(T) available "},
    {is<Kind::db_hLV>, no_function, "for this substance no function delta(LV)h=Fu(T) available "},
    {of_database, no_function, "for this substance no such vapor pressure equation available "},
    {of_vapor_pressure, no_evp, "No vapor pressure equation is selected."},
    {of_vaporization, no_hlv, "No model of the enthalpy of vaporization is selected."},
    {of_state_equation, no_equation, "No equation of state is selected, or its constants are missing."},
};

const Rule* broken_rule(const Fluid& fluid, const Units& units, Kind kind) {
    const KindInfo& info = kind_info(kind);
    const Rule* const rule = std::ranges::find_if(
        rules, [&](const Rule& r) { return r.concerns(info) && r.broken(fluid, units, kind); });
    return rule == std::end(rules) ? nullptr : rule;
}

// Name of the equation behind the curves, with what divides it from the heading.
std::string name_block(const Fluid& fluid, Kind kind) {
    const bool evp = kind == Kind::sat_slope_invT || (kind == Kind::sat_lnp_invT && !fluid.models.Konzept);
    std::string name(evp ? evp_info(fluid.models.EVPKode).text : fluid.eos_row().text);
    name.erase(name.find_last_not_of(' ') + 1);
    return ",  " + name;
}

// Upper limits of a substance that is new. Parameters are there already where a project has kept them.
void begin_substance(DiagramState& state, const Fluid& fluid, const Units& units, const KindInfo& info) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    if (info.section != Section::database) {
        const UnitFactors f = unit_factors(fluid, units, Tcr);
        state.ranges[RangePair::T].max = 1.1 * Tcr * f.TFactor;
        state.ranges[RangePair::p].max = 1.5 * pcr * f.pFactor;
    }
    state.new_substance = false;
}

void offer_parameters(DiagramState& state, const Fluid& fluid) {
    constexpr double any_volume = 2.0;  // [m^3/kmol]
    const double vcrEOS = fluid.eos.vcrEOS, vcrDB = fluid.substance.vcrDB;
    if (!(state.T > known)) state.T = fluid.substance.Tcr;
    if (!(state.p > known)) state.p = fluid.substance.pcr;
    if (!(state.v > known)) state.v = vcrEOS > known ? vcrEOS : vcrDB > known ? vcrDB : any_volume;
}

void fill(DiagramRec& rec, const KindInfo& info, const Units& units) {
    const AxisTexts texts = axis_texts(info.kind, units);
    rec.kind = info.kind;
    rec.XTitle = texts.X;
    rec.YTitle = texts.Y;
    rec.title = kind_title(info.kind, units);
    rec.section = info.section;
    rec.AxisCode = rec.AxisCodeShown = info.axis_code;
    rec.initial = rec.range;
    rec.DBTMin = rec.DBTMax = 0.0f;
}

ParameterInput input_of(const KindInfo& info) {
    if (info.axis_code == "hs" || info.axis_code == "hh") return ParameterInput::process_line_form;
    const bool has_parameter = info.section == Section::isothermal || info.section == Section::isobaric ||
                               info.section == Section::isochoric;
    return has_parameter ? ParameterInput::parameter_box : ParameterInput::none;
}

}  // namespace

bool share_sheet(Kind a, Kind b) {
    const std::string_view code = kind_info(a).axis_code;
    return code == kind_info(b).axis_code && (code != "0T" || a == b);
}

std::optional<Message> kind_refusal(const Fluid& fluid, const Units& units, Kind kind) {
    const Rule* const rule = broken_rule(fluid, units, kind);
    return rule ? std::optional(not_possible(rule->text)) : std::nullopt;
}

SetupResult DiagramSetup(const Fluid& fluid, const Units& units, const DiagramState& state, Kind kind,
                         bool KurvenMischen, bool sheet_open) {
    SetupResult result;
    result.state = state;
    const KindInfo& info = kind_info(kind);
    if (info.kind == Kind::none || info.x == AxisQuantity::none || !(fluid.substance.Tcr >= known))
        return result;
    if (const Rule* const rule = broken_rule(fluid, units, kind)) {
        result.refusal = not_possible(rule->text);
        result.to_molar_volumes = rule->to_molar_volumes;
        return result;
    }
    if (sheet_open && KurvenMischen && !share_sheet(kind, state.rec.kind)) {
        result.question = unload_question();
        return result;
    }
    const bool keeps_sheet = sheet_open && (KurvenMischen || kind == state.rec.kind);
    result.unload_sheet = !keeps_sheet;
    DiagramState& next = result.state;
    next.ranges = DiagramDefaults(fluid, units, state.ranges, false);
    if (next.new_substance) begin_substance(next, fluid, units, info);
    offer_parameters(next, fluid);
    next.rec.range = DiagramRanges(next.ranges, kind, fluid, units, next.rec.range);
    next.rec.TitleSuffix = name_block(fluid, kind);
    fill(next.rec, info, units);
    result.open_sheet = true;
    result.database_marks = info.section == Section::database;
    result.input = input_of(info);
    return result;
}

}  // namespace quom

#include "report/outcome_report.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "engine/vapor_pressure.h"

namespace quom {

namespace {

constexpr std::string_view molar_volume = "m^3/kmol";

struct Entry {
    const char* key;
    const char* label;
    const char* unit;
    int index;
};
constexpr Entry deriv_entries[] = {
    {"dpdv_T", "(dp/dv) at T", "kPa kmol/m^3", dpdv_T},   {"dpdT_v", "(dp/dT) at v", "kPa/K", dpdT_v},
    {"dvdp_T", "(dv/dp) at T", "m^3/(kmol kPa)", dvdp_T}, {"dvdT_p", "(dv/dT) at p", "m^3/(kmol K)", dvdT_p},
    {"dTdv_p", "(dT/dv) at p", "K kmol/m^3", dTdv_p},     {"dTdp_v", "(dT/dp) at v", "K/kPa", dTdp_v}};
constexpr Entry coef_entries[] = {{"alpha", "alpha = (dv/dT)_p/v", "1/K", coef_alpha},
                                  {"chi", "chi = -(dv/dp)_T/v", "1/kPa", coef_chi},
                                  {"beta", "beta = (dp/dT)_v/p", "1/K", coef_beta}};
constexpr Entry deriv2_entries[] = {{"d2pdv2", "(d2p/dv2) at T", "kPa kmol^2/m^6", d2pdv2},
                                    {"d2vdT2", "(d2v/dT2) at p", "m^3/(kmol K^2)", d2vdT2},
                                    {"d2Tdv2", "(d2T/dv2) at p", "K kmol^2/m^6", d2Tdv2}};
// cV, cp and w stand in the table of functions.
constexpr Entry func_entries[] = {{"lnphi", "ln phi", "", fu_lnphi},
                                  {"dlnphidT", "(dln phi/dT) at p", "1/K", fu_dlnphidT},
                                  {"d2lnphidT2", "(d2ln phi/dT2) at p", "1/K^2", fu_d2lnphidT2},
                                  {"s_res", "(s - s_idG)/R", "", fu_s_res},
                                  {"h_res", "(h - h_idG)/R", "K", fu_h_res},
                                  {"g_res", "(g - g_idG)/R", "K", fu_g_res},
                                  {"cp_res", "(cp - cp_idG)/R", "", fu_cp_res},
                                  {"delta", "(dT/dp) at h", "K/kPa", fu_dTdp_h}};

// L and V value of what a phase has.
template <class Get>
std::vector<Value> both_phases(const Outcome& outcome, const Get& get) {
    std::vector<Value> values(2);
    if (const PhaseOutcome* L = phase_of(outcome, phase_L)) values[0] = get(*L);
    if (const PhaseOutcome* V = phase_of(outcome, phase_V)) values[1] = get(*V);
    return values;
}

template <std::size_t N, class Get>
Grid array_grid(const char* key, const char* title, const Entry (&entries)[N], const Outcome& outcome,
                const Get& get) {
    Grid grid{key, title, {"L", "V"}, {}};
    for (const Entry& e : entries) {
        grid.rows.push_back({e.key, e.label, e.unit, both_phases(outcome, [&](const PhaseOutcome& phase) {
                                 return phase.arrays ? Value(get(*phase.arrays)[e.index]) : Value();
                             })});
    }
    return grid;
}

// Rows of the table of functions, with the mean of a two-phase state.
struct FunctionRow {
    Quantity quantity;
    std::optional<double> (*mean)(const MixtureOutcome&);
};
using Mixture = const MixtureOutcome&;
using Mean = std::optional<double>;
constexpr FunctionRow function_grid_rows[] = {
    {Quantity::v, [](Mixture m) -> Mean { return m.v; }},
    {Quantity::h, [](Mixture m) -> Mean { return m.h; }},
    {Quantity::u, [](Mixture m) -> Mean { return m.u; }},
    {Quantity::s, [](Mixture m) -> Mean { return m.s; }},
    {Quantity::g, [](Mixture m) -> Mean { return m.g; }},
    {Quantity::a, [](Mixture m) -> Mean { return m.a; }},
    {Quantity::eH, [](Mixture m) -> Mean { return m.eH; }},
    {Quantity::eU, [](Mixture m) -> Mean { return m.eU; }},
    {Quantity::cp, [](Mixture m) -> Mean { return m.cp; }},
    {Quantity::cV, [](Mixture m) -> Mean { return m.cV; }},
    {Quantity::cpId, nullptr},
    {Quantity::w, nullptr},
};

// Keys of the quantities are their symbols, without signs that no name has.
std::string key_of(Quantity q) { return q == Quantity::cpId ? "cpId" : std::string(quantity_info(q).symbol); }

Value scaled(const std::optional<double>& x, double factor) { return x ? Value(*x * factor) : Value(); }

Value region_of(const Fluid& fluid, const Outcome& outcome) {
    const bool told = !fluid.VPhaseOnly && mode_info(outcome.mode).has_region && outcome.has_result();
    return told ? Value(int{outcome.region}) : Value();
}

Value root_of(const Outcome& outcome, std::size_t k) {
    if (!outcome.eos) return {};
    const CubicRoots& roots = outcome.eos->roots;
    return k < static_cast<std::size_t>(roots.nRoots) ? Value(roots.VRoot[k]) : Value();
}

// An equation that an outcome rests on, and the T for which it was fitted.
struct Validity {
    const char* name;
    std::string_view text;
    TLimits limits;
};

TLimits cp_limits(const SubstanceConstants& k, CpForm form) {
    return form == CpForm::polynomial ? TLimits{k.cpPolyTLo, k.cpPolyTHi}
                                      : TLimits{k.cpDIPPRTLo, k.cpDIPPRTHi};
}

std::vector<Validity> validities(const Fluid& fluid, const Outcome& outcome) {
    std::vector<Validity> list;
    const SubstanceConstants& k = fluid.substance;
    const ModelSelection& models = fluid.models;
    const ModeInfo& mode = mode_info(outcome.mode);
    if (mode.family == ModeFamily::database) return {{"function", mode.menu_text, outcome.limits}};
    const bool heat = outcome.vaporization.has_value();
    const bool by_evp = outcome.saturation == SaturationSource::evp || outcome.mode == Mode::tank_partial ||
                        (heat && hlv_info(models.HLVKode).uses_evp);
    if (by_evp && models.EVPKode != Evp::none)
        list.push_back({"EVP", trim(evp_info(models.EVPKode).text), evp_limits(k, models.EVPKode)});
    if (outcome.liquid == LiquidSource::database)
        list.push_back({"rhoL", "rho(L) = Fu(T)", {k.RhoLTLo, k.RhoLTHi}});
    if (heat && models.HLVKode == Hlv::equation)
        list.push_back({"HLV", trim(hlv_info(models.HLVKode).text), {k.HLVTLo, k.HLVTHi}});
    const bool functions = (outcome.L && outcome.L->h) || (outcome.V && outcome.V->h);
    if (functions && models.cpKode != CpForm::none)
        list.push_back({"cpId", trim(cp_info(models.cpKode).text), cp_limits(k, models.cpKode)});
    return list;
}

// Unit of the numbers of a warning; absent for one without numbers.
Value warning_unit(WarningKind kind) {
    switch (kind) {
        case WarningKind::beyond_pLV:
        case WarningKind::other_phase_by_evp:
            return "kPa";
        case WarningKind::below_B:
            return std::string(molar_volume);
        case WarningKind::no_omega:
        case WarningKind::several_solutions:
            return {};
        default:
            return "K";
    }
}

// Reservations that say themselves why functions are absent.
bool told_by_warning(Reason reason) {
    return reason == Reason::none || reason == Reason::no_ideal_gas_cp || reason == Reason::critical_point;
}

}  // namespace

std::string_view region_text(int region) {
    constexpr std::array<std::string_view, 5> texts = {"below the critical point", "liquid above p(cr)",
                                                       "supercritical", "vapor above T(cr)",
                                                       "at the critical point"};
    return region >= 0 && static_cast<std::size_t>(region) < texts.size()
               ? texts[static_cast<std::size_t>(region)]
               : std::string_view();
}

Block state_block(const Fluid& fluid, const Outcome& outcome, const Units& units) {
    const bool two = outcome.two_phase(), cubic = !fluid.VPhaseOnly;
    const EosOutcome* const eos = outcome.eos ? &*outcome.eos : nullptr;
    const int nRoots = eos ? int{eos->roots.nRoots} : 0;
    const auto rho = [&](Phase phase) {
        const PhaseOutcome* there = phase_of(outcome, phase);
        return there ? if_present(there->rho) : Value();
    };
    const double v_factor = display_factor(outcome_factors(fluid, outcome, units), Quantity::v);
    const Value region = region_of(fluid, outcome);
    Block block{"state", "State", {}, Layout::known};
    auto& f = block.fields;
    f.push_back({"T", "T", if_present(outcome.T), "K", ""});
    f.push_back({"p", "p", if_present(outcome.p), "kPa", two ? "p(LV)" : ""});
    f.push_back({"phase", "phase", remark(std::string(phase_text(outcome.phase))), "", ""});
    f.push_back({"PhaseRegion", "region", region, "",
                 region.absent() ? std::string() : std::string(region_text(outcome.region))});
    f.push_back({"LFlag", "", outcome.IsL, "", ""});
    f.push_back({"VFlag", "", outcome.IsV, "", ""});
    f.push_back({"y", two ? "vapor fraction" : "", if_present(outcome.quality), "", "by the lever rule"});
    f.push_back(
        {"v", "given volume", scaled(outcome.v, v_factor), std::string(unit_text(units, Quantity::v)), ""});
    f.push_back({"rho_L", "rho(L)", rho(phase_L), "kg/m^3", ""});
    f.push_back({"rho_V", "rho(V)", rho(phase_V), "kg/m^3", ""});
    f.push_back({"nRoots", "volume roots", cubic && eos ? Value(nRoots) : Value(), "", ""});
    f.push_back({"msg", "", eos ? remark(std::string(eos->msg)) : Value(), "", ""});
    f.push_back({"VRoot1", nRoots == 1 ? "root" : "root 1, liquid", root_of(outcome, 0),
                 std::string(molar_volume), ""});
    f.push_back({"VRoot2", "root 2", root_of(outcome, 1), std::string(molar_volume), ""});
    f.push_back({"VRoot3", "root 3, vapor", root_of(outcome, 2), std::string(molar_volume), ""});
    f.push_back(
        {"fd", "difference of areas fd", nRoots == 3 ? Value(eos->fd) : Value(), "", "0 at saturation"});
    f.push_back({"B", "second virial coefficient B", eos ? if_present(eos->B) : Value(),
                 std::string(molar_volume), ""});
    return block;
}

Block mode_block(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup, const Units& units) {
    Block block = state_block(fluid, outcome, units);
    block.layout = Layout::json;
    auto& f = block.fields;
    f.insert(f.begin(), {"mode", "mode", number_of(outcome.mode), "", ""});
    f.push_back({"GlobalCalc", "GLOBAL", setup.GlobalCalc, "", ""});
    f.push_back(
        {"LPercent", "L-phase", outcome.tank ? Value(outcome.tank->fill * 100.0) : Value(), "vol.-%", ""});
    return block;
}

Grid functions_grid(const Outcome& outcome, const Units& units, const UnitFactors& factors) {
    Grid grid{"functions", "Thermodynamic functions", {"L", "V", "mean"}, {}};
    for (const FunctionRow& row : function_grid_rows) {
        const double factor = display_factor(factors, row.quantity);
        std::vector<Value> values = both_phases(outcome, [&](const PhaseOutcome& phase) {
            return scaled(function_value(phase, row.quantity), factor);
        });
        const bool mean = outcome.mixture && row.mean;
        values.push_back(mean ? scaled(row.mean(*outcome.mixture), factor) : Value());
        grid.rows.push_back({key_of(row.quantity), std::string(quantity_info(row.quantity).name),
                             std::string(unit_text(units, row.quantity)), std::move(values)});
    }
    return grid;
}

std::vector<Grid> array_grids(const Outcome& outcome) {
    return {
        array_grid("FuncA", "Fugacity and residual functions", func_entries, outcome,
                   [](const PhaseArrays& x) { return x.FuncA; }),
        array_grid("DerivA", "Derivatives", deriv_entries, outcome,
                   [](const PhaseArrays& x) { return x.DerivA; }),
        array_grid("CoefA", "Expansion coefficients", coef_entries, outcome,
                   [](const PhaseArrays& x) { return x.CoefA; }),
        array_grid("Deriv2A", "Second derivatives", deriv2_entries, outcome,
                   [](const PhaseArrays& x) { return x.Deriv2A; }),
    };
}

Block slot_block(const CalcResult& result, const Units& units) {
    Block block{"slots", "", {}, Layout::json};
    for (int i = 0; i < slot_count; ++i) {
        const auto slot = static_cast<CalcSlot>(i);
        if (slot == slot_x6 || slot == slot_x8) continue;
        block.fields.push_back({std::string(slot_key(slot)), std::string(trim(slot_name(slot))),
                                result.has(i) ? Value(result[i]) : Value(),
                                std::string(unit_text(units, slot_quantity(slot))), ""});
    }
    return block;
}

Block tank_block(const Outcome& outcome) {
    const std::optional<TankContents>& tank = outcome.tank;
    return {"state",
            "Tank",
            {{"T", "T", if_present(outcome.T), "K", ""},
             {"p", "p", if_present(outcome.p), "kPa", ""},
             {"phase", "phases", remark(std::string(phase_text(outcome.phase))), "", ""},
             {"rho", "mean density", if_present(outcome.rho), "kg/m^3", ""},
             {"y", "vapor fraction (mass)", tank ? Value(tank->y) : Value(), "", ""},
             {"LPercent", "filling level", tank ? Value(tank->fill * 100.0) : Value(), "vol.-%", ""}},
            Layout::list};
}

Grid contents_grid(const TankContents& tank) {
    return {"contents",
            "Contents",
            {"L", "V"},
            {{"V", "volume", "m^3", {tank.VL, tank.VV}},
             {"m", "mass", "kg", {tank.mL, tank.mV}},
             {"n", "amount of substance", "kmol", {tank.nL, tank.nV}}}};
}

Table virial_table(double T, const std::vector<VirialRow>& rows) {
    Table table{"virial",
                "Second virial coefficient at T = " + shown(T) + " K",
                {{"code", "code", ""},
                 {"name", "equation", ""},
                 {"B", "B", std::string(molar_volume)},
                 {"dBdT", "dB/dT", "m^3/(kmol K)"},
                 {"d2BdT2", "d2B/dT2", "m^3/(kmol K^2)"},
                 {"reason", "", ""}},
                {},
                Layout::list};
    for (const VirialRow& row : rows) {
        table.rows.push_back({number_of(row.code), trim(eos_info(row.code).text), if_present(row.B),
                              if_present(row.B1), if_present(row.B2), remark(row.reason)});
    }
    return table;
}

Table warnings_table(const std::vector<Warning>& warnings) {
    Table table{"warnings",
                "",
                {{"name", "name", ""},
                 {"text", "text", ""},
                 {"value", "value", ""},
                 {"low", "low", ""},
                 {"high", "high", ""},
                 {"unit", "unit", ""},
                 {"offset", "offset", "K"}},
                {},
                Layout::json};
    for (const Warning& w : warnings) {
        table.rows.push_back({warning_name(w.kind), warning_text(w), if_known(w.value), if_known(w.low),
                              if_known(w.high), warning_unit(w.kind),
                              w.offset ? Value(int{w.offset}) : Value()});
    }
    return table;
}

Table validity_table(const Fluid& fluid, const Outcome& outcome) {
    Table table{
        "validity",
        "",
        {{"name", "name", ""}, {"text", "equation", ""}, {"TLo", "T(Lo)", "K"}, {"THi", "T(Hi)", "K"}},
        {},
        Layout::json};
    for (const Validity& v : validities(fluid, outcome)) {
        table.rows.push_back({v.name, v.text, v.limits.TLo ? Value(int{v.limits.TLo}) : Value(),
                              v.limits.THi ? Value(int{v.limits.THi}) : Value()});
    }
    return table;
}

void add_warnings(Report& report, const std::vector<Warning>& warnings) {
    report.sections.emplace_back(warnings_table(warnings));
    for (const Warning& w : warnings) report.notes.push_back(warning_text(w));
}

void add_reservations(Report& report, const Fluid& fluid, const Outcome& outcome) {
    add_warnings(report, outcome.warnings);
    report.sections.emplace_back(validity_table(fluid, outcome));
    for (const Phase phase : {phase_L, phase_V}) {
        const PhaseOutcome* const there = phase_of(outcome, phase);
        if (!there || told_by_warning(there->functions_reason)) continue;
        std::string note(reason_text(there->functions_reason));
        if (std::ranges::find(report.notes, note) == report.notes.end())
            report.notes.push_back(std::move(note));
    }
    if (outcome.has_result()) return;
    report.status = status_no_result;
    report.message = outcome_message(outcome);
    report.reason = reason_name(outcome.failure.reason);
}

std::string outcome_message(const Outcome& outcome) {
    return outcome.has_result() ? std::string() : failure_text(outcome.failure);
}

}  // namespace quom

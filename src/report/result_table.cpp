#include "report/result_table.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/number_text.h"
#include "report/outcome_report.h"
#include "report/selection_report.h"
#include "report/titles.h"

namespace quom {

namespace {

using Optional = std::optional<double>;

// Words of a row whose values come from the grids of the reports.
struct RowWords {
    std::string_view key, quantity, symbol;
    std::optional<Quantity> dimension;
};
constexpr RowWords row_words[] = {
    {"h", "enthalpy", "h", Quantity::h},
    {"u", "internal energy", "u", Quantity::u},
    {"s", "entropy", "s", Quantity::s},
    {"g", "Gibbs energy", "g", Quantity::g},
    {"a", "Helmholtz energy", "a", Quantity::a},
    {"eH", "exergy of h", "e(h)", Quantity::eH},
    {"eU", "exergy of u", "e(u)", Quantity::eU},
    {"cp", "heat capacity at p", "cp", Quantity::cp},
    {"cV", "heat capacity at v", "cV", Quantity::cV},
    {"cpId", "ideal gas heat capacity", "cp(idG)", Quantity::cpId},
    {"w", "speed of sound", "w", Quantity::w},
    {"lnphi", "log of fugacity coefficient", "ln phi", {}},
    {"dlnphidT", "slope of ln phi with T", "(dln phi/dT) at p", Quantity::alpha},
    {"d2lnphidT2", "curvature of ln phi with T", "(d2ln phi/dT2) at p", {}},
    {"s_res", "residual entropy", "(s - s_idG)/R", {}},
    {"h_res", "residual enthalpy", "(h - h_idG)/R", {}},
    {"g_res", "residual Gibbs energy", "(g - g_idG)/R", {}},
    {"cp_res", "residual heat capacity", "(cp - cp_idG)/R", {}},
    {"delta", "Joule-Thomson coefficient", "(dT/dp) at h", Quantity::delta},
    {"dpdv_T", "slope of p with v", "(dp/dv) at T", {}},
    {"dpdT_v", "slope of p with T", "(dp/dT) at v", {}},
    {"dvdp_T", "slope of v with p", "(dv/dp) at T", {}},
    {"dvdT_p", "slope of v with T", "(dv/dT) at p", {}},
    {"dTdv_p", "slope of T with v", "(dT/dv) at p", {}},
    {"dTdp_v", "slope of T with p", "(dT/dp) at v", {}},
    {"d2pdv2", "curvature of p with v", "(d2p/dv2) at T", {}},
    {"d2vdT2", "curvature of v with T", "(d2v/dT2) at p", {}},
    {"d2Tdv2", "curvature of T with v", "(d2T/dv2) at p", {}},
    {"alpha", "thermal expansion", "alpha", Quantity::alpha},
    {"chi", "compressibility", "chi", Quantity::chi},
    {"beta", "rise of pressure", "beta", Quantity::beta},
};

// A database function, or the mode of one, has its phase by its kind.
struct DatabaseColumn {
    Mode mode;
    std::size_t column;
};
constexpr DatabaseColumn database_columns[] = {{Mode::fn_rhoL, column_L},   {Mode::fn_cpL, column_L},
                                               {Mode::fn_cpIdG, column_V},  {Mode::fn_rhoS, column_both},
                                               {Mode::fn_cpS, column_both}, {Mode::virial, column_V}};

bool is_solid(Mode mode) { return mode == Mode::fn_rhoS || mode == Mode::fn_cpS; }

Optional number_in(const Value& value) { return value.absent() ? Optional() : Optional(value.number); }

// One table on its way.
struct TableWriter {
    const Fluid& fluid;
    const Outcome& outcome;
    const CalcSetup& setup;
    ResultValues& values;

    ModeFamily family() const { return mode_info(outcome.mode).family; }
    const PhaseOutcome* L() const { return phase_of(outcome, phase_L); }
    const PhaseOutcome* V() const { return phase_of(outcome, phase_V); }

    ResultSection& section(const char* key, const char* title, bool folded = false) const {
        values.sections.push_back({key, title, folded, {}});
        return values.sections.back();
    }
    // The value in the column of the state.
    ResultRow of_state(ResultRow row, const Optional& value) const {
        if (value && std::isfinite(*value)) row.values[values.state_column] = *value + 0.0;  // no -0
        return row;
    }
};

// A row in the own unit of its dimension.
ResultRow row_of(std::string key, std::string quantity, std::string symbol, Quantity dimension) {
    const std::string unit(units_of(dimension).front());
    return {std::move(key), std::move(quantity), std::move(symbol), dimension, unit};
}

ResultRow by_phase(ResultRow row, const PhaseOutcome* L, const PhaseOutcome* V, Quantity q) {
    if (L) row.values[column_L] = function_value(*L, q);
    if (V) row.values[column_V] = function_value(*V, q);
    return row;
}

ResultRow compressibility(ResultRow row, const PhaseOutcome* L, const PhaseOutcome* V) {
    if (L) row.values[column_L] = L->z;
    if (V) row.values[column_V] = V->z;
    return row;
}

// The rows of a grid, with plain words.
void add_rows(const Grid& grid, std::vector<ResultRow>& rows) {
    for (const GridRow& from : grid.rows) {
        const auto* const words = std::ranges::find(row_words, from.key, &RowWords::key);
        if (words == std::end(row_words)) continue;  // v stands with the state
        ResultRow& row = rows.emplace_back(ResultRow{
            from.key, std::string(words->quantity), std::string(words->symbol), words->dimension, from.unit});
        for (std::size_t k = 0; k < from.values.size(); ++k) row.values[k] = number_in(from.values[k]);
    }
}

ResultRow* find_row(ResultValues& values, std::string_view key) {
    for (ResultSection& section : values.sections)
        for (ResultRow& row : section.rows)
            if (row.key == key) return &row;
    return nullptr;
}

void choose_columns(const TableWriter& w) {
    const Outcome& outcome = w.outcome;
    const auto* const of_mode = std::ranges::find(database_columns, outcome.mode, &DatabaseColumn::mode);
    const bool saturated = outcome.two_phase() || w.family() == ModeFamily::equilibrium ||
                           w.family() == ModeFamily::vaporization || w.family() == ModeFamily::database;
    std::size_t& column = w.values.state_column;
    column = of_mode != std::end(database_columns) ? of_mode->column
             : saturated                           ? column_both
             : outcome.phase == PhaseWord::L       ? column_L
                                                   : column_V;
    constexpr std::int16_t supercritical = 2, critical_point = 4;  // numbers of phase_region
    const bool fluid = outcome.region == supercritical || outcome.region == critical_point;
    w.values.heads = {"liquid L", fluid && column == column_V ? "fluid (L = V)" : "vapor V",
                      is_solid(outcome.mode)  ? "solid S"
                      : column == column_both ? "mixture"
                                              : ""};
}

void write_tank_rows(const TableWriter& w, std::vector<ResultRow>& rows) {
    if (!w.outcome.tank) return;
    const TankContents& t = *w.outcome.tank;
    const auto row = [&](ResultRow contents, double L, double V) {
        if (w.L()) contents.values[column_L] = L;
        if (w.V()) contents.values[column_V] = V;
        if (w.outcome.two_phase()) contents.values[column_both] = L + V;
        rows.push_back(std::move(contents));
    };
    row(row_of("V", "volume", "V", Quantity::tank_volume), t.VL, t.VV);
    row(row_of("m", "mass", "m", Quantity::mass), t.mL, t.mV);
    row({"n", "amount of substance", "n", {}, "kmol"}, t.nL, t.nV);
    rows.push_back(w.of_state({"fill", "filling level", "V(L)/V", {}, "%"}, t.fill * 100.0));
}

void write_state(const TableWriter& w, const Grid& functions) {
    const Outcome& outcome = w.outcome;
    std::vector<ResultRow>& rows = w.section("state", "State").rows;
    rows.push_back(w.of_state(row_of("T", "temperature", "T", Quantity::T), outcome.T));
    const bool evp = w.family() == ModeFamily::database;  // its p is a vapor pressure
    rows.push_back(w.of_state(row_of("p", "pressure", "p", Quantity::p), evp ? Optional() : outcome.p));

    ResultRow rho = by_phase(row_of("rho", "density", "rho", Quantity::rho), w.L(), w.V(), Quantity::rho);
    ResultRow v = row_of("v", "molar volume", "v", Quantity::v);
    for (std::size_t k = 0; k < result_columns; ++k)
        v.values[k] = number_in(functions.rows.front().values[k]);
    ResultRow z = compressibility({"z", "compressibility factor", "z"}, w.L(), w.V());
    if (outcome.mixture) {
        rho.values[column_both] = outcome.mixture->rho;
        if (outcome.T && outcome.p)  // z = p v/(R T)
            z.values[column_both] = *outcome.p * outcome.mixture->v / (RGas * *outcome.T);
    }
    if (const Optional density = outcome.rhoL_fn ? outcome.rhoL_fn : outcome.rhoS_fn) {
        rho = w.of_state(std::move(rho), density);
        if (w.values.M > 0.0 && *density > 0.0) v = w.of_state(std::move(v), w.values.M / *density);
    }
    for (ResultRow* row : {&rho, &v, &z}) rows.push_back(std::move(*row));
    // Beyond the critical point nothing is a fraction of vapor.
    const bool told = outcome.region == 0 && outcome.has_result();
    rows.push_back(w.of_state({"x", "vapor fraction", "x"}, told ? outcome.quality : Optional()));
    write_tank_rows(w, rows);
    for (const VirialOutcome& equation : outcome.virial)
        rows.push_back(
            w.of_state(row_of("B_" + std::to_string(number_of(equation.code)),
                              "B by " + std::string(trim(eos_info(equation.code).text)), "B", Quantity::B),
                       equation.B));
}

void write_functions(const TableWriter& w, const Grid& functions) {
    add_rows(functions, w.section("functions", "Thermodynamic functions").rows);
    const auto put = [&](std::string_view key, const Optional& value) {
        ResultRow* const row = find_row(w.values, key);
        if (row && value) *row = w.of_state(std::move(*row), value);
    };
    put("cp", w.outcome.cpL_fn ? w.outcome.cpL_fn : w.outcome.cpS_fn);
    put("cpId", w.outcome.cpId_fn);
}

// The saturation at T of a state by the concept in force. The outcome itself where it is one.
Outcome saturation_of(const TableWriter& w) {
    const Outcome& outcome = w.outcome;
    const ModeFamily family = w.family();
    if (family == ModeFamily::equilibrium || family == ModeFamily::vaporization ||
        family == ModeFamily::database || !outcome.has_result())
        return outcome;
    const bool state = family == ModeFamily::state || family == ModeFamily::tank;
    if (!state || !outcome.T || !(*outcome.T < w.fluid.substance.Tcr)) return {};
    return CalcBatch(w.fluid,
                     {.mode = Mode::equilibrium_T, .T = outcome.T, .setup = w.setup, .functions = false});
}

void write_saturation(const TableWriter& w) {
    std::vector<ResultRow>& rows = w.section("saturation", "Saturation at T").rows;
    const Outcome found = saturation_of(w);
    const bool known = found.has_result() && w.outcome.has_result();
    const PhaseOutcome* const L = known ? phase_of(found, phase_L) : nullptr;
    const PhaseOutcome* const V = known ? phase_of(found, phase_V) : nullptr;
    const VaporizationOutcome heat =
        known && found.vaporization ? *found.vaporization : VaporizationOutcome();
    rows.push_back(
        w.of_state(row_of("pLV", "vapor pressure", "p(LV)", Quantity::p), known ? found.p : Optional()));
    rows.push_back(by_phase(row_of("rhoLV", "density", "rho(LV)", Quantity::rho), L, V, Quantity::rho));
    rows.push_back(by_phase(row_of("vLV", "molar volume", "v(LV)", Quantity::v), L, V, Quantity::v));
    ResultRow z = compressibility({"zLV", "compressibility factor", "z(LV)"}, L, V);
    if (heat.zL && !z.values[column_L]) z.values[column_L] = heat.zL;
    if (heat.zV && !z.values[column_V]) z.values[column_V] = heat.zV;
    rows.push_back(std::move(z));
    rows.push_back(
        w.of_state(row_of("hLV", "enthalpy of vaporization", "delta(LV)h", Quantity::hLV), heat.hLV));
    rows.push_back(
        w.of_state(row_of("sLV", "entropy of vaporization", "delta(LV)s", Quantity::sLV), heat.sLV));
    if (heat.database)
        rows.push_back(w.of_state(row_of("hLV_fn", "the same by its equation", "delta(LV)h", Quantity::hLV),
                                  heat.database));
}

// The outcome with the arrays of its phases, as a calculation with coefficients has them.
Outcome with_arrays(const Fluid& fluid, Outcome outcome) {
    for (std::optional<PhaseOutcome>* phase : {&outcome.L, &outcome.V}) {
        if (!*phase || !(*phase)->from_eos || (*phase)->arrays || !outcome.T || !outcome.p) continue;
        (*phase)->arrays = ThermoFunc(fluid, *outcome.T, *outcome.p, (*phase)->v);
    }
    return outcome;
}

void write_arrays(const TableWriter& w) {
    const std::vector<Grid> grids = array_grids(with_arrays(w.fluid, w.outcome));
    const auto add = [&grids](std::string_view key, std::vector<ResultRow>& rows) {
        const auto grid = std::ranges::find(grids, key, &Grid::key);
        if (grid != grids.end()) add_rows(*grid, rows);
    };
    std::vector<ResultRow>& fugacity = w.section("fugacity", "Fugacity and residual functions", true).rows;
    add("FuncA", fugacity);
    const bool has_B = w.outcome.eos && w.outcome.eos->B;
    fugacity.push_back(w.of_state(row_of("B", "second virial coefficient", "B", Quantity::B),
                                  has_B ? w.outcome.eos->B : w.outcome.B));
    std::vector<ResultRow>& derivatives = w.section("derivatives", "Derivatives", true).rows;
    add("DerivA", derivatives);
    add("Deriv2A", derivatives);
    add("CoefA", w.section("expansion", "Expansion coefficients", true).rows);
}

// Name of the unit that the options give to a row; "" where they give none.
std::string_view unit_by_options(const ResultRow& row, const Units& options) {
    const UnitKind kind = quantity_info(*row.dimension).kind;
    if (kind == UnitKind::volume) return options.VolumeMode == volume_per_mass ? "m^3/kg" : "";
    const bool energy = kind == UnitKind::energy;
    if (!energy && kind != UnitKind::entropy) return {};
    switch (options.EnergyMode) {
        case energy_per_R:
            return energy ? "R K" : "R";
        case energy_per_RT:
            return energy ? "R T" : "R";
        case energy_per_mass:
            return energy ? "kJ/kg" : "kJ/(kg K)";
        default:
            return {};
    }
}

// The first letters of a symbol, without what stands in brackets: "e" of "e(h)".
std::string stem_of(const std::string& symbol) { return symbol.substr(0, symbol.find('(')); }

}  // namespace

ResultValues make_result_values(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup) {
    ResultValues values;
    values.title = CalcTitle(outcome.mode, setup);
    values.substance = substance_head(fluid.substance);
    values.models = models_text(fluid.models);
    values.reference = reference_text(fluid);
    values.M = fluid.M;
    values.T = outcome.T.value_or(0.0);
    Outcome no_result;
    no_result.mode = outcome.mode;
    const TableWriter writer{fluid, outcome.has_result() ? outcome : no_result, setup, values};
    choose_columns(writer);
    const Grid functions = functions_grid(writer.outcome, Units(), UnitFactors());
    write_state(writer, functions);
    write_functions(writer, functions);
    write_saturation(writer);
    write_arrays(writer);
    return values;
}

std::vector<UnitChoice> unit_choices(const ResultValues& values, const ResultRow& row) {
    if (!row.dimension) return {{row.unit, row.unit}};
    std::vector<UnitChoice> choices;
    for (const std::string_view name : units_of(*row.dimension)) {
        const UnitMatch unit = find_unit(*row.dimension, name, values.M);
        // A volume as a density is another row.
        if (unit.fault.empty() && !unit.conversion.inverse)
            choices.push_back({std::string(name), std::string(name), unit.conversion});
    }
    const UnitKind kind = quantity_info(*row.dimension).kind;
    if (kind == UnitKind::energy) {
        choices.push_back({"R K", row.symbol + "/R in K", {.factor = RGas}});
        if (values.T > 0.0) choices.push_back({"R T", row.symbol + "/(R T)", {.factor = RGas * values.T}});
    } else if (kind == UnitKind::entropy) {
        choices.push_back({"R", row.symbol + "/R", {.factor = RGas}});
    }
    return choices;
}

UnitChoice unit_of(const ResultValues& values, const ResultRow& row, const ChosenUnits& chosen,
                   const Units& options) {
    std::vector<UnitChoice> choices = unit_choices(values, row);
    if (row.dimension) {
        const auto named = chosen.find(row.key);
        const std::string name =
            named != chosen.end() ? named->second : std::string(unit_by_options(row, options));
        const auto found = std::ranges::find(choices, name, &UnitChoice::name);
        if (found != choices.end()) return std::move(*found);
    }
    return std::move(choices.front());
}

std::vector<std::string> rows_alike(const ResultValues& values, const ResultRow& row) {
    std::vector<std::string> keys;
    if (!row.dimension) return {row.key};
    const std::vector<std::string_view> units = units_of(*row.dimension);
    for (const ResultSection& section : values.sections)
        for (const ResultRow& other : section.rows)
            if (other.dimension && units_of(*other.dimension) == units) keys.push_back(other.key);
    return keys;
}

std::string symbols_alike(const ResultValues& values, const ResultRow& row) {
    const std::vector<std::string> keys = rows_alike(values, row);
    std::vector<std::string> stems;
    for (const ResultSection& section : values.sections)
        for (const ResultRow& other : section.rows) {
            const std::string stem = stem_of(other.symbol);
            // delta(LV)h is an h.
            if (stem.empty() || stem == "delta" || std::ranges::find(keys, other.key) == keys.end()) continue;
            if (std::ranges::find(stems, stem) == stems.end()) stems.push_back(stem);
        }
    std::string text;
    for (const std::string& stem : stems) text += (text.empty() ? "" : ", ") + stem;
    return text;
}

std::string cell_text(const std::optional<double>& value, const UnitConversion& unit, int digits) {
    if (!value) return {};
    const double shown_value = unit.from_own(*value);
    return std::isfinite(shown_value) ? digitsNum(shown_value, digits) : std::string();
}

ExportTable result_table_export(const ResultValues& values, const ChosenUnits& chosen, const Units& options,
                                int digits) {
    ExportTable table{.title = {values.title, values.substance, values.models, values.reference},
                      .heads = {"Quantity", "Symbol", "Unit"}};
    for (const std::string& head : values.heads)
        if (!head.empty()) table.heads.push_back(head);
    for (const ResultSection& section : values.sections) {
        table.rows.push_back({section.title});
        for (const ResultRow& row : section.rows) {
            const UnitChoice unit = unit_of(values, row, chosen, options);
            std::vector<ExportCell>& cells = table.rows.emplace_back();
            for (const std::string& text : {row.quantity, row.symbol, unit.text}) cells.emplace_back(text);
            for (std::size_t k = 0; k < result_columns; ++k) {
                if (values.heads[k].empty()) continue;
                cells.emplace_back(cell_text(row.values[k], unit.conversion, digits), true);
            }
        }
    }
    return table;
}

std::string result_table_text(const ResultValues& values, const ChosenUnits& chosen, const Units& options,
                              int digits) {
    return to_tsv(result_table_export(values, chosen, options, digits));
}

}  // namespace quom

#include "report/sweep_columns.h"

#include <limits>

#include "report/calc_record.h"

namespace quom {

namespace {

constexpr double Blank = std::numeric_limits<double>::quiet_NaN();

double cell(const std::optional<double>& x, double factor = 1.0) { return x ? *x * factor : Blank; }

// A function of a phase, in displayed units.
template <Quantity Q, Phase P>
double function_cell(const SweepRow& row) {
    const PhaseOutcome* const phase = phase_of(row.outcome, P);
    return phase ? cell(function_value(*phase, Q), display_factor(row.factors, Q)) : Blank;
}

// A field of the outcome as it is.
template <std::optional<double> Outcome::*Field, Quantity Q>
double outcome_cell(const SweepRow& row) {
    return cell(row.outcome.*Field, display_factor(row.factors, Q));
}

template <std::optional<double> VaporizationOutcome::*Field, Quantity Q>
double vaporization_cell(const SweepRow& row) {
    const auto& heat = row.outcome.vaporization;
    return heat && row.outcome.has_result() ? cell((*heat).*Field, display_factor(row.factors, Q)) : Blank;
}

template <double TankContents::*Field>
double tank_cell(const SweepRow& row) {
    return row.outcome.tank ? (*row.outcome.tank).*Field : Blank;
}

double fill_cell(const SweepRow& row) { return row.outcome.tank ? row.outcome.tank->fill * 100.0 : Blank; }

double quality_cell(const SweepRow& row) { return cell(row.outcome.quality); }

double region_cell(const SweepRow& row) {
    const bool told = row.outcome.has_result() && !row.fluid.VPhaseOnly;
    return told ? static_cast<double>(row.outcome.region) : Blank;
}

std::string_view phase_cell(const SweepRow& row) { return phase_text(row.outcome.phase); }
std::string_view reason_cell(const SweepRow& row) {
    return row.outcome.has_result() ? std::string_view() : reason_name(row.outcome.failure.reason);
}

constexpr SweepColumn number_column(std::string_view name, double (*number)(const SweepRow&)) {
    return {.name = name, .cell = SweepCell::number, .number = number};
}
constexpr SweepColumn text_column(std::string_view name, std::string_view (*text)(const SweepRow&)) {
    return {.name = name, .cell = SweepCell::text, .text = text};
}

using enum Quantity;

constexpr SweepColumn column_T = number_column("T", outcome_cell<&Outcome::T, Quantity::T>);
constexpr SweepColumn column_p = number_column("p", outcome_cell<&Outcome::p, Quantity::p>);
constexpr SweepColumn column_rho = number_column("rho", outcome_cell<&Outcome::rho, Quantity::rho>);
constexpr SweepColumn columns_heat[] = {
    number_column("delta(LV)h", vaporization_cell<&VaporizationOutcome::hLV, hLV>),
    number_column("delta(LV)s", vaporization_cell<&VaporizationOutcome::sLV, sLV>)};
constexpr SweepColumn columns_phase[] = {text_column("phase", phase_cell),
                                         number_column("region", region_cell)};
constexpr SweepColumn columns_density[] = {number_column("rho(V)", function_cell<rho, phase_V>),
                                           number_column("rho(L)", function_cell<rho, phase_L>),
                                           number_column("v(V)", function_cell<v, phase_V>),
                                           number_column("v(L)", function_cell<v, phase_L>)};
constexpr SweepColumn column_eta = number_column("eta(V)", quality_cell);
constexpr SweepColumn columns_tank[] = {
    number_column("L-phase vol%", fill_cell),
    number_column("V(V)", tank_cell<&TankContents::VV>),
    number_column("V(L)", tank_cell<&TankContents::VL>),
    number_column("m(V)", tank_cell<&TankContents::mV>),
    number_column("m(L)", tank_cell<&TankContents::mL>),
    number_column("n(V)", tank_cell<&TankContents::nV>),
    number_column("n(L)", tank_cell<&TankContents::nL>),
};

// h to w of both phases, V first.
template <Phase P>
struct FunctionColumns {
    static constexpr double (*cells[])(const SweepRow&) = {
        function_cell<h, P>,  function_cell<s, P>,  function_cell<g, P>,  function_cell<u, P>,
        function_cell<a, P>,  function_cell<eH, P>, function_cell<eU, P>, function_cell<cp, P>,
        function_cell<cV, P>, function_cell<w, P>};
    static void add_to(std::vector<SweepColumn>& columns) {
        for (std::size_t i = 0; i < std::size(cells); ++i) {
            std::string_view name = slot_name(function_slot(function_rows[i + 1], P));
            while (name.starts_with(' ')) name.remove_prefix(1);
            columns.push_back(number_column(name, cells[i]));
        }
    }
};
static_assert(std::size(FunctionColumns<phase_V>::cells) + 1 == function_rows.size());

// The column of a database function.
struct DatabaseColumn {
    Mode mode = Mode::none;
    SweepColumn column;
};
constexpr DatabaseColumn database_columns[] = {
    {Mode::fn_rhoL, number_column("rho(L)", outcome_cell<&Outcome::rhoL_fn, rho>)},
    {Mode::fn_cpIdG, number_column("cp(idG)", outcome_cell<&Outcome::cpId_fn, cpId>)},
    {Mode::fn_cpL, number_column("cp(L)", outcome_cell<&Outcome::cpL_fn, cp>)},
    {Mode::fn_cpS, number_column("cp(S)", outcome_cell<&Outcome::cpS_fn, cp>)},
    {Mode::fn_rhoS, number_column("rho(S)", outcome_cell<&Outcome::rhoS_fn, rho>)},
};

bool has_state(ModeFamily family) {
    return family == ModeFamily::state || family == ModeFamily::equilibrium ||
           family == ModeFamily::vaporization || family == ModeFamily::tank;
}

bool is_vapor_pressure(Mode mode) {
    return mode == Mode::fn_frost_kalkwarf || mode == Mode::fn_wagner || mode == Mode::fn_antoine_low ||
           mode == Mode::fn_antoine_high;
}

void add_state_columns(std::vector<SweepColumn>& columns, const ModeInfo& mode, bool functions) {
    const auto add = [&columns](const auto& list) {
        columns.insert(columns.end(), std::begin(list), std::end(list));
    };
    const bool by_density = mode.specified & (spec_rhoV | spec_rhoL);
    const bool tank = mode.family == ModeFamily::tank, heat = mode.family == ModeFamily::vaporization;
    const bool table = mode.mode == Mode::functions;
    add(columns_phase);
    if (!heat) add(columns_density);
    if (by_density || tank) columns.push_back(column_eta);
    if (tank) add(columns_tank);
    if ((functions && !heat) || table) {
        FunctionColumns<phase_V>::add_to(columns);
        FunctionColumns<phase_L>::add_to(columns);
    }
    if (mode.mode != Mode::T_p && !table) add(columns_heat);
}

}  // namespace

std::vector<SweepColumn> sweep_columns(Mode mode, bool functions) {
    const ModeInfo& info = mode_info(mode);
    if (info.family == ModeFamily::none || info.family == ModeFamily::process) return {};
    std::vector<SweepColumn> columns{column_T};
    if (has_state(info.family) || is_vapor_pressure(mode)) columns.push_back(column_p);
    if (info.specified & (spec_rhoV | spec_rhoL)) columns.push_back(column_rho);
    if (has_state(info.family)) add_state_columns(columns, info, functions);
    if (mode == Mode::virial) columns.push_back(number_column("B", outcome_cell<&Outcome::B, Quantity::B>));
    if (mode == Mode::fn_hLV) columns.insert(columns.end(), std::begin(columns_heat), std::end(columns_heat));
    for (const DatabaseColumn& d : database_columns) {
        if (d.mode == mode) columns.push_back(d.column);
    }
    columns.push_back({.name = "warnings", .cell = SweepCell::warnings});
    columns.push_back(text_column("reason", reason_cell));
    columns.push_back({.name = "message", .cell = SweepCell::message});
    return columns;
}

std::string sweep_warnings(const Outcome& outcome) {
    std::string names;
    for (const Warning& w : outcome.warnings) {
        if (!names.empty()) names += ' ';
        names += warning_name(w.kind);
    }
    return names;
}

std::string sweep_message(const Outcome& outcome) {
    if (!outcome.has_result()) return failure_text(outcome.failure);
    std::string text;
    for (const Warning& w : outcome.warnings) {
        if (!text.empty()) text += "; ";
        text += warning_text(w);
    }
    return text;
}

}  // namespace quom

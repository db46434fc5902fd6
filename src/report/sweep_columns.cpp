#include "report/sweep_columns.h"

#include <limits>

#include "base/code_page.h"
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

constexpr SweepColumn plain_column(std::string_view name, double (*number)(const SweepRow&),
                                   std::string_view unit = {}) {
    return {.name = name, .cell = SweepCell::number, .unit = unit, .number = number};
}
constexpr SweepColumn number_column(std::string_view name, Quantity q, double (*number)(const SweepRow&)) {
    return {.name = name, .cell = SweepCell::number, .quantity = q, .number = number};
}
template <Quantity Q, Phase P>
constexpr SweepColumn function_column(std::string_view name) {
    return {
        .name = name, .cell = SweepCell::number, .quantity = Q, .phase = P, .number = function_cell<Q, P>};
}
using enum Quantity;

constexpr SweepColumn column_T = number_column("T", T, outcome_cell<&Outcome::T, T>);
constexpr SweepColumn column_p = number_column("p", p, outcome_cell<&Outcome::p, p>);
constexpr SweepColumn column_rho = number_column("rho", rho, outcome_cell<&Outcome::rho, rho>);
constexpr SweepColumn columns_heat[] = {
    number_column("delta(LV)h", hLV, vaporization_cell<&VaporizationOutcome::hLV, hLV>),
    number_column("delta(LV)s", sLV, vaporization_cell<&VaporizationOutcome::sLV, sLV>)};
constexpr SweepColumn columns_phase[] = {SweepColumn{.name = "phase", .cell = SweepCell::phase},
                                         plain_column("region", region_cell)};
constexpr SweepColumn columns_density[] = {
    function_column<rho, phase_V>("rho(V)"), function_column<rho, phase_L>("rho(L)"),
    function_column<v, phase_V>("v(V)"), function_column<v, phase_L>("v(L)")};
constexpr SweepColumn column_eta = plain_column("eta(V)", quality_cell);
constexpr SweepColumn columns_tank[] = {
    plain_column("L-phase vol%", fill_cell),
    number_column("V(V)", tank_volume, tank_cell<&TankContents::VV>),
    number_column("V(L)", tank_volume, tank_cell<&TankContents::VL>),
    number_column("m(V)", mass, tank_cell<&TankContents::mV>),
    number_column("m(L)", mass, tank_cell<&TankContents::mL>),
    plain_column("n(V)", tank_cell<&TankContents::nV>, "kmol"),
    plain_column("n(L)", tank_cell<&TankContents::nL>, "kmol"),
};

// h to w of both phases, V first.
template <Phase P>
struct FunctionColumns {
    template <Quantity... Q>
    static void add_each(std::vector<SweepColumn>& columns) {
        (columns.push_back(function_column<Q, P>(trim(slot_name(function_slot(Q, P))))), ...);
    }
    static void add_to(std::vector<SweepColumn>& columns) {
        add_each<h, Quantity::s, g, u, a, eH, eU, cp, cV, w>(columns);
    }
};

// The column of a database function.
struct DatabaseColumn {
    Mode mode = Mode::none;
    SweepColumn column;
};
constexpr DatabaseColumn database_columns[] = {
    {Mode::fn_rhoL, number_column("rho(L)", rho, outcome_cell<&Outcome::rhoL_fn, rho>)},
    {Mode::fn_cpIdG, number_column("cp(idG)", cpId, outcome_cell<&Outcome::cpId_fn, cpId>)},
    {Mode::fn_cpL, number_column("cp(L)", cp, outcome_cell<&Outcome::cpL_fn, cp>)},
    {Mode::fn_cpS, number_column("cp(S)", cp, outcome_cell<&Outcome::cpS_fn, cp>)},
    {Mode::fn_rhoS, number_column("rho(S)", rho, outcome_cell<&Outcome::rhoS_fn, rho>)},
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
    if (mode == Mode::virial) columns.push_back(number_column("B", B, outcome_cell<&Outcome::B, B>));
    if (mode == Mode::fn_hLV) columns.insert(columns.end(), std::begin(columns_heat), std::end(columns_heat));
    for (const DatabaseColumn& d : database_columns) {
        if (d.mode == mode) columns.push_back(d.column);
    }
    columns.push_back({.name = "warnings", .cell = SweepCell::warnings});
    columns.push_back({.name = "reason", .cell = SweepCell::reason});
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

// Mode 8, and the table of all functions of the other modes.
#include <array>

#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/quantities.h"

namespace quom {

namespace {

// Fields of StateFunctions in the order of function_rows.
constexpr std::array<double StateFunctions::*, function_rows.size()> fields = {
    &StateFunctions::v,  &StateFunctions::h,  &StateFunctions::s,  &StateFunctions::g,
    &StateFunctions::u,  &StateFunctions::a,  &StateFunctions::eH, &StateFunctions::eU,
    &StateFunctions::cp, &StateFunctions::cV, &StateFunctions::w};

// One phase of the table: whether its functions exist, and their displayed values (0: not available).
struct Column {
    bool exists = false;
    bool environment_failed = false;
    std::array<double, function_rows.size()> value{};
};

Column column_of(CalcRun& run, int phase, bool present, double v) {
    Column c;
    if (!present || !(v > 0.0)) return c;
    PhaseArrays arrays;
    const StateFunctions f = state_functions(run.s, phase, run.T, run.p, v, arrays);
    if (f.err && !f.environment_failed) return c;
    c.exists = true;
    c.environment_failed = f.environment_failed;
    const double uFactor = run.s.units.uFactor;
    for (std::size_t i = 0; i < c.value.size(); ++i) c.value[i] = f.*fields[i] * uFactor;
    c.value.front() = f.v * run.s.units.vFactor;
    c.value.back() = f.w;
    return c;
}

void store_column(CalcRun& run, int phase, const Column& c) {
    if (!c.exists) return;
    for (std::size_t i = 0; i < c.value.size(); ++i) {
        run.out.Result[function_slot(function_rows[i], phase)] = c.value[i];
    }
}

bool is_exergy(Quantity q) { return q == Quantity::eH || q == Quantity::eU; }
bool needs_cp(Quantity q) { return q == Quantity::cp || q == Quantity::cV || q == Quantity::w; }

void print_columns(CalcRun& run, const Column& L, const Column& V) {
    const Session& s = run.s;
    const bool list_names = run.mode() != 8;
    const bool no_exergies = L.environment_failed || V.environment_failed;
    for (std::size_t i = 0; i < function_rows.size(); ++i) {
        const Quantity q = function_rows[i];
        if (no_exergies && is_exergy(q)) continue;
        const QuantityInfo& info = quantity_info(q);
        const auto shown = [&](const Column& c) { return c.exists && !(needs_cp(q) && c.value[i] == 0.0); };
        table_row(run, list_names ? info.list_name : info.table_name, label_text(s, q), shown(L), L.value[i],
                  shown(V), V.value[i]);
    }
    if (no_exergies) {
        run.line("no state of the surroundings at T(surr)/K =" + strNum(s.reference.TEnv) +
                 ", p(surr)/kPa =" + strNum(s.reference.pEnv) + ": no exergies");
    }
    if (s.models.cpKode == 0) run.line("No cp(idGas) parameters available");
}

}  // namespace

void function_table(CalcRun& run) {
    const CalcBatchResult& out = run.out;
    const Column V = column_of(run, phase_V, out.IsV, run.vV);
    const bool same = run.vL == run.vV && out.IsL && out.IsV;
    const Column L = same ? V : column_of(run, phase_L, out.IsL && run.L_from_eos, run.vL);
    store_column(run, phase_V, V);
    store_column(run, phase_L, L);
    if (!V.exists && !L.exists) {
        if (run.mode() == 8) return CalcMessage(run, error_code(-1), "no ideal gas functions at T, p");
        run.line("no result received");
        return;
    }
    if (run.mode() == 8) {
        const Column& c = V.exists ? V : L;
        run.record.h = single(c.value[1]), run.record.s = single(c.value[2]);
        run.record.g = single(c.value[3]);
        run.record.eH = single(c.value[6]), run.record.eU = single(c.value[7]);
    }
    if (run.text) print_columns(run, L, V);
}

AfterBranch mode_functions(CalcRun& run) {
    if (!FetchT(run) || !Fetchp(run)) return AfterBranch::result_block;
    show_T(run);
    show_p(run, run.out.view.par2);
    if (volumes_at_Tp(run)) function_table(run);
    return AfterBranch::result_block;
}

}  // namespace quom

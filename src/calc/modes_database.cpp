// Modes 14 to 24: the value of one equation of the database at T.
#include <array>

#include "base/number_text.h"
#include "calc/calc_run.h"
#include "engine/database_functions.h"
#include "engine/validity.h"

namespace quom {
namespace {

constexpr int outside_allowed = 10;  // [K]

struct DatabaseMode {
    Mode mode;
    DatabaseFunction function;
    void (*store)(Outcome& out, double value, double T);
};

void store_rhoL(Outcome& out, double value, double) { out.rhoL_fn = value; }
void store_rhoS(Outcome& out, double value, double) { out.rhoS_fn = value; }
void store_cpId(Outcome& out, double value, double) { out.cpId_fn = value; }
void store_cpL(Outcome& out, double value, double) { out.cpL_fn = value; }
void store_cpS(Outcome& out, double value, double) { out.cpS_fn = value; }
void store_p(Outcome& out, double value, double) {
    out.p = value;
    out.saturation = SaturationSource::evp;
}
void store_hLV(Outcome& out, double value, double T) {
    VaporizationOutcome& found = out.vaporization.emplace();
    found.hLV = value;
    found.sLV = value / T;
}
void store_nothing(Outcome&, double, double) {}

using D = DatabaseFunction;
constexpr std::array<DatabaseMode, 11> database_modes = {{
    {Mode::fn_rhoL, D::rhoL, store_rhoL},
    {Mode::fn_hLV, D::hLV, store_hLV},
    {Mode::fn_cpIdG, D::cpIdG, store_cpId},
    {Mode::fn_cpL, D::cpL, store_cpL},
    {Mode::fn_cpS, D::cpS, store_cpS},
    {Mode::fn_frost_kalkwarf, D::frost_kalkwarf, store_p},
    {Mode::fn_wagner, D::wagner, store_p},
    {Mode::fn_antoine_low, D::antoine_low, store_p},
    {Mode::fn_antoine_high, D::antoine_high, store_p},
    {Mode::empty, D::none, store_nothing},
    {Mode::fn_rhoS, D::rhoS, store_rhoS},
}};

const DatabaseMode& row_of(Mode mode) {
    for (const DatabaseMode& row : database_modes) {
        if (row.mode == mode) return row;
    }
    return database_modes[9];
}

void warn_outside(CalcRun& run, TLimits limits) {
    const double T = run.T();
    if (T >= limits.TLo - outside_allowed && T <= limits.THi + outside_allowed) return;
    run.warn({.kind = WarningKind::function_range,
              .value = T,
              .low = static_cast<double>(limits.TLo),
              .high = static_cast<double>(limits.THi),
              .offset = outside_by(T, limits.TLo, limits.THi)});
}

}  // namespace

void mode_database(CalcRun& run) {
    if (!take_T(run)) return;
    const DatabaseMode& row = row_of(run.mode());
    const DatabaseLimits limits = database_limits(run.fluid, row.function);
    run.out.limits = {.TLo = to_i16(limits.TLo), .THi = to_i16(limits.THi)};
    warn_outside(run, run.out.limits);
    const DatabaseValue found = database_value(run.fluid, row.function, run.T());
    if (!found.found()) return run.fail(found.reason, run.T());
    row.store(run.out, found.value, run.T());
}

}  // namespace quom

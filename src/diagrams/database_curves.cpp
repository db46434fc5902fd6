// Equations of the substance record over T.
#include <algorithm>
#include <array>

#include "diagrams/curve_run.h"
#include "engine/database_functions.h"

namespace quom {
namespace {

struct DatabaseCurve {
    Kind kind;
    DatabaseFunction function;
};
using D = DatabaseFunction;
constexpr auto curves = std::to_array<DatabaseCurve>({
    {Kind::db_rhoL, D::rhoL},
    {Kind::db_vL, D::rhoL},
    {Kind::db_rhoS, D::rhoS},
    {Kind::db_cpId_polynomial, D::cpId_polynomial},
    {Kind::db_cpId_sinh, D::cpId_sinh},
    {Kind::db_cpL, D::cpL},
    {Kind::db_cpS, D::cpS},
    {Kind::db_hLV, D::hLV},
    {Kind::db_frost_kalkwarf, D::frost_kalkwarf},
    {Kind::db_wagner, D::wagner},
    {Kind::db_antoine_low, D::antoine_low},
    {Kind::db_antoine_high, D::antoine_high},
    {Kind::db_august, D::august},
    {Kind::db_kfw, D::kfw},
    {Kind::db_kfr, D::kfr},
    {Kind::db_thompson, D::thompson},
});

// What tells that the record does not have the equation at all.
constexpr auto no_equation_of_record =
    std::to_array({Reason::no_database_equation, Reason::no_ideal_gas_cp, Reason::no_hlv_data,
                   Reason::no_vapor_pressure_equation});

DatabaseFunction function_of(Kind kind) {
    for (const DatabaseCurve& curve : curves)
        if (curve.kind == kind) return curve.function;
    return D::none;
}

// Of the value of an equation in molar units, by the axis.
double displayed(const CurveRun& run, double value, double T) {
    switch (run.kind.y) {
        case AxisQuantity::rho:
            return value;
        case AxisQuantity::v:
            return run.M / value * run.f.vFactor;
        case AxisQuantity::p:
            return value * run.f.pFactor;
        default:
            return value * run.uFactor_at(T);
    }
}

}  // namespace

void curve_database(CurveRun& run) {
    const DatabaseFunction function = function_of(run.kind.kind);
    const DatabaseLimits limits = database_limits(run.fluid, function);
    run.out.DBTMin = static_cast<float>(limits.TLo);
    run.out.DBTMax = static_cast<float>(limits.THi);
    Reason missing = Reason::none;
    for (const double x : scan_values(run.XMin, run.XMax, run.dx, 0.0, false, run.round_limit())) {
        const double T = x / run.f.TFactor;
        const DatabaseValue found = database_value(run.fluid, function, T);
        if (found.found()) {
            run.add(x, displayed(run, found.value, T), 0.0);
        } else {
            missing = found.reason;
        }
    }
    if (!run.out.curve.points.empty() || missing == Reason::none) return;
    const bool absent = std::ranges::find(no_equation_of_record, missing) != no_equation_of_record.end();
    run.out.Status = absent ? CurveStatus::failed : CurveStatus::outside;
    if (absent) run.out.Msg = reason_text(missing);
}

}  // namespace quom

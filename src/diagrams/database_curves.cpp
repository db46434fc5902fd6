// Equations of the substance record over T.
#include <algorithm>
#include <array>

#include "diagrams/curve_run.h"
#include "diagrams/database_kinds.h"

namespace quom {
namespace {

// What tells that the record does not have the equation at all.
constexpr auto no_equation_of_record =
    std::to_array({Reason::no_database_equation, Reason::no_ideal_gas_cp, Reason::no_hlv_data,
                   Reason::no_vapor_pressure_equation});

}  // namespace

void curve_database(CurveRun& run) {
    const DatabaseFunction function = database_function(run.kind.kind);
    const DatabaseLimits limits = database_limits(run.fluid, function);
    run.out.DBTMin = static_cast<float>(limits.TLo);
    run.out.DBTMax = static_cast<float>(limits.THi);
    Reason missing = Reason::none;
    for (const double x : scan_values(run.XMin, run.XMax, run.dx, 0.0, false, run.round_limit())) {
        const double T = x / run.f.TFactor;
        const DatabaseValue found = database_value(run.fluid, function, T);
        if (found.found()) {
            UnitFactors factors = run.f;
            factors.uFactor = run.uFactor_at(T);
            run.add(x, database_displayed(run.kind.kind, run.M, factors, found.value), 0.0);
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

#include "diagrams/chart_reference.h"

#include <array>

#include "diagrams/chart_states.h"

namespace quom {
namespace {

struct ReferenceRow {
    ChartReference reference;
    double T = 0;         // [K]; 0: of the substance
    double h = 0, s = 0;  // per kg
    std::string_view where;
};
const std::array reference_rows = {
    ReferenceRow{ChartReference::liquid_0C, 273.15, 200.0, 1.0, "0 °C"},
    ReferenceRow{ChartReference::liquid_minus_40C, 233.15, 0.0, 0.0, "\u221240 °C"},
    ReferenceRow{ChartReference::normal_boiling_point, 0.0, 0.0, 0.0, "101.325 kPa"},
    ReferenceRow{ChartReference::triple_point, 0.0, 0.0, 0.0, "the triple point"},
};

constexpr double BelowTriple = 0.05;  // [K]

SaturatedPair reference_state(const Fluid& fluid, const ReferenceRow& row) {
    if (row.reference == ChartReference::normal_boiling_point) return saturated_at_p(fluid, pNorm);
    const double Ttr = static_cast<double>(fluid.substance.Ttr);
    return saturated_at_T(fluid, row.T > 0.0 ? row.T : Ttr);
}

}  // namespace

ReferencedFluid with_reference(const Fluid& fluid, ChartReference reference) {
    ReferencedFluid r;
    for (const ReferenceRow& row : reference_rows) {
        if (row.reference != reference) continue;
        const std::string no_state =
            fluid.substance.StoffName + " has no saturated liquid at " + std::string(row.where);
        const double Ttr = static_cast<double>(fluid.substance.Ttr);
        if (row.reference == ChartReference::triple_point && !(Ttr > 0.0)) {
            r.fault = "The temperature of the triple point is not known.";
            return r;
        }
        const SaturatedPair pair = reference_state(fluid, row);
        const ChartState& L = pair.L;
        if (!pair.exists()) {
            r.fault = no_state + ".";
            return r;
        }
        if (L.T < Ttr - BelowTriple) {
            r.fault = no_state + ": that is below the triple point.";
            return r;
        }
        FluidInput input{.substance = fluid.substance,
                         .models = fluid.models,
                         .eos_input = fluid.eos_input,
                         .reference = fluid.reference};
        // u = 0 is h = p v
        const double h = row.reference == ChartReference::triple_point ? L.p * L.v : row.h * fluid.M;
        input.reference.hOffset += h - L.h;
        input.reference.sOffset += row.s * fluid.M - L.s;
        r.T = L.T;
        r.fluid = make_fluid(std::move(input));
        return r;
    }
    r.fluid = std::make_shared<const Fluid>(fluid);
    return r;
}

}  // namespace quom

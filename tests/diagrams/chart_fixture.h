// Substances and charts of the tests of state charts.
#pragma once
#include <array>
#include <string>

#include "diagrams/state_chart.h"
#include "support/starter.h"

namespace quom::test {

struct ChartSubstance {
    std::string_view name, cas;
};
// Among them overhanging domes (decane, SF6), quantum gases and triple lines inside the picture (CO2, SF6).
inline constexpr std::array chart_substances = {
    ChartSubstance{"propane", propane},    ChartSubstance{"water", water},
    ChartSubstance{"CO2", carbon_dioxide}, ChartSubstance{"R134a", "811-97-2"},
    ChartSubstance{"helium", helium},      ChartSubstance{"decane", decane},
    ChartSubstance{"ammonia", ammonia},    ChartSubstance{"hydrogen", hydrogen},
    ChartSubstance{"SF6", "2551-62-4"},    ChartSubstance{"ethanol", ethanol},
    ChartSubstance{"neon", "7440-01-9"},   ChartSubstance{"methane", methane},
    ChartSubstance{"toluene", "108-88-3"},
};
inline constexpr std::array chart_kinds = {ChartKind::log_ph, ChartKind::Ts, ChartKind::hs};
inline constexpr std::array<std::string_view, 3> chart_kind_names = {"log p-h", "T-s", "h-s"};

// Every substance in every chart, with the names of both. look(chart, name).
template <class Look>
void each_chart(const Look& look, const std::string& units = {}) {
    for (const ChartSubstance& row : chart_substances) {
        const auto fluid = starter_fluid(row.cas, Eos::peng_robinson);
        ChartOptions options;
        if (!units.empty()) options.units = parse_units(units, fluid->M);
        for (const ChartKind kind : chart_kinds) {
            const StateChart chart = make_state_chart(*fluid, kind, options);
            look(chart, std::string(row.name) + ", " +
                            std::string(chart_kind_names[static_cast<std::size_t>(kind)]));
        }
    }
}

inline double pixel_x(const StateChart& chart, double x) { return chart.x.place(x) * 1208.0; }
inline double pixel_y(const StateChart& chart, double y) { return chart.y.place(y) * 786.0; }

}  // namespace quom::test

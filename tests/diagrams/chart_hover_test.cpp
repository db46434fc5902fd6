// States from a point of a chart: the three inverse searches against states that are known.
#include "diagrams/chart_hover.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "chart_fixture.h"

namespace quom {
namespace {

using namespace test;

struct Search {
    const Fluid& fluid;
    SaturationNodes nodes;
    HoverStarts starts;
    ChartState found(ChartKind kind, const ChartState& state) const {
        switch (kind) {
            case ChartKind::log_ph:
                return state_at_p(fluid, state.p, GivenAtP::h, state.h);
            case ChartKind::Ts:
                return state_at_Ts(fluid, state.T, state.s);
            case ChartKind::hs:
                break;
        }
        return state_at_hs(fluid, nodes, starts, state.h, state.s);
    }
};

// Agreement of two states: T and v relative. At the critical point, where (dp/dv)_T is 0, h and s leave v
// open.
double difference(const ChartState& a, const ChartState& b) {
    if (!a.exists()) return HUGE_VAL;
    return std::max(std::fabs(a.T / b.T - 1.0), std::fabs(a.v / b.v - 1.0));
}

// Random states from the lowest T to 1.6 T(cr) and 4 p(cr), every third in two phases.
TEST(ChartHover, RandomStatesComeBack) {
    constexpr int States = 2000;
    for (const ChartSubstance& row : chart_substances) {
        const auto fluid = starter_fluid(row.cas, Eos::peng_robinson);
        const StateChart chart = make_state_chart(*fluid, ChartKind::hs);
        const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr, T0 = chart.span.T_low;
        const Search search{*fluid, chart.nodes,
                            hover_starts(*fluid, chart.nodes, 1.6 * Tcr, chart.span.p_low, 4.0 * pcr)};
        std::mt19937 random(7);
        const auto uniform = [&](double low, double high) {
            return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
        };
        int failed[3] = {0, 0, 0}, off[3] = {0, 0, 0};
        for (int i = 0; i < States; ++i) {
            ChartState state;
            if (i % 3 == 0) {
                state = mixed(saturated_at_T(*fluid, uniform(1.001 * T0, 0.999 * Tcr)), uniform(0.0, 1.0));
            } else {
                const double ln_p = uniform(std::log(chart.span.p_low), std::log(4.0 * pcr));
                state = stable_state(*fluid, uniform(1.001 * T0, 1.6 * Tcr), std::exp(ln_p));
            }
            ASSERT_TRUE(state.exists()) << row.name;
            for (const ChartKind kind : chart_kinds) {
                const auto k = static_cast<std::size_t>(kind);
                const ChartState back = search.found(kind, state);
                failed[k] += !back.exists();
                off[k] += back.exists() && difference(back, state) > 3e-4;
            }
        }
        EXPECT_EQ(failed[0] + off[0], 0)
            << row.name << " p, h: " << failed[0] << " failed, " << off[0] << " off";
        EXPECT_EQ(failed[1] + off[1], 0)
            << row.name << " T, s: " << failed[1] << " failed, " << off[1] << " off";
        EXPECT_LE(failed[2] + off[2], 1)
            << row.name << " h, s: " << failed[2] << " failed, " << off[2] << " off";
    }
}

// The pointer on a line of a chart shows the state of the line.
TEST(ChartHover, StatesOfLinesComeBack) {
    each_chart([](const StateChart& chart, const std::string& name) {
        int looked = 0, off = 0;
        for (const ChartLine& line : chart.lines) {
            for (std::size_t i = 0; i < line.states.size(); i += 5) {
                const ChartState& state = line.states[i];
                if (!state.exists() || state.T < 1.0001 * chart.span.T_low) continue;
                const double x = chart.shown(state, chart.x.quantity),
                             y = chart.shown(state, chart.y.quantity);
                if (x < chart.x.low || x > chart.x.high || y < chart.y.low || y > chart.y.high) continue;
                ++looked;
                const ChartState back = state_at(chart, x, y);
                // Near the critical point v moves by the root of what is left of h and s.
                const double near =
                    std::hypot(state.T / chart.critical.T - 1.0, state.p / chart.critical.p - 1.0);
                const double limit = near < 1e-3 ? 0.02 : near < 0.02 ? 1e-3 : 1e-5;
                if (difference(back, state) <= limit) continue;
                ++off;
                ADD_FAILURE() << name << ": " << line.long_label << ", T " << state.T << " p " << state.p
                              << " x " << state.x << ", back T " << back.T << " p " << back.p << " x "
                              << back.x;
                if (off > 3) return;
            }
        }
        EXPECT_GT(looked, 300) << name;
    });
}

TEST(ChartHover, NothingOutsideTheDrawnArea) {
    const auto fluid = starter_fluid(water, Eos::peng_robinson);
    const StateChart ph = make_state_chart(*fluid, ChartKind::log_ph);
    // Left of the liquid at T(tr), and ice.
    EXPECT_FALSE(state_at(ph, ph.x.low - 200.0, 1000.0).exists());
    const StateChart Ts = make_state_chart(*fluid, ChartKind::Ts);
    EXPECT_FALSE(state_at(Ts, -1.0, 272.0).exists());
    EXPECT_TRUE(state_at(Ts, -1.0, 274.0).exists());
    const StateChart hs = make_state_chart(*fluid, ChartKind::hs);
    EXPECT_FALSE(state_at(hs, hs.x.high, hs.y.low).exists());
    for (const StateChart* chart : {&ph, &Ts, &hs}) {
        EXPECT_FALSE(state_at(*chart, NAN, 300.0).exists());
        EXPECT_FALSE(state_at(*chart, HUGE_VAL, HUGE_VAL).exists());
        EXPECT_FALSE(state_at(*chart, 1e30, -1e30).exists());
    }
}

}  // namespace
}  // namespace quom

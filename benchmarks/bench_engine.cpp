// Speed of the engine for propane, Peng/Robinson, on one thread, and beside each figure the same work by
// hand-written code for this one fluid (yardstick.h). Counts of instructions: benchmarks/README.md tells how.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "../tests/support/starter.h"
#include "engine/iso_search.h"
#include "engine/saturation.h"
#include "engine/state_columns.h"
#include "engine/state_kernel.h"
#include "engine/thermo_functions.h"
#include "yardstick.h"

namespace {

using namespace quom;

const Fluid& propane() {
    static const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    return *fluid;
}

// T/T(cr) 0.3 to 3, p 1 Pa to 300 MPa, evenly in T and ln p.
struct Sample {
    std::vector<double> T, p;
    explicit Sample(std::size_t n) : T(n), p(n) {
        double x = 0.5, y = 0.5;  // additive recurrence of Roberts (2018)
        for (std::size_t i = 0; i < n; ++i) {
            x = std::fmod(x + 0.754877666246693, 1.0);
            y = std::fmod(y + 0.569840290998053, 1.0);
            T[i] = 369.89 * (0.3 + 2.7 * x);
            p[i] = 1e-3 * std::exp(y * std::log(3e8));
        }
    }
};
constexpr std::size_t SampleSize = 4096;

void count(benchmark::State& state, std::size_t items) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(items));
}

// p, T -> stable phase, v and all functions, one call each.
void BM_single_state(benchmark::State& state) {
    const Sample sample(SampleSize);
    std::size_t i = 0;
    for (auto _ : state) {
        const double T = sample.T[i], p = sample.p[i];
        const VolumeResult r = VolumeTp(propane(), T, p);
        const StateFunctions f = ThermoState(propane(), T, p, r.VFlag ? r.vV : r.vL);
        benchmark::DoNotOptimize(f.h + f.s + f.cp);
        i = (i + 1) % SampleSize;
    }
    count(state, 1);
}
BENCHMARK(BM_single_state);

void BM_single_state_yardstick(benchmark::State& state) {
    const Sample sample(SampleSize);
    std::size_t i = 0;
    for (auto _ : state) {
        const yardstick::State f = yardstick::state(sample.T[i], sample.p[i]);
        benchmark::DoNotOptimize(f.h + f.s + f.cp);
        i = (i + 1) % SampleSize;
    }
    count(state, 1);
}
BENCHMARK(BM_single_state_yardstick);

// The kernel of an argument: 0 the plain loops, 1 those over vectors; null where there are none.
const StateKernel* kernel_of(benchmark::State& state) {
    const StateKernel* kernel = state.range(0) == 0 ? &portable_kernel() : simd_kernel();
    if (kernel == nullptr) {
        state.SkipWithError("no kernel over vectors");
    } else {
        state.SetLabel(kernel->name);
    }
    return kernel;
}

void BM_states_at(benchmark::State& state) {
    const StateKernel* kernel = kernel_of(state);
    const Sample sample(SampleSize);
    StateColumns columns;
    for (auto _ : state) {
        if (kernel == nullptr) break;
        states_at(*kernel, propane(), sample.T, sample.p, columns);
        benchmark::DoNotOptimize(columns.h.data());
    }
    count(state, SampleSize);
}
BENCHMARK(BM_states_at)->Arg(0)->Arg(1);

void BM_states_at_yardstick(benchmark::State& state) {
    const Sample sample(SampleSize);
    std::vector<yardstick::State> rows(SampleSize);
    for (auto _ : state) {
        yardstick::states(sample.T.data(), sample.p.data(), SampleSize, rows.data());
        benchmark::DoNotOptimize(rows.data());
    }
    count(state, SampleSize);
}
BENCHMARK(BM_states_at_yardstick);

// 500 pressures from 10 kPa to 190 MPa at 0.7 T(cr) and 1.3 T(cr).
std::vector<double> isotherm_pressures() {
    std::vector<double> p(500);
    for (std::size_t i = 0; i < p.size(); ++i) p[i] = 10.0 * std::pow(1.02, static_cast<double>(i));
    return p;
}
constexpr double isotherm_T[] = {0.7 * 369.89, 1.3 * 369.89};

void BM_isotherm_500(benchmark::State& state) {
    const StateKernel* kernel = kernel_of(state);
    const std::vector<double> p = isotherm_pressures();
    StateColumns columns;
    for (auto _ : state) {
        if (kernel == nullptr) break;
        states_on(*make_isotherm(*kernel, propane(), isotherm_T[state.range(1)]), p, columns);
        benchmark::DoNotOptimize(columns.h.data());
    }
    count(state, p.size());
}
BENCHMARK(BM_isotherm_500)->ArgsProduct({{0, 1}, {0, 1}});

void BM_isotherm_500_yardstick(benchmark::State& state) {
    const std::vector<double> p = isotherm_pressures();
    std::vector<yardstick::State> rows(p.size());
    for (auto _ : state) {
        yardstick::isotherm(isotherm_T[state.range(0)], p.data(), p.size(), rows.data());
        benchmark::DoNotOptimize(rows.data());
    }
    count(state, p.size());
}
BENCHMARK(BM_isotherm_500_yardstick)->Arg(0)->Arg(1);

// 200 temperatures by 200 pressures, 200 to 598 K, 50 to 10 000 kPa.
struct Grid {
    std::vector<double> T, p;
    Grid() {
        for (int j = 0; j < 200; ++j) {
            for (int i = 0; i < 200; ++i) {
                T.push_back(200.0 + 2.0 * i);
                p.push_back(50.0 * (1 + j));
            }
        }
    }
};

void BM_grid_200x200(benchmark::State& state) {
    const StateKernel* kernel = kernel_of(state);
    const Grid grid;
    StateColumns columns;
    for (auto _ : state) {
        if (kernel == nullptr) break;
        states_at(*kernel, propane(), grid.T, grid.p, columns);
        benchmark::DoNotOptimize(columns.h.data());
    }
    count(state, grid.T.size());
}
BENCHMARK(BM_grid_200x200)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_grid_200x200_yardstick(benchmark::State& state) {
    const Grid grid;
    std::vector<yardstick::State> rows(grid.T.size());
    for (auto _ : state) {
        yardstick::states(grid.T.data(), grid.p.data(), rows.size(), rows.data());
        benchmark::DoNotOptimize(rows.data());
    }
    count(state, grid.T.size());
}
BENCHMARK(BM_grid_200x200_yardstick)->Unit(benchmark::kMillisecond);

// Both phases of a saturated state with all functions, 1000 temperatures.
void BM_saturation_at(benchmark::State& state) {
    std::vector<double> T(1000);
    for (std::size_t i = 0; i < T.size(); ++i) T[i] = 200.0 + 0.16 * static_cast<double>(i);
    SaturationColumns columns;
    for (auto _ : state) {
        saturation_at(propane(), T, columns);
        benchmark::DoNotOptimize(columns.p.data());
    }
    count(state, T.size());
}
BENCHMARK(BM_saturation_at);

// T -> p(LV), T/T(cr) 0.54 to 0.97; p -> T(LV), 1 to 4000 kPa.
double T_of(int i) { return 200.0 + 0.16 * (i % 1000); }
double p_of(int i) { return std::exp(8.29 * (i % 1000) / 1000.0); }

template <class Function>
void run_each(benchmark::State& state, Function function) {
    int i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(function(i++));
    count(state, 1);
}
void BM_pLV(benchmark::State& state) {
    run_each(state, [](int i) { return pLV_EOS(propane(), T_of(i)).p; });
}
BENCHMARK(BM_pLV);
void BM_pLV_yardstick(benchmark::State& state) {
    run_each(state, [](int i) { return yardstick::vapor_pressure(T_of(i)); });
}
BENCHMARK(BM_pLV_yardstick);
void BM_TLV(benchmark::State& state) {
    run_each(state, [](int i) { return TLV_EOS(propane(), p_of(i)).T; });
}
BENCHMARK(BM_TLV);
void BM_TLV_yardstick(benchmark::State& state) {
    run_each(state, [](int i) { return yardstick::boiling_temperature(p_of(i)); });
}
BENCHMARK(BM_TLV_yardstick);

// p, h -> T and p, s -> T of the vapor from a start 5 % off.
struct Targets {
    std::vector<double> T, p, h, s;
    Targets() {
        for (int i = 0; i < 200; ++i) {
            T.push_back(380.0 + i);
            p.push_back(100.0 + 15.0 * i);
            const yardstick::State at = yardstick::state(T.back(), p.back());
            h.push_back(at.h);
            s.push_back(at.s);
        }
    }
};

void search(benchmark::State& state, IsoFunction function) {
    const Targets targets;
    std::size_t i = 0;
    for (auto _ : state) {
        const double target = function == iso_h ? targets.h[i] : targets.s[i];
        const IsoResult r = IsoSearch(propane(), {.What = iso_find_T,
                                                  .Column = function,
                                                  .Target = target,
                                                  .phase = phase_V,
                                                  .given = targets.p[i],
                                                  .start = 1.05 * targets.T[i]});
        if (std::fabs(r.value / targets.T[i] - 1.0) > 1e-6) state.SkipWithError("another T");
        i = (i + 1) % targets.T.size();
    }
    count(state, 1);
}
void BM_ph_search(benchmark::State& state) { search(state, iso_h); }
BENCHMARK(BM_ph_search);
void BM_ps_search(benchmark::State& state) { search(state, iso_s); }
BENCHMARK(BM_ps_search);

// p, eH -> T: with range(0) 1 every solution, with 0 the one that Newton finds.
void BM_p_exergy_search(benchmark::State& state) {
    const Targets targets;
    std::vector<double> eH;
    for (std::size_t i = 0; i < targets.T.size(); ++i) {
        const double T = targets.T[i], p = targets.p[i];
        eH.push_back(ThermoState(propane(), T, p, VolumeTp(propane(), T, p).vV).eH);
    }
    std::size_t i = 0;
    for (auto _ : state) {
        const IsoResult r = IsoSearch(propane(), {.What = iso_find_T,
                                                  .Column = iso_eH,
                                                  .Target = eH[i],
                                                  .phase = phase_V,
                                                  .given = targets.p[i],
                                                  .start = 1.05 * targets.T[i],
                                                  .all = state.range(0) != 0});
        if (std::fabs(r.value / targets.T[i] - 1.0) > 1e-6) state.SkipWithError("another T");
        i = (i + 1) % eH.size();
    }
    count(state, 1);
}
BENCHMARK(BM_p_exergy_search)->Arg(0)->Arg(1);

void BM_ph_search_yardstick(benchmark::State& state) {
    const Targets t;
    run_each(state, [&](int i) {
        const auto k = static_cast<std::size_t>(i) % t.T.size();
        return yardstick::T_of_h(t.p[k], t.h[k], 1.05 * t.T[k]);
    });
}
BENCHMARK(BM_ph_search_yardstick);
void BM_ps_search_yardstick(benchmark::State& state) {
    const Targets t;
    run_each(state, [&](int i) {
        const auto k = static_cast<std::size_t>(i) % t.T.size();
        return yardstick::T_of_s(t.p[k], t.s[k], 1.05 * t.T[k]);
    });
}
BENCHMARK(BM_ps_search_yardstick);

// The yardstick does the same work: its numbers are the engine's.
bool yardstick_agrees() {
    const Sample sample(500);
    StateColumns columns;
    states_at(propane(), sample.T, sample.p, columns);
    bool good = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const yardstick::State y = yardstick::state(sample.T[i], sample.p[i]);
        const double scale = RGas * sample.T[i] + sample.p[i] * y.v;
        good = good && std::fabs(y.h - columns.h[i]) < 1e-6 * scale &&
               std::fabs(y.cp - columns.cp[i]) < 1e-5 * y.cp && std::fabs(y.w - columns.w[i]) < 1e-5 * y.w;
    }
    for (int i = 0; i < 1000; i += 50) {
        good = good &&
               std::fabs(yardstick::vapor_pressure(T_of(i)) / pLV_EOS(propane(), T_of(i)).p - 1.0) < 1e-6;
        good = good && std::fabs(yardstick::boiling_temperature(p_of(i)) / TLV_EOS(propane(), p_of(i)).T -
                                 1.0) < 1e-6;
    }
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!yardstick_agrees()) {
        std::fprintf(stderr, "The yardstick and the engine give different numbers.\n");
        return EXIT_FAILURE;
    }
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}

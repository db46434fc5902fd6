// Speed of saturation for propane on one thread: T -> p(LV) from Tr 0.45 to 0.9999, p -> T(LV) from 1e-7
// p(cr) to 0.9999 p(cr), both with volumes; what a fluid costs for it once.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "../tests/support/starter.h"
#include "engine/reduced_saturation.h"
#include "engine/saturation.h"

namespace {

using namespace quom;

constexpr int States = 1024;

// Numbers from low to high in an order that jumps.
std::vector<double> spread(double low, double high) {
    std::vector<double> values(States);
    for (std::size_t i = 0; i < States; ++i) {
        values[i] = low + (high - low) * static_cast<double>(i * 389 % States) / (States - 1);
    }
    return values;
}

void BM_pLV(benchmark::State& state) {
    const auto fluid = test::starter_fluid(test::propane, eos_of(static_cast<int>(state.range(0))));
    std::vector<double> T = spread(0.45, 0.9999);
    for (double& x : T) x *= fluid->substance.Tcr;
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(pLV_EOS(*fluid, T[i++ % States]));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_pLV)->DenseRange(2, 6);

void BM_TLV(benchmark::State& state) {
    const auto fluid = test::starter_fluid(test::propane, eos_of(static_cast<int>(state.range(0))));
    std::vector<double> p = spread(std::log(1e-7), std::log(0.9999));
    for (double& x : p) x = fluid->substance.pcr * std::exp(x);
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(TLV_EOS(*fluid, p[i++ % States]));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_TLV)->DenseRange(2, 6);

// The boiling curve of a fluid, made with it.
void BM_BoilingCurve(benchmark::State& state) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    for (auto _ : state) benchmark::DoNotOptimize(boiling_curve_for(*fluid));
}
BENCHMARK(BM_BoilingCurve);

// The reduced curve of a shape, made with every fluid of codes 7 and 8.
void BM_ReducedCurve(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(make_saturation_table(-0.41, 2.41));
}
BENCHMARK(BM_ReducedCurve);

}  // namespace

BENCHMARK_MAIN();

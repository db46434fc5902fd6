// Speed of calculations, propane, Peng/Robinson, one thread, all functions of the state with exergies: the
// outcome alone, as sweeps take it, and with the result list made of it.
#include <benchmark/benchmark.h>

#include "../tests/support/starter.h"
#include "calc/outcome.h"
#include "report/result_list.h"

namespace {

using namespace quom;

const Fluid& propane() {
    static const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    return *fluid;
}

void count(benchmark::State& state) { state.SetItemsProcessed(state.iterations()); }

// Argument: the mode. 250 to 350 K and 100 to 4000 kPa, liquid and vapor in turn; densities in and beside the
// two-phase region.
void BM_outcome(benchmark::State& state) {
    StateInput input{.mode = mode_of(static_cast<int>(state.range(0)))};
    int i = 0;
    for (auto _ : state) {
        input.T = 250.0 + 0.1 * (i % 1000);
        input.p = 100.0 + 5.0 * (i % 777);
        input.rho = 1 + i % 500;
        benchmark::DoNotOptimize(CalcBatch(propane(), input));
        ++i;
    }
    count(state);
}
BENCHMARK(BM_outcome)->Arg(1)->Arg(3)->Arg(4)->Arg(5)->Arg(8)->Arg(13);

// 300 K, 500 kPa or 100 kg/m^3, which is two-phase.
StateInput one_point(benchmark::State& state) {
    return {.mode = mode_of(static_cast<int>(state.range(0))), .T = 300.0, .p = 500.0, .rho = 100.0};
}
const ListSettings settings{.units = {}, .setup = {}, .ShowFunctions = true};

void BM_outcome_with_list(benchmark::State& state) {
    const StateInput input = one_point(state);
    for (auto _ : state) {
        const Outcome outcome = CalcBatch(propane(), input);
        benchmark::DoNotOptimize(list_text(make_result_list(propane(), outcome, settings)));
    }
    count(state);
}
BENCHMARK(BM_outcome_with_list)->Arg(1)->Arg(3)->Arg(8);

// The list of an outcome that is there already.
void BM_result_list(benchmark::State& state) {
    const Outcome outcome = CalcBatch(propane(), one_point(state));
    for (auto _ : state) benchmark::DoNotOptimize(make_result_list(propane(), outcome, settings));
    count(state);
}
BENCHMARK(BM_result_list)->Arg(1)->Arg(3)->Arg(4)->Arg(8);

}  // namespace

BENCHMARK_MAIN();

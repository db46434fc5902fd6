// Speed of quiet calculations without texts, as long sweeps run them: propane, Peng/Robinson, one thread.
#include <benchmark/benchmark.h>

#include "../tests/support/starter.h"
#include "calc/calc_batch.h"

namespace {

using namespace quom;

// Argument: the mode; all functions of the state are asked for.
void BM_quiet_calculation(benchmark::State& state) {
    Session s = test::substance_session(test::propane, eos_peng_robinson);
    s.calc.ShowFunctions = true;
    const CalcRequest request{.Mode = static_cast<int>(state.range(0)), .Quiet = true, .want_text = false};
    int i = 0;
    for (auto _ : state) {
        // 250 to 350 K and 100 to 4000 kPa, liquid and vapor in turn; densities in and beside the two-phase
        // region
        s.exp.points[0] = {.T = 250.0 + 0.1 * (i % 1000), .p = 100.0 + 5.0 * (i % 777)};
        s.exp.points[0].rhoV = s.exp.points[0].rhoL = static_cast<float>(1 + i % 500);
        benchmark::DoNotOptimize(CalcBatch(s, request).Result[slot_hV]);
        ++i;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_quiet_calculation)->Arg(1)->Arg(3)->Arg(4)->Arg(5)->Arg(8)->Arg(13);

void BM_calculation_with_texts(benchmark::State& state) {
    Session s = test::substance_session(test::propane, eos_peng_robinson);
    s.calc.ShowFunctions = true;
    s.exp.points[0] = {.T = 300.0, .p = 500.0, .rhoV = 100.0f, .rhoL = 100.0f};
    for (auto _ : state) {
        benchmark::DoNotOptimize(CalcBatch(s, {.Mode = static_cast<int>(state.range(0))}).list.size());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_calculation_with_texts)->Arg(1)->Arg(3)->Arg(8);

}  // namespace

BENCHMARK_MAIN();

// Speed of the engine for propane with codes 4, 5, 6 on one thread: p,T -> phase, v and functions;
// T -> p(LV); p -> T(LV).
#include <benchmark/benchmark.h>

#include <cmath>

#include "../tests/support/starter.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

namespace {

using namespace quom;

// States over 250 to 550 K and 100 to 7900 kPa, liquid, vapor and supercritical in turn.
double T_of(int i) { return 250.0 + 0.3 * (i % 1000); }
double p_of(int i) { return 100.0 + 10.0 * (i % 777); }

// p,T -> phase, v, h, s, cp (and u, g, a, cV, w, ln phi with them).
void BM_pT_state(benchmark::State& state) {
    Session s = test::substance_session(test::propane, static_cast<int>(state.range(0)));
    int i = 0;
    for (auto _ : state) {
        const double T = T_of(i), p = p_of(i);
        const VolumeResult r = VolumeTp(s, T, p);
        PhaseArrays arrays;
        const StateFunctions f =
            phase_functions(s, r.VFlag ? phase_V : phase_L, T, p, r.VFlag ? r.vV : r.vL, arrays);
        benchmark::DoNotOptimize(f.h + f.s + f.cp);
        ++i;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_pT_state)->Arg(4)->Arg(5)->Arg(6);

// The same with the exergies, and the scratch left with the saturation of T.
void BM_pT_all_functions(benchmark::State& state) {
    Session s = test::substance_session(test::propane, static_cast<int>(state.range(0)));
    int i = 0;
    for (auto _ : state) {
        const double T = T_of(i), p = p_of(i);
        const VolumeResult r = VolumeTp(s, T, p);
        const StateFunctions f = ThermoState(s, T, p, r.VFlag ? r.vV : r.vL, r.VFlag ? phase_V : phase_L);
        benchmark::DoNotOptimize(f.eH + f.h);
        ++i;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_pT_all_functions)->Arg(4)->Arg(5)->Arg(6);

// T -> p(LV), T/Tcr 0.54 to 0.97; second argument 0: without a vapor pressure equation as start.
void BM_pLV(benchmark::State& state) {
    Session s = test::substance_session(test::propane, static_cast<int>(state.range(0)));
    if (state.range(1) == 0) s.models.EVPKode = 0;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(pLV_EOS(s, 200.0 + 0.16 * (i++ % 1000)).value);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_pLV)->ArgsProduct({{4, 5, 6}, {1, 0}});

// p -> T(LV), 100 to 4100 kPa.
void BM_TLV(benchmark::State& state) {
    Session s = test::substance_session(test::propane, static_cast<int>(state.range(0)));
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(TLV_EOS(s, 100.0 + 4.0 * (i++ % 1000)).value);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_TLV)->Arg(4)->Arg(5)->Arg(6);

}  // namespace

BENCHMARK_MAIN();

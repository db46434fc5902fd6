// Opening the starter database with its list of substances, choosing a substance, finding one by a synonym.
#include <benchmark/benchmark.h>

#include "substance/database.h"
#include "substance/search.h"

namespace {

using namespace quom;

Session session() {
    Session s;
    s.database.ProgramPath = QUOM_STARTER_DATA;
    return s;
}

void BM_open(benchmark::State& state) {
    Session s = session();
    for (auto _ : state) {
        if (LoadDatabase(s, 7, "quom.q07").err) state.SkipWithError("no starter database");
    }
    state.counters["substances"] = s.database.file.StoffAnzahl();
}
BENCHMARK(BM_open);

void BM_select(benchmark::State& state) {
    Session s = session();
    LoadDatabase(s, 7, "quom.q07");
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(SelectSubstance(s, 1 + i++ % s.database.file.StoffAnzahl()));
}
BENCHMARK(BM_select);

void BM_find_synonym(benchmark::State& state) {
    Session s = session();
    LoadDatabase(s, 7, "quom.q07");
    for (auto _ : state) benchmark::DoNotOptimize(FindSubstance(s, "Stearinsäuremethylester").index);
}
BENCHMARK(BM_find_synonym);

}  // namespace

BENCHMARK_MAIN();

// Opening the starter database with its list of substances, reading a substance, choosing it with its fluid,
// finding one by a synonym.
#include <benchmark/benchmark.h>

#include "../tests/support/starter.h"
#include "session/start_up.h"
#include "substance/search.h"

namespace {

using namespace quom;

void BM_open(benchmark::State& state) {
    int substances = 0;
    for (auto _ : state) substances = test::starter_database().StoffAnzahl();
    state.counters["substances"] = substances;
}
BENCHMARK(BM_open);

void BM_unpack(benchmark::State& state) {
    const DatabaseFile file = test::starter_database();
    int i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(unpack_substance(file, 1 + i++ % file.StoffAnzahl(), true));
}
BENCHMARK(BM_unpack);

// The substance becomes the one of a session, with a fluid of the models that the session has. Argument: the
// equation of state among them.
void BM_select(benchmark::State& state) {
    Session session;
    session.ProgramPath = QUOM_STARTER_DATA;
    if (LoadDatabase(session, 7, "quom.q07").err != 0) state.SkipWithError("no starter database");
    session.document.models.EOSKode = eos_of(static_cast<int>(state.range(0)));
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(SelectSubstance(session, 1 + i++ % session.database.StoffAnzahl()));
}
BENCHMARK(BM_select)->Arg(number_of(Eos::none))->Arg(number_of(Eos::peng_robinson));

// A fluid of constants that are there already.
void BM_make_fluid(benchmark::State& state) {
    const SubstanceConstants substance = test::starter_substance(test::propane);
    const ModelSelection models = test::proposed_models(substance, Eos::peng_robinson);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = {}}));
}
BENCHMARK(BM_make_fluid);

void BM_find_synonym(benchmark::State& state) {
    const DatabaseFile file = test::starter_database();
    for (auto _ : state)
        benchmark::DoNotOptimize(FindSubstance(file, QUOM_STARTER_DATA, "Stearinsäuremethylester").index);
    if (!FindSubstance(file, QUOM_STARTER_DATA, "Stearinsäuremethylester").found)
        state.SkipWithError("no such synonym");
}
BENCHMARK(BM_find_synonym);

}  // namespace

BENCHMARK_MAIN();

// Speed of a fit of every model to 1,000 measured points, from the start values of the catalogue and from
// such as are estimated from the points.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "../tests/fitting/known_fits.h"
#include "fitting/start_values.h"

namespace {

using namespace quom;

void fit_of_1000_points(benchmark::State& state, const test::KnownFit& known, bool estimate) {
    FitInput input;
    input.model = known.model;
    input.constants = known.constants;
    input.UseLnFit = fit_model(known.model).quantity == FitQuantity::vapor_pressure;
    std::mt19937 engine(1);
    std::normal_distribution<double> noise(0, 1e-4);
    for (int i = 0; i < 1000; ++i) {
        const double x = known.from + (known.to - known.from) * i / 999;
        input.points.push_back({x, fitted_value(input, known.par, x).value() * std::exp(noise(engine))});
    }
    int iterations = 0;
    bool converged = true;
    for (auto _ : state) {
        if (estimate) input.start = estimate_start(input).value_or(std::vector<double>{});
        const FitResult result = fit(input);
        iterations = result.iterations;
        converged = result.end == FitEnd::converged;
        benchmark::DoNotOptimize(result.SS);
    }
    state.counters["iterations"] = iterations;
    if (!converged) state.SetLabel("limit");
}

const bool registered = [] {
    for (const test::KnownFit& known : test::known_fits())
        for (const bool estimate : {false, true}) {
            const std::string name = std::string(fit_model(known.model).name) + ", " + known.name +
                                     (estimate ? " / estimated start" : " / start of the catalogue");
            benchmark::RegisterBenchmark(name.c_str(), [known, estimate](benchmark::State& state) {
                fit_of_1000_points(state, known, estimate);
            })->Unit(benchmark::kMillisecond);
        }
    return true;
}();

}  // namespace

BENCHMARK_MAIN();

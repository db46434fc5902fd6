// Speed of the curve generator for propane, Peng/Robinson, on one thread: 500 points over the span of an
// axis.
#include <benchmark/benchmark.h>

#include <vector>

#include "../tests/support/starter.h"
#include "diagrams/curve_generator.h"

namespace {

using namespace quom;

const Fluid& propane() {
    static const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    return *fluid;
}
double Tcr() { return propane().substance.Tcr; }
double pcr() { return propane().substance.pcr; }
double vcr() { return propane().eos.vcrEOS; }

// T 0.5 to 1.3 T(cr), p to 1.5 p(cr), v to 7 v(cr); the inversion curve reaches to 6 T(cr) and 15 p(cr).
CurveRange range_of(const KindInfo& kind) {
    const bool inversion = kind.section == Section::inversion;
    const auto span = [&](AxisQuantity q) -> std::pair<double, double> {
        switch (q) {
            case AxisQuantity::T:
                return {0.5 * Tcr(), (inversion ? 6.0 : 1.3) * Tcr()};
            case AxisQuantity::p:
                return {0.0, (inversion ? 15.0 : 1.5) * pcr()};
            case AxisQuantity::v:
                return {0.0, 7.0 * vcr()};
            case AxisQuantity::rho:
                return {0.0, 3.5 * propane().M / vcr()};
            case AxisQuantity::pv:
                return {0.0, (inversion ? 6.0 : 1.5) * RGas * Tcr()};
            default:
                return {-2e5, 2e5};
        }
    };
    const auto [x1, x2] = span(kind.x);
    const auto [y1, y2] = span(kind.y);
    return {static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2)};
}

CurveInput input_of(Kind kind) {
    CurveInput in;
    in.kind = kind;
    in.range = range_of(kind_info(kind));
    in.process.From = 0.02 * pcr();
    in.process.To = 1.2 * pcr();
    return in;
}

void run(benchmark::State& state, const CurveInput& in) {
    std::size_t points = 0;
    for (auto _ : state) {
        const CurveResult result = CalcCurve(propane(), in);
        points = result.curve.points.size();
        benchmark::DoNotOptimize(result.curve.points.data());
    }
    state.SetLabel("kind " + std::to_string(static_cast<int>(in.kind)) + ", " + std::to_string(points) +
                   " points");
    if (points == 0) state.SkipWithError("no point");
}

// Below and above the critical temperature.
void BM_isotherm(benchmark::State& state) {
    CurveInput in = input_of(static_cast<Kind>(state.range(0)));
    in.T = (state.range(1) == 0 ? 0.85 : 1.15) * Tcr();
    run(state, in);
}
BENCHMARK(BM_isotherm)->ArgsProduct({{1, 2, 26, 150, 153, 154, 157, 41}, {0, 1}});

void BM_isobar(benchmark::State& state) {
    CurveInput in = input_of(static_cast<Kind>(state.range(0)));
    in.p = (state.range(1) == 0 ? 0.5 : 1.4) * pcr();
    run(state, in);
}
BENCHMARK(BM_isobar)->ArgsProduct({{3, 4, 15, 16, 18, 19, 31, 34}, {0, 1}});

void BM_isochore(benchmark::State& state) {
    CurveInput in = input_of(static_cast<Kind>(state.range(0)));
    in.v = (state.range(1) == 0 ? 0.5 : 3.0) * vcr();
    run(state, in);
}
BENCHMARK(BM_isochore)->ArgsProduct({{5, 180, 183, 185}, {0, 1}});

void BM_pairs(benchmark::State& state) {
    CurveInput in = input_of(static_cast<Kind>(state.range(0)));
    in.T = 0.9 * Tcr();
    in.p = 0.5 * pcr();
    if (kind_info(in.kind).section == Section::isobaric) {
        in.process.From = 0.55 * Tcr();
        in.process.To = 1.2 * Tcr();
    }
    run(state, in);
}
BENCHMARK(BM_pairs)->Arg(107)->Arg(24);

void BM_coexistence(benchmark::State& state) { run(state, input_of(static_cast<Kind>(state.range(0)))); }
BENCHMARK(BM_coexistence)->ArgsProduct({{6,  7,  8,  9,  12, 27, 106, 80, 70,  72, 74,
                                         88, 90, 92, 94, 89, 97, 101, 96, 120, 13}});

void BM_loop(benchmark::State& state) {
    CurveInput in = input_of(static_cast<Kind>(state.range(0)));
    in.T = 0.9 * Tcr();
    in.p = 0.5 * pcr();
    in.SCurve = true;
    run(state, in);
}
BENCHMARK(BM_loop)->ArgsProduct({{148, 149, 150, 151, 152, 153, 154, 155, 2, 26, 3, 15, 19, 157}});

void BM_inversion(benchmark::State& state) { run(state, input_of(static_cast<Kind>(state.range(0)))); }
BENCHMARK(BM_inversion)->Arg(105)->Arg(190);

// What a sheet draws anew while a value is slid: 24 isotherms from 0.7 to 1.4 T(cr), both branches of the
// coexistence curve, and a tie line of every isotherm below T(cr).
void BM_family(benchmark::State& state) {
    const auto kind = static_cast<Kind>(state.range(0));
    std::size_t points = 0;
    for (auto _ : state) {
        points = 0;
        const auto add = [&](const CurveInput& in) {
            const CurveResult result = CalcCurve(propane(), in);
            points += result.curve.points.size();
            benchmark::DoNotOptimize(result.curve.points.data());
        };
        CurveInput in = input_of(kind);
        for (int i = 0; i < 24; ++i) {
            in.T = (0.7 + 0.7 * i / 23.0) * Tcr();
            in.TieLine = false;
            add(in);
            in.TieLine = true;
            if (in.T < Tcr()) add(in);
        }
        CurveInput dome = in;
        dome.TieLine = false;
        dome.kind = kind_info(kind).boundary;
        for (const double fraction : {0.0, 1.0}) {
            dome.VaporFraction = fraction;
            add(dome);
        }
    }
    state.SetLabel("kind " + std::to_string(static_cast<int>(kind)) + ", " + std::to_string(points) +
                   " points");
}
BENCHMARK(BM_family)->Arg(1)->Arg(2)->Arg(150);

}  // namespace

BENCHMARK_MAIN();

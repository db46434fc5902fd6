// Calls with ranges, parameters, options and lines that no one would choose: each of them ends soon, and with
// points that can be drawn.
#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "diagrams/curve_support.h"

namespace quom {
namespace {

using test::Setting;

class RandomCalls {
 public:
    RandomCalls() : engine_(20260411u) {
        const std::array<std::string_view, 6> cas{test::propane, test::water,  test::methane,
                                                  test::helium,  test::decane, test::carbon_dioxide};
        const EosInput typed{.b0 = 0.05,
                             .b1 = 300.0,
                             .b2 = 1.3,
                             .JiP3 = 0.70,
                             .JiP4 = 0.10,
                             .JiP5 = 0.1,
                             .JiZc = 0.290,
                             .JiB1 = 0.3};
        for (const std::string_view each : cas) {
            const SubstanceConstants substance = test::starter_substance(each);
            for (const EosInfo& eos : eos_list())
                fluids_.push_back(test::starter_fluid(substance, eos.code, typed));
        }
        // Nothing but a name, and a substance without a critical point.
        fluids_.push_back(make_fluid({}));
        SubstanceConstants poor = test::starter_substance(test::propane);
        poor.Tcr = poor.pcr = poor.rhocrDB = poor.vcrDB = 0.0;
        fluids_.push_back(test::starter_fluid(poor, Eos::peng_robinson));
        for (std::size_t i = 0, n = fluids_.size(); i < n; i += 5) {
            ModelSelection partial = fluids_[i]->models;
            partial.Konzept = false;
            fluids_.push_back(with_models(*fluids_[i], partial));
        }
    }

    const Fluid& fluid() { return *fluids_[below(fluids_.size())]; }

    CurveInput input(const Fluid& fluid) {
        const auto kinds = kind_list();
        const Setting setting{"", std::shared_ptr<const Fluid>(std::shared_ptr<const Fluid>{}, &fluid),
                              units()};
        Kind kind = Kind::none, line = Kind::none;
        while (kind == Kind::none) {
            const KindInfo& row = kinds[below(kinds.size())];
            (row.family == CurveFamily::process_line ? line : kind) = row.kind;
        }
        CurveInput in = test::curve_input(setting, kind, static_cast<int>(10 + below(991)));
        in.line = line;
        if (chance(0.03)) in.options.Dens = static_cast<int>(below(20)) - 10;
        in.options.chkCurveTpRestricted = chance(0.7);
        in.options.chkSKurveOhneKonnode = chance(0.2);
        in.options.chkPartialKurve = chance(0.4);
        for (float* limit : {&in.range.XMin, &in.range.XMax, &in.range.YMin, &in.range.YMax}) {
            if (chance(0.25)) *limit *= static_cast<float>(4.0 * share());
            if (chance(0.08)) *limit = static_cast<float>(wild());
        }
        if (chance(0.05)) std::swap(in.range.XMin, in.range.XMax);
        if (chance(0.05)) std::swap(in.range.YMin, in.range.YMax);
        if (chance(0.05)) in.range.XMax = in.range.XMin;
        if (chance(0.05)) in.range.YMax = in.range.YMin;
        if (chance(0.05)) in.range.XMax = std::nextafter(in.range.XMin, 1e30f);
        if (chance(0.05)) in.range.YMax = std::nextafter(in.range.YMin, 1e30f);
        const SubstanceConstants& s = fluid.substance;
        in.T = parameter(s.Tcr, static_cast<double>(s.Ttr));
        in.p = parameter(s.pcr, static_cast<double>(s.ptr));
        in.v = parameter(setting.vcr(), fluid.eos.EOSb);
        in.VaporFraction = one_of({0.0, 1.0, 0.3, 0.5, share(), share(), -1.0, 2.0, wild()});
        in.SCurve = chance(0.25);
        in.TieLine = chance(0.08);
        in.isochore = {one_of({0.0, 0.9 * s.Tcr, in.T, wild()}), one_of({0.0, 0.5 * s.pcr, in.p, wild()}),
                       one_of({0.0, in.v, wild()})};
        process(in, s);
        return in;
    }

 private:
    Units units() {
        return {.EnergyMode = static_cast<int>(below(4)), .VolumeMode = static_cast<int>(below(3))};
    }
    void process(CurveInput& in, const SubstanceConstants& s) {
        ProcessRec& r = in.process;
        r.kind = static_cast<ProcessKind>(below(9));
        r.ScanT = chance(0.5);
        if (chance(0.6)) {
            const bool over_T = r.ScanT || chance(0.2);
            r.From = (0.3 + share()) * (over_T ? s.Tcr : s.pcr);
            r.To = (0.3 + share()) * (over_T ? s.Tcr : s.pcr);
        }
        r.T1 = parameter(s.Tcr, static_cast<double>(s.Ttr));
        r.p1 = parameter(s.pcr, static_cast<double>(s.ptr));
        r.T2 = parameter(s.Tcr, static_cast<double>(s.Ttr));
        r.p2 = parameter(s.pcr, static_cast<double>(s.ptr));
        if (chance(0.1)) r.From = wild();
        if (chance(0.1)) r.To = wild();
        r.phase = chance(0.5) ? phase_L : phase_V;
        r.Homogen = chance(0.7);
        r.UseIdealEOS = chance(0.1);
        r.nPoly = wild();
        r.kappa = wild();
        r.VaporFraction = in.VaporFraction;
    }
    // 0, at the critical or the lower point, between, far away, or no number.
    double parameter(double critical, double lower) {
        return one_of({critical * (0.3 + share()), critical * (0.3 + share()), critical * share(), critical,
                       critical * (1.0 - 1e-9), critical * (1.0 + 1e-9), lower, 0.9 * lower, 0.0, wild()});
    }
    double wild() {
        constexpr double huge = std::numeric_limits<double>::max(),
                         nan = std::numeric_limits<double>::quiet_NaN(),
                         infinite = std::numeric_limits<double>::infinity();
        return one_of({0.0, -0.0, -1.0, 1e30, -1e30, 1e-30, -1e-30, 1e38, 1e-45, 1.0, 1e6, -1e6, huge, -huge,
                       nan, infinite, -infinite, -100.0 * share()});
    }
    double share() { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }
    bool chance(double p) { return share() < p; }
    std::size_t below(std::size_t n) { return engine_() % n; }
    double one_of(std::initializer_list<double> values) { return *(values.begin() + below(values.size())); }

    std::mt19937 engine_;
    std::vector<std::shared_ptr<const Fluid>> fluids_;
};

std::string described(const Fluid& fluid, const CurveInput& in) {
    std::ostringstream text;
    text.precision(17);
    text << fluid.substance.StoffName << ", equation " << number_of(fluid.models.EOSKode) << ", kind "
         << static_cast<int>(in.kind) << ", line " << static_cast<int>(in.line) << ", x " << in.range.XMin
         << ':' << in.range.XMax << ", y " << in.range.YMin << ':' << in.range.YMax << ", T " << in.T
         << ", p " << in.p << ", v " << in.v << ", fraction " << in.VaporFraction << ", loop " << in.SCurve
         << ", tie line " << in.TieLine << ", Dens " << in.options.Dens << ", options "
         << in.options.chkCurveTpRestricted << in.options.chkSKurveOhneKonnode << in.options.chkPartialKurve
         << ", units " << in.units.EnergyMode << in.units.VolumeMode << ", process "
         << static_cast<int>(in.process.kind) << ' ' << in.process.From << ':' << in.process.To << " over T "
         << in.process.ScanT << " from " << in.process.T1 << ' ' << in.process.p1 << " to " << in.process.T2
         << ' ' << in.process.p2 << " phase " << in.process.phase << " homogeneous " << in.process.Homogen
         << " ideal " << in.process.UseIdealEOS << ", isochore " << in.isochore.T << ' ' << in.isochore.p
         << ' ' << in.isochore.v << ", PARTIAL " << !fluid.models.Konzept;
    return text.str();
}

// The guard of a scan; both densities of kind 8 are two points a step, and the walk of kind 6 has its own.
std::size_t most_points(const CurveInput& in) {
    const std::size_t scan = 20 * static_cast<std::size_t>(std::max(in.options.Dens, 1)) + 1000;
    return kind_info(in.kind).family == CurveFamily::dome_p_v ? 20001 : 2 * scan + 2;
}

TEST(RandomRanges, EndSoonWithFinitePoints) {
    using Clock = std::chrono::steady_clock;
    RandomCalls calls;
    double slowest = 0.0;
    std::string which;
    std::size_t with_points = 0;
    for (int call = 0; call < 5000; ++call) {
        const Fluid& fluid = calls.fluid();
        const CurveInput in = calls.input(fluid);
        const auto start = Clock::now();
        CurveResult result;
        ASSERT_NO_THROW(result = CalcCurve(fluid, in)) << described(fluid, in);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        if (seconds > slowest) {
            slowest = seconds;
            which = described(fluid, in);
        }
        // A guard against scans without end, with room for sanitizers.
        EXPECT_LT(seconds, 5.0) << described(fluid, in);
        EXPECT_LE(result.curve.points.size(), most_points(in)) << described(fluid, in);
        with_points += !result.curve.points.empty();
        for (const CurvePoint& point : result.curve.points)
            for (const float value : {point.X, point.Y, point.Par, point.Tag})
                ASSERT_TRUE(std::isfinite(value)) << described(fluid, in);
    }
    RecordProperty("slowest_ms", static_cast<int>(1e3 * slowest));
    RecordProperty("slowest", which);
    // Most calls have a curve to compute.
    EXPECT_GT(with_points, 1500u);
}

}  // namespace
}  // namespace quom

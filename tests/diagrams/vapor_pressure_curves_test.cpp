// p(LV) in its three diagrams and delta(LV)h, by the concept in force.
#include <gtest/gtest.h>

#include "diagrams/section_curves.h"
#include "engine/vapor_pressure.h"

namespace quom::test {
namespace {

std::shared_ptr<const Fluid> fluid_of(std::string_view cas, bool global, Evp code = Evp::wagner,
                                      Hlv heat = Hlv::eos) {
    const auto fluid = starter_fluid(cas, Eos::peng_robinson);
    ModelSelection models = fluid->models;
    models.Konzept = global;
    models.EVPKode = code;
    models.HLVKode = heat;
    return with_models(*fluid, models);
}

// Y at x, on the line between its neighbours.
double value_at(const CurveResult& result, double x) {
    const auto& points = result.curve.points;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double a = X(points[i - 1]), b = X(points[i]);
        if (a <= x && x <= b) return Y(points[i - 1]) + (Y(points[i]) - Y(points[i - 1])) * (x - a) / (b - a);
    }
    return absent;
}

// The equation of state: fugacities of both phases are equal at every point; from the critical point to XMin.
TEST(VaporPressureCurve, OfTheEquationOfState) {
    for (const auto cas : {propane, water, methane}) {
        const auto fluid = fluid_of(cas, true);
        const auto lowest = static_cast<float>(0.5 * fluid->substance.Tcr);
        const auto points = CalcCurve(*fluid, input_of(Kind::sat_p_T, {lowest, 0, 800, 30000})).curve.points;
        ASSERT_GT(points.size(), 60u);
        EXPECT_FLOAT_EQ(points.back().X, static_cast<float>(fluid->substance.Tcr));
        EXPECT_FLOAT_EQ(points.back().Y, static_cast<float>(fluid->substance.pcr));
        EXPECT_NEAR(X(points.front()), static_cast<double>(lowest), 1.6);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const double T = X(points[i]), p = Y(points[i]);
            if (T > 0.999 * fluid->substance.Tcr) continue;
            const auto& v = CubicV(EOSParT(*fluid, T), p).VRoot;
            EXPECT_NEAR(ThermoFunc(*fluid, T, p, v[0]).FuncA[fu_lnphi],
                        ThermoFunc(*fluid, T, p, v[2]).FuncA[fu_lnphi], 1e-5)
                << T;
        }
    }
}

// Published: water 101.42 kPa at 373.15 K (IAPWS-95, Wagner and Pruss, J. Phys. Chem. Ref. Data 31 (2002)
// 387), propane 997.8 kPa at 300 K (Lemmon, McLinden, Wagner, J. Chem. Eng. Data 54 (2009) 3141).
TEST(VaporPressureCurve, OfTheVaporPressureEquation) {
    const struct {
        std::string_view substance;
        double T, p;
    } published[] = {{water, 373.15, 101.42}, {propane, 300.0, 997.8}};
    for (const auto& [substance, T, p] : published) {
        const auto t = static_cast<float>(T);
        for (const Evp code : {Evp::wagner, Evp::frost_kalkwarf}) {
            const auto fluid = fluid_of(substance, false, code);
            const CurveResult near = CalcCurve(*fluid, input_of(Kind::sat_p_T, {t - 20, 0, t + 20, 2000}));
            EXPECT_NEAR(value_at(near, T) / p, 1.0, code == Evp::wagner ? 5e-4 : 2.5e-3);
            const float x = static_cast<float>(1.0 / T);
            const CurveResult log =
                CalcCurve(*fluid, input_of(Kind::sat_lnp_invT, {0.9f * x, 0, 1.1f * x, 9}));
            EXPECT_NEAR(value_at(log, 1.0 / T), std::log(p), code == Evp::wagner ? 5e-4 : 2.5e-3);
        }
    }
    // A Wagner set ends below T(cr), the other equations with it.
    const double Tcr = fluid_of(propane, false)->substance.Tcr;
    for (const Evp code : {Evp::wagner, Evp::frost_kalkwarf}) {
        const auto points =
            CalcCurve(*fluid_of(propane, false, code), input_of(Kind::sat_p_T, {300, 0, 400, 1}))
                .curve.points;
        EXPECT_EQ(points.back().X < static_cast<float>(Tcr), code == Evp::wagner);
        EXPECT_GT(X(points.back()), Tcr - 0.21);
    }
    EXPECT_TRUE(CalcCurve(*fluid_of(propane, false, Evp::none), input_of(Kind::sat_p_T, {300, 0, 400, 1}))
                    .curve.points.empty());
}

// ln p over 1/T falls from the critical point down to 0.01 kPa; its slope is that of the diagram of slopes.
TEST(VaporPressureCurve, LogarithmAndSlope) {
    const CurveRange range{0.0025f, -10000, 0.009f, 10000};
    for (const Evp code : {Evp::wagner, Evp::frost_kalkwarf, Evp::august}) {
        const auto fluid = fluid_of(propane, false, code);
        const auto log = CalcCurve(*fluid, input_of(Kind::sat_lnp_invT, range)).curve.points;
        const auto slope = CalcCurve(*fluid, input_of(Kind::sat_slope_invT, range)).curve.points;
        EXPECT_NEAR(X(log.front()), 1.0 / fluid->substance.Tcr, code == Evp::wagner ? 1.4e-5 : 1e-9);
        EXPECT_NEAR(Y(log.back()), std::log(0.01), 0.06);
        EXPECT_GT(Y(log.back()), std::log(0.01));
        int compared = 0;
        for (const CurvePoint& point : slope) {
            const auto at = std::ranges::find(log, point.X, &CurvePoint::X);
            if (at == log.end() || at == log.begin() || std::next(at) == log.end()) continue;
            if (at - log.begin() < 4) continue;  // near T(cr) the slope bends
            const double quotient = (Y(at[1]) - Y(at[-1])) / (X(at[1]) - X(at[-1]));
            EXPECT_NEAR(Y(point) / quotient, 1.0, 1e-3) << X(point);
            ++compared;
        }
        EXPECT_GT(compared, 200);
        EXPECT_GT(slope.size(), log.size()) << "the slope does not end at 0.01 kPa";
    }
    EXPECT_TRUE(
        CalcCurve(*fluid_of(propane, true), input_of(Kind::sat_slope_invT, range)).curve.points.empty());
}

// In reduced units the critical point is (1, 1) and (1, 0), and is there for every substance.
TEST(VaporPressureCurve, ReducedUnits) {
    for (const auto cas : {propane, water, methane, ammonia, nitrogen, benzene, ethanol, argon, decane}) {
        const auto fluid = fluid_of(cas, true);
        CurveInput input = input_of(Kind::sat_p_T, {0.5f, 0, 1.2f, 2});
        input.units.VolumeMode = reduced_volume;
        const auto p = CalcCurve(*fluid, input).curve.points;
        EXPECT_EQ(p.back().X, 1.0f);
        EXPECT_FLOAT_EQ(p.back().Y, 1.0f);
        input = input_of(Kind::sat_lnp_invT, {0.5f, -9, 1.9f, 1});
        input.units.VolumeMode = reduced_volume;
        const CurveResult log = CalcCurve(*fluid, input);
        EXPECT_EQ(log.curve.points.front().X, 1.0f);
        EXPECT_NEAR(Y(log.curve.points.front()), 0.0, 1e-6);
        // The acentric factor: log10 p(r) = -1 - omega at T(r) = 0.7, which the equation is made to meet.
        const double omega = -1.0 - value_at(log, 1.0 / 0.7) / std::log(10.0);
        EXPECT_NEAR(omega, fluid->substance.omega, 0.015);
    }
}

// A range so small that the scan from T(cr) would run out of rounds on its way is filled all the same.
TEST(VaporPressureCurve, SmallRange) {
    const auto fluid = fluid_of(propane, true);
    EXPECT_FALSE(CalcCurve(*fluid, input_of(Kind::sat_p_T, {230, 90, 231, 110})).Outside);
    EXPECT_FALSE(CalcCurve(*fluid, input_of(Kind::sat_lnp_invT, {0.00433f, 4, 0.00434f, 5})).Outside);
    EXPECT_TRUE(CalcCurve(*fluid, input_of(Kind::sat_p_T, {380, 90, 381, 110})).curve.points.empty());
}

TEST(VaporPressureCurve, TriplePoint) {
    const auto fluid = fluid_of(water, true);
    for (const Kind kind : {Kind::sat_p_T, Kind::sat_lnp_invT, Kind::hLV_T}) {
        for (const bool restricted : {true, false}) {
            CurveInput input = input_of(kind, {250, 0, 700, 50000});
            if (kind == Kind::sat_lnp_invT) input.range = {0.001f, 0, 0.004f, 10};
            input.options.chkCurveTpRestricted = restricted;
            const CurveResult result = CalcCurve(*fluid, input);
            const auto& points = result.curve.points;
            const double lowest = kind == Kind::sat_lnp_invT ? 1.0 / X(points.back()) : X(points.front());
            EXPECT_NEAR(lowest, restricted ? 273.16 : 250.0, 0.95);
            EXPECT_EQ(lowest >= 273.16, restricted);
            EXPECT_EQ(result.Status, restricted ? CurveStatus::done : CurveStatus::below_triple);
        }
    }
}

// Published, at the normal boiling point: water 2256.5 kJ/kg (IAPWS-95), propane 425.6 kJ/kg (Lemmon,
// McLinden, Wagner 2009), benzene 30.72 kJ/mol (Majer and Svoboda 1985). Every model within what is known of
// it; Par is p(LV) where the model needs one.
TEST(VaporizationCurve, ModelsAndPressure) {
    const struct {
        std::string_view substance;
        double T, h;
    } published[] = {{water, 373.15, 40651.0}, {propane, 231.04, 18767.0}, {benzene, 353.22, 30720.0}};
    const struct {
        Hlv model;
        double near;
        bool with_p;
    } models[] = {{Hlv::equation, 0.005, false},         {Hlv::chen, 0.045, true},
                  {Hlv::carruth_kobayashi, 0.03, false}, {Hlv::watson, 0.02, false},
                  {Hlv::evp_rhoL, 0.02, true},           {Hlv::eos, 0.04, true}};
    for (const auto& [substance, T, h] : published) {
        const auto t = static_cast<float>(T);
        for (const auto& [model, near, with_p] : models) {
            const auto fluid = fluid_of(substance, model == Hlv::eos, Evp::wagner, model);
            const CurveResult result = CalcCurve(*fluid, input_of(Kind::hLV_T, {t - 50, 0, 700, 60000}));
            EXPECT_NEAR(value_at(result, T) / h, 1.0, near) << static_cast<int>(model);
            EXPECT_EQ(result.curve.Par, with_p ? par_p : par_none) << static_cast<int>(model);
            EXPECT_TRUE(std::ranges::is_sorted(result.curve.points, {}, &CurvePoint::X));
            EXPECT_LE(X(result.curve.points.back()), fluid->substance.Tcr + 1e-4);
            for (const CurvePoint& point : result.curve.points) {
                const double p = static_cast<double>(point.Par), at = X(point);
                if (!with_p) {
                    EXPECT_EQ(p, 0.0);
                } else if (model == Hlv::eos) {
                    EXPECT_NEAR(p / pLV_EOS(*fluid, at).p, 1.0, 1e-5) << at;
                } else {
                    EXPECT_NEAR(p / pLV_EVP(fluid->substance, at, Evp::wagner).value, 1.0, 1e-5) << at;
                }
            }
        }
    }
}

// Of the equation of state: Clapeyron's equation, to the whole kJ/kmol; per mass and per R T.
TEST(VaporizationCurve, OfTheEquationOfState) {
    const auto fluid = fluid_of(propane, true);
    for (const int mode : {energy_molar, energy_per_mass, energy_per_RT}) {
        CurveInput input = input_of(Kind::hLV_T, {150, 0, 368, 60000});
        input.units.EnergyMode = mode;
        const CurveResult result = CalcCurve(*fluid, input);
        ASSERT_GT(result.curve.points.size(), 490u);
        for (const CurvePoint& point : result.curve.points) {
            const double T = X(point), factor = mode == energy_molar      ? 1.0
                                                : mode == energy_per_mass ? 1.0 / fluid->M
                                                                          : 1.0 / (RGas * T);
            const double h = clapeyron(*fluid, T);
            EXPECT_NEAR(Y(point) / factor, h, 0.6 + 1e-4 * h) << T;
        }
    }
}

TEST(VaporPressureCurve, HostileInput) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const CurveRange ranges[] = {{0, 0, 0, 0},           {480, 1, 85, 0},       {-5, 0, 5, 1},
                                 {nan, 0, 5, 1},         {-1e38f, 0, 1e38f, 1}, {300, 0, 300.0001f, 1},
                                 {0.009f, 0, 0.002f, 1}, {-1, 0, 0, 1}};
    auto nothing = starter_substance(propane);
    nothing.Tcr = 0.0;
    nothing.pcr = 0.0;
    const std::shared_ptr<const Fluid> fluids[] = {
        fluid_of(propane, true), fluid_of(propane, false), starter_fluid(propane, Eos::none),
        make_fluid({.substance = nothing, .models = {}, .eos_input = {}, .reference = {}})};
    for (const auto& fluid : fluids) {
        for (const Kind kind : {Kind::sat_p_T, Kind::sat_lnp_invT, Kind::sat_slope_invT, Kind::hLV_T}) {
            for (const CurveRange& range : ranges) {
                const CurveResult result = CalcCurve(*fluid, input_of(kind, range));
                ASSERT_LE(result.curve.points.size(), 11001u);
                for (const CurvePoint& point : result.curve.points) ASSERT_TRUE(finite(point));
                // A range that rises the other way draws no critical point again and again.
                EXPECT_LE(std::ranges::count(result.curve.points, static_cast<float>(fluid->substance.pcr),
                                             &CurvePoint::Y),
                          2);
            }
        }
    }
}

}  // namespace
}  // namespace quom::test

// Curves of the equations of the record: the same values and limits as the calculation modes have.
#include <gtest/gtest.h>

#include <cmath>

#include "calc/outcome.h"
#include "diagrams/curve_generator.h"
#include "engine/condensed_phases.h"
#include "engine/vapor_pressure.h"
#include "support/starter.h"

namespace quom::test {
namespace {

std::shared_ptr<const Fluid> fluid_with(const SubstanceConstants& substance, CpForm form) {
    ModelSelection models = proposed_models(substance, Eos::peng_robinson);
    models.cpKode = form;
    return make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = {}});
}

CurveInput input_of(Kind kind, float XMin = 150.0f, float XMax = 700.0f) {
    CurveInput in;
    in.kind = kind;
    in.range = {.XMin = XMin, .YMin = 0.0f, .XMax = XMax, .YMax = 1e6f};
    in.options.Dens = 50;
    return in;
}

struct KindOfMode {
    Kind kind;
    Mode mode;
    CpForm form;  // in force, which mode 16 asks
    std::optional<double> (*value)(const Outcome& out, double M);
};
std::optional<double> p_of(const Outcome& out, double) { return out.p; }
constexpr KindOfMode kinds_of_modes[] = {
    {Kind::db_rhoL, Mode::fn_rhoL, CpForm::none, [](const Outcome& o, double) { return o.rhoL_fn; }},
    {Kind::db_vL, Mode::fn_rhoL, CpForm::none,
     [](const Outcome& o, double M) { return std::optional<double>(M / *o.rhoL_fn); }},
    {Kind::db_rhoS, Mode::fn_rhoS, CpForm::none, [](const Outcome& o, double) { return o.rhoS_fn; }},
    {Kind::db_cpId_polynomial, Mode::fn_cpIdG, CpForm::polynomial,
     [](const Outcome& o, double) { return o.cpId_fn; }},
    {Kind::db_cpId_sinh, Mode::fn_cpIdG, CpForm::sinh_cosh,
     [](const Outcome& o, double) { return o.cpId_fn; }},
    {Kind::db_cpL, Mode::fn_cpL, CpForm::none, [](const Outcome& o, double) { return o.cpL_fn; }},
    {Kind::db_cpS, Mode::fn_cpS, CpForm::none, [](const Outcome& o, double) { return o.cpS_fn; }},
    {Kind::db_hLV, Mode::fn_hLV, CpForm::none, [](const Outcome& o, double) { return o.vaporization->hLV; }},
    {Kind::db_frost_kalkwarf, Mode::fn_frost_kalkwarf, CpForm::none, p_of},
    {Kind::db_wagner, Mode::fn_wagner, CpForm::none, p_of},
    {Kind::db_antoine_low, Mode::fn_antoine_low, CpForm::none, p_of},
    {Kind::db_antoine_high, Mode::fn_antoine_high, CpForm::none, p_of},
};

// Point by point against the mode; where the mode has no value the curve has no point.
TEST(DatabaseCurves, are_the_values_of_the_modes) {
    for (const auto cas : {propane, water, benzene, ethanol, nitrogen}) {
        const SubstanceConstants substance = starter_substance(cas);
        for (const KindOfMode& row : kinds_of_modes) {
            SCOPED_TRACE(::testing::Message() << cas << " kind " << static_cast<int>(row.kind));
            const bool has_form = row.form == CpForm::none ||
                                  (row.form == CpForm::polynomial ? substance.havePoly : substance.haveSinh);
            if (!has_form) continue;
            const auto fluid = fluid_with(substance, row.form);
            const CurveInput in = input_of(row.kind);
            const CurveResult r = CalcCurve(*fluid, in);
            std::size_t i = 0;
            double T = static_cast<double>(in.range.XMin);
            Outcome outcome;
            for (int n = 0; n <= in.options.Dens; ++n, T += 550.0 / 50.0) {
                outcome = CalcBatch(*fluid, {.mode = row.mode, .T = T});
                if (!outcome.has_result()) continue;
                ASSERT_LT(i, r.curve.points.size());
                EXPECT_EQ(r.curve.points[i].X, static_cast<float>(T));
                EXPECT_FLOAT_EQ(r.curve.points[i].Y, static_cast<float>(*row.value(outcome, fluid->M)));
                ++i;
            }
            EXPECT_EQ(i, r.curve.points.size());
            EXPECT_EQ(r.curve.Par, par_none);
            EXPECT_EQ(r.DBTMin, static_cast<float>(outcome.limits.TLo));
            EXPECT_EQ(r.DBTMax, static_cast<float>(outcome.limits.THi));
            const bool absent = outcome.failure.reason == Reason::no_database_equation ||
                                outcome.failure.reason == Reason::no_hlv_data;
            if (absent) {
                EXPECT_EQ(r.Status, CurveStatus::failed);
                EXPECT_FALSE(r.Msg.empty());
            } else if (i > 0) {
                EXPECT_EQ(r.Status, CurveStatus::done);
            }
        }
    }
}

// Within a few per cent of 997.7 kPa, propane at 300 K (Lemmon, McLinden, Wagner 2009); the set of Thompson
// is beyond its range there.
TEST(DatabaseCurves, correlated_vapor_pressures) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const SubstanceConstants& k = fluid->substance;
    const struct {
        Kind kind;
        Evp code;
        double tolerance, low, high;
    } cases[] = {{Kind::db_august, Evp::august, 0.06, static_cast<double>(k.Tnb), k.Tcr},
                 {Kind::db_kfw, Evp::kfw, 0.03, static_cast<double>(k.KFWLimits.TLo),
                  static_cast<double>(k.KFWLimits.THi)},
                 {Kind::db_kfr, Evp::kfr, 0.03, static_cast<double>(k.KFRLimits.TLo),
                  static_cast<double>(k.KFRLimits.THi)},
                 {Kind::db_thompson, Evp::thompson, 0.05, static_cast<double>(k.THOLimits.TLo),
                  static_cast<double>(k.THOLimits.THi)}};
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.kind));
        const CurveResult r = CalcCurve(*fluid, input_of(c.kind, 200.0f, 300.0f));
        ASSERT_GE(r.curve.points.size(), 50u);
        for (const CurvePoint& point : r.curve.points)
            EXPECT_NEAR(static_cast<double>(point.Y), pLV_EVP(k, static_cast<double>(point.X), c.code).value,
                        2e-6 * static_cast<double>(point.Y));
        EXPECT_NEAR(
            static_cast<double>(CalcCurve(*fluid, input_of(c.kind, 300.0f, 310.0f)).curve.points[0].Y), 997.7,
            c.tolerance * 997.7);
        EXPECT_FLOAT_EQ(r.DBTMin, static_cast<float>(c.low));
        EXPECT_FLOAT_EQ(r.DBTMax, static_cast<float>(c.high));
    }
}

TEST(DatabaseCurves, displayed_units) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const double M = fluid->M, Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr,
                 vcr = fluid->eos.vcrEOS;
    const auto first = [&](Kind kind, Units units, double TFactor) {
        CurveInput in =
            input_of(kind, static_cast<float>(250.0 * TFactor), static_cast<float>(280.0 * TFactor));
        in.units = units;
        return CalcCurve(*fluid, in).curve.points.at(0);
    };
    const Units specific{.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass};
    const Units reduced{.EnergyMode = energy_per_RT, .VolumeMode = reduced_volume};
    const struct {
        Kind kind;
        double specific, reduced;
    } cases[] = {{Kind::db_rhoL, 1.0, 1.0},
                 {Kind::db_vL, 1.0 / M, 1.0 / vcr},
                 {Kind::db_cpId_sinh, 1.0 / M, 1.0 / (RGas * 250.0)},
                 {Kind::db_hLV, 1.0 / M, 1.0 / (RGas * 250.0)},
                 {Kind::db_wagner, 1.0, 1.0 / pcr}};
    for (const auto& c : cases) {
        const double molar = static_cast<double>(first(c.kind, {}, 1.0).Y);
        EXPECT_NEAR(static_cast<double>(first(c.kind, specific, 1.0).Y), molar * c.specific,
                    1e-6 * molar * c.specific);
        const CurvePoint point = first(c.kind, reduced, 1.0 / Tcr);
        EXPECT_FLOAT_EQ(point.X, static_cast<float>(250.0 / Tcr));
        EXPECT_NEAR(static_cast<double>(point.Y), molar * c.reduced, 2e-6 * molar * c.reduced);
    }
}

// The equations of the solid lie below the triple point; nothing is drawn at T below 0.
TEST(DatabaseCurves, range_and_triple_point) {
    const auto fluid = starter_fluid(water, Eos::peng_robinson);
    for (const Kind kind : {Kind::db_cpS, Kind::db_rhoS}) {
        const CurveResult r = CalcCurve(*fluid, input_of(kind, 220.0f, 270.0f));
        EXPECT_EQ(r.curve.points.size(), 51u);
        EXPECT_EQ(r.Status, CurveStatus::done);
    }
    for (const Kind kind : {Kind::db_cpId_sinh, Kind::db_rhoL, Kind::db_wagner}) {
        for (const CurvePoint& point : CalcCurve(*fluid, input_of(kind, -500.0f, 500.0f)).curve.points) {
            EXPECT_GT(point.X, 0.0f);
            EXPECT_TRUE(std::isfinite(point.Y) && point.Y > 0.0f);
        }
        EXPECT_TRUE(CalcCurve(*fluid, input_of(kind, -500.0f, -400.0f)).curve.points.empty());
        EXPECT_TRUE(CalcCurve(*fluid, input_of(kind, 300.0f, 300.0f)).curve.points.empty());
        EXPECT_LE(CalcCurve(*fluid, input_of(kind, -3e38f, 3e38f)).curve.points.size(), 2000u);
    }
}

}  // namespace
}  // namespace quom::test

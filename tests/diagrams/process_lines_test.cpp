// Changes of state as lines: each against the law it obeys.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "diagrams/curve_generator.h"
#include "engine/saturation.h"
#include "support/starter.h"

namespace quom::test {
namespace {

using P = ProcessKind;

const Fluid& peng_robinson(std::string_view cas) {
    static const auto of_propane = starter_fluid(propane, Eos::peng_robinson);
    static const auto of_water = starter_fluid(water, Eos::peng_robinson);
    return cas == water ? *of_water : *of_propane;
}

CurveInput input_of(Kind kind, Kind line, const ProcessRec& process) {
    CurveInput in;
    in.kind = kind;
    in.line = line;
    in.process = process;
    in.range = {.XMin = -1e6f, .YMin = -1e6f, .XMax = 1e6f, .YMax = 1e6f};
    return in;
}

ProcessRec process_of(P kind, bool ScanT, double from, double to, double T1, double p1,
                      Phase phase = phase_V) {
    ProcessRec process;
    process.kind = kind;
    process.ScanT = ScanT;
    process.From = from;
    process.To = to;
    process.T1 = T1;
    process.p1 = p1;
    process.phase = phase;
    process.Homogen = true;
    return process;
}

CurveResult curve(const Fluid& fluid, Kind kind, Kind line, const ProcessRec& process) {
    return CalcCurve(fluid, input_of(kind, line, process));
}

double x_of(const CurvePoint& point) { return static_cast<double>(point.X); }
double y_of(const CurvePoint& point) { return static_cast<double>(point.Y); }
double par_of(const CurvePoint& point) { return static_cast<double>(point.Par); }

// A fluid with a constant cp(idG) of 40 kJ/(kmol K).
std::shared_ptr<const Fluid> constant_cp_fluid(Eos eos) {
    SubstanceConstants substance = starter_substance(propane);
    substance.cpPoly = {40.0f, 0.0f, 0.0f, 0.0f, 0.0f};
    substance.havePoly = true;
    ModelSelection models = proposed_models(substance, eos);
    models.cpKode = CpForm::polynomial;
    return make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = {}});
}

// p v^kappa is constant, kappa = cp/(cp - R) = 40/(40 - 8.31451); with the ideal gas as the equation in force
// and in place of it, over p and over T. Its units are those of the equation in force.
TEST(ProcessLines, isentrope_of_an_ideal_gas) {
    const double kappa = 40.0 / (40.0 - 8.31451), T1 = 500.0, p1 = 1000.0, v1 = 8.31451 * T1 / p1;
    const double T2 = T1 * std::pow(50.0 / p1, (kappa - 1.0) / kappa);
    for (const Eos eos : {Eos::ideal_gas, Eos::peng_robinson}) {
        const auto fluid = constant_cp_fluid(eos);
        for (const bool ScanT : {false, true}) {
            ProcessRec process = ScanT ? process_of(P::isentrope, true, T1, T2, T1, p1)
                                       : process_of(P::isentrope, false, p1, 50.0, T1, p1);
            process.UseIdealEOS = eos != Eos::ideal_gas;
            const CurveResult r = curve(*fluid, Kind::p_v, Kind::line_isentrope, process);
            EXPECT_EQ(r.Status, CurveStatus::done);
            EXPECT_EQ(r.curve.Par, par_T);
            ASSERT_EQ(r.curve.points.size(), ScanT ? 1251u : 626u);
            for (const CurvePoint& point : r.curve.points) {
                EXPECT_NEAR(y_of(point) * std::pow(x_of(point) / v1, kappa), p1, 1e-6 * p1);
                EXPECT_NEAR(par_of(point), x_of(point) * y_of(point) / 8.31451, 2e-7 * T1);
            }
            EXPECT_NEAR(r.LastProcessT, T2, 1e-8 * T2);
            EXPECT_NEAR(r.LastProcessP, 50.0, 1e-6);
        }
    }
    CurveInput in =
        input_of(Kind::p_v, Kind::line_isobar, process_of(P::isobar, true, 400.0, 500.0, 400.0, p1));
    in.units.VolumeMode = reduced_volume;
    in.process.UseIdealEOS = true;
    const auto fluid = constant_cp_fluid(Eos::peng_robinson);
    const CurvePoint first = CalcCurve(*fluid, in).curve.points.at(0);
    EXPECT_NEAR(x_of(first), 8.31451 * 400.0 / p1 / fluid->eos.vcrEOS, 1e-6 * x_of(first));
    EXPECT_NEAR(y_of(first), p1 / fluid->substance.pcr, 1e-6);
}

TEST(ProcessLines, isenthalpe_of_an_ideal_gas_is_an_isotherm) {
    ProcessRec process = process_of(P::isenthalpe, false, 5000.0, 10.0, 450.0, 5000.0);
    process.UseIdealEOS = true;
    const CurveResult r = curve(peng_robinson(propane), Kind::T_v, Kind::line_isentrope, process);
    ASSERT_EQ(r.curve.points.size(), 626u);
    for (const CurvePoint& point : r.curve.points) {
        EXPECT_NEAR(y_of(point), 450.0, 1e-4);
        EXPECT_NEAR(x_of(point) * par_of(point), 8.31451 * 450.0, 1e-3);
    }
    process.UseIdealEOS = false;  // a real gas is cooled
    const CurveResult real = curve(peng_robinson(propane), Kind::T_v, Kind::line_isentrope, process);
    EXPECT_LT(real.LastProcessT, 440.0);
}

struct Held {
    P process;
    bool ScanT;
    double from, to, T1, p1;
    Phase phase;
    std::size_t points;
};
// s or h at every point, computed anew from T and p of the point, is that of the start; so is the phase.
TEST(ProcessLines, isentropes_and_isenthalpes_keep_their_function) {
    const Fluid& fluid = peng_robinson(propane);
    const Held cases[] = {
        {P::isentrope, false, 2000.0, 100.0, 400.0, 2000.0, phase_V, 626},
        {P::isentrope, true, 400.0, 320.0, 400.0, 2000.0, phase_V, 1251},
        {P::isentrope, false, 1000.0, 20000.0, 280.0, 1000.0, phase_L, 626},
        {P::isenthalpe, false, 20000.0, 1500.0, 300.0, 20000.0, phase_L, 626},
        {P::isenthalpe, true, 420.0, 390.0, 420.0, 4000.0, phase_V, 1251},
        // From above the critical point through T(cr) into the compressed liquid
        {P::isentrope, false, 30000.0, 6000.0, 400.0, 30000.0, phase_L, 626},
    };
    for (const Held& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.T1 << " K, " << c.p1 << " kPa, " << c.from << " to " << c.to);
        const ProcessRec process = process_of(c.process, c.ScanT, c.from, c.to, c.T1, c.p1, c.phase);
        const bool entropy = c.process == P::isentrope;
        const auto value = [&](double T, double p) {
            const VolumeResult at = VolumeTp(fluid, T, p);
            const StateFunctions f = ThermoState(fluid, T, p, c.phase == phase_V && at.VFlag ? at.vV : at.vL);
            return entropy ? f.s : f.h;
        };
        const double target = value(c.T1, c.p1), scale = entropy ? 8.31451 : 8.31451 * c.T1;
        const CurveResult r = curve(fluid, Kind::p_T, Kind::line_isentrope, process);
        EXPECT_EQ(r.Status, CurveStatus::done);
        ASSERT_EQ(r.curve.points.size(), c.points);
        for (const CurvePoint& point : r.curve.points)
            EXPECT_NEAR(value(x_of(point), y_of(point)), target, 2e-5 * scale);
        // In the diagram that shows it the line is straight.
        const Kind kind = entropy ? Kind::h_s_isobar : Kind::h_p;
        for (const CurvePoint& point : curve(fluid, kind, Kind::line_isentrope, process).curve.points)
            EXPECT_NEAR(entropy ? x_of(point) : y_of(point), target, 1e-7 * std::fabs(target) + 1e-6 * scale);
        EXPECT_NEAR(c.ScanT ? r.LastProcessT : r.LastProcessP, c.to, 1e-9 * c.to);
    }
}

// Integral of y dx along the points.
double integral(const std::vector<CurvePoint>& points) {
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        sum += 0.5 * (y_of(points[i]) + y_of(points[i - 1])) * (x_of(points[i]) - x_of(points[i - 1]));
    return sum;
}
// Integral of x dy.
double integral_dy(const std::vector<CurvePoint>& points) {
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        sum += 0.5 * (x_of(points[i]) + x_of(points[i - 1])) * (y_of(points[i]) - y_of(points[i - 1]));
    return sum;
}
double change_of_y(const std::vector<CurvePoint>& points) { return y_of(points.back()) - y_of(points[0]); }

// Isochore, isentrope, isobar, each from the end of the one before: du = T ds - p dv along every line, and
// around the cycle the heat is the work.
TEST(ProcessLines, first_law_around_a_cycle) {
    for (const auto cas : {propane, water}) {
        const Fluid& fluid = peng_robinson(cas);
        const double T1 = cas == propane ? 380.0 : 700.0, p1 = 1500.0, p2 = 3000.0;
        double T = T1, p = p1, heat = 0.0, work = 0.0;
        const struct {
            Kind line;
            P process;
            double to;
        } lines[] = {{Kind::line_isochore, P::isochore, p2},
                     {Kind::line_isentrope, P::isentrope, p1},
                     {Kind::line_isobar, P::isobar, T1}};
        for (const auto& step : lines) {
            SCOPED_TRACE(::testing::Message() << cas << " " << static_cast<int>(step.process));
            const bool ScanT = step.process == P::isobar;
            const ProcessRec process = process_of(step.process, ScanT, ScanT ? T : p, step.to, T, p);
            const CurveResult p_v = curve(fluid, Kind::p_v, step.line, process);
            const CurveResult s_T = curve(fluid, Kind::s_T, step.line, process);
            const CurveResult u_T = curve(fluid, Kind::u_T, step.line, process);
            ASSERT_GE(p_v.curve.points.size(), 400u);
            const double q = integral_dy(s_T.curve.points), w = -integral(p_v.curve.points);
            EXPECT_NEAR(change_of_y(u_T.curve.points), q + w, 5e-5 * (std::fabs(q) + std::fabs(w)));
            heat += q;
            work += w;
            T = p_v.LastProcessT;
            p = p_v.LastProcessP;
        }
        EXPECT_NEAR(T, T1, 1e-9 * T1);
        EXPECT_NEAR(p, p1, 1e-9 * p1);
        EXPECT_GT(heat, 50.0);
        EXPECT_NEAR(heat + work, 0.0, 2e-3 * heat);
    }
}

// The phase of the record: of three roots its own, stable or not; a single root where it exists.
TEST(ProcessLines, isotherm_and_isobar_choose_the_phase) {
    const Fluid& fluid = peng_robinson(propane);
    const double T = 330.0, pLV = pLV_EOS(fluid, T).p;
    for (const Phase phase : {phase_L, phase_V}) {
        for (const bool falls : {false, true}) {
            const ProcessRec process = process_of(P::isotherm, false, falls ? 6000.0 : 200.0,
                                                  falls ? 200.0 : 6000.0, T, 200.0, phase);
            const CurveResult r = curve(fluid, Kind::p_v, Kind::line_isotherm, process);
            EXPECT_EQ(r.Status, CurveStatus::done);
            ASSERT_GT(r.curve.points.size(), 100u);
            EXPECT_EQ(r.curve.points.size() < 501u, phase == phase_V);  // a liquid can be at 200 kPa
            std::size_t stable = 0;
            for (const CurvePoint& point : r.curve.points) {
                EXPECT_NEAR(pTv(fluid, T, x_of(point)).p, y_of(point), phase == phase_V ? 0.01 : 2.0);
                EXPECT_EQ(x_of(point) > fluid.eos.vcrEOS, phase == phase_V);
                EXPECT_EQ(point.Par, 330.0f);
                stable += (y_of(point) < pLV) == (phase == phase_V) ? 1u : 0u;
            }
            EXPECT_LT(stable, r.curve.points.size());
        }
    }
    // To the last digit at the limits
    const CurveResult isobar =
        curve(fluid, Kind::h_T, Kind::line_isobar, process_of(P::isobar, true, 450.0, 380.0, 450.0, 3000.0));
    ASSERT_EQ(isobar.curve.points.size(), 501u);
    EXPECT_EQ(isobar.curve.points[0].X, 450.0f);
    EXPECT_NEAR(isobar.LastProcessT, 380.0, 1e-9);
    EXPECT_EQ(isobar.curve.points[7].Par, 3000.0f);
    const double h = ThermoState(fluid, 450.0, 3000.0, VolumeTp(fluid, 450.0, 3000.0).vV).h;
    EXPECT_NEAR(y_of(isobar.curve.points[0]), h, 1e-6 * std::fabs(h));
}

// v stays that of the start, over p and over T; states between the spinodals or at p below 0 are none.
TEST(ProcessLines, isochore) {
    const Fluid& fluid = peng_robinson(propane);
    const double v = VolumeTp(fluid, 400.0, 3000.0).vV;
    const CurveResult over_T = curve(fluid, Kind::p_v, Kind::line_isochore,
                                     process_of(P::isochore, true, 400.0, 500.0, 400.0, 3000.0));
    const CurveResult over_p =
        curve(fluid, Kind::T_v, Kind::line_isochore,
              process_of(P::isochore, false, 3000.0, over_T.LastProcessP, 400.0, 3000.0));
    ASSERT_EQ(over_T.curve.points.size(), 501u);
    ASSERT_EQ(over_p.curve.points.size(), 501u);
    EXPECT_NEAR(over_p.LastProcessT, 500.0, 1e-6);
    for (const CurvePoint& point : over_p.curve.points) {
        EXPECT_FLOAT_EQ(point.X, static_cast<float>(v));
        EXPECT_NEAR(pTv(fluid, y_of(point), v).p, par_of(point), 1e-5 * par_of(point));
    }
    const CurveResult into_dome = curve(fluid, Kind::p_T, Kind::line_isochore,
                                        process_of(P::isochore, true, 400.0, 150.0, 400.0, 4200.0));
    EXPECT_EQ(into_dome.Status, CurveStatus::line_aborted);
    ASSERT_GT(into_dome.curve.points.size(), 50u);
    EXPECT_LT(into_dome.curve.points.size(), 400u);
    for (const CurvePoint& point : into_dome.curve.points) {
        EXPECT_GT(point.Y, 0.0f);
        EXPECT_LT(ThermoFunc(fluid, x_of(point), y_of(point), par_of(point)).DerivA[dpdv_T], 0.0);
    }
}

// The isentrope of a vapor ends where the saturated vapor has its entropy; the isenthalpe over T at the
// inversion curve.
TEST(ProcessLines, stop_on_the_way) {
    const Fluid& fluid = peng_robinson(water);
    const ProcessRec process = process_of(P::isentrope, false, 1000.0, 10.0, 600.0, 1000.0);
    const CurveResult r = curve(fluid, Kind::p_T, Kind::line_isentrope, process);
    EXPECT_EQ(r.Status, CurveStatus::line_aborted);
    const double s = ThermoState(fluid, 600.0, 1000.0, VolumeTp(fluid, 600.0, 1000.0).vV).s;
    double low = 300.0, high = 500.0;
    while (high - low > 1e-6)
        (ThermoSat(fluid, 0.5 * (low + high)).V.s > s ? low : high) = 0.5 * (low + high);
    const double dew = pLV_EOS(fluid, low).p;
    EXPECT_GE(r.LastProcessP, dew);
    EXPECT_LT(r.LastProcessP, dew + 0.8 * 990.0 / 500.0);

    // However coarse the steps are: no state behind the inversion curve.
    const auto gas = starter_fluid(nitrogen, Eos::peng_robinson);
    for (const int Dens : {10, 30, 100, 500}) {
        for (const double p1 : {1000.0, 5000.0, 20000.0}) {
            SCOPED_TRACE(::testing::Message() << Dens << " " << p1);
            CurveInput in = input_of(Kind::p_T, Kind::line_isentrope,
                                     process_of(P::isenthalpe, true, 250.0, 320.0, 250.0, p1));
            in.options.Dens = Dens;
            const CurveResult warms = CalcCurve(*gas, in);
            EXPECT_EQ(warms.Status, CurveStatus::line_aborted);
            for (std::size_t i = 1; i < warms.curve.points.size(); ++i)
                EXPECT_GT(warms.curve.points[i].Y, warms.curve.points[i - 1].Y);
            const double T = warms.LastProcessT, p = warms.LastProcessP;
            const double JT = ThermoFunc(*gas, T, p, VolumeTp(*gas, T, p).vV).FuncA[fu_dTdp_h];
            EXPECT_GT(JT, 0.0);
            EXPECT_LT(JT, 0.07 / Dens);
        }
    }
}

// Between the saturated states the fraction of one quantity gives all others; h changes by v dp along an
// isentrope, by nothing along an isenthalpe.
TEST(ProcessLines, between_the_saturated_states) {
    const Fluid& fluid = peng_robinson(propane);
    const double p_from = pLV_EOS(fluid, 340.0).p, p_to = pLV_EOS(fluid, 280.0).p;
    for (const P kind : {P::isochore, P::isentrope, P::isenthalpe}) {
        for (const bool ScanT : {true, false}) {
            SCOPED_TRACE(::testing::Message() << static_cast<int>(kind) << ScanT);
            ProcessRec process =
                process_of(kind, ScanT, ScanT ? 340.0 : p_from, ScanT ? 280.0 : p_to, 340.0, p_from, phase_L);
            process.Homogen = false;
            const CurveResult h_T = curve(fluid, Kind::h_T, Kind::line_two_phase, process);
            const CurveResult p_v = curve(fluid, Kind::p_v, Kind::line_two_phase, process);
            const CurveResult s_T = curve(fluid, Kind::s_T, Kind::line_two_phase, process);
            EXPECT_EQ(h_T.Status, CurveStatus::done);
            EXPECT_EQ(h_T.curve.Par, par_fraction);
            ASSERT_EQ(h_T.curve.points.size(), 335u);
            EXPECT_NEAR(h_T.LastProcessT, 280.0, 1e-6);
            EXPECT_NEAR(h_T.LastProcessP, p_to, 1e-6 * p_to);
            for (std::size_t i = 0; i < h_T.curve.points.size(); i += 37) {
                const CurvePoint& point = h_T.curve.points[i];
                const double T = x_of(point), x = par_of(point);
                const SaturatedFunctions both = ThermoSat(fluid, T);
                EXPECT_NEAR(y_of(point), both.L.h + x * (both.V.h - both.L.h), 1e-6 * (both.V.h - both.L.h));
                EXPECT_NEAR(x_of(p_v.curve.points[i]), both.L.v + x * (both.V.v - both.L.v), 2e-6 * both.V.v);
                EXPECT_NEAR(y_of(p_v.curve.points[i]), both.p, 1e-5 * both.p);
                EXPECT_NEAR(y_of(s_T.curve.points[i]), both.L.s + x * (both.V.s - both.L.s),
                            1e-5 * (both.V.s - both.L.s));
            }
            const double dh = change_of_y(h_T.curve.points), v_dp = integral_dy(p_v.curve.points);
            const double T_ds = integral_dy(s_T.curve.points);
            EXPECT_NEAR(dh, v_dp + T_ds, 1e-4 * (std::fabs(v_dp) + std::fabs(T_ds)));
            EXPECT_NEAR(h_T.curve.points[0].Par, 0.0f, 1e-5f);
            const auto& held = kind == P::isochore ? p_v : kind == P::isentrope ? s_T : h_T;
            for (const CurvePoint& point : held.curve.points)
                EXPECT_EQ(kind == P::isochore ? point.X : point.Y,
                          kind == P::isochore ? held.curve.points[0].X : held.curve.points[0].Y);
        }
    }
    // A saturated liquid that is warmed at constant volume leaves the two phases at once.
    ProcessRec process = process_of(P::isochore, true, 280.0, 340.0, 280.0, 0.0, phase_L);
    process.Homogen = false;
    EXPECT_LE(curve(fluid, Kind::p_v, Kind::line_two_phase, process).curve.points.size(), 1u);
    process.UseIdealEOS = true;
    EXPECT_EQ(curve(fluid, Kind::p_v, Kind::line_two_phase, process).Status, CurveStatus::no_result);
}

// Coordinates of one state in every kind of diagram, against the functions computed here.
TEST(ProcessLines, every_diagram_shows_the_same_state) {
    const Fluid& fluid = peng_robinson(propane);
    const double T = 420.0, p = 2500.0, v = VolumeTp(fluid, T, p).vV;
    const StateFunctions f = ThermoState(fluid, T, p, v);
    const struct {
        Kind kind;
        double X, Y, Par;
    } cases[] = {
        {Kind::p_v, v, p, T},
        {Kind::sat_p_v, v, p, T},
        {Kind::pv_p, p, p * v, T},
        {Kind::sat_pv_p, p, p * v, T},
        {Kind::T_v, v, T, p},
        {Kind::sat_T_v, v, T, p},
        {Kind::T_rho, fluid.M / v, T, p},
        {Kind::sat_T_rho, fluid.M / v, T, p},
        {Kind::p_T, T, p, v},
        {Kind::sat_p_T, T, p, v},
        {Kind::inversion_p_T, T, p, v},
        {Kind::db_wagner, T, p, v},
        {Kind::sat_rho_T, T, fluid.M / v, p},
        {Kind::rho_p, p, fluid.M / v, T},
        {Kind::sat_rho_p, p, fluid.M / v, T},
        {Kind::hLV_T, T, f.h, p},
        {Kind::u_T, T, f.u, p},
        {Kind::h_T, T, f.h, p},
        {Kind::sat_h_T, T, f.h, p},
        {Kind::s_T, T, f.s, p},
        {Kind::g_T, T, f.g, p},
        {Kind::eH_T, T, f.eH, p},
        {Kind::cp_T, T, f.cp, p},
        {Kind::eU_T, T, f.eU, p},
        {Kind::a_T, T, f.a, p},
        {Kind::cV_T_isochore, T, f.cV, p},
        {Kind::s_T_isochore, T, f.s, p},
        {Kind::eH_h_isotherm, f.h, f.eH, p},
        {Kind::eH_h_isobar, f.h, f.eH, T},
        {Kind::eH_s_isobar, fluid.reference.TEnv * f.s, f.eH, T},
        {Kind::h_s_isobar, f.s, f.h, T},
        {Kind::h_s_isotherm, f.s, f.h, p},
        {Kind::a_p, p, f.a, T},
        {Kind::cp_p, p, f.cp, T},
        {Kind::eU_p, p, f.eU, T},
        {Kind::a_v, v, f.a, p},
        {Kind::s_v, v, f.s, p},
        {Kind::cV_v, v, f.cV, p},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.kind));
        CurveInput in = input_of(c.kind, Kind::line_isobar, process_of(P::isobar, true, T, 450.0, T, p));
        const CurvePoint point = CalcCurve(fluid, in).curve.points.at(0);
        EXPECT_FLOAT_EQ(point.X, static_cast<float>(c.X));
        EXPECT_FLOAT_EQ(point.Y, static_cast<float>(c.Y));
        EXPECT_FLOAT_EQ(point.Par, static_cast<float>(c.Par));
        in.units = {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass};
        const CurvePoint specific = CalcCurve(fluid, in).curve.points.at(0);
        const auto factor = [&](AxisQuantity q) {
            const bool plain = q == AxisQuantity::T || q == AxisQuantity::p || q == AxisQuantity::rho;
            return plain ? 1.0 : 1.0 / fluid.M;
        };
        EXPECT_FLOAT_EQ(specific.X, static_cast<float>(c.X * factor(kind_info(c.kind).x)));
        EXPECT_FLOAT_EQ(specific.Y, static_cast<float>(c.Y * factor(kind_info(c.kind).y)));
        EXPECT_EQ(specific.Par, point.Par);
    }
    for (const Kind kind : {Kind::sat_lnp_invT, Kind::residual_h_T, Kind::joule_thomson_T, Kind::db_rhoL,
                            Kind::inversion_pv_p, Kind::bnd_h_p}) {
        const CurveResult r =
            curve(fluid, kind, Kind::line_isobar, process_of(P::isobar, true, T, 450.0, T, p));
        EXPECT_EQ(r.Status, CurveStatus::failed);
        EXPECT_FALSE(r.Msg.empty());
        EXPECT_TRUE(r.curve.points.empty());
    }
}

TEST(ProcessLines, straight_line) {
    const struct {
        double x1, y1, x2, y2;
    } cases[] = {{1.0, 100.0, 3.0, 600.0}, {3.0, 5.0, -200.0, 6.0}, {0.0, -7.0, 0.0, 9.0}};
    for (const auto& c : cases) {
        const ProcessRec process{.T1 = c.x1, .p1 = c.y1, .T2 = c.x2, .p2 = c.y2};
        const CurveResult r = curve(peng_robinson(propane), Kind::p_v, Kind::line_straight, process);
        ASSERT_EQ(r.curve.points.size(), 51u);
        EXPECT_EQ(r.curve.Par, par_none);
        for (int i = 0; i <= 50; ++i) {
            const double part = i / 50.0;
            const CurvePoint& point = r.curve.points[static_cast<std::size_t>(i)];
            EXPECT_NEAR(x_of(point), c.x1 + part * (c.x2 - c.x1), 2e-5);
            EXPECT_NEAR(y_of(point), c.y1 + part * (c.y2 - c.y1), 5e-5);
        }
        EXPECT_EQ(r.curve.points.back().X, static_cast<float>(c.x2));
        EXPECT_EQ(r.curve.points.back().Y, static_cast<float>(c.y2));
    }
}

TEST(ProcessLines, statuses) {
    const Fluid& fluid = peng_robinson(propane);
    const struct {
        Kind line;
        ProcessRec process;
        CurveStatus status;
    } cases[] = {
        {Kind::line_isotherm, process_of(P::isotherm, false, 500.0, 500.0, 300.0, 500.0),
         CurveStatus::outside},
        {Kind::line_two_phase, process_of(P::isochore, true, 300.0, 300.0, 300.0, 0.0), CurveStatus::outside},
        {Kind::line_straight, ProcessRec{.T1 = 2.0, .p1 = 3.0, .T2 = 2.0, .p2 = 3.0}, CurveStatus::outside},
        {Kind::line_isentrope, process_of(P::isentrope, false, 5000.0, 9000.0, 300.0, 5000.0),
         CurveStatus::no_result},  // no vapor there
        {Kind::line_isentrope, process_of(P::isentrope, false, 500.0, NAN, 300.0, 500.0),
         CurveStatus::no_result},
        {Kind::line_isochore, process_of(P::isochore, true, 300.0, 400.0, 300.0, -5.0),
         CurveStatus::no_result},
        {Kind::line_isotherm, process_of(P::isotherm, false, -500.0, -5.0, 300.0, 1.0),
         CurveStatus::no_result},
        {Kind::line_isobar, process_of(P::isobar, true, 90.0, 80.0, 90.0, 1000.0, phase_L),
         CurveStatus::done},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.line));
        const CurveResult r = curve(fluid, Kind::p_v, c.line, c.process);
        EXPECT_EQ(r.Status, c.status);
        EXPECT_EQ(r.Msg, c.status == CurveStatus::no_result ? "no result with these input data" : "");
        if (c.status == CurveStatus::no_result) {
            EXPECT_TRUE(r.curve.points.empty());
            EXPECT_FALSE(r.Outside);
            EXPECT_EQ(r.LastProcessT, 0.0);
        }
    }
    // The triple point: left out, or told of
    CurveInput in = input_of(Kind::p_v, Kind::line_isobar, cases[7].process);
    const double Ttr = static_cast<double>(fluid.substance.Ttr);
    EXPECT_GE(CalcCurve(fluid, in).LastProcessT, Ttr);
    in.options.chkCurveTpRestricted = false;
    const CurveResult below = CalcCurve(fluid, in);
    EXPECT_EQ(below.Status, CurveStatus::below_triple);
    EXPECT_NEAR(below.LastProcessT, 80.0, 1e-9);
}

// Whatever is asked: it ends, and every point is a number.
TEST(ProcessLines, random_records) {
    std::mt19937 random(20);
    const std::shared_ptr<const Fluid> fluids[] = {
        starter_fluid(propane, Eos::peng_robinson), starter_fluid(water, Eos::berthelot),
        starter_fluid(helium, Eos::soave), starter_fluid(propane, Eos::virial_soave),
        starter_fluid(water, Eos::none)};
    const Kind lines[] = {Kind::line_straight, Kind::line_isotherm,  Kind::line_isobar,
                          Kind::line_isochore, Kind::line_isentrope, Kind::line_two_phase};
    const auto number = [&random] {
        const double extremes[] = {0.0, -1.0, 1e-300, 1e300, NAN, INFINITY, 1e-9, 1e9};
        std::uniform_real_distribution<double> exponent(-1.0, 5.0);
        return random() % 8 == 0 ? extremes[random() % 8] : std::pow(10.0, exponent(random));
    };
    const auto kinds = kind_list();
    for (int i = 0; i < 3000; ++i) {
        CurveInput in =
            input_of(kinds[random() % kinds.size()].kind, lines[random() % 6],
                     process_of(static_cast<P>(random() % 10), random() % 2 == 0, number(), number(),
                                number(), number(), random() % 2 == 0 ? phase_L : phase_V));
        in.process.T2 = number();
        in.process.p2 = number();
        in.process.UseIdealEOS = random() % 4 == 0;
        in.options.Dens = static_cast<int>(random() % 60) - 5;
        in.options.chkCurveTpRestricted = random() % 2 == 0;
        in.units = {.EnergyMode = static_cast<int>(random() % 4),
                    .VolumeMode = static_cast<int>(random() % 3)};
        const CurveResult r = CalcCurve(*fluids[random() % 5], in);
        const auto Dens = static_cast<std::size_t>(std::max(in.options.Dens, 1));
        ASSERT_LE(r.curve.points.size(), std::max<std::size_t>(51, 3 * Dens + 3));
        for (const CurvePoint& point : r.curve.points)
            ASSERT_TRUE(std::isfinite(point.X) && std::isfinite(point.Y) && std::isfinite(point.Par));
        ASSERT_TRUE(std::isfinite(r.LastProcessT) && std::isfinite(r.LastProcessP));
    }
}

}  // namespace
}  // namespace quom::test

// Which line a process record draws in a diagram, and the texts of what is refused.
#include "diagrams/process_check.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/number_text.h"
#include "diagrams/curve_generator.h"
#include "engine/saturation.h"
#include "support/starter.h"

namespace quom::test {
namespace {

using P = ProcessKind;

class ProcessCheckTest : public ::testing::Test {
 protected:
    ProcessCheck check(Kind kind, const ProcessRec& process) const {
        CurveInput in;
        in.kind = kind;
        in.process = process;
        in.range = {.XMin = 0.0f, .YMin = 0.0f, .XMax = 1000.0f, .YMax = 5000.0f};
        return check_process(*fluid, in);
    }
    std::shared_ptr<const Fluid> fluid = starter_fluid(propane, Eos::peng_robinson);
    double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr;
};

ProcessRec points(P kind, bool ScanT, double T1, double p1, double T2, double p2, bool Homogen = true) {
    ProcessRec process;
    process.kind = kind;
    process.ScanT = ScanT;
    process.T1 = T1;
    process.p1 = p1;
    process.T2 = T2;
    process.p2 = p2;
    process.Homogen = Homogen;
    process.nPoly = 1.3;
    process.kappa = 1.2;
    return process;
}

TEST_F(ProcessCheckTest, lines_and_limits) {
    const struct {
        ProcessRec process;
        Kind line;
        bool ScanT;
        double from, to;
    } cases[] = {
        {points(P::straight, false, -1.0, 5.0, 3.0, 5.0), Kind::line_straight, false, 0.0, 0.0},
        {points(P::isotherm, true, 400.0, 500.0, 0.0, 900.0), Kind::line_isotherm, false, 500.0, 900.0},
        {points(P::isobar, false, 400.0, 500.0, 450.0, 0.0), Kind::line_isobar, true, 400.0, 450.0},
        {points(P::isochore, true, 400.0, 500.0, 450.0, 0.0), Kind::line_isochore, true, 400.0, 450.0},
        {points(P::isochore, false, 400.0, 500.0, 0.0, 900.0), Kind::line_isochore, false, 500.0, 900.0},
        {points(P::isentrope, false, 400.0, 500.0, 0.0, 900.0), Kind::line_isentrope, false, 500.0, 900.0},
        {points(P::isenthalpe, true, 400.0, 500.0, 398.0, 0.0), Kind::line_isentrope, true, 400.0, 398.0},
        {points(P::isochore, true, 300.0, 0.0, 280.0, 0.0, false), Kind::line_two_phase, true, 300.0, 280.0},
        {points(P::isentrope, false, 0.0, 900.0, 0.0, 500.0, false), Kind::line_two_phase, false, 900.0,
         500.0},
        {points(P::isotherm, false, 400.0, 500.0, 0.0, 900.0, false), Kind::line_isotherm, false, 500.0,
         900.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.process.kind));
        const ProcessCheck r = check(Kind::h_T, c.process);
        ASSERT_FALSE(r.refused()) << r.refusal->text;
        EXPECT_EQ(r.input.line, c.line);
        EXPECT_EQ(r.input.kind, Kind::h_T);
        EXPECT_EQ(r.input.process.ScanT, c.ScanT);
        if (c.line != Kind::line_straight) {
            EXPECT_EQ(r.input.process.From, c.from);
            EXPECT_EQ(r.input.process.To, c.to);
        }
        // It can be drawn as it stands.
        const CurveResult curve = CalcCurve(*fluid, r.input);
        EXPECT_EQ(curve.Status, CurveStatus::done);
        EXPECT_GT(curve.curve.points.size(), 50u);
    }
    // The ends between the saturated states lie at T(LV).
    const ProcessRec two_phase =
        check(Kind::p_v, points(P::isentrope, false, 0.0, 900.0, 0.0, 500.0, false)).input.process;
    EXPECT_NEAR(pLV_EOS(*fluid, two_phase.T1).p, 900.0, 1e-5);
    EXPECT_NEAR(pLV_EOS(*fluid, two_phase.T2).p, 500.0, 1e-5);
}

TEST_F(ProcessCheckTest, refusals) {
    const std::string not_valid = "Input incomplete or not valid\nspecificated p and T have to be > 0";
    const std::string no_range = "specification of the range is not valid ";
    ProcessRec isothermal_polytropic = points(P::polytropic, true, 400.0, 500.0, 450.0, 0.0);
    isothermal_polytropic.nPoly = 1.0;
    ProcessRec no_kappa = points(P::polytropic, false, 400.0, 500.0, 0.0, 900.0);
    no_kappa.kappa = 0.0;
    ProcessRec no_fraction = points(P::vapor_fraction, false, 0.0, 0.0, 0.0, 0.0);
    no_fraction.VaporFraction = 1.01;
    const struct {
        Kind kind;
        ProcessRec process;
        std::string text;  // of the first line
    } cases[] = {
        {Kind::p_v, points(P::isotherm, false, 0.0, 500.0, 0.0, 900.0), not_valid},
        {Kind::p_v, points(P::isotherm, false, 400.0, 500.0, 0.0, -900.0), not_valid},
        {Kind::p_v, points(P::isobar, true, 400.0, NAN, 450.0, 0.0), not_valid},
        {Kind::p_v, points(P::isochore, true, 400.0, 0.0, 450.0, 0.0), not_valid},
        {Kind::p_v, points(P::isotherm, false, 400.0, 500.0, 0.0, 500.0), no_range},
        {Kind::p_v, points(P::isobar, true, 400.0, 500.0, 400.0, 0.0), no_range},
        {Kind::p_v, points(P::straight, false, 1.0, -2.0, 1.0, -2.0), no_range},
        {Kind::p_v, points(P::isochore, true, 280.0, 0.0, 400.0, 0.0, false),
         "temperature for the final tie line has to be <= T(cr) = " + genSingle(Tcr) + " K"},
        {Kind::p_v, points(P::isentrope, true, 400.0, 0.0, 280.0, 0.0, false),
         "temperature for the initial tie line has to be <= T(cr) = " + genSingle(Tcr) + " K"},
        {Kind::p_v, points(P::isenthalpe, false, 0.0, 500.0, 0.0, 9000.0, false),
         "pressure for the final tie line has to be p <= p(cr) = " + genSingle(pcr) + " kPa"},
        {Kind::p_v, points(P::isenthalpe, false, 0.0, 9000.0, 0.0, 500.0, false),
         "temperature for the initial tie line has to be <= T(cr) = " + genSingle(Tcr) + " K"},
        {Kind::p_v, points(P::isenthalpe, false, 0.0, 500.0, 0.0, 0.0, false), not_valid},
        {Kind::p_v, points(P::isochore, true, 280.0, 0.0, 280.0, 0.0, false), no_range},
        {Kind::p_v, isothermal_polytropic,
         "The condition of polytropic exp. n = 1 (=> isotherm) is in\ncontradiction to your specification of "
         "\"T range\" "},
        {Kind::p_v, no_kappa,
         "not yet a valid kappa available\n\nInput your value or click on the\nComboBox to apply one of the "
         "values offered."},
        {Kind::p_v, no_fraction, "Input not in the valid range"},
        {Kind::residual_h_T, points(P::isobar, true, 400.0, 500.0, 450.0, 0.0),
         "A process line is not possible in this diagram."},
        {Kind::sat_lnp_invT, points(P::vapor_fraction, false, 0.0, 0.0, 0.0, 0.0),
         "A process line is not possible in this diagram."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const ProcessCheck r = check(c.kind, c.process);
        ASSERT_TRUE(r.refused());
        EXPECT_EQ(r.refusal->title, "Execution not possible");
        EXPECT_EQ(r.refusal->text, c.text);
        EXPECT_EQ(r.input.line, Kind::none);
        EXPECT_EQ(r.input.kind, c.kind);
        EXPECT_EQ(r.input.process.From, 0.0);
    }
}

TEST_F(ProcessCheckTest, section_lines_and_vapor_fraction) {
    const ProcessCheck isotherm = check(Kind::p_v, points(P::section, true, 350.25, 0.0, 0.0, 0.0));
    ASSERT_FALSE(isotherm.refused());
    EXPECT_EQ(isotherm.input.line, Kind::none);
    EXPECT_EQ(isotherm.input.T, 350.25);
    EXPECT_EQ(isotherm.label, "T = 350.25 K");
    const ProcessCheck isobar = check(Kind::h_s_isobar, points(P::section, false, 300.0, 500.0, 400.0, 0.0));
    ASSERT_FALSE(isobar.refused());
    EXPECT_EQ(isobar.input.p, 500.0);
    EXPECT_EQ(isobar.label, "p = 500 kPa");
    EXPECT_EQ(isobar.input.process.From, 300.0);
    EXPECT_EQ(isobar.input.process.To, 400.0);
    EXPECT_TRUE(check(Kind::h_s_isobar, points(P::section, false, 300.0, 500.0, 300.0, 0.0)).refused());
    EXPECT_TRUE(check(Kind::p_T, points(P::section, false, 300.0, 500.0, 400.0, 0.0)).refused());

    ProcessRec half = points(P::vapor_fraction, false, 0.0, 0.0, 0.0, 0.0);
    half.VaporFraction = 0.5;
    const std::pair<Kind, Kind> partners[] = {
        {Kind::p_v, Kind::sat_p_v},   {Kind::pv_p, Kind::sat_pv_p},      {Kind::rho_p, Kind::sat_rho_p},
        {Kind::T_v, Kind::sat_T_v},   {Kind::T_rho, Kind::sat_T_rho},    {Kind::h_T, Kind::sat_h_T},
        {Kind::s_T, Kind::sat_s_T},   {Kind::g_T, Kind::sat_g_T},        {Kind::a_T, Kind::bnd_a_T},
        {Kind::cp_T, Kind::sat_cp_T}, {Kind::h_s_isobar, Kind::bnd_h_s}, {Kind::h_p, Kind::bnd_h_p},
        {Kind::eU_v, Kind::bnd_eU_v}, {Kind::cV_v, Kind::bnd_cV_v}};
    for (const auto& [kind, partner] : partners) {
        const ProcessCheck r = check(kind, half);
        ASSERT_FALSE(r.refused());
        EXPECT_EQ(r.input.kind, partner);
        EXPECT_EQ(r.input.line, Kind::none);
        EXPECT_EQ(r.input.VaporFraction, 0.5);
    }
}

TEST_F(ProcessCheckTest, polytropic_line) {
    ProcessRec process = points(P::polytropic, false, 400.0, 500.0, 0.0, 900.0);
    process.nPoly = 1.0;
    for (const Kind kind :
         {Kind::hLV_T, Kind::h_T, Kind::sat_h_T, Kind::bnd_u_T, Kind::u_T_isochore, Kind::s_T}) {
        const ProcessCheck r = check(kind, process);
        ASSERT_FALSE(r.refused());
        EXPECT_TRUE(r.polytropic);
        EXPECT_EQ(r.input.line, Kind::none);
        EXPECT_EQ(r.note.has_value(), kind != Kind::s_T);
        if (!r.note) continue;
        EXPECT_EQ(r.note->title, "Note");
        EXPECT_EQ(r.note->text,
                  "There is only one point drawn because this function is independent on pressure here.");
    }
    const ProcessCheck no_code = check(Kind::a_T, process);
    ASSERT_TRUE(no_code.refused());
    EXPECT_EQ(no_code.refusal->text, "Error - polytropic calculation");
}

}  // namespace
}  // namespace quom::test

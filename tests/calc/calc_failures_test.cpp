// Faults of a calculation: the words shown, a blank record, no value; and the boxes.
#include <gmock/gmock.h>

#include "calc/calc_batch.h"
#include "calc/calc_fixture.h"

namespace quom::test {
namespace {

using ::testing::HasSubstr;

struct Fault {
    const char* name;
    int mode;
    double T, p, rho;
    int eos;
    const char* words;  // in the text that turns red, or in the list
    ViewText OutputView::*where;
};
class Faults : public ::testing::TestWithParam<Fault> {};

constexpr int PR = eos_peng_robinson, virial_PR = 15;

TEST_P(Faults, are_told_and_leave_no_result) {
    const Fault& c = GetParam();
    Bench b(propane, c.eos);
    b.s.calc.ShowFunctions = true;
    b.s.calc.ExtLevel = 4;
    b.run(3, 300.0, 500.0);  // a good result that must not survive
    ASSERT_TRUE(b.record().has_result());
    const CalcBatchResult r = b.run(c.mode, c.T, c.p, c.rho);
    EXPECT_EQ(r.err, -1);
    EXPECT_FALSE(r.fault.empty());
    EXPECT_FALSE(r.IsL || r.IsV);
    EXPECT_EQ(r.p, 0.0);
    EXPECT_FALSE(r.view.cmdCEOSDiagnose);
    EXPECT_FALSE(b.record().has_result());
    EXPECT_EQ(b.record().TCalc, 0.0f);
    EXPECT_EQ(b.record().rhoLCalc, 0.0f);
    for (int slot = slot_vV; slot < slot_count; ++slot) EXPECT_EQ(r.Result[slot], 0.0) << slot;
    const ViewText& shown = r.view.*c.where;
    EXPECT_THAT(shown.text, HasSubstr(c.words));
    EXPECT_EQ(shown.colour, colour_red);
}
INSTANTIATE_TEST_SUITE_P(
    Modes, Faults,
    ::testing::Values(
        Fault{"no T", 1, 0, 0, 100, PR, "no T in this data set", &OutputView::par1},
        Fault{"no rho", 1, 300, 0, 0, PR, "no rho in this data set", &OutputView::par1},
        Fault{"no rho(L)", 2, 300, 0, 0, PR, "no rho in this data set", &OutputView::par2},
        Fault{"no p", 3, 300, 0, 0, PR, "no p in this data set", &OutputView::par1},
        Fault{"no T in 3", 3, 0, 500, 0, PR, "no T in this data set", &OutputView::par1},
        Fault{"no p in 8", 8, 300, 0, 0, PR, "no p in this data set", &OutputView::par1},
        Fault{"below b", 1, 300, 0, 2000, PR, " (v <= b)", &OutputView::Liste},
        Fault{"below b above T(cr)", 1, 400, 0, 2000, PR, " (v <= b)", &OutputView::Liste},
        Fault{"no p(LV)", 1, 20, 0, 100, PR, " (E-1)", &OutputView::Liste},
        Fault{"B above v", 3, 200, 5000, 0, virial_PR, " (E-1)", &OutputView::Liste},
        Fault{"T above T(cr)", 4, 400, 0, 0, PR, "T = 400.000 K > T(cr) !!!", &OutputView::par1},
        Fault{"p above p(cr)", 5, 0, 9000, 0, PR, "p = 9000.000 kPa > p(cr) !!!", &OutputView::par1},
        Fault{"T above T(cr) in 6", 6, 400, 0, 0, PR, "T = 400.000 K >= T(cr) !!!", &OutputView::par1},
        Fault{"p above p(cr) in 7", 7, 0, 9000, 0, PR, "p = 9000.000 kPa >= p(cr) !!!", &OutputView::par1},
        Fault{"no T at p, rho", 13, 0, 500, 3000, PR, " Error", &OutputView::txtco2}),
    [](const auto& test) {
        std::string name = std::to_string(test.index) + "_" + test.param.name;
        std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)) && c != '_'; });
        return name;
    });

TEST(Faults, without_vapor_pressure_equation_and_data_the_equilibrium_is_refused) {
    Bench b;
    b.s.calc.GlobalCalc = false;
    b.s.models.EVPKode = evp_none;
    CalcBatchResult r = b.run(4, 300.0, 0.0);
    EXPECT_EQ(r.view.co1.text, "No vapor pressure equation available");
    EXPECT_EQ(r.view.txtco2.text, " no p(LV) available from data set");
    EXPECT_EQ(r.err, -1);
    r = b.run(5, 0.0, 500.0);
    EXPECT_EQ(r.view.co1.text, " No T(LV) available/calculable");
    EXPECT_EQ(r.err, -1);
}

// Without its constants an equation would calculate an ideal gas.
TEST(Faults, of_an_equation_of_state_without_constants_are_no_ideal_gas) {
    for (const int code : {-1, 6, 7, 11, 15}) {
        Bench b;
        b.s.models.EOSKode = code;
        b.s.models.VPhaseOnly = code > 9;
        b.s.eos = {};
        for (const int mode : {1, 2, 3, 4, 8, 13}) {
            const CalcBatchResult r = b.run(mode, 300.0, 500.0, 10.0);
            const bool equation_alone = mode == 4 && b.s.models.VPhaseOnly;  // p(LV) without a density
            EXPECT_EQ(r.err, equation_alone ? 0 : -1) << code << " mode " << mode;
            EXPECT_EQ(r.Result[slot_vV], 0.0) << code << " mode " << mode;
        }
    }
}

TEST(Faults, of_the_driver_itself_touch_nothing) {
    Bench b;
    for (const CalcRequest& request : {CalcRequest{.Mode = 0},
                                       {.Mode = 25},
                                       {.Mode = -1},
                                       {.Mode = 3, .Point = 1},
                                       {.Mode = 3, .Point = -1}}) {
        const CalcBatchResult r = CalcBatch(b.s, request);
        EXPECT_EQ(r.err, -1);
        EXPECT_FALSE(r.fault.empty());
        EXPECT_TRUE(b.s.calc.BatchResults.empty());
    }
}

TEST(Records, stand_at_their_data_point) {
    Bench b;
    b.s.exp.points.resize(4);
    b.s.exp.points[2] = {.T = 300.0, .p = 500.0};
    EXPECT_EQ(CalcBatch(b.s, {.Mode = 3, .Point = 2}).err, 0);
    ASSERT_EQ(b.s.calc.BatchResults.size(), 4u);
    EXPECT_EQ(b.s.calc.BatchResults[2].phase(), " V ");
    EXPECT_EQ(b.s.calc.BatchResults[2].pCalc, 500.0f);
    for (const std::size_t other : {0u, 1u, 3u}) EXPECT_FALSE(b.s.calc.BatchResults[other].has_result());
    // mode 12 hands the start of the process to its point
    b.s.calc.ProcessT = 310.0, b.s.calc.ProcessP = 700.0;
    const CalcBatchResult r = CalcBatch(b.s, {.Mode = 12, .Point = 3});
    EXPECT_EQ(b.s.exp.points[3].T, 310.0);
    EXPECT_EQ(r.view.par2.text, "p = 700.000 kPa");
    EXPECT_FALSE(r.view.Liste.visible || r.view.co1.visible || r.view.txtco2.visible ||
                 r.view.fraBatchVorgabe);
}

// ---- Boxes ----

TEST(Boxes, warn_of_the_triple_point_only_when_asked_to_and_where_it_means_something) {
    Bench b(water);
    const auto boxes = [&](int mode, bool warn) {
        b.listener.asked.clear();
        b.point() = {.T = 270.0, .p = 50.0, .rhoV = 1.0f, .rhoL = 900.0f};
        CalcBatch(b.s, {.Mode = mode, .WarnTriple = warn});
        int n = 0;
        for (const Message& m : b.listener.asked) n += m.text == "T < T(TP) (Triple Point)";
        return n;
    };
    for (const int mode : {1, 3, 4, 6, 8, 11, 14}) EXPECT_EQ(boxes(mode, true), 1) << mode;
    for (const int mode : {16, 18, 24}) EXPECT_EQ(boxes(mode, true), 0) << mode;
    EXPECT_EQ(boxes(3, false), 0);
    b.set_eos(eos_ideal_gas);
    EXPECT_EQ(boxes(3, true), 0);
}

TEST(Boxes, warn_beyond_10_K_outside_the_limits_of_an_equation) {
    Bench b;
    const SubstanceConstants& k = b.s.substance;
    const auto warned = [&](int mode, double T) {
        b.listener.asked.clear();
        b.run(mode, T, 0.0);
        return !b.listener.asked.empty() && b.listener.asked[0].title == "WARNING" &&
               b.listener.asked[0].text.starts_with(
                   "T more than 10 K outside the T limits of the equation\n(T/K = ");
    };
    ASSERT_GT(k.RhoLTLo, 0);
    EXPECT_FALSE(warned(14, k.RhoLTLo - 10.0));
    EXPECT_TRUE(warned(14, k.RhoLTLo - 10.1));
    EXPECT_FALSE(warned(20, k.WagnerTLo - 10.0));
    EXPECT_TRUE(warned(20, k.WagnerTLo - 10.1));
    EXPECT_TRUE(warned(23, 300.0));  // the empty mode has limits of 0
    // without limits of its own: 10 K around the triple and the critical point, and then 10 K more
    b.s.substance.WagnerTLo = 0;
    b.s.substance.RhoLTLo = b.s.substance.RhoLTHi = 0;
    b.s.substance.RhoL = {500.0f, -1.0f, 290.0f};  // a single point with its slope
    EXPECT_FALSE(warned(14, 309.0));
    EXPECT_TRUE(warned(14, 311.0));
    EXPECT_TRUE(warned(14, 269.0));
}

TEST(Boxes, tell_of_a_database_function_without_data) {
    Bench b;
    b.s.substance.cpS = {};
    b.s.substance.HasCpS = false;
    const CalcBatchResult r = b.run(18, 80.0, 0.0);
    ASSERT_FALSE(b.listener.asked.empty());
    EXPECT_EQ(b.listener.asked.back().title, "Execution not possible");
    EXPECT_EQ(b.listener.asked.back().text, "error occured during the calculation");
    EXPECT_EQ(r.err, -1);
}

// Where the surroundings have no state there are no exergies, and the list says so.
TEST(Functions, tell_of_surroundings_without_a_state_and_of_a_missing_cp) {
    Bench b;
    b.s.reference.TEnv = 1e-6;
    const CalcBatchResult r = b.run(8, 300.0, 500.0);
    EXPECT_EQ(r.err, 0);
    EXPECT_EQ(r.Result[slot_eHV], 0.0);
    EXPECT_NE(r.Result[slot_hV], 0.0);
    EXPECT_THAT(r.list, HasSubstr("no exergies"));
    b.s.models.cpKode = 0;
    const CalcBatchResult without = b.run(8, 300.0, 500.0);
    EXPECT_THAT(without.list, HasSubstr("No cp(idGas) parameters available"));
    EXPECT_EQ(without.Result[slot_cpV], 0.0);
    EXPECT_EQ(without.Result[slot_wV], 0.0);
}

}  // namespace
}  // namespace quom::test

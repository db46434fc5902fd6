// States in words. Numbers behind the words: Peng/Robinson solved apart from the program from T(cr), p(cr),
// omega (equal fugacities): propane p(LV) at 300 K 997.43 kPa, T(LV) at 1000 kPa 300.102 K; water T(LV) at
// 101.325 kPa 374.5 K. Differences to T(cr) = 369.89 K, p(cr) = 4251.2 kPa of propane by hand.
#include "calc/state_words.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "calc/calc_fixture.h"

namespace quom {
namespace {

using test::Bench;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

void expect_words(const Bench& bench, const Outcome& outcome, const char* word, const char* distance) {
    const StateWords words = state_words(*bench.fluid, outcome);
    EXPECT_EQ(words.word, word);
    EXPECT_EQ(words.distance, distance);
}

TEST(StateWords, every_row_of_the_table) {
    const Bench propane;
    expect_words(propane, propane.run(Mode::T_p, 350, 1000), "superheated vapor", "49.9 K above T(LV)");
    expect_words(propane, propane.run(Mode::T_p, 400, 1000), "gas", "30.1 K above T(cr)");
    expect_words(propane, propane.run(Mode::T_p, 300, 5000), "compressed liquid", "4003 kPa above p(LV)");
    expect_words(propane, propane.run(Mode::T_p, 400, 6000), "supercritical",
                 "30.1 K above T(cr), 1749 kPa above p(cr)");
    expect_words(propane, propane.run(Mode::T_rho, 300, 0, 100), "two phases",
                 "x = 0.1815 at p(LV) = 997.430 kPa");
    expect_words(propane, propane.run(Mode::equilibrium_T, 300, 0), "saturated liquid and vapor",
                 "p(LV) = 997.430 kPa");
    expect_words(propane, propane.run(Mode::equilibrium_p, 0, 1000), "saturated liquid and vapor",
                 "T(LV) = 300.102 K");
    expect_words(propane, propane.run(Mode::vaporization_T, 300, 0), "saturated liquid and vapor",
                 "p(LV) = 997.430 kPa");
    expect_words(propane, propane.tank(Mode::tank_global, 100, 1, 300), "two phases",
                 "x = 0.1815 at p(LV) = 997.430 kPa");
    expect_words(propane, propane.run(Mode::p_rho, 0, 6000, 170.5828), "supercritical",
                 "30.1 K above T(cr), 1749 kPa above p(cr)");
    const Bench water(test::water);
    expect_words(water, water.run(Mode::T_p, 300, 101.325), "compressed liquid", "74.5 K below T(LV)");
}

// T(cr) itself still has a vapor below p(cr); at p(cr) and above it is supercritical.
TEST(StateWords, borders) {
    const Bench propane;
    const double Tcr = propane.substance().Tcr, pcr = propane.substance().pcr;
    EXPECT_EQ(state_words(*propane.fluid, propane.run(Mode::T_p, Tcr, 4000)).word, "superheated vapor");
    EXPECT_EQ(state_words(*propane.fluid, propane.run(Mode::T_p, Tcr + 0.01, pcr)).word, "supercritical");
    EXPECT_EQ(state_words(*propane.fluid, propane.run(Mode::T_p, Tcr - 1, pcr)).word, "compressed liquid");
    // Neither side of the curve is said to be far from it.
    EXPECT_EQ(state_words(*propane.fluid, propane.run(Mode::T_p, 300, 1e-12)),
              (StateWords{"superheated vapor", ""}));
    expect_words(propane, propane.run(Mode::equilibrium_T, 400, 0), "", "");
    expect_words(propane, propane.run(Mode::fn_rhoL, 300, 0), "", "");
    expect_words(propane, propane.run(Mode::virial, 300, 0), "", "");
}

// The word never contradicts the phase that the numbers are of. Propane boils at 231.04 K (NIST).
TEST(StateWords, vapor_only_and_partial) {
    Bench ideal(test::propane, Eos::ideal_gas);
    expect_words(ideal, ideal.run(Mode::T_p, 300, 101.325), "ideal gas", "");

    Bench virial(test::propane, Eos::virial_peng_robinson);
    virial.change([](FluidInput& f) { f.models.EVPKode = Evp::frost_kalkwarf; });
    const StateWords vapor = state_words(*virial.fluid, virial.run(Mode::T_p, 300, 101.325));
    EXPECT_EQ(vapor.word, "superheated vapor");
    EXPECT_THAT(vapor.distance, HasSubstr(" K above T(LV), of Frost/Kalkwarf"));
    EXPECT_NEAR(std::atof(vapor.distance.c_str()), 300.0 - 231.04, 0.4);
    const Outcome beyond = virial.run(Mode::T_p, 300, 1100);
    ASSERT_TRUE(beyond.has_result());
    const StateWords below = state_words(*virial.fluid, beyond);
    EXPECT_EQ(below.word, "vapor") << "the equation has no liquid";
    EXPECT_THAT(below.distance, HasSubstr(" K below T(LV), of Frost/Kalkwarf"));

    // Between the two vapor pressures the equation of state has the other phase.
    Bench partial(test::water);
    partial.change([](FluidInput& f) { f.models.Konzept = false; });
    const Outcome liquid = partial.run(Mode::T_p, 300, 3.2);  // Peng/Robinson 3.005 kPa, Wagner 3.537 kPa
    ASSERT_EQ(liquid.phase, PhaseWord::L);
    const StateWords other = state_words(*partial.fluid, liquid);
    EXPECT_EQ(other.word, "liquid");
    EXPECT_THAT(other.distance, HasSubstr(" K above T(LV)"));
}

TEST(StateWords, reservations_with_limits_and_value) {
    const Bench propane;
    const auto lines = [](const Bench& b, const Outcome& o) { return warning_lines(*b.fluid, o); };
    EXPECT_THAT(lines(propane, propane.run(Mode::T_p, 350, 1000)), IsEmpty());
    Outcome hot = propane.run(Mode::T_p, 1600, 6000);
    EXPECT_THAT(lines(propane, hot), ElementsAre(AllOf(StartsWith("cp(idG) is extrapolated: sinh/cosh holds "
                                                                  "for T/K = "),
                                                       HasSubstr(" ... 1500, here 1600."))));
    EXPECT_THAT(lines(propane, propane.run(Mode::T_p, 80, 1000)),
                Contains(AllOf(HasSubstr("here T/K = 80"), HasSubstr("T(tr)/K = 85.5"))));
    const RefusalWords refused = refusal_words(propane.run(Mode::equilibrium_T, 500, 0));
    EXPECT_EQ(refused.reason, "500 K is not below T(cr) = 369.89 K: there is no saturation.");
    EXPECT_THAT(refused.help, HasSubstr("below T(cr) only"));
}

TEST(StateWords, trust_line_says_why_it_is_empty) {
    const Bench water(test::water);
    const TrustLine line = trust_line(*water.fluid, water.run(Mode::T_p, 300, 101.325));
    EXPECT_EQ(line.head, "EOS against record, 300 K:");
    ASSERT_EQ(line.figures.size(), 3u);
    EXPECT_EQ(line.figures[0].quantity, "rho(L)");
    EXPECT_EQ(line.figures[0].difference, "-14.9 %");  // 847.6 of 996.3 kg/m^3
    EXPECT_TRUE(line.figures[0].large);
    EXPECT_EQ(line.figures[1].difference, "-15.1 %");  // 3.005 of 3.537 kPa
    EXPECT_EQ(line.figures[2].difference, "+4.2 %");
    EXPECT_FALSE(line.figures[2].large);
    const auto head = [&](const Bench& b, const Outcome& o) { return trust_line(*b.fluid, o).head; };
    EXPECT_EQ(head(water, water.run(Mode::T_p, 700, 101.325)),
              "Nothing in the record to compare with at 700 K: T is above T(cr).");
    EXPECT_EQ(refusal_words(water.run(Mode::equilibrium_T, 1e40, 0)).reason,
              "1E+40 K is not below T(cr) = 647.096 K: there is no saturation.");
    EXPECT_EQ(head(water, water.run(Mode::equilibrium_T, 1e40, 0)),
              "Nothing in the record to compare with at 1E+40 K: T is above T(cr).");
    const Bench virial(test::propane, Eos::virial_peng_robinson);
    EXPECT_THAT(head(virial, virial.run(Mode::T_p, 300, 101.325)), HasSubstr("V-phase alone"));
    EXPECT_THAT(head(water, water.run(Mode::fn_rhoL, 300, 0)), HasSubstr("of the record itself"));
}

TEST(StateWords, picture_holds_curve_and_state) {
    const Bench propane;
    const auto near = saturation_picture(*propane.fluid, propane.run(Mode::T_p, 350, 1000));
    ASSERT_TRUE(near && near->state);
    EXPECT_DOUBLE_EQ(near->T_low, 0.5 * 369.89);
    EXPECT_EQ(near->curve.back().p, near->critical.p);
    for (std::size_t i = 1; i < near->curve.size(); ++i) {
        EXPECT_LT(near->curve[i - 1].T, near->curve[i].T);
        EXPECT_LT(near->curve[i - 1].p, near->curve[i].p);
    }
    const auto far = saturation_picture(*propane.fluid, propane.run(Mode::T_p, 1600, 60000));
    ASSERT_TRUE(far && far->state);
    EXPECT_DOUBLE_EQ(far->state->T, far->T_high);
    EXPECT_DOUBLE_EQ(far->state->p, far->p_high);
    const auto cold = saturation_picture(*propane.fluid, propane.run(Mode::T_p, 100, 0.01));
    ASSERT_TRUE(cold && cold->state);
    EXPECT_GT(cold->state->T, cold->T_low);
    EXPECT_GT(cold->state->p, cold->p_low);
    EXPECT_FALSE(saturation_picture(*propane.fluid, propane.run(Mode::equilibrium_T, 400, 0))->state);
}

}  // namespace
}  // namespace quom

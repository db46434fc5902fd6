// Densities and heat capacities of the L- and S-phase: every form of the equations by hand, Benson's method,
// boxes.
#include "engine/condensed_phases.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "calc/sample_substances.h"
#include "support/starter.h"

namespace quom {
namespace {

// Coefficients with round numbers, so that the density can be told by hand.
struct RhoLForm {
    const char* form;
    std::array<float, 7> k;  // A .. G
    float H;
    std::int16_t TLo, THi;
    float T;
    double rho;
    int err;
};
const RhoLForm RhoLForms[] = {
    {"line: A at C, slope B", {800, -1.2f, 300}, 0, 0, 0, 310, 788, 0},
    {"line with an upper limit alone", {800, -1.2f, 300}, 0, 0, 400, 310, 788, 0},
    {"A and B alone: polynomial", {1000, -0.5f}, 0, 0, 0, 300, 850, 0},
    {"cubic with limits", {1000, -1, 1e-3f, -1e-6f}, 0, 200, 400, 300, 763, 0},
    {"E/(F + T)", {1000, -1, 1e-3f, -1e-6f, -5000, -200}, 0, 200, 400, 300, 713, 0},
    {"pole of E/(F + T)", {1000, 0, 0, 0, -5000, -300}, 0, 200, 400, 300, 0, -1},
    {"G (1 - T/H)^(1/3)", {200, 0, 0, 0, 0, 0, 800}, 500, 200, 500, 437.5f, 600, 0},
    {"no G from H up", {200, 0, 0, 0, 0, 0, 800}, 500, 200, 500, 500, 200, 0},
    {"E and G together", {200, 0, 0, 0, 1000, 62.5f, 800}, 500, 200, 500, 437.5f, 602, 0},
    {"polynomial below 0", {100, -1}, 0, 100, 300, 200, 0, -1},
    {"Rackett", {0, 80, 0.25f, 0.5f}, 400, 200, 400, 300, 640, 0},
    {"Rackett at H", {0, 80, 0.25f, 0.5f}, 400, 200, 400, 400, 320, 0},
    {"Rackett above H: no liquid", {0, 80, 0.25f, 0.5f}, 400, 200, 400, 401, 0, 0},
    {"Rackett without C", {0, 80, 0, 0.5f}, 400, 200, 400, 300, 0, -1},
    {"nothing", {}, 0, 0, 0, 300, 0, -1},
};

TEST(RhoL, Forms) {
    Session s = test::starter_session();
    for (const RhoLForm& row : RhoLForms) {
        s.substance.RhoL = row.k;
        s.substance.RhoLTcr = row.H;
        s.substance.RhoLTLo = row.TLo, s.substance.RhoLTHi = row.THi;
        const DensityResult r = rhoL_Fu(s, row.T);
        EXPECT_NEAR(r.rho, row.rho, 2e-6 * row.rho) << row.form;
        EXPECT_EQ(r.err, row.err) << row.form;
    }
}

TEST(RhoS, Forms) {
    Session s = test::starter_session();
    SubstanceConstants& c = s.substance;
    c.RhoS = {900, -0.1f, 1e-3f, -1e-6f};
    c.RhoSTLo = 100, c.RhoSTHi = 250;
    EXPECT_NEAR(rhoS_Fu(s, 200).rho, 912.0, 1e-3);
    c.RhoSTLo = c.RhoSTHi = 0;  // the line A + B (T - C)
    c.RhoS = {900, -0.1f, 273, 0};
    EXPECT_NEAR(rhoS_Fu(s, 263).rho, 901.0, 1e-3);
    c.RhoS = {};
    EXPECT_EQ(rhoS_Fu(s, 263).rho, 0.0);
    // ice at the triple point: 916.71 kg/m^3, cp 2.0968 kJ/(kg K) (IAPWS R10-06)
    test::select_substance(s, test::water, eos_peng_robinson);
    EXPECT_NEAR(rhoS_Fu(s, 273.15f).rho, 916.71, 0.1);
    EXPECT_NEAR(cpS_Fu(s, 273.15), 2.0968 * 18.0153, 0.2);
}

// rho(L) of ethanol from its equation (Rackett form, validity 160 to 514 K), rho(S) of water (150 to 273 K).
struct Warned {
    bool solid;
    float T;
    int dT;
    const char* offset;  // as the box prints it; none: no box
};
const Warned Boxes[] = {
    {false, 300.0f, 0, nullptr}, {false, 155.0f, -5, nullptr}, {false, 154.0f, -6, "-6"},
    {false, 519.0f, 5, nullptr}, {false, 520.0f, 6, " 6"},     {true, 145.0f, -5, nullptr},
    {true, 144.0f, -6, "-6"},    {true, 278.5f, 6, " 6"},      {true, 277.5f, 4, nullptr},
};

TEST(CondensedPhases, BoxesFrom6KOutside) {
    for (const Warned& row : Boxes) {
        Session s = test::substance_session(row.solid ? test::water : test::ethanol, eos_peng_robinson);
        for (const bool warn : {true, false}) {
            QueuedMessages user;
            s.messages = &user;
            const DensityResult r = row.solid ? rhoS_Fu(s, row.T, warn) : rhoL_Fu(s, row.T, warn);
            EXPECT_EQ(r.dT, row.dT) << row.T;
            ASSERT_EQ(user.asked.size(), warn && row.offset ? 1u : 0u) << row.T;
            if (user.asked.empty()) continue;
            const std::string temperature = std::string(" Temperature") + row.offset;
            EXPECT_EQ(user.asked[0].title, row.solid ? "Warning concerning the equ. rho(S) = Fu(T)"
                                                     : "Warning concerning the equation rho(L) = Fu(T)");
            EXPECT_EQ(user.asked[0].text,
                      temperature + (row.solid ? " K outside T-range of the parameters\n(range of validity: "
                                                 "150 ... 273 K)"
                                               : " K outside parameter validity\n(for temperature range cf. "
                                                 "window \"Models\")"));
        }
    }
    // the line has no validity
    Session s = test::starter_session();
    QueuedMessages user;
    s.messages = &user;
    s.substance.RhoL = {800, -1.2f, 300};
    s.substance.RhoLTHi = 310;
    EXPECT_EQ(rhoL_Fu(s, 700, true).dT, 0);
    EXPECT_TRUE(user.asked.empty());
}

struct CpForm {
    const char* form;
    const char* cas;
    std::array<float, 5> P;
    double T, cp;
};
constexpr const char *any = "64-17-5", *helium = "7440-59-7";
const CpForm CpForms[] = {
    {"quartic", any, {10, 0.1f, 1e-3f, 1e-6f, 1e-9f}, 100, 31.1},
    {"quartic up to |P4| < 10", any, {10, 0, 0, 0, -9.5f}, 2, -142},
    {"P4/T^2 from |P4| = 10", any, {10, 0.1f, 1e-3f, 1e-6f, -10}, 2, 7.704008},
    {"without P0", any, {0, 5, 0.1f, 1e-3f, 1e4f}, 100, 26},
    {"sinh/cosh from P2 = 100", any, {10, 20, 300, 30, 400}, 100, 12.43724},
    {"sinh/cosh from P2 = 100", any, {10, 20, 100, 30, 400}, 1e6, 30.0},  // (x/sinh x)^2 is 1, (x/cosh x)^2 0
    {"polynomial below it", any, {10, 0, 99.5f, 0, 0}, 2, 408},
    {"helium: polynomial up to 500", helium, {10, 0, 300, 0, 0}, 2, 1210},
    {"helium: sinh/cosh from 500", helium, {10, 20, 500, 30, 400}, 1e6, 30.0},
    {"argument above 709: that term is 0", any, {10, 20, 8000, 30, 1}, 10, 10.2970},
    {"no temperature", any, {10, 0, 0, 0, 0}, 1e-7, 0},
};

TEST(CpOfLiquidAndSolid, Forms) {
    Session s = test::starter_session();
    for (const CpForm& row : CpForms) {
        s.substance.StoffCAS = row.cas;
        s.substance.cpL = s.substance.cpS = row.P;
        EXPECT_NEAR(cpL_Fu(s, row.T), row.cp, 1e-5 * std::fabs(row.cp)) << row.form;
        EXPECT_EQ(cpS_Fu(s, row.T), cpL_Fu(s, row.T)) << row.form;
    }
}

// Benson's density at the normal boiling point against the NIST Chemistry WebBook (water: IAPWS-95); good for
// 1 or 2 %, the simple molecules come out 2 to 4 % high.
TEST(Benson, DensityAtTheNormalBoilingPoint) {
    Session s = test::starter_session();
    const struct {
        std::string_view cas;
        double rho, tol;
    } rows[] = {{test::water, 958.37, 0.01},   {test::propane, 580.9, 0.02}, {test::methane, 422.36, 0.04},
                {test::nitrogen, 806.1, 0.03}, {test::argon, 1395.4, 0.04},  {test::ammonia, 682.0, 0.03},
                {"74-84-0", 543.97, 0.02},     {"106-97-8", 601.3, 0.02}};
    for (const auto& row : rows) {
        test::select_substance(s, row.cas, eos_peng_robinson);
        const double rho = rhoLRefBenson(101.335, s.substance.pcr, s.substance.rhocrDB);
        EXPECT_NEAR(rho, row.rho, row.tol * row.rho) << row.cas;
    }
    EXPECT_EQ(rhoLRefBenson(101.335, 0.0, 300.0), 0.0f);
}

TEST(Benson, RectilinearDiameter) {
    Session s = test::substance_session(test::propane, eos_peng_robinson);
    const double Tcr = s.substance.Tcr, rhocr = s.substance.rhocrDB;
    s.benson = {.TRefL = s.substance.Tnb, .pLVRef = 101.335f, .rhoLRef = 580.9f, .rhoVRef = 2.417f};
    // through both of its points
    EXPECT_NEAR(rhoLBenson(s, static_cast<double>(s.benson.TRefL), 2.417), 580.9, 1e-3);
    EXPECT_NEAR(rhoLBenson(s, Tcr, 100.0), 2.0 * rhocr - 100.0, 1e-6);
    // NIST Chemistry WebBook, saturated propane at 300 K: 489.5 and 21.6 kg/m^3
    EXPECT_NEAR(rhoLBenson(s, 300.0, 21.6), 489.5, 0.01 * 489.5);
    const BensonReference good = s.benson;
    s.benson.TRefL = 0;
    EXPECT_EQ(rhoLBenson(s, 300.0, 20.0), 0.0);
    s.benson = good, s.benson.rhoLRef = 0;
    EXPECT_EQ(rhoLBenson(s, 300.0, 20.0), 0.0);
    s.benson = good, s.substance.Tcr = s.benson.TRefL;
    EXPECT_EQ(rhoLBenson(s, 300.0, 20.0), 0.0);
    s.substance.Tcr = Tcr, s.substance.rhocrDB = 0.0;
    EXPECT_EQ(rhoLBenson(s, 300.0, 20.0), 0.0);
}

}  // namespace
}  // namespace quom

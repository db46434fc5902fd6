// Constants of the equations of state: against the published factors, and the conditions at the critical
// point.
#include "engine/eos_parameters.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/tovarn_ji.h"
#include "engine/volume_solver.h"
#include "support/queued_messages.h"
#include "support/starter.h"

namespace quom {
namespace {

// p = p(cr), dp/dv = 0 and d2p/dv2 = 0 at T(cr), v = Zc R T(cr)/p(cr), by differences of p over v.
void expect_critical_point(Session& s, double Zc, const std::string& what) {
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr, v = Zc * RGas * Tcr / pcr, h = 1e-3 * v;
    EOSParT(s, Tcr);
    const double low = pTv(s, Tcr, v - h).p, here = pTv(s, Tcr, v).p, high = pTv(s, Tcr, v + h).p;
    EXPECT_NEAR(here / pcr, 1.0, 1e-7) << what;
    EXPECT_NEAR((high - low) / pcr, 0.0, 1e-7) << what;  // of the order h^3 at a point of inflection
    EXPECT_NEAR((high - 2.0 * here + low) / pcr, 0.0, 1e-8) << what;
}

TEST(EosParameters, PublishedFactorsAndCriticalPoint) {
    // a p(cr)/(R^2 T(cr)^2) at T(cr), b p(cr)/(R T(cr)): Poling, Prausnitz and O'Connell, The Properties of
    // Gases and Liquids, 5th ed. (2001), table 4-6; Zc of Peng/Robinson 0.307401
    const struct {
        int code;
        double a, b, Zc;
    } rows[] = {{2, 0.421875, 0.125, 0.375},
                {3, 0.421875, 0.125, 0.375},
                {4, 0.42748, 0.08664, 1.0 / 3.0},
                {5, 0.42748, 0.08664, 1.0 / 3.0},
                {6, 0.45724, 0.07780, 0.30740131}};
    Session s = test::substance_session(test::propane, 6);
    const double RT = RGas * s.substance.Tcr, pcr = s.substance.pcr;
    for (const auto& row : rows) {
        test::select_eos(s, row.code);
        EOSParT(s, s.substance.Tcr);
        EXPECT_NEAR(s.scratch.aT * pcr / (RT * RT), row.a, 6e-6) << row.code;
        EXPECT_NEAR(s.scratch.bT * pcr / RT, row.b, 6e-6) << row.code;
        EXPECT_NEAR(s.eos.vcrEOS * pcr / RT, row.Zc, 2e-6) << row.code;
        EXPECT_NEAR(s.eos.rhocrEOS * s.eos.vcrEOS, s.substance.MolMass, 1e-9) << row.code;
        expect_critical_point(s, row.Zc, std::to_string(row.code));
    }
    test::select_eos(s, 15);  // a virial form: the constants of its parent, no critical volume
    EXPECT_NEAR(s.eos.EOSb * pcr / RT, 0.07780, 6e-6);
    EXPECT_EQ(s.eos.vcrEOS + s.eos.rhocrEOS, 0.0);
}

TEST(EosParameters, TovarnJiTakesItsParametersFromAFile) {
    Session s = test::substance_session(test::propane, 6);
    QueuedMessages user;
    s.messages = &user;
    s.models.EOSKode = 7;
    EXPECT_EQ(InitEOSPar(s, 7), 1);  // no parameters yet
    ASSERT_EQ(user.asked.size(), 1u);
    EXPECT_EQ(user.asked[0].title, "Execution not possible");
    EXPECT_EQ(user.asked[0].text, "Error - EOS-parameter calculation (Tovarn-Ji model)");

    // the number in front is ignored; code 8 has one more
    EXPECT_EQ(ReadDjipar("7\r\n0.1, 0.6, 0.08, -0.02, 0.31\r\n", 7, s.eos), "");
    EXPECT_EQ(s.eos.JiP3 + s.eos.JiP4 + s.eos.JiP5, 0.6 + 0.08 - 0.02);
    EXPECT_EQ(InitEOSPar(s, 7), 0);
    expect_critical_point(s, 0.31, "code 7");
    s.models.EOSKode = 8;
    EXPECT_EQ(ReadDjipar("8\n0.1,0.6,0.08,-0.02,0.29,0.05", 8, s.eos), "");
    EXPECT_EQ(s.eos.JiB1, 0.05);
    EXPECT_EQ(InitEOSPar(s, 8), 0);
    expect_critical_point(s, 0.29, "code 8");

    const EosBlock before = s.eos;
    for (const char* bad : {"", "8\n", "8\n0.1,0.6,0.08,-0.02,0.29", "8\n0.1,0.6,x,-0.02,0.29,0.05"}) {
        EXPECT_NE(ReadDjipar(bad, 8, s.eos), "") << bad;
        EXPECT_EQ(s.eos, before) << "a fault leaves the block as it was";
    }
    s.eos.JiZc = 0.4;  // c and d would be no numbers
    s.models.EOSKode = 7;
    EXPECT_EQ(InitEOSPar(s, 7), 1);
}

TEST(EosParameters, NothingHappensWithoutCriticalDataOrBelowTheSmallestT) {
    Session s = test::substance_session(test::propane, 6);
    EOSParT(s, 300.0);
    const double before = s.scratch.aT;
    EOSParT(s, 0.0);
    EXPECT_EQ(s.scratch.aT, before);
    const EosBlock block = s.eos;
    EXPECT_EQ(InitEOSPar(s, -1), 0);
    s.substance.pcr = 0.0;
    EXPECT_EQ(InitEOSPar(s, 5), 0);
    EXPECT_EQ(s.eos, block);
}

}  // namespace
}  // namespace quom

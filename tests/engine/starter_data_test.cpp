// The sets of the starter database against each other: a record whose constants come from two tables shows
// here.
#include <gtest/gtest.h>

#include <cmath>

#include "engine/vapor_pressure.h"
#include "support/starter.h"

namespace quom::test {
namespace {

class StarterData : public ::testing::Test {
 protected:
    template <class Check>
    void for_every_substance(Check check) {
        const DatabaseFile file = starter_database();
        for (int index = 1; index <= file.StoffAnzahl(); ++index) {
            const SubstanceConstants substance = unpack_substance(file, index, true).constants;
            SCOPED_TRACE(substance.StoffCAS + " " + substance.StoffName);
            check(substance);
        }
    }
};

constexpr Evp database_sets[] = {Evp::antoine_low, Evp::antoine_high, Evp::frost_kalkwarf, Evp::wagner};

// p(LV) at T(cr): a Wagner set ends in the constants it carries.
double p_at_critical_point(const SubstanceConstants& k, Evp code) {
    return code == Evp::wagner ? static_cast<double>(k.Wagnerpcr) : pLV_EVP(k, k.Tcr, code).value;
}

// The boiling points of handbooks scatter by up to 1 K, which is 3 % of p.
TEST_F(StarterData, VaporPressureMeetsBoilingAndCriticalPoint) {
    int at_Tcr = 0, at_Tnb = 0;
    for_every_substance([&](const SubstanceConstants& k) {
        if (k.WagnerTLo > 0) {
            EXPECT_NEAR(static_cast<double>(k.WagnerTcr) / k.Tcr, 1.0, 0.004);
        }
        for (const Evp code : database_sets) {
            const TLimits limits = evp_limits(k, code);
            if (limits.TLo == 0) continue;
            if (limits.THi >= k.Tcr - 1.5) {
                ++at_Tcr;
                EXPECT_NEAR(p_at_critical_point(k, code) / k.pcr, 1.0, 0.02) << number_of(code);
            }
            const double Tnb = static_cast<double>(k.Tnb);
            if (limits.TLo <= Tnb && Tnb <= limits.THi) {
                ++at_Tnb;
                EXPECT_NEAR(pLV_EVP(k, Tnb, code).value / 101.325, 1.0, 0.0305) << number_of(code);
            }
        }
    });
    EXPECT_GT(at_Tcr, 700);  // both kinds are there in numbers
    EXPECT_GT(at_Tnb, 1000);
}

// omega = -log10(p(0.7 Tcr)/pcr) - 1 (Pitzer 1955)
TEST_F(StarterData, AcentricFactorFollowsTheVaporPressure) {
    for_every_substance([](const SubstanceConstants& k) {
        for (const Evp code : {Evp::frost_kalkwarf, Evp::wagner}) {
            const TLimits limits = evp_limits(k, code);
            if (limits.TLo == 0 || limits.TLo > 0.7 * k.Tcr || limits.THi < 0.7 * k.Tcr) continue;
            const double omega = -std::log10(pLV_EVP(k, 0.7 * k.Tcr, code).value / k.pcr) - 1.0;
            EXPECT_NEAR(omega, k.omega, 0.011) << number_of(code);
        }
    });
}

TEST_F(StarterData, EverySubstanceHasHeatCapacityOfTheIdealGas) {
    for_every_substance([](const SubstanceConstants& k) { EXPECT_TRUE(k.havePoly || k.haveSinh); });
}

}  // namespace
}  // namespace quom::test

#include "calc/reference_point.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/vapor_pressure.h"
#include "forms/sample_session.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

ReferencePointResult point_of(const SubstanceConstants& x, Eos code = Eos::peng_robinson) {
    return ReferencePoint(*sample::propane(code, x).fluid);
}

struct Case {
    const char* name;
    void (*change)(SubstanceConstants&);
    double T, p, rhoL;  // p below 0: by the vapor pressure equation
    const char* says;
};

// Where the values come from is told in the text; each case leaves out what the one before has used.
TEST(ReferencePoint, takes_what_the_record_has) {
    const Case cases[] = {
        {"equation", sample::add_liquid_density, 231.02, 101.3, 582.6, "(from database equ. rho(T))"},
        {"slope",
         [](SubstanceConstants& x) {
             x.RhoL = {493.0f, -1.3f, 298.15f};
         },
         231.02, 101.3, 493.0 + 1.3 * (298.15 - 231.02), "(calculated from drho/dT)"},
        {"point only",
         [](SubstanceConstants& x) {
             x.RhoL = {493.0f, 0.0f, 298.15f};
         },
         298.15, -1.0, 493.0, "(database: single point for density)"},
        {"point without boiling T",
         [](SubstanceConstants& x) {
             x.RhoL = {493.0f, -1.3f, 298.15f};
             x.Tnb = 0.0f;
             x.KFDB = {6.203f, -961.0f};  // log10 p = A + B/(T + C - 273.15)
             x.KFDB[2] = 273.15f;
             x.KFTLo = 200;
             x.KFTHi = 360;
         },
         298.15, -1.0, 493.0, "FRO-equation)"},
        {"boiling T only", [](SubstanceConstants&) {}, 231.02, 101.3, 0.0, "(normal boiling T)"},
    };
    for (const Case& c : cases) {
        SubstanceConstants x = sample::propane_constants();
        c.change(x);
        Document d = sample::propane_document(Eos::peng_robinson, x);
        if (x.KFTLo != 0) d.models.EVPKode = Evp::frost_kalkwarf;
        const auto fluid = make_fluid({x, d.models, d.eos_input, d.reference});
        const ReferencePointResult r = ReferencePoint(*fluid);
        ASSERT_EQ(r.err(), 0) << c.name;
        EXPECT_NEAR(r.T, c.T, 1e-4) << c.name;
        const double p = c.p >= 0.0 ? c.p : pLV_EVP(fluid->substance, 298.15, d.models.EVPKode).value;
        EXPECT_GT(p, 0.0) << c.name;
        EXPECT_NEAR(r.p, p, 0.01) << c.name;
        EXPECT_NEAR(r.rhoL, c.rhoL, 0.05) << c.name;
        EXPECT_THAT(r.text, HasSubstr(c.says)) << c.name;
        const double ideal = 44.0956 * r.p / (8.31451 * r.T);
        EXPECT_GT(r.rhoV, ideal) << c.name;  // attraction: denser than the ideal gas
        EXPECT_LT(r.rhoV, 1.3 * ideal) << c.name;
        EXPECT_EQ(r.reference().complete(), c.rhoL > 0.0) << c.name;
    }
    SubstanceConstants nothing = sample::propane_constants();
    nothing.Tnb = 0.0f;
    EXPECT_EQ(point_of(nothing).err(), -1);
    EXPECT_EQ(point_of(nothing).reference(), BensonReference{});
}

TEST(ReferencePoint, has_a_vapor_density_without_an_equation_of_state) {
    SubstanceConstants x = sample::propane_constants();
    const double ideal = 44.0956 * 101.3 / (8.31451 * 231.02);
    const ReferencePointResult virial = point_of(x, Eos::none);
    EXPECT_THAT(virial.text, HasSubstr("(using Virial-EOS, PITZER/CURL)"));
    EXPECT_NEAR(virial.rhoV, 2.42, 0.02);  // saturated vapor at the boiling point, NIST: 2.416 kg/m^3
    x.omega = 0.0;
    const ReferencePointResult gas = point_of(x, Eos::none);
    EXPECT_THAT(gas.text, HasSubstr("(using idealgas EOS)"));
    EXPECT_NEAR(gas.rhoV, ideal, 1e-4);
}

TEST(ReferencePoint, of_benson_keeps_its_own_normal_pressure) {
    SubstanceConstants x = sample::propane_constants();
    const ReferencePointResult r = BensonReferencePoint(*sample::propane(Eos::peng_robinson, x).fluid);
    ASSERT_EQ(r.err(), 0);
    EXPECT_EQ(static_cast<float>(r.p), 101.335f);
    EXPECT_NEAR(r.rhoL, (1.981 + 0.18327 * std::log(4248.0 / 101.3)) * 44.0956 / 0.2, 0.01);
    EXPECT_THAT(r.text, HasSubstr("101.325  (normal pressure)"));
    x.rhocrDB = 0.0;
    EXPECT_EQ(BensonReferencePoint(*sample::propane(Eos::peng_robinson, x).fluid).err(), -1);
}

}  // namespace
}  // namespace quom

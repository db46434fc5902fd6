// Densities and heat capacities of the L- and S-phase: every form of the equations by hand, validity,
// Benson's method.
#include "engine/condensed_phases.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/validity.h"
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
    Reason reason = Reason::none;
};
const RhoLForm RhoLForms[] = {
    {"line: A at C, slope B", {800, -1.2f, 300}, 0, 0, 0, 310, 788},
    {"line with an upper limit alone", {800, -1.2f, 300}, 0, 0, 400, 310, 788},
    {"A and B alone: polynomial", {1000, -0.5f}, 0, 0, 0, 300, 850},
    {"cubic with limits", {1000, -1, 1e-3f, -1e-6f}, 0, 200, 400, 300, 763},
    {"E/(F + T)", {1000, -1, 1e-3f, -1e-6f, -5000, -200}, 0, 200, 400, 300, 713},
    {"pole of E/(F + T)", {1000, 0, 0, 0, -5000, -300}, 0, 200, 400, 300, 0, Reason::no_liquid_density},
    {"G (1 - T/H)^(1/3)", {200, 0, 0, 0, 0, 0, 800}, 500, 200, 500, 437.5f, 600},
    {"no G from H up", {200, 0, 0, 0, 0, 0, 800}, 500, 200, 500, 500, 200},
    {"E and G together", {200, 0, 0, 0, 1000, 62.5f, 800}, 500, 200, 500, 437.5f, 602},
    {"polynomial below 0", {100, -1}, 0, 100, 300, 200, 0, Reason::no_liquid_density},
    {"Rackett", {0, 80, 0.25f, 0.5f}, 400, 200, 400, 300, 640},
    {"Rackett at H", {0, 80, 0.25f, 0.5f}, 400, 200, 400, 400, 320},
    {"Rackett above H: no liquid", {0, 80, 0.25f, 0.5f}, 400, 200, 400, 401, 0},
    {"Rackett without C", {0, 80, 0, 0.5f}, 400, 200, 400, 300, 0, Reason::no_liquid_density},
    {"nothing", {}, 0, 0, 0, 300, 0, Reason::no_database_equation},
};

TEST(RhoL, Forms) {
    for (const RhoLForm& row : RhoLForms) {
        SubstanceConstants substance;
        substance.RhoL = row.k;
        substance.RhoLTcr = row.H;
        substance.RhoLTLo = row.TLo;
        substance.RhoLTHi = row.THi;
        const DensityResult r = rhoL_Fu(substance, row.T);
        EXPECT_NEAR(r.rho, row.rho, 2e-6 * row.rho) << row.form;
        EXPECT_EQ(r.reason, row.reason) << row.form;
    }
}

struct RhoSForm {
    const char* form;
    std::array<float, 4> k;  // A .. D
    std::int16_t TLo, THi;
    float T;
    double rho;
};
const RhoSForm RhoSForms[] = {
    {"cubic with limits", {900, -0.1f, 1e-3f, -1e-6f}, 100, 250, 200, 912},
    {"line: A at C, slope B", {900, -0.1f, 273, 0}, 0, 0, 263, 901},
    {"nothing", {}, 0, 0, 263, 0},
    {"one limit only", {900, -0.1f, 273, 0}, 100, 0, 263, 0},
};

TEST(RhoS, Forms) {
    for (const RhoSForm& row : RhoSForms) {
        SubstanceConstants substance;
        substance.RhoS = row.k;
        substance.RhoSTLo = row.TLo;
        substance.RhoSTHi = row.THi;
        const DensityResult r = rhoS_Fu(substance, row.T);
        EXPECT_NEAR(r.rho, row.rho, 1e-3) << row.form;
        EXPECT_EQ(r.reason, row.rho > 0 ? Reason::none : Reason::no_database_equation) << row.form;
    }
    // ice at the triple point: 916.71 kg/m^3, cp 2.0968 kJ/(kg K) (IAPWS R10-06)
    const SubstanceConstants water = test::starter_substance(test::water);
    EXPECT_NEAR(rhoS_Fu(water, 273.15f).rho, 916.71, 0.1);
    EXPECT_NEAR(cpS_Fu(water, 273.15), 2.0968 * 18.0153, 0.2);
}

// rho(L) of ethanol from its equation (Rackett form, validity 160 to 514 K), rho(S) of water (150 to 273 K).
struct Offset {
    bool solid;
    float T;
    int dT;
    bool told;
};
const Offset Offsets[] = {
    {false, 300.0f, 0, false}, {false, 155.0f, -5, false}, {false, 154.0f, -6, true},
    {false, 519.0f, 5, false}, {false, 520.0f, 6, true},   {true, 145.0f, -5, false},
    {true, 144.0f, -6, true},  {true, 278.5f, 6, true},    {true, 277.5f, 4, false},
};

TEST(CondensedPhases, OffsetsFromTheValidity) {
    const SubstanceConstants ethanol = test::starter_substance(test::ethanol);
    const SubstanceConstants water = test::starter_substance(test::water);
    for (const Offset& row : Offsets) {
        const DensityResult r = row.solid ? rhoS_Fu(water, row.T) : rhoL_Fu(ethanol, row.T);
        EXPECT_EQ(r.dT, row.dT) << row.T;
        const WarningKind kind = row.solid ? WarningKind::rhoS_range : WarningKind::rhoL_range;
        const auto warning = range_warning(kind, row.T, {150, 273}, r.dT, density_warns);
        ASSERT_EQ(warning.has_value(), row.told) << row.T;
        if (!warning) continue;
        const Warning expected{kind, row.T, 150.0, 273.0, static_cast<std::int16_t>(row.dT)};
        EXPECT_EQ(*warning, expected);
    }
    SubstanceConstants line;  // it has no validity
    line.RhoL = {800, -1.2f, 300};
    line.RhoLTHi = 310;
    EXPECT_EQ(rhoL_Fu(line, 700).dT, 0);
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
    for (const CpForm& row : CpForms) {
        SubstanceConstants liquid;
        liquid.StoffCAS = row.cas;
        SubstanceConstants solid = liquid;
        liquid.cpL = row.P;
        solid.cpS = row.P;
        EXPECT_NEAR(cpL_Fu(liquid, row.T), row.cp, 1e-5 * std::fabs(row.cp)) << row.form;
        EXPECT_EQ(cpS_Fu(solid, row.T), cpL_Fu(liquid, row.T)) << row.form;
        EXPECT_EQ(cpS_Fu(liquid, row.T), 0.0f) << row.form;
    }
}

// By hand, with rho(L)/rho(cr) = 1.981 at p(cr) = 101.3 kPa and 0.18327 ln 10 more for ten times that.
TEST(Benson, DensityAtTheReferencePoint) {
    const struct {
        double pcr, rhocr, rho;
    } rows[] = {
        {101.3, 300.0, 594.3}, {1013.0, 1000.0, 2402.9948}, {10130.0, 1000.0, 2824.9896}, {0.0, 300.0, 0.0}};
    for (const auto& row : rows) {
        for (const double pRef : {101.335, 0.0})
            EXPECT_NEAR(rhoLRefBenson(pRef, row.pcr, row.rhocr), row.rho, 3e-6 * row.rho) << row.pcr;
    }
}

// The same against the NIST Chemistry WebBook (water: IAPWS-95); good for 1 or 2 %, the simple molecules come
// out 2 to 4 % high.
TEST(Benson, DensityAtTheNormalBoilingPoint) {
    const struct {
        std::string_view cas;
        double rho, tol;
    } rows[] = {{test::water, 958.37, 0.01},   {test::propane, 580.9, 0.02}, {test::methane, 422.36, 0.04},
                {test::nitrogen, 806.1, 0.03}, {test::argon, 1395.4, 0.04},  {test::ammonia, 682.0, 0.03},
                {"74-84-0", 543.97, 0.02},     {"106-97-8", 601.3, 0.02}};
    for (const auto& row : rows) {
        const SubstanceConstants substance = test::starter_substance(row.cas);
        const double rho = rhoLRefBenson(101.335, substance.pcr, substance.rhocrDB);
        EXPECT_NEAR(rho, row.rho, row.tol * row.rho) << row.cas;
    }
}

TEST(Benson, RectilinearDiameter) {
    const SubstanceConstants propane = test::starter_substance(test::propane);
    const BensonReference reference{
        .TRefL = propane.Tnb, .pLVRef = 101.335f, .rhoLRef = 580.9f, .rhoVRef = 2.417f};
    const auto rhoL = [&](double T, double rhoV) { return rhoLBenson(propane, reference, T, rhoV); };
    // through both of its points
    EXPECT_NEAR(rhoL(static_cast<double>(propane.Tnb), 2.417), 580.9, 1e-3);
    EXPECT_NEAR(rhoL(propane.Tcr, 100.0), 2.0 * propane.rhocrDB - 100.0, 1e-6);
    // NIST Chemistry WebBook, saturated propane at 300 K: 489.5 and 21.6 kg/m^3
    EXPECT_NEAR(rhoL(300.0, 21.6), 489.5, 0.01 * 489.5);
}

struct NoBenson {
    const char* what;
    void (*change)(SubstanceConstants& substance, BensonReference& reference);
};
const NoBenson NoBensons[] = {
    {"no T", [](SubstanceConstants&, BensonReference& r) { r.TRefL = 0; }},
    {"no density", [](SubstanceConstants&, BensonReference& r) { r.rhoLRef = 0; }},
    {"T of the reference is T(cr)", [](SubstanceConstants& c, BensonReference& r) { c.Tcr = r.TRefL; }},
    {"no rho(cr)", [](SubstanceConstants& c, BensonReference&) { c.rhocrDB = 0; }},
};

TEST(Benson, NothingWithoutItsPoints) {
    for (const NoBenson& row : NoBensons) {
        SubstanceConstants propane = test::starter_substance(test::propane);
        BensonReference reference{
            .TRefL = propane.Tnb, .pLVRef = 101.335f, .rhoLRef = 580.9f, .rhoVRef = 2.4f};
        row.change(propane, reference);
        EXPECT_EQ(rhoLBenson(propane, reference, 300.0, 20.0), 0.0) << row.what;
    }
}

}  // namespace
}  // namespace quom

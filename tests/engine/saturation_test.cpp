// p(LV) and T(LV) of the cubic equations: the reduced curves against figures of 30 digits, equal fugacity
// over all substances in extended precision, round trips, tiny pressures, the critical point, the search
// without a curve.
#include "engine/saturation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "engine/reduced_saturation.h"
#include "engine/volume_solver.h"
#include "support/starter.h"

namespace quom {
namespace {

using Real = long double;

constexpr Eos PlainCubics[] = {Eos::van_der_waals, Eos::berthelot, Eos::redlich_kwong, Eos::soave,
                               Eos::peng_robinson};

// All substances of the starter database.
std::vector<SubstanceConstants> all_substances() {
    const DatabaseFile file = test::starter_database();
    std::vector<SubstanceConstants> all;
    for (int i = 1; i <= file.StoffAnzahl(); ++i) all.push_back(unpack_substance(file, i, true).constants);
    return all;
}

// A saturated state seen through the pressure equation alone, in extended precision.
struct Check {
    Real RT, a, b, c, d, p;
    explicit Check(const Saturation& s)
        : RT(static_cast<Real>(RGas) * s.eos.T), a(s.eos.a), b(s.eos.b), c(s.eos.c), d(s.eos.d), p(s.p) {}
    Real pressure(Real v) const { return RT / (v - b) - a / ((v + c) * (v + d)); }
    Real slope(Real v) const {
        const Real N = (v + c) * (v + d);
        return a * (2 * v + c + d) / (N * N) - RT / ((v - b) * (v - b));
    }
    // The root of p(v) = p beside v.
    Real root(Real v) const {
        for (int k = 0; k < 4; ++k) v -= (pressure(v) - p) / slope(v);
        return v;
    }
    Real attraction(Real v) const { return c == d ? 1 / (v + c) : std::log((v + d) / (v + c)) / (d - c); }
    // (g(L) - g(V))/(R T) of two volumes
    Real g_difference(Real vL, Real vV) const {
        return p * (vL - vV) / RT - std::log((vL - b) / (vV - b)) -
               a / RT * (attraction(vL) - attraction(vV));
    }
};

// Expects equal fugacity within 1e-10, and roots that are roots; a root is worth 1e-16/(1 - Tr).
void expect_saturated(const Saturation& s, double Tr, const std::string& where) {
    ASSERT_TRUE(s.found()) << where;
    ASSERT_TRUE(s.eos.b < s.vL && s.vL < s.vMiddle && s.vMiddle < s.vV) << where;
    const Check check(s);
    EXPECT_LT(std::fabs(check.g_difference(check.root(s.vL), check.root(s.vV))), 1e-12L) << where;
    EXPECT_LT(std::fabs(check.g_difference(s.vL, s.vV)), 1e-10L) << where;
    const double tolerance = 1e-14 + 4e-15 / (1.0 - Tr);
    for (const double v : {s.vL, s.vMiddle, s.vV}) {
        EXPECT_NEAR(static_cast<double>(check.root(v)) / v, 1.0, tolerance) << where;
    }
}

// Expects the same state from its p; below 1e-10 kPa a refusal.
void expect_closes(const Fluid& fluid, const Saturation& s, const std::string& where) {
    const Saturation back = TLV_EOS(fluid, s.p);
    if (s.p < 1e-10) {
        EXPECT_EQ(back.reason, Reason::p_too_low) << where;
        return;
    }
    ASSERT_TRUE(back.found()) << where;
    EXPECT_EQ(back.p, s.p);
    EXPECT_EQ(back.eos.T, back.T);
    EXPECT_NEAR(back.T / s.T, 1.0, 1e-12) << where;
    EXPECT_NEAR(back.vV / s.vV, 1.0, 1e-9) << where;
    EXPECT_NEAR(back.vL / s.vL, 1.0, 1e-9) << where;
}

std::string name_of(const SubstanceConstants& substance, Eos code, double Tr) {
    return substance.StoffName + " code " + std::to_string(number_of(code)) + " Tr " + std::to_string(Tr);
}

// Saturation in reduced form, solved with 60 digits from the equality of fugacities by bisection of p' over
// the roots of the cubic. van der Waals at 0.9: p/p(cr) = 0.64700, v/v(cr) = 0.60340, 2.34884 (Lekner 1982).
struct ReducedFigure {
    double tr, ln_p, wL, wV;  // t/tc, ln p', (v - b)/b
};
struct ReducedShape {
    const SaturationTable& table;
    double c_of_b, d_of_b, tc, wc;
    std::vector<ReducedFigure> figures;
};
const ReducedShape Shapes[] = {
    {VanDerWaalsCurve,
     0.0,
     0.0,
     0.29629629629629630,
     2.0,
     {{0.9999, -3.2962368980073953, 1.9410626299683589, 2.0610979181739812},
      {0.99, -3.3361599632299243, 1.4927421844148224, 2.7288599303747265},
      {0.9, -3.7312483978269072, 0.81020570953400885, 6.0465271286066831},
      {0.7, -4.9029850664212018, 0.40157931456481371, 22.433417154393595},
      {0.5, -6.8789628601176104, 0.22026022438663214, 136.95128542794067},
      {0.3, -11.346730382223156, 0.10940005243547979, 7516.5673049476569},
      {0.1, -33.780553804034008, 0.031527369291793976, 13881434096077.983},
      {0.02, -168.75596139373307, 0.0059972171910886782, 1.1548857962774655e+71}}},
    {RedlichKwongCurve,
     0.0,
     1.0,
     0.20267685653535944,
     2.8473221018630726,
     {{0.9999, -4.0425374393526849, 2.7619368158284262, 2.9358817851365474},
      {0.99, -4.082993434431563, 2.1140252838688974, 3.9062713919041494},
      {0.9, -4.4831520542304453, 1.13543326500441, 8.765819300745374},
      {0.7, -5.6687416763256625, 0.55740979286268109, 33.081855474319149},
      {0.5, -7.6677842961553807, 0.3040560569291208, 206.4889053109984},
      {0.3, -12.192311904919205, 0.15041744244152573, 11977.95343941772},
      {0.1, -34.924106980505036, 0.043199880242085702, 29795529443714.298},
      {0.02, -171.69737156483979, 0.0082071512741420097, 1.4964257867224621e+72}}},
    {PengRobinsonCurve,
     1.0 - std::sqrt(2.0),
     1.0 + std::sqrt(2.0),
     0.1701444200703503,
     2.9513730355914414,
     {{0.9999, -4.3252075488554906, 2.8542600021590286, 3.0523804816109377},
      {0.99, -4.3686576692595072, 2.1274804615292678, 4.1751849513898551},
      {0.9, -4.7969567810929066, 1.0779806476761371, 10.046671442310344},
      {0.7, -6.057817410415217, 0.502876821291589, 41.530679686785089},
      {0.5, -8.1816919090399992, 0.26672671612220635, 292.04940609483938},
      {0.3, -13.014315343864267, 0.12934970100343668, 22888.244099433525},
      {0.1, -37.357380652035078, 0.036538315306361315, 285050617670434.04},
      {0.02, -183.84594519645947, 0.0068998565752407003, 2.3720684962884804e+77}}}};

TEST(ReducedSaturation, AgreesWithThirtyDigits) {
    for (const ReducedShape& shape : Shapes) {
        // the curve of the program, and the same made anew
        const auto made = make_saturation_table(shape.c_of_b, shape.d_of_b);
        ASSERT_TRUE(made);
        for (const SaturationTable* table : {&shape.table, made.get()}) {
            EXPECT_NEAR(table->tc / shape.tc, 1.0, 1e-15);
            EXPECT_NEAR(table->wc / shape.wc, 1.0, 1e-9);
            for (const ReducedFigure& f : shape.figures) {
                const double t = f.tr * table->tc, theta2 = 1.0 - f.tr;
                ASSERT_TRUE(on_curve(*table, t)) << f.tr;
                const ReducedSaturation at = reduced_saturation(*table, t);
                EXPECT_NEAR(at.ln_p / f.ln_p, 1.0, 5e-15) << f.tr;
                EXPECT_NEAR(at.wL / f.wL, 1.0, 2e-14 + 1e-15 / theta2) << f.tr;
                EXPECT_NEAR(at.zV * t / std::exp(at.ln_p) / f.wV, 1.0, 1e-13 + 1e-15 / theta2) << f.tr;
            }
        }
    }
    // critical constants of Peng and Robinson (1976) with more digits: b pcr/(R Tcr), a pcr/(R Tcr)^2
    EXPECT_NEAR(PengRobinsonCurve.tc, 0.0777960739038885 / 0.457235528921382, 1e-14);
    // the slope of the vapor pressure of van der Waals at the critical point is that of the isochore, 4
    EXPECT_NEAR(VanDerWaalsCurve.slope_c, 4.0, 1e-12);
}

TEST(ReducedSaturation, SlopeAndEnds) {
    for (const ReducedShape& shape : Shapes) {
        for (const double tr : {0.02, 0.3, 0.7, 0.99, 0.999}) {
            const double t = tr * shape.tc, h = 1e-5 * t;
            const double difference =
                reduced_saturation(shape.table, t + h).ln_p - reduced_saturation(shape.table, t - h).ln_p;
            const ReducedPressure at = reduced_pressure(shape.table, t);
            EXPECT_NEAR(at.slope * 2.0 * h / t / difference, 1.0, 1e-8) << tr;
            EXPECT_NEAR(at.ln_p / reduced_saturation(shape.table, t).ln_p, 1.0, 1e-15) << tr;
        }
        EXPECT_NEAR(reduced_pressure(shape.table, shape.tc * (1.0 - 1e-6)).slope / shape.table.slope_c, 1.0,
                    1e-5);
        EXPECT_FALSE(on_curve(shape.table, shape.table.tc));
        EXPECT_FALSE(on_curve(shape.table, 0.001 * shape.table.tc));
        EXPECT_FALSE(on_curve(shape.table, static_cast<double>(NAN)));
    }
    EXPECT_FALSE(make_saturation_table(-1.0, 2.0)) << "v + c has to be above 0 for v > b";
    EXPECT_FALSE(make_saturation_table(static_cast<double>(NAN), 1.0));
}

TEST(ReducedSaturation, TableOfEveryEquation) {
    const auto table = [](Eos code) { return test::starter_fluid(test::propane, code)->saturation.get(); };
    EXPECT_EQ(table(Eos::van_der_waals), &VanDerWaalsCurve);
    EXPECT_EQ(table(Eos::berthelot), &VanDerWaalsCurve);
    EXPECT_EQ(table(Eos::redlich_kwong), &RedlichKwongCurve);
    EXPECT_EQ(table(Eos::soave), &RedlichKwongCurve);
    EXPECT_EQ(table(Eos::peng_robinson), &PengRobinsonCurve);
    for (const Eos code : {Eos::none, Eos::ideal_gas, Eos::virial_soave, Eos::pitzer_curl}) {
        EXPECT_EQ(table(code), nullptr) << number_of(code);
    }
}

// Areas by quadrature of the isotherm, independent of the closed integral.
double area(const Fluid& fluid, double T, double p, double from, double to) {
    double sum = 0.0;
    const int n = 20000;
    for (int i = 0; i < n; ++i) sum += pTv(fluid, T, from + (i + 0.5) * (to - from) / n).p - p;
    return sum * (to - from) / n;
}

TEST(MaxwellDiff, AreasAgreeWithQuadrature) {
    for (const Eos code : PlainCubics) {
        const auto fluid = test::starter_fluid(test::propane, code);
        const double T = 0.85 * fluid->substance.Tcr;
        const Saturation s = pLV_EOS(*fluid, T);
        EXPECT_NEAR(s.g1, area(*fluid, T, s.p, s.vMiddle, s.vV), 1e-5 * s.g1) << number_of(code);
        EXPECT_NEAR(s.g2, area(*fluid, T, s.p, s.vL, s.vMiddle), 1e-5 * s.g1) << number_of(code);
        EXPECT_LT(std::fabs(s.fd), 1e-12);
        const double p = 1.05 * s.p;
        const EosAtT eos = EOSParT(*fluid, T);
        const CubicRoots roots = CubicV(eos, p);
        ASSERT_EQ(roots.nRoots, 3);
        const Areas areas = MaxwellDiff(eos, roots, p);
        const auto& v = roots.VRoot;
        EXPECT_NEAR(areas.g1, area(*fluid, T, p, v[1], v[2]), 1e-5 * std::fabs(areas.g1)) << number_of(code);
        EXPECT_NEAR(areas.g2, area(*fluid, T, p, v[0], v[1]), 1e-5 * std::fabs(areas.g2)) << number_of(code);
        EXPECT_LT(areas.fd, 0.0) << "above p(LV) the liquid is stable";
    }
    EXPECT_EQ(MaxwellDiff({}, {}, 1.0).reason, Reason::not_finite);
}

// g(L) = g(V), and T -> p(LV) -> T(LV) closes, for every substance and plain equation.
TEST(Saturation, EverySubstanceToTheCriticalPoint) {
    for (const SubstanceConstants& substance : all_substances()) {
        for (const Eos code : PlainCubics) {
            const auto fluid = test::starter_fluid(substance, code);
            if (!fluid->has_eos()) continue;
            for (const double Tr : {0.45, 0.53, 0.61, 0.7, 0.78, 0.86, 0.93, 0.97, 0.99, 0.999, 0.9999}) {
                const double T = Tr * substance.Tcr;
                const std::string where = name_of(substance, code, Tr);
                const Saturation s = pLV_EOS(*fluid, T);
                expect_saturated(s, Tr, where);
                expect_closes(*fluid, s, where);
            }
        }
    }
}

// Cold states, down to the triple point and half of it: pressures far below 1e-10 kPa are what they are.
TEST(Saturation, TinyPressures) {
    int tiny = 0;
    for (const SubstanceConstants& substance : all_substances()) {
        for (const Eos code : {Eos::soave, Eos::peng_robinson}) {
            const double Ttr = static_cast<double>(substance.Ttr);
            const auto fluid = test::starter_fluid(substance, code);
            if (!(Ttr > 0.0) || !fluid->has_eos()) continue;
            for (const double T : {Ttr, 0.5 * Ttr}) {
                const Saturation s = pLV_EOS(*fluid, T);
                const double Tr = T / substance.Tcr;
                if (Tr < 0.9999) expect_saturated(s, Tr, name_of(substance, code, Tr));
                tiny += s.p < 1e-10 ? 1 : 0;
                expect_closes(*fluid, s, name_of(substance, code, Tr));
            }
        }
    }
    EXPECT_GT(tiny, 400);
    // 2-ethylhexanoic acid
    const auto acid = test::starter_fluid("149-57-5", Eos::peng_robinson);
    const Saturation cold = pLV_EOS(*acid, 171.87);
    expect_saturated(cold, 171.87 / acid->substance.Tcr, "2-ethylhexanoic acid");
    const double p = cold.p;
    EXPECT_NEAR(p, 1.04e-13, 0.01e-13);
    // colder than the smallest number: refused, with the reason
    const Saturation none = pLV_EOS(*acid, 5.0);
    EXPECT_EQ(none.reason, Reason::p_too_low);
    EXPECT_EQ(none.p, 0.0);
    EXPECT_EQ(TLV_EOS(*acid, p).reason, Reason::p_too_low);
    EXPECT_TRUE(TLV_EOS(*acid, 1e-10).found());
    EXPECT_EQ(TLV_EOS(*acid, 0.999e-10).reason, Reason::p_too_low);
}

// States at which the search by secants was seen to fail; they stay here for good.
struct HardCase {
    std::string_view cas;
    Eos code;
    double Tr;
};
const HardCase HardCases[] = {
    {test::decane, Eos::soave, 0.30},
    {test::propane, Eos::berthelot, 0.40},
    {test::propane, Eos::peng_robinson, 0.9975},
    {test::propane, Eos::peng_robinson, 0.9992},
    {test::water, Eos::peng_robinson, 0.99995},
    {test::helium, Eos::van_der_waals, 0.62},
    {test::argon, Eos::van_der_waals, 0.55},
    {test::hydrogen, Eos::peng_robinson, 0.5},
    {test::helium, Eos::peng_robinson, 0.25},
    {test::decane, Eos::berthelot, 0.2},
};

TEST(Saturation, HardCases) {
    for (const HardCase& c : HardCases) {
        const auto fluid = test::starter_fluid(c.cas, c.code);
        const std::string where = name_of(fluid->substance, c.code, c.Tr);
        const double T = c.Tr * fluid->substance.Tcr;
        const Saturation s = pLV_EOS(*fluid, T);
        expect_saturated(s, c.Tr, where);
        expect_closes(*fluid, s, where);
    }
}

// The answer belongs to the equation of state: no vapor pressure equation has a say in it.
TEST(Saturation, NoVaporPressureEquationHasASay) {
    const SubstanceConstants water = test::starter_substance(test::water);
    ModelSelection models = test::proposed_models(water, Eos::peng_robinson);
    const auto plain = test::starter_fluid(water, Eos::peng_robinson);
    for (int evp = 0; evp <= 8; ++evp) {
        models.EVPKode = evp_of(evp);
        const auto fluid = with_models(*plain, models);
        for (const double Tr : {0.3, 0.5, 0.8, 0.95, 0.999}) {
            const double T = Tr * water.Tcr, p = pLV_EOS(*plain, T).p;
            EXPECT_EQ(pLV_EOS(*fluid, T).p, p) << evp;
            EXPECT_EQ(TLV_EOS(*fluid, p).T, TLV_EOS(*plain, p).T) << evp;
        }
    }
}

// Codes 7 and 8: a curve of their own, any Z(cr) from nearly van der Waals down.
TEST(Saturation, TovarnJi) {
    const EosInput inputs[] = {
        {.JiP3 = 0.70, .JiP4 = 0.28, .JiP5 = 0.0, .JiZc = 0.290, .JiB1 = 0.0},
        {.JiP3 = 0.70, .JiP4 = 0.10, .JiP5 = 0.1, .JiZc = 0.290, .JiB1 = 0.3},
        {.JiP3 = 1.20, .JiP4 = 0.20, .JiP5 = -0.1, .JiZc = 0.250, .JiB1 = 0.6},
        {.JiP3 = 0.90, .JiP4 = 0.00, .JiP5 = 0.0, .JiZc = 0.200, .JiB1 = -0.4},
        {.JiP3 = 0.20, .JiP4 = 0.10, .JiP5 = 0.0, .JiZc = 0.3749, .JiB1 = 0.1},
        {.JiP3 = -0.1, .JiP4 = 0.00, .JiP5 = 0.0, .JiZc = 0.320, .JiB1 = -0.2},
    };
    for (const EosInput& input : inputs) {
        for (const Eos code : {Eos::tovarn_ji_1, Eos::tovarn_ji_2}) {
            const auto fluid = test::starter_fluid(test::propane, code, input);
            ASSERT_TRUE(fluid->saturation) << input.JiZc;
            for (const double Tr : {0.3, 0.45, 0.6, 0.75, 0.9, 0.98, 0.999, 0.9999}) {
                const double T = Tr * fluid->substance.Tcr;
                const std::string where =
                    name_of(fluid->substance, code, Tr) + " Z " + std::to_string(input.JiZc);
                const Saturation s = pLV_EOS(*fluid, T);
                expect_saturated(s, Tr, where);
                expect_closes(*fluid, s, where);
            }
        }
    }
    // a(T) that falls faster than T: below T(cr) there are no two phases, and the search says so
    const auto odd = test::starter_fluid(test::propane, Eos::tovarn_ji_1, {.JiP3 = -1.5, .JiZc = 0.29});
    EXPECT_EQ(pLV_EOS(*odd, 0.9 * odd->substance.Tcr).reason, Reason::not_settled);
    EXPECT_EQ(TLV_EOS(*odd, 0.5 * odd->substance.pcr).reason, Reason::not_settled);
}

// Without a curve the search by areas finds the same; where no bound of it was met, it has no result.
TEST(Saturation, SearchWithoutCurve) {
    for (const Eos code : PlainCubics) {
        for (const std::string_view cas : {test::propane, test::water, test::helium}) {
            const auto fluid = test::starter_fluid(cas, code);
            Fluid bare = *fluid;
            bare.saturation = nullptr;
            bare.boiling = nullptr;
            Fluid unaided = *fluid;
            unaided.boiling = nullptr;
            for (const double Tr : {0.4, 0.5, 0.62, 0.75, 0.9, 0.97, 0.995, 0.9995}) {
                const double T = Tr * fluid->substance.Tcr;
                const std::string where = name_of(fluid->substance, code, Tr);
                const Saturation direct = pLV_EOS(*fluid, T), searched = pLV_EOS(bare, T);
                ASSERT_TRUE(searched.found()) << where;
                EXPECT_NEAR(searched.p / direct.p, 1.0, 1e-9) << where;
                EXPECT_NEAR(searched.vL / direct.vL, 1.0, 1e-6) << where;
                EXPECT_NEAR(searched.vV / direct.vV, 1.0, 1e-6) << where;
                const Saturation boiling = TLV_EOS(bare, direct.p);
                ASSERT_TRUE(boiling.found()) << where;
                EXPECT_NEAR(boiling.T / T, 1.0, 1e-9) << where;
                EXPECT_NEAR(TLV_EOS(unaided, direct.p).T / T, 1.0, 1e-12) << where;
            }
        }
    }
    Fluid bare = *test::starter_fluid("149-57-5", Eos::peng_robinson);
    bare.saturation = nullptr;
    bare.boiling = nullptr;
    const Saturation cold = pLV_EOS(bare, 171.87);
    EXPECT_EQ(cold.reason, Reason::not_settled) << "the lower bound 1e-10 kPa is never met";
    EXPECT_EQ(cold.p, 0.0);
}

// At T(cr) every volume is that of the equation's critical point; within 1e-7 of T(cr) or p(cr) it is the one
// root.
TEST(Saturation, CriticalPointAndItsBand) {
    for (const Eos code : PlainCubics) {
        const auto fluid = test::starter_fluid(test::propane, code);
        const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr, vcr = fluid->eos.vcrEOS;
        for (const Saturation& s : {pLV_EOS(*fluid, Tcr), TLV_EOS(*fluid, pcr)}) {
            EXPECT_TRUE(s.found());
            EXPECT_EQ(s.T, Tcr);
            EXPECT_EQ(s.p, pcr);
            EXPECT_EQ(s.vL, vcr);
            EXPECT_EQ(s.vMiddle, vcr);
            EXPECT_EQ(s.vV, vcr);
            EXPECT_EQ(s.eos.T, Tcr);
        }
        for (const double gap : {0.95e-7, 1e-8, 1e-12}) {
            const Saturation at_T = pLV_EOS(*fluid, Tcr * (1.0 - gap)),
                             at_p = TLV_EOS(*fluid, pcr * (1.0 - gap));
            EXPECT_EQ(at_T.p, pcr) << gap;
            EXPECT_EQ(at_p.T, Tcr) << gap;
            for (const Saturation& s : {at_T, at_p}) {
                EXPECT_TRUE(s.found());
                EXPECT_EQ(s.vL, s.vV);
                EXPECT_EQ(s.vMiddle, s.vV);
                EXPECT_NEAR(s.vL / vcr, 1.0, 0.03);
            }
        }
        for (const double gap : {1.05e-7, 1e-6, 1e-5}) {
            const Saturation at_T = pLV_EOS(*fluid, Tcr * (1.0 - gap)),
                             at_p = TLV_EOS(*fluid, pcr * (1.0 - gap));
            for (const Saturation& s : {at_T, at_p}) {
                EXPECT_TRUE(s.found());
                EXPECT_LT(s.p, pcr);
                EXPECT_LT(s.T, Tcr);
                EXPECT_LT(s.vL, s.vMiddle);
                EXPECT_LT(s.vMiddle, s.vV);
            }
            if (code != Eos::van_der_waals) continue;
            // 1 - p/pcr = 4 (1 - T/Tcr), v(V) - v(L) = 4 sqrt(1 - T/Tcr) vcr to the first order
            EXPECT_NEAR((1.0 - at_T.p / pcr) / gap, 4.0, 0.01);
            EXPECT_NEAR((1.0 - at_p.T / Tcr) / gap, 0.25, 0.001);
            EXPECT_NEAR((at_T.vV - at_T.vL) / vcr / std::sqrt(gap), 4.0, 0.01);
        }
    }
}

// VolumeTp calls a state saturated while |fd| < 0.001.
TEST(Saturation, BandOfVolumeTp) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const double T = 0.8 * fluid->substance.Tcr, p = pLV_EOS(*fluid, T).p;
    const double fd_per_p = VolumeTp(*fluid, T, 1.0001 * p).fd / (0.0001 * p);
    for (const double fd : {-0.00103, -0.00097, 0.0, 0.00097, 0.00103}) {
        const VolumeResult r = VolumeTp(*fluid, T, p + fd / fd_per_p);
        EXPECT_NEAR(r.fd, fd, 1e-5);
        EXPECT_EQ(r.LFlag, fd < 0.001) << fd;
        EXPECT_EQ(r.VFlag, fd > -0.001) << fd;
    }
}

TEST(Saturation, Refusals) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr, nan = NAN, infinity = INFINITY;
    const auto refused_T = [](const Fluid& f, double T, Reason reason) {
        const Saturation s = pLV_EOS(f, T);
        EXPECT_EQ(s.reason, reason) << T;
        EXPECT_EQ(s.err(), -1);
        EXPECT_EQ(s.p + s.vL + s.vV, 0.0);
    };
    const auto refused_p = [](const Fluid& f, double p, Reason reason) {
        const Saturation s = TLV_EOS(f, p);
        EXPECT_EQ(s.reason, reason) << p;
        EXPECT_EQ(s.err(), -1);
        EXPECT_EQ(s.T + s.vL + s.vV, 0.0);
    };
    refused_T(*fluid, Tcr + 1e-9, Reason::above_critical_T);
    refused_T(*fluid, 2.0 * Tcr, Reason::above_critical_T);
    for (const double T : {0.0, -1.0, nan, infinity}) refused_T(*fluid, T, Reason::T_not_positive);
    refused_p(*fluid, pcr + 1e-9, Reason::above_critical_p);
    for (const double p : {0.0, -1.0, nan, infinity}) refused_p(*fluid, p, Reason::p_not_positive);
    for (const Eos code : {Eos::ideal_gas, Eos::virial_manual, Eos::virial_van_der_waals, Eos::pitzer_curl}) {
        const auto vapor = test::starter_fluid(test::propane, code);
        for (const double part : {0.8, 1.0}) {
            refused_T(*vapor, part * Tcr, Reason::vapor_only);
            refused_p(*vapor, part * pcr, Reason::vapor_only);
        }
    }
    const auto nothing = test::starter_fluid(test::propane, Eos::none);
    refused_T(*nothing, 0.8 * Tcr, Reason::no_equation);
    refused_p(*nothing, 0.2 * pcr, Reason::no_equation);
    SubstanceConstants unknown = fluid->substance;
    unknown.pcr = 0.0;
    const auto incomplete = test::starter_fluid(unknown, Eos::peng_robinson);
    refused_T(*incomplete, 0.8 * Tcr, Reason::no_critical_data);
    refused_p(*incomplete, 0.2 * pcr, Reason::no_critical_data);
}

}  // namespace
}  // namespace quom

// Ideal gas: shapes of the cp equations by hand, h and s against integrals of cp, published heat capacities,
// refusals.
#include "engine/ideal_gas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/starter.h"

namespace quom {
namespace {

struct Shape {
    const char* shape;
    std::array<float, 5> k;  // A .. E
    double T, cp;
    bool inverse_square;  // s has E/T^2 without the factor 1/2
};
const Shape Shapes[] = {
    {"quartic", {30, 0.01f, 1e-4f, -1e-7f, 1e-10f}, 400, 46.16, false},
    {"quartic, |E| below 1", {30, 0, 0, 0, -0.5f}, 2, 22, false},
    {"E/T^2 from E = 1", {30, 0.01f, 1e-4f, -1e-7f, 1}, 400, 43.60000625, true},
    {"E/T^2 from E = -1", {30, 0, 0, 0, -1}, 2, 29.75, true},
    {"E/T^2", {30, 0.01f, 0, 0, -160000}, 400, 33, true},
    {"without A: B + C T + D T^2 + E/T^2", {0, 30, 0.01f, 1e-4f, 160000}, 400, 51, true},
    {"without A, small E", {1e-9f, 30, 0.01f, 1e-4f, 0}, 400, 50, true},
};

// Sum of f over T0 .. T by Simpson's rule.
template <class F>
double integral(double T0, double T, F f) {
    const int n = 2000;
    const double h = (T - T0) / n;
    double sum = f(T0) + f(T);
    for (int i = 1; i < n; ++i) sum += (i % 2 ? 4.0 : 2.0) * f(T0 + i * h);
    return sum * h / 3.0;
}

TEST(CpIdG, ShapesOfThePolynomial) {
    Session s = test::starter_session();
    s.models.cpKode = 1;
    for (const Shape& row : Shapes) {
        s.substance.cpPoly = row.k;
        EXPECT_NEAR(cpIdG(s, row.T, 1).cp, row.cp, 1e-6 * row.cp) << row.shape;
        s.reference = {};
        const double T0 = s.reference.TRef0, T = 500.0, p0 = 101.325;
        const auto cp = [&s](double t) { return static_cast<double>(cpIdG(s, t, 1).cp); };
        const IdealGas r = IdGasFunc(s, T, p0);
        EXPECT_EQ(r.err, 0);
        const double h = integral(T0, T, cp);
        EXPECT_NEAR(r.h, h, 1e-6 * std::fabs(h) + 1e-3) << row.shape;
        // E/T^2 counts twice in s
        const double E = row.k[4],
                     extra = row.inverse_square ? -0.5 * E * (1 / (T * T) - 1 / (T0 * T0)) : 0.0;
        const double entropy = integral(T0, T, [&](double t) { return cp(t) / t; }) + extra;
        EXPECT_NEAR(r.s, entropy, 1e-5 * std::fabs(entropy) + 1e-5) << row.shape;
        EXPECT_NEAR(IdGasFunc(s, T, 10 * p0).s, r.s - RGas * std::log(10.0), 1e-6) << row.shape;
    }
}

// The sinh/cosh form of real substances: h and s are integrals of cp and cp/T.
TEST(IdGasFunc, SinhFormIntegrates) {
    Session s = test::starter_session();
    for (const std::string_view cas : {test::water, test::propane, test::carbon_dioxide, test::benzene}) {
        test::select_substance(s, cas, eos_ideal_gas);
        s.models.cpKode = 2;
        s.reference = {};
        s.reference.hOffset = 1000.0, s.reference.sOffset = -10.0;
        for (const double T : {150.0, 300.0, 900.0}) {
            const auto cp = [&s](double t) { return static_cast<double>(cpIdG(s, t, 2).cp); };
            const double T0 = s.reference.TRef0;
            const IdealGas r = IdGasFunc(s, T, 101.325);
            EXPECT_NEAR(r.h, integral(T0, T, cp) + 1000.0, 1e-6 * std::fabs(r.h) + 0.01) << cas << " " << T;
            EXPECT_NEAR(r.s, integral(T0, T, [&](double t) { return cp(t) / t; }) - 10.0, 1e-4)
                << cas << " " << T;
            EXPECT_EQ(r.cp, cp(T));
        }
    }
}

struct Figure {
    std::string_view cas;
    double T, cp;  // [K], [kJ/(kmol K)]
    const char* source;
};
const Figure Figures[] = {
    {test::nitrogen, 298.15, 29.12, "JANAF"},       {test::nitrogen, 1000.0, 32.70, "JANAF"},
    {test::carbon_dioxide, 298.15, 37.13, "JANAF"}, {test::carbon_dioxide, 1000.0, 54.31, "JANAF"},
    {test::water, 298.15, 33.59, "JANAF"},          {test::water, 1000.0, 41.27, "JANAF"},
    {test::methane, 298.15, 35.64, "JANAF"},        {test::methane, 1000.0, 71.80, "JANAF"},
    {test::ammonia, 298.15, 35.65, "JANAF"},        {test::argon, 500.0, 20.786, "5/2 R"},
    {test::propane, 298.15, 73.60, "TRC Tables"},   {test::benzene, 298.15, 82.44, "TRC Tables"},
    {"7782-44-7", 298.15, 29.38, "JANAF"},
};

TEST(CpIdG, PublishedFiguresByBothForms) {
    Session s = test::starter_session();
    for (const Figure& f : Figures) {
        test::select_substance(s, f.cas, eos_ideal_gas);
        // both forms are fits; the polynomials of several substances end at 1000 K
        EXPECT_NEAR(cpIdG(s, f.T, 2).cp, f.cp, 0.006 * f.cp) << f.cas << ", " << f.source;
        EXPECT_NEAR(cpIdG(s, f.T, 1).cp, f.cp, 0.015 * f.cp) << f.cas << ", " << f.source;
    }
}

TEST(IdGasFunc, WithoutEquationAndRefusals) {
    Session s = test::substance_session(test::propane, eos_ideal_gas);
    s.reference.hOffset = 5.0, s.reference.sOffset = -7.0;
    s.models.cpKode = 0;
    const IdealGas none = IdGasFunc(s, 400.0, 500.0);
    EXPECT_EQ(none.err, 0);
    EXPECT_EQ(none.cp, 0.0);
    EXPECT_EQ(none.h, 5.0);  // the offsets alone
    EXPECT_EQ(none.s, -7.0);
    for (const int form : {-1, 0, 3}) EXPECT_EQ(cpIdG(s, 400.0, form).cp, 0.0f) << form;
    s.models.cpKode = 2;
    const auto set = s.substance.cpDIPPR;
    s.substance.cpDIPPR = {30, 20, 1, 10, 1};
    EXPECT_EQ(IdGasFunc(s, 0.1, 100.0).err, 0);
    EXPECT_EQ(IdGasFunc(s, 0.099, 100.0).err, -1);
    s.substance.cpDIPPR = set;
    for (const int form : {1, 2}) {
        s.models.cpKode = form;
        for (const double T : {0.0, -10.0, static_cast<double>(NAN)}) {
            EXPECT_EQ(IdGasFunc(s, T, 100.0).err, -1) << form << " " << T;
        }
        s.reference.TRef0 = 0.0f;
        EXPECT_EQ(IdGasFunc(s, 300.0, 100.0).err, -1) << form;
        s.reference.TRef0 = 298.15f;
    }
    s.models.cpKode = 2;
    s.substance.cpDIPPR[2] = -1000.0f;  // sinh(C/T) must be positive
    EXPECT_EQ(IdGasFunc(s, 300.0, 100.0).err, -1);
}

// Reference pressure 0 is 101.325 kPa; selections 2 and 10 bring 298.15 K and 101.325 kPa with them.
TEST(RefConst, ZeroPoints) {
    Session s = test::substance_session(test::water, eos_ideal_gas);
    const auto& k = s.substance;
    const struct {
        int code;
        double h0, s0;
        float T0;
    } rows[] = {{1, 0.0, 0.0, 350.0f},
                {2, k.dfH0, k.S0abs, 298.15f},
                {10, k.dfH0, (static_cast<double>(k.dfH0) - static_cast<double>(k.dfG0)) / 298.15, 298.15f}};
    for (const auto& row : rows) {
        s.reference = {.RefKode = row.code, .TRef0 = 350.0f};
        const ReferenceConstants r = RefConst(s, 2.0 * 101.325);
        EXPECT_EQ(r.h0, row.h0);
        EXPECT_NEAR(r.s0, row.s0 - RGas * std::log(2.0), 1e-6);
        EXPECT_EQ(s.reference.TRef0, row.T0);
        EXPECT_EQ(s.reference.pRef0, 101.325f);
        EXPECT_EQ(RefConst(s, 0.0).s0, row.s0) << "no pressure term";
    }
}

}  // namespace
}  // namespace quom

// Ideal gas: shapes of the cp equations by hand, h and s against integrals of cp, published heat capacities,
// refusals.
#include "engine/ideal_gas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/starter.h"

namespace quom {
namespace {

std::shared_ptr<const Fluid> ideal_gas_of(const SubstanceConstants& substance, CpForm form,
                                          const ReferenceState& reference = {}) {
    ModelSelection models;
    models.EOSKode = Eos::ideal_gas;
    models.cpKode = form;
    return make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = reference});
}

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
    SubstanceConstants substance;
    for (const Shape& row : Shapes) {
        substance.cpPoly = row.k;
        EXPECT_NEAR(cpIdG(substance, row.T, CpForm::polynomial).cp, row.cp, 1e-6 * row.cp) << row.shape;
        const auto fluid = ideal_gas_of(substance, CpForm::polynomial);
        const double T0 = fluid->reference.TRef0, T = 500.0, p0 = 101.325;
        const auto cp = [&](double t) {
            return static_cast<double>(cpIdG(substance, t, CpForm::polynomial).cp);
        };
        const IdealGas r = IdGasFunc(*fluid, T, p0);
        EXPECT_EQ(r.reason, Reason::none);
        const double h = integral(T0, T, cp);
        EXPECT_NEAR(r.h, h, 1e-6 * std::fabs(h) + 1e-3) << row.shape;
        // E/T^2 counts twice in s
        const double E = row.k[4],
                     extra = row.inverse_square ? -0.5 * E * (1 / (T * T) - 1 / (T0 * T0)) : 0.0;
        const double entropy = integral(T0, T, [&](double t) { return cp(t) / t; }) + extra;
        EXPECT_NEAR(r.s, entropy, 1e-5 * std::fabs(entropy) + 1e-5) << row.shape;
        EXPECT_NEAR(IdGasFunc(*fluid, T, 10 * p0).s, r.s - RGas * std::log(10.0), 1e-6) << row.shape;
    }
}

// The sinh/cosh form of real substances: h and s are integrals of cp and cp/T.
TEST(IdGasFunc, SinhFormIntegrates) {
    ReferenceState reference;
    reference.hOffset = 1000.0;
    reference.sOffset = -10.0;
    for (const std::string_view cas : {test::water, test::propane, test::carbon_dioxide, test::benzene}) {
        const auto fluid = ideal_gas_of(test::starter_substance(cas), CpForm::sinh_cosh, reference);
        const auto cp = [&](double t) {
            return static_cast<double>(cpIdG(fluid->substance, t, CpForm::sinh_cosh).cp);
        };
        const double T0 = reference.TRef0;
        for (const double T : {150.0, 300.0, 900.0}) {
            const IdealGas r = IdGasFunc(*fluid, T, 101.325);
            EXPECT_NEAR(r.h, integral(T0, T, cp) + 1000.0, 1e-6 * std::fabs(r.h) + 0.01) << cas << " " << T;
            EXPECT_NEAR(r.s, integral(T0, T, [&](double t) { return cp(t) / t; }) - 10.0, 1e-4)
                << cas << " " << T;
            EXPECT_EQ(r.cp, cp(T));
        }
    }
}

// cp = A + B (x/sinh x)^2 + D (y/cosh y)^2 by the functions of the library.
TEST(CpIdG, SinhForm) {
    SubstanceConstants substance;
    substance.cpDIPPR = {33.0f, 30.0f, 1200.0f, 9.0f, 500.0f};
    for (const double T : {50.0, 300.0, 2500.0}) {
        const double x = 1200.0 / T, y = 500.0 / T;
        const double cp = 33.0 + 30.0 * std::pow(x / std::sinh(x), 2) + 9.0 * std::pow(y / std::cosh(y), 2);
        EXPECT_NEAR(cpIdG(substance, T, CpForm::sinh_cosh).cp, cp, 1e-6 * cp);
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
    for (const Figure& f : Figures) {
        const SubstanceConstants substance = test::starter_substance(f.cas);
        // both forms are fits; the polynomials of several substances end at 1000 K
        EXPECT_NEAR(cpIdG(substance, f.T, CpForm::sinh_cosh).cp, f.cp, 0.006 * f.cp)
            << f.cas << ", " << f.source;
        EXPECT_NEAR(cpIdG(substance, f.T, CpForm::polynomial).cp, f.cp, 0.015 * f.cp)
            << f.cas << ", " << f.source;
    }
}

TEST(IdGasFunc, WithoutEquationAndRefusals) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    ReferenceState reference;
    reference.hOffset = 5.0;
    reference.sOffset = -7.0;
    const auto without = ideal_gas_of(substance, CpForm::none, reference);
    EXPECT_EQ(without->ideal_gas.reason, Reason::no_ideal_gas_cp);
    const IdealGas none = IdGasFunc(*without, 400.0, 500.0);
    EXPECT_EQ(none.reason, Reason::none);
    EXPECT_EQ(none.cp, 0.0);
    EXPECT_EQ(none.h, 5.0);  // the offsets alone
    EXPECT_EQ(none.s, -7.0);
    EXPECT_EQ(cpIdG(substance, 400.0, CpForm::none).cp, 0.0f);
    EXPECT_EQ(ideal_gas_of(SubstanceConstants(), CpForm::polynomial)->ideal_gas.reason,
              Reason::no_ideal_gas_cp);
    for (const CpForm form : {CpForm::polynomial, CpForm::sinh_cosh}) {
        const auto fluid = ideal_gas_of(substance, form);
        for (const double T : {0.0, -10.0, static_cast<double>(NAN)}) {
            EXPECT_EQ(IdGasFunc(*fluid, T, 100.0).reason, Reason::T_not_positive) << T;
        }
        reference.TRef0 = 0.0f;
        EXPECT_EQ(IdGasFunc(*ideal_gas_of(substance, form, reference), 300.0, 100.0).reason,
                  Reason::T_not_positive);
    }
    substance.cpDIPPR = {30, 20, 1, 10, 1};
    const auto small = ideal_gas_of(substance, CpForm::sinh_cosh);
    EXPECT_EQ(IdGasFunc(*small, 0.1, 100.0).reason, Reason::none);
    EXPECT_EQ(IdGasFunc(*small, 0.099, 100.0).reason, Reason::ideal_gas_range);
    substance.cpDIPPR[2] = -1000.0f;  // sinh(C/T) must be positive
    EXPECT_EQ(IdGasFunc(*ideal_gas_of(substance, CpForm::sinh_cosh), 300.0, 100.0).reason,
              Reason::ideal_gas_range);
}

// Reference pressure 0 is 101.325 kPa; selections 2 and 10 bring 298.15 K and 101.325 kPa with them.
TEST(RefConst, ZeroPoints) {
    const SubstanceConstants k = test::starter_substance(test::water);
    const struct {
        int code;
        double h0, s0;
        float T0;
    } rows[] = {{1, 0.0, 0.0, 350.0f},
                {2, k.dfH0, k.S0abs, 298.15f},
                {10, k.dfH0, (static_cast<double>(k.dfH0) - static_cast<double>(k.dfG0)) / 298.15, 298.15f}};
    for (const auto& row : rows) {
        const ReferenceState reference{.RefKode = row.code, .TRef0 = 350.0f};
        const ReferenceConstants r = RefConst(k, reference, 2.0 * 101.325);
        EXPECT_EQ(r.h0, row.h0);
        EXPECT_NEAR(r.s0, row.s0 - RGas * std::log(2.0), 1e-6);
        EXPECT_EQ(r.TRef0, row.T0);
        EXPECT_EQ(r.pRef0, 101.325f);
        EXPECT_EQ(RefConst(k, reference, 0.0).s0, row.s0) << "no pressure term";
        // the ideal gas at its reference point has the zero point itself
        for (const CpForm form : {CpForm::polynomial, CpForm::sinh_cosh}) {
            const auto fluid = ideal_gas_of(k, form, reference);
            const IdealGas zero = IdGasFunc(*fluid, r.TRef0, r.pRef0);
            EXPECT_NEAR(zero.h, row.h0, 1e-10 * std::fabs(row.h0));
            EXPECT_NEAR(zero.s, row.s0, 1e-12 * std::fabs(row.s0));
            if (row.code == 1) {
                EXPECT_EQ(zero.h, 0.0);
                EXPECT_EQ(zero.s, 0.0);
            }
        }
    }
}

}  // namespace
}  // namespace quom

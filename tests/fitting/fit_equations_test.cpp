// The equations of the fits: published values, limits, derivatives against difference quotients.
#include "fitting/fit_equations.h"

#include <gtest/gtest.h>

#include <cmath>

#include "fitting/fit_data.h"

namespace quom {
namespace {

TEST(FitEquationsTest, published_values) {
    struct Case {
        const char* what;
        FitModel model;
        std::vector<double> par;
        FitConstants constants;
        double x, y, relative;
    };
    const FitConstants none{}, lg{true, 0, 0};
    const Case cases[] = {
        // Poling, Prausnitz, O'Connell (2001), appendix A; Reid, Prausnitz, Poling (1987), appendix A
        {"water, Antoine, lg", FitModel::antoine, {7.19621, 1730.63, 233.426}, lg, 373.15, 101.325, 2e-4},
        {"water, Wagner",
         FitModel::wagner,
         {-7.76451, 1.45838, -2.77580, -1.23303},
         {false, 647.3, 22120},
         373.15,
         101.42,
         1e-3},
        // Perry's Chemical Engineers' Handbook (1997), tables 2-6, 2-30, 2-198
        {"water, p(LV)",
         FitModel::dippr_pressure,
         {73.649 - std::log(1e3), -7258.2, -7.3037, 4.1653e-6, 2},
         none,
         273.16,
         0.61056,
         2e-4},
        {"propane, mol/dm^3",
         FitModel::rackett,
         {1.3757, 0.27453, 0.29359},
         {false, 369.83, 0},
         85.47,
         16.583,
         2e-4},
        {"propane, mol/dm^3 at T(cr)",
         FitModel::rackett,
         {1.3757, 0.27453, 0.29359},
         {false, 369.83, 0},
         369.83,
         5.011,
         2e-4},
        {"water, cp(idG)", FitModel::dippr_cp, {33.363, 26.79, 2610.5, 8.896, 1169}, none, 300, 33.596, 1e-3},
        // NIST Chemistry WebBook: table of cp of water vapor
        {"water, cp(idG)",
         FitModel::shomate,
         {30.092, 0.006832514, 6.793435e-6, -2.53448e-9, 82139},
         none,
         1000,
         41.27,
         2e-4},
        // Majer and Svoboda (1985): delta(LV)h of acetone at 298.15 K
        {"acetone", FitModel::majer, {46950, 0.2826, 0.2826}, {false, 508.2, 0}, 298.15, 30990, 5e-4},
        {"at T(cr)", FitModel::majer, {46950, 0.2826, 0.2826}, {false, 508.2, 0}, 508.2, 0, 0},
    };
    for (const Case& c : cases) {
        FitInput input;
        input.model = c.model;
        input.constants = c.constants;
        const auto y = fitted_value(input, c.par, c.x);
        ASSERT_TRUE(y) << c.what;
        EXPECT_NEAR(*y, c.y, c.relative * c.y) << c.what;
    }
}

TEST(FitEquationsTest, implicit_pressure) {
    const FitConstants ln{}, lg{true, 369.89, 0};
    const double par_ln[] = {48, -3600, 273.15, -5.5, 3}, par_lg[] = {21, -1560, 273.15, -5.5, 1.3};
    for (const FitConstants& constants : {ln, lg}) {
        const double* par = constants.UseLg ? par_lg : par_ln;
        for (const double T : {150.0, 231.0, 300.0, 369.0}) {
            const FitPressure r = p0_FRO(T, par, false, constants);
            ASSERT_FALSE(r.fail) << T;
            const double f = constants.f();
            EXPECT_NEAR(par[0] + par[1] / T + par[3] / f * std::log(T) + par[4] * r.p / (T * T),
                        std::log(r.p) / f, 1e-12)
                << T;
        }
    }
    // One curve, written with either logarithm.
    const double ln10 = std::log(10.0);
    const double A_lg[] = {16, -1350, 270, 99, 1.5}, A_ln[] = {16 * ln10, -1350 * ln10, 270, -99, 1.5 * ln10};
    const FitConstants ln_propane{false, 369.89, 0};
    EXPECT_NEAR(thodos_D(-1350, lg), -1.8 * 1350 / 369.89 + 2.67, 1e-12);
    for (const double T : {200.0, 300.0, 360.0})
        EXPECT_NEAR(p0_FRO(T, A_lg, true, lg).p / p0_FRO(T, A_ln, true, ln_propane).p, 1.0, 1e-10) << T;
    // Without a solution: too large an E; an overflow; a pole.
    const double no_root[] = {5, 0, 273.15, 0, 1e9}, overflow[] = {5000, 0, 273.15, 0, 0},
                 pole[] = {10, -2000, -26.85, 0, 1};
    for (const double* set : {no_root, overflow, pole}) {
        const FitPressure r = p0_FRO(300, set, false, ln);
        EXPECT_TRUE(r.fail);
        EXPECT_EQ(r.p, 0);
    }
}

TEST(FitEquationsTest, limits_of_wagner_and_sinh) {
    const double water[] = {-7.76451, 1.45838, -2.77580, -1.23303}, steep[] = {-100, 0, 0, 0},
                 at_limit[] = {-50.0 / 0.5, 0, 0, 0};
    for (const double T : {647.3, 700.0, 647.2999, 1e-7}) {
        const FitPressure r = p0_WAG(T, water, 647.3, 22120);
        EXPECT_EQ(r.p, 0) << T;
        EXPECT_FALSE(r.fail) << T;
    }
    EXPECT_TRUE(p0_WAG(300, steep, 647.3, 22120).fail);
    EXPECT_TRUE(p0_WAG(300, at_limit, 600, 22120).fail) << "50 itself fails";
    EXPECT_FALSE(p0_WAG(300.1, at_limit, 600, 22120).fail);

    const double no_terms[] = {30, 1e-36, 1, 1, 1}, too_cold[] = {30, 10, 709.78, 10, 100},
                 warm[] = {30, 10, 709.77, 10, 100};
    EXPECT_EQ(cpSinh(300, no_terms), 30);
    EXPECT_FALSE(std::isfinite(cpSinh(1, too_cold)));
    EXPECT_NEAR(cpSinh(1, warm), 30, 1e-9);
}

// Ridders' extrapolation of central differences (1982).
double slope(const FitInput& input, std::vector<double> par, std::size_t j, double x) {
    const double middle = par[j], size = std::fmax(std::fabs(middle), 1e-6);
    double h = 0.02 * size, table[10][10], best = 0, least = 1e300;
    for (int i = 0; i < 10; ++i, h /= 1.6) {
        double side[2];
        for (int k = 0; k < 2; ++k) {
            par[j] = middle + (k ? h : -h);
            side[k] = fitted_value(input, par, x).value_or(NAN);
        }
        table[i][0] = (side[1] - side[0]) / (2 * h);
        double factor = 1;
        for (int k = 1; k <= i; ++k) {
            factor *= 1.6 * 1.6;
            table[i][k] = (table[i][k - 1] * factor - table[i - 1][k - 1]) / (factor - 1);
            const double error = std::fmax(std::fabs(table[i][k] - table[i][k - 1]),
                                           std::fabs(table[i][k] - table[i - 1][k - 1]));
            if (error < least) {
                least = error;
                best = table[i][k];
            }
        }
    }
    return best;
}

TEST(FitEquationsTest, derivatives_are_those_of_the_equation) {
    for (const test::KnownFit& known : test::known_fits()) {
        FitInput input;
        input.model = known.model;
        input.constants = known.constants;
        const FitModelRow& row = fit_model(known.model);
        for (int i = 0; i <= 12; ++i) {
            const double x = known.from + (known.to - known.from) * (i + 0.3) / 13;
            const std::vector<double> exact = fitted_derivatives(input, known.par, x);
            ASSERT_EQ(exact.size(), row.NPar) << known.name << " " << row.name << " x " << x;
            const double y = *fitted_value(input, known.par, x);
            for (std::size_t j = 0; j < row.NPar; ++j) {
                const double scale =
                    std::fabs(exact[j]) + 1e-3 * std::fabs(y / std::fmax(known.par[j], 1e-6));
                EXPECT_NEAR(exact[j], slope(input, known.par, j, x), 2e-8 * scale)
                    << known.name << " " << row.name << " x " << x << " " << row.labels[j];
            }
        }
    }
}

TEST(FitEquationsTest, catalogue) {
    EXPECT_EQ(fit_catalogue().size(), 17u);
    for (const int reserved : {-1, 2, 12, 13, 20}) EXPECT_EQ(fit_model(reserved), nullptr) << reserved;
    for (const FitModelRow& row : fit_catalogue()) {
        EXPECT_EQ(fit_model(static_cast<int>(row.model)), &row);
        EXPECT_EQ(row.has_lg_form(), static_cast<int>(row.model) >= 3 && static_cast<int>(row.model) < 8);
        for (std::size_t j = 0; j < MaxFitPar; ++j)
            EXPECT_EQ(row.labels[j].empty(), j >= row.NPar) << row.name;
    }
    EXPECT_EQ(fit_start(fit_model(FitModel::antoine), true, 0), (std::vector<double>{5, 1500, 200}));
    EXPECT_EQ(fit_start(fit_model(FitModel::antoine), false, 0), (std::vector<double>{10, 3000, 200}));
    EXPECT_DOUBLE_EQ(fit_start(fit_model(FitModel::frost_thodos), true, 369.89)[1], -12 * 369.89 / 1.8);
}

}  // namespace
}  // namespace quom

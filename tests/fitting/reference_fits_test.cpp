// Fits against certified figures, and against another least-squares library on measured data.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "fitting/fit_data.h"
#include "fitting/least_squares.h"
#ifdef QUOM_HAVE_EIGEN
#include <Eigen/Dense>
#include <unsupported/Eigen/NonLinearOptimization>
#include <unsupported/Eigen/NumericalDiff>
#endif

namespace quom {
namespace {

// Certified values of the National Institute of Standards and Technology: Statistical Reference Datasets.
struct Certified {
    const char* set;
    std::vector<double> par, StDev;  // free ones of the polynomial, the others are held at 0
    double SS;
    bool through_zero = false;
};
const Certified certified[] = {
    {"norris",
     {-0.262323073774029, 1.00211681802045},
     {0.232818234301152, 0.429796848199937e-3},
     26.6173985294224},
    {"pontius",
     {0.673565789473684e-3, 0.732059160401003e-6, -0.316081871345029e-14},
     {0.107938612033077e-3, 0.157817399981659e-9, 0.486652849992036e-16},
     0.155761768796992e-5},
    {"noint1", {0, 2.07438016528926}, {0, 0.165289256198347e-1}, 127.272727272727, true},
    {"wampler1", {1, 1, 1, 1, 1, 1}, {0, 0, 0, 0, 0, 0}, 0},
    {"wampler2", {1, 0.1, 0.01, 0.001, 0.0001, 0.00001}, {0, 0, 0, 0, 0, 0}, 0},
    {"wampler3",
     {1, 1, 1, 1, 1, 1},
     {2152.32624678170, 2363.55173469681, 779.343524331583, 101.475507550350, 5.64566512170752,
      0.112324854679312},
     83554268},
    {"wampler4",
     {1, 1, 1, 1, 1, 1},
     {215232.624678170, 236355.173469681, 77934.3524331583, 10147.5507550350, 564.566512170752,
      11.2324854679312},
     835542680000},
    {"wampler5",
     {1, 1, 1, 1, 1, 1},
     {21523262.4678170, 23635517.3469681, 7793435.24331583, 1014755.07550350, 56456.6512170752,
      1123.24854679312},
     8.35542680000000e15},
};

TEST(ReferenceFitsTest, certified_polynomials) {
    for (const Certified& set : certified) {
        FitInput input;
        input.points = test::fit_points(set.set);
        input.start.assign(6, 0.0);
        for (std::size_t j = 0; j < 6; ++j) {
            input.FitFix[j] = j >= set.par.size() || (j == 0 && set.through_zero);
            if (!input.FitFix[j]) input.start[j] = 1.0;
        }
        const FitResult result = fit(input);
        ASSERT_EQ(result.end, FitEnd::converged) << set.set << ": " << result.note;
        EXPECT_NEAR(result.SS, set.SS, 1e-6 * set.SS + 1e-12) << set.set;
        for (std::size_t j = 0; j < set.par.size(); ++j) {
            // Parameters that are lost in the noise are certain to the part of their deviation.
            const double unit = std::fabs(set.par[j]) + 1e-6 * set.StDev[j];
            EXPECT_NEAR(result.parameters[j].value, set.par[j], 1e-6 * unit) << set.set << " " << j;
            EXPECT_NEAR(result.parameters[j].StDev, set.StDev[j], 1e-6 * set.StDev[j] + 1e-7 * (set.SS == 0))
                << set.set << " " << j;
        }
    }
}

// MGH10 is Antoine's equation: b1 exp(b2/(x + b3)), A = ln b1, B = -b2, C = b3 + 273.15.
TEST(ReferenceFitsTest, certified_antoine) {
    FitInput input;
    input.model = FitModel::antoine;
    input.points = test::fit_points("mgh10");
    const double b1 = 5.6096364710e-3;
    for (const std::vector<double>& start :
         {std::vector<double>{}, {-4, -4000, 523.15}, {-3.9, -2000, 323.15}}) {
        input.start = start;
        const FitResult result = fit(input);
        ASSERT_EQ(result.end, FitEnd::converged) << result.note;
        EXPECT_NEAR(result.SS, 8.7945855171e1, 1e-8);
        EXPECT_NEAR(result.parameters[0].value, std::log(b1), 1e-7);
        EXPECT_NEAR(result.parameters[1].value, -6.1813463463e3, 1e-4);
        EXPECT_NEAR(result.parameters[2].value, 3.4522363462e2 + 273.15, 1e-6);
        EXPECT_NEAR(result.parameters[0].StDev, 1.5687892471e-4 / b1, 1e-8);
        EXPECT_NEAR(result.parameters[1].StDev, 2.3309021107e1, 1e-5);
        EXPECT_NEAR(result.parameters[2].StDev, 7.8486103508e-1, 1e-6);
        EXPECT_NEAR(std::sqrt(result.Sigma2), 2.6009740065, 1e-8);
    }
}

// A polynomial of the tenth degree, beyond the catalogue, by the routine under the polishing.
TEST(ReferenceFitsTest, certified_filip) {
    const double par[] = {-1467.48961422980,     -2772.17959193342,    -2316.37108160893,
                          -1127.97394098372,     -354.478233703349,    -75.1242017393757,
                          -10.8753180355343,     -1.06221498588947,    -0.670191154593408e-1,
                          -0.246781078275479e-2, -0.402962525080404e-4};
    const double StDev[] = {298.084530995537,     559.779865474950,    466.477572127796,
                            227.204274477751,     71.6478660875927,    15.2897178747400,
                            2.23691159816033,     0.221624321934227,   0.142363763154724e-1,
                            0.535617408889821e-3, 0.896632837373868e-5};
    const std::vector<FitPoint> points = test::fit_points("filip");
    Columns J(points.size(), 11);
    std::vector<double> y;
    for (std::size_t i = 0; i < points.size(); ++i) {
        y.push_back(points[i].y);
        for (std::size_t j = 0; j < 11; ++j) J(i, j) = std::pow(points[i].x, static_cast<double>(j));
    }
    const LeastSquares solution = solve_least_squares(J, y);
    ASSERT_TRUE(solution.solved);
    const double Sigma = 0.334801051324544e-2;
    for (std::size_t j = 0; j < 11; ++j) {
        EXPECT_NEAR(solution.x[j] / par[j], 1.0, 1e-6) << j;
        EXPECT_NEAR(Sigma * std::sqrt(solution.inverse[j * 11 + j]) / StDev[j], 1.0, 1e-6) << j;
    }
    for (std::size_t i = 0; i < points.size(); ++i) J(i, 10) = J(i, 9) + J(i, 8);
    EXPECT_FALSE(solve_least_squares(J, y).solved) << "a column that is the sum of two others";
}

#ifdef QUOM_HAVE_EIGEN

using Real = long double;
using Vector = Eigen::Matrix<Real, Eigen::Dynamic, 1>;
using Equation = std::function<Real(Real T, const Vector& b)>;

// Residuals for the library, in long double.
struct Residuals {
    using Scalar = Real;
    using InputType = Vector;
    using ValueType = Vector;
    using JacobianType = Eigen::Matrix<Real, Eigen::Dynamic, Eigen::Dynamic>;
    static constexpr int InputsAtCompileTime = Eigen::Dynamic, ValuesAtCompileTime = Eigen::Dynamic;

    const std::vector<FitPoint>& points;
    const Equation& equation;
    bool ln;
    Vector unit;

    int inputs() const { return static_cast<int>(unit.size()); }
    int values() const { return static_cast<int>(points.size()); }
    int operator()(const Vector& b, Vector& r) const {
        for (int i = 0; i < values(); ++i) {
            const auto& [x, y, active, weight] = points[static_cast<std::size_t>(i)];
            const Real calculated = equation(x, b.cwiseProduct(unit));
            r[i] = ln ? std::log(calculated) - std::log(static_cast<Real>(y)) : calculated - y;
        }
        return 0;
    }
};

struct Measured {
    const char* set;
    FitModel model;
    FitConstants constants;
    bool ln;
    std::vector<double> start;  // empty: that of the catalogue
    std::vector<std::size_t> held;
    Equation equation;  // written once more
    double percent;     // greatest deviation: a wrong figure in the data is seen
};

Real z_of(Real T, Real Tc) { return 1 - T / Tc; }

const Measured measured[] = {
    {"water_pressure",
     FitModel::wagner,
     {false, 647.096, 22064},
     true,
     {},
     {},
     [](Real T, const Vector& b) {
         const Real z = z_of(T, 647.096L);
         return 22064 * std::exp(647.096L / T *
                                 (b[0] * z + b[1] * std::pow(z, 1.5L) + b[2] * std::pow(z, 3.L) +
                                  b[3] * std::pow(z, 6.L)));
     },
     0.15},
    {"water_pressure",
     FitModel::wagner,
     {false, 647.096, 22064},
     false,
     {},
     {},
     [](Real T, const Vector& b) {
         const Real z = z_of(T, 647.096L);
         return 22064 * std::exp(647.096L / T *
                                 (b[0] * z + b[1] * std::pow(z, 1.5L) + b[2] * std::pow(z, 3.L) +
                                  b[3] * std::pow(z, 6.L)));
     },
     30},
    {"propane_pressure",
     FitModel::antoine,
     {true, 0, 0},
     true,
     {},
     {},
     [](Real T, const Vector& b) { return std::pow(10.L, b[0] - b[1] / (T + b[2] - 273.15L)); },
     3},
    {"propane_pressure",
     FitModel::august_rankine,
     {},
     true,
     {},
     {},
     [](Real T, const Vector& b) { return std::exp(b[0] - b[1] / T + b[2] * std::log(T)); },
     4},
    {"propane_pressure",
     FitModel::dippr_pressure,
     {},
     true,
     {20, -1500, -1, 1e-5, 2},
     {4},
     [](Real T, const Vector& b) {
         return std::exp(b[0] + b[1] / T + b[2] * std::log(T) + b[3] * std::pow(T, b[4]));
     },
     0.5},
    {"r134a_pressure",
     FitModel::antoine,
     {},
     false,
     {},
     {},
     [](Real T, const Vector& b) { return std::exp(b[0] - b[1] / (T + b[2] - 273.15L)); },
     7},
    {"propane_density",
     FitModel::rackett,
     {false, 369.89, 0},
     false,
     {},
     {},
     [](Real T, const Vector& b) { return b[0] / std::pow(b[1], 1 + std::pow(z_of(T, 369.89L), b[2])); },
     1.5},
    {"propane_density",
     FitModel::leuna,
     {false, 369.89, 0},
     false,
     {},
     {},
     [](Real T, const Vector& b) {
         return b[0] + b[1] * T + b[2] * T * T + b[3] * T * T * T + b[4] * std::cbrt(z_of(T, 369.89L));
     },
     1},
    {"water_density",
     FitModel::density_polynomial,
     {},
     false,
     {},
     {},
     [](Real T, const Vector& b) { return b[0] + b[1] * T + b[2] * T * T + b[3] * T * T * T; },
     0.02},
    {"water_vaporization",
     FitModel::majer,
     {false, 647.096, 0},
     false,
     {},
     {},
     [](Real T, const Vector& b) {
         const Real z = z_of(T, 647.096L);
         return b[0] * std::exp(-b[1] * (1 - z)) * std::pow(z, b[2]);
     },
     1},
    {"water_vaporization",
     FitModel::dippr_vaporization,
     {false, 647.096, 0},
     false,
     {},
     {},
     [](Real T, const Vector& b) {
         const Real z = z_of(T, 647.096L), t = 1 - z;
         return b[0] * std::pow(z, b[1] + b[2] * t + b[3] * t * t + b[4] * t * t * t);
     },
     0.3},
    {"methane_cp",
     FitModel::cp_polynomial,
     {},
     false,
     {20, 0.02, -1e-5, -1e-8, 0},
     {4},
     [](Real T, const Vector& b) { return b[0] + b[1] * T + b[2] * T * T + b[3] * T * T * T; },
     2},
    {"oxygen_cp",
     FitModel::shomate,
     {},
     false,
     {},
     {},
     [](Real T, const Vector& b) {
         return b[0] + b[1] * T + b[2] * T * T + b[3] * T * T * T + b[4] / (T * T);
     },
     0.2},
    {"carbon_dioxide_cp",
     FitModel::dippr_cp,
     {},
     false,
     {},
     {},
     [](Real T, const Vector& b) {
         const Real u = b[2] / T, w = b[4] / T;
         return b[0] + b[1] * std::pow(u / std::sinh(u), 2.L) + b[3] * std::pow(w / std::cosh(w), 2.L);
     },
     0.2},
    {"water_cp",
     FitModel::dippr_cp,
     {},
     true,
     {},
     {},
     [](Real T, const Vector& b) {
         const Real u = b[2] / T, w = b[4] / T;
         return b[0] + b[1] * std::pow(u / std::sinh(u), 2.L) + b[3] * std::pow(w / std::cosh(w), 2.L);
     },
     0.2},
    {"water_liquid_cp",
     FitModel::cp_polynomial,
     {},
     false,
     {20, 0.02, -1e-5, -1e-8, 0},
     {4},
     [](Real T, const Vector& b) { return b[0] + b[1] * T + b[2] * T * T + b[3] * T * T * T; },
     0.1},
};

// The library's fit of the free parameters from a point beside ours.
struct Library {
    Vector par, StDev;
    Real SS;
};
Library library_fit(const Measured& m, const std::vector<FitPoint>& points, const std::vector<double>& near) {
    std::vector<std::size_t> free;
    for (std::size_t j = 0; j < near.size(); ++j)
        if (std::find(m.held.begin(), m.held.end(), j) == m.held.end()) free.push_back(j);
    const int n = static_cast<int>(free.size());
    const Equation of_free = [&](Real T, const Vector& b) {
        Vector all(near.size());
        for (std::size_t j = 0; j < near.size(); ++j) all[static_cast<int>(j)] = near[j];
        for (int k = 0; k < n; ++k) all[static_cast<int>(free[static_cast<std::size_t>(k)])] = b[k];
        return m.equation(T, all);
    };
    Residuals residuals{points, of_free, m.ln, Vector(n)};
    Vector b(n);
    for (int k = 0; k < n; ++k) {
        residuals.unit[k] = near[free[static_cast<std::size_t>(k)]];
        b[k] = 1 + (k % 2 ? 1e-3L : -1e-3L);
    }
    using Differences = Eigen::NumericalDiff<Residuals, Eigen::Central>;
    Differences differences(residuals, 1e-18L);
    Eigen::LevenbergMarquardt<Differences, Real> solver(differences);
    solver.parameters.xtol = solver.parameters.ftol = 1e-18L;
    solver.parameters.maxfev = 4000;
    solver.minimize(b);
    Residuals::JacobianType J(points.size(), n);
    differences.df(b, J);
    Vector r(points.size());
    residuals(b, r);
    const Real SS = r.squaredNorm();
    const Real Sigma2 = SS / static_cast<Real>(static_cast<int>(points.size()) - n);
    const Residuals::JacobianType inverse = (J.transpose() * J).inverse();
    Vector StDev(n);
    for (int k = 0; k < n; ++k) StDev[k] = std::abs(residuals.unit[k]) * std::sqrt(Sigma2 * inverse(k, k));
    return {b.cwiseProduct(residuals.unit), StDev, SS};
}

TEST(ReferenceFitsTest, another_library_on_measured_data) {
    for (const Measured& m : measured) {
        FitInput input;
        input.model = m.model;
        input.constants = m.constants;
        input.UseLnFit = m.ln;
        input.points = test::fit_points(m.set);
        input.start = m.start;
        for (const std::size_t j : m.held) input.FitFix[j] = true;
        const FitResult ours = fit(input);
        const std::string what = std::string(m.set) + ", model " + std::to_string(static_cast<int>(m.model));
        ASSERT_EQ(ours.end, FitEnd::converged) << what << ": " << ours.note;
        const Library theirs = library_fit(m, input.points, ours.values());
        EXPECT_NEAR(ours.SS, static_cast<double>(theirs.SS), 1e-6 * ours.SS) << what;
        int k = 0;
        for (std::size_t j = 0; j < ours.parameters.size(); ++j) {
            if (ours.parameters[j].mask == Mask::held) continue;
            const FittedParameter& p = ours.parameters[j];
            EXPECT_NEAR(p.value, static_cast<double>(theirs.par[k]), 1e-6 * std::fabs(p.value))
                << what << " " << j;
            EXPECT_NEAR(p.StDev, static_cast<double>(theirs.StDev[k]), 1e-6 * p.StDev) << what << " " << j;
            ++k;
        }
        for (const FittedPoint& point : ours.points)
            EXPECT_LT(std::fabs(point.percent.value()), m.percent) << what << " at " << point.x;
    }
}

#endif

}  // namespace
}  // namespace quom

// Fits of all models: known parameters found again, random starts, bounds, held parameters, refusals.
#include "fitting/fit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "fitting/fit_data.h"
#include "fitting/fit_report.h"
#include "fitting/start_values.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

constexpr int Points = 40;

// Points on a known curve, measured with noise: of ln y, or of y as a part of its greatest value. Empty where
// the residual needs a logarithm that does not exist.
FitInput measured(const test::KnownFit& known, bool ln, double noise, unsigned seed) {
    FitInput input;
    input.model = known.model;
    input.constants = known.constants;
    input.UseLnFit = ln;
    double greatest = 0;
    for (int i = 0; i < Points; ++i) {
        const double x = known.from + (known.to - known.from) * i / (Points - 1);
        input.points.push_back({x, fitted_value(input, known.par, x).value()});
        greatest = std::fmax(greatest, std::fabs(input.points.back().y));
    }
    std::mt19937 engine(seed);
    std::normal_distribution<double> normal;
    for (FitPoint& point : input.points) {
        if (ln && point.y <= 0) return {};
        if (noise > 0)
            point.y =
                ln ? point.y * std::exp(noise * normal(engine)) : point.y + noise * greatest * normal(engine);
    }
    return input;
}

std::string text(const test::KnownFit& known, bool ln) {
    return std::string(known.name) + ", " + std::string(fit_model(known.model).name) + (ln ? ", ln" : "");
}

TEST(FitTest, finds_known_parameters_without_noise) {
    for (const test::KnownFit& known : test::known_fits())
        for (const bool ln : {false, true}) {
            const FitInput input = measured(known, ln, 0, 0);
            if (input.points.empty()) continue;
            const FitModelRow& row = fit_model(known.model);
            const FitResult result = fit(input);
            ASSERT_EQ(result.end, FitEnd::converged) << text(known, ln) << ": " << result.note;
            for (std::size_t j = 0; j < row.NPar; ++j) {
                if (row.no_effect == j) continue;
                EXPECT_NEAR(result.parameters[j].value, known.par[j], 1e-6 * std::fabs(known.par[j]))
                    << text(known, ln) << " " << row.labels[j];
            }
        }
}

// With noise of a known size: every parameter within three of its standard deviations, the deviations right
// in the mean over all models, Sigma2 that of the noise.
TEST(FitTest, standard_deviations_are_those_of_the_noise) {
    double sum_of_squares = 0, sum_of_variances = 0;
    int parameters = 0, fits = 0;
    unsigned seed = 100;
    for (const test::KnownFit& known : test::known_fits())
        for (const bool ln : {false, true}) {
            const double noise = known.model == FitModel::dippr_pressure ? 1e-6 : 1e-4;
            const FitInput input = measured(known, ln, noise, seed++);
            if (input.points.empty()) continue;
            const FitModelRow& row = fit_model(known.model);
            const FitResult result = fit(input);
            ASSERT_EQ(result.end, FitEnd::converged) << text(known, ln) << ": " << result.note;
            double greatest = 0;
            for (const FitPoint& point : input.points) greatest = std::fmax(greatest, std::fabs(point.y));
            sum_of_variances += result.Sigma2 / std::pow(ln ? noise : noise * greatest, 2);
            ++fits;
            for (std::size_t j = 0; j < row.NPar; ++j) {
                if (row.no_effect == j || row.follows == j) continue;
                const FittedParameter& p = result.parameters[j];
                ASSERT_GT(p.StDev, 0) << text(known, ln) << " " << row.labels[j];
                const double part = (p.value - known.par[j]) / p.StDev;
                EXPECT_LT(std::fabs(part), 3) << text(known, ln) << " " << row.labels[j];
                sum_of_squares += part * part;
                ++parameters;
            }
        }
    EXPECT_NEAR(sum_of_squares / parameters, 1, 0.35) << parameters;
    EXPECT_NEAR(sum_of_variances / fits, 1, 0.1);
}

TEST(FitTest, random_starts_end_in_a_result_or_a_reason) {
    std::mt19937 engine(2026);
    const std::vector<test::KnownFit> known = test::known_fits();
    int converged = 0;
    constexpr int Fits = 2000;
    for (int i = 0; i < Fits; ++i) {
        const test::KnownFit& k = known[static_cast<std::size_t>(i) % known.size()];
        FitInput input = measured(k, i / 21 % 2 == 1, 1e-3, static_cast<unsigned>(i));
        if (input.points.empty()) input = measured(k, false, 1e-3, static_cast<unsigned>(i));
        input.points.resize(12);
        const FitModelRow& row = fit_model(k.model);
        const std::vector<FitBound> bounds = fit_bounds(row.NPar);
        for (std::size_t j = 0; j < row.NPar; ++j) {
            std::uniform_real_distribution<double> start(bounds[j].lower, bounds[j].upper);
            const double b = start(engine);
            input.start.push_back(row.FitScale[j] *
                                  (i % 3 == 0 ? b : b * std::pow(10.0, -static_cast<int>(engine() % 6))));
            input.FitFix[j] = engine() % 8 == 0;
        }
        const FitResult result = fit(input);
        ASSERT_NE(result.end, FitEnd::refused) << text(k, input.UseLnFit);
        converged += result.end == FitEnd::converged;
        ASSERT_TRUE(result.end == FitEnd::converged || !result.note.empty()) << text(k, input.UseLnFit);
        ASSERT_TRUE(std::isfinite(result.SS) && std::isfinite(result.Sigma2)) << text(k, input.UseLnFit);
        for (const FittedParameter& p : result.parameters)
            ASSERT_TRUE(std::isfinite(p.value) && std::isfinite(p.StDev)) << text(k, input.UseLnFit);
        for (const FittedPoint& point : result.points)
            ASSERT_TRUE(std::isfinite(point.calculated.value_or(0)) &&
                        std::isfinite(point.percent.value_or(0)));
        const FitReport report = fit_report(result);
        ASSERT_TRUE(std::isfinite(report.AIC.value_or(0)) && std::isfinite(report.average_deviation));
    }
    EXPECT_GT(converged, Fits / 2);
}

FitInput line(std::vector<FitPoint> points) {
    FitInput input;
    input.points = std::move(points);
    for (std::size_t j = 2; j < 6; ++j) input.FitFix[j] = true;
    input.start = {1, 1, 0, 0, 0, 0};
    return input;
}
const std::vector<FitPoint> eight = {{0, 1}, {1, 3.5}, {2, 4}, {3, 8}, {4, 8.5}, {5, 11}, {6, 14.5}, {7, 14}};

TEST(FitTest, held_parameters_and_bounds) {
    FitInput input = line(eight);
    input.FitFix[0] = true;
    FitResult result = fit(input);
    double xx = 0, xy = 0;
    for (const FitPoint& p : eight) {
        xx += p.x * p.x;
        xy += p.x * (p.y - 1);
    }
    EXPECT_NEAR(result.parameters[1].value, xy / xx, 1e-12);
    EXPECT_EQ(result.parameters[0].value, 1);
    EXPECT_EQ(result.parameters[0].mask, Mask::held);
    EXPECT_EQ(result.FreeCount, 1u);
    EXPECT_NEAR(result.Sigma2, result.SS / 7, 1e-12);
    EXPECT_NEAR(result.parameters[1].StDev, std::sqrt(result.Sigma2 / xx), 1e-12);

    input.FitFix[1] = true;  // nothing is free
    result = fit(input);
    EXPECT_EQ(result.end, FitEnd::converged);
    EXPECT_EQ(result.Sigma2, -1);
    EXPECT_EQ(result.parameters[1].StDev, -9999);
    double SS = 0;
    for (const FitPoint& p : eight) SS += std::pow(1 + p.x - p.y, 2);
    EXPECT_NEAR(result.SS, SS, 1e-12);

    // Bounds that hold, from a start inside, outside and on them; and bounds that only seem to.
    for (const double start : {1.2, 9.0, 1.5, -3.0}) {
        input = line(eight);
        input.start[1] = start;
        input.bounds = fit_bounds(6);
        input.bounds[1] = {-1, 1.5, Mask::free};
        result = fit(input);
        ASSERT_EQ(result.end, FitEnd::converged);
        EXPECT_EQ(result.parameters[1].value, 1.5) << start;
        EXPECT_EQ(result.parameters[1].mask, Mask::at_upper) << start;
        EXPECT_EQ(result.parameters[1].StDev, -9999);
        double mean = 0;
        for (const FitPoint& p : eight) mean += (p.y - 1.5 * p.x) / 8;
        EXPECT_NEAR(result.parameters[0].value, mean, 1e-10) << start;
        EXPECT_THAT(result.note, HasSubstr("Parameter B stands at its upper bound."));
        input.bounds[1] = {start, 50, Mask::free};
        if (start < 1.5) {
            EXPECT_NEAR(fit(input).parameters[1].value, fit(line(eight)).parameters[1].value, 1e-10);
        }
    }
}

TEST(FitTest, inactive_and_weighted_points) {
    const FitResult plain = fit(line(eight));
    std::vector<FitPoint> points = eight;
    points.push_back({2.5, 1000, false});
    FitResult result = fit(line(points));
    EXPECT_EQ(result.N, 8u);
    EXPECT_EQ(result.values(), plain.values());
    ASSERT_EQ(result.points.size(), 9u);
    EXPECT_FALSE(result.points[8].active);
    EXPECT_NEAR(result.points[8].deviation.value(), result.points[8].calculated.value() - 1000, 1e-12);

    std::vector<FitPoint> twice = eight, heavy = eight;
    twice.push_back(eight[3]);
    heavy[3].weight = 2;
    result = fit(line(heavy));
    EXPECT_NEAR(result.SS, fit(line(twice)).SS, 1e-12);
    EXPECT_NEAR(result.parameters[1].value, fit(line(twice)).parameters[1].value, 1e-12);
}

TEST(FitTest, model_16_counts_its_fifth_parameter) {
    FitInput input;
    input.model = FitModel::cp_polynomial;
    input.points = test::fit_points("methane_cp");
    input.start = {20, 0.02, -1e-5, -1e-8, 3e-11};
    const FitResult result = fit(input);
    EXPECT_DOUBLE_EQ(result.parameters[4].value, 3e-11);
    EXPECT_NEAR(result.Sigma2, result.SS / static_cast<double>(input.points.size() - 5), 1e-15);
    for (int j = 0; j < 4; ++j) EXPECT_GT(result.parameters[static_cast<std::size_t>(j)].StDev, 0) << j;
}

TEST(FitTest, refusals_and_reasons) {
    struct Case {
        FitModel model;
        FitConstants constants;
        bool ln;
        std::vector<FitPoint> points;
        const char* text;
    };
    const std::vector<FitPoint> T = {{300, 1}, {310, 2}, {320, 3}, {330, 4}, {340, 5}, {350, 6}, {360, 7}};
    std::vector<FitPoint> zero = T, minus = T, few = T;
    zero[2].x = 0;
    minus[2].y = -1;
    for (std::size_t i = 3; i < few.size(); ++i) few[i].active = false;
    const Case cases[] = {
        {FitModel::polynomial, {}, false, {}, "Data not yet available,\nmanual data input"},
        {FitModel::polynomial, {}, false, eight, ""},
        {FitModel::combination, {}, false, eight, "all actíve x-values have to be greater than zero."},
        {FitModel::antoine, {}, false, zero, "all actíve x-values have to be greater than zero."},
        {FitModel::antoine, {}, true, minus, "greater than zero.\nWith logarithmic residuals"},
        {FitModel::antoine, {}, false, few, "has to be greater than the total number of the parameters!\n"},
        {FitModel::frost_thodos, {}, false, T, "Tcr is needed for the correlation of parameter D."},
        {FitModel::wagner, {}, false, T, "Tcr must be given"},
        {FitModel::wagner, {false, 500, 0}, false, T, "pcr must be given"},
        {FitModel::rackett, {}, false, T, "Tcr must be given"},
        {FitModel::majer, {}, false, T, "Tcr must be given"},
    };
    for (const Case& c : cases) {
        FitInput input;
        input.model = c.model;
        input.constants = c.constants;
        input.UseLnFit = c.ln;
        input.points = c.points;
        const FitResult result = fit(input);
        EXPECT_EQ(result.end == FitEnd::refused, *c.text != 0) << c.text;
        if (result.refusal) {
            EXPECT_THAT(result.refusal->text, HasSubstr(c.text));
        }
    }
    // Above T(cr) the density has no value: the note says where.
    FitInput input;
    input.model = FitModel::rackett;
    input.constants.TcFit = 335;
    input.points = T;
    FitResult result = fit(input);
    EXPECT_EQ(result.end, FitEnd::not_computable);
    EXPECT_THAT(result.note, HasSubstr("at point 5 (x = 340)"));
    EXPECT_TRUE(result.parameters.empty());
    // Wagner's 0 above T(cr) is a value for differences of p, none for differences of ln p.
    input.model = FitModel::wagner;
    input.constants.pcFit = 5;
    EXPECT_NE(fit(input).end, FitEnd::not_computable);
    input.UseLnFit = true;
    EXPECT_EQ(fit(input).end, FitEnd::not_computable);
}

TEST(FitReportTest, figures_of_a_straight_line) {
    const FitInput input = line(eight);
    const FitResult result = fit(input);
    const FitReport report = fit_report(result);
    const double n = 8, mean = 3.5, xx = 42, s = std::sqrt(result.SS / 6);  // sum of (x - mean)^2
    EXPECT_NEAR(*report.correlation[0][1], -mean / std::sqrt(xx / n + mean * mean), 1e-12);
    EXPECT_EQ(report.correlation[1][1], 1.0);
    EXPECT_FALSE(report.correlation[1][2]);
    for (const double x : {-2.0, 3.5, 9.0})
        EXPECT_NEAR(*band_95(input, result, x),
                    2.446912 * s * std::sqrt(1 / n + (x - mean) * (x - mean) / xx), 1e-5);
    EXPECT_NEAR(report.standard_error, s, 1e-12);
    EXPECT_NEAR(*report.AIC, 8 * std::log(result.SS / 8) + 6, 1e-12);
    EXPECT_NEAR(*report.AICc, *report.AIC + 24.0 / 4, 1e-12);
    double sum = 0, largest = 0;
    for (const FitPoint& p : eight) {
        const double d = std::fabs(result.parameters[0].value + result.parameters[1].value * p.x - p.y);
        sum += d;
        largest = std::fmax(largest, d);
    }
    EXPECT_NEAR(report.average_deviation, sum / 8, 1e-12);
    EXPECT_NEAR(report.largest_deviation, largest, 1e-12);
    // Tables of Student's distribution.
    const std::pair<std::size_t, double> t[] = {{1, 12.7062}, {2, 4.3027},   {3, 3.1824},
                                                {4, 2.7764},  {5, 2.5706},   {10, 2.2281},
                                                {29, 2.0452}, {120, 1.9799}, {1000, 1.9623}};
    for (const auto& [degrees, quantile] : t) EXPECT_NEAR(student_95(degrees), quantile, 1e-4) << degrees;
}

// The band covers the true curve in 95 % of all measurements.
TEST(FitReportTest, band_covers_the_true_curve) {
    const test::KnownFit known = test::known_fits()[4];  // Antoine
    int inside = 0;
    constexpr int Fits = 400;
    for (unsigned seed = 0; seed < Fits; ++seed) {
        const FitInput input = measured(known, true, 1e-3, seed);
        const FitResult result = fit(input);
        const double y = *fitted_value(input, known.par, 350),
                     fitted = *fitted_value(input, result.values(), 350);
        inside += std::fabs(fitted - y) < *band_95(input, result, 350);
    }
    EXPECT_NEAR(inside, 0.95 * Fits, 13);  // three standard deviations
}

TEST(FitReportTest, models_of_a_quantity_by_quality) {
    FitInput input;
    input.points = test::fit_points("water_pressure");
    input.constants = {false, 647.096, 22064};
    input.UseLnFit = true;
    const std::vector<ModelTrial> trials = try_all_models(input, FitQuantity::vapor_pressure);
    ASSERT_EQ(trials.size(), 5u);
    EXPECT_EQ(trials.back().model, FitModel::frost_thodos) << "its D belongs to hydrocarbons";
    for (std::size_t i = 0; i < trials.size(); ++i) {
        EXPECT_NE(trials[i].model, FitModel::august_rankine) << "no record can hold it";
        ASSERT_TRUE(trials[i].result.has_parameters()) << i;
        if (i > 0) {
            EXPECT_GE(*trials[i].report.AICc, *trials[i - 1].report.AICc) << i;
        }
    }
    EXPECT_LT(*trials.front().report.largest_percent, 0.1);
    input.constants.TcFit = 0;  // two of them need it
    int refused = 0;
    for (const ModelTrial& trial : try_all_models(input, FitQuantity::vapor_pressure))
        refused += trial.result.end == FitEnd::refused;
    EXPECT_EQ(refused, 2);
}

}  // namespace
}  // namespace quom

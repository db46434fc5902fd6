// What a fit is worth: figures of a report, and all models of a quantity side by side.
#pragma once
#include <optional>
#include <vector>

#include "fitting/fit.h"

namespace quom {

// Quantile of Student's distribution for the two-sided 95 % of so many degrees of freedom, at least 1.
double student_95(std::size_t degrees);

struct FitReport {
    // Correlation of the parameters, NPar by NPar, -1 to 1; none where one of the two was held. Empty without
    // an analysis.
    std::vector<std::vector<std::optional<double>>> correlation;
    double average_deviation = 0;  // of |calculated - measured|, active points, unit of y
    double largest_deviation = 0;  // ... the greatest
    std::optional<double> average_percent,
        largest_percent;                    // of |...| in % of the measured; none where y is 0
    std::optional<std::size_t> largest_at;  // FitInput::points, from 0
    double standard_error = 0;              // root of Sigma2; 0 without an analysis
    // Akaike's criterion N ln(SS/N) + 2 (FreeCount + 1), with the correction for few points where there are
    // enough for it. The smaller the better, among fits of the same points and residuals. None for SS = 0.
    std::optional<double> AIC, AICc;
};
// Figures of a result with parameters.
FitReport fit_report(const FitResult& result);

// Half the width of the 95 % band of the fitted curve at x; none without an analysis or without a value at x.
// Of the curve, not of single measurements. With logarithmic residuals the band is y exp(-+ width / y).
std::optional<double> band_95(const FitInput& input, const FitResult& result, double x);

struct ModelTrial {
    FitModel model = FitModel::polynomial;
    FitResult result;
    FitReport report;
};
// Fits every model of a quantity whose parameters a substance record can hold (of a general quantity: every
// regression), best first: the smallest AICc, then those without one by their sum of squares, then those that
// failed. Start values are estimated from the points where that is possible; held parameters and bounds of
// the input do not apply.
std::vector<ModelTrial> try_all_models(const FitInput& input, FitQuantity quantity);

}  // namespace quom

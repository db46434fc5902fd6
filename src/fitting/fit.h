// A fit of one equation of the catalogue to measured points: plain values in, plain values out.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"
#include "fitting/fit_catalogue.h"
#include "fitting/fit_equations.h"
#include "fitting/marquardt.h"

namespace quom {

struct FitPoint {
    double x = 0, y = 0;  // x or T [K]; y in the unit of the quantity
    bool active = true;   // takes part
    double weight = 1.0;  // of the squared residual
    bool operator==(const FitPoint&) const = default;
};

struct FitInput {
    FitModel model = FitModel::polynomial;
    std::vector<FitPoint> points;
    std::vector<double> start;             // plain units; empty: the start values of the catalogue
    std::array<bool, MaxFitPar> FitFix{};  // held parameters
    std::vector<FitBound> bounds;          // of parameter / FitScale; empty: see fit_bounds
    bool UseLnFit = false;                 // residual ln y(calc) - ln y(exp), else y(calc) - y(exp)
    FitConstants constants;                // UseLg, TcFit, pcFit
};

enum class FitEnd {
    converged,
    limit,  // the limit of evaluations was reached: the best parameters up to there, without analysis
    not_computable,  // the equation has no value at a point, from the start or in the course of the iteration
    refused,         // see refusal
};

struct FittedParameter {
    double value = 0;        // plain units
    double StDev = -9999;    // standard deviation, -9999 where there is none; 0 of a held parameter
    Mask mask = Mask::free;  // held, at a bound
};

struct FittedPoint {
    std::size_t point = 0;  // in FitInput::points, from 0
    double x = 0, y = 0;    // measured
    bool active = true;
    std::optional<double> calculated;
    std::optional<double> deviation;  // calculated - measured
    std::optional<double> percent;    // 100 (calculated - measured) / measured
};

struct FitResult {
    FitEnd end = FitEnd::refused;
    std::optional<Message> refusal;
    bool from_estimate = false;  // reached from start values estimated from the points, not from those given
    std::string note;            // what the user must know of the end; empty when there is nothing
    std::vector<FittedParameter> parameters;
    std::size_t N = 0;                            // active points
    std::size_t NPar = 0;                         // parameters, with the held ones
    std::size_t FreeCount = 0;                    // parameters that were not held
    double SS = 0;                                // sum of squares
    double Sigma2 = -1;                           // SS / (N - FreeCount); -1 where there is none
    std::vector<std::vector<double>> covariance;  // NPar by NPar, plain units; empty without an analysis
    std::vector<AxialSearch> axes;
    int iterations = 0, evaluations = 0;
    std::vector<FittedPoint> points;

    bool has_parameters() const { return end == FitEnd::converged || end == FitEnd::limit; }
    std::vector<double> values() const;
};

// The bounds of the iteration, for parameter / FitScale.
std::vector<FitBound> fit_bounds(std::size_t NPar);

// Why the fit cannot start; none when it can.
std::optional<Message> check_fit(const FitInput& input);

// y of the model at x for parameters in plain units; none where it has no value.
std::optional<double> fitted_value(const FitInput& input, const std::vector<double>& par, double x);
// dy/dpar(j) there; empty where it has no value.
std::vector<double> fitted_derivatives(const FitInput& input, const std::vector<double>& par, double x);

// Checks and fits. Marquardt and Nash's iteration ends where its difference quotients do; from there steps
// with the exact derivatives go on while the sum of squares falls.
FitResult fit(const FitInput& input);

}  // namespace quom

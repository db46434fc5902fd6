#include "fitting/fit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "fitting/least_squares.h"
#include "fitting/start_values.h"

namespace quom {
namespace {

constexpr int MostPolishingSteps = 100;
constexpr double SmallestDamping = 1e-14;
constexpr double NoDeviation = -9999;
// Residuals of an exact fit, as a part of the measured values.
constexpr double RoundingOfFit = 1e-13;

Message not_possible(std::string text) {
    return {"Execution not possible", std::move(text), Buttons::ok, Answer::ok, MessageKind::warning};
}

// A fit prepared for many evaluations: what does not change, and the parameters the iteration varies, which
// are those of the equation divided by FitScale.
class Prepared {
 public:
    explicit Prepared(const FitInput& input)
        : row_(fit_model(input.model)), functions_(fit_functions(input.model)), input_(input) {
        for (const FitPoint& point : input.points) {
            if (!point.active) continue;
            points_.push_back({Abscissa(point.x, input.constants),
                               input.UseLnFit ? std::log(point.y) : point.y, std::sqrt(point.weight)});
            lnx_highest_ = std::max(lnx_highest_, points_.back().at.lnx);
        }
    }

    std::size_t size() const { return points_.size(); }

    // The sum of squares of residuals that are rounding errors.
    double smallest_SS() const {
        double sum = 0.0;
        for (const Point& point : points_) {
            const double y =
                point.root_weight * (input_.UseLnFit ? std::max(1.0, std::fabs(point.y)) : point.y);
            sum += y * y;
        }
        return RoundingOfFit * RoundingOfFit * sum;
    }

    void plain(const double* b, double* par) const {
        for (std::size_t j = 0; j < row_.NPar; ++j) par[j] = b[j] * row_.FitScale[j];
    }

    // Weighted residual; not finite where it cannot be computed.
    double CalcResiduals(std::size_t i, const double* b) const {
        const Point& point = points_[i];
        double par[MaxFitPar];
        plain(b, par);
        const double y = functions_.value(input_.constants, point.at, par);
        return point.root_weight * ((input_.UseLnFit ? std::log(y) : y) - point.y);
    }

    // Its derivatives by b, exact ones.
    void derivatives(std::size_t i, const double* b, double* slopes) const {
        const Point& point = points_[i];
        double par[MaxFitPar];
        plain(b, par);
        const double y = functions_.value(input_.constants, point.at, par);
        functions_.derivatives(input_.constants, point.at, par, y, slopes);
        const double factor = point.root_weight / (input_.UseLnFit ? y : 1.0);
        for (std::size_t j = 0; j < row_.NPar; ++j) slopes[j] *= factor * row_.FitScale[j];
    }

    // H T^I of the vapor pressure equation depends little on I where H T0^I stays, T0 the highest T: steps go
    // by H T0^I and I. Its factor H T0^I / H is 1 before the step.
    bool power_of_T(const std::vector<Mask>& mask) const {
        return row_.model == FitModel::dippr_pressure && mask[H] == Mask::free && mask[I] == Mask::free;
    }
    void change_columns(const std::vector<double>& b, const std::vector<std::size_t>& parameters,
                        Columns& J) const {
        const auto place = [&](std::size_t j) {
            return static_cast<std::size_t>(std::ranges::find(parameters, j) - parameters.begin());
        };
        const std::size_t h = place(H), i = place(I);
        if (h == J.n || i == J.n) return;
        for (std::size_t row = 0; row < J.m; ++row) J(row, i) -= b[H] * lnx_highest_ * J(row, h);
    }
    void change_back(const std::vector<double>& b, std::vector<double>& next) const {
        next[H] *= std::exp(-lnx_highest_ * (next[I] - b[I]));
    }

 private:
    struct Point {
        Abscissa at;
        double y, root_weight;
    };
    static constexpr std::size_t H = 3, I = 4;
    const FitModelRow& row_;
    FitFunctions functions_;
    const FitInput& input_;
    std::vector<Point> points_;
    double lnx_highest_ = -std::numeric_limits<double>::infinity();
};

MarquardtProblem make_problem(const FitInput& input, const Prepared& prepared) {
    const FitModelRow& row = fit_model(input.model);
    MarquardtProblem problem;
    problem.points = prepared.size();
    problem.start = fit_start(row, input.constants.UseLg, input.constants.TcFit);
    std::copy_n(input.start.begin(), std::min(input.start.size(), row.NPar), problem.start.begin());
    problem.FitBounds = input.bounds.size() == row.NPar ? input.bounds : fit_bounds(row.NPar);
    for (std::size_t j = 0; j < row.NPar; ++j) {
        problem.start[j] /= row.FitScale[j];
        if (input.FitFix[j] || row.follows == j) problem.FitBounds[j].mask = Mask::held;
    }
    problem.CalcResiduals = [&prepared](std::size_t i, const double* b) {
        return prepared.CalcResiduals(i, b);
    };
    return problem;
}

// The Jacobian at b by the parameters that move the result.
struct FreeColumns {
    std::vector<std::size_t> parameters;
    Columns J{0, 0};
};
FreeColumns free_columns(const Prepared& prepared, const MarquardtResult& at) {
    const std::size_t n = at.b.size();
    Columns all(prepared.size(), n);
    std::vector<double> slopes(n);
    for (std::size_t i = 0; i < prepared.size(); ++i) {
        prepared.derivatives(i, at.b.data(), slopes.data());
        for (std::size_t j = 0; j < n; ++j) all(i, j) = slopes[j];
    }
    FreeColumns free;
    for (std::size_t j = 0; j < n; ++j)
        if (at.mask[j] == Mask::free && std::ranges::any_of(all.column(j), [](double d) { return d != 0.0; }))
            free.parameters.push_back(j);
    free.J = Columns(prepared.size(), free.parameters.size());
    for (std::size_t k = 0; k < free.parameters.size(); ++k)
        std::ranges::copy(all.column(free.parameters[k]), free.J.column(k).begin());
    return free;
}

// A result of the iteration, whether it was found to be a minimum, and whether the points determine it.
struct Solution : MarquardtResult {
    std::vector<AxialSearch> axes;
    bool minimum = false, determined = true;
    double damping = SmallestDamping;
    int settling = 0;  // steps at the minimum
};

// What a step of Gauss and Newton can lower the sum of squares by, as a part of it, at a minimum.
constexpr double MinimumReduction = 1e-9;

bool is_minimum(const Prepared& prepared, const FreeColumns& free, const LeastSquares& step, double SS) {
    double reduction = 0.0;
    for (std::size_t i = 0; i < prepared.size(); ++i) {
        double change = 0.0;
        for (std::size_t k = 0; k < free.parameters.size(); ++k) change += free.J(i, k) * step.x[k];
        reduction += change * change;
    }
    return reduction <= MinimumReduction * SS || SS <= prepared.smallest_SS();
}

// b moved by a step inside its bounds; taken over when the sum of squares falls below a limit.
bool take(const MarquardtProblem& problem, const Prepared& prepared, const FreeColumns& free,
          const LeastSquares& step, double limit, Solution& solution) {
    if (!step.solved) return false;
    std::vector<double> b = solution.b;
    for (std::size_t k = 0; k < free.parameters.size(); ++k) {
        const std::size_t j = free.parameters[k];
        b[j] += step.x[k];
    }
    if (prepared.power_of_T(solution.mask)) prepared.change_back(solution.b, b);
    for (std::size_t j = 0; j < b.size(); ++j)
        b[j] = std::clamp(b[j], problem.FitBounds[j].lower, problem.FitBounds[j].upper);
    const double SS = calcFQS_Marquardt(problem, b);
    ++solution.functions;
    if (!(SS < limit)) return false;
    solution.b = b;
    solution.SS = SS;
    for (std::size_t j = 0; j < b.size(); ++j) {
        if (solution.mask[j] != Mask::free) continue;
        if (b[j] == problem.FitBounds[j].lower) solution.mask[j] = Mask::at_lower;
        if (b[j] == problem.FitBounds[j].upper) solution.mask[j] = Mask::at_upper;
    }
    return true;
}

// One step of Gauss and Newton, damped where it does not lower the sum of squares. False where none does.
bool polishing_step(const MarquardtProblem& problem, const Prepared& prepared, Solution& solution) {
    FreeColumns free = free_columns(prepared, solution);
    if (prepared.power_of_T(solution.mask)) prepared.change_columns(solution.b, free.parameters, free.J);
    std::vector<double> minus_r(problem.points);
    for (std::size_t i = 0; i < problem.points; ++i)
        minus_r[i] = -prepared.CalcResiduals(i, solution.b.data());
    const LeastSquares step = solve_least_squares(free.J, minus_r);
    solution.determined = step.solved;
    if (step.solved) solution.minimum = is_minimum(prepared, free, step, solution.SS);
    if (take(problem, prepared, free, step, solution.SS, solution)) return true;
    if (solution.minimum) {  // the step is surer than sums of squares that differ by their rounding
        const double limit = solution.SS * (1.0 + RoundingOfFit);
        return ++solution.settling < 6 && take(problem, prepared, free, step, limit, solution);
    }
    double& damping = solution.damping;
    while (damping < 1.0) {
        if (take(problem, prepared, free, solve_least_squares(free.J, minus_r, damping), solution.SS,
                 solution)) {
            damping = std::max(SmallestDamping, damping / 100.0);
            return true;
        }
        damping *= 10.0;
    }
    return false;
}

void polish(const MarquardtProblem& problem, const Prepared& prepared, Solution& solution) {
    for (int i = 0; i < MostPolishingSteps; ++i)
        if (!polishing_step(problem, prepared, solution)) return;
}

// The iteration, polished where it ended regularly.
Solution solve(const MarquardtProblem& problem, const Prepared& prepared) {
    Solution solution{MarquardtNashFitting(problem), {}};
    if (solution.NotComputable || solution.limit) return solution;
    polish(problem, prepared, solution);
    solution.axes = axial_search(problem, solution);
    polish(problem, prepared, solution);
    return solution;
}

// Where the iteration failed, or ended above the sum of squares that start values estimated from the points
// have, it is run again from those. True when that gave the better result.
bool take_better_start(const FitInput& input, const Prepared& prepared, MarquardtProblem problem,
                       Solution& solution) {
    const FitModelRow& row = fit_model(input.model);
    const std::optional<std::vector<double>> estimate = estimate_start(input);
    if (!estimate) return false;
    for (std::size_t j = 0; j < row.NPar; ++j)
        if (problem.FitBounds[j].mask != Mask::held) problem.start[j] = (*estimate)[j] / row.FitScale[j];
    const bool failed = solution.NotComputable || solution.limit;
    if (!failed && !(calcFQS_Marquardt(problem, problem.start) < solution.SS)) return false;
    Solution second = solve(problem, prepared);
    if (second.limit) polish(problem, prepared, second);
    if (second.minimum) second.limit = false;
    if (second.NotComputable) return false;
    if (!solution.NotComputable && !(second.SS < solution.SS)) return false;
    solution = second;
    return true;
}

// Standard deviations and covariance. Held parameters, those at a bound and those without effect are left
// out.
void analyse(const FitInput& input, const Prepared& prepared, const Solution& solution, FitResult& result) {
    if (result.FreeCount == 0 || result.N <= result.FreeCount) return;
    result.Sigma2 = result.SS / static_cast<double>(result.N - result.FreeCount);
    const FreeColumns free = free_columns(prepared, solution);
    const LeastSquares inverted = solve_least_squares(free.J, std::vector<double>(prepared.size()));
    if (!inverted.solved) return;

    const FitModelRow& row = fit_model(input.model);
    const std::size_t n = free.parameters.size();
    auto& covariance = result.covariance;
    covariance.assign(row.NPar, std::vector<double>(row.NPar));
    for (std::size_t k = 0; k < n; ++k)
        for (std::size_t l = 0; l < n; ++l) {
            const std::size_t i = free.parameters[k], j = free.parameters[l];
            covariance[i][j] =
                result.Sigma2 * inverted.inverse[k * n + l] * row.FitScale[i] * row.FitScale[j];
            if (!std::isfinite(covariance[i][j])) return covariance.clear();
        }
    for (std::size_t j = 0; j < row.NPar; ++j)
        if (solution.mask[j] == Mask::held) result.parameters[j].StDev = 0.0;
    for (const std::size_t j : free.parameters) result.parameters[j].StDev = std::sqrt(covariance[j][j]);
}

// D of Thodos' form from B, with its deviation.
void correlate_D(const FitInput& input, FitResult& result) {
    const FitModelRow& row = fit_model(input.model);
    if (!row.follows) return;
    const std::size_t D = *row.follows, B = 1;
    result.parameters[D].value = thodos_D(result.parameters[B].value, input.constants);
    if (result.covariance.empty() || result.parameters[B].StDev == NoDeviation) return;
    const double slope = thodos_D(1.0, input.constants) - thodos_D(0.0, input.constants);
    for (std::size_t j = 0; j < row.NPar; ++j)
        result.covariance[D][j] = result.covariance[j][D] = slope * result.covariance[B][j];
    result.covariance[D][D] = slope * slope * result.covariance[B][B];
    result.parameters[D].StDev = std::sqrt(result.covariance[D][D]);
}

std::optional<double> finite(double x) { return std::isfinite(x) ? std::optional(x) : std::nullopt; }

std::vector<FittedPoint> point_table(const FitInput& input, const std::vector<double>& par) {
    std::vector<FittedPoint> table;
    for (std::size_t i = 0; i < input.points.size(); ++i) {
        const FitPoint& point = input.points[i];
        FittedPoint row{i, point.x, point.y, point.active, {}, {}, {}};
        row.calculated = fitted_value(input, par, point.x);
        if (row.calculated && std::isfinite(point.y)) {
            row.deviation = finite(*row.calculated - point.y);
            if (row.deviation && point.y != 0.0) row.percent = finite(100.0 * *row.deviation / point.y);
        }
        table.push_back(row);
    }
    return table;
}

// The first active point without a value, for the note.
std::string not_computable_note(const FitInput& input, const MarquardtProblem& problem) {
    std::size_t active = 0;
    for (std::size_t i = 0; i < input.points.size(); ++i) {
        if (!input.points[i].active) continue;
        if (!std::isfinite(problem.CalcResiduals(active++, problem.start.data())))
            return "Not computable: the equation has no value at point " + std::to_string(i + 1) +
                   " (x = " + genNum(input.points[i].x) + ") with these start values.";
    }
    return "Not computable: the equation left the range in which it has values. Other start values can help.";
}

std::string end_note(const FitInput& input, const FitResult& result, const Solution& solution) {
    std::string note;
    const auto add = [&](const std::string& line) { note += (note.empty() ? "" : "\n") + line; };
    if (result.end == FitEnd::limit)
        add("The limit of the iteration was reached: the parameters are the best up to there, without "
            "standard deviations. Apply them as new start values to go on.");
    else if (!solution.determined)
        add("The points do not determine all free parameters: there are no standard deviations.");
    else if (!solution.minimum)
        add("The iteration stood still before a minimum of the sum of squares. Other start values can help.");
    if (result.from_estimate)
        add("From the start values the iteration found no good fit; this one was reached from start values "
            "estimated from the points.");
    const FitModelRow& row = fit_model(input.model);
    for (std::size_t j = 0; j < result.parameters.size(); ++j) {
        const Mask mask = result.parameters[j].mask;
        if (mask == Mask::at_lower || mask == Mask::at_upper)
            add("Parameter " + std::string(row.labels[j]) + " stands at its " +
                (mask == Mask::at_lower ? "lower" : "upper") + " bound.");
    }
    return note;
}

}  // namespace

std::vector<double> FitResult::values() const {
    std::vector<double> par;
    for (const FittedParameter& parameter : parameters) par.push_back(parameter.value);
    return par;
}

std::vector<FitBound> fit_bounds(std::size_t NPar) {
    std::vector<FitBound> bounds(NPar, FitBound{-2000, 2000, Mask::free});
    if (NPar > 0) bounds[0] = {-5000, 5000, Mask::free};
    if (NPar > 3) bounds[3] = {-10000, 10000, Mask::free};
    return bounds;
}

std::optional<Message> check_fit(const FitInput& input) {
    const FitModelRow& row = fit_model(input.model);
    if (row.NPar == 0) return not_possible("A spline is no regression.");
    if (row.needs_TcFit && !(input.constants.TcFit > 0.0))
        return not_possible(row.follows ? "Tcr is needed for the correlation of parameter D."
                                        : "Tcr must be given");
    if (row.needs_pcFit && !(input.constants.pcFit > 0.0)) return not_possible("pcr must be given");
    if (input.points.empty())
        return not_possible(
            "Data not yet available,\nmanual data input or loading data from file is necessary.\n"
            "The data can be obtained either from the T-p-rho-delta(LV)h editor or\n"
            "from the XY editor (from there \"send data to fitting\")");
    std::size_t N = 0;
    for (const FitPoint& point : input.points) {
        if (!point.active) continue;
        ++N;
        if (row.positive_x && !(point.x > 0.0))
            return not_possible("For this fitting model all actíve x-values have to be greater than zero.");
        if (input.UseLnFit && !(point.y > 0.0))
            return not_possible(
                "For this fitting model all actíve x-values have to be greater than zero.\n"
                "With logarithmic residuals this holds for the y-values, too.");
    }
    if (N <= row.NPar)
        return not_possible(
            "The number of the (active) measuring points has to be greater than the total number "
            "of the parameters!\nComplete the data in the editor;\n"
            "also the repeated input of points can be helpful.");
    return std::nullopt;
}

std::optional<double> fitted_value(const FitInput& input, const std::vector<double>& par, double x) {
    const FitEquation value = fit_functions(input.model).value;
    if (!value || par.size() < fit_model(input.model).NPar) return std::nullopt;
    const double y = value(input.constants, Abscissa(x, input.constants), par.data());
    return std::isfinite(y) ? std::optional(y) : std::nullopt;
}

std::vector<double> fitted_derivatives(const FitInput& input, const std::vector<double>& par, double x) {
    const std::optional<double> y = fitted_value(input, par, x);
    if (!y) return {};
    std::vector<double> slopes(fit_model(input.model).NPar);
    fit_functions(input.model)
        .derivatives(input.constants, Abscissa(x, input.constants), par.data(), *y, slopes.data());
    const bool finite = std::ranges::all_of(slopes, [](double d) { return std::isfinite(d); });
    return finite ? slopes : std::vector<double>{};
}

FitResult fit(const FitInput& input) {
    FitResult result;
    result.refusal = check_fit(input);
    if (result.refusal) return result;
    const FitModelRow& row = fit_model(input.model);
    const Prepared prepared(input);
    const MarquardtProblem problem = make_problem(input, prepared);
    result.N = prepared.size();
    result.NPar = row.NPar;

    Solution solution = solve(problem, prepared);
    result.from_estimate = take_better_start(input, prepared, problem, solution);
    result.end = solution.NotComputable ? FitEnd::not_computable
                 : solution.limit       ? FitEnd::limit
                                        : FitEnd::converged;
    if (result.end == FitEnd::not_computable) {
        result.note = not_computable_note(input, problem);
        return result;
    }
    result.axes = solution.axes;

    for (std::size_t j = 0; j < row.NPar; ++j) {
        result.parameters.push_back({solution.b[j] * row.FitScale[j], NoDeviation, solution.mask[j]});
        if (solution.mask[j] != Mask::held) ++result.FreeCount;
    }
    result.SS = solution.SS;
    result.iterations = solution.gradients;
    if (result.end == FitEnd::converged) analyse(input, prepared, solution, result);
    correlate_D(input, result);
    result.evaluations = solution.functions;
    result.points = point_table(input, result.values());
    result.note = end_note(input, result, solution);
    return result;
}

}  // namespace quom

#include "fitting/start_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/constants.h"
#include "fitting/least_squares.h"

namespace quom {
namespace {

constexpr std::size_t MostPoints = 100;  // more are thinned out

// One equation of the linear system: the unknowns' coefficients, the right side, and how much the y of the
// equation changes with the right side.
struct LinearRow {
    double coefficients[MaxFitPar] = {};
    double right = 0, slope = 1;
};
using LinearEquation = LinearRow (*)(const FitConstants&, const Abscissa&, double y, const double* par);

LinearRow of_logarithm(double y) {
    LinearRow row;
    row.right = std::log(y);
    row.slope = y;
    return row;
}
LinearRow of_derivatives(FitModel model, const FitConstants& constants, const Abscissa& at, double y,
                         const double* par) {
    LinearRow row;
    row.right = y;
    fit_functions(model).derivatives(constants, at, par, y, row.coefficients);
    return row;
}

LinearRow polynomial(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    return of_derivatives(FitModel::polynomial, constants, at, y, par);
}
LinearRow combination(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    return of_derivatives(FitModel::combination, constants, at, y, par);
}
LinearRow leuna(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    return of_derivatives(FitModel::leuna, constants, at, y, par);
}
LinearRow cubic(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    return of_derivatives(FitModel::density_polynomial, constants, at, y, par);
}
LinearRow shomate(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    return of_derivatives(FitModel::shomate, constants, at, y, par);
}
// A, B, D for given C, E.
LinearRow dippr_cp(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    double set[5] = {1, 1, par[2], 1, par[4]};
    LinearRow row = of_derivatives(FitModel::dippr_cp, constants, at, y, set);
    row.coefficients[2] = row.coefficients[4] = 0.0;
    return row;
}
LinearRow august_rankine(const FitConstants& constants, const Abscissa& at, double y, const double*) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = constants.f();
    row.coefficients[1] = -constants.f() / at.x;
    row.coefficients[2] = at.lnx;
    return row;
}
// A, B for a given C.
LinearRow antoine(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = constants.f();
    row.coefficients[1] = -constants.f() / (at.x + par[2] - TZeroC);
    return row;
}
// A, B, D, E for a given C; p on the right side is the measured one.
LinearRow frost_kalkwarf(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = constants.f();
    row.coefficients[1] = constants.f() / (at.x + par[2] - TZeroC);
    row.coefficients[3] = at.lnx;
    row.coefficients[4] = constants.f() * y / (at.x * at.x);
    return row;
}
LinearRow frost_thodos(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    LinearRow row = frost_kalkwarf(constants, at, y, par);
    const double D_of_0 = thodos_D(0.0, constants);
    row.coefficients[1] += (thodos_D(1.0, constants) - D_of_0) * at.lnx;
    row.coefficients[3] = 0.0;
    row.right -= D_of_0 * at.lnx;
    return row;
}
// A, B, D, H for a given I.
LinearRow dippr_pressure(const FitConstants& constants, const Abscissa& at, double y, const double* par) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = constants.f();
    row.coefficients[1] = constants.f() / at.x;
    row.coefficients[2] = at.lnx;
    row.coefficients[3] = constants.f() * std::exp(par[4] * at.lnx);
    return row;
}
LinearRow wagner(const FitConstants& constants, const Abscissa& at, double y, const double*) {
    LinearRow row;
    const double Tr = at.x / constants.TcFit;
    row.right = Tr * std::log(y / constants.pcFit);
    row.slope = y / Tr;
    for (int j = 0; j < 4; ++j)
        row.coefficients[j] = std::pow(at.z, j == 1 ? 1.5 : j == 0 ? 1.0 : 3.0 * (j - 1));
    return row;
}
// ln A, ln B for a given C.
LinearRow rackett(const FitConstants&, const Abscissa& at, double y, const double* par) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = 1.0;
    row.coefficients[1] = -1.0 - std::pow(at.z, par[2]);
    return row;
}
// ln A, alpha, beta.
LinearRow majer(const FitConstants&, const Abscissa& at, double y, const double*) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = 1.0;
    row.coefficients[1] = at.z - 1.0;
    row.coefficients[2] = at.lnz;
    return row;
}
// ln A, B, C, D, E.
LinearRow dippr_vaporization(const FitConstants&, const Abscissa& at, double y, const double*) {
    LinearRow row = of_logarithm(y);
    row.coefficients[0] = 1.0;
    row.coefficients[1] = at.lnz;
    for (int j = 2; j < 5; ++j) row.coefficients[j] = row.coefficients[j - 1] * (1.0 - at.z);
    return row;
}

// A parameter that stays inside a function, with the values that are tried; relative: to the middle of all T.
struct Tried {
    std::size_t parameter;
    bool relative;
    std::vector<double> values;
};

struct LinearForm {
    FitModel model;
    LinearEquation equation;
    std::vector<std::size_t> logarithms;  // unknowns that are the logarithm of their parameter
    std::vector<Tried> tried;
};

const LinearForm* linear_form(FitModel model) {
    static const std::vector<LinearForm> forms = {
        {FitModel::polynomial, polynomial, {}, {}},
        {FitModel::combination, combination, {}, {}},
        {FitModel::august_rankine, august_rankine, {}, {}},
        {FitModel::antoine, antoine, {}, {{2, false, {120, 160, 180, 200, 215, 230, 245, 260, 273.15}}}},
        {FitModel::frost_kalkwarf, frost_kalkwarf, {}, {{2, false, {273.15}}}},
        {FitModel::frost_thodos, frost_thodos, {}, {{2, false, {273.15}}}},
        {FitModel::dippr_pressure, dippr_pressure, {}, {{4, false, {1, 2, 3, 4, 6, 8, 10}}}},
        {FitModel::wagner, wagner, {}, {}},
        {FitModel::rackett, rackett, {0, 1}, {{2, false, {0.2, 0.24, 0.27, 0.285, 0.3, 0.33, 0.38, 0.5}}}},
        {FitModel::leuna, leuna, {}, {}},
        {FitModel::density_polynomial, cubic, {}, {}},
        {FitModel::majer, majer, {0}, {}},
        {FitModel::dippr_vaporization, dippr_vaporization, {0}, {}},
        {FitModel::cp_polynomial, cubic, {}, {}},
        {FitModel::shomate, shomate, {}, {}},
        {FitModel::dippr_cp,
         dippr_cp,
         {},
         {{2, true, {0.3, 0.6, 1, 1.5, 2, 3, 4.5}}, {4, true, {0.3, 0.6, 1, 1.5, 2, 3, 4.5}}}},
    };
    const auto form = std::ranges::find(forms, model, &LinearForm::model);
    return form == forms.end() ? nullptr : &*form;
}

struct Candidate {
    std::vector<double> par;
    double SS = std::numeric_limits<double>::infinity();
};

class Estimate {
 public:
    Estimate(const FitInput& input, const LinearForm& form)
        : input_(input),
          form_(form),
          row_(fit_model(input.model)),
          start_(fit_start(row_, input.constants.UseLg, input.constants.TcFit)) {
        std::copy_n(input.start.begin(), std::min(input.start.size(), row_.NPar), start_.begin());
        take_points();
    }

    std::optional<std::vector<double>> best() {
        if (points_.empty()) return std::nullopt;
        try_from(0, start_);
        if (!std::isfinite(best_.SS)) return std::nullopt;
        return best_.par;
    }

 private:
    void take_points() {
        std::vector<const FitPoint*> active;
        for (const FitPoint& point : input_.points)
            if (point.active) active.push_back(&point);
        const std::size_t step = std::max<std::size_t>(1, (active.size() + MostPoints - 1) / MostPoints);
        double lowest = std::numeric_limits<double>::infinity(), highest = -lowest;
        for (std::size_t i = 0; i < active.size(); i += step) {
            points_.push_back(*active[i]);
            lowest = std::min(lowest, active[i]->x);
            highest = std::max(highest, active[i]->x);
        }
        middle_ = 0.5 * (lowest + highest);
    }

    void try_from(std::size_t tried, std::vector<double> par) {
        if (tried == form_.tried.size()) return solve(std::move(par));
        const Tried& t = form_.tried[tried];
        if (input_.FitFix[t.parameter]) return try_from(tried + 1, std::move(par));
        for (const double value : t.values) {
            par[t.parameter] = t.relative ? value * middle_ : value;
            try_from(tried + 1, par);
        }
    }

    bool is_logarithm(std::size_t j) const { return std::ranges::count(form_.logarithms, j) > 0; }
    bool is_unknown(std::size_t j) const {
        const bool tried = std::ranges::count(form_.tried, j, &Tried::parameter) > 0;
        return !input_.FitFix[j] && !tried && row_.follows != j && row_.no_effect != j;
    }

    // The unknowns for given values of the parameters that are none.
    void solve(std::vector<double> par) {
        std::vector<std::size_t> unknowns;
        for (std::size_t j = 0; j < row_.NPar; ++j)
            if (is_unknown(j)) unknowns.push_back(j);
        std::vector<LinearRow> rows;
        for (const FitPoint& point : points_) {
            LinearRow row =
                form_.equation(input_.constants, Abscissa(point.x, input_.constants), point.y, par.data());
            const double weight = std::sqrt(point.weight) * row.slope / (input_.UseLnFit ? point.y : 1.0);
            row.right *= weight;
            bool finite = std::isfinite(row.right);
            for (std::size_t j = 0; j < row_.NPar; ++j) {
                row.coefficients[j] *= weight;
                finite = finite && std::isfinite(row.coefficients[j]);
                if (!is_unknown(j))
                    row.right -= row.coefficients[j] * (is_logarithm(j) ? std::log(par[j]) : par[j]);
            }
            if (finite) rows.push_back(row);
        }
        if (rows.size() < unknowns.size()) return;
        Columns J(rows.size(), unknowns.size());
        std::vector<double> right(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            right[i] = rows[i].right;
            for (std::size_t k = 0; k < unknowns.size(); ++k) J(i, k) = rows[i].coefficients[unknowns[k]];
        }
        const LeastSquares solution = solve_least_squares(J, right);
        if (!solution.solved) return;
        double SS = 0.0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            double r = -right[i];
            for (std::size_t k = 0; k < unknowns.size(); ++k) r += J(i, k) * solution.x[k];
            SS += r * r;
        }
        for (std::size_t k = 0; k < unknowns.size(); ++k)
            par[unknowns[k]] = is_logarithm(unknowns[k]) ? std::exp(solution.x[k]) : solution.x[k];
        if (SS < best_.SS && std::ranges::all_of(par, [](double p) { return std::isfinite(p); }))
            best_ = {std::move(par), SS};
    }

    const FitInput& input_;
    const LinearForm& form_;
    const FitModelRow& row_;
    std::vector<double> start_;
    std::vector<FitPoint> points_;
    double middle_ = 0;
    Candidate best_;
};

}  // namespace

std::optional<std::vector<double>> estimate_start(const FitInput& input) {
    const LinearForm* form = linear_form(input.model);
    if (!form) return std::nullopt;
    return Estimate(input, *form).best();
}

}  // namespace quom

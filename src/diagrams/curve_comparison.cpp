#include "diagrams/curve_comparison.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quom {
namespace {

using Q = AxisQuantity;

// Energies and entropies have a zero by convention, ln p one by the unit of p: per cent of them mean nothing.
constexpr auto without_zero =
    std::to_array<Q>({Q::u, Q::h, Q::s, Q::g, Q::a, Q::eH, Q::eU, Q::e, Q::TSurr_s, Q::ln_p});

bool has_zero(Kind kind) { return std::ranges::find(without_zero, kind_info(kind).y) == without_zero.end(); }

// All values of one equation: those of its curves together.
class Equation {
 public:
    explicit Equation(const ComparedCurve& curve) {
        for (const CurveInput& input : curve.inputs) parts_.emplace_back(curve.fluid, input);
    }
    std::vector<CurveValue> at(double x) const {
        std::vector<CurveValue> all;
        for (const CurveValues& part : parts_) {
            const std::vector<CurveValue> values = part.at(x);
            all.insert(all.end(), values.begin(), values.end());
        }
        return all;
    }

 private:
    std::vector<CurveValues> parts_;
};

class Comparison {
 public:
    explicit Comparison(const CompareInput& input) : in_(input) {
        for (const ComparedCurve& curve : input.curves) {
            equations_.emplace_back(curve);
            table_.names.push_back(curve.name);
        }
        table_.reference = input.reference;
        table_.percent = has_zero(input.kind);
    }

    CurveComparison run() {
        if (equations_.empty() || table_.reference >= equations_.size()) return std::move(table_);
        compare_branches();
        if (!in_.measured.empty()) compare_points();
        return std::move(table_);
    }

 private:
    double low_x() const { return static_cast<double>(in_.range.XMin); }
    double high_x() const { return static_cast<double>(in_.range.XMax); }
    bool in_sight(double y) const {
        return y >= static_cast<double>(in_.range.YMin) && y <= static_cast<double>(in_.range.YMax);
    }

    // Abscissas that show where the branches lie: equal steps, and equal ratios for those that are narrow.
    std::vector<double> candidates() const {
        constexpr int Cells = 240;
        const double low = low_x(), high = high_x();
        std::vector<double> x;
        const double start = low > 0.0 ? low : 1e-4 * high;
        for (int i = 0; i <= Cells; ++i) {
            const double share = static_cast<double>(i) / Cells;
            x.push_back(low + share * (high - low));
            if (high > start && start > 0.0) x.push_back(start * std::pow(high / start, share));
        }
        std::ranges::sort(x);
        x.erase(std::unique(x.begin(), x.end()), x.end());
        return x;
    }

    // The branches at x with the values of every equation in them. A branch in which an equation has more
    // than one value is left out.
    std::vector<ComparedRow> rows_at(double x) {
        std::vector<std::vector<CurveValue>> values;
        for (const Equation& equation : equations_) values.push_back(equation.at(x));
        std::vector<ComparedRow> rows;
        for (const auto& list : values)
            for (const CurveValue& value : list) {
                const auto same = [&](const ComparedRow& row) {
                    return same_branch({row.part, row.returning, 0.0}, value);
                };
                if (std::ranges::any_of(rows, same)) continue;
                if (auto row = row_of(x, value, values)) rows.push_back(std::move(*row));
            }
        return rows;
    }

    std::optional<ComparedRow> row_of(double x, const CurveValue& branch,
                                      const std::vector<std::vector<CurveValue>>& values) {
        ComparedRow row{.x = x, .part = branch.part, .returning = branch.returning, .y = {}};
        for (const auto& list : values) {
            const auto like = [&](const CurveValue& value) { return same_branch(branch, value); };
            const auto found = std::ranges::find_if(list, like);
            if (std::ranges::count_if(list, like) > 1) {
                ambiguous_ = true;
                return std::nullopt;
            }
            row.y.push_back(found == list.end() ? std::nullopt : std::optional(found->y));
        }
        return row;
    }

    // What the candidates tell of a branch.
    struct Found {
        ComparedBranch branch;
        std::vector<ComparedRow> rows;
        std::vector<bool> takes_part;
    };

    std::vector<Found> find_branches() {
        std::vector<Found> found;
        for (const double x : candidates())
            for (ComparedRow& row : rows_at(x)) {
                const auto same = [&](const Found& f) {
                    return f.branch.part == row.part && f.branch.returning == row.returning;
                };
                auto at = std::ranges::find_if(found, same);
                if (at == found.end()) {
                    found.push_back({{row.part, row.returning, 0.0, 0.0, {}}, {}, {}});
                    at = found.end() - 1;
                    at->takes_part.resize(equations_.size());
                }
                for (std::size_t i = 0; i < row.y.size(); ++i)
                    if (row.y[i] && in_sight(*row.y[i])) at->takes_part[i] = true;
                at->rows.push_back(std::move(row));
            }
        return found;
    }

    // Every curve that takes part has a value in sight.
    bool compared(const ComparedRow& row, const std::vector<bool>& takes_part) const {
        for (std::size_t i = 0; i < row.y.size(); ++i)
            if (takes_part[i] && (!row.y[i] || !in_sight(*row.y[i]))) return false;
        return true;
    }

    void compare_branches() {
        for (Found& f : find_branches()) {
            const std::string name = prefix_of(f.branch);
            const auto part = std::ranges::count(f.takes_part, true);
            for (std::size_t i = 0; i < f.takes_part.size(); ++i)
                if (!f.takes_part[i]) f.branch.without.push_back(i);
            if (part == 0) continue;
            if (part == 1 || !f.takes_part[table_.reference]) {
                note_alone(name, f);
                continue;
            }
            const auto in_all = [&](const ComparedRow& row) { return compared(row, f.takes_part); };
            const auto first = std::ranges::find_if(f.rows, in_all);
            if (first == f.rows.end()) {
                table_.notes.push_back(name +
                                       "there is no position at which all curves have a value in the range.");
                continue;
            }
            f.branch.from = first->x;
            for (const ComparedRow& row : f.rows)
                if (in_all(row)) f.branch.to = row.x;
            add_rows(f);
            note_without(name, f.branch);
        }
        if (ambiguous_)
            table_.notes.emplace_back(
                "At some positions a curve has several values of one branch; these are not comparable.");
        for (std::size_t i = 0; i < equations_.size(); ++i) table_.curves.push_back(summary(table_.rows, i));
    }

    void note_alone(const std::string& name, const Found& f) {
        if (equations_.size() < 2) return;
        std::string who;
        for (std::size_t i = 0; i < f.takes_part.size(); ++i)
            if (f.takes_part[i]) who += (who.empty() ? "" : ", ") + table_.names[i];
        const bool one = std::ranges::count(f.takes_part, true) == 1;
        const bool lacks_reference = !f.takes_part[table_.reference];
        table_.notes.push_back(name + "only " + who + (one ? " has" : " have") + " values there" +
                               (lacks_reference ? ", not the reference; not compared." : "; not compared."));
    }

    void note_without(const std::string& name, const ComparedBranch& branch) {
        for (const std::size_t i : branch.without)
            table_.notes.push_back(name + table_.names[i] + " has no value in the range.");
    }

    static std::string prefix_of(const ComparedBranch& branch) {
        const std::string name(part_name(branch.part));
        return name.empty() ? name : name + ": ";
    }

    void add_rows(const Found& f) {
        const ComparedBranch& branch = f.branch;
        const int last = std::max(in_.positions, 2) - 1;
        const bool ratios = in_.log_x && branch.from > 0.0;
        for (int i = 0; i <= last; ++i) {
            const double share = static_cast<double>(i) / last;
            double x = ratios ? branch.from * std::pow(branch.to / branch.from, share)
                              : branch.from + share * (branch.to - branch.from);
            if (i == last) x = branch.to;
            if (i > 0 && branch.from == branch.to) break;
            for (ComparedRow& row : rows_at(x)) {
                const bool here = row.part == branch.part && row.returning == branch.returning;
                if (here && compared(row, f.takes_part)) table_.rows.push_back(std::move(row));
            }
        }
        table_.branches.push_back(branch);
    }

    // The value of an equation that a measured point belongs to; none where it has none, several, or one of
    // another phase.
    std::optional<double> value_for(std::size_t curve, const SectionPoint& point) const {
        std::optional<double> y;
        for (const CurveValue& value : equations_[curve].at(point.X)) {
            if (!belongs(point, value.part)) continue;
            if (y) return std::nullopt;
            y = value.y;
        }
        return y;
    }
    bool belongs(const SectionPoint& point, CurvePart part) const {
        if (!point.liquid && !point.vapor) return true;
        if (part == CurvePart::any) return true;
        if (part == CurvePart::curve)
            return point.liquid && (in_.kind == Kind::db_rhoL || in_.kind == Kind::db_vL);
        return part == (point.liquid ? CurvePart::liquid : CurvePart::vapor);
    }

    // The points in the units of each equation: reduced volumes refer to its own v(cr). Rows show those of
    // the reference.
    void compare_points() {
        std::vector<std::vector<SectionPoint>> points;
        for (const ComparedCurve& curve : in_.curves) {
            const CurveInput& input = curve.inputs.front();
            points.push_back(points_of_section(in_.kind, {input.T, input.p, input.v}, *curve.fluid,
                                               input.units, in_.measured));
        }
        const std::vector<SectionPoint>& shown = points[table_.reference];
        for (std::size_t k = 0; k < shown.size(); ++k) {
            const SectionPoint& at = shown[k];
            if (at.X < low_x() || at.X > high_x() || !in_sight(at.Y)) continue;
            ComparedRow row{.x = at.X, .measured = at.Y, .y = {}};
            if (at.liquid) row.part = CurvePart::liquid;
            if (at.vapor) row.part = CurvePart::vapor;
            for (std::size_t i = 0; i < equations_.size(); ++i) {
                const SectionPoint& own = points[i][k];
                std::optional<double> y = value_for(i, own);
                if (y) *y *= at.Y / own.Y;
                row.y.push_back(y);
            }
            table_.measured_rows.push_back(std::move(row));
        }
        std::ranges::stable_sort(table_.measured_rows, {}, &ComparedRow::x);
        if (table_.measured_rows.empty()) {
            table_.notes.emplace_back("None of the measured points lies in the range and on this curve.");
            return;
        }
        for (std::size_t i = 0; i < equations_.size(); ++i)
            table_.points.push_back(summary(table_.measured_rows, i));
    }

    DeviationSummary summary(const std::vector<ComparedRow>& rows, std::size_t curve) const {
        DeviationSummary s;
        double size = 0.0, sum = 0.0, size_percent = 0.0, sum_percent = 0.0;
        int percents = 0;
        for (const ComparedRow& row : rows) {
            const auto d = deviation(table_, row, curve);
            if (!d) {
                ++s.missing;
                continue;
            }
            ++s.count;
            size += std::fabs(*d);
            sum += *d;
            if (!s.largest || std::fabs(*d) > std::fabs(*s.largest)) {
                s.largest = d;
                s.largest_x = row.x;
            }
            const auto percent = deviation_percent(table_, row, curve);
            if (!percent) continue;
            ++percents;
            size_percent += std::fabs(*percent);
            sum_percent += *percent;
            if (!s.largest_percent || std::fabs(*percent) > std::fabs(*s.largest_percent)) {
                s.largest_percent = percent;
                s.largest_percent_x = row.x;
            }
        }
        if (s.count > 0) {
            s.mean_size = size / s.count;
            s.mean = sum / s.count;
        }
        if (percents > 0) {
            s.mean_size_percent = size_percent / percents;
            s.mean_percent = sum_percent / percents;
        }
        return s;
    }

    const CompareInput& in_;
    std::vector<Equation> equations_;
    CurveComparison table_;
    bool ambiguous_ = false;
};

std::optional<double> base_of(const CurveComparison& table, const ComparedRow& row) {
    return row.measured ? row.measured : row.y[table.reference];
}

}  // namespace

CurveComparison compare_curves(const CompareInput& input) { return Comparison(input).run(); }

std::string branch_name(const CurveComparison& table, CurvePart part, bool returning) {
    std::string name(part_name(part));
    const auto turns_back = [&](const ComparedBranch& other) {
        return other.part == part && other.returning != returning;
    };
    if (returning && std::ranges::any_of(table.branches, turns_back))
        name += name.empty() ? "returning" : ", returning";
    return name;
}

std::optional<double> deviation(const CurveComparison& table, const ComparedRow& row, std::size_t curve) {
    const std::optional<double> base = base_of(table, row), y = row.y[curve];
    return base && y ? std::optional(*y - *base) : std::nullopt;
}

std::optional<double> deviation_percent(const CurveComparison& table, const ComparedRow& row,
                                        std::size_t curve) {
    const std::optional<double> d = deviation(table, row, curve);
    const double base = d ? std::fabs(*base_of(table, row)) : 0.0;
    return table.percent && base > 0.0 ? std::optional(100.0 * *d / base) : std::nullopt;
}

}  // namespace quom

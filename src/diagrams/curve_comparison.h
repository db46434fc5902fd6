// The same curve by several equations: values at common abscissas, deviations from one of them and from
// measured points.
#pragma once
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "diagrams/curve_values.h"
#include "diagrams/measured_points.h"

namespace quom {

// One of the curves: the fluid of its equation, and the inputs of what is drawn for it, a coexistence curve
// in two parts.
struct ComparedCurve {
    std::string key;   // for programs: "eos_5"
    std::string name;  // of the equation, for people: "Peng / Robinson", "Wagner (MDB equ.)"
    std::shared_ptr<const Fluid> fluid;
    std::vector<CurveInput> inputs;
};

struct CompareInput {
    std::vector<ComparedCurve> curves;
    std::size_t reference = 0;  // which of them the deviations are from
    Kind kind = Kind::none;     // of the sheet
    CurveRange range;           // of the sheet; what lies outside is not compared
    bool log_x = false;
    int positions = 21;  // in each branch
    std::vector<MeasuredPoint> measured{};
};

// Values at one abscissa in one branch, by the order of the curves.
struct ComparedRow {
    double x = 0;  // displayed units, as y
    CurvePart part = CurvePart::curve;
    bool returning = false;            // see CurveValue
    std::optional<double> measured{};  // of a row of the measured points
    std::vector<std::optional<double>> y;
};

// Deviations of one equation, y - reference; % of the size of the reference.
struct DeviationSummary {
    int count = 0;    // positions or points with both values
    int missing = 0;  // those that the equation has no value at, or one of another phase
    std::optional<double> mean_size{}, mean{};                  // of |deviation|, of the deviation
    std::optional<double> mean_size_percent{}, mean_percent{};  // AAD and bias
    std::optional<double> largest{}, largest_percent{};         // with their sign
    double largest_x = 0, largest_percent_x = 0;                // where they are
};

// Where a branch is compared.
struct ComparedBranch {
    CurvePart part = CurvePart::curve;
    bool returning = false;
    double from = 0, to = 0;           // x
    std::vector<std::size_t> without;  // curves that have no value in the branch
};

struct CurveComparison {
    std::vector<std::string> names;
    std::size_t reference = 0;
    bool percent = true;  // y has a natural zero, so that per cent of it mean something
    std::vector<ComparedBranch> branches;
    std::vector<ComparedRow> rows;           // every curve that is in the branch has a value
    std::vector<DeviationSummary> curves;    // of the rows, from the reference
    std::vector<ComparedRow> measured_rows;  // at the abscissas of the measured points
    std::vector<DeviationSummary> points;    // of these, from the measured values; empty without points
    std::vector<std::string> notes;          // what could not be compared, and why
};

// Compares where all curves of a branch have a value inside the range. Liquid, vapor and two-phase states are
// compared with their like alone; so are the branches of a curve that turns back. Every value is that of the
// equation at the abscissa, none is read off the points of a curve.
CurveComparison compare_curves(const CompareInput& input);

// "liquid", "vapor, returning"; which way x runs is told where the part of the phase turns back.
std::string branch_name(const CurveComparison& table, CurvePart part, bool returning);

// y of a curve less the reference, or less the measured value of the row; per cent of the size of that. None
// where one of them is not there.
std::optional<double> deviation(const CurveComparison& table, const ComparedRow& row, std::size_t curve);
std::optional<double> deviation_percent(const CurveComparison& table, const ComparedRow& row,
                                        std::size_t curve);

}  // namespace quom

// What the branches of the curve generator share: the curve in the making, its steps and unit factors, the
// rules of range and triple point, scans, and the functions of a state.
#pragma once
#include <optional>
#include <vector>

#include "diagrams/curve.h"
#include "engine/saturation.h"
#include "engine/state_columns.h"
#include "engine/thermo_functions.h"

namespace quom {

// Which coordinates decide whether a point lies inside the range.
enum class InsideBy { both, x, y };

class CurveRun {
 public:
    CurveRun(const Fluid& fluid, const CurveInput& input);

    const Fluid& fluid;
    const CurveInput& in;
    const KindInfo& kind;  // of the diagram
    CurveResult out;
    double XMin, XMax, YMin, YMax;  // range as doubles, displayed units
    double dx, dy;                  // span over Dens
    UnitFactors f;                  // at the parameter T (EnergyMode 2 has its factor at each T: uFactor_at)
    double Tcr, pcr, vcr;           // critical point, vcr that the equation of state implies; 0 not known
    double M;                       // [kg/kmol]
    double pLimit = 0, TLimit = 0;  // saturation that cuts an equation of the V-phase only; 0 none

    // Factor of energies and heat capacities at T [K].
    double uFactor_at(double T) const;
    // Appends a point in displayed units; one that is not finite (also as single) is left out. Clears Outside
    // when it lies strictly inside the range.
    void add(double X, double Y, double Par, double Tag = 0.0, InsideBy rule = InsideBy::both);
    bool inside(double X, double Y, InsideBy rule = InsideBy::both) const;
    // The rule of the triple point: true: T [K] is not drawn. Where points below are allowed, Status notes
    // them.
    bool below_triple(double T);
    void sort_x() { SortPointsX(out.curve.points); }
    void sort_y() { SortPointsY(out.curve.points); }
    // Whether the equation of state has saturation: a cubic one with its constants.
    bool knows_saturation() const;
    // A quantity between its saturated values, by the vapor fraction.
    double between(double L, double V) const { return L + in.VaporFraction * (V - L); }
    // Most points of one scan: 20 Dens + 1000.
    std::size_t round_limit() const;
    // scan_values of the axis x. For a logarithmic axis Dens values at equal ratios are among them, from
    // where the axis begins: steps of equal size leave its lower decades without points.
    std::vector<double> scan_x(double from, double to, double step, double beyond, bool clamp) const;

 private:
    double Ttr_;
};

// from, from + step, ... by repeated addition, as long as the limit is not passed; a negative step falls.
// beyond (a share of the step, such as 0.9) lets it run on behind the limit; clamp puts what lies behind onto
// the limit. No value for a step that is 0, not finite or leads away from the limit; at most `most` values.
std::vector<double> scan_values(double from, double to, double step, double beyond, bool clamp,
                                std::size_t most);

// A function of a state in molar units, kJ/kmol or kJ/(kmol K): u, h, s, g, a, eH, eU, cp, cV, TSurr_s.
// NaN where it does not exist.
double function_value(const Fluid& fluid, const StateFunctions& state, AxisQuantity q);
double function_value(const Fluid& fluid, const StateColumns& states, std::size_t i, AxisQuantity q);
// A residual function of a phase in the same units: residual_s, residual_h, residual_g, residual_cp, from the
// arrays of ThermoFunc.
double residual_value(const PhaseArrays& arrays, AxisQuantity q);

// A quantity of the phase at T [K], p [kPa], v [m^3/kmol] in displayed units; NaN where it does not exist.
double quantity_of_phase(const CurveRun& run, double T, double p, double v, AxisQuantity q);
// y of a kind of the family vapor_pressure at T [K] by the concept, in displayed units.
std::optional<double> vapor_pressure_value(const CurveRun& run, double T);

// Ends of the tie line in displayed units, by the kind of the diagram. Err 0 with all ends 0: the kind or the
// parameter has none.
struct TieLine {
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;  // 1 liquid, 2 vapor
    double Step1 = 0, Step2 = 0;            // (X2 - X1)/50, (Y2 - Y1)/50
    std::int16_t Err = 0;
    bool found() const { return Err == 0 && (X1 + X2 > 0.0 || X1 + X2 < 0.0); }
};
// Isothermal kinds take T [K], isobaric ones p [kPa], isochoric ones the end of the last isochore; the
// partner on the saturation curve is always computed. Err -1: no saturation, or a function that does not
// exist there.
TieLine TieLineEnds(const CurveRun& run, double T, double p);
// The tie line as a curve of 51 points.
void tie_line_curve(CurveRun& run);

// Branches, one for each family (CurveFamily); each appends to run.out.
void curve_isotherm_v(CurveRun& run);
void curve_isotherm_p(CurveRun& run);
void curve_isotherm_functions_p(CurveRun& run);
void curve_isotherm_residual(CurveRun& run);
void curve_isotherm_functions_v(CurveRun& run);
void curve_isotherm_pairs(CurveRun& run);
void curve_isobar_volume(CurveRun& run);
void curve_isobar_functions(CurveRun& run);
void curve_isobar_cp(CurveRun& run);
void curve_isobar_residual(CurveRun& run);
void curve_joule_thomson(CurveRun& run);
void curve_isobar_pairs(CurveRun& run);
void curve_isochore_p(CurveRun& run);
void curve_isochore_functions(CurveRun& run);
void curve_vapor_pressure(CurveRun& run);
void curve_vaporization(CurveRun& run);
void curve_dome_p_v(CurveRun& run);
void curve_dome_p(CurveRun& run);
void curve_dome_T(CurveRun& run);
void curve_densities_T(CurveRun& run);
void curve_bisector(CurveRun& run);
void curve_boundary_p(CurveRun& run);
void curve_boundary_T(CurveRun& run);
void curve_boundary_v(CurveRun& run);
void curve_boundary_pairs(CurveRun& run);
void curve_inversion_T(CurveRun& run);
void curve_inversion_p(CurveRun& run);
void curve_database(CurveRun& run);
void curve_process_line(CurveRun& run);  // by in.line

}  // namespace quom

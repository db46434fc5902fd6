#include "diagrams/curve_run.h"
namespace quom {
void curve_dome_p_v(CurveRun&) {}
void curve_dome_p(CurveRun&) {}
void curve_dome_T(CurveRun&) {}
void curve_densities_T(CurveRun&) {}
void curve_bisector(CurveRun&) {}
void curve_boundary_p(CurveRun&) {}
void curve_boundary_T(CurveRun&) {}
void curve_boundary_v(CurveRun&) {}
void curve_boundary_pairs(CurveRun&) {}
void curve_inversion_T(CurveRun&) {}
void curve_inversion_p(CurveRun&) {}
void curve_database(CurveRun&) {}
void curve_process_line(CurveRun&) {}
}  // namespace quom

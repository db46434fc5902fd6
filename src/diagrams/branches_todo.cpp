#include "diagrams/curve_run.h"
namespace quom {
void curve_isotherm_v(CurveRun&) {}
void curve_isotherm_p(CurveRun&) {}
void curve_isotherm_functions_p(CurveRun&) {}
void curve_isotherm_residual(CurveRun&) {}
void curve_isotherm_functions_v(CurveRun&) {}
void curve_isotherm_pairs(CurveRun&) {}
void curve_inversion_T(CurveRun&) {}
void curve_inversion_p(CurveRun&) {}
void curve_database(CurveRun&) {}
void curve_process_line(CurveRun&) {}
}  // namespace quom

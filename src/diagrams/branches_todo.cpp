#include "diagrams/curve_run.h"
namespace quom {
void curve_inversion_T(CurveRun&) {}
void curve_inversion_p(CurveRun&) {}
void curve_database(CurveRun&) {}
void curve_process_line(CurveRun&) {}
}  // namespace quom

#include "diagrams/curve_run.h"
namespace quom {
void curve_database(CurveRun&) {}
void curve_process_line(CurveRun&) {}
}  // namespace quom

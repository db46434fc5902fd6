#include "diagrams/curve_run.h"
namespace quom {
}  // namespace quom

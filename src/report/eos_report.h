// The constants of the equation of state in force, in words.
#pragma once
#include <string>

#include "engine/fluid.h"

namespace quom {

struct EosReport {
    std::string head;  // name and law of the equation
    std::string text;  // its constants with units, and the critical volume it implies; lines end in '\n'
};
// What the equation of state of the fluid is and which constants it has; empty without an equation.
EosReport eos_report(const Fluid& fluid);

}  // namespace quom

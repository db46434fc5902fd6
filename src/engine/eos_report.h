// The constants of the equation of state in force, in words.
#pragma once
#include <string>

#include "session/session.h"

namespace quom {

struct EosReport {
    std::string head;  // name and law of the equation
    std::string text;  // its constants with units, and the critical volume it implies; lines end in '\n'
};
// What the equation of state in force is and which constants it has for the substance in force.
EosReport eos_report(const Session& s);

}  // namespace quom

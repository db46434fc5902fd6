// The equations of a substance record as functions of T, each with its value and its validity.
#pragma once
#include "engine/fluid.h"

namespace quom {

enum class DatabaseFunction {
    none,
    rhoL,             // [kg/m^3]
    rhoS,             // [kg/m^3]
    hLV,              // [kJ/kmol]
    cpIdG,            // [kJ/(kmol K)] by the form in force, else by the one that the record has
    cpId_polynomial,  // by this form alone
    cpId_sinh,
    cpL,
    cpS,
    frost_kalkwarf,  // p(LV) [kPa]
    wagner,
    antoine_low,
    antoine_high,
    august,
    kfw,
    kfr,
    thompson,
};

struct DatabaseValue {
    double value = 0;  // molar units; 0 without a value
    Reason reason = Reason::none;
    bool found() const { return reason == Reason::none; }
};

// Value at T [K]. Fails: T_not_positive, no_function, no_database_equation (no_ideal_gas_cp), what the
// equation itself fails with, and no_value where it gives nothing above 0.
DatabaseValue database_value(const Fluid& fluid, DatabaseFunction function, double T);

// Validity [K]: the stored limits. Without them 10 K around the reference temperature of a linear density,
// else from 10 K below the triple (without it the boiling) point to 10 K above T(cr); whole kelvin. The line
// of August reaches from T(nb) to T(cr).
struct DatabaseLimits {
    double TLo = 0, THi = 0;
};
DatabaseLimits database_limits(const Fluid& fluid, DatabaseFunction function);

}  // namespace quom

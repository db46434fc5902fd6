// The equation of state against the equations that the record of the substance has of its own.
#pragma once
#include <optional>

#include "calc/outcome.h"
#include "engine/fluid.h"

namespace quom {

// A quantity of the saturation line by the equation of state and by the record.
struct ComparedValue {
    double eos = 0, record = 0;
    // 100 (eos - record)/record
    double difference_percent() const { return 100.0 * (eos - record) / record; }
};

struct RecordComparison {
    double T = 0;                       // [K]
    std::optional<ComparedValue> p;     // p(LV) [kPa]
    std::optional<ComparedValue> rhoL;  // of the saturated liquid [kg/m^3]
    std::optional<ComparedValue> hLV;   // delta(LV)h [kJ/kmol]
    Evp evp = Evp::none;                // the equation of p
    bool any() const { return p || rhoL || hLV; }
};

// Compares at T [K] on the saturation line of the equation of state. A quantity is absent where the equation
// of state has none (above T(cr), V-phase-only equations) or the record has none within its limits.
RecordComparison compare_with_record(const Fluid& fluid, double T);

// The same at the T of a state that the equation of state gave alone; empty for any other outcome.
RecordComparison compare_with_record(const Fluid& fluid, const Outcome& outcome);

// The vapor pressure equation of the record that tells most at T [K]: Wagner before Frost/Kalkwarf before
// Antoine, T within its limits. Correlated sets and the August line are no data; none where there is no
// other.
Evp recorded_evp(const SubstanceConstants& substance, double T);

}  // namespace quom

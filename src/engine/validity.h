// How far a temperature lies outside the validity of an equation.
#pragma once
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>

#include "base/number_text.h"
#include "engine/reason.h"
#include "substance/substance_constants.h"

namespace quom {

// A difference of temperatures as a whole number of K (half to even).
inline std::int16_t whole_kelvin(double difference) {
    return static_cast<std::int16_t>(std::clamp(round_half_even(difference), -32768.0, 32767.0));
}

// T - TLo below the range, T - THi above it [K], 0 inside.
inline std::int16_t outside_by(double T, int TLo, int THi) {
    if (T < TLo) return whole_kelvin(T - TLo);
    if (T > THi) return whole_kelvin(T - THi);
    return 0;
}

// The warning on a T [K] that lies dT K outside the limits, when that is more than the allowed whole kelvin.
inline std::optional<Warning> range_warning(WarningKind kind, double T, TLimits limits, std::int16_t dT,
                                            int allowed) {
    if (std::abs(dT) <= allowed) return std::nullopt;
    return Warning{.kind = kind,
                   .value = T,
                   .low = static_cast<double>(limits.TLo),
                   .high = static_cast<double>(limits.THi),
                   .offset = dT};
}

}  // namespace quom

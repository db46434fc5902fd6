#include "engine/tovarn_ji.h"

#include <array>
#include <cmath>

#include "base/files.h"

namespace quom {

std::string ReadDjipar(std::string_view bytes, Eos code, EosInput& input) {
    FieldReader reader(bytes);
    if (!reader.whole_line()) return "The parameter file is empty.";
    const bool with_B1 = code == Eos::tovarn_ji_2;
    const std::size_t count = with_B1 ? 6 : 5;  // ignored, JiP3, JiP4, JiP5, JiZc[, JiB1]
    std::array<double, 6> value{};
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = reader.number_field();
        if (!number || !std::isfinite(*number)) {
            return "Line 2 of the parameter file needs " + std::to_string(count) +
                   " numbers separated by commas (a number, JiP3, JiP4, JiP5, JiZc" +
                   (with_B1 ? ", JiB1)" : ")") + "; number " + std::to_string(i + 1) +
                   " is missing or is none.";
        }
        value[i] = *number;
    }
    input.JiP3 = value[1];
    input.JiP4 = value[2];
    input.JiP5 = value[3];
    input.JiZc = value[4];
    input.JiB1 = value[5];
    return {};
}

}  // namespace quom

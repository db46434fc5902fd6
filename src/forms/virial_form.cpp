#include "forms/virial_form.h"

#include <cmath>
#include <utility>

namespace quom {

VirialInput virial_input(const EosInput& constants) { return {constants.b0, constants.b1, constants.b2}; }

std::optional<Message> take_virial_input(EosInput& constants, const VirialInput& input) {
    if (!std::isfinite(input.b0) || !std::isfinite(input.b1) || !std::isfinite(input.b2))
        return no_valid_input();
    constants.b0 = input.b0;
    constants.b1 = input.b1;
    constants.b2 = input.b2;
    return std::nullopt;
}

std::optional<BoxRefusal> take_virial_input(EosInput& constants, const std::array<std::string, 3>& texts) {
    std::array<double, 3> b{};
    for (std::size_t i = 0; i < b.size(); ++i) {
        BoxNumber read = read_box("b" + std::to_string(i), texts[i], NumberRule::any);
        if (!read.fault.empty()) return BoxRefusal{i, std::move(read.fault)};
        b[i] = read.value;
    }
    take_virial_input(constants, VirialInput{.b0 = b[0], .b1 = b[1], .b2 = b[2]});
    return std::nullopt;
}

}  // namespace quom

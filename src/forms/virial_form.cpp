#include "forms/virial_form.h"

#include <cmath>

#include "forms/refusal.h"

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

}  // namespace quom

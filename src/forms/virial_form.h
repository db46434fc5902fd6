// Constants of the manual virial equation B = b0 - b1/T^b2: frmBParInput without its window.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "engine/models.h"
#include "forms/refusal.h"

namespace quom {

inline constexpr std::string_view virial_caption = "Input of Virial Coefficient";
inline constexpr std::string_view virial_formula = "B/m^3/kmol = b0 - b1/T^b2";

struct VirialInput {
    double b0 = 0;  // [m^3/kmol]
    double b1 = 0;  // [m^3 K^b2/kmol]
    double b2 = 0;
};
VirialInput virial_input(const EosInput& constants);
// Takes the constants; refused, with nothing taken, when one is not finite.
std::optional<Message> take_virial_input(EosInput& constants, const VirialInput& input);
// The same for the texts of the boxes b0, b1, b2: the first that is no number is told with its rule.
std::optional<BoxRefusal> take_virial_input(EosInput& constants, const std::array<std::string, 3>& texts);

}  // namespace quom

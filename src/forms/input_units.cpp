#include "forms/input_units.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "forms/refusal.h"

namespace quom {
namespace {

constexpr int shown_digits = 12;

// What is offered of the many units that a quantity may have; the others can be pasted.
struct Offer {
    Quantity quantity;
    std::string_view choice;
    std::array<std::string_view, 6> units;
};
constexpr Offer offers[] = {
    {Quantity::T, "temperature", {"K", "°C", "°F"}},
    {Quantity::p, "pressure", {"kPa", "bar", "MPa", "atm", "psi"}},
    {Quantity::rho, "density", {"kg/m^3", "g/cm^3", "kmol/m^3"}},
    {Quantity::v, "volume", {"m^3/kmol", "l/mol", "cm^3/mol", "m^3/kg", "l/kg", "cm^3/g"}},
    {Quantity::mass, "mass", {"kg", "g", "t", "lb", "kmol", "mol"}},
    {Quantity::tank_volume, "tank_volume", {"m^3", "l", "cm^3", "ft^3"}},
};

const Offer* offer_of(Quantity q) {
    const auto* const offer = std::ranges::find(offers, q, &Offer::quantity);
    return offer == std::end(offers) ? nullptr : offer;
}

std::string number_text(double x) { return std::isfinite(x) ? genNum(x, shown_digits) : std::string(); }

}  // namespace

std::vector<InputUnit> input_units(Quantity q, std::string_view caption_unit, double M) {
    std::vector<InputUnit> units;
    const auto add = [&](std::string_view name) {
        const UnitMatch unit = find_unit(q, name, M);
        if (unit.fault.empty()) units.push_back({unit.name, unit.conversion});
    };
    add(caption_unit);
    const Offer* offer = offer_of(q);
    if (units.empty() || !offer) return units;
    for (const std::string_view name : offer->units)
        if (!name.empty() && name != units.front().name) add(name);
    return units;
}

std::size_t unit_at(const std::vector<InputUnit>& units, std::string_view name) {
    const auto it = std::ranges::find(units, name, &InputUnit::name);
    return it == units.end() ? 0 : static_cast<std::size_t>(it - units.begin());
}

std::string_view unit_choice_of(Quantity q) {
    const Offer* offer = offer_of(q);
    return offer ? offer->choice : std::string_view();
}

std::string text_in_unit(std::string_view text, const InputUnit& from, const InputUnit& to) {
    if (text.find_first_not_of(' ') == text.npos) return {};
    const std::optional<double> number = box_number(text);
    return number ? number_text(to.conversion.from_own(from.conversion.to_own(*number))) : std::string();
}

std::optional<std::string> text_without_unit(std::string_view text, Quantity q, const InputUnit& to,
                                             double M) {
    const std::optional<GivenValue> given = read_given_value(text);
    if (!given || given->unit.empty()) return std::nullopt;
    const OwnValue own = own_value(*given, q, M);
    if (!own.fault.empty()) return std::nullopt;
    const std::string number = number_text(to.conversion.from_own(own.value));
    return number.empty() ? std::nullopt : std::optional(number);
}

std::string zero_text(const InputUnit& caption, const InputUnit& typed) {
    const double zero = typed.conversion.from_own(caption.conversion.to_own(0.0));
    if (zero == 0.0 || !std::isfinite(zero)) return "0";
    return genNum(zero, shown_digits) + " " + std::string(typed.name);
}

}  // namespace quom

#include "quantities/unit_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "quantities/unit_spelling.h"

namespace quom {
namespace {

// Quantities with the same units.
enum class Dimension {
    temperature,
    pressure,
    density,  // and volumes, which are M/rho
    energy,
    entropy,
    speed,
    mass,
    volume,  // of a tank
    per_temperature,
    per_pressure,
    temperature_per_pressure,
};

// x of this unit in the workbench's: factor M^mass_power x + offset, or factor M^mass_power / x where
// inverse.
struct UnitRow {
    Dimension dimension;
    std::string_view name;
    double factor = 1;
    int mass_power = 0;
    bool inverse = false;
    double offset = 0;
};

// The pound, the foot and the pound-force are exact in kg, m and N (international yard and pound, 1959;
// standard gravity 9.80665 m/s^2, 3rd CGPM 1901): 1 lb = 0.45359237 kg, 1 ft = 0.3048 m.
constexpr double lb = 0.45359237;
constexpr double ft3 = 0.3048 * 0.3048 * 0.3048;
constexpr double psi = 6.894757293168;  // kPa: lb 9.80665 / (0.0254 m)^2
// International table (5th conference on the properties of steam, London 1956): 1 cal = 4.1868 J, and with
// 1 BTU/(lb °F) = 1 kcal/(kg K): 1 BTU = 1055.05585262 J, 1 BTU/lb = 2.326 kJ/kg. Thermochemical: 1 cal
// = 4.184 J.
constexpr double cal_IT = 4.1868, cal_th = 4.184, BTU_per_lb = 2.326;
constexpr double Rankine = 5.0 / 9.0;  // K
constexpr double Torr = 101.325 / 760.0;

using enum Dimension;

// Of each dimension the workbench's own unit first; of densities also the first inverse one, m^3/kmol.
constexpr std::array unit_rows = {
    UnitRow{temperature, "K"},
    UnitRow{temperature, "°C", 1, 0, false, 273.15},                  // 13th CGPM 1967
    UnitRow{temperature, "°F", Rankine, 0, false, 459.67 * Rankine},  // 32 °F = 273.15 K
    UnitRow{temperature, "°R", Rankine},

    UnitRow{pressure, "kPa"},
    UnitRow{pressure, "Pa", 1e-3},
    UnitRow{pressure, "hPa", 0.1},
    UnitRow{pressure, "MPa", 1e3},
    UnitRow{pressure, "bar", 100},
    UnitRow{pressure, "mbar", 0.1},
    UnitRow{pressure, "atm", 101.325},          // 10th CGPM 1954
    UnitRow{pressure, "Torr", Torr},            // atm/760
    UnitRow{pressure, "mmHg", 0.133322387415},  // 13595.1 kg/m^3 9.80665 m/s^2 1 mm
    UnitRow{pressure, "at", 98.0665},           // kgf/cm^2
    UnitRow{pressure, "psi", psi},

    UnitRow{density, "kg/m^3"},
    UnitRow{density, "g/cm^3", 1e3},
    UnitRow{density, "kg/l", 1e3},
    UnitRow{density, "g/l"},
    UnitRow{density, "kmol/m^3", 1, 1},
    UnitRow{density, "mol/l", 1, 1},
    UnitRow{density, "mol/m^3", 1e-3, 1},
    UnitRow{density, "mol/cm^3", 1e3, 1},
    UnitRow{density, "lb/ft^3", lb / ft3},
    UnitRow{density, "m^3/kmol", 1, 1, true},
    UnitRow{density, "l/mol", 1, 1, true},
    UnitRow{density, "cm^3/mol", 1e3, 1, true},
    UnitRow{density, "m^3/mol", 1e-3, 1, true},
    UnitRow{density, "m^3/kg", 1, 0, true},
    UnitRow{density, "l/kg", 1e3, 0, true},
    UnitRow{density, "cm^3/g", 1e3, 0, true},
    UnitRow{density, "ft^3/lb", lb / ft3, 0, true},

    UnitRow{energy, "kJ/kmol"},
    UnitRow{energy, "J/mol"},
    UnitRow{energy, "kJ/mol", 1e3},
    UnitRow{energy, "J/kmol", 1e-3},
    UnitRow{energy, "MJ/kmol", 1e3},
    UnitRow{energy, "kJ/kg", 1, 1},
    UnitRow{energy, "J/g", 1, 1},
    UnitRow{energy, "J/kg", 1e-3, 1},
    UnitRow{energy, "MJ/kg", 1e3, 1},
    UnitRow{energy, "kcal_IT/kg", cal_IT, 1},
    UnitRow{energy, "kcal_th/kg", cal_th, 1},
    UnitRow{energy, "kcal_th/mol", 1e3 * cal_th},
    UnitRow{energy, "cal_th/mol", cal_th},
    UnitRow{energy, "BTU/lb", BTU_per_lb, 1},
    UnitRow{energy, "BTU/lbmol", BTU_per_lb},

    UnitRow{entropy, "kJ/(kmol K)"},
    UnitRow{entropy, "J/(mol K)"},
    UnitRow{entropy, "kJ/(mol K)", 1e3},
    UnitRow{entropy, "J/(kmol K)", 1e-3},
    UnitRow{entropy, "kJ/(kg K)", 1, 1},
    UnitRow{entropy, "J/(g K)", 1, 1},
    UnitRow{entropy, "J/(kg K)", 1e-3, 1},
    UnitRow{entropy, "kcal_IT/(kg K)", cal_IT, 1},
    UnitRow{entropy, "kcal_th/(kg K)", cal_th, 1},
    UnitRow{entropy, "cal_th/(mol K)", cal_th},
    UnitRow{entropy, "BTU/(lb °F)", BTU_per_lb / Rankine, 1},
    UnitRow{entropy, "BTU/(lbmol °F)", BTU_per_lb / Rankine},

    UnitRow{speed, "m/s"},
    UnitRow{speed, "km/h", 1 / 3.6},
    UnitRow{speed, "ft/s", 0.3048},

    UnitRow{mass, "kg"},
    UnitRow{mass, "g", 1e-3},
    UnitRow{mass, "t", 1e3},
    UnitRow{mass, "lb", lb},
    UnitRow{mass, "kmol", 1, 1},
    UnitRow{mass, "mol", 1e-3, 1},

    UnitRow{volume, "m^3"},
    UnitRow{volume, "l", 1e-3},
    UnitRow{volume, "cm^3", 1e-6},
    UnitRow{volume, "ft^3", ft3},

    UnitRow{per_temperature, "1/K"},
    UnitRow{per_temperature, "1/°F", 1 / Rankine},
    UnitRow{per_pressure, "1/kPa"},
    UnitRow{per_pressure, "1/Pa", 1e3},
    UnitRow{per_pressure, "1/MPa", 1e-3},
    UnitRow{per_pressure, "1/bar", 1e-2},
    UnitRow{per_pressure, "1/psi", 1 / psi},
    UnitRow{temperature_per_pressure, "K/kPa"},
    UnitRow{temperature_per_pressure, "K/Pa", 1e3},
    UnitRow{temperature_per_pressure, "K/MPa", 1e-3},
    UnitRow{temperature_per_pressure, "K/bar", 1e-2},
    UnitRow{temperature_per_pressure, "°F/psi", Rankine / psi},
};

Dimension dimension_of(Quantity q) {
    switch (quantity_info(q).kind) {
        case UnitKind::temperature:
            return temperature;
        case UnitKind::pressure:
            return pressure;
        case UnitKind::density:
        case UnitKind::volume:
            return density;
        case UnitKind::energy:
            return energy;
        case UnitKind::entropy:
            return entropy;
        case UnitKind::speed:
            return speed;
        case UnitKind::fixed:
            break;
    }
    switch (q) {
        case Quantity::B:
            return density;
        case Quantity::chi:
            return per_pressure;
        case Quantity::delta:
            return temperature_per_pressure;
        case Quantity::mass:
            return mass;
        case Quantity::tank_volume:
            return volume;
        default:
            return per_temperature;
    }
}

// A molar volume is M/rho: what is inverse for a density is not for a volume.
UnitRow as_volume(UnitRow row) {
    row.factor = 1 / row.factor;
    row.mass_power = 1 - row.mass_power;
    row.inverse = !row.inverse;
    return row;
}

// The rows of a quantity, its own unit first.
std::vector<UnitRow> rows_of(Quantity q) {
    const bool is_volume = q == Quantity::v || q == Quantity::B;
    std::vector<UnitRow> direct, inverse;
    for (const UnitRow& unit : unit_rows) {
        if (unit.dimension != dimension_of(q)) continue;
        const UnitRow row = is_volume ? as_volume(unit) : unit;
        (row.inverse ? inverse : direct).push_back(row);
    }
    // A virial coefficient goes through 0, where no density could stand for it.
    if (q != Quantity::B) direct.insert(direct.end(), inverse.begin(), inverse.end());
    return direct;
}

std::string_view symbol_of(Quantity q) { return quantity_info(q).symbol; }

std::string no_such_unit(Quantity q, std::string_view text) {
    std::string fault = std::string(symbol_of(q)) + " has no unit \"" + std::string(text) + "\"; it may be ";
    bool first = true;
    for (const std::string_view name : units_of(q)) {
        if (!std::exchange(first, false)) fault += ", ";
        fault += name;
    }
    return fault;
}

constexpr std::array<Quantity, quantity_count> all_quantities = [] {
    std::array<Quantity, quantity_count> list{};
    for (std::size_t i = 0; i < quantity_count; ++i) list[i] = static_cast<Quantity>(i);
    return list;
}();

// Names beside the symbols, as keys have them.
constexpr std::pair<std::string_view, Quantity> key_names[] = {
    {"hLV", Quantity::hLV}, {"sLV", Quantity::sLV}, {"cpId", Quantity::cpId}};

// Words for all quantities of one dimension.
constexpr std::pair<std::string_view, Dimension> words[] = {{"energy", energy}, {"entropy", entropy}};

// The quantities that a name stands for; none for a name that is none.
std::vector<Quantity> called(std::string_view name) {
    for (const auto& [key, quantity] : key_names)
        if (key == name) return {quantity};
    std::vector<Quantity> list;
    for (const Quantity q : all_quantities)
        if (symbol_of(q) == name) return {q};
    for (const auto& [word, dimension] : words)
        if (word == name)
            for (const Quantity q : all_quantities)
                if (dimension_of(q) == dimension) list.push_back(q);
    return list;
}

std::string no_such_quantity(std::string_view name) {
    std::string fault = "\"" + std::string(name) + "\" is no quantity; there are ";
    for (const Quantity q : all_quantities) fault += std::string(symbol_of(q)) + ", ";
    return fault + "energy, entropy";
}

std::string_view without_blanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

}  // namespace

UnitMatch find_unit(Quantity q, std::string_view text, double M) {
    const std::string key = unit_key(text);
    if (!key.empty()) {
        for (const UnitRow& row : rows_of(q)) {
            if (unit_key(row.name) != key) continue;
            if (row.mass_power != 0 && !(M > 0.0 && std::isfinite(M))) {
                return {row.name,
                        {},
                        std::string(symbol_of(q)) + " in " + std::string(row.name) +
                            " needs the molar mass, which the substance does not have"};
            }
            const double factor = row.factor * std::pow(M, row.mass_power);
            return {row.name, {factor, row.offset, row.inverse}, {}};
        }
    }
    return {{}, {}, no_such_unit(q, text)};
}

std::vector<std::string_view> units_of(Quantity q) {
    std::vector<std::string_view> names;
    for (const UnitRow& row : rows_of(q)) names.push_back(row.name);
    return names;
}

OutputUnits parse_units(std::string_view text, double M) {
    OutputUnits units;
    std::map<Quantity, UnitMatch> by_word;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view part = without_blanks(text.substr(begin, end - begin));
        begin = end + 1;
        const std::size_t sign = part.find('=');
        if (sign == std::string_view::npos)
            return {{}, "\"" + std::string(part) + "\" names no unit; right is for example h=kJ/kg,T=C"};
        const std::string_view name = without_blanks(part.substr(0, sign));
        const std::vector<Quantity> quantities = called(name);
        if (quantities.empty()) return {{}, no_such_quantity(name)};
        for (const Quantity q : quantities) {
            UnitMatch unit = find_unit(q, without_blanks(part.substr(sign + 1)), M);
            if (!unit.fault.empty()) return {{}, std::move(unit.fault)};
            auto& into = quantities.size() > 1 ? by_word : units.by_quantity;
            if (!into.emplace(q, std::move(unit)).second) return {{}, std::string(name) + " has two units"};
        }
    }
    units.by_quantity.merge(by_word);
    return units;
}

}  // namespace quom

#include "calc/quantities.h"

#include "base/constants.h"

namespace quom {

namespace {

using Texts = std::array<std::string_view, 4>;
constexpr Texts energy_units = {"kJ/kmol", "K", "", "kJ/kg"};
constexpr Texts entropy_units = {"kJ/(kmol K)", "", "1/K", "kJ/(kg K)"};
constexpr std::array<std::string_view, 3> volume_names = {"m^3/kmol", "m^3/kg", "v(red)"};

using enum Quantity;
using K = UnitKind;

// In the order of the enumeration.
constexpr std::array<QuantityInfo, 22> quantities = {{
    {T, K::temperature, "T", "K", "Temperature", "Temperature", "", {"T/ K"}},
    {p, K::pressure, "p", "kPa", "Pressure", "Pressure", "", {"p/ kPa"}},
    {rho, K::density, "rho", "kg/m^3", "Density", "Density", "Density rho       = ", {"rho/ (kg/m^3) "}},
    {v, K::volume, "v", "", "Volume", "Volume", "Volume  v         = ", {}},
    {h,
     K::energy,
     "h",
     "",
     "Enthalpy    ",
     "Enthalpy       ",
     "Enthalpy  h       = ",
     {"h/ (kJ/kmol) ", "h/ K", "h/ (R T)", "h/ (kJ/kg) "}},
    {Quantity::s,
     K::entropy,
     "s",
     "",
     "Entropy     ",
     "Entropy         ",
     "Entropy  s        = ",
     {"s/ (kJ/kmol/K) ", "s/ R ", "s / (1/K) ", "s /(kJ/(kg K))"}},
    {g,
     K::energy,
     "g",
     "",
     "Gibbs Enthalpy ",
     "Gibbs Function ",
     "Gibbs Fu. g       = ",
     {"g/ (kJ/kmol) ", "g/ K", "g/ (R T)", "g/ (kJ/kg) "}},
    {u,
     K::energy,
     "u",
     "",
     "Internal Energy     ",
     "Internal Energy ",
     "Intern. Energy u  = ",
     {"u/ (kJ/kmol) ", "u/ K", "u/ (R T)", "u/ (kJ/kg) "}},
    {a,
     K::energy,
     "a",
     "",
     "Helmholtz Funct.",
     "Helmholtz Funct.",
     "Helmholtz Fu. a   = ",
     {"a/ (kJ/kmol) ", "a/ K", "a/ (R T)", "a/ (kJ/kg) "}},
    {eH,
     K::energy,
     "eH",
     "",
     "Exergy of H     ",
     "Exergy of H  ",
     "Exergy of H   eH  = ",
     {"e/ (kJ/kmol) ", "e/ K", "e/ (R T)", "e/ (kJ/kg) "}},
    {eU,
     K::energy,
     "eU",
     "",
     "Exergy of U",
     "Exergy of U",
     "Exergy of U   eU  = ",
     {"e/ (kJ/kmol) ", "e/ K", "e/ (R T)", "e/ (kJ/kg) "}},
    {cp,
     K::entropy,
     "cp",
     "",
     "Heat capacity  ",
     "Heat capacity  ",
     "Heat capacity cp  = ",
     {"cp/(kJ/kmol/K)", "cp/ R ", "cp/ (1/K) ", "cp/(kJ/(kg K))"}},
    {cV,
     K::entropy,
     "cV",
     "",
     "Heat capacity  ",
     "Heat capacity  ",
     "Heat capacity cV  = ",
     {"cV/(kJ/kmol/K)", "cV/ R ", "cV/ (1/K) ", "cV/(kJ/(kg K))"}},
    {w, K::speed, "w", "m/s", "Speed of Sound", "Speed of Sound", "", {"as/ (m/s)"}},
    {hLV,
     K::energy,
     "delta(LV)h",
     "",
     "",
     "",
     "",
     {"delta(LV)h/(kJ/kmol)", "delta(LV)h/K", "delta(LV)h/(R T)", "delta(LV)h/(kJ/kg)"}},
    {sLV,
     K::entropy,
     "delta(LV)s",
     "",
     "",
     "",
     "",
     {"delta(LV)s/(kJ/(kmol K))", "delta(LV)s/R", "delta(LV)s/(1/K))", "delta(LV)s/(kJ/(kg K))"}},
    {cpId,
     K::entropy,
     "cp(idG)",
     "",
     "",
     "",
     "",
     {"cp(idG)/(kJ/kmol/K)", "cp(idG)/R", "cp(idG)/(1/K)", "cp(idG)/(kJ/(kg K))"}},
    {alpha, K::fixed, "alpha", "1/K", "", "", "", {" alpha/(1/K)  "}},
    {chi, K::fixed, "chi", "1/kPa", "", "", "", {"   chi/(1/kPa)"}},
    {beta, K::fixed, "beta", "1/K", "", "", "", {"  beta/(1/K)  "}},
    {delta, K::fixed, "delta", "K/kPa", "", "", "", {" delta/(K/kPa)"}},
    {B, K::fixed, "B", "m^3/kmol", "", "", "", {"B/ (m^3/kmol) "}},
}};

struct SlotInfo {
    std::string_view name;
    Quantity quantity;
};
constexpr std::array<SlotInfo, slot_count> slots = {{
    {"T", T},
    {"p", p},
    {"rho(global)", rho},
    {"v(global)", v},
    {"rho(L)", rho},
    {"cp(S)", cp},
    {"x", T},
    {"cp(idG)", cpId},
    {"x", T},
    {"v(V)", v},
    {"h(V)", h},
    {"s(V)", Quantity::s},
    {"g(V)", g},
    {"u(V)", u},
    {"a(V)", a},
    {"eH(V)", eH},
    {" eU(V)", eU},
    {"cp(V)", cp},
    {"cV(V)", cV},
    {"v(L)", v},
    {"h(L)", h},
    {"s(L)", Quantity::s},
    {"g(L)", g},
    {"u(L)", u},
    {"a(L)", a},
    {"eH(L)", eH},
    {"eU(L)", eU},
    {"cp(L)", cp},
    {"cV(L)", cV},
    {"delta(LV)h", hLV},
    {"delta(LV)s", sLV},
    {"alpha(V)", alpha},
    {"chi(V)", chi},
    {"beta(V)", beta},
    {"delta(V)", delta},
    {"alpha(L)", alpha},
    {"chi(L)", chi},
    {"beta(L)", beta},
    {"delta(L)", delta},
    {"sound speed(L)", w},
    {"sound speed(V)", w},
    {"B", B},
}};

std::size_t mode_index(int mode, std::size_t n) {
    return mode >= 0 && static_cast<std::size_t>(mode) < n ? static_cast<std::size_t>(mode) : 0;
}

}  // namespace

const QuantityInfo& quantity_info(Quantity q) { return quantities[static_cast<std::size_t>(q)]; }

std::string_view unit_text(const Session& s, Quantity q) {
    const QuantityInfo& info = quantity_info(q);
    switch (info.kind) {
        case UnitKind::energy:
            return energy_units[mode_index(s.units.EnergyMode, 4)];
        case UnitKind::entropy:
            return entropy_units[mode_index(s.units.EnergyMode, 4)];
        case UnitKind::volume:
            return VolumeName(s);
        default:
            return info.unit;
    }
}

std::string label_text(const Session& s, Quantity q) {
    const QuantityInfo& info = quantity_info(q);
    if (info.kind == UnitKind::volume) return "v/ (" + std::string(VolumeName(s)) + ") ";
    const bool by_mode = info.kind == UnitKind::energy || info.kind == UnitKind::entropy;
    return std::string(info.label[by_mode ? mode_index(s.units.EnergyMode, 4) : 0]);
}

double display_factor(const Session& s, Quantity q) {
    switch (quantity_info(q).kind) {
        case UnitKind::energy:
        case UnitKind::entropy:
            return s.units.uFactor;
        case UnitKind::volume:
            return s.units.vFactor;
        default:
            return 1.0;
    }
}

double unitFactor(const Session& s, double T) {
    const double M = static_cast<double>(s.substance.MolMass);
    if (T < TinyT) T = s.units.TcrStart;
    switch (s.units.EnergyMode) {
        case 1:
            return 1.0 / RGas;
        case 2:
            return T < TinyT ? 1.0 : 1.0 / (RGas * T);
        case 3:
            return M < TinyT ? 1.0 : 1.0 / M;
        default:
            return 1.0;
    }
}

std::string_view VolumeName(const Session& s) { return volume_names[mode_index(s.units.VolumeMode, 3)]; }

std::string_view slot_name(CalcSlot slot) { return slots[static_cast<std::size_t>(slot)].name; }
Quantity slot_quantity(CalcSlot slot) { return slots[static_cast<std::size_t>(slot)].quantity; }

CalcSlot function_slot(Quantity q, int phase) {
    if (q == w) return phase == 0 ? slot_wL : slot_wV;
    const int row = static_cast<int>(q) - static_cast<int>(v);
    return static_cast<CalcSlot>((phase == 0 ? slot_vL : slot_vV) + row);
}

}  // namespace quom

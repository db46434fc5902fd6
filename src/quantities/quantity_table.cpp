#include "quantities/quantity_table.h"

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
constexpr std::array<QuantityInfo, quantity_count> quantities = {{
    {T, K::temperature, "T", "K", "Temperature", "Temperature", "", {"T/ K"}, "temperature T", "###0.000"},
    {p, K::pressure, "p", "kPa", "Pressure", "Pressure", "", {"p/ kPa"}, "pressure p", "####0.000"},
    {rho,
     K::density,
     "rho",
     "kg/m^3",
     "Density",
     "Density",
     "Density rho       = ",
     {"rho/ (kg/m^3) "},
     "density rho",
     "###0.0###"},
    {v, K::volume, "v", "", "Volume", "Volume", "Volume  v         = ", {}, "volume v", "#0.0000##"},
    {h,
     K::energy,
     "h",
     "",
     "Enthalpy    ",
     "Enthalpy       ",
     "Enthalpy  h       = ",
     {"h/ (kJ/kmol) ", "h/ K", "h/ (R T)", "h/ (kJ/kg) "},
     "enthalpy h",
     ""},
    {Quantity::s,
     K::entropy,
     "s",
     "",
     "Entropy     ",
     "Entropy         ",
     "Entropy  s        = ",
     {"s/ (kJ/kmol/K) ", "s/ R ", "s / (1/K) ", "s / (kJ/(kg K)) "},
     "entropy s",
     ""},
    {g,
     K::energy,
     "g",
     "",
     "Gibbs Enthalpy ",
     "Gibbs Function ",
     "Gibbs Fu. g       = ",
     {"g/ (kJ/kmol) ", "g/ K", "g/ (R T)", "g/ (kJ/kg) "},
     "Gibbs energy g",
     ""},
    {u,
     K::energy,
     "u",
     "",
     "Internal Energy     ",
     "Internal Energy ",
     "Intern. Energy u  = ",
     {"u/ (kJ/kmol) ", "u/ K", "u/ (R T)", "u/ (kJ/kg) "},
     "internal energy u",
     ""},
    {a,
     K::energy,
     "a",
     "",
     "Helmholtz Funct.",
     "Helmholtz Funct.",
     "Helmholtz Fu. a   = ",
     {"a/ (kJ/kmol) ", "a/ K", "a/ (R T)", "a/ (kJ/kg) "},
     "Helmholtz energy a",
     ""},
    {eH,
     K::energy,
     "eH",
     "",
     "Exergy of H     ",
     "Exergy of H  ",
     "Exergy of H   eH  = ",
     {"e/ (kJ/kmol) ", "e/ K", "e/ (R T)", "e/ (kJ/kg) "},
     "exergy of h",
     ""},
    {eU,
     K::energy,
     "eU",
     "",
     "Exergy of U",
     "Exergy of U",
     "Exergy of U   eU  = ",
     {"e/ (kJ/kmol) ", "e/ K", "e/ (R T)", "e/ (kJ/kg) "},
     "exergy of u",
     ""},
    {cp,
     K::entropy,
     "cp",
     "",
     "Heat capacity  ",
     "Heat capacity  ",
     "Heat capacity cp  = ",
     {"cp/(kJ/kmol/K)", "cp/ R ", "cp/ (1/K) ", "cp/(kJ/(kg K))"},
     "heat capacity cp",
     ""},
    {cV,
     K::entropy,
     "cV",
     "",
     "Heat capacity  ",
     "Heat capacity  ",
     "Heat capacity cV  = ",
     {"cV/(kJ/kmol/K)", "cV/ R ", "cV/ (1/K) ", "cV/(kJ/(kg K))"},
     "heat capacity cV",
     ""},
    {w, K::speed, "w", "m/s", "Speed of Sound", "Speed of Sound", "", {"as/ (m/s)"}, "speed of sound w", ""},
    {hLV,
     K::energy,
     "delta(LV)h",
     "",
     "",
     "",
     "",
     {"delta(LV)h/(kJ/kmol)", "delta(LV)h/K", "delta(LV)h/(R T)", "delta(LV)h/(kJ/kg)"},
     "enthalpy of vaporization",
     ""},
    {sLV,
     K::entropy,
     "delta(LV)s",
     "",
     "",
     "",
     "",
     {"delta(LV)s/(kJ/(kmol K))", "delta(LV)s/R", "delta(LV)s/(1/K))", "delta(LV)s/(kJ/(kg K))"},
     "entropy of vaporization",
     ""},
    {cpId,
     K::entropy,
     "cp(idG)",
     "",
     "",
     "",
     "",
     {"cp(idG)/(kJ/kmol/K)", "cp(idG)/R", "cp(idG)/(1/K)", "cp(idG)/(kJ/(kg K))"},
     "ideal gas cp",
     ""},
    {alpha, K::fixed, "alpha", "1/K", "", "", "", {" alpha/(1/K)  "}, "coefficient of expansion alpha", ""},
    {chi, K::fixed, "chi", "1/kPa", "", "", "", {"   chi/(1/kPa)"}, "compressibility chi", ""},
    {beta, K::fixed, "beta", "1/K", "", "", "", {"  beta/(1/K)  "}, "coefficient of pressure beta", ""},
    {delta,
     K::fixed,
     "delta",
     "K/kPa",
     "",
     "",
     "",
     {" delta/(K/kPa)"},
     "Joule-Thomson coefficient delta",
     ""},
    {B, K::fixed, "B", "m^3/kmol", "", "", "", {"B/ (m^3/kmol) "}, "second virial coefficient B", ""},
    {mass, K::fixed, "m", "kg", "", "", "", {"m/ kg"}, "mass m", ""},
    {tank_volume, K::fixed, "V", "m^3", "", "", "", {"V/ m^3"}, "volume V", ""},
}};

std::size_t mode_index(int mode, std::size_t n) {
    return mode >= 0 && static_cast<std::size_t>(mode) < n ? static_cast<std::size_t>(mode) : 0;
}

}  // namespace

const QuantityInfo& quantity_info(Quantity q) { return quantities[static_cast<std::size_t>(q)]; }

std::string_view unit_text(const Units& units, Quantity q) {
    const QuantityInfo& info = quantity_info(q);
    switch (info.kind) {
        case UnitKind::energy:
            return energy_units[mode_index(units.EnergyMode, 4)];
        case UnitKind::entropy:
            return entropy_units[mode_index(units.EnergyMode, 4)];
        case UnitKind::volume:
            return VolumeName(units);
        default:
            return info.unit;
    }
}

std::string label_text(const Units& units, Quantity q) {
    const QuantityInfo& info = quantity_info(q);
    if (info.kind == UnitKind::volume) return "v/ (" + std::string(VolumeName(units)) + ") ";
    const bool by_mode = info.kind == UnitKind::energy || info.kind == UnitKind::entropy;
    return std::string(info.label[by_mode ? mode_index(units.EnergyMode, 4) : 0]);
}

std::string axis_text(const Units& units, Quantity q) {
    const QuantityInfo& info = quantity_info(q);
    if (info.kind == UnitKind::volume && units.VolumeMode == reduced_volume)
        return std::string(VolumeName(units));
    std::string unit(unit_text(units, q));
    if (unit.empty()) unit = info.kind == UnitKind::energy ? "R T" : "R";
    if (unit.find_first_of("/ ") != std::string::npos) unit = "(" + unit + ")";
    return std::string(info.symbol) + " / " + unit;
}

double display_factor(const UnitFactors& factors, Quantity q) {
    switch (quantity_info(q).kind) {
        case UnitKind::energy:
        case UnitKind::entropy:
            return factors.uFactor;
        case UnitKind::volume:
            return factors.vFactor;
        default:
            return 1.0;
    }
}

namespace {

double energy_factor(const Units& units, double M, double T) {
    switch (units.EnergyMode) {
        case energy_per_R:
            return 1.0 / RGas;
        case energy_per_RT:
            return T < TinyT ? 1.0 : 1.0 / (RGas * T);
        case energy_per_mass:
            return M < TinyT ? 1.0 : 1.0 / M;
        default:
            return 1.0;
    }
}

double inverse_or_1(double x) { return x > TinyT ? 1.0 / x : 1.0; }

}  // namespace

UnitFactors unit_factors(const Units& units, double M, double T) {
    UnitFactors factors;
    factors.uFactor = energy_factor(units, M, T < TinyT ? units.TcrStart : T);
    if (units.VolumeMode == volume_per_mass) factors.vFactor = inverse_or_1(M);
    if (units.VolumeMode == reduced_volume) {
        factors.vFactor = inverse_or_1(units.vcrStart);
        factors.TFactor = inverse_or_1(units.TcrStart);
        factors.pFactor = inverse_or_1(units.pcrStart);
    }
    return factors;
}

std::string_view VolumeName(const Units& units) { return volume_names[mode_index(units.VolumeMode, 3)]; }

}  // namespace quom

#include "fitting/fit_catalogue.h"

#include <algorithm>

namespace quom {
namespace {

using Labels = std::array<std::string_view, MaxFitPar>;
using Values = std::array<double, MaxFitPar>;

constexpr Labels seven{"A", "B", "C", "D", "E", "F", "G"}, six{"A", "B", "C", "D", "E", "F"};
constexpr Labels three{"A", "B", "C"}, four{"A", "B", "C", "D"}, five{"A", "B", "C", "D", "E"};
constexpr Values ones{1, 1, 1, 1, 1, 1, 1};
constexpr Values B_of_1000{1, 1000, 1, 1, 1, 1, 1};

constexpr FitModelRow catalogue[] = {
    {.model = FitModel::polynomial,
     .name = "General, y(x) = polynomial",
     .equation = "y = A + B x + C x^2 + D x^3 + E x^4 + F x^5",
     .NPar = 6,
     .labels = six,
     .FitStart = {1, 1, 1},
     .FitScale = ones},
    {.model = FitModel::combination,
     .name = "General, y(x) = combo expression",
     .equation = "y = A + B x + C x^2 + D x^3 + E / x + F / x^2 + G ln x",
     .NPar = 7,
     .labels = seven,
     .FitStart = {1, 1, 1},
     .FitScale = ones,
     .positive_x = true},
    {.model = FitModel::august_rankine,
     .quantity = FitQuantity::vapor_pressure,
     .name = "Vapor pressure p(LV), y(T) = AUGUST-/DUPRE-RANKINE equation",
     .equation = "ln(p/kPa) = A - B / (T/K) + D ln(T/K)",
     .equation_lg = "lg(p/kPa) = A - B / (T/K) + D lg(T/K)",
     .NPar = 3,
     .labels = {"A", "B", "D"},
     .FitStart = {20, 1500, -1},
     .FitScale = B_of_1000,
     .positive_x = true},
    {.model = FitModel::antoine,
     .quantity = FitQuantity::vapor_pressure,
     .name = "Vapor pressure p(LV), y(T) = ANTOINE equation",
     .equation = "ln(p/kPa) = A - B / (C + t/°C)",
     .equation_lg = "lg(p/kPa) = A - B / (C + t/°C)",
     .NPar = 3,
     .labels = three,
     .FitStart = {10, 3000, 200},
     .FitScale = B_of_1000,
     .positive_x = true},
    {.model = FitModel::frost_kalkwarf,
     .quantity = FitQuantity::vapor_pressure,
     .name = "Vapor pressure p(LV), y(T) = FROST-KALKWARF equation",
     .equation = "ln(p/kPa) = A + B/(C+T/K-273.15) + D ln(T/K) + E (p/kPa)/(T/K)^2",
     .equation_lg = "lg(p/kPa) = A + B/(C+T/K-273.15) + D lg(T/K) + E (p/kPa)/(T/K)^2",
     .NPar = 5,
     .labels = five,
     .FitStart = {50, -5000, 273.15, -5, 5},
     .FitScale = B_of_1000,
     .positive_x = true},
    {.model = FitModel::frost_thodos,
     .quantity = FitQuantity::vapor_pressure,
     .name = "Vapor pressure p(LV), y(T) = FROST-KALKWARF-THODOS equation",
     .equation = "ln(p/kPa) = A + B/(C+T/K-273.15) + D ln(T/K) + E (p/kPa)/(T/K)^2",
     .equation_lg = "lg(p/kPa) = A + B/(C+T/K-273.15) + D lg(T/K) + E (p/kPa)/(T/K)^2",
     .NPar = 5,
     .labels = five,
     .FitStart = {20, 0, 273.15, 5, 5},  // B from T(cr)
     .FitScale = B_of_1000,
     .needs_TcFit = true,
     .positive_x = true,
     .follows = 3},
    {.model = FitModel::dippr_pressure,
     .quantity = FitQuantity::vapor_pressure,
     .name = "Vapor pressure p(LV), y(T) = DIPPR equation",
     .equation = "ln(p/kPa) = A + B / (T/K) + D ln(T/K) + H(T/K)^I",
     .equation_lg = "lg(p/kPa) = A + B / (T/K) + D lg(T/K) + H(T/K)^I",
     .NPar = 5,
     .labels = {"A", "B", "D", "H", "I"},
     .FitStart = {20, -1500, -1, 1e-5, 2},
     .FitScale = {1, 1000, 1, 1e-5, 1, 1, 1},
     .positive_x = true},
    {.model = FitModel::wagner,
     .quantity = FitQuantity::vapor_pressure,
     .name = "Vapor pressure p(LV), y(T) = WAGNER equation",
     .equation = "p = p(cr) exp( (T(cr)/T) (A z + B z^1.5 + C z^3 + D z^6) )",
     .NPar = 4,
     .labels = four,
     .FitStart = {1, 1, 1, 1},
     .FitScale = ones,
     .needs_TcFit = true,
     .needs_pcFit = true,
     .positive_x = true},
    {.model = FitModel::rackett,
     .quantity = FitQuantity::liquid_density,
     .name = "Liquid density rho_L, y(T) = RACKETT/DIPPR equation",
     .equation = "y = A / B^(1 + z^C)",
     .NPar = 3,
     .labels = three,
     .FitStart = {75, 0.3, 0.24},
     .FitScale = ones,
     .needs_TcFit = true,
     .positive_x = true},
    {.model = FitModel::leuna,
     .quantity = FitQuantity::liquid_density,
     .name = "Liquid density rho_L, y(T) = Leuna equation",
     .equation = "y = A + B T + C T^2 + D T^3 + E z^(1/3)",
     .NPar = 5,
     .labels = five,
     .FitStart = {500, -1, 0.002, -2e-6, 500},
     .FitScale = {1, 1, 1e-3, 1e-6, 1, 1, 1},
     .needs_TcFit = true,
     .positive_x = true},
    {.model = FitModel::density_polynomial,
     .quantity = FitQuantity::liquid_density,
     .name = "Liquid density rho_L, y(T) = polynomial",
     .equation = "y = A + B T + C T^2 + D T^3",
     .NPar = 4,
     .labels = four,
     .FitStart = {600, 1, -1e-3, -1e-6},
     .FitScale = {10, 1, 1e-3, 1e-6, 1, 1, 1},
     .positive_x = true},
    {.model = FitModel::majer,
     .quantity = FitQuantity::vaporization_enthalpy,
     .name = "Vaporization enthalpy delta(LV)h, MAJER equation",
     .equation = "delta(LV)h = A*(1-Tr)^beta  exp(-alpha Tr)",
     .NPar = 3,
     .labels = {"A", "alpha", "beta"},
     .FitStart = {30000, 0.3, 0.3},
     .FitScale = {1000, 1, 1, 1, 1, 1, 1},
     .needs_TcFit = true,
     .positive_x = true},
    {.model = FitModel::dippr_vaporization,
     .quantity = FitQuantity::vaporization_enthalpy,
     .name = "Vaporization enthalpy delta(LV)h, DIPPR equation",
     .equation = "delta(LV)h = A*(1-Tr)^(B + C*Tr + D*Tr^2 + E*Tr^3)",
     .NPar = 5,
     .labels = five,
     .FitStart = {30000, 0.3, 0.3, 0, 0},
     .FitScale = {1000, 1, 1, 1, 1, 1, 1},
     .needs_TcFit = true,
     .positive_x = true},
    {.model = FitModel::cp_polynomial,
     .quantity = FitQuantity::heat_capacity,
     .name = "Heat capacity c(p), y(T) = polynomial",
     .equation = "y = A + B T + C T^2 + D T^3",
     .NPar = 5,
     .labels = five,
     .FitStart = {20, 0.02, -1e-5, -1e-8, 0},
     .FitScale = {1, 1, 1e-5, 1e-8, 1e-11, 1, 1},
     .positive_x = true,
     .no_effect = 4},
    {.model = FitModel::shomate,
     .quantity = FitQuantity::heat_capacity,
     .name = "Heat capacity c(p), y(T) = SHOMATE equation",
     .equation = "y = A + B T + C T^2 + D T^3 + E / T^2",
     .NPar = 5,
     .labels = five,
     .FitStart = {30, 0.2, -2e-5, -1e-8, -1e6},
     .FitScale = {1, 1, 1e-5, 1e-8, 1e6, 1, 1},
     .positive_x = true},
    {.model = FitModel::dippr_cp,
     .quantity = FitQuantity::heat_capacity,
     .name = "Heat capacity c(p), y(T) = DIPPR equation",
     .equation = "y = A + B ((C/T) / sinh(C/T))^2 + D ((E/T) / cosh(E/T))^2",
     .NPar = 5,
     .labels = five,
     .FitStart = {60, 300, 1500, 200, 500},
     .FitScale = {1000, 1000, 1000, 1000, 1000, 1, 1},
     .positive_x = true},
    {.model = FitModel::akima, .name = "General, y(x) = AKIMA-spline"},
};

// Start values of the common logarithm where they are not those of the natural one.
struct LgStart {
    FitModel model;
    Values FitStart;
};
constexpr LgStart lg_starts[] = {
    {FitModel::antoine, {5, 1500, 200}},
    {FitModel::frost_kalkwarf, {20, -3000, 273.15, -5, 5}},
};

}  // namespace

std::span<const FitModelRow> fit_catalogue() { return catalogue; }

const FitModelRow* fit_model(int number) {
    const auto row =
        std::ranges::find(catalogue, number, [](const FitModelRow& r) { return static_cast<int>(r.model); });
    return row == std::end(catalogue) ? nullptr : row;
}
const FitModelRow& fit_model(FitModel model) { return *fit_model(static_cast<int>(model)); }

std::vector<double> fit_start(const FitModelRow& row, bool UseLg, double TcFit) {
    const auto lg = std::ranges::find(lg_starts, row.model, &LgStart::model);
    const Values& values = UseLg && lg != std::end(lg_starts) ? lg->FitStart : row.FitStart;
    std::vector<double> start(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(row.NPar));
    if (row.model == FitModel::frost_thodos) start[1] = -12.0 * TcFit / 1.8;
    return start;
}

std::string_view equation_text(const FitModelRow& row, bool UseLg) {
    return UseLg && row.has_lg_form() ? row.equation_lg : row.equation;
}

std::string_view sum_of_squares_text(FitQuantity quantity, bool UseLnFit) {
    if (UseLnFit) return "sum of squares SQ = sum[ln((p(i),calc) - ln(p(i),exp))^2]";
    return quantity == FitQuantity::vapor_pressure ? "sum of squares SQ = sum[(p(i),calc - p(i),exp)^2]"
                                                   : "sum of squares SQ = sum[(y(i),calc - y(i),exp)^2]";
}

}  // namespace quom

// The equations y = f(x) and y = f(T) that can be fitted to measured points: one row of a table each.
#pragma once
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quom {

// Numbers of the models; 2, 12 and 13 are reserved.
enum class FitModel {
    polynomial = 0,
    combination = 1,
    august_rankine = 3,
    antoine = 4,
    frost_kalkwarf = 5,
    frost_thodos = 6,
    dippr_pressure = 7,
    wagner = 8,
    rackett = 9,
    leuna = 10,
    density_polynomial = 11,
    majer = 14,
    dippr_vaporization = 15,
    cp_polynomial = 16,
    shomate = 17,
    dippr_cp = 18,
    akima = 19,
};
inline constexpr std::size_t FitModelCount = 20;
inline constexpr std::size_t MaxFitPar = 7;

// What y is.
enum class FitQuantity { general, vapor_pressure, liquid_density, vaporization_enthalpy, heat_capacity };

// One row of the catalogue. Parameters are counted from 0.
struct FitModelRow {
    FitModel model = FitModel::polynomial;
    FitQuantity quantity = FitQuantity::general;
    std::string_view name;           // in the lists
    std::string_view equation{};     // text, of the natural logarithm where there are two
    std::string_view equation_lg{};  // text with the common logarithm; empty: the model has one form only
    std::size_t NPar = 0;
    std::array<std::string_view, MaxFitPar> labels{};
    std::array<double, MaxFitPar> FitStart{};  // start values [plain units]; see fit_start
    std::array<double, MaxFitPar> FitScale{};
    bool needs_TcFit = false, needs_pcFit = false;
    bool positive_x = false;                    // every x must be above 0
    std::optional<std::size_t> follows = {};    // parameter that another one determines
    std::optional<std::size_t> no_effect = {};  // parameter that the equation does not use

    bool has_lg_form() const { return !equation_lg.empty(); }
};

// All models in the order of their numbers.
std::span<const FitModelRow> fit_catalogue();
// The row of a number; null for the reserved ones and for what is none.
const FitModelRow* fit_model(int number);
const FitModelRow& fit_model(FitModel model);

// Start values, those of the common logarithm with UseLg; TcFit [K] is part of Thodos' form.
std::vector<double> fit_start(const FitModelRow& row, bool UseLg, double TcFit);
std::string_view equation_text(const FitModelRow& row, bool UseLg);

// What is summed up: of logarithms with UseLnFit.
std::string_view sum_of_squares_text(FitQuantity quantity, bool UseLnFit);

}  // namespace quom

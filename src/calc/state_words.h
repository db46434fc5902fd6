// What a state is, in words: "superheated vapor", "49.9 K above T(LV)"; what is to be said against it, and
// where it lies beside the vapor pressure curve.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "calc/outcome.h"
#include "calc/record_comparison.h"
#include "engine/fluid.h"

namespace quom {

// T(LV) and p(LV) are those of the concept in force: of the cubic equation of state (GLOBAL), else of the
// vapor pressure equation, which an equation of the V-phase only names behind them.
struct StateWords {
    std::string word;      // empty: the outcome is no state (database equations, second virial coefficients)
    std::string distance;  // to saturation or to the critical point; empty where there is none
    bool operator==(const StateWords&) const = default;
};
StateWords state_words(const Fluid& fluid, const Outcome& outcome);

// One sentence a reservation, with limits and value; cp(idG) beyond its range is one of them.
std::vector<std::string> warning_lines(const Fluid& fluid, const Outcome& outcome);

// Why an outcome has no result, and what would help (may be empty).
struct RefusalWords {
    std::string reason, help;
};
RefusalWords refusal_words(const Outcome& outcome);

// The comparison of the equation of state with the record in one line.
struct TrustLine {
    struct Figure {
        std::string quantity, difference;  // "rho(L)", "-5.5 %"
        bool large = false;                // beyond 5 %
    };
    std::string head;             // "EOS against record, 350 K:"; without figures a sentence that says why
    std::vector<Figure> figures;  // rho(L), p(LV), delta(LV)h, as far as the record has them
};
TrustLine trust_line(const Fluid& fluid, const Outcome& outcome);

// Vapor pressure curve of the concept in force with the state in it, T linear, p logarithmic.
struct SaturationPicture {
    struct Point {
        double T = 0, p = 0;  // [K], [kPa]
    };
    double T_low = 0, T_high = 0, p_low = 0, p_high = 0;  // ranges of the axes
    std::vector<Point> curve;                             // ascending T, within the ranges
    Point critical;
    std::optional<Point> state;  // moved to the edge where it lies outside
};
// Absent without T(cr), p(cr) or without a vapor pressure curve.
std::optional<SaturationPicture> saturation_picture(const Fluid& fluid, const Outcome& outcome);

// "Frost/Kalkwarf": the name of a vapor pressure equation without its origin.
std::string short_name(Evp code);

}  // namespace quom

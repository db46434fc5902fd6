// The input of experimental data without its window: the boxes of a point in the units chosen, the columns of
// the table, its printed form.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fitting/exp_data.h"
#include "forms/refusal.h"
#include "session/session.h"

namespace quom {

// The document with which the input of new data begins. None: there is no substance, of which the user was
// told, or the user keeps the existing data.
std::optional<Document> document_for_new_data(const Session& session, Messages& messages);

struct ExpColumn {
    std::string_view head, unit;  // "rhoV/" over "kg/m^3"
    std::string_view name;        // in sentences
};
extern const std::array<ExpColumn, exp_columns> exp_column_table;

// The rule that a number in K, kPa, kg/m^3, kJ/kmol breaks; empty: it can be stored.
std::string broken_exp_rule(std::size_t column, double value);
// The text of a cell, in the digits that are stored.
std::string exp_text(const TpRhoPoint& point, std::size_t column);

enum class TUnit { kelvin, celsius };
enum class PUnit { kPa, atm, torr };
enum class RhoInput { density, volume };

// The units of the boxes. V = M n / rho [m^3] needs the molar mass and the amount.
struct ExpInputUnits {
    TUnit T = TUnit::kelvin;
    PUnit p = PUnit::kPa;
    RhoInput rho = RhoInput::density;
    double n = 1;        // [kmol]
    double MolMass = 0;  // [kg/kmol]
    bool operator==(const ExpInputUnits&) const = default;
};
using ExpBoxes = std::array<std::string, exp_columns>;

// What the boxes show of a point: T to 3 decimals, kPa to 5, everything else as a single; a value that is
// missing is an empty box.
ExpBoxes exp_boxes(const TpRhoPoint& point, const ExpInputUnits& units);

struct ExpBoxPoint {
    TpRhoPoint point;
    bool blank = false;                   // no box has a value: nothing is to be entered
    std::optional<BoxRefusal> refusal{};  // the first box that cannot be taken
};
ExpBoxPoint exp_point(const ExpBoxes& boxes, const ExpInputUnits& units);

// Captions of the boxes of densities: "kg/m^3", "Density", "rho_V", "rho_L", or those of volumes.
struct DensityCaptions {
    std::string_view unit, quantity, V, L;
};
DensityCaptions density_captions(RhoInput rho);
// " applying the input value after conversion rho = M n / V (molar mass M/(kg/kmol)=  58.12) ".
std::string volume_hint(double MolMass);

// The printed table: two lines of heads, then a line a point.
struct PrintedTable {
    std::vector<std::string> head, lines;
};
PrintedTable exp_printed_table(const ExperimentalData& data);

// Caption of the window. loaded: the file was loaded in the window.
std::string exp_window_caption(const ExperimentalData& data, bool loaded);

}  // namespace quom

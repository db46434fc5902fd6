// From an entry of the calculation menu to CalcBatch: which inputs a mode needs, what it asks, and the one
// table of input boxes (frmParinput without its window).
#pragma once
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "forms/refusal.h"
#include "quantities/quantity_table.h"
#include "session/session.h"

namespace quom {

// What frmParinput is asked for.
enum InputKind : int {
    input_none = 0,
    input_reference_point = 4,
    input_tank = 33,
    input_direct = 100,  // + number of the mode
};
// Kind of the values of a mode, and the mode of a kind; Mode::none for the other kinds.
int input_kind(Mode mode);
Mode mode_of_kind(int kind);

// What opens after a menu entry, in this order.
struct Dispatch {
    bool refused = false;          // nothing opens; the user was told
    bool selection = false;        // frmCalcIn first; the others follow its "Continue >"
    bool process_input = false;    // the input of process lines, and nothing else here
    bool result_window = false;    // frmQCalcOut (frmKessel beside it for a tank)
    bool parameter_input = false;  // frmParinput with ParInputKind
    int ParInputKind = input_none;
    CalculationInput calc;  // to be committed with the values: mode and setup; mode none when refused
};

// Decides the inputs of a mode (none becomes 1). Asks in mode 3 whether T, p describe an equilibrium.
// GlobalCalc follows the concept of the models for modes that do not pass the selection, and the mode for
// tanks. Refused: mode 2 with an EOS of the V-phase only, and an unknown mode. The session does not change.
Dispatch CalcDispatch(const Document& document, Mode mode, Messages& messages);

// Whether values of a mode come from the boxes and not from the data points: always for tank and process.
bool is_direct(const Document& document, Mode mode);

// The two option groups of the window.
struct InputOptions {
    bool amount = false;  // optm_n: n/kmol in place of m/kg
    bool volume = false;  // optRhoV: a volume in the unit of the options in place of the density
};

enum class BoxValue { T, p, pLV, density, volume, rhoL, rhoV, tank_V, tank_m, tank_n };

// What a value is; none for one without units of its own.
std::optional<Quantity> quantity_of(BoxValue value);

struct InputBox {
    BoxValue value{};
    std::string_view label;
    std::string_view hint;  // text of the option beside it
    bool optional = false;  // may stay empty
};

// What the window shows for one kind; at most four boxes.
struct InputForm {
    std::string caption;
    std::string_view title;     // of the group of boxes
    std::string_view button;    // of cmdParameter_OK
    std::vector<InputBox> par;  // empty: the kind has no boxes
    bool optm_n = false;        // the groups of options are shown
    bool optRhoV = false;
};
// The document is a copy whose calc is that of the calculation to come, here and below.
InputForm input_form(const Document& document, int kind, const InputOptions& options);

using BoxValues = std::array<double, 4>;  // in the order of InputForm::par

struct InputTaken {
    std::optional<Message> refusal{};  // nothing was taken
    bool calculate = false;            // data point 0 is to be calculated
    std::size_t box = 0;               // of a refusal: the first box to be corrected
    std::string rule{};                // ... and what is wrong with it: "p must be above 0."
};
// Checks the boxes of a kind and stores them in the document: the reference point, the tank, or data point 0,
// which is emptied before and becomes the point in force. Boxes in the units of their labels; a volume
// becomes a density by vFactor and M. Refused: a value that is not above 0 or not finite where the kind needs
// it, a mass M that is missing.
InputTaken take_input(Document& document, const UnitFactors& factors, int kind, const InputOptions& options,
                      const BoxValues& boxes);

// What stands in a box, and how 0 reads in the unit in which it was typed.
struct BoxText {
    std::string text;
    std::string zero = "0";
};
using BoxTexts = std::array<BoxText, 4>;  // in the order of InputForm::par
// The same for the texts of the boxes; what is missing or no number is refused too.
InputTaken take_input(Document& document, const UnitFactors& factors, int kind, const InputOptions& options,
                      const BoxTexts& texts);

// What the boxes of a kind hold when the window opens: the values last taken, 0 where there are none.
BoxValues input_boxes(const Document& document, const UnitFactors& factors, int kind,
                      const InputOptions& options);

// The boxes after another choice of an option: amount to mass, density to volume, and back; 0 where that is
// not possible.
BoxValues convert_boxes(const Document& document, const UnitFactors& factors, int kind,
                        const InputOptions& from, const InputOptions& to, BoxValues boxes);

// Text of a box: 15 digits where the document keeps a double, else 7; empty for 0.
std::string box_text(int kind, BoxValue value, double x);

// Volume in the displayed unit to density [kg/m^3] and back for M [kg/kmol]; 0 where M or the value is not
// above 0.
double density_of_volume(double M, double vFactor, double displayed_volume);
double volume_of_density(double M, double vFactor, double rho);

}  // namespace quom

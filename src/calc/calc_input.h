// The road from an entry of the calculation menu to CalcBatch: which inputs a mode needs, what it asks, and
// the one table of input boxes.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// ---- Which way a mode goes ----

// What opens after a menu entry, in this order.
struct Dispatch {
    bool refused = false;          // nothing opens; the user was told
    bool selection = false;        // frmCalcIn first; the others follow its "Continue >"
    bool process_input = false;    // the input of process lines, and nothing else here
    bool result_window = false;    // frmQCalcOut (frmKessel beside it for a tank)
    bool parameter_input = false;  // frmParinput with s.calc.ParInputKind
};

// Decides the inputs of s.calc.CalcMode (0 becomes 1), asks in mode 3 whether T, p describe an equilibrium,
// and sets ParInputKind, VLEAssumed and, for modes that do not pass the selection and for tanks, GlobalCalc.
// Refused: mode 2 with an EOS of the V-phase only (CalcMode becomes 0), and an unknown mode.
Dispatch CalcDispatch(Session& s);

// Whether values of a mode come from the boxes and not from the data points: always for tank and process.
bool is_direct(const Session& s, int mode);

// What the inputs of a calculation write before the user goes on. A cancelled input puts it back.
struct InputRecord {
    int CalcMode = 0, ParInputKind = 0;
    bool GlobalCalc = true, BensonRhoL = true, RhoLWanted = false, VLEAssumed = false;
    BensonReference benson;
};
InputRecord input_record(const Session& s);
void put_back(Session& s, const InputRecord& record);

// ---- frmParinput ----

enum InputKind : int {
    input_none = 0,
    input_reference_point = 4,
    input_tank = 33,
    input_direct = 100,  // + CalcMode
};

// The two option groups of the window.
struct InputOptions {
    bool amount = false;  // optm_n: n/kmol in place of m/kg
    bool volume = false;  // optRhoV: a volume in the unit of the options in place of the density
};

enum class BoxValue { T, p, pLV, density, volume, rhoL, rhoV, tank_V, tank_m, tank_n };

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
InputForm input_form(const Session& s, int kind, const InputOptions& options);

// Number of a box text: "," counts as ".", blanks around are dropped; an empty box is 0. None when the text
// as a whole is no number.
std::optional<double> box_number(std::string_view text);

using BoxValues = std::array<double, 4>;  // in the order of InputForm::par

struct InputTaken {
    std::optional<Message> refusal{};  // nothing was taken
    bool calculate = false;            // CalcBatch is to run with CalcMode on data point 0
    std::size_t box = 0;               // of a refusal: the first box to be corrected
};
// Checks the boxes of a kind and stores them: the reference point, the tank, or data point 0, which is
// emptied before. Boxes in the units of their labels; a volume becomes a density by vFactor and M.
// Refused: a value that is not above 0 or not finite where the kind needs it, a mass M that is missing.
InputTaken take_input(Session& s, int kind, const InputOptions& options, const BoxValues& boxes);

// What the boxes of a kind hold when the window opens: the values last taken, 0 where there are none.
BoxValues input_boxes(const Session& s, int kind, const InputOptions& options);

// The boxes after another choice of an option: amount to mass, density to volume, and back; 0 where that is
// not possible.
BoxValues convert_boxes(const Session& s, int kind, const InputOptions& from, const InputOptions& to,
                        BoxValues boxes);

// Text of a box: 15 digits where the record keeps a double, else 7; empty for 0.
std::string box_text(int kind, BoxValue value, double x);

// Volume in the displayed unit to density [kg/m^3] and back; 0 where M or the value is not above 0.
double density_of_volume(const Session& s, double displayed_volume);
double volume_of_density(const Session& s, double rho);

// ---- frmBParInput: B = b0 - b1/T^b2 ----

inline constexpr std::string_view virial_caption = "Input of Virial Coefficient";
inline constexpr std::string_view virial_formula = "B/m^3/kmol = b0 - b1/T^b2";
struct VirialInput {
    double b0 = 0;  // [m^3/kmol]
    double b1 = 0;  // [m^3 K^b2/kmol]
    double b2 = 0;
};
VirialInput virial_input(const Session& s);
// Takes the constants; refused when one is not finite.
std::optional<Message> take_virial_input(Session& s, const VirialInput& input);

// "no valid input", "Execution not possible".
Message no_valid_input();

}  // namespace quom

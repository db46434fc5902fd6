// Settings of the program: what the options window shows, and what its OK does to the document.
#pragma once
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// Delimiters of the two combo boxes, in their order; the first has "(= default setting)" behind its text.
struct Delimiter {
    char sign;
    std::string_view text;
};
inline constexpr std::array<Delimiter, 3> delimiters = {
    {{';', "semicolon"}, {',', "comma"}, {'\t', "tab character"}}};
// Index of a delimiter; 0 for any other sign.
int delimiter_index(char sign);

// Bounds of Slider1_punktdichte.
inline constexpr int dens_min = 50, dens_max = 1000, dens_step = 50;

// The controls of the window.
struct OptionsInput {
    bool specific = false;             // optMolarSpez: specific in place of molar quantities
    bool chkReduziert = false;         // reduced T, p, v
    bool chkReduziert_enabled = true;  // not taken back
    bool chkPartialKurve_enabled = true;
    bool chkUnloadGraph2D = true;
    bool chkParSpeichern = false;
    bool chkPartialKurve = false;
    bool chkSKurveOhneKonnode = false;
    bool chkCurveTpRestricted = true;
    bool KurvenMischen = false;  // optKurvenMischen: add curves when the units of the axes fit
    int Dens = 500;
    bool batch = false;  // OptCalcMode
    char SepCSV = ';', SepXY = ';';
};
// Opening the window takes reduced quantities back where substance or EOS do not allow them any more; true:
// it did.
bool take_back_reduced(Document& document, const Fluid& fluid);
// What the window shows when it opens. Reduced quantities that the substance or the EOS does not allow are
// off.
OptionsInput open_options(const Document& document, const Fluid& fluid);

// Why values cannot be shown in these units: specific units (EnergyMode 3, VolumeMode 1) without M; reduced
// ones (VolumeMode 2) without T(cr), p(cr) or v(cr) of the EOS.
std::optional<Message> unit_refusal(const Fluid& fluid, int EnergyMode, int VolumeMode);

// Takes units into the document, with T(cr) as start value where there is none. A refusal takes nothing.
std::optional<Message> take_units(Document& document, const Fluid& fluid, int EnergyMode, int VolumeMode);

// One entry of mnuCalc with another caption.
struct MenuCaption {
    int index;  // of mnuCalc
    std::string_view caption;
};

struct OptionsResult {
    bool taken = false;           // false: the window stays open, nothing was taken
    bool units_changed = false;   // one of the four factors is another one
    bool unload_diagram = false;  // the 2D diagram is to be unloaded
};
// "O. K.": takes the controls into the document and asks about an unsuitable delimiter. Refused units are
// told.
OptionsResult apply_options(Document& document, const Fluid& fluid, const OptionsInput& input,
                            Messages& messages);

// Entries of mnuCalc whose captions follow BatchMode.
std::vector<MenuCaption> calc_menu_captions(bool batch);

}  // namespace quom

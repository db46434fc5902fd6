// What the result window shows of a calculation, line by line.
#pragma once
#include <cstdint>
#include <string>

#include "calc/outcome.h"
#include "quantities/units.h"

namespace quom {

// Colours as 0xRRGGBB.
inline constexpr std::uint32_t colour_black = 0x000000;
inline constexpr std::uint32_t colour_red = 0x800000;        // faults
inline constexpr std::uint32_t colour_region = 0xAA0A0A;     // head line above the critical point
inline constexpr std::uint32_t colour_diagnosis = 0xC0FFC0;  // diagnosis button when it can be used
inline constexpr std::uint32_t colour_button = 0xFFFFFFFF;   // the style's own colour of buttons

// One text of the result window.
struct ViewText {
    std::string text;
    std::uint32_t colour = colour_black;
    bool bold = false;
    bool visible = true;
    std::int8_t size = 8;  // points
};

// What the result window shows. Lines inside a text are separated by '\n'.
struct OutputView {
    ViewText par1, par2;            // specified values
    ViewText co1;                   // head line of the state
    ViewText txtco2;                // value line
    ViewText Liste;                 // result text, fixed font
    ViewText lblVphase, lblLphase;  // heads of the two columns, visible when the phase exists
    ViewText lblGleich;             // " no 2-phase state! "
    ViewText Bezeichnung2;          // "identic"
    bool fraBatchVorgabe = true;    // the frame of the specified values is visible
    bool cmdInfoSuperCrit = false;  // button for the picture of the supercritical regions is visible
    bool cmdCEOSDiagnose = false;   // button of the EOS diagnosis is enabled
    std::uint32_t cmdCEOSDiagnose_colour = colour_button;
    std::string Text;  // "EXIT": the window that opens is to close; "ERROR1" v <= b(T) in a GLOBAL tank;
                       // "ERROR2" a PARTIAL tank is full of liquid; "ERROR3" v <= B in a tank; else empty
};

// How a result is shown.
struct ListSettings {
    Units units;
    CalcSetup setup;             // of the calculation
    int ExtLevel = 1;            // 1 no extended output; 2 first box, 3 second box, 4 both
    bool ShowFunctions = false;  // the table of functions in the list
};

// The view of one outcome. Extended rows need StateInput::coefficients, their last lines
// StateInput::inflection.
OutputView make_result_list(const Fluid& fluid, const Outcome& outcome, const ListSettings& settings);

// The visible texts of the window from top to bottom, without its caption: specified values, head line, value
// line, heads of the columns, list. Every line ends with '\n'.
std::string list_text(const OutputView& view);

}  // namespace quom

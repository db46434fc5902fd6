// One calculation of one mode: the spine of the workbench.
#pragma once
#include <cstdint>
#include <string>

#include "calc/calc_slots.h"
#include "session/session.h"

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
    ViewText Liste;                 // result text, fixed font; empty for a quiet call
    ViewText lblVphase, lblLphase;  // heads of the two columns, visible when the phase exists
    ViewText lblGleich;             // " no 2-phase state! "
    ViewText Bezeichnung2;          // "identic"
    bool fraBatchVorgabe = true;    // the frame of the specified values is visible
    bool cmdInfoSuperCrit = false;  // button for the picture of the supercritical regions is visible
    bool cmdCEOSDiagnose = false;   // button of the EOS diagnosis is enabled
    std::uint32_t cmdCEOSDiagnose_colour = colour_button;
};

// Contents of a tank, phase by phase.
struct TankContents {
    double y = 0;           // vapor mass (= mole) fraction
    double VL = 0, VV = 0;  // volumes [m^3]
    double mL = 0, mV = 0;  // masses [kg]
    double nL = 0, nV = 0;  // amounts of substance [kmol]
};

struct CalcRequest {
    int Mode = 0;             // CalcMode, or 8 from a search
    int Point = 0;            // data point, 0 = direct input; T, p, rho are read from s.exp.points[Point]
    bool Quiet = false;       // the result text is built but not put into view.Liste
    bool WarnTriple = false;  // the boxes on T < T(TP) are allowed
    bool want_text = true;    // false: no text is built at all, result.view stays empty (long sweeps)
    double p = 0;             // [kPa], handed back where the mode does not calculate one
};

struct CalcBatchResult {
    double p = 0;        // [kPa], specified or calculated; 0 where there is none
    float LPercent = 0;  // L-phase in per cent: 0 only V, 100 only L; volume per cent of a two-phase tank,
                         // 0 for other two-phase states
    bool IsL = false, IsV = false;
    std::int16_t PhaseCode = 0;  // 1 one solution, 3 three solutions or equilibrium
    CalcResult Result;
    std::string Text;  // "EXIT": the window that opens is to close; "ERROR1" v <= b(T) in a GLOBAL tank;
                       // "ERROR2" a PARTIAL tank is full of liquid; "ERROR3" v <= B in a tank; else empty
    std::string list;  // result text, '\n' between lines; also of a quiet call
    OutputView view;
    TankContents tank;     // modes 9, 10
    std::int16_t err = 0;  // -1: the point has no result
    std::string fault;     // why, in the words shown; empty when good
    std::string warning;   // what the user was or would be warned of; not without want_text
};

// Runs one calculation by request.Mode on the specified values of data point request.Point.
//
// Writes s.calc.BatchResults[Point] (the list grows when it is too short), s.calc.state, s.scratch and the
// uFactor of s.units; mode 12 also writes T and p of the point. err -1: no result; the record of the point is
// blank then, no slot holds a value that is not finite, and fault tells why. An unknown mode or point gives
// err -1 and nothing else.
CalcBatchResult CalcBatch(Session& s, const CalcRequest& request);

}  // namespace quom

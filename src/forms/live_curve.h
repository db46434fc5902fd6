// A curve that follows the value of its parameter while the user chooses it: positions of a slider, and the
// curve in hand on the sheet.
#pragma once
#include <optional>
#include <string>

#include "session/session.h"

namespace quom {

// Values of the parameter over the positions of a slider, in the units of the sheet: T evenly from the triple
// point to 2 T(cr), p by decades over the pressures of the diagrams, v by decades from a little above b.
struct ParameterScale {
    static constexpr int Steps = 1000;  // positions 0 to Steps
    double low = 0, high = 0;
    bool log = false;
};
// None where the curves of the sheet have no parameter.
std::optional<ParameterScale> parameter_scale(const Session& session);
// As it stands in the box: four digits.
std::string value_at(const ParameterScale& scale, int position);
// The position next to a value; an end for one outside.
int position_of(const ParameterScale& scale, double value);

// Where the curve in hand stands. It takes the slot, the colour and the label that the next curve gets, and
// the colour that was picked is still there for that one.
struct LiveCurve {
    int slot = 0;                       // 0: there is none
    SharedVector<SheetPoint> points{};  // as drawn
    LastParameter last{};               // of the curve before
};
struct LiveMove {
    bool drawn = false;
    std::string told{};  // why the curve stays as it was, or what is to be said of the new one
};
// Draws the curve of the value in place of the one in hand. Nothing is asked, and the value is not taken: the
// box still offers what it did.
LiveMove move_live_curve(Session& session, LiveCurve& live, const std::string& typed);
// Takes the curve off the sheet; one that has become another curve, or has gone, is left alone.
void drop_live_curve(Session& session, LiveCurve& live);

}  // namespace quom

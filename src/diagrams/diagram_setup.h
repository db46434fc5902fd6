// The diagram in force: kind, titles, axis texts and ranges, without any window.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/messages.h"
#include "diagrams/curve.h"

namespace quom {

// One for each session.
struct DiagramRec {
    Kind kind = Kind::none;
    CurveRange initial;  // that it was set up with (XMin0 .. YMax0); a zoom reset returns to it
    CurveRange range;    // in force
    std::string XTitle, YTitle, TitleSuffix;
    std::string title;  // heading of the kind
    Section section = Section::none;
    std::string AxisCode, AxisCodeShown;  // of this diagram, and of the sheet on screen; empty: no sheet
    float DBTMin = 0, DBTMax = 0;         // validity of a database function [K]
    bool operator==(const DiagramRec&) const = default;
};

// What the table of ranges was computed from; for another basis it is computed anew.
struct RangeBasis {
    Units units;
    double Tcr = 0, pcr = 0, vcr = 0, rhocr = 0, M = 0, cp = 0;  // cp(idG) at T(cr)
    float Ttr = 0;
    int RefKode = 0;
    bool operator==(const RangeBasis&) const = default;
};

// Limits of every quantity in displayed units.
struct RangeLimits {
    double min = 0, max = 0;
    bool is_set() const { return min != 0.0 || max != 0.0; }
    bool operator==(const RangeLimits&) const = default;
};
struct RangeTable {
    std::array<RangeLimits, range_pair_count> pairs{};
    RangeBasis basis;
    RangeLimits& operator[](RangePair pair) { return pairs[static_cast<std::size_t>(pair)]; }
    const RangeLimits& operator[](RangePair pair) const { return pairs[static_cast<std::size_t>(pair)]; }
    bool operator==(const RangeTable&) const = default;
};

// The table by the critical data of the substance. Values that `before` has already are kept, unless reset
// is set or they were computed from something else. Without T(cr), p(cr) of at least 0.1 nothing is computed.
RangeTable DiagramDefaults(const Fluid& fluid, const Units& units, const RangeTable& before = {},
                           bool reset = true);

// Range of a kind. Database functions: their validity and their values at its ends, 5 % wider on each side.
// `now` stays for a kind without a range of its own (process lines).
CurveRange DiagramRanges(const RangeTable& table, Kind kind, const Fluid& fluid, const Units& units,
                         const CurveRange& now = {});

// What the session keeps of its diagrams. A new substance begins with a new one.
struct DiagramState {
    DiagramRec rec;
    RangeTable ranges;
    bool new_substance = true;   // no diagram since the substance was chosen
    double T = 0, p = 0, v = 0;  // parameters that are offered first [K], [kPa], [m^3/kmol]; 0 not yet
    bool operator==(const DiagramState&) const = default;
};

// Where the parameter of a curve is entered.
enum class ParameterInput { none, parameter_box, process_line_form };

// What the caller has to do, in this order.
struct SetupResult {
    DiagramState state;
    std::optional<Message> refusal;   // told; nothing else happens
    std::optional<Message> question;  // on Yes the sheet is unloaded; nothing else happens on either answer
    bool to_molar_volumes = false;    // with a refusal: reduced units are not possible, VolumeMode becomes 0
    bool unload_sheet = false;
    bool open_sheet = false;      // or bring the one that is open to the front
    bool database_marks = false;  // validity marks of a database function
    ParameterInput input = ParameterInput::none;
};

// Sets up the diagram of a kind that was chosen in the menu. KurvenMischen: curves whose axes fit share the
// sheet, else a sheet of another kind is unloaded first. Nothing is to be done without T(cr).
SetupResult DiagramSetup(const Fluid& fluid, const Units& units, const DiagramState& state, Kind kind,
                         bool KurvenMischen, bool sheet_open);

// Two kinds may share a sheet: equal units of the axes; those of "0T" only with themselves.
bool share_sheet(Kind a, Kind b);

// Why a kind cannot be drawn for this fluid in these units; none: it can.
std::optional<Message> kind_refusal(const Fluid& fluid, const Units& units, Kind kind);

}  // namespace quom

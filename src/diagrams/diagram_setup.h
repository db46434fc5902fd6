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

}  // namespace quom

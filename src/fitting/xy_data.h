// X-Y data: a free table of pairs without units and without a substance. Lines are counted from 1.
#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "base/shared_vector.h"

namespace quom {

struct XYPoint {
    float x = 0, y = 0;
    std::int16_t Aus = 0;  // -1 off: not drawn, converted, saved or printed
    bool operator==(const XYPoint&) const = default;
};

struct XYData {
    SharedVector<XYPoint> points;
    std::string comment;       // first line of the file
    std::string XYFile;        // full path, empty: none
    bool XYGeaendert = false;  // changed since it was loaded or saved
    bool operator==(const XYData&) const = default;
};

// Drops the lines first to last; those that are not there are none.
void remove_lines(XYData& data, int first, int last);
// Turns lines first to last off, and those that are off on.
void toggle_lines(XYData& data, int first, int last);
// Ascending; equal keys keep their order.
void sort_by_x(XYData& data);
void sort_by_y(XYData& data);
// Interchanges x and y of all points.
void change_xy(XYData& data);

// Inserts the rows of a text before line `at` (behind the last for count + 1): x and y with a tab between
// them, decimal comma or point. Returns why nothing was inserted; empty when good.
std::string insert_rows(XYData& data, int at, std::string_view text);

// The conversions of the table, in the order of their options.
enum class XYConversion { exp_y, ln_y, y_times_W, y_plus_W, reciprocal_y, one_minus_x };
inline constexpr std::array<std::string_view, 6> xy_conversion_captions = {
    "y = exp(y)", "y = ln(y)", "y = y * W", "y = y + W", "y = 1 / y", "x = 1 - x"};
// Converts the active points. Where one of them has no result in single precision, nothing changes and false
// is returned.
bool convert(XYData& data, XYConversion conversion, double W);
// What the user is told then.
Message conversion_refusal();

}  // namespace quom

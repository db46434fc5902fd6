// X-Y data: a free table of pairs without units and without a substance.
#pragma once
#include <cstdint>
#include <string>

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

}  // namespace quom

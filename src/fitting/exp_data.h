// Experimental data: measured points of T, p, densities, delta(LV)h, cp.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace quom {

// One point; entry 0 of the list is the direct input. 0 means "no value".
struct TpRhoPoint {
    std::int16_t Aus = 0;      // -1 inactive
    double T = 0;              // [K]
    double p = 0;              // [kPa]
    float rhoV = 0, rhoL = 0;  // [kg/m^3]
    float HLV = 0;             // delta(LV)h [kJ/kmol]
    float cp = 0;              // [kJ/(kmol K)]
    bool operator==(const TpRhoPoint&) const = default;
};

struct ExperimentalData {
    std::vector<TpRhoPoint> points = std::vector<TpRhoPoint>(1);  // [0] direct input, [1..] measured points
    bool operator==(const ExperimentalData&) const = default;
};

// Number of measured points.
int data_point_count(const ExperimentalData& data);
// The first active measured point, from 1; 0 when there is none.
int first_active_point(const ExperimentalData& data);
// The point one step on; one inactive point is skipped. At the ends the point itself.
int stepped_point(const ExperimentalData& data, int point, int step);

}  // namespace quom

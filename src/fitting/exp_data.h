// Experimental data: measured points of T, p, densities, delta(LV)h, cp.
#pragma once
#include <cstdint>
#include <string>

#include "base/shared_vector.h"

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

// The file of a data set: where it came from or was saved to, and what its head says.
struct ExpDataFile {
    std::string ExpFile;     // full path, empty: none
    std::string ExpTitle;    // its file name
    std::string ExpDate;     // of saving, as the file has it
    std::string ExpComment;  // comment of the file
    std::string ExpCAS;      // CAS number of the substance that was measured
    std::string ExpName;     // and its name
    bool operator==(const ExpDataFile&) const = default;
};

struct ExperimentalData {
    SharedVector<TpRhoPoint> points = SharedVector<TpRhoPoint>(1);  // [0] direct input, [1..] measured points
    ExpDataFile file;
    bool ExpGeaendert = false;  // changed since it was loaded or saved
    int optFitFunction = 1;     // column of y: 1 p, 2 rho(L), 3 rho(V), 4 delta(LV)h, 5 cp
    bool operator==(const ExperimentalData&) const = default;
};

// Number of measured points.
int data_point_count(const ExperimentalData& data);
// The first active measured point, from 1; 0 when there is none.
int first_active_point(const ExperimentalData& data);
// The point one step on; one inactive point is skipped. At the ends the point itself.
int stepped_point(const ExperimentalData& data, int point, int step);

}  // namespace quom

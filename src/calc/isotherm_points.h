// The p-v isotherm of the cubic equation in force as points for a picture: with its stable, metastable and
// unstable stretches, the roots at p, and for a state above the critical point the regions around it.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "calc/eos_diagnosis.h"

namespace quom {

struct VpPoint {
    double v = 0;  // displayed unit
    double p = 0;  // [kPa]
};

enum class Stretch { one_phase, stable_L, metastable_L, unstable, metastable_V, stable_V };
std::string_view stretch_name(Stretch kind);  // "metastable L"

struct IsothermStretch {
    Stretch kind{};
    std::vector<VpPoint> points;  // ascending v; neighbours share their end
};

struct IsothermMark {
    VpPoint at;
    std::string_view label;  // "v(1)"; empty for the one state of a picture of regions
    RootMeaning meaning{};
};

struct IsothermPicture {
    bool available = false;  // false: nothing to draw
    std::string eos;
    std::string_view v_unit;
    double T = 0, p = 0;                     // state [K], [kPa]; 0 not known
    double Tcr = 0, pcr = 0, vcr = 0;        // critical point, vcr as the EOS implies
    double v_low = 0, v_high = 0;            // limits of the axis of v, which is logarithmic
    double p_low = 0, p_high = 0;            // limits of the axis of p
    bool log_p = false;                      // whether that is logarithmic too
    double pLV = 0;                          // [kPa], 0 without
    std::vector<IsothermStretch> isotherm;   // of T
    std::vector<VpPoint> spinodals;          // its minimum and maximum, ascending v
    std::vector<IsothermMark> marks;         // roots at p
    std::vector<VpPoint> critical_isotherm;  // of T(cr), with regions
    std::vector<VpPoint> coexistence;        // L and V side, ascending v, with regions
    int region = 0;                          // of the state, with regions; 0 to 4
};

// Isotherm of the state of an outcome with the roots that diagnose_eos names. Not available without a state
// of a cubic equation. Volumes times factors.vFactor; v_unit is their unit.
IsothermPicture diagnosis_picture(const Fluid& fluid, const Outcome& outcome, const UnitFactors& factors,
                                  std::string_view v_unit);

// The regions about the critical point with the isotherm of T [K] and the state at p [kPa]; each may be 0 for
// not known. Not available without a cubic equation or critical data.
IsothermPicture region_picture(const Fluid& fluid, double T, double p, const UnitFactors& factors,
                               std::string_view v_unit);

}  // namespace quom

// One record on its way through the audit: what its checks share. Only src/calc includes this.
#pragma once
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "calc/record_audit.h"
#include "engine/fluid.h"

namespace quom {

// A value of delta(LV)h [kJ/kmol] at T [K].
struct HeatPoint {
    double T = 0, h = 0;
};

struct AuditRun {
    SubstanceConstants substance;
    std::vector<HeatPoint> heats;        // both pairs of the record
    std::shared_ptr<const Fluid> fluid;  // by Peng/Robinson, for volumes of the V-phase
    std::vector<Doubt> doubts{};

    // A doubt where the two figures differ by more than the rule allows, or the value is no number.
    void compare(AuditCheck check, std::string what, double value, double reference);
    // A doubt without a tolerance.
    void add(AuditCheck check, std::string what, double value, double reference) {
        doubts.push_back({check, std::move(what), value, reference});
    }
};

// " at T = 300 K".
std::string at_T(double T);
// The database sets of vapor pressure that the record has, Wagner first.
std::vector<Evp> recorded_sets(const SubstanceConstants& substance);
// "Wagner", "Antoine, low pressure" ...
std::string evp_words(Evp code);
bool inside(double T, TLimits limits);

void audit_limits(AuditRun& run);
void audit_constants(AuditRun& run);
void audit_vapor_pressure(AuditRun& run);
void audit_vaporization(AuditRun& run);
void audit_liquid_density(AuditRun& run);
void audit_heat_capacities(AuditRun& run);
void audit_formation(AuditRun& run);

}  // namespace quom

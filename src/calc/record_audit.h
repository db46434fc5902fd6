// The sets of one record against each other: what contradicts itself is a doubt.
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "substance/record.h"

namespace quom {

// What is compared.
enum class AuditCheck : std::uint8_t {
    limits_crossed,       // T(Lo) not below T(Hi)
    limits_critical,      // T(Hi) of a set of the liquid above T(cr)
    limits_triple,        // T(Lo) of a set of the liquid below T(tr), T(Hi) of a set of the solid above it
    boiling_triple,       // T(nb) on the other side of T(tr) than 101.325 kPa is of p(tr)
    boiling_critical,     // T(nb) not below T(cr)
    critical_T_of_set,    // T(cr) of a set
    critical_p_of_set,    // p(cr) of the Wagner set
    critical_p,           // p(LV) at T(cr)
    critical_p_from_evp,  // p(cr) that p(LV) at lower T leads to
    critical_Z,           // compressibility factor of the critical point
    boiling_p,            // p(LV) at T(nb)
    triple_p,             // p(LV) at T(tr)
    triple_p_low,         // the same from 0.00001 to 0.5 kPa
    omega,                // -log10(p(LV)/pcr) - 1 at 0.7 T(cr)
    evp_pair,             // two vapor pressure equations, above 10 kPa
    evp_pair_low,         // from 1 to 10 kPa
    evp_pair_lowest,      // from 0.01 to 1 kPa
    evp_slope,            // rise of the slope of ln p over 1/T towards T(cr)
    evp_value,            // a vapor pressure equation without a value within its limits
    clapeyron,            // delta(LV)h against the slope of p(LV), up to 0.85 T(cr)
    clapeyron_high,       // at 0.9 T(cr)
    heat_point,           // a value of delta(LV)h against the equation of delta(LV)h
    rhoL_falling,         // rho(L) rises with T
    rhoL_critical,        // rho(L) at its end against rho(cr)
    rhoL_benson,          // rho(L) at 0.9 T(cr) against Benson's method
    cpId_pair,            // the two forms of cp(idG)
    cpL_above_ideal,      // cp(L) not above cp(idG)
    formation,            // delta(F)g against delta(F)h and S0
};

// How a difference is counted.
enum class AuditMeasure : std::uint8_t { percent, absolute };

// One row of the table of tolerances.
struct AuditRule {
    AuditCheck check{};
    std::string_view name;    // for programs: "boiling_p"
    std::string_view what;    // for people
    double tolerance = 0;     // largest difference without a doubt
    AuditMeasure measure{};   // percent of the reference, or in the unit
    std::string_view unit;    // of the two figures
    std::string_view reason;  // why this tolerance
};
std::span<const AuditRule> audit_rules();
const AuditRule& audit_rule(AuditCheck check);

// Two figures that should agree and do not.
struct Doubt {
    AuditCheck check{};
    std::string what;      // "p(LV) by Wagner at T(nb) = 373.12 K"
    double value = 0;      // what was found; NaN where a set has no value
    double reference = 0;  // what it was compared with
    // (value - reference), in per cent of the reference or in the unit
    double difference() const;
};

// All doubts on a record of at least layout.length bytes, in the order of the checks. What the record does
// not have is not compared. Left out are vapors of double molecules (carboxylic acids, HF, NO2) of clapeyron,
// these and liquids with OH of critical_p_from_evp, and the quantum fluids (T(cr) below 50 K) of both,
// evp_slope and cpL_above_ideal.
std::vector<Doubt> audit_record(std::string_view record, const RecordLayout& layout);

}  // namespace quom

#include "calc/record_comparison.h"

#include <cmath>

#include "engine/condensed_phases.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

constexpr Evp recorded_equations[] = {Evp::wagner, Evp::frost_kalkwarf, Evp::antoine_low, Evp::antoine_high};

bool within(double T, TLimits limits) { return limits.TLo > 0 && T >= limits.TLo && T <= limits.THi; }

// Both values, where both are above 0.
std::optional<ComparedValue> compared(double eos, double record) {
    if (!(eos > 0.0) || !(record > 0.0) || !std::isfinite(eos) || !std::isfinite(record)) return std::nullopt;
    return ComparedValue{eos, record};
}

std::optional<ComparedValue> compare_rhoL(const Fluid& fluid, const Saturation& saturation) {
    const SubstanceConstants& substance = fluid.substance;
    if (!within(saturation.T, {substance.RhoLTLo, substance.RhoLTHi})) return std::nullopt;
    return compared(fluid.M / saturation.vL, rhoL_Fu(substance, static_cast<float>(saturation.T)).rho);
}

std::optional<ComparedValue> compare_hLV(const Fluid& fluid, double T) {
    const SubstanceConstants& substance = fluid.substance;
    if (!within(T, {substance.HLVTLo, substance.HLVTHi})) return std::nullopt;
    const HlvResult eos = hLV(
        fluid,
        {.model = Hlv::eos, .T = T, .p = {}, .EVP = Evp::none, .benson = {}, .point_T = {}, .point_p = {}});
    const HlvEquation record = hLV_Fu(substance, T);
    if (eos.err() || record.err()) return std::nullopt;
    return compared(eos.value, static_cast<double>(record.value));
}

// A state whose pressure and densities are those of the equation of state.
bool is_state_of_eos(const Outcome& outcome) {
    switch (mode_info(outcome.mode).family) {
        case ModeFamily::state:
        case ModeFamily::equilibrium:
        case ModeFamily::vaporization:
        case ModeFamily::tank:
            break;
        default:
            return false;
    }
    const bool own_saturation =
        outcome.saturation == SaturationSource::none || outcome.saturation == SaturationSource::eos;
    const bool own_liquid = outcome.liquid == LiquidSource::none || outcome.liquid == LiquidSource::eos;
    if (outcome.mode == Mode::tank_partial) return false;
    return outcome.has_result() && outcome.eos && outcome.T && own_saturation && own_liquid;
}

}  // namespace

Evp recorded_evp(const SubstanceConstants& substance, double T) {
    for (const Evp code : recorded_equations) {
        if (within(T, evp_limits(substance, code)) && !pLV_EVP(substance, T, code).err()) return code;
    }
    return Evp::none;
}

RecordComparison compare_with_record(const Fluid& fluid, double T) {
    RecordComparison comparison{.T = T, .p = {}, .rhoL = {}, .hLV = {}};
    if (!fluid.has_eos() || fluid.VPhaseOnly || !(T < fluid.substance.Tcr)) return comparison;
    const Saturation saturation = pLV_EOS(fluid, T);
    if (!saturation.found()) return comparison;
    comparison.evp = recorded_evp(fluid.substance, T);
    if (comparison.evp != Evp::none)
        comparison.p = compared(saturation.p, pLV_EVP(fluid.substance, T, comparison.evp).value);
    comparison.rhoL = compare_rhoL(fluid, saturation);
    comparison.hLV = compare_hLV(fluid, T);
    return comparison;
}

RecordComparison compare_with_record(const Fluid& fluid, const Outcome& outcome) {
    return is_state_of_eos(outcome) ? compare_with_record(fluid, *outcome.T) : RecordComparison{};
}

}  // namespace quom

#include "calc/state_words.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"

namespace quom {
namespace {

constexpr double LargeDifference = 5.0;  // [%]

// Significant digits as a plain number; whole from 10^digits on.
std::string digits_text(double x, int digits) {
    const int before = x == 0.0 ? 1 : static_cast<int>(std::floor(std::log10(std::fabs(x)))) + 1;
    const int decimals = std::clamp(digits - before, 0, 12);
    return formatMask(x, decimals == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(decimals), '0'));
}
std::string kelvin(double dT) { return formatMask(std::fabs(dT), "0.0") + " K"; }
// As many digits as tell of the distance; below 1e-6 kPa the short form.
std::string kilopascal(double dp) {
    const double size = std::fabs(dp);
    return (size != 0.0 && size < 1e-6 ? genNum(size, 7) : digits_text(size, 4)) + " kPa";
}
std::string value_text(double x) { return x < 1e-3 || x >= 1e6 ? genNum(x, 7) : digits_text(x, 6); }
std::string number(double x) { return genNum(x, 7); }

// Saturation by the concept in force.
class SaturationInForce {
 public:
    explicit SaturationInForce(const Fluid& fluid)
        : fluid_(fluid), by_eos_(fluid.has_eos() && !fluid.VPhaseOnly && fluid.models.Konzept) {}

    std::optional<double> T(double p) const {
        return by_eos_ ? found(TLV_EOS(fluid_, p), &Saturation::T)
                       : found(TLV_EVP(fluid_.substance, p, fluid_.models.EVPKode));
    }
    std::optional<double> p(double T) const {
        return by_eos_ ? found(pLV_EOS(fluid_, T), &Saturation::p)
                       : found(pLV_EVP(fluid_.substance, T, fluid_.models.EVPKode));
    }
    // What is added to T(LV), p(LV).
    std::string source() const {
        return fluid_.VPhaseOnly ? ", of " + short_name(fluid_.models.EVPKode) : std::string();
    }

 private:
    static std::optional<double> found(const Saturation& saturation, double Saturation::*value) {
        return saturation.found() ? std::optional(saturation.*value) : std::nullopt;
    }
    static std::optional<double> found(const EvpResult& result) {
        const bool there = result.reason == Reason::none && result.value > 0.0 && std::isfinite(result.value);
        return there ? std::optional(result.value) : std::nullopt;
    }
    const Fluid& fluid_;
    bool by_eos_;
};

// Compared as the region of the state is: in single precision.
struct Place {
    bool hot = false;         // T >= T(cr)
    bool above_T_cr = false;  // T > T(cr)
    bool high_p = false;      // p >= p(cr)
};
Place place_of(const SubstanceConstants& substance, double T, double p) {
    const auto t = static_cast<float>(T), q = static_cast<float>(p);
    const auto tcr = static_cast<float>(substance.Tcr), pcr = static_cast<float>(substance.pcr);
    return {.hot = t >= tcr, .above_T_cr = t > tcr, .high_p = q >= pcr};
}

StateWords saturated_words(const Outcome& out, const std::string& p_of_saturation) {
    const ModeFamily family = mode_info(out.mode).family;
    if (out.quality && (family == ModeFamily::state || family == ModeFamily::tank))
        return {"two phases", "x = " + formatMask(*out.quality, "0.0000") +
                                  (p_of_saturation.empty() ? "" : " at " + p_of_saturation)};
    const bool T_found = !(mode_info(out.mode).specified & (spec_T | spec_tank));
    if (T_found && out.T) return {"saturated liquid and vapor", "T(LV) = " + value_text(*out.T) + " K"};
    return {"saturated liquid and vapor", p_of_saturation};
}

// One phase below the critical point. The phase is that of the outcome; where the saturation in force has the
// other one as stable, the word leaves out what would be wrong and the distance tells the side.
StateWords one_phase_words(const Fluid& fluid, const Outcome& out, const Place& place) {
    const SaturationInForce saturation(fluid);
    const bool liquid = out.phase == PhaseWord::L;
    const char* const plain = liquid ? "liquid" : "vapor";
    const char* const full = liquid ? "compressed liquid" : "superheated vapor";
    if (place.high_p) {
        const std::optional<double> pLV = saturation.p(*out.T);
        if (!pLV) return {liquid ? full : plain, ""};
        return {liquid ? full : plain, kilopascal(*out.p - *pLV) + " above p(LV)" + saturation.source()};
    }
    const std::optional<double> TLV = saturation.T(*out.p);
    if (!TLV) return {full, ""};
    const double distance = *out.T - *TLV;
    const bool agrees = liquid ? distance <= 0.0 : distance >= 0.0;
    return {agrees ? full : plain,
            kelvin(distance) + (distance < 0.0 ? " below" : " above") + " T(LV)" + saturation.source()};
}

// Whether the functions of a phase rest on cp(idG).
bool uses_ideal_gas(const Outcome& out) { return (out.L && out.L->h) || (out.V && out.V->h); }

std::string warning_line(const Warning& warning) {
    std::string text = warning_text(warning);
    if (warning.kind == WarningKind::below_triple_point)
        text += ": here T/K = " + number(warning.value) + ", T(tr)/K = " + number(warning.low);
    return text + '.';
}

std::optional<std::string> cp_line(const Fluid& fluid, const Outcome& out) {
    if (!out.T || !uses_ideal_gas(out)) return std::nullopt;
    const SubstanceConstants& s = fluid.substance;
    const bool sinh = fluid.models.cpKode == CpForm::sinh_cosh;
    const TLimits limits = sinh ? TLimits{s.cpDIPPRTLo, s.cpDIPPRTHi} : TLimits{s.cpPolyTLo, s.cpPolyTHi};
    const bool inside = *out.T >= limits.TLo && *out.T <= limits.THi;
    if (fluid.models.cpKode == CpForm::none || limits.THi <= 0 || inside) return std::nullopt;
    return "cp(idG) is extrapolated: " + std::string(sinh ? "sinh/cosh" : "the polynomial") +
           " holds for T/K = " + genNum(int{limits.TLo}) + " ... " + genNum(int{limits.THi}) + ", here " +
           number(*out.T) + '.';
}

struct HelpRow {
    Reason reason;
    const char* help;
};
constexpr HelpRow Helps[] = {
    {Reason::above_critical_T,
     "Equilibrium of L and V exists below T(cr) only; above it use \"T, p => rho\"."},
    {Reason::above_critical_p,
     "Equilibrium of L and V exists below p(cr) only; above it use \"T, p => rho\"."},
    {Reason::partial_above_critical, "Use the GLOBAL concept (\"Models\") at and above T(cr)."},
    {Reason::no_equation, "Choose an equation of state in \"Models\"; a manual one needs its constants."},
    {Reason::vapor_only, "Choose a cubic equation of state in \"Models\"."},
    {Reason::no_root_above_b, "Choose another equation of state, or a lower p."},
    {Reason::volume_below_b, "Enter a smaller density."},
    {Reason::volume_below_B, "Enter a smaller density, or choose a cubic equation of state in \"Models\"."},
    {Reason::volume_not_positive, "Enter a lower p, or choose a cubic equation of state in \"Models\"."},
    {Reason::no_vapor_pressure_equation, "Choose another vapor pressure equation in \"Models\"."},
    {Reason::no_reference_point, "Use the GLOBAL concept (\"Models\"), or type the reference point."},
    {Reason::no_hlv_model, "Choose a model of delta(LV)h in \"Models\"."},
    {Reason::no_hlv_data, "Choose another model of delta(LV)h in \"Models\"."},
    {Reason::no_liquid_density, "Use the GLOBAL concept (\"Models\")."},
    {Reason::no_T_given, "Type T and calculate."},
    {Reason::no_p_given, "Type p and calculate."},
    {Reason::no_rho_given, "Type rho and calculate."},
    {Reason::no_tank_given, "Type m, V and T and calculate."},
};

// Why there is nothing to compare.
std::string nothing_to_compare(const Fluid& fluid, const Outcome& out) {
    const ModeFamily family = mode_info(out.mode).family;
    if (family == ModeFamily::database) return "A value of an equation of the record itself.";
    const std::string at = out.T ? " at " + number(*out.T) + " K" : std::string();
    const std::string head = "Nothing in the record to compare with" + at + ": ";
    if (!fluid.has_eos()) return head + "no equation of state is in force.";
    if (fluid.VPhaseOnly) return head + "the equation of state knows the V-phase alone.";
    if (out.T && place_of(fluid.substance, *out.T, 0.0).hot)
        return head +
               (place_of(fluid.substance, *out.T, 0.0).above_T_cr ? "T is above T(cr)." : "T is T(cr).");
    if (out.saturation == SaturationSource::evp || out.saturation == SaturationSource::data_point ||
        out.liquid == LiquidSource::benson || out.liquid == LiquidSource::database)
        return head + "the result does not rest on the equation of state alone.";
    return head + "its equations do not hold there.";
}

}  // namespace

std::string short_name(Evp code) {
    std::string name(trim(evp_info(code).text));
    if (const std::size_t origin = name.find('('); origin != std::string::npos && origin > 0)
        name = trim(name.substr(0, origin));
    return name;
}

StateWords state_words(const Fluid& fluid, const Outcome& out) {
    const ModeFamily family = mode_info(out.mode).family;
    const bool is_state = family == ModeFamily::state || family == ModeFamily::equilibrium ||
                          family == ModeFamily::vaporization || family == ModeFamily::tank;
    if (!out.has_result() || !is_state || out.phase == PhaseWord::none || !out.T) return {};
    if (fluid.models.EOSKode == Eos::ideal_gas && family == ModeFamily::state) return {"ideal gas", ""};
    const std::string p_of_saturation = out.p ? "p(LV) = " + value_text(*out.p) + " kPa" : std::string();
    if (out.two_phase()) return saturated_words(out, p_of_saturation);
    const SubstanceConstants& substance = fluid.substance;
    if (!out.p || !(substance.Tcr > 0) || !(substance.pcr > 0))
        return {out.phase == PhaseWord::L ? "liquid" : "vapor", ""};
    const Place place = place_of(substance, *out.T, *out.p);
    const std::string above_T = kelvin(*out.T - substance.Tcr) + " above T(cr)";
    if (place.hot && place.high_p)
        return {"supercritical", above_T + ", " + kilopascal(*out.p - substance.pcr) + " above p(cr)"};
    if (place.above_T_cr) return {"gas", above_T};
    return one_phase_words(fluid, out, place);
}

std::vector<std::string> warning_lines(const Fluid& fluid, const Outcome& out) {
    std::vector<std::string> lines;
    for (const Warning& warning : out.warnings) lines.push_back(warning_line(warning));
    if (auto line = cp_line(fluid, out)) lines.push_back(std::move(*line));
    return lines;
}

RefusalWords refusal_words(const Outcome& out) {
    RefusalWords words{.reason = failure_text(out.failure), .help = {}};
    for (const HelpRow& row : Helps)
        if (row.reason == out.failure.reason) words.help = row.help;
    return words;
}

TrustLine trust_line(const Fluid& fluid, const Outcome& out) {
    const RecordComparison comparison = compare_with_record(fluid, out);
    TrustLine line;
    const auto add = [&line](const char* quantity, const std::optional<ComparedValue>& compared) {
        if (!compared) return;
        const double difference = compared->difference_percent();
        line.figures.push_back({quantity, formatMask(difference, "+0.0;-0.0;0.0") + " %",
                                std::fabs(difference) > LargeDifference});
    };
    add("rho(L)", comparison.rhoL);
    add("p(LV)", comparison.p);
    add("delta(LV)h", comparison.hLV);
    line.head = line.figures.empty() ? nothing_to_compare(fluid, out)
                                     : "EOS against record, " + number(comparison.T) + " K:";
    return line;
}

std::optional<SaturationPicture> saturation_picture(const Fluid& fluid, const Outcome& out) {
    constexpr int Points = 40;
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    if (!(Tcr > 0.0) || !(pcr > 0.0)) return std::nullopt;
    const double T = out.T.value_or(Tcr), p = out.p.value_or(pcr);
    SaturationPicture picture;
    picture.critical = {Tcr, pcr};
    picture.T_low = std::min(0.5 * Tcr, 0.92 * T);
    picture.T_high = 1.35 * Tcr;
    picture.p_low = std::min(0.002 * pcr, p / 4.0);
    picture.p_high = 5.0 * pcr;
    const SaturationInForce saturation(fluid);
    for (int i = 0; i < Points; ++i) {
        const double at = picture.T_low + (Tcr - picture.T_low) * i / Points;
        const std::optional<double> pLV = saturation.p(at);
        if (pLV && *pLV >= picture.p_low && *pLV <= picture.p_high) picture.curve.push_back({at, *pLV});
    }
    if (picture.curve.empty()) return std::nullopt;
    picture.curve.push_back(picture.critical);
    if (out.T && out.p)
        picture.state = SaturationPicture::Point{std::min(T, picture.T_high), std::min(p, picture.p_high)};
    return picture;
}

}  // namespace quom

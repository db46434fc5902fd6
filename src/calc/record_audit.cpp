#include "calc/record_audit.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/audit_run.h"
#include "engine/vapor_pressure.h"
#include "substance/identity.h"

namespace quom {
namespace {

using enum AuditCheck;
using enum AuditMeasure;

// In the order of AuditCheck.
constexpr AuditRule rules[] = {
    {limits_crossed, "limits_crossed", "T(Lo) against T(Hi)", 0, absolute, "K", "a range has a length"},
    {limits_critical, "limits_critical", "T(Hi) against T(cr)", 2, absolute, "K",
     "limits are whole kelvin; above T(cr) there is no saturated liquid"},
    {limits_triple, "limits_triple", "limit against T(tr)", 3, absolute, "K",
     "sets start some kelvin off the melting point that another source has"},
    {boiling_triple, "boiling_triple", "T(nb) against T(tr)", 0, absolute, "K",
     "a substance boils at 101.325 kPa where p(tr) is below it, else it sublimes"},
    {boiling_critical, "boiling_critical", "T(nb) against T(cr)", 0, absolute, "K",
     "a liquid boils below the critical point"},
    {critical_T_of_set, "critical_T_of_set", "T(cr) of a set", 0.4, percent, "K",
     "0.4 % is 2.5 % in p; sources of one critical point differ by less"},
    {critical_p_of_set, "critical_p_of_set", "p(cr) of a set", 2, percent, "kPa",
     "sources of one critical point differ by less"},
    {critical_p, "critical_p", "p(LV) at T(cr)", 2, percent, "kPa",
     "a set that reaches T(cr) ends at p(cr); fits miss it by 1 %"},
    {critical_p_from_evp, "critical_p_from_evp", "p(cr) from p(LV)", 20, percent, "kPa",
     "the equation of Ambrose and Walton finds p(cr) within 3 %, of polar substances within 11 %"},
    {critical_Z, "critical_Z", "Z(cr)", 0.045, absolute, "",
     "0.22 to 0.31 about 0.265: all but the most polar substances"},
    {boiling_p, "boiling_p", "p(LV) at T(nb)", 1, percent, "kPa", "0.3 K of T(nb), the scatter of handbooks"},
    {triple_p, "triple_p", "p(LV) at T(tr)", 5, percent, "kPa", "a set at its cold end"},
    {triple_p_low, "triple_p_low", "p(LV) at T(tr)", 30, percent, "kPa",
     "0.00001 to 0.5 kPa: measurements scatter by this"},
    {omega, "omega", "omega", 0.01, absolute, "", "2.3 % of p(LV) at 0.7 T(cr)"},
    {evp_pair, "evp_pair", "two equations of p(LV)", 3, percent, "kPa", "good sets agree within 1 %"},
    {evp_pair_low, "evp_pair_low", "two equations of p(LV)", 6, percent, "kPa", "1 to 10 kPa"},
    {evp_pair_lowest, "evp_pair_lowest", "two equations of p(LV)", 20, percent, "kPa",
     "0.01 to 1 kPa: measurements scatter by this"},
    {evp_slope, "evp_slope", "slope of ln p over 1/T", 20, percent, "K",
     "from its flattest point to 0.985 T(cr) it rises by 5 to 15 % for normal fluids"},
    {evp_value, "evp_value", "p(LV) within the limits", 0, absolute, "kPa",
     "a set has a value that rises with T within its limits"},
    {clapeyron, "clapeyron", "delta(LV)h against Clapeyron", 6, percent, "kJ/kmol",
     "slope of p(LV) 2 %, volume of the vapor by Peng/Robinson up to 4 % at 0.85 T(cr)"},
    {clapeyron_high, "clapeyron_high", "delta(LV)h against Clapeyron", 10, percent, "kJ/kmol",
     "at 0.9 T(cr) the volumes of Peng/Robinson are off by more"},
    {heat_point, "heat_point", "delta(LV)h at one T", 7, percent, "kJ/kmol",
     "6 % as clapeyron, 1 % of the value itself"},
    {rhoL_falling, "rhoL_falling", "rho(L) over T", 0, absolute, "kg/m^3", "a saturated liquid expands"},
    {rhoL_critical, "rhoL_critical", "rho(L) at T(cr)", 30, percent, "kg/m^3",
     "forms that are not bound to rho(cr) miss it by up to 25 %"},
    {rhoL_benson, "rhoL_benson", "rho(L) at 0.9 T(cr) against Benson", 8, percent, "kg/m^3",
     "the method meets normal fluids within 5 % where p(cr), rho(cr) are right"},
    {cpId_pair, "cpId_pair", "two forms of cp(idG)", 2, percent, "kJ/(kmol K)", "fits agree within 1 %"},
    {cpL_above_ideal, "cpL_above_ideal", "cp(L) against cp(idG)", 0, absolute, "kJ/(kmol K)",
     "the residual part of a liquid is positive"},
    {formation, "formation", "delta(F)g against delta(F)h, S0", 60, absolute, "kJ/kmol",
     "0.2 kJ/(kmol K) in S0: rounding, and 1 bar against 1 atm"},
};

// A set with limits, and the phase it is of.
struct LimitedSet {
    const char* name;
    TLimits limits;
    enum { ideal_gas, liquid, solid } phase;
};

std::vector<LimitedSet> limited_sets(const SubstanceConstants& k) {
    using L = LimitedSet;
    return {{"Wagner", {k.WagnerTLo, k.WagnerTHi}, L::liquid},
            {"Frost/Kalkwarf", {k.KFTLo, k.KFTHi}, L::liquid},
            {"Antoine, low pressure", {k.AntLoTLo, k.AntLoTHi}, L::liquid},
            {"Antoine, high pressure", {k.AntHiTLo, k.AntHiTHi}, L::liquid},
            {"rho(L)", {k.RhoLTLo, k.RhoLTHi}, L::liquid},
            {"delta(LV)h", {k.HLVTLo, k.HLVTHi}, L::liquid},
            {"cp(L)", {k.cpLTLo, k.cpLTHi}, L::liquid},
            {"cp(idG) polynomial", {k.cpPolyTLo, k.cpPolyTHi}, L::ideal_gas},
            {"cp(idG) sinh/cosh", {k.cpDIPPRTLo, k.cpDIPPRTHi}, L::ideal_gas},
            {"rho(S)", {k.RhoSTLo, k.RhoSTHi}, L::solid},
            {"cp(S)", {k.cpSTLo, k.cpSTHi}, L::solid}};
}

int cell_of(std::string_view field) {
    return std::ranges::find(cell_fields(), field, &CellField::name)->cell;
}

// Of the two pairs the constants hold the one that calculations take.
std::vector<HeatPoint> heat_points(std::string_view record, const RecordLayout& layout,
                                   const SubstanceConstants& substance) {
    std::vector<HeatPoint> points;
    const auto add = [&](float h, float T) {
        const HeatPoint point{static_cast<double>(T), static_cast<double>(h)};
        const bool known = point.T > TinyT && point.h > TinyT && point.T < substance.Tcr;
        const bool there = std::ranges::any_of(points, [&](const HeatPoint& p) { return p.T == point.T; });
        if (known && !there) points.push_back(point);
    };
    add(substance.WatsonHLV, substance.WatsonT);
    add(record_cell(record, layout, cell_of("WatsonHLV")), record_cell(record, layout, cell_of("WatsonT")));
    add(record_cell(record, layout, cell_Watson2HLV), record_cell(record, layout, cell_Watson2T));
    return points;
}

// Standard entropies of the elements at 298.15 K [kJ/(kmol K)] an atom: CODATA key values (Cox, Wagman,
// Medvedev 1989); deuterium: JANAF 1998.
struct ElementEntropy {
    std::string_view symbol;
    double S;
};
constexpr ElementEntropy element_entropies[] = {
    {"H", 130.680 / 2}, {"D", 144.960 / 2},  {"He", 126.153}, {"C", 5.74},        {"N", 191.609 / 2},
    {"O", 205.152 / 2}, {"F", 202.791 / 2},  {"Ne", 146.328}, {"Si", 18.81},      {"P", 41.09},
    {"S", 32.054},      {"Cl", 223.081 / 2}, {"Ar", 154.846}, {"Br", 152.21 / 2}, {"Kr", 164.085},
    {"I", 116.14 / 2},  {"Xe", 169.685},     {"Hg", 75.90},   {"U", 50.20}};

// Sum over the atoms of a formula; none with an element that is not in the table.
std::optional<double> entropy_of_elements(std::string_view formula) {
    const auto atoms = elements_of(trim(formula));
    if (!atoms) return std::nullopt;
    double sum = 0.0;
    for (const ElementCount& atom : *atoms) {
        const auto* const found = std::ranges::find(element_entropies, atom.symbol, &ElementEntropy::symbol);
        if (found == std::end(element_entropies)) return std::nullopt;
        sum += found->S * atom.count;
    }
    return sum;
}

}  // namespace

std::span<const AuditRule> audit_rules() { return rules; }

const AuditRule& audit_rule(AuditCheck check) { return rules[static_cast<std::size_t>(check)]; }

double Doubt::difference() const {
    const double by = value - reference;
    return audit_rule(check).measure == percent ? 100.0 * by / reference : by;
}

void AuditRun::compare(AuditCheck check, std::string what, double value, double reference) {
    const Doubt doubt{check, std::move(what), value, reference};
    if (!(std::fabs(doubt.difference()) <= audit_rule(check).tolerance)) doubts.push_back(doubt);
}

std::string at_T(double T) { return " at " + genNum(static_cast<float>(T)) + " K"; }

bool inside(double T, TLimits limits) { return limits.TLo > 0 && T >= limits.TLo && T <= limits.THi; }

void audit_limits(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    for (const LimitedSet& set : limited_sets(k)) {
        const double TLo = set.limits.TLo, THi = set.limits.THi, Ttr = static_cast<double>(k.Ttr);
        if (set.limits == TLimits{}) continue;
        const std::string name = std::string(" of ") + set.name;
        if (!(TLo < THi)) run.add(limits_crossed, "T(Lo)" + name + " against its T(Hi)", TLo, THi);
        if (set.phase == LimitedSet::liquid && k.Tcr > 0.0 &&
            THi > k.Tcr + audit_rule(limits_critical).tolerance)
            run.add(limits_critical, "T(Hi)" + name + " against T(cr)", THi, k.Tcr);
        if (set.phase == LimitedSet::liquid && TLo < Ttr - audit_rule(limits_triple).tolerance)
            run.add(limits_triple, "T(Lo)" + name + " against T(tr)", TLo, Ttr);
        if (set.phase == LimitedSet::solid && Ttr > 0.0 && THi > Ttr + audit_rule(limits_triple).tolerance)
            run.add(limits_triple, "T(Hi)" + name + " against T(tr)", THi, Ttr);
    }
}

// T(tr) < T(nb) < T(cr), but T(nb) < T(tr) where p(tr) is above 101.325 kPa. Z(cr) = pcr M/(rhocr R Tcr).
void audit_constants(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    const double Tnb = static_cast<double>(k.Tnb), Ttr = static_cast<double>(k.Ttr);
    const bool sublimes = static_cast<double>(k.ptr) > pNorm;
    if (Tnb > 0.0 && Ttr > 0.0 && (Tnb < Ttr) != sublimes)
        run.add(boiling_triple,
                sublimes ? "T(nb) above T(tr) with p(tr) above 101.325 kPa" : "T(nb) below T(tr)", Tnb, Ttr);
    if (k.Tcr > 0.0 && Tnb >= k.Tcr) run.add(boiling_critical, "T(nb) against T(cr)", Tnb, k.Tcr);
    if (k.Tcr > 0.0 && k.pcr > 0.0 && k.rhocrDB > 0.0 && k.MolMass > 0.0f)
        run.compare(critical_Z, "Z(cr) of T(cr), p(cr), rho(cr)", k.pcr * k.vcrDB / (RGas * k.Tcr), 0.265);
    if (!(k.Tcr > 0.0)) return;
    const std::pair<const char*, double> sets[] = {{"Wagner", k.WagnerTLo > 0 ? k.WagnerTcr : 0.0f},
                                                   {"delta(LV)h", k.HLVTLo > 0 ? k.HLVTcr : 0.0f},
                                                   {"rho(L)", k.RhoLTLo > 0 ? k.RhoLTcr : 0.0f}};
    for (const auto& [name, Tcr] : sets)
        if (Tcr > 0.0) run.compare(critical_T_of_set, std::string("T(cr) of ") + name, Tcr, k.Tcr);
    if (k.WagnerTLo > 0 && k.pcr > 0.0)
        run.compare(critical_p_of_set, "p(cr) of Wagner", static_cast<double>(k.Wagnerpcr), k.pcr);
}

// delta(F)g = delta(F)h - 298.15 K (S0 - sum of the entropies of the elements)
void audit_formation(AuditRun& run) {
    const SubstanceConstants& k = run.substance;
    if (k.dfH0 == 0.0f || k.dfG0 == 0.0f || k.S0abs == 0.0f) return;
    const std::optional<double> elements = entropy_of_elements(k.StoffFormulaCompact);
    if (!elements) return;
    run.compare(formation, "delta(F)g against delta(F)h, S0", static_cast<double>(k.dfG0),
                static_cast<double>(k.dfH0) - TNorm * (static_cast<double>(k.S0abs) - *elements));
}

std::vector<Doubt> audit_record(std::string_view record, const RecordLayout& layout) {
    AuditRun run{.substance = unpack_record(record, layout, true).constants, .heats = {}, .fluid = {}};
    run.heats = heat_points(record, layout, run.substance);
    ModelSelection models;
    models.EOSKode = Eos::peng_robinson;
    run.fluid = make_fluid({.substance = run.substance, .models = models, .eos_input = {}, .reference = {}});
    for (const auto audit : {audit_limits, audit_constants, audit_vapor_pressure, audit_vaporization,
                             audit_liquid_density, audit_heat_capacities, audit_formation})
        audit(run);
    std::ranges::stable_sort(run.doubts, {}, &Doubt::check);
    return std::move(run.doubts);
}

}  // namespace quom

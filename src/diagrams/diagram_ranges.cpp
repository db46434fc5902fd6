#include <algorithm>
#include <cmath>
#include <iterator>

#include "diagrams/database_kinds.h"
#include "diagrams/diagram_setup.h"
#include "engine/ideal_gas.h"
#include "engine/unit_factors.h"

namespace quom {
namespace {

using R = RangePair;

constexpr double no_volume = 2.0;  // [m^3/kmol] where no v(cr) is known

UnitFactors start_factors(const Fluid& fluid, const Units& units, double T) {
    return unit_factors(fluid, units, T > 0.0 ? T : fluid.substance.Tcr);
}

// v(cr), rho(cr) of the equation of state, or of the record where it knows the V-phase alone; the other
// source where one has none.
double first_above_zero(double a, double b) { return a > 0.0 ? a : b; }

RangeBasis basis_of(const Fluid& fluid, const Units& units) {
    const SubstanceConstants& k = fluid.substance;
    const EosBlock& eos = fluid.eos;
    RangeBasis basis{.units = units, .Tcr = k.Tcr, .pcr = k.pcr, .M = fluid.M, .Ttr = k.Ttr};
    basis.vcr =
        fluid.VPhaseOnly ? first_above_zero(k.vcrDB, eos.vcrEOS) : first_above_zero(eos.vcrEOS, k.vcrDB);
    basis.rhocr = fluid.VPhaseOnly ? first_above_zero(k.rhocrDB, eos.rhocrEOS)
                                   : first_above_zero(eos.rhocrEOS, k.rhocrDB);
    basis.cp = static_cast<double>(cpIdG(k, k.Tcr, fluid.models.cpKode).cp);
    basis.RefKode = fluid.reference.RefKode;
    return basis;
}

double lowest_T(const Fluid& fluid) {
    const auto Ttr = static_cast<double>(fluid.substance.Ttr);
    if (Ttr < 1e-6) return 0.5 * fluid.substance.Tcr;
    const double T = fluid.VPhaseOnly ? 0.3 * Ttr : Ttr - 5.0;
    return T > 0.0 ? T : 0.01;
}

double highest_exergy(double Tcr) {
    struct Step {
        double below;  // T(cr) [K]
        double exergy;
    };
    constexpr Step steps[] = {{150, 30000}, {320, 40000}, {550, 50000}, {620, 70000}};
    const Step* const step = std::ranges::find_if(steps, [Tcr](const Step& s) { return Tcr < s.below; });
    return step == std::end(steps) ? 120000 : step->exergy;
}

// Temperatures, pressures and volumes.
void set_states(RangeTable& table, const Fluid& fluid, const UnitFactors& f) {
    const double Tcr = table.basis.Tcr, pcr = table.basis.pcr, vcr = table.basis.vcr,
                 rhocr = table.basis.rhocr;
    const auto Ttr = static_cast<double>(fluid.substance.Ttr);
    const double warm = 2.3 / (Tcr * f.TFactor);
    const bool no_triple = Ttr - 5.0 < 1.0;  // a light gas would run into the pole of 1/T
    table[R::T] = {lowest_T(fluid) * f.TFactor, 1.1 * Tcr * f.TFactor};
    table[R::T_residual] = {table[R::T].min, std::max(table[R::T].max, 300.0 * f.TFactor)};
    table[R::p] = {0.001 * f.pFactor, 1.4 * pcr * f.pFactor};
    table[R::v] = {0.0, 7.0 * (vcr > 0.0 ? vcr : no_volume) * f.vFactor};
    table[R::rho] = {0.0, 3.5 * (rhocr > 0.0 ? rhocr : fluid.M / no_volume)};
    table[R::pv] = {0.0, vcr > 0.0 ? pcr * f.pFactor * table[R::v].max : 1.5};
    const bool reduced = table.basis.units.VolumeMode == reduced_volume;
    table[R::ln_p] = {-5.0, reduced ? 0.5 : 1.1 * std::log(pcr * f.pFactor)};
    table[R::inverse_T] = {1.0 / ((Tcr + 10.0) * f.TFactor),
                           no_triple ? warm : 1.0 / ((Ttr - 5.0) * f.TFactor)};
    table[R::slope] = {-6000.0, -500.0};
    table[R::inversion_T] = {0.0, 700.0 * f.TFactor};
    table[R::inversion_p] = {0.0, 70000.0 * f.pFactor};
}

void set_functions(RangeTable& table, double uFactor) {
    const bool free = table.basis.RefKode == reference_free;
    table[R::hLV] = {0.0, 50000.0 * uFactor};
    table[R::joule_thomson] = {-0.005, 0.04};
    table[R::a] = {-10000.0, 10000.0};
    table[R::s] = {-250.0 * uFactor, (free ? 250.0 : 200.0) * uFactor};
    table[R::h] =
        free ? RangeLimits{-80000.0 * uFactor, 80000.0 * uFactor} : RangeLimits{-300000.0 * uFactor, 0.0};
    constexpr double any_cp = 100.0;  // [kJ/(kmol K)] without cp(idG)
    table[R::cp] = {-10.0, 3.0 * (table.basis.cp > 0.0 ? table.basis.cp : any_cp) * uFactor};
    table[R::residual_s] = {-498.8706 * uFactor, 20.0 * uFactor};
    table[R::residual_h] = {-49887.06 * uFactor, 1000.0 * uFactor};
    table[R::exergy] = {-1000.0, highest_exergy(table.basis.Tcr)};
}

// Limits of an axis whose pair the table has as it stands or as a mixture.
RangeLimits limits_of(const RangeTable& table, R pair) {
    if (pair == R::p_from_T) return {table[R::T].min, table[R::p].max};
    if (pair == R::T_residual) return {table[R::T].min, table[R::T_residual].max};
    return table[pair];
}

CurveRange as_singles(RangeLimits x, RangeLimits y) {
    if (y.min > y.max) y = {0.0, y.min};
    return {static_cast<float>(x.min), static_cast<float>(y.min), static_cast<float>(x.max),
            static_cast<float>(y.max)};
}

RangeLimits widened(RangeLimits limits) {
    const double by = 0.05 * (limits.max - limits.min);
    return {limits.min - by, limits.max + by};
}

// A function that is the same at both ends.
RangeLimits around(Kind kind, double y) {
    if (kind == Kind::db_rhoS) return {0.0, 2000.0};
    const double by = kind == Kind::db_rhoL || y == 0.0 ? 10.0 : 0.1 * std::fabs(y);
    return {y - by, y + by};
}

// Displayed value of a database function at an end of its validity, or at the nearest T inside that has one.
double end_value(const Fluid& fluid, const Units& units, Kind kind, double T, double inwards) {
    constexpr int most = 100;
    for (int i = 0; i < most; ++i) {
        const double at = T + i * inwards / most;
        const DatabaseValue y = database_value(fluid, database_function(kind), at);
        if (y.found()) return database_displayed(kind, fluid.M, unit_factors(fluid, units, at), y.value);
    }
    return 0.0;
}

CurveRange function_range(Kind kind, const Fluid& fluid, const Units& units) {
    const DatabaseLimits T = database_limits(fluid, database_function(kind));
    const double span = T.THi - T.TLo;
    RangeLimits y{end_value(fluid, units, kind, T.TLo, span), end_value(fluid, units, kind, T.THi, -span)};
    if (y.min > y.max) y = {0.0, y.min};
    if (y.max - y.min <= 1e-9 * std::fabs(y.max)) y = around(kind, y.max);
    const double TFactor = start_factors(fluid, units, 0.0).TFactor;
    const RangeLimits x = widened({T.TLo, T.THi});
    return as_singles({x.min * TFactor, x.max * TFactor}, widened(y));
}

}  // namespace

RangeTable DiagramDefaults(const Fluid& fluid, const Units& units, const RangeTable& before, bool reset) {
    constexpr double least = 0.1;
    RangeTable table;
    table.basis = basis_of(fluid, units);
    if (table.basis.Tcr < least || table.basis.pcr < least) return table;
    const UnitFactors f = start_factors(fluid, units, units.TcrStart);
    set_states(table, fluid, f);
    set_functions(table, f.uFactor);
    if (reset || before.basis != table.basis) return table;
    for (std::size_t i = 0; i < range_pair_count; ++i)
        if (before.pairs[i].is_set()) table.pairs[i] = before.pairs[i];
    return table;
}

CurveRange DiagramRanges(const RangeTable& table, Kind kind, const Fluid& fluid, const Units& units,
                         const CurveRange& now) {
    const KindInfo& info = kind_info(kind);
    if (info.x_range == R::none) return now;
    if (info.x_range == R::function) return function_range(kind, fluid, units);
    RangeLimits y = limits_of(table, info.y_range);
    if (kind == Kind::eH_T_isochore) y.max /= 1.5;
    return as_singles(limits_of(table, info.x_range), y);
}

}  // namespace quom

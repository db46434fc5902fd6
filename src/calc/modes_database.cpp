// Modes 14 to 24: the value of one equation of the database at T.
#include <array>

#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/quantities.h"
#include "engine/condensed_phases.h"
#include "engine/ideal_gas.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {

namespace {

constexpr int outside_allowed = 10;  // [K]

// Value in molar units, 0 where the equation gives none.
using Evaluate = double (*)(Session& s, double T);
using Limits = TLimits (*)(const Session& s);
using Units = std::array<std::string_view, 4>;

constexpr Units density_unit = {" kg/m^3", " kg/m^3", " kg/m^3", " kg/m^3"};
constexpr Units pressure_unit = {" kPa", " kPa", " kPa", " kPa"};
constexpr Units energy_unit = {" kJ/kmol", " K", " ", " kJ/kg"};
constexpr Units capacity_unit = {" kJ/(kmol/)", " ", " 1/K", " kJ/(kg K)"};

struct DatabaseFunction {
    std::string_view label;
    Units units;
    int slot;    // -1 none
    bool molar;  // times uFactor
    Evaluate evaluate;
    Limits limits;  // as stored; TLo 0: none
};

// Limits of an equation without its own: 10 K around a reference temperature, or around triple (else boiling)
// point and critical point.
TLimits around(double low, double high) { return {.TLo = to_i16(low - 10.0), .THi = to_i16(high + 10.0)}; }

TLimits stored_or_default(const Session& s, TLimits stored, float reference = 0.0f) {
    if (stored.TLo != 0) return stored;
    const SubstanceConstants& k = s.substance;
    if (reference > 0.0f) return around(static_cast<double>(reference), static_cast<double>(reference));
    return around(static_cast<double>(k.Ttr > 0.0f ? k.Ttr : k.Tnb), k.Tcr);
}

int cp_form(const Session& s) {
    if (s.models.cpKode != 0) return s.models.cpKode;
    return s.substance.haveSinh ? 2 : (s.substance.havePoly ? 1 : 0);
}

double rho_L(Session& s, double T) {
    const DensityResult r = rhoL_Fu(s, single(T));
    return r.err ? 0.0 : r.rho;
}
double rho_S(Session& s, double T) { return rhoS_Fu(s, single(T)).rho; }
double h_LV(Session& s, double T) {
    const HlvEquation r = hLV_Fu(s, T);
    return r.err ? 0.0 : static_cast<double>(r.value);
}
double cp_idG(Session& s, double T) {
    const CpResult r = cpIdG(s, T, cp_form(s));
    return r.err ? 0.0 : static_cast<double>(r.cp);
}
double cp_L(Session& s, double T) { return s.substance.HasCpL ? static_cast<double>(cpL_Fu(s, T)) : 0.0; }
double cp_S(Session& s, double T) { return s.substance.HasCpS ? static_cast<double>(cpS_Fu(s, T)) : 0.0; }

double p_LV(Session& s, double T, int code, bool available) {
    if (!available) return 0.0;
    const EvpResult r = pLV_EVP(s, T, code);
    return r.err ? 0.0 : r.value;
}
double p_frost(Session& s, double T) { return p_LV(s, T, evp_frost_kalkwarf, s.substance.KFTLo != 0); }
double p_wagner(Session& s, double T) { return p_LV(s, T, evp_wagner, s.substance.WagnerTLo != 0); }
double p_antoine_low(Session& s, double T) {
    return p_LV(s, T, evp_antoine_low, std::fabs(s.substance.AntLo[0]) > 1e-6f);
}
double p_antoine_high(Session& s, double T) {
    return p_LV(s, T, evp_antoine_high, std::fabs(s.substance.AntHi[0]) > 1e-6f);
}

using C = SubstanceConstants;
template <std::int16_t C::*Lo, std::int16_t C::*Hi>
TLimits limits_of(const Session& s) {
    return stored_or_default(s, {.TLo = s.substance.*Lo, .THi = s.substance.*Hi});
}
TLimits limits_rhoL(const Session& s) {
    return stored_or_default(s, {.TLo = s.substance.RhoLTLo, .THi = s.substance.RhoLTHi},
                             s.substance.RhoL[2]);
}
TLimits limits_rhoS(const Session& s) {
    return stored_or_default(s, {.TLo = s.substance.RhoSTLo, .THi = s.substance.RhoSTHi},
                             s.substance.RhoS[2]);
}
TLimits limits_cpIdG(const Session& s) {
    const C& k = s.substance;
    return cp_form(s) == 1 ? stored_or_default(s, {.TLo = k.cpPolyTLo, .THi = k.cpPolyTHi})
                           : stored_or_default(s, {.TLo = k.cpDIPPRTLo, .THi = k.cpDIPPRTHi});
}
TLimits no_limits(const Session&) { return {}; }
double no_value(Session&, double) { return 0.0; }

// Modes 14 to 24 in their order.
constexpr std::array<DatabaseFunction, 11> functions = {{
    {" rho(L) = ", density_unit, slot_rhoL, false, rho_L, limits_rhoL},
    {" delta(LV)h = ", energy_unit, slot_hLV, true, h_LV, limits_of<&C::HLVTLo, &C::HLVTHi>},
    {" cp_IdGas = ", capacity_unit, slot_cpId, true, cp_idG, limits_cpIdG},
    {" cp(L) = ", capacity_unit, slot_cpL, true, cp_L, limits_of<&C::cpLTLo, &C::cpLTHi>},
    {" cp(S) = ", capacity_unit, slot_cpS, true, cp_S, limits_of<&C::cpSTLo, &C::cpSTHi>},
    {" p(LV), extnd. Frost-Kalkwarf = ", pressure_unit, slot_p, false, p_frost,
     limits_of<&C::KFTLo, &C::KFTHi>},
    {" p(LV), Wagner = ", pressure_unit, slot_p, false, p_wagner, limits_of<&C::WagnerTLo, &C::WagnerTHi>},
    {" p(LV), Antoine (Lo-p) = ", pressure_unit, slot_p, false, p_antoine_low,
     limits_of<&C::AntLoTLo, &C::AntLoTHi>},
    {" p(LV), Antoine (Hi-p) = ", pressure_unit, slot_p, false, p_antoine_high,
     limits_of<&C::AntHiTLo, &C::AntHiTHi>},
    {"", density_unit, -1, false, no_value, no_limits},
    {" rho(S) = ", density_unit, -1, false, rho_S, limits_rhoS},
}};

void warn_outside(CalcRun& run, TLimits limits) {
    const double T = run.T;
    if (T >= limits.TLo - outside_allowed && T <= limits.THi + outside_allowed) return;
    const Message message{
        .title = "WARNING",
        .text = "T more than 10 K outside the T limits of the equation\n(T/K = " + genNum(T) + "; " +
                genNum(int{limits.TLo}) + " ... " + genNum(int{limits.THi}) + ")",
        .kind = MessageKind::warning};
    if (run.text) run.out.warning = message.text;
    if (!run.request.Quiet) run.s.tell(message);
}

void no_database_value(CalcRun& run) {
    constexpr std::string_view fault = "error occured during the calculation";
    run.NoResult = run.FetchFailed = true;
    run.out.fault = fault;
    if (run.request.Quiet) return;
    run.s.tell({.title = "Execution not possible", .text = std::string(fault), .kind = MessageKind::stop});
}

void value_texts(CalcRun& run, const DatabaseFunction& f, double value, double displayed, TLimits limits) {
    OutputView& view = run.out.view;
    const Session& s = run.s;
    const auto energy_mode = static_cast<std::size_t>(s.units.EnergyMode);
    show_T(run);
    view.co1.text = " Calculation using the database function " + std::string(f.label) + " Fu(T)";
    view.txtco2.text = std::string(f.label) + genNum(static_cast<float>(displayed));
    view.txtco2.text += f.units[energy_mode < 4 ? energy_mode : 0];
    if (f.units == density_unit) {
        run.line("v  /m^3/kmol = " + formatMask(run.M() / value, "##0.000###"));
        run.line("v  /m^3/kg   = " + formatMask(1.0 / value, "##0.000###"));
    }
    run.line("The function is valid within the following temperature limits:");
    run.line(" T(Lo)/K =" + strNum(int{limits.TLo}));
    run.line(" T(Hi)/K =" + strNum(int{limits.THi}));
}

}  // namespace

AfterBranch mode_database(CalcRun& run) {
    if (!FetchT(run)) return AfterBranch::result_block;
    const DatabaseFunction& f = functions[static_cast<std::size_t>(run.mode() - 14)];
    const TLimits limits = f.limits(run.s);
    const double value = f.evaluate(run.s, run.T);
    warn_outside(run, limits);
    if (f.evaluate == no_value) {
        run.NoResult = true;
        run.out.fault = "no function";
        return AfterBranch::result_block;
    }
    if (!(value > 0.0) || !std::isfinite(value)) {
        no_database_value(run);
        return AfterBranch::result_block;
    }
    const double displayed = f.molar ? value * run.s.units.uFactor : value;
    if (f.slot >= 0) run.out.Result[f.slot] = displayed;
    if (f.slot == slot_hLV) run.out.Result[slot_sLV] = displayed / run.T;
    if (f.slot == slot_rhoL) run.rhoL = value;
    if (f.slot == slot_p) run.p = value;
    if (run.text) value_texts(run, f, value, displayed, limits);
    return AfterBranch::result_block;
}

}  // namespace quom

#include "report/calc_record.h"

#include <cmath>

#include "base/constants.h"

namespace quom {

namespace {

struct SlotInfo {
    std::string_view name;  // in the head of a record
    std::string_view key;   // in JSON
    Quantity quantity;
};

using enum Quantity;
// In the order of the slots.
constexpr std::array<SlotInfo, slot_count> slots = {{
    {"T", "T", T},
    {"p", "p", p},
    {"rho(global)", "rho", rho},
    {"v(global)", "v", v},
    {"rho(L)", "rho_L", rho},
    {"cp(S)", "cp_S", cp},
    {"x", "", T},
    {"cp(idG)", "cpId", cpId},
    {"x", "", T},
    {"v(V)", "v_V", v},
    {"h(V)", "h_V", h},
    {"s(V)", "s_V", Quantity::s},
    {"g(V)", "g_V", g},
    {"u(V)", "u_V", u},
    {"a(V)", "a_V", a},
    {"eH(V)", "eH_V", eH},
    {" eU(V)", "eU_V", eU},
    {"cp(V)", "cp_V", cp},
    {"cV(V)", "cV_V", cV},
    {"v(L)", "v_L", v},
    {"h(L)", "h_L", h},
    {"s(L)", "s_L", Quantity::s},
    {"g(L)", "g_L", g},
    {"u(L)", "u_L", u},
    {"a(L)", "a_L", a},
    {"eH(L)", "eH_L", eH},
    {"eU(L)", "eU_L", eU},
    {"cp(L)", "cp_L", cp},
    {"cV(L)", "cV_L", cV},
    {"delta(LV)h", "hLV", hLV},
    {"delta(LV)s", "sLV", sLV},
    {"alpha(V)", "alpha_V", alpha},
    {"chi(V)", "chi_V", chi},
    {"beta(V)", "beta_V", beta},
    {"delta(V)", "delta_V", delta},
    {"alpha(L)", "alpha_L", alpha},
    {"chi(L)", "chi_L", chi},
    {"beta(L)", "beta_L", beta},
    {"delta(L)", "delta_L", delta},
    {"sound speed(L)", "w_L", w},
    {"sound speed(V)", "w_V", w},
    {"B", "B", B},
}};

using Optional = std::optional<double>;

// Sets slots of values that exist, in the unit of the slot.
struct SlotWriter {
    CalcResult& result;
    const UnitFactors& factors;

    void put(CalcSlot slot, const Optional& molar) const {
        if (!molar || !std::isfinite(*molar)) return;
        result.set(slot, *molar * display_factor(factors, slot_quantity(slot)));
    }
};

// The functions of a phase stand in the slots of its block, the coefficients in four slots of their own.
void put_phase(const SlotWriter& slot, const PhaseOutcome& phase, Phase which) {
    const bool liquid = which == phase_L;
    for (const Quantity q : function_rows) slot.put(function_slot(q, which), function_value(phase, q));
    if (!phase.arrays) return;
    const int first = liquid ? slot_alphaL : slot_alphaV;
    for (const int k : {coef_alpha, coef_chi, coef_beta}) {
        slot.put(static_cast<CalcSlot>(first + k - coef_alpha), phase.arrays->CoefA[k]);
    }
    slot.put(liquid ? slot_deltaL : slot_deltaV, phase.arrays->FuncA[fu_dTdp_h]);
}

}  // namespace

std::string_view slot_name(CalcSlot slot) { return slots[static_cast<std::size_t>(slot)].name; }
std::string_view slot_key(CalcSlot slot) { return slots[static_cast<std::size_t>(slot)].key; }
Quantity slot_quantity(CalcSlot slot) { return slots[static_cast<std::size_t>(slot)].quantity; }

CalcSlot function_slot(Quantity q, int phase) {
    if (q == w) return phase == phase_L ? slot_wL : slot_wV;
    const int row = static_cast<int>(q) - static_cast<int>(v);
    return static_cast<CalcSlot>((phase == phase_L ? slot_vL : slot_vV) + row);
}

std::optional<double> function_value(const PhaseOutcome& phase, Quantity q) {
    switch (q) {
        case Quantity::v:
            return phase.v;
        case Quantity::h:
            return phase.h;
        case Quantity::s:
            return phase.s;
        case Quantity::g:
            return phase.g;
        case Quantity::u:
            return phase.u;
        case Quantity::a:
            return phase.a;
        case Quantity::eH:
            return phase.eH;
        case Quantity::eU:
            return phase.eU;
        case Quantity::cp:
            return phase.cp;
        case Quantity::cV:
            return phase.cV;
        case Quantity::cpId:
            return phase.cpId;
        case Quantity::w:
            return phase.w;
        case Quantity::rho:
            return phase.rho;
        default:
            return std::nullopt;
    }
}

UnitFactors outcome_factors(const Fluid& fluid, const Outcome& outcome, const Units& units) {
    return unit_factors(units, fluid.M, outcome.T.value_or(0.0));
}

CalcResult calc_result(const Outcome& outcome, const UnitFactors& factors) {
    CalcResult result;
    const SlotWriter slot{result, factors};
    slot.put(slot_T, outcome.T);
    slot.put(slot_p, outcome.p);
    const bool liquid_column = outcome.mode == Mode::T_rhoL;
    const bool tank = mode_info(outcome.mode).family == ModeFamily::tank;
    if (!tank) slot.put(liquid_column ? slot_rhoL : slot_rho, outcome.rho);
    if (!tank && !liquid_column) slot.put(slot_v, outcome.v);
    if (!outcome.has_result()) return result;
    slot.put(slot_rhoL, outcome.rhoL_fn ? outcome.rhoL_fn : liquid_column ? outcome.rho : std::nullopt);
    slot.put(slot_cpS, outcome.cpS_fn);
    slot.put(slot_cpId, outcome.cpId_fn);
    for (const Phase phase : {phase_V, phase_L}) {
        if (const PhaseOutcome* there = phase_of(outcome, phase)) put_phase(slot, *there, phase);
    }
    slot.put(slot_cpL, outcome.cpL_fn);
    if (outcome.vaporization) {
        slot.put(slot_hLV, outcome.vaporization->hLV);
        slot.put(slot_sLV, outcome.vaporization->sLV);
    }
    slot.put(slot_B, outcome.B);
    return result;
}

}  // namespace quom

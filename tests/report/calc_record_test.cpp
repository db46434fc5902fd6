// The result vector and the record: which slot holds which field, in which unit, and what is absent.
#include "report/calc_record.h"

#include <gtest/gtest.h>

#include <limits>

#include "report/sample_outcome.h"
#include "report/titles.h"

namespace quom::test {
namespace {

constexpr double u = 3, v = 7;  // factors of energies and volumes
const UnitFactors factors{.uFactor = u, .vFactor = v, .TFactor = 11, .pFactor = 13};

// Slot, the name in the head of the record, and what a two-phase state of mode 1 puts there.
struct SlotCase {
    CalcSlot slot;
    const char* name;
    double expected;  // 0: not set
};
constexpr SlotCase slot_cases[] = {
    {slot_T, "T", 300},
    {slot_p, "p", 500},
    {slot_rho, "rho(global)", 77},
    {slot_v, "v(global)", 0.5 * v},
    {slot_rhoL, "rho(L)", 0},
    {slot_cpS, "cp(S)", 0},
    {slot_x6, "x", 0},
    {slot_cpId, "cp(idG)", 0},
    {slot_x8, "x", 0},
    {slot_vV, "v(V)", 2000 * v},
    {slot_hV, "h(V)", 2001 * u},
    {slot_sV, "s(V)", 2002 * u},
    {slot_gV, "g(V)", 2003 * u},
    {slot_uV, "u(V)", 2004 * u},
    {slot_aV, "a(V)", 2005 * u},
    {slot_eHV, "eH(V)", 2006 * u},
    {slot_eUV, " eU(V)", 2007 * u},
    {slot_cpV, "cp(V)", 2008 * u},
    {slot_cVV, "cV(V)", 2009 * u},
    {slot_vL, "v(L)", 1000 * v},
    {slot_hL, "h(L)", 1001 * u},
    {slot_sL, "s(L)", 1002 * u},
    {slot_gL, "g(L)", 1003 * u},
    {slot_uL, "u(L)", 1004 * u},
    {slot_aL, "a(L)", 1005 * u},
    {slot_eHL, "eH(L)", 1006 * u},
    {slot_eUL, "eU(L)", 1007 * u},
    {slot_cpL, "cp(L)", 1008 * u},
    {slot_cVL, "cV(L)", 1009 * u},
    {slot_hLV, "delta(LV)h", 15000 * u},
    {slot_sLV, "delta(LV)s", 50 * u},
    // CoefA 1 to 3 and FuncA 7 of the sample: 7 + 6 entries stand before CoefA, 4 more before FuncA.
    {slot_alphaV, "alpha(V)", 2115},
    {slot_chiV, "chi(V)", 2116},
    {slot_betaV, "beta(V)", 2117},
    {slot_deltaV, "delta(V)", 2125},
    {slot_alphaL, "alpha(L)", 1115},
    {slot_chiL, "chi(L)", 1116},
    {slot_betaL, "beta(L)", 1117},
    {slot_deltaL, "delta(L)", 1125},
    {slot_wL, "sound speed(L)", 1010},
    {slot_wV, "sound speed(V)", 2010},
    {slot_B, "B", -0.4},
};
static_assert(std::size(slot_cases) == slot_count);

TEST(CalcResult, every_slot_of_a_two_phase_state) {
    Outcome outcome = sample_outcome(Mode::T_rho, PhaseWord::VL, true);
    outcome.B = -0.4;
    const CalcResult result = calc_result(outcome, factors);
    for (std::size_t i = 0; i < std::size(slot_cases); ++i) {
        const SlotCase& c = slot_cases[i];
        EXPECT_EQ(c.slot, static_cast<CalcSlot>(i));
        EXPECT_EQ(slot_name(c.slot), c.name);
        EXPECT_DOUBLE_EQ(result[c.slot], c.expected) << c.name;
        EXPECT_EQ(result.has(c.slot), c.expected != 0.0) << c.name;
    }
}

// Slots that belong to one mode.
TEST(CalcResult, slots_by_mode) {
    Outcome liquid = sample_outcome(Mode::T_rhoL, PhaseWord::L);
    const CalcResult by_rhoL = calc_result(liquid, factors);
    EXPECT_EQ(by_rhoL[slot_rhoL], 77);
    EXPECT_FALSE(by_rhoL.has(slot_rho));
    EXPECT_FALSE(by_rhoL.has(slot_v));
    EXPECT_EQ(by_rhoL[slot_hL], 1001 * u);
    EXPECT_FALSE(by_rhoL.has(slot_hV));

    const CalcResult tank = calc_result(sample_outcome(Mode::tank_global, PhaseWord::VL), factors);
    EXPECT_FALSE(tank.has(slot_rho));
    EXPECT_FALSE(tank.has(slot_v));
    EXPECT_EQ(tank[slot_T], 300);
    EXPECT_EQ(tank[slot_p], 500);

    const struct {
        Mode mode;
        std::optional<double> Outcome::*field;
        CalcSlot slot;
        double factor;
    } functions[] = {{Mode::fn_rhoL, &Outcome::rhoL_fn, slot_rhoL, 1},
                     {Mode::fn_cpIdG, &Outcome::cpId_fn, slot_cpId, u},
                     {Mode::fn_cpL, &Outcome::cpL_fn, slot_cpL, u},
                     {Mode::fn_cpS, &Outcome::cpS_fn, slot_cpS, u}};
    for (const auto& f : functions) {
        Outcome outcome;
        outcome.mode = f.mode;
        outcome.T = 300;
        outcome.*f.field = 88;
        const CalcResult result = calc_result(outcome, factors);
        EXPECT_EQ(result[f.slot], 88 * f.factor);
        EXPECT_EQ(result.present.count(), 2u);  // T and the value
    }
}

TEST(CalcResult, a_zero_is_a_value_and_a_gap_is_none) {
    Outcome outcome = sample_outcome(Mode::T_p, PhaseWord::V, true);
    outcome.V->h = 0.0;
    outcome.V->s.reset();
    outcome.V->arrays->FuncA[fu_dTdp_h] = 0.0;
    outcome.V->arrays->CoefA[coef_chi] = std::numeric_limits<double>::quiet_NaN();
    const CalcResult result = calc_result(outcome, factors);
    EXPECT_TRUE(result.has(slot_hV));
    EXPECT_EQ(result[slot_hV], 0.0);
    EXPECT_TRUE(result.has(slot_deltaV));
    EXPECT_FALSE(result.has(slot_sV));
    EXPECT_FALSE(result.has(slot_chiV));
    EXPECT_EQ(result[slot_chiV], 0.0);
}

// A fluid above the critical point has both columns of a list and one phase.
TEST(CalcResult, one_fluid_fills_the_slots_of_its_phase) {
    for (const PhaseWord word : {PhaseWord::L, PhaseWord::V}) {
        Outcome outcome = sample_outcome(Mode::T_p, word);
        outcome.IsL = true;
        outcome.IsV = true;
        outcome.L = sample_phase(1000, false);
        outcome.V = sample_phase(1000, false);
        const CalcResult result = calc_result(outcome, factors);
        EXPECT_EQ(result.has(slot_vL), word == PhaseWord::L);
        EXPECT_EQ(result.has(slot_vV), word == PhaseWord::V);
        EXPECT_EQ(batch_result(outcome, factors).phase(), word == PhaseWord::L ? " L " : " V ");
    }
}

TEST(CalcResult, a_failed_point_keeps_what_was_specified) {
    Outcome outcome;
    outcome.mode = Mode::T_rho;
    outcome.failure = {Reason::volume_below_b, 0.02, 0.05};
    outcome.T = 300;
    outcome.rho = 2000;
    const CalcResult result = calc_result(outcome, factors);
    EXPECT_EQ(result[slot_T], 300);
    EXPECT_EQ(result[slot_rho], 2000);
    EXPECT_EQ(result.present.count(), 2u);
    const BatchResult record = batch_result(outcome, factors);
    EXPECT_FALSE(record.has_result());
    EXPECT_EQ(record.TCalc, 0.0f);
}

TEST(BatchResult, delta_h_in_modes_4_to_7_only) {
    for (const ModeInfo& mode : mode_list()) {
        const int number = number_of(mode.mode);
        if (mode.family == ModeFamily::database || mode.family == ModeFamily::process) continue;
        const BatchResult record = batch_result(sample_outcome(mode.mode, PhaseWord::VL), factors);
        EXPECT_EQ(record.hLVCalc, number >= 4 && number <= 7 ? 15000.0f : 0.0f) << number;
        EXPECT_EQ(record.phase(), "V+L");
        EXPECT_EQ(record.TCalc, 300.0f);
        EXPECT_EQ(record.pCalc, 500.0f);
        EXPECT_EQ(record.rhoLCalc, 1011.0f);
        EXPECT_EQ(record.rhoVCalc, 2011.0f);
    }
}

TEST(BatchResult, functions_of_mode_8) {
    const BatchResult both = batch_result(sample_outcome(Mode::functions, PhaseWord::VL), factors);
    EXPECT_EQ(both.h, static_cast<float>(2001 * u));  // V where there is one
    EXPECT_EQ(both.s, static_cast<float>(2002 * u));
    EXPECT_EQ(both.g, static_cast<float>(2003 * u));
    EXPECT_EQ(both.eH, static_cast<float>(2006 * u));
    EXPECT_EQ(both.eU, static_cast<float>(2007 * u));
    EXPECT_EQ(batch_result(sample_outcome(Mode::functions, PhaseWord::L), factors).h,
              static_cast<float>(1001 * u));
    EXPECT_EQ(batch_result(sample_outcome(Mode::T_p, PhaseWord::V), factors).h, 0.0f);
}

// Row, its label, and the entry of the arrays that it shows.
TEST(BatchResult, extended_rows_by_label) {
    const struct {
        std::size_t row;
        const char* label;
        double (*entry)(const PhaseArrays&);
    } rows[] = {
        {0, " (dp/dV) at T", [](const PhaseArrays& x) { return x.DerivA[dpdv_T]; }},
        {1, " (dp/dT) at v", [](const PhaseArrays& x) { return x.DerivA[dpdT_v]; }},
        {2, " (dV/dp) at T", [](const PhaseArrays& x) { return x.DerivA[dvdp_T]; }},
        {3, " (dV/dT) at p", [](const PhaseArrays& x) { return x.DerivA[dvdT_p]; }},
        {4, " (dT/dV) at p", [](const PhaseArrays& x) { return x.DerivA[dTdv_p]; }},
        {5, " (dT/dp) at v", [](const PhaseArrays& x) { return x.DerivA[dTdp_v]; }},
        {6, " alpha/(1/K)  ", [](const PhaseArrays& x) { return x.CoefA[coef_alpha]; }},
        {7, "   chi/(1/kPa)", [](const PhaseArrays& x) { return x.CoefA[coef_chi]; }},
        {8, "  beta/(1/K)  ", [](const PhaseArrays& x) { return x.CoefA[coef_beta]; }},
        {9, "       d2p/dV2", [](const PhaseArrays& x) { return x.Deriv2A[d2pdv2]; }},
        {12, "       d2V/dT2", [](const PhaseArrays& x) { return x.Deriv2A[d2vdT2]; }},
        {13, "       d2T/dV2", [](const PhaseArrays& x) { return x.Deriv2A[d2Tdv2]; }},
        {14, "     ln (phi*)", [](const PhaseArrays& x) { return x.FuncA[fu_lnphi]; }},
        {15, "    dln phi/dT", [](const PhaseArrays& x) { return x.FuncA[fu_dlnphidT]; }},
        {16, "  d2ln phi/dT2", [](const PhaseArrays& x) { return x.FuncA[fu_d2lnphidT2]; }},
        {17, "   (s-s_idG)/R", [](const PhaseArrays& x) { return x.FuncA[fu_s_res]; }},
        {18, "   (h-h_idG)/R", [](const PhaseArrays& x) { return x.FuncA[fu_h_res]; }},
        {19, "   (g-g_idG)/R", [](const PhaseArrays& x) { return x.FuncA[fu_g_res]; }},
        {20, " (cp-cp_idG)/R", [](const PhaseArrays& x) { return x.FuncA[fu_cp_res]; }},
        {21, " (dT/dp) at H", [](const PhaseArrays& x) { return x.FuncA[fu_dTdp_h]; }},
        {22, " cv/kJ/kmol/K ", [](const PhaseArrays& x) { return x.FuncA[fu_cV]; }},
        {23, " cp/kJ/kmol/K ", [](const PhaseArrays& x) { return x.FuncA[fu_cp]; }},
    };
    const Outcome outcome = sample_outcome(Mode::T_p, PhaseWord::VL, true);
    const BatchResult record = batch_result(outcome, factors);
    for (const auto& r : rows) {
        EXPECT_EQ(extended_label_plain(r.row), r.label);
        EXPECT_EQ(record.Extended[r.row].L, static_cast<float>(r.entry(*outcome.L->arrays))) << r.label;
        EXPECT_EQ(record.Extended[r.row].V, static_cast<float>(r.entry(*outcome.V->arrays))) << r.label;
    }
    EXPECT_EQ(extended_label(9), "       d2p/dV²");
    EXPECT_EQ(extended_label(10), "");
    EXPECT_EQ(extended_label(11), "");
}

TEST(Titles, by_mode) {
    const CalcSetup global{}, benson{.GlobalCalc = false}, database{.GlobalCalc = false, .BensonRhoL = false};
    const struct {
        Mode mode;
        const CalcSetup& setup;
        const char* title;
        const char* caption;
    } cases[] = {
        {Mode::T_p, global, " T, p => rho", "Result of the Calculation:  T, p => rho"},
        {Mode::equilibrium_T, global, " T => p(LV) (GLOBAL calculation)",
         "Result of the Calculation:  T => p(LV) (GLOBAL calculation)"},
        {Mode::equilibrium_p, benson, " p => T(LV) (PARTIAL calculation)",
         "Result of the Calculation:  p => T(LV) (PARTIAL calculation)"},
        {Mode::functions, benson, " thermodynamic functions Fu(T) (GLOBAL calculation)",
         "Result of the Calculation:  thermodynamic functions Fu(T) (GLOBAL calculation)"},
        {Mode::tank_global, global, "Phases and Pressure in a Tank",
         "Phases and Pressure in a Tank (GLOBAL calculation)"},
        {Mode::tank_partial, benson, "Phases and Pressure in a Tank",
         "Phases and Pressure in a Tank (PARTIAL calculation, rho(L))  (acc. BENSON's method)"},
        {Mode::tank_partial, database, "Phases and Pressure in a Tank",
         "Phases and Pressure in a Tank (PARTIAL calculation, rho(L))  from database)"},
        {Mode::fn_rhoL, global, "", "Result of the Calculation: "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(CalcTitle(c.mode, c.setup), c.title);
        EXPECT_EQ(CalcCaption(c.mode, c.setup), c.caption);
    }
}

}  // namespace
}  // namespace quom::test

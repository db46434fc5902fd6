// Failures of a calculation with their reasons and numbers, what they leave, and the reservations on results.
#include "calc/calc_fixture.h"
#include "calc/mode_table.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

struct Case {
    const char* name;
    Mode mode;
    double T, p, rho;
    Eos eos;
    Reason reason;
    const char* words;  // of the sentence
};
class Failures : public ::testing::TestWithParam<Case> {};

constexpr Eos PR = Eos::peng_robinson, virial_PR = Eos::virial_peng_robinson;

TEST_P(Failures, tell_their_reason_and_leave_what_was_specified) {
    const Case& c = GetParam();
    Bench b(starter_substance(propane), c.eos, {.b0 = 0.3});
    b.coefficients = true;
    const Outcome r = b.run(c.mode, c.T, c.p, c.rho);
    EXPECT_EQ(reason_name(r.failure.reason), reason_name(c.reason));
    EXPECT_NE(failure_text(r.failure).find(c.words), std::string::npos) << failure_text(r.failure);
    EXPECT_FALSE(r.has_result() || r.IsL || r.IsV || r.L || r.V || r.quality || r.eos || r.mixture);
    EXPECT_EQ(r.phase, PhaseWord::none);
    EXPECT_EQ(r.region, 0);
    const unsigned specified = mode_info(c.mode).specified;
    EXPECT_TRUE(!r.T || (specified & spec_T));
    EXPECT_TRUE(!r.p || (specified & spec_p));
    if (c.reason == Reason::volume_below_b) {
        EXPECT_EQ(*r.rho, c.rho);
        EXPECT_LT(r.failure.value, r.failure.limit);
    }
}
INSTANTIATE_TEST_SUITE_P(
    Modes, Failures,
    ::testing::Values(
        Case{"no T", Mode::T_rho, 0, 0, 100, PR, Reason::no_T_given, "No T"},
        Case{"no rho", Mode::T_rho, 300, 0, 0, PR, Reason::no_rho_given, "No rho"},
        Case{"no rho L", Mode::T_rhoL, 300, 0, 0, PR, Reason::no_rho_given, "No rho"},
        Case{"no p", Mode::T_p, 300, 0, 0, PR, Reason::no_p_given, "No p"},
        Case{"negative p", Mode::T_p, 300, -1, 0, PR, Reason::p_not_positive, "p has to be above 0"},
        Case{"negative T", Mode::T_p, -26.85, 500, 0, PR, Reason::T_not_positive, "T has to be above 0"},
        Case{"negative rho", Mode::T_rho, 300, 0, -5, PR, Reason::rho_not_positive, "rho has to be above 0"},
        Case{"no T in 3", Mode::T_p, 0, 500, 0, PR, Reason::no_T_given, "No T"},
        Case{"no p in 8", Mode::functions, 300, 0, 0, PR, Reason::no_p_given, "No p"},
        Case{"below b", Mode::T_rho, 300, 0, 2000, PR, Reason::volume_below_b, "covolume b = 5.62801"},
        Case{"below b above Tcr", Mode::T_rho, 400, 0, 2000, PR, Reason::volume_below_b, "v = 0.0220478"},
        Case{"below B", Mode::T_rho, 600, 0, 2000, Eos::virial_manual, Reason::volume_below_B, "B = 0.3"},
        Case{"B above v", Mode::T_p, 200, 5000, 0, virial_PR, Reason::volume_not_positive,
             "200 K and 5000 kPa"},
        Case{"T above Tcr", Mode::equilibrium_T, 400, 0, 0, PR, Reason::above_critical_T,
             "400 K is not below T(cr) = 369.89 K"},
        Case{"p above pcr", Mode::equilibrium_p, 0, 9000, 0, PR, Reason::above_critical_p,
             "9000 kPa is not below p(cr) = 4251.2 kPa"},
        Case{"T above Tcr in 6", Mode::vaporization_T, 400, 0, 0, PR, Reason::above_critical_T, "T(cr)"},
        Case{"p above pcr in 7", Mode::vaporization_p, 0, 9000, 0, PR, Reason::above_critical_p, "p(cr)"},
        Case{"no T at p and rho", Mode::p_rho, 0, 500, 3000, PR, Reason::no_T_at_p_rho,
             "500 kPa and 3000 kg/m^3"},
        Case{"no solid", Mode::fn_cpS, 80, 0, 0, PR, Reason::no_database_equation, "no such equation"},
        Case{"no Antoine", Mode::fn_antoine_high, 300, 0, 0, PR, Reason::no_database_equation,
             "no such equation"},
        Case{"above Wagner", Mode::fn_wagner, 400, 0, 0, PR, Reason::above_wagner_T, "Wagner"},
        Case{"hLV above", Mode::fn_hLV, 400, 0, 0, PR, Reason::no_value, "no value above 0"},
        Case{"no function", Mode::empty, 300, 0, 0, PR, Reason::no_function, "no function"},
        Case{"no mode", Mode::none, 300, 500, 0, PR, Reason::no_mode, "no such calculation"}),
    [](const auto& test) {
        std::string name = std::to_string(test.index) + "_" + test.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

// The limits themselves: T(cr) and p(cr) are refused, the values below are not.
TEST(Failures, of_an_equilibrium_begin_at_the_critical_point) {
    const Bench b;
    const double Tcr = b.substance().Tcr, pcr = b.substance().pcr;
    for (const Mode mode : {Mode::equilibrium_T, Mode::vaporization_T}) {
        EXPECT_EQ(b.run(mode, Tcr, 0.0).failure.reason, Reason::above_critical_T);
        EXPECT_TRUE(b.run(mode, Tcr * (1.0 - 1e-6), 0.0).has_result());
    }
    for (const Mode mode : {Mode::equilibrium_p, Mode::vaporization_p}) {
        EXPECT_EQ(b.run(mode, 0.0, pcr).failure.reason, Reason::above_critical_p);
        EXPECT_TRUE(b.run(mode, 0.0, pcr * (1.0 - 1e-5)).has_result());
    }
}

TEST(Failures, without_vapor_pressure_equation_and_data_the_equilibrium_is_refused) {
    Bench b;
    b.change([](FluidInput& x) { x.models.EVPKode = Evp::none; });
    b.setup.GlobalCalc = false;
    EXPECT_EQ(b.run(Mode::equilibrium_T, 300.0, 0.0).failure.reason, Reason::no_p_available);
    EXPECT_EQ(b.run(Mode::equilibrium_p, 0.0, 500.0).failure.reason, Reason::no_T_available);
}

// Without its constants an equation would calculate an ideal gas.
TEST(Failures, of_an_equation_of_state_without_constants_are_no_ideal_gas) {
    SubstanceConstants unknown = starter_substance(propane);
    unknown.Tcr = 0.0;
    for (const Eos eos : {Eos::none, Eos::peng_robinson, Eos::tovarn_ji_1, Eos::virial_peng_robinson}) {
        const Bench b(eos == Eos::none ? starter_substance(propane) : unknown, eos);
        for (const Mode mode : {Mode::T_rho, Mode::T_rhoL, Mode::T_p, Mode::functions, Mode::p_rho}) {
            const Outcome r = b.run(mode, 300.0, 500.0, 10.0);
            EXPECT_FALSE(r.has_result()) << number_of(eos);
            EXPECT_EQ(r.failure.reason, b.fluid->eos_reason);
            EXPECT_FALSE(r.L || r.V);
        }
        EXPECT_TRUE(b.run(Mode::fn_rhoL, 300.0, 0.0).has_result());
    }
}

TEST(Failures, of_a_missing_molar_mass_are_told) {
    SubstanceConstants unknown = starter_substance(propane);
    unknown.MolMass = 0.0f;
    const Bench b(unknown, PR);
    EXPECT_EQ(b.run(Mode::T_rho, 300.0, 0.0, 10.0).failure.reason, Reason::no_molar_mass);
    EXPECT_EQ(b.tank(Mode::tank_global, 1.0, 1.0, 300.0).failure.reason, Reason::no_molar_mass);
    const Outcome r = b.run(Mode::T_p, 300.0, 500.0);
    EXPECT_TRUE(r.has_result());
    EXPECT_FALSE(r.V->rho);
}

// Reservations

// At T(tr) itself there is no word, below it there is one, in every mode that knows a T and no solid.
TEST(Warnings, tell_of_the_triple_point) {
    Bench b(water);
    const double Ttr = static_cast<double>(b.substance().Ttr);
    const auto tells = [&](Mode mode, double T) {
        const ModeInfo& info = mode_info(mode);
        if (info.family == ModeFamily::tank)
            return warned(b.tank(mode, 1.0, 1.0, T), WarningKind::below_triple_point);
        const double p = pLV_EOS(*b.fluid, T).p;
        const bool by_p = mode == Mode::equilibrium_p;
        return warned(b.run(mode, by_p ? 0.0 : T, p, 1.0), WarningKind::below_triple_point);
    };
    for (const ModeInfo& mode : mode_list()) {
        if (mode.mode == Mode::vaporization_p || mode.mode == Mode::p_rho || mode.mode == Mode::process)
            continue;
        SCOPED_TRACE(static_cast<int>(mode.mode));
        EXPECT_FALSE(tells(mode.mode, Ttr * 1.00001));
        EXPECT_EQ(tells(mode.mode, Ttr * 0.99999), !mode.solid_allowed);
        EXPECT_EQ(tells(mode.mode, Ttr * 0.85), !mode.solid_allowed);
    }
    const Outcome r = b.run(Mode::T_p, 270.0, 50.0);
    EXPECT_EQ(r.warnings.front(),
              (Warning{.kind = WarningKind::below_triple_point, .value = 270.0, .low = Ttr}));
    EXPECT_TRUE(Bench(water, Eos::ideal_gas).run(Mode::T_p, 274.0, 0.5).warnings.empty());
}

struct Range {
    const char* name;
    Mode mode;
    double T;
    WarningKind kind;
    bool expected;
    int offset;
};

// Propane: rho(L) 86 ... 360 K, Wagner 86 ... 369 K and so on as the record has them.
TEST(Warnings, tell_of_ranges_and_by_how_much) {
    Bench b;
    const SubstanceConstants k = b.substance();
    const double wagner = k.WagnerTLo, rhoL = k.RhoLTLo, hlv = k.HLVTLo;
    b.change([](FluidInput& x) { x.models.HLVKode = Hlv::equation; });
    b.setup = {.GlobalCalc = false, .BensonRhoL = false, .RhoLWanted = true};
    const Range cases[] = {
        {"function inside", Mode::fn_rhoL, rhoL - 10.0, WarningKind::function_range, false, 0},
        {"function outside", Mode::fn_rhoL, rhoL - 10.1, WarningKind::function_range, true, -10},
        {"Wagner as a function", Mode::fn_wagner, wagner - 10.0, WarningKind::function_range, false, 0},
        {"Wagner beyond", Mode::fn_wagner, wagner - 11.0, WarningKind::function_range, true, -11},
        {"p(LV) at the limit", Mode::equilibrium_T, wagner - 10.0, WarningKind::evp_range, false, 0},
        {"p(LV) beyond", Mode::equilibrium_T, wagner - 11.0, WarningKind::evp_range, true, -11},
        {"rho(L) at the limit", Mode::equilibrium_T, rhoL - 5.0, WarningKind::rhoL_range, false, 0},
        {"rho(L) beyond", Mode::equilibrium_T, rhoL - 6.0, WarningKind::rhoL_range, true, -6},
        {"delta(LV)h at the limit", Mode::vaporization_T, hlv - 5.0, WarningKind::hlv_range, false, 0},
        {"delta(LV)h beyond", Mode::vaporization_T, hlv - 6.0, WarningKind::hlv_range, true, 6},
    };
    for (const Range& c : cases) {
        SCOPED_TRACE(c.name);
        const Outcome r = b.run(c.mode, c.T, 0.0);
        EXPECT_EQ(warned(r, c.kind), c.expected);
        for (const Warning& warning : r.warnings) {
            if (warning.kind != c.kind) continue;
            EXPECT_EQ(warning.offset, c.offset);
            EXPECT_EQ(warning.value, c.T);
            EXPECT_GT(warning.high, warning.low);
        }
    }
    // From p the vapor pressure equation is asked for T: 5 K are allowed.
    const double p5 = pLV_EVP(k, wagner - 4.0, Evp::wagner).value,
                 p7 = pLV_EVP(k, wagner - 7.0, Evp::wagner).value;
    EXPECT_FALSE(warned(b.run(Mode::equilibrium_p, 0.0, p5), WarningKind::evp_range));
    EXPECT_TRUE(warned(b.run(Mode::equilibrium_p, 0.0, p7), WarningKind::evp_range));
}

// An equation without limits of its own: 10 K around the reference temperature, and then 10 K more.
TEST(Warnings, take_default_limits) {
    SubstanceConstants k = starter_substance(propane);
    k.RhoLTLo = 0;
    k.RhoLTHi = 0;
    k.RhoL = {500.0f, -1.0f, 290.0f};  // a single point with its slope
    k.WagnerTLo = 0;
    const Bench b(k, PR);
    EXPECT_EQ(b.run(Mode::fn_rhoL, 300.0, 0.0).limits, (TLimits{280, 300}));
    EXPECT_FALSE(warned(b.run(Mode::fn_rhoL, 309.0, 0.0), WarningKind::function_range));
    EXPECT_TRUE(warned(b.run(Mode::fn_rhoL, 311.0, 0.0), WarningKind::function_range));
    EXPECT_TRUE(warned(b.run(Mode::fn_rhoL, 269.0, 0.0), WarningKind::function_range));
    EXPECT_TRUE(warned(b.run(Mode::empty, 300.0, 0.0), WarningKind::function_range));
}

// An equation of the V-phase only tells where it has left its range; a cubic one where the vapor pressure
// equation of the PARTIAL concept has the other phase.
TEST(Warnings, tell_of_another_phase) {
    const double pLV = pLV_EVP(starter_substance(propane), 300.0, Evp::wagner).value;
    const Bench virial(propane, virial_PR);
    for (const Mode mode : {Mode::T_p, Mode::functions}) {
        EXPECT_TRUE(warned(virial.run(mode, 300.0, 1.001 * pLV), WarningKind::beyond_pLV));
        EXPECT_FALSE(warned(virial.run(mode, 300.0, 0.999 * pLV), WarningKind::beyond_pLV));
        EXPECT_FALSE(warned(virial.run(mode, 370.0, 8000.0), WarningKind::beyond_pLV));
    }
    const double B = VirialB(*virial.fluid, 350.0), M = virial.fluid->M;
    const Outcome dense = virial.run(Mode::T_rho, 350.0, 0.0, M / (0.99 * -B));
    ASSERT_TRUE(dense.has_result());
    EXPECT_TRUE(warned(dense, WarningKind::below_B));
    EXPECT_EQ(dense.eos->B, B);
    EXPECT_FALSE(warned(virial.run(Mode::T_rho, 350.0, 0.0, M / (1.01 * -B)), WarningKind::below_B));

    Bench partial(propane, Eos::van_der_waals);
    partial.change([](FluidInput& x) { x.models.Konzept = false; });
    const double p_eos = pLV_EOS(*partial.fluid, 300.0).p;
    const double between = 0.5 * (p_eos + pLV);
    EXPECT_TRUE(warned(partial.run(Mode::T_p, 300.0, between), WarningKind::other_phase_by_evp));
    EXPECT_FALSE(warned(partial.run(Mode::T_p, 300.0, 0.5 * pLV), WarningKind::other_phase_by_evp));
    EXPECT_FALSE(warned(partial.run(Mode::T_p, 370.0, between), WarningKind::other_phase_by_evp));
    const Bench global(propane, Eos::van_der_waals);
    EXPECT_FALSE(warned(global.run(Mode::T_p, 300.0, between), WarningKind::other_phase_by_evp));
}

// Without cp(idG) there is no h, s, u, g, a, exergy, cp, cV, w anywhere; residual functions and volumes
// stand.
TEST(Warnings, without_cp_of_the_ideal_gas_absolute_functions_are_absent) {
    SubstanceConstants k = starter_substance(propane);
    k.havePoly = false;
    k.haveSinh = false;
    k.cpPoly = {};
    k.cpDIPPR = {};
    Bench b(k, PR);
    b.coefficients = true;
    for (const Mode mode : {Mode::T_p, Mode::functions, Mode::equilibrium_T, Mode::T_rho}) {
        const Outcome r = b.run(mode, 300.0, 500.0, 100.0);
        ASSERT_TRUE(r.has_result());
        EXPECT_TRUE(warned(r, WarningKind::no_ideal_gas_cp));
        EXPECT_FALSE(warned(r, WarningKind::no_environment));
        EXPECT_EQ(r.V->functions_reason, Reason::no_ideal_gas_cp);
        const PhaseOutcome& V = *r.V;
        EXPECT_FALSE(V.h || V.s || V.u || V.g || V.a || V.eH || V.eU || V.cp || V.cV || V.w || V.cpId);
        EXPECT_TRUE(V.lnphi);
        EXPECT_TRUE(std::isfinite(V.arrays->FuncA[fu_h_res]));
        EXPECT_TRUE(std::isnan(V.arrays->FuncA[fu_cp]));
    }
    EXPECT_EQ(b.run(Mode::fn_cpIdG, 300.0, 0.0).failure.reason, Reason::no_ideal_gas_cp);
}

TEST(Warnings, tell_of_missing_surroundings_and_omega) {
    Bench b;
    b.change([](FluidInput& x) { x.reference.TEnv = 1e-6; });
    const Outcome r = b.run(Mode::functions, 300.0, 500.0);
    EXPECT_TRUE(warned(r, WarningKind::no_environment));
    EXPECT_TRUE(r.V->h && !r.V->eH && !r.V->eU);

    SubstanceConstants k = starter_substance(propane);
    k.omega = 0.0;
    EXPECT_TRUE(warned(Bench(k, PR).run(Mode::T_p, 300.0, 500.0), WarningKind::no_omega));
    EXPECT_FALSE(warned(Bench(k, Eos::redlich_kwong).run(Mode::T_p, 300.0, 500.0), WarningKind::no_omega));
    EXPECT_FALSE(warned(Bench(k, PR).run(Mode::fn_rhoL, 300.0, 0.0), WarningKind::no_omega));
    for (const VirialOutcome& row : Bench(k, PR).run(Mode::virial, 300.0, 0.0).virial)
        EXPECT_EQ(row.omega_zero,
                  row.code == Eos::virial_soave || row.code == virial_PR || row.code == Eos::pitzer_curl);
}

}  // namespace
}  // namespace quom::test

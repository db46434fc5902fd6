// Numbers of the calculations: against the engine, against identities, against each other.
#include <array>

#include "calc/calc_fixture.h"
#include "calc/mode_table.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

// Two-phase states

struct TwoPhase {
    std::string_view cas;
    Eos eos;
    double T, rho;
};
class LeverRule : public ::testing::TestWithParam<TwoPhase> {};

// v = y v(V) + (1 - y) v(L), g(L) = g(V), delta(LV)h = h(V) - h(L) = T delta(LV)s, and the same state from p.
TEST_P(LeverRule, holds) {
    const TwoPhase& c = GetParam();
    Bench b(c.cas, c.eos);
    const Outcome r = b.run(Mode::T_rho, c.T, 0.0, c.rho);
    ASSERT_TRUE(r.has_result()) << failure_text(r.failure);
    ASSERT_TRUE(r.two_phase() && r.IsL && r.IsV && r.mixture);
    const double v = b.fluid->M / c.rho, y = *r.quality;
    expect_relative(*r.v, v, 1e-14, "v");
    expect_relative(y * r.V->v + (1.0 - y) * r.L->v, v, 1e-12, "lever rule");
    expect_relative(*r.mixture->rho, c.rho, 1e-12, "density of the mixture");
    expect_relative(*r.mixture->h, y * *r.V->h + (1.0 - y) * *r.L->h, 1e-12, "h of the mixture");
    EXPECT_GT(r.V->v, r.L->v);
    EXPECT_NEAR(*r.L->g, *r.V->g, 1e-10 * RGas * c.T);
    EXPECT_NEAR(*r.mixture->g, *r.L->g, 1e-10 * RGas * c.T);
    const double hLV = *r.V->h - *r.L->h;
    EXPECT_NEAR(*r.vaporization->hLV, hLV, 0.5 + 1e-9 * hLV);  // a whole number of kJ/kmol
    EXPECT_EQ(*r.vaporization->hLV, std::round(*r.vaporization->hLV));
    expect_relative(*r.vaporization->sLV, *r.vaporization->hLV / c.T, 1e-14, "s");
    EXPECT_NEAR(hLV / c.T, *r.V->s - *r.L->s, 1e-9 * hLV / c.T);

    const Outcome at_T = b.run(Mode::equilibrium_T, c.T, 0.0);
    EXPECT_EQ(*at_T.p, *r.p);
    EXPECT_EQ(at_T.L->v, r.L->v);
    EXPECT_EQ(at_T.saturation, SaturationSource::eos);
    const Outcome at_p = b.run(Mode::equilibrium_p, 0.0, *r.p);
    expect_relative(*at_p.T, c.T, 1e-9, "T(LV)");
    const Outcome back = b.run(Mode::p_rho, 0.0, *r.p, c.rho);
    ASSERT_TRUE(back.has_result()) << failure_text(back.failure);
    EXPECT_TRUE(back.two_phase());
    expect_relative(*back.T, c.T, 1e-9, "T of p, rho");
    expect_relative(*back.quality, y, 1e-6, "quality of p, rho");
    expect_relative(pLV_EOS(*b.fluid, *back.T).p, *r.p, 1e-8, "p(LV) at the T found");
    for (const Mode mode : {Mode::vaporization_T, Mode::vaporization_p}) {
        const bool by_p = mode == Mode::vaporization_p;
        const Outcome h = b.run(mode, by_p ? 0.0 : c.T, by_p ? *r.p : 0.0);
        EXPECT_NEAR(*h.vaporization->hLV, *r.vaporization->hLV, 1.0);
        expect_relative(*h.T, c.T, 1e-9);
        expect_relative(*h.p, *r.p, 1e-9);
        EXPECT_NEAR(h.eos->roots.VRoot[2], r.V->v, 1e-7 * r.V->v);
    }
}
INSTANTIATE_TEST_SUITE_P(States, LeverRule,
                         ::testing::Values(TwoPhase{propane, Eos::peng_robinson, 300.0, 100.0},
                                           TwoPhase{propane, Eos::soave, 250.0, 300.0},
                                           TwoPhase{propane, Eos::van_der_waals, 340.0, 120.0},
                                           TwoPhase{propane, Eos::peng_robinson, 369.5, 200.0},
                                           TwoPhase{water, Eos::peng_robinson, 450.0, 50.0},
                                           TwoPhase{water, Eos::redlich_kwong, 600.0, 200.0}));

// One phase against the engine

struct Named {
    std::string_view name;
    std::optional<double> PhaseOutcome::*value;
    double StateFunctions::*engine;
};
constexpr std::array<Named, 12> fields = {{{"h", &PhaseOutcome::h, &StateFunctions::h},
                                           {"s", &PhaseOutcome::s, &StateFunctions::s},
                                           {"g", &PhaseOutcome::g, &StateFunctions::g},
                                           {"u", &PhaseOutcome::u, &StateFunctions::u},
                                           {"a", &PhaseOutcome::a, &StateFunctions::a},
                                           {"eH", &PhaseOutcome::eH, &StateFunctions::eH},
                                           {"eU", &PhaseOutcome::eU, &StateFunctions::eU},
                                           {"cp", &PhaseOutcome::cp, &StateFunctions::cp},
                                           {"cV", &PhaseOutcome::cV, &StateFunctions::cV},
                                           {"w", &PhaseOutcome::w, &StateFunctions::w},
                                           {"cpId", &PhaseOutcome::cpId, &StateFunctions::cpId},
                                           {"ln phi", &PhaseOutcome::lnphi, &StateFunctions::lnphi}}};

void expect_functions(const PhaseOutcome& phase, const StateFunctions& f) {
    for (const Named& field : fields) {
        ASSERT_TRUE(phase.*field.value) << field.name;
        expect_relative(*(phase.*field.value), f.*field.engine, 1e-12, field.name);
    }
}

// Every function stands under its own name, with and without the result arrays, in mode 3 as in mode 8.
TEST(OnePhase, functions_are_those_of_the_engine) {
    for (const auto& [T, p] : {std::pair{300.0, 500.0}, {300.0, 2000.0}, {300.0, 6000.0}, {400.0, 6000.0}}) {
        for (const bool coefficients : {false, true}) {
            Bench b;
            b.coefficients = coefficients;
            const VolumeResult volume = VolumeTp(*b.fluid, T, p);
            for (const Mode mode : {Mode::T_p, Mode::functions}) {
                const Outcome r = b.run(mode, T, p);
                ASSERT_TRUE(r.has_result());
                EXPECT_EQ(r.L.has_value(), volume.LFlag);
                EXPECT_EQ(r.V.has_value(), volume.VFlag);
                if (r.L) expect_functions(*r.L, ThermoState(*b.fluid, T, p, volume.vL));
                if (r.V) expect_functions(*r.V, ThermoState(*b.fluid, T, p, volume.vV));
                const PhaseOutcome& phase = r.V ? *r.V : *r.L;
                EXPECT_EQ(phase.arrays.has_value(), coefficients);
                if (coefficients) {
                    EXPECT_EQ(phase.arrays->CoefA[coef_chi],
                              ThermoFunc(*b.fluid, T, p, phase.v).CoefA[coef_chi]);
                }
                expect_relative(*phase.z, p * phase.v / (RGas * T), 1e-14);
                expect_relative(*phase.rho, b.fluid->M / phase.v, 1e-14);
                EXPECT_TRUE(r.warnings.empty());
            }
        }
    }
}

// The word, the region and the columns of a state, and the same state from rho: table by the position about
// the critical point.
TEST(OnePhase, has_one_word_and_one_region) {
    const Bench b;
    const double Tcr = b.substance().Tcr, pcr = b.substance().pcr;
    const struct {
        double T, p;
        PhaseWord word;
        int region;
        bool L, V;
    } cases[] = {
        {300.0, 500.0, PhaseWord::V, 0, false, true},
        {300.0, 2000.0, PhaseWord::L, 0, true, false},
        {300.0, 6000.0, PhaseWord::L, 1, true, true},
        {400.0, 500.0, PhaseWord::V, 3, true, true},
        {400.0, 6000.0, PhaseWord::V, 2, true, true},
        {369.89001, 6000.0, PhaseWord::L, 1, true, true},  // T(cr) as a single
        {369.8905, 6000.0, PhaseWord::V, 2, true, true},
        {Tcr, 6000.0, PhaseWord::L, 1, true, true},
        {Tcr, 1000.0, PhaseWord::V, 0, false, true},
        {300.0, pcr, PhaseWord::L, 0, true, false},
        {400.0, pcr, PhaseWord::V, 3, true, true},
        {Tcr, pcr, PhaseWord::V, 4, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.T << " K " << c.p << " kPa");
        const Outcome r = b.run(Mode::T_p, c.T, c.p);
        ASSERT_TRUE(r.has_result());
        EXPECT_EQ(phase_text(r.phase), phase_text(c.word));
        EXPECT_EQ(r.region, c.region);
        EXPECT_EQ(r.IsL, c.L);
        EXPECT_EQ(r.IsV, c.V);
        EXPECT_EQ(*r.quality, c.word == PhaseWord::L ? 0.0 : 1.0);
        const double v = r.V ? r.V->v : r.L->v;
        if (c.L && c.V) {
            EXPECT_EQ(r.L->v, r.V->v);
        }
        if (c.region == 4) continue;  // p of the critical volume is flat in v
        const Outcome by_T = b.run(Mode::T_rho, c.T, 0.0, b.fluid->M / v);
        ASSERT_TRUE(by_T.has_result());
        expect_relative(*by_T.p, c.p, 1e-9);
        const Outcome by_p = b.run(Mode::p_rho, 0.0, c.p, b.fluid->M / v);
        ASSERT_TRUE(by_p.has_result());
        expect_relative(*by_p.T, c.T, 1e-8);
        if (static_cast<float>(c.T) == static_cast<float>(Tcr)) {
            EXPECT_EQ(by_T.phase, PhaseWord::V);  // at T(cr) as a single a volume is that of a vapor
            continue;
        }
        if (c.p == pcr) continue;  // a last digit decides there
        for (const Outcome& other : {by_T, by_p}) {
            EXPECT_EQ(phase_text(other.phase), phase_text(c.word));
            EXPECT_EQ(other.region, c.region);
            const PhaseOutcome& phase = c.word == PhaseWord::L ? *other.L : *other.V;
            expect_relative(phase.v, v, 1e-14);
            expect_relative(*phase.h, r.V ? *r.V->h : *r.L->h, 1e-7);
        }
    }
}

// v on a root belongs to the one phase.
TEST(OnePhase, ends_at_the_saturated_volumes) {
    const Bench b;
    const Saturation s = pLV_EOS(*b.fluid, 300.0);
    const auto at = [&](double v) { return b.run(Mode::T_rho, 300.0, 0.0, b.fluid->M / v); };
    EXPECT_EQ(at(s.vL * (1.0 - 1e-12)).phase, PhaseWord::L);
    EXPECT_EQ(at(s.vL * (1.0 + 1e-12)).phase, PhaseWord::VL);
    EXPECT_EQ(at(s.vV * (1.0 - 1e-12)).phase, PhaseWord::VL);
    EXPECT_EQ(at(s.vV * (1.0 + 1e-12)).phase, PhaseWord::V);
}

TEST(OnePhase, critical_window_is_0_05_K_and_0_02_kPa) {
    const Bench b;
    const double Tcr = b.substance().Tcr, pcr = b.substance().pcr;
    for (const Mode mode : {Mode::T_p, Mode::functions}) {
        EXPECT_TRUE(b.run(mode, Tcr + 0.049, pcr - 0.019).near_critical);
        EXPECT_FALSE(b.run(mode, Tcr + 0.051, pcr - 0.019).near_critical);
        EXPECT_FALSE(b.run(mode, Tcr - 0.049, pcr + 0.021).near_critical);
    }
}

// At the critical point (dp/dv)_T is 0: cp, w and the coefficients are absent, the others stand and are
// continuous.
TEST(OnePhase, at_the_critical_point_has_no_cp) {
    for (const Eos eos : {Eos::van_der_waals, Eos::redlich_kwong, Eos::soave, Eos::peng_robinson}) {
        Bench b(propane, eos);
        b.coefficients = true;
        const double Tcr = b.substance().Tcr, pcr = b.substance().pcr;
        const Outcome r = b.run(Mode::functions, Tcr, pcr);
        ASSERT_TRUE(r.has_result());
        EXPECT_TRUE(warned(r, WarningKind::critical_point));
        EXPECT_TRUE(r.eos->critical);
        EXPECT_FALSE(r.V->cp || r.V->w);
        EXPECT_EQ(r.V->functions_reason, Reason::critical_point);
        expect_relative(r.V->v, b.fluid->eos.vcrEOS, 1e-3);
        const Outcome above = b.run(Mode::T_rho, Tcr * (1.0 + 1e-4), 0.0, b.fluid->M / r.V->v);
        EXPECT_NEAR(*r.V->h, *above.V->h, 20.0);
        EXPECT_NEAR(*r.V->s, *above.V->s, 0.05);
        EXPECT_FALSE(warned(b.run(Mode::functions, Tcr * 1.001, pcr), WarningKind::critical_point));
    }
}

// Vapor pressures below 1e-6 kPa are answers; so are the liquids compressed from there.
TEST(ColdStates, have_an_answer) {
    const Bench b("149-57-5");  // 2-ethylhexanoic acid
    const Outcome r = b.run(Mode::equilibrium_T, 171.87, 0.0);
    ASSERT_TRUE(r.has_result()) << failure_text(r.failure);
    // ln p(LV) is all but linear in 1/T: the slope from two warmer states leads there.
    const double p1 = *b.run(Mode::equilibrium_T, 180.0, 0.0).p,
                 p2 = *b.run(Mode::equilibrium_T, 190.0, 0.0).p;
    const double slope = std::log(p2 / p1) / (1.0 / 190.0 - 1.0 / 180.0);
    const double extrapolated = p1 * std::exp(slope * (1.0 / 171.87 - 1.0 / 180.0));
    EXPECT_NEAR(*r.p / extrapolated, 1.0, 0.05);
    EXPECT_NEAR(*r.L->g, *r.V->g, 1e-9 * RGas * 171.87);
    const Outcome liquid = b.run(Mode::T_rho, 171.87, 0.0, *r.L->rho * 1.001);
    ASSERT_TRUE(liquid.has_result()) << failure_text(liquid.failure);
    EXPECT_EQ(liquid.phase, PhaseWord::L);
    EXPECT_GT(*liquid.p, *r.p);
    EXPECT_EQ(b.run(Mode::T_p, 171.87, *liquid.p).phase, PhaseWord::L);
}

// A true 0 is a value.
TEST(Zeros, survive) {
    Bench b(propane, Eos::ideal_gas);
    const Outcome r = b.run(Mode::T_p, 298.15, 101.325);
    ASSERT_TRUE(r.V->h && r.V->s && r.V->lnphi);
    EXPECT_NEAR(*r.V->h, 0.0, 0.01);
    EXPECT_NEAR(*r.V->s, 0.0, 1e-4);
    EXPECT_EQ(*r.V->lnphi, 0.0);
    EXPECT_EQ(*b.run(Mode::virial, 300.0, 0.0).B, 0.0);
}

// Equilibrium by parts

TEST(Partial, takes_each_phase_from_its_own_model) {
    Bench b(water);
    b.change([](FluidInput& x) { x.models.HLVKode = Hlv::equation; });
    b.setup = {.GlobalCalc = false, .BensonRhoL = false, .RhoLWanted = true};
    const Outcome r = b.run(Mode::equilibrium_T, 373.15, 0.0);
    ASSERT_TRUE(r.has_result());
    // Saturated water at 373.15 K: 101.42 kPa, 958.35 kg/m^3, 0.5982 kg/m^3, 40656 kJ/kmol
    // (Wagner and Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387).
    EXPECT_NEAR(*r.p, 101.42, 0.1);
    EXPECT_NEAR(*r.L->rho, 958.35, 2.0);
    EXPECT_NEAR(*r.V->rho, 0.5982, 0.006);
    EXPECT_NEAR(*r.vaporization->hLV, 40656.0, 150.0);
    EXPECT_EQ(r.saturation, SaturationSource::evp);
    EXPECT_EQ(r.liquid, LiquidSource::database);
    EXPECT_FALSE(r.L->from_eos);
    EXPECT_FALSE(r.L->h);
    EXPECT_TRUE(r.V->h);
    EXPECT_NEAR(*b.run(Mode::equilibrium_p, 0.0, *r.p).T, 373.15, 0.02);

    b.change([](FluidInput& x) { x.models.EVPKode = Evp::none; });  // now the data point has to give p(LV)
    const Outcome typed = b.run(Mode::equilibrium_T, 373.15, 101.0);
    EXPECT_EQ(*typed.p, 101.0);
    EXPECT_EQ(typed.saturation, SaturationSource::data_point);
    EXPECT_EQ(*b.run(Mode::equilibrium_p, 373.0, 101.0).T, 373.0);
}

TEST(Partial, without_densities_is_the_pressure_alone) {
    Bench b;
    b.change([](FluidInput& x) { x.models.Konzept = false; });
    const Outcome r = b.run(Mode::equilibrium_T, 300.0, 0.0);
    ASSERT_TRUE(r.has_result());
    EXPECT_EQ(r.saturation, SaturationSource::evp);
    EXPECT_FALSE(r.L || r.V);
    EXPECT_NEAR(*r.p, 998.0, 3.0);  // propane at 300 K: 997.7 kPa (Lemmon et al. 2009)
}

TEST(Partial, assumed_equilibrium_of_mode_3_gives_both_densities) {
    Bench b(water);
    b.setup = {.BensonRhoL = false, .RhoLWanted = true, .VLEAssumed = true};
    const Outcome r = b.run(Mode::T_p, 373.15, 101.42);
    EXPECT_TRUE(r.two_phase());
    EXPECT_FALSE(r.quality);
    EXPECT_NEAR(*r.L->rho, 958.35, 2.0);
    EXPECT_NEAR(*r.V->rho, 0.5982, 0.006);
}

// The database equation stands beside another model; the models with z tell them.
// Without a vapor pressure equation the second value of modes 6 and 7 is that of the data point. Carruth and
// Kobayashi (1972): (7.08 (1 - Tr)^0.354 + 10.95 omega (1 - Tr)^0.456) R T(cr), from T alone.
TEST(Vaporization, takes_the_missing_value_from_the_data_point) {
    Bench b;
    b.change([](FluidInput& input) {
        input.models.EVPKode = Evp::none;
        input.models.HLVKode = Hlv::carruth_kobayashi;
    });
    const SubstanceConstants s = b.substance();
    const double u = 1.0 - 300.0 / s.Tcr;
    const double hLV = (7.08 * std::pow(u, 0.354) + 10.95 * s.omega * std::pow(u, 0.456)) * 8.31451 * s.Tcr;
    const Outcome with_T = b.run(Mode::vaporization_p, 300.0, 990.0);
    ASSERT_TRUE(with_T.has_result());
    EXPECT_EQ(*with_T.T, 300.0);
    EXPECT_EQ(with_T.saturation, SaturationSource::data_point);
    EXPECT_NEAR(*with_T.vaporization->hLV, hLV, 0.5);
    EXPECT_EQ(b.run(Mode::vaporization_p, 0.0, 990.0).failure.reason, Reason::no_T_available);
    EXPECT_EQ(b.run(Mode::vaporization_p, 300.0, s.pcr).failure.reason, Reason::above_critical_p);

    b.change([](FluidInput& input) { input.models.HLVKode = Hlv::chen; });
    const Outcome with_p = b.run(Mode::vaporization_T, 300.0, 990.0);
    ASSERT_TRUE(with_p.has_result());
    EXPECT_EQ(*with_p.p, 990.0);
    EXPECT_EQ(with_p.saturation, SaturationSource::data_point);
    EXPECT_EQ(b.run(Mode::vaporization_T, 300.0, 0.0).failure.reason, Reason::no_p_available);
}

TEST(Vaporization, tells_what_it_was_made_of) {
    Bench b;
    const Outcome by_eos = b.run(Mode::vaporization_T, 300.0, 0.0);
    ASSERT_TRUE(by_eos.vaporization->database);
    EXPECT_NEAR(*by_eos.vaporization->database, *b.run(Mode::fn_hLV, 300.0, 0.0).vaporization->hLV, 0.5);
    EXPECT_FALSE(by_eos.vaporization->zL);
    b.change([](FluidInput& x) { x.models.HLVKode = Hlv::evp_rhoL; });
    const Outcome by_z = b.run(Mode::vaporization_T, 300.0, 0.0);
    ASSERT_TRUE(by_z.vaporization->zL && by_z.vaporization->zV);
    EXPECT_EQ(by_z.saturation, SaturationSource::evp);
    EXPECT_LT(*by_z.vaporization->zL, *by_z.vaporization->zV);
    expect_relative(*by_z.vaporization->zV, *b.run(Mode::T_p, 300.0, *by_z.p * 0.9999).V->z, 1e-3);
    // A measured p does not replace p(LV) of the equation.
    EXPECT_EQ(*b.run(Mode::vaporization_T, 300.0, 500.0).p, *by_z.p);
    b.change([](FluidInput& x) { x.models.HLVKode = Hlv::equation; });
    EXPECT_FALSE(b.run(Mode::vaporization_T, 300.0, 0.0).vaporization->database);
}

// Virial coefficients

TEST(Virial, gives_B_of_every_equation) {
    const Bench b;
    const Outcome r = b.run(Mode::virial, 300.0, 0.0);
    ASSERT_EQ(r.virial.size(), 6u);
    const Eos codes[] = {Eos::virial_van_der_waals, Eos::virial_berthelot,     Eos::virial_redlich_kwong,
                         Eos::virial_soave,         Eos::virial_peng_robinson, Eos::pitzer_curl};
    for (std::size_t i = 0; i < r.virial.size(); ++i) {
        EXPECT_EQ(r.virial[i].code, codes[i]);
        EXPECT_EQ(*r.virial[i].B, VirialB(*with_eos(*b.fluid, codes[i]), 300.0));
        EXPECT_FALSE(r.virial[i].omega_zero);
    }
    EXPECT_EQ(r.B, r.virial[4].B);
    // B = lim (Z - 1) R T/p
    EXPECT_NEAR(*r.B, VolumeTp(*b.fluid, 300.0, 1.0).vV - RGas * 300.0, 2e-3 * std::fabs(*r.B));
    // Propane at 300 K: -0.388 m^3/kmol (Dymond et al., Virial Coefficients of Pure Gases, 2002).
    EXPECT_NEAR(*r.B, -0.388, 0.03);
}

TEST(Virial, of_a_typed_equation_is_its_own) {
    const Bench b(starter_substance(propane), Eos::virial_manual, {.b0 = 0.1, .b1 = 90.0, .b2 = 1.0});
    const Outcome r = b.run(Mode::virial, 300.0, 0.0);
    EXPECT_NEAR(*r.B, 0.1 - 90.0 / 300.0, 1e-12);
    EXPECT_EQ(r.virial.size(), 6u);
    SubstanceConstants unknown = starter_substance(propane);
    unknown.Tcr = 0.0;
    unknown.omega = 0.0;
    EXPECT_TRUE(Bench(unknown, Eos::virial_manual, {.b0 = 0.1}).run(Mode::virial, 300.0, 0.0).virial.empty());
}

// Database functions

TEST(DatabaseFunctions, stand_under_their_own_name) {
    const Bench b(water);
    EXPECT_NEAR(*b.run(Mode::fn_rhoL, 300.0, 0.0).rhoL_fn, 996.5, 3.0);  // Wagner and Pruss (2002)
    EXPECT_NEAR(*b.run(Mode::fn_cpL, 300.0, 0.0).cpL_fn, 75.3, 0.5);
    EXPECT_NEAR(*b.run(Mode::fn_cpIdG, 300.0, 0.0).cpId_fn, 33.6, 0.2);
    EXPECT_NEAR(*b.run(Mode::fn_cpS, 260.0, 0.0).cpS_fn, 36.5, 1.5);
    EXPECT_NEAR(*b.run(Mode::fn_rhoS, 260.0, 0.0).rhoS_fn, 918.0, 4.0);
    EXPECT_NEAR(*b.run(Mode::fn_wagner, 373.15, 0.0).p, 101.42, 0.1);
    const Outcome h = b.run(Mode::fn_hLV, 373.15, 0.0);
    EXPECT_NEAR(*h.vaporization->hLV, 40656.0, 150.0);
    expect_relative(*h.vaporization->sLV, *h.vaporization->hLV / 373.15, 1e-14);
    EXPECT_EQ(h.limits.TLo, b.substance().HLVTLo);
}

TEST(Process, hands_its_start_over) {
    const Outcome r = Bench().run(Mode::process, 310.0, 700.0);
    EXPECT_TRUE(r.has_result());
    EXPECT_EQ(*r.T, 310.0);
    EXPECT_EQ(*r.p, 700.0);
}

// What must never come out

TEST(AllModes, give_numbers_or_a_reason) {
    for (const std::string_view cas : {propane, water, helium}) {
        for (const Eos eos :
             {Eos::ideal_gas, Eos::van_der_waals, Eos::redlich_kwong, Eos::soave, Eos::peng_robinson,
              Eos::virial_van_der_waals, Eos::virial_soave, Eos::pitzer_curl}) {
            Bench b(cas, eos);
            b.coefficients = true;
            for (const double Tr : {0.02, 0.4, 0.7, 0.999999, 1.0, 1.3, 20.0}) {
                for (const double pr : {1e-12, 1e-3, 0.5, 1.0, 30.0, 1e5}) {
                    const double T = Tr * b.substance().Tcr, p = pr * b.substance().pcr;
                    for (const ModeInfo& mode : mode_list()) {
                        SCOPED_TRACE(::testing::Message()
                                     << cas << " eos " << number_of(eos) << " mode "
                                     << static_cast<int>(mode.mode) << " Tr " << Tr << " pr " << pr);
                        const bool tank = mode.family == ModeFamily::tank;
                        const Outcome r =
                            tank ? b.tank(mode.mode, pr, 0.01, T) : b.run(mode.mode, T, p, 1e3 * pr);
                        EXPECT_EQ(r.mode, mode.mode);
                        for (const auto& x : {r.T, r.p, r.quality, r.B})
                            EXPECT_TRUE(std::isfinite(x.value_or(0.0)));
                        for (const auto& phase : {r.L, r.V}) {
                            if (phase) {
                                EXPECT_TRUE(std::isfinite(phase->v) && phase->v > 0.0);
                            }
                        }
                        EXPECT_EQ(failure_text(r.failure).empty(), r.has_result());
                        if (!r.has_result()) {
                            EXPECT_FALSE(r.L || r.V || r.IsL || r.IsV || r.eos);
                        }
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace quom::test

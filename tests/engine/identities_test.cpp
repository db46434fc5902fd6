// Thermodynamic identities over equations x substances x states: every derivative and function against a
// difference quotient or another exact relation. No figure here is the program's own earlier output.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"
#include "support/starter.h"

namespace quom {
namespace {

struct State {
    double T = 0, p = 0, v = 0;
    PhaseArrays arrays;
    StateFunctions f;
};

// Evaluates one phase at given T and p on the branch of the phase, and at given T and v.
class Evaluation {
 public:
    Evaluation(const Fluid& fluid, Phase phase) : fluid(fluid), phase_(phase) {}
    State at_p(double T, double p) const {
        if (fluid.VPhaseOnly) return fill(T, p, RGas * T / p + VirialB(fluid, T));
        const CubicRoots roots = CubicV(EOSParT(fluid, T), p);
        return fill(T, p, roots.VRoot[roots.nRoots == 3 && phase_ == phase_V ? 2 : 0]);
    }
    State at_v(double T, double v) const { return fill(T, pTv(fluid, T, v).p, v); }
    const Fluid& fluid;

 private:
    State fill(double T, double p, double v) const {
        State st{.T = T, .p = p, .v = v, .arrays = ThermoFunc(fluid, T, p, v), .f = {}};
        st.f = state_functions(fluid, T, p, v, st.arrays);
        return st;
    }
    Phase phase_;
};

using Value = std::function<double(const State&)>;

struct Slopes {
    const Evaluation& e;
    State st;
    double dT_p(const Value& f) const {
        const double h = 2e-5 * st.T;
        return (f(e.at_p(st.T + h, st.p)) - f(e.at_p(st.T - h, st.p))) / (2 * h);
    }
    double dp_T(const Value& f) const {
        const double h = 1e-4 * st.p;
        return (f(e.at_p(st.T, st.p + h)) - f(e.at_p(st.T, st.p - h))) / (2 * h);
    }
    double dT_v(const Value& f) const {
        const double h = 2e-5 * st.T;
        return (f(e.at_v(st.T + h, st.v)) - f(e.at_v(st.T - h, st.v))) / (2 * h);
    }
    double dv_T(const Value& f) const {
        const double h = 1e-6 * st.v;
        return (f(e.at_v(st.T, st.v + h)) - f(e.at_v(st.T, st.v - h))) / (2 * h);
    }
};

struct Relation {
    const char* text;
    std::function<double(const Slopes&)> left, right;
    double tol;               // relative to the larger side or to scale
    double scale;             // smallest size that counts
    bool cubic_only = false;  // the virial family has its own definition
};

Value D(int k) {
    return [k](const State& st) { return st.arrays.DerivA[k]; };
}
Value D2(int k) {
    return [k](const State& st) { return st.arrays.Deriv2A[k]; };
}
Value F(int k) {
    return [k](const State& st) { return st.arrays.FuncA[k]; };
}
Value C(int k) {
    return [k](const State& st) { return st.arrays.CoefA[k]; };
}
Value f(double StateFunctions::*member) {
    return [member](const State& st) { return st.f.*member; };
}
std::function<double(const Slopes&)> own(const Value& value) {
    return [value](const Slopes& x) { return value(x.st); };
}

const std::vector<Relation>& relations() {
    using SF = StateFunctions;
    const Value h = f(&SF::h), s = f(&SF::s), u = f(&SF::u);
    const Value p = [](const State&st) { return st.p; }, v = [](const State&st) { return st.v; };
    static const std::vector<Relation> table = {
        {"(dp/dv)_T", own(D(dpdv_T)), [p](const Slopes& x) { return x.dv_T(p); }, 1e-5, 0},
        {"(dp/dT)_v", own(D(dpdT_v)), [p](const Slopes& x) { return x.dT_v(p); }, 1e-6, 0},
        {"(dv/dT)_p", own(D(dvdT_p)), [v](const Slopes& x) { return x.dT_p(v); }, 1e-5, 0},
        {"(dv/dp)_T", own(D(dvdp_T)), [v](const Slopes& x) { return x.dp_T(v); }, 1e-5, 0},
        {"(dT/dv)_p", own(D(dTdv_p)), [](const Slopes& x) { return 1.0 / D(dvdT_p)(x.st); }, 1e-12, 0},
        {"(dT/dp)_v", own(D(dTdp_v)), [](const Slopes& x) { return 1.0 / D(dpdT_v)(x.st); }, 1e-12, 0},
        {"d2p/dv2", own(D2(d2pdv2)), [](const Slopes& x) { return x.dv_T(D(dpdv_T)); }, 1e-4, 0, true},
        {"d2v/dT2", own(D2(d2vdT2)), [](const Slopes& x) { return x.dT_p(D(dvdT_p)); }, 1e-4, 1e-9},
        // d2T/dv2 = -(d2v/dT2)/(dv/dT)^3 on the isobar
        {"d2T/dv2", own(D2(d2Tdv2)),
         [](const Slopes& x) { return -D2(d2vdT2)(x.st) / std::pow(D(dvdT_p)(x.st), 3); }, 1e-8, 1e-6, true},
        {"d2T/dv2 of the virial family", own(D2(d2Tdv2)),
         [](const Slopes& x) {
             const double slope = D(dTdv_p)(x.st);
             return x.e.fluid.VPhaseOnly ? D2(d2vdT2)(x.st) * slope * slope : D2(d2Tdv2)(x.st);
         },
         1e-12, 1e-12},
        {"ln phi: d/dp = (Z - 1)/p", [](const Slopes& x) { return x.dp_T(F(fu_lnphi)) * x.st.p; },
         [](const Slopes& x) { return x.st.p * x.st.v / (RGas * x.st.T) - 1.0; }, 2e-6, 1e-4},
        {"d ln phi/dT", own(F(fu_dlnphidT)), [](const Slopes& x) { return x.dT_p(F(fu_lnphi)); }, 1e-5, 1e-6},
        {"d2 ln phi/dT2", own(F(fu_d2lnphidT2)), [](const Slopes& x) { return x.dT_p(F(fu_dlnphidT)); }, 1e-4,
         1e-8},
        {"g_res = h_res - T s_res", own(F(fu_g_res)),
         [](const Slopes& x) { return F(fu_h_res)(x.st) - x.st.T * F(fu_s_res)(x.st); }, 1e-10, 1e-3},
        {"g_res = T ln phi", own(F(fu_g_res)), [](const Slopes& x) { return x.st.T * x.st.f.lnphi; }, 1e-12,
         1e-6},
        {"h = u + p v", own(h), [](const Slopes& x) { return x.st.f.u + x.st.p * x.st.v; }, 1e-12, 1},
        {"g = h - T s", own(f(&SF::g)), [](const Slopes& x) { return x.st.f.h - x.st.T * x.st.f.s; }, 1e-12,
         1},
        {"a = u - T s", own(f(&SF::a)), [](const Slopes& x) { return x.st.f.u - x.st.T * x.st.f.s; }, 1e-10,
         1},
        {"cp = (dh/dT)_p", own(f(&SF::cp)), [h](const Slopes& x) { return x.dT_p(h); }, 1e-5, 1},
        {"cp/T = (ds/dT)_p", [](const Slopes& x) { return x.st.f.cp / x.st.T; },
         [s](const Slopes& x) { return x.dT_p(s); }, 1e-5, 1e-3},
        {"cp - cp_idG", own(F(fu_cp_res)), [](const Slopes& x) { return (x.st.f.cp - x.st.f.cpId) / RGas; },
         1e-9, 1},
        {"cp_res = (dh_res/dT)_p", own(F(fu_cp_res)), [](const Slopes& x) { return x.dT_p(F(fu_h_res)); },
         1e-6, 1e-2},
        {"cV = (du/dT)_v", own(f(&SF::cV)), [u](const Slopes& x) { return x.dT_v(u); }, 1e-5, 1},
        {"(dh/dp)_T = v - T (dv/dT)_p", [h](const Slopes& x) { return x.dp_T(h); },
         [](const Slopes& x) { return x.st.v - x.st.T * D(dvdT_p)(x.st); }, 1e-4, 1e-2},
        {"(ds/dp)_T = -(dv/dT)_p", [s](const Slopes& x) { return -x.dp_T(s); }, own(D(dvdT_p)), 1e-4, 1e-6},
        {"Joule-Thomson = -(dh/dp)_T/(dh/dT)_p", own(F(fu_dTdp_h)),
         [h](const Slopes& x) { return -x.dp_T(h) / x.dT_p(h); }, 1e-4, 1e-5},
        // w^2 = (dp/drho)_s = -v^2/M (dp/dv)_s, the slope at constant s from T and v derivatives
        {"speed of sound", [](const Slopes& x) { return x.st.f.w * x.st.f.w; },
         [p, s](const Slopes& x) {
             const double dpdv_s = x.dv_T(p) - x.dT_v(p) * x.dv_T(s) / x.dT_v(s);
             return -x.st.v * x.st.v / x.e.fluid.M * dpdv_s * 1000.0;
         },
         1e-4, 1},
        {"alpha", own(C(coef_alpha)), [](const Slopes& x) { return D(dvdT_p)(x.st) / x.st.v; }, 1e-12, 0},
        {"alpha/chi = beta p", [](const Slopes& x) { return C(coef_alpha)(x.st) / C(coef_chi)(x.st); },
         [](const Slopes& x) { return C(coef_beta)(x.st) * x.st.p; }, 1e-9, 0},
        // exergy: deH = dh - T(surr) ds, deU = du - T(surr) ds + p(surr) dv on the isobar
        {"exergy of h", [](const Slopes& x) { return x.dT_p(f(&SF::eH)); },
         [h, s](const Slopes& x) { return x.dT_p(h) - x.e.fluid.reference.TEnv * x.dT_p(s); }, 1e-4, 1},
        {"exergy of u", [](const Slopes& x) { return x.dT_p(f(&SF::eU)); },
         [u, s, v](const Slopes& x) {
             const ReferenceState& r = x.e.fluid.reference;
             return x.dT_p(u) - r.TEnv * x.dT_p(s) + r.pEnv * x.dT_p(v);
         },
         1e-4, 1},
    };
    return table;
}

struct Substances {
    std::string_view cas;
    Eos code;
};
class Identities : public ::testing::TestWithParam<Substances> {};

TEST_P(Identities, Hold) {
    const auto [cas, code] = GetParam();
    const EosInput input{.b0 = 0.06,
                         .b1 = 900.0,
                         .b2 = 1.4,
                         .JiP3 = 0.6,
                         .JiP4 = 0.1,
                         .JiP5 = -0.05,
                         .JiZc = 0.31,
                         .JiB1 = 0.08};
    const SubstanceConstants substance = test::starter_substance(cas);
    const auto fluid = make_fluid({.substance = substance,
                                   .models = test::proposed_models(substance, code),
                                   .eos_input = input,
                                   .reference = {.TEnv = 310.0, .pEnv = 95.0}});
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr;
    const struct {
        double Tr, pr;
        Phase phase;
    } states[] = {{0.6, 1e-6, phase_V}, {0.7, 0.02, phase_V}, {0.7, 0.5, phase_L}, {0.9, 0.3, phase_V},
                  {0.9, 0.6, phase_L},  {1.1, 0.9, phase_V},  {1.3, 4.0, phase_V}, {2.5, 20.0, phase_V},
                  {1.02, 2.0, phase_L}, {2.9, 2.0, phase_V},  {4.5, 2e-4, phase_V}};
    for (const auto& c : states) {
        if (fluid->VPhaseOnly && (c.phase == phase_L || c.pr > 1.0)) continue;
        const Evaluation e(*fluid, c.phase);
        const Slopes slopes{e, e.at_p(c.Tr * Tcr, c.pr * pcr)};
        ASSERT_EQ(slopes.st.f.reason, Reason::none);
        // the same without the arrays
        const StateFunctions direct = ThermoState(*fluid, slopes.st.T, slopes.st.p, slopes.st.v);
        EXPECT_EQ(direct.h, slopes.st.f.h);
        EXPECT_EQ(direct.s, slopes.st.f.s);
        EXPECT_EQ(direct.w, slopes.st.f.w);
        EXPECT_EQ(direct.eU, slopes.st.f.eU);
        for (const Relation& r : relations()) {
            if (fluid->VPhaseOnly && r.cubic_only) continue;
            const double left = r.left(slopes), right = r.right(slopes);
            const double size = std::max({std::fabs(left), std::fabs(right), r.scale});
            EXPECT_NEAR(left, right, r.tol * size) << r.text << ", T/Tcr " << c.Tr << ", p/pcr " << c.pr;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllEquations, Identities,
    ::testing::Values(
        Substances{test::propane, Eos::van_der_waals}, Substances{test::propane, Eos::berthelot},
        Substances{test::propane, Eos::redlich_kwong}, Substances{test::propane, Eos::soave},
        Substances{test::propane, Eos::peng_robinson}, Substances{test::propane, Eos::tovarn_ji_1},
        Substances{test::propane, Eos::tovarn_ji_2}, Substances{test::propane, Eos::virial_manual},
        Substances{test::propane, Eos::virial_van_der_waals},
        Substances{test::propane, Eos::virial_berthelot},
        Substances{test::propane, Eos::virial_redlich_kwong}, Substances{test::propane, Eos::virial_soave},
        Substances{test::propane, Eos::virial_peng_robinson}, Substances{test::propane, Eos::pitzer_curl},
        Substances{test::water, Eos::peng_robinson}, Substances{test::decane, Eos::soave},
        Substances{test::methane, Eos::redlich_kwong}, Substances{test::benzene, Eos::peng_robinson}),
    [](const auto& info) {
        std::string name(info.param.cas);
        for (char& c : name) {
            if (c == '-') c = '_';
        }
        return "eos" + std::to_string(number_of(info.param.code)) + "_" + name;
    });

// The ideal gas has no residual functions: its zeros are zeros, not blanks.
TEST(IdealGas, ZerosAreValues) {
    const auto fluid = test::starter_fluid(test::propane, Eos::ideal_gas);
    const double T = fluid->ideal_gas.T0, p = fluid->ideal_gas.p0;
    const StateFunctions z = ThermoState(*fluid, T, p, RGas * T / p);
    EXPECT_EQ(z.reason, Reason::none);
    for (const double zero : {z.h, z.s, z.g, z.lnphi}) EXPECT_EQ(zero, 0.0);
    const PhaseArrays a = ThermoFunc(*fluid, 400.0, 500.0, RGas * 400.0 / 500.0);
    for (int k = fu_lnphi; k <= fu_dTdp_h; ++k) EXPECT_EQ(a.FuncA[k], 0.0) << k;
}

// Equal fugacity of both saturated phases, and dp/dT = (sV - sL)/(vV - vL) (Clausius and Clapeyron).
TEST(SaturatedStates, EqualFugacityAndClapeyron) {
    for (const std::string_view cas : {test::propane, test::water, test::decane, test::nitrogen}) {
        for (const EosInfo& row : eos_list()) {
            if (row.family != EosFamily::cubic) continue;
            const auto fluid = test::starter_fluid(cas, row.code);
            for (const double Tr : {0.55, 0.7, 0.85, 0.95, 0.99, 0.9999}) {
                const double T = Tr * fluid->substance.Tcr;
                const SaturatedFunctions sat = ThermoSat(*fluid, T);
                ASSERT_EQ(sat.reason, Reason::none) << cas << row.text << Tr;
                EXPECT_NEAR(sat.L.g, sat.V.g, 1e-10 * RGas * T) << cas << row.text << Tr;
                EXPECT_NEAR(sat.L.lnphi, sat.V.lnphi, 1e-10) << cas << row.text << Tr;
                EXPECT_TRUE(std::isnan(sat.L.w));
                if (Tr > 0.99) continue;
                const double h = 1e-4 * T;
                const double slope = (pLV_EOS(*fluid, T + h).p - pLV_EOS(*fluid, T - h).p) / (2 * h);
                EXPECT_NEAR((sat.V.s - sat.L.s) / (sat.V.v - sat.L.v) / slope, 1.0, 1e-5)
                    << cas << row.text << Tr;
            }
        }
    }
}

// The reference state is a zero of h and s, and exergies vanish in the environment, of which each fluid has
// its own.
TEST(ReferenceAndEnvironment, ZerosOfEachFluid) {
    const SubstanceConstants propane = test::starter_substance(test::propane);
    FluidInput input{.substance = propane,
                     .models = test::proposed_models(propane, Eos::peng_robinson),
                     .eos_input = {},
                     .reference = {}};
    double before = 0.0;
    for (const auto& [code, TEnv, pEnv] : {std::tuple{Eos::peng_robinson, 298.15, 101.325},
                                           {Eos::peng_robinson, 310.0, 101.325},
                                           {Eos::redlich_kwong, 298.15, 101.325},
                                           {Eos::peng_robinson, 298.15, 200.0},
                                           {Eos::virial_soave, 298.15, 101.325}}) {
        input.models.EOSKode = code;
        input.reference.TEnv = TEnv;
        input.reference.pEnv = pEnv;
        const auto fluid = make_fluid(input);
        const StateFunctions zero = ThermoState(*fluid, TEnv, pEnv, VolumeTp(*fluid, TEnv, pEnv).vV);
        EXPECT_NEAR(zero.eH, 0.0, 1e-9);
        EXPECT_NEAR(zero.eU, 0.0, 1e-9);
        const StateFunctions warm = ThermoState(*fluid, 350.0, 500.0, VolumeTp(*fluid, 350.0, 500.0).vV);
        EXPECT_GT(warm.eH, 0.0);
        EXPECT_NE(warm.eH, before);
        before = warm.eH;
    }
    // both phases exist in the environment: each saturated phase has exergies against its own
    input.models.EOSKode = Eos::peng_robinson;
    input.reference.TEnv = 300.0;
    input.reference.pEnv = pLV_EOS(*make_fluid(input), 300.0).p;
    const auto two_phase = make_fluid(input);
    EXPECT_TRUE(two_phase->environment.hasL && two_phase->environment.hasV);
    const SaturatedFunctions sat = ThermoSat(*two_phase, 300.0);
    for (const double zero : {sat.L.eH, sat.L.eU, sat.V.eH, sat.V.eU}) EXPECT_NEAR(zero, 0.0, 1e-6);
    EXPECT_NEAR(ThermoState(*two_phase, 300.0, sat.p, sat.V.v).eU, 0.0, 1e-6)
        << "the V-phase stands for both";
    // liquid alone
    input.reference.pEnv = 1500.0;
    const auto liquid = make_fluid(input);
    EXPECT_NEAR(ThermoState(*liquid, 300.0, 1500.0, VolumeTp(*liquid, 300.0, 1500.0).vL).eH, 0.0, 1e-9);
    // ideal gas at the reference point: h0, s0 by the reference selection
    for (const int code : {1, 2, 10}) {
        input.models.EOSKode = Eos::ideal_gas;
        input.reference = {};
        input.reference.RefKode = code;
        const StateFunctions z = ThermoState(*make_fluid(input), 298.15, 101.325, RGas * 298.15 / 101.325);
        // TRef0 is a single, 6e-6 K off 298.15
        EXPECT_NEAR(z.h, code == 1 ? 0.0 : static_cast<double>(propane.dfH0), 1e-3) << code;
        const double s0 =
            code == 1   ? 0.0
            : code == 2 ? static_cast<double>(propane.S0abs)
                        : (static_cast<double>(propane.dfH0) - static_cast<double>(propane.dfG0)) / 298.15;
        EXPECT_NEAR(z.s, s0, 1e-4) << code;
    }
    // an environment of which the equation has no state
    input.models.EOSKode = Eos::pitzer_curl;
    input.reference = {};
    input.reference.TEnv = 150.0;
    input.reference.pEnv = 20000.0;
    const StateFunctions without = ThermoState(*make_fluid(input), 350.0, 100.0, 29.0);
    EXPECT_EQ(without.reason, Reason::none);
    EXPECT_EQ(without.exergy_reason, Reason::no_environment);
    EXPECT_TRUE(std::isnan(without.eH) && std::isnan(without.eU) && !std::isnan(without.h));
}

// Where p is not above 0, on the loop of an isotherm, only what needs ln p is absent.
TEST(Absences, PressureBelowZero) {
    for (const Eos code : {Eos::peng_robinson, Eos::van_der_waals, Eos::tovarn_ji_2}) {
        const EosInput input{.JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = -0.05, .JiZc = 0.31, .JiB1 = 0.08};
        const auto fluid = test::starter_fluid(test::propane, code, input);
        const double T = 230.0, v = 1.3 * pLV_EOS(*fluid, T).vL, p = pTv(*fluid, T, v).p;
        ASSERT_LT(p, 0.0);
        const PhaseArrays a = ThermoFunc(*fluid, T, p, v);
        const StateFunctions f = ThermoState(*fluid, T, p, v);
        EXPECT_EQ(f.reason, Reason::p_not_positive);
        for (const double x : {f.s, f.g, f.a, f.eH, f.eU, f.lnphi, a.FuncA[fu_lnphi], a.FuncA[fu_s_res]})
            EXPECT_TRUE(std::isnan(x));
        for (const double x : {f.h, f.u, f.cp, f.cV, a.DerivA[dvdT_p], a.Deriv2A[d2vdT2], a.CoefA[coef_beta]})
            EXPECT_TRUE(std::isfinite(x));
        // (du/dv)_T = T (dp/dT)_v - p goes on across p = 0
        const double h = 1e-5 * v;
        const auto u = [&](double at) { return ThermoState(*fluid, T, pTv(*fluid, T, at).p, at).u; };
        const double slope = (u(v + h) - u(v - h)) / (2 * h);
        EXPECT_NEAR(slope, T * a.DerivA[dpdT_v] - p, 1e-5 * slope) << number_of(code);
    }
}

// Where (dp/dv)_T vanishes h, s, cV go on smoothly; cp, w and the coefficients are absent, not large.
TEST(Absences, CriticalPoint) {
    for (const Eos code : {Eos::van_der_waals, Eos::redlich_kwong, Eos::soave, Eos::peng_robinson}) {
        const auto fluid = test::starter_fluid(test::propane, code);
        const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr;
        const VolumeResult at = VolumeTp(*fluid, Tcr, pcr);
        const StateFunctions here = ThermoState(*fluid, Tcr, pcr, at.vV);
        EXPECT_EQ(here.reason, Reason::critical_point) << number_of(code);
        const PhaseArrays a = ThermoFunc(*fluid, Tcr, pcr, at.vV);
        for (const double x :
             {here.cp, here.w, a.FuncA[fu_cp], a.FuncA[fu_w], a.FuncA[fu_dTdp_h], a.FuncA[fu_cp_res],
              a.DerivA[dvdT_p], a.DerivA[dvdp_T], a.CoefA[coef_alpha], a.CoefA[coef_chi], a.Deriv2A[d2vdT2]})
            EXPECT_TRUE(std::isnan(x));
        // the isochore through the point: du = cV dT, ds = cV/T dT from both sides
        for (const double dT : {-0.5, 0.5}) {
            const double T = Tcr + dT, p = pTv(*fluid, T, at.vV).p;
            const StateFunctions near = ThermoState(*fluid, T, p, at.vV);
            const double cV = 0.5 * (near.cV + here.cV);
            EXPECT_NEAR(near.u - here.u, cV * dT, 1e-4 * std::fabs(cV)) << number_of(code);
            EXPECT_NEAR(near.s - here.s, cV * dT / Tcr, 2e-3 * std::fabs(cV * dT) / Tcr) << number_of(code);
        }
        const double close = Tcr * (1.0 + 1e-7);
        const StateFunctions beside =
            ThermoState(*fluid, close, pTv(*fluid, close, fluid->eos.vcrEOS).p, fluid->eos.vcrEOS);
        EXPECT_TRUE(std::isnan(beside.cp) && std::isfinite(beside.h)) << number_of(code);
        // a little off, cp is there again: along the critical isochore it grows as 1/(T - T(cr))
        const double T = Tcr * (1.0 + 1e-5), p = pTv(*fluid, T, fluid->eos.vcrEOS).p;
        const StateFunctions near = ThermoState(*fluid, T, p, fluid->eos.vcrEOS);
        EXPECT_GT(near.cp, 1e5) << number_of(code);
        EXPECT_GT(near.w, 0.0) << number_of(code);
        const SaturatedFunctions sat = ThermoSat(*fluid, Tcr);
        EXPECT_NEAR(sat.L.h, here.h, 0.1);
        EXPECT_TRUE(std::isnan(sat.L.cp));
    }
}

// Without cp(idG) the residual functions stand alone.
TEST(Absences, NoIdealGasHeatCapacity) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    substance.cpPoly = {};
    substance.cpDIPPR = {};
    substance.havePoly = false;
    substance.haveSinh = false;
    for (const Eos code : {Eos::peng_robinson, Eos::pitzer_curl, Eos::ideal_gas}) {
        const auto fluid = test::starter_fluid(substance, code);
        const auto full = test::starter_fluid(test::propane, code);
        const double v = VolumeTp(*fluid, 400.0, 500.0).vV;
        const StateFunctions f = ThermoState(*fluid, 400.0, 500.0, v);
        EXPECT_EQ(f.reason, Reason::no_ideal_gas_cp);
        EXPECT_EQ(f.exergy_reason == Reason::none, false);
        for (const double x : {f.h, f.s, f.u, f.g, f.a, f.cp, f.cV, f.w, f.eH, f.eU, f.cpId})
            EXPECT_TRUE(std::isnan(x));
        EXPECT_EQ(f.v, v);
        const PhaseArrays a = ThermoFunc(*fluid, 400.0, 500.0, v), b = ThermoFunc(*full, 400.0, 500.0, v);
        for (int k = fu_lnphi; k <= fu_cp_res; ++k) EXPECT_EQ(a.FuncA[k], b.FuncA[k]) << k;
        for (int k = fu_dTdp_h; k <= fu_w; ++k) EXPECT_TRUE(std::isnan(a.FuncA[k])) << k;
        EXPECT_EQ(f.lnphi, a.FuncA[fu_lnphi]);
    }
}

// No speed of sound where the state is unstable or a heat capacity is not above 0.
TEST(Absences, SpeedOfSound) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const CubicRoots roots = CubicV(EOSParT(*fluid, 300.0), 900.0);
    ASSERT_EQ(roots.nRoots, 3);
    const StateFunctions middle = ThermoState(*fluid, 300.0, 900.0, roots.VRoot[1]);
    EXPECT_EQ(middle.reason, Reason::unstable);
    EXPECT_TRUE(std::isnan(middle.w) && std::isfinite(middle.h));
    SubstanceConstants substance = test::starter_substance(test::propane);
    substance.cpPoly = {1.0f, 0, 0, 0, 0};  // below R: cV of the ideal gas is negative
    FluidInput input{.substance = substance, .models = fluid->models, .eos_input = {}, .reference = {}};
    input.models.cpKode = CpForm::polynomial;
    const auto thin = make_fluid(input);
    const StateFunctions f = ThermoState(*thin, 400.0, 1.0, VolumeTp(*thin, 400.0, 1.0).vV);
    EXPECT_EQ(f.reason, Reason::cp_not_positive);
    EXPECT_TRUE(std::isnan(f.w) && f.cV < 0.0 && f.cp > 0.0);
}

TEST(Absences, VolumesThatAreNone) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const double b = fluid->eos.EOSb;
    for (const double v : {b, 0.5 * b, 0.0, -1.0, static_cast<double>(NAN)}) {
        const StateFunctions f = ThermoState(*fluid, 300.0, 500.0, v);
        EXPECT_NE(f.reason, Reason::none) << v;
        EXPECT_TRUE(std::isnan(f.h) && std::isnan(f.v)) << v;
        EXPECT_TRUE(std::isnan(ThermoFunc(*fluid, 300.0, 500.0, v).DerivA[dpdv_T])) << v;
    }
    EXPECT_EQ(ThermoSat(*fluid, 400.0).reason, Reason::above_critical_T);
}

}  // namespace
}  // namespace quom

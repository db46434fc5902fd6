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
    PhaseArrays arrays{};
    StateFunctions f{};
};

struct Case {
    std::string_view cas;
    int eos;
    double Tr, pr;
    int phase;
};

// Evaluates one phase at given T and p on the branch of the phase, and at given T and v.
class Evaluation {
 public:
    Evaluation(Session& session, int phase) : s(session), phase_(phase) {}
    State at_p(double T, double p) {
        EOSParT(s, T);
        double v;
        if (s.models.VPhaseOnly) {
            v = RGas * T / p + VirialB(s, s.models.EOSKode, T);
        } else {
            const CubicRoots roots = CubicV(s, T, p);
            v = s.scratch.VRoot[roots.nRoots == 3 && phase_ == phase_V ? 2 : 0];
        }
        return fill(T, p, v);
    }
    State at_v(double T, double v) {
        EOSParT(s, T);
        return fill(T, pTv(s, T, v).p, v);
    }
    Session& s;

 private:
    State fill(double T, double p, double v) {
        State st{.T = T, .p = p, .v = v};
        st.f = phase_functions(s, phase_, T, p, v, st.arrays);
        ExpansionKoeff(phase_, p, v, st.arrays);
        return st;
    }
    int phase_;
};

using Value = std::function<double(const State&)>;

struct Slopes {
    Evaluation& e;
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
    double tol;                // relative to the larger side or to scale
    double scale;              // smallest size that counts
    const char* not_for = "";  // "virial": known gap of that family
};

double D(const State& st, int phase, int k) { return st.arrays.DerivA[phase][k]; }

// The relations of one phase; k_ is the row of the arrays.
std::vector<Relation> relations(int k) {
    const auto fu = [k](int i) -> Value { return [k, i](const State& st) { return st.arrays.FuncA[k][i]; }; };
    const auto de = [k](int i) { return [k, i](const Slopes& x) { return D(x.st, k, i); }; };
    const Value h = [](const State&st) { return st.f.h; }, sv = [](const State&st) { return st.f.s; };
    const Value u = [](const State&st) { return st.f.u; }, p = [](const State&st) { return st.p; };
    const Value v = [](const State& st) { return st.v; };
    const auto own = [](const Value& f) { return [f](const Slopes& x) { return f(x.st); }; };
    return {
        {"(dp/dv)_T", de(dpdv_T), [p](const Slopes& x) { return x.dv_T(p); }, 1e-5, 0},
        {"(dp/dT)_v", de(dpdT_v), [p](const Slopes& x) { return x.dT_v(p); }, 1e-6, 0},
        {"(dv/dT)_p", de(dvdT_p), [v](const Slopes& x) { return x.dT_p(v); }, 1e-5, 0},
        {"(dv/dp)_T", de(dvdp_T), [v](const Slopes& x) { return x.dp_T(v); }, 1e-5, 0},
        {"d2p/dv2", [k](const Slopes& x) { return x.st.arrays.Deriv2A[k][d2pdv2]; },
         [k](const Slopes& x) { return x.dv_T([k](const State& st) { return D(st, k, dpdv_T); }); }, 1e-4, 0,
         "virial"},
        {"d2v/dT2", [k](const Slopes& x) { return x.st.arrays.Deriv2A[k][d2vdT2]; },
         [k](const Slopes& x) { return x.dT_p([k](const State& st) { return D(st, k, dvdT_p); }); }, 1e-4,
         1e-9},
        // d2T/dv2 = -(d2v/dT2)/(dv/dT)^3 on the isobar
        {"d2T/dv2", [k](const Slopes& x) { return x.st.arrays.Deriv2A[k][d2Tdv2]; },
         [k](const Slopes& x) { return -x.st.arrays.Deriv2A[k][d2vdT2] / std::pow(D(x.st, k, dvdT_p), 3); },
         1e-8, 1e-6, "virial"},
        {"ln phi: d/dp = (Z - 1)/p", [fu](const Slopes& x) { return x.dp_T(fu(fu_lnphi)) * x.st.p; },
         [](const Slopes& x) { return x.st.p * x.st.v / (RGas * x.st.T) - 1.0; }, 2e-6, 1e-4},
        {"d ln phi/dT", own(fu(fu_dlnphidT)), [fu](const Slopes& x) { return x.dT_p(fu(fu_lnphi)); }, 1e-5,
         1e-6},
        {"d2 ln phi/dT2", own(fu(fu_d2lnphidT2)), [fu](const Slopes& x) { return x.dT_p(fu(fu_dlnphidT)); },
         1e-4, 1e-8},
        {"g_res = h_res - T s_res", own(fu(fu_g_res)),
         [k](const Slopes& x) {
             return x.st.arrays.FuncA[k][fu_h_res] - x.st.T * x.st.arrays.FuncA[k][fu_s_res];
         },
         1e-10, 1e-3},
        {"h = u + p v", own(h), [](const Slopes& x) { return x.st.f.u + x.st.p * x.st.v; }, 1e-12, 1},
        {"g = h - T s", [](const Slopes& x) { return x.st.f.g; },
         [](const Slopes& x) { return x.st.f.h - x.st.T * x.st.f.s; }, 1e-12, 1},
        {"a = u - T s", [](const Slopes& x) { return x.st.f.a; },
         [](const Slopes& x) { return x.st.f.u - x.st.T * x.st.f.s; }, 1e-10, 1},
        {"cp = (dh/dT)_p", [](const Slopes& x) { return x.st.f.cp; },
         [h](const Slopes& x) { return x.dT_p(h); }, 1e-5, 1},
        {"cp/T = (ds/dT)_p", [](const Slopes& x) { return x.st.f.cp / x.st.T; },
         [sv](const Slopes& x) { return x.dT_p(sv); }, 1e-5, 1e-3},
        {"cV = (du/dT)_v", [](const Slopes& x) { return x.st.f.cV; },
         [u](const Slopes& x) { return x.dT_v(u); }, 1e-5, 1},
        {"(dh/dp)_T = v - T (dv/dT)_p", [h](const Slopes& x) { return x.dp_T(h); },
         [k](const Slopes& x) { return x.st.v - x.st.T * D(x.st, k, dvdT_p); }, 1e-4, 1e-2},
        {"(ds/dp)_T = -(dv/dT)_p", [sv](const Slopes& x) { return -x.dp_T(sv); },
         [k](const Slopes& x) { return D(x.st, k, dvdT_p); }, 1e-4, 1e-6},
        {"Joule-Thomson = -(dh/dp)_T/(dh/dT)_p", own(fu(fu_dTdp_h)),
         [h](const Slopes& x) { return -x.dp_T(h) / x.dT_p(h); }, 1e-4, 1e-5},
        // w^2 = (dp/drho)_s = -v^2/M (dp/dv)_s, the slope at constant s from T and v derivatives
        {"speed of sound", [](const Slopes& x) { return x.st.f.w * x.st.f.w; },
         [p, sv](const Slopes& x) {
             const double dpdv_s = x.dv_T(p) - x.dT_v(p) * x.dv_T(sv) / x.dT_v(sv);
             const double M = x.e.s.substance.MolMass;
             return -x.st.v * x.st.v / M * dpdv_s * 1000.0;
         },
         1e-4, 1},
        {"alpha/chi = beta p",
         [k](const Slopes& x) { return x.st.arrays.CoefA[k][coef_alpha] / x.st.arrays.CoefA[k][coef_chi]; },
         [k](const Slopes& x) { return x.st.arrays.CoefA[k][coef_beta] * x.st.p; }, 1e-9, 0},
    };
}

class Identities : public ::testing::TestWithParam<std::pair<std::string_view, int>> {};

TEST_P(Identities, Hold) {
    const auto [cas, eos] = GetParam();
    Session s = test::substance_session(cas, eos_peng_robinson);
    s.eos.JiZc = 0.31, s.eos.JiP3 = 0.6, s.eos.JiP4 = 0.1, s.eos.JiP5 = -0.05, s.eos.JiB1 = 0.08;
    test::select_eos(s, eos);
    if (eos == eos_virial_manual) s.eos.EOSb = 0.06, s.eos.EOSnb = 900.0, s.eos.EOSm = 1.4;
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    const Case states[] = {{cas, eos, 0.6, 1e-6, phase_V}, {cas, eos, 0.7, 0.02, phase_V},
                           {cas, eos, 0.7, 0.5, phase_L},  {cas, eos, 0.9, 0.3, phase_V},
                           {cas, eos, 0.9, 0.6, phase_L},  {cas, eos, 1.1, 0.9, phase_V},
                           {cas, eos, 1.3, 4.0, phase_V},  {cas, eos, 2.5, 20.0, phase_V}};
    for (const Case& c : states) {
        if (s.models.VPhaseOnly && (c.phase == phase_L || c.pr > 1.0)) continue;
        Evaluation e(s, c.phase);
        const Slopes slopes{e, e.at_p(c.Tr * Tcr, c.pr * pcr)};
        ASSERT_EQ(slopes.st.f.err, 0);
        for (const Relation& r : relations(c.phase)) {
            if (s.models.VPhaseOnly && std::string_view(r.not_for) == "virial") continue;
            const double left = r.left(slopes), right = r.right(slopes);
            const double size = std::max({std::fabs(left), std::fabs(right), r.scale});
            EXPECT_NEAR(left, right, r.tol * size)
                << r.text << ", T/Tcr " << c.Tr << ", p/pcr " << c.pr << ", EOS " << eos << ", " << cas;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllEquations, Identities,
                         ::testing::Values(std::pair{test::propane, 2}, std::pair{test::propane, 3},
                                           std::pair{test::propane, 4}, std::pair{test::propane, 5},
                                           std::pair{test::propane, 6}, std::pair{test::propane, 7},
                                           std::pair{test::propane, 8}, std::pair{test::propane, 10},
                                           std::pair{test::propane, 11}, std::pair{test::propane, 12},
                                           std::pair{test::propane, 13}, std::pair{test::propane, 14},
                                           std::pair{test::propane, 15}, std::pair{test::propane, 16},
                                           std::pair{test::water, 6}, std::pair{test::decane, 5},
                                           std::pair{test::methane, 4}, std::pair{test::benzene, 6}),
                         [](const auto& info) {
                             std::string name(info.param.first);
                             for (char& c : name) {
                                 if (c == '-') c = '_';
                             }
                             return "eos" + std::to_string(info.param.second) + "_" + name;
                         });

// Equal fugacity of both saturated phases, and dp/dT = (sV - sL)/(vV - vL) (Clausius and Clapeyron).
TEST(SaturatedStates, EqualFugacityAndClapeyron) {
    for (const std::string_view cas : {test::propane, test::water, test::decane, test::nitrogen}) {
        Session s = test::substance_session(cas, 6);
        for (int eos = 2; eos <= 6; ++eos) {
            test::select_eos(s, eos);
            for (const double Tr : {0.55, 0.7, 0.85, 0.95, 0.99}) {
                const double T = Tr * s.substance.Tcr;
                const SaturatedFunctions sat = ThermoSat(s, T);
                ASSERT_EQ(sat.err, 0) << cas << " EOS " << eos << " Tr " << Tr;
                // the two areas between the isotherm and p(LV) are what is left of g(L) - g(V)
                const Saturation areas = pLV_EOS(s, T);
                EXPECT_LT(std::fabs(areas.fd), 1e-5);
                EXPECT_NEAR(sat.L.g - sat.V.g, areas.g1 + areas.g2, 1e-9 * RGas * T)
                    << cas << " EOS " << eos << " Tr " << Tr;
                const double h = 0.002 * T;
                const double up = pLV_EOS(s, T + h).value, down = pLV_EOS(s, T - h).value;
                const double slope = std::log(up / down) / (2 * h) * sat.p;
                EXPECT_NEAR((sat.V.s - sat.L.s) / (sat.V.v - sat.L.v) / slope, 1.0, 4e-3)
                    << cas << " EOS " << eos << " Tr " << Tr;
            }
        }
    }
}

// The reference state is a zero of h and s, exergies vanish in the environment, and the environment follows a
// change of anything it depends on.
TEST(ReferenceAndEnvironment, ZerosAndFreshness) {
    Session s = test::substance_session(test::propane, 6);
    s.models.cpKode = 2;
    const auto at_environment = [&s] {
        const VolumeResult r = VolumeTp(s, s.reference.TEnv, s.reference.pEnv);
        return ThermoState(s, s.reference.TEnv, s.reference.pEnv, r.vV, phase_V);
    };
    StateFunctions f = at_environment();
    EXPECT_NEAR(f.eH, 0.0, 1e-9);
    EXPECT_NEAR(f.eU, 0.0, 1e-9);
    const VolumeResult r = VolumeTp(s, 350.0, 500.0);
    const double before = ThermoState(s, 350.0, 500.0, r.vV, phase_V).eH;
    EXPECT_GT(before, 0.0);
    s.reference.TEnv = 310.0;
    EXPECT_NE(ThermoState(s, 350.0, 500.0, r.vV, phase_V).eH, before);
    f = at_environment();
    EXPECT_NEAR(f.eH, 0.0, 1e-9);
    s.reference = {};
    test::select_eos(s, 4);
    f = at_environment();
    EXPECT_NEAR(f.eU, 0.0, 1e-9);
    for (const int code :
         {1, 2, 10}) {  // ideal gas at the reference point: h0, s0 by the reference selection
        test::select_eos(s, 0);
        s.reference = {};
        s.reference.RefKode = code;
        const double v = RGas * 298.15 / 101.325;
        const StateFunctions z = ThermoState(s, 298.15, 101.325, v, phase_V);
        const auto& k = s.substance;
        // TRef0 is a single, 6e-6 K off 298.15
        EXPECT_NEAR(z.h, code == 1 ? 0.0 : static_cast<double>(k.dfH0), 1e-3) << code;
        const double s0 = code == 1   ? 0.0
                          : code == 2 ? static_cast<double>(k.S0abs)
                                      : (k.dfH0 - k.dfG0) / 298.15;
        EXPECT_NEAR(z.s, s0, 1e-4) << code;
    }
}

}  // namespace
}  // namespace quom

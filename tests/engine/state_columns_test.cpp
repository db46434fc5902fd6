// Batches of states against the single calls, and against relations between their own columns.
#include "engine/state_columns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "engine/saturation.h"
#include "engine/state_kernel.h"
#include "engine/thermo_functions.h"
#include "support/starter.h"

namespace quom {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

const std::string_view Substances[] = {test::propane,  test::water,  test::methane,  test::decane,
                                       test::ammonia,  test::helium, test::hydrogen, test::carbon_dioxide,
                                       test::nitrogen, test::ethanol};
// Constants of the equations that are typed or read from a file, of usual size.
const EosInput Typed{
    .b0 = 0.1, .b1 = 1e4, .b2 = 1.8, .JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = 0.2, .JiZc = 0.31, .JiB1 = 0.02};

bool long_run() { return std::getenv("QUOM_LONG") != nullptr; }

std::vector<const StateKernel*> kernels() {
    std::vector<const StateKernel*> all{&portable_kernel()};
    if (simd_kernel() != nullptr) all.push_back(simd_kernel());
    return all;
}

struct Sample {
    std::vector<double> T, p;
};
// T/T(cr) 0.3 to 3, p 1 Pa to 300 MPa, evenly in T and ln p.
Sample random_states(double Tcr, std::size_t n, unsigned seed) {
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> Tr(0.3, 3.0), ln_p(std::log(1e-3), std::log(3e5));
    Sample r;
    for (std::size_t i = 0; i < n; ++i) {
        r.T.push_back(Tr(engine) * Tcr);
        r.p.push_back(std::exp(ln_p(engine)));
    }
    return r;
}

ColumnPhase phase_of(const VolumeResult& r) {
    if (r.LFlag && r.VFlag) return r.nRoots == 3 ? ColumnPhase::saturated : ColumnPhase::fluid;
    return r.VFlag ? ColumnPhase::V : r.LFlag ? ColumnPhase::L : ColumnPhase::none;
}

// |x - y| below 1e-12 of the scale; both absent is the same.
bool same(double x, double y, double scale) {
    return std::isnan(x) ? std::isnan(y) : std::fabs(x - y) <= 1e-12 * scale;
}

// Whether column i holds the phase at T, p, v as the single calls have it; the name of the first column that
// does not.
std::string difference(const StateColumns& c, std::size_t i, const StateFunctions& f, double T, double p,
                       double v) {
    const double RT = RGas * T, energy = RT + p * v,
                 heat = std::isnan(f.cp) ? std::fabs(f.cV) : std::fabs(f.cp) + std::fabs(f.cV);
    if (!same(c.v[i], v, v)) return "v";
    if (!(c.v[i] > 0.0) || !(c.rho[i] > 0.0)) return "not above 0";
    if (!same(c.h[i], f.h, energy)) return "h";
    if (!same(c.u[i], f.u, energy)) return "u";
    if (!same(c.g[i], f.g, energy)) return "g";
    if (!same(c.a[i], f.a, energy)) return "a";
    if (!same(c.s[i], f.s, RGas)) return "s";
    if (!same(c.cp[i], f.cp, heat)) return "cp";
    if (!same(c.cV[i], f.cV, heat)) return "cV";
    if (!same(c.w[i], f.w, f.w * heat / std::fabs(f.cV))) return "w";
    if (!same(c.lnphi[i], f.lnphi, 1.0 + p * v / RT)) return "ln phi";
    return c.reason[i] == f.reason ? "" : "reason";
}

void expect_single_calls(const Fluid& fluid, const Sample& states, const StateColumns& c,
                         const std::string& where) {
    std::size_t shown = 0;
    for (std::size_t i = 0; i < c.size() && shown < 3; ++i) {
        const double T = states.T[i], p = states.p[i];
        const VolumeResult r = VolumeTp(fluid, T, p);
        std::string what;
        if (r.reason != Reason::none) {
            what = c.reason[i] == r.reason && std::isnan(c.v[i]) ? "" : "reason of no volume";
        } else if (phase_of(r) != c.phase[i]) {
            what = "phase";
        } else {
            const double v = r.VFlag ? r.vV : r.vL;
            what = difference(c, i, ThermoState(fluid, T, p, v), T, p, v);
        }
        if (what.empty()) continue;
        ADD_FAILURE() << where << ": " << what << " at T = " << T << ", p = " << p;
        ++shown;
    }
}

class StateColumnsOf : public testing::TestWithParam<Eos> {};

TEST_P(StateColumnsOf, AgreeWithTheSingleCalls) {
    const std::size_t n = long_run() ? 7000 : 1000;
    unsigned seed = 1;
    for (const std::string_view cas : Substances) {
        const auto fluid = test::starter_fluid(cas, GetParam(), Typed);
        ASSERT_TRUE(fluid->has_eos()) << cas;
        const Sample states = random_states(fluid->substance.Tcr, n, seed++);
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            states_at(*kernel, *fluid, states.T, states.p, c);
            ASSERT_EQ(c.size(), n);
            // What is left to the single calls is refused by them, or a small part.
            const auto refused =
                std::count_if(c.w.begin(), c.w.end(), [](double w) { return std::isnan(w); });
            EXPECT_LT(c.singles, n / 20 + static_cast<std::size_t>(refused)) << cas;
            expect_single_calls(*fluid, states, c, std::string(cas) + ", " + kernel->name);
        }
    }
}

TEST_P(StateColumnsOf, OfAnIsothermAgreeWithTheSingleCalls) {
    for (const double Tr : {0.45, 0.8, 0.98, 1.1, 2.5}) {
        const auto fluid = test::starter_fluid(test::propane, GetParam(), Typed);
        const double T = Tr * fluid->substance.Tcr;
        Sample states = random_states(T, 333, 5);
        std::fill(states.T.begin(), states.T.end(), T);
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            states_on(*make_isotherm(*kernel, *fluid, T), states.p, c);
            expect_single_calls(*fluid, states, c, kernel->name);
        }
    }
}

// Volumes from the covolume to the ideal gas, through the unstable states and, at low T, through tension.
TEST_P(StateColumnsOf, OnVolumesAgreeWithTheSingleCalls) {
    const auto fluid = test::starter_fluid(test::carbon_dioxide, GetParam(), Typed);
    std::vector<double> v{-1.0, 0.0, nan};
    for (double x = 0.02; x < 1e4; x *= 1.03) v.push_back(x);
    for (const double Tr : {0.6, 0.95, 1.5}) {
        const double T = Tr * fluid->substance.Tcr;
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            std::vector<double> p;
            states_on_volumes(*make_isotherm(*kernel, *fluid, T), v, p, c);
            for (std::size_t i = 0; i < v.size(); ++i) {
                const PressureResult at = pTv(*fluid, T, v[i]);
                if (at.reason != Reason::none) {
                    EXPECT_TRUE(std::isnan(p[i]) && std::isnan(c.v[i]) && c.reason[i] == at.reason) << v[i];
                    continue;
                }
                const double scale = RGas * T / (v[i] - at.bound);
                ASSERT_NEAR(p[i], at.p, 1e-13 * scale) << v[i];
                const std::string what = difference(c, i, ThermoState(*fluid, T, p[i], v[i]), T, scale, v[i]);
                ASSERT_EQ(what, "") << v[i] << " at " << T << ", " << kernel->name;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Equations, StateColumnsOf,
                         testing::Values(Eos::ideal_gas, Eos::van_der_waals, Eos::berthelot,
                                         Eos::redlich_kwong, Eos::soave, Eos::peng_robinson, Eos::tovarn_ji_1,
                                         Eos::tovarn_ji_2, Eos::virial_manual, Eos::virial_van_der_waals,
                                         Eos::virial_berthelot, Eos::virial_redlich_kwong, Eos::virial_soave,
                                         Eos::virial_peng_robinson, Eos::pitzer_curl),
                         [](const auto& info) { return "Code" + std::to_string(number_of(info.param)); });

// Every form of cp(idG): the three shapes of the polynomial, one that falls below 0 when it is hot, and none.
TEST(StateColumns, KnowEveryFormOfTheIdealGasHeatCapacity) {
    SubstanceConstants base = test::starter_substance(test::propane);
    const std::array<float, 5> shapes[] = {{30.0f, 0.12f, -4e-5f, 5e-9f, 1e-14f},
                                           {30.0f, 0.12f, -4e-5f, 5e-9f, 2e5f},
                                           {0.0f, 30.0f, 0.12f, -4e-5f, 2e5f},
                                           {30.0f, 0.12f, -1.5e-4f, 0.0f, 0.0f}};
    for (const auto& shape : shapes) {
        SubstanceConstants substance = base;
        substance.cpPoly = shape;
        substance.havePoly = true;
        ModelSelection models = test::proposed_models(substance, Eos::soave);
        models.cpKode = CpForm::polynomial;
        const auto fluid =
            make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = {}});
        const Sample states = random_states(substance.Tcr, 300, 3);
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            states_at(*kernel, *fluid, states.T, states.p, c);
            expect_single_calls(*fluid, states, c, kernel->name);
        }
    }
    ModelSelection models = test::proposed_models(base, Eos::soave);
    models.cpKode = CpForm::none;
    const auto fluid = make_fluid({.substance = base, .models = models, .eos_input = {}, .reference = {}});
    const Sample states = random_states(base.Tcr, 300, 3);
    for (const StateKernel* kernel : kernels()) {
        StateColumns c;
        states_at(*kernel, *fluid, states.T, states.p, c);
        expect_single_calls(*fluid, states, c, "without cp(idG)");
        EXPECT_TRUE(std::isnan(c.h[7]) && std::isnan(c.w[7]));
        EXPECT_TRUE(c.v[7] > 0.0 && std::isfinite(c.lnphi[7]));
        EXPECT_EQ(c.reason[7], Reason::no_ideal_gas_cp);
    }
}

// cp constant: h = cp (T - T0), s = cp ln(T/T0) - R ln(p/p0), w^2 = 1000 cp/(cp - R) R T/M.
TEST(StateColumns, OfTheIdealGasInClosedForm) {
    SubstanceConstants substance = test::starter_substance(test::argon);
    substance.cpPoly = {20.786f, 0.0f, 0.0f, 0.0f, 0.0f};
    ModelSelection models = test::proposed_models(substance, Eos::ideal_gas);
    models.cpKode = CpForm::polynomial;
    const auto fluid =
        make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = {}});
    const double cp = static_cast<double>(20.786f), T0 = static_cast<double>(298.15f),
                 p0 = static_cast<double>(101.325f);
    const Sample states = random_states(300.0, 100, 9);
    for (const StateKernel* kernel : kernels()) {
        StateColumns c;
        states_at(*kernel, *fluid, states.T, states.p, c);
        for (std::size_t i = 0; i < c.size(); ++i) {
            const double T = states.T[i], p = states.p[i];
            EXPECT_NEAR(c.v[i], 8.31451 * T / p, 1e-14 * c.v[i]);
            EXPECT_NEAR(c.h[i], cp * (T - T0), 1e-9);
            EXPECT_NEAR(c.s[i], cp * std::log(T / T0) - 8.31451 * std::log(p / p0), 1e-11);
            EXPECT_NEAR(c.w[i], std::sqrt(1000.0 * cp / (cp - 8.31451) * 8.31451 * T / fluid->M), 1e-10);
            EXPECT_EQ(c.phase[i], ColumnPhase::V);
        }
    }
}

// Peng/Robinson for propane, T(cr) = 369.83 K, p(cr) = 4248 kPa, omega = 0.1523, with the published constants
// 0.457235529 and 0.0777960739 (Peng and Robinson 1976, to more digits): the volumes solve it.
TEST(StateColumns, SolveTheEquationOfState) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    substance.Tcr = 369.83;
    substance.pcr = 4248.0;
    substance.omega = 0.1523;
    const auto fluid = test::starter_fluid(substance, Eos::peng_robinson);
    const double R = 8.31451, Tcr = 369.83, pcr = 4248.0, omega = 0.1523;
    const double m = 0.37464 + 1.54226 * omega - 0.26992 * omega * omega, b = 0.0777960739 * R * Tcr / pcr;
    const Sample states = random_states(Tcr, 500, 11);
    for (const StateKernel* kernel : kernels()) {
        StateColumns c;
        states_at(*kernel, *fluid, states.T, states.p, c);
        for (std::size_t i = 0; i < c.size(); ++i) {
            const double T = states.T[i], v = c.v[i], alpha = 1.0 + m * (1.0 - std::sqrt(T / Tcr));
            const double a = 0.457235529 * R * R * Tcr * Tcr / pcr * alpha * alpha;
            const double repulsion = R * T / (v - b), attraction = a / (v * v + 2.0 * b * v - b * b);
            // The constants have nine digits, and v - b fewer than v
            EXPECT_NEAR(repulsion - attraction, states.p[i], 1e-8 * (repulsion * v / (v - b) + attraction));
        }
    }
}

// Along an isobar dh/dT = cp and ds/dT = cp/T; along an isotherm dg/dp = v and RT d(ln phi)/dp = v - RT/p.
TEST(StateColumns, AreConsistentAmongThemselves) {
    for (const Eos code :
         {Eos::van_der_waals, Eos::soave, Eos::peng_robinson, Eos::tovarn_ji_2, Eos::pitzer_curl}) {
        const auto fluid = test::starter_fluid(test::propane, code, Typed);
        const bool liquid_too = !fluid->VPhaseOnly;
        for (const StateKernel* kernel : kernels()) {
            for (const auto& [T, p] : {std::pair{300.0, 50.0}, {450.0, 9000.0}, {230.0, 5000.0}}) {
                if (p > 60.0 && !liquid_too) continue;
                const double dT = 1e-3, dp = 1e-4 * p;
                StateColumns c;
                states_at(*kernel, *fluid, std::vector{T - dT, T, T + dT}, std::vector{p, p, p}, c);
                EXPECT_NEAR((c.h[2] - c.h[0]) / (2 * dT), c.cp[1], 1e-6 * c.cp[1]);
                EXPECT_NEAR((c.s[2] - c.s[0]) / (2 * dT) * T, c.cp[1], 1e-6 * c.cp[1]);
                states_on(*make_isotherm(*kernel, *fluid, T), std::vector{p - dp, p, p + dp}, c);
                const double slope = (c.g[2] - c.g[0]) / (2 * dp), RT = RGas * T;
                EXPECT_NEAR(slope, c.v[1], 1e-6 * c.v[1]);
                EXPECT_NEAR(RT * (c.lnphi[2] - c.lnphi[0]) / (2 * dp), c.v[1] - RT / p,
                            1e-6 * (c.v[1] + RT / p));
                // cp - cV = -T (dp/dT)_v^2 (dv/dp)_T and w^2 = -1000 v^2 (cp/cV) (dp/dv)_T/M
                const double dpdv = 2 * dp / (c.v[2] - c.v[0]), v = c.v[1], cp = c.cp[1], cV = c.cV[1],
                             w = c.w[1];
                EXPECT_NEAR(w * w, -1000.0 * v * v * cp / cV * dpdv / fluid->M, 1e-5 * w * w);
                const auto hotter = make_isotherm(*kernel, *fluid, T + dT),
                           colder = make_isotherm(*kernel, *fluid, T - dT);
                std::vector<double> p2, p0;
                states_on_volumes(*hotter, std::vector{v}, p2, c);
                states_on_volumes(*colder, std::vector{v}, p0, c);
                const double dpdT = (p2[0] - p0[0]) / (2 * dT);
                EXPECT_NEAR(cp - cV, -T * dpdT * dpdT / dpdv, 1e-5 * cp);
            }
        }
    }
}

// dp(LV)/dT = (s(V) - s(L))/(v(V) - v(L)) (Clapeyron 1834), and g(L) = g(V).
TEST(StateColumns, OfSaturationObeyClapeyron) {
    for (const Eos code :
         {Eos::van_der_waals, Eos::redlich_kwong, Eos::soave, Eos::peng_robinson, Eos::tovarn_ji_2}) {
        const auto fluid = test::starter_fluid(test::propane, code, Typed);
        const double Tcr = fluid->substance.Tcr;
        std::vector<double> T;
        for (double Tr = 0.55; Tr < 0.985; Tr += 0.01) {
            for (const double dT : {-0.005, 0.0, 0.005}) T.push_back(Tr * Tcr + dT);
        }
        SaturationColumns c;
        saturation_at(*fluid, T, c);
        for (std::size_t i = 1; i < T.size(); i += 3) {
            ASSERT_TRUE(c.p[i] > 0.0 && c.L.v[i] < c.V.v[i]) << T[i];
            const double slope = (c.p[i + 1] - c.p[i - 1]) / (T[i + 1] - T[i - 1]);
            EXPECT_NEAR(slope, (c.V.s[i] - c.L.s[i]) / (c.V.v[i] - c.L.v[i]), 2e-6 * slope) << T[i];
            EXPECT_NEAR(c.L.g[i], c.V.g[i], 1e-9 * RGas * T[i]);
            EXPECT_EQ(c.L.phase[i], ColumnPhase::L);
            EXPECT_EQ(c.V.phase[i], ColumnPhase::V);
            const StateFunctions L = ThermoState(*fluid, T[i], c.p[i], c.L.v[i]);
            EXPECT_EQ(difference(c.L, i, L, T[i], c.p[i], c.L.v[i]), "");
        }
    }
}

TEST(StateColumns, OfSaturationTellWhereThereIsNone) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    SaturationColumns c;
    saturation_at(*fluid, std::vector{250.0, 400.0, nan, -3.0, 300.0}, c);
    for (const std::size_t i : {1u, 2u, 3u}) {
        EXPECT_TRUE(std::isnan(c.p[i]) && std::isnan(c.L.v[i]) && std::isnan(c.V.h[i]));
        EXPECT_EQ(c.L.reason[i], pLV_EOS(*fluid, std::vector{250.0, 400.0, nan, -3.0}[i]).reason);
    }
    EXPECT_EQ(c.L.reason[1], Reason::above_critical_T);
    EXPECT_TRUE(c.p[0] > 0.0 && c.p[4] > c.p[0]);
    const auto virial = test::starter_fluid(test::propane, Eos::virial_soave);
    saturation_at(*virial, std::vector{250.0}, c);
    EXPECT_TRUE(std::isnan(c.p[0]));
    EXPECT_EQ(c.V.reason[0], Reason::vapor_only);
}

// On the saturation curve both phases are there; a little off it one is.
TEST(StateColumns, FindTheSaturationBand) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    for (const double T : {180.0, 260.0, 330.0, 365.0}) {
        const double p = pLV_EOS(*fluid, T).p;
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            states_on(*make_isotherm(*kernel, *fluid, T), std::vector{0.97 * p, p, 1.03 * p}, c);
            EXPECT_EQ(c.phase[0], ColumnPhase::V);
            EXPECT_EQ(c.phase[1], ColumnPhase::saturated);
            EXPECT_EQ(c.phase[2], ColumnPhase::L);
            EXPECT_LT(c.v[2], c.v[1]);
        }
    }
}

// Both edges of the band |fd| < 0.001 lie where the single calls have them.
TEST(StateColumns, KeepTheEdgesOfTheSaturationBand) {
    for (const Eos code : {Eos::van_der_waals, Eos::soave, Eos::peng_robinson}) {
        const auto fluid = test::starter_fluid(test::propane, code);
        for (const double Tr : {0.5, 0.7, 0.9, 0.99}) {
            const double T = Tr * fluid->substance.Tcr, p = pLV_EOS(*fluid, T).p;
            Sample states;
            for (int k = -400; k <= 400; ++k) {
                states.T.push_back(T);
                states.p.push_back(p * (1.0 + 2e-4 * (1.0 - Tr) * k));
            }
            for (const StateKernel* kernel : kernels()) {
                StateColumns c;
                states_at(*kernel, *fluid, states.T, states.p, c);
                expect_single_calls(*fluid, states, c, kernel->name);
                const auto saturated = std::count(c.phase.begin(), c.phase.end(), ColumnPhase::saturated);
                EXPECT_TRUE(saturated > 1 && saturated < 800) << saturated;
            }
        }
    }
}

// T and p that are T(cr), p(cr) in single precision, and the states around.
TEST(StateColumns, KeepTheNeighbourhoodOfTheCriticalPoint) {
    for (const Eos code : {Eos::van_der_waals, Eos::soave, Eos::peng_robinson, Eos::tovarn_ji_1}) {
        const auto fluid = test::starter_fluid(test::carbon_dioxide, code, Typed);
        Sample states;
        for (const double near : {0.0, 1e-12, 1e-9, 3e-8, 1e-7, 3e-7, 1e-6, 1e-4, 1e-3, 0.01, 0.03}) {
            for (const double far : {0.0, 1e-8, 2e-7, 1e-6, 1e-4, 3e-3, 0.02, 0.1}) {
                for (const double sign : {1.0, -1.0}) {
                    for (const double side : {1.0, -1.0}) {
                        states.T.push_back(fluid->substance.Tcr * (1.0 + sign * near));
                        states.p.push_back(fluid->substance.pcr * (1.0 + side * far));
                    }
                }
            }
        }
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            states_at(*kernel, *fluid, states.T, states.p, c);
            expect_single_calls(*fluid, states, c, kernel->name);
        }
    }
}

// States that no loop takes stand between good ones, in batches of every length around a block.
TEST(StateColumns, RefuseWhatTheSingleCallsRefuse) {
    const auto fluid = test::starter_fluid(test::propane, Eos::soave);
    const double T_bad[] = {nan, 0.0, -1.0, inf, 300.0, 300.0, 300.0, 300.0, 1e-3, 1e9};
    const double p_bad[] = {100.0, 100.0, 100.0, 100.0, nan, 0.0, -5.0, inf, 100.0, 100.0};
    for (const std::size_t n : {0u, 1u, 2u, 15u, 16u, 17u, 33u}) {
        Sample states;
        for (std::size_t i = 0; i < n; ++i) {
            states.T.push_back(i % 3 == 1 ? T_bad[i % 10] : 310.0);
            states.p.push_back(i % 3 == 1 ? p_bad[i % 10] : 200.0);
        }
        for (const StateKernel* kernel : kernels()) {
            StateColumns c;
            states_at(*kernel, *fluid, states.T, states.p, c);
            ASSERT_EQ(c.size(), n);
            expect_single_calls(*fluid, states, c, kernel->name);
        }
    }
    StateColumns c;
    states_on(*make_isotherm(*fluid, nan), std::vector{100.0}, c);
    EXPECT_EQ(c.reason[0], Reason::T_not_positive);
    const auto none = test::starter_fluid(test::propane, Eos::none);
    states_at(*none, std::vector{300.0}, std::vector{100.0}, c);
    EXPECT_EQ(c.reason[0], Reason::no_equation);
    EXPECT_TRUE(std::isnan(c.v[0]));
}

// An isotherm outlives the fluid it was made of, and a column vector is used again.
TEST(StateColumns, OfAnIsothermKeepTheFluid) {
    auto fluid = test::starter_fluid(test::methane, Eos::redlich_kwong);
    const auto isotherm = make_isotherm(*fluid, 200.0);
    StateColumns first, second;
    states_at(*fluid, std::vector(40, 200.0), std::vector(40, 3000.0), first);
    fluid.reset();
    states_on(*isotherm, std::vector{3000.0}, second);
    EXPECT_NEAR(second.h[0], first.h[39], 1e-9);
    states_on(*isotherm, std::vector{3000.0, 100.0}, first);
    EXPECT_EQ(first.size(), 2u);
    EXPECT_EQ(first.h[0], second.h[0]);
}

}  // namespace
}  // namespace quom

// Volume roots against the pressure equation in extended precision, phase decisions and their bands, B(T),
// T(p, v), and the permanent table of hard states.
#include "engine/volume_solver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "support/starter.h"

namespace quom {
namespace {

using Real = long double;

// p(v) at one T and its slope, in extended precision.
struct Isotherm {
    Real RT, a, b, c, d;
    explicit Isotherm(const EosAtT& at)
        : RT(static_cast<Real>(RGas) * at.T), a(at.a), b(at.b), c(at.c), d(at.d) {}
    Real p(Real v) const { return RT / (v - b) - a / ((v + c) * (v + d)); }
    Real slope(Real v) const {
        const Real N = (v + c) * (v + d);
        return a * (2 * v + c + d) / (N * N) - RT / ((v - b) * (v - b));
    }
    // Volumes of the liquid and the vapor spinodal, by a scan over v - b and bisection; false above Tcr.
    bool spinodals(Real& vL, Real& vV) const {
        const Real start = 1e-4L * b;
        Real previous = start, found[2] = {0, 0};
        int n = 0;
        for (int i = 1; i < 4000 && n < 2; ++i) {
            const Real next = start * powl(10.0L, 9.0L * i / 4000);
            if ((slope(b + previous) > 0) != (slope(b + next) > 0)) {
                Real lo = previous, hi = next;
                for (int k = 0; k < 100; ++k) {
                    const Real mid = (lo + hi) / 2;
                    ((slope(b + mid) > 0) == (slope(b + lo) > 0) ? lo : hi) = mid;
                }
                found[n++] = b + lo;
            }
            previous = next;
        }
        vL = found[0];
        vV = found[1];
        return n == 2;
    }
};

struct SubstanceAndEos {
    std::string_view cas;
    Eos code;
};

// The number of roots, and each root to its last digits, from the smallest pressures to the largest.
TEST(CubicV, RootsAgreeWithExtendedPrecision) {
    const SubstanceAndEos rows[] = {{test::propane, Eos::peng_robinson}, {test::propane, Eos::van_der_waals},
                                    {test::propane, Eos::berthelot},     {test::decane, Eos::soave},
                                    {test::helium, Eos::redlich_kwong},  {test::water, Eos::peng_robinson}};
    for (const auto& [cas, code] : rows) {
        const auto fluid = test::starter_fluid(cas, code);
        for (double Tr = 0.3; Tr < 3.0; Tr *= 1.13) {
            const double T = Tr * fluid->substance.Tcr;
            const EosAtT at = EOSParT(*fluid, T);
            const Isotherm iso(at);
            Real vsL = 0, vsV = 0;
            const bool loop = iso.spinodals(vsL, vsV);
            for (double pr = 1e-11; pr < 200.0; pr *= 4.7) {
                const double p = pr * fluid->substance.pcr;
                const CubicRoots roots = CubicV(at, p);
                const std::string where = std::string(cas) + " " + std::to_string(number_of(code)) + " Tr " +
                                          std::to_string(Tr) + " p " + std::to_string(p);
                ASSERT_EQ(roots.reason, Reason::none) << where;
                const bool three = loop && p < iso.p(vsV) && p > iso.p(vsL);
                EXPECT_EQ(roots.nRoots, three ? 3 : 1) << where;
                for (int k = 0; k < roots.nRoots; ++k) {
                    const double v = roots.VRoot[static_cast<std::size_t>(k)];
                    const Real exact = v - (iso.p(v) - p) / iso.slope(v);
                    // a root close to its twin is worth fewer digits
                    EXPECT_NEAR(v, static_cast<double>(exact), 2e-9 * v) << where << " root " << k;
                    EXPECT_GT(v, at.b) << where;
                }
            }
        }
    }
}

TEST(PhaseRegion, OneAnswerWithItsTies) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const double Tc = fluid->substance.Tcr, pc = fluid->substance.pcr;
    const double T_up = std::nextafter(Tc, 1e9),
                 p_down = std::nextafter(pc, 0.0);  // equal in single precision
    const struct {
        double T, p;
        int region;
    } rows[] = {{0.8 * Tc, 0.9 * pc, 0},
                {0.8 * Tc, 2 * pc, 1},
                {1.2 * Tc, 2 * pc, 2},
                {1.2 * Tc, 0.9 * pc, 3},
                {Tc, pc, 4},
                {T_up, p_down, 4},
                {Tc, 0.9 * pc, 0},
                {T_up, 0.9 * pc, 0},
                {Tc, 2 * pc, 1},
                {T_up, 2 * pc, 1},
                {0.8 * Tc, pc, 0},
                {0.8 * Tc, p_down, 0},
                {1.2 * Tc, pc, 3},
                {0.0, 2 * pc, 1},
                {1.2 * Tc, 0.0, 3},
                {0.0, 0.0, 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(phase_region(*fluid, row.T, row.p), row.region) << row.T << " " << row.p;
        if (row.T == 0.0 || row.p == 0.0) continue;
        const VolumeResult r = VolumeTp(*fluid, row.T, row.p);
        EXPECT_EQ(r.PhaseRegion, row.region) << row.T << " " << row.p;
        EXPECT_EQ(r.reason, Reason::none) << row.T << " " << row.p;
        EXPECT_TRUE(row.region == 0 || (r.LFlag && r.VFlag)) << row.T << " " << row.p;
    }
}

TEST(VolumeTp, PhasesAndWords) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr;
    const struct {
        double Tr, pr;
        bool L, V;
        std::string_view msg;
    } rows[] = {
        {0.8, 0.9, true, false, "one solution of the EOS"},
        {0.8, 0.25, true, false, "3 V solutions of the EOS"},
        {0.8, 0.1, false, true, "3 V solutions of the EOS"},
        {0.95, 0.2, false, true, "one solution of the EOS"},
        {0.8, 2.0, true, true, "one solution of the EOS;supercritical"},
        {1.2, 2.0, true, true, "one solution of the EOS;supercritical"},
        {1.0, 1.0, true, true, "one solution of the EOS; critical"},
    };
    for (const auto& row : rows) {
        const VolumeResult r = VolumeTp(*fluid, row.Tr * Tcr, row.pr * pcr);
        EXPECT_EQ(r.reason, Reason::none);
        EXPECT_EQ(r.LFlag, row.L) << row.Tr << " " << row.pr;
        EXPECT_EQ(r.VFlag, row.V) << row.Tr << " " << row.pr;
        EXPECT_EQ(r.msg, row.msg) << row.Tr << " " << row.pr;
    }
    for (const auto& [T, p, reason] : {std::tuple{0.0, 100.0, Reason::T_not_positive},
                                       {-5.0, 100.0, Reason::T_not_positive},
                                       {300.0, 0.0, Reason::p_not_positive},
                                       {300.0, -1.0, Reason::p_not_positive},
                                       {NAN, 100.0, Reason::T_not_positive},
                                       {300.0, INFINITY, Reason::p_not_positive}}) {
        const VolumeResult bad = VolumeTp(*fluid, T, p);
        EXPECT_EQ(bad.reason, reason);
        EXPECT_EQ(bad.err(), -1);
        EXPECT_EQ(bad.vV + bad.vL + bad.rhoV + bad.rhoL, 0.0);
    }
}

// A single root counts as critical within 0.001 m^3/kmol of the critical volume, for every substance.
TEST(VolumeTp, CriticalVolumeBand) {
    for (const std::string_view cas : {test::propane, test::hydrogen, test::decane}) {
        const auto fluid = test::starter_fluid(cas, Eos::peng_robinson);
        const double T = 1.02 * fluid->substance.Tcr;
        for (const double offset : {-0.001003, -0.000997, 0.0, 0.000997, 0.001003}) {
            const VolumeResult r = VolumeTp(*fluid, T, pTv(*fluid, T, fluid->eos.vcrEOS + offset).p);
            ASSERT_EQ(r.nRoots, 1);
            const bool critical = std::fabs(offset) < 0.001;
            EXPECT_EQ(r.PhaseRegion == 4, critical) << cas << " " << offset;
            EXPECT_EQ(r.msg, critical ? "one solution of the EOS;supercritical; critical"
                                      : "one solution of the EOS;supercritical");
        }
    }
}

// Both phases exist where the areas between isotherm and p differ by less than 0.001 of themselves.
TEST(VolumeTp, SaturationBand) {
    const auto fluid = test::starter_fluid(test::propane, Eos::soave);
    const double T = 0.8 * fluid->substance.Tcr, pLV = pLV_EOS(*fluid, T).p;
    const VolumeResult at = VolumeTp(*fluid, T, pLV);
    EXPECT_TRUE(at.LFlag && at.VFlag);
    EXPECT_NEAR(at.rhoL * at.vL, fluid->M, 1e-9);
    EXPECT_NEAR(at.fd, 0.0, 1e-8);
    // at p(LV) + dp both phases have g1 - g2 = 2 g1, and g1 + g2 = -(vV - vL) dp
    const double slope = -(at.vV - at.vL) / (at.g1 - at.g2);
    for (const double fd : {-0.00101, -0.00099, 0.00099, 0.00101}) {
        const VolumeResult r = VolumeTp(*fluid, T, pLV + fd / slope);
        EXPECT_NEAR(r.fd, fd, 2e-6);
        EXPECT_EQ(r.LFlag, fd < 0.001) << fd;
        EXPECT_EQ(r.VFlag, fd > -0.001) << fd;
    }
}

TEST(VolumeTp, VaporOnlyEquations) {
    const SubstanceConstants propane = test::starter_substance(test::propane);
    const auto ideal_gas = test::starter_fluid(propane, Eos::ideal_gas);
    const VolumeResult ideal = VolumeTp(*ideal_gas, 300.0, 100.0);
    EXPECT_DOUBLE_EQ(ideal.vV, RGas * 300.0 / 100.0);
    EXPECT_EQ(ideal.msg, "EOS for the V-phase only!");
    EXPECT_FALSE(ideal.LFlag);
    const auto pitzer = with_eos(*ideal_gas, Eos::pitzer_curl);
    // Second virial coefficient of propane at 300 K: -382 cm^3/mol (Dymond et al., 2002); the correlation is
    // good for some 4 % there
    EXPECT_NEAR(VirialB(*pitzer, 300.0), -0.382, 0.016);
    EXPECT_DOUBLE_EQ(VolumeTp(*pitzer, 300.0, 100.0).vV, RGas * 300.0 / 100.0 + VirialB(*pitzer, 300.0));
    EXPECT_EQ(VolumeTp(*pitzer, 150.0, 20000.0).reason, Reason::volume_not_positive);
    EXPECT_EQ(pTv(*pitzer, 300.0, -0.1).reason, Reason::volume_below_B) << "above B, but no volume";
    const auto cubic = with_eos(*ideal_gas, Eos::peng_robinson);
    EXPECT_EQ(VirialB(*cubic, 300.0), 0.0);  // a plain cubic code has no B
    const EosAtT at = EOSParT(*cubic, 300.0);
    EXPECT_DOUBLE_EQ(VirialB(*with_eos(*cubic, Eos::virial_peng_robinson), 300.0),
                     at.b - at.a / (RGas * 300.0));
    const auto manual = test::starter_fluid(propane, Eos::virial_manual, {.b0 = 0.1, .b1 = 400.0, .b2 = 1.2});
    EXPECT_DOUBLE_EQ(VirialB(*manual, 300.0), 0.1 - 400.0 / std::pow(300.0, 1.2));
}

// B pcr/(R Tcr) of Pitzer and Curl, J. Am. Chem. Soc. 79 (1957) 2369, summed by hand, and its T-derivatives.
TEST(VirialB, PitzerCurl) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    const struct {
        double Tr, f0, f1;
    } rows[] = {{0.5, -1.1663, -3.6518}, {1.0, -0.3361, -0.0713}, {2.0, -0.0566375, 0.165846484375}};
    for (const auto& row : rows) {
        for (const double omega : {0.0, 0.5}) {
            substance.omega = omega;
            const auto fluid = test::starter_fluid(substance, Eos::pitzer_curl);
            const double scale = RGas * substance.Tcr / substance.pcr, T = row.Tr * substance.Tcr,
                         h = 1e-4 * T;
            EXPECT_NEAR(VirialB(*fluid, T) / scale, row.f0 + omega * row.f1, 1e-8) << row.Tr;
            const VirialDerivatives B = virial_derivatives(*fluid, T);
            const double low = VirialB(*fluid, T - h), here = VirialB(*fluid, T),
                         high = VirialB(*fluid, T + h);
            EXPECT_NEAR(B.B1 * T / scale, (high - low) / (2 * h) * T / scale, 2e-5);
            EXPECT_NEAR(B.B2 * T * T / scale, (high - 2 * here + low) / (h * h) * T * T / scale, 2e-4);
        }
    }
}

// State -> density -> T and state -> v -> p close; v at or below the covolume is refused.
TEST(TpVAndPTv, RoundTrips) {
    const SubstanceAndEos rows[] = {{test::propane, Eos::peng_robinson}, {test::propane, Eos::berthelot},
                                    {test::propane, Eos::redlich_kwong}, {test::water, Eos::soave},
                                    {test::decane, Eos::peng_robinson},  {test::propane, Eos::pitzer_curl},
                                    {test::propane, Eos::virial_soave},  {test::propane, Eos::ideal_gas}};
    for (const auto& [cas, code] : rows) {
        const auto fluid = test::starter_fluid(cas, code);
        const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr;
        for (const double Tr : {0.55, 0.63, 0.8, 0.95, 1.05, 1.6}) {
            for (const double pr : {1e-4, 0.05, 0.6, 3.0}) {
                const double T = Tr * Tcr, p = pr * pcr;
                const VolumeResult r = VolumeTp(*fluid, T, p);
                if (fluid->VPhaseOnly && r.reason != Reason::none) continue;
                ASSERT_EQ(r.reason, Reason::none);
                const double v = r.VFlag ? r.vV : r.vL;
                const TemperatureResult back = TpV(*fluid, p, fluid->M / v, false);
                EXPECT_NEAR(back.T, T, 1e-9 * T)
                    << cas << " " << number_of(code) << " Tr " << Tr << " pr " << pr;
                EXPECT_NEAR(pTv(*fluid, T, v).p, p, 1e-6 * p + 1e-7 * pcr)
                    << cas << " " << number_of(code) << " Tr " << Tr << " pr " << pr;
            }
        }
        const double bound = pTv(*fluid, Tcr, 1e9).bound;
        const PressureResult refused = pTv(*fluid, Tcr, bound);
        EXPECT_EQ(refused.reason, fluid->VPhaseOnly ? Reason::volume_below_B : Reason::volume_below_b);
        EXPECT_EQ(refused.p, 0.0);
    }
}

// Real vapor states at which repetition of T = (v - B(T)) p/R does not settle.
TEST(TpV, VirialEquationsAtDenseVapor) {
    const auto fluid = test::starter_fluid("110-43-0", Eos::virial_redlich_kwong);  // 2-heptanone
    EXPECT_NEAR(TpV(*fluid, 8897.57, 395.6339, false).T, 739.173, 0.001);
    for (const std::string_view cas : {test::propane, test::water, test::benzene}) {
        for (const EosInfo& row : eos_list()) {
            if (row.family != EosFamily::virial && row.family != EosFamily::pitzer_curl) continue;
            const auto virial = test::starter_fluid(cas, row.code);
            for (const double Tr : {0.6, 0.8, 1.0, 1.3}) {
                // down to v = -B, the smallest of which the equation can speak
                const double T = Tr * virial->substance.Tcr, B = VirialB(*virial, T);
                for (const double times : {1.0, 1.5, 4.0, 1000.0}) {
                    const double v = -times * B, p = pTv(*virial, T, v).p;
                    EXPECT_NEAR(TpV(*virial, p, virial->M / v, false).T, T, 1e-9 * T)
                        << cas << row.text << Tr;
                }
            }
        }
    }
}

// Two-phase states: T(p, rho) is T(LV)(p), over the dome and every cubic code.
TEST(TpV, FindsTheTwoPhaseTemperature) {
    for (const std::string_view cas : {test::propane, test::water, test::methane}) {
        for (const EosInfo& row : eos_list()) {
            if (row.family != EosFamily::cubic) continue;
            const auto fluid = test::starter_fluid(cas, row.code);
            for (const double Tr : {0.55, 0.6, 0.65, 0.7, 0.8, 0.9, 0.97}) {
                const Saturation sat = pLV_EOS(*fluid, Tr * fluid->substance.Tcr);
                const double width = sat.vV - sat.vL;
                for (const double y : {0.001, 0.03, 0.4, 0.9}) {
                    const double rho = fluid->M / (sat.vL + y * width);
                    EXPECT_NEAR(TpV(*fluid, sat.p, rho, false).T, sat.T, 1e-8 * sat.T)
                        << cas << row.text << " Tr " << Tr << " y " << y;
                }
                // outside the dome T is that of the equation
                const double v = sat.vL - 0.001 * (sat.vL - sat.eos.b);
                EXPECT_LT(TpV(*fluid, sat.p, fluid->M / v, false).T, sat.T)
                    << cas << row.text << " Tr " << Tr;
                EXPECT_GT(TpV(*fluid, sat.p, fluid->M / (1.001 * sat.vV), false).T, sat.T);
            }
        }
    }
}

TEST(TpV, Refusals) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    EXPECT_EQ(TpV(*fluid, 0.0, 5.0, false).reason, Reason::p_not_positive);
    EXPECT_EQ(TpV(*fluid, 100.0, 0.0, false).reason, Reason::rho_not_positive);
    EXPECT_EQ(TpV(*fluid, 100.0, fluid->M / fluid->eos.EOSb, false).reason, Reason::no_T_at_p_rho);
    // the metastable state is taken as it is when it is asked for
    const Saturation sat = pLV_EOS(*fluid, 300.0);
    const double v = 1.02 * sat.vL;
    const double T = TpV(*fluid, sat.p, fluid->M / v, true).T;
    EXPECT_NEAR(pTv(*fluid, T, v).p, sat.p, 1e-8 * sat.p);
    EXPECT_GT(T, 300.1);
}

TEST(InflectionV, CurvatureVanishesThere) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const double T = 0.9 * fluid->substance.Tcr;
    const Inflection r = InflectionV(*fluid, T);
    ASSERT_EQ(r.reason, Reason::none);
    const Isotherm iso(EOSParT(*fluid, T));
    for (int k = 0; k < 2; ++k) {
        ASSERT_GT(r.v[k], 0.0);
        const Real h = 1e-4L * r.v[k], v = r.v[k];
        const Real bend = (iso.slope(v + h) - iso.slope(v - h)) / (2 * h);
        EXPECT_NEAR(static_cast<double>(bend * v / iso.slope(v)), 0.0, 1e-3) << k;
        EXPECT_NEAR(r.pv[k], static_cast<double>(iso.p(v)), 1e-6 * std::fabs(r.pv[k]));
    }
    EXPECT_EQ(InflectionV(*with_eos(*fluid, Eos::pitzer_curl), T).reason, Reason::no_solution);
}

// b(T) of form 2 of Tovarn/Ji falls below 0 above T/T(cr) = 1 + 1/sqrt(B1): no volume below 0 is a state, and
// p(T, v) tests v against b at its own T.
TEST(VolumeTp, CovolumeBelowZero) {
    const EosInput input{.JiP3 = 0.45, .JiP4 = 0, .JiP5 = 0, .JiZc = 0.297, .JiB1 = 0.17};
    const auto fluid = test::starter_fluid(test::nitrogen, Eos::tovarn_ji_2, input);
    EXPECT_LT(EOSParT(*fluid, 440.0).b, 0.0);
    for (double T = 60.0; T < 900.0; T *= 1.07) {
        for (double p = 0.001; p < 4e5; p *= 3.1) {
            const VolumeResult r = VolumeTp(*fluid, T, p);
            if (r.reason != Reason::none) {
                EXPECT_EQ(r.reason, Reason::no_root_above_b) << T << " " << p;
                EXPECT_EQ(r.vL + r.vV + r.rhoL + r.rhoV, 0.0);
                EXPECT_GT(T, 400.0);
                continue;
            }
            const double v = r.VFlag ? r.vV : r.vL;
            EXPECT_GT(v, std::max(0.0, r.eos.b)) << T << " " << p;
            EXPECT_NEAR(pTv(*fluid, T, v).p, p, 1e-6 * p + 1e-6) << T << " " << p;
        }
    }
    EXPECT_EQ(VolumeTp(*fluid, 440.0, 200000.0).reason, Reason::no_root_above_b);
    const double b = EOSParT(*fluid, 126.2).b, v = 0.8 * b;  // above b at 420 K, below it at T(cr)
    ASSERT_LT(EOSParT(*fluid, 420.0).b, v);
    EXPECT_EQ(pTv(*fluid, 126.2, v).reason, Reason::volume_below_b);
    EXPECT_EQ(pTv(*fluid, 420.0, v).reason, Reason::none);
    EXPECT_EQ(pTv(*fluid, 440.0, -0.001).reason, Reason::volume_below_b);
}

// States at which a plain iteration was seen to fail; they stay here for good.
struct HardState {
    std::string_view cas;
    Eos code;
    double Tr, pr;
    const char* why;
};
const HardState HardStates[] = {
    {test::propane, Eos::peng_robinson, 0.5, 1e-7, "deflation from the vapor root loses the liquid root"},
    {test::propane, Eos::peng_robinson, 0.35, 2e-8, "spurious negative root beside the vapor root"},
    {test::propane, Eos::van_der_waals, 0.9, 100.0, "a start at R T/p walks in circles"},
    {test::water, Eos::peng_robinson, 0.81, 31.0, "a start at R T/p does not arrive"},
    {test::helium, Eos::van_der_waals, 0.99, 1e-11, "quantum gas at the smallest pressures"},
    {test::decane, Eos::soave, 0.3, 1e-11, "vapor root ten decades above b"},
    {test::hydrogen, Eos::peng_robinson, 3.0, 230.0, "volume close to b"},
};

TEST(VolumeTp, HardStates) {
    for (const HardState& c : HardStates) {
        const auto fluid = test::starter_fluid(c.cas, c.code);
        const double T = c.Tr * fluid->substance.Tcr, p = c.pr * fluid->substance.pcr;
        const VolumeResult r = VolumeTp(*fluid, T, p);
        ASSERT_EQ(r.reason, Reason::none) << c.why;
        ASSERT_TRUE(r.LFlag || r.VFlag) << c.why;
        const double v = r.VFlag ? r.vV : r.vL;
        const Isotherm iso(r.eos);
        EXPECT_NEAR(static_cast<double>((iso.p(v) - p) / iso.slope(v)), 0.0, 1e-10 * v) << c.why;
    }
}

// Every starter substance and cubic code, a coarse grid of the whole range.
TEST(VolumeTp, WholeRangeOfEverySubstance) {
    const DatabaseFile file = test::starter_database();
    for (int index = 1; index <= file.StoffAnzahl(); ++index) {
        const SubstanceConstants substance = unpack_substance(file, index, true).constants;
        for (const EosInfo& row : eos_list()) {
            if (row.family != EosFamily::cubic) continue;
            const auto fluid = test::starter_fluid(substance, row.code);
            for (const double Tr : {0.3, 0.52, 0.83, 0.997, 1.0, 1.4, 3.0}) {
                for (const double p : {0.001, 1.0, 101.325, 4000.0, 300000.0}) {
                    const VolumeResult r = VolumeTp(*fluid, Tr * substance.Tcr, p);
                    ASSERT_EQ(r.reason, Reason::none) << substance.StoffName << row.text << Tr << " " << p;
                    ASSERT_TRUE(r.LFlag || r.VFlag);
                    ASSERT_GT(r.roots.VRoot[0], r.eos.b);
                }
            }
        }
    }
}

}  // namespace
}  // namespace quom

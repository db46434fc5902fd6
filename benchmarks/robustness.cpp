// States of every starter substance with codes 2 to 6 over T/T(cr) 0.3 to 3 and p 1 Pa to 300 MPa (log
// spaced): counts what fails, and the worst round trip T -> p(LV) -> T over T/T(cr) 0.45 to 0.999. Usage:
// robustness [states per substance and code, 100 if not given]. Exit status 1 when anything fails.
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "../tests/support/starter.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

using namespace quom;

namespace {

struct Count {
    long states = 0, failed = 0, no_phase = 0, at_b = 0, not_finite = 0;
    long saturations = 0, p_failed = 0, T_failed = 0;
    double worst_secant = 0, worst_scan = 0;  // relative error of T
};

void report(const Session& s, int code, const char* what, double T, double p) {
    std::printf("%s: %s code %d T/Tcr %.6f p %.6g kPa\n", what, s.substance.StoffName.c_str(), code,
                T / s.substance.Tcr, p);
}

void one_state(Session& s, int code, double T, double p, Count& n) {
    ++n.states;
    const VolumeResult r = VolumeTp(s, T, p);
    if (r.err) {
        ++n.failed;
        return report(s, code, "no volume", T, p);
    }
    if (!r.LFlag && !r.VFlag) {
        ++n.no_phase;
        return report(s, code, "no phase", T, p);
    }
    if (!(s.scratch.VRoot[0] > s.scratch.bT)) {
        ++n.at_b;
        report(s, code, "root at b", T, p);
    }
    for (int phase = 0; phase < 2; ++phase) {
        if (!(phase == phase_L ? r.LFlag : r.VFlag)) continue;
        const StateFunctions f = ThermoState(s, T, p, phase == phase_L ? r.vL : r.vV, phase);
        if (f.err && s.models.cpKode == 0) continue;
        const double sum = f.v + f.h + f.u + f.s + f.g + f.a + f.eH + f.eU + f.cp + f.cV + f.w;
        if (f.err || !std::isfinite(sum)) {
            ++n.not_finite;
            report(s, code, f.environment_failed ? "no environment" : "no functions", T, p);
        }
    }
}

void one_saturation(Session& s, int code, double T, Count& n) {
    ++n.saturations;
    const Saturation p = pLV_EOS(s, T);
    if (p.err) {
        ++n.p_failed;
        return report(s, code, "no p(LV)", T, 0.0);
    }
    const Saturation back = TLV_EOS(s, p.value);
    if (back.err) {
        ++n.T_failed;
        return report(s, code, "no T(LV)", T, p.value);
    }
    double& worst = p.value / s.substance.pcr < 0.02 ? n.worst_scan : n.worst_secant;
    worst = std::fmax(worst, std::fabs(back.value / T - 1.0));
}

}  // namespace

int main(int argc, char** argv) {
    const int per_code = argc > 1 ? std::atoi(argv[1]) : 100;
    const int nT = static_cast<int>(std::sqrt(per_code)), np = (per_code + nT - 1) / nT;
    Session s = test::starter_session();
    Count n;
    for (int index = 1; index <= s.database.file.StoffAnzahl(); ++index) {
        SelectSubstance(s, index);
        select_models(s);
        for (int code = 2; code <= 6; ++code) {
            test::select_eos(s, code);
            for (int i = 0; i < nT; ++i) {
                const double T = s.substance.Tcr * 0.3 * std::pow(10.0, static_cast<double>(i) / (nT - 1));
                for (int k = 0; k < np; ++k) {
                    one_state(s, code, T, 0.001 * std::pow(3e8, static_cast<double>(k) / (np - 1)), n);
                }
                one_saturation(s, code, s.substance.Tcr * (0.45 + 0.549 * i / (nT - 1)), n);
            }
        }
    }
    std::printf("%ld states: %ld without volume, %ld without phase, %ld roots at b, %ld not finite\n",
                n.states, n.failed, n.no_phase, n.at_b, n.not_finite);
    std::printf(
        "%ld saturations: %ld without p(LV), %ld without T(LV); worst T -> p -> T: %.2g (p/pcr >= 0.02), "
        "%.2g (below)\n",
        n.saturations, n.p_failed, n.T_failed, n.worst_secant, n.worst_scan);
    return n.failed + n.no_phase + n.at_b + n.not_finite + n.p_failed + n.T_failed ? 1 : 0;
}

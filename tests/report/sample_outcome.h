// An outcome in which every number is another one, so that a value in the wrong place shows.
#pragma once
#include "calc/outcome.h"

namespace quom::test {

// Values of a phase: v = base, h = base + 1, s = base + 2 ... w = base + 10; arrays from base + 100 on.
inline PhaseOutcome sample_phase(double base, bool with_arrays) {
    PhaseOutcome phase;
    phase.v = base;
    phase.h = base + 1;
    phase.s = base + 2;
    phase.g = base + 3;
    phase.u = base + 4;
    phase.a = base + 5;
    phase.eH = base + 6;
    phase.eU = base + 7;
    phase.cp = base + 8;
    phase.cV = base + 9;
    phase.w = base + 10;
    phase.rho = base + 11;
    phase.cpId = base + 12;
    if (!with_arrays) return phase;
    PhaseArrays& arrays = phase.arrays.emplace();
    double x = base + 100;
    for (double& entry : arrays.DerivA) entry = ++x;
    for (double& entry : arrays.Deriv2A) entry = ++x;
    for (double& entry : arrays.CoefA) entry = ++x;
    for (double& entry : arrays.FuncA) entry = ++x;
    return phase;
}

// A two-phase state at 300 K, 500 kPa; a mode of one phase keeps one of them.
inline Outcome sample_outcome(Mode mode, PhaseWord word, bool with_arrays = false) {
    Outcome outcome;
    outcome.mode = mode;
    outcome.T = 300;
    outcome.p = 500;
    outcome.rho = 77;
    outcome.v = 0.5;
    outcome.phase = word;
    outcome.IsL = word == PhaseWord::L || word == PhaseWord::VL;
    outcome.IsV = word == PhaseWord::V || word == PhaseWord::VL;
    if (outcome.IsL) outcome.L = sample_phase(1000, with_arrays);
    if (outcome.IsV) outcome.V = sample_phase(2000, with_arrays);
    outcome.quality = word == PhaseWord::VL ? 0.25 : word == PhaseWord::V ? 1.0 : 0.0;
    if (word != PhaseWord::VL) return outcome;
    outcome.vaporization.emplace();
    outcome.vaporization->hLV = 15000;
    outcome.vaporization->sLV = 50;
    outcome.mixture = MixtureOutcome{.v = 3000,
                                     .rho = 3011,
                                     .h = 3001,
                                     .s = 3002,
                                     .g = 3003,
                                     .u = 3004,
                                     .a = 3005,
                                     .eH = 3006,
                                     .eU = 3007,
                                     .cp = 3008,
                                     .cV = 3009};
    return outcome;
}

}  // namespace quom::test

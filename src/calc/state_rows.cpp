#include "calc/state_rows.h"

#include <cmath>

#include "base/constants.h"

namespace quom {
namespace {

// A sum is finite where all of its terms are.
bool has_functions(const StateColumns& c, std::size_t i) {
    return std::isfinite(c.h[i] + c.u[i] + c.s[i] + c.g[i] + c.a[i] + c.cp[i] + c.cV[i] + c.w[i]);
}

bool has_state(const StateColumns& c, bool functions, std::size_t i) {
    const ColumnPhase phase = c.phase[i];
    if (phase == ColumnPhase::none || phase == ColumnPhase::saturated || !std::isfinite(c.v[i])) return false;
    return !functions || (c.reason[i] == Reason::none && has_functions(c, i));
}

bool wants_functions(const StateInput& input) { return input.functions || input.mode == Mode::functions; }

}  // namespace

bool has_state_rows(const Fluid& fluid, const StateInput& input) {
    if (input.mode != Mode::T_p && input.mode != Mode::functions) return false;
    if (input.coefficients || input.inflection) return false;
    if (!fluid.has_eos() || fluid.VPhaseOnly || !(fluid.M > TinyT)) return false;
    // The phase is compared with another equation, or the liquid comes from one.
    if (!fluid.models.Konzept || (input.setup.VLEAssumed && input.setup.RhoLWanted)) return false;
    if (fluid.eos_row().warns_omega && fluid.substance.omega == 0.0) return false;
    if (!wants_functions(input)) return true;
    return fluid.ideal_gas.reason == Reason::none && fluid.environment.reason == Reason::none;
}

void calc_state_rows(const Fluid& fluid, const StateInput& input, std::span<const double> T,
                     std::span<const double> p, StateRows& out) {
    states_at(fluid, T, p, out.columns);
    const StateColumns& c = out.columns;
    const std::size_t n = c.size();
    out.eH.resize(n);
    out.eU.resize(n);
    out.word.resize(n);
    out.region.resize(n);
    out.single.resize(n);
    const bool functions = wants_functions(input);
    const auto T_triple = static_cast<double>(fluid.substance.Ttr);
    const Environment& environment = fluid.environment;
    const EnvironmentPhase& at = environment_phase(environment);
    for (std::size_t i = 0; i < n; ++i) {
        const bool stands = has_state(c, functions, i) && !(T[i] < T_triple);
        out.single[i] = stands ? 0 : 1;
        if (!stands) continue;
        out.region[i] = phase_region(fluid, T[i], p[i]);
        out.word[i] = c.phase[i] == ColumnPhase::fluid ? word_of_one_fluid(fluid, T[i], p[i], c.v[i])
                      : c.phase[i] == ColumnPhase::L   ? PhaseWord::L
                                                       : PhaseWord::V;
        if (!functions) continue;
        out.eH[i] = exergy_of_h(environment, at, c.h[i], c.s[i]);
        out.eU[i] = exergy_of_u(environment, at, c.u[i], c.s[i], c.v[i]);
    }
}

}  // namespace quom

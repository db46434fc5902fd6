#include "calc/batch_result.h"

#include <cmath>
#include <optional>

namespace quom {
namespace {

using Optional = std::optional<double>;

// A value as a record keeps it: single, 0 where it does not exist.
float single(double x) {
    const auto f = static_cast<float>(x);
    return std::isfinite(f) ? f : 0.0f;
}
float single(const Optional& x) { return x ? single(*x) : 0.0f; }

bool tells_vaporization(Mode mode) {
    return mode == Mode::equilibrium_T || mode == Mode::equilibrium_p || mode == Mode::vaporization_T ||
           mode == Mode::vaporization_p;
}

}  // namespace

const PhaseOutcome* phase_of(const Outcome& outcome, Phase phase) {
    const bool stated =
        outcome.phase == PhaseWord::VL || outcome.phase == (phase == phase_L ? PhaseWord::L : PhaseWord::V);
    const std::optional<PhaseOutcome>& found = phase == phase_L ? outcome.L : outcome.V;
    return stated && found ? &*found : nullptr;
}

double extended_value(const PhaseArrays& arrays, std::size_t row) {
    if (row < 6) return arrays.DerivA[row + 1];
    if (row < 9) return arrays.CoefA[row - 5];
    if (row < 14) return arrays.Deriv2A[row - 8];
    return arrays.FuncA[row - 14];
}

BatchResult batch_result(const Outcome& outcome, const UnitFactors& factors) {
    BatchResult r;
    r.state = outcome.has_result() ? PointState::done : PointState::failed;
    if (!outcome.has_result() || outcome.phase == PhaseWord::none) return r;
    const PhaseOutcome* const L = phase_of(outcome, phase_L);
    const PhaseOutcome* const V = phase_of(outcome, phase_V);
    if (outcome.two_phase()) {
        r.Phase = {'V', '+', 'L'};
    } else {
        r.Phase[1] = outcome.phase == PhaseWord::L ? 'L' : 'V';
    }
    r.TCalc = single(outcome.T);
    r.pCalc = single(outcome.p);
    if (V) r.rhoVCalc = single(V->rho);
    if (L) r.rhoLCalc = single(L->rho);
    if (outcome.vaporization && tells_vaporization(outcome.mode))
        r.hLVCalc = single(outcome.vaporization->hLV);
    for (std::size_t row = 0; row < ExtendedRows; ++row) {
        if (L && L->arrays) r.Extended[row].L = single(extended_value(*L->arrays, row));
        if (V && V->arrays) r.Extended[row].V = single(extended_value(*V->arrays, row));
    }
    const PhaseOutcome* const first = V ? V : L;
    if (outcome.mode != Mode::functions || !first) return r;
    const auto displayed = [&](const Optional& x) { return x ? single(*x * factors.uFactor) : 0.0f; };
    r.h = displayed(first->h);
    r.s = displayed(first->s);
    r.g = displayed(first->g);
    r.eH = displayed(first->eH);
    r.eU = displayed(first->eU);
    return r;
}

}  // namespace quom

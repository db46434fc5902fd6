#include "calc/eos_diagnosis.h"

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/quantities.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"

namespace quom {
namespace {

constexpr std::string_view labels[3] = {"v(1) =", "v(2) =", "v(3) ="};

RootMeaning meaning_of(const CEOSState& state, std::size_t root, bool three) {
    if (!three) {
        // Above the critical point both flags are set; below T(cr) the fluid is the compressed liquid.
        const bool liquid = state.IsL && (!state.IsV || state.PhaseRegion == 1);
        return liquid ? RootMeaning::stable_L : RootMeaning::stable_V;
    }
    if (root == 1) return RootMeaning::unstable;
    if (root == 0) return state.IsL ? RootMeaning::stable_L : RootMeaning::metastable;
    return state.IsV ? RootMeaning::stable_V : RootMeaning::metastable;
}

}  // namespace

std::string_view root_remark(RootMeaning meaning) {
    switch (meaning) {
        case RootMeaning::stable_L:
            return "(stable, L-phase)";
        case RootMeaning::stable_V:
            return "(stable, V-phase)";
        case RootMeaning::metastable:
            return "(metastable)";
        case RootMeaning::unstable:
            return "(unstable)";
    }
    return {};
}

EosDiagnosis diagnose_eos(const Session& s) {
    EosDiagnosis d;
    const CEOSState& state = s.calc.state;
    if (!state.has_state() || !is_cubic(s.models.EOSKode)) return d;
    d.available = true;
    d.heading = std::string(trim(eos_name(s.models.EOSKode)));
    d.unit = VolumeName(s);
    d.T = state.T;
    d.p = state.p;
    d.below_critical = state.T < static_cast<float>(s.substance.Tcr);
    // At T(cr) itself the roots have met and the middle one is not kept.
    const bool three = state.PhaseCode == 3 && state.VRoot[1] > state.VRoot[0];
    for (std::size_t root = 0; root < (three ? 3u : 1u); ++root) {
        const double v = state.VRoot[root] * s.units.vFactor;
        d.lines.push_back({labels[root], v, genNum(v), meaning_of(state, root, three)});
    }
    return d;
}

}  // namespace quom

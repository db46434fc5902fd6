#include "calc/eos_diagnosis.h"

#include "base/code_page.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr std::string_view labels[3] = {"v(1) =", "v(2) =", "v(3) ="};

RootMeaning meaning_of(const Outcome& outcome, std::size_t root, bool three) {
    if (!three) return outcome.phase == PhaseWord::L ? RootMeaning::stable_L : RootMeaning::stable_V;
    if (root == 1) return RootMeaning::unstable;
    if (root == 0) return outcome.IsL ? RootMeaning::stable_L : RootMeaning::metastable;
    return outcome.IsV ? RootMeaning::stable_V : RootMeaning::metastable;
}

// Whether the roots of the equation at T, p of the outcome are known.
bool has_roots(const Fluid& fluid, const Outcome& outcome) {
    return outcome.has_result() && fluid.eos_row().is_cubic() && outcome.eos &&
           outcome.eos->roots.nRoots > 0 && outcome.T && outcome.p;
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

EosDiagnosis diagnose_eos(const Fluid& fluid, const Outcome& outcome, const UnitFactors& factors,
                          std::string_view v_unit) {
    EosDiagnosis d;
    if (!has_roots(fluid, outcome)) return d;
    d.available = true;
    d.heading = std::string(trim(fluid.eos_row().text));
    d.unit = v_unit;
    d.T = static_cast<float>(*outcome.T);
    d.p = *outcome.p;
    d.below_critical = d.T < static_cast<float>(fluid.substance.Tcr);
    const CubicRoots& roots = outcome.eos->roots;
    // At T(cr) itself the roots have met.
    const bool three = roots.nRoots == 3 && roots.VRoot[1] > roots.VRoot[0];
    for (std::size_t root = 0; root < (three ? 3u : 1u); ++root) {
        const double v = roots.VRoot[root] * factors.vFactor;
        d.lines.push_back({labels[root], v, genNum(v), meaning_of(outcome, root, three)});
    }
    return d;
}

bool diagnosis_offered(const Fluid& fluid, const CalcSetup& setup, const Outcome& outcome) {
    if (!has_roots(fluid, outcome) || !setup.GlobalCalc) return false;
    switch (mode_info(outcome.mode).family) {
        case ModeFamily::equilibrium:
            return fluid.models.Konzept;
        case ModeFamily::vaporization:
            return fluid.models.HLVKode == Hlv::eos;
        case ModeFamily::state:
        case ModeFamily::tank:
            return true;
        default:
            return false;
    }
}

}  // namespace quom

#include "session/session.h"

#include <algorithm>
#include <utility>

namespace quom {
namespace {

// Measured points and what is kept of their file; the direct input is no data.
bool same_data(const ExperimentalData& before, const ExperimentalData& after) {
    if (before.file != after.file || before.ExpGeaendert != after.ExpGeaendert) return false;
    const SharedVector<TpRhoPoint>&old_points = before.points, &new_points = after.points;
    if (old_points.shares(new_points)) return true;
    return old_points.size() == new_points.size() &&
           std::equal(old_points.begin() + 1, old_points.end(), new_points.begin() + 1);
}

Changes changes_between(const Document& before, const Document& after) {
    Changes c;
    c.substance = before.DatabaseKind != after.DatabaseKind || before.DatabasePath != after.DatabasePath ||
                  before.substance != after.substance;
    c.models = before.models != after.models || before.eos_input != after.eos_input;
    c.reference = before.reference != after.reference;
    c.units = before.units != after.units;
    c.options = before.options != after.options;
    c.data = !same_data(before.exp, after.exp);
    c.xy = before.xy != after.xy;
    c.inputs = before.calc != after.calc || before.exp.points.front() != after.exp.points.front();
    return c;
}

// Drops the outcomes of points that would be calculated from other values.
void drop_outdated(Session& session, const Document& before) {
    std::vector<std::optional<Outcome>>& outcomes = session.outcomes;
    if (outcomes.size() > session.document.exp.points.size())
        outcomes.resize(session.document.exp.points.size());
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const int point = static_cast<int>(i);
        if (outcomes[i] && state_input(before, point) != state_input(session.document, point))
            outcomes[i].reset();
    }
}

}  // namespace

UnitFactors factors_of(const Document& document, const Fluid& fluid, double T) {
    Units units = document.units;
    if (units.VolumeMode == reduced_volume) {
        units.TcrStart = fluid.substance.Tcr;
        units.pcrStart = fluid.substance.pcr;
        units.vcrStart = fluid.eos.vcrEOS;
    }
    return unit_factors(units, static_cast<double>(document.substance.constants.MolMass), T);
}

UnitFactors Session::factors(double T) const { return factors_of(document, *fluid, T); }

Changes commit(Session& session, Document document) {
    if (document.exp.points.empty()) document.exp.points.edit().resize(1);  // [0] is the direct input
    const Changes changes = changes_between(session.document, document);
    const Document before = std::exchange(session.document, std::move(document));
    if (changes.fluid()) {
        const Document& d = session.document;
        session.fluid = make_fluid({d.substance.constants, d.models, d.eos_input, d.reference});
        session.outcomes.clear();
    } else {
        drop_outdated(session, before);
    }
    return changes;
}

const Outcome& calculate(Session& session, int point) {
    const auto at = static_cast<std::size_t>(std::max(point, 0));
    if (session.outcomes.size() <= at)
        session.outcomes.resize(std::max(at + 1, session.document.exp.points.size()));
    return session.outcomes[at].emplace(CalcBatch(*session.fluid, state_input(session.document, point)));
}

const Outcome* current_outcome(const Session& session) {
    const int point = session.document.calc.CurrentPoint;
    if (point < 0 || static_cast<std::size_t>(point) >= session.outcomes.size()) return nullptr;
    const std::optional<Outcome>& outcome = session.outcomes[static_cast<std::size_t>(point)];
    return outcome ? &*outcome : nullptr;
}

}  // namespace quom

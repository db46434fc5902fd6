#include "session/session.h"

#include <algorithm>
#include <utility>

#include "engine/unit_factors.h"

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

// Calculates a point from nothing but what is the same in both.
bool same_point(const CalculationInput& before, const CalculationInput& after, const TpRhoPoint& old_point,
                const TpRhoPoint& new_point) {
    return state_input(before, old_point) == state_input(after, new_point);
}

void drop_outdated_outcome(Session& session, const Document& before) {
    const int point = session.outcome ? session.outcome->point : 0;
    const bool there = static_cast<std::size_t>(point) < session.document.exp.points.size();
    if (!there || state_input(before, point) != state_input(session.document, point)) session.outcome.reset();
}

// Drops the list results of points that would be calculated from other values, or are inactive since.
void drop_outdated_results(Session& session, const Document& before) {
    const Document& after = session.document;
    std::vector<BatchResult>& batch = session.batch;
    const TpRhoPoint any{.T = 1, .p = 1, .rhoV = 1, .rhoL = 1};
    const bool shows_energies = after.calc.CalcMode == Mode::functions;
    if (!same_point(before.calc, after.calc, any, any) || (shows_energies && before.units != after.units))
        batch.clear();
    const SharedVector<TpRhoPoint>&old_points = before.exp.points, &new_points = after.exp.points;
    if (batch.empty() || old_points.shares(new_points)) return;
    if (batch.size() > new_points.size()) batch.resize(new_points.size());
    for (std::size_t i = 0; i < batch.size(); ++i) {
        const bool stays = i < old_points.size() && new_points[i].Aus == old_points[i].Aus &&
                           same_point(before.calc, after.calc, old_points[i], new_points[i]);
        if (!stays) batch[i] = {};
    }
}

}  // namespace

UnitFactors Session::factors(double T) const { return unit_factors(*fluid, document.units, T); }

Changes commit(Session& session, Document document) {
    if (document.exp.points.empty()) document.exp.points.edit().resize(1);  // [0] is the direct input
    const Changes changes = changes_between(session.document, document);
    const Document before = std::exchange(session.document, std::move(document));
    keep_diagram(session.diagram, before, session.document);
    if (changes.fluid()) {
        const Document& d = session.document;
        session.fluid = make_fluid({d.substance.constants, d.models, d.eos_input, d.reference});
        forget_results(session);
    } else {
        drop_outdated_outcome(session, before);
        drop_outdated_results(session, before);
    }
    return changes;
}

const Outcome& calculate(Session& session, int point) {
    point = std::max(point, 0);
    const Document& document = session.document;
    session.outcome = {point, CalcBatch(*session.fluid, state_input(document, point))};
    const Outcome& outcome = session.outcome->outcome;
    const auto at = static_cast<std::size_t>(point);
    if (at < document.exp.points.size()) {
        if (session.batch.size() <= at) session.batch.resize(document.exp.points.size());
        session.batch[at] =
            batch_result(outcome, unit_factors(document.units, session.fluid->M, outcome.T.value_or(0.0)));
    }
    return outcome;
}

void forget_results(Session& session) {
    session.outcome.reset();
    session.batch.clear();
}

const Outcome* current_outcome(const Session& session) {
    const bool there = session.outcome && session.outcome->point == session.document.calc.CurrentPoint;
    return there ? &session.outcome->outcome : nullptr;
}

}  // namespace quom

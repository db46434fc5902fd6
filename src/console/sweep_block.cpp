#include "console/sweep_block.h"

#include <algorithm>
#include <limits>

#include "report/calc_record.h"

namespace quom {
namespace {

constexpr double blank = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t faults_named = 20;

std::optional<double> StateInput::*target_of(SweepField field) {
    constexpr std::optional<double> StateInput::*targets[field_count] = {
        &StateInput::T, &StateInput::p, &StateInput::rho, &StateInput::m, &StateInput::V};
    return targets[field];
}

// The column of the batch that holds a function; null for one that it does not have.
const std::vector<double>* column_of(const StateRows& states, Quantity q) {
    switch (q) {
        case Quantity::v:
            return &states.columns.v;
        case Quantity::rho:
            return &states.columns.rho;
        case Quantity::h:
            return &states.columns.h;
        case Quantity::s:
            return &states.columns.s;
        case Quantity::g:
            return &states.columns.g;
        case Quantity::u:
            return &states.columns.u;
        case Quantity::a:
            return &states.columns.a;
        case Quantity::eH:
            return &states.eH;
        case Quantity::eU:
            return &states.eU;
        case Quantity::cp:
            return &states.columns.cp;
        case Quantity::cV:
            return &states.columns.cV;
        case Quantity::w:
            return &states.columns.w;
        default:
            return nullptr;
    }
}

// Own values into those of a column: by the unit that was asked for, else by the displayed factor.
class Displayed {
 public:
    Displayed(const SweepPlan::Column& column, const UnitFactors& factors)
        : unit_(column.unit ? &*column.unit : nullptr),
          factor_(column.source.quantity ? display_factor(factors, *column.source.quantity) : 1.0) {}
    double operator()(double own) const { return unit_ ? unit_->from_own(own) : own * factor_; }
    // The factor, where that is all.
    std::optional<double> factor() const { return unit_ ? std::nullopt : std::optional(factor_); }

 private:
    const UnitConversion* unit_;
    double factor_;
};

void put_phase_column(const StateRows& states, const std::vector<double>& own, Phase phase,
                      const Displayed& displayed, std::vector<double>& to) {
    const PhaseWord word = phase == phase_L ? PhaseWord::L : PhaseWord::V;
    const std::size_t n = to.size();
    if (displayed.factor()) {
        const double factor = *displayed.factor();
        for (std::size_t i = 0; i < n; ++i) to[i] = states.word[i] == word ? own[i] * factor : blank;
        return;
    }
    for (std::size_t i = 0; i < n; ++i) to[i] = states.word[i] == word ? displayed(own[i]) : blank;
}

}  // namespace

void SweepTotals::note(const Warning& warning) {
    if (std::ranges::find(warnings, warning.kind, &Warning::kind) == warnings.end())
        warnings.push_back(warning);
}

void SweepTotals::note(const std::string& fault) {
    if (faults.size() < faults_named) faults.push_back(fault);
}

void SweepTotals::add(const SweepTotals& part) {
    lines += part.lines;
    failed += part.failed;
    warned += part.warned;
    malformed += part.malformed;
    for (const Warning& warning : part.warnings) note(warning);
    for (const std::string& fault : part.faults) note(fault);
}

SweepBlock::SweepBlock(std::shared_ptr<const Fluid> fluid, const SweepCalculation& calculation,
                       const SweepPlan& plan)
    : fluid_(std::move(fluid)),
      calculation_(calculation),
      plan_(plan),
      fields_(needed_fields(calculation.mode)) {
    input_.mode = calculation.mode;
    input_.setup = calculation.setup;
    input_.functions = plan.functions;
    batch_ = has_state_rows(*fluid_, input_) && calculation.units.EnergyMode != energy_per_RT;
    results_.numbers.resize(plan.columns.size());
}

SweepTotals SweepBlock::take_totals() {
    SweepTotals taken;
    std::swap(taken, totals_);
    return taken;
}

void SweepBlock::run(const SweepRows& rows, std::size_t begin, std::size_t end, std::size_t faults_before) {
    const std::size_t n = end - begin;
    for (std::size_t c = 0; c < plan_.columns.size(); ++c) {
        if (plan_.columns[c].source.cell == SweepCell::number) results_.numbers[c].resize(n);
    }
    results_.phase.resize(n);
    results_.reason.assign(n, Reason::none);
    results_.warnings.assign(n, 0);
    results_.kind.assign(rows.kind.begin() + static_cast<std::ptrdiff_t>(begin),
                         rows.kind.begin() + static_cast<std::ptrdiff_t>(end));
    results_.remarks.clear();
    if (batch_) put_batch(rows, begin);
    std::size_t faults = faults_before;
    for (std::size_t i = 0; i < n; ++i) {
        if (results_.kind[i] == RowKind::good) {
            ++totals_.lines;
            if (!batch_ || states_.single[i]) put_single(rows, begin, i);
        } else if (results_.kind[i] == RowKind::blank) {
            put_blank(i);
        } else {
            put_malformed(rows.faults[faults++], i);
        }
    }
}

// Numbers of the rows that the batch has; what it leaves to the single calculation is written over.
void SweepBlock::put_batch(const SweepRows& rows, std::size_t begin) {
    const std::size_t n = results_.size();
    const std::span<const double> T(rows.value[field_T].data() + begin, n);
    const std::span<const double> p(rows.value[field_p].data() + begin, n);
    calc_state_rows(*fluid_, input_, T, p, states_);
    std::copy_n(states_.word.begin(), n, results_.phase.begin());
    for (std::size_t c = 0; c < plan_.columns.size(); ++c) {
        const SweepPlan::Column& column = plan_.columns[c];
        if (column.source.cell != SweepCell::number) continue;
        std::vector<double>& to = results_.numbers[c];
        const Displayed displayed(column, calculation_.factors);
        const Quantity q = column.source.quantity.value_or(Quantity::B);
        if (column.source.phase) {
            put_phase_column(states_, *column_of(states_, q), *column.source.phase, displayed, to);
        } else if (column.source.quantity) {
            std::ranges::transform(q == Quantity::T ? T : p, to.begin(), displayed);
        } else {
            std::ranges::copy(states_.region, to.begin());
        }
    }
}

void SweepBlock::put_single(const SweepRows& rows, std::size_t from, std::size_t i) {
    for (const SweepField field : fields_) input_.*target_of(field) = rows.value[field][from + i];
    const Outcome outcome = CalcBatch(*fluid_, input_);
    put_outcome(outcome, i);
    totals_.failed += outcome.has_result() ? 0 : 1;
    totals_.warned += outcome.has_result() && !outcome.warnings.empty() ? 1 : 0;
    for (const Warning& warning : outcome.warnings) totals_.note(warning);
}

void SweepBlock::put_outcome(const Outcome& outcome, std::size_t i) {
    const bool own_factors = calculation_.units.EnergyMode == energy_per_RT && outcome.T.has_value();
    const UnitFactors factors =
        own_factors ? outcome_factors(*fluid_, outcome, calculation_.units) : calculation_.factors;
    const UnitFactors none{};
    for (std::size_t c = 0; c < plan_.columns.size(); ++c) {
        const SweepPlan::Column& column = plan_.columns[c];
        if (column.source.cell != SweepCell::number) continue;
        const double own = column.source.number({*fluid_, outcome, none});
        results_.numbers[c][i] = Displayed(column, factors)(own);
    }
    results_.phase[i] = outcome.phase;
    results_.reason[i] = outcome.failure.reason;
    for (const Warning& warning : outcome.warnings)
        results_.warnings[i] |= std::uint32_t{1} << static_cast<unsigned>(warning.kind);
    if (outcome.has_result() && outcome.warnings.empty()) return;
    results_.remarks.push_back({i, sweep_warnings(outcome), sweep_message(outcome)});
}

void SweepBlock::put_malformed(const std::string& fault, std::size_t i) {
    put_blank(i);
    ++totals_.lines;
    ++totals_.malformed;
    totals_.note(fault);
    results_.remarks.push_back({i, {}, fault});
}

void SweepBlock::put_blank(std::size_t i) {
    for (std::vector<double>& column : results_.numbers) {
        if (!column.empty()) column[i] = blank;
    }
    results_.phase[i] = PhaseWord::none;
}

}  // namespace quom

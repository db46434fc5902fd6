#include "engine/lever_rule.h"

#include <algorithm>
#include <cmath>

namespace quom {
namespace {

constexpr double Zero = 1e-10;

using S = StateFunctions;
constexpr std::array<double S::*, lever_count> fields = {&S::v, &S::h,  &S::s,  &S::g,  &S::u,
                                                         &S::a, &S::eH, &S::eU, &S::cp, &S::cV};

bool has_gap(const LeverRow& row) { return std::fabs(row.V - row.L) > Zero; }

}  // namespace

LeverTable lever_table(const StateFunctions& L, const StateFunctions& V) {
    LeverTable table;
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = {.L = L.*fields[i], .V = V.*fields[i]};
    return table;
}

StateFunctions lever_state(const LeverTable& table) {
    StateFunctions state;
    for (std::size_t i = 0; i < table.size(); ++i) state.*fields[i] = table[i].mix;
    return state;
}

LeverResult LeverRule(int Index, const LeverTable& Table) {
    LeverResult r{.Table = Table};
    if (Index < 0 || Index >= lever_count) return {.Table = Table, .Err = 1};
    const LeverRow& held = Table[static_cast<std::size_t>(Index)];
    const double distance = held.mix - held.L;
    const bool open = !has_gap(held);
    if (!std::isfinite(distance) || (open && std::fabs(distance) > Zero)) {
        r.Err = 1;
        return r;
    }
    r.Fraction = open ? 1.0 : distance / (held.V - held.L);
    if (open && std::ranges::any_of(Table, has_gap)) r.Err = 2;
    for (LeverRow& row : r.Table) row.mix = row.L + r.Fraction * (row.V - row.L);
    return r;
}

}  // namespace quom

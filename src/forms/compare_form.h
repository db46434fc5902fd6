// Comparing equations on the sheet of the session: which ones the substance offers for its diagram, their
// curves on the sheet, and the table of their deviations.
#pragma once
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "base/messages.h"
#include "diagrams/curve_comparison.h"
#include "report/report.h"
#include "session/session.h"

namespace quom {

// Models that the curves of a diagram depend on.
enum class CompareBy { eos, evp, hlv, cp };
struct CompareChoice {
    CompareBy by = CompareBy::eos;
    int code = 0;      // of the list of models
    std::string key;   // for programs: "eos_5", "evp_4", "hlv_1", "cp_2"
    std::string name;  // "Peng / Robinson", "Wagner (MDB equ.)"
    bool operator==(const CompareChoice& other) const { return by == other.by && code == other.code; }
};
// The equations by which a curve of the kind can be drawn: those that the list of models offers for the
// substance, that have their constants, and that the diagram does not refuse. Vapor pressures: cubic
// equations of state (GLOBAL) before vapor pressure equations (PARTIAL). One or none: the diagram compares
// nothing.
std::vector<CompareChoice> compare_choices(const Fluid& fluid, const Units& units, Kind kind);
std::vector<CompareChoice> compare_choices(const Session& session);  // of its sheet
// The choice that the models in force are; 0 where the list has it not.
std::size_t choice_in_force(const Session& session, const std::vector<CompareChoice>& choices);

// The fluid by an equation, as curves of the kind need it; p(LV) of an equation of state takes GLOBAL, of a
// vapor pressure equation PARTIAL.
std::shared_ptr<const Fluid> fluid_by(const Fluid& fluid, const CompareChoice& choice, Kind kind);

// Input of the comparison on the sheet of the session, at the parameter of the next curve, with the active
// measured points. There must be a sheet.
CompareInput compare_input(const Session& session, const std::vector<CompareChoice>& choices,
                           std::size_t reference = 0);

// What draw_comparison has done.
struct DrawnComparison {
    bool drawn = false;            // false: refused and told; the sheet is as it was
    std::vector<int> curve_slots;  // of the sheet, in the order of the choices
    CurveComparison table;
};
// Draws the curve of every choice on the sheet of the session, labels and legends with the name of the
// equation, and compares them. Refused: fewer than two choices, a reference that is none of them, more curves
// than there are free slots. An equation without a curve is in the notes of the table.
DrawnComparison draw_comparison(Session& session, const std::vector<CompareChoice>& choices,
                                std::size_t reference, Messages& messages);

// The comparison as a report, for people (to_text) and programs (to_json). Columns of values have the keys of
// the choices, deviations "_deviation" and "_percent" behind.
Report comparison_report(const Session& session, const CompareInput& input, const CurveComparison& table);

}  // namespace quom

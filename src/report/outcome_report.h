// The blocks of a report that every command shares, made from a fluid and an outcome. What is absent is null
// in JSON and "-" or left out in text; a 0 is a value.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "calc/outcome.h"
#include "quantities/units.h"
#include "report/calc_record.h"
#include "report/report.h"
#include "report/selection_report.h"

namespace quom {

// "state": T, p, phase, PhaseRegion, LFlag, VFlag, y, v, rho_L, rho_V, nRoots, msg, VRoot1 to VRoot3, fd, B.
Block state_block(const Fluid& fluid, const Outcome& outcome, const Units& units);
// The same of one calculation of a mode with mode, GlobalCalc, LPercent; in JSON only.
Block mode_block(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup, const Units& units);

// "below the critical point", "supercritical" ...; "" for a number that is no region.
std::string_view region_text(int region);

// "functions": v, h, u, s, g, a, eH, eU, cp, cV, cpId, w of L, V and, of a two-phase state, the mean.
Grid functions_grid(const Outcome& outcome, const Units& units, const UnitFactors& factors);
// "FuncA", "DerivA", "CoefA", "Deriv2A": the result arrays in molar units.
std::vector<Grid> array_grids(const Outcome& outcome);

// "slots": the result vector by the keys of its slots, in JSON only.
Block slot_block(const CalcResult& result, const Units& units);

// "state" of a tank: T, p, phase, rho, y, LPercent; and "contents": V, m, n of both phases.
Block tank_block(const Outcome& outcome);
Grid contents_grid(const TankContents& tank);

// B of one equation with its derivatives.
struct VirialRow {
    Eos code = Eos::none;
    std::optional<double> B, B1, B2;  // B, dB/dT, d2B/dT2
    std::string reason;               // why there is none
};
// "virial": one row an equation.
Table virial_table(double T, const std::vector<VirialRow>& rows);

// "warnings": name, text, value, low, high, unit, offset of every reservation; in text they are notes
// (add_reservations).
Table warnings_table(const std::vector<Warning>& warnings);
// "validity": ranges of T of the equations that the outcome rests on: name, text, TLo, THi. In JSON only.
Table validity_table(const Fluid& fluid, const Outcome& outcome);

// Adds "warnings" and "validity" with the notes for people, and where there is no result status, message and
// reason.
void add_reservations(Report& report, const Fluid& fluid, const Outcome& outcome);
// The same without an outcome of a mode: for the answers of single routines.
void add_warnings(Report& report, const std::vector<Warning>& warnings);

// Why there is no result, in a sentence; empty for a result.
std::string outcome_message(const Outcome& outcome);

}  // namespace quom

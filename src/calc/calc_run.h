// One calculation on its way through CalcBatch: what its branches share. Only src/calc includes this.
#pragma once
#include <cmath>
#include <string>
#include <string_view>

#include "calc/calc_batch.h"
#include "calc/mode_table.h"
#include "engine/thermo_functions.h"
#include "session/session.h"

namespace quom {

struct CalcRun {
    Session& s;
    const CalcRequest& request;
    CalcBatchResult& out;
    const bool text;  // texts are built
    BatchResult record{};
    bool FetchFailed = false;  // a step has failed
    bool NoResult = false;     // the point gets no result

    double T = 0, p = 0;        // state [K], [kPa]; 0 not known
    double rho = 0, v = 0;      // specified density [kg/m^3] and its volume [m^3/kmol]
    double vL = 0, vV = 0;      // volumes of the phases that exist [m^3/kmol], 0 without
    double rhoL = 0, rhoV = 0;  // their densities [kg/m^3]
    double y = 0;               // vapor fraction of a two-phase state
    bool have_y = false;
    double vV_eos = 0;               // V-like root at T, p, stable or not
    bool L_from_eos = true;          // vL is a root of the EOS in force, so that functions exist there
    std::string_view rhoL_method{};  // line above the density rows

    int mode() const { return request.Mode; }
    double M() const { return static_cast<double>(s.substance.MolMass); }
    bool two_phase() const { return out.IsL && out.IsV; }
    bool below_critical() const;  // T < T(cr) and p < p(cr), as singles
    const TpRhoPoint& point() const { return s.exp.points[static_cast<std::size_t>(request.Point)]; }

    // One line of the result text.
    void line(std::string_view content) {
        if (text) out.list.append(content).push_back('\n');
    }
};

// A value as a record keeps it: single, 0 where it is not finite.
inline float single(double x) {
    const auto f = static_cast<float>(x);
    return std::isfinite(f) ? f : 0.0f;
}

// ---- Specified values. Each reads the data point of the run; below 1e-6 it reports a fault and returns
// false. ----
bool FetchT(CalcRun& run);     // T and slot 0; may warn of a T below the triple point
bool Fetchp(CalcRun& run);     // p and slot 1
bool FetchRho(CalcRun& run);   // rho(V) column: rho, v, slots 2 and 3
bool FetchRhoL(CalcRun& run);  // rho(L) column: rho, v, slot 4
// Tells of a T below the triple point where the L-phase is of interest; a box when the request allows it.
void warn_triple(CalcRun& run, std::string_view title);
// T is known from now on: uFactor of the mode per (R T).
void take_T(CalcRun& run, double T);
void show_T(CalcRun& run);  // par1
void show_p(CalcRun& run, ViewText& where);
void show_rho(CalcRun& run, ViewText& where);

// Whether the EOS selected has its constants. Without them its formulas would silently give an ideal gas.
bool has_eos(const Session& s);

// ---- Faults ----
// Reports a fault of a step: the list turns red and ends in the message; reason is for callers without a
// window.
void CalcMessage(CalcRun& run, std::string_view message, std::string_view reason);
// A red text in place of a shown value; the point gets no result.
void refuse(CalcRun& run, ViewText& where, std::string_view content);
std::string error_code(int err);  // " (E-1)"

// ---- Texts ----
// Pressure of value lines [kPa], without unit: general form below 0.01, else three decimals.
std::string pressure_text(double p);
std::string_view eos_text(const Session& s);  // name of the EOS in force, trimmed
// Row of a table: name, label with unit, value of each phase that has one.
void table_row(CalcRun& run, std::string_view name, std::string_view label, bool has_L, double L, bool has_V,
               double V);
// Line of the same character.
std::string ruler(std::size_t n, char c);

// ---- Shared steps ----
// State kept for the diagnosis, from the roots in the scratch.
void keep_state(CalcRun& run, double fd, double g1, double g2);
// Volumes, flags and head line at T and p of the run. Reports the fault and returns false when there is no
// solution.
bool volumes_at_Tp(CalcRun& run);
// Volumes of the L-phase from Benson's method or from rho(L) = Fu(T), from T and rhoV of the run.
void partial_liquid(CalcRun& run);
// Volume of the V-phase at T, p(LV) [m^3/kmol]; 0 when there is none.
double partial_vapor_volume(CalcRun& run, double T, double pLV);
// Density rows, and delta(LV)h where both phases exist below the critical point.
void density_and_vaporization(CalcRun& run);
void density_rows(CalcRun& run);
// delta(LV)h at T, p of the run, either of them 0 when it is to be found.
void vaporization_block(CalcRun& run);
// Table of all functions of the phases of the run with their slots; the names are those of mode 8 or of the
// list.
void function_table(CalcRun& run);
// Extended rows, their slots and record fields, and the points of inflection.
void extended_output(CalcRun& run);
void set_phase(CalcRun& run, bool IsL, bool IsV);

// ---- Branches ----
AfterBranch mode_T_rho(CalcRun& run);          // 1, 2
AfterBranch mode_T_p(CalcRun& run);            // 3
AfterBranch mode_p_rho(CalcRun& run);          // 13
AfterBranch mode_equilibrium_T(CalcRun& run);  // 4
AfterBranch mode_equilibrium_p(CalcRun& run);  // 5
AfterBranch mode_vaporization(CalcRun& run);   // 6, 7
AfterBranch mode_functions(CalcRun& run);      // 8
AfterBranch mode_tank(CalcRun& run);           // 9, 10
AfterBranch mode_virial(CalcRun& run);         // 11
AfterBranch mode_process(CalcRun& run);        // 12
AfterBranch mode_database(CalcRun& run);       // 14 to 24

// State of the cubic EOS in force at T, v of the run: phases, p, vapor fraction. False after a fault.
bool cubic_state_T_v(CalcRun& run);
// p of an EOS of the V-phase only at T, v of the run. False after a fault.
bool vapor_state_T_v(CalcRun& run);

}  // namespace quom

// One calculation on its way through CalcBatch: what the functions of the modes share. Only src/calc includes
// this.
#pragma once
#include <cmath>
#include <optional>

#include "calc/outcome.h"
#include "engine/fluid.h"
#include "engine/saturation.h"

namespace quom {

struct CalcRun {
    const Fluid& fluid;
    const StateInput& input;
    Outcome& out;

    const SubstanceConstants& substance() const { return fluid.substance; }
    Mode mode() const { return input.mode; }
    double T() const { return out.T.value_or(0.0); }
    double p() const { return out.p.value_or(0.0); }
    double M() const { return fluid.M; }
    bool has_M() const { return fluid.M > TinyT; }
    bool below_critical() const;  // T < T(cr) and p < p(cr), as singles

    void fail(Reason reason, double value = 0.0, double limit = 0.0) { out.failure = {reason, value, limit}; }
    // Keeps one warning of a kind.
    void warn(const Warning& warning);
    void warn(const std::optional<Warning>& warning) {
        if (warning) warn(*warning);
    }
};

// The number where it is one.
inline std::optional<double> present(double x) {
    return std::isfinite(x) ? std::optional<double>(x) : std::nullopt;
}
inline bool is_given(const std::optional<double>& x) { return x && *x > 0.0 && std::isfinite(*x); }

// Specified values into the outcome; false after the failure that tells of one that is missing or not above
// 0.
bool take_T(CalcRun& run);    // from 1e-6 K
bool take_p(CalcRun& run);    // above 0
bool take_rho(CalcRun& run);  // above 0, with its volume; the record needs a molar mass

// One phase of volume v at T, p of the run, with functions and arrays as the input asks for them. from_eos
// false: v comes from another model, and there are no functions.
void set_L(CalcRun& run, double v, bool from_eos = true);
void set_V(CalcRun& run, double v);
void set_phases(CalcRun& run, bool IsL, bool IsV, PhaseWord phase);

// What the equation of state says at T, p of the run: constants, B, roots.
void set_eos(CalcRun& run, const VolumeResult& volume);
void set_eos(CalcRun& run, const Saturation& saturation);
// Constants and B alone, where p comes from another model.
void set_eos_constants(CalcRun& run);

// States of the equation of state. Each reads what is set of T, p, v of the outcome and fills the rest, or
// fails.
void state_T_p(CalcRun& run);
void state_T_v(CalcRun& run);
void state_p_v(CalcRun& run);

// Volume of the V-phase at T, p(LV) of another model [m^3/kmol]; 0 when there is none.
double partial_vapor_volume(const Fluid& fluid, double T, double pLV);
// rho(L) [kg/m^3] by Benson's method or from rho(L) = Fu(T) as the setup chooses; 0 when there is none. Tells
// of T outside the validity, and which of the two it is.
double partial_liquid_density(CalcRun& run, double T, double rhoV, const BensonReference& benson);
// The L-phase of this density; nothing for 0.
void set_partial_L(CalcRun& run, double rhoL);

// delta(LV)h at T, p of the run where a model is selected. main: it is what the mode asks for, so that its
// failure is that of the point, and the missing one of T, p is taken from it.
void add_vaporization(CalcRun& run, bool main);
// delta(LV)h of a two-phase state below the critical point.
void add_vaporization_of_state(CalcRun& run);

// Functions of the modes.
void mode_state(CalcRun& run);         // 1, 2, 3, 8, 13
void mode_equilibrium(CalcRun& run);   // 4, 5
void mode_vaporization(CalcRun& run);  // 6, 7
void mode_tank(CalcRun& run);          // 9, 10
void mode_virial(CalcRun& run);        // 11
void mode_process(CalcRun& run);       // 12
void mode_database(CalcRun& run);      // 14 to 24

}  // namespace quom

// What a calculation found: molar doubles with presence. Lists, slots, records, sweep columns and JSON are
// projections of it (report/), so that they cannot disagree.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calc/state_input.h"
#include "engine/reason.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

namespace quom {

// The one word on phases. A fluid above the critical point is one phase: L in region 1, V in regions 2 to 4.
enum class PhaseWord : std::uint8_t { none, L, V, VL };
// "L", "V", "V+L"; "" for none.
std::string_view phase_text(PhaseWord phase);
// The word for one fluid that is told in both columns, v [m^3/kmol] at T [K], p [kPa]: the compressed liquid
// below T(cr), else a vapor. Within the band about v(cr) below the critical point the volume decides.
PhaseWord word_of_one_fluid(const Fluid& fluid, double T, double p, double v);

// One phase that exists.
struct PhaseOutcome {
    double v = 0;                         // [m^3/kmol]
    std::optional<double> rho;            // [kg/m^3]; absent without M
    std::optional<double> z;              // compressibility factor p v/(R T)
    bool from_eos = true;                 // v is a root of the equation of state: functions exist
    std::optional<double> h, s, g, u, a;  // [kJ/kmol], [kJ/(kmol K)]
    std::optional<double> eH, eU;         // [kJ/kmol]
    std::optional<double> cp, cV, w;      // [kJ/(kmol K)], [m/s]
    std::optional<double> cpId, lnphi;
    Reason functions_reason = Reason::none;  // why h .. w are absent
    std::optional<PhaseArrays> arrays;       // with StateInput::coefficients; CoefA included
};

// The mean of a two-phase state of known quality: z = y z(V) + (1 - y) z(L).
struct MixtureOutcome {
    double v = 0;
    std::optional<double> rho, h, s, g, u, a, eH, eU, cp, cV;
};

// Contents of a tank, phase by phase.
struct TankContents {
    double y = 0;           // vapor mass (= mole) fraction
    double VL = 0, VV = 0;  // volumes [m^3]
    double mL = 0, mV = 0;  // masses [kg]
    double nL = 0, nV = 0;  // amounts of substance [kmol]
    double fill = 0;        // volume share of the L-phase, 0 to 1
};

// delta(LV)h with what it was made of.
struct VaporizationOutcome {
    std::optional<double> hLV;       // [kJ/kmol], whole number; mode 15: as the equation has it
    std::optional<double> sLV;       // hLV/T [kJ/(kmol K)]
    std::optional<double> zL, zV;    // of the models with compressibility factors
    std::optional<double> database;  // by delta(LV)h = Fu(T), where the selected model is another one
    std::string method, source;      // words of the model
    Reason reason = Reason::none;
};

struct VirialOutcome {
    Eos code = Eos::none;
    std::optional<double> B;  // [m^3/kmol]
    bool omega_zero = false;  // calculated without omega
};

// Where a saturation value or a liquid density comes from.
enum class SaturationSource : std::uint8_t { none, eos, evp, data_point };
enum class LiquidSource : std::uint8_t { none, eos, benson, database };

// The equation of state at T, p of the result, for the diagnosis and the parameter lines.
struct EosOutcome {
    EosAtT at;                   // a(T) .. d(T)
    std::optional<double> B;     // B(T) of an equation of the V-phase only
    CubicRoots roots;            // at T, p; of saturated states v(L), v(middle), v(V); nRoots 0: not known
    std::int16_t PhaseCode = 0;  // 1 one solution, 3 three solutions or equilibrium, 0 V-phase-only equation
    double fd = 0, g1 = 0, g2 = 0;  // areas
    std::string_view msg;           // what VolumeTp found at T, p; "" where p comes from another model
    bool critical = false;          // (dp/dv)_T vanishes within rounding
};

struct Outcome {
    Mode mode = Mode::none;
    Failure failure;  // with a reason: the point has no result; T, p, rho hold what was specified
    std::vector<Warning> warnings;  // every reservation on the result

    std::optional<double> T, p;                    // [K], [kPa], specified or found
    std::optional<double> rho, v;                  // specified [kg/m^3], [m^3/kmol]
    std::optional<double> tank_mass, tank_volume;  // specified contents of a tank [kg], [m^3]

    PhaseWord phase = PhaseWord::none;
    std::int16_t region = 0;        // phase_region of T, p; 0 where it is not told
    bool IsL = false, IsV = false;  // columns L, V of lists: both for one fluid above the critical point
    bool near_critical = false;     // within 0.05 K and 0.02 kPa of T(cr), p(cr)
    std::optional<PhaseOutcome> L, V;
    std::optional<double> quality;  // vapor fraction y; 1, 0 of one phase
    std::optional<MixtureOutcome> mixture;
    std::optional<TankContents> tank;
    std::optional<VaporizationOutcome> vaporization;
    std::vector<VirialOutcome> virial;
    std::optional<double> B;  // B(T) of the equation in force or of its partner (mode 11)

    SaturationSource saturation = SaturationSource::none;  // of p(LV) or T(LV)
    LiquidSource liquid = LiquidSource::none;

    std::optional<double> rhoL_fn, rhoS_fn, cpId_fn, cpL_fn,
        cpS_fn;      // database functions (modes 14 to 18, 24)
    TLimits limits;  // [K] of the database function

    std::optional<EosOutcome> eos;
    std::optional<Inflection> inflection;

    bool has_result() const { return !failure; }
    bool two_phase() const { return phase == PhaseWord::VL; }
};

// Value of a function (IsoFunction) of a phase; absent where it does not exist.
std::optional<double> function_of(const PhaseOutcome& phase, int Column);

// Fails never; a missing value is Failure in the outcome.
Outcome CalcBatch(const Fluid& fluid, const StateInput& input);

// The state at two of T, p, rho (modes 3, 1, 13) by the equation of state, with every function: the one state
// function behind the modes, the console and the searches.
Outcome state_at(const Fluid& fluid, std::optional<double> T, std::optional<double> p,
                 std::optional<double> rho);

// Sentence of a failure with its numbers: "369.9 K is above T(cr) = 369.89 K ...".
std::string failure_text(const Failure& failure);

}  // namespace quom

// Batches of states in columns: many T, p of one fluid at once, on any thread.
//
// The numbers agree with VolumeTp and ThermoState within 1e-12; the stable phase is the same except where
// |fd| < 0.001. Where SIMD is there (Highway, chosen at run time) the block of the batch runs on it.
#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/fluid.h"

namespace quom {

struct StateKernel;  // engine/state_kernel.h

// What is known of one state of a batch.
enum class ColumnPhase : std::uint8_t {
    none,       // no state, or not asked for
    L,          // the liquid-like root is the stable one
    V,          // the vapor-like root, or an equation of the V-phase only
    saturated,  // both roots, |fd| < 0.001; the columns are of V
    fluid,      // one root above T(cr) or p(cr), or within 0.001 m^3/kmol of vcrEOS: liquid and vapor are one
};

// One array for each quantity, all of the same length; NaN where a quantity does not exist, reason tells why.
struct StateColumns {
    std::vector<double> v, rho;            // [m^3/kmol], [kg/m^3]
    std::vector<double> h, u, s, g, a;     // [kJ/kmol], [kJ/(kmol K)]
    std::vector<double> cp, cV, w, lnphi;  // [kJ/(kmol K)], [m/s]
    std::vector<ColumnPhase> phase;
    std::vector<Reason> reason;
    std::size_t singles =
        0;  // states that the single calls gave: refused, near saturation, critical or spinodal
    void resize(std::size_t n);
    std::size_t size() const { return v.size(); }
};

// States at T[i] [K], p[i] [kPa]; both spans of one length. v and rho are above 0 wherever there is a state.
void states_at(const Fluid& fluid, std::span<const double> T, std::span<const double> p, StateColumns& out);

// What is computed once for an isotherm. It keeps the fluid.
struct Isotherm;
std::shared_ptr<const Isotherm> make_isotherm(const Fluid& fluid, double T);
// States on the isotherm at p[i] [kPa].
void states_on(const Isotherm& isotherm, std::span<const double> p, StateColumns& out);
// States on the isotherm at v[i] [m^3/kmol], as the equation of state has them, stable or not; p is filled,
// and NaN at volumes that the equation does not have. The phase is none.
void states_on_volumes(const Isotherm& isotherm, std::span<const double> v, std::vector<double>& p,
                       StateColumns& out);

// State i of the columns is the phase at T [K], p [kPa], v [m^3/kmol], by ThermoState.
void put_state(const Fluid& fluid, double T, double p, double v, ColumnPhase phase, StateColumns& out,
               std::size_t i);

// Both saturated phases along T[i] [K], or along p[i] [kPa]. T and p of each; the one that was searched is
// NaN where there is none.
struct SaturationColumns {
    std::vector<double> T, p;
    StateColumns L, V;
};
void saturation_at(const Fluid& fluid, std::span<const double> T, SaturationColumns& out);
void boiling_at(const Fluid& fluid, std::span<const double> p, SaturationColumns& out);

// The same with the loops of one kernel, whatever the machine has.
void states_at(const StateKernel& kernel, const Fluid& fluid, std::span<const double> T,
               std::span<const double> p, StateColumns& out);
std::shared_ptr<const Isotherm> make_isotherm(const StateKernel& kernel, const Fluid& fluid, double T);

}  // namespace quom

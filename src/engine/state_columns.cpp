#include "engine/state_columns.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/ideal_gas.h"
#include "engine/saturation.h"
#include "engine/state_kernel.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr double absent = std::numeric_limits<double>::quiet_NaN();

// T [K] and p [kPa] that the loops take; what lies outside goes to the single calls.
constexpr double lowest_T = 0.1, highest_T = 1e6, lowest_p = 1e-30, highest_p = 1e12;

// A block evaluated for a fluid without cp(idG) needs a heat capacity that keeps its numbers above 0; what is
// built on it is taken out of the columns.
constexpr double placeholder_cp = 100.0;

// What a fluid is to the loops.
struct Setup {
    KernelConstants constants;
    bool loops = false;   // false: every state by the single calls
    bool virial = false;  // v = R T/p + B
    bool has_cp = true;
};

void put_shape(const Fluid& fluid, Setup& r) {
    KernelConstants& k = r.constants;
    const EosBlock& e = fluid.eos;
    const EosFamily family = fluid.eos_row().family;
    r.virial = fluid.VPhaseOnly;
    if (r.virial) return;
    k.Tcr = fluid.substance.Tcr;
    k.pcr = fluid.substance.pcr;
    k.vcr = e.vcrEOS;
    const EosAtT at = EOSParT(fluid, k.Tcr);
    k.b = at.b;
    k.c_of_b = at.c / at.b;
    k.d_of_b = at.d / at.b;
    if (fluid.models.EOSKode == Eos::tovarn_ji_2) {
        k.shape = KernelShape::moving_b;
    } else if (at.c == at.d) {
        k.shape = KernelShape::one_bracket;
    }
    const bool constant_b = e.EOSnb == 0.0 && e.EOSnc == 0.0 && e.EOSnd == 0.0;
    k.a0 = e.EOSa;
    k.m = e.EOSna;
    if (family == EosFamily::tovarn_ji) {
        k.law = KernelLaw::filled;
    } else if (e.AlphaForm == 2) {
        k.law = KernelLaw::soave;
    } else if (e.EOSna == 0.0) {
        k.law = KernelLaw::constant;
    } else if (e.EOSna == -1.0) {
        k.law = KernelLaw::inverse;
    } else if (e.EOSna == -0.5) {
        k.law = KernelLaw::inverse_root;
    }
    const bool one_ratio = k.shape != KernelShape::moving_b || at.c != at.d;
    if (!constant_b || !one_ratio || !(k.b > 0.0)) r.loops = false;
}

// Constants of cp(idG); false where the loops do not have its form.
bool put_ideal_gas(const SubstanceConstants& substance, CpForm form, KernelConstants& k) {
    if (form == CpForm::polynomial) {
        // Which form the five numbers stand for is told by the size of the first and the last.
        const auto& x = substance.cpPoly;
        k.ideal_gas = KernelIdealGas::power_series;
        const bool with_A = !(std::fabs(x[0]) < 1e-8f), quartic = with_A && std::fabs(x[4]) < 1.0f;
        const std::size_t first = with_A ? 0 : 1;
        for (std::size_t i = first; i < 4; ++i) k.k[i - first] = static_cast<double>(x[i]);
        const double E = static_cast<double>(x[4]);
        if (quartic) {
            k.k[4] = E;
        } else {
            k.k[5] = E;
            k.ks = -E;
        }
        return true;
    }
    const auto& x = substance.cpDIPPR;
    k.ideal_gas = KernelIdealGas::hyperbolic;
    k.k[0] = static_cast<double>(x[0]);
    k.B = static_cast<double>(x[1]);
    k.C = static_cast<double>(x[2]);
    k.D = static_cast<double>(x[3]);
    k.E = std::fabs(static_cast<double>(x[4]));
    k.T_low = std::max(2.0 * lowest_T, std::max(k.C, k.E) / 340.0);  // exp(-2 C/T) stays a normal number
    return k.C > 0.0;
}

// The zero points follow from one temperature at which both computations are known.
void put_zero_points(const StateKernel& kernel, const Fluid& fluid, Setup& r) {
    KernelConstants& k = r.constants;
    const double T = std::max(TNorm, k.T_low);
    const IdealGas at = IdGasFunc(fluid, T, 1.0);
    if (at.reason != Reason::none) {
        r.loops = false;
        return;
    }
    StateBlock block{};
    std::fill_n(block.T, kernel_block, T);
    kernel.ideal_gas(k, block);
    k.h0 = at.h - block.h_id[0];
    k.s0 = at.s - block.s_id[0];
}

Setup make_setup(const StateKernel& kernel, const Fluid& fluid, bool isotherm) {
    Setup r;
    const Reason cp_reason = fluid.ideal_gas.reason;
    if (!fluid.has_eos() || fluid.eos_row().family == EosFamily::none) return r;
    r.loops = cp_reason == Reason::none || cp_reason == Reason::no_ideal_gas_cp;
    r.has_cp = cp_reason == Reason::none;
    r.constants.M = fluid.M > 0.0 ? fluid.M : absent;
    r.constants.T_low = lowest_T;
    put_shape(fluid, r);
    if (!r.has_cp) {
        r.constants.k[0] = placeholder_cp;
    } else if (!isotherm && r.loops) {
        r.loops = put_ideal_gas(fluid.substance, fluid.models.cpKode, r.constants);
        if (r.loops) put_zero_points(kernel, fluid, r);
    }
    return r;
}

void put_absent(StateColumns& out, std::size_t i, Reason reason) {
    for (std::vector<double>* column :
         {&out.v, &out.rho, &out.h, &out.u, &out.s, &out.g, &out.a, &out.cp, &out.cV, &out.w, &out.lnphi}) {
        (*column)[i] = absent;
    }
    out.phase[i] = ColumnPhase::none;
    out.reason[i] = reason;
}

ColumnPhase phase_of(const VolumeResult& r) {
    if (r.LFlag && r.VFlag) return r.nRoots == 3 ? ColumnPhase::saturated : ColumnPhase::fluid;
    return r.VFlag ? ColumnPhase::V : ColumnPhase::L;
}

// One state by the single calls.
void put_single(const Fluid& fluid, double T, double p, StateColumns& out, std::size_t i) {
    ++out.singles;
    const VolumeResult r = VolumeTp(fluid, T, p);
    const double v = r.VFlag ? r.vV : r.vL;
    if (r.reason != Reason::none || !(v > 0.0)) {
        put_absent(out, i, r.reason != Reason::none ? r.reason : Reason::no_root_above_b);
        return;
    }
    put_state(fluid, T, p, v, phase_of(r), out, i);
}

// Copies a block to its place in the columns.
void put_block(const Setup& setup, const StateBlock& x, std::size_t start, std::size_t count,
               StateColumns& out) {
    const auto put = [&](std::vector<double>& column, const double* values) {
        std::copy_n(values, count, column.data() + start);
    };
    put(out.v, x.v);
    put(out.rho, x.rho);
    put(out.lnphi, x.lnphi);
    for (std::size_t i = 0; i < count; ++i)
        out.phase[start + i] = static_cast<ColumnPhase>(static_cast<int>(x.phase[i]));
    const Reason reason = setup.has_cp ? Reason::none : Reason::no_ideal_gas_cp;
    std::fill_n(out.reason.data() + start, count, reason);
    if (!setup.has_cp) {
        for (auto* column : {&out.h, &out.u, &out.s, &out.g, &out.a, &out.cp, &out.cV, &out.w})
            std::fill_n(column->data() + start, count, absent);
        return;
    }
    put(out.h, x.h);
    put(out.u, x.u);
    put(out.s, x.s);
    put(out.g, x.g);
    put(out.a, x.f);
    put(out.cp, x.cp);
    put(out.cV, x.cV);
    put(out.w, x.w);
}

void clear_doubt(StateBlock& x) { std::fill_n(x.doubt, kernel_block, 0.0); }

// a(T) .. b(T) of codes whose law the loops do not have, or B(T).
void fill_parameters(const Setup& setup, const Fluid& fluid, StateBlock& x) {
    const bool moving = setup.constants.shape == KernelShape::moving_b;
    for (std::size_t i = 0; i < kernel_block; ++i) {
        if (setup.virial) {
            const VirialDerivatives B = virial_derivatives(fluid, x.T[i]);
            x.B[i] = B.B;
            x.B1[i] = B.B1;
            x.B2[i] = B.B2;
            continue;
        }
        const EosAtT at = EOSParT(fluid, x.T[i]);
        const CubicDerivatives k = CubicTerme(fluid, at);
        x.a[i] = at.a;
        x.a1[i] = k.a1;
        x.a2[i] = k.a2;
        if (!moving) continue;
        x.b[i] = at.b;
        x.b1[i] = k.b1;
        x.b2[i] = k.b2;
        if (!(at.b > 0.0)) x.doubt[i] = 1.0;
    }
}

// Everything of T alone.
void fill_T(const StateKernel& kernel, const Setup& setup, const Fluid& fluid, StateBlock& x) {
    kernel.ideal_gas(setup.constants, x);
    if (setup.virial || setup.constants.law == KernelLaw::filled) {
        fill_parameters(setup, fluid, x);
    } else {
        kernel.attraction(setup.constants, x);
    }
}

void evaluate(const StateKernel& kernel, const Setup& setup, StateBlock& x) {
    if (setup.virial) {
        kernel.virial(setup.constants, x);
    } else {
        kernel.stable_root(setup.constants, x);
        kernel.functions(setup.constants, x);
    }
}

bool in_loops(const Setup& setup, double T, double p) {
    return T >= setup.constants.T_low && T <= highest_T && p >= lowest_p && p <= highest_p;
}

// T and p of the lanes of a block; what is outside of the loops is replaced and marked.
class Inputs {
 public:
    // The states from start on; lanes beyond the last state repeat it. Without T the block has it.
    Inputs(const Setup& setup, std::span<const double> T, std::span<const double> p, std::size_t start,
           StateBlock& x) {
        const std::size_t count = std::min(kernel_block, p.size() - start);
        const bool one_T = T.empty();
        std::copy_n(p.data() + start, count, x.p);
        std::fill(x.p + count, x.p + kernel_block, p[start + count - 1]);
        if (!one_T) {
            std::copy_n(T.data() + start, count, x.T);
            std::fill(x.T + count, x.T + kernel_block, T[start + count - 1]);
        }
        const double low = setup.constants.T_low;
        unsigned inside = 1;
        for (std::size_t i = 0; i < kernel_block; ++i) {
            inside &= static_cast<unsigned>(x.T[i] >= low) & static_cast<unsigned>(x.T[i] <= highest_T) &
                      static_cast<unsigned>(x.p[i] >= lowest_p) & static_cast<unsigned>(x.p[i] <= highest_p);
        }
        any_outside_ = inside == 0;
        if (!any_outside_) return;
        for (std::size_t i = 0; i < kernel_block; ++i) {
            outside_[i] = !in_loops(setup, x.T[i], x.p[i]);
            if (!outside_[i]) continue;
            x.p[i] = pNorm;
            if (!one_T) x.T[i] = std::max(TNorm, low);
        }
    }
    // Whether some lane is left to the single calls, and which.
    bool any_single(const StateBlock& x) const {
        double doubt = 0.0;
        for (double lane : x.doubt) doubt += lane;
        return any_outside_ || doubt != 0.0;
    }
    bool single(const StateBlock& x, std::size_t i) const {
        return (any_outside_ && outside_[i]) || x.doubt[i] != 0.0;
    }

 private:
    bool any_outside_ = false;
    bool outside_[kernel_block] = {};
};

}  // namespace

void StateColumns::resize(std::size_t n) {
    for (std::vector<double>* column : {&v, &rho, &h, &u, &s, &g, &a, &cp, &cV, &w, &lnphi})
        column->resize(n);
    phase.resize(n);
    reason.resize(n);
    singles = 0;
}

struct Isotherm {
    const StateKernel* kernel = nullptr;
    Fluid fluid;
    Setup setup;
    double T = 0;
    StateBlock block{};  // what is known of T
};

void states_at(const StateKernel& kernel, const Fluid& fluid, std::span<const double> T,
               std::span<const double> p, StateColumns& out) {
    const std::size_t n = std::min(T.size(), p.size());
    out.resize(n);
    const Setup setup = make_setup(kernel, fluid, false);
    if (!setup.loops) {
        for (std::size_t i = 0; i < n; ++i) put_single(fluid, T[i], p[i], out, i);
        return;
    }
    StateBlock x{};
    for (std::size_t start = 0; start < n; start += kernel_block) {
        const Inputs inputs(setup, T.first(n), p.first(n), start, x);
        fill_T(kernel, setup, fluid, x);
        evaluate(kernel, setup, x);
        const std::size_t count = std::min(kernel_block, n - start);
        put_block(setup, x, start, count, out);
        if (!inputs.any_single(x)) continue;
        for (std::size_t i = 0; i < count; ++i) {
            if (inputs.single(x, i)) put_single(fluid, T[start + i], p[start + i], out, start + i);
        }
    }
}

void states_at(const Fluid& fluid, std::span<const double> T, std::span<const double> p, StateColumns& out) {
    states_at(best_kernel(), fluid, T, p, out);
}

std::shared_ptr<const Isotherm> make_isotherm(const StateKernel& kernel, const Fluid& fluid, double T) {
    auto r = std::make_shared<Isotherm>();
    r->kernel = &kernel;
    r->fluid = fluid;
    r->T = T;
    r->setup = make_setup(kernel, fluid, true);
    if (!r->setup.loops) return r;
    const IdealGas ideal = IdGasFunc(fluid, T, 1.0);
    StateBlock& x = r->block;
    r->setup.loops = in_loops(r->setup, T, pNorm) && ideal.reason == Reason::none;
    if (!r->setup.loops) return r;
    clear_doubt(x);
    std::fill_n(x.T, kernel_block, T);
    std::fill_n(x.h_id, kernel_block, ideal.h);
    std::fill_n(x.s_id, kernel_block, ideal.s);
    std::fill_n(x.cp_id, kernel_block, r->setup.has_cp ? ideal.cp : placeholder_cp);
    fill_parameters(r->setup, fluid, x);
    r->setup.loops = x.doubt[0] == 0.0;
    return r;
}

std::shared_ptr<const Isotherm> make_isotherm(const Fluid& fluid, double T) {
    return make_isotherm(best_kernel(), fluid, T);
}

void states_on(const Isotherm& isotherm, std::span<const double> p, StateColumns& out) {
    const std::size_t n = p.size();
    const Setup& setup = isotherm.setup;
    out.resize(n);
    if (!setup.loops) {
        for (std::size_t i = 0; i < n; ++i) put_single(isotherm.fluid, isotherm.T, p[i], out, i);
        return;
    }
    StateBlock x = isotherm.block;
    const double T = isotherm.T;
    for (std::size_t start = 0; start < n; start += kernel_block) {
        clear_doubt(x);
        const Inputs inputs(setup, {}, p, start, x);
        evaluate(*isotherm.kernel, setup, x);
        const std::size_t count = std::min(kernel_block, n - start);
        put_block(setup, x, start, count, out);
        if (!inputs.any_single(x)) continue;
        for (std::size_t i = 0; i < count; ++i) {
            if (inputs.single(x, i)) put_single(isotherm.fluid, T, p[start + i], out, start + i);
        }
    }
}

namespace {

// One volume of an isotherm by the single calls.
void put_single_volume(const Isotherm& isotherm, double v, double& p, StateColumns& out, std::size_t i) {
    ++out.singles;
    const PressureResult at = pTv(isotherm.fluid, isotherm.T, v);
    p = absent;
    if (at.reason != Reason::none) {
        put_absent(out, i, at.reason);
        return;
    }
    p = at.p;
    put_state(isotherm.fluid, isotherm.T, p, v, ColumnPhase::none, out, i);
}

// p(T, v) of a block with the volumes set.
void block_pressure(const Isotherm& isotherm, StateBlock& x) {
    if (!isotherm.setup.virial) {
        isotherm.kernel->pressure(isotherm.setup.constants, x);
        return;
    }
    for (std::size_t i = 0; i < kernel_block; ++i) {
        x.p[i] = RGas * isotherm.T / (x.v[i] - x.B[i]);
        if (!(x.v[i] > x.B[i]) || !(x.v[i] > 0.0)) x.doubt[i] = 1.0;
    }
}

}  // namespace

void states_on_volumes(const Isotherm& isotherm, std::span<const double> v, std::vector<double>& p,
                       StateColumns& out) {
    const std::size_t n = v.size();
    const Setup& setup = isotherm.setup;
    out.resize(n);
    p.resize(n);
    if (!setup.loops) {
        for (std::size_t i = 0; i < n; ++i) put_single_volume(isotherm, v[i], p[i], out, i);
        return;
    }
    StateBlock x = isotherm.block;
    for (std::size_t start = 0; start < n; start += kernel_block) {
        const std::size_t count = std::min(kernel_block, n - start);
        clear_doubt(x);
        for (std::size_t i = 0; i < kernel_block; ++i) x.v[i] = v[start + std::min(i, count - 1)];
        block_pressure(isotherm, x);
        bool outside[kernel_block] = {};
        for (std::size_t i = 0; i < kernel_block; ++i)
            outside[i] = x.doubt[i] != 0.0 || !in_loops(setup, isotherm.T, x.p[i]);
        if (setup.virial) {
            isotherm.kernel->virial(setup.constants, x);
        } else {
            isotherm.kernel->volume(setup.constants, x);
            isotherm.kernel->functions(setup.constants, x);
        }
        std::fill_n(x.phase, kernel_block, static_cast<double>(ColumnPhase::none));
        put_block(setup, x, start, count, out);
        std::copy_n(x.p, count, p.data() + start);
        std::copy_n(v.data() + start, count, out.v.data() + start);
        for (std::size_t i = 0; i < count; ++i) {
            if (outside[i] || x.doubt[i] != 0.0)
                put_single_volume(isotherm, v[start + i], p[start + i], out, start + i);
        }
    }
}

void put_state(const Fluid& fluid, double T, double p, double v, ColumnPhase phase, StateColumns& out,
               std::size_t i) {
    const StateFunctions f = ThermoState(fluid, T, p, v);
    out.v[i] = v;
    out.rho[i] = fluid.M > 0.0 ? fluid.M / v : absent;
    out.h[i] = f.h;
    out.u[i] = f.u;
    out.s[i] = f.s;
    out.g[i] = f.g;
    out.a[i] = f.a;
    out.cp[i] = f.cp;
    out.cV[i] = f.cV;
    out.w[i] = f.w;
    out.lnphi[i] = f.lnphi;
    out.phase[i] = phase;
    out.reason[i] = f.reason;
}

namespace {

// The saturated phases of what find(i) gives for i below n.
template <class Find>
void saturated_columns(const Fluid& fluid, std::size_t n, SaturationColumns& out, const Find& find) {
    const StateKernel& kernel = best_kernel();
    out.T.resize(n);
    out.p.resize(n);
    out.L.resize(n);
    out.V.resize(n);
    const Setup setup = make_setup(kernel, fluid, false);
    const bool loops = setup.loops && !setup.virial;
    StateBlock x{};
    for (std::size_t start = 0; start < n; start += kernel_block) {
        const std::size_t count = std::min(kernel_block, n - start);
        Saturation at[kernel_block];
        bool outside[kernel_block] = {};
        for (std::size_t i = 0; i < kernel_block; ++i) {
            if (i < count) at[i] = find(start + i);
            outside[i] = i >= count || !at[i].found() || !loops || !in_loops(setup, at[i].T, at[i].p);
            x.T[i] = outside[i] ? std::max(TNorm, setup.constants.T_low) : at[i].T;
            x.p[i] = outside[i] ? pNorm : at[i].p;
        }
        if (loops) fill_T(kernel, setup, fluid, x);
        double doubt[kernel_block];
        std::copy_n(x.doubt, kernel_block, doubt);
        const auto put_phase = [&](ColumnPhase phase, double Saturation::*volume, StateColumns& columns) {
            for (std::size_t i = 0; i < kernel_block; ++i)
                x.v[i] = outside[i] ? RGas * x.T[i] / pNorm : at[i].*volume;
            if (loops) {
                std::copy_n(doubt, kernel_block, x.doubt);
                std::fill_n(x.phase, kernel_block, static_cast<double>(phase));
                kernel.volume(setup.constants, x);
                kernel.functions(setup.constants, x);
                put_block(setup, x, start, count, columns);
            }
            for (std::size_t i = 0; i < count; ++i) {
                if (!at[i].found()) {
                    ++columns.singles;
                    put_absent(columns, start + i, at[i].reason);
                } else if (outside[i] || x.doubt[i] != 0.0) {
                    ++columns.singles;
                    put_state(fluid, at[i].T, at[i].p, at[i].*volume, phase, columns, start + i);
                }
            }
        };
        put_phase(ColumnPhase::L, &Saturation::vL, out.L);
        put_phase(ColumnPhase::V, &Saturation::vV, out.V);
        for (std::size_t i = 0; i < count; ++i) {
            out.T[start + i] = at[i].found() ? at[i].T : absent;
            out.p[start + i] = at[i].found() ? at[i].p : absent;
        }
    }
}

}  // namespace

void saturation_at(const Fluid& fluid, std::span<const double> T, SaturationColumns& out) {
    saturated_columns(fluid, T.size(), out, [&](std::size_t i) { return pLV_EOS(fluid, T[i]); });
    std::ranges::copy(T, out.T.begin());
}

void boiling_at(const Fluid& fluid, std::span<const double> p, SaturationColumns& out) {
    saturated_columns(fluid, p.size(), out, [&](std::size_t i) { return TLV_EOS(fluid, p[i]); });
    std::ranges::copy(p, out.p.begin());
}

}  // namespace quom

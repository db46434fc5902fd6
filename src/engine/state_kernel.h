// The inner loops of state_columns: blocks of 16 states as arrays of doubles, without any branch between
// states.
//
// A stage is a loop over the block. The same loops are compiled twice: as plain C++ that compilers vectorise,
// and over SIMD vectors of the machine at hand. Nothing here knows of Fluid.
#pragma once
#include <cstddef>

namespace quom {

// Form of p = R T/(v - b) - a/((v + c)(v + d)), as far as the loops differ.
enum class KernelShape {
    two_brackets,  // c and d differ, b is constant
    one_bracket,   // c = d, b is constant
    moving_b,      // b, c, d move with T in one ratio
};

// Law of a(T), where the loops have it; filled: by the caller, with a1 and a2.
enum class KernelLaw { filled, constant, inverse, inverse_root, soave };

// Equation of cp(idG).
enum class KernelIdealGas { power_series, hyperbolic };

struct KernelConstants {
    KernelShape shape = KernelShape::two_brackets;
    KernelLaw law = KernelLaw::filled;
    KernelIdealGas ideal_gas = KernelIdealGas::power_series;

    double a0 = 0, m = 0;  // a = a0 (1 + m (1 - sqrt(T/Tcr)))^2, or a0 T^n by the law
    double b = 0, c_of_b = 0, d_of_b = 0;
    double Tcr = 0, pcr = 0, vcr = 0;  // [K], [kPa], [m^3/kmol]
    double M = 0;                      // [kg/kmol]; NaN where it is not known

    // cp = k0 + k1 T + k2 T^2 + k3 T^3 + k4 T^4 + k5/T^2, and its integrals:
    //   h = h0 + k0 T + k1/2 T^2 + .. + k4/5 T^5 - k5/T,  s = s0 + k0 ln T + k1 T + .. + k4/4 T^4 + ks/T^2
    // or cp = k0 + B (x/sinh x)^2 + D (y/cosh y)^2 with x = C/T, y = E/T, E not negative:
    //   h = h0 + T (k0 + B x' + D y'),  s = s0 + k0 ln T + B (x' - ln(1 - e)) + D (y' + ln(1 + f))
    //   with e = exp(-2 x), f = exp(-2 y), x' = 2 x e/(1 - e), y' = 2 y f/(1 + f)
    double k[6] = {0, 0, 0, 0, 0, 0}, ks = 0;
    double B = 0, C = 0, D = 0, E = 0;
    double h0 = 0, s0 = 0;  // s0 at 1 kPa; NaN without cp(idG)
    double T_low = 0;       // [K], below it cp(idG) is left to the single calls
};

inline constexpr std::size_t kernel_block = 16;

// 16 states. Arrays of T alone stand through any number of calls on one isotherm.
struct alignas(64) StateBlock {
    using Array = double[kernel_block];
    Array T, p;
    Array a, a1, a2;          // a(T), its derivatives
    Array b, b1, b2;          // moving_b alone
    Array B, B1, B2;          // second virial coefficient and its derivatives
    Array h_id, s_id, cp_id;  // ideal gas; s at 1 kPa

    Array q2, q1, q0;   // v^3 + q2 v^2 + q1 v + q0
    Array liquid_side;  // 1: the root that was found is the smallest one above b, 0: the largest
    Array open;         // 1: the search for the root has not settled
    Array root, other;  // the root that was found, the outer root of the other side (0: none)
    Array root_ratio, root_I, root_lnphi;
    Array other_ratio, other_I, other_lnphi;

    Array v, ratio, I, lnphi;  // ln(R T/(p (v - b))), integral of 1/((v + c)(v + d)) from v up, ln phi
    Array rho, h, u, s, g, f, cp, cV, w;  // f: Helmholtz energy
    Array phase;                          // ColumnPhase as a number
    Array doubt;                          // 0: the numbers stand, else the state is left to the single calls
};

struct StateKernel {
    const char* name;
    void (*ideal_gas)(const KernelConstants&, StateBlock&);    // T -> h_id, s_id, cp_id
    void (*attraction)(const KernelConstants&, StateBlock&);   // T -> a, a1, a2, unless the law is filled
    void (*stable_root)(const KernelConstants&, StateBlock&);  // T, p, a -> v, ratio, I, lnphi, phase, doubt
    void (*pressure)(const KernelConstants&, StateBlock&);     // T, v, a -> p, doubt
    void (*volume)(const KernelConstants&, StateBlock&);       // T, p, v, a -> ratio, I, lnphi
    void (*functions)(const KernelConstants&, StateBlock&);    // T, p, v, ratio, I, lnphi -> the rest, doubt
    void (*virial)(const KernelConstants&, StateBlock&);       // T, p, B -> v and all functions, doubt
};

const StateKernel& portable_kernel();
// The loops over vectors of this machine; null where the build or the machine has none that is wider.
const StateKernel* simd_kernel();
inline const StateKernel& best_kernel() {
    const StateKernel* simd = simd_kernel();
    return simd ? *simd : portable_kernel();
}

}  // namespace quom

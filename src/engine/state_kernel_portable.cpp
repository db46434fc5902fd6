// The loops of a block as plain C++. Every operation is free of branches, so that compilers vectorise the
// loops.
#include <bit>
#include <cmath>
#include <cstdint>

#include "base/constants.h"
#include "engine/state_kernel.h"

#define QUOM_INLINE inline

namespace quom {
namespace {

using V = double;
using Mask = bool;
constexpr std::size_t lanes = 1;

inline V load(const double* x) { return *x; }
inline void store(V x, double* to) { *to = x; }
inline V set(double x) { return x; }
inline V select(Mask which, V yes, V no) { return which ? yes : no; }
inline Mask select_mask(Mask which, Mask yes, Mask no) { return (which & yes) | (!which & no); }
inline Mask both(Mask x, Mask y) { return x & y; }
inline Mask either(Mask x, Mask y) { return x | y; }
inline Mask not_of(Mask x) { return !x; }
inline Mask not_above(V x, V y) { return !(x > y); }  // true for no number, too
inline V root_of(V x) { return std::sqrt(x); }
inline V absolute(V x) { return std::fabs(x); }
inline V single_precision(V x) { return static_cast<double>(static_cast<float>(x)); }
inline V multiply_add(V x, V y, V z) { return x * y + z; }

// x = 2^k m with m in [sqrt(1/2), sqrt(2)); x normal and above 0.
constexpr std::uint64_t one_bits = 0x3FF0000000000000u, low_root_bits = 0x3FE6A09E00000000u;
constexpr std::uint64_t mantissa_bits = 0x000FFFFFFFFFFFFFu, whole_bits = 0x4330000000000000u;  // 2^52
inline std::uint64_t shifted_bits(V x) {
    return std::bit_cast<std::uint64_t>(x) + (one_bits - low_root_bits);
}
inline V exponent_of(V x) {
    return std::bit_cast<double>((shifted_bits(x) >> 52) | whole_bits) - (4503599627370496.0 + 1023.0);
}
inline V mantissa_of(V x) { return std::bit_cast<double>((shifted_bits(x) & mantissa_bits) + low_root_bits); }
// x 2^n, n in the low bits of n + 1.5 2^52
inline V scaled_by_power_of_two(V x, V shifted) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) +
                                 (std::bit_cast<std::uint64_t>(shifted) << 52));
}

#include "engine/state_kernel_loops.h"

}  // namespace

const StateKernel& portable_kernel() {
    static constexpr StateKernel kernel{"portable", ideal_gas, attraction, stable_root,
                                        pressure,   volume,    functions,  virial};
    return kernel;
}

}  // namespace quom

// The loops of a block over vectors of Highway, compiled for each instruction set and chosen at run time.
#include "engine/state_kernel.h"

#ifdef QUOM_HAVE_HIGHWAY

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/state_kernel_simd.cpp"
// Vectors of 4 and 8 numbers alone: two at a time is what the plain loops reach, and vectors without a fixed
// size have no operators.
#define HWY_DISABLED_TARGETS \
    (HWY_SSSE3 | HWY_SSE4 | HWY_AVX3_DL | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "base/constants.h"

#undef QUOM_INLINE
#define QUOM_INLINE HWY_INLINE

HWY_BEFORE_NAMESPACE();
namespace quom {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
using Numbers = hn::CappedTag<double, 8>;
using Bits = hn::Rebind<std::uint64_t, Numbers>;
using Singles = hn::Rebind<float, Numbers>;
using V = hn::Vec<Numbers>;
using Mask = hn::Mask<Numbers>;
constexpr std::size_t lanes = hn::MaxLanes(Numbers());

HWY_INLINE V load(const double* x) { return hn::Load(Numbers(), x); }
HWY_INLINE void store(V x, double* to) { hn::Store(x, Numbers(), to); }
HWY_INLINE V set(double x) { return hn::Set(Numbers(), x); }
HWY_INLINE V select(Mask which, V yes, V no) { return hn::IfThenElse(which, yes, no); }
HWY_INLINE Mask both(Mask x, Mask y) { return hn::And(x, y); }
HWY_INLINE Mask either(Mask x, Mask y) { return hn::Or(x, y); }
HWY_INLINE Mask not_of(Mask x) { return hn::Not(x); }
HWY_INLINE Mask select_mask(Mask which, Mask yes, Mask no) {
    return hn::Or(hn::And(which, yes), hn::AndNot(which, no));
}
HWY_INLINE Mask not_above(V x, V y) { return hn::Not(x > y); }  // true for no number, too
HWY_INLINE V root_of(V x) { return hn::Sqrt(x); }
HWY_INLINE V absolute(V x) { return hn::Abs(x); }
HWY_INLINE V single_precision(V x) { return hn::PromoteTo(Numbers(), hn::DemoteTo(Singles(), x)); }
HWY_INLINE V multiply_add(V x, V y, V z) { return hn::MulAdd(x, y, z); }

// x = 2^k m with m in [sqrt(1/2), sqrt(2)); x normal and above 0.
using BitVector = hn::Vec<Bits>;
HWY_INLINE BitVector bits_of(V x) { return hn::BitCast(Bits(), x); }
HWY_INLINE V number_of(BitVector x) { return hn::BitCast(Numbers(), x); }
HWY_INLINE BitVector set_bits(std::uint64_t x) { return hn::Set(Bits(), x); }
constexpr std::uint64_t one_bits = 0x3FF0000000000000u, low_root_bits = 0x3FE6A09E00000000u;
constexpr std::uint64_t mantissa_bits = 0x000FFFFFFFFFFFFFu, whole_bits = 0x4330000000000000u;  // 2^52
HWY_INLINE BitVector shifted_bits(V x) { return bits_of(x) + set_bits(one_bits - low_root_bits); }
HWY_INLINE V exponent_of(V x) {
    const V whole = number_of(hn::Or(hn::ShiftRight<52>(shifted_bits(x)), set_bits(whole_bits)));
    return whole - set(4503599627370496.0 + 1023.0);
}
HWY_INLINE V mantissa_of(V x) {
    return number_of(hn::And(shifted_bits(x), set_bits(mantissa_bits)) + set_bits(low_root_bits));
}
// x 2^n, n in the low bits of n + 1.5 2^52
HWY_INLINE V scaled_by_power_of_two(V x, V shifted) {
    return number_of(bits_of(x) + hn::ShiftLeft<52>(bits_of(shifted)));
}

#include "engine/state_kernel_loops.h"

}  // namespace

const StateKernel* kernel_of_target() {
    static constexpr StateKernel kernel{"vectors", ideal_gas, attraction, stable_root,
                                        pressure,  volume,    functions,  virial};
    return lanes > 2 ? &kernel : nullptr;
}

}  // namespace HWY_NAMESPACE
}  // namespace quom
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quom {

// Highway is used by its headers alone: its library measures the clock at the start of a program, some 4 ms.
const StateKernel* simd_kernel() {
#if HWY_ARCH_X86
#if HWY_TARGETS & HWY_AVX3
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
        __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw") &&
        __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("bmi2")) {
        return N_AVX3::kernel_of_target();
    }
#endif
#if HWY_TARGETS & HWY_AVX2
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi") &&
        __builtin_cpu_supports("bmi2")) {
        return N_AVX2::kernel_of_target();
    }
#endif
    return nullptr;
#else
    return HWY_STATIC_DISPATCH(kernel_of_target)();
#endif
}

}  // namespace quom
#endif

#else

namespace quom {
const StateKernel* simd_kernel() { return nullptr; }
}  // namespace quom

#endif

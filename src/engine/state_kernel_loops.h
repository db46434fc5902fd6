// The loops of state_kernel.h over a vector type V. Included once for each machine, inside a namespace that
// has V, Mask, lanes, load, store, set, select, select_mask, both, either, not_of, not_above, root_of,
// absolute, single_precision, multiply_add; of the bits of a number exponent_of, mantissa_of,
// scaled_by_power_of_two. No include guard on purpose.

// ln(2^k (1 + f)) for 1 + f in [sqrt(1/2), sqrt(2)), relative error below 2e-16:
//     ln(1 + f) = f - f^2/2 + s (f^2/2 + R(s^2)),  s = f/(2 + f)
// Even and odd powers of s^2 in R are summed side by side. Coefficients of the FreeBSD mathematical library
// (1993).
QUOM_INLINE V log_of_parts(V k, V f) {
    const V s = f / (set(2.0) + f), z = s * s, w = z * z, square = set(0.5) * f * f;
    V odd = set(1.479819860511658591e-01), even = set(1.531383769920937332e-01);
    odd = multiply_add(odd, w, set(1.818357216161805012e-01));
    even = multiply_add(even, w, set(2.222219843214978396e-01));
    odd = multiply_add(odd, w, set(2.857142874366239149e-01));
    even = multiply_add(even, w, set(3.999999999940941908e-01));
    odd = multiply_add(odd, w, set(6.666666666666735130e-01));
    const V R = multiply_add(even, w, odd * z);
    const V tail = multiply_add(s, square + R, k * set(1.90821492927058770002e-10));
    return k * set(6.93147180369123816490e-01) - ((square - tail) - f);
}
// ln(1 + x), x > -1, with all digits for a small x too.
QUOM_INLINE V log1p_of(V x) {
    const V one = set(1.0), u = one + x, k = exponent_of(u);
    return log_of_parts(k, select(k == set(0.0), x, mantissa_of(u) - one));
}
QUOM_INLINE V log_of(V x) { return log_of_parts(exponent_of(x), mantissa_of(x) - set(1.0)); }

// exp(x) for x <= 0; below -700 exp(-700). The series of exp(r) to r^13 for |r| <= ln(2)/2, in pairs of
// terms.
QUOM_INLINE V exp_of(V x) {
    const V lowest = set(-700.0), one = set(1.0);
    x = select(x < lowest, lowest, x);
    const V shifted = multiply_add(x, set(1.44269504088896338700), set(6755399441055744.0));
    const V n = shifted - set(6755399441055744.0);
    V r = multiply_add(n, set(-6.93147180369123816490e-01), x);
    r = multiply_add(n, set(-1.90821492927058770002e-10), r);
    const V r2 = r * r, r4 = r2 * r2, r8 = r4 * r4;
    const V e2 = multiply_add(r, set(1.0 / 6.0), set(0.5));
    const V e4 = multiply_add(r, set(1.0 / 120.0), set(1.0 / 24.0));
    const V e6 = multiply_add(r, set(1.0 / 5040.0), set(1.0 / 720.0));
    const V e8 = multiply_add(r, set(1.0 / 362880.0), set(1.0 / 40320.0));
    const V e10 = multiply_add(r, set(1.0 / 39916800.0), set(1.0 / 3628800.0));
    const V e12 = multiply_add(r, set(1.0 / 6227020800.0), set(1.0 / 479001600.0));
    const V low = multiply_add(multiply_add(e6, r2, e4), r2, e2);
    const V high = multiply_add(e12, r4, multiply_add(e10, r2, e8));
    const V e = one + (r + multiply_add(high, r8, low * r2));
    return scaled_by_power_of_two(e, shifted);
}

// A float next to a change of rounding: cp(idG) is a single precision number, and the last digits of two
// computations of it may fall on either side. Such a state is left to the single calls.
QUOM_INLINE V rounding_doubt(V x) {
    const V low = single_precision(x * set(1.0 - 1e-13)), high = single_precision(x * set(1.0 + 1e-13));
    return select(low == high, set(0.0), set(1.0));
}

inline void ideal_gas_series(const KernelConstants& c, StateBlock& x) {
    const V k0 = set(c.k[0]), k1 = set(c.k[1]), k2 = set(c.k[2]), k3 = set(c.k[3]), k4 = set(c.k[4]);
    const V k5 = set(c.k[5]), ks = set(c.ks), h0 = set(c.h0), s0 = set(c.s0);
    const V half = set(0.5), third = set(1.0 / 3.0), quarter = set(0.25), fifth = set(0.2);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V T = load(x.T + i), iT = set(1.0) / T;
        const V cp = (((k4 * T + k3) * T + k2) * T + k1) * T + k0 + k5 * iT * iT;
        const V h =
            ((((k4 * fifth * T + k3 * quarter) * T + k2 * third) * T + k1 * half) * T + k0) * T - k5 * iT;
        const V s = (((k4 * quarter * T + k3 * third) * T + k2 * half) * T + k1) * T + ks * iT * iT;
        store(single_precision(cp), x.cp_id + i);
        store(h + h0, x.h_id + i);
        store(s + k0 * log_of(T) + s0, x.s_id + i);
        store(rounding_doubt(cp), x.doubt + i);
    }
}

inline void ideal_gas_hyperbolic(const KernelConstants& c, StateBlock& x) {
    const V A = set(c.k[0]), B = set(c.B), C = set(c.C), D = set(c.D), E = set(c.E);
    const V h0 = set(c.h0), s0 = set(c.s0), one = set(1.0), two = set(2.0), minus = set(-1.0);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V T = load(x.T + i), iT = one / T, x1 = C * iT, x2 = E * iT;
        const V e1 = exp_of(set(-2.0) * x1), e2 = exp_of(set(-2.0) * x2);
        const V m1 = one - e1, p2 = one + e2, inverse = one / (m1 * p2);
        const V q1 = two * x1 * p2 * inverse, q2 = two * x2 * m1 * inverse;
        const V y1 = q1 * e1, y2 = q2 * e2;
        const V cp = A + B * (q1 * y1) + D * (q2 * y2);
        const V s = A * log_of(T) + B * (y1 - log1p_of(minus * e1)) + D * (y2 + log1p_of(e2));
        store(single_precision(cp), x.cp_id + i);
        store((A + B * y1 + D * y2) * T + h0, x.h_id + i);
        store(s + s0, x.s_id + i);
        store(rounding_doubt(cp), x.doubt + i);
    }
}

inline void ideal_gas(const KernelConstants& c, StateBlock& x) {
    c.ideal_gas == KernelIdealGas::hyperbolic ? ideal_gas_hyperbolic(c, x) : ideal_gas_series(c, x);
}

// a = a0 (1 + m (1 - sqrt(T/Tcr)))^2 with its derivatives
inline void soave_attraction(const KernelConstants& c, StateBlock& x) {
    const V a0 = set(c.a0), m = set(c.m), iTcr = set(1.0 / c.Tcr), one = set(1.0);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V T = load(x.T + i), iT = one / T, root = root_of(T * iTcr);
        const V A = one + m * (one - root), A1 = set(-0.5) * m * root * iT, A2 = set(-0.5) * A1 * iT;
        store(a0 * A * A, x.a + i);
        store(set(2.0) * a0 * A * A1, x.a1 + i);
        store(set(2.0) * a0 * (A2 * A + A1 * A1), x.a2 + i);
    }
}

// a = a0 T^n for n = 0, -1, -1/2
inline void power_attraction(const KernelConstants& c, StateBlock& x) {
    const double n = c.law == KernelLaw::inverse ? -1.0 : c.law == KernelLaw::inverse_root ? -0.5 : 0.0;
    const V a0 = set(c.a0), exponent = set(n), next = set(n - 1.0), one = set(1.0);
    const Mask whole = exponent == set(-1.0), part = exponent == set(-0.5);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V T = load(x.T + i), iT = one / T, scale = select(whole, T, select(part, root_of(T), one));
        const V a = a0 / scale, a1 = exponent * a * iT;
        store(a, x.a + i);
        store(a1, x.a1 + i);
        store(next * a1 * iT, x.a2 + i);
    }
}

inline void attraction(const KernelConstants& c, StateBlock& x) {
    if (c.law == KernelLaw::soave) {
        soave_attraction(c, x);
    } else if (c.law != KernelLaw::filled) {
        power_attraction(c, x);
    }
}

// b, c, d of a lane.
template <KernelShape Shape>
struct Covolumes {
    V b, c, d;
};
template <KernelShape Shape>
QUOM_INLINE Covolumes<Shape> covolumes(const KernelConstants& k, const StateBlock& x, std::size_t i) {
    V b = set(k.b);
    if constexpr (Shape == KernelShape::moving_b) b = load(x.b + i);
    return {b, set(k.c_of_b) * b, set(k.d_of_b) * b};
}

template <KernelShape Shape>
inline void cubic_coefficients(const KernelConstants& k, StateBlock& x) {
    const V R = set(RGas), one = set(1.0), zero = set(0.0);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const auto [b, c, d] = covolumes<Shape>(k, x, i);
        const V ip = one / load(x.p + i), A = R * load(x.T + i) * ip + b, ap = load(x.a + i) * ip;
        const V cd = c * d, sum = c + d;
        const V q2 = sum - A, q1 = cd + ap - sum * A, q0 = zero - b * ap - cd * A;
        const V vi = q2 * set(-1.0 / 3.0), fi = ((vi + q2) * vi + q1) * vi + q0;
        // The inflection decides from which end a walk never leaves its side.
        const Mask liquid = both(fi > zero, vi > b);
        store(q2, x.q2 + i);
        store(q1, x.q1 + i);
        store(q0, x.q0 + i);
        store(select(liquid, one, zero), x.liquid_side + i);
        store(select(liquid, b * set(1.0 + 1e-7), A), x.root + i);
        store(one, x.open + i);
    }
}

// Halley's steps dv = -f f'/(f'^2 - f f''/2), two of them; open: the last one was above 1e-6 of v, or no
// number. A root that has settled stays as it is, so that a state does not depend on its neighbours.
inline void halley_steps(StateBlock& x) {
    const V three = set(3.0), two = set(2.0), one = set(1.0), zero = set(0.0), small = set(1e-6),
            half = set(0.5);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V q2 = load(x.q2 + i), q1 = load(x.q1 + i), q0 = load(x.q0 + i), start = load(x.root + i);
        const Mask searched = load(x.open + i) > half;
        V v = start, step = v;
        for (int round = 0; round < 2; ++round) {
            const V f = ((v + q2) * v + q1) * v + q0, slope = (three * v + two * q2) * v + q1;
            step = f * slope / (slope * slope - f * (three * v + q2));
            v = v - step;
        }
        store(select(searched, v, start), x.root + i);
        store(select(searched, select(absolute(step) < small * v, zero, one), zero), x.open + i);
    }
}

// The outer root of the other side, by deflation and one Newton step.
template <KernelShape Shape>
inline void finish_roots(const KernelConstants& k, StateBlock& x) {
    const V one = set(1.0), two = set(2.0), three = set(3.0), half = set(0.5), zero = set(0.0);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V b = covolumes<Shape>(k, x, i).b;
        const V q2 = load(x.q2 + i), q1 = load(x.q1 + i), q0 = load(x.q0 + i);
        const V v = load(x.root + i), iv = one / v, product = zero - q0 * iv;
        const V small = zero - (v + q2), large = (q1 - product) * iv;
        const V middle = half * select(absolute(v * v * v) <= absolute(q0), small, large);
        const V D = middle * middle - product, root = root_of(select(D > zero, D, zero));
        const V high = middle + root;
        const Mask liquid = load(x.liquid_side + i) > half;
        V y = select(liquid, high, product / high);
        const V step = (((y + q2) * y + q1) * y + q0) / ((three * y + two * q2) * y + q1);
        y = select(absolute(step) < set(1e-6) * absolute(y), y - step, y);
        const Mask there = both(both(D > zero, middle > zero), y > b);
        // Two roots that are nearly one: whether they are there is a question of rounding.
        const V near_one = set(1e-6) * middle * middle;
        const Mask doubtful = both(absolute(D) < near_one, middle > half * b);
        const Mask unsettled = either(load(x.open + i) > half, not_above(v, b));
        store(select(there, y, zero), x.other + i);
        store(select(either(doubtful, unsettled), one, load(x.doubt + i)), x.doubt + i);
    }
}

// ln(R T/(p (v - b))), I = integral of 1/((v + c)(v + d)) from v to infinity, and ln phi:
//     I = ln((v + d)/(v + c))/(d - c), or 1/(v + c) where c = d
//     ln phi = ln(R T/(p (v - b))) + Z - 1 - a I/(R T)
// On the isotherm R T/(p (v - b)) = 1 + a/(p N).
template <KernelShape Shape>
inline void fugacities(const KernelConstants& k, const StateBlock& x, const double* volumes, double* ratios,
                       double* integrals, double* lnphis) {
    const V one = set(1.0), R = set(RGas), eight = set(8.0);
    const V ie = set(1.0 / (k.d_of_b - k.c_of_b));  // b/(d - c)
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const auto [b, c, d] = covolumes<Shape>(k, x, i);
        const V T = load(x.T + i), p = load(x.p + i), a = load(x.a + i), v = load(volumes + i);
        const V vc = v + c, N = vc * (v + d), D = v - b, RT = R * T, iRT = one / RT;
        // One division for 1/D, 1/N and 1/p
        const V DN = D * N, inverse = one / (DN * p), iN = D * p * inverse, iD = N * p * inverse;
        const V ratio = log1p_of(a * D * inverse);
        V I = iN * (v + d);
        if constexpr (Shape != KernelShape::one_bracket) I = log1p_of((d - c) * I) * ie / b;
        // Z - 1: for a thin gas from terms that keep their digits, for a dense fluid from p v
        const V excess = select(v < eight * b, p * v * iRT - one, b * iD - a * iRT * v * iN);
        store(ratio, ratios + i);
        store(I, integrals + i);
        store(ratio + excess - a * iRT * I, lnphis + i);
    }
}

// Phase numbers as in ColumnPhase.
inline constexpr double number_L = 1.0, number_V = 2.0, number_fluid = 4.0;

// The root of the lower Gibbs energy, where there are two; the name of the phase.
inline void choose_phase(const KernelConstants& c, StateBlock& x) {
    const V one = set(1.0), zero = set(0.0), half = set(0.5);
    const V Tcr = set(c.Tcr), pcr = set(c.pcr), vcr = set(c.vcr);
    const V L = set(number_L), vapor = set(number_V), fluid = set(number_fluid);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V T = load(x.T + i), p = load(x.p + i), v = load(x.root + i), other = load(x.other + i);
        const Mask two = other > zero, liquid = load(x.liquid_side + i) > half;
        // (g of the root that was found - g of the other)/(R T), and the part of it that is saturation
        const V dg = load(x.root_lnphi + i) - load(x.other_lnphi + i);
        const V band = absolute(load(x.root_ratio + i) - load(x.other_ratio + i)) * set(2.1e-3);
        const Mask hot = T > Tcr;
        const Mask other_stable = select_mask(hot, liquid, dg > zero);
        const Mask take_other = both(two, other_stable);
        const Mask stays_liquid = select_mask(take_other, not_of(liquid), liquid);
        const Mask outside = either(hot, p > pcr);
        const Mask critical = absolute(v - vcr) < set(1e-3);
        const V single = select(either(outside, critical), fluid, select(v < vcr, L, vapor));
        store(select(two, select(stays_liquid, L, vapor), single), x.phase + i);
        store(select(take_other, other, v), x.v + i);
        store(select(take_other, load(x.other_ratio + i), load(x.root_ratio + i)), x.ratio + i);
        store(select(take_other, load(x.other_I + i), load(x.root_I + i)), x.I + i);
        store(select(take_other, load(x.other_lnphi + i), load(x.root_lnphi + i)), x.lnphi + i);
        const Mask saturated = both(two, both(not_of(hot), absolute(dg) < band));
        // T and p are compared with T(cr) and p(cr) in single precision.
        const Mask edge = either(absolute(T - Tcr) < set(2e-7) * Tcr, absolute(p - pcr) < set(2e-7) * pcr);
        store(select(either(saturated, edge), one, load(x.doubt + i)), x.doubt + i);
    }
}

template <KernelShape Shape>
inline void stable_root_of(const KernelConstants& c, StateBlock& x) {
    cubic_coefficients<Shape>(c, x);
    for (int round = 0; round < 8; ++round) {
        halley_steps(x);
        int open = 0;
        for (double lane : x.open) open |= lane > 0.0 ? 1 : 0;
        if (open == 0) break;
    }
    finish_roots<Shape>(c, x);
    fugacities<Shape>(c, x, x.root, x.root_ratio, x.root_I, x.root_lnphi);
    int two = 0;
    for (double other : x.other) two |= other > 0.0 ? 1 : 0;
    if (two != 0) fugacities<Shape>(c, x, x.other, x.other_ratio, x.other_I, x.other_lnphi);
    choose_phase(c, x);
}

inline void stable_root(const KernelConstants& c, StateBlock& x) {
    switch (c.shape) {
        case KernelShape::two_brackets:
            return stable_root_of<KernelShape::two_brackets>(c, x);
        case KernelShape::one_bracket:
            return stable_root_of<KernelShape::one_bracket>(c, x);
        case KernelShape::moving_b:
            return stable_root_of<KernelShape::moving_b>(c, x);
    }
}

// p = R T/(v - b) - a/((v + c)(v + d))
template <KernelShape Shape>
inline void pressure_of(const KernelConstants& k, StateBlock& x) {
    const V one = set(1.0), zero = set(0.0), R = set(RGas);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const auto [b, c, d] = covolumes<Shape>(k, x, i);
        const V v = load(x.v + i), p = R * load(x.T + i) / (v - b) - load(x.a + i) / ((v + c) * (v + d));
        store(p, x.p + i);
        store(select(either(not_above(v, b), not_above(p, zero)), one, load(x.doubt + i)), x.doubt + i);
    }
}

inline void pressure(const KernelConstants& c, StateBlock& x) {
    switch (c.shape) {
        case KernelShape::two_brackets:
            return pressure_of<KernelShape::two_brackets>(c, x);
        case KernelShape::one_bracket:
            return pressure_of<KernelShape::one_bracket>(c, x);
        case KernelShape::moving_b:
            return pressure_of<KernelShape::moving_b>(c, x);
    }
}

inline void volume(const KernelConstants& c, StateBlock& x) {
    switch (c.shape) {
        case KernelShape::two_brackets:
            return fugacities<KernelShape::two_brackets>(c, x, x.v, x.ratio, x.I, x.lnphi);
        case KernelShape::one_bracket:
            return fugacities<KernelShape::one_bracket>(c, x, x.v, x.ratio, x.I, x.lnphi);
        case KernelShape::moving_b:
            return fugacities<KernelShape::moving_b>(c, x, x.v, x.ratio, x.I, x.lnphi);
    }
}

// What the equation of state adds to the ideal gas at T, p, the slopes of p, and 1/v.
struct Residual {
    V h, s, cV, p_T, p_v, iv;
};

// The columns of one vector of states.
QUOM_INLINE void store_functions(const KernelConstants& k, StateBlock& x, std::size_t i, V T, V p, V v,
                                 const Residual& r, V doubt) {
    const V R = set(RGas), M = set(k.M), unit = set(1000.0 / k.M), one = set(1.0), zero = set(0.0);
    const V h = load(x.h_id + i) + r.h, s = load(x.s_id + i) - R * log_of(p) + r.s, pv = p * v, g = h - T * s;
    const V cp_id = load(x.cp_id + i), cV = cp_id - R + r.cV, inverse = one / (r.p_v * cV);
    // cp = cV - T p_T^2/p_v;  w^2 = v^2 (T p_T^2/cV - p_v)/M, p in kPa: factor 1000
    const V square = T * r.p_T * r.p_T, w2 = unit * (square * r.p_v * inverse - r.p_v);
    const V cp = cV - square * cV * inverse;
    store(h, x.h + i);
    store(h - pv, x.u + i);
    store(s, x.s + i);
    store(g, x.g + i);
    store(g - pv, x.f + i);
    store(cV, x.cV + i);
    store(cp, x.cp + i);
    store(v * root_of(w2), x.w + i);
    store(M * r.iv, x.rho + i);
    const Mask good = both(both(cV > zero, cp > zero), both(w2 > zero, cp_id > zero));
    store(select(good, doubt, one), x.doubt + i);
}

// From the Helmholtz energy F = -R T ln(1 - b/v) - a I:
//     h_res = -(a - T a1) I + p v - R T,  s_res = a1 I - R ln(R T/(p (v - b))),  cV_res = T a2 I
//     p_T = R/(v - b) - a1/N,  p_v = a (2 v + c + d)/N^2 - R T/(v - b)^2,  N = (v + c)(v + d)
// and where b, c, d move with T, with F_b = R T/(v - b) - a I_b, I_b = (v/N - I)/b, N_b = (c (v + d) + d (v +
// c))/b:
//     h: - T b1 F_b,  s: - b1 F_b,  cV: - T (2 b1 (R/(v - b) - a1 I_b) + b1^2 F_bb + b2 F_b),  p_T: + b1 F_bv
template <KernelShape Shape>
inline void functions_of(const KernelConstants& k, StateBlock& x) {
    const V R = set(RGas), one = set(1.0), two = set(2.0), zero = set(0.0);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const auto [b, c, d] = covolumes<Shape>(k, x, i);
        const V T = load(x.T + i), p = load(x.p + i), v = load(x.v + i), RT = R * T, I = load(x.I + i);
        const V a = load(x.a + i), a1 = load(x.a1 + i), a2 = load(x.a2 + i), D = v - b, N = (v + c) * (v + d);
        // One division for 1/D, 1/N and 1/v
        const V inverse = one / (D * N * v), iv = D * N * inverse, iD = N * v * inverse, iN = D * v * inverse;
        const V repulsion = RT * iD * iD;
        Residual r{(T * a1 - a) * I + (p * v - RT),
                   a1 * I - R * load(x.ratio + i),
                   T * a2 * I,
                   R * iD - a1 * iN,
                   a * (v + v + c + d) * iN * iN - repulsion,
                   iv};
        if constexpr (Shape == KernelShape::moving_b) {
            const V b1 = load(x.b1 + i), b2 = load(x.b2 + i), ib = one / b;
            const V Nb = (c * (v + d) + d * (v + c)) * ib, Ib = (v * iN - I) * ib;
            const V Ibb = (zero - v * Nb * iN * iN - two * Ib) * ib;
            const V Fb = RT * iD - a * Ib, Fbb = repulsion - a * Ibb;
            r.h = r.h - T * b1 * Fb;
            r.s = r.s - b1 * Fb;
            r.cV = r.cV - T * (two * b1 * (R * iD - a1 * Ib) + b1 * b1 * Fbb + b2 * Fb);
            r.p_T = r.p_T + b1 * (repulsion + a * iN * iN * Nb);
        }
        // Where (dp/dv)_T is small against its parts, the roots and cp lose their last digits.
        const V doubt = select(r.p_v < set(-1e-2) * repulsion, load(x.doubt + i), one);
        store_functions(k, x, i, T, p, v, r, doubt);
    }
}

inline void functions(const KernelConstants& c, StateBlock& x) {
    switch (c.shape) {
        case KernelShape::two_brackets:
            return functions_of<KernelShape::two_brackets>(c, x);
        case KernelShape::one_bracket:
            return functions_of<KernelShape::one_bracket>(c, x);
        case KernelShape::moving_b:
            return functions_of<KernelShape::moving_b>(c, x);
    }
}

// v = R T/p + B:  ln phi = B p/(R T), h_res = p (B - T B1), s_res = -p B1, cp_res = -p T B2
//     p_v = -p^2/(R T), p_T = (1 + p B1/R) p/T
inline void virial(const KernelConstants& k, StateBlock& x) {
    const V R = set(RGas), one = set(1.0), zero = set(0.0), phase = set(number_V);
    for (std::size_t i = 0; i < kernel_block; i += lanes) {
        const V T = load(x.T + i), p = load(x.p + i), RT = R * T, pRT = p / RT;
        const V B2 = load(x.B2 + i), B1 = load(x.B1 + i), B0 = load(x.B + i);
        const V v = RT / p + B0, X = one + p * B1 * set(1.0 / RGas);
        store(v, x.v + i);
        store(B0 * pRT, x.lnphi + i);
        store(phase, x.phase + i);
        // cV = cp - T p_T^2/(-p_v) = cp - R X^2
        const Residual r{p * (B0 - T * B1), zero - p * B1,  R - R * X * X - p * T * B2,
                         R * X * pRT,       zero - p * pRT, one / v};
        store_functions(k, x, i, T, p, v, r, select(v > zero, load(x.doubt + i), one));
    }
}

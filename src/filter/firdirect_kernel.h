// Kernels of the stateless FIR filters that keep their history in a
// caller-owned doubled delay line.
//
// Every output is the dot product of the reversed taps with a window of
// tapsLen samples, oldest first:
//     y = sum over j of taps[L-1-j] * w[j],   j = 0 .. L-1.
// The window lies either wholly in the source or, for the first L-1 outputs
// of a call, partly in the delay line (the older samples) and partly in the
// source. The dot kernel takes it as two pieces and computes the same bits
// wherever the seam falls, so a block call, a run of one-sample calls and a
// block split into several calls agree exactly.
//
// Floating-point order (a contract): eight interleaved partial sums over
// the first L rounded down to a multiple of 8 (partial sum r takes the j
// with j mod 8 = r, in increasing j), combined as
//     ((s0 + s1) + (s2 + s3)) + ((s4 + s5) + (s6 + s7)),
// then the remaining j added one at a time in increasing j. A complex
// product is (wr hr - wi hi, wr hi + wi hr), each product rounded, then
// added. Integer taps give exact integer sums, where the order is moot.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "int128.h"
#include "lane.h"
#include "level.h"
#include "mac_kernel.h"
#include "scale.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::firdirect {

// ---- element types: the scalar of an element and how many make one

using mac::Elem;

template <class E>
inline const typename Elem<E>::S* scalars(const E* p) {
    return reinterpret_cast<const typename Elem<E>::S*>(p);
}

// ---- loading: one register of accumulator scalars AS from scalars DS,
// every conversion exact (16-bit and 32-bit integers and singles into
// doubles, 16-bit integers into singles).

template <class DS, class AS>
inline typename Full<AS>::R loadConv(const DS* p) {
    if constexpr (std::is_same_v<DS, AS>) {
        return Full<AS>::load(p);
    } else if constexpr (std::is_same_v<AS, float>) {
        static_assert(std::is_same_v<DS, std::int16_t>);
        return Full<float>::fromI32(Lanes<std::int16_t, 4>::widenLo(Lanes<std::int16_t, 4>::load(p)));
    } else if constexpr (std::is_same_v<DS, float>) {
        return Full<double>::fromF32(Lanes<float, 2>::load(p));
    } else if constexpr (std::is_same_v<DS, std::int16_t>) {
        return Full<double>::fromI32(Lanes<std::int16_t, 2>::widenLo(Lanes<std::int16_t, 2>::load(p)));
    } else {
        static_assert(std::is_same_v<DS, std::int32_t>);
        return Full<double>::fromI32(Lanes<std::int32_t, 2>::load(p));
    }
}

// ---- the floating-point dot product

template <class A>
inline A addA(A a, A b) {
    if constexpr (Elem<A>::K == 2) return A{a.re + b.re, a.im + b.im};
    else return a + b;
}

// s + h * w in the arithmetic of A, h and w converted exactly.
template <class A, class T, class D>
inline A addTerm(A s, const T& h, const D& w) {
    using S = typename Elem<A>::S;
    if constexpr (Elem<A>::K == 2) {
        const S hr = S(h.re), hi = S(h.im), wr = S(w.re), wi = S(w.im);
        const S pr = wr * hr - wi * hi;
        const S pi = wr * hi + wi * hr;
        return A{s.re + pr, s.im + pi};
    } else {
        return s + S(h) * S(w);
    }
}

// Eight partial sums of A held in registers, and the steps that feed and
// combine them. Taps T, data D, accumulator A.
template <class A, class T, class D>
struct Dot {
    using S = typename Elem<A>::S;
    using L = Full<S>;
    using R = typename L::R;
    static constexpr int K = Elem<A>::K;
    static constexpr int kPer = 16 / int(sizeof(S));  // scalars per register
    static constexpr int kRegs = 8 * K / kPer;         // registers per 8 elements
    using TS = typename Elem<T>::S;
    using DS = typename Elem<D>::S;

    // The reversed taps hrev[jb .. jb+7] = taps[L-1-jb .. L-8-jb], converted;
    // `last8` points at taps[L-8-jb].
    static void taps8(const T* last8, R* h) {
        const TS* p = scalars(last8);
        for (int r = 0; r < kRegs; ++r) {
            const R v = loadConv<TS, S>(p + (kRegs - 1 - r) * kPer);
            if constexpr (K == 2 && kPer == 2) h[r] = v;  // one complex per register
            else if constexpr (K == 2) h[r] = L::reversePairs(v);
            else h[r] = L::reverse(v);
        }
    }

    static void step(R* acc, const R* h, const D* w8) {
        const DS* p = scalars(w8);
        for (int r = 0; r < kRegs; ++r) {
            const R w = loadConv<DS, S>(p + r * kPer);
            if constexpr (K == 2) acc[r] = L::add(acc[r], L::cmul(w, h[r]));
            else acc[r] = L::add(acc[r], L::mul(w, h[r]));
        }
    }

    static A combine(const R* acc) {
        alignas(16) A s[8];
        for (int r = 0; r < kRegs; ++r) L::storea(reinterpret_cast<S*>(s) + r * kPer, acc[r]);
        return addA(addA(addA(s[0], s[1]), addA(s[2], s[3])), addA(addA(s[4], s[5]), addA(s[6], s[7])));
    }

    // One output over the window a[0 .. na-1] followed by b[0 .. L-na-1]
    // (b is not read when na = L).
    static A one(const T* taps, std::ptrdiff_t len, const D* a, std::ptrdiff_t na, const D* b) {
        const std::ptrdiff_t t8 = len & ~std::ptrdiff_t(7);
        R acc[kRegs], h[kRegs];
        for (int r = 0; r < kRegs; ++r) acc[r] = L::zero();
        std::ptrdiff_t j = 0;
        for (; j < t8 && j + 8 <= na; j += 8) {
            taps8(taps + (len - 8 - j), h);
            step(acc, h, a + j);
        }
        if (j < t8 && j < na) {  // the block across the seam, through a copy
            D tmp[8];
            for (int i = 0; i < 8; ++i) tmp[i] = j + i < na ? a[j + i] : b[j + i - na];
            taps8(taps + (len - 8 - j), h);
            step(acc, h, tmp);
            j += 8;
        }
        for (; j < t8; j += 8) {
            taps8(taps + (len - 8 - j), h);
            step(acc, h, b + (j - na));
        }
        A s = combine(acc);
        for (; j < len; ++j) s = addTerm(s, taps[len - 1 - j], j < na ? a[j] : b[j - na]);
        return s;
    }

    // Two outputs over the whole windows w and w + 1, sharing the taps;
    // each gets exactly the arithmetic of one().
    static void two(const T* taps, std::ptrdiff_t len, const D* w, A* out) {
        const std::ptrdiff_t t8 = len & ~std::ptrdiff_t(7);
        R acc0[kRegs], acc1[kRegs], h[kRegs];
        for (int r = 0; r < kRegs; ++r) acc0[r] = acc1[r] = L::zero();
        for (std::ptrdiff_t j = 0; j < t8; j += 8) {
            taps8(taps + (len - 8 - j), h);
            step(acc0, h, w + j);
            step(acc1, h, w + j + 1);
        }
        A s0 = combine(acc0), s1 = combine(acc1);
        for (std::ptrdiff_t j = t8; j < len; ++j) {
            s0 = addTerm(s0, taps[len - 1 - j], w[j]);
            s1 = addTerm(s1, taps[len - 1 - j], w[j + 1]);
        }
        out[0] = s0;
        out[1] = s1;
    }
};

// ---- the exact integer dot product (integer taps)

// Sum of taps[L-1-j] * w[j] as an exact 128-bit integer (real part, or
// real and imaginary parts). 64-bit partial sums over runs of 2^15 terms:
// a term is below 2^48 in magnitude, so a run cannot overflow.
template <class T, class D>
struct IntDot {
    static constexpr int K = Elem<D>::K;
    struct Out {
        Int128 re, im;
    };
    static Out one(const T* taps, std::ptrdiff_t len, const D* a, std::ptrdiff_t na, const D* b) {
        Out o;
        std::ptrdiff_t j = 0;
        while (j < len) {
            const std::ptrdiff_t end = len - j > (1 << 15) ? j + (1 << 15) : len;
            std::int64_t sr = 0, si = 0;
            for (; j < end; ++j) {
                const T& h = taps[len - 1 - j];
                const D& x = j < na ? a[j] : b[j - na];
                if constexpr (K == 2) {
                    sr += std::int64_t(h.re) * x.re - std::int64_t(h.im) * x.im;
                    si += std::int64_t(h.re) * x.im + std::int64_t(h.im) * x.re;
                } else {
                    sr += std::int64_t(h) * x;
                }
            }
            o.re = o.re + Int128::from(sr);
            o.im = o.im + Int128::from(si);
        }
        return o;
    }
};

// 16-bit taps on 16-bit data, eight terms at a time: the pairwise product
// sums of 16-bit lanes lie in [-2^31 + 2^16, 2^31], so one less than each
// fits 32 bits even where the lane itself wrapped; those are widened and
// summed in 64 bits, and the ones taken away are added back at the end.
template <>
struct IntDot<Zvp16s, Zvp16s> {
    struct Out {
        Int128 re, im;
    };
    using W = Full<std::int16_t>;
    using I32 = Full<std::int32_t>;
    using I64 = Full<std::int64_t>;

    static void step(__m128i& acc, const Zvp16s* last8, const Zvp16s* w8) {
        const __m128i h = W::reverse(W::load(last8));
        const __m128i p = I32::sub(W::maddPairs(W::load(w8), h), I32::set1(1));
        acc = I64::add(acc, I64::add(I32::widenLo(p), I32::widenHi(p)));
    }
    static Out one(const Zvp16s* taps, std::ptrdiff_t len, const Zvp16s* a, std::ptrdiff_t na, const Zvp16s* b) {
        const std::ptrdiff_t t8 = len & ~std::ptrdiff_t(7);
        __m128i acc = I64::zero();
        std::ptrdiff_t j = 0;
        for (; j < t8 && j + 8 <= na; j += 8) step(acc, taps + (len - 8 - j), a + j);
        if (j < t8 && j < na) {
            Zvp16s tmp[8];
            for (int i = 0; i < 8; ++i) tmp[i] = j + i < na ? a[j + i] : b[j + i - na];
            step(acc, taps + (len - 8 - j), tmp);
            j += 8;
        }
        for (; j < t8; j += 8) step(acc, taps + (len - 8 - j), b + (j - na));
        alignas(16) std::int64_t lanes[2];
        I64::storea(lanes, acc);
        std::int64_t s = lanes[0] + lanes[1] + std::int64_t(t8 / 2);
        for (; j < len; ++j) s += std::int64_t(taps[len - 1 - j]) * (j < na ? a[j] : b[j - na]);
        Out o;
        o.re = Int128::from(s);
        return o;
    }
};

// ---- conversion of a result to the output type

// v * 2^-sf rounded to nearest with ties to even and saturated to D; NaN
// gives 0. Exact: scaling by a power of two only rounds below 2^-1022, where
// every value rounds to 0 anyway.
template <class D>
inline D toInt(double v, int sf) {
    if (v != v) return D(0);
    const int e = sf > 4000 ? 4000 : sf < -4000 ? -4000 : sf;
    const double s = std::ldexp(v, -e);
    const double r = One<double>::first(One<double>::roundNearest(One<double>::set1(s)));
    using Lim = std::numeric_limits<D>;
    if (r >= double(Lim::max())) return Lim::max();
    if (r <= double(Lim::min())) return Lim::min();
    return D(r);
}

}  // namespace zvp::ZVP_LEVEL::firdirect

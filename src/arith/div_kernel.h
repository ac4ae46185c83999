// Kernels of the integer divide families (Div, DivC, DivCRev, Div_Round).
//
// The result of one element is the exact quotient a / (b * 2^sf), rounded
// by one of three rules and saturated to the destination:
//   Rnd::Zero  toward zero,
//   Rnd::Near  to nearest with ties to even (the scale rule of every Sfs
//              operation, applied to a rational R = a / b),
//   Rnd::Fin   to nearest with ties away from zero.
// A zero divisor gives a substitute: 0 for 0/0, else the type's maximum for
// a positive dividend and its minimum for a negative one.
//
// 8u, 16s and 16u quotients are computed in floating point, which is exact
// here: with A = a * 2^k (k = max(-sf, 0)) and B = b * 2^max(sf, 0) both
// exact integers, a quotient q = A / B that is not a half-integer lies at
// least 1 / (2|B|) from one, while rounding q to nearest moves it by at most
// |q| * 2^-(p+1) for a p-bit significand; the two never meet while
// |A| < 2^p. Rounding the floating quotient to an integer therefore gives
// the rounding of the exact quotient: single precision (p = 24, four lanes)
// serves |A| < 2^23, double (p = 53, two lanes) |A| < 2^52. Toward zero,
// the division itself is done toward zero, which never crosses an integer.
// Division by zero yields +-inf (clamped to the bounds: the substitutes) or
// NaN for 0/0 (replaced by 0). The kernels run under the MXCSR guard, so
// neither the caller's rounding mode nor its flush settings reach them.
//
// Wider operands use quotientRule(), exact integer division on up to 127
// bits.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include "forms.h"
#include "fpguard.h"
#include "int128.h"
#include "lane.h"
#include "level.h"
#include "scale.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::divk {

using form::Const;
using form::Vec;

enum class Rnd { Zero, Near, Fin };

// ---- Exact integer quotients ----------------------------------------------------

inline int bitLength(Int128 v) {  // v >= 0
    if (v.hi) return 128 - __builtin_clzll(std::uint64_t(v.hi));
    return v.lo ? 64 - __builtin_clzll(v.lo) : 0;
}

// q = n / d and r = n mod d for 0 <= n, 0 < d, both below 2^127.
inline void divMod(Int128 n, Int128 d, Int128& q, Int128& r) {
    if (n.hi == 0 && d.hi == 0) {
        q = Int128::from(n.lo / d.lo);
        r = Int128::from(n.lo % d.lo);
        return;
    }
    q = Int128{};
    r = n;
    for (int s = bitLength(n) - bitLength(d); s >= 0; --s) {
        const Int128 t = shiftLeft(d, s);
        if (!(r < t)) {
            r = r - t;
            q = q + shiftLeft(Int128{1, 0}, s);
        }
    }
}

// |v| as a non-negative Int128 (exact for every int64_t).
inline Int128 magnitude(std::int64_t v) {
    return Int128::from(v < 0 ? std::uint64_t(0) - std::uint64_t(v) : std::uint64_t(v));
}

// The rounded, saturated value of num / (den * 2^sf), den != 0.
template <class D>
D quotientRule(std::int64_t num, std::int64_t den, int sf, Rnd mode) {
    if (num == 0) return D(0);
    const bool neg = (num < 0) != (den < 0);
    Int128 n = magnitude(num), d = magnitude(den);  // both <= 2^63
    if (sf >= 64) {
        // |q| <= 2^63 / 2^64: only 2^63 / 2^64 = 1/2 exactly is not below 1/2.
        const bool half = sf == 64 && d == Int128::from(std::uint64_t(1)) &&
                          n == Int128::from(std::uint64_t(1) << 63);
        if (!(half && mode == Rnd::Fin)) return D(0);
        return saturate<D>(neg ? Int128::from(std::int64_t(-1)) : Int128::from(std::int64_t(1)));
    }
    if (sf > 0) {
        d = shiftLeft(d, sf);
    } else if (sf < 0) {
        // Beyond 126 bits |q| >= 2^126 / 2^63: saturated for every destination.
        if (sf < bitLength(n) - 126) return saturate<D>(neg ? Int128{0, INT64_MIN} : Int128{0, INT64_MAX});
        n = shiftLeft(n, -sf);
    }
    Int128 q, r;
    divMod(n, d, q, r);
    const Int128 rest = d - r;  // r > d/2  <=>  r > d - r
    bool up = false;
    if (mode == Rnd::Near) up = rest < r || (rest == r && (q.lo & 1));
    else if (mode == Rnd::Fin) up = !(r < rest);
    if (up) q = q + Int128{1, 0};
    return saturate<D>(neg ? Int128{} - q : q);
}

// The substitute for a zero divisor.
template <class T>
constexpr T zeroDivisorValue(T a) {
    using L = std::numeric_limits<T>;
    if (a == 0) return T(0);
    return a > 0 ? L::max() : L::min();
}

// ---- Floating-point quotient kernels ------------------------------------------

// The elements of a lane L of T as two registers of 32-bit lanes (the first
// four, the next four), and back (the lanes already within T's range).
template <class L>
inline void widen32(__m128i v, __m128i& x0, __m128i& x1) {
    if constexpr (sizeof(typename L::type) == 1) {
        using W = Rebind<L, std::uint16_t>;
        const __m128i w = L::widenLo(v);
        x0 = W::widenLo(w);
        x1 = W::widenHi(w);
    } else {
        x0 = L::widenLo(v);
        x1 = L::widenHi(v);
    }
}
template <class T>
inline __m128i narrow32(__m128i r0, __m128i r1) {
    using W = Full<std::int32_t>;
    if constexpr (sizeof(T) == 1) {
        const __m128i w = W::template narrow<std::uint16_t>(r0, r1);
        return Full<std::int16_t>::template narrow<std::uint8_t>(w, w);
    } else {
        return W::template narrow<T>(r0, r1);
    }
}

// Quotients (NaN-free and clamped) convert by the rounding mode the
// caller's guard set for Rnd::Near and Rnd::Zero; Rnd::Fin adds 1/2 with the
// quotient's sign and truncates.
// q = (a * p) / (b * s), NaN to 0, clamped to T's range, converted: on the
// float lane F (one lane in the tail: the scalar instructions).
template <class T, Rnd R, class F>
struct Quot {
    using V = typename F::R;
    V p, s, lo, hi;
    Quot(double p_, double s_)
        : p(F::set1(typename F::type(p_))), s(F::set1(typename F::type(s_))),
          lo(F::set1(typename F::type(std::numeric_limits<T>::min()))),
          hi(F::set1(typename F::type(std::numeric_limits<T>::max()))) {}
    __m128i operator()(__m128i a, __m128i b) const {
        V q = F::div(F::mul(F::fromI32(a), p), F::mul(F::fromI32(b), s));
        q = F::and_(q, F::ord(q, q));
        q = F::min(F::max(q, lo), hi);
        if constexpr (R == Rnd::Fin) {
            const V h = F::or_(F::and_(q, F::set1(-0.0)), F::set1(0.5));
            return F::toI32Trunc(F::add(q, h));
        } else {
            return F::toI32(q);
        }
    }
};

// The quotients of up to four 32-bit lanes in single precision (four
// lanes) or double (two lanes at a time).
template <class T, Rnd R, class E, bool kDouble>
struct Quot4 {
    static constexpr int N = E::N;  // lanes used of the 32-bit register
    using FS = Lanes<float, N>;
    using FD = Lanes<double, (N < 2 ? N : 2)>;
    std::conditional_t<kDouble, Quot<T, R, FD>, Quot<T, R, FS>> q;
    explicit Quot4(int sf)
        : q(sf < 0 ? double(std::uint64_t(1) << -sf) : 1.0, sf > 0 ? double(std::uint64_t(1) << sf) : 1.0) {}
    __m128i operator()(__m128i a, __m128i b) const {
        if constexpr (!kDouble || N <= 2) {
            return q(a, b);
        } else {
            using W = Full<std::int64_t>;
            return W::zipLo(q(a, b), q(E::hiHalf(a), E::hiHalf(b)));
        }
    }
};

// d[i] = rounded num[i] / (den[i] * 2^sf), eight elements a step in the
// body, one in the tail. Notes whether a divisor was zero.
template <class T, Rnd R, bool kDouble, class A, class B>
struct DivLanes {
    A num;
    B den;
    Quot4<T, R, Full<std::int32_t>, kDouble> body;
    Quot4<T, R, One<std::int32_t>, kDouble> tail;
    bool zero = false;
    DivLanes(A n, B d, int sf) : num(n), den(d), body(sf), tail(sf) {}
    template <class L, class Q>
    __m128i step(std::ptrdiff_t i, const Q& quot) {
        const __m128i a = num.template load<L>(i), b = den.template load<L>(i);
        zero |= L::anyOf(L::eq(b, L::zero()));
        __m128i a0, a1, b0, b1;
        widen32<L>(a, a0, a1);
        widen32<L>(b, b0, b1);
        const __m128i r0 = quot(a0, b0);
        const __m128i r1 = L::N > 4 ? quot(a1, b1) : r0;
        return narrow32<T>(r0, r1);
    }
    template <class L>
    __m128i at(std::ptrdiff_t i) {
        if constexpr (L::N == 1) return step<L>(i, tail);
        else return step<L>(i, body);
    }
};

// Runs the floating-point quotients over len elements: single precision
// where |a| * 2^-sf stays below 2^23 (kDouble false), double below 2^52.
// The caller holds the rounding-mode guard. Returns true when some divisor
// was zero.
template <class T, Rnd R, bool kDouble, class A, class B>
bool divLanes(A num, B den, T* d, std::ptrdiff_t len, int sf) {
    return form::each<T, 1, 8>(DivLanes<T, R, kDouble, A, B>(num, den, sf), d, len).zero;
}

// ---- Out-of-kernel ranges ------------------------------------------------------

// Scale factors so large that every quotient with a non-zero divisor rounds
// to 0.
template <class T, class A, class B>
bool divAllZero(const A& num, const B& den, T* d, std::ptrdiff_t len) {
    bool zero = false;
    for (std::ptrdiff_t i = 0; i < len; ++i) {
        const T a = num.at(i), b = den.at(i);
        zero |= b == 0;
        d[i] = b == 0 ? zeroDivisorValue(a) : T(0);
    }
    return zero;
}

// Scale factors so negative that every non-zero quotient saturates: 0 for a
// zero dividend, else the bound of the product of the signs (a zero divisor
// counts as positive).
template <class T, class A, class B>
bool divBound(const A& num, const B& den, T* d, std::ptrdiff_t len) {
    using L = std::numeric_limits<T>;
    bool zero = false;
    for (std::ptrdiff_t i = 0; i < len; ++i) {
        const T a = num.at(i), b = den.at(i);
        zero |= b == 0;
        d[i] = a == 0 ? T(0) : ((a < 0) != (b < 0) ? L::min() : L::max());
    }
    return zero;
}

// ---- Kernel selection -----------------------------------------------------------

// The scale factors [lo, hi] the quotient kernels serve for each type.
// Above hi every quotient with a non-zero divisor is at most 1/2 and rounds
// to 0 (to nearest with ties to even; 16s reaches 1/2 exactly at hi + 1,
// which rounding away from zero takes to +-1). Below lo every non-zero
// quotient saturates: 2^-lo over the largest divisor exceeds the maximum.
template <class T>
struct Range;
template <>
struct Range<Zvp8u> {
    static constexpr int lo = -15, hi = 8;
};
template <>
struct Range<Zvp16s> {
    static constexpr int lo = -30, hi = 15;
};
template <>
struct Range<Zvp16u> {
    static constexpr int lo = -31, hi = 16;
};

// Largest |dividend| of T, and how far single precision reaches with it.
template <class T>
constexpr int kMaxShiftF = std::is_same_v<T, Zvp8u> ? 15 : 7;  // |a| * 2^k < 2^23

// Runs the floating-point kernel of sf: single precision where |a| * 2^-sf
// stays below 2^23, double below 2^52. The caller keeps sf within the range
// where one of them applies and holds the rounding-mode guard.
template <class T, Rnd R, class A, class B>
bool divKernel(const A& num, const B& den, T* d, std::ptrdiff_t len, int sf) {
    if (sf >= -kMaxShiftF<T>) return divLanes<T, R, false>(num, den, d, len, sf);
    return divLanes<T, R, true>(num, den, d, len, sf);
}

// The MXCSR rounding control for a rounding rule.
constexpr unsigned guardMode(Rnd r) {
    return r == Rnd::Zero ? MxcsrGuard::kTowardZero : MxcsrGuard::kNearest;
}

}  // namespace zvp::ZVP_LEVEL::divk

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
// NaN for 0/0 (replaced by 0).
//
// Wider operands use quotientRule(), exact integer division on up to 127
// bits.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <limits>
#include <type_traits>

#include "fpguard.h"
#include "int128.h"
#include "simd.h"
#include "zvps.h"

namespace zvp::divk {

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

// ---- Operands ------------------------------------------------------------------

// Eight elements of T as two vectors of 32-bit lanes, and back.
template <class T>
inline void load8(const T* p, __m128i& x0, __m128i& x1) {
    if constexpr (std::is_same_v<T, Zvp8u>) {
        const __m128i v = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
        x0 = _mm_cvtepu8_epi32(v);
        x1 = _mm_cvtepu8_epi32(_mm_srli_si128(v, 4));
    } else {
        const __m128i v = simd::loadu(p);
        if constexpr (std::is_same_v<T, Zvp16s>) {
            x0 = _mm_cvtepi16_epi32(v);
            x1 = _mm_cvtepi16_epi32(_mm_srli_si128(v, 8));
        } else {
            x0 = _mm_cvtepu16_epi32(v);
            x1 = _mm_cvtepu16_epi32(_mm_srli_si128(v, 8));
        }
    }
}
// The lanes are already within the bounds of T.
template <class T>
inline void store8(T* p, __m128i r0, __m128i r1) {
    if constexpr (std::is_same_v<T, Zvp8u>) {
        const __m128i w = _mm_packus_epi32(r0, r1);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(w, w));
    } else if constexpr (std::is_same_v<T, Zvp16s>) {
        simd::storeu(p, _mm_packs_epi32(r0, r1));
    } else {
        simd::storeu(p, _mm_packus_epi32(r0, r1));
    }
}

template <class T>
struct Vec {
    static constexpr bool kVector = true;
    const T* p;
    T at(int i) const { return p[i]; }
    void load(int i, __m128i& x0, __m128i& x1) const { load8(p + i, x0, x1); }
};

template <class T>
struct Const {
    static constexpr bool kVector = false;
    T c;
    __m128i v;
    explicit Const(T c_) : c(c_), v(_mm_set1_epi32(c_)) {}
    T at(int) const { return c; }
    void load(int, __m128i& x0, __m128i& x1) const { x0 = x1 = v; }
};

// ---- Floating-point quotient kernels ------------------------------------------

// Converts quotients (already NaN-free and clamped) by the rounding rule.
// Rnd::Near and Rnd::Zero convert by the rounding mode the caller's guard
// set; Rnd::Fin adds 1/2 with the quotient's sign and truncates.
template <Rnd R>
inline __m128i toInt(__m128 q) {
    if constexpr (R == Rnd::Fin) {
        const __m128 h = _mm_or_ps(_mm_and_ps(q, _mm_set1_ps(-0.0f)), _mm_set1_ps(0.5f));
        return _mm_cvttps_epi32(_mm_add_ps(q, h));
    } else {
        return _mm_cvtps_epi32(q);
    }
}
template <Rnd R>
inline __m128i toInt(__m128d q) {
    if constexpr (R == Rnd::Fin) {
        const __m128d h = _mm_or_pd(_mm_and_pd(q, _mm_set1_pd(-0.0)), _mm_set1_pd(0.5));
        return _mm_cvttpd_epi32(_mm_add_pd(q, h));
    } else {
        return _mm_cvtpd_epi32(q);
    }
}

template <class T, Rnd R>
struct QuotF {  // single precision, four lanes
    __m128 p, s, lo, hi;
    QuotF(int sf)
        : p(_mm_set1_ps(sf < 0 ? float(1u << -sf) : 1.0f)),
          s(_mm_set1_ps(sf > 0 ? float(1u << sf) : 1.0f)),
          lo(_mm_set1_ps(float(std::numeric_limits<T>::min()))),
          hi(_mm_set1_ps(float(std::numeric_limits<T>::max()))) {}
    __m128i operator()(__m128i a, __m128i b) const {
        __m128 q = _mm_div_ps(_mm_mul_ps(_mm_cvtepi32_ps(a), p), _mm_mul_ps(_mm_cvtepi32_ps(b), s));
        q = _mm_and_ps(q, _mm_cmpord_ps(q, q));
        return toInt<R>(_mm_min_ps(_mm_max_ps(q, lo), hi));
    }
};

template <class T, Rnd R>
struct QuotD {  // double precision, 2 x 2 lanes
    __m128d p, s, lo, hi;
    QuotD(int sf)
        : p(_mm_set1_pd(sf < 0 ? double(std::uint64_t(1) << -sf) : 1.0)),
          s(_mm_set1_pd(sf > 0 ? double(std::uint64_t(1) << sf) : 1.0)),
          lo(_mm_set1_pd(double(std::numeric_limits<T>::min()))),
          hi(_mm_set1_pd(double(std::numeric_limits<T>::max()))) {}
    __m128i two(__m128i a, __m128i b) const {
        __m128d q = _mm_div_pd(_mm_mul_pd(_mm_cvtepi32_pd(a), p), _mm_mul_pd(_mm_cvtepi32_pd(b), s));
        q = _mm_and_pd(q, _mm_cmpord_pd(q, q));
        return toInt<R>(_mm_min_pd(_mm_max_pd(q, lo), hi));
    }
    __m128i operator()(__m128i a, __m128i b) const {
        return _mm_unpacklo_epi64(two(a, b), two(_mm_srli_si128(a, 8), _mm_srli_si128(b, 8)));
    }
};

// d[i] = rounded num[i] / (den[i] * 2^sf) through Quot (QuotF or QuotD).
// The tail runs the same lane arithmetic on one element (the unused lanes
// divide 0 by 1). Returns true when some divisor was zero.
template <class T, class Quot, class A, class B>
bool divLanes(const A& num, const B& den, T* d, int len, int sf) {
    const Quot quot(sf);
    __m128i zeros = _mm_setzero_si128();
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        __m128i a0, a1, b0, b1;
        num.load(i, a0, a1);
        den.load(i, b0, b1);
        if constexpr (B::kVector) {
            const __m128i z = _mm_setzero_si128();
            zeros = _mm_or_si128(zeros, _mm_or_si128(_mm_cmpeq_epi32(b0, z), _mm_cmpeq_epi32(b1, z)));
        }
        store8(d + i, quot(a0, b0), quot(a1, b1));
    }
    bool zero = !_mm_testz_si128(zeros, zeros);
    for (; i < len; ++i) {
        const T b = den.at(i);
        zero |= b == 0;
        const __m128i r = quot(_mm_cvtsi32_si128(num.at(i)), _mm_setr_epi32(b, 1, 1, 1));
        d[i] = T(_mm_cvtsi128_si32(r));
    }
    return zero;
}

// ---- Out-of-kernel ranges ------------------------------------------------------

// Scale factors so large that every quotient with a non-zero divisor rounds
// to 0.
template <class T, class A, class B>
bool divAllZero(const A& num, const B& den, T* d, int len) {
    bool zero = false;
    for (int i = 0; i < len; ++i) {
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
bool divBound(const A& num, const B& den, T* d, int len) {
    using L = std::numeric_limits<T>;
    bool zero = false;
    for (int i = 0; i < len; ++i) {
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
bool divKernel(const A& num, const B& den, T* d, int len, int sf) {
    if (sf >= -kMaxShiftF<T>) return divLanes<T, QuotF<T, R>>(num, den, d, len, sf);
    return divLanes<T, QuotD<T, R>>(num, den, d, len, sf);
}

// The MXCSR rounding control for a rounding rule.
constexpr unsigned guardMode(Rnd r) {
    return r == Rnd::Zero ? MxcsrGuard::kTowardZero : MxcsrGuard::kNearest;
}

}  // namespace zvp::divk

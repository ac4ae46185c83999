// Exact integer reductions of the statistics families, and the ways their
// results are rounded and scaled.
//
// Every sum here is exact: 16-bit data are gathered in 32-bit lanes for as
// many steps as cannot overflow and then moved into 64-bit lanes, products
// go straight into 64-bit lanes. Since nothing is rounded, the order of the
// additions (vector body, scalar tail, alignment) cannot change a result.
#pragma once

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "int128.h"
#include "lane.h"
#include "scale.h"

namespace zvp::ZVP_LEVEL::red {

using I16 = Full<std::int16_t>;
using I32 = Full<std::int32_t>;
using U32 = Full<std::uint32_t>;
using I64 = Full<std::int64_t>;

inline std::int64_t lanes64(__m128i v) {
    return I64::first(v) + I64::first(I64::hiHalf(v));
}

// ---- Sums of 16-bit and 32-bit values ---------------------------------------

// The sums of the values of even and of odd index (re and im of complex
// data), exact.
struct Pair64 {
    std::int64_t even = 0, odd = 0;
};

// Sums of 16-bit values, and when Sq also the sum of their squares. Four
// values widened to 32-bit lanes add at most 2^15 per lane and step, so
// 2^15 steps fit a lane before it moves into 64-bit lanes.
template <bool Sq>
inline Pair64 sums16(const std::int16_t* p, std::ptrdiff_t n, std::uint64_t* sq = nullptr) {
    Pair64 out;
    __m128i s64 = I64::zero(), q64 = I64::zero();
    std::ptrdiff_t i = 0;
    constexpr std::ptrdiff_t kChunk = std::ptrdiff_t(8) << 15;
    while (n - i >= 8) {
        const std::ptrdiff_t end = i + std::min<std::ptrdiff_t>(kChunk, (n - i) & ~std::ptrdiff_t(7));
        __m128i s32 = I32::zero();
        for (; i < end; i += 8) {
            const __m128i x = I16::load(p + i);
            s32 = I32::add(s32, I32::add(I16::widenLo(x), I16::widenHi(x)));
            if constexpr (Sq) {
                // x0^2 + x1^2 <= 2^31: exact read as unsigned.
                const __m128i q = I16::maddPairs(x, x);
                q64 = I64::add(q64, I64::add(U32::widenLo(q), U32::widenHi(q)));
            }
        }
        // Lanes hold (even, odd, even, odd): widened, (even, odd) in 64 bits.
        s64 = I64::add(s64, I64::add(I32::widenLo(s32), I32::widenHi(s32)));
    }
    out.even = I64::first(s64);
    out.odd = I64::first(I64::hiHalf(s64));
    std::uint64_t q = std::uint64_t(lanes64(q64));
    for (; i < n; ++i) {
        (i & 1 ? out.odd : out.even) += p[i];
        q += std::uint64_t(std::int64_t(p[i]) * p[i]);
    }
    if (sq) *sq = q;
    return out;
}

// Sums of 32-bit values (by parity, for complex data).
inline Pair64 sums32(const std::int32_t* p, std::ptrdiff_t n) {
    __m128i a = I64::zero(), b = I64::zero();
    std::ptrdiff_t i = 0;
    for (; i + 8 <= n; i += 8) {
        const __m128i x = I32::load(p + i), y = I32::load(p + i + 4);
        a = I64::add(a, I64::add(I32::widenLo(x), I32::widenHi(x)));
        b = I64::add(b, I64::add(I32::widenLo(y), I32::widenHi(y)));
    }
    a = I64::add(a, b);
    Pair64 out{I64::first(a), I64::first(I64::hiHalf(a))};
    for (; i < n; ++i) (i & 1 ? out.odd : out.even) += p[i];
    return out;
}

// ---- Norms of 16-bit data -----------------------------------------------------

// The largest magnitude, the sum of magnitudes and the sum of squares of x,
// or of x - y when Diff, all exact. Sums of magnitudes gather in 32-bit
// lanes over at most 65536 elements before moving into 64 bits.
struct Norms16 {
    std::uint32_t inf = 0;
    std::uint64_t l1 = 0, l2 = 0;
};
template <bool Diff>
inline Norms16 norms16(const std::int16_t* x, const std::int16_t* y, std::ptrdiff_t n) {
    __m128i m = U32::zero(), l1 = I64::zero(), l2 = I64::zero();
    std::ptrdiff_t i = 0;
    constexpr std::ptrdiff_t kChunk = 65536;
    while (n - i >= 8) {
        const std::ptrdiff_t end = i + std::min<std::ptrdiff_t>(kChunk, (n - i) & ~std::ptrdiff_t(7));
        __m128i s = U32::zero();
        for (; i < end; i += 8) {
            const __m128i a = I16::load(x + i);
            __m128i lo = I16::widenLo(a), hi = I16::widenHi(a);
            if constexpr (Diff) {
                const __m128i b = I16::load(y + i);
                lo = I32::sub(lo, I16::widenLo(b));
                hi = I32::sub(hi, I16::widenHi(b));
            }
            lo = I32::abs(lo);
            hi = I32::abs(hi);
            m = U32::max(m, U32::max(lo, hi));
            s = U32::add(s, U32::add(lo, hi));
            // |d| < 2^16: the products of 32-bit lanes are exact in 64 bits.
            l2 = I64::add(l2, I64::add(U32::mulEven(lo, lo), U32::mulOdd(lo, lo)));
            l2 = I64::add(l2, I64::add(U32::mulEven(hi, hi), U32::mulOdd(hi, hi)));
        }
        l1 = I64::add(l1, I64::add(U32::widenLo(s), U32::widenHi(s)));
    }
    Norms16 r;
    alignas(16) std::uint32_t mm[4];
    U32::storea(mm, m);
    r.inf = std::max(std::max(mm[0], mm[1]), std::max(mm[2], mm[3]));
    r.l1 = std::uint64_t(lanes64(l1));
    r.l2 = std::uint64_t(lanes64(l2));
    for (; i < n; ++i) {
        const std::int32_t d = Diff ? std::int32_t(x[i]) - y[i] : std::int32_t(x[i]);
        const std::uint32_t a = std::uint32_t(d < 0 ? -d : d);
        r.inf = std::max(r.inf, a);
        r.l1 += a;
        r.l2 += std::uint64_t(a) * a;
    }
    return r;
}

// ---- Dot products of 16-bit data ------------------------------------------------

// Sum of a[i] b[i], exact. A pair sum of two products lies in
// [-2^31 + 2^16, 2^31]; biased by 2^31 - 2^16 it is an unsigned 32-bit
// value (the one case 2^31 wraps to -2^31 and comes out right).
inline std::int64_t dot16(const std::int16_t* a, const std::int16_t* b, std::ptrdiff_t n) {
    constexpr std::uint32_t kBias = 0x7FFF0000u;
    const __m128i bias = U32::set1(kBias);
    __m128i s0 = I64::zero(), s1 = I64::zero();
    std::ptrdiff_t i = 0;
    for (; i + 16 <= n; i += 16) {
        const __m128i p = U32::add(I16::maddPairs(I16::load(a + i), I16::load(b + i)), bias);
        const __m128i q = U32::add(I16::maddPairs(I16::load(a + i + 8), I16::load(b + i + 8)), bias);
        s0 = I64::add(s0, I64::add(U32::widenLo(p), U32::widenHi(p)));
        s1 = I64::add(s1, I64::add(U32::widenLo(q), U32::widenHi(q)));
    }
    std::int64_t s = lanes64(I64::add(s0, s1)) - std::int64_t(kBias) * 8 * (i / 16);
    for (; i < n; ++i) s += std::int32_t(a[i]) * b[i];
    return s;
}

// Complex results of 16-bit data: (re, im) exact.
// Sum of a[i] b[i] for complex a and b (no conjugation): the products of
// the parts, exact in 32-bit lanes, widened and added in 64-bit lanes:
// P = sum (ar br, ai bi), Q = sum (ar bi, ai br); re = P0 - P1, im = Q0 + Q1.
inline Pair64 dot16sc(const std::int16_t* a, const std::int16_t* b, std::ptrdiff_t n2) {
    __m128i P = I64::zero(), Q = I64::zero();
    std::ptrdiff_t i = 0;
    auto acc = [](__m128i s, __m128i p) {
        return I64::add(s, I64::add(I32::widenLo(p), I32::widenHi(p)));
    };
    for (; i + 8 <= n2; i += 8) {
        const __m128i x = I16::load(a + i), y = I16::load(b + i), ys = I16::swapReIm(y);
        P = acc(acc(P, I16::mulWideLo(x, y)), I16::mulWideHi(x, y));
        Q = acc(acc(Q, I16::mulWideLo(x, ys)), I16::mulWideHi(x, ys));
    }
    Pair64 r{I64::first(P) - I64::first(I64::hiHalf(P)), I64::first(Q) + I64::first(I64::hiHalf(Q))};
    for (; i < n2; i += 2) {
        r.even += std::int64_t(a[i]) * b[i] - std::int64_t(a[i + 1]) * b[i + 1];
        r.odd += std::int64_t(a[i]) * b[i + 1] + std::int64_t(a[i + 1]) * b[i];
    }
    return r;
}

// Sum of a[i] b[i] for real a and complex b: (sum a br, sum a bi), exact.
inline Pair64 dot16s16sc(const std::int16_t* a, const std::int16_t* b, std::ptrdiff_t n) {
    __m128i S = I64::zero(), T = I64::zero();
    std::ptrdiff_t i = 0;
    auto acc = [](__m128i s, __m128i p) {
        return I64::add(s, I64::add(I32::widenLo(p), I32::widenHi(p)));
    };
    for (; i + 8 <= n; i += 8) {
        const __m128i x = I16::load(a + i);
        const __m128i lo = I16::zipLo(x, x), hi = I16::zipHi(x, x);
        const __m128i y0 = I16::load(b + 2 * i), y1 = I16::load(b + 2 * i + 8);
        S = acc(acc(S, I16::mulWideLo(lo, y0)), I16::mulWideHi(lo, y0));
        T = acc(acc(T, I16::mulWideLo(hi, y1)), I16::mulWideHi(hi, y1));
    }
    S = I64::add(S, T);
    Pair64 r{I64::first(S), I64::first(I64::hiHalf(S))};
    for (; i < n; ++i) {
        r.even += std::int64_t(a[i]) * b[2 * i];
        r.odd += std::int64_t(a[i]) * b[2 * i + 1];
    }
    return r;
}

// ---- Rounding and scaling of the results ------------------------------------------

// Dot products: R scaled by the common rule with the factor clamped to at
// most 31, then saturated.
template <class D>
inline D dotScale(Int128 r, int sf) {
    return scaleRule<D>(r, sf > 31 ? 31 : sf);
}

// n / d for d > 0, to nearest with ties to even, on the magnitude with the
// sign restored. |n| < 2^63.
inline std::int64_t divRoundEven(std::int64_t n, std::int64_t d) {
    const std::uint64_t m = n < 0 ? 0 - std::uint64_t(n) : std::uint64_t(n);
    std::uint64_t q = m / std::uint64_t(d);
    const std::uint64_t r = m % std::uint64_t(d), rest = std::uint64_t(d) - r;
    if (r > rest || (r == rest && (q & 1))) ++q;
    return n < 0 ? -std::int64_t(q) : std::int64_t(q);
}

// The mean of a 64-bit sum over len elements, scaled and saturated to D.
// A factor of 0 or more rounds the quotient and then applies the common
// rule to it. A negative factor shifts left: a sum within the 32-bit range
// is shifted first and the shifted sum divided; a larger sum is divided
// first and the quotient shifted. A shift of 32 or more saturates every
// non-zero mean.
template <class D>
inline D meanScaled(std::int64_t sum, std::int64_t len, int sf) {
    if (sf >= 0) return scaleRule<D>(divRoundEven(sum, len), sf);
    if (sum == 0) return D(0);
    using L = std::numeric_limits<D>;
    if (sf <= -32) return sum > 0 ? L::max() : L::min();
    const int k = -sf;
    if (sum >= INT32_MIN && sum <= INT32_MAX)
        return saturate<D>(divRoundEven(sum * (std::int64_t(1) << k), len));
    return shiftLeftSaturate<D>(divRoundEven(sum, len), k);
}

// The L1 norm of 16-bit data into 32 bits: no factor stores the sum, a
// positive factor below 32 shifts right dropping the bits shifted out, 32
// or more gives 0, a negative one (at most 31 places) shifts left; every
// result saturates at 2^31 - 1.
inline std::int32_t l1Truncated(std::uint64_t s, int sf) {
    constexpr std::uint64_t kMax = 0x7FFFFFFF;
    if (sf >= 32) return 0;
    if (sf > 0) s >>= sf;
    else if (sf < 0 && s != 0) {
        const int k = sf < -31 ? 31 : -sf;
        if (s > (kMax >> k)) return std::int32_t(kMax);
        s <<= k;
    }
    return std::int32_t(s > kMax ? kMax : s);
}

// floor(sqrt(s)), exact.
inline std::uint64_t isqrt(std::uint64_t s) {
    std::uint64_t r = std::uint64_t(std::sqrt(double(s)));
    while (r > 0 && (r > 0xFFFFFFFFu || r * r > s)) --r;
    while (r + 1 <= 0xFFFFFFFFu && (r + 1) * (r + 1) <= s) ++r;
    return r;
}

// sqrt(s) * 2^-sf rounded to nearest with ties to even, saturated to a
// 32-bit D, exact: the result is decided by integer comparisons.
template <class D>
inline D sqrtScaled(std::uint64_t s, int sf) {
    using L = std::numeric_limits<D>;
    if (s == 0 || sf >= 33) return D(0);  // sqrt(s) < 2^32: below one half
    if (sf <= 0) {
        const int k = sf < -31 ? 31 : -sf;
        // sqrt(s) 2^k >= 2^31 saturates: s >= 2^(62 - 2k).
        if (k >= 31 || s >= (std::uint64_t(1) << (62 - 2 * k))) return L::max();
        const std::uint64_t x = s << (2 * k);
        const std::uint64_t r = isqrt(x);
        // (r + 1/2)^2 = r^2 + r + 1/4 is never an integer: no ties.
        return saturate<D>(std::int64_t(x - r * r > r ? r + 1 : r));
    }
    const std::uint64_t q = isqrt(s) >> sf;  // floor(sqrt(s) / 2^sf)
    const std::uint64_t half = (2 * q + 1) << (sf - 1);  // (q + 1/2) 2^sf
    const std::uint64_t h2 = half * half;
    const bool up = s > h2 || (s == h2 && (q & 1));
    return saturate<D>(std::int64_t(q + (up ? 1 : 0)));
}

// The caller's whole floating-point environment is kept for the duration
// and restored; inside, both units round to nearest (x87 at its full 64-bit
// precision), so integer results computed in long double are the same
// whatever the caller set.
class FpEnvGuard {
public:
    FpEnvGuard() {
        std::fegetenv(&saved_);
        std::fesetround(FE_TONEAREST);
    }
    FpEnvGuard(const FpEnvGuard&) = delete;
    FpEnvGuard& operator=(const FpEnvGuard&) = delete;
    ~FpEnvGuard() { std::fesetenv(&saved_); }

private:
    std::fenv_t saved_;
};

// The sample deviation of 16-bit data from exact S1 and S2, in extended
// precision, scaled by 2^-sf, rounded to nearest with ties to even and
// saturated to D. n >= 2.
template <class D>
inline D stdDevScaled(std::int64_t s1, std::uint64_t s2, std::int64_t n, int sf) {
    // n S2 - S1^2 >= 0 exactly (at most 2^93).
    const Int128 num = mulWideU(std::uint64_t(n), s2) - mulWideS(s1, s1);
    const FpEnvGuard env;
    const long double v = (std::ldexp((long double)num.hi, 64) + (long double)num.lo) /
                          ((long double)n * (long double)(n - 1));
    const int k = sf < -200 ? -200 : sf > 200 ? 200 : sf;
    const long double r = std::nearbyint(std::ldexp(std::sqrt(v), -k));
    using L = std::numeric_limits<D>;
    if (r >= (long double)L::max()) return L::max();
    return D(r);
}

}  // namespace zvp::ZVP_LEVEL::red

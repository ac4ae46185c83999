// Exact integer square and cube roots, and the correctly rounded scaled
// roots round(sqrt(x) * 2^-sf) and round(cbrt(x) * 2^-sf) (ties to even,
// saturated) of the scaled integer Sqrt and Cubrt operations.
//
// The roots are found exactly: a double-precision estimate, then integer
// corrections until r^2 <= x < (r+1)^2 (or the cube analogue) holds. The
// rounding then needs only integer comparisons:
//   * sf >= 1: floor(root(x) / 2^sf) = floor(r / 2^sf), and the discarded
//     part of r together with "x is not a perfect power" decides the
//     rounding. A tie (root exactly halfway) needs a perfect power, and is
//     then broken to even.
//   * sf <= 0: root(x) * 2^k = root(x * 4^k) (or 8^k), never halfway, so it
//     rounds up exactly when N > r^2 + r (square) or 8N > (2r+1)^3 (cube).
#pragma once

#include <cmath>
#include <cstdint>
#include "level.h"

namespace zvp::ZVP_LEVEL::introot {

// Unsigned 128-bit values for the square roots of 64-bit sources.
struct U128 {
    std::uint64_t hi = 0;
    std::uint64_t lo = 0;
};
inline bool operator<(U128 a, U128 b) { return a.hi != b.hi ? a.hi < b.hi : a.lo < b.lo; }
inline bool operator>(U128 a, U128 b) { return b < a; }
inline bool operator<=(U128 a, U128 b) { return !(b < a); }
inline U128 mul64(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t a0 = a & 0xFFFFFFFFu, a1 = a >> 32, b0 = b & 0xFFFFFFFFu, b1 = b >> 32;
    const std::uint64_t p00 = a0 * b0, p01 = a0 * b1, p10 = a1 * b0, p11 = a1 * b1;
    const std::uint64_t mid = (p00 >> 32) + (p01 & 0xFFFFFFFFu) + (p10 & 0xFFFFFFFFu);
    return {p11 + (p01 >> 32) + (p10 >> 32) + (mid >> 32), (p00 & 0xFFFFFFFFu) | (mid << 32)};
}
inline U128 add64(U128 a, std::uint64_t b) {
    const std::uint64_t lo = a.lo + b;
    return {a.hi + (lo < b ? 1u : 0u), lo};
}
inline double toDouble(U128 a) { return std::ldexp(double(a.hi), 64) + double(a.lo); }

// floor(sqrt(x)) for x < 2^64.
inline std::uint64_t isqrt64(std::uint64_t x) {
    std::uint64_t r = std::uint64_t(std::sqrt(double(x)));
    if (r > 0xFFFFFFFFu) r = 0xFFFFFFFFu;
    while (r * r > x) --r;
    while (r < 0xFFFFFFFFu && (r + 1) * (r + 1) <= x) ++r;
    return r;
}

// floor(sqrt(n)) for n < 2^126.
inline std::uint64_t isqrt128(U128 n) {
    if (n.hi == 0) return isqrt64(n.lo);
    // Estimate, one correction step in double, then exact integer fix-ups.
    const double nd = toDouble(n);
    double r0 = std::floor(std::sqrt(nd));
    const U128 sq = mul64(std::uint64_t(r0), std::uint64_t(r0));
    const double e = sq < n ? toDouble({n.hi - sq.hi - (n.lo < sq.lo ? 1u : 0u), n.lo - sq.lo})
                            : -toDouble({sq.hi - n.hi - (sq.lo < n.lo ? 1u : 0u), sq.lo - n.lo});
    std::uint64_t r = std::uint64_t(r0 + std::floor(e / (2.0 * r0)));
    while (n < mul64(r, r)) --r;
    while (mul64(r + 1, r + 1) <= n) ++r;
    return r;
}

// floor(cbrt(x)) for x < 2^62.
inline std::uint64_t icbrt64(std::uint64_t x) {
    std::uint64_t r = std::uint64_t(std::cbrt(double(x)));
    while (r * r * r > x) --r;
    while ((r + 1) * (r + 1) * (r + 1) <= x) ++r;
    return r;
}

// (r + e) / 2^sf rounded to nearest, ties to even, for sf >= 1, where the
// true value exceeds the integer r by e in [0, 1) and inexact says e > 0.
inline std::uint64_t roundShiftSticky(std::uint64_t r, bool inexact, int sf) {
    if (sf >= 64) return 0;
    const std::uint64_t q = r >> sf;
    const std::uint64_t rem = r & ((std::uint64_t(1) << sf) - 1);
    const std::uint64_t half = std::uint64_t(1) << (sf - 1);
    const bool up = rem > half || (rem == half && (inexact || (q & 1)));
    return q + (up ? 1 : 0);
}

// round(sqrt(x) * 2^-sf) saturated to maxOut, for x < 2^63 and
// maxOut < 2^63.
inline std::uint64_t sqrtScaled(std::uint64_t x, int sf, std::uint64_t maxOut) {
    if (x == 0) return 0;
    if (sf < -200) sf = -200;  // saturated all the same; keeps -sf defined
    std::uint64_t r;
    if (sf >= 1) {
        const std::uint64_t s = isqrt64(x);
        r = roundShiftSticky(s, s * s != x, sf);
    } else {
        const int k = -sf;
        // Saturated iff N = x * 4^k > maxOut * (maxOut + 1). With x >= 1
        // that holds for every k >= 63.
        if (k >= 63) return maxOut;
        const U128 lim = mul64(maxOut, maxOut + 1);
        // x * 4^k as 128 bits, or saturated when it would not fit.
        const int sh = 2 * k;
        U128 n;
        if (sh < 64) {
            n = {sh ? x >> (64 - sh) : 0, x << sh};
        } else {
            const int t = sh - 64;
            if (t > 0 && (x >> (64 - t)) != 0) return maxOut;
            n = {x << t, 0};
        }
        if (n.hi >> 62) return maxOut;  // n >= 2^126 > lim
        if (lim < n) return maxOut;
        const std::uint64_t s = isqrt128(n);
        // Round up iff n > s^2 + s.
        r = s + (add64(mul64(s, s), s) < n ? 1 : 0);
    }
    return r > maxOut ? maxOut : r;
}

// round(cbrt(x) * 2^-sf) saturated to [-maxNeg, maxPos], for |x| < 2^31.
inline std::int64_t cbrtScaled(std::int64_t x, int sf, std::int64_t maxPos, std::int64_t maxNeg) {
    if (x == 0) return 0;
    const bool negative = x < 0;
    const std::uint64_t a = negative ? std::uint64_t(-x) : std::uint64_t(x);
    const std::uint64_t bound = std::uint64_t(negative ? maxNeg : maxPos);
    if (sf < -200) sf = -200;  // saturated all the same; keeps -sf defined
    std::uint64_t r;
    if (sf >= 1) {
        const std::uint64_t c = icbrt64(a);
        r = roundShiftSticky(c, c * c * c != a, sf);
    } else {
        const int k = -sf;
        // Saturated iff cbrt(N) >= bound + 1/2, i.e. 8N >= (2 bound + 1)^3
        // (never equal: one side is even, the other odd). bound <= 2^15, so
        // every N >= 2^47 saturates.
        int bits = 0;
        while ((a >> bits) != 0) ++bits;
        if (3 * k + bits > 48) return negative ? -std::int64_t(bound) : std::int64_t(bound);
        const std::uint64_t n = a << (3 * k);  // below 2^48
        const std::uint64_t b2 = 2 * bound + 1;
        if (8 * n >= b2 * b2 * b2) return negative ? -std::int64_t(bound) : std::int64_t(bound);
        const std::uint64_t c = icbrt64(n);
        const std::uint64_t t = 2 * c + 1;
        r = c + (8 * n > t * t * t ? 1 : 0);
    }
    if (r > bound) r = bound;
    return negative ? -std::int64_t(r) : std::int64_t(r);
}

}  // namespace zvp::ZVP_LEVEL::introot

// A portable exact signed 128-bit integer for results that do not fit 64
// bits (sums and differences of 64-bit operands, 64 x 64-bit products), and
// the integer scaling rule of scale.h applied to it:
//     result = saturate(R * 2^-sf), rounded to nearest with ties to even.
// Written with 64-bit halves only, so it behaves the same on i386, where the
// compiler has no 128-bit type.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>
#include "level.h"

namespace zvp::ZVP_LEVEL {

// Two's complement value hi * 2^64 + lo.
struct Int128 {
    std::uint64_t lo = 0;
    std::int64_t hi = 0;

    constexpr Int128() = default;
    constexpr Int128(std::uint64_t l, std::int64_t h) : lo(l), hi(h) {}

    static constexpr Int128 from(std::int64_t v) {
        return {std::uint64_t(v), v < 0 ? std::int64_t(-1) : std::int64_t(0)};
    }
    static constexpr Int128 from(std::uint64_t v) { return {v, 0}; }

    constexpr bool negative() const { return hi < 0; }
    constexpr bool isZero() const { return lo == 0 && hi == 0; }
};

constexpr bool operator==(Int128 a, Int128 b) { return a.lo == b.lo && a.hi == b.hi; }
constexpr bool operator<(Int128 a, Int128 b) {
    return a.hi != b.hi ? a.hi < b.hi : a.lo < b.lo;
}
constexpr bool operator>(Int128 a, Int128 b) { return b < a; }

// Modular 128-bit arithmetic (exact as long as the true value fits).
constexpr Int128 operator+(Int128 a, Int128 b) {
    const std::uint64_t lo = a.lo + b.lo;
    const std::uint64_t hi = std::uint64_t(a.hi) + std::uint64_t(b.hi) + (lo < a.lo ? 1u : 0u);
    return {lo, std::int64_t(hi)};
}
constexpr Int128 operator-(Int128 a, Int128 b) {
    const std::uint64_t lo = a.lo - b.lo;
    const std::uint64_t hi = std::uint64_t(a.hi) - std::uint64_t(b.hi) - (a.lo < b.lo ? 1u : 0u);
    return {lo, std::int64_t(hi)};
}

// floor(a / 2^n), 0 <= n <= 127.
constexpr Int128 shiftRightArith(Int128 a, int n) {
    if (n == 0) return a;
    if (n < 64)
        return {(a.lo >> n) | (std::uint64_t(a.hi) << (64 - n)), a.hi >> n};
    return {std::uint64_t(a.hi >> (n - 64)), a.hi >> 63};
}

// a * 2^n modulo 2^128, 0 <= n <= 127.
constexpr Int128 shiftLeft(Int128 a, int n) {
    if (n == 0) return a;
    if (n < 64)
        return {a.lo << n, std::int64_t((std::uint64_t(a.hi) << n) | (a.lo >> (64 - n)))};
    return {0, std::int64_t(a.lo << (n - 64))};
}

// The low n bits of a, 0 <= n <= 127, as a non-negative value.
constexpr Int128 lowBits(Int128 a, int n) {
    if (n == 0) return {};
    if (n < 64) return {a.lo & ((std::uint64_t(1) << n) - 1), 0};
    if (n == 64) return {a.lo, 0};
    return {a.lo, std::int64_t(std::uint64_t(a.hi) & ((std::uint64_t(1) << (n - 64)) - 1))};
}

// Exact products of two 64-bit values.
constexpr Int128 mulWideU(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t a0 = a & 0xFFFFFFFFu, a1 = a >> 32;
    const std::uint64_t b0 = b & 0xFFFFFFFFu, b1 = b >> 32;
    const std::uint64_t p00 = a0 * b0, p01 = a0 * b1, p10 = a1 * b0, p11 = a1 * b1;
    const std::uint64_t mid = (p00 >> 32) + (p01 & 0xFFFFFFFFu) + (p10 & 0xFFFFFFFFu);
    const std::uint64_t lo = (p00 & 0xFFFFFFFFu) | (mid << 32);
    const std::uint64_t hi = p11 + (p01 >> 32) + (p10 >> 32) + (mid >> 32);
    return {lo, std::int64_t(hi)};
}
constexpr Int128 mulWideS(std::int64_t a, std::int64_t b) {
    // Unsigned product, then correct the high half for the signs.
    Int128 p = mulWideU(std::uint64_t(a), std::uint64_t(b));
    std::uint64_t hi = std::uint64_t(p.hi);
    if (a < 0) hi -= std::uint64_t(b);
    if (b < 0) hi -= std::uint64_t(a);
    return {p.lo, std::int64_t(hi)};
}

// Saturates R to the integer type D (any width up to 64 bits).
template <class D>
constexpr D saturate(Int128 r) {
    using L = std::numeric_limits<D>;
    const Int128 mx = Int128::from(std::uint64_t(L::max()));
    const Int128 mn = std::is_signed_v<D> ? Int128::from(std::int64_t(L::min())) : Int128{};
    if (r > mx) return L::max();
    if (r < mn) return L::min();
    return D(r.lo);
}

// R / 2^sf for sf >= 1, rounded to nearest with ties to even.
constexpr Int128 roundShiftEven(Int128 r, int sf) {
    if (sf >= 128) return {};  // |R| <= 2^127: every quotient rounds to 0
    const Int128 q = shiftRightArith(r, sf);
    const Int128 rem = lowBits(r, sf);
    const Int128 half = shiftLeft(Int128{1, 0}, sf - 1);
    const bool up = rem > half || (rem == half && (q.lo & 1));
    return up ? q + Int128{1, 0} : q;
}

// The complete rule for one element whose exact result is R.
template <class D>
constexpr D scaleRule(Int128 r, int sf) {
    if (sf == 0) return saturate<D>(r);
    if (sf > 0) return saturate<D>(roundShiftEven(r, sf));
    using L = std::numeric_limits<D>;
    if (r.isZero()) return D(0);
    if (r.negative()) {
        if constexpr (!std::is_signed_v<D>) return D(0);
    }
    // Every non-zero R saturates once shifted beyond the value bits of D.
    const int k = sf < -64 ? 64 : -sf;
    if (k > L::digits) return r.negative() ? L::min() : L::max();
    const Int128 limHi = shiftRightArith(Int128::from(std::uint64_t(L::max())), k);
    if (r > limHi) return L::max();
    if constexpr (std::is_signed_v<D>) {
        const Int128 limLo = shiftRightArith(Int128::from(std::int64_t(L::min())), k);
        if (r < limLo) return L::min();
    }
    return D(shiftLeft(r, k).lo);
}

}  // namespace zvp::ZVP_LEVEL

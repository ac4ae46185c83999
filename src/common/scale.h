// The one integer scaling rule of every Sfs operation:
//     result = saturate(R * 2^-sf), rounded to nearest with ties to even,
// where R is the exact result held in a signed wide type W (int32_t or
// int64_t). Kernels split by scale factor for speed must reproduce exactly
// what these functions return.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>
#include "level.h"

namespace zvp::ZVP_LEVEL {

// Saturate a wide signed value to the destination type D.
template <class D, class W>
constexpr D saturate(W r) noexcept {
    static_assert(std::is_signed_v<W>);
    using L = std::numeric_limits<D>;
    if constexpr (std::is_signed_v<D>) {
        if constexpr (sizeof(D) < sizeof(W)) {
            if (r > W(L::max())) return L::max();
            if (r < W(L::min())) return L::min();
        }
        return D(r);
    } else {
        if (r < 0) return D(0);
        if constexpr (sizeof(D) < sizeof(W) || (sizeof(D) == sizeof(W))) {
            using UW = std::make_unsigned_t<W>;
            if (UW(r) > UW(L::max())) return L::max();
        }
        return D(r);
    }
}

// R / 2^sf for sf >= 1, rounded to nearest with ties to even, exact for every
// R of W (no intermediate overflow).
template <class W>
constexpr W roundShiftEven(W r, int sf) noexcept {
    constexpr int bits = std::numeric_limits<std::make_unsigned_t<W>>::digits;
    if (sf >= bits) return W(0);  // |R| <= 2^(bits-1): every quotient rounds to 0
    using U = std::make_unsigned_t<W>;
    const W q = W(r >> sf);                       // floor
    const U rem = U(U(r) & ((U(1) << sf) - 1));   // r - q*2^sf, in [0, 2^sf)
    const U half = U(1) << (sf - 1);
    const bool up = rem > half || (rem == half && (q & 1));
    return W(q + (up ? 1 : 0));
}

// R * 2^k for k >= 1, saturated to D.
template <class D, class W>
constexpr D shiftLeftSaturate(W r, int k) noexcept {
    using L = std::numeric_limits<D>;
    if (r == 0) return D(0);
    if constexpr (std::is_signed_v<D>) {
        // Beyond the destination's value bits every non-zero R saturates (the
        // shifted-down minimum below would floor to -1 and let -1 through).
        if (k >= 64 - 1 || k > L::digits) return r > 0 ? L::max() : L::min();
        // Compare against the bounds shifted down, so nothing overflows.
        const std::int64_t wr = std::int64_t(r);
        if (wr > (std::int64_t(L::max()) >> k)) return L::max();
        if (wr < (std::int64_t(L::min()) >> k)) return L::min();
        return D(wr * (std::int64_t(1) << k));
    } else {
        if (r < 0) return D(0);
        if (k >= 64) return L::max();
        const std::uint64_t ur = std::uint64_t(r);
        if (ur > (std::uint64_t(L::max()) >> k)) return L::max();
        return D(ur << k);
    }
}

// The complete rule for one element.
template <class D, class W>
constexpr D scaleRule(W r, int sf) noexcept {
    if (sf == 0) return saturate<D>(r);
    if (sf > 0) return saturate<D>(roundShiftEven(r, sf));
    return shiftLeftSaturate<D>(r, sf < -127 ? 127 : -sf);
}

}  // namespace zvp::ZVP_LEVEL

// The direct FIR kernel shared by the FIR filters (state-based, stream and
// FIRSR forms).
//
// Contract (every type, every layout):
//
//     y[i] = sum_{j < L} taps[j] * x[i + L - 1 - j],   i = 0 .. n-1,
//
// over a contiguous x of L - 1 history samples followed by the n inputs
// (x holds n + L - 1 readable elements; nothing outside them is read), with
// L >= 1 and n >= 1. y must not overlap x. The taps are not passed as they
// are: prepare* lays them out once in the form the matching filter* reads.
//
// Single precision (32f) has two layouts:
//   - broadcast (for L < 32): b[4j + r] = taps[j], r = 0..3, 4 L elements.
//     Each tap multiplies four consecutive outputs at once; several
//     registers of outputs share the tap. Every output is the sum of its
//     products in increasing j, from +0.
//   - staggered (for L >= 32): four copies of the reversed taps, copy m
//     (m = 0..3) at offset m S with S = (L + 6) & ~3 elements, element m + i
//     of copy m = taps[L-1-i], the rest zero (4 S elements). Output i + m of
//     a group of four starting at i reads x[i + u] for u = 0 .. S-1 with
//     copy m, four lanes at a time, so one 4-wide load of x serves the four
//     outputs of a group. Lane l of output i + m gathers the taps
//     t = L-1-j with t = l - m (mod 4), in increasing t; the four lane sums
//     are transposed and combined as (lane0 + lane2) + (lane1 + lane3), which
//     is the same sum for every m (floating-point addition commutes).
// In both layouts an output therefore depends only on its own window of x
// and on the taps: not on the pointers' alignment, not on where it falls in
// the block, not on how a stream is split into calls. (In the staggered
// layout a zero tap meets the three samples beside the window; an infinite
// or NaN sample there turns into NaN in that output.)
//
// 64f, 32fc and 64fc keep the taps in natural order (preparedLen<T>(L) = L)
// and run the broadcast multiply-accumulate of mac_kernel.h: the sum in
// increasing j, the same split-independence.
//
// firBlock(taps, L, x, y, n) is the same contract on natural-order taps
// without a prepared copy (no layout, any type), for callers that keep none.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "lane_float.h"
#include "level.h"
#include "mac_kernel.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::firk {

// Tap count from which the 32f filters use the staggered layout.
inline constexpr std::ptrdiff_t kStaggerMin = 32;

// Length of one staggered copy, and of the two 32f layouts, in elements.
inline constexpr std::ptrdiff_t staggerStride(std::ptrdiff_t L) { return (L + 6) & ~std::ptrdiff_t(3); }
inline constexpr std::ptrdiff_t staggeredLen(std::ptrdiff_t L) { return 4 * staggerStride(L); }
inline constexpr std::ptrdiff_t broadcastLen(std::ptrdiff_t L) { return 4 * L; }

// Elements of the prepared taps of the 64f, 32fc and 64fc kernels.
template <class T>
inline constexpr std::ptrdiff_t preparedLen(std::ptrdiff_t L) {
    return L;
}

inline void prepareStaggered(const float* taps, std::ptrdiff_t L, float* s) {
    const std::ptrdiff_t S = staggerStride(L);
    std::memset(s, 0, std::size_t(4 * S) * sizeof(float));
    for (std::ptrdiff_t m = 0; m < 4; ++m)
        for (std::ptrdiff_t i = 0; i < L; ++i) s[m * S + m + i] = taps[L - 1 - i];
}

inline void prepareBroadcast(const float* taps, std::ptrdiff_t L, float* b) {
    for (std::ptrdiff_t j = 0; j < L; ++j)
        for (int r = 0; r < 4; ++r) b[4 * j + r] = taps[j];
}

template <class T>
inline void prepare(const T* taps, std::ptrdiff_t L, T* p) {
    std::memcpy(static_cast<void*>(p), taps, std::size_t(L) * sizeof(T));
}

// Registers of outputs per block: enough accumulators to hide the add
// latency where the register file allows (16 on x86-64, 8 on i386).
inline constexpr int kRegs = sizeof(void*) == 8 ? 8 : 4;

namespace detail {

using F = Full<float>;
using O = One<float>;

// U registers (4 U outputs) from the broadcast taps.
template <int U>
inline void broadcastBlock(const float* b, std::ptrdiff_t L, const float* x, float* y) {
    F::R acc[U];
    for (int u = 0; u < U; ++u) acc[u] = F::zero();
    const float* p = x + (L - 1);
    for (std::ptrdiff_t j = 0; j < L; ++j, --p) {
        const F::R t = F::load(b + 4 * j);
        for (int u = 0; u < U; ++u) acc[u] = F::add(acc[u], F::mul(t, F::load(p + 4 * u)));
    }
    for (int u = 0; u < U; ++u) F::store(y + 4 * u, acc[u]);
}

// x[pos .. pos + 4), zeros from xLen on.
inline F::R loadClipped(const float* x, std::ptrdiff_t pos, std::ptrdiff_t xLen) {
    const std::ptrdiff_t c = xLen - pos;
    if (c >= 4) return F::load(x + pos);
    if (c <= 0) return F::zero();
    return F::loadN(x + pos, int(c));
}

// G groups of four outputs from the staggered taps, outputs i .. i + 4G - 1.
// Clipped: x is read through loadClipped (the last groups of a block) and
// only the first `cnt` outputs are stored.
template <int G, bool Clipped>
inline void staggerGroups(const float* s, std::ptrdiff_t S, const float* x, std::ptrdiff_t xLen,
                          std::ptrdiff_t i, float* y, std::ptrdiff_t cnt) {
    F::R acc[G][4];
    for (int g = 0; g < G; ++g)
        for (int m = 0; m < 4; ++m) acc[g][m] = F::zero();
    const float* c0 = s;
    const float* c1 = s + S;
    const float* c2 = s + 2 * S;
    const float* c3 = s + 3 * S;
    for (std::ptrdiff_t u = 0; u < S; u += 4) {
        const F::R t0 = F::load(c0 + u), t1 = F::load(c1 + u), t2 = F::load(c2 + u), t3 = F::load(c3 + u);
        for (int g = 0; g < G; ++g) {
            const std::ptrdiff_t pos = i + 4 * g + u;
            const F::R v = Clipped ? loadClipped(x, pos, xLen) : F::load(x + pos);
            acc[g][0] = F::add(acc[g][0], F::mul(t0, v));
            acc[g][1] = F::add(acc[g][1], F::mul(t1, v));
            acc[g][2] = F::add(acc[g][2], F::mul(t2, v));
            acc[g][3] = F::add(acc[g][3], F::mul(t3, v));
        }
    }
    for (int g = 0; g < G; ++g) {
        F::transpose(acc[g]);
        const F::R out = F::add(F::add(acc[g][0], acc[g][2]), F::add(acc[g][1], acc[g][3]));
        if (Clipped) {
            const std::ptrdiff_t k = std::min<std::ptrdiff_t>(4, cnt - 4 * g);
            if (k <= 0) break;
            if (k == 4) F::store(y + i + 4 * g, out);
            else F::storeN(y + i + 4 * g, out, int(k));
        } else {
            F::store(y + i + 4 * g, out);
        }
    }
}

// Groups of four outputs per block on x86-64 (three share the tap loads);
// one on i386, whose eight registers hold four sums and four taps.
inline constexpr int kGroups = sizeof(void*) == 8 ? 3 : 1;

}  // namespace detail

// y[i] for i < n from the broadcast layout b.
inline void filterBroadcast(const float* b, std::ptrdiff_t L, const float* x, float* y, std::ptrdiff_t n) {
    using namespace detail;
    std::ptrdiff_t i = 0;
    for (; i + 4 * kRegs <= n; i += 4 * kRegs) broadcastBlock<kRegs>(b, L, x + i, y + i);
    for (; i + 4 <= n; i += 4) broadcastBlock<1>(b, L, x + i, y + i);
    // The last outputs one lane at a time: the same products and sums.
    for (; i < n; ++i) {
        O::R acc = O::zero();
        const float* p = x + i + (L - 1);
        for (std::ptrdiff_t j = 0; j < L; ++j) acc = O::add(acc, O::mul(O::load(b + 4 * j), O::load(p - j)));
        O::store(y + i, acc);
    }
}

// y[i] for i < n from the staggered layout s.
inline void filterStaggered(const float* s, std::ptrdiff_t L, const float* x, float* y, std::ptrdiff_t n) {
    using namespace detail;
    const std::ptrdiff_t S = staggerStride(L);
    const std::ptrdiff_t xLen = n + L - 1;
    // Groups at i read x[i .. i + 4(G-1) + S): in bounds while
    // i + 4G <= xLen + 4 - S (which is at most n, as S >= L + 3).
    const std::ptrdiff_t lim = xLen + 4 - S;
    std::ptrdiff_t i = 0;
    for (; i + 4 * kGroups <= lim; i += 4 * kGroups) staggerGroups<kGroups, false>(s, S, x, xLen, i, y, 0);
    for (; i + 4 <= lim; i += 4) staggerGroups<1, false>(s, S, x, xLen, i, y, 0);
    for (; i < n; i += 4) staggerGroups<1, true>(s, S, x, xLen, i, y, n - i);
}

// The 32f kernel on the layout the tap count selects.
inline void filter32f(const float* prepared, std::ptrdiff_t L, const float* x, float* y, std::ptrdiff_t n) {
    if (L >= kStaggerMin) filterStaggered(prepared, L, x, y, n);
    else filterBroadcast(prepared, L, x, y, n);
}

// 64f, 32fc, 64fc on natural-order taps.
template <class T>
inline void filter(const T* p, std::ptrdiff_t L, const T* x, T* y, std::ptrdiff_t n) {
    mac::slidingMac<T, false>(p, L, x, n + L - 1, L - 1, -1, y, n);
}

// The contract on natural-order taps, any type, without a prepared layout.
template <class T>
inline void firBlock(const T* taps, std::ptrdiff_t L, const T* x, T* y, std::ptrdiff_t n) {
    mac::slidingMac<T, false>(taps, L, x, n + L - 1, L - 1, -1, y, n);
}

}  // namespace zvp::ZVP_LEVEL::firk

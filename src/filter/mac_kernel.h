// Direct multiply-accumulate kernels shared by convolution, correlation and
// the FIR filters.
//
// One kernel covers every sliding sum of products the filtering families
// need:
//
//     out[i] = sum over j of op(h[j]) * x[off + i + dir*j],   i = 0 .. n-1,
//
// with taps h[0 .. taps-1], op the identity or complex conjugation, dir +1
// (correlation: the taps slide along x) or -1 (convolution: the taps run
// backwards along x), and only the j whose x index lies in [0, xLen) taking
// part (the terms outside are absent, as if x were zero-padded, but nothing
// is read there). An output with no term is 0.
//
// Along the outputs the tap ranges run: none valid (the output is 0), cut
// short by the start of x, all valid, cut short by its end, none again. The
// outputs with every tap go in blocks of U registers of lanes: one broadcast
// of op(h[j]) and U loads, multiplies and adds per tap, the sum taken in
// increasing j. The outputs cut short read a zero-padded copy of the part of
// x they need, so they run the same blocks over the union of their lanes'
// ranges. Every output is thus the sum of its valid terms in increasing j,
// whatever block or tail computes it (for up to kPadTaps taps; beyond, the
// terms outside a block's shared range are added after it); nothing depends
// on the alignment of the pointers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "lane_float.h"
#include "lane_int.h"
#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::mac {

// The scalar type and the number of scalars of one element.
template <class E>
struct Elem {
    using S = E;
    static constexpr int K = 1;
};
template <>
struct Elem<Zvp32fc> {
    using S = float;
    static constexpr int K = 2;
};
template <>
struct Elem<Zvp64fc> {
    using S = double;
    static constexpr int K = 2;
};
template <>
struct Elem<Zvp16sc> {
    using S = Zvp16s;
    static constexpr int K = 2;
};
template <>
struct Elem<Zvp32sc> {
    using S = Zvp32s;
    static constexpr int K = 2;
};

template <class E>
inline constexpr bool isComplex = Elem<E>::K == 2;

// ---- scalar element arithmetic (the terms outside a block's shared range)

template <class E>
inline E mulAcc(E acc, E h, E x) {
    if constexpr (isComplex<E>) {
        acc.re = acc.re + (h.re * x.re - h.im * x.im);
        acc.im = acc.im + (h.re * x.im + h.im * x.re);
        return acc;
    } else {
        return acc + h * x;
    }
}

template <class E>
inline E conjOf(E v) {
    if constexpr (isComplex<E>) return E{v.re, -v.im};
    else return v;
}

template <class E>
inline E zeroOf() {
    if constexpr (isComplex<E>) return E{0, 0};
    else return E(0);
}

// ---- the lane form

// The valid tap range [lo, hi) of output i: the j in [0, taps) with
// 0 <= off + i + dir*j < xLen.
struct Range {
    std::ptrdiff_t lo, hi;
};

inline Range tapRange(std::ptrdiff_t i, std::ptrdiff_t taps, std::ptrdiff_t xLen, std::ptrdiff_t off,
                      int dir) {
    // In 64 bits: off + i may exceed a 32-bit ptrdiff_t for far lags.
    const long long ii = i, o = off;
    long long lo, hi;
    if (dir > 0) {
        lo = -o - ii;
        hi = (long long)xLen - o - ii;
    } else {
        lo = o + ii - xLen + 1;
        hi = o + ii + 1;
    }
    lo = std::clamp<long long>(lo, 0, taps);
    hi = std::clamp<long long>(hi, lo, taps);
    return {std::ptrdiff_t(lo), std::ptrdiff_t(hi)};
}

// One block of U registers of L (L::N / K elements each) starting at
// output i0. Accumulates the shared range [lo, hi) and stores the sums.
template <class E, class L, int U, bool ConjH>
inline void blockShared(const E* h, const E* x, std::ptrdiff_t off, int dir, std::ptrdiff_t i0,
                        std::ptrdiff_t lo, std::ptrdiff_t hi, E* out) {
    using S = typename Elem<E>::S;
    using R = typename L::R;
    constexpr int K = Elem<E>::K;
    constexpr int V = L::N / K;  // elements per register
    const S* xs = reinterpret_cast<const S*>(x);
    const S* hs = reinterpret_cast<const S*>(h);
    R acc[U];
    for (int u = 0; u < U; ++u) acc[u] = L::zero();
    // Element index of x for tap j and lane block u: off + i0 + u*V + dir*j.
    for (std::ptrdiff_t j = lo; j < hi; ++j) {
        const S* p = xs + K * (off + i0 + dir * j);
        if constexpr (K == 1) {
            const R b = L::set1(hs[j]);
            for (int u = 0; u < U; ++u) acc[u] = L::add(acc[u], L::mul(b, L::load(p + u * V)));
        } else {
            const S hr = hs[2 * j];
            const S hi_ = ConjH ? -hs[2 * j + 1] : hs[2 * j + 1];
            const R c = L::pair(hr, hi_);
            const R cs = L::pair(hi_, hr);
            for (int u = 0; u < U; ++u)
                acc[u] = L::add(acc[u], L::cmulPair(L::load(p + u * V * K), c, cs));
        }
    }
    S* os = reinterpret_cast<S*>(out + i0);
    for (int u = 0; u < U; ++u) L::store(os + u * V * K, acc[u]);
}

// The terms of output i outside the shared range [slo, shi), added in
// increasing j after it.
template <class E, bool ConjH>
inline void addOutside(const E* h, std::ptrdiff_t taps, const E* x, std::ptrdiff_t xLen,
                       std::ptrdiff_t off, int dir, std::ptrdiff_t i, std::ptrdiff_t slo,
                       std::ptrdiff_t shi, E* out) {
    const Range r = tapRange(i, taps, xLen, off, dir);
    E s = out[i];
    const std::ptrdiff_t a = std::min(r.hi, slo);
    for (std::ptrdiff_t j = r.lo; j < a; ++j) {
        const E hj = ConjH ? conjOf(h[j]) : h[j];
        s = mulAcc(s, hj, x[off + i + dir * j]);
    }
    for (std::ptrdiff_t j = std::max(r.lo, shi); j < r.hi; ++j) {
        const E hj = ConjH ? conjOf(h[j]) : h[j];
        s = mulAcc(s, hj, x[off + i + dir * j]);
    }
    out[i] = s;
}

// Blocks of W = U registers of outputs from i while they fit below n; returns
// where it stopped. The tap ranges come from the geometry (taps, xLen, off,
// dir). With pad set, the samples are read from pad at offset padOff instead
// of x, a copy of x with zeros around it: each block then runs the union of
// its lanes' ranges, the zeros standing in for the absent terms.
template <class E, class L, int U, bool ConjH>
inline std::ptrdiff_t runBlocks(const E* h, std::ptrdiff_t taps, const E* x, std::ptrdiff_t xLen,
                                std::ptrdiff_t off, int dir, const E* pad, std::ptrdiff_t padOff,
                                std::ptrdiff_t i, std::ptrdiff_t n, E* out) {
    constexpr int W = U * (L::N / Elem<E>::K);
    for (; i + W <= n; i += W) {
        const Range a = tapRange(i, taps, xLen, off, dir);
        const Range b = tapRange(i + W - 1, taps, xLen, off, dir);
        if (pad != nullptr) {
            const std::ptrdiff_t lo = std::min(a.lo, b.lo), hi = std::max(a.hi, b.hi);
            blockShared<E, L, U, ConjH>(h, pad, padOff, dir, i, lo, hi, out);
            continue;
        }
        const std::ptrdiff_t lo = std::max(a.lo, b.lo);
        const std::ptrdiff_t hi = std::max(lo, std::min(a.hi, b.hi));
        if constexpr (U > 1) {
            // Ranges that differ from lane to lane without a padded copy (very
            // long taps): while the shared range is short next to the up to
            // W - 1 terms each lane has outside it, blocks of one register
            // keep those to a few per output.
            if ((a.lo != b.lo || a.hi != b.hi) && hi - lo < 4 * W) {
                runBlocks<E, L, 1, ConjH>(h, taps, x, xLen, off, dir, nullptr, 0, i, i + W, out);
                continue;
            }
        }
        blockShared<E, L, U, ConjH>(h, x, off, dir, i, lo, hi, out);
        if (a.lo != lo || a.hi != hi || b.lo != lo || b.hi != hi)
            for (std::ptrdiff_t k = i; k < i + W; ++k)
                addOutside<E, ConjH>(h, taps, x, xLen, off, dir, k, lo, hi, out);
    }
    return i;
}

// Enough accumulators to cover the add latency where the registers allow it
// (16 vector registers on x86-64, 8 on i386).
inline constexpr int kUnroll = sizeof(void*) == 8 ? 8 : 4;

// Outputs [i0, i1): full blocks, then single registers, then single elements.
template <class E, bool ConjH>
void runAll(const E* h, std::ptrdiff_t taps, const E* x, std::ptrdiff_t xLen, std::ptrdiff_t off, int dir,
            const E* pad, std::ptrdiff_t padOff, std::ptrdiff_t i0, std::ptrdiff_t i1, E* out) {
    using S = typename Elem<E>::S;
    using F = Full<S>;
    using O = Lanes<S, Elem<E>::K>;  // one element
    std::ptrdiff_t i = runBlocks<E, F, kUnroll, ConjH>(h, taps, x, xLen, off, dir, pad, padOff, i0, i1, out);
    i = runBlocks<E, F, 1, ConjH>(h, taps, x, xLen, off, dir, pad, padOff, i, i1, out);
    runBlocks<E, O, 1, ConjH>(h, taps, x, xLen, off, dir, pad, padOff, i, i1, out);
}

// Outputs near the ends of x, whose tap ranges are cut short, read a
// zero-padded copy of the part of x they need, in chunks of kChunk outputs,
// so they too run at full vector width. A zero term changes no finite sum
// (only an infinite or NaN tap next to an end can reach a neighbouring
// output). Up to kPadTaps taps the copy lives on the stack; beyond, the
// block kernel adds the few terms outside each block's shared range one by
// one.
inline constexpr std::ptrdiff_t kChunk = 256;
inline constexpr std::ptrdiff_t kPadTaps = 1024;

template <class E, bool ConjH>
void runPartial(const E* h, std::ptrdiff_t taps, const E* x, std::ptrdiff_t xLen, std::ptrdiff_t off, int dir,
                std::ptrdiff_t i0, std::ptrdiff_t i1, E* out) {
    if (i0 >= i1) return;
    if (taps > kPadTaps) {
        runAll<E, ConjH>(h, taps, x, xLen, off, dir, nullptr, 0, i0, i1, out);
        return;
    }
    E pad[kChunk + kPadTaps - 1];
    for (std::ptrdiff_t c0 = i0; c0 < i1; c0 += kChunk) {
        const std::ptrdiff_t c1 = std::min(i1, c0 + kChunk);
        const long long span = (long long)(c1 - c0) + taps - 1;
        const long long s = dir > 0 ? (long long)off + c0 : (long long)off + c0 - (taps - 1);
        for (long long t = 0; t < span; ++t) {
            const long long k = s + t;
            pad[t] = (k >= 0 && k < xLen) ? x[k] : zeroOf<E>();
        }
        runAll<E, ConjH>(h, taps, x, xLen, off, dir, pad, std::ptrdiff_t((long long)off - s), c0, c1, out);
    }
}

// out[i] = sum_j op(h[j]) * x[off + i + dir*j] over the valid j, i in [0, n).
// Along i the outputs fall into: no valid tap (zero), some taps cut off by
// an end of x, all taps valid, cut off again, none again.
template <class E, bool ConjH = false>
void slidingMac(const E* h, std::ptrdiff_t taps, const E* x, std::ptrdiff_t xLen, std::ptrdiff_t off, int dir,
                E* out, std::ptrdiff_t n) {
    const long long T = taps, L = xLen, o = off;
    long long ne0, ne1, fu0, fu1;  // some taps valid: [ne0, ne1); all: [fu0, fu1)
    if (dir > 0) {
        ne0 = -o - T + 1;
        ne1 = L - o;
        fu0 = -o;
        fu1 = L - T - o + 1;
    } else {
        ne0 = -o;
        ne1 = L - o + T - 1;
        fu0 = T - 1 - o;
        fu1 = L - o;
    }
    auto clip = [n](long long v) { return std::ptrdiff_t(std::clamp<long long>(v, 0, n)); };
    const std::ptrdiff_t a = clip(ne0), d = std::max(a, clip(ne1));
    std::ptrdiff_t b = std::clamp(clip(fu0), a, d), c = std::clamp(clip(fu1), a, d);
    if (c < b) b = c = d;  // no output has every tap: all of [a, d) is cut short
    for (std::ptrdiff_t i = 0; i < a; ++i) out[i] = zeroOf<E>();
    for (std::ptrdiff_t i = d; i < n; ++i) out[i] = zeroOf<E>();
    runPartial<E, ConjH>(h, taps, x, xLen, off, dir, a, b, out);
    runAll<E, ConjH>(h, taps, x, xLen, off, dir, nullptr, 0, b, c, out);
    runPartial<E, ConjH>(h, taps, x, xLen, off, dir, c, d, out);
}

// Full linear convolution: out[n] = sum_k s[k] * l[n - k], n in [0, lLen + sLen - 1).
template <class E>
void convolve(const E* l, std::ptrdiff_t lLen, const E* s, std::ptrdiff_t sLen, E* out) {
    slidingMac<E, false>(s, sLen, l, lLen, 0, -1, out, lLen + sLen - 1);
}

// Correlation at consecutive lags: out[i] = sum_k op(a[k]) * b[k + lag0 + i].
template <class E, bool ConjA>
void correlate(const E* a, std::ptrdiff_t aLen, const E* b, std::ptrdiff_t bLen,
               std::ptrdiff_t lag0, E* out, std::ptrdiff_t n) {
    slidingMac<E, ConjA>(a, aLen, b, bLen, lag0, +1, out, n);
}

// The exact sum of a[k] * b[k], k < n, of 16-bit samples as a 64-bit
// integer. Eight products per step: the pairwise sums of exact products
// (32-bit lanes) widened to 64 bits. A pair sum can leave the 32-bit range
// only as +2^31 (both products (-32768)^2), which the lane holds as -2^31:
// those lanes are counted and 2^32 added back for each.
inline std::int64_t dotExact16s(const Zvp16s* a, const Zvp16s* b, std::ptrdiff_t n) {
    using L16 = Full<std::int16_t>;
    using L32 = Full<std::int32_t>;
    using L64 = Full<std::int64_t>;
    const auto minI32 = L32::set1(std::numeric_limits<std::int32_t>::min());
    auto acc = L64::zero(), wraps = L32::zero();
    std::ptrdiff_t k = 0;
    for (; k + 8 <= n; k += 8) {
        const auto p = L16::maddPairs(L16::load(a + k), L16::load(b + k));
        wraps = L32::sub(wraps, L32::eq(p, minI32));
        acc = L64::add(acc, L64::add(L32::widenLo(p), L32::widenHi(p)));
    }
    std::int64_t lanes[2];
    std::int32_t w[4];
    L64::store(lanes, acc);
    L32::store(w, wraps);
    std::int64_t s = lanes[0] + lanes[1] + ((std::int64_t(w[0]) + w[1] + w[2] + w[3]) << 32);
    for (; k < n; ++k) s += std::int32_t(a[k]) * std::int32_t(b[k]);
    return s;
}

}  // namespace zvp::ZVP_LEVEL::mac

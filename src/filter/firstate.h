// The state record of the single-rate FIR filters, one template for every
// taps/data pairing.
//
// A kind fixes the working element W (float, double or their complex pairs:
// the taps precision), the data type D, the type TIn of the caller's taps,
// and its identity tags. The record, 16-byte aligned in one block:
//
//   record | [32f: four staggered reversed taps copies] | delay line |
//   [32f: broadcast taps] | taps | [integer taps] | taps spectrum |
//   transform segment | scratch | transform record | its init | its work
//
// The delay line area holds 3L + 4 elements: the live history, newest
// first, at [ring, ring + L) (FIROne moves it up to the write offset and
// then walks down; a block call moves it back to 0), and behind it room for
// the block kernel's contiguous [history | inputs]. The scratch holds one
// piece of kPiece elements (an in-place piece staged before it is
// overwritten), two for the converting kinds (input and output of a piece).
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "check.h"
#include "fftconv.h"
#include "fir_kernel.h"
#include "fir_tags.h"
#include "fpguard.h"
#include "lane_float.h"
#include "level.h"
#include "mac_kernel.h"
#include "p8/frame.h"
#include "workbuf.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::fir {

inline constexpr std::ptrdiff_t kPiece = 4096;
inline constexpr int kFftMinTaps = 64;
inline constexpr std::ptrdiff_t kFftMinCount = 512;
inline constexpr std::int32_t kNoTag = 0;


template <class W>
struct Record {
    std::int32_t tag;
    W* rtaps;          // 32f: four staggered reversed copies; else null
    W* dly;            // delay-line area
    int tapsLen;
    int wrOff;         // where FIROne moves the history when it reaches 0
    void* fftSpec;     // transform record of the fast path, or null
    W* tapsSpec;       // spectrum of the zero-padded taps
    int fftLen;        // 2^k, or -1 without a fast path
    int ring;          // start of the live history in dly
    W* btaps;          // 32f: each tap four times; else null
    int tapsLen2;
    W* fftIn;          // transform segment
    W* fftOut;         // the same area (the transforms run in place)
    W* scratch;        // staged pieces
    Zvp8u* fftWork;    // transform work, or null
    int allocMark;     // 1 + offset of the record in its allocated block; 0: caller memory
    int tapsFactor;    // integer taps: the taps scale factor
    W* taps;           // natural-order taps in the working precision
    int roundMode;     // stream forms
    int intValid;      // the integer taps area holds the taps as set
};

// ---- element helpers

template <class W>
inline W zeroW() {
    return mac::zeroOf<W>();
}

template <class T>
inline constexpr bool isCplx = std::is_same_v<T, Zvp32fc> || std::is_same_v<T, Zvp64fc> ||
                               std::is_same_v<T, Zvp16sc> || std::is_same_v<T, Zvp32sc>;

// Real and imaginary parts of any sample type as double, and back.
template <class T>
inline double reOf(const T& v) {
    if constexpr (isCplx<T>) return double(v.re);
    else return double(v);
}
template <class T>
inline double imOf(const T& v) {
    if constexpr (isCplx<T>) return double(v.im);
    else return 0.0;
}

// Exact widening of a data or taps value into the working element.
template <class W, class T>
inline W widen(const T& v) {
    if constexpr (isCplx<W>) {
        using S = decltype(W{}.re);
        return W{S(v.re), S(v.im)};
    } else {
        return W(v);
    }
}

// ---- the integer output rule

// v * 2^-shift, rounded by mode and saturated to the integer type I; NaN
// gives 0. The scale is applied as two exact powers of two so that no
// intermediate over- or underflows before the value is decided.
struct OutScale {
    double s1 = 1, s2 = 1;
    int mode = zvpRndNear;
    OutScale(long long shift, int m) : mode(m) {
        shift = std::clamp<long long>(shift, -2100, 2100);
        const long long a = std::clamp<long long>(shift, -1000, 1000);
        s1 = std::ldexp(1.0, int(-a));
        s2 = std::ldexp(1.0, int(-(shift - a)));
    }
    template <class I>
    I apply(double v) const {
        v = v * s1 * s2;
        if (!(v == v)) return I(0);
        double r;
        if (mode == zvpRndZero) r = std::trunc(v);
        else if (mode == zvpRndFinancial) r = std::round(v);
        else r = std::nearbyint(v);  // the guard holds round-to-nearest-even
        constexpr double hi = double(std::numeric_limits<I>::max());
        constexpr double lo = double(std::numeric_limits<I>::min());
        if (r >= hi) return std::numeric_limits<I>::max();
        if (r <= lo) return std::numeric_limits<I>::min();
        return I(r);
    }
};

template <class D, class W>
inline D narrowInt(const W& v, const OutScale& s) {
    if constexpr (isCplx<D>) {
        using P = decltype(D{}.re);
        return D{s.apply<P>(reOf(v)), s.apply<P>(imOf(v))};
    } else {
        return s.apply<D>(reOf(v));
    }
}

// Float data from a wider working element (64f taps, 32f data).
template <class D, class W>
inline D narrowFloat(const W& v) {
    if constexpr (isCplx<D>) return D{float(v.re), float(v.im)};
    else return D(v);
}

// ---- the direct block kernel

// y[i] = sum_{j<L} taps[j] * x[i + L - 1 - j], i < n, over a contiguous
// [L - 1 history | n inputs]. The one entry of every block filter. Single
// precision reads the record's prepared taps: the broadcast copy below
// kBroadcastMax taps, where four outputs per tap multiply run fastest, the
// staggered copies from there on; every other type reads the natural taps.
inline constexpr std::ptrdiff_t kBroadcastMax = 128;

template <class W>
inline void firBlock(const Record<W>* r, const W* x, W* y, std::ptrdiff_t n) {
    const std::ptrdiff_t L = r->tapsLen;
    if constexpr (std::is_same_v<W, float>) {
        if (r->btaps && L < kBroadcastMax) return firk::filterBroadcast(r->btaps, L, x, y, n);
        if (r->rtaps) return firk::filterStaggered(r->rtaps, L, x, y, n);
    }
    firk::firBlock(r->taps, L, x, y, n);
}

// One output from the newest sample x and the history, newest first.
template <class W>
inline W firOneDot(const W* taps, std::ptrdiff_t L, W x, const W* hist) {
    W acc = mac::mulAcc(zeroW<W>(), taps[0], x);
    for (std::ptrdiff_t j = 1; j < L; ++j) acc = mac::mulAcc(acc, taps[j], hist[j - 1]);
    return acc;
}

// ---- transforms of the fast path

template <class W>
struct Spectral {
    using F = fftconv::Fft<W>;
    static ZvpStatus fwd(W* d, const void* s, Zvp8u* w) {
        const auto* sp = static_cast<const typename F::Spec*>(s);
        if constexpr (isCplx<W>) return F::fwdPack(d, sp, w);
        else return F::fwdPerm(d, sp, w);
    }
    static ZvpStatus inv(W* d, const void* s, Zvp8u* w) {
        const auto* sp = static_cast<const typename F::Spec*>(s);
        if constexpr (isCplx<W>) return F::invPack(d, sp, w);
        else return F::invPerm(d, sp, w);
    }
    // x *= h, element by element (Perm layout for real data).
    static ZvpStatus mul(const W* h, W* x, std::ptrdiff_t n) {
        if constexpr (isCplx<W>) {
            fftconv::mulConjCplx<W, false>(h, x, n);
            return zvpStsNoErr;
        } else {
            return F::mulPerm(h, x, int(n));
        }
    }
};

// Order of the fast path for L taps: one more than the smallest j >= 2 with
// 2^j > L.
inline int fastOrder(long long L) {
    int j = 2;
    while ((1LL << j) <= L) ++j;
    return j + 1;
}

// ---- layout

struct Layout {
    long long stagger = 0, dly = 0, btaps = 0, taps = 0, itaps = 0, spec = 0, seg = 0, scratch = 0;
    long long fSpec = 0, fInit = 0, fWork = 0;
    long long total = 0;  // bytes to ask for, alignment slack included
    int order = 0, fftLen = -1;
};

inline constexpr long long a16(long long v) { return (v + 15) & ~15LL; }
inline constexpr long long kRecordBytes = 128;

// K: the kind traits (W, D, TIn, is32f, fast, convert).
template <class K>
inline bool layoutFor(long long L, bool fastWanted, Layout& o) {
    using W = typename K::W;
    constexpr long long e = sizeof(W);
    static_assert(sizeof(Record<W>) <= kRecordBytes);
    o = Layout{};
    int s = 0, i = 0, w = 0;
    long long N = 0;
    if (fastWanted && L >= kFftMinTaps && L < (1LL << 26)) {
        const int k = fastOrder(L);
        if (fftconv::Fft<W>::size(k, &s, &i, &w) >= 0) {
            o.order = k;
            N = 1LL << k;
            o.fftLen = int(N);
        } else {
            s = i = w = 0;
        }
    }
    long long at = kRecordBytes;
    if constexpr (K::is32f) {
        o.stagger = at;
        at += 16 * ((L + 6) & ~3LL);
        o.dly = at;
        at += (12 * L + 31) & ~15LL;
        o.btaps = at;
        at += 4 * ((4 * L + 15) & ~15LL);
        o.taps = at;
        at += (4 * L + 15) & ~15LL;
    } else {
        o.dly = at;
        at += a16(e * (3 * L + 4));
        o.taps = at;
        at += a16(e * L);
        o.itaps = at;
        at += a16(K::itapBytes * L);
    }
    o.spec = at;
    at += a16(e * N);
    o.seg = at;
    at += a16(e * N);
    o.scratch = at;
    at += kPiece * e * (K::convert ? 2 : 1);
    o.fSpec = at;
    at += s;
    o.fInit = at;
    at += i;
    o.fWork = at;
    at += w;
    o.total = at + 16;
    return o.total <= 0x7fffffffLL;
}

// ---- the kernels on a record

template <class W>
inline void normalizeRing(Record<W>* r) {
    if (r->ring != 0) {
        std::memmove(static_cast<void*>(r->dly), r->dly + r->ring, std::size_t(r->tapsLen) * sizeof(W));
        r->ring = 0;
    }
}

// New history after n inputs x (the live line at 0, newest first).
template <class W>
inline void pushHistory(Record<W>* r, const W* x, std::ptrdiff_t n) {
    const std::ptrdiff_t L = r->tapsLen;
    W* d = r->dly;
    if (n < L) std::memmove(static_cast<void*>(d + n), d, std::size_t(L - n) * sizeof(W));
    const std::ptrdiff_t c = std::min(n, L);
    for (std::ptrdiff_t j = 0; j < c; ++j) d[j] = x[n - 1 - j];
}

template <class W>
inline void directPath(Record<W>* r, const W* x, W* y, std::ptrdiff_t n) {
    const std::ptrdiff_t L = r->tapsLen, L1 = L - 1;
    const std::ptrdiff_t m = std::min(n, L1);
    if (m > 0) {
        W* nat = r->dly + L;  // [L - 1 history | m inputs], oldest first
        for (std::ptrdiff_t t = 0; t < L1; ++t) nat[t] = r->dly[L1 - 1 - t];
        std::memcpy(static_cast<void*>(nat + L1), x, std::size_t(m) * sizeof(W));
        firBlock(r, nat, y, m);
    }
    if (n > m) firBlock(r, x + m - L1, y + m, n - m);
}

template <class W>
inline ZvpStatus fastPath(Record<W>* r, const W* x, W* y, std::ptrdiff_t n) {
    const std::ptrdiff_t L = r->tapsLen, L1 = L - 1, N = r->fftLen;
    const std::ptrdiff_t step = N - L1;
    W* seg = r->fftIn;
    for (std::ptrdiff_t q = 0; q < n; q += step) {
        // seg[u] = sample q - L1 + u of the stream: history before 0, zeros past n.
        const std::ptrdiff_t t0 = q - L1;
        std::ptrdiff_t u = 0;
        for (; u < N && t0 + u < 0; ++u) seg[u] = r->dly[-1 - (t0 + u)];
        const std::ptrdiff_t avail = std::min<std::ptrdiff_t>(N - u, n - (t0 + u));
        if (avail > 0) {
            std::memcpy(static_cast<void*>(seg + u), x + t0 + u, std::size_t(avail) * sizeof(W));
            u += avail;
        }
        for (; u < N; ++u) seg[u] = zeroW<W>();
        ZVP_RETURN_IF_ERROR(Spectral<W>::fwd(seg, r->fftSpec, r->fftWork));
        ZVP_RETURN_IF_ERROR(Spectral<W>::mul(r->tapsSpec, seg, N));
        ZVP_RETURN_IF_ERROR(Spectral<W>::inv(seg, r->fftSpec, r->fftWork));
        const std::ptrdiff_t cnt = std::min(step, n - q);
        std::memcpy(static_cast<void*>(y + q), seg + L1, std::size_t(cnt) * sizeof(W));
    }
    return zvpStsNoErr;
}

// Filters n inputs x into y (distinct arrays) and moves the history on.
template <class W>
inline void core(Record<W>* r, const W* x, W* y, std::ptrdiff_t n) {
    normalizeRing(r);
    bool done = false;
    if (n >= kFftMinCount && r->fftLen > 0) done = fastPath(r, x, y, n) >= 0;
    if (!done) directPath(r, x, y, n);
    pushHistory(r, x, n);
}

// FIROne on the record: the live history walks down the delay area.
template <class W>
inline W coreOne(Record<W>* r, W x) {
    const std::ptrdiff_t L = r->tapsLen;
    const W y = firOneDot(r->taps, L, x, r->dly + r->ring);
    if (r->ring == 0) {
        std::memmove(static_cast<void*>(r->dly + r->wrOff), r->dly, std::size_t(L) * sizeof(W));
        r->ring = r->wrOff;
    }
    r->ring -= 1;
    r->dly[r->ring] = x;
    return y;
}

}  // namespace zvp::ZVP_LEVEL::fir

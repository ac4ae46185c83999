// The complex FFT engine: decimation-in-time radix-4 passes on data held in
// group form, the first pass that also applies the bit-reversal placement,
// the blocked large scheme (64 x 64 tile bit reversal, row transforms, column
// pass) and the adaptors that read and write the caller's interleaved or
// split arrays.
//
// Twiddles come only from the tables of the specification record. A table of
// radix-4 passes holds, for every pass that combines four transforms of L
// points and every group of W positions j, the roots w^(j), w^(2j), w^(3j) of
// w = exp(-2 pi i / 4L) as [re x W][im x W] three times.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "fftvec.h"

namespace zvp::fft {

using std::ptrdiff_t;
using std::size_t;

// ---- Adaptors -----------------------------------------------------------------

// Group form: group g holds W real parts at re + g*GS and W imaginary parts
// at im + g*GS (GS = 2W for one interleaved-group array, W for split arrays).
template <class V, int GS, bool A = true>
struct GroupIO {
    using T = typename V::T;
    T* re;
    T* im;
    static typename V::R ldv(const T* p) {
        if constexpr (A) return V::lda(p);
        else return V::ld(p);
    }
    CV<V> load(ptrdiff_t g) const { return {ldv(re + g * GS), ldv(im + g * GS)}; }
    void store(ptrdiff_t g, CV<V> v) const {
        V::st(re + g * GS, v.re);
        V::st(im + g * GS, v.im);
    }
    GroupIO at(ptrdiff_t g) const { return {re + g * GS, im + g * GS}; }
};
template <class V, bool A = true>
using GroupBuf = GroupIO<V, 2 * V::W, A>;  // one array in group form
template <class V, bool A = true>
using SplitIO = GroupIO<V, V::W, A>;       // two split arrays

// Interleaved (re, im) complex samples; group g = samples W g .. W g + W - 1.
template <class V>
struct InterIO {
    using T = typename V::T;
    T* p;
    CV<V> load(ptrdiff_t g) const {
        CV<V> v;
        V::deinterleave(p + 2 * V::W * g, v.re, v.im);
        return v;
    }
    void store(ptrdiff_t g, CV<V> v) const { V::interleave(p + 2 * V::W * g, v.re, v.im); }
    InterIO at(ptrdiff_t g) const { return {p + 2 * V::W * g}; }
};

template <class V, bool A = true>
inline GroupBuf<V, A> groupView(typename V::T* p) {
    return {p, p + V::W};
}

// ---- Passes ---------------------------------------------------------------------

// Bit reversal of t within log2(W) bits.
template <class V>
constexpr int revLane(int t) {
    if constexpr (V::W == 4) return ((t & 1) << 1) | (t >> 1);
    else return t;
}

// Bit reversal of l within log2(P) bits.
template <int P>
constexpr int revBits(int l) {
    int r = 0;
    for (int q = 1; q < P; q <<= 1, l >>= 1) r = (r << 1) | (l & 1);
    return r;
}

// Moves x[0..P) (lanes = butterflies) into rows (lanes = legs): after the
// call x[h W + t] holds legs h W .. h W + W - 1 of butterfly t.
template <class V, int P>
inline void legsToRows(CV<V>* x) {
    constexpr int W = V::W;
    for (int h = 0; h < P / W; ++h) {
        typename V::R re[W], im[W];
        for (int i = 0; i < W; ++i) {
            re[i] = x[h * W + i].re;
            im[i] = x[h * W + i].im;
        }
        V::transpose(re);
        V::transpose(im);
        for (int i = 0; i < W; ++i) x[h * W + i] = {re[i], im[i]};
    }
}

// First pass of the engine: P-point butterflies (P = 4 or 8, no twiddles)
// over the P strands x[k + l N/P] of the source, each result placed where
// decimation in time wants it: butterfly k goes to P * bitrev(k), which the
// table gives for the first lane of every group (rev[g] for k = g W).
template <class V, bool INV, int P, class In, class Out>
[[gnu::always_inline]] inline void firstPassGroup(const In& in, const Out& w, size_t g, size_t qg,
                                                  size_t laneStep, const std::int32_t* rev) {
    constexpr int W = V::W;
    CV<V> x[P];
    for (int l = 0; l < P; ++l) x[l] = in.load(ptrdiff_t(g + l * qg));
    dftv<V, INV, P>(x);
    legsToRows<V, P>(x);
    const size_t base = size_t(rev[g]) / W;
    for (int t = 0; t < W; ++t) {
        const size_t d = base + size_t(revLane<V>(t)) * laneStep;
        for (int h = 0; h < P / W; ++h) w.store(ptrdiff_t(d + h), x[h * W + t]);
    }
}

template <class V, bool INV, int P, class In, class Out>
void firstPassRev(In in, Out w, size_t n, const std::int32_t* rev) {
    constexpr int W = V::W;
    const size_t qg = n / P / W;
    const size_t laneStep = n / W / W;  // groups between lanes' destinations
    if (qg < 64) {
        for (size_t g = 0; g < qg; ++g) firstPassGroup<V, INV, P>(in, w, g, qg, laneStep, rev);
        return;
    }
    // Tiles of 16 groups: the lowest bit and the top three bits of g vary
    // fastest. The two neighbours read one whole line of each strand; the
    // eight values of the top bits land on eight consecutive output blocks,
    // so every line written is written whole while it is in cache.
    const size_t hiStep = qg / 8;
    for (size_t mid = 0; mid < hiStep; mid += 2)
        for (size_t hi = 0; hi < qg; hi += hiStep)
            for (size_t lo = 0; lo < 2; ++lo)
                firstPassGroup<V, INV, P>(in, w, hi + mid + lo, qg, laneStep, rev);
}

// First pass on data already in bit-reversed order: P-point butterflies on P
// consecutive samples, from the raw form to group form (may be in place).
template <class V, bool INV, int P, class In, class Out>
void firstPassContig(In in, Out w, size_t n) {
    constexpr int W = V::W;
    constexpr int PW = P / W;
    for (size_t blk = 0; blk < n / W; blk += P) {
        CV<V> g[P];
        for (int i = 0; i < P; ++i) g[i] = in.load(ptrdiff_t(blk + i));
        // leg h W + i of butterfly t sits in group t PW + h, lane i
        CV<V> x[P];
        for (int h = 0; h < PW; ++h)
            for (int t = 0; t < W; ++t) x[h * W + t] = g[t * PW + h];
        legsToRows<V, P>(x);
        // position l of a block holds decimation rev(l) (log2 P bits)
        CV<V> d[P];
        for (int l = 0; l < P; ++l) d[revBits<P>(l)] = x[l];
        dftv<V, INV, P>(d);
        legsToRows<V, P>(d);
        for (int l = 0; l < P; ++l) x[l] = d[l];
        for (int h = 0; h < PW; ++h)
            for (int t = 0; t < W; ++t) w.store(ptrdiff_t(blk + t * PW + h), x[h * W + t]);
    }
}

// Radix-4 decimation-in-time butterfly on twiddled legs.
template <class V, bool INV>
[[gnu::always_inline]] inline void bfly4(CV<V>& a0, CV<V>& a1, CV<V>& a2, CV<V>& a3) {
    radix4<V, INV>(a0, a1, a2, a3);
}

template <class V, bool INV>
[[gnu::always_inline]] inline void twiddle3(CV<V>& a1, CV<V>& a2, CV<V>& a3,
                                            const typename V::T* tw) {
    constexpr int W = V::W;
    a1 = cmul<V, INV>(a1, V::lda(tw), V::lda(tw + W));
    a2 = cmul<V, INV>(a2, V::lda(tw + 2 * W), V::lda(tw + 3 * W));
    a3 = cmul<V, INV>(a3, V::lda(tw + 4 * W), V::lda(tw + 5 * W));
}

template <class V, bool INV, bool SCALE, class In, class Out>
[[gnu::always_inline]] inline void butterflyAt(const In& in, const Out& out, size_t p, size_t lg,
                                               const typename V::T* t, typename V::R scale) {
    // Bit-reversed order: the transform of decimation 1 sits at 2L, of 2 at L.
    CV<V> a0 = in.load(ptrdiff_t(p)), a2 = in.load(ptrdiff_t(p + lg));
    CV<V> a1 = in.load(ptrdiff_t(p + 2 * lg)), a3 = in.load(ptrdiff_t(p + 3 * lg));
    twiddle3<V, INV>(a1, a2, a3, t);
    bfly4<V, INV>(a0, a1, a2, a3);
    if constexpr (SCALE) {
        a0 = cscale(a0, scale);
        a1 = cscale(a1, scale);
        a2 = cscale(a2, scale);
        a3 = cscale(a3, scale);
    }
    out.store(ptrdiff_t(p), a0);
    out.store(ptrdiff_t(p + lg), a1);
    out.store(ptrdiff_t(p + 2 * lg), a2);
    out.store(ptrdiff_t(p + 3 * lg), a3);
}

// One radix-4 pass over ng groups combining transforms of lg groups each;
// in and out may be the same memory.
template <class V, bool INV, bool SCALE, class In, class Out>
void stageR4(In in, Out out, size_t ng, size_t lg, const typename V::T* tw,
             typename V::R scale) {
    constexpr int W = V::W;
    const size_t span = 4 * lg;
    if (lg >= 4) {
        for (size_t b = 0; b < ng; b += span)
            for (size_t j = 0; j < lg; ++j)
                butterflyAt<V, INV, SCALE>(in, out, b + j, lg, tw + 6 * W * j, scale);
    } else {
        for (size_t j = 0; j < lg; ++j)
            for (size_t b = 0; b < ng; b += span)
                butterflyAt<V, INV, SCALE>(in, out, b + j, lg, tw + 6 * W * j, scale);
    }
}

// Sub-transform size handled block by block (fits the first-level cache).
constexpr size_t kBlockPoints = 2048;

// Radix-4 passes after the first pass of a 2^m-point engine, on the working
// area w; the last pass writes to out (multiplying by scale when SCALE).
// tw holds the twiddles of the passes L = S0, 4 S0, ... (S0 = 4 or 8).
template <class V, bool INV, bool SCALE, class Work, class Out>
void enginePasses(Work w, Out out, int m, const typename V::T* tw,
                  typename V::T scale) {
    constexpr int W = V::W;
    const size_t n = size_t(1) << m;
    const size_t s0 = (m & 1) ? 8 : 4;
    const auto sc = V::set1(scale);
    const auto one = V::set1(typename V::T(1));
    size_t blk = s0;
    while (blk * 4 <= kBlockPoints) blk *= 4;
    size_t L = s0;
    if (n > blk) {
        for (size_t b0 = 0; b0 < n; b0 += blk)
            for (size_t l = s0; 4 * l <= blk; l *= 4)
                stageR4<V, INV, false>(w.at(ptrdiff_t(b0 / W)), w.at(ptrdiff_t(b0 / W)), blk / W,
                                       l / W, tw + 2 * (l - s0), one);
        L = blk;
    }
    for (; 4 * L < n; L *= 4) stageR4<V, INV, false>(w, w, n / W, L / W, tw + 2 * (L - s0), one);
    stageR4<V, INV, SCALE>(w, out, n / W, L / W, tw + 2 * (L - s0), sc);
}

// Whole engine for orders 6 and up below the large scheme: first pass with
// the bit-reversal placement from in to w, then the passes.
template <class V, bool INV, class In, class Work, class Out>
void engineRev(In in, Work w, Out out, int m, const std::int32_t* rev,
               const typename V::T* tw, bool scaled, typename V::T scale) {
    const size_t n = size_t(1) << m;
    if (m & 1) firstPassRev<V, INV, 8>(in, w, n, rev);
    else firstPassRev<V, INV, 4>(in, w, n, rev);
    if (scaled) enginePasses<V, INV, true>(w, out, m, tw, scale);
    else enginePasses<V, INV, false>(w, out, m, tw, scale);
}

// Engine on data already in bit-reversed order, in place: raw is the data's
// own form (interleaved or split), w its group form over the same memory.
template <class V, bool INV, class Raw, class Work, class Out>
void engineNoRev(Raw raw, Work w, Out out, int m, const typename V::T* tw, bool scaled,
                 typename V::T scale) {
    const size_t n = size_t(1) << m;
    if (m & 1) firstPassContig<V, INV, 8>(raw, w, n);
    else firstPassContig<V, INV, 4>(raw, w, n);
    if (scaled) enginePasses<V, INV, true>(w, out, m, tw, scale);
    else enginePasses<V, INV, false>(w, out, m, tw, scale);
}

// ---- Column pass of the large scheme ---------------------------------------------

constexpr size_t kStripPoints = 64;

// The data form a C x R matrix (C = 2^b rows of R points, each row already
// transformed, rows in bit-reversed order); the remaining b levels run as b/2
// radix-4 passes down the columns, 64 columns at a time through buf. Strip,
// pass, row-in-block and column group order the twiddle table, which is read
// straight through; the last pass keeps one root per position and squares it
// for the other two legs.
template <class V, bool INV, bool SCALE, class Data, class Out>
void columnPass(Data data, Out out, int b, size_t R, const typename V::T* tw,
                typename V::T* buf, typename V::T scale) {
    constexpr int W = V::W;
    const size_t C = size_t(1) << b;
    const size_t rg = R / W;
    const size_t sg = kStripPoints / W;
    const GroupBuf<V> bio = groupView<V>(buf);
    const auto sc = V::set1(scale);
    const int passes = b / 2;
    for (size_t strip = 0; strip < rg; strip += sg) {
        for (int ps = 0; ps < passes; ++ps) {
            const bool first = ps == 0, last = ps == passes - 1;
            const size_t lr = size_t(1) << (2 * ps);  // rows per sub-transform
            const size_t inStride = first ? rg : sg, outStride = last ? rg : sg;
            for (size_t r = 0; r < lr; ++r) {
                for (size_t cg = 0; cg < sg; ++cg) {
                    typename V::R w1r, w1i, w2r, w2i, w3r, w3i;
                    w1r = V::lda(tw);
                    w1i = V::lda(tw + W);
                    if (!last) {
                        w2r = V::lda(tw + 2 * W);
                        w2i = V::lda(tw + 3 * W);
                        w3r = V::lda(tw + 4 * W);
                        w3i = V::lda(tw + 5 * W);
                        tw += 6 * W;
                    } else {
                        w2r = V::sub(V::mul(w1r, w1r), V::mul(w1i, w1i));
                        const auto p = V::mul(w1r, w1i);
                        w2i = V::add(p, p);
                        w3r = V::sub(V::mul(w2r, w1r), V::mul(w2i, w1i));
                        w3i = V::add(V::mul(w2r, w1i), V::mul(w2i, w1r));
                        tw += 2 * W;
                    }
                    for (size_t blk = 0; blk < C; blk += 4 * lr) {
                        const size_t r0 = blk + r;
                        CV<V> a[4];
                        for (int l = 0; l < 4; ++l) {
                            // rows in bit-reversed order: decimation l at row rev2(l)
                            const size_t row = r0 + size_t((l >> 1) | ((l & 1) << 1)) * lr;
                            a[l] = first ? data.load(ptrdiff_t(row * inStride + strip + cg))
                                         : bio.load(ptrdiff_t(row * inStride + cg));
                        }
                        a[1] = cmul<V, INV>(a[1], w1r, w1i);
                        a[2] = cmul<V, INV>(a[2], w2r, w2i);
                        a[3] = cmul<V, INV>(a[3], w3r, w3i);
                        bfly4<V, INV>(a[0], a[1], a[2], a[3]);
                        for (int l = 0; l < 4; ++l) {
                            const size_t row = r0 + l * lr;
                            if (last) {
                                CV<V> v = a[l];
                                if constexpr (SCALE) v = cscale(v, sc);
                                out.store(ptrdiff_t(row * outStride + strip + cg), v);
                            } else {
                                bio.store(ptrdiff_t(row * outStride + cg), a[l]);
                            }
                        }
                    }
                }
            }
        }
    }
}

// ---- 64 x 64 tile bit reversal -----------------------------------------------------

// Element i = a (N/64) + t 64 + c of tile t (row a, column c) belongs at
// rev(i) = rev6(c) (N/64) + rev(t) 64 + rev6(a): row rev6(c), column rev6(a)
// of the partner tile rev(t). E is the element (8 or 16 bytes for interleaved
// complex, 4 or 8 for one of two split arrays).
template <class E>
inline void tileGather(const E* x, size_t rowStride, E* buf) {
    for (size_t a = 0; a < 64; ++a) std::memcpy(buf + a * 64, x + a * rowStride, 64 * sizeof(E));
}
template <class E>
inline void tileScatterPermuted(const E* buf, E* x, size_t rowStride, const std::uint8_t* rev6) {
    for (size_t r = 0; r < 64; ++r) {
        E* row = x + r * rowStride;
        const E* col = buf + rev6[r];
        for (size_t c = 0; c < 64; ++c) row[c] = col[size_t(rev6[c]) * 64];
    }
}

template <class E>
void tileRevInPlace(E* x, int m, const std::int32_t* partner, const std::uint8_t* rev6, E* buf) {
    const size_t nt = size_t(1) << (m - 12);
    const size_t rs = (size_t(1) << m) / 64;
    E* buf2 = buf + 4096;
    for (size_t t = 0; t < nt; ++t) {
        const size_t p = size_t(partner[t]);
        if (p < t) continue;
        tileGather(x + t * 64, rs, buf);
        if (p == t) {
            tileScatterPermuted(buf, x + t * 64, rs, rev6);
        } else {
            tileGather(x + p * 64, rs, buf2);
            tileScatterPermuted(buf, x + p * 64, rs, rev6);
            tileScatterPermuted(buf2, x + t * 64, rs, rev6);
        }
    }
}

template <class E>
void tileRevOutOfPlace(const E* src, E* dst, int m, const std::int32_t* partner,
                       const std::uint8_t* rev6, E* buf) {
    const size_t nt = size_t(1) << (m - 12);
    const size_t rs = (size_t(1) << m) / 64;
    for (size_t t = 0; t < nt; ++t) {
        tileGather(src + size_t(partner[t]) * 64, rs, buf);
        tileScatterPermuted(buf, dst + t * 64, rs, rev6);
    }
}

// Bit reversal of 2^m elements (m >= 12) from src to dst, in place when they
// are equal. Out of place, up to copyFrom - 1 each destination tile is read
// from its partner in the source; from copyFrom on the source is first copied
// in chunks of 64 MiB and the pairs are swapped in place.
template <class E>
void bitReverse(const E* src, E* dst, int m, int copyFrom, const std::int32_t* partner,
                const std::uint8_t* rev6, E* buf) {
    if (src == dst) {
        tileRevInPlace(dst, m, partner, rev6, buf);
    } else if (m < copyFrom) {
        tileRevOutOfPlace(src, dst, m, partner, rev6, buf);
    } else {
        const size_t n = size_t(1) << m;
        const size_t chunk = (size_t(64) << 20) / sizeof(E);
        for (size_t i = 0; i < n; i += chunk)
            std::memcpy(dst + i, src + i, (n - i < chunk ? n - i : chunk) * sizeof(E));
        tileRevInPlace(dst, m, partner, rev6, buf);
    }
}

}  // namespace zvp::fft

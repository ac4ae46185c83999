// The complex FFT engine: decimation-in-time radix-4 (and, for an odd number
// of levels, one radix-8) passes on data held in group form, the first pass
// that also applies the bit-reversal placement, the blocked large scheme
// (64 x 64 tile bit reversal, row transforms, column pass) and the adaptors
// that read and write the caller's interleaved or split arrays.
//
// Data in bit-reversed order: when a pass combines r transforms of L points,
// the transform of decimation d sits at position rev(d) L. Results come out
// in natural order, so the last pass writes the spectrum as it is.
//
// Twiddles come only from the tables of the specification record. The table
// of a radix-r pass over transforms of L points holds, for every group of W
// positions j, the roots w^(d j), d = 1 .. r-1, of w = exp(-2 pi i / rL), each
// as [re x W][im x W].
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "fftspec.h"
#include "fftvec.h"

namespace zvp::ZVP_LEVEL::fft {

using std::ptrdiff_t;
using std::size_t;

// ---- Adaptors -----------------------------------------------------------------

// Group form: group g holds W real parts at re + g*GS and W imaginary parts
// at im + g*GS. Used with GS = W for the split arrays; one array in group form
// is GroupBuf below.
template <class V, int GS, bool A = true>
struct GroupIO {
    using T = typename V::type;
    T* re;
    T* im;
    static typename V::R ldv(const T* p) {
        if constexpr (A) return V::loada(p);
        else return V::load(p);
    }
    CV<V> load(ptrdiff_t g) const { return {ldv(re + g * GS), ldv(im + g * GS)}; }
    void store(ptrdiff_t g, CV<V> v) const {
        V::store(re + g * GS, v.re);
        V::store(im + g * GS, v.im);
    }
    GroupIO at(ptrdiff_t g) const { return {re + g * GS, im + g * GS}; }
};
template <class V, bool A = true>
using SplitIO = GroupIO<V, V::N, A>;  // two split arrays

// One array in group form: the imaginary parts of a group follow its real
// parts, so one base pointer addresses both and a butterfly's legs differ
// only by constant offsets.
template <class V, bool A = true>
struct GroupBuf {
    using T = typename V::type;
    static constexpr int W = V::N;
    T* p;
    static typename V::R ldv(const T* q) {
        if constexpr (A) return V::loada(q);
        else return V::load(q);
    }
    CV<V> load(ptrdiff_t g) const { return {ldv(p + g * 2 * W), ldv(p + g * 2 * W + W)}; }
    void store(ptrdiff_t g, CV<V> v) const {
        V::store(p + g * 2 * W, v.re);
        V::store(p + g * 2 * W + W, v.im);
    }
    GroupBuf at(ptrdiff_t g) const { return {p + g * 2 * W}; }
};

// Interleaved (re, im) complex samples; group g = samples W g .. W g + W - 1.
template <class V>
struct InterIO {
    using T = typename V::type;
    T* p;
    CV<V> load(ptrdiff_t g) const {
        CV<V> v;
        V::deinterleave(p + 2 * V::N * g, v.re, v.im);
        return v;
    }
    void store(ptrdiff_t g, CV<V> v) const { V::interleave(p + 2 * V::N * g, v.re, v.im); }
    InterIO at(ptrdiff_t g) const { return {p + 2 * V::N * g}; }
};

template <class V, bool A = true>
inline GroupBuf<V, A> groupView(typename V::type* p) {
    return {p};
}

// ---- Passes ---------------------------------------------------------------------

// Bit reversal of t within log2(W) bits.
template <class V>
constexpr int revLane(int t) {
    if constexpr (V::N == 4) return ((t & 1) << 1) | (t >> 1);
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
    constexpr int W = V::N;
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
    constexpr int W = V::N;
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
    constexpr int W = V::N;
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
    constexpr int W = V::N;
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
                                            const typename V::type* tw) {
    constexpr int W = V::N;
    a1 = cmul<V, INV>(a1, V::loada(tw), V::loada(tw + W));
    a2 = cmul<V, INV>(a2, V::loada(tw + 2 * W), V::loada(tw + 3 * W));
    a3 = cmul<V, INV>(a3, V::loada(tw + 4 * W), V::loada(tw + 5 * W));
}

template <class V, bool INV, bool SCALE, class In, class Out>
[[gnu::always_inline]] inline void butterflyAt(const In& in, const Out& out, size_t p, size_t lg,
                                               const typename V::type* t, typename V::R scale) {
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

// Radix-8 decimation-in-time pass: decimation d of the eight transforms of L
// points sits at rev3(d) L; seven roots per position. Split into two radix-4
// halves (even and odd decimations) joined by the eighth roots, which keeps
// the live registers within the sixteen SSE registers.
template <class V, bool INV, bool SCALE, class In, class Out>
[[gnu::always_inline]] inline void butterfly8At(const In& in, const Out& out, size_t p, size_t lg,
                                                const typename V::type* t, typename V::R scale) {
    constexpr int W = V::N;
    auto tw = [&](int d, CV<V> x) {
        return cmul<V, INV>(x, V::loada(t + 2 * W * (d - 1)), V::loada(t + 2 * W * (d - 1) + W));
    };
    // Even decimations 0, 2, 4, 6 (at 0, 2L, L, 3L): a radix-4 step.
    CV<V> e0 = in.load(ptrdiff_t(p));
    CV<V> e1 = tw(2, in.load(ptrdiff_t(p + 2 * lg)));
    CV<V> e2 = tw(4, in.load(ptrdiff_t(p + lg)));
    CV<V> e3 = tw(6, in.load(ptrdiff_t(p + 3 * lg)));
    radix4<V, INV>(e0, e1, e2, e3);
    // Odd decimations 1, 3, 5, 7 (at 4L, 6L, 5L, 7L): another, then w8^k.
    CV<V> o0 = tw(1, in.load(ptrdiff_t(p + 4 * lg)));
    CV<V> o1 = tw(3, in.load(ptrdiff_t(p + 6 * lg)));
    CV<V> o2 = tw(5, in.load(ptrdiff_t(p + 5 * lg)));
    CV<V> o3 = tw(7, in.load(ptrdiff_t(p + 7 * lg)));
    radix4<V, INV>(o0, o1, o2, o3);
    o1 = rotate<V, INV, 8, 1>(o1);
    o2 = rotate<V, INV, 8, 2>(o2);
    o3 = rotate<V, INV, 8, 3>(o3);
    CV<V> y[8] = {cadd(e0, o0), cadd(e1, o1), cadd(e2, o2), cadd(e3, o3),
                  csub(e0, o0), csub(e1, o1), csub(e2, o2), csub(e3, o3)};
    for (int q = 0; q < 8; ++q) {
        if constexpr (SCALE) y[q] = cscale(y[q], scale);
        out.store(ptrdiff_t(p + q * lg), y[q]);
    }
}

// One radix-R pass (R = 4 or 8) over ng groups combining transforms of lg
// groups each; in and out may be the same memory. Each position j has R - 1
// roots of W values, real and imaginary. Short transforms run position by
// position over all blocks so that a position's roots stay in registers.
template <int R, class V, bool INV, bool SCALE, class In, class Out>
[[gnu::always_inline]] inline void stage(const In& in, const Out& out, size_t ng, size_t lg,
                                         const typename V::type* tw, typename V::R scale) {
    constexpr int W = V::N;
    constexpr size_t kTw = 2 * (R - 1) * W;
    const size_t span = R * lg;
    auto butterfly = [&](size_t p, size_t j) {
        if constexpr (R == 8) butterfly8At<V, INV, SCALE>(in, out, p, lg, tw + kTw * j, scale);
        else butterflyAt<V, INV, SCALE>(in, out, p, lg, tw + kTw * j, scale);
    };
    if (lg >= 4) {
        for (size_t b = 0; b < ng; b += span)
            for (size_t j = 0; j < lg; ++j) butterfly(b + j, j);
    } else {
        for (size_t j = 0; j < lg; ++j)
            for (size_t b = 0; b < ng; b += span) butterfly(b + j, j);
    }
}

template <class V, bool INV, bool SCALE, class In, class Out>
[[gnu::noinline]] void runPass(int bits, In in, Out out, size_t ng, size_t lg,
                               const typename V::type* tw, typename V::R scale) {
    if (bits == 3) stage<8, V, INV, SCALE>(in, out, ng, lg, tw, scale);
    else stage<4, V, INV, SCALE>(in, out, ng, lg, tw, scale);
}

// The same pass in place: one view for source and destination, so loads and
// stores share their addresses.
template <class V, bool INV, class Buf>
[[gnu::noinline]] void runPassInPlace(int bits, Buf w, size_t ng, size_t lg,
                                      const typename V::type* tw) {
    const auto one = V::set1(typename V::type(1));
    if (bits == 3) stage<8, V, INV, false>(w, w, ng, lg, tw, one);
    else stage<4, V, INV, false>(w, w, ng, lg, tw, one);
}

// The passes after the first pass of a 2^m-point engine (see PassPlan), on
// the working area w; the last pass writes to out (multiplying by scale when
// SCALE). tw holds the twiddles of every pass in order.
template <class V, bool INV, bool SCALE, class Work, class Out>
void enginePasses(Work w, Out out, int m, const typename V::type* tw, typename V::type scale) {
    constexpr int W = V::N;
    const size_t n = size_t(1) << m;
    const PassPlan plan = passPlan(sizeof(typename V::type) == 4 ? Prec::Single : Prec::Double, m);
    const auto sc = V::set1(scale);
    size_t L = size_t(1) << plan.bits[0];
    int i = 1;
    if (plan.blocked > 0) {
        const size_t blk = size_t(1) << plan.blockBits;
        for (size_t b0 = 0; b0 < n; b0 += blk) {
            size_t l = L;
            const typename V::type* t = tw;
            const auto wb = w.at(ptrdiff_t(b0 / W));
            for (int j = 1; j < plan.blocked; ++j) {
                runPassInPlace<V, INV>(plan.bits[j], wb, blk / W, l / W, t);
                t += 2 * ((size_t(1) << plan.bits[j]) - 1) * l;
                l <<= plan.bits[j];
            }
        }
        for (; i < plan.blocked; ++i) {
            tw += 2 * ((size_t(1) << plan.bits[i]) - 1) * L;
            L <<= plan.bits[i];
        }
    }
    for (; i + 1 < plan.count; ++i) {
        runPassInPlace<V, INV>(plan.bits[i], w, n / W, L / W, tw);
        tw += 2 * ((size_t(1) << plan.bits[i]) - 1) * L;
        L <<= plan.bits[i];
    }
    runPass<V, INV, SCALE>(plan.bits[i], w, out, n / W, L / W, tw, sc);
}

// Whole engine for orders 6 and up below the large scheme: first pass with
// the bit-reversal placement from in to w, then the passes.
template <class V, bool INV, class In, class Work, class Out>
void engineRev(In in, Work w, Out out, int m, const std::int32_t* rev,
               const typename V::type* tw, bool scaled, typename V::type scale) {
    const size_t n = size_t(1) << m;
    firstPassRev<V, INV, 4>(in, w, n, rev);
    if (scaled) enginePasses<V, INV, true>(w, out, m, tw, scale);
    else enginePasses<V, INV, false>(w, out, m, tw, scale);
}

// Engine on data already in bit-reversed order, in place: raw is the data's
// own form (interleaved or split), w its group form over the same memory.
template <class V, bool INV, class Raw, class Work, class Out>
void engineNoRev(Raw raw, Work w, Out out, int m, const typename V::type* tw, bool scaled,
                 typename V::type scale) {
    const size_t n = size_t(1) << m;
    firstPassContig<V, INV, 4>(raw, w, n);
    if (scaled) enginePasses<V, INV, true>(w, out, m, tw, scale);
    else enginePasses<V, INV, false>(w, out, m, tw, scale);
}

// ---- Column pass of the large scheme ---------------------------------------------

constexpr size_t kStripPoints = 64;

// Rows in bit-reversed order: decimation l of a radix-4 step sits at rev2(l).
constexpr size_t kLegPos[4] = {0, 2, 1, 3};

// One radix-4 column butterfly over a strip group cg: rows r0 + kLegPos[l] lr
// in, rows r0 + q lr out.
template <class V, bool INV, bool SCALE, class In, class Out>
[[gnu::always_inline]] inline void columnButterfly(const In& in, size_t inStride, const Out& out,
                                                   size_t outStride, size_t r0, size_t lr,
                                                   size_t col, typename V::R w1r,
                                                   typename V::R w1i, typename V::R w2r,
                                                   typename V::R w2i, typename V::R w3r,
                                                   typename V::R w3i, typename V::R sc) {
    CV<V> a[4];
    for (int l = 0; l < 4; ++l) a[l] = in.load(ptrdiff_t((r0 + kLegPos[l] * lr) * inStride + col));
    a[1] = cmul<V, INV>(a[1], w1r, w1i);
    a[2] = cmul<V, INV>(a[2], w2r, w2i);
    a[3] = cmul<V, INV>(a[3], w3r, w3i);
    bfly4<V, INV>(a[0], a[1], a[2], a[3]);
    for (int l = 0; l < 4; ++l) {
        if constexpr (SCALE) a[l] = cscale(a[l], sc);
        out.store(ptrdiff_t((r0 + l * lr) * outStride + col), a[l]);
    }
}

// The data form a C x R matrix (C = 2^b rows of R points, b = 4 or 8, each
// row already transformed, rows in bit-reversed order); the remaining b
// levels run down the columns, 64 columns (a strip) at a time, as b/4 phases
// of two radix-4 passes. A phase works on groups of 16 rows, rows s apart
// (s = 16^phase), which stay in the first-level cache: phase 0 reads the
// rows of the data, the last phase writes them back; in between the strip
// lives in buf (C x 64 samples).
//
// Twiddles are read straight through in this order: per strip, per phase,
// per twiddle set q < s (q = the group's first row mod s; groups of phase 0
// share the one set): the first pass's roots per column group (three per
// group), then the second pass's per row offset k < 4 and column group (three,
// or one in the very last pass, whose other two are its square and cube).
template <class V, bool INV, bool SCALE, class Data, class Out>
void columnPass(Data data, Out out, int b, size_t R, const typename V::type* tw,
                typename V::type* buf, typename V::type scale) {
    constexpr int W = V::N;
    using T = typename V::type;
    using R_ = typename V::R;
    const size_t C = size_t(1) << b;
    const size_t rg = R / W;
    const size_t sg = kStripPoints / W;
    const GroupBuf<V> bio = groupView<V>(buf);
    const R_ sc = V::set1(scale);
    const int phases = b / 4;
    for (size_t strip = 0; strip < rg; strip += sg) {
        const auto dataS = data.at(ptrdiff_t(strip));
        const auto outS = out.at(ptrdiff_t(strip));
        for (int ph = 0; ph < phases; ++ph) {
            const size_t s = size_t(1) << (4 * ph);
            const bool firstPh = ph == 0, lastPh = ph == phases - 1;
            const size_t setSize = sg * 6 * W + 4 * sg * (lastPh ? 2 : 6) * W;
            for (size_t grp = 0; grp < C / 16; ++grp) {
                const size_t base = ph == 0 ? 16 * grp : grp;  // b is 4 or 8
                const size_t q = base % s;
                const T* t = tw + q * setSize;
                // first pass of the phase: rows base + s (4 blk + l)
                for (size_t blk = 0; blk < 4; ++blk) {
                    const T* tb = t;
                    for (size_t cg = 0; cg < sg; ++cg, tb += 6 * W) {
                        const size_t r0 = base + s * 4 * blk;
                        if (firstPh)
                            columnButterfly<V, INV, false>(dataS, rg, bio, sg, r0, s, cg,
                                                           V::loada(tb), V::loada(tb + W),
                                                           V::loada(tb + 2 * W), V::loada(tb + 3 * W),
                                                           V::loada(tb + 4 * W), V::loada(tb + 5 * W),
                                                           sc);
                        else
                            columnButterfly<V, INV, false>(bio, sg, bio, sg, r0, s, cg,
                                                           V::loada(tb), V::loada(tb + W),
                                                           V::loada(tb + 2 * W), V::loada(tb + 3 * W),
                                                           V::loada(tb + 4 * W), V::loada(tb + 5 * W),
                                                           sc);
                    }
                }
                t += sg * 6 * W;
                // second pass: rows base + s (k + 4 l)
                for (size_t k = 0; k < 4; ++k) {
                    const size_t r0 = base + s * k;
                    for (size_t cg = 0; cg < sg; ++cg) {
                        if (!lastPh) {
                            columnButterfly<V, INV, false>(bio, sg, bio, sg, r0, 4 * s, cg,
                                                           V::loada(t), V::loada(t + W),
                                                           V::loada(t + 2 * W), V::loada(t + 3 * W),
                                                           V::loada(t + 4 * W), V::loada(t + 5 * W),
                                                           sc);
                            t += 6 * W;
                        } else {
                            const R_ w1r = V::loada(t), w1i = V::loada(t + W);
                            const R_ w2r = V::sub(V::mul(w1r, w1r), V::mul(w1i, w1i));
                            const R_ p = V::mul(w1r, w1i);
                            const R_ w2i = V::add(p, p);
                            const R_ w3r = V::sub(V::mul(w2r, w1r), V::mul(w2i, w1i));
                            const R_ w3i = V::add(V::mul(w2r, w1i), V::mul(w2i, w1r));
                            columnButterfly<V, INV, SCALE>(bio, sg, outS, rg, r0, 4 * s, cg, w1r,
                                                           w1i, w2r, w2i, w3r, w3i, sc);
                            t += 2 * W;
                        }
                    }
                }
            }
            tw += s * setSize;
        }
    }
}

// ---- 64 x 64 tile bit reversal -----------------------------------------------------

// Element i = a (N/64) + t 64 + c of tile t (row a, column c) belongs at
// rev(i) = rev6(c) (N/64) + rev(t) 64 + rev6(a): row rev6(c), column rev6(a)
// of the partner tile rev(t). The gather applies both 6-bit reversals
// (buf[rev6 a][rev6 c] = tile[a][c], a scatter inside one buffer row); what
// is left is a plain transpose on the way out. E is the element (4, 8 or 16
// bytes: one of two split arrays, or an interleaved complex sample).
struct Rev6 {
    std::uint8_t v[64];
    constexpr Rev6() : v() {
        for (int i = 0; i < 64; ++i) {
            int r = 0;
            for (int k = 0; k < 6; ++k) r |= ((i >> k) & 1) << (5 - k);
            v[i] = std::uint8_t(r);
        }
    }
};
inline constexpr Rev6 kRev6{};

// rev6(c + 1) = rev6(c) + 32 for even c, rev6(c + 2) = rev6(c) + 16 and
// rev6(c + 3) = rev6(c) + 48 for c a multiple of 4: a 16-byte load spreads
// over fixed places of the buffer row.
template <class E>
inline void tileGather(const E* x, size_t rowStride, E* buf, const std::uint8_t* rev6) {
    for (size_t a = 0; a < 64; ++a) {
        const E* row = x + a * rowStride;
        E* b = buf + size_t(rev6[a]) * 64;
        if constexpr (sizeof(E) == 8) {
            // Two elements per lane, each stored alone as one double.
            using L = Full<double>;
            using S = One<double>;
#pragma GCC unroll 32
            for (int c = 0; c < 64; c += 2) {
                const auto v = L::load(reinterpret_cast<const double*>(row + c));
                S::store(reinterpret_cast<double*>(b + kRev6.v[c]), v);
                S::store(reinterpret_cast<double*>(b + kRev6.v[c] + 32), L::dupIm(v));
            }
        } else if constexpr (sizeof(E) == 4) {
            // Four elements per lane; lane k is brought to the bottom and stored.
            using L = Full<float>;
            using S = One<float>;
#pragma GCC unroll 16
            for (int c = 0; c < 64; c += 4) {
                const auto v = L::load(reinterpret_cast<const float*>(row + c));
                const auto w = L::reversePairs(v);  // elements 2, 3, 0, 1
                S::store(reinterpret_cast<float*>(b + kRev6.v[c]), v);
                S::store(reinterpret_cast<float*>(b + kRev6.v[c] + 32), L::dupIm(v));
                S::store(reinterpret_cast<float*>(b + kRev6.v[c] + 16), w);
                S::store(reinterpret_cast<float*>(b + kRev6.v[c] + 48), L::dupIm(w));
            }
        } else {
            static_assert(sizeof(E) == 16);
            using L = Full<std::uint64_t>;
#pragma GCC unroll 64
            for (int c = 0; c < 64; ++c)
                L::storea(reinterpret_cast<std::uint64_t*>(b + kRev6.v[c]),
                          L::load(reinterpret_cast<const std::uint64_t*>(row + c)));
        }
    }
}

// x[r][c] = buf[c][r] for a 64 x 64 tile (rows of x rowStride elements apart).
template <class E>
inline void tileTransposeOut(const E* buf, E* x, size_t rowStride) {
    if constexpr (sizeof(E) == 16) {
        using L = Full<std::uint64_t>;
        for (size_t r = 0; r < 64; ++r)
            for (size_t c = 0; c < 64; ++c)
                L::store(reinterpret_cast<std::uint64_t*>(x + r * rowStride + c),
                         L::loada(reinterpret_cast<const std::uint64_t*>(buf + c * 64 + r)));
    } else {
        // Blocks of N x N elements, one element being one lane of L.
        using L = Full<std::conditional_t<sizeof(E) == 8, double, float>>;
        using T = typename L::type;
        static_assert(sizeof(E) == sizeof(T));
        constexpr size_t N = L::N;
        for (size_t r = 0; r < 64; r += N)
            for (size_t c = 0; c < 64; c += N) {
                typename L::R v[N];
                for (size_t i = 0; i < N; ++i)
                    v[i] = L::load(reinterpret_cast<const T*>(buf + (c + i) * 64 + r));
                L::transpose(v);
                for (size_t i = 0; i < N; ++i)
                    L::store(reinterpret_cast<T*>(x + (r + i) * rowStride + c), v[i]);
            }
    }
}

// Asks for the 64 rows of a tile ahead of use: rows are far apart and too
// many to be followed by the hardware prefetchers.
template <class E>
inline void prefetchTile(const E* x, size_t rowStride) {
    for (size_t a = 0; a < 64; ++a) {
        const char* row = reinterpret_cast<const char*>(x + a * rowStride);
        for (size_t off = 0; off < 64 * sizeof(E); off += 64) __builtin_prefetch(row + off, 0, 3);
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
        if (t + 1 < nt) {
            prefetchTile(x + (t + 1) * 64, rs);
            prefetchTile(x + size_t(partner[t + 1]) * 64, rs);
        }
        tileGather(x + t * 64, rs, buf, rev6);
        if (p == t) {
            tileTransposeOut(buf, x + t * 64, rs);
        } else {
            tileGather(x + p * 64, rs, buf2, rev6);
            tileTransposeOut(buf, x + p * 64, rs);
            tileTransposeOut(buf2, x + t * 64, rs);
        }
    }
}

// Out of place with 16-byte elements a whole tile (64 KiB) would not stay in
// the first-level cache, so a tile moves in four slices of 16 source columns
// (16 KiB). Column c = 16 j + c' of the source tile lands on destination row
// rev6(c) = 4 rev4(c') + rev2(j): a slice fills every fourth destination row,
// whole. The slice is gathered transposed (buf[rev4 c'][rev6 a]) and its 16
// buffer rows are copied out as they stand. (With 8-byte elements the whole
// tile, 32 KiB, moves as fast.)
template <class E>
void tileRevSlices(const E* x, size_t rowStride, E* y, const std::uint8_t* rev6, E* buf) {
    static_assert(sizeof(E) == 16);
    using L = Full<std::uint64_t>;  // one element per lane
    for (int j = 0; j < 4; ++j) {
        const E* xs = x + 16 * j;
        for (size_t a = 0; a < 64; ++a) {
            const E* row = xs + a * rowStride;
            E* b = buf + rev6[a];
#pragma GCC unroll 16
            for (int c = 0; c < 16; ++c)
                L::storea(reinterpret_cast<std::uint64_t*>(b + (kRev6.v[c] >> 2) * 64),
                          L::load(reinterpret_cast<const std::uint64_t*>(row + c)));
        }
        const size_t r0 = kRev6.v[j] >> 4;  // rev2(j)
        for (size_t c = 0; c < 16; ++c) {
            const E* b = buf + c * 64;
            E* out = y + (4 * c + r0) * rowStride;
#pragma GCC unroll 8
            for (int k = 0; k < 64; ++k)
                L::store(reinterpret_cast<std::uint64_t*>(out + k),
                         L::loada(reinterpret_cast<const std::uint64_t*>(b + k)));
        }
    }
}

template <class E>
void tileRevOutOfPlace(const E* src, E* dst, int m, const std::int32_t* partner,
                       const std::uint8_t* rev6, E* buf) {
    const size_t nt = size_t(1) << (m - 12);
    const size_t rs = (size_t(1) << m) / 64;
    for (size_t t = 0; t < nt; ++t) {
        if (t + 1 < nt) prefetchTile(src + size_t(partner[t + 1]) * 64, rs);
        if constexpr (sizeof(E) == 16) {
            tileRevSlices(src + size_t(partner[t]) * 64, rs, dst + t * 64, rev6, buf);
        } else {
            tileGather(src + size_t(partner[t]) * 64, rs, buf, rev6);
            tileTransposeOut(buf, dst + t * 64, rs);
        }
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

}  // namespace zvp::ZVP_LEVEL::fft

// Element-wise products of packed real spectra (Pack or Perm layout of N
// values): the values that stand for real spectrum entries (X[0], and X[N/2]
// for even N) multiply as reals, the (re, im) pairs as complex numbers.
//
//   Perm: index 0 real; for even N index 1 real; pairs from index 1 (odd N)
//         or 2 (even N).
//   Pack: index 0 real; pairs from index 1; for even N index N-1 real.
//
// MulPackConj multiplies the destination by the conjugate of the source:
// pSrcDst[k] := pSrcDst[k] * conj(pSrc[k]), the product a cross-correlation
// needs. Integer forms compute each result exactly and apply the library's
// scale rule (round to nearest, ties to even, saturate).
//
// An out-of-place call whose destination equals one of the sources runs the
// in-place form with the other source.
#include <cstdint>

#include "check.h"
#include "p8/fftreal.h"
#include "scale.h"
#include "lane.h"

namespace zvp::p8 {
namespace {

// ---- complex products of (re, im) pairs ---------------------------------
// d[j] = a[j] * b[j] (Conj: a[j] * conj(b[j])) for `pairs` pairs; the arrays
// may coincide element for element. The body runs on full lanes and the tail
// on one pair, with the same instructions: re = ar*br - ai*bi,
// im = ar*bi + ai*br.

template <class L, bool Conj, class T>
inline void mulPairsStep(const T* a, const T* b, T* d) {
    auto y = L::load(b);
    if constexpr (Conj) y = L::conj(y);
    L::store(d, L::cmul(L::load(a), y));
}

template <bool Conj, class T>
void mulPairsKernel(const T* a, const T* b, T* d, int pairs) {
    using F = Full<T>;
    constexpr int k = F::N / 2;  // pairs per register
    int j = 0;
    for (; j + 2 * k <= pairs; j += 2 * k) {
        mulPairsStep<F, Conj>(a + 2 * j, b + 2 * j, d + 2 * j);
        mulPairsStep<F, Conj>(a + 2 * j + 2 * k, b + 2 * j + 2 * k, d + 2 * j + 2 * k);
    }
    for (; j + k <= pairs; j += k) mulPairsStep<F, Conj>(a + 2 * j, b + 2 * j, d + 2 * j);
    for (; j < pairs; ++j) mulPairsStep<Pair<T>, Conj>(a + 2 * j, b + 2 * j, d + 2 * j);
}

// Integer pairs: exact products in 64 bits, then the scale rule.
template <bool Conj>
void mulPairsKernel(const Zvp16s* a, const Zvp16s* b, Zvp16s* d, int pairs, int sf) {
    for (int j = 0; j < pairs; ++j) {
        const std::int64_t ar = a[2 * j], ai = a[2 * j + 1];
        const std::int64_t br = b[2 * j], bi = Conj ? -std::int64_t(b[2 * j + 1]) : b[2 * j + 1];
        const std::int64_t re = ar * br - ai * bi;
        const std::int64_t im = ar * bi + ai * br;
        d[2 * j] = scaleRule<Zvp16s>(re, sf);
        d[2 * j + 1] = scaleRule<Zvp16s>(im, sf);
    }
}

// ---- layouts ---------------------------------------------------------------
// Where the reals and the pairs of a packed spectrum of n values sit.
struct Split {
    int firstPair;  // index of the first (re, im) pair
    int pairs;      // number of pairs
    int real2;      // index of the second real value, or -1
};

inline Split permSplit(int n) {
    return n % 2 == 0 ? Split{2, (n - 2) / 2, 1} : Split{1, (n - 1) / 2, -1};
}
inline Split packSplit(int n) {
    return n % 2 == 0 ? Split{1, (n - 2) / 2, n - 1} : Split{1, (n - 1) / 2, -1};
}

template <bool Conj, class T>
void mulPacked(const T* a, const T* b, T* d, int n, Split s) {
    // Reals first: d[0] may be a[0] or b[0], and nothing else reads them.
    d[0] = a[0] * b[0];
    if (s.real2 >= 0) d[s.real2] = a[s.real2] * b[s.real2];
    mulPairsKernel<Conj>(a + s.firstPair, b + s.firstPair, d + s.firstPair, s.pairs);
    (void)n;
}

template <bool Conj>
void mulPackedSfs(const Zvp16s* a, const Zvp16s* b, Zvp16s* d, int sf, Split s) {
    d[0] = scaleRule<Zvp16s>(std::int64_t(a[0]) * b[0], sf);
    if (s.real2 >= 0) d[s.real2] = scaleRule<Zvp16s>(std::int64_t(a[s.real2]) * b[s.real2], sf);
    mulPairsKernel<Conj>(a + s.firstPair, b + s.firstPair, d + s.firstPair, s.pairs, sf);
}

// ---- entry points ------------------------------------------------------------

template <Split (*Layout)(int), bool Conj, class T>
ZvpStatus mulI(const T* s, T* sd, int n) {
    ZVP_CHECK_PTRS(s, sd);
    ZVP_CHECK_LENS(n);
    // Conj conjugates the source: sd := sd * conj(s).
    mulPacked<Conj>(sd, s, sd, n, Layout(n));
    return zvpStsNoErr;
}

template <Split (*Layout)(int), class T>
ZvpStatus mul(const T* a, const T* b, T* d, int n) {
    if (d == a) return mulI<Layout, false>(b, d, n);
    if (d == b) return mulI<Layout, false>(a, d, n);
    ZVP_CHECK_PTRS(a, b, d);
    ZVP_CHECK_LENS(n);
    mulPacked<false>(a, b, d, n, Layout(n));
    return zvpStsNoErr;
}

template <Split (*Layout)(int)>
ZvpStatus mulISfs(const Zvp16s* s, Zvp16s* sd, int n, int sf) {
    ZVP_CHECK_PTRS(s, sd);
    ZVP_CHECK_LENS(n);
    mulPackedSfs<false>(sd, s, sd, sf, Layout(n));
    return zvpStsNoErr;
}

template <Split (*Layout)(int)>
ZvpStatus mulSfs(const Zvp16s* a, const Zvp16s* b, Zvp16s* d, int n, int sf) {
    if (d == a) return mulISfs<Layout>(b, d, n, sf);
    if (d == b) return mulISfs<Layout>(a, d, n, sf);
    ZVP_CHECK_PTRS(a, b, d);
    ZVP_CHECK_LENS(n);
    mulPackedSfs<false>(a, b, d, sf, Layout(n));
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_MUL_PACKED(NAME, LAYOUT, T)                                               \
    ZvpStatus zvpsMul##NAME##_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2,          \
                                   Zvp##T* pDst, int len) {                          \
        return mul<LAYOUT>(pSrc1, pSrc2, pDst, len);                                 \
    }                                                                                \
    ZvpStatus zvpsMul##NAME##_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) { \
        return mulI<LAYOUT, false>(pSrc, pSrcDst, len);                              \
    }
ZVP_MUL_PACKED(Pack, packSplit, 32f)
ZVP_MUL_PACKED(Pack, packSplit, 64f)
ZVP_MUL_PACKED(Perm, permSplit, 32f)
ZVP_MUL_PACKED(Perm, permSplit, 64f)
#undef ZVP_MUL_PACKED

#define ZVP_MUL_PACKED_SFS(NAME, LAYOUT)                                              \
    ZvpStatus zvpsMul##NAME##_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2,      \
                                      Zvp16s* pDst, int len, int scaleFactor) {      \
        return mulSfs<LAYOUT>(pSrc1, pSrc2, pDst, len, scaleFactor);                 \
    }                                                                                \
    ZvpStatus zvpsMul##NAME##_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, \
                                       int scaleFactor) {                            \
        return mulISfs<LAYOUT>(pSrc, pSrcDst, len, scaleFactor);                     \
    }
ZVP_MUL_PACKED_SFS(Pack, packSplit)
ZVP_MUL_PACKED_SFS(Perm, permSplit)
#undef ZVP_MUL_PACKED_SFS

ZvpStatus zvpsMulPackConj_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len) {
    return mulI<packSplit, true>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsMulPackConj_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len) {
    return mulI<packSplit, true>(pSrc, pSrcDst, len);
}

}  // namespace zvp::p8

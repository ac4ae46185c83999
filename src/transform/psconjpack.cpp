// Expansion of a packed real spectrum (Pack, Perm or CCS layout of N values)
// into the full conjugate-symmetric spectrum of N complex values:
//     destination[k] = X[k] for k <= N/2, destination[N-k] = conj(X[k]),
// with the imaginary parts of destination[0] and (even N) destination[N/2]
// written as 0 for Pack and Perm. CCS stores those zeros itself, and its
// first floor(N/2)+1 elements are copied as they stand.
//
// The in-place forms work from the middle outward: element N/2 first, then
// elements k and N-k for k from the top down, then the imaginary part of
// element 0, so that no packed value is overwritten before it has been read.
// An out-of-place call with equal source and destination runs in place.
//
// Integer forms negate with saturation: the conjugate of an imaginary part of
// -32768 is 32767.
#include <cstdint>
#include <cstring>

#include "check.h"
#include "p8/fftreal.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

// ---- conj of one pair, scalar ------------------------------------------

inline float negate(float v) { return -v; }
inline double negate(double v) { return -v; }
inline Zvp16s negate(Zvp16s v) { return v == -32768 ? Zvp16s(32767) : Zvp16s(-v); }

// ---- vector blocks of pairs --------------------------------------------
// Each Block<T> moves V consecutive (re, im) pairs: load() reads them from
// any address, store() writes them unchanged, storeConjRev() writes them in
// reverse pair order with every imaginary part negated.

template <class T>
struct Block;

template <>
struct Block<float> {
    static constexpr int V = 2;
    __m128 v;
    static Block load(const float* p) { return {_mm_loadu_ps(p)}; }
    void store(float* p) const { _mm_storeu_ps(p, v); }
    void storeConjRev(float* p) const {
        const __m128 sign = _mm_castsi128_ps(_mm_setr_epi32(0, INT32_MIN, 0, INT32_MIN));
        _mm_storeu_ps(p, _mm_xor_ps(_mm_shuffle_ps(v, v, _MM_SHUFFLE(1, 0, 3, 2)), sign));
    }
};

template <>
struct Block<double> {
    static constexpr int V = 1;
    __m128d v;
    static Block load(const double* p) { return {_mm_loadu_pd(p)}; }
    void store(double* p) const { _mm_storeu_pd(p, v); }
    void storeConjRev(double* p) const {
        _mm_storeu_pd(p, _mm_xor_pd(v, _mm_set_pd(-0.0, 0.0)));
    }
};

template <>
struct Block<Zvp16s> {
    static constexpr int V = 4;
    __m128i v;
    static Block load(const Zvp16s* p) { return {simd::loadu(p)}; }
    void store(Zvp16s* p) const { simd::storeu(p, v); }
    void storeConjRev(Zvp16s* p) const {
        const __m128i r = _mm_shuffle_epi32(v, _MM_SHUFFLE(0, 1, 2, 3));
        const __m128i neg = _mm_subs_epi16(_mm_setzero_si128(), r);
        simd::storeu(p, _mm_blend_epi16(r, neg, 0xAA));
    }
};

// d[j] = conj(s[count-1-j]) for j < count, pairs of T; s and d do not overlap.
template <class T>
void conjFlipPairs(const T* s, T* d, int count) {
    constexpr int V = Block<T>::V;
    int j = 0;
    for (; j + V <= count; j += V)
        Block<T>::load(s + 2 * (count - V - j)).storeConjRev(d + 2 * j);
    for (; j < count; ++j) {
        const T* p = s + 2 * (count - 1 - j);
        d[2 * j] = p[0];
        d[2 * j + 1] = negate(p[1]);
    }
}

// Pack and Perm expansion. Pair k (k = 1 .. (N-1)/2) is read at s + 2k + off,
// where off is -1 for Pack (and for Perm of odd length, which is the same
// layout) and 0 for Perm of even length; for even N the real value X[N/2]
// sits at s[mid]. s may equal d.
template <class T>
void expandPacked(const T* s, T* d, int n, int off, int mid) {
    constexpr int V = Block<T>::V;
    if (n % 2 == 0) {
        const T m = s[mid];
        d[n] = m;
        d[n + 1] = T(0);
    }
    int k = (n - 1) / 2;
    // Blocks of pairs k-V+1 .. k, from the top down. In place, the store at
    // pair k-V+1 reaches up to value 2k+1, which an earlier block has read,
    // and the mirrored pairs N-k .. land above every packed value.
    for (; k >= V; k -= V) {
        const auto b = Block<T>::load(s + 2 * (k - V + 1) + off);
        b.store(d + 2 * (k - V + 1));
        b.storeConjRev(d + 2 * (n - k));
    }
    for (; k >= 1; --k) {
        const T re = s[2 * k + off];
        const T im = s[2 * k + off + 1];
        d[2 * k] = re;
        d[2 * k + 1] = im;
        d[2 * (n - k)] = re;
        d[2 * (n - k) + 1] = negate(im);
    }
    d[0] = s[0];
    d[1] = T(0);
}

template <class T>
void expandPack(const T* s, T* d, int n) {
    expandPacked(s, d, n, -1, n - 1);
}

template <class T>
void expandPerm(const T* s, T* d, int n) {
    expandPacked(s, d, n, n % 2 == 0 ? 0 : -1, 1);
}

// CCS: copy pairs 0 .. n/2, then the conjugate flip of pairs 1 onward.
template <class T>
void expandCcs(const T* s, T* d, int n) {
    const int half = n / 2;
    if (s != d) std::memcpy(d, s, sizeof(T) * 2 * std::size_t(half + 1));
    const int count = n - 1 - half;
    if (count > 0) conjFlipPairs(s + 2, d + 2 * (half + 1), count);
}

// ---- entry points --------------------------------------------------------

template <class T, void (*Expand)(const T*, T*, int)>
ZvpStatus expandI(T* v, int n) {
    ZVP_CHECK_PTRS(v);
    ZVP_CHECK_LENS(n);
    Expand(v, v, n);
    return zvpStsNoErr;
}

template <class T, void (*Expand)(const T*, T*, int)>
ZvpStatus expand(const T* s, T* d, int n) {
    if (s == d) return expandI<T, Expand>(d, n);
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(n);
    Expand(s, d, n);
    return zvpStsNoErr;
}

template <class C>
auto* scalars(C* p) {
    return reinterpret_cast<decltype(p->re)*>(p);
}
template <class C>
const auto* scalars(const C* p) {
    return reinterpret_cast<const decltype(p->re)*>(p);
}

}  // namespace

#define ZVP_CONJ_PACKED(NAME, KERNEL, CT, ST)                                     \
    ZvpStatus zvpsConj##NAME##_##CT(const ST* pSrc, Zvp##CT* pDst, int lenDst) {  \
        using T = decltype(pDst->re);                                             \
        return expand<T, KERNEL<T>>(reinterpret_cast<const T*>(pSrc),             \
                                    scalars(pDst), lenDst);                       \
    }                                                                             \
    ZvpStatus zvpsConj##NAME##_##CT##_I(Zvp##CT* pSrcDst, int lenDst) {           \
        using T = decltype(pSrcDst->re);                                          \
        return expandI<T, KERNEL<T>>(scalars(pSrcDst), lenDst);                   \
    }

ZVP_CONJ_PACKED(Pack, expandPack, 32fc, Zvp32f)
ZVP_CONJ_PACKED(Pack, expandPack, 64fc, Zvp64f)
ZVP_CONJ_PACKED(Pack, expandPack, 16sc, Zvp16s)
ZVP_CONJ_PACKED(Perm, expandPerm, 32fc, Zvp32f)
ZVP_CONJ_PACKED(Perm, expandPerm, 64fc, Zvp64f)
ZVP_CONJ_PACKED(Perm, expandPerm, 16sc, Zvp16s)
ZVP_CONJ_PACKED(Ccs, expandCcs, 32fc, Zvp32fc)
ZVP_CONJ_PACKED(Ccs, expandCcs, 64fc, Zvp64fc)
ZVP_CONJ_PACKED(Ccs, expandCcs, 16sc, Zvp16sc)
#undef ZVP_CONJ_PACKED

}  // namespace zvp::p8

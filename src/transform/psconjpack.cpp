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
#include <type_traits>

#include "check.h"
#include "lane.h"
#include "p8/fftreal.h"

namespace zvp::p8 {
namespace {

// ---- lanes of pairs ------------------------------------------------------
// conj() negates the imaginary part of every (re, im) pair in a lane (with
// saturation for integers: the conjugate of -32768 is 32767); conjRev() also
// reverses the order of the pairs of a full lane. The tails use the same
// operations on a lane of one pair.

template <class L>
typename L::R conj(typename L::R v) {
    if constexpr (std::is_floating_point_v<typename L::type>) return L::conj(v);
    else return L::blend(v, L::subs(L::zero(), v), L::pair(0, -1));
}

template <class T>
typename Full<T>::R conjRev(typename Full<T>::R v) {
    using L = Full<T>;
    if constexpr (std::is_floating_point_v<T>) {
        return conj<L>(L::reversePairs(v));
    } else {
        static_assert(sizeof(T) == 2);  // a pair of 16-bit values is one 32-bit lane
        return conj<L>(Full<std::int32_t>::reverse(v));
    }
}

// d[j] = conj(s[count-1-j]) for j < count, pairs of T; s and d do not overlap.
template <class T>
void conjFlipPairs(const T* s, T* d, int count) {
    using L = Full<T>;
    using P = Pair<T>;
    constexpr int V = L::N / 2;  // pairs per full lane
    int j = 0;
    for (; j + V <= count; j += V) L::store(d + 2 * j, conjRev<T>(L::load(s + 2 * (count - V - j))));
    for (; j < count; ++j) P::store(d + 2 * j, conj<P>(P::load(s + 2 * (count - 1 - j))));
}

// Pack and Perm expansion. Pair k (k = 1 .. (N-1)/2) is read at s + 2k + off,
// where off is -1 for Pack (and for Perm of odd length, which is the same
// layout) and 0 for Perm of even length; for even N the real value X[N/2]
// sits at s[mid]. s may equal d.
template <class T>
void expandPacked(const T* s, T* d, int n, int off, int mid) {
    using L = Full<T>;
    using P = Pair<T>;
    constexpr int V = L::N / 2;  // pairs per full lane
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
        const auto b = L::load(s + 2 * (k - V + 1) + off);
        L::store(d + 2 * (k - V + 1), b);
        L::store(d + 2 * (n - k), conjRev<T>(b));
    }
    for (; k >= 1; --k) {
        const auto b = P::load(s + 2 * k + off);
        P::store(d + 2 * k, b);
        P::store(d + 2 * (n - k), conj<P>(b));
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

// Sum and Mean of every type.
//
//  * Single-precision data with the fast hint: sixteen single-precision
//    partial sums (four vectors of four lanes; a complex vector two pairs
//    per register). Any other hint: each value widened to double, blocks
//    of 16 values summed in double and the blocks gathered in double-double
//    partial sums, so the sum is within 2^-51 of the sum of magnitudes
//    before its one final rounding.
//  * Double-precision data: eight double partial sums.
//  * Integers: exact sums (reduce_int.h) scaled by the common rule; the
//    mean's own rounding is meanScaled's.
// The mean of float data divides the sum by len in double precision.
#include <cstddef>
#include <utility>

#include "check.h"
#include "p8/stats.h"
#include "reduce_float.h"
#include "reduce_int.h"

namespace zvp::p8 {
namespace {

template <class T>
struct PlainSum {
    const T* p;
    red::Acc<T> acc;
    template <class L, int u>
    void step(std::ptrdiff_t i) { acc.template add<u>(L::load(p + i)); }
};

// The (re, im) sums of n values of T (the two halves of a real sum).
template <class T, int U>
std::pair<T, T> plainSum(const T* p, std::ptrdiff_t n) {
    PlainSum<T> k{p, {}};
    red::drive<T, U>(k, n);
    return k.acc.pairs();
}

// Blocks of 16 values are summed in double (a tree of depth 3) before they
// enter the double-double sums; single vectors and the tail in pairs.
struct AccurateSum {
    const float* p;
    red::AccDD acc;
    template <int u>
    void block(std::ptrdiff_t i) {
        Full<double>::R t[8];
        red::widen16(p + i, t);
        acc.template add<u>(red::tree8(t));
    }
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        Full<double>::R lo, hi;
        red::widen<L>(L::load(p + i), lo, hi);
        acc.template add<u>(Full<double>::add(lo, hi));
    }
};

template <int U>
std::pair<double, double> accurateSum(const float* p, std::ptrdiff_t n) {
    AccurateSum k{p, {}};
    red::driveBlocks<U>(k, n);
    return k.acc.pairs();
}

inline bool fast(ZvpHintAlgorithm h) { return h == zvpAlgHintFast; }

// Sum or mean (Div) of single-precision reals or pairs, in double: the
// sum divided by len when Div.
template <bool Div, bool Cplx>
std::pair<double, double> floatSum(const float* p, std::ptrdiff_t len, ZvpHintAlgorithm hint) {
    constexpr int U = Cplx ? 2 : 1;
    const std::ptrdiff_t n = Cplx ? 2 * len : len;
    std::pair<double, double> s;
    if (fast(hint)) {
        const auto f = plainSum<float, U>(p, n);
        s = Cplx ? std::pair<double, double>(f.first, f.second) : std::pair<double, double>(f.first + f.second, 0);
    } else {
        s = accurateSum<U>(p, n);
        if (!Cplx) s = {s.first + s.second, 0};
    }
    if (Div) s = {s.first / double(len), s.second / double(len)};
    return s;
}

template <bool Div>
ZvpStatus sum32f(const Zvp32f* pSrc, int len, Zvp32f* pDst, ZvpHintAlgorithm hint) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    *pDst = Zvp32f(floatSum<Div, false>(pSrc, len, hint).first);
    return zvpStsNoErr;
}

template <bool Div>
ZvpStatus sum32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pDst, ZvpHintAlgorithm hint) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const auto s = floatSum<Div, true>(reinterpret_cast<const float*>(pSrc), len, hint);
    *pDst = {Zvp32f(s.first), Zvp32f(s.second)};
    return zvpStsNoErr;
}

template <bool Div>
ZvpStatus sum64f(const Zvp64f* pSrc, int len, Zvp64f* pDst) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const auto s = plainSum<double, 1>(pSrc, len);
    const double t = s.first + s.second;
    *pDst = Div ? t / double(len) : t;
    return zvpStsNoErr;
}

template <bool Div>
ZvpStatus sum64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pDst) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const auto s = plainSum<double, 2>(reinterpret_cast<const double*>(pSrc), 2 * std::ptrdiff_t(len));
    *pDst = Div ? Zvp64fc{s.first / double(len), s.second / double(len)} : Zvp64fc{s.first, s.second};
    return zvpStsNoErr;
}

// Exact integer sums by parity.
inline red::Pair64 intSums(const Zvp16s* p, std::ptrdiff_t n) { return red::sums16<false>(p, n); }
inline red::Pair64 intSums(const Zvp32s* p, std::ptrdiff_t n) { return red::sums32(p, n); }

template <class D, bool Div, class S>
ZvpStatus sumInt(const S* pSrc, int len, D* pDst, int sf) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const auto s = intSums(pSrc, len);
    const std::int64_t t = s.even + s.odd;
    *pDst = Div ? red::meanScaled<D>(t, len, sf) : scaleRule<D>(t, sf);
    return zvpStsNoErr;
}

template <class P, bool Div, class C, class S>
ZvpStatus sumIntC(const S* pSrc, int len, C* pDst, int sf) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const auto s = intSums(reinterpret_cast<const Zvp16s*>(pSrc), 2 * std::ptrdiff_t(len));
    if (Div) *pDst = {red::meanScaled<P>(s.even, len, sf), red::meanScaled<P>(s.odd, len, sf)};
    else *pDst = {scaleRule<P>(s.even, sf), scaleRule<P>(s.odd, sf)};
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsSum_32f(const Zvp32f* pSrc, int len, Zvp32f* pSum, ZvpHintAlgorithm hint) {
    return sum32f<false>(pSrc, len, pSum, hint);
}
ZvpStatus zvpsSum_32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pSum, ZvpHintAlgorithm hint) {
    return sum32fc<false>(pSrc, len, pSum, hint);
}
ZvpStatus zvpsSum_64f(const Zvp64f* pSrc, int len, Zvp64f* pSum) { return sum64f<false>(pSrc, len, pSum); }
ZvpStatus zvpsSum_64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pSum) { return sum64fc<false>(pSrc, len, pSum); }
ZvpStatus zvpsSum_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pSum, int scaleFactor) {
    return sumInt<Zvp16s, false>(pSrc, len, pSum, scaleFactor);
}
ZvpStatus zvpsSum_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pSum, int scaleFactor) {
    return sumInt<Zvp32s, false>(pSrc, len, pSum, scaleFactor);
}
ZvpStatus zvpsSum_32s_Sfs(const Zvp32s* pSrc, int len, Zvp32s* pSum, int scaleFactor) {
    return sumInt<Zvp32s, false>(pSrc, len, pSum, scaleFactor);
}
ZvpStatus zvpsSum_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pSum, int scaleFactor) {
    return sumIntC<Zvp16s, false>(pSrc, len, pSum, scaleFactor);
}
ZvpStatus zvpsSum_16sc32sc_Sfs(const Zvp16sc* pSrc, int len, Zvp32sc* pSum, int scaleFactor) {
    return sumIntC<Zvp32s, false>(pSrc, len, pSum, scaleFactor);
}

ZvpStatus zvpsMean_32f(const Zvp32f* pSrc, int len, Zvp32f* pMean, ZvpHintAlgorithm hint) {
    return sum32f<true>(pSrc, len, pMean, hint);
}
ZvpStatus zvpsMean_32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pMean, ZvpHintAlgorithm hint) {
    return sum32fc<true>(pSrc, len, pMean, hint);
}
ZvpStatus zvpsMean_64f(const Zvp64f* pSrc, int len, Zvp64f* pMean) { return sum64f<true>(pSrc, len, pMean); }
ZvpStatus zvpsMean_64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pMean) { return sum64fc<true>(pSrc, len, pMean); }
ZvpStatus zvpsMean_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pMean, int scaleFactor) {
    return sumInt<Zvp16s, true>(pSrc, len, pMean, scaleFactor);
}
ZvpStatus zvpsMean_32s_Sfs(const Zvp32s* pSrc, int len, Zvp32s* pMean, int scaleFactor) {
    return sumInt<Zvp32s, true>(pSrc, len, pMean, scaleFactor);
}
ZvpStatus zvpsMean_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pMean, int scaleFactor) {
    return sumIntC<Zvp16s, true>(pSrc, len, pMean, scaleFactor);
}

}  // namespace zvp::p8

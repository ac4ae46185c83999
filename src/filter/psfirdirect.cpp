// Stateless FIR filters over a caller-owned doubled delay line, for every
// taps/data pairing: block (FIR*_Direct_*) and one-sample (FIROne*_Direct_*)
// forms, out of place and in place.
//
// A call never updates the delay line sample by sample. It first stores the
// last min(numIters, tapsLen) inputs in the copy of their final slot that no
// output of the call reads, then computes the outputs from the last to the
// first (so an in-place call overwrites an input only after every output
// that needs it), and finally copies those slots into the other half. The
// first tapsLen-1 outputs read their older samples from the delay line and
// the rest of their window from the source; later outputs read the source
// only. The one-sample forms are the block form with one sample.
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "check.h"
#include "firdirect_kernel.h"
#include "fpguard.h"
#include "int128.h"
#include "p8/firdirect.h"
#include "scale.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace {

using firdirect::Dot;
using firdirect::Elem;
using firdirect::IntDot;

// The checks after the data pointers and the count, in order: taps null,
// tapsLen < 1, delay line or index null, index outside 0 .. tapsLen-1.
template <class T, class D>
ZvpStatus checkFilter(const T* taps, int len, const D* dly, const int* pIdx) {
    if (taps == nullptr) return zvpStsNullPtrErr;
    if (len < 1) return zvpStsFIRLenErr;
    if (dly == nullptr || pIdx == nullptr) return zvpStsNullPtrErr;
    if (*pIdx < 0 || *pIdx >= len) return zvpStsDlyLineIndexErr;
    return zvpStsNoErr;
}

// Runs n samples through the filter f (see the file comment). Slot q of the
// ring has the copies q and q + len; with i0 the starting index, the outputs
// read only the copies i0+1 .. i0+len-1, so copy q is free for q <= i0 and
// copy q + len for q > i0.
template <class D, class F>
void run(const D* src, D* dst, std::ptrdiff_t n, std::ptrdiff_t len, D* dly, int* pIdx, const F& f) {
    const std::ptrdiff_t i0 = *pIdx;
    const std::ptrdiff_t kept = n < len ? n : len;
    const std::ptrdiff_t q0 = std::ptrdiff_t(((long long)i0 + (n - kept)) % len);
    for (std::ptrdiff_t t = n - kept, q = q0; t < n; ++t) {
        dly[q <= i0 ? q : q + len] = src[t];
        if (++q == len) q = 0;
    }
    if (n > len - 1) f.bulk(src, dst, len - 1, n);
    for (std::ptrdiff_t t = (n < len - 1 ? n : len - 1) - 1; t >= 0; --t)
        dst[t] = f.one(dly + (i0 + t + 1), len - 1 - t, src);
    for (std::ptrdiff_t t = n - kept, q = q0; t < n; ++t) {
        if (q <= i0) dly[q + len] = dly[q];
        else dly[q] = dly[q + len];
        if (++q == len) q = 0;
    }
    *pIdx = int(((long long)i0 + n) % len);
}

// Outputs lo .. hi-1 of whole windows in the source, last first, two at a
// time: an output is written only after every window that reads its input.
template <class D, class F>
void bulkDirect(const F& f, const D* src, D* dst, std::ptrdiff_t len, std::ptrdiff_t lo, std::ptrdiff_t hi) {
    std::ptrdiff_t t = hi - 1;
    for (; t - 1 >= lo; t -= 2) {
        D o[2];
        f.two(src + (t - len), o);
        dst[t - 1] = o[0];
        dst[t] = o[1];
    }
    if (t == lo) dst[t] = f.one(src + (t - len + 1), len, nullptr);
}

// Element conversion into the accumulator type (exact).
template <class A, class E>
inline A toAcc(const E& v) {
    using S = typename Elem<A>::S;
    if constexpr (Elem<A>::K == 2) return A{S(v.re), S(v.im)};
    else return A(v);
}

// Floating-point taps: the dot product in A, then the output type D (a
// float rounded once, or an integer by the scale rule).
template <class A, class T, class D>
struct FloatFilter {
    using K = Dot<A, T, D>;
    const T* taps;
    std::ptrdiff_t len;
    int sf;

    D fin(const A& s) const {
        using DS = typename Elem<D>::S;
        if constexpr (std::is_floating_point_v<DS>) {
            if constexpr (Elem<D>::K == 2) return D{DS(s.re), DS(s.im)};
            else return DS(s);
        } else {
            if constexpr (Elem<D>::K == 2) return D{firdirect::toInt<DS>(s.re, sf), firdirect::toInt<DS>(s.im, sf)};
            else return firdirect::toInt<DS>(s, sf);
        }
    }
    D one(const D* a, std::ptrdiff_t na, const D* b) const { return fin(K::one(taps, len, a, na, b)); }
    void two(const D* w, D* o) const {
        A s[2];
        K::two(taps, len, w, s);
        o[0] = fin(s[0]);
        o[1] = fin(s[1]);
    }

    // Long runs convert the taps and, a chunk at a time, the source into
    // the accumulator type first, so the kernel loads instead of converting
    // every sample once per window. The values are the same (every
    // conversion is exact), so the results are too. Without the memory the
    // run is filtered straight from the source.
    void bulk(const D* src, D* dst, std::ptrdiff_t lo, std::ptrdiff_t hi) const {
        constexpr std::ptrdiff_t kChunk = 1024;
        const std::ptrdiff_t count = hi - lo, chunk = count < kChunk ? count : kChunk;
        const long long bytes = (2LL * len + chunk + 8) * (long long)sizeof(A);
        WorkBuffer wb;
        if (count < 32 || bytes > 0x7fffffffLL || !wb.allocate(int(bytes))) {
            bulkDirect<D>(*this, src, dst, len, lo, hi);
            return;
        }
        A* ht = alignUp(wb.as<A>(), 16);
        A* buf = ht + len;
        for (std::ptrdiff_t k = 0; k < len; ++k) ht[k] = toAcc<A>(taps[k]);
        for (std::ptrdiff_t top = hi; top > lo; top -= chunk) {
            const std::ptrdiff_t bot = top - chunk > lo ? top - chunk : lo;
            const D* s0 = src + (bot - len + 1);
            for (std::ptrdiff_t i = 0, m = top - bot + len - 1; i < m; ++i) buf[i] = toAcc<A>(s0[i]);
            std::ptrdiff_t t = top - 1;
            for (; t - 1 >= bot; t -= 2) {
                A s[2];
                Dot<A, A, A>::two(ht, len, buf + (t - 1 - bot), s);
                dst[t - 1] = fin(s[0]);
                dst[t] = fin(s[1]);
            }
            if (t == bot) dst[t] = fin(Dot<A, A, A>::one(ht, len, buf, len, nullptr));
        }
    }
};

// Integer taps: the exact sum, then the scale rule with the total shift.
template <class T, class D>
struct IntFilter {
    using K = IntDot<T, D>;
    const T* taps;
    std::ptrdiff_t len;
    int shift;

    D one(const D* a, std::ptrdiff_t na, const D* b) const {
        using DS = typename Elem<D>::S;
        const typename K::Out s = K::one(taps, len, a, na, b);
        if constexpr (Elem<D>::K == 2) return D{scaleRule<DS>(s.re, shift), scaleRule<DS>(s.im, shift)};
        else return scaleRule<DS>(s.re, shift);
    }
    void two(const D* w, D* o) const {
        o[0] = one(w, len, nullptr);
        o[1] = one(w + 1, len, nullptr);
    }
    void bulk(const D* src, D* dst, std::ptrdiff_t lo, std::ptrdiff_t hi) const {
        bulkDirect<D>(*this, src, dst, len, lo, hi);
    }
};

template <class D>
constexpr bool isIntData = !std::is_floating_point_v<typename Elem<D>::S>;

template <class A, class T, class D>
ZvpStatus runFloat(const D* src, D* dst, int n, const T* taps, int len, D* dly, int* pIdx, int sf) {
    const FloatFilter<A, T, D> f{taps, len, sf};
    if constexpr (isIntData<D>) {
        // Integer results must not depend on the caller's rounding mode or
        // flush settings.
        MxcsrGuard guard(MxcsrGuard::kNearest);
        run(src, dst, n, len, dly, pIdx, f);
    } else {
        run(src, dst, n, len, dly, pIdx, f);
    }
    return zvpStsNoErr;
}

template <class A, class T, class D>
ZvpStatus blockFloat(const D* src, D* dst, int n, const T* taps, int len, D* dly, int* pIdx, int sf) {
    ZVP_CHECK_PTRS(src, dst);
    ZVP_CHECK_LENS(n);
    ZVP_RETURN_IF_ERROR(checkFilter(taps, len, dly, pIdx));
    return runFloat<A>(src, dst, n, taps, len, dly, pIdx, sf);
}

template <class A, class T, class D>
ZvpStatus oneFloat(const D* src, D* dst, const T* taps, int len, D* dly, int* pIdx, int sf) {
    ZVP_CHECK_PTRS(src, dst);
    ZVP_RETURN_IF_ERROR(checkFilter(taps, len, dly, pIdx));
    return runFloat<A>(src, dst, 1, taps, len, dly, pIdx, sf);
}

// The total shift of the integer-taps forms, clamped where every result is
// already 0 or saturated.
inline int clampShift(long long s) { return s > 1000 ? 1000 : s < -1000 ? -1000 : int(s); }

template <class T, class D>
ZvpStatus blockInt(const D* src, D* dst, int n, const T* taps, int len, D* dly, int* pIdx, long long shift) {
    ZVP_CHECK_PTRS(src, dst);
    ZVP_CHECK_LENS(n);
    ZVP_RETURN_IF_ERROR(checkFilter(taps, len, dly, pIdx));
    run(src, dst, n, len, dly, pIdx, IntFilter<T, D>{taps, len, clampShift(shift)});
    return zvpStsNoErr;
}

template <class T, class D>
ZvpStatus oneInt(const D* src, D* dst, const T* taps, int len, D* dly, int* pIdx, long long shift) {
    ZVP_CHECK_PTRS(src, dst);
    ZVP_RETURN_IF_ERROR(checkFilter(taps, len, dly, pIdx));
    run(src, dst, 1, len, dly, pIdx, IntFilter<T, D>{taps, len, clampShift(shift)});
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsFIR_Direct_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, const Zvp32f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<double>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_32f_I(Zvp32f* pSrcDst, int numIters, const Zvp32f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<double>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_32f(Zvp32f src, Zvp32f* pDstVal, const Zvp32f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<double>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_32f_I(Zvp32f* pSrcDst, const Zvp32f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<double>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, const Zvp32fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<Zvp32fc>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_32fc_I(Zvp32fc* pSrcDst, int numIters, const Zvp32fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<Zvp32fc>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_32fc(Zvp32fc src, Zvp32fc* pDstVal, const Zvp32fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<Zvp32fc>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_32fc_I(Zvp32fc* pSrcDst, const Zvp32fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<Zvp32fc>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_64f(const Zvp64f* pSrc, Zvp64f* pDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp64f* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<double>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_64f_I(Zvp64f* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp64f* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<double>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_64f(Zvp64f src, Zvp64f* pDstVal, const Zvp64f* pTaps, int tapsLen, Zvp64f* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<double>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_64f_I(Zvp64f* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp64f* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<double>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp64fc* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<Zvp64fc>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_64fc_I(Zvp64fc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp64fc* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<Zvp64fc>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_64fc(Zvp64fc src, Zvp64fc* pDstVal, const Zvp64fc* pTaps, int tapsLen, Zvp64fc* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<Zvp64fc>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne_Direct_64fc_I(Zvp64fc* pSrcDst, const Zvp64fc* pTaps, int tapsLen, Zvp64fc* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<Zvp64fc>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR64f_Direct_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<double>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR64f_Direct_32f_I(Zvp32f* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<double>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne64f_Direct_32f(Zvp32f src, Zvp32f* pDstVal, const Zvp64f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<double>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne64f_Direct_32f_I(Zvp32f* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<double>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR64fc_Direct_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<Zvp64fc>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR64fc_Direct_32fc_I(Zvp32fc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return blockFloat<Zvp64fc>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne64fc_Direct_32fc(Zvp32fc src, Zvp32fc* pDstVal, const Zvp64fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<Zvp64fc>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIROne64fc_Direct_32fc_I(Zvp32fc* pSrcDst, const Zvp64fc* pTaps, int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex) {
    return oneFloat<Zvp64fc>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, 0);
}

ZvpStatus zvpsFIR_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp16s* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockInt(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)scaleFactor);
}

ZvpStatus zvpsFIR_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp16s* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockInt(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)scaleFactor);
}

ZvpStatus zvpsFIROne_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp16s* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneInt(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)scaleFactor);
}

ZvpStatus zvpsFIROne_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp16s* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneInt(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)scaleFactor);
}

ZvpStatus zvpsFIR32f_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp32f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<float>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR32f_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp32f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<float>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne32f_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp32f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<float>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne32f_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp32f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<float>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR32fc_Direct_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, const Zvp32fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<Zvp32fc>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR32fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, const Zvp32fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<Zvp32fc>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne32fc_Direct_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, const Zvp32fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<Zvp32fc>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne32fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, const Zvp32fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<Zvp32fc>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64f_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<double>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64f_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<double>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64f_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp64f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<double>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64f_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<double>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64fc_Direct_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<Zvp64fc>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<Zvp64fc>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64fc_Direct_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, const Zvp64fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<Zvp64fc>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, const Zvp64fc* pTaps, int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<Zvp64fc>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64f_Direct_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<double>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64f_Direct_32s_ISfs(Zvp32s* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen, Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<double>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64f_Direct_32s_Sfs(Zvp32s src, Zvp32s* pDstVal, const Zvp64f* pTaps, int tapsLen, Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<double>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64f_Direct_32s_ISfs(Zvp32s* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<double>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64fc_Direct_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc* pDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<Zvp64fc>(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR64fc_Direct_32sc_ISfs(Zvp32sc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen, Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockFloat<Zvp64fc>(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64fc_Direct_32sc_Sfs(Zvp32sc src, Zvp32sc* pDstVal, const Zvp64fc* pTaps, int tapsLen, Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<Zvp64fc>(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIROne64fc_Direct_32sc_ISfs(Zvp32sc* pSrcDst, const Zvp64fc* pTaps, int tapsLen, Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneFloat<Zvp64fc>(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, scaleFactor);
}

ZvpStatus zvpsFIR32s_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp32s* pTaps, int tapsLen, int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockInt(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIR32s_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp32s* pTaps, int tapsLen, int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockInt(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIROne32s_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp32s* pTaps, int tapsLen, int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneInt(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIROne32s_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp32s* pTaps, int tapsLen, int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneInt(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIR32sc_Direct_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, const Zvp32sc* pTaps, int tapsLen, int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockInt(pSrc, pDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIR32sc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, const Zvp32sc* pTaps, int tapsLen, int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return blockInt(pSrcDst, pSrcDst, numIters, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIROne32sc_Direct_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, const Zvp32sc* pTaps, int tapsLen, int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneInt(&src, pDstVal, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

ZvpStatus zvpsFIROne32sc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, const Zvp32sc* pTaps, int tapsLen, int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor) {
    return oneInt(pSrcDst, pSrcDst, pTaps, tapsLen, pDlyLine, pDlyLineIndex, (long long)tapsFactor + scaleFactor);
}

}  // namespace zvp::p8

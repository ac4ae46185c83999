// Cross- and auto-correlation, with and without normalisation.
//
// Correlation at lag l is sum_k conj(a[k]) b[k + l] (the conjugate only
// matters for complex data). Lags at which the vectors do not overlap are
// zeros, written first and without computing or allocating. The remaining
// run of lags goes to the direct multiply-accumulate kernel or to the FFT by
// fixed per-type thresholds, because the two methods round differently.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "fftconv.h"
#include "mac_kernel.h"
#include "p8/convert.h"
#include "p8/corr.h"
#include "p8/frame.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace {

using mac::isComplex;

template <class E>
struct Thr;
// Cross-correlation: FFT when the truncated float value of
// Lmin * D / Lmax exceeds cross. Auto-correlation: direct while
// min(srcLen, dstLen) is below autoDirect.
template <>
struct Thr<float> {
    static constexpr int cross = 383, autoDirect = 856;
};
template <>
struct Thr<double> {
    static constexpr int cross = 511, autoDirect = 856;
};
template <>
struct Thr<Zvp32fc> {
    static constexpr int cross = 255, autoDirect = 152;
};
template <>
struct Thr<Zvp64fc> {
    static constexpr int cross = 511, autoDirect = 368;
};

// The normalising auto-correlation with the automatic selector takes the FFT
// from this many outputs on, whatever the type.
constexpr int kAutoNormFft = 856;

template <class E>
inline void zeroFill(E* p, long long n) {
    if (n > 0) std::memset(static_cast<void*>(p), 0, std::size_t(n) * sizeof(E));
}

// The run of lags that needs computing: the first `lead` outputs (lags left
// of any overlap) and everything from lead + count on (lags at or beyond
// src2Len) are zeros; count outputs from lag `lag` on are computed.
struct Lags {
    long long lead, lag, count;
};

inline Lags trimLags(int n1, int n2, int dstLen, int lowLag) {
    const long long len = dstLen;
    const long long lead = std::max(0LL, std::min(len, 1 - ((long long)lowLag + n1)));
    const long long lag = (long long)lowLag + lead;
    const long long count = std::min(len - lead, std::max((long long)n2 - lag, 0LL));
    return {lead, lag, count};
}

template <class E>
inline void writeZeroRuns(E* dst, int dstLen, const Lags& t) {
    zeroFill(dst, t.lead);
    zeroFill(dst + t.lead + t.count, dstLen - t.lead - t.count);
}

// The truncated single-precision value of Lmin * count / Lmax.
inline long long crossMetric(int n1, int n2, long long count) {
    const float lmin = float(std::min(n1, n2));
    const float lmax = float(std::max(n1, n2));
    const float prod = lmin * float(count);
    const float v = prod / lmax;
    return (long long)v;
}

enum class Method { Direct, Single, Overlap };

// FFT layout of a cross-correlation: one transform of the whole correlation,
// or overlap-save over the longer vector when it is at least three times the
// shorter. The allocating forms also take the single transform when the first
// wanted lag lies more than Lmin past the start of the correlation.
inline Method crossFftMethod(int n1, int n2, long long lag, bool lagRule) {
    const long long lmin = std::min(n1, n2), lmax = std::max(n1, n2);
    if (lmax < 3 * lmin) return Method::Single;
    if (lagRule && lag + n1 - 1 > lmin) return Method::Single;
    return Method::Overlap;
}

inline int crossOrder(Method m, int n1, int n2) {
    if (m == Method::Single) return fftconv::orderFor((long long)n1 + n2 - 1, 1);
    return fftconv::overlapOrder(std::min(n1, n2));
}

template <class E>
void reverseRun(E* p, long long n) {
    std::reverse(p, p + n);
    if constexpr (isComplex<E>)
        for (long long i = 0; i < n; ++i) p[i].im = -p[i].im;
}

// The count correlation outputs from lag `lag` on, by method m (buf: the
// caller's block, or null to allocate one).
template <class E>
ZvpStatus crossRun(const E* a, int n1, const E* b, int n2, E* out, long long lag, long long count, Method m,
                   Zvp8u* buf) {
    // With the first vector the longer one, the shorter (second) slides
    // along it at the negated lags: the run comes out in reverse order and
    // conjugated, and is put right at the end.
    const bool swap = n1 > n2;
    const E* h = swap ? b : a;
    const E* x = swap ? a : b;
    const std::ptrdiff_t hLen = swap ? n2 : n1;
    const std::ptrdiff_t xLen = swap ? n1 : n2;
    const std::ptrdiff_t off = swap ? std::ptrdiff_t(-(lag + count - 1)) : std::ptrdiff_t(lag);
    if (m == Method::Direct) {
        mac::slidingMac<E, isComplex<E>>(h, hLen, x, xLen, off, +1, out, count);
        if (swap) reverseRun(out, count);
        return zvpStsNoErr;
    }
    const int k = crossOrder(m, n1, n2);
    WorkBuffer own;
    fftconv::Plan<E> plan;
    ZVP_RETURN_IF_ERROR(plan.prepare(own, buf, k, 2));
    if (m == Method::Single) return fftconv::corrSingle(plan, a, n1, b, n2, std::ptrdiff_t(lag), out, count);
    ZVP_RETURN_IF_ERROR(fftconv::corrOverlapSave(plan, h, hLen, x, xLen, off, out, count));
    if (swap) reverseRun(out, count);
    return zvpStsNoErr;
}

template <class E>
Method crossAutoMethod(int n1, int n2, const Lags& t, bool lagRule) {
    if (crossMetric(n1, n2, t.count) <= Thr<E>::cross) return Method::Direct;
    return crossFftMethod(n1, n2, t.lag, lagRule);
}

template <class E>
ZvpStatus crossCorr(const E* a, int n1, const E* b, int n2, E* dst, int dstLen, int lowLag) {
    ZVP_CHECK_PTRS(a, b, dst);
    ZVP_CHECK_LENS(n1, n2, dstLen);
    const Lags t = trimLags(n1, n2, dstLen, lowLag);
    writeZeroRuns(dst, dstLen, t);
    if (t.count == 0) return zvpStsNoErr;
    return crossRun(a, n1, b, n2, dst + t.lead, t.lag, t.count, crossAutoMethod<E>(n1, n2, t, true), nullptr);
}

// ---- normalisation

template <class E>
using Scalar = typename mac::Elem<E>::S;

template <class E>
inline void scaleBy(E& v, Scalar<E> f) {
    if constexpr (isComplex<E>) {
        v.re *= f;
        v.im *= f;
    } else {
        v *= f;
    }
}

template <class E>
inline void divideBy(E& v, Scalar<E> d) {
    if constexpr (isComplex<E>) {
        v.re /= d;
        v.im /= d;
    } else {
        v /= d;
    }
}

// Selector bytes: method in the low byte, normalisation in the next; any
// higher bit counts as an unknown normalisation.
inline int methodOf(int alg) { return alg & 0xff; }
inline unsigned normOf(int alg) { return unsigned(alg) >> 8; }
inline bool normKnown(int alg) { return normOf(alg) <= 2; }

// NormA: times 1/Lmin. NormB: divided by the number of products at each lag
// (times 1/Lmin where all Lmin of them overlap).
template <class E>
void normalizeCross(E* out, long long count, long long lag, int n1, int n2, unsigned norm) {
    using S = Scalar<E>;
    const long long lmin = std::min(n1, n2);
    const S inv = S(1) / S(lmin);
    if (norm == 1) {
        for (long long i = 0; i < count; ++i) scaleBy(out[i], inv);
    } else if (norm == 2) {
        for (long long i = 0; i < count; ++i) {
            const long long l = lag + i;
            const long long c = std::min<long long>(n1, n2 - l) - std::max(0LL, -l);
            if (c == lmin) scaleBy(out[i], inv);
            else divideBy(out[i], S(c));
        }
    }
}

template <class E>
ZvpStatus crossCorrNorm(const E* a, int n1, const E* b, int n2, E* dst, int dstLen, int lowLag, int alg,
                        Zvp8u* buf) {
    ZVP_CHECK_PTRS(a, b, dst);
    ZVP_CHECK_LENS(n1, n2, dstLen);
    const int method = methodOf(alg);
    if (method > zvpAlgFFT) return zvpStsAlgTypeErr;
    const Lags t = trimLags(n1, n2, dstLen, lowLag);
    Method m = Method::Direct;
    if (t.count > 0 && (method == zvpAlgFFT ||
                        (method == zvpAlgAuto && crossMetric(n1, n2, t.count) > Thr<E>::cross)))
        m = crossFftMethod(n1, n2, t.lag, false);
    if (m != Method::Direct && buf == nullptr) return zvpStsNullPtrErr;
    writeZeroRuns(dst, dstLen, t);
    if (t.count > 0) {
        ZVP_RETURN_IF_ERROR(crossRun(a, n1, b, n2, dst + t.lead, t.lag, t.count, m, buf));
    }
    // An unknown normalisation is found only now, with the plain result in
    // place.
    if (!normKnown(alg)) return zvpStsAlgTypeErr;
    normalizeCross(dst + t.lead, t.count, t.lag, n1, n2, normOf(alg));
    return zvpStsNoErr;
}

template <class E>
ZvpStatus crossNormBytes(int n1, int n2, int dstLen, int lowLag, int alg, int* bytes) {
    const Lags t = trimLags(n1, n2, dstLen, lowLag);
    const int method = methodOf(alg);
    if (t.count == 0 || method == zvpAlgDirect ||
        (method == zvpAlgAuto && crossMetric(n1, n2, t.count) <= Thr<E>::cross)) {
        *bytes = 0;
        return zvpStsNoErr;
    }
    return fftconv::blockBytes<E>(crossOrder(crossFftMethod(n1, n2, t.lag, false), n1, n2), 2, bytes);
}

// ---- auto-correlation

inline int autoOrder(int n) { return fftconv::orderFor(2LL * n, 1); }

// Lags 0 .. min(n, dstLen) - 1 computed, the rest zeros (written first).
template <class E>
ZvpStatus autoRun(const E* a, int n, E* out, int dstLen, bool fft, Zvp8u* buf) {
    const int m = std::min(n, dstLen);
    zeroFill(out + m, (long long)dstLen - m);
    if (!fft) {
        mac::slidingMac<E, isComplex<E>>(a, n, a, n, 0, +1, out, m);
        return zvpStsNoErr;
    }
    const int k = autoOrder(n);
    WorkBuffer own;
    fftconv::Plan<E> plan;
    ZVP_RETURN_IF_ERROR(plan.prepare(own, buf, k, 1));
    return fftconv::autoCorr(plan, a, n, out, m);
}

template <class E>
void normalizeAutoA(E* out, int m, int n) {
    const Scalar<E> inv = Scalar<E>(1) / Scalar<E>(n);
    for (int i = 0; i < m; ++i) scaleBy(out[i], inv);
}

// NormB with the divisors n - i built in a temporary array from the library
// allocator: its failure is reported with the plain result in place.
template <class E>
ZvpStatus normalizeAutoB(E* out, int m, int n) {
    using S = Scalar<E>;
    WorkBuffer div;
    if (!div.allocate(int(std::size_t(m) * sizeof(S)))) return zvpStsMemAllocErr;
    S* d = div.as<S>();
    for (int i = 0; i < m; ++i) d[i] = S(n - i);
    for (int i = 0; i < m; ++i) divideBy(out[i], d[i]);
    return zvpStsNoErr;
}

enum class AutoNorm { None, A, B };

template <class E>
ZvpStatus autoCorr(const E* a, int n, E* dst, int dstLen, AutoNorm norm) {
    ZVP_CHECK_PTRS(a, dst);
    ZVP_CHECK_LENS(n, dstLen);
    const int m = std::min(n, dstLen);
    ZVP_RETURN_IF_ERROR(autoRun(a, n, dst, dstLen, m >= Thr<E>::autoDirect, nullptr));
    if (norm == AutoNorm::A) normalizeAutoA(dst, m, n);
    if (norm == AutoNorm::B) return normalizeAutoB(dst, m, n);
    return zvpStsNoErr;
}

// 16-bit data: converted to single precision, correlated and normalised there
// and converted back with the scale factor, rounded to nearest even.
ZvpStatus autoCorr16s(const Zvp16s* a, int n, Zvp16s* dst, int dstLen, int sf, AutoNorm norm) {
    ZVP_CHECK_PTRS(a, dst);
    ZVP_CHECK_LENS(n, dstLen);
    const int m = std::min(n, dstLen);
    zeroFill(dst + m, (long long)dstLen - m);
    const long long floats = ((n + 3LL) & ~3LL) + m;
    if (floats * 4 > 0x7fffffffLL) return zvpStsMemAllocErr;
    WorkBuffer scratch;
    if (!scratch.allocate(int(floats * 4))) return zvpStsMemAllocErr;
    Zvp32f* f = scratch.as<Zvp32f>();
    Zvp32f* r = f + ((n + 3LL) & ~3LL);
    p8::zvpsConvert_16s32f(a, f, n);
    ZVP_RETURN_IF_ERROR(autoRun(f, n, r, m, m >= Thr<float>::autoDirect, nullptr));
    if (norm == AutoNorm::A) normalizeAutoA(r, m, n);
    if (norm == AutoNorm::B) {
        ZVP_RETURN_IF_ERROR(p8::zvpsConvert_32f16s_Sfs(r, dst, m, zvpRndNear, sf));
        ZVP_RETURN_IF_ERROR(normalizeAutoB(r, m, n));
    }
    return p8::zvpsConvert_32f16s_Sfs(r, dst, m, zvpRndNear, sf);
}

template <class E>
ZvpStatus autoCorrNorm(const E* a, int n, E* dst, int dstLen, int alg, Zvp8u* buf) {
    ZVP_CHECK_PTRS(a, dst);
    ZVP_CHECK_LENS(n, dstLen);
    const int method = methodOf(alg);
    if (method > zvpAlgFFT) return zvpStsAlgTypeErr;
    const int m = std::min(n, dstLen);
    const bool fft = method == zvpAlgFFT || (method == zvpAlgAuto && m >= kAutoNormFft);
    if (fft && buf == nullptr) return zvpStsNullPtrErr;
    ZVP_RETURN_IF_ERROR(autoRun(a, n, dst, dstLen, fft, buf));
    if (!normKnown(alg)) return zvpStsAlgTypeErr;
    if (normOf(alg) == 1) normalizeAutoA(dst, m, n);
    if (normOf(alg) == 2) {
        using S = Scalar<E>;
        for (int i = 0; i < m; ++i) divideBy(dst[i], S(n - i));
    }
    return zvpStsNoErr;
}

template <class E>
ZvpStatus autoNormBytes(int n, int dstLen, int alg, int* bytes) {
    const int method = methodOf(alg);
    const int m = std::min(n, dstLen);
    if (method == zvpAlgDirect || (method == zvpAlgAuto && m < kAutoNormFft)) {
        *bytes = 64;
        return zvpStsNoErr;
    }
    return fftconv::blockBytes<E>(autoOrder(n), 1, bytes);
}

// The exact 16-bit correlation into 64-bit sums, one dot product per lag.
void crossExact16s(const Zvp16s* a, int n1, const Zvp16s* b, int n2, Zvp64s* out, long long lag,
                   long long count) {
    for (long long i = 0; i < count; ++i) {
        const long long l = lag + i;
        const long long k0 = std::max(0LL, -l);
        const long long k1 = std::min<long long>(n1, n2 - l);
        out[i] = mac::dotExact16s(a + k0, b + (k0 + l), std::ptrdiff_t(k1 - k0));
    }
}

}  // namespace

// ---- cross-correlation

ZvpStatus zvpsCrossCorr_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst,
                            int dstLen, int lowLag) {
    return crossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag);
}
ZvpStatus zvpsCrossCorr_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len, Zvp64f* pDst,
                            int dstLen, int lowLag) {
    return crossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag);
}
ZvpStatus zvpsCrossCorr_32fc(const Zvp32fc* pSrc1, int src1Len, const Zvp32fc* pSrc2, int src2Len,
                             Zvp32fc* pDst, int dstLen, int lowLag) {
    return crossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag);
}
ZvpStatus zvpsCrossCorr_64fc(const Zvp64fc* pSrc1, int src1Len, const Zvp64fc* pSrc2, int src2Len,
                             Zvp64fc* pDst, int dstLen, int lowLag) {
    return crossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag);
}

ZvpStatus zvpsCrossCorr_16s_Sfs(const Zvp16s* pSrc1, int src1Len, const Zvp16s* pSrc2, int src2Len,
                                Zvp16s* pDst, int dstLen, int lowLag, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(src1Len, src2Len, dstLen);
    const Lags t = trimLags(src1Len, src2Len, dstLen, lowLag);
    writeZeroRuns(pDst, dstLen, t);
    if (t.count == 0) return zvpStsNoErr;
    const long long a4 = (src1Len + 3LL) & ~3LL, b4 = (src2Len + 3LL) & ~3LL;
    const long long floats = a4 + b4 + t.count;
    if (floats * 4 > 0x7fffffffLL) return zvpStsMemAllocErr;
    WorkBuffer scratch;
    if (!scratch.allocate(int(floats * 4))) return zvpStsMemAllocErr;
    Zvp32f* a = scratch.as<Zvp32f>();
    Zvp32f* b = a + a4;
    Zvp32f* r = b + b4;
    p8::zvpsConvert_16s32f(pSrc1, a, src1Len);
    p8::zvpsConvert_16s32f(pSrc2, b, src2Len);
    ZVP_RETURN_IF_ERROR(crossRun(a, src1Len, b, src2Len, r, t.lag, t.count,
                                 crossAutoMethod<float>(src1Len, src2Len, t, true), nullptr));
    return p8::zvpsConvert_32f16s_Sfs(r, pDst + t.lead, int(t.count), zvpRndNear, scaleFactor);
}

ZvpStatus zvpsCrossCorr_16s64s(const Zvp16s* pSrc1, int src1Len, const Zvp16s* pSrc2, int src2Len,
                               Zvp64s* pDst, int dstLen, int lowLag) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(src1Len, src2Len, dstLen);
    const Lags t = trimLags(src1Len, src2Len, dstLen, lowLag);
    writeZeroRuns(pDst, dstLen, t);
    crossExact16s(pSrc1, src1Len, pSrc2, src2Len, pDst + t.lead, t.lag, t.count);
    return zvpStsNoErr;
}

ZvpStatus zvpsCrossCorrNorm_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len,
                                Zvp32f* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer) {
    return crossCorrNorm(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}
ZvpStatus zvpsCrossCorrNorm_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len,
                                Zvp64f* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer) {
    return crossCorrNorm(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}
ZvpStatus zvpsCrossCorrNorm_32fc(const Zvp32fc* pSrc1, int src1Len, const Zvp32fc* pSrc2, int src2Len,
                                 Zvp32fc* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer) {
    return crossCorrNorm(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}
ZvpStatus zvpsCrossCorrNorm_64fc(const Zvp64fc* pSrc1, int src1Len, const Zvp64fc* pSrc2, int src2Len,
                                 Zvp64fc* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer) {
    return crossCorrNorm(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag, algType, pBuffer);
}

ZvpStatus zvpsCrossCorrNormGetBufferSize(int src1Len, int src2Len, int dstLen, int lowLag, ZvpDataType dataType,
                                         int algType, int* pBufferSize) {
    ZVP_CHECK_PTRS(pBufferSize);
    ZVP_CHECK_LENS(src1Len, src2Len, dstLen);
    if (!normKnown(algType) || methodOf(algType) > zvpAlgFFT) return zvpStsAlgTypeErr;
    int bytes = 0;
    ZvpStatus st;
    switch (dataType) {
    case zvp32f: st = crossNormBytes<float>(src1Len, src2Len, dstLen, lowLag, algType, &bytes); break;
    case zvp64f: st = crossNormBytes<double>(src1Len, src2Len, dstLen, lowLag, algType, &bytes); break;
    case zvp32fc: st = crossNormBytes<Zvp32fc>(src1Len, src2Len, dstLen, lowLag, algType, &bytes); break;
    case zvp64fc: st = crossNormBytes<Zvp64fc>(src1Len, src2Len, dstLen, lowLag, algType, &bytes); break;
    default: *pBufferSize = 0; return zvpStsDataTypeErr;
    }
    *pBufferSize = st < 0 ? 0 : bytes;
    return st;
}

// ---- auto-correlation

ZvpStatus zvpsAutoCorr_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::None);
}
ZvpStatus zvpsAutoCorr_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::None);
}
ZvpStatus zvpsAutoCorr_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::None);
}
ZvpStatus zvpsAutoCorr_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::None);
}
ZvpStatus zvpsAutoCorr_16s_Sfs(const Zvp16s* pSrc, int srcLen, Zvp16s* pDst, int dstLen, int scaleFactor) {
    return autoCorr16s(pSrc, srcLen, pDst, dstLen, scaleFactor, AutoNorm::None);
}

ZvpStatus zvpsAutoCorr_NormA_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::A);
}
ZvpStatus zvpsAutoCorr_NormA_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::A);
}
ZvpStatus zvpsAutoCorr_NormA_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::A);
}
ZvpStatus zvpsAutoCorr_NormA_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::A);
}
ZvpStatus zvpsAutoCorr_NormA_16s_Sfs(const Zvp16s* pSrc, int srcLen, Zvp16s* pDst, int dstLen, int scaleFactor) {
    return autoCorr16s(pSrc, srcLen, pDst, dstLen, scaleFactor, AutoNorm::A);
}

ZvpStatus zvpsAutoCorr_NormB_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::B);
}
ZvpStatus zvpsAutoCorr_NormB_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::B);
}
ZvpStatus zvpsAutoCorr_NormB_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::B);
}
ZvpStatus zvpsAutoCorr_NormB_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen) {
    return autoCorr(pSrc, srcLen, pDst, dstLen, AutoNorm::B);
}
ZvpStatus zvpsAutoCorr_NormB_16s_Sfs(const Zvp16s* pSrc, int srcLen, Zvp16s* pDst, int dstLen, int scaleFactor) {
    return autoCorr16s(pSrc, srcLen, pDst, dstLen, scaleFactor, AutoNorm::B);
}

ZvpStatus zvpsAutoCorrNorm_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen, int algType,
                               Zvp8u* pBuffer) {
    return autoCorrNorm(pSrc, srcLen, pDst, dstLen, algType, pBuffer);
}
ZvpStatus zvpsAutoCorrNorm_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen, int algType,
                               Zvp8u* pBuffer) {
    return autoCorrNorm(pSrc, srcLen, pDst, dstLen, algType, pBuffer);
}
ZvpStatus zvpsAutoCorrNorm_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen, int algType,
                                Zvp8u* pBuffer) {
    return autoCorrNorm(pSrc, srcLen, pDst, dstLen, algType, pBuffer);
}
ZvpStatus zvpsAutoCorrNorm_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen, int algType,
                                Zvp8u* pBuffer) {
    return autoCorrNorm(pSrc, srcLen, pDst, dstLen, algType, pBuffer);
}

ZvpStatus zvpsAutoCorrNormGetBufferSize(int srcLen, int dstLen, ZvpDataType dataType, int algType,
                                        int* pBufferSize) {
    ZVP_CHECK_PTRS(pBufferSize);
    ZVP_CHECK_LENS(srcLen, dstLen);
    if (!normKnown(algType)) return zvpStsAlgTypeErr;
    if (methodOf(algType) > zvpAlgFFT) return zvpStsAlgTypeErr;
    int bytes = 0;
    ZvpStatus st;
    switch (dataType) {
    case zvp32f: st = autoNormBytes<float>(srcLen, dstLen, algType, &bytes); break;
    case zvp64f: st = autoNormBytes<double>(srcLen, dstLen, algType, &bytes); break;
    case zvp32fc: st = autoNormBytes<Zvp32fc>(srcLen, dstLen, algType, &bytes); break;
    case zvp64fc: st = autoNormBytes<Zvp64fc>(srcLen, dstLen, algType, &bytes); break;
    default: *pBufferSize = 0; return zvpStsDataTypeErr;
    }
    *pBufferSize = st < 0 ? 0 : bytes;
    return st;
}

}  // namespace zvp::p8

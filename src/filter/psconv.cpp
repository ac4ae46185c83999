// Linear convolution (Conv, Convolve and its buffer size), biased convolution
// and the small cyclic convolutions.
//
// Conv and Convolve choose between the direct multiply-accumulate kernel and
// the FFT by fixed thresholds, because the two round differently: direct when
// the output has fewer than 512 samples or the shorter operand fewer than 64;
// otherwise one transform of the whole output while the longer operand is
// under three times the shorter, and overlap-save blocks beyond that.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "fftconv.h"
#include "mac_kernel.h"
#include "p8/conv.h"
#include "p8/convert.h"
#include "p8/frame.h"
#include "scale.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace {

enum class Method { Direct, Single, Overlap };

// The method for operands of n1 and n2 samples under selector alg (0 auto,
// 1 direct, 2 FFT).
Method convMethod(int n1, int n2, int alg) {
    const long long lmin = n1 < n2 ? n1 : n2;
    const long long lmax = n1 < n2 ? n2 : n1;
    const long long n = lmin + lmax - 1;
    if (alg == zvpAlgDirect) return Method::Direct;
    if (alg == zvpAlgAuto && (n < 512 || lmin < 64)) return Method::Direct;
    return lmax < 3 * lmin ? Method::Single : Method::Overlap;
}

int convOrder(Method m, int n1, int n2) {
    const long long lmin = n1 < n2 ? n1 : n2;
    if (m == Method::Single) return fftconv::orderFor((long long)n1 + n2 - 1, 2);
    return fftconv::overlapOrder(lmin);
}

// Convolution by method m. buf: the caller's block of at least the size
// blockBytes reports for the FFT methods, or null to allocate it.
template <class E>
ZvpStatus convRun(const E* p1, int n1, const E* p2, int n2, E* dst, Method m, Zvp8u* buf) {
    // The longer operand slides under the shorter; the first one on a tie.
    const bool firstLong = n1 >= n2;
    const E* l = firstLong ? p1 : p2;
    const E* s = firstLong ? p2 : p1;
    const std::ptrdiff_t lLen = firstLong ? n1 : n2;
    const std::ptrdiff_t sLen = firstLong ? n2 : n1;
    if (m == Method::Direct) {
        mac::convolve(l, lLen, s, sLen, dst);
        return zvpStsNoErr;
    }
    const int k = convOrder(m, n1, n2);
    WorkBuffer own;
    fftconv::Plan<E> plan;
    ZVP_RETURN_IF_ERROR(plan.prepare(own, buf, k, 2));
    if (m == Method::Single) return fftconv::convSingle(plan, l, lLen, s, sLen, dst);
    return fftconv::convOverlapSave(plan, l, lLen, s, sLen, dst, 0, lLen + sLen - 1);
}

template <class E>
ZvpStatus conv(const E* p1, int n1, const E* p2, int n2, E* dst) {
    ZVP_CHECK_PTRS(p1, p2, dst);
    ZVP_CHECK_LENS(n1, n2);
    return convRun(p1, n1, p2, n2, dst, convMethod(n1, n2, zvpAlgAuto), nullptr);
}

template <class E>
ZvpStatus convolve(const E* p1, int n1, const E* p2, int n2, E* dst, int alg, Zvp8u* buf) {
    ZVP_CHECK_PTRS(p1, p2, dst);
    ZVP_CHECK_LENS(n1, n2);
    if (alg < 0 || alg > zvpAlgFFT) return zvpStsAlgTypeErr;
    const Method m = convMethod(n1, n2, alg);
    if (m != Method::Direct && buf == nullptr) return zvpStsNullPtrErr;
    return convRun(p1, n1, p2, n2, dst, m, buf);
}

}  // namespace

ZvpStatus zvpsConv_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst) {
    return conv(pSrc1, src1Len, pSrc2, src2Len, pDst);
}

ZvpStatus zvpsConv_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len, Zvp64f* pDst) {
    return conv(pSrc1, src1Len, pSrc2, src2Len, pDst);
}

// Both inputs converted to single precision, the single-precision method of
// the same shape, the result rounded to nearest even after the scale factor
// and saturated.
ZvpStatus zvpsConv_16s_Sfs(const Zvp16s* pSrc1, int src1Len, const Zvp16s* pSrc2, int src2Len, Zvp16s* pDst,
                           int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(src1Len, src2Len);
    const long long n = (long long)src1Len + src2Len - 1;
    const long long floats = ((src1Len + 3LL) & ~3LL) + ((src2Len + 3LL) & ~3LL) + ((n + 3) & ~3LL);
    if (floats * 4 > 0x7fffffffLL) return zvpStsMemAllocErr;
    WorkBuffer scratch;
    if (!scratch.allocate(int(floats * 4))) return zvpStsMemAllocErr;
    Zvp32f* a = scratch.as<Zvp32f>();
    Zvp32f* b = a + ((src1Len + 3LL) & ~3LL);
    Zvp32f* r = b + ((src2Len + 3LL) & ~3LL);
    p8::zvpsConvert_16s32f(pSrc1, a, src1Len);
    p8::zvpsConvert_16s32f(pSrc2, b, src2Len);
    ZVP_RETURN_IF_ERROR(convRun(a, src1Len, b, src2Len, r, convMethod(src1Len, src2Len, zvpAlgAuto), nullptr));
    return p8::zvpsConvert_32f16s_Sfs(r, pDst, int(n), zvpRndNear, scaleFactor);
}

ZvpStatus zvpsConvolve_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst,
                           ZvpAlgType algType, Zvp8u* pBuffer) {
    return convolve(pSrc1, src1Len, pSrc2, src2Len, pDst, int(algType), pBuffer);
}

ZvpStatus zvpsConvolve_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len, Zvp64f* pDst,
                           ZvpAlgType algType, Zvp8u* pBuffer) {
    return convolve(pSrc1, src1Len, pSrc2, src2Len, pDst, int(algType), pBuffer);
}

ZvpStatus zvpsConvolveGetBufferSize(int src1Len, int src2Len, ZvpDataType dataType, ZvpAlgType algType,
                                    int* pBufferSize) {
    ZVP_CHECK_PTRS(pBufferSize);
    ZVP_CHECK_LENS(src1Len, src2Len);
    const int alg = int(algType);
    if (alg < 0 || alg > zvpAlgFFT) return zvpStsAlgTypeErr;
    if (dataType != zvp32f && dataType != zvp64f) {
        *pBufferSize = 0;
        return zvpStsDataTypeErr;
    }
    const Method m = convMethod(src1Len, src2Len, alg);
    if (m == Method::Direct) {
        *pBufferSize = 64;
        return zvpStsNoErr;
    }
    const int k = convOrder(m, src1Len, src2Len);
    int bytes = 0;
    const ZvpStatus st = dataType == zvp32f ? fftconv::blockBytes<float>(k, 2, &bytes)
                                            : fftconv::blockBytes<double>(k, 2, &bytes);
    *pBufferSize = bytes;
    return st;
}

// pDst[n] = sum_k pSrc1[k] pSrc2[n + bias - k] over the k with both indices
// inside their vectors. Every shape, the fixed speech-coder ones included,
// runs the one direct kernel: pSrc1 as taps sliding backwards along pSrc2.
ZvpStatus zvpsConvBiased_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst,
                             int dstLen, int bias) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(src1Len, src2Len, dstLen);
    mac::slidingMac<float, false>(pSrc1, src1Len, pSrc2, src2Len, bias, -1, pDst, dstLen);
    return zvpStsNoErr;
}

// The cyclic forms check nothing and always succeed: they are inner-loop
// routines whose callers guarantee their fixed-size arguments.
ZvpStatus zvpsConvCyclic8x8_32f(const Zvp32f* x, const Zvp32f* h, Zvp32f* y) {
    float r[8];
    for (int n = 0; n < 8; ++n) {
        float s = 0.0f;
        for (int k = 0; k < 8; ++k) s += x[k] * h[(n - k) & 7];
        r[n] = s;
    }
    std::memcpy(y, r, sizeof r);
    return zvpStsNoErr;
}

// Exact integer sums, then the library's scale rule.
ZvpStatus zvpsConvCyclic8x8_16s_Sfs(const Zvp16s* x, const Zvp16s* h, Zvp16s* y, int scaleFactor) {
    Zvp16s r[8];
    for (int n = 0; n < 8; ++n) {
        std::int64_t s = 0;
        for (int k = 0; k < 8; ++k) s += std::int64_t(std::int32_t(x[k]) * std::int32_t(h[(n - k) & 7]));
        r[n] = scaleRule<Zvp16s>(s, scaleFactor);
    }
    std::memcpy(y, r, sizeof r);
    return zvpStsNoErr;
}

ZvpStatus zvpsConvCyclic4x4_32f32fc(const Zvp32f* x, const Zvp32fc* h, Zvp32fc* y) {
    Zvp32fc r[4];
    for (int n = 0; n < 4; ++n) {
        float re = 0.0f, im = 0.0f;
        for (int k = 0; k < 4; ++k) {
            re += x[k] * h[(n - k) & 3].re;
            im += x[k] * h[(n - k) & 3].im;
        }
        r[n] = Zvp32fc{re, im};
    }
    std::memcpy(static_cast<void*>(y), r, sizeof r);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

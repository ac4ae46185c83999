// Normalize: (x - subtrahend) / divisor for every element. The divisor's
// magnitude must be at least the smallest normal single, 2^-126 (about
// 1.1754944e-38), for every type; a smaller one (0 included) gives
// zvpStsDivByZeroErr after the pointer and length checks. A NaN divisor has
// no magnitude to compare and is refused the same way.
//  * Float forms subtract, then divide (two IEEE roundings); complex forms
//    do it to both parts, with a real divisor.
//  * 16s and 16sc: round((x - sub) * 2^-sf / divisor), ties to even,
//    saturated to 16 bits, exactly, with 64-bit integer division.
#include <cmath>
#include <cstdint>

#include "check.h"
#include "p8.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

constexpr double kSmallestNormalSingle = 1.1754943508222875e-38;  // 2^-126

template <class F>
bool divisorTooSmall(F div) {
    // Written so that a NaN, which fails every comparison, counts as too small.
    return !(std::fabs(double(div)) >= kSmallestNormalSingle);
}

// d[i] = (s[i] - sub[i % 2]) / div over n floats (or doubles) with the
// subtrahend pattern held in a register (both lanes of a real form equal).
void normalizeKernel(const float* s, float* d, int n, const float sub[2], float div) {
    const __m128 vs = _mm_setr_ps(sub[0], sub[1], sub[0], sub[1]), vd = _mm_set1_ps(div);
    int i = 0;
    for (; i + 8 <= n; i += 8) {
        const __m128 a = _mm_loadu_ps(s + i), b = _mm_loadu_ps(s + i + 4);
        _mm_storeu_ps(d + i, _mm_div_ps(_mm_sub_ps(a, vs), vd));
        _mm_storeu_ps(d + i + 4, _mm_div_ps(_mm_sub_ps(b, vs), vd));
    }
    for (; i < n; ++i) d[i] = (s[i] - sub[i & 1]) / div;
}

void normalizeKernel(const double* s, double* d, int n, const double sub[2], double div) {
    const __m128d vs = _mm_setr_pd(sub[0], sub[1]), vd = _mm_set1_pd(div);
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        const __m128d a = _mm_loadu_pd(s + i), b = _mm_loadu_pd(s + i + 2);
        _mm_storeu_pd(d + i, _mm_div_pd(_mm_sub_pd(a, vs), vd));
        _mm_storeu_pd(d + i + 2, _mm_div_pd(_mm_sub_pd(b, vs), vd));
    }
    for (; i < n; ++i) d[i] = (s[i] - sub[i & 1]) / div;
}

template <class F>
ZvpStatus normalizeReal(const F* s, F* d, int len, F sub, F div) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if (divisorTooSmall(div)) return zvpStsDivByZeroErr;
    const F pattern[2] = {sub, sub};
    normalizeKernel(s, d, len, pattern, div);
    return zvpStsNoErr;
}

template <class C, class F>
ZvpStatus normalizeComplex(const C* s, C* d, int len, C sub, F div) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if (divisorTooSmall(div)) return zvpStsDivByZeroErr;
    const F pattern[2] = {sub.re, sub.im};
    normalizeKernel(reinterpret_cast<const F*>(s), reinterpret_cast<F*>(d), 2 * len, pattern, div);
    return zvpStsNoErr;
}

// round(n * 2^-sf / div), ties to even, saturated to 16 bits, for
// |n| <= 65535 and div != 0.
Zvp16s divScaled(std::int64_t n, std::int64_t div, int sf) {
    if (n == 0) return 0;
    std::int64_t num = n, den = div;
    if (sf >= 0) {
        if (sf >= 17) return 0;  // |quotient| < 2^16 * 2^-17 = 1/2
        den *= std::int64_t(1) << sf;
    } else {
        // |quotient| >= 2^k / 2^31: beyond k = 46 it saturates whatever the
        // operands.
        if (sf < -46) return (n < 0) != (div < 0) ? Zvp16s(-32768) : Zvp16s(32767);
        num *= std::int64_t(1) << -sf;
    }
    if (den < 0) {
        num = -num;
        den = -den;
    }
    // Floor division, then round the remainder half to even.
    std::int64_t q = num / den, r = num % den;
    if (r < 0) {
        q -= 1;
        r += den;
    }
    if (2 * r > den || (2 * r == den && (q & 1))) q += 1;
    if (q > 32767) return 32767;
    if (q < -32768) return -32768;
    return Zvp16s(q);
}

}  // namespace

ZvpStatus zvpsNormalize_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f sub, Zvp32f div) {
    return normalizeReal(pSrc, pDst, len, sub, div);
}

ZvpStatus zvpsNormalize_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f sub, Zvp64f div) {
    return normalizeReal(pSrc, pDst, len, sub, div);
}

ZvpStatus zvpsNormalize_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32fc sub, Zvp32f div) {
    return normalizeComplex(pSrc, pDst, len, sub, div);
}

ZvpStatus zvpsNormalize_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64fc sub, Zvp64f div) {
    return normalizeComplex(pSrc, pDst, len, sub, div);
}

ZvpStatus zvpsNormalize_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s sub, int div,
                                int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    if (div == 0) return zvpStsDivByZeroErr;
    for (int i = 0; i < len; ++i) pDst[i] = divScaled(std::int64_t(pSrc[i]) - sub, div, scaleFactor);
    return zvpStsNoErr;
}

ZvpStatus zvpsNormalize_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16sc sub, int div,
                                 int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    if (div == 0) return zvpStsDivByZeroErr;
    for (int i = 0; i < len; ++i) {
        const Zvp16sc x = pSrc[i];
        pDst[i] = Zvp16sc{divScaled(std::int64_t(x.re) - sub.re, div, scaleFactor),
                          divScaled(std::int64_t(x.im) - sub.im, div, scaleFactor)};
    }
    return zvpStsNoErr;
}

}  // namespace zvp::p8

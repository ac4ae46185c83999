// Sqrt: the square root of every element.
//
// Real forms return zvpStsSqrtNegArg (3) when they met a negative element,
// after writing every element: a float NaN, or 0 for an integer. -0 and NaN
// are not negative (sqrt(-0) = -0, NaN stays NaN).
//
// Complex forms give the principal root (real part >= 0, imaginary part
// with the sign of the source's), computed in double precision as
//   t = sqrt((|z| + |re|) / 2),  o = |im| / (2t),
//   root = (t, +-o) for re >= 0, (o, +-t) otherwise,
// and through the C library's complex root for infinities, NaNs and, in
// 64fc, magnitudes where the squares would overflow or underflow.
//
// Integer forms give round(sqrt(x) * 2^-sf), ties to even, saturated:
//  * 8u, 16u, 16s, 32s16s (sources below 2^32, results below 2^16) in
//    double precision. That is exact: a root that is not a half-integer
//    lies at least 1/(4 * 2^17) away from every half-integer, far more than
//    the double error (below 2^-36 at these magnitudes), and a half-integer
//    root comes out exactly and is then rounded to even.
//  * 64s and 64s16s exactly with integer roots (introot.h).
//  * 16sc in double precision, each part rounded to nearest (ties to even)
//    and saturated.
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "check.h"
#include "fpguard.h"
#include "introot.h"
#include "lane.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

// ---- Real floats -------------------------------------------------------

bool sqrtKernel(const Zvp32f* s, Zvp32f* d, int len) {
    const __m128 zero = _mm_setzero_ps();
    __m128 neg = zero;
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        const __m128 a = _mm_loadu_ps(s + i), b = _mm_loadu_ps(s + i + 4);
        neg = _mm_or_ps(neg, _mm_or_ps(_mm_cmplt_ps(a, zero), _mm_cmplt_ps(b, zero)));
        _mm_storeu_ps(d + i, _mm_sqrt_ps(a));
        _mm_storeu_ps(d + i + 4, _mm_sqrt_ps(b));
    }
    bool negative = _mm_movemask_ps(neg) != 0;
    for (; i < len; ++i) {
        const float x = s[i];
        negative |= x < 0.0f;
        d[i] = std::sqrt(x);
    }
    return negative;
}

bool sqrtKernel(const Zvp64f* s, Zvp64f* d, int len) {
    const __m128d zero = _mm_setzero_pd();
    __m128d neg = zero;
    int i = 0;
    for (; i + 4 <= len; i += 4) {
        const __m128d a = _mm_loadu_pd(s + i), b = _mm_loadu_pd(s + i + 2);
        neg = _mm_or_pd(neg, _mm_or_pd(_mm_cmplt_pd(a, zero), _mm_cmplt_pd(b, zero)));
        _mm_storeu_pd(d + i, _mm_sqrt_pd(a));
        _mm_storeu_pd(d + i + 2, _mm_sqrt_pd(b));
    }
    bool negative = _mm_movemask_pd(neg) != 0;
    for (; i < len; ++i) {
        const double x = s[i];
        negative |= x < 0.0;
        d[i] = std::sqrt(x);
    }
    return negative;
}

// ---- Complex floats ------------------------------------------------------

// The principal root of a + bi by the formula above, for two lanes at once.
inline void csqrtLanes(__m128d a, __m128d b, __m128d& re, __m128d& im) {
    const __m128d absMask = _mm_castsi128_pd(_mm_set1_epi64x(0x7FFFFFFFFFFFFFFFll));
    const __m128d signMask = _mm_castsi128_pd(_mm_set1_epi64x(std::int64_t(0x8000000000000000ull)));
    const __m128d zero = _mm_setzero_pd();
    const __m128d m = _mm_sqrt_pd(_mm_add_pd(_mm_mul_pd(a, a), _mm_mul_pd(b, b)));
    const __m128d t = _mm_sqrt_pd(_mm_mul_pd(_mm_add_pd(m, _mm_and_pd(a, absMask)), _mm_set1_pd(0.5)));
    // o = |b| / (2t), and 0 where t = 0 (then a = b = 0).
    __m128d o = _mm_div_pd(_mm_and_pd(b, absMask), _mm_add_pd(t, t));
    o = _mm_andnot_pd(_mm_cmpeq_pd(t, zero), o);
    const __m128d aNeg = _mm_cmplt_pd(a, zero);
    const __m128d bSign = _mm_and_pd(b, signMask);
    re = _mm_blendv_pd(t, o, aNeg);
    im = _mm_or_pd(_mm_blendv_pd(o, t, aNeg), bSign);
}

// Lanes the formula serves: finite, and for 64fc with squares that neither
// overflow nor lose the smaller part (max(|a|, |b|) in [2^-500, 2^500], or
// both zero).
template <bool Wide>
inline int formulaLanes(__m128d a, __m128d b) {
    const __m128d absMask = _mm_castsi128_pd(_mm_set1_epi64x(0x7FFFFFFFFFFFFFFFll));
    const __m128d mx = _mm_max_pd(_mm_and_pd(a, absMask), _mm_and_pd(b, absMask));
    if constexpr (Wide) {
        // NaN lanes compare false in both tests.
        const __m128d inRange = _mm_and_pd(_mm_cmple_pd(mx, _mm_set1_pd(0x1p500)),
                                           _mm_cmpge_pd(mx, _mm_set1_pd(0x1p-500)));
        const __m128d zeros = _mm_cmpeq_pd(mx, _mm_setzero_pd());
        return _mm_movemask_pd(_mm_or_pd(inRange, zeros));
    } else {
        return _mm_movemask_pd(_mm_cmple_pd(mx, _mm_set1_pd(3.5e38)));  // finite floats
    }
}

template <bool Wide>
inline std::complex<double> csqrtOne(double a, double b) {
    const __m128d va = _mm_set_sd(a), vb = _mm_set_sd(b);
    if ((formulaLanes<Wide>(va, vb) & 1) == 0) return std::sqrt(std::complex<double>(a, b));
    __m128d re, im;
    csqrtLanes(va, vb, re, im);
    return {_mm_cvtsd_f64(re), _mm_cvtsd_f64(im)};
}

void sqrtKernel(const Zvp32fc* s, Zvp32fc* d, int len) {
    const float* sf = reinterpret_cast<const float*>(s);
    float* df = reinterpret_cast<float*>(d);
    for (int i = 0; i < len;) {
        if (i + 2 <= len) {
            const __m128 v = _mm_loadu_ps(sf + 2 * i);  // a0 b0 a1 b1
            const __m128d a = _mm_cvtps_pd(_mm_shuffle_ps(v, v, _MM_SHUFFLE(2, 0, 2, 0)));
            const __m128d b = _mm_cvtps_pd(_mm_shuffle_ps(v, v, _MM_SHUFFLE(3, 1, 3, 1)));
            if (formulaLanes<false>(a, b) == 3) {
                __m128d re, im;
                csqrtLanes(a, b, re, im);
                const __m128 r = _mm_cvtpd_ps(re), m = _mm_cvtpd_ps(im);
                _mm_storeu_ps(df + 2 * i, _mm_unpacklo_ps(r, m));
                i += 2;
                continue;
            }
        }
        const std::complex<double> r = csqrtOne<false>(s[i].re, s[i].im);
        d[i] = Zvp32fc{float(r.real()), float(r.imag())};
        ++i;
    }
}

void sqrtKernel(const Zvp64fc* s, Zvp64fc* d, int len) {
    const double* sd = reinterpret_cast<const double*>(s);
    double* dd = reinterpret_cast<double*>(d);
    for (int i = 0; i < len;) {
        if (i + 2 <= len) {
            const __m128d v0 = _mm_loadu_pd(sd + 2 * i), v1 = _mm_loadu_pd(sd + 2 * i + 2);
            const __m128d a = _mm_unpacklo_pd(v0, v1), b = _mm_unpackhi_pd(v0, v1);
            if (formulaLanes<true>(a, b) == 3) {
                __m128d re, im;
                csqrtLanes(a, b, re, im);
                _mm_storeu_pd(dd + 2 * i, _mm_unpacklo_pd(re, im));
                _mm_storeu_pd(dd + 2 * i + 2, _mm_unpackhi_pd(re, im));
                i += 2;
                continue;
            }
        }
        const std::complex<double> r = csqrtOne<true>(s[i].re, s[i].im);
        d[i] = Zvp64fc{r.real(), r.imag()};
        ++i;
    }
}

// ---- Integers through double precision -----------------------------------

// Four sources widened to 32-bit lanes.
template <class S>
inline __m128i load4(const S* p) {
    if constexpr (sizeof(S) == 1) {
        std::int32_t w;
        std::memcpy(&w, p, 4);
        return _mm_cvtepu8_epi32(_mm_cvtsi32_si128(w));
    } else if constexpr (sizeof(S) == 2) {
        const __m128i w = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
        return std::is_signed_v<S> ? _mm_cvtepi16_epi32(w) : _mm_cvtepu16_epi32(w);
    } else {
        return Full<S>::load(p);
    }
}

// Four results from 32-bit lanes to the destination type.
template <class D>
inline void store4(D* p, __m128i r) {
    if constexpr (sizeof(D) == 1) {
        const std::int32_t w = _mm_cvtsi128_si32(_mm_packus_epi16(_mm_packus_epi32(r, r), r));
        std::memcpy(p, &w, 4);
    } else {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi32(r, r));
    }
}

// round(sqrt(x) * scale) saturated to maxOut, for four non-negative lanes.
inline __m128i sqrtRound4(__m128i x, __m128d scale, __m128d maxOut) {
    constexpr int kNear = _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC;
    __m128d lo = _mm_mul_pd(_mm_sqrt_pd(_mm_cvtepi32_pd(x)), scale);
    __m128d hi = _mm_mul_pd(_mm_sqrt_pd(_mm_cvtepi32_pd(_mm_srli_si128(x, 8))), scale);
    lo = _mm_min_pd(_mm_round_pd(lo, kNear), maxOut);
    hi = _mm_min_pd(_mm_round_pd(hi, kNear), maxOut);
    return _mm_unpacklo_epi64(_mm_cvttpd_epi32(lo), _mm_cvttpd_epi32(hi));
}

template <class S, class D>
bool sqrtScaledViaDouble(const S* s, D* d, int len, int sf) {
    // Beyond +-64 every result is already 0 (sf > 64) or saturated (sf < -64).
    const int k = sf > 64 ? 64 : sf < -64 ? -64 : sf;
    const __m128d scale = _mm_set1_pd(std::ldexp(1.0, -k));
    const __m128d maxOut = _mm_set1_pd(double(std::numeric_limits<D>::max()));
    __m128i neg = _mm_setzero_si128();
    int i = 0;
    auto four = [&](__m128i x) {
        neg = _mm_or_si128(neg, x);  // sign bits of negative sources
        return sqrtRound4(_mm_max_epi32(x, _mm_setzero_si128()), scale, maxOut);
    };
    for (; i + 4 <= len; i += 4) store4(d + i, four(load4(s + i)));
    if (i < len) {
        S in[4] = {};
        D out[4];
        std::memcpy(in, s + i, std::size_t(len - i) * sizeof(S));
        store4(out, four(load4(in)));
        std::memcpy(d + i, out, std::size_t(len - i) * sizeof(D));
    }
    return _mm_movemask_ps(_mm_castsi128_ps(neg)) != 0;
}

// ---- Integers exactly ------------------------------------------------------

template <class S, class D>
bool sqrtScaledExact(const S* s, D* d, int len, int sf) {
    bool negative = false;
    const auto maxOut = std::uint64_t(std::numeric_limits<D>::max());
    for (int i = 0; i < len; ++i) {
        const S x = s[i];
        if (x < 0) {
            negative = true;
            d[i] = 0;
        } else {
            d[i] = D(introot::sqrtScaled(std::uint64_t(x), sf, maxOut));
        }
    }
    return negative;
}

// ---- Complex integers ------------------------------------------------------

void sqrtScaled16sc(const Zvp16sc* s, Zvp16sc* d, int len, int sf) {
    const int k = sf > 64 ? 64 : sf < -64 ? -64 : sf;
    const __m128d scale = _mm_set1_pd(std::ldexp(1.0, -k));
    constexpr int kNear = _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC;
    for (int i = 0; i < len; ++i) {
        __m128d re, im;
        csqrtLanes(_mm_set_sd(s[i].re), _mm_set_sd(s[i].im), re, im);
        // (re, im) scaled, rounded and clamped to [-32768, 32767].
        __m128d v = _mm_mul_pd(_mm_unpacklo_pd(re, im), scale);
        v = _mm_round_pd(v, kNear);
        v = _mm_max_pd(_mm_min_pd(v, _mm_set1_pd(32767.0)), _mm_set1_pd(-32768.0));
        const __m128i r = _mm_cvttpd_epi32(v);
        d[i] = Zvp16sc{Zvp16s(_mm_cvtsi128_si32(r)), Zvp16s(_mm_extract_epi32(r, 1))};
    }
}

// ---- Operations ----------------------------------------------------------

inline ZvpStatus negStatus(bool negative) { return negative ? zvpStsSqrtNegArg : zvpStsNoErr; }

template <class T>
ZvpStatus sqrtFloat(const T* s, T* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if constexpr (std::is_floating_point_v<T>) {
        return negStatus(sqrtKernel(s, d, len));
    } else {
        sqrtKernel(s, d, len);
        return zvpStsNoErr;
    }
}

template <class S, class D>
bool sqrtIntKernel(const S* s, D* d, int len, int sf) {
    if constexpr (sizeof(S) <= 4 && sizeof(D) <= 2)
        return sqrtScaledViaDouble(s, d, len, sf);
    else
        return sqrtScaledExact(s, d, len, sf);
}

// The integer forms that pass through double precision hold the MXCSR
// guard, so the roots and products round to nearest whatever the caller's
// rounding mode.
template <class S, class D>
ZvpStatus sqrtSfs(const S* s, D* d, int len, int sf) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    return negStatus(sqrtIntKernel(s, d, len, sf));
}

ZvpStatus sqrtSfs(const Zvp16sc* s, Zvp16sc* d, int len, int sf) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    sqrtScaled16sc(s, d, len, sf);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_SQRT(T)                                                                             \
    ZvpStatus zvpsSqrt_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) { return sqrtFloat(pSrc, pDst, len); } \
    ZvpStatus zvpsSqrt_##T##_I(Zvp##T* pSrcDst, int len) { return sqrtFloat<Zvp##T>(pSrcDst, pSrcDst, len); }
ZVP_SQRT(32f)
ZVP_SQRT(32fc)
ZVP_SQRT(64f)
ZVP_SQRT(64fc)
#undef ZVP_SQRT

#define ZVP_SQRT_SFS(T)                                                                         \
    ZvpStatus zvpsSqrt_##T##_Sfs(const Zvp##T* pSrc, Zvp##T* pDst, int len, int scaleFactor) {  \
        return sqrtSfs(pSrc, pDst, len, scaleFactor);                                           \
    }                                                                                           \
    ZvpStatus zvpsSqrt_##T##_ISfs(Zvp##T* pSrcDst, int len, int scaleFactor) {                  \
        return sqrtSfs(static_cast<const Zvp##T*>(pSrcDst), pSrcDst, len, scaleFactor);       \
    }
ZVP_SQRT_SFS(8u)
ZVP_SQRT_SFS(16s)
ZVP_SQRT_SFS(16u)
ZVP_SQRT_SFS(16sc)
ZVP_SQRT_SFS(64s)
#undef ZVP_SQRT_SFS

ZvpStatus zvpsSqrt_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    return sqrtSfs(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsSqrt_64s16s_Sfs(const Zvp64s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    return sqrtSfs(pSrc, pDst, len, scaleFactor);
}

}  // namespace zvp::p8

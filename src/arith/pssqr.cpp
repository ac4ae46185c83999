// Sqr: x^2 element by element. Float forms use IEEE products; complex forms
// give (a^2 - b^2, 2ab). Integer forms take the exact square R and scale it
// by the library's rule (R * 2^-sf, ties to even, saturated).
//
// The 8u, 16u and 16s kernels form R in unsigned 32-bit lanes (at most
// 65535^2 < 2^32) and pick one of five lane rules by the scale factor, each
// giving exactly scaleRule's result: saturate (0), round-shift (1..32),
// zero (above 32), shift-saturate (-31..-1), bound (-32 and below).
#include <cstdint>
#include <limits>
#include <type_traits>

#include "check.h"
#include "p8/powers.h"
#include "scale.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

// ---- Float ---------------------------------------------------------------

void sqrKernel(const Zvp32f* s, Zvp32f* d, int len) {
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        const __m128 a = _mm_loadu_ps(s + i), b = _mm_loadu_ps(s + i + 4);
        _mm_storeu_ps(d + i, _mm_mul_ps(a, a));
        _mm_storeu_ps(d + i + 4, _mm_mul_ps(b, b));
    }
    for (; i < len; ++i) d[i] = s[i] * s[i];
}

void sqrKernel(const Zvp64f* s, Zvp64f* d, int len) {
    int i = 0;
    for (; i + 4 <= len; i += 4) {
        const __m128d a = _mm_loadu_pd(s + i), b = _mm_loadu_pd(s + i + 2);
        _mm_storeu_pd(d + i, _mm_mul_pd(a, a));
        _mm_storeu_pd(d + i + 2, _mm_mul_pd(b, b));
    }
    for (; i < len; ++i) d[i] = s[i] * s[i];
}

// (a + bi)^2 = (a*a - b*b) + (p + p)i with p = a*b, in the same operation
// order on both paths.
template <class C, class F>
C sqrComplexOne(C z) {
    const F p = z.re * z.im;
    return C{z.re * z.re - z.im * z.im, p + p};
}

void sqrKernel(const Zvp32fc* s, Zvp32fc* d, int len) {
    const float* sf = reinterpret_cast<const float*>(s);
    float* df = reinterpret_cast<float*>(d);
    int i = 0;
    for (; i + 4 <= len; i += 4) {
        const __m128 v0 = _mm_loadu_ps(sf + 2 * i), v1 = _mm_loadu_ps(sf + 2 * i + 4);
        const __m128 a = _mm_shuffle_ps(v0, v1, _MM_SHUFFLE(2, 0, 2, 0));
        const __m128 b = _mm_shuffle_ps(v0, v1, _MM_SHUFFLE(3, 1, 3, 1));
        const __m128 re = _mm_sub_ps(_mm_mul_ps(a, a), _mm_mul_ps(b, b));
        const __m128 p = _mm_mul_ps(a, b);
        const __m128 im = _mm_add_ps(p, p);
        _mm_storeu_ps(df + 2 * i, _mm_unpacklo_ps(re, im));
        _mm_storeu_ps(df + 2 * i + 4, _mm_unpackhi_ps(re, im));
    }
    for (; i < len; ++i) d[i] = sqrComplexOne<Zvp32fc, float>(s[i]);
}

void sqrKernel(const Zvp64fc* s, Zvp64fc* d, int len) {
    const double* sd = reinterpret_cast<const double*>(s);
    double* dd = reinterpret_cast<double*>(d);
    int i = 0;
    for (; i + 2 <= len; i += 2) {
        const __m128d v0 = _mm_loadu_pd(sd + 2 * i), v1 = _mm_loadu_pd(sd + 2 * i + 2);
        const __m128d a = _mm_unpacklo_pd(v0, v1), b = _mm_unpackhi_pd(v0, v1);
        const __m128d re = _mm_sub_pd(_mm_mul_pd(a, a), _mm_mul_pd(b, b));
        const __m128d p = _mm_mul_pd(a, b);
        const __m128d im = _mm_add_pd(p, p);
        _mm_storeu_pd(dd + 2 * i, _mm_unpacklo_pd(re, im));
        _mm_storeu_pd(dd + 2 * i + 2, _mm_unpackhi_pd(re, im));
    }
    for (; i < len; ++i) d[i] = sqrComplexOne<Zvp64fc, double>(s[i]);
}

template <class T>
ZvpStatus sqrOut(const T* s, T* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    sqrKernel(s, d, len);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus sqrIn(T* v, int len) {
    ZVP_CHECK_PTRS(v);
    ZVP_CHECK_LENS(len);
    sqrKernel(v, v, len);
    return zvpStsNoErr;
}

// ---- Scaled integers -----------------------------------------------------

// a > b on unsigned 32-bit lanes.
inline __m128i gtU32(__m128i a, __m128i b) {
    const __m128i bias = _mm_set1_epi32(std::int32_t(0x80000000u));
    return _mm_cmpgt_epi32(_mm_xor_si128(a, bias), _mm_xor_si128(b, bias));
}

enum class Path { Sat, Shift, Zero, ShiftLeft, Bound };

// The scale rule on unsigned 32-bit lanes R, saturated to maxOut.
struct LaneRule {
    Path path;
    __m128i count;    // shift count
    __m128i mask;     // 2^sf - 1
    __m128i half;     // 2^(sf-1)
    __m128i keep;     // largest R that survives a left shift
    __m128i maxOut;

    LaneRule(int sf, std::uint32_t mx) : maxOut(_mm_set1_epi32(std::int32_t(mx))) {
        count = mask = half = keep = _mm_setzero_si128();
        if (sf == 0) {
            path = Path::Sat;
        } else if (sf > 32) {
            path = Path::Zero;
        } else if (sf > 0) {
            path = Path::Shift;
            count = _mm_cvtsi32_si128(sf);
            mask = _mm_set1_epi32(std::int32_t(std::uint32_t((std::uint64_t(1) << sf) - 1)));
            half = _mm_set1_epi32(std::int32_t(std::uint32_t(1) << (sf - 1)));
        } else if (sf > -32) {
            path = Path::ShiftLeft;
            count = _mm_cvtsi32_si128(-sf);
            keep = _mm_set1_epi32(std::int32_t(mx >> -sf));
        } else {
            path = Path::Bound;
        }
    }

    template <Path P>
    __m128i apply(__m128i r) const {
        if constexpr (P == Path::Sat) {
            return _mm_min_epu32(r, maxOut);
        } else if constexpr (P == Path::Shift) {
            // Round up iff rem + (q AND 1) > 2^(sf-1) (no wrap: for sf = 32,
            // q = 0).
            const __m128i q = _mm_srl_epi32(r, count);
            const __m128i rem = _mm_add_epi32(_mm_and_si128(r, mask), _mm_and_si128(q, _mm_set1_epi32(1)));
            return _mm_min_epu32(_mm_sub_epi32(q, gtU32(rem, half)), maxOut);
        } else if constexpr (P == Path::Zero) {
            return _mm_setzero_si128();
        } else if constexpr (P == Path::ShiftLeft) {
            return _mm_blendv_epi8(_mm_sll_epi32(r, count), maxOut, gtU32(r, keep));
        } else {
            return _mm_andnot_si128(_mm_cmpeq_epi32(r, _mm_setzero_si128()), maxOut);
        }
    }
};

// Squares of eight 16-bit lanes as two vectors of 32-bit lanes.
template <bool Signed>
inline void squares16(__m128i x, __m128i& lo, __m128i& hi) {
    const __m128i pl = _mm_mullo_epi16(x, x);
    const __m128i ph = Signed ? _mm_mulhi_epi16(x, x) : _mm_mulhi_epu16(x, x);
    lo = _mm_unpacklo_epi16(pl, ph);
    hi = _mm_unpackhi_epi16(pl, ph);
}

// The vector body for one lane rule; returns the number of elements done.
template <Path P, class T>
int sqrScaledBody(const T* s, T* d, int len, const LaneRule& rule) {
    int i = 0;
    if constexpr (sizeof(T) == 1) {
        for (; i + 16 <= len; i += 16) {
            const __m128i v = simd::loadu(s + i);
            __m128i r0, r1, r2, r3;
            squares16<false>(_mm_unpacklo_epi8(v, _mm_setzero_si128()), r0, r1);
            squares16<false>(_mm_unpackhi_epi8(v, _mm_setzero_si128()), r2, r3);
            const __m128i a = _mm_packus_epi32(rule.apply<P>(r0), rule.apply<P>(r1));
            const __m128i b = _mm_packus_epi32(rule.apply<P>(r2), rule.apply<P>(r3));
            simd::storeu(d + i, _mm_packus_epi16(a, b));
        }
    } else {
        for (; i + 8 <= len; i += 8) {
            __m128i r0, r1;
            squares16<std::is_signed_v<T>>(simd::loadu(s + i), r0, r1);
            // Lanes hold at most 65535, so the unsigned pack is exact.
            simd::storeu(d + i, _mm_packus_epi32(rule.apply<P>(r0), rule.apply<P>(r1)));
        }
    }
    return i;
}

template <class T>
void sqrScaledKernel(const T* s, T* d, int len, int sf) {
    const LaneRule rule(sf, std::numeric_limits<T>::max());
    int i = 0;
    switch (rule.path) {
        case Path::Sat: i = sqrScaledBody<Path::Sat>(s, d, len, rule); break;
        case Path::Shift: i = sqrScaledBody<Path::Shift>(s, d, len, rule); break;
        case Path::Zero: i = sqrScaledBody<Path::Zero>(s, d, len, rule); break;
        case Path::ShiftLeft: i = sqrScaledBody<Path::ShiftLeft>(s, d, len, rule); break;
        case Path::Bound: i = sqrScaledBody<Path::Bound>(s, d, len, rule); break;
    }
    for (; i < len; ++i) {
        const std::int64_t r = std::int64_t(s[i]) * s[i];
        d[i] = scaleRule<T>(r, sf);
    }
}

void sqrScaledKernel(const Zvp16sc* s, Zvp16sc* d, int len, int sf) {
    for (int i = 0; i < len; ++i) {
        const std::int64_t a = s[i].re, b = s[i].im;
        d[i] = Zvp16sc{scaleRule<Zvp16s>(a * a - b * b, sf), scaleRule<Zvp16s>(2 * a * b, sf)};
    }
}

template <class T>
ZvpStatus sqrSfs(const T* s, T* d, int len, int sf) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    sqrScaledKernel(s, d, len, sf);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus sqrISfs(T* v, int len, int sf) {
    ZVP_CHECK_PTRS(v);
    ZVP_CHECK_LENS(len);
    sqrScaledKernel(v, v, len, sf);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_SQR(T)                                                                              \
    ZvpStatus zvpsSqr_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) { return sqrOut(pSrc, pDst, len); } \
    ZvpStatus zvpsSqr_##T##_I(Zvp##T* pSrcDst, int len) { return sqrIn(pSrcDst, len); }
ZVP_SQR(32f)
ZVP_SQR(32fc)
ZVP_SQR(64f)
ZVP_SQR(64fc)
#undef ZVP_SQR

#define ZVP_SQR_SFS(T)                                                                          \
    ZvpStatus zvpsSqr_##T##_Sfs(const Zvp##T* pSrc, Zvp##T* pDst, int len, int scaleFactor) {   \
        return sqrSfs(pSrc, pDst, len, scaleFactor);                                            \
    }                                                                                           \
    ZvpStatus zvpsSqr_##T##_ISfs(Zvp##T* pSrcDst, int len, int scaleFactor) {                   \
        return sqrISfs(pSrcDst, len, scaleFactor);                                              \
    }
ZVP_SQR_SFS(8u)
ZVP_SQR_SFS(16s)
ZVP_SQR_SFS(16u)
ZVP_SQR_SFS(16sc)
#undef ZVP_SQR_SFS

}  // namespace zvp::p8

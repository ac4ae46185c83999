// Vectorised single-precision exp, ln and arctan: range reduction followed by
// a minimax polynomial, four lanes at a time with SSE4.1. Each function keeps
// the relative error below 2^-21 over its whole domain (the measured worst
// cases are a few ulps; see tests/arith/powers_internal_test.cpp).
//
// Special values:
//   expPs: NaN -> NaN; +inf and x > 88.72284 -> +inf; -inf and
//          x < -103.97 -> +0; results below the smallest normal are
//          rounded once, as gradual underflow.
//   lnPs:  NaN -> NaN; x < 0 and -inf -> NaN; +-0 -> -inf; +inf -> +inf;
//          denormal inputs are handled exactly; ln(1) = 0 exactly.
//   atanPs: NaN -> NaN; +-inf -> +-pi/2; odd, so atan(-0) = -0.
//
// The lane functions round with the processor's current rounding mode only
// in their ordinary arithmetic; the integer part of the range reduction is
// always taken to nearest. The array helpers run the same lane function on a
// padded copy of the last partial block, so every element gets exactly the
// value the vector body would give it.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <cstring>

namespace zvp::mathpoly {

// ---- e^x ---------------------------------------------------------------

inline __m128 expPs(__m128 x) {
    const __m128 log2e = _mm_set1_ps(1.44269502f);
    // ln 2 = kLn2Hi + kLn2Lo; kLn2Hi has 9 significant bits, so n * kLn2Hi is
    // exact for every |n| <= 151 and x - n * kLn2Hi is exact too.
    const __m128 ln2Hi = _mm_set1_ps(0.693359375f);
    const __m128 ln2Lo = _mm_set1_ps(-2.12194440e-4f);
    // Lanes with |x| > 87 (overflow, gradual underflow) take the slow path
    // below; a NaN compares false and simply propagates.
    const bool ordinary = _mm_movemask_ps(_mm_cmpgt_ps(_mm_andnot_ps(_mm_set1_ps(-0.0f), x), _mm_set1_ps(87.0f))) == 0;
    if (!ordinary) {
        // Clamp so that n stays within [-150, 129]; max/min keep a NaN in x.
        x = _mm_max_ps(_mm_set1_ps(-104.0f), x);
        x = _mm_min_ps(_mm_set1_ps(89.0f), x);
    }
    const __m128 n = _mm_round_ps(_mm_mul_ps(x, log2e), _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
    __m128 r = _mm_sub_ps(x, _mm_mul_ps(n, ln2Hi));
    r = _mm_sub_ps(r, _mm_mul_ps(n, ln2Lo));  // |r| <= 0.3466
    // e^r = 1 + r + r^2 * P(r), P a degree-4 minimax fit on [-ln2/2, ln2/2].
    const __m128 r2 = _mm_mul_ps(r, r);
    __m128 p = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(1.39411137e-3f), r), _mm_set1_ps(8.36317521e-3f));
    const __m128 q = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(1.66665770e-1f), r), _mm_set1_ps(5.00000003e-1f));
    p = _mm_add_ps(_mm_mul_ps(p, r), _mm_set1_ps(4.16663752e-2f));
    p = _mm_add_ps(_mm_mul_ps(p, r2), q);
    p = _mm_add_ps(_mm_mul_ps(p, r2), r);
    p = _mm_add_ps(p, _mm_set1_ps(1.0f));
    // Scale by 2^n. For |x| <= 87 the result is a normal number, so adding n
    // to the exponent field of p is exact; the other lanes take two factors
    // of 2^(n/2), so that overflow gives inf and gradual underflow rounds
    // only once.
    const __m128i ni = _mm_cvtps_epi32(n);
    if (ordinary) return _mm_castsi128_ps(_mm_add_epi32(_mm_castps_si128(p), _mm_slli_epi32(ni, 23)));
    const __m128i n1 = _mm_srai_epi32(ni, 1);
    const __m128i n2 = _mm_sub_epi32(ni, n1);
    const __m128i e1 = _mm_slli_epi32(_mm_add_epi32(n1, _mm_set1_epi32(127)), 23);
    const __m128i e2 = _mm_slli_epi32(_mm_add_epi32(n2, _mm_set1_epi32(127)), 23);
    return _mm_mul_ps(_mm_mul_ps(p, _mm_castsi128_ps(e1)), _mm_castsi128_ps(e2));
}

// ---- ln x --------------------------------------------------------------

// ln x for lanes holding positive normal finite values, given their bits;
// eAdjust is added to the binary exponent.
inline __m128 lnNormalPs(__m128i bits, __m128i eAdjust) {
    // x = 2^e * m with m in [sqrt(2)/2, sqrt(2)).
    const __m128i t = _mm_sub_epi32(bits, _mm_set1_epi32(0x3F3504F3));
    const __m128i e = _mm_add_epi32(_mm_srai_epi32(t, 23), eAdjust);
    const __m128 m = _mm_castsi128_ps(
        _mm_add_epi32(_mm_and_si128(t, _mm_set1_epi32(0x007FFFFF)), _mm_set1_epi32(0x3F3504F3)));
    // ln m = 2 atanh(s), s = (m - 1) / (m + 1), |s| <= 0.1716:
    //   ln m = 2s + s * z * R(z), z = s^2, R a degree-2 minimax fit.
    const __m128 one = _mm_set1_ps(1.0f);
    const __m128 s = _mm_div_ps(_mm_sub_ps(m, one), _mm_add_ps(m, one));
    const __m128 z = _mm_mul_ps(s, s);
    __m128 rz = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(2.95820469e-1f), z), _mm_set1_ps(3.99887189e-1f));
    rz = _mm_add_ps(_mm_mul_ps(rz, z), _mm_set1_ps(6.66666853e-1f));
    const __m128 ef = _mm_cvtepi32_ps(e);
    // ln 2 = 0.693145751953125 (15 bits, so e * hi is exact) + 1.42860677e-6.
    const __m128 lo = _mm_add_ps(_mm_mul_ps(_mm_mul_ps(s, z), rz), _mm_mul_ps(ef, _mm_set1_ps(1.42860677e-6f)));
    return _mm_add_ps(_mm_mul_ps(ef, _mm_set1_ps(0.693145751953125f)), _mm_add_ps(_mm_add_ps(s, s), lo));
}

inline __m128 lnPs(__m128 x) {
    const __m128i bits = _mm_castps_si128(x);
    // Positive normal finite lanes have bits - 2^23 below 0x7F000000 unsigned.
    const __m128i t = _mm_sub_epi32(bits, _mm_set1_epi32(0x00800000));
    const __m128i normal = _mm_cmpeq_epi32(_mm_min_epu32(t, _mm_set1_epi32(0x7EFFFFFF)), t);
    if (_mm_movemask_epi8(normal) == 0xFFFF) return lnNormalPs(bits, _mm_setzero_si128());
    // Denormal inputs: scale by 2^23 first and take 23 off the exponent.
    const __m128i denorm = _mm_and_si128(_mm_cmpgt_epi32(_mm_set1_epi32(0x00800000), bits),
                                         _mm_cmpgt_epi32(bits, _mm_setzero_si128()));
    const __m128 xs = _mm_mul_ps(x, _mm_set1_ps(8388608.0f));
    __m128 y = lnNormalPs(_mm_blendv_epi8(bits, _mm_castps_si128(xs), denorm),
                          _mm_and_si128(denorm, _mm_set1_epi32(-23)));
    // Special inputs: +-0 -> -inf, negative -> NaN, +inf and NaN -> x.
    const __m128 zero = _mm_setzero_ps();
    const __m128 keep = _mm_or_ps(_mm_cmpeq_ps(x, _mm_set1_ps(__builtin_inff())), _mm_cmpunord_ps(x, x));
    y = _mm_blendv_ps(y, x, keep);
    y = _mm_blendv_ps(y, _mm_set1_ps(-__builtin_inff()), _mm_cmpeq_ps(x, zero));
    y = _mm_blendv_ps(y, _mm_set1_ps(__builtin_nanf("")), _mm_cmplt_ps(x, zero));
    return y;
}

// ---- arctan x ----------------------------------------------------------

inline __m128 atanPs(__m128 x) {
    const __m128 signMask = _mm_set1_ps(-0.0f);
    const __m128 sign = _mm_and_ps(x, signMask);
    const __m128 a = _mm_andnot_ps(signMask, x);
    // a > tan(3pi/8): atan a = pi/2 + atan(-1/a)
    // a > tan(pi/8):  atan a = pi/4 + atan((a - 1) / (a + 1))
    // otherwise:      atan a = atan(a)
    const __m128 one = _mm_set1_ps(1.0f);
    const __m128 big = _mm_cmpgt_ps(a, _mm_set1_ps(2.41421366f));
    const __m128 mid = _mm_andnot_ps(big, _mm_cmpgt_ps(a, _mm_set1_ps(0.414213568f)));
    const __m128 num = _mm_blendv_ps(_mm_sub_ps(a, _mm_and_ps(mid, one)), _mm_set1_ps(-1.0f), big);
    const __m128 den = _mm_blendv_ps(_mm_add_ps(one, _mm_and_ps(mid, a)), a, big);
    const __m128 t = _mm_div_ps(num, den);
    // pi/2 and pi/4, each as a single plus a small correction.
    const __m128 baseHi = _mm_or_ps(_mm_and_ps(big, _mm_set1_ps(1.57079637f)),
                                    _mm_and_ps(mid, _mm_set1_ps(0.785398185f)));
    const __m128 baseLo = _mm_or_ps(_mm_and_ps(big, _mm_set1_ps(-4.37113883e-8f)),
                                    _mm_and_ps(mid, _mm_set1_ps(-2.18556941e-8f)));
    // atan t = t + t * z * Q(z), z = t^2 <= 0.1716, Q a degree-4 minimax fit.
    const __m128 z = _mm_mul_ps(t, t);
    const __m128 z2 = _mm_mul_ps(z, z);
    const __m128 q01 = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(1.99995595e-1f), z), _mm_set1_ps(-3.33333319e-1f));
    const __m128 q23 = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(1.07488575e-1f), z), _mm_set1_ps(-1.42645070e-1f));
    __m128 q = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(-6.46683346e-2f), z2), q23);
    q = _mm_add_ps(_mm_mul_ps(q, z2), q01);
    const __m128 small = _mm_add_ps(_mm_mul_ps(_mm_mul_ps(t, z), q), baseLo);
    const __m128 y = _mm_add_ps(baseHi, _mm_add_ps(t, small));
    return _mm_xor_ps(y, sign);
}

// ---- Arrays ------------------------------------------------------------

// d[i] = F(s[i]) for i < len; s and d may be the same array.
template <__m128 (*F)(__m128)>
inline void mapPs(const float* s, float* d, int len) {
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        const __m128 a = _mm_loadu_ps(s + i);
        const __m128 b = _mm_loadu_ps(s + i + 4);
        _mm_storeu_ps(d + i, F(a));
        _mm_storeu_ps(d + i + 4, F(b));
    }
    for (; i + 4 <= len; i += 4) _mm_storeu_ps(d + i, F(_mm_loadu_ps(s + i)));
    if (i < len) {
        alignas(16) float buf[4] = {0.0f, 0.0f, 0.0f, 0.0f};
        const std::size_t n = std::size_t(len - i) * sizeof(float);
        std::memcpy(buf, s + i, n);
        _mm_store_ps(buf, F(_mm_load_ps(buf)));
        std::memcpy(d + i, buf, n);
    }
}

// The single-precision kernels of the exp, ln and arctan operations.
inline void ownsExp_32f_A21(const float* s, float* d, int len) { mapPs<expPs>(s, d, len); }
inline void ownsLn_32f_A21(const float* s, float* d, int len) { mapPs<lnPs>(s, d, len); }
inline void ownsArctan_32f_A21(const float* s, float* d, int len) { mapPs<atanPs>(s, d, len); }

}  // namespace zvp::mathpoly

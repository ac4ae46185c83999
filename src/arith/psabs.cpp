// Abs: the absolute value of every element. Integer forms saturate, so the
// most negative value gives the largest positive one (|-32768| = 32767);
// float forms clear the sign bit, so -0 gives +0 and a NaN stays a NaN.
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "check.h"
#include "p8/powers.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

template <class T>
T absOne(T x) {
    if constexpr (std::is_floating_point_v<T>) {
        return std::fabs(x);
    } else {
        if (x == std::numeric_limits<T>::min()) return std::numeric_limits<T>::max();
        return x < 0 ? T(-x) : x;
    }
}

template <class T>
__m128i absVec(__m128i v) {
    if constexpr (std::is_same_v<T, Zvp16s>) {
        // max(x, 0 -sat x): the saturating negation maps -32768 to 32767.
        return _mm_max_epi16(v, _mm_subs_epi16(_mm_setzero_si128(), v));
    } else if constexpr (std::is_same_v<T, Zvp32s>) {
        // |x| wraps only for -2^31, which stays 0x80000000; subtracting the
        // top bit turns exactly that lane into 0x7FFFFFFF.
        const __m128i a = _mm_abs_epi32(v);
        return _mm_sub_epi32(a, _mm_srli_epi32(a, 31));
    } else if constexpr (std::is_same_v<T, Zvp32f>) {
        return _mm_and_si128(v, _mm_set1_epi32(0x7FFFFFFF));
    } else {
        static_assert(std::is_same_v<T, Zvp64f>);
        return _mm_and_si128(v, _mm_set1_epi64x(0x7FFFFFFFFFFFFFFFll));
    }
}

template <class T>
void absKernel(const T* s, T* d, int len) {
    constexpr int V = 16 / sizeof(T);
    int i = 0;
    for (; i + 2 * V <= len; i += 2 * V) {
        const __m128i a = simd::loadu(s + i);
        const __m128i b = simd::loadu(s + i + V);
        simd::storeu(d + i, absVec<T>(a));
        simd::storeu(d + i + V, absVec<T>(b));
    }
    for (; i + V <= len; i += V) simd::storeu(d + i, absVec<T>(simd::loadu(s + i)));
    for (; i < len; ++i) d[i] = absOne(s[i]);
}

template <class T>
ZvpStatus absOut(const T* s, T* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    absKernel(s, d, len);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus absIn(T* v, int len) {
    ZVP_CHECK_PTRS(v);
    ZVP_CHECK_LENS(len);
    absKernel<T>(v, v, len);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_ABS(T)                                                                              \
    ZvpStatus zvpsAbs_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) { return absOut(pSrc, pDst, len); } \
    ZvpStatus zvpsAbs_##T##_I(Zvp##T* pSrcDst, int len) { return absIn(pSrcDst, len); }
ZVP_ABS(16s)
ZVP_ABS(32s)
ZVP_ABS(32f)
ZVP_ABS(64f)
#undef ZVP_ABS

}  // namespace zvp::p8

// Flip: destination[i] = source[len-1-i], whole elements (a complex element
// keeps its real/imaginary order). An out-of-place call with equal pointers
// runs in place.
#include <utility>

#include "check.h"
#include "p8/copy.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

template <class T>
void flipOutOfPlace(const T* s, T* d, int len) {
    constexpr int V = 16 / sizeof(T);
    int i = 0;
    for (; i + V <= len; i += V)
        simd::storeu(d + i, simd::reverse<sizeof(T)>(simd::loadu(s + len - i - V)));
    for (; i < len; ++i) d[i] = s[len - 1 - i];
}

template <class T>
void flipInPlace(T* v, int len) {
    constexpr int V = 16 / sizeof(T);
    int i = 0, j = len - V;
    for (; i + V <= j; i += V, j -= V) {
        const __m128i a = simd::loadu(v + i);
        const __m128i b = simd::loadu(v + j);
        simd::storeu(v + i, simd::reverse<sizeof(T)>(b));
        simd::storeu(v + j, simd::reverse<sizeof(T)>(a));
    }
    // The middle part [i, j + V) is centred, so reversing it finishes the job.
    for (int lo = i, hi = (j + V > i ? j + V : i) - 1; lo < hi; ++lo, --hi)
        std::swap(v[lo], v[hi]);
}

template <class T>
ZvpStatus flipI(T* v, int len) {
    ZVP_CHECK_PTRS(v);
    ZVP_CHECK_LENS(len);
    flipInPlace(v, len);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus flip(const T* s, T* d, int len) {
    if (s == d) return flipI(d, len);
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    flipOutOfPlace(s, d, len);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_FLIP(T)                                                          \
    ZvpStatus zvpsFlip_##T(const Zvp##T* s, Zvp##T* d, int len) {            \
        return flip(s, d, len);                                              \
    }                                                                        \
    ZvpStatus zvpsFlip_##T##_I(Zvp##T* v, int len) { return flipI(v, len); }
ZVP_FLIP(8u)
ZVP_FLIP(16u)
ZVP_FLIP(32f)
ZVP_FLIP(32fc)
ZVP_FLIP(64f)
ZVP_FLIP(64fc)
#undef ZVP_FLIP

}  // namespace zvp::p8

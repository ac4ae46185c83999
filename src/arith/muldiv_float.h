// Element-wise loops and complex products shared by the floating-point
// multiply, divide and multiply-accumulate operations.
//
// The vector and the scalar forms of each operation perform the same IEEE
// operations in the same order (there is no fused multiply-add at this
// processor level), so both give the same bits.
#pragma once

#include <immintrin.h>

namespace zvp::mulf {

inline __m128 load(const float* p) { return _mm_loadu_ps(p); }
inline __m128d load(const double* p) { return _mm_loadu_pd(p); }
inline void store(float* p, __m128 v) { _mm_storeu_ps(p, v); }
inline void store(double* p, __m128d v) { _mm_storeu_pd(p, v); }
inline __m128 set1(float v) { return _mm_set1_ps(v); }
inline __m128d set1(double v) { return _mm_set1_pd(v); }
inline __m128 mul(__m128 a, __m128 b) { return _mm_mul_ps(a, b); }
inline __m128d mul(__m128d a, __m128d b) { return _mm_mul_pd(a, b); }
inline __m128 add(__m128 a, __m128 b) { return _mm_add_ps(a, b); }
inline __m128d add(__m128d a, __m128d b) { return _mm_add_pd(a, b); }
inline __m128 div(__m128 a, __m128 b) { return _mm_div_ps(a, b); }
inline __m128d div(__m128d a, __m128d b) { return _mm_div_pd(a, b); }
inline __m128 cmpeq(__m128 a, __m128 b) { return _mm_cmpeq_ps(a, b); }
inline __m128d cmpeq(__m128d a, __m128d b) { return _mm_cmpeq_pd(a, b); }
inline __m128 zero(float) { return _mm_setzero_ps(); }
inline __m128d zero(double) { return _mm_setzero_pd(); }
inline __m128 bitOr(__m128 a, __m128 b) { return _mm_or_ps(a, b); }
inline __m128d bitOr(__m128d a, __m128d b) { return _mm_or_pd(a, b); }
inline int anyLane(__m128 m) { return _mm_movemask_ps(m); }
inline int anyLane(__m128d m) { return _mm_movemask_pd(m); }

template <class T>
using Vec = decltype(zero(T()));

// Complex products (re, im) x (re, im) of the pairs held in a vector:
//   re = ar*br - ai*bi, im = ar*bi + ai*br.
inline __m128 cmul(__m128 a, __m128 b) {
    const __m128 bs = _mm_shuffle_ps(b, b, _MM_SHUFFLE(2, 3, 0, 1));
    return _mm_addsub_ps(_mm_mul_ps(_mm_moveldup_ps(a), b), _mm_mul_ps(_mm_movehdup_ps(a), bs));
}
inline __m128d cmul(__m128d a, __m128d b) {
    const __m128d bs = _mm_shuffle_pd(b, b, 1);
    return _mm_addsub_pd(_mm_mul_pd(_mm_movedup_pd(a), b), _mm_mul_pd(_mm_unpackhi_pd(a, a), bs));
}
// b as the pair of a complex constant repeated, and its swap (im, re).
inline __m128 cpair(float re, float im) { return _mm_setr_ps(re, im, re, im); }
inline __m128d cpair(double re, double im) { return _mm_setr_pd(re, im); }
inline __m128 cmulConst(__m128 a, __m128 c, __m128 cs) {
    return _mm_addsub_ps(_mm_mul_ps(_mm_moveldup_ps(a), c), _mm_mul_ps(_mm_movehdup_ps(a), cs));
}
inline __m128d cmulConst(__m128d a, __m128d c, __m128d cs) {
    return _mm_addsub_pd(_mm_mul_pd(_mm_movedup_pd(a), c), _mm_mul_pd(_mm_unpackhi_pd(a, a), cs));
}

template <class T>
inline void cmulScalar(T ar, T ai, T br, T bi, T& re, T& im) {
    re = ar * br - ai * bi;
    im = ar * bi + ai * br;
}

// Runs op.vec(i) over whole vectors of W values of T (four at a time while
// they last) and op.tail(i) over the remaining values, U at a time.
// Counts are in values of T (a complex element is two). The operation is
// taken by value, so its pointers stay in registers across the stores, and
// returned with whatever it gathered.
template <int W, int U, class Op>
inline Op drive(Op op, int n) {
    int i = 0;
    for (; i + 4 * W <= n; i += 4 * W) {
        op.vec(i);
        op.vec(i + W);
        op.vec(i + 2 * W);
        op.vec(i + 3 * W);
    }
    for (; i + W <= n; i += W) op.vec(i);
    for (; i < n; i += U) op.tail(i);
    return op;
}

}  // namespace zvp::mulf

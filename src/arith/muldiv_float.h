// Element-wise loops and complex products shared by the floating-point
// multiply, divide and multiply-accumulate operations.
//
// The vector and the scalar forms of each operation perform the same IEEE
// operations in the same order (there is no fused multiply-add at this
// processor level), so both give the same bits.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

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

inline void stream(float* p, __m128 v) { _mm_stream_ps(p, v); }
inline void stream(double* p, __m128d v) { _mm_stream_pd(p, v); }

// An operation that computes one vector of results at a time, which the
// driver stores: Vec compute(i) for values i .. i+W-1 of the destination d,
// and tail(i) for U values the scalar way.
template <class Op>
concept Computes = requires(const Op& op) { op.compute(0); };

// Destinations of 8 MiB or more, 16-byte aligned, are written with
// streaming stores: with their sources such working sets no longer stay in
// the last-level cache, and the stores then need not read the destination in
// first (a third less memory traffic for two sources). Smaller ones keep
// ordinary stores, so a result that fits the caches stays there.
constexpr std::size_t kStreamBytes = std::size_t(1) << 23;

// Runs the operation over whole vectors of W values of T (four at a time
// while they last), then op.tail(i) over the remaining values, U at a time.
// Counts are in values of T (a complex element is two). The operation is
// taken by value, so its pointers stay in registers across the stores, and
// returned with whatever it gathered. Operations without compute() store
// their own results in op.vec(i).
template <int W, int U, class Op>
inline Op drive(Op op, int n) {
    int i = 0;
    if constexpr (Computes<Op>) {
        using T = std::remove_pointer_t<decltype(op.d)>;
        const auto body = [&](auto put) {
            for (; i + 4 * W <= n; i += 4 * W) {  // all loads of a step before its stores
                const auto v0 = op.compute(i), v1 = op.compute(i + W);
                const auto v2 = op.compute(i + 2 * W), v3 = op.compute(i + 3 * W);
                put(i, v0);
                put(i + W, v1);
                put(i + 2 * W, v2);
                put(i + 3 * W, v3);
            }
            for (; i + W <= n; i += W) put(i, op.compute(i));
        };
        if (std::size_t(n) * sizeof(T) >= kStreamBytes && (reinterpret_cast<std::uintptr_t>(op.d) & 15) == 0) {
            body([&](int k, auto v) { stream(op.d + k, v); });
            _mm_sfence();
        } else {
            body([&](int k, auto v) { store(op.d + k, v); });
        }
    } else {
        for (; i + 4 * W <= n; i += 4 * W) {
            op.vec(i);
            op.vec(i + W);
            op.vec(i + 2 * W);
            op.vec(i + 3 * W);
        }
        for (; i + W <= n; i += W) op.vec(i);
    }
    for (; i < n; i += U) op.tail(i);
    return op;
}

}  // namespace zvp::mulf

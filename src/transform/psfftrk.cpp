// Recombination passes of the real transforms (see psfftr.h for the
// formulas). Each pass walks k upward and N/2 - k downward together: the
// single-precision pass handles two k per step (one 16-byte vector of two
// complex values at each end), the double-precision pass one.
//
// The passes run in place as well as out of place, including the Pack
// layout, whose values sit one position lower than the complex values they
// come from (or go to). Every step first loads its own input and only then
// stores the previous step's results, so no value is overwritten before it
// has been read.
#include <immintrin.h>

#include <cstdint>

#include "psfftr.h"

namespace zvp::ZVP_LEVEL::fftr {
namespace {

// ---- where the (b, a) coefficients come from --------------------------------

// Precomputed table: for step t the float vectors (b_k, b_k, b_k+1, b_k+1) and
// (a_k, -a_k, a_k+1, -a_k+1), k = 2t + 1.
struct PlainF {
    const float* table;
    void get(int t, __m128& b, __m128& a) const {
        b = _mm_load_ps(table + 8 * t);
        a = _mm_load_ps(table + 8 * t + 4);
    }
};

// Per-k double vectors (b, b), (a, -a), k = t + 1.
struct PlainD {
    const double* table;
    void get(int t, __m128d& b, __m128d& a) const {
        b = _mm_load_pd(table + 4 * t);
        a = _mm_load_pd(table + 4 * t + 2);
    }
};

// exp(i(alpha + beta)) from exp(i alpha) = c and exp(i beta) = f, scaled as f is.
inline __m128d rotate(__m128d c, __m128d f) {
    const __m128d t1 = _mm_mul_pd(f, _mm_movedup_pd(c));                               // cr fr, cr fi
    const __m128d t2 = _mm_mul_pd(_mm_shuffle_pd(f, f, 1), _mm_unpackhi_pd(c, c));     // ci fi, ci fr
    return _mm_addsub_pd(t1, t2);
}

// Two-level tables, k = 1024 i + j, j = 1 .. 1024: the coefficients of k are
// those of the fine angle 2 pi j/N turned by the coarse angle 2 pi 1024 i/N.
//
// Single precision: per step q = 0 .. 511 (j = 2q+1, 2q+2) the fine part
// holds P = (fr, -fr, fr', -fr') and Q = (fi, -fi, fi', -fi') with
// (fr, fi) = 0.5 (cos, sin)(2 pi j/N), both positive; per block i the coarse
// part holds (cos, sin)(2 pi 1024 i/N). Then
//     A = cr P - ci Q,   B = 0.5 - (cr |Q| + ci |P|).
struct SplitF {
    const float* fine;
    const float* coarse;
    int block = -1;
    __m128 cr = _mm_setzero_ps(), ci = _mm_setzero_ps();
    void get(int t, __m128& b, __m128& a) {
        const int i = t >> 9, q = t & 511;
        if (i != block) {
            block = i;
            cr = _mm_set1_ps(coarse[4 * i]);
            ci = _mm_set1_ps(coarse[4 * i + 1]);
        }
        const __m128 abs = _mm_castsi128_ps(_mm_set1_epi32(0x7FFFFFFF));
        const __m128 p = _mm_load_ps(fine + 8 * q);
        const __m128 qv = _mm_load_ps(fine + 8 * q + 4);
        a = _mm_sub_ps(_mm_mul_ps(cr, p), _mm_mul_ps(ci, qv));
        const __m128 s = _mm_add_ps(_mm_mul_ps(cr, _mm_and_ps(qv, abs)), _mm_mul_ps(ci, _mm_and_ps(p, abs)));
        b = _mm_sub_ps(_mm_set1_ps(0.5f), s);
    }
};

// Double precision: fine[j-1] = 0.5 (cos, sin)(2 pi j/N), coarse[i] =
// (cos, sin)(2 pi 1024 i/N), one k per step.
struct SplitD {
    const double* fine;
    const double* coarse;
    void get(int t, __m128d& b, __m128d& a) const {
        const int i = t >> 10, j = t & 1023;  // k = t + 1 = 1024 i + j + 1
        const __m128d h = rotate(_mm_load_pd(coarse + 2 * i), _mm_load_pd(fine + 2 * j));
        b = _mm_sub_pd(_mm_set1_pd(0.5), _mm_unpackhi_pd(h, h));
        a = _mm_xor_pd(_mm_unpacklo_pd(h, h), _mm_set_pd(-0.0, 0.0));
    }
};

// ---- the passes ---------------------------------------------------------------
// Inverse = false: L = Q + T, H = P - T with T = (b - i a) D, D = P - Q.
// Inverse = true:  L = V + T, H = U - T with T = (b + i a) D, D = U - V.
// (P, U: the low-end values; Q, V: the conjugates of the high-end values.)
// L goes to the low end, conj(H) to the high end, both times `factor` when
// Scaled.

template <bool Inverse, bool Scaled, class Coef>
void passF(const float* in, float* out, int n, int inShift, int outShift, Coef coef, float factor) {
    const int steps = n / 8;  // k = 1, 3, .., n/4 - 1
    const __m128 conjMask = _mm_castsi128_ps(_mm_setr_epi32(0, INT32_MIN, 0, INT32_MIN));
    const __m128 f = _mm_set1_ps(factor);
    const float* loIn = in + 2 + inShift;
    const float* hiIn = in + n - 4 + inShift;
    float* loOut = out + 2 + outShift;
    float* hiOut = out + n - 4 + outShift;
    __m128 pendLo = _mm_setzero_ps(), pendHi = _mm_setzero_ps();
    for (int t = 0; t < steps; ++t) {
        const __m128 lo = _mm_loadu_ps(loIn + 4 * t);
        const __m128 hi = _mm_loadu_ps(hiIn - 4 * t);
        if (t > 0) {
            _mm_storeu_ps(loOut + 4 * (t - 1), pendLo);
            _mm_storeu_ps(hiOut - 4 * (t - 1), pendHi);
        }
        __m128 b, a;
        coef.get(t, b, a);
        const __m128 q = _mm_xor_ps(_mm_shuffle_ps(hi, hi, _MM_SHUFFLE(1, 0, 3, 2)), conjMask);
        const __m128 d = _mm_sub_ps(lo, q);
        const __m128 ds = _mm_shuffle_ps(d, d, _MM_SHUFFLE(2, 3, 0, 1));
        const __m128 db = _mm_mul_ps(d, b);
        const __m128 da = _mm_mul_ps(ds, a);
        const __m128 tt = Inverse ? _mm_sub_ps(db, da) : _mm_add_ps(db, da);
        __m128 l = _mm_add_ps(q, tt);
        const __m128 h = _mm_sub_ps(lo, tt);
        __m128 hc = _mm_xor_ps(_mm_shuffle_ps(h, h, _MM_SHUFFLE(1, 0, 3, 2)), conjMask);
        if constexpr (Scaled) {
            l = _mm_mul_ps(l, f);
            hc = _mm_mul_ps(hc, f);
        }
        pendLo = l;
        pendHi = hc;
    }
    if (steps > 0) {
        _mm_storeu_ps(loOut + 4 * (steps - 1), pendLo);
        _mm_storeu_ps(hiOut - 4 * (steps - 1), pendHi);
    }
}

template <bool Inverse, bool Scaled, class Coef>
void passD(const double* in, double* out, int n, int inShift, int outShift, Coef coef,
           double factor) {
    const int steps = n / 4;  // k = 1 .. n/4
    const __m128d conjMask = _mm_set_pd(-0.0, 0.0);
    const __m128d f = _mm_set1_pd(factor);
    const double* loIn = in + 2 + inShift;
    const double* hiIn = in + n - 2 + inShift;
    double* loOut = out + 2 + outShift;
    double* hiOut = out + n - 2 + outShift;
    __m128d pendLo = _mm_setzero_pd(), pendHi = _mm_setzero_pd();
    for (int t = 0; t < steps; ++t) {
        const __m128d lo = _mm_loadu_pd(loIn + 2 * t);
        const __m128d hi = _mm_loadu_pd(hiIn - 2 * t);
        if (t > 0) {
            _mm_storeu_pd(loOut + 2 * (t - 1), pendLo);
            _mm_storeu_pd(hiOut - 2 * (t - 1), pendHi);
        }
        __m128d b, a;
        coef.get(t, b, a);
        const __m128d q = _mm_xor_pd(hi, conjMask);
        const __m128d d = _mm_sub_pd(lo, q);
        const __m128d ds = _mm_shuffle_pd(d, d, 1);
        const __m128d db = _mm_mul_pd(d, b);
        const __m128d da = _mm_mul_pd(ds, a);
        const __m128d tt = Inverse ? _mm_sub_pd(db, da) : _mm_add_pd(db, da);
        __m128d l = _mm_add_pd(q, tt);
        __m128d hc = _mm_xor_pd(_mm_sub_pd(lo, tt), conjMask);
        if constexpr (Scaled) {
            l = _mm_mul_pd(l, f);
            hc = _mm_mul_pd(hc, f);
        }
        pendLo = l;
        pendHi = hc;
    }
    if (steps > 0) {
        _mm_storeu_pd(loOut + 2 * (steps - 1), pendLo);
        _mm_storeu_pd(hiOut - 2 * (steps - 1), pendHi);
    }
}

template <bool Inverse, class Coef>
void pass(const float* in, float* out, int n, int inShift, int outShift, Coef coef, float factor,
          bool scaled) {
    if (scaled) passF<Inverse, true>(in, out, n, inShift, outShift, coef, factor);
    else passF<Inverse, false>(in, out, n, inShift, outShift, coef, factor);
}
template <bool Inverse, class Coef>
void pass(const double* in, double* out, int n, int inShift, int outShift, Coef coef,
          double factor, bool scaled) {
    if (scaled) passD<Inverse, true>(in, out, n, inShift, outShift, coef, factor);
    else passD<Inverse, false>(in, out, n, inShift, outShift, coef, factor);
}

template <class T>
struct Coefs;
template <>
struct Coefs<float> {
    using Plain = PlainF;
    using Split = SplitF;
};
template <>
struct Coefs<double> {
    using Plain = PlainD;
    using Split = SplitD;
};

}  // namespace

template <class T>
void recombineForward(const T* in, T* out, int n, int inShift, int outShift, const T* table,
                      T factor, bool scaled) {
    pass<false>(in, out, n, inShift, outShift, typename Coefs<T>::Plain{table}, factor, scaled);
}
template <class T>
void recombineInverse(const T* in, T* out, int n, int inShift, int outShift, const T* table,
                      T factor) {
    pass<true>(in, out, n, inShift, outShift, typename Coefs<T>::Plain{table}, factor, true);
}
template <class T>
void recombineForwardSplit(const T* in, T* out, int n, int inShift, int outShift,
                           const T* fine, const T* coarse, T factor, bool scaled) {
    pass<false>(in, out, n, inShift, outShift, typename Coefs<T>::Split{fine, coarse}, factor,
                scaled);
}
template <class T>
void recombineInverseSplit(const T* in, T* out, int n, int inShift, int outShift,
                           const T* fine, const T* coarse, T factor) {
    pass<true>(in, out, n, inShift, outShift, typename Coefs<T>::Split{fine, coarse}, factor,
               true);
}

template void recombineForward<float>(const float*, float*, int, int, int, const float*, float, bool);
template void recombineForward<double>(const double*, double*, int, int, int, const double*, double,
                                       bool);
template void recombineInverse<float>(const float*, float*, int, int, int, const float*, float);
template void recombineInverse<double>(const double*, double*, int, int, int, const double*, double);
template void recombineForwardSplit<float>(const float*, float*, int, int, int, const float*, const float*, float, bool);
template void recombineForwardSplit<double>(const double*, double*, int, int, int, const double*, const double*, double, bool);
template void recombineInverseSplit<float>(const float*, float*, int, int, int, const float*, const float*, float);
template void recombineInverseSplit<double>(const double*, double*, int, int, int, const double*, const double*, double);

}  // namespace zvp::ZVP_LEVEL::fftr

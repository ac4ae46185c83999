// Recombination passes of the real transforms (see psfftr.h for the
// formulas). Each pass walks k upward and N/2 - k downward together, one
// full lane of complex values at each end per step (two k for float, one for
// double).
//
// The passes run in place as well as out of place, including the Pack
// layout, whose values sit one position lower than the complex values they
// come from (or go to). Every step first loads its own input and only then
// stores the previous step's results, so no value is overwritten before it
// has been read.
#include <cstdint>

#include "lane.h"
#include "psfftr.h"

namespace zvp::ZVP_LEVEL::fftr {
namespace {

// ---- where the (b, a) coefficients come from --------------------------------
// Each step of a pass handles the P = N/2 complex pairs of one full lane
// (two for float, one for double) and takes its coefficients as two lanes:
// b = (b_k, b_k, ...) and a = (a_k, -a_k, ...) for the pairs' k.

// Precomputed table: per step the lane of b values, then the lane of a values.
template <class T>
struct Plain {
    using L = Full<T>;
    const T* table;
    void get(int t, typename L::R& b, typename L::R& a) const {
        b = L::loada(table + 2 * L::N * t);
        a = L::loada(table + 2 * L::N * t + L::N);
    }
};

// Two-level tables, k = 1024 i + j, j = 1 .. 1024: the coefficients of k are
// those of the fine angle 2 pi j/N turned by the coarse angle 2 pi 1024 i/N.
template <class T>
struct Split;

// Single precision: per step q = 0 .. 511 (j = 2q+1, 2q+2) the fine part
// holds P = (fr, -fr, fr', -fr') and Q = (fi, -fi, fi', -fi') with
// (fr, fi) = 0.5 (cos, sin)(2 pi j/N), both positive; per block i the coarse
// part holds (cos, sin)(2 pi 1024 i/N). Then
//     A = cr P - ci Q,   B = 0.5 - (cr |Q| + ci |P|).
template <>
struct Split<float> {
    using L = Full<float>;
    const float* fine;
    const float* coarse;
    int block = -1;
    L::R cr = L::zero(), ci = L::zero();
    void get(int t, L::R& b, L::R& a) {
        const int i = t >> 9, q = t & 511;
        if (i != block) {
            block = i;
            cr = L::set1(coarse[4 * i]);
            ci = L::set1(coarse[4 * i + 1]);
        }
        const L::R p = L::loada(fine + 8 * q);
        const L::R qv = L::loada(fine + 8 * q + 4);
        a = L::sub(L::mul(cr, p), L::mul(ci, qv));
        b = L::sub(L::set1(0.5f), L::add(L::mul(cr, L::abs(qv)), L::mul(ci, L::abs(p))));
    }
};

// Double precision: fine[j-1] = 0.5 (cos, sin)(2 pi j/N), coarse[i] =
// (cos, sin)(2 pi 1024 i/N), one k per step: h = coarse * fine turns the fine
// angle by the coarse one.
template <>
struct Split<double> {
    using L = Full<double>;
    const double* fine;
    const double* coarse;
    void get(int t, L::R& b, L::R& a) const {
        const int i = t >> 10, j = t & 1023;  // k = t + 1 = 1024 i + j + 1
        const L::R h = L::cmul(L::loada(coarse + 2 * i), L::loada(fine + 2 * j));
        b = L::sub(L::set1(0.5), L::dupIm(h));
        a = L::conj(L::dupRe(h));
    }
};

// ---- the passes ---------------------------------------------------------------
// Inverse = false: L = Q + T, H = P - T with T = (b - i a) D, D = P - Q.
// Inverse = true:  L = V + T, H = U - T with T = (b + i a) D, D = U - V.
// (P, U: the low-end values; Q, V: the conjugates of the high-end values.)
// L goes to the low end, conj(H) to the high end, both times `factor` when
// Scaled. Each step's results are stored one step late, after the next
// step's loads, so the pass may run in place.

template <bool Inverse, bool Scaled, class T, class Coef>
void passOf(const T* in, T* out, int n, int inShift, int outShift, Coef coef, T factor) {
    using L = Full<T>;
    using R = typename L::R;
    constexpr int E = L::N;        // values per step: N/2 pairs
    const int steps = n / (2 * E);  // k = 1 .. n/4 in steps of N/2
    const R f = L::set1(factor);
    const T* loIn = in + 2 + inShift;
    const T* hiIn = in + n - E + inShift;
    T* loOut = out + 2 + outShift;
    T* hiOut = out + n - E + outShift;
    R pendLo = L::zero(), pendHi = L::zero();
    for (int t = 0; t < steps; ++t) {
        const R lo = L::load(loIn + E * t);
        const R hi = L::load(hiIn - E * t);
        if (t > 0) {
            L::store(loOut + E * (t - 1), pendLo);
            L::store(hiOut - E * (t - 1), pendHi);
        }
        R b, a;
        coef.get(t, b, a);
        const R q = L::conj(L::reversePairs(hi));
        const R d = L::sub(lo, q);
        const R db = L::mul(d, b);
        const R da = L::mul(L::swapReIm(d), a);
        const R tt = Inverse ? L::sub(db, da) : L::add(db, da);
        R l = L::add(q, tt);
        R hc = L::conj(L::reversePairs(L::sub(lo, tt)));
        if constexpr (Scaled) {
            l = L::mul(l, f);
            hc = L::mul(hc, f);
        }
        pendLo = l;
        pendHi = hc;
    }
    if (steps > 0) {
        L::store(loOut + E * (steps - 1), pendLo);
        L::store(hiOut - E * (steps - 1), pendHi);
    }
}

template <bool Inverse, class T, class Coef>
void pass(const T* in, T* out, int n, int inShift, int outShift, Coef coef, T factor,
          bool scaled) {
    if (scaled) passOf<Inverse, true>(in, out, n, inShift, outShift, coef, factor);
    else passOf<Inverse, false>(in, out, n, inShift, outShift, coef, factor);
}

}  // namespace

template <class T>
void recombineForward(const T* in, T* out, int n, int inShift, int outShift, const T* table,
                      T factor, bool scaled) {
    pass<false>(in, out, n, inShift, outShift, Plain<T>{table}, factor, scaled);
}
template <class T>
void recombineInverse(const T* in, T* out, int n, int inShift, int outShift, const T* table,
                      T factor) {
    pass<true>(in, out, n, inShift, outShift, Plain<T>{table}, factor, true);
}
template <class T>
void recombineForwardSplit(const T* in, T* out, int n, int inShift, int outShift,
                           const T* fine, const T* coarse, T factor, bool scaled) {
    pass<false>(in, out, n, inShift, outShift, Split<T>{fine, coarse}, factor,
                scaled);
}
template <class T>
void recombineInverseSplit(const T* in, T* out, int n, int inShift, int outShift,
                           const T* fine, const T* coarse, T factor) {
    pass<true>(in, out, n, inShift, outShift, Split<T>{fine, coarse}, factor,
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

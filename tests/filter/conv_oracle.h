// Independent long-double oracles for convolution and correlation, and the
// error bound a result is held to.
//
// Bound for output n (u the unit roundoff of the type, T the number of
// products, S = sum |a||b| of those products, M the transform length):
//   direct:  T * u * S                  (a sum of T rounded products)
//   FFT:     8 * log2(M) * u * |a|2 |b|2  (normwise forward/inverse error,
//            which bounds every element)
// Every result must meet the sum of the two (whatever method ran) plus a few
// units of the smallest normal; a wrong lag, a lost term or a wrapped block
// is off by a whole product and far outside.
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <random>
#include <vector>

#include "zvptypes.h"

namespace zvp::test::conv {

using cld = std::complex<long double>;

template <class E> struct Info { using S = E; static constexpr bool cplx = false; };
template <> struct Info<Zvp32fc> { using S = float; static constexpr bool cplx = true; };
template <> struct Info<Zvp64fc> { using S = double; static constexpr bool cplx = true; };

template <class E> cld toC(const E& v) {
    if constexpr (Info<E>::cplx) return {v.re, v.im};
    else return {(long double)v, 0};
}

template <class E> std::vector<E> randomVec(std::size_t n, std::uint32_t seed) {
    std::mt19937 g(seed);
    std::uniform_real_distribution<double> d(-1.0, 1.0);
    std::vector<E> v(n);
    for (auto& x : v) {
        if constexpr (Info<E>::cplx) x = E{typename Info<E>::S(d(g)), typename Info<E>::S(d(g))};
        else x = E(d(g));
    }
    return v;
}

struct Ref {
    cld value;
    long double absSum;  // sum of |products|
    long double terms;
};

// Correlation r[l] = sum_k conj(a[k]) b[k + l] (conj only for complex data);
// convolution when conv is set: y[n] = sum_k a[k] b[n - k].
template <class E>
Ref product(const std::vector<E>& a, const std::vector<E>& b, long long idx, bool conv) {
    Ref r{0, 0, 0};
    for (long long k = 0; k < (long long)a.size(); ++k) {
        const long long j = conv ? idx - k : k + idx;
        if (j < 0 || j >= (long long)b.size()) continue;
        const cld x = conv ? toC(a[k]) : std::conj(toC(a[k]));
        const cld p = x * toC(b[j]);
        r.value += p;
        r.absSum += std::abs(p);
        r.terms += 1;
    }
    return r;
}

template <class E>
long double norm2(const std::vector<E>& v) {
    long double s = 0;
    for (const auto& x : v) s += std::norm(toC(x));
    return std::sqrt(s);
}

// Whether got is within the bound of ref (fftLen: transform length or 0).
template <class E>
bool within(const E& got, const Ref& ref, long double normProduct, long long fftLen, long double* err = nullptr) {
    const long double u = std::numeric_limits<typename Info<E>::S>::epsilon() / 2;
    long double tol = (ref.terms + 2) * u * ref.absSum + 64 * std::numeric_limits<typename Info<E>::S>::min();
    if (fftLen > 1) tol += 8 * std::log2((long double)fftLen) * u * normProduct;
    const long double e = std::abs(toC(got) - ref.value);
    if (err) *err = e;
    return e <= tol;
}

}  // namespace zvp::test::conv

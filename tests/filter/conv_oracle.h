// Independent oracles for convolution and correlation: long-double sums,
// exact integer scaling, and the work-buffer size re-derived from the FFT
// size queries.
//
// Bound for an output (u the unit roundoff of the type, T the number of
// products, S = sum |a||b| over them, M a transform length the result could
// have come from):
//   direct:  (T + 2) u S                       (T rounded products summed)
//   FFT:     8 log2(M) u |a|2 |b|2             (normwise error of forward,
//                                               product and inverse, which
//                                               bounds every element)
// A result must meet the sum of the two, whichever method ran; a wrong lag,
// a lost term or a wrapped block is off by a whole product and far outside.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <random>
#include <vector>

#include "zvps.h"

namespace zvp::test::conv {

using cld = std::complex<long double>;

template <class E> struct Info { using S = E; static constexpr bool cplx = false; };
template <> struct Info<Zvp32fc> { using S = float; static constexpr bool cplx = true; };
template <> struct Info<Zvp64fc> { using S = double; static constexpr bool cplx = true; };

template <class E> cld toC(const E& v) {
    if constexpr (Info<E>::cplx) return {v.re, v.im};
    else return {(long double)v, 0};
}

template <class E> E fill(double v) {
    if constexpr (Info<E>::cplx) return E{typename Info<E>::S(v), typename Info<E>::S(-v)};
    else return E(v);
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
    cld value = 0;
    long double absSum = 0, terms = 0;
};

// conv: y[n] = sum_k a[k] b[n - k]; otherwise r[n] = sum_k conj(a[k]) b[k + n].
template <class E>
std::vector<Ref> oracle(const std::vector<E>& a, const std::vector<E>& b, long long first, std::size_t count,
                        bool conv) {
    std::vector<Ref> out(count);
    for (std::size_t i = 0; i < count; ++i) {
        const long long idx = first + (long long)i;
        for (long long k = 0; k < (long long)a.size(); ++k) {
            const long long j = conv ? idx - k : k + idx;
            if (j < 0 || j >= (long long)b.size()) continue;
            const cld p = (conv ? toC(a[k]) : std::conj(toC(a[k]))) * toC(b[j]);
            out[i].value += p;
            out[i].absSum += std::abs(p);
            out[i].terms += 1;
        }
    }
    return out;
}

template <class E>
long double norm2(const std::vector<E>& v) {
    long double s = 0;
    for (const auto& x : v) s += std::norm(toC(x));
    return std::sqrt(s);
}

// got[i] against refs[i] divided by div(terms): outputs without products
// exactly zero, the others within the bound. Reports the first few misses.
template <class E, class Div>
void expectNear(const std::vector<E>& a, const std::vector<E>& b, const std::vector<E>& got,
                const std::vector<Ref>& refs, Div div, const char* what) {
    using S = typename Info<E>::S;
    const long double u = std::numeric_limits<S>::epsilon() / 2;
    const long double fftTerm = 8 * std::log2(8.0L * (a.size() + b.size())) * u * norm2(a) * norm2(b);
    int bad = 0;
    for (std::size_t i = 0; i < got.size() && bad < 3; ++i) {
        const Ref& r = refs[i];
        const long double d = r.terms ? div(r.terms) : 1;
        const long double tol = r.terms ? ((r.terms + 2) * u * r.absSum + fftTerm) / d + 64 * std::numeric_limits<S>::min() : 0;
        const long double e = std::abs(toC(got[i]) - r.value / d);
        if (e > tol)
            ++bad, ADD_FAILURE() << what << " " << a.size() << "x" << b.size() << " output " << i << " err " << (double)e
                                 << " tol " << (double)tol;
    }
}
inline long double noDiv(long double) { return 1; }

// The scale rule on an exact integer: times 2^-sf, ties to even, saturated.
inline Zvp16s scaleExact(long long r, int sf) {
    const long double v = std::ldexp((long double)r, -sf), f = std::floor(v), fr = v - f;
    const long double q = fr > 0.5L ? f + 1 : fr < 0.5L ? f : (std::fmod(f, 2.0L) == 0 ? f : f + 1);
    return Zvp16s(std::clamp<long double>(q, -32768, 32767));
}

// Work-buffer bytes for a transform of order k and `arrays` arrays of 2^k
// elements, from the public FFT size queries (inverse divided by 2^k).
inline long long fftBufferBytes(ZvpDataType dt, int k, int arrays) {
    auto a64 = [](long long v) { return (v + 63) / 64 * 64; };
    int s = 0, i = 0, w = 0;
    const int f = ZVP_FFT_DIV_INV_BY_N;
    long long elem = 0;
    switch (dt) {
    case zvp32f: zvpsFFTGetSize_R_32f(k, f, zvpAlgHintNone, &s, &i, &w); elem = 4; break;
    case zvp64f: zvpsFFTGetSize_R_64f(k, f, zvpAlgHintNone, &s, &i, &w); elem = 8; break;
    case zvp32fc: zvpsFFTGetSize_C_32fc(k, f, zvpAlgHintNone, &s, &i, &w); elem = 8; break;
    default: zvpsFFTGetSize_C_64fc(k, f, zvpAlgHintNone, &s, &i, &w); elem = 16; break;
    }
    return a64(s) + a64(i) + a64(w) + a64((arrays * elem) << k) + 64;
}

}  // namespace zvp::test::conv

// The part every window shares: a generator computes the window values
// w(n), in double, for a block of indices of the first half at a time, and
// the driver multiplies both the block x(n) and its mirror x(N - 1 - n) by
// them, in the data's precision. The generator sees only N and its
// parameters, never the data, so a window is the same whatever the
// alignment of the vectors or the split of the data into vector body and
// tail.
//
// A generator provides
//   void fill(std::ptrdiff_t n0, std::ptrdiff_t m, double* w)
// writing w(n0 + j) to w[j] for j < m (it may write up to kWinPad values
// more); the driver calls it with n0 a multiple of kWinBlock and m at most
// kWinBlock, so a generator may restart its recurrences at every call.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "fpguard.h"
#include "lane.h"

namespace zvp::p8::win {

constexpr std::ptrdiff_t kWinBlock = 512;
constexpr std::ptrdiff_t kWinPad = 8;

using D = Full<double>;
using D1 = One<double>;

// ---- Applying window values to one block of data ------------------------------
// d[i] = x[i] * w[i / P] for the m elements of a block, P = 1 for real and 2
// for complex data (given as its parts).

// A double product in the low lanes to 16 bits: a NaN to 0, saturated,
// rounded to nearest with ties to even (whatever the control word), then
// converted exactly. Scale, when not 1, is a power of two applied first;
// Div divides by the block's divisor instead (the exact Bartlett quotient).
template <class L>
inline __m128i to16(typename L::R p) {
    p = L::and_(p, L::ord(p, p));
    p = L::min(L::max(p, L::set1(-32768.0)), L::set1(32767.0));
    return L::toI32Trunc(L::roundNearest(p));
}

struct Scale16 {
    double mul = 1.0;  // 2^-scaleFactor, or 1
    double div = 1.0;  // the divisor of the exact quotient, or 1
    bool scaled = false, divided = false;
};

template <class L>
inline typename L::R product16(typename L::R x, typename L::R w, const Scale16& k) {
    typename L::R p = L::mul(x, w);
    if (k.divided) p = L::div(p, L::set1(k.div));
    if (k.scaled) p = L::mul(p, L::set1(k.mul));
    return p;
}

template <int P>
inline void apply(const double* s, double* d, const double* w, std::ptrdiff_t m, const Scale16&) {
    std::ptrdiff_t i = 0;
    if constexpr (P == 1) {
        for (; i + 2 <= m; i += 2) D::store(d + i, D::mul(D::load(s + i), D::load(w + i)));
        for (; i < m; ++i) D1::store(d + i, D1::mul(D1::load(s + i), D1::load(w + i)));
    } else {
        for (; i < m; ++i) D::store(d + 2 * i, D::mul(D::load(s + 2 * i), D::set1(w[i])));
    }
}

template <int P>
inline void apply(const float* s, float* d, const double* w, std::ptrdiff_t m, const Scale16&) {
    using F = Full<float>;
    using F1 = One<float>;
    std::ptrdiff_t i = 0;
    if constexpr (P == 1) {
        for (; i + 4 <= m; i += 4) {
            const F::R wf = F::joinLo(D::toF32(D::load(w + i)), D::toF32(D::load(w + i + 2)));
            F::store(d + i, F::mul(F::load(s + i), wf));
        }
        for (; i < m; ++i) F1::store(d + i, F1::mul(F1::load(s + i), D1::toF32(D1::load(w + i))));
    } else {
        for (; i + 2 <= m; i += 2) {
            const F::R wf = F::dupEach(D::toF32(D::load(w + i)));
            F::store(d + 2 * i, F::mul(F::load(s + 2 * i), wf));
        }
        using F2 = Lanes<float, 2>;
        for (; i < m; ++i) F2::store(d + 2 * i, F2::mul(F2::load(s + 2 * i), F::dupEach(D1::toF32(D1::load(w + i)))));
    }
}

template <int P>
inline void apply(const std::int16_t* s, std::int16_t* d, const double* w, std::ptrdiff_t m, const Scale16& k) {
    using S = Full<std::int16_t>;
    using W = Full<std::int32_t>;
    using Q = Full<std::int64_t>;
    const std::ptrdiff_t parts = P * m;
    std::ptrdiff_t i = 0;
    for (; i + 8 <= parts; i += 8) {
        const S::R v = S::load(s + i);
        const W::R lo = S::widenLo(v), hi = S::widenHi(v);
        const D::R x[4] = {D::fromI32(lo), D::fromI32(W::hiHalf(lo)), D::fromI32(hi), D::fromI32(W::hiHalf(hi))};
        __m128i r[4];
        for (int q = 0; q < 4; ++q) {
            const D::R wq = P == 1 ? D::load(w + i + 2 * q) : D::set1(w[i / 2 + q]);
            r[q] = to16<D>(product16<D>(x[q], wq, k));
        }
        S::store(d + i, W::narrow<std::int16_t>(Q::zipLo(r[0], r[1]), Q::zipLo(r[2], r[3])));
    }
    for (; i < parts; ++i) {
        const D1::R p = product16<D1>(D1::set1(double(s[i])), D1::set1(w[i / P]), k);
        d[i] = std::int16_t(W::first(to16<D1>(p)));
    }
}

// ---- The driver ---------------------------------------------------------------

// Multiplies the N elements of s (P parts each) by the window of gen into d
// (d may be s): block by block over the first ceil(N / 2) indices, each
// block applied to its elements and, reversed, to their mirrors.
template <int P, class T, class Gen>
void run(const T* s, T* d, std::ptrdiff_t N, Gen& gen, const Scale16& k = {}) {
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    const std::ptrdiff_t half = N / 2, nGen = N - half;
    alignas(16) double w[kWinBlock + kWinPad];
    alignas(16) double wr[kWinBlock + kWinPad];
    for (std::ptrdiff_t n0 = 0; n0 < nGen; n0 += kWinBlock) {
        const std::ptrdiff_t m = std::min(kWinBlock, nGen - n0);
        gen.fill(n0, m, w);
        apply<P>(s + P * n0, d + P * n0, w, m, k);
        const std::ptrdiff_t mb = std::min(m, half - n0);
        if (mb <= 0) continue;
        for (std::ptrdiff_t j = 0; j < mb; ++j) wr[j] = w[mb - 1 - j];
        const std::ptrdiff_t b = N - n0 - mb;
        apply<P>(s + P * b, d + P * b, wr, mb, k);
    }
}

}  // namespace zvp::p8::win

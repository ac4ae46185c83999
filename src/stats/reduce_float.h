// The float reductions shared by the sums, deviations, norms and dot
// products: one driver and the accumulators it feeds.
//
// Summation order. The driver walks the vector in steps of four full
// vectors, each into its own accumulator register, so four vectors of
// partial results are in flight; then up to three single full vectors into
// accumulators 0, 1 and 2; then the last elements one at a time (one
// complex pair at a time) into the low lanes of accumulator 3, the other
// lanes taking zeros. The four registers are combined in one fixed order,
// (a0 + a1) + (a2 + a3), then their lanes. The order depends on the length
// alone: never on the alignment of the data.
//
// Complex data run as 2 len reals, so a register holds (re, im) pairs and
// the lanes of one parity belong to one component.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>

#include "lane.h"

namespace zvp::ZVP_LEVEL::red {

// k.step<L, u>(i) over n values of T: the body at Full<T> into
// accumulators 0..3, the tail U values at a time into accumulator 3.
template <class T, int U, class K>
[[gnu::always_inline]] inline void drive(K& k, std::ptrdiff_t n) {
    using F = Full<T>;
    constexpr std::ptrdiff_t V = F::N;
    std::ptrdiff_t i = 0;
    for (; i + 4 * V <= n; i += 4 * V) {
        k.template step<F, 0>(i);
        k.template step<F, 1>(i + V);
        k.template step<F, 2>(i + 2 * V);
        k.template step<F, 3>(i + 3 * V);
    }
    if (i + V <= n) k.template step<F, 0>(i), i += V;
    if (i + V <= n) k.template step<F, 1>(i), i += V;
    if (i + V <= n) k.template step<F, 2>(i), i += V;
    for (; i < n; i += U) k.template step<Lanes<T, U>, 3>(i);
}

// The same order for kernels that also take blocks of four full vectors of
// singles at once (k.block<u>(i): 16 values into accumulator u): blocks of
// 64 values over accumulators 0..3, up to three more blocks into 0, 1 and
// 2, then single full vectors and the tail into accumulator 3.
template <int U, class K>
[[gnu::always_inline]] inline void driveBlocks(K& k, std::ptrdiff_t n) {
    using F = Full<float>;
    std::ptrdiff_t i = 0;
    for (; i + 64 <= n; i += 64) {
        k.template block<0>(i);
        k.template block<1>(i + 16);
        k.template block<2>(i + 32);
        k.template block<3>(i + 48);
    }
    if (i + 16 <= n) k.template block<0>(i), i += 16;
    if (i + 16 <= n) k.template block<1>(i), i += 16;
    if (i + 16 <= n) k.template block<2>(i), i += 16;
    for (; i + 4 <= n; i += 4) k.template step<F, 3>(i);
    for (; i < n; i += U) k.template step<Lanes<float, U>, 3>(i);
}

// Four full vectors of singles at p as eight registers of doubles, the
// values in order.
inline void widen16(const float* p, Full<double>::R* t) {
    for (int j = 0; j < 8; ++j) t[j] = Full<double>::fromF32(Lanes<float, 2>::load(p + 2 * j));
}
// The lane-wise sum of eight registers, as a tree.
inline Full<double>::R tree8(const Full<double>::R* t) {
    using D = Full<double>;
    return D::add(D::add(D::add(t[0], t[1]), D::add(t[2], t[3])), D::add(D::add(t[4], t[5]), D::add(t[6], t[7])));
}

// The (re, im) sums of a register of pairs: lanes of even index and lanes
// of odd index. The sum of every lane is first + second.
template <class T>
inline std::pair<T, T> lanePairs(typename Full<T>::R v) {
    using F = Full<T>;
    if constexpr (F::N == 4) v = F::add(v, F::hiHalf(v));
    return {F::first(v), F::first(F::swapReIm(v))};
}

// Four registers of plain partial sums.
template <class T>
struct Acc {
    using F = Full<T>;
    using R = typename F::R;
    R a[4] = {F::zero(), F::zero(), F::zero(), F::zero()};
    template <int u>
    void add(R v) { a[u] = F::add(a[u], v); }
    R fold() const { return F::add(F::add(a[0], a[1]), F::add(a[2], a[3])); }
    std::pair<T, T> pairs() const { return lanePairs<T>(fold()); }
    T total() const {
        const auto p = pairs();
        return p.first + p.second;
    }
};

// Two registers of double-double partial sums: each lane a value s plus
// the error c that rounding s lost (Knuth's two-sum, exact in every lane),
// so the sums carry about 106 bits. Accumulators u and u + 2 share a
// register: a two-sum is long enough that two chains keep the adder busy,
// and four pairs would not fit the register file beside a kernel's work.
struct AccDD {
    using F = Full<double>;
    using R = F::R;
    R s[2] = {F::zero(), F::zero()};
    R c[2] = {F::zero(), F::zero()};
    template <int u>
    void add(R x) {
        constexpr int k = u & 1;
        const R t = F::add(s[k], x);
        const R z = F::sub(t, s[k]);
        const R e = F::add(F::sub(s[k], F::sub(t, z)), F::sub(x, z));
        s[k] = t;
        c[k] = F::add(c[k], e);
    }
    // The (re, im) sums (lanes 0 and 1), each rounded once to double from
    // a double-double total.
    std::pair<double, double> pairs() const {
        alignas(16) double v[2][4];
        for (int u = 0; u < 2; ++u) F::storea(v[0] + 2 * u, s[u]), F::storea(v[1] + 2 * u, c[u]);
        double out[2];
        for (int lane = 0; lane < 2; ++lane) {
            double hi = 0, lo = 0;
            for (int u = 0; u < 2; ++u) twoSum(hi, lo, v[0][2 * u + lane], v[1][2 * u + lane]);
            out[lane] = finish(hi, lo);
        }
        return {out[0], out[1]};
    }
    // Every lane together, rounded once.
    double total() const {
        alignas(16) double v[2][4];
        for (int u = 0; u < 2; ++u) F::storea(v[0] + 2 * u, s[u]), F::storea(v[1] + 2 * u, c[u]);
        double hi = 0, lo = 0;
        for (int k = 0; k < 4; ++k) twoSum(hi, lo, v[0][k], v[1][k]);
        return finish(hi, lo);
    }
    static void twoSum(double& hi, double& lo, double x, double err) {
        const double t = hi + x, z = t - hi;
        lo += (hi - (t - z)) + (x - z) + err;
        hi = t;
    }
    // An infinite or NaN sum stands alone: its error terms are NaN (inf - inf).
    static double finish(double hi, double lo) { return std::isfinite(hi) ? hi + lo : hi; }
};

// Up to four singles of a lane of L (one full vector, or its low one or two
// values) as two registers of doubles: values 0, 1 and values 2, 3; the
// values a partial lane lacks are zeros.
template <class L>
inline void widen(typename Full<float>::R v, Full<double>::R& lo, Full<double>::R& hi) {
    using D = Full<double>;
    lo = D::fromF32(v);
    hi = L::N > 2 ? D::fromF32(Full<float>::hiHalf(v)) : D::zero();
}

// Any NaN lane in v, gathered over a reduction whose result must then be a
// NaN (a maximum: the compare instructions drop NaN operands).
template <class T>
struct NanSeen {
    using F = Full<T>;
    typename F::R m = F::zero();
    void see(typename F::R v) { m = F::or_(m, F::unord(v, v)); }
    bool any() const { return F::anyOf(m); }
};

// Four registers of running maxima of non-negative values, and whether a
// NaN passed.
template <class T>
struct AccMax {
    using F = Full<T>;
    using R = typename F::R;
    R a[4] = {F::zero(), F::zero(), F::zero(), F::zero()};
    NanSeen<T> nan;
    template <int u>
    void add(R v) {
        a[u] = F::max(a[u], v);
        nan.see(v);
    }
    R fold() const { return F::max(F::max(a[0], a[1]), F::max(a[2], a[3])); }
};

// The largest lane of a register of non-negative values.
template <class T>
inline T maxLane(typename Full<T>::R v) {
    using F = Full<T>;
    if constexpr (F::N == 4) v = F::max(v, F::hiHalf(v));
    return F::first(F::max(v, F::swapReIm(v)));
}

}  // namespace zvp::ZVP_LEVEL::red

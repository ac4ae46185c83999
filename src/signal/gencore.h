// Shared pieces of the deterministic generators (ramps, slopes, tones,
// triangles, the Jaehne signal): the sine and cosine of a fraction of a turn
// on double lanes, the exact fraction of a turn reached after n samples, the
// rounding of a double to an integer sample, and the writers that turn a
// block of double values into samples of every destination type.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "lane.h"

namespace zvp::ZVP_LEVEL::gen {

inline constexpr double kPi = 3.14159265358979323846264338327950288;
inline constexpr double kTwoPi = 6.28318530717958647692528676655900577;
inline constexpr double kHalfPi = 1.57079632679489661923132169163975144;

// Samples are produced in blocks of this many, each block seeded from its
// exactly computed starting phase; blocks sit at multiples of kBlock from the
// first sample of the waveform.
inline constexpr int kBlock = 64;

// x - floor(x), exact for every finite x >= 0, whatever the rounding mode.
inline double fracPos(double x) { return x - std::floor(x); }

// The fractional part of a * n for a >= 0 and 0 <= n < 2^31, within a few
// units of 2^-53: a is cut into two halves of at most 26 significant bits
// and n into two of at most 16, so each of the four partial products is
// exact and so is its fraction.
inline double fracMul(double a, std::int64_t n) {
    std::uint64_t bits;
    std::memcpy(&bits, &a, 8);
    bits &= ~((std::uint64_t(1) << 27) - 1);
    double ah;
    std::memcpy(&ah, &bits, 8);
    const double al = a - ah;  // exact: the low mantissa bits of a
    const double nh = double(n & ~std::int64_t(0xFFFF)), nl = double(n & 0xFFFF);
    const double s = fracPos(ah * nh) + fracPos(ah * nl) + fracPos(al * nh) + fracPos(al * nl);
    return fracPos(s);
}

// The turn (fraction of a period, in [0, 1)) at sample n of a waveform that
// starts at turn u0 and advances by f turns a sample.
inline double turnAt(double u0, double f, std::int64_t n) {
    const double u = fracPos(u0 + fracMul(f, n));
    return u < 1.0 ? u : 0.0;
}

// A phase in radians of [0, 2 pi) for a turn; a value that rounds up to the
// period itself is the same point of the wave as 0.
template <class P>
P phaseOfTurn(double u) {
    const P p = P(kTwoPi * u);
    return double(p) < kTwoPi ? p : P(0);
}

// ---- sine and cosine on double lanes -------------------------------------

// sin r and cos r for |r| <= pi/4 by their series to r^17 and r^18: the
// first omitted terms are below 2^-56 relative, so the results are within
// about one unit in the last place.
template <class L>
inline void sinCosSmall(typename L::R r, typename L::R& s, typename L::R& c) {
    using R = typename L::R;
    const R z = L::mul(r, r);
    R ps = L::set1(1.0 / 355687428096000.0);  // 1/17!
    ps = L::sub(L::mul(ps, z), L::set1(1.0 / 1307674368000.0));
    ps = L::add(L::mul(ps, z), L::set1(1.0 / 6227020800.0));
    ps = L::sub(L::mul(ps, z), L::set1(1.0 / 39916800.0));
    ps = L::add(L::mul(ps, z), L::set1(1.0 / 362880.0));
    ps = L::sub(L::mul(ps, z), L::set1(1.0 / 5040.0));
    ps = L::add(L::mul(ps, z), L::set1(1.0 / 120.0));
    ps = L::sub(L::mul(ps, z), L::set1(1.0 / 6.0));
    s = L::add(r, L::mul(L::mul(ps, z), r));
    R pc = L::set1(1.0 / 6402373705728000.0);  // 1/18!
    pc = L::sub(L::mul(pc, z), L::set1(1.0 / 20922789888000.0));
    pc = L::add(L::mul(pc, z), L::set1(1.0 / 87178291200.0));
    pc = L::sub(L::mul(pc, z), L::set1(1.0 / 479001600.0));
    pc = L::add(L::mul(pc, z), L::set1(1.0 / 3628800.0));
    pc = L::sub(L::mul(pc, z), L::set1(1.0 / 40320.0));
    pc = L::add(L::mul(pc, z), L::set1(1.0 / 720.0));
    pc = L::sub(L::mul(pc, z), L::set1(1.0 / 24.0));
    pc = L::add(L::mul(pc, z), L::set1(0.5));
    c = L::sub(L::set1(1.0), L::mul(pc, z));
}

// cos and sin of (q + r / (pi/2)) quarter turns, q in {0, 1, 2, 3} (held as
// a double), from sin r and cos r.
template <class L>
inline void quadrant(typename L::R q, typename L::R sr, typename L::R cr, typename L::R& cosOut,
                     typename L::R& sinOut) {
    using R = typename L::R;
    const R one = L::set1(1.0), two = L::set1(2.0), three = L::set1(3.0);
    const auto odd = L::or_(L::eq(q, one), L::eq(q, three));
    const R c1 = L::blend(cr, sr, odd), s1 = L::blend(sr, cr, odd);
    const auto cosNeg = L::or_(L::eq(q, one), L::eq(q, two));
    const auto sinNeg = L::or_(L::eq(q, two), L::eq(q, three));
    cosOut = L::blend(c1, L::neg(c1), cosNeg);
    sinOut = L::blend(s1, L::neg(s1), sinNeg);
}

// cos(2 pi u) and sin(2 pi u) for turns u in [0, 1].
template <class L>
inline void sinCosTurns(typename L::R u, typename L::R& c, typename L::R& s) {
    using R = typename L::R;
    const R x = L::mul(u, L::set1(4.0));  // quarter turns, exact
    R k = L::roundNearest(x);
    const R r = L::mul(L::sub(x, k), L::set1(kHalfPi));  // x - k exact, |r| <= pi/4
    k = L::blend(k, L::zero(), L::eq(k, L::set1(4.0)));
    R sr, cr;
    sinCosSmall<L>(r, sr, cr);
    quadrant<L>(k, sr, cr, c, s);
}

// ---- integer samples ------------------------------------------------------

template <class T>
struct IntRange {
    static constexpr double lo = double(std::numeric_limits<T>::min());
    static constexpr double hi = double(std::numeric_limits<T>::max());
};

// v rounded half away from zero (a fraction of exactly one half goes to the
// larger magnitude) and saturated to T's range; NaN gives 0. Computed from
// the truncation and the exact remainder, so no addition of 0.5 can round
// a value just below one half up.
template <class T, class L>
inline typename L::R roundSat(typename L::R v) {
    using R = typename L::R;
    const R t = L::roundTrunc(v);
    const R d = L::sub(v, t);  // exact
    const R step = L::blend(L::set1(1.0), L::set1(-1.0), L::lt(v, L::zero()));
    const R r = L::add(t, L::and_(step, L::ge(L::abs(d), L::set1(0.5))));
    const R c = L::min(L::max(r, L::set1(IntRange<T>::lo)), L::set1(IntRange<T>::hi));
    return L::and_(c, L::ord(v, v));
}

// Stores the N lanes of v (integral values inside T's range) as T.
template <class T, class L>
inline void storeInt(T* p, typename L::R v) {
    alignas(16) std::int32_t w[4];
    if constexpr (std::is_same_v<T, std::uint32_t>) {
        // Through the signed range: v - 2^31 converts exactly, and adding
        // 2^31 back is a flip of the top bit.
        const __m128i i = L::toI32Trunc(L::sub(v, L::set1(2147483648.0)));
        Full<std::int32_t>::store(w, i);
        for (int k = 0; k < L::N; ++k) p[k] = std::uint32_t(w[k]) ^ 0x80000000u;
    } else {
        Full<std::int32_t>::store(w, L::toI32Trunc(v));
        for (int k = 0; k < L::N; ++k) p[k] = T(w[k]);
    }
}

// Writes n samples magn * v[k] as T: floats rounded to the destination's
// precision, integers by roundSat. Full lanes first, then one at a time;
// each element goes through the same operations either way.
template <class T, class L>
inline void putReal(T* p, const double* v, double magn) {
    using R = typename L::R;
    const R x = L::mul(L::load(v), L::set1(magn));
    if constexpr (std::is_same_v<T, double>) {
        L::store(p, x);
    } else if constexpr (std::is_same_v<T, float>) {
        Lanes<float, L::N>::store(p, Lane<double, L::kBytes>::toF32(x));
    } else {
        storeInt<T, L>(p, roundSat<T, L>(x));
    }
}

template <class T>
inline void writeReal(T* p, const double* v, int n, double magn) {
    int k = 0;
    if constexpr (std::is_same_v<T, float>) {
        // Four at a time: two double registers into one single register.
        using L = Full<double>;
        const typename L::R m = L::set1(magn);
        for (; k + 4 <= n; k += 4) {
            const __m128 lo = L::toF32(L::mul(L::load(v + k), m));
            const __m128 hi = L::toF32(L::mul(L::load(v + k + 2), m));
            Full<float>::store(p + k, Full<float>::joinLo(lo, hi));
        }
    }
    for (; k + 2 <= n; k += 2) putReal<T, Full<double>>(p + k, v + k, magn);
    for (; k < n; ++k) putReal<T, One<double>>(p + k, v + k, magn);
}

// Writes n complex samples (magn * re[k], magn * im[k]) into interleaved
// pairs of P.
template <class P>
inline void writeComplex(P* p, const double* re, const double* im, int n, double magn) {
    using L = Full<double>;
    const typename L::R m = L::set1(magn);
    int k = 0;
    for (; k + 2 <= n; k += 2) {
        const auto a = L::mul(L::load(re + k), m), b = L::mul(L::load(im + k), m);
        const auto z0 = L::zipLo(a, b), z1 = L::zipHi(a, b);
        if constexpr (std::is_same_v<P, double>) {
            L::store(p + 2 * k, z0);
            L::store(p + 2 * k + 2, z1);
        } else if constexpr (std::is_same_v<P, float>) {
            Full<float>::store(p + 2 * k, Full<float>::joinLo(L::toF32(z0), L::toF32(z1)));
        } else {
            storeInt<P, L>(p + 2 * k, roundSat<P, L>(z0));
            storeInt<P, L>(p + 2 * k + 2, roundSat<P, L>(z1));
        }
    }
    if (k < n) {
        // The last pair: the same per-element operations on one pair.
        const auto z = L::mul(L::pair(re[k], im[k]), m);
        if constexpr (std::is_same_v<P, double>) L::store(p + 2 * k, z);
        else if constexpr (std::is_same_v<P, float>) Lanes<float, 2>::store(p + 2 * k, L::toF32(z));
        else storeInt<P, L>(p + 2 * k, roundSat<P, L>(z));
    }
}

}  // namespace zvp::ZVP_LEVEL::gen

namespace zvp::ZVP_LEVEL::gen {

// Runs a block generator over samples n0 .. n0 + len - 1 of its waveform:
// g.block(start, re, im) fills kBlock values from sample `start` (a
// multiple of kBlock), and put(done, re, im, n) writes n of them as the
// output samples done .. done + n - 1. A sample's value depends only on its
// index in the waveform, never on where a call starts or ends.
template <class G, class Put>
inline void runBlocks(const G& g, std::int64_t n0, int len, Put put) {
    alignas(16) double re[kBlock], im[kBlock];
    std::int64_t pos = n0;
    int done = 0;
    while (done < len) {
        const std::int64_t start = pos - pos % kBlock;
        const int off = int(pos - start);
        const int n = kBlock - off < len - done ? kBlock - off : len - done;
        g.block(start, re, im);
        put(done, re + off, im + off, n);
        done += n;
        pos += n;
    }
}

}  // namespace zvp::ZVP_LEVEL::gen

// Thresholding of complex elements. Every element is handled in double
// precision as one (re, im) register of the lane layer, whatever its part
// type: the squared magnitude is exact for 16sc and rounded once for 32fc
// and 64fc, and the replacements are computed once in double and rounded
// once to the part type. A rule looks at one such pair at a time and says
// which elements it replaces (a whole-register mask) and with what; the
// driver widens a lane of parts into pairs, runs the rule, narrows the
// replacements and blends them into the source lane, so elements that are
// kept are copied bit for bit.
//
// Elements the vector formulas cannot serve -- a NaN or infinite part, and
// for 64fc parts outside [2^-500, 2^500] where the squares would overflow or
// lose the smaller part -- go to a scalar routine of the same rule that
// first scales the element by a power of two. Whether an element takes that
// route depends only on its own value, so a vector call and one-element calls
// agree.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "fpguard.h"
#include "forms.h"
#include "lane.h"

namespace zvp::ZVP_LEVEL::thresh {

using DL = Full<double>;  // one complex element as (re, im)
using DR = DL::R;

// The control word of every complex form: round to nearest, no flush to
// zero or denormals-are-zero, every exception masked.
inline constexpr MxcsrGuard::Bits kComplexWord{0x6000u | MxcsrGuard::kFlushBits, MxcsrGuard::kMaskAll};

// ---- Part types as double pairs -------------------------------------------------
//
// widen<L>: the L::N / 2 elements of a lane of parts as pairs; narrow<L>:
// pairs back to a lane (rounded by the current mode, which the forms set to
// nearest; 16s parts are integral by then); mask<L>: whole-pair masks to a
// mask of the lane's parts. kLo and kHi bound the largest part's magnitude
// for the vector formulas (with kLo = 0, a zero element qualifies).
template <class P>
struct Cx;

template <>
struct Cx<double> {
    static constexpr double kLo = 0x1p-500, kHi = 0x1p500;
    template <class L>
    static void widen(typename L::R v, DR* p) { p[0] = v; }
    template <class L>
    static typename L::R narrow(const DR* o) { return o[0]; }
    template <class L>
    static typename L::R mask(const DR* m) { return m[0]; }
};

template <>
struct Cx<float> {
    static constexpr double kLo = 0, kHi = FLT_MAX;
    template <class L>
    static void widen(typename L::R v, DR* p) {
        p[0] = DL::fromF32(v);
        if constexpr (L::N == 4) p[1] = DL::fromF32(L::hiHalf(v));
    }
    template <class L>
    static typename L::R narrow(const DR* o) {
        if constexpr (L::N == 4) return L::joinLo(DL::toF32(o[0]), DL::toF32(o[1]));
        else return DL::toF32(o[0]);
    }
    // A pair's mask is uniform, so a saturating pack of its 32-bit halves
    // gives one 32-bit lane per part.
    template <class L>
    static typename L::R mask(const DR* m) {
        using W = Full<std::int32_t>;
        return L::fromBits(W::template narrow<std::int16_t>(DL::bits(m[0]), DL::bits(m[L::N == 4 ? 1 : 0])));
    }
};

template <>
struct Cx<std::int16_t> {
    static constexpr double kLo = 0, kHi = 1e300;
    template <class L>
    static void widen(typename L::R v, DR* p) {
        using W = Full<std::int32_t>;
        const auto lo = L::widenLo(v);
        p[0] = DL::fromI32(lo);
        if constexpr (L::N == 8) {
            const auto hi = L::widenHi(v);
            p[1] = DL::fromI32(W::hiHalf(lo));
            p[2] = DL::fromI32(hi);
            p[3] = DL::fromI32(W::hiHalf(hi));
        }
    }
    template <class L>
    static typename L::R narrow(const DR* o) {
        using W = Full<std::int32_t>;
        using Q = Full<std::int64_t>;
        if constexpr (L::N == 8) {
            const auto a = Q::zipLo(DL::toI32(o[0]), DL::toI32(o[1]));
            const auto b = Q::zipLo(DL::toI32(o[2]), DL::toI32(o[3]));
            return W::template narrow<std::int16_t>(a, b);
        } else {
            const auto a = DL::toI32(o[0]);
            return W::template narrow<std::int16_t>(a, a);
        }
    }
    template <class L>
    static typename L::R mask(const DR* m) {
        using W = Full<std::int32_t>;
        using H = Full<std::int16_t>;
        auto half = [&](int a, int b) { return W::template narrow<std::int16_t>(DL::bits(m[a]), DL::bits(m[b])); };
        if constexpr (L::N == 8) return H::template narrow<std::int8_t>(half(0, 1), half(2, 3));
        else return H::template narrow<std::int8_t>(half(0, 0), half(0, 0));
    }
};

// ---- Pair helpers ------------------------------------------------------------------

inline double re(DR p) { return DL::first(p); }
inline double im(DR p) { return DL::first(DL::swapReIm(p)); }
inline DR ones() { return DL::eq(DL::zero(), DL::zero()); }

// re^2 + im^2 in both lanes.
inline DR mag2(DR p) {
    const DR q = DL::mul(p, p);
    return DL::add(q, DL::swapReIm(q));
}

// Whether the vector formulas cannot serve the element (see above).
template <class P>
inline bool outside(DR p) {
    if constexpr (std::is_integral_v<P>) {
        return false;
    } else {
        const DR a = DL::abs(p);
        const DR mx = DL::max(a, DL::swapReIm(a));  // a NaN part lands in one lane
        DR bad = DL::or_(DL::gt(mx, DL::set1(Cx<P>::kHi)), DL::unord(mx, mx));
        if constexpr (Cx<P>::kLo > 0) bad = DL::or_(bad, DL::lt(mx, DL::set1(Cx<P>::kLo)));
        return DL::anyOf(bad);
    }
}

// |x| against the level for a finite or infinite element without NaN parts:
// negative, zero or positive. The element and the level are scaled by the
// same power of two (exact) so the squares neither overflow nor underflow.
inline int compareMagnitude(double x, double y, double level) {
    const double ax = std::fabs(x), ay = std::fabs(y);
    const double mx = ax > ay ? ax : ay;
    if (std::isinf(mx)) return std::isinf(level) ? 0 : 1;
    if (mx == 0) return level > 0 ? -1 : 0;
    const int e = std::ilogb(mx);
    const double a = std::scalbn(x, -e), b = std::scalbn(y, -e), l = std::scalbn(level, -e);
    const double m2 = a * a + b * b, l2 = l * l;
    return m2 < l2 ? -1 : m2 > l2 ? 1 : 0;
}

// The unit vector of a non-zero element without NaN parts: an infinite
// element keeps the direction of its infinite parts.
inline void direction(double x, double y, double& ux, double& uy) {
    if (std::isinf(x) || std::isinf(y)) {
        x = std::isinf(x) ? std::copysign(1.0, x) : std::copysign(0.0, x);
        y = std::isinf(y) ? std::copysign(1.0, y) : std::copysign(0.0, y);
    } else {
        const int e = std::ilogb(std::fmax(std::fabs(x), std::fabs(y)));
        x = std::scalbn(x, -e);
        y = std::scalbn(y, -e);
    }
    const double s = std::sqrt(x * x + y * y);
    ux = x / s;
    uy = y / s;
}

// round(a * level / sqrt(n)) exactly, for a 16-bit part a, n = re^2 + im^2 > 0
// and 0 <= level <= 32767, starting from an estimate q: (2q - 1)^2 n < 4 t^2 <
// (2q + 1)^2 n with t = |a| level. No value lies halfway, so the bounds are
// strict; all products stay below 2^64.
inline double roundedPart(int a, std::uint64_t n, int level, double estimate) {
    const std::uint64_t t = std::uint64_t(a < 0 ? -a : a) * std::uint64_t(level);
    const std::uint64_t t4 = 4 * t * t;
    std::uint64_t q = std::uint64_t(std::fabs(estimate));
    while ((2 * q + 1) * (2 * q + 1) * n < t4) ++q;
    while (q > 0 && (2 * q - 1) * (2 * q - 1) * n > t4) --q;
    return a < 0 ? -double(q) : double(q);
}

// ---- Rules ---------------------------------------------------------------------------

// Scale: elements below (Below) or above the level become x * level / |x|.
template <class P, bool Below>
struct Scale {
    static constexpr bool kEvery = false, kValue = false, kWarn = false;
    double level;
    DR lv, l2, atZero;
    explicit Scale(double l) : level(l), lv(DL::set1(l)), l2(DL::set1(l * l)), atZero(DL::pair(l, 0.0)) {}

    DR pair(DR p, DR& o) const {
        if (outside<P>(p)) return slow(p, o);
        const DR m2 = mag2(p);
        const DR rep = Below ? DL::lt(m2, l2) : DL::gt(m2, l2);
        DR r = DL::mul(DL::div(p, DL::sqrt(m2)), lv);
        r = DL::blend(r, p, DL::eq(p, DL::zero()));     // zero parts stay zero
        r = DL::blend(r, atZero, DL::eq(m2, DL::zero()));  // the zero element: (level, 0)
        if constexpr (std::is_integral_v<P>) r = rounded(p, m2, r, rep);
        o = r;
        return rep;
    }

    // 16-bit parts: to the nearest integer; a part within 2^-20 of a half
    // (the double error is below 2^-36) is decided exactly.
    DR rounded(DR p, DR m2, DR r, DR rep) const {
        const DR q = DL::roundNearest(r);
        const DR nearHalf = DL::gt(DL::abs(DL::sub(r, q)), DL::set1(0.5 - 0x1p-20));
        if (!DL::anyOf(DL::and_(nearHalf, rep))) return q;
        const auto n = std::uint64_t(DL::first(m2));
        const int l = int(level);
        return DL::pair(roundedPart(int(re(p)), n, l, re(q)), roundedPart(int(im(p)), n, l, im(q)));
    }

    DR slow(DR p, DR& o) const {
        const double x = re(p), y = im(p);
        o = p;
        if (std::isnan(x) || std::isnan(y) || std::isnan(level)) return DL::zero();
        const int c = compareMagnitude(x, y, level);
        if (Below ? c >= 0 : c <= 0) return DL::zero();
        if (x == 0 && y == 0) {
            o = atZero;
        } else {
            double ux, uy;
            direction(x, y, ux, uy);
            o = DL::pair(x == 0 ? x : ux * level, y == 0 ? y : uy * level);
        }
        return ones();
    }
};

// Value: elements below (Below) or above the level become the constant.
template <class P, bool Below>
struct Value {
    static constexpr bool kEvery = false, kValue = true, kWarn = false;
    double level;
    DR l2;
    explicit Value(double l) : level(l), l2(DL::set1(l * l)) {}

    DR pair(DR p, DR&) const {
        if (outside<P>(p)) {
            const double x = re(p), y = im(p);
            if (std::isnan(x) || std::isnan(y) || std::isnan(level)) return DL::zero();
            const int c = compareMagnitude(x, y, level);
            return (Below ? c < 0 : c > 0) ? ones() : DL::zero();
        }
        const DR m2 = mag2(p);
        return Below ? DL::lt(m2, l2) : DL::gt(m2, l2);
    }
};

// Inverse: 1 / v with v = x raised to magnitude level where |x| < level.
template <class P>
struct Inverse {
    static constexpr bool kEvery = true, kValue = false, kWarn = true;
    double level;
    DR lv, l2;
    explicit Inverse(double l) : level(l), lv(DL::set1(l)), l2(DL::set1(l * l)) {}

    DR pair(DR p, DR& o) const {
        const DR m2 = mag2(p);
        if (outside<P>(p) || DL::anyOf(DL::eq(m2, DL::zero()))) {
            o = slow(re(p), im(p));
            return ones();
        }
        const DR c = DL::conj(p);
        const DR inv = DL::div(c, m2);                               // conj(x) / |x|^2
        const DR raised = DL::div(DL::div(c, DL::sqrt(m2)), lv);     // conj(x) / (|x| level)
        o = DL::blend(inv, raised, DL::lt(m2, l2));
        return ones();
    }

    DR slow(double x, double y) const {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        if (std::isnan(x) || std::isnan(y)) return DL::pair(nan, nan);
        if (std::isinf(x) || std::isinf(y)) return DL::pair(std::copysign(0.0, x), std::copysign(0.0, -y));
        if (x == 0 && y == 0) return level > 0 ? DL::pair(1 / level, -0.0) : DL::pair(1 / x, -y);
        const int e = std::ilogb(std::fmax(std::fabs(x), std::fabs(y)));
        const double a = std::scalbn(x, -e), b = std::scalbn(y, -e), l = std::scalbn(level, -e);
        const double m2 = a * a + b * b;
        if (m2 < l * l) {
            const double s = std::sqrt(m2);
            return DL::pair(a / s / level, -b / s / level);
        }
        return DL::pair(std::scalbn(a / m2, -e), std::scalbn(-b / m2, -e));
    }
};

// ---- The driver ------------------------------------------------------------------------

// A kernel object for form::each over the parts of complex elements of P.
template <class P, class Rule>
struct Elements {
    using F = Full<P>;
    form::Vec<P> s;
    Rule rule;
    typename F::R value;  // the constant pair of a Value rule
    bool infinite;        // an infinite result written (rules that warn)

    template <class L>
    typename L::R at(std::ptrdiff_t i) {
        constexpr int K = L::N / 2;
        const typename L::R v = s.template load<L>(i);
        DR p[K], o[K], m[K];
        Cx<P>::template widen<L>(v, p);
        for (int k = 0; k < K; ++k) m[k] = rule.pair(p[k], o[k]);
        if constexpr (Rule::kValue) {
            return L::blend(v, value, Cx<P>::template mask<L>(m));
        } else if constexpr (Rule::kEvery) {
            const typename L::R r = Cx<P>::template narrow<L>(o);
            if constexpr (Rule::kWarn)
                infinite |= L::anyOf(L::eq(L::abs(r), L::set1(std::numeric_limits<P>::infinity())));
            return r;
        } else {
            return L::blend(v, Cx<P>::template narrow<L>(o), Cx<P>::template mask<L>(m));
        }
    }
};

// Runs a rule over n parts (2 per element) from s into d; returns whether an
// infinite result was written.
template <class P, class Rule>
inline bool runElements(form::Vec<P> s, P* d, std::ptrdiff_t n, Rule rule, typename Full<P>::R value = Full<P>::zero()) {
    const Elements<P, Rule> fn{s, rule, value, false};
    return form::each<P, 2>(fn, d, n).infinite;
}

}  // namespace zvp::ZVP_LEVEL::thresh

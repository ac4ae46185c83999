// Thresholding rows of the shape table: one per export, with the values each
// refuses (relOp -5, a negative magnitude level -19, levelLT > levelGT -18)
// and, where the rule can be stated exactly, an oracle written here from the
// rule itself. Rows without one -- 32f LTInv's refined estimate, and 64fc,
// whose squared magnitudes and replacements are rounded in double, so no
// independent formula reproduces them bit for bit at rounding edges -- are
// checked within bounds by tests/convert/threshold_test.cpp.
#include <climits>
#include <cmath>
#include <cstdint>
#include <utility>

#include "shapes.h"

namespace {

using namespace zvp::test;

// ---- Makers: source (or vector), destination, length, then constants ------------

template <class A, class D, class... C, std::size_t... K>
Row consts(const char* n, ZvpStatus (*f)(const A*, D*, int, C...), std::index_sequence<K...>) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), static_cast<D*>(p[1]), len, constant<C>(v, int(K))...);
    });
    r.consts = {typeOf<C>()...};
    return r;
}
template <class D, class... C, std::size_t... K>
Row consts(const char* n, ZvpStatus (*f)(D*, int, C...), std::index_sequence<K...>) {
    Row r = row(n, {io<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<D*>(p[0]), len, constant<C>(v, int(K))...);
    });
    r.consts = {typeOf<C>()...};
    return r;
}
template <class A, class D, class... C>
Row th(const char* n, ZvpStatus (*f)(const A*, D*, int, C...)) { return consts(n, f, std::index_sequence_for<C...>{}); }
template <class D, class... C>
Row th(const char* n, ZvpStatus (*f)(D*, int, C...)) { return consts(n, f, std::index_sequence_for<C...>{}); }

// Threshold with relOp: the code is constant 0 (tried from a list: every
// level with 0 and with 4, then refused codes), the level constant 1.
const std::vector<std::int64_t> kRelOps = [] {
    std::vector<std::int64_t> v(36, 0);
    for (int i = 18; i < 36; ++i) v[i] = 4;
    for (std::int64_t bad : {1, 2, 3, 5, -1, INT_MIN, INT_MAX}) v.push_back(bad);
    return v;
}();
template <class A, class D, class Lv>
Row rel(const char* n, ZvpStatus (*f)(const A*, D*, int, Lv, ZvpCmpOp)) {
    Row r = row(n, {in<A>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<const A*>(p[0]), static_cast<D*>(p[1]), len, constant<Lv>(v, 1), ZvpCmpOp(constant<int>(v, 0)));
    });
    r.consts = {typeOf<int>(), typeOf<Lv>()};
    return r.tryConstants(kRelOps);
}
template <class D, class Lv>
Row rel(const char* n, ZvpStatus (*f)(D*, int, Lv, ZvpCmpOp)) {
    Row r = row(n, {io<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(static_cast<D*>(p[0]), len, constant<Lv>(v, 1), ZvpCmpOp(constant<int>(v, 0)));
    });
    r.consts = {typeOf<int>(), typeOf<Lv>()};
    return r.tryConstants(kRelOps);
}

// ---- Refused values ------------------------------------------------------------------

template <class P>
Rule negativeLevel(int k = 0) {
    return [k](const Vals& v) { return constant<P>(v, k) < P(0) ? zvpStsThreshNegLevelErr : zvpStsNoErr; };
}
template <class P>
Rule relOpThen(bool magnitude) {
    return [magnitude](const Vals& v) {
        const int op = constant<int>(v, 0);
        if (op != 0 && op != 4) return zvpStsBadArgErr;
        return magnitude && constant<P>(v, 1) < P(0) ? zvpStsThreshNegLevelErr : zvpStsNoErr;
    };
}
template <class P>
Rule levelsInOrder() {
    return [](const Vals& v) { return constant<P>(v, 0) > constant<P>(v, 2) ? zvpStsThresholdErr : zvpStsNoErr; };
}

// ---- Oracles: the rules stated directly ----------------------------------------------

template <class X>
using Pt = typename PartOf<X>::type;

template <class T>
T below(T x, T l) { return x < l ? l : x; }
template <class T>
T above(T x, T l) { return x > l ? l : x; }
template <class T>
T absRule(T x, T l, bool lt) {
    if constexpr (std::is_integral_v<T>) {
        const long long a = x < 0 ? -(long long)x : x;
        return (lt ? a < l : a > l) ? T(x < 0 ? -l : l) : x;
    } else {
        return (lt ? std::fabs(x) < l : std::fabs(x) > l) ? std::copysign(std::fabs(l), x) : x;
    }
}

template <class C>
long double magnitude2(C x) { return (long double)x.re * x.re + (long double)x.im * x.im; }

// The nearest integer to |a| l / sqrt(n), signed like a: the largest k with
// k - 1/2 < |a| l / sqrt(n), i.e. (2k - 1)^2 n < 4 (a l)^2, by bisection.
Zvp16s nearestScaled(int a, std::uint64_t n, int l) {
    const std::uint64_t t = std::uint64_t(a < 0 ? -a : a) * std::uint64_t(l), t4 = 4 * t * t;
    std::uint64_t lo = 0, hi = 32768;
    while (lo < hi) {
        const std::uint64_t k = (lo + hi + 1) / 2;
        if ((2 * k - 1) * (2 * k - 1) * n < t4) lo = k;
        else hi = k - 1;
    }
    return Zvp16s(a < 0 ? -std::int64_t(lo) : std::int64_t(lo));
}

// x * l / |x| for a complex element; (l, 0) for zero, zero parts kept, an
// infinite element along its infinite parts.
template <class C>
C scaled(C x, Pt<C> l) {
    using P = Pt<C>;
    if (x.re == 0 && x.im == 0) return {l, 0};
    if constexpr (std::is_integral_v<P>) {
        const auto n = std::uint64_t(std::int64_t(x.re) * x.re + std::int64_t(x.im) * x.im);
        return {nearestScaled(x.re, n, l), nearestScaled(x.im, n, l)};
    } else {
        long double a = x.re, b = x.im;
        if (std::isinf(a) || std::isinf(b)) {
            a = std::isinf(a) ? std::copysign(1.0L, a) : std::copysign(0.0L, a);
            b = std::isinf(b) ? std::copysign(1.0L, b) : std::copysign(0.0L, b);
        }
        const long double s = std::sqrt(a * a + b * b);
        return {x.re == 0 ? x.re : P(a / s * l), x.im == 0 ? x.im : P(b / s * l)};
    }
}
template <class C>
C cplxLevel(C x, Pt<C> l, bool lt) {
    if (l == 0) return lt ? x : C{0, 0};
    const long double m = magnitude2(x), l2 = (long double)l * l;
    return (lt ? m < l2 : m > l2) ? scaled(x, l) : x;
}

template <class T>
T level(T x, Pt<T> l, bool lt) {
    if constexpr (PartOf<T>::parts == 2) return cplxLevel(x, l, lt);
    else return lt ? below(x, l) : above(x, l);
}

// 1 / v, v = x raised to magnitude l (complex: conj(v) / |v|^2).
template <class T>
T inverse(T x, Pt<T> l) {
    if constexpr (PartOf<T>::parts == 1) {
        return T(1) / (std::fabs(x) < l ? std::copysign(l, x) : x);
    } else {
        using P = Pt<T>;
        if (std::isnan(x.re) || std::isnan(x.im)) return {NAN, NAN};
        if (std::isinf(x.re) || std::isinf(x.im)) return {std::copysign(P(0), x.re), std::copysign(P(0), -x.im)};
        if (x.re == 0 && x.im == 0) return l > 0 ? T{P(1 / l), P(-0.0)} : T{P(1) / x.re, P(-x.im)};
        const long double a = x.re, b = x.im, m = a * a + b * b, ll = l;
        if (m < ll * ll) return {P(a / std::sqrt(m) / ll), P(-b / std::sqrt(m) / ll)};
        return {P(a / m), P(-b / m)};
    }
}

template <class T>
T valRule(T x, Pt<T> l, T value, bool lt) {
    if constexpr (PartOf<T>::parts == 2) {
        const long double m = magnitude2(x), l2 = (long double)l * l;
        return (lt ? m < l2 : m > l2) ? value : x;
    } else {
        return (lt ? x < l : x > l) ? value : x;
    }
}

#define RULE(...) [](auto d, auto x, [[maybe_unused]] const Vals& v) -> decltype(d) { __VA_ARGS__ }
#define LV(k) constant<Pt<decltype(x)>>(v, k)
const auto ltRule = RULE(return level(x, LV(0), true););
const auto gtRule = RULE(return level(x, LV(0), false););
const auto relRule = RULE(return level(x, LV(1), constant<int>(v, 0) == 0););
const auto ltAbsRule = RULE(return absRule(x, LV(0), true););
const auto gtAbsRule = RULE(return absRule(x, LV(0), false););
const auto ltValRule = RULE(return valRule(x, LV(0), constant<decltype(x)>(v, 1), true););
const auto gtValRule = RULE(return valRule(x, LV(0), constant<decltype(x)>(v, 1), false););
const auto valValRule = RULE(return x < LV(0) ? LV(1) : x > LV(2) ? LV(3) : x;);
const auto invRule = RULE(return inverse(x, LV(0)););
#undef LV
#undef RULE

// An export and its in-place twin, with the values they refuse and, when
// given, the oracle.
#define TWO(name, refusal) th("Threshold_" #name, zvpsThreshold_##name).refuse(refusal), \
                           th("Threshold_" #name "_I", zvpsThreshold_##name##_I).refuse(refusal)
#define TWO_O(name, refusal, rule)                                                                   \
    th("Threshold_" #name, zvpsThreshold_##name).refuse(refusal).withOracle(ora(zvpsThreshold_##name, rule)), \
        th("Threshold_" #name "_I", zvpsThreshold_##name##_I).refuse(refusal).withOracle(ora(zvpsThreshold_##name##_I, rule))
#define REL(t, magnitude)                                                                             \
    rel("Threshold_" #t, zvpsThreshold_##t).refuse(relOpThen<Pt<Zvp##t>>(magnitude)),                \
        rel("Threshold_" #t "_I", zvpsThreshold_##t##_I).refuse(relOpThen<Pt<Zvp##t>>(magnitude))
#define REL_O(t, magnitude)                                                                           \
    rel("Threshold_" #t, zvpsThreshold_##t).refuse(relOpThen<Pt<Zvp##t>>(magnitude))                 \
        .withOracle(ora(zvpsThreshold_##t, relRule)),                                                 \
        rel("Threshold_" #t "_I", zvpsThreshold_##t##_I).refuse(relOpThen<Pt<Zvp##t>>(magnitude))    \
            .withOracle(ora(zvpsThreshold_##t##_I, relRule))

const Rule kAny;

std::vector<Row> rows() {
    std::vector<Row> r = {
        TWO_O(LT_16s, kAny, ltRule), TWO_O(GT_16s, kAny, gtRule), TWO_O(LT_32s, kAny, ltRule),
        TWO_O(GT_32s, kAny, gtRule), TWO_O(LT_32f, kAny, ltRule), TWO_O(GT_32f, kAny, gtRule),
        TWO_O(LT_64f, kAny, ltRule), TWO_O(GT_64f, kAny, gtRule),
        TWO_O(LT_16sc, negativeLevel<Zvp16s>(), ltRule), TWO_O(GT_16sc, negativeLevel<Zvp16s>(), gtRule),
        TWO_O(LT_32fc, negativeLevel<Zvp32f>(), ltRule), TWO_O(GT_32fc, negativeLevel<Zvp32f>(), gtRule),
        TWO(LT_64fc, negativeLevel<Zvp64f>()), TWO(GT_64fc, negativeLevel<Zvp64f>()),
        TWO_O(LTAbs_16s, negativeLevel<Zvp16s>(), ltAbsRule), TWO_O(GTAbs_16s, negativeLevel<Zvp16s>(), gtAbsRule),
        TWO_O(LTAbs_32s, negativeLevel<Zvp32s>(), ltAbsRule), TWO_O(GTAbs_32s, negativeLevel<Zvp32s>(), gtAbsRule),
        TWO_O(LTAbs_32f, negativeLevel<Zvp32f>(), ltAbsRule), TWO_O(GTAbs_32f, negativeLevel<Zvp32f>(), gtAbsRule),
        TWO_O(LTAbs_64f, negativeLevel<Zvp64f>(), ltAbsRule), TWO_O(GTAbs_64f, negativeLevel<Zvp64f>(), gtAbsRule),
        TWO_O(LTVal_16s, kAny, ltValRule), TWO_O(GTVal_16s, kAny, gtValRule), TWO_O(LTVal_32f, kAny, ltValRule),
        TWO_O(GTVal_32f, kAny, gtValRule), TWO_O(LTVal_64f, kAny, ltValRule), TWO_O(GTVal_64f, kAny, gtValRule),
        TWO_O(LTVal_16sc, negativeLevel<Zvp16s>(), ltValRule), TWO_O(GTVal_16sc, negativeLevel<Zvp16s>(), gtValRule),
        TWO_O(LTVal_32fc, negativeLevel<Zvp32f>(), ltValRule), TWO_O(GTVal_32fc, negativeLevel<Zvp32f>(), gtValRule),
        TWO(LTVal_64fc, negativeLevel<Zvp64f>()), TWO(GTVal_64fc, negativeLevel<Zvp64f>()),
        TWO_O(LTValGTVal_16s, levelsInOrder<Zvp16s>(), valValRule),
        TWO_O(LTValGTVal_32s, levelsInOrder<Zvp32s>(), valValRule),
        TWO_O(LTValGTVal_32f, levelsInOrder<Zvp32f>(), valValRule),
        TWO_O(LTValGTVal_64f, levelsInOrder<Zvp64f>(), valValRule),
        TWO(LTInv_32f, negativeLevel<Zvp32f>()), TWO_O(LTInv_64f, negativeLevel<Zvp64f>(), invRule),
        TWO_O(LTInv_32fc, negativeLevel<Zvp32f>(), invRule), TWO(LTInv_64fc, negativeLevel<Zvp64f>()),
        REL_O(16s, false), REL_O(32f, false), REL_O(64f, false), REL_O(16sc, true), REL_O(32fc, true),
        REL(64fc, true),
    };
    // Two long runs (2^30 elements): a real form and a complex one.
    for (Row& x : r)
        if (x.name == "Threshold_LT_32f" || x.name == "Threshold_GTVal_16sc") x.flags |= kLong;
    return r;
}

const bool registered = addShapeFamily("threshold", rows);

}  // namespace

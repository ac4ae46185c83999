// Thresholding rows of the shape table: one per export, the values each
// refuses (relOp -5, a negative magnitude level -19, levelLT > levelGT -18)
// and an oracle written from the rule where it is exact. 32f LTInv's
// estimate and 64fc (rounded in double at its rounding edges) are checked
// within bounds by tests/convert/threshold_test.cpp instead.
#include <climits>
#include <cmath>
#include <cstdint>
#include <utility>

#include "shapes.h"

namespace {

using namespace zvp::test;
template <class X>
using Pt = typename PartOf<X>::type;

// Source (or vector), destination, length, then the constants in order.
template <class... C, class F, class... Ptr>
auto callWith(F f, const Vals& v, int len, Ptr... p) {
    return [&]<std::size_t... K>(std::index_sequence<K...>) { return f(p..., len, constant<C>(v, int(K))...); }(
        std::index_sequence_for<C...>{});
}
template <class A, class D, class... C>
Row th(const char* n, ZvpStatus (*f)(const A*, D*, int, C...)) {
    Row r = row(n, {in<A>(), out<D>()},
                [f](void* const* p, int len, const Vals& v) { return callWith<C...>(f, v, len, (const A*)p[0], (D*)p[1]); });
    r.consts = {typeOf<C>()...};
    return r;
}
template <class D, class... C>
Row th(const char* n, ZvpStatus (*f)(D*, int, C...)) {
    Row r = row(n, {io<D>()}, [f](void* const* p, int len, const Vals& v) { return callWith<C...>(f, v, len, (D*)p[0]); });
    r.consts = {typeOf<C>()...};
    return r;
}
// Threshold with relOp, called with the code first so that it is constant 0
// and tried from a list: every level with 0 and with 4, then refused codes.
const std::vector<std::int64_t> kRelOps = [] {
    std::vector<std::int64_t> v(36, 0);
    for (int i = 18; i < 36; ++i) v[i] = 4;
    for (std::int64_t bad : {1, 2, 3, 5, -1, INT_MIN, INT_MAX}) v.push_back(bad);
    return v;
}();
#define REL_FN(t) +[](const Zvp##t* s, Zvp##t* d, int n, int op, Pt<Zvp##t> l) { return zvpsThreshold_##t(s, d, n, l, ZvpCmpOp(op)); }
#define REL_FN_I(t) +[](Zvp##t* sd, int n, int op, Pt<Zvp##t> l) { return zvpsThreshold_##t##_I(sd, n, l, ZvpCmpOp(op)); }

template <class P>
Rule negativeLevel() { return [](const Vals& v) { return constant<P>(v, 0) < P(0) ? zvpStsThreshNegLevelErr : zvpStsNoErr; }; }
template <class P>
Rule relOpThen(bool magnitude) {
    return [magnitude](const Vals& v) {
        const int op = constant<int>(v, 0);
        if (op != 0 && op != 4) return zvpStsBadArgErr;
        return magnitude && constant<P>(v, 1) < P(0) ? zvpStsThreshNegLevelErr : zvpStsNoErr;
    };
}
template <class P>
Rule levelsInOrder() { return [](const Vals& v) { return constant<P>(v, 0) > constant<P>(v, 2) ? zvpStsThresholdErr : zvpStsNoErr; }; }

// ---- The rules stated directly ------------------------------------------------------

template <class T>
T absRule(T x, T l, bool lt) {
    const auto a = std::is_integral_v<T> ? (long double)std::llabs((long long)x) : std::fabs((long double)x);
    if (!(lt ? a < l : a > l)) return x;
    if constexpr (std::is_integral_v<T>) return T(x < 0 ? -l : l);
    else return std::copysign(std::fabs(l), x);
}

template <class C>
bool magnitudeBeyond(C x, Pt<C> l, bool lt) {
    const long double m = (long double)x.re * x.re + (long double)x.im * x.im, l2 = (long double)l * l;
    return lt ? m < l2 : m > l2;
}

// The nearest integer to a l / sqrt(n): the largest k with k - 1/2 <
// |a| l / sqrt(n), i.e. (2k - 1)^2 n < 4 (a l)^2, by bisection; signed like a.
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

// x l / |x|: (l, 0) for zero, zero parts kept, an infinite element along its
// infinite parts.
template <class C>
C scaled(C x, Pt<C> l) {
    using P = Pt<C>;
    if (x.re == 0 && x.im == 0) return {l, 0};
    if constexpr (std::is_integral_v<P>) {
        const auto n = std::uint64_t(std::int64_t(x.re) * x.re + std::int64_t(x.im) * x.im);
        return {nearestScaled(x.re, n, l), nearestScaled(x.im, n, l)};
    } else {
        auto unit = [](long double p, bool inf) { return inf ? (std::isinf(p) ? std::copysign(1.0L, p) : std::copysign(0.0L, p)) : p; };
        const bool inf = std::isinf(x.re) || std::isinf(x.im);
        const long double a = unit(x.re, inf), b = unit(x.im, inf), s = std::sqrt(a * a + b * b);
        return {x.re == 0 ? x.re : P(a / s * l), x.im == 0 ? x.im : P(b / s * l)};
    }
}

template <class T>
T level(T x, Pt<T> l, bool lt) {
    if constexpr (PartOf<T>::parts == 1) return (lt ? x < l : x > l) ? l : x;
    else if (l == 0) return lt ? x : T{0, 0};
    else return magnitudeBeyond(x, l, lt) ? scaled(x, l) : x;
}
template <class T>
T valRule(T x, Pt<T> l, T value, bool lt) {
    if constexpr (PartOf<T>::parts == 2) return magnitudeBeyond(x, l, lt) ? value : x;
    else return (lt ? x < l : x > l) ? value : x;
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
        const long double a = x.re, b = x.im, m = a * a + b * b, k = m < (long double)l * l ? std::sqrt(m) * l : m;
        return {P(a / k), P(-b / k)};
    }
}

#define RULE(...) [](auto d, auto x, [[maybe_unused]] const Vals& v) -> decltype(d) { return __VA_ARGS__; }
#define LV(k) constant<Pt<decltype(x)>>(v, k)
const auto ltRule = RULE(level(x, LV(0), true));
const auto gtRule = RULE(level(x, LV(0), false));
const auto relRule = RULE(level(x, LV(1), constant<int>(v, 0) == 0));
const auto ltAbsRule = RULE(absRule(x, LV(0), true));
const auto gtAbsRule = RULE(absRule(x, LV(0), false));
const auto ltValRule = RULE(valRule(x, LV(0), constant<decltype(x)>(v, 1), true));
const auto gtValRule = RULE(valRule(x, LV(0), constant<decltype(x)>(v, 1), false));
const auto valValRule = RULE(x < LV(0) ? LV(1) : x > LV(2) ? LV(3) : x);
const auto invRule = RULE(inverse(x, LV(0)));
#undef LV
#undef RULE

// An export and its in-place twin, the values they refuse and, if given, the
// oracle's rule.
#define WITH(f, ...) __VA_OPT__(.withOracle(ora(f, __VA_ARGS__)))
#define TWO(name, refusal, ...)                                                                              \
    th("Threshold_" #name, zvpsThreshold_##name).refuse(refusal) WITH(zvpsThreshold_##name, __VA_ARGS__),   \
        th("Threshold_" #name "_I", zvpsThreshold_##name##_I).refuse(refusal) WITH(zvpsThreshold_##name##_I, __VA_ARGS__)
#define REL(t, magnitude, ...)                                                                                         \
    th("Threshold_" #t, REL_FN(t)).refuse(relOpThen<Pt<Zvp##t>>(magnitude)).tryConstants(kRelOps) WITH(REL_FN(t), __VA_ARGS__), \
        th("Threshold_" #t "_I", REL_FN_I(t)).refuse(relOpThen<Pt<Zvp##t>>(magnitude)).tryConstants(kRelOps)      \
            WITH(REL_FN_I(t), __VA_ARGS__)

std::vector<Row> rows() {
    const Rule any;  // nothing refused
    std::vector<Row> r = {
        TWO(LT_16s, any, ltRule), TWO(GT_16s, any, gtRule), TWO(LT_32s, any, ltRule), TWO(GT_32s, any, gtRule),
        TWO(LT_32f, any, ltRule), TWO(GT_32f, any, gtRule), TWO(LT_64f, any, ltRule), TWO(GT_64f, any, gtRule),
        TWO(LT_16sc, negativeLevel<Zvp16s>(), ltRule), TWO(GT_16sc, negativeLevel<Zvp16s>(), gtRule),
        TWO(LT_32fc, negativeLevel<Zvp32f>(), ltRule), TWO(GT_32fc, negativeLevel<Zvp32f>(), gtRule),
        TWO(LT_64fc, negativeLevel<Zvp64f>()), TWO(GT_64fc, negativeLevel<Zvp64f>()),
        TWO(LTAbs_16s, negativeLevel<Zvp16s>(), ltAbsRule), TWO(GTAbs_16s, negativeLevel<Zvp16s>(), gtAbsRule),
        TWO(LTAbs_32s, negativeLevel<Zvp32s>(), ltAbsRule), TWO(GTAbs_32s, negativeLevel<Zvp32s>(), gtAbsRule),
        TWO(LTAbs_32f, negativeLevel<Zvp32f>(), ltAbsRule), TWO(GTAbs_32f, negativeLevel<Zvp32f>(), gtAbsRule),
        TWO(LTAbs_64f, negativeLevel<Zvp64f>(), ltAbsRule), TWO(GTAbs_64f, negativeLevel<Zvp64f>(), gtAbsRule),
        TWO(LTVal_16s, any, ltValRule), TWO(GTVal_16s, any, gtValRule), TWO(LTVal_32f, any, ltValRule),
        TWO(GTVal_32f, any, gtValRule), TWO(LTVal_64f, any, ltValRule), TWO(GTVal_64f, any, gtValRule),
        TWO(LTVal_16sc, negativeLevel<Zvp16s>(), ltValRule), TWO(GTVal_16sc, negativeLevel<Zvp16s>(), gtValRule),
        TWO(LTVal_32fc, negativeLevel<Zvp32f>(), ltValRule), TWO(GTVal_32fc, negativeLevel<Zvp32f>(), gtValRule),
        TWO(LTVal_64fc, negativeLevel<Zvp64f>()), TWO(GTVal_64fc, negativeLevel<Zvp64f>()),
        TWO(LTValGTVal_16s, levelsInOrder<Zvp16s>(), valValRule), TWO(LTValGTVal_32s, levelsInOrder<Zvp32s>(), valValRule),
        TWO(LTValGTVal_32f, levelsInOrder<Zvp32f>(), valValRule), TWO(LTValGTVal_64f, levelsInOrder<Zvp64f>(), valValRule),
        TWO(LTInv_32f, negativeLevel<Zvp32f>()), TWO(LTInv_64f, negativeLevel<Zvp64f>(), invRule),
        TWO(LTInv_32fc, negativeLevel<Zvp32f>(), invRule), TWO(LTInv_64fc, negativeLevel<Zvp64f>()),
        REL(16s, false, relRule), REL(32f, false, relRule), REL(64f, false, relRule), REL(16sc, true, relRule),
        REL(32fc, true, relRule), REL(64fc, true),
    };
    for (Row& x : r)  // two long runs (2^30 elements): a real form and a complex one
        if (x.name == "Threshold_LT_32f" || x.name == "Threshold_GTVal_16sc") x.flags |= kLong;
    return r;
}

const bool registered = addShapeFamily("threshold", rows);

}  // namespace

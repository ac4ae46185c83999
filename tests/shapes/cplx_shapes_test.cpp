// Rows of the complex helpers, with exact oracles for the integer forms and
// the forms that only move or negate parts. The float magnitudes and phases
// are checked against long-double references within their ulp bounds in
// tests/convert/cplx_test.cpp, with the check orders particular to the family.
#include <cmath>

#include "shapes.h"
#include "wide_int.h"

namespace {

using namespace zvp::test;

#define ZVP_P(k, T) static_cast<T*>(p[k])
#define ZVP_E(k, T) (*static_cast<T*>(p[k]))

// One source, two destinations.
template <class A, class D, class E>
Row un2out(const char* n, ZvpStatus (*f)(const A*, D*, E*, int)) {
    return row(n, {in<A>(), out<D>(), out<E>()}, [f](void* const* p, int len, const Vals&) {
        return f(ZVP_P(0, const A), ZVP_P(1, D), ZVP_P(2, E), len);
    });
}
// Two sources, two destinations.
template <class A, class B, class D, class E>
Row vv2out(const char* n, ZvpStatus (*f)(const A*, const B*, D*, E*, int)) {
    return row(n, {in<A>(), in<B>(), out<D>(), out<E>()}, [f](void* const* p, int len, const Vals&) {
        return f(ZVP_P(0, const A), ZVP_P(1, const B), ZVP_P(2, D), ZVP_P(3, E), len);
    });
}
// Two scale factors: the row's scale factor first, the second as constant 0.
const std::vector<std::int64_t> kSecondScale = {0, -13, -15, -2, 1, 3, 14, 40, -90};
Row secondScale(Row r) {
    r.sf = true;
    r.consts = {typeOf<int>()};
    return r.tryConstants(kSecondScale);
}
template <class A, class D, class E>
Row un2outSfs(const char* n, ZvpStatus (*f)(const A*, D*, E*, int, int, int)) {
    return secondScale(row(n, {in<A>(), out<D>(), out<E>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, D), ZVP_P(2, E), len, v.sf, constant<int>(v, 0));
    }));
}
template <class A, class B, class D>
Row vvSfs2(const char* n, ZvpStatus (*f)(const A*, const B*, D*, int, int, int)) {
    return secondScale(row(n, {in<A>(), in<B>(), out<D>()}, [f](void* const* p, int len, const Vals& v) {
        return f(ZVP_P(0, const A), ZVP_P(1, const B), ZVP_P(2, D), len, v.sf, constant<int>(v, 0));
    }));
}

// ---- Oracles ----------------------------------------------------------------

// round(sqrt(r) * 2^-sf), ties to even, saturated to D: the candidate from
// long double, settled by exact comparisons of squares.
template <class D>
D magnitudeRounded(std::uint64_t r, int sf) {
    using L = std::numeric_limits<D>;
    if (r == 0 || sf > 40) return D(0);
    const long double y = std::ldexp(std::sqrt((long double)r), sf < -40 ? 40 : -sf);
    if (sf < -40 || y > 4294967296.0L) return L::max();
    const Wide R = Wide::ofU(r);
    // k^2 * 4^sf against R * 4^e, both exact.
    auto cmp = [&](const Wide& k, int e) {
        const Wide k2 = k * k;
        const int s = 2 * sf - 2 * e;
        return s >= 0 ? compare(k2.shl(s), R) : compare(k2, R.shl(-s));
    };
    std::uint64_t m = std::uint64_t(y);
    while (m > 0 && cmp(Wide::ofU(m), 0) > 0) --m;
    while (cmp(Wide::ofU(m + 1), 0) <= 0) ++m;
    const int c = cmp(Wide::ofU(2 * m + 1), 1);  // (m + 1/2)^2 against R
    if (c < 0 || (c == 0 && (m & 1))) ++m;
    return m > std::uint64_t(L::max()) ? L::max() : D(m);
}
template <class P>
std::uint64_t squares(P re, P im) {
    return std::uint64_t(std::int64_t(re) * re) + std::uint64_t(std::int64_t(im) * im);
}

// round(x), ties to even, saturated to D (x irrational or whole in practice).
template <class D>
D roundSat(long double x) {
    using L = std::numeric_limits<D>;
    x = std::nearbyint(x);
    if (x >= (long double)L::max()) return L::max();
    if (x <= (long double)L::min()) return L::min();
    return D(x);
}
template <class D, class P>
D phaseFixed(P re, P im, int sf) {
    return roundSat<D>(std::ldexp(std::atan2((long double)im, (long double)re), sf > 1000 ? -1000 : sf < -1000 ? 1000 : -sf));
}
template <class C, class P>
C polarFixed(P magn, P phase, int magnSf, int phaseSf) {
    auto clampSf = [](int sf) { return sf > 1000 ? 1000 : sf < -1000 ? -1000 : sf; };
    const long double m = std::ldexp((long double)magn, clampSf(magnSf));
    const long double ph = std::ldexp((long double)phase, clampSf(phaseSf));
    using Q = decltype(C::re);
    return C{roundSat<Q>(m * std::cos(ph)), roundSat<Q>(m * std::sin(ph))};
}

template <class C>
Oracle splitParts() {
    return [](void* const* p, const Vals&) {
        const C s = ZVP_E(0, const C);
        using P = decltype(s.re);
        ZVP_E(1, P) = s.re;
        ZVP_E(2, P) = s.im;
    };
}

template <class P>
P negSat(P x) {
    if constexpr (std::is_floating_point_v<P>) return -x;
    else return x == std::numeric_limits<P>::min() ? std::numeric_limits<P>::max() : P(-x);
}

#define ORA(f, rule) .withOracle(ora(zvps##f, rule))
#define UN(f) un(#f, zvps##f)
#define VV(f) vv(#f, zvps##f)

const bool registered = addShapeFamily("cplx", [] {
    auto magC = [](auto, auto s, const Vals& v) { return magnitudeRounded<decltype(s.re)>(squares(s.re, s.im), v.sf); };
    auto magS = [](auto, auto re, auto im, const Vals& v) { return magnitudeRounded<decltype(re)>(squares(re, im), v.sf); };
    auto phC = [](auto d, auto s, const Vals& v) { return phaseFixed<decltype(d)>(s.re, s.im, v.sf); };
    auto phS = [](auto d, auto re, auto im, const Vals& v) { return phaseFixed<decltype(d)>(re, im, v.sf); };
    auto powC = [](Zvp16s, Zvp16sc s, const Vals& v) { return scaled<Zvp16s>(Wide::ofU(squares(s.re, s.im)), v.sf); };
    auto powS = [](Zvp16s, Zvp16s re, Zvp16s im, const Vals& v) { return scaled<Zvp16s>(Wide::ofU(squares(re, im)), v.sf); };
    auto powCf = [](Zvp32f, Zvp16sc s, const Vals&) { return Zvp32f(std::int64_t(squares(s.re, s.im))); };
    auto powSf = [](Zvp32f, Zvp16s re, Zvp16s im, const Vals&) { return Zvp32f(std::int64_t(squares(re, im))); };
    auto real = [](auto, auto s, const Vals&) { return s.re; };
    auto imag = [](auto, auto s, const Vals&) { return s.im; };
    auto conj = [](auto, auto s, const Vals&) { return decltype(s){s.re, negSat(s.im)}; };
    auto join = [](auto d, auto re, auto im, const Vals&) { return decltype(d){re, im}; };
    auto polar16 = [](Zvp16sc, Zvp16s m, Zvp16s ph, const Vals& v) { return polarFixed<Zvp16sc>(m, ph, v.sf, constant<int>(v, 0)); };
    auto polarQ13 = [](Zvp16sc, Zvp16s m, Zvp16s ph, const Vals&) { return polarFixed<Zvp16sc>(m, ph, 0, -13); };
    return std::vector<Row>{
        UN(Magnitude_32fc), UN(Magnitude_64fc), UN(Magnitude_16sc32f),
        UN(Magnitude_16sc_Sfs) ORA(Magnitude_16sc_Sfs, magC), UN(Magnitude_32sc_Sfs) ORA(Magnitude_32sc_Sfs, magC),
        VV(Magnitude_32f), VV(Magnitude_64f), VV(Magnitude_16s32f), VV(Magnitude_16s_Sfs) ORA(Magnitude_16s_Sfs, magS),
        UN(Phase_32fc), UN(Phase_64fc), UN(Phase_16sc32f),
        UN(Phase_16sc_Sfs) ORA(Phase_16sc_Sfs, phC), UN(Phase_32sc_Sfs) ORA(Phase_32sc_Sfs, phC),
        VV(Phase_32f), VV(Phase_64f), VV(Phase_16s32f), VV(Phase_16s_Sfs) ORA(Phase_16s_Sfs, phS),
        // Both destinations written whatever the other's pointer: the null
        // destinations are checked by the family test.
        un2out("CartToPolar_32fc", zvpsCartToPolar_32fc).nullCheckedElsewhere(0b110),
        un2out("CartToPolar_64fc", zvpsCartToPolar_64fc),
        vv2out("CartToPolar_32f", zvpsCartToPolar_32f), vv2out("CartToPolar_64f", zvpsCartToPolar_64f),
        un2outSfs("CartToPolar_16sc_Sfs", zvpsCartToPolar_16sc_Sfs).nullCheckedElsewhere(0b100).withOracle([](void* const* p, const Vals& v) {
            const Zvp16sc s = ZVP_E(0, const Zvp16sc);
            ZVP_E(1, Zvp16s) = magnitudeRounded<Zvp16s>(squares(s.re, s.im), v.sf);
            ZVP_E(2, Zvp16s) = phaseFixed<Zvp16s>(s.re, s.im, constant<int>(v, 0));
        }),
        VV(PolarToCart_32fc), VV(PolarToCart_64fc),
        vv2out("PolarToCart_32f", zvpsPolarToCart_32f), vv2out("PolarToCart_64f", zvpsPolarToCart_64f),
        VV(PolarToCart_16sc) ORA(PolarToCart_16sc, polarQ13),
        vvSfs2("PolarToCart_16sc_Sfs", zvpsPolarToCart_16sc_Sfs).withOracle(ora(zvpsPolarToCart_16sc, polar16)),
        VV(PolarToCart_32sc),
        UN(PowerSpectr_32fc), UN(PowerSpectr_64fc),
        UN(PowerSpectr_16sc32f) ORA(PowerSpectr_16sc32f, powCf), UN(PowerSpectr_16sc_Sfs) ORA(PowerSpectr_16sc_Sfs, powC),
        VV(PowerSpectr_32f), VV(PowerSpectr_64f),
        VV(PowerSpectr_16s32f) ORA(PowerSpectr_16s32f, powSf), VV(PowerSpectr_16s_Sfs) ORA(PowerSpectr_16s_Sfs, powS),
        UN(Real_16sc) ORA(Real_16sc, real), UN(Real_32fc) ORA(Real_32fc, real), UN(Real_64fc) ORA(Real_64fc, real),
        UN(Imag_16sc) ORA(Imag_16sc, imag), UN(Imag_32fc) ORA(Imag_32fc, imag), UN(Imag_64fc) ORA(Imag_64fc, imag),
        un2out("CplxToReal_16sc", zvpsCplxToReal_16sc).withOracle(splitParts<Zvp16sc>()),
        un2out("CplxToReal_32fc", zvpsCplxToReal_32fc).withOracle(splitParts<Zvp32fc>()),
        un2out("CplxToReal_64fc", zvpsCplxToReal_64fc).withOracle(splitParts<Zvp64fc>()),
        // Either source may be null: checked by the family test.
        VV(RealToCplx_16s).nullCheckedElsewhere(0b011) ORA(RealToCplx_16s, join),
        VV(RealToCplx_32f).nullCheckedElsewhere(0b011) ORA(RealToCplx_32f, join),
        VV(RealToCplx_64f).nullCheckedElsewhere(0b011) ORA(RealToCplx_64f, join),
        UN(Conj_16sc) ORA(Conj_16sc, conj), unI("Conj_16sc_I", zvpsConj_16sc_I),
        UN(Conj_32fc).with(kLong) ORA(Conj_32fc, conj), unI("Conj_32fc_I", zvpsConj_32fc_I),
        UN(Conj_64fc) ORA(Conj_64fc, conj), unI("Conj_64fc_I", zvpsConj_64fc_I),
        // Whole-vector reversals: against Flip and Conj in the family test.
        UN(ConjFlip_16sc).with(kWhole), UN(ConjFlip_32fc).with(kWhole), UN(ConjFlip_64fc).with(kWhole),
    };
});

}  // namespace

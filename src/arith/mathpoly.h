// Vectorised single-precision exp, ln and arctan: range reduction followed by
// a minimax polynomial, written once on float lanes (any width, one lane
// included). Each function keeps
// the relative error below 2^-21 over its whole domain (the measured worst
// cases are a few ulps; see tests/arith/powers_internal_test.cpp).
//
// Special values:
//   expPs: NaN -> NaN; +inf and x > 88.72284 -> +inf; -inf and
//          x < -103.97 -> +0; results below the smallest normal are
//          rounded once, as gradual underflow.
//   lnPs:  NaN -> NaN; x < 0 and -inf -> NaN; +-0 -> -inf; +inf -> +inf;
//          denormal inputs are handled exactly; ln(1) = 0 exactly.
//   atanPs: NaN -> NaN; +-inf -> +-pi/2; odd, so atan(-0) = -0.
//
// The lane functions round with the processor's current rounding mode only
// in their ordinary arithmetic; the integer part of the range reduction is
// always taken to nearest. Every step is lane-wise (a lane's value never
// depends on its neighbours: the whole-vector shortcuts only skip work that
// would not change it), so the one-lane tail gives every element exactly the
// value the vector body would give it.
#pragma once

#include <cstdint>

#include "forms.h"
#include "lane.h"
#include "level.h"

namespace zvp::ZVP_LEVEL::mathpoly {

// ---- e^x ---------------------------------------------------------------

// The lane functions are forced inline so that a loop body holding two of
// them interleaves the two polynomial chains instead of calling twice.

template <class L>
[[gnu::always_inline]] inline typename L::R expPs(typename L::R x) {
    using R = typename L::R;
    using I = Rebind<L, std::int32_t>;
    const R log2e = L::set1(1.44269502f);
    // ln 2 = kLn2Hi + kLn2Lo; kLn2Hi has 9 significant bits, so n * kLn2Hi is
    // exact for every |n| <= 151 and x - n * kLn2Hi is exact too.
    const R ln2Hi = L::set1(0.693359375f);
    const R ln2Lo = L::set1(-2.12194440e-4f);
    // Lanes with |x| > 87 (overflow, gradual underflow) take the slow path
    // below; a NaN compares false and simply propagates.
    const bool ordinary = !L::anyOf(L::gt(L::abs(x), L::set1(87.0f)));
    if (!ordinary) {
        // Clamp so that n stays within [-150, 129]; max/min keep a NaN in x.
        x = L::max(L::set1(-104.0f), x);
        x = L::min(L::set1(89.0f), x);
    }
    const R n = L::roundNearest(L::mul(x, log2e));
    R r = L::sub(x, L::mul(n, ln2Hi));
    r = L::sub(r, L::mul(n, ln2Lo));  // |r| <= 0.3466
    // e^r = 1 + r + r^2 * P(r), P a degree-4 minimax fit on [-ln2/2, ln2/2].
    const R r2 = L::mul(r, r);
    R p = L::add(L::mul(L::set1(1.39411137e-3f), r), L::set1(8.36317521e-3f));
    const R q = L::add(L::mul(L::set1(1.66665770e-1f), r), L::set1(5.00000003e-1f));
    p = L::add(L::mul(p, r), L::set1(4.16663752e-2f));
    p = L::add(L::mul(p, r2), q);
    p = L::add(L::mul(p, r2), r);
    p = L::add(p, L::set1(1.0f));
    // Scale by 2^n. For |x| <= 87 the result is a normal number, so adding n
    // to the exponent field of p is exact; the other lanes take two factors
    // of 2^(n/2), so that overflow gives inf and gradual underflow rounds
    // only once.
    const auto ni = L::toI32(n);
    if (ordinary) return L::fromBits(I::add(L::bits(p), I::template shl<23>(ni)));
    const auto n1 = I::template shr<1>(ni);
    const auto n2 = I::sub(ni, n1);
    const auto e1 = I::template shl<23>(I::add(n1, I::set1(127)));
    const auto e2 = I::template shl<23>(I::add(n2, I::set1(127)));
    return L::mul(L::mul(p, L::fromBits(e1)), L::fromBits(e2));
}

// ---- ln x --------------------------------------------------------------

// ln x for lanes holding positive normal finite values, given their bits;
// eAdjust is added to the binary exponent.
template <class L>
[[gnu::always_inline]] inline typename L::R lnNormalPs(__m128i bits, __m128i eAdjust) {
    using R = typename L::R;
    using I = Rebind<L, std::int32_t>;
    // x = 2^e * m with m in [sqrt(2)/2, sqrt(2)).
    const auto t = I::sub(bits, I::set1(0x3F3504F3));
    const auto e = I::add(I::template shr<23>(t), eAdjust);
    const R m = L::fromBits(I::add(I::and_(t, I::set1(0x007FFFFF)), I::set1(0x3F3504F3)));
    // ln m = 2 atanh(s), s = (m - 1) / (m + 1), |s| <= 0.1716:
    //   ln m = 2s + s * z * R(z), z = s^2, R a degree-2 minimax fit.
    const R one = L::set1(1.0f);
    const R s = L::div(L::sub(m, one), L::add(m, one));
    const R z = L::mul(s, s);
    R rz = L::add(L::mul(L::set1(2.95820469e-1f), z), L::set1(3.99887189e-1f));
    rz = L::add(L::mul(rz, z), L::set1(6.66666853e-1f));
    const R ef = L::fromI32(e);
    // ln 2 = 0.693145751953125 (15 bits, so e * hi is exact) + 1.42860677e-6.
    const R lo = L::add(L::mul(L::mul(s, z), rz), L::mul(ef, L::set1(1.42860677e-6f)));
    return L::add(L::mul(ef, L::set1(0.693145751953125f)), L::add(L::add(s, s), lo));
}

template <class L>
[[gnu::always_inline]] inline typename L::R lnPs(typename L::R x) {
    using R = typename L::R;
    using I = Rebind<L, std::int32_t>;
    using U = Rebind<L, std::uint32_t>;
    const auto bits = L::bits(x);
    // Positive normal finite lanes have bits - 2^23 below 0x7F000000 unsigned.
    const auto t = I::sub(bits, I::set1(0x00800000));
    const auto notNormal = I::not_(U::eq(U::min(t, U::set1(0x7EFFFFFF)), t));
    if (!I::anyOf(notNormal)) return lnNormalPs<L>(bits, I::zero());
    // Denormal inputs: scale by 2^23 first and take 23 off the exponent.
    const auto denorm = I::and_(I::gt(I::set1(0x00800000), bits), I::gt(bits, I::zero()));
    const R xs = L::mul(x, L::set1(8388608.0f));
    R y = lnNormalPs<L>(I::blend(bits, L::bits(xs), denorm), I::and_(denorm, I::set1(-23)));
    // Special inputs: +-0 -> -inf, negative -> NaN, +inf and NaN -> x.
    const R zero = L::zero();
    const auto keep = L::or_(L::eq(x, L::set1(__builtin_inff())), L::unord(x, x));
    y = L::blend(y, x, keep);
    y = L::blend(y, L::set1(-__builtin_inff()), L::eq(x, zero));
    y = L::blend(y, L::set1(__builtin_nanf("")), L::lt(x, zero));
    return y;
}

// ---- arctan x ----------------------------------------------------------

template <class L>
[[gnu::always_inline]] inline typename L::R atanPs(typename L::R x) {
    using R = typename L::R;
    const R sign = L::and_(x, L::set1(-0.0f));
    const R a = L::abs(x);
    // a > tan(3pi/8): atan a = pi/2 + atan(-1/a)
    // a > tan(pi/8):  atan a = pi/4 + atan((a - 1) / (a + 1))
    // otherwise:      atan a = atan(a)
    const R one = L::set1(1.0f);
    const auto big = L::gt(a, L::set1(2.41421366f));
    const auto mid = L::andnot(big, L::gt(a, L::set1(0.414213568f)));
    const R num = L::blend(L::sub(a, L::and_(mid, one)), L::set1(-1.0f), big);
    const R den = L::blend(L::add(one, L::and_(mid, a)), a, big);
    const R t = L::div(num, den);
    // pi/2 and pi/4, each as a single plus a small correction.
    const R baseHi = L::or_(L::and_(big, L::set1(1.57079637f)), L::and_(mid, L::set1(0.785398185f)));
    const R baseLo = L::or_(L::and_(big, L::set1(-4.37113883e-8f)), L::and_(mid, L::set1(-2.18556941e-8f)));
    // atan t = t + t * z * Q(z), z = t^2 <= 0.1716, Q a degree-4 minimax fit.
    const R z = L::mul(t, t);
    const R z2 = L::mul(z, z);
    const R q01 = L::add(L::mul(L::set1(1.99995595e-1f), z), L::set1(-3.33333319e-1f));
    const R q23 = L::add(L::mul(L::set1(1.07488575e-1f), z), L::set1(-1.42645070e-1f));
    R q = L::add(L::mul(L::set1(-6.46683346e-2f), z2), q23);
    q = L::add(L::mul(q, z2), q01);
    const R small = L::add(L::mul(L::mul(t, z), q), baseLo);
    const R y = L::add(baseHi, L::add(t, small));
    return L::xor_(y, sign);
}

// ---- Arrays ------------------------------------------------------------

struct ExpOp {
    template <class L>
    typename L::R apply(typename L::R x) const { return expPs<L>(x); }
};
struct LnOp {
    template <class L>
    typename L::R apply(typename L::R x) const { return lnPs<L>(x); }
};
struct AtanOp {
    template <class L>
    typename L::R apply(typename L::R x) const { return atanPs<L>(x); }
};

// The single-precision kernels of the exp, ln and arctan operations, as
// kernel policies of the unary forms; s and d may be the same array.
using Exp32f = form::Unary<float, ExpOp>;
using Ln32f = form::Unary<float, LnOp>;
using Atan32f = form::Unary<float, AtanOp>;

// The same kernels on arrays: d[i] = f(s[i]) for i < len.
inline void ownsExp_32f_A21(const float* s, float* d, int len) { form::map(form::Vec<float>{s}, d, len, ExpOp{}); }
inline void ownsLn_32f_A21(const float* s, float* d, int len) { form::map(form::Vec<float>{s}, d, len, LnOp{}); }
inline void ownsArctan_32f_A21(const float* s, float* d, int len) { form::map(form::Vec<float>{s}, d, len, AtanOp{}); }

}  // namespace zvp::ZVP_LEVEL::mathpoly

// Lane kernels of the complex helpers: the parts of complex vectors as
// lanes, the two-argument arctangent, and the magnitude of single-precision
// parts. Everything is lane-wise (a lane's result depends on its own
// operands only), so the vector body and the scalar tail agree bit for bit.
#pragma once

#include <cstdint>

#include "lane.h"

namespace zvp::ZVP_LEVEL::cplx {

// ---- Sources --------------------------------------------------------------

// A complex vector of T (interleaved parts): the real and imaginary parts of
// elements i .. i + L::N - 1 as two lanes of L (full width or one element).
template <class T>
struct Interleaved {
    const T* p;
    template <class L>
    void get(std::ptrdiff_t i, typename L::R& re, typename L::R& im) const {
        if constexpr (L::N == 1) {
            re = L::load(p + 2 * i);
            im = L::load(p + 2 * i + 1);
        } else {
            L::deinterleave(p + 2 * i, re, im);
        }
    }
};

// Separate real and imaginary vectors.
template <class T>
struct Split {
    const T* re;
    const T* im;
    template <class L>
    void get(std::ptrdiff_t i, typename L::R& r, typename L::R& m) const {
        r = L::load(re + i);
        m = L::load(im + i);
    }
};

// 16-bit parts, as 32-bit integer lanes I (N elements).
struct Interleaved16 {
    const std::int16_t* p;
    template <class I>
    void get(std::ptrdiff_t i, __m128i& re, __m128i& im) const {
        const auto v = Lanes<std::int16_t, 2 * I::N>::load(p + 2 * i);
        re = I::template shr<16>(I::template shl<16>(v));
        im = I::template shr<16>(v);
    }
};
struct Split16 {
    const std::int16_t* re;
    const std::int16_t* im;
    template <class I>
    void get(std::ptrdiff_t i, __m128i& r, __m128i& m) const {
        using H = Lanes<std::int16_t, I::N>;
        r = H::widenLo(H::load(re + i));
        m = H::widenLo(H::load(im + i));
    }
};

// re^2 + im^2 of 16-bit parts, exactly, as doubles (D: the double lanes of
// the same count, at most two).
template <class D, class I>
[[gnu::always_inline]] inline typename D::R squaresOf16(__m128i re, __m128i im) {
    // At most 2^31: the one sum that wraps (both parts -32768) reads negative
    // and gets 2^32 back.
    const auto r = I::add(I::mullo(re, re), I::mullo(im, im));
    const auto d = D::fromI32(r);
    return D::add(d, D::and_(D::lt(d, D::zero()), D::set1(4294967296.0)));
}

// ---- atan2 -----------------------------------------------------------------

// atan2(y, x) on single lanes, in [-pi, pi], with the signed zeros,
// infinities and NaNs of the C function. The reduction: a = min(|x|, |y|),
// b = max(|x|, |y|), atan(a / b) in [0, pi/4] -- taken as pi/4 +
// atan((a - b) / (a + b)) above tan(pi/8), so one division serves -- then
// pi/2 - r where |y| > |x|, pi - r where x is negative (its sign bit), and
// the sign of y. The polynomial is the minimax fit of atan t = t + t z Q(z),
// z = t^2 <= tan(pi/8)^2, whose relative error is below 2^-21.
template <class L>
[[gnu::always_inline]] inline typename L::R atan2Ps(typename L::R y, typename L::R x) {
    using R = typename L::R;
    using I = Rebind<L, std::int32_t>;
    const R ax = L::abs(x), ay = L::abs(y);
    const auto swap = L::gt(ay, ax);
    R a = L::min(ax, ay), b = L::max(ax, ay);
    const auto bothInf = L::eq(a, L::set1(__builtin_inff()));
    // Both scaled by a power of two that keeps b within 2^+-100, so that
    // neither the threshold product nor a + b leaves the normal range (a
    // denormal b would blur the branch, a + b could overflow).
    const auto tiny = L::lt(b, L::set1(0x1p-100f));
    const auto huge = L::gt(b, L::set1(0x1p100f));
    const R scale = L::blend(L::blend(L::set1(1.0f), L::set1(0x1p100f), tiny), L::set1(0x1p-100f), huge);
    a = L::mul(a, scale);
    b = L::mul(b, scale);
    const auto mid = L::or_(L::gt(a, L::mul(L::set1(0.414213562f), b)), bothInf);
    const R num = L::blend(a, L::sub(a, b), mid);
    const R den = L::blend(b, L::add(a, b), mid);
    // 0/0 (both parts zero) and inf/inf give t = 0.
    const R t = L::andnot(L::or_(L::eq(b, L::zero()), bothInf), L::div(num, den));
    const R z = L::mul(t, t);
    const R z2 = L::mul(z, z);
    const R q01 = L::add(L::mul(L::set1(1.99995595e-1f), z), L::set1(-3.33333319e-1f));
    const R q23 = L::add(L::mul(L::set1(1.07488575e-1f), z), L::set1(-1.42645070e-1f));
    R q = L::add(L::mul(L::set1(-6.46683346e-2f), z2), q23);
    q = L::add(L::mul(q, z2), q01);
    // pi/4, pi/2 and pi each as a single plus a small correction.
    const R small = L::add(L::mul(L::mul(t, z), q), L::and_(mid, L::set1(-2.18556941e-8f)));
    R r = L::add(L::and_(mid, L::set1(0.785398185f)), L::add(t, small));
    r = L::blend(r, L::add(L::sub(L::set1(1.57079637f), r), L::set1(-4.37113883e-8f)), swap);
    const R xNeg = L::fromBits(I::template shr<31>(L::bits(x)));
    r = L::blend(r, L::add(L::sub(L::set1(3.14159274f), r), L::set1(-8.74227766e-8f)), xNeg);
    r = L::xor_(r, L::and_(y, L::set1(-0.0f)));
    return L::blend(r, L::add(x, y), L::unord(x, y));
}

// ---- Magnitude of single parts ---------------------------------------------

// sqrt(re^2 + im^2) for float lanes L of one or four elements. Where the sum
// of squares leaves the range in which single arithmetic keeps its accuracy
// (below 2^-100, or infinite or NaN), the lane takes the double result:
// rounded once from the double square root of the exact-ish double sum, +inf
// where a part is infinite.
// All ones in the lanes whose sum of squares s is outside [2^-100, inf) or
// NaN: the bits of s less those of 2^-100, unsigned, reach the distance to
// +inf (the signed compare of the value biased by 2^31).
template <class L>
[[gnu::always_inline]] inline __m128i outOfRange(typename L::R s) {
    using I = Rebind<L, std::int32_t>;
    const auto v = I::add(L::bits(s), I::set1(std::int32_t(0x80000000u - 0x0D800000u)));
    return I::gt(v, I::set1(std::int32_t(0x7F800000u - 0x0D800000u + 0x80000000u - 1u)));
}

template <class L>
[[gnu::always_inline]] inline typename L::R magnitudePs(typename L::R re, typename L::R im) {
    const auto s = L::add(L::mul(re, re), L::mul(im, im));
    const auto m = L::sqrt(s);
    const auto bad = L::fromBits(outOfRange<L>(s));
    if (!L::anyOf(bad)) return m;
    auto viaDouble = [](__m128 r, __m128 i) {
        using D = Full<double>;
        const auto rd = D::fromF32(r), id = D::fromF32(i);
        return D::toF32(D::sqrt(D::add(D::mul(rd, rd), D::mul(id, id))));
    };
    typename L::R w;
    if constexpr (L::N == 1) {
        w = viaDouble(re, im);
    } else {
        static_assert(L::N == 4);
        w = L::joinLo(viaDouble(re, im), viaDouble(L::hiHalf(re), L::hiHalf(im)));
    }
    const auto inf = L::set1(__builtin_inff());
    w = L::blend(w, inf, L::or_(L::eq(L::abs(re), inf), L::eq(L::abs(im), inf)));
    return L::blend(m, w, bad);
}

}  // namespace zvp::ZVP_LEVEL::cplx

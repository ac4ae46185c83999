// Abs, Sqr, Sqrt, Cubrt, Exp, Ln, 10Log10, SumLn and Arctan
// through the exported functions: warnings, integer results against exact oracles (integer search for
// roots, long double for the transcendental functions, skipping the rare
// values the long double oracle cannot decide), float results within stated
// ulp bounds of long double. Check order, lengths, alignment and in place
// against out of place are the shape table's (tests/shapes).
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "sentinel.h"
#include "wide_int.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;

// ---- Helpers -----------------------------------------------------------------

template <class T>
std::vector<T> randomInts(int n, std::uint32_t seed, std::int64_t lo, std::int64_t hi) {
    std::mt19937_64 rng(seed);
    std::uniform_int_distribution<std::int64_t> dist(lo, hi);
    std::vector<T> v(static_cast<std::size_t>(n));
    for (auto& x : v) x = T(dist(rng));
    return v;
}

template <class F>
std::vector<F> randomReals(int n, std::uint32_t seed, double lo, double hi) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> dist(lo, hi);
    std::vector<F> v(static_cast<std::size_t>(n));
    for (auto& x : v) x = F(dist(rng));
    return v;
}

// The ulp of the float (or double) nearest to ref, gradual underflow included.
template <class F>
long double ulpAt(long double ref) {
    constexpr int digits = std::numeric_limits<F>::digits;
    constexpr int minExp = std::numeric_limits<F>::min_exponent;  // 2^(minExp-1) = smallest normal
    int e = 0;
    std::frexp(std::fabs(ref), &e);
    if (e < minExp) e = minExp;
    return std::ldexp(1.0L, e - digits);
}

template <class F>
long double ulpError(F got, long double ref) {
    if (std::isnan(ref)) return std::isnan(got) ? 0.0L : 1e30L;
    const F rounded = F(ref);
    if (std::isinf(rounded)) return got == rounded ? 0.0L : 1e30L;
    return std::fabs(static_cast<long double>(got) - ref) / ulpAt<F>(ref);
}

// Rounds v to the nearest integer, ties to even, clamped to [lo, hi];
// ambiguous is set when v lies within tol of a half-integer, where an oracle
// with relative error tol cannot decide.
long double roundClamp(long double v, long double lo, long double hi, long double tol, bool* ambiguous) {
    if (ambiguous) {
        const long double f = v - std::floor(v);
        *ambiguous = std::fabs(f - 0.5L) <= tol * std::fabs(v) + 1e-300L && v > lo - 1 && v < hi + 1;
    }
    long double r = std::nearbyint(v);
    if (r < lo) r = lo;
    if (r > hi) r = hi;
    return r;
}

using zvp::test::Wide;
int cmp(const Wide& a, const Wide& b) { return compare(a, b); }

// round(sqrt(x) * 2^-sf), ties to even, saturated to maxOut, by integer
// search. Compares x * 4^-sf with (m + 1/2)^2 exactly, scaled to integers:
//   sf >= 1: x           vs (2m+1)^2 * 4^(sf-1)
//   sf <= 0: x * 4^(1-sf) vs (2m+1)^2
// Valid while the compared values fit 256 bits (the tests keep them so).
std::uint64_t refSqrtScaled(std::uint64_t x, int sf, std::uint64_t maxOut) {
    auto sideOf = [&](std::uint64_t m) {  // sign of value - (m + 1/2)
        const Wide odd2 = Wide::ofU(2 * m + 1) * Wide::ofU(2 * m + 1);
        if (sf >= 1) return cmp(Wide::ofU(x), odd2.shl(2 * (sf - 1)));
        return cmp(Wide::ofU(x).shl(2 * (1 - sf)), odd2);
    };
    // The largest m with value >= m - 1/2, by bisection on [0, bound]; the
    // bound (a long double estimate plus margin) only limits the search.
    const long double est = std::ldexp(std::sqrt(static_cast<long double>(x)), -sf) + 2;
    std::uint64_t lo = 0, hi = est < static_cast<long double>(maxOut) ? std::uint64_t(est) : maxOut;
    while (lo < hi) {
        const std::uint64_t mid = lo + (hi - lo + 1) / 2;
        if (sideOf(mid - 1) >= 0) lo = mid;  // value >= mid - 1/2
        else hi = mid - 1;
    }
    // A tie at lo - 1/2 belongs to the even neighbour.
    if (lo > 0 && sideOf(lo - 1) == 0 && (lo & 1)) --lo;
    return lo;
}

// round(cbrt(x) * 2^-sf) for |x| < 2^31, ties to even, saturated to 16 bits,
// by comparing |x| * 8^-sf with (m + 1/2)^3 exactly (scaled to integers:
// |x| vs (2m+1)^3 * 2^(3sf-3), or |x| * 8^(1-sf) vs (2m+1)^3).
std::int64_t refCbrtScaled(std::int64_t x, int sf) {
    const bool neg = x < 0;
    const std::uint64_t a = neg ? std::uint64_t(-x) : std::uint64_t(x);
    const std::uint64_t bound = neg ? 32768 : 32767;
    auto sideOf = [&](std::uint64_t m) {
        const std::uint64_t o = 2 * m + 1;
        const Wide odd3 = Wide::ofU(o * o * o);  // (2m+1)^3 < 2^54
        if (sf >= 1) return cmp(Wide::ofU(a), odd3.shl(3 * sf - 3));
        return cmp(Wide::ofU(a).shl(3 * (1 - sf)), odd3);
    };
    std::uint64_t lo = 0, hi = bound;
    while (lo < hi) {
        const std::uint64_t mid = lo + (hi - lo + 1) / 2;
        if (sideOf(mid - 1) >= 0) lo = mid;
        else hi = mid - 1;
    }
    if (lo > 0 && sideOf(lo - 1) == 0 && (lo & 1)) --lo;
    return neg ? -std::int64_t(lo) : std::int64_t(lo);
}

// A unary float form on 67 random values in [lo, hi] (mapped by `t`) within
// `ulps` of the long double function.
template <class S, class D>
void within(const char* name, ZvpStatus (*f)(const S*, D*, int), long double (*ref)(long double), double lo, double hi,
            long double ulps, double (*t)(double) = nullptr) {
    auto x = randomReals<S>(67, 67, lo, hi);
    if (t) for (auto& v : x) v = S(t(v));
    std::vector<D> d(67);
    ASSERT_EQ(f(x.data(), d.data(), 67), zvpStsNoErr) << name;
    for (int i = 0; i < 67; ++i) ASSERT_LE(ulpError(d[i], ref(x[i])), ulps) << name << " at " << x[i];
}

// Sqrt correctly rounded; Cubrt within one ulp; the single-precision
// kernels within 4 ulps (the 2^-21 relative bound), double forms within 1.
TEST(Floats, UnaryFormsWithinTheirBounds) {
    within("Sqrt_32f", zvpsSqrt_32f, ::sqrtl, 0, 1e6, 0.5L);
    within("Sqrt_64f", zvpsSqrt_64f, ::sqrtl, 0, 1e200, 0.5L);
    within("Cubrt_32f", zvpsCubrt_32f, ::cbrtl, -1e6, 1e6, 1.0L);
    within("Exp_32f", zvpsExp_32f, ::expl, -110, 95, 4.0L);
    within("Exp_32f64f", zvpsExp_32f64f, ::expl, -110, 95, 1.0L);
    within("Exp_64f", zvpsExp_64f, ::expl, -781, 674, 1.0L);
    within("Ln_32f", zvpsLn_32f, ::logl, 1e-3, 1e4, 4.0L);
    within("Ln_64f", zvpsLn_64f, ::logl, 1e-3, 1e4, 1.0L, [](double v) { return std::pow(v, 7.3); });
    within("Ln_64f32f", zvpsLn_64f32f, ::logl, 1e-3, 1e4, 0.5L + 1e-6L, [](double v) { return std::pow(v, 7.3); });
    within("Arctan_32f", zvpsArctan_32f, ::atanl, -30, 30, 4.0L);
    within("Arctan_64f", zvpsArctan_64f, ::atanl, -30, 30, 1.0L, [](double v) { return v * v * v; });
}

// Special values, each in a vector of five so the vector body and the tail
// both meet it: exact results (zeros with their sign, infinities, NaN), then
// values near overflow, underflow and the polynomials' range ends within the
// form's bound.
using Fn32 = ZvpStatus (*)(const Zvp32f*, Zvp32f*, int);
Zvp32f atFive(Fn32 f, Zvp32f x) {
    Zvp32f in[5] = {x, x, x, x, x}, out[5];
    EXPECT_EQ(f(in, out, 5), zvpStsNoErr);
    for (int i = 1; i < 5; ++i) EXPECT_EQ(std::memcmp(&out[i], &out[0], 4), 0) << x;
    return out[0];
}

TEST(Floats, SpecialValues) {
    const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    const struct { Fn32 f; float x, want; } exact[] = {
        {zvpsCubrt_32f, -0.0f, -0.0f}, {zvpsCubrt_32f, 27, 3}, {zvpsCubrt_32f, -inf, -inf},
        {zvpsExp_32f, 0, 1}, {zvpsExp_32f, -0.0f, 1}, {zvpsExp_32f, inf, inf}, {zvpsExp_32f, -inf, 0},
        {zvpsExp_32f, nan, nan}, {zvpsExp_32f, 88.7229f, inf}, {zvpsExp_32f, -200, 0}, {zvpsExp_32f, 1e-30f, 1},
        {zvpsLn_32f, 1, 0}, {zvpsLn_32f, 0, -inf}, {zvpsLn_32f, -0.0f, -inf}, {zvpsLn_32f, -1, nan},
        {zvpsLn_32f, -inf, nan}, {zvpsLn_32f, inf, inf}, {zvpsLn_32f, nan, nan},
        {zvpsArctan_32f, 0, 0}, {zvpsArctan_32f, -0.0f, -0.0f}, {zvpsArctan_32f, inf, 1.57079637f},
        {zvpsArctan_32f, -inf, -1.57079637f}, {zvpsArctan_32f, nan, nan}};
    for (const auto& c : exact) {
        const Zvp32f r = atFive(c.f, c.x);
        EXPECT_TRUE(std::isnan(c.want) ? std::isnan(r) : r == c.want && std::signbit(r) == std::signbit(c.want))
            << c.x << " gives " << r;
    }
    const struct { Fn32 f; long double (*ref)(long double); long double ulps; std::vector<float> x; } near[] = {
        {zvpsCubrt_32f, ::cbrtl, 1, {1e-40f}},
        {zvpsExp_32f, ::expl, 4, {88.72283f, -87.33655f, -100.0f, -103.9f, -104.0f}},
        {zvpsLn_32f, ::logl, 4, {1e-45f, 1.17549435e-38f, 3e-39f, 3.4e38f, 0.99999994f, 1.0000001f}},
        {zvpsArctan_32f, ::atanl, 4, {1e-40f, 0.41421356f, 0.41421357f, 2.4142134f, 2.4142137f, 1.0f, -1e30f}}};
    for (const auto& c : near)
        for (float x : c.x) EXPECT_LE(ulpError(atFive(c.f, x), c.ref(x)), c.ulps) << x;
}

// ---- Abs -------------------------------------------------------------------------

// Values are the shape table's oracle; NaN loses its sign too.
TEST(Abs, NanAndInfinityLoseTheirSign) {
    const Zvp32f nan = std::numeric_limits<float>::quiet_NaN();
    Zvp32f v[2] = {-nan, -std::numeric_limits<float>::infinity()};
    ASSERT_EQ(zvpsAbs_32f_I(v, 2), zvpStsNoErr);
    EXPECT_TRUE(std::isnan(v[0]));
    EXPECT_FALSE(std::signbit(v[0]));
    EXPECT_EQ(v[1], std::numeric_limits<float>::infinity());
}

// ---- Sqr -------------------------------------------------------------------------

// Complex float squares: parts within 2 ulps of |z|^2 (a*a - b*b takes
// three roundings and may cancel). Real squares are the shape table's oracle.
TEST(Sqr, ComplexFloatsAgainstLongDouble) {
    const int n = 67;
    const auto x = randomReals<Zvp32f>(2 * n, n, -1e5, 1e5);
    const auto y = randomReals<Zvp64f>(2 * n, n + 7, -1e100, 1e100);
    GuardedBuffer d3(n * 8, 12), d4(n * 16, 8);
    ASSERT_EQ(zvpsSqr_32fc(reinterpret_cast<const Zvp32fc*>(x.data()), d3.as<Zvp32fc>(), n), zvpStsNoErr);
    ASSERT_EQ(zvpsSqr_64fc(reinterpret_cast<const Zvp64fc*>(y.data()), d4.as<Zvp64fc>(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) {
        const long double a = x[2 * i], b = x[2 * i + 1], c = y[2 * i], e = y[2 * i + 1];
        const long double m32 = ulpAt<float>(a * a + b * b), m64 = ulpAt<double>(c * c + e * e);
        ASSERT_LE(std::fabs(d3.as<Zvp32fc>()[i].re - (a * a - b * b)), 2 * m32);
        ASSERT_LE(std::fabs(d3.as<Zvp32fc>()[i].im - 2 * a * b), 2 * m32);
        ASSERT_LE(std::fabs(d4.as<Zvp64fc>()[i].re - (c * c - e * e)), 2 * m64);
        ASSERT_LE(std::fabs(d4.as<Zvp64fc>()[i].im - 2 * c * e), 2 * m64);
    }
}

// ---- Sqrt ------------------------------------------------------------------------

TEST(Sqrt, FloatsWarnOnNegatives) {
    const int n = 67;
    auto x = randomReals<Zvp32f>(n, n, 0, 1e6);
    auto y = randomReals<Zvp64f>(n, n, 0, 1e200);
    std::vector<Zvp32f> d1(n);
    ASSERT_EQ(zvpsSqrt_32f(x.data(), d1.data(), n), zvpStsNoErr);
    // One negative element anywhere: warning, NaN there, others written.
    const int k = n - 1 - n / 3;
    x[k] = -4.0f;
    y[k] = -1e-300;
    GuardedBuffer e1(n * 4, 4), e2(n * 8, 8);
    ASSERT_EQ(zvpsSqrt_32f(x.data(), e1.as<Zvp32f>(), n), zvpStsSqrtNegArg) << n;
    ASSERT_EQ(zvpsSqrt_64f(y.data(), e2.as<Zvp64f>(), n), zvpStsSqrtNegArg) << n;
    for (int i = 0; i < n; ++i) {
        ASSERT_EQ(std::isnan(e1.as<Zvp32f>()[i]), i == k);
        ASSERT_EQ(std::isnan(e2.as<Zvp64f>()[i]), i == k);
        if (i != k) {
            ASSERT_EQ(e1.as<Zvp32f>()[i], d1[i]);
        }
    }
    // -0 and NaN are not negative.
    Zvp32f z[3] = {-0.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()};
    ASSERT_EQ(zvpsSqrt_32f_I(z, 3), zvpStsNoErr);
    EXPECT_TRUE(z[0] == 0.0f && std::signbit(z[0]));
    EXPECT_TRUE(std::isnan(z[1]));
    EXPECT_EQ(z[2], std::numeric_limits<float>::infinity());
}

// Complex roots within 2 ulps (of the root's modulus) of the long double
// principal root: the double formula takes five roundings at 2^-53 each, and
// the 32fc result one more rounding to single.
TEST(Sqrt, ComplexFloatsPrincipalRoot) {
    std::vector<Zvp64f> v = randomReals<Zvp64f>(2 * 70, 3, -1e3, 1e3);
    const double inf = std::numeric_limits<double>::infinity();
    const double special[] = {0, 0, -0.0, 0, 0, -0.0, -4, 0, -4, -0.0, 3, 4, 1e300, 1e300, 1e-300, -1e-310,
                              -1e300, 1e-300, inf, 1, -inf, 1, 2, inf};
    std::memcpy(v.data(), special, sizeof special);
    const int n = int(v.size() / 2);
    std::vector<Zvp32f> vf(v.size());
    for (std::size_t i = 0; i < v.size(); ++i) vf[i] = Zvp32f(i < 24 && std::fabs(v[i]) > 1e30 ? v[i] / 1e270 : v[i]);
    const int len = n;
    GuardedBuffer d1(len * 8, 8), d2(len * 16, 8);
    ASSERT_EQ(zvpsSqrt_32fc(reinterpret_cast<const Zvp32fc*>(vf.data()), d1.as<Zvp32fc>(), len), zvpStsNoErr);
    ASSERT_EQ(zvpsSqrt_64fc(reinterpret_cast<const Zvp64fc*>(v.data()), d2.as<Zvp64fc>(), len), zvpStsNoErr);
    for (int i = 0; i < len; ++i) {
        const std::complex<long double> r64 = std::sqrt(std::complex<long double>(v[2 * i], v[2 * i + 1]));
        const std::complex<long double> r32 = std::sqrt(std::complex<long double>(vf[2 * i], vf[2 * i + 1]));
        const Zvp64fc g64 = d2.as<Zvp64fc>()[i];
        const Zvp32fc g32 = d1.as<Zvp32fc>()[i];
        if (!std::isfinite(std::abs(r64))) {
            EXPECT_EQ(g64.re, double(r64.real())) << i;
            EXPECT_EQ(g64.im, double(r64.imag())) << i;
            continue;
        }
        const long double t64 = 2 * ulpAt<double>(std::abs(r64)), t32 = 2 * ulpAt<float>(std::abs(r32));
        EXPECT_LE(std::fabs(g64.re - r64.real()), t64) << i;
        EXPECT_LE(std::fabs(g64.im - r64.imag()), t64) << i;
        EXPECT_LE(std::fabs(g32.re - r32.real()), t32) << i;
        EXPECT_LE(std::fabs(g32.im - r32.imag()), t32) << i;
        // Principal branch signs, zeros included.
        EXPECT_FALSE(std::signbit(g64.re)) << i;
        EXPECT_EQ(std::signbit(g64.im), std::signbit(v[2 * i + 1])) << i;
        EXPECT_EQ(std::signbit(g32.im), std::signbit(vf[2 * i + 1])) << i;
    }
}

template <class S, class D>
void checkSqrtScaled(ZvpStatus (*f)(const S*, D*, int, int), const std::vector<S>& src, const std::vector<int>& sfs) {
    const int n = int(src.size());
    bool anyNeg = false;
    for (S x : src) anyNeg |= x < 0;
    std::vector<D> dst(std::size_t(n) + 1);
    for (int sf : sfs) {
        ASSERT_EQ(f(src.data(), dst.data() + 1, n, sf), anyNeg ? zvpStsSqrtNegArg : zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            const D want = src[i] < 0 ? D(0)
                                      : D(refSqrtScaled(std::uint64_t(src[i]), sf, std::numeric_limits<D>::max()));
            ASSERT_EQ(dst[std::size_t(i) + 1], want) << "x=" << src[i] << " sf=" << sf;
        }
    }
}

TEST(Sqrt, ScaledIntegersAgainstIntegerSearch) {
    std::vector<Zvp16s> all16s(65536);
    std::vector<Zvp16u> all16u(65536);
    std::vector<Zvp8u> all8u(256);
    for (int i = 0; i < 65536; ++i) all16s[i] = Zvp16s(i - 32768), all16u[i] = Zvp16u(i);
    for (int i = 0; i < 256; ++i) all8u[i] = Zvp8u(i);
    const std::vector<int> sfs = {-20, -9, -8, -7, -5, -1, 0, 1, 2, 3, 5, 8, 9, 16, 40, 70};
    checkSqrtScaled(zvpsSqrt_8u_Sfs, all8u, sfs);
    checkSqrtScaled(zvpsSqrt_16u_Sfs, all16u, sfs);
    checkSqrtScaled(zvpsSqrt_16s_Sfs, all16s, sfs);
    // Perfect squares and their neighbours, where ties and near-ties live.
    std::vector<Zvp32s> s32;
    std::vector<Zvp64s> s64;
    for (std::int64_t r : {1LL, 2LL, 3LL, 5LL, 46340LL, 46341LL, 65535LL, 3037000499LL, 1LL << 20, 3LL << 18}) {
        for (std::int64_t dlt = -2; dlt <= 2; ++dlt) {
            const std::int64_t x = r * r + dlt;
            if (x >= 0 && x <= INT32_MAX) s32.push_back(Zvp32s(x));
            if (x >= 0) s64.push_back(x);
        }
    }
    for (auto x : randomInts<Zvp32s>(300, 11, 0, INT32_MAX)) s32.push_back(x);
    for (auto x : randomInts<Zvp64s>(300, 12, 0, INT64_MAX)) s64.push_back(x);
    s32.push_back(INT32_MAX);
    s64.push_back(INT64_MAX);
    const std::vector<int> wide = {-30, -17, -16, -15, -1, 0, 1, 2, 4, 15, 16, 17, 31, 32, 33, 64};
    checkSqrtScaled(zvpsSqrt_32s16s_Sfs, s32, wide);
    checkSqrtScaled(zvpsSqrt_64s16s_Sfs, s64, wide);
    checkSqrtScaled(zvpsSqrt_64s_Sfs, s64, wide);
    // Negative elements: warning 3 and 0, the rest computed.
    std::vector<Zvp64s> neg = {4, -1, 9, INT64_MIN};
    checkSqrtScaled(zvpsSqrt_64s_Sfs, neg, {0, 1, -1});
    checkSqrtScaled(zvpsSqrt_32s16s_Sfs, std::vector<Zvp32s>{-7, 100}, {0});
    checkSqrtScaled(zvpsSqrt_64s16s_Sfs, std::vector<Zvp64s>{-7, 100}, {0});
}

// Complex integer roots: each part of the double-precision root, scaled and
// rounded to nearest; checked against long double, skipping parts the
// oracle puts within 1e-12 of a half-integer.
TEST(Sqrt, ScaledComplexIntegers) {
    auto v = randomInts<Zvp16s>(2 * 500, 21, -32768, 32767);
    const Zvp16s edge[] = {3, 4, -3, 4, -3, -4, 0, 0, -32768, 0, 0, -32768, 5, -12, 16, 0};
    std::memcpy(v.data(), edge, sizeof edge);
    const int n = int(v.size() / 2);
    const auto* s = reinterpret_cast<const Zvp16sc*>(v.data());
    std::vector<Zvp16sc> d(static_cast<std::size_t>(n));
    int skipped = 0;
    for (int sf : {-10, -8, -1, 0, 1, 2, 8}) {
        ASSERT_EQ(zvpsSqrt_16sc_Sfs(s, d.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            const std::complex<long double> r = std::sqrt(std::complex<long double>(s[i].re, s[i].im));
            bool amb1, amb2;
            const long double re = roundClamp(std::ldexp(r.real(), -sf), -32768, 32767, 1e-12L, &amb1);
            const long double im = roundClamp(std::ldexp(r.imag(), -sf), -32768, 32767, 1e-12L, &amb2);
            // Exact roots (3+4i -> 2+i) are exact in both and round to even.
            if (!amb1 || r.real() == std::floor(r.real())) {
                EXPECT_EQ(d[i].re, re) << i << " sf " << sf;
            } else {
                ++skipped;
            }
            if (!amb2 || r.imag() == std::floor(r.imag())) {
                EXPECT_EQ(d[i].im, im) << i << " sf " << sf;
            } else {
                ++skipped;
            }
        }
    }
    EXPECT_LT(skipped, 4);
    // sqrt(-4) = 2i; sqrt(3 + 4i) = 2 + i; with sf 1: (1, 0.5 -> 0).
    const Zvp16sc z[2] = {{-4, 0}, {3, 4}};
    Zvp16sc r[2];
    ASSERT_EQ(zvpsSqrt_16sc_Sfs(z, r, 2, 1), zvpStsNoErr);
    EXPECT_TRUE(r[0].re == 0 && r[0].im == 1 && r[1].re == 1 && r[1].im == 0);
}

// ---- Cubrt -----------------------------------------------------------------------

TEST(Cubrt, ScaledIntegersExact) {
    std::vector<Zvp32s> s;
    for (std::int64_t c : {1, 2, 3, 4, 7, 8, 100, 1290}) {
        for (int dlt = -1; dlt <= 1; ++dlt) {
            const std::int64_t x = c * c * c + dlt;
            if (x <= INT32_MAX) s.push_back(Zvp32s(x)), s.push_back(Zvp32s(-x));
        }
    }
    for (auto x : randomInts<Zvp32s>(400, 9, INT32_MIN + 1, INT32_MAX)) s.push_back(x);
    s.push_back(INT32_MIN);
    s.push_back(INT32_MAX);
    s.push_back(0);
    std::vector<Zvp16s> d(s.size());
    for (int sf = -16; sf <= 12; ++sf) {
        ASSERT_EQ(zvpsCubrt_32s16s_Sfs(s.data(), d.data(), int(s.size()), sf), zvpStsNoErr);
        for (std::size_t i = 0; i < s.size(); ++i) ASSERT_EQ(d[i], refCbrtScaled(s[i], sf)) << s[i] << " sf " << sf;
    }
}

// ---- Exp -------------------------------------------------------------------------

// f(x) * 2^-sf rounded to nearest even and saturated, against the long
// double value(x, sf) (NaN: the element gives the destination's minimum).
// Long double has 64 significant bits, so its values are trusted except
// within 2^-56 (relative) of a half-integer; values too large for it to
// resolve (above 2^50) are checked to that precision only. At `exactAt`
// the value is exact (e^0, ln 1) and never skipped.
template <class S, class D, class V>
void checkScaled(ZvpStatus (*f)(const S*, D*, int, int), const std::vector<S>& src, const std::vector<int>& sfs,
                 S exactAt, V value) {
    const int n = int(src.size());
    std::vector<D> dst(static_cast<std::size_t>(n));
    const long double mx = static_cast<long double>(std::numeric_limits<D>::max());
    int skipped = 0;
    for (int sf : sfs) {
        ASSERT_GE(f(src.data(), dst.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            const long double v = value(static_cast<long double>(src[i]), sf);
            if (std::isnan(v)) {
                ASSERT_EQ(dst[i], std::numeric_limits<D>::min()) << "x=" << src[i];
                continue;
            }
            bool amb;
            const long double want = roundClamp(v, 0, mx, 0x1p-56L, &amb);
            if (amb && src[i] != exactAt) {
                if (v < 0x1p50L) ++skipped;
                else ASSERT_LE(std::fabs(static_cast<long double>(dst[i]) - want), v * 0x1p-56L + 1) << src[i];
                continue;
            }
            ASSERT_EQ(static_cast<long double>(dst[i]), want) << "x=" << src[i] << " sf=" << sf;
        }
    }
    EXPECT_LT(skipped, 3);
}
template <class S, class D>
void checkExpScaled(ZvpStatus (*f)(const S*, D*, int, int), const std::vector<S>& src, const std::vector<int>& sfs) {
    checkScaled(f, src, sfs, S(0), [](long double x, int sf) {
        return x == 0 ? std::ldexp(1.0L, -sf) : std::exp(x - sf * 0.693147180559945309417232121458L);
    });
}
template <class S, class D>
void checkLnScaled(ZvpStatus (*f)(const S*, D*, int, int), const std::vector<S>& src, const std::vector<int>& sfs) {
    checkScaled(f, src, sfs, S(1), [](long double x, int sf) { return x <= 0 ? NAN : std::ldexp(std::log(x), -sf); });
}

TEST(Exp, ScaledIntegersCorrectlyRounded) {
    // 16s: every source where some factor gives a non-trivial result.
    std::vector<Zvp16s> s16;
    for (int x = -40; x <= 40; ++x) s16.push_back(Zvp16s(x));
    s16.push_back(-32768);
    s16.push_back(32767);
    std::vector<int> sfs;
    for (int sf = -20; sf <= 60; ++sf) sfs.push_back(sf);
    checkExpScaled(zvpsExp_16s_Sfs, s16, sfs);
    std::vector<Zvp32s> s32 = randomInts<Zvp32s>(200, 31, -60, 100);
    for (Zvp32s x : {0, 1, -1, 21, 22, INT32_MAX, INT32_MIN}) s32.push_back(x);
    checkExpScaled(zvpsExp_32s_Sfs, s32, {-40, -31, -30, -5, -1, 0, 1, 2, 10, 60, 140});
    std::vector<Zvp64s> s64 = randomInts<Zvp64s>(200, 32, -60, 200);
    for (Zvp64s x : std::initializer_list<Zvp64s>{0, 43, 44, Zvp64s(1) << 40, INT64_MAX, INT64_MIN}) s64.push_back(x);
    checkExpScaled(zvpsExp_64s_Sfs, s64, {-63, -62, -20, -1, 0, 1, 2, 50, 280});
    // Exactly representable cases: e^0 * 2^-sf.
    const Zvp16s zero[1] = {0};
    Zvp16s r;
    for (auto [sf, want] : {std::pair{0, 1}, {1, 0}, {-1, 2}, {-14, 16384}, {-15, 32767}, {-100, 32767}, {2, 0}}) {
        ASSERT_EQ(zvpsExp_16s_Sfs(zero, &r, 1, sf), zvpStsNoErr);
        EXPECT_EQ(r, want) << sf;
    }
}

// ---- Ln --------------------------------------------------------------------------

TEST(Ln, Scaled16sLadderAndWarnings) {
    // The ladder's ends, step by step, at scale factor 0.
    const int ends[][3] = {{1, 1, 0},        {2, 4, 1},         {5, 12, 2},        {13, 33, 3},
                           {34, 90, 4},      {91, 244, 5},      {245, 665, 6},     {666, 1808, 7},
                           {1809, 4914, 8},  {4915, 13359, 9},  {13360, 32767, 10}};
    for (const auto& e : ends) {
        const Zvp16s x[2] = {Zvp16s(e[0]), Zvp16s(e[1])};
        Zvp16s r[2];
        ASSERT_EQ(zvpsLn_16s_Sfs(x, r, 2, 0), zvpStsNoErr);
        EXPECT_EQ(r[0], e[2]) << e[0];
        EXPECT_EQ(r[1], e[2]) << e[1];
    }
    // Non-positive elements: -32768, and the first one decides the warning.
    const Zvp16s a[3] = {0, -3, 5};
    GuardedBuffer d(6);
    EXPECT_EQ(zvpsLn_16s_Sfs(a, d.as<Zvp16s>(), 3, 0), zvpStsLnZeroArg);
    EXPECT_EQ(d.as<Zvp16s>()[0], -32768);
    EXPECT_EQ(d.as<Zvp16s>()[1], -32768);
    EXPECT_EQ(d.as<Zvp16s>()[2], 2);
    const Zvp16s b[2] = {-3, 0};
    EXPECT_EQ(zvpsLn_16s_Sfs(b, d.as<Zvp16s>(), 2, 0), zvpStsLnNegArg);
    EXPECT_EQ(zvpsLn_16s_Sfs(b, d.as<Zvp16s>(), 2, -5), zvpStsLnNegArg);
    Zvp16s c[4] = {7, 100, -32768, 0};
    EXPECT_EQ(zvpsLn_16s_ISfs(c, 4, -3), zvpStsLnNegArg);
    EXPECT_EQ(c[2], -32768);
    EXPECT_EQ(c[3], -32768);
    // Equal pointers run the in-place form: a null pair gives -8 as in place.
    EXPECT_EQ(zvpsLn_16s_Sfs(nullptr, nullptr, 3, 0), zvpStsNullPtrErr);
    Zvp16s e[3] = {1, 0, 20};
    EXPECT_EQ(zvpsLn_16s_Sfs(e, e, 3, -1), zvpStsLnZeroArg);
    EXPECT_EQ(e[0], 0);
    EXPECT_EQ(e[1], -32768);
    EXPECT_EQ(e[2], 6);  // 2 ln 20 = 5.99
}

TEST(Ln, ScaledIntegersCorrectlyRounded) {
    std::vector<Zvp16s> all(65536);
    for (int i = 0; i < 65536; ++i) all[i] = Zvp16s(i - 32768);
    checkLnScaled(zvpsLn_16s_Sfs, all, {-16, -15, -14, -13, -1, 0, 1, 2, 3, 4, 5});
    std::vector<Zvp32s> s32 = randomInts<Zvp32s>(3000, 41, 1, INT32_MAX);
    for (auto x : randomInts<Zvp32s>(1000, 42, 1, 1000)) s32.push_back(x);
    s32.push_back(INT32_MAX);
    s32.push_back(0);
    s32.push_back(-5);
    checkLnScaled(zvpsLn_32s_Sfs, s32, {-27, -26, -20, -10, -1, 0, 1, 3, 5, 9});
    checkLnScaled(zvpsLn_32s16s_Sfs, s32, {-12, -11, -10, -1, 0, 1, 3, 5});
    // Warnings for the 32-bit forms.
    std::vector<Zvp32s> w = {5, -1, 0};
    std::vector<Zvp32s> o(3);
    EXPECT_EQ(zvpsLn_32s_Sfs(w.data(), o.data(), 3, 0), zvpStsLnNegArg);
    EXPECT_EQ(o[1], INT32_MIN);
    std::vector<Zvp16s> o16(3);
    const Zvp32s z[3] = {0, -1, 1};
    EXPECT_EQ(zvpsLn_32s16s_Sfs(z, o16.data(), 3, 0), zvpStsLnZeroArg);
    EXPECT_EQ(o16[0], -32768);
    EXPECT_EQ(o16[2], 0);
}

// 10 log10 x from a single-precision logarithm (relative error below
// 2^-21), the rounding of x to single (2^-24) and the constant 4.3429446
// (2^-24.4): within |v| * 2^-20 + 1/2 of the exact value v, and exact when
// that bound stays clear of every half-integer.
TEST(TenLog10, ScaledAgainstLongDouble) {
    std::vector<Zvp32s> s = randomInts<Zvp32s>(600, 51, 1, INT32_MAX);
    for (auto x : randomInts<Zvp32s>(200, 52, 1, 300)) s.push_back(x);
    s.push_back(1);
    s.push_back(10);
    s.push_back(INT32_MAX);
    s.push_back(0);
    s.push_back(-7);
    const int n = int(s.size());  // several blocks of 256 and a tail
    std::vector<Zvp32s> d(static_cast<std::size_t>(n));
    for (int sf : {-30, -25, -8, -1, 0, 1, 3, 7, 70}) {
        ASSERT_EQ(zvps10Log10_32s_Sfs(s.data(), d.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            if (s[i] <= 0) {
                ASSERT_EQ(d[i], INT32_MIN);
                continue;
            }
            bool amb;
            const long double v = std::ldexp(10 * std::log10(static_cast<long double>(s[i])), -sf);
            const long double want = roundClamp(v, INT32_MIN, INT32_MAX, 0x1p-20L, &amb);
            if (amb || std::fabs(v) * 0x1p-20L > 0.25L) {
                const long double c = std::min<long double>(std::max<long double>(v, INT32_MIN), INT32_MAX);
                ASSERT_LE(std::fabs(d[i] - c), std::fabs(v) * 0x1p-20L + 0.5L) << s[i] << " sf " << sf;
            } else {
                ASSERT_EQ(static_cast<long double>(d[i]), want) << s[i] << " sf " << sf;
            }
        }
    }
}

// ---- SumLn -----------------------------------------------------------------------

// The sum within n * 2^-50 (absolute, plus the output's rounding) of the
// long double sum.
TEST(SumLn, AgainstLongDoubleAndSpecialValues) {
    for (int n : {1, 2, 3, 7, 64, 1023, 1024, 1025, 5000}) {
        const auto x = randomReals<Zvp32f>(n, n, 1e-6, 1e6);
        const auto y = randomReals<Zvp64f>(n, n + 3, 1e-300, 1e300);
        const auto z = randomInts<Zvp16s>(n, n, 1, 32767);
        long double rx = 0, ry = 0, rz = 0;
        for (int i = 0; i < n; ++i) {
            rx += std::log(static_cast<long double>(x[i]));
            ry += std::log(static_cast<long double>(y[i]));
            rz += std::log(static_cast<long double>(z[i]));
        }
        Zvp32f s32, s16;
        Zvp64f s64, s3264;
        ASSERT_EQ(zvpsSumLn_32f(x.data(), n, &s32), zvpStsNoErr);
        ASSERT_EQ(zvpsSumLn_32f64f(x.data(), n, &s3264), zvpStsNoErr);
        ASSERT_EQ(zvpsSumLn_64f(y.data(), n, &s64), zvpStsNoErr);
        ASSERT_EQ(zvpsSumLn_16s32f(z.data(), n, &s16), zvpStsNoErr);
        const long double tol = n * 0x1p-50L;
        EXPECT_LE(std::fabs(s3264 - rx), tol + ulpAt<double>(rx)) << n;
        EXPECT_LE(std::fabs(s64 - ry), tol + ulpAt<double>(ry)) << n;
        EXPECT_LE(std::fabs(s32 - rx), tol + ulpAt<float>(rx)) << n;
        EXPECT_LE(std::fabs(s16 - rz), tol + ulpAt<float>(rz)) << n;
    }
    const double inf = std::numeric_limits<double>::infinity();
    auto sum = [](std::vector<Zvp64f> v) {
        Zvp64f s;
        EXPECT_EQ(zvpsSumLn_64f(v.data(), int(v.size()), &s), zvpStsNoErr);
        return s;
    };
    EXPECT_EQ(sum({2, 0, 3}), -inf);
    EXPECT_TRUE(std::isnan(sum({2, -1, 3})));
    EXPECT_EQ(sum({2, inf}), inf);
    EXPECT_TRUE(std::isnan(sum({0, inf, 1})));
    EXPECT_TRUE(std::isnan(sum({1, std::numeric_limits<double>::quiet_NaN()})));
    EXPECT_NEAR(sum({4.9e-324, 1e-310, 1}), std::log(4.9406564584124654e-324) + std::log(1e-310), 1e-12);
    EXPECT_EQ(sum({1, 1, 1}), 0.0);
    Zvp32f s;
    const Zvp16s zi[3] = {5, 0, 7};
    ASSERT_EQ(zvpsSumLn_16s32f(zi, 3, &s), zvpStsNoErr);
    EXPECT_EQ(s, -std::numeric_limits<float>::infinity());
}

}  // namespace

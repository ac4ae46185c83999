// What is particular to the complex helpers: the accuracy of the float
// magnitudes and phases against long-double references, their special values,
// the check orders that depart from the usual one, the power spectrum's
// saturation shortcut, and ConjFlip as Flip of Conj.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

// |got - want| in units of the last place of want's binade, for type T.
template <class T>
double ulps(T got, long double want) {
    if (std::isnan(want)) return std::isnan(got) ? 0 : 1e9;
    if (std::isinf(want)) return got == want ? 0 : 1e9;
    int e;
    std::frexp(want, &e);
    const long double ulp = std::ldexp(1.0L, std::max(e, std::numeric_limits<T>::min_exponent) - std::numeric_limits<T>::digits);
    return double(std::fabs((long double)got - want) / ulp);
}

// Parts of every magnitude: random bits over the whole exponent range, small
// integers, and pairs of very different size.
template <class T>
std::vector<T> drawParts(int n, unsigned seed) {
    std::mt19937_64 g(seed);
    std::vector<T> v(n);
    const int e = std::numeric_limits<T>::max_exponent;
    for (T& x : v) {
        const T u = T(double(g() >> 11) * 0x1p-53) * (g() & 1 ? -1 : 1);
        x = g() % 4 == 0 ? T(int(g() % 200) - 100) : std::ldexp(u, g() % 2 ? int(g() % (2 * e + 40)) - e - 40 : int(g() % 40) - 20);
    }
    return v;
}

// Interleaved and split forms run the same kernel: check both on the same
// values, returning the largest error in ulps of the long-double reference.
template <class T, class C, class Fc, class Fs, class Ref>
double worst(Fc interleaved, Fs split, Ref ref, unsigned seed) {
    const int n = 1 << 16;
    const auto re = drawParts<T>(n, seed), im = drawParts<T>(n, seed + 1);
    std::vector<C> z(n);
    for (int i = 0; i < n; ++i) z[i] = C{re[i], im[i]};
    std::vector<T> a(n), b(n);
    EXPECT_EQ(interleaved(z.data(), a.data(), n), zvpStsNoErr);
    EXPECT_EQ(split(re.data(), im.data(), b.data(), n), zvpStsNoErr);
    double w = 0;
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(std::memcmp(&a[i], &b[i], sizeof(T)), 0) << re[i] << " " << im[i];
        w = std::max(w, ulps<T>(a[i], ref((long double)re[i], (long double)im[i])));
    }
    return w;
}

auto hypotRef = [](long double x, long double y) { return std::hypot(x, y); };
auto atan2Ref = [](long double x, long double y) { return std::atan2(y, x); };

TEST(Cplx, FloatMagnitudeAndPhaseWithinTheirUlpBounds) {
    const double m32 = worst<float, Zvp32fc>(zvpsMagnitude_32fc, zvpsMagnitude_32f, hypotRef, 1);
    const double m64 = worst<double, Zvp64fc>(zvpsMagnitude_64fc, zvpsMagnitude_64f, hypotRef, 3);
    const double p32 = worst<float, Zvp32fc>(zvpsPhase_32fc, zvpsPhase_32f, atan2Ref, 5);
    const double p64 = worst<double, Zvp64fc>(zvpsPhase_64fc, zvpsPhase_64f, atan2Ref, 7);
    std::printf("worst ulps: magnitude 32f %.3f 64f %.3f, phase 32f %.3f 64f %.3f\n", m32, m64, p32, p64);
    EXPECT_LE(m32, 1.5);
    EXPECT_LE(m64, 1.5);
    EXPECT_LE(p32, 3.0);
    EXPECT_LE(p64, 1.0);
}

TEST(Cplx, SpecialValuesFollowTheCFunctions) {
    const float inf = INFINITY, nan = NAN;
    const float v[] = {0.0f, -0.0f, 1.0f, -1.0f, inf, -inf, nan, 1e-45f, 3e-45f, -3e38f, 3.4e38f};
    for (float x : v)
        for (float y : v) {
            const Zvp32fc z{x, y};
            Zvp32f p, m;
            ASSERT_EQ(zvpsPhase_32fc(&z, &p, 1), zvpStsNoErr);
            ASSERT_EQ(zvpsMagnitude_32fc(&z, &m, 1), zvpStsNoErr);
            const float want = std::atan2(y, x);
            if (std::isnan(want)) EXPECT_TRUE(std::isnan(p)) << x << " " << y;
            else EXPECT_LE(ulps<float>(p, std::atan2((long double)y, (long double)x)), 3.0) << x << " " << y;
            EXPECT_EQ(std::signbit(p), std::signbit(want)) << x << " " << y;
            // +inf for an infinite part, even beside a NaN; NaN otherwise.
            if (std::isinf(x) || std::isinf(y)) EXPECT_EQ(m, inf) << x << " " << y;
            else if (std::isnan(x) || std::isnan(y)) EXPECT_TRUE(std::isnan(m)) << x << " " << y;
            else EXPECT_EQ(m, float(std::hypot(double(x), double(y)))) << x << " " << y;
        }
}

TEST(Cplx, CartToPolarWritesTheMagnitudesWhenThePhaseDestinationIsNull) {
    const Zvp32fc z[3] = {{3, 4}, {0, -2}, {-1, 0}};
    Zvp32f m[3] = {}, p[3] = {};
    EXPECT_EQ(zvpsCartToPolar_32fc(z, m, nullptr, 3), zvpStsNullPtrErr);
    EXPECT_EQ(m[0], 5.0f);
    EXPECT_EQ(m[1], 2.0f);
    EXPECT_EQ(zvpsCartToPolar_32fc(z, nullptr, p, 3), zvpStsNullPtrErr);  // and the other way round
    EXPECT_EQ(p[2], std::atan2(0.0f, -1.0f));
    EXPECT_EQ(zvpsCartToPolar_32fc(z, m, nullptr, 0), zvpStsSizeErr);
    // The 16-bit form runs the phase only after the magnitude succeeded.
    const Zvp16sc s[2] = {{3, 4}, {-6, 8}};
    Zvp16s mi[2] = {}, pi[2] = {7, 7};
    EXPECT_EQ(zvpsCartToPolar_16sc_Sfs(s, mi, nullptr, 0, 0, -13), zvpStsSizeErr);
    EXPECT_EQ(zvpsCartToPolar_16sc_Sfs(s, nullptr, pi, 2, 0, -13), zvpStsNullPtrErr);
    EXPECT_EQ(pi[0], 7);
    EXPECT_EQ(zvpsCartToPolar_16sc_Sfs(s, mi, nullptr, 2, 0, -13), zvpStsNullPtrErr);
    EXPECT_EQ(mi[1], 10);
}

TEST(Cplx, RealToCplxTakesAMissingPartAsZero) {
    const Zvp32f re[2] = {1, 2}, im[2] = {3, 4};
    Zvp32fc d[2] = {{9, 9}, {9, 9}};
    EXPECT_EQ(zvpsRealToCplx_32f(re, nullptr, d, 2), zvpStsNoErr);
    EXPECT_TRUE(d[1].re == 2 && d[1].im == 0);
    EXPECT_EQ(zvpsRealToCplx_32f(nullptr, im, d, 2), zvpStsNoErr);
    EXPECT_TRUE(d[1].re == 0 && d[1].im == 4);
    d[0] = {9, 9};
    EXPECT_EQ(zvpsRealToCplx_32f(nullptr, nullptr, d, 2), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRealToCplx_32f(nullptr, nullptr, d, 0), zvpStsSizeErr);  // the length comes first
    EXPECT_EQ(zvpsRealToCplx_32f(re, im, nullptr, 0), zvpStsNullPtrErr);  // after the destination
    EXPECT_EQ(d[0].re, 9);
}

TEST(Cplx, PowerSpectrumSaturatesBelowScaleMinus14) {
    const Zvp16s re[2] = {0, 1}, im[2] = {0, 0};
    Zvp16s d[2];
    EXPECT_EQ(zvpsPowerSpectr_16s_Sfs(re, im, d, 2, -15), zvpStsNoErr);
    EXPECT_TRUE(d[0] == 0 && d[1] == 32767);
    // Every other scale factor, and the shortcut against the rule, in the shape oracle.
}

TEST(Cplx, ConjFlipIsTheConjugateOfFlip) {
    // Four 16-bit elements a vector: every split of body and tail, saturation, in place.
    for (int n = 1; n <= 40; ++n) {
        std::vector<Zvp16sc> s(n), want(n), got(n);
        for (int i = 0; i < n; ++i) s[i] = {Zvp16s(i), Zvp16s(i % 2 ? -32768 : i)};
        for (int i = 0; i < n; ++i) want[i] = {s[n - 1 - i].re, Zvp16s(std::min(32767, -s[n - 1 - i].im))};
        ASSERT_EQ(zvpsConjFlip_16sc(s.data(), got.data(), n), zvpStsNoErr);
        ASSERT_EQ(zvpsConjFlip_16sc(s.data(), s.data(), n), zvpStsNoErr);
        for (int i = 0; i < n; ++i) EXPECT_TRUE(got[i].re == want[i].re && got[i].im == want[i].im && s[i].im == want[i].im) << n;
    }
}

TEST(Cplx, PolarToCartRoundsTheExactParts) {
    // Floats within one ulp of the long-double parts; 32sc with its phase in
    // Q29 within one of the exact parts (a double product may round a near-half).
    const Zvp32f m[3] = {5, 2, 1e30f}, ph[3] = {0.927295218f, -3.14159274f, 1.0f};
    const Zvp32s mag[3] = {2000000000, 7, -5}, q29[3] = {843314857 /* pi/2 */, -1686629713 /* -pi */, 0};
    Zvp32fc z[3];
    Zvp32sc r[3];
    ASSERT_EQ(zvpsPolarToCart_32fc(m, ph, z, 3), zvpStsNoErr);
    ASSERT_EQ(zvpsPolarToCart_32sc(mag, q29, r, 3), zvpStsNoErr);
    for (int i = 0; i < 3; ++i) {
        EXPECT_LE(ulps<float>(z[i].re, m[i] * std::cos((long double)ph[i])), 1.0) << i;
        EXPECT_LE(ulps<float>(z[i].im, m[i] * std::sin((long double)ph[i])), 1.0) << i;
        const long double a = std::ldexp((long double)q29[i], -29);
        EXPECT_LE(std::fabs(r[i].re - std::nearbyint(mag[i] * std::cos(a))), 1) << i;
        EXPECT_LE(std::fabs(r[i].im - std::nearbyint(mag[i] * std::sin(a))), 1) << i;
    }
}

}  // namespace

// Mul, Div and AddProduct through the public interface: what no per-element
// rule expresses. Integer results and real float results are the shape
// table's oracle check (tests/shapes); here stay the zero-divisor warnings,
// every 8-bit operand pair at every scale factor from -40 to 40, and complex
// float results against long double within a bound derived below.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "sentinel.h"
#include "wide_int.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
using zvp::test::Mode;

template <class T>
bool sameBits(const T& a, const T& b) { return std::memcmp(&a, &b, sizeof(T)) == 0; }

const Mode kModes[] = {Mode::TowardZero, Mode::NearestEven, Mode::HalfAway};

// ---- Zero divisors --------------------------------------------------------------------

template <class T>
T num(int x) {
    if constexpr (std::is_arithmetic_v<T>) return T(x);
    else return T{decltype(T{}.re)(x), 0};
}

// A zero divisor anywhere in the vector warns (0 / 0 too); none, no warning.
template <class A, class B, class D, class... X>
void warnsOnZeroDivisor(ZvpStatus (*f)(const A*, const B*, D*, int, X...), std::type_identity_t<X>... x) {
    const A a[3] = {num<A>(3), num<A>(0), num<A>(0)};
    const B b[3] = {num<B>(5), num<B>(7), num<B>(0)};
    D d[3];
    EXPECT_EQ(f(a, b, d, 2, x...), zvpStsDivByZero);
    EXPECT_EQ(f(a + 2, b + 2, d, 1, x...), zvpStsDivByZero);
    EXPECT_EQ(f(a, b, d, 1, x...), zvpStsNoErr);
}

TEST(MulDivDiv, ZeroDivisorsWarn) {
    for (int sf : {INT_MIN, -100, -40, -32, -17, -1, 0, 1, 17, 31, 40, 100, INT_MAX}) {
        warnsOnZeroDivisor(zvpsDiv_8u_Sfs, sf);
        warnsOnZeroDivisor(zvpsDiv_16s_Sfs, sf);
        warnsOnZeroDivisor(zvpsDiv_16u_Sfs, sf);
        warnsOnZeroDivisor(zvpsDiv_32s_Sfs, sf);
        warnsOnZeroDivisor(zvpsDiv_32s16s_Sfs, sf);
        warnsOnZeroDivisor(zvpsDiv_16sc_Sfs, sf);
        for (int m = 0; m < 3; ++m) {
            warnsOnZeroDivisor(zvpsDiv_Round_8u_Sfs, ZvpRoundMode(m), sf);
            warnsOnZeroDivisor(zvpsDiv_Round_16s_Sfs, ZvpRoundMode(m), sf);
            warnsOnZeroDivisor(zvpsDiv_Round_16u_Sfs, ZvpRoundMode(m), sf);
        }
    }
    warnsOnZeroDivisor(zvpsDiv_32f);
    warnsOnZeroDivisor(zvpsDiv_64f);
    warnsOnZeroDivisor(zvpsDiv_32fc);
    warnsOnZeroDivisor(zvpsDiv_64fc);
    // Purely real and purely imaginary complex divisors are not zero.
    const Zvp16sc a[2] = {{5, 0}, {0, -3}}, b[2] = {{7, 1}, {2, 2}};
    Zvp16sc d[2];
    EXPECT_EQ(zvpsDiv_16sc_Sfs(a, b, d, 2, 0), zvpStsNoErr);
    // DivCRev: a zero element is the divisor.
    const Zvp16u u[3] = {1, 0, 4};
    const float x[3] = {1, 0, 4};
    Zvp16u du[3];
    float dx[3];
    EXPECT_EQ(zvpsDivCRev_16u(u, 7, du, 3), zvpStsDivByZero);
    EXPECT_EQ(zvpsDivCRev_16u(u, 0, du, 3), zvpStsDivByZero);
    EXPECT_EQ(zvpsDivCRev_16u(u + 2, 7, du, 1), zvpStsNoErr);
    EXPECT_EQ(zvpsDivCRev_32f(x, 1.0f, dx, 3), zvpStsDivByZero);
    EXPECT_EQ(zvpsDivCRev_32f(x, 1.0f, dx, 1), zvpStsNoErr);
}

// ---- Every 8-bit operand pair at every scale factor from -40 to 40 --------------------
//
// Oracles in plain 64-bit arithmetic: a * 2^40 and 255 * 2^40 stay far
// below 2^63.

std::int64_t roundDiv64(std::int64_t n, std::int64_t d, Mode m) {  // n >= 0, d > 0
    const std::int64_t q = n / d, r = n % d;
    if (m == Mode::TowardZero) return q;
    if (2 * r > d || (2 * r == d && (m == Mode::HalfAway || (q & 1)))) return q + 1;
    return q;
}
Zvp8u clamp8(std::int64_t v) { return Zvp8u(v > 255 ? 255 : v); }
Zvp8u ref8(std::int64_t num, std::int64_t den, int sf, Mode m) {  // num / (den * 2^sf), den > 0
    return sf >= 0 ? clamp8(roundDiv64(num, den << sf, m)) : clamp8(roundDiv64(num << -sf, den, m));
}

TEST(MulDivEightBit, EveryPairEveryScaleFactor) {
    const int n = 65536;
    std::vector<Zvp8u> a(n), b(n), d(n);
    for (int i = 0; i < n; ++i) {
        a[i] = Zvp8u(i >> 8);
        b[i] = Zvp8u(i);
    }
    for (int sf = -40; sf <= 40; ++sf) {
        ASSERT_EQ(zvpsMul_8u_Sfs(a.data(), b.data(), d.data(), n, sf), zvpStsNoErr);
        for (int i = 0; i < n; ++i)
            ASSERT_EQ(d[i], ref8(a[i] * b[i], 1, sf, Mode::NearestEven)) << "Mul " << +a[i] << "*" << +b[i] << " sf " << sf;
        for (int c = 0; c < 256; ++c) {
            ASSERT_EQ(zvpsMulC_8u_Sfs(b.data(), Zvp8u(c), d.data(), 256, sf), zvpStsNoErr);
            for (int i = 0; i < 256; ++i)
                ASSERT_EQ(d[i], ref8(c * b[i], 1, sf, Mode::NearestEven)) << "MulC " << i << "*" << c << " sf " << sf;
            if (c == 0) continue;
            ASSERT_EQ(zvpsDivC_8u_Sfs(b.data(), Zvp8u(c), d.data(), 256, sf), zvpStsNoErr);
            for (int i = 0; i < 256; ++i)
                ASSERT_EQ(d[i], ref8(b[i], c, sf, Mode::NearestEven)) << "DivC " << i << "/" << c << " sf " << sf;
        }
        ASSERT_EQ(zvpsDiv_8u_Sfs(a.data(), b.data(), d.data(), n, sf), zvpStsDivByZero);
        for (int i = 0; i < n; ++i) {
            const Zvp8u e = a[i] == 0 ? (b[i] ? 255 : 0) : ref8(b[i], a[i], sf, Mode::NearestEven);
            ASSERT_EQ(d[i], e) << "Div " << +b[i] << "/" << +a[i] << " sf " << sf;
        }
        for (int m = 0; m < 3; ++m) {
            ASSERT_EQ(zvpsDiv_Round_8u_Sfs(a.data(), b.data(), d.data(), n, ZvpRoundMode(m), sf), zvpStsDivByZero);
            for (int i = 0; i < n; ++i) {
                const Zvp8u e = a[i] == 0 ? (b[i] ? 255 : 0) : ref8(b[i], a[i], sf, kModes[m]);
                ASSERT_EQ(d[i], e) << "Div_Round " << +b[i] << "/" << +a[i] << " sf " << sf << " mode " << m;
            }
        }
    }
}

// ---- Floating point --------------------------------------------------------------

// Mostly in [-4, 4], some zeros, some scaled by 2^-spread .. 2^spread.
template <class T>
std::vector<T> randomFloats(int n, unsigned seed, int spread = 100) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<T> u(-4, 4);
    std::vector<T> v(n);
    for (auto& x : v) {
        const auto r = g() % 16;
        x = r == 0 ? T(0) : (r == 1 ? std::ldexp(u(g), int(g() % (2 * spread)) - spread) : u(g));
    }
    return v;
}

// Complex forms against long double. Each part of a complex product is two
// rounded products and a rounded sum, so its error is at most
// eps * (|x1| + |x2|) * (1 + eps) + eps * |x1 +- x2| <= 3 eps (|x1| + |x2|)
// with eps the unit roundoff; an accumulated product adds one more rounding
// of a value at most |acc| + |x1| + |x2|. Quotients are checked against a
// relative bound of 8 eps of the magnitude, from the same counting.
template <class T, class C, class F, class E>
void checkCplx(const std::string& name, F f, E expect) {
    SCOPED_TRACE(name);
    const int n = 151;
    const auto a = randomFloats<T>(2 * n + 8, 31, 30), b = randomFloats<T>(2 * n + 8, 32, 30);
    const auto* ca = reinterpret_cast<const C*>(a.data());
    const auto* cb = reinterpret_cast<const C*>(b.data());
    GuardedBuffer out(n * sizeof(C), sizeof(T));
    C* d = out.as<C>();
    f(ca, cb, d, n);
    const long double eps = std::numeric_limits<T>::epsilon() / 2;
    for (int i = 0; i < n; ++i) {
        long double re, im, bound;
        expect(ca[i], cb[i], re, im, bound);
        if (!std::isfinite(re) || !std::isfinite(im)) continue;  // a zero divisor
        const long double tol = bound * eps;
        ASSERT_LE(std::fabs(d[i].re - re), tol) << i << " re";
        ASSERT_LE(std::fabs(d[i].im - im), tol) << i << " im";
    }
}

template <class C>
void cmulRef(C a, C b, long double& re, long double& im, long double& bound) {
    const long double ar = a.re, ai = a.im, br = b.re, bi = b.im;
    re = ar * br - ai * bi;
    im = ar * bi + ai * br;
    bound = 3 * (std::fabs(ar * br) + std::fabs(ai * bi) + std::fabs(ar * bi) + std::fabs(ai * br));
}
template <class C>
void cdivRef(C a, C b, long double& re, long double& im, long double& bound) {  // b / a
    const long double ar = a.re, ai = a.im, br = b.re, bi = b.im, den = ar * ar + ai * ai;
    re = (br * ar + bi * ai) / den;
    im = (bi * ar - br * ai) / den;
    bound = 8 * std::sqrt((br * br + bi * bi) / den);
}

TEST(MulDivFloatComplex, ProductsAndQuotients) {
    checkCplx<float, Zvp32fc>("Mul_32fc", zvpsMul_32fc, cmulRef<Zvp32fc>);
    checkCplx<double, Zvp64fc>("Mul_64fc", zvpsMul_64fc, cmulRef<Zvp64fc>);
    checkCplx<float, Zvp32fc>("Div_32fc", zvpsDiv_32fc, cdivRef<Zvp32fc>);
    checkCplx<double, Zvp64fc>("Div_64fc", zvpsDiv_64fc, cdivRef<Zvp64fc>);
    // Accumulating: d = d + a * b with d starting at a's conjugate pattern.
    checkCplx<float, Zvp32fc>("AddProduct_32fc", [](auto a, auto b, auto d, int n) {
        std::memcpy(d, a, n * sizeof(*d));
        return zvpsAddProduct_32fc(a, b, d, n);
    }, [](Zvp32fc a, Zvp32fc b, long double& re, long double& im, long double& bound) {
        cmulRef(a, b, re, im, bound);
        re += a.re;
        im += a.im;
        bound = bound + 2 * (std::fabs(re) + std::fabs(im)) + 2 * (std::fabs(a.re) + std::fabs(a.im));
    });
    checkCplx<double, Zvp64fc>("AddProduct_64fc", [](auto a, auto b, auto d, int n) {
        std::memcpy(d, b, n * sizeof(*d));
        return zvpsAddProduct_64fc(a, b, d, n);
    }, [](Zvp64fc a, Zvp64fc b, long double& re, long double& im, long double& bound) {
        cmulRef(a, b, re, im, bound);
        re += b.re;
        im += b.im;
        bound = bound + 2 * (std::fabs(re) + std::fabs(im)) + 2 * (std::fabs(b.re) + std::fabs(b.im));
    });
}

TEST(MulDivFloatComplex, ComplexConstants) {
    const int n = 67;
    const auto c = randomFloats<float>(2 * n + 8, 42, 30);
    const auto* cc = reinterpret_cast<const Zvp32fc*>(c.data());
    // MulC and DivC with complex constants; DivC multiplies by 1/c.
    const Zvp32fc k32 = {0.75f, -1.25f};
    const Zvp64fc k64 = {-3.5, 1e-3};
    std::vector<Zvp32fc> m(n), q(n);
    ASSERT_EQ(zvpsMulC_32fc(cc, k32, m.data(), n), zvpStsNoErr);
    ASSERT_EQ(zvpsDivC_32fc(cc, k32, q.data(), n), zvpStsNoErr);
    const long double den = 0.75L * 0.75L + 1.25L * 1.25L;
    const Zvp32fc inv = {float(0.75L / den), float(1.25L / den)};
    std::vector<Zvp32fc> viaMul(n);
    ASSERT_EQ(zvpsMulC_32fc(cc, inv, viaMul.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) {
        long double re, im, bound;
        cmulRef(cc[i], k32, re, im, bound);
        EXPECT_LE(std::fabs(m[i].re - re), bound * 6e-8L) << i;
        EXPECT_LE(std::fabs(m[i].im - im), bound * 6e-8L) << i;
        EXPECT_TRUE(sameBits(q[i], viaMul[i])) << i;
    }
    const std::vector<double> store64 = randomFloats<double>(2 * n + 8, 43, 30);
    const auto* c64 = reinterpret_cast<const Zvp64fc*>(store64.data());
    std::vector<Zvp64fc> m64(n), q64(n);
    ASSERT_EQ(zvpsMulC_64fc(c64, k64, m64.data(), n), zvpStsNoErr);
    ASSERT_EQ(zvpsDivC_64fc(c64, k64, q64.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) {
        long double re, im, bound;
        cmulRef(c64[i], k64, re, im, bound);
        EXPECT_LE(std::fabs(m64[i].re - re), bound * 1.2e-16L) << i;
        cdivRef(k64, c64[i], re, im, bound);
        EXPECT_LE(std::fabs(q64[i].re - re), bound * 1.2e-16L) << i;
        EXPECT_LE(std::fabs(q64[i].im - im), bound * 1.2e-16L) << i;
    }
}

TEST(MulDivFloatComplex, ZeroDivisorsAndExtremeMagnitudes) {
    const Zvp32fc a[3] = {{0, 0}, {1, 1}, {-0.0f, 0}}, b[3] = {{2, -3}, {2, 2}, {0, 0}};
    Zvp32fc d[3];
    EXPECT_EQ(zvpsDiv_32fc(a, b, d, 3), zvpStsDivByZero);
    EXPECT_TRUE(std::isinf(d[0].re) && d[0].re > 0 && std::isinf(d[0].im) && d[0].im < 0);
    EXPECT_EQ(d[1].re, 2.0f);
    EXPECT_EQ(d[1].im, 0.0f);
    EXPECT_TRUE(std::isnan(d[2].re) && std::isnan(d[2].im));
    EXPECT_EQ(zvpsDiv_32fc(a + 1, b + 1, d, 1), zvpStsNoErr);
    // 64fc divisors far outside the range where |a|^2 is representable.
    const Zvp64fc big[2] = {{3e200, 4e200}, {3e-200, -4e-200}}, num[2] = {{5e200, 0}, {5e-200, 0}};
    Zvp64fc q[2];
    EXPECT_EQ(zvpsDiv_64fc(big, num, q, 2), zvpStsNoErr);
    EXPECT_NEAR(q[0].re, 0.6, 1e-15);
    EXPECT_NEAR(q[0].im, -0.8, 1e-15);
    EXPECT_NEAR(q[1].re, 0.6, 1e-15);
    EXPECT_NEAR(q[1].im, 0.8, 1e-15);
    const Zvp64fc z[1] = {{0, 0}};
    EXPECT_EQ(zvpsDiv_64fc(z, num, q, 1), zvpStsDivByZero);
    EXPECT_TRUE(std::isinf(q[0].re) && std::isnan(q[0].im));  // 5e200/0, 0/0
}

}  // namespace

// Kernels of the real transforms on their own: the small real kernels and
// the recombination passes (plain and two-level tables, every layout shift,
// in place and out of place), fed from the long-double oracle.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>
#include <vector>

#include "oracle_dft.h"
#include "../../src/transform/psfftr.h"

namespace {

using zvp::test::cld;

template <class T>
std::vector<T> randomSignal(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-1, 1);
    std::vector<T> v(n);
    for (auto& x : v) x = T(d(rng));
    return v;
}

// X[0 .. N/2] of a real signal, long double.
template <class T>
std::vector<cld> halfSpectrum(const std::vector<T>& x) {
    std::vector<cld> c(x.begin(), x.end());
    auto X = zvp::test::naiveDft(c, -1);
    X.resize(x.size() / 2 + 1);
    return X;
}

// Relative L2 error of pairs (re, im) against a reference.
template <class T>
double relErr(const T* got, const std::vector<cld>& want) {
    long double num = 0, den = 0;
    for (std::size_t k = 0; k < want.size(); ++k) {
        const long double dr = got[2 * k] - want[k].real(), di = got[2 * k + 1] - want[k].imag();
        num += dr * dr + di * di;
        den += std::norm(want[k]);
    }
    return double(std::sqrt(num / den));
}

template <class T>
class RealKernelTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(RealKernelTest, Types);

// The small kernels are a few butterflies deep: a relative error of 8 eps
// bounds them with room (each output passes through at most 6 roundings).
TYPED_TEST(RealKernelTest, SmallKernelsMatchTheDft) {
    using T = TypeParam;
    const double eps = std::numeric_limits<T>::epsilon();
    for (int m = 0; m <= 5; ++m) {
        const int n = 1 << m;
        const auto x = randomSignal<T>(n, 10 + m);
        std::vector<T> X(n + 2, T(9));
        zvp::p8::fftr::smallRealForward(x.data(), X.data(), m);
        EXPECT_LT(relErr(X.data(), halfSpectrum(x)), 8 * eps) << "order " << m;
        EXPECT_EQ(X[1], T(0));
        if (n > 1) {
            EXPECT_EQ(X[n + 1], T(0));
        }
        std::vector<T> back(n);
        zvp::p8::fftr::smallRealInverse(X.data(), back.data(), m);
        for (int i = 0; i < n; ++i) EXPECT_NEAR(back[i] / n, x[i], 8 * eps) << "order " << m;
    }
}

// Coefficients written straight from their definition, in the pass layout.
template <class T>
std::vector<T> table(int n) {
    const int q = n / 4;
    std::vector<T> t(4 * q + 8);
    for (int k = 1; k <= q; ++k) {
        const long double th = 6.283185307179586476925286766559L * k / n;
        const T a = T(0.5L * std::cos(th)), b = T(0.5L - 0.5L * std::sin(th));
        T* e = sizeof(T) == 4 ? t.data() + 8 * ((k - 1) / 2) + ((k - 1) & 1) * 2 : t.data() + 4 * (k - 1);
        e[0] = b;
        e[1] = b;
        e[sizeof(T) == 4 ? 4 : 2] = a;
        e[sizeof(T) == 4 ? 5 : 3] = -a;
    }
    return t;
}

// Two-level tables as the passes read them: single precision per two k
// (fr, -fr, fr', -fr'), (fi, -fi, fi', -fi') of 0.5 (cos, sin)(2 pi j/N), then
// (cos, sin, 0, 0) per coarse block; double precision 0.5 (cos, sin) per j,
// then (cos, sin) per block. Both with 16384 bytes of fine part.
template <class T>
std::vector<T> splitTable(int m) {
    const int n = 1 << m, blocks = n / 4096;
    const int fine = 16384 / sizeof(T), per = sizeof(T) == 4 ? 4 : 2;
    std::vector<T> t(fine + per * blocks + 4);
    const long double tp = 6.283185307179586476925286766559L / n;
    for (int j = 1; j <= 1024; ++j) {
        const T fr = T(0.5L * std::cos(tp * j)), fi = T(0.5L * std::sin(tp * j));
        if (sizeof(T) == 4) {
            T* e = t.data() + 8 * ((j - 1) / 2) + 2 * ((j - 1) % 2);
            e[0] = fr, e[1] = -fr, e[4] = fi, e[5] = -fi;
        } else {
            t[2 * (j - 1)] = fr, t[2 * (j - 1) + 1] = fi;
        }
    }
    for (int i = 0; i < blocks; ++i) {
        t[fine + per * i] = T(std::cos(tp * 1024 * i));
        t[fine + per * i + 1] = T(std::sin(tp * 1024 * i));
    }
    return t;
}

// Forward pass on the exact half-length spectrum Z, then the inverse pass on
// the exact X: every layout shift, in place and out of place. The pass adds
// a few roundings to values of the size of |Z|: 16 eps bounds it.
TYPED_TEST(RealKernelTest, RecombinationPassesEveryShape) {
    using T = TypeParam;
    const double eps = std::numeric_limits<T>::epsilon();
    for (int m : {5, 6, 9, 12, 14}) {
        const int n = 1 << m;
        const auto x = randomSignal<T>(n, 100 + m);
        std::vector<std::complex<double>> z(n / 2);
        for (int i = 0; i < n / 2; ++i) z[i] = {double(x[2 * i]), double(x[2 * i + 1])};
        const auto Z = zvp::test::referenceFft(z, -1);
        std::vector<cld> want;
        {
            std::vector<std::complex<double>> xc(x.begin(), x.end());
            const auto Xd = zvp::test::referenceFft(xc, -1);
            for (int k = 0; k <= n / 2; ++k) want.push_back(cld(Xd[k]));
        }
        const auto tab = table<T>(n);
        const auto split = m >= 12 ? splitTable<T>(m) : std::vector<T>();
        for (int variant = 0; variant < (m >= 12 ? 2 : 1); ++variant) {
            for (int shift : {0, -1}) {
                for (bool inPlace : {false, true}) {
                    SCOPED_TRACE(::testing::Message() << "m " << m << " shift " << shift << " inPlace "
                                                      << inPlace << " split " << variant);
                    std::vector<T> in(n + 2), out(n + 2, T(7));
                    for (int i = 0; i < n / 2; ++i) {
                        in[2 * i] = T(Z[i].real());
                        in[2 * i + 1] = T(Z[i].imag());
                    }
                    T* dst = inPlace ? in.data() : out.data();
                    const T two = T(2);
                    if (variant == 0)
                        zvp::p8::fftr::recombineForward(in.data(), dst, n, 0, shift, tab.data(), two, true);
                    else
                        zvp::p8::fftr::recombineForwardSplit(in.data(), dst, n, 0, shift, split.data(),
                                                         split.data() + 16384 / sizeof(T), two, true);
                    // Pairs k = 1 .. N/2-1 sit at 2k + shift; the ends stay for the caller.
                    std::vector<T> pairs(n + 2, T(0));
                    for (int k = 1; k < n / 2; ++k) {
                        pairs[2 * k] = dst[2 * k + shift] / 2;
                        pairs[2 * k + 1] = dst[2 * k + 1 + shift] / 2;
                    }
                    pairs[0] = want[0].real();
                    pairs[n] = want[n / 2].real();
                    EXPECT_LT(relErr(pairs.data(), want), 16 * eps);
                    // Inverse: from the layout (X at 2k + shift) to Z' = 2 Z.
                    std::vector<T> xin(n + 2, T(0)), xout(n + 2, T(5));
                    for (int k = 1; k < n / 2; ++k) {
                        xin[2 * k + shift] = T(want[k].real());
                        xin[2 * k + 1 + shift] = T(want[k].imag());
                    }
                    T* idst = inPlace ? xin.data() : xout.data();
                    if (variant == 0)
                        zvp::p8::fftr::recombineInverse(xin.data(), idst, n, shift, 0, tab.data(), T(1));
                    else
                        zvp::p8::fftr::recombineInverseSplit(xin.data(), idst, n, shift, 0, split.data(),
                                                         split.data() + 16384 / sizeof(T), T(1));
                    std::vector<cld> zw(Z.begin(), Z.end());
                    zw[0] = 0;
                    idst[0] = idst[1] = 0;
                    zw.resize(n / 2);
                    EXPECT_LT(relErr(idst, zw), 16 * eps);
                }
            }
        }
    }
}

}  // namespace

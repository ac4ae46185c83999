// Internals of the complex FFT: the table-free small kernels against the
// long-double DFT, and, for every order including those too large to run in
// a test, that the tables, the permutation and column buffers and the base
// table all fit in the sizes the queries report.
#include <gtest/gtest.h>

#include <complex>
#include <random>
#include <vector>

#include "../../src/transform/fftsmall.h"
#include "../../src/transform/fftspec.h"
#include "oracle_dft.h"

namespace {

using namespace zvp::fft;
using cld = std::complex<long double>;

template <class T>
void checkSmall(int order, int sign, bool scaled, bool inPlace) {
    const int n = 1 << order;
    std::mt19937 rng(unsigned(order * 7 + sign + 3));
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<T> x(2 * n + 2), y(2 * n + 2, T(9));
    std::vector<cld> xl(n);
    for (int i = 0; i < n; ++i) {
        x[2 * i] = T(u(rng));
        x[2 * i + 1] = T(u(rng));
        xl[i] = {x[2 * i], x[2 * i + 1]};
    }
    T* src = x.data();
    T* dst = inPlace ? src : y.data() + 1;  // any alignment
    const T scale = T(0.3);
    smallFft<T>(src, dst, order, sign, scaled, scale);
    auto want = zvp::test::naiveDft(xl, sign);
    std::vector<cld> got(n);
    for (int i = 0; i < n; ++i) got[i] = {dst[2 * i], dst[2 * i + 1]};
    if (scaled)
        for (auto& v : want) v *= static_cast<long double>(scale);
    // Same derivation as the API test: c eps log2 N with c = 9 (exact roots here).
    const double eps = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
    EXPECT_LE(zvp::test::relativeL2(got, want), 9 * eps * std::max(order, 1))
        << "order " << order << " sign " << sign << (scaled ? " scaled" : "")
        << (inPlace ? " in place" : "");
    if (!inPlace) {
        EXPECT_EQ(y[0], T(9));
        EXPECT_EQ(y[2 * n + 1], T(9));
    }
}

TEST(FftSmallKernels, MatchTheDftWithAndWithoutScale) {
    for (int order = 0; order <= 5; ++order)
        for (int sign : {-1, 1})
            for (bool scaled : {false, true})
                for (bool inPlace : {false, true}) {
                    checkSmall<float>(order, sign, scaled, inPlace);
                    checkSmall<double>(order, sign, scaled, inPlace);
                }
}

// Scaled output is the unscaled output times the scale, rounded once.
TEST(FftSmallKernels, ScaleIsOneMultiplication) {
    for (int order = 0; order <= 5; ++order) {
        const int n = 1 << order;
        std::vector<float> x(2 * n), a(2 * n), b(2 * n);
        for (int i = 0; i < 2 * n; ++i) x[i] = float(i % 7) - 2.5f + 0.125f * float(i);
        smallFft<float>(x.data(), a.data(), order, -1, false, 1.0f);
        smallFft<float>(x.data(), b.data(), order, -1, true, 0.1f);
        for (int i = 0; i < 2 * n; ++i) ASSERT_EQ(b[i], a[i] * 0.1f) << order;
    }
}

// Every order of both precisions: the record's tables end within the
// reported record size after the worst alignment (63 bytes lost), the base
// table fits the init size after alignment, and the work size holds the
// engine's working area, the permutation tiles and the column-pass buffer.
TEST(FftSpecLayout, TablesFitTheReportedSizes) {
    for (Prec p : {Prec::Single, Prec::Double}) {
        const std::int64_t e = sampleBytes(p);
        for (int m = 0; m <= maxOrder(p); ++m) {
            const Sizes z = complexSizes(p, m);
            if (m <= 5) {
                EXPECT_EQ(z.spec, 152);
                EXPECT_LE(std::int64_t(sizeof(SpecHeader)) + 63, z.spec);
                continue;
            }
            const Layout L = layoutFor(p, m);
            EXPECT_LE(L.end + 63, z.spec) << "order " << m;
            const std::int64_t baseBytes = (pow2(m) / 4 + 1) * (e / 2);
            if (m > 10) {
                EXPECT_LE(baseBytes + 63, z.init) << "order " << m;
            }
            const std::int64_t work = z.work - 64;  // what the transform gets after aligning
            if (m < largeFrom(p)) {
                EXPECT_GE(work, pow2(m) * e) << "order " << m;
            } else {
                EXPECT_GE(work, 2 * 4096 * e) << "tiles, order " << m;
                EXPECT_GE(work, pow2(blockOrder(p, m)) * 64 * e) << "columns, order " << m;
                if (L.stepOrder) {
                    EXPECT_GE(work, 16 * 64 * e) << "step columns, order " << m;
                }
                // row tables cover the row transform (or its 16 sub-rows)
                const int r = L.stepOrder ? L.stepOrder - 4 : L.rowOrder;
                EXPECT_EQ(L.stepOrder ? L.stepTwdBytes : L.twdBytes, engineTwdBytes(p, r));
            }
        }
    }
}

}  // namespace

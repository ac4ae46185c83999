// Internals of the complex FFT: the table-free small kernels against the
// long-double DFT, and, for every order including those too large to run in
// a test, that the tables, the permutation and column buffers and the base
// table all fit in the sizes the queries report.
#include <gtest/gtest.h>

#include <complex>
#include <cstdint>
#include <memory>
#include <new>
#include <random>
#include <vector>

#include "../../src/transform/fftengine.h"
#include "../../src/transform/fftsmall.h"
#include "../../src/transform/fftspec.h"
#include "oracle_dft.h"

namespace {

using namespace zvp::p8::fft;
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

// Pass plans: the passes cover exactly the levels of the transform, each 2
// or 3 levels (radix 4 or 8), and a block of the blocked passes holds at
// most 16 KiB of samples so it stays in the first-level cache with its
// twiddles.
TEST(FftPassPlan, CoversEveryLevelAndBlocksFitTheCache) {
    for (Prec p : {Prec::Single, Prec::Double}) {
        for (int k = 6; k < 18; ++k) {
            const PassPlan plan = passPlan(p, k);
            int levels = 0, inBlock = 0;
            for (int i = 0; i < plan.count; ++i) {
                EXPECT_TRUE(plan.bits[i] == 2 || plan.bits[i] == 3) << k;
                levels += plan.bits[i];
                if (i < plan.blocked) inBlock += plan.bits[i];
            }
            EXPECT_EQ(levels, k);
            EXPECT_EQ(plan.bits[0], 2) << "first pass is the 4-point placement, order " << k;
            if (plan.blocked > 0) {
                EXPECT_EQ(inBlock, plan.blockBits) << k;
                EXPECT_LE(pow2(plan.blockBits) * sampleBytes(p), 16384) << k;
                EXPECT_GE(k - plan.blockBits, 2) << k;  // at least one pass outside
            } else {
                EXPECT_LE(pow2(k) * sampleBytes(p), 16384 * 2) << k;
            }
        }
    }
}

// The tile permutation of the large scheme against a plain bit reversal of
// the index, for 8-byte and 16-byte elements, in place and out of place
// (16-byte elements move through slices out of place), and through the copy
// route. Elements carry their own index so any misplacement shows.
template <class E>
void checkTileRev(int m, bool inPlace, int copyFrom) {
    const std::size_t n = std::size_t(1) << m;
    std::vector<std::int32_t> partner(n >> 12);
    for (std::size_t t = 0; t < partner.size(); ++t) {
        std::uint32_t r = 0;
        for (int b = 0; b < m - 12; ++b) r |= ((std::uint32_t(t) >> b) & 1u) << (m - 13 - b);
        partner[t] = std::int32_t(r);
    }
    std::uint8_t rev6[64];
    for (int i = 0; i < 64; ++i) {
        int r = 0;
        for (int b = 0; b < 6; ++b) r |= ((i >> b) & 1) << (5 - b);
        rev6[i] = std::uint8_t(r);
    }
    auto mk = [](std::size_t count) {
        return std::unique_ptr<E[], void (*)(E*)>(
            static_cast<E*>(::operator new[](count * sizeof(E), std::align_val_t(64))),
            [](E* q) { ::operator delete[](q, std::align_val_t(64)); });
    };
    auto src = mk(n), dst = mk(n), buf = mk(2 * 4096);
    for (std::size_t i = 0; i < n; ++i) src[i] = E::of(i);
    for (std::size_t i = 0; i < n; ++i) dst[i] = E::of(~std::uint64_t(0));
    E* out = inPlace ? src.get() : dst.get();
    bitReverse<E>(src.get(), out, m, copyFrom, partner.data(), rev6, buf.get());
    std::size_t bad = 0;
    for (std::size_t i = 0; i < n; ++i) {
        std::uint64_t r = 0;
        for (int b = 0; b < m; ++b) r |= ((std::uint64_t(i) >> b) & 1u) << (m - 1 - b);
        if (!(out[i] == E::of(r))) ++bad;
    }
    EXPECT_EQ(bad, 0u) << "order " << m << " element " << sizeof(E) << (inPlace ? " in place" : "")
                       << (m >= copyFrom ? " via copy" : "");
    if (!inPlace) {  // the source is only read
        for (std::size_t i = 0; i < n; ++i) ASSERT_TRUE(src[i] == E::of(i));
    }
}

struct E8 {
    std::uint64_t v;
    static E8 of(std::uint64_t i) { return {i * 0x9E3779B97F4A7C15ull}; }
    bool operator==(const E8&) const = default;
};
struct E16 {
    std::uint64_t a, b;
    static E16 of(std::uint64_t i) { return {i, ~i}; }
    bool operator==(const E16&) const = default;
};

TEST(FftTilePermutation, MatchesTheBitReversal) {
    for (int m : {12, 13, 14, 15}) {
        for (bool inPlace : {false, true}) {
            checkTileRev<E8>(m, inPlace, 30);
            checkTileRev<E16>(m, inPlace, 30);
        }
        checkTileRev<E16>(m, false, m);  // copy, then swap in place
    }
}

}  // namespace

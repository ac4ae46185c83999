// Internals of the complex FFT, for every order including those too large to
// run in a test: the tables, the permutation and column buffers and the base
// table all fit in the sizes the queries report, and the pass plans cover
// every level with cache-sized blocks.
#include <gtest/gtest.h>

#include <cstdint>

#include "../../src/transform/fftengine.h"
#include "../../src/transform/fftspec.h"

namespace {

using namespace zvp::p8::fft;

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

}  // namespace

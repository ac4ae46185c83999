// Thresholding behaviour beyond the shape table's checks and exact oracles:
// relOp in the check order, the level-0 shortcuts on complex data, LTInv's
// refined estimate and warning, 64fc against long double, 16sc parts near a
// half, and the caller's MXCSR.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

#include "zvps.h"

namespace {

const float kInf = INFINITY;

TEST(Threshold, RelOpRefusedAfterPointersAndLengthBeforeLevel) {
    Zvp16sc c16[2] = {};
    Zvp64fc c64[2] = {};
    float r32[2] = {};
    for (int op : {1, 2, 3, 5, -1}) {
        const auto bad = ZvpCmpOp(op);  // a negative complex level is looked at after relOp
        for (ZvpStatus st : {zvpsThreshold_32f_I(r32, 2, 0, bad), zvpsThreshold_16sc(c16, c16, 2, -1, bad),
                             zvpsThreshold_64fc_I(c64, 2, -1, bad)})
            EXPECT_EQ(st, zvpStsBadArgErr) << op;
        EXPECT_EQ(zvpsThreshold_32f(nullptr, r32, 0, 0, bad), zvpStsNullPtrErr);
        EXPECT_EQ(zvpsThreshold_16sc_I(c16, 0, -1, bad), zvpStsSizeErr);
    }
}

// GT with level 0 fills zeros (NaN elements too), LT copies bit for bit.
TEST(Threshold, LevelZeroOnComplexZeroesOrCopies) {
    const std::uint32_t snan = 0x7F800001u;
    float nan;
    std::memcpy(&nan, &snan, 4);
    const Zvp32fc src[5] = {{1, -2}, {nan, 3}, {-0.0f, 0}, {kInf, 1}, {1e-45f, -7}};
    const Zvp32fc zeros[5] = {};
    Zvp32fc d[5], e[5];
    std::memcpy(e, src, sizeof e);
    ASSERT_EQ(zvpsThreshold_GT_32fc(src, d, 5, 0.0f), zvpStsNoErr);
    ASSERT_EQ(zvpsThreshold_32fc_I(e, 5, -0.0f, zvpCmpGreater), zvpStsNoErr);
    EXPECT_TRUE(!std::memcmp(d, zeros, sizeof d) && !std::memcmp(e, zeros, sizeof e));
    ASSERT_EQ(zvpsThreshold_LT_32fc(src, d, 5, 0.0f), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(d, src, sizeof d), 0);
}

TEST(Threshold, LTValGTValWithEqualLevels) {
    const float s[4] = {1, 2, 3, NAN};
    float d[4];
    ASSERT_EQ(zvpsThreshold_LTValGTVal_32f(s, d, 4, 2, -5, 2, 9), zvpStsNoErr);
    EXPECT_TRUE(d[0] == -5 && d[1] == 2 && d[2] == 9 && std::isnan(d[3]));
}

// The refined estimate: |y v - 1| <= e^2 + 2 * 2^-24 (1 + e)^2 + ... with the
// estimate's |e| <= 1.5 * 2^-12, 2 - v r exact; 4.3 * 2^-24 bounds it.
TEST(Threshold, LTInv32fWithinOneRefinementStep) {
    std::mt19937 g(7);
    std::vector<float> s = {0, 2, -1, 8}, d(4099);
    while (s.size() < d.size())  // every binade, both signs
        s.push_back(std::ldexp(float(g() % 0x800000 + 0x800000) * 0x1p-24f, int(g() % 250) - 124) * (g() % 2 ? -1 : 1));
    for (float level : {0.0f, 4.0f, 0x1p-64f}) {
        EXPECT_EQ(zvpsThreshold_LTInv_32f(s.data(), d.data(), int(s.size()), level), level ? zvpStsNoErr : zvpStsInvZero);
        EXPECT_TRUE(level || d[0] == kInf);
        for (std::size_t i = level ? 0 : 1; i < s.size(); ++i) {
            const long double v = std::fabs(s[i]) < level ? std::copysign((long double)level, s[i]) : (long double)s[i];
            EXPECT_LE(std::fabs(d[i] * v - 1), 4.3 * 0x1p-24) << s[i] << " at level " << level;
        }
    }
    // Where the step gives no normal number the element is divided: zeros
    // and denormals give infinities (warning), infinities zeros, 2^127 its
    // denormal inverse exactly.
    const float e[6] = {-0.0f, 1e-45f, -kInf, NAN, 0x1p127f, -0x1p-127f};
    float f[6];
    EXPECT_EQ(zvpsThreshold_LTInv_32f(e, f, 6, 0), zvpStsInvZero);
    EXPECT_TRUE(f[0] == -kInf && f[1] == kInf && f[2] == 0 && std::signbit(f[2]) && std::isnan(f[3]));
    EXPECT_TRUE(f[4] == 0x1p-127f && f[5] == -0x1p127f);
    EXPECT_EQ(zvpsThreshold_LTInv_32f(e + 2, f, 2, 0), zvpStsNoErr);  // 1/inf = 0 is no warning
}

// 64fc through long double: parts within 4 ulp (the double formulas round at
// most four times), the phase kept, magnitudes across the scaled range;
// decisions within 2^-50 of the level may go either way.
TEST(Threshold, Complex64AgainstLongDouble) {
    std::mt19937_64 g(11);
    const int n = 2000;
    std::vector<Zvp64fc> s(n), d(n), v(n);
    auto near = [](double got, long double want) { return std::fabs(got - want) <= 4 * 0x1p-53L * std::fabs(want); };
    for (double level : {1.0, 0x1p-700, 0x1p700}) {
        for (auto& x : s) {
            const int e = int(std::ilogb(level)) + int(g() % 9) - 4;
            x = {std::ldexp(double(g() >> 11) * 0x1p-53 - 0.5, e), std::ldexp(double(g() >> 11) * 0x1p-53 - 0.5, e)};
        }
        for (bool lt : {true, false}) {
            ASSERT_EQ(lt ? zvpsThreshold_LT_64fc(s.data(), d.data(), n, level) : zvpsThreshold_GT_64fc(s.data(), d.data(), n, level), 0);
            ASSERT_EQ(lt ? zvpsThreshold_LTVal_64fc(s.data(), v.data(), n, level, {7, 8}) : 0, 0);
            for (int i = 0; i < n; ++i) {
                const long double re = s[i].re, im = s[i].im, m = std::sqrt(re * re + im * im);
                if (std::fabs(m - level) <= 0x1p-50L * level) continue;
                const bool rep = lt ? m < level : m > level;
                EXPECT_TRUE(rep ? near(d[i].re, re / m * level) && near(d[i].im, im / m * level)
                                : !std::memcmp(&d[i], &s[i], 16)) << i << " at level " << level;
                EXPECT_TRUE(!lt || (v[i].re == 7) == rep) << i;
            }
        }
        EXPECT_EQ(zvpsThreshold_LTInv_64fc(s.data(), d.data(), n, level), 0);
        for (int i = 0; i < n; ++i) {
            const long double re = s[i].re, im = s[i].im, m2 = re * re + im * im, l = level;
            const long double k = m2 < l * l ? 1 / (std::sqrt(m2) * l) : 1 / m2;  // conj(x) k
            EXPECT_TRUE(near(d[i].re, re * k) && near(d[i].im, -im * k)) << i << " at level " << level;
        }
    }
}

// Parts whose exact value lies within 2^-20 of a half take the exact
// decision: (2q - 1)^2 n < (2 a l)^2 < (2q + 1)^2 n for q = |part|.
TEST(Threshold, Complex16NearHalvesRoundToNearest) {
    std::mt19937 g(5);
    int found = 0;
    for (int tries = 0; tries < 20000000 && found < 40; ++tries) {
        const int l = int(g() % 32767) + 1, r = int(l * 0.7071);
        const Zvp16sc x{Zvp16s(int(g() % (2 * r + 1)) - r), Zvp16s(int(g() % (2 * r + 1)) - r)};
        const std::int64_t n = std::int64_t(x.re) * x.re + std::int64_t(x.im) * x.im;
        const long double w = x.re * (long double)l / std::sqrt((long double)n);
        if (n == 0 || std::fabs(std::fabs(w - std::floor(w)) - 0.5L) > 0x1p-20L) continue;
        Zvp16sc y;
        ASSERT_EQ(zvpsThreshold_LT_16sc(&x, &y, 1, Zvp16s(l)), 0);
        for (auto [a, q] : {std::pair{x.re, y.re}, std::pair{x.im, y.im}}) {
            const long double t = 2.0L * a * l, u = std::fabs(q);
            EXPECT_TRUE((u == 0 || (2 * u - 1) * (2 * u - 1) * n < t * t) && t * t < (2 * u + 1) * (2 * u + 1) * n &&
                        (q < 0) == (a < 0 && q != 0)) << x.re << " " << x.im << " " << l;
        }
        ++found;
    }
    EXPECT_GE(found, 10);
}

// With exceptions unmasked (a division by zero, an invalid compare would
// trap) and a flag set, the caller's word comes back unchanged.
TEST(Threshold, CallerMxcsrRestored) {
    const unsigned saved = _mm_getcsr(), word = (saved & ~0x1FBFu) | 0x1001u;  // only PM masked; IE flag set
    const float s[3] = {0, NAN, -2};
    const Zvp32fc c[2] = {{0, 0}, {NAN, 1}};
    float d[3];
    Zvp32fc e[2];
    for (int k = 0; k < 4; ++k) {
        _mm_setcsr(word);
        const ZvpStatus st = k == 0 ? zvpsThreshold_LTInv_32f(s, d, 3, 0) : k == 1 ? zvpsThreshold_LTInv_32fc(c, e, 2, 0)
                             : k == 2 ? zvpsThreshold_LT_32f(s, d, 3, 1) : zvpsThreshold_GT_32fc(c, e, 2, 1);
        const unsigned after = _mm_getcsr();
        _mm_setcsr(saved);
        EXPECT_EQ(after, word) << k;
        EXPECT_EQ(st, k < 2 ? zvpStsInvZero : zvpStsNoErr) << k;
    }
}

}  // namespace

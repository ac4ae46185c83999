// Companding against an independent G.711 coder written here from the
// standard's quantisation intervals, and against the telephony library's
// inline coder: every 16-bit sample of both encoders, every code of every
// decoder and code conversion.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include <spandsp/telephony.h>
#include <spandsp/bit_operations.h>
#include <spandsp/g711.h>

#include "zvps.h"

namespace {

// The 128 magnitude intervals of a law, in its own units: interval k of
// segment s starts at lo(s) + k * step(s). A-law (13-bit magnitudes):
// segments 0 and 1 have steps of 2 from 0, then steps double per segment.
// Mu-law (magnitude plus the bias 132): segment s covers [2^(s+7), 2^(s+8)).
struct Law {
    bool alaw;
    int lo(int s) const { return alaw ? (s == 0 ? 0 : 16 << s) : 128 << s; }
    int step(int s) const { return alaw ? (s == 0 ? 2 : 1 << s) : 8 << s; }
    int index(int m) const {  // the interval holding magnitude m
        for (int s = 0; s < 8; ++s)
            for (int k = 0; k < 16; ++k)
                if (m < lo(s) + (k + 1) * step(s)) return s * 16 + k;
        return 127;
    }
    // The code of sample x: A-law bins x >> 3 (negatives as -v - 1); mu-law
    // clips |x| at 32635 and adds the bias.
    int encode(int x) const {
        const bool neg = x < 0;
        const int m = alaw ? (neg ? (-x - 1) >> 3 : x >> 3) : std::min(std::abs(x), 32635) + 132;
        return index(m) ^ (alaw ? (neg ? 0x55 : 0xD5) : (neg ? 0x7F : 0xFF));
    }
    // The interval's midpoint, as a 16-bit sample.
    int decode(int code) const {
        const int i = (code ^ (alaw ? 0x55 : 0xFF)) & 0x7F;
        const int mid = lo(i / 16) + (i % 16) * step(i / 16) + step(i / 16) / 2;
        const int mag = alaw ? 8 * mid : mid - 132;
        return (code & 0x80) ? mag : -mag;
    }
};
const Law kA{true}, kMu{false};

std::vector<std::uint8_t> allCodes() { return [] { std::vector<std::uint8_t> c(256); for (int i = 0; i < 256; ++i) c[i] = std::uint8_t(i); return c; }(); }

TEST(Companding, EncodersMatchG711OnEverySample) {
    std::vector<Zvp16s> x(65536);
    std::vector<Zvp32f> xf(65536);
    for (int i = 0; i < 65536; ++i) x[i] = Zvp16s(i - 32768), xf[i] = float(i - 32768) / 32768.0f;
    std::vector<Zvp8u> a(65536), u(65536), af(65536), uf(65536);
    ASSERT_EQ(zvpsLinToALaw_16s8u(x.data(), a.data(), 65536), zvpStsNoErr);
    ASSERT_EQ(zvpsLinToMuLaw_16s8u(x.data(), u.data(), 65536), zvpStsNoErr);
    ASSERT_EQ(zvpsLinToALaw_32f8u(xf.data(), af.data(), 65536), zvpStsNoErr);
    ASSERT_EQ(zvpsLinToMuLaw_32f8u(xf.data(), uf.data(), 65536), zvpStsNoErr);
    for (int i = 0; i < 65536; ++i) {
        const int v = x[i];
        ASSERT_EQ(a[i], kA.encode(v)) << v;
        ASSERT_EQ(u[i], kMu.encode(v)) << v;
        // The telephony library's coder agrees on every sample for both laws
        // (it has no clip, but its overflow segment gives the same codes).
        ASSERT_EQ(a[i], linear_to_alaw(v)) << v;
        ASSERT_EQ(u[i], linear_to_ulaw(v)) << v;
        ASSERT_EQ(af[i], a[i]) << v;
        ASSERT_EQ(uf[i], u[i]) << v;
    }
    EXPECT_EQ(a[32768], 0xD5);
    EXPECT_EQ(a[32767], 0x55);
    EXPECT_EQ(a[65535], 0xAA);
    EXPECT_EQ(a[0], 0x2A);
}

TEST(Companding, FloatEncodersRoundHalfAwayAndSaturate) {
    // value * 32768 -> the 16-bit sample encoded: halves away from zero, the
    // values just inside a half toward it, saturation, NaN as 0.
    const float h = 0.5f / 32768.0f;
    struct Case { float x; int as; } cases[] = {
        {1.0f, 32767}, {2.5f, 32767}, {INFINITY, 32767}, {-1.0f, -32768}, {-7.0f, -32768}, {-INFINITY, -32768},
        {NAN, 0}, {7 * h, 4}, {-7 * h, -4}, {std::nextafter(7 * h, 0.0f), 3}, {15 * h, 8}, {-15 * h, -8},
        {std::nextafter(-15 * h, 0.0f), -7}, {1e-40f, 0}, {-1e-40f, 0}, {h, 1}};
    for (const Case& c : cases) {
        Zvp8u a, u;
        ASSERT_EQ(zvpsLinToALaw_32f8u(&c.x, &a, 1), zvpStsNoErr);
        ASSERT_EQ(zvpsLinToMuLaw_32f8u(&c.x, &u, 1), zvpStsNoErr);
        EXPECT_EQ(a, kA.encode(c.as)) << c.x;
        EXPECT_EQ(u, kMu.encode(c.as)) << c.x;
    }
}

TEST(Companding, DecodersMatchG711OnEveryCode) {
    const auto c = allCodes();
    std::vector<Zvp16s> a(256), u(256);
    std::vector<Zvp32f> af(256), uf(256);
    ASSERT_EQ(zvpsALawToLin_8u16s(c.data(), a.data(), 256), zvpStsNoErr);
    ASSERT_EQ(zvpsMuLawToLin_8u16s(c.data(), u.data(), 256), zvpStsNoErr);
    ASSERT_EQ(zvpsALawToLin_8u32f(c.data(), af.data(), 256), zvpStsNoErr);
    ASSERT_EQ(zvpsMuLawToLin_8u32f(c.data(), uf.data(), 256), zvpStsNoErr);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(a[i], kA.decode(i)) << i;
        EXPECT_EQ(u[i], kMu.decode(i)) << i;
        EXPECT_EQ(a[i], alaw_to_linear(std::uint8_t(i))) << i;
        EXPECT_EQ(u[i], ulaw_to_linear(std::uint8_t(i))) << i;
        EXPECT_EQ(af[i], a[i] / 32768.0f) << i;
        EXPECT_EQ(uf[i], u[i] / 32768.0f) << i;
    }
    for (auto [code, want] : {std::pair{0, -5504}, {1, -5248}, {2, -6016}, {3, -5760}, {120, -944}, {128, 5504}, {129, 5248}})
        EXPECT_EQ(a[code], want) << code;
    for (auto [code, want] : {std::pair{0, -32124}, {1, -31100}, {2, -30076}, {127, 0}, {128, 32124}, {129, 31100}})
        EXPECT_EQ(u[code], want) << code;
}

// The conversion: the other law's code whose decoder output is nearest, the
// laws compared at their overload points (+3.14 and +3.17 dBm0), same sign.
int nearest(const Law& from, const Law& to, int code) {
    const long double muGain = std::pow(10.0L, 0.03L / 20);
    auto level = [&](const Law& l, int c) {
        return l.alaw ? l.decode(c) / (8.0L * 4096) : l.decode(c) / (4.0L * 8159) * muGain;
    };
    int best = -1;
    for (int d = 0; d < 256; ++d)
        if (!((d ^ code) & 0x80) && (best < 0 || std::fabs(level(to, d) - level(from, code)) < std::fabs(level(to, best) - level(from, code))))
            best = d;
    return best;
}

TEST(Companding, CodeConversionsAreTheNearestCodes) {
    const auto c = allCodes();
    std::vector<Zvp8u> a2u(256), u2a(256);
    ASSERT_EQ(zvpsALawToMuLaw_8u(c.data(), a2u.data(), 256), zvpStsNoErr);
    ASSERT_EQ(zvpsMuLawToALaw_8u(c.data(), u2a.data(), 256), zvpStsNoErr);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(a2u[i], nearest(kA, kMu, i)) << i;
        EXPECT_EQ(u2a[i], nearest(kMu, kA, i)) << i;
    }
    for (auto [c, a] : {std::pair{0, 42}, {1, 43}, {2, 40}, {3, 41}, {120, 79}, {121, 79}, {122, 78}, {123, 78}, {124, 82},
                        {125, 83}, {126, 80}, {127, 81}, {128, 170}, {131, 169}, {248, 207}, {252, 210}, {255, 209}})
        EXPECT_EQ(a2u[c], a) << c;
    for (auto [c, a] : {std::pair{0, 42}, {3, 41}, {120, 86}, {121, 86}, {122, 87}, {124, 84}, {126, 85}, {127, 85},
                        {128, 170}, {131, 169}, {248, 214}, {250, 215}, {252, 212}, {255, 213}})
        EXPECT_EQ(u2a[c], a) << c;
}

}  // namespace

// Conversions: what is particular to the family. Element rules, check order,
// nothing-written-on-error and the caller's control word are the shape
// table's (tests/shapes/convert_shapes_test.cpp, with its exhaustive sweeps);
// here are stated values, the 24-bit byte layout, the channel interleaving
// and the unsigned lengths. (Scale-factor clamps are in the oracles.)
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

using zvp::test::GuardedBuffer;

float bitsF(std::uint32_t b) {
    float f;
    std::memcpy(&f, &b, 4);
    return f;
}

// ---- Float to integer: stated values ------------------------------------------------

struct F2I {
    float x;
    int mode, sf;
    Zvp32s want32;
    Zvp16s want16;
};
TEST(Convert, FloatToIntegerStatedValues) {
    const float nan = bitsF(0x7FC00000), negNan = bitsF(0xFFC00000), inf = INFINITY;
    const F2I cases[] = {
        {2.5f, 2, 0, 3, 3},         {-2.5f, 2, 0, -3, -3},       {0.49999997f, 2, 0, 0, 0},
        {2.5f, 1, 0, 2, 2},         {3.5f, 1, 0, 4, 4},          {-2.5f, 1, 0, -2, -2},
        {2.7f, 0, 0, 2, 2},         {-2.7f, 0, 0, -2, -2},       {-0.5f, 1, 0, 0, 0},
        {-0.5f, 3, 0, -1, -1},      {1.5f, -1, 0, 2, 2},         {3e9f, 1, 0, INT32_MAX, 32767},
        {-3e9f, 1, 0, INT32_MIN, -32768},                        {nan, 1, 0, INT32_MAX, 32767},
        {negNan, 1, 0, INT32_MIN, 32767},                            {inf, 0, 0, INT32_MAX, 32767},
        {-inf, 2, 0, INT32_MIN, -32768},                         {bitsF(0x4EFFFFFF), 1, 0, 2147483520, 32767},
        {0x1p31f, 0, 0, INT32_MAX, 32767},                       {5.0f, 1, 1, 2, 2},
        {6.0f, 1, 2, 2, 2},         {0.75f, 1, -2, 3, 3},        {inf, 1, 400, INT32_MAX, 32767},
        {0.0f, 1, -1000, 0, 0},     {0x1p-149f, 1, -160, 2048, 2048},  {3.0f, 1, 150, 0, 0},
    };
    for (const F2I& c : cases) {
        Zvp32s d32 = 7;
        Zvp16s d16 = 7;
        ASSERT_EQ(zvpsConvert_32f32s_Sfs(&c.x, &d32, 1, ZvpRoundMode(c.mode), c.sf), zvpStsNoErr);
        ASSERT_EQ(zvpsConvert_32f16s_Sfs(&c.x, &d16, 1, ZvpRoundMode(c.mode), c.sf), zvpStsNoErr);
        EXPECT_EQ(d32, c.want32) << c.x << " mode " << c.mode << " sf " << c.sf;
        EXPECT_EQ(d16, c.want16) << c.x << " mode " << c.mode << " sf " << c.sf;
    }
}

// A denormal scaled up is not lost to the caller's denormals-are-zero, and
// the control word comes back as it was.
TEST(Convert, CallerFlushModesDoNotReachScaledDenormals) {
    const unsigned saved = _mm_getcsr();
    _mm_setcsr((saved & ~0x6000u) | 0x2000u | 0x8040u);  // round down, FTZ, DAZ
    const unsigned set = _mm_getcsr();
    const float x = 0x1p-149f;
    const double y = 0x1p-1074;
    Zvp32s d = 0;
    Zvp64s e = 0;
    const ZvpStatus s1 = zvpsConvert_32f32s_Sfs(&x, &d, 1, zvpRndNear, -160);
    const ZvpStatus s2 = zvpsConvert_64f64s_Sfs(&y, &e, 1, zvpRndNear, -1080);
    const unsigned after = _mm_getcsr();
    _mm_setcsr(saved);
    EXPECT_EQ(s1, zvpStsNoErr);
    EXPECT_EQ(s2, zvpStsNoErr);
    EXPECT_EQ(d, 2048);
    EXPECT_EQ(e, 64);
    EXPECT_EQ(after & ~0x3Fu, set & ~0x3Fu);
}

// ---- 24-bit packing -----------------------------------------------------------------

TEST(Convert, PackedSamplesAreThreeBytesLeastSignificantFirst) {
    const Zvp8u src[6] = {0x01, 0x02, 0x83, 0xFF, 0xFF, 0x7F};
    Zvp32s s[2];
    Zvp32u u[2];
    ASSERT_EQ(zvpsConvert_24s32s(src, s, 2), zvpStsNoErr);
    ASSERT_EQ(zvpsConvert_24u32u(src, u, 2), zvpStsNoErr);
    EXPECT_EQ(s[0], std::int32_t(0xFF830201));
    EXPECT_EQ(s[1], 0x7FFFFF);
    EXPECT_EQ(u[0], 0x830201u);
    GuardedBuffer out(6, 1);  // no alignment needed
    const Zvp32s w[2] = {-2, 0x123456};
    ASSERT_EQ(zvpsConvert_32s24s_Sfs(w, out.data(), 2, 0), zvpStsNoErr);
    const Zvp8u want[6] = {0xFE, 0xFF, 0xFF, 0x56, 0x34, 0x12};
    EXPECT_EQ(std::memcmp(out.data(), want, 6), 0);
    EXPECT_TRUE(out.guardsIntact());
}

// ---- Channels ---------------------------------------------------------------------------

TEST(Convert, JoinScaledMapAndInterleaving) {
    const float a[3] = {1.0f, -1.0f, 0.0f}, b[3] = {2.0f, -0.5f, 0x1p-20f};
    const Zvp32f* ch[2] = {a, b};
    Zvp16s d[6];
    ASSERT_EQ(zvpsJoinScaled_32f16s_D2L(ch, 2, 3, d), zvpStsNoErr);
    const Zvp16s want[6] = {32767, 32767, -32768, -16384, 0, 0};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(d[i], want[i]) << i;
    Zvp8u d24[6];
    ASSERT_EQ(zvpsJoinScaled_32f24s_D2L(ch, 1, 2, d24), zvpStsNoErr);
    const Zvp8u want24[6] = {0xFF, 0xFF, 0x7F, 0x00, 0x00, 0x80};
    EXPECT_EQ(std::memcmp(d24, want24, 6), 0);
}

// Split is the exact inverse of Join: every 16-bit value, and 24-bit values
// across the range, come back unchanged through three channels.
TEST(Convert, SplitThenJoinGivesBackEveryValue) {
    const int nc = 3, len = 65536 / 2 + 1;
    std::vector<Zvp16s> y(nc * len);
    for (std::size_t i = 0; i < y.size(); ++i) y[i] = Zvp16s(i * 7);
    std::vector<std::vector<Zvp32f>> x(nc, std::vector<Zvp32f>(len));
    Zvp32f* out[nc] = {x[0].data(), x[1].data(), x[2].data()};
    const Zvp32f* in[nc] = {x[0].data(), x[1].data(), x[2].data()};
    std::vector<Zvp16s> back(y.size());
    ASSERT_EQ(zvpsSplitScaled_16s32f_D2L(y.data(), out, nc, len), zvpStsNoErr);
    ASSERT_EQ(zvpsJoinScaled_32f16s_D2L(in, nc, len, back.data()), zvpStsNoErr);
    EXPECT_EQ(back, y);

    std::vector<Zvp8u> y24(3 * nc * len), back24(y24.size());
    for (std::size_t i = 0; i < y24.size(); ++i) y24[i] = Zvp8u(i * 131 + (i >> 8));
    ASSERT_EQ(zvpsSplitScaled_24s32f_D2L(y24.data(), out, nc, len), zvpStsNoErr);
    ASSERT_EQ(zvpsJoinScaled_32f24s_D2L(in, nc, len, back24.data()), zvpStsNoErr);
    EXPECT_EQ(back24, y24);
}

// The interleaved side, then the sizes, then the channel array and each of
// its entries; nothing written.
TEST(Convert, ChannelChecksInOrder) {
    float a[2] = {0, 0};
    Zvp16s d[4] = {9, 9, 9, 9};
    const Zvp32f* some[2] = {a, nullptr};
    Zvp32f* outs[2] = {a, nullptr};
    EXPECT_EQ(zvpsJoinScaled_32f16s_D2L(nullptr, 2, 0, d), zvpStsSizeErr);
    EXPECT_EQ(zvpsJoinScaled_32f16s_D2L(some, 0, 2, d), zvpStsSizeErr);
    EXPECT_EQ(zvpsJoinScaled_32f16s_D2L(nullptr, 2, 2, d), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsJoinScaled_32f16s_D2L(some, 2, 2, d), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsSplitScaled_16s32f_D2L(nullptr, outs, 2, 2), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsSplitScaled_16s32f_D2L(d, nullptr, -1, 2), zvpStsSizeErr);
    EXPECT_EQ(zvpsSplitScaled_16s32f_D2L(d, outs, 2, 2), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsSplitScaled_24s32f_D2L(reinterpret_cast<Zvp8u*>(d), outs, 2, 1), zvpStsNullPtrErr);
    for (Zvp16s v : d) EXPECT_EQ(v, 9);
    EXPECT_EQ(a[0], 0.0f);
}

// ---- Unsigned lengths ------------------------------------------------------------------

// 16s8s and 64s64f refuse only a length of 0; a negative one is a count of
// 2^32 + len, so on x86-64 the call runs into the page after the buffers,
// and a 32-bit build, whose address space cannot hold it, refuses it.
TEST(ConvertDeathTest, UnsignedLengthsRunPastTheBuffers) {
    const Zvp16s s[1] = {1};
    Zvp8s d[1] = {5};
    EXPECT_EQ(zvpsConvert_16s8s_Sfs(s, d, 0, zvpRndNear, 0), zvpStsSizeErr);
    EXPECT_EQ(zvpsConvert_16s8s_Sfs(nullptr, d, -1, zvpRndNear, 0), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsConvert_64s64f(nullptr, nullptr, 0), zvpStsNullPtrErr);
    if (sizeof(void*) < 8) {
        EXPECT_EQ(zvpsConvert_16s8s_Sfs(s, d, -1, zvpRndNear, 0), zvpStsSizeErr);
        EXPECT_EQ(zvpsConvert_64s64f(reinterpret_cast<const Zvp64s*>(s), reinterpret_cast<Zvp64f*>(d), -5), zvpStsSizeErr);
    }
    EXPECT_EQ(d[0], 5);
#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__) && defined(__x86_64__)
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const long page = sysconf(_SC_PAGESIZE);
    auto* m = static_cast<unsigned char*>(mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(m, MAP_FAILED);
    ASSERT_EQ(mprotect(m + page, page, PROT_NONE), 0);
    auto* ps = reinterpret_cast<Zvp16s*>(m + page - 64);
    auto* pd = reinterpret_cast<Zvp8s*>(m);
    EXPECT_DEATH(zvpsConvert_16s8s_Sfs(ps, pd, -1, zvpRndNear, 0), "");
    EXPECT_DEATH(zvpsConvert_64s64f(reinterpret_cast<Zvp64s*>(ps), reinterpret_cast<Zvp64f*>(pd), -5), "");
    munmap(m, 2 * page);
#endif
}

}  // namespace

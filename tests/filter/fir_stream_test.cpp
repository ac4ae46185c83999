// FIR state details beyond the shared table: the 32f state size against its
// formula, the float-taps quantiser, integer ties and saturation, the tags
// of stream and multi-rate records, and the stream forms against their own
// oracles.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "alloc_count.h"
#include "sentinel.h"
#include "zvps_fftreal.h"
#include "zvps_fir.h"

namespace {

using LD = long double;

// The 32f state size re-derived from the layout rule.
long long stateSize32f(int L, bool fast = true) {
    long long fft = 0;
    if (fast && L >= 64) {
        int j = 2;
        while ((1LL << j) <= L) ++j;
        const int k = j + 1;
        int s = 0, i = 0, w = 0;
        if (zvpsFFTGetSize_R_32f(k, ZVP_FFT_DIV_INV_BY_N, zvpAlgHintNone, &s, &i, &w) == zvpStsNoErr)
            fft = s + i + w + 32LL * ((4LL * (1LL << k) + 15) >> 4);
    }
    return 16LL * (((12LL * L + 31) >> 4) + ((L + 6) & ~3LL)) + 5LL * ((4LL * L + 15) & ~15LL) + fft + 16528;
}

TEST(FirState, Size32fFollowsItsFormula) {
    std::vector<int> lens;
    for (int L = 1; L <= 70; ++L) lens.push_back(L);
    for (int L : {100, 255, 256, 1000, 5000}) lens.push_back(L);
    for (int L : lens) {
        int got = 0;
        ASSERT_EQ(zvpsFIRGetStateSize_32f(L, &got), zvpStsNoErr);
        EXPECT_EQ(got, stateSize32f(L)) << "L=" << L;
    }
    int s = 0;
    EXPECT_EQ(zvpsFIRGetStateSize_32f(0x7fffffff, &s), zvpStsSizeErr);
    EXPECT_EQ(zvpsFIRStreamGetStateSize_32f(64, &s), zvpStsNoErr);
    EXPECT_EQ(s, stateSize32f(64, false)) << "a stream state is the direct-only layout";
}

// Float taps to 32s: tapsFactor 31 - e for the largest |tap| in
// [2^(e-1), 2^e), ties to even, NaN to 0, infinities saturated.
TEST(FirState, QuantisedTapsKeepTheLargestFactor) {
    struct Row {
        std::vector<float> taps;
        std::vector<int> want;
    };
    const Row rows[] = {
        {{0.75f, -0.1f, 0.0f}, {1610612736, -214748368, 0}},                          // e = 0: factor 31
        {{3.0f, -1.0f}, {1610612736, -536870912}},                                     // e = 2: factor 29
        {{-4.0f, 0x1p-29f, 0x1.8p-28f}, {-1073741824, 0, 2}},                          // factor 28: 0.5 -> 0, 1.5 -> 2
        {{1.0f, 0x1.8p-30f, 0x1.4p-29f}, {1073741824, 2, 2}},                          // factor 30: 1.5 -> 2, 2.5 -> 2
        {{NAN, INFINITY, -INFINITY, 0.5f}, {0, 2147483647, -2147483647 - 1, 1073741824}},
        {{0.0f, 0.0f}, {0, 0}},
    };
    for (const Row& r : rows) {
        const int L = int(r.taps.size());
        ZvpsFIRState32s_16s* s = nullptr;
        ASSERT_EQ(zvpsFIRInitAlloc32s_16s32f(&s, r.taps.data(), L, nullptr), zvpStsNoErr);
        std::vector<int> got(L);
        ASSERT_EQ(zvpsFIRGetTaps32s_16s(s, got.data()), zvpStsNoErr);
        EXPECT_EQ(got, r.want);
        zvpsFIRFree32s_16s(s);
    }
    // Complex taps take the largest part over both: 2.5 -> factor 29.
    const Zvp32fc ct[2] = {{0.5f, -2.5f}, {1.0f, 0.0f}};
    ZvpsFIRState32sc_16sc* c = nullptr;
    ASSERT_EQ(zvpsFIRInitAlloc32sc_16sc32fc(&c, ct, 2, nullptr), zvpStsNoErr);
    Zvp32sc g[2];
    ASSERT_EQ(zvpsFIRGetTaps32sc_16sc(c, g), zvpStsNoErr);
    EXPECT_EQ(g[0].re, 268435456);
    EXPECT_EQ(g[0].im, -1342177280);
    EXPECT_EQ(g[1].re, 536870912);
    zvpsFIRFree32sc_16sc(c);
    // Their one allocation failing leaves nothing held and *ppState alone.
    zvp::test::alloc::reset(1);
    ZvpsFIRState32s_16s* q = nullptr;
    EXPECT_EQ(zvpsFIRInitAlloc32s_16s32f(&q, rows[0].taps.data(), 3, nullptr), zvpStsMemAllocErr);
    EXPECT_EQ(q, nullptr);
    zvp::test::alloc::reset(1);
    c = nullptr;
    EXPECT_EQ(zvpsFIRInitAlloc32sc_16sc32fc(&c, ct, 2, nullptr), zvpStsMemAllocErr);
    EXPECT_EQ(c, nullptr);
    EXPECT_EQ(zvp::test::alloc::live, 0);
    zvp::test::alloc::reset();
}

// Ties and saturation of the integer kinds against hand-worked exact values:
// taps {3, 1} with taps factor 1 on x = 1, 2, -1, -3, 0 give the sums
// R = 3, 7, -1, -10, -3, halved: 1.5, 3.5, -0.5, -5, -1.5.
TEST(FirState, IntegerTiesAndSaturation) {
    struct Row {
        int sf;
        std::vector<short> want;
    };
    const Row rows[] = {
        {0, {2, 4, 0, -5, -2}},                                // ties to even
        {1, {1, 2, 0, -2, -1}},                                // 0.75 1.75 -0.25 -2.5 -0.75
        {-16, {32767, 32767, -32768, -32768, -32768}},         // R * 2^15 saturates
        {3000, {0, 0, 0, 0, 0}},                               // far below one half
    };
    const short taps16[2] = {3, 1};
    const int taps32[2] = {3, 1};
    const std::vector<short> x{1, 2, -1, -3, 0};
    for (const Row& r : rows) {
        ZvpsFIRState_16s* a = nullptr;
        ZvpsFIRState32s_16s* b = nullptr;
        ASSERT_EQ(zvpsFIRInitAlloc_16s(&a, taps16, 2, 1, nullptr), zvpStsNoErr);
        ASSERT_EQ(zvpsFIRInitAlloc32s_16s(&b, taps32, 2, 1, nullptr), zvpStsNoErr);
        std::vector<short> ya(5), yb(x);
        ASSERT_EQ(zvpsFIR_16s_Sfs(x.data(), ya.data(), 5, a, r.sf), zvpStsNoErr);
        ASSERT_EQ(zvpsFIR32s_16s_ISfs(yb.data(), 5, b, r.sf), zvpStsNoErr);
        EXPECT_EQ(ya, r.want) << "sf " << r.sf;
        EXPECT_EQ(yb, r.want) << "sf " << r.sf;
        zvpsFIRFree_16s(a);
        zvpsFIRFree32s_16s(b);
    }
}

// Integer results do not depend on the caller's rounding mode or flushing:
// float taps with 16s data over both methods, every rounding-control value.
TEST(FirState, IntegerResultsIgnoreTheCallersFloatState) {
    std::mt19937 g(5);
    std::vector<float> taps(80);
    for (auto& t : taps) t = std::uniform_real_distribution<float>(-1, 1)(g) * 1e-3f;
    std::vector<short> x(1500);
    for (auto& v : x) v = short(std::uniform_int_distribution<int>(-32768, 32767)(g));
    std::vector<short> want;
    for (unsigned csr : {0x1f80u, 0x3f80u | 0x8040u, 0x5f80u | 0x8040u, 0x7f80u}) {
        ZvpsFIRState32f_16s* s = nullptr;
        ASSERT_EQ(zvpsFIRInitAlloc32f_16s(&s, taps.data(), 80, nullptr), zvpStsNoErr);
        std::vector<short> y(x.size());
        const unsigned saved = _mm_getcsr();
        _mm_setcsr(csr);
        const ZvpStatus st1 = zvpsFIR32f_16s_Sfs(x.data(), y.data(), 1000, s, -3);
        const ZvpStatus st2 = zvpsFIR32f_16s_Sfs(x.data() + 1000, y.data() + 1000, 500, s, -3);
        _mm_setcsr(saved);
        ASSERT_EQ(st1, zvpStsNoErr);
        ASSERT_EQ(st2, zvpStsNoErr);
        if (want.empty()) want = y;
        EXPECT_EQ(y, want) << std::hex << csr;
        zvpsFIRFree32f_16s(s);
    }
}

// Stream and multi-rate records: FIROne and the accessors refuse them, Free
// and FIR take them; a record carrying the multi-rate tag reaches the
// multi-rate dispatch, which refuses it for now.
TEST(FirState, StreamAndMultiRateTags) {
    const std::vector<float> taps{0.5f, 0.25f, 0.125f};
    int bytes = 0;
    ASSERT_EQ(zvpsFIRStreamGetStateSize_32f(3, &bytes), zvpStsNoErr);
    std::vector<Zvp8u> mem(bytes);
    ZvpsFIRState_32f* s = nullptr;
    EXPECT_EQ(zvpsFIRStreamInit_32f(&s, taps.data(), 3, nullptr, ZvpRoundMode(3), mem.data()),
              zvpStsRoundModeNotSupportedErr);
    EXPECT_EQ(zvpsFIRStreamInit_32f(&s, taps.data(), 0, nullptr, ZvpRoundMode(3), mem.data()), zvpStsFIRLenErr);
    ASSERT_EQ(zvpsFIRStreamInit_32f(&s, taps.data(), 3, nullptr, zvpRndZero, mem.data()), zvpStsNoErr);
    float y = 7, t[3];
    EXPECT_EQ(zvpsFIROne_32f(1.0f, &y, s), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsFIRGetTaps_32f(s, t), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsFIRSetDlyLine_32f(s, nullptr), zvpStsContextMatchErr);
    EXPECT_EQ(y, 7);
    const float x[4] = {1, 0, 0, 2};
    float out[4];
    ASSERT_EQ(zvpsFIR_32f(x, out, 4, s), zvpStsNoErr);
    EXPECT_EQ(std::vector<float>(out, out + 4), (std::vector<float>{0.5f, 0.25f, 0.125f, 1.0f}));
    EXPECT_EQ(zvpsFIRFree_32f(s), zvpStsNoErr);

    // Forged multi-rate tag on a single-rate record.
    ZvpsFIRState_32f* f = nullptr;
    ASSERT_EQ(zvpsFIRInitAlloc_32f(&f, taps.data(), 3, nullptr), zvpStsNoErr);
    std::int32_t& tag = *reinterpret_cast<std::int32_t*>(f);
    const std::int32_t keep = tag;
    EXPECT_EQ(keep, 0x46493031);
    tag = 0x46493033;
    EXPECT_EQ(zvpsFIR_32f(x, out, 4, f), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsFIRSetTaps_32f(taps.data(), f), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsFIROne_32f(1.0f, &y, f), zvpStsContextMatchErr);
    tag = keep;
    EXPECT_EQ(zvpsFIRFree_32f(f), zvpStsNoErr);
}

// The 16s stream form rounds by its mode: taps {1, 1} with factor 2 give
// (x[n] + x[n-1]) / 4, here 0.5, 0.5, 1.5, -0.5, -0.5, -1.5, -0.75.
TEST(FirState, Stream16sRoundsByItsMode) {
    const short taps[2] = {1, 1};
    const std::vector<short> x{2, 0, 6, -8, 6, -12, 9};
    struct Row {
        ZvpRoundMode mode;
        std::vector<short> want;
    };
    const Row rows[] = {{zvpRndZero, {0, 0, 1, 0, 0, -1, 0}},
                        {zvpRndNear, {0, 0, 2, 0, 0, -2, -1}},
                        {zvpRndFinancial, {1, 1, 2, -1, -1, -2, -1}}};
    for (const Row& r : rows) {
        int bytes = 0;
        ASSERT_EQ(zvpsFIRStreamGetStateSize_16s(2, &bytes), zvpStsNoErr);
        zvp::test::GuardedBuffer buf(bytes, 8);
        ZvpsFIRState_16s* s = nullptr;
        ASSERT_EQ(zvpsFIRStreamInit_16s(&s, taps, 2, 2, nullptr, r.mode, buf.data()), zvpStsNoErr);
        std::vector<short> y(x.size());
        ASSERT_EQ(zvpsFIR_16s_Sfs(x.data(), y.data(), 3, s, 0), zvpStsNoErr);
        ASSERT_EQ(zvpsFIR_16s_ISfs(y.data() + 3, 0, s, 0), zvpStsSizeErr);
        std::copy(x.begin() + 3, x.end(), y.begin() + 3);
        ASSERT_EQ(zvpsFIR_16s_ISfs(y.data() + 3, 4, s, 0), zvpStsNoErr);
        EXPECT_EQ(y, r.want) << "mode " << r.mode;
        short o = 0;
        EXPECT_EQ(zvpsFIROne_16s_Sfs(1, &o, s, 0), zvpStsContextMatchErr);
        EXPECT_EQ(zvpsFIRFree_16s(s), zvpStsNoErr);
        EXPECT_TRUE(buf.guardsIntact());
    }
}

// Multi-rate stream: up-sample, filter, down-sample in long double, against
// the polyphase filter over calls of varying cycle counts.
TEST(FirState, MultiRateStreamMatchesUpFilterDown) {
    struct Row {
        int L, U, up, D, dn;
    };
    const Row rows[] = {{8, 1, 0, 2, 1}, {8, 3, 2, 1, 0}, {21, 3, 1, 2, 1}, {5, 7, 6, 3, 0},
                        {40, 2, 0, 5, 4}, {3, 4, 1, 4, 3}, {64, 1, 0, 1, 0}};
    const int calls[] = {1, 4, 2, 9};
    for (const Row& r : rows) {
        std::mt19937 g(r.L * 7 + r.U);
        std::uniform_real_distribution<float> u(-1, 1);
        std::vector<float> taps(r.L);
        for (auto& t : taps) t = u(g);
        const int P = (r.L + r.U - 1) / r.U;
        std::vector<float> dly(P);
        for (auto& d : dly) d = u(g);
        int cycles = 0;
        for (int c : calls) cycles += c;
        std::vector<float> x(cycles * r.D);
        for (auto& v : x) v = u(g);
        int bytes = 0;
        ASSERT_EQ(zvpsFIRMRStreamGetStateSize_32f(r.L, r.U, r.D, &bytes), zvpStsNoErr);
        zvp::test::GuardedBuffer buf(bytes, 4);
        ZvpsFIRState_32f* s = nullptr;
        ASSERT_EQ(zvpsFIRMRStreamInit_32f(&s, taps.data(), r.L, r.U, r.up, r.D, r.dn, dly.data(), zvpRndNear,
                                          buf.data()),
                  zvpStsNoErr);
        std::vector<float> y(cycles * r.U);
        int ci = 0, co = 0;
        for (int c : calls) {
            ASSERT_EQ(zvpsFIR_32f(x.data() + ci, y.data() + co, c, s), zvpStsNoErr);
            ci += c * r.D;
            co += c * r.U;
        }
        EXPECT_TRUE(buf.guardsIntact());
        // Up-sampled stream: input t (history t < 0) at position t U + up.
        auto in = [&](long t) -> LD { return t >= 0 ? x[t] : (t >= -P ? dly[P + t] : 0); };
        for (int i = 0; i < cycles * r.U; ++i) {
            const long m = long(i) * r.D + r.dn;
            LD ref = 0, mag = 0;
            for (int k = 0; k < r.L; ++k) {
                const long pos = m - k - r.up;
                if (((pos % r.U) + r.U) % r.U) continue;
                const long t = (pos - ((pos % r.U) + r.U) % r.U) / r.U;
                ref += LD(taps[k]) * in(t);
                mag += std::fabs(LD(taps[k]) * in(t));
            }
            // Summation of at most L products in single precision.
            ASSERT_LE(std::fabs(y[i] - ref), 0x1p-24L * (r.L + 2) * mag + 1e-30L) << "i=" << i << " L=" << r.L;
        }
        EXPECT_EQ(zvpsFIRFree_32f(s), zvpStsNoErr);
    }
    // Checks: factors, then phases, then the rounding mode.
    const float t1 = 1;
    Zvp8u b[256];
    ZvpsFIRState_32f* s = nullptr;
    EXPECT_EQ(zvpsFIRMRStreamInit_32f(&s, &t1, 1, 0, 0, 1, 0, nullptr, ZvpRoundMode(9), b), zvpStsFIRMRFactorErr);
    EXPECT_EQ(zvpsFIRMRStreamInit_32f(&s, &t1, 1, 2, 2, 1, 0, nullptr, ZvpRoundMode(9), b), zvpStsFIRMRPhaseErr);
    EXPECT_EQ(zvpsFIRMRStreamInit_32f(&s, &t1, 1, 2, 1, 3, -1, nullptr, ZvpRoundMode(9), b), zvpStsFIRMRPhaseErr);
    EXPECT_EQ(zvpsFIRMRStreamInit_32f(&s, &t1, 1, 2, 1, 3, 2, nullptr, ZvpRoundMode(9), b),
              zvpStsRoundModeNotSupportedErr);
    EXPECT_EQ(s, nullptr);
    int sz = 0;
    EXPECT_EQ(zvpsFIRMRStreamGetStateSize_32f(1, 1, 0, &sz), zvpStsFIRMRFactorErr);
}

}  // namespace

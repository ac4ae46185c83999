// Cross- and auto-correlation: every method and the per-type thresholds
// against the long-double oracle (the allocation count tells which method
// ran), zero runs without allocating, normalisation, the exact 16-bit forms,
// buffer sizes re-derived from the FFT size queries; and, for both families,
// allocation failure and the check orders.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <vector>

#include "alloc_count.h"
#include "conv_oracle.h"

namespace {

using namespace zvp::test::conv;
namespace alloc = zvp::test::alloc;

template <class E>
struct Fns;
#define ZVP_CORR_FNS(E, T, DT, CROSS, AUTO)                                                      \
    template <>                                                                                  \
    struct Fns<E> {                                                                              \
        static constexpr auto cross = zvpsCrossCorr_##T;                                         \
        static constexpr auto norm = zvpsCrossCorrNorm_##T;                                      \
        static constexpr decltype(&zvpsAutoCorr_##T) autos[3] = {zvpsAutoCorr_##T, zvpsAutoCorr_NormA_##T, \
                                                                 zvpsAutoCorr_NormB_##T};        \
        static constexpr auto autoNorm = zvpsAutoCorrNorm_##T;                                   \
        static constexpr ZvpDataType dt = DT;                                                    \
        static constexpr int crossThr = CROSS, autoThr = AUTO;                                   \
    };
ZVP_CORR_FNS(float, 32f, zvp32f, 383, 856)
ZVP_CORR_FNS(double, 64f, zvp64f, 511, 856)
ZVP_CORR_FNS(Zvp32fc, 32fc, zvp32fc, 255, 152)
ZVP_CORR_FNS(Zvp64fc, 64fc, zvp64fc, 511, 368)
#undef ZVP_CORR_FNS

// Divisor of each normalisation (second selector byte) given the number of
// products at the lag and Lmin.
long double divisor(int norm, long double terms, long double lmin) { return norm == 1 ? lmin : norm == 2 ? terms : 1; }

struct Case {
    int n1, n2, dstLen, lowLag;
    bool fft;  // CrossCorr takes the FFT
};

// Per type: equal lengths (the value is D) and 700 x 1000, where it is 0.7 D
// and truncation, not rounding, decides, each on both sides of the
// threshold; swapped and plain overlap-save; the far-lag single transform;
// small shapes partly outside the overlap.
template <class E>
std::vector<Case> crossCases() {
    const int t = Fns<E>::crossThr;
    int dd = (t + 1) * 10 / 7 + 2;  // the largest D with floor(0.7 D) <= t
    while ((long long)(700.0f * float(dd) / 1000.0f) > t) --dd;
    const bool swapFft = (long long)(400.0f * 3399.0f / 3000.0f) > t;
    return {{600, 600, t, -100, false},       {600, 600, t + 1, -100, true},     {700, 1000, dd, -300, false},
            {700, 1000, dd + 1, -300, true},  {3000, 400, 3399, -2999, swapFft}, {400, 3000, 3399, -399, swapFft},
            {1000, 3000, 1999, 1001, true},   {1, 1, 3, -1, false},              {5, 200, 30, -40, false},
            {200, 5, 30, -40, false}};
}

template <class E>
void runCross() {
    for (const Case& c : crossCases<E>()) {
        const auto a = randomVec<E>(c.n1, 3 + c.n1), b = randomVec<E>(c.n2, 7 + c.n2);
        const auto refs = oracle(a, b, c.lowLag, c.dstLen, false);
        std::vector<E> y(c.dstLen, fill<E>(-3));
        alloc::reset();
        ASSERT_EQ(Fns<E>::cross(a.data(), c.n1, b.data(), c.n2, y.data(), c.dstLen, c.lowLag), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, c.fft ? 1 : 0) << c.n1 << "x" << c.n2 << " D " << c.dstLen;
        EXPECT_EQ(alloc::live, 0);
        expectNear(a, b, y, refs, noDiv, "CrossCorr");
        // The buffered form under each selector and normalisation, in a
        // buffer of exactly the reported size at an odd address.
        for (int alg : {0, 1, 2, 0x101, 0x202}) {
            int bytes = -1;
            ASSERT_EQ(zvpsCrossCorrNormGetBufferSize(c.n1, c.n2, c.dstLen, c.lowLag, Fns<E>::dt, alg, &bytes),
                      zvpStsNoErr);
            if (alg == 0) {
                EXPECT_EQ(bytes == 0, !c.fft);
            }
            std::vector<Zvp8u> buf(bytes + 65, 0x5A);
            std::vector<E> z(c.dstLen, fill<E>(-3));
            alloc::reset();
            ASSERT_EQ(Fns<E>::norm(a.data(), c.n1, b.data(), c.n2, z.data(), c.dstLen, c.lowLag, alg,
                                   bytes ? buf.data() + 1 : nullptr),
                      zvpStsNoErr);
            EXPECT_EQ(alloc::calls, 0);
            EXPECT_EQ(std::vector<Zvp8u>(buf.end() - 64, buf.end()), std::vector<Zvp8u>(64, 0x5A));
            const long double lmin = std::min(c.n1, c.n2);
            expectNear(a, b, z, refs, [&](long double t) { return divisor(alg >> 8, t, lmin); }, "CrossCorrNorm");
        }
    }
}
TEST(CrossCorr, MethodsAndThresholds32f) { runCross<float>(); }
TEST(CrossCorr, MethodsAndThresholds64f) { runCross<double>(); }
TEST(CrossCorr, MethodsAndThresholds32fc) { runCross<Zvp32fc>(); }
TEST(CrossCorr, MethodsAndThresholds64fc) { runCross<Zvp64fc>(); }

// AutoCorr: m = min(srcLen, dstLen) on both sides of the type's threshold,
// zeros past srcLen, NormA / NormB (whose divisor array is one more
// allocation), and the buffered form under each selector. 3000 samples: the
// direct kernel's path for taps too long for its padded copy.
template <class E>
void runAuto() {
    const int t = Fns<E>::autoThr;
    struct C { int n, dst; bool fft; };
    for (const C& c : {C{t - 1, t - 1, false}, C{t, t, true}, C{t + 40, t - 1, false}, C{t - 1, t + 50, false},
                       C{1, 3, false}, C{t + 9, t + 9, true}, C{3000, t - 1, false}}) {
        const auto a = randomVec<E>(c.n, c.n);
        const auto refs = oracle(a, a, 0, c.dst, false);
        for (int norm = 0; norm < 3; ++norm) {
            std::vector<E> y(c.dst, fill<E>(-3));
            alloc::reset();
            ASSERT_EQ(Fns<E>::autos[norm](a.data(), c.n, y.data(), c.dst), zvpStsNoErr);
            EXPECT_EQ(alloc::calls, (c.fft ? 1 : 0) + (norm == 2 ? 1 : 0)) << c.n;
            EXPECT_EQ(alloc::live, 0);
            expectNear(a, a, y, refs, [&](long double tm) { return divisor(norm, tm, c.n); }, "AutoCorr");
        }
        for (int alg : {0, 1, 2, 0x100, 0x202}) {
            int bytes = -1;
            ASSERT_EQ(zvpsAutoCorrNormGetBufferSize(c.n, c.dst, Fns<E>::dt, alg, &bytes), zvpStsNoErr);
            std::vector<Zvp8u> buf(bytes + 65, 0x5A);
            std::vector<E> y(c.dst, fill<E>(-3));
            alloc::reset();
            ASSERT_EQ(Fns<E>::autoNorm(a.data(), c.n, y.data(), c.dst, alg, buf.data() + 1), zvpStsNoErr);
            EXPECT_EQ(alloc::calls, 0);
            EXPECT_EQ(std::vector<Zvp8u>(buf.end() - 64, buf.end()), std::vector<Zvp8u>(64, 0x5A));
            expectNear(a, a, y, refs, [&](long double tm) { return divisor(alg >> 8, tm, c.n); }, "AutoCorrNorm");
        }
    }
}
TEST(AutoCorr, ThresholdsAndNormalisation32f) { runAuto<float>(); }
TEST(AutoCorr, ThresholdsAndNormalisation64f) { runAuto<double>(); }
TEST(AutoCorr, ThresholdsAndNormalisation32fc) { runAuto<Zvp32fc>(); }
TEST(AutoCorr, ThresholdsAndNormalisation64fc) { runAuto<Zvp64fc>(); }

// Lags wholly outside the overlap: zeros and success without allocating,
// far above the FFT threshold; partly outside: exact zeros around the run.
TEST(CrossCorr, NonOverlappingLagsAreZerosWithoutAllocating) {
    const auto a = randomVec<float>(2000, 1), b = randomVec<float>(3000, 2);
    const std::vector<Zvp16s> s(3000, -32768);
    for (int lowLag : {-2000 - 4000 + 1, 3000, 90000, -2147483647}) {
        std::vector<float> y(4000, 9);
        std::vector<Zvp16s> ys(4000, 9);
        std::vector<Zvp64s> yl(4000, 9);
        alloc::reset(1);
        EXPECT_EQ(zvpsCrossCorr_32f(a.data(), 2000, b.data(), 3000, y.data(), 4000, lowLag), zvpStsNoErr);
        EXPECT_EQ(zvpsCrossCorr_16s_Sfs(s.data(), 2000, s.data(), 3000, ys.data(), 4000, lowLag, 0), zvpStsNoErr);
        EXPECT_EQ(zvpsCrossCorr_16s64s(s.data(), 2000, s.data(), 3000, yl.data(), 4000, lowLag), zvpStsNoErr);
        EXPECT_EQ(zvpsCrossCorrNorm_32f(a.data(), 2000, b.data(), 3000, y.data(), 4000, lowLag, 2, nullptr),
                  zvpStsNoErr);
        EXPECT_EQ(alloc::calls, 0);
        EXPECT_EQ(y, std::vector<float>(4000, 0));
        EXPECT_EQ(ys, std::vector<Zvp16s>(4000, 0));
        EXPECT_EQ(yl, std::vector<Zvp64s>(4000, 0));
    }
    alloc::reset();
    std::vector<float> y(6000, 9);
    ASSERT_EQ(zvpsCrossCorr_32f(a.data(), 2000, b.data(), 3000, y.data(), 6000, -2500), zvpStsNoErr);
    expectNear(a, b, y, oracle(a, b, -2500, 6000, false), noDiv, "partly outside");
}

// 16s64s is exact: full-scale values whose sums pass 2^32, every lag.
TEST(CrossCorr, Exact16s64s) {
    std::mt19937 g(9);
    std::uniform_int_distribution<int> d(-32768, 32767);
    for (int mode = 0; mode < 3; ++mode) {
        const int n1 = 3000, n2 = mode == 2 ? 500 : 2500, low = -n1 - 2, len = n1 + n2 + 4;
        std::vector<Zvp16s> a(n1), b(n2);
        for (auto& v : a) v = Zvp16s(mode == 0 ? -32768 : d(g));
        for (auto& v : b) v = Zvp16s(mode == 0 ? -32768 : d(g));
        std::vector<Zvp64s> y(len, 1);
        alloc::reset();
        ASSERT_EQ(zvpsCrossCorr_16s64s(a.data(), n1, b.data(), n2, y.data(), len, low), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, 0);
        for (int n = 0; n < len; n += (mode == 0 ? 1 : 7)) {
            long long r = 0;
            for (long long k = std::max(0, -(low + n)); k < n1 && k + low + n < n2; ++k) r += (long long)a[k] * b[k + low + n];
            ASSERT_EQ(y[n], r) << "mode " << mode << " n " << n;
        }
    }
}

// 16s_Sfs through single precision: exact where the sums are (direct, small
// values), ties to even and saturation; the FFT path within one unit.
TEST(Corr16s, ScaledMatchesExactIntegers) {
    std::mt19937 g(4);
    struct C { int n1, n2, lim, sf, dst, low, tol; };
    for (const C& c : {C{20, 30, 100, 1, 49, -19, 0}, C{64, 64, 255, 3, 100, -50, 0}, C{9, 50, 32767, 0, 58, -8, 0},
                       C{40, 40, 7, -3, 79, -39, 0}, C{800, 900, 50, 6, 1600, -790, 1}}) {
        std::uniform_int_distribution<int> d(-c.lim, c.lim);
        std::vector<Zvp16s> a(c.n1), b(c.n2), y(c.dst), ya(c.n1);
        for (auto& v : a) v = Zvp16s(d(g));
        for (auto& v : b) v = Zvp16s(d(g));
        ASSERT_EQ(zvpsCrossCorr_16s_Sfs(a.data(), c.n1, b.data(), c.n2, y.data(), c.dst, c.low, c.sf), zvpStsNoErr);
        ASSERT_EQ(zvpsAutoCorr_16s_Sfs(a.data(), c.n1, ya.data(), c.n1, c.sf), zvpStsNoErr);
        for (int n = 0; n < c.dst; ++n) {
            long long r = 0, ra = 0;
            for (int k = 0; k < c.n1; ++k) {
                const long long j = (long long)k + c.low + n;
                if (j >= 0 && j < c.n2) r += (long long)a[k] * b[j];
                if (k + n < c.n1) ra += (long long)a[k] * a[k + n];
            }
            if (c.lim == 32767 && std::fabs(std::ldexp(double(r), -c.sf)) < 32768) continue;  // rounded products
            ASSERT_NEAR(y[n], scaleExact(r, c.sf), c.tol) << c.n1 << " n " << n;
            if (n < c.n1 && c.lim != 32767) {
                ASSERT_NEAR(ya[n], scaleExact(ra, c.sf), c.tol);
            }
        }
    }
}

// Size queries re-derived from the FFT size queries.
TEST(CorrBuffers, SizeFormulas) {
    for (ZvpDataType dt : {zvp32f, zvp64f, zvp32fc, zvp64fc}) {
        int got = -1;
        // n1 n2 dst lag alg -> order (0: direct, size 0); trimmed lags count.
        for (auto [n1, n2, dst, lag, alg, k] :
             {std::array<int, 6>{100, 1000, 1099, -99, 2, 9}, {1000, 100, 50, 0, 2, 9}, {300, 500, 799, -299, 2, 10},
              {300, 500, 799, -299, 1, 0}, {10, 10, 5, 10, 2, 0}, {10, 10, 5, -30, 2, 0}, {3, 3, 1, 0, 0, 0},
              {1, 1, 1, 0, 0x201, 0}, {1, 1, 1, 0, 0x102, 1}}) {
            ASSERT_EQ(zvpsCrossCorrNormGetBufferSize(n1, n2, dst, lag, dt, alg, &got), zvpStsNoErr);
            EXPECT_EQ(got, k ? fftBufferBytes(dt, k, 2) : 0) << dt << " " << n1 << "x" << n2 << " alg " << alg;
        }
        for (auto [n, dst, alg, k] : {std::array<int, 4>{1000, 10, 2, 11}, {855, 900, 0, 0}, {856, 856, 0, 11},
                                      {5000, 855, 0, 0}, {3, 3, 0x102, 3}, {900, 900, 1, 0}}) {
            ASSERT_EQ(zvpsAutoCorrNormGetBufferSize(n, dst, dt, alg, &got), zvpStsNoErr);
            EXPECT_EQ(got, k ? fftBufferBytes(dt, k, 1) : 64) << dt << " " << n;
        }
    }
}

// Every allocation of each call fails in turn: -9, nothing held, and only
// what may be written is: the zero runs, or, when NormB's divisor array is
// the one that fails, the plain result (from `plain`).
TEST(FilterAlloc, FailureAtEveryCall) {
    const auto fa = randomVec<float>(2000, 1), fb = randomVec<float>(3000, 2);
    std::vector<Zvp16s> sa(2000), sb(3000);
    for (int i = 0; i < 3000; ++i) sb[i] = Zvp16s(i * 91 % 3001 - 1500), sa[i % 2000] = Zvp16s(i * 37 % 2001 - 1000);
    using Call = std::function<ZvpStatus(void*)>;
    struct Row {
        const char* name;
        int len, allocs, bytes;  // bytes: of one output element
        Call call, plain;
        std::function<bool(int)> zeroRun;
    };
    auto none = [](int) { return false; };
    auto lags = [](int n) { return n - 2100 <= -2000 || n - 2100 >= 3000; };
    auto past = [](int n) { return n >= 1000; };
    const Row rows[] = {
        {"Conv_32f", 1099, 1, 4, [&](void* d) { return zvpsConv_32f(fa.data(), 300, fb.data(), 800, (float*)d); }, nullptr, none},
        {"Conv_16s", 1099, 2, 2, [&](void* d) { return zvpsConv_16s_Sfs(sa.data(), 300, sb.data(), 800, (Zvp16s*)d, 4); }, nullptr, none},
        {"CrossCorr_32f", 5200, 1, 4, [&](void* d) { return zvpsCrossCorr_32f(fa.data(), 2000, fb.data(), 3000, (float*)d, 5200, -2100); }, nullptr, lags},
        {"CrossCorr_16s", 5200, 2, 2, [&](void* d) { return zvpsCrossCorr_16s_Sfs(sa.data(), 2000, sb.data(), 3000, (Zvp16s*)d, 5200, -2100, 8); }, nullptr, lags},
        {"AutoCorr_NormB_32f", 1100, 2, 4, [&](void* d) { return zvpsAutoCorr_NormB_32f(fa.data(), 1000, (float*)d, 1100); },
         [&](void* d) { return zvpsAutoCorr_32f(fa.data(), 1000, (float*)d, 1100); }, past},
        {"AutoCorr_NormB_16s", 900, 3, 2, [&](void* d) { return zvpsAutoCorr_NormB_16s_Sfs(sa.data(), 900, (Zvp16s*)d, 900, 10); },
         [&](void* d) { return zvpsAutoCorr_16s_Sfs(sa.data(), 900, (Zvp16s*)d, 900, 10); }, none},
    };
    const Zvp8u zero[4] = {};
    for (const Row& r : rows) {
        std::vector<Zvp8u> plain(r.len * r.bytes), y(plain.size()), nine(plain.size());
        for (int n = 0; n < r.len; ++n) r.bytes == 4 ? void(((float*)nine.data())[n] = 9) : void(((Zvp16s*)nine.data())[n] = 9);
        alloc::reset();
        ASSERT_EQ(r.call(y.data()), zvpStsNoErr) << r.name;
        ASSERT_EQ(alloc::calls, r.allocs) << r.name;
        if (r.plain) {
            ASSERT_EQ(r.plain(plain.data()), zvpStsNoErr);
        }
        for (int k = 1; k <= r.allocs; ++k) {
            y = nine;
            alloc::reset(k);
            EXPECT_EQ(r.call(y.data()), zvpStsMemAllocErr) << r.name << " k " << k;
            EXPECT_EQ(alloc::live, 0) << r.name;
            if (r.plain && k == r.allocs) {
                EXPECT_EQ(y, plain) << r.name;
                continue;
            }
            for (int n = 0; n < r.len; ++n)
                ASSERT_EQ(std::memcmp(&y[n * r.bytes], r.zeroRun(n) ? zero : &nine[n * r.bytes], r.bytes), 0)
                    << r.name << " k " << k << " n " << n;
        }
    }
    alloc::reset();
}

// Check order of every entry point (null pointers, then lengths, then the
// selector, then a buffer the FFT needs), with nothing written on error;
// an unknown normalisation is reported after the plain result is in place.
TEST(FilterChecks, OrderAndNothingWritten) {
    float a[4] = {1, 2, 3, 4}, y[8], plain[7];
    Zvp16s s[4] = {1, 2, 3, 4}, ys[8];
    Zvp64s yl[8];
    Zvp8u buf[64];
    int size = 77;
    std::memset(y, 0x7f, sizeof y), std::memset(ys, 0x7f, sizeof ys), std::memset(yl, 0x7f, sizeof yl);
    const std::pair<ZvpStatus, int> got[] = {
        {zvpsConv_32f(nullptr, 0, a, 4, y), -8},
        {zvpsConv_64f(nullptr, 4, nullptr, 4, nullptr), -8},
        {zvpsConv_16s_Sfs(s, 4, s, 0, ys, 0), -6},
        {zvpsConvolve_32f(a, 4, nullptr, 0, y, ZvpAlgType(9), buf), -8},
        {zvpsConvolve_32f(a, 0, a, 4, y, ZvpAlgType(9), buf), -6},
        {zvpsConvolve_64f(nullptr, 4, nullptr, 4, nullptr, ZvpAlgType(3), nullptr), -8},
        {zvpsConvolve_32f(a, 4, a, 4, y, ZvpAlgType(3), buf), -228},
        {zvpsConvolve_32f(a, 4, a, 4, y, ZvpAlgType(-1), buf), -228},
        {zvpsConvolve_32f(a, 4, a, 4, y, zvpAlgFFT, nullptr), -8},
        {zvpsConvBiased_32f(a, 4, a, 4, nullptr, 0, 0), -8},
        {zvpsConvBiased_32f(a, 4, a, 4, y, 0, 0), -6},
        {zvpsConvolveGetBufferSize(0, 4, ZvpDataType(1), ZvpAlgType(9), nullptr), -8},
        {zvpsConvolveGetBufferSize(0, 4, ZvpDataType(1), ZvpAlgType(9), &size), -6},
        {zvpsConvolveGetBufferSize(4, 4, ZvpDataType(1), ZvpAlgType(3), &size), -228},
        {zvpsCrossCorr_32f(a, 0, nullptr, 0, y, 0, 0), -8},
        {zvpsCrossCorr_32f(a, 4, a, 4, y, 0, 0), -6},
        {zvpsCrossCorr_16s_Sfs(s, 4, s, 0, ys, 8, 0, 0), -6},
        {zvpsCrossCorr_16s64s(s, 4, s, 4, nullptr, 8, 0), -8},
        {zvpsCrossCorrNorm_32f(a, 4, a, 4, nullptr, 0, 0, 0x303, nullptr), -8},
        {zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 0, 0, 0x303, nullptr), -6},
        {zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 8, -4, 3, nullptr), -228},
        {zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 8, -4, 2, nullptr), -8},
        {zvpsAutoCorr_NormB_32f(nullptr, 0, y, 8), -8},
        {zvpsAutoCorr_16s_Sfs(s, 0, ys, 8, 0), -6},
        {zvpsAutoCorrNorm_32f(a, 4, y, 8, 0x103, nullptr), -228},
        {zvpsAutoCorrNorm_32f(a, 4, y, 8, 2, nullptr), -8},
        {zvpsCrossCorrNormGetBufferSize(0, 4, 4, 0, ZvpDataType(1), 0x303, nullptr), -8},
        {zvpsCrossCorrNormGetBufferSize(0, 4, 4, 0, ZvpDataType(1), 0x303, &size), -6},
        {zvpsCrossCorrNormGetBufferSize(4, 4, 4, 0, ZvpDataType(1), 0x300, &size), -228},
        {zvpsCrossCorrNormGetBufferSize(4, 4, 4, 0, ZvpDataType(1), 3, &size), -228},
        {zvpsAutoCorrNormGetBufferSize(4, 0, ZvpDataType(1), 0x303, &size), -6},
        {zvpsAutoCorrNormGetBufferSize(4, 4, ZvpDataType(1), 0x300, &size), -228},
        {zvpsAutoCorrNormGetBufferSize(4, 4, ZvpDataType(1), 0x003, &size), -228},
    };
    for (std::size_t i = 0; i < std::size(got); ++i) EXPECT_EQ(int(got[i].first), got[i].second) << "case " << i;
    EXPECT_EQ(size, 77);
    for (const Zvp8u* p : {(const Zvp8u*)y, (const Zvp8u*)ys, (const Zvp8u*)yl})
        for (int i = 0; i < 16; ++i) ASSERT_EQ(p[i], 0x7f);
    // An unknown data type writes 0 to the size.
    for (int q = 0; q < 3; ++q) {
        size = 77;
        const ZvpStatus st = q == 0   ? zvpsConvolveGetBufferSize(4, 4, zvp32fc, zvpAlgAuto, &size)
                             : q == 1 ? zvpsCrossCorrNormGetBufferSize(4, 4, 4, 0, ZvpDataType(15), 0, &size)
                                      : zvpsAutoCorrNormGetBufferSize(4, 4, ZvpDataType(21), 0, &size);
        EXPECT_EQ(st, zvpStsDataTypeErr);
        EXPECT_EQ(size, 0);
    }
    ASSERT_EQ(zvpsCrossCorr_32f(a, 4, a, 4, plain, 7, -3), zvpStsNoErr);
    EXPECT_EQ(zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 7, -3, 0x300, nullptr), zvpStsAlgTypeErr);
    EXPECT_EQ(0, std::memcmp(plain, y, sizeof plain));
    ASSERT_EQ(zvpsAutoCorr_32f(a, 4, plain, 6), zvpStsNoErr);
    EXPECT_EQ(zvpsAutoCorrNorm_32f(a, 4, y, 6, 0x10001, nullptr), zvpStsAlgTypeErr);
    EXPECT_EQ(0, std::memcmp(plain, y, 6 * sizeof(float)));
}

}  // namespace

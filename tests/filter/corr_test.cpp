// Cross- and auto-correlation: every method and the per-type thresholds
// against a long-double oracle (the allocation count tells which method ran),
// zero runs without allocation, allocation failure, normalisation, the exact
// 16-bit forms, buffer sizes re-derived from the FFT size queries, check
// orders.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "alloc_count.h"
#include "conv_oracle.h"
#include "zvps.h"

namespace {

using namespace zvp::test::conv;
namespace alloc = zvp::test::alloc;

template <class E>
struct Fns;
#define ZVP_CORR_FNS(E, T, DT, CROSS, AUTO)                                                          \
    template <>                                                                                      \
    struct Fns<E> {                                                                                  \
        static constexpr auto cross = zvpsCrossCorr_##T;                                             \
        static constexpr auto norm = zvpsCrossCorrNorm_##T;                                          \
        static constexpr auto autoc = zvpsAutoCorr_##T;                                              \
        static constexpr auto autoA = zvpsAutoCorr_NormA_##T;                                        \
        static constexpr auto autoB = zvpsAutoCorr_NormB_##T;                                        \
        static constexpr auto autoNorm = zvpsAutoCorrNorm_##T;                                       \
        static constexpr ZvpDataType dt = DT;                                                        \
        static constexpr int crossThr = CROSS, autoThr = AUTO;                                       \
    };
ZVP_CORR_FNS(float, 32f, zvp32f, 383, 856)
ZVP_CORR_FNS(double, 64f, zvp64f, 511, 856)
ZVP_CORR_FNS(Zvp32fc, 32fc, zvp32fc, 255, 152)
ZVP_CORR_FNS(Zvp64fc, 64fc, zvp64fc, 511, 368)
#undef ZVP_CORR_FNS

template <class E>
E filler() {
    if constexpr (Info<E>::cplx) return E{-3, 4};
    else return E(-3);
}

template <class E>
bool isZero(const E& v) {
    return toC(v) == cld(0, 0);
}

template <class E>
std::vector<Ref> oracle(const std::vector<E>& a, const std::vector<E>& b, int lowLag, std::size_t n) {
    std::vector<Ref> r(n);
    for (std::size_t i = 0; i < n; ++i) r[i] = product(a, b, lowLag + (long long)i, false);
    return r;
}

// Checks out[n] = r[lowLag + n] (divided by div(lag, terms)), non-overlapping
// lags exactly zero.
template <class E, class D>
void expectCorr(const std::vector<E>& a, const std::vector<E>& b, const std::vector<E>& out, int lowLag, D div,
                const char* what, const std::vector<Ref>* refs = nullptr) {
    const long double np = norm2(a) * norm2(b);
    long long m = 1;
    while (m < 4 * (long long)(a.size() + b.size())) m *= 2;
    const std::vector<Ref> own = refs ? std::vector<Ref>() : oracle(a, b, lowLag, out.size());
    const std::vector<Ref>& rs = refs ? *refs : own;
    int bad = 0;
    for (std::size_t n = 0; n < out.size() && bad < 3; ++n) {
        const long long lag = lowLag + (long long)n;
        Ref r = rs[n];
        if (r.terms == 0) {
            if (!isZero(out[n])) ++bad, ADD_FAILURE() << what << " lag " << lag << " not exactly zero";
            continue;
        }
        const long double d = div(lag, r.terms);
        r.value /= d;
        r.absSum /= d;
        long double e = 0;
        if (!within(out[n], r, np / d, m, &e))
            ++bad, ADD_FAILURE() << what << " " << a.size() << "x" << b.size() << " lag " << lag << " err " << (double)e;
    }
}
auto noDiv = [](long long, long double) { return 1.0L; };

struct Case {
    int n1, n2, dstLen, lowLag;
};

// For each type, cases straddling its threshold: equal lengths (the value is
// D itself) and 700 x 1000, where the value is 0.7 D and truncation, not
// rounding, decides; then the swapped and plain overlap-save, the far-lag
// single transform and small shapes. Second: whether CrossCorr takes the FFT.
template <class E>
std::vector<std::pair<Case, bool>> crossCases() {
    const int t = Fns<E>::crossThr;
    int dd = (t + 1) * 10 / 7 + 2;  // the largest D with floor(0.7 D) <= t
    while ((long long)(700.0f * float(dd) / 1000.0f) > t) --dd;
    auto fft = [t](int lmin, int lmax, int d) { return (long long)(float(lmin) * float(d) / float(lmax)) > t; };
    return {
        {{600, 600, t, -100}, false},
        {{600, 600, t + 1, -100}, true},
        {{700, 1000, dd, -300}, false},
        {{700, 1000, dd + 1, -300}, true},
        {{3000, 400, 3399, -2999}, fft(400, 3000, 3399)},
        {{400, 3000, 3399, -399}, fft(400, 3000, 3399)},
        {{1000, 3000, 1999, 1001}, true},
        {{1, 1, 3, -1}, false},
        {{5, 200, 30, -40}, false},
        {{200, 5, 30, -40}, false},
    };
}

template <class E>
void runCross() {
    for (const auto& [c, fft] : crossCases<E>()) {
        const auto a = randomVec<E>(c.n1, 3 + c.n1), b = randomVec<E>(c.n2, 7 + c.n2);
        std::vector<E> y(c.dstLen, filler<E>());
        alloc::reset();
        ASSERT_EQ(Fns<E>::cross(a.data(), c.n1, b.data(), c.n2, y.data(), c.dstLen, c.lowLag), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, fft ? 1 : 0) << c.n1 << "x" << c.n2 << " D " << c.dstLen;
        EXPECT_EQ(alloc::live, 0);
        const auto refs = oracle(a, b, c.lowLag, y.size());
        expectCorr(a, b, y, c.lowLag, noDiv, "CrossCorr", &refs);
        // The buffered form under each selector and normalisation.
        for (int alg : {0, 1, 2, 0x101, 0x202}) {
            int bytes = -1;
            ASSERT_EQ(zvpsCrossCorrNormGetBufferSize(c.n1, c.n2, c.dstLen, c.lowLag, Fns<E>::dt, alg, &bytes),
                      zvpStsNoErr);
            if (alg == 0) {
                EXPECT_EQ(bytes == 0, !fft);
            }
            std::vector<Zvp8u> buf(bytes + 65, 0x5A);
            std::vector<E> z(c.dstLen, filler<E>());
            alloc::reset();
            ASSERT_EQ(Fns<E>::norm(a.data(), c.n1, b.data(), c.n2, z.data(), c.dstLen, c.lowLag, alg,
                                   bytes ? buf.data() + 1 : nullptr),
                      zvpStsNoErr);
            EXPECT_EQ(alloc::calls, 0);
            for (int i = 0; i < 64; ++i) ASSERT_EQ(buf[1 + bytes + i], 0x5A) << "buffer overrun";
            const long double lmin = std::min(c.n1, c.n2);
            if (alg >> 8 == 1)
                expectCorr(a, b, z, c.lowLag, [&](long long, long double) { return lmin; }, "NormA", &refs);
            else if (alg >> 8 == 2)
                expectCorr(a, b, z, c.lowLag, [](long long, long double t) { return t; }, "NormB", &refs);
            else
                expectCorr(a, b, z, c.lowLag, noDiv, "CrossCorrNorm", &refs);
        }
    }
}

TEST(CrossCorr, MethodsAndThresholds32f) { runCross<float>(); }
TEST(CrossCorr, MethodsAndThresholds64f) { runCross<double>(); }
TEST(CrossCorr, MethodsAndThresholds32fc) { runCross<Zvp32fc>(); }
TEST(CrossCorr, MethodsAndThresholds64fc) { runCross<Zvp64fc>(); }

// Lags wholly outside the overlap: zeros, success, no allocation, even at
// sizes far above the FFT threshold; partly outside: exact zeros around the
// computed run.
TEST(CrossCorr, NonOverlappingLagsAreZerosWithoutAllocating) {
    const auto a = randomVec<float>(2000, 1), b = randomVec<float>(3000, 2);
    const std::vector<Zvp16s> sa(2000, -32768), sb(3000, -32768);
    for (int lowLag : {-2000 - 4000 + 1, 3000, 90000, -2147483647}) {
        std::vector<float> y(4000, 9);
        std::vector<Zvp16s> ys(4000, 9);
        std::vector<Zvp64s> yl(4000, 9);
        alloc::reset(1);
        EXPECT_EQ(zvpsCrossCorr_32f(a.data(), 2000, b.data(), 3000, y.data(), 4000, lowLag), zvpStsNoErr);
        EXPECT_EQ(zvpsCrossCorr_16s_Sfs(sa.data(), 2000, sb.data(), 3000, ys.data(), 4000, lowLag, 0), zvpStsNoErr);
        EXPECT_EQ(zvpsCrossCorr_16s64s(sa.data(), 2000, sb.data(), 3000, yl.data(), 4000, lowLag), zvpStsNoErr);
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
    expectCorr(a, b, y, -2500, noDiv, "partly outside");
}

// Every allocation fails in turn: -9, nothing held, and only the zero runs
// written (lags -2100 .. -2000 and 3000 .. on).
TEST(CrossCorr, AllocationFailureAtEveryCall) {
    const auto a = randomVec<float>(2000, 1), b = randomVec<float>(3000, 2);
    std::vector<Zvp16s> sa(2000), sb(3000);
    for (int i = 0; i < 2000; ++i) sa[i] = Zvp16s(i * 37 % 2001 - 1000);
    for (int i = 0; i < 3000; ++i) sb[i] = Zvp16s(i * 91 % 3001 - 1500);
    const int low = -2100, len = 5200;
    auto isRun = [&](int n) { return low + n <= -2000 || low + n >= 3000; };
    for (int k = 1; k <= 2; ++k) {
        std::vector<float> y(len, 9);
        std::vector<Zvp16s> ys(len, 9);
        alloc::reset(k);
        const ZvpStatus s1 = zvpsCrossCorr_32f(a.data(), 2000, b.data(), 3000, y.data(), len, low);
        EXPECT_EQ(alloc::live, 0);
        alloc::reset(k);
        EXPECT_EQ(zvpsCrossCorr_16s_Sfs(sa.data(), 2000, sb.data(), 3000, ys.data(), len, low, 8), zvpStsMemAllocErr);
        EXPECT_EQ(alloc::live, 0);
        EXPECT_EQ(s1, k == 1 ? zvpStsMemAllocErr : zvpStsNoErr);
        for (int n = 0; n < len; ++n) {
            ASSERT_EQ(ys[n], isRun(n) ? 0 : 9) << n;
            if (k == 1) {
                ASSERT_EQ(y[n], isRun(n) ? 0.0f : 9.0f) << n;
            }
        }
    }
    alloc::reset();
}

// 16s64s is exact: full-scale values whose sums pass 2^32, every lag.
TEST(CrossCorr, Exact16s64s) {
    std::mt19937 g(9);
    std::uniform_int_distribution<int> d(-32768, 32767);
    for (int mode = 0; mode < 3; ++mode) {
        const int n1 = 3000, n2 = mode == 2 ? 500 : 2500;
        std::vector<Zvp16s> a(n1), b(n2);
        for (auto& v : a) v = Zvp16s(mode == 0 ? -32768 : d(g));
        for (auto& v : b) v = Zvp16s(mode == 0 ? -32768 : d(g));
        const int low = -n1 - 2, len = n1 + n2 + 4;
        std::vector<Zvp64s> y(len, 1);
        alloc::reset();
        ASSERT_EQ(zvpsCrossCorr_16s64s(a.data(), n1, b.data(), n2, y.data(), len, low), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, 0);
        for (int n = 0; n < len; n += (mode == 0 ? 1 : 7)) {
            long long r = 0;
            for (int k = 0; k < n1; ++k) {
                const long long j = (long long)k + low + n;
                if (j >= 0 && j < n2) r += (long long)a[k] * b[j];
            }
            ASSERT_EQ(y[n], r) << "mode " << mode << " n " << n;
        }
    }
}

long double roundEven(long double v) {
    const long double f = std::floor(v), fr = v - f;
    return fr > 0.5L ? f + 1 : fr < 0.5L ? f : (std::fmod(f, 2.0L) == 0 ? f : f + 1);
}
Zvp16s sat16(long double v) { return Zvp16s(std::max<long double>(-32768, std::min<long double>(32767, v))); }

// 16s_Sfs through single precision: exact where the sums are (direct, small
// values), with ties to even and saturation; the FFT path within one unit.
TEST(Corr16s, ScaledMatchesExactIntegers) {
    std::mt19937 g(4);
    struct C { int n1, n2, lim, sf, dst, low, tol; };
    const C cases[] = {{20, 30, 100, 1, 49, -19, 0},  {64, 64, 255, 3, 100, -50, 0}, {9, 50, 32767, 0, 58, -8, 0},
                       {40, 40, 7, -3, 79, -39, 0},   {800, 900, 50, 6, 1600, -790, 1}};
    for (const C& c : cases) {
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
                if (n < c.n1 && k + n < c.n1) ra += (long long)a[k] * a[k + n];
            }
            const long double v = std::ldexp((long double)r, -c.sf);
            if (c.lim == 32767 && std::fabs(v) < 32768) continue;  // products rounded in single precision
            ASSERT_NEAR(y[n], sat16(roundEven(v)), c.tol) << c.n1 << " n " << n;
            if (n < c.n1 && c.lim != 32767) {
                ASSERT_NEAR(ya[n], sat16(roundEven(std::ldexp((long double)ra, -c.sf))), c.tol);
            }
        }
    }
}

// AutoCorr thresholds (the allocation count tells the method), zeros past
// srcLen, NormA / NormB, and the buffered form under each selector.
template <class E>
void runAuto() {
    const int t = Fns<E>::autoThr;
    struct C { int n, dst; bool fft; };
    const C cases[] = {{t - 1, t - 1, false}, {t, t, true}, {t + 40, t - 1, false}, {t - 1, t + 50, false},
                       {1, 3, false},         {t + 9, t + 9, true}};
    for (const C& c : cases) {
        const auto a = randomVec<E>(c.n, c.n);
        const std::vector<E> b(a);
        const auto refs = oracle(a, b, 0, c.dst);
        auto check = [&](auto fn, int normKind, const char* what) {
            std::vector<E> y(c.dst, filler<E>());
            alloc::reset();
            ASSERT_EQ(fn(a.data(), c.n, y.data(), c.dst), zvpStsNoErr);
            EXPECT_EQ(alloc::calls, (c.fft ? 1 : 0) + (normKind == 2 ? 1 : 0)) << what << " " << c.n;
            EXPECT_EQ(alloc::live, 0);
            if (normKind == 0) expectCorr(a, b, y, 0, noDiv, what, &refs);
            if (normKind == 1)
                expectCorr(a, b, y, 0, [&](long long, long double) { return (long double)c.n; }, what, &refs);
            if (normKind == 2) expectCorr(a, b, y, 0, [](long long, long double t) { return t; }, what, &refs);
        };
        check(Fns<E>::autoc, 0, "AutoCorr");
        check(Fns<E>::autoA, 1, "AutoCorr_NormA");
        check(Fns<E>::autoB, 2, "AutoCorr_NormB");
        for (int alg : {0, 1, 2, 0x100, 0x202}) {
            int bytes = -1;
            ASSERT_EQ(zvpsAutoCorrNormGetBufferSize(c.n, c.dst, Fns<E>::dt, alg, &bytes), zvpStsNoErr);
            std::vector<Zvp8u> buf(bytes + 65, 0x5A);
            std::vector<E> y(c.dst, filler<E>());
            alloc::reset();
            ASSERT_EQ(Fns<E>::autoNorm(a.data(), c.n, y.data(), c.dst, alg, buf.data() + 1), zvpStsNoErr);
            EXPECT_EQ(alloc::calls, 0);
            for (int i = 0; i < 64; ++i) ASSERT_EQ(buf[1 + bytes + i], 0x5A) << "buffer overrun";
            if (alg >> 8 == 1)
                expectCorr(a, b, y, 0, [&](long long, long double) { return (long double)c.n; }, "NormA", &refs);
            else if (alg >> 8 == 2)
                expectCorr(a, b, y, 0, [](long long, long double t) { return t; }, "NormB", &refs);
            else
                expectCorr(a, b, y, 0, noDiv, "AutoCorrNorm", &refs);
        }
    }
}
TEST(AutoCorr, ThresholdsAndNormalisation32f) { runAuto<float>(); }
TEST(AutoCorr, ThresholdsAndNormalisation64f) { runAuto<double>(); }
TEST(AutoCorr, ThresholdsAndNormalisation32fc) { runAuto<Zvp32fc>(); }
TEST(AutoCorr, ThresholdsAndNormalisation64fc) { runAuto<Zvp64fc>(); }

// Allocation failure: the FFT block leaves only the zeros past srcLen; the
// NormB divisor array fails after the plain result is in place.
TEST(AutoCorr, AllocationFailure) {
    const auto a = randomVec<float>(1000, 5);
    std::vector<float> plain(1100);
    ASSERT_EQ(zvpsAutoCorr_32f(a.data(), 1000, plain.data(), 1100), zvpStsNoErr);
    std::vector<float> y(1100, 9);
    alloc::reset(1);
    EXPECT_EQ(zvpsAutoCorr_NormB_32f(a.data(), 1000, y.data(), 1100), zvpStsMemAllocErr);
    EXPECT_EQ(alloc::live, 0);
    for (int n = 0; n < 1100; ++n) ASSERT_EQ(y[n], n < 1000 ? 9.0f : 0.0f);
    alloc::reset(2);
    EXPECT_EQ(zvpsAutoCorr_NormB_32f(a.data(), 1000, y.data(), 1100), zvpStsMemAllocErr);
    EXPECT_EQ(alloc::live, 0);
    EXPECT_EQ(y, plain);
    std::vector<Zvp16s> s(900, 100), ys(900, 9), plain16(900);
    ASSERT_EQ(zvpsAutoCorr_16s_Sfs(s.data(), 900, plain16.data(), 900, 10), zvpStsNoErr);
    for (int k = 1; k <= 3; ++k) {
        std::fill(ys.begin(), ys.end(), Zvp16s(9));
        alloc::reset(k);
        EXPECT_EQ(zvpsAutoCorr_NormB_16s_Sfs(s.data(), 900, ys.data(), 900, 10), zvpStsMemAllocErr);
        EXPECT_EQ(alloc::live, 0);
        EXPECT_EQ(ys, k < 3 ? std::vector<Zvp16s>(900, 9) : plain16) << k;
    }
    alloc::reset();
}

// Size queries re-derived from the FFT size queries; order k as documented.
TEST(CorrBuffers, SizeFormulas) {
    auto a64 = [](long long v) { return (v + 63) / 64 * 64; };
    auto fftBytes = [&](ZvpDataType dt, int k, int arrays) {
        int s = 0, i = 0, w = 0;
        const int f = ZVP_FFT_DIV_INV_BY_N;
        long long elem = 0;
        switch (dt) {
        case zvp32f: zvpsFFTGetSize_R_32f(k, f, zvpAlgHintNone, &s, &i, &w); elem = 4; break;
        case zvp64f: zvpsFFTGetSize_R_64f(k, f, zvpAlgHintNone, &s, &i, &w); elem = 8; break;
        case zvp32fc: zvpsFFTGetSize_C_32fc(k, f, zvpAlgHintNone, &s, &i, &w); elem = 8; break;
        default: zvpsFFTGetSize_C_64fc(k, f, zvpAlgHintNone, &s, &i, &w); elem = 16; break;
        }
        return a64(s) + a64(i) + a64(w) + a64(arrays * elem << k) + 64;
    };
    for (ZvpDataType dt : {zvp32f, zvp64f, zvp32fc, zvp64fc}) {
        int got = -1;
        // n1 n2 dst lag alg -> order (0: direct, size 0)
        struct C { int n1, n2, dst, lag, alg, k; };
        const C cs[] = {{100, 1000, 1099, -99, 2, 9}, {1000, 100, 50, 0, 2, 9}, {300, 500, 799, -299, 2, 10},
                        {300, 500, 799, -299, 1, 0},  {10, 10, 5, 10, 2, 0},   {10, 10, 5, -30, 2, 0},
                        {3, 3, 1, 0, 0, 0},           {1, 1, 1, 0, 0x202, 1}};
        for (const C& c : cs) {
            ASSERT_EQ(zvpsCrossCorrNormGetBufferSize(c.n1, c.n2, c.dst, c.lag, dt, c.alg, &got), zvpStsNoErr);
            EXPECT_EQ(got, c.k ? fftBytes(dt, c.k, 2) : 0) << dt << " " << c.n1 << "x" << c.n2;
        }
        for (auto [n, dst, alg, k] : {std::array<int, 4>{1000, 10, 2, 11}, {855, 900, 0, 0}, {856, 856, 0, 11},
                                      {5000, 855, 0, 0}, {3, 3, 0x102, 3}, {900, 900, 1, 0}}) {
            ASSERT_EQ(zvpsAutoCorrNormGetBufferSize(n, dst, dt, alg, &got), zvpStsNoErr);
            EXPECT_EQ(got, k ? fftBytes(dt, k, 1) : 64) << dt << " " << n;
        }
    }
}

TEST(CorrChecks, OrderAndNothingWritten) {
    float a[4] = {1, 2, 3, 4}, y[8];
    Zvp16s s[4] = {1, 2, 3, 4}, ys[8];
    Zvp64s yl[8];
    int size = 77;
    std::memset(y, 0x7f, sizeof y);
    std::memset(ys, 0x7f, sizeof ys);
    std::memset(yl, 0x7f, sizeof yl);
    const ZvpStatus got[] = {
        zvpsCrossCorr_32f(a, 0, nullptr, 0, y, 0, 0),
        zvpsCrossCorr_32f(a, 4, a, 4, y, 0, 0),
        zvpsCrossCorr_16s_Sfs(s, 4, s, 0, ys, 8, 0, 0),
        zvpsCrossCorr_16s64s(s, 4, s, 4, nullptr, 8, 0),
        zvpsCrossCorrNorm_32f(a, 4, a, 4, nullptr, 0, 0, 0x303, nullptr),
        zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 0, 0, 0x303, nullptr),
        zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 8, -4, 3, nullptr),
        zvpsCrossCorrNorm_32f(a, 4, a, 4, y, 8, -4, 2, nullptr),
        zvpsAutoCorr_NormB_32f(nullptr, 0, y, 8),
        zvpsAutoCorr_16s_Sfs(s, 0, ys, 8, 0),
        zvpsAutoCorrNorm_32f(a, 4, y, 8, 0x103, nullptr),
        zvpsAutoCorrNorm_32f(a, 4, y, 8, 2, nullptr),
        zvpsCrossCorrNormGetBufferSize(0, 4, 4, 0, ZvpDataType(1), 0x303, nullptr),
        zvpsCrossCorrNormGetBufferSize(0, 4, 4, 0, ZvpDataType(1), 0x303, &size),
        zvpsCrossCorrNormGetBufferSize(4, 4, 4, 0, ZvpDataType(1), 0x300, &size),
        zvpsCrossCorrNormGetBufferSize(4, 4, 4, 0, ZvpDataType(1), 3, &size),
        zvpsAutoCorrNormGetBufferSize(4, 0, ZvpDataType(1), 0x303, &size),
        zvpsAutoCorrNormGetBufferSize(4, 4, ZvpDataType(1), 0x300, &size),
        zvpsAutoCorrNormGetBufferSize(4, 4, ZvpDataType(1), 0x003, &size),
    };
    const int want[] = {-8, -6, -6, -8, -8, -6, -228, -8, -8, -6, -228, -8, -8, -6, -228, -228, -6, -228, -228};
    for (std::size_t i = 0; i < std::size(want); ++i) EXPECT_EQ(int(got[i]), want[i]) << "case " << i;
    EXPECT_EQ(size, 77);
    float ref[8];
    Zvp16s refs[8];
    Zvp64s refl[8];
    std::memset(ref, 0x7f, sizeof ref);
    std::memset(refs, 0x7f, sizeof refs);
    std::memset(refl, 0x7f, sizeof refl);
    EXPECT_EQ(0, std::memcmp(y, ref, sizeof y));
    EXPECT_EQ(0, std::memcmp(ys, refs, sizeof ys));
    EXPECT_EQ(0, std::memcmp(yl, refl, sizeof yl));
    EXPECT_EQ(zvpsCrossCorrNormGetBufferSize(4, 4, 4, 0, ZvpDataType(15), 0, &size), zvpStsDataTypeErr);
    EXPECT_EQ(size, 0);
    // An unknown normalisation: -228 after the correlation, plain result in place.
    float plain[7], z[7];
    ASSERT_EQ(zvpsCrossCorr_32f(a, 4, a, 4, plain, 7, -3), zvpStsNoErr);
    EXPECT_EQ(zvpsCrossCorrNorm_32f(a, 4, a, 4, z, 7, -3, 0x300, nullptr), zvpStsAlgTypeErr);
    EXPECT_EQ(0, std::memcmp(plain, z, sizeof z));
    ASSERT_EQ(zvpsAutoCorr_32f(a, 4, plain, 6), zvpStsNoErr);
    EXPECT_EQ(zvpsAutoCorrNorm_32f(a, 4, z, 6, 0x10001, nullptr), zvpStsAlgTypeErr);
    EXPECT_EQ(0, std::memcmp(plain, z, 6 * sizeof(float)));
}

}  // namespace

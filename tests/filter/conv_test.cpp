// Convolution: every method and its boundaries against a long-double oracle,
// the buffer-size query against its own re-derivation from the FFT size
// query, allocation failure, the 16-bit scale rule against exact integers,
// biased and cyclic forms.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "alloc_count.h"
#include "conv_oracle.h"
#include "zvps.h"

namespace {

using namespace zvp::test::conv;
namespace alloc = zvp::test::alloc;

long long pow2AtLeast(long long n) {
    long long m = 1;
    while (m < n) m *= 2;
    return m;
}

template <class E>
void expectConv(const std::vector<E>& a, const std::vector<E>& b, const std::vector<E>& got, const char* what) {
    const long double np = norm2(a) * norm2(b);
    const long long m = pow2AtLeast(4 * (long long)(a.size() + b.size()));
    int bad = 0;
    for (std::size_t n = 0; n < got.size() && bad < 3; ++n) {
        long double e = 0;
        if (!within(got[n], product(a, b, (long long)n, true), np, m, &e)) {
            ++bad;
            ADD_FAILURE() << what << " n1=" << a.size() << " n2=" << b.size() << " out " << n << " err " << (double)e;
        }
    }
}

// The shapes straddle every method boundary: N 511/512, Lmin 63/64, and
// Lmax just under and at 3 Lmin. calls: allocations of Conv (0 direct, 1 FFT).
struct Shape {
    int n1, n2, calls;
};
const Shape kShapes[] = {
    {1, 1, 0},     {1, 7, 0},     {5, 3, 0},      {256, 256, 0},   {256, 257, 1},   {257, 256, 1},
    {63, 1000, 0}, {1000, 63, 0}, {64, 1000, 1},  {1000, 64, 1},   {150, 449, 1},   {150, 450, 1},
    {451, 150, 1}, {64, 448, 0},  {64, 449, 1},  {5000, 40, 0},  {4097, 70, 1},   {700, 700, 1},
};

template <class E, class F, class G>
void runShapes(F conv, G convolve, ZvpDataType dt) {
    for (const Shape& s : kShapes) {
        const auto a = randomVec<E>(s.n1, 11 + s.n1), b = randomVec<E>(s.n2, 29 + s.n2);
        std::vector<E> y(s.n1 + s.n2 - 1, E(-7));
        alloc::reset();
        ASSERT_EQ(conv(a.data(), s.n1, b.data(), s.n2, y.data()), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, s.calls) << s.n1 << "x" << s.n2;
        EXPECT_EQ(alloc::live, 0);
        const std::size_t convBytes = alloc::lastBytes;
        expectConv(a, b, y, "Conv");
        for (int alg = 0; alg <= 2; ++alg) {
            int bytes = -1;
            ASSERT_EQ(zvpsConvolveGetBufferSize(s.n1, s.n2, dt, ZvpAlgType(alg), &bytes), zvpStsNoErr);
            if (alg == 0 && s.calls == 1) {
                EXPECT_EQ(std::size_t(bytes), convBytes);
            }
            // A buffer of exactly the reported size, at an odd address.
            std::vector<Zvp8u> buf(bytes + 1 + 64, 0x5A);
            std::vector<E> z(y.size(), E(-7));
            alloc::reset();
            ASSERT_EQ(convolve(a.data(), s.n1, b.data(), s.n2, z.data(), ZvpAlgType(alg), buf.data() + 1), zvpStsNoErr);
            EXPECT_EQ(alloc::calls, 0);
            for (int i = 0; i < 64; ++i) ASSERT_EQ(buf[1 + bytes + i], 0x5A) << "buffer overrun";
            expectConv(a, b, z, alg == 1 ? "Convolve direct" : "Convolve");
            if (alg == 0) {
                EXPECT_EQ(0, std::memcmp(y.data(), z.data(), y.size() * sizeof(E)));
            }
        }
    }
}

TEST(Conv, MethodsAndBoundariesAgreeWithOracle32f) { runShapes<float>(zvpsConv_32f, zvpsConvolve_32f, zvp32f); }
TEST(Conv, MethodsAndBoundariesAgreeWithOracle64f) { runShapes<double>(zvpsConv_64f, zvpsConvolve_64f, zvp64f); }

// The size query re-derived from the real FFT size query.
TEST(Conv, BufferSizeFormula) {
    auto a64 = [](long long v) { return (v + 63) / 64 * 64; };
    struct Case { int n1, n2, alg, order; };  // order -1: direct
    const Case cases[] = {{256, 256, 0, -1}, {256, 257, 0, 9}, {64, 1000, 0, 8},  {63, 1000, 0, -1},
                          {150, 449, 0, 10}, {150, 450, 0, 10}, {300, 100, 2, 9}, {100, 299, 0, -1}, {10, 10, 2, 5},
                          {10, 10, 1, -1},   {1000, 1000, 1, -1}, {2, 1, 2, 2}};
    for (const Case& c : cases)
        for (ZvpDataType dt : {zvp32f, zvp64f}) {
            int got = -1;
            ASSERT_EQ(zvpsConvolveGetBufferSize(c.n1, c.n2, dt, ZvpAlgType(c.alg), &got), zvpStsNoErr);
            long long want = 64;
            if (c.order >= 0) {
                int s = 0, i = 0, w = 0;
                if (dt == zvp32f) zvpsFFTGetSize_R_32f(c.order, ZVP_FFT_DIV_INV_BY_N, zvpAlgHintNone, &s, &i, &w);
                else zvpsFFTGetSize_R_64f(c.order, ZVP_FFT_DIV_INV_BY_N, zvpAlgHintNone, &s, &i, &w);
                want = a64(s) + a64(i) + a64(w) + a64((1LL << c.order) * (dt == zvp32f ? 8 : 16)) + 64;
            }
            EXPECT_EQ(got, want) << c.n1 << "x" << c.n2 << " alg " << c.alg;
        }
}

TEST(Conv, ChecksInOrderWriteNothing) {
    float a[4] = {1, 2, 3, 4}, y[8];
    Zvp8u buf[64];
    int size = 77;
    std::memset(y, 0x7f, sizeof y);
    EXPECT_EQ(zvpsConv_32f(nullptr, 0, a, 4, y), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsConv_32f(a, 4, a, 0, y), zvpStsSizeErr);
    EXPECT_EQ(zvpsConvolve_32f(a, 4, nullptr, 0, y, ZvpAlgType(9), buf), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsConvolve_32f(a, 0, a, 4, y, ZvpAlgType(9), buf), zvpStsSizeErr);
    EXPECT_EQ(zvpsConvolve_32f(a, 4, a, 4, y, ZvpAlgType(3), buf), zvpStsAlgTypeErr);
    EXPECT_EQ(zvpsConvolve_32f(a, 4, a, 4, y, ZvpAlgType(-1), buf), zvpStsAlgTypeErr);
    EXPECT_EQ(zvpsConvolve_32f(a, 4, a, 4, y, zvpAlgFFT, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsConvBiased_32f(a, 4, a, 4, nullptr, 0, 0), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsConvBiased_32f(a, 4, a, 4, y, 0, 0), zvpStsSizeErr);
    EXPECT_EQ(zvpsConvolveGetBufferSize(0, 4, ZvpDataType(1), ZvpAlgType(9), nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsConvolveGetBufferSize(0, 4, ZvpDataType(1), ZvpAlgType(9), &size), zvpStsSizeErr);
    EXPECT_EQ(zvpsConvolveGetBufferSize(4, 4, ZvpDataType(1), ZvpAlgType(3), &size), zvpStsAlgTypeErr);
    EXPECT_EQ(size, 77);
    EXPECT_EQ(zvpsConvolveGetBufferSize(4, 4, zvp32fc, zvpAlgAuto, &size), zvpStsDataTypeErr);
    EXPECT_EQ(size, 0);
    float ref[8];
    std::memset(ref, 0x7f, sizeof ref);
    EXPECT_EQ(std::memcmp(ref, y, sizeof y), 0);
}

// Every allocation of the FFT path fails in turn: -9, nothing held, nothing
// written.
TEST(Conv, AllocationFailureAtEveryCall) {
    const auto a = randomVec<float>(300, 1), b = randomVec<float>(700, 2);
    const auto sa = std::vector<Zvp16s>(300, 3), sb = std::vector<Zvp16s>(700, -5);
    for (int k = 1;; ++k) {
        std::vector<float> y(999, 9.0f);
        std::vector<Zvp16s> ys(999, 9);
        alloc::reset(k);
        const ZvpStatus s1 = zvpsConv_32f(a.data(), 300, b.data(), 700, y.data());
        const int calls1 = alloc::calls;
        EXPECT_EQ(alloc::live, 0);
        alloc::reset(k);
        const ZvpStatus s2 = zvpsConv_16s_Sfs(sa.data(), 300, sb.data(), 700, ys.data(), 0);
        EXPECT_EQ(alloc::live, 0);
        if (k > calls1 && k > alloc::calls) break;
        if (k <= calls1) {
            EXPECT_EQ(s1, zvpStsMemAllocErr);
            EXPECT_EQ(y, std::vector<float>(999, 9.0f));
        }
        if (k <= alloc::calls) {
            EXPECT_EQ(s2, zvpStsMemAllocErr);
            EXPECT_EQ(ys, std::vector<Zvp16s>(999, 9));
        }
    }
    alloc::reset();
}

// 16-bit: exact integer convolution scaled by the rule, on shapes where the
// single-precision sums are exact (direct, |sum| < 2^24), plus saturation.
TEST(Conv, Scaled16sMatchesExactIntegers) {
    std::mt19937 g(5);
    struct Case { int n1, n2, lim, sf; };
    const Case cases[] = {{7, 5, 3, 1}, {40, 33, 60, 2}, {200, 300, 63, 3}, {20, 9, 127, -2},
                          {3, 3, 32767, 0}, {31, 17, 32767, 4}, {9, 60, 200, 40}, {4, 4, 1, -40}};
    for (const Case& c : cases) {
        std::uniform_int_distribution<int> d(-c.lim, c.lim);
        std::vector<Zvp16s> a(c.n1), b(c.n2), y(c.n1 + c.n2 - 1);
        for (auto& v : a) v = Zvp16s(d(g));
        for (auto& v : b) v = Zvp16s(d(g));
        if (c.lim == 32767) a[0] = b[0] = -32768;
        ASSERT_EQ(zvpsConv_16s_Sfs(a.data(), c.n1, b.data(), c.n2, y.data(), c.sf), zvpStsNoErr);
        for (int n = 0; n < (int)y.size(); ++n) {
            long long r = 0;
            for (int k = 0; k < c.n1; ++k)
                if (n - k >= 0 && n - k < c.n2) r += (long long)a[k] * b[n - k];
            // Exact rule: times 2^-sf, ties to even, saturate.
            long double v = std::ldexp((long double)r, -c.sf);
            long double f = std::floor(v), fr = v - f;
            long double q = fr > 0.5L ? f + 1 : fr < 0.5L ? f : (std::fmod(f, 2.0L) == 0 ? f : f + 1);
            q = std::max<long double>(-32768, std::min<long double>(32767, q));
            // Products of full-range values are rounded in single precision:
            // there only saturation is exact.
            if (c.lim == 32767 && std::fabs(v) < 32768) continue;
            ASSERT_EQ(y[n], (Zvp16s)q) << c.n1 << "x" << c.n2 << " sf " << c.sf << " n " << n;
        }
    }
}

// pDst[n] = sum a[k] b[n + bias - k]: the fixed speech-coder shapes and
// others with biases outside the overlap.
TEST(ConvBiased, MatchesDefinition) {
    struct Case { int n2, n1, dst, bias; };
    const Case cases[] = {{45, 4, 41, 4},  {50, 11, 40, 10}, {56, 16, 40, 16}, {70, 31, 40, 30}, {110, 31, 80, 30},
                          {60, 60, 60, 0}, {40, 40, 40, 0},  {160, 160, 160, 0}, {12, 12, 12, 0}, {30, 50, 90, -20},
                          {10, 3, 5, 100}, {10, 3, 5, -100}, {7, 90, 120, 3}};
    for (const Case& c : cases) {
        const auto a = randomVec<float>(c.n1, c.n1), b = randomVec<float>(c.n2, 100 + c.n2);
        std::vector<float> y(c.dst, 5.0f);
        alloc::reset();
        ASSERT_EQ(zvpsConvBiased_32f(a.data(), c.n1, b.data(), c.n2, y.data(), c.dst, c.bias), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, 0);
        for (int n = 0; n < c.dst; ++n)
            EXPECT_TRUE(within(y[n], product(a, b, n + c.bias, true), 0, 0)) << c.n1 << " " << c.n2 << " " << n;
    }
}

TEST(ConvCyclic, MatchesDefinition) {
    const auto x = randomVec<float>(8, 1), h = randomVec<float>(8, 2);
    const auto hc = randomVec<Zvp32fc>(4, 3);
    float y[8];
    Zvp32fc yc[4];
    EXPECT_EQ(zvpsConvCyclic8x8_32f(x.data(), h.data(), y), zvpStsNoErr);
    EXPECT_EQ(zvpsConvCyclic4x4_32f32fc(x.data(), hc.data(), yc), zvpStsNoErr);
    for (int n = 0; n < 8; ++n) {
        Ref r{0, 0, 8}, rc{0, 0, 4};
        for (int k = 0; k < 8; ++k) {
            r.value += (long double)x[k] * h[(n - k + 8) % 8];
            r.absSum += std::fabs((long double)x[k] * h[(n - k + 8) % 8]);
            if (k < 4 && n < 4) {
                rc.value += (long double)x[k] * toC(hc[(n - k + 4) % 4]);
                rc.absSum += std::abs((long double)x[k] * toC(hc[(n - k + 4) % 4]));
            }
        }
        EXPECT_TRUE(within(y[n], r, 0, 0)) << n;
        if (n < 4) {
            EXPECT_TRUE(within(yc[n], rc, 0, 0)) << n;
        }
    }
    // 16-bit: exact sums (full range, no single-precision rounding), ties to even.
    const Zvp16s xs[8] = {-32768, -32768, 3, -1, 0, 5, 32767, 1};
    const Zvp16s hs[8] = {-32768, 1, 1, 2, 3, -32768, 7, 1};
    for (int sf : {0, 1, 3, 16, 31, 40, -1}) {
        Zvp16s ys[8];
        EXPECT_EQ(zvpsConvCyclic8x8_16s_Sfs(xs, hs, ys, sf), zvpStsNoErr);
        for (int n = 0; n < 8; ++n) {
            long long r = 0;
            for (int k = 0; k < 8; ++k) r += (long long)xs[k] * hs[(n - k + 8) % 8];
            long double v = std::ldexp((long double)r, -sf), f = std::floor(v), fr = v - f;
            long double q = fr > 0.5L ? f + 1 : fr < 0.5L ? f : (std::fmod(f, 2.0L) == 0 ? f : f + 1);
            q = std::max<long double>(-32768, std::min<long double>(32767, q));
            EXPECT_EQ(ys[n], (Zvp16s)q) << "sf " << sf << " n " << n;
        }
    }
}

}  // namespace

namespace {

// The vector body and the one-element tail of the direct kernel sum every
// output in the same order, the outputs cut short at the ends of the signal
// included: one call over many outputs equals one-output calls bit for bit,
// at every offset of the output run.
TEST(ConvBiased, VectorBodyEqualsOneOutputCalls) {
    const auto a = randomVec<float>(37, 1), b = randomVec<float>(300, 2);
    for (int start : {-40, -3, 0, 36, 41, 250}) {
        std::vector<float> y(200);
        ASSERT_EQ(zvpsConvBiased_32f(a.data(), 37, b.data(), 300, y.data(), 200, start), zvpStsNoErr);
        for (int n = 0; n < 200; ++n) {
            float one;
            ASSERT_EQ(zvpsConvBiased_32f(a.data(), 37, b.data(), 300, &one, 1, start + n), zvpStsNoErr);
            ASSERT_EQ(std::memcmp(&one, &y[n], 4), 0) << start << " " << n;
        }
    }
}

}  // namespace

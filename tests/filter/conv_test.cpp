// Convolution: every method and its boundaries against the long-double
// oracle (the allocation count tells which method ran), the buffer size
// against its re-derivation, the 16-bit scale rule against exact integers,
// biased and cyclic forms.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "alloc_count.h"
#include "conv_oracle.h"

namespace {

using namespace zvp::test::conv;
namespace alloc = zvp::test::alloc;

// Shapes straddling N 511/512, Lmin 63/64 and Lmax just under / at 3 Lmin;
// order: the transform order the size query must report (0: direct).
struct Shape {
    int n1, n2, order;
};
const Shape kShapes[] = {{1, 1, 0},       {5, 3, 0},       {256, 256, 0},  {256, 257, 9},  {257, 256, 9},
                         {63, 1000, 0},   {1000, 63, 0},   {64, 1000, 8},  {1000, 64, 8},  {150, 449, 10},
                         {150, 450, 10},  {451, 150, 10},  {64, 448, 0},   {64, 449, 8},   {5000, 40, 0},
                         {4097, 70, 9},   {700, 700, 11}};

template <class E, class F, class G>
void runShapes(F conv, G convolve, ZvpDataType dt) {
    for (const Shape& s : kShapes) {
        const auto a = randomVec<E>(s.n1, 11 + s.n1), b = randomVec<E>(s.n2, 29 + s.n2);
        const auto refs = oracle(a, b, 0, s.n1 + s.n2 - 1, true);
        std::vector<E> y(s.n1 + s.n2 - 1, E(-7));
        alloc::reset();
        ASSERT_EQ(conv(a.data(), s.n1, b.data(), s.n2, y.data()), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, s.order ? 1 : 0) << s.n1 << "x" << s.n2;
        EXPECT_EQ(alloc::live, 0);
        if (s.order) {
            EXPECT_EQ((long long)alloc::lastBytes, fftBufferBytes(dt, s.order, 2));
        }
        expectNear(a, b, y, refs, noDiv, "Conv");
        for (int alg = 0; alg <= 2; ++alg) {
            int bytes = -1;
            ASSERT_EQ(zvpsConvolveGetBufferSize(s.n1, s.n2, dt, ZvpAlgType(alg), &bytes), zvpStsNoErr);
            const bool fft = alg == 2 || (alg == 0 && s.order);
            if (alg != 2) {
                EXPECT_EQ(bytes, fft ? fftBufferBytes(dt, s.order, 2) : 64);
            }
            // Exactly the reported size, at an odd address, guarded behind.
            std::vector<Zvp8u> buf(bytes + 65, 0x5A);
            std::vector<E> z(y.size(), E(-7));
            alloc::reset();
            ASSERT_EQ(convolve(a.data(), s.n1, b.data(), s.n2, z.data(), ZvpAlgType(alg), buf.data() + 1), zvpStsNoErr);
            EXPECT_EQ(alloc::calls, 0);
            EXPECT_EQ(std::vector<Zvp8u>(buf.end() - 64, buf.end()), std::vector<Zvp8u>(64, 0x5A));
            expectNear(a, b, z, refs, noDiv, "Convolve");
            if (alg == 0) {
                EXPECT_EQ(y, z);
            }
        }
    }
}
TEST(Conv, MethodsAndBoundaries32f) { runShapes<float>(zvpsConv_32f, zvpsConvolve_32f, zvp32f); }
TEST(Conv, MethodsAndBoundaries64f) { runShapes<double>(zvpsConv_64f, zvpsConvolve_64f, zvp64f); }

TEST(Conv, ForcedFftOrders) {
    // n1 n2 -> order under zvpAlgFFT: one transform while Lmax < 3 Lmin,
    // else overlap-save with (smallest j, 2^j >= 2 Lmin) + 1.
    for (auto [n1, n2, k] : {std::array<int, 3>{10, 10, 5}, {2, 1, 2}, {300, 100, 9}, {1, 1000, 2}, {30, 89, 7}})
        for (ZvpDataType dt : {zvp32f, zvp64f}) {
            int got = -1;
            ASSERT_EQ(zvpsConvolveGetBufferSize(n1, n2, dt, zvpAlgFFT, &got), zvpStsNoErr);
            EXPECT_EQ(got, fftBufferBytes(dt, k, 2)) << n1 << "x" << n2;
        }
}

// Exact integer convolutions under the scale rule, on shapes whose
// single-precision sums are exact (direct, |partial sums| < 2^24); with
// full-scale inputs only saturated outputs are exact.
TEST(Conv, Scaled16sMatchesExactIntegers) {
    std::mt19937 g(5);
    struct Case { int n1, n2, lim, sf; };
    const Case cases[] = {{7, 5, 3, 1},   {40, 33, 60, 2},      {200, 300, 63, 3}, {20, 9, 127, -2},
                          {3, 3, 32767, 0}, {31, 17, 32767, 4}, {9, 60, 200, 40},  {4, 4, 1, -40}};
    for (const Case& c : cases) {
        std::uniform_int_distribution<int> d(-c.lim, c.lim);
        std::vector<Zvp16s> a(c.n1), b(c.n2), y(c.n1 + c.n2 - 1);
        for (auto& v : a) v = Zvp16s(d(g));
        for (auto& v : b) v = Zvp16s(d(g));
        if (c.lim == 32767) a[0] = b[0] = -32768;
        ASSERT_EQ(zvpsConv_16s_Sfs(a.data(), c.n1, b.data(), c.n2, y.data(), c.sf), zvpStsNoErr);
        for (int n = 0; n < (int)y.size(); ++n) {
            long long r = 0;
            for (int k = std::max(0, n - c.n2 + 1); k <= std::min(n, c.n1 - 1); ++k) r += (long long)a[k] * b[n - k];
            if (c.lim == 32767 && std::fabs(std::ldexp(double(r), -c.sf)) < 32768) continue;
            ASSERT_EQ(y[n], scaleExact(r, c.sf)) << c.n1 << "x" << c.n2 << " sf " << c.sf << " n " << n;
        }
    }
    // The cyclic 16-bit form sums exactly, so full scale is exact too.
    const Zvp16s xs[8] = {-32768, -32768, 3, -1, 0, 5, 32767, 1}, hs[8] = {-32768, 1, 1, 2, 3, -32768, 7, 1};
    for (int sf : {0, 1, 3, 16, 31, 40, -1}) {
        Zvp16s ys[8];
        EXPECT_EQ(zvpsConvCyclic8x8_16s_Sfs(xs, hs, ys, sf), zvpStsNoErr);
        for (int n = 0; n < 8; ++n) {
            long long r = 0;
            for (int k = 0; k < 8; ++k) r += (long long)xs[k] * hs[(n - k + 8) % 8];
            EXPECT_EQ(ys[n], scaleExact(r, sf)) << "sf " << sf << " n " << n;
        }
    }
}

// pDst[n] = (a * b)[n + bias]: the fixed speech-coder shapes, the truncated
// equal-length ones, biases outside the overlap, and taps too long for the
// kernel's padded copy.
TEST(ConvBiased, MatchesDefinition) {
    struct Case { int n2, n1, dst, bias; };
    const Case cases[] = {{45, 4, 41, 4},   {50, 11, 40, 10},  {56, 16, 40, 16}, {70, 31, 40, 30},  {110, 31, 80, 30},
                          {60, 60, 60, 0},  {40, 40, 40, 0},   {160, 160, 160, 0}, {12, 12, 12, 0}, {30, 50, 90, -20},
                          {10, 3, 5, 100},  {10, 3, 5, -100},  {7, 90, 120, 3},
                          {50, 1500, 1600, -20}, {3000, 1100, 1500, 1000}};
    for (const Case& c : cases) {
        const auto a = randomVec<float>(c.n1, c.n1), b = randomVec<float>(c.n2, 100 + c.n2);
        std::vector<float> y(c.dst, 5.0f);
        alloc::reset();
        ASSERT_EQ(zvpsConvBiased_32f(a.data(), c.n1, b.data(), c.n2, y.data(), c.dst, c.bias), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, 0);
        expectNear(a, b, y, oracle(a, b, c.bias, c.dst, true), noDiv, "ConvBiased");
    }
}

// The vector body and the one-element tail sum every output in the same
// order, those cut short at the ends of the signal included: one call over
// many outputs equals one-output calls bit for bit, at every offset.
TEST(ConvBiased, VectorBodyEqualsOneOutputCalls) {
    const auto a = randomVec<float>(37, 1), b = randomVec<float>(300, 2);
    for (int start : {-40, -3, 0, 36, 41, 250}) {
        std::vector<float> y(200), one(200);
        ASSERT_EQ(zvpsConvBiased_32f(a.data(), 37, b.data(), 300, y.data(), 200, start), zvpStsNoErr);
        for (int n = 0; n < 200; ++n) zvpsConvBiased_32f(a.data(), 37, b.data(), 300, &one[n], 1, start + n);
        EXPECT_EQ(0, std::memcmp(y.data(), one.data(), sizeof(float) * 200)) << start;
    }
}

// A cyclic convolution is the linear one folded at N.
TEST(ConvCyclic, MatchesDefinition) {
    const auto x = randomVec<float>(8, 1), h = randomVec<float>(8, 2);
    const auto hc = randomVec<Zvp32fc>(4, 3);
    const std::vector<Zvp32fc> xc = {{x[0], 0}, {x[1], 0}, {x[2], 0}, {x[3], 0}};
    std::vector<float> y(8);
    std::vector<Zvp32fc> yc(4);
    EXPECT_EQ(zvpsConvCyclic8x8_32f(x.data(), h.data(), y.data()), zvpStsNoErr);
    EXPECT_EQ(zvpsConvCyclic4x4_32f32fc(x.data(), hc.data(), yc.data()), zvpStsNoErr);
    auto fold = [](std::vector<Ref> lin, std::size_t n) {
        for (std::size_t i = n; i < lin.size(); ++i)
            lin[i - n].value += lin[i].value, lin[i - n].absSum += lin[i].absSum, lin[i - n].terms += lin[i].terms;
        lin.resize(n);
        return lin;
    };
    expectNear(x, h, y, fold(oracle(x, h, 0, 15, true), 8), noDiv, "8x8");
    expectNear(xc, hc, yc, fold(oracle(xc, hc, 0, 7, true), 4), noDiv, "4x4");
}

}  // namespace

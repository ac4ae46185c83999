// Add, AddC, Sub, SubC and SubCRev: every integer form against the exact
// scale rule over every scale-factor path, float forms against the same IEEE
// expression evaluated here. Check order, lengths, alignment and in place
// against out of place are the shape table's (tests/shapes).
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "wide_int.h"
#include "zvps.h"

namespace {

using zvp::test::scaled;
using zvp::test::Wide;

template <class T>
Wide wide(T v) {
    if constexpr (std::is_signed_v<T>) return Wide::of(v);
    else return Wide::ofU(v);
}

// Random values, a third of them powers of two, their neighbours and the
// type's extremes, where rounding meets saturation.
template <class T>
std::vector<T> testData(std::size_t n, std::mt19937& rng) {
    using L = std::numeric_limits<T>;
    std::vector<T> v(n);
    for (auto& x : v) {
        const std::uint64_t r = (std::uint64_t(rng()) << 32) | rng();
        std::memcpy(&x, &r, sizeof(T));
        if (rng() % 3) continue;
        const T p = T(T(1) << (rng() % L::digits));
        const T e[] = {L::min(), T(L::min() + 1), T(0), T(1), L::max(), T(L::max() - 1), p, T(p - 1), T(p + 1), T(-p)};
        x = e[rng() % (std::is_signed_v<T> ? 10 : 9)];
    }
    return v;
}

std::vector<int> allScaleFactors() {
    std::vector<int> v = {100, -100, 1000, -1000, INT_MAX, INT_MIN, INT_MIN + 1};
    for (int sf = -70; sf <= 70; ++sf) v.push_back(sf);
    return v;
}

// ---- Integer forms -------------------------------------------------------------

// R = x + y, y - x (vector-vector Sub: second minus first), x - c, c - x.
enum Op { kAdd, kSubVV, kSubC, kRev };

// One exported form seen as an operation on reals of type T: x the (first)
// source, y the second source or the constant (re, im); complex forms have
// two reals per element. In-place-only forms run on a copy of x in d.
template <class T>
struct IntForm {
    const char* name;
    int reals;
    Op op;
    bool vv, scaled;
    ZvpStatus (*f)(const T* x, const T* y, T* d, int len, int sf);
};

#define VV(NAME, CT, OP, R) \
    {#NAME, R, OP, true, true, [](const T* x, const T* y, T* d, int n, int sf) { return zvps##NAME((const CT*)x, (const CT*)y, (CT*)d, n, sf); }}
#define VC(NAME, OP) {#NAME, 1, OP, false, true, [](const T* x, const T* c, T* d, int n, int sf) { return zvps##NAME(x, c[0], d, n, sf); }}
#define VCC(NAME, CT, OP) \
    {#NAME, 2, OP, false, true, [](const T* x, const T* c, T* d, int n, int sf) { return zvps##NAME((const CT*)x, CT{c[0], c[1]}, (CT*)d, n, sf); }}
#define PLAIN(NAME, OP) {#NAME, 1, OP, true, false, [](const T* x, const T* y, T* d, int n, int) { return zvps##NAME(x, y, d, n); }}
#define PLAIN_I(NAME, OP) \
    {#NAME, 1, OP, false, false, [](const T* x, const T* c, T* d, int n, int) { std::memcpy(d, x, n * sizeof(T)); return zvps##NAME(c[0], d, n); }}
#define FORMS(S, C)                                                                                        \
    VV(Add_##S##_Sfs, T, kAdd, 1), VV(Sub_##S##_Sfs, T, kSubVV, 1), VC(AddC_##S##_Sfs, kAdd),              \
        VC(SubC_##S##_Sfs, kSubC), VC(SubCRev_##S##_Sfs, kRev)
#define CFORMS(C)                                                                                          \
    VV(Add_##C##_Sfs, Zvp##C, kAdd, 2), VV(Sub_##C##_Sfs, Zvp##C, kSubVV, 2), VCC(AddC_##C##_Sfs, Zvp##C, kAdd), \
        VCC(SubC_##C##_Sfs, Zvp##C, kSubC), VCC(SubCRev_##C##_Sfs, Zvp##C, kRev)

// Every form on 67 elements one element past an aligned boundary (a body
// and a tail), at every scale factor, against the exact rule.
template <class T>
void checkForms(const std::vector<IntForm<T>>& forms, std::uint32_t seed) {
    std::mt19937 rng(seed);
    for (const auto& f : forms) {
        const int reals = 67 * f.reals;
        for (int sf : f.scaled ? allScaleFactors() : std::vector<int>{0}) {
            const auto x = testData<T>(reals + 1, rng), y = testData<T>(reals + 1, rng);
            std::vector<T> d(reals + 1);
            ASSERT_EQ(f.f(x.data() + 1, y.data() + 1, d.data() + 1, 67, sf), zvpStsNoErr) << f.name;
            for (int i = 1; i <= reals; ++i) {
                const Wide a = wide(x[i]), b = wide(f.vv ? y[i] : y[1 + (f.reals == 2 ? (i - 1) % 2 : 0)]);
                const Wide r = f.op == kAdd ? a + b : f.op == kSubC ? a - b : b - a;
                ASSERT_EQ(d[i], scaled<T>(r, sf)) << f.name << " sf=" << sf << " i=" << i << " x=" << +x[i] << " y=" << b.low64();
            }
        }
    }
}

TEST(AddSubInteger, Forms16sMatchTheExactRule) {
    using T = Zvp16s;
    checkForms<T>({FORMS(16s, 16sc), CFORMS(16sc), PLAIN(Add_16s, kAdd), PLAIN(Sub_16s, kSubVV), PLAIN_I(AddC_16s_I, kAdd),
                   PLAIN_I(SubC_16s_I, kSubC)}, 101);
}
TEST(AddSubInteger, Forms16uMatchTheExactRule) {
    using T = Zvp16u;
    checkForms<T>({FORMS(16u, ), PLAIN(Add_16u, kAdd)}, 102);
}
TEST(AddSubInteger, Forms8uMatchTheExactRule) {
    using T = Zvp8u;
    checkForms<T>({FORMS(8u, )}, 104);
}
TEST(AddSubInteger, Forms32sMatchTheExactRule) {
    using T = Zvp32s;
    checkForms<T>({FORMS(32s, ), CFORMS(32sc)}, 103);
}
TEST(AddSubInteger, Forms64MatchTheExactRule) {
    {
        using T = Zvp64s;
        checkForms<T>({VV(Add_64s_Sfs, T, kAdd, 1), VC(AddC_64s_Sfs, kAdd)}, 105);
    }
    using T = Zvp64u;
    checkForms<T>({VC(AddC_64u_Sfs, kAdd)}, 106);
}

// Every pair of 8-bit operands (every constant over every source value)
// under every scale factor -40..40.
TEST(AddSubInteger, EightBitFormsExhaustive) {
    std::vector<Zvp8u> a(65536), b(65536), d(65536);
    for (int i = 0; i < 65536; ++i) {
        a[i] = Zvp8u(i & 255);
        b[i] = Zvp8u(i >> 8);
    }
    using F = ZvpStatus (*)(const Zvp8u*, Zvp8u, Zvp8u*, int, int);
    const struct { F f; Op op; } cs[] = {{zvpsAddC_8u_Sfs, kAdd}, {zvpsSubC_8u_Sfs, kSubC}, {zvpsSubCRev_8u_Sfs, kRev}};
    for (int sf = -40; sf <= 40; ++sf) {
        std::vector<Zvp8u> ref(766);  // by R + 255
        for (int r = -255; r <= 510; ++r) ref[r + 255] = scaled<Zvp8u>(Wide::of(r), sf);
        ASSERT_EQ(zvpsAdd_8u_Sfs(a.data(), b.data(), d.data(), 65536, sf), zvpStsNoErr);
        for (int i = 0; i < 65536; ++i) ASSERT_EQ(d[i], ref[a[i] + b[i] + 255]) << "Add " << i << " sf=" << sf;
        ASSERT_EQ(zvpsSub_8u_Sfs(a.data(), b.data(), d.data(), 65536, sf), zvpStsNoErr);
        for (int i = 0; i < 65536; ++i) ASSERT_EQ(d[i], ref[b[i] - a[i] + 255]) << "Sub " << i << " sf=" << sf;
        for (const auto& k : cs)
            for (int c = 0; c < 256; ++c) {
                ASSERT_EQ(k.f(a.data(), Zvp8u(c), d.data(), 256, sf), zvpStsNoErr);
                for (int x = 0; x < 256; ++x)
                    ASSERT_EQ(d[x], ref[(k.op == kAdd ? x + c : k.op == kSubC ? x - c : c - x) + 255]) << k.op << " c=" << c;
            }
    }
}

TEST(AddSubInteger, SaturationAndTieCases) {
    const struct { Zvp16s a, b; int sf; Zvp16s want; } cases[] = {
        {32767, 32767, 0, 32767},   {32767, 32767, 1, 32767},  {32767, 32767, 16, 1},
        {32767, 32767, 17, 0},      {-32768, -32768, 16, -1},  {-32768, -32768, -15, -32768},
        {-32768, -32768, -16, -32768}, {0, 0, -100, 0},        {1, 2, 1, 2},
        {2, 3, 1, 2},               {-1, -2, 1, -2},           {0, -1, 1, 0},
        {1, 0, -15, 32767},         {-1, 0, -15, -32768},      {1, 1, -14, 32767},
    };
    for (const auto& c : cases) {
        Zvp16s d = 77;
        ASSERT_EQ(zvpsAdd_16s_Sfs(&c.a, &c.b, &d, 1, c.sf), zvpStsNoErr);
        EXPECT_EQ(d, c.want) << c.a << " + " << c.b << " sf=" << c.sf;
    }
    const Zvp8u x = 255;
    Zvp8u d8 = 7;
    ASSERT_EQ(zvpsAdd_8u_Sfs(&x, &x, &d8, 1, 9), zvpStsNoErr);
    EXPECT_EQ(d8, 1);
    // 32767 - (-32768) = 65535 halves to 32767.5, rounds to the even 32768 and saturates.
    const Zvp16s lo = -32768, hi = 32767;
    Zvp16s d = 0;
    ASSERT_EQ(zvpsSub_16s_Sfs(&lo, &hi, &d, 1, 1), zvpStsNoErr);
    EXPECT_EQ(d, 32767);
    const Zvp32s lo32 = INT_MIN, hi32 = INT_MAX;
    Zvp32s d32 = 0;
    ASSERT_EQ(zvpsSub_32s_Sfs(&lo32, &hi32, &d32, 1, 1), zvpStsNoErr);
    EXPECT_EQ(d32, INT_MAX);
    // 16u: 65535 - 0 at sf 1 is 32767.5, which rounds to 32768.
    const Zvp16u z16 = 0, m16 = 65535;
    Zvp16u du = 0;
    ASSERT_EQ(zvpsSub_16u_Sfs(&z16, &m16, &du, 1, 1), zvpStsNoErr);
    EXPECT_EQ(du, 32768);
}

TEST(AddSubInteger, ZeroConstantAtScaleZeroCopiesTheSource) {
    std::mt19937 rng(106);
    const auto s = testData<Zvp16s>(37, rng);
    std::vector<Zvp16s> d(37, 5);
    ASSERT_EQ(zvpsAddC_16s_Sfs(s.data(), 0, d.data(), 37, 0), zvpStsNoErr);
    EXPECT_EQ(d, s);
    std::vector<Zvp64u> u = {0, 1, ~0ull, 1ull << 63}, ud(4, 9);
    ASSERT_EQ(zvpsAddC_64u_Sfs(u.data(), 0, ud.data(), 4, 0), zvpStsNoErr);
    EXPECT_EQ(ud, u);
}

// ---- Mixed types ------------------------------------------------------------

TEST(AddSubMixed, WideningForms) {
    std::vector<Zvp8u> a(65536), b(65536);
    for (int i = 0; i < 65536; ++i) {
        a[i] = Zvp8u(i & 255);
        b[i] = Zvp8u(i >> 8);
    }
    std::vector<Zvp16u> d(65536);
    ASSERT_EQ(zvpsAdd_8u16u(a.data() + 1, b.data() + 1, d.data() + 3, 65535), zvpStsNoErr);
    for (int i = 1; i < 65536; ++i) ASSERT_EQ(d[i + 2], a[i] + b[i]);

    std::mt19937 rng(107);
    const int n = 67;
    const auto x = testData<Zvp16s>(n + 1, rng), y = testData<Zvp16s>(n + 1, rng);
    std::vector<Zvp32f> s(n + 1), t(n + 1);
    ASSERT_EQ(zvpsAdd_16s32f(x.data() + 1, y.data() + 1, s.data() + 1, n), zvpStsNoErr);
    ASSERT_EQ(zvpsSub_16s32f(x.data() + 1, y.data() + 1, t.data() + 1, n), zvpStsNoErr);
    auto acc = testData<Zvp32s>(n + 1, rng);
    const auto before = acc;
    ASSERT_EQ(zvpsAdd_16s32s_I(x.data() + 1, acc.data() + 1, n), zvpStsNoErr);
    const auto ua = testData<Zvp32u>(n + 1, rng), ub = testData<Zvp32u>(n + 1, rng);
    std::vector<Zvp32u> ud(n + 1);
    ASSERT_EQ(zvpsAdd_32u(ua.data() + 1, ub.data() + 1, ud.data() + 1, n), zvpStsNoErr);
    for (int i = 1; i <= n; ++i) {
        ASSERT_EQ(s[i], float(long(x[i]) + y[i]));
        ASSERT_EQ(t[i], float(long(y[i]) - x[i]));  // second minus first
        ASSERT_EQ(acc[i], scaled<Zvp32s>(Wide::of(std::int64_t(before[i]) + x[i]), 0));
        ASSERT_EQ(ud[i], std::min<std::uint64_t>(std::uint64_t(ua[i]) + ub[i], 0xFFFFFFFFu));
    }
}

// ---- Floating point --------------------------------------------------------------

template <class F>
struct FloatForm {
    const char* name;
    int reals;
    Op op;
    bool vv;
    ZvpStatus (*f)(const F* x, const F* y, F* d, int len);
};
#define FVV(NAME, OP, R, CT) {#NAME, R, OP, true, [](const F* x, const F* y, F* d, int n) { return zvps##NAME((const CT*)x, (const CT*)y, (CT*)d, n); }}
#define FVC(NAME, OP, R, CT, MAKE) {#NAME, R, OP, false, [](const F* x, const F* c, F* d, int n) { return zvps##NAME((const CT*)x, MAKE, (CT*)d, n); }}
#define FORMS_OF(T, TC)                                                                                             \
    FVV(Add_##T, kAdd, 1, F), FVV(Sub_##T, kSubVV, 1, F), FVV(Add_##TC, kAdd, 2, Zvp##TC), FVV(Sub_##TC, kSubVV, 2, Zvp##TC), \
        FVC(AddC_##T, kAdd, 1, F, c[0]), FVC(SubC_##T, kSubC, 1, F, c[0]), FVC(SubCRev_##T, kRev, 1, F, c[0]),      \
        FVC(AddC_##TC, kAdd, 2, Zvp##TC, (Zvp##TC{c[0], c[1]})), FVC(SubC_##TC, kSubC, 2, Zvp##TC, (Zvp##TC{c[0], c[1]})), \
        FVC(SubCRev_##TC, kRev, 2, Zvp##TC, (Zvp##TC{c[0], c[1]}))

// Float results equal the same IEEE operation done here, bit for bit.
template <class F>
void checkFloatForms(const std::vector<FloatForm<F>>& forms) {
    std::mt19937 rng(108);
    std::uniform_real_distribution<F> u(-1000, 1000);
    for (const auto& f : forms) {
        const int reals = 67 * f.reals;
        std::vector<F> x(reals + 1), y(reals + 1), d(reals + 1);
        for (auto* v : {&x, &y})
            for (auto& e : *v) e = u(rng);
        ASSERT_EQ(f.f(x.data() + 1, y.data() + 1, d.data() + 1, 67), zvpStsNoErr);
        for (int i = 1; i <= reals; ++i) {
            const F b = f.vv ? y[i] : y[1 + (f.reals == 2 ? (i - 1) % 2 : 0)];
            ASSERT_EQ(d[i], f.op == kAdd ? x[i] + b : f.op == kSubC ? x[i] - b : b - x[i]) << f.name << " i=" << i;
        }
    }
}

TEST(AddSubFloat, SinglePrecisionFormsAreIeeeExact) {
    using F = Zvp32f;
    checkFloatForms<F>({FORMS_OF(32f, 32fc)});
}
TEST(AddSubFloat, DoublePrecisionFormsAreIeeeExact) {
    using F = Zvp64f;
    checkFloatForms<F>({FORMS_OF(64f, 64fc)});
}

}  // namespace

// Random generators: the sequence against a one-step-at-a-time model of the
// recurrences, continuation across calls, the record layout and write-back,
// check orders, allocation failure, and distribution statistics.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "alloc_count.h"
#include "zvps_random.h"

namespace {

namespace alloc = zvp::test::alloc;
using Draw = std::function<ZvpStatus(void* dst, int len)>;

// The combined generator written straight from its definition, one step at
// a time, with the borrow as a branch.
struct Model {
    std::uint32_t c = 1131199209u, s1, s2, s3;
    std::int32_t b = -1;
    explicit Model(std::uint32_t seed)
        : s1(seed), s2(seed * 69069u + 1013904243u), s3(s2 * 69069u + 1013904243u) {}
    std::int32_t next() {
        c = c * 69069u + 1013904243u;
        const std::uint32_t t = s2 - s3 + std::uint32_t(b);
        const std::uint32_t x = std::int32_t(t) < 0 ? t - 18u : t;
        b = std::int32_t(t) < 0 ? -1 : 0;
        s3 = s2, s2 = s1, s1 = x;
        return std::int32_t(x + c);
    }
};
std::int32_t lcgNext(std::uint32_t& c) { return std::int32_t(c = c * 69069u + 1013904243u); }

// Box-Muller of one raw pair in long double; rho gets the radius.
long double boxMuller(std::int32_t r1, std::int32_t r2, bool second, long double* rho = nullptr) {
    const long double u = (r1 + 2147483648.5L) / 4294967296.0L, a = 6.283185307179586476925L * r2 / 4294967296.0L;
    const long double r = std::sqrt(-2 * std::log(u));
    if (rho) *rho = r;
    return r * (second ? std::sin(a) : std::cos(a));
}

// Every generator, as a source of samples read back as doubles. Stateful ones
// are allocated (and freed with the last copy of their Draw); Direct ones
// keep their seed alongside.
struct Kind {
    const char* name;
    int bytes;
    double (*at)(const void*, int);
    std::function<Draw(unsigned seed)> make;
};
#define STATEFUL(F, T, S, A, B)                                                                        \
    Kind{#F "_" #T, int(sizeof(Zvp##T)), [](const void* d, int i) { return double(static_cast<const Zvp##T*>(d)[i]); }, \
         [](unsigned seed) -> Draw {                                                                   \
             S* s = nullptr;                                                                           \
             EXPECT_EQ(zvpsRand##F##InitAlloc_##T(&s, A, B, seed), zvpStsNoErr);                        \
             std::shared_ptr<S> h(s, [](S* p) { zvpsRand##F##Free_##T(p); });                           \
             return [h](void* d, int n) { return zvpsRand##F##_##T(static_cast<Zvp##T*>(d), n, h.get()); }; \
         }}
#define DIRECT(F, T, A, B)                                                                             \
    Kind{#F "_Direct_" #T, int(sizeof(Zvp##T)), [](const void* d, int i) { return double(static_cast<const Zvp##T*>(d)[i]); }, \
         [](unsigned seed) -> Draw {                                                                   \
             auto s = std::make_shared<unsigned>(seed);                                                \
             return [s](void* d, int n) { return zvpsRand##F##_Direct_##T(static_cast<Zvp##T*>(d), n, A, B, s.get()); }; \
         }}
const std::vector<Kind> kKinds = {
    STATEFUL(Uniform, 8u, ZvpsRandUniState_8u, 3, 250),
    STATEFUL(Uniform, 16s, ZvpsRandUniState_16s, -1000, 30000),
    STATEFUL(Uniform, 32f, ZvpsRandUniState_32f, -2.5f, 7.0f),
    STATEFUL(Gauss, 8u, ZvpsRandGaussState_8u, 128, 40),
    STATEFUL(Gauss, 16s, ZvpsRandGaussState_16s, -5, 3000),
    STATEFUL(Gauss, 32f, ZvpsRandGaussState_32f, 1.5f, 2.0f),
    DIRECT(Uniform, 16s, -7, 9), DIRECT(Uniform, 32f, -1.0f, 1.0f), DIRECT(Uniform, 64f, 0.0, 10.0),
    DIRECT(Gauss, 16s, 100, 700), DIRECT(Gauss, 32f, 0.0f, 1.0f), DIRECT(Gauss, 64f, -3.0, 0.25),
};

std::vector<double> draw(const Kind& k, const Draw& d, int n) {
    std::vector<unsigned char> buf(std::size_t(n) * k.bytes + 1);
    EXPECT_EQ(d(buf.data() + (k.bytes == 1), n), zvpStsNoErr);  // misaligned where the type allows
    std::vector<double> v(n);
    for (int i = 0; i < n; ++i) v[i] = k.at(buf.data() + (k.bytes == 1), i);
    return v;
}

// A sequence split into calls of any lengths, odd or even, across the
// library's internal blocks, equals one call; so does every prefix length.
TEST(Random, SplitsAndPrefixesContinueOneSequence) {
    const std::vector<std::vector<int>> splits = {{10, 5}, {1, 1, 3, 2, 511, 512, 1, 469}, {5, 6, 1489}, {1500}};
    for (const Kind& k : kKinds)
        for (unsigned seed : {0u, 12345u, 0xFFFFFFFFu}) {
            const auto whole = draw(k, k.make(seed), 1500);
            EXPECT_EQ(whole, draw(k, k.make(seed), 1500)) << k.name << ": same seed, same sequence";
            for (const auto& parts : splits) {
                const Draw d = k.make(seed);
                std::vector<double> got;
                for (int n : parts) {
                    const auto v = draw(k, d, n);
                    got.insert(got.end(), v.begin(), v.end());
                }
                EXPECT_TRUE(std::equal(got.begin(), got.end(), whole.begin())) << k.name << " split " << parts.size();
            }
            for (int n : {1, 2, 3, 4, 255, 256, 257, 513, 1023})
                EXPECT_TRUE(std::ranges::equal(draw(k, k.make(seed), n), std::vector<double>(whole.begin(), whole.begin() + n)))
                    << k.name << " len " << n;
        }
}

// The samples against the model: uniform exactly (same double arithmetic);
// Gaussian from a state within 4e-7 of the radius (the single-precision
// transform rounds u, the series and the products, each half an ulp of 2^-24
// relative: about 3.4 ulps in all), Direct 64f within 2e-14 (double series,
// radius at most 6.7).
TEST(Random, SamplesMatchTheModel) {
    for (unsigned seed : {1u, 2024u, 0x80000000u}) {
        struct { float lo, hi; } bounds[] = {{-2.5f, 7.0f}, {0.0f, 1.0f}, {1e6f, 1e6f + 3.0f}, {5.0f, -5.0f}};
        for (auto [lo, hi] : bounds) {
            ZvpsRandUniState_32f* s = nullptr;
            ASSERT_EQ(zvpsRandUniformInitAlloc_32f(&s, lo, hi, seed), zvpStsNoErr);
            std::vector<float> v(777);
            ASSERT_EQ(zvpsRandUniform_32f(v.data(), 777, s), zvpStsNoErr);
            Model m(seed);
            const double step = (double(hi) - double(lo)) * 2.3283064365387e-10, centre = (double(lo) + double(hi)) / 2;
            for (int i = 0; i < 777; ++i) ASSERT_EQ(v[i], float(m.next() * step + centre)) << i;
            zvpsRandUniformFree_32f(s);
        }
        ZvpsRandUniState_16s* s16 = nullptr;
        ASSERT_EQ(zvpsRandUniformInitAlloc_16s(&s16, -32768, 32767, seed), zvpStsNoErr);
        std::vector<Zvp16s> w(301);
        ASSERT_EQ(zvpsRandUniform_16s(w.data(), 301, s16), zvpStsNoErr);
        Model m(seed);
        for (int i = 0; i < 301; ++i) ASSERT_EQ(w[i], Zvp16s(std::nearbyint(m.next() * (65535 * 2.3283064365387e-10) - 0.5)));
        zvpsRandUniformFree_16s(s16);

        ZvpsRandGaussState_32f* g = nullptr;
        ASSERT_EQ(zvpsRandGaussInitAlloc_32f(&g, 0.0f, 1.0f, seed), zvpStsNoErr);
        std::vector<float> z(501);
        ASSERT_EQ(zvpsRandGauss_32f(z.data(), 501, g), zvpStsNoErr);
        Model mg(seed);
        for (int i = 0; i < 501; i += 2) {
            const std::int32_t r1 = mg.next(), r2 = mg.next();
            for (int j = i; j < std::min(i + 2, 501); ++j) {
                long double rho;
                const long double e = boxMuller(r1, r2, j > i, &rho);
                ASSERT_NEAR(z[j], double(e), 4e-7 * double(rho)) << j;
            }
        }
        zvpsRandGaussFree_32f(g);

        unsigned sd = seed, sf = seed, lcg = seed;
        std::vector<double> d(300);
        std::vector<float> f(300);
        ASSERT_EQ(zvpsRandGauss_Direct_64f(d.data(), 300, 0.0, 1.0, &sd), zvpStsNoErr);
        ASSERT_EQ(zvpsRandGauss_Direct_32f(f.data(), 300, 0.0f, 1.0f, &sf), zvpStsNoErr);
        for (int i = 0; i < 300; ++i) {
            const std::int32_t r1 = lcgNext(lcg), r2 = lcgNext(lcg);
            ASSERT_NEAR(d[i], double(boxMuller(r1, r2, false)), 2e-14) << i;
            ASSERT_EQ(f[i], float(d[i])) << i;
        }
        EXPECT_EQ(sd, lcg);
        EXPECT_EQ(sf, lcg);
    }
}

// The 32f uniform record, byte for byte, after Init and after 7 samples.
TEST(Random, UniformRecordLayoutAndWriteBack) {
    int size = 0;
    ASSERT_EQ(zvpsRandUniformGetSize_32f(&size), zvpStsNoErr);
    ASSERT_EQ(size, 56);
    std::vector<unsigned char> mem(size + 3);
    auto* p = mem.data() + 3;  // records need no alignment
    auto field = [&](int off, auto v) { std::memcpy(&v, p + off, sizeof v); return v; };
    ASSERT_EQ(zvpsRandUniformInit_32f(reinterpret_cast<ZvpsRandUniState_32f*>(p), -1.0f, 3.0f, 99u), zvpStsNoErr);
    EXPECT_EQ(field(0, 0), 37);
    EXPECT_EQ(field(4, 0u), 99u);
    EXPECT_EQ(field(8, 0.0f), -1.0f);
    EXPECT_EQ(field(12, 0.0f), 3.0f);
    EXPECT_EQ(field(16, 0.0), 1.0);
    EXPECT_EQ(field(24, 0.0), 4 * 2.3283064365387e-10);
    Model m(99u);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(field(32, 0u), m.c);
        EXPECT_EQ(field(36, 0u), m.s1);
        EXPECT_EQ(field(40, 0u), m.s2);
        EXPECT_EQ(field(44, 0u), m.s3);
        EXPECT_EQ(field(48, 0), m.b);
        float v[7];
        ASSERT_EQ(zvpsRandUniform_32f(v, 7, reinterpret_cast<ZvpsRandUniState_32f*>(p)), zvpStsNoErr);
        for (int i = 0; i < 7; ++i) m.next();
    }
    // Each record kind carries its own tag; 16s Gaussian is 39.
    ZvpsRandGaussState_16s* g = nullptr;
    ASSERT_EQ(zvpsRandGaussInitAlloc_16s(&g, 0, 1, 1u), zvpStsNoErr);
    std::int32_t tag = 0;
    std::memcpy(&tag, g, sizeof tag);
    EXPECT_EQ(tag, 39);
    zvpsRandGaussFree_16s(g);
}

TEST(Random, EqualBoundsGiveThatValue) {
    for (float c : {0.0f, -3.75f, 1e30f}) {
        ZvpsRandUniState_32f* s = nullptr;
        ASSERT_EQ(zvpsRandUniformInitAlloc_32f(&s, c, c, 5u), zvpStsNoErr);
        std::vector<float> v(100);
        ASSERT_EQ(zvpsRandUniform_32f(v.data(), 100, s), zvpStsNoErr);
        EXPECT_TRUE(std::ranges::all_of(v, [c](float x) { return x == c; }));
        zvpsRandUniformFree_32f(s);
    }
    Zvp16s w[9];
    unsigned seed = 3;
    ASSERT_EQ(zvpsRandUniform_Direct_16s(w, 9, -77, -77, &seed), zvpStsNoErr);
    EXPECT_TRUE(std::ranges::all_of(w, [](Zvp16s x) { return x == -77; }));
}

// Check order of generation: null pointers, then length, then the tag; on
// every error the destination and the record stay as they were.
TEST(Random, GenerationChecksInOrderAndWriteNothing) {
    ZvpsRandUniState_32f* uni = nullptr;
    ZvpsRandGaussState_32f* gau = nullptr;
    ASSERT_EQ(zvpsRandUniformInitAlloc_32f(&uni, 0.0f, 1.0f, 1u), zvpStsNoErr);
    ASSERT_EQ(zvpsRandGaussInitAlloc_32f(&gau, 0.0f, 1.0f, 1u), zvpStsNoErr);
    using Run = std::function<ZvpStatus(float*, int, void*)>;
    struct Case { const char* name; Run run; void* own; void* foreign; };
    const Case cases[] = {
        {"Uniform_32f", [](float* d, int n, void* s) { return zvpsRandUniform_32f(d, n, static_cast<ZvpsRandUniState_32f*>(s)); }, uni, gau},
        {"Gauss_32f", [](float* d, int n, void* s) { return zvpsRandGauss_32f(d, n, static_cast<ZvpsRandGaussState_32f*>(s)); }, gau, uni},
        {"Uniform_Direct_32f", [](float* d, int n, void* s) { return zvpsRandUniform_Direct_32f(d, n, 0.0f, 1.0f, static_cast<unsigned*>(s)); }, nullptr, nullptr},
        {"Gauss_Direct_32f", [](float* d, int n, void* s) { return zvpsRandGauss_Direct_32f(d, n, 0.0f, 1.0f, static_cast<unsigned*>(s)); }, nullptr, nullptr},
    };
    unsigned seed = 42;
    for (const Case& c : cases) {
        void* own = c.own ? c.own : &seed;
        const bool direct = c.own == nullptr;
        struct { bool nullDst; int len; void* state; ZvpStatus want; } rows[] = {
            {true, 0, c.foreign, zvpStsNullPtrErr}, {false, 0, nullptr, zvpStsNullPtrErr},
            {false, 0, direct ? own : c.foreign, zvpStsSizeErr}, {false, -1, own, zvpStsSizeErr},
            {false, 4, direct ? nullptr : c.foreign, direct ? zvpStsNullPtrErr : zvpStsContextMatchErr},
        };
        for (const auto& r : rows) {
            std::vector<unsigned char> before(static_cast<unsigned char*>(own), static_cast<unsigned char*>(own) + (direct ? 4 : 56));
            float dst[4] = {-9, -9, -9, -9};
            EXPECT_EQ(c.run(r.nullDst ? nullptr : dst, r.len, r.state), r.want) << c.name << " len " << r.len;
            EXPECT_TRUE(std::ranges::all_of(dst, [](float x) { return x == -9; })) << c.name;
            EXPECT_TRUE(std::equal(before.begin(), before.end(), static_cast<unsigned char*>(own))) << c.name;
        }
    }
    EXPECT_EQ(zvpsRandUniformFree_32f(reinterpret_cast<ZvpsRandUniState_32f*>(gau)), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsRandUniformFree_32f(uni), zvpStsNoErr);
    EXPECT_EQ(zvpsRandGaussFree_32f(gau), zvpStsNoErr);
    float d[2];
    std::vector<unsigned char> rec(72);
    auto* u = reinterpret_cast<ZvpsRandUniState_32f*>(rec.data());
    ASSERT_EQ(zvpsRandUniformInit_32f(u, 0.0f, 1.0f, 1u), zvpStsNoErr);
    EXPECT_EQ(zvpsRandUniformFree_32f(u), zvpStsNoErr);  // caller memory: tag cleared, nothing released
    EXPECT_EQ(zvpsRandUniform_32f(d, 2, u), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsRandUniformFree_32f(u), zvpStsContextMatchErr);
    EXPECT_EQ(zvpsRandUniformInit_32f(nullptr, 0.0f, 1.0f, 1u), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRandGaussGetSize_8u(nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRandGaussInitAlloc_16s(nullptr, 0, 1, 1u), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRandGaussFree_8u(nullptr), zvpStsNullPtrErr);
}

// A failed allocation returns -9, leaves the address alone and holds nothing;
// a successful one is released by Free.
TEST(Random, InitAllocFailsCleanly) {
    std::vector<std::function<ZvpStatus(void**)>> allocs = {
        [](void** p) { return zvpsRandUniformInitAlloc_8u(reinterpret_cast<ZvpsRandUniState_8u**>(p), 0, 1, 1u); },
        [](void** p) { return zvpsRandUniformInitAlloc_16s(reinterpret_cast<ZvpsRandUniState_16s**>(p), 0, 1, 1u); },
        [](void** p) { return zvpsRandUniformInitAlloc_32f(reinterpret_cast<ZvpsRandUniState_32f**>(p), 0, 1, 1u); },
        [](void** p) { return zvpsRandGaussInitAlloc_8u(reinterpret_cast<ZvpsRandGaussState_8u**>(p), 0, 1, 1u); },
        [](void** p) { return zvpsRandGaussInitAlloc_16s(reinterpret_cast<ZvpsRandGaussState_16s**>(p), 0, 1, 1u); },
        [](void** p) { return zvpsRandGaussInitAlloc_32f(reinterpret_cast<ZvpsRandGaussState_32f**>(p), 0, 1, 1u); },
    };
    for (auto& a : allocs) {
        void* p = &allocs;
        alloc::reset(1);
        EXPECT_EQ(a(&p), zvpStsMemAllocErr);
        EXPECT_EQ(p, static_cast<void*>(&allocs));
        EXPECT_EQ(alloc::live, 0);
    }
    alloc::reset();
    for (const Kind& k : kKinds) draw(k, k.make(7u), 10);
    EXPECT_EQ(alloc::live, 0);
}

// Results do not depend on the caller's rounding mode or flush-to-zero.
TEST(Random, IndependentOfCallerFloatingPointState) {
    std::vector<std::vector<double>> plain;
    for (const Kind& k : kKinds) plain.push_back(draw(k, k.make(11u), 301));
    const unsigned csr = _mm_getcsr();
    for (int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        _mm_setcsr(_mm_getcsr() | 0x8040);
        for (std::size_t i = 0; i < kKinds.size(); ++i) EXPECT_EQ(draw(kKinds[i], kKinds[i].make(11u), 301), plain[i]) << kKinds[i].name;
        _mm_setcsr(csr);
        std::fesetround(FE_TONEAREST);
    }
}

// Distribution checks on 2^20 samples with fixed seeds. Limits: the mean and
// variance within 5 standard errors (a correct generator exceeds either with
// probability below 6e-7), the Kolmogorov-Smirnov statistic sqrt(n) D below
// 2.5 (probability 2 exp(-2 2.5^2) = 7.5e-6), and the chi-square of the 256
// 8u values (255 degrees of freedom) below 400 (probability about 2e-8).
TEST(Random, DistributionsHoldAtStatedLimits) {
    const int n = 1 << 20;
    auto moments = [&](const std::vector<double>& v, double mean, double var, double kurt, const char* what) {
        double m = 0, q = 0;
        for (double x : v) m += x;
        m /= n;
        for (double x : v) q += (x - m) * (x - m);
        q /= n - 1;
        EXPECT_NEAR(m, mean, 5 * std::sqrt(var / n)) << what;
        EXPECT_NEAR(q, var, 5 * var * std::sqrt((kurt - 1) / n)) << what;
    };
    auto ks = [&](std::vector<double> v, const std::function<double(double)>& cdf, const char* what) {
        std::sort(v.begin(), v.end());
        double d = 0;
        for (int i = 0; i < n; ++i) d = std::max({d, double(i + 1) / n - cdf(v[i]), cdf(v[i]) - double(i) / n});
        EXPECT_LT(std::sqrt(double(n)) * d, 2.5) << what;
    };
    auto phi = [](double m, double s) { return [=](double x) { return 0.5 * std::erfc(-(x - m) / (s * std::sqrt(2.0))); }; };
    for (unsigned seed : {1u, 77777u}) {
        const auto u = draw(kKinds[2], kKinds[2].make(seed), n);  // uniform on [-2.5, 7]
        moments(u, 2.25, 9.5 * 9.5 / 12, 1.8, "Uniform_32f");
        ks(u, [](double x) { return (x + 2.5) / 9.5; }, "Uniform_32f");
        const auto g = draw(kKinds[5], kKinds[5].make(seed), n);  // Gauss 1.5, 2
        moments(g, 1.5, 4.0, 3.0, "Gauss_32f");
        ks(g, phi(1.5, 2.0), "Gauss_32f");
        const auto gd = draw(kKinds[11], kKinds[11].make(seed), n);  // Gauss_Direct -3, 0.25
        moments(gd, -3.0, 0.0625, 3.0, "Gauss_Direct_64f");
        ks(gd, phi(-3.0, 0.25), "Gauss_Direct_64f");
        const auto ud = draw(kKinds[8], kKinds[8].make(seed), n);  // Uniform_Direct 0, 10
        ks(ud, [](double x) { return x / 10; }, "Uniform_Direct_64f");
        moments(draw(kKinds[4], kKinds[4].make(seed), n), -5.0, 9e6 + 1.0 / 12, 3.0, "Gauss_16s");

        ZvpsRandUniState_8u* s = nullptr;
        ASSERT_EQ(zvpsRandUniformInitAlloc_8u(&s, 0, 255, seed), zvpStsNoErr);
        std::vector<Zvp8u> b(n);
        ASSERT_EQ(zvpsRandUniform_8u(b.data(), n, s), zvpStsNoErr);
        zvpsRandUniformFree_8u(s);
        std::vector<double> count(256);
        for (Zvp8u x : b) ++count[x];
        double chi = 0;  // the end values take half a step each
        for (int k = 0; k < 256; ++k) {
            const double e = double(n) / 255 * (k == 0 || k == 255 ? 0.5 : 1.0);
            chi += (count[k] - e) * (count[k] - e) / e;
        }
        EXPECT_LT(chi, 400.0) << "Uniform_8u";
    }
}

}  // namespace

// Random generators: every generator against a one-step-at-a-time model of
// the recurrences, continuation across calls, the record layout and
// write-back, check orders, allocation failure, caller floating-point state
// and distribution statistics.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include "alloc_count.h"
#include "zvps_random.h"

namespace {

namespace alloc = zvp::test::alloc;
using Draw = std::function<ZvpStatus(void* dst, int len)>;

// The combined generator written straight from its definition, one step at
// a time, with the borrow as a branch; and the congruential one alone.
struct Model {
    std::uint32_t c = 1131199209u, s1, s2, s3;
    std::int32_t b = -1;
    explicit Model(std::uint32_t seed) : s1(seed), s2(seed * 69069u + 1013904243u), s3(s2 * 69069u + 1013904243u) {}
    std::int32_t next() {
        c = c * 69069u + 1013904243u;
        const std::uint32_t t = s2 - s3 + std::uint32_t(b);
        const std::uint32_t x = std::int32_t(t) < 0 ? t - 18u : t;
        b = std::int32_t(t) < 0 ? -1 : 0;
        s3 = s2, s2 = s1, s1 = x;
        return std::int32_t(x + c);
    }
};

// Every generator as a source of samples read back as doubles, with its two
// parameters and its output type. Stateful ones are allocated and freed with
// the last copy of their Draw; Direct ones keep their seed alongside.
struct Kind {
    const char* name;
    bool gauss, direct, integral;
    int bytes;
    double a, b, tmin, tmax;
    double (*at)(const void*, int);
    std::function<Draw(unsigned seed)> make;
    ZvpStatus (*call)(void* dst, int len, void* stateOrSeed);
    ZvpStatus (*initAlloc)() = nullptr;  // made and freed; -100 if a failure wrote the address
    ZvpStatus (*init)(void* mem) = nullptr;
    ZvpStatus (*release)(void* state) = nullptr;
};
#define KIND(F, T, DIRECT, A, B)                                                                               \
    #F "_" #T, #F[0] == 'G', DIRECT, std::is_integral_v<Zvp##T>, int(sizeof(Zvp##T)), double(A), double(B),      \
        double(std::numeric_limits<Zvp##T>::lowest()), double(std::numeric_limits<Zvp##T>::max()),                \
        [](const void* d, int i) { return double(static_cast<const Zvp##T*>(d)[i]); }
#define STATEFUL(F, T, S, A, B)                                                                                \
    Kind{KIND(F, T, false, A, B), [](unsigned seed) -> Draw {                                                  \
             S* s = nullptr;                                                                                   \
             EXPECT_EQ(zvpsRand##F##InitAlloc_##T(&s, A, B, seed), zvpStsNoErr);                               \
             std::shared_ptr<S> h(s, [](S* p) { zvpsRand##F##Free_##T(p); });                                  \
             return [h](void* d, int n) { return zvpsRand##F##_##T(static_cast<Zvp##T*>(d), n, h.get()); };      \
         },                                                                                                    \
         [](void* d, int n, void* s) { return zvpsRand##F##_##T(static_cast<Zvp##T*>(d), n, static_cast<S*>(s)); },                                                                                                    \
         [] {                                                                                                  \
             S* s = nullptr;                                                                                   \
             const ZvpStatus st = zvpsRand##F##InitAlloc_##T(&s, A, B, 1u);                                     \
             return st == zvpStsNoErr ? zvpsRand##F##Free_##T(s) : s ? ZvpStatus(-100) : st;                   \
         },                                                                                                    \
         [](void* m) { return zvpsRand##F##Init_##T(static_cast<S*>(m), A, B, 1u); },                          \
         [](void* m) { return zvpsRand##F##Free_##T(static_cast<S*>(m)); }}
#define DIRECT(F, T, A, B)                                                                                     \
    Kind{KIND(F, T, true, A, B), [](unsigned seed) -> Draw {                                                   \
             auto s = std::make_shared<unsigned>(seed);                                                        \
             return [s](void* d, int n) { return zvpsRand##F##_Direct_##T(static_cast<Zvp##T*>(d), n, A, B, s.get()); }; \
         },                                                                                                    \
         [](void* d, int n, void* s) {                                                                         \
             return zvpsRand##F##_Direct_##T(static_cast<Zvp##T*>(d), n, A, B, static_cast<unsigned*>(s));     \
         }}
const std::vector<Kind> kKinds = {
    STATEFUL(Uniform, 8u, ZvpsRandUniState_8u, 3, 250),
    STATEFUL(Uniform, 16s, ZvpsRandUniState_16s, 30000, -1000),
    STATEFUL(Uniform, 32f, ZvpsRandUniState_32f, -2.5f, 7.0f),
    STATEFUL(Gauss, 8u, ZvpsRandGaussState_8u, 128, 40),
    STATEFUL(Gauss, 16s, ZvpsRandGaussState_16s, -5, 3000),
    STATEFUL(Gauss, 32f, ZvpsRandGaussState_32f, 1.5f, 2.0f),
    DIRECT(Uniform, 16s, -7, 9), DIRECT(Uniform, 32f, 1e6f, 1e6f + 3.0f), DIRECT(Uniform, 64f, 0.0, 10.0),
    DIRECT(Gauss, 16s, 100, 700), DIRECT(Gauss, 32f, 0.0f, 1.0f), DIRECT(Gauss, 64f, -3.0, 0.25),
};

std::vector<double> draw(const Kind& k, const Draw& d, int n) {
    std::vector<unsigned char> buf(std::size_t(n) * k.bytes + 1);
    unsigned char* p = buf.data() + (k.bytes == 1);  // misaligned where the type allows
    EXPECT_EQ(d(p, n), zvpStsNoErr);
    std::vector<double> v(n);
    for (int i = 0; i < n; ++i) v[i] = k.at(p, i);
    return v;
}

// A sequence split into calls of any lengths, odd or even, across the
// library's internal blocks, equals one call; so does every prefix length.
TEST(Random, SplitsAndPrefixesContinueOneSequence) {
    const std::vector<std::vector<int>> splits = {{10, 5}, {1, 1, 3, 2, 511, 512, 1, 469}, {5, 6, 1489}};
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
            for (int n : {1, 2, 3, 4, 47, 49, 255, 257, 513})
                EXPECT_TRUE(std::equal(whole.begin(), whole.begin() + n, draw(k, k.make(seed), n).begin())) << k.name << n;
        }
}

// Every generator against the model. Uniform samples exactly (the same double
// arithmetic, nearest with ties to even for integers). Gaussian deviates from
// a state within 4e-7 of the radius sqrt(-2 ln u) (the single-precision
// transform rounds u, the series and the products, half an ulp of 2^-24 each:
// about 3.4 ulps in all), Direct 64f within 2e-14 (double series, radius at
// most 6.7); then half an ulp of a float result, or half a unit before an
// integer result is rounded.
TEST(Random, EveryGeneratorMatchesTheModel) {
    for (const Kind& k : kKinds)
        for (unsigned seed : {1u, 2024u, 0x80000000u}) {
            const int n = 777;
            const auto got = draw(k, k.make(seed), n);
            Model m(seed);
            std::uint32_t lcg = seed;
            auto next = [&] { return k.direct ? std::int32_t(lcg = lcg * 69069u + 1013904243u) : m.next(); };
            const double lo = std::max(k.tmin, std::min(k.a, k.b)), hi = std::min(k.tmax, std::max(k.a, k.b));
            for (int i = 0; i < n;) {
                if (!k.gauss) {
                    const double v = next() * ((k.b - k.a) * 2.3283064365387e-10) + (k.a + k.b) / 2;
                    const double e = k.integral ? std::clamp(std::nearbyint(v), lo, hi) : k.bytes == 4 ? float(v) : v;
                    ASSERT_EQ(got[i], e) << k.name << " seed " << seed << " sample " << i;
                    ++i;
                    continue;
                }
                const std::int32_t r1 = next(), r2 = next();
                const long double u = (r1 + 2147483648.5L) / 4294967296.0L, t = 6.283185307179586476925L * r2 / 4294967296.0L;
                const double rho = double(std::sqrt(-2 * std::log(u)));
                for (int j = 0; j < (k.direct ? 1 : 2) && i < n; ++j, ++i) {
                    const double v = k.a + k.b * double(rho * (j ? std::sin(t) : std::cos(t)));
                    double tol = std::fabs(k.b) * (k.direct && k.bytes == 8 ? 2e-14 : 4e-7 * rho);
                    tol += k.integral ? 0.5 : (k.bytes == 4 ? 1.2e-7 : 1e-15) * (std::fabs(k.a) + std::fabs(k.b) * rho);
                    ASSERT_NEAR(got[i], k.integral ? std::clamp(v, k.tmin, k.tmax) : v, tol) << k.name << " seed " << seed << " sample " << i;
                }
            }
        }
}

// The 32f uniform record, byte for byte, after Init and after 7 samples; the
// other records carry their own tags.
TEST(Random, RecordLayoutTagsAndWriteBack) {
    int size = 0;
    ASSERT_EQ(zvpsRandUniformGetSize_32f(&size), zvpStsNoErr);
    ASSERT_EQ(size, 56);
    std::vector<unsigned char> mem(size + 3);
    auto* p = mem.data() + 3;  // records need no alignment
    auto* st = reinterpret_cast<ZvpsRandUniState_32f*>(p);
    auto field = [&](int off, auto v) { std::memcpy(&v, p + off, sizeof v); return v; };
    ASSERT_EQ(zvpsRandUniformInit_32f(st, -1.0f, 3.0f, 99u), zvpStsNoErr);
    EXPECT_TRUE(field(0, 0) == 37 && field(4, 0u) == 99u && field(8, 0.0f) == -1.0f && field(12, 0.0f) == 3.0f);
    EXPECT_TRUE(field(16, 0.0) == 1.0 && field(24, 0.0) == 4 * 2.3283064365387e-10);
    Model m(99u);
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(field(32, 0u) == m.c && field(36, 0u) == m.s1 && field(40, 0u) == m.s2 && field(44, 0u) == m.s3)
            << round;
        EXPECT_EQ(field(48, 0), m.b);
        float v[53];
        ASSERT_EQ(zvpsRandUniform_32f(v, 7 + 23 * round, st), zvpStsNoErr);
        for (int i = 0; i < 7 + 23 * round; ++i) m.next();
    }
    std::vector<unsigned char> rec(128);
    void* r = rec.data();
    auto tagAfter = [&](ZvpStatus st) { return st == zvpStsNoErr ? *static_cast<std::int32_t*>(r) : -1; };
    EXPECT_EQ(tagAfter(zvpsRandUniformInit_8u(static_cast<ZvpsRandUniState_8u*>(r), 0, 1, 1u)), 35);
    EXPECT_EQ(tagAfter(zvpsRandUniformInit_16s(static_cast<ZvpsRandUniState_16s*>(r), 0, 1, 1u)), 36);
    EXPECT_EQ(tagAfter(zvpsRandGaussInit_8u(static_cast<ZvpsRandGaussState_8u*>(r), 0, 1, 1u)), 38);
    EXPECT_EQ(tagAfter(zvpsRandGaussInit_16s(static_cast<ZvpsRandGaussState_16s*>(r), 0, 1, 1u)), 39);
    EXPECT_EQ(tagAfter(zvpsRandGaussInit_32f(static_cast<ZvpsRandGaussState_32f*>(r), 0, 1, 1u)), 40);
}

// Check order of generation: null pointers, then length, then the tag; on
// every error the destination and the record or seed stay as they were. The
// record of the other distribution of the same type, or a released one, is
// refused; Free of a record in caller memory clears its tag only.
TEST(Random, ChecksInOrderAndWriteNothing) {
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        const Kind& k = kKinds[i];
        std::vector<unsigned char> own(128), other(128), dst(16, 0xA5);
        unsigned seed = 42;
        void* o = k.direct ? static_cast<void*>(&seed) : own.data();
        void* foreign = k.direct ? nullptr : other.data();
        ASSERT_TRUE(k.direct || (k.init(o) == zvpStsNoErr && kKinds[(i + 3) % 6].init(foreign) == zvpStsNoErr));
        struct { bool nullDst; int len; void* state; ZvpStatus want; } rows[] = {
            {true, 0, foreign, zvpStsNullPtrErr}, {false, 0, nullptr, zvpStsNullPtrErr}, {false, 0, k.direct ? o : foreign, zvpStsSizeErr},
            {false, -1, o, zvpStsSizeErr}, {false, 4, foreign, k.direct ? zvpStsNullPtrErr : zvpStsContextMatchErr}};
        for (const auto& r : rows) {
            const std::vector<unsigned char> before(static_cast<unsigned char*>(o), static_cast<unsigned char*>(o) + (k.direct ? 4 : 128));
            EXPECT_EQ(k.call(r.nullDst ? nullptr : dst.data(), r.len, r.state), r.want) << k.name << " len " << r.len;
            EXPECT_TRUE(std::ranges::all_of(dst, [](unsigned char x) { return x == 0xA5; })) << k.name;
            EXPECT_TRUE(std::equal(before.begin(), before.end(), static_cast<unsigned char*>(o))) << k.name;
        }
        if (k.direct) continue;
        EXPECT_TRUE(k.release(foreign) == zvpStsContextMatchErr && k.release(nullptr) == zvpStsNullPtrErr) << k.name;
        EXPECT_EQ(k.release(o), zvpStsNoErr) << k.name;
        EXPECT_TRUE(k.call(dst.data(), 2, o) == zvpStsContextMatchErr && k.release(o) == zvpStsContextMatchErr) << k.name;
        EXPECT_EQ(k.init(nullptr), zvpStsNullPtrErr) << k.name;
    }
    EXPECT_TRUE(zvpsRandGaussGetSize_8u(nullptr) == zvpStsNullPtrErr && zvpsRandGaussInitAlloc_16s(nullptr, 0, 1, 1u) == zvpStsNullPtrErr);
}

// A failed allocation returns -9, leaves the address alone and holds nothing;
// every generator made and used is released by Free. Results do not depend
// on the caller's rounding mode or flush-to-zero.
TEST(Random, AllocationAndCallerFloatingPointState) {
    for (const Kind& k : kKinds)
        if (k.initAlloc) {
            alloc::reset(1);
            EXPECT_EQ(k.initAlloc(), zvpStsMemAllocErr) << k.name;
            EXPECT_EQ(alloc::live, 0) << k.name;
        }
    alloc::reset();
    std::vector<std::vector<double>> plain;
    for (const Kind& k : kKinds) plain.push_back(draw(k, k.make(11u), 301));
    EXPECT_EQ(alloc::live, 0);
    const unsigned csr = _mm_getcsr();
    for (int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        _mm_setcsr(_mm_getcsr() | 0x8040);
        for (std::size_t i = 0; i < kKinds.size(); ++i) EXPECT_EQ(draw(kKinds[i], kKinds[i].make(11u), 301), plain[i]) << kKinds[i].name;
        _mm_setcsr(csr);
        std::fesetround(FE_TONEAREST);
    }
}

// Distribution checks on 2^18 samples with fixed seeds. Limits: the mean and
// variance within 5 standard errors (a correct generator exceeds either with
// probability below 6e-7), the Kolmogorov-Smirnov statistic sqrt(n) D below
// 2.5 (probability 2 exp(-2 2.5^2) = 7.5e-6), and the chi-square of the 256
// 8u values (255 degrees of freedom) below 400 (probability about 2e-8).
TEST(Random, DistributionsHoldAtStatedLimits) {
    const int n = 1 << 18;
    auto check = [&](std::vector<double> v, double mean, double var, double kurt, const std::function<double(double)>& cdf,
                     const char* what) {
        double m = 0, q = 0, d = 0;
        for (double x : v) m += x / n;
        for (double x : v) q += (x - m) * (x - m) / (n - 1);
        EXPECT_NEAR(m, mean, 5 * std::sqrt(var / n)) << what;
        EXPECT_NEAR(q, var, 5 * var * std::sqrt((kurt - 1) / n)) << what;
        if (!cdf) return;
        std::sort(v.begin(), v.end());
        for (int i = 0; i < n; ++i) d = std::max({d, double(i + 1) / n - cdf(v[i]), cdf(v[i]) - double(i) / n});
        EXPECT_LT(std::sqrt(double(n)) * d, 2.5) << what;
    };
    auto phi = [](double m, double s) { return [=](double x) { return 0.5 * std::erfc(-(x - m) / (s * std::sqrt(2.0))); }; };
    for (unsigned seed : {1u, 77777u}) {
        auto get = [&](int i) { return draw(kKinds[i], kKinds[i].make(seed), n); };
        check(get(2), 2.25, 9.5 * 9.5 / 12, 1.8, [](double x) { return (x + 2.5) / 9.5; }, "Uniform_32f");
        check(get(8), 5.0, 100.0 / 12, 1.8, [](double x) { return x / 10; }, "Uniform_Direct_64f");
        check(get(5), 1.5, 4.0, 3.0, phi(1.5, 2.0), "Gauss_32f");
        check(get(11), -3.0, 0.0625, 3.0, phi(-3.0, 0.25), "Gauss_Direct_64f");
        check(get(4), -5.0, 9e6 + 1.0 / 12, 3.0, nullptr, "Gauss_16s");
        std::vector<unsigned char> rec(128);
        std::vector<Zvp8u> b(n);
        auto* s = reinterpret_cast<ZvpsRandUniState_8u*>(rec.data());
        ASSERT_TRUE(zvpsRandUniformInit_8u(s, 0, 255, seed) == zvpStsNoErr && zvpsRandUniform_8u(b.data(), n, s) == zvpStsNoErr);
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

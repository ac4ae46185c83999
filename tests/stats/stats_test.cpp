// Sums, means and deviations against oracles written here: compensated
// long-double sums and two-pass deviations for float data, exact integers
// (wide_int.h) for integer data. Checks and nothing-written-on-error come
// from the shape table; this file keeps what is particular to the family.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "wide_int.h"
#include "zvps.h"

namespace {

using namespace zvp::test;
using LD = long double;

// Neumaier-compensated long-double sum: about 2^-64 |S| + n^2 2^-128 sum|x|,
// far below every bound checked here.
struct Ref {
    LD s = 0, c = 0, mag = 0;
    void add(LD x) {
        const LD t = s + x;
        c += std::fabs(s) >= std::fabs(x) ? (s - t) + x : (x - t) + s;
        s = t;
        mag += std::fabs(x);
    }
    LD v() const { return s + c; }
};

template <class T>
LD ulp(LD x) {
    const T a = std::fabs(T(x));
    return LD(std::nextafter(a, T(INFINITY)) - a);
}

std::vector<int> lengths() {
    std::vector<int> v;
    for (int n = 1; n <= 70; ++n) v.push_back(n);
    for (int n : {257, 4099, 65537, 1000000}) v.push_back(n);
    return v;
}

// ---- Float data --------------------------------------------------------------------

enum What { Sum, Mean, Dev, MeanDev };
struct FloatCase {
    const char* name;
    bool dbl;
    int parts, hint;  // hint -1: the export takes none
    What what;
    std::function<ZvpStatus(const void*, int, void*, void*, int)> call;
};
const std::vector<FloatCase>& floatCases() {
    static const std::vector<FloatCase> v = [] {
        std::vector<FloatCase> c = {
            {"Sum_32fc", false, 2, 1, Sum, [](const void* s, int n, void* d, void*, int h) { return zvpsSum_32fc((const Zvp32fc*)s, n, (Zvp32fc*)d, ZvpHintAlgorithm(h)); }},
            {"Mean_32fc", false, 2, 1, Mean, [](const void* s, int n, void* d, void*, int h) { return zvpsMean_32fc((const Zvp32fc*)s, n, (Zvp32fc*)d, ZvpHintAlgorithm(h)); }},
            {"Sum_32f", false, 1, 1, Sum, [](const void* s, int n, void* d, void*, int h) { return zvpsSum_32f((const Zvp32f*)s, n, (Zvp32f*)d, ZvpHintAlgorithm(h)); }},
            {"Mean_32f", false, 1, 1, Mean, [](const void* s, int n, void* d, void*, int h) { return zvpsMean_32f((const Zvp32f*)s, n, (Zvp32f*)d, ZvpHintAlgorithm(h)); }},
            {"StdDev_32f", false, 1, 1, Dev, [](const void* s, int n, void* d, void*, int h) { return zvpsStdDev_32f((const Zvp32f*)s, n, (Zvp32f*)d, ZvpHintAlgorithm(h)); }},
            {"MeanStdDev_32f", false, 1, -1, MeanDev, [](const void* s, int n, void* d, void* e, int) { return zvpsMeanStdDev_32f((const Zvp32f*)s, n, (Zvp32f*)d, (Zvp32f*)e); }},
            {"Sum_64f", true, 1, -1, Sum, [](const void* s, int n, void* d, void*, int) { return zvpsSum_64f((const Zvp64f*)s, n, (Zvp64f*)d); }},
            {"Mean_64f", true, 1, -1, Mean, [](const void* s, int n, void* d, void*, int) { return zvpsMean_64f((const Zvp64f*)s, n, (Zvp64f*)d); }},
            {"Sum_64fc", true, 2, -1, Sum, [](const void* s, int n, void* d, void*, int) { return zvpsSum_64fc((const Zvp64fc*)s, n, (Zvp64fc*)d); }},
            {"Mean_64fc", true, 2, -1, Mean, [](const void* s, int n, void* d, void*, int) { return zvpsMean_64fc((const Zvp64fc*)s, n, (Zvp64fc*)d); }},
            {"StdDev_64f", true, 1, -1, Dev, [](const void* s, int n, void* d, void*, int) { return zvpsStdDev_64f((const Zvp64f*)s, n, (Zvp64f*)d); }},
            {"MeanStdDev_64f", true, 1, -1, MeanDev, [](const void* s, int n, void* d, void* e, int) { return zvpsMeanStdDev_64f((const Zvp64f*)s, n, (Zvp64f*)d, (Zvp64f*)e); }},
        };
        return c;
    }();
    return v;
}

// Results of one call, as long doubles: up to two values (re, im; or mean, dev).
struct Got {
    ZvpStatus st;
    LD r[2];
};
Got callAt(const FloatCase& fc, const std::vector<double>& x, int n, int hint, int shift) {
    // The data at a misalignment of `shift` elements.
    std::vector<unsigned char> buf((x.size() + 4) * 8);
    const std::size_t sz = fc.dbl ? 8 : 4;
    unsigned char* p = buf.data() + shift * sz;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (fc.dbl) std::memcpy(p + 8 * i, &x[i], 8);
        else { const float f = float(x[i]); std::memcpy(p + 4 * i, &f, 4); }
    }
    double o[2] = {0, 0}, e = 0;
    float of[2] = {0, 0}, ef = 0;
    Got g;
    g.st = fc.dbl ? fc.call(p, n, o, &e, hint) : fc.call(p, n, of, &ef, hint);
    if (!fc.dbl) o[0] = of[0], o[1] = of[1], e = ef;
    g.r[0] = o[0];
    g.r[1] = fc.what == MeanDev ? e : o[1];
    return g;
}

// Values offset + spread * u, u uniform in [-1, 1], exactly representable in the data type.
std::vector<double> draw(int count, bool dbl, double offset, double spread, unsigned seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<double> x(count);
    for (double& v : x) v = dbl ? offset + spread * u(g) : double(float(offset + spread * u(g)));
    return x;
}

// Error bounds. A chain of k additions in precision eps errs by at most
// about k eps times the sum of magnitudes; the kernels keep sixteen single
// or eight double chains of n / chains additions, combined in 6 more steps.
LD chainBound(int values, bool dbl, LD mag) {
    const LD eps = dbl ? 0x1p-53L : 0x1p-24L;
    return (LD(values) / (dbl ? 8 : 16) + 8) * eps * mag;
}
// The deviation's error from an error dNum in n S2 - S1^2.
LD devBound(LD sd, LD dNum, int n) {
    const LD d = dNum / (LD(n) * (n - 1));
    return sd > 0 ? std::min(d / (2 * sd), std::sqrt(d)) : std::sqrt(d);
}

void checkFloat(const FloatCase& fc, const std::vector<double>& x, int n, int hint) {
    const bool fast = hint == 1, single = !fc.dbl;
    const Got g = callAt(fc, x, n, hint, (n + hint) % 4);
    ASSERT_EQ(g.st, zvpStsNoErr);
    SCOPED_TRACE(::testing::Message() << fc.name << " n=" << n << " hint=" << hint);
    auto near = [&](LD got, LD want, LD bound) {
        if (std::isnan(double(want))) {
            EXPECT_TRUE(std::isnan(double(got)));
            return;
        }
        EXPECT_LE(std::fabs(got - want), bound) << "got " << double(got) << " want " << double(want);
    };
    auto resultUlp = [&](LD v) { return single ? ulp<float>(v) : ulp<double>(v); };
    if (fc.what == Sum || fc.what == Mean) {
        for (int k = 0; k < fc.parts; ++k) {
            Ref r;
            for (int i = k; i < n * fc.parts; i += fc.parts) r.add(x[i]);
            const LD div = fc.what == Mean ? n : 1;
            // The accurate single-precision path: pairs added in double, then
            // double-double partial sums.
            const LD err = single && !fast ? 0x1p-51L * r.mag : chainBound(n * fc.parts, fc.dbl || !fast, r.mag);
            near(g.r[k], r.v() / div, err / div + resultUlp(r.v() / div));
        }
        return;
    }
    // Deviation: two passes in long double.
    Ref s;
    for (int i = 0; i < n; ++i) s.add(x[i]);
    const LD mean = s.v() / n;
    Ref q;
    for (int i = 0; i < n; ++i) q.add((x[i] - mean) * (x[i] - mean));
    const LD sd = std::sqrt(q.v() / (n - 1));
    // The kernels sum d = x - x[0].
    const LD x0 = x[0];
    Ref d1, d2;
    for (int i = 0; i < n; ++i) d1.add(x[i] - x0), d2.add((x[i] - x0) * (x[i] - x0));
    const LD size = LD(n) * d2.v() + 2 * std::fabs(d1.v()) * d1.mag;
    const LD dNum = single && !fast ? 0x1p-50L * size : 3 * chainBound(n, !single, size);
    near(g.r[fc.what == MeanDev ? 1 : 0], sd, devBound(sd, dNum, n) + 2 * resultUlp(sd));
    if (fc.what == MeanDev) near(g.r[0], mean, chainBound(n, true, s.mag) / n + resultUlp(mean));
}

TEST(StatsFloat, WithinDerivedBoundsOfLongDoubleOracles) {
    for (const FloatCase& fc : floatCases())
        for (int n : lengths()) {
            if (n < 2 && (fc.what == Dev || fc.what == MeanDev)) continue;
            // Zero mean; and a large offset carrying a small spread (cancellation).
            for (int kind = 0; kind < 2; ++kind) {
                const auto x = draw(n * fc.parts, fc.dbl, kind ? (fc.dbl ? 1e8 : 1e4) : 0, kind ? 1e-2 : 1, n * 7 + kind);
                for (int hint : fc.hint < 0 ? std::vector<int>{0} : std::vector<int>{1, 2})
                    checkFloat(fc, x, n, hint);
            }
        }
}

// Only the fast hint changes the result; every other value is the
// accurate path, bit for bit. The result never depends on alignment.
TEST(StatsFloat, OnlyTheFastHintIsFastAndAlignmentNeverMatters) {
    std::vector<double> big(1001, 1.0);
    big[0] = 1e8;  // the fast sums lose the ones that meet 1e8 in its lane
    for (const FloatCase& fc : floatCases()) {
        if (fc.hint < 0) continue;
        const int n = 1001 / fc.parts;
        const Got acc = callAt(fc, big, n, 2, 0), fast = callAt(fc, big, n, 1, 0);
        EXPECT_NE(acc.r[0], fast.r[0]) << fc.name;
        for (int h : {0, 3, -1, 100, INT_MIN, INT_MAX}) {
            const Got g = callAt(fc, big, n, h, 1);
            EXPECT_TRUE(g.r[0] == acc.r[0] && g.r[1] == acc.r[1]) << fc.name << " hint " << h;
        }
        const auto x = draw(77 * fc.parts, false, 3, 1, 5);
        for (int h : {1, 2})
            for (int shift = 1; shift < 4; ++shift) {
                const Got a = callAt(fc, x, 77, h, 0), b = callAt(fc, x, 77, h, shift);
                EXPECT_TRUE(a.r[0] == b.r[0] && a.r[1] == b.r[1]) << fc.name << " misaligned by " << shift;
            }
    }
}

// A NaN anywhere gives a NaN (in its component); opposite infinities give a
// NaN sum, one infinity an infinite one, and an infinite deviation is NaN.
TEST(StatsFloat, NaNAndInfinities) {
    for (const FloatCase& fc : floatCases())
        for (int n : {2, 5, 37, 70})
            for (int at : {0, n / 2, n - 1})
                for (int hint : {1, 2}) {
                    auto x = draw(n * fc.parts, fc.dbl, 0, 1, n);
                    x[at * fc.parts] = NAN;
                    const Got g = callAt(fc, x, n, hint, at % 4);
                    const bool dev = fc.what == Dev || fc.what == MeanDev;
                    const int k = fc.what == MeanDev ? 1 : 0;
                    EXPECT_TRUE(std::isnan(double(g.r[k]))) << fc.name << " " << n << " " << at;
                    x[at * fc.parts] = INFINITY;
                    const Got inf = callAt(fc, x, n, hint, 0);
                    if (dev) {
                        EXPECT_TRUE(std::isnan(double(inf.r[k]))) << fc.name;
                    } else {
                        EXPECT_EQ(double(inf.r[0]), INFINITY) << fc.name;
                    }
                    x[(n - 1 - at) * fc.parts] = -INFINITY;
                    if (!dev && at != n - 1 - at) {
                        EXPECT_TRUE(std::isnan(double(callAt(fc, x, n, hint, 0).r[0]))) << fc.name;
                    }
                }
}

TEST(StatsFloat, DeviationEdges) {
    const double a[] = {1, 2, 3, 4};
    double d = -1;
    EXPECT_EQ(zvpsStdDev_64f(a, 1, &d), zvpStsSizeErr);
    EXPECT_EQ(d, -1);
    float f = -1, m = -1;
    EXPECT_EQ(zvpsMeanStdDev_32f(reinterpret_cast<const float*>(a), 1, &m, &f), zvpStsSizeErr);
    EXPECT_TRUE(f == -1 && m == -1);
    ASSERT_EQ(zvpsStdDev_64f(a, 4, &d), zvpStsNoErr);
    EXPECT_NEAR(d, std::sqrt(5.0 / 3), 2.3e-16);
    // Constant vectors whose n S2 - S1^2 rounds below zero give exactly 0.
    for (double c : {0.1, 1e-3, 3.3, 1e15 + 1}) {
        const std::vector<double> v(999, c);
        ASSERT_EQ(zvpsStdDev_64f(v.data(), 999, &d), zvpStsNoErr);
        EXPECT_EQ(d, 0.0) << c;
        const std::vector<float> w(999, float(c));
        for (int h : {1, 2}) {
            ASSERT_EQ(zvpsStdDev_32f(w.data(), 999, &f, ZvpHintAlgorithm(h)), zvpStsNoErr);
            EXPECT_EQ(f, 0.0f) << c;
        }
    }
}

// ---- Integer data ----------------------------------------------------------------

// Mean: the quotient rounded to nearest even; a negative factor shifts the
// sum first when it lies in the 32-bit range, else the quotient; a shift of
// 32 or more saturates a non-zero mean.
template <class D>
D meanOracle(const Wide& s, int n, int sf) {
    const Wide q = roundQuotient(s, Wide::of(n), Mode::NearestEven);
    if (sf >= 0) return scaled<D>(q, sf);
    if (s.isZero()) return 0;
    if (sf <= -32) return s.negative() ? std::numeric_limits<D>::min() : std::numeric_limits<D>::max();
    const bool in32 = compare(s, Wide::of(INT32_MAX)) <= 0 && compare(s, Wide::of(INT32_MIN)) >= 0;
    return in32 ? quotient<D>(s, Wide::of(n), sf, Mode::NearestEven) : scaled<D>(q, sf);
}

// The deviation in two long-double passes, scaled, rounded to nearest even,
// saturated; `tie` is set when it lies too near a half to decide.
template <class D>
D devOracle(const std::vector<std::int64_t>& x, int sf, bool& tie) {
    LD mean = 0, q = 0;
    for (auto v : x) mean += v;
    mean /= x.size();
    for (auto v : x) q += (v - mean) * (v - mean);
    const LD r = std::ldexp(std::sqrt(q / (x.size() - 1)), -std::clamp(sf, -200, 200));
    tie = std::fabs(r - std::floor(r) - 0.5L) < 1e-9L * (1 + r);
    if (r >= LD(std::numeric_limits<D>::max())) return std::numeric_limits<D>::max();
    return D(std::nearbyint(r));
}

struct IntCase {
    const char* name;
    int bits, parts;  // source part width; 2 for complex
    What what;
    // Calls with the source parts widened to int64 and returns the result parts.
    std::function<std::vector<std::int64_t>(const std::vector<std::int64_t>&, int, int, ZvpStatus&)> call;
};
template <class S, class D, class F>
IntCase intCase(const char* name, int parts, What w, F f) {
    return {name, int(8 * sizeof(S)), parts, w, [f](const std::vector<std::int64_t>& x, int n, int sf, ZvpStatus& st) {
                std::vector<S> s(x.begin(), x.end());
                D out[2] = {0, 0};
                st = f(s.data(), n, out, sf);
                return std::vector<std::int64_t>{out[0], out[1]};
            }};
}
#define SUMC(f, D, DC) intCase<Zvp16s, D>(#f, 2, #f[0] == 'S' ? Sum : Mean, [](const Zvp16s* s, int n, D* o, int sf) { \
    return zvps##f((const Zvp16sc*)s, n, (DC*)o, sf); })
#define REAL(f, S, D, W) intCase<S, D>(#f, 1, W, [](const S* s, int n, D* o, int sf) { return zvps##f(s, n, o, sf); })
#define MSD(f, D) intCase<Zvp16s, D>(#f, 1, MeanDev, [](const Zvp16s* s, int n, D* o, int sf) { return zvps##f(s, n, o, o + 1, sf); })

TEST(StatsInt, ExactAgainstWideIntegerOracles) {
    const std::vector<IntCase> cases = {
        REAL(Sum_16s_Sfs, Zvp16s, Zvp16s, Sum), REAL(Sum_16s32s_Sfs, Zvp16s, Zvp32s, Sum),
        REAL(Sum_32s_Sfs, Zvp32s, Zvp32s, Sum), SUMC(Sum_16sc_Sfs, Zvp16s, Zvp16sc),
        SUMC(Sum_16sc32sc_Sfs, Zvp32s, Zvp32sc), REAL(Mean_16s_Sfs, Zvp16s, Zvp16s, Mean),
        REAL(Mean_32s_Sfs, Zvp32s, Zvp32s, Mean), SUMC(Mean_16sc_Sfs, Zvp16s, Zvp16sc),
        REAL(StdDev_16s_Sfs, Zvp16s, Zvp16s, Dev), REAL(StdDev_16s32s_Sfs, Zvp16s, Zvp32s, Dev),
        MSD(MeanStdDev_16s_Sfs, Zvp16s), MSD(MeanStdDev_16s32s_Sfs, Zvp32s)};
    std::vector<int> sfs = {INT_MIN, -100, INT_MAX, 100};
    for (int sf = -66; sf <= 66; ++sf) sfs.push_back(sf);
    std::mt19937_64 g(11);
    for (const IntCase& c : cases) {
        const bool dev = c.what == Dev || c.what == MeanDev;
        const int resultBits = std::strstr(c.name, "32s") ? 32 : 16;
        for (int n : {1, 2, 3, 7, 8, 9, 16, 17, 31, 70, 1001, 300007}) {
            if (dev && n < 2) continue;
            for (int kind = 0; kind < 3; ++kind) {  // random, all minimum, all maximum
                const std::int64_t lo = -(std::int64_t(1) << (c.bits - 1)), hi = -lo - 1;
                std::vector<std::int64_t> x(std::size_t(n) * c.parts);
                for (auto& v : x) v = kind == 1 ? lo : kind == 2 ? hi : g() % 3 == 0 ? (g() % 2 ? lo : hi) : std::int64_t(g() % (hi - lo + 1)) + lo;
                Wide s[2];
                for (std::size_t i = 0; i < x.size(); ++i) s[i % c.parts] = s[i % c.parts] + Wide::of(x[i]);
                for (int sf : sfs) {
                    if (n > 1000 && sf % 16 != 0) continue;
                    ZvpStatus st;
                    const auto got = c.call(x, n, sf, st);
                    ASSERT_EQ(st, zvpStsNoErr);
                    for (int k = 0; k < (c.what == MeanDev ? 2 : c.parts); ++k) {
                        std::int64_t want;
                        bool tie = false;
                        const What w = c.what == MeanDev ? (k ? Dev : Mean) : c.what;
                        const Wide& sk = s[c.parts == 2 ? k : 0];
                        if (w == Sum) want = resultBits == 32 ? scaled<Zvp32s>(sk, sf) : scaled<Zvp16s>(sk, sf);
                        else if (w == Mean) want = resultBits == 32 ? meanOracle<Zvp32s>(sk, n, sf) : meanOracle<Zvp16s>(sk, n, sf);
                        else want = resultBits == 32 ? devOracle<Zvp32s>(x, sf, tie) : devOracle<Zvp16s>(x, sf, tie);
                        if (tie) continue;
                        ASSERT_EQ(got[k], want) << c.name << " n=" << n << " kind=" << kind << " sf=" << sf << " part " << k;
                    }
                }
            }
        }
    }
}

TEST(StatsInt, MeanOfThirtyTwoBitSumsTakesTwoOrders) {
    auto mean = [](std::vector<Zvp32s> v, int sf) {
        Zvp32s m = 0;
        EXPECT_EQ(zvpsMean_32s_Sfs(v.data(), int(v.size()), &m, sf), zvpStsNoErr);
        return m;
    };
    EXPECT_EQ(mean({1, 1, 1, 2}, -1), 2);   // 10/4 = 2.5 to even
    EXPECT_EQ(mean({1, 1, 2, 3}, -1), 4);   // 14/4 = 3.5 to even
    EXPECT_EQ(mean({-1, -1, -1, -2}, -1), -2);
    // Sum 2^31 - 2 (in range): shifted first, 2^30 - 1 exactly. Sum 2^31 + 2:
    // divided first, 2^29 + 1/2 to even, then doubled: 2^30.
    EXPECT_EQ(mean({INT32_MAX, INT32_MAX, -INT32_MAX - 1, 0}, -1), (1 << 30) - 1);
    EXPECT_EQ(mean({INT32_MAX, INT32_MAX, -INT32_MAX + 1, 2}, -1), 1 << 30);
    EXPECT_EQ(mean({1, 0, 0, 0}, -32), INT32_MAX);
    EXPECT_EQ(mean({-1, 0, 0, 0}, -40), INT32_MIN);
}

}  // namespace

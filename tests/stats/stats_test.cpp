// Sums, means, deviations, norms and dot products against oracles written
// here: compensated long-double sums and two-pass deviations for float data
// (within bounds derived below), exact integers (wide_int.h) for integer
// data. Checks and nothing-written-on-error come from the shape table.
#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "shapes.h"
#include "wide_int.h"

namespace {

using namespace zvp::test;
using LD = long double;
using Vec = std::vector<LD>;

enum Kind { Sum, Mean, Dev, MeanDev, Inf, L1, L2, L2Sqr, Dot };

// One export: sources as parts (re, im interleaved) in long double, results
// as up to two parts (re, im; or mean, deviation).
struct Case {
    std::string name;
    Kind kind;
    bool diff = false, sf = false, hint = false;
    int partsA = 1, partsB = 0, bitsA = 0, bitsB = 0, resultBits = 0;  // bits 0: float
    bool dataSingle = false, resultSingle = false;
    // (a, b, len, scale factor or hint, misalignment in elements, results)
    std::function<ZvpStatus(const Vec&, const Vec&, int, int, int, LD*)> call;
};

template <class T>
using P = typename PartOf<T>::type;
template <class T>
const T* place(const Vec& v, int shift, std::vector<P<T>>& store) {
    store.assign(shift, P<T>());
    store.insert(store.end(), v.begin(), v.end());
    return reinterpret_cast<const T*>(store.data() + shift);
}
template <class D>
void put(const D& d, LD* out) {
    const auto* p = reinterpret_cast<const P<D>*>(&d);
    out[0] = p[0];
    if (PartOf<D>::parts == 2) out[1] = p[1];
}
template <class T>
int bitsOf() { return std::is_integral_v<P<T>> ? 8 * sizeof(P<T>) : 0; }
template <class A, class B, class D, class... S>
Case describe(const char* name, Kind k) {
    Case c;
    c.name = name, c.kind = k;
    c.sf = (std::is_same_v<S, int> || ...), c.hint = (std::is_same_v<S, ZvpHintAlgorithm> || ...);
    c.partsA = PartOf<A>::parts, c.bitsA = bitsOf<A>(), c.resultBits = bitsOf<D>();
    if constexpr (!std::is_void_v<B>) c.partsB = PartOf<B>::parts, c.bitsB = bitsOf<B>();
    c.dataSingle = std::is_same_v<P<A>, float>, c.resultSingle = std::is_same_v<P<D>, float>;
    return c;
}
template <class A, class D, class... S>
Case one(const char* n, Kind k, ZvpStatus (*f)(const A*, int, D*, S...)) {
    Case c = describe<A, void, D, S...>(n, k);
    c.call = [f](const Vec& a, const Vec&, int len, [[maybe_unused]] int x, int shift, LD* out) {
        std::vector<P<A>> s;
        D d{};
        const ZvpStatus st = f(place<A>(a, shift, s), len, &d, S(x)...);
        put(d, out);
        return st;
    };
    return c;
}
template <class A, class D, class... S>
Case both(const char* n, ZvpStatus (*f)(const A*, int, D*, D*, S...)) {
    Case c = describe<A, void, D, S...>(n, MeanDev);
    c.call = [f](const Vec& a, const Vec&, int len, [[maybe_unused]] int x, int shift, LD* out) {
        std::vector<P<A>> s;
        D m{}, d{};
        const ZvpStatus st = f(place<A>(a, shift, s), len, &m, &d, S(x)...);
        out[0] = m, out[1] = d;
        return st;
    };
    return c;
}
template <class A, class B, class D, class... S>
Case two(const char* n, Kind k, bool diff, ZvpStatus (*f)(const A*, const B*, int, D*, S...)) {
    Case c = describe<A, B, D, S...>(n, k);
    c.diff = diff, c.partsB = diff ? 0 : c.partsB;
    c.call = [f](const Vec& a, const Vec& b, int len, [[maybe_unused]] int x, int shift, LD* out) {
        std::vector<P<A>> s;
        std::vector<P<B>> t;
        D d{};
        const ZvpStatus st = f(place<A>(a, shift, s), place<B>(b, 0, t), len, &d, S(x)...);
        put(d, out);
        return st;
    };
    return c;
}
#define ONE(f, k) one(#f, k, zvps##f)
#define NORMS(k, t) one("Norm_" #k "_" #t, k, zvpsNorm_##k##_##t), two("NormDiff_" #k "_" #t, k, true, zvpsNormDiff_##k##_##t)
#define DOT(t) two("DotProd_" #t, Dot, false, zvpsDotProd_##t)

const std::vector<Case>& cases() {
    static const std::vector<Case> v = {
        ONE(Sum_32f, Sum), ONE(Sum_32fc, Sum), ONE(Sum_64f, Sum), ONE(Sum_64fc, Sum), ONE(Sum_16s_Sfs, Sum),
        ONE(Sum_16sc_Sfs, Sum), ONE(Sum_16s32s_Sfs, Sum), ONE(Sum_16sc32sc_Sfs, Sum), ONE(Sum_32s_Sfs, Sum),
        ONE(Mean_32f, Mean), ONE(Mean_32fc, Mean), ONE(Mean_64f, Mean), ONE(Mean_64fc, Mean), ONE(Mean_16s_Sfs, Mean),
        ONE(Mean_16sc_Sfs, Mean), ONE(Mean_32s_Sfs, Mean), ONE(StdDev_32f, Dev), ONE(StdDev_64f, Dev),
        ONE(StdDev_16s_Sfs, Dev), ONE(StdDev_16s32s_Sfs, Dev), both("MeanStdDev_32f", zvpsMeanStdDev_32f),
        both("MeanStdDev_64f", zvpsMeanStdDev_64f), both("MeanStdDev_16s_Sfs", zvpsMeanStdDev_16s_Sfs),
        both("MeanStdDev_16s32s_Sfs", zvpsMeanStdDev_16s32s_Sfs),
        NORMS(Inf, 16s32f), NORMS(Inf, 16s32s_Sfs), NORMS(Inf, 32f), NORMS(Inf, 64f), NORMS(Inf, 32fc32f),
        NORMS(Inf, 64fc64f), NORMS(L1, 16s32f), NORMS(L1, 16s32s_Sfs), NORMS(L1, 16s64s_Sfs), NORMS(L1, 32f),
        NORMS(L1, 64f), NORMS(L1, 32fc64f), NORMS(L1, 64fc64f), NORMS(L2, 16s32f), NORMS(L2, 16s32s_Sfs),
        NORMS(L2, 32f), NORMS(L2, 64f), NORMS(L2, 32fc64f), NORMS(L2, 64fc64f), NORMS(L2Sqr, 16s64s_Sfs),
        DOT(32f), DOT(64f), DOT(32fc), DOT(64fc), DOT(32f64f), DOT(32fc64fc), DOT(32f32fc), DOT(32f32fc64fc),
        DOT(64f64fc), DOT(16s32f), DOT(16sc32fc), DOT(16s16sc32fc), DOT(16s64s), DOT(16sc64sc), DOT(16s16sc64sc),
        DOT(16s_Sfs), DOT(16sc_Sfs), DOT(16s16sc_Sfs), DOT(16s32s_Sfs), DOT(16sc32sc_Sfs), DOT(16s16sc32sc_Sfs),
        DOT(16s32s32s_Sfs), DOT(32s_Sfs), DOT(32sc_Sfs), DOT(32s32sc_Sfs)};
    return v;
}
std::size_t countB(const Case& c, int n) { return std::size_t(n) * (c.diff ? c.partsA : c.partsB); }

// offset + spread * u (u uniform in [-1, 1]) in the data's precision; or
// integers: random with a third at the extremes (kind 0), all minimum (1),
// all maximum (2).
Vec draw(std::size_t count, int bits, bool single, std::mt19937_64& g, int kind, LD offset = 0, LD spread = 1) {
    Vec v(count);
    const std::int64_t lo = bits ? -(std::int64_t(1) << (bits - 1)) : 0, hi = -lo - 1;
    std::uniform_real_distribution<double> u(-1, 1);
    for (LD& x : v) {
        if (!bits) x = single ? LD(float(offset + spread * u(g))) : LD(double(offset + spread * u(g)));
        else x = kind == 1 ? lo : kind == 2 ? hi : g() % 3 == 0 ? (g() % 2 ? lo : hi) : LD(std::int64_t(g() % std::uint64_t(hi - lo + 1)) + lo);
    }
    return v;
}

// ---- Float data: bounds ----------------------------------------------------------------

// Neumaier-compensated long-double sum: about 2^-64 |S|, far below every bound here.
struct Ref {
    LD s = 0, c = 0, mag = 0;
    void add(LD x) {
        const LD t = s + x;
        c += std::fabs(s) >= std::fabs(x) ? (s - t) + x : (x - t) + s;
        s = t, mag += std::fabs(x);
    }
    LD v() const { return s + c; }
};
// A chain of k additions in precision eps errs by at most about k eps times
// the sum of magnitudes; the kernels keep sixteen single or eight double
// chains over the values, combined in 6 more steps.
LD chainBound(std::size_t values, bool single, LD mag) {
    return (LD(values) / (single ? 16 : 8) + 8) * (single ? 0x1p-24L : 0x1p-53L) * mag;
}
LD ulpOf(bool single, LD x) {
    return single ? LD(std::nextafter(std::fabs(float(x)), INFINITY) - std::fabs(float(x)))
                  : LD(std::nextafter(std::fabs(double(x)), INFINITY) - std::fabs(double(x)));
}
// The deviation's error from an error dNum in n S2 - S1^2.
LD devBound(LD sd, LD dNum, int n) {
    const LD d = dNum / (LD(n) * (n - 1));
    return sd > 0 ? std::min(d / (2 * sd), std::sqrt(d)) : std::sqrt(d);
}

// The oracle's values and the error each may carry.
void floatOracle(const Case& c, const Vec& a, const Vec& b, int n, bool fast, LD* want, LD* bound) {
    // Single-precision sums: single data and result, and the fast hint where there is one.
    const bool single = c.dataSingle && c.resultSingle && (!c.hint || fast);
    const std::size_t values = std::size_t(n) * c.partsA;
    want[1] = bound[1] = 0;
    if (c.kind == Sum || c.kind == Mean) {
        for (int k = 0; k < c.partsA; ++k) {
            Ref r;
            for (std::size_t i = k; i < values; i += c.partsA) r.add(a[i]);
            const LD div = c.kind == Mean ? n : 1;
            // Accurate single: blocks of 16 in double (a tree of depth 3), then double-double.
            const LD err = c.dataSingle && !single ? 0x1p-51L * r.mag : chainBound(values, single, r.mag);
            want[k] = r.v() / div, bound[k] = err / div + ulpOf(c.resultSingle, want[k]);
        }
    } else if (c.kind == Dev || c.kind == MeanDev) {
        Ref s, q, d1, d2;
        for (int i = 0; i < n; ++i) s.add(a[i]);
        const LD mean = s.v() / n;
        for (int i = 0; i < n; ++i) q.add((a[i] - mean) * (a[i] - mean));
        // The kernels sum d = x - x[0] and d^2, then take n S2 - S1^2.
        for (int i = 0; i < n; ++i) d1.add(a[i] - a[0]), d2.add((a[i] - a[0]) * (a[i] - a[0]));
        const LD size = LD(n) * d2.v() + 2 * std::fabs(d1.v()) * d1.mag;
        const LD dNum = c.dataSingle && !single ? 0x1p-50L * size : 3 * chainBound(n, single, size);
        const LD sd = std::sqrt(q.v() / (n - 1));
        const int k = c.kind == MeanDev;
        want[k] = sd, bound[k] = devBound(sd, dNum, n) + 2 * ulpOf(c.resultSingle, sd);
        if (k) want[0] = mean, bound[0] = chainBound(n, false, s.mag) / n + ulpOf(c.resultSingle, mean);
    } else if (c.kind == Dot) {
        LD mag[2] = {0, 0};
        want[0] = 0;
        for (int i = 0; i < n; ++i) {
            const LD ar = a[i * c.partsA], ai = c.partsA == 2 ? a[2 * i + 1] : 0;
            const LD br = b[i * c.partsB], bi = c.partsB == 2 ? b[2 * i + 1] : 0;
            want[0] += ar * br - ai * bi, want[1] += ar * bi + ai * br;
            mag[0] += std::fabs(ar * br) + std::fabs(ai * bi), mag[1] += std::fabs(ar * bi) + std::fabs(ai * br);
        }
        for (int k = 0; k < 2; ++k) bound[k] = chainBound(std::size_t(n) * 2, single, mag[k]) + ulpOf(c.resultSingle, want[k]);
    } else {
        LD m = 0, s1 = 0, s2 = 0;
        for (int i = 0; i < n; ++i) {
            LD t2 = 0;
            for (int p = 0; p < c.partsA; ++p) {
                const LD d = a[i * c.partsA + p] - (c.diff ? b[i * c.partsA + p] : 0);
                t2 += d * d;
            }
            m = std::max(m, std::sqrt(t2)), s1 += std::sqrt(t2), s2 += t2;
        }
        // Single-precision differences round once more: one eps on each term.
        const LD extra = c.diff && c.dataSingle && c.resultSingle ? 0x1p-24L : 0;
        // A complex magnitude rounds three times in double (squares, sum, root).
        if (c.kind == Inf) want[0] = m, bound[0] = extra * m + c.partsA * ulpOf(c.resultSingle, m);
        if (c.kind == L1) want[0] = s1, bound[0] = chainBound(values, single, s1) + extra * s1 + ulpOf(c.resultSingle, s1);
        if (c.kind == L2)
            want[0] = std::sqrt(s2), bound[0] = (chainBound(values, single, s2) / s2 / 2 + 2 * extra) * want[0] + 2 * ulpOf(c.resultSingle, want[0]);
    }
}

TEST(StatsFloat, WithinDerivedBoundsOfLongDoubleOracles) {
    std::mt19937_64 g(5);
    std::vector<int> lens;
    for (int n = 1; n <= 70; ++n) lens.push_back(n);
    for (int n : {257, 4099, 65537, 1000000}) lens.push_back(n);
    for (const Case& c : cases()) {
        if (c.bitsA) continue;
        for (int n : lens) {
            if ((n < 2 && (c.kind == Dev || c.kind == MeanDev)) || (n == 1000000 && c.kind >= Inf)) continue;
            // Zero mean; and a large offset carrying a small spread (cancellation).
            for (int kind = 0; kind < 2; ++kind) {
                const Vec a = draw(std::size_t(n) * c.partsA, 0, c.dataSingle, g, 0, kind ? (c.dataSingle ? 1e4 : 1e8) : 0, kind ? 1e-2 : 1);
                const Vec b = draw(countB(c, n), 0, c.dataSingle, g, 0, 0, kind ? 1e3 : 1);
                for (int hint : c.hint ? std::vector<int>{1, 2} : std::vector<int>{0}) {
                    LD got[2] = {0, 0}, want[2], bound[2];
                    ASSERT_EQ(c.call(a, b, n, hint, (n + hint) % 4, got), zvpStsNoErr);
                    floatOracle(c, a, b, n, hint == 1, want, bound);
                    for (int k = 0; k < 2; ++k)
                        ASSERT_LE(std::fabs(got[k] - want[k]), bound[k]) << c.name << " n=" << n << " kind=" << kind << " hint="
                                                                          << hint << " part " << k << ": " << double(got[k]) << " vs " << double(want[k]);
                }
            }
        }
    }
}

// Only the fast hint changes a result; every other value is the accurate
// path, bit for bit. A result never depends on alignment.
TEST(StatsFloat, OnlyTheFastHintIsFastAndAlignmentNeverMatters) {
    std::mt19937_64 g(7);
    Vec big(1001, 1);
    big[0] = 1e8;  // the fast sums lose the ones that meet 1e8 in its lane
    for (const Case& c : cases()) {
        if (c.bitsA) continue;
        LD acc[2] = {0, 0}, fast[2] = {0, 0}, got[2] = {0, 0};
        if (c.hint) {
            const int n = 1001 / c.partsA;
            c.call(big, big, n, 2, 0, acc), c.call(big, big, n, 1, 0, fast);
            EXPECT_NE(acc[0], fast[0]) << c.name;
            for (int h : {0, 3, -1, 100, INT_MIN, INT_MAX}) {
                c.call(big, big, n, h, 1, got);
                EXPECT_TRUE(got[0] == acc[0] && got[1] == acc[1]) << c.name << " hint " << h;
            }
        }
        const Vec a = draw(77 * c.partsA, 0, c.dataSingle, g, 0, 3), b = draw(countB(c, 77), 0, c.dataSingle, g, 0);
        for (int h : {1, 2}) {
            c.call(a, b, 77, h, 0, acc);
            for (int shift = 1; shift < 4; ++shift) {
                c.call(a, b, 77, h, shift, got);
                EXPECT_TRUE(got[0] == acc[0] && got[1] == acc[1]) << c.name << " misaligned by " << shift;
            }
        }
    }
}

// A NaN anywhere gives a NaN, the infinity norms included (where larger
// values after it would otherwise win); opposite infinities give a NaN sum,
// one infinity an infinite sum and a NaN deviation.
TEST(StatsFloat, NaNAndInfinities) {
    std::mt19937_64 g(9);
    for (const Case& c : cases()) {
        if (c.bitsA) continue;
        for (int n : {2, 6, 37, 70})
            for (int at : {0, n / 2, n - 1})
                for (int hint : {1, 2}) {
                    Vec a = draw(std::size_t(n) * c.partsA, 0, c.dataSingle, g, 0, 1e6), b = draw(countB(c, n), 0, c.dataSingle, g, 0);
                    LD got[2];
                    a[at * c.partsA] = NAN;
                    c.call(a, b, n, hint, at % 4, got);
                    EXPECT_TRUE(std::isnan(double(got[c.kind == MeanDev]))) << c.name << " n=" << n << " at " << at;
                    if (c.kind > MeanDev) continue;
                    a[at * c.partsA] = INFINITY;
                    c.call(a, b, n, hint, 0, got);
                    EXPECT_EQ(std::isnan(double(got[c.kind == MeanDev])), c.kind >= Dev) << c.name << " with +inf";
                    a[(n - 1 - at) * c.partsA] = -INFINITY;
                    c.call(a, b, n, hint, 0, got);
                    EXPECT_TRUE(at == n - 1 - at || std::isnan(double(got[c.kind == MeanDev]))) << c.name << " with +-inf";
                }
    }
}

TEST(StatsFloat, DeviationEdges) {
    const double a[] = {1, 2, 3, 4};
    double d = -1;
    EXPECT_EQ(zvpsStdDev_64f(a, 1, &d), zvpStsSizeErr);
    EXPECT_EQ(d, -1);
    ASSERT_EQ(zvpsStdDev_64f(a, 4, &d), zvpStsNoErr);
    EXPECT_NEAR(d, std::sqrt(5.0 / 3), 2.3e-16);
    // Constant vectors, where n S2 - S1^2 of the raw values would round away from 0.
    for (double x : {0.1, 1e-3, 3.3, 1e15 + 1}) {
        const std::vector<double> v(999, x);
        const std::vector<float> w(999, float(x));
        float f = -1;
        EXPECT_TRUE(zvpsStdDev_64f(v.data(), 999, &d) == zvpStsNoErr && d == 0) << x;
        for (int h : {1, 2}) EXPECT_TRUE(zvpsStdDev_32f(w.data(), 999, &f, ZvpHintAlgorithm(h)) == zvpStsNoErr && f == 0) << x;
    }
}

// ---- Integer data: exact oracles -----------------------------------------------------------

Wide W(LD x) { return Wide::of(std::int64_t(x)); }
LD asLD(const Wide& w) { return w.negative() ? -LD(w.mag64()) : LD(w.mag64()); }  // exact below 2^64
LD scaledTo(int bits, const Wide& r, int sf) {
    return bits == 16 ? LD(scaled<Zvp16s>(r, sf)) : bits == 32 ? LD(scaled<Zvp32s>(r, sf)) : LD(scaled<Zvp64s>(r, sf));
}
// Mean: the quotient to nearest even; a negative factor shifts the sum
// first when it lies in the 32-bit range, else the quotient; a shift of 32
// or more saturates a non-zero mean.
LD meanOracle(int bits, const Wide& s, int n, int sf) {
    const Wide q = roundQuotient(s, Wide::of(n), Mode::NearestEven);
    if (sf >= 0 || s.isZero()) return scaledTo(bits, q, sf);
    if (sf <= -32) return scaledTo(bits, s, -200);
    const bool in32 = compare(s, Wide::of(INT32_MAX)) <= 0 && compare(s, Wide::of(INT32_MIN)) >= 0;
    return in32 ? scaledTo(bits, roundQuotient(s.shl(-sf), Wide::of(n), Mode::NearestEven), 0) : scaledTo(bits, q, sf);
}
// The deviation in two long-double passes, scaled, to nearest even,
// saturated; NAN when it lies too near a half to decide.
LD devOracle(int bits, const Vec& x, int sf) {
    LD mean = 0, q = 0;
    for (LD v : x) mean += v;
    mean /= x.size();
    for (LD v : x) q += (v - mean) * (v - mean);
    const LD r = std::ldexp(std::sqrt(q / (x.size() - 1)), -std::clamp(sf, -200, 200));
    if (std::fabs(r - std::floor(r) - 0.5L) < 1e-9L * (1 + r)) return NAN;
    return std::min(std::nearbyint(r), LD(bits == 16 ? INT16_MAX : INT32_MAX));
}
// The L1 norm into 32 bits: truncating shifts, 0 from 32 on, saturated.
LD l1Truncated(const Wide& s, int sf) {
    if (sf >= 32) return 0;
    return LD(clampTo<Zvp32s>(sf >= 0 ? s.shrMag(sf) : s.shl(sf < -31 ? 31 : -sf)));
}
// q = sqrt(s) 2^-sf to nearest even, saturated: checked by squares, exactly.
bool roundedRoot(const Wide& s, int sf, std::int64_t q) {
    if (sf > 40) return q == 0;
    if (sf < -40) return q == (s.isZero() ? 0 : INT32_MAX);
    const Wide s4 = s.shl(2 + 2 * std::max(0, -sf));
    auto sq = [&](std::int64_t k) { return (Wide::of(k) * Wide::of(k)).shl(2 * std::max(0, sf)); };
    const int lo = compare(sq(2 * q - 1), s4), hi = compare(s4, sq(2 * q + 1));
    if (q == INT32_MAX) return lo <= 0;
    if (q == 0) return hi <= 0;
    return lo <= 0 && hi <= 0 && ((lo != 0 && hi != 0) || q % 2 == 0);
}

TEST(StatsInt, ExactAgainstWideIntegerOracles) {
    std::vector<int> sfs = {INT_MIN, -100, INT_MAX, 100};
    for (int sf = -66; sf <= 66; ++sf) sfs.push_back(sf);
    std::mt19937_64 g(3);
    for (const Case& c : cases()) {
        if (!c.bitsA) continue;
        for (int n : {1, 2, 3, 7, 8, 9, 15, 16, 17, 31, 33, 70, 1001, 65536 + 9, 300007}) {
            if (n < 2 && (c.kind == Dev || c.kind == MeanDev)) continue;
            for (int kind = 0; kind < 3; ++kind) {
                if (n == 300007 && (kind == 0 || c.kind >= Inf)) continue;  // past the 16-bit sums' 32-bit chunks
                const Vec a = draw(std::size_t(n) * c.partsA, c.bitsA, false, g, kind);
                const Vec b = draw(countB(c, n), c.diff ? 16 : c.bitsB, false, g, c.diff ? 3 - kind : kind);
                // Exact sums: s by part; m, s1, s2 of the norm terms; r the dot product.
                Wide s[2], m, s1, s2, r[2];
                for (std::size_t i = 0; i < a.size(); ++i) s[i % c.partsA] = s[i % c.partsA] + W(a[i]);
                for (std::size_t i = 0; c.kind >= Inf && c.kind != Dot && i < a.size(); ++i) {
                    const Wide t = (c.diff ? W(a[i]) - W(b[i]) : W(a[i])).abs();
                    m = compare(t, m) > 0 ? t : m, s1 = s1 + t, s2 = s2 + t * t;
                }
                for (int i = 0; c.kind == Dot && i < n; ++i) {
                    const Wide ar = W(a[i * c.partsA]), ai = c.partsA == 2 ? W(a[2 * i + 1]) : Wide();
                    const Wide br = W(b[i * c.partsB]), bi = c.partsB == 2 ? W(b[2 * i + 1]) : Wide();
                    r[0] = r[0] + ar * br - ai * bi, r[1] = r[1] + ar * bi + ai * br;
                }
                for (int sf : c.sf ? sfs : std::vector<int>{0}) {
                    if (n > 1000 && sf % 8) continue;
                    LD got[2] = {0, 0}, want[2] = {0, 0};
                    ASSERT_EQ(c.call(a, b, n, sf, n % 3, got), zvpStsNoErr);
                    const int rb = c.resultBits;
                    for (int k = 0; k < 2; ++k) {
                        if (c.kind == Sum && k < c.partsA) want[k] = scaledTo(rb, s[k], sf);
                        if (c.kind == Mean && k < c.partsA) want[k] = meanOracle(rb, s[k], n, sf);
                        if (c.kind == MeanDev) want[k] = k ? devOracle(rb, a, sf) : meanOracle(rb, s[0], n, sf);
                        if (c.kind == Dev && k == 0) want[k] = devOracle(rb, a, sf);
                        if (c.kind == Dot) want[k] = !rb ? LD(float(asLD(r[k]))) : !c.sf ? asLD(r[k]) : scaledTo(rb, r[k], std::min(sf, 31));
                    }
                    if (c.kind >= Inf && c.kind != Dot) {
                        const Wide& v = c.kind == Inf ? m : c.kind == L1 ? s1 : s2;
                        if (!rb) want[0] = c.kind == L2 ? LD(float(std::sqrt(double(asLD(v))))) : LD(float(asLD(v)));
                        else if (c.kind == L1 && rb == 32) want[0] = l1Truncated(v, sf);
                        else if (c.kind == L2) want[0] = roundedRoot(v, sf, std::int64_t(got[0])) ? got[0] : NAN;
                        else want[0] = scaledTo(rb, v, sf);
                    }
                    for (int k = 0; k < 2; ++k) {
                        if (std::isnan(double(want[k])) && (c.kind == Dev || c.kind == MeanDev)) continue;  // a near tie
                        ASSERT_EQ(got[k], want[k]) << c.name << " n=" << n << " kind=" << kind << " sf=" << sf << " part " << k;
                    }
                }
            }
        }
    }
}

TEST(StatsInt, DocumentedValues) {
    auto mean = [](std::vector<Zvp32s> v, int sf) {
        Zvp32s m = 0;
        EXPECT_EQ(zvpsMean_32s_Sfs(v.data(), int(v.size()), &m, sf), zvpStsNoErr);
        return m;
    };
    EXPECT_EQ(mean({1, 1, 1, 2}, -1), 2);  // 10/4 = 2.5 to even
    EXPECT_EQ(mean({1, 1, 2, 3}, -1), 4);  // 14/4 = 3.5 to even
    EXPECT_EQ(mean({-1, -1, -1, -2}, -1), -2);
    // Sum 2^31 - 2 (in range): shifted first, 2^30 - 1 exactly. Sum 2^31 + 2:
    // divided first, 2^29 + 1/2 to even, then doubled: 2^30.
    EXPECT_EQ(mean({INT32_MAX, INT32_MAX, INT32_MIN, 0}, -1), (1 << 30) - 1);
    EXPECT_EQ(mean({INT32_MAX, INT32_MAX, -INT32_MAX + 1, 2}, -1), 1 << 30);
    const Zvp16s a[] = {1, 2};
    Zvp32s r = 0;
    EXPECT_TRUE(zvpsNorm_L1_16s32s_Sfs(a, 2, &r, 1) == zvpStsNoErr && r == 1);  // 3 >> 1, truncated
    EXPECT_TRUE(zvpsNorm_L1_16s32s_Sfs(a, 2, &r, 40) == zvpStsNoErr && r == 0);
    EXPECT_TRUE(zvpsNorm_L1_16s32s_Sfs(a, 1, &r, -40) == zvpStsNoErr && r == INT32_MAX);
    for (auto [x, want] : {std::pair{3, 2}, {5, 2}, {7, 4}}) {
        const Zvp16s one = 1, v = Zvp16s(x);
        Zvp16s d = 0;
        EXPECT_TRUE(zvpsDotProd_16s_Sfs(&one, &v, 1, &d, 1) == zvpStsNoErr && d == want) << x;
    }
    const std::vector<Zvp16s> m(65536, -32768);
    float f = 0;
    EXPECT_TRUE(zvpsNorm_L2_16s32f(m.data(), 65536, &f) == zvpStsNoErr && f == 8388608.0f);
    const Zvp32s big = INT32_MIN;  // 2^62 with the factor clamped at 31: 2^31, saturated
    EXPECT_TRUE(zvpsDotProd_32s_Sfs(&big, &big, 1, &r, 40) == zvpStsNoErr && r == INT32_MAX);
}

}  // namespace

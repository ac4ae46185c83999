// Norms and dot products against oracles written here: long double for
// float data (with derived bounds), exact integers (wide_int.h) for integer
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

enum Kind { Inf, L1, L2, L2Sqr, Dot };

// One export: its sources as parts (re, im interleaved) widened to long
// double, its result as up to two parts.
struct Case {
    std::string name;
    Kind kind;
    bool diff = false, sf = false;
    int partsA = 1, partsB = 0, bitsA = 0, bitsB = 0;  // bits 0: float data
    int resultBits = 0;                                // 0: float result
    bool single = false;                               // single-precision data and result
    bool dataSingle = false, resultSingle = false;
    std::function<ZvpStatus(const Vec&, const Vec&, int, int, LD*)> call;
};

template <class T>
using P = typename PartOf<T>::type;
template <class T>
std::vector<P<T>> narrow(const Vec& v) {
    return std::vector<P<T>>(v.begin(), v.end());
}
template <class D>
void put(const D& d, LD* out) {
    const auto* p = reinterpret_cast<const P<D>*>(&d);
    out[0] = p[0];
    out[1] = PartOf<D>::parts == 2 ? LD(p[1]) : 0;
}
template <class A, class B, class D>
Case describe(std::string name, Kind k, bool sf) {
    Case c;
    c.name = std::move(name);
    c.kind = k;
    c.sf = sf;
    c.partsA = PartOf<A>::parts;
    c.bitsA = std::is_integral_v<P<A>> ? 8 * sizeof(P<A>) : 0;
    c.partsB = std::is_void_v<B> ? 0 : PartOf<std::conditional_t<std::is_void_v<B>, A, B>>::parts;
    c.bitsB = std::is_void_v<B> ? 0 : std::is_integral_v<P<std::conditional_t<std::is_void_v<B>, A, B>>> ? 8 * sizeof(P<std::conditional_t<std::is_void_v<B>, A, B>>) : 0;
    c.resultBits = std::is_integral_v<P<D>> ? 8 * sizeof(P<D>) : 0;
    c.dataSingle = std::is_same_v<P<A>, float>;
    c.resultSingle = std::is_same_v<P<D>, float>;
    c.single = c.dataSingle && c.resultSingle;
    return c;
}
template <class A, class D, class... S>
Case norm(const char* n, Kind k, ZvpStatus (*f)(const A*, int, D*, S...)) {
    Case c = describe<A, void, D>(n, k, sizeof...(S) > 0);
    c.call = [f](const Vec& a, const Vec&, int len, [[maybe_unused]] int sf, LD* out) {
        const auto x = narrow<A>(a);
        D d{};
        const ZvpStatus st = f(reinterpret_cast<const A*>(x.data()), len, &d, S(sf)...);
        put(d, out);
        return st;
    };
    return c;
}
template <class A, class B, class D, class... S>
Case two(const char* n, Kind k, bool diff, ZvpStatus (*f)(const A*, const B*, int, D*, S...)) {
    Case c = describe<A, B, D>(n, k, sizeof...(S) > 0);
    c.diff = diff;
    c.call = [f](const Vec& a, const Vec& b, int len, [[maybe_unused]] int sf, LD* out) {
        const auto x = narrow<A>(a);
        const auto y = narrow<B>(b);
        D d{};
        const ZvpStatus st = f(reinterpret_cast<const A*>(x.data()), reinterpret_cast<const B*>(y.data()), len, &d, S(sf)...);
        put(d, out);
        return st;
    };
    return c;
}
#define NORMS(k, t) norm("Norm_" #k "_" #t, k, zvpsNorm_##k##_##t), two("NormDiff_" #k "_" #t, k, true, zvpsNormDiff_##k##_##t)
#define DOT(t) two("DotProd_" #t, Dot, false, zvpsDotProd_##t)

const std::vector<Case>& cases() {
    static const std::vector<Case> v = {
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

Vec draw(std::size_t count, int bits, std::mt19937_64& g, int kind) {
    Vec v(count);
    const std::int64_t lo = bits ? -(std::int64_t(1) << (bits - 1)) : 0, hi = -lo - 1;
    std::uniform_real_distribution<double> u(-1, 1);
    for (LD& x : v) {
        if (!bits) x = u(g) * (kind ? 1e3 : 1);
        else x = kind == 1 ? lo : kind == 2 ? hi : g() % 3 == 0 ? (g() % 2 ? lo : hi) : LD(std::int64_t(g() % std::uint64_t(hi - lo + 1)) + lo);
    }
    return v;
}

// ---- Exact oracles for integer data -------------------------------------------------

Wide W(LD x) { return Wide::of(std::int64_t(x)); }

// The norm terms: |a| or |a - b| (16-bit data); M = max, S1 = sum, S2 = sum of squares.
void normSums(const Case& c, const Vec& a, const Vec& b, Wide& m, Wide& s1, Wide& s2) {
    m = s1 = s2 = Wide();
    for (std::size_t i = 0; i < a.size(); ++i) {
        const Wide t = (c.diff ? W(a[i]) - W(b[i]) : W(a[i])).abs();
        if (compare(t, m) > 0) m = t;
        s1 = s1 + t;
        s2 = s2 + t * t;
    }
}
// (re, im) of the exact dot product.
void dotSums(const Case& c, const Vec& a, const Vec& b, int n, Wide* r) {
    r[0] = r[1] = Wide();
    for (int i = 0; i < n; ++i) {
        const Wide ar = W(a[i * c.partsA]), ai = c.partsA == 2 ? W(a[2 * i + 1]) : Wide();
        const Wide br = W(b[i * c.partsB]), bi = c.partsB == 2 ? W(b[2 * i + 1]) : Wide();
        r[0] = r[0] + ar * br - ai * bi;
        r[1] = r[1] + ar * bi + ai * br;
    }
}
LD asLD(const Wide& w) {  // exact below 2^64
    const LD m = LD(w.mag64());
    return w.negative() ? -m : m;
}
template <class D>
LD scaledLD(const Wide& r, int sf) { return LD(scaled<D>(r, sf)); }
LD scaledTo(int bits, const Wide& r, int sf) {
    return bits == 16 ? scaledLD<Zvp16s>(r, sf) : bits == 32 ? scaledLD<Zvp32s>(r, sf) : scaledLD<Zvp64s>(r, sf);
}

// The L1 norm into 32 bits: truncating shifts, 0 from 32 on, saturated.
LD l1Truncated(const Wide& s, int sf) {
    if (sf >= 32) return 0;
    if (sf >= 0) return LD(clampTo<Zvp32s>(s.shrMag(sf)));
    return LD(clampTo<Zvp32s>(s.shl(std::min(-sf, 31))));
}

// q = sqrt(s) 2^-sf to nearest even, saturated: checked by squares, exactly.
bool roundedRoot(const Wide& s, int sf, std::int64_t q) {
    if (sf > 40) return q == 0;
    if (sf < -40) return q == (s.isZero() ? 0 : INT32_MAX);
    const Wide s4 = sf < 0 ? s.shl(2 - 2 * sf) : s.shl(2);  // 4 s 4^-sf, scaled by 4^sf when sf >= 0
    auto sq = [&](std::int64_t k) { const Wide w = Wide::of(k); return sf > 0 ? (w * w).shl(2 * sf) : w * w; };
    const int lo = compare(sq(2 * q - 1), s4), hi = compare(s4, sq(2 * q + 1));
    if (q == INT32_MAX) return lo <= 0;
    if (q == 0) return hi <= 0;
    return lo <= 0 && hi <= 0 && ((lo != 0 && hi != 0) || q % 2 == 0);
}

TEST(NormsInt, ExactAgainstWideIntegerOracles) {
    std::vector<int> sfs = {INT_MIN, -100, INT_MAX, 100};
    for (int sf = -66; sf <= 66; ++sf) sfs.push_back(sf);
    std::mt19937_64 g(3);
    for (const Case& c : cases()) {
        if (!c.bitsA) continue;
        for (int n : {1, 2, 3, 7, 8, 9, 15, 16, 17, 31, 33, 70, 1001, 65536 + 9}) {
            for (int kind = 0; kind < 3; ++kind) {
                const Vec a = draw(std::size_t(n) * c.partsA, c.bitsA, g, kind);
                const Vec b = c.diff ? draw(a.size(), 16, g, 3 - kind) : draw(std::size_t(n) * c.partsB, c.bitsB, g, kind);
                Wide m, s1, s2, r[2];
                if (c.kind == Dot) dotSums(c, a, b, n, r);
                else normSums(c, a, c.diff ? b : a, m, s1, s2);
                const Wide& v = c.kind == Inf ? m : c.kind == L1 ? s1 : s2;
                for (int sf : c.sf ? sfs : std::vector<int>{0}) {
                    if (n > 1000 && sf % 8) continue;
                    LD got[2], want[2] = {0, 0};
                    ASSERT_EQ(c.call(a, b, n, sf, got), zvpStsNoErr);
                    if (c.kind == L2 && c.sf) {
                        EXPECT_TRUE(roundedRoot(s2, sf, std::int64_t(got[0]))) << c.name << " n=" << n << " sf=" << sf;
                        continue;
                    }
                    for (int k = 0; k < 2; ++k) {
                        const Wide& x = c.kind == Dot ? r[k] : v;
                        if (c.kind != Dot && k == 1) continue;
                        if (!c.resultBits) want[k] = c.kind == L2 ? LD(float(std::sqrt(double(asLD(x))))) : LD(float(asLD(x)));
                        else if (!c.sf) want[k] = asLD(x);
                        else if (c.kind == L1 && c.resultBits == 32) want[k] = l1Truncated(x, sf);
                        else want[k] = scaledTo(c.resultBits, x, c.kind == Dot ? std::min(sf, 31) : sf);
                    }
                    ASSERT_TRUE(got[0] == want[0] && got[1] == want[1])
                        << c.name << " n=" << n << " kind=" << kind << " sf=" << sf << ": " << double(got[0]) << ", "
                        << double(got[1]) << " expected " << double(want[0]) << ", " << double(want[1]);
                }
            }
        }
    }
}

TEST(NormsInt, DocumentedValues) {
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
    // The factor is clamped at 31: 2^62 gives 2^31, saturated.
    const Zvp32s big = INT32_MIN;
    EXPECT_TRUE(zvpsDotProd_32s_Sfs(&big, &big, 1, &r, 40) == zvpStsNoErr && r == INT32_MAX);
}

// ---- Float data -----------------------------------------------------------------------

// A chain of k additions in precision eps errs by at most about k eps times
// the sum of magnitudes; the kernels keep sixteen single or eight double
// chains, combined in 6 more steps.
LD chainBound(std::size_t values, bool single, LD mag) {
    return (LD(values) / (single ? 16 : 8) + 8) * (single ? 0x1p-24L : 0x1p-53L) * mag;
}
LD ulpOf(bool single, LD x) {
    return single ? LD(std::nextafter(std::fabs(float(x)), INFINITY) - std::fabs(float(x)))
                  : LD(std::nextafter(std::fabs(double(x)), INFINITY) - std::fabs(double(x)));
}

// Oracle values (re, im) and the error each may carry. Single-precision
// data with a single result sum in single precision; every other float form
// in double.
void floatOracle(const Case& c, const Vec& a, const Vec& b, int n, LD* want, LD* bound) {
    const bool singleSums = c.single && c.kind != Inf;
    want[1] = bound[1] = 0;
    if (c.kind == Dot) {
        LD mag[2] = {0, 0};
        want[0] = 0;
        for (int i = 0; i < n; ++i) {
            const LD ar = a[i * c.partsA], ai = c.partsA == 2 ? a[2 * i + 1] : 0;
            const LD br = b[i * c.partsB], bi = c.partsB == 2 ? b[2 * i + 1] : 0;
            want[0] += ar * br - ai * bi, want[1] += ar * bi + ai * br;
            mag[0] += std::fabs(ar * br) + std::fabs(ai * bi), mag[1] += std::fabs(ar * bi) + std::fabs(ai * br);
        }
        for (int k = 0; k < 2; ++k)
            bound[k] = chainBound(std::size_t(n) * 2, singleSums, mag[k]) + ulpOf(c.resultSingle, want[k]);
        return;
    }
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
    const LD extra = c.diff && c.single ? 0x1p-24L : 0;
    const std::size_t values = std::size_t(n) * c.partsA;
    if (c.kind == Inf) want[0] = m, bound[0] = extra * m + ulpOf(c.resultSingle, m);
    if (c.kind == L1) want[0] = s1, bound[0] = chainBound(values, singleSums, s1) + extra * s1 + ulpOf(c.resultSingle, s1);
    if (c.kind == L2) {
        want[0] = std::sqrt(s2);
        bound[0] = (chainBound(values, singleSums, s2) / s2 / 2 + 2 * extra) * want[0] + 2 * ulpOf(c.resultSingle, want[0]);
    }
}

TEST(NormsFloat, WithinDerivedBoundsOfLongDoubleOracles) {
    std::mt19937_64 g(5);
    for (const Case& c : cases()) {
        if (c.bitsA) continue;
        for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 70, 1001, 65537, 300001}) {
            for (int kind = 0; kind < 2; ++kind) {
                Vec a = draw(std::size_t(n) * c.partsA, 0, g, kind);
                Vec b = draw(std::size_t(n) * std::max(c.partsB, c.diff ? c.partsA : 0), 0, g, 1 - kind);
                // The values the export sees.
                for (Vec* v : {&a, &b})
                    for (LD& x : *v) x = c.dataSingle ? LD(float(x)) : LD(double(x));
                LD got[2], want[2], bound[2];
                ASSERT_EQ(c.call(a, b, n, 0, got), zvpStsNoErr);
                floatOracle(c, a, b, n, want, bound);
                for (int k = 0; k < 2; ++k)
                    ASSERT_LE(std::fabs(got[k] - want[k]), bound[k])
                        << c.name << " n=" << n << " part " << k << ": " << double(got[k]) << " vs " << double(want[k]);
            }
        }
    }
}

// A NaN anywhere gives a NaN, the infinity norms included (where the
// larger values after it would otherwise win).
TEST(NormsFloat, NaNPropagates) {
    std::mt19937_64 g(9);
    for (const Case& c : cases()) {
        if (c.bitsA) continue;
        for (int n : {1, 6, 37, 70})
            for (int at : {0, n / 2, n - 1}) {
                Vec a = draw(std::size_t(n) * c.partsA, 0, g, 0), b = draw(std::size_t(n) * std::max(c.partsB, c.partsA), 0, g, 0);
                for (LD& x : a) x += 1e6;  // far from zero: a dropped NaN shows
                a[at * c.partsA] = NAN;
                LD got[2];
                ASSERT_EQ(c.call(a, b, n, 0, got), zvpStsNoErr);
                EXPECT_TRUE(std::isnan(double(got[0]))) << c.name << " n=" << n << " at " << at;
            }
    }
}

}  // namespace

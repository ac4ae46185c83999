// What is particular to the extremes, against plain scans written here: the
// first index at every position, vector width and block boundary, NaNs,
// null index pointers, MaxOrder, MinEvery_64f's unsigned length,
// CountInRange and ZeroCrossing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "shapes.h"
#include "zvps.h"

namespace {

// One search seen as (value, index); value-only forms leave the index at -2.
// With a null index pointer the status is nullIndex, and on success the
// value is the same.
template <class T>
struct Search {
    const char* name;
    bool max, abs;
    std::function<ZvpStatus(const T*, int, T*, int*)> f;
    int nullIndex = zvpStsNullPtrErr;
};
#define VALUE(f, mx, ab) {#f, mx, ab, [](auto p, int n, auto v, int*) { return zvps##f(p, n, v); }}
#define INDX(f, mx, ab, opt) {#f, mx, ab, [](auto p, int n, auto v, int* i) { return zvps##f(p, n, v, i); }, opt}
#define PLAIN(t) VALUE(Max_##t, 1, 0), INDX(MaxIndx_##t, 1, 0, 0), VALUE(Min_##t, 0, 0), INDX(MinIndx_##t, 0, 0, 0)
#define ABS(t) VALUE(MaxAbs_##t, 1, 1), INDX(MaxAbsIndx_##t, 1, 1, 0), VALUE(MinAbs_##t, 0, 1), \
               INDX(MinAbsIndx_##t, 0, 1, zvpStsNullPtrErr)
#define MM(t, mx, name, ...) {name " " #t, mx, 0, [](auto p, int n, auto v, int* i) { Zvp##t o; int j; return __VA_ARGS__; }}
#define MINMAX(t) MM(t, 0, "MinMax", (void)i, (void)j, zvpsMinMax_##t(p, n, v, &o)), MM(t, 1, "MinMax", (void)i, (void)j, \
    zvpsMinMax_##t(p, n, &o, v)), MM(t, 0, "MinMaxIndx", zvpsMinMaxIndx_##t(p, n, v, i, &o, &j)),                     \
    MM(t, 1, "MinMaxIndx", zvpsMinMaxIndx_##t(p, n, &o, &j, v, i))

template <class T> std::vector<Search<T>> searches();
template <> std::vector<Search<Zvp8u>> searches() { return {MINMAX(8u)}; }
template <> std::vector<Search<Zvp16u>> searches() { return {MINMAX(16u)}; }
template <> std::vector<Search<Zvp32u>> searches() { return {MINMAX(32u)}; }
template <> std::vector<Search<Zvp16s>> searches() { return {PLAIN(16s), ABS(16s), MINMAX(16s)}; }
template <> std::vector<Search<Zvp32s>> searches() { return {PLAIN(32s), ABS(32s), MINMAX(32s)}; }
template <> std::vector<Search<Zvp32f>> searches() { return {PLAIN(32f), MINMAX(32f)}; }
template <> std::vector<Search<Zvp64f>> searches() { return {PLAIN(64f), MINMAX(64f)}; }

template <class T>
long double key(T x, bool abs) {  // magnitudes saturate to the type's maximum
    return abs ? std::min<long double>(std::fabs((long double)x), std::numeric_limits<T>::max()) : x;
}
// The scan: skip NaNs, move only to a strictly greater (smaller) key; the
// element at the index is reported (its magnitude for abs), index 0 if none.
template <class T>
std::pair<T, int> scan(const T* p, int n, const Search<T>& s) {
    int best = -1;
    for (int i = 0; i < n; ++i) {
        const long double k = key(p[i], s.abs), b = best < 0 ? 0 : key(p[best], s.abs);
        if (k == k && (best < 0 || (s.max ? k > b : k < b))) best = i;
    }
    if (best < 0) return {p[0], 0};
    return {s.abs ? T(key(p[best], true)) : p[best], best};
}

// Runs every search of T on p[0 .. n) placed `mis` elements past an aligned
// address; returns false after the first disagreement with the scan.
template <class T>
bool agree(const std::vector<T>& v, int mis) {
    alignas(64) static T buf[3 * 8192 + 64];
    std::copy(v.begin(), v.end(), buf + mis);
    const int n = int(v.size());
    for (const Search<T>& s : searches<T>()) {
        T got;
        int at = -2;
        const ZvpStatus st = s.f(buf + mis, n, &got, &at);
        const auto [want, wantAt] = scan(v.data(), n, s);
        auto same = [&](T x) { return std::memcmp(&x, &want, sizeof(T)) == 0 || (x != x && want != want); };
        if (st != zvpStsNoErr || !same(got) || (at != -2 && at != wantAt)) {
            ADD_FAILURE() << s.name << " length " << n << " offset " << mis << ": got " << double(got) << " at " << at
                          << ", expected " << double(want) << " at " << wantAt;
            return false;
        }
        T alone = T(1);
        if (at != -2 && (s.f(buf + mis, n, &alone, nullptr) != s.nullIndex || (s.nullIndex == 0 && !same(alone)))) {
            ADD_FAILURE() << s.name << " with a null index pointer, length " << n;
            return false;
        }
    }
    return true;
}

// Background values, and the pairs planted at the position under test k and
// at a later one (ties, greater values, NaNs, signed zeros, saturation).
template <class T>
std::vector<std::pair<T, T>> plants() {
    using N = std::numeric_limits<T>;
    std::vector<std::pair<T, T>> v = {{T(90), T(90)}, {T(5), T(5)}, {N::max(), N::lowest()}, {N::lowest(), N::max()},
                                      {T(90), T(91)}, {T(N::lowest() + 1), N::lowest()}};
    if constexpr (N::has_quiet_NaN) v.insert(v.end(), {{N::quiet_NaN(), T(90)}, {T(-0.0), T(0)}, {T(0), T(-0.0)}});
    return v;
}

template <class T>
void everyPosition() {
    std::mt19937 g(7);
    for (int n = 1; n <= 70; ++n)
        for (int k = 0; k < n; ++k)
            for (auto [a, b] : plants<T>()) {
                auto v = std::vector<T>(std::size_t(n));
                const bool zeros = a == T(0) && b == T(0);  // zeros as the maximum
                for (T& x : v) x = zeros ? T(-1.5) : T(10 + g() % 60);
                v[std::size_t(k)] = a;
                for (int j = k + 1 + int(g() % 9); j < n; j += 1 + int(g() % 17)) v[std::size_t(j)] = b;
                if (!agree(v, k % 4)) return;
            }
}

// Ties and strictly greater values at both sides of every block boundary
// (2048 and 4096 elements) of a three-block vector, and vectors of NaNs.
template <class T>
void blocks() {
    std::mt19937 g(11);
    const int n = 3 * 4096 + 37;
    const std::vector<int> at = {0, 7, 2047, 2048, 4095, 4096, 4097, 6143, 8191, 8192, 12287, 12288, n - 1};
    for (std::size_t i = 0; i < at.size(); ++i)
        for (std::size_t j = i + 1; j < at.size(); ++j)
            for (int d : {0, 1}) {
                auto v = std::vector<T>(std::size_t(n));
                for (T& x : v) x = T(10 + g() % 60);
                v[std::size_t(at[i])] = T(90), v[std::size_t(at[j])] = T(90 + d);
                v[std::size_t(at[i]) / 2] = T(3), v[std::size_t(at[j]) / 2 + 2048] = T(3 - d);
                if (!agree(v, int(i % 4))) return;
            }
    if constexpr (std::numeric_limits<T>::has_quiet_NaN) {
        std::vector<T> v(std::size_t(n), std::numeric_limits<T>::quiet_NaN());
        agree(v, 1);
        v[9000] = T(-std::numeric_limits<T>::infinity());
        agree(v, 2);
    }
}

template <class T>
void firstIndex() {
    everyPosition<T>();
    blocks<T>();
}
TEST(Extremes, FirstIndexWinsAtEveryPositionAndBlockBoundary) {
    firstIndex<Zvp8u>(), firstIndex<Zvp16u>(), firstIndex<Zvp32u>(), firstIndex<Zvp16s>(), firstIndex<Zvp32s>();
    firstIndex<Zvp32f>(), firstIndex<Zvp64f>();
}

TEST(Extremes, MaxOrderExponentRuleAndWarning) {
    const float inf = INFINITY, nan = NAN, den = std::numeric_limits<float>::denorm_min();
    struct F { std::vector<float> v; int order, st; };
    for (const F& c : std::vector<F>{{{0.25f, -3.0f}, 2, 0}, {{inf, 1.0f}, 1, 9}, {{0, -0.0f}, 0, 0}, {{1}, 1, 0},
                                     {{0.5f}, 0, 0}, {{-den}, -126, 0}, {{nan, -inf}, 0, 9}, {{-FLT_MAX, nan}, 128, 9}}) {
        int o = 99, o64 = 99;
        const std::vector<double> d(c.v.begin(), c.v.end());  // the same values, their own bias
        EXPECT_EQ(zvpsMaxOrder_32f(c.v.data(), int(c.v.size()), &o), c.st);
        EXPECT_EQ(zvpsMaxOrder_64f(d.data(), int(d.size()), &o64), c.st);
        EXPECT_TRUE(o == c.order && o64 == (c.v[0] == -den ? -148 : c.order)) << c.v[0] << ": " << o << ", " << o64;
    }
    auto order = [](auto f, const auto* p, int n) { int o = 99; return f(p, n, &o) == zvpStsNoErr ? o : 99; };
    const double dd[] = {std::numeric_limits<double>::denorm_min(), DBL_MAX};
    const Zvp16s s[] = {3, -32768, 32767};
    const Zvp32s t[] = {0, INT_MIN};
    EXPECT_EQ((std::vector<int>{order(zvpsMaxOrder_64f, dd, 1), order(zvpsMaxOrder_64f, dd + 1, 1),
                                order(zvpsMaxOrder_16s, s, 1), order(zvpsMaxOrder_16s, s, 2), order(zvpsMaxOrder_16s, s + 2, 1),
                                order(zvpsMaxOrder_32s, t, 1), order(zvpsMaxOrder_32s, t, 2)}),
              (std::vector<int>{-1022, 1024, 2, 16, 15, 0, 32}));
}

// Indices and counts are integer results: the caller's denormals-are-zero
// mode must not make a denormal compare as zero.
TEST(Extremes, DenormalsCountUnderTheCallersFlushModes) {
    const float d = std::numeric_limits<float>::denorm_min(), v[] = {0, d, -d, 1, -d};
    const double w[] = {0, -std::numeric_limits<double>::denorm_min()};
    float m = 0, z = 0;
    double lo, hi;
    int i = 0, j = 0, k = 0, s, saved = _mm_getcsr();
    _mm_setcsr(saved | 0x8040);
    s = zvpsMaxIndx_32f(v, 3, &m, &i) | zvpsZeroCrossing_32f(v, 5, &z) | zvpsMinMaxIndx_64f(w, 2, &lo, &j, &hi, &k);
    _mm_setcsr(saved);
    EXPECT_TRUE(s == 0 && i == 1 && m == d && z == 3 && j == 1 && k == 0) << i << " " << z << " " << j;
}

TEST(Extremes, MinEveryOf64fReadsItsLengthUnsigned) {
#ifdef ZVP_TEST_LONG_LENGTHS
    const std::size_t bytes = (std::size_t(1) << 31) * sizeof(double);  // INT_MIN as a count: 2^31
    zvp::test::LongRange a(bytes, false), b(bytes, false), d(bytes, true);
    ASSERT_TRUE(a.data() && b.data() && d.data());
    auto* dst = reinterpret_cast<double*>(d.data());
    auto src = [](auto& r) { return reinterpret_cast<const double*>(r.data()); };
    ASSERT_EQ(zvpsMinEvery_64f(src(a), src(b), dst, INT_MIN), zvpStsNoErr);
    EXPECT_EQ(dst[(std::size_t(1) << 31) - 1], 0.0);  // the last element, in its own chunk
#else
    if (sizeof(void*) == 8) GTEST_SKIP() << "no long lengths in this build";
    const double a[1] = {1}, b[1] = {2};
    double d[1] = {7};
    EXPECT_EQ(zvpsMinEvery_64f(a, b, d, -1), zvpStsSizeErr);  // more than the address space holds
    EXPECT_EQ(d[0], 7);
#endif
}

TEST(Extremes, CountInRangeAndZeroCrossingAgainstScans) {
    std::mt19937_64 g(3);
    const Zvp32s bounds[][2] = {{-5, 5}, {5, -5}, {INT_MIN, INT_MAX}, {0, 0}, {INT_MAX, INT_MAX}, {INT_MIN, -1}};
    for (int n = 1; n <= 70; ++n) {
        auto v = std::vector<Zvp32s>(std::size_t(n));
        auto s = std::vector<Zvp16s>(std::size_t(n));
        auto f = std::vector<Zvp32f>(std::size_t(n));
        for (int i = 0; i < n; ++i) {
            v[i] = zvp::test::drawPart<Zvp32s>(g, zvp::test::Draw::Mixed) % (i % 2 ? 8 : INT_MAX);
            s[i] = zvp::test::drawPart<Zvp16s>(g, zvp::test::Draw::Mixed) % (i % 3 ? 3 : 32767);
            f[i] = zvp::test::drawPart<Zvp32f>(g, zvp::test::Draw::Mixed);
        }
        for (auto& b : bounds) {
            int c = -1;
            ASSERT_EQ(zvpsCountInRange_32s(v.data(), n, &c, b[0], b[1]), zvpStsNoErr);
            EXPECT_EQ(c, std::count_if(v.begin(), v.end(), [&](Zvp32s x) { return b[0] <= x && x <= b[1]; }));
        }
        int cs = 0, cf = 0;
        for (int i = 1; i < n; ++i) cs += (s[i] < 0) != (s[i - 1] < 0), cf += (f[i] < 0) != (f[i - 1] < 0);
        Zvp32f zs = -1, zf = -1;
        EXPECT_TRUE(zvpsZeroCrossing_16s32f(s.data(), n, &zs) == zvpStsNoErr && zs == float(cs)) << n;
        EXPECT_TRUE(zvpsZeroCrossing_32f(f.data(), n, &zf) == zvpStsNoErr && zf == float(cf)) << n;
    }
    // Counts beyond 2^24 round to the nearest even single, whatever the mode.
    std::vector<Zvp16s> alt((1 << 24) + 4);
    for (std::size_t i = 0; i < alt.size(); ++i) alt[i] = i % 2 ? -1 : 1;
    const unsigned saved = _mm_getcsr();
    for (auto [n, want] : {std::pair{(1 << 24) + 2, 16777216.0f}, {(1 << 24) + 4, 16777220.0f}}) {
        _mm_setcsr(saved | 0x2000);  // round down
        Zvp32f z = 0;
        zvpsZeroCrossing_16s32f(alt.data(), n, &z);
        _mm_setcsr(saved);
        EXPECT_EQ(z, want);
    }
}

}  // namespace

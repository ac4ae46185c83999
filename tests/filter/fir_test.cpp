// State-based FIR filters: every taps/data pairing from one table of kinds,
// against a long-double direct-form oracle (exact integers where the kind
// promises exactness), across the method boundaries, split and single-sample
// streams, in-place pieces, record sizes, tags, check order and allocation
// failure; then the stream forms.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <random>
#include <vector>

#include "alloc_count.h"
#include "sentinel.h"
#include "zvps_fir.h"
#include "zvps_fftreal.h"

namespace {

namespace alloc = zvp::test::alloc;
using LD = long double;
using C = std::complex<LD>;

template <class T>
constexpr bool kCplx = std::is_same_v<T, Zvp32fc> || std::is_same_v<T, Zvp64fc> || std::is_same_v<T, Zvp16sc> ||
                       std::is_same_v<T, Zvp32sc>;
template <class T>
constexpr bool kInt = !std::is_floating_point_v<T> && !std::is_same_v<T, Zvp32fc> && !std::is_same_v<T, Zvp64fc>;
template <class T>
C toC(const T& v) {
    if constexpr (kCplx<T>) return C(LD(v.re), LD(v.im));
    else return C(LD(v), 0);
}

// A random sample of T: floats in [-1, 1], integers in [-amp, amp].
template <class T>
T rnd(std::mt19937& g, long amp) {
    auto part = [&] { return kInt<T> ? LD(std::uniform_int_distribution<long>(-amp, amp)(g))
                                     : LD(std::uniform_real_distribution<double>(-1, 1)(g)); };
    if constexpr (kCplx<T>) return T{decltype(T{}.re)(part()), decltype(T{}.re)(part())};
    else return T(part());
}

// ---- the table of kinds: each wraps one pairing's exports in one shape.
// u: unit roundoff of the working precision; fast: the kind has a transform
// path; exact: integer results are the exact rule on the exact sum; amp:
// integer data range; tf: the taps factor used with integer taps.

#define FTAPS(SUF)                                                                                               \
    static constexpr bool kIntTaps = false;                                                                      \
    static ZvpStatus init(State** p, const T* t, int L, int, const D* d, Zvp8u* b) { return zvpsFIRInit##SUF(p, t, L, d, b); } \
    static ZvpStatus initAlloc(State** p, const T* t, int L, int, const D* d) { return zvpsFIRInitAlloc##SUF(p, t, L, d); } \
    static ZvpStatus setTaps(const T* t, State* s, int) { return zvpsFIRSetTaps##SUF(t, s); }
#define ITAPS(SUF)                                                                                               \
    static constexpr bool kIntTaps = true;                                                                       \
    static ZvpStatus init(State** p, const T* t, int L, int f, const D* d, Zvp8u* b) { return zvpsFIRInit##SUF(p, t, L, f, d, b); } \
    static ZvpStatus initAlloc(State** p, const T* t, int L, int f, const D* d) { return zvpsFIRInitAlloc##SUF(p, t, L, f, d); } \
    static ZvpStatus setTaps(const T* t, State* s, int f) { return zvpsFIRSetTaps##SUF(t, s, f); }
#define PLAIN(SUF)                                                                                               \
    static ZvpStatus fir(const D* x, D* y, int n, State* s, int) { return zvpsFIR##SUF(x, y, n, s); }           \
    static ZvpStatus firI(D* x, int n, State* s, int) { return zvpsFIR##SUF##_I(x, n, s); }                     \
    static ZvpStatus one(D x, D* y, State* s, int) { return zvpsFIROne##SUF(x, y, s); }
#define SFS(SUF)                                                                                                 \
    static ZvpStatus fir(const D* x, D* y, int n, State* s, int f) { return zvpsFIR##SUF##_Sfs(x, y, n, s, f); } \
    static ZvpStatus firI(D* x, int n, State* s, int f) { return zvpsFIR##SUF##_ISfs(x, n, s, f); }             \
    static ZvpStatus one(D x, D* y, State* s, int f) { return zvpsFIROne##SUF##_Sfs(x, y, s, f); }
#define KIND(NAME, SUF, TT, DD, TAPS, CALLS, U, FAST, EXACT, AMP, TF)                                          \
    struct NAME {                                                                                                \
        using T = TT;                                                                                            \
        using D = DD;                                                                                            \
        using State = ZvpsFIRState##SUF;                                                                         \
        static constexpr LD u = U;                                                                               \
        static constexpr bool fast = FAST, exact = EXACT;                                                        \
        static constexpr long amp = AMP;                                                                         \
        static constexpr int tf = TF;                                                                            \
        static ZvpStatus size(int L, int* s) { return zvpsFIRGetStateSize##SUF(L, s); }                          \
        static ZvpStatus release(State* s) { return zvpsFIRFree##SUF(s); }                                       \
        static ZvpStatus getTaps(const State* s, T* t) { return zvpsFIRGetTaps##SUF(s, t); }                     \
        static ZvpStatus setDly(State* s, const D* d) { return zvpsFIRSetDlyLine##SUF(s, d); }                   \
        static ZvpStatus getDly(const State* s, D* d) { return zvpsFIRGetDlyLine##SUF(s, d); }                   \
        TAPS(SUF) CALLS(SUF)                                                                                     \
    };

constexpr LD u32 = 0x1p-24L, u64 = 0x1p-53L;
KIND(K32f, _32f, Zvp32f, Zvp32f, FTAPS, PLAIN, u32, true, false, 0, 0)
KIND(K32fc, _32fc, Zvp32fc, Zvp32fc, FTAPS, PLAIN, u32, true, false, 0, 0)
KIND(K64f, _64f, Zvp64f, Zvp64f, FTAPS, PLAIN, u64, true, false, 0, 0)
KIND(K64fc, _64fc, Zvp64fc, Zvp64fc, FTAPS, PLAIN, u64, true, false, 0, 0)
KIND(K32f16s, 32f_16s, Zvp32f, Zvp16s, FTAPS, SFS, u32, true, false, 3000, 0)
KIND(K32fc16sc, 32fc_16sc, Zvp32fc, Zvp16sc, FTAPS, SFS, u32, true, false, 3000, 0)
KIND(K64f32f, 64f_32f, Zvp64f, Zvp32f, FTAPS, PLAIN, u64, true, false, 0, 0)
KIND(K64fc32fc, 64fc_32fc, Zvp64fc, Zvp32fc, FTAPS, PLAIN, u64, true, false, 0, 0)
KIND(K64f16s, 64f_16s, Zvp64f, Zvp16s, FTAPS, SFS, u64, true, false, 32767, 0)
KIND(K64fc16sc, 64fc_16sc, Zvp64fc, Zvp16sc, FTAPS, SFS, u64, true, false, 32767, 0)
KIND(K64f32s, 64f_32s, Zvp64f, Zvp32s, FTAPS, SFS, u64, true, false, 1L << 24, 0)
KIND(K64fc32sc, 64fc_32sc, Zvp64fc, Zvp32sc, FTAPS, SFS, u64, true, false, 1L << 24, 0)
KIND(K32s16s, 32s_16s, Zvp32s, Zvp16s, ITAPS, SFS, u64, false, true, 32767, 20)
KIND(K32sc16sc, 32sc_16sc, Zvp32sc, Zvp16sc, ITAPS, SFS, u64, false, true, 32767, 20)
KIND(K16s, _16s, Zvp16s, Zvp16s, ITAPS, SFS, u64, false, true, 32767, 12)
KIND(K32s, _32s, Zvp32s, Zvp32s, ITAPS, SFS, u64, true, false, 1L << 24, 20)

// ---- oracle

// The type of one part of an integer sample.
template <class T> struct PartOf { using type = T; };
template <> struct PartOf<Zvp16sc> { using type = Zvp16s; };
template <> struct PartOf<Zvp32sc> { using type = Zvp32s; };

template <class K>
struct Case {
    std::vector<typename K::T> taps;
    std::vector<typename K::D> dly, x;
};

template <class K>
Case<K> makeCase(int L, int n, unsigned seed) {
    std::mt19937 g(seed);
    Case<K> c;
    const long tapAmp = K::kIntTaps ? (1L << K::tf) : 0;
    for (int i = 0; i < L; ++i) c.taps.push_back(rnd<typename K::T>(g, tapAmp / 2 + 1));
    for (int i = 0; i < L; ++i) c.dly.push_back(rnd<typename K::D>(g, K::amp));
    for (int i = 0; i < n; ++i) c.x.push_back(rnd<typename K::D>(g, K::amp));
    return c;
}

// The exact value of output i (before the output scale) from the taps,
// the delay line (oldest first) and the inputs, and sum |h| |x| alongside.
template <class K>
C oracle(const Case<K>& c, int i, LD* mag) {
    const int L = int(c.taps.size());
    C s = 0;
    *mag = 0;
    for (int k = 0; k < L; ++k) {
        const int t = i - k;
        const C v = t >= 0 ? toC(c.x[t]) : toC(c.dly[L + t]);
        s += toC(c.taps[k]) * v;
        *mag += std::abs(toC(c.taps[k])) * std::abs(v);
    }
    return s;
}

// Exact integer rule: R * 2^-s, nearest with ties to even, saturated.
LD ruleExact(long long R, int s, LD lo, LD hi) {
    LD v;
    if (s <= 0) {
        v = std::ldexp(LD(R), -s);
    } else if (s >= 63) {
        v = 0;
    } else {
        long long q = R >> s;  // floor
        const long long rem = R - q * (1LL << s), half = 1LL << (s - 1);
        if (rem > half || (rem == half && (q & 1))) ++q;
        v = LD(q);
    }
    return std::clamp(v, lo, hi);
}

// Checks y against the oracle: exact kinds exactly, float results within
// u (2L + 8 k sqrt(N)) sum|h||x| -- recursive summation of L products gives
// at most L u sum|h||x| (twice that for complex products), and the
// overlap-save path adds at most a few u log2(N) sqrt(N) of |h|_1 max|x|
// per output -- and integer results within half a unit beyond that.
template <class K>
void expectOracle(const Case<K>& c, const std::vector<typename K::D>& y, int sf, const char* what) {
    using D = typename K::D;
    const int L = int(c.taps.size());
    int k = 0;
    if (K::fast && L >= 64) for (k = 3; (1 << (k - 1)) <= L; ++k) {}
    const LD fftTerm = k ? 8 * k * std::sqrt(LD(1 << k)) : 0;
    LD h1 = 0, xmax = 0;
    for (auto& t : c.taps) h1 += std::abs(toC(t));
    for (auto& v : c.x) xmax = std::max(xmax, std::abs(toC(v)));
    for (auto& v : c.dly) xmax = std::max(xmax, std::abs(toC(v)));
    const int shift = (K::kIntTaps ? K::tf : 0) + sf;
    for (size_t i = 0; i < y.size(); ++i) {
        LD mag;
        const C ref = oracle(c, int(i), &mag);
        const C got = toC(y[i]);
        const LD tol = K::u * ((2 * L) * mag + fftTerm * h1 * xmax);
        if constexpr (kInt<D>) {
            using P = typename PartOf<D>::type;
            const LD lo = LD(std::numeric_limits<P>::min()), hi = LD(std::numeric_limits<P>::max());
            const LD parts[2][2] = {{ref.real(), got.real()}, {ref.imag(), got.imag()}};
            for (auto& p : parts) {
                if (K::exact) {
                    ASSERT_EQ(p[1], ruleExact((long long)p[0], shift, lo, hi)) << what << " i=" << i << " L=" << L;
                } else {
                    const LD want = std::clamp(std::ldexp(p[0], -shift), lo, hi);
                    ASSERT_LE(std::fabs(p[1] - want), 0.5L + std::ldexp(tol, -shift) + 1e-9L)
                        << what << " i=" << i << " L=" << L;
                }
            }
        } else {
            // Plus the final rounding to the data type (each part).
            const LD uD = std::is_same_v<D, Zvp32f> || std::is_same_v<D, Zvp32fc> ? u32 : u64;
            ASSERT_LE(std::abs(got - ref), tol + 2 * uD * std::abs(ref) + 1e-30L) << what << " i=" << i << " L=" << L;
        }
    }
}

template <class K>
struct Owned {
    typename K::State* s = nullptr;
    ~Owned() {
        if (s) K::release(s);
    }
};

template <class K>
typename K::State* make(Owned<K>& o, const Case<K>& c) {
    EXPECT_EQ(K::initAlloc(&o.s, c.taps.data(), int(c.taps.size()), K::tf, c.dly.data()), zvpStsNoErr);
    return o.s;
}

template <class K>
class Fir : public ::testing::Test {};
using Kinds = ::testing::Types<K32f, K32fc, K64f, K64fc, K32f16s, K32fc16sc, K64f32f, K64fc32fc, K64f16s,
                               K64fc16sc, K64f32s, K64fc32sc, K32s16s, K32sc16sc, K16s, K32s>;
TYPED_TEST_SUITE(Fir, Kinds);

// Every length straddling the method boundaries (taps 63/64, counts
// 511/512), filtered as two calls so the second starts from the first's
// history; sf moves the integer outputs across rounding and saturation.
TYPED_TEST(Fir, MatchesOracleAcrossMethods) {
    using K = TypeParam;
    struct Row {
        int L, n1, n2, sf;
    };
    const Row rows[] = {{1, 7, 3, 0},      {3, 2, 40, 1},     {17, 100, 9, -1},  {63, 511, 512, 2},
                        {64, 511, 512, 0}, {64, 1, 1500, 3},  {200, 700, 30, 0}, {300, 40, 2000, 5}};
    for (const Row& r : rows) {
        const int sf = kInt<typename K::D> ? r.sf : 0;
        const auto c = makeCase<K>(r.L, r.n1 + r.n2, 7 + r.L + r.n1);
        Owned<K> o;
        auto* s = make(o, c);
        std::vector<typename K::D> y(c.x.size());
        ASSERT_EQ(K::fir(c.x.data(), y.data(), r.n1, s, sf), zvpStsNoErr);
        ASSERT_EQ(K::fir(c.x.data() + r.n1, y.data() + r.n1, r.n2, s, sf), zvpStsNoErr);
        expectOracle<K>(c, y, sf, "two calls");
    }
}

// FIROne steps, in-place pieces across 4096 and the history afterwards all
// continue the same stream.
TYPED_TEST(Fir, StreamsOfOneSamplesAndPieces) {
    using K = TypeParam;
    for (int L : {5, 64, 200}) {
        for (int n : {4095, 4097, 9000}) {
            if (L == 5 && n != 4097) continue;
            const auto c = makeCase<K>(L, n, 3 * L + n);
            Owned<K> o;
            auto* s = make(o, c);
            std::vector<typename K::D> y(c.x);
            const int head = 37;
            for (int i = 0; i < head; ++i) ASSERT_EQ(K::one(c.x[i], &y[i], s, 1), zvpStsNoErr);
            ASSERT_EQ(K::firI(y.data() + head, n - head, s, 1), zvpStsNoErr);
            expectOracle<K>(c, y, 1, "one + in place");
            std::vector<typename K::D> d(L);
            ASSERT_EQ(K::getDly(s, d.data()), zvpStsNoErr);
            EXPECT_EQ(0, std::memcmp(d.data(), c.x.data() + n - L, L * sizeof(d[0])));
        }
    }
}

// The converting kinds stage every call in pieces, so in place must equal
// out of place bit for bit; the others agree within the oracle's bound.
TYPED_TEST(Fir, InPlaceEqualsOutOfPlace) {
    using K = TypeParam;
    const auto c = makeCase<K>(64, 9000, 99);
    Owned<K> a, b;
    auto *sa = make(a, c), *sb = make(b, c);
    std::vector<typename K::D> y(c.x.size()), z(c.x);
    ASSERT_EQ(K::fir(c.x.data(), y.data(), 9000, sa, 0), zvpStsNoErr);
    ASSERT_EQ(K::firI(z.data(), 9000, sb, 0), zvpStsNoErr);
    if constexpr (!std::is_same_v<typename K::D, typename K::T>) {
        EXPECT_EQ(0, std::memcmp(y.data(), z.data(), y.size() * sizeof(y[0])));
    }
    expectOracle<K>(c, z, 0, "in place");
}

// Init uses exactly the reported bytes at any 16-byte phase, and the
// accessors round-trip what they were given.
TYPED_TEST(Fir, RecordFitsAndAccessorsRoundTrip) {
    using K = TypeParam;
    for (int L : {1, 7, 64, 300}) {
        const auto c = makeCase<K>(L, 1200, L);
        int bytes = 0;
        ASSERT_EQ(K::size(L, &bytes), zvpStsNoErr);
        for (size_t mis : {0u, 4u, 8u, 12u}) {
            zvp::test::GuardedBuffer buf(bytes, mis);
            typename K::State* s = nullptr;
            ASSERT_EQ(K::init(&s, c.taps.data(), L, K::tf, c.dly.data(), buf.data()), zvpStsNoErr);
            std::vector<typename K::D> y(c.x.size());
            ASSERT_EQ(K::fir(c.x.data(), y.data(), 1200, s, 0), zvpStsNoErr);
            ASSERT_EQ(K::firI(y.data(), 1200, s, 0), zvpStsNoErr);
            EXPECT_TRUE(buf.guardsIntact()) << "L=" << L << " mis=" << mis;
            std::vector<typename K::T> t(L);
            ASSERT_EQ(K::getTaps(s, t.data()), zvpStsNoErr);
            EXPECT_EQ(0, std::memcmp(t.data(), c.taps.data(), L * sizeof(t[0]))) << "L=" << L;
            std::vector<typename K::D> d(L);
            ASSERT_EQ(K::setDly(s, c.dly.data()), zvpStsNoErr);
            ASSERT_EQ(K::getDly(s, d.data()), zvpStsNoErr);
            EXPECT_EQ(0, std::memcmp(d.data(), c.dly.data(), L * sizeof(d[0])));
            ASSERT_EQ(K::setDly(s, nullptr), zvpStsNoErr);
            ASSERT_EQ(K::getDly(s, d.data()), zvpStsNoErr);
            for (auto& v : d) EXPECT_EQ(std::abs(toC(v)), 0);
            // New taps on a zeroed history: the filter restarts from them.
            auto c2 = makeCase<K>(L, 300, L + 1);
            c2.dly.assign(L, typename K::D{});
            ASSERT_EQ(K::setTaps(c2.taps.data(), s, K::tf), zvpStsNoErr);
            std::vector<typename K::D> y2(300);
            ASSERT_EQ(K::fir(c2.x.data(), y2.data(), 300, s, 0), zvpStsNoErr);
            expectOracle<K>(c2, y2, 0, "after SetTaps");
            ASSERT_EQ(K::release(s), zvpStsNoErr);
            EXPECT_EQ(*reinterpret_cast<std::int32_t*>(s) >> 16, 0x4649) << "caller memory is left alone";
        }
    }
}

// Statuses in order, nothing written on error, a foreign or freed record
// refused everywhere.
TYPED_TEST(Fir, ChecksInOrderAndTags) {
    using K = TypeParam;
    using D = typename K::D;
    const auto c = makeCase<K>(8, 16, 1);
    Owned<K> o;
    auto* s = make(o, c);
    int sz = 5;
    EXPECT_EQ(K::size(0, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(K::size(0, &sz), zvpStsFIRLenErr);
    EXPECT_EQ(sz, 5);
    typename K::State* p = nullptr;
    Zvp8u b[64];
    EXPECT_EQ(K::init(&p, c.taps.data(), 0, 0, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(K::init(&p, c.taps.data(), 0, 0, nullptr, b), zvpStsFIRLenErr);
    EXPECT_EQ(K::initAlloc(&p, nullptr, 0, 0, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(K::initAlloc(&p, c.taps.data(), -1, 0, nullptr), zvpStsFIRLenErr);
    EXPECT_EQ(p, nullptr);
    std::vector<D> y(16, c.x[3]);
    const auto y0 = y;
    EXPECT_EQ(K::fir(c.x.data(), nullptr, 0, s, 0), zvpStsNullPtrErr);
    EXPECT_EQ(K::fir(c.x.data(), y.data(), 0, nullptr, 0), zvpStsNullPtrErr);
    EXPECT_EQ(K::fir(c.x.data(), y.data(), 0, s, 0), zvpStsSizeErr);
    EXPECT_EQ(K::firI(y.data(), -3, s, 0), zvpStsSizeErr);
    EXPECT_EQ(K::one(c.x[0], nullptr, s, 0), zvpStsNullPtrErr);
    // A record of another kind: a 64f state for every kind but 64f, a 32f one for 64f.
    std::vector<double> t64(8, 0.5);
    ZvpsFIRState_64f* f64 = nullptr;
    ZvpsFIRState_32f* f32 = nullptr;
    ASSERT_EQ(zvpsFIRInitAlloc_64f(&f64, t64.data(), 8, nullptr), zvpStsNoErr);
    std::vector<float> t32(8, 0.5f);
    ASSERT_EQ(zvpsFIRInitAlloc_32f(&f32, t32.data(), 8, nullptr), zvpStsNoErr);
    auto* foreign = std::is_same_v<K, K64f> ? reinterpret_cast<typename K::State*>(f32)
                                            : reinterpret_cast<typename K::State*>(f64);
    std::vector<typename K::T> t(8);
    std::vector<D> d(8);
    EXPECT_EQ(K::fir(c.x.data(), y.data(), 16, foreign, 0), zvpStsContextMatchErr);
    EXPECT_EQ(K::firI(y.data(), 16, foreign, 0), zvpStsContextMatchErr);
    EXPECT_EQ(K::one(c.x[0], y.data(), foreign, 0), zvpStsContextMatchErr);
    EXPECT_EQ(K::setTaps(c.taps.data(), foreign, 0), zvpStsContextMatchErr);
    EXPECT_EQ(K::getTaps(foreign, t.data()), zvpStsContextMatchErr);
    EXPECT_EQ(K::setDly(foreign, nullptr), zvpStsContextMatchErr);
    EXPECT_EQ(K::getDly(foreign, d.data()), zvpStsContextMatchErr);
    EXPECT_EQ(K::release(foreign), zvpStsContextMatchErr);
    EXPECT_EQ(0, std::memcmp(y.data(), y0.data(), y.size() * sizeof(D)));
    zvpsFIRFree_64f(f64);
    zvpsFIRFree_32f(f32);
}

// InitAlloc takes one block: failing it reports -9 and holds nothing.
TYPED_TEST(Fir, AllocationFailureHoldsNothing) {
    using K = TypeParam;
    const auto c = makeCase<K>(100, 1, 5);
    for (int k = 1; k <= 3; ++k) {
        alloc::reset(k);
        typename K::State* s = nullptr;
        const ZvpStatus st = K::initAlloc(&s, c.taps.data(), 100, K::tf, c.dly.data());
        if (k <= alloc::calls) {
            EXPECT_EQ(st, zvpStsMemAllocErr);
            EXPECT_EQ(s, nullptr);
            EXPECT_EQ(alloc::live, 0);
        } else {
            ASSERT_EQ(st, zvpStsNoErr);
            EXPECT_EQ(K::release(s), zvpStsNoErr);
            EXPECT_EQ(alloc::live, 0);
        }
    }
    alloc::reset();
}

}  // namespace

// Deterministic signals against long-double (or exact) closed forms, check
// orders, continuity across calls and the Q15 records; the ramps', slopes' and
// chirp's shared checks run from tests/shapes/generate_shapes_test.cpp.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <vector>

#include "alloc_count.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using ld = long double;
using zvp::test::GuardedBuffer;
const ld kPi = 3.141592653589793238462643383279502884L;
const double kPiD = 3.141592653589793, kTwoPiF = double(float(2 * kPiD)), nan = std::nan("");  // kTwoPiF: 6.2831855f > 2 pi

ld frac(ld x) { return x - floorl(x); }
// Half away from zero, saturated, NaN to 0: the integer rule, on an exact value.
template <class T>
T roundSat(ld v) {
    const ld r = roundl(v), lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    return std::isnan(v) ? T(0) : T(r < lo ? lo : r > hi ? hi : r);
}
// An integer is the rounding of the exact o unless o lies within tol of a tie
// (where a correct double result may fall either side); a float is within tol.
template <class T>
bool agrees(T got, ld o, ld tol) {
    if constexpr (std::is_integral_v<T>) return fabsl(fabsl(o - truncl(o)) - 0.5L) <= tol + 1e-12L || got == roundSat<T>(o);
    else return fabsl(ld(got) - o) <= tol;
}
template <class M>  // an argument in the export's type; NaN stays out of integers
M conv(double x) { return std::is_integral_v<M> && std::isnan(x) ? M(0) : M(x); }

template <class T>
void checkAgainst(const char* what, const T* got, int len, const std::function<ld(int)>& ref, ld tol) {
    for (int n = 0; n < len; ++n)
        ASSERT_TRUE(agrees(got[n], ref(n), tol)) << what << " n=" << n << " got " << double(got[n]) << " exact " << double(ref(n));
}

struct RampCase { float offset, slope; };
const RampCase kRamps[] = {{0.5f, 1}, {-0.5f, 1}, {40000, 0}, {-40000, 0}, {0, -1.5f}, {100.25f, 0.5f},
                           {-3e9f, 2.5e7f}, {1e10f, 1}, {0, 1e-3f}, {2.5f, -1}, {-128.5f, 1}, {0, 3e7f}};

template <class T, class F>
void rampCases(F f) {
    std::vector<T> d(300);
    for (const RampCase& c : kRamps) {
        ASSERT_EQ(f(d.data(), 300, c.offset, c.slope), zvpStsNoErr);
        for (int n = 0; n < 300; ++n) {
            volatile float x = float(n) * c.slope, v = x + c.offset;  // two single-precision roundings, no FMA
            if constexpr (std::is_integral_v<T>) ASSERT_EQ(d[n], roundSat<T>(double(v))) << c.offset << " " << c.slope << " n=" << n;
            else ASSERT_EQ(d[n], v);
        }
    }
}

template <class T, class F>
void slopeCases(F f, ld tolUlp) {
    struct { double first, last; int len; } cases[] = {
        {0.5, 10.5, 11}, {-10.5, -0.5, 11}, {-40000, 70000, 12}, {2.5, 2.5, 5}, {7.25, -3, 1}, {-1e10, 1e10, 1000},
        {0.1, 0.7, 77}, {-300, 300, 601}, {1, 0, 3}};
    for (auto c : cases) {
        std::vector<T> d(c.len);
        ASSERT_EQ(f(d.data(), c.len, c.first, c.last), zvpStsNoErr);
        const ld a = c.first, b = c.last, m = c.len - 1, scale = fmaxl(fabsl(a), fabsl(b)) * tolUlp;
        checkAgainst<T>("slope", d.data(), c.len, [&](int n) { return c.len == 1 ? a : a + (b - a) * n / m; }, scale);
        if constexpr (std::is_floating_point_v<T>) { EXPECT_EQ(d[c.len - 1], T(c.len == 1 ? c.first : c.last)); }
    }
}

template <class T, class F>
void jaehneCases(F f, T magn, ld tolRel) {
    for (int len : {1, 2, 7, 64, 1000, 100003}) {
        std::vector<T> d(len);
        ASSERT_EQ(f(d.data(), len, magn), zvpStsNoErr);
        const auto ref = [&](int n) { return ld(magn) * sinl(kPi / 2 * ld(std::uint64_t(n) * n % (4 * std::uint64_t(len))) / len); };
        checkAgainst<T>("jaehne", d.data(), len, ref, tolRel * ld(magn));
    }
}

// Slope tolerance relative to the larger end: integers exact except near a tie (a double's rounding), 32f
// one rounding of a double, 64f two units of 2^-53. Jaehne: the 2^-51 bound, 32f plus one single rounding.
#define FILLS(t, T, slopeTol, magn, jTol) \
    rampCases<T>(zvpsVectorRamp_##t), slopeCases<T>(zvpsVectorSlope_##t, slopeTol), jaehneCases<T>(zvpsVectorJaehne_##t, magn, jTol)
TEST(Generate, RampsSlopesAndChirpMatchTheirExactValues) {
    FILLS(8u, Zvp8u, 0x1p-50L, 200, 0x1p-50L), FILLS(8s, Zvp8s, 0x1p-50L, 127, 0x1p-50L);
    FILLS(16u, Zvp16u, 0x1p-50L, 65535, 0x1p-50L), FILLS(16s, Zvp16s, 0x1p-50L, 32767, 0x1p-50L);
    FILLS(32u, Zvp32u, 0x1p-50L, 4294967295u, 0x1p-50L), FILLS(32s, Zvp32s, 0x1p-50L, 2147483647, 0x1p-50L);
    FILLS(32f, Zvp32f, 0x1p-24L, 1.5f, 0x1p-24L * 1.01L);
    slopeCases<Zvp64f>(zvpsVectorSlope_64f, 0x1p-52L), jaehneCases<Zvp64f>(zvpsVectorJaehne_64f, 3.0, 0x1p-51L);
    Zvp16s s[12];  // the worked examples: half away from zero, saturation, equal slope ends
    zvpsVectorRamp_16s(s, 3, 0.5f, 1), zvpsVectorRamp_16s(s + 3, 3, -0.5f, 1), zvpsVectorRamp_16s(s + 6, 3, 40000, 1);
    ASSERT_EQ(zvpsVectorSlope_16s(s + 9, 3, 2.5, 2.5), zvpStsNoErr);
    EXPECT_EQ(std::vector<Zvp16s>(s, s + 12), (std::vector<Zvp16s>{1, 2, 3, -1, 1, 2, 32767, 32767, 32767, 3, 3, 3}));
    std::vector<double> d(101);
    ASSERT_EQ(zvpsVectorRamp_64f(d.data(), 101, -0.1, 1.0 / 3), zvpStsNoErr);
    for (int n = 0; n <= 100; ++n) ASSERT_EQ(d[n], -0.1 + n * (1.0 / 3));
}
#undef FILLS

// A direct tone or triangle through double arguments; the phase goes through its own type.
struct Wave {
    const char* name;
    bool complex, tri;
    int kind;  // 0: 16s, 1: 32f, 2: 64f
    std::function<ZvpStatus(void*, int, double, double, double, double*)> call;
    std::size_t part() const { return kind == 0 ? 2 : kind == 1 ? 4 : 8; }
    std::size_t bytes(int len) const { return std::size_t(len) * (complex ? 2 : 1) * part(); }
    ld at(const void* p, int k) const {
        return kind == 0 ? ld(((const Zvp16s*)p)[k]) : kind == 1 ? ld(((const float*)p)[k]) : ld(((const double*)p)[k]);
    }
    double maxFreq() const { return complex ? 1.0 : 0.5; }
};
#define ZVP_WAVE(fn, t, cplx, tri, kind, M, F, ...)                                                       \
    Wave{#fn "_" #t, cplx, tri, kind, [](void* d, int n, double m, double f, [[maybe_unused]] double a, double* ph) {\
        F p = ph ? F(*ph) : F(0);                                                                          \
        const ZvpStatus s = zvps##fn##_##t(static_cast<Zvp##t*>(d), n, conv<M>(m), F(f), __VA_ARGS__);           \
        return ph ? (*ph = p, s) : s;                                                                      \
    }}
#define BOTH(t, c, k, M, F) ZVP_WAVE(Tone_Direct, t, c, false, k, M, F, ph ? &p : nullptr, zvpAlgHintNone), \
                            ZVP_WAVE(Triangle_Direct, t, c, true, k, M, F, F(a), ph ? &p : nullptr)
const Wave kWaves[] = {BOTH(16s, false, 0, Zvp16s, float), BOTH(16sc, true, 0, Zvp16s, float), BOTH(32f, false, 1, float, float),
                       BOTH(32fc, true, 1, float, float),  BOTH(64f, false, 2, double, double), BOTH(64fc, true, 2, double, double)};

// The exact wave at sample n: k = 0 its real value, k = 1 its imaginary one.
ld waveRef(const Wave& w, ld magn, ld f, ld asym, ld phase, int n, int k) {
    ld t = 2 * kPi * frac(f * n + phase / (2 * kPi));  // f * n exact in long double for n < 2^11
    if (!w.tri) return magn * (k ? sinl(t) : cosl(t));
    if (k) t = 2 * kPi * frac(t / (2 * kPi) + 0.75L);
    const ld h = kPi - asym;
    return magn * (t < h ? 1 - 2 * t / h : -1 + 2 * (t - h) / (2 * kPi - h));
}
// Single precision: one rounding of the double value; double: the bounds the
// header gives (a triangle's steep edge magnifies the rounding of its phase).
ld tolerance(const Wave& w, ld magn, ld asym) {
    const ld own = w.tri ? magn * 0x1p-49L * kPi / (kPi - fabsl(asym)) : magn * 1e-14L;
    return w.kind == 1 ? magn * 0x1p-24L + own : own;
}

struct WaveCase { double magn, freq, asym, phase; };
const WaveCase kWaveCases[] = {{1000, 0.0, 0, 0},       {32767, 0.1234567, 0.5, 1.25}, {0.75, 0.49, -2.5, 6.25},
                               {12345, 1.0 / 3, 3.0, 3.0}, {2, 0.015625, -1.0, 0.001},  {32000, 0.45, -kPiD, 2.0},
                               {5, 0.73, 1.5, 4.0}};

TEST(Generate, TonesAndTrianglesFollowTheirClosedFormsAndWriteBackThePhase) {
    const int len = 1500;
    for (const Wave& w : kWaves)
        for (const WaveCase& c : kWaveCases) {
            if (c.freq >= w.maxFreq() || (c.asym == -kPiD && w.kind != 2) || (c.magn < 1 && w.kind == 0)) continue;
            std::vector<double> buf(w.bytes(len) / 8 + 1);
            double ph = c.phase;
            ASSERT_EQ(w.call(buf.data(), len, c.magn, c.freq, c.asym, &ph), zvpStsNoErr) << w.name;
            auto in = [&](double x) { return w.kind == 2 ? ld(x) : ld(float(x)); };  // as the export received it
            const ld f = in(c.freq), p0 = in(c.phase), a = in(c.asym);
            for (int n = 0; n < len; ++n)
                for (int k = 0; k < (w.complex ? 2 : 1); ++k) {
                    const ld o = waveRef(w, c.magn, f, a, p0, n, k), got = w.at(buf.data(), n * (w.complex ? 2 : 1) + k);
                    ASSERT_TRUE(w.kind == 0 ? agrees(Zvp16s(got), o, 1e-7L) : agrees(got, o, tolerance(w, c.magn, a)))
                        << w.name << " f=" << c.freq << " n=" << n << " part " << k << " got " << double(got) << " exact " << double(o);
                }
            const ld back = 2 * kPi * frac(f * len + p0 / (2 * kPi)), d = fabsl(ph - back);
            EXPECT_LE(fminl(d, 2 * kPi - d), w.kind == 2 ? 1e-13L : 1e-6L) << w.name;
            EXPECT_TRUE(ph >= 0 && ph < 2 * kPiD) << w.name;
        }
}

// Any length at any alignment gives the bits of a longer call's prefix (integers
// also under the caller's round-up/FTZ/DAZ, its MXCSR restored); split calls
// through the written-back phase stay within that phase's rounding.
TEST(Generate, TonesAndTrianglesAgreeAcrossLengthsAlignmentsAndSplitCalls) {
    const int len = 700;
    for (const Wave& w : kWaves) {
        const double magn = 30000, freq = 0.037109375, asym = 0.75, phase = 2.5;  // exact in single precision
        std::vector<double> ref(w.bytes(len) / 8 + 1);
        double ph = phase;
        ASSERT_EQ(w.call(ref.data(), len, magn, freq, asym, &ph), zvpStsNoErr);
        for (int n : {1, 3, 5, 63, 64, 65, 130, 257}) {
            GuardedBuffer g(w.bytes(n), w.part());
            ph = phase;
            const unsigned saved = _mm_getcsr(), odd = (saved & ~0x6000u) | 0x4000u | 0x8040u;  // up, FTZ, DAZ
            if (w.kind == 0) _mm_setcsr(odd);
            const ZvpStatus st = w.call(g.data(), n, magn, freq, asym, &ph);
            const unsigned after = _mm_getcsr();
            _mm_setcsr(saved);
            ASSERT_TRUE(st == zvpStsNoErr && after == (w.kind == 0 ? odd : saved)) << w.name;
            ASSERT_EQ(std::memcmp(g.data(), ref.data(), w.bytes(n)), 0) << w.name << " len " << n;
            ASSERT_TRUE(g.guardsIntact()) << w.name;
        }
        std::vector<double> split(ref.size());
        ph = phase;
        for (int done = 0; int n : {1, 63, 64, 65, 200, 307})
            ASSERT_EQ(w.call(reinterpret_cast<char*>(split.data()) + w.bytes((done += n) - n), n, magn, freq, asym, &ph), zvpStsNoErr);
        // Single precision: each written-back phase is rounded by up to 2^-22 rad.
        const ld tol = w.kind == 0 ? 1.0L : w.kind == 1 ? magn * 6 * 0x1p-22L : magn * 1e-13L;
        for (int k = 0; k < len * (w.complex ? 2 : 1); ++k)
            ASSERT_LE(fabsl(w.at(split.data(), k) - w.at(ref.data(), k)), tol) << w.name << " element " << k;
    }
}

// With every fault from the k-th on present the k-th status comes back; each bad
// value is refused alone; nothing is written, the phase included.
TEST(Generate, WaveChecksRunInTheirFixedOrderAndWriteNothing) {
    struct Fault { ZvpStatus tone, tri; std::vector<double> bad; int field; };  // field: its entry of `a` below
    for (const Wave& w : kWaves) {
        const std::vector<Fault> faults = {
            {zvpStsNullPtrErr, zvpStsNullPtrErr, {1}, 0},
            {zvpStsToneMagnErr, zvpStsTrnglMagnErr, {0, -1, nan}, 1},
            {zvpStsToneFreqErr, zvpStsTrnglFreqErr, {w.maxFreq(), -0.125, nan}, 2},
            {zvpStsNoErr, zvpStsTrnglAsymErr, {double(float(kPiD)), -double(float(kPiD)), 4.0, nan}, 3},
            {zvpStsTonePhaseErr, zvpStsTrnglPhaseErr, {kTwoPiF, -0.125, 7.0, nan}, 4},
            {zvpStsNullPtrErr, zvpStsNullPtrErr, {1}, 5},
            {zvpStsSizeErr, zvpStsSizeErr, {0, -1}, 6}};
        for (std::size_t from = 0; from < faults.size(); ++from)
            for (std::size_t only = 0; only < 2; ++only)
                for (std::size_t v = 0; v < faults[from].bad.size(); ++v) {
                    if (!w.tri && faults[from].field == 3) continue;
                    double a[7] = {0, 1000, 0.1, 0.5, 1.0, 0, 8};  // null phase?, magn, freq, asym, phase, null dst?, len
                    for (std::size_t k = from; k < (only ? from + 1 : faults.size()); ++k)
                        a[faults[k].field] = faults[k].bad[k == from ? v : 0];
                    GuardedBuffer g(w.bytes(8));
                    double ph = a[4];
                    const ZvpStatus want = w.tri ? faults[from].tri : faults[from].tone;
                    EXPECT_EQ(w.call(a[5] ? nullptr : g.data(), int(a[6]), a[1], a[2], a[3], a[0] ? nullptr : &ph), want)
                        << w.name << " fault " << from << " value " << v;
                    EXPECT_TRUE(g.untouched()) << w.name;
                    EXPECT_TRUE(ph == a[4] || (std::isnan(ph) && std::isnan(a[4]))) << w.name;
                }
    }
}

struct Q15 {
    bool tri;
    ZvpStatus magnErr, freqErr, asymErr, phaseErr;
    std::function<ZvpStatus(int*)> size;
    std::function<ZvpStatus(void**, Zvp8u*, int, int, int, int)> init;  // null pMem: InitAlloc
    std::function<ZvpStatus(Zvp16s*, int, void*)> gen;
    std::function<ZvpStatus(Zvp16s*, int, int, int, int, int)> direct;
    std::function<ZvpStatus(void*)> release;
};
// N: Tone or Triangle; the trailing argument is `, a` for the triangle's asymmetry.
#define Q15_ROW(N, tri, e, A, ...)                                                                                  \
    Q15{tri, zvpSts##e##MagnErr, zvpSts##e##FreqErr, A, zvpSts##e##PhaseErr, zvps##N##GetStateSizeQ15_16s,            \
        [](void** pp, Zvp8u* m, int mg, int f, [[maybe_unused]] int a, int ph) {                                    \
            auto** s = reinterpret_cast<Zvps##N##State_16s**>(pp);                                                  \
            return m ? zvps##N##InitQ15_16s(s, m, Zvp16s(mg), Zvp16s(f) __VA_ARGS__, ph)                            \
                     : zvps##N##InitAllocQ15_16s(s, Zvp16s(mg), Zvp16s(f) __VA_ARGS__, ph);                         \
        },                                                                                                          \
        [](Zvp16s* d, int n, void* s) { return zvps##N##Q15_16s(d, n, static_cast<Zvps##N##State_16s*>(s)); },        \
        [](Zvp16s* d, int n, int mg, int f, [[maybe_unused]] int a, int ph) {                                       \
            return zvps##N##Q15_Direct_16s(d, n, Zvp16s(mg), Zvp16s(f) __VA_ARGS__, ph);                           \
        },                                                                                                          \
        [](void* s) { return zvps##N##Free(static_cast<Zvps##N##State_16s*>(s)); }}
const Q15 kQ15[] = {Q15_ROW(Tone, false, Tone, zvpStsNoErr, ), Q15_ROW(Triangle, true, Trngl, zvpStsTrnglAsymErr, , a)};

TEST(Generate, Q15StreamsEqualOneCallAndTheClosedForm) {
    for (const Q15& q : kQ15) {
        const int total = 40000, magn = 32767, f = 1234, asym = -50000, phase = 100000;  // past the 2^15 repeat
        std::vector<Zvp16s> one(total), parts(total);
        ASSERT_EQ(q.direct(one.data(), total, magn, f, asym, phase), zvpStsNoErr);
        const Wave w{"", false, q.tri, 0, {}};
        for (int n = 0; n < total; n += 7)  // the period is 2^15 samples
            ASSERT_TRUE(agrees(one[n], waveRef(w, magn, ld(f) / 32768, ld(asym) / 32768, ld(phase) / 32768, n % 32768, 0), 1e-7L)) << n;
        int size = 0;
        ASSERT_EQ(q.size(&size), zvpStsNoErr);
        std::vector<Zvp8u> mem(size + 3);  // the record at a misaligned block
        void* s = nullptr;
        ASSERT_EQ(q.init(&s, mem.data() + 3, magn, f, asym, phase), zvpStsNoErr);
        int done = 0;
        for (int n : {1, 63, 64, 100, 32768, 7004}) { ASSERT_EQ(q.gen(parts.data() + done, n, s), zvpStsNoErr); done += n; }
        EXPECT_EQ(parts, one);
        EXPECT_EQ(q.release(s), zvpStsNoErr);
    }
}

TEST(Generate, Q15ChecksTagsAndAllocationFailures) {
    namespace alloc = zvp::test::alloc;
    for (const Q15& q : kQ15) {
        struct { int magn, f, asym, phase; ZvpStatus want; } vals[] = {
            {0, 16384, 200000, -1, q.magnErr}, {1, 16384, 200000, -1, q.freqErr}, {1, -1, 0, 0, q.freqErr},
            {1, 16383, q.tri ? -102944 : 0, 205888, q.tri ? q.asymErr : q.phaseErr}, {1, 0, q.tri ? 102944 : 0, 0, q.tri ? q.asymErr : zvpStsNoErr},
            {1, 0, 0, -1, q.phaseErr}, {32767, 16383, q.tri ? 102943 : 0, 205887, zvpStsNoErr}, {1, 0, -102943, 0, zvpStsNoErr}};
        std::vector<Zvp8u> mem(256, 0xA5);
        Zvp16s d[8] = {};
        for (auto v : vals) {
            void* s = &mem;  // a sentinel pointer: untouched on error, and InitAlloc refuses before it allocates
            EXPECT_EQ(q.init(&s, mem.data(), v.magn, v.f, v.asym, v.phase), v.want);
            alloc::reset();
            if (v.want) { EXPECT_TRUE(q.init(&s, nullptr, v.magn, v.f, v.asym, v.phase) == v.want && s == &mem && !alloc::calls); }
            EXPECT_EQ(q.init(nullptr, mem.data(), v.magn, v.f, v.asym, v.phase), zvpStsNullPtrErr);
            EXPECT_EQ(q.direct(nullptr, 0, v.magn, v.f, v.asym, v.phase), v.want ? v.want : zvpStsNullPtrErr);
            EXPECT_EQ(q.direct(d, 0, v.magn, v.f, v.asym, v.phase), v.want ? v.want : zvpStsSizeErr);
        }
        void *s = nullptr, *o = nullptr;
        ASSERT_EQ(q.init(&s, mem.data(), 100, 10, 0, 0), zvpStsNoErr);
        ASSERT_EQ(kQ15[!q.tri].init(&o, mem.data() + 128, 100, 10, 0, 0), zvpStsNoErr);  // the other kind's record
        struct { Zvp16s* d; int n; void* s; ZvpStatus want; } gens[] = {
            {nullptr, 8, s, zvpStsNullPtrErr}, {d, 8, nullptr, zvpStsNullPtrErr}, {d, 0, s, zvpStsSizeErr}, {d, 8, o, zvpStsContextMatchErr}};
        for (auto g : gens) EXPECT_EQ(q.gen(g.d, g.n, g.s), g.want);
        for (auto [p, want] : {std::pair{o, zvpStsContextMatchErr}, {nullptr, zvpStsNullPtrErr}, {s, zvpStsNoErr}, {s, zvpStsContextMatchErr}})
            EXPECT_EQ(q.release(p), want);
        EXPECT_EQ(q.gen(d, 8, s), zvpStsContextMatchErr);  // a released record
        EXPECT_EQ(std::vector<Zvp16s>(d, d + 8), std::vector<Zvp16s>(8, 0));
        EXPECT_EQ(q.size(nullptr), zvpStsNullPtrErr);
        // InitAlloc fails cleanly at every allocation it makes: -9, nothing held, the pointer untouched.
        ZvpStatus r = zvpStsMemAllocErr;
        for (int k = 1; r == zvpStsMemAllocErr; ++k) {
            s = &mem;
            alloc::reset(k);
            r = q.init(&s, nullptr, 100, 10, 0, 0);
            if (r == zvpStsMemAllocErr) { EXPECT_TRUE(alloc::live == 0 && s == &mem) << k; }
        }
        ASSERT_EQ(r, zvpStsNoErr);
        EXPECT_EQ(alloc::live, 1);
        EXPECT_EQ(q.gen(d, 8, s), zvpStsNoErr);
        EXPECT_EQ(q.release(s), zvpStsNoErr);
        EXPECT_EQ(alloc::live, 0);
    }
}

}  // namespace

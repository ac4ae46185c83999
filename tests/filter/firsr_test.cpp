// FIRSR: every type, layout and method against a long-double direct sum
// with history, streams split into calls, the aliasing chunks, the sizes
// re-derived from the FFT size queries with guards behind spec and buffer,
// check orders with nothing written, and the integer rounding rules.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "alloc_count.h"
#include "conv_oracle.h"

namespace {

using namespace zvp::test::conv;
namespace alloc = zvp::test::alloc;

template <class E> struct Api;
#define FIRSR_API(E, T, CODE)                                                                        \
    template <> struct Api<E> {                                                                      \
        using Spec = ZvpsFIRSpec_##T;                                                                \
        static constexpr ZvpDataType code = CODE;                                                    \
        static constexpr int autoTaps = CODE == zvp32f ? 64 : CODE == zvp64fc ? 1 << 30 : 32;        \
        static ZvpStatus init(const E* t, int L, int a, Spec* s) { return zvpsFIRSRInit_##T(t, L, ZvpAlgType(a), s); } \
        static ZvpStatus run(const E* x, E* y, int n, Spec* s, const E* ds, E* dd, Zvp8u* b) {      \
            return zvpsFIRSR_##T(x, y, n, s, ds, dd, b);                                            \
        }                                                                                            \
    };
FIRSR_API(float, 32f, zvp32f)
FIRSR_API(double, 64f, zvp64f)
FIRSR_API(Zvp32fc, 32fc, zvp32fc)
FIRSR_API(Zvp64fc, 64fc, zvp64fc)

long long a64(long long v) { return (v + 63) / 64 * 64; }

// The transform order and the two size terms of the header, from the
// public FFT size queries; {0, 0, 0} for 64fc.
struct Fft { int k; long long spec, buf; };
Fft fftTerms(ZvpDataType dt, long long L) {
    if (dt == zvp64fc) return {0, 0, 0};
    int j = 1;
    while ((1LL << j) < 2 * L) ++j;
    int j8 = 0;
    while ((1LL << j8) < 8 * L) ++j8;
    const int k = std::max(j + 1, std::min(j8, 13));
    int s = 0, i = 0, w = 0;
    const int f = ZVP_FFT_DIV_INV_BY_N;
    long long e = 8, d = 8 * L;
    if (dt == zvp32f) zvpsFFTGetSize_R_32f(k, f, zvpAlgHintNone, &s, &i, &w), e = 4, d = 64 * ((L + 6) / 4);
    else if (dt == zvp64f) zvpsFFTGetSize_R_64f(k, f, zvpAlgHintNone, &s, &i, &w);
    else zvpsFFTGetSize_C_32fc(k, f, zvpAlgHintNone, &s, &i, &w);
    return {k, a64(d) + a64(s) + a64(i) + a64(w) + a64(e << k), a64(w) + a64(e << k) + 64};
}

// One spec and one buffer, each exactly the reported size at an odd
// address with a guard of 0xA5 behind.
template <class E> struct Rig {
    std::vector<Zvp8u> spec, buf;
    int L;
    Rig(const std::vector<E>& taps, int alg) : L(int(taps.size())) {
        int ss = 0, bs = 0;
        EXPECT_EQ(zvpsFIRSRGetSize(L, Api<E>::code, &ss, &bs), zvpStsNoErr);
        spec.assign(ss + 65, 0xA5);
        buf.assign(bs + 65, 0xA5);
        EXPECT_EQ(Api<E>::init(taps.data(), L, alg, s()), zvpStsNoErr);
    }
    typename Api<E>::Spec* s() { return reinterpret_cast<typename Api<E>::Spec*>(spec.data() + 1); }
    Zvp8u* b() { return buf.data() + 1; }
    void expectGuards() {
        for (auto* v : {&spec, &buf}) EXPECT_EQ(std::vector<Zvp8u>(v->end() - 64, v->end()), std::vector<Zvp8u>(64, 0xA5));
    }
};

// y against sum_j h[j] x[i + L - 1 - j] over x = history ++ input: the
// direct bound (L + 2) u sum|h||x| (twice for complex products), plus
// 8 log2(M) u |h|2 |x|2 when the transform of M points may have run.
template <class E>
void expectFir(const std::vector<E>& h, const std::vector<E>& x, const std::vector<E>& y, int k, const char* what) {
    using S = typename Info<E>::S;
    const long double u = std::numeric_limits<S>::epsilon() / 2, L = h.size();
    const long double fftTerm = k ? 8 * k * u * norm2(h) * norm2(x) : 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        cld s = 0;
        long double a = 0;
        for (std::size_t j = 0; j < h.size(); ++j) {
            const cld p = toC(h[j]) * toC(x[i + h.size() - 1 - j]);
            s += p, a += std::abs(p);
        }
        ASSERT_LE(std::abs(toC(y[i]) - s), 2 * (L + 2) * u * a + fftTerm) << what << " L=" << L << " i=" << i;
    }
}

// 31 and 32 taps: the two 32f layouts; 63/64 and 31/32: the automatic
// transform points of 32f and of 64f and 32fc.
struct Case { int L, n, alg; };
const Case kCases[] = {{1, 1, 1},     {1, 37, 0},      {3, 2, 0},       {8, 100, 0},    {31, 600, 0},
                       {32, 300, 1},   {33, 5, 0},      {63, 600, 0},    {64, 600, 0},   {70, 1, 0},
                       {64, 40, 2},    {128, 2000, 0},  {200, 9000, 2},  {513, 1500, 0}, {600, 3000, 1}};

template <class E> void oracleAndStreams() {
    for (const Case& c : kCases) {
        const auto h = randomVec<E>(c.L, c.L), x = randomVec<E>(c.L - 1 + c.n, 3 * c.n + c.L);
        const Fft f = fftTerms(Api<E>::code, c.L);
        const int k = c.alg == 1 ? 0 : f.k;
        Rig<E> r(h, c.alg);
        const std::vector<Zvp8u> specCopy = r.spec;
        std::vector<E> y(c.n), dly(c.L);
        alloc::reset();
        ASSERT_EQ(Api<E>::run(x.data() + c.L - 1, y.data(), c.n, r.s(), x.data(), dly.data(), r.b()), zvpStsNoErr);
        EXPECT_EQ(alloc::calls, 0);
        expectFir(h, x, y, k, "one call");
        EXPECT_EQ(0, std::memcmp(dly.data(), x.data() + c.n, (c.L - 1) * sizeof(E))) << "final history";
        // The same stream in calls of 1, 2, 3 ... samples, the history
        // passed on through one array: the direct method is split-proof.
        std::vector<E> z(c.n), d2(x.begin(), x.begin() + c.L - 1);
        d2.resize(c.L);
        for (int p = 0, step = 1; p < c.n; p += step, ++step) {
            const int cnt = std::min(step, c.n - p);
            ASSERT_EQ(Api<E>::run(x.data() + c.L - 1 + p, z.data() + p, cnt, r.s(), d2.data(), d2.data(), r.b()), 0);
        }
        if (c.alg == 1 || (c.alg == 0 && c.L < Api<E>::autoTaps)) EXPECT_EQ(0, std::memcmp(z.data(), y.data(), c.n * sizeof(E))) << "split L=" << c.L;
        else expectFir(h, x, z, k, "split");
        EXPECT_EQ(r.spec, specCopy) << "the spec changed";
        r.expectGuards();
    }
}
TEST(FirSr, OracleStreamsGuards32f) { oracleAndStreams<float>(); }
TEST(FirSr, OracleStreamsGuards64f) { oracleAndStreams<double>(); }
TEST(FirSr, OracleStreamsGuards32fc) { oracleAndStreams<Zvp32fc>(); }
TEST(FirSr, OracleStreamsGuards64fc) { oracleAndStreams<Zvp64fc>(); }

template <class E> void aliasing(int L, int alg) {
    for (int n : {8191, 8192, 8193, 20000}) {
        const auto h = randomVec<E>(L, L), x = randomVec<E>(n, n), hist = randomVec<E>(L - 1, 9);
        Rig<E> r(h, alg);
        std::vector<E> ref(n), dRef(L);
        ASSERT_EQ(Api<E>::run(x.data(), ref.data(), n, r.s(), hist.data(), dRef.data(), r.b()), 0);
        std::vector<E> inPlace = x, d1(L);  // pDst = pSrc
        ASSERT_EQ(Api<E>::run(inPlace.data(), inPlace.data(), n, r.s(), hist.data(), d1.data(), r.b()), 0);
        std::vector<E> dl(hist);  // pDst = pDlySrc, history returned in place too
        dl.resize(n);
        ASSERT_EQ(Api<E>::run(x.data(), dl.data(), n, r.s(), dl.data(), dl.data(), r.b()), 0);
        if (alg == 1) {
            EXPECT_EQ(0, std::memcmp(inPlace.data(), ref.data(), n * sizeof(E))) << n;
            EXPECT_EQ(0, std::memcmp(dl.data() + L - 1, ref.data() + L - 1, (n - L + 1) * sizeof(E))) << n;
        } else {
            std::vector<E> xs(hist);
            xs.insert(xs.end(), x.begin(), x.end());
            expectFir(h, xs, inPlace, fftTerms(Api<E>::code, L).k, "aliased");
        }
        EXPECT_EQ(0, std::memcmp(d1.data(), dRef.data(), (L - 1) * sizeof(E)));
        EXPECT_EQ(0, std::memcmp(dl.data(), dRef.data(), (L - 1) * sizeof(E)));
        r.expectGuards();
    }
}
TEST(FirSr, AliasingChunksEqualOutOfPlace) {
    aliasing<float>(40, 1);
    aliasing<float>(300, 2);
    aliasing<Zvp64fc>(5, 1);
}

TEST(FirSr, SizesReDerived) {
    for (long long L : {1, 2, 7, 31, 32, 33, 63, 64, 100, 1000, 4097}) {
        for (ZvpDataType dt : {zvp32f, zvp64f, zvp32fc, zvp64fc}) {
            const Fft f = fftTerms(dt, L);
            long long spec, buf;
            switch (dt) {
            case zvp32f: spec = std::max({64 * ((L + 6) / 4), (4 * L + 63) / 64 * 64, f.spec}), buf = f.buf + (8 * L + 55) / 64 * 64; break;
            case zvp64f: spec = std::max({(32 * ((L + 2) / 2) + 63) / 64 * 64, f.spec, f.buf}), buf = f.buf + (16 * L + 47) / 64 * 64; break;
            case zvp32fc: spec = std::max((32 * L + 63) / 64 * 64, f.spec), buf = f.buf + (16 * L + 47) / 64 * 64; break;
            default: spec = (32 * L + 63) / 64 * 64, buf = (32 * L + 63) / 64 * 64 + 64 * (L / 2); break;
            }
            int ss = -1, bs = -1;
            ASSERT_EQ(zvpsFIRSRGetSize(int(L), dt, &ss, &bs), zvpStsNoErr);
            EXPECT_EQ(ss, spec + 127) << L << " type " << dt;
            EXPECT_EQ(bs, buf + 32768) << L << " type " << dt;
        }
    }
}

TEST(FirSr, CheckOrdersWriteNothing) {
    int ss = 7, bs = 7;
    EXPECT_EQ(zvpsFIRSRGetSize(0, ZvpDataType(3), nullptr, nullptr), zvpStsSizeErr);
    EXPECT_EQ(zvpsFIRSRGetSize(4, ZvpDataType(15), nullptr, &bs), zvpStsDataTypeErr);
    EXPECT_EQ(zvpsFIRSRGetSize(4, zvp32f, nullptr, &bs), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSRGetSize(0x7fffffff, zvp64fc, &ss, &bs), zvpStsSizeErr);
    EXPECT_EQ(ss + bs, 14);
    const float t[4] = {1, 2, 3, 4};
    std::vector<Zvp8u> sp(4096, 0x33);
    auto* s = reinterpret_cast<ZvpsFIRSpec_32f*>(sp.data());
    EXPECT_EQ(zvpsFIRSRInit_32f(nullptr, 0, ZvpAlgType(9), nullptr), zvpStsSizeErr);
    EXPECT_EQ(zvpsFIRSRInit_32f(t, 4, ZvpAlgType(9), nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSRInit_32f(nullptr, 4, zvpAlgAuto, s), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSRInit_32f(t, 4, ZvpAlgType(3), s), zvpStsAlgTypeErr);
    EXPECT_EQ(sp, std::vector<Zvp8u>(4096, 0x33));
    float x[8] = {1, 1, 1, 1, 1, 1, 1, 1}, y[8], d[4];
    std::fill(y, y + 8, -5.f), std::fill(d, d + 4, -5.f);
    Zvp8u buf[1 << 16];
    // Untagged memory, then a 64f spec in a 32f call: the tag decides.
    EXPECT_EQ(zvpsFIRSR_32f(x, y, 8, s, x, d, buf), zvpStsContextMatchErr);
    ASSERT_EQ(zvpsFIRSRInit_64f(reinterpret_cast<const double*>(t), 2, zvpAlgDirect,
                                reinterpret_cast<ZvpsFIRSpec_64f*>(sp.data())), 0);
    EXPECT_EQ(zvpsFIRSR_32f(x, y, 8, s, x, d, buf), zvpStsContextMatchErr);
    ASSERT_EQ(zvpsFIRSRInit_32f(t, 4, zvpAlgAuto, s), 0);
    EXPECT_EQ(zvpsFIRSR_32f(x, y, 0, nullptr, x, d, buf), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSR_32f(nullptr, y, 0, s, x, d, buf), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSR_32f(x, nullptr, 0, s, x, d, buf), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSR_32f(x, y, 0, s, x, d, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSR_32f(x, y, 0, s, x, d, buf), zvpStsSizeErr);
    EXPECT_EQ(zvpsFIRSR64f_32s_ISfs(nullptr, 0, nullptr, nullptr, nullptr, buf, 0), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFIRSR_16s(nullptr, nullptr, 0, s, nullptr, nullptr, buf), zvpStsNullPtrErr);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(y[i], -5.f);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(d[i], -5.f);
}

TEST(FirSr, SixteenBitRoundsToEvenAndSaturates) {
    // Taps {0.5, 0, 2}: y[i] = x[i] / 2 + 2 x[i - 2], exact in single
    // precision; history {5, -3} for x[-2], x[-1]. Ties go to even, the
    // last two saturate.
    const float t[3] = {0.5f, 0.f, 2.f};
    const Zvp16s hist[2] = {5, -3}, x[8] = {3, 5, -3, -5, 20000, -20000, 1, -1};
    // 11.5, -3.5, 4.5, 7.5, 9994, -10010, 40000.5, -40000.5
    const Zvp16s want[8] = {12, -4, 4, 8, 9994, -10010, 32767, -32768};
    Rig<float> r(std::vector<float>(t, t + 3), 1);
    Zvp16s y[8], d[2];
    ASSERT_EQ(zvpsFIRSR_16s(x, y, 8, r.s(), hist, d, r.b()), 0);
    EXPECT_EQ(std::vector<Zvp16s>(y, y + 8), std::vector<Zvp16s>(want, want + 8));
    EXPECT_EQ(d[0], 1);
    EXPECT_EQ(d[1], -1);
    // 16sc: the same rule on each part; a complex tap 0.5i turns
    // (re, im) into (-im/2, re/2).
    const Zvp32fc tc[1] = {{0.f, 0.5f}};
    Rig<Zvp32fc> rc(std::vector<Zvp32fc>(tc, tc + 1), 0);
    Zvp16sc xc[3] = {{3, 5}, {-3, -5}, {1, 32767}}, yc[3];
    ASSERT_EQ(zvpsFIRSR_16sc(xc, yc, 3, rc.s(), nullptr, nullptr, rc.b()), 0);
    const Zvp16s wantC[6] = {-2, 2, 2, -2, -16384, 0};  // -2.5, 1.5, 2.5, -1.5, -16383.5, 0.5
    EXPECT_EQ(0, std::memcmp(yc, wantC, sizeof(wantC)));
    // In place across the 4096-sample chunks: the 32f filter of the same
    // samples, rounded (ties to even under the default mode).
    const auto h = randomVec<float>(40, 1);
    Rig<float> r40(h, 1);
    std::vector<Zvp16s> v(9000), h16(39, 77);
    std::vector<float> vf(9000), hf(39, 77.f), yf(9000);
    for (int i = 0; i < 9000; ++i) vf[i] = v[i] = Zvp16s((i * 7919) % 2001 - 1000);
    ASSERT_EQ(zvpsFIRSR_32f(vf.data(), yf.data(), 9000, r40.s(), hf.data(), nullptr, r40.b()), 0);
    ASSERT_EQ(zvpsFIRSR_16s(v.data(), v.data(), 9000, r40.s(), h16.data(), nullptr, r40.b()), 0);
    for (int i = 0; i < 9000; ++i) ASSERT_EQ(v[i], Zvp16s(std::nearbyint(yf[i]))) << i;
}

TEST(FirSr, Scaled32sAgainstExactIntegers) {
    const double t[3] = {3, -1, 2};
    Rig<double> r(std::vector<double>(t, t + 3), 0);
    std::vector<Zvp32s> x = {7, -9, 2147483647, -2147483647 - 1, 1, 3, 5, 1000001};
    const std::vector<Zvp32s> hist = {-4, 6};
    for (int sf : {-2, 0, 1, 3, 40}) {
        std::vector<Zvp32s> y(x.size()), z = x, d(2), dz(2);
        ASSERT_EQ(zvpsFIRSR64f_32s_Sfs(x.data(), y.data(), int(x.size()), r.s(), hist.data(), d.data(), r.b(), sf), 0);
        ASSERT_EQ(zvpsFIRSR64f_32s_ISfs(z.data(), int(z.size()), r.s(), hist.data(), dz.data(), r.b(), sf), 0);
        for (std::size_t i = 0; i < x.size(); ++i) {
            auto at = [&](long long k) { return k < 0 ? (long long)hist[2 + k] : (long long)x[k]; };
            const long long e = 3 * at(i) - at(i - 1LL) + 2 * at(i - 2LL);
            const long double v = std::ldexp((long double)e, -sf), f = std::floor(v), fr = v - f;
            const long double q = fr > 0.5L ? f + 1 : fr < 0.5L ? f : (std::fmod(f, 2.0L) == 0 ? f : f + 1);
            EXPECT_EQ(y[i], (Zvp32s)std::clamp<long double>(q, -2147483648.0L, 2147483647.0L)) << i << " sf " << sf;
        }
        EXPECT_EQ(y, z);
        EXPECT_EQ(d, std::vector<Zvp32s>(x.end() - 2, x.end()));
        EXPECT_EQ(dz, d);
    }
}

}  // namespace

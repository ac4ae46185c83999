// Stateless FIR over a doubled delay line. One table of taps/data pairings
// runs against a model written from the definition: a sliding window of the
// last tapsLen samples, the documented summation order evaluated in the
// accumulator type (bit-exact), exact integers for integer taps, and the
// library's delay-line layout rebuilt from the window afterwards. Every
// form (block, in place, one sample, split calls) must reproduce it bit for
// bit at aligned and misaligned addresses, leave the guard bytes around its
// buffers alone, and write nothing on error.
#include <gtest/gtest.h>

#include <cfenv>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <tuple>
#include <vector>
#include <xmmintrin.h>

#include "alloc_count.h"
#include "sentinel.h"
#include "wide_int.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
using zvp::test::Wide;

template <class E> struct Sc { using S = E; static constexpr int K = 1; };
template <> struct Sc<Zvp16sc> { using S = Zvp16s; static constexpr int K = 2; };
template <> struct Sc<Zvp32sc> { using S = Zvp32s; static constexpr int K = 2; };
template <> struct Sc<Zvp32fc> { using S = Zvp32f; static constexpr int K = 2; };
template <> struct Sc<Zvp64fc> { using S = Zvp64f; static constexpr int K = 2; };
template <class E> using S_ = typename Sc<E>::S;
template <class E> constexpr bool kCplx = Sc<E>::K == 2;
template <class E> constexpr bool kInt = !std::is_floating_point_v<S_<E>>;

// Uniform signatures over the four forms; tf and sf are ignored where the
// export has none.
template <class T, class D, class A>  // A: accumulator, void for integer taps
struct Pairing {
    using Tt = T; using Dt = D; using At = A;
    const char* name;
    std::function<ZvpStatus(const D*, D*, int, const T*, int, D*, int*, int, int)> block;
    std::function<ZvpStatus(D*, int, const T*, int, D*, int*, int, int)> blockI;
    std::function<ZvpStatus(D, D*, const T*, int, D*, int*, int, int)> one;
    std::function<ZvpStatus(D*, const T*, int, D*, int*, int, int)> oneI;
};
#define FP(TC, DC, T, D, A)                                                                                    \
    Pairing<T, D, A>{#TC "_" #DC,                                                                              \
        [](const D* s, D* d, int n, const T* h, int l, D* y, int* i, int, int) { return zvpsFIR##TC##_Direct_##DC(s, d, n, h, l, y, i); }, \
        [](D* s, int n, const T* h, int l, D* y, int* i, int, int) { return zvpsFIR##TC##_Direct_##DC##_I(s, n, h, l, y, i); }, \
        [](D s, D* d, const T* h, int l, D* y, int* i, int, int) { return zvpsFIROne##TC##_Direct_##DC(s, d, h, l, y, i); }, \
        [](D* s, const T* h, int l, D* y, int* i, int, int) { return zvpsFIROne##TC##_Direct_##DC##_I(s, h, l, y, i); }}
#define FS(TC, DC, T, D, A)                                                                                    \
    Pairing<T, D, A>{#TC "_" #DC "_Sfs",                                                                       \
        [](const D* s, D* d, int n, const T* h, int l, D* y, int* i, int, int f) { return zvpsFIR##TC##_Direct_##DC##_Sfs(s, d, n, h, l, y, i, f); }, \
        [](D* s, int n, const T* h, int l, D* y, int* i, int, int f) { return zvpsFIR##TC##_Direct_##DC##_ISfs(s, n, h, l, y, i, f); }, \
        [](D s, D* d, const T* h, int l, D* y, int* i, int, int f) { return zvpsFIROne##TC##_Direct_##DC##_Sfs(s, d, h, l, y, i, f); }, \
        [](D* s, const T* h, int l, D* y, int* i, int, int f) { return zvpsFIROne##TC##_Direct_##DC##_ISfs(s, h, l, y, i, f); }}
#define FT(TC, DC, T, D)                                                                                       \
    Pairing<T, D, void>{#TC "_" #DC "_Sfs",                                                                    \
        [](const D* s, D* d, int n, const T* h, int l, D* y, int* i, int t, int f) { return zvpsFIR##TC##_Direct_##DC##_Sfs(s, d, n, h, l, t, y, i, f); }, \
        [](D* s, int n, const T* h, int l, D* y, int* i, int t, int f) { return zvpsFIR##TC##_Direct_##DC##_ISfs(s, n, h, l, t, y, i, f); }, \
        [](D s, D* d, const T* h, int l, D* y, int* i, int t, int f) { return zvpsFIROne##TC##_Direct_##DC##_Sfs(s, d, h, l, t, y, i, f); }, \
        [](D* s, const T* h, int l, D* y, int* i, int t, int f) { return zvpsFIROne##TC##_Direct_##DC##_ISfs(s, h, l, t, y, i, f); }}

const auto kPairings = std::make_tuple(
    FP(, 32f, Zvp32f, Zvp32f, double), FP(, 64f, Zvp64f, Zvp64f, double),
    FP(, 32fc, Zvp32fc, Zvp32fc, Zvp32fc), FP(, 64fc, Zvp64fc, Zvp64fc, Zvp64fc),
    FP(64f, 32f, Zvp64f, Zvp32f, double), FP(64fc, 32fc, Zvp64fc, Zvp32fc, Zvp64fc),
    FS(32f, 16s, Zvp32f, Zvp16s, float), FS(32fc, 16sc, Zvp32fc, Zvp16sc, Zvp32fc),
    FS(64f, 16s, Zvp64f, Zvp16s, double), FS(64fc, 16sc, Zvp64fc, Zvp16sc, Zvp64fc),
    FS(64f, 32s, Zvp64f, Zvp32s, double), FS(64fc, 32sc, Zvp64fc, Zvp32sc, Zvp64fc),
    FS(, 16s, Zvp16s, Zvp16s, void), FT(32s, 16s, Zvp32s, Zvp16s), FT(32sc, 16sc, Zvp32sc, Zvp16sc));

template <class F>
void forEachPairing(F&& f) {
    std::apply([&](const auto&... p) { (f(p), ...); }, kPairings);
}

// ---- the model

template <class E> E mk(double re, double im) {
    if constexpr (kCplx<E>) return E{S_<E>(re), S_<E>(im)};
    else return E(re);
}
template <class E> double re(const E& v) { if constexpr (kCplx<E>) return v.re; else return double(v); }
template <class E> double im(const E& v) { if constexpr (kCplx<E>) return v.im; else return 0; }

// Integer results of float accumulators: times 2^-sf, nearest even, saturated, NaN 0.
template <class I> I toInt(double v, int sf) {
    if (std::isnan(v)) return 0;
    const double r = std::nearbyint(std::ldexp(v, -sf));
    if (r >= double(std::numeric_limits<I>::max())) return std::numeric_limits<I>::max();
    if (r <= double(std::numeric_limits<I>::min())) return std::numeric_limits<I>::min();
    return I(r);
}

// One output over window w (oldest first).
template <class P>
typename P::Dt model(const std::vector<typename P::Tt>& h, const std::vector<typename P::Dt>& w, int tf, int sf) {
    using T = typename P::Tt; using D = typename P::Dt; using A = typename P::At;
    const int L = int(h.size());
    if constexpr (std::is_void_v<A>) {
        Wide sr, si;
        for (int j = 0; j < L; ++j) {
            const T& t = h[L - 1 - j];
            const Wide hr = Wide::of((long long)re(t)), hi = Wide::of((long long)im(t));
            const Wide xr = Wide::of((long long)re(w[j])), xi = Wide::of((long long)im(w[j]));
            sr = sr + hr * xr - hi * xi;
            si = si + hr * xi + hi * xr;
        }
        const long long s = (long long)tf + sf;
        const int k = int(s > 1000 ? 1000 : s < -1000 ? -1000 : s);
        return mk<D>(zvp::test::scaled<S_<D>>(sr, k), zvp::test::scaled<S_<D>>(si, k));
    } else {
        using AS = S_<A>;
        struct C { AS r, i; };
        const auto term = [&](int j) {
            const AS hr = AS(re(h[L - 1 - j])), hi = AS(im(h[L - 1 - j]));
            const AS xr = AS(re(w[j])), xi = AS(im(w[j]));
            return C{AS(xr * hr - xi * hi), AS(xr * hi + xi * hr)};
        };
        const auto add = [](C a, C b) { return C{AS(a.r + b.r), AS(a.i + b.i)}; };
        C s[8] = {};
        const int t8 = L / 8 * 8;
        for (int j = 0; j < t8; ++j) s[j % 8] = add(s[j % 8], term(j));
        C y = add(add(add(s[0], s[1]), add(s[2], s[3])), add(add(s[4], s[5]), add(s[6], s[7])));
        for (int j = t8; j < L; ++j) y = add(y, term(j));
        if constexpr (kInt<D>) return mk<D>(toInt<S_<D>>(y.r, sf), toInt<S_<D>>(y.i, sf));
        else return mk<D>(y.r, y.i);
    }
}

template <class E> std::vector<E> rndVec(std::size_t n, std::uint32_t seed) {
    std::mt19937 g(seed);
    std::uniform_real_distribution<double> u(-1, 1);
    std::vector<E> v(n);
    for (auto& x : v) {
        if constexpr (std::is_integral_v<S_<E>>) {
            const double m = double(std::numeric_limits<S_<E>>::max());
            x = mk<E>(std::floor(u(g) * m), std::floor(u(g) * m));
        } else {
            x = mk<E>(u(g), u(g));
        }
    }
    return v;
}

// A delay line of 2L holding `hist` (oldest first) from ring position idx, in both halves.
template <class D> std::vector<D> ring(const std::vector<D>& hist, int idx) {
    const int L = int(hist.size());
    std::vector<D> d(2 * std::size_t(L));
    for (int j = 0; j < L; ++j) d[(idx + j) % L] = d[(idx + j) % L + L] = hist[j];
    return d;
}

template <class E> bool same(const E* a, const E* b, std::size_t n) { return std::memcmp(a, b, n * sizeof(E)) == 0; }

// ---- the cases: tap counts around the 8-blocks, runs shorter and longer
// than the taps (odd and even, for the two-outputs-at-a-time path), start
// index 0, in the middle and at tapsLen-1 (wraps at once).
struct Case { int taps, n, idx; };
const Case kCases[] = {{1, 5, 0},   {3, 1, 2},   {7, 20, 6},   {8, 8, 0},   {8, 3, 7},    {9, 40, 4},
                       {16, 15, 15}, {17, 17, 0}, {23, 61, 11}, {33, 100, 32}, {40, 39, 1}, {64, 200, 63},
                       {5, 2100, 3}};  // chunks of the converted source

template <class P>
void runCases(const P& p) {
    using T = typename P::Tt; using D = typename P::Dt;
    constexpr bool intTaps = std::is_void_v<typename P::At>;
    std::uint32_t seed = 1;
    for (const Case& c : kCases)
        for (int mis : {0, 1}) {
            SCOPED_TRACE(::testing::Message() << p.name << " taps " << c.taps << " n " << c.n << " idx " << c.idx << " mis " << mis);
            const int L = c.taps, N = c.n, tf = intTaps && !std::is_same_v<T, Zvp16s> ? 20 : 0;
            const int sf = kInt<D> ? (intTaps ? 12 : int(seed % 3)) : 0;
            // For 16-bit taps on 16-bit data, taps small enough that the sums vary.
            auto h = rndVec<T>(L, ++seed);
            if constexpr (std::is_same_v<T, Zvp16s>) for (auto& v : h) v = Zvp16s(v / 256);
            const auto hist = rndVec<D>(L, ++seed), x = rndVec<D>(N, ++seed);
            std::vector<D> win = hist, want(N);
            for (int t = 0; t < N; ++t) {
                win.erase(win.begin());
                win.push_back(x[t]);
                want[t] = model<P>(h, win, tf, sf);
            }
            const int wantIdx = (c.idx + N) % L;
            const auto wantDly = ring(win, wantIdx), dly0 = ring(hist, c.idx);
            const std::size_t sm = mis * sizeof(S_<D>);
            GuardedBuffer hb(L * sizeof(T), mis * sizeof(S_<T>)), db(N * sizeof(D), sm), yb(2 * L * sizeof(D), sm);
            std::memcpy(hb.data(), h.data(), L * sizeof(T));
            const auto reset = [&](const std::vector<D>& src) {
                std::memcpy(db.data(), src.data(), N * sizeof(D));
                std::memcpy(yb.data(), dly0.data(), 2 * L * sizeof(D));
                return c.idx;
            };
            const auto verify = [&](const char* form, int idx) {
                EXPECT_TRUE(same(db.as<D>(), want.data(), N)) << form;
                EXPECT_TRUE(same(yb.as<D>(), wantDly.data(), 2 * L)) << form << " delay line";
                EXPECT_EQ(idx, wantIdx) << form;
                EXPECT_TRUE(db.guardsIntact() && yb.guardsIntact() && hb.guardsIntact()) << form;
            };
            const T* hp = hb.as<T>();
            // Out of place (source in its own buffer), then in place.
            GuardedBuffer sb(N * sizeof(D), sm);
            std::memcpy(sb.data(), x.data(), N * sizeof(D));
            int idx = reset(std::vector<D>(N));
            ASSERT_EQ(p.block(sb.as<D>(), db.as<D>(), N, hp, L, yb.as<D>(), &idx, tf, sf), zvpStsNoErr);
            verify("block", idx);
            EXPECT_TRUE(same(sb.as<D>(), x.data(), N)) << "source changed";
            // In place; misaligned runs also without work memory (the first
            // allocation fails), which must give the same bits and no error.
            idx = reset(x);
            zvp::test::alloc::reset(mis);
            ASSERT_EQ(p.blockI(db.as<D>(), N, hp, L, yb.as<D>(), &idx, tf, sf), zvpStsNoErr);
            EXPECT_EQ(zvp::test::alloc::live, 0);
            zvp::test::alloc::reset();
            verify("in place", idx);
            // One sample at a time, alternating the two one-sample forms.
            idx = reset(x);
            for (int t = 0; t < N; ++t) {
                D* s = db.as<D>() + t;
                ASSERT_EQ(t % 2 ? p.oneI(s, hp, L, yb.as<D>(), &idx, tf, sf) : p.one(*s, s, hp, L, yb.as<D>(), &idx, tf, sf), zvpStsNoErr);
            }
            verify("one sample", idx);
            // Split calls: 1 sample, a third, the rest; in place and out of place.
            idx = reset(x);
            for (int a = 0, k = 0; a < N; ++k) {
                const int m = k == 0 ? 1 : k == 1 ? std::max(1, N / 3) : N - a;
                const int len = std::min(m, N - a);
                D* s = db.as<D>() + a;
                ASSERT_EQ(k % 2 ? p.blockI(s, len, hp, L, yb.as<D>(), &idx, tf, sf) : p.block(s, s, len, hp, L, yb.as<D>(), &idx, tf, sf), zvpStsNoErr);
                a += len;
            }
            verify("split", idx);
        }
}

TEST(FirDirect, EveryFormMatchesTheModelBitForBit) {
    forEachPairing([](const auto& p) { runCases(p); });
}

// The model's order itself against long-double sums: every float pairing
// within (L + 4) units of the accumulator's roundoff of sum |h||x| (two
// roundings per complex term, one per add), plus the output's own rounding.
TEST(FirDirect, ModelAgreesWithLongDouble) {
    forEachPairing([](const auto& p) {
        using P = std::decay_t<decltype(p)>;
        using T = typename P::Tt; using D = typename P::Dt; using A = typename P::At;
        if constexpr (!std::is_void_v<A> && !kInt<D>) {
            for (int L : {5, 8, 31, 100}) {
                const auto h = rndVec<T>(L, 7 * L), x = rndVec<D>(L, 9 * L);
                std::vector<D> y(L), dly(2 * L);
                int idx = 0;
                ASSERT_EQ(p.block(x.data(), y.data(), L, h.data(), L, dly.data(), &idx, 0, 0), zvpStsNoErr);
                long double er = 0, ei = 0, mag = 0;
                for (int j = 0; j < L; ++j) {
                    const long double hr = re(h[L - 1 - j]), hi = im(h[L - 1 - j]), xr = re(x[j]), xi = im(x[j]);
                    er += xr * hr - xi * hi;
                    ei += xr * hi + xi * hr;
                    mag += std::hypot(double(hr), double(hi)) * std::hypot(double(xr), double(xi));
                }
                const long double uA = std::numeric_limits<S_<A>>::epsilon() / 2, uD = std::numeric_limits<S_<D>>::epsilon() / 2;
                const long double tol = (L + 4) * 2 * uA * mag + uD * std::hypot(double(er), double(ei));
                EXPECT_LE(std::fabs(re(y[L - 1]) - er), tol) << p.name << " L " << L;
                EXPECT_LE(std::fabs(im(y[L - 1]) - ei), tol) << p.name << " L " << L;
            }
        }
    });
}

// Errors in the documented order, with destination, delay line and index
// untouched. want[0]: block forms; want[1]: one-sample forms (no count).
struct Bad { bool nullData; int n; bool nullTaps; int taps; bool nullDly, nullIdx; int idx; ZvpStatus want[2]; };
const Bad kBad[] = {
    {true, 0, true, 0, true, true, -1, {zvpStsNullPtrErr, zvpStsNullPtrErr}},
    {false, 0, true, 4, false, false, 0, {zvpStsSizeErr, zvpStsNullPtrErr}},
    {false, -1, false, 0, false, false, 0, {zvpStsSizeErr, zvpStsFIRLenErr}},
    {false, 3, true, 0, true, false, 0, {zvpStsNullPtrErr, zvpStsNullPtrErr}},
    {false, 3, false, 0, true, false, 0, {zvpStsFIRLenErr, zvpStsFIRLenErr}},
    {false, 3, false, -5, false, false, 9, {zvpStsFIRLenErr, zvpStsFIRLenErr}},
    {false, 3, false, 4, true, false, 9, {zvpStsNullPtrErr, zvpStsNullPtrErr}},
    {false, 3, false, 4, false, true, 0, {zvpStsNullPtrErr, zvpStsNullPtrErr}},
    {false, 3, false, 4, false, false, -1, {zvpStsDlyLineIndexErr, zvpStsDlyLineIndexErr}},
    {false, 3, false, 4, false, false, 4, {zvpStsDlyLineIndexErr, zvpStsDlyLineIndexErr}},
};

TEST(FirDirect, CheckOrderWritesNothing) {
    forEachPairing([](const auto& p) {
        using P = std::decay_t<decltype(p)>;
        using T = typename P::Tt; using D = typename P::Dt;
        for (const Bad& b : kBad)
            for (int form = 0; form < 4; ++form) {
                GuardedBuffer src(4 * sizeof(D)), dst(4 * sizeof(D)), dly(8 * sizeof(D));
                std::vector<T> h(4);
                int idx = b.idx;
                D* s = b.nullData ? nullptr : src.as<D>();
                D* y = b.nullDly ? nullptr : dly.as<D>();
                int* ip = b.nullIdx ? nullptr : &idx;
                const T* hp = b.nullTaps ? nullptr : h.data();
                ZvpStatus st;
                if (form == 0) st = p.block(src.as<D>(), b.nullData ? nullptr : dst.as<D>(), b.n, hp, b.taps, y, ip, 0, 0);
                else if (form == 1) st = p.blockI(s, b.n, hp, b.taps, y, ip, 0, 0);
                else if (form == 2) st = p.one(D{}, b.nullData ? nullptr : dst.as<D>(), hp, b.taps, y, ip, 0, 0);
                else st = p.oneI(s, hp, b.taps, y, ip, 0, 0);
                EXPECT_EQ(st, b.want[form / 2]) << p.name << " form " << form << " row " << (&b - kBad);
                EXPECT_TRUE(src.untouched() && dst.untouched() && dly.untouched()) << p.name << " form " << form;
                EXPECT_EQ(idx, b.idx);
            }
    });
}

// Integer results at the edges of the scale rule: ties to even, saturation,
// extreme factors, taps whose 64-bit sum would overflow, and float sums that
// a directed rounding mode or flushing would move across a tie. Each row is
// one sample through the one-sample form after `hist` (oldest first); taps
// are (v, 0) and samples (v, v) for complex types; `want` is worked out by
// hand (both parts).
struct Edge { const char* pairing; std::vector<double> taps, hist, x; int tf, sf; double want; };
const std::vector<double> kBigTaps(140000, -2147483648.0), kBigHist(139999, -32768);
const Edge kEdges[] = {
    {"_16s_Sfs", {1}, {}, {3}, 0, 1, 2}, {"_16s_Sfs", {1}, {}, {5}, 0, 1, 2}, {"_16s_Sfs", {1}, {}, {-3}, 0, 1, -2},
    {"_16s_Sfs", {1}, {}, {-1}, 0, 1, 0}, {"_16s_Sfs", {32767, 32767}, {32767}, {32767}, 0, 0, 32767},
    {"_16s_Sfs", {32767, 32767}, {32767}, {-32768}, 0, 0, -32767},
    {"_16s_Sfs", {-32768, -32768}, {-32768}, {-32768}, 0, 16, 32767},
    {"_16s_Sfs", {-32768, -32768}, {-32768}, {-32768}, 0, 32, 0},  // 1/2
    {"_16s_Sfs", std::vector<double>(19, -32768), std::vector<double>(18, -32768), {-32768}, 0, 20, 19456},
    {"_16s_Sfs", {1}, {}, {-20000}, 0, -1, -32768}, {"_16s_Sfs", {1}, {}, {1}, 0, INT_MIN, 32767},
    {"_16s_Sfs", {1}, {}, {0}, 0, INT_MIN, 0}, {"_16s_Sfs", {1}, {}, {32767}, 0, INT_MAX, 0},
    {"32s_16s_Sfs", {3}, {}, {5}, 1, 0, 8}, {"32s_16s_Sfs", {3}, {}, {-1}, 1, 0, -2},
    {"32s_16s_Sfs", {-2147483648.0}, {}, {-32768}, INT_MAX, INT_MAX, 0},
    {"32s_16s_Sfs", {1}, {}, {-1}, INT_MIN, INT_MIN, -32768},
    {"32s_16s_Sfs", {-2147483648.0}, {}, {-32768}, 40, -20, 32767},
    {"32s_16s_Sfs", kBigTaps, kBigHist, {-32768}, 30, 20, 8750},    // 140000 * 2^46 / 2^50
    {"32sc_16sc_Sfs", kBigTaps, kBigHist, {32767}, 40, 10, 8750},   // (139999 * 2^46 - 32767 * 2^31) / 2^50
    {"32f_16s_Sfs", {0.5}, {}, {7}, 0, 0, 4}, {"32f_16s_Sfs", {0.5, 0x1p-25}, {1}, {5}, 0, 0, 2},
    {"64f_16s_Sfs", {0.5, 0x1p-55}, {1}, {5}, 0, 0, 2}, {"32fc_16sc_Sfs", {0.5, 0x1p-25}, {1}, {5}, 0, 0, 2},
    {"64f_32s_Sfs", {2}, {}, {1073741824}, 0, 0, 2147483647}, {"64f_32s_Sfs", {2}, {}, {-2147483648.0}, 0, -1, -2147483648.0},
    {"64f_32s_Sfs", {NAN}, {}, {5}, 0, 0, 0}, {"64fc_32sc_Sfs", {-1}, {}, {-2147483648.0}, 0, 0, 2147483647},
};

TEST(FirDirect, IntegerEdgesUnderEveryRoundingMode) {
    const unsigned savedCsr = _mm_getcsr();
    for (const Edge& e : kEdges)
        forEachPairing([&](const auto& p) {
            using P = std::decay_t<decltype(p)>;
            using T = typename P::Tt; using D = typename P::Dt;
            if (std::strcmp(p.name, e.pairing) != 0) return;
            const int L = int(e.taps.size());
            std::vector<T> h;
            for (double v : e.taps) h.push_back(mk<T>(v, 0));
            std::vector<D> win(L - e.hist.size() - 1);
            for (double v : e.hist) win.push_back(mk<D>(v, v));
            win.push_back(mk<D>(e.x[0], e.x[0]));
            const D want = model<P>(h, win, e.tf, e.sf);
            EXPECT_EQ(re(want), e.want) << p.name << " model";
            EXPECT_EQ(im(want), kCplx<D> ? e.want : 0) << p.name << " model";
            std::vector<D> hist(win.begin(), win.end() - 1);
            hist.insert(hist.begin(), D{});
            for (int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
                auto dly = ring(hist, 0);
                int idx = 0;
                D y{};
                std::fesetround(mode);
                _mm_setcsr(_mm_getcsr() | 0x8040u);
                const ZvpStatus st = p.one(win.back(), &y, h.data(), L, dly.data(), &idx, e.tf, e.sf);
                _mm_setcsr(savedCsr);
                std::fesetround(FE_TONEAREST);
                ASSERT_EQ(st, zvpStsNoErr);
                EXPECT_EQ(re(y), re(want)) << p.name << " x " << e.x[0] << " sf " << e.sf << " mode " << mode;
                EXPECT_EQ(im(y), im(want)) << p.name << " x " << e.x[0] << " sf " << e.sf << " mode " << mode;
            }
        });
}

}  // namespace

// DFT of any length through the exported API: every kind and precision against
// a long-double reference, the size query against an independent restatement
// of its rule, the flags, the routes bit for bit, and errors that write nothing.
#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <type_traits>
#include <vector>

#include "alloc_count.h"
#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {
using cld = std::complex<long double>;
using i64 = std::int64_t;
using std::size_t;
size_t U(i64 v) { return static_cast<size_t>(v); }
using zvp::test::GuardedBuffer;
namespace alloc = zvp::test::alloc;

// ---- References: direct sums over a table of roots (each from its reduced
// index), and for longer lengths the chirp identity nk = (n^2 + k^2 - (k-n)^2)/2
// through the long-double radix-2 FFT of oracle_dft.h; neither shares code
// with the library.
const long double kTwoPi = 6.283185307179586476925286766559L;
cld root(long double num, long double den) { return {cosl(kTwoPi * num / den), sinl(kTwoPi * num / den)}; }
std::vector<cld> reference(const std::vector<cld>& x, int sign) {
    const i64 L = i64(x.size());
    std::vector<cld> X(x.size());
    if (L <= 4096) {
        std::vector<cld> w(x.size());
        for (i64 j = 0; j < L; ++j) w[U(j)] = root(sign * j, L);
        for (i64 k = 0; k < L; ++k) {
            cld acc = 0;
            for (i64 n = 0, e = 0; n < L; ++n, e = (e + k) % L) acc += x[U(n)] * w[U(e)];
            X[U(k)] = acc;
        }
        return X;
    }
    size_t M = 1;
    while (M < U(2 * L - 1)) M *= 2;
    std::vector<cld> c(x.size()), a(M), b(M);
    for (i64 n = 0; n < L; ++n) c[U(n)] = root(sign * 0.5L * ((n * n) % (2 * L)), L);
    for (i64 n = 0; n < L; ++n) a[U(n)] = x[U(n)] * c[U(n)], b[U(n)] = std::conj(c[U(n)]);
    for (i64 n = 1; n < L; ++n) b[M - U(n)] = std::conj(c[U(n)]);
    zvp::test::longDoubleFft(a, -1);
    zvp::test::longDoubleFft(b, -1);
    for (size_t i = 0; i < M; ++i) a[i] *= b[i];
    zvp::test::longDoubleFft(a, 1);
    for (i64 k = 0; k < L; ++k) X[U(k)] = c[U(k)] * a[U(k)] / static_cast<long double>(M);
    return X;
}

// Relative RMS error at most 9 u log2 L (log2 L at least 1). Each mixed-radix
// stage of radix p is a direct sum of p terms with twiddles rounded once, adding
// about (p - 1) u / log2 p + 2u per level of log2 p; the chirp method runs three
// transforms of length M <= 4L plus three rounded chirp products, still within
// 9 log2 L. The measured worst case over all tested lengths is about 4 u log2 L.
template <class T>
double bound(i64 L) {
    return 9.0 * (sizeof(T) == 4 ? 0x1p-24 : 0x1p-53) * std::max(1.0, std::log2(double(L)));
}
double relErr(const std::vector<cld>& got, const std::vector<cld>& want) { return zvp::test::relativeL2(got, want); }

// ---- The kinds behind one interface: complex data as interleaved (re, im)
// arrays of T (the split kinds copy them into two arrays around the call); the
// real kinds take L reals and give CCS, or the reverse.
enum class Form { Inter, Split, Real };
#define ZVP_TYPE(NAME, TT, SUF, FORM)                                                                  \
    struct NAME {                                                                                      \
        using T = TT;                                                                                  \
        using Spec = ZvpsDFTSpec_##SUF;                                                                \
        static constexpr Form form = Form::FORM;                                                       \
        static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_##SUF(o, 8, zvpAlgHintNone, a, b, c); } \
        static ZvpStatus getSize(int L, int f, int* a, int* b, int* c) { return zvpsDFTGetSize_##SUF(L, f, zvpAlgHintNone, a, b, c); } \
        static ZvpStatus init(int L, int f, Spec* s, Zvp8u* m) { return zvpsDFTInit_##SUF(L, f, zvpAlgHintFast, s, m); } \
        static ZvpStatus initAlloc(Spec** s, int L, int f) { return zvpsDFTInitAlloc_##SUF(s, L, f, zvpAlgHintNone); } \
        static ZvpStatus release(Spec* s) { return zvpsDFTFree_##SUF(s); }                            \
        static ZvpStatus bufSize(const Spec* s, int* b) { return zvpsDFTGetBufSize_##SUF(s, b); }     \
        static ZvpStatus run(bool inv, const T* x, T* y, int n, const Spec* s, Zvp8u* b);              \
        static ZvpStatus layout(int which, bool inv, const T* x, T* y, const Spec* s);                 \
    };
ZVP_TYPE(C32fc, float, C_32fc, Inter)
ZVP_TYPE(C64fc, double, C_64fc, Inter)
ZVP_TYPE(C32f, float, C_32f, Split)
ZVP_TYPE(C64f, double, C_64f, Split)
ZVP_TYPE(R32f, float, R_32f, Real)
ZVP_TYPE(R64f, double, R_64f, Real)
#define ZVP_INTER(NAME, C)                                                                          \
    ZvpStatus NAME::run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {                 \
        auto* src = reinterpret_cast<const Zvp##C*>(x);                                             \
        auto* dst = reinterpret_cast<Zvp##C*>(y);                                                   \
        return inv ? zvpsDFTInv_CToC_##C(src, dst, s, b) : zvpsDFTFwd_CToC_##C(src, dst, s, b);     \
    }
ZVP_INTER(C32fc, 32fc)
ZVP_INTER(C64fc, 64fc)
template <class T, class F>
ZvpStatus runSplit(const T* x, T* y, int n, F call) {
    if (!x || !y) return call(x, x, y, y);
    std::vector<T> sr(U(n)), si(sr), dr(sr), di(sr);
    for (int i = 0; i < n; ++i) sr[U(i)] = x[2 * i], si[U(i)] = x[2 * i + 1];
    const bool inPlace = x == y;
    const ZvpStatus st = inPlace ? call(sr.data(), si.data(), sr.data(), si.data())
                                 : call(sr.data(), si.data(), dr.data(), di.data());
    if (st == zvpStsNoErr)
        for (int i = 0; i < n; ++i)
            y[2 * i] = (inPlace ? sr : dr)[U(i)], y[2 * i + 1] = (inPlace ? si : di)[U(i)];
    return st;
}
#define ZVP_SPLIT(NAME, C)                                                                          \
    ZvpStatus NAME::run(bool inv, const T* x, T* y, int n, const Spec* s, Zvp8u* b) {               \
        return runSplit(x, y, n, [&](const T* p, const T* q, T* u, T* v) {                          \
            return inv ? zvpsDFTInv_CToC_##C(p, q, u, v, s, b) : zvpsDFTFwd_CToC_##C(p, q, u, v, s, b); \
        });                                                                                         \
    }
ZVP_SPLIT(C32f, 32f)
ZVP_SPLIT(C64f, 64f)

// Real: run() is the CCS pair; layout() the three layouts (0 CCS, 1 Pack, 2 Perm).
#define ZVP_REAL(NAME, R)                                                                           \
    ZvpStatus NAME::run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {                 \
        return inv ? zvpsDFTInv_CCSToR_##R(x, y, s, b) : zvpsDFTFwd_RToCCS_##R(x, y, s, b);         \
    }                                                                                               \
    ZvpStatus NAME::layout(int which, bool inv, const T* x, T* y, const Spec* s) {                  \
        if (which == 1) return inv ? zvpsDFTInv_PackToR_##R(x, y, s, nullptr) : zvpsDFTFwd_RToPack_##R(x, y, s, nullptr); \
        if (which == 2) return inv ? zvpsDFTInv_PermToR_##R(x, y, s, nullptr) : zvpsDFTFwd_RToPerm_##R(x, y, s, nullptr); \
        return run(inv, x, y, 0, s, nullptr);                                                       \
    }
ZVP_REAL(R32f, 32f)
ZVP_REAL(R64f, 64f)

// Values drawn as floats, so every type transforms the same signal.
std::vector<cld> signal(i64 L, unsigned seed, bool real) {
    std::mt19937 rng(seed + 7919u * unsigned(L));
    std::uniform_real_distribution<float> u(-1.0f, 1.0f);
    std::vector<cld> x(U(L));
    for (auto& v : x) {
        const float re = u(rng), im = u(rng);  // both drawn, so the reals share the stream
        v = {re, real ? 0.0f : im};
    }
    return x;
}

// Length of the data array a transform reads or writes, in T values.
template <class Ty>
size_t valuesOf(i64 L, bool spectrum) {
    if (Ty::form != Form::Real) return U(2 * L);
    return spectrum ? U(L % 2 ? L + 1 : L + 2) : U(L);
}
template <class Ty>
std::vector<typename Ty::T> pack(const std::vector<cld>& x, bool spectrum) {
    std::vector<typename Ty::T> v(valuesOf<Ty>(i64(x.size()), spectrum));
    const bool reals = Ty::form == Form::Real && !spectrum;
    for (size_t i = 0; (reals ? i : 2 * i) < v.size(); ++i) {
        if (reals) v[i] = typename Ty::T(x[i].real());
        else v[2 * i] = typename Ty::T(x[i].real()), v[2 * i + 1] = typename Ty::T(x[i].imag());
    }
    return v;
}

// Back to L complex values; a CCS half spectrum is expanded by symmetry.
template <class Ty, class T>
std::vector<cld> unpack(const T* v, i64 L, bool spectrum) {
    std::vector<cld> x(U(L));
    const bool half = Ty::form == Form::Real;
    for (i64 i = 0; i < (half && spectrum ? L / 2 + 1 : L); ++i) {
        x[U(i)] = half && !spectrum ? cld(v[i], 0) : cld(v[2 * i], v[2 * i + 1]);
        if (half && spectrum) x[U((L - i) % L)] = {v[2 * i], -static_cast<long double>(v[2 * i + 1])};
    }
    return x;
}

// A record in caller memory of exactly the reported sizes, each at an odd
// offset from a 64-byte boundary with guards around it, so a size too small,
// or a write outside the record, shows.
template <class Ty>
struct Built {
    GuardedBuffer mem, init, work;
    typename Ty::Spec* spec = nullptr;
    static size_t sz(i64 L, int flag, int which) {
        int s[3] = {0, 0, 0};
        return Ty::getSize(int(L), flag, &s[0], &s[1], &s[2]) == zvpStsNoErr ? U(s[which]) : 0;
    }
    Built(i64 L, int flag)
        : mem(sz(L, flag, 0), 8), init(sz(L, flag, 1), 24), work(sz(L, flag, 2), 40) {
        spec = reinterpret_cast<typename Ty::Spec*>(mem.data());
        EXPECT_EQ(Ty::init(int(L), flag, spec, init.size() ? init.data() : nullptr), zvpStsNoErr) << L;
        EXPECT_TRUE(init.guardsIntact()) << L;
    }
    Zvp8u* buf() { return work.size() ? work.data() : nullptr; }
};
template <class Ty>
class Dft : public ::testing::Test {};
using Types = ::testing::Types<C32fc, C64fc, C32f, C64f, R32f, R64f>;
struct TypeNames {
    template <class Ty>
    static std::string GetName(int i) { return std::vector<std::string>{"C32fc", "C64fc", "C32f", "C64f", "R32f", "R64f"}[U(i)]; }
};
TYPED_TEST_SUITE(Dft, Types, TypeNames);

// ---- Accuracy, flags and routes ---------------------------------------------------
// Forward and inverse under a flag against the reference scaled by (fwd, inv);
// with routes, the same call in place (complex kinds), with internal work
// memory and from an allocated record must give the same bits.
template <class Ty>
void checkLength(i64 L, bool routes, int flag = 8, long double fwd = 1, long double inv = 1) {
    using T = typename Ty::T;
    const bool real = Ty::form == Form::Real;
    const auto x = signal(L, 1, real);
    std::vector<cld> X = reference(x, -1), Lx(x);
    for (auto& v : X) v *= fwd;
    for (auto& v : Lx) v *= fwd * inv * static_cast<long double>(L);
    Built<Ty> b(L, flag);
    auto xs = pack<Ty>(x, false);
    std::vector<T> y(valuesOf<Ty>(L, true)), z(valuesOf<Ty>(L, false));
    ASSERT_EQ(Ty::run(false, xs.data(), y.data(), int(L), b.spec, b.buf()), zvpStsNoErr) << L;
    EXPECT_LE(relErr(unpack<Ty>(y.data(), L, true), X), bound<T>(L)) << "forward, length " << L << " flag " << flag;
    ASSERT_EQ(Ty::run(true, y.data(), z.data(), int(L), b.spec, b.buf()), zvpStsNoErr) << L;
    EXPECT_LE(relErr(unpack<Ty>(z.data(), L, false), Lx), 2 * bound<T>(L)) << "inverse, length " << L << " flag " << flag;
    EXPECT_TRUE(b.mem.guardsIntact() && b.work.guardsIntact()) << L;
    if (!routes) return;
    if (!real) {
        std::vector<T> w(xs);
        ASSERT_EQ(Ty::run(false, w.data(), w.data(), int(L), b.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(w.data(), y.data(), y.size() * sizeof(T)), 0) << "in place, length " << L;
        ASSERT_EQ(Ty::run(true, w.data(), w.data(), int(L), b.spec, b.buf()), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(w.data(), z.data(), z.size() * sizeof(T)), 0) << "in place inverse, length " << L;
    }
    typename Ty::Spec* a = nullptr;
    ASSERT_EQ(Ty::initAlloc(&a, int(L), flag), zvpStsNoErr);
    std::vector<T> y2(y.size(), T(9));
    ASSERT_EQ(Ty::run(false, xs.data(), y2.data(), int(L), a, nullptr), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(y2.data(), y.data(), y.size() * sizeof(T)), 0) << "allocated record, length " << L;
    EXPECT_EQ(Ty::release(a), zvpStsNoErr);
}

// Every length up to 1100 (a stride past 100 for all but the interleaved kinds),
// then the method boundaries: 50/51/53, last factor 149 and 151 with and without
// 4 | L (298, 302, 596, 604), the end of the convolution table (4095..4097),
// primes, products of large primes, 2^a 3^b 5^c, and one length above 1e5.
TYPED_TEST(Dft, EveryLengthAgainstLongDouble) {
    const int step = TypeParam::form == Form::Inter ? 1 : 7;
    for (i64 L = 1; L <= 1100; L += (L < 100 ? 1 : step)) checkLength<TypeParam>(L, L % 13 < 3);
    for (i64 L : {4095, 4097, 298, 596, 604, 302, 2018, 10007, 10403, 3000, 15552, 46080, 8192,
                  TypeParam::form == Form::Inter ? 100003 : 46080})
        checkLength<TypeParam>(L, false);
}

// Each flag scales the direction it names, for each method.
TYPED_TEST(Dft, FlagsScaleTheRightDirection) {
    for (i64 L : {1, 2, 6, 13, 16, 17, 24, 53, 64, 96, 298, 596}) {
        const long double n = static_cast<long double>(L);
        checkLength<TypeParam>(L, false, 1, 1 / n, 1);
        checkLength<TypeParam>(L, false, 2, 1, 1 / n);
        checkLength<TypeParam>(L, false, 4, 1 / sqrtl(n), 1 / sqrtl(n));
    }
}

// The power-of-two lengths give exactly the FFT's results.
TEST(DftFft, PowerOfTwoEqualsTheFft) {
    const int L = 1024;
    const auto x = pack<C32fc>(signal(L, 9, false), false);
    const auto* src = reinterpret_cast<const Zvp32fc*>(x.data());
    for (int flag : {1, 2, 4, 8}) {
        ZvpsDFTSpec_C_32fc* d = nullptr;
        ZvpsFFTSpec_C_32fc* f = nullptr;
        ASSERT_EQ(zvpsDFTInitAlloc_C_32fc(&d, L, flag, zvpAlgHintNone) + zvpsFFTInitAlloc_C_32fc(&f, 10, flag, zvpAlgHintNone), 0);
        std::vector<Zvp32fc> a(L), b(L), c(L), e(L);
        EXPECT_EQ(zvpsDFTFwd_CToC_32fc(src, a.data(), d, nullptr) + zvpsFFTFwd_CToC_32fc(src, b.data(), f, nullptr) +
                      zvpsDFTInv_CToC_32fc(src, c.data(), d, nullptr) + zvpsFFTInv_CToC_32fc(src, e.data(), f, nullptr), 0);
        EXPECT_TRUE(!std::memcmp(a.data(), b.data(), 8 * L) && !std::memcmp(c.data(), e.data(), 8 * L)) << flag;
        EXPECT_EQ(zvpsDFTFree_C_32fc(d) + zvpsFFTFree_C_32fc(f), 0);
    }
}

// ---- Size query --------------------------------------------------------------------
struct Sz { i64 spec = 0, init = 0, work = 0; };
i64 r64(i64 v) { return (v + 63) / 64 * 64; }

// The factor list restated from its rule; empty when the length is unsuitable.
std::vector<int> expectedFactors(i64 L) {
    i64 u = L;
    int fours = 0;
    while (u % 4 == 0) u /= 4, ++fours;
    std::vector<int> f;
    if (u % 2 == 0) u /= 2, f.push_back(2);
    f.insert(f.end(), U(fours), 4);
    auto add = [&f](i64 p) {
        if (p == 3 && f == std::vector<int>{2}) f[0] = 6;
        else f.push_back(int(p));
    };
    for (i64 p = 3; u > 8 && p * p <= u;) {
        if (u % p == 0) add(p), u /= p;
        else if ((p += 2) > 50) return {};
    }
    if (f.empty() || u > (L % 4 == 0 ? 150 : 50)) return {};
    add(u);
    return f;
}

// The three sizes for a length with E-byte samples (8 single, 16 double); the
// split and real kinds add one staging vector.
template <class Ty>
Sz expectedSizes(i64 L) {
    using Inner = std::conditional_t<sizeof(typename Ty::T) == 4, C32fc, C64fc>;
    const i64 E = 2 * sizeof(typename Ty::T);
    Sz z{576, 0, 0};
    if (L > 16 && (L & (L - 1)) == 0) {
        int a, b, c, m = 0;
        while ((i64(1) << m) < L) ++m;
        EXPECT_EQ(Ty::fftSize(m, &a, &b, &c), zvpStsNoErr);
        z = {z.spec + r64(a), r64(b), r64(c)};
    } else if (L > 16 && Ty::form == Form::Real && L % 2 == 0) {
        // a complex record of L/2 points, the L/2 roots of L, L/2 + 1 staged values
        const Sz in = expectedSizes<Inner>(L / 2);
        z = {z.spec + r64(in.spec) + r64(E * (L / 2)), r64(in.init), r64(in.work) + r64(E * (L / 2 + 1))};
    } else if (L > 16) {
        z.init += r64(E * L);
        const auto f = expectedFactors(L);
        if (!f.empty()) {
            i64 sum = 0;
            for (int p : f) sum += p;
            z.spec += r64(E * (L + sum)), z.work += r64(2 * E * L);
        } else if (L <= 50) {
            z.spec += r64(E * L), z.work += r64(E * L);
        } else {
            const i64 tbl[] = {128,  144,  160,  192,  200,  256,  288,  320,  384,  400,  512,
                               576,  640,  768,  800,  1024, 1152, 1280, 1536, 1600, 2048, 2304,
                               2560, 3072, 3200, 4096, 4608, 5120, 6144, 6400, 8192};
            i64 M = 1;
            if (2 * L - 1 > 8192)
                while (M < 2 * L - 1) M *= 2;
            else
                M = *std::find_if(std::begin(tbl), std::end(tbl), [&](i64 m) { return m >= 2 * L - 1; });
            const Sz in = expectedSizes<Inner>(M);
            const i64 w = r64(in.work), s = w + E * M + 64;
            z.spec += r64(E * M) + r64(E * L) + r64(in.spec);
            z.init += r64(E / 4 * L) + r64(in.init) + r64(s);
            z.work += w + r64(s);
        }
        if (Ty::form != Form::Inter) z.work += r64(E * L);
    }
    for (auto* v : {&z.spec, &z.init, &z.work})
        if (*v > 0) *v += 64;
    return z;
}

// Every length to 20000 for one kind, a stride for the others; the work size
// of a built record is what the query reported.
TYPED_TEST(Dft, SizeQueryFollowsTheRule) {
    using Ty = TypeParam;
    for (i64 L = 1; L <= 20000; L += std::is_same_v<Ty, C32fc> ? 1 : 37) {
        int a = -1, b = -1, c = -1;
        ASSERT_EQ(Ty::getSize(int(L), L % 4 == 1 ? 1 : 8, &a, &b, &c), zvpStsNoErr);
        const Sz z = expectedSizes<Ty>(L);
        ASSERT_TRUE(a == z.spec && b == z.init && c == z.work) << L << ": " << a << " " << b << " " << c;
        if (L % 97 == 0 || L < 70) {
            typename Ty::Spec* s = nullptr;
            ASSERT_EQ(Ty::initAlloc(&s, int(L), 2), zvpStsNoErr);
            int w = -1;
            EXPECT_EQ(Ty::bufSize(s, &w), zvpStsNoErr);
            EXPECT_EQ(w, c) << L;
            EXPECT_EQ(Ty::release(s), zvpStsNoErr);
        }
    }
}

// Worked examples of the rule itself: 17 direct (tables and work of 17
// samples), 53 chirp with M = 128, 1024 the FFT's sizes on the fixed part.
TEST(DftSizes, WorkedExamples) {
    EXPECT_EQ(expectedFactors(18), (std::vector<int>{6, 3}));
    EXPECT_EQ(expectedFactors(96), (std::vector<int>{2, 4, 4, 3}));
    EXPECT_EQ(expectedFactors(596), (std::vector<int>{4, 149}));
    EXPECT_TRUE(expectedFactors(298).empty() && expectedFactors(17).empty() && expectedFactors(4097).empty());
    int a, b, c, ia, ib, ic;
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(17, 8, zvpAlgHintNone, &a, &b, &c), zvpStsNoErr);
    EXPECT_TRUE(a == 576 + 192 + 64 && b == 192 + 64 && c == 192 + 64) << a << " " << b << " " << c;
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(128, 8, zvpAlgHintNone, &ia, &ib, &ic), zvpStsNoErr);
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(53, 8, zvpAlgHintNone, &a, &b, &c), zvpStsNoErr);
    EXPECT_EQ(a, 576 + 1024 + 448 + r64(ia) + 64);
    ASSERT_EQ(zvpsFFTGetSize_C_32fc(10, 8, zvpAlgHintNone, &ia, &ib, &ic), zvpStsNoErr);
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(1024, 8, zvpAlgHintNone, &a, &b, &c), zvpStsNoErr);
    EXPECT_TRUE(a == 576 + r64(ia) + 64 && c == r64(ic) + 64) << a << " " << c;
}

// ---- Errors ------------------------------------------------------------------------
// GetSize, Init and InitAlloc: pointers, then length below 1, then the flag,
// then the upper limits; nothing is written.
TYPED_TEST(Dft, SizeQueryChecksInOrderAndWritesNothing) {
    using Ty = TypeParam;
    const struct {
        bool nullOut;
        int L, flag;
        ZvpStatus want;
    } cases[] = {
        {true, 0, 3, zvpStsNullPtrErr},          {false, 0, 3, zvpStsSizeErr},
        {false, -5, 8, zvpStsSizeErr},           {false, 5, 0, zvpStsFftFlagErr},
        {false, 5, 3, zvpStsFftFlagErr},         {false, 5, 16, zvpStsFftFlagErr},
        {false, 134217729, 3, zvpStsFftFlagErr}, {false, 134217729, 8, zvpStsSizeErr},
        {false, 67108879, 8, zvpStsSizeErr},  // the first prime above 2^26: too long for the chirp
        {false, INT32_MAX, 8, zvpStsSizeErr},    {false, 1 << 30, 8, zvpStsSizeErr},  // beyond every FFT
    };
    for (const auto& c : cases) {
        int a = -1, b = -1, w = -1;
        EXPECT_EQ(Ty::getSize(c.L, c.flag, c.nullOut ? nullptr : &a, &b, &w), c.want) << c.L << " " << c.flag;
        EXPECT_EQ(a + b + w, -3);
        GuardedBuffer mem(4096);
        if (!c.nullOut) { EXPECT_EQ(Ty::init(c.L, c.flag, reinterpret_cast<typename Ty::Spec*>(mem.data()), mem.data()), c.want); }
        EXPECT_TRUE(mem.untouched()) << c.L;
        typename Ty::Spec* s = nullptr;
        EXPECT_EQ(Ty::initAlloc(c.nullOut ? nullptr : &s, c.L, c.flag), c.want);
        EXPECT_EQ(s, nullptr);
    }
    // Init: the record memory first, then the query's checks, then the scratch
    GuardedBuffer mem(8192);
    EXPECT_EQ(Ty::init(0, 3, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::init(53, 8, reinterpret_cast<typename Ty::Spec*>(mem.data()), nullptr), zvpStsNullPtrErr);
    EXPECT_TRUE(mem.untouched());
    int a = 0, b = 0, w = 0;  // the largest power of two takes the FFT
    EXPECT_EQ(Ty::getSize(1 << 20, 8, &a, &b, &w), zvpStsNoErr);
}

// Transforms: the record (null, then identity), then source and destination;
// a released record is refused; nothing is written.
TYPED_TEST(Dft, TransformChecksRecordThenDataAndWritesNothing) {
    using Ty = TypeParam;
    using T = typename Ty::T;
    using Other = std::conditional_t<std::is_same_v<Ty, C32fc>, C64fc, C32fc>;
    for (i64 L : {7, 16, 17, 53, 64, 96}) {
        Built<Ty> b(L, 8);
        Built<Other> o(L, 8);
        std::vector<T> x(valuesOf<Ty>(L, true) + 2, T(1));
        auto* wrong = reinterpret_cast<typename Ty::Spec*>(o.spec);
        const struct {
            const typename Ty::Spec* spec;
            bool nullSrc, nullDst;
            ZvpStatus want;
        } cases[] = {{nullptr, true, true, zvpStsNullPtrErr}, {wrong, true, true, zvpStsContextMatchErr},
                     {b.spec, true, false, zvpStsNullPtrErr}, {b.spec, false, true, zvpStsNullPtrErr},
                     {b.spec, false, false, zvpStsContextMatchErr}};  // last: after release
        int bs = -1;
        EXPECT_EQ(std::vector<int>({Ty::bufSize(wrong, &bs), Ty::bufSize(b.spec, nullptr), Ty::bufSize(nullptr, &bs),
                                    Ty::release(nullptr), Ty::release(wrong), bs}),
                  std::vector<int>({zvpStsContextMatchErr, zvpStsNullPtrErr, zvpStsNullPtrErr, zvpStsNullPtrErr, zvpStsContextMatchErr, -1}));
        for (const auto& c : cases) {
            if (&c == std::end(cases) - 1) {  // a record built in caller memory may be released, once
                EXPECT_EQ(Ty::release(b.spec), zvpStsNoErr);
                EXPECT_EQ(Ty::release(b.spec), zvpStsContextMatchErr);
            }
            for (bool inv : {false, true}) {
                GuardedBuffer dst(valuesOf<Ty>(L, true) * sizeof(T));
                T* d = c.nullDst ? nullptr : dst.as<T>();
                EXPECT_EQ(Ty::run(inv, c.nullSrc ? nullptr : x.data(), d, int(L), c.spec, b.buf()), c.want) << L;
                EXPECT_TRUE(dst.untouched()) << L;
            }
        }
    }
}

// Every allocation of InitAlloc and of a transform without work memory may
// fail: the call reports it, keeps nothing and writes nothing.
TYPED_TEST(Dft, AllocationFailureAtEveryCall) {
    using Ty = TypeParam;
    using T = typename Ty::T;
    for (i64 L : {5, 17, 53, 96, 1024, 4096, 4097}) {
        int k = 1;
        for (;; ++k) {
            typename Ty::Spec* s = nullptr;
            alloc::reset(k);
            const ZvpStatus st = Ty::initAlloc(&s, int(L), 4);
            if (st == zvpStsNoErr) {
                EXPECT_LT(alloc::calls, k) << L;
                const auto x = pack<Ty>(signal(L, 5, Ty::form == Form::Real), false);
                GuardedBuffer dst(valuesOf<Ty>(L, true) * sizeof(T));
                alloc::calls = 0;  // keep the live count of the record
                alloc::failAt = 1;
                const ZvpStatus ts = Ty::run(false, x.data(), dst.as<T>(), int(L), s, nullptr);
                EXPECT_EQ(ts, alloc::calls > 0 ? zvpStsMemAllocErr : zvpStsNoErr) << L;
                EXPECT_TRUE(ts == zvpStsNoErr || dst.untouched()) << L;
                alloc::failAt = 0;
                EXPECT_EQ(Ty::release(s), zvpStsNoErr);
                EXPECT_EQ(alloc::live, 0) << L;
                break;
            }
            EXPECT_EQ(st, zvpStsMemAllocErr) << L << " call " << k;
            EXPECT_EQ(s, nullptr);
            EXPECT_EQ(alloc::live, 0) << L << " call " << k;
            ASSERT_LT(k, 10) << L;
        }
        EXPECT_GE(k, 2) << L;  // the record's block at least
    }
    alloc::reset(0);
}

// ---- Real layouts: Pack and Perm carry the CCS values at their places, bit for
// bit; their inverses give the CCS inverse's bits, read only those places, and
// the Pack inverse may share source and destination.
TYPED_TEST(Dft, RealLayoutsHoldTheSameValues) {
    using Ty = TypeParam;
    using T = typename Ty::T;
    if constexpr (Ty::form == Form::Real) {
        for (int L : {1, 2, 3, 8, 15, 16, 17, 18, 53, 64, 96, 298, 1000}) {
            const auto x = pack<Ty>(signal(L, 17, true), false);
            std::vector<T> o[3] = {std::vector<T>(U(L) + 2), x, x};
            typename Ty::Spec* s = nullptr;
            ASSERT_EQ(Ty::initAlloc(&s, L, 2), zvpStsNoErr);
            for (int w = 0; w < 3; ++w) ASSERT_EQ(Ty::layout(w, false, x.data(), o[w].data(), s), zvpStsNoErr);
            const std::vector<T>&ccs = o[0], &pk = o[1], &pm = o[2];
            EXPECT_TRUE(ccs[1] == T(0) && pk[0] == ccs[0] && pm[0] == ccs[0]) << L;
            for (int k = 1; 2 * k < L; ++k)
                for (int part = 0; part < 2; ++part) {
                    EXPECT_EQ(pk[U(2 * k - 1 + part)], ccs[U(2 * k + part)]) << L;
                    EXPECT_EQ(pm[U(L % 2 ? 2 * k - 1 + part : 2 * k + part)], ccs[U(2 * k + part)]) << L;
                }
            if (L % 2 == 0) {
                EXPECT_TRUE(ccs[U(L) + 1] == T(0) && pk[U(L) - 1] == ccs[U(L)] && pm[1] == ccs[U(L)]) << L;
                o[0][U(L) + 1] = T(5);  // never read
            }
            o[0][1] = T(5);
            std::vector<T> back[4] = {std::vector<T>(x.size()), std::vector<T>(x.size()), o[1], std::vector<T>(x.size())};
            for (int w = 0; w < 2; ++w) ASSERT_EQ(Ty::layout(w, true, o[w].data(), back[w].data(), s), zvpStsNoErr);
            ASSERT_EQ(Ty::layout(1, true, back[2].data(), back[2].data(), s), zvpStsNoErr);  // in place
            ASSERT_EQ(Ty::layout(2, true, pm.data(), back[3].data(), s), zvpStsNoErr);
            for (int w = 1; w < 4; ++w) EXPECT_EQ(std::memcmp(back[w].data(), back[0].data(), x.size() * sizeof(T)), 0) << L;
            Ty::release(s);
        }
    }
}

// ---- Out-of-order records: the stages sort themselves, so the order they
// produce is the natural one and the spectrum is the ordered DFT, bit for bit.
template <class Ty, class OSpec, class C = std::conditional_t<sizeof(typename Ty::T) == 4, Zvp32fc, Zvp64fc>>
void outOfOrder(ZvpStatus (*oalloc)(OSpec**, int, int, ZvpHintAlgorithm), ZvpStatus (*ofree)(OSpec*),
                ZvpStatus (*obuf)(const OSpec*, int*), ZvpStatus (*ofwd)(const C*, C*, const OSpec*, Zvp8u*),
                ZvpStatus (*oinv)(const C*, C*, const OSpec*, Zvp8u*)) {
    using T = typename Ty::T;
    for (int L : {1, 5, 12, 17, 53, 64, 96, 298, 596, 1024, 4097}) {
        OSpec* o = nullptr;
        typename Ty::Spec* s = nullptr;
        ASSERT_EQ(oalloc(&o, L, 8, zvpAlgHintNone), zvpStsNoErr);
        ASSERT_EQ(Ty::initAlloc(&s, L, 8), zvpStsNoErr);
        const auto xv = signal(L, 13, false);
        const auto xs = pack<Ty>(xv, false);
        std::vector<T> y(xs.size()), z(xs.size()), back(xs.size());
        const auto* x = reinterpret_cast<const C*>(xs.data());
        int bs = -1;
        EXPECT_EQ(obuf(o, &bs), zvpStsNoErr);
        std::vector<Zvp8u> buf(U(bs) + 1);
        ASSERT_EQ(ofwd(x, reinterpret_cast<C*>(y.data()), o, buf.data()), zvpStsNoErr);
        ASSERT_EQ(Ty::run(false, xs.data(), z.data(), L, s, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(y.data(), z.data(), y.size() * sizeof(T)), 0) << L;
        ASSERT_EQ(oinv(reinterpret_cast<C*>(y.data()), reinterpret_cast<C*>(back.data()), o, nullptr), zvpStsNoErr);
        std::vector<cld> want(xv);
        for (auto& v : want) v *= static_cast<long double>(L);
        EXPECT_LE(relErr(unpack<Ty>(back.data(), L, false), want), 2 * bound<T>(L)) << L;
        // the two kinds of record do not stand in for each other
        EXPECT_EQ(ofwd(x, reinterpret_cast<C*>(y.data()), reinterpret_cast<const OSpec*>(s), nullptr), zvpStsContextMatchErr);
        EXPECT_EQ(Ty::run(false, xs.data(), y.data(), L, reinterpret_cast<typename Ty::Spec*>(o), nullptr), zvpStsContextMatchErr);
        EXPECT_EQ(ofwd(nullptr, reinterpret_cast<C*>(y.data()), o, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(ofree(o), zvpStsNoErr);
        Ty::release(s);
    }
    OSpec* o = nullptr;
    EXPECT_EQ(std::vector<int>({oalloc(&o, 0, 8, zvpAlgHintNone), oalloc(&o, 5, 3, zvpAlgHintNone),
                                oalloc(nullptr, 5, 8, zvpAlgHintNone), ofree(nullptr), o ? 1 : 0}),
              std::vector<int>({zvpStsSizeErr, zvpStsFftFlagErr, zvpStsNullPtrErr, zvpStsNullPtrErr, 0}));
}
TEST(DftOutOfOrder, PermutedBackIsTheDft) {
#define ZVP_OUTORD(TY, S)                                                                            \
    outOfOrder<TY>(zvpsDFTOutOrdInitAlloc_C_##S, zvpsDFTOutOrdFree_C_##S, zvpsDFTOutOrdGetBufSize_C_##S, \
                   zvpsDFTOutOrdFwd_CToC_##S, zvpsDFTOutOrdInv_CToC_##S)
    ZVP_OUTORD(C32fc, 32fc);
    ZVP_OUTORD(C64fc, 64fc);
}

}  // namespace

// DCT through the public interface: the float types against a long-double
// definition of the orthonormal DCT-II/III at the lengths that select each
// method and its boundaries, with in place, internal work memory and
// misaligned vectors bit for bit equal to the plain call; the 16s forms
// against the exact value scaled and rounded; the check order, wrong tags,
// records in exactly their reported bytes and allocation failure at every
// point.
#include <gtest/gtest.h>

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <type_traits>
#include <vector>

#include "alloc_count.h"
#include "fft_error.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
namespace alloc = zvp::test::alloc;

// ---- one interface over the six record kinds -------------------------------------

template <class T, bool INV>
struct Api;

#define ZVP_DCT_API(T, TT, DIR, INV, CALL)                                                             \
    template <>                                                                                        \
    struct Api<T, INV> {                                                                               \
        using Spec = ZvpsDCT##DIR##Spec_##TT;                                                          \
        using Other = std::conditional_t<INV, ZvpsDCTFwdSpec_##TT, ZvpsDCTInvSpec_##TT>;               \
        static ZvpStatus getSize(int n, int* s, int* i, int* w) {                                      \
            return zvpsDCT##DIR##GetSize_##TT(n, zvpAlgHintNone, s, i, w);                             \
        }                                                                                              \
        static ZvpStatus init(Spec** pp, int n, Zvp8u* s, Zvp8u* i) {                                  \
            return zvpsDCT##DIR##Init_##TT(pp, n, zvpAlgHintNone, s, i);                               \
        }                                                                                              \
        static ZvpStatus initAlloc(Spec** pp, int n) { return zvpsDCT##DIR##InitAlloc_##TT(pp, n, zvpAlgHintFast); } \
        static ZvpStatus release(Spec* s) { return zvpsDCT##DIR##Free_##TT(s); }                       \
        static ZvpStatus bufSize(const Spec* s, int* n) { return zvpsDCT##DIR##GetBufSize_##TT(s, n); } \
        static ZvpStatus run(const T* s, T* d, const Spec* p, Zvp8u* w, int sf = 0) {                  \
            (void)sf;                                                                                  \
            return CALL;                                                                               \
        }                                                                                              \
    };
ZVP_DCT_API(float, 32f, Fwd, false, zvpsDCTFwd_32f(s, d, p, w))
ZVP_DCT_API(float, 32f, Inv, true, zvpsDCTInv_32f(s, d, p, w))
ZVP_DCT_API(double, 64f, Fwd, false, zvpsDCTFwd_64f(s, d, p, w))
ZVP_DCT_API(double, 64f, Inv, true, zvpsDCTInv_64f(s, d, p, w))
ZVP_DCT_API(Zvp16s, 16s, Fwd, false, zvpsDCTFwd_16s_Sfs(s, d, p, sf, w))
ZVP_DCT_API(Zvp16s, 16s, Inv, true, zvpsDCTInv_16s_Sfs(s, d, p, sf, w))
#undef ZVP_DCT_API

template <class T>
using Fwd = Api<T, false>;
template <class T>
using Inv = Api<T, true>;

// A record built by InitAlloc, released at scope exit, with a work buffer
// of the reported size (deliberately one byte off a 64-byte boundary).
template <class T, bool INV>
struct Plan {
    typename Api<T, INV>::Spec* spec = nullptr;
    std::vector<Zvp8u> work;
    using A = Api<T, INV>;
    explicit Plan(int n) {
        EXPECT_EQ(A::initAlloc(&spec, n), zvpStsNoErr);
        int bytes = 0;
        EXPECT_EQ(A::bufSize(spec, &bytes), zvpStsNoErr);
        work.resize(std::size_t(bytes) + 1);
    }
    ~Plan() {
        if (spec) A::release(spec);
    }
    Zvp8u* buf() { return work.size() > 1 ? work.data() + 1 : nullptr; }
};

// ---- the definition in long double -------------------------------------------------

// Outputs `ks` of the orthonormal DCT-II (forward) or DCT-III (inverse) of
// x, from a table of cos(pi j / 2N), j < 4N, each entry its own cosl.
template <class T>
std::vector<long double> reference(const std::vector<T>& x, bool inverse, const std::vector<int>& ks) {
    const int n = int(x.size());
    const long double pi = 3.14159265358979323846264338327950288L;
    std::vector<long double> c(4 * std::size_t(n));
    for (std::size_t j = 0; j < c.size(); ++j) c[j] = std::cos(pi * (long double)j / (2.0L * n));
    const long double f0 = 1 / std::sqrt((long double)n), f1 = std::sqrt(2.0L / n);
    std::vector<long double> out;
    for (int k : ks) {
        long double s = 0;
        for (int i = 0; i < n; ++i) {
            const std::int64_t j = (std::int64_t(2 * (inverse ? k : i) + 1) * (inverse ? i : k)) % (4 * n);
            s += (inverse ? (i == 0 ? f0 : f1) : 1.0L) * (long double)x[i] * c[j];
        }
        out.push_back(inverse ? s : (k == 0 ? f0 : f1) * s);
    }
    return out;
}

std::vector<int> allIndices(int n) {
    std::vector<int> v(n);
    for (int i = 0; i < n; ++i) v[i] = i;
    return v;
}

// Relative L2 error of got[ks] against want.
template <class T>
double relErr(const T* got, const std::vector<long double>& want, const std::vector<int>& ks) {
    long double num = 0, den = 0;
    for (std::size_t i = 0; i < ks.size(); ++i) {
        const long double d = (long double)got[ks[i]] - want[i];
        num += d * d;
        den += want[i] * want[i];
    }
    return double(std::sqrt(num / den));
}

template <class T>
std::vector<T> signal(int n, unsigned seed) {
    std::mt19937 rng(seed + unsigned(n));
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<T> v(n);
    for (auto& x : v) x = T(d(rng));
    return v;
}

// Error bounds (relative L2, in units of the type's roundoff u):
//  - small and direct: each output is one sum of N products with table
//    values within u of the cosine, then a factor: (N + 3) u;
//  - FFT: the real FFT's bound (fft_error.h) plus the rotation, one product
//    pair and a sum with table values carrying the factor (about 4 u), plus
//    the factor 1/sqrt(N) of the Newton step (within 2 u): (9 log2 N + 8) u;
//  - DFT of any length: the same form over the DFT's own length chain.
template <class T>
double bound(int n) {
    const double u = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
    if (n <= 8 || (n < 36 && (n & (n - 1)) != 0)) return (n + 3) * u;
    return (zvp::test::kFftC * std::log2(double(n)) + 8) * u;
}

// Lengths on both sides of every method boundary, and a few inside.
const int kLengths[] = {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 35, 36, 37, 48, 64, 100, 127, 255, 256, 1000, 1024, 4096};

template <class T>
class DctFloat : public ::testing::Test {};
using FloatTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(DctFloat, FloatTypes);

// One direction at length n: against the definition, then the other forms
// bit for bit: in place, internal work memory, misaligned source and
// destination (the kernels' vector and scalar parts do not depend on where
// the data sit).
template <class T, bool INV>
void checkDirection(int n, const std::vector<T>& x) {
    using A = Api<T, INV>;
    SCOPED_TRACE(::testing::Message() << (sizeof(T) == 4 ? "32f" : "64f") << (INV ? " inverse" : " forward") << " N " << n);
    Plan<T, INV> plan(n);
    GuardedBuffer out(sizeof(T) * n);
    ASSERT_EQ(A::run(x.data(), out.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
    EXPECT_TRUE(out.guardsIntact());
    const auto ks = allIndices(n);
    EXPECT_LT(relErr(out.as<T>(), reference(x, INV, ks), ks), bound<T>(n));
    std::vector<T> v = x, nb(n);
    ASSERT_EQ(A::run(v.data(), v.data(), plan.spec, plan.buf()), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(v.data(), out.data(), sizeof(T) * n), 0) << "in place";
    ASSERT_EQ(A::run(x.data(), nb.data(), plan.spec, nullptr), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(nb.data(), out.data(), sizeof(T) * n), 0) << "internal work memory";
    GuardedBuffer src(sizeof(T) * n, sizeof(T)), dst(sizeof(T) * n, 3 * sizeof(T));
    std::memcpy(src.data(), x.data(), sizeof(T) * n);
    ASSERT_EQ(A::run(src.as<T>(), dst.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_EQ(std::memcmp(dst.data(), out.data(), sizeof(T) * n), 0) << "misaligned";
}

TYPED_TEST(DctFloat, EveryMethodAgainstTheDefinitionAndBack) {
    using T = TypeParam;
    for (int n : kLengths) {
        const auto x = signal<T>(n, 7);
        checkDirection<T, false>(n, x);
        checkDirection<T, true>(n, x);
        Plan<T, false> f(n);
        Plan<T, true> i(n);
        std::vector<T> y(n), z(n);
        ASSERT_EQ(Fwd<T>::run(x.data(), y.data(), f.spec, f.buf()), zvpStsNoErr);
        ASSERT_EQ(Inv<T>::run(y.data(), z.data(), i.spec, i.buf()), zvpStsNoErr);
        std::vector<long double> want(x.begin(), x.end());
        EXPECT_LT(relErr(z.data(), want, allIndices(n)), 2 * bound<T>(n)) << "inverse of forward, N " << n;
    }
}

// Long lengths: a sample of outputs against the definition (each costs N
// terms), the whole round trip, in both precisions.
TYPED_TEST(DctFloat, LongLengthsSampled) {
    using T = TypeParam;
    for (int n : {65536, 100000, 131071}) {
        const auto x = signal<T>(n, 11);
        std::vector<int> ks = {0, 1, n / 2, n - 1};
        std::mt19937 rng(5);
        while (ks.size() < 24) ks.push_back(int(rng() % unsigned(n)));
        Plan<T, false> f(n);
        Plan<T, true> i(n);
        std::vector<T> y(n), z(n);
        ASSERT_EQ(Fwd<T>::run(x.data(), y.data(), f.spec, f.buf()), zvpStsNoErr);
        // A single output's error is at most the whole error vector's norm,
        // and ||X|| = ||x||: each sampled output within bound * ||x||.
        long double norm = 0;
        for (T v : x) norm += (long double)v * v;
        const auto want = reference(x, false, ks);
        for (std::size_t j = 0; j < ks.size(); ++j)
            EXPECT_LT(std::fabs((long double)y[ks[j]] - want[j]), bound<T>(n) * std::sqrt(norm)) << "N " << n << " k " << ks[j];
        ASSERT_EQ(Inv<T>::run(y.data(), z.data(), i.spec, nullptr), zvpStsNoErr);
        std::vector<long double> back(x.begin(), x.end());
        EXPECT_LT(relErr(z.data(), back, allIndices(n)), 2 * bound<T>(n)) << "N " << n;
    }
}

// N = 1 is the identity, bit for bit; a constant signal has only X[0] =
// c sqrt(N), and the inverse of a unit X[0] is the constant 1/sqrt(N).
TYPED_TEST(DctFloat, WorkedEdgeCases) {
    using T = TypeParam;
    for (T v : {T(0.1), T(-3.5e-30), T(1e30), T(-0.0)}) {
        Plan<T, false> f(1);
        Plan<T, true> i(1);
        T y = 7, z = 7;
        ASSERT_EQ(Fwd<T>::run(&v, &y, f.spec, nullptr), zvpStsNoErr);
        ASSERT_EQ(Inv<T>::run(&v, &z, i.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(&y, &v, sizeof(T)), 0);
        EXPECT_EQ(std::memcmp(&z, &v, sizeof(T)), 0);
    }
    for (int n : {2, 8, 12, 16, 36, 48}) {
        const std::vector<T> ones(n, T(1));
        std::vector<T> y(n), z(n);
        Plan<T, false> f(n);
        Plan<T, true> i(n);
        ASSERT_EQ(Fwd<T>::run(ones.data(), y.data(), f.spec, nullptr), zvpStsNoErr);
        EXPECT_NEAR(double(y[0]), std::sqrt(double(n)), 4 * bound<T>(n) * std::sqrt(double(n)));
        for (int k = 1; k < n; ++k) EXPECT_NEAR(double(y[k]), 0.0, 4 * bound<T>(n) * std::sqrt(double(n))) << k;
        std::vector<T> unit(n, T(0));
        unit[0] = 1;
        ASSERT_EQ(Inv<T>::run(unit.data(), z.data(), i.spec, nullptr), zvpStsNoErr);
        for (int k = 0; k < n; ++k) EXPECT_NEAR(double(z[k]), 1 / std::sqrt(double(n)), 4 * bound<T>(n)) << k;
    }
}

// ---- 16s -----------------------------------------------------------------------

// The scale rule on the exact value: saturate(R 2^-sf) rounded to nearest,
// ties to even. `nearTie` tells whether R 2^-sf lies within `margin` of a
// rounding boundary, where the double-precision transform may land on
// either side.
int scaled(long double r, int sf, long double margin, bool& nearTie) {
    const long double v = std::ldexp(r, -sf);
    const long double fl = std::floor(v);
    nearTie = std::fabs(v - fl - 0.5L) < margin;
    long double q = v - fl > 0.5L ? fl + 1 : v - fl < 0.5L ? fl : (std::fmod(fl, 2.0L) == 0 ? fl : fl + 1);
    return int(std::min(32767.0L, std::max(-32768.0L, q)));
}

// A full-range signal, forward and inverse, several scale factors: every
// output equal to the scaled exact value, or within one unit of it where
// that value sits within 2^-20 (times the scale) of a tie. The double
// transform's error is below 10^-7 here (||x|| < 2^22, error bound well
// under 2^-40 relative), so 2^-20 is a safe margin.
TEST(Dct16s, ScaledExactValueAtEveryMethod) {
    for (int n : {1, 2, 5, 8, 16, 35, 36, 48, 256, 1000, 4096}) {
        std::mt19937 rng(3 + n);
        std::vector<Zvp16s> x(n);
        for (auto& v : x) v = Zvp16s(int(rng() % 65536) - 32768);
        Plan<Zvp16s, false> f(n);
        Plan<Zvp16s, true> i(n);
        for (bool inv : {false, true}) {
            const auto ks = allIndices(n);
            const auto want = reference(x, inv, ks);
            for (int sf : {-2, 0, 1, 6, 20}) {
                std::vector<Zvp16s> y(n, 0x5555);
                ASSERT_EQ(inv ? Inv<Zvp16s>::run(x.data(), y.data(), i.spec, i.buf(), sf)
                              : Fwd<Zvp16s>::run(x.data(), y.data(), f.spec, nullptr, sf),
                          zvpStsNoErr);
                for (int k = 0; k < n; ++k) {
                    bool nearTie = false;
                    const int w = scaled(want[k], sf, std::ldexp(1.0L, -20) * std::max(1.0L, std::ldexp(1.0L, -sf)), nearTie);
                    if (nearTie) EXPECT_LE(std::abs(y[k] - w), 1);
                    else EXPECT_EQ(y[k], w) << "N " << n << (inv ? " inv" : " fwd") << " sf " << sf << " k " << k;
                }
            }
        }
    }
}

// Exact ties and saturation, where the double transform is exact (N = 1
// copies; the N = 4 DC factor is 1/2).
TEST(Dct16s, TiesToEvenAndSaturation) {
    struct Case {
        int n;
        Zvp16s x0;  // the rest zero, or all equal to x0 when `flat`
        bool flat;
        int sf;
        Zvp16s want0;
    } const cases[] = {
        {1, 3, false, 1, 2},   {1, 5, false, 1, 2},    {1, -3, false, 1, -2},   {1, -1, false, 1, 0},
        {1, 1, false, 1, 0},   {1, 7, false, -13, 32767}, {1, -7, false, -13, -32768}, {1, 0, false, -100, 0},
        {4, 1, false, 0, 0},   {4, 3, false, 0, 2},    {4, -5, false, 0, -2},   {4, 32767, true, 0, 32767},
        {4, -32768, true, 0, -32768}, {4, -32768, true, 1, -32768}, {4, -32768, true, 2, -16384}, {4, 32767, true, 17, 0},
    };
    for (const Case& c : cases) {
        std::vector<Zvp16s> x(c.n, c.flat ? c.x0 : Zvp16s(0)), y(c.n, 0x5555);
        x[0] = c.x0;
        Plan<Zvp16s, false> f(c.n);
        ASSERT_EQ(Fwd<Zvp16s>::run(x.data(), y.data(), f.spec, nullptr, c.sf), zvpStsNoErr);
        EXPECT_EQ(y[0], c.want0) << "N " << c.n << " x0 " << c.x0 << " sf " << c.sf;
    }
}

// The integers do not depend on the caller's rounding mode or flush modes.
TEST(Dct16s, IndependentOfTheCallersFloatingPointState) {
    const int n = 1000;
    std::mt19937 rng(9);
    std::vector<Zvp16s> x(n), ref(n), got(n);
    for (auto& v : x) v = Zvp16s(int(rng() % 65536) - 32768);
    Plan<Zvp16s, true> p(n);
    ASSERT_EQ(Inv<Zvp16s>::run(x.data(), ref.data(), p.spec, p.buf(), 3), zvpStsNoErr);
    const unsigned saved = _mm_getcsr();
    for (unsigned mode : {0x2000u, 0x4000u, 0x6000u | 0x8040u}) {
        _mm_setcsr((saved & ~0xE040u) | mode);
        const ZvpStatus st = Inv<Zvp16s>::run(x.data(), got.data(), p.spec, p.buf(), 3);
        const unsigned after = _mm_getcsr() & 0xE040u;
        _mm_setcsr(saved);
        ASSERT_EQ(st, zvpStsNoErr);
        EXPECT_EQ(after, mode) << "the caller's mode comes back";
        EXPECT_EQ(got, ref) << std::hex << mode;
    }
}

// ---- checks, sizes, allocation ----------------------------------------------------

template <class K>
class DctRecord : public ::testing::Test {};
template <class T, bool INV>
struct KindOf {
    using Type = T;
    static constexpr bool inv = INV;
};
using Kinds = ::testing::Types<KindOf<float, false>, KindOf<float, true>, KindOf<double, false>, KindOf<double, true>,
                               KindOf<Zvp16s, false>, KindOf<Zvp16s, true>>;
TYPED_TEST_SUITE(DctRecord, Kinds);

// The length before the pointers; pointers in argument order before the
// tag; a record of the other direction or a released one refused; nothing
// written on any error.
TYPED_TEST(DctRecord, CheckOrderAndWrongTags) {
    using T = typename TypeParam::Type;
    using A = Api<T, TypeParam::inv>;
    using Spec = typename A::Spec;
    int s = -1, i = -1, w = -1;
    EXPECT_EQ(A::getSize(0, nullptr, nullptr, nullptr), zvpStsSizeErr);
    EXPECT_EQ(A::getSize(-5, &s, &i, &w), zvpStsSizeErr);
    EXPECT_EQ(A::getSize(8, &s, nullptr, &w), zvpStsNullPtrErr);
    EXPECT_EQ(s, -1);
    EXPECT_EQ(A::getSize(268435456, &s, &i, &w), zvpStsSizeErr);
    EXPECT_EQ(A::getSize(67108864 + 3 * 5, &s, &i, &w), zvpStsSizeErr);
    Spec* sentinel = reinterpret_cast<Spec*>(std::uintptr_t(0x40));
    Spec* p = sentinel;
    Zvp8u mem[256];
    EXPECT_EQ(A::init(nullptr, 0, nullptr, nullptr), zvpStsSizeErr);
    EXPECT_EQ(A::init(nullptr, 8, mem, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(A::init(&p, 8, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(A::initAlloc(nullptr, 0), zvpStsSizeErr);
    EXPECT_EQ(A::initAlloc(nullptr, 8), zvpStsNullPtrErr);
    EXPECT_EQ(A::initAlloc(&p, -1), zvpStsSizeErr);
    EXPECT_EQ(p, sentinel);
    for (int n : {8, 35, 64}) {
        Plan<T, TypeParam::inv> good(n);
        Plan<T, !TypeParam::inv> other(n);
        const auto* wrong = reinterpret_cast<const Spec*>(other.spec);
        std::vector<T> x(n, T(1));
        GuardedBuffer dst(sizeof(T) * n);
        Zvp8u* const b = good.buf();
        EXPECT_EQ(A::run(nullptr, dst.as<T>(), wrong, b), zvpStsNullPtrErr);
        EXPECT_EQ(A::run(x.data(), nullptr, good.spec, b), zvpStsNullPtrErr);
        EXPECT_EQ(A::run(x.data(), dst.as<T>(), nullptr, b), zvpStsNullPtrErr);
        EXPECT_EQ(A::run(x.data(), dst.as<T>(), wrong, b), zvpStsContextMatchErr);
        EXPECT_EQ(A::run(x.data(), dst.as<T>(), wrong, nullptr), zvpStsContextMatchErr);
        EXPECT_TRUE(dst.untouched()) << n;
        int bytes = -1;
        EXPECT_EQ(A::bufSize(nullptr, &bytes), zvpStsNullPtrErr);
        EXPECT_EQ(A::bufSize(good.spec, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(A::bufSize(wrong, &bytes), zvpStsContextMatchErr);
        EXPECT_EQ(bytes, -1);
        EXPECT_EQ(A::release(nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(A::release(reinterpret_cast<Spec*>(other.spec)), zvpStsContextMatchErr);
    }
    // A released record built in caller memory: its tag is cleared.
    ASSERT_EQ(A::getSize(35, &s, &i, &w), zvpStsNoErr);
    std::vector<Zvp8u> block(s);
    ASSERT_EQ(A::init(&p, 35, block.data(), nullptr), zvpStsNoErr);
    EXPECT_EQ(A::release(p), zvpStsNoErr);
    EXPECT_EQ(A::release(p), zvpStsContextMatchErr);
    std::vector<T> x(35, T(1));
    GuardedBuffer dst(sizeof(T) * 35);
    EXPECT_EQ(A::run(x.data(), dst.as<T>(), p, nullptr), zvpStsContextMatchErr);
    EXPECT_TRUE(dst.untouched());
}

// Every record fits the bytes its query reported, at any alignment of the
// caller's memory, with the init memory and the work buffer exactly as
// reported; both directions report the same sizes; GetBufSize agrees.
TYPED_TEST(DctRecord, RecordsAndWorkFitTheirReportedBytes) {
    using T = typename TypeParam::Type;
    using A = Api<T, TypeParam::inv>;
    using B = Api<T, !TypeParam::inv>;
    for (int n : {1, 4, 8, 9, 16, 35, 36, 100, 2048, 3000}) {
        SCOPED_TRACE(n);
        int s = 0, i = 0, w = 0, s2 = 0, i2 = 0, w2 = 0;
        ASSERT_EQ(A::getSize(n, &s, &i, &w), zvpStsNoErr);
        ASSERT_EQ(B::getSize(n, &s2, &i2, &w2), zvpStsNoErr);
        EXPECT_EQ(s, s2);
        EXPECT_EQ(i, i2);
        EXPECT_EQ(w, w2);
        EXPECT_EQ(w == 0, n == 1 || n == 2 || n == 4 || n == 8) << "only the small kernels need no work";
        GuardedBuffer mem(std::size_t(s), 3), init(std::size_t(i), 5), work(std::size_t(w), 7);
        typename A::Spec* p = nullptr;
        ASSERT_EQ(A::init(&p, n, mem.data(), i ? init.data() : nullptr), zvpStsNoErr);
        EXPECT_TRUE(mem.guardsIntact());
        EXPECT_TRUE(init.guardsIntact());
        init.fill(0xEE);  // the init memory may be discarded
        int bytes = -1;
        ASSERT_EQ(A::bufSize(p, &bytes), zvpStsNoErr);
        EXPECT_EQ(bytes, w);
        const auto x = signal<float>(n, 2);
        std::vector<T> xs(x.begin(), x.end()), y(n), z(n);
        if constexpr (std::is_same_v<T, Zvp16s>)
            for (int k = 0; k < n; ++k) xs[k] = Zvp16s(x[k] * 1000);
        ASSERT_EQ(A::run(xs.data(), y.data(), p, w ? work.data() : nullptr), zvpStsNoErr);
        EXPECT_TRUE(work.guardsIntact());
        EXPECT_TRUE(mem.guardsIntact());
        Plan<T, TypeParam::inv> ref(n);
        ASSERT_EQ(A::run(xs.data(), z.data(), ref.spec, ref.buf()), zvpStsNoErr);
        EXPECT_EQ(y, z) << "a record in caller memory computes what an allocated one does";
        EXPECT_EQ(A::release(p), zvpStsNoErr);
    }
}

// InitAlloc and a transform that allocates its work memory, failing at
// every allocation in turn: zvpStsMemAllocErr, nothing held, nothing
// written; past the last failure point the call succeeds.
TYPED_TEST(DctRecord, AllocationFailureAtEveryPoint) {
    using T = typename TypeParam::Type;
    using A = Api<T, TypeParam::inv>;
    for (int n : {8, 35, 1024, 4096}) {
        for (int k = 1;; ++k) {
            typename A::Spec* p = reinterpret_cast<typename A::Spec*>(std::uintptr_t(0x40));
            alloc::reset(k);
            const ZvpStatus st = A::initAlloc(&p, n);
            const int calls = alloc::calls;
            if (st == zvpStsNoErr) {
                EXPECT_GE(alloc::live, 1);
                A::release(p);
                EXPECT_EQ(alloc::live, 0);
                break;
            }
            EXPECT_EQ(st, zvpStsMemAllocErr) << "N " << n << " k " << k;
            EXPECT_EQ(alloc::live, 0) << "N " << n << " k " << k;
            EXPECT_EQ(p, reinterpret_cast<typename A::Spec*>(std::uintptr_t(0x40)));
            ASSERT_LE(k, calls) << "a failure beyond the last allocation";
        }
        alloc::reset();
        Plan<T, TypeParam::inv> plan(n);
        std::vector<T> x(n, T(1));
        for (int k = 1;; ++k) {
            GuardedBuffer dst(sizeof(T) * n);
            alloc::reset(k);
            const ZvpStatus st = A::run(x.data(), dst.as<T>(), plan.spec, nullptr);
            if (st == zvpStsNoErr) {
                EXPECT_EQ(alloc::live, 0);
                break;
            }
            EXPECT_EQ(st, zvpStsMemAllocErr);
            EXPECT_EQ(alloc::live, 0);
            EXPECT_TRUE(dst.untouched());
            ASSERT_LE(k, 4);
        }
        alloc::reset();
    }
}

}  // namespace

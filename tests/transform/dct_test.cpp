// DCT through the public interface: the float types against a long-double
// definition at lengths on both sides of every method boundary, with in
// place, internal work memory and misaligned vectors bit for bit equal to the
// plain call; 16s against the exact value scaled and rounded; check order,
// wrong tags, records in exactly their reported bytes, allocation failure.
#include <gtest/gtest.h>

#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
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
#define ZVP_DCT_API(T, TT, DIR, INV, CALL)                                                                    \
    template <>                                                                                               \
    struct Api<T, INV> {                                                                                      \
        using Spec = ZvpsDCT##DIR##Spec_##TT;                                                                 \
        static ZvpStatus getSize(int n, int* s, int* i, int* w) { return zvpsDCT##DIR##GetSize_##TT(n, zvpAlgHintNone, s, i, w); } \
        static ZvpStatus init(Spec** pp, int n, Zvp8u* s, Zvp8u* i) { return zvpsDCT##DIR##Init_##TT(pp, n, zvpAlgHintNone, s, i); } \
        static ZvpStatus initAlloc(Spec** pp, int n) { return zvpsDCT##DIR##InitAlloc_##TT(pp, n, zvpAlgHintFast); } \
        static ZvpStatus release(Spec* s) { return zvpsDCT##DIR##Free_##TT(s); }                              \
        static ZvpStatus bufSize(const Spec* s, int* n) { return zvpsDCT##DIR##GetBufSize_##TT(s, n); }       \
        static ZvpStatus run(const T* s, T* d, const Spec* p, Zvp8u* w, [[maybe_unused]] int sf = 0) { return CALL; } \
    };
ZVP_DCT_API(float, 32f, Fwd, false, zvpsDCTFwd_32f(s, d, p, w))
ZVP_DCT_API(float, 32f, Inv, true, zvpsDCTInv_32f(s, d, p, w))
ZVP_DCT_API(double, 64f, Fwd, false, zvpsDCTFwd_64f(s, d, p, w))
ZVP_DCT_API(double, 64f, Inv, true, zvpsDCTInv_64f(s, d, p, w))
ZVP_DCT_API(Zvp16s, 16s, Fwd, false, zvpsDCTFwd_16s_Sfs(s, d, p, sf, w))
ZVP_DCT_API(Zvp16s, 16s, Inv, true, zvpsDCTInv_16s_Sfs(s, d, p, sf, w))
#undef ZVP_DCT_API

// A record built by InitAlloc, released at scope exit, with a work buffer
// of the reported size (deliberately one byte off a 64-byte boundary).
template <class T, bool INV>
struct Plan {
    using A = Api<T, INV>;
    typename A::Spec* spec = nullptr;
    std::vector<Zvp8u> work;
    explicit Plan(int n) {
        EXPECT_EQ(A::initAlloc(&spec, n), zvpStsNoErr);
        int bytes = 0;
        EXPECT_EQ(A::bufSize(spec, &bytes), zvpStsNoErr);
        work.resize(std::size_t(bytes) + 1);
    }
    ~Plan() { A::release(spec); }
    Zvp8u* buf() { return work.size() > 1 ? work.data() + 1 : nullptr; }
    ZvpStatus run(const T* s, T* d, int sf = 0) { return A::run(s, d, spec, buf(), sf); }
};

// ---- the definition in long double -------------------------------------------------

// Outputs `ks` of the orthonormal DCT-II (forward) or DCT-III (inverse) of
// x, from a table of cos(pi j / 2N), j < 4N, each entry its own cosl.
template <class T>
std::vector<long double> reference(const std::vector<T>& x, bool inverse, const std::vector<int>& ks) {
    const int n = int(x.size());
    const long double pi = 3.14159265358979323846264338327950288L;
    std::vector<long double> c(4 * std::size_t(n)), out;
    for (std::size_t j = 0; j < c.size(); ++j) c[j] = std::cos(pi * (long double)j / (2.0L * n));
    const long double f0 = 1 / std::sqrt((long double)n), f1 = std::sqrt(2.0L / n);
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

// Every output up to 4096 points; beyond, a spread sample of about 64 (each
// costs N terms), which estimates the relative error of the whole vector.
std::vector<int> outputs(int n, bool all = false) {
    std::vector<int> v;
    for (int i = 0; i < n; i += (all || n <= 4096) ? 1 : n / 64 + 1) v.push_back(i);
    if (v.back() != n - 1) v.push_back(n - 1);
    return v;
}

template <class T>
double relErr(const T* got, const std::vector<long double>& want, const std::vector<int>& ks) {
    long double num = 0, den = 0;
    for (std::size_t i = 0; i < ks.size(); ++i) {
        num += ((long double)got[ks[i]] - want[i]) * ((long double)got[ks[i]] - want[i]);
        den += want[i] * want[i];
    }
    return double(std::sqrt(num / den));
}

// Uniform in [-1, 1) (exact in both float types), or full-range integers.
template <class T>
std::vector<T> signal(int n, unsigned seed) {
    std::mt19937 rng(seed + unsigned(n));
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<T> v(n);
    for (auto& x : v) x = std::is_same_v<T, Zvp16s> ? T(int(rng() % 65536) - 32768) : T(d(rng));
    return v;
}

// Error bounds (relative L2, in units of the type's roundoff u):
//  - small and direct: each output is one sum of N products with table
//    values within u of the cosine, then a factor: (N + 3) u;
//  - FFT: the real FFT's bound (fft_error.h) plus the rotation, one product
//    pair and a sum with table values carrying the factor (about 4 u), plus
//    the factor 1/sqrt(N) of the Newton step (within 2 u): (9 log2 N + 8) u;
//  - real DFT of any length: the same form (its stages have the FFT's
//    per-level error).
template <class T>
double bound(int n) {
    const double u = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
    if (n <= 8 || (n < 36 && (n & (n - 1)) != 0)) return (n + 3) * u;
    return (zvp::test::kFftC * std::log2(double(n)) + 8) * u;
}

template <class T>
class DctFloat : public ::testing::Test {};
using FloatTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(DctFloat, FloatTypes);

// One direction at length n into y: against the definition, then in place,
// internal work memory and misaligned source and destination bit for bit
// (the kernels' vector and scalar parts do not depend on where data sit).
template <class T, bool INV>
void checkDirection(int n, const std::vector<T>& x, std::vector<T>& y) {
    SCOPED_TRACE(::testing::Message() << (sizeof(T) == 4 ? "32f" : "64f") << (INV ? " inverse" : " forward") << " N " << n);
    Plan<T, INV> plan(n);
    GuardedBuffer out(sizeof(T) * n), src(sizeof(T) * n, sizeof(T)), dst(sizeof(T) * n, 3 * sizeof(T));
    ASSERT_EQ(plan.run(x.data(), out.as<T>()), zvpStsNoErr);
    EXPECT_TRUE(out.guardsIntact());
    const auto ks = outputs(n);
    EXPECT_LT(relErr(out.as<T>(), reference(x, INV, ks), ks), bound<T>(n));
    y.assign(out.as<T>(), out.as<T>() + n);
    std::vector<T> v = x, nb(n);
    ASSERT_EQ(plan.run(v.data(), v.data()), zvpStsNoErr);
    EXPECT_EQ(v, y) << "in place";
    ASSERT_EQ((Api<T, INV>::run(x.data(), nb.data(), plan.spec, nullptr)), zvpStsNoErr);
    EXPECT_EQ(nb, y) << "internal work memory";
    std::memcpy(src.data(), x.data(), sizeof(T) * n);
    ASSERT_EQ(plan.run(src.as<T>(), dst.as<T>()), zvpStsNoErr);
    EXPECT_TRUE(dst.guardsIntact());
    EXPECT_EQ(std::memcmp(dst.data(), y.data(), sizeof(T) * n), 0) << "misaligned";
}

// Lengths on both sides of every method boundary and a few inside each; the
// inverse run on the forward result, which must come back to the signal
// (exactly at N = 1, where both are the identity).
TYPED_TEST(DctFloat, EveryMethodAgainstTheDefinitionAndBack) {
    using T = TypeParam;
    for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 35, 36, 37, 48, 64, 100, 127, 255, 1000, 1024,
                  4096, 65536, 100000, 131071}) {
        const auto x = signal<T>(n, 7);
        std::vector<T> y, z;
        checkDirection<T, false>(n, x, y);
        checkDirection<T, true>(n, y, z);
        ASSERT_EQ(z.size(), std::size_t(n));
        EXPECT_TRUE(n > 1 || (y == x && z == x)) << "N = 1 copies in both directions";
        EXPECT_LT(relErr(z.data(), std::vector<long double>(x.begin(), x.end()), outputs(n, true)), 2 * bound<T>(n))
            << "inverse of forward, N " << n;
    }
}

// ---- 16s -----------------------------------------------------------------------

// A full-range signal, both directions, several scale factors, against the
// scale rule on the exact value: saturate(R 2^-sf), to nearest with ties to
// even. Where R 2^-sf lies within 2^-20 (times 2^-sf when that is larger)
// of a rounding boundary the double transform may land on either side, so
// there one unit of difference is allowed. Its error is far smaller: below
// 10^-8 absolute here (||x|| < 2^22 times a relative error under 2^-45).
TEST(Dct16s, ScaledExactValueAtEveryMethod) {
    for (int n : {1, 2, 5, 8, 16, 35, 36, 48, 256, 1000, 4096}) {
        const auto x = signal<Zvp16s>(n, 3);
        Plan<Zvp16s, false> f(n);
        Plan<Zvp16s, true> i(n);
        for (bool inv : {false, true}) {
            const auto want = reference(x, inv, outputs(n));
            for (int sf : {-2, 0, 1, 6, 20}) {
                std::vector<Zvp16s> y(n, 0x5555);
                ASSERT_EQ(inv ? i.run(x.data(), y.data(), sf) : f.run(x.data(), y.data(), sf), zvpStsNoErr);
                for (int k = 0; k < n; ++k) {
                    const long double v = std::ldexp(want[k], -sf), fl = std::floor(v);
                    const bool nearTie = std::fabs(v - fl - 0.5L) < std::ldexp(1.0L, -20 + std::max(0, -sf));
                    const long double q = v - fl != 0.5L ? std::round(v) : (std::fmod(fl, 2.0L) == 0 ? fl : fl + 1);
                    const int w = int(std::min(32767.0L, std::max(-32768.0L, q)));
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
        int n, x0;  // x[0]; the rest 0, or all x0 when `flat`
        bool flat;
        int sf, want0;
    } const cases[] = {
        {1, 3, false, 1, 2},          {1, 5, false, 1, 2},          {1, -3, false, 1, -2},       {1, -1, false, 1, 0},
        {1, 1, false, 1, 0},          {1, 7, false, -13, 32767},    {1, -7, false, -13, -32768}, {1, 0, false, -100, 0},
        {4, 1, false, 0, 0},          {4, 3, false, 0, 2},          {4, -5, false, 0, -2},       {4, 32767, true, 0, 32767},
        {4, -32768, true, 0, -32768}, {4, -32768, true, 1, -32768}, {4, -32768, true, 2, -16384}, {4, 32767, true, 17, 0},
    };
    for (const Case& c : cases) {
        std::vector<Zvp16s> x(c.n, Zvp16s(c.flat ? c.x0 : 0)), y(c.n, 0x5555);
        x[0] = Zvp16s(c.x0);
        Plan<Zvp16s, false> f(c.n);
        ASSERT_EQ(f.run(x.data(), y.data(), c.sf), zvpStsNoErr);
        EXPECT_EQ(y[0], c.want0) << "N " << c.n << " x0 " << c.x0 << " sf " << c.sf;
    }
}

// The integers do not depend on the caller's rounding or flush modes, and
// the caller's modes come back.
TEST(Dct16s, IndependentOfTheCallersFloatingPointState) {
    const auto x = signal<Zvp16s>(1000, 9);
    std::vector<Zvp16s> ref(1000), got(1000);
    Plan<Zvp16s, true> p(1000);
    ASSERT_EQ(p.run(x.data(), ref.data(), 3), zvpStsNoErr);
    const unsigned saved = _mm_getcsr();
    for (unsigned mode : {0x2000u, 0x4000u, 0x6000u | 0x8040u}) {
        _mm_setcsr((saved & ~0xE040u) | mode);
        const ZvpStatus st = p.run(x.data(), got.data(), 3);
        const unsigned after = _mm_getcsr() & 0xE040u;
        _mm_setcsr(saved);
        EXPECT_EQ(st, zvpStsNoErr);
        EXPECT_EQ(after, mode);
        EXPECT_EQ(got, ref) << std::hex << mode;
    }
}

// ---- checks, sizes, allocation ----------------------------------------------------

template <class T, bool INV>
struct KindOf {
    using Type = T;
    using A = Api<T, INV>;
    using B = Api<T, !INV>;  // the other direction
    static constexpr bool inv = INV;
};
template <class K>
class DctRecord : public ::testing::Test {};
using Kinds = ::testing::Types<KindOf<float, false>, KindOf<float, true>, KindOf<double, false>, KindOf<double, true>,
                               KindOf<Zvp16s, false>, KindOf<Zvp16s, true>>;
TYPED_TEST_SUITE(DctRecord, Kinds);

// The length before the pointers; the pointers in argument order before the
// tag, and the tag before an allocation; a record of the other direction or
// a released one refused; nothing written on any error.
TYPED_TEST(DctRecord, CheckOrderAndWrongTags) {
    using T = typename TypeParam::Type;
    using A = typename TypeParam::A;
    using Spec = typename A::Spec;
    int s = -1, i = -1, w = -1;
    EXPECT_EQ(A::getSize(0, nullptr, nullptr, nullptr), zvpStsSizeErr);
    EXPECT_EQ(A::getSize(8, &s, nullptr, &w), zvpStsNullPtrErr);
    EXPECT_EQ(A::getSize(268435456, &s, &i, &w), zvpStsSizeErr);       // past the FFT method
    EXPECT_EQ(A::getSize(67108864 + 15, &s, &i, &w), zvpStsSizeErr);   // past the DFT method
    EXPECT_EQ(s, -1);
    // The longest FFT length fits 32-bit sizes in single precision only.
    EXPECT_EQ(A::getSize(1 << 27, &s, &i, &w), sizeof(T) == 4 ? zvpStsNoErr : zvpStsSizeErr);
    s = i = w = -1;
    Spec* const sentinel = reinterpret_cast<Spec*>(std::uintptr_t(0x40));
    Spec* p = sentinel;
    Zvp8u mem[256];
    EXPECT_EQ(A::init(nullptr, 0, nullptr, nullptr), zvpStsSizeErr);
    EXPECT_EQ(A::init(nullptr, 8, mem, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(A::init(&p, 8, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(A::initAlloc(nullptr, -1), zvpStsSizeErr);
    EXPECT_EQ(A::initAlloc(nullptr, 8), zvpStsNullPtrErr);
    EXPECT_EQ(p, sentinel);
    Plan<T, TypeParam::inv> good(64);
    Plan<T, !TypeParam::inv> other(64);
    auto* const wrong = reinterpret_cast<Spec*>(other.spec);
    std::vector<T> x(64, T(1));
    GuardedBuffer dst(sizeof(T) * 64);
    EXPECT_EQ(A::run(nullptr, dst.as<T>(), wrong, good.buf()), zvpStsNullPtrErr);
    EXPECT_EQ(A::run(x.data(), nullptr, good.spec, good.buf()), zvpStsNullPtrErr);
    EXPECT_EQ(A::run(x.data(), dst.as<T>(), nullptr, good.buf()), zvpStsNullPtrErr);
    alloc::reset(1);  // an allocation would fail: the tag is checked first
    EXPECT_EQ(A::run(x.data(), dst.as<T>(), wrong, nullptr), zvpStsContextMatchErr);
    alloc::reset();
    EXPECT_TRUE(dst.untouched());
    EXPECT_EQ(A::bufSize(nullptr, &i), zvpStsNullPtrErr);
    EXPECT_EQ(A::bufSize(good.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(A::bufSize(wrong, &i), zvpStsContextMatchErr);
    EXPECT_EQ(i, -1);
    EXPECT_EQ(A::release(nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(A::release(wrong), zvpStsContextMatchErr);
    // Released, in caller memory: the tag is cleared, nothing else needed.
    ASSERT_EQ(A::getSize(35, &s, &i, &w), zvpStsNoErr);
    std::vector<Zvp8u> block(s);
    ASSERT_EQ(A::init(&p, 35, block.data(), nullptr), zvpStsNoErr);
    EXPECT_EQ(A::release(p), zvpStsNoErr);
    EXPECT_EQ(A::release(p), zvpStsContextMatchErr);
    EXPECT_EQ(A::run(x.data(), dst.as<T>(), p, nullptr), zvpStsContextMatchErr);
    EXPECT_TRUE(dst.untouched());
}

// Every record fits the bytes its query reported, at any alignment, with
// the init memory and the work buffer exactly as reported (the init memory
// may be discarded after Init); both directions report the same sizes;
// GetBufSize agrees; the record computes what an allocated one does.
TYPED_TEST(DctRecord, RecordsAndWorkFitTheirReportedBytes) {
    using T = typename TypeParam::Type;
    using A = typename TypeParam::A;
    for (int n : {1, 4, 8, 9, 16, 35, 36, 100, 2048, 3000}) {
        SCOPED_TRACE(n);
        int s = 0, i = 0, w = 0, other[3] = {}, bytes = -1;
        ASSERT_EQ(A::getSize(n, &s, &i, &w), zvpStsNoErr);
        ASSERT_EQ(TypeParam::B::getSize(n, &other[0], &other[1], &other[2]), zvpStsNoErr);
        EXPECT_TRUE(other[0] == s && other[1] == i && other[2] == w);
        EXPECT_EQ(w == 0, n == 1 || n == 4 || n == 8) << "only the small kernels need no work";
        GuardedBuffer mem(std::size_t(s), 3), init(std::size_t(i), 5), work(std::size_t(w), 7);
        typename A::Spec* p = nullptr;
        ASSERT_EQ(A::init(&p, n, mem.data(), i ? init.data() : nullptr), zvpStsNoErr);
        EXPECT_TRUE(mem.guardsIntact() && init.guardsIntact());
        init.fill(0xEE);
        ASSERT_EQ(A::bufSize(p, &bytes), zvpStsNoErr);
        EXPECT_EQ(bytes, w);
        const auto x = signal<T>(n, 2);
        std::vector<T> y(n), z(n);
        ASSERT_EQ(A::run(x.data(), y.data(), p, w ? work.data() : nullptr), zvpStsNoErr);
        EXPECT_TRUE(work.guardsIntact() && mem.guardsIntact());
        Plan<T, TypeParam::inv> ref(n);
        ASSERT_EQ(ref.run(x.data(), z.data()), zvpStsNoErr);
        EXPECT_EQ(y, z);
        EXPECT_EQ(A::release(p), zvpStsNoErr);
    }
}

// Runs `call` with the k-th allocation failing, k = 1, 2, ... until it
// succeeds: every failure is zvpStsMemAllocErr with nothing held and
// nothing written (`untouched`), and there is one per allocation made.
template <class Call, class Untouched>
void failEachAllocation(Call call, Untouched untouched) {
    for (int k = 1;; ++k) {
        alloc::reset(k);
        const ZvpStatus st = call();
        if (st == zvpStsNoErr) break;
        EXPECT_EQ(st, zvpStsMemAllocErr) << "k " << k;
        EXPECT_EQ(alloc::live, 0) << "k " << k;
        EXPECT_TRUE(untouched()) << "k " << k;
        ASSERT_LE(k, alloc::calls) << "a failure beyond the last allocation";
    }
    EXPECT_EQ(alloc::live, 0);
    alloc::reset();
}

// InitAlloc (its record, the init scratch, those of the inner transform) and
// a transform that allocates its work memory, at each method.
TYPED_TEST(DctRecord, AllocationFailureAtEveryPoint) {
    using T = typename TypeParam::Type;
    using A = typename TypeParam::A;
    auto* const sentinel = reinterpret_cast<typename A::Spec*>(std::uintptr_t(0x40));
    for (int n : {8, 35, 1000, 4096}) {
        SCOPED_TRACE(n);
        typename A::Spec* p = sentinel;
        failEachAllocation(
            [&] {
                const ZvpStatus st = A::initAlloc(&p, n);
                if (st == zvpStsNoErr) A::release(p);
                return st;
            },
            [&] { return p == sentinel; });
        Plan<T, TypeParam::inv> plan(n);
        std::vector<T> x(n, T(1));
        GuardedBuffer dst(sizeof(T) * n);
        failEachAllocation([&] { return A::run(x.data(), dst.as<T>(), plan.spec, nullptr); },
                           [&] { return dst.untouched(); });
    }
}

}  // namespace

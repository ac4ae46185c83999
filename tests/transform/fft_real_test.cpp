// Real-input FFT through the public interface, single and double precision:
// accuracy against independent reference transforms in the three layouts,
// round trips for every flag, in place against out of place, the work
// buffer, the size formulas, specifications placed in exactly the reported
// bytes, and every error with nothing written.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include "fft_error.h"
#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
using Cd = std::complex<double>;

enum class Layout { Ccs, Pack, Perm };
constexpr Layout kLayouts[] = {Layout::Ccs, Layout::Pack, Layout::Perm};

// ---- the two precisions behind one interface ---------------------------------

template <class T>
struct Api;

#define ZVP_REAL_API(T, TT, CT)                                                                    \
    template <>                                                                                    \
    struct Api<T> {                                                                                \
        using Spec = ZvpsFFTSpec_R_##TT;                                                           \
        static constexpr int maxOrder = std::is_same_v<T, float> ? 29 : 28;                        \
        static ZvpStatus getSize(int m, int f, int* s, int* i, int* w) {                           \
            return zvpsFFTGetSize_R_##TT(m, f, zvpAlgHintNone, s, i, w);                           \
        }                                                                                          \
        static ZvpStatus complexSize(int m, int* s, int* i, int* w) {                              \
            return zvpsFFTGetSize_C_##CT(m, ZVP_FFT_NODIV_BY_ANY, zvpAlgHintNone, s, i, w);        \
        }                                                                                          \
        static ZvpStatus init(Spec** pp, int m, int f, Zvp8u* s, Zvp8u* i) {                       \
            return zvpsFFTInit_R_##TT(pp, m, f, zvpAlgHintNone, s, i);                             \
        }                                                                                          \
        static ZvpStatus initAlloc(Spec** pp, int m, int f) {                                      \
            return zvpsFFTInitAlloc_R_##TT(pp, m, f, zvpAlgHintNone);                              \
        }                                                                                          \
        static ZvpStatus release(Spec* s) { return zvpsFFTFree_R_##TT(s); }                        \
        static ZvpStatus bufSize(const Spec* s, int* n) { return zvpsFFTGetBufSize_R_##TT(s, n); } \
        static ZvpStatus fwd(Layout l, const T* s, T* d, const Spec* p, Zvp8u* w) {                \
            return l == Layout::Ccs    ? zvpsFFTFwd_RToCCS_##TT(s, d, p, w)                        \
                   : l == Layout::Pack ? zvpsFFTFwd_RToPack_##TT(s, d, p, w)                       \
                                       : zvpsFFTFwd_RToPerm_##TT(s, d, p, w);                      \
        }                                                                                          \
        static ZvpStatus inv(Layout l, const T* s, T* d, const Spec* p, Zvp8u* w) {                \
            return l == Layout::Ccs    ? zvpsFFTInv_CCSToR_##TT(s, d, p, w)                        \
                   : l == Layout::Pack ? zvpsFFTInv_PackToR_##TT(s, d, p, w)                       \
                                       : zvpsFFTInv_PermToR_##TT(s, d, p, w);                      \
        }                                                                                          \
        static ZvpStatus fwdI(Layout l, T* v, const Spec* p, Zvp8u* w) {                           \
            return l == Layout::Ccs    ? zvpsFFTFwd_RToCCS_##TT##_I(v, p, w)                       \
                   : l == Layout::Pack ? zvpsFFTFwd_RToPack_##TT##_I(v, p, w)                      \
                                       : zvpsFFTFwd_RToPerm_##TT##_I(v, p, w);                     \
        }                                                                                          \
        static ZvpStatus invI(Layout l, T* v, const Spec* p, Zvp8u* w) {                           \
            return l == Layout::Ccs    ? zvpsFFTInv_CCSToR_##TT##_I(v, p, w)                       \
                   : l == Layout::Pack ? zvpsFFTInv_PackToR_##TT##_I(v, p, w)                      \
                                       : zvpsFFTInv_PermToR_##TT##_I(v, p, w);                     \
        }                                                                                          \
    };
ZVP_REAL_API(float, 32f, 32fc)
ZVP_REAL_API(double, 64f, 64fc)
#undef ZVP_REAL_API

// A specification built by InitAlloc, released at scope exit, with a work
// buffer of the reported size.
template <class T>
struct Plan {
    typename Api<T>::Spec* spec = nullptr;
    std::vector<Zvp8u> work;
    Plan(int m, int flag) {
        EXPECT_EQ(Api<T>::initAlloc(&spec, m, flag), zvpStsNoErr);
        int bytes = 0;
        EXPECT_EQ(Api<T>::bufSize(spec, &bytes), zvpStsNoErr);
        work.resize(std::size_t(bytes) + 1);
    }
    ~Plan() {
        if (spec) Api<T>::release(spec);
    }
    Zvp8u* buf() { return work.size() > 1 ? work.data() + 1 : nullptr; }  // deliberately unaligned
};

// ---- reference data --------------------------------------------------------------

// The test signal of order m: uniform in [-1, 1), exact in both precisions.
std::vector<float> signal(int m) {
    std::mt19937 rng(1234u + m);
    std::uniform_real_distribution<float> d(-1.f, 1.f);
    std::vector<float> v(std::size_t(1) << m);
    for (auto& x : v) x = d(rng);
    return v;
}

// X[0 .. N/2] of signal(m): a long-double DFT up to 1024 points, the
// recursive double FFT of the oracle above.
std::vector<Cd> reference(int m) {
    const auto x = signal(m);
    std::vector<Cd> X;
    if (m <= 10) {
        std::vector<zvp::test::cld> c(x.begin(), x.end());
        for (const auto& v : zvp::test::naiveDft(c, -1)) X.emplace_back(double(v.real()), double(v.imag()));
    } else {
        std::vector<Cd> c(x.begin(), x.end());
        X = zvp::test::referenceFft(c, -1);
    }
    X.resize(x.size() / 2 + 1);
    return X;
}

// Index of Rk / Ik in a layout of N values (-1: not stored).
int reIndex(Layout l, int n, int k) {
    if (l == Layout::Ccs) return 2 * k;
    if (k == 0) return 0;
    if (2 * k == n) return l == Layout::Pack ? n - 1 : 1;
    return l == Layout::Pack ? 2 * k - 1 : 2 * k;
}
int imIndex(Layout l, int n, int k) {
    if (l == Layout::Ccs) return 2 * k + 1;
    if (k == 0 || 2 * k == n) return -1;
    return reIndex(l, n, k) + 1;
}
int layoutValues(Layout l, int n) { return l == Layout::Ccs ? (n == 1 ? 2 : n + 2) : n; }

// The half spectrum read back out of a layout.
template <class T>
std::vector<Cd> unpack(const T* v, Layout l, int n) {
    std::vector<Cd> X(n / 2 + 1);
    for (int k = 0; k <= n / 2; ++k) {
        const int ii = imIndex(l, n, k);
        X[k] = {double(v[reIndex(l, n, k)]), ii < 0 ? 0.0 : double(v[ii])};
    }
    return X;
}

// Relative L2 error of a half spectrum (both halves of the full spectrum
// weigh the same, so the half is representative).
double relErr(const std::vector<Cd>& got, const std::vector<Cd>& want) {
    return zvp::test::relativeL2(got, want);
}
template <class T>
double relErrReal(const T* got, const std::vector<float>& want) {
    long double num = 0, den = 0;
    for (std::size_t i = 0; i < want.size(); ++i) {
        const long double d = (long double)got[i] - want[i];
        num += d * d;
        den += (long double)want[i] * want[i];
    }
    return double(std::sqrt(num / den));
}

template <class T>
double bound(int m) {
    return zvp::test::fftBound<T>(m);
}

template <class T>
class FftRealTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(FftRealTest, Types);

// ---- accuracy, layouts, forms -------------------------------------------------------

class FftRealOrders : public ::testing::TestWithParam<int> {};

template <class T>
void checkOrder(int m, const std::vector<Cd>& want) {
    SCOPED_TRACE(::testing::Message() << (sizeof(T) == 4 ? "32f" : "64f") << " order " << m);
    const int n = 1 << m;
    const auto xs = signal(m);
    const std::vector<T> x(xs.begin(), xs.end());
    Plan<T> plan(m, ZVP_FFT_DIV_INV_BY_N);
    for (Layout l : kLayouts) {
        SCOPED_TRACE(::testing::Message() << "layout " << int(l));
        const int nv = layoutValues(l, n);
        GuardedBuffer out(sizeof(T) * nv);
        ASSERT_EQ(Api<T>::fwd(l, x.data(), out.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
        EXPECT_TRUE(out.guardsIntact());
        EXPECT_LT(relErr(unpack(out.as<T>(), l, n), want), bound<T>(m));
        // In place gives the same bits.
        std::vector<T> v(nv);
        std::copy(x.begin(), x.end(), v.begin());
        ASSERT_EQ(Api<T>::fwdI(l, v.data(), plan.spec, plan.buf()), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(v.data(), out.data(), sizeof(T) * nv), 0);
        // Inverse (scaled by 1/N) returns the signal; in place the same bits.
        GuardedBuffer back(sizeof(T) * n);
        ASSERT_EQ(Api<T>::inv(l, out.as<T>(), back.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
        EXPECT_TRUE(back.guardsIntact());
        EXPECT_LT(relErrReal(back.as<T>(), xs), bound<T>(m));
        ASSERT_EQ(Api<T>::invI(l, v.data(), plan.spec, plan.buf()), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(v.data(), back.data(), sizeof(T) * n), 0);
    }
}

TEST_P(FftRealOrders, BothPrecisionsEveryLayoutAgainstTheReference) {
    const int m = GetParam();
    const auto want = reference(m);
    checkOrder<float>(m, want);
    checkOrder<double>(m, want);
}

INSTANTIATE_TEST_SUITE_P(Orders, FftRealOrders, ::testing::Range(0, 23));

TYPED_TEST(FftRealTest, LayoutTablesForOneTwoAndEight) {
    using T = TypeParam;
    {
        Plan<T> p(0, ZVP_FFT_NODIV_BY_ANY);
        const T x[1] = {T(2.5)};
        T d[2] = {T(9), T(9)};
        ASSERT_EQ(Api<T>::fwd(Layout::Pack, x, d, p.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(d[0], T(2.5));
        EXPECT_EQ(d[1], T(9));
        ASSERT_EQ(Api<T>::fwd(Layout::Perm, x, d, p.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(d[0], T(2.5));
        EXPECT_EQ(d[1], T(9));
        ASSERT_EQ(Api<T>::fwd(Layout::Ccs, x, d, p.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(d[0], T(2.5));
        EXPECT_EQ(d[1], T(0));
    }
    {
        Plan<T> p(1, ZVP_FFT_NODIV_BY_ANY);
        const T x[2] = {T(3), T(1)};
        T d[4] = {T(9), T(9), T(9), T(9)};
        ASSERT_EQ(Api<T>::fwd(Layout::Pack, x, d, p.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::vector<T>(d, d + 4), (std::vector<T>{4, 2, 9, 9}));
        ASSERT_EQ(Api<T>::fwd(Layout::Perm, x, d, p.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::vector<T>(d, d + 4), (std::vector<T>{4, 2, 9, 9}));
        ASSERT_EQ(Api<T>::fwd(Layout::Ccs, x, d, p.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::vector<T>(d, d + 4), (std::vector<T>{4, 0, 2, 0}));
    }
    {
        // x[n] = n: X[k] = -4 + 4i cot(pi k/8) for k = 1 .. 3, X[0] = 28, X[4] = -4.
        Plan<T> p(3, ZVP_FFT_NODIV_BY_ANY);
        const T x[8] = {0, 1, 2, 3, 4, 5, 6, 7};
        const double pi = 3.14159265358979323846;
        const double c1 = 4 / std::tan(pi / 8), c2 = 4, c3 = 4 / std::tan(3 * pi / 8);
        const std::vector<double> pack = {28, -4, c1, -4, c2, -4, c3, -4};
        const std::vector<double> perm = {28, -4, -4, c1, -4, c2, -4, c3};
        const std::vector<double> ccs = {28, 0, -4, c1, -4, c2, -4, c3, -4, 0};
        const double tol = 64 * std::numeric_limits<T>::epsilon();
        for (Layout l : kLayouts) {
            const auto& want = l == Layout::Pack ? pack : l == Layout::Perm ? perm : ccs;
            std::vector<T> d(10, T(99));
            ASSERT_EQ(Api<T>::fwd(l, x, d.data(), p.spec, nullptr), zvpStsNoErr);
            for (std::size_t i = 0; i < want.size(); ++i) EXPECT_NEAR(d[i], want[i], tol) << i;
            for (std::size_t i = want.size(); i < 10; ++i) EXPECT_EQ(d[i], T(99));
        }
    }
}

TYPED_TEST(FftRealTest, ConstantGivesOnlyTheZeroBin) {
    using T = TypeParam;
    for (int m : {0, 1, 3, 4, 5, 6, 7, 11, 14}) {
        const int n = 1 << m;
        Plan<T> p(m, ZVP_FFT_NODIV_BY_ANY);
        const std::vector<T> x(n, T(0.75));
        for (Layout l : kLayouts) {
            std::vector<T> d(layoutValues(l, n), T(5));
            ASSERT_EQ(Api<T>::fwd(l, x.data(), d.data(), p.spec, p.buf()), zvpStsNoErr);
            EXPECT_EQ(d[0], T(0.75) * n) << "order " << m;
            for (std::size_t i = 1; i < d.size(); ++i)
                ASSERT_LE(std::fabs(d[i]), n * std::numeric_limits<T>::epsilon()) << "order " << m << " i " << i;
        }
    }
}

// Round trips for every flag: forward then inverse multiplies by 1 (flags
// 1, 2, 4) or by N (flag 8).
TYPED_TEST(FftRealTest, RoundTripEveryFlag) {
    using T = TypeParam;
    for (int flag : {ZVP_FFT_DIV_FWD_BY_N, ZVP_FFT_DIV_INV_BY_N, ZVP_FFT_DIV_BY_SQRTN, ZVP_FFT_NODIV_BY_ANY}) {
        for (int m : {0, 1, 2, 4, 5, 6, 7, 9, 13}) {
            SCOPED_TRACE(::testing::Message() << "flag " << flag << " order " << m);
            const int n = 1 << m;
            const auto xs = signal(m);
            const std::vector<T> x(xs.begin(), xs.end());
            Plan<T> p(m, flag);
            for (Layout l : kLayouts) {
                std::vector<T> spec(layoutValues(l, n)), back(n);
                ASSERT_EQ(Api<T>::fwd(l, x.data(), spec.data(), p.spec, p.buf()), zvpStsNoErr);
                ASSERT_EQ(Api<T>::inv(l, spec.data(), back.data(), p.spec, p.buf()), zvpStsNoErr);
                if (flag == ZVP_FFT_NODIV_BY_ANY)
                    for (auto& v : back) v /= n;
                EXPECT_LT(relErrReal(back.data(), xs), bound<T>(m));
            }
        }
    }
}

// Large orders: inverse of forward and in place, without the reference.
TYPED_TEST(FftRealTest, LargeOrderRoundTrips) {
    using T = TypeParam;
    for (int m : {23, 24}) {
        if (m == 24 && sizeof(T) == 8) continue;  // 128 MiB vectors: the single type covers it
        SCOPED_TRACE(::testing::Message() << "order " << m);
        const auto xs = signal(m);
        std::vector<T> v(xs.begin(), xs.end());
        v.resize(v.size() + 2);
        Plan<T> p(m, ZVP_FFT_DIV_INV_BY_N);
        const Layout l = m == 23 ? Layout::Ccs : Layout::Pack;
        ASSERT_EQ(Api<T>::fwdI(l, v.data(), p.spec, p.buf()), zvpStsNoErr);
        ASSERT_EQ(Api<T>::invI(l, v.data(), p.spec, nullptr), zvpStsNoErr);
        EXPECT_LT(relErrReal(v.data(), xs), bound<T>(m));
    }
}

TYPED_TEST(FftRealTest, NullWorkBufferAndUnalignedVectors) {
    using T = TypeParam;
    for (int m : {5, 7, 10, 12, 19, 20}) {
        SCOPED_TRACE(::testing::Message() << "order " << m);
        const int n = 1 << m;
        const auto xs = signal(m);
        Plan<T> p(m, ZVP_FFT_DIV_FWD_BY_N);
        for (Layout l : kLayouts) {
            const int nv = layoutValues(l, n);
            std::vector<T> a(nv), b(nv);
            GuardedBuffer src(sizeof(T) * n, sizeof(T)), dst(sizeof(T) * nv, 3 * sizeof(T));
            std::copy(xs.begin(), xs.end(), src.as<T>());
            ASSERT_EQ(Api<T>::fwd(l, src.as<T>(), a.data(), p.spec, p.buf()), zvpStsNoErr);
            ASSERT_EQ(Api<T>::fwd(l, src.as<T>(), b.data(), p.spec, nullptr), zvpStsNoErr);
            EXPECT_EQ(a, b);
            ASSERT_EQ(Api<T>::fwd(l, src.as<T>(), dst.as<T>(), p.spec, p.buf()), zvpStsNoErr);
            EXPECT_TRUE(dst.guardsIntact());
            std::vector<Cd> ua = unpack(a.data(), l, n), ud = unpack(dst.as<T>(), l, n);
            EXPECT_LT(relErr(ud, ua), 4 * bound<T>(m));
            std::vector<T> r1(n), r2(n);
            ASSERT_EQ(Api<T>::inv(l, a.data(), r1.data(), p.spec, p.buf()), zvpStsNoErr);
            ASSERT_EQ(Api<T>::inv(l, a.data(), r2.data(), p.spec, nullptr), zvpStsNoErr);
            EXPECT_EQ(r1, r2);
        }
    }
}

// ---- sizes ------------------------------------------------------------------------------

// The real sizes from their rule, over the complex sizes of order m - 1.
template <class T>
void expectedSizes(int m, int& spec, int& init, int& work) {
    const std::int64_t n = std::int64_t(1) << m;
    const int smallMax = sizeof(T) == 4 ? 4 : 5;
    const std::int64_t perK = sizeof(T) == 4 ? 16 : 32;
    if (m <= smallMax) {
        spec = 152, init = 0, work = 0;
        return;
    }
    const std::int64_t rec = m < 20 ? ((perK * (n / 4) + 126) & ~std::int64_t(127))
                                    : ((16 * (n >> 12) + 16510) & ~std::int64_t(127));
    if (m <= 6) {
        spec = int(rec + 192), init = 0, work = 0;
        return;
    }
    int cs = 0, ci = 0, cw = 0;
    ASSERT_EQ(Api<T>::complexSize(m - 1, &cs, &ci, &cw), zvpStsNoErr);
    // The base table of N/4 + 1 samples, rounded up to 64 bytes.
    const std::int64_t b = sizeof(T) == 4 ? (((n & ~3) + 67) & ~63) : ((2 * n + 71) & ~63);
    spec = int(cs + rec + 192);
    init = m <= 10 ? 0 : int(ci + b + 64);
    work = cw > 0 ? cw + 64 : 0;
}

TYPED_TEST(FftRealTest, SizesAtEveryOrder) {
    using T = TypeParam;
    for (int m = 0; m <= 30; ++m) {
        SCOPED_TRACE(::testing::Message() << "order " << m);
        int s = -1, i = -1, w = -1;
        const ZvpStatus st = Api<T>::getSize(m, ZVP_FFT_DIV_BY_SQRTN, &s, &i, &w);
        if (m > Api<T>::maxOrder) {
            EXPECT_EQ(st, zvpStsFftOrderErr);
            EXPECT_EQ(s, -1);
            continue;
        }
        ASSERT_EQ(st, zvpStsNoErr);
        int es = 0, ei = 0, ew = 0;
        expectedSizes<T>(m, es, ei, ew);
        EXPECT_EQ(s, es);
        EXPECT_EQ(i, ei);
        EXPECT_EQ(w, ew);
    }
    // Check order: order (unsigned, against 30), outputs, flag, then the type's limit.
    int s = -1, i = -1, w = -1;
    EXPECT_EQ(Api<T>::getSize(-1, 3, nullptr, nullptr, nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::getSize(31, 8, &s, &i, &w), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::getSize(5, 3, nullptr, &i, &w), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::getSize(5, 0, &s, &i, &w), zvpStsFftFlagErr);
    EXPECT_EQ(Api<T>::getSize(30, 3, &s, &i, &w), zvpStsFftFlagErr);
    EXPECT_EQ(s, -1);
    EXPECT_EQ(i, -1);
    EXPECT_EQ(w, -1);
}

// Specs built in exactly the reported bytes, at every misalignment that
// matters, with guards after the spec and the init memory.
TYPED_TEST(FftRealTest, SpecFitsTheReportedBytes) {
    using T = TypeParam;
    for (int m = 0; m <= 22; ++m) {
        int s = 0, i = 0, w = 0;
        ASSERT_EQ(Api<T>::getSize(m, ZVP_FFT_DIV_FWD_BY_N, &s, &i, &w), zvpStsNoErr);
        for (std::size_t mis : {std::size_t(1), std::size_t(0), std::size_t(40)}) {
            SCOPED_TRACE(::testing::Message() << "order " << m << " misalign " << mis);
            GuardedBuffer specMem(s, mis), initMem(i, mis);
            typename Api<T>::Spec* spec = nullptr;
            ASSERT_EQ(Api<T>::init(&spec, m, ZVP_FFT_DIV_FWD_BY_N, specMem.data(), i ? initMem.data() : nullptr),
                      zvpStsNoErr);
            EXPECT_TRUE(specMem.guardsIntact());
            EXPECT_TRUE(initMem.guardsIntact());
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(spec) % 64, 0u);
            int bs = -1;
            ASSERT_EQ(Api<T>::bufSize(spec, &bs), zvpStsNoErr);
            EXPECT_EQ(bs, w);
            // The init memory is scratch: spoil it, then transform with a
            // work buffer of exactly the reported size.
            initMem.fill(0xEE);
            if (m <= 16 || mis == 1) {
                // Same bits as a transform on an allocated spec.
                const int n = 1 << m;
                const auto xs = signal(m);
                const std::vector<T> x(xs.begin(), xs.end());
                GuardedBuffer work(w, mis), out(sizeof(T) * n);
                ASSERT_EQ(Api<T>::fwd(Layout::Perm, x.data(), out.as<T>(), spec, w ? work.data() : nullptr),
                          zvpStsNoErr);
                EXPECT_TRUE(work.guardsIntact());
                EXPECT_TRUE(specMem.guardsIntact());
                Plan<T> p(m, ZVP_FFT_DIV_FWD_BY_N);
                std::vector<T> ref(n);
                ASSERT_EQ(Api<T>::fwd(Layout::Perm, x.data(), ref.data(), p.spec, p.buf()), zvpStsNoErr);
                EXPECT_EQ(std::memcmp(ref.data(), out.data(), sizeof(T) * n), 0);
            }
            // A spec in caller memory may be released: the tag is cleared.
            EXPECT_EQ(Api<T>::release(spec), zvpStsNoErr);
            EXPECT_EQ(Api<T>::release(spec), zvpStsContextMatchErr);
        }
    }
}

// ---- errors ------------------------------------------------------------------------------

TYPED_TEST(FftRealTest, InitErrorsAndTheirOrder) {
    using T = TypeParam;
    using Spec = typename Api<T>::Spec;
    GuardedBuffer mem(1 << 16);
    Spec* spec = reinterpret_cast<Spec*>(0x1);
    EXPECT_EQ(Api<T>::init(nullptr, 40, 3, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::init(&spec, -1, 8, mem.data(), nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::init(&spec, Api<T>::maxOrder + 1, 8, mem.data(), nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::init(&spec, 3, 3, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_TRUE(mem.untouched());
    EXPECT_EQ(spec, reinterpret_cast<Spec*>(0x1));
    // A bad flag is found after the record is cleared: it stays untagged.
    mem.fill(0x33);
    EXPECT_EQ(Api<T>::init(&spec, 8, 3, mem.data(), nullptr), zvpStsFftFlagErr);
    EXPECT_EQ(spec, reinterpret_cast<Spec*>(0x1));
    const auto* cleared = reinterpret_cast<const Spec*>(mem.data());
    T buf[256] = {};
    EXPECT_EQ(Api<T>::fwd(Layout::Pack, buf, buf, cleared, nullptr), zvpStsContextMatchErr);
    EXPECT_EQ(Api<T>::release(const_cast<Spec*>(cleared)), zvpStsContextMatchErr);
    // From order 11 the init memory is required.
    std::vector<Zvp8u> big(1 << 20);
    EXPECT_EQ(Api<T>::init(&spec, 11, 8, big.data(), nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::init(&spec, 10, 8, big.data(), nullptr), zvpStsNoErr);
    EXPECT_EQ(Api<T>::initAlloc(nullptr, 5, 8), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::initAlloc(&spec, 5, 16), zvpStsFftFlagErr);
    EXPECT_EQ(Api<T>::initAlloc(&spec, 31, 8), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::release(nullptr), zvpStsNullPtrErr);
    int n = 0;
    EXPECT_EQ(Api<T>::bufSize(nullptr, &n), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::bufSize(spec, nullptr), zvpStsNullPtrErr);
}

TYPED_TEST(FftRealTest, TransformErrorsWriteNothing) {
    using T = TypeParam;
    using Spec = typename Api<T>::Spec;
    for (int m : {3, 6, 9}) {
        Plan<T> p(m, ZVP_FFT_NODIV_BY_ANY);
        const int n = 1 << m;
        std::vector<T> x(n + 2, T(1));
        for (Layout l : kLayouts) {
            GuardedBuffer d(sizeof(T) * (n + 2));
            // The spec comes first, then its tag, then the vectors.
            EXPECT_EQ(Api<T>::fwd(l, nullptr, nullptr, nullptr, nullptr), zvpStsNullPtrErr);
            EXPECT_EQ(Api<T>::fwd(l, nullptr, d.as<T>(), p.spec, nullptr), zvpStsNullPtrErr);
            EXPECT_EQ(Api<T>::inv(l, x.data(), nullptr, p.spec, nullptr), zvpStsNullPtrErr);
            EXPECT_EQ(Api<T>::fwdI(l, nullptr, p.spec, nullptr), zvpStsNullPtrErr);
            EXPECT_EQ(Api<T>::invI(l, nullptr, nullptr, nullptr), zvpStsNullPtrErr);
            EXPECT_TRUE(d.untouched());
        }
    }
    // Another type's spec, and a released one, fail on the tag before the vectors.
    typename Api<T>::Spec* spec = nullptr;
    ASSERT_EQ(Api<T>::initAlloc(&spec, 7, ZVP_FFT_NODIV_BY_ANY), zvpStsNoErr);
    GuardedBuffer d(sizeof(T) * 130);
    using Other = std::conditional_t<std::is_same_v<T, float>, double, float>;
    typename Api<Other>::Spec* other = nullptr;
    ASSERT_EQ(Api<Other>::initAlloc(&other, 7, ZVP_FFT_NODIV_BY_ANY), zvpStsNoErr);
    const auto* wrong = reinterpret_cast<const Spec*>(other);
    for (Layout l : kLayouts) {
        EXPECT_EQ(Api<T>::fwd(l, nullptr, d.as<T>(), wrong, nullptr), zvpStsContextMatchErr);
        EXPECT_EQ(Api<T>::invI(l, d.as<T>(), wrong, nullptr), zvpStsContextMatchErr);
    }
    int bytes = 0;
    EXPECT_EQ(Api<T>::bufSize(wrong, &bytes), zvpStsContextMatchErr);
    EXPECT_EQ(Api<T>::release(reinterpret_cast<Spec*>(other)), zvpStsContextMatchErr);
    EXPECT_EQ(Api<Other>::release(other), zvpStsNoErr);
    EXPECT_EQ(Api<T>::release(spec), zvpStsNoErr);
    // A record in caller memory stays readable after its release: the tag is
    // cleared, so a second release and any later use report the context
    // error. (An allocated record is freed by its release; releasing it again
    // would read freed memory.)
    int s = 0, i = 0, w = 0;
    ASSERT_EQ(Api<T>::getSize(7, ZVP_FFT_NODIV_BY_ANY, &s, &i, &w), zvpStsNoErr);
    std::vector<Zvp8u> specMem(s), initMem(i + 1);
    typename Api<T>::Spec* local = nullptr;
    ASSERT_EQ(Api<T>::init(&local, 7, ZVP_FFT_NODIV_BY_ANY, specMem.data(), initMem.data()), zvpStsNoErr);
    EXPECT_EQ(Api<T>::release(local), zvpStsNoErr);
    EXPECT_EQ(Api<T>::release(local), zvpStsContextMatchErr);
    const std::vector<T> ones(128, T(1));
    EXPECT_EQ(Api<T>::fwd(Layout::Ccs, ones.data(), d.as<T>(), local, nullptr), zvpStsContextMatchErr);
    EXPECT_TRUE(d.untouched());
}

}  // namespace

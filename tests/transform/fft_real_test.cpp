// Real-input FFT through the public interface, single and double precision:
// one accuracy test per order over both types, every flag and the three
// layouts against the long-double reference, with in place and the internal
// work memory bit for bit equal to the plain call; the layouts at N = 1, 2, 8,
// the size rules, specs in exactly the reported bytes, and the errors.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "fft_error.h"
#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
using zvp::test::cld;

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
std::vector<cld> unpack(const T* v, Layout l, int n) {
    std::vector<cld> X(n / 2 + 1);
    for (int k = 0; k <= n / 2; ++k) X[k] = {v[reIndex(l, n, k)], imIndex(l, n, k) < 0 ? T(0) : v[imIndex(l, n, k)]};
    return X;
}

template <class T>
double relErrReal(const T* got, const std::vector<float>& want) {
    return zvp::test::relativeL2(std::vector<cld>(got, got + want.size()), std::vector<cld>(want.begin(), want.end()));
}

template <class T>
class FftRealTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(FftRealTest, Types);

// ---- accuracy, layouts, forms -------------------------------------------------------

// The half spectrum X[0 .. N/2] (both halves of the full spectrum weigh the
// same, so the half is representative) within the bound; the inverse
// returns the signal times 1 (flags 1, 2, 4) or N (flag 8). In place and
// without a work buffer the same bits; into an unaligned destination within
// the bound of the plain result.
template <class T>
void checkOrder(int m, const std::vector<cld>& want) {
    const int n = 1 << m;
    const auto xs = signal(m);
    const std::vector<T> x(xs.begin(), xs.end());
    const double bound = zvp::test::fftBound<T>(m);
    for (int flag : {ZVP_FFT_NODIV_BY_ANY, ZVP_FFT_DIV_FWD_BY_N, ZVP_FFT_DIV_INV_BY_N, ZVP_FFT_DIV_BY_SQRTN}) {
        if (flag != ZVP_FFT_NODIV_BY_ANY && m > 14) break;
        const double fs = flag == ZVP_FFT_DIV_FWD_BY_N ? 1.0 / n : flag == ZVP_FFT_DIV_BY_SQRTN ? 1 / std::sqrt(n) : 1;
        std::vector<cld> w = want;
        for (auto& v : w) v *= fs;
        Plan<T> plan(m, flag);
        for (Layout l : kLayouts) {
            SCOPED_TRACE(::testing::Message() << (sizeof(T) == 4 ? "32f" : "64f") << " order " << m << " flag "
                                              << flag << " layout " << int(l));
            const int nv = layoutValues(l, n);
            GuardedBuffer out(sizeof(T) * nv);
            ASSERT_EQ(Api<T>::fwd(l, x.data(), out.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
            EXPECT_TRUE(out.guardsIntact());
            EXPECT_LT(zvp::test::relativeL2(unpack(out.as<T>(), l, n), w), bound);
            std::vector<T> v(nv), nb(nv);
            std::copy(x.begin(), x.end(), v.begin());
            ASSERT_EQ(Api<T>::fwdI(l, v.data(), plan.spec, plan.buf()), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(v.data(), out.data(), sizeof(T) * nv), 0) << "in place";
            if (m <= 20) {
                ASSERT_EQ(Api<T>::fwd(l, x.data(), nb.data(), plan.spec, nullptr), zvpStsNoErr);
                EXPECT_EQ(std::memcmp(nb.data(), out.data(), sizeof(T) * nv), 0) << "internal work memory";
                GuardedBuffer src(sizeof(T) * n, sizeof(T)), dst(sizeof(T) * nv, 3 * sizeof(T));
                std::copy(x.begin(), x.end(), src.as<T>());
                ASSERT_EQ(Api<T>::fwd(l, src.as<T>(), dst.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
                EXPECT_TRUE(dst.guardsIntact());
                EXPECT_LT(zvp::test::relativeL2(unpack(dst.as<T>(), l, n), unpack(out.as<T>(), l, n)), 4 * bound);
            }
            GuardedBuffer back(sizeof(T) * n);
            ASSERT_EQ(Api<T>::inv(l, out.as<T>(), back.as<T>(), plan.spec, plan.buf()), zvpStsNoErr);
            EXPECT_TRUE(back.guardsIntact());
            if (flag == ZVP_FFT_NODIV_BY_ANY)
                for (int i = 0; i < n; ++i) back.as<T>()[i] /= n;
            EXPECT_LT(relErrReal(back.as<T>(), xs), bound);
            if (flag == ZVP_FFT_NODIV_BY_ANY) {
                ASSERT_EQ(Api<T>::invI(l, v.data(), plan.spec, plan.buf()), zvpStsNoErr);
                for (int i = 0; i < n; ++i) v[i] /= n;
                EXPECT_EQ(std::memcmp(v.data(), back.data(), sizeof(T) * n), 0) << "inverse in place";
                if (m > 20) continue;
                ASSERT_EQ(Api<T>::inv(l, out.as<T>(), nb.data(), plan.spec, nullptr), zvpStsNoErr);
                for (int i = 0; i < n; ++i) nb[i] /= n;
                EXPECT_EQ(std::memcmp(nb.data(), back.data(), sizeof(T) * n), 0) << "inverse, internal memory";
            }
        }
    }
}

class FftRealOrders : public ::testing::TestWithParam<int> {};

TEST_P(FftRealOrders, BothPrecisionsEveryFlagAndLayoutAgainstTheReference) {
    const int m = GetParam();
    const auto xs = signal(m);
    std::vector<cld> want(xs.begin(), xs.end());
    zvp::test::longDoubleFft(want, -1);
    want.resize(xs.size() / 2 + 1);
    checkOrder<float>(m, want);
    checkOrder<double>(m, want);
}

INSTANTIATE_TEST_SUITE_P(Orders, FftRealOrders, ::testing::ValuesIn(zvp::test::fftOrders()));

TYPED_TEST(FftRealTest, LayoutTablesForOneTwoAndEight) {
    using T = TypeParam;
    // x[n] = n: X[k] = -4 + 4i cot(pi k/8) for k = 1 .. 3, X[0] = 28, X[4] = -4.
    const double c1 = 4 / std::tan(M_PI / 8), c3 = 4 / std::tan(3 * M_PI / 8);
    const std::vector<double> want[3][3] = {
        {{2.5, 0}, {4, 0, 2, 0}, {28, 0, -4, c1, -4, 4, -4, c3, -4, 0}},  // CCS
        {{2.5}, {4, 2}, {28, -4, c1, -4, 4, -4, c3, -4}},                 // Pack
        {{2.5}, {4, 2}, {28, -4, -4, c1, -4, 4, -4, c3}}};                // Perm
    const T x[3][8] = {{T(2.5)}, {3, 1}, {0, 1, 2, 3, 4, 5, 6, 7}};
    for (int i = 0; i < 3; ++i) {
        const int m = i == 2 ? 3 : i;
        Plan<T> p(m, ZVP_FFT_NODIV_BY_ANY);
        for (int l = 0; l < 3; ++l) {
            std::vector<T> d(10, T(99));
            ASSERT_EQ(Api<T>::fwd(kLayouts[l], x[i], d.data(), p.spec, nullptr), zvpStsNoErr);
            for (std::size_t j = 0; j < 10; ++j)
                if (j < want[l][i].size())
                    EXPECT_NEAR(d[j], want[l][i][j], 64 * std::numeric_limits<T>::epsilon()) << l << " " << m;
                else
                    EXPECT_EQ(d[j], T(99)) << l << " " << m;  // nothing past the layout
        }
    }
}

// Large orders: inverse of forward and in place, without the reference.
TYPED_TEST(FftRealTest, LargeOrderRoundTrips) {
    using T = TypeParam;
    if (zvp::test::fftQuick()) GTEST_SKIP() << "quick run";
    for (int m : {23, 24}) {
        if (m == 24 && sizeof(T) == 8) continue;  // 128 MiB vectors: the single type covers it
        const auto xs = signal(m);
        std::vector<T> v(xs.begin(), xs.end());
        v.resize(v.size() + 2);
        Plan<T> p(m, ZVP_FFT_DIV_INV_BY_N);
        const Layout l = m == 23 ? Layout::Ccs : Layout::Pack;
        ASSERT_EQ(Api<T>::fwdI(l, v.data(), p.spec, p.buf()), zvpStsNoErr);
        ASSERT_EQ(Api<T>::invI(l, v.data(), p.spec, nullptr), zvpStsNoErr);
        EXPECT_LT(relErrReal(v.data(), xs), zvp::test::fftBound<T>(m)) << m;
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

TYPED_TEST(FftRealTest, SizesAtEveryOrderAndCheckOrder) {
    using T = TypeParam;
    int s = -1, i = -1, w = -1;
    for (int m = 0; m <= 30; ++m) {
        const ZvpStatus st = Api<T>::getSize(m, ZVP_FFT_DIV_BY_SQRTN, &s, &i, &w);
        if (m > Api<T>::maxOrder) {
            EXPECT_EQ(st, zvpStsFftOrderErr) << m;
            continue;
        }
        ASSERT_EQ(st, zvpStsNoErr);
        int es = 0, ei = 0, ew = 0;
        expectedSizes<T>(m, es, ei, ew);
        EXPECT_EQ(s, es) << m;
        EXPECT_EQ(i, ei) << m;
        EXPECT_EQ(w, ew) << m;
    }
    // order (unsigned, against 30), outputs, flag, then the type's limit
    s = i = w = -1;
    EXPECT_EQ(Api<T>::getSize(-1, 3, nullptr, nullptr, nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::getSize(31, 8, &s, &i, &w), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::getSize(5, 3, nullptr, &i, &w), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::getSize(5, 0, &s, &i, &w), zvpStsFftFlagErr);
    EXPECT_EQ(Api<T>::getSize(30, 3, &s, &i, &w), zvpStsFftFlagErr);
    EXPECT_EQ(s + i + w, -3);
}

// Specs built in exactly the reported bytes, at misalignments 1, 0 and 40,
// with guards after the spec, the init memory (scratch: spoiled after init)
// and the work memory; the same bits as a transform on an allocated spec.
TYPED_TEST(FftRealTest, SpecFitsTheReportedBytes) {
    using T = TypeParam;
    for (int m : zvp::test::fftOrders()) {
        int s = 0, i = 0, w = 0;
        ASSERT_EQ(Api<T>::getSize(m, ZVP_FFT_DIV_FWD_BY_N, &s, &i, &w), zvpStsNoErr);
        for (std::size_t mis : {std::size_t(1), std::size_t(0), std::size_t(40)}) {
            SCOPED_TRACE(::testing::Message() << "order " << m << " misalign " << mis);
            GuardedBuffer specMem(s, mis), initMem(i, mis);
            typename Api<T>::Spec* spec = nullptr;
            ASSERT_EQ(Api<T>::init(&spec, m, ZVP_FFT_DIV_FWD_BY_N, specMem.data(), i ? initMem.data() : nullptr),
                      zvpStsNoErr);
            EXPECT_TRUE(specMem.guardsIntact() && initMem.guardsIntact());
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(spec) % 64, 0u);
            int bs = -1;
            ASSERT_EQ(Api<T>::bufSize(spec, &bs), zvpStsNoErr);
            EXPECT_EQ(bs, w);
            initMem.fill(0xEE);
            if (m <= 16 || mis == 1) {
                const int n = 1 << m;
                const auto xs = signal(m);
                const std::vector<T> x(xs.begin(), xs.end());
                GuardedBuffer work(w, mis), out(sizeof(T) * n);
                ASSERT_EQ(Api<T>::fwd(Layout::Perm, x.data(), out.as<T>(), spec, w ? work.data() : nullptr),
                          zvpStsNoErr);
                EXPECT_TRUE(work.guardsIntact() && specMem.guardsIntact());
                Plan<T> p(m, ZVP_FFT_DIV_FWD_BY_N);
                std::vector<T> ref(n);
                ASSERT_EQ(Api<T>::fwd(Layout::Perm, x.data(), ref.data(), p.spec, p.buf()), zvpStsNoErr);
                EXPECT_EQ(std::memcmp(ref.data(), out.data(), sizeof(T) * n), 0);
            }
            // A spec in caller memory may be released: the tag is cleared, so
            // a second release and any later use report the context error.
            EXPECT_EQ(Api<T>::release(spec), zvpStsNoErr);
            EXPECT_EQ(Api<T>::release(spec), zvpStsContextMatchErr);
            T buf[4] = {};
            EXPECT_EQ(Api<T>::fwd(Layout::Ccs, buf, buf, spec, nullptr), zvpStsContextMatchErr);
        }
    }
}

TYPED_TEST(FftRealTest, ErrorsAndTheirOrderWriteNothing) {
    using T = TypeParam;
    using Spec = typename Api<T>::Spec;
    GuardedBuffer mem(1 << 16);
    Spec* spec = reinterpret_cast<Spec*>(0x1);
    EXPECT_EQ(Api<T>::init(nullptr, 40, 3, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(Api<T>::init(&spec, -1, 8, mem.data(), nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::init(&spec, Api<T>::maxOrder + 1, 8, mem.data(), nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Api<T>::init(&spec, 3, 3, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_TRUE(mem.untouched());
    // A bad flag is found after the record is cleared: it stays untagged.
    mem.fill(0x33);
    EXPECT_EQ(Api<T>::init(&spec, 8, 3, mem.data(), nullptr), zvpStsFftFlagErr);
    EXPECT_EQ(spec, reinterpret_cast<Spec*>(0x1));
    auto* cleared = reinterpret_cast<Spec*>(mem.data());
    T buf[256] = {};
    EXPECT_EQ(Api<T>::fwd(Layout::Pack, buf, buf, cleared, nullptr), zvpStsContextMatchErr);
    EXPECT_EQ(Api<T>::release(cleared), zvpStsContextMatchErr);
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
    // Transforms: the spec comes first, then its tag, then the vectors.
    Plan<T> p(6, ZVP_FFT_NODIV_BY_ANY);
    using Other = std::conditional_t<std::is_same_v<T, float>, double, float>;
    Plan<Other> other(6, ZVP_FFT_NODIV_BY_ANY);
    const auto* wrong = reinterpret_cast<const Spec*>(other.spec);
    GuardedBuffer d(sizeof(T) * 66);
    for (Layout l : kLayouts) {
        EXPECT_EQ(Api<T>::fwd(l, nullptr, nullptr, nullptr, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Api<T>::fwd(l, nullptr, d.as<T>(), p.spec, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Api<T>::inv(l, buf, nullptr, p.spec, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Api<T>::fwdI(l, nullptr, p.spec, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Api<T>::invI(l, nullptr, nullptr, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Api<T>::fwd(l, nullptr, d.as<T>(), wrong, nullptr), zvpStsContextMatchErr);
        EXPECT_EQ(Api<T>::invI(l, d.as<T>(), wrong, nullptr), zvpStsContextMatchErr);
    }
    EXPECT_TRUE(d.untouched());
    EXPECT_EQ(Api<T>::bufSize(wrong, &n), zvpStsContextMatchErr);
    EXPECT_EQ(Api<T>::release(const_cast<Spec*>(wrong)), zvpStsContextMatchErr);
}

}  // namespace

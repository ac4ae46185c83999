// Complex FFT specifications and transforms of the four complex types, through
// the exported API: sizes, lifecycle and errors, accuracy against independent
// references, scaling, and the equivalence of the different routes (in place,
// out of place, unaligned destination, internal work memory).
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <type_traits>
#include <vector>

#include "fft_error.h"
#include "oracle_dft.h"
#include "oracle_fftl.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;
using cld = std::complex<long double>;

// ---- The four types behind one interface -------------------------------------
//
// Data are handled as interleaved (re, im) arrays of T; the split types copy
// them into two arrays around the call.

template <class T, class Spec, bool SPLIT>
struct TypeBase {
    using Real = T;
    using SpecT = Spec;
    static constexpr bool kSplit = SPLIT;
    static constexpr int kMaxOrder = sizeof(T) == 4 ? 28 : 27;
    static constexpr int kLargeFrom = sizeof(T) == 4 ? 18 : 17;
    static constexpr double kEps = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
};

#define ZVP_TYPE(NAME, T, SUF, SPLIT, TAGV)                                                        \
    struct NAME : TypeBase<T, ZvpsFFTSpec_C_##SUF, SPLIT> {                                        \
        static constexpr const char* kName = #SUF;                                                 \
        static constexpr int kTag = TAGV;                                                          \
        static ZvpStatus getSize(int o, int f, int* a, int* b, int* c) {                           \
            return zvpsFFTGetSize_C_##SUF(o, f, zvpAlgHintNone, a, b, c);                          \
        }                                                                                          \
        static ZvpStatus init(SpecT** s, int o, int f, Zvp8u* m, Zvp8u* b) {                       \
            return zvpsFFTInit_C_##SUF(s, o, f, zvpAlgHintAccurate, m, b);                         \
        }                                                                                          \
        static ZvpStatus initAlloc(SpecT** s, int o, int f) {                                      \
            return zvpsFFTInitAlloc_C_##SUF(s, o, f, zvpAlgHintFast);                              \
        }                                                                                          \
        static ZvpStatus release(SpecT* s) { return zvpsFFTFree_C_##SUF(s); }                      \
        static ZvpStatus bufSize(const SpecT* s, int* b) { return zvpsFFTGetBufSize_C_##SUF(s, b); } \
        static ZvpStatus run(bool inv, const T* x, T* y, int n, const SpecT* s, Zvp8u* b);         \
    };

ZVP_TYPE(C32fc, float, 32fc, false, 4)
ZVP_TYPE(C32f, float, 32f, true, 5)
ZVP_TYPE(C64fc, double, 64fc, false, 7)
ZVP_TYPE(C64f, double, 64f, true, 8)

// Interleaved: x == y runs the _I form.
ZvpStatus C32fc::run(bool inv, const float* x, float* y, int, const SpecT* s, Zvp8u* b) {
    auto* d = reinterpret_cast<Zvp32fc*>(y);
    if (x == y) return inv ? zvpsFFTInv_CToC_32fc_I(d, s, b) : zvpsFFTFwd_CToC_32fc_I(d, s, b);
    auto* src = reinterpret_cast<const Zvp32fc*>(x);
    return inv ? zvpsFFTInv_CToC_32fc(src, d, s, b) : zvpsFFTFwd_CToC_32fc(src, d, s, b);
}
ZvpStatus C64fc::run(bool inv, const double* x, double* y, int, const SpecT* s, Zvp8u* b) {
    auto* d = reinterpret_cast<Zvp64fc*>(y);
    if (x == y) return inv ? zvpsFFTInv_CToC_64fc_I(d, s, b) : zvpsFFTFwd_CToC_64fc_I(d, s, b);
    auto* src = reinterpret_cast<const Zvp64fc*>(x);
    return inv ? zvpsFFTInv_CToC_64fc(src, d, s, b) : zvpsFFTFwd_CToC_64fc(src, d, s, b);
}

// Split: the interleaved buffers are split into four arrays (two when x == y,
// which then runs in place on the same two arrays). The destination arrays
// are offset from 16-byte alignment when y is.
template <class T, class F>
ZvpStatus runSplit(const T* x, T* y, int n, F call) {
    const std::size_t mis = (reinterpret_cast<std::uintptr_t>(y) & 15) / sizeof(T);
    std::vector<T> a(2 * std::size_t(n) + 8), bb(2 * std::size_t(n) + 8);
    T* dr = a.data() + mis;
    T* di = bb.data() + mis;
    if (x == nullptr) return call(nullptr, nullptr, y ? y : nullptr, y ? y + n : nullptr);
    const bool inPlace = x == y;
    std::vector<T> sr(inPlace ? 0 : n), si(inPlace ? 0 : n);
    for (int i = 0; i < n; ++i) {
        (inPlace ? dr : sr.data())[i] = x[2 * i];
        (inPlace ? di : si.data())[i] = x[2 * i + 1];
    }
    const ZvpStatus st = inPlace ? call(dr, di, dr, di) : call(sr.data(), si.data(), dr, di);
    if (st == zvpStsNoErr)
        for (int i = 0; i < n; ++i) {
            y[2 * i] = dr[i];
            y[2 * i + 1] = di[i];
        }
    return st;
}
ZvpStatus C32f::run(bool inv, const float* x, float* y, int n, const SpecT* s, Zvp8u* b) {
    return runSplit(x, y, n, [&](const float* a, const float* c, float* d, float* e) {
        return inv ? zvpsFFTInv_CToC_32f(a, c, d, e, s, b) : zvpsFFTFwd_CToC_32f(a, c, d, e, s, b);
    });
}
ZvpStatus C64f::run(bool inv, const double* x, double* y, int n, const SpecT* s, Zvp8u* b) {
    return runSplit(x, y, n, [&](const double* a, const double* c, double* d, double* e) {
        return inv ? zvpsFFTInv_CToC_64f(a, c, d, e, s, b) : zvpsFFTFwd_CToC_64f(a, c, d, e, s, b);
    });
}

// ---- Independent size rules ----------------------------------------------------------

struct Sz {
    std::int64_t spec, init, work;
};
std::int64_t p2(int k) { return std::int64_t(1) << k; }
std::int64_t f64(std::int64_t v) { return v & ~std::int64_t(63); }

// The size rules restated from their definition: e is the sample size in
// bytes (8 single, 16 double), the large scheme starts at order 18 (single) or
// 17 (double), and each double order behaves like the single order above it.
Sz expectedSizes(int m, bool dbl) {
    const std::int64_t e = dbl ? 16 : 8, n = p2(m);
    const std::int64_t B = f64((n & ~std::int64_t(3)) + 67);
    const std::int64_t base = dbl ? f64((2 * n & ~std::int64_t(7)) + 71) : B;
    const int large = dbl ? 17 : 18;
    if (m <= 5) return {152, 0, 0};
    if (m < large) return {f64(e * n + 71) + B + 192, m <= 10 ? 0 : base + 64, f64(e * n + 63) + 64};
    const int ms = dbl ? m + 1 : m;  // the single-precision order of the same byte size
    const int b = ms <= 20 ? 4 : 8, c = ms <= 20 ? 10 : 14, s = m - b;
    std::int64_t spec0, work0;
    if (s < large) {
        spec0 = f64(e * p2(s) + 71);
        work0 = f64(e * p2(s) + 63);
    } else {  // rows of 2^s points: rows of 2^(s-4) points and a 16-row column pass
        spec0 = f64(e * p2(s - 4) + 71) + e * p2(s - 1);
        work0 = std::max(f64(e * p2(s - 4) + 63), e * p2(10));
    }
    spec0 += e * p2(m - 1);
    work0 = std::max(work0, e * p2(c));
    if (m > large) {
        spec0 += 4160 + 4 * p2(m - 12);
        work0 = std::max(work0, 8192 * e);
    } else {
        spec0 += B;
    }
    return {spec0 + 192, base + 64, work0 + 64};
}

// ---- Data helpers -------------------------------------------------------------------

// Values are drawn as floats so that every type transforms the same signal
// and one reference serves all four.
template <class T>
std::vector<T> randomSignal(int order, unsigned seed) {
    std::mt19937 rng(seed + 977u * unsigned(order));
    std::uniform_real_distribution<float> u(-1.0f, 1.0f);
    std::vector<T> x(2 * (std::size_t(1) << order));
    for (auto& v : x) v = T(u(rng));
    return x;
}

// The naive forward DFT in long double, X[k] = sum x[j] w^(jk mod N), with the
// N roots w^r = exp(-2 pi i r / N) computed once each by the long-double
// cosine and sine (the same sums as oracle_dft.h's naiveDft, without
// evaluating the functions N^2 times).
std::vector<cld> naiveDftByTable(const std::vector<cld>& x) {
    const std::size_t n = x.size();
    const long double twoPi = 6.283185307179586476925286766559L;
    std::vector<cld> w(n), out(n);
    for (std::size_t r = 0; r < n; ++r) {
        const long double a = -twoPi * static_cast<long double>(r) / static_cast<long double>(n);
        w[r] = {std::cos(a), std::sin(a)};
    }
    for (std::size_t k = 0; k < n; ++k) {
        long double re = 0, im = 0;
        for (std::size_t j = 0, r = 0; j < n; ++j, r = (r + k) & (n - 1)) {
            re += x[j].real() * w[r].real() - x[j].imag() * w[r].imag();
            im += x[j].real() * w[r].imag() + x[j].imag() * w[r].real();
        }
        out[k] = {re, im};
    }
    return out;
}

// Reference forward spectrum of the signal x (given in the precision of the
// type under test), exact to long-double accuracy.
template <class T>
std::vector<cld> referenceSpectrum(const std::vector<T>& x) {
    const std::size_t n = x.size() / 2;
    std::vector<cld> z(n);
    for (std::size_t i = 0; i < n; ++i) z[i] = {x[2 * i], x[2 * i + 1]};
    if (n <= 1024) return naiveDftByTable(z);
    zvp::test::longDoubleFft(z, -1);
    return z;
}

template <class T>
double relErr(const std::vector<T>& y, const std::vector<cld>& want, bool conj = false) {
    std::vector<cld> got(want.size());
    for (std::size_t i = 0; i < want.size(); ++i) got[i] = {y[2 * i], conj ? -y[2 * i + 1] : y[2 * i + 1]};
    return zvp::test::relativeL2(got, want);
}

template <class Ty>
double bound(int order) {
    return zvp::test::fftBound<typename Ty::Real>(order);
}

// An owned spec in caller memory (exact reported sizes) plus a work buffer.
template <class Ty>
struct Built {
    std::vector<Zvp8u> mem, init, work;
    typename Ty::SpecT* spec = nullptr;
    Built(int order, int flag) {
        int a = 0, b = 0, c = 0;
        EXPECT_EQ(Ty::getSize(order, flag, &a, &b, &c), zvpStsNoErr);
        mem.resize(std::size_t(a));
        init.resize(std::size_t(b));
        work.resize(std::size_t(c));
        EXPECT_EQ(Ty::init(&spec, order, flag, mem.data(), b ? init.data() : nullptr), zvpStsNoErr);
    }
    Zvp8u* buf() { return work.empty() ? nullptr : work.data(); }
};

template <class Ty>
class FftComplex : public ::testing::Test {};
using Types = ::testing::Types<C32fc, C32f, C64fc, C64f>;
struct TypeNames {
    template <class Ty>
    static std::string GetName(int) {
        return Ty::kName;
    }
};
TYPED_TEST_SUITE(FftComplex, Types, TypeNames);

// ---- Sizes ------------------------------------------------------------------------

TYPED_TEST(FftComplex, SizesFollowTheRulesAtEveryOrder) {
    using Ty = TypeParam;
    for (int m = 0; m <= 30; ++m)
        for (int flag : {1, 2, 4, 8}) {
            int a = -1, b = -1, c = -1;
            const ZvpStatus st = Ty::getSize(m, flag, &a, &b, &c);
            if (m > Ty::kMaxOrder) {
                EXPECT_EQ(st, zvpStsFftOrderErr) << m;
                EXPECT_EQ(a, -1);
                continue;
            }
            ASSERT_EQ(st, zvpStsNoErr) << m;
            const Sz z = expectedSizes(m, sizeof(typename Ty::Real) == 8);
            EXPECT_EQ(a, z.spec) << "order " << m;
            EXPECT_EQ(b, z.init) << "order " << m;
            EXPECT_EQ(c, z.work) << "order " << m;
        }
}

TYPED_TEST(FftComplex, SizeQueryChecksInOrder) {
    using Ty = TypeParam;
    int a = -1, b = -1, c = -1;
    // order taken as unsigned first, then the pointers, then the flag, then the type's limit
    EXPECT_EQ(Ty::getSize(-1, 8, nullptr, nullptr, nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Ty::getSize(31, 3, &a, &b, &c), zvpStsFftOrderErr);
    EXPECT_EQ(Ty::getSize(5, 8, &a, nullptr, &c), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::getSize(30, 3, nullptr, &b, &c), zvpStsNullPtrErr);
    for (int badFlag : {0, 3, 5, 16, -1})
        EXPECT_EQ(Ty::getSize(5, badFlag, &a, &b, &c), zvpStsFftFlagErr);
    EXPECT_EQ(Ty::getSize(Ty::kMaxOrder + 1, 3, &a, &b, &c), zvpStsFftFlagErr);
    EXPECT_EQ(Ty::getSize(Ty::kMaxOrder + 1, 2, &a, &b, &c), zvpStsFftOrderErr);
    EXPECT_EQ(a, -1);
    EXPECT_EQ(b, -1);
    EXPECT_EQ(c, -1);
}

// ---- Lifecycle and errors ---------------------------------------------------------------

TYPED_TEST(FftComplex, InitChecksInOrderAndBadFlagLeavesTagZero) {
    using Ty = TypeParam;
    using T = typename Ty::Real;
    typename Ty::SpecT* spec = nullptr;
    std::vector<Zvp8u> mem(4096 + 64), init(4096);
    EXPECT_EQ(Ty::init(nullptr, 40, 3, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::init(&spec, -1, 8, nullptr, nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Ty::init(&spec, Ty::kMaxOrder + 1, 8, mem.data(), init.data()), zvpStsFftOrderErr);
    EXPECT_EQ(Ty::init(&spec, 3, 8, nullptr, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(spec, nullptr);

    // A good record first, then a refused flag on the same memory: cleared, tag 0.
    ASSERT_EQ(Ty::init(&spec, 3, 8, mem.data(), nullptr), zvpStsNoErr);
    auto* first = spec;
    EXPECT_EQ(Ty::init(&spec, 3, 3, mem.data(), nullptr), zvpStsFftFlagErr);
    EXPECT_EQ(spec, first);
    std::vector<T> x(16, T(1)), y(16, T(7));
    EXPECT_EQ(Ty::run(false, x.data(), y.data(), 8, first, nullptr), zvpStsContextMatchErr);
    EXPECT_EQ(y, std::vector<T>(16, T(7)));
    int bs = -1;
    EXPECT_EQ(Ty::bufSize(first, &bs), zvpStsContextMatchErr);
    EXPECT_EQ(bs, -1);

    // Orders 6 to 10 need no init memory; from 11 on it is required.
    std::vector<Zvp8u> big(400000);
    EXPECT_EQ(Ty::init(&spec, 10, 8, big.data(), nullptr), zvpStsNoErr);
    EXPECT_EQ(Ty::init(&spec, 11, 8, big.data(), nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::run(false, x.data(), y.data(), 8, reinterpret_cast<typename Ty::SpecT*>(
                                                        (reinterpret_cast<std::uintptr_t>(big.data()) + 63) & ~std::uintptr_t(63)),
                      nullptr),
              zvpStsContextMatchErr);
}

TYPED_TEST(FftComplex, TransformChecksSpecBeforeDataAndWritesNothing) {
    using Ty = TypeParam;
    using T = typename Ty::Real;
    Built<Ty> b(6, 8);
    std::vector<T> x(128, T(1)), y(128, T(5));
    EXPECT_EQ(Ty::run(false, x.data(), y.data(), 64, nullptr, b.buf()), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::run(true, nullptr, nullptr, 64, nullptr, b.buf()), zvpStsNullPtrErr);
    EXPECT_EQ(y, std::vector<T>(128, T(5)));
    if constexpr (!Ty::kSplit) {
        EXPECT_EQ(Ty::run(false, nullptr, y.data(), 64, b.spec, b.buf()), zvpStsNullPtrErr);
        EXPECT_EQ(Ty::run(false, x.data(), nullptr, 64, b.spec, b.buf()), zvpStsNullPtrErr);
    }
    // A record of another type: context error before the data pointers.
    using Other = std::conditional_t<sizeof(T) == 4 && !Ty::kSplit, C64fc, std::conditional_t<sizeof(T) == 4, C32fc, std::conditional_t<Ty::kSplit, C64fc, C32fc>>>;
    Built<Other> other(6, 8);
    const auto* wrong = reinterpret_cast<const typename Ty::SpecT*>(other.spec);
    EXPECT_EQ(Ty::run(false, nullptr, nullptr, 64, wrong, b.buf()), zvpStsContextMatchErr);
    EXPECT_EQ(Ty::run(false, x.data(), y.data(), 64, wrong, b.buf()), zvpStsContextMatchErr);
    EXPECT_EQ(Ty::run(true, x.data(), y.data(), 64, wrong, b.buf()), zvpStsContextMatchErr);
    EXPECT_EQ(y, std::vector<T>(128, T(5)));
}

TEST(FftComplexSplit, NullDataPointers) {
    Built<C32f> b(4, 8);
    std::vector<float> a(16), c(16), d(16, 3.f), e(16, 3.f);
    EXPECT_EQ(zvpsFFTFwd_CToC_32f(nullptr, c.data(), d.data(), e.data(), b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTFwd_CToC_32f(a.data(), nullptr, d.data(), e.data(), b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTInv_CToC_32f(a.data(), c.data(), nullptr, e.data(), b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTInv_CToC_32f(a.data(), c.data(), d.data(), nullptr, b.spec, nullptr), zvpStsNullPtrErr);
    Built<C64f> b64(4, 8);
    std::vector<double> f(16), g(16, 2.0);
    EXPECT_EQ(zvpsFFTFwd_CToC_64f(f.data(), f.data(), g.data(), nullptr, b64.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTInv_CToC_64f(f.data(), f.data(), g.data(), g.data(),
                                  reinterpret_cast<const ZvpsFFTSpec_C_64f*>(b.spec), nullptr),
              zvpStsContextMatchErr);
    EXPECT_EQ(d, std::vector<float>(16, 3.f));
    EXPECT_EQ(g, std::vector<double>(16, 2.0));
}

TYPED_TEST(FftComplex, AllocFreeAndBufSize) {
    using Ty = TypeParam;
    for (int m : {0, 5, 6, 12, Ty::kLargeFrom, Ty::kLargeFrom + 1}) {
        typename Ty::SpecT* spec = nullptr;
        ASSERT_EQ(Ty::initAlloc(&spec, m, 2), zvpStsNoErr) << m;
        int bs = -1;
        EXPECT_EQ(Ty::bufSize(spec, &bs), zvpStsNoErr);
        EXPECT_EQ(bs, expectedSizes(m, sizeof(typename Ty::Real) == 8).work) << m;
        EXPECT_EQ(Ty::bufSize(spec, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Ty::release(spec), zvpStsNoErr);
    }
    typename Ty::SpecT* spec = nullptr;
    EXPECT_EQ(Ty::initAlloc(nullptr, 3, 8), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::initAlloc(&spec, 3, 7), zvpStsFftFlagErr);
    EXPECT_EQ(Ty::initAlloc(&spec, Ty::kMaxOrder + 1, 8), zvpStsFftOrderErr);
    EXPECT_EQ(spec, nullptr);
    EXPECT_EQ(Ty::release(nullptr), zvpStsNullPtrErr);
    int bs = 0;
    EXPECT_EQ(Ty::bufSize(nullptr, &bs), zvpStsNullPtrErr);

    // A record in caller memory may be released too: the tag is cleared and a
    // second release, like any later use, reports the context error.
    Built<Ty> b(7, 8);
    EXPECT_EQ(Ty::release(b.spec), zvpStsNoErr);
    EXPECT_EQ(Ty::release(b.spec), zvpStsContextMatchErr);
    EXPECT_EQ(Ty::bufSize(b.spec, &bs), zvpStsContextMatchErr);
}

// ---- Record placement ---------------------------------------------------------------------

// The record, init memory and work memory each get exactly the reported
// bytes, at every misalignment class, with guards on both sides; the result
// must match a transform built with generous memory.
TYPED_TEST(FftComplex, RecordFitsTheReportedBytes) {
    using Ty = TypeParam;
    using T = typename Ty::Real;
    for (int m = 0; m <= 20; ++m) {
        int a = 0, b = 0, c = 0;
        ASSERT_EQ(Ty::getSize(m, 4, &a, &b, &c), zvpStsNoErr);
        const std::size_t mis = std::size_t(m * 13) % 64;  // a spread of misalignments
        GuardedBuffer mem(std::size_t(a), mis == 0 ? 1 : mis), init(std::size_t(b), 63 - mis % 32);
        GuardedBuffer work(std::size_t(c), 64 - mis % 64 == 64 ? 0 : 64 - mis % 64);
        typename Ty::SpecT* spec = nullptr;
        ASSERT_EQ(Ty::init(&spec, m, 4, mem.data(), b ? init.data() : nullptr), zvpStsNoErr) << m;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(spec) % 64, 0u);
        const auto x = randomSignal<T>(m, 3);
        std::vector<T> y(x.size()), ref(x.size());
        const int n = 1 << m;
        ASSERT_EQ(Ty::run(false, x.data(), y.data(), n, spec, c ? work.template as<Zvp8u>() : nullptr), zvpStsNoErr);
        EXPECT_TRUE(mem.guardsIntact()) << "record overflow at order " << m;
        EXPECT_TRUE(init.guardsIntact()) << "init overflow at order " << m;
        EXPECT_TRUE(work.guardsIntact()) << "work overflow at order " << m;
        Built<Ty> roomy(m, 4);
        ASSERT_EQ(Ty::run(false, x.data(), ref.data(), n, roomy.spec, roomy.buf()), zvpStsNoErr);
        EXPECT_EQ(y, ref) << m;
    }
}

// ---- Accuracy -----------------------------------------------------------------------------

template <class Ty>
void checkAgainst(int m, const std::vector<cld>& want) {
    using T = typename Ty::Real;
    const auto x = randomSignal<T>(m, 11);
    Built<Ty> b(m, 8);
    const int n = 1 << m;
    std::vector<T> y(x.size());
    ASSERT_EQ(Ty::run(false, x.data(), y.data(), n, b.spec, b.buf()), zvpStsNoErr);
    EXPECT_LE(relErr(y, want), bound<Ty>(m)) << Ty::kName << " forward, order " << m;
    // The inverse of conj(x) is the conjugate of the forward spectrum of x.
    std::vector<T> xc = x;
    for (std::size_t i = 1; i < xc.size(); i += 2) xc[i] = -xc[i];
    ASSERT_EQ(Ty::run(true, xc.data(), y.data(), n, b.spec, b.buf()), zvpStsNoErr);
    EXPECT_LE(relErr(y, want, true), bound<Ty>(m)) << Ty::kName << " inverse, order " << m;
}

TEST(FftComplexAccuracy, EveryTypeAndOrderMatchesTheReference) {
    for (int m = 0; m <= 22; ++m) {
        const auto want = referenceSpectrum(randomSignal<double>(m, 11));
        checkAgainst<C32fc>(m, want);
        checkAgainst<C32f>(m, want);
        checkAgainst<C64fc>(m, want);
        checkAgainst<C64f>(m, want);
    }
}

// Scaling is one multiplication of each output by the stored scale, so a
// scaled transform equals the unscaled one times that value exactly; the
// stored values follow the single-precision rules (double for the double
// types). An impulse shows the value itself.
TYPED_TEST(FftComplex, ScaleValuesAndPlacement) {
    using Ty = TypeParam;
    using T = typename Ty::Real;
    for (int m : {0, 1, 3, 4, 5, 6, 9, 10, 11, 12, 17, Ty::kLargeFrom, 19}) {
        const int n = 1 << m;
        T s1, s4;
        if constexpr (sizeof(T) == 4) {
            s1 = 1.0f / float(n);
            s4 = float(1.0 / std::sqrt(double(n)));
        } else {
            s1 = 1.0 / double(n);
            s4 = 1.0 / std::sqrt(double(n));
        }
        const auto x = randomSignal<T>(m, 5);
        Built<Ty> plain(m, 8), f1(m, 1), f2(m, 2), f4(m, 4);
        std::vector<T> y(x.size()), yf(x.size()), yi(x.size());
        for (bool inv : {false, true}) {
            ASSERT_EQ(Ty::run(inv, x.data(), y.data(), n, plain.spec, plain.buf()), zvpStsNoErr);
            struct Case {
                Built<Ty>* b;
                T s;
                bool scaled;
            } cases[] = {{&f1, s1, !inv}, {&f2, s1, inv}, {&f4, s4, true}};
            for (auto& c : cases) {
                ASSERT_EQ(Ty::run(inv, x.data(), yf.data(), n, c.b->spec, c.b->buf()), zvpStsNoErr);
                for (std::size_t i = 0; i < y.size(); ++i)
                    ASSERT_EQ(yf[i], c.scaled ? T(y[i] * c.s) : y[i]) << "order " << m << " i " << i;
            }
        }
        // impulse: every forward output of flag 4 is the stored scale itself
        std::vector<T> d(x.size(), T(0));
        d[0] = T(1);
        ASSERT_EQ(Ty::run(false, d.data(), yi.data(), n, f4.spec, f4.buf()), zvpStsNoErr);
        for (int k = 0; k < n; ++k) {
            ASSERT_EQ(yi[2 * k], s4) << m;
            ASSERT_EQ(yi[2 * k + 1], T(0)) << m;
        }
    }
}

TYPED_TEST(FftComplex, RoundTripsForEveryFlag) {
    using Ty = TypeParam;
    using T = typename Ty::Real;
    for (int m : {0, 2, 5, 6, 7, 11, 16, Ty::kLargeFrom, 19}) {
        const int n = 1 << m;
        const auto x = randomSignal<T>(m, 9);
        std::vector<cld> want(std::size_t(n), cld(0, 0));
        for (int flag : {1, 2, 4, 8}) {
            const long double f = flag == 8 ? n : 1;
            for (int i = 0; i < n; ++i) want[std::size_t(i)] = cld(x[2 * i], x[2 * i + 1]) * f;
            Built<Ty> b(m, flag);
            std::vector<T> y(x.size()), z(x.size());
            ASSERT_EQ(Ty::run(false, x.data(), y.data(), n, b.spec, b.buf()), zvpStsNoErr);
            ASSERT_EQ(Ty::run(true, y.data(), z.data(), n, b.spec, b.buf()), zvpStsNoErr);
            EXPECT_LE(relErr(z, want), 2 * bound<Ty>(m)) << "flag " << flag << " order " << m;
        }
    }
}

// ---- Routes ------------------------------------------------------------------------------------

// In place, out of place, unaligned destinations and internal work memory
// run the same arithmetic: results agree bit for bit.
template <class Ty>
void routesAgree(int m, bool withUnaligned) {
    using T = typename Ty::Real;
    const int n = 1 << m;
    const auto x = randomSignal<T>(m, 21);
    Built<Ty> b(m, m % 3 == 0 ? 4 : 8);
    // Both directions share their routing code; above order 18 one is enough.
    for (bool inv : {false, true}) {
        if (inv && m > 18) break;
        std::vector<T> ref(x.size());
        ASSERT_EQ(Ty::run(inv, x.data(), ref.data(), n, b.spec, b.buf()), zvpStsNoErr);
        std::vector<T> ip = x;
        ASSERT_EQ(Ty::run(inv, ip.data(), ip.data(), n, b.spec, b.buf()), zvpStsNoErr);
        EXPECT_TRUE(ip == ref) << "in place, order " << m << (inv ? " inverse" : " forward");
        if (m <= 19) {
            std::vector<T> nb(x.size());
            ASSERT_EQ(Ty::run(inv, x.data(), nb.data(), n, b.spec, nullptr), zvpStsNoErr);
            EXPECT_TRUE(nb == ref) << "internal work memory, order " << m;
        }
        if (withUnaligned) {
            // destination 4 or 8 bytes off 16-byte alignment (and the source too)
            std::vector<T> big(x.size() + 8);
            T* src = big.data() + 1;
            std::memcpy(src, x.data(), x.size() * sizeof(T));
            std::vector<T> out(x.size() + 8);
            T* dst = out.data() + (sizeof(T) == 4 ? 1 : 1);
            if (reinterpret_cast<std::uintptr_t>(dst) % 16 == 0) ++dst;
            ASSERT_EQ(Ty::run(inv, src, dst, n, b.spec, b.buf()), zvpStsNoErr);
            EXPECT_TRUE(std::equal(ref.begin(), ref.end(), dst)) << "unaligned, order " << m;
        }
    }
}

TYPED_TEST(FftComplex, RoutesAgreeAtEveryOrder) {
    for (int m = 0; m <= 22; ++m) routesAgree<TypeParam>(m, m <= 20);
}

// The first order where the out-of-place permutation copies first.
TEST(FftComplexLarge, Order23RoutesAgree) { routesAgree<C32fc>(23, false); }

}  // namespace

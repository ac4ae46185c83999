// Complex FFT specifications and transforms of the four complex types, through
// the exported API: sizes, lifecycle and errors, and one accuracy test per
// order over every type and flag against the long-double reference, with the
// routes (in place, unaligned destination, internal work memory) bit for bit
// equal to the plain out-of-place call.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <random>
#include <type_traits>
#include <vector>

#include "fft_error.h"
#include "oracle_dft.h"
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

template <class T>
double relErr(const std::vector<T>& y, const std::vector<cld>& want, bool conj = false) {
    std::vector<cld> got(want.size());
    for (std::size_t i = 0; i < want.size(); ++i) got[i] = {y[2 * i], conj ? -y[2 * i + 1] : y[2 * i + 1]};
    return zvp::test::relativeL2(got, want);
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

// ---- Sizes and lifecycle ------------------------------------------------------------

TYPED_TEST(FftComplex, SizesFollowTheRulesAndChecksComeInOrder) {
    using Ty = TypeParam;
    int a = -1, b = -1, c = -1;
    for (int m = 0; m <= 30; ++m)
        for (int flag : {1, 2, 4, 8}) {
            const ZvpStatus st = Ty::getSize(m, flag, &a, &b, &c);
            if (m > Ty::kMaxOrder) {
                EXPECT_EQ(st, zvpStsFftOrderErr) << m;
                continue;
            }
            ASSERT_EQ(st, zvpStsNoErr) << m;
            const Sz z = expectedSizes(m, sizeof(typename Ty::Real) == 8);
            EXPECT_EQ(a, z.spec) << "order " << m;
            EXPECT_EQ(b, z.init) << "order " << m;
            EXPECT_EQ(c, z.work) << "order " << m;
        }
    // order taken as unsigned first, then the pointers, then the flag, then the type's limit
    a = b = c = -1;
    EXPECT_EQ(Ty::getSize(-1, 8, nullptr, nullptr, nullptr), zvpStsFftOrderErr);
    EXPECT_EQ(Ty::getSize(31, 3, &a, &b, &c), zvpStsFftOrderErr);
    EXPECT_EQ(Ty::getSize(5, 8, &a, nullptr, &c), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::getSize(30, 3, nullptr, &b, &c), zvpStsNullPtrErr);
    for (int badFlag : {0, 3, 5, 16, -1}) EXPECT_EQ(Ty::getSize(5, badFlag, &a, &b, &c), zvpStsFftFlagErr);
    EXPECT_EQ(Ty::getSize(Ty::kMaxOrder + 1, 3, &a, &b, &c), zvpStsFftFlagErr);
    EXPECT_EQ(Ty::getSize(Ty::kMaxOrder + 1, 2, &a, &b, &c), zvpStsFftOrderErr);
    EXPECT_EQ(a + b + c, -3);
}

TYPED_TEST(FftComplex, InitAndTransformErrorsWriteNothing) {
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
    std::vector<T> x(128, T(1)), y(128, T(7));
    EXPECT_EQ(Ty::run(false, x.data(), y.data(), 8, first, nullptr), zvpStsContextMatchErr);
    int bs = -1;
    EXPECT_EQ(Ty::bufSize(first, &bs), zvpStsContextMatchErr);
    EXPECT_EQ(bs, -1);
    // Orders 6 to 10 need no init memory; from 11 on it is required.
    std::vector<Zvp8u> big(400000);
    EXPECT_EQ(Ty::init(&spec, 10, 8, big.data(), nullptr), zvpStsNoErr);
    EXPECT_EQ(Ty::init(&spec, 11, 8, big.data(), nullptr), zvpStsNullPtrErr);
    // Transforms: the spec pointer, then its tag, then the data pointers.
    Built<Ty> b(6, 8);
    EXPECT_EQ(Ty::run(false, x.data(), y.data(), 64, nullptr, b.buf()), zvpStsNullPtrErr);
    EXPECT_EQ(Ty::run(true, nullptr, nullptr, 64, nullptr, b.buf()), zvpStsNullPtrErr);
    if constexpr (!Ty::kSplit) {
        EXPECT_EQ(Ty::run(false, nullptr, y.data(), 64, b.spec, b.buf()), zvpStsNullPtrErr);
        EXPECT_EQ(Ty::run(false, x.data(), nullptr, 64, b.spec, b.buf()), zvpStsNullPtrErr);
    }
    using Other = std::conditional_t<std::is_same_v<Ty, C32fc>, C64fc, C32fc>;
    Built<Other> other(6, 8);
    const auto* wrong = reinterpret_cast<const typename Ty::SpecT*>(other.spec);
    EXPECT_EQ(Ty::run(false, nullptr, nullptr, 64, wrong, b.buf()), zvpStsContextMatchErr);
    EXPECT_EQ(Ty::run(true, x.data(), y.data(), 64, wrong, b.buf()), zvpStsContextMatchErr);
    EXPECT_EQ(y, std::vector<T>(128, T(7)));
}

TEST(FftComplexSplit, NullDataPointers) {
    Built<C32f> b(4, 8);
    std::vector<float> a(16), c(16), d(16, 3.f), e(16, 3.f);
    EXPECT_EQ(zvpsFFTFwd_CToC_32f(nullptr, c.data(), d.data(), e.data(), b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTFwd_CToC_32f(a.data(), nullptr, d.data(), e.data(), b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTInv_CToC_32f(a.data(), c.data(), nullptr, e.data(), b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsFFTInv_CToC_32f(a.data(), c.data(), d.data(), nullptr, b.spec, nullptr), zvpStsNullPtrErr);
    EXPECT_EQ(d, std::vector<float>(16, 3.f));
}

TYPED_TEST(FftComplex, AllocFreeBufSizeAndReleasingTwice) {
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

// The record, init memory and work memory each get exactly the reported
// bytes, at a spread of misalignments, with guards on both sides; the result
// must match a transform built with generous memory.
TYPED_TEST(FftComplex, RecordFitsTheReportedBytes) {
    using Ty = TypeParam;
    using T = typename Ty::Real;
    for (int m : zvp::test::fftOrders(20)) {
        int a = 0, b = 0, c = 0;
        ASSERT_EQ(Ty::getSize(m, 4, &a, &b, &c), zvpStsNoErr);
        const std::size_t mis = std::size_t(m * 13) % 64;
        GuardedBuffer mem(std::size_t(a), mis == 0 ? 1 : mis), init(std::size_t(b), 63 - mis % 32);
        GuardedBuffer work(std::size_t(c), (64 - mis) % 64);
        typename Ty::SpecT* spec = nullptr;
        ASSERT_EQ(Ty::init(&spec, m, 4, mem.data(), b ? init.data() : nullptr), zvpStsNoErr) << m;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(spec) % 64, 0u);
        const auto x = randomSignal<T>(m, 3);
        std::vector<T> y(x.size()), ref(x.size());
        ASSERT_EQ(Ty::run(false, x.data(), y.data(), 1 << m, spec, c ? work.template as<Zvp8u>() : nullptr),
                  zvpStsNoErr);
        EXPECT_TRUE(mem.guardsIntact() && init.guardsIntact() && work.guardsIntact()) << "order " << m;
        Built<Ty> roomy(m, 4);
        ASSERT_EQ(Ty::run(false, x.data(), ref.data(), 1 << m, roomy.spec, roomy.buf()), zvpStsNoErr);
        EXPECT_EQ(y, ref) << m;
    }
}

// ---- Accuracy and routes ------------------------------------------------------------------

// Every type and flag at one order. Flag 8 (no scaling) is held to the error
// bound in both directions (the inverse of conj(x) is the conjugate of the
// forward spectrum of x); a scaled transform is one multiplication of each
// output by the stored scale, so it equals the unscaled one times that value
// exactly (1/N and 1/sqrt(N) rounded to the type, from single-precision
// arithmetic for the single types). In place, the internal work memory and an
// unaligned destination give the same bits as the plain call.
template <class Ty>
void checkOrder(int m, const std::vector<cld>& want) {
    using T = typename Ty::Real;
    SCOPED_TRACE(::testing::Message() << Ty::kName << " order " << m);
    const int n = 1 << m;
    const auto x = randomSignal<T>(m, 11);
    std::vector<T> xc = x;
    for (std::size_t i = 1; i < xc.size(); i += 2) xc[i] = -xc[i];
    T s1, s4;
    if constexpr (sizeof(T) == 4) {
        s1 = 1.0f / float(n);
        s4 = float(1.0 / std::sqrt(double(n)));
    } else {
        s1 = 1.0 / double(n);
        s4 = 1.0 / std::sqrt(double(n));
    }
    std::vector<T> plain[2];
    for (int flag : {8, 1, 2, 4}) {
        if (flag != 8 && m > (zvp::test::fftQuick() ? 18 : 20)) break;
        Built<Ty> b(m, flag);
        for (bool inv : {false, true}) {
            const std::vector<T>& in = inv ? xc : x;
            std::vector<T> y(x.size());
            ASSERT_EQ(Ty::run(inv, in.data(), y.data(), n, b.spec, b.buf()), zvpStsNoErr);
            if (flag == 8) {
                EXPECT_LE(relErr(y, want, inv), zvp::test::fftBound<T>(m)) << (inv ? "inverse" : "forward");
                plain[inv] = y;
            } else {
                const bool scaled = flag == 4 || (flag == 1) != inv;
                const T s = flag == 4 ? s4 : s1;
                for (std::size_t i = 0; i < y.size(); ++i)
                    ASSERT_EQ(y[i], scaled ? T(plain[inv][i] * s) : plain[inv][i]) << "flag " << flag << " i " << i;
            }
            if (flag != 8 && m > 12) continue;  // the routes do not depend on the flag
            std::vector<T> ip = in;
            ASSERT_EQ(Ty::run(inv, ip.data(), ip.data(), n, b.spec, b.buf()), zvpStsNoErr);
            EXPECT_TRUE(ip == y) << "in place, flag " << flag << (inv ? " inverse" : " forward");
            if (m > 20 || (inv && m > 18)) continue;
            std::vector<T> nb(x.size());
            ASSERT_EQ(Ty::run(inv, in.data(), nb.data(), n, b.spec, nullptr), zvpStsNoErr);
            EXPECT_TRUE(nb == y) << "internal work memory";
            // source and destination 4 or 8 bytes off 16-byte alignment
            std::vector<T> src(x.size() + 8), out(x.size() + 8);
            std::memcpy(src.data() + 1, in.data(), in.size() * sizeof(T));
            T* dst = out.data() + (reinterpret_cast<std::uintptr_t>(out.data() + 1) % 16 ? 1 : 2);
            ASSERT_EQ(Ty::run(inv, src.data() + 1, dst, n, b.spec, b.buf()), zvpStsNoErr);
            EXPECT_TRUE(std::equal(y.begin(), y.end(), dst)) << "unaligned";
        }
    }
}

class FftComplexOrders : public ::testing::TestWithParam<int> {};

TEST_P(FftComplexOrders, EveryTypeAndFlagMatchesTheReference) {
    const int m = GetParam();
    const auto x = randomSignal<double>(m, 11);
    std::vector<cld> want(x.size() / 2);
    for (std::size_t i = 0; i < want.size(); ++i) want[i] = {x[2 * i], x[2 * i + 1]};
    zvp::test::longDoubleFft(want, -1);
    checkOrder<C32fc>(m, want);
    checkOrder<C32f>(m, want);
    checkOrder<C64fc>(m, want);
    checkOrder<C64f>(m, want);
}

INSTANTIATE_TEST_SUITE_P(Orders, FftComplexOrders, ::testing::ValuesIn(zvp::test::fftOrders()));

// The first order where the out-of-place permutation copies first.
TEST(FftComplexLarge, Order23InPlaceEqualsOutOfPlace) {
    if (zvp::test::fftQuick()) GTEST_SKIP() << "quick run";
    const int m = 23;
    const auto x = randomSignal<float>(m, 21);
    Built<C32fc> b(m, 8);
    std::vector<float> ref(x.size()), ip = x;
    ASSERT_EQ(C32fc::run(false, x.data(), ref.data(), 1 << m, b.spec, b.buf()), zvpStsNoErr);
    ASSERT_EQ(C32fc::run(false, ip.data(), ip.data(), 1 << m, b.spec, b.buf()), zvpStsNoErr);
    EXPECT_TRUE(ip == ref);
}

}  // namespace

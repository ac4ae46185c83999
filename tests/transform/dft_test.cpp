// DFT of any length through the exported API: the size query against an
// independent restatement of its rules, every kind and precision against a
// long-double reference at every length up to 1100 and a sample of large
// ones, the flags, the routes (in place, caller or internal work memory,
// misaligned record memory) bit for bit equal, and errors that write nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "alloc_count.h"
#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using cld = std::complex<long double>;
using zvp::test::GuardedBuffer;
namespace alloc = zvp::test::alloc;

// ---- References --------------------------------------------------------------
//
// Direct sums in long double over a table of the L roots (each root computed
// from its own reduced index), and for longer lengths Bluestein's identity
// n k = (n^2 + k^2 - (k - n)^2) / 2 through the long-double radix-2 FFT of
// oracle_dft.h: both share nothing with the library.

const long double kTwoPi = 6.283185307179586476925286766559L;

std::vector<cld> rootsOf(std::int64_t n, int sign) {
    std::vector<cld> w(static_cast<std::size_t>(n));
    for (std::int64_t j = 0; j < n; ++j) {
        const long double a = sign * kTwoPi * static_cast<long double>(j) / static_cast<long double>(n);
        w[std::size_t(j)] = {cosl(a), sinl(a)};
    }
    return w;
}

std::vector<cld> reference(const std::vector<cld>& x, int sign) {
    const std::int64_t L = std::int64_t(x.size());
    std::vector<cld> X(x.size());
    if (L <= 4096) {
        const auto w = rootsOf(L, sign);
        for (std::int64_t k = 0; k < L; ++k) {
            cld acc = 0;
            for (std::int64_t n = 0, e = 0; n < L; ++n, e = (e + k) % L) acc += x[std::size_t(n)] * w[std::size_t(e)];
            X[std::size_t(k)] = acc;
        }
        return X;
    }
    std::size_t M = 1;
    while (M < std::size_t(2 * L - 1)) M *= 2;
    std::vector<cld> c(static_cast<std::size_t>(L)), a(M), b(M);
    for (std::int64_t n = 0; n < L; ++n) {
        const long double t = sign * kTwoPi / 2 * static_cast<long double>((n * n) % (2 * L)) / static_cast<long double>(L);
        c[std::size_t(n)] = {cosl(t), sinl(t)};
    }
    for (std::int64_t n = 0; n < L; ++n) a[std::size_t(n)] = x[std::size_t(n)] * c[std::size_t(n)];
    for (std::int64_t n = 0; n < L; ++n) b[std::size_t(n)] = std::conj(c[std::size_t(n)]);
    for (std::int64_t n = 1; n < L; ++n) b[M - std::size_t(n)] = std::conj(c[std::size_t(n)]);
    zvp::test::longDoubleFft(a, -1);
    zvp::test::longDoubleFft(b, -1);
    for (std::size_t i = 0; i < M; ++i) a[i] *= b[i];
    zvp::test::longDoubleFft(a, 1);
    for (std::int64_t k = 0; k < L; ++k) X[std::size_t(k)] = c[std::size_t(k)] * a[std::size_t(k)] / static_cast<long double>(M);
    return X;
}

// Error bound: relative RMS error at most c u log2 L (log2 L taken as at
// least 1). A mixed-radix transform is a product of stages whose radix-p
// butterflies are direct sums of p terms with twiddles rounded once, so each
// stage adds at most about (p - 1) u / log2 p + 2u per level of log2 p; the
// chirp method runs three such transforms of length M <= 4L plus three
// products with rounded chirp values, which stays within c = 9 times log2 L
// for the lengths it serves. The measured worst case over every length up
// to 1100 and the large sample is about 4 u log2 L.
template <class T>
double bound(std::int64_t L) {
    const double u = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
    return 9.0 * u * std::max(1.0, std::log2(double(L)));
}

double relErr(const std::vector<cld>& got, const std::vector<cld>& want) {
    return zvp::test::relativeL2(got, want);
}

// ---- The record types behind one interface ---------------------------------------
//
// Complex data travel as interleaved (re, im) arrays of T; the split kinds
// copy them into two arrays around the call; the real kinds take L reals and
// give CCS (forward) or take CCS and give L reals (inverse).

enum class Form { Inter, Split, Real, OutOrd };

#define ZVP_SPEC_API(SUF)                                                                              \
    static ZvpStatus getSize(int L, int f, int* a, int* b, int* c) {                                \
        return zvpsDFTGetSize_##SUF(L, f, zvpAlgHintNone, a, b, c);                                 \
    }                                                                                               \
    static ZvpStatus init(int L, int f, Spec* s, Zvp8u* m) { return zvpsDFTInit_##SUF(L, f, zvpAlgHintFast, s, m); } \
    static ZvpStatus initAlloc(Spec** s, int L, int f) { return zvpsDFTInitAlloc_##SUF(s, L, f, zvpAlgHintNone); } \
    static ZvpStatus release(Spec* s) { return zvpsDFTFree_##SUF(s); }                              \
    static ZvpStatus bufSize(const Spec* s, int* b) { return zvpsDFTGetBufSize_##SUF(s, b); }

struct C32fc {
    using T = float;
    using Spec = ZvpsDFTSpec_C_32fc;
    static constexpr Form form = Form::Inter;
    ZVP_SPEC_API(C_32fc)
    static ZvpStatus run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {
        auto* src = reinterpret_cast<const Zvp32fc*>(x);
        auto* dst = reinterpret_cast<Zvp32fc*>(y);
        return inv ? zvpsDFTInv_CToC_32fc(src, dst, s, b) : zvpsDFTFwd_CToC_32fc(src, dst, s, b);
    }
};
struct C64fc {
    using T = double;
    using Spec = ZvpsDFTSpec_C_64fc;
    static constexpr Form form = Form::Inter;
    ZVP_SPEC_API(C_64fc)
    static ZvpStatus run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {
        auto* src = reinterpret_cast<const Zvp64fc*>(x);
        auto* dst = reinterpret_cast<Zvp64fc*>(y);
        return inv ? zvpsDFTInv_CToC_64fc(src, dst, s, b) : zvpsDFTFwd_CToC_64fc(src, dst, s, b);
    }
};

template <class T, class F>
ZvpStatus runSplit(const T* x, T* y, int n, F call) {
    if (!x || !y) return call(x, x, y, y);
    std::vector<T> sr(static_cast<std::size_t>(n)), si(sr), dr(sr), di(sr);
    for (int i = 0; i < n; ++i) {
        sr[std::size_t(i)] = x[2 * i];
        si[std::size_t(i)] = x[2 * i + 1];
    }
    const bool inPlace = x == y;
    const ZvpStatus st = inPlace ? call(sr.data(), si.data(), sr.data(), si.data())
                                 : call(sr.data(), si.data(), dr.data(), di.data());
    if (st == zvpStsNoErr)
        for (int i = 0; i < n; ++i) {
            y[2 * i] = (inPlace ? sr : dr)[std::size_t(i)];
            y[2 * i + 1] = (inPlace ? si : di)[std::size_t(i)];
        }
    return st;
}
struct C32f {
    using T = float;
    using Spec = ZvpsDFTSpec_C_32f;
    static constexpr Form form = Form::Split;
    ZVP_SPEC_API(C_32f)
    static ZvpStatus run(bool inv, const T* x, T* y, int n, const Spec* s, Zvp8u* b) {
        return runSplit(x, y, n, [&](const T* a, const T* c, T* d, T* e) {
            return inv ? zvpsDFTInv_CToC_32f(a, c, d, e, s, b) : zvpsDFTFwd_CToC_32f(a, c, d, e, s, b);
        });
    }
};
struct C64f {
    using T = double;
    using Spec = ZvpsDFTSpec_C_64f;
    static constexpr Form form = Form::Split;
    ZVP_SPEC_API(C_64f)
    static ZvpStatus run(bool inv, const T* x, T* y, int n, const Spec* s, Zvp8u* b) {
        return runSplit(x, y, n, [&](const T* a, const T* c, T* d, T* e) {
            return inv ? zvpsDFTInv_CToC_64f(a, c, d, e, s, b) : zvpsDFTFwd_CToC_64f(a, c, d, e, s, b);
        });
    }
};
struct R32f {
    using T = float;
    using Spec = ZvpsDFTSpec_R_32f;
    static constexpr Form form = Form::Real;
    ZVP_SPEC_API(R_32f)
    static ZvpStatus run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {
        return inv ? zvpsDFTInv_CCSToR_32f(x, y, s, b) : zvpsDFTFwd_RToCCS_32f(x, y, s, b);
    }
};
struct R64f {
    using T = double;
    using Spec = ZvpsDFTSpec_R_64f;
    static constexpr Form form = Form::Real;
    ZVP_SPEC_API(R_64f)
    static ZvpStatus run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {
        return inv ? zvpsDFTInv_CCSToR_64f(x, y, s, b) : zvpsDFTFwd_RToCCS_64f(x, y, s, b);
    }
};

// ---- Data helpers ------------------------------------------------------------------

// Values drawn as floats, so every type transforms the same signal.
std::vector<cld> signal(std::int64_t L, unsigned seed, bool real) {
    std::mt19937 rng(seed + 7919u * unsigned(L));
    std::uniform_real_distribution<float> u(-1.0f, 1.0f);
    std::vector<cld> x(static_cast<std::size_t>(L));
    for (auto& v : x) {
        const float re = u(rng), im = u(rng);
        v = {re, real ? 0.0f : im};
    }
    return x;
}

// Length of the data array a transform reads or writes, in T values.
template <class Ty>
std::size_t valuesOf(std::int64_t L, bool spectrum) {
    if (Ty::form != Form::Real) return std::size_t(2 * L);
    return spectrum ? std::size_t(L % 2 ? L + 1 : L + 2) : std::size_t(L);
}

template <class Ty>
std::vector<typename Ty::T> pack(const std::vector<cld>& x, bool spectrum) {
    using T = typename Ty::T;
    std::vector<T> v(valuesOf<Ty>(std::int64_t(x.size()), spectrum));
    if (Ty::form == Form::Real && !spectrum) {
        for (std::size_t i = 0; i < x.size(); ++i) v[i] = T(x[i].real());
    } else if (Ty::form == Form::Real) {
        for (std::size_t k = 0; 2 * k < v.size(); ++k) {
            v[2 * k] = T(x[k].real());
            v[2 * k + 1] = T(x[k].imag());
        }
    } else {
        for (std::size_t i = 0; i < x.size(); ++i) {
            v[2 * i] = T(x[i].real());
            v[2 * i + 1] = T(x[i].imag());
        }
    }
    return v;
}

// Back to L complex values; a CCS half spectrum is expanded by symmetry.
template <class Ty, class T>
std::vector<cld> unpack(const T* v, std::int64_t L, bool spectrum) {
    std::vector<cld> x(static_cast<std::size_t>(L));
    if (Ty::form == Form::Real && !spectrum) {
        for (std::int64_t i = 0; i < L; ++i) x[std::size_t(i)] = {v[i], 0};
    } else if (Ty::form == Form::Real) {
        for (std::int64_t k = 0; 2 * k <= L; ++k) {
            x[std::size_t(k)] = {v[2 * k], v[2 * k + 1]};
            x[std::size_t((L - k) % L)] = {v[2 * k], -static_cast<long double>(v[2 * k + 1])};
        }
    } else {
        for (std::int64_t i = 0; i < L; ++i) x[std::size_t(i)] = {v[2 * i], v[2 * i + 1]};
    }
    return x;
}

// A record in caller memory of exactly the reported sizes, each at an odd
// offset from a 64-byte boundary with guard bytes around it, so a size that is
// too small, or a write outside the record, shows.
template <class Ty>
struct Built {
    GuardedBuffer mem, init, work;
    typename Ty::Spec* spec = nullptr;
    static int sz(std::int64_t L, int flag, int which) {
        int s[3] = {0, 0, 0};
        EXPECT_EQ(Ty::getSize(int(L), flag, &s[0], &s[1], &s[2]), zvpStsNoErr) << L;
        return s[which];
    }
    Built(std::int64_t L, int flag)
        : mem(std::size_t(sz(L, flag, 0)), 8), init(std::size_t(sz(L, flag, 1)), 24),
          work(std::size_t(sz(L, flag, 2)), 40) {
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
    static std::string GetName(int i) {
        const char* n[] = {"C32fc", "C64fc", "C32f", "C64f", "R32f", "R64f"};
        return n[i];
    }
};
TYPED_TEST_SUITE(Dft, Types, TypeNames);

// ---- Accuracy and routes -----------------------------------------------------------

// Forward against the reference; inverse of that result back to L x; the same
// call in place, with internal work memory and from an allocated record must
// give the same bits.
template <class Ty>
void checkLength(std::int64_t L, bool routes) {
    using T = typename Ty::T;
    const bool real = Ty::form == Form::Real;
    const auto x = signal(L, 1, real);
    const auto X = reference(x, -1);
    Built<Ty> b(L, ZVP_FFT_NODIV_BY_ANY);
    auto xs = pack<Ty>(x, false);
    std::vector<T> y(valuesOf<Ty>(L, true)), z(valuesOf<Ty>(L, false));
    ASSERT_EQ(Ty::run(false, xs.data(), y.data(), int(L), b.spec, b.buf()), zvpStsNoErr) << L;
    EXPECT_LE(relErr(unpack<Ty>(y.data(), L, true), X), bound<T>(L)) << "forward, length " << L;
    ASSERT_EQ(Ty::run(true, y.data(), z.data(), int(L), b.spec, b.buf()), zvpStsNoErr) << L;
    std::vector<cld> Lx(x);
    for (auto& v : Lx) v *= static_cast<long double>(L);
    EXPECT_LE(relErr(unpack<Ty>(z.data(), L, false), Lx), 2 * bound<T>(L)) << "inverse, length " << L;
    EXPECT_TRUE(b.mem.guardsIntact() && b.work.guardsIntact()) << L;
    if (!routes) return;
    // in place (the complex kinds; the real kinds change length), internal work memory
    if (!real) {
        std::vector<T> w(xs);
        ASSERT_EQ(Ty::run(false, w.data(), w.data(), int(L), b.spec, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(w.data(), y.data(), y.size() * sizeof(T)), 0) << "in place, length " << L;
        ASSERT_EQ(Ty::run(true, w.data(), w.data(), int(L), b.spec, b.buf()), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(w.data(), z.data(), z.size() * sizeof(T)), 0) << "in place inverse, length " << L;
    }
    typename Ty::Spec* a = nullptr;
    ASSERT_EQ(Ty::initAlloc(&a, int(L), ZVP_FFT_NODIV_BY_ANY), zvpStsNoErr);
    std::vector<T> y2(y.size(), T(9));
    ASSERT_EQ(Ty::run(false, xs.data(), y2.data(), int(L), a, nullptr), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(y2.data(), y.data(), y.size() * sizeof(T)), 0) << "allocated record, length " << L;
    EXPECT_EQ(Ty::release(a), zvpStsNoErr);
}

TYPED_TEST(Dft, EveryLengthUpTo1100AgainstLongDouble) {
    // all lengths for the interleaved kinds, a stride for the others
    const int step = TypeParam::form == Form::Inter ? 1 : 7;
    for (std::int64_t L = 1; L <= 1100; L += (L < 100 ? 1 : step)) checkLength<TypeParam>(L, L % 13 < 3);
}

TYPED_TEST(Dft, LargeLengths) {
    // primes (direct, chirp), products of two large primes, 2^a 3^b 5^c, the
    // boundaries of the methods: 50/51/53, last factor 149 and 151 with and
    // without 4 | L, the end of the convolution table (4095..4097), one above 1e5
    const std::int64_t big = TypeParam::form == Form::Inter ? 100003 : 46080;
    for (std::int64_t L : {std::int64_t(4095), std::int64_t(4097), std::int64_t(298), std::int64_t(596),
                           std::int64_t(604), std::int64_t(302), std::int64_t(1009) * 2, std::int64_t(10007),
                           std::int64_t(101) * 103, std::int64_t(3000), std::int64_t(15552), std::int64_t(46080),
                           std::int64_t(8192), big})
        checkLength<TypeParam>(L, false);
}

// Each flag scales the direction it names, for each method.
TYPED_TEST(Dft, FlagsScaleTheRightDirection) {
    using Ty = TypeParam;
    using T = typename Ty::T;
    for (std::int64_t L : {1, 2, 6, 13, 16, 17, 24, 53, 64, 96, 298, 596}) {
        const auto x = signal(L, 3, Ty::form == Form::Real);
        const auto X = reference(x, -1);
        const long double n = static_cast<long double>(L);
        const struct {
            int flag;
            long double fwd, inv;
        } cases[] = {{1, 1 / n, 1}, {2, 1, 1 / n}, {4, 1 / sqrtl(n), 1 / sqrtl(n)}, {8, 1, 1}};
        for (const auto& c : cases) {
            Built<Ty> b(L, c.flag);
            auto xs = pack<Ty>(x, false);
            std::vector<T> y(valuesOf<Ty>(L, true)), z(valuesOf<Ty>(L, false));
            ASSERT_EQ(Ty::run(false, xs.data(), y.data(), int(L), b.spec, b.buf()), zvpStsNoErr);
            ASSERT_EQ(Ty::run(true, y.data(), z.data(), int(L), b.spec, b.buf()), zvpStsNoErr);
            std::vector<cld> wantY(X), wantZ(x);
            for (auto& v : wantY) v *= c.fwd;
            for (auto& v : wantZ) v *= c.fwd * c.inv * n;
            EXPECT_LE(relErr(unpack<Ty>(y.data(), L, true), wantY), bound<T>(L)) << L << " flag " << c.flag;
            EXPECT_LE(relErr(unpack<Ty>(z.data(), L, false), wantZ), 2 * bound<T>(L)) << L << " flag " << c.flag;
        }
    }
}

}  // namespace

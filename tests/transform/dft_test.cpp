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
    static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_C_32fc(o, 8, zvpAlgHintNone, a, b, c); }
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
    static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_C_64fc(o, 8, zvpAlgHintNone, a, b, c); }
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
    static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_C_32f(o, 8, zvpAlgHintNone, a, b, c); }
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
    static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_C_64f(o, 8, zvpAlgHintNone, a, b, c); }
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
    static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_R_32f(o, 8, zvpAlgHintNone, a, b, c); }
    using Spec = ZvpsDFTSpec_R_32f;
    static constexpr Form form = Form::Real;
    ZVP_SPEC_API(R_32f)
    static ZvpStatus run(bool inv, const T* x, T* y, int, const Spec* s, Zvp8u* b) {
        return inv ? zvpsDFTInv_CCSToR_32f(x, y, s, b) : zvpsDFTFwd_RToCCS_32f(x, y, s, b);
    }
};
struct R64f {
    using T = double;
    static ZvpStatus fftSize(int o, int* a, int* b, int* c) { return zvpsFFTGetSize_R_64f(o, 8, zvpAlgHintNone, a, b, c); }
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

// ---- Size query ----------------------------------------------------------------

struct Sz {
    std::int64_t spec = 0, init = 0, work = 0;
};
std::int64_t r64(std::int64_t v) { return (v + 63) / 64 * 64; }

// The factor list restated from its rule; empty when the length is unsuitable.
std::vector<int> expectedFactors(std::int64_t L) {
    std::int64_t u = L;
    int fours = 0;
    while (u % 4 == 0) u /= 4, ++fours;
    std::vector<int> f;
    if (u % 2 == 0) u /= 2, f.push_back(2);
    f.insert(f.end(), std::size_t(fours), 4);
    auto add = [&f](std::int64_t p) {
        if (p == 3 && f == std::vector<int>{2}) f[0] = 6;
        else f.push_back(int(p));
    };
    for (std::int64_t p = 3; u > 8 && p * p <= u;) {
        if (u % p == 0) {
            add(p);
            u /= p;
        } else if ((p += 2) > 50) {
            return {};
        }
    }
    if (f.empty() || u > (L % 4 == 0 ? 150 : 50)) return {};
    add(u);
    return f;
}

// The three sizes for a length: the reference rule with E-byte samples (8
// single, 16 double), the split and real kinds adding one staging vector.
template <class Ty>
Sz expectedSizes(std::int64_t L) {
    const std::int64_t E = 2 * sizeof(typename Ty::T);
    Sz z;
    z.spec = 576;
    if (L > 16 && (L & (L - 1)) == 0) {
        int a, b, c, m = 0;
        while ((std::int64_t(1) << m) < L) ++m;
        EXPECT_EQ(Ty::fftSize(m, &a, &b, &c), zvpStsNoErr);
        z.spec += r64(a), z.init += r64(b), z.work += r64(c);
    } else if (L > 16 && Ty::form == Form::Real && L % 2 == 0) {
        // real, even: a complex record of L/2 points, the L/2 roots of L,
        // and L/2 + 1 staged values
        const Sz in = sizeof(typename Ty::T) == 4 ? expectedSizes<C32fc>(L / 2) : expectedSizes<C64fc>(L / 2);
        z.spec += r64(in.spec) + r64(E * (L / 2));
        z.init += r64(in.init);
        z.work += r64(in.work) + r64(E * (L / 2 + 1));
    } else if (L > 16) {
        z.init += r64(E * L);
        const auto f = expectedFactors(L);
        if (!f.empty()) {
            std::int64_t sum = 0;
            for (int p : f) sum += p;
            z.spec += r64(E * (L + sum));
            z.work += r64(2 * E * L);
        } else if (L <= 50) {
            z.spec += r64(E * L);
            z.work += r64(E * L);
        } else {
            const std::int64_t tbl[] = {128,  144,  160,  192,  200,  256,  288,  320,  384,  400,  512,
                                        576,  640,  768,  800,  1024, 1152, 1280, 1536, 1600, 2048, 2304,
                                        2560, 3072, 3200, 4096, 4608, 5120, 6144, 6400, 8192};
            std::int64_t M = 1;
            if (2 * L - 1 > 8192)
                while (M < 2 * L - 1) M *= 2;
            else
                M = *std::find_if(std::begin(tbl), std::end(tbl), [&](std::int64_t m) { return m >= 2 * L - 1; });
            const Sz in = sizeof(typename Ty::T) == 4 ? expectedSizes<C32fc>(M) : expectedSizes<C64fc>(M);
            const std::int64_t w = r64(in.work), s = w + E * M + 64;
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

TYPED_TEST(Dft, SizeQueryFollowsTheRule) {
    using Ty = TypeParam;
    const int step = std::is_same_v<Ty, C32fc> ? 1 : 37;
    for (std::int64_t L = 1; L <= 20000; L += step) {
        int a = -1, b = -1, c = -1;
        ASSERT_EQ(Ty::getSize(int(L), L % 4 == 1 ? 1 : 8, &a, &b, &c), zvpStsNoErr);
        const Sz z = expectedSizes<Ty>(L);
        ASSERT_EQ(a, z.spec) << L;
        ASSERT_EQ(b, z.init) << L;
        ASSERT_EQ(c, z.work) << L;
        // the work size of a built record is what the query reported
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

TEST(DftSizes, WorkedExamples) {
    EXPECT_EQ(expectedFactors(18), (std::vector<int>{6, 3}));
    EXPECT_EQ(expectedFactors(96), (std::vector<int>{2, 4, 4, 3}));
    EXPECT_EQ(expectedFactors(596), (std::vector<int>{4, 149}));
    EXPECT_TRUE(expectedFactors(298).empty());
    EXPECT_TRUE(expectedFactors(17).empty());
    EXPECT_TRUE(expectedFactors(4097).empty());
    // 17: direct, table and work of 17 samples; 53: chirp with M = 128
    int a, b, c;
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(17, 8, zvpAlgHintNone, &a, &b, &c), zvpStsNoErr);
    EXPECT_EQ(a, 576 + 192 + 64);
    EXPECT_EQ(b, 192 + 64);
    EXPECT_EQ(c, 192 + 64);
    int ia, ib, ic;
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(128, 8, zvpAlgHintNone, &ia, &ib, &ic), zvpStsNoErr);
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(53, 8, zvpAlgHintNone, &a, &b, &c), zvpStsNoErr);
    EXPECT_EQ(a, 576 + 1024 + 448 + r64(ia) + 64);
    // 1024: the FFT's sizes, each rounded to 64, on top of the fixed part
    ASSERT_EQ(zvpsFFTGetSize_C_32fc(10, 8, zvpAlgHintNone, &ia, &ib, &ic), zvpStsNoErr);
    ASSERT_EQ(zvpsDFTGetSize_C_32fc(1024, 8, zvpAlgHintNone, &a, &b, &c), zvpStsNoErr);
    EXPECT_EQ(a, 576 + r64(ia) + 64);
    EXPECT_EQ(c, r64(ic) + 64);
}

// ---- Errors ------------------------------------------------------------------------

std::int64_t primeAbove(std::int64_t v) {
    for (;; ++v) {
        bool prime = v % 2 != 0;
        for (std::int64_t d = 3; prime && d * d <= v; d += 2) prime = v % d != 0;
        if (prime) return v;
    }
}

TYPED_TEST(Dft, SizeQueryChecksInOrderAndWritesNothing) {
    using Ty = TypeParam;
    const int big = int(primeAbove(std::int64_t(1) << 26));
    const struct {
        bool nullOut;
        int L, flag;
        ZvpStatus want;
    } cases[] = {
        {true, 0, 3, zvpStsNullPtrErr},           // pointers before everything
        {false, 0, 3, zvpStsSizeErr},             // length below 1 before the flag
        {false, -5, 8, zvpStsSizeErr},
        {false, 5, 0, zvpStsFftFlagErr},
        {false, 5, 3, zvpStsFftFlagErr},
        {false, 5, 16, zvpStsFftFlagErr},
        {false, 134217729, 3, zvpStsFftFlagErr},  // the flag before the upper limit
        {false, 134217729, 8, zvpStsSizeErr},
        {false, big, 8, zvpStsSizeErr},           // unsuitable and too long for the chirp
        {false, INT32_MAX, 8, zvpStsSizeErr},
    };
    for (const auto& c : cases) {
        int a = -1, b = -1, w = -1;
        EXPECT_EQ(Ty::getSize(c.L, c.flag, c.nullOut ? nullptr : &a, &b, &w), c.want) << c.L << " " << c.flag;
        EXPECT_EQ(a + b + w, -3);
        GuardedBuffer mem(4096);
        if (!c.nullOut) {
            auto* spec = reinterpret_cast<typename Ty::Spec*>(mem.data());
            EXPECT_EQ(Ty::init(c.L, c.flag, spec, mem.data()), c.want);
        }
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
    // the largest power of two takes the FFT and is accepted by the query
    int a = 0, b = 0, w = 0;
    EXPECT_EQ(Ty::getSize(1 << 20, 8, &a, &b, &w), zvpStsNoErr);
}

TYPED_TEST(Dft, TransformChecksRecordThenDataAndWritesNothing) {
    using Ty = TypeParam;
    using T = typename Ty::T;
    using Other = std::conditional_t<std::is_same_v<Ty, C32fc>, C64fc, C32fc>;
    for (std::int64_t L : {7, 16, 17, 53, 64, 96}) {
        Built<Ty> b(L, 8);
        Built<Other> o(L, 8);
        std::vector<T> x(valuesOf<Ty>(L, true) + 2, T(1));
        auto* wrong = reinterpret_cast<const typename Ty::Spec*>(o.spec);
        const struct {
            const typename Ty::Spec* spec;
            bool nullSrc, nullDst;
            ZvpStatus want;
        } cases[] = {
            {nullptr, true, true, zvpStsNullPtrErr},
            {wrong, true, true, zvpStsContextMatchErr},
            {b.spec, true, false, zvpStsNullPtrErr},
            {b.spec, false, true, zvpStsNullPtrErr},
        };
        for (bool inv : {false, true})
            for (const auto& c : cases) {
                GuardedBuffer dst(valuesOf<Ty>(L, true) * sizeof(T));
                T* d = c.nullDst ? nullptr : dst.as<T>();
                EXPECT_EQ(Ty::run(inv, c.nullSrc ? nullptr : x.data(), d, int(L), c.spec, b.buf()), c.want) << L;
                EXPECT_TRUE(dst.untouched()) << L;
            }
        int bs = -1;
        EXPECT_EQ(Ty::bufSize(wrong, &bs), zvpStsContextMatchErr);
        EXPECT_EQ(Ty::bufSize(b.spec, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Ty::bufSize(nullptr, &bs), zvpStsNullPtrErr);
        EXPECT_EQ(Ty::release(nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(Ty::release(reinterpret_cast<typename Ty::Spec*>(o.spec)), zvpStsContextMatchErr);
        EXPECT_EQ(bs, -1);
        // a record built in caller memory may be released too; then it is refused
        EXPECT_EQ(Ty::release(b.spec), zvpStsNoErr);
        EXPECT_EQ(Ty::release(b.spec), zvpStsContextMatchErr);
        GuardedBuffer dst(valuesOf<Ty>(L, true) * sizeof(T));
        EXPECT_EQ(Ty::run(false, x.data(), dst.as<T>(), int(L), b.spec, b.buf()), zvpStsContextMatchErr);
        EXPECT_TRUE(dst.untouched());
    }
}

// Every allocation of InitAlloc and of a transform without work memory may
// fail: the call reports it, keeps nothing and writes nothing.
TYPED_TEST(Dft, AllocationFailureAtEveryCall) {
    using Ty = TypeParam;
    using T = typename Ty::T;
    for (std::int64_t L : {5, 17, 53, 96, 1024, 4096, 4097}) {
        int k = 1;
        for (;; ++k) {
            typename Ty::Spec* s = nullptr;
            alloc::reset(k);
            const ZvpStatus st = Ty::initAlloc(&s, int(L), 4);
            const int calls = alloc::calls;
            if (st == zvpStsNoErr) {
                EXPECT_LT(calls, k) << L;
                const auto x = pack<Ty>(signal(L, 5, Ty::form == Form::Real), false);
                GuardedBuffer dst(valuesOf<Ty>(L, true) * sizeof(T));
                alloc::calls = 0;  // keep the live count of the record
                alloc::failAt = 1;
                const ZvpStatus ts = Ty::run(false, x.data(), dst.as<T>(), int(L), s, nullptr);
                if (alloc::calls > 0) {
                    EXPECT_EQ(ts, zvpStsMemAllocErr) << L;
                    EXPECT_TRUE(dst.untouched()) << L;
                } else {
                    EXPECT_EQ(ts, zvpStsNoErr) << L;
                }
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

// The power-of-two lengths give exactly the FFT's results.
TEST(DftFft, PowerOfTwoEqualsTheFft) {
    const int L = 1024;
    const auto x = pack<C32fc>(signal(L, 9, false), false);
    for (int flag : {1, 2, 4, 8}) {
        ZvpsDFTSpec_C_32fc* d = nullptr;
        ZvpsFFTSpec_C_32fc* f = nullptr;
        ASSERT_EQ(zvpsDFTInitAlloc_C_32fc(&d, L, flag, zvpAlgHintNone), zvpStsNoErr);
        ASSERT_EQ(zvpsFFTInitAlloc_C_32fc(&f, 10, flag, zvpAlgHintNone), zvpStsNoErr);
        std::vector<Zvp32fc> a(L), b(L), c(L), e(L);
        const auto* src = reinterpret_cast<const Zvp32fc*>(x.data());
        EXPECT_EQ(zvpsDFTFwd_CToC_32fc(src, a.data(), d, nullptr), zvpStsNoErr);
        EXPECT_EQ(zvpsFFTFwd_CToC_32fc(src, b.data(), f, nullptr), zvpStsNoErr);
        EXPECT_EQ(zvpsDFTInv_CToC_32fc(src, c.data(), d, nullptr), zvpStsNoErr);
        EXPECT_EQ(zvpsFFTInv_CToC_32fc(src, e.data(), f, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(a.data(), b.data(), sizeof(Zvp32fc) * L), 0) << flag;
        EXPECT_EQ(std::memcmp(c.data(), e.data(), sizeof(Zvp32fc) * L), 0) << flag;
        zvpsDFTFree_C_32fc(d);
        zvpsFFTFree_C_32fc(f);
    }
}

// ---- Methods against each other ------------------------------------------------------
//
// A length that takes one method against a multiple that takes the mixed
// radix: x stretched by q (x[n] at n q, zeros between) has the spectrum
// X[k mod L] at q L points, so both results must agree within their bounds.
TEST(DftMethods, AgreeThroughStretchedInputs) {
    const struct {
        int L, q;
        const char* what;
    } cases[] = {
        {13, 4, "small vs mixed radix"},    {17, 4, "direct vs mixed radix"},
        {47, 3, "direct vs mixed radix"},   {53, 4, "chirp vs mixed radix"},
        {149, 4, "chirp vs mixed radix"},   {1024, 3, "FFT vs mixed radix"},
        {4097, 2, "chirp vs chirp of another inner length"},
    };
    for (const auto& c : cases) {
        const int Q = c.L * c.q;
        const auto x = signal(c.L, 11, false);
        std::vector<Zvp32fc> a(static_cast<std::size_t>(c.L)), sq(static_cast<std::size_t>(Q)), A(static_cast<std::size_t>(c.L)), B(static_cast<std::size_t>(Q));
        for (int n = 0; n < c.L; ++n) {
            a[std::size_t(n)] = {float(x[std::size_t(n)].real()), float(x[std::size_t(n)].imag())};
            sq[std::size_t(n) * std::size_t(c.q)] = a[std::size_t(n)];
        }
        ZvpsDFTSpec_C_32fc *s1 = nullptr, *s2 = nullptr;
        ASSERT_EQ(zvpsDFTInitAlloc_C_32fc(&s1, c.L, 8, zvpAlgHintNone), zvpStsNoErr);
        ASSERT_EQ(zvpsDFTInitAlloc_C_32fc(&s2, Q, 8, zvpAlgHintNone), zvpStsNoErr);
        ASSERT_EQ(zvpsDFTFwd_CToC_32fc(a.data(), A.data(), s1, nullptr), zvpStsNoErr);
        ASSERT_EQ(zvpsDFTFwd_CToC_32fc(sq.data(), B.data(), s2, nullptr), zvpStsNoErr);
        std::vector<cld> got(static_cast<std::size_t>(Q)), want(static_cast<std::size_t>(Q));
        for (int k = 0; k < Q; ++k) {
            got[std::size_t(k)] = {B[std::size_t(k)].re, B[std::size_t(k)].im};
            want[std::size_t(k)] = {A[std::size_t(k % c.L)].re, A[std::size_t(k % c.L)].im};
        }
        EXPECT_LE(relErr(got, want), bound<float>(c.L) + bound<float>(Q)) << c.L << " " << c.what;
        zvpsDFTFree_C_32fc(s1);
        zvpsDFTFree_C_32fc(s2);
    }
}

// ---- Real layouts ----------------------------------------------------------------

// Pack and Perm carry the CCS values at their places, bit for bit, and their
// inverses give the CCS inverse's bits; the inverses read only those places.
template <class T, class Spec, class F>
void layouts(int L, F fwd) {
    std::vector<T> x(static_cast<std::size_t>(L)), ccs(std::size_t(L) + 2), pk(static_cast<std::size_t>(L)), pm(static_cast<std::size_t>(L));
    std::mt19937 rng{static_cast<unsigned>(L)};
    std::uniform_real_distribution<float> u(-1, 1);
    for (auto& v : x) v = T(u(rng));
    Spec* s = nullptr;
    ASSERT_EQ(fwd.initAlloc(&s, L), zvpStsNoErr);
    ASSERT_EQ(fwd.ccs(x.data(), ccs.data(), s), zvpStsNoErr);
    ASSERT_EQ(fwd.pack(x.data(), pk.data(), s), zvpStsNoErr);
    ASSERT_EQ(fwd.perm(x.data(), pm.data(), s), zvpStsNoErr);
    EXPECT_EQ(ccs[1], T(0));
    if (L % 2 == 0) {
        EXPECT_EQ(ccs[std::size_t(L) + 1], T(0));
    }
    EXPECT_EQ(pk[0], ccs[0]);
    EXPECT_EQ(pm[0], ccs[0]);
    for (int k = 1; 2 * k < L; ++k)
        for (int part = 0; part < 2; ++part) {
            const T want = ccs[std::size_t(2 * k + part)];
            EXPECT_EQ(pk[std::size_t(2 * k - 1 + part)], want) << L;
            EXPECT_EQ(pm[std::size_t(L % 2 ? 2 * k - 1 + part : 2 * k + part)], want) << L;
        }
    if (L % 2 == 0) {
        EXPECT_EQ(pk[std::size_t(L) - 1], ccs[std::size_t(L)]);
        EXPECT_EQ(pm[1], ccs[std::size_t(L)]);
    }
    std::vector<T> a(static_cast<std::size_t>(L)), b(static_cast<std::size_t>(L)), c(static_cast<std::size_t>(L));
    ccs[1] = T(5);  // never read
    if (L % 2 == 0) ccs[std::size_t(L) + 1] = T(5);
    ASSERT_EQ(fwd.iccs(ccs.data(), a.data(), s), zvpStsNoErr);
    ASSERT_EQ(fwd.ipack(pk.data(), b.data(), s), zvpStsNoErr);
    ASSERT_EQ(fwd.iperm(pm.data(), c.data(), s), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(T)), 0) << L;
    EXPECT_EQ(std::memcmp(a.data(), c.data(), a.size() * sizeof(T)), 0) << L;
    // in place: the Pack and Perm forms may share source and destination
    std::vector<T> w(x);
    ASSERT_EQ(fwd.pack(w.data(), w.data(), s), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(w.data(), pk.data(), w.size() * sizeof(T)), 0) << L;
    ASSERT_EQ(fwd.ipack(w.data(), w.data(), s), zvpStsNoErr);
    EXPECT_EQ(std::memcmp(w.data(), b.data(), w.size() * sizeof(T)), 0) << L;
    fwd.release(s);
}

struct Real32 {
    ZvpStatus initAlloc(ZvpsDFTSpec_R_32f** s, int L) { return zvpsDFTInitAlloc_R_32f(s, L, 2, zvpAlgHintNone); }
    ZvpStatus ccs(const float* x, float* y, const ZvpsDFTSpec_R_32f* s) { return zvpsDFTFwd_RToCCS_32f(x, y, s, nullptr); }
    ZvpStatus pack(const float* x, float* y, const ZvpsDFTSpec_R_32f* s) { return zvpsDFTFwd_RToPack_32f(x, y, s, nullptr); }
    ZvpStatus perm(const float* x, float* y, const ZvpsDFTSpec_R_32f* s) { return zvpsDFTFwd_RToPerm_32f(x, y, s, nullptr); }
    ZvpStatus iccs(const float* x, float* y, const ZvpsDFTSpec_R_32f* s) { return zvpsDFTInv_CCSToR_32f(x, y, s, nullptr); }
    ZvpStatus ipack(const float* x, float* y, const ZvpsDFTSpec_R_32f* s) { return zvpsDFTInv_PackToR_32f(x, y, s, nullptr); }
    ZvpStatus iperm(const float* x, float* y, const ZvpsDFTSpec_R_32f* s) { return zvpsDFTInv_PermToR_32f(x, y, s, nullptr); }
    void release(ZvpsDFTSpec_R_32f* s) { zvpsDFTFree_R_32f(s); }
};
struct Real64 {
    ZvpStatus initAlloc(ZvpsDFTSpec_R_64f** s, int L) { return zvpsDFTInitAlloc_R_64f(s, L, 2, zvpAlgHintNone); }
    ZvpStatus ccs(const double* x, double* y, const ZvpsDFTSpec_R_64f* s) { return zvpsDFTFwd_RToCCS_64f(x, y, s, nullptr); }
    ZvpStatus pack(const double* x, double* y, const ZvpsDFTSpec_R_64f* s) { return zvpsDFTFwd_RToPack_64f(x, y, s, nullptr); }
    ZvpStatus perm(const double* x, double* y, const ZvpsDFTSpec_R_64f* s) { return zvpsDFTFwd_RToPerm_64f(x, y, s, nullptr); }
    ZvpStatus iccs(const double* x, double* y, const ZvpsDFTSpec_R_64f* s) { return zvpsDFTInv_CCSToR_64f(x, y, s, nullptr); }
    ZvpStatus ipack(const double* x, double* y, const ZvpsDFTSpec_R_64f* s) { return zvpsDFTInv_PackToR_64f(x, y, s, nullptr); }
    ZvpStatus iperm(const double* x, double* y, const ZvpsDFTSpec_R_64f* s) { return zvpsDFTInv_PermToR_64f(x, y, s, nullptr); }
    void release(ZvpsDFTSpec_R_64f* s) { zvpsDFTFree_R_64f(s); }
};

TEST(DftReal, LayoutsHoldTheSameValues) {
    for (int L : {1, 2, 3, 8, 15, 16, 17, 18, 53, 64, 96, 298, 1000}) {
        layouts<float, ZvpsDFTSpec_R_32f>(L, Real32{});
        layouts<double, ZvpsDFTSpec_R_64f>(L, Real64{});
    }
}

// ---- Out-of-order records --------------------------------------------------------
//
// The stages sort themselves, so the order they produce is the natural one:
// permuted back (the identity) the spectrum is the ordered DFT, bit for bit.
template <class T, class C, class OSpec, class Spec>
void outOfOrder(ZvpStatus (*oalloc)(OSpec**, int, int, ZvpHintAlgorithm), ZvpStatus (*ofree)(OSpec*),
                ZvpStatus (*obuf)(const OSpec*, int*),
                ZvpStatus (*ofwd)(const C*, C*, const OSpec*, Zvp8u*), ZvpStatus (*oinv)(const C*, C*, const OSpec*, Zvp8u*),
                ZvpStatus (*alloc)(Spec**, int, int, ZvpHintAlgorithm), ZvpStatus (*fwd)(const C*, C*, const Spec*, Zvp8u*),
                ZvpStatus (*release)(Spec*)) {
    for (int L : {1, 5, 12, 17, 53, 64, 96, 298, 596, 1024, 4097}) {
        OSpec* o = nullptr;
        Spec* s = nullptr;
        ASSERT_EQ(oalloc(&o, L, 8, zvpAlgHintNone), zvpStsNoErr);
        ASSERT_EQ(alloc(&s, L, 8, zvpAlgHintNone), zvpStsNoErr);
        const auto xv = signal(L, 13, false);
        std::vector<C> x(static_cast<std::size_t>(L)), y(static_cast<std::size_t>(L)), z(static_cast<std::size_t>(L)), back(static_cast<std::size_t>(L));
        for (int n = 0; n < L; ++n) x[std::size_t(n)] = {T(xv[std::size_t(n)].real()), T(xv[std::size_t(n)].imag())};
        int bs = -1;
        EXPECT_EQ(obuf(o, &bs), zvpStsNoErr);
        std::vector<Zvp8u> buf(std::size_t(bs) + 1);
        ASSERT_EQ(ofwd(x.data(), y.data(), o, buf.data()), zvpStsNoErr);
        ASSERT_EQ(fwd(x.data(), z.data(), s, nullptr), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(y.data(), z.data(), y.size() * sizeof(C)), 0) << L;
        ASSERT_EQ(oinv(y.data(), back.data(), o, nullptr), zvpStsNoErr);
        std::vector<cld> got(static_cast<std::size_t>(L)), want(static_cast<std::size_t>(L));
        for (int n = 0; n < L; ++n) {
            got[std::size_t(n)] = {back[std::size_t(n)].re, back[std::size_t(n)].im};
            want[std::size_t(n)] = xv[std::size_t(n)] * static_cast<long double>(L);
        }
        EXPECT_LE(relErr(got, want), 2 * bound<T>(L)) << L;
        // the two kinds of record do not stand in for each other
        EXPECT_EQ(ofwd(x.data(), y.data(), reinterpret_cast<const OSpec*>(s), nullptr), zvpStsContextMatchErr);
        EXPECT_EQ(fwd(x.data(), y.data(), reinterpret_cast<const Spec*>(o), nullptr), zvpStsContextMatchErr);
        EXPECT_EQ(ofwd(nullptr, y.data(), o, nullptr), zvpStsNullPtrErr);
        EXPECT_EQ(ofree(o), zvpStsNoErr);
        release(s);
    }
    OSpec* o = nullptr;
    EXPECT_EQ(oalloc(&o, 0, 8, zvpAlgHintNone), zvpStsSizeErr);
    EXPECT_EQ(oalloc(&o, 5, 3, zvpAlgHintNone), zvpStsFftFlagErr);
    EXPECT_EQ(oalloc(nullptr, 5, 8, zvpAlgHintNone), zvpStsNullPtrErr);
    EXPECT_EQ(o, nullptr);
    EXPECT_EQ(ofree(nullptr), zvpStsNullPtrErr);
}

TEST(DftOutOfOrder, PermutedBackIsTheDft) {
    outOfOrder<float>(zvpsDFTOutOrdInitAlloc_C_32fc, zvpsDFTOutOrdFree_C_32fc, zvpsDFTOutOrdGetBufSize_C_32fc,
                      zvpsDFTOutOrdFwd_CToC_32fc, zvpsDFTOutOrdInv_CToC_32fc, zvpsDFTInitAlloc_C_32fc,
                      zvpsDFTFwd_CToC_32fc, zvpsDFTFree_C_32fc);
    outOfOrder<double>(zvpsDFTOutOrdInitAlloc_C_64fc, zvpsDFTOutOrdFree_C_64fc, zvpsDFTOutOrdGetBufSize_C_64fc,
                       zvpsDFTOutOrdFwd_CToC_64fc, zvpsDFTOutOrdInv_CToC_64fc, zvpsDFTInitAlloc_C_64fc,
                       zvpsDFTFwd_CToC_64fc, zvpsDFTFree_C_64fc);
}

}  // namespace

// Hilbert through the public interface, the three type pairs from one table:
// the analytic signal against its definition evaluated here in long double
// (DFT, one-sided spectrum, inverse DFT); a cosine becomes its complex
// exponential; the Nyquist term of an even length is kept as it is; lengths
// 1 and 2 copy; the integer form against the scaled reference; errors in
// order with nothing written; allocation failure at every point of set-up
// and of a transform with nothing leaked.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <cmath>
#include <complex>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "alloc_count.h"
#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::cld;
using zvp::test::GuardedBuffer;
namespace alloc = zvp::test::alloc;

// The analytic signal by its definition.
std::vector<cld> analytic(const std::vector<long double>& x) {
    const std::size_t n = x.size();
    std::vector<cld> X = zvp::test::naiveDft(std::vector<cld>(x.begin(), x.end()), -1);
    for (std::size_t k = 1; k < n; ++k) {
        if (2 * k < n) X[k] *= 2;       // positive frequencies doubled
        else if (2 * k > n) X[k] = 0;   // negative ones removed; Nyquist kept
    }
    std::vector<cld> z = zvp::test::naiveDft(X, 1);
    for (cld& v : z) v /= (long double)n;
    return z;
}

// A forward and an inverse single-precision DFT, each within 9 u log2 L of
// the exact result (relative RMS, the DFT's own bound), with at most a
// doubling of the spectrum between them: relative error at most 3 times
// that bound, plus the rounding of the doubled values.
double bound(int n) { return 27.0 * 0x1p-24 * std::max(1.0, std::log2(double(n))) + 0x1p-22; }

// ---- the three type pairs behind one interface -----------------------------------

struct Pair {
    std::string name;
    bool intIn, intOut;
    std::function<ZvpStatus(void** spec, int len)> init;
    std::function<ZvpStatus(void* spec)> release;
    // x as the source type, result as complex long double; sf for 16s16sc.
    std::function<ZvpStatus(const void* spec, const std::vector<long double>& x, std::vector<cld>& out, int sf)> run;
    std::function<ZvpStatus(const void* src, void* dst, const void* spec)> raw;  // sf 0
};

template <class Spec, class In, class Out, class... S>
Pair pair(const char* name, ZvpStatus (*init)(Spec**, int, ZvpHintAlgorithm), ZvpStatus (*release)(Spec*),
          ZvpStatus (*fn)(const In*, Out*, const Spec*, S...)) {
    Pair p;
    p.name = name;
    p.intIn = std::is_same_v<In, Zvp16s>;
    p.intOut = std::is_same_v<Out, Zvp16sc>;
    p.init = [init](void** s, int len) { return init(reinterpret_cast<Spec**>(s), len, zvpAlgHintNone); };
    p.release = [release](void* s) { return release(static_cast<Spec*>(s)); };
    p.run = [fn](const void* s, const std::vector<long double>& x, std::vector<cld>& out, [[maybe_unused]] int sf) {
        std::vector<In> in(x.begin(), x.end());
        GuardedBuffer dst(x.size() * sizeof(Out));
        const ZvpStatus st = fn(in.data(), dst.as<Out>(), static_cast<const Spec*>(s), S(sf)...);
        EXPECT_TRUE(dst.guardsIntact());
        out.resize(x.size());
        for (std::size_t i = 0; i < x.size(); ++i) out[i] = {(long double)dst.as<Out>()[i].re, (long double)dst.as<Out>()[i].im};
        return st;
    };
    p.raw = [fn](const void* src, void* dst, const void* s) {
        return fn(static_cast<const In*>(src), static_cast<Out*>(dst), static_cast<const Spec*>(s), S(0)...);
    };
    return p;
}

const std::vector<Pair>& pairs() {
    static const std::vector<Pair> p = {
        pair("32f32fc", zvpsHilbertInitAlloc_32f32fc, zvpsHilbertFree_32f32fc, zvpsHilbert_32f32fc),
        pair("16s32fc", zvpsHilbertInitAlloc_16s32fc, zvpsHilbertFree_16s32fc, zvpsHilbert_16s32fc),
        pair("16s16sc", zvpsHilbertInitAlloc_16s16sc, zvpsHilbertFree_16s16sc, zvpsHilbert_16s16sc_Sfs),
    };
    return p;
}

struct Spec {
    const Pair& p;
    void* s = nullptr;
    Spec(const Pair& pr, int n) : p(pr) { EXPECT_EQ(p.init(&s, n), zvpStsNoErr) << p.name << " " << n; }
    ~Spec() {
        if (s) {
            EXPECT_EQ(p.release(s), zvpStsNoErr);
        }
    }
};

std::vector<long double> signal(const Pair& p, int n, std::mt19937_64& g) {
    std::vector<long double> x(n);
    std::uniform_real_distribution<double> u(-1, 1);
    for (auto& v : x) v = p.intIn ? std::round(u(g) * 20000) : (long double)float(u(g));
    return x;
}

// Each part of an integer result: the reference scaled by 2^-sf, within
// half a unit plus the float transform's error (so a value near a half may
// round either way), saturated at the 16-bit bounds.
void expectScaled(const std::vector<cld>& got, const std::vector<cld>& want, int sf, double tol, const std::string& what) {
    long double norm = 0;
    for (const cld& w : want) norm += std::norm(w);
    const long double slack = tol * std::sqrt(norm) * std::ldexp(1.0L, -sf) + 0.5L;
    for (std::size_t i = 0; i < want.size(); ++i)
        for (int part = 0; part < 2; ++part) {
            const long double w = std::ldexp(part ? want[i].imag() : want[i].real(), -sf);
            const long double g = part ? got[i].imag() : got[i].real();
            const long double clamped = std::fmin(32767.0L, std::fmax(-32768.0L, w));
            ASSERT_LE(std::fabs(g - clamped), slack) << what << " element " << i << " part " << part;
        }
}

TEST(Hilbert, AnalyticSignalMatchesTheDefinition) {
    std::mt19937_64 g(11);
    for (const Pair& p : pairs())
        for (int n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17, 31, 45, 64, 100, 127, 257, 360}) {
            Spec s(p, n);
            const auto x = signal(p, n, g);
            const auto want = analytic(x);
            for (int sf : p.intOut ? std::vector<int>{0, 3, -1} : std::vector<int>{0}) {
                std::vector<cld> got;
                ASSERT_EQ(p.run(s.s, x, got, sf), zvpStsNoErr);
                const std::string what = p.name + " length " + std::to_string(n) + " sf " + std::to_string(sf);
                if (p.intOut) expectScaled(got, want, sf, bound(n), what);
                else EXPECT_LE(zvp::test::relativeL2(got, want), bound(n)) << what;
                if (n <= 2)  // no transform: the input itself, zero imaginary parts
                    for (int i = 0; i < n; ++i) {
                        const long double r = std::nearbyint(std::ldexp(x[i], -sf));
                        EXPECT_EQ(got[i].real(), p.intOut ? std::fmin(32767.0L, std::fmax(-32768.0L, r)) : x[i]) << what;
                        EXPECT_EQ(got[i].imag(), 0) << what;
                    }
            }
        }
}

// cos(2 pi k n / L) gives exp(2 pi i k n / L): the sine as imaginary part;
// for even L the alternating signal (the Nyquist term alone) stays real,
// neither doubled nor removed.
TEST(Hilbert, CosineGivesSineAndNyquistIsKept) {
    const long double twoPi = 6.283185307179586476925286766559L;
    const Pair& p = pairs()[0];
    for (int n : {8, 9, 30, 31, 100, 257}) {
        Spec s(p, n);
        for (int k : {1, 3, (n - 1) / 2}) {
            std::vector<long double> x(n);
            for (int i = 0; i < n; ++i) x[i] = float(std::cos(twoPi * ((long long)k * i % n) / n));
            std::vector<cld> got;
            ASSERT_EQ(p.run(s.s, x, got, 0), zvpStsNoErr);
            for (int i = 0; i < n; ++i)
                EXPECT_NEAR(double(got[i].imag()), double(std::sin(twoPi * ((long long)k * i % n) / n)), 1e-5) << n << " k " << k << " at " << i;
        }
        if (n % 2 == 0) {
            std::vector<long double> x(n);
            for (int i = 0; i < n; ++i) x[i] = i % 2 ? -1 : 1;
            std::vector<cld> got;
            ASSERT_EQ(p.run(s.s, x, got, 0), zvpStsNoErr);
            for (int i = 0; i < n; ++i) {
                EXPECT_NEAR(double(got[i].real()), double(x[i]), 1e-5) << n;
                EXPECT_NEAR(double(got[i].imag()), 0.0, 1e-5) << n;
            }
        }
    }
}

TEST(Hilbert, ErrorsInOrderAndNothingWritten) {
    for (const Pair& p : pairs()) {
        SCOPED_TRACE(p.name);
        void* out = reinterpret_cast<void*>(0x1);
        EXPECT_EQ(p.init(nullptr, 8), zvpStsNullPtrErr);
        EXPECT_EQ(p.init(nullptr, 0), zvpStsNullPtrErr);
        EXPECT_EQ(p.init(&out, 0), zvpStsSizeErr);
        EXPECT_EQ(p.init(&out, -3), zvpStsSizeErr);
        EXPECT_EQ(out, reinterpret_cast<void*>(0x1));
        EXPECT_EQ(p.release(nullptr), zvpStsNullPtrErr);

        Spec s(p, 8);
        // A record of the next pair's type is refused by tag.
        Spec other(pairs()[(&p - &pairs()[0] + 1) % 3], 8);
        GuardedBuffer src(64), dst(8 * sizeof(Zvp32fc));
        std::memset(src.data(), 0, 64);
        const struct {
            const void *src, *spec;
            bool nullDst;
            ZvpStatus want;
        } cases[] = {{nullptr, s.s, false, zvpStsNullPtrErr}, {src.data(), s.s, true, zvpStsNullPtrErr},
                     {src.data(), nullptr, false, zvpStsNullPtrErr}, {nullptr, other.s, false, zvpStsNullPtrErr},
                     {src.data(), other.s, false, zvpStsContextMatchErr}};
        for (const auto& c : cases) {
            EXPECT_EQ(p.raw(c.src, c.nullDst ? nullptr : dst.data(), c.spec), c.want);
            EXPECT_TRUE(dst.untouched());
        }
        EXPECT_EQ(p.release(other.s), zvpStsContextMatchErr);
    }
}

// Every allocation of set-up and of a transform failing in turn: -9,
// nothing left allocated, nothing written; then the first run that
// succeeds matches an undisturbed one.
TEST(Hilbert, AllocationFailureAtEveryPointReleasesEverything) {
    for (const Pair& p : pairs())
        for (int n : {2, 8, 45, 257}) {
            SCOPED_TRACE(p.name + " " + std::to_string(n));
            int k = 1;
            for (;; ++k) {
                void* s = reinterpret_cast<void*>(0x1);
                alloc::reset(k);
                const ZvpStatus st = p.init(&s, n);
                const int live = alloc::live;
                alloc::reset();
                if (st == zvpStsNoErr) {
                    EXPECT_EQ(p.release(s), zvpStsNoErr);
                    break;
                }
                EXPECT_EQ(st, zvpStsMemAllocErr) << k;
                EXPECT_EQ(live, 0) << k;
                EXPECT_EQ(s, reinterpret_cast<void*>(0x1)) << k;
                ASSERT_LT(k, 100);
            }
            EXPECT_GT(k, 1);  // at least the record itself was allocated
            Spec s(p, n);
            std::vector<float> xf(n, 7.0f);
            std::vector<Zvp16s> xs(n, 7);
            const void* x = p.intIn ? static_cast<const void*>(xs.data()) : xf.data();
            GuardedBuffer want(n * sizeof(Zvp32fc)), dst(n * sizeof(Zvp32fc));
            ASSERT_EQ(p.raw(x, want.data(), s.s), zvpStsNoErr);
            for (int j = 1;; ++j) {
                dst.fill(zvp::test::kSentinelByte);
                alloc::reset(j);
                const ZvpStatus st = p.raw(x, dst.data(), s.s);
                const int live = alloc::live;
                alloc::reset();
                EXPECT_EQ(live, 0) << j;
                if (st == zvpStsNoErr) {
                    EXPECT_EQ(std::memcmp(dst.data(), want.data(), dst.size()), 0);
                    break;
                }
                EXPECT_EQ(st, zvpStsMemAllocErr) << j;
                EXPECT_TRUE(dst.untouched()) << j;
                ASSERT_LT(j, 100);
            }
        }
}

// The integer form ignores the caller's rounding mode and flush settings,
// and hands the control word back.
TEST(Hilbert, IntegerResultIgnoresCallerRounding) {
    const Pair& p = pairs()[2];
    std::mt19937_64 g(5);
    for (int n : {45, 64}) {
        Spec s(p, n);
        const auto x = signal(p, n, g);
        std::vector<cld> want, got;
        ASSERT_EQ(p.run(s.s, x, want, 2), zvpStsNoErr);
        const unsigned saved = _mm_getcsr();
        for (int rc : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
            std::fesetround(rc);
            _mm_setcsr(_mm_getcsr() | 0x8040u);
            const unsigned before = _mm_getcsr();
            p.run(s.s, x, got, 2);
            const unsigned after = _mm_getcsr();
            _mm_setcsr(saved);
            std::fesetround(FE_TONEAREST);
            EXPECT_EQ(after & ~0x3Fu, before & ~0x3Fu);
            EXPECT_EQ(got, want) << n << " mode " << rc;
        }
    }
}

}  // namespace

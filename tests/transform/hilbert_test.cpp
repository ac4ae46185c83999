// Hilbert, the three type pairs from one table: the analytic signal against its definition in long double, a
// cosine to its sine, errors with nothing written, allocation failure at every point with nothing leaked.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "alloc_count.h"
#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {
using zvp::test::cld;
using zvp::test::GuardedBuffer;
namespace alloc = zvp::test::alloc;
std::vector<cld> analytic(
    const std::vector<cld>& x) {  // DFT, one-sided spectrum with the Nyquist term kept, inverse
    std::vector<cld> X = zvp::test::naiveDft(x, -1), z;
    for (std::size_t k = 1; k < x.size(); ++k) X[k] *= 2 * k < x.size() ? 2 : 2 * k > x.size() ? 0 : 1;
    for (const cld& v : zvp::test::naiveDft(X, 1)) z.push_back(v / (long double)x.size());
    return z;
}
// Float results: a forward and an inverse single-precision DFT, each within 9 u log2 L (relative RMS, the
// DFT's bound), around at most a doubling of the spectrum: three times that bound, plus the rounding of the
// doubling.
double bound(int n) {
    return 27.0 * 0x1p-24 * std::max(1.0, std::log2(double(n))) + 0x1p-22;
}

struct Pair {
    const char* name;
    bool intIn, intOut;  // 16s source, 16sc result
    std::function<ZvpStatus(void**, int)> init;
    std::function<ZvpStatus(void*)> release;
    std::function<ZvpStatus(const void* src, void* dst, const void* spec, int sf)> run;
    std::shared_ptr<void> spec(int n) const {  // released, and checked, when the last copy goes
        void* s = nullptr;
        EXPECT_EQ(init(&s, n), zvpStsNoErr) << name << " " << n;
        return {s, [r = release](void* q) { EXPECT_TRUE(!q || r(q) == zvpStsNoErr); }};
    }
    std::vector<cld> results(const std::shared_ptr<void>& s, const std::vector<long double>& x,
                             int sf = 0) const {  // x in the source type
        const std::vector<float> f(x.begin(), x.end());
        const std::vector<Zvp16s> i(x.begin(), x.end());
        GuardedBuffer dst(x.size() * 8);
        EXPECT_EQ(run(intIn ? (const void*)i.data() : f.data(), dst.data(), s.get(), sf), zvpStsNoErr);
        EXPECT_TRUE(dst.guardsIntact());
        std::vector<cld> z;
        for (std::size_t k = 0; k < x.size(); ++k)
            z.push_back(intOut ? cld(dst.as<Zvp16sc>()[k].re, dst.as<Zvp16sc>()[k].im)
                               : cld(dst.as<Zvp32fc>()[k].re, dst.as<Zvp32fc>()[k].im));
        return z;
    }
};
template <class Spec, class In, class Out, class... S>
Pair pair(const char* name, ZvpStatus (*init)(Spec**, int, ZvpHintAlgorithm), ZvpStatus (*release)(Spec*),
          ZvpStatus (*fn)(const In*, Out*, const Spec*, S...)) {
    return {name,
            std::is_same_v<In, Zvp16s>,
            std::is_same_v<Out, Zvp16sc>,
            [init](void** s, int len) { return init(reinterpret_cast<Spec**>(s), len, zvpAlgHintFast); },
            [release](void* s) { return release(static_cast<Spec*>(s)); },
            [fn](const void* x, void* y, const void* s, [[maybe_unused]] int sf) {
                return fn(static_cast<const In*>(x), static_cast<Out*>(y), static_cast<const Spec*>(s),
                          S(sf)...);
            }};
}
const Pair kPairs[] = {
    pair("32f32fc", zvpsHilbertInitAlloc_32f32fc, zvpsHilbertFree_32f32fc, zvpsHilbert_32f32fc),
    pair("16s32fc", zvpsHilbertInitAlloc_16s32fc, zvpsHilbertFree_16s32fc, zvpsHilbert_16s32fc),
    pair("16s16sc", zvpsHilbertInitAlloc_16s16sc, zvpsHilbertFree_16s16sc, zvpsHilbert_16s16sc_Sfs)};

TEST(Hilbert, AnalyticSignalMatchesTheDefinition) {
    std::mt19937_64 g(11);
    std::uniform_real_distribution<double> u(-1, 1);
    const auto sat = [](long double v) { return std::fmin(32767.0L, std::fmax(-32768.0L, v)); };
    for (const Pair& p : kPairs)
        for (int n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17, 31, 45, 64, 100, 127, 257, 360}) {
            const auto s = p.spec(n);
            std::vector<long double> x(n);  // also the cosines below
            for (auto& v : x) v = p.intIn ? std::round(u(g) * 20000) : (long double)float(u(g));
            const auto want = analytic(std::vector<cld>(x.begin(), x.end()));
            long double norm = 0;
            for (const cld& w : want) norm += std::norm(w);
            for (int sf : p.intOut ? std::vector<int>{0, 3, -1} : std::vector<int>{0}) {
                const auto got = p.results(s, x, sf);
                EXPECT_TRUE(p.intOut || zvp::test::relativeL2(got, want) <= bound(n)) << p.name << " " << n;
                // Integer parts: within half a unit of the scaled reference plus the float transform's error,
                // or saturated.
                const long double slack = bound(n) * std::sqrt(norm) * std::ldexp(1.0L, -sf) + 0.5L;
                for (int i = 0; p.intOut && i < 2 * n; ++i)
                    ASSERT_LE(
                        std::fabs((i % 2 ? got[i / 2].imag() : got[i / 2].real()) -
                                  sat(std::ldexp(i % 2 ? want[i / 2].imag() : want[i / 2].real(), -sf))),
                        slack)
                        << n << " sf " << sf << " at " << i / 2;
                for (int i = 0; n <= 2 && i < n; ++i)  // lengths 1 and 2 copy the input
                    EXPECT_EQ(got[i], cld(p.intOut ? sat(std::nearbyint(std::ldexp(x[i], -sf))) : x[i], 0))
                        << p.name << " " << n << " sf " << sf;
            }
            // Worked example: cos(2 pi k i / L) gives its sine as imaginary part; for even L the alternating
            // signal (the Nyquist term alone) stays.
            for (int k = 1; !p.intIn && n > 2 && k <= n / 2; k = k < 3             ? k + 2
                                                                 : k < (n - 1) / 2 ? (n - 1) / 2
                                                                                   : k + 1) {
                for (int i = 0; i < n; ++i)
                    x[i] =
                        2 * k == n
                            ? (i % 2 ? -1 : 1)
                            : float(std::cos(6.283185307179586476925286766559L * ((long long)k * i % n) / n));
                const auto got = p.results(s, x);
                for (int i = 0; i < n; ++i)
                    EXPECT_LT(
                        std::abs(got[i] - cld(x[i], 2 * k == n ? 0
                                                               : std::sin(6.283185307179586476925286766559L *
                                                                          ((long long)k * i % n) / n))),
                        1e-5)
                        << n << " k " << k << " at " << i;
            }
        }
}

TEST(Hilbert, ErrorsInOrderAndAllocationFailureWriteNothingAndLeakNothing) {
    for (const Pair& p : kPairs) {
        void* out = &out;
        EXPECT_TRUE(p.init(nullptr, 0) == zvpStsNullPtrErr && p.init(&out, 0) == zvpStsSizeErr &&
                    p.init(&out, -3) == zvpStsSizeErr && out == &out)
            << p.name;
        const auto s = p.spec(8),
                   other =
                       kPairs[(&p - kPairs + 1) % 3].spec(8);  // a record of another pair: refused by its tag
        GuardedBuffer src(64), dst(64);
        const struct {
            const void *src, *spec;
            bool dst;
            ZvpStatus want;
        } cases[] = {{nullptr, s.get(), true, zvpStsNullPtrErr},
                     {src.data(), s.get(), false, zvpStsNullPtrErr},
                     {src.data(), nullptr, true, zvpStsNullPtrErr},
                     {nullptr, other.get(), true, zvpStsNullPtrErr},
                     {src.data(), other.get(), true, zvpStsContextMatchErr}};
        for (const auto& c : cases)
            EXPECT_TRUE(p.run(c.src, c.dst ? dst.data() : nullptr, c.spec, 0) == c.want && dst.untouched())
                << p.name << " " << c.want;
        EXPECT_TRUE(p.release(nullptr) == zvpStsNullPtrErr && p.release(other.get()) == zvpStsContextMatchErr)
            << p.name;
        // Each allocation of set-up, then of a transform, failing in turn: -9, nothing left allocated,
        // nothing written; the first run that succeeds equals an undisturbed one.
        for (int n : {2, 8, 45, 257}) {
            void* r = &r;
            int k = 1;
            for (ZvpStatus st;
                 alloc::reset(k), st = p.init(&r, n), alloc::failAt = 0, st != zvpStsNoErr && k < 100; ++k)
                EXPECT_TRUE(st == zvpStsMemAllocErr && alloc::live == 0 && r == &r)
                    << p.name << " " << n << " at " << k << " status " << st;
            EXPECT_TRUE(k > 1 && k < 100 && p.release(r) == zvpStsNoErr)
                << p.name << " " << n;  // the record at least was allocated
            const auto sp = p.spec(n);
            const std::vector<float> xf(n, 7.0f);
            const std::vector<Zvp16s> xs(n, 7);
            const void* x = p.intIn ? (const void*)xs.data() : xf.data();
            GuardedBuffer want(n * 8), to(n * 8);
            int j = 1;
            ASSERT_EQ(p.run(x, want.data(), sp.get(), 0), zvpStsNoErr);
            for (ZvpStatus st;
                 to.fill(zvp::test::kSentinelByte), alloc::reset(j),
                 st = p.run(x, to.data(), sp.get(), 0), alloc::failAt = 0, st != zvpStsNoErr && j < 100;
                 ++j)
                EXPECT_TRUE(st == zvpStsMemAllocErr && alloc::live == 0 && to.untouched())
                    << p.name << " " << n << " at " << j << " status " << st;
            EXPECT_TRUE(j < 100 && alloc::live == 0 && !std::memcmp(to.data(), want.data(), n * 8))
                << p.name << " " << n;
        }
    }
}

}  // namespace

// Goertzel: every form against a long-double sum of x[n] exp(-2 pi i f n)
// written here, at many lengths and frequencies (next to 0 and 1/2 too,
// where a plain recurrence loses accuracy); two-frequency forms against two
// one-frequency calls; integer forms against the scaled sum; ties, also
// under the caller's other rounding modes; the Q15 check order and the
// frequency edges.
// The checks every export shares run from the shape table.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <cmath>
#include <complex>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

namespace {

using cld = std::complex<long double>;

// frac(f n) exactly: f split into a 32-bit head and the rest, so both
// products are exact in the 64-bit long-double significand.
long double phase(double f, long long n) {
    int e = 0;
    const double m = std::frexp(f, &e), hi = std::ldexp(std::trunc(std::ldexp(m, 32)), e - 32);
    long double a = (long double)hi * n, b = (long double)(f - hi) * n;
    return (a - std::floor(a)) + (b - std::floor(b));
}
cld oracle(const std::vector<cld>& x, double f) {
    cld acc = 0;
    for (std::size_t n = 0; n < x.size(); ++n) acc += x[n] * std::polar(1.0L, -6.283185307179586476925286766559L * phase(f, (long long)n));
    return acc;
}

enum class Kind { F32, F64, I16 };
struct Form {
    const char* name;
    Kind kind;
    bool cplx;
    int nf, single;  // frequencies; for two-frequency forms the index of the one-frequency twin
    bool q15;
    std::function<ZvpStatus(const std::vector<cld>& x, const double* f, int sf, cld* out)> call;
};
// Any form: Fr is the frequency, or a pointer to two; S the scale factor.
template <class T, class O, class Fr, class... S>
Form form(const char* n, Kind k, ZvpStatus (*g)(const T*, int, O*, Fr, S...), int single = -1) {
    using F = std::remove_cv_t<std::remove_pointer_t<Fr>>;
    constexpr bool two = std::is_pointer_v<Fr>;
    return {n, k, !std::is_arithmetic_v<T>, two ? 2 : 1, single, std::is_integral_v<F>,
            [g](const std::vector<cld>& x, const double* f, [[maybe_unused]] int sf, cld* out) {
                std::vector<T> v(x.size());
                for (std::size_t i = 0; i < x.size(); ++i) {
                    if constexpr (std::is_arithmetic_v<T>) v[i] = T(x[i].real());
                    else v[i] = {decltype(v[i].re)(x[i].real()), decltype(v[i].re)(x[i].imag())};
                }
                F fr[2];
                for (int k = 0; k < 2; ++k) fr[k] = std::is_integral_v<F> ? F(std::lround(f[k] * 32768)) : F(f[k]);
                O o[2] = {};
                ZvpStatus s;
                if constexpr (two) s = g(v.data(), int(v.size()), o, fr, S(sf)...);
                else s = g(v.data(), int(v.size()), o, fr[0], S(sf)...);
                for (int k = 0; k < 2; ++k) out[k] = {(long double)o[k].re, (long double)o[k].im};
                return s;
            }};
}
#define F(f, k, ...) form(#f, Kind::k, zvps##f __VA_OPT__(, ) __VA_ARGS__)
const Form kForms[] = {F(Goertz_32f, F32), F(Goertz_32fc, F32), F(Goertz_64f, F64), F(Goertz_64fc, F64),
                       F(Goertz_16s_Sfs, I16), F(Goertz_16sc_Sfs, I16), F(GoertzQ15_16sc_Sfs, I16),
                       F(GoertzTwo_32f, F32, 0), F(GoertzTwo_32fc, F32, 1), F(GoertzTwo_64f, F64, 2),
                       F(GoertzTwo_64fc, F64, 3), F(GoertzTwo_16sc_Sfs, I16, 5), F(GoertzTwoQ15_16sc_Sfs, I16, 6)};
#undef F

// Frequencies every form's type holds exactly (Q15: multiples of 2^-15):
// edges, bins of the length, and values next to 0 and 1/2.
std::vector<double> frequencies(const Form& fm, int n, std::mt19937_64& g) {
    std::vector<double> f = {0.0, 0.5, 0.25, 0.75, 1 - 0x1p-15, 0x1p-15, 0.5 - 0x1p-15, 0.5 + 0x1p-15};
    for (double v : {1e-7, 0x1p-24, 0.5 - 0x1p-24, 1 - 0x1p-24, 0.1, 1.0 / n, 3.0 / n})
        if (!fm.q15 && float(v) < 1) f.push_back(float(v));
    for (int i = 0; i < 4; ++i) f.push_back(std::ldexp(double(g() % (fm.q15 ? 32768 : 1 << 24)), fm.q15 ? -15 : -24));
    return f;
}

// Bound of the double sum: each sample passes through at most len steps of
// the recurrence, each rounding by about 2^-53 of the state, so |error| <=
// 4 len 2^-53 sum|x| (measured: below a tenth of it); single results add
// their final rounding.
long double bound(Kind k, const std::vector<cld>& x, cld want) {
    long double l1 = 0;
    for (const cld& v : x) l1 += std::abs(v);
    return 4.0L * x.size() * 0x1p-53L * l1 + (k == Kind::F32 ? 0x1p-23L * std::abs(want) : 0);
}
// The integer rule on an exact value: v 2^-sf, nearest even, saturated.
long double rule(long double v, int sf) { return std::fmax(-32768.0L, std::fmin(32767.0L, std::nearbyint(std::ldexp(v, -sf)))); }
// An integer part is the rule's value, or a neighbour's when the sum is
// within its error bound of a half (the double sum cannot tell the side).
bool intOk(long double got, long double want, long double err, int sf) {
    return got == rule(want, sf) || got == rule(want - err, sf) || got == rule(want + err, sf);
}

// The caller's other rounding modes with flush-to-zero and denormals-are-zero.
struct CallerMode {
    unsigned saved = _mm_getcsr();
    explicit CallerMode(int rc) { std::fesetround(rc), _mm_setcsr(_mm_getcsr() | 0x8040u); }
    ~CallerMode() { _mm_setcsr(saved), std::fesetround(FE_TONEAREST); }
};

TEST(Goertzel, EveryFormMatchesTheLongDoubleSum) {
    std::mt19937_64 g(20261123);
    std::uniform_real_distribution<double> u(-1, 1);
    for (const Form& fm : kForms) {
        SCOPED_TRACE(fm.name);
        for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 33, 205, 1000, 4099}) {
            std::vector<cld> x(n);
            for (auto& v : x) {
                const double re = u(g), im = fm.cplx ? u(g) : 0;
                v = fm.kind == Kind::I16 ? cld(std::round(re * 32767), std::round(im * 32767)) : cld(float(re), float(im));
            }
            const auto fs = frequencies(fm, n, g);
            for (std::size_t i = 0; i < fs.size(); ++i) {
                const double f[2] = {fs[i], fs[(i * 7 + 3) % fs.size()]};
                const cld want[2] = {oracle(x, f[0]), fm.nf > 1 ? oracle(x, f[1]) : 0};
                for (int sf : fm.kind == Kind::I16 ? std::vector<int>{0, 4, 11, -2, 40} : std::vector<int>{0}) {
                    cld got[2], one[2];
                    ASSERT_EQ(fm.call(x, f, sf, got), zvpStsNoErr);
                    for (int k = 0; k < fm.nf; ++k) {
                        const long double err = bound(fm.kind, x, want[k]);
                        const bool ok = fm.kind != Kind::I16 ? std::abs(got[k] - want[k]) <= err
                                                             : intOk(got[k].real(), want[k].real(), err, sf) && intOk(got[k].imag(), want[k].imag(), err, sf);
                        EXPECT_TRUE(ok) << n << " f " << f[k] << " sf " << sf << " got " << got[k] << " want " << want[k] << " bound " << err;
                        if (fm.single < 0) continue;  // both frequencies equal one-frequency calls within rounding
                        ASSERT_EQ(kForms[fm.single].call(x, f + k, sf, one), zvpStsNoErr);
                        EXPECT_LE(std::abs(one[0] - got[k]), fm.kind == Kind::I16 ? 1.5L : 2 * err) << n << " f " << f[k];
                    }
                }
            }
        }
    }
}

// f = 0 (and -0.0) sums exactly; exact halves go to the even neighbour;
// sums beyond 16 bits saturate.
TEST(Goertzel, ZeroFrequencySumsExactlyWithTiesToEven) {
    const struct { std::vector<Zvp16s> x; int sf; Zvp16s want; } cases[] = {
        {{1, 2}, 1, 2}, {{5}, 1, 2}, {{-1, -2}, 1, -2}, {{-1}, 1, 0}, {{3, 4}, 2, 2}, {{-3, -4}, 2, -2},
        {{32767, 32767}, 0, 32767}, {{32767, 32767}, 1, 32767}, {{-32768, -1}, 0, -32768}, {{-32768, -32768}, 16, -1}};
    for (const auto& c : cases) {
        Zvp16sc r{};
        std::vector<Zvp16sc> xc;
        for (Zvp16s v : c.x) xc.push_back({Zvp16s(-v / 2), v});
        ASSERT_EQ(zvpsGoertz_16s_Sfs(c.x.data(), int(c.x.size()), &r, -0.0f, c.sf), zvpStsNoErr);
        EXPECT_TRUE(r.re == c.want && r.im == 0) << c.x[0] << " sf " << c.sf;
        ASSERT_EQ(zvpsGoertzQ15_16sc_Sfs(xc.data(), int(xc.size()), &r, 0, c.sf), zvpStsNoErr);
        EXPECT_EQ(r.im, c.want) << c.x[0] << " sf " << c.sf;
        // A tiny frequency moves the sum off the tie by less than the double
        // spacing: the caller's rounding mode must not push it either way.
        const float tiny[2] = {0x1p-126f, 0x1p-149f};
        Zvp16sc two[2], again[2];
        ASSERT_EQ(zvpsGoertzTwo_16sc_Sfs(xc.data(), int(xc.size()), two, tiny, c.sf), zvpStsNoErr);
        for (int rc : {FE_UPWARD, FE_DOWNWARD}) {
            CallerMode m(rc);
            ASSERT_EQ(zvpsGoertzTwo_16sc_Sfs(xc.data(), int(xc.size()), again, tiny, c.sf), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(two, again, sizeof two), 0) << c.x[0] << " sf " << c.sf << " mode " << rc;
        }
    }
}

TEST(Goertzel, ChecksInOrderAndNothingWritten) {
    Zvp16sc xs[4] = {{1, 2}, {3, 4}, {5, 6}, {7, 8}};
    Zvp32f xf[4] = {1, 2, 3, 4};
    Zvp64f xd[2] = {1, 2};
    const Zvp16s qBad[2] = {100, -1}, qOk[2] = {100, 200};
    const float fOk[2] = {0.1f, 0.2f}, fOne[2] = {0, 1}, fNaN[2] = {std::numeric_limits<float>::quiet_NaN(), 0}, fTwo[2] = {2, 0};
    const double dNeg[2] = {0.5, -0x1p-1074};
    const struct { const char* what; std::function<ZvpStatus(void*)> call; ZvpStatus want; } cases[] = {
        {"Q15 negative before a null source", [&](void* o) { return zvpsGoertzQ15_16sc_Sfs(nullptr, 0, (Zvp16sc*)o, -1, 0); }, zvpStsRelFreqErr},
        {"Q15 negative before a bad length", [&](void* o) { return zvpsGoertzQ15_16sc_Sfs(xs, -5, (Zvp16sc*)o, -32768, 0); }, zvpStsRelFreqErr},
        {"Q15 null source", [&](void* o) { return zvpsGoertzQ15_16sc_Sfs(nullptr, 0, (Zvp16sc*)o, 3, 0); }, zvpStsNullPtrErr},
        {"Two Q15 null frequencies first", [&](void* o) { return zvpsGoertzTwoQ15_16sc_Sfs(xs, 4, (Zvp16sc*)o, nullptr, 0); }, zvpStsNullPtrErr},
        {"Two Q15 negative second before a null source", [&](void* o) { return zvpsGoertzTwoQ15_16sc_Sfs(nullptr, 0, (Zvp16sc*)o, qBad, 0); }, zvpStsRelFreqErr},
        {"Two Q15 null result", [&](void*) { return zvpsGoertzTwoQ15_16sc_Sfs(xs, 4, nullptr, qOk, 0); }, zvpStsNullPtrErr},
        {"Two null source", [&](void* o) { return zvpsGoertzTwo_32f(nullptr, 4, (Zvp32fc*)o, fOk); }, zvpStsNullPtrErr},
        {"Two null frequencies before the length", [&](void* o) { return zvpsGoertzTwo_32f(xf, 0, (Zvp32fc*)o, nullptr); }, zvpStsNullPtrErr},
        {"Two length before the frequencies", [&](void* o) { return zvpsGoertzTwo_32f(xf, 0, (Zvp32fc*)o, fTwo); }, zvpStsSizeErr},
        {"Two second at 1", [&](void* o) { return zvpsGoertzTwo_32f(xf, 4, (Zvp32fc*)o, fOne); }, zvpStsRelFreqErr},
        {"Two first NaN", [&](void* o) { return zvpsGoertzTwo_32fc((Zvp32fc*)xf, 2, (Zvp32fc*)o, fNaN); }, zvpStsRelFreqErr},
        {"Two 64f just below 0", [&](void* o) { return zvpsGoertzTwo_64f(xd, 2, (Zvp64fc*)o, dNeg); }, zvpStsRelFreqErr},
        {"Two 16sc at 1", [&](void* o) { return zvpsGoertzTwo_16sc_Sfs(xs, 4, (Zvp16sc*)o, fOne, 0); }, zvpStsRelFreqErr},
        {"64f just below 1 accepted", [&](void* o) { return zvpsGoertz_64f(xd, 1, (Zvp64fc*)o, 1 - 0x1p-53); }, zvpStsNoErr},
    };
    for (const auto& c : cases) {
        zvp::test::GuardedBuffer out(2 * sizeof(Zvp64fc));
        EXPECT_EQ(c.call(out.data()), c.want) << c.what;
        EXPECT_TRUE(c.want == zvpStsNoErr || out.untouched()) << c.what;
    }
}

}  // namespace

// Goertzel through the public interface: every form against a long-double
// sum of x[n] exp(-2 pi i f n) written here, at many lengths and frequencies
// (near 0 and 1/2 too, where a plain recurrence loses accuracy); the
// two-frequency forms against two one-frequency calls; integer forms exact
// against the scaled oracle; the Q15 check order and the frequency edges.
// The common checks of the one-frequency forms run from the shape table.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <cmath>
#include <complex>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

namespace {

using cld = std::complex<long double>;
using zvp::test::GuardedBuffer;

// ---- oracle --------------------------------------------------------------------

// frac(f n) exactly: f split into a 32-bit head and the rest, so both
// products are exact in the 64-bit long-double significand.
long double phase(double f, long long n) {
    int e = 0;
    const double m = std::frexp(f, &e);
    const double hi = std::ldexp(std::trunc(std::ldexp(m, 32)), e - 32), lo = f - hi;
    long double a = (long double)hi * n, b = (long double)lo * n;
    a -= std::floor(a);
    b -= std::floor(b);
    return a + b;
}
cld oracle(const std::vector<cld>& x, double f) {
    const long double twoPi = 6.283185307179586476925286766559L;
    cld acc = 0;
    for (std::size_t n = 0; n < x.size(); ++n) {
        const long double a = -twoPi * phase(f, (long long)n);
        acc += x[n] * cld(std::cos(a), std::sin(a));
    }
    return acc;
}

// ---- the forms behind one signature ---------------------------------------------

enum class Kind { F32, F64, I16 };
struct Form {
    std::string name;
    Kind kind;
    bool complex, two, q15;
    // x: the samples (imaginary parts ignored for real sources); f: one or
    // two frequencies; out: one or two results.
    std::function<ZvpStatus(const std::vector<cld>& x, const double* f, int sf, cld* out)> call;
};

template <class T>
std::vector<T> pack(const std::vector<cld>& x) {
    std::vector<T> v(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        if constexpr (std::is_arithmetic_v<T>) v[i] = T(x[i].real());
        else v[i] = {decltype(v[i].re)(x[i].real()), decltype(v[i].re)(x[i].imag())};
    }
    return v;
}
template <class O>
cld unpack(const O& o) { return {(long double)o.re, (long double)o.im}; }

template <class T, class O, class Fr>
Form one(const char* n, Kind k, ZvpStatus (*g)(const T*, int, O*, Fr)) {
    return {n, k, !std::is_arithmetic_v<T>, false, false, [g](const std::vector<cld>& x, const double* f, int /*sf*/, cld* out) {
                const auto v = pack<T>(x);
                O o{};
                const ZvpStatus s = g(v.data(), int(v.size()), &o, Fr(f[0]));
                out[0] = unpack(o);
                return s;
            }};
}
template <class T, class O, class Fr>
Form one(const char* n, ZvpStatus (*g)(const T*, int, O*, Fr, int), bool q15 = false) {
    return {n, Kind::I16, !std::is_arithmetic_v<T>, false, q15, [g, q15](const std::vector<cld>& x, const double* f, int sf, cld* out) {
                const auto v = pack<T>(x);
                O o{};
                const ZvpStatus s = g(v.data(), int(v.size()), &o, q15 ? Fr(std::lround(f[0] * 32768)) : Fr(f[0]), sf);
                out[0] = unpack(o);
                return s;
            }};
}
template <class T, class O, class Fr, class... S>
Form two(const char* n, Kind k, ZvpStatus (*g)(const T*, int, O*, const Fr*, S...), bool q15 = false) {
    return {n, k, !std::is_arithmetic_v<T>, true, q15, [g, q15](const std::vector<cld>& x, const double* f, [[maybe_unused]] int sf, cld* out) {
                const auto v = pack<T>(x);
                O o[2] = {};
                const Fr fr[2] = {q15 ? Fr(std::lround(f[0] * 32768)) : Fr(f[0]), q15 ? Fr(std::lround(f[1] * 32768)) : Fr(f[1])};
                const ZvpStatus s = g(v.data(), int(v.size()), o, fr, S(sf)...);
                out[0] = unpack(o[0]);
                out[1] = unpack(o[1]);
                return s;
            }};
}

const std::vector<Form>& forms() {
    static const std::vector<Form> f = {
        one("Goertz_32f", Kind::F32, zvpsGoertz_32f),
        one("Goertz_32fc", Kind::F32, zvpsGoertz_32fc),
        one("Goertz_64f", Kind::F64, zvpsGoertz_64f),
        one("Goertz_64fc", Kind::F64, zvpsGoertz_64fc),
        one("Goertz_16s_Sfs", zvpsGoertz_16s_Sfs),
        one("Goertz_16sc_Sfs", zvpsGoertz_16sc_Sfs),
        one("GoertzQ15_16sc_Sfs", zvpsGoertzQ15_16sc_Sfs, true),
        two("GoertzTwo_32f", Kind::F32, zvpsGoertzTwo_32f),
        two("GoertzTwo_32fc", Kind::F32, zvpsGoertzTwo_32fc),
        two("GoertzTwo_64f", Kind::F64, zvpsGoertzTwo_64f),
        two("GoertzTwo_64fc", Kind::F64, zvpsGoertzTwo_64fc),
        two("GoertzTwo_16sc_Sfs", Kind::I16, zvpsGoertzTwo_16sc_Sfs),
        two("GoertzTwoQ15_16sc_Sfs", Kind::I16, zvpsGoertzTwoQ15_16sc_Sfs, true),
    };
    return f;
}

std::vector<cld> samples(const Form& fm, int n, std::mt19937_64& g) {
    std::vector<cld> x(n);
    std::uniform_real_distribution<double> u(-1, 1);
    for (auto& v : x) {
        double re = u(g), im = fm.complex ? u(g) : 0.0;
        if (fm.kind == Kind::I16) re = std::round(re * 32767), im = std::round(im * 32767);
        if (fm.kind == Kind::F32) re = float(re), im = float(im);
        v = {re, im};
    }
    return x;
}

// Frequencies exactly representable in every form's frequency type (Q15
// forms: multiples of 2^-15): the edges, bins of the length, and values next
// to 0 and 1/2 where the recurrence's coefficient is close to +-2.
std::vector<double> frequencies(const Form& fm, int n, std::mt19937_64& g) {
    std::vector<double> f = {0.0, 0.5, 0.25, 0.75, 1.0 - 0x1p-15, 0x1p-15, 0.5 - 0x1p-15, 0.5 + 0x1p-15};
    if (!fm.q15) {
        for (double v : {1e-7, 0x1p-24, 0.5 - 0x1p-24, 1.0 - 0x1p-24, 0.1, 1.0 / n, 3.0 / n})
            if (float(v) < 1.0f) f.push_back(double(float(v)));
        for (int i = 0; i < 4; ++i) f.push_back(double(float(std::uniform_real_distribution<double>(0, 1)(g))));
    } else {
        for (int i = 0; i < 4; ++i) f.push_back(std::ldexp(double(g() % 32768), -15));
    }
    return f;
}

// Error bound of the double sum: each sample's contribution passes through
// at most len recurrence steps, each with a few roundings of about 2^-53
// relative to the state, so |error| <= 4 len 2^-53 sum|x| (measured errors
// stay well below a tenth of it); single results add the final rounding.
long double bound(const Form& fm, const std::vector<cld>& x, cld want) {
    long double l1 = 0;
    for (const cld& v : x) l1 += std::abs(v);
    long double b = 4.0L * x.size() * 0x1p-53L * l1;
    if (fm.kind == Kind::F32) b += 0x1p-23L * std::abs(want);
    return b;
}

// The integer rule on an exactly known value: v 2^-sf, nearest even, saturated.
long double scaleRule(long double v, int sf) {
    const long double y = std::ldexp(v, -sf), r = std::nearbyint(y);
    return std::fmax(-32768.0L, std::fmin(32767.0L, r));
}
// Whether an integer part is right: the oracle's value scaled by the rule,
// or either neighbour when the value is within the error bound of a half
// (the double sum cannot tell which side of the half the exact value lies).
bool intPartOk(long double got, long double want, long double err, int sf) {
    if (got == scaleRule(want, sf)) return true;
    return got == scaleRule(want - err, sf) || got == scaleRule(want + err, sf);
}

TEST(Goertzel, EveryFormMatchesTheLongDoubleSum) {
    std::mt19937_64 g(20261123);
    for (const Form& fm : forms()) {
        SCOPED_TRACE(fm.name);
        for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 33, 205, 1000, 4099}) {
            const auto x = samples(fm, n, g);
            const auto fs = frequencies(fm, n, g);
            for (std::size_t i = 0; i < fs.size(); ++i) {
                const double f[2] = {fs[i], fs[(i * 7 + 3) % fs.size()]};
                for (int sf : fm.kind == Kind::I16 ? std::vector<int>{0, 4, 11, -2, 40} : std::vector<int>{0}) {
                    cld got[2];
                    ASSERT_EQ(fm.call(x, f, sf, got), zvpStsNoErr);
                    for (int k = 0; k < (fm.two ? 2 : 1); ++k) {
                        const cld want = oracle(x, f[k]);
                        const long double err = bound(fm, x, want);
                        if (fm.kind != Kind::I16) {
                            EXPECT_LE(std::abs(got[k] - want), err) << "n " << n << " f " << f[k] << " got " << got[k] << " want " << want;
                        } else {
                            EXPECT_TRUE(intPartOk(got[k].real(), want.real(), err, sf) && intPartOk(got[k].imag(), want.imag(), err, sf))
                                << "n " << n << " f " << f[k] << " sf " << sf << " got " << got[k] << " want " << want;
                        }
                    }
                }
            }
        }
    }
}

// One pass at two frequencies equals two one-frequency passes within the
// rounding of the double sums (they split the sum differently).
TEST(Goertzel, TwoFrequenciesEqualTwoSingleCalls) {
    std::mt19937_64 g(7);
    const std::pair<const char*, const char*> pairs[] = {
        {"GoertzTwo_32f", "Goertz_32f"}, {"GoertzTwo_32fc", "Goertz_32fc"}, {"GoertzTwo_64f", "Goertz_64f"},
        {"GoertzTwo_64fc", "Goertz_64fc"}, {"GoertzTwo_16sc_Sfs", "Goertz_16sc_Sfs"}, {"GoertzTwoQ15_16sc_Sfs", "GoertzQ15_16sc_Sfs"}};
    auto byName = [](const char* s) -> const Form& {
        for (const Form& f : forms())
            if (f.name == s) return f;
        throw std::runtime_error(s);
    };
    for (auto [tn, on] : pairs) {
        const Form &t = byName(tn), &o = byName(on);
        SCOPED_TRACE(tn);
        for (int n : {1, 6, 77, 512}) {
            const auto x = samples(t, n, g);
            const auto fs = frequencies(t, n, g);
            for (std::size_t i = 0; i + 1 < fs.size(); ++i) {
                const double f[2] = {fs[i], fs[i + 1]};
                cld both[2], a, b;
                ASSERT_EQ(t.call(x, f, 3, both), zvpStsNoErr);
                ASSERT_EQ(o.call(x, f, 3, &a), zvpStsNoErr);
                ASSERT_EQ(o.call(x, f + 1, 3, &b), zvpStsNoErr);
                const long double tol = t.kind == Kind::I16 ? 1.0L : 2 * bound(t, x, a) + 2 * bound(t, x, b);
                EXPECT_LE(std::abs(both[0] - a), tol * 1.5L) << n << " " << f[0];
                EXPECT_LE(std::abs(both[1] - b), tol * 1.5L) << n << " " << f[1];
            }
        }
    }
}

// At f = 0 the integer forms give the exact sum, scaled; f = -0.0 is 0; a
// sum beyond 16 bits saturates.
TEST(Goertzel, ZeroFrequencyIsTheExactSum) {
    const int n = 1001;
    std::vector<Zvp16s> x(n);
    std::vector<Zvp16sc> xc(n);
    long long sum = 0;
    for (int i = 0; i < n; ++i) {
        x[i] = Zvp16s((i * 7919) % 65536 - 32768);
        xc[i] = {x[i], Zvp16s(-x[i] / 3)};
        sum += x[i];
    }
    for (int sf : {0, 5, 10, 14, 15, 16, 30}) {
        const long double want = scaleRule((long double)sum, sf);
        Zvp16sc r{}, rc{};
        ASSERT_EQ(zvpsGoertz_16s_Sfs(x.data(), n, &r, -0.0f, sf), zvpStsNoErr);
        ASSERT_EQ(zvpsGoertzQ15_16sc_Sfs(xc.data(), n, &rc, 0, sf), zvpStsNoErr);
        EXPECT_EQ(r.re, want) << sf;
        EXPECT_EQ(r.im, 0) << sf;
        EXPECT_EQ(rc.re, want) << sf;
    }
    // Exact halves go to the even neighbour: 3/2 -> 2, 5/2 -> 2, -3/2 -> -2, -1/2 -> 0, 7/4 -> 2.
    const struct { std::vector<Zvp16s> x; int sf; Zvp16s want; } ties[] = {
        {{1, 2}, 1, 2}, {{5}, 1, 2}, {{-1, -2}, 1, -2}, {{-1}, 1, 0}, {{3, 4}, 2, 2}, {{32767, 32767}, 0, 32767}, {{-32768, -1}, 0, -32768}};
    for (const auto& t : ties) {
        Zvp16sc r{};
        ASSERT_EQ(zvpsGoertz_16s_Sfs(t.x.data(), int(t.x.size()), &r, 0.0f, t.sf), zvpStsNoErr);
        EXPECT_EQ(r.re, t.want) << t.x[0] << " sf " << t.sf;
    }
    Zvp64fc d{};
    std::vector<double> xd(x.begin(), x.end());
    ASSERT_EQ(zvpsGoertz_64f(xd.data(), n, &d, -0.0), zvpStsNoErr);
    EXPECT_EQ(d.re, double(sum));
    EXPECT_EQ(d.im, 0.0);
}

// Statuses in order, nothing written on any error.
TEST(Goertzel, ChecksInOrderAndNothingWritten) {
    Zvp16sc xs[4] = {{1, 2}, {3, 4}, {5, 6}, {7, 8}};
    Zvp32f xf[4] = {1, 2, 3, 4};
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        const char* what;
        std::function<ZvpStatus(void* out)> call;
        ZvpStatus want;
    };
    const Zvp16s qBad[2] = {100, -1}, qOk[2] = {100, 200};
    const float fOk[2] = {0.1f, 0.2f};
    const Case cases[] = {
        {"Q15 negative before a null source", [&](void* o) { return zvpsGoertzQ15_16sc_Sfs(nullptr, 0, (Zvp16sc*)o, -1, 0); }, zvpStsRelFreqErr},
        {"Q15 negative before a bad length", [&](void* o) { return zvpsGoertzQ15_16sc_Sfs(xs, -5, (Zvp16sc*)o, -32768, 0); }, zvpStsRelFreqErr},
        {"Q15 null source", [&](void* o) { return zvpsGoertzQ15_16sc_Sfs(nullptr, 0, (Zvp16sc*)o, 3, 0); }, zvpStsNullPtrErr},
        {"Q15 length", [&](void*) { Zvp16sc r; return zvpsGoertzQ15_16sc_Sfs(xs, 0, &r, 3, 0); }, zvpStsSizeErr},
        {"Two Q15 null frequencies first", [&](void* o) { return zvpsGoertzTwoQ15_16sc_Sfs(xs, 4, (Zvp16sc*)o, nullptr, 0); }, zvpStsNullPtrErr},
        {"Two Q15 negative second before null source", [&](void* o) { return zvpsGoertzTwoQ15_16sc_Sfs(nullptr, 0, (Zvp16sc*)o, qBad, 0); }, zvpStsRelFreqErr},
        {"Two Q15 null result", [&](void*) { return zvpsGoertzTwoQ15_16sc_Sfs(xs, 4, nullptr, qOk, 0); }, zvpStsNullPtrErr},
        {"Two null source", [&](void* o) { return zvpsGoertzTwo_32f(nullptr, 4, (Zvp32fc*)o, fOk); }, zvpStsNullPtrErr},
        {"Two null frequencies", [&](void* o) { return zvpsGoertzTwo_32f(xf, 0, (Zvp32fc*)o, nullptr); }, zvpStsNullPtrErr},
        {"Two length before frequency", [&](void* o) { const float f[2] = {2, 0}; return zvpsGoertzTwo_32f(xf, 0, (Zvp32fc*)o, f); }, zvpStsSizeErr},
        {"Two second at 1", [&](void* o) { const float f[2] = {0, 1}; return zvpsGoertzTwo_32f(xf, 4, (Zvp32fc*)o, f); }, zvpStsRelFreqErr},
        {"Two first NaN", [&](void* o) { const float f[2] = {nan, 0}; return zvpsGoertzTwo_32fc((Zvp32fc*)xf, 2, (Zvp32fc*)o, f); }, zvpStsRelFreqErr},
        {"Two 64f just below 0", [&](void* o) { const double f[2] = {0.5, -0x1p-1074}; double x[2] = {1, 2}; return zvpsGoertzTwo_64f(x, 2, (Zvp64fc*)o, f); }, zvpStsRelFreqErr},
        {"Two 16sc at 1", [&](void* o) { const float f[2] = {1, 0}; return zvpsGoertzTwo_16sc_Sfs(xs, 4, (Zvp16sc*)o, f, 0); }, zvpStsRelFreqErr},
        {"64f just below 1 accepted", [&](void* o) { double x[1] = {1}; return zvpsGoertz_64f(x, 1, (Zvp64fc*)o, 1.0 - 0x1p-53); }, zvpStsNoErr},
        {"32f at 1 refused", [&](void* o) { return zvpsGoertz_32f(xf, 4, (Zvp32fc*)o, 1.0f); }, zvpStsRelFreqErr},
    };
    for (const Case& c : cases) {
        GuardedBuffer out(2 * sizeof(Zvp64fc));
        EXPECT_EQ(c.call(out.data()), c.want) << c.what;
        if (c.want < 0) {
            EXPECT_TRUE(out.untouched()) << c.what;
        }
    }
}

// The integer two-frequency forms (not in the shape table) ignore the
// caller's rounding mode and flush settings, and hand the control word back.
TEST(Goertzel, IntegerTwoFrequencyFormsIgnoreCallerRounding) {
    std::vector<Zvp16sc> x(300);
    std::mt19937_64 g(3);
    for (auto& v : x) v = {Zvp16s(g()), Zvp16s(g())};
    const float f[2] = {0.123f, 0.4999f};
    const Zvp16s q[2] = {4031, 16383};
    Zvp16sc a[2], b[2], qa[2], qb[2];
    for (int sf : {0, 3, 9}) {
        ASSERT_EQ(zvpsGoertzTwo_16sc_Sfs(x.data(), 300, a, f, sf), zvpStsNoErr);
        ASSERT_EQ(zvpsGoertzTwoQ15_16sc_Sfs(x.data(), 300, qa, q, sf), zvpStsNoErr);
        const unsigned saved = _mm_getcsr();
        for (int rc : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
            std::fesetround(rc);
            _mm_setcsr(_mm_getcsr() | 0x8040u);
            const unsigned want = _mm_getcsr();
            zvpsGoertzTwo_16sc_Sfs(x.data(), 300, b, f, sf);
            zvpsGoertzTwoQ15_16sc_Sfs(x.data(), 300, qb, q, sf);
            const unsigned after = _mm_getcsr();
            _mm_setcsr(saved);
            std::fesetround(FE_TONEAREST);
            EXPECT_EQ(after & ~0x3Fu, want & ~0x3Fu);
            EXPECT_EQ(std::memcmp(a, b, sizeof a), 0) << rc << " " << sf;
            EXPECT_EQ(std::memcmp(qa, qb, sizeof qa), 0) << rc << " " << sf;
        }
    }
}

}  // namespace

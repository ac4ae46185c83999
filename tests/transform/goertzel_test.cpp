// Goertzel: every form against a long-double sum written here, integer ties and saturation, the frequency
// checks and their order. The shared checks (caller's rounding modes included) run from the shape table.
#include <gtest/gtest.h>

#include <functional>

#include "oracle_dft.h"
#include "sentinel.h"
#include "zvps.h"

namespace {
using zvp::test::cld;
// frac(f n) exactly: f split into a 32-bit head and the rest, both products exact in long double.
long double phase(double f, long long n) {
    int e = 0;
    const double m = std::frexp(f, &e), hi = std::ldexp(std::trunc(std::ldexp(m, 32)), e - 32);
    long double a = (long double)hi * n, b = (long double)(f - hi) * n;
    return (a - std::floor(a)) + (b - std::floor(b));
}
cld oracle(const std::vector<cld>& x, double f) {
    cld acc = 0;
    for (std::size_t n = 0; n < x.size(); ++n)
        acc += x[n] * std::polar(1.0L, -6.283185307179586476925286766559L * phase(f, (long long)n));
    return acc;
}

enum class Kind { F32, F64, I16 };
// call: x (null: a null source) over len at frequencies f (null: a null pointer) into raw, then as cld into
// res.
struct Form {
    const char* name;
    Kind kind;
    bool cplx, q15;
    int nf;
    std::function<ZvpStatus(const std::vector<cld>* x, int len, const double* f, int sf, void* raw, cld* res)>
        call;
};
// Any form: Fr is the frequency, or a pointer to two; S the scale factor.
template <class T, class O, class Fr, class... S>
Form form(const char* n, ZvpStatus (*g)(const T*, int, O*, Fr, S...)) {
    using F = std::remove_cv_t<std::remove_pointer_t<Fr>>;
    constexpr Kind k = std::is_same_v<decltype(O::re), Zvp32f>   ? Kind::F32
                       : std::is_same_v<decltype(O::re), Zvp64f> ? Kind::F64
                                                                 : Kind::I16;
    constexpr int nf = std::is_pointer_v<Fr> ? 2 : 1;
    return {n,
            k,
            !std::is_arithmetic_v<T>,
            std::is_integral_v<F>,
            nf,
            [g](const std::vector<cld>* x, int len, const double* f, [[maybe_unused]] int sf, void* raw,
                cld* res) {
                std::vector<T> v(x ? x->size() : 0);
                for (std::size_t i = 0; i < v.size(); ++i)
                    if constexpr (std::is_arithmetic_v<T>)
                        v[i] = T((*x)[i].real());
                    else
                        v[i] = {decltype(v[i].re)((*x)[i].real()), decltype(v[i].re)((*x)[i].imag())};
                F fr[2] = {};
                for (int i = 0; f && i < nf; ++i)
                    fr[i] = std::is_integral_v<F> ? F(std::lround(f[i] * 32768)) : F(f[i]);
                O* o = static_cast<O*>(raw);
                ZvpStatus s;
                if constexpr (nf == 2)
                    s = g(x ? v.data() : nullptr, len, o, f ? fr : nullptr, S(sf)...);
                else
                    s = g(x ? v.data() : nullptr, len, o, fr[0], S(sf)...);
                for (int i = 0; res && i < nf; ++i) res[i] = {(long double)o[i].re, (long double)o[i].im};
                return s;
            }};
}
#define F(f) form(#f, zvps##f)
const Form kForms[] = {
    F(Goertz_32f),      F(Goertz_32fc),        F(Goertz_64f),           F(Goertz_64fc),    F(Goertz_16s_Sfs),
    F(Goertz_16sc_Sfs), F(GoertzQ15_16sc_Sfs), F(GoertzTwo_32f),        F(GoertzTwo_32fc), F(GoertzTwo_64f),
    F(GoertzTwo_64fc),  F(GoertzTwo_16sc_Sfs), F(GoertzTwoQ15_16sc_Sfs)};

// Each sample passes through at most len recurrence steps, each rounding by about 2^-53 of the state:
// |error| <= 4 len 2^-53 sum|x| (measured: below a tenth of it); single results add their final rounding.
long double bound(Kind k, const std::vector<cld>& x, cld want) {
    long double l1 = 0;
    for (const cld& v : x) l1 += std::abs(v);
    return 4.0L * x.size() * 0x1p-53L * l1 + (k == Kind::F32 ? 0x1p-23L * std::abs(want) : 0);
}
// The integer rule (v 2^-sf, nearest even, saturated); a neighbour's value is allowed when the exact sum
// is within the double sum's error bound of a half.
long double rule(long double v, int sf) {
    return std::fmax(-32768.0L, std::fmin(32767.0L, std::nearbyint(std::ldexp(v, -sf))));
}
bool intOk(long double got, long double want, long double err, int sf) {
    return got == rule(want, sf) || got == rule(want - err, sf) || got == rule(want + err, sf);
}

// Frequencies each type holds exactly (Q15: multiples of 2^-15): edges, bins, next to 0 and 1/2, random.
TEST(Goertzel, EveryFormMatchesTheLongDoubleSum) {
    std::mt19937_64 g(20261123);
    std::uniform_real_distribution<double> u(-1, 1);
    for (const Form& fm : kForms)
        for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 33, 205, 1000, 4099}) {
            std::vector<cld> x(n);
            for (auto& v : x)
                v = fm.kind == Kind::I16
                        ? cld(std::round(u(g) * 32767), fm.cplx ? std::round(u(g) * 32767) : 0)
                        : cld(float(u(g)), fm.cplx ? float(u(g)) : 0);
            std::vector<double> fs = {0.0,         0.5,     0.25,          0.75,
                                      1 - 0x1p-15, 0x1p-15, 0.5 - 0x1p-15, 0.5 + 0x1p-15};
            for (double v : {1e-7, 0x1p-24, 0.5 - 0x1p-24, 1 - 0x1p-24, 0.1, 1.0 / n, 3.0 / n})
                if (!fm.q15 && float(v) < 1) fs.push_back(float(v));
            for (int i = 0; i < 4; ++i)
                fs.push_back(std::ldexp(double(g() % (fm.q15 ? 32768 : 1 << 24)), fm.q15 ? -15 : -24));
            for (std::size_t i = 0; i < fs.size(); ++i) {
                const double f[2] = {fs[i], fs[(i * 7 + 3) % fs.size()]};
                const cld want[2] = {oracle(x, f[0]), fm.nf > 1 ? oracle(x, f[1]) : 0};
                for (int sf :
                     fm.kind == Kind::I16 ? std::vector<int>{0, 4, 11, -2, 40} : std::vector<int>{0}) {
                    cld got[2];
                    alignas(16) unsigned char raw[32];
                    ASSERT_EQ(fm.call(&x, n, f, sf, raw, got), zvpStsNoErr);
                    for (int k = 0; k < fm.nf; ++k) {
                        const long double err = bound(fm.kind, x, want[k]);
                        EXPECT_TRUE(fm.kind != Kind::I16 ? std::abs(got[k] - want[k]) <= err
                                                         : intOk(got[k].real(), want[k].real(), err, sf) &&
                                                               intOk(got[k].imag(), want[k].imag(), err, sf))
                            << fm.name << " " << n << " f " << f[k] << " sf " << sf << " got " << got[k]
                            << " want " << want[k] << " bound " << err;
                    }
                }
            }
        }
}

// f = 0 (and -0.0) sums exactly: exact halves go to the even neighbour, sums beyond 16 bits saturate.
TEST(Goertzel, ZeroFrequencySumsExactlyWithTiesToEven) {
    const struct {
        std::vector<Zvp16s> x;
        int sf;
        Zvp16s want;
    } cases[] = {{{1, 2}, 1, 2},
                 {{5}, 1, 2},
                 {{-1, -2}, 1, -2},
                 {{-1}, 1, 0},
                 {{3, 4}, 2, 2},
                 {{-3, -4}, 2, -2},
                 {{32766}, 0, 32766},
                 {{32767, 32767}, 0, 32767},
                 {{32767, 32767}, 1, 32767},
                 {{-32768, -1}, 0, -32768},
                 {{-32768, -32768}, 16, -1}};
    for (const auto& c : cases) {
        Zvp16sc r{}, rc{};
        std::vector<Zvp16sc> xc;
        for (Zvp16s v : c.x) xc.push_back({Zvp16s(-v / 2), v});
        ASSERT_EQ(zvpsGoertz_16s_Sfs(c.x.data(), int(c.x.size()), &r, -0.0f, c.sf), zvpStsNoErr);
        ASSERT_EQ(zvpsGoertzQ15_16sc_Sfs(xc.data(), int(xc.size()), &rc, 0, c.sf), zvpStsNoErr);
        EXPECT_TRUE(r.re == c.want && r.im == 0 && rc.im == c.want) << c.x[0] << " sf " << c.sf;
    }
}

TEST(Goertzel,
     ChecksInOrderAndNothingWritten) {  // form index, null source, length, frequencies (none: a null pointer)
    const double nan = std::nan(""), q = 0x1p-15;
    const std::vector<cld> x = {{1, 2}, {3, 4}, {5, 6}, {7, 8}};
    const struct {
        int form;
        bool nullSrc;
        int len;
        std::vector<double> f;
        ZvpStatus want;
    } cases[] = {{6, true, 0, {-q}, zvpStsRelFreqErr},
                 {6, false, -5, {-1}, zvpStsRelFreqErr},  // Q15: negative first
                 {12, false, 4, {}, zvpStsNullPtrErr},
                 {12, true, 0, {100 * q, -q}, zvpStsRelFreqErr},
                 {7, false, 0, {}, zvpStsNullPtrErr},
                 {7, false, 0, {2, 0}, zvpStsSizeErr},  // pointers, length, values
                 {7, false, 4, {0, 1}, zvpStsRelFreqErr},
                 {8, false, 2, {nan, 0}, zvpStsRelFreqErr},
                 {9, false, 2, {0.5, -0x1p-1074}, zvpStsRelFreqErr},
                 {11, false, 4, {0, 1}, zvpStsRelFreqErr},
                 {2, false, 1, {1 - 0x1p-53}, zvpStsNoErr}};  // just below 1 accepted
    for (const auto& c : cases) {
        zvp::test::GuardedBuffer out(2 * sizeof(Zvp64fc));
        EXPECT_EQ(kForms[c.form].call(c.nullSrc ? nullptr : &x, c.len, c.f.empty() ? nullptr : c.f.data(), 0,
                                      out.data(), nullptr),
                  c.want)
            << kForms[c.form].name << " " << c.len;
        EXPECT_TRUE(c.want == zvpStsNoErr || out.untouched()) << kForms[c.form].name << " " << c.len;
    }
}

}  // namespace

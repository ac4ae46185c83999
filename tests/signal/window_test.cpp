// Window values against closed forms evaluated in long double (written
// here, independent of the library's recurrences), the drift of long
// windows, the particular cases and check orders, complex data against two
// real windows, and 16-bit rounding and saturation against exact rules.
// Shared checks (errors, twins, caller modes) run from the shape table.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "zvps.h"

namespace {

enum Kind { Bartlett, Hann, Hamming, Blackman, BlackmanStd, BlackmanOpt, Kaiser, BlackmanQ15, KaiserQ15 };
using LD = long double;

// The Kaiser window's I0 approximations, in long double.
LD i0(LD x) {
    const LD t = x / 3.75L;
    if (x <= 3.75L) {
        const LD y = t * t;
        return 1 + y * (3.5156229L + y * (3.0899424L + y * (1.2067492L + y * (0.2659732L + y * (0.0360768L + y * 0.0045813L)))));
    }
    const LD u = 1 / t;
    return std::exp(x) / std::sqrt(x) * (0.39894228L + u * (0.01328592L + u * (0.00225319L + u * (-0.00157565L +
           u * (0.00916281L + u * (-0.02057706L + u * (0.02635537L + u * (-0.01647633L + u * 0.00392377L))))))));
}

// w(n) for length N and the parameter a as the export receives it.
LD window(Kind k, long N, long n, LD a) {
    const LD c = std::cos(2 * M_PIl * n / (N - 1)), c2 = std::cos(4 * M_PIl * n / (N - 1));
    if ((k == Bartlett || k == Hann || k == Blackman || k == BlackmanStd || k == BlackmanQ15) && N == 3) return n == 1;
    switch (k) {
        case Bartlett: return 2 * LD(std::min(n, N - 1 - n)) / (N - 1);
        case Hann: return 0.5L - 0.5L * c;
        case Hamming: return 0.54L - 0.46L * c;
        case BlackmanStd: a = -0.16f; [[fallthrough]];
        case BlackmanQ15: if (k == BlackmanQ15) a /= 32768; [[fallthrough]];
        case Blackman: return (a + 1) / 2 - 0.5L * c - a / 2 * c2;
        case BlackmanOpt: return window(Blackman, N, n, float(-0.25L / std::pow(std::cos(M_PIl / (N - 1)), 2)));
        case KaiserQ15: a /= 32768; [[fallthrough]];
        default: const LD h = (N - 1) / 2.0L, ah = std::fabs(a);
                 return i0(ah * std::sqrt(h * h - (n - h) * (n - h))) / i0(ah * h);
    }
}

#define WIN_CALLS(T, A, Q15)                                                                             \
    ZvpStatus call(Kind k, const Zvp##T* s, Zvp##T* d, int n, double p) {                                 \
        switch (k) {                                                                                      \
            case Bartlett: return zvpsWinBartlett_##T(s, d, n);                                           \
            case Hann: return zvpsWinHann_##T(s, d, n);                                                   \
            case Hamming: return zvpsWinHamming_##T(s, d, n);                                             \
            case Blackman: return zvpsWinBlackman_##T(s, d, n, A(p));                                     \
            case BlackmanStd: return zvpsWinBlackmanStd_##T(s, d, n);                                     \
            case BlackmanOpt: return zvpsWinBlackmanOpt_##T(s, d, n);                                     \
            case Kaiser: return zvpsWinKaiser_##T(s, d, n, A(p));                                         \
            default: Q15 return zvpStsBadArgErr;                                                          \
        }                                                                                                 \
    }
#define Q15(T) return k == BlackmanQ15 ? zvpsWinBlackmanQ15_##T(s, d, n, int(p)) : zvpsWinKaiserQ15_##T(s, d, n, int(p));
WIN_CALLS(16s, float, Q15(16s))
WIN_CALLS(16sc, float, Q15(16sc))
WIN_CALLS(32f, float, )
WIN_CALLS(32fc, float, )
WIN_CALLS(64f, double, )
WIN_CALLS(64fc, double, )

template <class T> struct PartOf { using type = T; static constexpr int parts = 1; };
#define CPLX(C, R) template <> struct PartOf<C> { using type = R; static constexpr int parts = 2; };
CPLX(Zvp16sc, Zvp16s) CPLX(Zvp32fc, Zvp32f) CPLX(Zvp64fc, Zvp64f)

// The bound on every computed cosine (and Hann, Hamming, Bartlett value),
// whatever the length. A Blackman value's is the cosines' times their
// coefficients; a Kaiser value's exponent x - alpha H carries the rounding of
// x, a few units of 2^-53 alpha H.
constexpr LD kWinErr = 1e-13L;
LD errOf(Kind k, long N, LD a) {
    if (k == KaiserQ15 || k == BlackmanQ15) a /= 32768;
    if (k == Kaiser || k == KaiserQ15) return kWinErr + 8 * 0x1p-53L * std::fabs(a) * (N - 1) / 2;
    return k == Blackman || k == BlackmanQ15 ? kWinErr * (1 + std::fabs(a)) : kWinErr;
}

// Whether d is x * w in the data's precision, for a computed window value
// within err of w: doubles with one more rounding; singles with two roundings
// of w and one of the product; 16-bit values any rounding (to nearest,
// saturated) of a product in that range, which is one value unless a tie
// lies within it.
template <class P>
bool close(P d, P x, LD w, LD err, LD scale = 1) {
    const LD ax = std::fabs(LD(x));
    if constexpr (std::is_integral_v<P>) {
        if (x == 0) return d == 0;
        const LD slack = (err + 0x1p-52L * std::fabs(w)) * ax;
        auto rc = [&](LD e) { return std::nearbyint(std::fmin(std::fmax(e * scale, -32768.0L), 32767.0L)); };
        return rc(LD(x) * w - slack) <= d && d <= rc(LD(x) * w + slack);
    } else {
        const LD ulp = std::is_same_v<P, float> ? 0x1p-22L : 0x1p-52L;
        return std::fabs(LD(d) - LD(x) * w) <= (err + ulp * std::fabs(w)) * ax + LD(FLT_MIN);
    }
}

template <class P>
P draw(std::mt19937_64& g) {
    if constexpr (std::is_integral_v<P>) return P(g() % 4 == 0 ? (g() % 2 ? 32767 : -32768) : int(g() % 65536) - 32768);
    else return P(std::ldexp(double(g() >> 11) * 0x1p-53 - 0.5, 11));
}

// Every element of a window of length N; complex data bit for bit the real
// window on each part; the same bits at an offset of one element.
template <class T>
void expectWindow(Kind k, int N, double p, const char* name) {
    using P = typename PartOf<T>::type;
    std::mt19937_64 g(N * 31 + k);
    const int m = N * PartOf<T>::parts;
    std::vector<P> s(m + 2), d(m + 2), d1(m + 2);
    for (P& x : s) x = draw<P>(g);
    ASSERT_EQ(call(k, reinterpret_cast<const T*>(s.data()), reinterpret_cast<T*>(d.data()), N, p), zvpStsNoErr) << name;
    const LD a = std::is_same_v<P, double> || k == BlackmanQ15 || k == KaiserQ15 ? LD(p) : LD(float(p));
    for (int i = 0; i < m; ++i) {
        const LD w = window(k, N, i / PartOf<T>::parts, a);
        ASSERT_TRUE(close(d[i], s[i], w, errOf(k, N, a))) << name << " kind " << k << " N " << N << " alpha " << p << " element " << i
                                          << ": " << d[i] << " for " << s[i] << " * " << double(w);
    }
    if constexpr (PartOf<T>::parts == 2) {  // each part as a real vector of its own
        std::vector<P> part(N), dp(N);
        for (int h = 0; h < 2; ++h) {
            for (int n = 0; n < N; ++n) part[n] = s[2 * n + h];
            call(k, part.data(), dp.data(), N, p);
            for (int n = 0; n < N; ++n) ASSERT_EQ(d[2 * n + h], dp[n]) << name << " part " << h << " differs at " << n;
        }
    }
    std::copy(s.begin(), s.begin() + m, s.begin() + PartOf<T>::parts);
    call(k, reinterpret_cast<const T*>(s.data()) + 1, reinterpret_cast<T*>(d1.data()) + 1, N, p);
    EXPECT_EQ(std::memcmp(d.data(), d1.data() + PartOf<T>::parts, m * sizeof(P)), 0) << name << " misaligned";
}

struct Case {
    Kind k;
    std::vector<double> params;
};
const Case kCases[] = {{Bartlett, {0}},           {Hann, {0}},         {Hamming, {0}},
                       {Blackman, {0.5, -3, 5}},  {BlackmanStd, {0}},  {BlackmanOpt, {0}},
                       {Kaiser, {0, 1, -5, 4.5}}, {BlackmanQ15, {-5243, 98304}}, {KaiserQ15, {163840, 32768}}};
// Short lengths, both parities, and past the 512-index block of the driver.
const int kLengths[] = {1, 2, 3, 4, 5, 6, 7, 13, 64, 515, 1024, 1025, 1027, 2049};

TEST(Window, EveryTypeMatchesTheClosedForm) {
    for (const Case& c : kCases)
        for (double p : c.params)
            for (int N : kLengths) {
                if (N < (c.k == BlackmanOpt ? 4 : c.k >= Kaiser && c.k != BlackmanQ15 ? 1 : 3)) continue;
                expectWindow<Zvp16s>(c.k, N, p, "16s");
                expectWindow<Zvp16sc>(c.k, N, p, "16sc");
                if (c.k >= BlackmanQ15) continue;
                expectWindow<Zvp32f>(c.k, N, p, "32f");
                expectWindow<Zvp32fc>(c.k, N, p, "32fc");
                expectWindow<Zvp64f>(c.k, N, p, "64f");
                expectWindow<Zvp64fc>(c.k, N, p, "64fc");
            }
}

// The recurrences restart every 128 indices, so a million-point window keeps
// the bound of a short one; the largest error seen is reported.
TEST(Window, RecurrenceDriftStaysBoundedAtAMillion) {
    for (auto [k, N] : {std::pair{Hann, 1000000}, std::pair{BlackmanStd, 1000001}}) {
        std::vector<double> one(N, 1.0), d(N);
        ASSERT_EQ(call(k, one.data(), d.data(), N, 0), zvpStsNoErr);
        LD worst = 0;
        for (int n = 0; n < N; ++n) worst = std::fmax(worst, std::fabs(d[n] - window(k, N, n, 0)));
        EXPECT_LE(worst, kWinErr) << k << " " << N;
        RecordProperty("drift_" + std::to_string(k) + "_" + std::to_string(N), std::to_string(double(worst)));
    }
}

TEST(Window, WorkedExamples) {
    const double ones[5] = {1, 1, 1, 1, 1}, odd[5] = {3, -1e300, 7, 2, -0.5};
    double d[5], k1[1] = {-4.25};
    float f[5] = {1, 1, 1, 1, 1};
    using V = std::vector<double>;
    auto near = [&](V want) { for (int i = 0; i < 5; ++i) EXPECT_NEAR(d[i], want[i], 2e-16) << i; };
    ASSERT_EQ(zvpsWinHann_64f(ones, d, 5), zvpStsNoErr);
    near({0, 0.5, 1, 0.5, 0});
    ASSERT_EQ(zvpsWinHamming_64f(ones, d, 5), zvpStsNoErr);
    near({0.08, 0.54, 1, 0.54, 0.08});
    ASSERT_EQ(zvpsWinBartlett_32f_I(f, 5), zvpStsNoErr);
    EXPECT_EQ(std::vector<float>(f, f + 5), (std::vector<float>{0, 0.5f, 1, 0.5f, 0}));
    ASSERT_EQ(zvpsWinBlackmanStd_64f(ones, d, 3), zvpStsNoErr);
    EXPECT_EQ(V(d, d + 3), (V{0, 1, 0}));
    EXPECT_EQ(zvpsWinBlackmanOpt_64f(ones, d, 3), zvpStsSizeErr);
    ASSERT_EQ(zvpsWinKaiser_64f(odd, d, 5, 0.0), zvpStsNoErr);  // exactly ones
    EXPECT_EQ(std::memcmp(d, odd, sizeof d), 0);
    ASSERT_EQ(zvpsWinKaiser_64f_I(k1, 1, 7.0), zvpStsNoErr);  // length 1: unchanged
    EXPECT_EQ(k1[0], -4.25);
    ASSERT_EQ(zvpsWinKaiser_64f(ones, d, 5, 1e6), zvpStsNoErr);  // no overflow of I0(alpha H)
    EXPECT_EQ(V(d, d + 5), (V{0, 0, 1, 0, 0}));
    // Length 3 zeroes the ends outright, an infinity or a NaN there too.
    const float ends[3] = {NAN, -2.5f, -INFINITY}, want[3] = {0, -2.5f, 0};
    for (auto fn : {zvpsWinBartlett_32f, zvpsWinHann_32f, zvpsWinBlackmanStd_32f}) {
        ASSERT_EQ(fn(ends, f, 3), zvpStsNoErr);
        EXPECT_EQ(std::memcmp(f, want, sizeof want), 0);
    }
}

TEST(Window, ParticularCheckOrders) {
    Zvp16s v[4] = {};  // (Kaiser's alpha after pointers and length: the shape table)
    // BlackmanOpt refuses a short length before looking at the pointers.
    EXPECT_EQ(zvpsWinBlackmanOpt_16s(nullptr, nullptr, 3), zvpStsSizeErr);
    EXPECT_EQ(zvpsWinBlackmanOpt_16s(nullptr, v, 4), zvpStsNullPtrErr);
    // Bartlett on one address is the in-place form: still refuses N = 2.
    EXPECT_EQ(zvpsWinBartlett_16s(v, v, 2), zvpStsSizeErr);
}

// Bartlett's 16-bit results are exact: x * 2n / (N - 1) rounded to nearest,
// ties to even, in integers. N - 1 = 12 and 16 make many exact ties.
TEST(Window, Bartlett16sIsExactlyRounded) {
    for (int N : {5, 13, 17, 1001}) {
        std::vector<Zvp16s> s(N), d(N);
        for (int x : {1, 3, -3, 5, 6, 9, -9, 32767, -32768, 12345}) {
            for (int n = 0; n < N; ++n) s[n] = Zvp16s(n % 2 ? x : -x - (x < 0));
            ASSERT_EQ(zvpsWinBartlett_16s(s.data(), d.data(), N), zvpStsNoErr);
            for (long n = 0; n < N; ++n) {
                const long long num = 2 * std::min(n, N - 1 - n) * s[n], den = N - 1;
                long long q = num / den, r = num % den;  // toward zero
                if (2 * std::llabs(r) > den || (2 * std::llabs(r) == den && q % 2)) q += num < 0 ? -1 : 1;
                ASSERT_EQ(d[n], q) << "N " << N << " n " << n << " x " << s[n];
            }
        }
    }
}

// The scaled Q15 form: x w 2^-sf rounded once and saturated, at every
// scale factor, zero products staying zero.
TEST(Window, BlackmanQ15ScaledRoundsOnceAndSaturates) {
    for (int alpha : {-5243, -98304})
        for (int sf : {INT_MIN, -40, -16, -1, 0, 1, 2, 15, 16, 17, 40, INT_MAX}) {
            const int N = 37;
            std::vector<Zvp16s> v(N);
            std::mt19937_64 g(sf);
            for (Zvp16s& x : v) x = draw<Zvp16s>(g);
            v[5] = 0;
            const std::vector<Zvp16s> s = v;
            ASSERT_EQ(zvpsWinBlackmanQ15_16s_ISfs(v.data(), N, alpha, sf), zvpStsNoErr);
            const LD scale = std::ldexp(1.0L, int(std::clamp(-(long long)sf, -20000LL, 20000LL)));
            for (int n = 0; n < N; ++n)
                ASSERT_TRUE(close(v[n], s[n], window(BlackmanQ15, N, n, alpha), kWinErr, scale))
                    << "alpha " << alpha << " sf " << sf << " n " << n << ": " << v[n] << " from " << s[n];
        }
}

}  // namespace

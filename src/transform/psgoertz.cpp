// Goertzel: the spectrum of a vector at one or two relative frequencies,
//     X(f) = sum_n x[n] exp(-2 pi i f n).
//
// How the sum is formed. The samples are dealt round-robin to P phases,
// phase p holding x[mP + p], m = 0..M-1 (the last block padded with zeros,
// which add nothing). Each phase is the sum
//     Y_p = sum_m x[mP + p] exp(-i theta m),   theta = 2 pi P f,
// and X = sum_p exp(-2 pi i f p) Y_p, joined by Horner's rule at the end.
// The P recurrences are independent, so they run side by side in vector
// lanes and registers instead of one serial chain.
//
// Each phase runs the second-order recurrence with coefficient 2 cos(theta)
// over its samples taken LAST FIRST: fed that way, the recurrence's
// first-order part ends holding Y_p itself, so no rotation by the length is
// needed. To stay accurate when 2 cos(theta) is near +-2 the state is the
// value s and its first difference d (sigma = +1 near theta = 0, -1 near pi):
//     d' = sigma d + x + lambda s,   s' = d' + sigma s,
//     lambda = 2 cos(theta) - 2 sigma = -4 sin^2(theta/2) or 4 cos^2(theta/2),
// both formed from sin and cos of theta/2, so lambda keeps its relative
// accuracy however small it is. At the end
//     Y_p = s (1 - sigma e^{i theta}) + sigma e^{i theta} d.
// Everything runs in double precision for every source type.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "fpguard.h"
#include "lane.h"
#include "p8/goertzel.h"

namespace zvp::p8 {
namespace {

using D = Full<double>;
using R = D::R;

struct Cx {
    double re, im;
};
inline Cx operator*(Cx a, Cx b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
inline Cx operator+(Cx a, Cx b) { return {a.re + b.re, a.im + b.im}; }

// cos(pi b) and sin(pi b) for |b| <= 1/4 by their Taylor series (the first
// omitted terms are below 2^-57). SSE arithmetic alone, so under the integer
// forms' guard the results cannot depend on how the platform's libm treats
// the caller's x87 or SSE rounding mode, and both targets agree.
void sinCosPiSmall(double b, double& c, double& s) {
    constexpr double kPi = 3.141592653589793238;
    const double t = kPi * b, t2 = t * t;
    // sin t = t (1 - t^2/3! + t^4/5! - ... + t^16/17!)
    s = t * (1.0 + t2 * (-1.0 / 6.0 + t2 * (1.0 / 120.0 + t2 * (-1.0 / 5040.0 + t2 * (1.0 / 362880.0 +
        t2 * (-1.0 / 39916800.0 + t2 * (1.0 / 6227020800.0 + t2 * (-1.0 / 1307674368000.0 +
        t2 * (1.0 / 355687428096000.0)))))))));
    // cos t = 1 - t^2/2! + t^4/4! - ... + t^16/16!
    c = 1.0 + t2 * (-0.5 + t2 * (1.0 / 24.0 + t2 * (-1.0 / 720.0 + t2 * (1.0 / 40320.0 + t2 * (-1.0 / 3628800.0 +
        t2 * (1.0 / 479001600.0 + t2 * (-1.0 / 87178291200.0 + t2 * (1.0 / 20922789888000.0))))))));
}

// cos(pi a) and sin(pi a) for |a| <= 1; each reduction step is exact.
void sinCosPi(double a, double& c, double& s) {
    const bool neg = a < 0;
    double b = neg ? -a : a;
    const bool back = b > 0.5;  // pi a = pi - pi (1 - a)
    if (back) b = 1.0 - b;
    if (b > 0.25) {
        sinCosPiSmall(0.5 - b, s, c);
    } else {
        sinCosPiSmall(b, c, s);
    }
    if (back) c = -c;
    if (neg) s = -s;
}

// The fraction of x, as a value in [-1/2, 1/2) (x >= 0 and below 2^52; exact).
double centredFraction(double x) {
    double r = x - double(std::int64_t(x));
    return r >= 0.5 ? r - 1.0 : r;
}

// The coefficients of one frequency for recurrences of P phases.
struct Plan {
    bool flip;     // sigma = -1: theta nearer pi than 0
    double lambda;
    Cx a, b;       // Y = s a + d b
    Cx r;          // exp(-2 pi i f), the step between phases
};

Plan makePlan(double f, int phases) {
    Plan pl;
    const double ph = centredFraction(f * phases);  // theta / (2 pi), exact
    double ch, sh;
    sinCosPi(ph, ch, sh);  // cos and sin of theta / 2
    const double sinT = 2.0 * sh * ch;
    pl.flip = ph > 0.25 || ph < -0.25;
    if (!pl.flip) {
        const double v = 2.0 * sh * sh;  // 1 - cos theta
        pl.lambda = -2.0 * v;
        pl.a = {v, -sinT};               // 1 - e^{i theta}
        pl.b = {1.0 - v, sinT};          // e^{i theta}
    } else {
        const double v = 2.0 * ch * ch;  // 1 + cos theta
        pl.lambda = 2.0 * v;
        pl.a = {v, sinT};                // 1 + e^{i theta}
        pl.b = {1.0 - v, -sinT};         // -e^{i theta}
    }
    double cw, sw;
    sinCosPi(2.0 * centredFraction(f), cw, sw);
    pl.r = {cw, -sw};
    return pl;
}

// Two doubles from the source: two consecutive real samples, or the (re, im)
// of one complex sample.
template <class T>
struct Source;
template <>
struct Source<Zvp32f> {
    using E = Zvp32f;
    static constexpr int kPerReg = 2;
    static R load(const E* p) { return D::fromF32(Lanes<float, 2>::load(p)); }
};
template <>
struct Source<Zvp32fc> {
    using E = Zvp32fc;
    static constexpr int kPerReg = 1;
    static R load(const E* p) { return D::fromF32(Lanes<float, 2>::load(&p->re)); }
};
template <>
struct Source<Zvp64f> {
    using E = Zvp64f;
    static constexpr int kPerReg = 2;
    static R load(const E* p) { return D::load(p); }
};
template <>
struct Source<Zvp64fc> {
    using E = Zvp64fc;
    static constexpr int kPerReg = 1;
    static R load(const E* p) { return D::load(&p->re); }
};
template <>
struct Source<Zvp16s> {
    using E = Zvp16s;
    static constexpr int kPerReg = 2;
    static R load(const E* p) { return D::fromI32(Lanes<std::int16_t, 2>::widenLo(Lanes<std::int16_t, 2>::load(p))); }
};
template <>
struct Source<Zvp16sc> {
    using E = Zvp16sc;
    static constexpr int kPerReg = 1;
    static R load(const E* p) {
        return D::fromI32(Lanes<std::int16_t, 2>::widenLo(Lanes<std::int16_t, 2>::load(&p->re)));
    }
};

// One step of the recurrence on a register of lanes.
template <bool Flip>
inline void step(R& s, R& d, R x, R lambda) {
    if constexpr (Flip) {
        d = D::add(D::sub(x, d), D::mul(lambda, s));
        s = D::sub(d, s);
    } else {
        d = D::add(D::add(d, x), D::mul(lambda, s));
        s = D::add(s, d);
    }
}

// Registers of state per frequency: four independent chains keep the adder
// busy through the latency of one step; two frequencies take two each.
template <int F>
constexpr int kRegs = F == 1 ? 4 : 2;
template <class T, int F>
constexpr int kPhases = kRegs<F> * Source<T>::kPerReg;

// The final state of every phase's recurrence, lane by lane: sv[f][2j + l]
// is lane l of register j for frequency f.
template <int F>
struct State {
    alignas(16) double s[F][2 * kRegs<F>];
    alignas(16) double d[F][2 * kRegs<F>];
};

template <class T, int F, bool FlipA, bool FlipB>
void run(const T* x, int len, const Plan* plans, State<F>& out) {
    using S = Source<T>;
    constexpr int G = kRegs<F>, P = kPhases<T, F>;
    R s[F][G], d[F][G], lam[F];
    for (int f = 0; f < F; ++f) {
        lam[f] = D::set1(plans[f].lambda);
        for (int j = 0; j < G; ++j) s[f][j] = d[f][j] = D::zero();
    }
    auto block = [&](const T* p) {
        R v[G];
#pragma GCC unroll 8
        for (int j = 0; j < G; ++j) v[j] = S::load(p + j * S::kPerReg);
#pragma GCC unroll 8
        for (int j = 0; j < G; ++j) step<FlipA>(s[0][j], d[0][j], v[j], lam[0]);
        if constexpr (F == 2) {
#pragma GCC unroll 8
            for (int j = 0; j < G; ++j) step<FlipB>(s[1][j], d[1][j], v[j], lam[F - 1]);
        }
    };
    // Last block first: the samples past the end are zeros.
    std::ptrdiff_t m = (std::ptrdiff_t(len) + P - 1) / P;
    const int rest = int(len - (m - 1) * P);
    if (rest < P) {
        T pad[P] = {};
        std::memcpy(pad, x + (m - 1) * P, std::size_t(rest) * sizeof(T));
        block(pad);
        --m;
    }
    for (std::ptrdiff_t b = m - 1; b >= 0; --b) block(x + b * P);
    for (int f = 0; f < F; ++f)
        for (int j = 0; j < G; ++j) {
            D::storea(out.s[f] + 2 * j, s[f][j]);
            D::storea(out.d[f] + 2 * j, d[f][j]);
        }
}

// X from the phases' final states.
template <class T, int F>
Cx join(const Plan& pl, const double* sv, const double* dv) {
    constexpr int P = kPhases<T, F>;
    Cx acc{0.0, 0.0};
    for (int p = P - 1; p >= 0; --p) {
        Cx y;
        if constexpr (Source<T>::kPerReg == 1) {
            y = Cx{sv[2 * p], sv[2 * p + 1]} * pl.a + Cx{dv[2 * p], dv[2 * p + 1]} * pl.b;
        } else {
            y = {sv[p] * pl.a.re + dv[p] * pl.b.re, sv[p] * pl.a.im + dv[p] * pl.b.im};
        }
        acc = acc * pl.r + y;
    }
    return acc;
}

// X at each of F frequencies (already checked to lie in [0, 1)).
template <class T, int F>
void analyse(const T* x, int len, const double* freq, Cx* res) {
    Plan pl[F];
    for (int f = 0; f < F; ++f) pl[f] = makePlan(freq[f], kPhases<T, F>);
    State<F> st;
    const bool fa = pl[0].flip, fb = pl[F - 1].flip;
    if (fa && fb) run<T, F, true, true>(x, len, pl, st);
    else if (fa) run<T, F, true, false>(x, len, pl, st);
    else if (fb) run<T, F, false, true>(x, len, pl, st);
    else run<T, F, false, false>(x, len, pl, st);
    for (int f = 0; f < F; ++f) res[f] = join<T, F>(pl[f], st.s[f], st.d[f]);
}

template <class Fr>
bool badFreq(Fr f) {
    return !(f >= Fr(0) && f < Fr(1));  // NaN too
}

// One part of an integer result: v 2^-sf to nearest (ties to even), saturated.
Zvp16s scalePart(double v, int sf) {
    const int k = sf > 2000 ? 2000 : sf < -2000 ? -2000 : sf;
    double y = v;
    // 2^-k in steps that stay normal.
    for (int e = -k; e != 0;) {
        const int t = e > 1000 ? 1000 : e < -1000 ? -1000 : e;
        std::uint64_t bits = std::uint64_t(1023 + t) << 52;
        double p2;
        std::memcpy(&p2, &bits, 8);
        y *= p2;
        e -= t;
    }
    y = One<double>::first(One<double>::roundNearest(One<double>::set1(y)));
    if (y >= 32767.0) return 32767;
    if (y <= -32768.0) return -32768;
    return Zvp16s(y);
}

template <class T, class Fr, class O>
ZvpStatus goertz(const T* src, int len, O* val, Fr freq) {
    ZVP_CHECK_PTRS(src, val);
    ZVP_CHECK_LENS(len);
    if (badFreq(freq)) return zvpStsRelFreqErr;
    const double f = double(freq);
    Cx r;
    analyse<T, 1>(src, len, &f, &r);
    using P = decltype(val->re);
    *val = {P(r.re), P(r.im)};
    return zvpStsNoErr;
}

template <class T, class Fr, class O>
ZvpStatus goertzTwo(const T* src, int len, O* val, const Fr* freq) {
    ZVP_CHECK_PTRS(src, val, freq);
    ZVP_CHECK_LENS(len);
    if (badFreq(freq[0]) || badFreq(freq[1])) return zvpStsRelFreqErr;
    const double f[2] = {double(freq[0]), double(freq[1])};
    Cx r[2];
    analyse<T, 2>(src, len, f, r);
    using P = decltype(val->re);
    for (int k = 0; k < 2; ++k) val[k] = {P(r[k].re), P(r[k].im)};
    return zvpStsNoErr;
}

// Integer forms: the whole computation, table set-up included, at the
// nearest rounding mode without flushing, so the caller's floating-point
// state cannot change a result.
template <int F, class T>
ZvpStatus goertzSfs(const T* src, int len, Zvp16sc* val, const float* freq, int sf) {
    ZVP_CHECK_PTRS(src, val, freq);
    ZVP_CHECK_LENS(len);
    for (int k = 0; k < F; ++k)
        if (badFreq(freq[k])) return zvpStsRelFreqErr;
    MxcsrGuard guard(MxcsrGuard::kNearest);
    double f[F];
    for (int k = 0; k < F; ++k) f[k] = freq[k];
    Cx r[F];
    analyse<T, F>(src, len, f, r);
    for (int k = 0; k < F; ++k) val[k] = {scalePart(r[k].re, sf), scalePart(r[k].im, sf)};
    return zvpStsNoErr;
}

constexpr float kQ15 = 3.0517578125e-5f;  // 2^-15

}  // namespace

ZvpStatus zvpsGoertz_32f(const Zvp32f* pSrc, int len, Zvp32fc* pVal, Zvp32f rFreq) {
    return goertz(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertz_32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pVal, Zvp32f rFreq) {
    return goertz(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertz_64f(const Zvp64f* pSrc, int len, Zvp64fc* pVal, Zvp64f rFreq) {
    return goertz(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertz_64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pVal, Zvp64f rFreq) {
    return goertz(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertz_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16sc* pVal, Zvp32f rFreq, int scaleFactor) {
    return goertzSfs<1>(pSrc, len, pVal, &rFreq, scaleFactor);
}
ZvpStatus zvpsGoertz_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pVal, Zvp32f rFreq, int scaleFactor) {
    return goertzSfs<1>(pSrc, len, pVal, &rFreq, scaleFactor);
}
ZvpStatus zvpsGoertzQ15_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pVal, Zvp16s rFreqQ15, int scaleFactor) {
    if (rFreqQ15 < 0) return zvpStsRelFreqErr;
    return p8::zvpsGoertz_16sc_Sfs(pSrc, len, pVal, float(rFreqQ15) * kQ15, scaleFactor);
}

ZvpStatus zvpsGoertzTwo_32f(const Zvp32f* pSrc, int len, Zvp32fc pVal[2], const Zvp32f rFreq[2]) {
    return goertzTwo(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertzTwo_32fc(const Zvp32fc* pSrc, int len, Zvp32fc pVal[2], const Zvp32f rFreq[2]) {
    return goertzTwo(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertzTwo_64f(const Zvp64f* pSrc, int len, Zvp64fc pVal[2], const Zvp64f rFreq[2]) {
    return goertzTwo(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertzTwo_64fc(const Zvp64fc* pSrc, int len, Zvp64fc pVal[2], const Zvp64f rFreq[2]) {
    return goertzTwo(pSrc, len, pVal, rFreq);
}
ZvpStatus zvpsGoertzTwo_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc pVal[2], const Zvp32f rFreq[2], int scaleFactor) {
    return goertzSfs<2>(pSrc, len, pVal, rFreq, scaleFactor);
}
ZvpStatus zvpsGoertzTwoQ15_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc pVal[2], const Zvp16s rFreqQ15[2],
                                     int scaleFactor) {
    if (rFreqQ15 == nullptr) return zvpStsNullPtrErr;
    if (rFreqQ15[0] < 0 || rFreqQ15[1] < 0) return zvpStsRelFreqErr;
    const float f[2] = {float(rFreqQ15[0]) * kQ15, float(rFreqQ15[1]) * kQ15};
    return p8::zvpsGoertzTwo_16sc_Sfs(pSrc, len, pVal, f, scaleFactor);
}

}  // namespace zvp::p8

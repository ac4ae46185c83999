// Bartlett, Hann, Hamming and the Blackman windows.
//
// The cosine windows are a0 - a1 cos(n t) - a2 cos(2 n t), t = 2 pi / (N - 1).
// Rather than one cos per element, the cosines of a run of indices come from
// the three-term recurrence cos((n + 4) u) = 2 cos(4 u) cos(n u) - cos((n - 4) u)
// in four interleaved lanes (indices n .. n + 3, two vectors of doubles).
// Every run of 128 indices starts the recurrence again from cos and sin of
// its first angle (angle addition with the directly computed cos(j u),
// sin(j u), j = -4 .. 3), so the rounding errors a recurrence accumulates --
// growing with the square of its number of steps -- stay those of at most
// 32 steps: about 2e-14 on every window value, whatever N.
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>
#include <type_traits>

#include "check.h"
#include "forms.h"
#include "p8/window.h"
#include "winapply.h"

namespace zvp::p8 {
namespace {

using win::D;

// cos(n u) for n = n0 .. n0 + 3 (cur, in two vectors) and n0 - 4 .. n0 - 1
// (prev), advanced four indices at a time.
class CosRun {
public:
    // cos(j u) and sin(j u) for j = 1 .. 4, the negative j by symmetry;
    // k = 2 cos(4 u).
    explicit CosRun(double u) : u_(u) {
        c_[4] = 1.0;
        s_[4] = 0.0;
        for (int j = 1; j <= 4; ++j) {
            const double c = std::cos(j * u), s = std::sin(j * u);
            if (j < 4) c_[4 + j] = c, s_[4 + j] = s;
            c_[4 - j] = c, s_[4 - j] = -s;
        }
        k_ = 2.0 * c_[0];
    }
    struct State {
        D::R prev[2], cur[2];
    };
    State seed(std::ptrdiff_t n0) const {
        const double a = double(n0) * u_;
        const double ca = std::cos(a), sa = std::sin(a);
        alignas(16) double v[8];
        for (int j = 0; j < 8; ++j) v[j] = ca * c_[j] - sa * s_[j];
        return {{D::load(v), D::load(v + 2)}, {D::load(v + 4), D::load(v + 6)}};
    }
    void step(State& st) const {
        const D::R k = D::set1(k_);
        for (int h = 0; h < 2; ++h) {
            const D::R next = D::sub(D::mul(k, st.cur[h]), st.prev[h]);
            st.prev[h] = st.cur[h];
            st.cur[h] = next;
        }
    }

private:
    double u_, k_;
    double c_[8], s_[8];  // j = -4 .. 3 at j + 4
};

// w(n) = a0 - a1 cos(n t) - a2 cos(2 n t); a2 = 0 skips the second cosine.
class CosineWindow {
public:
    CosineWindow(std::ptrdiff_t N, double a0, double a1, double a2)
        : a0_(a0), a1_(a1), a2_(a2), r1_(2.0 * std::numbers::pi / double(N - 1)),
          r2_(4.0 * std::numbers::pi / double(N - 1)) {}
    // Restarting every kRun indices (kRun / 4 steps of each lane).
    void fill(std::ptrdiff_t n0, std::ptrdiff_t m, double* w) const {
        for (std::ptrdiff_t j = 0; j < m; j += kRun) fillRun(n0 + j, std::min(kRun, m - j), w + j);
    }

private:
    static constexpr std::ptrdiff_t kRun = 128;
    void fillRun(std::ptrdiff_t n0, std::ptrdiff_t m, double* w) const {
        const D::R a0 = D::set1(a0_), a1 = D::set1(a1_), a2 = D::set1(a2_);
        CosRun::State c1 = r1_.seed(n0);
        if (a2_ == 0.0) {
            for (std::ptrdiff_t j = 0; j < m; j += 4) {
                for (int h = 0; h < 2; ++h) D::store(w + j + 2 * h, D::sub(a0, D::mul(a1, c1.cur[h])));
                r1_.step(c1);
            }
            return;
        }
        CosRun::State c2 = r2_.seed(n0);
        for (std::ptrdiff_t j = 0; j < m; j += 4) {
            for (int h = 0; h < 2; ++h)
                D::store(w + j + 2 * h, D::sub(D::sub(a0, D::mul(a1, c1.cur[h])), D::mul(a2, c2.cur[h])));
            r1_.step(c1);
            r2_.step(c2);
        }
    }

    double a0_, a1_, a2_;
    CosRun r1_, r2_;
};

// w(n) = n * step.
struct Ramp {
    double step;
    void fill(std::ptrdiff_t n0, std::ptrdiff_t m, double* w) const {
        const D::R st = D::set1(step), two = D::set1(2.0);
        D::R n = D::pair(double(n0), double(n0 + 1));
        for (std::ptrdiff_t j = 0; j < m; j += 2) {
            D::store(w + j, D::mul(n, st));
            n = D::add(n, two);
        }
    }
};

template <class T>
struct Data {
    using P = form::Part<T>;
    static constexpr int kParts = int(form::kParts<T>);
};

// {0, x(1), 0}: the windows that vanish at both ends, at length 3.
template <class T>
void three(const T* s, T* d) {
    const T mid = s[1];
    std::memset(static_cast<void*>(d), 0, sizeof(T));
    std::memset(static_cast<void*>(d + 2), 0, sizeof(T));
    d[1] = mid;
}

template <class T, class Gen>
void runOn(const T* s, T* d, int len, Gen& gen, const win::Scale16& k = {}) {
    win::run<Data<T>::kParts>(form::parts(s), form::parts(d), std::ptrdiff_t(len), gen, k);
}

template <class T>
ZvpStatus bartlett(const T* s, T* d, int len) {
    const MxcsrGuard nearest(MxcsrGuard::kNearest);  // the window never follows the caller's mode
    ZVP_CHECK_PTRS(s, d);
    if (len < 3) return zvpStsSizeErr;
    if (len == 3) {
        three(s, d);
        return zvpStsNoErr;
    }
    using P = typename Data<T>::P;
    if constexpr (std::is_same_v<P, Zvp16s>) {
        // Exact: x * 2n / (N - 1) from the exact product x * 2n.
        win::Scale16 k;
        k.divided = true;
        k.div = double(len - 1);
        Ramp r{2.0};
        runOn(s, d, len, r, k);
    } else {
        Ramp r{double(P(2.0 / double(len - 1)))};
        runOn(s, d, len, r);
    }
    return zvpStsNoErr;
}

template <class T>
ZvpStatus cosine(const T* s, T* d, int len, double a0, double a1, double a2, bool zeroEnds,
                 const win::Scale16& k = {}) {
    const MxcsrGuard nearest(MxcsrGuard::kNearest);  // the window never follows the caller's mode
    ZVP_CHECK_PTRS(s, d);
    if (len < 3) return zvpStsSizeErr;
    if (len == 3 && zeroEnds) {
        three(s, d);
        return zvpStsNoErr;
    }
    CosineWindow g(len, a0, a1, a2);
    runOn(s, d, len, g, k);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus hann(const T* s, T* d, int len) {
    return cosine(s, d, len, 0.5, 0.5, 0.0, true);
}
template <class T>
ZvpStatus hamming(const T* s, T* d, int len) {
    return cosine(s, d, len, 0.54, 0.46, 0.0, false);
}
template <class T>
ZvpStatus blackman(const T* s, T* d, int len, double alpha, const win::Scale16& k = {}) {
    const MxcsrGuard nearest(MxcsrGuard::kNearest);  // the window never follows the caller's mode
    return cosine(s, d, len, (alpha + 1.0) / 2.0, 0.5, alpha / 2.0, true, k);
}

// -0.16 in single precision, bit pattern 0xBE23D70A.
float standardAlpha() {
    const std::uint32_t bits = 0xBE23D70Au;
    float a;
    std::memcpy(&a, &bits, sizeof a);
    return a;
}
template <class T>
ZvpStatus blackmanStd(const T* s, T* d, int len) {
    return blackman(s, d, len, double(standardAlpha()));
}
template <class T>
ZvpStatus blackmanOpt(const T* s, T* d, int len) {
    const MxcsrGuard nearest(MxcsrGuard::kNearest);  // the window never follows the caller's mode
    if (len < 4) return zvpStsSizeErr;
    const double q = 0.5 / std::cos(std::numbers::pi / double(len - 1));
    return blackman(s, d, len, double(float(-(q * q))));
}

double q15(int alpha) { return double(alpha) / 32768.0; }

}  // namespace

// An out-of-place Bartlett call on one address is the in-place operation.
#define ZVP_WIN_PLAIN(T)                                                                                  \
    ZvpStatus zvpsWinBartlett_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) {                            \
        if (pSrc == pDst) return p8::zvpsWinBartlett_##T##_I(pDst, len);                                      \
        return bartlett(pSrc, pDst, len);                                                                 \
    }                                                                                                     \
    ZvpStatus zvpsWinBartlett_##T##_I(Zvp##T* pSrcDst, int len) { return bartlett<Zvp##T>(pSrcDst, pSrcDst, len); } \
    ZvpStatus zvpsWinHann_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) { return hann(pSrc, pDst, len); } \
    ZvpStatus zvpsWinHann_##T##_I(Zvp##T* pSrcDst, int len) { return hann<Zvp##T>(pSrcDst, pSrcDst, len); } \
    ZvpStatus zvpsWinHamming_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) { return hamming(pSrc, pDst, len); } \
    ZvpStatus zvpsWinHamming_##T##_I(Zvp##T* pSrcDst, int len) { return hamming<Zvp##T>(pSrcDst, pSrcDst, len); } \
    ZvpStatus zvpsWinBlackmanStd_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) {                         \
        return blackmanStd(pSrc, pDst, len);                                                              \
    }                                                                                                     \
    ZvpStatus zvpsWinBlackmanStd_##T##_I(Zvp##T* pSrcDst, int len) {                                      \
        return blackmanStd<Zvp##T>(pSrcDst, pSrcDst, len);                                                \
    }                                                                                                     \
    ZvpStatus zvpsWinBlackmanOpt_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) {                         \
        return blackmanOpt(pSrc, pDst, len);                                                              \
    }                                                                                                     \
    ZvpStatus zvpsWinBlackmanOpt_##T##_I(Zvp##T* pSrcDst, int len) {                                      \
        return blackmanOpt<Zvp##T>(pSrcDst, pSrcDst, len);                                                \
    }
ZVP_WIN_PLAIN(16s)
ZVP_WIN_PLAIN(16sc)
ZVP_WIN_PLAIN(32f)
ZVP_WIN_PLAIN(32fc)
ZVP_WIN_PLAIN(64f)
ZVP_WIN_PLAIN(64fc)
#undef ZVP_WIN_PLAIN

#define ZVP_WIN_BLACKMAN(T, A)                                                                            \
    ZvpStatus zvpsWinBlackman_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len, A alpha) {                   \
        return blackman(pSrc, pDst, len, double(alpha));                                                  \
    }                                                                                                     \
    ZvpStatus zvpsWinBlackman_##T##_I(Zvp##T* pSrcDst, int len, A alpha) {                                \
        return blackman<Zvp##T>(pSrcDst, pSrcDst, len, double(alpha));                                    \
    }
ZVP_WIN_BLACKMAN(16s, Zvp32f)
ZVP_WIN_BLACKMAN(16sc, Zvp32f)
ZVP_WIN_BLACKMAN(32f, Zvp32f)
ZVP_WIN_BLACKMAN(32fc, Zvp32f)
ZVP_WIN_BLACKMAN(64f, Zvp64f)
ZVP_WIN_BLACKMAN(64fc, Zvp64f)
#undef ZVP_WIN_BLACKMAN

ZvpStatus zvpsWinBlackmanQ15_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, int alphaQ15) {
    return blackman(pSrc, pDst, len, q15(alphaQ15));
}
ZvpStatus zvpsWinBlackmanQ15_16s_I(Zvp16s* pSrcDst, int len, int alphaQ15) {
    return blackman<Zvp16s>(pSrcDst, pSrcDst, len, q15(alphaQ15));
}
ZvpStatus zvpsWinBlackmanQ15_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, int alphaQ15) {
    return blackman(pSrc, pDst, len, q15(alphaQ15));
}
ZvpStatus zvpsWinBlackmanQ15_16sc_I(Zvp16sc* pSrcDst, int len, int alphaQ15) {
    return blackman<Zvp16sc>(pSrcDst, pSrcDst, len, q15(alphaQ15));
}
// The product times 2^-scaleFactor, rounded once: scaling by a power of two
// is exact in double until the result is far below 1/2 or far beyond the
// 16-bit range, where it becomes 0 or saturates as the rule asks.
ZvpStatus zvpsWinBlackmanQ15_16s_ISfs(Zvp16s* pSrcDst, int len, int alphaQ15, int scaleFactor) {
    win::Scale16 k;
    k.scaled = true;
    k.mul = std::ldexp(1.0, scaleFactor == INT_MIN ? INT_MAX : -scaleFactor);
    return blackman<Zvp16s>(pSrcDst, pSrcDst, len, q15(alphaQ15), k);
}

}  // namespace zvp::p8

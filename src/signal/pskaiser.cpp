// The Kaiser window, w(n) = I0(alpha sqrt(n (N - 1 - n))) / I0(alpha H),
// H = (N - 1) / 2, with I0 from its two classical polynomial
// approximations (below and above x = 3.75).
//
// Above 3.75, I0(x) = exp(x) g(x) with g(x) = P(3.75 / x) / sqrt(x). The
// normaliser is written the same way once per call, and the exponentials
// are taken of x - alpha H <= 0 (the library's Exp_64f over each block), so
// no exp(alpha H) is ever formed and a large alpha cannot overflow. At the
// centre of an odd length, x = alpha H exactly, and the quotient is formed
// so that it is exactly 1 there.
#include <cmath>
#include <cstdint>

#include "check.h"
#include "forms.h"
#include "p8/powers.h"
#include "p8/window.h"
#include "winapply.h"

namespace zvp::p8 {
namespace {

using win::D;

constexpr double kBreak = 3.75;
constexpr double kInvBreak = 0.26666666666666666;  // 1 / 3.75

// 1 + 3.5156229 t^2 + ... + 0.0045813 t^12, y = t^2.
template <class L>
typename L::R smallPoly(typename L::R y) {
    typename L::R p = L::set1(0.0045813);
    for (double c : {0.0360768, 0.2659732, 1.2067492, 3.0899424, 3.5156229, 1.0}) p = L::add(L::mul(p, y), L::set1(c));
    return p;
}
// 0.39894228 + 0.01328592 u + ... + 0.00392377 u^8, u = 1 / t.
template <class L>
typename L::R largePoly(typename L::R u) {
    typename L::R p = L::set1(0.00392377);
    for (double c : {-0.01647633, 0.02635537, -0.02057706, 0.00916281, -0.00157565, 0.00225319, 0.01328592, 0.39894228})
        p = L::add(L::mul(p, u), L::set1(c));
    return p;
}
double smallPoly1(double x) {
    const double t = x * kInvBreak;
    return One<double>::first(smallPoly<One<double>>(One<double>::set1(t * t)));
}
double largePoly1(double x) {
    return One<double>::first(largePoly<One<double>>(One<double>::set1(1.0 / (x * kInvBreak))));
}

class KaiserWindow {
public:
    KaiserWindow(std::ptrdiff_t N, double alpha) : a_(std::fabs(alpha)), n1_(double(N - 1)) {
        xH_ = a_ * (n1_ / 2.0);
        if (xH_ <= kBreak) {
            normSmall_ = smallPoly1(xH_);  // every x of the window is at most xH
            large_ = false;
        } else {
            large_ = true;
            pH_ = largePoly1(xH_);
            sH_ = std::sqrt(xH_);
            // Below the break: I0(x) / I0(xH) = P0(x) exp(-xH) sqrt(xH) / P(xH).
            double e = -xH_, ex;
            zvpsExp_64f(&e, &ex, 1);
            scaleSmall_ = ex * sH_ / pH_;
        }
    }

    void fill(std::ptrdiff_t n0, std::ptrdiff_t m, double* w) const {
        alignas(16) double x[win::kWinBlock + win::kWinPad];
        alignas(16) double ex[win::kWinBlock + win::kWinPad];
        const D::R a = D::set1(a_), n1 = D::set1(n1_), two = D::set1(2.0);
        D::R n = D::pair(double(n0), double(n0 + 1));
        for (std::ptrdiff_t j = 0; j < m; j += 2) {
            D::store(x + j, D::mul(a, D::sqrt(D::mul(n, D::sub(n1, n)))));
            n = D::add(n, two);
        }
        const D::R inv = D::set1(kInvBreak);
        if (!large_) {
            const D::R norm = D::set1(normSmall_);
            for (std::ptrdiff_t j = 0; j < m; j += 2) {
                const D::R t = D::mul(D::load(x + j), inv);
                D::store(w + j, D::div(smallPoly<D>(D::mul(t, t)), norm));
            }
            return;
        }
        // x grows with n on the first half: the large branch is a suffix.
        std::ptrdiff_t j0 = 0;
        while (j0 < m && x[j0] <= kBreak) ++j0;
        for (std::ptrdiff_t j = 0; j < j0; ++j) ex[j] = 0.0;
        for (std::ptrdiff_t j = j0; j < m; ++j) ex[j] = x[j] - xH_;
        ex[m] = 0.0;  // the pad lane of an odd block
        if (j0 < m) zvpsExp_64f(ex + j0, ex + j0, int(m - j0));
        const D::R brk = D::set1(kBreak), scale = D::set1(scaleSmall_), one = D::set1(1.0);
        const D::R num = D::set1(sH_), den = D::set1(pH_);
        for (std::ptrdiff_t j = 0; j < m; j += 2) {
            const D::R xv = D::load(x + j);
            const D::R t = D::mul(xv, inv);
            const D::R small = D::mul(smallPoly<D>(D::mul(t, t)), scale);
            const D::R xb = D::max(xv, brk);
            const D::R g = D::div(D::mul(largePoly<D>(D::div(one, D::mul(xb, inv))), num), D::mul(D::sqrt(xb), den));
            D::store(w + j, D::blend(small, D::mul(D::load(ex + j), g), D::gt(xv, brk)));
        }
    }

private:
    double a_, n1_, xH_;
    bool large_;
    double normSmall_ = 1.0, scaleSmall_ = 0.0, pH_ = 1.0, sH_ = 1.0;
};

template <class T>
ZvpStatus kaiser(const T* s, T* d, int len, double alpha) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if (!std::isfinite(alpha)) return zvpStsBadArgErr;
    const MxcsrGuard nearest(MxcsrGuard::kNearest);  // alpha and the normaliser too
    KaiserWindow g(len, alpha);
    win::run<int(form::kParts<T>)>(form::parts(s), form::parts(d), std::ptrdiff_t(len), g);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_WIN_KAISER(T, A)                                                                              \
    ZvpStatus zvpsWinKaiser_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len, A alpha) {                     \
        return kaiser(pSrc, pDst, len, double(alpha));                                                    \
    }                                                                                                     \
    ZvpStatus zvpsWinKaiser_##T##_I(Zvp##T* pSrcDst, int len, A alpha) {                                  \
        return kaiser<Zvp##T>(pSrcDst, pSrcDst, len, double(alpha));                                      \
    }
ZVP_WIN_KAISER(16s, Zvp32f)
ZVP_WIN_KAISER(16sc, Zvp32f)
ZVP_WIN_KAISER(32f, Zvp32f)
ZVP_WIN_KAISER(32fc, Zvp32f)
ZVP_WIN_KAISER(64f, Zvp64f)
ZVP_WIN_KAISER(64fc, Zvp64f)
#undef ZVP_WIN_KAISER

#define ZVP_WIN_KAISER_Q15(T)                                                                             \
    ZvpStatus zvpsWinKaiserQ15_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len, int alphaQ15) {             \
        return kaiser(pSrc, pDst, len, double(alphaQ15) / 32768.0);                                       \
    }                                                                                                     \
    ZvpStatus zvpsWinKaiserQ15_##T##_I(Zvp##T* pSrcDst, int len, int alphaQ15) {                          \
        return kaiser<Zvp##T>(pSrcDst, pSrcDst, len, double(alphaQ15) / 32768.0);                         \
    }
ZVP_WIN_KAISER_Q15(16s)
ZVP_WIN_KAISER_Q15(16sc)
#undef ZVP_WIN_KAISER_Q15

}  // namespace zvp::p8

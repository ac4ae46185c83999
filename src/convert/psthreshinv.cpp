// Threshold_LTInv: 1 / v, v being x with its magnitude raised to at least
// the level.
//
// 32f takes the hardware reciprocal estimate r of v and one Newton step,
// r (2 - v r): the estimate's relative error e (|e| <= 1.5 * 2^-12) becomes
// e^2 plus the roundings of v r and of the last product (2 - v r is exact,
// v r being within 2^-11 of 1): at most 4.3 * 2^-24 in all. Where the step gives
// no normal number (v zero, infinite or NaN, or 1/v outside the normal
// range, where the estimate is flushed or saturated) the element is divided
// instead. 64f always divides: there is no double estimate to refine. The
// complex forms run through thresh_cplx.h.
//
// Every form runs with exceptions masked, rounding to nearest, no flush to
// zero or denormals-are-zero and the zero-divide flag cleared, and hands
// the caller's MXCSR back whole. An infinite result (a zero element with
// level 0, or an inverse that overflows) makes the status zvpStsInvZero once
// the whole vector is written.
#include <cfloat>
#include <limits>
#include <type_traits>

#include "forms.h"
#include "fpguard.h"
#include "p8/threshold.h"
#include "thresh_cplx.h"

namespace zvp::p8 {
namespace {

constexpr MxcsrGuard::Bits kInvWord{0x6000u | MxcsrGuard::kFlushBits | MxcsrGuard::kZeroDivideFlag,
                                    MxcsrGuard::kMaskAll};

template <class T>
struct InvReal {
    using F = Full<T>;
    form::Vec<T> s;
    typename F::R lv;
    bool infinite;

    template <class L>
    typename L::R at(std::ptrdiff_t i) {
        using Lim = std::numeric_limits<T>;
        const auto x = s.template load<L>(i);
        const auto ax = L::abs(x);
        // max(level, |x|) passes a NaN |x| on; andnot(|x|, x) is x's sign bit.
        const auto v = L::or_(L::max(lv, ax), L::andnot(ax, x));
        const auto one = L::set1(T(1));
        if constexpr (std::is_same_v<T, float>) {
            const auto r = L::rcp(v);
            auto y = L::mul(r, L::sub(L::set1(2.0f), L::mul(v, r)));
            const auto ay = L::abs(y);
            const auto bad = L::or_(L::or_(L::lt(ay, L::set1(Lim::min())), L::gt(ay, L::set1(Lim::max()))),
                                    L::unord(ay, ay));
            if (L::anyOf(bad)) {
                y = L::blend(y, L::div(one, v), bad);
                infinite |= L::anyOf(L::eq(L::abs(y), L::set1(Lim::infinity())));
            }
            return y;
        } else {
            const auto y = L::div(one, v);
            infinite |= L::anyOf(L::eq(L::abs(y), L::set1(Lim::infinity())));
            return y;
        }
    }
};

template <class T>
inline ZvpStatus negativeLevel(T level) { return level < T(0) ? zvpStsThreshNegLevelErr : zvpStsNoErr; }

template <class T>
struct RealInv {
    using type = T;
    static ZvpStatus check(T level) { return negativeLevel(level); }
    static ZvpStatus run(form::Vec<T> s, T* d, std::ptrdiff_t n, T level) {
        const MxcsrGuard word(kInvWord);
        const InvReal<T> fn{s, Full<T>::set1(level), false};
        return form::each<T, 1>(fn, d, n).infinite ? zvpStsInvZero : zvpStsNoErr;
    }
};

template <class P>
struct CplxInv {
    using type = P;
    static ZvpStatus check(P level) { return negativeLevel(level); }
    static ZvpStatus run(form::Vec<P> s, P* d, std::ptrdiff_t n, P level) {
        const MxcsrGuard word(kInvWord);
        return thresh::runElements(s, d, n, thresh::Inverse<P>(double(level))) ? zvpStsInvZero : zvpStsNoErr;
    }
};

}  // namespace

#define ZVP_LTINV(T, K, L)                                                                    \
    ZvpStatus zvpsThreshold_LTInv_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len, L level) {   \
        return form::v<K>(pSrc, pDst, len, level);                                            \
    }                                                                                         \
    ZvpStatus zvpsThreshold_LTInv_##T##_I(Zvp##T* pSrcDst, int len, L level) {                \
        return form::vI<K>(pSrcDst, len, level);                                              \
    }
ZVP_LTINV(32f, RealInv<Zvp32f>, Zvp32f)
ZVP_LTINV(64f, RealInv<Zvp64f>, Zvp64f)
ZVP_LTINV(32fc, CplxInv<Zvp32f>, Zvp32f)
ZVP_LTINV(64fc, CplxInv<Zvp64f>, Zvp64f)
#undef ZVP_LTINV

}  // namespace zvp::p8

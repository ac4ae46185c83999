// Div_Round: Div with a choice of rounding for the scaled quotient
// a / (b * 2^sf), b the first source: zvpRndZero truncates toward zero,
// zvpRndNear rounds to nearest with ties to even, zvpRndFinancial rounds
// half away from zero. Any other mode gives zvpStsRoundModeNotSupportedErr,
// checked after the pointers and the length. Zero divisors get the
// substitutes of Div and the warning zvpStsDivByZero.
//
// Scale factors 0 .. 15 (8u: up to 8, 16u: up to 16) run the
// single-precision kernel: the quotient a / (b * 2^sf) clamped to the
// destination's range and converted with the selected rounding, the
// processor's rounding control set for the call (toward zero for mode 0, to
// nearest otherwise) and the caller's restored afterwards. Negative factors
// run the double-precision kernel (8u: single, which is exact there too),
// 16s with factor 16 an exact integer path, and factors beyond the ranges
// the zero and bound paths of Div.
#include "div_kernel.h"
#include "forms.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using divk::Rnd;

template <class T, Rnd R, class A, class B>
bool divRound(const A& num, const B& den, T* d, std::ptrdiff_t len, int sf) {
    using Rg = divk::Range<T>;
    if (sf > Rg::hi) {
        if (!(std::is_same_v<T, Zvp16s> && sf == Rg::hi + 1)) return divk::divAllZero(num, den, d, len);
        // 16s at 2^16: |q| <= 1/2, where only rounding away from zero can
        // give a non-zero result.
        bool zero = false;
        for (std::ptrdiff_t i = 0; i < len; ++i) {
            const T a = num.at(i), b = den.at(i);
            zero |= b == 0;
            d[i] = b == 0 ? divk::zeroDivisorValue(a) : divk::quotientRule<T>(a, b, sf, R);
        }
        return zero;
    }
    if (sf < Rg::lo) return divk::divBound(num, den, d, len);
    const MxcsrGuard guard(divk::guardMode(R));
    if (sf >= 0 || std::is_same_v<T, Zvp8u>) return divk::divLanes<T, R, false>(num, den, d, len, sf);
    return divk::divLanes<T, R, true>(num, den, d, len, sf);
}

// Kernel policy of the forms: the mode is the operation's own value,
// checked after the pointers and the length.
template <class T>
struct DivRound {
    using type = T;
    static ZvpStatus check(ZvpRoundMode mode, int) {
        const int m = static_cast<int>(mode);
        return (m == zvpRndZero || m == zvpRndNear || m == zvpRndFinancial) ? zvpStsNoErr
                                                                           : zvpStsRoundModeNotSupportedErr;
    }
    template <class A, class B>
    static ZvpStatus run(A num, B den, T* d, std::ptrdiff_t n, ZvpRoundMode mode, int sf) {
        bool zero;
        switch (static_cast<int>(mode)) {
            case zvpRndZero: zero = divRound<T, Rnd::Zero>(num, den, d, n, sf); break;
            case zvpRndNear: zero = divRound<T, Rnd::Near>(num, den, d, n, sf); break;
            default: zero = divRound<T, Rnd::Fin>(num, den, d, n, sf); break;
        }
        return zero ? zvpStsDivByZero : zvpStsNoErr;
    }
};

}  // namespace

#define ZVP_DIV_ROUND(T)                                                                        \
    ZvpStatus zvpsDiv_Round_##T##_Sfs(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst,    \
                                      int len, ZvpRoundMode rndMode, int scaleFactor) {         \
        return form::vvRev<DivRound<Zvp##T>>(pSrc1, pSrc2, pDst, len, rndMode, scaleFactor);    \
    }                                                                                           \
    ZvpStatus zvpsDiv_Round_##T##_ISfs(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len,             \
                                       ZvpRoundMode rndMode, int scaleFactor) {                 \
        return form::vvI<DivRound<Zvp##T>>(pSrc, pSrcDst, len, rndMode, scaleFactor);           \
    }

ZVP_DIV_ROUND(8u)
ZVP_DIV_ROUND(16s)
ZVP_DIV_ROUND(16u)
#undef ZVP_DIV_ROUND

}  // namespace zvp::p8

// Normalize: (x - subtrahend) / divisor for every element. The divisor's
// magnitude must be at least the smallest normal single, 2^-126 (about
// 1.1754944e-38), for every type; a smaller one (0 included) gives
// zvpStsDivByZeroErr after the pointer and length checks. A NaN divisor has
// no magnitude to compare and is refused the same way.
//  * Float forms subtract, then divide (two IEEE roundings); complex forms
//    do it to both parts, with a real divisor.
//  * 16s and 16sc: round((x - sub) * 2^-sf / divisor), ties to even,
//    saturated to 16 bits, exactly, with 64-bit integer division.
#include <cmath>
#include <cstdint>

#include "check.h"
#include "forms.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

constexpr double kSmallestNormalSingle = 1.1754943508222875e-38;  // 2^-126

template <class F>
bool divisorTooSmall(F div) {
    // Written so that a NaN, which fails every comparison, counts as too small.
    return !(std::fabs(double(div)) >= kSmallestNormalSingle);
}

// d = (s - sub) / div on the lane L; the subtrahend is a pair (both parts
// equal for a real form).
template <class F, class A>
struct NormalizeLanes {
    A s;
    form::Const<F> sub;
    typename Full<F>::R div;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        return L::div(L::sub(s.template load<L>(i), sub.template load<L>(i)), div);
    }
};

// Kernel policy of the unary form, with the subtrahend and the divisor.
template <class F>
struct NormalizeFloat {
    using type = F;
    template <class C>
    static ZvpStatus check(C, F div) {
        return divisorTooSmall(div) ? zvpStsDivByZeroErr : zvpStsNoErr;
    }
    template <class A, class C>
    static ZvpStatus run(A s, F* d, std::ptrdiff_t n, C sub, F div) {
        form::each<F, 1>(NormalizeLanes<F, A>{s, form::constOf(sub), Full<F>::set1(div)}, d, n);
        return zvpStsNoErr;
    }
};

// round(n * 2^-sf / div), ties to even, saturated to 16 bits, for
// |n| <= 65535 and div != 0.
Zvp16s divScaled(std::int64_t n, std::int64_t div, int sf) {
    if (n == 0) return 0;
    std::int64_t num = n, den = div;
    if (sf >= 0) {
        if (sf >= 17) return 0;  // |quotient| < 2^16 * 2^-17 = 1/2
        den *= std::int64_t(1) << sf;
    } else {
        // |quotient| >= 2^k / 2^31: beyond k = 46 it saturates whatever the
        // operands.
        if (sf < -46) return (n < 0) != (div < 0) ? Zvp16s(-32768) : Zvp16s(32767);
        num *= std::int64_t(1) << -sf;
    }
    if (den < 0) {
        num = -num;
        den = -den;
    }
    // Floor division, then round the remainder half to even.
    std::int64_t q = num / den, r = num % den;
    if (r < 0) {
        q -= 1;
        r += den;
    }
    if (2 * r > den || (2 * r == den && (q & 1))) q += 1;
    if (q > 32767) return 32767;
    if (q < -32768) return -32768;
    return Zvp16s(q);
}


// Integer forms, each part exactly.
struct Normalize16s {
    using type = Zvp16s;
    template <class C>
    static ZvpStatus check(C, int div, int) {
        return div == 0 ? zvpStsDivByZeroErr : zvpStsNoErr;
    }
    template <class A, class C>
    static ZvpStatus run(A s, Zvp16s* d, std::ptrdiff_t n, C sub, int div, int sf) {
        const auto c = form::constOf(sub);
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = divScaled(std::int64_t(s.at(i)) - c.at(i), div, sf);
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsNormalize_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f sub, Zvp32f div) {
    return form::v<NormalizeFloat<Zvp32f>>(pSrc, pDst, len, sub, div);
}
ZvpStatus zvpsNormalize_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f sub, Zvp64f div) {
    return form::v<NormalizeFloat<Zvp64f>>(pSrc, pDst, len, sub, div);
}
ZvpStatus zvpsNormalize_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32fc sub, Zvp32f div) {
    return form::v<NormalizeFloat<Zvp32f>>(pSrc, pDst, len, sub, div);
}
ZvpStatus zvpsNormalize_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64fc sub, Zvp64f div) {
    return form::v<NormalizeFloat<Zvp64f>>(pSrc, pDst, len, sub, div);
}
ZvpStatus zvpsNormalize_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s sub, int div,
                                int scaleFactor) {
    return form::v<Normalize16s>(pSrc, pDst, len, sub, div, scaleFactor);
}
ZvpStatus zvpsNormalize_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16sc sub, int div,
                                 int scaleFactor) {
    return form::v<Normalize16s>(pSrc, pDst, len, sub, div, scaleFactor);
}

}  // namespace zvp::p8

// Exp in double precision and for scaled integers.
//  * 64f and 32f64f: the C library's double exp (within one ulp); overflow
//    gives +inf, underflow 0, NaN stays NaN.
//  * 16s, 32s, 64s: round(e^x * 2^-sf), ties to even, saturated to the
//    type; correctly rounded as described in ddmath.h. e^x is never
//    negative, so results lie in [0, maximum].
#include <cmath>
#include <limits>

#include "ddmath.h"
#include "forms.h"
#include "fpguard.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

double expDouble(double x) { return std::exp(x); }
using ExpDouble = form::PerElement<Zvp64f, expDouble>;

// Kernel policy of the unary forms with a scale factor.
template <class T>
struct ExpScaled {
    using type = T;
    template <class A>
    static ZvpStatus run(A s, T* d, std::ptrdiff_t n, int sf) {
        // The double-double steps need round-to-nearest arithmetic.
        const MxcsrGuard nearest(MxcsrGuard::kNearest);
        const dd::ExpScaled f(sf, std::int64_t(std::numeric_limits<T>::max()));
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = T(f(s.at(i)));
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsExp_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len) { return form::v<ExpDouble>(pSrc, pDst, len); }
ZvpStatus zvpsExp_64f_I(Zvp64f* pSrcDst, int len) { return form::vI<ExpDouble>(pSrcDst, len); }
ZvpStatus zvpsExp_32f64f(const Zvp32f* pSrc, Zvp64f* pDst, int len) { return form::v<ExpDouble>(pSrc, pDst, len); }

#define ZVP_EXP_SFS(T)                                                                          \
    ZvpStatus zvpsExp_##T##_Sfs(const Zvp##T* pSrc, Zvp##T* pDst, int len, int scaleFactor) {   \
        return form::v<ExpScaled<Zvp##T>>(pSrc, pDst, len, scaleFactor);                        \
    }                                                                                           \
    ZvpStatus zvpsExp_##T##_ISfs(Zvp##T* pSrcDst, int len, int scaleFactor) {                   \
        return form::vI<ExpScaled<Zvp##T>>(pSrcDst, len, scaleFactor);                          \
    }
ZVP_EXP_SFS(16s)
ZVP_EXP_SFS(32s)
ZVP_EXP_SFS(64s)
#undef ZVP_EXP_SFS

}  // namespace zvp::p8

// Exp in double precision and for scaled integers.
//  * 64f and 32f64f: the C library's double exp (within one ulp); overflow
//    gives +inf, underflow 0, NaN stays NaN.
//  * 16s, 32s, 64s: round(e^x * 2^-sf), ties to even, saturated to the
//    type; correctly rounded as described in ddmath.h. e^x is never
//    negative, so results lie in [0, maximum].
#include <cmath>
#include <limits>

#include "check.h"
#include "ddmath.h"
#include "fpguard.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

template <class S>
void expDoubleKernel(const S* s, Zvp64f* d, int len) {
    for (int i = 0; i < len; ++i) d[i] = std::exp(double(s[i]));
}

template <class T>
void expScaledKernel(const T* s, T* d, int len, int sf) {
    // The double-double steps need round-to-nearest arithmetic.
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    const dd::ExpScaled f(sf, std::int64_t(std::numeric_limits<T>::max()));
    for (int i = 0; i < len; ++i) d[i] = T(f(s[i]));
}

template <class T>
ZvpStatus expSfs(const T* s, T* d, int len, int sf) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    expScaledKernel(s, d, len, sf);
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsExp_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    expDoubleKernel(pSrc, pDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsExp_64f_I(Zvp64f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    expDoubleKernel(pSrcDst, pSrcDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsExp_32f64f(const Zvp32f* pSrc, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    expDoubleKernel(pSrc, pDst, len);
    return zvpStsNoErr;
}

#define ZVP_EXP_SFS(T)                                                                          \
    ZvpStatus zvpsExp_##T##_Sfs(const Zvp##T* pSrc, Zvp##T* pDst, int len, int scaleFactor) {   \
        return expSfs(pSrc, pDst, len, scaleFactor);                                            \
    }                                                                                           \
    ZvpStatus zvpsExp_##T##_ISfs(Zvp##T* pSrcDst, int len, int scaleFactor) {                   \
        return expSfs(static_cast<const Zvp##T*>(pSrcDst), pSrcDst, len, scaleFactor);          \
    }
ZVP_EXP_SFS(16s)
ZVP_EXP_SFS(32s)
ZVP_EXP_SFS(64s)
#undef ZVP_EXP_SFS

}  // namespace zvp::p8

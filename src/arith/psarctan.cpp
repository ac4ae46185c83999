// Arctan: the principal arctangent, in (-pi/2, pi/2).
//  * 32f: the vectorised polynomial kernel of mathpoly.h (relative error
//    below 2^-21); +-inf give +-pi/2, NaN stays NaN, atan(-0) = -0.
//  * 64f: the C library's double atan (within one ulp).
#include <cmath>

#include "check.h"
#include "mathpoly.h"
#include "p8/powers.h"

namespace zvp::p8 {

ZvpStatus zvpsArctan_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    mathpoly::ownsArctan_32f_A21(pSrc, pDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsArctan_32f_I(Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    mathpoly::ownsArctan_32f_A21(pSrcDst, pSrcDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsArctan_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    for (int i = 0; i < len; ++i) pDst[i] = std::atan(pSrc[i]);
    return zvpStsNoErr;
}

ZvpStatus zvpsArctan_64f_I(Zvp64f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    for (int i = 0; i < len; ++i) pSrcDst[i] = std::atan(pSrcDst[i]);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

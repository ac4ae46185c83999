// Exp in single precision: the vectorised polynomial kernel of mathpoly.h
// (relative error below 2^-21; overflow gives +inf, underflow 0, NaN stays
// NaN).
#include "check.h"
#include "mathpoly.h"
#include "p8/powers.h"

namespace zvp::p8 {

ZvpStatus zvpsExp_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    mathpoly::ownsExp_32f_A21(pSrc, pDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsExp_32f_I(Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    mathpoly::ownsExp_32f_A21(pSrcDst, pSrcDst, len);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

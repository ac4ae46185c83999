// Exp in single precision: the vectorised polynomial kernel of mathpoly.h
// (relative error below 2^-21; overflow gives +inf, underflow 0, NaN stays
// NaN).
#include "forms.h"
#include "mathpoly.h"
#include "p8/powers.h"

namespace zvp::p8 {

ZvpStatus zvpsExp_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    return form::v<mathpoly::Exp32f>(pSrc, pDst, len);
}

ZvpStatus zvpsExp_32f_I(Zvp32f* pSrcDst, int len) { return form::vI<mathpoly::Exp32f>(pSrcDst, len); }

}  // namespace zvp::p8

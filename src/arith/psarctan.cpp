// Arctan: the principal arctangent, in (-pi/2, pi/2).
//  * 32f: the vectorised polynomial kernel of mathpoly.h (relative error
//    below 2^-21); +-inf give +-pi/2, NaN stays NaN, atan(-0) = -0.
//  * 64f: the C library's double atan (within one ulp).
#include <cmath>

#include "forms.h"
#include "mathpoly.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

double atan64(double x) { return std::atan(x); }
using Atan64f = form::PerElement<Zvp64f, atan64>;

}  // namespace

ZvpStatus zvpsArctan_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    return form::v<mathpoly::Atan32f>(pSrc, pDst, len);
}
ZvpStatus zvpsArctan_32f_I(Zvp32f* pSrcDst, int len) { return form::vI<mathpoly::Atan32f>(pSrcDst, len); }
ZvpStatus zvpsArctan_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len) {
    return form::v<Atan64f>(pSrc, pDst, len);
}
ZvpStatus zvpsArctan_64f_I(Zvp64f* pSrcDst, int len) { return form::vI<Atan64f>(pSrcDst, len); }

}  // namespace zvp::p8

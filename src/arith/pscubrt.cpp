// Cubrt: the real cube root of every element (negative for a negative
// source).
//  * 32f: cbrt in double precision rounded once to single, so results are
//    within half an ulp but for rare double-rounding cases; +-0, +-inf and
//    NaN map to themselves.
//  * 32s16s: round(cbrt(x) * 2^-sf), ties to even, saturated to 16 bits,
//    exactly, with integer cube roots (introot.h).
#include <cmath>

#include "check.h"
#include "introot.h"
#include "p8/powers.h"

namespace zvp::p8 {

ZvpStatus zvpsCubrt_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    for (int i = 0; i < len; ++i) pDst[i] = float(std::cbrt(double(pSrc[i])));
    return zvpStsNoErr;
}

ZvpStatus zvpsCubrt_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    for (int i = 0; i < len; ++i)
        pDst[i] = Zvp16s(introot::cbrtScaled(pSrc[i], scaleFactor, 32767, 32768));
    return zvpStsNoErr;
}

}  // namespace zvp::p8

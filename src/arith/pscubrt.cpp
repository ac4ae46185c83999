// Cubrt: the real cube root of every element (negative for a negative
// source).
//  * 32f: cbrt in double precision rounded once to single, so results are
//    within half an ulp but for rare double-rounding cases; +-0, +-inf and
//    NaN map to themselves.
//  * 32s16s: round(cbrt(x) * 2^-sf), ties to even, saturated to 16 bits,
//    exactly, with integer cube roots (introot.h).
#include <cmath>

#include "forms.h"
#include "introot.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

float cbrt32f(float x) { return float(std::cbrt(double(x))); }
Zvp16s cbrt32s16s(Zvp32s x, int sf) { return Zvp16s(introot::cbrtScaled(x, sf, 32767, 32768)); }

}  // namespace

ZvpStatus zvpsCubrt_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    return form::v<form::PerElement<Zvp32f, cbrt32f>>(pSrc, pDst, len);
}

ZvpStatus zvpsCubrt_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    return form::v<form::PerElement<Zvp16s, cbrt32s16s>>(pSrc, pDst, len, scaleFactor);
}

}  // namespace zvp::p8

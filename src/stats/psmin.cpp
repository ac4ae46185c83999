// Min, MinIndx, MinAbs and MinAbsIndx: the smallest element or magnitude and
// its first index (see extremes_search.h for the search). Unlike MinIndx,
// MinAbsIndx requires its index pointer.
#include "extremes_search.h"
#include "p8/extremes.h"

namespace zvp::p8 {

using extremes::findIndexed;
using extremes::findValue;
using extremes::Plain;
using extremes::SatAbs;

#define ZVP_MIN(T)                                                                           \
    ZvpStatus zvpsMin_##T(const Zvp##T* pSrc, int len, Zvp##T* pMin) {                      \
        return findValue<Zvp##T, Plain, false>(pSrc, len, pMin);                             \
    }                                                                                        \
    ZvpStatus zvpsMinIndx_##T(const Zvp##T* pSrc, int len, Zvp##T* pMin, int* pIndx) {      \
        return findIndexed<Zvp##T, Plain, false, true>(pSrc, len, pMin, pIndx);              \
    }
ZVP_MIN(16s)
ZVP_MIN(32s)
ZVP_MIN(32f)
ZVP_MIN(64f)
#undef ZVP_MIN

#define ZVP_MINABS(T)                                                                        \
    ZvpStatus zvpsMinAbs_##T(const Zvp##T* pSrc, int len, Zvp##T* pMinAbs) {                 \
        return findValue<Zvp##T, SatAbs, false>(pSrc, len, pMinAbs);                         \
    }                                                                                        \
    ZvpStatus zvpsMinAbsIndx_##T(const Zvp##T* pSrc, int len, Zvp##T* pMinAbs, int* pIndx) { \
        return findIndexed<Zvp##T, SatAbs, false, false>(pSrc, len, pMinAbs, pIndx);         \
    }
ZVP_MINABS(16s)
ZVP_MINABS(32s)
#undef ZVP_MINABS

}  // namespace zvp::p8

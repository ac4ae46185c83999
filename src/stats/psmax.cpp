// Max, MaxIndx, MaxAbs and MaxAbsIndx: the largest element or magnitude and
// its first index (see extremes_search.h for the search).
#include "extremes_search.h"
#include "p8/extremes.h"

namespace zvp::p8 {

using extremes::findIndexed;
using extremes::findValue;
using extremes::Plain;
using extremes::SatAbs;

#define ZVP_MAX(T)                                                                           \
    ZvpStatus zvpsMax_##T(const Zvp##T* pSrc, int len, Zvp##T* pMax) {                      \
        return findValue<Zvp##T, Plain, true>(pSrc, len, pMax);                              \
    }                                                                                        \
    ZvpStatus zvpsMaxIndx_##T(const Zvp##T* pSrc, int len, Zvp##T* pMax, int* pIndx) {      \
        return findIndexed<Zvp##T, Plain, true, true>(pSrc, len, pMax, pIndx);               \
    }
ZVP_MAX(16s)
ZVP_MAX(32s)
ZVP_MAX(32f)
ZVP_MAX(64f)
#undef ZVP_MAX

#define ZVP_MAXABS(T)                                                                        \
    ZvpStatus zvpsMaxAbs_##T(const Zvp##T* pSrc, int len, Zvp##T* pMaxAbs) {                 \
        return findValue<Zvp##T, SatAbs, true>(pSrc, len, pMaxAbs);                          \
    }                                                                                        \
    ZvpStatus zvpsMaxAbsIndx_##T(const Zvp##T* pSrc, int len, Zvp##T* pMaxAbs, int* pIndx) { \
        return findIndexed<Zvp##T, SatAbs, true, true>(pSrc, len, pMaxAbs, pIndx);           \
    }
ZVP_MAXABS(16s)
ZVP_MAXABS(32s)
#undef ZVP_MAXABS

}  // namespace zvp::p8

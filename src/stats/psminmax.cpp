// MinMax and MinMaxIndx: both extremes in one pass over the source (see
// extremes_search.h); every result pointer is required.
#include "extremes_search.h"
#include "p8/extremes.h"

namespace zvp::p8 {
namespace {

using namespace extremes;

template <class T>
ZvpStatus minMax(const T* p, int len, T* pMin, T* pMax) {
    ZVP_CHECK_PTRS(p, pMin, pMax);
    ZVP_CHECK_LENS(len);
    const DenormalsKept<T> modes;
    const Ext<T> e = values<T, true, true>(p, len);
    *pMin = e.mn;
    *pMax = e.mx;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus minMaxIndx(const T* p, int len, T* pMin, int* pMinIndx, T* pMax, int* pMaxIndx) {
    ZVP_CHECK_PTRS(p, pMin, pMinIndx, pMax, pMaxIndx);
    ZVP_CHECK_LENS(len);
    const DenormalsKept<T> modes;
    const Found<T> f = search<T, Plain, true, true>(p, len);
    std::ptrdiff_t imn = f.imn, imx = f.imx;
    *pMin = reported<Plain>(p, imn, f.e.mn);
    *pMax = reported<Plain>(p, imx, f.e.mx);
    *pMinIndx = int(imn);
    *pMaxIndx = int(imx);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_MINMAX(T)                                                                                  \
    ZvpStatus zvpsMinMax_##T(const Zvp##T* pSrc, int len, Zvp##T* pMin, Zvp##T* pMax) {               \
        return minMax(pSrc, len, pMin, pMax);                                                          \
    }                                                                                                  \
    ZvpStatus zvpsMinMaxIndx_##T(const Zvp##T* pSrc, int len, Zvp##T* pMin, int* pMinIndx, Zvp##T* pMax, \
                                 int* pMaxIndx) {                                                      \
        return minMaxIndx(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx);                                  \
    }
ZVP_MINMAX(8u)
ZVP_MINMAX(16u)
ZVP_MINMAX(16s)
ZVP_MINMAX(32u)
ZVP_MINMAX(32s)
ZVP_MINMAX(32f)
ZVP_MINMAX(64f)
#undef ZVP_MINMAX

}  // namespace zvp::p8

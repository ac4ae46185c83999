/* zvpSP library frame: typed allocation, the version record and the Cauchy
 * weighting.
 *
 * zvpsMalloc_<type>(len) returns a block of len elements aligned to 64 bytes,
 * or null when len <= 0 or memory runs out; zvpsFree releases such a block
 * (null is allowed). These and zvpsGetLibVersion return no status.
 * zvpsCauchy_32f_I checks in the library's order and writes nothing when a
 * check fails: a null pointer gives zvpStsNullPtrErr (-8), a length below 1
 * zvpStsSizeErr (-6), a parameter not above 0 zvpStsCauchyParamErr (-11). */
#ifndef ZVPS_FRAME_H
#define ZVPS_FRAME_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Robust Cauchy weighting in place: x := (C^2/2) * ln(1 + (x/C)^2).
 * param must be above 0 (else zvpStsCauchyParamErr). */
ZvpStatus zvpsCauchy_32f_I(Zvp32f* pSrcDst, int len, Zvp32f param);

/* Allocation: 64-byte aligned vectors of len elements; null for len <= 0.
 * The byte count is len * element size computed modulo 2^32. */
Zvp8u*   zvpsMalloc_8u(int len);
Zvp8s*   zvpsMalloc_8s(int len);
Zvp16u*  zvpsMalloc_16u(int len);
Zvp16s*  zvpsMalloc_16s(int len);
Zvp8sc*  zvpsMalloc_8sc(int len);
Zvp32u*  zvpsMalloc_32u(int len);
Zvp32s*  zvpsMalloc_32s(int len);
Zvp32f*  zvpsMalloc_32f(int len);
Zvp16sc* zvpsMalloc_16sc(int len);
Zvp64s*  zvpsMalloc_64s(int len);
Zvp64f*  zvpsMalloc_64f(int len);
Zvp32sc* zvpsMalloc_32sc(int len);
Zvp32fc* zvpsMalloc_32fc(int len);
Zvp64sc* zvpsMalloc_64sc(int len);
Zvp64fc* zvpsMalloc_64fc(int len);
void     zvpsFree(void* ptr);

/* The constant version record; never freed. */
const ZvpLibraryVersion* zvpsGetLibVersion(void);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FRAME_H */

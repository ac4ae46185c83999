/* zvpSP: one-dimensional signal-processing primitives.
 *
 * Every function returns a ZvpStatus (apart from the allocators and the
 * version query), checks its arguments in a fixed order (null pointers -8,
 * lengths below 1 -6, its own values, then the identity tag of a state record
 * -17) and writes nothing when it fails. C99 and C++ clean. */
#ifndef ZVPS_H
#define ZVPS_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ======================================================================== */
/* Library frame                                                            */
/* ======================================================================== */

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

/* ======================================================================== */
/* Vector initialisation and copying                                        */
/* ======================================================================== */

/* Copy: no overlap. Move: overlap allowed. Set: fill with a value. Zero: all bits zero. */
ZvpStatus zvpsCopy_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsCopy_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsCopy_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsCopy_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsCopy_32sc(const Zvp32sc* pSrc, Zvp32sc* pDst, int len);
ZvpStatus zvpsCopy_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsCopy_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsCopy_64s(const Zvp64s* pSrc, Zvp64s* pDst, int len);
ZvpStatus zvpsCopy_64sc(const Zvp64sc* pSrc, Zvp64sc* pDst, int len);
ZvpStatus zvpsCopy_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsCopy_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsMove_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsMove_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsMove_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsMove_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsMove_32sc(const Zvp32sc* pSrc, Zvp32sc* pDst, int len);
ZvpStatus zvpsMove_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsMove_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsMove_64s(const Zvp64s* pSrc, Zvp64s* pDst, int len);
ZvpStatus zvpsMove_64sc(const Zvp64sc* pSrc, Zvp64sc* pDst, int len);
ZvpStatus zvpsMove_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsMove_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsSet_8u(Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsSet_16s(Zvp16s val, Zvp16s* pDst, int len);
ZvpStatus zvpsSet_16sc(Zvp16sc val, Zvp16sc* pDst, int len);
ZvpStatus zvpsSet_32s(Zvp32s val, Zvp32s* pDst, int len);
ZvpStatus zvpsSet_32sc(Zvp32sc val, Zvp32sc* pDst, int len);
ZvpStatus zvpsSet_32f(Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsSet_32fc(Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsSet_64s(Zvp64s val, Zvp64s* pDst, int len);
ZvpStatus zvpsSet_64sc(Zvp64sc val, Zvp64sc* pDst, int len);
ZvpStatus zvpsSet_64f(Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsSet_64fc(Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsZero_8u(Zvp8u* pDst, int len);
ZvpStatus zvpsZero_16s(Zvp16s* pDst, int len);
ZvpStatus zvpsZero_16sc(Zvp16sc* pDst, int len);
ZvpStatus zvpsZero_32s(Zvp32s* pDst, int len);
ZvpStatus zvpsZero_32sc(Zvp32sc* pDst, int len);
ZvpStatus zvpsZero_32f(Zvp32f* pDst, int len);
ZvpStatus zvpsZero_32fc(Zvp32fc* pDst, int len);
ZvpStatus zvpsZero_64s(Zvp64s* pDst, int len);
ZvpStatus zvpsZero_64sc(Zvp64sc* pDst, int len);
ZvpStatus zvpsZero_64f(Zvp64f* pDst, int len);
ZvpStatus zvpsZero_64fc(Zvp64fc* pDst, int len);

/* Reverse the element order; an out-of-place call with equal pointers runs in place. */
ZvpStatus zvpsFlip_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsFlip_8u_I(Zvp8u* pSrcDst, int len);
ZvpStatus zvpsFlip_16u(const Zvp16u* pSrc, Zvp16u* pDst, int len);
ZvpStatus zvpsFlip_16u_I(Zvp16u* pSrcDst, int len);
ZvpStatus zvpsFlip_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsFlip_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsFlip_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsFlip_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsFlip_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsFlip_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsFlip_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsFlip_64fc_I(Zvp64fc* pSrcDst, int len);

/* Bit strings. Copy_1u and CopyLE_1u number the bits of a byte from the most
 * significant (offset 0 = weight 128); CopyBE_1u from the least significant
 * (offset 0 = weight 1). Destination bits outside the copied range keep their
 * values. */
ZvpStatus zvpsCopy_1u(const Zvp8u* pSrc, int srcBitOffset, Zvp8u* pDst,
                      int dstBitOffset, int len);
ZvpStatus zvpsCopyLE_1u(const Zvp8u* pSrc, int srcBitOffset, Zvp8u* pDst,
                        int dstBitOffset, int len);
ZvpStatus zvpsCopyBE_1u(const Zvp8u* pSrc, int srcBitOffset, Zvp8u* pDst,
                        int dstBitOffset, int len);

/* @@ARITH-ADDSUB@@ (Add, Sub, AddC, SubC, SubCRev) */
/* Add: pDst[i] = pSrc1[i] + pSrc2[i] (in place: pSrcDst[i] += pSrc[i]).
 * Integer forms form the exact sum R; Sfs forms deliver R * 2^-scaleFactor
 * rounded to nearest with ties to even and saturated to the destination,
 * forms without a scale factor deliver R saturated (32u included). Complex
 * integer forms are the real form on twice the length (their length is
 * checked before the pointers). Float forms use IEEE addition. */
ZvpStatus zvpsAdd_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                         int scaleFactor);
ZvpStatus zvpsAdd_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len);
ZvpStatus zvpsAdd_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsAdd_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsAdd_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsAdd_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsAdd_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsAdd_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsAdd_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsAdd_64s_Sfs(const Zvp64s* pSrc1, const Zvp64s* pSrc2, Zvp64s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_64s_ISfs(const Zvp64s* pSrc, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsAdd_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAdd_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsAdd_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsAdd_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsAdd_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsAdd_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsAdd_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);
/* Mixed types: exact sums (8u + 8u -> 16u; 16s + 16s -> 32f); 16s32s_I adds
 * a 16s vector into a 32s vector with saturation. */
ZvpStatus zvpsAdd_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsAdd_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsAdd_16s32s_I(const Zvp16s* pSrc, Zvp32s* pSrcDst, int len);

/* AddC: pDst[i] = pSrc[i] + val (in place: pSrcDst[i] += val), integer
 * results as for Add. A zero constant at scale factor 0 copies the source. */
ZvpStatus zvpsAddC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsAddC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsAddC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsAddC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64s_Sfs(const Zvp64s* pSrc, Zvp64s val, Zvp64s* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64u_Sfs(const Zvp64u* pSrc, Zvp64u val, Zvp64u* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64u_ISfs(Zvp64u val, Zvp64u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsAddC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAddC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsAddC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsAddC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsAddC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsAddC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsAddC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);

/* Sub: pDst[i] = pSrc2[i] - pSrc1[i], the SECOND source minus the first (in
 * place: pSrcDst[i] -= pSrc[i]). Integer results as for Add; unsigned
 * destinations saturate negative differences to 0. */
ZvpStatus zvpsSub_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                         int scaleFactor);
ZvpStatus zvpsSub_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len);
ZvpStatus zvpsSub_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsSub_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsSub_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsSub_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsSub_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsSub_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsSub_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsSub_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSub_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsSub_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSub_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsSub_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSub_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsSub_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);
/* Mixed type: exact difference pSrc2[i] - pSrc1[i] as a float. */
ZvpStatus zvpsSub_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len);

/* SubC: pDst[i] = pSrc[i] - val (in place: pSrcDst[i] -= val).
 * SubCRev: pDst[i] = val - pSrc[i] (in place: pSrcDst[i] = val - pSrcDst[i]).
 * Integer results as for Sub. */
ZvpStatus zvpsSubC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsSubC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsSubC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsSubC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsSubC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSubC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsSubC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSubC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsSubC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSubC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsSubC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsSubCRev_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsSubCRev_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                               int scaleFactor);
ZvpStatus zvpsSubCRev_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsSubCRev_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsSubCRev_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                               int scaleFactor);
ZvpStatus zvpsSubCRev_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsSubCRev_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSubCRev_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsSubCRev_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSubCRev_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsSubCRev_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSubCRev_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsSubCRev_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);

/* @@ARITH-MULDIV@@ (Mul, MulC, Div, DivC, DivCRev, Div_Round, AddProduct) */
/* Integer forms deliver the exact result R scaled: saturate(R * 2^-scaleFactor),
 * rounded to nearest with ties to even. In-place forms take the source first
 * and the source-and-destination vector second. */

/* Mul: pDst[i] = pSrc1[i] * pSrc2[i]; MulC: pDst[i] = pSrc[i] * val. Forms
 * without a scale factor saturate the product. Mixed forms name the first
 * source's type, then the type of the second source and destination (16u16s,
 * 32f32fc, 32s32sc) or of the destination (8u16u, 16s32f, 16s32s, 32f16s).
 * Mul_Low_32s_Sfs gives the results of Mul_32s_Sfs. MulC_32f16s_Sfs scales the
 * exact product; MulC_Low_32f16s rounds the single-precision product to the
 * nearest integer (ties to even); both saturate to 16s and turn NaN into 0.
 * MulC_64f64s_ISfs scales the exact product of val and each 64s element. */
ZvpStatus zvpsMul_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsMul_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len);
ZvpStatus zvpsMul_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsMul_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMul_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u16s_Sfs(const Zvp16u* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u16s_ISfs(const Zvp16u* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_Low_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s32sc_Sfs(const Zvp32s* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s32sc_ISfs(const Zvp32s* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMul_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMul_32f32fc(const Zvp32f* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsMul_32f32fc_I(const Zvp32f* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsMul_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsMul_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsMul_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMul_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMul_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsMul_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsMulC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsMulC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_64f64s_ISfs(Zvp64f val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsMulC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulC_32f16s_Sfs(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_Low_32f16s(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len);
ZvpStatus zvpsMulC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsMulC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsMulC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsMulC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMulC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsMulC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);

/* Div: pDst[i] = pSrc2[i] / pSrc1[i] (the first source is the divisor; in
 * place, pSrcDst[i] / pSrc[i]). A zero divisor never fails: that element gets
 * 0 for 0/0, otherwise the type's maximum for a positive dividend and its
 * minimum for a negative one (floats: the IEEE quotient), and the call returns
 * zvpStsDivByZero. Div_16u_Sfs with scaleFactor below -31 gives 65535 for every
 * non-zero divisor, even for a zero dividend. Div_32s16s: the divisor is 32s,
 * the dividend and the destination 16s. */
ZvpStatus zvpsDiv_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s16s_Sfs(const Zvp32s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s16s_ISfs(const Zvp32s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsDiv_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsDiv_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsDiv_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsDiv_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsDiv_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsDiv_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsDiv_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);

/* DivC: pDst[i] = pSrc[i] / val; a zero val gives zvpStsDivByZeroErr (checked
 * after the pointers and the length). Float forms multiply by the reciprocal
 * of val, computed once. DivCRev: pDst[i] = val / pSrc[i], with the zero
 * divisor rule of Div (16u: rounded to nearest). */
ZvpStatus zvpsDivC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsDivC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsDivC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsDivC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsDivC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsDivC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsDivC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsDivC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsDivCRev_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsDivCRev_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsDivCRev_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsDivCRev_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);

/* Div_Round: Div with the rounding of the scaled quotient chosen by rndMode
 * (zvpRndZero, zvpRndNear or zvpRndFinancial; any other value gives
 * zvpStsRoundModeNotSupportedErr after the pointer and length checks). The
 * caller's floating-point control word is restored before returning. */
ZvpStatus zvpsDiv_Round_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                               ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsDiv_Round_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, ZvpRoundMode rndMode,
                                int scaleFactor);
ZvpStatus zvpsDiv_Round_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                                ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsDiv_Round_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, ZvpRoundMode rndMode,
                                 int scaleFactor);
ZvpStatus zvpsDiv_Round_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                                ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsDiv_Round_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, ZvpRoundMode rndMode,
                                 int scaleFactor);

/* AddProduct: pSrcDst[i] = pSrcDst[i] + pSrc1[i] * pSrc2[i]; integer forms
 * scale the exact sum. AddProductC_32f: pSrcDst[i] = pSrcDst[i] + pSrc[i] * val. */
ZvpStatus zvpsAddProduct_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pSrcDst, int len,
                                 int scaleFactor);
ZvpStatus zvpsAddProduct_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pSrcDst, int len,
                                    int scaleFactor);
ZvpStatus zvpsAddProduct_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pSrcDst, int len,
                                 int scaleFactor);
ZvpStatus zvpsAddProduct_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAddProduct_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsAddProduct_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsAddProduct_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsAddProductC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pSrcDst, int len);

/* @@ARITH-POWERS@@ (Abs, Sqr, Sqrt, Cubrt, Exp, Ln, 10Log10, SumLn, Arctan, Normalize) */
/* Absolute value. Integers saturate (|-32768| = 32767); floats clear the sign bit. */
ZvpStatus zvpsAbs_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsAbs_16s_I(Zvp16s* pSrcDst, int len);
ZvpStatus zvpsAbs_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsAbs_32s_I(Zvp32s* pSrcDst, int len);
ZvpStatus zvpsAbs_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsAbs_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAbs_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsAbs_64f_I(Zvp64f* pSrcDst, int len);

/* Square. Complex: (a^2 - b^2, 2ab). Integers: the exact square scaled by
 * 2^-scaleFactor, rounded to nearest (ties to even) and saturated. */
ZvpStatus zvpsSqr_8u_Sfs(const Zvp8u* pSrc, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_8u_ISfs(Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_16s_ISfs(Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_16u_Sfs(const Zvp16u* pSrc, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_16u_ISfs(Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_16sc_ISfs(Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqr_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsSqr_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSqr_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsSqr_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSqr_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsSqr_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSqr_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsSqr_64fc_I(Zvp64fc* pSrcDst, int len);

/* Square root. Real forms return zvpStsSqrtNegArg (3) when an element was
 * negative, after writing all elements (NaN for floats, 0 for integers).
 * Complex forms give the principal root. Integers: round(sqrt(x) *
 * 2^-scaleFactor), ties to even, saturated. */
ZvpStatus zvpsSqrt_8u_Sfs(const Zvp8u* pSrc, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_8u_ISfs(Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_16s_ISfs(Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_16u_Sfs(const Zvp16u* pSrc, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_16u_ISfs(Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_16sc_ISfs(Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_64s16s_Sfs(const Zvp64s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_64s_Sfs(const Zvp64s* pSrc, Zvp64s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_64s_ISfs(Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSqrt_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsSqrt_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSqrt_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsSqrt_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSqrt_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsSqrt_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSqrt_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsSqrt_64fc_I(Zvp64fc* pSrcDst, int len);

/* Real cube root. Integers: round(cbrt(x) * 2^-scaleFactor), ties to even,
 * saturated. */
ZvpStatus zvpsCubrt_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsCubrt_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor);

/* e^x. 32f: relative error below 2^-21; 64f and 32f64f: within one ulp.
 * Integers: round(e^x * 2^-scaleFactor), ties to even, saturated. */
ZvpStatus zvpsExp_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsExp_16s_ISfs(Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsExp_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsExp_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsExp_64s_Sfs(const Zvp64s* pSrc, Zvp64s* pDst, int len, int scaleFactor);
ZvpStatus zvpsExp_64s_ISfs(Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsExp_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsExp_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsExp_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsExp_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsExp_32f64f(const Zvp32f* pSrc, Zvp64f* pDst, int len);

/* Natural logarithm. 32f: relative error below 2^-21; 64f: within one ulp;
 * x < 0 gives NaN and 0 gives -inf. Integers: round(ln(x) * 2^-scaleFactor),
 * ties to even, saturated; an element not above 0 gives the destination's
 * minimum, and the first one met decides the warning zvpStsLnZeroArg (7, a
 * zero) or zvpStsLnNegArg (8, a negative element). Ln_16s_Sfs with equal
 * pointers runs Ln_16s_ISfs. */
ZvpStatus zvpsLn_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsLn_16s_ISfs(Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsLn_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsLn_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsLn_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsLn_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsLn_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsLn_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsLn_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsLn_64f32f(const Zvp64f* pSrc, Zvp32f* pDst, int len);

/* 10 * log10(x) * 2^-scaleFactor, rounded to nearest and saturated, from a
 * single-precision logarithm; elements not above 0 give -2147483648. */
ZvpStatus zvps10Log10_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvps10Log10_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor);

/* The sum of ln(x) over the vector, written to *pSum. An element below 0
 * (or NaN) gives NaN, a 0 gives -inf. */
ZvpStatus zvpsSumLn_32f(const Zvp32f* pSrc, int len, Zvp32f* pSum);
ZvpStatus zvpsSumLn_64f(const Zvp64f* pSrc, int len, Zvp64f* pSum);
ZvpStatus zvpsSumLn_32f64f(const Zvp32f* pSrc, int len, Zvp64f* pSum);
ZvpStatus zvpsSumLn_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pSum);

/* Arctangent in (-pi/2, pi/2). 32f: relative error below 2^-21; 64f: within one ulp. */
ZvpStatus zvpsArctan_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsArctan_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsArctan_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsArctan_64f_I(Zvp64f* pSrcDst, int len);

/* (x - sub) / div. A divisor whose magnitude is below 2^-126 (the smallest
 * normal single; 0 for the integer forms) gives zvpStsDivByZeroErr (-10).
 * Integers: round((x - sub) * 2^-scaleFactor / div), ties to even, saturated. */
ZvpStatus zvpsNormalize_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s sub, int div,
                                int scaleFactor);
ZvpStatus zvpsNormalize_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16sc sub, int div,
                                 int scaleFactor);
ZvpStatus zvpsNormalize_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f sub, Zvp32f div);
ZvpStatus zvpsNormalize_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32fc sub, Zvp32f div);
ZvpStatus zvpsNormalize_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f sub, Zvp64f div);
ZvpStatus zvpsNormalize_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64fc sub, Zvp64f div);

/* @@ARITH-LOGIC@@ (And, Or, Xor, Not, LShiftC, RShiftC) */
/* Bitwise operations on unsigned vectors. AndC with constant 0 becomes Zero of
 * the destination (source must not be null); OrC and XorC with constant 0 become
 * Copy, before any check of their own. Not is XorC with every bit set. */
ZvpStatus zvpsAnd_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsAnd_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsOr_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsOr_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsXor_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsXor_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsAndC_8u(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsAndC_8u_I(Zvp8u val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsOrC_8u(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsOrC_8u_I(Zvp8u val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsXorC_8u(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsXorC_8u_I(Zvp8u val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsNot_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsNot_8u_I(Zvp8u* pSrcDst, int len);
ZvpStatus zvpsAnd_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsAnd_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsOr_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsOr_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsXor_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsXor_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsAndC_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsAndC_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsOrC_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsOrC_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsXorC_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsXorC_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsNot_16u(const Zvp16u* pSrc, Zvp16u* pDst, int len);
ZvpStatus zvpsNot_16u_I(Zvp16u* pSrcDst, int len);
ZvpStatus zvpsAnd_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsAnd_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsOr_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsOr_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsXor_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsXor_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsAndC_32u(const Zvp32u* pSrc, Zvp32u val, Zvp32u* pDst, int len);
ZvpStatus zvpsAndC_32u_I(Zvp32u val, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsOrC_32u(const Zvp32u* pSrc, Zvp32u val, Zvp32u* pDst, int len);
ZvpStatus zvpsOrC_32u_I(Zvp32u val, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsXorC_32u(const Zvp32u* pSrc, Zvp32u val, Zvp32u* pDst, int len);
ZvpStatus zvpsXorC_32u_I(Zvp32u val, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsNot_32u(const Zvp32u* pSrc, Zvp32u* pDst, int len);
ZvpStatus zvpsNot_32u_I(Zvp32u* pSrcDst, int len);

/* Shifts by a constant count: left shifts drop the bits shifted out; right
 * shifts are logical for unsigned and arithmetic for signed types. Count 0
 * becomes Copy and a count of the element width or more becomes Zero (signed
 * right shifts fill with the sign instead), before the usual checks; a
 * negative count gives zvpStsShiftErr. */
ZvpStatus zvpsLShiftC_8u(const Zvp8u* pSrc, int val, Zvp8u* pDst, int len);
ZvpStatus zvpsLShiftC_8u_I(int val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsLShiftC_16s(const Zvp16s* pSrc, int val, Zvp16s* pDst, int len);
ZvpStatus zvpsLShiftC_16s_I(int val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsLShiftC_16u(const Zvp16u* pSrc, int val, Zvp16u* pDst, int len);
ZvpStatus zvpsLShiftC_16u_I(int val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsLShiftC_32s(const Zvp32s* pSrc, int val, Zvp32s* pDst, int len);
ZvpStatus zvpsLShiftC_32s_I(int val, Zvp32s* pSrcDst, int len);
ZvpStatus zvpsRShiftC_8u(const Zvp8u* pSrc, int val, Zvp8u* pDst, int len);
ZvpStatus zvpsRShiftC_8u_I(int val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsRShiftC_16s(const Zvp16s* pSrc, int val, Zvp16s* pDst, int len);
ZvpStatus zvpsRShiftC_16s_I(int val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsRShiftC_16u(const Zvp16u* pSrc, int val, Zvp16u* pDst, int len);
ZvpStatus zvpsRShiftC_16u_I(int val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsRShiftC_32s(const Zvp32s* pSrc, int val, Zvp32s* pDst, int len);
ZvpStatus zvpsRShiftC_32s_I(int val, Zvp32s* pSrcDst, int len);

/* @@FFT@@ (FFT specifications, complex and real transforms, packed spectra) */
/* FFT specification records, opaque; a record begins with its identity tag. */
typedef struct ZvpsFFTSpec_C_32fc ZvpsFFTSpec_C_32fc;
typedef struct ZvpsFFTSpec_C_32f ZvpsFFTSpec_C_32f;
typedef struct ZvpsFFTSpec_C_64fc ZvpsFFTSpec_C_64fc;
typedef struct ZvpsFFTSpec_C_64f ZvpsFFTSpec_C_64f;

/* Complex FFT specifications of N = 2^order points (order 0..28 for the single
 * types, 0..27 for the double types), flag one of ZVP_FFT_DIV_FWD_BY_N,
 * ZVP_FFT_DIV_INV_BY_N, ZVP_FFT_DIV_BY_SQRTN, ZVP_FFT_NODIV_BY_ANY; the hint is
 * stored and not acted on. GetSize reports the bytes to give Init for the
 * record, the scratch bytes Init needs (0 up to order 10; the scratch may be
 * discarded after Init) and the work bytes each transform needs. Init builds
 * the record at the next 64-byte boundary of pSpec; a record refused for its
 * flag is left with tag 0. InitAlloc allocates and builds; Free clears the tag
 * and releases memory only for allocated records. GetBufSize reports the work
 * bytes of an existing record (0 when none are needed). The split (32f, 64f)
 * queries give the same sizes as the interleaved ones. */
ZvpStatus zvpsFFTGetSize_C_32fc(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_32fc(ZvpsFFTSpec_C_32fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_32fc(ZvpsFFTSpec_C_32fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_32fc(ZvpsFFTSpec_C_32fc* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_32fc(const ZvpsFFTSpec_C_32fc* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_C_32f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_32f(ZvpsFFTSpec_C_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_32f(ZvpsFFTSpec_C_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_32f(ZvpsFFTSpec_C_32f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_32f(const ZvpsFFTSpec_C_32f* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_C_64fc(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_64fc(ZvpsFFTSpec_C_64fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_64fc(ZvpsFFTSpec_C_64fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_64fc(ZvpsFFTSpec_C_64fc* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_64fc(const ZvpsFFTSpec_C_64fc* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_C_64f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_64f(ZvpsFFTSpec_C_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_64f(ZvpsFFTSpec_C_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_64f(ZvpsFFTSpec_C_64f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_64f(const ZvpsFFTSpec_C_64f* pFFTSpec, int* pBufferSize);

/* Complex FFT, X[k] = sum x[n] exp(-+2 pi i n k / N) times the factor chosen by
 * the record's flag. The source may equal the destination (the _I forms).
 * pBuffer: work memory of GetBufSize bytes, or null to let the call allocate
 * it (zvpStsMemAllocErr when that fails). Checks: record null (-8), record of
 * another type or released (-17), then the data pointers (-8). */
ZvpStatus zvpsFFTFwd_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_32fc_I(Zvp32fc* pSrcDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_32fc_I(Zvp32fc* pSrcDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstRe, Zvp32f* pDstIm, const ZvpsFFTSpec_C_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstRe, Zvp32f* pDstIm, const ZvpsFFTSpec_C_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_64fc_I(Zvp64fc* pSrcDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_64fc_I(Zvp64fc* pSrcDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstRe, Zvp64f* pDstIm, const ZvpsFFTSpec_C_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstRe, Zvp64f* pDstIm, const ZvpsFFTSpec_C_64f* pFFTSpec, Zvp8u* pBuffer);

/* @@FFT-REAL@@ */
/* Real FFT specifications of N = 2^order real samples (order 0..29 for 32f,
 * 0..28 for 64f), with the flags, hint and size queries of the complex ones.
 * From order 7 a record holds a complex record of order-1; the sizes follow
 * from the complex sizes of that order. */
typedef struct ZvpsFFTSpec_R_32f ZvpsFFTSpec_R_32f;
typedef struct ZvpsFFTSpec_R_64f ZvpsFFTSpec_R_64f;
ZvpStatus zvpsFFTGetSize_R_32f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_R_32f(ZvpsFFTSpec_R_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_R_32f(ZvpsFFTSpec_R_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_R_32f(ZvpsFFTSpec_R_32f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_R_32f(const ZvpsFFTSpec_R_32f* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_R_64f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_R_64f(ZvpsFFTSpec_R_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_R_64f(ZvpsFFTSpec_R_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_R_64f(ZvpsFFTSpec_R_64f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_R_64f(const ZvpsFFTSpec_R_64f* pFFTSpec, int* pBufferSize);

/* Real FFT. Forward: N real samples to the half spectrum X[0..N/2] in the
 * CCS layout (N+2 values: R0 0 R1 I1 .. R(N/2) 0), the Pack layout (N values:
 * R0 R1 I1 .. R(N/2-1) I(N/2-1) R(N/2)) or the Perm layout (N values: R0
 * R(N/2) R1 I1 ..). Inverse: from that layout back to N real samples. Scaled
 * by the record's flag. The _I forms work in place (CCS needs N+2 values of
 * room). pBuffer: GetBufSize bytes, or null to let the call allocate. Checks:
 * record null (-8), record of another type or released (-17), then the data
 * pointers (-8). */
ZvpStatus zvpsFFTFwd_RToCCS_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToCCS_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToCCS_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToCCS_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);

/* Packed real spectra (N values in the Pack, Perm or CCS layout) expanded to
 * the full conjugate-symmetric spectrum of lenDst = N complex values:
 * pDst[k] = X[k] for k <= N/2, pDst[N-k] = conj(X[k]). The in-place forms read
 * the packed spectrum from the start of pSrcDst (CCS: N/2+1 complex values).
 * 16sc forms negate with saturation. */
ZvpStatus zvpsConjPack_32fc(const Zvp32f* pSrc, Zvp32fc* pDst, int lenDst);
ZvpStatus zvpsConjPack_32fc_I(Zvp32fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPack_64fc(const Zvp64f* pSrc, Zvp64fc* pDst, int lenDst);
ZvpStatus zvpsConjPack_64fc_I(Zvp64fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPack_16sc(const Zvp16s* pSrc, Zvp16sc* pDst, int lenDst);
ZvpStatus zvpsConjPack_16sc_I(Zvp16sc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPerm_32fc(const Zvp32f* pSrc, Zvp32fc* pDst, int lenDst);
ZvpStatus zvpsConjPerm_32fc_I(Zvp32fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPerm_64fc(const Zvp64f* pSrc, Zvp64fc* pDst, int lenDst);
ZvpStatus zvpsConjPerm_64fc_I(Zvp64fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPerm_16sc(const Zvp16s* pSrc, Zvp16sc* pDst, int lenDst);
ZvpStatus zvpsConjPerm_16sc_I(Zvp16sc* pSrcDst, int lenDst);
ZvpStatus zvpsConjCcs_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int lenDst);
ZvpStatus zvpsConjCcs_32fc_I(Zvp32fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjCcs_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int lenDst);
ZvpStatus zvpsConjCcs_64fc_I(Zvp64fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjCcs_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int lenDst);
ZvpStatus zvpsConjCcs_16sc_I(Zvp16sc* pSrcDst, int lenDst);

/* Products of two packed real spectra of len values: the real entries (X[0],
 * X[N/2] for even N) multiply as reals, the pairs as complex numbers.
 * MulPackConj: pSrcDst := pSrcDst * conj(pSrc). The 16s forms scale the exact
 * products by 2^-scaleFactor (ties to even) and saturate. A destination equal
 * to a source runs the in-place form. */
ZvpStatus zvpsMulPack_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMulPack_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulPack_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMulPack_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMulPack_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsMulPack_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulPerm_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMulPerm_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulPerm_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMulPerm_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMulPerm_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsMulPerm_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulPackConj_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulPackConj_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_H */

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

/* @@ARITH-MULDIV@@ (Mul, MulC, Div, DivC, DivCRev, Div_Round, AddProduct) */

/* @@ARITH-POWERS@@ (Abs, Sqr, Sqrt, Cubrt, Exp, Ln, 10Log10, SumLn, Arctan, Normalize) */

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

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_H */

/* zvpSP minimum and maximum search: Max, Min, their Abs, Indx, Every and Order
 * forms, MinMax, CountInRange, ZeroCrossing.
 *
 * Arguments: the source, the length in elements, then the result pointers
 * (value, index; minimum before maximum). Checks, the first failure returned
 * with nothing written: a null pointer, in argument order, gives
 * zvpStsNullPtrErr (-8), then a length below 1 zvpStsSizeErr (-6). The
 * exceptions are named with their operations below: the optional index
 * pointer of MaxIndx, MinIndx and MaxAbsIndx, MaxOrder's length-first check
 * and MinEvery_64f's unsigned length.
 *
 * Indices count from 0. Every index search reports the first (lowest) index
 * at which the extreme occurs: the scan moves on only to a strictly greater
 * (maximum) or strictly smaller (minimum) value. The value reported is the
 * source element at the reported index, so of +0 and -0 the one that comes
 * first is reported. Search results do not depend on the alignment of the
 * source, nor on the caller's flush-to-zero and denormals-are-zero modes: a
 * denormal is compared as the number it is (the same holds for the signs
 * ZeroCrossing reads).
 *
 * NaN: the float searches (Max, Min, MinMax and their Indx forms, 32f and
 * 64f) pass over NaN elements, taking the extreme of the numbers of the
 * vector; a vector of NaNs only gives its first element (a NaN) at index 0.
 * The Every operations likewise take the number where one of the two
 * elements is a NaN, and give a NaN only where both are. */
#ifndef ZVPS_EXTREMES_H
#define ZVPS_EXTREMES_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The largest and the smallest element, and with pIndx its first index.
 * MaxIndx and MinIndx accept a null pIndx: they then behave as Max and Min. */
ZvpStatus zvpsMax_16s(const Zvp16s* pSrc, int len, Zvp16s* pMax);
ZvpStatus zvpsMax_32s(const Zvp32s* pSrc, int len, Zvp32s* pMax);
ZvpStatus zvpsMax_32f(const Zvp32f* pSrc, int len, Zvp32f* pMax);
ZvpStatus zvpsMax_64f(const Zvp64f* pSrc, int len, Zvp64f* pMax);
ZvpStatus zvpsMaxIndx_16s(const Zvp16s* pSrc, int len, Zvp16s* pMax, int* pIndx);
ZvpStatus zvpsMaxIndx_32s(const Zvp32s* pSrc, int len, Zvp32s* pMax, int* pIndx);
ZvpStatus zvpsMaxIndx_32f(const Zvp32f* pSrc, int len, Zvp32f* pMax, int* pIndx);
ZvpStatus zvpsMaxIndx_64f(const Zvp64f* pSrc, int len, Zvp64f* pMax, int* pIndx);
ZvpStatus zvpsMin_16s(const Zvp16s* pSrc, int len, Zvp16s* pMin);
ZvpStatus zvpsMin_32s(const Zvp32s* pSrc, int len, Zvp32s* pMin);
ZvpStatus zvpsMin_32f(const Zvp32f* pSrc, int len, Zvp32f* pMin);
ZvpStatus zvpsMin_64f(const Zvp64f* pSrc, int len, Zvp64f* pMin);
ZvpStatus zvpsMinIndx_16s(const Zvp16s* pSrc, int len, Zvp16s* pMin, int* pIndx);
ZvpStatus zvpsMinIndx_32s(const Zvp32s* pSrc, int len, Zvp32s* pMin, int* pIndx);
ZvpStatus zvpsMinIndx_32f(const Zvp32f* pSrc, int len, Zvp32f* pMin, int* pIndx);
ZvpStatus zvpsMinIndx_64f(const Zvp64f* pSrc, int len, Zvp64f* pMin, int* pIndx);

/* Both extremes in one call; every pointer is required. */
ZvpStatus zvpsMinMax_8u(const Zvp8u* pSrc, int len, Zvp8u* pMin, Zvp8u* pMax);
ZvpStatus zvpsMinMax_16u(const Zvp16u* pSrc, int len, Zvp16u* pMin, Zvp16u* pMax);
ZvpStatus zvpsMinMax_16s(const Zvp16s* pSrc, int len, Zvp16s* pMin, Zvp16s* pMax);
ZvpStatus zvpsMinMax_32u(const Zvp32u* pSrc, int len, Zvp32u* pMin, Zvp32u* pMax);
ZvpStatus zvpsMinMax_32s(const Zvp32s* pSrc, int len, Zvp32s* pMin, Zvp32s* pMax);
ZvpStatus zvpsMinMax_32f(const Zvp32f* pSrc, int len, Zvp32f* pMin, Zvp32f* pMax);
ZvpStatus zvpsMinMax_64f(const Zvp64f* pSrc, int len, Zvp64f* pMin, Zvp64f* pMax);
ZvpStatus zvpsMinMaxIndx_8u(const Zvp8u* pSrc, int len, Zvp8u* pMin, int* pMinIndx, Zvp8u* pMax, int* pMaxIndx);
ZvpStatus zvpsMinMaxIndx_16u(const Zvp16u* pSrc, int len, Zvp16u* pMin, int* pMinIndx, Zvp16u* pMax,
                             int* pMaxIndx);
ZvpStatus zvpsMinMaxIndx_16s(const Zvp16s* pSrc, int len, Zvp16s* pMin, int* pMinIndx, Zvp16s* pMax,
                             int* pMaxIndx);
ZvpStatus zvpsMinMaxIndx_32u(const Zvp32u* pSrc, int len, Zvp32u* pMin, int* pMinIndx, Zvp32u* pMax,
                             int* pMaxIndx);
ZvpStatus zvpsMinMaxIndx_32s(const Zvp32s* pSrc, int len, Zvp32s* pMin, int* pMinIndx, Zvp32s* pMax,
                             int* pMaxIndx);
ZvpStatus zvpsMinMaxIndx_32f(const Zvp32f* pSrc, int len, Zvp32f* pMin, int* pMinIndx, Zvp32f* pMax,
                             int* pMaxIndx);
ZvpStatus zvpsMinMaxIndx_64f(const Zvp64f* pSrc, int len, Zvp64f* pMin, int* pMinIndx, Zvp64f* pMax,
                             int* pMaxIndx);

/* Extremes of the absolute values, saturated to the source type: the
 * magnitude of -32768 is 32767 (of -2^31, 2^31 - 1), so it ties with 32767
 * and the first of them wins. MaxAbsIndx accepts a null pIndx (it then
 * behaves as MaxAbs); MinAbsIndx requires it. */
ZvpStatus zvpsMaxAbs_16s(const Zvp16s* pSrc, int len, Zvp16s* pMaxAbs);
ZvpStatus zvpsMaxAbs_32s(const Zvp32s* pSrc, int len, Zvp32s* pMaxAbs);
ZvpStatus zvpsMinAbs_16s(const Zvp16s* pSrc, int len, Zvp16s* pMinAbs);
ZvpStatus zvpsMinAbs_32s(const Zvp32s* pSrc, int len, Zvp32s* pMinAbs);
ZvpStatus zvpsMaxAbsIndx_16s(const Zvp16s* pSrc, int len, Zvp16s* pMaxAbs, int* pIndx);
ZvpStatus zvpsMaxAbsIndx_32s(const Zvp32s* pSrc, int len, Zvp32s* pMaxAbs, int* pIndx);
ZvpStatus zvpsMinAbsIndx_16s(const Zvp16s* pSrc, int len, Zvp16s* pMinAbs, int* pIndx);
ZvpStatus zvpsMinAbsIndx_32s(const Zvp32s* pSrc, int len, Zvp32s* pMinAbs, int* pIndx);

/* Element-wise extremes of two vectors: pDst[i] is pSrc1[i] where that is
 * strictly beyond pSrc2[i] (greater for Max, smaller for Min) or pSrc2[i] is
 * a NaN, and pSrc2[i] otherwise; in place, pSrcDst[i] is replaced by pSrc[i]
 * on the same condition. So of two equal elements (+0 and -0) the second
 * source's (the in-place vector's) is kept.
 * zvpsMinEvery_64f reads len as an unsigned number: only 0 is refused
 * (zvpStsSizeErr), and a negative len is the count 2^32 + len (on a 32-bit
 * target, where no such vector fits in memory, it is refused too). */
ZvpStatus zvpsMaxEvery_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsMaxEvery_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsMaxEvery_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMaxEvery_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMaxEvery_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsMaxEvery_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsMaxEvery_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsMaxEvery_32s_I(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len);
ZvpStatus zvpsMaxEvery_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMaxEvery_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMinEvery_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsMinEvery_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsMinEvery_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMinEvery_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMinEvery_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsMinEvery_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsMinEvery_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsMinEvery_32s_I(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len);
ZvpStatus zvpsMinEvery_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMinEvery_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);

/* The order of magnitude of the largest absolute value m, 0 when m is 0.
 * Checks len (zvpStsSizeErr) before the pointers (zvpStsNullPtrErr).
 * Floats: the biased exponent field of m minus 126 (32f) or 1022 (64f), that
 * is floor(log2 m) + 1 for a normal m (1.0 gives 1, 0.5 gives 0, 3.0 gives 2)
 * and -126 (32f) or -1022 (64f) for a denormal one. An infinity or a NaN
 * counts as 0 in the search, and the call then returns the warning
 * zvpStsMaxOrderNaN (9) with the order of the finite elements.
 * Integers: the number of significant bits of m, taken exactly (the
 * magnitude of -32768 is 32768, which has 16 bits; 32767 has 15). */
ZvpStatus zvpsMaxOrder_16s(const Zvp16s* pSrc, int len, int* pOrder);
ZvpStatus zvpsMaxOrder_32s(const Zvp32s* pSrc, int len, int* pOrder);
ZvpStatus zvpsMaxOrder_32f(const Zvp32f* pSrc, int len, int* pOrder);
ZvpStatus zvpsMaxOrder_64f(const Zvp64f* pSrc, int len, int* pOrder);

/* The number of elements x with lowerBound <= x <= upperBound. A range with
 * lowerBound > upperBound is empty: the count is 0. */
ZvpStatus zvpsCountInRange_32s(const Zvp32s* pSrc, int len, int* pCounts, Zvp32s lowerBound, Zvp32s upperBound);

/* The number of sign changes between neighbouring elements: the pairs
 * (pSrc[i-1], pSrc[i]), i = 1 .. len-1, of which exactly one is negative.
 * Zero (and -0, and a NaN) counts as not negative, so 1, 0, -1 is one change
 * and -1, 0, -1 two. The count is written as a single-precision value, to
 * the nearest even one above 2^24 whatever the caller's rounding mode. A
 * vector of one element gives 0. */
ZvpStatus zvpsZeroCrossing_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pValZCR);
ZvpStatus zvpsZeroCrossing_32f(const Zvp32f* pSrc, int len, Zvp32f* pValZCR);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_EXTREMES_H */

/* zvpSP norms and dot products: Norm, NormDiff, DotProd.
 *
 * Arguments: Norm takes (source, len, result pointer); NormDiff and DotProd
 * take (source 1, source 2, len, result pointer); Sfs forms end with the
 * scale factor. The name gives the source types and then the result type
 * (Norm_L1_16s32f: 16s data, a 32f result; DotProd_16s16sc32sc_Sfs: a 16s
 * and a 16sc vector, a 32sc result). Checks, the first failure returned
 * with nothing written: a null pointer, in argument order, gives
 * zvpStsNullPtrErr (-8); a length below 1 gives zvpStsSizeErr (-6). Every
 * scale factor is accepted.
 *
 * Float data. Partial results gather in sixteen single-precision lanes
 * (single-precision data with a single result) or eight double lanes (every
 * other float form), combined in an order fixed by the length alone: a
 * result never depends on the alignment of the data, and may change in the
 * last bits with the processor level. Single-precision data with a double
 * result are widened to double first, where their products are exact.
 * NaN: a NaN anywhere in the data gives a NaN result (the infinity norms
 * too, although the maximum alone would drop it); an infinity gives an
 * infinite norm, or a NaN dot product where it meets a zero or an infinity
 * of the other sign.
 *
 * Integer data. Every sum is exact (16-bit data in 64 bits, 32-bit data in
 * 128) before the result is converted, rounded or scaled. */
#ifndef ZVPS_NORMS_H
#define ZVPS_NORMS_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Norms of one vector and of the difference x - y of two.
 *  - Inf: the largest magnitude; L1: the sum of magnitudes; L2: the square
 *    root of the sum of squares; L2Sqr: the sum of squares.
 *  - 32f: single-precision differences, sums and square root (L2: a single
 *    square root of the single-precision sum). 64f: all in double.
 *  - 32fc32f, 32fc64f: parts widened to double, differences, squares and
 *    |z| = sqrt(re^2 + im^2) in double; Inf rounds the largest |z| to single.
 *    64fc64f: the same in double (parts beyond about 1e154 overflow |z|^2).
 *  - 16s32f: the exact norm rounded once to single (L2: the exact sum of
 *    squares, its square root in double, rounded to single).
 *  - 16s32s_Sfs (Inf, L2), 16s64s_Sfs (L1, L2Sqr): the exact norm times
 *    2^-scaleFactor, rounded to nearest with ties to even and saturated (the
 *    common rule; for L2 the square root is rounded exactly this way, once).
 *  - L1_16s32s_Sfs (Norm and NormDiff): the magnitudes are summed in a 32-bit
 *    accumulator over chunks of at most 65536 elements, the chunks in 64
 *    bits. Scale factor 0 stores the sum; 1 to 31 shift it right, dropping
 *    the bits shifted out (no rounding); 32 or more give 0; a negative factor
 *    shifts left (by at most 31). Every result saturates at 2147483647.
 *    Example: {1, 2} gives 1 with scale factor 1. */
ZvpStatus zvpsNorm_Inf_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_Inf_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pNorm, int scaleFactor);
ZvpStatus zvpsNorm_Inf_32f(const Zvp32f* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_Inf_64f(const Zvp64f* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_Inf_32fc32f(const Zvp32fc* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_Inf_64fc64f(const Zvp64fc* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L1_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_L1_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pNorm, int scaleFactor);
ZvpStatus zvpsNorm_L1_16s64s_Sfs(const Zvp16s* pSrc, int len, Zvp64s* pNorm, int scaleFactor);
ZvpStatus zvpsNorm_L1_32f(const Zvp32f* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_L1_64f(const Zvp64f* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L1_32fc64f(const Zvp32fc* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L1_64fc64f(const Zvp64fc* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L2_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_L2_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pNorm, int scaleFactor);
ZvpStatus zvpsNorm_L2_32f(const Zvp32f* pSrc, int len, Zvp32f* pNorm);
ZvpStatus zvpsNorm_L2_64f(const Zvp64f* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L2_32fc64f(const Zvp32fc* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L2_64fc64f(const Zvp64fc* pSrc, int len, Zvp64f* pNorm);
ZvpStatus zvpsNorm_L2Sqr_16s64s_Sfs(const Zvp16s* pSrc, int len, Zvp64s* pNorm, int scaleFactor);

ZvpStatus zvpsNormDiff_Inf_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_Inf_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32s* pNorm, int scaleFactor);
ZvpStatus zvpsNormDiff_Inf_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_Inf_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_Inf_32fc32f(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_Inf_64fc64f(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L1_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_L1_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32s* pNorm, int scaleFactor);
ZvpStatus zvpsNormDiff_L1_16s64s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp64s* pNorm, int scaleFactor);
ZvpStatus zvpsNormDiff_L1_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_L1_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L1_32fc64f(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L1_64fc64f(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L2_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_L2_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32s* pNorm, int scaleFactor);
ZvpStatus zvpsNormDiff_L2_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, int len, Zvp32f* pNorm);
ZvpStatus zvpsNormDiff_L2_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L2_32fc64f(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L2_64fc64f(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, int len, Zvp64f* pNorm);
ZvpStatus zvpsNormDiff_L2Sqr_16s64s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp64s* pNorm, int scaleFactor);

/* Dot products: sum of pSrc1[i] pSrc2[i]; complex operands are multiplied
 * as they are (neither is conjugated); a real operand multiplies both parts.
 *  - 32f, 32fc, 32f32fc: single-precision products and partial sums;
 *    64f, 64fc, 64f64fc: double.
 *  - 32f64f, 32fc64fc, 32f32fc64fc: singles widened to double, so every
 *    product is exact, summed in double.
 *  - 16s32f, 16sc32fc, 16s16sc32fc: the exact sum rounded once to single;
 *    16s64s, 16sc64sc, 16s16sc64sc: the exact sum.
 *  - Sfs forms: the exact sum R (64 bits for 16-bit data, 128 bits when a
 *    32-bit operand takes part) scaled with the scale factor clamped to at
 *    most 31: a positive factor rounds R * 2^-sf to nearest with ties to
 *    even, a negative one multiplies by 2^-sf; the result then saturates to
 *    its type (each part of a complex result on its own). Example: 16s_Sfs
 *    with scale factor 1 gives 2 for a sum of 3, 2 for 5 and 4 for 7; with
 *    scale factor 40 a sum of 2^62 gives 2^31, saturated to 2147483647. */
ZvpStatus zvpsDotProd_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, int len, Zvp32f* pDp);
ZvpStatus zvpsDotProd_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, int len, Zvp64f* pDp);
ZvpStatus zvpsDotProd_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, int len, Zvp32fc* pDp);
ZvpStatus zvpsDotProd_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, int len, Zvp64fc* pDp);
ZvpStatus zvpsDotProd_32f64f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, int len, Zvp64f* pDp);
ZvpStatus zvpsDotProd_32fc64fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, int len, Zvp64fc* pDp);
ZvpStatus zvpsDotProd_32f32fc(const Zvp32f* pSrc1, const Zvp32fc* pSrc2, int len, Zvp32fc* pDp);
ZvpStatus zvpsDotProd_32f32fc64fc(const Zvp32f* pSrc1, const Zvp32fc* pSrc2, int len, Zvp64fc* pDp);
ZvpStatus zvpsDotProd_64f64fc(const Zvp64f* pSrc1, const Zvp64fc* pSrc2, int len, Zvp64fc* pDp);
ZvpStatus zvpsDotProd_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32f* pDp);
ZvpStatus zvpsDotProd_16sc32fc(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, int len, Zvp32fc* pDp);
ZvpStatus zvpsDotProd_16s16sc32fc(const Zvp16s* pSrc1, const Zvp16sc* pSrc2, int len, Zvp32fc* pDp);
ZvpStatus zvpsDotProd_16s64s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp64s* pDp);
ZvpStatus zvpsDotProd_16sc64sc(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, int len, Zvp64sc* pDp);
ZvpStatus zvpsDotProd_16s16sc64sc(const Zvp16s* pSrc1, const Zvp16sc* pSrc2, int len, Zvp64sc* pDp);
ZvpStatus zvpsDotProd_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp16s* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, int len, Zvp16sc* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_16s16sc_Sfs(const Zvp16s* pSrc1, const Zvp16sc* pSrc2, int len, Zvp16sc* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len, Zvp32s* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_16sc32sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, int len, Zvp32sc* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_16s16sc32sc_Sfs(const Zvp16s* pSrc1, const Zvp16sc* pSrc2, int len, Zvp32sc* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_16s32s32s_Sfs(const Zvp16s* pSrc1, const Zvp32s* pSrc2, int len, Zvp32s* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, int len, Zvp32s* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, int len, Zvp32sc* pDp, int scaleFactor);
ZvpStatus zvpsDotProd_32s32sc_Sfs(const Zvp32s* pSrc1, const Zvp32sc* pSrc2, int len, Zvp32sc* pDp, int scaleFactor);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_NORMS_H */

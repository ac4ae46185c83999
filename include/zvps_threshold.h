/* zvpSP thresholding: Threshold and its LT, GT, Abs, Val and Inv forms.
 *
 * Every operation replaces the elements that lie beyond a level and copies
 * the others unchanged (bit for bit). Out-of-place forms take the source, the
 * destination, the length in elements, then their values; in-place forms (_I)
 * take the vector, the length, then the same values. Source and destination
 * may be the same vector.
 *
 * Checks, the first failure returned with nothing written:
 *   1. a null pointer: zvpStsNullPtrErr (-8);
 *   2. a length below 1: zvpStsSizeErr (-6);
 *   3. Threshold_*: relOp other than zvpCmpLess (0) or zvpCmpGreater (4):
 *      zvpStsBadArgErr (-5);
 *   4. a negative level where the level is a magnitude (every complex form,
 *      LTAbs, GTAbs, LTInv): zvpStsThreshNegLevelErr (-19). -0 and NaN are
 *      not negative;
 *   5. LTValGTVal with levelLT > levelGT: zvpStsThresholdErr (-18); equal
 *      levels are accepted.
 *
 * Comparisons are strict: an element equal to the level is kept. A NaN
 * element compares false with everything and is kept (LTInv: its result is
 * NaN); a NaN level replaces nothing (LTInv: it acts as level 0). -0 and +0
 * compare equal.
 *
 * Complex data (16sc, 32fc, 64fc) compare the magnitude |x| with a real
 * level, using the exact squared magnitude for 16sc and the squared
 * magnitude in double precision for 32fc and 64fc (64fc elements whose
 * parts lie outside [2^-500, 2^500], where squares would overflow or
 * underflow, are first scaled by a power of two). An element with a NaN
 * part compares false. The complex forms run with every floating-point
 * exception masked, rounding to nearest and no flush-to-zero or
 * denormals-are-zero, and restore the caller's MXCSR (flags included).
 * The real forms do no arithmetic: integer forms leave the MXCSR alone;
 * float forms compare under the caller's MXCSR (a NaN element raises the
 * invalid flag as any ordered comparison does, and denormals-are-zero makes
 * denormals compare as zero), masking exceptions for the call only if the
 * caller had any unmasked. */
#ifndef ZVPS_THRESHOLD_H
#define ZVPS_THRESHOLD_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Threshold_LT: x < level gives level. Threshold_GT: x > level gives level.
 * Threshold: as Threshold_LT with relOp zvpCmpLess, as Threshold_GT with
 * zvpCmpGreater.
 *
 * Complex forms keep the phase of a replaced element: x becomes
 * x * level / |x|, computed as (x / |x|) * level in double precision, then
 * rounded once to the element type: for 16sc each part is rounded to the
 * nearest integer exactly (a part's exact value can never lie halfway, and
 * the result never exceeds the level, so it needs no saturation); for 32fc
 * the double result is rounded to single. A zero element below a positive
 * level becomes (level, 0). A zero part stays zero (with level +inf the other
 * part becomes infinite). An element with an infinite part and no NaN part
 * has infinite magnitude; replaced (GT), it keeps the direction of its
 * infinite parts: (+inf, 3) becomes (level, 0), (-inf, +inf) becomes
 * (-level, level) / sqrt(2).
 * Level 0 on complex data: GT sets every element to (0, 0), LT copies the
 * source unchanged. */
ZvpStatus zvpsThreshold_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16s level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_16sc_I(Zvp16sc* pSrcDst, int len, Zvp16s level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f level, ZvpCmpOp relOp);
ZvpStatus zvpsThreshold_GT_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_GT_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_GT_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_GT_16sc_I(Zvp16sc* pSrcDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_GT_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_GT_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_GT_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_GT_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_GT_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_GT_32s_I(Zvp32s* pSrcDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_GT_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_GT_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_GT_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_GT_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LT_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_LT_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_LT_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_LT_16sc_I(Zvp16sc* pSrcDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_LT_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LT_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LT_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LT_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LT_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_LT_32s_I(Zvp32s* pSrcDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_LT_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LT_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LT_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LT_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f level);

/* Threshold_LTAbs: |x| < level gives level with the sign of x (the sign bit,
 * so -0 gives -level). Threshold_GTAbs: |x| > level gives level with the
 * sign of x. The level must not be negative. For integers |x| is exact:
 * |-32768| = 32768 is above every 16s level. */
ZvpStatus zvpsThreshold_GTAbs_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_GTAbs_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_GTAbs_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_GTAbs_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_GTAbs_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_GTAbs_32s_I(Zvp32s* pSrcDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_GTAbs_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_GTAbs_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LTAbs_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_LTAbs_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level);
ZvpStatus zvpsThreshold_LTAbs_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LTAbs_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LTAbs_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_LTAbs_32s_I(Zvp32s* pSrcDst, int len, Zvp32s level);
ZvpStatus zvpsThreshold_LTAbs_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LTAbs_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level);

/* Threshold_LTVal: x < level gives value. Threshold_GTVal: x > level gives
 * value. Complex forms compare |x| with the level (which must not be
 * negative) and write the complex value whole. */
ZvpStatus zvpsThreshold_GTVal_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level, Zvp16s value);
ZvpStatus zvpsThreshold_GTVal_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level, Zvp16s value);
ZvpStatus zvpsThreshold_GTVal_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16s level, Zvp16sc value);
ZvpStatus zvpsThreshold_GTVal_16sc_I(Zvp16sc* pSrcDst, int len, Zvp16s level, Zvp16sc value);
ZvpStatus zvpsThreshold_GTVal_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level, Zvp32f value);
ZvpStatus zvpsThreshold_GTVal_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level, Zvp32f value);
ZvpStatus zvpsThreshold_GTVal_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f level, Zvp32fc value);
ZvpStatus zvpsThreshold_GTVal_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f level, Zvp32fc value);
ZvpStatus zvpsThreshold_GTVal_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level, Zvp64f value);
ZvpStatus zvpsThreshold_GTVal_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level, Zvp64f value);
ZvpStatus zvpsThreshold_GTVal_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f level, Zvp64fc value);
ZvpStatus zvpsThreshold_GTVal_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f level, Zvp64fc value);
ZvpStatus zvpsThreshold_LTVal_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s level, Zvp16s value);
ZvpStatus zvpsThreshold_LTVal_16s_I(Zvp16s* pSrcDst, int len, Zvp16s level, Zvp16s value);
ZvpStatus zvpsThreshold_LTVal_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp16s level, Zvp16sc value);
ZvpStatus zvpsThreshold_LTVal_16sc_I(Zvp16sc* pSrcDst, int len, Zvp16s level, Zvp16sc value);
ZvpStatus zvpsThreshold_LTVal_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level, Zvp32f value);
ZvpStatus zvpsThreshold_LTVal_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level, Zvp32f value);
ZvpStatus zvpsThreshold_LTVal_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f level, Zvp32fc value);
ZvpStatus zvpsThreshold_LTVal_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f level, Zvp32fc value);
ZvpStatus zvpsThreshold_LTVal_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level, Zvp64f value);
ZvpStatus zvpsThreshold_LTVal_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level, Zvp64f value);
ZvpStatus zvpsThreshold_LTVal_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f level, Zvp64fc value);
ZvpStatus zvpsThreshold_LTVal_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f level, Zvp64fc value);

/* Threshold_LTValGTVal: x < levelLT gives valueLT, x > levelGT gives
 * valueGT; levelLT must not exceed levelGT. */
ZvpStatus zvpsThreshold_LTValGTVal_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp16s levelLT, Zvp16s valueLT,
                                       Zvp16s levelGT, Zvp16s valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_16s_I(Zvp16s* pSrcDst, int len, Zvp16s levelLT, Zvp16s valueLT, Zvp16s levelGT,
                                         Zvp16s valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f levelLT, Zvp32f valueLT,
                                       Zvp32f levelGT, Zvp32f valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_32f_I(Zvp32f* pSrcDst, int len, Zvp32f levelLT, Zvp32f valueLT, Zvp32f levelGT,
                                         Zvp32f valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len, Zvp32s levelLT, Zvp32s valueLT,
                                       Zvp32s levelGT, Zvp32s valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_32s_I(Zvp32s* pSrcDst, int len, Zvp32s levelLT, Zvp32s valueLT, Zvp32s levelGT,
                                         Zvp32s valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f levelLT, Zvp64f valueLT,
                                       Zvp64f levelGT, Zvp64f valueGT);
ZvpStatus zvpsThreshold_LTValGTVal_64f_I(Zvp64f* pSrcDst, int len, Zvp64f levelLT, Zvp64f valueLT, Zvp64f levelGT,
                                         Zvp64f valueGT);

/* Threshold_LTInv: 1 / v, where v is x with its magnitude raised to at least
 * the level (real: sign(x) * max(|x|, level); complex: x * level / |x| when
 * |x| < level, a zero element counting as (level, 0)). The level must not be
 * negative.
 *
 * 32f forms the reciprocal without a division: the hardware estimate r of v
 * (relative error below 1.5 * 2^-12) refined by one Newton step,
 * r * (2 - v * r), whose relative error is at most 4.3 * 2^-24 (the
 * estimate's error squared, 2.25 * 2^-24, plus two roundings; 2 - v * r is
 * exact), i.e. within about 4 ulp. Where the step gives no normal number --
 * v zero, infinite, NaN, or so small or large that 1/v leaves the normal
 * range -- the element is recomputed by a true division 1.0f / v: 0 gives an
 * infinity of its sign, an infinity gives 0 of its sign.
 * 64f divides (there is no double-precision estimate), so its results are
 * correctly rounded. 32fc and 64fc compute conj(v) / |v|^2 in double
 * precision (as conj(x) / (|x| * level) for a raised element), with one
 * division per element: 32fc results are within 1 ulp. A complex zero
 * element with level 0 (or NaN) gives (1/re, -im), i.e. (+-inf, -+0); an
 * element with an infinite part and no NaN part gives (+-0, -+0) (the signs of
 * conj(x)); an element with a NaN part gives NaN in both parts.
 *
 * When some written result (part) is infinite -- a zero element with level
 * 0, or an element whose inverse overflows -- every element is still written
 * and the status is the warning zvpStsInvZero (4). The call masks every
 * floating-point exception, clears the zero-divide flag, rounds to nearest
 * without flush-to-zero or denormals-are-zero, and restores the caller's
 * MXCSR (flags included) before returning. */
ZvpStatus zvpsThreshold_LTInv_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LTInv_32f_I(Zvp32f* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LTInv_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LTInv_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f level);
ZvpStatus zvpsThreshold_LTInv_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LTInv_64f_I(Zvp64f* pSrcDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LTInv_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f level);
ZvpStatus zvpsThreshold_LTInv_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f level);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_THRESHOLD_H */

/* zvpSP powers and transcendentals: Abs, Sqr, Sqrt, Cubrt, Exp, Ln, 10Log10,
 * SumLn, Arctan, Normalize.
 *
 * Arguments: the source, the destination (or the in-place vector of the _I
 * forms), the length in elements, then the operation's own values, with the
 * scale factor of the Sfs forms last. Integer forms round the exact result
 * scaled by 2^-scaleFactor to nearest, ties to even, and saturate; the float
 * accuracy of each operation is given with it. Checks, the first failure
 * returned with nothing written: a null pointer gives zvpStsNullPtrErr (-8), a
 * length below 1 zvpStsSizeErr (-6), then the operation's own values (the
 * Normalize divisor: zvpStsDivByZeroErr, -10). Arguments outside the domain
 * are not errors: the whole result is written and the call returns a warning
 * (zvpStsSqrtNegArg 3, zvpStsLnZeroArg 7, zvpStsLnNegArg 8). */
#ifndef ZVPS_POWERS_H
#define ZVPS_POWERS_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

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

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_POWERS_H */

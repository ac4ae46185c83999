/* zvpSP sums, means and deviations: Sum, Mean, StdDev, MeanStdDev.
 *
 * Arguments: the source vector, its length in elements, the result
 * pointer (MeanStdDev: the mean's, then the deviation's), then a hint or a
 * scale factor where the name asks for one. Checks, the first failure
 * returned with nothing written: a null pointer, in argument order, gives
 * zvpStsNullPtrErr (-8); a length below 1 (Sum, Mean) or below 2 (StdDev,
 * MeanStdDev) gives zvpStsSizeErr (-6). Every value of the hint and of the
 * scale factor is accepted. A complex result holds (re, im) of its parts.
 *
 * Hints (ZvpHintAlgorithm). Only zvpAlgHintFast (1) selects the fast path;
 * every other value, zvpAlgHintNone (0) and zvpAlgHintAccurate (2) among
 * them, selects the accurate path, and all of them give identical results.
 *  - Fast, single precision: sixteen single-precision partial sums (four
 *    vectors of four lanes in flight). The error is at most about
 *    (len/16 + 6) * 2^-24 times the sum of magnitudes.
 *  - Accurate, single precision: every value is widened to double, blocks
 *    of 16 values are summed in double and the blocks gathered in
 *    double-double partial sums (about 106 bits), so the result is within
 *    2^-51 times the sum of magnitudes of the exact sum before its final
 *    rounding to single precision (within one unit in the last place unless
 *    the sum cancels by a factor above 2^26).
 * The partial sums are combined in an order fixed by the length alone, so
 * a result never depends on the alignment of the data; the fast path's
 * results may change in the last bits with the processor level.
 *
 * NaN and infinities: a NaN anywhere gives a NaN result (in the component
 * where it occurs); infinities of both signs give a NaN; otherwise an
 * infinity gives that infinity. A sum that overflows gives an infinity.
 *
 * Integer sums are exact (in 64 bits, or more than enough) and then
 * scaled: the result is saturate(R * 2^-scaleFactor), rounded to nearest
 * with ties to even (the library's common rule), at every scale factor. */
#ifndef ZVPS_STATS_H
#define ZVPS_STATS_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Sum. 32f and 32fc take the hint; 64f and 64fc sum in eight double
 * partial sums (for 64fc, four per component). The integer forms are exact
 * and scaled: 16s and 16sc into 16-bit, 16s32s, 16sc32sc and 32s into
 * 32-bit results (each component of a complex sum on its own). */
ZvpStatus zvpsSum_32f(const Zvp32f* pSrc, int len, Zvp32f* pSum, ZvpHintAlgorithm hint);
ZvpStatus zvpsSum_32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pSum, ZvpHintAlgorithm hint);
ZvpStatus zvpsSum_64f(const Zvp64f* pSrc, int len, Zvp64f* pSum);
ZvpStatus zvpsSum_64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pSum);
ZvpStatus zvpsSum_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pSum, int scaleFactor);
ZvpStatus zvpsSum_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pSum, int scaleFactor);
ZvpStatus zvpsSum_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pSum, int scaleFactor);
ZvpStatus zvpsSum_16sc32sc_Sfs(const Zvp16sc* pSrc, int len, Zvp32sc* pSum, int scaleFactor);
ZvpStatus zvpsSum_32s_Sfs(const Zvp32s* pSrc, int len, Zvp32s* pSum, int scaleFactor);

/* Mean: the sum as above divided by len. Float forms divide in double
 * precision (each component of a complex sum) and round once to the result
 * type. Integer forms (16s, 16sc into 16-bit, 32s into 32-bit results)
 * divide the exact 64-bit sum S by len with rounding to nearest, ties to
 * even (on the magnitude, the sign restored), and then scale:
 *  - scaleFactor >= 0: the rounded quotient is scaled by the common rule;
 *  - scaleFactor < 0, with k = -scaleFactor: if S lies in the 32-bit range,
 *    S * 2^k is divided by len (one rounding); otherwise the rounded
 *    quotient is multiplied by 2^k. The two orders can differ in the last
 *    bits for sums near the 32-bit limit. k >= 32 saturates every non-zero
 *    mean. Every result is saturated to its type.
 * Example: 32s with scaleFactor -1 on {1, 1, 1, 2} gives 2 (2.5 to even),
 * on {1, 1, 2, 3} gives 4 (3.5 to even). */
ZvpStatus zvpsMean_32f(const Zvp32f* pSrc, int len, Zvp32f* pMean, ZvpHintAlgorithm hint);
ZvpStatus zvpsMean_32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pMean, ZvpHintAlgorithm hint);
ZvpStatus zvpsMean_64f(const Zvp64f* pSrc, int len, Zvp64f* pMean);
ZvpStatus zvpsMean_64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pMean);
ZvpStatus zvpsMean_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pMean, int scaleFactor);
ZvpStatus zvpsMean_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pMean, int scaleFactor);
ZvpStatus zvpsMean_32s_Sfs(const Zvp32s* pSrc, int len, Zvp32s* pMean, int scaleFactor);

/* StdDev and MeanStdDev: the sample standard deviation (divisor n - 1) of
 * n = len >= 2 values, from one pass that forms S1, the sum of the values,
 * and S2, the sum of their squares: sqrt((n S2 - S1^2) / (n (n - 1))). The
 * numerator is clamped below at 0 before the division, so a constant vector
 * gives exactly 0 and rounding never gives a NaN from finite data.
 *  - Float forms sum the differences d = x - x[0] from the first value
 *    instead of x (the deviation is the same), so a large common offset
 *    does not cancel the small spread it carries, and a constant vector
 *    gives exactly 0. Their mean is x[0] + (sum of d) / n, in double.
 *  - 32f, fast hint: sums of d and d^2 in sixteen single-precision partial
 *    sums each; other hints: d formed in double, blocks of 16 values of d
 *    and d^2 summed in double, the blocks in double-double sums, the final
 *    arithmetic in double precision. MeanStdDev_32f
 *    always takes the accurate path.
 *  - 64f: eight double partial sums of d and of d^2, final arithmetic in
 *    double precision.
 *  - 16s into 16-bit and 16s32s into 32-bit results: S1 and S2 are exact in
 *    64 bits and n S2 - S1^2 exact in 128; the division and the square root
 *    are done in extended precision (64-bit mantissa, rounding to nearest
 *    whatever the caller's floating-point settings), then the deviation is
 *    multiplied by 2^-scaleFactor, rounded to nearest with ties to even and
 *    saturated. The mean of MeanStdDev is Mean_16s_Sfs's with the same
 *    scale factor (saturated to 32 bits for 16s32s).
 * NaN: as for sums, a NaN or infinite value gives a NaN deviation. */
ZvpStatus zvpsStdDev_32f(const Zvp32f* pSrc, int len, Zvp32f* pStdDev, ZvpHintAlgorithm hint);
ZvpStatus zvpsStdDev_64f(const Zvp64f* pSrc, int len, Zvp64f* pStdDev);
ZvpStatus zvpsStdDev_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pStdDev, int scaleFactor);
ZvpStatus zvpsStdDev_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pStdDev, int scaleFactor);
ZvpStatus zvpsMeanStdDev_32f(const Zvp32f* pSrc, int len, Zvp32f* pMean, Zvp32f* pStdDev);
ZvpStatus zvpsMeanStdDev_64f(const Zvp64f* pSrc, int len, Zvp64f* pMean, Zvp64f* pStdDev);
ZvpStatus zvpsMeanStdDev_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pMean, Zvp16s* pStdDev, int scaleFactor);
ZvpStatus zvpsMeanStdDev_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pMean, Zvp32s* pStdDev, int scaleFactor);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_STATS_H */

/* zvpSP single-frequency analysis: Goertzel.
 *
 * Goertz evaluates the spectrum of a vector at one relative frequency f (the
 * frequency as a fraction of the sampling rate, 0 <= f < 1):
 *     X(f) = sum over n = 0..len-1 of x[n] exp(-2 pi i f n),
 * without a full transform; GoertzTwo evaluates two frequencies in one pass
 * over the data. Real sources give a complex result.
 *
 * Arguments: source, length, where to put the result (one complex value, or
 * an array of two for GoertzTwo), the frequency (an array of two for
 * GoertzTwo), and last the scale factor of the integer forms. The single
 * and integer forms take the frequency in single precision, the double forms
 * in double precision; the Q15 forms take it as a 16-bit value q with
 * f = q * 2^-15.
 *
 * Checks, in order; on any error nothing is written:
 *   - Q15 forms only: a negative q gives zvpStsRelFreqErr (-27) before any
 *     other check (GoertzTwoQ15 first needs its frequency array: a null
 *     array gives zvpStsNullPtrErr, -8, then a negative entry gives -27);
 *   - a null source, result or frequency array: zvpStsNullPtrErr (-8);
 *   - a length below 1: zvpStsSizeErr (-6);
 *   - a frequency below 0, at least 1, or NaN: zvpStsRelFreqErr (-27);
 *     -0.0 is accepted and means 0.
 * At f = 0 the result is the sum of the samples.
 *
 * Accuracy: the sum runs in double precision for every form, through the
 * second-order recurrence in a form that stays accurate when f is near 0
 * or 1/2 (its coefficient 2 cos(2 pi f) is near +-2): the recurrence carries
 * the sample and its first difference with the coefficient's distance from
 * +-2, formed from sin(pi f) or cos(pi f) directly. The error grows about
 * linearly with the length, not with its square. The single forms round the
 * double result once. The sum is split into interleaved sub-sequences, each
 * with its own recurrence, joined by exact rotations at the end; how it is
 * split is not part of the interface, so results may differ in the last bits
 * from a plain serial recurrence.
 *
 * Integer forms (Sfs): each part of the double result, times 2^-scaleFactor,
 * rounded to the nearest integer with ties to even, saturated to
 * -32768..32767. The result does not depend on the caller's rounding mode or
 * flush-to-zero setting. Values that fall within a few units of the double
 * precision of a half-integer may round either way. */
#ifndef ZVPS_GOERTZEL_H
#define ZVPS_GOERTZEL_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

ZvpStatus zvpsGoertz_32f(const Zvp32f* pSrc, int len, Zvp32fc* pVal, Zvp32f rFreq);
ZvpStatus zvpsGoertz_32fc(const Zvp32fc* pSrc, int len, Zvp32fc* pVal, Zvp32f rFreq);
ZvpStatus zvpsGoertz_64f(const Zvp64f* pSrc, int len, Zvp64fc* pVal, Zvp64f rFreq);
ZvpStatus zvpsGoertz_64fc(const Zvp64fc* pSrc, int len, Zvp64fc* pVal, Zvp64f rFreq);
ZvpStatus zvpsGoertz_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16sc* pVal, Zvp32f rFreq, int scaleFactor);
ZvpStatus zvpsGoertz_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pVal, Zvp32f rFreq, int scaleFactor);
ZvpStatus zvpsGoertzQ15_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc* pVal, Zvp16s rFreqQ15, int scaleFactor);

/* Two frequencies in one pass: pVal[k] is the value at rFreq[k]; equal to
 * two Goertz calls within the rounding of the double sums. */
ZvpStatus zvpsGoertzTwo_32f(const Zvp32f* pSrc, int len, Zvp32fc pVal[2], const Zvp32f rFreq[2]);
ZvpStatus zvpsGoertzTwo_32fc(const Zvp32fc* pSrc, int len, Zvp32fc pVal[2], const Zvp32f rFreq[2]);
ZvpStatus zvpsGoertzTwo_64f(const Zvp64f* pSrc, int len, Zvp64fc pVal[2], const Zvp64f rFreq[2]);
ZvpStatus zvpsGoertzTwo_64fc(const Zvp64fc* pSrc, int len, Zvp64fc pVal[2], const Zvp64f rFreq[2]);
ZvpStatus zvpsGoertzTwo_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc pVal[2], const Zvp32f rFreq[2], int scaleFactor);
ZvpStatus zvpsGoertzTwoQ15_16sc_Sfs(const Zvp16sc* pSrc, int len, Zvp16sc pVal[2], const Zvp16s rFreqQ15[2], int scaleFactor);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_GOERTZEL_H */

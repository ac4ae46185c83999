/* zvpSP deterministic signals: ramps, slopes, triangles, tones and the Jaehne signal.
 *
 * Every call fills a caller's vector with a signal that is a closed function
 * of the sample index n = 0 .. len - 1 (the stateful Q15 generators continue
 * the index from call to call). On any error nothing is written, the phase
 * pointed to and the state record included.
 *
 * Integer samples. Unless a group says otherwise, an integer destination
 * receives the double value v of the sample rounded half away from zero (a
 * fraction of exactly one half goes to the larger magnitude: 2.5 gives 3,
 * -0.5 gives -1) and saturated to the type's range (a value at or beyond the
 * largest gives the largest, at or below the smallest gives the smallest; for
 * unsigned types every negative value gives 0). NaN gives 0. The arithmetic
 * of every integer form, and of the tone and triangle generators, runs with
 * the library's own rounding mode (nearest, no flush to zero), so results
 * never depend on the caller's floating-point settings. */
#ifndef ZVPS_GENERATE_H
#define ZVPS_GENERATE_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Ramps: pDst[n] = offset + slope * n --------------------------------------
 * Arguments: destination, length, offset, slope (single precision, double for
 * 64f). Checks: pDst null gives zvpStsNullPtrErr (-8), then len < 1 gives
 * zvpStsSizeErr (-6); every offset and slope is accepted.
 * 32f and the integer types compute in single precision: n converted to
 * single precision, times the slope, plus the offset (two roundings, no fused
 * multiply-add). Integer types widen that single-precision value to double
 * and round and saturate it as above: 16s with offset 0.5 and slope 1 gives
 * 1, 2, 3, ...; with offset -0.5 gives -1, 1, 2, ...; offset 40000 gives 32767
 * everywhere. 64f computes offset + slope * n in double. */
ZvpStatus zvpsVectorRamp_8u(Zvp8u* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_8s(Zvp8s* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_16u(Zvp16u* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_16s(Zvp16s* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_32u(Zvp32u* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_32s(Zvp32s* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_32f(Zvp32f* pDst, int len, float offset, float slope);
ZvpStatus zvpsVectorRamp_64f(Zvp64f* pDst, int len, double offset, double slope);

/* ---- Slopes: from first to last in len equal steps ----------------------------
 * Arguments: destination, length, first value, last value (double for every
 * type). Checks as the ramps (-8, then -6). Element n is
 * first + (last - first) * n / (len - 1), computed in double from the nearer
 * end: n <= (len - 1) / 2 as first + d * n / (len - 1), the rest as
 * last - d * (len - 1 - n) / (len - 1), with d = last - first. So the first
 * and last elements are exactly the end values and each element is within
 * 2^-52 times the larger end's magnitude of the exact line; 32f rounds that
 * double once, the integer types round and saturate it as above.
 * len = 1, or equal ends, gives the first value everywhere (16s with both
 * ends 2.5 gives 3). Ends whose difference overflows the double range, or
 * unequal ends of which one is infinite, give infinities or NaN inside. */
ZvpStatus zvpsVectorSlope_8u(Zvp8u* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_8s(Zvp8s* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_16u(Zvp16u* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_16s(Zvp16s* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_32u(Zvp32u* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_32s(Zvp32s* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_32f(Zvp32f* pDst, int len, Zvp64f first, Zvp64f last);
ZvpStatus zvpsVectorSlope_64f(Zvp64f* pDst, int len, Zvp64f first, Zvp64f last);

/* ---- Jaehne test chirp: pDst[n] = magn * sin(pi/2 * n^2 / len) ----------------
 * A chirp whose frequency rises linearly from 0 at n = 0 to half the sampling
 * rate at n = len. Arguments: destination, length, magnitude (in the
 * destination's type). Checks: pDst null (-8), len < 1 (-6), then a negative
 * (or NaN) magnitude gives zvpStsBadArgErr (-5). The sine's argument is kept
 * exact (n^2 reduced modulo 4 len in integers), so for every len the value
 * before its rounding to the destination type is within 2^-51 times magn of
 * the exact one. Unsigned types saturate the negative half-waves to 0. */
ZvpStatus zvpsVectorJaehne_8u(Zvp8u* pDst, int len, Zvp8u magn);
ZvpStatus zvpsVectorJaehne_8s(Zvp8s* pDst, int len, Zvp8s magn);
ZvpStatus zvpsVectorJaehne_16u(Zvp16u* pDst, int len, Zvp16u magn);
ZvpStatus zvpsVectorJaehne_16s(Zvp16s* pDst, int len, Zvp16s magn);
ZvpStatus zvpsVectorJaehne_32u(Zvp32u* pDst, int len, Zvp32u magn);
ZvpStatus zvpsVectorJaehne_32s(Zvp32s* pDst, int len, Zvp32s magn);
ZvpStatus zvpsVectorJaehne_32f(Zvp32f* pDst, int len, Zvp32f magn);
ZvpStatus zvpsVectorJaehne_64f(Zvp64f* pDst, int len, Zvp64f magn);

/* ---- Tones -----------------------------------------------------------------------
 * Real:    pDst[n] = magn * cos(2 pi rFreq n + phase)
 * Complex: pDst[n] = magn * (cos(2 pi rFreq n + phase), sin(2 pi rFreq n + phase))
 * Arguments: destination, length, magnitude, relative frequency (cycles per
 * sample), pointer to the phase in radians (read, then overwritten), and an
 * algorithm hint that is accepted whatever its value and changes nothing.
 * Checks, in this order (the destination deliberately after the values):
 *   pPhase null                                  zvpStsNullPtrErr  (-8)
 *   magn not above 0 (or NaN)                    zvpStsToneMagnErr (-46)
 *   rFreq outside [0, 0.5) (real), [0, 1) (complex), or NaN
 *                                                zvpStsToneFreqErr (-45)
 *   *pPhase outside [0, 2 pi) (or NaN)           zvpStsTonePhaseErr (-44)
 *   pDst null                                    zvpStsNullPtrErr  (-8)
 *   len < 1                                      zvpStsSizeErr     (-6)
 * (2 pi is compared in double: a single-precision phase of 6.2831855 is
 * refused.) On success *pPhase receives the phase of sample len, reduced to
 * [0, 2 pi) (a value that would round to 2 pi is written as 0), so a second
 * call with it continues the waveform: n samples from one call and from
 * consecutive calls differ only by the rounding of the phase written back
 * (single precision: about 2^-22 radians per call).
 * Precision: the phase of every sample is formed exactly from the starting
 * phase and n (n * rFreq reduced modulo 1 without loss); cos and sin of the
 * first samples of every block of 64 are computed directly and the rest
 * follow by rotation in double precision, so every sample is within 1e-14
 * times magn of the exact tone before its rounding to the destination type.
 * The integer forms round and saturate as described at the top. */
ZvpStatus zvpsTone_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm hint);
ZvpStatus zvpsTone_Direct_16sc(Zvp16sc* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm hint);
ZvpStatus zvpsTone_Direct_32f(Zvp32f* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm hint);
ZvpStatus zvpsTone_Direct_32fc(Zvp32fc* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm hint);
ZvpStatus zvpsTone_Direct_64f(Zvp64f* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f* pPhase, ZvpHintAlgorithm hint);
ZvpStatus zvpsTone_Direct_64fc(Zvp64fc* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f* pPhase, ZvpHintAlgorithm hint);

/* ---- Q15 tone generator with a state record ------------------------------------
 * The real 16s tone of the direct forms with fixed-point parameters:
 *   magn       the magnitude as an integer, 1 .. 32767;
 *   rFreqQ15   the relative frequency times 2^15, 0 .. 16383 (0 to just under 0.5);
 *   phaseQ15   the starting phase in radians times 2^15, 0 .. 205887 (under 2 pi).
 * Checks of Init and InitAlloc: a null pointer (ppState, then pMem) gives -8;
 * then magn < 1 gives zvpStsToneMagnErr (-46), rFreqQ15 out of range
 * zvpStsToneFreqErr (-45), phaseQ15 out of range zvpStsTonePhaseErr (-44).
 * GetStateSize reports the bytes Init needs (the record is placed at the next
 * 16-byte boundary of pMem). InitAlloc allocates the record
 * (zvpStsMemAllocErr, -9, when that fails, with nothing left allocated).
 * ToneQ15_16s writes the next len samples and advances the record: the
 * samples of consecutive calls are exactly those of one call over their
 * total length. Its checks: pDst, then pState null (-8), len < 1 (-6), a
 * record that is not a tone record or was released zvpStsContextMatchErr (-17).
 * ToneQ15_Direct_16s writes the first len samples of a fresh generator; it
 * checks magn, rFreqQ15 and phaseQ15 first (as Init), then pDst (-8) and
 * len (-6). ToneFree: null (-8), not a live tone record (-17); it clears the
 * tag and releases the memory of records made by InitAlloc. */
typedef struct ZvpsToneState_16s ZvpsToneState_16s;
ZvpStatus zvpsToneGetStateSizeQ15_16s(int* pStateSize);
ZvpStatus zvpsToneInitQ15_16s(ZvpsToneState_16s** ppState, Zvp8u* pMem, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15);
ZvpStatus zvpsToneInitAllocQ15_16s(ZvpsToneState_16s** ppState, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15);
ZvpStatus zvpsToneQ15_16s(Zvp16s* pDst, int len, ZvpsToneState_16s* pState);
ZvpStatus zvpsToneQ15_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15);
ZvpStatus zvpsToneFree(ZvpsToneState_16s* pState);

/* ---- Triangles ---------------------------------------------------------------------
 * A wave of period 1 / rFreq samples and amplitude magn. With t the phase of
 * sample n, 2 pi rFreq n + phase reduced to [0, 2 pi), and h = pi - asym:
 *   t < h:  magn * (1 - 2 t / h)                   (falling from +magn to -magn)
 *   t >= h: magn * (-1 + 2 (t - h) / (2 pi - h))   (rising back to +magn)
 * so the rising edge takes pi + asym of the period and asym = 0 gives the
 * symmetric triangle through the peaks and zeros of the cosine; asym = -pi
 * gives a falling sawtooth. A complex destination holds this wave in its real
 * parts and the same wave a quarter period later (t - pi/2) in its imaginary
 * parts. Arguments: destination, length, magnitude, relative frequency,
 * asymmetry (radians), pointer to the phase (read, then overwritten).
 * Checks, in this order:
 *   pPhase null                                  zvpStsNullPtrErr   (-8)
 *   magn not above 0 (or NaN)                    zvpStsTrnglMagnErr (-43)
 *   rFreq outside [0, 0.5) (real), [0, 1) (complex), or NaN
 *                                                zvpStsTrnglFreqErr (-42)
 *   asym outside [-pi, pi) (or NaN)              zvpStsTrnglAsymErr (-40)
 *   *pPhase outside [0, 2 pi) (or NaN)           zvpStsTrnglPhaseErr (-41)
 *   pDst null                                    zvpStsNullPtrErr   (-8)
 *   len < 1                                      zvpStsSizeErr      (-6)
 * (pi is compared in double, so a single-precision asymmetry of pi, which
 * is slightly above it, is refused, and so is its negative.) The phase is
 * written back as for the tones, with the same continuity. Each sample's
 * phase is formed without loss from the starting phase and n, to within a
 * few units of 2^-53 of a period, so the wave is within
 * 2^-49 * magn * pi / (pi - |asym|) of the exact one before its rounding to
 * the destination type (a steep edge magnifies the phase's rounding). */
ZvpStatus zvpsTriangle_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase);
ZvpStatus zvpsTriangle_Direct_16sc(Zvp16sc* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase);
ZvpStatus zvpsTriangle_Direct_32f(Zvp32f* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase);
ZvpStatus zvpsTriangle_Direct_32fc(Zvp32fc* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase);
ZvpStatus zvpsTriangle_Direct_64f(Zvp64f* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f asym, Zvp64f* pPhase);
ZvpStatus zvpsTriangle_Direct_64fc(Zvp64fc* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f asym, Zvp64f* pPhase);

/* ---- Q15 triangle generator with a state record ---------------------------------
 * The real 16s triangle with fixed-point parameters, read as for the Q15
 * tone, plus asymQ15, the asymmetry in radians times 2^15, -102943 .. 102943
 * (inside [-pi, pi)). Checks of Init and InitAlloc: null pointers (ppState,
 * then pMem, -8), then magn < 1 (-43), rFreqQ15 outside 0 .. 16383 (-42),
 * asymQ15 out of range (-40), phaseQ15 outside 0 .. 205887 (-41).
 * TriangleQ15_16s, TriangleQ15_Direct_16s, GetStateSize, InitAlloc and
 * TriangleFree behave as their tone counterparts, with the triangle's
 * statuses and its own record tag. */
typedef struct ZvpsTriangleState_16s ZvpsTriangleState_16s;
ZvpStatus zvpsTriangleGetStateSizeQ15_16s(int* pStateSize);
ZvpStatus zvpsTriangleInitQ15_16s(ZvpsTriangleState_16s** ppState, Zvp8u* pMem, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s asymQ15, Zvp32s phaseQ15);
ZvpStatus zvpsTriangleInitAllocQ15_16s(ZvpsTriangleState_16s** ppState, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s asymQ15, Zvp32s phaseQ15);
ZvpStatus zvpsTriangleQ15_16s(Zvp16s* pDst, int len, ZvpsTriangleState_16s* pState);
ZvpStatus zvpsTriangleQ15_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s asymQ15, Zvp32s phaseQ15);
ZvpStatus zvpsTriangleFree(ZvpsTriangleState_16s* pState);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_GENERATE_H */

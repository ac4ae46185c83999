/* zvpSP complex-vector helpers: Magnitude, Phase, polar forms, power spectrum, parts, conjugates.
 *
 * Arguments: the source or sources (a complex vector, or a real-part vector
 * followed by an imaginary-part vector), the destination or destinations,
 * the length in elements, and last the scale factors of the Sfs forms.
 * Checks, the first failure returned with nothing written: a null pointer
 * gives zvpStsNullPtrErr (-8), a length below 1 zvpStsSizeErr (-6). The
 * exceptions are stated with their operations (RealToCplx, CartToPolar_32fc,
 * CartToPolar_16sc_Sfs). No operation returns a warning.
 *
 * Integer results (Sfs) follow the library's scale rule: the exact result R
 * times 2^-scaleFactor, rounded to nearest with ties to even, saturated to
 * the destination type. Where R is irrational (a magnitude, a phase, a sine)
 * the value rounded is R itself: the result is the integer nearest to
 * R * 2^-scaleFactor. Integer results never depend on the caller's rounding
 * mode or flush-to-zero and denormals-are-zero settings.
 *
 * Phase. Phases are those of the two-argument arctangent atan2(im, re), in
 * [-pi, pi]: atan2(+-0, +0) = +-0, atan2(+-0, -0) = +-pi, the signs of zero
 * parts count. A NaN part gives NaN. Integer phases are fixed point:
 * Phase_*_Sfs with scale factor sf returns round(phase * 2^-sf); the scale
 * factor -13 gives radians in Q13 (pi = 25736), the format that
 * PolarToCart_16sc reads, and -29 gives Q29, the format of PolarToCart_32sc.
 *
 * Accuracy of the float results:
 *   Magnitude_32fc/_32f: within 1.5 ulps of the exact magnitude; parts so
 *     large or so small that their squares leave the single range are
 *     handled in double, so no finite input overflows or underflows early.
 *     An infinite part gives +inf, otherwise a NaN part gives NaN.
 *   Magnitude_64fc/_64f: within 1.5 ulps; parts whose squares leave the
 *     double range take the C library's hypot, so nothing overflows or
 *     underflows early, and infinite and NaN parts behave as in hypot.
 *   Magnitude_16sc32f/_16s32f: the exact magnitude rounded once to single
 *     (within 0.5 ulp, up to a double rounding).
 *   Phase_32fc/_32f/_16sc32f/_16s32f: within 3 ulps of atan2 (a vectorised
 *     polynomial; the worst seen over 2e7 random pairs is 1.9 ulps; the
 *     integer forms first convert the parts exactly). Parts are scaled by a
 *     power of two first, so denormal and huge parts lose nothing.
 *   Phase_64fc/_64f: the C library's double atan2.
 *   Phase_*_Sfs: the double atan2 for 16-bit parts, the long double atan2
 *     for 32-bit parts, rounded once as stated above.
 *   PowerSpectr: re*re + im*im in the element type (the 16-bit forms
 *     exactly, then rounded once to single).
 *   PolarToCart float forms: magnitude times the double cosine and sine,
 *     rounded once to the destination type. */
#ifndef ZVPS_CPLX_H
#define ZVPS_CPLX_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Magnitude: sqrt(re^2 + im^2) of each element. The Sfs forms round the exact
 * magnitude times 2^-scaleFactor to the nearest integer (ties to even, which
 * only happens for whole magnitudes) and saturate it: Magnitude_16sc_Sfs of
 * (-32768, -32768) at scale factor 0 gives 32767. */
ZvpStatus zvpsMagnitude_32fc(const Zvp32fc* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsMagnitude_64fc(const Zvp64fc* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsMagnitude_16sc32f(const Zvp16sc* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsMagnitude_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMagnitude_32sc_Sfs(const Zvp32sc* pSrc, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMagnitude_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDst, int len);
ZvpStatus zvpsMagnitude_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDst, int len);
ZvpStatus zvpsMagnitude_16s32f(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp32f* pDst, int len);
ZvpStatus zvpsMagnitude_16s_Sfs(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16s* pDst, int len,
                                int scaleFactor);

/* Phase: atan2(im, re) of each element, in [-pi, pi] (see the top of this
 * header for signed zeros, NaN and the fixed-point format of the Sfs forms,
 * which saturate to the destination type). */
ZvpStatus zvpsPhase_32fc(const Zvp32fc* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsPhase_64fc(const Zvp64fc* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsPhase_16sc32f(const Zvp16sc* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsPhase_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsPhase_32sc_Sfs(const Zvp32sc* pSrc, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsPhase_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDst, int len);
ZvpStatus zvpsPhase_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDst, int len);
ZvpStatus zvpsPhase_16s32f(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp32f* pDst, int len);
ZvpStatus zvpsPhase_16s_Sfs(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16s* pDst, int len,
                            int scaleFactor);

/* CartToPolar: Magnitude into pDstMagn and Phase into pDstPhase, with their
 * values and accuracy.
 *   _32fc: runs Magnitude and then Phase whatever the first returned,
 *     and return Magnitude's status if it is not zvpStsNoErr, else Phase's.
 *     So a null phase destination (with a valid source, magnitude
 *     destination and length) still gets the magnitudes written, and the
 *     call returns zvpStsNullPtrErr.
 *   _64fc, _32f, _64f: the ordinary checks (every pointer, then the length).
 *   _16sc_Sfs: Magnitude_16sc_Sfs with magnScaleFactor and, only if that
 *     succeeded, Phase_16sc_Sfs with phaseScaleFactor, returning the first
 *     failure. So a null phase destination with a length below 1 gives
 *     zvpStsSizeErr, and with a valid length gets the magnitudes written and
 *     returns zvpStsNullPtrErr. */
ZvpStatus zvpsCartToPolar_32fc(const Zvp32fc* pSrc, Zvp32f* pDstMagn, Zvp32f* pDstPhase, int len);
ZvpStatus zvpsCartToPolar_64fc(const Zvp64fc* pSrc, Zvp64f* pDstMagn, Zvp64f* pDstPhase, int len);
ZvpStatus zvpsCartToPolar_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstMagn,
                              Zvp32f* pDstPhase, int len);
ZvpStatus zvpsCartToPolar_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstMagn,
                              Zvp64f* pDstPhase, int len);
ZvpStatus zvpsCartToPolar_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDstMagn, Zvp16s* pDstPhase, int len,
                                   int magnScaleFactor, int phaseScaleFactor);

/* PolarToCart: (magn cos(phase), magn sin(phase)) for each element, phase in
 * radians. _32fc checks its destination before the two sources (all -8).
 * Integer forms read fixed-point inputs and round the Cartesian parts to
 * nearest (ties to even) with saturation:
 *   _16sc_Sfs: the magnitude stands for magn * 2^magnScaleFactor and the
 *     phase for phase * 2^phaseScaleFactor radians -- the formats that
 *     CartToPolar_16sc_Sfs writes with the same two scale factors, so the
 *     two are inverse to each other up to rounding;
 *   _16sc: magnitude as it is, phase in Q13 (radians * 2^13);
 *   _32sc: magnitude as it is, phase in Q29 (radians * 2^29). */
ZvpStatus zvpsPolarToCart_32fc(const Zvp32f* pSrcMagn, const Zvp32f* pSrcPhase, Zvp32fc* pDst, int len);
ZvpStatus zvpsPolarToCart_64fc(const Zvp64f* pSrcMagn, const Zvp64f* pSrcPhase, Zvp64fc* pDst, int len);
ZvpStatus zvpsPolarToCart_32f(const Zvp32f* pSrcMagn, const Zvp32f* pSrcPhase, Zvp32f* pDstRe,
                              Zvp32f* pDstIm, int len);
ZvpStatus zvpsPolarToCart_64f(const Zvp64f* pSrcMagn, const Zvp64f* pSrcPhase, Zvp64f* pDstRe,
                              Zvp64f* pDstIm, int len);
ZvpStatus zvpsPolarToCart_16sc(const Zvp16s* pSrcMagn, const Zvp16s* pSrcPhase, Zvp16sc* pDst, int len);
ZvpStatus zvpsPolarToCart_16sc_Sfs(const Zvp16s* pSrcMagn, const Zvp16s* pSrcPhase, Zvp16sc* pDst, int len,
                                   int magnScaleFactor, int phaseScaleFactor);
ZvpStatus zvpsPolarToCart_32sc(const Zvp32s* pSrcMagn, const Zvp32s* pSrcPhase, Zvp32sc* pDst, int len);

/* PowerSpectr: re^2 + im^2 of each element. The Sfs forms scale the exact
 * sum. PowerSpectr_16s_Sfs with a scale factor below -14 writes, without
 * computing, 0 where both parts are 0 and 32767 everywhere else (every other
 * sum saturates); PowerSpectr_16sc_Sfs gives the same values by the rule. */
ZvpStatus zvpsPowerSpectr_32fc(const Zvp32fc* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsPowerSpectr_64fc(const Zvp64fc* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsPowerSpectr_16sc32f(const Zvp16sc* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsPowerSpectr_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsPowerSpectr_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDst, int len);
ZvpStatus zvpsPowerSpectr_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDst, int len);
ZvpStatus zvpsPowerSpectr_16s32f(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp32f* pDst, int len);
ZvpStatus zvpsPowerSpectr_16s_Sfs(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16s* pDst, int len,
                                  int scaleFactor);

/* Real, Imag: the real or the imaginary parts. CplxToReal: both, the real
 * parts in one pass and then the imaginary parts in a second. */
ZvpStatus zvpsReal_16sc(const Zvp16sc* pSrc, Zvp16s* pDstRe, int len);
ZvpStatus zvpsReal_32fc(const Zvp32fc* pSrc, Zvp32f* pDstRe, int len);
ZvpStatus zvpsReal_64fc(const Zvp64fc* pSrc, Zvp64f* pDstRe, int len);
ZvpStatus zvpsImag_16sc(const Zvp16sc* pSrc, Zvp16s* pDstIm, int len);
ZvpStatus zvpsImag_32fc(const Zvp32fc* pSrc, Zvp32f* pDstIm, int len);
ZvpStatus zvpsImag_64fc(const Zvp64fc* pSrc, Zvp64f* pDstIm, int len);
ZvpStatus zvpsCplxToReal_16sc(const Zvp16sc* pSrc, Zvp16s* pDstRe, Zvp16s* pDstIm, int len);
ZvpStatus zvpsCplxToReal_32fc(const Zvp32fc* pSrc, Zvp32f* pDstRe, Zvp32f* pDstIm, int len);
ZvpStatus zvpsCplxToReal_64fc(const Zvp64fc* pSrc, Zvp64f* pDstRe, Zvp64f* pDstIm, int len);

/* RealToCplx: a complex vector from its parts. Either source may be null,
 * and its part is then written as 0. Checks: a null destination (-8), then
 * the length (-6), then both sources null (-8). */
ZvpStatus zvpsRealToCplx_16s(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16sc* pDst, int len);
ZvpStatus zvpsRealToCplx_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32fc* pDst, int len);
ZvpStatus zvpsRealToCplx_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64fc* pDst, int len);

/* Conj: the imaginary part negated. The 16sc forms saturate, so -32768
 * becomes 32767; float forms flip the sign bit (0 becomes -0, NaN stays
 * NaN). ConjFlip: destination n is the conjugate of source len - 1 - n; the
 * source and the destination may be the same vector, but must not
 * otherwise overlap. */
ZvpStatus zvpsConj_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsConj_16sc_I(Zvp16sc* pSrcDst, int len);
ZvpStatus zvpsConj_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsConj_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsConj_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsConj_64fc_I(Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsConjFlip_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsConjFlip_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsConjFlip_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CPLX_H */

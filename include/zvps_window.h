/* zvpSP window functions: Bartlett, Hann, Hamming, Blackman, Kaiser.
 *
 * Each operation multiplies a vector element by element by a symmetric
 * tapering window of the same length N = len, w(n) = w(N - 1 - n) for the
 * element index n = 0 .. N - 1. Out of place: source, destination, len,
 * then the window's parameter; in place (_I): source-and-destination, len,
 * parameter. Complex data (16sc, 32fc, 64fc) have both parts of element n
 * multiplied by the same real w(n).
 *
 * Checks, the first failure returned with nothing written: a null pointer,
 * in argument order, gives zvpStsNullPtrErr (-8); a length below the
 * window's minimum gives zvpStsSizeErr (-6); then the parameter's own check
 * (Kaiser only). The minimum is 3 for Bartlett, Hann, Hamming and the
 * Blackman windows, 4 for BlackmanOpt and 1 for Kaiser. BlackmanOpt checks
 * its length before its pointers (below).
 *
 * Window values are computed in double precision and applied in the data's
 * precision:
 *  - 64f, 64fc: x(n) * w(n) in double;
 *  - 32f, 32fc: w(n) rounded to single, then x(n) * w(n) in single;
 *  - 16s, 16sc: the product x(n) * w(n) formed in double, rounded to the
 *    nearest integer with ties to even and saturated to -32768 .. 32767
 *    (only windows with values above 1 or below 0, Blackman with an unusual
 *    alpha, can saturate). A NaN product (a NaN or infinite alpha) gives 0.
 * Every operation sets round-to-nearest, without flush-to-zero or
 * denormals-are-zero, for the duration of the call and restores the
 * caller's control word, so its results never depend on the caller's
 * floating-point state; they depend only on N, the parameter and the data,
 * never on the alignment of the vectors.
 *
 * The cosine windows (Hann, Hamming, Blackman) do not call cos per element.
 * With t = 2 pi / (N - 1), the cosines cos(n t) (and cos(2 n t) for
 * Blackman) run in four interleaved three-term recurrences
 * cos((n + 4) u) = 2 cos(4 u) cos(n u) - cos((n - 4) u), whose starting
 * values are set again from the C library's cos and sin every 128
 * indices, so the rounding error of the recurrence cannot grow with N:
 * every cosine is within 1e-13 of the exact one at every length up to
 * 2^31 - 1 (the largest error seen, at a million points, is 5e-14), and a
 * window value within 1e-13 (Hann, Hamming) or 1e-13 (1 + |alpha|)
 * (Blackman) of the exact window. The window is evaluated once per pair of elements n and
 * N - 1 - n and applied to both.
 *
 * Length 3: Bartlett, Hann and the Blackman windows give {0, x(1), 0}
 * exactly (zeros, whatever x(0) and x(2) hold); Hamming computes its
 * window. */
#ifndef ZVPS_WINDOW_H
#define ZVPS_WINDOW_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bartlett (triangle): w(n) = 2n / (N - 1) for n <= (N - 1) / 2, mirrored.
 * The step 2 / (N - 1) is computed once in double and rounded to the data's
 * precision (single for 32f and 32fc), and w(n) = n * step is formed in
 * double. 16s and 16sc results are exact: x(n) * 2n / (N - 1) rounded to
 * nearest with ties to even (the quotient is formed from the exact integer
 * product, so no intermediate rounding can move it across a tie). An
 * out-of-place call whose source and destination are the same address is
 * the in-place operation. */
ZvpStatus zvpsWinBartlett_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsWinBartlett_16s_I(Zvp16s* pSrcDst, int len);
ZvpStatus zvpsWinBartlett_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsWinBartlett_16sc_I(Zvp16sc* pSrcDst, int len);
ZvpStatus zvpsWinBartlett_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsWinBartlett_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsWinBartlett_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsWinBartlett_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsWinBartlett_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsWinBartlett_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsWinBartlett_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsWinBartlett_64fc_I(Zvp64fc* pSrcDst, int len);

/* Hann: w(n) = 0.5 - 0.5 cos(2 pi n / (N - 1)). */
ZvpStatus zvpsWinHann_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsWinHann_16s_I(Zvp16s* pSrcDst, int len);
ZvpStatus zvpsWinHann_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsWinHann_16sc_I(Zvp16sc* pSrcDst, int len);
ZvpStatus zvpsWinHann_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsWinHann_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsWinHann_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsWinHann_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsWinHann_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsWinHann_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsWinHann_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsWinHann_64fc_I(Zvp64fc* pSrcDst, int len);

/* Hamming: w(n) = 0.54 - 0.46 cos(2 pi n / (N - 1)); length 3 included. */
ZvpStatus zvpsWinHamming_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsWinHamming_16s_I(Zvp16s* pSrcDst, int len);
ZvpStatus zvpsWinHamming_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsWinHamming_16sc_I(Zvp16sc* pSrcDst, int len);
ZvpStatus zvpsWinHamming_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsWinHamming_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsWinHamming_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsWinHamming_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsWinHamming_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsWinHamming_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsWinHamming_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsWinHamming_64fc_I(Zvp64fc* pSrcDst, int len);

/* Blackman with a free alpha:
 *   w(n) = (alpha + 1) / 2 - 0.5 cos(2 pi n / (N - 1)) - (alpha / 2) cos(4 pi n / (N - 1)).
 * Every alpha is accepted: a NaN alpha gives NaN window values (0 in 16s
 * and 16sc results), an infinite one infinite or NaN values. alpha is single precision for 16s,
 * 16sc, 32f and 32fc data and double for 64f and 64fc.
 *
 * The Q15 members take alpha as a Q15 fixed-point integer: the alpha used
 * is alphaQ15 / 32768 (exactly, in double), any int accepted.
 * zvpsWinBlackmanQ15_16s_ISfs also scales: the result is
 * x(n) * w(n) * 2^-scaleFactor, formed in double, rounded to nearest with
 * ties to even and saturated to 16 bits, for every scaleFactor (a large
 * positive one gives 0, a large negative one the saturated sign of the
 * product, and a zero product stays 0). */
ZvpStatus zvpsWinBlackman_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_16s_I(Zvp16s* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_16sc_I(Zvp16sc* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_32f_I(Zvp32f* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinBlackman_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinBlackman_64f_I(Zvp64f* pSrcDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinBlackman_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinBlackman_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinBlackmanQ15_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, int alphaQ15);
ZvpStatus zvpsWinBlackmanQ15_16s_I(Zvp16s* pSrcDst, int len, int alphaQ15);
ZvpStatus zvpsWinBlackmanQ15_16s_ISfs(Zvp16s* pSrcDst, int len, int alphaQ15, int scaleFactor);
ZvpStatus zvpsWinBlackmanQ15_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, int alphaQ15);
ZvpStatus zvpsWinBlackmanQ15_16sc_I(Zvp16sc* pSrcDst, int len, int alphaQ15);

/* Blackman with the standard alpha -0.16 (the single-precision value with
 * bit pattern 0xBE23D70A, widened to double for 64f and 64fc): the Blackman
 * operation with that alpha, checks included. */
ZvpStatus zvpsWinBlackmanStd_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsWinBlackmanStd_16s_I(Zvp16s* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanStd_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsWinBlackmanStd_16sc_I(Zvp16sc* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanStd_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsWinBlackmanStd_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanStd_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsWinBlackmanStd_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanStd_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsWinBlackmanStd_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanStd_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsWinBlackmanStd_64fc_I(Zvp64fc* pSrcDst, int len);

/* Blackman with the length's optimal alpha = -(0.5 / cos(pi / (N - 1)))^2,
 * computed in double and rounded to single precision (then widened again
 * for 64f and 64fc). The length is checked first: N < 4 gives
 * zvpStsSizeErr (-6) before any pointer is looked at (N = 3 would divide
 * by cos(pi / 2)); the Blackman operation then checks the pointers. */
ZvpStatus zvpsWinBlackmanOpt_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsWinBlackmanOpt_16s_I(Zvp16s* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanOpt_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsWinBlackmanOpt_16sc_I(Zvp16sc* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanOpt_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsWinBlackmanOpt_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanOpt_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsWinBlackmanOpt_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanOpt_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsWinBlackmanOpt_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsWinBlackmanOpt_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsWinBlackmanOpt_64fc_I(Zvp64fc* pSrcDst, int len);

/* Kaiser: with H = (N - 1) / 2,
 *   w(n) = I0(alpha sqrt(H^2 - (n - H)^2)) / I0(alpha H),
 * where I0, the modified Bessel function of the first kind of order 0, is
 * taken from the polynomial approximations with t = x / 3.75:
 *   x <= 3.75:  1 + 3.5156229 t^2 + 3.0899424 t^4 + 1.2067492 t^6
 *               + 0.2659732 t^8 + 0.0360768 t^10 + 0.0045813 t^12
 *   x > 3.75:   exp(x) / sqrt(x) * (0.39894228 + 0.01328592 / t
 *               + 0.00225319 / t^2 - 0.00157565 / t^3 + 0.00916281 / t^4
 *               - 0.02057706 / t^5 + 0.02635537 / t^6 - 0.01647633 / t^7
 *               + 0.00392377 / t^8)
 * (relative error below 2e-7 against the true I0), exp being the library's
 * zvpsExp_64f. Against these approximations evaluated exactly, a window
 * value is within 1e-13 + 2^-50 alpha H. H^2 - (n - H)^2 is formed as n (N - 1 - n). The normaliser
 * I0(alpha H) is evaluated once per call, and the exponentials are taken
 * relative to it, w(n) = exp(x - alpha H) * g(x) / g(alpha H) with
 * I0(x) = exp(x) g(x), so the window stays exact where exp(alpha H) alone
 * would overflow: a large alpha gives a window that is 1 at the centre of
 * an odd length and tends to 0 elsewhere.
 *
 * Parameter: alpha is single precision for 16s, 16sc, 32f and 32fc data and
 * double for 64f and 64fc; I0 is even, so -alpha gives the same window as
 * alpha. A NaN or infinite alpha gives zvpStsBadArgErr (-5), checked after
 * the pointers and the length. The Q15 members take alphaQ15 / 32768; every
 * int is accepted. Length: every N >= 1. N = 1 leaves the element
 * unchanged (w(0) = I0(0) / I0(0) = 1); alpha = 0 gives w(n) = 1 exactly. */
ZvpStatus zvpsWinKaiser_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_16s_I(Zvp16s* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_16sc_I(Zvp16sc* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_32f_I(Zvp32f* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_32fc_I(Zvp32fc* pSrcDst, int len, Zvp32f alpha);
ZvpStatus zvpsWinKaiser_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinKaiser_64f_I(Zvp64f* pSrcDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinKaiser_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinKaiser_64fc_I(Zvp64fc* pSrcDst, int len, Zvp64f alpha);
ZvpStatus zvpsWinKaiserQ15_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len, int alphaQ15);
ZvpStatus zvpsWinKaiserQ15_16s_I(Zvp16s* pSrcDst, int len, int alphaQ15);
ZvpStatus zvpsWinKaiserQ15_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len, int alphaQ15);
ZvpStatus zvpsWinKaiserQ15_16sc_I(Zvp16sc* pSrcDst, int len, int alphaQ15);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_WINDOW_H */

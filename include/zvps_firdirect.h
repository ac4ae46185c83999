/* zvpSP: stateless FIR filters over a caller-owned doubled delay line. */
#ifndef ZVPS_FIRDIRECT_H
#define ZVPS_FIRDIRECT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Every function here filters with the taps pTaps[0 .. tapsLen-1] in
 * natural order,
 *   y[n] = sum over k of pTaps[k] * x[n - k],  k = 0 .. tapsLen-1,
 * keeping the history in the caller's delay line instead of a state record.
 *
 * The delay line: pDlyLine holds 2 * tapsLen samples, the same tapsLen
 * samples twice (pDlyLine[q] = pDlyLine[q + tapsLen]), and *pDlyLineIndex,
 * in 0 .. tapsLen-1, is the ring position of the oldest one: with index i
 * the history, oldest first, is pDlyLine[i], pDlyLine[i+1], ...,
 * pDlyLine[i + tapsLen - 1]. A zeroed delay line with index 0 starts from
 * silence. Each input x is, in effect, written at i and i + tapsLen, the
 * index advances (tapsLen wraps to 0), and the output is
 *   y = sum over j of pTaps[tapsLen-1-j] * pDlyLine[i + j],  j = 0 .. tapsLen-1,
 * with i the advanced index. On return the delay line holds the last tapsLen
 * samples in both halves and *pDlyLineIndex the advanced index, so
 * consecutive calls (block or one-sample, in any mix) filter one continuous
 * stream, bit for bit the same as one call over all the samples. A delay
 * line whose two halves differ gives undefined values (never an access
 * outside the 2 * tapsLen samples).
 *
 * Forms: FIR..._Direct_... filters numIters samples from pSrc to pDst;
 * the _I/_ISfs block forms filter pSrcDst in place. FIROne..._Direct_...
 * filters the one sample src into *pDstVal; their _I/_ISfs forms read and
 * replace the one sample *pSrcDst. Apart from an in-place call's source and
 * destination (the same pointer), no two arrays may overlap.
 *
 * Memory: a block call with floating-point taps whose run past the first
 * tapsLen-1 outputs has 32 or more samples takes one work block from the
 * library allocator (the taps and up to 1024 + tapsLen samples converted
 * to the accumulator type) and releases it before returning. If the block
 * cannot be had, the call filters without it, to the same results, and
 * still succeeds. Nothing else is allocated.
 *
 * Checks, in order, with nothing written (destination, delay line, index)
 * on error:
 *   pSrc or pDst null (pSrcDst; pDstVal) -> zvpStsNullPtrErr (-8);
 *   numIters < 1 (block forms only) -> zvpStsSizeErr (-6);
 *   pTaps null -> zvpStsNullPtrErr (-8);
 *   tapsLen < 1 -> zvpStsFIRLenErr (-26);
 *   pDlyLine or pDlyLineIndex null -> zvpStsNullPtrErr (-8);
 *   *pDlyLineIndex outside 0 .. tapsLen-1 -> zvpStsDlyLineIndexErr (-24).
 *
 * Floating-point taps: the products are summed in the precision of the
 * accumulator, in one fixed order shared by every form, path and split of
 * the stream: eight interleaved partial sums over j = 0 .. T-1, T being
 * tapsLen rounded down to a multiple of 8 (partial sum r takes the j with
 * j mod 8 = r, in increasing j), combined as
 *   ((s0 + s1) + (s2 + s3)) + ((s4 + s5) + (s6 + s7)),
 * then the terms j = T .. tapsLen-1 added one at a time. A complex product
 * is (xr*hr - xi*hi, xr*hi + xi*hr), each part rounded before it is added.
 * The accumulator is double for Direct_32f (single-precision taps and data:
 * every product is exact) and for every 64f/64fc taps form; single
 * precision for Direct_32fc and for the 32f/32fc taps forms on 16-bit data.
 * A single-precision output is the accumulator rounded once. */
ZvpStatus zvpsFIR_Direct_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, const Zvp32f* pTaps, int tapsLen,
                             Zvp32f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_32f_I(Zvp32f* pSrcDst, int numIters, const Zvp32f* pTaps, int tapsLen,
                               Zvp32f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_32f(Zvp32f src, Zvp32f* pDstVal, const Zvp32f* pTaps, int tapsLen,
                                Zvp32f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_32f_I(Zvp32f* pSrcDst, const Zvp32f* pTaps, int tapsLen, Zvp32f* pDlyLine,
                                  int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_64f(const Zvp64f* pSrc, Zvp64f* pDst, int numIters, const Zvp64f* pTaps, int tapsLen,
                             Zvp64f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_64f_I(Zvp64f* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen,
                               Zvp64f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_64f(Zvp64f src, Zvp64f* pDstVal, const Zvp64f* pTaps, int tapsLen,
                                Zvp64f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_64f_I(Zvp64f* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp64f* pDlyLine,
                                  int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, const Zvp32fc* pTaps,
                              int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_32fc_I(Zvp32fc* pSrcDst, int numIters, const Zvp32fc* pTaps, int tapsLen,
                                Zvp32fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_32fc(Zvp32fc src, Zvp32fc* pDstVal, const Zvp32fc* pTaps, int tapsLen,
                                 Zvp32fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_32fc_I(Zvp32fc* pSrcDst, const Zvp32fc* pTaps, int tapsLen, Zvp32fc* pDlyLine,
                                   int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int numIters, const Zvp64fc* pTaps,
                              int tapsLen, Zvp64fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIR_Direct_64fc_I(Zvp64fc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen,
                                Zvp64fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_64fc(Zvp64fc src, Zvp64fc* pDstVal, const Zvp64fc* pTaps, int tapsLen,
                                 Zvp64fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne_Direct_64fc_I(Zvp64fc* pSrcDst, const Zvp64fc* pTaps, int tapsLen, Zvp64fc* pDlyLine,
                                   int* pDlyLineIndex);
ZvpStatus zvpsFIR64f_Direct_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, const Zvp64f* pTaps,
                                int tapsLen, Zvp32f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIR64f_Direct_32f_I(Zvp32f* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen,
                                  Zvp32f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne64f_Direct_32f(Zvp32f src, Zvp32f* pDstVal, const Zvp64f* pTaps, int tapsLen,
                                   Zvp32f* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne64f_Direct_32f_I(Zvp32f* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp32f* pDlyLine,
                                     int* pDlyLineIndex);
ZvpStatus zvpsFIR64fc_Direct_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, const Zvp64fc* pTaps,
                                  int tapsLen, Zvp32fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIR64fc_Direct_32fc_I(Zvp32fc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen,
                                    Zvp32fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne64fc_Direct_32fc(Zvp32fc src, Zvp32fc* pDstVal, const Zvp64fc* pTaps, int tapsLen,
                                     Zvp32fc* pDlyLine, int* pDlyLineIndex);
ZvpStatus zvpsFIROne64fc_Direct_32fc_I(Zvp32fc* pSrcDst, const Zvp64fc* pTaps, int tapsLen, Zvp32fc* pDlyLine,
                                       int* pDlyLineIndex);

/* Integer data, floating-point taps: the samples are converted exactly to
 * the accumulator type (single precision for 32f/32fc taps, double for
 * 64f/64fc taps), filtered as above, and each result (each part of a
 * complex one) is multiplied by 2^-scaleFactor, rounded to nearest with ties
 * to even and saturated to the data type; a NaN result gives 0. Any
 * scaleFactor is accepted. The arithmetic runs under round-to-nearest with
 * flush-to-zero and denormals-are-zero off, so the results never depend on
 * the caller's floating-point settings, which are restored on return. */
ZvpStatus zvpsFIR32f_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp32f* pTaps,
                                    int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR32f_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp32f* pTaps, int tapsLen,
                                     Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne32f_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp32f* pTaps, int tapsLen,
                                       Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne32f_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp32f* pTaps, int tapsLen, Zvp16s* pDlyLine,
                                        int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR32fc_Direct_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, const Zvp32fc* pTaps,
                                      int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR32fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, const Zvp32fc* pTaps, int tapsLen,
                                       Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne32fc_Direct_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, const Zvp32fc* pTaps, int tapsLen,
                                         Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne32fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, const Zvp32fc* pTaps, int tapsLen,
                                          Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64f_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp64f* pTaps,
                                    int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64f_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen,
                                     Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64f_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp64f* pTaps, int tapsLen,
                                       Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64f_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp16s* pDlyLine,
                                        int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64fc_Direct_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, const Zvp64fc* pTaps,
                                      int tapsLen, Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen,
                                       Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64fc_Direct_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, const Zvp64fc* pTaps, int tapsLen,
                                         Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64fc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, const Zvp64fc* pTaps, int tapsLen,
                                          Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64f_Direct_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int numIters, const Zvp64f* pTaps,
                                    int tapsLen, Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64f_Direct_32s_ISfs(Zvp32s* pSrcDst, int numIters, const Zvp64f* pTaps, int tapsLen,
                                     Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64f_Direct_32s_Sfs(Zvp32s src, Zvp32s* pDstVal, const Zvp64f* pTaps, int tapsLen,
                                       Zvp32s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64f_Direct_32s_ISfs(Zvp32s* pSrcDst, const Zvp64f* pTaps, int tapsLen, Zvp32s* pDlyLine,
                                        int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64fc_Direct_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc* pDst, int numIters, const Zvp64fc* pTaps,
                                      int tapsLen, Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR64fc_Direct_32sc_ISfs(Zvp32sc* pSrcDst, int numIters, const Zvp64fc* pTaps, int tapsLen,
                                       Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64fc_Direct_32sc_Sfs(Zvp32sc src, Zvp32sc* pDstVal, const Zvp64fc* pTaps, int tapsLen,
                                         Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne64fc_Direct_32sc_ISfs(Zvp32sc* pSrcDst, const Zvp64fc* pTaps, int tapsLen,
                                          Zvp32sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);

/* Integer taps: the sum of the products is exact (a 128-bit integer
 * whatever tapsLen), and the result is rounded once by the scale rule:
 * multiplied by 2^-s, rounded to nearest with ties to even, saturated to
 * the data type (each part of a complex result on its own).
 *   Direct_16s_Sfs:  16-bit taps and data, s = scaleFactor.
 *   FIR32s_Direct_16s_Sfs, FIR32sc_Direct_16sc_Sfs: tap k has the value
 *   pTaps[k] * 2^-tapsFactor; s = tapsFactor + scaleFactor (formed without
 *   overflow; any values are accepted). */
ZvpStatus zvpsFIR_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp16s* pTaps,
                                 int tapsLen, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp16s* pTaps, int tapsLen,
                                  Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp16s* pTaps, int tapsLen,
                                    Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp16s* pTaps, int tapsLen, Zvp16s* pDlyLine,
                                     int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR32s_Direct_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, const Zvp32s* pTaps,
                                    int tapsLen, int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex,
                                    int scaleFactor);
ZvpStatus zvpsFIR32s_Direct_16s_ISfs(Zvp16s* pSrcDst, int numIters, const Zvp32s* pTaps, int tapsLen,
                                     int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne32s_Direct_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, const Zvp32s* pTaps, int tapsLen,
                                       int tapsFactor, Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIROne32s_Direct_16s_ISfs(Zvp16s* pSrcDst, const Zvp32s* pTaps, int tapsLen, int tapsFactor,
                                        Zvp16s* pDlyLine, int* pDlyLineIndex, int scaleFactor);
ZvpStatus zvpsFIR32sc_Direct_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, const Zvp32sc* pTaps,
                                      int tapsLen, int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex,
                                      int scaleFactor);
ZvpStatus zvpsFIR32sc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, const Zvp32sc* pTaps, int tapsLen,
                                       int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex,
                                       int scaleFactor);
ZvpStatus zvpsFIROne32sc_Direct_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, const Zvp32sc* pTaps, int tapsLen,
                                         int tapsFactor, Zvp16sc* pDlyLine, int* pDlyLineIndex,
                                         int scaleFactor);
ZvpStatus zvpsFIROne32sc_Direct_16sc_ISfs(Zvp16sc* pSrcDst, const Zvp32sc* pTaps, int tapsLen, int tapsFactor,
                                          Zvp16sc* pDlyLine, int* pDlyLineIndex, int scaleFactor);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FIRDIRECT_H */

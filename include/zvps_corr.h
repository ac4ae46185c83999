/* zvpSP cross- and auto-correlation. */
#ifndef ZVPS_CORR_H
#define ZVPS_CORR_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Cross-correlation at dstLen consecutive lags from lowLag (any value,
 * negative included):
 *   pDst[n] = sum_k conj(pSrc1[k]) * pSrc2[k + n + lowLag],  n = 0 .. dstLen-1,
 * over the k with both indices inside their vectors (the conjugate only
 * matters for the complex types). Lags without overlap (lag <= -src1Len or
 * lag >= src2Len) give exactly 0; those outputs are written first, without
 * computing and without allocating.
 * Checks, in order: pSrc1, pSrc2 or pDst null -> zvpStsNullPtrErr (-8);
 * src1Len, src2Len or dstLen < 1 -> zvpStsSizeErr (-6). Nothing is written on
 * error.
 * Method, with D the number of overlapping lags asked for and Lmin, Lmax the
 * shorter and longer lengths: the single-precision value
 * (float)Lmin * (float)D / (float)Lmax, truncated to an integer, decides:
 * direct multiply-accumulate up to 383 (32f, 16s_Sfs), 255 (32fc), 511 (64f,
 * 64fc), the FFT above. The FFT is one transform of the whole correlation
 * (2^k >= src1Len + src2Len - 1, k >= 1) while Lmax < 3 * Lmin or while the
 * first lag asked for lies more than Lmin past the first lag of the full
 * correlation (lowLag + src1Len - 1 > Lmin after the leading zeros); else
 * overlap-save over the longer vector in blocks of 2^k, k = (smallest j >= 1
 * with 2^j >= 2 * Lmin) + 1. Real data use the real FFT and the Pack product
 * with a conjugate, complex data the complex FFT; the inverse divides by
 * 2^k. The FFT takes one block from the library allocator, released before
 * returning: zvpStsMemAllocErr (-9) if it cannot be had, with only the zero
 * runs written.
 * CrossCorr_16s_Sfs converts both inputs to single precision (one scratch
 * allocation, after the zero runs), correlates as 32f and converts back:
 * times 2^-scaleFactor, rounded to nearest with ties to even, saturated.
 * CrossCorr_16s64s is always direct and exact: 64-bit integer sums of the
 * 16-bit products, no allocation. */
ZvpStatus zvpsCrossCorr_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst,
                            int dstLen, int lowLag);
ZvpStatus zvpsCrossCorr_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len, Zvp64f* pDst,
                            int dstLen, int lowLag);
ZvpStatus zvpsCrossCorr_32fc(const Zvp32fc* pSrc1, int src1Len, const Zvp32fc* pSrc2, int src2Len,
                             Zvp32fc* pDst, int dstLen, int lowLag);
ZvpStatus zvpsCrossCorr_64fc(const Zvp64fc* pSrc1, int src1Len, const Zvp64fc* pSrc2, int src2Len,
                             Zvp64fc* pDst, int dstLen, int lowLag);
ZvpStatus zvpsCrossCorr_16s_Sfs(const Zvp16s* pSrc1, int src1Len, const Zvp16s* pSrc2, int src2Len,
                                Zvp16s* pDst, int dstLen, int lowLag, int scaleFactor);
ZvpStatus zvpsCrossCorr_16s64s(const Zvp16s* pSrc1, int src1Len, const Zvp16s* pSrc2, int src2Len,
                               Zvp64s* pDst, int dstLen, int lowLag);

/* CrossCorrNorm: CrossCorr with a selector and caller work memory.
 * algType: low byte zvpAlgAuto (0: the thresholds above), zvpAlgDirect (1) or
 * zvpAlgFFT (2); second byte zvpsNormNone (0x000), zvpsNormA (0x100: every
 * computed output times 1/min(src1Len, src2Len)) or zvpsNormB (0x200: every
 * computed output divided by the number of products at its lag, i.e. times
 * 1/Lmin where all Lmin overlap). Any bit above the second byte makes the
 * normalisation unknown. The FFT layout follows the 3x rule only (not the
 * first-lag rule of CrossCorr), so the buffer the size query reports always
 * suffices. pBuffer: at least CrossCorrNormGetBufferSize bytes, any alignment;
 * unused by the direct method.
 * Checks, in order: pSrc1, pSrc2 or pDst null -> -8; a length < 1 -> -6;
 * method byte > 2 -> zvpStsAlgTypeErr (-228); pBuffer null when the FFT is
 * chosen -> -8 (nothing written up to here). An unknown normalisation is
 * detected after the correlation: -228 with pDst holding the plain result.
 *
 * CrossCorrNormGetBufferSize: checks pBufferSize null (-8), a length < 1
 * (-6), a bad normalisation or method byte (-228), dataType not zvp32f,
 * zvp32fc, zvp64f, zvp64fc (zvpStsDataTypeErr -12, size set to 0). After the
 * same trimming of non-overlapping lags, the size is 0 when the direct
 * method will be used, else align64 of the three FFT sizes (real FFT, or
 * complex FFT for the complex types, order k as above, inverse divided by
 * 2^k) + align64(2^k * 2 * sizeof(element)) + 64. */
ZvpStatus zvpsCrossCorrNorm_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len,
                                Zvp32f* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer);
ZvpStatus zvpsCrossCorrNorm_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len,
                                Zvp64f* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer);
ZvpStatus zvpsCrossCorrNorm_32fc(const Zvp32fc* pSrc1, int src1Len, const Zvp32fc* pSrc2, int src2Len,
                                 Zvp32fc* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer);
ZvpStatus zvpsCrossCorrNorm_64fc(const Zvp64fc* pSrc1, int src1Len, const Zvp64fc* pSrc2, int src2Len,
                                 Zvp64fc* pDst, int dstLen, int lowLag, int algType, Zvp8u* pBuffer);
ZvpStatus zvpsCrossCorrNormGetBufferSize(int src1Len, int src2Len, int dstLen, int lowLag, ZvpDataType dataType,
                                         int algType, int* pBufferSize);

/* Auto-correlation:
 *   pDst[n] = sum_k conj(pSrc[k]) * pSrc[k + n],  n = 0 .. dstLen-1;
 * outputs at n >= srcLen are 0 (written first). With m = min(srcLen, dstLen):
 * direct while m < 856 (32f, 64f, 16s_Sfs), 368 (64fc), 152 (32fc); else one
 * FFT of the smallest 2^k >= 2 * srcLen (k >= 1), taken from the library
 * allocator (-9 if it cannot be had, with only the zeros past srcLen
 * written).
 * NormA: the first m outputs times 1/srcLen (the factor rounded once to the
 * output's precision). NormB: output n (n < m) divided by srcLen - n. The
 * NormB divisors are built in a temporary array from the library allocator
 * after the correlation: if it cannot be had the call returns
 * zvpStsMemAllocErr (-9) with pDst holding the unnormalised result.
 * 16s_Sfs forms convert to single precision (a scratch allocation),
 * correlate and normalise there, and convert back: times 2^-scaleFactor,
 * rounded to nearest with ties to even, saturated.
 * Checks, in order: pSrc or pDst null -> -8; srcLen or dstLen < 1 -> -6. */
ZvpStatus zvpsAutoCorr_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_16s_Sfs(const Zvp16s* pSrc, int srcLen, Zvp16s* pDst, int dstLen, int scaleFactor);
ZvpStatus zvpsAutoCorr_NormA_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormA_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormA_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormA_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormA_16s_Sfs(const Zvp16s* pSrc, int srcLen, Zvp16s* pDst, int dstLen, int scaleFactor);
ZvpStatus zvpsAutoCorr_NormB_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormB_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormB_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormB_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen);
ZvpStatus zvpsAutoCorr_NormB_16s_Sfs(const Zvp16s* pSrc, int srcLen, Zvp16s* pDst, int dstLen, int scaleFactor);

/* AutoCorrNorm: AutoCorr with the selector of CrossCorrNorm and caller work
 * memory. zvpAlgAuto takes the FFT from m >= 856 for every type; zvpAlgFFT
 * always, zvpAlgDirect never. NormA and NormB as above, but NormB divides
 * directly (no allocation).
 * Checks, in order: pSrc or pDst null -> -8; a length < 1 -> -6; method byte
 * > 2 -> -228; pBuffer null when the FFT is chosen -> -8. An unknown
 * normalisation is detected after the correlation: -228 with pDst holding
 * the plain result.
 * AutoCorrNormGetBufferSize: checks pBufferSize null (-8), a length < 1
 * (-6), a bad normalisation byte (-228), a method byte > 2 (-228), an unknown
 * dataType (-12, size set to 0). The size is 64 for the direct method, else
 * align64 of the three FFT sizes (order k with 2^k >= 2 * srcLen) +
 * align64(2^k * sizeof(element)) + 64. */
ZvpStatus zvpsAutoCorrNorm_32f(const Zvp32f* pSrc, int srcLen, Zvp32f* pDst, int dstLen, int algType,
                               Zvp8u* pBuffer);
ZvpStatus zvpsAutoCorrNorm_64f(const Zvp64f* pSrc, int srcLen, Zvp64f* pDst, int dstLen, int algType,
                               Zvp8u* pBuffer);
ZvpStatus zvpsAutoCorrNorm_32fc(const Zvp32fc* pSrc, int srcLen, Zvp32fc* pDst, int dstLen, int algType,
                                Zvp8u* pBuffer);
ZvpStatus zvpsAutoCorrNorm_64fc(const Zvp64fc* pSrc, int srcLen, Zvp64fc* pDst, int dstLen, int algType,
                                Zvp8u* pBuffer);
ZvpStatus zvpsAutoCorrNormGetBufferSize(int srcLen, int dstLen, ZvpDataType dataType, int algType,
                                        int* pBufferSize);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CORR_H */

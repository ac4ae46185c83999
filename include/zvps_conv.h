/* zvpSP convolution: linear, biased and cyclic. */
#ifndef ZVPS_CONV_H
#define ZVPS_CONV_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Linear convolution, full length:
 *   pDst[n] = sum_k pSrc1[k] * pSrc2[n - k],  n = 0 .. src1Len + src2Len - 2,
 * terms with an index outside its vector being absent; pDst receives
 * src1Len + src2Len - 1 values.
 * Checks, in order: pSrc1, pSrc2 or pDst null -> zvpStsNullPtrErr (-8);
 * src1Len < 1 or src2Len < 1 -> zvpStsSizeErr (-6). Nothing is written on
 * error.
 * Method (fixed, because the two round differently): with N the output
 * length, Lmin and Lmax the shorter and longer lengths (the first operand is
 * the longer one on a tie):
 *   - direct multiply-accumulate when N < 512 or Lmin < 64;
 *   - otherwise the real FFT: one transform of the smallest 2^k >= N (k >= 2)
 *     while Lmax < 3 * Lmin, else overlap-save in blocks of 2^k points with
 *     k = (smallest j >= 1 with 2^j >= 2 * Lmin) + 1, each block giving
 *     2^k - Lmin + 1 outputs. The inverse transform divides by 2^k.
 * The FFT methods take one block from the library allocator and release it
 * before returning: zvpStsMemAllocErr (-9) if it cannot be had, with nothing
 * written.
 * Conv_16s_Sfs converts both inputs to single precision (one scratch
 * allocation), runs the single-precision method of the same shape and
 * converts the result back: multiplied by 2^-scaleFactor, rounded to nearest
 * with ties to even, saturated to -32768 .. 32767. Products and sums are
 * single-precision values, so they are exact only while every partial sum
 * stays below 2^24 in magnitude. */
ZvpStatus zvpsConv_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst);
ZvpStatus zvpsConv_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len, Zvp64f* pDst);
ZvpStatus zvpsConv_16s_Sfs(const Zvp16s* pSrc1, int src1Len, const Zvp16s* pSrc2, int src2Len, Zvp16s* pDst,
                           int scaleFactor);

/* Convolve: the result of Conv with a method selector and caller work memory.
 * algType: zvpAlgAuto (0) chooses as Conv does, zvpAlgDirect (1) always runs
 * the direct kernel, zvpAlgFFT (2) always the FFT (one transform or
 * overlap-save by the same 3x rule). pBuffer: at least the bytes
 * ConvolveGetBufferSize reports for the same lengths, type and selector, any
 * alignment (it is aligned up to 64 bytes inside); the direct method does not
 * use it.
 * Checks, in order: pSrc1, pSrc2 or pDst null -> -8; a length < 1 -> -6;
 * algType outside 0 .. 2 -> zvpStsAlgTypeErr (-228); pBuffer null when the
 * FFT method is chosen -> -8. Nothing is written on error.
 *
 * ConvolveGetBufferSize: the bytes Convolve needs. Checks, in order:
 * pBufferSize null -> -8; a length < 1 -> -6; algType outside 0 .. 2 -> -228;
 * dataType not zvp32f (13) or zvp64f (19) -> zvpStsDataTypeErr (-12) with
 * *pBufferSize set to 0. The size is 64 when the direct method will be used;
 * otherwise, with k the order chosen above and align64 rounding up to a
 * multiple of 64, align64(spec) + align64(spec init) + align64(FFT work) +
 * align64(2^k * 8 bytes for 32f, 2^k * 16 for 64f) + 64, the three FFT sizes
 * being those of the real FFT size query for order k with the inverse divided
 * by 2^k (ZVP_FFT_DIV_INV_BY_N). A failing size query returns its status with
 * the size 0. */
ZvpStatus zvpsConvolve_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst,
                           ZvpAlgType algType, Zvp8u* pBuffer);
ZvpStatus zvpsConvolve_64f(const Zvp64f* pSrc1, int src1Len, const Zvp64f* pSrc2, int src2Len, Zvp64f* pDst,
                           ZvpAlgType algType, Zvp8u* pBuffer);
ZvpStatus zvpsConvolveGetBufferSize(int src1Len, int src2Len, ZvpDataType dataType, ZvpAlgType algType,
                                    int* pBufferSize);

/* Biased convolution:
 *   pDst[n] = sum_k pSrc1[k] * pSrc2[n + bias - k],  n = 0 .. dstLen - 1,
 * over the k for which both indices lie inside their vectors; an output with
 * no such k is 0. bias may be any value. Always direct, no allocation; the
 * sum runs in increasing k. Checks, in order: a pointer null -> -8; src1Len,
 * src2Len or dstLen < 1 -> -6. */
ZvpStatus zvpsConvBiased_32f(const Zvp32f* pSrc1, int src1Len, const Zvp32f* pSrc2, int src2Len, Zvp32f* pDst,
                             int dstLen, int bias);

/* Cyclic convolution of fixed size N (8 or 4):
 *   y[n] = sum_k x[k] * h[(n - k) mod N].
 * 4x4_32f32fc: x real, h and y complex. 8x8_16s_Sfs forms the exact integer
 * sums and applies the scale rule (times 2^-scaleFactor, round to nearest
 * with ties to even, saturate to 16 bits). y may be x or h. These three are
 * inner-loop routines: they check nothing (a null pointer is the caller's
 * fault) and always return zvpStsNoErr. */
ZvpStatus zvpsConvCyclic8x8_32f(const Zvp32f* x, const Zvp32f* h, Zvp32f* y);
ZvpStatus zvpsConvCyclic8x8_16s_Sfs(const Zvp16s* x, const Zvp16s* h, Zvp16s* y, int scaleFactor);
ZvpStatus zvpsConvCyclic4x4_32f32fc(const Zvp32f* x, const Zvp32fc* h, Zvp32fc* y);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CONV_H */

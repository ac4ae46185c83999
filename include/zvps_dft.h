/* zvpSP discrete Fourier transform of any length.
 *
 * X[k] = sum over n of x[n] exp(-+2 pi i n k / L), k = 0..L-1, for any length L
 * from 1 to 134217727, times the factor the record's flag chooses
 * (ZVP_FFT_DIV_FWD_BY_N: forward by 1/L; ZVP_FFT_DIV_INV_BY_N: inverse by 1/L;
 * ZVP_FFT_DIV_BY_SQRTN: both by 1/sqrt(L); ZVP_FFT_NODIV_BY_ANY: none). The
 * single-precision scale is 1.0f/(float)L, or the single rounding of
 * 1/sqrt(L) computed in double; the double types use the double values.
 *
 * Like the FFT, a transform runs from a specification record built once,
 * either in caller memory (GetSize, then Init) or by the library (InitAlloc,
 * released with Free), read-only during transforms and shareable between
 * threads that each bring their own work buffer.
 *
 * GetSize(length, flag, hint, pSpecSize, pSpecBufferSize, pBufferSize)
 * reports the bytes to give Init for the record, the scratch bytes Init
 * needs (its pMemInit; may be discarded once Init returns) and the work
 * bytes of each transform. Checks, in this order: an output location null
 * (zvpStsNullPtrErr, -8); length below 1 (zvpStsSizeErr, -6); a flag other
 * than 1, 2, 4, 8 (zvpStsFftFlagErr, -16); a length above 134217727, or a
 * length of 67108864 or more that has no suitable factorisation (-6). The
 * hint is stored and not acted on. Nothing is written on error.
 *
 * The method follows from the length: up to 16, dedicated kernels with no
 * tables and no work memory; a power of two, the FFT (results equal the
 * FFT's); a length that splits into factors 2, 3, 4, 5, 6, ... up to 50 with
 * a last factor up to 150 (L divisible by 4) or 50 (otherwise), a
 * mixed-radix transform over those factors; other lengths up to 50, a
 * direct evaluation from a table of roots; the rest, a chirp convolution
 * through an inner transform of a length M = 2^a 3^b 5^c at least 2L - 1.
 * The record starts with a 576-byte fixed part; every positive size has 64
 * bytes of alignment slack added.
 *
 * Init(length, flag, hint, pDFTSpec, pMemInit) builds the record at the next
 * 64-byte boundary of pDFTSpec (any alignment) using pMemInit as scratch
 * (may be null when the reported scratch size is 0). Checks: pDFTSpec null
 * (-8); then the size query's checks; then pMemInit null when scratch is
 * needed (-8). On error the record memory is not written. Transforms and
 * Free take the same pDFTSpec pointer. InitAlloc allocates and builds
 * (ppDFTSpec null: -8; allocation failure: zvpStsMemAllocErr, -9, nothing
 * kept); Free clears the record's tag and releases memory only for
 * allocated records (null: -8; not a live record of that type:
 * zvpStsContextMatchErr, -17). GetBufSize reports the work bytes of an
 * existing record (0 when none are needed).
 *
 * Transforms: record null (-8), record of another type or released (-17),
 * then the data pointers in argument order (-8); on error nothing is
 * written. pBuffer: work memory of GetBufSize bytes (any alignment), or null
 * to let the call allocate it (zvpStsMemAllocErr when that fails; freed
 * before return). The source may equal the destination. */
#ifndef ZVPS_DFT_H
#define ZVPS_DFT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* DFT specification records, opaque. */
typedef struct ZvpsDFTSpec_C_32fc ZvpsDFTSpec_C_32fc;
typedef struct ZvpsDFTSpec_C_32f ZvpsDFTSpec_C_32f;
typedef struct ZvpsDFTSpec_R_32f ZvpsDFTSpec_R_32f;
typedef struct ZvpsDFTSpec_C_64fc ZvpsDFTSpec_C_64fc;
typedef struct ZvpsDFTSpec_C_64f ZvpsDFTSpec_C_64f;
typedef struct ZvpsDFTSpec_R_64f ZvpsDFTSpec_R_64f;
typedef struct ZvpsDFTOutOrdSpec_C_32fc ZvpsDFTOutOrdSpec_C_32fc;
typedef struct ZvpsDFTOutOrdSpec_C_64fc ZvpsDFTOutOrdSpec_C_64fc;

/* Specification records, as described above. The split (32f, 64f) records
 * and the real records of odd length stage their data through interleaved
 * complex work memory of L samples, which their work size includes. A real
 * record of even length L above 16 that is not a power of two holds a
 * complex record of L/2 points (sized by that length's own rule) and the
 * L/2 roots of L: it transforms x[2n] + i x[2n+1] and recombines. */
ZvpStatus zvpsDFTGetSize_C_32fc(int length, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDFTInit_C_32fc(int length, int flag, ZvpHintAlgorithm hint, ZvpsDFTSpec_C_32fc* pDFTSpec, Zvp8u* pMemInit);
ZvpStatus zvpsDFTInitAlloc_C_32fc(ZvpsDFTSpec_C_32fc** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTFree_C_32fc(ZvpsDFTSpec_C_32fc* pDFTSpec);
ZvpStatus zvpsDFTGetBufSize_C_32fc(const ZvpsDFTSpec_C_32fc* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTGetSize_C_32f(int length, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDFTInit_C_32f(int length, int flag, ZvpHintAlgorithm hint, ZvpsDFTSpec_C_32f* pDFTSpec, Zvp8u* pMemInit);
ZvpStatus zvpsDFTInitAlloc_C_32f(ZvpsDFTSpec_C_32f** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTFree_C_32f(ZvpsDFTSpec_C_32f* pDFTSpec);
ZvpStatus zvpsDFTGetBufSize_C_32f(const ZvpsDFTSpec_C_32f* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTGetSize_R_32f(int length, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDFTInit_R_32f(int length, int flag, ZvpHintAlgorithm hint, ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pMemInit);
ZvpStatus zvpsDFTInitAlloc_R_32f(ZvpsDFTSpec_R_32f** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTFree_R_32f(ZvpsDFTSpec_R_32f* pDFTSpec);
ZvpStatus zvpsDFTGetBufSize_R_32f(const ZvpsDFTSpec_R_32f* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTGetSize_C_64fc(int length, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDFTInit_C_64fc(int length, int flag, ZvpHintAlgorithm hint, ZvpsDFTSpec_C_64fc* pDFTSpec, Zvp8u* pMemInit);
ZvpStatus zvpsDFTInitAlloc_C_64fc(ZvpsDFTSpec_C_64fc** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTFree_C_64fc(ZvpsDFTSpec_C_64fc* pDFTSpec);
ZvpStatus zvpsDFTGetBufSize_C_64fc(const ZvpsDFTSpec_C_64fc* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTGetSize_C_64f(int length, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDFTInit_C_64f(int length, int flag, ZvpHintAlgorithm hint, ZvpsDFTSpec_C_64f* pDFTSpec, Zvp8u* pMemInit);
ZvpStatus zvpsDFTInitAlloc_C_64f(ZvpsDFTSpec_C_64f** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTFree_C_64f(ZvpsDFTSpec_C_64f* pDFTSpec);
ZvpStatus zvpsDFTGetBufSize_C_64f(const ZvpsDFTSpec_C_64f* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTGetSize_R_64f(int length, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDFTInit_R_64f(int length, int flag, ZvpHintAlgorithm hint, ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pMemInit);
ZvpStatus zvpsDFTInitAlloc_R_64f(ZvpsDFTSpec_R_64f** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTFree_R_64f(ZvpsDFTSpec_R_64f* pDFTSpec);
ZvpStatus zvpsDFTGetBufSize_R_64f(const ZvpsDFTSpec_R_64f* pDFTSpec, int* pBufferSize);

/* Complex transforms, interleaved (32fc, 64fc) and split into real and
 * imaginary arrays (32f, 64f). Checks: record, then pSrc, pDst (or pSrcRe,
 * pSrcIm, pDstRe, pDstIm). */
ZvpStatus zvpsDFTFwd_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsDFTSpec_C_32fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsDFTSpec_C_32fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_CToC_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstRe, Zvp32f* pDstIm, const ZvpsDFTSpec_C_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_CToC_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstRe, Zvp32f* pDstIm, const ZvpsDFTSpec_C_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsDFTSpec_C_64fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsDFTSpec_C_64fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_CToC_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstRe, Zvp64f* pDstIm, const ZvpsDFTSpec_C_64f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_CToC_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstRe, Zvp64f* pDstIm, const ZvpsDFTSpec_C_64f* pDFTSpec, Zvp8u* pBuffer);

/* Real transforms of L samples, spectra in the layouts of the real FFT
 * (zvps_fftreal.h): CCS holds L + 2 values for even L and L + 1 for odd L
 * (R0, 0, R1, I1, ..., with the zero imaginary parts stored); Pack holds L
 * values (R0, R1, I1, R2, I2, ..., R(L/2) last for even L); Perm holds L
 * values (R0, R(L/2), R1, I1, ... for even L; as Pack for odd L). The inverse
 * forms read only those places: the stored zeros of CCS are not read, and
 * the imaginary parts of X[0] and X[L/2] are taken as 0. */
ZvpStatus zvpsDFTFwd_RToCCS_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_RToPack_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_RToPerm_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_CCSToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_PackToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_PermToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDFTSpec_R_32f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_RToCCS_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_RToPack_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTFwd_RToPerm_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_CCSToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_PackToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTInv_PermToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDFTSpec_R_64f* pDFTSpec, Zvp8u* pBuffer);

/* Out-of-order complex transforms: the same sums as the ordered transforms,
 * with the spectrum in the order the mixed-radix stages leave it (forward)
 * and read in that order (inverse). The stages of this library sort
 * themselves as they go (each writes its sub-transforms at their final
 * stride), so the order they leave is the natural one: for every length and
 * method the permutation is the identity and the results equal, bit for
 * bit, those of the ordered records of the same length and flag. The
 * records are built only by InitAlloc(ppDFTSpec, length, flag, hint), with
 * the checks and sizes of the ordered InitAlloc; they carry their own tags,
 * so ordered and out-of-order records are not interchangeable (-17). */
ZvpStatus zvpsDFTOutOrdInitAlloc_C_32fc(ZvpsDFTOutOrdSpec_C_32fc** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTOutOrdFree_C_32fc(ZvpsDFTOutOrdSpec_C_32fc* pDFTSpec);
ZvpStatus zvpsDFTOutOrdGetBufSize_C_32fc(const ZvpsDFTOutOrdSpec_C_32fc* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTOutOrdFwd_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsDFTOutOrdSpec_C_32fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTOutOrdInv_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsDFTOutOrdSpec_C_32fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTOutOrdInitAlloc_C_64fc(ZvpsDFTOutOrdSpec_C_64fc** ppDFTSpec, int length, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsDFTOutOrdFree_C_64fc(ZvpsDFTOutOrdSpec_C_64fc* pDFTSpec);
ZvpStatus zvpsDFTOutOrdGetBufSize_C_64fc(const ZvpsDFTOutOrdSpec_C_64fc* pDFTSpec, int* pBufferSize);
ZvpStatus zvpsDFTOutOrdFwd_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsDFTOutOrdSpec_C_64fc* pDFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDFTOutOrdInv_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsDFTOutOrdSpec_C_64fc* pDFTSpec, Zvp8u* pBuffer);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_DFT_H */

/* zvpSP FFT specifications and the complex FFT of N = 2^order points.
 *
 * A transform runs from a specification record that the caller builds once,
 * either in its own memory (GetSize, then Init) or allocated by the library
 * (InitAlloc, released with Free), and may share between threads. The record
 * fixes the order, the normalisation flag and the types. Setup reports an
 * order out of range (zvpStsFftOrderErr, -15), an unknown flag
 * (zvpStsFftFlagErr, -16), a null pointer (zvpStsNullPtrErr, -8) and a failed
 * allocation (zvpStsMemAllocErr, -9). A transform checks the record first
 * (null: -8; another type or already freed: zvpStsContextMatchErr, -17), then
 * its data pointers (-8); on any error nothing is written. */
#ifndef ZVPS_FFT_H
#define ZVPS_FFT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* FFT specification records, opaque; a record begins with its identity tag. */
typedef struct ZvpsFFTSpec_C_32fc ZvpsFFTSpec_C_32fc;
typedef struct ZvpsFFTSpec_C_32f ZvpsFFTSpec_C_32f;
typedef struct ZvpsFFTSpec_C_64fc ZvpsFFTSpec_C_64fc;
typedef struct ZvpsFFTSpec_C_64f ZvpsFFTSpec_C_64f;

/* Complex FFT specifications of N = 2^order points (order 0..28 for the single
 * types, 0..27 for the double types), flag one of ZVP_FFT_DIV_FWD_BY_N,
 * ZVP_FFT_DIV_INV_BY_N, ZVP_FFT_DIV_BY_SQRTN, ZVP_FFT_NODIV_BY_ANY; the hint is
 * stored and not acted on. GetSize reports the bytes to give Init for the
 * record, the scratch bytes Init needs (0 up to order 10; the scratch may be
 * discarded after Init) and the work bytes each transform needs. Init builds
 * the record at the next 64-byte boundary of pSpec; a record refused for its
 * flag is left with tag 0. InitAlloc allocates and builds; Free clears the tag
 * and releases memory only for allocated records. GetBufSize reports the work
 * bytes of an existing record (0 when none are needed). The split (32f, 64f)
 * queries give the same sizes as the interleaved ones. */
ZvpStatus zvpsFFTGetSize_C_32fc(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_32fc(ZvpsFFTSpec_C_32fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_32fc(ZvpsFFTSpec_C_32fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_32fc(ZvpsFFTSpec_C_32fc* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_32fc(const ZvpsFFTSpec_C_32fc* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_C_32f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_32f(ZvpsFFTSpec_C_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_32f(ZvpsFFTSpec_C_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_32f(ZvpsFFTSpec_C_32f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_32f(const ZvpsFFTSpec_C_32f* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_C_64fc(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_64fc(ZvpsFFTSpec_C_64fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_64fc(ZvpsFFTSpec_C_64fc** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_64fc(ZvpsFFTSpec_C_64fc* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_64fc(const ZvpsFFTSpec_C_64fc* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_C_64f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_C_64f(ZvpsFFTSpec_C_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_C_64f(ZvpsFFTSpec_C_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_C_64f(ZvpsFFTSpec_C_64f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_C_64f(const ZvpsFFTSpec_C_64f* pFFTSpec, int* pBufferSize);

/* Complex FFT, X[k] = sum x[n] exp(-+2 pi i n k / N) times the factor chosen by
 * the record's flag. The source may equal the destination (the _I forms).
 * pBuffer: work memory of GetBufSize bytes, or null to let the call allocate
 * it (zvpStsMemAllocErr when that fails). Checks: record null (-8), record of
 * another type or released (-17), then the data pointers (-8). */
ZvpStatus zvpsFFTFwd_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_32fc_I(Zvp32fc* pSrcDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_32fc_I(Zvp32fc* pSrcDst, const ZvpsFFTSpec_C_32fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstRe, Zvp32f* pDstIm, const ZvpsFFTSpec_C_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstRe, Zvp32f* pDstIm, const ZvpsFFTSpec_C_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_64fc_I(Zvp64fc* pSrcDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_64fc_I(Zvp64fc* pSrcDst, const ZvpsFFTSpec_C_64fc* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_CToC_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstRe, Zvp64f* pDstIm, const ZvpsFFTSpec_C_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CToC_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstRe, Zvp64f* pDstIm, const ZvpsFFTSpec_C_64f* pFFTSpec, Zvp8u* pBuffer);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FFT_H */

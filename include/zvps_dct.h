/* zvpSP discrete cosine transform of any length N >= 1.
 *
 * Forward: the orthonormal DCT-II,
 *     X[0] = 1/sqrt(N) * sum x[n],
 *     X[k] = sqrt(2/N) * sum x[n] cos(pi (2n + 1) k / 2N),   k = 1 .. N-1;
 * inverse: its exact inverse, the orthonormal DCT-III,
 *     x[n] = X[0]/sqrt(N) + sqrt(2/N) * sum_{k>=1} X[k] cos(pi (2n + 1) k / 2N).
 *
 * A transform runs from a specification record built once for a length,
 * either in the caller's memory (GetSize, then Init) or allocated by the
 * library (InitAlloc, released with Free). Forward and inverse records are
 * distinct types; a record is accepted only by the operations of its own
 * direction and type. The hint is stored and not acted on.
 *
 * Methods, chosen by N when the record is built:
 *   N = 1, 2, 4, 8            small kernels with built-in constants; no
 *                             tables, no work memory (N = 1 copies).
 *   N < 36, other lengths     direct sums over a table of cos(2 pi i / 4N),
 *                             i < 4N; work: N elements.
 *   N = 2^m >= 16             the real FFT of N points (N <= 2^27).
 *   N >= 36, not 2^m          the real DFT of N points (N <= 67108863).
 * The last two reorder the signal (even samples in order, then the odd ones
 * reversed), take its real transform and rotate each pair of spectrum values
 * k, N - k by exp(-i pi k / 2N) into the outputs k and N - k; the inverse
 * runs these steps backwards.
 *
 * Normalisation. 32f: the k = 0 factor is the record's 1/sqrt(N), the
 * processor's reciprocal square root estimate r of (float)N refined by one
 * Newton step, 0.5 r (3 - N r r); the other factor is sqrt(2)/sqrt(N)
 * computed in double and rounded to single precision (the small kernels use
 * correctly rounded constants instead). 64f and 16s: both factors in double
 * precision. Accuracy: the relative RMS error of a 32f transform is a few
 * units of 2^-24 times log2 N; of a 64f transform the same in units of 2^-53.
 *
 * 16s (_Sfs): the integers are widened to double, transformed in double
 * precision and the result R delivered as saturate(R * 2^-scaleFactor),
 * rounded to nearest with ties to even (the library's integer scale rule).
 * A result is therefore the correctly rounded value of the exact transform
 * except where that value lies within the double transform's error (far
 * below 2^-20 of a unit for every length) of a rounding boundary, where it
 * may be one unit off.
 *
 * Sizes (GetSize; the Fwd and Inv queries of one type report the same):
 *   spec: 192 bytes for the small kernels; 192 + up64(4N elements) for the
 *         direct method; for the FFT and DFT methods 192 + 2 up64(N/2 + 1
 *         elements) (the rotation table) plus the spec size of the inner
 *         real transform (unscaled, same hint); up64(b) is b rounded up to a
 *         multiple of 64.
 *   init: the inner real transform's init size (0 for the small and direct
 *         methods). It may be discarded once Init returns.
 *   work: 0 for the small kernels; N elements + 64 for the direct method;
 *         for the FFT and DFT methods up64(N elements) + up64(N + 2
 *         elements) + the inner transform's work size + 64. The 16s records
 *         add up64(8N) (the double-precision copy), except for the small
 *         kernels; their elements are doubles.
 * An element is 4 bytes (32f) or 8 bytes (64f, 16s). A length whose sizes
 * would not fit a signed 32-bit count is refused with zvpStsSizeErr.
 *
 * Checks, the first failure returned with nothing written:
 *   GetSize:     N < 1 (zvpStsSizeErr, -6) before anything else; a null
 *                output (zvpStsNullPtrErr, -8); N beyond its method's bound
 *                (-6); a failure of the inner transform's size query.
 *   Init:        N < 1 (-6) before the pointers; ppDCTSpec or pSpec null
 *                (-8); then as GetSize. A null pSpecBuffer where the init
 *                size is positive gives -8 from the inner transform. The
 *                record is built at the next 64-byte boundary of pSpec; one
 *                that fails keeps tag 0.
 *   InitAlloc:   N < 1 (-6); ppDCTSpec null (-8); as GetSize; a failed
 *                allocation (zvpStsMemAllocErr, -9) releases everything.
 *   Free, GetBufSize: a null pointer (-8); a record of another kind or one
 *                already released (zvpStsContextMatchErr, -17). Free clears
 *                the tag and releases memory only of allocated records.
 *   Transforms:  pSrc, pDst, pDCTSpec null, in that order (-8); the record's
 *                tag (-17); then, with a null pBuffer where the method needs
 *                work memory (FFT and DFT methods), a failed allocation of it
 *                (-9). The small and direct methods never allocate.
 * pBuffer: GetBufSize bytes (any alignment; rounded up to 64 inside), or null
 * to let the call allocate and release it. pSrc may equal pDst. */
#ifndef ZVPS_DCT_H
#define ZVPS_DCT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* DCT specification records, opaque; a record begins with its identity tag. */
typedef struct ZvpsDCTFwdSpec_32f ZvpsDCTFwdSpec_32f;
typedef struct ZvpsDCTInvSpec_32f ZvpsDCTInvSpec_32f;
typedef struct ZvpsDCTFwdSpec_64f ZvpsDCTFwdSpec_64f;
typedef struct ZvpsDCTInvSpec_64f ZvpsDCTInvSpec_64f;
typedef struct ZvpsDCTFwdSpec_16s ZvpsDCTFwdSpec_16s;
typedef struct ZvpsDCTInvSpec_16s ZvpsDCTInvSpec_16s;

/* Single precision. */
ZvpStatus zvpsDCTFwdGetSize_32f(int len, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDCTFwdInit_32f(ZvpsDCTFwdSpec_32f** ppDCTSpec, int len, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsDCTFwdInitAlloc_32f(ZvpsDCTFwdSpec_32f** ppDCTSpec, int len, ZvpHintAlgorithm hint);
ZvpStatus zvpsDCTFwdFree_32f(ZvpsDCTFwdSpec_32f* pDCTSpec);
ZvpStatus zvpsDCTFwdGetBufSize_32f(const ZvpsDCTFwdSpec_32f* pDCTSpec, int* pBufferSize);
ZvpStatus zvpsDCTFwd_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDCTFwdSpec_32f* pDCTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDCTInvGetSize_32f(int len, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDCTInvInit_32f(ZvpsDCTInvSpec_32f** ppDCTSpec, int len, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsDCTInvInitAlloc_32f(ZvpsDCTInvSpec_32f** ppDCTSpec, int len, ZvpHintAlgorithm hint);
ZvpStatus zvpsDCTInvFree_32f(ZvpsDCTInvSpec_32f* pDCTSpec);
ZvpStatus zvpsDCTInvGetBufSize_32f(const ZvpsDCTInvSpec_32f* pDCTSpec, int* pBufferSize);
ZvpStatus zvpsDCTInv_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDCTInvSpec_32f* pDCTSpec, Zvp8u* pBuffer);

/* Double precision. */
ZvpStatus zvpsDCTFwdGetSize_64f(int len, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDCTFwdInit_64f(ZvpsDCTFwdSpec_64f** ppDCTSpec, int len, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsDCTFwdInitAlloc_64f(ZvpsDCTFwdSpec_64f** ppDCTSpec, int len, ZvpHintAlgorithm hint);
ZvpStatus zvpsDCTFwdFree_64f(ZvpsDCTFwdSpec_64f* pDCTSpec);
ZvpStatus zvpsDCTFwdGetBufSize_64f(const ZvpsDCTFwdSpec_64f* pDCTSpec, int* pBufferSize);
ZvpStatus zvpsDCTFwd_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDCTFwdSpec_64f* pDCTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsDCTInvGetSize_64f(int len, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDCTInvInit_64f(ZvpsDCTInvSpec_64f** ppDCTSpec, int len, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsDCTInvInitAlloc_64f(ZvpsDCTInvSpec_64f** ppDCTSpec, int len, ZvpHintAlgorithm hint);
ZvpStatus zvpsDCTInvFree_64f(ZvpsDCTInvSpec_64f* pDCTSpec);
ZvpStatus zvpsDCTInvGetBufSize_64f(const ZvpsDCTInvSpec_64f* pDCTSpec, int* pBufferSize);
ZvpStatus zvpsDCTInv_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDCTInvSpec_64f* pDCTSpec, Zvp8u* pBuffer);

/* 16-bit integers with a scale factor (see the 16s paragraph above). */
ZvpStatus zvpsDCTFwdGetSize_16s(int len, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDCTFwdInit_16s(ZvpsDCTFwdSpec_16s** ppDCTSpec, int len, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsDCTFwdInitAlloc_16s(ZvpsDCTFwdSpec_16s** ppDCTSpec, int len, ZvpHintAlgorithm hint);
ZvpStatus zvpsDCTFwdFree_16s(ZvpsDCTFwdSpec_16s* pDCTSpec);
ZvpStatus zvpsDCTFwdGetBufSize_16s(const ZvpsDCTFwdSpec_16s* pDCTSpec, int* pBufferSize);
ZvpStatus zvpsDCTFwd_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, const ZvpsDCTFwdSpec_16s* pDCTSpec, int scaleFactor, Zvp8u* pBuffer);
ZvpStatus zvpsDCTInvGetSize_16s(int len, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsDCTInvInit_16s(ZvpsDCTInvSpec_16s** ppDCTSpec, int len, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsDCTInvInitAlloc_16s(ZvpsDCTInvSpec_16s** ppDCTSpec, int len, ZvpHintAlgorithm hint);
ZvpStatus zvpsDCTInvFree_16s(ZvpsDCTInvSpec_16s* pDCTSpec);
ZvpStatus zvpsDCTInvGetBufSize_16s(const ZvpsDCTInvSpec_16s* pDCTSpec, int* pBufferSize);
ZvpStatus zvpsDCTInv_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, const ZvpsDCTInvSpec_16s* pDCTSpec, int scaleFactor, Zvp8u* pBuffer);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_DCT_H */

/* zvpSP: FIRSR filters: immutable taps specification, explicit history. */
#ifndef ZVPS_FIRSR_H
#define ZVPS_FIRSR_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A FIRSR filter computes
 *   y[i] = sum_{j < tapsLen} pTaps[j] * x[i - j],
 * x being the tapsLen - 1 history samples (oldest first, the last one the
 * most recent input) followed by the numIters inputs. The specification
 * holds only the prepared taps and never changes after Init, so one
 * specification serves any number of independent streams; the history is
 * passed in (pDlySrc) and out (pDlyDst) by the caller.
 *
 * Memory. The caller provides the specification and a work buffer of the
 * sizes FIRSRGetSize reports, at any address: both pointers are rounded up
 * to a multiple of 64 bytes before use, and nothing beyond the reported size
 * (counted from the unrounded pointer) is ever touched. The layout inside
 * them is private. The buffer is scratch: its contents need not survive
 * between calls, and one buffer may serve every specification whose size it
 * covers, one call at a time.
 *
 * FIRSRGetSize(tapsLen, tapsType, pSpecSize, pBufSize). Checks, in order:
 * tapsLen < 1 -> zvpStsSizeErr (-6); tapsType not zvp32f (13), zvp32fc (14),
 * zvp64f (19) or zvp64fc (20) -> zvpStsDataTypeErr (-12); pSpecSize or
 * pBufSize null -> zvpStsNullPtrErr (-8) (a bad length is thus reported
 * before a null pointer); sizes beyond the int range -> zvpStsSizeErr.
 * Nothing is written on error. With L = tapsLen, ">> " a right shift, "&~63"
 * rounding down to a multiple of 64:
 *   32f:  spec = max(64 ((L + 6) >> 2), (4L + 63) &~63, F) + 127,
 *         buf  = F' + ((8L + 55) &~63) + 32768;
 *   64f:  spec = max((32 ((L + 2) >> 1) + 63) &~63, F', F) + 127,
 *         buf  = F + ((16L + 47) &~63) + 32768;
 *   32fc: spec = max((32L + 63) &~63, F') + 127,
 *         buf  = F + ((16L + 47) &~63) + 32768;
 *   64fc: spec = max(F, (32L + 63) &~63) + 127,
 *         buf  = ((32L + 63) &~63) + 64 (L >> 1) + 32768.
 * F and F' are the sizes of the fast-transform path. With a64(v) = v rounded
 * up to a multiple of 64, k the transform order (below), M = 2^k, e the
 * element size (4 for 32f, 8 for 64f and 32fc) and s, i, w the specification,
 * initialisation and work sizes the FFT size queries report for order k with
 * the inverse divided by M (ZVP_FFT_DIV_INV_BY_N, no hint; the real FFT for
 * 32f and 64f, the complex FFT for 32fc):
 *   spec part = a64(D) + a64(s) + a64(i) + a64(M e) + a64(w), D the bytes
 *               of the prepared direct taps (32f: 64 ((L + 6) >> 2); others
 *               L e);
 *   buf part  = a64(w) + a64(M e) + 64;
 * F = spec part and F' = buf part for 32f; F = buf part and F' = spec part
 * for 64f and 32fc. 64fc has no fast-transform path (F = 0). k is the larger
 * of (smallest j >= 1 with 2^j >= 2L) + 1 and min(smallest j with 2^j >= 8L,
 * 13): each transform of M points yields M - L + 1 outputs (blocks of about
 * 8L points run fastest here until they outgrow the cache at 8192). When that
 * transform cannot be had (its size query fails, or its sizes leave the int
 * range) both terms are 0 and the filter is direct only.
 * The 32768 bytes are the chunk area of the aliasing path (8192 32f samples,
 * 4096 64f or 32fc, 2048 64fc).
 *
 * FIRSRInit_32f / _64f / _32fc / _64fc (pTaps, tapsLen, algType, pSpec):
 * taps in natural order. Checks, in order: tapsLen < 1 -> -6; pTaps or pSpec
 * null -> -8; algType other than zvpAlgAuto (0), zvpAlgDirect (1) or
 * zvpAlgFFT (2) -> zvpStsAlgTypeErr (-228). Nothing is written on error.
 * The direct taps are always prepared (32f: four copies of each tap for
 * tapsLen < 32, four staggered reversed copies from 32 taps). The selector
 * decides whether the fast-transform path is prepared too:
 *   zvpAlgDirect: never; the filter is direct for every call;
 *   zvpAlgFFT:    always when it can be had (not for 64fc); the filter then
 *                 uses it for every call, whatever numIters;
 *   zvpAlgAuto:   from 64 taps for 32f, 32 taps for 64f and 32fc (never for
 *                 64fc); the filter then uses it for calls of at least 256
 *                 samples and is direct below. These points are where the
 *                 transform path overtakes the direct kernel here.
 * A failure while building the transform is not an error: the specification
 * is then direct only.
 *
 * FIRSR_32f / _64f / _32fc / _64fc (pSrc, pDst, numIters, pSpec, pDlySrc,
 * pDlyDst, pBuf), with the specification of the same type. Checks, in order:
 * pSpec, pSrc, pDst or pBuf null -> -8; numIters < 1 -> -6; a specification
 * not made by the Init of its type -> zvpStsContextMatchErr (-17). Nothing is
 * written on error. pDlySrc null means a zero history; pDlyDst null means the
 * final history is not returned; pDlyDst may equal pDlySrc. The final history
 * is the last tapsLen - 1 samples of history-and-input.
 * pDst may equal pSrc or pDlySrc (any overlap with them counts): the call then
 * copies the history into the buffer and works in chunks (the sizes above),
 * each chunk's inputs copied in before its outputs are written, and gives
 * the same result as the out-of-place call. Other overlaps between the
 * arrays (pDst inside pSrc at an offset, pDlyDst overlapping pSrc or pDst)
 * are not supported.
 * The direct method gives every output the same value however the stream is
 * split into calls, and wherever the arrays lie in memory. The transform
 * path rounds differently (its error grows with log2 M times the norms of
 * the taps and of the inputs of a block), so it depends on the blocks.
 *
 * FIRSR_16s (32f specification) and FIRSR_16sc (32fc specification): the
 * 16-bit samples (history too) are converted to single precision, filtered,
 * and the outputs rounded to nearest with ties to even and saturated to
 * -32768 .. 32767. They always work through the buffer, in chunks of 4096
 * (16s) or 2048 (16sc) samples; pDst may equal pSrc or pDlySrc.
 * FIRSR64f_32s_Sfs (64f specification): 32-bit samples converted exactly to
 * double precision, filtered, each output multiplied by 2^-scaleFactor,
 * rounded to nearest with ties to even and saturated to the 32-bit range;
 * chunks of 2048 samples. _ISfs is the same with pSrcDst as source and
 * destination (checks: pSpec, pSrcDst, pBuf null -> -8, then numIters).
 * The integer results do not depend on the caller's rounding mode. */
typedef struct ZvpsFIRSpec_32f ZvpsFIRSpec_32f;
typedef struct ZvpsFIRSpec_32fc ZvpsFIRSpec_32fc;
typedef struct ZvpsFIRSpec_64f ZvpsFIRSpec_64f;
typedef struct ZvpsFIRSpec_64fc ZvpsFIRSpec_64fc;

ZvpStatus zvpsFIRSRGetSize(int tapsLen, ZvpDataType tapsType, int* pSpecSize, int* pBufSize);

ZvpStatus zvpsFIRSRInit_32f(const Zvp32f* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_32f* pSpec);
ZvpStatus zvpsFIRSRInit_32fc(const Zvp32fc* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_32fc* pSpec);
ZvpStatus zvpsFIRSRInit_64f(const Zvp64f* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_64f* pSpec);
ZvpStatus zvpsFIRSRInit_64fc(const Zvp64fc* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_64fc* pSpec);

ZvpStatus zvpsFIRSR_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, ZvpsFIRSpec_32f* pSpec,
                        const Zvp32f* pDlySrc, Zvp32f* pDlyDst, Zvp8u* pBuf);
ZvpStatus zvpsFIRSR_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, ZvpsFIRSpec_32fc* pSpec,
                         const Zvp32fc* pDlySrc, Zvp32fc* pDlyDst, Zvp8u* pBuf);
ZvpStatus zvpsFIRSR_64f(const Zvp64f* pSrc, Zvp64f* pDst, int numIters, ZvpsFIRSpec_64f* pSpec,
                        const Zvp64f* pDlySrc, Zvp64f* pDlyDst, Zvp8u* pBuf);
ZvpStatus zvpsFIRSR_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int numIters, ZvpsFIRSpec_64fc* pSpec,
                         const Zvp64fc* pDlySrc, Zvp64fc* pDlyDst, Zvp8u* pBuf);
ZvpStatus zvpsFIRSR_16s(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, ZvpsFIRSpec_32f* pSpec,
                        const Zvp16s* pDlySrc, Zvp16s* pDlyDst, Zvp8u* pBuf);
ZvpStatus zvpsFIRSR_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, ZvpsFIRSpec_32fc* pSpec,
                         const Zvp16sc* pDlySrc, Zvp16sc* pDlyDst, Zvp8u* pBuf);
ZvpStatus zvpsFIRSR64f_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int numIters, ZvpsFIRSpec_64f* pSpec,
                               const Zvp32s* pDlySrc, Zvp32s* pDlyDst, Zvp8u* pBuf, int scaleFactor);
ZvpStatus zvpsFIRSR64f_32s_ISfs(Zvp32s* pSrcDst, int numIters, ZvpsFIRSpec_64f* pSpec, const Zvp32s* pDlySrc,
                                Zvp32s* pDlyDst, Zvp8u* pBuf, int scaleFactor);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FIRSR_H */

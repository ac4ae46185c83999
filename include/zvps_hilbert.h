/* zvpSP analytic signal: Hilbert transform.
 *
 * Hilbert turns L real samples into the L complex samples of their analytic
 * signal: the input as real part (within rounding), its Hilbert transform as
 * imaginary part. It takes the real DFT of the input, keeps the DC term and,
 * for even L, the Nyquist term as they are, doubles the terms 1 .. ceil(L/2)-1,
 * sets the upper half L/2+1 .. L-1 to zero, and takes the inverse complex DFT
 * (scaled by 1/L). For L = 1 and L = 2 no transform runs: the output is the
 * input with zero imaginary parts. A cosine with a whole number of periods
 * over L becomes the complex exponential (its sine as imaginary part).
 *
 * InitAlloc(ppSpec, length, hint) builds a record for one length (any L
 * from 1 to the DFT's largest length): null ppSpec gives zvpStsNullPtrErr
 * (-8), a length below 1 zvpStsSizeErr (-6); a failing allocation gives
 * zvpStsMemAllocErr (-9) and a DFT set-up failure its own status, with
 * everything taken so far released and *ppSpec not written. The hint is
 * passed to the DFTs, which store it.
 *
 * Hilbert(pSrc, pDst, pSpec[, scaleFactor]): a null pointer gives -8, a
 * record of another type or already released zvpStsContextMatchErr (-17).
 * The call takes its work memory (the DFTs' work and, for 16-bit input, the
 * samples as floats) in one allocation before it writes anything: if that
 * fails it returns -9 with the destination untouched. The source and the
 * destination must not overlap. The 16s forms convert the input exactly to
 * single precision and run the same single-precision transform.
 * zvpsHilbert_16s16sc_Sfs takes the scale factor last: each part of the
 * result times 2^-scaleFactor, rounded to nearest with ties to even,
 * saturated to -32768..32767; it does not depend on the caller's rounding
 * mode or flush-to-zero setting.
 *
 * Free(pSpec): null -8, not a live record of that type -17; otherwise it
 * releases the record's DFTs and then the record (its tag is cleared). */
#ifndef ZVPS_HILBERT_H
#define ZVPS_HILBERT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Hilbert records, opaque; one per pair of types. */
typedef struct ZvpsHilbertSpec_32f32fc ZvpsHilbertSpec_32f32fc;
typedef struct ZvpsHilbertSpec_16s32fc ZvpsHilbertSpec_16s32fc;
typedef struct ZvpsHilbertSpec_16s16sc ZvpsHilbertSpec_16s16sc;

ZvpStatus zvpsHilbertInitAlloc_32f32fc(ZvpsHilbertSpec_32f32fc** ppSpec, int length, ZvpHintAlgorithm hint);
ZvpStatus zvpsHilbertInitAlloc_16s32fc(ZvpsHilbertSpec_16s32fc** ppSpec, int length, ZvpHintAlgorithm hint);
ZvpStatus zvpsHilbertInitAlloc_16s16sc(ZvpsHilbertSpec_16s16sc** ppSpec, int length, ZvpHintAlgorithm hint);
ZvpStatus zvpsHilbertFree_32f32fc(ZvpsHilbertSpec_32f32fc* pSpec);
ZvpStatus zvpsHilbertFree_16s32fc(ZvpsHilbertSpec_16s32fc* pSpec);
ZvpStatus zvpsHilbertFree_16s16sc(ZvpsHilbertSpec_16s16sc* pSpec);
ZvpStatus zvpsHilbert_32f32fc(const Zvp32f* pSrc, Zvp32fc* pDst, const ZvpsHilbertSpec_32f32fc* pSpec);
ZvpStatus zvpsHilbert_16s32fc(const Zvp16s* pSrc, Zvp32fc* pDst, const ZvpsHilbertSpec_16s32fc* pSpec);
ZvpStatus zvpsHilbert_16s16sc_Sfs(const Zvp16s* pSrc, Zvp16sc* pDst, const ZvpsHilbertSpec_16s16sc* pSpec, int scaleFactor);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_HILBERT_H */

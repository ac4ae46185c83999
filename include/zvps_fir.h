/* zvpSP: FIR filters with a state record: single-rate, stream forms.
 *
 * A state filters a stream block by block: y[n] = sum_{k<tapsLen} taps[k] x[n-k],
 * where the samples before the first call come from the delay line given at
 * Init (zeros when pDlyLine is null). Consecutive FIR and FIROne calls on one
 * state form one continuous stream. Taps are given in natural order; a delay
 * line holds tapsLen samples, oldest first (pDlyLine[tapsLen-1] is the sample
 * just before the next input).
 *
 * Kinds. The name spells the taps type first when it differs from the data
 * type. Each kind computes in its taps precision: 32f taps in single
 * precision, 64f taps and every integer-taps kind in double precision
 * (complex alike). Integer data, and 32f data with 64f taps, are converted
 * to that precision in pieces of at most 4096 samples, filtered, and
 * converted back.
 *
 * Integer results (the Sfs forms) are R * 2^-scaleFactor rounded to nearest
 * with ties to even and saturated to the data type (real and imaginary parts
 * separately); a NaN result (NaN or infinite float taps) gives 0. They do not
 * depend on the caller's rounding mode or flush-to-zero settings.
 *
 * Integer taps carry a taps scale factor: tap k is pTaps[k] * 2^-tapsFactor.
 * The integer-taps kinds (32s_16s, 32sc_16sc, _16s, _32s) keep the integer
 * taps as given (GetTaps returns them) and filter with them unscaled in double
 * precision, applying 2^-(tapsFactor + scaleFactor) once to the sum. With 16s
 * data the products are exact and so is every partial sum while
 * sum |pTaps[k]| * 32768 < 2^53 (for _16s: any tapsLen below 2^23), so those
 * results are the exact rule applied to the exact sum. The _16s kind has two
 * record variants (two tags), chosen at Init and SetTaps: one when
 * sum |pTaps[k]| * 32768 < 2^31 (the sum fits 32 bits), the other otherwise;
 * they give the same results. The _32s kind shares its record kind and tag
 * with 64f_32s (taps held in double precision); each accepts the other's
 * states, the 64f accessors seeing pTaps[k] * 2^-tapsFactor and the 32s ones
 * the integer taps (for taps set through the 64f form: rounded to nearest,
 * saturated, with tapsFactor 0).
 * Init32s_16s32f (and 32sc_16sc32fc) converts float taps to 32s with
 * tapsFactor = 31 - e, e the binary exponent of the largest finite |tap|
 * (largest part for complex taps) with 2^(e-1) <= max < 2^e: the largest
 * factor that keeps every tap within 32 bits. Each tap is rounded to nearest
 * with ties to even (NaN gives 0, infinities saturate). All-zero taps use
 * tapsFactor 0.
 *
 * Methods. Every kind except the integer-taps kinds 32s_16s, 32sc_16sc and
 * _16s prepares a fast-transform path at Init when tapsLen >= 64: overlap-save
 * over a transform of 2^k points, k = (smallest j >= 2 with 2^j > tapsLen) + 1
 * (the real transform for real taps, the complex one for complex taps). A call
 * of more than 511 samples takes the fast path, any other count the direct
 * multiply-accumulate kernel; both give the same results up to rounding.
 * Calls that are converted or in place run in pieces of at most 4096 samples
 * (an in-place piece is staged in the state before its outputs are written),
 * and there the count that selects the method is that of the piece. When the
 * fast path cannot be prepared, Init still succeeds and every call runs the
 * direct kernel. FIROne always runs the direct single-sample kernel on the
 * same delay line.
 * The single-precision direct kernel multiplies four outputs at a time by one
 * tap below 128 taps; from 128 taps it reads the four staggered copies, whose
 * zero padding meets the up to three samples beside an output's window: an
 * infinite or NaN sample there makes that output NaN as well (finite samples
 * are unaffected). A direct output never depends on how the stream is split
 * into calls.
 *
 * Statuses, in this order:
 * - GetStateSize: pStateSize null zvpStsNullPtrErr (-8); tapsLen < 1
 *   zvpStsFIRLenErr (-26); a state that would exceed 2^31-1 bytes
 *   zvpStsSizeErr (-6).
 * - Init: ppState, pTaps, pBuffer null -8 (pDlyLine may be null); tapsLen < 1
 *   -26; too large -6. InitAlloc: the same without pBuffer, then
 *   zvpStsMemAllocErr (-9) when the allocation fails (nothing is held and
 *   *ppState is left untouched). Init lays the record out at pBuffer rounded
 *   up to 16 bytes and stays within the bytes GetStateSize reports.
 * - Free: null -8; wrong tag zvpStsContextMatchErr (-17); a record built by
 *   Init in caller memory is left alone; an allocated one has its tag cleared
 *   and is released.
 * - SetTaps (pTaps, pState), GetTaps (pState, pTaps), GetDlyLine: both
 *   pointers required (-8), then the tag (-17). SetDlyLine: pState required;
 *   a null pDlyLine zeroes the history. GetDlyLine after SetDlyLine returns
 *   the values set.
 * - FIR: pState, pSrc, pDst null -8 (the in-place form: pState, pSrcDst);
 *   numIters < 1 zvpStsSizeErr (-6); then the tag (-17).
 * - FIROne: pState, pDstVal null -8; then the tag, which must be the kind's
 *   single-rate tag (-17 for stream and multi-rate states).
 * On any error nothing is written.
 *
 * Tags. Every accessor accepts its kind's single-rate tag and its multi-rate
 * tag; Free and FIR also the kind's stream tags (_32f: the 32f and the
 * multi-rate 32f stream forms; _16s: the 16s stream form). Multi-rate records
 * are not built by this family yet: a call reaching one returns -17.
 *
 * State sizes. _32f, with L = tapsLen; for L >= 64, N = 2^k and S, I, W the
 * record, initialisation and work sizes of the real 32f transform of order k
 * with the inverse divided by N and no hint (all four 0 for L < 64 or when
 * the query fails):
 *   16 * (((12L + 31) >> 4) + ((L + 6) & ~3)) + 5 * ((4L + 15) & ~15)
 *     + S + I + 32 * ((4N + 15) >> 4) + W + 16528.
 * Every other kind, with e the bytes of one working element (4 for 32f
 * taps, 8 for 64f and integer taps, doubled for complex), d = 1 when the data
 * are converted (otherwise 0), t the bytes of one integer tap (2 for _16s,
 * 4 for 32s_16s and for the record 64f_32s shares with _32s, 8 for
 * 32sc_16sc, 0 for the others), a16(v) = (v + 15) & ~15 and N, S, I, W as above for its
 * transform (0 without a fast path):
 *   144 + a16(e (3L + 4)) + a16(e L) + a16(t L) + 2 a16(e N)
 *     + 4096 e (1 + d) + S + I + W. */
#ifndef ZVPS_FIR_H
#define ZVPS_FIR_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* State records, opaque; each begins with its identity tag. */
typedef struct ZvpsFIRState_32f ZvpsFIRState_32f;
typedef struct ZvpsFIRState_32fc ZvpsFIRState_32fc;
typedef struct ZvpsFIRState_64f ZvpsFIRState_64f;
typedef struct ZvpsFIRState_64fc ZvpsFIRState_64fc;
typedef struct ZvpsFIRState32f_16s ZvpsFIRState32f_16s;
typedef struct ZvpsFIRState32fc_16sc ZvpsFIRState32fc_16sc;
typedef struct ZvpsFIRState64f_32f ZvpsFIRState64f_32f;
typedef struct ZvpsFIRState64fc_32fc ZvpsFIRState64fc_32fc;
typedef struct ZvpsFIRState64f_16s ZvpsFIRState64f_16s;
typedef struct ZvpsFIRState64fc_16sc ZvpsFIRState64fc_16sc;
typedef struct ZvpsFIRState64f_32s ZvpsFIRState64f_32s;
typedef struct ZvpsFIRState64fc_32sc ZvpsFIRState64fc_32sc;
typedef struct ZvpsFIRState32s_16s ZvpsFIRState32s_16s;
typedef struct ZvpsFIRState32sc_16sc ZvpsFIRState32sc_16sc;
typedef struct ZvpsFIRState_16s ZvpsFIRState_16s;
typedef struct ZvpsFIRState_32s ZvpsFIRState_32s;

/* 32f taps, 32f data. */
ZvpStatus zvpsFIRGetStateSize_32f(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit_32f(ZvpsFIRState_32f** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp32f* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc_32f(ZvpsFIRState_32f** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp32f* pDlyLine);
ZvpStatus zvpsFIRFree_32f(ZvpsFIRState_32f* pState);
ZvpStatus zvpsFIRSetTaps_32f(const Zvp32f* pTaps, ZvpsFIRState_32f* pState);
ZvpStatus zvpsFIRGetTaps_32f(const ZvpsFIRState_32f* pState, Zvp32f* pTaps);
ZvpStatus zvpsFIRSetDlyLine_32f(ZvpsFIRState_32f* pState, const Zvp32f* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine_32f(const ZvpsFIRState_32f* pState, Zvp32f* pDlyLine);
ZvpStatus zvpsFIR_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, ZvpsFIRState_32f* pState);
ZvpStatus zvpsFIR_32f_I(Zvp32f* pSrcDst, int numIters, ZvpsFIRState_32f* pState);
ZvpStatus zvpsFIROne_32f(Zvp32f src, Zvp32f* pDstVal, ZvpsFIRState_32f* pState);

/* 32fc taps, 32fc data. */
ZvpStatus zvpsFIRGetStateSize_32fc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit_32fc(ZvpsFIRState_32fc** ppState, const Zvp32fc* pTaps, int tapsLen, const Zvp32fc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc_32fc(ZvpsFIRState_32fc** ppState, const Zvp32fc* pTaps, int tapsLen, const Zvp32fc* pDlyLine);
ZvpStatus zvpsFIRFree_32fc(ZvpsFIRState_32fc* pState);
ZvpStatus zvpsFIRSetTaps_32fc(const Zvp32fc* pTaps, ZvpsFIRState_32fc* pState);
ZvpStatus zvpsFIRGetTaps_32fc(const ZvpsFIRState_32fc* pState, Zvp32fc* pTaps);
ZvpStatus zvpsFIRSetDlyLine_32fc(ZvpsFIRState_32fc* pState, const Zvp32fc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine_32fc(const ZvpsFIRState_32fc* pState, Zvp32fc* pDlyLine);
ZvpStatus zvpsFIR_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, ZvpsFIRState_32fc* pState);
ZvpStatus zvpsFIR_32fc_I(Zvp32fc* pSrcDst, int numIters, ZvpsFIRState_32fc* pState);
ZvpStatus zvpsFIROne_32fc(Zvp32fc src, Zvp32fc* pDstVal, ZvpsFIRState_32fc* pState);

/* 64f taps, 64f data. */
ZvpStatus zvpsFIRGetStateSize_64f(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit_64f(ZvpsFIRState_64f** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp64f* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc_64f(ZvpsFIRState_64f** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp64f* pDlyLine);
ZvpStatus zvpsFIRFree_64f(ZvpsFIRState_64f* pState);
ZvpStatus zvpsFIRSetTaps_64f(const Zvp64f* pTaps, ZvpsFIRState_64f* pState);
ZvpStatus zvpsFIRGetTaps_64f(const ZvpsFIRState_64f* pState, Zvp64f* pTaps);
ZvpStatus zvpsFIRSetDlyLine_64f(ZvpsFIRState_64f* pState, const Zvp64f* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine_64f(const ZvpsFIRState_64f* pState, Zvp64f* pDlyLine);
ZvpStatus zvpsFIR_64f(const Zvp64f* pSrc, Zvp64f* pDst, int numIters, ZvpsFIRState_64f* pState);
ZvpStatus zvpsFIR_64f_I(Zvp64f* pSrcDst, int numIters, ZvpsFIRState_64f* pState);
ZvpStatus zvpsFIROne_64f(Zvp64f src, Zvp64f* pDstVal, ZvpsFIRState_64f* pState);

/* 64fc taps, 64fc data. */
ZvpStatus zvpsFIRGetStateSize_64fc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit_64fc(ZvpsFIRState_64fc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp64fc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc_64fc(ZvpsFIRState_64fc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp64fc* pDlyLine);
ZvpStatus zvpsFIRFree_64fc(ZvpsFIRState_64fc* pState);
ZvpStatus zvpsFIRSetTaps_64fc(const Zvp64fc* pTaps, ZvpsFIRState_64fc* pState);
ZvpStatus zvpsFIRGetTaps_64fc(const ZvpsFIRState_64fc* pState, Zvp64fc* pTaps);
ZvpStatus zvpsFIRSetDlyLine_64fc(ZvpsFIRState_64fc* pState, const Zvp64fc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine_64fc(const ZvpsFIRState_64fc* pState, Zvp64fc* pDlyLine);
ZvpStatus zvpsFIR_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int numIters, ZvpsFIRState_64fc* pState);
ZvpStatus zvpsFIR_64fc_I(Zvp64fc* pSrcDst, int numIters, ZvpsFIRState_64fc* pState);
ZvpStatus zvpsFIROne_64fc(Zvp64fc src, Zvp64fc* pDstVal, ZvpsFIRState_64fc* pState);

/* 32f taps, 16s data. */
ZvpStatus zvpsFIRGetStateSize32f_16s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit32f_16s(ZvpsFIRState32f_16s** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp16s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc32f_16s(ZvpsFIRState32f_16s** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRFree32f_16s(ZvpsFIRState32f_16s* pState);
ZvpStatus zvpsFIRSetTaps32f_16s(const Zvp32f* pTaps, ZvpsFIRState32f_16s* pState);
ZvpStatus zvpsFIRGetTaps32f_16s(const ZvpsFIRState32f_16s* pState, Zvp32f* pTaps);
ZvpStatus zvpsFIRSetDlyLine32f_16s(ZvpsFIRState32f_16s* pState, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine32f_16s(const ZvpsFIRState32f_16s* pState, Zvp16s* pDlyLine);
ZvpStatus zvpsFIR32f_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, ZvpsFIRState32f_16s* pState, int scaleFactor);
ZvpStatus zvpsFIR32f_16s_ISfs(Zvp16s* pSrcDst, int numIters, ZvpsFIRState32f_16s* pState, int scaleFactor);
ZvpStatus zvpsFIROne32f_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, ZvpsFIRState32f_16s* pState, int scaleFactor);

/* 32fc taps, 16sc data. */
ZvpStatus zvpsFIRGetStateSize32fc_16sc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit32fc_16sc(ZvpsFIRState32fc_16sc** ppState, const Zvp32fc* pTaps, int tapsLen, const Zvp16sc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc32fc_16sc(ZvpsFIRState32fc_16sc** ppState, const Zvp32fc* pTaps, int tapsLen, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRFree32fc_16sc(ZvpsFIRState32fc_16sc* pState);
ZvpStatus zvpsFIRSetTaps32fc_16sc(const Zvp32fc* pTaps, ZvpsFIRState32fc_16sc* pState);
ZvpStatus zvpsFIRGetTaps32fc_16sc(const ZvpsFIRState32fc_16sc* pState, Zvp32fc* pTaps);
ZvpStatus zvpsFIRSetDlyLine32fc_16sc(ZvpsFIRState32fc_16sc* pState, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine32fc_16sc(const ZvpsFIRState32fc_16sc* pState, Zvp16sc* pDlyLine);
ZvpStatus zvpsFIR32fc_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, ZvpsFIRState32fc_16sc* pState, int scaleFactor);
ZvpStatus zvpsFIR32fc_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, ZvpsFIRState32fc_16sc* pState, int scaleFactor);
ZvpStatus zvpsFIROne32fc_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, ZvpsFIRState32fc_16sc* pState, int scaleFactor);

/* 64f taps, 32f data. */
ZvpStatus zvpsFIRGetStateSize64f_32f(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit64f_32f(ZvpsFIRState64f_32f** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp32f* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc64f_32f(ZvpsFIRState64f_32f** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp32f* pDlyLine);
ZvpStatus zvpsFIRFree64f_32f(ZvpsFIRState64f_32f* pState);
ZvpStatus zvpsFIRSetTaps64f_32f(const Zvp64f* pTaps, ZvpsFIRState64f_32f* pState);
ZvpStatus zvpsFIRGetTaps64f_32f(const ZvpsFIRState64f_32f* pState, Zvp64f* pTaps);
ZvpStatus zvpsFIRSetDlyLine64f_32f(ZvpsFIRState64f_32f* pState, const Zvp32f* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine64f_32f(const ZvpsFIRState64f_32f* pState, Zvp32f* pDlyLine);
ZvpStatus zvpsFIR64f_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, ZvpsFIRState64f_32f* pState);
ZvpStatus zvpsFIR64f_32f_I(Zvp32f* pSrcDst, int numIters, ZvpsFIRState64f_32f* pState);
ZvpStatus zvpsFIROne64f_32f(Zvp32f src, Zvp32f* pDstVal, ZvpsFIRState64f_32f* pState);

/* 64fc taps, 32fc data. */
ZvpStatus zvpsFIRGetStateSize64fc_32fc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit64fc_32fc(ZvpsFIRState64fc_32fc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp32fc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc64fc_32fc(ZvpsFIRState64fc_32fc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp32fc* pDlyLine);
ZvpStatus zvpsFIRFree64fc_32fc(ZvpsFIRState64fc_32fc* pState);
ZvpStatus zvpsFIRSetTaps64fc_32fc(const Zvp64fc* pTaps, ZvpsFIRState64fc_32fc* pState);
ZvpStatus zvpsFIRGetTaps64fc_32fc(const ZvpsFIRState64fc_32fc* pState, Zvp64fc* pTaps);
ZvpStatus zvpsFIRSetDlyLine64fc_32fc(ZvpsFIRState64fc_32fc* pState, const Zvp32fc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine64fc_32fc(const ZvpsFIRState64fc_32fc* pState, Zvp32fc* pDlyLine);
ZvpStatus zvpsFIR64fc_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, ZvpsFIRState64fc_32fc* pState);
ZvpStatus zvpsFIR64fc_32fc_I(Zvp32fc* pSrcDst, int numIters, ZvpsFIRState64fc_32fc* pState);
ZvpStatus zvpsFIROne64fc_32fc(Zvp32fc src, Zvp32fc* pDstVal, ZvpsFIRState64fc_32fc* pState);

/* 64f taps, 16s data. */
ZvpStatus zvpsFIRGetStateSize64f_16s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit64f_16s(ZvpsFIRState64f_16s** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp16s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc64f_16s(ZvpsFIRState64f_16s** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRFree64f_16s(ZvpsFIRState64f_16s* pState);
ZvpStatus zvpsFIRSetTaps64f_16s(const Zvp64f* pTaps, ZvpsFIRState64f_16s* pState);
ZvpStatus zvpsFIRGetTaps64f_16s(const ZvpsFIRState64f_16s* pState, Zvp64f* pTaps);
ZvpStatus zvpsFIRSetDlyLine64f_16s(ZvpsFIRState64f_16s* pState, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine64f_16s(const ZvpsFIRState64f_16s* pState, Zvp16s* pDlyLine);
ZvpStatus zvpsFIR64f_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, ZvpsFIRState64f_16s* pState, int scaleFactor);
ZvpStatus zvpsFIR64f_16s_ISfs(Zvp16s* pSrcDst, int numIters, ZvpsFIRState64f_16s* pState, int scaleFactor);
ZvpStatus zvpsFIROne64f_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, ZvpsFIRState64f_16s* pState, int scaleFactor);

/* 64fc taps, 16sc data. */
ZvpStatus zvpsFIRGetStateSize64fc_16sc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit64fc_16sc(ZvpsFIRState64fc_16sc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp16sc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc64fc_16sc(ZvpsFIRState64fc_16sc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRFree64fc_16sc(ZvpsFIRState64fc_16sc* pState);
ZvpStatus zvpsFIRSetTaps64fc_16sc(const Zvp64fc* pTaps, ZvpsFIRState64fc_16sc* pState);
ZvpStatus zvpsFIRGetTaps64fc_16sc(const ZvpsFIRState64fc_16sc* pState, Zvp64fc* pTaps);
ZvpStatus zvpsFIRSetDlyLine64fc_16sc(ZvpsFIRState64fc_16sc* pState, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine64fc_16sc(const ZvpsFIRState64fc_16sc* pState, Zvp16sc* pDlyLine);
ZvpStatus zvpsFIR64fc_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, ZvpsFIRState64fc_16sc* pState, int scaleFactor);
ZvpStatus zvpsFIR64fc_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, ZvpsFIRState64fc_16sc* pState, int scaleFactor);
ZvpStatus zvpsFIROne64fc_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, ZvpsFIRState64fc_16sc* pState, int scaleFactor);

/* 64f taps, 32s data. */
ZvpStatus zvpsFIRGetStateSize64f_32s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit64f_32s(ZvpsFIRState64f_32s** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp32s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc64f_32s(ZvpsFIRState64f_32s** ppState, const Zvp64f* pTaps, int tapsLen, const Zvp32s* pDlyLine);
ZvpStatus zvpsFIRFree64f_32s(ZvpsFIRState64f_32s* pState);
ZvpStatus zvpsFIRSetTaps64f_32s(const Zvp64f* pTaps, ZvpsFIRState64f_32s* pState);
ZvpStatus zvpsFIRGetTaps64f_32s(const ZvpsFIRState64f_32s* pState, Zvp64f* pTaps);
ZvpStatus zvpsFIRSetDlyLine64f_32s(ZvpsFIRState64f_32s* pState, const Zvp32s* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine64f_32s(const ZvpsFIRState64f_32s* pState, Zvp32s* pDlyLine);
ZvpStatus zvpsFIR64f_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int numIters, ZvpsFIRState64f_32s* pState, int scaleFactor);
ZvpStatus zvpsFIR64f_32s_ISfs(Zvp32s* pSrcDst, int numIters, ZvpsFIRState64f_32s* pState, int scaleFactor);
ZvpStatus zvpsFIROne64f_32s_Sfs(Zvp32s src, Zvp32s* pDstVal, ZvpsFIRState64f_32s* pState, int scaleFactor);

/* 64fc taps, 32sc data. */
ZvpStatus zvpsFIRGetStateSize64fc_32sc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit64fc_32sc(ZvpsFIRState64fc_32sc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp32sc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc64fc_32sc(ZvpsFIRState64fc_32sc** ppState, const Zvp64fc* pTaps, int tapsLen, const Zvp32sc* pDlyLine);
ZvpStatus zvpsFIRFree64fc_32sc(ZvpsFIRState64fc_32sc* pState);
ZvpStatus zvpsFIRSetTaps64fc_32sc(const Zvp64fc* pTaps, ZvpsFIRState64fc_32sc* pState);
ZvpStatus zvpsFIRGetTaps64fc_32sc(const ZvpsFIRState64fc_32sc* pState, Zvp64fc* pTaps);
ZvpStatus zvpsFIRSetDlyLine64fc_32sc(ZvpsFIRState64fc_32sc* pState, const Zvp32sc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine64fc_32sc(const ZvpsFIRState64fc_32sc* pState, Zvp32sc* pDlyLine);
ZvpStatus zvpsFIR64fc_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc* pDst, int numIters, ZvpsFIRState64fc_32sc* pState, int scaleFactor);
ZvpStatus zvpsFIR64fc_32sc_ISfs(Zvp32sc* pSrcDst, int numIters, ZvpsFIRState64fc_32sc* pState, int scaleFactor);
ZvpStatus zvpsFIROne64fc_32sc_Sfs(Zvp32sc src, Zvp32sc* pDstVal, ZvpsFIRState64fc_32sc* pState, int scaleFactor);

/* 32s taps with a taps scale factor, 16s data (also from 32f taps, see above). */
ZvpStatus zvpsFIRGetStateSize32s_16s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit32s_16s(ZvpsFIRState32s_16s** ppState, const Zvp32s* pTaps, int tapsLen, int tapsFactor, const Zvp16s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc32s_16s(ZvpsFIRState32s_16s** ppState, const Zvp32s* pTaps, int tapsLen, int tapsFactor, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRInit32s_16s32f(ZvpsFIRState32s_16s** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp16s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc32s_16s32f(ZvpsFIRState32s_16s** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRFree32s_16s(ZvpsFIRState32s_16s* pState);
ZvpStatus zvpsFIRSetTaps32s_16s(const Zvp32s* pTaps, ZvpsFIRState32s_16s* pState, int tapsFactor);
ZvpStatus zvpsFIRGetTaps32s_16s(const ZvpsFIRState32s_16s* pState, Zvp32s* pTaps);
ZvpStatus zvpsFIRSetDlyLine32s_16s(ZvpsFIRState32s_16s* pState, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine32s_16s(const ZvpsFIRState32s_16s* pState, Zvp16s* pDlyLine);
ZvpStatus zvpsFIR32s_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, ZvpsFIRState32s_16s* pState, int scaleFactor);
ZvpStatus zvpsFIR32s_16s_ISfs(Zvp16s* pSrcDst, int numIters, ZvpsFIRState32s_16s* pState, int scaleFactor);
ZvpStatus zvpsFIROne32s_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, ZvpsFIRState32s_16s* pState, int scaleFactor);

/* 32sc taps with a taps scale factor, 16sc data (also from 32fc taps). */
ZvpStatus zvpsFIRGetStateSize32sc_16sc(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit32sc_16sc(ZvpsFIRState32sc_16sc** ppState, const Zvp32sc* pTaps, int tapsLen, int tapsFactor, const Zvp16sc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc32sc_16sc(ZvpsFIRState32sc_16sc** ppState, const Zvp32sc* pTaps, int tapsLen, int tapsFactor, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRInit32sc_16sc32fc(ZvpsFIRState32sc_16sc** ppState, const Zvp32fc* pTaps, int tapsLen, const Zvp16sc* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc32sc_16sc32fc(ZvpsFIRState32sc_16sc** ppState, const Zvp32fc* pTaps, int tapsLen, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRFree32sc_16sc(ZvpsFIRState32sc_16sc* pState);
ZvpStatus zvpsFIRSetTaps32sc_16sc(const Zvp32sc* pTaps, ZvpsFIRState32sc_16sc* pState, int tapsFactor);
ZvpStatus zvpsFIRGetTaps32sc_16sc(const ZvpsFIRState32sc_16sc* pState, Zvp32sc* pTaps);
ZvpStatus zvpsFIRSetDlyLine32sc_16sc(ZvpsFIRState32sc_16sc* pState, const Zvp16sc* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine32sc_16sc(const ZvpsFIRState32sc_16sc* pState, Zvp16sc* pDlyLine);
ZvpStatus zvpsFIR32sc_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, ZvpsFIRState32sc_16sc* pState, int scaleFactor);
ZvpStatus zvpsFIR32sc_16sc_ISfs(Zvp16sc* pSrcDst, int numIters, ZvpsFIRState32sc_16sc* pState, int scaleFactor);
ZvpStatus zvpsFIROne32sc_16sc_Sfs(Zvp16sc src, Zvp16sc* pDstVal, ZvpsFIRState32sc_16sc* pState, int scaleFactor);

/* 16s taps with a taps scale factor, 16s data. */
ZvpStatus zvpsFIRGetStateSize_16s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit_16s(ZvpsFIRState_16s** ppState, const Zvp16s* pTaps, int tapsLen, int tapsFactor, const Zvp16s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc_16s(ZvpsFIRState_16s** ppState, const Zvp16s* pTaps, int tapsLen, int tapsFactor, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRFree_16s(ZvpsFIRState_16s* pState);
ZvpStatus zvpsFIRSetTaps_16s(const Zvp16s* pTaps, ZvpsFIRState_16s* pState, int tapsFactor);
ZvpStatus zvpsFIRGetTaps_16s(const ZvpsFIRState_16s* pState, Zvp16s* pTaps);
ZvpStatus zvpsFIRSetDlyLine_16s(ZvpsFIRState_16s* pState, const Zvp16s* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine_16s(const ZvpsFIRState_16s* pState, Zvp16s* pDlyLine);
ZvpStatus zvpsFIR_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, ZvpsFIRState_16s* pState, int scaleFactor);
ZvpStatus zvpsFIR_16s_ISfs(Zvp16s* pSrcDst, int numIters, ZvpsFIRState_16s* pState, int scaleFactor);
ZvpStatus zvpsFIROne_16s_Sfs(Zvp16s src, Zvp16s* pDstVal, ZvpsFIRState_16s* pState, int scaleFactor);

/* 32s taps with a taps scale factor, 32s data. */
ZvpStatus zvpsFIRGetStateSize_32s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRInit_32s(ZvpsFIRState_32s** ppState, const Zvp32s* pTaps, int tapsLen, int tapsFactor, const Zvp32s* pDlyLine, Zvp8u* pBuffer);
ZvpStatus zvpsFIRInitAlloc_32s(ZvpsFIRState_32s** ppState, const Zvp32s* pTaps, int tapsLen, int tapsFactor, const Zvp32s* pDlyLine);
ZvpStatus zvpsFIRFree_32s(ZvpsFIRState_32s* pState);
ZvpStatus zvpsFIRSetTaps_32s(const Zvp32s* pTaps, ZvpsFIRState_32s* pState, int tapsFactor);
ZvpStatus zvpsFIRGetTaps_32s(const ZvpsFIRState_32s* pState, Zvp32s* pTaps);
ZvpStatus zvpsFIRSetDlyLine_32s(ZvpsFIRState_32s* pState, const Zvp32s* pDlyLine);
ZvpStatus zvpsFIRGetDlyLine_32s(const ZvpsFIRState_32s* pState, Zvp32s* pDlyLine);
ZvpStatus zvpsFIR_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int numIters, ZvpsFIRState_32s* pState, int scaleFactor);
ZvpStatus zvpsFIR_32s_ISfs(Zvp32s* pSrcDst, int numIters, ZvpsFIRState_32s* pState, int scaleFactor);
ZvpStatus zvpsFIROne_32s_Sfs(Zvp32s src, Zvp32s* pDstVal, ZvpsFIRState_32s* pState, int scaleFactor);

/* Stream forms. FIRStreamInit_32f builds a single-rate 32f filter that runs
 * the direct kernel for every count (no fast path) and is filtered by
 * zvpsFIR_32f / zvpsFIR_32f_I; roundMode is checked and recorded, and float
 * output does not depend on it. FIRStreamInit_16s builds a 16s filter with 16s
 * taps and a taps scale factor, filtered by zvpsFIR_16s_Sfs / _ISfs: the exact
 * sum times 2^-(tapsFactor + scaleFactor) is rounded by roundMode
 * (zvpRndZero truncates, zvpRndNear ties to even, zvpRndFinancial ties away
 * from zero) and saturated. Their records are released by zvpsFIRFree_32f /
 * zvpsFIRFree_16s; the other accessors and FIROne refuse them (-17).
 *
 * FIRMRStreamInit_32f builds a rational-rate stream filter: the input is
 * up-sampled by upFactor (each sample at phase upPhase of its group of
 * upFactor, zeros elsewhere), filtered by the taps, and every downFactor-th
 * output kept (phase downPhase). zvpsFIR_32f with numIters reads
 * numIters * downFactor inputs and writes numIters * upFactor outputs. It is
 * computed by polyphase branches, so no inserted zero is ever multiplied. Its
 * delay line holds (tapsLen + upFactor - 1) / upFactor input samples, oldest
 * first (null: zeros). In-place calls run whole cycles in pieces of about
 * 4096 inputs, each read before its outputs are written, so they equal the
 * out-of-place call when upFactor <= downFactor.
 *
 * Statuses: GetStateSize: pStateSize null -8; tapsLen < 1 -26; (multi-rate)
 * a factor < 1 zvpStsFIRMRFactorErr (-29); too large -6. Init: ppState, pTaps,
 * pBuffer null -8; tapsLen < 1 -26; (multi-rate) a factor < 1 -29, then upPhase
 * outside 0..upFactor-1, then downPhase outside 0..downFactor-1
 * zvpStsFIRMRPhaseErr (-28); roundMode not 0, 1 or 2
 * zvpStsRoundModeNotSupportedErr (-213); too large -6.
 * Sizes: the stream forms use the layout of their kind without a fast path
 * (zvpsFIRStreamGetStateSize_32f is the _32f formula with N, S, I, W = 0);
 * the multi-rate form, with U = upFactor, D = downFactor,
 * P = (L + U - 1) / U and C = max(1, 4096 / D) cycles per piece:
 *   80 + a16(4 U P) + a16(12 U) + a16(4 (P + C D)). */
ZvpStatus zvpsFIRStreamGetStateSize_32f(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRStreamInit_32f(ZvpsFIRState_32f** ppState, const Zvp32f* pTaps, int tapsLen, const Zvp32f* pDlyLine, ZvpRoundMode roundMode, Zvp8u* pBuffer);
ZvpStatus zvpsFIRStreamGetStateSize_16s(int tapsLen, int* pStateSize);
ZvpStatus zvpsFIRStreamInit_16s(ZvpsFIRState_16s** ppState, const Zvp16s* pTaps, int tapsLen, int tapsFactor, const Zvp16s* pDlyLine, ZvpRoundMode roundMode, Zvp8u* pBuffer);
ZvpStatus zvpsFIRMRStreamGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* pStateSize);
ZvpStatus zvpsFIRMRStreamInit_32f(ZvpsFIRState_32f** ppState, const Zvp32f* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, int downPhase, const Zvp32f* pDlyLine, ZvpRoundMode roundMode, Zvp8u* pBuffer);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FIR_H */

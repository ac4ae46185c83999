/* zvpSP real FFT and packed real spectra.
 *
 * Real transforms of N = 2^order samples run from a specification record
 * built and checked like the complex ones (see zvps_fft.h): GetSize/Init or
 * InitAlloc/Free, order and flag errors -15 and -16, the record checked before
 * the data pointers (-8, then zvpStsContextMatchErr -17). The forward
 * transform writes the half spectrum in one of three layouts (CCS, Pack,
 * Perm); the inverse reads the same layout. The packed-spectrum helpers
 * (ConjPack, ConjPerm, ConjCcs, MulPack, MulPerm, MulPackConj) take their
 * vectors and a length: a null pointer gives zvpStsNullPtrErr (-8), a length
 * below 1 zvpStsSizeErr (-6), and nothing is written on error. */
#ifndef ZVPS_FFTREAL_H
#define ZVPS_FFTREAL_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Real FFT specifications of N = 2^order real samples (order 0..29 for 32f,
 * 0..28 for 64f), with the flags, hint and size queries of the complex ones.
 * From order 7 a record holds a complex record of order-1; the sizes follow
 * from the complex sizes of that order. */
typedef struct ZvpsFFTSpec_R_32f ZvpsFFTSpec_R_32f;
typedef struct ZvpsFFTSpec_R_64f ZvpsFFTSpec_R_64f;
ZvpStatus zvpsFFTGetSize_R_32f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_R_32f(ZvpsFFTSpec_R_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_R_32f(ZvpsFFTSpec_R_32f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_R_32f(ZvpsFFTSpec_R_32f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_R_32f(const ZvpsFFTSpec_R_32f* pFFTSpec, int* pBufferSize);
ZvpStatus zvpsFFTGetSize_R_64f(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize, int* pSpecBufferSize, int* pBufferSize);
ZvpStatus zvpsFFTInit_R_64f(ZvpsFFTSpec_R_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint, Zvp8u* pSpec, Zvp8u* pSpecBuffer);
ZvpStatus zvpsFFTInitAlloc_R_64f(ZvpsFFTSpec_R_64f** ppFFTSpec, int order, int flag, ZvpHintAlgorithm hint);
ZvpStatus zvpsFFTFree_R_64f(ZvpsFFTSpec_R_64f* pFFTSpec);
ZvpStatus zvpsFFTGetBufSize_R_64f(const ZvpsFFTSpec_R_64f* pFFTSpec, int* pBufferSize);

/* Real FFT. Forward: N real samples to the half spectrum X[0..N/2] in the
 * CCS layout (N+2 values: R0 0 R1 I1 .. R(N/2) 0), the Pack layout (N values:
 * R0 R1 I1 .. R(N/2-1) I(N/2-1) R(N/2)) or the Perm layout (N values: R0
 * R(N/2) R1 I1 ..). Inverse: from that layout back to N real samples. Scaled
 * by the record's flag. The _I forms work in place (CCS needs N+2 values of
 * room). pBuffer: GetBufSize bytes, or null to let the call allocate. Checks:
 * record null (-8), record of another type or released (-17), then the data
 * pointers (-8). */
ZvpStatus zvpsFFTFwd_RToCCS_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToCCS_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_32f_I(Zvp32f* pSrcDst, const ZvpsFFTSpec_R_32f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToCCS_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToCCS_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPack_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTFwd_RToPerm_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_CCSToR_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PackToR_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);
ZvpStatus zvpsFFTInv_PermToR_64f_I(Zvp64f* pSrcDst, const ZvpsFFTSpec_R_64f* pFFTSpec, Zvp8u* pBuffer);

/* Packed real spectra (N values in the Pack, Perm or CCS layout) expanded to
 * the full conjugate-symmetric spectrum of lenDst = N complex values:
 * pDst[k] = X[k] for k <= N/2, pDst[N-k] = conj(X[k]). The in-place forms read
 * the packed spectrum from the start of pSrcDst (CCS: N/2+1 complex values).
 * 16sc forms negate with saturation. */
ZvpStatus zvpsConjPack_32fc(const Zvp32f* pSrc, Zvp32fc* pDst, int lenDst);
ZvpStatus zvpsConjPack_32fc_I(Zvp32fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPack_64fc(const Zvp64f* pSrc, Zvp64fc* pDst, int lenDst);
ZvpStatus zvpsConjPack_64fc_I(Zvp64fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPack_16sc(const Zvp16s* pSrc, Zvp16sc* pDst, int lenDst);
ZvpStatus zvpsConjPack_16sc_I(Zvp16sc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPerm_32fc(const Zvp32f* pSrc, Zvp32fc* pDst, int lenDst);
ZvpStatus zvpsConjPerm_32fc_I(Zvp32fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPerm_64fc(const Zvp64f* pSrc, Zvp64fc* pDst, int lenDst);
ZvpStatus zvpsConjPerm_64fc_I(Zvp64fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjPerm_16sc(const Zvp16s* pSrc, Zvp16sc* pDst, int lenDst);
ZvpStatus zvpsConjPerm_16sc_I(Zvp16sc* pSrcDst, int lenDst);
ZvpStatus zvpsConjCcs_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int lenDst);
ZvpStatus zvpsConjCcs_32fc_I(Zvp32fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjCcs_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int lenDst);
ZvpStatus zvpsConjCcs_64fc_I(Zvp64fc* pSrcDst, int lenDst);
ZvpStatus zvpsConjCcs_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int lenDst);
ZvpStatus zvpsConjCcs_16sc_I(Zvp16sc* pSrcDst, int lenDst);

/* Products of two packed real spectra of len values: the real entries (X[0],
 * X[N/2] for even N) multiply as reals, the pairs as complex numbers.
 * MulPackConj: pSrcDst := pSrcDst * conj(pSrc). The 16s forms scale the exact
 * products by 2^-scaleFactor (ties to even) and saturate. A destination equal
 * to a source runs the in-place form. */
ZvpStatus zvpsMulPack_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMulPack_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulPack_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMulPack_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMulPack_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsMulPack_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulPerm_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMulPerm_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulPerm_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMulPerm_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMulPerm_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsMulPerm_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulPackConj_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulPackConj_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FFTREAL_H */

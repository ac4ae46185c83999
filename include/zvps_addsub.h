/* zvpSP addition and subtraction: Add, AddC, Sub, SubC, SubCRev.
 *
 * Arguments: the source vectors (or a vector and the constant val), the
 * destination, the length in elements, and last the scale factor of the Sfs
 * forms. In-place forms (_I) take the other operand first and the
 * source-and-destination vector after it. Integer forms compute the exact
 * result R and deliver it saturated, scaled by 2^-scaleFactor with ties to
 * even in the Sfs forms; float forms follow IEEE arithmetic. Checks, the first
 * failure returned with nothing written: a null pointer gives
 * zvpStsNullPtrErr (-8), a length below 1 zvpStsSizeErr (-6); the complex
 * integer forms check the length first. */
#ifndef ZVPS_ADDSUB_H
#define ZVPS_ADDSUB_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Add: pDst[i] = pSrc1[i] + pSrc2[i] (in place: pSrcDst[i] += pSrc[i]).
 * Integer forms form the exact sum R; Sfs forms deliver R * 2^-scaleFactor
 * rounded to nearest with ties to even and saturated to the destination,
 * forms without a scale factor deliver R saturated (32u included). Complex
 * integer forms are the real form on twice the length (their length is
 * checked before the pointers). Float forms use IEEE addition. */
ZvpStatus zvpsAdd_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                         int scaleFactor);
ZvpStatus zvpsAdd_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len);
ZvpStatus zvpsAdd_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsAdd_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsAdd_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsAdd_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsAdd_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsAdd_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsAdd_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsAdd_64s_Sfs(const Zvp64s* pSrc1, const Zvp64s* pSrc2, Zvp64s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsAdd_64s_ISfs(const Zvp64s* pSrc, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAdd_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsAdd_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAdd_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsAdd_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsAdd_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsAdd_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsAdd_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsAdd_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);
/* Mixed types: exact sums (8u + 8u -> 16u; 16s + 16s -> 32f); 16s32s_I adds
 * a 16s vector into a 32s vector with saturation. */
ZvpStatus zvpsAdd_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsAdd_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsAdd_16s32s_I(const Zvp16s* pSrc, Zvp32s* pSrcDst, int len);

/* AddC: pDst[i] = pSrc[i] + val (in place: pSrcDst[i] += val), integer
 * results as for Add. A zero constant at scale factor 0 copies the source. */
ZvpStatus zvpsAddC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsAddC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsAddC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsAddC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64s_Sfs(const Zvp64s* pSrc, Zvp64s val, Zvp64s* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64u_Sfs(const Zvp64u* pSrc, Zvp64u val, Zvp64u* pDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_64u_ISfs(Zvp64u val, Zvp64u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsAddC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsAddC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAddC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsAddC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsAddC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsAddC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsAddC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsAddC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);

/* Sub: pDst[i] = pSrc2[i] - pSrc1[i], the SECOND source minus the first (in
 * place: pSrcDst[i] -= pSrc[i]). Integer results as for Add; unsigned
 * destinations saturate negative differences to 0. */
ZvpStatus zvpsSub_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                         int scaleFactor);
ZvpStatus zvpsSub_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len);
ZvpStatus zvpsSub_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsSub_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsSub_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsSub_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsSub_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len,
                          int scaleFactor);
ZvpStatus zvpsSub_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len,
                           int scaleFactor);
ZvpStatus zvpsSub_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSub_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsSub_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSub_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsSub_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSub_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsSub_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSub_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsSub_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);
/* Mixed type: exact difference pSrc2[i] - pSrc1[i] as a float. */
ZvpStatus zvpsSub_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len);

/* SubC: pDst[i] = pSrc[i] - val (in place: pSrcDst[i] -= val).
 * SubCRev: pDst[i] = val - pSrc[i] (in place: pSrcDst[i] = val - pSrcDst[i]).
 * Integer results as for Sub. */
ZvpStatus zvpsSubC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsSubC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsSubC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                            int scaleFactor);
ZvpStatus zvpsSubC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsSubC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSubC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsSubC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSubC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsSubC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSubC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsSubC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsSubCRev_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsSubCRev_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                               int scaleFactor);
ZvpStatus zvpsSubCRev_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsSubCRev_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len,
                              int scaleFactor);
ZvpStatus zvpsSubCRev_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                               int scaleFactor);
ZvpStatus zvpsSubCRev_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsSubCRev_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsSubCRev_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsSubCRev_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsSubCRev_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsSubCRev_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsSubCRev_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsSubCRev_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsSubCRev_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_ADDSUB_H */

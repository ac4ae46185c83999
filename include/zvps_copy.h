/* zvpSP vector initialisation and copying: Copy, Move, Set, Zero, Flip and
 * the bit-string copies.
 *
 * Arguments: the source (or the value for Set), the destination, then the
 * length in elements; the _1u forms take a bit offset after each pointer and
 * a length in bits. Every element type is copied bit for bit. Checks, the
 * first failure returned with nothing written: a null pointer gives
 * zvpStsNullPtrErr (-8), then a length below 1 (or a negative bit offset)
 * zvpStsSizeErr (-6). Copy needs source and destination apart; Move accepts
 * any overlap. */
#ifndef ZVPS_COPY_H
#define ZVPS_COPY_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Copy: no overlap. Move: overlap allowed. Set: fill with a value. Zero: all bits zero. */
ZvpStatus zvpsCopy_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsCopy_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsCopy_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsCopy_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsCopy_32sc(const Zvp32sc* pSrc, Zvp32sc* pDst, int len);
ZvpStatus zvpsCopy_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsCopy_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsCopy_64s(const Zvp64s* pSrc, Zvp64s* pDst, int len);
ZvpStatus zvpsCopy_64sc(const Zvp64sc* pSrc, Zvp64sc* pDst, int len);
ZvpStatus zvpsCopy_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsCopy_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsMove_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsMove_16s(const Zvp16s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsMove_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int len);
ZvpStatus zvpsMove_32s(const Zvp32s* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsMove_32sc(const Zvp32sc* pSrc, Zvp32sc* pDst, int len);
ZvpStatus zvpsMove_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsMove_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsMove_64s(const Zvp64s* pSrc, Zvp64s* pDst, int len);
ZvpStatus zvpsMove_64sc(const Zvp64sc* pSrc, Zvp64sc* pDst, int len);
ZvpStatus zvpsMove_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsMove_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsSet_8u(Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsSet_16s(Zvp16s val, Zvp16s* pDst, int len);
ZvpStatus zvpsSet_16sc(Zvp16sc val, Zvp16sc* pDst, int len);
ZvpStatus zvpsSet_32s(Zvp32s val, Zvp32s* pDst, int len);
ZvpStatus zvpsSet_32sc(Zvp32sc val, Zvp32sc* pDst, int len);
ZvpStatus zvpsSet_32f(Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsSet_32fc(Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsSet_64s(Zvp64s val, Zvp64s* pDst, int len);
ZvpStatus zvpsSet_64sc(Zvp64sc val, Zvp64sc* pDst, int len);
ZvpStatus zvpsSet_64f(Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsSet_64fc(Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsZero_8u(Zvp8u* pDst, int len);
ZvpStatus zvpsZero_16s(Zvp16s* pDst, int len);
ZvpStatus zvpsZero_16sc(Zvp16sc* pDst, int len);
ZvpStatus zvpsZero_32s(Zvp32s* pDst, int len);
ZvpStatus zvpsZero_32sc(Zvp32sc* pDst, int len);
ZvpStatus zvpsZero_32f(Zvp32f* pDst, int len);
ZvpStatus zvpsZero_32fc(Zvp32fc* pDst, int len);
ZvpStatus zvpsZero_64s(Zvp64s* pDst, int len);
ZvpStatus zvpsZero_64sc(Zvp64sc* pDst, int len);
ZvpStatus zvpsZero_64f(Zvp64f* pDst, int len);
ZvpStatus zvpsZero_64fc(Zvp64fc* pDst, int len);

/* Reverse the element order; an out-of-place call with equal pointers runs in place. */
ZvpStatus zvpsFlip_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsFlip_8u_I(Zvp8u* pSrcDst, int len);
ZvpStatus zvpsFlip_16u(const Zvp16u* pSrc, Zvp16u* pDst, int len);
ZvpStatus zvpsFlip_16u_I(Zvp16u* pSrcDst, int len);
ZvpStatus zvpsFlip_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsFlip_32f_I(Zvp32f* pSrcDst, int len);
ZvpStatus zvpsFlip_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int len);
ZvpStatus zvpsFlip_32fc_I(Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsFlip_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsFlip_64f_I(Zvp64f* pSrcDst, int len);
ZvpStatus zvpsFlip_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int len);
ZvpStatus zvpsFlip_64fc_I(Zvp64fc* pSrcDst, int len);

/* Bit strings. Copy_1u and CopyLE_1u number the bits of a byte from the most
 * significant (offset 0 = weight 128); CopyBE_1u from the least significant
 * (offset 0 = weight 1). Destination bits outside the copied range keep their
 * values. */
ZvpStatus zvpsCopy_1u(const Zvp8u* pSrc, int srcBitOffset, Zvp8u* pDst,
                      int dstBitOffset, int len);
ZvpStatus zvpsCopyLE_1u(const Zvp8u* pSrc, int srcBitOffset, Zvp8u* pDst,
                        int dstBitOffset, int len);
ZvpStatus zvpsCopyBE_1u(const Zvp8u* pSrc, int srcBitOffset, Zvp8u* pDst,
                        int dstBitOffset, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_COPY_H */

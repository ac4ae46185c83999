/* zvpSP logic and shifts: And, Or, Xor, Not and their constant forms, LShiftC,
 * RShiftC.
 *
 * Arguments: the source vectors (or a vector and the constant val; for the
 * shifts, val is the count), the destination, the length in elements; in-place
 * forms (_I) take the other operand first. Checks, the first failure returned
 * with nothing written: a null pointer gives zvpStsNullPtrErr (-8), a length
 * below 1 zvpStsSizeErr (-6), a negative shift count zvpStsShiftErr (-32).
 * Some constants turn the call into Copy or Zero before these checks, as
 * described below; the status is then that of Copy or Zero. */
#ifndef ZVPS_LOGIC_H
#define ZVPS_LOGIC_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bitwise operations on unsigned vectors. AndC with constant 0 becomes Zero of
 * the destination (source must not be null); OrC and XorC with constant 0 become
 * Copy, before any check of their own. Not is XorC with every bit set. */
ZvpStatus zvpsAnd_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsAnd_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsOr_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsOr_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsXor_8u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len);
ZvpStatus zvpsXor_8u_I(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsAndC_8u(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsAndC_8u_I(Zvp8u val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsOrC_8u(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsOrC_8u_I(Zvp8u val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsXorC_8u(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len);
ZvpStatus zvpsXorC_8u_I(Zvp8u val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsNot_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsNot_8u_I(Zvp8u* pSrcDst, int len);
ZvpStatus zvpsAnd_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsAnd_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsOr_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsOr_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsXor_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsXor_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsAndC_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsAndC_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsOrC_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsOrC_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsXorC_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsXorC_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsNot_16u(const Zvp16u* pSrc, Zvp16u* pDst, int len);
ZvpStatus zvpsNot_16u_I(Zvp16u* pSrcDst, int len);
ZvpStatus zvpsAnd_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsAnd_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsOr_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsOr_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsXor_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len);
ZvpStatus zvpsXor_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsAndC_32u(const Zvp32u* pSrc, Zvp32u val, Zvp32u* pDst, int len);
ZvpStatus zvpsAndC_32u_I(Zvp32u val, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsOrC_32u(const Zvp32u* pSrc, Zvp32u val, Zvp32u* pDst, int len);
ZvpStatus zvpsOrC_32u_I(Zvp32u val, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsXorC_32u(const Zvp32u* pSrc, Zvp32u val, Zvp32u* pDst, int len);
ZvpStatus zvpsXorC_32u_I(Zvp32u val, Zvp32u* pSrcDst, int len);
ZvpStatus zvpsNot_32u(const Zvp32u* pSrc, Zvp32u* pDst, int len);
ZvpStatus zvpsNot_32u_I(Zvp32u* pSrcDst, int len);

/* Shifts by a constant count: left shifts drop the bits shifted out; right
 * shifts are logical for unsigned and arithmetic for signed types. Count 0
 * becomes Copy and a count of the element width or more becomes Zero (signed
 * right shifts fill with the sign instead), before the usual checks; a
 * negative count gives zvpStsShiftErr. */
ZvpStatus zvpsLShiftC_8u(const Zvp8u* pSrc, int val, Zvp8u* pDst, int len);
ZvpStatus zvpsLShiftC_8u_I(int val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsLShiftC_16s(const Zvp16s* pSrc, int val, Zvp16s* pDst, int len);
ZvpStatus zvpsLShiftC_16s_I(int val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsLShiftC_16u(const Zvp16u* pSrc, int val, Zvp16u* pDst, int len);
ZvpStatus zvpsLShiftC_16u_I(int val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsLShiftC_32s(const Zvp32s* pSrc, int val, Zvp32s* pDst, int len);
ZvpStatus zvpsLShiftC_32s_I(int val, Zvp32s* pSrcDst, int len);
ZvpStatus zvpsRShiftC_8u(const Zvp8u* pSrc, int val, Zvp8u* pDst, int len);
ZvpStatus zvpsRShiftC_8u_I(int val, Zvp8u* pSrcDst, int len);
ZvpStatus zvpsRShiftC_16s(const Zvp16s* pSrc, int val, Zvp16s* pDst, int len);
ZvpStatus zvpsRShiftC_16s_I(int val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsRShiftC_16u(const Zvp16u* pSrc, int val, Zvp16u* pDst, int len);
ZvpStatus zvpsRShiftC_16u_I(int val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsRShiftC_32s(const Zvp32s* pSrc, int val, Zvp32s* pDst, int len);
ZvpStatus zvpsRShiftC_32s_I(int val, Zvp32s* pSrcDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_LOGIC_H */

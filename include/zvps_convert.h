/* zvpSP type conversion: Convert, JoinScaled, SplitScaled.
 *
 * Convert copies a vector of one sample type into a vector of another,
 * element by element. Arguments: the source, the destination, the length in
 * samples, then the rounding mode and/or the scale factor where the name has
 * them (rounding mode first). Sources and destinations must not overlap.
 *
 * Checks, the first failure returned with nothing written: a null pointer
 * gives zvpStsNullPtrErr (-8), a length below 1 zvpStsSizeErr (-6), then the
 * operation's own values (the rounding mode of the binary16 conversions).
 * Saturation and NaN are never reported: they are folded into the results
 * described below.
 *
 * Rounding modes (ZvpRoundMode): zvpRndZero truncates toward zero, zvpRndNear
 * rounds to nearest with ties to even, and every other value (zvpRndFinancial
 * and any unnamed one) rounds to nearest with ties away from zero, unless a
 * group says otherwise.
 *
 * Integer results never depend on the caller's floating-point state (rounding
 * mode, flush-to-zero, denormals-are-zero). Float results are rounded to
 * nearest with ties to even and keep denormals whatever the caller's state.
 * Operations that need a particular processor mode set it for the call only
 * and always hand the caller's control word back unchanged. */
#ifndef ZVPS_CONVERT_H
#define ZVPS_CONVERT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Widening and precision changes. Every integer source converts exactly,
 * except 32s32f and 64s64f, which round to the nearest representable value
 * (ties to even); 64f32f rounds to nearest even (denormal results kept,
 * overflow gives infinity); 32f64f is exact (denormal sources kept); 32s16s
 * saturates to [-32768, 32767].
 *
 * zvpsConvert_64s64f compares its length as an unsigned number: only 0 is
 * refused with zvpStsSizeErr, and a negative length is taken as a count of
 * 2^32 + len elements (on a 32-bit target, whose address space cannot hold
 * that many, it is refused with zvpStsSizeErr too). */
ZvpStatus zvpsConvert_8s16s(const Zvp8s* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsConvert_16s32s(const Zvp16s* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsConvert_8s32f(const Zvp8s* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_8u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_16s32f(const Zvp16s* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_16u32f(const Zvp16u* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_32s32f(const Zvp32s* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_32s64f(const Zvp32s* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsConvert_32f64f(const Zvp32f* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsConvert_64s64f(const Zvp64s* pSrc, Zvp64f* pDst, int len);
ZvpStatus zvpsConvert_64f32f(const Zvp64f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_32s16s(const Zvp32s* pSrc, Zvp16s* pDst, int len);

/* Integer to float times 2^-scaleFactor, computed in the destination format.
 * The factor is an exact power of two, and the scale factor is first clamped
 * to a range where it is a normal number: -112 .. 126 for 32f destinations,
 * -1008 .. 1022 for 64f destinations (a larger factor acts as the bound, so
 * scale factor 200 acts as 126). 16s sources are then exact (overflow cannot
 * occur); 32s32f_Sfs rounds the source once to nearest even, and a result
 * beyond the float range is infinity. */
ZvpStatus zvpsConvert_16s32f_Sfs(const Zvp16s* pSrc, Zvp32f* pDst, int len, int scaleFactor);
ZvpStatus zvpsConvert_16s64f_Sfs(const Zvp16s* pSrc, Zvp64f* pDst, int len, int scaleFactor);
ZvpStatus zvpsConvert_32s32f_Sfs(const Zvp32s* pSrc, Zvp32f* pDst, int len, int scaleFactor);
ZvpStatus zvpsConvert_32s64f_Sfs(const Zvp32s* pSrc, Zvp64f* pDst, int len, int scaleFactor);

/* Float to integer: x times 2^-scaleFactor (any scale factor: the power of
 * two is applied exactly, in the source's precision, so 0 stays 0 and
 * infinities saturate at every factor), rounded by rndMode, saturated to the
 * destination.
 *   32-bit destinations: a scaled value whose bit pattern, read as a signed
 *   32-bit integer, is above 0x4EFFFFFF (2^31 and above, +infinity, and every
 *   NaN with the sign bit clear) gives 2147483647; -2^31 and below,
 *   -infinity and every NaN with the sign bit set give -2147483648.
 *   64f64s saturates to the 64-bit range the same way (NaN by its sign).
 *   8- and 16-bit destinations clamp to their range; NaN gives the
 *   destination's maximum.
 * Examples (32f32s, scale factor 0): zvpRndNear 2.5 -> 2, 3.5 -> 4;
 * zvpRndFinancial 2.5 -> 3, -2.5 -> -3, 0.49999997 -> 0. */
ZvpStatus zvpsConvert_32f8s_Sfs(const Zvp32f* pSrc, Zvp8s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_32f8u_Sfs(const Zvp32f* pSrc, Zvp8u* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_32f16s_Sfs(const Zvp32f* pSrc, Zvp16s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_32f16u_Sfs(const Zvp32f* pSrc, Zvp16u* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_32f32s_Sfs(const Zvp32f* pSrc, Zvp32s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_64f16s_Sfs(const Zvp64f* pSrc, Zvp16s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_64f32s_Sfs(const Zvp64f* pSrc, Zvp32s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_64f64s_Sfs(const Zvp64f* pSrc, Zvp64s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);

/* Integer narrowing with a rounding mode. 16s8s_Sfs:
 *   scaleFactor 18 and above: every result is 0;
 *   1 .. 17: the magnitude is divided by 2^scaleFactor and rounded by
 *     rndMode (to nearest even, toward zero, or half away from zero), the sign
 *     restored, the result saturated to [-128, 127];
 *   0: saturated;  -6 .. -1: shifted left, saturated;
 *   -7 and below: 127 for positive, -128 for negative samples, 0 for 0.
 * 64s32s_Sfs: the scale factor is clamped to -31 .. 63; positive factors round
 * by rndMode as above, 0 saturates, negative factors shift left with
 * saturation to the 32-bit range.
 *
 * zvpsConvert_16s8s_Sfs compares its length as an unsigned number: only 0 is
 * refused with zvpStsSizeErr, and a negative length is taken as a count of
 * 2^32 + len elements (on a 32-bit target, whose address space cannot hold
 * that many, it is refused with zvpStsSizeErr too). */
ZvpStatus zvpsConvert_16s8s_Sfs(const Zvp16s* pSrc, Zvp8s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsConvert_64s32s_Sfs(const Zvp64s* pSrc, Zvp32s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);

/* Integer narrowing by the library's scale rule: x times 2^-scaleFactor,
 * rounded to nearest with ties to even, saturated; negative factors shift left
 * with saturation. 32s16s_Sfs clamps the scale factor to -15 .. 31. */
ZvpStatus zvpsConvert_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor);

/* Packed 24-bit samples: three bytes each, least significant byte first,
 * through byte pointers without alignment; 24s is two's complement. A vector
 * of len samples is 3 len bytes. Widening to 32s, 32u and 32f is exact.
 * 32s24s_Sfs and 32u24u_Sfs clamp the scale factor to -31 .. 31 and apply the
 * scale rule above (ties to even; left shifts saturate), saturating to
 * [-8388608, 8388607] or [0, 16777215]. 32f24s_Sfs and 32f24u_Sfs scale as the
 * float-to-integer group, round to nearest even and saturate to the 24-bit
 * range; NaN gives the range's maximum. */
ZvpStatus zvpsConvert_24s32s(const Zvp8u* pSrc, Zvp32s* pDst, int len);
ZvpStatus zvpsConvert_24u32u(const Zvp8u* pSrc, Zvp32u* pDst, int len);
ZvpStatus zvpsConvert_24s32f(const Zvp8u* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_24u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_32s24s_Sfs(const Zvp32s* pSrc, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsConvert_32u24u_Sfs(const Zvp32u* pSrc, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsConvert_32f24s_Sfs(const Zvp32f* pSrc, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsConvert_32f24u_Sfs(const Zvp32f* pSrc, Zvp8u* pDst, int len, int scaleFactor);

/* IEEE 754 binary16 (Zvp16f holds the 16 bits). To binary16, rndMode
 * zvpRndNear rounds to nearest even (values from 65520 up become infinity);
 * every other accepted value truncates toward zero (finite values beyond the
 * range become +-65504). zvpRndFinancial is refused with
 * zvpStsRoundModeNotSupportedErr (-213), nothing written. Denormal results
 * are produced exactly; infinities stay infinite; NaN stays NaN (quiet, the
 * top payload bits kept). 16f32f is exact. 16f16s_Sfs converts exactly to
 * single precision and then rounds as Convert_32f16s_Sfs, with zvpRndNear to
 * nearest even and every other accepted mode toward zero (-213 for
 * zvpRndFinancial); NaN gives 32767. */
ZvpStatus zvpsConvert_16s16f(const Zvp16s* pSrc, Zvp16f* pDst, int len, ZvpRoundMode rndMode);
ZvpStatus zvpsConvert_32f16f(const Zvp32f* pSrc, Zvp16f* pDst, int len, ZvpRoundMode rndMode);
ZvpStatus zvpsConvert_16f32f(const Zvp16f* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsConvert_16f16s_Sfs(const Zvp16f* pSrc, Zvp16s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor);

/* Channel interleaving. JoinScaled takes nChannels pointers to chanLen
 * samples each in [-1, 1] and writes nChannels * chanLen integers interleaved
 * (sample i of channel c at i * nChannels + c): x is clamped to [-1, 1],
 * multiplied by 32767.5 (16s) or 8388607.5 (24s, in double precision), 0.5 is
 * subtracted and the result rounded to nearest even, so 1.0 gives 32767 and
 * -1.0 gives -32768 (0.0 gives 0); NaN gives 0. SplitScaled is the exact
 * inverse: x = y / 32767.5 + 0.5 / 32767.5 in single precision (16s), or in
 * double precision rounded once to single (24s, read as 3 bytes and
 * sign-extended). Both round to nearest whatever the caller's mode.
 * Checks: JoinScaled a null pDst, SplitScaled a null pSrc (-8); nChannels or
 * chanLen below 1 (-6); then a null channel array or any null channel
 * pointer (-8). */
ZvpStatus zvpsJoinScaled_32f16s_D2L(const Zvp32f* const pSrc[], int nChannels, int chanLen, Zvp16s* pDst);
ZvpStatus zvpsJoinScaled_32f24s_D2L(const Zvp32f* const pSrc[], int nChannels, int chanLen, Zvp8u* pDst);
ZvpStatus zvpsSplitScaled_16s32f_D2L(const Zvp16s* pSrc, Zvp32f* const pDst[], int nChannels, int chanLen);
ZvpStatus zvpsSplitScaled_24s32f_D2L(const Zvp8u* pSrc, Zvp32f* const pDst[], int nChannels, int chanLen);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CONVERT_H */

/* zvpSP companding: A-law and mu-law codes to and from linear samples.
 *
 * The 8-bit codes are the G.711 code words as transmitted: A-law codes with
 * the even bits inverted (positive values have bit 7 set), mu-law codes with
 * every bit inverted. Linear samples are 16-bit values: A-law works on a
 * 13-bit grid (steps of 8 at the smallest), mu-law on a 14-bit grid (steps
 * of 4). Arguments: source, destination, length in elements. Checks, the
 * first failure returned with nothing written: a null pointer gives
 * zvpStsNullPtrErr (-8), a length below 1 zvpStsSizeErr (-6). There are no
 * other errors and no warnings. */
#ifndef ZVPS_COMPANDING_H
#define ZVPS_COMPANDING_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Decoding: the G.711 decoder output as a 16-bit value (A-law code 0x00 gives
 * -5504, 0x80 gives 5504; mu-law 0x00 gives -32124, 0x7F and 0xFF give 0).
 * The 32f forms give the same value times 2^-15. */
ZvpStatus zvpsALawToLin_8u16s(const Zvp8u* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsALawToLin_8u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len);
ZvpStatus zvpsMuLawToLin_8u16s(const Zvp8u* pSrc, Zvp16s* pDst, int len);
ZvpStatus zvpsMuLawToLin_8u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len);

/* Encoding. A-law: v = x >> 3 (arithmetic), m = v for v >= 0 and -v - 1
 * otherwise; the segment s is the first of 0..7 whose end (31, 63, 127, ...,
 * 4095) is at least m; the code is ((m >> max(s, 1)) & 15) | s << 4, XOR 0xD5
 * for v >= 0 and 0x55 otherwise. So 0 gives 0xD5, -1 gives 0x55, 32767 gives
 * 0xAA and -32768 gives 0x2A.
 * Mu-law (G.711 with bias 0x84 and clip 32635): m = |x| clipped to 32635,
 * plus 0x84; s = the position of its highest set bit minus 7; the code is
 * (s << 4 | (m >> (s + 3)) & 15), XOR 0xFF for x >= 0 and 0x7F otherwise.
 * The 32f forms first form x * 32768, saturated to 32767 above and -32768
 * below, otherwise rounded to the nearest integer with halves away from
 * zero (whatever the caller's rounding mode); a NaN encodes as 0. */
ZvpStatus zvpsLinToALaw_16s8u(const Zvp16s* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsLinToALaw_32f8u(const Zvp32f* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsLinToMuLaw_16s8u(const Zvp16s* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsLinToMuLaw_32f8u(const Zvp32f* pSrc, Zvp8u* pDst, int len);

/* Code conversion: each code becomes the code of the other law whose decoder
 * output is nearest to its own, the two laws compared at their overload
 * points (A-law 4096 units at +3.14 dBm0, mu-law 8159 units at +3.17 dBm0):
 * the conversion tables of G.711, with the sign kept. */
ZvpStatus zvpsALawToMuLaw_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);
ZvpStatus zvpsMuLawToALaw_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_COMPANDING_H */

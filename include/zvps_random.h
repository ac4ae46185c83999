/* zvpSP random generators: uniform and Gaussian.
 *
 * A generator keeps its position in a state record that the caller creates
 * once, either in its own memory (GetSize, then Init) or allocated by the
 * library (InitAlloc, released with Free). Successive calls on one record
 * continue one sequence: the samples of a call of len1 followed by a call of
 * len2 are the samples of one call of len1 + len2, for any lengths, odd or
 * even.
 *
 * The raw sequence. Every raw sample combines two 32-bit generators:
 *   - a congruential generator c <- 69069 c + 1013904243 (mod 2^32), started
 *     at 1131199209 whatever the seed;
 *   - a lagged subtract-with-borrow generator over three lag values s1
 *     (newest), s2, s3 and a borrow b, started at s1 = seed,
 *     s2 = 69069 seed + 1013904243, s3 = 69069 s2 + 1013904243 (mod 2^32),
 *     b = -1. One step forms t = s2 - s3 + b (mod 2^32); when t read as a
 *     signed 32-bit number is negative the new value is t - 18 and b = -1,
 *     otherwise the new value is t and b = 0; then s3 <- s2, s2 <- s1,
 *     s1 <- new value.
 * The raw sample r is the new lag value plus the new congruential value
 * (mod 2^32), read as a signed 32-bit integer. Each raw sample advances both
 * generators by exactly one step.
 *
 * Checks, in this order, returning the first failure with nothing written:
 *   Init, GetSize, Free: null pointer (zvpStsNullPtrErr, -8);
 *   InitAlloc: null address (-8), failed allocation (zvpStsMemAllocErr, -9,
 *     the address is left untouched);
 *   Free: a record of another generator or one already released
 *     (zvpStsContextMatchErr, -17);
 *   generation: null destination or state (-8), len < 1 (zvpStsSizeErr, -6),
 *     a record of another generator or type (-17);
 *   Direct forms: null destination or seed pointer (-8), len < 1 (-6).
 * The bounds, mean and standard deviation are not checked: low > high gives
 * samples between high and low, a negative standard deviation mirrors the
 * deviates. Records need no particular alignment. Free clears the identity
 * tag and releases the memory of records made by InitAlloc only. A record
 * must not be used by two calls at once.
 *
 * Results do not depend on the caller's floating-point state: generation
 * runs with round-to-nearest and without flush-to-zero, and restores the
 * caller's control word. */
#ifndef ZVPS_RANDOM_H
#define ZVPS_RANDOM_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Generator state records, opaque; a record begins with its identity tag. */
typedef struct ZvpsRandUniState_8u ZvpsRandUniState_8u;
typedef struct ZvpsRandUniState_16s ZvpsRandUniState_16s;
typedef struct ZvpsRandUniState_32f ZvpsRandUniState_32f;
typedef struct ZvpsRandGaussState_8u ZvpsRandGaussState_8u;
typedef struct ZvpsRandGaussState_16s ZvpsRandGaussState_16s;
typedef struct ZvpsRandGaussState_32f ZvpsRandGaussState_32f;

/* Uniform generators (identity tags 35 for 8u, 36 for 16s, 37 for 32f).
 * Init stores centre = (low + high) / 2 and
 * step = (high - low) * 2.3283064365387e-10 (2^-32 to 14 digits), both in
 * double precision. Each sample is r * step + centre computed in double:
 *   32f: rounded to single precision, so it lies in [low, high];
 *   8u, 16s: rounded to the nearest integer (ties to even) and clamped to
 *     the bounds; low and high themselves therefore come up half as often as
 *     the values between them.
 * low == high gives that value everywhere. GetSize reports the bytes of a
 * record (the same on every target). */
ZvpStatus zvpsRandUniformInit_8u(ZvpsRandUniState_8u* pRandUniState, Zvp8u low, Zvp8u high, unsigned int seed);
ZvpStatus zvpsRandUniformInitAlloc_8u(ZvpsRandUniState_8u** ppRandUniState, Zvp8u low, Zvp8u high, unsigned int seed);
ZvpStatus zvpsRandUniformGetSize_8u(int* pRandUniStateSize);
ZvpStatus zvpsRandUniformFree_8u(ZvpsRandUniState_8u* pRandUniState);
ZvpStatus zvpsRandUniform_8u(Zvp8u* pDst, int len, ZvpsRandUniState_8u* pRandUniState);
ZvpStatus zvpsRandUniformInit_16s(ZvpsRandUniState_16s* pRandUniState, Zvp16s low, Zvp16s high, unsigned int seed);
ZvpStatus zvpsRandUniformInitAlloc_16s(ZvpsRandUniState_16s** ppRandUniState, Zvp16s low, Zvp16s high, unsigned int seed);
ZvpStatus zvpsRandUniformGetSize_16s(int* pRandUniStateSize);
ZvpStatus zvpsRandUniformFree_16s(ZvpsRandUniState_16s* pRandUniState);
ZvpStatus zvpsRandUniform_16s(Zvp16s* pDst, int len, ZvpsRandUniState_16s* pRandUniState);
ZvpStatus zvpsRandUniformInit_32f(ZvpsRandUniState_32f* pRandUniState, Zvp32f low, Zvp32f high, unsigned int seed);
ZvpStatus zvpsRandUniformInitAlloc_32f(ZvpsRandUniState_32f** ppRandUniState, Zvp32f low, Zvp32f high, unsigned int seed);
ZvpStatus zvpsRandUniformGetSize_32f(int* pRandUniStateSize);
ZvpStatus zvpsRandUniformFree_32f(ZvpsRandUniState_32f* pRandUniState);
ZvpStatus zvpsRandUniform_32f(Zvp32f* pDst, int len, ZvpsRandUniState_32f* pRandUniState);

/* Gaussian generators (identity tags 38 for 8u, 39 for 16s, 40 for 32f).
 * Deviates come in pairs from two consecutive raw samples r1, r2 by the
 * Box-Muller transform:
 *   u = (r1 + 2^31 + 0.5) * 2^-32, in (0, 1);   a = 2 pi r2 * 2^-32;
 *   z1 = sqrt(-2 ln u) cos a,   z2 = sqrt(-2 ln u) sin a,
 * evaluated in single precision (within 4e-7 of sqrt(-2 ln u) of the exact
 * value; u near 1 keeps its full relative precision, so small deviates are
 * as accurate as large ones). The sample is mean + stdDev * z: for 32f in
 * single precision; for 8u and 16s in double, rounded to the nearest integer,
 * ties to even, and clamped to the type's range. A call that ends in the
 * middle of a pair keeps the pair's second deviate in the record and the next
 * call starts with it, so the sequence does not depend on how it is split
 * into calls; on average each sample advances the generators by one step. */
ZvpStatus zvpsRandGaussInit_8u(ZvpsRandGaussState_8u* pRandGaussState, Zvp8u mean, Zvp8u stdDev, unsigned int seed);
ZvpStatus zvpsRandGaussInitAlloc_8u(ZvpsRandGaussState_8u** ppRandGaussState, Zvp8u mean, Zvp8u stdDev, unsigned int seed);
ZvpStatus zvpsRandGaussGetSize_8u(int* pRandGaussStateSize);
ZvpStatus zvpsRandGaussFree_8u(ZvpsRandGaussState_8u* pRandGaussState);
ZvpStatus zvpsRandGauss_8u(Zvp8u* pDst, int len, ZvpsRandGaussState_8u* pRandGaussState);
ZvpStatus zvpsRandGaussInit_16s(ZvpsRandGaussState_16s* pRandGaussState, Zvp16s mean, Zvp16s stdDev, unsigned int seed);
ZvpStatus zvpsRandGaussInitAlloc_16s(ZvpsRandGaussState_16s** ppRandGaussState, Zvp16s mean, Zvp16s stdDev, unsigned int seed);
ZvpStatus zvpsRandGaussGetSize_16s(int* pRandGaussStateSize);
ZvpStatus zvpsRandGaussFree_16s(ZvpsRandGaussState_16s* pRandGaussState);
ZvpStatus zvpsRandGauss_16s(Zvp16s* pDst, int len, ZvpsRandGaussState_16s* pRandGaussState);
ZvpStatus zvpsRandGaussInit_32f(ZvpsRandGaussState_32f* pRandGaussState, Zvp32f mean, Zvp32f stdDev, unsigned int seed);
ZvpStatus zvpsRandGaussInitAlloc_32f(ZvpsRandGaussState_32f** ppRandGaussState, Zvp32f mean, Zvp32f stdDev, unsigned int seed);
ZvpStatus zvpsRandGaussGetSize_32f(int* pRandGaussStateSize);
ZvpStatus zvpsRandGaussFree_32f(ZvpsRandGaussState_32f* pRandGaussState);
ZvpStatus zvpsRandGauss_32f(Zvp32f* pDst, int len, ZvpsRandGaussState_32f* pRandGaussState);

/* Direct forms: no record. *pSeed is the state of the congruential generator
 * alone, c <- 69069 c + 1013904243 (mod 2^32); each raw sample is the new c
 * read as a signed 32-bit integer, and the final c is written back to *pSeed,
 * so consecutive calls with the written-back seed continue one sequence, for
 * any split.
 *   Uniform: one step per sample, mapped as the uniform generators above
 *     (64f: r * step + centre in double precision).
 *   Gauss: two steps per sample; the pair (r1, r2) gives z1 of the Box-Muller
 *     transform above, and the sample is mean + stdDev * z1. 64f: transform
 *     and mapping in double precision (within 2e-14 of the exact deviate).
 *     32f and 16s: the single-precision transform and mapping of the
 *     Gaussian generators above. */
ZvpStatus zvpsRandUniform_Direct_16s(Zvp16s* pDst, int len, Zvp16s low, Zvp16s high, unsigned int* pSeed);
ZvpStatus zvpsRandUniform_Direct_32f(Zvp32f* pDst, int len, Zvp32f low, Zvp32f high, unsigned int* pSeed);
ZvpStatus zvpsRandUniform_Direct_64f(Zvp64f* pDst, int len, Zvp64f low, Zvp64f high, unsigned int* pSeed);
ZvpStatus zvpsRandGauss_Direct_16s(Zvp16s* pDst, int len, Zvp16s mean, Zvp16s stdDev, unsigned int* pSeed);
ZvpStatus zvpsRandGauss_Direct_32f(Zvp32f* pDst, int len, Zvp32f mean, Zvp32f stdDev, unsigned int* pSeed);
ZvpStatus zvpsRandGauss_Direct_64f(Zvp64f* pDst, int len, Zvp64f mean, Zvp64f stdDev, unsigned int* pSeed);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_RANDOM_H */

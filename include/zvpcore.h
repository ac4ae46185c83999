/* zvpSP core library (libzvpcore): aligned memory, processor features and
 * status texts. C99 and C++ clean. */
#ifndef ZVPCORE_H
#define ZVPCORE_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Processor feature bits reported by zvpGetCpuFeatures and
 * zvpGetEnabledCpuFeatures. A bit is set only when the processor has the
 * feature and, for register-state extensions (AVX and later), the operating
 * system saves that state. */
#define zvpCPUID_MMX        0x00000001ULL
#define zvpCPUID_SSE        0x00000002ULL
#define zvpCPUID_SSE2       0x00000004ULL
#define zvpCPUID_SSE3       0x00000008ULL
#define zvpCPUID_SSSE3      0x00000010ULL /* 0x10: supplemental SSE3      */
#define zvpCPUID_SSE41      0x00000020ULL /* 0x20: SSE4.1                 */
#define zvpCPUID_SSE42      0x00000040ULL
#define zvpCPUID_AVX        0x00000080ULL /* 0x80: AVX, with OS support   */
#define zvpCPUID_AES        0x00000100ULL
#define zvpCPUID_CLMUL      0x00000200ULL
#define zvpCPUID_AVX2       0x00000400ULL
#define zvpCPUID_AVX512F    0x00000800ULL
#define zvpCPUID_POPCNT     0x00001000ULL
#define zvpCPUID_F16C       0x00002000ULL
#define zvpCPUID_FMA        0x00004000ULL
#define zvpCPUID_MOVBE      0x00008000ULL
#define zvpCPUID_BMI1       0x00010000ULL
#define zvpCPUID_BMI2       0x00020000ULL
#define zvpCPUID_ADX        0x00040000ULL
#define zvpCPUID_RDRAND     0x00080000ULL
#define zvpCPUID_RDSEED     0x00100000ULL
#define zvpCPUID_SHA        0x00200000ULL
#define zvpCPUID_AVX512BW   0x00400000ULL
#define zvpCPUID_AVX512DQ   0x00800000ULL
#define zvpCPUID_AVX512VL   0x01000000ULL

/* Allocates nbytes bytes aligned to 64 bytes; null on failure. A request for
 * 0 bytes returns a distinct, non-null, 64-byte aligned pointer that must be
 * released with zvpFree and must not be dereferenced. */
void* zvpMalloc(size_t nbytes);

/* Releases a block from zvpMalloc; a null pointer is accepted and ignored. */
void zvpFree(void* ptr);

/* Rounds ptr up to the next multiple of alignBytes (a power of two; values
 * below 1 return ptr unchanged). */
void* zvpAlignPtr(void* ptr, int alignBytes);

/* Reads the processor's features with CPUID. Writes the feature mask to
 * *pFeaturesMask and the four registers of CPUID leaf 1 (eax, ebx, ecx, edx)
 * to pCpuidInfoRegs; either pointer may be null. Returns zvpStsNoErr. */
ZvpStatus zvpGetCpuFeatures(Zvp64u* pFeaturesMask, Zvp32u pCpuidInfoRegs[4]);

/* The feature mask the library's code may rely on (the detected features). */
Zvp64u zvpGetEnabledCpuFeatures(void);

/* Non-zero when every bit of featureMask is among the enabled features. */
int ownGetFeature(Zvp64u featureMask);

/* The status's name followed by a one-line meaning, e.g.
 * "zvpStsSizeErr: a length or size is out of range". Unknown values give
 * "unknown status". The text is static and never freed. */
const char* zvpGetStatusString(ZvpStatus status);

#ifdef __cplusplus
}
#endif

#endif /* ZVPCORE_H */

/* zvpSP: sample types, status codes and shared enumerations.
 *
 * Included by both public headers (zvps.h for the signal-processing library,
 * zvpcore.h for the core library). C99 and C++ clean. */
#ifndef ZVPTYPES_H
#define ZVPTYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Sample types ------------------------------------------------------ */
typedef uint8_t  Zvp8u;
typedef int8_t   Zvp8s;
typedef uint16_t Zvp16u;
typedef int16_t  Zvp16s;
typedef uint32_t Zvp32u;
typedef int32_t  Zvp32s;
typedef uint64_t Zvp64u;
typedef int64_t  Zvp64s;
typedef float    Zvp32f;
typedef double   Zvp64f;
/* IEEE 754 binary16, held as its 16 bits. */
typedef uint16_t Zvp16f;

/* Complex pairs: real part first, then imaginary, contiguous. */
typedef struct { Zvp8s  re; Zvp8s  im; } Zvp8sc;
typedef struct { Zvp16s re; Zvp16s im; } Zvp16sc;
typedef struct { Zvp32s re; Zvp32s im; } Zvp32sc;
typedef struct { Zvp64s re; Zvp64s im; } Zvp64sc;
typedef struct { Zvp32f re; Zvp32f im; } Zvp32fc;
typedef struct { Zvp64f re; Zvp64f im; } Zvp64fc;

/* ---- Status ------------------------------------------------------------ */
/* Signed 32-bit. 0 is success, negative values are errors (nothing written),
 * positive values are warnings (the whole result was written, with
 * substitute values where the warning arose). */
typedef enum ZvpStatusCode {
    zvpStsRoundModeNotSupportedErr = -213,
    zvpStsAlgTypeErr               = -228,
    zvpStsSingularErr              = -195,
    zvpStsSparseTapsErr            = -194,
    zvpStsChannelErr               = -53,
    zvpStsToneMagnErr              = -46,
    zvpStsToneFreqErr              = -45,
    zvpStsTonePhaseErr             = -44,
    zvpStsTrnglMagnErr             = -43,
    zvpStsTrnglFreqErr             = -42,
    zvpStsTrnglPhaseErr            = -41,
    zvpStsTrnglAsymErr             = -40,
    zvpStsWtOffsetErr              = -35,
    zvpStsShiftErr                 = -32,
    zvpStsSampleFactorErr          = -31,
    zvpStsSamplePhaseErr           = -30,
    zvpStsFIRMRFactorErr           = -29,
    zvpStsFIRMRPhaseErr            = -28,
    zvpStsRelFreqErr               = -27,
    zvpStsFIRLenErr                = -26,
    zvpStsIIROrderErr              = -25,
    zvpStsDlyLineIndexErr          = -24,
    zvpStsThreshNegLevelErr        = -19,
    zvpStsThresholdErr             = -18,
    zvpStsContextMatchErr          = -17,
    zvpStsFftFlagErr               = -16,
    zvpStsFftOrderErr              = -15,
    zvpStsIIRTapsScaleErr          = -13,
    zvpStsDataTypeErr              = -12,
    zvpStsCauchyParamErr           = -11,
    zvpStsDivByZeroErr             = -10,
    zvpStsMemAllocErr              = -9,
    zvpStsNullPtrErr               = -8,
    zvpStsSizeErr                  = -6,
    zvpStsBadArgErr                = -5,
    zvpStsNoErr                    = 0,
    zvpStsSqrtNegArg               = 3,
    zvpStsInvZero                  = 4,
    zvpStsEvenMedianMaskSize       = 5,
    zvpStsDivByZero                = 6,
    zvpStsLnZeroArg                = 7,
    zvpStsLnNegArg                 = 8,
    zvpStsMaxOrderNaN              = 9
} ZvpStatus;

/* ---- Enumerations ------------------------------------------------------- */
typedef enum ZvpRoundModeCode {
    zvpRndZero      = 0, /* truncate toward zero */
    zvpRndNear      = 1, /* nearest, ties to even */
    zvpRndFinancial = 2  /* nearest, ties away from zero */
} ZvpRoundMode;

typedef enum ZvpHintAlgorithmCode {
    zvpAlgHintNone     = 0,
    zvpAlgHintFast     = 1,
    zvpAlgHintAccurate = 2
} ZvpHintAlgorithm;

typedef enum ZvpCmpOpCode {
    zvpCmpLess    = 0,
    zvpCmpGreater = 4
} ZvpCmpOp;

/* FFT normalisation flags. */
#define ZVP_FFT_DIV_FWD_BY_N 1
#define ZVP_FFT_DIV_INV_BY_N 2
#define ZVP_FFT_DIV_BY_SQRTN 4
#define ZVP_FFT_NODIV_BY_ANY 8

/* Algorithm selector of the filtering calls: low byte ... */
typedef enum ZvpAlgTypeCode {
    zvpAlgAuto   = 0,
    zvpAlgDirect = 1,
    zvpAlgFFT    = 2
} ZvpAlgType;

/* ... second byte: normalisation of correlations (combine with |). */
typedef enum ZvpNormTypeCode {
    zvpsNormNone = 0x0000,
    zvpsNormA    = 0x0100,
    zvpsNormB    = 0x0200
} ZvpNormType;

/* Data-type codes of the buffer-size queries. */
typedef enum ZvpDataTypeCode {
    zvp32f  = 13,
    zvp32fc = 14,
    zvp64f  = 19,
    zvp64fc = 20
} ZvpDataType;

/* ---- Version record ---------------------------------------------------- */
typedef struct ZvpLibraryVersion {
    int         major;
    int         minor;
    int         patch;
    int         revision;
    char        targetCpu[4];
    const char* name;
    const char* versionText;
    const char* buildDate;
} ZvpLibraryVersion;

#ifdef __cplusplus
}
#endif

#endif /* ZVPTYPES_H */

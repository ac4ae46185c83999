// libzvpcore: aligned allocation, processor features and status texts.
#include "zvpcore.h"

#include <cpuid.h>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::size_t kAlign = 64;

std::uint64_t xgetbv0() {
    std::uint32_t lo = 0, hi = 0;
    __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
    return (static_cast<std::uint64_t>(hi) << 32) | lo;
}

struct CpuInfo {
    Zvp64u mask = 0;
    Zvp32u leaf1[4] = {0, 0, 0, 0};
};

CpuInfo detect() {
    CpuInfo info;
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (!__get_cpuid(0, &a, &b, &c, &d)) return info;
    const unsigned maxLeaf = a;
    if (!__get_cpuid(1, &a, &b, &c, &d)) return info;
    info.leaf1[0] = a; info.leaf1[1] = b; info.leaf1[2] = c; info.leaf1[3] = d;
    Zvp64u m = 0;
    if (d & bit_MMX)    m |= zvpCPUID_MMX;
    if (d & bit_SSE)    m |= zvpCPUID_SSE;
    if (d & bit_SSE2)   m |= zvpCPUID_SSE2;
    if (c & bit_SSE3)   m |= zvpCPUID_SSE3;
    if (c & bit_SSSE3)  m |= zvpCPUID_SSSE3;
    if (c & bit_SSE4_1) m |= zvpCPUID_SSE41;
    if (c & bit_SSE4_2) m |= zvpCPUID_SSE42;
    if (c & bit_AES)    m |= zvpCPUID_AES;
    if (c & bit_PCLMUL) m |= zvpCPUID_CLMUL;
    if (c & bit_POPCNT) m |= zvpCPUID_POPCNT;
    if (c & bit_MOVBE)  m |= zvpCPUID_MOVBE;
    if (c & bit_RDRND)  m |= zvpCPUID_RDRAND;
    // Register-state extensions count only when the OS saves the state.
    const bool osxsave = (c & bit_OSXSAVE) != 0;
    const std::uint64_t xcr0 = osxsave ? xgetbv0() : 0;
    const bool ymmOs = (xcr0 & 0x6) == 0x6;
    const bool zmmOs = ymmOs && (xcr0 & 0xE0) == 0xE0;
    if (ymmOs && (c & bit_AVX)) m |= zvpCPUID_AVX;
    if (ymmOs && (c & bit_F16C)) m |= zvpCPUID_F16C;
    if (ymmOs && (c & bit_FMA)) m |= zvpCPUID_FMA;
    if (maxLeaf >= 7) {
        unsigned a7 = 0, b7 = 0, c7 = 0, d7 = 0;
        __cpuid_count(7, 0, a7, b7, c7, d7);
        if (ymmOs && (b7 & bit_AVX2)) m |= zvpCPUID_AVX2;
        if (zmmOs && (b7 & bit_AVX512F)) m |= zvpCPUID_AVX512F;
        if (zmmOs && (b7 & bit_AVX512BW)) m |= zvpCPUID_AVX512BW;
        if (zmmOs && (b7 & bit_AVX512DQ)) m |= zvpCPUID_AVX512DQ;
        if (zmmOs && (b7 & bit_AVX512VL)) m |= zvpCPUID_AVX512VL;
        if (b7 & bit_BMI)    m |= zvpCPUID_BMI1;
        if (b7 & bit_BMI2)   m |= zvpCPUID_BMI2;
        if (b7 & bit_ADX)    m |= zvpCPUID_ADX;
        if (b7 & bit_RDSEED) m |= zvpCPUID_RDSEED;
        if (b7 & bit_SHA)    m |= zvpCPUID_SHA;
    }
    info.mask = m;
    return info;
}

// Read once when the library loads; never written afterwards.
const CpuInfo g_cpu = detect();

}  // namespace

extern "C" {

void* zvpMalloc(size_t nbytes) {
    void* p = nullptr;
    // A zero-byte request still yields a distinct block of one alignment unit.
    const std::size_t n = nbytes == 0 ? kAlign : nbytes;
    if (posix_memalign(&p, kAlign, n) != 0) return nullptr;
    return p;
}

void zvpFree(void* ptr) { std::free(ptr); }

void* zvpAlignPtr(void* ptr, int alignBytes) {
    if (alignBytes < 1) return ptr;
    const auto a = static_cast<std::uintptr_t>(alignBytes);
    const auto v = reinterpret_cast<std::uintptr_t>(ptr);
    return reinterpret_cast<void*>((v + a - 1) & ~(a - 1));
}

ZvpStatus zvpGetCpuFeatures(Zvp64u* pFeaturesMask, Zvp32u pCpuidInfoRegs[4]) {
    if (pFeaturesMask) *pFeaturesMask = g_cpu.mask;
    if (pCpuidInfoRegs)
        for (int i = 0; i < 4; ++i) pCpuidInfoRegs[i] = g_cpu.leaf1[i];
    return zvpStsNoErr;
}

Zvp64u zvpGetEnabledCpuFeatures(void) { return g_cpu.mask; }

int ownGetFeature(Zvp64u featureMask) {
    return (g_cpu.mask & featureMask) == featureMask ? 1 : 0;
}

const char* zvpGetStatusString(ZvpStatus status) {
    switch (status) {
#define ZVP_STS(code, text) case code: return #code ": " text;
        ZVP_STS(zvpStsNoErr, "no error")
        ZVP_STS(zvpStsSqrtNegArg, "square root of a negative element; the whole result was written")
        ZVP_STS(zvpStsInvZero, "inverse of a zero element is infinite; the whole result was written")
        ZVP_STS(zvpStsEvenMedianMaskSize, "even median mask size was reduced by one")
        ZVP_STS(zvpStsDivByZero, "division by a zero element; substitutes were written")
        ZVP_STS(zvpStsLnZeroArg, "logarithm of zero; -32768 was written for it")
        ZVP_STS(zvpStsLnNegArg, "logarithm of a negative element; -32768 was written for it")
        ZVP_STS(zvpStsMaxOrderNaN, "the vector holds a non-finite element")
        ZVP_STS(zvpStsBadArgErr, "an argument is out of its range")
        ZVP_STS(zvpStsSizeErr, "a length or size is out of range")
        ZVP_STS(zvpStsNullPtrErr, "a required pointer is null")
        ZVP_STS(zvpStsMemAllocErr, "memory allocation failed")
        ZVP_STS(zvpStsDivByZeroErr, "division by zero")
        ZVP_STS(zvpStsCauchyParamErr, "the Cauchy parameter is not positive")
        ZVP_STS(zvpStsDataTypeErr, "the data type is not supported")
        ZVP_STS(zvpStsIIRTapsScaleErr, "an IIR taps scale factor is negative")
        ZVP_STS(zvpStsFftOrderErr, "the FFT order is out of range")
        ZVP_STS(zvpStsFftFlagErr, "the FFT normalisation flag is not 1, 2, 4 or 8")
        ZVP_STS(zvpStsContextMatchErr, "the state or specification does not match the operation")
        ZVP_STS(zvpStsThresholdErr, "the lower threshold is above the upper one")
        ZVP_STS(zvpStsThreshNegLevelErr, "the threshold level is negative")
        ZVP_STS(zvpStsDlyLineIndexErr, "the delay-line index is out of range")
        ZVP_STS(zvpStsIIROrderErr, "the IIR order is below 1")
        ZVP_STS(zvpStsFIRLenErr, "the FIR taps length is below 1")
        ZVP_STS(zvpStsRelFreqErr, "the relative frequency is outside [0, 1)")
        ZVP_STS(zvpStsFIRMRPhaseErr, "the multi-rate FIR phase is out of range")
        ZVP_STS(zvpStsFIRMRFactorErr, "the multi-rate FIR factor is below 1")
        ZVP_STS(zvpStsSamplePhaseErr, "the sampling phase is out of range")
        ZVP_STS(zvpStsSampleFactorErr, "the sampling factor is below 1")
        ZVP_STS(zvpStsShiftErr, "the shift count is negative")
        ZVP_STS(zvpStsWtOffsetErr, "a wavelet offset is below -1")
        ZVP_STS(zvpStsTrnglAsymErr, "the triangle asymmetry is outside [-pi, pi)")
        ZVP_STS(zvpStsTrnglPhaseErr, "the triangle phase is outside [0, 2pi)")
        ZVP_STS(zvpStsTrnglFreqErr, "the triangle frequency is outside [0, 0.5)")
        ZVP_STS(zvpStsTrnglMagnErr, "the triangle magnitude is not positive")
        ZVP_STS(zvpStsTonePhaseErr, "the tone phase is out of range")
        ZVP_STS(zvpStsToneFreqErr, "the tone frequency is out of range")
        ZVP_STS(zvpStsToneMagnErr, "the tone magnitude is below 1")
        ZVP_STS(zvpStsChannelErr, "the channel count is below 1")
        ZVP_STS(zvpStsSparseTapsErr, "a sparse tap is zero or its position negative")
        ZVP_STS(zvpStsSingularErr, "the matrix is singular")
        ZVP_STS(zvpStsRoundModeNotSupportedErr, "the rounding mode is not supported")
        ZVP_STS(zvpStsAlgTypeErr, "the algorithm type is not supported")
#undef ZVP_STS
    }
    return "unknown status";
}

}  // extern "C"

// The core library and the frame: allocation, processor features, version
// record, status texts, and calls through the exported names.
#include <cpuid.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "zvpcore.h"
#include "zvps.h"

// The library's calls to the core allocator are counted by the hook.
#include "alloc_hook.h"

namespace {

int& g_coreCalls = zvp::test::alloc::calls;
size_t& g_lastBytes = zvp::test::alloc::lastBytes;

bool aligned64(const void* p) { return (reinterpret_cast<std::uintptr_t>(p) & 63) == 0; }

TEST(Alloc, TypedAllocatorsUseElementSizeAndAlign64) {
    struct Case { void* (*fn)(int); size_t elem; };
    const Case cases[] = {
        {[](int n) -> void* { return zvpsMalloc_8u(n); }, 1},
        {[](int n) -> void* { return zvpsMalloc_8s(n); }, 1},
        {[](int n) -> void* { return zvpsMalloc_16u(n); }, 2},
        {[](int n) -> void* { return zvpsMalloc_16s(n); }, 2},
        {[](int n) -> void* { return zvpsMalloc_8sc(n); }, 2},
        {[](int n) -> void* { return zvpsMalloc_32u(n); }, 4},
        {[](int n) -> void* { return zvpsMalloc_32s(n); }, 4},
        {[](int n) -> void* { return zvpsMalloc_32f(n); }, 4},
        {[](int n) -> void* { return zvpsMalloc_16sc(n); }, 4},
        {[](int n) -> void* { return zvpsMalloc_64s(n); }, 8},
        {[](int n) -> void* { return zvpsMalloc_64f(n); }, 8},
        {[](int n) -> void* { return zvpsMalloc_32sc(n); }, 8},
        {[](int n) -> void* { return zvpsMalloc_32fc(n); }, 8},
        {[](int n) -> void* { return zvpsMalloc_64sc(n); }, 16},
        {[](int n) -> void* { return zvpsMalloc_64fc(n); }, 16},
    };
    for (const Case& c : cases) {
        g_coreCalls = 0;
        void* p = c.fn(1001);
        ASSERT_NE(p, nullptr);
        EXPECT_TRUE(aligned64(p));
        EXPECT_EQ(g_coreCalls, 1);
        EXPECT_EQ(g_lastBytes, 1001 * c.elem);
        std::memset(p, 0x5A, 1001 * c.elem);  // the whole block is usable
        zvpsFree(p);

        g_coreCalls = 0;
        EXPECT_EQ(c.fn(0), nullptr);
        EXPECT_EQ(c.fn(-5), nullptr);
        EXPECT_EQ(g_coreCalls, 0) << "no core call for a length <= 0";
    }
}

TEST(Alloc, ByteCountWrapsModulo2To32) {
    g_coreCalls = 0;
    void* p = zvpsMalloc_64fc(1 << 28);  // 2^28 * 16 = 2^32 -> 0 bytes
    EXPECT_EQ(g_coreCalls, 1);
    EXPECT_EQ(g_lastBytes, 0u);
    EXPECT_NE(p, nullptr) << "a 0-byte request yields a distinct block";
    zvpsFree(p);
    p = zvpsMalloc_32f((1 << 30) + 3);  // 2^32 + 12 -> 12 bytes
    EXPECT_EQ(g_lastBytes, 12u);
    zvpsFree(p);
}

TEST(Alloc, FreeAcceptsNull) { zvpsFree(nullptr); }

TEST(Core, MallocZeroBytesIsDistinctAndAligned) {
    void* a = zvpMalloc(0);
    void* b = zvpMalloc(0);
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    EXPECT_NE(a, b);
    EXPECT_TRUE(aligned64(a));
    zvpFree(a);
    zvpFree(b);
    zvpFree(nullptr);
}

TEST(Core, AlignPtrRoundsUp) {
    alignas(64) static char buf[256];
    EXPECT_EQ(zvpAlignPtr(buf, 64), buf);
    EXPECT_EQ(zvpAlignPtr(buf + 1, 64), buf + 64);
    EXPECT_EQ(zvpAlignPtr(buf + 63, 32), buf + 64);
    EXPECT_EQ(zvpAlignPtr(buf + 17, 16), buf + 32);
    EXPECT_EQ(zvpAlignPtr(buf + 5, 1), buf + 5);
    EXPECT_EQ(zvpAlignPtr(buf + 5, 0), buf + 5);
}

TEST(Core, FeaturesMatchCpuid) {
    EXPECT_EQ(zvpGetCpuFeatures(nullptr, nullptr), zvpStsNoErr);
    Zvp64u mask = 0;
    Zvp32u regs[4] = {};
    ASSERT_EQ(zvpGetCpuFeatures(&mask, regs), zvpStsNoErr);
    unsigned a, b, c, d;
    ASSERT_TRUE(__get_cpuid(1, &a, &b, &c, &d));
    EXPECT_EQ(regs[0], a);
    EXPECT_EQ(regs[2], c);
    EXPECT_EQ(regs[3], d);
    EXPECT_EQ(mask, zvpGetEnabledCpuFeatures());
    EXPECT_EQ(!!(mask & zvpCPUID_SSE42), !!(c & bit_SSE4_2));
    EXPECT_EQ(!!(mask & zvpCPUID_SSE41), !!(c & bit_SSE4_1));
    EXPECT_EQ(!!(mask & zvpCPUID_SSSE3), !!(c & bit_SSSE3));
    EXPECT_EQ(!!(mask & zvpCPUID_SSE2), !!(d & bit_SSE2));
    EXPECT_EQ(!!(mask & zvpCPUID_AVX), __builtin_cpu_supports("avx") != 0);
    EXPECT_EQ(!!(mask & zvpCPUID_AVX2), __builtin_cpu_supports("avx2") != 0);
    // ownGetFeature: all requested bits present.
    EXPECT_EQ(ownGetFeature(0), 1);
    EXPECT_EQ(ownGetFeature(mask), 1);
    EXPECT_EQ(ownGetFeature(zvpCPUID_SSE42), !!(mask & zvpCPUID_SSE42));
    EXPECT_EQ(ownGetFeature(Zvp64u(1) << 63), 0);
}

TEST(Version, RecordFieldsAndTexts) {
    const ZvpLibraryVersion* v = zvpsGetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v, zvpsGetLibVersion()) << "the same record on every call";
    EXPECT_EQ(v->major, 8);
    EXPECT_EQ(v->minor, 2);
    EXPECT_EQ(v->patch, 1);
    EXPECT_EQ(v->revision, 44077);
    EXPECT_EQ(std::memcmp(v->targetCpu, "p8\0\0", 4), 0);
    EXPECT_STREQ(v->versionText, "8.2.1 (r44077)");
    EXPECT_STREQ(v->buildDate, "Oct  9 2014");
    EXPECT_STREQ(v->name, ownGetFeature(0x80) ? "zvpSP SSE4.1/4.2 (p8)+" : "zvpSP SSE4.1/4.2 (p8)");
}

TEST(Status, EveryStatusHasNameAndMeaning) {
    const std::vector<std::pair<int, const char*>> all = {
        {0, "zvpStsNoErr"}, {3, "zvpStsSqrtNegArg"}, {4, "zvpStsInvZero"},
        {5, "zvpStsEvenMedianMaskSize"}, {6, "zvpStsDivByZero"}, {7, "zvpStsLnZeroArg"},
        {8, "zvpStsLnNegArg"}, {9, "zvpStsMaxOrderNaN"}, {-5, "zvpStsBadArgErr"},
        {-6, "zvpStsSizeErr"}, {-8, "zvpStsNullPtrErr"}, {-9, "zvpStsMemAllocErr"},
        {-10, "zvpStsDivByZeroErr"}, {-11, "zvpStsCauchyParamErr"}, {-12, "zvpStsDataTypeErr"},
        {-13, "zvpStsIIRTapsScaleErr"}, {-15, "zvpStsFftOrderErr"}, {-16, "zvpStsFftFlagErr"},
        {-17, "zvpStsContextMatchErr"}, {-18, "zvpStsThresholdErr"},
        {-19, "zvpStsThreshNegLevelErr"}, {-24, "zvpStsDlyLineIndexErr"},
        {-25, "zvpStsIIROrderErr"}, {-26, "zvpStsFIRLenErr"}, {-27, "zvpStsRelFreqErr"},
        {-28, "zvpStsFIRMRPhaseErr"}, {-29, "zvpStsFIRMRFactorErr"},
        {-30, "zvpStsSamplePhaseErr"}, {-31, "zvpStsSampleFactorErr"}, {-32, "zvpStsShiftErr"},
        {-35, "zvpStsWtOffsetErr"}, {-40, "zvpStsTrnglAsymErr"}, {-41, "zvpStsTrnglPhaseErr"},
        {-42, "zvpStsTrnglFreqErr"}, {-43, "zvpStsTrnglMagnErr"}, {-44, "zvpStsTonePhaseErr"},
        {-45, "zvpStsToneFreqErr"}, {-46, "zvpStsToneMagnErr"}, {-53, "zvpStsChannelErr"},
        {-194, "zvpStsSparseTapsErr"}, {-195, "zvpStsSingularErr"},
        {-213, "zvpStsRoundModeNotSupportedErr"}, {-228, "zvpStsAlgTypeErr"},
    };
    for (const auto& [code, name] : all) {
        const std::string s = zvpGetStatusString(static_cast<ZvpStatus>(code));
        EXPECT_EQ(s.rfind(std::string(name) + ": ", 0), 0u) << code << " -> " << s;
        EXPECT_GT(s.size(), std::strlen(name) + 4);
    }
    EXPECT_STREQ(zvpGetStatusString(static_cast<ZvpStatus>(-1000)), "unknown status");
}

TEST(Exports, CallThroughExportedNameReachesImplementation) {
    void* lib = dlopen("libzvpsp8.so.8", RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(lib, nullptr) << dlerror();
    using Fn = ZvpStatus (*)(const Zvp32f*, Zvp32f*, int);
    auto fn = reinterpret_cast<Fn>(dlsym(lib, "zvpsFlip_32f"));
    ASSERT_NE(fn, nullptr);
    const Zvp32f src[3] = {1, 2, 3};
    Zvp32f dst[3] = {};
    EXPECT_EQ(fn(src, dst, 3), zvpStsNoErr);
    EXPECT_EQ(dst[0], 3);
    EXPECT_EQ(dst[2], 1);
    EXPECT_EQ(fn(src, nullptr, 3), zvpStsNullPtrErr);
    // The slots and the implementations stay private.
    EXPECT_EQ(dlsym(lib, "zvpsFlip_32f_arraddr"), nullptr);
    EXPECT_EQ(dlsym(lib, "zvpJumpIndexForMergedDLL"), nullptr);
    dlclose(lib);
}

// Check order and refused parameters are the shape table's.
TEST(Cauchy, Values) {
    Zvp32f v[3] = {0.0f, 1.0f, -10.0f};
    ASSERT_EQ(zvpsCauchy_32f_I(v, 3, 2.0f), zvpStsNoErr);
    EXPECT_EQ(v[0], 0.0f);
    EXPECT_NEAR(v[1], 2.0 * std::log(1.25), 1e-6);
    EXPECT_NEAR(v[2], 2.0 * std::log(26.0), 1e-5);
}

}  // namespace

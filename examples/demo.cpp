// zvpSP demo: what the library is, what the processor offers, and a short
// signal chain built from the library's operations.
#include <cstdio>
#include <cstring>

#include "zvpcore.h"
#include "zvps.h"

namespace {

void section(const char* title) { std::printf("\n== %s ==\n", title); }

void showVersion() {
    section("Library");
    const ZvpLibraryVersion* v = zvpsGetLibVersion();
    std::printf("%s\nversion %d.%d.%d, revision %d (\"%s\"), built %s, target %s\n", v->name,
                v->major, v->minor, v->patch, v->revision, v->versionText, v->buildDate,
                v->targetCpu);
}

void showCpu() {
    section("Processor");
    Zvp64u mask = 0;
    Zvp32u regs[4] = {};
    zvpGetCpuFeatures(&mask, regs);
    static const struct { Zvp64u bit; const char* name; } names[] = {
        {zvpCPUID_MMX, "MMX"},       {zvpCPUID_SSE, "SSE"},         {zvpCPUID_SSE2, "SSE2"},
        {zvpCPUID_SSE3, "SSE3"},     {zvpCPUID_SSSE3, "SSSE3"},     {zvpCPUID_SSE41, "SSE4.1"},
        {zvpCPUID_SSE42, "SSE4.2"},  {zvpCPUID_AVX, "AVX"},         {zvpCPUID_AVX2, "AVX2"},
        {zvpCPUID_AVX512F, "AVX-512F"}, {zvpCPUID_FMA, "FMA"},      {zvpCPUID_F16C, "F16C"},
        {zvpCPUID_POPCNT, "POPCNT"}, {zvpCPUID_AES, "AES"},         {zvpCPUID_CLMUL, "CLMUL"},
        {zvpCPUID_BMI2, "BMI2"},
    };
    std::printf("feature mask 0x%llx:", static_cast<unsigned long long>(mask));
    for (const auto& n : names)
        if (mask & n.bit) std::printf(" %s", n.name);
    std::printf("\nCPUID leaf 1: eax=%08x ebx=%08x ecx=%08x edx=%08x\n", regs[0], regs[1], regs[2],
                regs[3]);
    std::printf("the p8 code needs SSE4.2: %s\n", ownGetFeature(zvpCPUID_SSE42) ? "present" : "MISSING");
}

void showStatuses() {
    section("Status codes");
    const ZvpStatus codes[] = {zvpStsNoErr,     zvpStsDivByZero,    zvpStsSizeErr,
                               zvpStsNullPtrErr, zvpStsFftOrderErr, zvpStsContextMatchErr};
    for (ZvpStatus s : codes) std::printf("%5d  %s\n", static_cast<int>(s), zvpGetStatusString(s));
    // Checks come in a fixed order: pointers before lengths.
    std::printf("zvpsZero_32f(NULL, 0) -> %s\n", zvpGetStatusString(zvpsZero_32f(nullptr, 0)));
    Zvp32f one = 0;
    std::printf("zvpsZero_32f(&x, 0)   -> %s\n", zvpGetStatusString(zvpsZero_32f(&one, 0)));
}

void showCopies() {
    section("Vectors and bit strings");
    Zvp32f* v = zvpsMalloc_32f(8);
    Zvp32f* r = zvpsMalloc_32f(8);
    if (!v || !r) {
        std::printf("allocation failed\n");
        zvpsFree(v);
        zvpsFree(r);
        return;
    }
    zvpsSet_32f(0.25f, v, 8);
    for (int i = 0; i < 8; ++i) v[i] += static_cast<Zvp32f>(i);
    zvpsFlip_32f(v, r, 8);
    std::printf("ramp   :");
    for (int i = 0; i < 8; ++i) std::printf(" %5.2f", v[i]);
    std::printf("\nflipped:");
    for (int i = 0; i < 8; ++i) std::printf(" %5.2f", r[i]);
    zvpsMove_32f(v, v + 2, 6);  // overlapping move to the right
    std::printf("\nmoved  :");
    for (int i = 0; i < 8; ++i) std::printf(" %5.2f", v[i]);
    std::printf("\n");
    zvpsFree(v);
    zvpsFree(r);

    const Zvp8u src[2] = {0x03, 0x80};  // bits 6, 7 of byte 0 and bit 0 of byte 1 set
    Zvp8u dst = 0x15;
    zvpsCopy_1u(src, 6, &dst, 0, 3);
    std::printf("3 bits from offset 6 into 0x15 -> 0x%02x\n", dst);
}

}  // namespace

int main() {
    std::printf("zvpSP demo\n");
    showVersion();
    showCpu();
    showStatuses();
    showCopies();
    return 0;
}

// Load-time initialisation of the library.
#include "frame.h"

#include "zvpcore.h"

// Whether the merged-variant index applies on this processor. Written once by
// the initialiser below; nothing else in the library reads it.
extern "C" {
int zvpJumpIndexForMergedDLL = 0;
}

namespace zvp::ZVP_LEVEL::frame {

int jumpIndexFor(Zvp64u features) {
    const Zvp64u both = zvpCPUID_SSSE3 | zvpCPUID_SSE41;  // bits 0x10 and 0x20
    return (features & both) == both ? 1 : 0;
}

int mergedIndex() { return zvpJumpIndexForMergedDLL; }

namespace {

int initLibrary() {
    zvpGetCpuFeatures(nullptr, nullptr);
    zvpJumpIndexForMergedDLL = jumpIndexFor(zvpGetEnabledCpuFeatures());
    return 1;
}

// Runs when the library is loaded, after the core library it imports.
[[maybe_unused]] const int g_initialised = initLibrary();

}  // namespace

}  // namespace zvp::ZVP_LEVEL::frame

// Typed vector allocation over the core allocator. The byte count is
// length x element size in unsigned 32-bit arithmetic: there is deliberately
// no overflow check, so a count beyond 32 bits wraps modulo 2^32.
#include <cstdint>

#include "zvpcore.h"
#include "p8/frame.h"

namespace zvp::p8 {
namespace {

template <class T>
T* allocate(int len) {
    if (len <= 0) return nullptr;
    const std::uint32_t bytes = std::uint32_t(len) * std::uint32_t(sizeof(T));
    return static_cast<T*>(zvpMalloc(bytes));
}

}  // namespace

#define ZVP_MALLOC(T) \
    Zvp##T* zvpsMalloc_##T(int len) { return allocate<Zvp##T>(len); }
ZVP_MALLOC(8u)
ZVP_MALLOC(8s)
ZVP_MALLOC(16u)
ZVP_MALLOC(16s)
ZVP_MALLOC(8sc)
ZVP_MALLOC(32u)
ZVP_MALLOC(32s)
ZVP_MALLOC(32f)
ZVP_MALLOC(16sc)
ZVP_MALLOC(64s)
ZVP_MALLOC(64f)
ZVP_MALLOC(32sc)
ZVP_MALLOC(32fc)
ZVP_MALLOC(64sc)
ZVP_MALLOC(64fc)
#undef ZVP_MALLOC

void zvpsFree(void* ptr) { zvpFree(ptr); }

}  // namespace zvp::p8

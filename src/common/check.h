// Argument checks shared by every operation. Each exported implementation
// runs them in the library's fixed order: pointers (-8), then lengths (-6),
// then its own values, then the identity tag of a state record (-17).
#pragma once

#include <cstddef>

#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL {

template <class... P>
constexpr bool anyNull(const P*... p) noexcept {
    return ((p == nullptr) || ...);
}

template <class... L>
constexpr bool anyBelowOne(L... len) noexcept {
    return ((len < 1) || ...);
}

// A length read as an unsigned count: 0 is refused, and a negative length is
// the count 2^32 + len, more elements than a 32-bit address space holds, so
// only a 64-bit build accepts it. Returns the count, or 0 when refused.
constexpr std::size_t unsignedCount(int len) noexcept {
    if (len == 0 || (len < 0 && sizeof(void*) < 8)) return 0;
    return std::size_t(static_cast<unsigned>(len));
}

}  // namespace zvp::ZVP_LEVEL

// Return zvpStsNullPtrErr if any listed pointer is null.
#define ZVP_CHECK_PTRS(...)                                              \
    do {                                                                 \
        if (::zvp::ZVP_LEVEL::anyNull(__VA_ARGS__)) return zvpStsNullPtrErr;        \
    } while (0)

// Return zvpStsSizeErr if any listed length is below 1.
#define ZVP_CHECK_LENS(...)                                              \
    do {                                                                 \
        if (::zvp::ZVP_LEVEL::anyBelowOne(__VA_ARGS__)) return zvpStsSizeErr;       \
    } while (0)

// Propagate a non-success status (error or warning) from a nested call.
#define ZVP_RETURN_IF_ERROR(expr)                                        \
    do {                                                                 \
        const ZvpStatus zvp_st_ = (expr);                                \
        if (zvp_st_ < 0) return zvp_st_;                                 \
    } while (0)

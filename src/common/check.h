// Argument checks shared by every operation. Each exported implementation
// runs them in the library's fixed order: pointers (-8), then lengths (-6),
// then its own values, then the identity tag of a state record (-17).
#pragma once

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

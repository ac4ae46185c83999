// Copy and Zero for any integer element type, through the library's Copy
// and Zero operation of the type with the same width (8u, 16s, 32s, 64s):
// they move bits, so the signedness does not matter. Their checks and
// status are those of that operation.
#pragma once

#include <type_traits>

#include "level.h"
#include "p8/copy.h"

namespace zvp::ZVP_LEVEL {

template <class T>
using SameBits = std::conditional_t<
    sizeof(T) == 1, Zvp8u,
    std::conditional_t<sizeof(T) == 2, Zvp16s, std::conditional_t<sizeof(T) == 4, Zvp32s, Zvp64s>>>;

template <class T>
ZvpStatus copySameBits(const T* s, T* d, int len) {
    using S = SameBits<T>;
    const auto* ss = reinterpret_cast<const S*>(s);
    auto* dd = reinterpret_cast<S*>(d);
    if constexpr (sizeof(T) == 1) return zvpsCopy_8u(ss, dd, len);
    else if constexpr (sizeof(T) == 2) return zvpsCopy_16s(ss, dd, len);
    else if constexpr (sizeof(T) == 4) return zvpsCopy_32s(ss, dd, len);
    else return zvpsCopy_64s(ss, dd, len);
}

template <class T>
ZvpStatus zeroSameBits(T* d, int len) {
    using S = SameBits<T>;
    auto* dd = reinterpret_cast<S*>(d);
    if constexpr (sizeof(T) == 1) return zvpsZero_8u(dd, len);
    else if constexpr (sizeof(T) == 2) return zvpsZero_16s(dd, len);
    else if constexpr (sizeof(T) == 4) return zvpsZero_32s(dd, len);
    else return zvpsZero_64s(dd, len);
}

}  // namespace zvp::ZVP_LEVEL

// Identity tags of the FIR state records: 0x4649 followed by two digits.
#pragma once

#include <cstdint>

#include "level.h"

namespace zvp::ZVP_LEVEL::fir {

constexpr std::int32_t tagOf(char a, char b) { return 0x46490000 | (std::int32_t(a) << 8) | std::int32_t(b); }

inline constexpr std::int32_t kTagMrStream32f = tagOf('3', '4');

}  // namespace zvp::ZVP_LEVEL::fir

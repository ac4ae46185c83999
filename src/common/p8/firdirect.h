// Declarations of the p8 implementations of the exports listed in
// exports/firdirect.def, with exactly the function types of their public
// declarations. Sources that implement or call this family include it.
#pragma once

#include <type_traits>

#include "zvps_firdirect.h"

namespace zvp::p8 {
#define X(name) std::remove_pointer_t<decltype(&::name)> name;
#include "exports/firdirect.def"
#undef X
}  // namespace zvp::p8

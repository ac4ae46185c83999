// Declarations of the p8 implementations of every export, with exactly the
// function types of the public declarations. Library code that builds on
// another operation calls it here (zvp::p8::zvpsCopy_16s) rather than through
// the exported forwarder.
#pragma once

#include <type_traits>

#include "zvps.h"

namespace zvp::p8 {
#define X(name) std::remove_pointer_t<decltype(&::name)> name;
#include "exports.def"
#undef X
}  // namespace zvp::p8

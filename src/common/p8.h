// Declarations of the p8 implementations of every export, with exactly the
// function types of the public declarations; slots.cpp takes their
// addresses. Implementation sources include the declarations of one family
// from p8/<family>.h instead, so that an edit to one family's export list
// rebuilds that family and not the whole library.
#pragma once

#include <type_traits>

#include "zvps.h"

namespace zvp::p8 {
#define X(name) std::remove_pointer_t<decltype(&::name)> name;
#include "exports.def"
#undef X
}  // namespace zvp::p8

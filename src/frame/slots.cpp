// The pointer slots behind the forwarders, one per export, named
// <export>_arraddr. Each slot is a constant initialised with the address of
// the p8 implementation, so the dynamic loader fills it while the library
// loads and it is read-only from then on.
//
// p8.h declares the implementations with the exact function type of the
// public declaration; an implementation defined with any other parameter
// list has a different mangled name and the library fails to link.
#include "p8.h"

extern "C" {
#define X(name)                                   \
    extern decltype(&::name) const name##_arraddr; \
    decltype(&::name) const name##_arraddr = &zvp::p8::name;
#include "exports.def"
#undef X
}

// The core allocator as the library sees it from a test program: the test
// executable (built with ENABLE_EXPORTS) defines zvpMalloc and zvpFree, so
// the library's calls land here first, are counted, and can be made to fail
// at the k-th call, before being passed on to the core library.
// Include in exactly one source file of an executable; other sources of it
// include alloc_count.h.
#pragma once

#include <dlfcn.h>

#include <cstddef>

#include "alloc_count.h"

extern "C" __attribute__((visibility("default"))) void* zvpMalloc(std::size_t nbytes) {
    using Fn = void* (*)(std::size_t);
    static Fn real = reinterpret_cast<Fn>(dlsym(RTLD_NEXT, "zvpMalloc"));
    namespace a = zvp::test::alloc;
    a::lastBytes = nbytes;
    if (++a::calls == a::failAt) return nullptr;
    void* p = real(nbytes);
    if (p) ++a::live;
    return p;
}

extern "C" __attribute__((visibility("default"))) void zvpFree(void* p) {
    using Fn = void (*)(void*);
    static Fn real = reinterpret_cast<Fn>(dlsym(RTLD_NEXT, "zvpFree"));
    if (p) --zvp::test::alloc::live;
    real(p);
}

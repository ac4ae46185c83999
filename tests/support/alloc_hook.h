// The core allocator as the library sees it from a test program: the test
// executable (built with ENABLE_EXPORTS) defines zvpMalloc and zvpFree, so
// the library's calls land here first, are counted, and can be made to fail
// at the k-th call, before being passed on to the core library.
// Include in exactly one source file of an executable.
#pragma once

#include <dlfcn.h>

#include <cstddef>

namespace zvp::test::alloc {
inline int calls = 0;        // zvpMalloc calls since reset()
inline int failAt = 0;       // the call (1-based) that returns null; 0: none
inline int live = 0;         // blocks handed out and not yet freed
inline std::size_t lastBytes = 0;
inline void reset(int failOn = 0) {
    calls = 0;
    live = 0;
    failAt = failOn;
}
}  // namespace zvp::test::alloc

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

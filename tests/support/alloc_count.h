// Counters of the test allocator hook (alloc_hook.h): include this in any
// source of a test executable that watches or fails the library's
// allocations; exactly one source of that executable includes alloc_hook.h.
#pragma once

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

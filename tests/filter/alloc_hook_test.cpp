// The allocator hook of this test executable: its tests make the library's
// allocations fail at a chosen call and count the blocks still held.
#include "alloc_hook.h"

// Work memory taken from the library allocator and released on every path.
#pragma once

#include <cstddef>
#include <cstdint>

#include "level.h"
#include "p8/frame.h"

namespace zvp::ZVP_LEVEL {

class WorkBuffer {
public:
    WorkBuffer() = default;
    // Allocates nbytes (positive) with zvpsMalloc_8u; ok() tells whether it worked.
    explicit WorkBuffer(int nbytes) { allocate(nbytes); }
    WorkBuffer(const WorkBuffer&) = delete;
    WorkBuffer& operator=(const WorkBuffer&) = delete;
    ~WorkBuffer() { release(); }

    bool allocate(int nbytes) {
        release();
        p_ = nbytes > 0 ? p8::zvpsMalloc_8u(nbytes) : nullptr;
        return p_ != nullptr;
    }
    void release() {
        if (p_) p8::zvpsFree(p_);
        p_ = nullptr;
    }
    bool ok() const { return p_ != nullptr; }
    Zvp8u* get() const { return p_; }
    template <class T>
    T* as() const { return reinterpret_cast<T*>(p_); }

private:
    Zvp8u* p_ = nullptr;
};

// Rounds a pointer up to a multiple of align (a power of two).
template <class T>
inline T* alignUp(T* p, std::size_t align) {
    auto v = reinterpret_cast<std::uintptr_t>(p);
    return reinterpret_cast<T*>((v + align - 1) & ~(std::uintptr_t(align) - 1));
}

}  // namespace zvp::ZVP_LEVEL

// Sets the SSE rounding control for the lifetime of the guard, with
// flush-to-zero and denormals-are-zero off, and restores the caller's MXCSR
// afterwards. Kernels whose integer results pass through float arithmetic
// hold one, so the results never depend on the caller's floating-point state.
#pragma once

#include <xmmintrin.h>
#include "level.h"

namespace zvp::ZVP_LEVEL {

class MxcsrGuard {
public:
    // Rounding-control values of MXCSR bits 13-14.
    static constexpr unsigned kNearest = 0x0000;
    static constexpr unsigned kDown = 0x2000;
    static constexpr unsigned kUp = 0x4000;
    static constexpr unsigned kTowardZero = 0x6000;
    // Flush-to-zero (bit 15) and denormals-are-zero (bit 6).
    static constexpr unsigned kFlushBits = 0x8040;

    explicit MxcsrGuard(unsigned roundingControl) : saved_(_mm_getcsr()) {
        _mm_setcsr((saved_ & ~(0x6000u | kFlushBits)) | roundingControl);
    }
    // Exception masks (bits 7-12) and the zero-divide status flag (bit 2).
    static constexpr unsigned kMaskAll = 0x1F80;
    static constexpr unsigned kZeroDivideFlag = 0x0004;
    // Clears the bits of `clearBits`, then sets those of `setBits`; the
    // caller's word still comes back whole.
    struct Bits {
        unsigned clearBits, setBits;
    };
    explicit MxcsrGuard(Bits b) : saved_(_mm_getcsr()) { _mm_setcsr((saved_ & ~b.clearBits) | b.setBits); }
    MxcsrGuard(const MxcsrGuard&) = delete;
    MxcsrGuard& operator=(const MxcsrGuard&) = delete;
    ~MxcsrGuard() { _mm_setcsr(saved_); }

private:
    unsigned saved_;
};

}  // namespace zvp::ZVP_LEVEL

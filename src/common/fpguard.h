// Sets the SSE rounding/flush control for the lifetime of the guard and
// restores the caller's MXCSR afterwards.
#pragma once

#include <xmmintrin.h>

namespace zvp {

class MxcsrGuard {
public:
    // Rounding-control values of MXCSR bits 13-14.
    static constexpr unsigned kNearest = 0x0000;
    static constexpr unsigned kDown = 0x2000;
    static constexpr unsigned kUp = 0x4000;
    static constexpr unsigned kTowardZero = 0x6000;

    explicit MxcsrGuard(unsigned roundingControl) : saved_(_mm_getcsr()) {
        _mm_setcsr((saved_ & ~0x6000u) | roundingControl);
    }
    MxcsrGuard(const MxcsrGuard&) = delete;
    MxcsrGuard& operator=(const MxcsrGuard&) = delete;
    ~MxcsrGuard() { _mm_setcsr(saved_); }

private:
    unsigned saved_;
};

}  // namespace zvp

// The normalisation flag shared by every transform record: which directions
// multiply by the scale, and the scale in both precisions, for n points.
#pragma once

#include <cmath>
#include <cstdint>

#include "level.h"
#include "zvps_fft.h"

namespace zvp::ZVP_LEVEL {

// Fills fwdScaled, invScaled, scale and scale64 of a record header; false
// (nothing written) for a flag that is none of the four.
template <class Header>
bool setScaling(Header* h, int flag, std::int64_t n) {
    switch (flag) {
        case ZVP_FFT_DIV_FWD_BY_N:
        case ZVP_FFT_DIV_INV_BY_N:
            h->fwdScaled = flag == ZVP_FFT_DIV_FWD_BY_N;
            h->invScaled = flag == ZVP_FFT_DIV_INV_BY_N;
            h->scale = 1.0f / float(n);
            h->scale64 = 1.0 / double(n);
            return true;
        case ZVP_FFT_DIV_BY_SQRTN:
            h->fwdScaled = h->invScaled = 1;
            h->scale = float(1.0 / std::sqrt(double(n)));
            h->scale64 = 1.0 / std::sqrt(double(n));
            return true;
        case ZVP_FFT_NODIV_BY_ANY:
            return true;
        default:
            return false;
    }
}

}  // namespace zvp::ZVP_LEVEL

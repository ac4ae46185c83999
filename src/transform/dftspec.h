// The DFT specification record: identity tags, the fixed leading part and the
// methods a record can run. The record lives at a 64-byte boundary of the
// memory given to initialisation; every reference from the record to its
// tables is a 32-bit byte offset from the record's start, so a record can be
// embedded in another one (the inner transform of the chirp method is).
#pragma once

#include <cstdint>

#include "level.h"

namespace zvp::ZVP_LEVEL::dft {

enum : std::int32_t {
    kTagC32fc = 13,
    kTagC32f = 14,
    kTagR32f = 15,
    kTagC64fc = 16,
    kTagC64f = 17,
    kTagR64f = 18,
    kTagOutOrd32fc = 1129136458,
    kTagOutOrd64fc = 1129136459,
};

// Shape of the data a record serves: interleaved complex, split complex, or
// real with a packed half spectrum.
enum class Kind { Inter, Split, Real };

enum Method : std::int32_t {
    kSmall = 1,   // lengths up to 16, no tables
    kFft = 2,     // powers of two: an embedded FFT record
    kPrime = 3,   // mixed radix over the factor list
    kDirect = 4,  // O(L^2) from a table of the L roots
    kConv = 5,    // chirp convolution through an inner DFT of length M
    kHalf = 6,    // real records of even length: a complex DFT of L/2 points
};

constexpr int kMaxFactors = 28;
constexpr std::int32_t kFixedPart = 576;
constexpr std::int64_t kMaxLength = 134217727;
constexpr std::int64_t kMaxConvLength = 67108863;

struct Header {
    std::int32_t tag;        // identity tag; 0 when released
    std::int32_t length;     // L
    std::int32_t fwdScaled;  // 1: the forward transform multiplies by scale
    std::int32_t invScaled;  // 1: the inverse transform multiplies by scale
    float scale;             // single-precision scale (0 for flag 8)
    std::int32_t hint;       // stored as given
    std::int32_t workSize;   // work bytes a transform needs after alignment (0: none)
    std::int32_t fftSwitch;  // 1: the embedded FFT record does the work
    std::int32_t dirOff;     // direct method: the L roots exp(-2 pi i k / L)
    std::int32_t chirpOff;   // chirp method: c[n], L values
    std::int32_t filterOff;  // chirp method: transformed chirp filter h, M values
    std::int32_t twdOff;     // mixed radix: stage twiddles, then factor roots
    std::int32_t pfSwitch;   // 1: mixed radix over factors[]
    std::int32_t innerOff;   // embedded FFT record or inner DFT record
    std::int32_t allocated;  // 1: built by InitAlloc, released with the block
    std::int32_t baseOffset; // record address minus the allocated block's base
    std::int32_t method;     // Method
    std::int32_t convLength; // M of the chirp method
    std::int32_t nFactors;
    std::int32_t factors[kMaxFactors];
    std::int32_t recOff;     // real records of even length: exp(-2 pi i k / L), k < L/2
    std::int32_t reserved[2];
    double scale64;          // double-precision scale of the 64-bit types
    std::int32_t reserved4[2];
    // small lengths that are not powers of two: the twiddles of their
    // (at most two) factors, in the record's precision
    alignas(16) unsigned char small[16 * 16];
};
static_assert(sizeof(Header) <= kFixedPart, "the fixed part of the record is 576 bytes");

constexpr std::int64_t up64(std::int64_t v) { return (v + 63) & ~std::int64_t(63); }

// Length of the chirp method's convolution for a length L: the first entry
// of the table not below 2L - 1, past the table the next power of two.
constexpr std::int64_t kConvLengths[31] = {128,  144,  160,  192,  200,  256,  288,  320,
                                           384,  400,  512,  576,  640,  768,  800,  1024,
                                           1152, 1280, 1536, 1600, 2048, 2304, 2560, 3072,
                                           3200, 4096, 4608, 5120, 6144, 6400, 8192};
constexpr std::int64_t convLength(std::int64_t L) {
    const std::int64_t t = 2 * L - 1;
    if (t > 8192) {
        std::int64_t m = 1;
        while (m < t) m *= 2;
        return m;
    }
    for (std::int64_t m : kConvLengths)
        if (m >= t) return m;
    return 8192;
}

// Factor list of the mixed-radix method: the 4s, a 2 in front of them, odd
// factors up to 50 in increasing order (a 3 meeting the list (2) merges with
// it into 6), and the remainder as the last factor, at most 150 when 4
// divides L, else 50. Returns the count, or 0 when the length is unsuitable.
inline int factorize(std::int64_t L, std::int32_t* f) {
    int n = 0;
    std::int64_t u = L;
    while (u % 4 == 0) {
        f[n++] = 4;
        u /= 4;
    }
    if (u % 2 == 0) {
        for (int i = n; i > 0; --i) f[i] = f[i - 1];
        f[0] = 2;
        ++n;
        u /= 2;
    }
    auto push = [&](std::int64_t p) {
        if (p == 3 && n == 1 && f[0] == 2) f[0] = 6;
        else f[n++] = std::int32_t(p);
    };
    if (u > 8) {
        std::int64_t p = 3;
        while (p * p <= u) {
            if (u % p == 0) {
                push(p);
                u /= p;
            } else {
                p += 2;
                if (p > 50) return 0;
            }
        }
    }
    if (n == 0) return 0;
    if (u > (L % 4 == 0 ? 150 : 50)) return 0;
    if (u > 1) push(u);
    return n;
}

}  // namespace zvp::ZVP_LEVEL::dft

// The lane layer: every kernel reaches SIMD through it.
//
//   Lane<T, B>   B bytes of elements of type T held in one register.
//                B = 16 is a full 128-bit vector; a smaller power of two
//                (down to sizeof(T)) holds its elements in the low lanes of
//                the same register and loads and stores only those.
//   Full<T>      Lane<T, 16>
//   One<T>       one element: the scalar form of the same kernel
//   Lanes<T, n>  the first n elements (One<Zvp32f pair> = Lanes<float, 2>)
//
// Every Lane<T, B> has the same interface, so a kernel written once as a
// template over its lane type runs its body at Full<T> and its tail at
// One<T> (or at one complex pair), and the two agree bit for bit by
// construction: they are the same instructions on fewer lanes. A kernel never
// spells a count; it reads L::N.
//
// Members common to every lane type (R is the register type, M a mask of
// whole lanes, all ones or all zeros):
//   T, R, N                       element type, register, number of lanes
//   load(p) / store(p, v)         N elements, any alignment
//   loada(p) / storea(p, v)       N elements, p aligned to B
//   stream(p, v)                  non-temporal store (full lanes; otherwise store)
//   loadN(p, n) / storeN(p, v, n) the first n <= N elements, the rest zero
//   set1(x), zero(), pair(x0, x1) x in every lane; zeros; x0, x1 alternating
//   add sub min max  and_ or_ xor_ andnot(a, b) = ~a & b
//   eq ... (compares, giving M), blend(a, b, m) = m ? b : a, anyOf(m),
//   firstOf(m)                    the first set lane of m (N if none)
// Float and double lanes (lane_float.h) add mul, div, sqrt, abs, neg and the
// helpers of complex data stored as (re, im) pairs:
//   swapReIm, dupRe, dupIm, addsub (a - b in re lanes, a + b in im lanes),
//   conj, cmul(a, b), cmulPair(a, c, cSwapped) (a times a constant pair),
//   reversePairs, and at full width deinterleave / interleave / transpose.
// Integer lanes (lane_int.h) add saturating arithmetic, shifts, widening and
// narrowing, and lane_scale.h builds the integer scaling rule on them.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "level.h"

namespace zvp::ZVP_LEVEL {

template <class T, int B>
struct Lane;

template <class T>
using Full = Lane<T, 16>;
template <class T>
using One = Lane<T, int(sizeof(T))>;
template <class T, int n>
using Lanes = Lane<T, n * int(sizeof(T))>;

namespace lanemem {

// Loads and stores of the low B bytes of a 128-bit register; loads clear
// the bytes above B.
template <int B>
inline __m128i load(const void* p) {
    static_assert(B == 1 || B == 2 || B == 4 || B == 8 || B == 16);
    if constexpr (B == 16) {
        return _mm_loadu_si128(static_cast<const __m128i*>(p));
    } else if constexpr (B == 8) {
        return _mm_loadl_epi64(static_cast<const __m128i*>(p));
    } else if constexpr (B == 4) {
        std::int32_t x;
        std::memcpy(&x, p, 4);
        return _mm_cvtsi32_si128(x);
    } else if constexpr (B == 2) {
        std::uint16_t x;
        std::memcpy(&x, p, 2);
        return _mm_cvtsi32_si128(x);
    } else {
        return _mm_cvtsi32_si128(*static_cast<const std::uint8_t*>(p));
    }
}

template <int B>
inline void store(void* p, __m128i v) {
    static_assert(B == 1 || B == 2 || B == 4 || B == 8 || B == 16);
    if constexpr (B == 16) {
        _mm_storeu_si128(static_cast<__m128i*>(p), v);
    } else if constexpr (B == 8) {
        _mm_storel_epi64(static_cast<__m128i*>(p), v);
    } else if constexpr (B == 4) {
        const std::int32_t x = _mm_cvtsi128_si32(v);
        std::memcpy(p, &x, 4);
    } else if constexpr (B == 2) {
        const std::uint16_t x = std::uint16_t(_mm_cvtsi128_si32(v));
        std::memcpy(p, &x, 2);
    } else {
        *static_cast<std::uint8_t*>(p) = std::uint8_t(_mm_cvtsi128_si32(v));
    }
}

template <int B>
inline __m128i loada(const void* p) {
    if constexpr (B == 16) return _mm_load_si128(static_cast<const __m128i*>(p));
    else return load<B>(p);
}
template <int B>
inline void storea(void* p, __m128i v) {
    if constexpr (B == 16) _mm_store_si128(static_cast<__m128i*>(p), v);
    else store<B>(p, v);
}

// The first n bytes (n <= B) through a zeroed buffer.
template <int B>
inline __m128i loadBytes(const void* p, std::size_t n) {
    alignas(16) unsigned char b[16] = {};
    std::memcpy(b, p, n);
    return _mm_load_si128(reinterpret_cast<const __m128i*>(b));
}
template <int B>
inline void storeBytes(void* p, __m128i v, std::size_t n) {
    alignas(16) unsigned char b[16];
    _mm_store_si128(reinterpret_cast<__m128i*>(b), v);
    std::memcpy(p, b, n);
}

}  // namespace lanemem

// Whether p is aligned to a full vector.
inline bool alignedFull(const void* p) {
    return (reinterpret_cast<std::uintptr_t>(p) & 15) == 0;
}

}  // namespace zvp::ZVP_LEVEL

#include "lane_float.h"
#include "lane_int.h"

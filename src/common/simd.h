// Thin helpers over the SSE4.1/4.2 intrinsics used by the kernels.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace zvp::simd {

inline bool aligned16(const void* p) {
    return (reinterpret_cast<std::uintptr_t>(p) & 15) == 0;
}

inline __m128i loadu(const void* p) {
    return _mm_loadu_si128(static_cast<const __m128i*>(p));
}
inline void storeu(void* p, __m128i v) {
    _mm_storeu_si128(static_cast<__m128i*>(p), v);
}
inline __m128i load(const void* p) {
    return _mm_load_si128(static_cast<const __m128i*>(p));
}
inline void store(void* p, __m128i v) {
    _mm_store_si128(static_cast<__m128i*>(p), v);
}

// Reverses the order of the 16/E elements of E bytes held in a register.
template <std::size_t E>
inline __m128i reverse(__m128i v) {
    if constexpr (E == 1) {
        return _mm_shuffle_epi8(v, _mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8,
                                                 7, 6, 5, 4, 3, 2, 1, 0));
    } else if constexpr (E == 2) {
        return _mm_shuffle_epi8(v, _mm_setr_epi8(14, 15, 12, 13, 10, 11, 8, 9,
                                                 6, 7, 4, 5, 2, 3, 0, 1));
    } else if constexpr (E == 4) {
        return _mm_shuffle_epi32(v, _MM_SHUFFLE(0, 1, 2, 3));
    } else if constexpr (E == 8) {
        return _mm_shuffle_epi32(v, _MM_SHUFFLE(1, 0, 3, 2));
    } else {
        static_assert(E == 16);
        return v;
    }
}

}  // namespace zvp::simd

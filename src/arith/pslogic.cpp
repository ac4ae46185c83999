// Bitwise And, Or, Xor (vector with vector, vector with constant) and Not on
// unsigned vectors. AndC with constant 0 hands the call to Zero, and OrC and
// XorC with constant 0 hand it to Copy, before any check of their own; Not is
// XorC with every bit set.
#include <cstddef>
#include <type_traits>

#include "check.h"
#include "p8/logic.h"
#include "samebits.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

struct AndOp {
    static __m128i vec(__m128i a, __m128i b) { return _mm_and_si128(a, b); }
    template <class T> static T one(T a, T b) { return T(a & b); }
};
struct OrOp {
    static __m128i vec(__m128i a, __m128i b) { return _mm_or_si128(a, b); }
    template <class T> static T one(T a, T b) { return T(a | b); }
};
struct XorOp {
    static __m128i vec(__m128i a, __m128i b) { return _mm_xor_si128(a, b); }
    template <class T> static T one(T a, T b) { return T(a ^ b); }
};

template <class Op, class T>
void binaryKernel(const T* a, const T* b, T* d, int len) {
    constexpr int V = 16 / sizeof(T);
    int i = 0;
    for (; i + 2 * V <= len; i += 2 * V) {
        const __m128i x0 = Op::vec(simd::loadu(a + i), simd::loadu(b + i));
        const __m128i x1 = Op::vec(simd::loadu(a + i + V), simd::loadu(b + i + V));
        simd::storeu(d + i, x0);
        simd::storeu(d + i + V, x1);
    }
    for (; i + V <= len; i += V) simd::storeu(d + i, Op::vec(simd::loadu(a + i), simd::loadu(b + i)));
    for (; i < len; ++i) d[i] = Op::one(a[i], b[i]);
}

template <class T>
__m128i broadcast(T c) {
    if constexpr (sizeof(T) == 1) return _mm_set1_epi8(static_cast<char>(c));
    else if constexpr (sizeof(T) == 2) return _mm_set1_epi16(static_cast<short>(c));
    else return _mm_set1_epi32(static_cast<int>(c));
}

template <class Op, class T>
void constKernel(const T* s, T c, T* d, int len) {
    constexpr int V = 16 / sizeof(T);
    const __m128i vc = broadcast(c);
    int i = 0;
    for (; i + 2 * V <= len; i += 2 * V) {
        const __m128i x0 = Op::vec(simd::loadu(s + i), vc);
        const __m128i x1 = Op::vec(simd::loadu(s + i + V), vc);
        simd::storeu(d + i, x0);
        simd::storeu(d + i + V, x1);
    }
    for (; i + V <= len; i += V) simd::storeu(d + i, Op::vec(simd::loadu(s + i), vc));
    for (; i < len; ++i) d[i] = Op::one(s[i], c);
}

template <class Op, class T>
ZvpStatus binary(const T* a, const T* b, T* d, int len) {
    ZVP_CHECK_PTRS(a, b, d);
    ZVP_CHECK_LENS(len);
    binaryKernel<Op>(a, b, d, len);
    return zvpStsNoErr;
}

template <class Op, class T>
ZvpStatus binaryI(const T* s, T* sd, int len) {
    ZVP_CHECK_PTRS(s, sd);
    ZVP_CHECK_LENS(len);
    binaryKernel<Op>(sd, s, sd, len);
    return zvpStsNoErr;
}

// Constant forms. A constant that makes the result a copy of the source (Or,
// Xor with 0) or all zeros (And with 0) is handed to Copy or Zero first.
template <class Op, class T>
ZvpStatus withConst(const T* s, T c, T* d, int len) {
    if (c == 0) {
        if constexpr (std::is_same_v<Op, AndOp>) {
            if (s == nullptr) return zvpStsNullPtrErr;
            return zeroSameBits(d, len);
        } else {
            return copySameBits(s, d, len);
        }
    }
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    constKernel<Op>(s, c, d, len);
    return zvpStsNoErr;
}

template <class Op, class T>
ZvpStatus withConstI(T c, T* sd, int len) {
    if (c == 0 && std::is_same_v<Op, AndOp>) return zeroSameBits(sd, len);
    ZVP_CHECK_PTRS(sd);
    ZVP_CHECK_LENS(len);
    if (c != 0) constKernel<Op>(sd, c, sd, len);  // Or/Xor with 0 leave the data as it is
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_LOGIC(T)                                                                          \
    ZvpStatus zvpsAnd_##T(const Zvp##T* a, const Zvp##T* b, Zvp##T* d, int len) {             \
        return binary<AndOp>(a, b, d, len);                                                   \
    }                                                                                         \
    ZvpStatus zvpsOr_##T(const Zvp##T* a, const Zvp##T* b, Zvp##T* d, int len) {              \
        return binary<OrOp>(a, b, d, len);                                                    \
    }                                                                                         \
    ZvpStatus zvpsXor_##T(const Zvp##T* a, const Zvp##T* b, Zvp##T* d, int len) {             \
        return binary<XorOp>(a, b, d, len);                                                   \
    }                                                                                         \
    ZvpStatus zvpsAnd_##T##_I(const Zvp##T* s, Zvp##T* sd, int len) { return binaryI<AndOp>(s, sd, len); } \
    ZvpStatus zvpsOr_##T##_I(const Zvp##T* s, Zvp##T* sd, int len) { return binaryI<OrOp>(s, sd, len); }   \
    ZvpStatus zvpsXor_##T##_I(const Zvp##T* s, Zvp##T* sd, int len) { return binaryI<XorOp>(s, sd, len); } \
    ZvpStatus zvpsAndC_##T(const Zvp##T* s, Zvp##T c, Zvp##T* d, int len) {                   \
        return withConst<AndOp>(s, c, d, len);                                                \
    }                                                                                         \
    ZvpStatus zvpsOrC_##T(const Zvp##T* s, Zvp##T c, Zvp##T* d, int len) {                    \
        return withConst<OrOp>(s, c, d, len);                                                 \
    }                                                                                         \
    ZvpStatus zvpsXorC_##T(const Zvp##T* s, Zvp##T c, Zvp##T* d, int len) {                   \
        return withConst<XorOp>(s, c, d, len);                                                \
    }                                                                                         \
    ZvpStatus zvpsAndC_##T##_I(Zvp##T c, Zvp##T* sd, int len) { return withConstI<AndOp>(c, sd, len); } \
    ZvpStatus zvpsOrC_##T##_I(Zvp##T c, Zvp##T* sd, int len) { return withConstI<OrOp>(c, sd, len); }   \
    ZvpStatus zvpsXorC_##T##_I(Zvp##T c, Zvp##T* sd, int len) { return withConstI<XorOp>(c, sd, len); } \
    ZvpStatus zvpsNot_##T(const Zvp##T* s, Zvp##T* d, int len) {                              \
        return withConst<XorOp>(s, static_cast<Zvp##T>(~Zvp##T(0)), d, len);                  \
    }                                                                                         \
    ZvpStatus zvpsNot_##T##_I(Zvp##T* sd, int len) {                                          \
        return withConstI<XorOp>(static_cast<Zvp##T>(~Zvp##T(0)), sd, len);                   \
    }
ZVP_LOGIC(8u)
ZVP_LOGIC(16u)
ZVP_LOGIC(32u)
#undef ZVP_LOGIC

}  // namespace zvp::p8

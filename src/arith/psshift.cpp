// Shifts by a constant count. Left shifts lose the bits shifted out; right
// shifts are logical for unsigned and arithmetic for signed types.
//
// The checks come in a deliberate order that differs from the usual one,
// because a count that makes the result trivial hands the call to Copy or
// Zero first:
//   out of place, zero-filling forms (every left shift, unsigned right
//   shifts): count 0 -> Copy; count >= width -> Zero on the destination when
//   the source is not null (else -8); otherwise pointers, length, negative
//   count (-32).
//   out of place, signed right shifts: count 0 -> Copy; then pointers,
//   length, negative count; a count of the width or more fills each element
//   with its sign.
//   in place, zero-filling forms: count >= width -> Zero at once; then
//   pointer, length, negative count; count 0 leaves the data untouched.
//   in place, signed right shifts: pointer, length, negative count; count 0
//   leaves the data; large counts fill with the sign.
#include <climits>

#include "check.h"
#include "p8/logic.h"
#include "samebits.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

enum class Dir { Left, Right };

template <class T>
constexpr int widthOf = int(sizeof(T) * CHAR_BIT);

// One element; k is in [0, width) (signed right shifts clamp to width-1).
template <Dir D, class T>
T shiftOne(T x, int k) {
    using U = std::make_unsigned_t<T>;
    if constexpr (D == Dir::Left) return T(U(U(x) << k));
    else return T(x >> k);  // arithmetic for signed, logical for unsigned
}

template <Dir D, class T>
__m128i shiftVec(__m128i x, __m128i cnt, __m128i mask8) {
    if constexpr (sizeof(T) == 1) {
        // No 8-bit shifts: shift 16-bit lanes and clear the bits that crossed
        // from the neighbouring byte.
        if constexpr (D == Dir::Left) return _mm_and_si128(_mm_sll_epi16(x, cnt), mask8);
        else return _mm_and_si128(_mm_srl_epi16(x, cnt), mask8);
    } else if constexpr (sizeof(T) == 2) {
        if constexpr (D == Dir::Left) return _mm_sll_epi16(x, cnt);
        else if constexpr (std::is_signed_v<T>) return _mm_sra_epi16(x, cnt);
        else return _mm_srl_epi16(x, cnt);
    } else {
        if constexpr (D == Dir::Left) return _mm_sll_epi32(x, cnt);
        else if constexpr (std::is_signed_v<T>) return _mm_sra_epi32(x, cnt);
        else return _mm_srl_epi32(x, cnt);
    }
}

template <Dir D, class T>
void shiftKernel(const T* s, int k, T* d, int len) {
    constexpr int V = 16 / sizeof(T);
    const __m128i cnt = _mm_cvtsi32_si128(k);
    const unsigned m8 = D == Dir::Left ? (0xFFu << k) & 0xFFu : 0xFFu >> k;
    const __m128i mask8 = _mm_set1_epi8(static_cast<char>(m8));
    int i = 0;
    for (; i + 2 * V <= len; i += 2 * V) {
        const __m128i x0 = shiftVec<D, T>(simd::loadu(s + i), cnt, mask8);
        const __m128i x1 = shiftVec<D, T>(simd::loadu(s + i + V), cnt, mask8);
        simd::storeu(d + i, x0);
        simd::storeu(d + i + V, x1);
    }
    for (; i + V <= len; i += V) simd::storeu(d + i, shiftVec<D, T>(simd::loadu(s + i), cnt, mask8));
    for (; i < len; ++i) d[i] = shiftOne<D>(s[i], k);
}

template <Dir D, class T>
constexpr bool fillsWithSign = D == Dir::Right && std::is_signed_v<T>;

template <Dir D, class T>
ZvpStatus shiftOut(const T* s, int k, T* d, int len) {
    if (k == 0) return copySameBits(s, d, len);
    if constexpr (!fillsWithSign<D, T>) {
        if (k >= widthOf<T>) {
            if (s == nullptr) return zvpStsNullPtrErr;
            return zeroSameBits(d, len);
        }
    }
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if (k < 0) return zvpStsShiftErr;
    shiftKernel<D>(s, k < widthOf<T> ? k : widthOf<T> - 1, d, len);
    return zvpStsNoErr;
}

template <Dir D, class T>
ZvpStatus shiftIn(int k, T* sd, int len) {
    if constexpr (!fillsWithSign<D, T>) {
        if (k >= widthOf<T>) return zeroSameBits(sd, len);
    }
    ZVP_CHECK_PTRS(sd);
    ZVP_CHECK_LENS(len);
    if (k < 0) return zvpStsShiftErr;
    if (k > 0) shiftKernel<D>(sd, k < widthOf<T> ? k : widthOf<T> - 1, sd, len);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_SHIFT(Name, D, T)                                                      \
    ZvpStatus zvps##Name##_##T(const Zvp##T* s, int k, Zvp##T* d, int len) {       \
        return shiftOut<D>(s, k, d, len);                                          \
    }                                                                              \
    ZvpStatus zvps##Name##_##T##_I(int k, Zvp##T* sd, int len) { return shiftIn<D>(k, sd, len); }
ZVP_SHIFT(LShiftC, Dir::Left, 8u)
ZVP_SHIFT(LShiftC, Dir::Left, 16u)
ZVP_SHIFT(LShiftC, Dir::Left, 32s)
ZVP_SHIFT(RShiftC, Dir::Right, 8u)
ZVP_SHIFT(RShiftC, Dir::Right, 16u)
ZVP_SHIFT(RShiftC, Dir::Right, 16s)
ZVP_SHIFT(RShiftC, Dir::Right, 32s)
#undef ZVP_SHIFT

// A left shift does not depend on the sign: the 16s form is the 16u one.
ZvpStatus zvpsLShiftC_16s(const Zvp16s* s, int k, Zvp16s* d, int len) {
    return zvpsLShiftC_16u(reinterpret_cast<const Zvp16u*>(s), k, reinterpret_cast<Zvp16u*>(d), len);
}
ZvpStatus zvpsLShiftC_16s_I(int k, Zvp16s* sd, int len) {
    return zvpsLShiftC_16u_I(k, reinterpret_cast<Zvp16u*>(sd), len);
}

}  // namespace zvp::p8

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
#include <cstdint>

#include "forms.h"
#include "p8/logic.h"
#include "samebits.h"

namespace zvp::p8 {
namespace {

enum class Dir { Left, Right };

template <class T>
constexpr int widthOf = int(sizeof(T) * CHAR_BIT);

// Every lane shifted by one count k in [0, width) (signed right shifts clamp
// to width-1).
template <Dir D>
struct ShiftOp {
    Count k;
    __m128i mask8;  // 8-bit lanes: the bits that stay within each byte
    template <class L>
    typename L::R apply(typename L::R x) const {
        if constexpr (sizeof(typename L::type) == 1) {
            // No 8-bit shifts: shift 16-bit lanes and clear the bits that
            // crossed from the neighbouring byte.
            using W = Full<std::uint16_t>;
            return L::and_(D == Dir::Left ? W::shl(x, k) : W::shr(x, k), mask8);
        } else {
            return D == Dir::Left ? L::shl(x, k) : L::shr(x, k);
        }
    }
};

template <Dir D, class T>
constexpr bool fillsWithSign = D == Dir::Right && std::is_signed_v<T>;

// Kernel policy of the unary forms: a negative count is refused after the
// pointers and the length, and a zero count leaves the data as it is.
template <Dir D, class T>
struct Shift {
    using type = T;
    static ZvpStatus check(int k) { return k < 0 ? zvpStsShiftErr : zvpStsNoErr; }
    template <class A>
    static ZvpStatus run(A s, T* d, std::ptrdiff_t n, int k) {
        if (k == 0) return zvpStsNoErr;  // only in place: out of place, 0 is a Copy
        if (k >= widthOf<T>) k = widthOf<T> - 1;
        const unsigned m8 = D == Dir::Left ? (0xFFu << k) & 0xFFu : 0xFFu >> k;
        form::map(s, d, n, ShiftOp<D>{Count(k), Full<std::uint8_t>::set1(std::uint8_t(m8))});
        return zvpStsNoErr;
    }
};

template <Dir D, class T>
ZvpStatus shiftOut(const T* s, int k, T* d, int len) {
    if (k == 0) return copySameBits(s, d, len);
    if constexpr (!fillsWithSign<D, T>) {
        if (k >= widthOf<T>) {
            if (s == nullptr) return zvpStsNullPtrErr;
            return zeroSameBits(d, len);
        }
    }
    return form::v<Shift<D, T>>(s, d, len, k);
}

template <Dir D, class T>
ZvpStatus shiftIn(int k, T* sd, int len) {
    if constexpr (!fillsWithSign<D, T>) {
        if (k >= widthOf<T>) return zeroSameBits(sd, len);
    }
    return form::vI<Shift<D, T>>(sd, len, k);
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

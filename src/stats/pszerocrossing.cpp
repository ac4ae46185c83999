// ZeroCrossing: the number of sign changes between neighbouring elements,
// where an element is negative or not (0, -0 and NaN are not negative).
// The count is written as a single-precision value, rounded to nearest even
// by integer arithmetic, so the caller's rounding mode does not enter.
#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "extremes_search.h"
#include "forms.h"
#include "p8/extremes.h"

namespace zvp::p8 {
namespace {

// All ones in the lanes where exactly one of a and b is negative, as
// 32-bit integer lanes (16-bit lanes for 16s).
template <class L>
auto changes(typename L::R a, typename L::R b) {
    if constexpr (std::is_floating_point_v<typename L::type>) {
        const auto z = L::zero();
        return L::bits(L::xor_(L::lt(a, z), L::lt(b, z)));
    } else {
        return L::template shr<15>(L::xor_(a, b));  // the sign bits differ
    }
}

// Each lane's count goes down by one per change; 16-bit masks are summed in
// pairs into 32-bit lanes first.
template <class T>
std::ptrdiff_t countChanges(const T* p, std::ptrdiff_t n) {
    using F = Full<T>;
    using S = One<T>;
    using C = Full<std::int32_t>;
    constexpr std::ptrdiff_t V = F::N;
    auto step = [](auto m) {
        if constexpr (sizeof(T) == 2) return Full<std::int16_t>::maddPairs(m, Full<std::int16_t>::set1(1));
        else return m;
    };
    auto c = C::zero();
    std::ptrdiff_t i = 1;
    for (; i + V <= n; i += V) c = C::add(c, step(changes<F>(F::load(p + i), F::load(p + i - 1))));
    alignas(16) std::int32_t t[4];
    C::storea(t, c);
    std::ptrdiff_t count = 0;
    for (int k = 0; k < 4; ++k) count -= t[k];
    // One element a step: the lanes above it are zero in both loads.
    for (; i < n; ++i) count += C::anyOf(changes<S>(S::load(p + i), S::load(p + i - 1)));
    return count;
}

// c to the nearest single, ties to even, without the floating-point unit's
// rounding mode.
float nearestSingle(std::uint32_t c) {
    const int drop = std::bit_width(c) - std::numeric_limits<float>::digits;
    if (drop > 0) {
        const std::uint32_t half = std::uint32_t(1) << (drop - 1), rest = c & ((half << 1) - 1);
        c >>= drop;
        if (rest > half || (rest == half && (c & 1))) ++c;
        c <<= drop;
    }
    return float(c);  // exact now
}

template <class T>
ZvpStatus zeroCrossing(const T* pSrc, int len, Zvp32f* pValZCR) {
    ZVP_CHECK_PTRS(pSrc, pValZCR);
    ZVP_CHECK_LENS(len);
    const extremes::DenormalsKept<T> modes;  // a negative denormal is negative
    *pValZCR = nearestSingle(std::uint32_t(countChanges(pSrc, len)));
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsZeroCrossing_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pValZCR) {
    return zeroCrossing(pSrc, len, pValZCR);
}
ZvpStatus zvpsZeroCrossing_32f(const Zvp32f* pSrc, int len, Zvp32f* pValZCR) {
    return zeroCrossing(pSrc, len, pValZCR);
}

}  // namespace zvp::p8

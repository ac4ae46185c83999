// MaxOrder: the order of magnitude of the largest absolute value. Checks the
// length before the pointers.
//
// Floats compare the bit patterns with the sign cleared, as integers: their
// order is the order of the magnitudes. A pattern above the largest finite
// one is an infinity or a NaN; then a second search counts each such element
// as 0 and the call returns the warning zvpStsMaxOrderNaN. Integers take the
// exact magnitude (abs of the most negative value, read as unsigned, is its
// magnitude) and report its number of significant bits.
#include <bit>

#include "extremes_search.h"
#include "p8/extremes.h"

namespace zvp::p8 {
namespace {

using namespace extremes;

// The magnitude bits of a float, held as a signed integer of its width.
template <class I>
constexpr I kMagnitude = std::numeric_limits<I>::max();
template <class I>
constexpr I kLargestFinite = sizeof(I) == 4 ? I(0x7F7FFFFF) : I(0x7FEFFFFFFFFFFFFF);

struct MagnitudeBits {
    template <class L>
    static typename L::R key(typename L::R v) {
        return L::and_(v, L::set1(kMagnitude<typename L::type>));
    }
};
// The same with infinities and NaNs as 0.
struct FiniteMagnitudeBits {
    template <class L>
    static typename L::R key(typename L::R v) {
        using I = typename L::type;
        const auto a = MagnitudeBits::key<L>(v);
        return L::andnot(L::gt(a, L::set1(kLargestFinite<I>)), a);
    }
};
// |x| of a signed integer as the unsigned lane of its width.
struct Magnitude {
    template <class L>
    static typename L::R key(typename L::R v) {
        using S = std::make_signed_t<typename L::type>;
        return Lane<S, L::kBytes>::abs(v);
    }
};

template <class F, class I, int kBias>
ZvpStatus floatOrder(const F* pSrc, int len, int* pOrder) {
    ZVP_CHECK_LENS(len);
    ZVP_CHECK_PTRS(pSrc, pOrder);
    constexpr int kMantissa = std::numeric_limits<F>::digits - 1;
    const I* bits = reinterpret_cast<const I*>(pSrc);  // read through the lane loads only
    ZvpStatus st = zvpStsNoErr;
    I m = reduce<I, MagnitudeBits, false, true>(bits, len).mx;
    if (m > kLargestFinite<I>) {
        m = reduce<I, FiniteMagnitudeBits, false, true>(bits, len).mx;
        st = zvpStsMaxOrderNaN;
    }
    *pOrder = m == 0 ? 0 : int(m >> kMantissa) - kBias;
    return st;
}

template <class T>
ZvpStatus intOrder(const T* pSrc, int len, int* pOrder) {
    ZVP_CHECK_LENS(len);
    ZVP_CHECK_PTRS(pSrc, pOrder);
    using U = std::make_unsigned_t<T>;
    const U m = reduce<U, Magnitude, false, true>(reinterpret_cast<const U*>(pSrc), len).mx;
    *pOrder = int(std::bit_width(m));
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsMaxOrder_16s(const Zvp16s* pSrc, int len, int* pOrder) { return intOrder(pSrc, len, pOrder); }
ZvpStatus zvpsMaxOrder_32s(const Zvp32s* pSrc, int len, int* pOrder) { return intOrder(pSrc, len, pOrder); }
ZvpStatus zvpsMaxOrder_32f(const Zvp32f* pSrc, int len, int* pOrder) {
    return floatOrder<Zvp32f, std::int32_t, 126>(pSrc, len, pOrder);
}
ZvpStatus zvpsMaxOrder_64f(const Zvp64f* pSrc, int len, int* pOrder) {
    return floatOrder<Zvp64f, std::int64_t, 1022>(pSrc, len, pOrder);
}

}  // namespace zvp::p8

// MaxEvery and MinEvery: the element-wise extreme of two vectors. The first
// source's element replaces the second's (the in-place vector's) only where
// it is strictly beyond it or the second is a NaN, so equal elements (+0 and
// -0) keep the second's and a NaN comes out only where both are NaNs.
#include <cstdint>
#include <type_traits>

#include "forms.h"
#include "p8/extremes.h"

namespace zvp::p8 {
namespace {

template <bool kMax>
struct EveryOp {
    // x: the second source (the in-place vector); y: the first source.
    template <class L>
    typename L::R apply(typename L::R x, typename L::R y) const {
        if constexpr (std::is_floating_point_v<typename L::type>) {
            // y where y is strictly beyond x, else x; then y where x is a NaN.
            const auto r = kMax ? L::max(y, x) : L::min(y, x);
            return L::blend(r, y, L::unord(x, x));
        } else {
            return kMax ? L::max(x, y) : L::min(x, y);
        }
    }
};
template <class T, bool kMax>
using Every = form::Binary<T, EveryOp<kMax>>;

}  // namespace

// vvRev hands the kernel (second source, first source), as vvI hands it
// (in-place vector, source).
#define ZVP_EVERY(Op, kMax, T)                                                                      \
    ZvpStatus zvps##Op##Every_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len) { \
        return form::vvRev<Every<Zvp##T, kMax>>(pSrc1, pSrc2, pDst, len);                           \
    }
#define ZVP_EVERY_I(Op, kMax, T)                                                                    \
    ZvpStatus zvps##Op##Every_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) {               \
        return form::vvI<Every<Zvp##T, kMax>>(pSrc, pSrcDst, len);                                  \
    }
ZVP_EVERY(Max, true, 8u)
ZVP_EVERY(Max, true, 16u)
ZVP_EVERY(Max, true, 32f)
ZVP_EVERY(Max, true, 64f)
ZVP_EVERY(Min, false, 8u)
ZVP_EVERY(Min, false, 16u)
ZVP_EVERY(Min, false, 32f)
ZVP_EVERY_I(Max, true, 8u)
ZVP_EVERY_I(Max, true, 16u)
ZVP_EVERY_I(Max, true, 16s)
ZVP_EVERY_I(Max, true, 32s)
ZVP_EVERY_I(Max, true, 32f)
ZVP_EVERY_I(Max, true, 64f)
ZVP_EVERY_I(Min, false, 8u)
ZVP_EVERY_I(Min, false, 16u)
ZVP_EVERY_I(Min, false, 16s)
ZVP_EVERY_I(Min, false, 32s)
ZVP_EVERY_I(Min, false, 32f)
ZVP_EVERY_I(Min, false, 64f)
#undef ZVP_EVERY
#undef ZVP_EVERY_I

// The length is read as an unsigned count (unsignedCount).
ZvpStatus zvpsMinEvery_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    const std::ptrdiff_t n = std::ptrdiff_t(unsignedCount(len));
    if (n == 0) return zvpStsSizeErr;
    return Every<Zvp64f, false>::run(form::Vec<Zvp64f>{pSrc2}, form::Vec<Zvp64f>{pSrc1}, pDst, n);
}

}  // namespace zvp::p8

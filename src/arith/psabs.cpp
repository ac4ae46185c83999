// Abs: the absolute value of every element. Integer forms saturate, so the
// most negative value gives the largest positive one (|-32768| = 32767);
// float forms clear the sign bit, so -0 gives +0 and a NaN stays a NaN.
#include <cstdint>
#include <type_traits>

#include "forms.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

struct AbsOp {
    template <class L>
    typename L::R apply(typename L::R v) const {
        using T = typename L::type;
        if constexpr (std::is_floating_point_v<T>) {
            return L::abs(v);
        } else if constexpr (sizeof(T) == 2) {
            // max(x, 0 -sat x): the saturating negation maps -32768 to 32767.
            return L::max(v, L::subs(L::zero(), v));
        } else {
            // |x| wraps only for -2^31, which stays 0x80000000; subtracting
            // the top bit turns exactly that lane into 0x7FFFFFFF.
            const auto a = L::abs(v);
            return L::sub(a, Rebind<L, std::uint32_t>::template shr<31>(a));
        }
    }
};

template <class T>
using Abs = form::Unary<T, AbsOp>;

}  // namespace

#define ZVP_ABS(T)                                                                                   \
    ZvpStatus zvpsAbs_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) {                               \
        return form::v<Abs<Zvp##T>>(pSrc, pDst, len);                                                \
    }                                                                                                \
    ZvpStatus zvpsAbs_##T##_I(Zvp##T* pSrcDst, int len) { return form::vI<Abs<Zvp##T>>(pSrcDst, len); }
ZVP_ABS(16s)
ZVP_ABS(32s)
ZVP_ABS(32f)
ZVP_ABS(64f)
#undef ZVP_ABS

}  // namespace zvp::p8

// Bitwise And, Or, Xor (vector with vector, vector with constant) and Not on
// unsigned vectors. AndC with constant 0 hands the call to Zero, and OrC and
// XorC with constant 0 hand it to Copy, before any check of their own; Not is
// XorC with every bit set.
#include <type_traits>

#include "forms.h"
#include "p8/logic.h"
#include "samebits.h"

namespace zvp::p8 {
namespace {

struct AndOp {
    template <class L>
    typename L::R apply(typename L::R a, typename L::R b) const { return L::and_(a, b); }
};
struct OrOp {
    template <class L>
    typename L::R apply(typename L::R a, typename L::R b) const { return L::or_(a, b); }
};
struct XorOp {
    template <class L>
    typename L::R apply(typename L::R a, typename L::R b) const { return L::xor_(a, b); }
};

// The vector forms and the constant forms. Or and Xor with a zero constant
// reach the kernel only in place, where they leave the data as it is.
template <class T, class Op>
struct Logic : form::Binary<T, Op> {
    using form::Binary<T, Op>::run;
    template <class A>
    static ZvpStatus run(A a, form::Const<T> c, T* d, std::ptrdiff_t n) {
        if (c.isZero()) return zvpStsNoErr;
        return form::Binary<T, Op>::run(a, c, d, n);
    }
};

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
    return form::vc<Logic<T, Op>>(s, c, d, len);
}

template <class Op, class T>
ZvpStatus withConstI(T c, T* sd, int len) {
    if (c == 0 && std::is_same_v<Op, AndOp>) return zeroSameBits(sd, len);
    return form::vcI<Logic<T, Op>>(c, sd, len);
}

}  // namespace

#define ZVP_LOGIC_OP(Name, Op, T)                                                                 \
    ZvpStatus zvps##Name##_##T(const Zvp##T* a, const Zvp##T* b, Zvp##T* d, int len) {            \
        return form::vv<Logic<Zvp##T, Op>>(a, b, d, len);                                         \
    }                                                                                             \
    ZvpStatus zvps##Name##_##T##_I(const Zvp##T* s, Zvp##T* sd, int len) {                        \
        return form::vvI<Logic<Zvp##T, Op>>(s, sd, len);                                          \
    }                                                                                             \
    ZvpStatus zvps##Name##C_##T(const Zvp##T* s, Zvp##T c, Zvp##T* d, int len) {                  \
        return withConst<Op>(s, c, d, len);                                                       \
    }                                                                                             \
    ZvpStatus zvps##Name##C_##T##_I(Zvp##T c, Zvp##T* sd, int len) { return withConstI<Op>(c, sd, len); }
#define ZVP_LOGIC(T)                                                                              \
    ZVP_LOGIC_OP(And, AndOp, T)                                                                   \
    ZVP_LOGIC_OP(Or, OrOp, T)                                                                     \
    ZVP_LOGIC_OP(Xor, XorOp, T)                                                                   \
    ZvpStatus zvpsNot_##T(const Zvp##T* s, Zvp##T* d, int len) {                                  \
        return withConst<XorOp>(s, static_cast<Zvp##T>(~Zvp##T(0)), d, len);                      \
    }                                                                                             \
    ZvpStatus zvpsNot_##T##_I(Zvp##T* sd, int len) {                                              \
        return withConstI<XorOp>(static_cast<Zvp##T>(~Zvp##T(0)), sd, len);                       \
    }
ZVP_LOGIC(8u)
ZVP_LOGIC(16u)
ZVP_LOGIC(32u)
#undef ZVP_LOGIC
#undef ZVP_LOGIC_OP

}  // namespace zvp::p8

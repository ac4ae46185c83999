// Add and AddC: element-wise sums of two vectors, or of a vector and a
// constant. Integer forms deliver the exact sum scaled by 2^-scaleFactor,
// rounded to nearest with ties to even and saturated (the plain forms
// without a scale factor saturate the exact sum); float forms use IEEE
// addition. In place, the source-and-destination vector is the left operand.
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "addsub_kernel.h"
#include "forms.h"
#include "int128.h"
#include "p8/addsub.h"
#include "p8/copy.h"
#include "scale.h"

namespace zvp::p8 {
namespace {

using addsub::Limits;
using addsub::Op;

// Thresholds of the sum: zero above Z, bound at or below N.
constexpr Limits kAdd8u{9, -8};      // R in [0, 510]
constexpr Limits kAdd16s{16, -16};   // R in [-65536, 65534]
constexpr Limits kAdd16u{17, -16};   // R in [0, 131070]
constexpr Limits kAdd32s{32, -31};   // R in [-2^32, 2^32 - 2]
constexpr Limits kAdd64s{64, -63};   // R in [-2^64, 2^64 - 2]
constexpr Limits kAdd64u{65, -64};   // R in [0, 2^65 - 2]

using Add8u = addsub::Scaled<Zvp8u, Op::Add, kAdd8u>;
using Add16s = addsub::Scaled<Zvp16s, Op::Add, kAdd16s>;
using Add16u = addsub::Scaled<Zvp16u, Op::Add, kAdd16u>;
using Add32s = addsub::Scaled<Zvp32s, Op::Add, kAdd32s>;
using Add32f = addsub::FloatOp<Zvp32f, Op::Add>;
using Add64f = addsub::FloatOp<Zvp64f, Op::Add>;
template <class K>
using CopiesOnZero = addsub::ZeroConstCopies<K>;

// ---- 64-bit sums ---------------------------------------------------------
// The exact sum needs 65 bits. The plain and bound paths only need its sign
// and whether it overflowed; the other factors apply the rule to the exact
// 128-bit value.

template <class D>
D sum64Plain(D a, D b) {
    D s;
    if (!__builtin_add_overflow(a, b, &s)) return s;
    if constexpr (std::is_signed_v<D>)
        return a < 0 ? std::numeric_limits<D>::min() : std::numeric_limits<D>::max();
    else
        return std::numeric_limits<D>::max();
}

template <class D>
D sum64Bound(D a, D b) {
    using L = std::numeric_limits<D>;
    D s;
    const bool ovf = __builtin_add_overflow(a, b, &s);
    if constexpr (std::is_signed_v<D>) {
        const bool negative = ovf ? a < 0 : s < 0;
        if (!ovf && s == 0) return 0;
        return negative ? L::min() : L::max();
    } else {
        return (ovf || s != 0) ? L::max() : D(0);
    }
}

template <class D, Limits lim>
struct Add64 {
    using type = D;
    template <class A, class B>
    static ZvpStatus run(A a, B b, D* d, std::ptrdiff_t n, int sf) {
        if (sf == 0) {
            for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = sum64Plain(a.at(i), b.at(i));
        } else if (sf > lim.z) {
            addsub::fillZero(d, n);
        } else if (sf <= lim.n) {
            for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = sum64Bound(a.at(i), b.at(i));
        } else {
            for (std::ptrdiff_t i = 0; i < n; ++i)
                d[i] = scaleRule<D>(Int128::from(a.at(i)) + Int128::from(b.at(i)), sf);
        }
        return zvpStsNoErr;
    }
};
using Add64s = Add64<Zvp64s, kAdd64s>;
using Add64u = Add64<Zvp64u, kAdd64u>;

// ---- Mixed types -----------------------------------------------------------

// d = a + b (8u sources, exact 16u sum).
struct Sum8u16u {
    template <class L, class A, class B>
    static typename L::R apply(A a, B b, std::ptrdiff_t i) {
        using S = Rebind<L, Zvp8u>;
        return L::add(S::widenLo(a.template load<S>(i)), S::widenLo(b.template load<S>(i)));
    }
};
// d = a + b saturated, a 32-bit, b 16-bit widened.
struct Sum32s16s {
    template <class L, class A, class B>
    static typename L::R apply(A a, B b, std::ptrdiff_t i) {
        using S = Rebind<L, Zvp16s>;
        return L::adds(a.template load<L>(i), S::widenLo(b.template load<S>(i)));
    }
};
// d = a + b saturated, unsigned 32-bit.
struct Sum32u {
    template <class L, class A, class B>
    static typename L::R apply(A a, B b, std::ptrdiff_t i) {
        return L::adds(a.template load<L>(i), b.template load<L>(i));
    }
};

}  // namespace

// ---- Add: vector + vector ---------------------------------------------------

ZvpStatus zvpsAdd_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor) {
    return form::vv<Add8u>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Add8u>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len) {
    return form::vv<Add16s>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len) {
    return form::vvI<Add16s>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vv<Add16s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Add16s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len) {
    return form::vv<Add16u>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len) {
    return form::vvI<Add16u>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor) {
    return form::vv<Add16u>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Add16u>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor) {
    return form::vvAsReals<Add16s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return form::vvIAsReals<Add16s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    return form::vv<Add32s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Add32s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor) {
    return form::vvAsReals<Add32s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return form::vvIAsReals<Add32s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len) {
    return form::vv<form::Lanewise<Zvp32u, Sum32u>>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len) {
    return form::vvI<form::Lanewise<Zvp32u, Sum32u>>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_64s_Sfs(const Zvp64s* pSrc1, const Zvp64s* pSrc2, Zvp64s* pDst, int len, int scaleFactor) {
    return form::vv<Add64s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_64s_ISfs(const Zvp64s* pSrc, Zvp64s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Add64s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len) {
    return form::vv<Add32f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len) {
    return form::vvI<Add32f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len) {
    return form::vv<Add64f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len) {
    return form::vvI<Add64f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    return form::vv<Add32f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len) {
    return form::vvI<Add32f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len) {
    return form::vv<Add64f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len) {
    return form::vvI<Add64f>(pSrc, pSrcDst, len);
}

// ---- Add: mixed types ------------------------------------------------------

ZvpStatus zvpsAdd_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len) {
    return form::vv<form::Lanewise<Zvp16u, Sum8u16u>>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len) {
    return form::vv<form::Lanewise<Zvp32f, addsub::Exact16s32f<Op::Add>>>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_16s32s_I(const Zvp16s* pSrc, Zvp32s* pSrcDst, int len) {
    return form::vvI<form::Lanewise<Zvp32s, Sum32s16s>>(pSrc, pSrcDst, len);
}

// ---- AddC: vector + constant (a zero constant at scale factor 0 copies) -----

#define ZVP_ADDC(T, K)                                                                          \
    ZvpStatus zvpsAddC_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len, int scaleFactor) { \
        return form::vc<CopiesOnZero<K>>(pSrc, val, pDst, len, scaleFactor);                    \
    }                                                                                           \
    ZvpStatus zvpsAddC_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {      \
        return form::vcI<CopiesOnZero<K>>(val, pSrcDst, len, scaleFactor);                      \
    }
ZVP_ADDC(8u, Add8u)
ZVP_ADDC(16s, Add16s)
ZVP_ADDC(16sc, Add16s)
ZVP_ADDC(16u, Add16u)
ZVP_ADDC(32s, Add32s)
ZVP_ADDC(32sc, Add32s)
ZVP_ADDC(64s, Add64s)
ZVP_ADDC(64u, Add64u)
#undef ZVP_ADDC

ZvpStatus zvpsAddC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len) {
    return form::vcI<CopiesOnZero<Add16s>>(val, pSrcDst, len);
}

#define ZVP_ADDC_FLOAT(T, K)                                                                    \
    ZvpStatus zvpsAddC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {             \
        return form::vc<K>(pSrc, val, pDst, len);                                               \
    }                                                                                           \
    ZvpStatus zvpsAddC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                          \
        return form::vcI<K>(val, pSrcDst, len);                                                 \
    }
ZVP_ADDC_FLOAT(32f, Add32f)
ZVP_ADDC_FLOAT(64f, Add64f)
ZVP_ADDC_FLOAT(32fc, Add32f)
ZVP_ADDC_FLOAT(64fc, Add64f)
#undef ZVP_ADDC_FLOAT

}  // namespace zvp::p8

// Mul and MulC on integers: 8u, 16s, 16u and their mixed forms, 16sc, 32s,
// 32sc and 64s. Each result is scaleRule(R, sf) of the exact product R,
// computed through the kernel split of muldiv_kernel.h.
//
// Exact products are 32-bit for 8-bit and 16-bit operands (16u x 16u is
// held unsigned), 64-bit for 32-bit operands, and 128-bit (int128.h) for
// 32sc and 64s. The complex 16sc product is formed with pmaddwd: its real
// part always fits 32 bits, its imaginary part leaves them only for
// (-32768, -32768) x (-32768, -32768), where the lane wraps to -2^31; that
// lane alone is patched with the rule's value for +2^31.
#include <cstddef>
#include <cstring>

#include "forms.h"
#include "int128.h"
#include "muldiv_kernel.h"
#include "p8/copy.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using muldiv::Limits;
using muldiv::Path;
using muldiv::R;

// ---- Sources of R ------------------------------------------------------------
// lanes<L>(i, r0, r1): R of the destination values i .. i + L::N - 1, for
// a destination lane L, in the wide lanes the lane set expects.

// 8u x 8u, in unsigned 16-bit lanes (at most 65025).
template <class A, class B>
struct Mul8u {
    A a;
    B b;
    template <class L>
    void lanes(std::ptrdiff_t i, R& r0, R& r1) const {
        using W = Rebind<L, std::uint16_t>;
        const R x = a.template load<L>(i), y = b.template load<L>(i);
        r0 = W::mullo(L::widenLo(x), L::widenLo(y));
        r1 = W::mullo(L::widenHi(x), L::widenHi(y));
    }
};

// 16s x 16s or 16u x 16u in 32-bit lanes (unsigned for 16u).
template <class A, class B>
struct Mul16 {
    A a;
    B b;
    template <class L>
    void lanes(std::ptrdiff_t i, R& r0, R& r1) const {
        const R x = a.template load<L>(i), y = b.template load<L>(i);
        r0 = L::mulWideLo(x, y);
        r1 = L::mulWideHi(x, y);
    }
};

// 16u x 16s in signed 32-bit lanes (|R| < 2^31). The signed high product
// reads a 16u operand u >= 2^15 as u - 2^16, which takes b * 2^16 off the
// product: adding b back to the high half where u >= 2^15 corrects it.
template <class A, class B>
struct Mul16u16s {
    A a;  // 16u
    B b;  // 16s
    template <class L>
    void lanes(std::ptrdiff_t i, R& r0, R& r1) const {
        const R x = a.template load<Rebind<L, Zvp16u>>(i), y = b.template load<L>(i);
        const R lo = L::mullo(x, y);
        const R hi = L::add(L::mulhi(x, y), L::and_(y, L::template shr<15>(x)));
        r0 = L::zipLo(lo, hi);
        r1 = L::zipHi(lo, hi);
    }
};

// 16s x 16s into a 32s destination (|R| <= 2^30), one register.
template <class A, class B>
struct Mul16s32s {
    A a;
    B b;
    template <class L>
    void lanes(std::ptrdiff_t i, R& r0, R& r1) const {
        using S = Rebind<L, Zvp16s>;
        r1 = r0 = S::mulWideLo(a.template load<S>(i), b.template load<S>(i));
    }
};

// 32s x 32s in 64-bit lanes: even values in r0, odd in r1.
template <class A, class B>
struct Mul32s {
    A a;
    B b;
    template <class L>
    void lanes(std::ptrdiff_t i, R& e, R& o) const {
        const R x = a.template load<L>(i), y = b.template load<L>(i);
        e = L::mulEven(x, y);
        o = L::mulOdd(x, y);
    }
};

// 32s (real) x 32sc: i counts 32-bit parts, so the real factor is i / 2.
template <class A, class B>
struct Mul32s32sc {
    A a;  // 32s
    B b;  // parts of the 32sc operand
    template <class L>
    void lanes(std::ptrdiff_t i, R& e, R& o) const {
        using H = Lanes<Zvp32s, L::N / 2>;
        const R x = a.template load<H>(i / 2);
        const R xx = L::zipLo(x, x);  // each real factor for both parts
        const R y = b.template load<L>(i);
        e = L::mulEven(xx, y);  // real parts
        o = L::mulOdd(xx, y);   // imaginary parts
    }
};

// ---- 16sc ---------------------------------------------------------------------
// R of the real parts in r0, of the imaginary ones in r1, both in 32-bit
// lanes; lanes<L> takes whole (re, im) pairs.

// Vector x vector. Real parts: ar*br - ai*bi from two single products per
// lane (each fits, so does the difference). Imaginary: one pair product,
// which leaves 32 bits only for (-32768, -32768) x (-32768, -32768).
template <class A, class B>
struct Mul16sc {
    A a;
    B b;
    template <class L>
    void lanes(std::ptrdiff_t i, R& re, R& im) const {
        using W = Rebind<L, std::int32_t>;
        const R x = a.template load<L>(i), y = b.template load<L>(i);
        const R lo = W::set1(0xFFFF);
        re = W::sub(L::maddPairs(x, W::and_(y, lo)), L::maddPairs(x, W::andnot(lo, y)));
        im = L::maddPairs(x, L::swapReIm(y));
    }
};

// The constant's pair products: (c.re, -c.im) and (c.im, c.re) per pair.
inline R pairOf(Zvp16s lo, Zvp16s hi) {
    return Full<std::int32_t>::set1(std::int32_t(std::uint16_t(lo) | (std::uint32_t(std::uint16_t(hi)) << 16)));
}

// Vector x constant c with c.im != -32768: both parts one pair product;
// neither sum can leave 32 bits.
template <class A, class B>
struct MulC16sc {
    A a;
    R kRe, kIm;
    MulC16sc(A a_, B c) : a(a_), kRe(pairOf(c.c0, Zvp16s(-c.c1))), kIm(pairOf(c.c1, c.c0)) {}
    template <class L>
    void lanes(std::ptrdiff_t i, R& re, R& im) const {
        const R x = a.template load<L>(i);
        re = L::maddPairs(x, kRe);
        im = L::maddPairs(x, kIm);
    }
};

// Vector x constant with c.im = -32768, whose negation has no 16-bit form:
// the real part is ar*cr + ai*2^15, the imaginary part may wrap as for
// Mul16sc.
template <class A, class B>
struct MulC16scOvf {
    A a;
    R kRe, kIm;
    MulC16scOvf(A a_, B c) : a(a_), kRe(pairOf(c.c0, 0)), kIm(pairOf(c.c1, c.c0)) {}
    template <class L>
    void lanes(std::ptrdiff_t i, R& re, R& im) const {
        using W = Rebind<L, std::int32_t>;
        const R x = a.template load<L>(i);
        re = W::add(L::maddPairs(x, kRe), W::template shl<15>(W::template shr<16>(x)));
        im = L::maddPairs(x, kIm);
    }
};

// Real and imaginary parts rounded, interleaved and narrowed. kWrap: the
// imaginary lanes may hold -2^31 standing for +2^31; those get the rule's
// value for +2^31.
template <bool kWrap>
struct To16sc {
    template <Path P>
    struct LS {
        using W = Full<std::int32_t>;
        muldiv::Lanes32to16<Zvp16s, P> ls;
        R fix;
        explicit LS(int sf) : ls(sf), fix(Full<Zvp16s>::set1(scaleRule<Zvp16s>(std::int64_t(1) << 31, sf))) {}
        R operator()(R re, R im) const {
            const R r = ls.pre(re), m = ls.pre(im);
            const R out = ls.finish(W::zipLo(r, m), W::zipHi(r, m));
            if constexpr (!kWrap) {
                return out;
            } else {
                const R w = W::eq(im, W::set1(INT32_MIN)), z = W::zero();
                return Full<Zvp16s>::blend(out, fix, W::template narrow<Zvp16s>(W::zipLo(z, w), W::zipHi(z, w)));
            }
        }
    };
};

// Thresholds: zero above Z, bound at or below N.
constexpr Limits k8u{16, -8};
constexpr Limits k16s{30, -16};
constexpr Limits k16s32s{30, -32};
constexpr Limits k16u{32, -16};
constexpr Limits k16u16s{31, -16};
constexpr Limits k16sc{31, -16};
constexpr Limits k32s{62, -32};
constexpr Limits k32sc{63, -32};
constexpr Limits k64s{126, -64};

template <class D, template <class, class> class Src, template <Path> class LS, Limits lim, int U = 1>
using Scaled = muldiv::Scaled<D, Src, LS, lim, U>;

using Mul8uK = Scaled<Zvp8u, Mul8u, muldiv::LanesU16to8u, k8u>;
// |a * b| <= 2^30 and sf <= Z = 30: the short rounding applies.
using Mul16sK = Scaled<Zvp16s, Mul16, muldiv::To16<Zvp16s, true>::LS, k16s>;
using Mul16uK = Scaled<Zvp16u, Mul16, muldiv::LanesU32to16u, k16u>;
using Mul16u16sK = Scaled<Zvp16s, Mul16u16s, muldiv::To16<Zvp16s>::LS, k16u16s>;
using Mul16s32sK = Scaled<Zvp32s, Mul16s32s, muldiv::Lanes32to32, k16s32s>;
using Mul32sK = Scaled<Zvp32s, Mul32s, muldiv::Lanes64to32, k32s>;
using Mul32s32scK = Scaled<Zvp32s, Mul32s32sc, muldiv::Lanes64to32, k32s, 2>;
using Mul16scK = Scaled<Zvp16s, Mul16sc, To16sc<true>::LS, k16sc, 2>;

// MulC_16sc: the overflow kernels when the constant's imaginary part is
// -32768.
struct MulC16scK {
    using type = Zvp16s;
    template <class A>
    static ZvpStatus run(A a, form::Const<Zvp16s> c, Zvp16s* d, std::ptrdiff_t n, int sf) {
        if (c.c1 == -32768)
            return muldiv::scaled<Zvp16s, 2, To16sc<true>::LS>(MulC16scOvf<A, form::Const<Zvp16s>>(a, c), d, n, sf, k16sc);
        return muldiv::scaled<Zvp16s, 2, To16sc<false>::LS>(MulC16sc<A, form::Const<Zvp16s>>(a, c), d, n, sf, k16sc);
    }
};

// Every 8u product fits 16 bits: no scaling, no saturation.
struct Mul8u16uFn {
    template <class L, class A, class B>
    static typename L::R apply(A a, B b, std::ptrdiff_t i) {
        using S = Rebind<L, Zvp8u>;
        return L::mullo(S::widenLo(a.template load<S>(i)), S::widenLo(b.template load<S>(i)));
    }
};
// The exact product converted to single precision (rounded by the current
// rounding mode when it needs more than 24 bits).
struct Mul16s32fFn {
    template <class L, class A, class B>
    static typename L::R apply(A a, B b, std::ptrdiff_t i) {
        using S = Rebind<L, Zvp16s>;
        return L::fromI32(S::mulWideLo(a.template load<S>(i), b.template load<S>(i)));
    }
};
// 32sc: every part through the 128-bit form of the rule; i counts parts.
struct Mul32scK {
    using type = Zvp32s;
    template <class A, class B>
    static ZvpStatus run(A a, B b, Zvp32s* d, std::ptrdiff_t n, int sf) {
        if (muldiv::pathOf(sf, k32sc.z, k32sc.n) == Path::Zero) {
            muldiv::fillZero(d, n);
            return zvpStsNoErr;
        }
        for (std::ptrdiff_t i = 0; i < n; i += 2) {
            const Zvp32s ar = a.at(i), ai = a.at(i + 1), br = b.at(i), bi = b.at(i + 1);
            d[i] = scaleRule<Zvp32s>(mulWideS(ar, br) - mulWideS(ai, bi), sf);
            d[i + 1] = scaleRule<Zvp32s>(mulWideS(ar, bi) + mulWideS(ai, br), sf);
        }
        return zvpStsNoErr;
    }
};

// 64s by a constant: the 128-bit form of the rule.
struct MulC64sK {
    using type = Zvp64s;
    template <class A, class B>
    static ZvpStatus run(A a, B c, Zvp64s* d, std::ptrdiff_t n, int sf) {
        if (muldiv::pathOf(sf, k64s.z, k64s.n) == Path::Zero) {
            muldiv::fillZero(d, n);
            return zvpStsNoErr;
        }
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = scaleRule<Zvp64s>(mulWideS(a.at(i), c.at(i)), sf);
        return zvpStsNoErr;
    }
};

}  // namespace

// ---- 8u ------------------------------------------------------------------------------

ZvpStatus zvpsMul_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor) {
    return form::vv<Mul8uK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Mul8uK>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor) {
    return form::vc<Mul8uK>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return form::vcI<Mul8uK>(val, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMul_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len) {
    return form::vv<form::Lanewise<Zvp16u, Mul8u16uFn>>(pSrc1, pSrc2, pDst, len);
}

// ---- 16s -----------------------------------------------------------------------------

ZvpStatus zvpsMul_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vv<Mul16sK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Mul16sK>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vc<Mul16sK>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vcI<Mul16sK>(val, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len) {
    return form::vv<Mul16sK>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsMul_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len) {
    return form::vvI<Mul16sK>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsMulC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len) {
    return form::vcI<Mul16sK>(val, pSrcDst, len);
}
ZvpStatus zvpsMul_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len) {
    return form::vv<form::Lanewise<Zvp32f, Mul16s32fFn>>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsMul_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    return form::vv<Mul16s32sK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}

// ---- 16u -----------------------------------------------------------------------------

ZvpStatus zvpsMul_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor) {
    return form::vv<Mul16uK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Mul16uK>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor) {
    return form::vc<Mul16uK>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return form::vcI<Mul16uK>(val, pSrcDst, len, scaleFactor);
}
// First source 16u, second source and destination 16s.
ZvpStatus zvpsMul_16u16s_Sfs(const Zvp16u* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vv<Mul16u16sK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16u16s_ISfs(const Zvp16u* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<muldiv::Swapped<Mul16u16sK>>(pSrc, pSrcDst, len, scaleFactor);
}

// ---- 16sc ----------------------------------------------------------------------------

ZvpStatus zvpsMul_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor) {
    return form::vv<Mul16scK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Mul16scK>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len, int scaleFactor) {
    return form::vc<MulC16scK>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return form::vcI<MulC16scK>(val, pSrcDst, len, scaleFactor);
}

// ---- 32s -----------------------------------------------------------------------------

ZvpStatus zvpsMul_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    return form::vv<Mul32sK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Mul32sK>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor) {
    return form::vc<Mul32sK>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return form::vcI<Mul32sK>(val, pSrcDst, len, scaleFactor);
}
// The product of two 32s values is exact in 64 bits, so the results are
// those of Mul_32s_Sfs.
ZvpStatus zvpsMul_Low_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    return form::vv<Mul32sK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
// First source 32s (real), second source and destination 32sc.
ZvpStatus zvpsMul_32s32sc_Sfs(const Zvp32s* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor) {
    return form::vv<Mul32s32scK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_32s32sc_ISfs(const Zvp32s* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return form::vvI<muldiv::Swapped<Mul32s32scK>>(pSrc, pSrcDst, len, scaleFactor);
}

// ---- 32sc ----------------------------------------------------------------------------

ZvpStatus zvpsMul_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor) {
    return form::vv<Mul32scK>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Mul32scK>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len, int scaleFactor) {
    return form::vc<Mul32scK>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return form::vcI<Mul32scK>(val, pSrcDst, len, scaleFactor);
}

// ---- 64s -----------------------------------------------------------------------------

ZvpStatus zvpsMulC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor) {
    return form::vcI<MulC64sK>(val, pSrcDst, len, scaleFactor);
}

namespace {

// R = val * x exactly: val = m * 2^e with an integer m of at most 53 bits,
// so R = (m * x) * 2^e and the result is the rule applied to the 117-bit
// integer m * x with the scale factor sf - e. A NaN constant gives 0 and an
// infinite one the bound of the sign (0 where x = 0). Integer arithmetic
// only: the caller's floating-point state plays no part.
struct MulC64f64s {
    using type = Zvp64s;
    template <class A>
    static ZvpStatus run(A a, form::Const<Zvp64f> c, Zvp64s* d, std::ptrdiff_t n, int scaleFactor) {
        const Zvp64f val = c.c0;
        std::uint64_t bits;
        std::memcpy(&bits, &val, sizeof bits);
        const bool neg = bits >> 63;
        const int biased = int((bits >> 52) & 0x7FF);
        std::uint64_t frac = bits & ((std::uint64_t(1) << 52) - 1);
        if (biased == 0x7FF) {
            for (std::ptrdiff_t i = 0; i < n; ++i) {
                const Zvp64s x = a.at(i);
                d[i] = (frac != 0 || x == 0) ? 0 : ((x < 0) != neg ? INT64_MIN : INT64_MAX);
            }
            return zvpStsNoErr;
        }
        int e = biased - 1075;
        if (biased == 0) e = -1074;
        else frac |= std::uint64_t(1) << 52;
        const std::int64_t m = neg ? -std::int64_t(frac) : std::int64_t(frac);
        // |m * x| < 2^117: beyond a shift of 200 either way every result is 0 or
        // saturated, so the shift is clamped there without changing anything.
        std::int64_t shift = std::int64_t(scaleFactor) - e;
        shift = shift > 200 ? 200 : (shift < -200 ? -200 : shift);
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = scaleRule<Zvp64s>(mulWideS(m, a.at(i)), int(shift));
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsMulC_64f64s_ISfs(Zvp64f val, Zvp64s* pSrcDst, int len, int scaleFactor) {
    return form::vcI<MulC64f64s>(val, pSrcDst, len, scaleFactor);
}

}  // namespace zvp::p8

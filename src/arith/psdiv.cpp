// Div, DivC and DivCRev.
//
// Div divides the second source by the first (the first source is the
// divisor; in place, the source-and-destination vector is the dividend). It
// never fails on zero divisors: such an element gets the substitute (see
// div_kernel.h; floats: the IEEE quotient) and the call returns
// zvpStsDivByZero once every element is written.
//
// Integer forms deliver the exact quotient scaled by 2^-sf, rounded to
// nearest with ties to even and saturated. DivC rejects a zero constant
// (zvpStsDivByZeroErr, after the pointer and length checks); on floats it
// multiplies by the reciprocal computed once (x * (1/c), so rounded twice).
#include <cstdint>
#include <cstring>

#include "div_kernel.h"
#include "forms.h"
#include "muldiv_float.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using divk::Rnd;

ZvpStatus warnIf(bool zeroDivisor) { return zeroDivisor ? zvpStsDivByZero : zvpStsNoErr; }

// Div_16u below its range: 65535 for every element whose divisor is
// non-zero, even when its dividend is 0; a zero divisor gives 65535 for a
// non-zero dividend and 0 for a zero one.
template <class A, class B>
bool divBound16u(const A& num, const B& den, Zvp16u* d, std::ptrdiff_t len) {
    bool zero = false;
    for (std::ptrdiff_t i = 0; i < len; ++i) {
        const Zvp16u a = num.at(i), b = den.at(i);
        zero |= b == 0;
        d[i] = (b == 0 && a == 0) ? 0 : 65535;
    }
    return zero;
}

// Kernel policies of the forms: run(num, den, d, n, sf) gets the dividend
// first, whatever the argument order of the export.

// Quotients rounded to nearest (ties to even) for 8u, 16s and 16u, by the
// range of sf. kBoundAll selects the Div_16u bound above.
template <class T, bool kBoundAll = false>
struct DivSmall {
    using type = T;
    template <class A, class B>
    static ZvpStatus run(A num, B den, T* d, std::ptrdiff_t n, int sf) {
        bool zero;
        if (sf > divk::Range<T>::hi) {
            zero = divk::divAllZero(num, den, d, n);
        } else if (sf < divk::Range<T>::lo) {
            if constexpr (kBoundAll) zero = divBound16u(num, den, d, n);
            else zero = divk::divBound(num, den, d, n);
        } else {
            const MxcsrGuard guard(divk::guardMode(Rnd::Near));
            zero = divk::divKernel<T, Rnd::Near>(num, den, d, n, sf);
        }
        return warnIf(zero);
    }
    template <class A, class B>
    static ZvpStatus run(A num, B den, T* d, std::ptrdiff_t n) {
        return run(num, den, d, n, 0);
    }
};

// Exact quotients of wider operands.
template <class D>
struct DivExact {
    using type = D;
    template <class A, class B>
    static ZvpStatus run(A num, B den, D* d, std::ptrdiff_t n, int sf) {
        bool zero = false;
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            const std::int64_t a = num.at(i), b = den.at(i);
            if (b == 0) {
                zero = true;
                d[i] = divk::zeroDivisorValue(D(a));
            } else {
                d[i] = divk::quotientRule<D>(a, b, sf, Rnd::Near);
            }
        }
        return warnIf(zero);
    }
};

// Complex 16sc quotient b / a = b * conj(a) / |a|^2, each part exactly;
// |a|^2 and both numerators fit 32 bits. A zero divisor substitutes each
// part by the sign of the dividend's part. i counts parts; both parts of
// an element are read before either is written.
struct Div16sc {
    using type = Zvp16s;
    template <class A, class B>
    static ZvpStatus run(A num, B den, Zvp16s* d, std::ptrdiff_t n, int sf) {
        bool zero = false;
        for (std::ptrdiff_t i = 0; i < n; i += 2) {
            const std::int64_t br = num.at(i), bi = num.at(i + 1), ar = den.at(i), ai = den.at(i + 1);
            const std::int64_t m = ar * ar + ai * ai;
            if (m == 0) {
                zero = true;
                d[i] = divk::zeroDivisorValue(Zvp16s(br));
                d[i + 1] = divk::zeroDivisorValue(Zvp16s(bi));
            } else {
                d[i] = divk::quotientRule<Zvp16s>(br * ar + bi * ai, m, sf, Rnd::Near);
                d[i + 1] = divk::quotientRule<Zvp16s>(bi * ar - br * ai, m, sf, Rnd::Near);
            }
        }
        return warnIf(zero);
    }
};

// A zero constant divisor is refused (after the pointer and length checks,
// before anything is written).
template <class K>
struct RefusesZero : K {
    template <class A, class C, class D, class... X>
    static ZvpStatus run(A num, form::Const<C> c, D* d, std::ptrdiff_t n, X... x) {
        if (c.isZero()) return zvpStsDivByZeroErr;
        return K::run(num, c, d, n, x...);
    }
};

// ---- Floating point -----------------------------------------------------------

using namespace mulf;

// d = num / den, real; notes zero divisors (a mask over the body's full
// lanes, a flag in the tail, whose unused lanes hold zeros).
template <class T, class A, class B>
struct DivReal {
    A num;
    B den;
    T* d;
    mutable Vec<T> zeros = Full<T>::zero();
    mutable bool zeroTail = false;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const {
        const auto x = den.template load<L>(i);
        const auto z = L::eq(x, L::zero());
        if constexpr (L::N == Full<T>::N) zeros = L::or_(zeros, z);
        else zeroTail |= L::anyOf(z);
        return L::div(num.template load<L>(i), x);
    }
    bool sawZero() const { return Full<T>::anyOf(zeros) || zeroTail; }
};

// Complex quotients b / a of a pair of elements (DL = Full<double>) or of
// one (DL = One<double>), the parts split into real and imaginary lanes.
// 32fc: computed in double, which holds |a|^2 without overflow or underflow
// for every single-precision a. 64fc: the divisor is first scaled by
// s = 2^-e, e the exponent of its larger part, so |a s|^2 lies in [1, 8) and
// b / a = s * b conj(a s) / |a s|^2. A zero divisor gives each dividend part
// divided by +0 (the IEEE quotient).
template <class DL, bool kScaled>
inline bool cdiv(typename DL::R ar, typename DL::R ai, typename DL::R br, typename DL::R bi,
                 typename DL::R& re, typename DL::R& im) {
    using V = typename DL::R;
    V s = DL::set1(1.0);
    if constexpr (kScaled) {
        using I = Full<std::int64_t>;
        const __m128i e = I::min(I::and_(DL::bits(DL::max(DL::abs(ar), DL::abs(ai))), I::set1(0x7FF0000000000000)),
                                 I::set1(std::int64_t(2045) << 52));
        s = DL::fromBits(I::sub(I::set1(std::int64_t(2046) << 52), e));
        ar = DL::mul(ar, s);
        ai = DL::mul(ai, s);
    }
    const V den = DL::add(DL::mul(ar, ar), DL::mul(ai, ai));
    const V nre = DL::add(DL::mul(br, ar), DL::mul(bi, ai));
    const V nim = DL::sub(DL::mul(bi, ar), DL::mul(br, ai));
    const auto z = DL::eq(den, DL::zero());
    re = DL::div(nre, den);
    im = DL::div(nim, den);
    if constexpr (kScaled) {
        re = DL::mul(re, s);
        im = DL::mul(im, s);
    }
    if (!DL::anyOf(z)) return false;
    re = DL::blend(re, DL::div(br, den), z);
    im = DL::blend(im, DL::div(bi, den), z);
    return true;
}

template <class T>
struct DivCplx {
    const T* a;
    const T* b;
    T* d;
    bool zeros = false;
    template <class DL>
    void loadParts(const T* p, typename DL::R& re, typename DL::R& im) const {
        if constexpr (std::is_same_v<T, double>) {
            if constexpr (DL::N == 1) {
                re = DL::load(p);
                im = DL::load(p + 1);
            } else {
                const auto v0 = DL::load(p), v1 = DL::load(p + 2);
                re = DL::zipLo(v0, v1);
                im = DL::zipHi(v0, v1);
            }
        } else if constexpr (DL::N == 1) {
            re = DL::fromF32(One<float>::load(p));
            im = DL::fromF32(One<float>::load(p + 1));
        } else {
            const auto v = Full<float>::load(p);
            const auto lo = DL::fromF32(v), hi = DL::fromF32(Full<float>::hiHalf(v));
            re = DL::zipLo(lo, hi);
            im = DL::zipHi(lo, hi);
        }
    }
    template <class DL>
    void storeParts(T* p, typename DL::R re, typename DL::R im) const {
        if constexpr (std::is_same_v<T, double>) {
            if constexpr (DL::N == 1) {
                DL::store(p, re);
                DL::store(p + 1, im);
            } else {
                DL::store(p, DL::zipLo(re, im));
                DL::store(p + 2, DL::zipHi(re, im));
            }
        } else {
            const auto lo = DL::toF32(DL::zipLo(re, im));
            if constexpr (DL::N == 1) Pair<float>::store(p, lo);
            else Full<float>::store(p, Full<float>::joinLo(lo, DL::toF32(DL::zipHi(re, im))));
        }
    }
    // Two complex elements (i counts parts), or one.
    template <class DL>
    void step(std::ptrdiff_t i) {
        typename DL::R ar, ai, br, bi, re, im;
        loadParts<DL>(a + i, ar, ai);
        loadParts<DL>(b + i, br, bi);
        zeros |= cdiv<DL, std::is_same_v<T, double>>(ar, ai, br, bi, re, im);
        storeParts<DL>(d + i, re, im);
    }
};

// Kernel policies of the forms (dividend first).
template <class T>
struct DivFloat {
    using type = T;
    template <class A, class B>
    static ZvpStatus run(A num, B den, T* d, std::ptrdiff_t n) {
        return warnIf(drive<Full<T>::N, 1>(DivReal<T, A, B>{num, den, d}, n).sawZero());
    }
};
template <class T>
struct DivComplex {
    using type = T;
    static ZvpStatus run(form::Vec<T> num, form::Vec<T> den, T* d, std::ptrdiff_t n) {
        DivCplx<T> op{den.p, num.p, d};
        std::ptrdiff_t i = 0;
        for (; i + 4 <= n; i += 4) op.template step<Full<double>>(i);
        for (; i < n; i += 2) op.template step<One<double>>(i);
        return warnIf(op.zeros);
    }
};

// 1 / c of a complex constant: conj(c) / |c|^2, for 32fc formed in double
// and rounded once per part, for 64fc with the scaling of the quotients.
template <class C>
C reciprocal(C c) {
    using DL = One<double>;
    DL::R re, im;
    cdiv<DL, std::is_same_v<C, Zvp64fc>>(DL::set1(c.re), DL::set1(c.im), DL::set1(1.0), DL::zero(), re, im);
    return {decltype(c.re)(DL::first(re)), decltype(c.re)(DL::first(im))};
}

}  // namespace

// ---- Div: integers ------------------------------------------------------------

namespace {
using Div16uBoundAll = DivSmall<Zvp16u, true>;
}  // namespace

#define ZVP_DIV_SMALL(T, K)                                                                      \
    ZvpStatus zvpsDiv_##T##_Sfs(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len,  \
                                int scaleFactor) {                                               \
        return form::vvRev<K>(pSrc1, pSrc2, pDst, len, scaleFactor);                             \
    }                                                                                            \
    ZvpStatus zvpsDiv_##T##_ISfs(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len, int scaleFactor) { \
        return form::vvI<K>(pSrc, pSrcDst, len, scaleFactor);                                    \
    }

ZVP_DIV_SMALL(8u, DivSmall<Zvp8u>)
ZVP_DIV_SMALL(16s, DivSmall<Zvp16s>)
ZVP_DIV_SMALL(16u, Div16uBoundAll)
ZVP_DIV_SMALL(32s, DivExact<Zvp32s>)
ZVP_DIV_SMALL(16sc, Div16sc)
#undef ZVP_DIV_SMALL

// First source (the divisor) 32s; second source (the dividend) and the
// destination 16s.
ZvpStatus zvpsDiv_32s16s_Sfs(const Zvp32s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vvRev<DivExact<Zvp16s>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsDiv_32s16s_ISfs(const Zvp32s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<DivExact<Zvp16s>>(pSrc, pSrcDst, len, scaleFactor);
}

// ---- Div: floating point --------------------------------------------------------

#define ZVP_DIV_FLOAT(T, K)                                                                    \
    ZvpStatus zvpsDiv_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len) {   \
        return form::vvRev<K>(pSrc1, pSrc2, pDst, len);                                        \
    }                                                                                          \
    ZvpStatus zvpsDiv_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) {                  \
        return form::vvI<K>(pSrc, pSrcDst, len);                                               \
    }

ZVP_DIV_FLOAT(32f, DivFloat<Zvp32f>)
ZVP_DIV_FLOAT(64f, DivFloat<Zvp64f>)
ZVP_DIV_FLOAT(32fc, DivComplex<Zvp32f>)
ZVP_DIV_FLOAT(64fc, DivComplex<Zvp64f>)
#undef ZVP_DIV_FLOAT

// ---- DivC ------------------------------------------------------------------------

#define ZVP_DIVC(T, K)                                                                          \
    ZvpStatus zvpsDivC_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len,          \
                                 int scaleFactor) {                                             \
        return form::vc<RefusesZero<K>>(pSrc, val, pDst, len, scaleFactor);                     \
    }                                                                                           \
    ZvpStatus zvpsDivC_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {      \
        return form::vcI<RefusesZero<K>>(val, pSrcDst, len, scaleFactor);                       \
    }

ZVP_DIVC(8u, DivSmall<Zvp8u>)
ZVP_DIVC(16s, DivSmall<Zvp16s>)
ZVP_DIVC(16u, DivSmall<Zvp16u>)
ZVP_DIVC(16sc, Div16sc)
#undef ZVP_DIVC

ZvpStatus zvpsDivC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor) {
    return form::vcI<RefusesZero<DivExact<Zvp64s>>>(val, pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsDivC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    if (val == 0.0f) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_32f(pSrc, 1.0f / val, pDst, len);
}
ZvpStatus zvpsDivC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    if (val == 0.0f) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_32f_I(1.0f / val, pSrcDst, len);
}
ZvpStatus zvpsDivC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    if (val == 0.0) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_64f(pSrc, 1.0 / val, pDst, len);
}
ZvpStatus zvpsDivC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    if (val == 0.0) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_64f_I(1.0 / val, pSrcDst, len);
}

ZvpStatus zvpsDivC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    if (val.re == 0.0f && val.im == 0.0f) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_32fc(pSrc, reciprocal(val), pDst, len);
}
ZvpStatus zvpsDivC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    if (val.re == 0.0f && val.im == 0.0f) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_32fc_I(reciprocal(val), pSrcDst, len);
}
ZvpStatus zvpsDivC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    if (val.re == 0.0 && val.im == 0.0) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_64fc(pSrc, reciprocal(val), pDst, len);
}
ZvpStatus zvpsDivC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    if (val.re == 0.0 && val.im == 0.0) return zvpStsDivByZeroErr;
    return p8::zvpsMulC_64fc_I(reciprocal(val), pSrcDst, len);
}

// ---- DivCRev: d = val / x ---------------------------------------------------------

// 16u: the quotient rounded to nearest (ties to even); a zero element gives
// 65535 (0 when val is 0) and the warning.
ZvpStatus zvpsDivCRev_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len) {
    return form::cv<DivSmall<Zvp16u>>(pSrc, val, pDst, len);
}
ZvpStatus zvpsDivCRev_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len) {
    return form::cvI<DivSmall<Zvp16u>>(val, pSrcDst, len);
}

ZvpStatus zvpsDivCRev_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len) {
    return form::cv<DivFloat<Zvp32f>>(pSrc, val, pDst, len);
}
ZvpStatus zvpsDivCRev_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len) {
    return form::cvI<DivFloat<Zvp32f>>(val, pSrcDst, len);
}

}  // namespace zvp::p8

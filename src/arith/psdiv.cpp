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
#include "p8.h"

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

template <class T>
struct DivReal {  // d = b / a
    const T* a;
    const T* b;
    T* d;
    mutable Vec<T> zeros = zero(T());
    mutable bool zeroTail = false;
    Vec<T> compute(std::ptrdiff_t i) const {
        const Vec<T> x = load(a + i);
        zeros = bitOr(zeros, cmpeq(x, zero(T())));
        return div(load(b + i), x);
    }
    void tail(std::ptrdiff_t i) const {
        zeroTail |= a[i] == T(0);
        d[i] = b[i] / a[i];
    }
    bool sawZero() const { return anyLane(zeros) || zeroTail; }
};

template <class T>
struct DivRevC {  // d = c / a
    const T* a;
    T c;
    T* d;
    Vec<T> cv = set1(c);
    mutable Vec<T> zeros = zero(T());
    mutable bool zeroTail = false;
    Vec<T> compute(std::ptrdiff_t i) const {
        const Vec<T> x = load(a + i);
        zeros = bitOr(zeros, cmpeq(x, zero(T())));
        return div(cv, x);
    }
    void tail(std::ptrdiff_t i) const {
        zeroTail |= a[i] == T(0);
        d[i] = c / a[i];
    }
    bool sawZero() const { return anyLane(zeros) || zeroTail; }
};

// Complex quotients b / a of two pairs held as split parts in double lanes.
// 32fc: computed in double, which holds |a|^2 without overflow or underflow
// for every single-precision a. A zero divisor gives each dividend part
// divided by +0 (the IEEE quotient).
inline int cdiv32(__m128d ar, __m128d ai, __m128d br, __m128d bi, __m128d& re, __m128d& im) {
    const __m128d den = _mm_add_pd(_mm_mul_pd(ar, ar), _mm_mul_pd(ai, ai));
    const __m128d nre = _mm_add_pd(_mm_mul_pd(br, ar), _mm_mul_pd(bi, ai));
    const __m128d nim = _mm_sub_pd(_mm_mul_pd(bi, ar), _mm_mul_pd(br, ai));
    const __m128d z = _mm_cmpeq_pd(den, _mm_setzero_pd());
    re = _mm_div_pd(nre, den);
    im = _mm_div_pd(nim, den);
    const int zeroLanes = _mm_movemask_pd(z);
    if (zeroLanes) {
        re = _mm_blendv_pd(re, _mm_div_pd(br, den), z);
        im = _mm_blendv_pd(im, _mm_div_pd(bi, den), z);
    }
    return zeroLanes;
}

// 64fc: the divisor is first scaled by s = 2^-e, e the exponent of its
// larger part, so |a s|^2 lies in [1, 8): b / a = s * b conj(a s) / |a s|^2.
inline __m128d scaleOf(__m128d ar, __m128d ai) {
    const __m128d absMask = _mm_castsi128_pd(_mm_set1_epi64x(INT64_MAX));
    const __m128d m = _mm_max_pd(_mm_and_pd(ar, absMask), _mm_and_pd(ai, absMask));
    __m128i e = _mm_and_si128(_mm_castpd_si128(m), _mm_set1_epi64x(0x7FF0000000000000));
    const __m128i top = _mm_set1_epi64x(std::int64_t(2045) << 52);
    e = _mm_blendv_epi8(e, top, _mm_cmpgt_epi64(e, top));
    return _mm_castsi128_pd(_mm_sub_epi64(_mm_set1_epi64x(std::int64_t(2046) << 52), e));
}
inline int cdiv64(__m128d ar, __m128d ai, __m128d br, __m128d bi, __m128d& re, __m128d& im) {
    const __m128d s = scaleOf(ar, ai);
    ar = _mm_mul_pd(ar, s);
    ai = _mm_mul_pd(ai, s);
    const __m128d den = _mm_add_pd(_mm_mul_pd(ar, ar), _mm_mul_pd(ai, ai));
    const __m128d nre = _mm_add_pd(_mm_mul_pd(br, ar), _mm_mul_pd(bi, ai));
    const __m128d nim = _mm_sub_pd(_mm_mul_pd(bi, ar), _mm_mul_pd(br, ai));
    const __m128d z = _mm_cmpeq_pd(den, _mm_setzero_pd());
    re = _mm_mul_pd(_mm_div_pd(nre, den), s);
    im = _mm_mul_pd(_mm_div_pd(nim, den), s);
    const int zeroLanes = _mm_movemask_pd(z);
    if (zeroLanes) {
        re = _mm_blendv_pd(re, _mm_div_pd(br, den), z);
        im = _mm_blendv_pd(im, _mm_div_pd(bi, den), z);
    }
    return zeroLanes;
}

// Two complex elements per step; a single last element runs in lane 0 with
// the divisor 1 in lane 1.
struct DivCplx32 {
    const float* a;
    const float* b;
    float* d;
    mutable int zeros = 0;
    static void split(__m128 v, __m128d& re, __m128d& im) {
        const __m128d lo = _mm_cvtps_pd(v), hi = _mm_cvtps_pd(_mm_movehl_ps(v, v));
        re = _mm_unpacklo_pd(lo, hi);
        im = _mm_unpackhi_pd(lo, hi);
    }
    static __m128 join(__m128d re, __m128d im) {
        return _mm_movelh_ps(_mm_cvtpd_ps(_mm_unpacklo_pd(re, im)), _mm_cvtpd_ps(_mm_unpackhi_pd(re, im)));
    }
    void vec(std::ptrdiff_t i) const {
        __m128d ar, ai, br, bi, re, im;
        split(_mm_loadu_ps(a + i), ar, ai);
        split(_mm_loadu_ps(b + i), br, bi);
        zeros |= cdiv32(ar, ai, br, bi, re, im);
        _mm_storeu_ps(d + i, join(re, im));
    }
    void tail(std::ptrdiff_t i) const {
        __m128d re, im;
        zeros |= cdiv32(_mm_setr_pd(a[i], 1.0), _mm_set_sd(a[i + 1]), _mm_set_sd(b[i]), _mm_set_sd(b[i + 1]), re, im);
        const __m128 r = _mm_cvtpd_ps(_mm_unpacklo_pd(re, im));
        d[i] = _mm_cvtss_f32(r);
        d[i + 1] = _mm_cvtss_f32(_mm_shuffle_ps(r, r, 1));
    }
};

struct DivCplx64 {
    const double* a;
    const double* b;
    double* d;
    mutable int zeros = 0;
    void vec(std::ptrdiff_t i) const {
        const __m128d a0 = _mm_loadu_pd(a + i), a1 = _mm_loadu_pd(a + i + 2);
        const __m128d b0 = _mm_loadu_pd(b + i), b1 = _mm_loadu_pd(b + i + 2);
        __m128d re, im;
        zeros |= cdiv64(_mm_unpacklo_pd(a0, a1), _mm_unpackhi_pd(a0, a1), _mm_unpacklo_pd(b0, b1),
                        _mm_unpackhi_pd(b0, b1), re, im);
        _mm_storeu_pd(d + i, _mm_unpacklo_pd(re, im));
        _mm_storeu_pd(d + i + 2, _mm_unpackhi_pd(re, im));
    }
    void tail(std::ptrdiff_t i) const {
        __m128d re, im;
        zeros |= cdiv64(_mm_setr_pd(a[i], 1.0), _mm_set_sd(a[i + 1]), _mm_set_sd(b[i]), _mm_set_sd(b[i + 1]), re, im);
        _mm_storeu_pd(d + i, _mm_unpacklo_pd(re, im));
    }
};

template <class Op, class C>
ZvpStatus divCplx(const C* a, const C* b, C* d, int len) {
    return warnIf(drive<4, 2>(Op{&a->re, &b->re, &d->re}, 2 * std::ptrdiff_t(len)).zeros != 0);
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

#define ZVP_DIV_REAL(T)                                                                        \
    ZvpStatus zvpsDiv_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len) {   \
        ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);                                                    \
        ZVP_CHECK_LENS(len);                                                                   \
        const auto op = drive<16 / sizeof(Zvp##T), 1>(DivReal<Zvp##T>{pSrc1, pSrc2, pDst}, len); \
        return warnIf(op.sawZero());                                                           \
    }                                                                                          \
    ZvpStatus zvpsDiv_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) {                  \
        ZVP_CHECK_PTRS(pSrc, pSrcDst);                                                         \
        ZVP_CHECK_LENS(len);                                                                   \
        const auto op = drive<16 / sizeof(Zvp##T), 1>(DivReal<Zvp##T>{pSrc, pSrcDst, pSrcDst}, len); \
        return warnIf(op.sawZero());                                                           \
    }

ZVP_DIV_REAL(32f)
ZVP_DIV_REAL(64f)
#undef ZVP_DIV_REAL

ZvpStatus zvpsDiv_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return divCplx<DivCplx32>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsDiv_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return divCplx<DivCplx32>(pSrc, pSrcDst, pSrcDst, len);
}
ZvpStatus zvpsDiv_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return divCplx<DivCplx64>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsDiv_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return divCplx<DivCplx64>(pSrc, pSrcDst, pSrcDst, len);
}

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

namespace {
// 1 / c of a complex constant: conj(c) / |c|^2, for 32fc formed in double
// and rounded once per part, for 64fc with the scaling of cdiv64.
Zvp32fc reciprocal(Zvp32fc c) {
    __m128d re, im;
    cdiv32(_mm_setr_pd(c.re, 1.0), _mm_set_sd(c.im), _mm_set_sd(1.0), _mm_setzero_pd(), re, im);
    return {float(_mm_cvtsd_f64(re)), float(_mm_cvtsd_f64(im))};
}
Zvp64fc reciprocal(Zvp64fc c) {
    __m128d re, im;
    cdiv64(_mm_setr_pd(c.re, 1.0), _mm_set_sd(c.im), _mm_set_sd(1.0), _mm_setzero_pd(), re, im);
    return {_mm_cvtsd_f64(re), _mm_cvtsd_f64(im)};
}
}  // namespace

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
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const auto op = drive<4, 1>(DivRevC<Zvp32f>{pSrc, val, pDst}, len);
    return warnIf(op.sawZero());
}
ZvpStatus zvpsDivCRev_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    const auto op = drive<4, 1>(DivRevC<Zvp32f>{pSrcDst, val, pSrcDst}, len);
    return warnIf(op.sawZero());
}

}  // namespace zvp::p8

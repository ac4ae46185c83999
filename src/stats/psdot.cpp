// DotProd: the sum of a[i] b[i], complex products without conjugation.
//
//  * Float data: products gathered in sixteen single or eight double
//    partial sums in the driver's order (reduce_float.h). A complex product
//    is formed from two registers of part products: P = (ar br, ai bi) and
//    Q = (ar bi, ai br), re = sum P(re lanes) - sum P(im lanes) and im =
//    sum Q. Single-precision data with a double result are widened first,
//    so each product is exact.
//  * 16-bit data: exact in 64 bits (reduce_int.h); a float result is the
//    exact sum rounded once, a scaled one follows the clamped rule.
//  * 32-bit data: products exact in 64 bits, summed in 128.
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "check.h"
#include "p8/norms.h"
#include "reduce_float.h"
#include "reduce_int.h"

namespace zvp::p8 {
namespace {

using F32 = Full<float>;
using F64 = Full<double>;

// a and b of the same type T: reals, or complex as 2 len reals.
template <class T, bool Cplx>
struct DotSame {
    const T* a;
    const T* b;
    red::Acc<T> p, q;
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        const auto x = L::load(a + i), y = L::load(b + i);
        p.template add<u>(L::mul(x, y));
        if constexpr (Cplx) q.template add<u>(Full<T>::mul(x, Full<T>::swapReIm(y)));
    }
};

// Singles widened to double: products exact.
template <bool Cplx>
struct DotWide {
    const float* a;
    const float* b;
    red::Acc<double> p, q;
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        F64::R x0, x1, y0, y1;
        red::widen<L>(L::load(a + i), x0, x1);
        red::widen<L>(L::load(b + i), y0, y1);
        p.template add<u>(F64::add(F64::mul(x0, y0), F64::mul(x1, y1)));
        if constexpr (Cplx)
            q.template add<u>(F64::add(F64::mul(x0, F64::swapReIm(y0)), F64::mul(x1, F64::swapReIm(y1))));
    }
};

// Real a times complex b (counted in b's reals): each real repeated over
// the pair it multiplies.
template <class T>
struct DotRealCplx {
    const T* a;
    const T* b;
    red::Acc<T> p;
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        using H = Lanes<T, L::N / 2>;
        const auto x = Full<T>::dupEach(H::load(a + i / 2));
        p.template add<u>(Full<T>::mul(x, L::load(b + i)));
    }
};

// The same with single-precision data and a double result.
struct DotRealCplxWide {
    const float* a;
    const float* b;
    red::Acc<double> p;
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        using H = Lanes<float, L::N / 2>;
        F64::R y0, y1;
        red::widen<L>(L::load(b + i), y0, y1);
        const auto x = F64::fromF32(H::load(a + i / 2));
        p.template add<u>(F64::add(F64::mul(F64::dupRe(x), y0), F64::mul(F64::dupIm(x), y1)));
    }
};

template <class A, class B, class D>
bool bad(const A* a, const B* b, const D* d, int len, ZvpStatus& st) {
    st = anyNull(a, b, d) ? zvpStsNullPtrErr : len < 1 ? zvpStsSizeErr : zvpStsNoErr;
    return st != zvpStsNoErr;
}

template <class K, class T, int U>
K run(K k, std::ptrdiff_t n) {
    red::drive<T, U>(k, n);
    return k;
}

}  // namespace

#define ZVP_DOT(name, A, B, D) ZvpStatus zvpsDotProd_##name(const A* pSrc1, const B* pSrc2, int len, D* pDp)
#define ZVP_DOT_SFS(name, A, B, D) \
    ZvpStatus zvpsDotProd_##name(const A* pSrc1, const B* pSrc2, int len, D* pDp, int scaleFactor)
#define ZVP_CHECKED                                            \
    if (ZvpStatus st; bad(pSrc1, pSrc2, pDp, len, st)) return st

// ---- Float data ----------------------------------------------------------------

ZVP_DOT(32f, Zvp32f, Zvp32f, Zvp32f) {
    ZVP_CHECKED;
    *pDp = run<DotSame<float, false>, float, 1>({pSrc1, pSrc2, {}, {}}, len).p.total();
    return zvpStsNoErr;
}
ZVP_DOT(64f, Zvp64f, Zvp64f, Zvp64f) {
    ZVP_CHECKED;
    *pDp = run<DotSame<double, false>, double, 1>({pSrc1, pSrc2, {}, {}}, len).p.total();
    return zvpStsNoErr;
}
ZVP_DOT(32f64f, Zvp32f, Zvp32f, Zvp64f) {
    ZVP_CHECKED;
    *pDp = run<DotWide<false>, float, 1>({pSrc1, pSrc2, {}, {}}, len).p.total();
    return zvpStsNoErr;
}

template <class T, class K, class C>
void complexResult(const K& k, C* d) {
    const auto p = k.p.pairs(), q = k.q.pairs();
    *d = {T(p.first - p.second), T(q.first + q.second)};
}

ZVP_DOT(32fc, Zvp32fc, Zvp32fc, Zvp32fc) {
    ZVP_CHECKED;
    const auto* a = reinterpret_cast<const float*>(pSrc1);
    const auto* b = reinterpret_cast<const float*>(pSrc2);
    complexResult<float>(run<DotSame<float, true>, float, 2>({a, b, {}, {}}, 2 * std::ptrdiff_t(len)), pDp);
    return zvpStsNoErr;
}
ZVP_DOT(64fc, Zvp64fc, Zvp64fc, Zvp64fc) {
    ZVP_CHECKED;
    const auto* a = reinterpret_cast<const double*>(pSrc1);
    const auto* b = reinterpret_cast<const double*>(pSrc2);
    complexResult<double>(run<DotSame<double, true>, double, 2>({a, b, {}, {}}, 2 * std::ptrdiff_t(len)), pDp);
    return zvpStsNoErr;
}
ZVP_DOT(32fc64fc, Zvp32fc, Zvp32fc, Zvp64fc) {
    ZVP_CHECKED;
    const auto* a = reinterpret_cast<const float*>(pSrc1);
    const auto* b = reinterpret_cast<const float*>(pSrc2);
    complexResult<double>(run<DotWide<true>, float, 2>({a, b, {}, {}}, 2 * std::ptrdiff_t(len)), pDp);
    return zvpStsNoErr;
}
ZVP_DOT(32f32fc, Zvp32f, Zvp32fc, Zvp32fc) {
    ZVP_CHECKED;
    const auto p = run<DotRealCplx<float>, float, 2>({pSrc1, reinterpret_cast<const float*>(pSrc2), {}},
                                                     2 * std::ptrdiff_t(len)).p.pairs();
    *pDp = {p.first, p.second};
    return zvpStsNoErr;
}
ZVP_DOT(64f64fc, Zvp64f, Zvp64fc, Zvp64fc) {
    ZVP_CHECKED;
    const auto p = run<DotRealCplx<double>, double, 2>({pSrc1, reinterpret_cast<const double*>(pSrc2), {}},
                                                       2 * std::ptrdiff_t(len)).p.pairs();
    *pDp = {p.first, p.second};
    return zvpStsNoErr;
}
ZVP_DOT(32f32fc64fc, Zvp32f, Zvp32fc, Zvp64fc) {
    ZVP_CHECKED;
    const auto p = run<DotRealCplxWide, float, 2>({pSrc1, reinterpret_cast<const float*>(pSrc2), {}},
                                                  2 * std::ptrdiff_t(len)).p.pairs();
    *pDp = {p.first, p.second};
    return zvpStsNoErr;
}

// ---- 16-bit data -----------------------------------------------------------------

namespace {
inline const Zvp16s* parts16(const Zvp16sc* p) { return reinterpret_cast<const Zvp16s*>(p); }
}  // namespace

ZVP_DOT(16s32f, Zvp16s, Zvp16s, Zvp32f) {
    ZVP_CHECKED;
    *pDp = Zvp32f(red::dot16(pSrc1, pSrc2, len));
    return zvpStsNoErr;
}
ZVP_DOT(16s64s, Zvp16s, Zvp16s, Zvp64s) {
    ZVP_CHECKED;
    *pDp = red::dot16(pSrc1, pSrc2, len);
    return zvpStsNoErr;
}
ZVP_DOT_SFS(16s_Sfs, Zvp16s, Zvp16s, Zvp16s) {
    ZVP_CHECKED;
    *pDp = red::dotScale<Zvp16s>(Int128::from(red::dot16(pSrc1, pSrc2, len)), scaleFactor);
    return zvpStsNoErr;
}
ZVP_DOT_SFS(16s32s_Sfs, Zvp16s, Zvp16s, Zvp32s) {
    ZVP_CHECKED;
    *pDp = red::dotScale<Zvp32s>(Int128::from(red::dot16(pSrc1, pSrc2, len)), scaleFactor);
    return zvpStsNoErr;
}

// Complex results from exact (re, im).
#define ZVP_DOT16C(name, A, B, kernel, a, b)                                                          \
    ZVP_DOT(name##32fc, A, B, Zvp32fc) {                                                              \
        ZVP_CHECKED;                                                                                  \
        const auto r = kernel(a, b, len);                                                             \
        *pDp = {Zvp32f(r.even), Zvp32f(r.odd)};                                                       \
        return zvpStsNoErr;                                                                           \
    }                                                                                                 \
    ZVP_DOT(name##64sc, A, B, Zvp64sc) {                                                              \
        ZVP_CHECKED;                                                                                  \
        const auto r = kernel(a, b, len);                                                             \
        *pDp = {r.even, r.odd};                                                                       \
        return zvpStsNoErr;                                                                           \
    }                                                                                                 \
    ZVP_DOT_SFS(name##_Sfs, A, B, Zvp16sc) {                                                          \
        ZVP_CHECKED;                                                                                  \
        const auto r = kernel(a, b, len);                                                             \
        *pDp = {red::dotScale<Zvp16s>(Int128::from(r.even), scaleFactor),                             \
                red::dotScale<Zvp16s>(Int128::from(r.odd), scaleFactor)};                             \
        return zvpStsNoErr;                                                                           \
    }                                                                                                 \
    ZVP_DOT_SFS(name##32sc_Sfs, A, B, Zvp32sc) {                                                      \
        ZVP_CHECKED;                                                                                  \
        const auto r = kernel(a, b, len);                                                             \
        *pDp = {red::dotScale<Zvp32s>(Int128::from(r.even), scaleFactor),                             \
                red::dotScale<Zvp32s>(Int128::from(r.odd), scaleFactor)};                             \
        return zvpStsNoErr;                                                                           \
    }
ZVP_DOT16C(16sc, Zvp16sc, Zvp16sc, [](auto a, auto b, int n) { return red::dot16sc(a, b, 2 * std::ptrdiff_t(n)); },
           parts16(pSrc1), parts16(pSrc2))
ZVP_DOT16C(16s16sc, Zvp16s, Zvp16sc, red::dot16s16sc, pSrc1, parts16(pSrc2))
#undef ZVP_DOT16C

// ---- 32-bit data -------------------------------------------------------------------

ZVP_DOT_SFS(16s32s32s_Sfs, Zvp16s, Zvp32s, Zvp32s) {
    ZVP_CHECKED;
    // |a b| <= 2^46: 2^16 products fit 64 bits before they move into 128.
    Int128 s;
    for (std::ptrdiff_t i = 0; i < len;) {
        const std::ptrdiff_t end = i + 65536 < len ? i + 65536 : len;
        std::int64_t part = 0;
        for (; i < end; ++i) part += std::int64_t(pSrc1[i]) * pSrc2[i];
        s = s + Int128::from(part);
    }
    *pDp = red::dotScale<Zvp32s>(s, scaleFactor);
    return zvpStsNoErr;
}
ZVP_DOT_SFS(32s_Sfs, Zvp32s, Zvp32s, Zvp32s) {
    ZVP_CHECKED;
    Int128 s;
    for (int i = 0; i < len; ++i) s = s + Int128::from(std::int64_t(pSrc1[i]) * pSrc2[i]);
    *pDp = red::dotScale<Zvp32s>(s, scaleFactor);
    return zvpStsNoErr;
}
ZVP_DOT_SFS(32sc_Sfs, Zvp32sc, Zvp32sc, Zvp32sc) {
    ZVP_CHECKED;
    Int128 re, im;
    for (int i = 0; i < len; ++i) {
        const std::int64_t ar = pSrc1[i].re, ai = pSrc1[i].im, br = pSrc2[i].re, bi = pSrc2[i].im;
        re = re + Int128::from(ar * br) - Int128::from(ai * bi);
        im = im + Int128::from(ar * bi) + Int128::from(ai * br);
    }
    *pDp = {red::dotScale<Zvp32s>(re, scaleFactor), red::dotScale<Zvp32s>(im, scaleFactor)};
    return zvpStsNoErr;
}
ZVP_DOT_SFS(32s32sc_Sfs, Zvp32s, Zvp32sc, Zvp32sc) {
    ZVP_CHECKED;
    Int128 re, im;
    for (int i = 0; i < len; ++i) {
        const std::int64_t a = pSrc1[i];
        re = re + Int128::from(a * pSrc2[i].re);
        im = im + Int128::from(a * pSrc2[i].im);
    }
    *pDp = {red::dotScale<Zvp32s>(re, scaleFactor), red::dotScale<Zvp32s>(im, scaleFactor)};
    return zvpStsNoErr;
}

#undef ZVP_CHECKED
#undef ZVP_DOT_SFS
#undef ZVP_DOT

}  // namespace zvp::p8

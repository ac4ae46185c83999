// Add and AddC: element-wise sums of two vectors, or of a vector and a
// constant. Integer forms deliver the exact sum scaled by 2^-scaleFactor,
// rounded to nearest with ties to even and saturated (the plain forms
// without a scale factor saturate the exact sum); float forms use IEEE
// addition. In place, the source-and-destination vector is the left operand.
#include <cstdint>
#include <limits>
#include <type_traits>

#include "addsub_kernel.h"
#include "check.h"
#include "int128.h"
#include "p8/addsub.h"
#include "p8/copy.h"
#include "scale.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

using addsub::Lane16s;
using addsub::Lane16u;
using addsub::Lane32s;
using addsub::Lane8u;
using addsub::Limits;
using addsub::Op;

// Thresholds of the sum: zero above Z, bound at or below N.
constexpr Limits kAdd8u{9, -8};      // R in [0, 510]
constexpr Limits kAdd16s{16, -16};   // R in [-65536, 65534]
constexpr Limits kAdd16u{17, -16};   // R in [0, 131070]
constexpr Limits kAdd32s{32, -31};   // R in [-2^32, 2^32 - 2]
constexpr Limits kAdd64s{64, -63};   // R in [-2^64, 2^64 - 2]
constexpr Limits kAdd64u{65, -64};   // R in [0, 2^65 - 2]

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

template <class D, class B>
ZvpStatus sum64(const D* a, B b, D* d, int len, int sf, Limits lim) {
    if (sf == 0) {
        for (int i = 0; i < len; ++i) d[i] = sum64Plain(a[i], b(i));
    } else if (sf > lim.z) {
        return zvpsZero_64s(reinterpret_cast<Zvp64s*>(d), len);
    } else if (sf <= lim.n) {
        for (int i = 0; i < len; ++i) d[i] = sum64Bound(a[i], b(i));
    } else {
        for (int i = 0; i < len; ++i)
            d[i] = scaleRule<D>(Int128::from(a[i]) + Int128::from(b(i)), sf);
    }
    return zvpStsNoErr;
}

template <class D>
ZvpStatus add64(const D* s1, const D* s2, D* d, int len, int sf, Limits lim) {
    ZVP_CHECK_PTRS(s1, s2, d);
    ZVP_CHECK_LENS(len);
    return sum64(s1, [s2](int i) { return s2[i]; }, d, len, sf, lim);
}

template <class D>
ZvpStatus addC64(const D* s, D c, D* d, int len, int sf, Limits lim) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if (c == 0 && sf == 0) {
        if (s == d) return zvpStsNoErr;
        return zvpsCopy_64s(reinterpret_cast<const Zvp64s*>(s), reinterpret_cast<Zvp64s*>(d), len);
    }
    return sum64(s, [c](int) { return c; }, d, len, sf, lim);
}

// ---- Constant forms with the copy shortcut ---------------------------------
// A zero constant at scale factor 0 changes nothing: out of place the source
// is copied, in place nothing is written.

template <class L>
ZvpStatus addCReal(const typename L::T* s, typename L::T c, typename L::T* d, int len, int sf,
                   Limits lim) {
    using T = typename L::T;
    if (c == 0 && sf == 0) {
        ZVP_CHECK_PTRS(s, d);
        ZVP_CHECK_LENS(len);
        if (s == d) return zvpStsNoErr;
        if constexpr (sizeof(T) == 1)
            return zvpsCopy_8u(reinterpret_cast<const Zvp8u*>(s), reinterpret_cast<Zvp8u*>(d), len);
        else if constexpr (sizeof(T) == 2)
            return zvpsCopy_16s(reinterpret_cast<const Zvp16s*>(s), reinterpret_cast<Zvp16s*>(d), len);
        else
            return zvpsCopy_32s(reinterpret_cast<const Zvp32s*>(s), reinterpret_cast<Zvp32s*>(d), len);
    }
    return addsub::realConst<L, Op::Add, false>(s, c, d, len, sf, lim);
}

template <class L, class C, class Copy, class Zero>
ZvpStatus addCComplex(const C* s, C c, C* d, int len, int sf, Limits lim, Copy copy, Zero zero) {
    if (c.re == 0 && c.im == 0 && sf == 0) {
        ZVP_CHECK_PTRS(s, d);
        ZVP_CHECK_LENS(len);
        if (s == d) return zvpStsNoErr;
        return copy(s, d, len);
    }
    return addsub::complexConst<L, Op::Add, false>(s, c, d, len, sf, lim, zero);
}

// ---- Mixed types -----------------------------------------------------------

void add8u16u(const Zvp8u* a, const Zvp8u* b, Zvp16u* d, int n) {
    const __m128i z = _mm_setzero_si128();
    int i = 0;
    for (; i + 16 <= n; i += 16) {
        const __m128i x = simd::loadu(a + i), y = simd::loadu(b + i);
        simd::storeu(d + i, _mm_add_epi16(_mm_unpacklo_epi8(x, z), _mm_unpacklo_epi8(y, z)));
        simd::storeu(d + i + 8, _mm_add_epi16(_mm_unpackhi_epi8(x, z), _mm_unpackhi_epi8(y, z)));
    }
    for (; i < n; ++i) d[i] = Zvp16u(a[i] + b[i]);
}

// d[i] = x[i] op y[i] as an exact float (|R| <= 65536 needs 17 bits).
template <Op op>
void sum16s32f(const Zvp16s* x, const Zvp16s* y, Zvp32f* d, int n) {
    int i = 0;
    auto f = [](__m128i p, __m128i q) {
        return _mm_cvtepi32_ps(op == Op::Add ? _mm_add_epi32(p, q) : _mm_sub_epi32(p, q));
    };
    for (; i + 8 <= n; i += 8) {
        const __m128i a = simd::loadu(x + i), b = simd::loadu(y + i);
        _mm_storeu_ps(d + i, f(_mm_cvtepi16_epi32(a), _mm_cvtepi16_epi32(b)));
        _mm_storeu_ps(d + i + 4, f(_mm_cvtepi16_epi32(_mm_srli_si128(a, 8)),
                                   _mm_cvtepi16_epi32(_mm_srli_si128(b, 8))));
    }
    for (; i < n; ++i) d[i] = Zvp32f(addsub::apply<op>(int(x[i]), int(y[i])));
}

void add16s32sI(const Zvp16s* s, Zvp32s* d, int n) {
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        const __m128i b = _mm_cvtepi16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(s + i)));
        simd::storeu(d + i, sse::addsEpi32(simd::loadu(d + i), b));
    }
    for (; i < n; ++i) d[i] = saturate<Zvp32s>(std::int64_t(d[i]) + s[i]);
}

void add32u(const Zvp32u* a, const Zvp32u* b, Zvp32u* d, int n) {
    int i = 0;
    for (; i + 8 <= n; i += 8) {
        const __m128i r0 = sse::addsEpu32(simd::loadu(a + i), simd::loadu(b + i));
        const __m128i r1 = sse::addsEpu32(simd::loadu(a + i + 4), simd::loadu(b + i + 4));
        simd::storeu(d + i, r0);
        simd::storeu(d + i + 4, r1);
    }
    for (; i < n; ++i) {
        const Zvp32u s = a[i] + b[i];
        d[i] = s < a[i] ? 0xFFFFFFFFu : s;
    }
}

}  // namespace

// ---- Add: vector + vector ---------------------------------------------------

ZvpStatus zvpsAdd_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                         int scaleFactor) {
    return addsub::vecVec<Lane8u, Op::Add>(pSrc1, pSrc2, pDst, len, scaleFactor, kAdd8u);
}
ZvpStatus zvpsAdd_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane8u, Op::Add>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kAdd8u);
}

ZvpStatus zvpsAdd_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len) {
    return addsub::vecVec<Lane16s, Op::Add>(pSrc1, pSrc2, pDst, len, 0, kAdd16s);
}
ZvpStatus zvpsAdd_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len) {
    return addsub::vecVec<Lane16s, Op::Add>(pSrcDst, pSrc, pSrcDst, len, 0, kAdd16s);
}
ZvpStatus zvpsAdd_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                          int scaleFactor) {
    return addsub::vecVec<Lane16s, Op::Add>(pSrc1, pSrc2, pDst, len, scaleFactor, kAdd16s);
}
ZvpStatus zvpsAdd_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane16s, Op::Add>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kAdd16s);
}

ZvpStatus zvpsAdd_16u(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len) {
    return addsub::vecVec<Lane16u, Op::Add>(pSrc1, pSrc2, pDst, len, 0, kAdd16u);
}
ZvpStatus zvpsAdd_16u_I(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len) {
    return addsub::vecVec<Lane16u, Op::Add>(pSrcDst, pSrc, pSrcDst, len, 0, kAdd16u);
}
ZvpStatus zvpsAdd_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                          int scaleFactor) {
    return addsub::vecVec<Lane16u, Op::Add>(pSrc1, pSrc2, pDst, len, scaleFactor, kAdd16u);
}
ZvpStatus zvpsAdd_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane16u, Op::Add>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kAdd16u);
}

ZvpStatus zvpsAdd_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len,
                           int scaleFactor) {
    return addsub::complexAsReals(zvpsAdd_16s_Sfs, pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return addsub::complexAsReals(zvpsAdd_16s_ISfs, pSrc, pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsAdd_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len,
                          int scaleFactor) {
    return addsub::vecVec<Lane32s, Op::Add>(pSrc1, pSrc2, pDst, len, scaleFactor, kAdd32s);
}
ZvpStatus zvpsAdd_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane32s, Op::Add>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kAdd32s);
}

ZvpStatus zvpsAdd_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len,
                           int scaleFactor) {
    return addsub::complexAsReals(zvpsAdd_32s_Sfs, pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsAdd_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return addsub::complexAsReals(zvpsAdd_32s_ISfs, pSrc, pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsAdd_32u(const Zvp32u* pSrc1, const Zvp32u* pSrc2, Zvp32u* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    add32u(pSrc1, pSrc2, pDst, len);
    return zvpStsNoErr;
}
ZvpStatus zvpsAdd_32u_I(const Zvp32u* pSrc, Zvp32u* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    add32u(pSrcDst, pSrc, pSrcDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsAdd_64s_Sfs(const Zvp64s* pSrc1, const Zvp64s* pSrc2, Zvp64s* pDst, int len,
                          int scaleFactor) {
    return add64(pSrc1, pSrc2, pDst, len, scaleFactor, kAdd64s);
}
ZvpStatus zvpsAdd_64s_ISfs(const Zvp64s* pSrc, Zvp64s* pSrcDst, int len, int scaleFactor) {
    return add64<Zvp64s>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kAdd64s);
}

ZvpStatus zvpsAdd_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len) {
    return addsub::floatVecVec<float, Op::Add>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len) {
    return addsub::floatVecVec<float, Op::Add>(pSrcDst, pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len) {
    return addsub::floatVecVec<double, Op::Add>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len) {
    return addsub::floatVecVec<double, Op::Add>(pSrcDst, pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    return addsub::floatVecVecC<float, Op::Add>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len) {
    return addsub::floatVecVecC<float, Op::Add>(pSrcDst, pSrc, pSrcDst, len);
}
ZvpStatus zvpsAdd_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len) {
    return addsub::floatVecVecC<double, Op::Add>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsAdd_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len) {
    return addsub::floatVecVecC<double, Op::Add>(pSrcDst, pSrc, pSrcDst, len);
}

// ---- Add: mixed types ------------------------------------------------------

ZvpStatus zvpsAdd_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    add8u16u(pSrc1, pSrc2, pDst, len);
    return zvpStsNoErr;
}
ZvpStatus zvpsAdd_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    sum16s32f<Op::Add>(pSrc1, pSrc2, pDst, len);
    return zvpStsNoErr;
}
ZvpStatus zvpsAdd_16s32s_I(const Zvp16s* pSrc, Zvp32s* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    add16s32sI(pSrc, pSrcDst, len);
    return zvpStsNoErr;
}

// ---- AddC: vector + constant ----------------------------------------------

ZvpStatus zvpsAddC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor) {
    return addCReal<Lane8u>(pSrc, val, pDst, len, scaleFactor, kAdd8u);
}
ZvpStatus zvpsAddC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return addCReal<Lane8u>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd8u);
}

ZvpStatus zvpsAddC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len) {
    return addCReal<Lane16s>(pSrcDst, val, pSrcDst, len, 0, kAdd16s);
}
ZvpStatus zvpsAddC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len,
                           int scaleFactor) {
    return addCReal<Lane16s>(pSrc, val, pDst, len, scaleFactor, kAdd16s);
}
ZvpStatus zvpsAddC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return addCReal<Lane16s>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd16s);
}

ZvpStatus zvpsAddC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len,
                            int scaleFactor) {
    return addCComplex<Lane16s>(pSrc, val, pDst, len, scaleFactor, kAdd16s, zvpsCopy_16sc,
                                zvpsZero_16sc);
}
ZvpStatus zvpsAddC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return addCComplex<Lane16s>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd16s, zvpsCopy_16sc,
                                zvpsZero_16sc);
}

ZvpStatus zvpsAddC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len,
                           int scaleFactor) {
    return addCReal<Lane16u>(pSrc, val, pDst, len, scaleFactor, kAdd16u);
}
ZvpStatus zvpsAddC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return addCReal<Lane16u>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd16u);
}

ZvpStatus zvpsAddC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len,
                           int scaleFactor) {
    return addCReal<Lane32s>(pSrc, val, pDst, len, scaleFactor, kAdd32s);
}
ZvpStatus zvpsAddC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return addCReal<Lane32s>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd32s);
}

ZvpStatus zvpsAddC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len,
                            int scaleFactor) {
    return addCComplex<Lane32s>(pSrc, val, pDst, len, scaleFactor, kAdd32s, zvpsCopy_32sc,
                                zvpsZero_32sc);
}
ZvpStatus zvpsAddC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return addCComplex<Lane32s>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd32s, zvpsCopy_32sc,
                                zvpsZero_32sc);
}

ZvpStatus zvpsAddC_64s_Sfs(const Zvp64s* pSrc, Zvp64s val, Zvp64s* pDst, int len,
                           int scaleFactor) {
    return addC64(pSrc, val, pDst, len, scaleFactor, kAdd64s);
}
ZvpStatus zvpsAddC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor) {
    return addC64<Zvp64s>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd64s);
}
ZvpStatus zvpsAddC_64u_Sfs(const Zvp64u* pSrc, Zvp64u val, Zvp64u* pDst, int len,
                           int scaleFactor) {
    return addC64(pSrc, val, pDst, len, scaleFactor, kAdd64u);
}
ZvpStatus zvpsAddC_64u_ISfs(Zvp64u val, Zvp64u* pSrcDst, int len, int scaleFactor) {
    return addC64<Zvp64u>(pSrcDst, val, pSrcDst, len, scaleFactor, kAdd64u);
}

ZvpStatus zvpsAddC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len) {
    return addsub::floatConst<float, Op::Add, false>(pSrc, val, val, pDst, len);
}
ZvpStatus zvpsAddC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len) {
    return addsub::floatConst<float, Op::Add, false>(pSrcDst, val, val, pSrcDst, len);
}
ZvpStatus zvpsAddC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len) {
    return addsub::floatConst<double, Op::Add, false>(pSrc, val, val, pDst, len);
}
ZvpStatus zvpsAddC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len) {
    return addsub::floatConst<double, Op::Add, false>(pSrcDst, val, val, pSrcDst, len);
}
ZvpStatus zvpsAddC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len) {
    return addsub::floatConstC<float, Op::Add, false>(pSrc, val, pDst, len);
}
ZvpStatus zvpsAddC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len) {
    return addsub::floatConstC<float, Op::Add, false>(pSrcDst, val, pSrcDst, len);
}
ZvpStatus zvpsAddC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len) {
    return addsub::floatConstC<double, Op::Add, false>(pSrc, val, pDst, len);
}
ZvpStatus zvpsAddC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len) {
    return addsub::floatConstC<double, Op::Add, false>(pSrcDst, val, pSrcDst, len);
}

}  // namespace zvp::p8

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

#include "check.h"
#include "int128.h"
#include "muldiv_kernel.h"
#include "p8/copy.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using muldiv::Path;

// ---- Operands ------------------------------------------------------------------

template <class T>
struct Vec {
    const T* p;
    T at(std::ptrdiff_t i) const { return p[i]; }
    __m128i load(std::ptrdiff_t i) const { return simd::loadu(p + i); }
    __m128i load64(std::ptrdiff_t i) const { return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p + i)); }
};

template <class T>
struct Const {
    T c;
    __m128i v;
    explicit Const(T c_) : c(c_) {
        if constexpr (sizeof(T) == 1) v = _mm_set1_epi8(static_cast<char>(c));
        else if constexpr (sizeof(T) == 2) v = _mm_set1_epi16(static_cast<short>(c));
        else v = _mm_set1_epi32(static_cast<int>(c));
    }
    T at(int) const { return c; }
    __m128i load(int) const { return v; }
    __m128i load64(int) const { return v; }
};

// ---- Sources of R --------------------------------------------------------------

// 8u x 8u, in unsigned 16-bit lanes (at most 65025).
template <class A, class B>
struct Mul8u {
    A a;
    B b;
    void lanes(std::ptrdiff_t i, __m128i& r0, __m128i& r1) const {
        const __m128i z = _mm_setzero_si128();
        const __m128i x = a.load(i), y = b.load(i);
        r0 = _mm_mullo_epi16(_mm_unpacklo_epi8(x, z), _mm_unpacklo_epi8(y, z));
        r1 = _mm_mullo_epi16(_mm_unpackhi_epi8(x, z), _mm_unpackhi_epi8(y, z));
    }
    std::int32_t exact(std::ptrdiff_t i) const { return std::int32_t(a.at(i)) * std::int32_t(b.at(i)); }
};

// 16s x 16s in 32-bit lanes.
template <class A, class B>
struct Mul16s {
    A a;
    B b;
    void lanes(std::ptrdiff_t i, __m128i& r0, __m128i& r1) const {
        const __m128i x = a.load(i), y = b.load(i);
        const __m128i lo = _mm_mullo_epi16(x, y), hi = _mm_mulhi_epi16(x, y);
        r0 = _mm_unpacklo_epi16(lo, hi);
        r1 = _mm_unpackhi_epi16(lo, hi);
    }
    std::int32_t exact(std::ptrdiff_t i) const { return std::int32_t(a.at(i)) * std::int32_t(b.at(i)); }
};

// 16u x 16u in unsigned 32-bit lanes.
template <class A, class B>
struct Mul16u {
    A a;
    B b;
    void lanes(std::ptrdiff_t i, __m128i& r0, __m128i& r1) const {
        const __m128i x = a.load(i), y = b.load(i);
        const __m128i lo = _mm_mullo_epi16(x, y), hi = _mm_mulhi_epu16(x, y);
        r0 = _mm_unpacklo_epi16(lo, hi);
        r1 = _mm_unpackhi_epi16(lo, hi);
    }
    std::int64_t exact(std::ptrdiff_t i) const { return std::int64_t(a.at(i)) * std::int64_t(b.at(i)); }
};

// 16u x 16s in signed 32-bit lanes (|R| < 2^31). The signed high product
// reads a 16u operand u >= 2^15 as u - 2^16, which takes b * 2^16 off the
// product: adding b back to the high half where u >= 2^15 corrects it.
template <class A, class B>
struct Mul16u16s {
    A a;  // 16u
    B b;  // 16s
    void lanes(std::ptrdiff_t i, __m128i& r0, __m128i& r1) const {
        const __m128i x = a.load(i), y = b.load(i);
        const __m128i lo = _mm_mullo_epi16(x, y);
        const __m128i hi = _mm_add_epi16(_mm_mulhi_epi16(x, y), _mm_and_si128(y, _mm_srai_epi16(x, 15)));
        r0 = _mm_unpacklo_epi16(lo, hi);
        r1 = _mm_unpackhi_epi16(lo, hi);
    }
    std::int32_t exact(std::ptrdiff_t i) const { return std::int32_t(a.at(i)) * std::int32_t(b.at(i)); }
};

// 16s x 16s into a 32s destination, four per step (|R| <= 2^30).
template <class A, class B>
struct Mul16s32s {
    A a;
    B b;
    __m128i lanes(std::ptrdiff_t i) const {
        const __m128i z = _mm_setzero_si128();
        return _mm_madd_epi16(_mm_unpacklo_epi16(a.load64(i), z), _mm_unpacklo_epi16(b.load64(i), z));
    }
    std::int32_t exact(std::ptrdiff_t i) const { return std::int32_t(a.at(i)) * std::int32_t(b.at(i)); }
};

// 32s x 32s in 64-bit lanes, four per step: even elements in e, odd in o.
template <class A, class B>
struct Mul32s {
    A a;
    B b;
    void lanes(std::ptrdiff_t i, __m128i& e, __m128i& o) const {
        const __m128i x = a.load(i), y = b.load(i);
        e = _mm_mul_epi32(x, y);
        o = _mm_mul_epi32(_mm_srli_epi64(x, 32), _mm_srli_epi64(y, 32));
    }
    std::int64_t exact(std::ptrdiff_t i) const { return std::int64_t(a.at(i)) * std::int64_t(b.at(i)); }
};

// 32s x 32sc: the destination index i counts 32-bit parts, so element i/2.
struct Mul32s32sc {
    const Zvp32s* a;
    const Zvp32s* b;  // parts of the 32sc operand
    void lanes(std::ptrdiff_t i, __m128i& e, __m128i& o) const {
        const __m128i x = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(a + i / 2));
        const __m128i xx = _mm_unpacklo_epi32(x, x);  // a0 a0 a1 a1
        const __m128i y = simd::loadu(b + i);
        e = _mm_mul_epi32(xx, y);                      // real parts
        o = _mm_mul_epi32(_mm_srli_epi64(xx, 32), _mm_srli_epi64(y, 32));  // imaginary
    }
    std::int64_t exact(std::ptrdiff_t i) const { return std::int64_t(a[i / 2]) * std::int64_t(b[i]); }
};

// ---- 16sc ------------------------------------------------------------------------

// Swaps the two 16-bit halves of every 32-bit lane: (re, im) -> (im, re).
inline __m128i swapHalves(__m128i v) {
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, _MM_SHUFFLE(2, 3, 0, 1)), _MM_SHUFFLE(2, 3, 0, 1));
}

// Part i & 1 of element i / 2 of a x b, exactly; b advances with a unless
// it is a constant.
inline std::int64_t cplxPart(const Zvp16s* a, const Zvp16s* b, std::ptrdiff_t i, bool bConst = false) {
    const int j = i & ~1, k = bConst ? 0 : j;
    const std::int64_t ar = a[j], ai = a[j + 1], br = b[k], bi = b[k + 1];
    return (i & 1) ? ar * bi + ai * br : ar * br - ai * bi;
}

// Vector x vector. Real parts: ar*br - ai*bi from two single products per
// lane (each fits, so does the difference). Imaginary: one pmaddwd.
struct Mul16sc {
    const Zvp16s* a;
    const Zvp16s* b;
    void lanes(std::ptrdiff_t i, __m128i& re, __m128i& im) const {
        const __m128i x = simd::loadu(a + i), y = simd::loadu(b + i);
        const __m128i lo = _mm_set1_epi32(0xFFFF);
        re = _mm_sub_epi32(_mm_madd_epi16(x, _mm_and_si128(y, lo)), _mm_madd_epi16(x, _mm_andnot_si128(lo, y)));
        im = _mm_madd_epi16(x, swapHalves(y));
    }
    std::int64_t exact(std::ptrdiff_t i) const { return cplxPart(a, b, i); }
};

// Vector x constant c with c.im != -32768: both parts one pmaddwd with
// (c.re, -c.im) and (c.im, c.re); neither sum can leave 32 bits.
struct MulC16sc {
    const Zvp16s* a;
    Zvp16s c[2];
    __m128i kRe, kIm;
    MulC16sc(const Zvp16s* a_, Zvp16sc v) : a(a_), c{v.re, v.im} {
        kRe = _mm_set1_epi32(std::int32_t(std::uint16_t(v.re) | (std::uint32_t(std::uint16_t(-v.im)) << 16)));
        kIm = _mm_set1_epi32(std::int32_t(std::uint16_t(v.im) | (std::uint32_t(std::uint16_t(v.re)) << 16)));
    }
    void lanes(std::ptrdiff_t i, __m128i& re, __m128i& im) const {
        const __m128i x = simd::loadu(a + i);
        re = _mm_madd_epi16(x, kRe);
        im = _mm_madd_epi16(x, kIm);
    }
    std::int64_t exact(std::ptrdiff_t i) const { return cplxPart(a, c, i, true); }
};

// Vector x constant with c.im = -32768, whose negation has no 16-bit form:
// the real part is ar*cr + ai*2^15, the imaginary part may wrap as for
// Mul16sc.
struct MulC16scOvf {
    const Zvp16s* a;
    Zvp16s c[2];
    __m128i kRe, kIm;
    MulC16scOvf(const Zvp16s* a_, Zvp16sc v) : a(a_), c{v.re, v.im} {
        kRe = _mm_set1_epi32(std::int32_t(std::uint16_t(v.re)));
        kIm = _mm_set1_epi32(std::int32_t(std::uint16_t(v.im) | (std::uint32_t(std::uint16_t(v.re)) << 16)));
    }
    void lanes(std::ptrdiff_t i, __m128i& re, __m128i& im) const {
        const __m128i x = simd::loadu(a + i);
        re = _mm_add_epi32(_mm_madd_epi16(x, kRe), _mm_slli_epi32(_mm_srai_epi32(x, 16), 15));
        im = _mm_madd_epi16(x, kIm);
    }
    std::int64_t exact(std::ptrdiff_t i) const { return cplxPart(a, c, i, true); }
};

// n counts 16-bit parts. kWrap: the imaginary lanes may hold -2^31 standing
// for +2^31.
template <class LaneSet, bool kWrap, class S>
void run16sc(const S& source, Zvp16s* d, std::ptrdiff_t n, int sf) {
    const S s = source;
    const LaneSet ls(sf);
    const __m128i fix = _mm_set1_epi16(scaleRule<Zvp16s>(std::int64_t(1) << 31, sf));
    const __m128i wrapped = _mm_set1_epi32(INT32_MIN);
    std::ptrdiff_t i = 0;
    for (; i + 8 <= n; i += 8) {
        __m128i re, im;
        s.lanes(i, re, im);
        const __m128i r = ls.pre(re), m = ls.pre(im);
        __m128i out = ls.finish(_mm_unpacklo_epi32(r, m), _mm_unpackhi_epi32(r, m));
        if constexpr (kWrap) {
            const __m128i w = _mm_cmpeq_epi32(im, wrapped), z = _mm_setzero_si128();
            const __m128i w16 = _mm_packs_epi32(_mm_unpacklo_epi32(z, w), _mm_unpackhi_epi32(z, w));
            out = _mm_blendv_epi8(out, fix, w16);
        }
        simd::storeu(d + i, out);
    }
    // Both parts of an element come from both parts of its sources, which
    // in place are the destination: read them before writing either.
    for (; i < n; i += 2) {
        const Zvp16s re = scaleRule<Zvp16s>(s.exact(i), sf);
        const Zvp16s im = scaleRule<Zvp16s>(s.exact(i + 1), sf);
        d[i] = re;
        d[i + 1] = im;
    }
}

// ---- Path instantiation ------------------------------------------------------------

template <class D, bool kHeadroom = false>
struct Run16 {
    template <Path P>
    struct R {
        template <class S>
        static void go(const S& s, D* d, std::ptrdiff_t len, int sf) {
            muldiv::run16<muldiv::Lanes32to16<D, P, kHeadroom>>(s, d, len, sf);
        }
    };
};
template <Path P>
struct Run16u {
    template <class S>
    static void go(const S& s, Zvp16u* d, std::ptrdiff_t len, int sf) { muldiv::run16<muldiv::LanesU32to16u<P>>(s, d, len, sf); }
};
template <Path P>
struct Run8u {
    template <class S>
    static void go(const S& s, Zvp8u* d, std::ptrdiff_t len, int sf) { muldiv::run8<muldiv::LanesU16to8u<P>>(s, d, len, sf); }
};
template <Path P>
struct Run32from32 {
    template <class S>
    static void go(const S& s, Zvp32s* d, std::ptrdiff_t len, int sf) { muldiv::run32from32<muldiv::Lanes32to32<P>>(s, d, len, sf); }
};
template <Path P>
struct Run32from64 {
    template <class S>
    static void go(const S& s, Zvp32s* d, std::ptrdiff_t len, int sf) { muldiv::run32from64<muldiv::Lanes64to32<P>>(s, d, len, sf); }
};
template <bool kWrap>
struct Run16sc {
    template <Path P>
    struct R {
        template <class S>
        static void go(const S& s, Zvp16s* d, std::ptrdiff_t n, int sf) {
            run16sc<muldiv::Lanes32to16<Zvp16s, P>, kWrap>(s, d, n, sf);
        }
    };
};

// Thresholds Z (zero above) and N (bound at or below) of each form.
constexpr int kZ8u = 16, kN8u = -8;
constexpr int kZ16s = 30, kN16s = -16;
constexpr int kZ16s32s = 30, kN16s32s = -32;
constexpr int kZ16u = 32, kN16u = -16;
constexpr int kZ16u16s = 31, kN16u16s = -16;
constexpr int kZ16sc = 31, kN16sc = -16;
constexpr int kZ32s = 62, kN32s = -32;
constexpr int kZ32sc = 63, kN32sc = -32;
constexpr int kZ64s = 126, kN64s = -64;

// ---- Bodies --------------------------------------------------------------------------

template <class B>
ZvpStatus mul8u(const Zvp8u* a, B b, Zvp8u* d, int len, int sf) {
    return muldiv::dispatch<Run8u>(sf, kZ8u, kN8u, [&] { return p8::zvpsZero_8u(d, len); },
                                   Mul8u<Vec<Zvp8u>, B>{{a}, b}, d, len);
}

template <class B>
ZvpStatus mul16s(const Zvp16s* a, B b, Zvp16s* d, int len, int sf) {
    // |a * b| <= 2^30 and sf <= Z = 30: the short rounding applies.
    return muldiv::dispatch<Run16<Zvp16s, true>::R>(sf, kZ16s, kN16s, [&] { return p8::zvpsZero_16s(d, len); },
                                              Mul16s<Vec<Zvp16s>, B>{{a}, b}, d, len);
}

template <class B>
ZvpStatus mul16u(const Zvp16u* a, B b, Zvp16u* d, int len, int sf) {
    return muldiv::dispatch<Run16u>(
        sf, kZ16u, kN16u, [&] { return p8::zvpsZero_16s(reinterpret_cast<Zvp16s*>(d), len); },
        Mul16u<Vec<Zvp16u>, B>{{a}, b}, d, len);
}

template <class B>
ZvpStatus mul32s(const Zvp32s* a, B b, Zvp32s* d, int len, int sf) {
    return muldiv::dispatch<Run32from64>(sf, kZ32s, kN32s, [&] { return p8::zvpsZero_32s(d, len); },
                                         Mul32s<Vec<Zvp32s>, B>{{a}, b}, d, len);
}

template <class S>
ZvpStatus mul16sc(const S& s, Zvp16sc* d, int len, int sf) {
    return muldiv::dispatch<Run16sc<true>::R>(sf, kZ16sc, kN16sc, [&] { return p8::zvpsZero_16sc(d, len); },
                                              s, reinterpret_cast<Zvp16s*>(d), 2 * std::ptrdiff_t(len));
}

// 32sc: every part through the 128-bit form of the rule.
template <class F>
ZvpStatus mul32sc(Zvp32sc* d, int len, int sf, F part) {
    if (muldiv::pathOf(sf, kZ32sc, kN32sc) == Path::Zero) return p8::zvpsZero_32sc(d, len);
    for (int i = 0; i < len; ++i) {
        const Int128 re = part(i, 0), im = part(i, 1);
        d[i].re = scaleRule<Zvp32s>(re, sf);
        d[i].im = scaleRule<Zvp32s>(im, sf);
    }
    return zvpStsNoErr;
}

inline Int128 cplxPart32(Zvp32sc a, Zvp32sc b, int part) {
    return part == 0 ? mulWideS(a.re, b.re) - mulWideS(a.im, b.im)
                     : mulWideS(a.re, b.im) + mulWideS(a.im, b.re);
}

}  // namespace

// ---- 8u ------------------------------------------------------------------------------

ZvpStatus zvpsMul_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return mul8u(pSrc1, Vec<Zvp8u>{pSrc2}, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul8u(pSrcDst, Vec<Zvp8u>{pSrc}, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    return mul8u(pSrc, Const<Zvp8u>(val), pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul8u(pSrcDst, Const<Zvp8u>(val), pSrcDst, len, scaleFactor);
}

// Every 8u product fits 16 bits: no scaling, no saturation.
ZvpStatus zvpsMul_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    const Mul8u<Vec<Zvp8u>, Vec<Zvp8u>> s{{pSrc1}, {pSrc2}};
    std::ptrdiff_t i = 0;
    for (; i + 16 <= len; i += 16) {
        __m128i r0, r1;
        s.lanes(i, r0, r1);
        simd::storeu(pDst + i, r0);
        simd::storeu(pDst + i + 8, r1);
    }
    for (; i < len; ++i) pDst[i] = Zvp16u(s.exact(i));
    return zvpStsNoErr;
}

// ---- 16s -----------------------------------------------------------------------------

ZvpStatus zvpsMul_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return mul16s(pSrc1, Vec<Zvp16s>{pSrc2}, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul16s(pSrcDst, Vec<Zvp16s>{pSrc}, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    return mul16s(pSrc, Const<Zvp16s>(val), pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul16s(pSrcDst, Const<Zvp16s>(val), pSrcDst, len, scaleFactor);
}

// Without a scale factor: the product saturated.
ZvpStatus zvpsMul_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len) {
    return zvpsMul_16s_Sfs(pSrc1, pSrc2, pDst, len, 0);
}
ZvpStatus zvpsMul_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len) {
    return zvpsMul_16s_ISfs(pSrc, pSrcDst, len, 0);
}
ZvpStatus zvpsMulC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len) {
    return zvpsMulC_16s_ISfs(val, pSrcDst, len, 0);
}

// The exact product converted to single precision (rounded by the current
// rounding mode when it needs more than 24 bits).
ZvpStatus zvpsMul_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    const Mul16s<Vec<Zvp16s>, Vec<Zvp16s>> s{{pSrc1}, {pSrc2}};
    std::ptrdiff_t i = 0;
    for (; i + 8 <= len; i += 8) {
        __m128i r0, r1;
        s.lanes(i, r0, r1);
        _mm_storeu_ps(pDst + i, _mm_cvtepi32_ps(r0));
        _mm_storeu_ps(pDst + i + 4, _mm_cvtepi32_ps(r1));
    }
    for (; i < len; ++i) pDst[i] = _mm_cvtss_f32(_mm_cvtsi32_ss(_mm_setzero_ps(), s.exact(i)));
    return zvpStsNoErr;
}

ZvpStatus zvpsMul_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run32from32>(scaleFactor, kZ16s32s, kN16s32s, [&] { return p8::zvpsZero_32s(pDst, len); },
                                         Mul16s32s<Vec<Zvp16s>, Vec<Zvp16s>>{{pSrc1}, {pSrc2}}, pDst, len);
}

// ---- 16u -----------------------------------------------------------------------------

ZvpStatus zvpsMul_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return mul16u(pSrc1, Vec<Zvp16u>{pSrc2}, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul16u(pSrcDst, Vec<Zvp16u>{pSrc}, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    return mul16u(pSrc, Const<Zvp16u>(val), pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul16u(pSrcDst, Const<Zvp16u>(val), pSrcDst, len, scaleFactor);
}

// First source 16u, second source and destination 16s.
ZvpStatus zvpsMul_16u16s_Sfs(const Zvp16u* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run16<Zvp16s>::R>(scaleFactor, kZ16u16s, kN16u16s, [&] { return p8::zvpsZero_16s(pDst, len); },
                                              Mul16u16s<Vec<Zvp16u>, Vec<Zvp16s>>{{pSrc1}, {pSrc2}}, pDst, len);
}
ZvpStatus zvpsMul_16u16s_ISfs(const Zvp16u* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run16<Zvp16s>::R>(scaleFactor, kZ16u16s, kN16u16s,
                                              [&] { return p8::zvpsZero_16s(pSrcDst, len); },
                                              Mul16u16s<Vec<Zvp16u>, Vec<Zvp16s>>{{pSrc}, {pSrcDst}}, pSrcDst, len);
}

// ---- 16sc ----------------------------------------------------------------------------

ZvpStatus zvpsMul_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return mul16sc(Mul16sc{&pSrc1->re, &pSrc2->re}, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul16sc(Mul16sc{&pSrcDst->re, &pSrc->re}, pSrcDst, len, scaleFactor);
}

namespace {
ZvpStatus mulC16sc(const Zvp16sc* s, Zvp16sc v, Zvp16sc* d, int len, int sf) {
    const auto zero = [&] { return p8::zvpsZero_16sc(d, len); };
    Zvp16s* out = reinterpret_cast<Zvp16s*>(d);
    if (v.im == -32768)  // -v.im has no 16-bit form: the overflow kernels
        return muldiv::dispatch<Run16sc<true>::R>(sf, kZ16sc, kN16sc, zero, MulC16scOvf(&s->re, v), out, 2 * std::ptrdiff_t(len));
    return muldiv::dispatch<Run16sc<false>::R>(sf, kZ16sc, kN16sc, zero, MulC16sc(&s->re, v), out, 2 * std::ptrdiff_t(len));
}
}  // namespace

ZvpStatus zvpsMulC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    return mulC16sc(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    return mulC16sc(pSrcDst, val, pSrcDst, len, scaleFactor);
}

// ---- 32s -----------------------------------------------------------------------------

ZvpStatus zvpsMul_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return mul32s(pSrc1, Vec<Zvp32s>{pSrc2}, pDst, len, scaleFactor);
}
ZvpStatus zvpsMul_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul32s(pSrcDst, Vec<Zvp32s>{pSrc}, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    return mul32s(pSrc, Const<Zvp32s>(val), pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul32s(pSrcDst, Const<Zvp32s>(val), pSrcDst, len, scaleFactor);
}

// The product of two 32s values is exact in 64 bits, so the results are
// those of Mul_32s_Sfs.
ZvpStatus zvpsMul_Low_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    return zvpsMul_32s_Sfs(pSrc1, pSrc2, pDst, len, scaleFactor);
}

// First source 32s (real), second source and destination 32sc.
ZvpStatus zvpsMul_32s32sc_Sfs(const Zvp32s* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run32from64>(scaleFactor, kZ32s, kN32s, [&] { return p8::zvpsZero_32sc(pDst, len); },
                                         Mul32s32sc{pSrc1, &pSrc2->re}, &pDst->re, 2 * std::ptrdiff_t(len));
}
ZvpStatus zvpsMul_32s32sc_ISfs(const Zvp32s* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run32from64>(scaleFactor, kZ32s, kN32s, [&] { return p8::zvpsZero_32sc(pSrcDst, len); },
                                         Mul32s32sc{pSrc, &pSrcDst->re}, &pSrcDst->re, 2 * std::ptrdiff_t(len));
}

// ---- 32sc ----------------------------------------------------------------------------

ZvpStatus zvpsMul_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    return mul32sc(pDst, len, scaleFactor, [&](int i, int part) { return cplxPart32(pSrc1[i], pSrc2[i], part); });
}
ZvpStatus zvpsMul_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul32sc(pSrcDst, len, scaleFactor,
                   [&](int i, int part) { return cplxPart32(pSrcDst[i], pSrc[i], part); });
}
ZvpStatus zvpsMulC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    return mul32sc(pDst, len, scaleFactor, [&](int i, int part) { return cplxPart32(pSrc[i], val, part); });
}
ZvpStatus zvpsMulC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    return mul32sc(pSrcDst, len, scaleFactor, [&](int i, int part) { return cplxPart32(pSrcDst[i], val, part); });
}

// ---- 64s -----------------------------------------------------------------------------

ZvpStatus zvpsMulC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    if (muldiv::pathOf(scaleFactor, kZ64s, kN64s) == Path::Zero) return p8::zvpsZero_64s(pSrcDst, len);
    for (int i = 0; i < len; ++i) pSrcDst[i] = scaleRule<Zvp64s>(mulWideS(pSrcDst[i], val), scaleFactor);
    return zvpStsNoErr;
}

// R = val * x exactly: val = m * 2^e with an integer m of at most 53 bits,
// so R = (m * x) * 2^e and the result is the rule applied to the 117-bit
// integer m * x with the scale factor sf - e. A NaN constant gives 0 and an
// infinite one the bound of the sign (0 where x = 0).
ZvpStatus zvpsMulC_64f64s_ISfs(Zvp64f val, Zvp64s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    std::uint64_t bits;
    std::memcpy(&bits, &val, sizeof bits);
    const bool neg = bits >> 63;
    const int biased = int((bits >> 52) & 0x7FF);
    std::uint64_t frac = bits & ((std::uint64_t(1) << 52) - 1);
    if (biased == 0x7FF) {
        for (int i = 0; i < len; ++i) {
            const Zvp64s x = pSrcDst[i];
            pSrcDst[i] = (frac != 0 || x == 0) ? 0 : ((x < 0) != neg ? INT64_MIN : INT64_MAX);
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
    for (int i = 0; i < len; ++i) pSrcDst[i] = scaleRule<Zvp64s>(mulWideS(m, pSrcDst[i]), int(shift));
    return zvpStsNoErr;
}

}  // namespace zvp::p8

// Sub, SubC and SubCRev: element-wise differences. Sub subtracts the first
// source from the second (in place: the source-and-destination vector is the
// minuend), SubC subtracts the constant from each element and SubCRev each
// element from the constant. Integer forms deliver the exact difference
// scaled by 2^-scaleFactor, rounded to nearest with ties to even and
// saturated (the plain forms saturate the exact difference); float forms use
// IEEE subtraction.
#include "addsub_kernel.h"
#include "check.h"
#include "p8/addsub.h"
#include "p8/copy.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

using addsub::Lane16s;
using addsub::Lane16u;
using addsub::Lane32s;
using addsub::Lane8u;
using addsub::Limits;
using addsub::Op;

// Thresholds of the difference: zero above Z, bound at or below N.
constexpr Limits kSub8u{8, -8};      // R in [-255, 255], negative results saturate to 0
constexpr Limits kSub16s{16, -16};   // R in [-65535, 65535]
constexpr Limits kSub16u{16, -16};   // R in [-65535, 65535], negative results saturate to 0
constexpr Limits kSub32s{32, -31};   // R in [-(2^32 - 1), 2^32 - 1]

// R = first operand - second operand: SubC passes (element, constant),
// SubCRev (constant, element).
template <class L, bool constFirst>
ZvpStatus subCReal(const typename L::T* s, typename L::T c, typename L::T* d, int len, int sf,
                   Limits lim) {
    return addsub::realConst<L, Op::Sub, constFirst>(s, c, d, len, sf, lim);
}

}  // namespace

// ---- Sub: second vector - first vector ----------------------------------------

ZvpStatus zvpsSub_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                         int scaleFactor) {
    return addsub::vecVec<Lane8u, Op::Sub>(pSrc2, pSrc1, pDst, len, scaleFactor, kSub8u);
}
ZvpStatus zvpsSub_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane8u, Op::Sub>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kSub8u);
}

ZvpStatus zvpsSub_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len) {
    return addsub::vecVec<Lane16s, Op::Sub>(pSrc2, pSrc1, pDst, len, 0, kSub16s);
}
ZvpStatus zvpsSub_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len) {
    return addsub::vecVec<Lane16s, Op::Sub>(pSrcDst, pSrc, pSrcDst, len, 0, kSub16s);
}
ZvpStatus zvpsSub_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                          int scaleFactor) {
    return addsub::vecVec<Lane16s, Op::Sub>(pSrc2, pSrc1, pDst, len, scaleFactor, kSub16s);
}
ZvpStatus zvpsSub_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane16s, Op::Sub>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kSub16s);
}

ZvpStatus zvpsSub_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                          int scaleFactor) {
    return addsub::vecVec<Lane16u, Op::Sub>(pSrc2, pSrc1, pDst, len, scaleFactor, kSub16u);
}
ZvpStatus zvpsSub_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane16u, Op::Sub>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kSub16u);
}

ZvpStatus zvpsSub_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len,
                           int scaleFactor) {
    return addsub::complexAsReals(zvpsSub_16s_Sfs, pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return addsub::complexAsReals(zvpsSub_16s_ISfs, pSrc, pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsSub_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len,
                          int scaleFactor) {
    return addsub::vecVec<Lane32s, Op::Sub>(pSrc2, pSrc1, pDst, len, scaleFactor, kSub32s);
}
ZvpStatus zvpsSub_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return addsub::vecVec<Lane32s, Op::Sub>(pSrcDst, pSrc, pSrcDst, len, scaleFactor, kSub32s);
}

ZvpStatus zvpsSub_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len,
                           int scaleFactor) {
    return addsub::complexAsReals(zvpsSub_32s_Sfs, pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return addsub::complexAsReals(zvpsSub_32s_ISfs, pSrc, pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsSub_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len) {
    return addsub::floatVecVec<float, Op::Sub>(pSrc2, pSrc1, pDst, len);
}
ZvpStatus zvpsSub_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len) {
    return addsub::floatVecVec<float, Op::Sub>(pSrcDst, pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len) {
    return addsub::floatVecVec<double, Op::Sub>(pSrc2, pSrc1, pDst, len);
}
ZvpStatus zvpsSub_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len) {
    return addsub::floatVecVec<double, Op::Sub>(pSrcDst, pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    return addsub::floatVecVecC<float, Op::Sub>(pSrc2, pSrc1, pDst, len);
}
ZvpStatus zvpsSub_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len) {
    return addsub::floatVecVecC<float, Op::Sub>(pSrcDst, pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len) {
    return addsub::floatVecVecC<double, Op::Sub>(pSrc2, pSrc1, pDst, len);
}
ZvpStatus zvpsSub_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len) {
    return addsub::floatVecVecC<double, Op::Sub>(pSrcDst, pSrc, pSrcDst, len);
}

// Exact difference of two 16-bit vectors as a float (|R| <= 65535 needs 17 bits).
ZvpStatus zvpsSub_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        const __m128i a = simd::loadu(pSrc2 + i), b = simd::loadu(pSrc1 + i);
        _mm_storeu_ps(pDst + i, _mm_cvtepi32_ps(_mm_sub_epi32(_mm_cvtepi16_epi32(a),
                                                              _mm_cvtepi16_epi32(b))));
        _mm_storeu_ps(pDst + i + 4,
                      _mm_cvtepi32_ps(_mm_sub_epi32(_mm_cvtepi16_epi32(_mm_srli_si128(a, 8)),
                                                    _mm_cvtepi16_epi32(_mm_srli_si128(b, 8)))));
    }
    for (; i < len; ++i) pDst[i] = Zvp32f(int(pSrc2[i]) - int(pSrc1[i]));
    return zvpStsNoErr;
}

// ---- SubC: vector - constant; SubCRev: constant - vector -------------------

#define ZVP_SUBC_REAL(T, L, LIM)                                                             \
    ZvpStatus zvpsSubC_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len,      \
                                 int scaleFactor) {                                          \
        return subCReal<L, false>(pSrc, val, pDst, len, scaleFactor, LIM);                   \
    }                                                                                        \
    ZvpStatus zvpsSubC_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {   \
        return subCReal<L, false>(pSrcDst, val, pSrcDst, len, scaleFactor, LIM);             \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len,   \
                                    int scaleFactor) {                                       \
        return subCReal<L, true>(pSrc, val, pDst, len, scaleFactor, LIM);                    \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {\
        return subCReal<L, true>(pSrcDst, val, pSrcDst, len, scaleFactor, LIM);              \
    }
ZVP_SUBC_REAL(8u, Lane8u, kSub8u)
ZVP_SUBC_REAL(16s, Lane16s, kSub16s)
ZVP_SUBC_REAL(16u, Lane16u, kSub16u)
ZVP_SUBC_REAL(32s, Lane32s, kSub32s)
#undef ZVP_SUBC_REAL

ZvpStatus zvpsSubC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len) {
    return subCReal<Lane16s, false>(pSrcDst, val, pSrcDst, len, 0, kSub16s);
}

#define ZVP_SUBC_COMPLEX(T, L, LIM)                                                          \
    ZvpStatus zvpsSubC_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len,      \
                                 int scaleFactor) {                                          \
        return addsub::complexConst<L, Op::Sub, false>(pSrc, val, pDst, len, scaleFactor,    \
                                                       LIM, zvpsZero_##T);                   \
    }                                                                                        \
    ZvpStatus zvpsSubC_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {   \
        return addsub::complexConst<L, Op::Sub, false>(pSrcDst, val, pSrcDst, len,           \
                                                       scaleFactor, LIM, zvpsZero_##T);      \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len,   \
                                    int scaleFactor) {                                       \
        return addsub::complexConst<L, Op::Sub, true>(pSrc, val, pDst, len, scaleFactor,     \
                                                      LIM, zvpsZero_##T);                    \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {\
        return addsub::complexConst<L, Op::Sub, true>(pSrcDst, val, pSrcDst, len,            \
                                                      scaleFactor, LIM, zvpsZero_##T);       \
    }
ZVP_SUBC_COMPLEX(16sc, Lane16s, kSub16s)
ZVP_SUBC_COMPLEX(32sc, Lane32s, kSub32s)
#undef ZVP_SUBC_COMPLEX

#define ZVP_SUBC_FLOAT(T, F)                                                                 \
    ZvpStatus zvpsSubC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {          \
        return addsub::floatConst<F, Op::Sub, false>(pSrc, val, val, pDst, len);             \
    }                                                                                        \
    ZvpStatus zvpsSubC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                       \
        return addsub::floatConst<F, Op::Sub, false>(pSrcDst, val, val, pSrcDst, len);       \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {       \
        return addsub::floatConst<F, Op::Sub, true>(pSrc, val, val, pDst, len);              \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                    \
        return addsub::floatConst<F, Op::Sub, true>(pSrcDst, val, val, pSrcDst, len);        \
    }
ZVP_SUBC_FLOAT(32f, float)
ZVP_SUBC_FLOAT(64f, double)
#undef ZVP_SUBC_FLOAT

#define ZVP_SUBC_FLOATC(T, F)                                                                \
    ZvpStatus zvpsSubC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {          \
        return addsub::floatConstC<F, Op::Sub, false>(pSrc, val, pDst, len);                 \
    }                                                                                        \
    ZvpStatus zvpsSubC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                       \
        return addsub::floatConstC<F, Op::Sub, false>(pSrcDst, val, pSrcDst, len);           \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {       \
        return addsub::floatConstC<F, Op::Sub, true>(pSrc, val, pDst, len);                  \
    }                                                                                        \
    ZvpStatus zvpsSubCRev_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                    \
        return addsub::floatConstC<F, Op::Sub, true>(pSrcDst, val, pSrcDst, len);            \
    }
ZVP_SUBC_FLOATC(32fc, float)
ZVP_SUBC_FLOATC(64fc, double)
#undef ZVP_SUBC_FLOATC

}  // namespace zvp::p8

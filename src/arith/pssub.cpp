// Sub, SubC and SubCRev: element-wise differences. Sub subtracts the first
// source from the second (in place: the source-and-destination vector is the
// minuend), SubC subtracts the constant from each element and SubCRev each
// element from the constant. Integer forms deliver the exact difference
// scaled by 2^-scaleFactor, rounded to nearest with ties to even and
// saturated (the plain forms saturate the exact difference); float forms use
// IEEE subtraction.
#include "addsub_kernel.h"
#include "forms.h"
#include "p8/addsub.h"
#include "p8/copy.h"

namespace zvp::p8 {
namespace {

using addsub::Op;

// Thresholds of the difference: zero above Z, bound at or below N.
constexpr addsub::Limits kSub8u{8, -8};      // R in [-255, 255], negative results saturate to 0
constexpr addsub::Limits kSub16s{16, -16};   // R in [-65535, 65535]
constexpr addsub::Limits kSub16u{16, -16};   // R in [-65535, 65535], negative results saturate to 0
constexpr addsub::Limits kSub32s{32, -31};   // R in [-(2^32 - 1), 2^32 - 1]

using Sub8u = addsub::Scaled<Zvp8u, Op::Sub, kSub8u>;
using Sub16s = addsub::Scaled<Zvp16s, Op::Sub, kSub16s>;
using Sub16u = addsub::Scaled<Zvp16u, Op::Sub, kSub16u>;
using Sub32s = addsub::Scaled<Zvp32s, Op::Sub, kSub32s>;
using Sub32f = addsub::FloatOp<Zvp32f, Op::Sub>;
using Sub64f = addsub::FloatOp<Zvp64f, Op::Sub>;

}  // namespace

// ---- Sub: second vector - first vector ----------------------------------------

ZvpStatus zvpsSub_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor) {
    return form::vvRev<Sub8u>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Sub8u>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len) {
    return form::vvRev<Sub16s>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsSub_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len) {
    return form::vvI<Sub16s>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vvRev<Sub16s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Sub16s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor) {
    return form::vvRev<Sub16u>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Sub16u>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor) {
    return form::vvRevAsReals<Sub16s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor) {
    return form::vvIAsReals<Sub16s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsSub_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor) {
    return form::vvRev<Sub32s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor) {
    return form::vvI<Sub32s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsSub_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor) {
    return form::vvRevAsReals<Sub32s>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
ZvpStatus zvpsSub_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor) {
    return form::vvIAsReals<Sub32s>(pSrc, pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsSub_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len) {
    return form::vvRev<Sub32f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsSub_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len) {
    return form::vvI<Sub32f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len) {
    return form::vvRev<Sub64f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsSub_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len) {
    return form::vvI<Sub64f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    return form::vvRev<Sub32f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsSub_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len) {
    return form::vvI<Sub32f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len) {
    return form::vvRev<Sub64f>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsSub_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len) {
    return form::vvI<Sub64f>(pSrc, pSrcDst, len);
}
ZvpStatus zvpsSub_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len) {
    return form::vvRev<form::Lanewise<Zvp32f, addsub::Exact16s32f<Op::Sub>>>(pSrc1, pSrc2, pDst, len);
}

// ---- SubC: vector - constant; SubCRev: constant - vector -------------------

#define ZVP_SUBC(T, K)                                                                          \
    ZvpStatus zvpsSubC_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len, int scaleFactor) { \
        return form::vc<K>(pSrc, val, pDst, len, scaleFactor);                                  \
    }                                                                                           \
    ZvpStatus zvpsSubC_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {      \
        return form::vcI<K>(val, pSrcDst, len, scaleFactor);                                    \
    }                                                                                           \
    ZvpStatus zvpsSubCRev_##T##_Sfs(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len, int scaleFactor) { \
        return form::cv<K>(pSrc, val, pDst, len, scaleFactor);                                  \
    }                                                                                           \
    ZvpStatus zvpsSubCRev_##T##_ISfs(Zvp##T val, Zvp##T* pSrcDst, int len, int scaleFactor) {   \
        return form::cvI<K>(val, pSrcDst, len, scaleFactor);                                    \
    }
ZVP_SUBC(8u, Sub8u)
ZVP_SUBC(16s, Sub16s)
ZVP_SUBC(16u, Sub16u)
ZVP_SUBC(32s, Sub32s)
ZVP_SUBC(16sc, Sub16s)
ZVP_SUBC(32sc, Sub32s)
#undef ZVP_SUBC

ZvpStatus zvpsSubC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len) {
    return form::vcI<Sub16s>(val, pSrcDst, len);
}

#define ZVP_SUBC_FLOAT(T, K)                                                                    \
    ZvpStatus zvpsSubC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {             \
        return form::vc<K>(pSrc, val, pDst, len);                                               \
    }                                                                                           \
    ZvpStatus zvpsSubC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                          \
        return form::vcI<K>(val, pSrcDst, len);                                                 \
    }                                                                                           \
    ZvpStatus zvpsSubCRev_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {          \
        return form::cv<K>(pSrc, val, pDst, len);                                               \
    }                                                                                           \
    ZvpStatus zvpsSubCRev_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                       \
        return form::cvI<K>(val, pSrcDst, len);                                                 \
    }
ZVP_SUBC_FLOAT(32f, Sub32f)
ZVP_SUBC_FLOAT(64f, Sub64f)
ZVP_SUBC_FLOAT(32fc, Sub32f)
ZVP_SUBC_FLOAT(64fc, Sub64f)
#undef ZVP_SUBC_FLOAT

}  // namespace zvp::p8

// Mul and MulC on floating-point vectors (32f, 64f, 32fc, 64fc, 32f32fc),
// and the single-precision products converted to 16s: MulC_32f16s_Sfs
// (the exact product, scaled) and MulC_Low_32f16s (the single-precision
// product, rounded once more to an integer).
#include <cstdint>
#include <cstring>

#include "check.h"
#include "muldiv_float.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using namespace zvp::mulf;

template <class T>
constexpr int kW = 16 / int(sizeof(T));

// d = a * b, real.
template <class T>
struct MulReal {
    const T* a;
    const T* b;
    T* d;
    Vec<T> compute(int i) const { return mul(load(a + i), load(b + i)); }
    void tail(int i) const { d[i] = a[i] * b[i]; }
};

// d = a * c, real.
template <class T>
struct MulRealC {
    const T* a;
    T c;
    T* d;
    Vec<T> cv;
    MulRealC(const T* a_, T c_, T* d_) : a(a_), c(c_), d(d_), cv(set1(c_)) {}
    Vec<T> compute(int i) const { return mul(load(a + i), cv); }
    void tail(int i) const { d[i] = a[i] * c; }
};

// d = a * b, complex (pointers to the parts).
template <class T>
struct MulCplx {
    const T* a;
    const T* b;
    T* d;
    Vec<T> compute(int i) const { return cmul(load(a + i), load(b + i)); }
    void tail(int i) const { cmulScalar(a[i], a[i + 1], b[i], b[i + 1], d[i], d[i + 1]); }
};

// d = a * c, complex constant.
template <class T>
struct MulCplxC {
    const T* a;
    T cr, ci;
    T* d;
    Vec<T> c, cs;
    MulCplxC(const T* a_, T re, T im, T* d_)
        : a(a_), cr(re), ci(im), d(d_), c(cpair(re, im)), cs(cpair(im, re)) {}
    Vec<T> compute(int i) const { return cmulConst(load(a + i), c, cs); }
    void tail(int i) const { cmulScalar(a[i], a[i + 1], cr, ci, d[i], d[i + 1]); }
};

// d = a * b with a real (32f) and b complex (32fc); i counts parts of b.
struct MulRealCplx {
    const float* a;
    const float* b;
    float* d;
    __m128 compute(int i) const {
        const __m128 x = _mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(a + i / 2)));
        return _mm_mul_ps(_mm_unpacklo_ps(x, x), load(b + i));
    }
    void tail(int i) const {
        d[i] = a[i / 2] * b[i];
        d[i + 1] = a[i / 2] * b[i + 1];
    }
};

template <class T>
ZvpStatus mulReal(const T* a, const T* b, T* d, int len) {
    drive<kW<T>, 1>(MulReal<T>{a, b, d}, len);
    return zvpStsNoErr;
}
template <class T>
ZvpStatus mulRealC(const T* a, T c, T* d, int len) {
    drive<kW<T>, 1>(MulRealC<T>(a, c, d), len);
    return zvpStsNoErr;
}
template <class T, class C>
ZvpStatus mulCplx(const C* a, const C* b, C* d, int len) {
    drive<kW<T>, 2>(MulCplx<T>{&a->re, &b->re, &d->re}, 2 * len);
    return zvpStsNoErr;
}
template <class T, class C>
ZvpStatus mulCplxC(const C* a, C c, C* d, int len) {
    drive<kW<T>, 2>(MulCplxC<T>(&a->re, c.re, c.im, &d->re), 2 * len);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_MUL_REAL(T)                                                                    \
    ZvpStatus zvpsMul_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len) { \
        ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);                                                \
        ZVP_CHECK_LENS(len);                                                               \
        return mulReal(pSrc1, pSrc2, pDst, len);                                           \
    }                                                                                      \
    ZvpStatus zvpsMul_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) {              \
        ZVP_CHECK_PTRS(pSrc, pSrcDst);                                                     \
        ZVP_CHECK_LENS(len);                                                               \
        return mulReal<Zvp##T>(pSrcDst, pSrc, pSrcDst, len);                               \
    }                                                                                      \
    ZvpStatus zvpsMulC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {        \
        ZVP_CHECK_PTRS(pSrc, pDst);                                                        \
        ZVP_CHECK_LENS(len);                                                               \
        return mulRealC(pSrc, val, pDst, len);                                             \
    }                                                                                      \
    ZvpStatus zvpsMulC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                     \
        ZVP_CHECK_PTRS(pSrcDst);                                                           \
        ZVP_CHECK_LENS(len);                                                               \
        return mulRealC<Zvp##T>(pSrcDst, val, pSrcDst, len);                               \
    }

#define ZVP_MUL_CPLX(T, R)                                                                 \
    ZvpStatus zvpsMul_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len) { \
        ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);                                                \
        ZVP_CHECK_LENS(len);                                                               \
        return mulCplx<Zvp##R>(pSrc1, pSrc2, pDst, len);                                   \
    }                                                                                      \
    ZvpStatus zvpsMul_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) {              \
        ZVP_CHECK_PTRS(pSrc, pSrcDst);                                                     \
        ZVP_CHECK_LENS(len);                                                               \
        return mulCplx<Zvp##R, Zvp##T>(pSrcDst, pSrc, pSrcDst, len);                       \
    }                                                                                      \
    ZvpStatus zvpsMulC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {        \
        ZVP_CHECK_PTRS(pSrc, pDst);                                                        \
        ZVP_CHECK_LENS(len);                                                               \
        return mulCplxC<Zvp##R>(pSrc, val, pDst, len);                                     \
    }                                                                                      \
    ZvpStatus zvpsMulC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                     \
        ZVP_CHECK_PTRS(pSrcDst);                                                           \
        ZVP_CHECK_LENS(len);                                                               \
        return mulCplxC<Zvp##R, Zvp##T>(pSrcDst, val, pSrcDst, len);                       \
    }

ZVP_MUL_REAL(32f)
ZVP_MUL_REAL(64f)
ZVP_MUL_CPLX(32fc, 32f)
ZVP_MUL_CPLX(64fc, 64f)

#undef ZVP_MUL_REAL
#undef ZVP_MUL_CPLX

// First source 32f (real), second source and destination 32fc.
ZvpStatus zvpsMul_32f32fc(const Zvp32f* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pDst);
    ZVP_CHECK_LENS(len);
    drive<4, 2>(MulRealCplx{pSrc1, &pSrc2->re, &pDst->re}, 2 * len);
    return zvpStsNoErr;
}
ZvpStatus zvpsMul_32f32fc_I(const Zvp32f* pSrc, Zvp32fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    drive<4, 2>(MulRealCplx{pSrc, &pSrcDst->re, &pSrcDst->re}, 2 * len);
    return zvpStsNoErr;
}

// ---- Products converted to 16s ------------------------------------------------------

namespace {

// Rounds to nearest (ties to even, whatever the rounding mode), saturates to
// [-32768, 32767]; NaN gives 0.
inline __m128i roundSat16(__m128d v) {
    v = _mm_and_pd(v, _mm_cmpord_pd(v, v));
    v = _mm_round_pd(v, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
    v = _mm_min_pd(_mm_max_pd(v, _mm_set1_pd(-32768.0)), _mm_set1_pd(32767.0));
    return _mm_cvttpd_epi32(v);
}
inline __m128i roundSat16(__m128 v) {
    v = _mm_and_ps(v, _mm_cmpord_ps(v, v));
    v = _mm_round_ps(v, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
    v = _mm_min_ps(_mm_max_ps(v, _mm_set1_ps(-32768.0f)), _mm_set1_ps(32767.0f));
    return _mm_cvttps_epi32(v);
}

// 2^e for -1022 <= e <= 1023.
inline double pow2(int e) {
    const std::uint64_t bits = std::uint64_t(e + 1023) << 52;
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

}  // namespace

// R = x * val exactly (a product of two singles is exact in double), then
// R * 2^-sf (exact: the scale factor is clamped to +-400, beyond which every
// result is 0 or saturated anyway), rounded to nearest with ties to even and
// saturated to 16s. NaN gives 0.
ZvpStatus zvpsMulC_32f16s_Sfs(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const int sf = scaleFactor > 400 ? 400 : (scaleFactor < -400 ? -400 : scaleFactor);
    const __m128d s = _mm_set1_pd(pow2(-sf));
    const __m128d c = _mm_set1_pd(double(val));
    const auto scaled = [&](__m128 x2) {  // two singles in the low half
        return _mm_mul_pd(_mm_mul_pd(_mm_cvtps_pd(x2), c), s);
    };
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        const __m128 x0 = _mm_loadu_ps(pSrc + i), x1 = _mm_loadu_ps(pSrc + i + 4);
        const __m128i a = _mm_unpacklo_epi64(roundSat16(scaled(x0)), roundSat16(scaled(_mm_movehl_ps(x0, x0))));
        const __m128i b = _mm_unpacklo_epi64(roundSat16(scaled(x1)), roundSat16(scaled(_mm_movehl_ps(x1, x1))));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pDst + i), _mm_packs_epi32(a, b));
    }
    for (; i < len; ++i)
        pDst[i] = Zvp16s(_mm_cvtsi128_si32(roundSat16(scaled(_mm_set_ss(pSrc[i])))));
    return zvpStsNoErr;
}

// The product x * val rounded to single precision, then rounded to the
// nearest integer (ties to even) and saturated to 16s. NaN gives 0.
ZvpStatus zvpsMulC_Low_32f16s(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    const __m128 c = _mm_set1_ps(val);
    int i = 0;
    for (; i + 8 <= len; i += 8) {
        const __m128i a = roundSat16(_mm_mul_ps(_mm_loadu_ps(pSrc + i), c));
        const __m128i b = roundSat16(_mm_mul_ps(_mm_loadu_ps(pSrc + i + 4), c));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pDst + i), _mm_packs_epi32(a, b));
    }
    for (; i < len; ++i)
        pDst[i] = Zvp16s(_mm_cvtsi128_si32(roundSat16(_mm_mul_ss(_mm_set_ss(pSrc[i]), c))));
    return zvpStsNoErr;
}

}  // namespace zvp::p8

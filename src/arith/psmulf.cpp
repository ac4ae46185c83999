// Mul and MulC on floating-point vectors (32f, 64f, 32fc, 64fc, 32f32fc),
// and the single-precision products converted to 16s: MulC_32f16s_Sfs
// (the exact product, scaled) and MulC_Low_32f16s (the single-precision
// product, rounded once more to an integer).
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "forms.h"
#include "muldiv_float.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using namespace mulf;
using form::Const;

template <class T>
constexpr int kW = Full<T>::N;

// d = a * b, real.
template <class T>
struct MulReal {
    const T* a;
    const T* b;
    T* d;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const { return L::mul(L::load(a + i), L::load(b + i)); }
};

// d = a * c, real.
template <class T>
struct MulRealC {
    const T* a;
    T* d;
    Vec<T> c;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const { return L::mul(L::load(a + i), c); }
};

// d = a * b, complex (pointers to the parts); the tail runs one pair.
template <class T>
struct MulCplx {
    const T* a;
    const T* b;
    T* d;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const { return L::cmul(L::load(a + i), L::load(b + i)); }
};

// d = a * c, complex constant c = (re, im) held as the pair and its swap.
template <class T>
struct MulCplxC {
    const T* a;
    T* d;
    Vec<T> c, cs;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const { return L::cmulPair(L::load(a + i), c, cs); }
};

// d = r * z with r real (32f) and z complex (32fc); i counts parts of z.
struct MulRealCplx {
    const float* r;
    const float* z;
    float* d;
    template <class L>
    typename L::R compute(std::ptrdiff_t i) const {
        using H = Lanes<float, L::N / 2>;  // the reals of the step's pairs
        return L::mul(L::dupEach(H::load(r + i / 2)), L::load(z + i));
    }
};

// Kernel policies of the forms.
template <class T>
struct Mul {
    using type = T;
    static ZvpStatus run(form::Vec<T> a, form::Vec<T> b, T* d, std::ptrdiff_t n) {
        drive<kW<T>, 1>(MulReal<T>{a.p, b.p, d}, n);
        return zvpStsNoErr;
    }
    static ZvpStatus run(form::Vec<T> a, Const<T> c, T* d, std::ptrdiff_t n) {
        drive<kW<T>, 1>(MulRealC<T>{a.p, d, Full<T>::set1(c.c0)}, n);
        return zvpStsNoErr;
    }
};
template <class T>
struct MulComplex {
    using type = T;
    static ZvpStatus run(form::Vec<T> a, form::Vec<T> b, T* d, std::ptrdiff_t n) {
        drive<kW<T>, 2>(MulCplx<T>{a.p, b.p, d}, n);
        return zvpStsNoErr;
    }
    static ZvpStatus run(form::Vec<T> a, Const<T> c, T* d, std::ptrdiff_t n) {
        drive<kW<T>, 2>(MulCplxC<T>{a.p, d, Full<T>::pair(c.c0, c.c1), Full<T>::pair(c.c1, c.c0)}, n);
        return zvpStsNoErr;
    }
};
// Real first operand, complex second (Mul_32f32fc) ...
struct MulRealByComplex {
    using type = float;
    static ZvpStatus run(form::Vec<float> r, form::Vec<float> z, float* d, std::ptrdiff_t n) {
        drive<4, 2>(MulRealCplx{r.p, z.p, d}, n);
        return zvpStsNoErr;
    }
};
// ... and in place, complex first.
struct MulComplexByReal {
    using type = float;
    static ZvpStatus run(form::Vec<float> z, form::Vec<float> r, float* d, std::ptrdiff_t n) {
        return MulRealByComplex::run(r, z, d, n);
    }
};

}  // namespace

#define ZVP_MUL(T, K)                                                                      \
    ZvpStatus zvpsMul_##T(const Zvp##T* pSrc1, const Zvp##T* pSrc2, Zvp##T* pDst, int len) { \
        return form::vv<K>(pSrc1, pSrc2, pDst, len);                                       \
    }                                                                                      \
    ZvpStatus zvpsMul_##T##_I(const Zvp##T* pSrc, Zvp##T* pSrcDst, int len) {              \
        return form::vvI<K>(pSrc, pSrcDst, len);                                           \
    }                                                                                      \
    ZvpStatus zvpsMulC_##T(const Zvp##T* pSrc, Zvp##T val, Zvp##T* pDst, int len) {        \
        return form::vc<K>(pSrc, val, pDst, len);                                          \
    }                                                                                      \
    ZvpStatus zvpsMulC_##T##_I(Zvp##T val, Zvp##T* pSrcDst, int len) {                     \
        return form::vcI<K>(val, pSrcDst, len);                                            \
    }

ZVP_MUL(32f, Mul<Zvp32f>)
ZVP_MUL(64f, Mul<Zvp64f>)
ZVP_MUL(32fc, MulComplex<Zvp32f>)
ZVP_MUL(64fc, MulComplex<Zvp64f>)

#undef ZVP_MUL

// First source 32f (real), second source and destination 32fc.
ZvpStatus zvpsMul_32f32fc(const Zvp32f* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len) {
    return form::vv<MulRealByComplex>(pSrc1, pSrc2, pDst, len);
}
ZvpStatus zvpsMul_32f32fc_I(const Zvp32f* pSrc, Zvp32fc* pSrcDst, int len) {
    return form::vvI<MulComplexByReal>(pSrc, pSrcDst, len);
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

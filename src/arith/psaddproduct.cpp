// AddProduct: srcDst[i] = srcDst[i] + first[i] * second[i]; AddProductC_32f
// with a constant second factor. Integer forms scale the exact sum
// R = srcDst + first * second as a whole by 2^-sf (the rule of every Sfs
// operation), through the kernel split of muldiv_kernel.h. Floating-point
// forms round the product and then the sum.
#include "check.h"
#include "muldiv_float.h"
#include "muldiv_kernel.h"
#include "p8/copy.h"
#include "p8/muldiv.h"

namespace zvp::p8 {
namespace {

using muldiv::Path;

// R = c + a * b in 32-bit lanes (|R| <= 2^30 + 2^15), destination 16s.
struct AddProd16s {
    const Zvp16s* a;
    const Zvp16s* b;
    const Zvp16s* c;
    void lanes(int i, __m128i& r0, __m128i& r1) const {
        const __m128i x = simd::loadu(a + i), y = simd::loadu(b + i), z = simd::loadu(c + i);
        const __m128i lo = _mm_mullo_epi16(x, y), hi = _mm_mulhi_epi16(x, y);
        r0 = _mm_add_epi32(_mm_unpacklo_epi16(lo, hi), _mm_cvtepi16_epi32(z));
        r1 = _mm_add_epi32(_mm_unpackhi_epi16(lo, hi), _mm_cvtepi16_epi32(_mm_srli_si128(z, 8)));
    }
    std::int32_t exact(int i) const { return std::int32_t(c[i]) + std::int32_t(a[i]) * std::int32_t(b[i]); }
};

// Sign-extends 32-bit lanes 0, 2 (even) or 1, 3 (odd) to 64 bits.
inline __m128i evenTo64(__m128i v) { return _mm_cvtepi32_epi64(_mm_shuffle_epi32(v, _MM_SHUFFLE(3, 1, 2, 0))); }
inline __m128i oddTo64(__m128i v) { return _mm_cvtepi32_epi64(_mm_shuffle_epi32(v, _MM_SHUFFLE(3, 1, 3, 1))); }

// R = c + a * b in 64-bit lanes, a and b 16s, c and the destination 32s.
struct AddProd16s32s {
    const Zvp16s* a;
    const Zvp16s* b;
    const Zvp32s* c;
    void lanes(int i, __m128i& e, __m128i& o) const {
        const __m128i z = _mm_setzero_si128();
        const __m128i x = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(a + i));
        const __m128i y = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(b + i));
        const __m128i p = _mm_madd_epi16(_mm_unpacklo_epi16(x, z), _mm_unpacklo_epi16(y, z));
        const __m128i s = simd::loadu(c + i);
        e = _mm_add_epi64(evenTo64(p), evenTo64(s));
        o = _mm_add_epi64(oddTo64(p), oddTo64(s));
    }
    std::int64_t exact(int i) const { return std::int64_t(c[i]) + std::int64_t(a[i]) * std::int64_t(b[i]); }
};

// R = c + a * b in 64-bit lanes, all 32s (|R| <= 2^62 + 2^31).
struct AddProd32s {
    const Zvp32s* a;
    const Zvp32s* b;
    const Zvp32s* c;
    void lanes(int i, __m128i& e, __m128i& o) const {
        const __m128i x = simd::loadu(a + i), y = simd::loadu(b + i), s = simd::loadu(c + i);
        e = _mm_add_epi64(_mm_mul_epi32(x, y), evenTo64(s));
        o = _mm_add_epi64(_mm_mul_epi32(_mm_srli_epi64(x, 32), _mm_srli_epi64(y, 32)), oddTo64(s));
    }
    std::int64_t exact(int i) const { return std::int64_t(c[i]) + std::int64_t(a[i]) * std::int64_t(b[i]); }
};

template <Path P>
struct Run16 {
    template <class S>
    static void go(const S& s, Zvp16s* d, int len, int sf) {
        muldiv::run16<muldiv::Lanes32to16<Zvp16s, P>>(s, d, len, sf);
    }
};
template <Path P>
struct Run32 {
    template <class S>
    static void go(const S& s, Zvp32s* d, int len, int sf) {
        muldiv::run32from64<muldiv::Lanes64to32<P>>(s, d, len, sf);
    }
};

// Thresholds Z (zero above) and N (bound at or below).
constexpr int kZ16s = 31, kN16s = -15;
constexpr int kZ16s32s = 32, kN16s32s = -32;
constexpr int kZ32s = 63, kN32s = -32;

// ---- Floating point ----------------------------------------------------------------

using namespace mulf;

template <class T>
struct AddProdReal {
    const T* a;
    const T* b;
    T* d;
    Vec<T> compute(std::ptrdiff_t i) const { return add(load(d + i), mul(load(a + i), load(b + i))); }
    void tail(std::ptrdiff_t i) const { d[i] = d[i] + a[i] * b[i]; }
};

template <class T>
struct AddProdCplx {
    const T* a;
    const T* b;
    T* d;
    Vec<T> compute(std::ptrdiff_t i) const { return add(load(d + i), cmul(load(a + i), load(b + i))); }
    void tail(std::ptrdiff_t i) const {
        T re, im;
        cmulScalar(a[i], a[i + 1], b[i], b[i + 1], re, im);
        d[i] = d[i] + re;
        d[i + 1] = d[i + 1] + im;
    }
};

struct AddProdC32f {
    const float* a;
    float c;
    float* d;
    __m128 cv = _mm_set1_ps(c);
    __m128 compute(std::ptrdiff_t i) const { return add(load(d + i), mul(load(a + i), cv)); }
    void tail(std::ptrdiff_t i) const { d[i] = d[i] + a[i] * c; }
};

}  // namespace

ZvpStatus zvpsAddProduct_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pSrcDst, int len,
                                 int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run16>(scaleFactor, kZ16s, kN16s, [&] { return p8::zvpsZero_16s(pSrcDst, len); },
                                   AddProd16s{pSrc1, pSrc2, pSrcDst}, pSrcDst, len);
}

ZvpStatus zvpsAddProduct_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pSrcDst, int len,
                                    int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run32>(scaleFactor, kZ16s32s, kN16s32s, [&] { return p8::zvpsZero_32s(pSrcDst, len); },
                                   AddProd16s32s{pSrc1, pSrc2, pSrcDst}, pSrcDst, len);
}

ZvpStatus zvpsAddProduct_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pSrcDst, int len,
                                 int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    return muldiv::dispatch<Run32>(scaleFactor, kZ32s, kN32s, [&] { return p8::zvpsZero_32s(pSrcDst, len); },
                                   AddProd32s{pSrc1, pSrc2, pSrcDst}, pSrcDst, len);
}

ZvpStatus zvpsAddProduct_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    drive<4, 1>(AddProdReal<float>{pSrc1, pSrc2, pSrcDst}, len);
    return zvpStsNoErr;
}
ZvpStatus zvpsAddProduct_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    drive<2, 1>(AddProdReal<double>{pSrc1, pSrc2, pSrcDst}, len);
    return zvpStsNoErr;
}
ZvpStatus zvpsAddProduct_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    drive<4, 2>(AddProdCplx<float>{&pSrc1->re, &pSrc2->re, &pSrcDst->re}, 2 * std::ptrdiff_t(len));
    return zvpStsNoErr;
}
ZvpStatus zvpsAddProduct_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc1, pSrc2, pSrcDst);
    ZVP_CHECK_LENS(len);
    drive<2, 2>(AddProdCplx<double>{&pSrc1->re, &pSrc2->re, &pSrcDst->re}, 2 * std::ptrdiff_t(len));
    return zvpStsNoErr;
}

ZvpStatus zvpsAddProductC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pSrcDst);
    ZVP_CHECK_LENS(len);
    drive<4, 1>(AddProdC32f{pSrc, val, pSrcDst}, len);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

// Mul and MulC on floating-point vectors (32f, 64f, 32fc, 64fc, 32f32fc),
// and the single-precision products converted to 16s: MulC_32f16s_Sfs
// (the exact product, scaled) and MulC_Low_32f16s (the single-precision
// product, rounded once more to an integer).
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "forms.h"
#include "fpguard.h"
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
//
// Both run under the MXCSR guard: a denormal source or product must count
// as itself whatever the caller's flush settings, or a large factor or
// scale would turn it into a different integer.

namespace {

// Rounds to nearest (ties to even), saturates to [-32768, 32767]; NaN
// gives 0. The integers land in the low 32-bit lanes.
template <class FL>
inline __m128i roundSat16(typename FL::R v) {
    v = FL::and_(v, FL::ord(v, v));
    v = FL::min(FL::max(FL::roundNearest(v), FL::set1(-32768.0)), FL::set1(32767.0));
    return FL::toI32Trunc(v);
}

// The values of a 16s destination lane L from float sources, four (or
// fewer) at a time: quad(k) gives the 32-bit results of values k .. k + 3.
template <class L, class Quad>
inline __m128i to16s(std::ptrdiff_t i, const Quad& quad) {
    const __m128i r0 = quad(i);
    const __m128i r1 = L::N > 4 ? quad(i + 4) : r0;
    return Full<std::int32_t>::template narrow<Zvp16s>(r0, r1);
}

// R = x * val exactly (a product of two singles is exact in double), then
// R * 2^-sf (exact: the scale factor is clamped to +-400, beyond which every
// result is 0 or saturated anyway), rounded to nearest with ties to even and
// saturated. NaN gives 0.
template <class A>
struct MulC32f16sLanes {
    A s;
    __m128d c, scale;
    template <class L>
    __m128i at(std::ptrdiff_t i) const {
        using FL = Lanes<float, (L::N < 4 ? L::N : 4)>;
        using DL = Lanes<double, (L::N < 2 ? L::N : 2)>;
        const auto half = [&](__m128 x2) { return roundSat16<DL>(DL::mul(DL::mul(DL::fromF32(x2), c), scale)); };
        return to16s<L>(i, [&](std::ptrdiff_t k) {
            const __m128 x = s.template load<FL>(k);
            if constexpr (FL::N <= 2) return half(x);
            else return Full<std::int64_t>::zipLo(half(x), half(FL::hiHalf(x)));
        });
    }
};

// The product x * val rounded to single precision, then to the nearest
// integer (ties to even) and saturated. NaN gives 0.
template <class A>
struct MulCLow32f16sLanes {
    A s;
    __m128 c;
    template <class L>
    __m128i at(std::ptrdiff_t i) const {
        using FL = Lanes<float, (L::N < 4 ? L::N : 4)>;
        return to16s<L>(i, [&](std::ptrdiff_t k) { return roundSat16<FL>(FL::mul(s.template load<FL>(k), c)); });
    }
};

// 2^e for -1022 <= e <= 1023.
inline double pow2(int e) {
    const std::uint64_t bits = std::uint64_t(e + 1023) << 52;
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

struct MulC32f16s {
    using type = Zvp16s;
    template <class A>
    static ZvpStatus run(A s, form::Const<Zvp32f> c, Zvp16s* d, std::ptrdiff_t n, int scaleFactor) {
        const MxcsrGuard guard(MxcsrGuard::kNearest);
        const int sf = scaleFactor > 400 ? 400 : (scaleFactor < -400 ? -400 : scaleFactor);
        form::each<Zvp16s, 1>(MulC32f16sLanes<A>{s, Full<double>::set1(double(c.c0)), Full<double>::set1(pow2(-sf))},
                              d, n);
        return zvpStsNoErr;
    }
    template <class A>
    static ZvpStatus run(A s, form::Const<Zvp32f> c, Zvp16s* d, std::ptrdiff_t n) {
        const MxcsrGuard guard(MxcsrGuard::kNearest);
        form::each<Zvp16s, 1>(MulCLow32f16sLanes<A>{s, Full<float>::set1(c.c0)}, d, n);
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsMulC_32f16s_Sfs(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len, int scaleFactor) {
    return form::vc<MulC32f16s>(pSrc, val, pDst, len, scaleFactor);
}
ZvpStatus zvpsMulC_Low_32f16s(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len) {
    return form::vc<MulC32f16s>(pSrc, val, pDst, len);
}

}  // namespace zvp::p8

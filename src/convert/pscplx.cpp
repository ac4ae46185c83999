// Magnitude, Phase, CartToPolar, PolarToCart and PowerSpectr of complex
// vectors (interleaved, or separate real and imaginary vectors).
//
// Float parts run on full lanes of their own type (cplx_kernel.h). 16-bit
// parts form the exact sum of squares in 32-bit lanes and take the square
// root and the scaling in double lanes, two elements a step: the square root
// of an integer is either whole (and exact in double) or at least 2^-17 away
// from every half-integer, so one rounding to nearest of the double value is
// the rounding of the exact magnitude. Phases of the Sfs forms, the 32-bit
// magnitude and the polar-to-Cartesian forms go element by element (the C
// library's double atan2, sin and cos; exact integer square roots).
#include <cmath>
#include <cstdint>
#include <limits>

#include "cplx_kernel.h"
#include "forms.h"
#include "fpguard.h"
#include "p8/cplx.h"

namespace zvp::p8 {
namespace {

using cplx::Interleaved;
using cplx::Interleaved16;
using cplx::Split;
using cplx::Split16;

// ---- Float parts ------------------------------------------------------------

struct MagnitudeOp {
    template <class L>
    static typename L::R apply(typename L::R re, typename L::R im) {
        if constexpr (std::is_same_v<typename L::type, float>) {
            return cplx::magnitudePs<L>(re, im);
        } else {
            // Lanes whose sum of squares leaves the range where it keeps its
            // accuracy take the C library's hypot (rare: parts beyond 2^+-450).
            const auto s = L::add(L::mul(re, re), L::mul(im, im));
            const auto m = L::sqrt(s);
            const auto ok = L::and_(L::ge(s, L::set1(0x1p-900)), L::lt(s, L::set1(__builtin_inf())));
            if (!L::anyOf(L::fromBits(Rebind<L, std::int64_t>::not_(L::bits(ok))))) return m;
            alignas(16) double r[2], i[2], h[2];
            Full<double>::storea(r, re);
            Full<double>::storea(i, im);
            for (int k = 0; k < L::N; ++k) h[k] = std::hypot(r[k], i[k]);
            return L::blend(L::loada(h), m, ok);
        }
    }
};
struct PowerOp {
    template <class L>
    static typename L::R apply(typename L::R re, typename L::R im) {
        return L::add(L::mul(re, re), L::mul(im, im));
    }
};
struct PhaseOp {
    template <class L>
    static typename L::R apply(typename L::R re, typename L::R im) {
        return cplx::atan2Ps<L>(im, re);
    }
};

template <class Src, class Op>
struct PartsFn {
    Src s;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        typename L::R re, im;
        s.template get<L>(i, re, im);
        return Op::template apply<L>(re, im);
    }
};

template <class Op, class T, class Src>
void floatKernel(Src s, T* d, std::ptrdiff_t n) {
    form::each<T, 1>(PartsFn<Src, Op>{s}, d, n);
}

// The double phase: the C library's atan2, element by element.
template <class Src>
void phase64(Src s, double* d, std::ptrdiff_t n) {
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        Lane<double, 8>::R re, im;
        s.template get<Lane<double, 8>>(i, re, im);
        d[i] = std::atan2(Lane<double, 8>::first(im), Lane<double, 8>::first(re));
    }
}

// ---- 16-bit parts -------------------------------------------------------------

// A scale factor as the double 2^-sf. Beyond +-64 nothing changes: a 16-bit
// magnitude or power times 2^-64 rounds to 0, a non-zero one times 2^64
// saturates.
inline double scaleOf(int sf) {
    return std::ldexp(1.0, sf > 64 ? -64 : sf < -64 ? 64 : -sf);
}

enum class What { Magnitude, Power };

// Magnitude or power of 16-bit parts into 32f, or into 16s scaled.
template <What W, class D>
struct Int16Op {
    double scale;
    template <class L, class I>
    typename L::R apply(__m128i re, __m128i im) const {
        using Dl = Lanes<double, L::N>;
        auto v = cplx::squaresOf16<Dl, I>(re, im);
        if constexpr (W == What::Magnitude) v = Dl::sqrt(v);
        if constexpr (std::is_same_v<D, float>) {
            return Dl::toF32(v);
        } else {
            v = Dl::min(Dl::roundNearest(Dl::mul(v, Dl::set1(scale))), Dl::set1(32767.0));
            const auto w = Dl::toI32(v);
            return I::template narrow<std::int16_t>(w, w);
        }
    }
};
struct Phase16Op {
    template <class L, class I>
    typename L::R apply(__m128i re, __m128i im) const {
        return cplx::atan2Ps<L>(L::fromI32(im), L::fromI32(re));
    }
};

template <class Src, class Op>
struct Int16Fn {
    Src s;
    Op op;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using I = Lanes<std::int32_t, L::N>;
        __m128i re, im;
        s.template get<I>(i, re, im);
        return op.template apply<L, I>(re, im);
    }
};

// V elements a step: two for the double lanes, four for the phase.
template <int V, class D, class Src, class Op>
void int16Kernel(Src s, D* d, std::ptrdiff_t n, Op op) {
    form::each<D, 1, V>(Int16Fn<Src, Op>{s, op}, d, n);
}

// ---- Element by element ------------------------------------------------------

inline double roundEven(double x) {
    using O = One<double>;
    return O::first(O::roundNearest(O::set1(x)));
}
template <class D>
D saturateRound(double x) {
    using Lim = std::numeric_limits<D>;
    x = roundEven(x);
    if (x >= double(Lim::max())) return Lim::max();
    if (x <= double(Lim::min())) return Lim::min();
    return D(x);
}

// The integer square root and the rounded magnitude of a 32-bit complex
// value, exactly: round(sqrt(r) * 2^-sf), ties to even, at most max.
inline std::uint64_t isqrt(std::uint64_t x) {
    std::uint64_t r = std::uint64_t(std::sqrt(double(x)));
    while (r * r > x) --r;
    while ((r + 1) * (r + 1) <= x) ++r;
    return r;
}
inline std::int32_t magnitudeRounded(std::uint64_t r, int sf) {
    constexpr std::uint64_t kMax = 0x7FFFFFFF;
    if (r == 0) return 0;
    if (sf <= 0) {
        const int k = sf < -32 ? 32 : -sf;  // sqrt(r * 4^k), rounded; no tie is possible
        if (k >= 32 || r > (~std::uint64_t(0) >> (2 * k))) return std::int32_t(kMax);
        const std::uint64_t x = r << (2 * k);
        std::uint64_t f = isqrt(x);
        if (x - f * f > f) ++f;
        return std::int32_t(f > kMax ? kMax : f);
    }
    if (sf >= 33) return 0;  // sqrt(r) < 2^31.5
    const std::uint64_t q = isqrt(r) >> sf;
    // Round up iff sqrt(r) >= (q + 1/2) 2^sf = c, that is r >= c^2; equal is a tie.
    const std::uint64_t c = (2 * q + 1) << (sf - 1);
    bool up = false;
    if (c <= 0xFFFFFFFFu) up = r > c * c || (r == c * c && (q & 1));
    const std::uint64_t m = q + (up ? 1 : 0);
    return std::int32_t(m > kMax ? kMax : m);
}

// Phase in fixed point: round(atan2(im, re) * 2^-sf), saturated. 16-bit
// parts take the double atan2: a phase of 16-bit parts is never within 2^-38
// (relative) of a half-integer step unless it is one, far above the double's
// error. 32-bit parts come within 2^-62 (atan(1/n) is just above 1/n), so
// they take the long double atan2 and round it exactly.
inline long double roundEvenLong(long double x) {
    const long double f = std::floor(x), d = x - f;
    return (d > 0.5L || (d == 0.5L && std::fmod(f, 2.0L) != 0)) ? f + 1 : f;
}
template <class D, class P>
void phaseFixed(const P* re, const P* im, std::ptrdiff_t stride, D* d, std::ptrdiff_t n, int sf) {
    MxcsrGuard g(MxcsrGuard::kNearest);
    const int e = sf > 100 ? -100 : sf < -100 ? 100 : -sf;  // beyond, every phase saturates or rounds to 0
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        if constexpr (sizeof(P) == 2) {
            d[i] = saturateRound<D>(std::ldexp(std::atan2(double(im[i * stride]), double(re[i * stride])), e));
        } else {
            using Lim = std::numeric_limits<D>;
            const long double x = roundEvenLong(
                std::ldexp(std::atan2((long double)im[i * stride], (long double)re[i * stride]), e));
            d[i] = x >= (long double)Lim::max() ? Lim::max() : x <= (long double)Lim::min() ? Lim::min() : D(x);
        }
    }
}

// ---- Argument checks of the shapes ---------------------------------------------

template <class S, class D>
ZvpStatus checks(const S* s, const D* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    return zvpStsNoErr;
}
template <class S, class D>
ZvpStatus checks(const S* re, const S* im, const D* d, int len) {
    ZVP_CHECK_PTRS(re, im, d);
    ZVP_CHECK_LENS(len);
    return zvpStsNoErr;
}

template <class T>
using Part = form::Part<T>;

// Float complex forms: interleaved (src, dst) and split (re, im, dst).
template <class Op, class C>
ZvpStatus floatForm(const C* s, Part<C>* d, int len) {
    ZVP_RETURN_IF_ERROR(checks(s, d, len));
    floatKernel<Op>(Interleaved<Part<C>>{form::parts(s)}, d, len);
    return zvpStsNoErr;
}
template <class Op, class T>
ZvpStatus floatForm(const T* re, const T* im, T* d, int len) {
    ZVP_RETURN_IF_ERROR(checks(re, im, d, len));
    floatKernel<Op>(Split<T>{re, im}, d, len);
    return zvpStsNoErr;
}

template <class Src>
ZvpStatus phase64Form(Src s, double* d, int len) {
    phase64(s, d, len);
    return zvpStsNoErr;
}

}  // namespace

// ---- Magnitude and power spectrum ------------------------------------------------

// Magnitude and power spectrum share every form but the 16s_Sfs one: the
// float forms on lanes, the 16-bit ones through exact 32-bit sums of squares.
#define ZVP_SQUARES_FORMS(Name, FloatOp, W)                                                              \
    ZvpStatus zvps##Name##_32fc(const Zvp32fc* pSrc, Zvp32f* pDst, int len) {                            \
        return floatForm<FloatOp>(pSrc, pDst, len);                                                      \
    }                                                                                                    \
    ZvpStatus zvps##Name##_64fc(const Zvp64fc* pSrc, Zvp64f* pDst, int len) {                            \
        return floatForm<FloatOp>(pSrc, pDst, len);                                                      \
    }                                                                                                    \
    ZvpStatus zvps##Name##_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDst, int len) {      \
        return floatForm<FloatOp>(pSrcRe, pSrcIm, pDst, len);                                            \
    }                                                                                                    \
    ZvpStatus zvps##Name##_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDst, int len) {      \
        return floatForm<FloatOp>(pSrcRe, pSrcIm, pDst, len);                                            \
    }                                                                                                    \
    ZvpStatus zvps##Name##_16sc32f(const Zvp16sc* pSrc, Zvp32f* pDst, int len) {                         \
        ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));                                                    \
        int16Kernel<2>(Interleaved16{form::parts(pSrc)}, pDst, len, Int16Op<W, float>{});                \
        return zvpStsNoErr;                                                                              \
    }                                                                                                    \
    ZvpStatus zvps##Name##_16s32f(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp32f* pDst, int len) {   \
        ZVP_RETURN_IF_ERROR(checks(pSrcRe, pSrcIm, pDst, len));                                          \
        int16Kernel<2>(Split16{pSrcRe, pSrcIm}, pDst, len, Int16Op<W, float>{});                         \
        return zvpStsNoErr;                                                                              \
    }                                                                                                    \
    ZvpStatus zvps##Name##_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDst, int len, int scaleFactor) {       \
        ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));                                                    \
        MxcsrGuard g(MxcsrGuard::kNearest);                                                              \
        int16Kernel<2>(Interleaved16{form::parts(pSrc)}, pDst, len, Int16Op<W, Zvp16s>{scaleOf(scaleFactor)}); \
        return zvpStsNoErr;                                                                              \
    }
ZVP_SQUARES_FORMS(Magnitude, MagnitudeOp, What::Magnitude)
ZVP_SQUARES_FORMS(PowerSpectr, PowerOp, What::Power)
#undef ZVP_SQUARES_FORMS
ZvpStatus zvpsMagnitude_16s_Sfs(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16s* pDst, int len,
                                int scaleFactor) {
    ZVP_RETURN_IF_ERROR(checks(pSrcRe, pSrcIm, pDst, len));
    MxcsrGuard g(MxcsrGuard::kNearest);
    int16Kernel<2>(Split16{pSrcRe, pSrcIm}, pDst, len, Int16Op<What::Magnitude, Zvp16s>{scaleOf(scaleFactor)});
    return zvpStsNoErr;
}
ZvpStatus zvpsMagnitude_32sc_Sfs(const Zvp32sc* pSrc, Zvp32s* pDst, int len, int scaleFactor) {
    ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));
    for (int i = 0; i < len; ++i) {
        const std::int64_t re = pSrc[i].re, im = pSrc[i].im;
        pDst[i] = magnitudeRounded(std::uint64_t(re * re) + std::uint64_t(im * im), scaleFactor);
    }
    return zvpStsNoErr;
}

// ---- Phase ---------------------------------------------------------------------------

ZvpStatus zvpsPhase_32fc(const Zvp32fc* pSrc, Zvp32f* pDst, int len) {
    return floatForm<PhaseOp>(pSrc, pDst, len);
}
ZvpStatus zvpsPhase_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDst, int len) {
    return floatForm<PhaseOp>(pSrcRe, pSrcIm, pDst, len);
}
ZvpStatus zvpsPhase_64fc(const Zvp64fc* pSrc, Zvp64f* pDst, int len) {
    ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));
    return phase64Form(Interleaved<double>{form::parts(pSrc)}, pDst, len);
}
ZvpStatus zvpsPhase_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDst, int len) {
    ZVP_RETURN_IF_ERROR(checks(pSrcRe, pSrcIm, pDst, len));
    return phase64Form(Split<double>{pSrcRe, pSrcIm}, pDst, len);
}
ZvpStatus zvpsPhase_16sc32f(const Zvp16sc* pSrc, Zvp32f* pDst, int len) {
    ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));
    int16Kernel<4>(Interleaved16{form::parts(pSrc)}, pDst, len, Phase16Op{});
    return zvpStsNoErr;
}
ZvpStatus zvpsPhase_16s32f(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp32f* pDst, int len) {
    ZVP_RETURN_IF_ERROR(checks(pSrcRe, pSrcIm, pDst, len));
    int16Kernel<4>(Split16{pSrcRe, pSrcIm}, pDst, len, Phase16Op{});
    return zvpStsNoErr;
}
ZvpStatus zvpsPhase_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));
    phaseFixed(&pSrc->re, &pSrc->im, 2, pDst, len, scaleFactor);
    return zvpStsNoErr;
}
ZvpStatus zvpsPhase_16s_Sfs(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16s* pDst, int len,
                            int scaleFactor) {
    ZVP_RETURN_IF_ERROR(checks(pSrcRe, pSrcIm, pDst, len));
    phaseFixed(pSrcRe, pSrcIm, 1, pDst, len, scaleFactor);
    return zvpStsNoErr;
}
ZvpStatus zvpsPhase_32sc_Sfs(const Zvp32sc* pSrc, Zvp32s* pDst, int len, int scaleFactor) {
    ZVP_RETURN_IF_ERROR(checks(pSrc, pDst, len));
    phaseFixed(&pSrc->re, &pSrc->im, 2, pDst, len, scaleFactor);
    return zvpStsNoErr;
}

// ---- CartToPolar ------------------------------------------------------------------

// Both parts deliberately run, whatever the first returned: the magnitude's
// failure comes first.
ZvpStatus zvpsCartToPolar_32fc(const Zvp32fc* pSrc, Zvp32f* pDstMagn, Zvp32f* pDstPhase, int len) {
    const ZvpStatus m = p8::zvpsMagnitude_32fc(pSrc, pDstMagn, len);
    const ZvpStatus p = p8::zvpsPhase_32fc(pSrc, pDstPhase, len);
    return m != zvpStsNoErr ? m : p;
}
ZvpStatus zvpsCartToPolar_64fc(const Zvp64fc* pSrc, Zvp64f* pDstMagn, Zvp64f* pDstPhase, int len) {
    ZVP_CHECK_PTRS(pSrc, pDstMagn, pDstPhase);
    ZVP_CHECK_LENS(len);
    p8::zvpsMagnitude_64fc(pSrc, pDstMagn, len);
    return p8::zvpsPhase_64fc(pSrc, pDstPhase, len);
}
ZvpStatus zvpsCartToPolar_32f(const Zvp32f* pSrcRe, const Zvp32f* pSrcIm, Zvp32f* pDstMagn,
                              Zvp32f* pDstPhase, int len) {
    ZVP_CHECK_PTRS(pSrcRe, pSrcIm, pDstMagn, pDstPhase);
    ZVP_CHECK_LENS(len);
    p8::zvpsMagnitude_32f(pSrcRe, pSrcIm, pDstMagn, len);
    return p8::zvpsPhase_32f(pSrcRe, pSrcIm, pDstPhase, len);
}
ZvpStatus zvpsCartToPolar_64f(const Zvp64f* pSrcRe, const Zvp64f* pSrcIm, Zvp64f* pDstMagn,
                              Zvp64f* pDstPhase, int len) {
    ZVP_CHECK_PTRS(pSrcRe, pSrcIm, pDstMagn, pDstPhase);
    ZVP_CHECK_LENS(len);
    p8::zvpsMagnitude_64f(pSrcRe, pSrcIm, pDstMagn, len);
    return p8::zvpsPhase_64f(pSrcRe, pSrcIm, pDstPhase, len);
}
// The phase runs only after the magnitude succeeded.
ZvpStatus zvpsCartToPolar_16sc_Sfs(const Zvp16sc* pSrc, Zvp16s* pDstMagn, Zvp16s* pDstPhase, int len,
                                   int magnScaleFactor, int phaseScaleFactor) {
    const ZvpStatus m = p8::zvpsMagnitude_16sc_Sfs(pSrc, pDstMagn, len, magnScaleFactor);
    if (m != zvpStsNoErr) return m;
    return p8::zvpsPhase_16sc_Sfs(pSrc, pDstPhase, len, phaseScaleFactor);
}

// ---- PolarToCart --------------------------------------------------------------------

namespace {

// (magn cos phase, magn sin phase) in double; the value of a fixed-point
// input v with scale factor sf is v * 2^sf (beyond +-100 clamped: far past
// every saturation and every meaningful phase).
inline double fixedValue(double v, int sf) { return std::ldexp(v, sf > 100 ? 100 : sf < -100 ? -100 : sf); }

template <class M, class P, class Out>
void polar(const M* magn, const P* phase, std::ptrdiff_t n, int magnSf, int phaseSf, Out out) {
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        const double m = fixedValue(double(magn[i]), magnSf);
        const double p = fixedValue(double(phase[i]), phaseSf);
        out(i, m * std::cos(p), m * std::sin(p));
    }
}

template <class C>
ZvpStatus polarFloatInterleaved(const Part<C>* magn, const Part<C>* phase, C* d, int len) {
    ZVP_CHECK_PTRS(d);
    ZVP_CHECK_PTRS(magn, phase);
    ZVP_CHECK_LENS(len);
    polar(magn, phase, len, 0, 0, [d](std::ptrdiff_t i, double re, double im) {
        d[i].re = Part<C>(re);
        d[i].im = Part<C>(im);
    });
    return zvpStsNoErr;
}
template <class T>
ZvpStatus polarFloatSplit(const T* magn, const T* phase, T* re, T* im, int len) {
    ZVP_CHECK_PTRS(magn, phase, re, im);
    ZVP_CHECK_LENS(len);
    polar(magn, phase, len, 0, 0, [re, im](std::ptrdiff_t i, double x, double y) {
        re[i] = T(x);
        im[i] = T(y);
    });
    return zvpStsNoErr;
}
template <class C, class P>
ZvpStatus polarFixed(const P* magn, const P* phase, C* d, int len, int magnSf, int phaseSf) {
    ZVP_CHECK_PTRS(magn, phase, d);
    ZVP_CHECK_LENS(len);
    MxcsrGuard g(MxcsrGuard::kNearest);
    polar(magn, phase, len, magnSf, phaseSf, [d](std::ptrdiff_t i, double re, double im) {
        d[i].re = saturateRound<Part<C>>(re);
        d[i].im = saturateRound<Part<C>>(im);
    });
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsPolarToCart_32fc(const Zvp32f* pSrcMagn, const Zvp32f* pSrcPhase, Zvp32fc* pDst, int len) {
    return polarFloatInterleaved(pSrcMagn, pSrcPhase, pDst, len);
}
ZvpStatus zvpsPolarToCart_64fc(const Zvp64f* pSrcMagn, const Zvp64f* pSrcPhase, Zvp64fc* pDst, int len) {
    return polarFloatInterleaved(pSrcMagn, pSrcPhase, pDst, len);
}
ZvpStatus zvpsPolarToCart_32f(const Zvp32f* pSrcMagn, const Zvp32f* pSrcPhase, Zvp32f* pDstRe,
                              Zvp32f* pDstIm, int len) {
    return polarFloatSplit(pSrcMagn, pSrcPhase, pDstRe, pDstIm, len);
}
ZvpStatus zvpsPolarToCart_64f(const Zvp64f* pSrcMagn, const Zvp64f* pSrcPhase, Zvp64f* pDstRe,
                              Zvp64f* pDstIm, int len) {
    return polarFloatSplit(pSrcMagn, pSrcPhase, pDstRe, pDstIm, len);
}
ZvpStatus zvpsPolarToCart_16sc(const Zvp16s* pSrcMagn, const Zvp16s* pSrcPhase, Zvp16sc* pDst, int len) {
    return polarFixed(pSrcMagn, pSrcPhase, pDst, len, 0, -13);
}
ZvpStatus zvpsPolarToCart_16sc_Sfs(const Zvp16s* pSrcMagn, const Zvp16s* pSrcPhase, Zvp16sc* pDst, int len,
                                   int magnScaleFactor, int phaseScaleFactor) {
    return polarFixed(pSrcMagn, pSrcPhase, pDst, len, magnScaleFactor, phaseScaleFactor);
}
ZvpStatus zvpsPolarToCart_32sc(const Zvp32s* pSrcMagn, const Zvp32s* pSrcPhase, Zvp32sc* pDst, int len) {
    return polarFixed(pSrcMagn, pSrcPhase, pDst, len, 0, -29);
}

// ---- PowerSpectr_16s_Sfs ------------------------------------------------------------

ZvpStatus zvpsPowerSpectr_16s_Sfs(const Zvp16s* pSrcRe, const Zvp16s* pSrcIm, Zvp16s* pDst, int len,
                                  int scaleFactor) {
    ZVP_RETURN_IF_ERROR(checks(pSrcRe, pSrcIm, pDst, len));
    if (scaleFactor < -14) {
        // Every non-zero sum times 2^15 or more saturates.
        for (int i = 0; i < len; ++i) pDst[i] = (pSrcRe[i] | pSrcIm[i]) ? 32767 : 0;
        return zvpStsNoErr;
    }
    MxcsrGuard g(MxcsrGuard::kNearest);
    int16Kernel<2>(Split16{pSrcRe, pSrcIm}, pDst, len, Int16Op<What::Power, Zvp16s>{scaleOf(scaleFactor)});
    return zvpStsNoErr;
}

}  // namespace zvp::p8

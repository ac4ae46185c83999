// Convert between integer and float sample types: widening, narrowing,
// integer to float with an exact power-of-two scale, float to integer with a
// rounding mode and a scale factor, and the integer narrowings with their
// own rounding ladders.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <limits>

#include "convert_kernel.h"
#include "forms.h"
#include "fpguard.h"
#include "lane_scale.h"
#include "p8/convert.h"
#include "scale.h"

namespace zvp::p8 {
namespace {

using conv::Rnd;

// A kernel policy of the forms from a function Fn::go(source, dest, n, x...).
template <class D, class Fn>
struct Policy {
    using type = D;
    template <class A, class... X>
    static ZvpStatus run(A s, D* d, std::ptrdiff_t n, X... x) {
        Fn::go(s.p, d, n, x...);
        return zvpStsNoErr;
    }
};

// ---- Lane rules --------------------------------------------------------------------

// Integers widened, sign- or zero-extended.
template <class S>
struct WidenFn {
    const S* s;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using SL = Rebind<L, S>;
        return SL::widenLo(SL::load(s + i));
    }
};

struct Widen {
    template <class S, class D>
    static void go(const S* s, D* d, std::ptrdiff_t n) { form::each<D, 1>(WidenFn<S>{s}, d, n); }
};

// Integers to float, exact up to 24 bits. 32-bit sources round to nearest
// even, under a guard.
struct IntToFloat {
    template <class S>
    static void go(const S* s, Zvp32f* d, std::ptrdiff_t n) {
        const conv::ToFloat<conv::FromInt<S>, false> fn{{s}, _mm_setzero_ps()};
        if constexpr (sizeof(S) == 4) {
            MxcsrGuard g(MxcsrGuard::kNearest);
            form::each<Zvp32f, 1>(fn, d, n);
        } else {
            form::each<Zvp32f, 1>(fn, d, n);
        }
    }
};

// Integers times 2^-sf in single precision, the factor clamped to the normal
// range [2^-126, 2^112]: exact for 16-bit sources, one rounding for 32-bit ones.
struct IntToFloatSfs {
    template <class S>
    static void go(const S* s, Zvp32f* d, std::ptrdiff_t n, int sf) {
        const __m128 f = _mm_set1_ps(conv::pow2Clamped<float>(sf, -112, 126));
        auto body = [&] {
            if (sf == 0) form::each<Zvp32f, 1>(conv::ToFloat<conv::FromInt<S>, false>{{s}, f}, d, n);
            else form::each<Zvp32f, 1>(conv::ToFloat<conv::FromInt<S>, true>{{s}, f}, d, n);
        };
        if constexpr (sizeof(S) == 4) {
            MxcsrGuard g(MxcsrGuard::kNearest);
            body();
        } else {
            body();
        }
    }
};

// Integers times 2^-sf in double precision, the factor clamped to
// [2^-1022, 2^1008]: exact, except that a 32-bit source can overflow to
// infinity (under the guard, whatever the caller's mode).
struct IntToDoubleSfs {
    template <class S>
    static void go(const S* s, Zvp64f* d, std::ptrdiff_t n, int sf) {
        const __m128d f = _mm_set1_pd(conv::pow2Clamped<double>(sf, -1008, 1022));
        MxcsrGuard g(MxcsrGuard::kNearest);
        form::each<Zvp64f, 1>(conv::ToDouble<S, true>{s, f}, d, n);
    }
};

// Exact widenings to double; float sources under a guard, so that a
// caller's denormals-are-zero does not reach them.
struct ToDoubleExact {
    template <class S>
    static void go(const S* s, Zvp64f* d, std::ptrdiff_t n) {
        const conv::ToDouble<S, false> fn{s, _mm_setzero_pd()};
        if constexpr (std::is_same_v<S, float>) {
            MxcsrGuard g(MxcsrGuard::kNearest);
            form::each<Zvp64f, 1>(fn, d, n);
        } else {
            form::each<Zvp64f, 1>(fn, d, n);
        }
    }
};

// Doubles to floats, to nearest even with denormal results kept.
struct DoubleToFloat {
    static void go(const Zvp64f* s, Zvp32f* d, std::ptrdiff_t n) {
        MxcsrGuard g(MxcsrGuard::kNearest);
        form::each<Zvp32f, 1>(conv::DoubleToFloat{s}, d, n);
    }
};

// A 64-bit integer rounded once to double: the high word times 2^32 and the
// low word are exact, so their sum is the one rounding.
inline double int64ToDouble(std::int64_t x) {
    const auto hi = std::int32_t(x >> 32);
    const auto lo = std::uint32_t(std::uint64_t(x));
    const double low = double(std::int32_t(lo ^ 0x80000000u)) + 2147483648.0;
    return double(hi) * 4294967296.0 + low;
}

// ---- Float to integer -----------------------------------------------------------

template <class T>
struct FloatToInt {
    template <class D>
    static void go(const T* s, D* d, std::ptrdiff_t n, ZvpRoundMode mode, int sf) {
        conv::toIntFull<D>(conv::FromFloat<T>{s}, d, n, conv::rndOf(mode), sf);
    }
};

// Double to 64-bit integers: scaled exactly, rounded, saturated to the 64-bit
// range (NaN by its sign).
template <Rnd R>
Zvp64s double64s(double x, const conv::Pow2<double>& p) {
    using O = One<double>;
    if (p.steps >= 1) x *= p.f1;
    if (p.steps >= 2) x *= p.f2;
    if (x != x) return std::signbit(x) ? INT64_MIN : INT64_MAX;
    const double r = O::first(conv::roundBy<O, R>(O::set1(x)));
    if (r >= 0x1p63) return INT64_MAX;
    if (r <= -0x1p63) return INT64_MIN;
    return Zvp64s(r);
}
struct Double64s {
    static void go(const Zvp64f* s, Zvp64s* d, std::ptrdiff_t n, ZvpRoundMode mode, int sf) {
        const auto p = conv::pow2Scale<double>(sf);
        auto loop = [&]<Rnd R>() {
            for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = double64s<R>(s[i], p);
        };
        const Rnd r = conv::rndOf(mode);
        if (sf < std::numeric_limits<double>::min_exponent) {
            MxcsrGuard g(MxcsrGuard::kNearest);  // denormal sources scaled to a half or more
            r == Rnd::Near ? loop.template operator()<Rnd::Near>()
                : r == Rnd::Zero ? loop.template operator()<Rnd::Zero>() : loop.template operator()<Rnd::Away>();
        } else {
            r == Rnd::Near ? loop.template operator()<Rnd::Near>()
                : r == Rnd::Zero ? loop.template operator()<Rnd::Zero>() : loop.template operator()<Rnd::Away>();
        }
    }
};

// ---- Integer narrowing with a rounding mode ------------------------------------

// |x| / 2^sf (1 <= sf < bits of U) rounded by r: to nearest even, toward
// zero, or half away from zero. The sums fit: |x| <= 2^(bits-1).
template <class U>
U roundMagnitude(U m, int sf, Rnd r) {
    const U h = U(U(1) << (sf - 1));
    if (r == Rnd::Zero) return U(m >> sf);
    if (r == Rnd::Near) return U((m + h - 1 + ((m >> sf) & 1)) >> sf);
    return U((m + h) >> sf);
}

// The signed result of a rounded magnitude, saturated to D.
template <class D, class U>
D signedMagnitude(bool negative, U q) {
    using L = std::numeric_limits<D>;
    if (negative) return q >= U(L::max()) + 1 ? L::min() : D(-std::make_signed_t<U>(q));
    return q > U(L::max()) ? L::max() : D(q);
}

// 16s to 8s: zero from 18 up, rounded magnitudes from 1 to 17, saturation at
// 0, left shifts from -6 to -1, the sign's bound below.
Zvp8s narrow16s8s(Zvp16s x, int sf, Rnd r) {
    if (sf < -6) return x > 0 ? 127 : x < 0 ? -128 : 0;
    if (sf <= 0) return saturate<Zvp8s>(std::int32_t(x) * (1 << -sf));
    const auto m = std::uint32_t(x < 0 ? -std::int32_t(x) : x);
    return signedMagnitude<Zvp8s>(x < 0, roundMagnitude(m, sf, r));
}

// 64s to 32s, the scale factor clamped to [-31, 63].
Zvp32s narrow64s32s(Zvp64s x, int sf, Rnd r) {
    if (sf < 0) return shiftLeftSaturate<Zvp32s>(x, -sf);
    if (sf == 0) return saturate<Zvp32s>(x);
    const std::uint64_t m = x < 0 ? 0 - std::uint64_t(x) : std::uint64_t(x);
    return signedMagnitude<Zvp32s>(x < 0, roundMagnitude(m, sf, r));
}

struct Narrow64s32s {
    static void go(const Zvp64s* s, Zvp32s* d, std::ptrdiff_t n, ZvpRoundMode mode, int sf) {
        const int k = std::clamp(sf, -31, 63);
        const Rnd r = conv::rndOf(mode);
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = narrow64s32s(s[i], k, r);
    }
};

// 32s to 16s by the scale rule, the factor clamped to [-15, 31]: positive
// factors round in the 32-bit lanes (ties to even) before the saturating
// pack; negative ones shift the saturated 16-bit values left, saturating.
template <int Path>  // 1: sf > 0, 0: sf = 0, -1: sf < 0
struct Narrow32s16sSfsFn {
    const Zvp32s* s;
    RoundShift<Full<Zvp32s>> down;
    NegConsts up;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using SL = Rebind<L, Zvp32s>;
        constexpr int K = L::N / SL::N;
        __m128i r[K];
        for (int k = 0; k < K; ++k) {
            r[k] = SL::load(s + i + k * SL::N);
            if constexpr (Path > 0) r[k] = down(r[k]);
        }
        const __m128i v = conv::narrowTo<Zvp16s, K>(r);
        if constexpr (Path < 0) return shiftLeftSat<Full<Zvp16s>>(v, up);
        else return v;
    }
};
struct Narrow32s16sSfs {
    static void go(const Zvp32s* s, Zvp16s* d, std::ptrdiff_t n, int sf) {
        const int k = std::clamp(sf, -15, 31);
        const RoundShift<Full<Zvp32s>> down(k > 0 ? k : 1);
        const NegConsts up = negConsts<Full<Zvp16s>>(k < 0 ? -k : 1);
        if (k > 0) form::each<Zvp16s, 1>(Narrow32s16sSfsFn<1>{s, down, up}, d, n);
        else if (k == 0) form::each<Zvp16s, 1>(Narrow32s16sSfsFn<0>{s, down, up}, d, n);
        else form::each<Zvp16s, 1>(Narrow32s16sSfsFn<-1>{s, down, up}, d, n);
    }
};

}  // namespace

// ---- Exports -----------------------------------------------------------------------

ZvpStatus zvpsConvert_8s16s(const Zvp8s* pSrc, Zvp16s* pDst, int len) {
    return form::v<Policy<Zvp16s, Widen>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_16s32s(const Zvp16s* pSrc, Zvp32s* pDst, int len) {
    return form::v<Policy<Zvp32s, Widen>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_8s32f(const Zvp8s* pSrc, Zvp32f* pDst, int len) {
    return form::v<Policy<Zvp32f, IntToFloat>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_8u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len) {
    return form::v<Policy<Zvp32f, IntToFloat>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_16s32f(const Zvp16s* pSrc, Zvp32f* pDst, int len) {
    return form::v<Policy<Zvp32f, IntToFloat>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_16u32f(const Zvp16u* pSrc, Zvp32f* pDst, int len) {
    return form::v<Policy<Zvp32f, IntToFloat>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_32s32f(const Zvp32s* pSrc, Zvp32f* pDst, int len) {
    return form::v<Policy<Zvp32f, IntToFloat>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_32s64f(const Zvp32s* pSrc, Zvp64f* pDst, int len) {
    return form::v<Policy<Zvp64f, ToDoubleExact>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_32f64f(const Zvp32f* pSrc, Zvp64f* pDst, int len) {
    return form::v<Policy<Zvp64f, ToDoubleExact>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_64f32f(const Zvp64f* pSrc, Zvp32f* pDst, int len) {
    return form::v<Policy<Zvp32f, DoubleToFloat>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_32s16s(const Zvp32s* pSrc, Zvp16s* pDst, int len) {
    return form::v<Policy<Zvp16s, Narrow32s16sSfs>>(pSrc, pDst, len, 0);
}

// The length is read as an unsigned count (unsignedCount).
ZvpStatus zvpsConvert_64s64f(const Zvp64s* pSrc, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    const std::size_t n = unsignedCount(len);
    if (n == 0) return zvpStsSizeErr;
    MxcsrGuard g(MxcsrGuard::kNearest);
    for (std::size_t i = 0; i < n; ++i) pDst[i] = int64ToDouble(pSrc[i]);
    return zvpStsNoErr;
}

ZvpStatus zvpsConvert_16s32f_Sfs(const Zvp16s* pSrc, Zvp32f* pDst, int len, int scaleFactor) {
    return form::v<Policy<Zvp32f, IntToFloatSfs>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsConvert_32s32f_Sfs(const Zvp32s* pSrc, Zvp32f* pDst, int len, int scaleFactor) {
    return form::v<Policy<Zvp32f, IntToFloatSfs>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsConvert_16s64f_Sfs(const Zvp16s* pSrc, Zvp64f* pDst, int len, int scaleFactor) {
    return form::v<Policy<Zvp64f, IntToDoubleSfs>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsConvert_32s64f_Sfs(const Zvp32s* pSrc, Zvp64f* pDst, int len, int scaleFactor) {
    return form::v<Policy<Zvp64f, IntToDoubleSfs>>(pSrc, pDst, len, scaleFactor);
}

#define ZVP_FLOAT_TO_INT(S, D)                                                                              \
    ZvpStatus zvpsConvert_##S##D##_Sfs(const Zvp##S* pSrc, Zvp##D* pDst, int len, ZvpRoundMode rndMode,     \
                                       int scaleFactor) {                                                   \
        return form::v<Policy<Zvp##D, FloatToInt<Zvp##S>>>(pSrc, pDst, len, rndMode, scaleFactor);          \
    }
ZVP_FLOAT_TO_INT(32f, 8s)
ZVP_FLOAT_TO_INT(32f, 8u)
ZVP_FLOAT_TO_INT(32f, 16s)
ZVP_FLOAT_TO_INT(32f, 16u)
ZVP_FLOAT_TO_INT(32f, 32s)
ZVP_FLOAT_TO_INT(64f, 16s)
ZVP_FLOAT_TO_INT(64f, 32s)
#undef ZVP_FLOAT_TO_INT

ZvpStatus zvpsConvert_64f64s_Sfs(const Zvp64f* pSrc, Zvp64s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor) {
    return form::v<Policy<Zvp64s, Double64s>>(pSrc, pDst, len, rndMode, scaleFactor);
}

// The length is read as an unsigned count (unsignedCount).
ZvpStatus zvpsConvert_16s8s_Sfs(const Zvp16s* pSrc, Zvp8s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    const std::size_t n = unsignedCount(len);
    if (n == 0) return zvpStsSizeErr;
    if (scaleFactor >= 18) {
        for (std::size_t i = 0; i < n; ++i) pDst[i] = 0;
        return zvpStsNoErr;
    }
    const Rnd r = conv::rndOf(rndMode);
    for (std::size_t i = 0; i < n; ++i) pDst[i] = narrow16s8s(pSrc[i], scaleFactor, r);
    return zvpStsNoErr;
}

ZvpStatus zvpsConvert_64s32s_Sfs(const Zvp64s* pSrc, Zvp32s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor) {
    return form::v<Policy<Zvp32s, Narrow64s32s>>(pSrc, pDst, len, rndMode, scaleFactor);
}
ZvpStatus zvpsConvert_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    return form::v<Policy<Zvp16s, Narrow32s16sSfs>>(pSrc, pDst, len, scaleFactor);
}

}  // namespace zvp::p8

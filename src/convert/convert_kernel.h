// The conversion kernels: each rule written once as a lane operation over
// its source and destination types and its policies (rounding, scale steps),
// driven by form::each over the destination, so the vector body and the
// one-element tail run the same instructions.
//
// Sources hand out float (or double) lanes: FromFloat loads them, FromInt
// widens 8/16/32-bit integers exactly, FromHalf decodes binary16 exactly.
// Destinations: ToFloat (optionally times an exact power of two), ToInt
// (scale, round, saturate into 8/16/32-bit integers), ToHalf (binary16,
// rounded to nearest even or toward zero).
//
// Nothing here depends on the caller's MXCSR: roundings use explicit modes
// (roundps with an immediate, truncating converts), and the scaling
// products are exact wherever they can change an integer result. The one
// exception, a denormal source scaled up while the caller has
// denormals-are-zero set, is handled by holding an MxcsrGuard for the
// scale factors large enough to matter.
#pragma once

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "forms.h"
#include "fpguard.h"
#include "lane.h"

namespace zvp::ZVP_LEVEL::conv {

// ---- Rounding -----------------------------------------------------------------

// Near rounds explicitly (roundps); Current converts with the MXCSR's
// rounding and is chosen only when that rounding is to nearest, where the
// two agree (the convert then does the rounding for free).
enum class Rnd { Zero, Near, Away, Current };

// Float-to-integer modes: 0 truncates, 1 rounds to nearest even, every other
// value rounds half away from zero.
inline Rnd rndOf(int mode) { return mode == 0 ? Rnd::Zero : mode == 1 ? Rnd::Near : Rnd::Away; }

// x rounded to an integer value by R. Rnd::Zero and Rnd::Current leave x as
// it is: the convert that follows does the work.
template <class F, Rnd R>
inline typename F::R roundBy(typename F::R x) {
    using T = typename F::type;
    if constexpr (R == Rnd::Near) {
        return F::roundNearest(x);
    } else if constexpr (R == Rnd::Zero || R == Rnd::Current) {
        return x;
    } else {
        // t = trunc(x) and x - t are exact; a fraction of a half or more
        // moves one away from zero. Infinities give inf - inf = NaN, which
        // compares false and keeps t.
        const auto t = F::roundTrunc(x);
        const auto up = F::ge(F::abs(F::sub(x, t)), F::set1(T(0.5)));
        const auto one = F::or_(F::and_(x, F::set1(T(-0.0))), F::set1(T(1)));
        return F::add(t, F::and_(up, one));
    }
}

// ---- Exact powers of two --------------------------------------------------------

// x * 2^-sf in T, exact wherever the result can matter: one product when
// 2^-sf is representable (a positive sf beyond the smallest denormal acts as
// that denormal, which leaves every finite value far below one half and
// keeps infinities), two products of normal powers when 2^-sf is too large
// (capped where every non-zero value already overflows). So 0 stays 0 and
// infinities stay infinite at every factor.
// 2^k for k from the smallest denormal's exponent to the largest finite
// one, built from its bits.
template <class T>
inline T exp2i(int k) {
    using Lim = std::numeric_limits<T>;
    using U = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    constexpr int mant = Lim::digits - 1, bias = Lim::max_exponent - 1;
    const U b = k >= 1 - bias ? U(k + bias) << mant : U(1) << (k + bias - 1 + mant);
    return std::bit_cast<T>(b);
}

template <class T>
struct Pow2 {
    int steps = 0;
    T f1 = 1, f2 = 1;
};

template <class T>
inline Pow2<T> pow2Scale(int sf) {
    using Lim = std::numeric_limits<T>;
    constexpr int up = Lim::max_exponent - 1;                           // 127, 1023
    constexpr int down = -(Lim::min_exponent - 1) + Lim::digits - 1;    // 149, 1074
    Pow2<T> p;
    if (sf == 0) return p;
    if (sf > 0) {
        p.steps = 1;
        p.f1 = exp2i<T>(-std::min(sf, down));
    } else if (sf >= -up) {
        p.steps = 1;
        p.f1 = exp2i<T>(-sf);
    } else {
        const int k = sf < -2 * up ? 2 * up : -sf;
        p.steps = 2;
        p.f1 = exp2i<T>(up);
        p.f2 = exp2i<T>(k - up);
    }
    return p;
}

// 2^-sf for sf clamped to [lo, hi], a normal number.
template <class T>
inline T pow2Clamped(int sf, int lo, int hi) {
    return exp2i<T>(-std::clamp(sf, lo, hi));
}

// ---- binary16 ------------------------------------------------------------------

// The binary16 codes of the float lanes of x, one per 32-bit lane. Normal
// results shift the exponent and fraction down by 13 bits, rounding by the
// bits shifted out (the carry runs into the exponent, up to infinity);
// results below 2^-14 are the integer |x| * 2^24 (exact) rounded by R;
// NaN keeps its top payload bits and the quiet bit.
template <class F, Rnd R>
inline __m128i halfBits(typename F::R x) {
    static_assert(std::is_same_v<typename F::type, float> && R != Rnd::Away);
    using I = Lane<std::int32_t, F::kBytes>;
    using U = Lane<std::uint32_t, F::kBytes>;
    const __m128i u = F::bits(x);
    const __m128i sign = I::and_(u, I::set1(INT32_MIN));
    const __m128i a = I::xor_(u, sign);
    __m128i h = I::sub(a, I::set1(0x38000000));
    if constexpr (R == Rnd::Near) {
        // + 0x0FFF, + 1 more when the kept part is odd: ties to even.
        h = I::add(h, I::add(I::set1(0x0FFF), I::and_(I::template shr<13>(a), I::set1(1))));
        h = I::min(I::template shr<13>(h), I::set1(0x7C00));
    } else {
        h = I::min(I::template shr<13>(h), I::set1(0x7BFF));
        h = I::blend(h, I::set1(0x7C00), I::eq(a, I::set1(0x7F800000)));
    }
    const auto scaled = F::mul(F::abs(x), F::set1(16777216.0f));
    const __m128i den = F::toI32Trunc(R == Rnd::Near ? F::roundNearest(scaled) : scaled);
    h = I::blend(h, den, I::gt(I::set1(0x38800000), a));
    const __m128i nan = I::or_(I::set1(0x7E00), I::and_(I::template shr<13>(a), I::set1(0x03FF)));
    h = I::blend(h, nan, I::gt(a, I::set1(0x7F800000)));
    return I::or_(h, U::template shr<16>(sign));
}

// The floats of binary16 codes held one per 32-bit lane (zero-extended).
template <class F>
inline typename F::R halfToFloat(__m128i h) {
    using I = Lane<std::int32_t, F::kBytes>;
    const __m128i a = I::and_(h, I::set1(0x7FFF));
    const __m128i sign = I::template shl<16>(I::xor_(h, a));
    const __m128i shifted = I::template shl<13>(a);
    __m128i bits = I::add(shifted, I::set1(0x38000000));
    bits = I::blend(bits, I::add(shifted, I::set1(0x70000000)), I::gt(a, I::set1(0x7BFF)));
    // Denormals (and zero): the fraction times 2^-24, exact.
    const auto den = F::mul(F::fromI32(a), F::set1(5.9604644775390625e-8f));
    bits = I::blend(bits, F::bits(den), I::gt(I::set1(0x0400), a));
    return F::fromBits(I::or_(bits, sign));
}

// ---- Sources ---------------------------------------------------------------------
// get<F>(i) gives elements i .. i + F::N - 1 as a lane F of `type`.

template <class T>
struct FromFloat {
    using type = T;
    const T* p;
    template <class F>
    typename F::R get(std::ptrdiff_t i) const { return F::load(p + i); }
};

// 8, 16 and 32-bit integers, exactly for up to 24 bits (32-bit sources round
// by the current mode: the exports that use them hold a guard).
template <class S>
struct FromInt {
    using type = float;
    const S* p;
    template <class F>
    typename F::R get(std::ptrdiff_t i) const {
        using SL = Rebind<F, S>;
        __m128i r = SL::load(p + i);
        if constexpr (sizeof(S) == 1) r = SL::Wide::widenLo(SL::widenLo(r));
        else if constexpr (sizeof(S) == 2) r = SL::widenLo(r);
        return F::fromI32(r);
    }
};

struct FromHalf {
    using type = float;
    const std::uint16_t* p;
    template <class F>
    typename F::R get(std::ptrdiff_t i) const {
        using SL = Rebind<F, std::uint16_t>;
        return halfToFloat<F>(SL::widenLo(SL::load(p + i)));
    }
};

// ---- Destinations ------------------------------------------------------------------

// The 32-bit lanes r[0 .. K-1] narrowed, saturating, into one lane of D.
template <class D, int K>
inline __m128i narrowTo(const __m128i* r) {
    using I = Full<std::int32_t>;
    const __m128i z = I::zero();
    if constexpr (sizeof(D) == 4) {
        return r[0];
    } else if constexpr (sizeof(D) == 2) {
        return I::narrow<D>(r[0], K > 1 ? r[1] : z);
    } else {
        using H = Full<std::int16_t>;
        const __m128i lo = I::narrow<std::int16_t>(r[0], K > 1 ? r[1] : z);
        const __m128i hi = K > 2 ? I::narrow<std::int16_t>(r[2], r[3]) : z;
        return H::narrow<D>(lo, hi);
    }
}

// Float lanes, optionally times f.
template <class Src, bool Scaled>
struct ToFloat {
    Src src;
    __m128 f;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        const auto x = src.template get<L>(i);
        if constexpr (Scaled) return L::mul(x, f);
        else return x;
    }
};

// Doubles from 16/32-bit integers or floats (exact), optionally times f.
template <class S, bool Scaled>
struct ToDouble {
    const S* s;
    __m128d f;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using SL = Rebind<L, S>;
        typename L::R x;
        if constexpr (std::is_same_v<S, float>) x = L::fromF32(SL::load(s + i));
        else if constexpr (sizeof(S) == 2) x = L::fromI32(SL::widenLo(SL::load(s + i)));
        else x = L::fromI32(SL::load(s + i));
        if constexpr (Scaled) return L::mul(x, f);
        else return x;
    }
};

// Floats from doubles, rounded by the current mode (the export holds a guard).
struct DoubleToFloat {
    const double* s;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using SL = Rebind<L, double>;
        const __m128 lo = Lane<double, 16>::toF32(SL::load(s + i));
        if constexpr (L::N == 1) return lo;
        else return _mm_movelh_ps(lo, Lane<double, 16>::toF32(SL::load(s + i + SL::N)));
    }
};

// Integers of D from float or double sources: times 2^-sf (Steps exact
// products), rounded by R, saturated to [Lo, Hi]. A full 32-bit range takes
// the bit-pattern rule: a scaled value whose bits, read as a signed integer,
// exceed those of the largest value below 2^31 (so 2^31 and above,
// +infinity and NaN with the sign clear) gives the maximum; the truncating
// convert gives the minimum for everything at or below -2^31 and for the
// other NaNs. Narrower ranges saturate, and NaN gives the maximum. Double
// sources run one element per lane.
template <class Src, class D, Rnd R, int Steps, std::int32_t Lo, std::int32_t Hi>
struct ToInt {
    using T = typename Src::type;
    using FT = Full<T>;
    Src src;
    typename FT::R f1, f2;

    template <class F>
    static __m128i convert(typename F::R x) {
        if constexpr (R == Rnd::Current) return F::toI32(x);
        else return F::toI32Trunc(x);
    }

    template <class F>
    __m128i cvt(typename F::R x) const {
        if constexpr (Steps >= 1) x = F::mul(x, f1);
        if constexpr (Steps >= 2) x = F::mul(x, f2);
        if constexpr (Lo == INT32_MIN && Hi == INT32_MAX) {
            static_assert(sizeof(T) == 4 || F::N == 1);
            using B = Lane<std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>, F::kBytes>;
            using BT = typename B::type;
            const BT below = sizeof(T) == 4 ? BT(0x4EFFFFFF) : BT(0x41DFFFFFFFFFFFFFll);
            const __m128i i = convert<F>(roundBy<F, R>(x));
            const __m128i over = B::gt(F::bits(x), B::set1(below));
            return Full<std::int32_t>::blend(i, Full<std::int32_t>::set1(INT32_MAX), over);
        } else {
            // The upper bound takes NaN too (an unordered min gives its second
            // operand). Below, the truncating convert gives the integer minimum
            // for everything under -2^31 and the saturating packs into 8 and
            // 16 bits clamp the rest; only 32-bit lanes clamp explicitly.
            x = F::min(roundBy<F, R>(x), F::set1(T(Hi)));
            if constexpr (sizeof(D) == 4) x = F::max(x, F::set1(T(Lo)));
            return convert<F>(x);
        }
    }

    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using F = Rebind<L, T>;
        constexpr int K = L::N / F::N;
        __m128i r[K];
        for (int k = 0; k < K; ++k) r[k] = cvt<F>(src.template get<F>(i + k * F::N));
        return narrowTo<D, K>(r);
    }
};

// binary16 codes from float sources.
template <class Src, Rnd R>
struct ToHalf {
    Src src;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using F = Rebind<L, float>;
        constexpr int K = L::N / F::N;
        __m128i r[2];
        for (int k = 0; k < K; ++k) r[k] = halfBits<F, R>(src.template get<F>(i + k * F::N));
        return narrowTo<std::uint16_t, K>(r);
    }
};

// ---- Drivers ------------------------------------------------------------------------

// Over the destination: full vectors, then one element at a time; or one
// element at a time throughout (OneLane: double sources).
template <bool OneLane, class D, class Fn>
inline void run(Fn fn, D* d, std::ptrdiff_t n) {
    if constexpr (OneLane) form::each<D, 1, 1>(fn, d, n);
    else form::each<D, 1>(fn, d, n);
}

// ToInt for a runtime rounding mode and scale factor. A factor of 2^(1-e)
// or more (e the smallest normal exponent) scales some denormal sources to
// a half or more, so such factors run with denormals-are-zero cleared; below
// that every denormal gives 0 either way.
template <class D, std::int32_t Lo, std::int32_t Hi, class Src>
inline void toInt(Src src, D* d, std::ptrdiff_t n, Rnd r, int sf) {
    using T = typename Src::type;
    const Pow2<T> p = pow2Scale<T>(sf);
    const auto f1 = Full<T>::set1(p.f1), f2 = Full<T>::set1(p.f2);
    auto go = [&]<Rnd R>() {
        constexpr bool one = sizeof(T) == 8;
        if (p.steps == 0) run<one>(ToInt<Src, D, R, 0, Lo, Hi>{src, f1, f2}, d, n);
        else if (p.steps == 1) run<one>(ToInt<Src, D, R, 1, Lo, Hi>{src, f1, f2}, d, n);
        else run<one>(ToInt<Src, D, R, 2, Lo, Hi>{src, f1, f2}, d, n);
    };
    auto byMode = [&] {
        if (r == Rnd::Near && (_mm_getcsr() & 0x6000u) == MxcsrGuard::kNearest) go.template operator()<Rnd::Current>();
        else if (r == Rnd::Near) go.template operator()<Rnd::Near>();
        else if (r == Rnd::Zero) go.template operator()<Rnd::Zero>();
        else go.template operator()<Rnd::Away>();
    };
    if (sf < std::numeric_limits<T>::min_exponent) {
        MxcsrGuard g(MxcsrGuard::kNearest);
        byMode();
    } else {
        byMode();
    }
}

template <class D, class Src>
inline void toIntFull(Src src, D* d, std::ptrdiff_t n, Rnd r, int sf) {
    using Lim = std::numeric_limits<D>;
    toInt<D, std::int32_t(Lim::min()), std::int32_t(Lim::max())>(src, d, n, r, sf);
}

}  // namespace zvp::ZVP_LEVEL::conv

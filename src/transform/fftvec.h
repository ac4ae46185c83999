// Vector building blocks of the complex FFT: complex vectors held as separate
// real and imaginary registers of the lane layer, small DFTs computed lane by
// lane across registers, and the constant roots of unity of the fixed-size
// kernels.
//
// Inside the engine complex data lives in "group" form: N consecutive complex
// values (N the lane count) are stored as N real parts followed by N imaginary
// parts,
// so a group loads straight into one complex vector and butterflies need no
// shuffles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "lane.h"

namespace zvp::ZVP_LEVEL::fft {

// ---- Lanes -------------------------------------------------------------------

// The engine works on full-width lanes of its element type; the small
// kernels run the same DFTs on One<T>, a lane of one element.
template <class T>
using Vec = Full<T>;

// ---- Complex vectors ---------------------------------------------------------

template <class V>
struct CV {
    typename V::R re, im;
};

template <class V>
inline CV<V> cadd(CV<V> a, CV<V> b) {
    return {V::add(a.re, b.re), V::add(a.im, b.im)};
}
template <class V>
inline CV<V> csub(CV<V> a, CV<V> b) {
    return {V::sub(a.re, b.re), V::sub(a.im, b.im)};
}
// a * (wr + i wi); with CONJ, a * (wr - i wi).
template <class V, bool CONJ>
inline CV<V> cmul(CV<V> a, typename V::R wr, typename V::R wi) {
    if constexpr (!CONJ)
        return {V::sub(V::mul(a.re, wr), V::mul(a.im, wi)),
                V::add(V::mul(a.re, wi), V::mul(a.im, wr))};
    else
        return {V::add(V::mul(a.re, wr), V::mul(a.im, wi)),
                V::sub(V::mul(a.im, wr), V::mul(a.re, wi))};
}
// Multiplication by -i (forward) or +i (inverse): exact.
template <class V, bool INV>
inline CV<V> mulMinusI(CV<V> a) {
    if constexpr (!INV)
        return {a.im, V::sub(V::zero(), a.re)};
    else
        return {V::sub(V::zero(), a.im), a.re};
}
template <class V>
inline CV<V> cscale(CV<V> a, typename V::R s) {
    return {V::mul(a.re, s), V::mul(a.im, s)};
}

// ---- Roots of unity of the fixed kernels ------------------------------------

// cos(2 pi k / 32), k = 0..8.
inline constexpr long double kCos32[9] = {
    1.0L,
    0.980785280403230449126182236134239037L,
    0.923879532511286756128183189396788933L,
    0.831469612302545237078788377617905756L,
    0.707106781186547524400844362104849039L,
    0.555570233019602224742830813948532875L,
    0.382683432365089771728459984030398866L,
    0.195090322016128267848284868477022240L,
    0.0L,
};

constexpr long double cos32(int k) {
    k &= 31;
    if (k <= 8) return kCos32[k];
    if (k <= 16) return -kCos32[16 - k];
    if (k <= 24) return -kCos32[k - 16];
    return kCos32[32 - k];
}
constexpr long double sin32(int k) { return cos32(8 - k); }

// Real and imaginary part of the forward root exp(-2 pi i k / M), M | 32.
template <class T, int M>
constexpr T rootRe(int k) {
    return static_cast<T>(cos32(k * (32 / M)));
}
template <class T, int M>
constexpr T rootIm(int k) {
    return static_cast<T>(-sin32(k * (32 / M)));
}

// x *= exp(-+2 pi i k / M) for a compile-time root; the trivial and the
// eighth roots take the short forms.
template <class V, bool INV, int M, int K>
inline CV<V> rotate(CV<V> x) {
    using T = typename V::type;
    constexpr int k = ((K % M) + M) % M;
    if constexpr (k == 0) {
        return x;
    } else if constexpr (4 * k == M) {
        return mulMinusI<V, INV>(x);
    } else if constexpr (2 * k == M) {
        return {V::sub(V::zero(), x.re), V::sub(V::zero(), x.im)};
    } else if constexpr (4 * k == 3 * M) {
        return mulMinusI<V, !INV>(x);
    } else if constexpr (8 * k == M || 8 * k == 3 * M) {
        // (1 -+ i)/sqrt2 and (-1 -+ i)/sqrt2
        const auto h = V::set1(static_cast<T>(kCos32[4]));
        const auto s = V::add(x.re, x.im), d = V::sub(x.im, x.re);
        // forward k = M/8: (re + im, im - re) h; inverse: (re - im, re + im) h
        if constexpr (8 * k == M) {
            if constexpr (!INV) return {V::mul(s, h), V::mul(d, h)};
            else return {V::mul(V::sub(V::zero(), d), h), V::mul(s, h)};
        } else {
            // forward 3M/8: (-1 - i)/sqrt2: (im - re, -(re + im)) h
            if constexpr (!INV) return {V::mul(d, h), V::mul(V::sub(V::zero(), s), h)};
            else return {V::mul(V::sub(V::zero(), s), h), V::mul(V::sub(V::zero(), d), h)};
        }
    } else if constexpr (8 * k == 5 * M || 8 * k == 7 * M) {
        const CV<V> y = rotate<V, INV, M, K - M / 2>(x);
        return {V::sub(V::zero(), y.re), V::sub(V::zero(), y.im)};
    } else {
        const auto wr = V::set1(rootRe<T, M>(k));
        const auto wi = V::set1(rootIm<T, M>(k));
        return cmul<V, INV>(x, wr, wi);
    }
}

// Radix-4 butterfly (natural order in and out): y_q = sum_l a_l (-+i)^(l q).
// The multiplication by -+i is folded into the last additions.
template <class V, bool INV>
[[gnu::always_inline]] inline void radix4(CV<V>& a0, CV<V>& a1, CV<V>& a2, CV<V>& a3) {
    const CV<V> t0 = cadd(a0, a2), t1 = csub(a0, a2);
    const CV<V> t2 = cadd(a1, a3), d = csub(a1, a3);
    a0 = cadd(t0, t2);
    a2 = csub(t0, t2);
    if constexpr (!INV) {  // y1 = t1 - i d, y3 = t1 + i d
        a1 = {V::add(t1.re, d.im), V::sub(t1.im, d.re)};
        a3 = {V::sub(t1.re, d.im), V::add(t1.im, d.re)};
    } else {
        a1 = {V::sub(t1.re, d.im), V::add(t1.im, d.re)};
        a3 = {V::add(t1.re, d.im), V::sub(t1.im, d.re)};
    }
}

// o[k] *= w_M^k for k = 0..H-1, every root a compile-time constant.
template <class V, bool INV, int M, int... K>
inline void twiddleAll(CV<V>* o, std::integer_sequence<int, K...>) {
    ((o[K] = rotate<V, INV, M, K>(o[K])), ...);
}

// ---- DFTs lane by lane across registers (natural order in and out) ----------

template <class V, bool INV, int M>
[[gnu::always_inline]] inline void dftv(CV<V>* x) {
    if constexpr (M == 1) {
        (void)x;
    } else if constexpr (M == 2) {
        const CV<V> a = x[0], b = x[1];
        x[0] = cadd(a, b);
        x[1] = csub(a, b);
    } else if constexpr (M == 4) {
        radix4<V, INV>(x[0], x[1], x[2], x[3]);
    } else {
        // Radix-2 split into even and odd halves.
        constexpr int H = M / 2;
        CV<V> e[H], o[H];
        for (int i = 0; i < H; ++i) {
            e[i] = x[2 * i];
            o[i] = x[2 * i + 1];
        }
        dftv<V, INV, H>(e);
        dftv<V, INV, H>(o);
        twiddleAll<V, INV, M>(o, std::make_integer_sequence<int, H>{});
        for (int k = 0; k < H; ++k) {
            x[k] = cadd(e[k], o[k]);
            x[k + H] = csub(e[k], o[k]);
        }
    }
}

}  // namespace zvp::ZVP_LEVEL::fft

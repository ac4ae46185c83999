// Complex FFTs of 1 to 32 points without tables or work memory: the fixed
// kernels of orders 0 to 5. Data are interleaved (re, im) pairs.
#pragma once

#include "fftvec.h"

namespace zvp::ZVP_LEVEL::fft {
namespace detail {

// Roots w_N^(b c) for the twiddle step of the vector kernels, lanes b.
template <class T, int N, int W>
struct SmallRoots {
    static constexpr int M = N / W;
    struct Tab {
        T re[M][W];
        T im[M][W];
    };
    static constexpr Tab make() {
        Tab t{};
        for (int c = 0; c < M; ++c)
            for (int b = 0; b < W; ++b) {
                t.re[c][b] = rootRe<T, N>(b * c);
                t.im[c][b] = rootIm<T, N>(b * c);
            }
        return t;
    }
    alignas(16) static constexpr Tab tab = make();
};

// N = W*M points with M >= W. With n = W a + b and k = c + M d:
// X[c + M d] = sum_b w_W^(b d) w_N^(b c) [sum_a x[W a + b] w_M^(a c)].
// The inner DFTs run lane by lane (lane b), the outer ones after a transpose.
template <class V, bool INV, int N>
inline void smallVec(const typename V::type* src, typename V::type* dst, bool scaled,
                     typename V::type scale) {
    using T = typename V::type;
    using R = typename V::R;
    constexpr int W = V::N, M = N / W;
    static_assert(M >= W);
    using Roots = SmallRoots<T, N, W>;
    CV<V> y[M];
    for (int a = 0; a < M; ++a) V::deinterleave(src + 2 * W * a, y[a].re, y[a].im);
    dftv<V, INV, M>(y);
    for (int c = 1; c < M; ++c)
        y[c] = cmul<V, INV>(y[c], V::load(Roots::tab.re[c]), V::load(Roots::tab.im[c]));
    const R s = V::set1(scale);
    for (int c0 = 0; c0 < M; c0 += W) {
        R re[W], im[W];
        for (int i = 0; i < W; ++i) {
            re[i] = y[c0 + i].re;
            im[i] = y[c0 + i].im;
        }
        V::transpose(re);
        V::transpose(im);
        CV<V> z[W];
        for (int i = 0; i < W; ++i) z[i] = {re[i], im[i]};
        dftv<V, INV, W>(z);
        for (int d = 0; d < W; ++d) {
            if (scaled) z[d] = cscale(z[d], s);
            V::interleave(dst + 2 * (c0 + M * d), z[d].re, z[d].im);
        }
    }
}

template <class T, bool INV, int N>
inline void smallScalar(const T* src, T* dst, bool scaled, T scale) {
    using S = One<T>;
    CV<S> x[N];
    for (int i = 0; i < N; ++i) x[i] = {S::load(src + 2 * i), S::load(src + 2 * i + 1)};
    dftv<S, INV, N>(x);
    const auto s = S::set1(scale);
    for (int i = 0; i < N; ++i) {
        S::store(dst + 2 * i, scaled ? S::mul(x[i].re, s) : x[i].re);
        S::store(dst + 2 * i + 1, scaled ? S::mul(x[i].im, s) : x[i].im);
    }
}

template <class T, bool INV>
inline void smallDir(const T* src, T* dst, int order, bool scaled, T scale) {
    using V = Vec<T>;
    switch (order) {
        case 0: smallScalar<T, INV, 1>(src, dst, scaled, scale); break;
        case 1: smallScalar<T, INV, 2>(src, dst, scaled, scale); break;
        case 2:
            if constexpr (V::N * V::N <= 4) smallVec<V, INV, 4>(src, dst, scaled, scale);
            else smallScalar<T, INV, 4>(src, dst, scaled, scale);
            break;
        case 3:
            if constexpr (V::N * V::N <= 8) smallVec<V, INV, 8>(src, dst, scaled, scale);
            else smallScalar<T, INV, 8>(src, dst, scaled, scale);
            break;
        case 4: smallVec<V, INV, 16>(src, dst, scaled, scale); break;
        default: smallVec<V, INV, 32>(src, dst, scaled, scale); break;
    }
}

}  // namespace detail

// Complex FFT of 2^order points (order 0..5), interleaved (re, im) T data,
// T = float or double. sign -1 forward, +1 inverse. src may equal dst (every
// input is read before any output is written). When scaled, every output is
// multiplied by scale.
template <class T>
inline void smallFft(const T* src, T* dst, int order, int sign, bool scaled, T scale) {
    if (sign > 0) detail::smallDir<T, true>(src, dst, order, scaled, scale);
    else detail::smallDir<T, false>(src, dst, order, scaled, scale);
}

}  // namespace zvp::ZVP_LEVEL::fft

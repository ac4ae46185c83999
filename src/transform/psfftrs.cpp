// Small real transforms (N = 1 .. 32) without tables: the half-length complex
// transform is unrolled at compile time (radix 2, decimation in time) with
// its twiddles as constants, and the recombination constants are folded in.
#include <utility>

#include "psfftr.h"

namespace zvp::ZVP_LEVEL::fftr {
namespace {

// cos(2 pi j / 64) for j = 0 .. 16.
constexpr long double kCos64[17] = {
    1.0L,
    0.995184726672196886244837L,
    0.9807852804032304491261822L,
    0.9569403357322088649357979L,
    0.9238795325112867561281832L,
    0.8819212643483550297127569L,
    0.8314696123025452370787884L,
    0.7730104533627369608109066L,
    0.7071067811865475244008444L,
    0.6343932841636454982151716L,
    0.5555702330196022247428308L,
    0.4713967368259976485563876L,
    0.38268343236508977172846L,
    0.2902846772544623676361924L,
    0.1950903220161282678482849L,
    0.09801714032956060199419556L,
    0.0L,
};

// cos and sin of 2 pi j / 64 for j = 0 .. 31.
constexpr long double cos64(int j) { return j <= 16 ? kCos64[j] : -kCos64[32 - j]; }
constexpr long double sin64(int j) { return j <= 16 ? kCos64[16 - j] : kCos64[j - 16]; }

// Complex FFT of M points (M a power of two up to 16), unnormalised, sign
// Sign in the exponent. Input: M complex values at in, stride 2*s scalars.
// Output: M contiguous complex values.
template <int M, int Sign, class T>
struct SmallCfft {
    static void run(const T* in, int s, T* out) {
        if constexpr (M == 1) {
            out[0] = in[0];
            out[1] = in[1];
        } else {
            SmallCfft<M / 2, Sign, T>::run(in, 2 * s, out);
            SmallCfft<M / 2, Sign, T>::run(in + 2 * s, 2 * s, out + M);
            [&]<int... K>(std::integer_sequence<int, K...>) {
                (butterfly<K>(out), ...);
            }(std::make_integer_sequence<int, M / 2>{});
        }
    }

    template <int K>
    static void butterfly(T* out) {
        constexpr int j = K * (64 / M);  // angle 2 pi K / M = 2 pi j / 64
        T* e = out + 2 * K;
        T* o = out + 2 * (K + M / 2);
        T tr, ti;
        if constexpr (j == 0) {
            tr = o[0];
            ti = o[1];
        } else if constexpr (j == 16) {
            // w = Sign * i
            tr = Sign > 0 ? -o[1] : o[1];
            ti = Sign > 0 ? o[0] : -o[0];
        } else {
            constexpr T c = T(cos64(j));
            constexpr T sn = T(Sign * sin64(j));
            tr = o[0] * c - o[1] * sn;
            ti = o[0] * sn + o[1] * c;
        }
        const T er = e[0], ei = e[1];
        e[0] = er + tr;
        e[1] = ei + ti;
        o[0] = er - tr;
        o[1] = ei - ti;
    }
};

// X[0 .. M] of a real signal of N = 2M points.
template <int M, class T>
void forwardN(const T* x, T* X) {
    T z[2 * M];
    SmallCfft<M, -1, T>::run(x, 1, z);
    X[0] = z[0] + z[1];
    X[1] = T(0);
    X[2 * M] = z[0] - z[1];
    X[2 * M + 1] = T(0);
    // X[k] = 0.5 [(P + Q) - i W^k (P - Q)], P = Z[k], Q = conj(Z[M-k]),
    // W = exp(-2 pi i / N).
    [&]<int... K>(std::integer_sequence<int, K...>) {
        (
            [&] {
                constexpr int k = K + 1;
                constexpr int j = k * (32 / M);  // 2 pi k / N = 2 pi j / 64
                constexpr T c = T(cos64(j)), s = T(sin64(j));
                const T pr = z[2 * k], pi = z[2 * k + 1];
                const T qr = z[2 * (M - k)], qi = -z[2 * (M - k) + 1];
                const T dr = pr - qr, di = pi - qi;
                X[2 * k] = T(0.5) * ((pr + qr) + (c * di - s * dr));
                X[2 * k + 1] = T(0.5) * ((pi + qi) - (c * dr + s * di));
            }(),
            ...);
    }(std::make_integer_sequence<int, M - 1>{});
}

// N x of a real signal of N = 2M points from X[0 .. M].
template <int M, class T>
void inverseN(const T* X, T* x) {
    T z[2 * M];
    z[0] = X[0] + X[2 * M];
    z[1] = X[0] - X[2 * M];
    // Z'[k] = (U + V) + i W^-k (U - V), U = X[k], V = conj(X[M-k]).
    [&]<int... K>(std::integer_sequence<int, K...>) {
        (
            [&] {
                constexpr int k = K + 1;
                constexpr int j = k * (32 / M);
                constexpr T c = T(cos64(j)), s = T(sin64(j));
                const T ur = X[2 * k], ui = X[2 * k + 1];
                const T vr = X[2 * (M - k)], vi = -X[2 * (M - k) + 1];
                const T dr = ur - vr, di = ui - vi;
                z[2 * k] = (ur + vr) - (c * di + s * dr);
                z[2 * k + 1] = (ui + vi) + (c * dr - s * di);
            }(),
            ...);
    }(std::make_integer_sequence<int, M - 1>{});
    SmallCfft<M, +1, T>::run(z, 1, x);
}

}  // namespace

template <class T>
void smallRealForward(const T* x, T* X, int order) {
    switch (order) {
        case 0:
            X[0] = x[0];
            X[1] = T(0);
            break;
        case 1: forwardN<1>(x, X); break;
        case 2: forwardN<2>(x, X); break;
        case 3: forwardN<4>(x, X); break;
        case 4: forwardN<8>(x, X); break;
        default: forwardN<16>(x, X); break;
    }
}

template <class T>
void smallRealInverse(const T* X, T* x, int order) {
    switch (order) {
        case 0: x[0] = X[0]; break;
        case 1: inverseN<1>(X, x); break;
        case 2: inverseN<2>(X, x); break;
        case 3: inverseN<4>(X, x); break;
        case 4: inverseN<8>(X, x); break;
        default: inverseN<16>(X, x); break;
    }
}

template void smallRealForward<float>(const float*, float*, int);
template void smallRealForward<double>(const double*, double*, int);
template void smallRealInverse<float>(const float*, float*, int);
template void smallRealInverse<double>(const double*, double*, int);

}  // namespace zvp::ZVP_LEVEL::fftr

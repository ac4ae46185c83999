// Stages of the mixed-radix DFT: butterflies of the factors 2, 3, 4, 5, 6 and
// of any odd factor (compile-time roots for 3, 5, 7, 11 and 13, the record's
// root table above), and the self-sorting stage that joins sub-transforms of
// Ns points p at a time.
//
// Data stay interleaved (re, im) in memory; a full lane holds Full<T>::N
// consecutive complex values as a real and an imaginary register. The stage
// runs the same operations lane by lane on full lanes over the body and on
// one-element lanes over the rest, without fused operations, so its result
// does not depend on how a length splits between the two.
#pragma once

#include <cstdint>

#include "fftvec.h"

namespace zvp::ZVP_LEVEL::dft {

using fft::CV;
using fft::cadd;
using fft::csub;

template <class V>
inline CV<V> ld(const typename V::type* p) {
    CV<V> c;
    if constexpr (V::N == 1) {
        c.re = V::load(p);
        c.im = V::load(p + 1);
    } else {
        V::deinterleave(p, c.re, c.im);
    }
    return c;
}
template <class V>
inline void st(typename V::type* p, CV<V> c) {
    if constexpr (V::N == 1) {
        V::store(p, c.re);
        V::store(p + 1, c.im);
    } else {
        V::interleave(p, c.re, c.im);
    }
}

// -i z (forward) or +i z (inverse), exact.
template <class V, bool INV>
inline CV<V> rotI(CV<V> z) {
    return fft::mulMinusI<V, INV>(z);
}

template <class V>
inline CV<V> scaleRe(CV<V> z, typename V::R c) {
    return {V::mul(z.re, c), V::mul(z.im, c)};
}

// cos and sin of 2 pi e / P, folded at compile time.
template <int P>
struct Roots {
    static constexpr double twoPi = 6.283185307179586476925286766559;
    struct Tab {
        double c[P > 0 ? P : 1];
        double s[P > 0 ? P : 1];
    };
    static constexpr Tab make() {
        Tab t{};
        for (int e = 0; e < P; ++e) {
            t.c[e] = __builtin_cos(twoPi * e / P);
            t.s[e] = __builtin_sin(twoPi * e / P);
        }
        return t;
    }
    static constexpr Tab tab = make();
};

// DFT of an odd number n of points in place, n = P at compile time or p from
// the roots (interleaved exp(-2 pi i e / p)) when P is 0. Pairs r and n - r
// share their products: y_q = a0 + sum c_qr (v_r + v_{n-r}) -+ i sum s_qr
// (v_r - v_{n-r}).
template <class V, bool INV, int P>
inline void oddDft(CV<V>* v, int p, const typename V::type* roots) {
    using T = typename V::type;
    const int n = P > 0 ? P : p;
    const int h = (n - 1) / 2;
    constexpr int kMax = P > 0 ? (P - 1) / 2 : 75;
    CV<V> s[kMax], d[kMax];
    const CV<V> a0 = v[0];
    CV<V> y0 = a0;
    for (int r = 1; r <= h; ++r) {
        s[r - 1] = cadd(v[r], v[n - r]);
        d[r - 1] = csub(v[r], v[n - r]);
        y0 = cadd(y0, s[r - 1]);
    }
    for (int q = 1; q <= h; ++q) {
        CV<V> a = a0, b = {V::zero(), V::zero()};
        int e = 0;
        for (int r = 1; r <= h; ++r) {
            e += q;
            if (e >= n) e -= n;
            T c, sn;
            if constexpr (P > 0) {
                c = T(Roots<P>::tab.c[e]);
                sn = T(Roots<P>::tab.s[e]);
            } else {
                c = roots[2 * e];
                sn = -roots[2 * e + 1];
            }
            a = cadd(a, scaleRe(s[r - 1], V::set1(c)));
            b = cadd(b, scaleRe(d[r - 1], V::set1(sn)));
        }
        const CV<V> ib = rotI<V, INV>(b);  // -i b forward
        v[q] = cadd(a, ib);
        v[n - q] = csub(a, ib);
    }
    v[0] = y0;
}

template <class V, bool INV>
inline void dft3(CV<V>* v) {
    using T = typename V::type;
    const CV<V> s = cadd(v[1], v[2]), d = csub(v[1], v[2]);
    const CV<V> a = csub(v[0], scaleRe(s, V::set1(T(0.5))));
    const CV<V> b = rotI<V, INV>(scaleRe(d, V::set1(T(0.86602540378443864676372317075294))));
    v[0] = cadd(v[0], s);
    v[1] = cadd(a, b);
    v[2] = csub(a, b);
}

template <class V, bool INV>
inline void dft5(CV<V>* v) {
    using T = typename V::type;
    const auto c1 = V::set1(T(0.30901699437494742410229341718282));
    const auto c2 = V::set1(T(-0.80901699437494742410229341718282));
    const auto s1 = V::set1(T(0.95105651629515357211643933337938));
    const auto s2 = V::set1(T(0.58778525229247312916870595463907));
    const CV<V> s14 = cadd(v[1], v[4]), d14 = csub(v[1], v[4]);
    const CV<V> s23 = cadd(v[2], v[3]), d23 = csub(v[2], v[3]);
    const CV<V> a0 = v[0];
    const CV<V> ta = cadd(a0, cadd(scaleRe(s14, c1), scaleRe(s23, c2)));
    const CV<V> tb = cadd(a0, cadd(scaleRe(s14, c2), scaleRe(s23, c1)));
    const CV<V> ua = rotI<V, INV>(cadd(scaleRe(d14, s1), scaleRe(d23, s2)));
    const CV<V> ub = rotI<V, INV>(csub(scaleRe(d14, s2), scaleRe(d23, s1)));
    v[0] = cadd(a0, cadd(s14, s23));
    v[1] = cadd(ta, ua);
    v[4] = csub(ta, ua);
    v[2] = cadd(tb, ub);
    v[3] = csub(tb, ub);
}

// Six points as two three-point DFTs of the even and odd points joined by a
// radix-2 step with the roots exp(-+i pi k / 3).
template <class V, bool INV>
inline void dft6(CV<V>* v) {
    using T = typename V::type;
    CV<V> e[3] = {v[0], v[2], v[4]}, o[3] = {v[1], v[3], v[5]};
    dft3<V, INV>(e);
    dft3<V, INV>(o);
    const auto h = V::set1(T(0.5));
    const auto r3 = V::set1(T(0.86602540378443864676372317075294));
    // o1 *= (1/2 -+ i sqrt3/2), o2 *= (-1/2 -+ i sqrt3/2)
    const CV<V> o1 = cadd(scaleRe(o[1], h), rotI<V, INV>(scaleRe(o[1], r3)));
    const CV<V> o2 = csub(rotI<V, INV>(scaleRe(o[2], r3)), scaleRe(o[2], h));
    v[0] = cadd(e[0], o[0]);
    v[3] = csub(e[0], o[0]);
    v[1] = cadd(e[1], o1);
    v[4] = csub(e[1], o1);
    v[2] = cadd(e[2], o2);
    v[5] = csub(e[2], o2);
}

template <class V, bool INV, int P>
inline void butterfly(CV<V>* v, int p, const typename V::type* roots) {
    if constexpr (P == 2) {
        const CV<V> a = v[0], b = v[1];
        v[0] = cadd(a, b);
        v[1] = csub(a, b);
    } else if constexpr (P == 3) {
        dft3<V, INV>(v);
    } else if constexpr (P == 4) {
        fft::radix4<V, INV>(v[0], v[1], v[2], v[3]);
    } else if constexpr (P == 5) {
        dft5<V, INV>(v);
    } else if constexpr (P == 6) {
        dft6<V, INV>(v);
    } else {
        oddDft<V, INV, P>(v, p, roots);
    }
}

// One stage over L points: for each block b of Ns p outputs and each k < Ns,
// the p inputs x[b Ns + k + r L/p] times the twiddles exp(-+2 pi i r k /
// (Ns p)) go through the butterfly to y[(b p + r) Ns + k]. tw holds the
// twiddles as p - 1 rows of Ns interleaved values; roots the p roots of the
// factor (used by the general odd butterfly only).
template <class T, bool INV, int P>
void stageP(const T* x, T* y, std::int64_t L, int p, std::int64_t Ns, const T* tw, const T* roots) {
    using VF = Full<T>;
    using V1 = One<T>;
    constexpr int W = VF::N;
    constexpr int kMaxP = P > 0 ? P : 150;
    const int n = P > 0 ? P : p;
    const std::int64_t m = L / n, blocks = m / Ns;
    auto one = [&]<class V>(std::int64_t j, std::int64_t k, std::int64_t o) {
        CV<V> v[kMaxP];
        for (int r = 0; r < n; ++r) v[r] = ld<V>(x + 2 * (j + r * m));
        if (Ns > 1)
            for (int r = 1; r < n; ++r) {
                const CV<V> w = ld<V>(tw + 2 * ((r - 1) * Ns + k));
                v[r] = fft::cmul<V, INV>(v[r], w.re, w.im);
            }
        butterfly<V, INV, P>(v, n, roots);
        for (int r = 0; r < n; ++r) st<V>(y + 2 * (o + r * Ns), v[r]);
    };
    if (m < W) {  // too short for a lane: one element at a time
        for (std::int64_t j = 0; j < m; ++j) {
            const std::int64_t b = j / Ns, k = j - b * Ns;
            one.template operator()<V1>(j, k, b * n * Ns + k);
        }
        return;
    }
    if (Ns < W) {
        // Sub-transforms shorter than a lane: W consecutive j at a time, the
        // twiddles of their k gathered once per phase j mod Ns, the outputs
        // of each lane stored apart.
        alignas(16) T twp[(W - 1) * (kMaxP - 1) * 2 * W];
        if (Ns > 1)
            for (std::int64_t ph = 0; ph < Ns; ++ph)
                for (int r = 1; r < n; ++r)
                    for (int i = 0; i < W; ++i) {
                        const std::int64_t k = (ph + i) % Ns;
                        T* row = twp + (ph * (n - 1) + (r - 1)) * 2 * W;
                        row[i] = tw[2 * ((r - 1) * Ns + k)];
                        row[W + i] = tw[2 * ((r - 1) * Ns + k) + 1];
                    }
        std::int64_t j = 0;
        for (; j + W <= m; j += W) {
            CV<VF> v[kMaxP];
            for (int r = 0; r < n; ++r) v[r] = ld<VF>(x + 2 * (j + r * m));
            if (Ns > 1) {
                const T* rows = twp + (j % Ns) * (n - 1) * 2 * W;
                for (int r = 1; r < n; ++r) {
                    const T* row = rows + (r - 1) * 2 * W;
                    v[r] = fft::cmul<VF, INV>(v[r], VF::loada(row), VF::loada(row + W));
                }
            }
            butterfly<VF, INV, P>(v, n, roots);
            alignas(16) T re[W], im[W];
            for (int r = 0; r < n; ++r) {
                VF::storea(re, v[r].re);
                VF::storea(im, v[r].im);
                for (int i = 0; i < W; ++i) {
                    const std::int64_t jj = j + i, b = jj / Ns, k = jj - b * Ns;
                    const std::int64_t o = (b * n + r) * Ns + k;
                    y[2 * o] = re[i];
                    y[2 * o + 1] = im[i];
                }
            }
        }
        for (; j < m; ++j) {
            const std::int64_t b = j / Ns, k = j - b * Ns;
            one.template operator()<V1>(j, k, b * n * Ns + k);
        }
        return;
    }
    for (std::int64_t b = 0; b < blocks; ++b) {
        std::int64_t k = 0;
        for (; k + W <= Ns; k += W) one.template operator()<VF>(b * Ns + k, k, b * n * Ns + k);
        for (; k < Ns; ++k) one.template operator()<V1>(b * Ns + k, k, b * n * Ns + k);
    }
}

template <class T, bool INV>
void stage(const T* x, T* y, std::int64_t L, int p, std::int64_t Ns, const T* tw, const T* roots) {
    switch (p) {
        case 2: return stageP<T, INV, 2>(x, y, L, p, Ns, tw, roots);
        case 3: return stageP<T, INV, 3>(x, y, L, p, Ns, tw, roots);
        case 4: return stageP<T, INV, 4>(x, y, L, p, Ns, tw, roots);
        case 5: return stageP<T, INV, 5>(x, y, L, p, Ns, tw, roots);
        case 6: return stageP<T, INV, 6>(x, y, L, p, Ns, tw, roots);
        case 7: return stageP<T, INV, 7>(x, y, L, p, Ns, tw, roots);
        case 11: return stageP<T, INV, 11>(x, y, L, p, Ns, tw, roots);
        case 13: return stageP<T, INV, 13>(x, y, L, p, Ns, tw, roots);
        default: return stageP<T, INV, 0>(x, y, L, p, Ns, tw, roots);
    }
}

}  // namespace zvp::ZVP_LEVEL::dft

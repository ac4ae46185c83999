// DCT transforms: the kernels of the four methods (see psdct.h) and the
// forward and inverse transforms of 32f, 64f and 16s.
//
// Every method reads all of its source before it writes the destination, so
// a destination equal to the source is allowed.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "fpguard.h"
#include "lane.h"
#include "p8/convert.h"
#include "p8/dct.h"
#include "p8/frame.h"
#include "psdct.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace dct {
namespace {

// ---- small kernels -------------------------------------------------------------

// cos(j pi / 16), j = 0 .. 8.
constexpr long double kCos16[9] = {
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

// cos(j pi / 16) for any j >= 0.
constexpr long double cosPi16(int j) {
    j %= 32;
    if (j > 16) j = 32 - j;
    return j <= 8 ? kCos16[j] : -kCos16[16 - j];
}

// The orthonormal DCT-II matrix of N = 2, 4 or 8 points, M[k][n] =
// f_k cos(pi (2n + 1) k / 2N), rounded once to T. `fwd` holds the
// coefficient of x[n] in X[k] at n N + k, `inv` that of X[k] in x[n] at
// k N + n (the transposed matrix, since M is orthogonal).
template <class T, int N>
struct SmallMatrix {
    T fwd[N * N];
    T inv[N * N];
};

template <class T, int N>
constexpr SmallMatrix<T, N> smallMatrix() {
    const long double h = kCos16[4];  // 1/sqrt(2)
    const long double f0 = N == 2 ? h : N == 4 ? 0.5L : h / 2;  // 1/sqrt(N)
    const long double f1 = N == 2 ? 1.0L : N == 4 ? h : 0.5L;   // sqrt(2/N)
    SmallMatrix<T, N> m{};
    for (int k = 0; k < N; ++k)
        for (int n = 0; n < N; ++n) {
            const long double v = k == 0 ? f0 : f1 * cosPi16((8 / N) * (2 * n + 1) * k);
            m.fwd[n * N + k] = T(v);
            m.inv[k * N + n] = T(v);
        }
    return m;
}

// out[i] = sum over j of a[j N + i] in[j], the sum taken in the order of j;
// every output is stored after the last input is read.
template <class T, int N>
void matrixTimes(const T* in, T* out, const T* a) {
    constexpr int W = N < Full<T>::N ? N : Full<T>::N;
    using V = Lanes<T, W>;
    constexpr int C = N / W;
    typename V::R acc[C];
    {
        const auto x = V::set1(in[0]);
        for (int c = 0; c < C; ++c) acc[c] = V::mul(V::load(a + c * W), x);
    }
    for (int j = 1; j < N; ++j) {
        const auto x = V::set1(in[j]);
        for (int c = 0; c < C; ++c) acc[c] = V::add(acc[c], V::mul(V::load(a + j * N + c * W), x));
    }
    for (int c = 0; c < C; ++c) V::store(out + c * W, acc[c]);
}

template <class T, int N>
void smallN(const T* in, T* out, bool inverse) {
    static constexpr SmallMatrix<T, N> m = smallMatrix<T, N>();
    matrixTimes<T, N>(in, out, inverse ? m.inv : m.fwd);
}

template <class T>
void small(const T* in, T* out, int n, bool inverse) {
    switch (n) {
        case 1: out[0] = in[0]; break;
        case 2: smallN<T, 2>(in, out, inverse); break;
        case 4: smallN<T, 4>(in, out, inverse); break;
        default: smallN<T, 8>(in, out, inverse); break;
    }
}

// ---- direct method --------------------------------------------------------------

// X[k] = f_k sum x[n] tab[(2n + 1) k mod 4N], the index stepped by 2k.
template <class T>
void directForward(const T* x, T* out, int n, const T* tab, T f0, T f1) {
    const int m = 4 * n;
    T s = x[0];
    for (int i = 1; i < n; ++i) s += x[i];
    out[0] = s * f0;
    for (int k = 1; k < n; ++k) {
        T acc = T(0);
        for (int i = 0, j = k; i < n; ++i) {
            acc += x[i] * tab[j];
            j += 2 * k;
            if (j >= m) j -= m;
        }
        out[k] = acc * f1;
    }
}

// x[n] = f0 X[0] + f1 sum over k >= 1 of X[k] tab[(2n + 1) k mod 4N].
template <class T>
void directInverse(const T* X, T* out, int n, const T* tab, T f0, T f1) {
    const int m = 4 * n;
    for (int i = 0; i < n; ++i) {
        const int step = 2 * i + 1;
        T acc = T(0);
        for (int k = 1, j = step; k < n; ++k) {
            acc += X[k] * tab[j];
            j += step;
            if (j >= m) j -= m;
        }
        out[i] = X[0] * f0 + acc * f1;
    }
}

// ---- FFT and conv methods ----------------------------------------------------------

// v[i] = x[2i], v[N-1-i] = x[2i+1].
template <class T>
void reorder(const T* x, T* v, std::ptrdiff_t n) {
    using V = Full<T>;
    constexpr int W = V::N;
    const std::ptrdiff_t half = n / 2;
    std::ptrdiff_t i = 0;
    for (; i + W <= half; i += W) {
        typename V::R e, o;
        V::deinterleave(x + 2 * i, e, o);
        V::store(v + i, e);
        V::store(v + n - i - W, V::reverse(o));
    }
    for (; i < half; ++i) {
        v[i] = x[2 * i];
        v[n - 1 - i] = x[2 * i + 1];
    }
    if (n & 1) v[half] = x[n - 1];
}

// x[2i] = v[i], x[2i+1] = v[N-1-i].
template <class T>
void restore(const T* v, T* x, std::ptrdiff_t n) {
    using V = Full<T>;
    constexpr int W = V::N;
    const std::ptrdiff_t half = n / 2;
    std::ptrdiff_t i = 0;
    for (; i + W <= half; i += W)
        V::interleave(x + 2 * i, V::load(v + i), V::reverse(V::load(v + n - i - W)));
    for (; i < half; ++i) {
        x[2 * i] = v[i];
        x[2 * i + 1] = v[n - 1 - i];
    }
    if (n & 1) x[n - 1] = v[half];
}

// One rotation at lane type V: from (a, b) and the table values (c, s),
// (c a + s b, s a - c b). The forward transform takes (a, b) = V[k] and gives
// X[k], X[N-k]; the inverse takes (a, b) = (X[k], X[N-k]) and gives V[k].
template <class V>
inline void rotate(typename V::R a, typename V::R b, typename V::R c, typename V::R s,
                   typename V::R& p, typename V::R& q) {
    p = V::add(V::mul(c, a), V::mul(s, b));
    q = V::sub(V::mul(s, a), V::mul(c, b));
}

// Forward: the half spectrum V (CCS) to the outputs.
template <class T>
void rotateForward(const T* spec, T* out, std::ptrdiff_t n, const T* c, const T* s, T f0) {
    using V = Full<T>;
    using O = One<T>;
    constexpr int W = V::N;
    const std::ptrdiff_t last = (n - 1) / 2;  // pairs k, N-k for k = 1 .. last
    std::ptrdiff_t k = 1;
    for (; k + W - 1 <= last; k += W) {
        typename V::R a, b, p, q;
        V::deinterleave(spec + 2 * k, a, b);
        rotate<V>(a, b, V::load(c + k), V::load(s + k), p, q);
        V::store(out + k, p);
        V::store(out + n - k - W + 1, V::reverse(q));
    }
    for (; k <= last; ++k) {
        typename O::R p, q;
        rotate<O>(O::load(spec + 2 * k), O::load(spec + 2 * k + 1), O::load(c + k), O::load(s + k), p, q);
        O::store(out + k, p);
        O::store(out + n - k, q);
    }
    out[0] = spec[0] * f0;
    if (n % 2 == 0) out[n / 2] = spec[n] * c[n / 2];
}

// Inverse: the inputs to the half spectrum V (CCS, N + 2 values, or N + 1
// for odd N).
template <class T>
void rotateInverse(const T* in, T* spec, std::ptrdiff_t n, const T* c, const T* s, T f0) {
    using V = Full<T>;
    using O = One<T>;
    constexpr int W = V::N;
    const std::ptrdiff_t last = (n - 1) / 2;
    std::ptrdiff_t k = 1;
    for (; k + W - 1 <= last; k += W) {
        typename V::R p, q;
        rotate<V>(V::load(in + k), V::reverse(V::load(in + n - k - W + 1)), V::load(c + k), V::load(s + k), p,
                  q);
        V::interleave(spec + 2 * k, p, q);
    }
    for (; k <= last; ++k) {
        typename O::R p, q;
        rotate<O>(O::load(in + k), O::load(in + n - k), O::load(c + k), O::load(s + k), p, q);
        O::store(spec + 2 * k, p);
        O::store(spec + 2 * k + 1, q);
    }
    spec[0] = in[0] * f0;
    spec[1] = T(0);
    if (n % 2 == 0) {
        spec[n] = in[n / 2] * c[n / 2];
        spec[n + 1] = T(0);
    }
}

template <class T, class Inner>
ZvpStatus viaReal(const Record* r, const T* src, T* dst, Zvp8u* work, bool inverse, T f0) {
    const int n = r->len;
    T* const v = reinterpret_cast<T*>(work);
    T* const spec = reinterpret_cast<T*>(work + vBytes<T>(n));
    Zvp8u* const innerWork = work + vBytes<T>(n) + spectrumBytes<T>(n);
    const T* const c = at<T>(r, r->rotOff);
    const T* const s = at<T>(r, r->rotOff + rotHalfBytes<T>(n));
    const Zvp8u* const inner = at<Zvp8u>(r, r->innerOff);
    if (!inverse) {
        reorder(src, v, n);
        ZVP_RETURN_IF_ERROR(Inner::fwd(v, spec, inner, innerWork));
        rotateForward(spec, dst, n, c, s, f0);
    } else {
        rotateInverse(src, spec, n, c, s, f0);
        ZVP_RETURN_IF_ERROR(Inner::inv(spec, v, inner, innerWork));
        restore(v, dst, n);
    }
    return zvpStsNoErr;
}

}  // namespace

template <class T>
ZvpStatus run(const Record* r, const T* src, T* dst, Zvp8u* work, bool inverse, T f0, T f1) {
    const int n = r->len;
    if (r->small) {
        small(src, dst, n, inverse);
        return zvpStsNoErr;
    }
    if (r->fftMethod) return viaReal<T, RealFft<T>>(r, src, dst, work, inverse, f0);
    if (r->convMethod) return viaReal<T, RealDft<T>>(r, src, dst, work, inverse, f0);
    T copy[kDirectBelow];
    T* const x = work ? reinterpret_cast<T*>(work) : copy;
    std::memcpy(x, src, std::size_t(n) * sizeof(T));
    const T* const tab = at<T>(r, r->dirTabOff);
    if (inverse) directInverse(x, dst, n, tab, f0, f1);
    else directForward(x, dst, n, tab, f0, f1);
    return zvpStsNoErr;
}

template ZvpStatus run<float>(const Record*, const float*, float*, Zvp8u*, bool, float, float);
template ZvpStatus run<double>(const Record*, const double*, double*, Zvp8u*, bool, double, double);

namespace {

// The work memory of one call: the caller's buffer rounded up to 64 bytes,
// an allocation released when the call returns, or none for the small and
// direct methods without a buffer.
struct CallWork {
    WorkBuffer own;
    Zvp8u* p = nullptr;
    bool take(const Record* r, Zvp8u* caller) {
        if (r->workSize <= 0) return true;
        if (caller) {
            p = alignUp(caller, 64);
            return true;
        }
        if (!r->fftMethod && !r->convMethod) return true;
        if (!own.allocate(r->workSize)) return false;
        p = alignUp(own.get(), 64);
        return true;
    }
};

template <class S, class T>
ZvpStatus transform(const T* pSrc, T* pDst, const S* pSpec, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSrc, pDst, pSpec);
    const Record* r = recordOf(pSpec);
    if (r->tag != Kind<S>::tag) return zvpStsContextMatchErr;
    CallWork w;
    if (!w.take(r, pBuffer)) return zvpStsMemAllocErr;
    if constexpr (sizeof(T) == 4) return run<T>(r, pSrc, pDst, w.p, Kind<S>::inverse, r->rsqrtLen, r->sqrt2Len);
    else return run<T>(r, pSrc, pDst, w.p, Kind<S>::inverse, r->f0, r->f1);
}

// The integer data widened exactly to double, transformed in double
// precision, then scaled by 2^-scaleFactor, rounded to nearest (ties to even)
// and saturated.
template <class S>
ZvpStatus transform16s(const Zvp16s* pSrc, Zvp16s* pDst, const S* pSpec, int scaleFactor, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSrc, pDst, pSpec);
    const Record* r = recordOf(pSpec);
    if (r->tag != Kind<S>::tag) return zvpStsContextMatchErr;
    const int n = r->len;
    CallWork w;
    if (!w.take(r, pBuffer)) return zvpStsMemAllocErr;
    // The double transform rounds to nearest without flushing, whatever the
    // caller's mode, so the integers do not depend on it.
    const MxcsrGuard mode(MxcsrGuard::kNearest);
    double local[kDirectBelow];
    double* const d = w.p ? reinterpret_cast<double*>(w.p) : local;
    Zvp8u* const rest = w.p ? w.p + vBytes<double>(n) : nullptr;
    p8::zvpsConvert_16s64f_Sfs(pSrc, d, n, 0);
    ZVP_RETURN_IF_ERROR(run<double>(r, d, d, rest, Kind<S>::inverse, r->f0, r->f1));
    return p8::zvpsConvert_64f16s_Sfs(d, pDst, n, zvpRndNear, scaleFactor);
}

}  // namespace
}  // namespace dct

// ---- exports ------------------------------------------------------------------------------

ZvpStatus zvpsDCTFwd_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDCTFwdSpec_32f* pDCTSpec, Zvp8u* pBuffer) {
    return dct::transform(pSrc, pDst, pDCTSpec, pBuffer);
}
ZvpStatus zvpsDCTInv_32f(const Zvp32f* pSrc, Zvp32f* pDst, const ZvpsDCTInvSpec_32f* pDCTSpec, Zvp8u* pBuffer) {
    return dct::transform(pSrc, pDst, pDCTSpec, pBuffer);
}
ZvpStatus zvpsDCTFwd_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDCTFwdSpec_64f* pDCTSpec, Zvp8u* pBuffer) {
    return dct::transform(pSrc, pDst, pDCTSpec, pBuffer);
}
ZvpStatus zvpsDCTInv_64f(const Zvp64f* pSrc, Zvp64f* pDst, const ZvpsDCTInvSpec_64f* pDCTSpec, Zvp8u* pBuffer) {
    return dct::transform(pSrc, pDst, pDCTSpec, pBuffer);
}
ZvpStatus zvpsDCTFwd_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, const ZvpsDCTFwdSpec_16s* pDCTSpec, int scaleFactor,
                             Zvp8u* pBuffer) {
    return dct::transform16s(pSrc, pDst, pDCTSpec, scaleFactor, pBuffer);
}
ZvpStatus zvpsDCTInv_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, const ZvpsDCTInvSpec_16s* pDCTSpec, int scaleFactor,
                             Zvp8u* pBuffer) {
    return dct::transform16s(pSrc, pDst, pDCTSpec, scaleFactor, pBuffer);
}

}  // namespace zvp::p8

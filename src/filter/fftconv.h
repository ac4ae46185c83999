// Fast-transform convolution and correlation shared by the filtering
// families: one block of memory laid out as
//
//     [spec | spec init | FFT work | arrays of 2^order elements]
//
// each part starting on a 64-byte boundary (the block itself is aligned up
// first, hence 64 bytes of slack in every size), a transform of 2^order
// points built inside it with the inverse divided by 2^order, and the
// single-transform and overlap-save drivers over it. Real data use the real
// FFT (Perm layout for products, Pack for products with a conjugate), complex
// data the complex FFT. The block is the caller's buffer or, when there is
// none, taken from the library allocator by Plan::prepare.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "lane_float.h"
#include "level.h"
#include "mac_kernel.h"
#include "p8/fft.h"
#include "p8/fftreal.h"
#include "workbuf.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::fftconv {

constexpr int kFlag = ZVP_FFT_DIV_INV_BY_N;

inline constexpr long long align64(long long v) { return (v + 63) & ~63LL; }

// Smallest k >= kMin with 2^k >= n (n >= 1).
inline int orderFor(long long n, int kMin) {
    int k = kMin;
    while ((1LL << k) < n) ++k;
    return k;
}

// The overlap-save order for a short operand of sLen: one more than the
// smallest j >= 1 with 2^j >= 2 sLen, so a block of 2^k keeps at least three
// quarters of its outputs.
inline int overlapOrder(long long sLen) { return orderFor(2 * sLen, 1) + 1; }

template <class E>
struct Fft;

template <>
struct Fft<float> {
    using Spec = ZvpsFFTSpec_R_32f;
    static ZvpStatus size(int k, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_R_32f(k, kFlag, zvpAlgHintNone, s, i, w);
    }
    static ZvpStatus init(Spec** pp, int k, Zvp8u* s, Zvp8u* i) {
        return p8::zvpsFFTInit_R_32f(pp, k, kFlag, zvpAlgHintNone, s, i);
    }
    static ZvpStatus fwdPerm(float* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTFwd_RToPerm_32f_I(d, s, w); }
    static ZvpStatus invPerm(float* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTInv_PermToR_32f_I(d, s, w); }
    static ZvpStatus fwdPack(float* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTFwd_RToPack_32f_I(d, s, w); }
    static ZvpStatus invPack(float* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTInv_PackToR_32f_I(d, s, w); }
    static ZvpStatus mulPerm(const float* h, float* x, int n) { return p8::zvpsMulPerm_32f_I(h, x, n); }
    static ZvpStatus mulConj(const float* h, float* x, int n) { return p8::zvpsMulPackConj_32f_I(h, x, n); }
};

template <>
struct Fft<double> {
    using Spec = ZvpsFFTSpec_R_64f;
    static ZvpStatus size(int k, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_R_64f(k, kFlag, zvpAlgHintNone, s, i, w);
    }
    static ZvpStatus init(Spec** pp, int k, Zvp8u* s, Zvp8u* i) {
        return p8::zvpsFFTInit_R_64f(pp, k, kFlag, zvpAlgHintNone, s, i);
    }
    static ZvpStatus fwdPerm(double* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTFwd_RToPerm_64f_I(d, s, w); }
    static ZvpStatus invPerm(double* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTInv_PermToR_64f_I(d, s, w); }
    static ZvpStatus fwdPack(double* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTFwd_RToPack_64f_I(d, s, w); }
    static ZvpStatus invPack(double* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTInv_PackToR_64f_I(d, s, w); }
    static ZvpStatus mulPerm(const double* h, double* x, int n) { return p8::zvpsMulPerm_64f_I(h, x, n); }
    static ZvpStatus mulConj(const double* h, double* x, int n) { return p8::zvpsMulPackConj_64f_I(h, x, n); }
};

// x[i] := x[i] * h[i] (Conj: x[i] * conj(h[i])) on n complex values.
template <class E, bool Conj = true>
inline void mulConjCplx(const E* h, E* x, std::ptrdiff_t n) {
    using S = typename mac::Elem<E>::S;
    using F = Full<S>;
    using O = Pair<S>;
    const S* hs = reinterpret_cast<const S*>(h);
    S* xs = reinterpret_cast<S*>(x);
    constexpr int V = F::N / 2;
    auto tapF = [](typename F::R v) { return Conj ? F::conj(v) : v; };
    auto tapO = [](typename O::R v) { return Conj ? O::conj(v) : v; };
    std::ptrdiff_t i = 0;
    for (; i + V <= n; i += V) F::store(xs + 2 * i, F::cmul(F::load(xs + 2 * i), tapF(F::load(hs + 2 * i))));
    for (; i < n; ++i) O::store(xs + 2 * i, O::cmul(O::load(xs + 2 * i), tapO(O::load(hs + 2 * i))));
}

template <>
struct Fft<Zvp32fc> {
    using Spec = ZvpsFFTSpec_C_32fc;
    static ZvpStatus size(int k, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_C_32fc(k, kFlag, zvpAlgHintNone, s, i, w);
    }
    static ZvpStatus init(Spec** pp, int k, Zvp8u* s, Zvp8u* i) {
        return p8::zvpsFFTInit_C_32fc(pp, k, kFlag, zvpAlgHintNone, s, i);
    }
    static ZvpStatus fwdPack(Zvp32fc* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTFwd_CToC_32fc_I(d, s, w); }
    static ZvpStatus invPack(Zvp32fc* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTInv_CToC_32fc_I(d, s, w); }
    static ZvpStatus mulConj(const Zvp32fc* h, Zvp32fc* x, int n) {
        mulConjCplx(h, x, n);
        return zvpStsNoErr;
    }
};

template <>
struct Fft<Zvp64fc> {
    using Spec = ZvpsFFTSpec_C_64fc;
    static ZvpStatus size(int k, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_C_64fc(k, kFlag, zvpAlgHintNone, s, i, w);
    }
    static ZvpStatus init(Spec** pp, int k, Zvp8u* s, Zvp8u* i) {
        return p8::zvpsFFTInit_C_64fc(pp, k, kFlag, zvpAlgHintNone, s, i);
    }
    static ZvpStatus fwdPack(Zvp64fc* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTFwd_CToC_64fc_I(d, s, w); }
    static ZvpStatus invPack(Zvp64fc* d, const Spec* s, Zvp8u* w) { return p8::zvpsFFTInv_CToC_64fc_I(d, s, w); }
    static ZvpStatus mulConj(const Zvp64fc* h, Zvp64fc* x, int n) {
        mulConjCplx(h, x, n);
        return zvpStsNoErr;
    }
};

// Bytes of the block for a transform of order k and nArr arrays of 2^k
// elements: align64 of each of the three transform sizes, align64 of the
// arrays together, and 64 for aligning the block. Returns the size query's
// status; *bytes is 0 on failure or when the size does not fit an int.
template <class E>
ZvpStatus blockBytes(int k, int nArr, int* bytes) {
    *bytes = 0;
    int s = 0, i = 0, w = 0;
    const ZvpStatus st = Fft<E>::size(k, &s, &i, &w);
    if (st < 0) return st;
    const long long total = align64(s) + align64(i) + align64(w) +
                            align64((long long)nArr * (1LL << k) * (long long)sizeof(E)) + 64;
    if (total > 0x7fffffffLL) return zvpStsSizeErr;
    *bytes = int(total);
    return zvpStsNoErr;
}

// A transform built in a block laid out by blockBytes.
template <class E>
struct Plan {
    const typename Fft<E>::Spec* spec = nullptr;
    Zvp8u* work = nullptr;
    E* arr[2] = {nullptr, nullptr};
    int order = 0;
    std::ptrdiff_t m = 0;

    ZvpStatus build(Zvp8u* raw, int k, int nArr) {
        int s = 0, i = 0, w = 0;
        ZvpStatus st = Fft<E>::size(k, &s, &i, &w);
        if (st < 0) return st;
        Zvp8u* p = alignUp(raw, 64);
        Zvp8u* const specMem = p;
        Zvp8u* const initMem = specMem + align64(s);
        work = initMem + align64(i);
        E* a = reinterpret_cast<E*>(work + align64(w));
        order = k;
        m = std::ptrdiff_t(1) << k;
        for (int n = 0; n < nArr; ++n) arr[n] = a + n * m;
        typename Fft<E>::Spec* sp = nullptr;
        st = Fft<E>::init(&sp, k, specMem, initMem);
        if (st < 0) return st;
        spec = sp;
        return zvpStsNoErr;
    }

    // Builds the transform in the caller's buffer, or in `own`, taken from
    // the library allocator, when the caller gave none.
    ZvpStatus prepare(WorkBuffer& own, Zvp8u* buf, int k, int nArr) {
        int bytes = 0;
        ZVP_RETURN_IF_ERROR(blockBytes<E>(k, nArr, &bytes));
        if (buf == nullptr) {
            if (!own.allocate(bytes)) return zvpStsMemAllocErr;
            buf = own.get();
        }
        return build(buf, k, nArr);
    }
};

// dst[0 .. m) = src[off + t] where 0 <= off + t < len, else 0.
template <class E>
inline void loadPadded(E* dst, std::ptrdiff_t m, const E* src, std::ptrdiff_t len, std::ptrdiff_t off) {
    const std::ptrdiff_t a = std::clamp<std::ptrdiff_t>(-off, 0, m);
    const std::ptrdiff_t b = std::clamp<std::ptrdiff_t>(len - off, a, m);
    if (a > 0) std::memset(static_cast<void*>(dst), 0, std::size_t(a) * sizeof(E));
    if (b > a) std::memcpy(static_cast<void*>(dst + a), src + off + a, std::size_t(b - a) * sizeof(E));
    if (m > b) std::memset(static_cast<void*>(dst + b), 0, std::size_t(m - b) * sizeof(E));
}

// ---- convolution (real data, Perm products)

// out[n] = sum_k s[k] l[n - k] for n in [0, lLen + sLen - 1) by one transform
// of at least that many points.
template <class E>
ZvpStatus convSingle(const Plan<E>& p, const E* l, std::ptrdiff_t lLen, const E* s, std::ptrdiff_t sLen,
                     E* out) {
    E* a = p.arr[0];
    E* b = p.arr[1];
    loadPadded(a, p.m, l, lLen, 0);
    loadPadded(b, p.m, s, sLen, 0);
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPerm(a, p.spec, p.work));
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPerm(b, p.spec, p.work));
    ZVP_RETURN_IF_ERROR(Fft<E>::mulPerm(b, a, int(p.m)));
    ZVP_RETURN_IF_ERROR(Fft<E>::invPerm(a, p.spec, p.work));
    std::memcpy(static_cast<void*>(out), a, std::size_t(lLen + sLen - 1) * sizeof(E));
    return zvpStsNoErr;
}

// The same by overlap-save: the short operand's spectrum is kept in arr[0];
// each step transforms 2^k samples of the long operand that start sLen - 1
// before the step and keeps the 2^k - sLen + 1 outputs that did not wrap.
template <class E>
ZvpStatus convOverlapSave(const Plan<E>& p, const E* l, std::ptrdiff_t lLen, const E* s,
                          std::ptrdiff_t sLen, E* out, std::ptrdiff_t n0, std::ptrdiff_t n1) {
    E* h = p.arr[0];
    E* seg = p.arr[1];
    loadPadded(h, p.m, s, sLen, 0);
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPerm(h, p.spec, p.work));
    const std::ptrdiff_t step = p.m - sLen + 1;
    for (std::ptrdiff_t q = n0; q < n1; q += step) {
        loadPadded(seg, p.m, l, lLen, q - (sLen - 1));
        ZVP_RETURN_IF_ERROR(Fft<E>::fwdPerm(seg, p.spec, p.work));
        ZVP_RETURN_IF_ERROR(Fft<E>::mulPerm(h, seg, int(p.m)));
        ZVP_RETURN_IF_ERROR(Fft<E>::invPerm(seg, p.spec, p.work));
        const std::ptrdiff_t cnt = std::min(step, n1 - q);
        std::memcpy(static_cast<void*>(out + (q - n0)), seg + (sLen - 1), std::size_t(cnt) * sizeof(E));
    }
    return zvpStsNoErr;
}

// ---- correlation (conjugate products: Pack layout, or the complex FFT)

// out[i] = sum_k conj(a[k]) b[k + lag0 + i], i in [0, n), by one transform
// holding the whole correlation: a zero-padded, b after aLen - 1 zeros, so
// lag l sits at index l + aLen - 1 and nothing wraps onto the wanted lags.
template <class E>
ZvpStatus corrSingle(const Plan<E>& p, const E* a, std::ptrdiff_t aLen, const E* b, std::ptrdiff_t bLen,
                     std::ptrdiff_t lag0, E* out, std::ptrdiff_t n) {
    E* fa = p.arr[0];
    E* fb = p.arr[1];
    loadPadded(fa, p.m, a, aLen, 0);
    loadPadded(fb, p.m, b, bLen, -(aLen - 1));
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPack(fa, p.spec, p.work));
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPack(fb, p.spec, p.work));
    ZVP_RETURN_IF_ERROR(Fft<E>::mulConj(fa, fb, int(p.m)));
    ZVP_RETURN_IF_ERROR(Fft<E>::invPack(fb, p.spec, p.work));
    std::memcpy(static_cast<void*>(out), fb + (lag0 + aLen - 1), std::size_t(n) * sizeof(E));
    return zvpStsNoErr;
}

// out[i] = sum_j conj(h[j]) x[off + i + j], i in [0, n), x zero outside
// [0, xLen), by overlap-save: the spectrum of h in arr[0], and per step a
// segment of 2^k samples of x whose first 2^k - hLen + 1 cyclic
// correlation outputs are free of wrap-around.
template <class E>
ZvpStatus corrOverlapSave(const Plan<E>& p, const E* h, std::ptrdiff_t hLen, const E* x,
                          std::ptrdiff_t xLen, std::ptrdiff_t off, E* out, std::ptrdiff_t n) {
    E* fh = p.arr[0];
    E* seg = p.arr[1];
    loadPadded(fh, p.m, h, hLen, 0);
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPack(fh, p.spec, p.work));
    const std::ptrdiff_t step = p.m - hLen + 1;
    for (std::ptrdiff_t q = 0; q < n; q += step) {
        loadPadded(seg, p.m, x, xLen, off + q);
        ZVP_RETURN_IF_ERROR(Fft<E>::fwdPack(seg, p.spec, p.work));
        ZVP_RETURN_IF_ERROR(Fft<E>::mulConj(fh, seg, int(p.m)));
        ZVP_RETURN_IF_ERROR(Fft<E>::invPack(seg, p.spec, p.work));
        const std::ptrdiff_t cnt = std::min(step, n - q);
        std::memcpy(static_cast<void*>(out + q), seg, std::size_t(cnt) * sizeof(E));
    }
    return zvpStsNoErr;
}

// |X|^2 of a spectrum of m points, in place: Pack layout for real data
// (X[0], then (re, im) pairs, then X[m/2] when m is even), plain values for
// complex data.
template <class E>
inline void powerSpectrum(E* x, std::ptrdiff_t m) {
    if constexpr (mac::isComplex<E>) {
        for (std::ptrdiff_t i = 0; i < m; ++i) {
            x[i].re = x[i].re * x[i].re + x[i].im * x[i].im;
            x[i].im = 0;
        }
    } else {
        x[0] = x[0] * x[0];
        std::ptrdiff_t i = 1;
        for (; i + 1 < m; i += 2) {
            x[i] = x[i] * x[i] + x[i + 1] * x[i + 1];
            x[i + 1] = 0;
        }
        if (i < m) x[i] = x[i] * x[i];
    }
}

// out[n] = sum_k conj(a[k]) a[k + n], n in [0, cnt), by one transform of at
// least 2 aLen points (arr[0] only).
template <class E>
ZvpStatus autoCorr(const Plan<E>& p, const E* a, std::ptrdiff_t aLen, E* out, std::ptrdiff_t cnt) {
    E* f = p.arr[0];
    loadPadded(f, p.m, a, aLen, 0);
    ZVP_RETURN_IF_ERROR(Fft<E>::fwdPack(f, p.spec, p.work));
    powerSpectrum(f, p.m);
    ZVP_RETURN_IF_ERROR(Fft<E>::invPack(f, p.spec, p.work));
    std::memcpy(static_cast<void*>(out), f, std::size_t(cnt) * sizeof(E));
    return zvpStsNoErr;
}

}  // namespace zvp::ZVP_LEVEL::fftconv

// DFT of any length: size queries, records, and the forward and inverse
// transforms of the interleaved, split, real and out-of-order kinds.
//
// Every kind runs on one interleaved complex core (run below). The split and
// real kinds stage their data through interleaved work memory, except on the
// FFT path, where their record embeds an FFT record of their own kind.
#include <climits>
#include <cstddef>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "dftkernels.h"
#include "dftspec.h"
#include "fftsmall.h"
#include "scaleflag.h"
#include "p8/dft.h"
#include "p8/fft.h"
#include "p8/fftreal.h"
#include "p8/frame.h"
#include "workbuf.h"

namespace zvp::ZVP_LEVEL::dft {
namespace {

template <class T>
struct Cx {
    T re, im;
};

template <class T>
inline Cx<T> mul(Cx<T> a, Cx<T> b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
template <class T>
inline Cx<T> conj(Cx<T> a) {
    return {a.re, -a.im};
}

constexpr bool isPow2(std::int64_t v) { return (v & (v - 1)) == 0; }
constexpr int log2Of(std::int64_t v) {
    int k = 0;
    while ((std::int64_t(1) << k) < v) ++k;
    return k;
}
bool validFlag(int flag) { return flag == 1 || flag == 2 || flag == 4 || flag == 8; }

// What a length needs: the method and the three sizes reported by the query.
struct Plan {
    std::int64_t spec = 0, init = 0, work = 0;
    Method method = kSmall;
    int nFactors = 0;
    std::int32_t factors[kMaxFactors] = {};
    std::int64_t convLen = 0;
    std::int64_t innerSpec = 0, innerInit = 0, innerWork = 0;
};

ZvpStatus fftSizes(Kind kind, bool dbl, int order, int flag, int* s, int* i, int* w) {
    const ZvpHintAlgorithm hint = zvpAlgHintNone;
    switch (kind) {
        case Kind::Inter:
            return dbl ? p8::zvpsFFTGetSize_C_64fc(order, flag, hint, s, i, w)
                       : p8::zvpsFFTGetSize_C_32fc(order, flag, hint, s, i, w);
        case Kind::Split:
            return dbl ? p8::zvpsFFTGetSize_C_64f(order, flag, hint, s, i, w)
                       : p8::zvpsFFTGetSize_C_32f(order, flag, hint, s, i, w);
        default:
            return dbl ? p8::zvpsFFTGetSize_R_64f(order, flag, hint, s, i, w)
                       : p8::zvpsFFTGetSize_R_32f(order, flag, hint, s, i, w);
    }
}

// The size query for a length of at least 1. E is the bytes of one complex
// sample; the interleaved single-precision kind reports the reference sizes,
// the double kinds the same with 16-byte samples, and the split and real
// kinds add one staging vector of L complex samples.
ZvpStatus query(Kind kind, bool dbl, std::int64_t L, int flag, Plan& p) {
    p = Plan{};
    const std::int64_t E = dbl ? 16 : 8;
    p.spec = kFixedPart;
    if (!validFlag(flag)) return zvpStsFftFlagErr;
    if (L <= 16) {
        p.method = kSmall;
    } else if (isPow2(L)) {
        p.method = kFft;
        int s = 0, i = 0, w = 0;
        // beyond the FFT's largest order the length is simply too long
        if (fftSizes(kind, dbl, log2Of(L), flag, &s, &i, &w) < 0) return zvpStsSizeErr;
        p.spec += up64(s);
        p.init += up64(i);
        p.work += up64(w);
    } else if (kind == Kind::Real && L % 2 == 0 && L <= kMaxLength) {
        // the L/2 complex values x[2n] + i x[2n+1] through an inner record,
        // then one recombination step with the roots of L
        p.method = kHalf;
        Plan in;
        ZVP_RETURN_IF_ERROR(query(Kind::Inter, dbl, L / 2, ZVP_FFT_NODIV_BY_ANY, in));
        p.innerSpec = in.spec;
        p.innerInit = in.init;
        p.innerWork = in.work;
        p.spec += up64(in.spec) + up64(E * (L / 2));
        p.init += up64(in.init);
        p.work += up64(in.work) + up64(E * (L / 2 + 1));
    } else {
        if (L > kMaxLength) return zvpStsSizeErr;
        p.init += up64(E * L);  // the L roots of the length
        p.nFactors = factorize(L, p.factors);
        if (p.nFactors > 0) {
            p.method = kPrime;
            std::int64_t sumP = 0;
            for (int i = 0; i < p.nFactors; ++i) sumP += p.factors[i];
            p.spec += up64(E * (L + sumP));
            p.work += up64(2 * E * L);
        } else if (L <= 50) {
            p.method = kDirect;
            p.spec += up64(E * L);
            p.work += up64(E * L);
        } else if (L <= kMaxConvLength) {
            p.method = kConv;
            const std::int64_t M = convLength(L);
            p.convLen = M;
            Plan in;
            ZVP_RETURN_IF_ERROR(query(Kind::Inter, dbl, M, ZVP_FFT_NODIV_BY_ANY, in));
            p.innerSpec = in.spec;
            p.innerInit = in.init;
            p.innerWork = in.work;
            const std::int64_t w = up64(in.work), s = w + E * M + 64;
            p.spec += up64(E * M) + up64(E * L) + up64(in.spec);
            p.init += up64(E / 4 * L) + up64(in.init) + up64(s);
            p.work += w + up64(s);
        } else {
            return zvpStsSizeErr;
        }
        if (kind != Kind::Inter) p.work += up64(E * L);
    }
    if (p.spec > 0) p.spec += 64;
    if (p.init > 0) p.init += 64;
    if (p.work > 0) p.work += 64;
    if (p.spec > INT_MAX || p.init > INT_MAX || p.work > INT_MAX) return zvpStsSizeErr;
    return zvpStsNoErr;
}

template <class T>
T* at(Header* h, std::int64_t off) {
    return reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(h) + off);
}
template <class T>
const T* at(const Header* h, std::int64_t off) {
    return reinterpret_cast<const T*>(reinterpret_cast<const unsigned char*>(h) + off);
}

// exp(-2 pi i e / n) for 0 <= e < n, in long double with the argument folded
// into the first octant so every root is as accurate as the type allows.
template <class T>
Cx<T> rootOf(std::int64_t e, std::int64_t n) {
    // angle 2 pi e / n; use the symmetric index to keep the argument small
    const long double twoPi = 6.283185307179586476925286766559L;
    std::int64_t a = e % n;
    if (a < 0) a += n;
    const bool upper = 2 * a > n;
    const std::int64_t b = upper ? n - a : a;  // angle in [0, pi]
    long double c, s;
    // fold around pi/2 so the smaller argument feeds the function
    if (4 * b <= n) {
        const long double t = twoPi * static_cast<long double>(b) / static_cast<long double>(n);
        c = cosl(t);
        s = sinl(t);
    } else {
        const long double t =
            twoPi * static_cast<long double>(n - 2 * b) / static_cast<long double>(2 * n);
        // angle = pi/2 + (pi/2 - t') ... expressed via pi - angle
        c = -cosl(t);
        s = sinl(t);
    }
    if (upper) s = -s;
    return {T(c), T(-s)};
}

// ---- kernels ------------------------------------------------------------

template <class T>
void scaleBy(Cx<T>* d, std::int64_t n, T s) {
    for (std::int64_t i = 0; i < n; ++i) {
        d[i].re *= s;
        d[i].im *= s;
    }
}

// O(L^2) from the table of the L roots. The lengths that take it (no
// factor up to their square root, at most 50) are odd primes, so the sums
// pair n with L - n like any odd butterfly. All of x is read before y is
// written, so the source may equal the destination.
template <class T, bool INV>
void direct(const Cx<T>* x, Cx<T>* y, std::int64_t L, const Cx<T>* roots) {
    using V = One<T>;
    CV<V> v[50];
    for (std::int64_t n = 0; n < L; ++n) v[n] = ld<V>(&x[n].re);
    oddDft<V, INV, 0>(v, int(L), &roots->re);
    for (std::int64_t n = 0; n < L; ++n) st<V>(&y[n].re, v[n]);
}

// Whether the butterfly of factor p reads the factor's roots from the table.
constexpr bool generalFactor(int p) {
    return !(p == 2 || p == 3 || p == 4 || p == 5 || p == 6 || p == 7 || p == 8 || p == 11 ||
             p == 13 || p == 16);
}

// The self-sorting stages over the factor list, ping-ponging between the
// destination and work memory of 2L samples so that the last stage lands in
// the destination; when the first stage would overwrite its own input (in
// place, odd number of stages) the input is copied away first.
template <class T, bool INV>
void mixedRadix(const Header* h, const Cx<T>* x, Cx<T>* y, Cx<T>* work) {
    const std::int64_t L = h->length;
    const int s = h->nRadix;
    Cx<T>* a = work;
    Cx<T>* b = work + L;
    const Cx<T>* in = x;
    if (x == y && s % 2 == 1) {
        std::memcpy(static_cast<void*>(b), x, sizeof(Cx<T>) * std::size_t(L));
        in = b;
    }
    const T* tab = at<T>(h, h->twdOff);
    std::int64_t Ns = 1;
    for (int i = 0; i < s; ++i) {
        const int p = h->radix[i];
        const T* tw = tab;
        const T* roots = tab + 2 * (p - 1) * Ns;
        tab = roots + (generalFactor(p) ? 2 * p : 0);
        Cx<T>* out = ((s - 1 - i) % 2 == 0) ? y : a;
        stage<T, INV>(&in->re, &out->re, L, p, Ns, tw, roots);
        in = out;
        Ns *= p;
    }
}

// Twiddle and root tables of the factor list, from the L roots of the length.
template <class T>
void buildStages(Cx<T>* t, std::int64_t L, const std::int32_t* f, int nf, const Cx<T>* roots) {
    std::int64_t Ns = 1;
    for (int i = 0; i < nf; ++i) {
        const std::int64_t p = f[i], step = L / (Ns * p);
        for (std::int64_t r = 1; r < p; ++r)
            for (std::int64_t k = 0; k < Ns; ++k) *t++ = roots[(r * k * step) % L];
        if (generalFactor(int(p)))
            for (std::int64_t r = 0; r < p; ++r) *t++ = roots[r * (L / p)];
        Ns *= p;
    }
}

// ---- FFT path -----------------------------------------------------------

ZvpStatus fftRun(const Header* h, const Cx<float>* x, Cx<float>* y, bool inv, Zvp8u* w) {
    const auto* s = at<ZvpsFFTSpec_C_32fc>(h, h->innerOff);
    const auto* xs = reinterpret_cast<const Zvp32fc*>(x);
    auto* ys = reinterpret_cast<Zvp32fc*>(y);
    return inv ? p8::zvpsFFTInv_CToC_32fc(xs, ys, s, w) : p8::zvpsFFTFwd_CToC_32fc(xs, ys, s, w);
}
ZvpStatus fftRun(const Header* h, const Cx<double>* x, Cx<double>* y, bool inv, Zvp8u* w) {
    const auto* s = at<ZvpsFFTSpec_C_64fc>(h, h->innerOff);
    const auto* xs = reinterpret_cast<const Zvp64fc*>(x);
    auto* ys = reinterpret_cast<Zvp64fc*>(y);
    return inv ? p8::zvpsFFTInv_CToC_64fc(xs, ys, s, w) : p8::zvpsFFTFwd_CToC_64fc(xs, ys, s, w);
}

template <class T>
T scaleOf(const Header* h) {
    return sizeof(T) == 4 ? T(h->scale) : T(h->scale64);
}

// The interleaved core: every method of an interleaved record (the staging
// of split and real records lands here too). work: aligned work memory of
// the record's work size, or null when that size is 0.
template <class T>
ZvpStatus run(const Header* h, const Cx<T>* x, Cx<T>* y, bool inv, Zvp8u* work);

template <class T>
ZvpStatus convolve(const Header* h, const Cx<T>* x, Cx<T>* y, bool inv, Zvp8u* work) {
    const std::int64_t L = h->length, M = h->convLength;
    const Cx<T>* c = at<Cx<T>>(h, h->chirpOff);
    const Cx<T>* f = at<Cx<T>>(h, h->filterOff);
    const Header* inner = at<Header>(h, h->innerOff);
    auto* w = reinterpret_cast<Cx<T>*>(work);
    Zvp8u* innerWork = work + up64(std::int64_t(sizeof(Cx<T>)) * M);
    for (std::int64_t n = 0; n < L; ++n) w[n] = mul(c[n], x[n]);
    for (std::int64_t n = L; n < M; ++n) w[n] = {T(0), T(0)};
    ZVP_RETURN_IF_ERROR(run<T>(inner, w, w, false, innerWork));
    for (std::int64_t n = 0; n < M; ++n) w[n] = mul(w[n], f[n]);
    ZVP_RETURN_IF_ERROR(run<T>(inner, w, w, true, innerWork));
    for (std::int64_t k = 0; k < L; ++k) y[k] = mul(c[k], w[k]);
    if (inv)  // the inverse sum is the forward one read backwards: X[(L - k) mod L]
        for (std::int64_t k = 1, j = L - 1; k < j; ++k, --j) {
            const Cx<T> t = y[k];
            y[k] = y[j];
            y[j] = t;
        }
    return zvpStsNoErr;
}

template <class T>
ZvpStatus run(const Header* h, const Cx<T>* x, Cx<T>* y, bool inv, Zvp8u* work) {
    const std::int64_t L = h->length;
    const bool scaled = (inv ? h->invScaled : h->fwdScaled) != 0;
    switch (h->method) {
        case kSmall: {
            if (isPow2(L)) {
                fft::smallFft<T>(&x->re, &y->re, log2Of(L), inv ? 1 : -1, scaled, scaleOf<T>(h));
                return zvpStsNoErr;
            }
            Cx<T> tmp[32];
            if (inv) mixedRadix<T, true>(h, x, y, tmp);
            else mixedRadix<T, false>(h, x, y, tmp);
            break;
        }
        case kFft:
            return fftRun(h, x, y, inv, work);
        case kPrime:
            if (inv) mixedRadix<T, true>(h, x, y, reinterpret_cast<Cx<T>*>(work));
            else mixedRadix<T, false>(h, x, y, reinterpret_cast<Cx<T>*>(work));
            break;
        case kDirect:
            if (inv) direct<T, true>(x, y, L, at<Cx<T>>(h, h->dirOff));
            else direct<T, false>(x, y, L, at<Cx<T>>(h, h->dirOff));
            break;
        case kConv:
            ZVP_RETURN_IF_ERROR(convolve<T>(h, x, y, inv, work));
            break;
        default:
            return zvpStsContextMatchErr;
    }
    if (scaled) scaleBy(y, L, scaleOf<T>(h));
    return zvpStsNoErr;
}

// ---- records ------------------------------------------------------------

template <class T>
constexpr bool isDouble() {
    return sizeof(T) == 8;
}

ZvpStatus fftInit(Kind kind, bool dbl, int order, int flag, int hint, Zvp8u* mem, Zvp8u* init,
                  Zvp8u** out) {
    const auto hn = ZvpHintAlgorithm(hint);
    switch (kind) {
        case Kind::Inter:
            if (dbl) return p8::zvpsFFTInit_C_64fc(reinterpret_cast<ZvpsFFTSpec_C_64fc**>(out), order, flag, hn, mem, init);
            return p8::zvpsFFTInit_C_32fc(reinterpret_cast<ZvpsFFTSpec_C_32fc**>(out), order, flag, hn, mem, init);
        case Kind::Split:
            if (dbl) return p8::zvpsFFTInit_C_64f(reinterpret_cast<ZvpsFFTSpec_C_64f**>(out), order, flag, hn, mem, init);
            return p8::zvpsFFTInit_C_32f(reinterpret_cast<ZvpsFFTSpec_C_32f**>(out), order, flag, hn, mem, init);
        default:
            if (dbl) return p8::zvpsFFTInit_R_64f(reinterpret_cast<ZvpsFFTSpec_R_64f**>(out), order, flag, hn, mem, init);
            return p8::zvpsFFTInit_R_32f(reinterpret_cast<ZvpsFFTSpec_R_32f**>(out), order, flag, hn, mem, init);
    }
}

template <class T>
ZvpStatus build(Kind kind, std::int32_t tag, std::int64_t L, int flag, int hint, Zvp8u* mem,
                Zvp8u* initMem, const Plan& p) {
    constexpr std::int64_t E = sizeof(Cx<T>);
    auto* h = reinterpret_cast<Header*>(alignUp(mem, 64));
    std::memset(static_cast<void*>(h), 0, kFixedPart);
    h->length = std::int32_t(L);
    h->hint = hint;
    h->method = p.method;
    setScaling(h, flag, L);  // the flag was checked by the size rule
    Zvp8u* init = initMem ? alignUp(initMem, 64) : nullptr;
    std::int64_t off = kFixedPart;
    switch (p.method) {
        case kSmall:
            if (!isPow2(L)) {
                // one or two factors; the twiddles fit in the fixed part
                Cx<T> roots[16];
                for (std::int64_t k = 0; k < L; ++k) roots[k] = rootOf<T>(k, L);
                h->nFactors = factorize(L, h->factors);
                if (h->nFactors == 0) {
                    h->nFactors = 1;
                    h->factors[0] = std::int32_t(L);
                }
                h->twdOff = std::int32_t(offsetof(Header, small));
                h->nRadix = passesOf(h->factors, h->nFactors, h->radix);
                buildStages(reinterpret_cast<Cx<T>*>(h->small), L, h->radix, h->nRadix, roots);
            }
            break;
        case kFft: {
            Zvp8u* rec = nullptr;
            ZVP_RETURN_IF_ERROR(fftInit(kind, isDouble<T>(), log2Of(L), flag, hint, at<Zvp8u>(h, off), init, &rec));
            h->innerOff = std::int32_t(rec - reinterpret_cast<Zvp8u*>(h));
            h->fftSwitch = 1;
            break;
        }
        case kHalf: {
            const std::int64_t N = L / 2;
            const std::int32_t innerTag = isDouble<T>() ? kTagC64fc : kTagC32fc;
            Plan in;
            ZVP_RETURN_IF_ERROR(query(Kind::Inter, isDouble<T>(), N, ZVP_FFT_NODIV_BY_ANY, in));
            h->innerOff = std::int32_t(off);
            ZVP_RETURN_IF_ERROR(build<T>(Kind::Inter, innerTag, N, ZVP_FFT_NODIV_BY_ANY, 0,
                                         at<Zvp8u>(h, off), init, in));
            off += up64(in.spec);
            h->recOff = std::int32_t(off);
            Cx<T>* w = at<Cx<T>>(h, off);
            for (std::int64_t k = 0; k < N; ++k) w[k] = rootOf<T>(k, L);
            break;
        }
        default: {
            auto* roots = reinterpret_cast<Cx<T>*>(init);
            for (std::int64_t k = 0; k < L; ++k) roots[k] = rootOf<T>(k, L);
            init += up64(E * L);
            if (p.method == kPrime) {
                h->pfSwitch = 1;
                h->nFactors = p.nFactors;
                for (int i = 0; i < p.nFactors; ++i) h->factors[i] = p.factors[i];
                h->twdOff = std::int32_t(off);
                h->nRadix = passesOf(h->factors, h->nFactors, h->radix);
                buildStages(at<Cx<T>>(h, off), L, h->radix, h->nRadix, roots);
            } else if (p.method == kDirect) {
                h->dirOff = std::int32_t(off);
                std::memcpy(at<Cx<T>>(h, off), roots, std::size_t(E * L));
            } else {
                const std::int64_t M = p.convLen;
                h->convLength = std::int32_t(M);
                h->innerOff = std::int32_t(off);
                init += up64(E / 4 * L);
                const std::int32_t innerTag = isDouble<T>() ? kTagC64fc : kTagC32fc;
                Plan in;
                ZVP_RETURN_IF_ERROR(query(Kind::Inter, isDouble<T>(), M, ZVP_FFT_NODIV_BY_ANY, in));
                ZVP_RETURN_IF_ERROR(build<T>(Kind::Inter, innerTag, M, ZVP_FFT_NODIV_BY_ANY, 0,
                                             at<Zvp8u>(h, off), init, in));
                init += up64(in.init);
                off += up64(in.spec);
                h->chirpOff = std::int32_t(off);
                off += up64(E * L);
                h->filterOff = std::int32_t(off);
                // c[n] = exp(-pi i n^2 / L), from the roots of 2L points
                Cx<T>* c = at<Cx<T>>(h, h->chirpOff);
                Cx<T>* f = at<Cx<T>>(h, h->filterOff);
                for (std::int64_t n = 0; n < L; ++n) c[n] = rootOf<T>((n * n) % (2 * L), 2 * L);
                // filter: conj(c) at lags -(L-1)..L-1 around 0, transformed,
                // with the 1/M of the inner inverse folded in
                for (std::int64_t n = 0; n < M; ++n) f[n] = {T(0), T(0)};
                for (std::int64_t n = 0; n < L; ++n) f[n] = conj(c[n]);
                for (std::int64_t n = 1; n < L; ++n) f[M - n] = conj(c[n]);
                const Header* ih = at<Header>(h, h->innerOff);
                ZVP_RETURN_IF_ERROR(run<T>(ih, f, f, false, init));
                scaleBy(f, M, T(1) / T(M));
            }
        }
    }
    h->workSize = std::int32_t(p.work > 0 ? p.work - 64 : 0);
    h->tag = tag;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus getSize(Kind kind, int L, int flag, int* pSpec, int* pInit, int* pWork) {
    ZVP_CHECK_PTRS(pSpec, pInit, pWork);
    if (L < 1) return zvpStsSizeErr;
    Plan p;
    ZVP_RETURN_IF_ERROR(query(kind, isDouble<T>(), L, flag, p));
    *pSpec = int(p.spec);
    *pInit = int(p.init);
    *pWork = int(p.work);
    return zvpStsNoErr;
}

template <class T, class Spec>
ZvpStatus init(Kind kind, std::int32_t tag, int L, int flag, int hint, Spec* pSpec, Zvp8u* pInit) {
    ZVP_CHECK_PTRS(pSpec);
    if (L < 1) return zvpStsSizeErr;
    Plan p;
    ZVP_RETURN_IF_ERROR(query(kind, isDouble<T>(), L, flag, p));
    if (p.init > 0) ZVP_CHECK_PTRS(pInit);
    return build<T>(kind, tag, L, flag, hint, reinterpret_cast<Zvp8u*>(pSpec), pInit, p);
}

template <class T, class Spec>
ZvpStatus initAlloc(Kind kind, std::int32_t tag, Spec** ppSpec, int L, int flag, int hint) {
    ZVP_CHECK_PTRS(ppSpec);
    if (L < 1) return zvpStsSizeErr;
    Plan p;
    ZVP_RETURN_IF_ERROR(query(kind, isDouble<T>(), L, flag, p));
    Zvp8u* block = p8::zvpsMalloc_8u(int(p.spec));
    if (!block) return zvpStsMemAllocErr;
    ZvpStatus st = zvpStsMemAllocErr;
    {
        WorkBuffer scratch;  // released whatever happens
        if (p.init <= 0 || scratch.allocate(int(p.init)))
            st = build<T>(kind, tag, L, flag, hint, block, scratch.get(), p);
    }
    if (st < 0) {
        p8::zvpsFree(block);
        return st;
    }
    auto* h = reinterpret_cast<Header*>(alignUp(block, 64));
    h->allocated = 1;
    h->baseOffset = std::int32_t(reinterpret_cast<Zvp8u*>(h) - block);
    *ppSpec = reinterpret_cast<Spec*>(h);
    return zvpStsNoErr;
}

template <class Spec>
const Header* headerOf(const Spec* s) {
    return reinterpret_cast<const Header*>(alignUp(reinterpret_cast<const Zvp8u*>(s), 64));
}

template <class Spec>
ZvpStatus release(std::int32_t tag, Spec* pSpec) {
    ZVP_CHECK_PTRS(pSpec);
    auto* h = const_cast<Header*>(headerOf(pSpec));
    if (h->tag != tag) return zvpStsContextMatchErr;
    h->tag = 0;
    if (h->allocated == 1) p8::zvpsFree(reinterpret_cast<Zvp8u*>(h) - h->baseOffset);
    return zvpStsNoErr;
}

template <class Spec>
ZvpStatus bufSize(std::int32_t tag, const Spec* pSpec, int* pSize) {
    ZVP_CHECK_PTRS(pSpec, pSize);
    const Header* h = headerOf(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    *pSize = h->workSize > 0 ? h->workSize + 64 : 0;
    return zvpStsNoErr;
}

// Work memory of one call: the caller's, aligned, or allocated for the call.
struct Work {
    WorkBuffer own;
    Zvp8u* p = nullptr;
    ZvpStatus acquire(const Header* h, Zvp8u* buf) {
        if (h->workSize <= 0) return zvpStsNoErr;
        if (buf) {
            p = alignUp(buf, 64);
        } else {
            if (!own.allocate(h->workSize + 64)) return zvpStsMemAllocErr;
            p = alignUp(own.get(), 64);
        }
        return zvpStsNoErr;
    }
};

// ---- transforms ---------------------------------------------------------

template <bool INV, class T, class Spec>
ZvpStatus interleaved(std::int32_t tag, const T* pSrc, T* pDst, const Spec* pSpec, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSpec);
    const Header* h = headerOf(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(pSrc, pDst);
    Work w;
    ZVP_RETURN_IF_ERROR(w.acquire(h, pBuffer));
    return run<T>(h, reinterpret_cast<const Cx<T>*>(pSrc), reinterpret_cast<Cx<T>*>(pDst), INV, w.p);
}

ZvpStatus splitFft(const Header* h, const float* sr, const float* si, float* dr, float* di, bool inv, Zvp8u* w) {
    const auto* s = at<ZvpsFFTSpec_C_32f>(h, h->innerOff);
    return inv ? p8::zvpsFFTInv_CToC_32f(sr, si, dr, di, s, w) : p8::zvpsFFTFwd_CToC_32f(sr, si, dr, di, s, w);
}
ZvpStatus splitFft(const Header* h, const double* sr, const double* si, double* dr, double* di, bool inv, Zvp8u* w) {
    const auto* s = at<ZvpsFFTSpec_C_64f>(h, h->innerOff);
    return inv ? p8::zvpsFFTInv_CToC_64f(sr, si, dr, di, s, w) : p8::zvpsFFTFwd_CToC_64f(sr, si, dr, di, s, w);
}

// Staging vector for split and real records: on the stack up to 16 points,
// else the front of the work memory, the rest of which serves the core.
template <class T>
struct Stage {
    Cx<T> local[16];
    Cx<T>* v;
    Zvp8u* rest;
    Stage(const Header* h, Zvp8u* work) {
        if (h->length <= 16) {
            v = local;
            rest = work;
        } else {
            const std::int64_t n = h->method == kHalf ? h->length / 2 + 1 : h->length;
            v = reinterpret_cast<Cx<T>*>(work);
            rest = work + up64(std::int64_t(sizeof(Cx<T>)) * n);
        }
    }
};

template <bool INV, class T, class Spec>
ZvpStatus split(std::int32_t tag, const T* sr, const T* si, T* dr, T* di, const Spec* pSpec, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSpec);
    const Header* h = headerOf(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(sr, si, dr, di);
    Work w;
    ZVP_RETURN_IF_ERROR(w.acquire(h, pBuffer));
    if (h->method == kFft) return splitFft(h, sr, si, dr, di, INV, w.p);
    const std::int64_t L = h->length;
    Stage<T> s(h, w.p);
    for (std::int64_t i = 0; i < L; ++i) s.v[i] = {sr[i], si[i]};
    ZVP_RETURN_IF_ERROR(run<T>(h, s.v, s.v, INV, s.rest));
    for (std::int64_t i = 0; i < L; ++i) {
        dr[i] = s.v[i].re;
        di[i] = s.v[i].im;
    }
    return zvpStsNoErr;
}

enum class Layout { CCS, Pack, Perm };

ZvpStatus realFft(const Header* h, const float* s, float* d, Layout lay, bool inv, Zvp8u* w) {
    const auto* r = at<ZvpsFFTSpec_R_32f>(h, h->innerOff);
    switch (lay) {
        case Layout::CCS: return inv ? p8::zvpsFFTInv_CCSToR_32f(s, d, r, w) : p8::zvpsFFTFwd_RToCCS_32f(s, d, r, w);
        case Layout::Pack: return inv ? p8::zvpsFFTInv_PackToR_32f(s, d, r, w) : p8::zvpsFFTFwd_RToPack_32f(s, d, r, w);
        default: return inv ? p8::zvpsFFTInv_PermToR_32f(s, d, r, w) : p8::zvpsFFTFwd_RToPerm_32f(s, d, r, w);
    }
}
ZvpStatus realFft(const Header* h, const double* s, double* d, Layout lay, bool inv, Zvp8u* w) {
    const auto* r = at<ZvpsFFTSpec_R_64f>(h, h->innerOff);
    switch (lay) {
        case Layout::CCS: return inv ? p8::zvpsFFTInv_CCSToR_64f(s, d, r, w) : p8::zvpsFFTFwd_RToCCS_64f(s, d, r, w);
        case Layout::Pack: return inv ? p8::zvpsFFTInv_PackToR_64f(s, d, r, w) : p8::zvpsFFTFwd_RToPack_64f(s, d, r, w);
        default: return inv ? p8::zvpsFFTInv_PermToR_64f(s, d, r, w) : p8::zvpsFFTFwd_RToPerm_64f(s, d, r, w);
    }
}

// Places of Re X[k] and Im X[k] (k from 1 to (L-1)/2) and of X[L/2] (even L).
struct Places {
    std::int64_t re1, nyq;  // index of R1 (then pairs), index of R(L/2)
};
Places placesOf(Layout lay, std::int64_t L) {
    switch (lay) {
        case Layout::CCS: return {2, L};
        case Layout::Pack: return {1, L - 1};
        default: return L % 2 == 0 ? Places{2, 1} : Places{1, L - 1};
    }
}

// Real forward transform of even length L = 2N: Z = DFT_N(x[2n] + i x[2n+1])
// by the inner record, then X[k] = E_k + w^k O_k for k = 0..N with
// E_k = (Z[k] + conj Z[N-k]) / 2, O_k = (Z[k] - conj Z[N-k]) / 2i, w the
// root of L (Z[N] read as Z[0]). X goes to v[0..N].
template <class T>
ZvpStatus halfForward(const Header* h, const T* src, Cx<T>* v, Zvp8u* rest) {
    const std::int64_t N = h->length / 2;
    const Header* inner = at<Header>(h, h->innerOff);
    const Cx<T>* w = at<Cx<T>>(h, h->recOff);
    Zvp8u* innerWork = rest;
    ZVP_RETURN_IF_ERROR(run<T>(inner, reinterpret_cast<const Cx<T>*>(src), v, false, innerWork));
    const T half = T(0.5);
    const Cx<T> z0 = v[0];
    v[N] = {z0.re - z0.im, T(0)};
    v[0] = {z0.re + z0.im, T(0)};
    for (std::int64_t k = 1, j = N - 1; k <= j; ++k, --j) {
        const Cx<T> a = v[k], b = v[j];
        // k and N - k from the same pair
        const Cx<T> ek = {half * (a.re + b.re), half * (a.im - b.im)};
        const Cx<T> ok = {half * (a.im + b.im), half * (b.re - a.re)};
        const Cx<T> ej = {ek.re, -ek.im};
        const Cx<T> oj = {ok.re, -ok.im};
        const Cx<T> tk = mul(w[k], ok), tj = mul(w[j], oj);
        v[k] = {ek.re + tk.re, ek.im + tk.im};
        v[j] = {ej.re + tj.re, ej.im + tj.im};
    }
    if (h->fwdScaled) scaleBy(v, N + 1, scaleOf<T>(h));
    return zvpStsNoErr;
}

// Real inverse of even length from X[0..N] in v: Z[k] = (X[k] + conj X[N-k])
// + i (X[k] - conj X[N-k]) conj(w^k), then the inner inverse of N points
// gives L x[2n] + i L x[2n+1] straight into the destination.
template <class T>
ZvpStatus halfInverse(const Header* h, Cx<T>* v, T* dst, Zvp8u* rest) {
    const std::int64_t N = h->length / 2;
    const Header* inner = at<Header>(h, h->innerOff);
    const Cx<T>* w = at<Cx<T>>(h, h->recOff);
    const Cx<T> x0 = v[0], xn = v[N];
    v[0] = {x0.re + xn.re, x0.re - xn.re};
    for (std::int64_t k = 1, j = N - 1; k <= j; ++k, --j) {
        const Cx<T> a = v[k], b = v[j];
        const Cx<T> sk = {a.re + b.re, a.im - b.im};       // X[k] + conj X[j]
        const Cx<T> dk = {a.re - b.re, a.im + b.im};       // X[k] - conj X[j]
        const Cx<T> sj = {sk.re, -sk.im};                  // X[j] + conj X[k]
        const Cx<T> dj = {-dk.re, dk.im};                  // X[j] - conj X[k]
        const Cx<T> rk = mul(dk, conj(w[k])), rj = mul(dj, conj(w[j]));
        v[k] = {sk.re - rk.im, sk.im + rk.re};
        v[j] = {sj.re - rj.im, sj.im + rj.re};
    }
    auto* y = reinterpret_cast<Cx<T>*>(dst);
    ZVP_RETURN_IF_ERROR(run<T>(inner, v, y, true, rest));
    if (h->invScaled) scaleBy(y, N, scaleOf<T>(h));
    return zvpStsNoErr;
}

template <class T>
ZvpStatus realFwd(std::int32_t tag, Layout lay, const T* src, T* dst, const void* pSpec, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSpec);
    const Header* h = headerOf(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(src, dst);
    Work w;
    ZVP_RETURN_IF_ERROR(w.acquire(h, pBuffer));
    if (h->method == kFft) return realFft(h, src, dst, lay, false, w.p);
    const std::int64_t L = h->length;
    Stage<T> s(h, w.p);
    if (h->method == kHalf) {
        ZVP_RETURN_IF_ERROR(halfForward<T>(h, src, s.v, s.rest));
    } else {
        for (std::int64_t i = 0; i < L; ++i) s.v[i] = {src[i], T(0)};
        ZVP_RETURN_IF_ERROR(run<T>(h, s.v, s.v, false, s.rest));
    }
    const Places pl = placesOf(lay, L);
    dst[0] = s.v[0].re;
    if (lay == Layout::CCS) dst[1] = T(0);
    for (std::int64_t k = 1; 2 * k < L; ++k) {
        dst[pl.re1 + 2 * (k - 1)] = s.v[k].re;
        dst[pl.re1 + 2 * (k - 1) + 1] = s.v[k].im;
    }
    if (L % 2 == 0) {
        dst[pl.nyq] = s.v[L / 2].re;
        if (lay == Layout::CCS) dst[L + 1] = T(0);
    }
    return zvpStsNoErr;
}

template <class T>
ZvpStatus realInv(std::int32_t tag, Layout lay, const T* src, T* dst, const void* pSpec, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSpec);
    const Header* h = headerOf(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(src, dst);
    Work w;
    ZVP_RETURN_IF_ERROR(w.acquire(h, pBuffer));
    if (h->method == kFft) return realFft(h, src, dst, lay, true, w.p);
    const std::int64_t L = h->length;
    Stage<T> s(h, w.p);
    const Places pl = placesOf(lay, L);
    s.v[0] = {src[0], T(0)};
    const bool full = h->method != kHalf;  // the half method reads X[0..L/2] only
    for (std::int64_t k = 1; 2 * k < L; ++k) {
        const Cx<T> z = {src[pl.re1 + 2 * (k - 1)], src[pl.re1 + 2 * (k - 1) + 1]};
        s.v[k] = z;
        if (full) s.v[L - k] = conj(z);
    }
    if (L % 2 == 0) s.v[L / 2] = {src[pl.nyq], T(0)};
    if (h->method == kHalf) return halfInverse<T>(h, s.v, dst, s.rest);
    ZVP_RETURN_IF_ERROR(run<T>(h, s.v, s.v, true, s.rest));
    for (std::int64_t i = 0; i < L; ++i) dst[i] = s.v[i].re;
    return zvpStsNoErr;
}

}  // namespace
}  // namespace zvp::ZVP_LEVEL::dft

namespace zvp::p8 {

#define ZVP_DFT_SPEC(SUF, T, KIND, TAG)                                                         \
    ZvpStatus zvpsDFTGetSize_##SUF(int length, int flag, ZvpHintAlgorithm, int* pSpecSize,     \
                                   int* pInitSize, int* pWorkSize) {                           \
        return dft::getSize<T>(KIND, length, flag, pSpecSize, pInitSize, pWorkSize);           \
    }                                                                                           \
    ZvpStatus zvpsDFTInit_##SUF(int length, int flag, ZvpHintAlgorithm hint,                    \
                                ZvpsDFTSpec_##SUF* pSpec, Zvp8u* pInit) {                       \
        return dft::init<T>(KIND, TAG, length, flag, int(hint), pSpec, pInit);                 \
    }                                                                                           \
    ZvpStatus zvpsDFTInitAlloc_##SUF(ZvpsDFTSpec_##SUF** ppSpec, int length, int flag,          \
                                     ZvpHintAlgorithm hint) {                                   \
        return dft::initAlloc<T>(KIND, TAG, ppSpec, length, flag, int(hint));                  \
    }                                                                                           \
    ZvpStatus zvpsDFTFree_##SUF(ZvpsDFTSpec_##SUF* pSpec) { return dft::release(TAG, pSpec); } \
    ZvpStatus zvpsDFTGetBufSize_##SUF(const ZvpsDFTSpec_##SUF* pSpec, int* pSize) {            \
        return dft::bufSize(TAG, pSpec, pSize);                                                 \
    }

ZVP_DFT_SPEC(C_32fc, float, dft::Kind::Inter, dft::kTagC32fc)
ZVP_DFT_SPEC(C_32f, float, dft::Kind::Split, dft::kTagC32f)
ZVP_DFT_SPEC(R_32f, float, dft::Kind::Real, dft::kTagR32f)
ZVP_DFT_SPEC(C_64fc, double, dft::Kind::Inter, dft::kTagC64fc)
ZVP_DFT_SPEC(C_64f, double, dft::Kind::Split, dft::kTagC64f)
ZVP_DFT_SPEC(R_64f, double, dft::Kind::Real, dft::kTagR64f)
#undef ZVP_DFT_SPEC

#define ZVP_DFT_CPLX(DIR, INV, SUF, T, SPEC, TAG)                                              \
    ZvpStatus zvpsDFT##DIR##_CToC_##SUF(const Zvp##SUF* pSrc, Zvp##SUF* pDst,                  \
                                        const SPEC* pSpec, Zvp8u* pBuffer) {                   \
        return dft::interleaved<INV>(TAG, reinterpret_cast<const T*>(pSrc),                    \
                                     reinterpret_cast<T*>(pDst), pSpec, pBuffer);              \
    }
ZVP_DFT_CPLX(Fwd, false, 32fc, float, ZvpsDFTSpec_C_32fc, dft::kTagC32fc)
ZVP_DFT_CPLX(Inv, true, 32fc, float, ZvpsDFTSpec_C_32fc, dft::kTagC32fc)
ZVP_DFT_CPLX(Fwd, false, 64fc, double, ZvpsDFTSpec_C_64fc, dft::kTagC64fc)
ZVP_DFT_CPLX(Inv, true, 64fc, double, ZvpsDFTSpec_C_64fc, dft::kTagC64fc)

#define ZVP_DFT_OUTORD(SUF, T, TAG)                                                             \
    ZvpStatus zvpsDFTOutOrdInitAlloc_C_##SUF(ZvpsDFTOutOrdSpec_C_##SUF** ppSpec, int length,   \
                                             int flag, ZvpHintAlgorithm hint) {                 \
        return dft::initAlloc<T>(dft::Kind::Inter, TAG, ppSpec, length, flag, int(hint));      \
    }                                                                                           \
    ZvpStatus zvpsDFTOutOrdFree_C_##SUF(ZvpsDFTOutOrdSpec_C_##SUF* pSpec) {                     \
        return dft::release(TAG, pSpec);                                                        \
    }                                                                                           \
    ZvpStatus zvpsDFTOutOrdGetBufSize_C_##SUF(const ZvpsDFTOutOrdSpec_C_##SUF* pSpec,           \
                                              int* pSize) {                                     \
        return dft::bufSize(TAG, pSpec, pSize);                                                 \
    }                                                                                           \
    ZVP_DFT_CPLX(OutOrdFwd, false, SUF, T, ZvpsDFTOutOrdSpec_C_##SUF, TAG)                      \
    ZVP_DFT_CPLX(OutOrdInv, true, SUF, T, ZvpsDFTOutOrdSpec_C_##SUF, TAG)
ZVP_DFT_OUTORD(32fc, float, dft::kTagOutOrd32fc)
ZVP_DFT_OUTORD(64fc, double, dft::kTagOutOrd64fc)
#undef ZVP_DFT_OUTORD
#undef ZVP_DFT_CPLX

#define ZVP_DFT_SPLIT(DIR, INV, SUF, T, TAG)                                                    \
    ZvpStatus zvpsDFT##DIR##_CToC_##SUF(const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm, \
                                        const ZvpsDFTSpec_C_##SUF* pSpec, Zvp8u* pBuffer) {     \
        return dft::split<INV>(TAG, pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);            \
    }
ZVP_DFT_SPLIT(Fwd, false, 32f, Zvp32f, dft::kTagC32f)
ZVP_DFT_SPLIT(Inv, true, 32f, Zvp32f, dft::kTagC32f)
ZVP_DFT_SPLIT(Fwd, false, 64f, Zvp64f, dft::kTagC64f)
ZVP_DFT_SPLIT(Inv, true, 64f, Zvp64f, dft::kTagC64f)
#undef ZVP_DFT_SPLIT

#define ZVP_DFT_REAL(SUF, T, TAG)                                                               \
    ZvpStatus zvpsDFTFwd_RToCCS_##SUF(const T* pSrc, T* pDst, const ZvpsDFTSpec_R_##SUF* pSpec,   \
                                      Zvp8u* pBuffer) {                                         \
        return dft::realFwd<T>(TAG, dft::Layout::CCS, pSrc, pDst, pSpec, pBuffer);              \
    }                                                                                           \
    ZvpStatus zvpsDFTFwd_RToPack_##SUF(const T* pSrc, T* pDst, const ZvpsDFTSpec_R_##SUF* pSpec,  \
                                       Zvp8u* pBuffer) {                                        \
        return dft::realFwd<T>(TAG, dft::Layout::Pack, pSrc, pDst, pSpec, pBuffer);             \
    }                                                                                           \
    ZvpStatus zvpsDFTFwd_RToPerm_##SUF(const T* pSrc, T* pDst, const ZvpsDFTSpec_R_##SUF* pSpec,  \
                                       Zvp8u* pBuffer) {                                        \
        return dft::realFwd<T>(TAG, dft::Layout::Perm, pSrc, pDst, pSpec, pBuffer);             \
    }                                                                                           \
    ZvpStatus zvpsDFTInv_CCSToR_##SUF(const T* pSrc, T* pDst, const ZvpsDFTSpec_R_##SUF* pSpec,   \
                                      Zvp8u* pBuffer) {                                         \
        return dft::realInv<T>(TAG, dft::Layout::CCS, pSrc, pDst, pSpec, pBuffer);              \
    }                                                                                           \
    ZvpStatus zvpsDFTInv_PackToR_##SUF(const T* pSrc, T* pDst, const ZvpsDFTSpec_R_##SUF* pSpec,  \
                                       Zvp8u* pBuffer) {                                        \
        return dft::realInv<T>(TAG, dft::Layout::Pack, pSrc, pDst, pSpec, pBuffer);             \
    }                                                                                           \
    ZvpStatus zvpsDFTInv_PermToR_##SUF(const T* pSrc, T* pDst, const ZvpsDFTSpec_R_##SUF* pSpec,  \
                                       Zvp8u* pBuffer) {                                        \
        return dft::realInv<T>(TAG, dft::Layout::Perm, pSrc, pDst, pSpec, pBuffer);             \
    }
ZVP_DFT_REAL(32f, Zvp32f, dft::kTagR32f)
ZVP_DFT_REAL(64f, Zvp64f, dft::kTagR64f)
#undef ZVP_DFT_REAL

}  // namespace zvp::p8

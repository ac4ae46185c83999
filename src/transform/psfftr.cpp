// Real-input FFT of 2^order points, single and double precision: the
// specification (size query, initialisation into caller memory or into
// allocated memory, release, work-buffer size) and the forward and inverse
// transforms in the CCS, Pack and Perm layouts.
//
// Orders 0 .. 4 (single) or 0 .. 5 (double) use small kernels without
// tables. Up to order 6 the half-length complex transform is a fixed small
// kernel; from order 7 it is a complex specification of order m - 1 built
// inside the real one (without scaling: the real transform applies its own).
// The recombination table is derived from the quarter-wave sine table of the
// real length; from order 20 it has two levels (see psfftr.h).
#include <cmath>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "fftbase.h"
#include "fftsmall.h"
#include "fftspec.h"
#include "p8/fft.h"
#include "p8/fftreal.h"
#include "p8/frame.h"
#include "psfftr.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace {

using fftr::Layout;
using fftr::RealSpec;

constexpr int kFlagNoScale = ZVP_FFT_NODIV_BY_ANY;

// ---- per precision ----------------------------------------------------------

template <class T>
struct Real;

template <>
struct Real<float> {
    using Spec = ZvpsFFTSpec_R_32f;
    using CSpec = ZvpsFFTSpec_C_32fc;
    using C = Zvp32fc;
    static constexpr std::int32_t tag = fft::kTagR32f;
    static constexpr int maxOrder = 29;
    static constexpr int smallMax = 4;       // small real kernels up to here
    static constexpr int coefBytesPerK = 16;  // (b, b, a, -a) floats
    static constexpr fft::Prec prec = fft::Prec::Single;
    static ZvpStatus cSize(int m, ZvpHintAlgorithm h, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_C_32fc(m, kFlagNoScale, h, s, i, w);
    }
    static ZvpStatus cInit(CSpec** pp, int m, ZvpHintAlgorithm h, Zvp8u* spec, Zvp8u* init) {
        return p8::zvpsFFTInit_C_32fc(pp, m, kFlagNoScale, h, spec, init);
    }
    static ZvpStatus cFree(CSpec* s) { return p8::zvpsFFTFree_C_32fc(s); }
    static ZvpStatus cFwd(const float* s, float* d, const CSpec* spec, Zvp8u* w) {
        return p8::zvpsFFTFwd_CToC_32fc(reinterpret_cast<const C*>(s), reinterpret_cast<C*>(d), spec, w);
    }
    static ZvpStatus cInv(float* d, const CSpec* spec, Zvp8u* w) {
        return p8::zvpsFFTInv_CToC_32fc_I(reinterpret_cast<C*>(d), spec, w);
    }
    static float scaleOf(const RealSpec* s) { return s->scale; }
};

template <>
struct Real<double> {
    using Spec = ZvpsFFTSpec_R_64f;
    using CSpec = ZvpsFFTSpec_C_64fc;
    using C = Zvp64fc;
    static constexpr std::int32_t tag = fft::kTagR64f;
    static constexpr int maxOrder = 28;
    static constexpr int smallMax = 5;
    static constexpr int coefBytesPerK = 32;  // (b, b), (a, -a) doubles
    static constexpr fft::Prec prec = fft::Prec::Double;
    static ZvpStatus cSize(int m, ZvpHintAlgorithm h, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_C_64fc(m, kFlagNoScale, h, s, i, w);
    }
    static ZvpStatus cInit(CSpec** pp, int m, ZvpHintAlgorithm h, Zvp8u* spec, Zvp8u* init) {
        return p8::zvpsFFTInit_C_64fc(pp, m, kFlagNoScale, h, spec, init);
    }
    static ZvpStatus cFree(CSpec* s) { return p8::zvpsFFTFree_C_64fc(s); }
    static ZvpStatus cFwd(const double* s, double* d, const CSpec* spec, Zvp8u* w) {
        return p8::zvpsFFTFwd_CToC_64fc(reinterpret_cast<const C*>(s), reinterpret_cast<C*>(d), spec, w);
    }
    static ZvpStatus cInv(double* d, const CSpec* spec, Zvp8u* w) {
        return p8::zvpsFFTInv_CToC_64fc_I(reinterpret_cast<C*>(d), spec, w);
    }
    static double scaleOf(const RealSpec* s) { return s->scale64; }
};

// The half-length complex transform is a fixed small kernel up to this order.
constexpr int kSmallComplexMax = 6;

bool validFlag(int flag) { return flag == 1 || flag == 2 || flag == 4 || flag == 8; }

// Bytes reserved for the recombination table of order m.
template <class T>
std::int64_t recBytes(int m) {
    const std::int64_t n = std::int64_t(1) << m;
    if (m < fftr::kSplitOrder) return (Real<T>::coefBytesPerK * (n / 4) + 126) & ~std::int64_t(127);
    return (16 * (std::int64_t(1) << (m - 12)) + 16510) & ~std::int64_t(127);
}

struct RealSizes {
    std::int64_t spec, init, work;
};

// Sizes of a valid order; the complex sizes come from the complex size query.
template <class T>
ZvpStatus realSizes(int m, ZvpHintAlgorithm hint, RealSizes& z) {
    if (m <= Real<T>::smallMax) {
        z = {152, 0, 0};
        return zvpStsNoErr;
    }
    z = {recBytes<T>(m) + 192, 0, 0};
    if (m <= kSmallComplexMax) return zvpStsNoErr;
    int cs = 0, ci = 0, cw = 0;
    ZVP_RETURN_IF_ERROR(Real<T>::cSize(m - 1, hint, &cs, &ci, &cw));
    z.spec += cs;
    z.init = m <= 10 ? 0 : ci + fft::baseArea(Real<T>::prec, m) + 64;
    z.work = cw > 0 ? cw + 64 : 0;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus getSize(int order, int flag, ZvpHintAlgorithm hint, int* pSpec, int* pInit, int* pWork) {
    if (unsigned(order) > 30u) return zvpStsFftOrderErr;
    ZVP_CHECK_PTRS(pSpec, pInit, pWork);
    if (!validFlag(flag)) return zvpStsFftFlagErr;
    if (order > Real<T>::maxOrder) return zvpStsFftOrderErr;
    RealSizes z;
    ZVP_RETURN_IF_ERROR(realSizes<T>(order, hint, z));
    *pSpec = int(z.spec);
    *pInit = int(z.init);
    *pWork = int(z.work);
    return zvpStsNoErr;
}

// ---- tables -----------------------------------------------------------------

// Coefficients of k = 1 .. N/4 from the base table: a_k = 0.5 base[N/4 - k],
// b_k = 0.5 - 0.5 base[k], laid out as the recombination pass reads them.
void recTable(float* t, const float* base, int m) {
    const int q = 1 << (m - 2);
    for (int k = 1; k <= q; ++k) {
        const float a = 0.5f * base[q - k];
        const float b = 0.5f - 0.5f * base[k];
        float* e = t + 8 * ((k - 1) / 2) + ((k - 1) & 1) * 2;
        e[0] = b;
        e[1] = b;
        e[4] = a;
        e[5] = -a;
    }
}

void recTable(double* t, const double* base, int m) {
    const int q = 1 << (m - 2);
    for (int k = 1; k <= q; ++k) {
        const double a = 0.5 * base[q - k];
        const double b = 0.5 - 0.5 * base[k];
        double* e = t + 4 * (k - 1);
        e[0] = b;
        e[1] = b;
        e[2] = a;
        e[3] = -a;
    }
}

// Two-level tables (layouts in psfftrk.cpp): 16384 bytes of fine
// coefficients of the angles 2 pi j/N, j = 1 .. 1024, then per 1024 k the
// (cos, sin) of the coarse angle 2 pi 1024 i/N. Every value is evaluated in
// double precision from its own angle.
void splitTable(float* t, int m) {
    const double step = 6.283185307179586 / double(std::int64_t(1) << m);
    for (int q = 0; q < fftr::kFineEntries / 2; ++q) {
        float* e = t + 8 * q;
        for (int h = 0; h < 2; ++h) {
            const int j = 2 * q + 1 + h;
            const float fr = float(0.5 * std::cos(j * step)), fi = float(0.5 * std::sin(j * step));
            e[2 * h] = fr;
            e[2 * h + 1] = -fr;
            e[4 + 2 * h] = fi;
            e[4 + 2 * h + 1] = -fi;
        }
    }
    float* coarse = t + fftr::kFineBytes / sizeof(float);
    for (int i = 0; i < (1 << (m - 12)); ++i) {
        const double a = double(i) * fftr::kFineEntries * step;
        coarse[4 * i] = float(std::cos(a));
        coarse[4 * i + 1] = float(std::sin(a));
        coarse[4 * i + 2] = 0.0f;
        coarse[4 * i + 3] = 0.0f;
    }
}

void splitTable(double* t, int m) {
    const double step = 6.283185307179586 / double(std::int64_t(1) << m);
    for (int j = 1; j <= fftr::kFineEntries; ++j) {
        t[2 * (j - 1)] = 0.5 * std::cos(j * step);
        t[2 * (j - 1) + 1] = 0.5 * std::sin(j * step);
    }
    double* coarse = t + fftr::kFineBytes / sizeof(double);
    for (int i = 0; i < (1 << (m - 12)); ++i) {
        const double a = double(i) * fftr::kFineEntries * step;
        coarse[2 * i] = std::cos(a);
        coarse[2 * i + 1] = std::sin(a);
    }
}

// ---- specification lifecycle --------------------------------------------------

template <class T>
RealSpec* rec(typename Real<T>::Spec* s) {
    return reinterpret_cast<RealSpec*>(s);
}
template <class T>
const RealSpec* rec(const typename Real<T>::Spec* s) {
    return reinterpret_cast<const RealSpec*>(s);
}

template <class T>
typename Real<T>::CSpec* embedded(const RealSpec* r) {
    auto* p = reinterpret_cast<const Zvp8u*>(r) + r->cplxOffset;
    return reinterpret_cast<typename Real<T>::CSpec*>(const_cast<Zvp8u*>(p));
}

template <class T>
ZvpStatus init(typename Real<T>::Spec** ppSpec, int order, int flag, ZvpHintAlgorithm hint,
               Zvp8u* pMemSpec, Zvp8u* pMemInit) {
    ZVP_CHECK_PTRS(ppSpec);
    if (unsigned(order) > 30u || order > Real<T>::maxOrder) return zvpStsFftOrderErr;
    ZVP_CHECK_PTRS(pMemSpec);
    Zvp8u* const at = alignUp(pMemSpec, 64);
    auto* r = reinterpret_cast<RealSpec*>(at);
    std::memset(r, 0, sizeof(RealSpec));
    r->order = order;
    r->hint = std::int32_t(hint);
    // The tag is stored last, so a record that fails anywhere below (an
    // unknown flag included) stays tagged 0 and unusable.
    if (!validFlag(flag)) return zvpStsFftFlagErr;
    const double n = double(std::int64_t(1) << order);
    r->fwdScaled = (flag == 1 || flag == 4) ? 1 : 0;
    r->invScaled = (flag == 2 || flag == 4) ? 1 : 0;
    if (flag == 1 || flag == 2) {
        r->scale = 1.0f / float(n);
        r->scale64 = 1.0 / n;
    } else if (flag == 4) {
        r->scale = float(1.0 / std::sqrt(n));
        r->scale64 = 1.0 / std::sqrt(n);
    }
    if (order > Real<T>::smallMax) {
        if (order > 10 && pMemInit == nullptr) return zvpStsNullPtrErr;
        r->recOffset = fftr::kHeaderBytes;
        T* const table = reinterpret_cast<T*>(at + r->recOffset);
        if (order >= fftr::kSplitOrder) {
            r->splitTable = 1;
            splitTable(table, order);
        } else {
            // Up to order 10 the base table fits on the stack; above it goes
            // into the init memory, ahead of what the complex part needs.
            T small[257];
            T* base = order <= 10 ? small : reinterpret_cast<T*>(alignUp(pMemInit, 64));
            fft::realBase(base, order);
            recTable(table, base, order);
        }
        if (order > kSmallComplexMax) {
            // The complex record gets the rest of the memory, starting at a
            // 64-byte boundary right after the table.
            Zvp8u* const cMem = at + fftr::kHeaderBytes + recBytes<T>(order);
            Zvp8u* cInit = nullptr;
            if (order > 10)
                cInit = alignUp(pMemInit, 64) + fft::baseArea(Real<T>::prec, order);
            typename Real<T>::CSpec* cs = nullptr;
            ZVP_RETURN_IF_ERROR(Real<T>::cInit(&cs, order - 1, hint, cMem, cInit));
            r->cplxOffset = std::int32_t(reinterpret_cast<Zvp8u*>(cs) - at);
            int s = 0, i = 0, w = 0;
            ZVP_RETURN_IF_ERROR(Real<T>::cSize(order - 1, hint, &s, &i, &w));
            r->workSize = w;
        }
    }
    r->tag = Real<T>::tag;
    *ppSpec = reinterpret_cast<typename Real<T>::Spec*>(r);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus initAlloc(typename Real<T>::Spec** ppSpec, int order, int flag, ZvpHintAlgorithm hint) {
    ZVP_CHECK_PTRS(ppSpec);
    int specBytes = 0, initBytes = 0, workBytes = 0;
    ZVP_RETURN_IF_ERROR(getSize<T>(order, flag, hint, &specBytes, &initBytes, &workBytes));
    Zvp8u* const block = p8::zvpsMalloc_8u(specBytes);
    if (block == nullptr) return zvpStsMemAllocErr;
    WorkBuffer initMem;
    if (initBytes > 0 && !initMem.allocate(initBytes)) {
        p8::zvpsFree(block);
        return zvpStsMemAllocErr;
    }
    typename Real<T>::Spec* spec = nullptr;
    const ZvpStatus st = init<T>(&spec, order, flag, hint, block, initMem.get());
    if (st < 0) {
        p8::zvpsFree(block);
        return st;
    }
    RealSpec* r = rec<T>(spec);
    r->allocated = 1;
    r->base = block;
    *ppSpec = spec;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus freeSpec(typename Real<T>::Spec* pSpec) {
    ZVP_CHECK_PTRS(pSpec);
    RealSpec* r = rec<T>(pSpec);
    if (r->tag != Real<T>::tag) return zvpStsContextMatchErr;
    if (r->cplxOffset != 0) Real<T>::cFree(embedded<T>(r));
    r->tag = 0;
    if (r->allocated) p8::zvpsFree(r->base);
    return zvpStsNoErr;
}

template <class T>
ZvpStatus getBufSize(const typename Real<T>::Spec* pSpec, int* pSize) {
    ZVP_CHECK_PTRS(pSpec, pSize);
    const RealSpec* r = rec<T>(pSpec);
    if (r->tag != Real<T>::tag) return zvpStsContextMatchErr;
    *pSize = r->workSize > 0 ? r->workSize + 64 : 0;
    return zvpStsNoErr;
}

// ---- transforms -----------------------------------------------------------------

// Position of the value at X[N/2] in each layout of N values.
int nyquistIndex(Layout l, int n) {
    return l == Layout::Pack ? n - 1 : l == Layout::Perm ? 1 : n;
}

// Writes X[0 .. N/2] (pairs) in a layout, times f when scaled.
template <class T>
void storeLayout(const T* X, T* d, int n, Layout l, bool scaled, T f) {
    auto v = [&](T x) { return scaled ? x * f : x; };
    if (l == Layout::Ccs) {
        const int count = n % 2 ? n + 1 : n + 2;
        for (int i = 0; i < count; ++i) d[i] = v(X[i]);
        return;
    }
    d[0] = v(X[0]);
    const int off = (l == Layout::Pack || n % 2) ? -1 : 0;
    for (int k = 1; 2 * k < n; ++k) {
        d[2 * k + off] = v(X[2 * k]);
        d[2 * k + off + 1] = v(X[2 * k + 1]);
    }
    if (n % 2 == 0 && n > 1) d[nyquistIndex(l, n)] = v(X[n]);
}

// Reads X[0 .. N/2] as pairs from a layout.
template <class T>
void loadLayout(const T* s, T* X, int n, Layout l) {
    if (l == Layout::Ccs) {
        const int count = n % 2 ? n + 1 : n + 2;
        for (int i = 0; i < count; ++i) X[i] = s[i];
        return;
    }
    X[0] = s[0];
    X[1] = T(0);
    const int off = (l == Layout::Pack || n % 2) ? -1 : 0;
    for (int k = 1; 2 * k < n; ++k) {
        X[2 * k] = s[2 * k + off];
        X[2 * k + 1] = s[2 * k + off + 1];
    }
    if (n > 1) {
        X[n] = s[nyquistIndex(l, n)];
        X[n + 1] = T(0);
    }
}

// The work memory of one call: the caller's (rounded up to 64 bytes), or an
// allocation released when the call returns.
struct CallWork {
    WorkBuffer own;
    Zvp8u* p = nullptr;
    bool take(const RealSpec* r, Zvp8u* caller) {
        if (r->workSize <= 0) return true;
        if (caller) {
            p = alignUp(caller, 64);
            return true;
        }
        if (!own.allocate(r->workSize)) return false;
        p = alignUp(own.get(), 64);
        return true;
    }
};

template <class T>
ZvpStatus forward(const T* src, T* dst, const typename Real<T>::Spec* pSpec, Zvp8u* pBuffer,
                  Layout l) {
    ZVP_CHECK_PTRS(pSpec);
    const RealSpec* r = rec<T>(pSpec);
    if (r->tag != Real<T>::tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(src, dst);
    const int m = r->order, n = 1 << m;
    const bool scaled = r->fwdScaled != 0;
    const T f = scaled ? Real<T>::scaleOf(r) : T(1);
    if (m <= Real<T>::smallMax) {
        // The small kernels read all of x before writing X.
        if (l == Layout::Ccs && !scaled) {
            fftr::smallRealForward(src, dst, m);
            return zvpStsNoErr;
        }
        T X[2 * 32 + 2];
        fftr::smallRealForward(src, X, m);
        storeLayout(X, dst, n, l, scaled, f);
        return zvpStsNoErr;
    }
    if (m <= kSmallComplexMax) {
        fft::smallFft(src, dst, m - 1, -1, false, T(0));
    } else {
        CallWork w;
        if (!w.take(r, pBuffer)) return zvpStsMemAllocErr;
        ZVP_RETURN_IF_ERROR(Real<T>::cFwd(src, dst, embedded<T>(r), w.p));
    }
    const T z0r = dst[0], z0i = dst[1];
    const int outShift = l == Layout::Pack ? -1 : 0;
    const auto* base = reinterpret_cast<const Zvp8u*>(r);
    if (r->splitTable) {
        const auto* fine = reinterpret_cast<const T*>(base + r->recOffset);
        fftr::recombineForwardSplit(dst, dst, n, 0, outShift, fine,
                                    fine + fftr::kFineBytes / sizeof(T), f, scaled);
    } else {
        fftr::recombineForward(dst, dst, n, 0, outShift, reinterpret_cast<const T*>(base + r->recOffset),
                               f, scaled);
    }
    const T x0 = scaled ? (z0r + z0i) * f : z0r + z0i;
    const T xh = scaled ? (z0r - z0i) * f : z0r - z0i;
    dst[0] = x0;
    if (l == Layout::Ccs) {
        dst[1] = T(0);
        dst[n + 1] = T(0);
    }
    dst[nyquistIndex(l, n)] = xh;
    return zvpStsNoErr;
}

template <class T>
ZvpStatus inverse(const T* src, T* dst, const typename Real<T>::Spec* pSpec, Zvp8u* pBuffer,
                  Layout l) {
    ZVP_CHECK_PTRS(pSpec);
    const RealSpec* r = rec<T>(pSpec);
    if (r->tag != Real<T>::tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(src, dst);
    const int m = r->order, n = 1 << m;
    const bool scaled = r->invScaled != 0;
    const T f = scaled ? Real<T>::scaleOf(r) : T(1);
    if (m <= Real<T>::smallMax) {
        T X[2 * 32 + 2], x[64];
        loadLayout(src, X, n, l);
        fftr::smallRealInverse(X, x, m);
        for (int i = 0; i < n; ++i) dst[i] = scaled ? x[i] * f : x[i];
        return zvpStsNoErr;
    }
    CallWork w;
    if (m > kSmallComplexMax && !w.take(r, pBuffer)) return zvpStsMemAllocErr;
    const T x0 = src[0], xh = src[nyquistIndex(l, n)];
    const int inShift = l == Layout::Pack ? -1 : 0;
    const auto* base = reinterpret_cast<const Zvp8u*>(r);
    if (r->splitTable) {
        const auto* fine = reinterpret_cast<const T*>(base + r->recOffset);
        fftr::recombineInverseSplit(src, dst, n, inShift, 0, fine,
                                    fine + fftr::kFineBytes / sizeof(T), T(2) * f);
    } else {
        fftr::recombineInverse(src, dst, n, inShift, 0, reinterpret_cast<const T*>(base + r->recOffset),
                               T(2) * f);
    }
    dst[0] = scaled ? (x0 + xh) * f : x0 + xh;
    dst[1] = scaled ? (x0 - xh) * f : x0 - xh;
    if (m <= kSmallComplexMax) {
        fft::smallFft(dst, dst, m - 1, +1, false, T(0));
        return zvpStsNoErr;
    }
    return Real<T>::cInv(dst, embedded<T>(r), w.p);
}

}  // namespace

// ---- exports --------------------------------------------------------------------

#define ZVP_FFT_REAL(T, TT)                                                                        \
    ZvpStatus zvpsFFTGetSize_R_##TT(int order, int flag, ZvpHintAlgorithm hint, int* pSpecSize,    \
                                    int* pSpecBufferSize, int* pBufferSize) {                      \
        return getSize<T>(order, flag, hint, pSpecSize, pSpecBufferSize, pBufferSize);             \
    }                                                                                              \
    ZvpStatus zvpsFFTInit_R_##TT(ZvpsFFTSpec_R_##TT** ppFFTSpec, int order, int flag,              \
                                 ZvpHintAlgorithm hint, Zvp8u* pMemSpec, Zvp8u* pMemInit) {         \
        return init<T>(ppFFTSpec, order, flag, hint, pMemSpec, pMemInit);                          \
    }                                                                                              \
    ZvpStatus zvpsFFTInitAlloc_R_##TT(ZvpsFFTSpec_R_##TT** ppFFTSpec, int order, int flag,         \
                                      ZvpHintAlgorithm hint) {                                     \
        return initAlloc<T>(ppFFTSpec, order, flag, hint);                                         \
    }                                                                                              \
    ZvpStatus zvpsFFTFree_R_##TT(ZvpsFFTSpec_R_##TT* pFFTSpec) { return freeSpec<T>(pFFTSpec); }   \
    ZvpStatus zvpsFFTGetBufSize_R_##TT(const ZvpsFFTSpec_R_##TT* pFFTSpec, int* pBufferSize) {     \
        return getBufSize<T>(pFFTSpec, pBufferSize);                                               \
    }                                                                                              \
    ZvpStatus zvpsFFTFwd_RToCCS_##TT(const Zvp##TT* pSrc, Zvp##TT* pDst,                           \
                                     const ZvpsFFTSpec_R_##TT* pFFTSpec, Zvp8u* pBuffer) {         \
        return forward<T>(pSrc, pDst, pFFTSpec, pBuffer, Layout::Ccs);                             \
    }                                                                                              \
    ZvpStatus zvpsFFTFwd_RToPack_##TT(const Zvp##TT* pSrc, Zvp##TT* pDst,                          \
                                      const ZvpsFFTSpec_R_##TT* pFFTSpec, Zvp8u* pBuffer) {        \
        return forward<T>(pSrc, pDst, pFFTSpec, pBuffer, Layout::Pack);                            \
    }                                                                                              \
    ZvpStatus zvpsFFTFwd_RToPerm_##TT(const Zvp##TT* pSrc, Zvp##TT* pDst,                          \
                                      const ZvpsFFTSpec_R_##TT* pFFTSpec, Zvp8u* pBuffer) {        \
        return forward<T>(pSrc, pDst, pFFTSpec, pBuffer, Layout::Perm);                            \
    }                                                                                              \
    ZvpStatus zvpsFFTInv_CCSToR_##TT(const Zvp##TT* pSrc, Zvp##TT* pDst,                           \
                                     const ZvpsFFTSpec_R_##TT* pFFTSpec, Zvp8u* pBuffer) {         \
        return inverse<T>(pSrc, pDst, pFFTSpec, pBuffer, Layout::Ccs);                             \
    }                                                                                              \
    ZvpStatus zvpsFFTInv_PackToR_##TT(const Zvp##TT* pSrc, Zvp##TT* pDst,                          \
                                      const ZvpsFFTSpec_R_##TT* pFFTSpec, Zvp8u* pBuffer) {        \
        return inverse<T>(pSrc, pDst, pFFTSpec, pBuffer, Layout::Pack);                            \
    }                                                                                              \
    ZvpStatus zvpsFFTInv_PermToR_##TT(const Zvp##TT* pSrc, Zvp##TT* pDst,                          \
                                      const ZvpsFFTSpec_R_##TT* pFFTSpec, Zvp8u* pBuffer) {        \
        return inverse<T>(pSrc, pDst, pFFTSpec, pBuffer, Layout::Perm);                            \
    }                                                                                              \
    ZvpStatus zvpsFFTFwd_RToCCS_##TT##_I(Zvp##TT* pSrcDst, const ZvpsFFTSpec_R_##TT* pFFTSpec,     \
                                         Zvp8u* pBuffer) {                                         \
        return forward<T>(pSrcDst, pSrcDst, pFFTSpec, pBuffer, Layout::Ccs);                       \
    }                                                                                              \
    ZvpStatus zvpsFFTFwd_RToPack_##TT##_I(Zvp##TT* pSrcDst, const ZvpsFFTSpec_R_##TT* pFFTSpec,    \
                                          Zvp8u* pBuffer) {                                        \
        return forward<T>(pSrcDst, pSrcDst, pFFTSpec, pBuffer, Layout::Pack);                      \
    }                                                                                              \
    ZvpStatus zvpsFFTFwd_RToPerm_##TT##_I(Zvp##TT* pSrcDst, const ZvpsFFTSpec_R_##TT* pFFTSpec,    \
                                          Zvp8u* pBuffer) {                                        \
        return forward<T>(pSrcDst, pSrcDst, pFFTSpec, pBuffer, Layout::Perm);                      \
    }                                                                                              \
    ZvpStatus zvpsFFTInv_CCSToR_##TT##_I(Zvp##TT* pSrcDst, const ZvpsFFTSpec_R_##TT* pFFTSpec,     \
                                         Zvp8u* pBuffer) {                                         \
        return inverse<T>(pSrcDst, pSrcDst, pFFTSpec, pBuffer, Layout::Ccs);                       \
    }                                                                                              \
    ZvpStatus zvpsFFTInv_PackToR_##TT##_I(Zvp##TT* pSrcDst, const ZvpsFFTSpec_R_##TT* pFFTSpec,    \
                                          Zvp8u* pBuffer) {                                        \
        return inverse<T>(pSrcDst, pSrcDst, pFFTSpec, pBuffer, Layout::Pack);                      \
    }                                                                                              \
    ZvpStatus zvpsFFTInv_PermToR_##TT##_I(Zvp##TT* pSrcDst, const ZvpsFFTSpec_R_##TT* pFFTSpec,    \
                                          Zvp8u* pBuffer) {                                        \
        return inverse<T>(pSrcDst, pSrcDst, pFFTSpec, pBuffer, Layout::Perm);                      \
    }

ZVP_FFT_REAL(float, 32f)
ZVP_FFT_REAL(double, 64f)
#undef ZVP_FFT_REAL

}  // namespace zvp::p8

// Forward and inverse complex FFTs of the interleaved (32fc, 64fc) and split
// (32f, 64f) types: argument checks, work memory, and the choice between the
// fixed small kernels, the radix-4 engine and the blocked large scheme.
#include <cstdint>

#include "check.h"
#include "fftengine.h"
#include "fftsmall.h"
#include "fftspec.h"
#include "p8/fft.h"
#include "workbuf.h"

namespace zvp::ZVP_LEVEL::fft {
namespace {

template <class T>
struct Elem;  // whole interleaved complex sample as a plain bit pattern
template <>
struct Elem<float> {
    using type = std::uint64_t;
};
template <>
struct Elem<double> {
    struct type {
        std::uint64_t a, b;
    };
};
template <class T>
struct Word;  // one real value as a plain bit pattern
template <>
struct Word<float> {
    using type = std::uint32_t;
};
template <>
struct Word<double> {
    using type = std::uint64_t;
};

template <class T>
constexpr Prec precOf() {
    return sizeof(T) == 4 ? Prec::Single : Prec::Double;
}
// Out of place, from this order on the permutation copies first and swaps
// in place (source chunks of 64 MiB).
template <class T>
constexpr int copyFromOrder() {
    return sizeof(T) == 4 ? 23 : 22;
}

// Interleaved complex source and destination.
template <class T>
struct Inter {
    using V = Vec<T>;
    const T* s;
    T* d;
    InterIO<V> in() const { return {const_cast<T*>(s)}; }
    InterIO<V> out() const { return {d}; }
    InterIO<V> raw() const { return {d}; }
    template <bool A = true>
    GroupBuf<V, A> group() const {
        return groupView<V, A>(d);
    }
    bool inPlace() const { return s == d; }
    bool aligned() const { return (reinterpret_cast<std::uintptr_t>(d) & 15) == 0; }
    void bitReverse(int m, const std::int32_t* partner, const std::uint8_t* rev6, void* buf) const {
        using E = typename Elem<T>::type;
        fft::bitReverse(reinterpret_cast<const E*>(s), reinterpret_cast<E*>(d), m,
                        copyFromOrder<T>(), partner, rev6, static_cast<E*>(buf));
    }
    void small(int order, int sign, bool scaled, T scale) const {
        smallFft<T>(s, d, order, sign, scaled, scale);
    }
};

// Split arrays: real parts and imaginary parts apart.
template <class T>
struct Split {
    using V = Vec<T>;
    const T* sr;
    const T* si;
    T* dr;
    T* di;
    SplitIO<V, false> in() const { return {const_cast<T*>(sr), const_cast<T*>(si)}; }
    SplitIO<V, false> out() const { return {dr, di}; }
    SplitIO<V, false> raw() const { return out(); }
    template <bool A = true>
    SplitIO<V, A> group() const {
        return {dr, di};
    }
    bool inPlace() const { return sr == dr || si == di || sr == di || si == dr; }
    bool aligned() const {
        return ((reinterpret_cast<std::uintptr_t>(dr) | reinterpret_cast<std::uintptr_t>(di)) &
                15) == 0;
    }
    void bitReverse(int m, const std::int32_t* partner, const std::uint8_t* rev6, void* buf) const {
        using E = typename Word<T>::type;
        fft::bitReverse(reinterpret_cast<const E*>(sr), reinterpret_cast<E*>(dr), m,
                        copyFromOrder<T>(), partner, rev6, static_cast<E*>(buf));
        fft::bitReverse(reinterpret_cast<const E*>(si), reinterpret_cast<E*>(di), m,
                        copyFromOrder<T>(), partner, rev6, static_cast<E*>(buf));
    }
    void small(int order, int sign, bool scaled, T scale) const {
        const int n = 1 << order;
        alignas(16) T tmp[64];
        for (int i = 0; i < n; ++i) {
            tmp[2 * i] = sr[i];
            tmp[2 * i + 1] = si[i];
        }
        smallFft<T>(tmp, tmp, order, sign, scaled, scale);
        for (int i = 0; i < n; ++i) {
            dr[i] = tmp[2 * i];
            di[i] = tmp[2 * i + 1];
        }
    }
};

template <class T>
const T* table(const SpecHeader* h, std::int32_t off) {
    return reinterpret_cast<const T*>(reinterpret_cast<const unsigned char*>(h) + off);
}

// Large scheme: bit reversal by tiles into the destination, the rows in
// place, then the column pass.
template <bool INV, bool A, class D, class T>
void runLarge(const SpecHeader* h, const D& d, T* work, bool scaled, T scale) {
    using V = typename D::V;
    constexpr int W = V::N;
    const int m = h->order, b = h->blkOrder, r = m - b;
    const std::size_t R = std::size_t(1) << r, C = std::size_t(1) << b;
    const auto raw = d.raw();
    const auto g = d.template group<A>();
    // At the first large order, out of place, the permutation is the
    // placement of one first pass over the whole transform, read straight
    // from the source; the rows then continue from their second pass.
    const bool placed = h->placeOff != 0 && !d.inPlace();
    if (placed)
        firstPassRev<V, INV, 4>(d.in(), g, std::size_t(1) << m, table<std::int32_t>(h, h->placeOff));
    else
        d.bitReverse(m, table<std::int32_t>(h, h->bitRevOff),
                     table<std::uint8_t>(h, h->tileRevOff), work);
    for (std::size_t row = 0; row < C; ++row) {
        const std::ptrdiff_t og = std::ptrdiff_t(row * R / W);
        if (placed) {
            enginePasses<V, INV, false>(g.at(og), g.at(og), r, table<T>(h, h->twdOff), T(1));
        } else if (h->stepTwdOff == 0) {
            engineNoRev<V, INV>(raw.at(og), g.at(og), g.at(og), r, table<T>(h, h->twdOff), false,
                                T(1));
        } else {
            // Rows of 2^18 points or more: sixteen sub-rows and a column pass.
            const int r2 = r - 4;
            const std::size_t R2 = std::size_t(1) << r2;
            for (std::size_t sub = 0; sub < 16; ++sub) {
                const std::ptrdiff_t o2 = og + std::ptrdiff_t(sub * R2 / W);
                engineNoRev<V, INV>(raw.at(o2), g.at(o2), g.at(o2), r2,
                                    table<T>(h, h->stepTwdOff), false, T(1));
            }
            columnPass<V, INV, false>(g.at(og), g.at(og), 4, R2, table<T>(h, h->stepColOff), work,
                                      T(1));
        }
    }
    if (scaled)
        columnPass<V, INV, true>(g, d.out(), b, R, table<T>(h, h->colTwdOff), work, scale);
    else
        columnPass<V, INV, false>(g, d.out(), b, R, table<T>(h, h->colTwdOff), work, scale);
}

template <bool INV, class D>
ZvpStatus transform(const SpecHeader* h, const D& d, Zvp8u* pBuffer) {
    using V = typename D::V;
    using T = typename V::type;
    constexpr Prec P = precOf<T>();
    const int m = h->order;
    const bool scaled = (INV ? h->invScaled : h->fwdScaled) != 0;
    const T scale = sizeof(T) == 4 ? T(h->scale) : T(h->scale64);
    if (m <= 5) {
        d.small(m, INV ? 1 : -1, scaled, scale);
        return zvpStsNoErr;
    }
    WorkBuffer own;
    T* work = nullptr;
    if (h->workSize > 0) {
        if (pBuffer) {
            work = reinterpret_cast<T*>(alignUp(pBuffer, 64));
        } else {
            // Same amount a caller is told to provide, so the aligned part holds
            // the work size whatever the allocator's alignment.
            if (!own.allocate(h->workSize + 64)) return zvpStsMemAllocErr;
            work = reinterpret_cast<T*>(alignUp(own.get(), 64));
        }
    }
    if (m >= largeFrom(P)) {
        if (d.aligned()) runLarge<INV, true>(h, d, work, scaled, scale);
        else runLarge<INV, false>(h, d, work, scaled, scale);
    } else {
        if (!d.inPlace() && d.aligned())
            engineRev<V, INV>(d.in(), d.group(), d.out(), m, table<std::int32_t>(h, h->bitRevOff),
                              table<T>(h, h->twdOff), scaled, scale);
        else
            engineRev<V, INV>(d.in(), groupView<V>(work), d.out(), m,
                              table<std::int32_t>(h, h->bitRevOff), table<T>(h, h->twdOff), scaled,
                              scale);
    }
    return zvpStsNoErr;
}

template <bool INV, class T, class Spec>
ZvpStatus interleaved(std::int32_t tag, const T* pSrc, T* pDst, const Spec* pSpec,
                      Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSpec);
    const auto* h = reinterpret_cast<const SpecHeader*>(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(pSrc, pDst);
    return transform<INV>(h, Inter<T>{pSrc, pDst}, pBuffer);
}

template <bool INV, class T, class Spec>
ZvpStatus split(std::int32_t tag, const T* pSrcRe, const T* pSrcIm, T* pDstRe, T* pDstIm,
                const Spec* pSpec, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pSpec);
    const auto* h = reinterpret_cast<const SpecHeader*>(pSpec);
    if (h->tag != tag) return zvpStsContextMatchErr;
    ZVP_CHECK_PTRS(pSrcRe, pSrcIm, pDstRe, pDstIm);
    return transform<INV>(h, Split<T>{pSrcRe, pSrcIm, pDstRe, pDstIm}, pBuffer);
}

}  // namespace
}  // namespace zvp::ZVP_LEVEL::fft

namespace zvp::p8 {

#define ZVP_FFT_CPLX(DIR, INV, SUF, T, TAG)                                                  \
    ZvpStatus zvpsFFT##DIR##_CToC_##SUF(const Zvp##SUF* pSrc, Zvp##SUF* pDst,                \
                                        const ZvpsFFTSpec_C_##SUF* pSpec, Zvp8u* pBuffer) {  \
        return fft::interleaved<INV>(TAG, reinterpret_cast<const T*>(pSrc),                  \
                                     reinterpret_cast<T*>(pDst), pSpec, pBuffer);            \
    }                                                                                        \
    ZvpStatus zvpsFFT##DIR##_CToC_##SUF##_I(Zvp##SUF* pSrcDst,                               \
                                            const ZvpsFFTSpec_C_##SUF* pSpec,                \
                                            Zvp8u* pBuffer) {                                \
        return zvp::p8::zvpsFFT##DIR##_CToC_##SUF(pSrcDst, pSrcDst, pSpec, pBuffer);                \
    }

#define ZVP_FFT_SPLIT(DIR, INV, SUF, T, TAG)                                                 \
    ZvpStatus zvpsFFT##DIR##_CToC_##SUF(const T* pSrcRe, const T* pSrcIm, T* pDstRe,         \
                                        T* pDstIm, const ZvpsFFTSpec_C_##SUF* pSpec,         \
                                        Zvp8u* pBuffer) {                                    \
        return fft::split<INV>(TAG, pSrcRe, pSrcIm, pDstRe, pDstIm, pSpec, pBuffer);         \
    }

ZVP_FFT_CPLX(Fwd, false, 32fc, float, fft::kTagC32fc)
ZVP_FFT_CPLX(Inv, true, 32fc, float, fft::kTagC32fc)
ZVP_FFT_CPLX(Fwd, false, 64fc, double, fft::kTagC64fc)
ZVP_FFT_CPLX(Inv, true, 64fc, double, fft::kTagC64fc)
ZVP_FFT_SPLIT(Fwd, false, 32f, Zvp32f, fft::kTagC32f)
ZVP_FFT_SPLIT(Inv, true, 32f, Zvp32f, fft::kTagC32f)
ZVP_FFT_SPLIT(Fwd, false, 64f, Zvp64f, fft::kTagC64f)
ZVP_FFT_SPLIT(Inv, true, 64f, Zvp64f, fft::kTagC64f)

#undef ZVP_FFT_CPLX
#undef ZVP_FFT_SPLIT

}  // namespace zvp::p8

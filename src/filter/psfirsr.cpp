// FIRSR filters: a specification that holds only the prepared taps (and,
// for long taps, the spectrum of a fast-transform path), and filter calls
// that take the history in and give it back out.
//
// Specification record, at the caller's pointer rounded up to 64 bytes:
//   [header, 64 bytes | direct taps | FFT spec | FFT init | taps spectrum]
// each part starting on a 64-byte boundary; the transform parts only when
// the path was prepared. Work buffer, at its pointer rounded up to 64:
//   [history area | chunk area, 32768 bytes | FFT work | FFT segment]
// The history area holds 2 (L - 1) elements: the history followed by the
// first inputs for the outputs that straddle history and input, or, on the
// chunked path, the history followed by the chunk (which runs on into the
// chunk area).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "fftconv.h"
#include "fir_kernel.h"
#include "lane_float.h"
#include "p8/convert.h"
#include "p8/firsr.h"
#include "workbuf.h"

namespace zvp::p8 {
namespace {

constexpr long long kChunkBytes = 32768;
constexpr long long kIntMax = 0x7fffffffLL;

inline long long a64(long long v) { return (v + 63) & ~63LL; }

// ---- per-type facts

template <class E>
struct Kind;

template <>
struct Kind<float> {
    using Spec = ZvpsFIRSpec_32f;
    static constexpr std::uint32_t kTag = 0x46535231;  // "FSR1"
    static constexpr bool kFft = true;
    static constexpr int kAutoTaps = 64;
    static long long directBytes(long long L) { return 64 * ((L + 6) >> 2); }
    static long long histBytes(long long L) { return (8 * L + 55) & ~63LL; }
};
template <>
struct Kind<double> {
    using Spec = ZvpsFIRSpec_64f;
    static constexpr std::uint32_t kTag = 0x46535233;  // "FSR3"
    static constexpr bool kFft = true;
    static constexpr int kAutoTaps = 32;
    static long long directBytes(long long L) { return 8 * L; }
    static long long histBytes(long long L) { return (16 * L + 47) & ~63LL; }
};
template <>
struct Kind<Zvp32fc> {
    using Spec = ZvpsFIRSpec_32fc;
    static constexpr std::uint32_t kTag = 0x46535232;  // "FSR2"
    static constexpr bool kFft = true;
    static constexpr int kAutoTaps = 32;
    static long long directBytes(long long L) { return 8 * L; }
    static long long histBytes(long long L) { return (16 * L + 47) & ~63LL; }
};
template <>
struct Kind<Zvp64fc> {
    using Spec = ZvpsFIRSpec_64fc;
    static constexpr std::uint32_t kTag = 0x46535234;  // "FSR4"
    static constexpr bool kFft = false;
    static constexpr int kAutoTaps = 0;
    static long long directBytes(long long L) { return 16 * L; }
    static long long histBytes(long long L) { return (32 * L + 63) & ~63LL; }
};

// Calls from which an automatically prepared transform path is used.
constexpr int kAutoIters = 256;

// ---- the fast-transform path's sizes

struct FftSizes {
    int order = 0;  // 0: no transform path
    int s = 0, i = 0, w = 0;
    long long specPart = 0, bufPart = 0;
};

template <class E>
FftSizes fftSizes(long long L) {
    FftSizes z;
    if constexpr (Kind<E>::kFft) {
        const int k = std::max(fftconv::overlapOrder(L), std::min(fftconv::orderFor(8 * L, 1), 13));
        if (k > 30) return z;
        int s = 0, i = 0, w = 0;
        if (fftconv::Fft<E>::size(k, &s, &i, &w) < 0) return z;
        const long long m = (1LL << k) * (long long)sizeof(E);
        const long long sp = a64(Kind<E>::directBytes(L)) + a64(s) + a64(i) + a64(m) + a64(w);
        const long long bp = a64(w) + a64(m) + 64;
        if (sp + 127 > kIntMax || bp + Kind<E>::histBytes(L) + kChunkBytes > kIntMax) return z;
        z = {k, s, i, w, sp, bp};
    }
    return z;
}

// ---- the specification record

struct Header {
    std::uint32_t tag;
    std::int32_t tapsLen;
    std::int32_t layout;    // 32f: 1 staggered, 0 broadcast
    std::int32_t order;     // transform order, 0 without the path
    std::int32_t fftFrom;   // numIters from which the path is used
    std::int32_t workOff;   // FFT work and segment offsets in the buffer
    std::int32_t segOff;
    const void* fft;        // the transform's specification inside the record
    const void* spectrum;   // the taps' spectrum (Perm for real data)
};
static_assert(sizeof(Header) <= 64);

template <class E>
const E* directTaps(const Header* h) {
    return reinterpret_cast<const E*>(reinterpret_cast<const Zvp8u*>(h) + 64);
}

// ---- the input seen as one sequence: L - 1 history samples (zeros when
// there is none) followed by n inputs, zeros beyond.

template <class E>
struct Seq {
    const E* hist;  // L - 1 samples or null
    const E* src;
    std::ptrdiff_t l1, n;

    void copy(E* dst, long long off, long long cnt) const {
        long long t = 0;
        for (; t < cnt && off + t < l1; ++t) dst[t] = hist ? hist[off + t] : E{};
        const long long s0 = off + t - l1, avail = std::max(0LL, (long long)n - s0);
        const long long c = std::min(cnt - t, avail);
        if (c > 0) std::memcpy(static_cast<void*>(dst + t), src + s0, std::size_t(c) * sizeof(E));
        if (c > 0) t += c;
        if (t < cnt) std::memset(static_cast<void*>(dst + t), 0, std::size_t(cnt - t) * sizeof(E));
    }
    bool contiguous() const { return hist != nullptr && hist + l1 == src; }
};

template <class E>
ZvpStatus forward(E* d, const Header* h, Zvp8u* work) {
    using Sp = typename fftconv::Fft<E>::Spec;
    const Sp* sp = static_cast<const Sp*>(h->fft);
    if constexpr (mac::isComplex<E>) return fftconv::Fft<E>::fwdPack(d, sp, work);
    else return fftconv::Fft<E>::fwdPerm(d, sp, work);
}

// Overlap-save: each block of M = 2^order samples starting at output q
// gives the M - L + 1 outputs that did not wrap.
template <class E>
ZvpStatus fftRun(const Header* h, const Seq<E>& x, E* y, std::ptrdiff_t n, Zvp8u* buf) {
    if constexpr (Kind<E>::kFft) {
        using Sp = typename fftconv::Fft<E>::Spec;
        const Sp* sp = static_cast<const Sp*>(h->fft);
        const E* hs = static_cast<const E*>(h->spectrum);
        Zvp8u* work = buf + h->workOff;
        E* seg = reinterpret_cast<E*>(buf + h->segOff);
        const std::ptrdiff_t m = std::ptrdiff_t(1) << h->order;
        const std::ptrdiff_t l1 = h->tapsLen - 1, step = m - l1;
        for (std::ptrdiff_t q = 0; q < n; q += step) {
            x.copy(seg, q, m);
            ZVP_RETURN_IF_ERROR(forward(seg, h, work));
            if constexpr (mac::isComplex<E>) {
                fftconv::mulConjCplx<E, false>(hs, seg, m);
                ZVP_RETURN_IF_ERROR(fftconv::Fft<E>::invPack(seg, sp, work));
            } else {
                ZVP_RETURN_IF_ERROR(fftconv::Fft<E>::mulPerm(hs, seg, int(m)));
                ZVP_RETURN_IF_ERROR(fftconv::Fft<E>::invPerm(seg, sp, work));
            }
            const std::ptrdiff_t cnt = std::min(step, n - q);
            std::memcpy(static_cast<void*>(y + q), seg + l1, std::size_t(cnt) * sizeof(E));
        }
    }
    return zvpStsNoErr;
}

template <class E>
void kernel(const Header* h, const E* x, E* y, std::ptrdiff_t n) {
    const std::ptrdiff_t L = h->tapsLen;
    if constexpr (std::is_same_v<E, float>) {
        if (h->layout) firk::filterStaggered(directTaps<float>(h), L, x, y, n);
        else firk::filterBroadcast(directTaps<float>(h), L, x, y, n);
    } else {
        firk::filter(directTaps<E>(h), L, x, y, n);
    }
}

// The outputs that read history go through the front of the buffer, where
// history and first inputs are laid end to end; the rest read the input
// where it lies.
template <class E>
void directRun(const Header* h, const Seq<E>& x, E* y, std::ptrdiff_t n, Zvp8u* buf) {
    const std::ptrdiff_t l1 = x.l1;
    if (l1 == 0 || x.contiguous()) {
        kernel(h, l1 ? x.hist : x.src, y, n);
        return;
    }
    const std::ptrdiff_t head = std::min(n, l1);
    E* stage = reinterpret_cast<E*>(buf);
    x.copy(stage, 0, l1 + head);
    kernel(h, stage, y, head);
    if (n > head) kernel(h, x.src, y + head, n - head);
}

template <class E>
ZvpStatus run(const Header* h, const Seq<E>& x, E* y, std::ptrdiff_t n, Zvp8u* buf) {
    if (h->order > 0 && n >= h->fftFrom) return fftRun(h, x, y, n, buf);
    directRun(h, x, y, n, buf);
    return zvpStsNoErr;
}

template <class E>
const Header* headerOf(const void* spec) {
    return reinterpret_cast<const Header*>(alignUp(static_cast<const Zvp8u*>(spec), 64));
}

inline bool overlaps(const void* a, std::size_t an, const void* b, std::size_t bn) {
    const auto x = reinterpret_cast<std::uintptr_t>(a), y = reinterpret_cast<std::uintptr_t>(b);
    return x < y + bn && y < x + an;
}

// The last l1 samples of [history | n inputs] into dly.
template <class E>
void writeHistory(E* dly, const E* hist, const E* src, std::ptrdiff_t l1, std::ptrdiff_t n) {
    if (l1 == 0) return;
    if (n >= l1) {
        std::memmove(static_cast<void*>(dly), src + (n - l1), std::size_t(l1) * sizeof(E));
        return;
    }
    if (hist) std::memmove(static_cast<void*>(dly), hist + n, std::size_t(l1 - n) * sizeof(E));
    else std::memset(static_cast<void*>(dly), 0, std::size_t(l1 - n) * sizeof(E));
    std::memcpy(static_cast<void*>(dly + (l1 - n)), src, std::size_t(n) * sizeof(E));
}

template <class E>
ZvpStatus filterPlain(const E* src, E* dst, int numIters, const typename Kind<E>::Spec* pSpec, const E* dlySrc,
                      E* dlyDst, Zvp8u* pBuf) {
    ZVP_CHECK_PTRS(pSpec, src, dst, pBuf);
    ZVP_CHECK_LENS(numIters);
    const Header* h = headerOf<E>(pSpec);
    if (h->tag != Kind<E>::kTag) return zvpStsContextMatchErr;
    const std::ptrdiff_t n = numIters, l1 = h->tapsLen - 1;
    Zvp8u* buf = alignUp(pBuf, 64);
    const std::size_t nb = std::size_t(n) * sizeof(E);
    const bool alias = overlaps(dst, nb, src, nb) || (dlySrc && overlaps(dst, nb, dlySrc, std::size_t(l1) * sizeof(E)));
    if (!alias) {
        ZVP_RETURN_IF_ERROR(run(h, Seq<E>{dlySrc, src, l1, n}, dst, n, buf));
        if (dlyDst) writeHistory(dlyDst, dlySrc, src, l1, n);
        return zvpStsNoErr;
    }
    // Chunks: history and chunk end to end at the front of the buffer, the
    // outputs straight to pDst once the chunk's inputs are copied in.
    const std::ptrdiff_t chunk = kChunkBytes / sizeof(E);
    E* x = reinterpret_cast<E*>(buf);
    Seq<E>{dlySrc, src, l1, 0}.copy(x, 0, l1);
    for (std::ptrdiff_t c = 0; c < n; c += chunk) {
        const std::ptrdiff_t cnt = std::min(chunk, n - c);
        std::memcpy(static_cast<void*>(x + l1), src + c, std::size_t(cnt) * sizeof(E));
        ZVP_RETURN_IF_ERROR(run(h, Seq<E>{x, x + l1, l1, cnt}, dst + c, cnt, buf));
        std::memmove(static_cast<void*>(x), x + cnt, std::size_t(l1) * sizeof(E));
    }
    if (dlyDst && l1) std::memcpy(static_cast<void*>(dlyDst), x, std::size_t(l1) * sizeof(E));
    return zvpStsNoErr;
}

// Integer samples: converted into the buffer chunk by chunk (history first),
// filtered in E, converted back into pDst; the history returned is the
// exact integers, converted back from the buffer.
template <class E, class I, class In, class Out>
ZvpStatus filterConverted(const I* src, I* dst, int numIters, const typename Kind<E>::Spec* pSpec, const I* dlySrc,
                          I* dlyDst, Zvp8u* pBuf, In toE, Out fromE, int sf) {
    ZVP_CHECK_PTRS(pSpec, src, dst, pBuf);
    ZVP_CHECK_LENS(numIters);
    const Header* h = headerOf<E>(pSpec);
    if (h->tag != Kind<E>::kTag) return zvpStsContextMatchErr;
    const std::ptrdiff_t n = numIters, l1 = h->tapsLen - 1;
    Zvp8u* buf = alignUp(pBuf, 64);
    const std::ptrdiff_t chunk = kChunkBytes / sizeof(E) / 2;
    E* x = reinterpret_cast<E*>(buf);
    E* out = x + l1 + chunk;
    if (l1) {
        if (dlySrc) ZVP_RETURN_IF_ERROR(toE(dlySrc, x, int(l1)));
        else std::memset(static_cast<void*>(x), 0, std::size_t(l1) * sizeof(E));
    }
    for (std::ptrdiff_t c = 0; c < n; c += chunk) {
        const std::ptrdiff_t cnt = std::min(chunk, n - c);
        ZVP_RETURN_IF_ERROR(toE(src + c, x + l1, int(cnt)));
        ZVP_RETURN_IF_ERROR(run(h, Seq<E>{x, x + l1, l1, cnt}, out, cnt, buf));
        ZVP_RETURN_IF_ERROR(fromE(out, dst + c, int(cnt), sf));
        std::memmove(static_cast<void*>(x), x + cnt, std::size_t(l1) * sizeof(E));
    }
    if (dlyDst && l1) ZVP_RETURN_IF_ERROR(fromE(x, dlyDst, int(l1), 0));
    return zvpStsNoErr;
}

template <class E>
ZvpStatus init(const E* taps, int tapsLen, int alg, typename Kind<E>::Spec* pSpec) {
    ZVP_CHECK_LENS(tapsLen);
    ZVP_CHECK_PTRS(taps, pSpec);
    if (alg != zvpAlgAuto && alg != zvpAlgDirect && alg != zvpAlgFFT) return zvpStsAlgTypeErr;
    const std::ptrdiff_t L = tapsLen;
    Zvp8u* base = alignUp(reinterpret_cast<Zvp8u*>(pSpec), 64);
    Header* h = reinterpret_cast<Header*>(base);
    std::memset(h, 0, 64);
    h->tapsLen = tapsLen;
    E* dt = reinterpret_cast<E*>(base + 64);
    if constexpr (std::is_same_v<E, float>) {
        h->layout = L >= firk::kStaggerMin ? 1 : 0;
        if (h->layout) firk::prepareStaggered(taps, L, dt);
        else firk::prepareBroadcast(taps, L, dt);
    } else {
        firk::prepare(taps, L, dt);
    }
    const bool want = Kind<E>::kFft && (alg == zvpAlgFFT || (alg == zvpAlgAuto && L >= Kind<E>::kAutoTaps));
    if constexpr (Kind<E>::kFft) {
        const FftSizes z = want ? fftSizes<E>(L) : FftSizes{};
        if (z.order > 0) {
            Zvp8u* specMem = base + 64 + a64(Kind<E>::directBytes(L));
            Zvp8u* initMem = specMem + a64(z.s);
            E* spectrum = reinterpret_cast<E*>(initMem + a64(z.i));
            typename fftconv::Fft<E>::Spec* sp = nullptr;
            const std::ptrdiff_t m = std::ptrdiff_t(1) << z.order;
            // The taps' transform uses the work area behind the spectrum,
            // needed only here.
            Zvp8u* work = reinterpret_cast<Zvp8u*>(spectrum) + a64(m * (long long)sizeof(E));
            bool ok = fftconv::Fft<E>::init(&sp, z.order, specMem, initMem) >= 0;
            if (ok) {
                h->fft = sp;
                h->order = z.order;
                Seq<E>{nullptr, taps, 0, L}.copy(spectrum, 0, m);
                ok = forward(spectrum, h, work) >= 0;
            }
            if (ok) {
                h->spectrum = spectrum;
                h->fftFrom = alg == zvpAlgFFT ? 1 : kAutoIters;
                h->workOff = int(Kind<E>::histBytes(L) + kChunkBytes);
                h->segOff = int(h->workOff + a64(z.w));
            } else {
                h->order = 0;
                h->fft = nullptr;
            }
        }
    }
    h->tag = Kind<E>::kTag;
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsFIRSRGetSize(int tapsLen, ZvpDataType tapsType, int* pSpecSize, int* pBufSize) {
    ZVP_CHECK_LENS(tapsLen);
    const int t = int(tapsType);
    if (t != zvp32f && t != zvp32fc && t != zvp64f && t != zvp64fc) return zvpStsDataTypeErr;
    ZVP_CHECK_PTRS(pSpecSize, pBufSize);
    const long long L = tapsLen;
    long long spec = 0, buf = 0;
    switch (t) {
        case zvp32f: {
            const FftSizes z = fftSizes<float>(L);
            spec = std::max({64 * ((L + 6) >> 2), (4 * L + 63) & ~63LL, z.specPart}) + 127;
            buf = z.bufPart + ((8 * L + 55) & ~63LL) + kChunkBytes;
            break;
        }
        case zvp64f: {
            const FftSizes z = fftSizes<double>(L);
            spec = std::max({(32 * ((L + 2) >> 1) + 63) & ~63LL, z.specPart, z.bufPart}) + 127;
            buf = z.bufPart + ((16 * L + 47) & ~63LL) + kChunkBytes;
            break;
        }
        case zvp32fc: {
            const FftSizes z = fftSizes<Zvp32fc>(L);
            spec = std::max((32 * L + 63) & ~63LL, z.specPart) + 127;
            buf = z.bufPart + ((16 * L + 47) & ~63LL) + kChunkBytes;
            break;
        }
        default:
            spec = ((32 * L + 63) & ~63LL) + 127;
            buf = ((32 * L + 63) & ~63LL) + 64 * (L >> 1) + kChunkBytes;
            break;
    }
    if (spec > kIntMax || buf > kIntMax) return zvpStsSizeErr;
    *pSpecSize = int(spec);
    *pBufSize = int(buf);
    return zvpStsNoErr;
}

ZvpStatus zvpsFIRSRInit_32f(const Zvp32f* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_32f* pSpec) {
    return init<float>(pTaps, tapsLen, int(algType), pSpec);
}
ZvpStatus zvpsFIRSRInit_64f(const Zvp64f* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_64f* pSpec) {
    return init<double>(pTaps, tapsLen, int(algType), pSpec);
}
ZvpStatus zvpsFIRSRInit_32fc(const Zvp32fc* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_32fc* pSpec) {
    return init<Zvp32fc>(pTaps, tapsLen, int(algType), pSpec);
}
ZvpStatus zvpsFIRSRInit_64fc(const Zvp64fc* pTaps, int tapsLen, ZvpAlgType algType, ZvpsFIRSpec_64fc* pSpec) {
    return init<Zvp64fc>(pTaps, tapsLen, int(algType), pSpec);
}

ZvpStatus zvpsFIRSR_32f(const Zvp32f* pSrc, Zvp32f* pDst, int numIters, ZvpsFIRSpec_32f* pSpec,
                        const Zvp32f* pDlySrc, Zvp32f* pDlyDst, Zvp8u* pBuf) {
    return filterPlain<float>(pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf);
}
ZvpStatus zvpsFIRSR_64f(const Zvp64f* pSrc, Zvp64f* pDst, int numIters, ZvpsFIRSpec_64f* pSpec,
                        const Zvp64f* pDlySrc, Zvp64f* pDlyDst, Zvp8u* pBuf) {
    return filterPlain<double>(pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf);
}
ZvpStatus zvpsFIRSR_32fc(const Zvp32fc* pSrc, Zvp32fc* pDst, int numIters, ZvpsFIRSpec_32fc* pSpec,
                         const Zvp32fc* pDlySrc, Zvp32fc* pDlyDst, Zvp8u* pBuf) {
    return filterPlain<Zvp32fc>(pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf);
}
ZvpStatus zvpsFIRSR_64fc(const Zvp64fc* pSrc, Zvp64fc* pDst, int numIters, ZvpsFIRSpec_64fc* pSpec,
                         const Zvp64fc* pDlySrc, Zvp64fc* pDlyDst, Zvp8u* pBuf) {
    return filterPlain<Zvp64fc>(pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf);
}

ZvpStatus zvpsFIRSR_16s(const Zvp16s* pSrc, Zvp16s* pDst, int numIters, ZvpsFIRSpec_32f* pSpec,
                        const Zvp16s* pDlySrc, Zvp16s* pDlyDst, Zvp8u* pBuf) {
    return filterConverted<float>(
        pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf,
        [](const Zvp16s* s, float* d, int n) { return p8::zvpsConvert_16s32f(s, d, n); },
        [](const float* s, Zvp16s* d, int n, int f) { return p8::zvpsConvert_32f16s_Sfs(s, d, n, zvpRndNear, f); }, 0);
}
ZvpStatus zvpsFIRSR_16sc(const Zvp16sc* pSrc, Zvp16sc* pDst, int numIters, ZvpsFIRSpec_32fc* pSpec,
                         const Zvp16sc* pDlySrc, Zvp16sc* pDlyDst, Zvp8u* pBuf) {
    return filterConverted<Zvp32fc>(
        pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf,
        [](const Zvp16sc* s, Zvp32fc* d, int n) {
            return p8::zvpsConvert_16s32f(reinterpret_cast<const Zvp16s*>(s), reinterpret_cast<float*>(d), 2 * n);
        },
        [](const Zvp32fc* s, Zvp16sc* d, int n, int f) {
            return p8::zvpsConvert_32f16s_Sfs(reinterpret_cast<const float*>(s), reinterpret_cast<Zvp16s*>(d), 2 * n,
                                          zvpRndNear, f);
        },
        0);
}

ZvpStatus zvpsFIRSR64f_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int numIters, ZvpsFIRSpec_64f* pSpec,
                               const Zvp32s* pDlySrc, Zvp32s* pDlyDst, Zvp8u* pBuf, int scaleFactor) {
    return filterConverted<double>(
        pSrc, pDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf,
        [](const Zvp32s* s, double* d, int n) { return p8::zvpsConvert_32s64f(s, d, n); },
        [](const double* s, Zvp32s* d, int n, int f) { return p8::zvpsConvert_64f32s_Sfs(s, d, n, zvpRndNear, f); },
        scaleFactor);
}
ZvpStatus zvpsFIRSR64f_32s_ISfs(Zvp32s* pSrcDst, int numIters, ZvpsFIRSpec_64f* pSpec, const Zvp32s* pDlySrc,
                                Zvp32s* pDlyDst, Zvp8u* pBuf, int scaleFactor) {
    return p8::zvpsFIRSR64f_32s_Sfs(pSrcDst, pSrcDst, numIters, pSpec, pDlySrc, pDlyDst, pBuf, scaleFactor);
}

}  // namespace zvp::p8

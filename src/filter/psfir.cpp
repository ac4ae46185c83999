// Single-rate FIR filters with a state record: every taps/data pairing, the
// single-rate stream forms, and the dispatch of the block entry on the tag.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "check.h"
#include "firpoly.h"
#include "firstate.h"
#include "p8/fir.h"
#include "p8/frame.h"

namespace zvp::ZVP_LEVEL {
namespace {

using fir::Layout;
using fir::Record;
using fir::tagOf;

constexpr std::int32_t kNone = 0;

// The ITaps of kinds that keep no integer taps.
struct NoITaps {};

// W: working element, D: data, TIn: the caller's taps, ITaps: the integer
// taps kept as set (intTaps), tags: single-rate (two variants for 16s),
// multi-rate, and the stream tags Free and FIR also accept.
template <class W_, class D_, class TIn_, class ITaps_, bool intTaps_, bool fast_, std::int32_t SR_,
          std::int32_t SR2_, std::int32_t MR_, std::int32_t ST1_ = kNone, std::int32_t ST2_ = kNone>
struct Kind {
    using W = W_;
    using D = D_;
    using TIn = TIn_;
    using ITaps = ITaps_;
    static constexpr bool intTaps = intTaps_;
    static constexpr bool fast = fast_;
    static constexpr bool convert = !std::is_same_v<W, D>;
    static constexpr bool is32f = std::is_same_v<W, float> && std::is_same_v<D, float>;
    static constexpr bool intData = !std::is_same_v<D, float> && !std::is_same_v<D, double> &&
                                    !std::is_same_v<D, Zvp32fc> && !std::is_same_v<D, Zvp64fc>;
    static constexpr std::int32_t SR = SR_, SR2 = SR2_, MR = MR_, ST1 = ST1_, ST2 = ST2_;
    static bool single(std::int32_t t) { return t == SR || (SR2 != kNone && t == SR2); }
    static bool accessor(std::int32_t t) { return single(t) || (MR != kNone && t == MR); }
    static constexpr long long itapBytes = std::is_same_v<ITaps, NoITaps> ? 0 : (long long)sizeof(ITaps);
    static bool stream(std::int32_t t) { return t != kNone && (t == ST1 || t == ST2); }
    static bool any(std::int32_t t) { return accessor(t) || stream(t); }
};

// clang-format off
using K32f      = Kind<float,   float,   float,   NoITaps, false, true,  tagOf('0','1'), kNone, tagOf('0','3'), tagOf('3','3'), tagOf('3','4')>;
using K32fc     = Kind<Zvp32fc, Zvp32fc, Zvp32fc, NoITaps, false, true,  tagOf('0','2'), kNone, tagOf('0','4')>;
using K32f16s   = Kind<float,   Zvp16s,  float,   NoITaps, false, true,  tagOf('0','5'), kNone, tagOf('0','7')>;
using K32fc16sc = Kind<Zvp32fc, Zvp16sc, Zvp32fc, NoITaps, false, true,  tagOf('0','6'), kNone, tagOf('0','8')>;
using K32s16s   = Kind<double,  Zvp16s,  Zvp32s,  Zvp32s,  true,  false, tagOf('0','9'), kNone, tagOf('1','1')>;
using K32sc16sc = Kind<Zvp64fc, Zvp16sc, Zvp32sc, Zvp32sc, true,  false, tagOf('1','0'), kNone, tagOf('1','2')>;
using K64f      = Kind<double,  double,  double,  NoITaps, false, true,  tagOf('1','3'), kNone, tagOf('1','5')>;
using K64fc     = Kind<Zvp64fc, Zvp64fc, Zvp64fc, NoITaps, false, true,  tagOf('1','4'), kNone, tagOf('1','6')>;
using K64f32f   = Kind<double,  float,   double,  NoITaps, false, true,  tagOf('1','7'), kNone, tagOf('1','9')>;
using K64fc32fc = Kind<Zvp64fc, Zvp32fc, Zvp64fc, NoITaps, false, true,  tagOf('1','8'), kNone, tagOf('2','0')>;
// 64f taps with 32s data and the 32s filter with 32s taps: one record kind.
using K64f32s   = Kind<double,  Zvp32s,  double,  Zvp32s,  false, true,  tagOf('2','1'), kNone, tagOf('2','3')>;
using K32s      = Kind<double,  Zvp32s,  Zvp32s,  Zvp32s,  true,  true,  tagOf('2','1'), kNone, tagOf('2','3')>;
using K64fc32sc = Kind<Zvp64fc, Zvp32sc, Zvp64fc, NoITaps, false, true,  tagOf('2','2'), kNone, tagOf('2','4')>;
using K64f16s   = Kind<double,  Zvp16s,  double,  NoITaps, false, true,  tagOf('2','5'), kNone, tagOf('2','7')>;
using K64fc16sc = Kind<Zvp64fc, Zvp16sc, Zvp64fc, NoITaps, false, true,  tagOf('2','6'), kNone, tagOf('2','8')>;
using K16s      = Kind<double,  Zvp16s,  Zvp16s,  Zvp16s,  true,  false, tagOf('2','9'), tagOf('3','0'), kNone, tagOf('3','1'), tagOf('3','2')>;
// clang-format on

// The two record layouts that must agree because they share a tag.
static_assert(K64f32s::itapBytes == K32s::itapBytes && K64f32s::fast == K32s::fast &&
              std::is_same_v<K64f32s::W, K32s::W> && std::is_same_v<K64f32s::D, K32s::D>);

// ---- the multi-rate dispatch point

// Multi-rate records carry their own tags and are filtered through the same
// entry points; the accessors accept their tags too. This is where they plug
// in: no multi-rate record can be built yet, so every call that reaches one
// is refused.
inline ZvpStatus multiRate() { return zvpStsContextMatchErr; }

// ---- taps

template <class K>
void storeTapsW(Record<typename K::W>* r) {
    using W = typename K::W;
    const std::ptrdiff_t L = r->tapsLen;
    if constexpr (K::is32f) {
        const std::ptrdiff_t C = (L + 6) & ~std::ptrdiff_t(3);
        std::memset(static_cast<void*>(r->rtaps), 0, std::size_t(4 * C) * sizeof(float));
        for (int c = 0; c < 4; ++c)
            for (std::ptrdiff_t i = 0; i < L; ++i) r->rtaps[c * C + i + c] = r->taps[L - 1 - i];
        for (std::ptrdiff_t i = 0; i < L; ++i)
            for (int k = 0; k < 4; ++k) r->btaps[4 * i + k] = r->taps[i];
    }
    if (r->fftLen > 0) {
        W* h = r->tapsSpec;
        const std::ptrdiff_t N = r->fftLen;
        std::memcpy(static_cast<void*>(h), r->taps, std::size_t(L) * sizeof(W));
        for (std::ptrdiff_t i = L; i < N; ++i) h[i] = fir::zeroW<W>();
        if (fir::Spectral<W>::fwd(h, r->fftSpec, r->fftWork) < 0) {
            r->fftLen = -1;
            r->fftSpec = nullptr;
            r->tapsSpec = nullptr;
        }
    }
}

template <class K>
typename K::ITaps* itapsOf(const Record<typename K::W>* r) {
    return reinterpret_cast<typename K::ITaps*>(reinterpret_cast<Zvp8u*>(r->taps) +
                                                fir::a16(std::ptrdiff_t(sizeof(typename K::W)) * r->tapsLen));
}

// 16s taps: the variant tag by whether the exact sum fits 32 bits.
template <class K>
std::int32_t variantTag(const Record<typename K::W>* r, std::int32_t a, std::int32_t b) {
    if constexpr (std::is_same_v<K, K16s>) {
        const Zvp16s* t = itapsOf<K>(r);
        long long s = 0;
        for (int k = 0; k < r->tapsLen; ++k) s += std::abs(int(t[k]));
        return s * 32768 < (1LL << 31) ? a : b;
    } else {
        return a;
    }
}

// Sets the taps of the kind K from the caller's taps (integer taps with tf).
template <class K>
void setTapsOf(Record<typename K::W>* r, const typename K::TIn* p, int tf) {
    using W = typename K::W;
    const std::ptrdiff_t L = r->tapsLen;
    if constexpr (K::intTaps) {
        auto* it = itapsOf<K>(r);
        std::memmove(static_cast<void*>(it), p, std::size_t(L) * sizeof(typename K::ITaps));
        for (std::ptrdiff_t k = 0; k < L; ++k) r->taps[k] = fir::widen<W>(it[k]);
        r->tapsFactor = tf;
        r->intValid = 1;
    } else {
        for (std::ptrdiff_t k = 0; k < L; ++k) r->taps[k] = fir::widen<W>(p[k]);
        r->tapsFactor = 0;
        r->intValid = 0;
    }
    storeTapsW<K>(r);
}

// Float taps converted to 32-bit integer taps with the largest taps factor
// that keeps every one in range: 31 - e for the largest finite part m,
// 2^(e-1) <= m < 2^e; ties to even, NaN to 0, infinities saturated.
template <class F, class I>
int quantizeTaps(const F* p, std::ptrdiff_t L, I* out) {
    auto parts = [](const F& v, double* a, double* b) {
        *a = fir::reOf(v);
        *b = fir::imOf(v);
    };
    double m = 0;
    for (std::ptrdiff_t k = 0; k < L; ++k) {
        double a, b;
        parts(p[k], &a, &b);
        if (std::isfinite(a)) m = std::max(m, std::fabs(a));
        if (std::isfinite(b)) m = std::max(m, std::fabs(b));
    }
    int tf = 0;
    if (m > 0) {
        int e = 0;
        std::frexp(m, &e);  // m = f 2^e, f in [0.5, 1)
        tf = 31 - e;
    }
    MxcsrGuard g(MxcsrGuard::kNearest);
    const fir::OutScale s(-(long long)tf, zvpRndNear);
    for (std::ptrdiff_t k = 0; k < L; ++k) {
        if constexpr (fir::isCplx<I>) out[k] = I{s.apply<Zvp32s>(fir::reOf(p[k])), s.apply<Zvp32s>(fir::imOf(p[k]))};
        else out[k] = s.apply<Zvp32s>(fir::reOf(p[k]));
    }
    return tf;
}

// ---- building

template <class K>
ZvpStatus sizeOf(int L, bool fast, Layout& o) {
    return fir::layoutFor<K>(L, fast, o) ? zvpStsNoErr : zvpStsSizeErr;
}

template <class K>
ZvpStatus getStateSize(int L, int* pSize, bool fast = K::fast) {
    ZVP_CHECK_PTRS(pSize);
    if (L < 1) return zvpStsFIRLenErr;
    Layout o;
    ZVP_RETURN_IF_ERROR(sizeOf<K>(L, fast, o));
    *pSize = int(o.total);
    return zvpStsNoErr;
}

// Lays the record out in base (aligned up to 16) with zero taps and the
// given history; the caller sets the taps.
template <class K>
Record<typename K::W>* build(Zvp8u* base, const Layout& o, int L, const typename K::D* pDly, std::int32_t tag) {
    using W = typename K::W;
    Zvp8u* at = alignUp(base, 16);
    auto* r = reinterpret_cast<Record<W>*>(at);
    std::memset(static_cast<void*>(r), 0, sizeof(Record<W>));
    r->tag = tag;
    r->rtaps = K::is32f ? reinterpret_cast<W*>(at + o.stagger) : nullptr;
    r->dly = reinterpret_cast<W*>(at + o.dly);
    r->tapsLen = L;
    r->tapsLen2 = L;
    r->wrOff = ((L + 3) & ~3) + 1;
    r->btaps = K::is32f ? reinterpret_cast<W*>(at + o.btaps) : nullptr;
    r->taps = reinterpret_cast<W*>(at + o.taps);
    r->scratch = reinterpret_cast<W*>(at + o.scratch);
    r->fftLen = -1;
    r->roundMode = zvpRndNear;
    if (o.fftLen > 0) {
        typename fftconv::Fft<W>::Spec* sp = nullptr;
        if (fftconv::Fft<W>::init(&sp, o.order, at + o.fSpec, at + o.fInit) >= 0) {
            r->fftSpec = sp;
            r->fftLen = o.fftLen;
            r->tapsSpec = reinterpret_cast<W*>(at + o.spec);
            r->fftIn = r->fftOut = reinterpret_cast<W*>(at + o.seg);
            r->fftWork = o.fWork < o.total - 16 ? at + o.fWork : nullptr;
        }
    }
    for (int j = 0; j < L; ++j) r->dly[j] = pDly ? fir::widen<W>(pDly[L - 1 - j]) : fir::zeroW<W>();
    return r;
}

// Init (buf given) or InitAlloc (buf null, alloc set): checks done by the caller.
template <class K, class SetFn>
ZvpStatus create(void** pp, int L, const typename K::D* pDly, Zvp8u* buf, bool fast, std::int32_t tag,
                 SetFn setTaps) {
    Layout o;
    ZVP_RETURN_IF_ERROR(sizeOf<K>(L, fast, o));
    Zvp8u* mem = buf;
    if (mem == nullptr) {
        mem = p8::zvpsMalloc_8u(int(o.total));
        if (mem == nullptr) return zvpStsMemAllocErr;
    }
    auto* r = build<K>(mem, o, L, pDly, tag);
    setTaps(r);
    if (buf == nullptr) r->allocMark = 1 + int(reinterpret_cast<Zvp8u*>(r) - mem);
    *pp = r;
    return zvpStsNoErr;
}

template <class K>
ZvpStatus init(void** pp, const typename K::TIn* pTaps, int L, int tf, const typename K::D* pDly, Zvp8u* buf,
               bool alloc) {
    if (alloc) ZVP_CHECK_PTRS(pp, pTaps);
    else ZVP_CHECK_PTRS(pp, pTaps, buf);
    if (L < 1) return zvpStsFIRLenErr;
    return create<K>(pp, L, pDly, alloc ? nullptr : buf, K::fast, K::SR, [&](Record<typename K::W>* r) {
        setTapsOf<K>(r, pTaps, tf);
        r->tag = variantTag<K>(r, K::SR, K::SR2);
    });
}

// Init from float taps converted to integer taps.
template <class K, class F>
ZvpStatus initQuantized(void** pp, const F* pTaps, int L, const typename K::D* pDly, Zvp8u* buf, bool alloc) {
    if (alloc) ZVP_CHECK_PTRS(pp, pTaps);
    else ZVP_CHECK_PTRS(pp, pTaps, buf);
    if (L < 1) return zvpStsFIRLenErr;
    return create<K>(pp, L, pDly, alloc ? nullptr : buf, K::fast, K::SR, [&](Record<typename K::W>* r) {
        auto* it = itapsOf<K>(r);
        const int tf = quantizeTaps(pTaps, L, it);
        setTapsOf<K>(r, it, tf);
    });
}

template <class K>
Record<typename K::W>* rec(const void* p) {
    return reinterpret_cast<Record<typename K::W>*>(const_cast<void*>(p));
}

template <class K>
std::int32_t tagAt(const void* p) {
    return *static_cast<const std::int32_t*>(p);
}

template <class K>
ZvpStatus release(void* p) {
    ZVP_CHECK_PTRS(p);
    const std::int32_t t = tagAt<K>(p);
    if (!K::any(t)) return zvpStsContextMatchErr;
    if (t == K::MR) return multiRate();
    if constexpr (K::is32f)
        if (t == K::ST2) return fir::mrStreamFree(p);
    auto* r = rec<K>(p);
    if (r->allocMark != 0) {
        Zvp8u* base = reinterpret_cast<Zvp8u*>(r) - (r->allocMark - 1);
        r->tag = kNone;
        p8::zvpsFree(base);
    }
    return zvpStsNoErr;
}

template <class K>
ZvpStatus setTaps(const typename K::TIn* pTaps, void* p, int tf) {
    ZVP_CHECK_PTRS(pTaps, p);
    const std::int32_t t = tagAt<K>(p);
    if (!K::accessor(t)) return zvpStsContextMatchErr;
    if (t == K::MR) return multiRate();
    auto* r = rec<K>(p);
    setTapsOf<K>(r, pTaps, tf);
    r->tag = variantTag<K>(r, K::SR, K::SR2);
    return zvpStsNoErr;
}

template <class K>
ZvpStatus getTaps(const void* p, typename K::TIn* pTaps) {
    ZVP_CHECK_PTRS(p, pTaps);
    const std::int32_t t = tagAt<K>(p);
    if (!K::accessor(t)) return zvpStsContextMatchErr;
    if (t == K::MR) return multiRate();
    const auto* r = rec<K>(p);
    const std::ptrdiff_t L = r->tapsLen;
    if constexpr (K::intTaps) {
        if (r->intValid) {
            std::memcpy(static_cast<void*>(pTaps), itapsOf<K>(r), std::size_t(L) * sizeof(typename K::ITaps));
        } else {
            MxcsrGuard g(MxcsrGuard::kNearest);
            const fir::OutScale s(0, zvpRndNear);
            for (std::ptrdiff_t k = 0; k < L; ++k) pTaps[k] = fir::narrowInt<typename K::TIn>(r->taps[k], s);
        }
    } else {
        const double sc = std::ldexp(1.0, -std::clamp(r->tapsFactor, -1000, 1000));
        for (std::ptrdiff_t k = 0; k < L; ++k) {
            using TIn = typename K::TIn;
            if constexpr (fir::isCplx<TIn>) {
                using P = decltype(TIn{}.re);
                pTaps[k] = TIn{P(fir::reOf(r->taps[k]) * sc), P(fir::imOf(r->taps[k]) * sc)};
            } else {
                pTaps[k] = TIn(fir::reOf(r->taps[k]) * sc);
            }
        }
    }
    return zvpStsNoErr;
}

template <class K>
ZvpStatus setDly(void* p, const typename K::D* pDly) {
    ZVP_CHECK_PTRS(p);
    const std::int32_t t = tagAt<K>(p);
    if (!K::accessor(t)) return zvpStsContextMatchErr;
    if (t == K::MR) return multiRate();
    auto* r = rec<K>(p);
    r->ring = 0;
    const int L = r->tapsLen;
    for (int j = 0; j < L; ++j) r->dly[j] = pDly ? fir::widen<typename K::W>(pDly[L - 1 - j]) : fir::zeroW<typename K::W>();
    return zvpStsNoErr;
}

template <class K>
typename K::D narrowOut(const typename K::W& v, const fir::OutScale& s) {
    using D = typename K::D;
    if constexpr (K::intData) return fir::narrowInt<D>(v, s);
    else if constexpr (K::convert) return fir::narrowFloat<D>(v);
    else return v;
}

template <class K>
ZvpStatus getDly(const void* p, typename K::D* pDly) {
    ZVP_CHECK_PTRS(p, pDly);
    const std::int32_t t = tagAt<K>(p);
    if (!K::accessor(t)) return zvpStsContextMatchErr;
    if (t == K::MR) return multiRate();
    const auto* r = rec<K>(p);
    const int L = r->tapsLen;
    MxcsrGuard g(MxcsrGuard::kNearest);
    const fir::OutScale s(0, zvpRndNear);
    for (int i = 0; i < L; ++i) pDly[i] = narrowOut<K>(r->dly[r->ring + L - 1 - i], s);
    return zvpStsNoErr;
}

// ---- filtering

template <class K>
void runRecord(Record<typename K::W>* r, const typename K::D* src, typename K::D* dst, std::ptrdiff_t n, int sf) {
    using W = typename K::W;
    if constexpr (!K::convert) {
        if (src != dst) {
            fir::core(r, src, dst, n);
            return;
        }
        for (std::ptrdiff_t q = 0; q < n; q += fir::kPiece) {
            const std::ptrdiff_t c = std::min(fir::kPiece, n - q);
            std::memcpy(static_cast<void*>(r->scratch), src + q, std::size_t(c) * sizeof(W));
            fir::core(r, r->scratch, dst + q, c);
        }
    } else {
        MxcsrGuard g(MxcsrGuard::kNearest);  // integer results: nearest-even, no flushing
        const fir::OutScale s((long long)r->tapsFactor + sf, r->roundMode);
        W* in = r->scratch;
        W* out = r->scratch + fir::kPiece;
        for (std::ptrdiff_t q = 0; q < n; q += fir::kPiece) {
            const std::ptrdiff_t c = std::min(fir::kPiece, n - q);
            for (std::ptrdiff_t i = 0; i < c; ++i) in[i] = fir::widen<W>(src[q + i]);
            fir::core(r, in, out, c);
            for (std::ptrdiff_t i = 0; i < c; ++i) dst[q + i] = narrowOut<K>(out[i], s);
        }
    }
}

template <class K>
ZvpStatus filter(const typename K::D* src, typename K::D* dst, int n, void* p, int sf) {
    ZVP_CHECK_PTRS(p, src, dst);
    ZVP_CHECK_LENS(n);
    const std::int32_t t = tagAt<K>(p);
    if (!K::any(t)) return zvpStsContextMatchErr;
    if (t == K::MR) return multiRate();
    if constexpr (K::is32f)
        if (t == K::ST2) return fir::mrStreamFilter(p, src, dst, n);
    runRecord<K>(rec<K>(p), src, dst, n, sf);
    return zvpStsNoErr;
}

template <class K>
ZvpStatus filterOne(typename K::D src, typename K::D* pDst, void* p, int sf) {
    ZVP_CHECK_PTRS(p, pDst);
    if (!K::single(tagAt<K>(p))) return zvpStsContextMatchErr;
    auto* r = rec<K>(p);
    if constexpr (K::intData) {
        MxcsrGuard g(MxcsrGuard::kNearest);
        const auto y = fir::coreOne(r, fir::widen<typename K::W>(src));
        *pDst = narrowOut<K>(y, fir::OutScale((long long)r->tapsFactor + sf, r->roundMode));
    } else {
        *pDst = narrowOut<K>(fir::coreOne(r, fir::widen<typename K::W>(src)), fir::OutScale(0, zvpRndNear));
    }
    return zvpStsNoErr;
}

// ---- stream forms

bool badRoundMode(int m) { return m != zvpRndZero && m != zvpRndNear && m != zvpRndFinancial; }

ZvpStatus streamInit32f(void** pp, const float* pTaps, int L, const float* pDly, int roundMode, Zvp8u* buf) {
    ZVP_CHECK_PTRS(pp, pTaps, buf);
    if (L < 1) return zvpStsFIRLenErr;
    if (badRoundMode(roundMode)) return zvpStsRoundModeNotSupportedErr;
    return create<K32f>(pp, L, pDly, buf, false, K32f::ST1, [&](Record<float>* r) {
        setTapsOf<K32f>(r, pTaps, 0);
        r->roundMode = roundMode;
    });
}

}  // namespace

// ---- exports

#define ZVP_FIR_COMMON(SUF, K)                                                                           \
    ZvpStatus zvpsFIRGetStateSize##SUF(int tapsLen, int* pSize) { return getStateSize<K>(tapsLen, pSize); } \
    ZvpStatus zvpsFIRFree##SUF(ZvpsFIRState##SUF* pState) { return release<K>(pState); }                 \
    ZvpStatus zvpsFIRGetTaps##SUF(const ZvpsFIRState##SUF* pState, K::TIn* pTaps) {                     \
        return getTaps<K>(pState, pTaps);                                                                \
    }                                                                                                    \
    ZvpStatus zvpsFIRSetDlyLine##SUF(ZvpsFIRState##SUF* pState, const K::D* pDlyLine) {                 \
        return setDly<K>(pState, pDlyLine);                                                              \
    }                                                                                                    \
    ZvpStatus zvpsFIRGetDlyLine##SUF(const ZvpsFIRState##SUF* pState, K::D* pDlyLine) {                 \
        return getDly<K>(pState, pDlyLine);                                                              \
    }

#define ZVP_FIR_FLOAT_TAPS(SUF, K)                                                                       \
    ZvpStatus zvpsFIRInit##SUF(ZvpsFIRState##SUF** ppState, const K::TIn* pTaps, int tapsLen,           \
                               const K::D* pDlyLine, Zvp8u* pBuffer) {                                   \
        return init<K>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, 0, pDlyLine, pBuffer, false);  \
    }                                                                                                    \
    ZvpStatus zvpsFIRInitAlloc##SUF(ZvpsFIRState##SUF** ppState, const K::TIn* pTaps, int tapsLen,      \
                                    const K::D* pDlyLine) {                                              \
        return init<K>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, 0, pDlyLine, nullptr, true);   \
    }                                                                                                    \
    ZvpStatus zvpsFIRSetTaps##SUF(const K::TIn* pTaps, ZvpsFIRState##SUF* pState) {                     \
        return setTaps<K>(pTaps, pState, 0);                                                             \
    }

#define ZVP_FIR_INT_TAPS(SUF, K)                                                                         \
    ZvpStatus zvpsFIRInit##SUF(ZvpsFIRState##SUF** ppState, const K::TIn* pTaps, int tapsLen,           \
                               int tapsFactor, const K::D* pDlyLine, Zvp8u* pBuffer) {                   \
        return init<K>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, tapsFactor, pDlyLine, pBuffer, \
                       false);                                                                           \
    }                                                                                                    \
    ZvpStatus zvpsFIRInitAlloc##SUF(ZvpsFIRState##SUF** ppState, const K::TIn* pTaps, int tapsLen,      \
                                    int tapsFactor, const K::D* pDlyLine) {                              \
        return init<K>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, tapsFactor, pDlyLine, nullptr, \
                       true);                                                                            \
    }                                                                                                    \
    ZvpStatus zvpsFIRSetTaps##SUF(const K::TIn* pTaps, ZvpsFIRState##SUF* pState, int tapsFactor) {     \
        return setTaps<K>(pTaps, pState, tapsFactor);                                                    \
    }

#define ZVP_FIR_PLAIN(SUF, K)                                                                            \
    ZvpStatus zvpsFIR##SUF(const K::D* pSrc, K::D* pDst, int numIters, ZvpsFIRState##SUF* pState) {     \
        return filter<K>(pSrc, pDst, numIters, pState, 0);                                               \
    }                                                                                                    \
    ZvpStatus zvpsFIR##SUF##_I(K::D* pSrcDst, int numIters, ZvpsFIRState##SUF* pState) {                \
        return filter<K>(pSrcDst, pSrcDst, numIters, pState, 0);                                         \
    }                                                                                                    \
    ZvpStatus zvpsFIROne##SUF(K::D src, K::D* pDstVal, ZvpsFIRState##SUF* pState) {                     \
        return filterOne<K>(src, pDstVal, pState, 0);                                                    \
    }

#define ZVP_FIR_SFS(SUF, K)                                                                              \
    ZvpStatus zvpsFIR##SUF##_Sfs(const K::D* pSrc, K::D* pDst, int numIters, ZvpsFIRState##SUF* pState, \
                                 int scaleFactor) {                                                      \
        return filter<K>(pSrc, pDst, numIters, pState, scaleFactor);                                     \
    }                                                                                                    \
    ZvpStatus zvpsFIR##SUF##_ISfs(K::D* pSrcDst, int numIters, ZvpsFIRState##SUF* pState,               \
                                  int scaleFactor) {                                                     \
        return filter<K>(pSrcDst, pSrcDst, numIters, pState, scaleFactor);                               \
    }                                                                                                    \
    ZvpStatus zvpsFIROne##SUF##_Sfs(K::D src, K::D* pDstVal, ZvpsFIRState##SUF* pState,                 \
                                    int scaleFactor) {                                                   \
        return filterOne<K>(src, pDstVal, pState, scaleFactor);                                          \
    }

ZVP_FIR_COMMON(_32f, K32f)
ZVP_FIR_FLOAT_TAPS(_32f, K32f)
ZVP_FIR_PLAIN(_32f, K32f)
ZVP_FIR_COMMON(_32fc, K32fc)
ZVP_FIR_FLOAT_TAPS(_32fc, K32fc)
ZVP_FIR_PLAIN(_32fc, K32fc)
ZVP_FIR_COMMON(_64f, K64f)
ZVP_FIR_FLOAT_TAPS(_64f, K64f)
ZVP_FIR_PLAIN(_64f, K64f)
ZVP_FIR_COMMON(_64fc, K64fc)
ZVP_FIR_FLOAT_TAPS(_64fc, K64fc)
ZVP_FIR_PLAIN(_64fc, K64fc)
ZVP_FIR_COMMON(32f_16s, K32f16s)
ZVP_FIR_FLOAT_TAPS(32f_16s, K32f16s)
ZVP_FIR_SFS(32f_16s, K32f16s)
ZVP_FIR_COMMON(32fc_16sc, K32fc16sc)
ZVP_FIR_FLOAT_TAPS(32fc_16sc, K32fc16sc)
ZVP_FIR_SFS(32fc_16sc, K32fc16sc)
ZVP_FIR_COMMON(64f_32f, K64f32f)
ZVP_FIR_FLOAT_TAPS(64f_32f, K64f32f)
ZVP_FIR_PLAIN(64f_32f, K64f32f)
ZVP_FIR_COMMON(64fc_32fc, K64fc32fc)
ZVP_FIR_FLOAT_TAPS(64fc_32fc, K64fc32fc)
ZVP_FIR_PLAIN(64fc_32fc, K64fc32fc)
ZVP_FIR_COMMON(64f_16s, K64f16s)
ZVP_FIR_FLOAT_TAPS(64f_16s, K64f16s)
ZVP_FIR_SFS(64f_16s, K64f16s)
ZVP_FIR_COMMON(64fc_16sc, K64fc16sc)
ZVP_FIR_FLOAT_TAPS(64fc_16sc, K64fc16sc)
ZVP_FIR_SFS(64fc_16sc, K64fc16sc)
ZVP_FIR_COMMON(64f_32s, K64f32s)
ZVP_FIR_FLOAT_TAPS(64f_32s, K64f32s)
ZVP_FIR_SFS(64f_32s, K64f32s)
ZVP_FIR_COMMON(64fc_32sc, K64fc32sc)
ZVP_FIR_FLOAT_TAPS(64fc_32sc, K64fc32sc)
ZVP_FIR_SFS(64fc_32sc, K64fc32sc)
ZVP_FIR_COMMON(32s_16s, K32s16s)
ZVP_FIR_INT_TAPS(32s_16s, K32s16s)
ZVP_FIR_SFS(32s_16s, K32s16s)
ZVP_FIR_COMMON(32sc_16sc, K32sc16sc)
ZVP_FIR_INT_TAPS(32sc_16sc, K32sc16sc)
ZVP_FIR_SFS(32sc_16sc, K32sc16sc)
ZVP_FIR_COMMON(_16s, K16s)
ZVP_FIR_INT_TAPS(_16s, K16s)
ZVP_FIR_SFS(_16s, K16s)
ZVP_FIR_COMMON(_32s, K32s)
ZVP_FIR_INT_TAPS(_32s, K32s)
ZVP_FIR_SFS(_32s, K32s)

ZvpStatus zvpsFIRInit32s_16s32f(ZvpsFIRState32s_16s** ppState, const Zvp32f* pTaps, int tapsLen,
                                const Zvp16s* pDlyLine, Zvp8u* pBuffer) {
    return initQuantized<K32s16s>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, pDlyLine, pBuffer, false);
}
ZvpStatus zvpsFIRInitAlloc32s_16s32f(ZvpsFIRState32s_16s** ppState, const Zvp32f* pTaps, int tapsLen,
                                     const Zvp16s* pDlyLine) {
    return initQuantized<K32s16s>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, pDlyLine, nullptr, true);
}
ZvpStatus zvpsFIRInit32sc_16sc32fc(ZvpsFIRState32sc_16sc** ppState, const Zvp32fc* pTaps, int tapsLen,
                                   const Zvp16sc* pDlyLine, Zvp8u* pBuffer) {
    return initQuantized<K32sc16sc>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, pDlyLine, pBuffer, false);
}
ZvpStatus zvpsFIRInitAlloc32sc_16sc32fc(ZvpsFIRState32sc_16sc** ppState, const Zvp32fc* pTaps, int tapsLen,
                                        const Zvp16sc* pDlyLine) {
    return initQuantized<K32sc16sc>(reinterpret_cast<void**>(ppState), pTaps, tapsLen, pDlyLine, nullptr, true);
}

ZvpStatus zvpsFIRStreamGetStateSize_32f(int tapsLen, int* pSize) {
    return getStateSize<K32f>(tapsLen, pSize, false);
}
ZvpStatus zvpsFIRStreamInit_32f(ZvpsFIRState_32f** ppState, const Zvp32f* pTaps, int tapsLen,
                                const Zvp32f* pDlyLine, ZvpRoundMode roundMode, Zvp8u* pBuffer) {
    return streamInit32f(reinterpret_cast<void**>(ppState), pTaps, tapsLen, pDlyLine, int(roundMode), pBuffer);
}
ZvpStatus zvpsFIRStreamGetStateSize_16s(int tapsLen, int* pSize) { return getStateSize<K16s>(tapsLen, pSize); }
ZvpStatus zvpsFIRStreamInit_16s(ZvpsFIRState_16s** ppState, const Zvp16s* pTaps, int tapsLen, int tapsFactor,
                                const Zvp16s* pDlyLine, ZvpRoundMode roundMode, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(ppState, pTaps, pBuffer);
    if (tapsLen < 1) return zvpStsFIRLenErr;
    if (badRoundMode(int(roundMode))) return zvpStsRoundModeNotSupportedErr;
    return create<K16s>(reinterpret_cast<void**>(ppState), tapsLen, pDlyLine, pBuffer, false, K16s::ST1,
                        [&](Record<double>* r) {
                            setTapsOf<K16s>(r, pTaps, tapsFactor);
                            r->roundMode = int(roundMode);
                            r->tag = variantTag<K16s>(r, K16s::ST1, K16s::ST2);
                        });
}
ZvpStatus zvpsFIRMRStreamGetStateSize_32f(int tapsLen, int upFactor, int downFactor, int* pSize) {
    return fir::mrStreamGetStateSize(tapsLen, upFactor, downFactor, pSize);
}
ZvpStatus zvpsFIRMRStreamInit_32f(ZvpsFIRState_32f** ppState, const Zvp32f* pTaps, int tapsLen, int upFactor,
                                  int upPhase, int downFactor, int downPhase, const Zvp32f* pDlyLine,
                                  ZvpRoundMode roundMode, Zvp8u* pBuffer) {
    return fir::mrStreamInit(reinterpret_cast<void**>(ppState), pTaps, tapsLen, upFactor, upPhase, downFactor,
                             downPhase, pDlyLine, int(roundMode), pBuffer);
}
}  // namespace zvp::ZVP_LEVEL

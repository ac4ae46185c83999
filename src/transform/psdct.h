// Internals of the discrete cosine transform: the specification record, the
// inner real transforms it is built on, the size rules and the kernels shared
// by the forward (orthonormal DCT-II) and inverse (orthonormal DCT-III)
// transforms.
//
// Four methods, fixed by the length N when the record is built:
//   small      N = 1, 2, 4, 8: one constant matrix per length, no tables.
//   direct     N < 36 otherwise: sums over a table of cos(2 pi i / 4N).
//   fft        N a power of two from 16: a real FFT of N points.
//   conv       N from 36, not a power of two: a real DFT of N points.
// The last two share one formulation. With the even samples in order and the
// odd ones reversed behind them,
//     v[n] = x[2n],  v[N-1-n] = x[2n+1],
// the real transform V of v gives the unnormalised DCT-II as
//     X[k] = Re(w^k V[k]),  X[N-k] = -Im(w^k V[k]),  w = exp(-i pi / 2N),
// so one rotation of V[k], k = 1 .. N/2, yields the outputs k and N - k. The
// inverse runs the same steps backwards: V[k] = w^-k (X[k] - i X[N-k]) (with
// X[N] = 0), an inverse real transform and the reverse reordering. The
// rotation table holds f cos(pi k / 2N) and f sin(pi k / 2N) with the
// orthonormal factor f folded in (sqrt(2/N) forward, half of it inverse).
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "level.h"
#include "p8/dct.h"
#include "p8/dft.h"
#include "p8/fftreal.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::dct {

enum : std::int32_t {
    kTagFwd16s = 19,
    kTagInv16s = 20,
    kTagFwd32f = 21,
    kTagInv32f = 22,
    kTagFwd64f = 23,
    kTagInv64f = 24,
};

enum class Method : std::int32_t { Small, Direct, Fft, Conv };

// Tables start here, from the record's start.
constexpr std::int64_t kTablesOffset = 128;
constexpr std::size_t kTablesOffsetBytes = 128;

// The record, at the caller's memory rounded up to 64 bytes. References to
// the tables and to the inner transform's record are byte offsets from the
// record's start, so a record is the same on both targets.
struct Record {
    std::int32_t tag;         // identity tag; 0 when released or unfinished
    std::int32_t len;         // N
    std::int32_t hint;        // stored as given, not acted upon
    std::int32_t workSize;    // work bytes a transform uses (0: none)
    std::int32_t reserved;
    float rsqrtLen;           // 1/sqrt(N): the estimate refined by one Newton step
    float sqrt2Len;           // sqrt(2)/sqrt(N), rounded to single precision
    std::int32_t small;       // 1: small kernel
    std::int32_t fftMethod;   // 1: FFT method
    std::int32_t convMethod;  // 1: convolution method (real DFT)
    std::int32_t innerOff;    // record of the inner real transform
    std::int32_t dirTabOff;   // direct method: cos(2 pi i / 4N), i < 4N
    // ---- the fields above are common to every type
    std::int32_t rotOff;      // FFT and conv methods: rotation table
    std::int32_t allocated;   // 1: built by InitAlloc
    std::int32_t baseOffset;  // record address minus the allocated block's base
    double f0;                // 64f and 16s: 1/sqrt(N)
    double f1;                //              sqrt(2/N)
};
static_assert(sizeof(Record) <= kTablesOffsetBytes);

// The direct method's bound (exclusive) and the largest lengths of the two
// transform methods.
constexpr int kDirectBelow = 36;
constexpr std::int64_t kFftMax = 268435455;
constexpr std::int64_t kConvMax = 67108863;

constexpr std::int64_t up64(std::int64_t v) { return (v + 63) & ~std::int64_t(63); }

constexpr bool isPow2(int n) { return n > 0 && (n & (n - 1)) == 0; }

constexpr Method methodFor(int n) {
    if (isPow2(n)) return n <= 8 ? Method::Small : Method::Fft;
    return n < kDirectBelow ? Method::Direct : Method::Conv;
}

inline Record* recordOf(void* p) { return static_cast<Record*>(p); }
inline const Record* recordOf(const void* p) { return static_cast<const Record*>(p); }

template <class T>
inline T* at(const Record* r, std::int64_t off) {
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(r) + std::uintptr_t(off));
}

// Bytes of one half (cos or sin) of the rotation table: entries k = 0 .. N/2.
template <class T>
constexpr std::int64_t rotHalfBytes(int n) {
    return up64((std::int64_t(n) / 2 + 1) * std::int64_t(sizeof(T)));
}

// The work memory of the FFT and conv methods, from its 64-byte aligned
// start: the reordered signal v (N values), then the half spectrum V (N + 2
// values), then the inner transform's own work.
template <class T>
constexpr std::int64_t vBytes(int n) { return up64(std::int64_t(n) * std::int64_t(sizeof(T))); }
template <class T>
constexpr std::int64_t spectrumBytes(int n) {
    return up64((std::int64_t(n) + 2) * std::int64_t(sizeof(T)));
}

// ---- record kinds -----------------------------------------------------------------

// Kind: the element type of the record (16s records are double ones), and
// the tags of its two directions.
template <class S>
struct Kind;
template <class E, std::int32_t Tag, bool Inverse>
struct KindOf {
    using T = E;
    static constexpr std::int32_t tag = Tag;
    static constexpr bool inverse = Inverse;
};
template <> struct Kind<ZvpsDCTFwdSpec_32f> : KindOf<float, kTagFwd32f, false> {};
template <> struct Kind<ZvpsDCTInvSpec_32f> : KindOf<float, kTagInv32f, true> {};
template <> struct Kind<ZvpsDCTFwdSpec_64f> : KindOf<double, kTagFwd64f, false> {};
template <> struct Kind<ZvpsDCTInvSpec_64f> : KindOf<double, kTagInv64f, true> {};
template <> struct Kind<ZvpsDCTFwdSpec_16s> : KindOf<double, kTagFwd16s, false> {};
template <> struct Kind<ZvpsDCTInvSpec_16s> : KindOf<double, kTagInv16s, true> {};

template <class S>
constexpr bool kIs16s = std::is_same_v<S, ZvpsDCTFwdSpec_16s> || std::is_same_v<S, ZvpsDCTInvSpec_16s>;

// ---- inner real transforms -----------------------------------------------------

// The real transforms of N points the two transform methods run, unscaled,
// with the half spectrum in the CCS layout. `handle` is what the transforms
// take: the inner record's address.
template <class T>
struct RealFft;

template <>
struct RealFft<float> {
    using Spec = ZvpsFFTSpec_R_32f;
    static ZvpStatus sizes(int order, ZvpHintAlgorithm h, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_R_32f(order, ZVP_FFT_NODIV_BY_ANY, h, s, i, w);
    }
    static ZvpStatus init(int order, ZvpHintAlgorithm h, Zvp8u* mem, Zvp8u* initMem, Zvp8u** handle) {
        Spec* s = nullptr;
        const ZvpStatus st = p8::zvpsFFTInit_R_32f(&s, order, ZVP_FFT_NODIV_BY_ANY, h, mem, initMem);
        *handle = reinterpret_cast<Zvp8u*>(s);
        return st;
    }
    static ZvpStatus fwd(const float* s, float* d, const Zvp8u* h, Zvp8u* w) {
        return p8::zvpsFFTFwd_RToCCS_32f(s, d, reinterpret_cast<const Spec*>(h), w);
    }
    static ZvpStatus inv(const float* s, float* d, const Zvp8u* h, Zvp8u* w) {
        return p8::zvpsFFTInv_CCSToR_32f(s, d, reinterpret_cast<const Spec*>(h), w);
    }
    static ZvpStatus release(Zvp8u* h) { return p8::zvpsFFTFree_R_32f(reinterpret_cast<Spec*>(h)); }
};

template <>
struct RealFft<double> {
    using Spec = ZvpsFFTSpec_R_64f;
    static ZvpStatus sizes(int order, ZvpHintAlgorithm h, int* s, int* i, int* w) {
        return p8::zvpsFFTGetSize_R_64f(order, ZVP_FFT_NODIV_BY_ANY, h, s, i, w);
    }
    static ZvpStatus init(int order, ZvpHintAlgorithm h, Zvp8u* mem, Zvp8u* initMem, Zvp8u** handle) {
        Spec* s = nullptr;
        const ZvpStatus st = p8::zvpsFFTInit_R_64f(&s, order, ZVP_FFT_NODIV_BY_ANY, h, mem, initMem);
        *handle = reinterpret_cast<Zvp8u*>(s);
        return st;
    }
    static ZvpStatus fwd(const double* s, double* d, const Zvp8u* h, Zvp8u* w) {
        return p8::zvpsFFTFwd_RToCCS_64f(s, d, reinterpret_cast<const Spec*>(h), w);
    }
    static ZvpStatus inv(const double* s, double* d, const Zvp8u* h, Zvp8u* w) {
        return p8::zvpsFFTInv_CCSToR_64f(s, d, reinterpret_cast<const Spec*>(h), w);
    }
    static ZvpStatus release(Zvp8u* h) { return p8::zvpsFFTFree_R_64f(reinterpret_cast<Spec*>(h)); }
};


// The real DFT of any length, for the conv method. Its record is built at the
// memory given and the transforms take that same address.
template <class T>
struct RealDft;

#define ZVP_DCT_REAL_DFT(T, TT)                                                                     \
    template <>                                                                                     \
    struct RealDft<T> {                                                                             \
        using Spec = ZvpsDFTSpec_R_##TT;                                                            \
        static ZvpStatus sizes(int n, ZvpHintAlgorithm h, int* s, int* i, int* w) {                 \
            return p8::zvpsDFTGetSize_R_##TT(n, ZVP_FFT_NODIV_BY_ANY, h, s, i, w);                  \
        }                                                                                           \
        static ZvpStatus init(int n, ZvpHintAlgorithm h, Zvp8u* mem, Zvp8u* initMem, Zvp8u** handle) { \
            *handle = mem;                                                                          \
            return p8::zvpsDFTInit_R_##TT(n, ZVP_FFT_NODIV_BY_ANY, h, reinterpret_cast<Spec*>(mem), initMem); \
        }                                                                                           \
        static ZvpStatus fwd(const T* s, T* d, const Zvp8u* h, Zvp8u* w) {                          \
            return p8::zvpsDFTFwd_RToCCS_##TT(s, d, reinterpret_cast<const Spec*>(h), w);           \
        }                                                                                           \
        static ZvpStatus inv(const T* s, T* d, const Zvp8u* h, Zvp8u* w) {                          \
            return p8::zvpsDFTInv_CCSToR_##TT(s, d, reinterpret_cast<const Spec*>(h), w);           \
        }                                                                                           \
        static ZvpStatus release(Zvp8u* h) { return p8::zvpsDFTFree_R_##TT(reinterpret_cast<Spec*>(h)); } \
    };
ZVP_DCT_REAL_DFT(float, 32f)
ZVP_DCT_REAL_DFT(double, 64f)
#undef ZVP_DCT_REAL_DFT

// ---- sizes ----------------------------------------------------------------------

// Where everything of a record of length N goes, and the three sizes the
// size query reports (before the 64 bytes of work-pointer slack).
struct Plan {
    Method method = Method::Small;
    std::int64_t spec = 0;      // bytes for Init, alignment slack included
    std::int64_t init = 0;      // scratch bytes Init needs
    std::int64_t work = 0;      // work bytes a transform uses
    std::int64_t dirTab = 0;    // offsets from the record's start
    std::int64_t rot = 0;
    std::int64_t inner = 0;
};

// Computes the plan of a T record of N (> 0) points. Fails with
// zvpStsSizeErr beyond a method's bound or when a size would not fit a
// signed 32-bit count, and with the inner size query's status.
template <class T>
ZvpStatus planFor(int n, ZvpHintAlgorithm hint, Plan& p);

// The rotation table of a T record (cos half, then sin half).
template <class T>
void buildRotation(Record* r, const Plan& p, bool inverse);
// The direct method's cosine table.
template <class T>
void buildDirect(Record* r, const Plan& p);

// ---- kernels ----------------------------------------------------------------------

// The transform of the record's method from src to dst (they may be the same
// vector). `work`: 64-byte aligned memory of the record's work size, or null
// when that size is 0 or the method is small or direct (those keep their copy
// on the stack). f0 and f1 are the orthonormal factors of the type.
template <class T>
ZvpStatus run(const Record* r, const T* src, T* dst, Zvp8u* work, bool inverse, T f0, T f1);

}  // namespace zvp::ZVP_LEVEL::dct

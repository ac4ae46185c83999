// Kernels of the add and subtract families.
//
// Every integer form computes the exact result R = a + b or R = a - b of two
// operands and delivers scaleRule(R, sf) (scale.h). The operands are either
// vectors in memory or a constant repeated with a period of two elements (a
// real constant is its own pair, a complex one is (re, im)), so one kernel
// serves the vector-vector, vector-constant and constant-vector shapes, real
// and complex alike.
//
// The scale factor picks one of five paths, each a loop over 16-byte vectors
// with a scalar tail that applies scaleRule itself:
//   sf = 0            Plain   saturate R
//   sf = 1            One     round R / 2
//   2 <= sf <= Z      Pos     round R / 2^sf
//   sf > Z            -       every result is 0: the type's Zero operation
//   N < sf <= -1      Neg     R * 2^-sf, saturated
//   sf <= N           Bound   0, or the type's maximum or minimum by R's sign
// Z is the largest factor at which some R still rounds to a non-zero value
// and N the largest at which every non-zero R saturates, so the split gives
// exactly the rule's results.
#pragma once

#include <immintrin.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "scale.h"
#include "scale_sse.h"
#include "check.h"
#include "p8/copy.h"
#include "simd.h"
#include "zvps.h"

namespace zvp::addsub {

enum class Op { Add, Sub };  // R = a + b, or R = a - b

template <Op op, class W>
constexpr W apply(W a, W b) {
    if constexpr (op == Op::Add) return a + b;
    else return a - b;
}

// ---- Operands -------------------------------------------------------------

template <class T>
struct Vec {
    const T* p;
    T at(int i) const { return p[i]; }
    __m128i load(int i) const { return simd::loadu(p + i); }
};

// A constant pair repeated over the vector. Vector loads always start at an
// even element, so the register pattern is in phase.
template <class T>
struct Const {
    T c[2];
    __m128i v;
    Const(T c0, T c1) : c{c0, c1} {
        static_assert(16 % (2 * sizeof(T)) == 0);
        alignas(16) unsigned char b[16];
        for (std::size_t i = 0; i < 16; i += 2 * sizeof(T)) {
            std::memcpy(b + i, &c[0], sizeof(T));
            std::memcpy(b + i + sizeof(T), &c[1], sizeof(T));
        }
        v = simd::load(b);
    }
    explicit Const(T c0) : Const(c0, c0) {}
    T at(int i) const { return c[i & 1]; }
    __m128i load(int) const { return v; }
};

// ---- Lane sets: the five paths on one 16-byte vector ----------------------

// 8u: R lies in [-255, 510] and is formed in 16-bit lanes.
struct Lane8u {
    using T = std::uint8_t;
    using W = std::int32_t;
    static constexpr int kLanes = 16;

    template <Op op>
    static void wide(__m128i a, __m128i b, __m128i& lo, __m128i& hi) {
        const __m128i z = _mm_setzero_si128();
        const __m128i alo = _mm_unpacklo_epi8(a, z), ahi = _mm_unpackhi_epi8(a, z);
        const __m128i blo = _mm_unpacklo_epi8(b, z), bhi = _mm_unpackhi_epi8(b, z);
        if constexpr (op == Op::Add) {
            lo = _mm_add_epi16(alo, blo);
            hi = _mm_add_epi16(ahi, bhi);
        } else {
            lo = _mm_sub_epi16(alo, blo);
            hi = _mm_sub_epi16(ahi, bhi);
        }
    }

    struct PosK {
        sse::ShiftCount c;
        __m128i halfMinusOne;
        explicit PosK(int sf)
            : c(sf), halfMinusOne(_mm_set1_epi16(std::int16_t((1 << (sf - 1)) - 1))) {}
    };
    struct NegK {
        sse::ShiftCount k;
        explicit NegK(int k_) : k(k_) {}
    };
    template <Op>
    static PosK posK(int sf) { return PosK(sf); }

    template <Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return _mm_adds_epu8(a, b);
        else return _mm_subs_epu8(a, b);
    }
    template <Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        __m128i lo, hi;
        wide<op>(a, b, lo, hi);
        return _mm_packus_epi16(sse::roundShiftEvenWideS16(lo, k.c, k.halfMinusOne),
                                sse::roundShiftEvenWideS16(hi, k.c, k.halfMinusOne));
    }
    template <Op op>
    static __m128i one(__m128i a, __m128i b) {
        return pos<op>(a, b, PosK(1));
    }
    template <Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        // Clamping R to [-1, 255] changes no result and keeps R * 2^7 in 16 bits.
        __m128i lo, hi;
        wide<op>(a, b, lo, hi);
        const __m128i m1 = _mm_set1_epi16(-1), top = _mm_set1_epi16(255);
        lo = _mm_sll_epi16(_mm_min_epi16(_mm_max_epi16(lo, m1), top), k.k.v);
        hi = _mm_sll_epi16(_mm_min_epi16(_mm_max_epi16(hi, m1), top), k.k.v);
        return _mm_packus_epi16(lo, hi);
    }
    template <Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return sse::boundNonZeroU8(plain<op>(a, b));
    }
};

// 16s: R is one bit wider than the lane and is held in halves.
struct Lane16s {
    using T = std::int16_t;
    using W = std::int32_t;
    static constexpr int kLanes = 8;
    using PosK = sse::PosConsts;
    struct NegK : sse::NegConsts {
        explicit NegK(int k) : sse::NegConsts(sse::negConstsS16(k)) {}
    };
    template <Op>
    static PosK posK(int sf) { return sse::posConsts16(sf, false); }

    template <Op op>
    static void halves(__m128i a, __m128i b, __m128i& h, __m128i& l) {
        if constexpr (op == Op::Add) sse::halvesAddS16(a, b, h, l);
        else sse::halvesSubS16(a, b, h, l);
    }
    template <Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return _mm_adds_epi16(a, b);
        else return _mm_subs_epi16(a, b);
    }
    template <Op op>
    static __m128i one(__m128i a, __m128i b) {
        __m128i h, l;
        halves<op>(a, b, h, l);
        return sse::roundHalves1S16(h, l);
    }
    template <Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        __m128i h, l;
        halves<op>(a, b, h, l);
        return sse::roundHalvesPosS16(h, l, k);
    }
    template <Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        return sse::shiftLeftSatS16(plain<op>(a, b), k);
    }
    template <Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return sse::boundSignS16(plain<op>(a, b));
    }
};

// 16u: a sum's halves are unsigned lanes, a difference's are signed ones
// whose negative results saturate to 0.
struct Lane16u {
    using T = std::uint16_t;
    using W = std::int32_t;
    static constexpr int kLanes = 8;
    using PosK = sse::PosConsts;
    struct NegK : sse::NegConsts {
        explicit NegK(int k) : sse::NegConsts(sse::negConstsU16(k)) {}
    };
    template <Op op>
    static PosK posK(int sf) { return sse::posConsts16(sf, op == Op::Add); }

    template <Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return _mm_adds_epu16(a, b);
        else return _mm_subs_epu16(a, b);
    }
    template <Op op>
    static __m128i one(__m128i a, __m128i b) {
        __m128i h, l;
        if constexpr (op == Op::Add) {
            sse::halvesAddU16(a, b, h, l);
            return _mm_add_epi16(h, _mm_and_si128(l, h));  // h = 65535 only with l = 0
        } else {
            sse::halvesSubU16(a, b, h, l);
            // h >= 0 rounds to at most 32768 (fits the unsigned lane); h < 0 gives 0.
            return _mm_andnot_si128(_mm_srai_epi16(h, 15), _mm_add_epi16(h, _mm_and_si128(l, h)));
        }
    }
    template <Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        __m128i h, l;
        if constexpr (op == Op::Add) {
            sse::halvesAddU16(a, b, h, l);
            return sse::roundHalvesPosU16(h, l, k);
        } else {
            sse::halvesSubU16(a, b, h, l);
            return _mm_max_epi16(sse::roundHalvesPosS16(h, l, k), _mm_setzero_si128());
        }
    }
    template <Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        return sse::shiftLeftSatU16(plain<op>(a, b), k);
    }
    template <Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return sse::boundNonZeroU16(plain<op>(a, b));
    }
};

// 32s: as 16s on 32-bit lanes.
struct Lane32s {
    using T = std::int32_t;
    using W = std::int64_t;
    static constexpr int kLanes = 4;
    using PosK = sse::PosConsts;
    struct NegK : sse::NegConsts {
        explicit NegK(int k) : sse::NegConsts(sse::negConstsS32(k)) {}
    };
    template <Op>
    static PosK posK(int sf) { return sse::posConsts32(sf); }

    template <Op op>
    static void halves(__m128i a, __m128i b, __m128i& h, __m128i& l) {
        if constexpr (op == Op::Add) sse::halvesAddS32(a, b, h, l);
        else sse::halvesSubS32(a, b, h, l);
    }
    template <Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return sse::addsEpi32(a, b);
        else return sse::subsEpi32(a, b);
    }
    template <Op op>
    static __m128i one(__m128i a, __m128i b) {
        __m128i h, l;
        halves<op>(a, b, h, l);
        if constexpr (op == Op::Add) {
            return sse::roundHalves1S32(h, l);  // R <= 2^32 - 2: never leaves the lane
        } else {
            // R = 2^32 - 1 would round up to 2^31: keep the maximum instead.
            const __m128i atMax = _mm_cmpeq_epi32(h, _mm_set1_epi32(0x7FFFFFFF));
            return _mm_add_epi32(h, _mm_andnot_si128(atMax, _mm_and_si128(l, h)));
        }
    }
    template <Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        __m128i h, l;
        halves<op>(a, b, h, l);
        return sse::roundHalvesPosS32(h, l, k);
    }
    template <Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        return sse::shiftLeftSatS32(plain<op>(a, b), k);
    }
    template <Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return sse::boundSignS32(plain<op>(a, b));
    }
};

// ---- Integer driver ------------------------------------------------------

enum class Path { Plain, One, Pos, Neg, Bound };

// Zero above z, bound at or below n.
struct Limits {
    int z;
    int n;
};

template <class L, Op op, Path path, class A, class B>
void runPath(A a, B b, typename L::T* d, int n, int sf) {
    using T = typename L::T;
    using W = typename L::W;
    constexpr int V = L::kLanes;
    auto body = [&](__m128i x, __m128i y, const auto& k) {
        if constexpr (path == Path::Plain) return L::template plain<op>(x, y);
        else if constexpr (path == Path::One) return L::template one<op>(x, y);
        else if constexpr (path == Path::Pos) return L::template pos<op>(x, y, k);
        else if constexpr (path == Path::Neg) return L::template neg<op>(x, y, k);
        else return L::template bound<op>(x, y);
    };
    auto run = [&](const auto& k) {
        int i = 0;
        for (; i + 2 * V <= n; i += 2 * V) {
            const __m128i r0 = body(a.load(i), b.load(i), k);
            const __m128i r1 = body(a.load(i + V), b.load(i + V), k);
            simd::storeu(d + i, r0);
            simd::storeu(d + i + V, r1);
        }
        if (i + V <= n) {
            simd::storeu(d + i, body(a.load(i), b.load(i), k));
            i += V;
        }
        for (; i < n; ++i) d[i] = scaleRule<T>(apply<op>(W(a.at(i)), W(b.at(i))), sf);
    };
    if constexpr (path == Path::Pos) run(L::template posK<op>(sf));
    else if constexpr (path == Path::Neg) run(typename L::NegK(-sf));
    else run(0);
}

// Runs the path of sf over n elements; above Z it returns zero(d, n).
template <class L, Op op, class A, class B, class Zero>
ZvpStatus scaled(A a, B b, typename L::T* d, int n, int sf, Limits lim, Zero zero) {
    if (sf == 0) runPath<L, op, Path::Plain>(a, b, d, n, sf);
    else if (sf == 1) runPath<L, op, Path::One>(a, b, d, n, sf);
    else if (sf > 1) {
        if (sf > lim.z) return zero(d, n);
        runPath<L, op, Path::Pos>(a, b, d, n, sf);
    } else if (sf > lim.n) runPath<L, op, Path::Neg>(a, b, d, n, sf);
    else runPath<L, op, Path::Bound>(a, b, d, n, sf);
    return zvpStsNoErr;
}

// Runs f(offset, count) over the 2 * len reals of len complex elements, in
// pieces whose count fits an int. Returns the first non-success status.
template <class F>
ZvpStatus overReals(int len, F f) {
    if (len <= INT_MAX / 2) return f(std::ptrdiff_t(0), 2 * len);
    constexpr int kPiece = 1 << 29;
    for (int off = 0; off < len; off += kPiece) {
        const int m = len - off < kPiece ? len - off : kPiece;
        const ZvpStatus st = f(std::ptrdiff_t(2) * off, 2 * m);
        if (st != zvpStsNoErr) return st;
    }
    return zvpStsNoErr;
}

// The complex integer forms of Add and Sub are the real forms on twice the
// length. The length is checked first; the real form checks the pointers
// (a null complex pointer stays null).
template <class R, class C>
const R* realsOf(const C* p, std::ptrdiff_t off) {
    return p ? reinterpret_cast<const R*>(p) + off : nullptr;
}
template <class R, class C>
R* realsOf(C* p, std::ptrdiff_t off) {
    return p ? reinterpret_cast<R*>(p) + off : nullptr;
}
template <class R, class C>
ZvpStatus complexAsReals(ZvpStatus (*real)(const R*, const R*, R*, int, int), const C* a,
                         const C* b, C* d, int len, int sf) {
    ZVP_CHECK_LENS(len);
    return overReals(len, [&](std::ptrdiff_t off, int n) {
        return real(realsOf<R>(a, off), realsOf<R>(b, off), realsOf<R>(d, off), n, sf);
    });
}
template <class R, class C>
ZvpStatus complexAsReals(ZvpStatus (*real)(const R*, R*, int, int), const C* a, C* d, int len,
                         int sf) {
    ZVP_CHECK_LENS(len);
    return overReals(len, [&](std::ptrdiff_t off, int n) {
        return real(realsOf<R>(a, off), realsOf<R>(d, off), n, sf);
    });
}

// ---- Floating point --------------------------------------------------------

template <class F>
struct FLane;
template <>
struct FLane<float> {
    using V = __m128;
    static constexpr int kLanes = 4;
    static V load(const float* p) { return _mm_loadu_ps(p); }
    static void store(float* p, V v) { _mm_storeu_ps(p, v); }
    static void stream(float* p, V v) { _mm_stream_ps(p, v); }
    static V add(V a, V b) { return _mm_add_ps(a, b); }
    static V sub(V a, V b) { return _mm_sub_ps(a, b); }
    static V pair(float c0, float c1) { return _mm_setr_ps(c0, c1, c0, c1); }
};
template <>
struct FLane<double> {
    using V = __m128d;
    static constexpr int kLanes = 2;
    static V load(const double* p) { return _mm_loadu_pd(p); }
    static void store(double* p, V v) { _mm_storeu_pd(p, v); }
    static void stream(double* p, V v) { _mm_stream_pd(p, v); }
    static V add(V a, V b) { return _mm_add_pd(a, b); }
    static V sub(V a, V b) { return _mm_sub_pd(a, b); }
    static V pair(double c0, double c1) { return _mm_setr_pd(c0, c1); }
};

template <class F>
struct FVec {
    const F* p;
    F at(int i) const { return p[i]; }
    typename FLane<F>::V load(int i) const { return FLane<F>::load(p + i); }
};
template <class F>
struct FConst {
    F c[2];
    typename FLane<F>::V v;
    FConst(F c0, F c1) : c{c0, c1}, v(FLane<F>::pair(c0, c1)) {}
    explicit FConst(F c0) : FConst(c0, c0) {}
    F at(int i) const { return c[i & 1]; }
    typename FLane<F>::V load(int) const { return v; }
};

// d[i] = a[i] op b[i] in IEEE arithmetic, four vectors per step.
template <class F, Op op, class A, class B>
void floatKernel(A a, B b, F* d, int n) {
    using L = FLane<F>;
    constexpr int V = L::kLanes;
    auto f = [](typename L::V x, typename L::V y) {
        if constexpr (op == Op::Add) return L::add(x, y);
        else return L::sub(x, y);
    };
    int i = 0;
    for (; i + 4 * V <= n; i += 4 * V) {
        const auto r0 = f(a.load(i), b.load(i));
        const auto r1 = f(a.load(i + V), b.load(i + V));
        const auto r2 = f(a.load(i + 2 * V), b.load(i + 2 * V));
        const auto r3 = f(a.load(i + 3 * V), b.load(i + 3 * V));
        L::store(d + i, r0);
        L::store(d + i + V, r1);
        L::store(d + i + 2 * V, r2);
        L::store(d + i + 3 * V, r3);
    }
    for (; i + V <= n; i += V) L::store(d + i, f(a.load(i), b.load(i)));
    for (; i < n; ++i) d[i] = apply<op>(a.at(i), b.at(i));
}

// ---- Forms ---------------------------------------------------------------
// The argument checks of each shape followed by its kernel. Integer forms
// take the thresholds of their operation and the Zero operation of the
// destination type.

inline ZvpStatus zeroOf(Zvp8u* d, int n) { return p8::zvpsZero_8u(d, n); }
inline ZvpStatus zeroOf(Zvp16s* d, int n) { return p8::zvpsZero_16s(d, n); }
inline ZvpStatus zeroOf(Zvp16u* d, int n) {
    return p8::zvpsZero_16s(reinterpret_cast<Zvp16s*>(d), n);
}
inline ZvpStatus zeroOf(Zvp32s* d, int n) { return p8::zvpsZero_32s(d, n); }

// d[i] = x[i] op y[i].
template <class L, Op op>
ZvpStatus vecVec(const typename L::T* x, const typename L::T* y, typename L::T* d, int len,
                 int sf, Limits lim) {
    ZVP_CHECK_PTRS(x, y, d);
    ZVP_CHECK_LENS(len);
    using T = typename L::T;
    return scaled<L, op>(Vec<T>{x}, Vec<T>{y}, d, len, sf, lim,
                         [](T* p, int n) { return zeroOf(p, n); });
}

// d[i] = s[i] op (c0, c1)[i mod 2], or (c0, c1)[i mod 2] op s[i] when
// constFirst; n reals. The caller has checked s, d and the length.
template <class L, Op op, bool constFirst, class Zero>
ZvpStatus vecConst(const typename L::T* s, typename L::T c0, typename L::T c1,
                   typename L::T* d, int n, int sf, Limits lim, Zero zero) {
    using T = typename L::T;
    if constexpr (constFirst)
        return scaled<L, op>(Const<T>(c0, c1), Vec<T>{s}, d, n, sf, lim, zero);
    else
        return scaled<L, op>(Vec<T>{s}, Const<T>(c0, c1), d, n, sf, lim, zero);
}

// Real constant forms, out of place and in place.
template <class L, Op op, bool constFirst>
ZvpStatus realConst(const typename L::T* s, typename L::T c, typename L::T* d, int len, int sf,
                    Limits lim) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    using T = typename L::T;
    return vecConst<L, op, constFirst>(s, c, c, d, len, sf, lim,
                                       [](T* p, int n) { return zeroOf(p, n); });
}

// Complex constant forms: C is the complex type, the kernel runs on 2 * len
// reals and the zero fill uses the complex type's Zero.
template <class L, Op op, bool constFirst, class C, class ZeroC>
ZvpStatus complexConst(const C* s, C c, C* d, int len, int sf, Limits lim, ZeroC zeroC) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    using T = typename L::T;
    const T* sr = reinterpret_cast<const T*>(s);
    T* dr = reinterpret_cast<T*>(d);
    if (sf > lim.z) return zeroC(d, len);
    return overReals(len, [&](std::ptrdiff_t off, int n) {
        return vecConst<L, op, constFirst>(sr + off, c.re, c.im, dr + off, n, sf, lim,
                                           [](T*, int) { return zvpStsNoErr; });
    });
}

// Floating-point forms.
template <class F, Op op>
ZvpStatus floatVecVec(const F* x, const F* y, F* d, int len) {
    ZVP_CHECK_PTRS(x, y, d);
    ZVP_CHECK_LENS(len);
    floatKernel<F, op>(FVec<F>{x}, FVec<F>{y}, d, len);
    return zvpStsNoErr;
}

template <class F, Op op, bool constFirst>
ZvpStatus floatConst(const F* s, F c0, F c1, F* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if constexpr (constFirst)
        floatKernel<F, op>(FConst<F>(c0, c1), FVec<F>{s}, d, len);
    else
        floatKernel<F, op>(FVec<F>{s}, FConst<F>(c0, c1), d, len);
    return zvpStsNoErr;
}

// Complex floating-point forms as 2 * len reals.
template <class F, Op op, class C>
ZvpStatus floatVecVecC(const C* x, const C* y, C* d, int len) {
    ZVP_CHECK_PTRS(x, y, d);
    ZVP_CHECK_LENS(len);
    return overReals(len, [&](std::ptrdiff_t off, int n) {
        floatKernel<F, op>(FVec<F>{reinterpret_cast<const F*>(x) + off},
                           FVec<F>{reinterpret_cast<const F*>(y) + off},
                           reinterpret_cast<F*>(d) + off, n);
        return zvpStsNoErr;
    });
}

template <class F, Op op, bool constFirst, class C>
ZvpStatus floatConstC(const C* s, C c, C* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    return overReals(len, [&](std::ptrdiff_t off, int n) {
        const F* sr = reinterpret_cast<const F*>(s) + off;
        F* dr = reinterpret_cast<F*>(d) + off;
        if constexpr (constFirst)
            floatKernel<F, op>(FConst<F>(c.re, c.im), FVec<F>{sr}, dr, n);
        else
            floatKernel<F, op>(FVec<F>{sr}, FConst<F>(c.re, c.im), dr, n);
        return zvpStsNoErr;
    });
}

}  // namespace zvp::addsub

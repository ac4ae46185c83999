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

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "check.h"
#include "forms.h"
#include "lane_scale.h"
#include "level.h"
#include "p8/copy.h"
#include "scale.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::addsub {

using form::Const;
using form::Vec;

enum class Op { Add, Sub };  // R = a + b, or R = a - b

template <Op op, class W>
constexpr W apply(W a, W b) {
    if constexpr (op == Op::Add) return a + b;
    else return a - b;
}

// d = a op b of two 16-bit vectors as an exact float (|R| <= 65536 needs 17
// bits).
template <Op op>
struct Exact16s32f {
    template <class L, class A, class B>
    static typename L::R apply(A a, B b, std::ptrdiff_t i) {
        using S = Rebind<L, Zvp16s>;
        using I = Rebind<L, Zvp32s>;
        const auto x = S::widenLo(a.template load<S>(i)), y = S::widenLo(b.template load<S>(i));
        return L::fromI32(op == Op::Add ? I::add(x, y) : I::sub(x, y));
    }
};

// ---- Paths: the five ways of scaling R, on a lane L of T ------------------

template <class T>
struct Paths;

// 8u: R lies in [-255, 510] and is formed in 16-bit lanes.
template <>
struct Paths<std::uint8_t> {
    using T = std::uint8_t;
    using W = std::int32_t;
    struct PosK {
        Count c;
        __m128i halfMinusOne;
        explicit PosK(int sf)
            : c(sf), halfMinusOne(Full<std::int16_t>::set1(std::int16_t((1 << (sf - 1)) - 1))) {}
    };
    struct NegK {
        Count k;
        explicit NegK(int k_) : k(k_) {}
    };
    template <Op>
    static PosK posK(int sf) { return PosK(sf); }

    template <class L, Op op>
    static void wide(__m128i a, __m128i b, __m128i& lo, __m128i& hi) {
        using LW = Rebind<L, std::int16_t>;
        if constexpr (op == Op::Add) {
            lo = LW::add(L::widenLo(a), L::widenLo(b));
            hi = LW::add(L::widenHi(a), L::widenHi(b));
        } else {
            lo = LW::sub(L::widenLo(a), L::widenLo(b));
            hi = LW::sub(L::widenHi(a), L::widenHi(b));
        }
    }
    template <class L, Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return L::adds(a, b);
        else return L::subs(a, b);
    }
    template <class L, Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        using LW = Rebind<L, std::int16_t>;
        __m128i lo, hi;
        wide<L, op>(a, b, lo, hi);
        return LW::template narrow<T>(roundShiftEvenWide<LW>(lo, k.c, k.halfMinusOne),
                                      roundShiftEvenWide<LW>(hi, k.c, k.halfMinusOne));
    }
    template <class L, Op op>
    static __m128i one(__m128i a, __m128i b) {
        return pos<L, op>(a, b, PosK(1));
    }
    template <class L, Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        // Clamping R to [-1, 255] changes no result and keeps R * 2^7 in 16 bits.
        using LW = Rebind<L, std::int16_t>;
        __m128i lo, hi;
        wide<L, op>(a, b, lo, hi);
        const __m128i m1 = LW::set1(-1), top = LW::set1(255);
        lo = LW::shl(LW::min(LW::max(lo, m1), top), k.k);
        hi = LW::shl(LW::min(LW::max(hi, m1), top), k.k);
        return LW::template narrow<T>(lo, hi);
    }
    template <class L, Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return boundNonZero<L>(plain<L, op>(a, b));
    }
};

// 16s and 32s: R is one bit wider than the lane and is held in halves.
template <class T_, class W_>
struct SignedPaths {
    using T = T_;
    using W = W_;
    using PosK = PosConsts;
    struct NegK : NegConsts {
        explicit NegK(int k) : NegConsts(negConsts<Full<T>>(k)) {}
    };
    template <Op>
    static PosK posK(int sf) { return posConsts<Full<T>>(sf); }

    template <class L, Op op>
    static void halves(__m128i a, __m128i b, __m128i& h, __m128i& l) {
        if constexpr (op == Op::Add) halvesAdd<L>(a, b, h, l);
        else halvesSub<L>(a, b, h, l);
    }
    template <class L, Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return L::adds(a, b);
        else return L::subs(a, b);
    }
    template <class L, Op op>
    static __m128i one(__m128i a, __m128i b) {
        __m128i h, l;
        halves<L, op>(a, b, h, l);
        if constexpr (sizeof(T) == 2 || op == Op::Add) {
            // 16-bit lanes saturate; a 32-bit sum is at most 2^32 - 2 and
            // never leaves the lane.
            return roundHalves1<L>(h, l);
        } else {
            // A 32-bit difference of 2^32 - 1 would round up to 2^31: keep the maximum.
            const __m128i atMax = L::eq(h, L::set1(0x7FFFFFFF));
            return L::add(h, L::andnot(atMax, L::and_(l, h)));
        }
    }
    template <class L, Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        __m128i h, l;
        halves<L, op>(a, b, h, l);
        return roundHalvesPos<L>(h, l, k);
    }
    template <class L, Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        return shiftLeftSat<L>(plain<L, op>(a, b), k);
    }
    template <class L, Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return boundSign<L>(plain<L, op>(a, b));
    }
};

template <>
struct Paths<std::int16_t> : SignedPaths<std::int16_t, std::int32_t> {};
template <>
struct Paths<std::int32_t> : SignedPaths<std::int32_t, std::int64_t> {};

// 16u: a sum's halves are unsigned lanes, a difference's are signed ones
// whose negative results saturate to 0.
template <>
struct Paths<std::uint16_t> {
    using T = std::uint16_t;
    using W = std::int32_t;
    using PosK = PosConsts;
    struct NegK : NegConsts {
        explicit NegK(int k) : NegConsts(negConsts<Full<T>>(k)) {}
    };
    template <Op op>
    static PosK posK(int sf) {
        if constexpr (op == Op::Add) return posConsts<Full<std::uint16_t>>(sf);
        else return posConsts<Full<std::int16_t>>(sf);
    }

    template <class L, Op op>
    static __m128i plain(__m128i a, __m128i b) {
        if constexpr (op == Op::Add) return L::adds(a, b);
        else return L::subs(a, b);
    }
    template <class L, Op op>
    static __m128i one(__m128i a, __m128i b) {
        using S = Rebind<L, std::int16_t>;
        __m128i h, l;
        if constexpr (op == Op::Add) {
            halvesAdd<L>(a, b, h, l);
            return L::add(h, L::and_(l, h));  // h = 65535 only with l = 0
        } else {
            halvesSub<L>(a, b, h, l);
            // h >= 0 rounds to at most 32768 (fits the unsigned lane); h < 0 gives 0.
            return L::andnot(S::template shr<15>(h), L::add(h, L::and_(l, h)));
        }
    }
    template <class L, Op op>
    static __m128i pos(__m128i a, __m128i b, const PosK& k) {
        using S = Rebind<L, std::int16_t>;
        __m128i h, l;
        if constexpr (op == Op::Add) {
            halvesAdd<L>(a, b, h, l);
            return roundHalvesPos<L>(h, l, k);
        } else {
            halvesSub<L>(a, b, h, l);
            return S::max(roundHalvesPos<S>(h, l, k), S::zero());
        }
    }
    template <class L, Op op>
    static __m128i neg(__m128i a, __m128i b, const NegK& k) {
        return shiftLeftSat<L>(plain<L, op>(a, b), k);
    }
    template <class L, Op op>
    static __m128i bound(__m128i a, __m128i b) {
        return boundNonZero<L>(plain<L, op>(a, b));
    }
};

// ---- Integer driver ------------------------------------------------------

enum class Path { Plain, One, Pos, Neg, Bound };

// Zero above z, bound at or below n.
struct Limits {
    int z;
    int n;
};

template <class P, Op op, Path path, class L, class K>
inline __m128i step(__m128i x, __m128i y, const K& k) {
    if constexpr (path == Path::Plain) return P::template plain<L, op>(x, y);
    else if constexpr (path == Path::One) return P::template one<L, op>(x, y);
    else if constexpr (path == Path::Pos) return P::template pos<L, op>(x, y, k);
    else if constexpr (path == Path::Neg) return P::template neg<L, op>(x, y, k);
    else return P::template bound<L, op>(x, y);
}

// One path over n elements: two full vectors per step, then one, then the
// same path one lane at a time.
template <class T, Op op, Path path, class A, class B>
void runPath(A a, B b, T* d, std::ptrdiff_t n, int sf) {
    using P = Paths<T>;
    using F = Full<T>;
    using S = One<T>;
    constexpr std::ptrdiff_t V = F::N;
    auto run = [&](const auto& k) {
        std::ptrdiff_t i = 0;
        for (; i + 2 * V <= n; i += 2 * V) {
            const __m128i r0 = step<P, op, path, F>(a.template load<F>(i), b.template load<F>(i), k);
            const __m128i r1 =
                step<P, op, path, F>(a.template load<F>(i + V), b.template load<F>(i + V), k);
            F::store(d + i, r0);
            F::store(d + i + V, r1);
        }
        if (i + V <= n) {
            F::store(d + i, step<P, op, path, F>(a.template load<F>(i), b.template load<F>(i), k));
            i += V;
        }
        for (; i < n; ++i)
            S::store(d + i, step<P, op, path, S>(a.template load<S>(i), b.template load<S>(i), k));
    };
    if constexpr (path == Path::Pos) run(P::template posK<op>(sf));
    else if constexpr (path == Path::Neg) run(typename P::NegK(-sf));
    else {
        (void)sf;
        run(0);
    }
}

// d[0..n) = 0, for the scale factors above Z.
template <class T>
inline void fillZero(T* d, std::ptrdiff_t n) {
    std::memset(static_cast<void*>(d), 0, std::size_t(n) * sizeof(T));
}

// Runs the path of sf over n elements; above Z every result is 0.
template <class T, Op op, class A, class B>
ZvpStatus scaled(A a, B b, T* d, std::ptrdiff_t n, int sf, Limits lim) {
    if (sf == 0) runPath<T, op, Path::Plain>(a, b, d, n, sf);
    else if (sf == 1) runPath<T, op, Path::One>(a, b, d, n, sf);
    else if (sf > 1) {
        if (sf > lim.z) fillZero(d, n);
        else runPath<T, op, Path::Pos>(a, b, d, n, sf);
    } else if (sf > lim.n) runPath<T, op, Path::Neg>(a, b, d, n, sf);
    else runPath<T, op, Path::Bound>(a, b, d, n, sf);
    return zvpStsNoErr;
}

// ---- Floating point --------------------------------------------------------

// d[i] = a[i] op b[i] in IEEE arithmetic: four vectors per step, then one,
// then one lane at a time. Inlined into each export: in cache, a second call
// costs a measurable share of a 256-element add.
template <class F, Op op, bool kAlignedB, class A, class B>
[[gnu::always_inline]] inline void floatLoop(A a, B b, F* d, std::ptrdiff_t n) {
    using L = Full<F>;
    using S = One<F>;
    constexpr std::ptrdiff_t V = L::N;
    auto f = [](auto x, auto y) {
        if constexpr (op == Op::Add) return L::add(x, y);
        else return L::sub(x, y);
    };
    auto lb = [&](std::ptrdiff_t i) {
        if constexpr (kAlignedB) return b.template loada<L>(i);
        else return b.template load<L>(i);
    };
    std::ptrdiff_t i = 0;
    for (; i + 4 * V <= n; i += 4 * V) {
        const auto r0 = f(a.template load<L>(i), lb(i));
        const auto r1 = f(a.template load<L>(i + V), lb(i + V));
        const auto r2 = f(a.template load<L>(i + 2 * V), lb(i + 2 * V));
        const auto r3 = f(a.template load<L>(i + 3 * V), lb(i + 3 * V));
        L::store(d + i, r0);
        L::store(d + i + V, r1);
        L::store(d + i + 2 * V, r2);
        L::store(d + i + 3 * V, r3);
    }
    for (; i + V <= n; i += V) L::store(d + i, f(a.template load<L>(i), lb(i)));
    for (; i < n; ++i) {
        const auto x = a.template load<S>(i), y = b.template load<S>(i);
        S::store(d + i, op == Op::Add ? S::add(x, y) : S::sub(x, y));
    }
}

// d[i] = a[i] op b[i] in IEEE arithmetic: four vectors per step, then one,
// then one lane at a time. Inlined into each export: in cache, a second call
// costs a measurable share of a 256-element add. With b aligned its loads
// fold into the arithmetic (one instruction fewer per vector).
template <class F, Op op, class A, class B>
[[gnu::always_inline]] inline void floatKernel(A a, B b, F* d, std::ptrdiff_t n) {
    if (b.aligned()) floatLoop<F, op, true>(a, b, d, n);
    else floatLoop<F, op, false>(a, b, d, n);
}

// ---- Kernel policies for the forms (forms.h) ---------------------------------

// Integer operations with a scale factor (the plain forms pass 0).
template <class T, Op op, Limits lim>
struct Scaled {
    using type = T;
    template <class A, class B>
    static ZvpStatus run(A a, B b, T* d, std::ptrdiff_t n, int sf) {
        return scaled<T, op>(a, b, d, n, sf, lim);
    }
    template <class A, class B>
    static ZvpStatus run(A a, B b, T* d, std::ptrdiff_t n) {
        return scaled<T, op>(a, b, d, n, 0, lim);
    }
};

// A zero constant at scale factor 0 changes nothing: out of place the source
// is copied, in place nothing is written.
template <class K>
struct ZeroConstCopies : K {
    using T = typename K::type;
    template <class A>
    static ZvpStatus run(A a, Const<T> c, T* d, std::ptrdiff_t n, int sf) {
        if (c.isZero() && sf == 0) {
            if (a.p != d) std::memmove(static_cast<void*>(d), a.p, std::size_t(n) * sizeof(T));
            return zvpStsNoErr;
        }
        return K::run(a, c, d, n, sf);
    }
    template <class A>
    static ZvpStatus run(A a, Const<T> c, T* d, std::ptrdiff_t n) {
        return run(a, c, d, n, 0);
    }
};

// IEEE addition or subtraction.
template <class F, Op op>
struct FloatOp {
    using type = F;
    template <class A, class B>
    static ZvpStatus run(A a, B b, F* d, std::ptrdiff_t n) {
        floatKernel<F, op>(a, b, d, n);
        return zvpStsNoErr;
    }
};

}  // namespace zvp::ZVP_LEVEL::addsub

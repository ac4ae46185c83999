// Kernels of the multiply families (Mul, MulC, AddProduct) on integers.
//
// Every integer form computes the exact result R of one element (a product,
// or an accumulator plus a product) and delivers scaleRule(R, sf) (scale.h).
// The scale factor picks one of six paths:
//   sf = 0            Plain   saturate R
//   sf = 1            One     round R / 2
//   2 <= sf <= Z      Pos     round R / 2^sf
//   sf > Z            Zero    every result is 0
//   N < sf <= -1      Neg     R * 2^-sf, saturated
//   sf <= N           Bound   0, or the type's maximum or minimum by R's sign
// Z is the largest factor at which some R still rounds to a non-zero value
// and N the largest at which every non-zero R saturates, so the split gives
// exactly the rule's results.
//
// A kernel is an operand source run through a lane set. The source forms R
// for the destination lane L it is asked for (wide lanes, in two registers),
// the lane set does the path's arithmetic on them and ends in the
// destination type. The body runs at full lanes, the tail is the same kernel
// at one lane (one complex pair), so the two agree bit for bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "forms.h"
#include "lane_scale.h"
#include "level.h"
#include "scale.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::muldiv {

using R = __m128i;

enum class Path { Plain, One, Pos, Zero, Neg, Bound };

// The path of scale factor sf for an operation with thresholds Z and N.
constexpr Path pathOf(int sf, int z, int n) {
    if (sf == 0) return Path::Plain;
    if (sf > 0) return sf == 1 ? Path::One : (sf <= z ? Path::Pos : Path::Zero);
    return sf > n ? Path::Neg : Path::Bound;
}

// Zero above z, bound at or below n.
struct Limits {
    int z;
    int n;
};

constexpr bool rounds(Path p) { return p == Path::One || p == Path::Pos; }

// ---- Lane sets ---------------------------------------------------------------
//
// Each lane set takes R in the source's wide lanes and returns the
// destination values of the block, saturated, in one register. pre() is the
// part done on the wide lanes (rounding); finish() narrows and does the part
// done on the destination lanes (left shift, bound). operator() is both.

// R in signed 32-bit lanes (two registers), destination 16s or 16u.
// kHeadroom: the source promises |R| + 2^(sf-1) < 2^31 for every sf of the
// Pos path (a product of two 16s values, with Z = 30), which allows the
// shorter rounding (R + 2^(sf-1) - 1 + ((R >> sf) AND 1)) >> sf.
template <class D, Path P, bool kHeadroom = false>
struct Lanes32to16 {
    static_assert(sizeof(D) == 2);
    using W = Full<std::int32_t>;
    using L = Full<D>;
    RoundShift<W> pos;
    NegConsts neg;
    R halfMinusOne;
    explicit Lanes32to16(int sf)
        : pos(rounds(P) ? sf : 1), neg(negConsts<L>(P == Path::Neg ? -sf : 1)),
          halfMinusOne(W::set1(rounds(P) ? (1 << (sf - 1)) - 1 : 0)) {}
    R pre(R r) const {
        if constexpr (rounds(P) && kHeadroom) return roundShiftEvenWide<W>(r, pos.c, halfMinusOne);
        else if constexpr (rounds(P)) return pos(r);
        else return r;
    }
    R finish(R r0, R r1) const {
        const R s = W::template narrow<D>(r0, r1);
        if constexpr (P == Path::Neg) return shiftLeftSat<L>(s, neg);
        else if constexpr (P == Path::Bound && L::kSigned) return boundSign<L>(s);
        else if constexpr (P == Path::Bound) return boundNonZero<L>(s);
        else return s;
    }
    R operator()(R r0, R r1) const { return finish(pre(r0), pre(r1)); }
};

// R in unsigned 32-bit lanes (two registers), destination 16u.
template <Path P>
struct LanesU32to16u {
    using W = Full<std::uint32_t>;
    using L = Full<std::uint16_t>;
    RoundShift<W> pos;
    NegConsts neg;
    explicit LanesU32to16u(int sf) : pos(rounds(P) ? sf : 1), neg(negConsts<L>(P == Path::Neg ? -sf : 1)) {}
    R pre(R r) const {
        if constexpr (rounds(P)) return pos(r);
        else return r;
    }
    R finish(R r0, R r1) const {
        const R s = W::template narrow<std::uint16_t>(r0, r1);
        if constexpr (P == Path::Neg) return shiftLeftSat<L>(s, neg);
        else if constexpr (P == Path::Bound) return boundNonZero<L>(s);
        else return s;
    }
    R operator()(R r0, R r1) const { return finish(pre(r0), pre(r1)); }
};

// R in signed 32-bit lanes (one register) with |R| <= 2^30, destination
// 32s: only a left shift can leave the type.
template <Path P>
struct Lanes32to32 {
    using W = Full<std::int32_t>;
    RoundShift<W> pos;
    NegConsts neg;
    explicit Lanes32to32(int sf) : pos(rounds(P) ? sf : 1), neg(negConsts<W>(P == Path::Neg ? -sf : 1)) {}
    R operator()(R r, R = R()) const {
        if constexpr (rounds(P)) return pos(r);
        else if constexpr (P == Path::Neg) return shiftLeftSat<W>(r, neg);
        else if constexpr (P == Path::Bound) return boundSign<W>(r);
        else return r;
    }
};

// R in signed 64-bit lanes: e = (R0, R2) and o = (R1, R3) of four
// consecutive values, destination 32s.
template <Path P>
struct Lanes64to32 {
    using W = Full<std::int64_t>;
    using L = Full<std::int32_t>;
    RoundShift<W> pos;
    NegConsts neg;
    explicit Lanes64to32(int sf) : pos(rounds(P) ? sf : 1), neg(negConsts<L>(P == Path::Neg ? -sf : 1)) {}
    static R clamp(R r) {
        return W::max(W::min(r, W::set1(INT32_MAX)), W::set1(INT32_MIN));
    }
    R finish(R e, R o) const {
        if constexpr (rounds(P)) {
            e = pos(e);
            o = pos(o);
        }
        // The low halves of the clamped lanes, in the order (e0, o0, e1, o1).
        const R s = W::or_(W::and_(clamp(e), W::set1(0xFFFFFFFF)), W::template shl<32>(clamp(o)));
        if constexpr (P == Path::Neg) return shiftLeftSat<L>(s, neg);
        else if constexpr (P == Path::Bound) return boundSign<L>(s);
        else return s;
    }
    R operator()(R e, R o) const { return finish(e, o); }
};

// R in unsigned 16-bit lanes (two registers), destination 8u.
template <Path P>
struct LanesU16to8u {
    using W = Full<std::uint16_t>;
    RoundShift<W> pos;
    Count k;
    explicit LanesU16to8u(int sf) : pos(rounds(P) ? sf : 1), k(P == Path::Neg ? -sf : 0) {}
    R one(R r) const {
        const R m = W::set1(255);
        if constexpr (rounds(P)) return W::min(pos(r), m);
        // 255 * 2^7 still fits the lane, and N = -8 keeps k <= 7.
        else if constexpr (P == Path::Neg) return W::min(W::shl(W::min(r, m), k), m);
        else return W::min(r, m);
    }
    R finish(R r0, R r1) const {
        // Both halves are at most 255 already.
        const R s = Full<std::int16_t>::template narrow<std::uint8_t>(one(r0), one(r1));
        if constexpr (P == Path::Bound) return boundNonZero<Full<std::uint8_t>>(s);
        else return s;
    }
    R operator()(R r0, R r1) const { return finish(r0, r1); }
};

// ---- Running a kernel ----------------------------------------------------------
//
// A source S provides lanes<L>(i, r0, r1): R of the destination values
// i .. i + L::N - 1 in its wide lanes. Sources read every operand of a step
// before the step is stored, so in-place calls are safe.

template <class LS, class S>
struct Kernel {
    LS ls;
    S s;
    template <class L>
    R at(std::ptrdiff_t i) const {
        R r0, r1;
        s.template lanes<L>(i, r0, r1);
        return ls(r0, r1);
    }
};

// d[0..n) = 0, for the scale factors above Z.
template <class T>
inline void fillZero(T* d, std::ptrdiff_t n) {
    std::memset(static_cast<void*>(d), 0, std::size_t(n) * sizeof(T));
}

// One path over n values of D; a function of its own, so each loop keeps
// its constants in registers with a small frame.
template <class D, int U, class LS, class S>
[[gnu::noinline]] void runPath(S s, D* d, std::ptrdiff_t n, int sf) {
    form::each<D, U>(Kernel<LS, S>{LS(sf), s}, d, n);
}

// Runs the path of sf over n values of D through the lane set LS<path>;
// U values at a time in the tail.
template <class D, int U, template <Path> class LS, class S>
ZvpStatus scaled(const S& s, D* d, std::ptrdiff_t n, int sf, Limits lim) {
    switch (pathOf(sf, lim.z, lim.n)) {
        case Path::Plain: runPath<D, U, LS<Path::Plain>>(s, d, n, sf); break;
        case Path::One: runPath<D, U, LS<Path::One>>(s, d, n, sf); break;
        case Path::Pos: runPath<D, U, LS<Path::Pos>>(s, d, n, sf); break;
        case Path::Zero: fillZero(d, n); break;
        case Path::Neg: runPath<D, U, LS<Path::Neg>>(s, d, n, sf); break;
        case Path::Bound: runPath<D, U, LS<Path::Bound>>(s, d, n, sf); break;
    }
    return zvpStsNoErr;
}

// Lane sets by destination, as templates of the path alone.
template <class D, bool kHeadroom = false>
struct To16 {
    template <Path P>
    using LS = Lanes32to16<D, P, kHeadroom>;
};

// Kernel policy of the forms (forms.h): the source Src<A, B> of the two
// operands through the lane set LS, thresholds lim; U values per tail step.
// The plain forms pass no scale factor.
template <class D, template <class, class> class Src, template <Path> class LS, Limits lim, int U = 1>
struct Scaled {
    using type = D;
    template <class A, class B>
    static ZvpStatus run(A a, B b, D* d, std::ptrdiff_t n, int sf) {
        return scaled<D, U, LS>(Src<A, B>{a, b}, d, n, sf, lim);
    }
    template <class A, class B>
    static ZvpStatus run(A a, B b, D* d, std::ptrdiff_t n) {
        return run(a, b, d, n, 0);
    }
};

// The same policy with its operands swapped: the in-place form of an
// operation whose two operands differ in type.
template <class K>
struct Swapped : K {
    template <class A, class B, class D, class... X>
    static ZvpStatus run(A a, B b, D* d, std::ptrdiff_t n, X... x) {
        return K::run(b, a, d, n, x...);
    }
};

// An accumulating policy: the destination is also the third operand.
template <class D, template <class, class, class> class Src, template <Path> class LS, Limits lim>
struct Accumulate {
    using type = D;
    template <class A, class B>
    static ZvpStatus run(A a, B b, D* d, std::ptrdiff_t n, int sf) {
        return scaled<D, 1, LS>(Src<A, B, form::Vec<D>>{a, b, {d}}, d, n, sf, lim);
    }
};

}  // namespace zvp::ZVP_LEVEL::muldiv

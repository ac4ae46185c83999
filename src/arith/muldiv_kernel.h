// Kernels of the multiply families (Mul, MulC, AddProduct) on integers.
//
// Every integer form computes the exact result R of one element (a product,
// or an accumulator plus a product) and delivers scaleRule(R, sf) (scale.h).
// The scale factor picks one of six paths:
//   sf = 0            Plain   saturate R
//   sf = 1            One     round R / 2
//   2 <= sf <= Z      Pos     round R / 2^sf
//   sf > Z            Zero    every result is 0: the type's Zero operation
//   N < sf <= -1      Neg     R * 2^-sf, saturated
//   sf <= N           Bound   0, or the type's maximum or minimum by R's sign
// Z is the largest factor at which some R still rounds to a non-zero value
// and N the largest at which every non-zero R saturates, so the split gives
// exactly the rule's results.
//
// A kernel is an operand source (it forms R for a block of elements in wide
// lanes, and for one element as a scalar) run through a lane set (the path's
// arithmetic on those lanes, ending in the destination type). The vector
// body handles whole blocks; the scalar tail applies scaleRule itself.
#pragma once

#include <immintrin.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "scale.h"
#include "scale_sse.h"
#include "simd.h"
#include "zvps.h"

namespace zvp::muldiv {

enum class Path { Plain, One, Pos, Zero, Neg, Bound };

// The path of scale factor sf for an operation with thresholds Z and N.
constexpr Path pathOf(int sf, int z, int n) {
    if (sf == 0) return Path::Plain;
    if (sf > 0) return sf == 1 ? Path::One : (sf <= z ? Path::Pos : Path::Zero);
    return sf > n ? Path::Neg : Path::Bound;
}

// ---- Rounding of R / 2^sf on wide lanes ----------------------------------
//
// q = floor(R / 2^sf), rem = R mod 2^sf; round up iff rem > 2^(sf-1), or
// rem = 2^(sf-1) and q is odd, that is iff rem > 2^(sf-1) - (q AND 1).
// Nothing here can overflow, whatever the lane holds.

struct PosS32 {  // signed 32-bit lanes, 1 <= sf <= 31
    sse::ShiftCount c;
    __m128i mask, half;
    explicit PosS32(int sf)
        : c(sf),
          mask(_mm_set1_epi32(std::int32_t((std::uint32_t(1) << sf) - 1))),
          half(_mm_set1_epi32(std::int32_t(std::uint32_t(1) << (sf - 1)))) {}
    __m128i operator()(__m128i r) const {
        const __m128i q = _mm_sra_epi32(r, c.v);
        const __m128i rem = _mm_and_si128(r, mask);
        const __m128i t = _mm_sub_epi32(half, _mm_and_si128(q, _mm_set1_epi32(1)));
        return _mm_sub_epi32(q, _mm_cmpgt_epi32(rem, t));
    }
};

struct PosU32 {  // unsigned 32-bit lanes, 1 <= sf <= 32
    sse::ShiftCount c;
    __m128i mask, half;
    explicit PosU32(int sf)
        : c(sf),
          mask(_mm_set1_epi32(std::int32_t(sf >= 32 ? ~0u : (1u << sf) - 1))),
          half(_mm_set1_epi32(std::int32_t(1u << (sf - 1)))) {}
    __m128i operator()(__m128i r) const {
        const __m128i q = _mm_srl_epi32(r, c.v);
        const __m128i rem = _mm_and_si128(r, mask);
        const __m128i t = _mm_sub_epi32(half, _mm_and_si128(q, _mm_set1_epi32(1)));
        return _mm_sub_epi32(q, sse::cmpgtU32(rem, t));
    }
};

struct PosU16 {  // unsigned 16-bit lanes, 1 <= sf <= 16
    sse::ShiftCount c;
    __m128i mask, half;
    explicit PosU16(int sf)
        : c(sf),
          mask(_mm_set1_epi16(std::int16_t((1u << sf) - 1))),
          half(_mm_set1_epi16(std::int16_t(1u << (sf - 1)))) {}
    __m128i operator()(__m128i r) const {
        const __m128i q = _mm_srl_epi16(r, c.v);
        const __m128i rem = _mm_and_si128(r, mask);
        const __m128i t = _mm_sub_epi16(half, _mm_and_si128(q, _mm_set1_epi16(1)));
        return _mm_sub_epi16(q, sse::cmpgtU16(rem, t));
    }
};

// floor(r / 2^sf) on signed 64-bit lanes, 1 <= sf <= 63.
inline __m128i sra64(__m128i r, sse::ShiftCount c, sse::ShiftCount cInv) {
    const __m128i sign = _mm_cmpgt_epi64(_mm_setzero_si128(), r);
    return _mm_or_si128(_mm_srl_epi64(r, c.v), _mm_sll_epi64(sign, cInv.v));
}

struct PosS64 {  // signed 64-bit lanes, 1 <= sf <= 63
    sse::ShiftCount c, cInv;
    __m128i mask, half;
    explicit PosS64(int sf)
        : c(sf), cInv(64 - sf),
          mask(_mm_set1_epi64x(std::int64_t((std::uint64_t(1) << sf) - 1))),
          half(_mm_set1_epi64x(std::int64_t(std::uint64_t(1) << (sf - 1)))) {}
    __m128i operator()(__m128i r) const {
        const __m128i q = sra64(r, c, cInv);
        const __m128i rem = _mm_and_si128(r, mask);
        const __m128i t = _mm_sub_epi64(half, _mm_and_si128(q, _mm_set1_epi64x(1)));
        return _mm_sub_epi64(q, _mm_cmpgt_epi64(rem, t));
    }
};

// ---- Lane sets ---------------------------------------------------------------
//
// Each lane set takes R in the operand source's wide lanes and returns the
// destination values of the block, saturated, as one 16-byte vector.
// pre() is the part done on the wide lanes (rounding); finish() narrows and
// does the part done on the destination lanes (left shift, bound).

// R in signed 32-bit lanes (two vectors, 8 values), destination 16s or 16u.
// kHeadroom: the source promises |R| + 2^(sf-1) < 2^31 for every sf of the
// Pos path (a product of two 16s values, with Z = 30), which allows the
// shorter rounding (R + 2^(sf-1) - 1 + ((R >> sf) AND 1)) >> sf.
template <class D, Path P, bool kHeadroom = false>
struct Lanes32to16 {
    static_assert(sizeof(D) == 2);
    static constexpr bool kSigned = std::is_signed_v<D>;
    PosS32 pos;
    sse::NegConsts neg;
    __m128i halfMinusOne;
    explicit Lanes32to16(int sf)
        : pos(P == Path::Pos || P == Path::One ? sf : 1),
          neg(kSigned ? sse::negConstsS16(P == Path::Neg ? -sf : 1)
                      : sse::negConstsU16(P == Path::Neg ? -sf : 1)),
          halfMinusOne(_mm_set1_epi32(P == Path::Pos || P == Path::One ? (1 << (sf - 1)) - 1 : 0)) {}
    __m128i pre(__m128i r) const {
        if constexpr ((P == Path::One || P == Path::Pos) && kHeadroom)
            return sse::roundShiftEvenWideS32(r, pos.c, halfMinusOne);
        else if constexpr (P == Path::One || P == Path::Pos)
            return pos(r);
        else
            return r;
    }
    __m128i finish(__m128i r0, __m128i r1) const {
        const __m128i s = kSigned ? _mm_packs_epi32(r0, r1) : _mm_packus_epi32(r0, r1);
        if constexpr (P == Path::Neg)
            return kSigned ? sse::shiftLeftSatS16(s, neg) : sse::shiftLeftSatU16(s, neg);
        else if constexpr (P == Path::Bound)
            return kSigned ? sse::boundSignS16(s) : sse::boundNonZeroU16(s);
        else
            return s;
    }
};

// R in unsigned 32-bit lanes (two vectors, 8 values), destination 16u.
template <Path P>
struct LanesU32to16u {
    PosU32 pos;
    sse::NegConsts neg;
    explicit LanesU32to16u(int sf)
        : pos(P == Path::Pos || P == Path::One ? sf : 1),
          neg(sse::negConstsU16(P == Path::Neg ? -sf : 1)) {}
    __m128i pre(__m128i r) const {
        if constexpr (P == Path::One || P == Path::Pos) return pos(r);
        else return r;
    }
    __m128i finish(__m128i r0, __m128i r1) const {
        const __m128i m = _mm_set1_epi32(0xFFFF);
        const __m128i s = _mm_packus_epi32(_mm_min_epu32(r0, m), _mm_min_epu32(r1, m));
        if constexpr (P == Path::Neg) return sse::shiftLeftSatU16(s, neg);
        else if constexpr (P == Path::Bound) return sse::boundNonZeroU16(s);
        else return s;
    }
};

// R in signed 32-bit lanes (one vector, 4 values) with |R| <= 2^30,
// destination 32s: only a left shift can leave the type.
template <Path P>
struct Lanes32to32 {
    PosS32 pos;
    sse::NegConsts neg;
    explicit Lanes32to32(int sf)
        : pos(P == Path::Pos || P == Path::One ? sf : 1),
          neg(sse::negConstsS32(P == Path::Neg ? -sf : 1)) {}
    __m128i operator()(__m128i r) const {
        if constexpr (P == Path::One || P == Path::Pos) return pos(r);
        else if constexpr (P == Path::Neg) return sse::shiftLeftSatS32(r, neg);
        else if constexpr (P == Path::Bound) return sse::boundSignS32(r);
        else return r;
    }
};

// Saturates signed 64-bit lanes to [-2^31, 2^31 - 1] (still 64-bit lanes).
inline __m128i clamp64to32(__m128i r) {
    const __m128i hi = _mm_set1_epi64x(INT32_MAX), lo = _mm_set1_epi64x(INT32_MIN);
    r = _mm_blendv_epi8(r, hi, _mm_cmpgt_epi64(r, hi));
    return _mm_blendv_epi8(r, lo, _mm_cmpgt_epi64(lo, r));
}

// R in signed 64-bit lanes: two vectors e = (R0, R2) and o = (R1, R3) of
// four consecutive values, destination 32s.
template <Path P>
struct Lanes64to32 {
    PosS64 pos;
    sse::NegConsts neg;
    explicit Lanes64to32(int sf)
        : pos(P == Path::Pos || P == Path::One ? sf : 1),
          neg(sse::negConstsS32(P == Path::Neg ? -sf : 1)) {}
    __m128i finish(__m128i e, __m128i o) const {
        if constexpr (P == Path::One || P == Path::Pos) {
            e = pos(e);
            o = pos(o);
        }
        e = clamp64to32(e);
        o = clamp64to32(o);
        // Low halves of (e0, o0, e1, o1).
        const __m128i s = _mm_unpacklo_epi32(_mm_shuffle_epi32(e, _MM_SHUFFLE(3, 1, 2, 0)),
                                             _mm_shuffle_epi32(o, _MM_SHUFFLE(3, 1, 2, 0)));
        if constexpr (P == Path::Neg) return sse::shiftLeftSatS32(s, neg);
        else if constexpr (P == Path::Bound) return sse::boundSignS32(s);
        else return s;
    }
};

// R in unsigned 16-bit lanes (two vectors, 16 values), destination 8u.
template <Path P>
struct LanesU16to8u {
    PosU16 pos;
    sse::ShiftCount k;
    explicit LanesU16to8u(int sf)
        : pos(P == Path::Pos || P == Path::One ? sf : 1), k(P == Path::Neg ? -sf : 0) {}
    __m128i one(__m128i r) const {
        const __m128i m = _mm_set1_epi16(255);
        if constexpr (P == Path::One || P == Path::Pos) return _mm_min_epu16(pos(r), m);
        // 255 * 2^7 still fits the lane, and N = -8 keeps k <= 7.
        else if constexpr (P == Path::Neg) return _mm_min_epu16(_mm_sll_epi16(_mm_min_epu16(r, m), k.v), m);
        else return _mm_min_epu16(r, m);
    }
    __m128i finish(__m128i r0, __m128i r1) const {
        const __m128i s = _mm_packus_epi16(one(r0), one(r1));
        if constexpr (P == Path::Bound) return sse::boundNonZeroU8(s);
        else return s;
    }
};

// ---- Drivers -------------------------------------------------------------------
//
// An operand source S provides
//   lanes(i, ...)                             R of the elements of a step
//   W exact(i)                                R of element i
// and the driver stores the results. Sources read element i of every operand
// before the destination's element i is written, so in-place calls are safe.
// The drivers work on a copy of the source, so its pointers stay in registers
// across the stores.

// 16-bit destination, R in two vectors of 32-bit lanes.
template <class LaneSet, class S, class D>
void run16(const S& source, D* d, std::ptrdiff_t len, int sf) {
    const S s = source;
    const LaneSet ls(sf);
    std::ptrdiff_t i = 0;
    for (; i + 16 <= len; i += 16) {  // two steps, loads before stores
        __m128i r0, r1, r2, r3;
        s.lanes(i, r0, r1);
        s.lanes(i + 8, r2, r3);
        const __m128i v0 = ls.finish(ls.pre(r0), ls.pre(r1)), v1 = ls.finish(ls.pre(r2), ls.pre(r3));
        simd::storeu(d + i, v0);
        simd::storeu(d + i + 8, v1);
    }
    for (; i + 8 <= len; i += 8) {
        __m128i r0, r1;
        s.lanes(i, r0, r1);
        simd::storeu(d + i, ls.finish(ls.pre(r0), ls.pre(r1)));
    }
    for (; i < len; ++i) d[i] = scaleRule<D>(s.exact(i), sf);
}

// 8u destination, R in two vectors of unsigned 16-bit lanes.
template <class LaneSet, class S>
void run8(const S& source, Zvp8u* d, std::ptrdiff_t len, int sf) {
    const S s = source;
    const LaneSet ls(sf);
    std::ptrdiff_t i = 0;
    for (; i + 16 <= len; i += 16) {
        __m128i r0, r1;
        s.lanes(i, r0, r1);
        simd::storeu(d + i, ls.finish(r0, r1));
    }
    for (; i < len; ++i) d[i] = scaleRule<Zvp8u>(s.exact(i), sf);
}

// 32s destination, R in one vector of 32-bit lanes.
template <class LaneSet, class S>
void run32from32(const S& source, Zvp32s* d, std::ptrdiff_t len, int sf) {
    const S s = source;
    const LaneSet ls(sf);
    std::ptrdiff_t i = 0;
    for (; i + 4 <= len; i += 4) simd::storeu(d + i, ls(s.lanes(i)));
    for (; i < len; ++i) d[i] = scaleRule<Zvp32s>(s.exact(i), sf);
}

// 32s destination, R in two vectors of 64-bit lanes (even, odd elements).
template <class LaneSet, class S>
void run32from64(const S& source, Zvp32s* d, std::ptrdiff_t len, int sf) {
    const S s = source;
    const LaneSet ls(sf);
    std::ptrdiff_t i = 0;
    for (; i + 4 <= len; i += 4) {
        __m128i e, o;
        s.lanes(i, e, o);
        simd::storeu(d + i, ls.finish(e, o));
    }
    for (; i < len; ++i) d[i] = scaleRule<Zvp32s>(s.exact(i), sf);
}

// Instantiates Run<P>::go(args...) for the path of sf; the Zero path calls
// zero() instead (the type's Zero operation, whose status it returns).
template <template <Path> class Run, class ZeroFn, class... A>
ZvpStatus dispatch(int sf, int z, int n, ZeroFn zero, A&&... a) {
    switch (pathOf(sf, z, n)) {
        case Path::Plain: Run<Path::Plain>::go(a..., sf); break;
        case Path::One: Run<Path::One>::go(a..., sf); break;
        case Path::Pos: Run<Path::Pos>::go(a..., sf); break;
        case Path::Zero: return zero();
        case Path::Neg: Run<Path::Neg>::go(a..., sf); break;
        case Path::Bound: Run<Path::Bound>::go(a..., sf); break;
    }
    return zvpStsNoErr;
}

}  // namespace zvp::muldiv

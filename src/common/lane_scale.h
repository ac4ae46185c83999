// The integer scaling rule
//     result = saturate(R * 2^-sf), rounded to nearest with ties to even,
// as operations on integer lanes (16-bit and 32-bit, and 64-bit for the
// rounding of wide products). Each gives, lane by lane, exactly what
// scaleRule (scale.h) gives for the same exact R, at every lane width,
// so a kernel's vector body and its one-lane tail agree bit for bit.
//
// R is held in one of four ways:
//
//  * R itself, with headroom in the lane (a sum of two 8-bit values in a
//    16-bit lane): roundShiftEvenWide.
//
//  * R itself, in a lane wide enough that nothing can overflow (a product
//    in 32-bit or 64-bit lanes): RoundShift.
//
//  * R in halves, when R is one bit wider than the lane (the sum or
//    difference of two lane-wide values): R = 2*h + l with h = floor(R/2)
//    in the lane and l in {0, 1}. halvesAdd / halvesSub form h and l without
//    overflow; roundHalves1 and roundHalvesPos round them.
//
//  * R already saturated to the lane (adds and friends). A saturated value
//    keeps its sign and stays saturated when multiplied by 2^k, k >= 1, so
//    this is all negative scale factors need: shiftLeftSat and boundSign /
//    boundNonZero.
//
// Shift counts are held in registers (Count) so one kernel serves every
// scale factor of a path.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include "lane_int.h"

namespace zvp::ZVP_LEVEL {

// ---- R in halves ---------------------------------------------------------

// h = floor((a + b) / 2), l = (a + b) mod 2. For unsigned lanes h is an
// unsigned lane value.
template <class L>
inline void halvesAdd(typename L::R a, typename L::R b, typename L::R& h, typename L::R& l) {
    const auto x = L::xor_(a, b);
    h = L::add(L::and_(a, b), L::template shr<1>(x));
    l = L::and_(x, L::set1(1));
}

// h = floor((a - b) / 2), l = (a - b) mod 2, from
// a - b = (a ^ b) - 2 * (~a & b). For unsigned lanes h lies in
// [-2^(bits-2)... ] and is read as a signed lane.
template <class L>
inline void halvesSub(typename L::R a, typename L::R b, typename L::R& h, typename L::R& l) {
    const auto x = L::xor_(a, b);
    h = L::sub(L::template shr<1>(x), L::andnot(a, b));
    l = L::and_(x, L::set1(1));
}

// R / 2 with ties to even from halves: h + (l AND h AND 1). On 16-bit lanes
// the one value that can leave the type (h at its maximum with l = 1)
// saturates; on 32-bit lanes the caller handles it.
template <class L>
inline typename L::R roundHalves1(typename L::R h, typename L::R l) {
    if constexpr (L::kBits == 16) return L::adds(h, L::and_(l, h));
    else return L::add(h, L::and_(l, h));
}

// Constants of the rounding step for a scale factor sf in 2 .. bits + 1:
//   q   = floor(R / 2^sf)  = h >> (sf - 1)
//   rem = R mod 2^sf       = 2 * (h AND m) + l,  m = 2^(sf-1) - 1
// Round up iff rem > 2^(sf-1), or rem = 2^(sf-1) and q is odd, which is
//   (h AND m) > 2^(sf-2) - (l OR (q AND 1)).
// The quotient q + 1 never leaves the lane for sf >= 2.
struct PosConsts {
    Count c;       // sf - 1
    __m128i mask;  // 2^(sf-1) - 1
    __m128i quarter;  // 2^(sf-2), biased by the sign bit for unsigned lanes
};

// L is the lane type of h: unsigned for the halves of an unsigned sum,
// signed otherwise.
template <class L>
inline PosConsts posConsts(int sf) {
    using T = typename L::type;
    using U = std::make_unsigned_t<T>;
    const U m = U((U(1) << (sf - 1)) - 1);
    U q = U(U(1) << (sf - 2));
    if constexpr (!L::kSigned) q = U(q ^ (U(1) << (L::kBits - 1)));
    return {Count(sf - 1), L::set1(T(m)), L::set1(T(q))};
}

// The rounded quotient from halves (16-bit lanes for sf 2..17 unsigned, 2..16
// signed; 32-bit signed lanes for sf 2..32).
template <class L>
inline typename L::R roundHalvesPos(typename L::R h, typename L::R l, const PosConsts& k) {
    const auto q = L::shr(h, k.c);
    const auto lo = L::or_(l, L::and_(q, L::set1(1)));
    const auto rem = L::and_(h, k.mask);
    if constexpr (L::kSigned) {
        return L::sub(q, L::gt(rem, L::sub(k.quarter, lo)));
    } else {
        // quarter is pre-biased, so one xor turns the compare signed.
        using S = Lane<std::make_signed_t<typename L::type>, L::kBytes>;
        return L::sub(q, S::gt(L::xor_(rem, L::bias()), L::sub(k.quarter, lo)));
    }
}

// ---- R with headroom -----------------------------------------------------

// (R + 2^(sf-1) - 1 + ((R >> sf) AND 1)) >> sf on signed lanes, for sf >= 1
// and |R| + 2^(sf-1) below the lane's maximum. halfMinusOne = 2^(sf-1) - 1.
template <class L>
inline typename L::R roundShiftEvenWide(typename L::R r, Count c, typename L::R halfMinusOne) {
    static_assert(L::kSigned);
    const auto odd = L::and_(L::shr(r, c), L::set1(1));
    return L::shr(L::add(L::add(r, halfMinusOne), odd), c);
}

// ---- R wide enough ---------------------------------------------------------

// R / 2^sf rounded to nearest with ties to even, for R anywhere in the
// lane (1 <= sf <= bits - 1 signed, 1 <= sf <= bits unsigned):
// q = floor(R / 2^sf), rem = R mod 2^sf, round up iff
// rem > 2^(sf-1) - (q AND 1). Nothing can overflow.
template <class L>
struct RoundShift {
    using T = typename L::type;
    using U = std::make_unsigned_t<T>;
    Count c, cInv;
    __m128i mask, half;
    explicit RoundShift(int sf)
        : c(sf), cInv(L::kBits - sf),
          mask(L::set1(T(sf >= L::kBits ? ~U(0) : U((U(1) << sf) - 1)))),
          half(L::set1(T(U(1) << (sf - 1)))) {}
    __m128i operator()(__m128i r) const {
        __m128i q;
        if constexpr (L::kBits == 64 && L::kSigned) q = L::shr(r, c, cInv);
        else q = L::shr(r, c);
        const auto rem = L::and_(r, mask);
        const auto t = L::sub(half, L::and_(q, L::set1(1)));
        return L::sub(q, L::gt(rem, t));
    }
};

// ---- R saturated to the lane ---------------------------------------------

// Constants of a left shift by k >= 1 with saturation.
struct NegConsts {
    Count k;
    __m128i hi;  // largest value that survives the shift (sign-biased for unsigned lanes)
    __m128i lo;  // smallest value that survives the shift (signed lanes)
};

template <class L>
inline NegConsts negConsts(int k) {
    using T = typename L::type;
    using Lim = std::numeric_limits<T>;
    if constexpr (L::kSigned) {
        return {Count(k), L::set1(T(Lim::max() >> k)), L::set1(T(Lim::min() >> k))};
    } else {
        using U = T;
        const U hi = U(U(Lim::max() >> k) ^ (U(1) << (L::kBits - 1)));
        return {Count(k), L::set1(hi), L::zero()};
    }
}

// s * 2^k saturated, for s already saturated to the lane.
template <class L>
inline typename L::R shiftLeftSat(typename L::R s, const NegConsts& k) {
    const auto t = L::shl(s, k.k);
    if constexpr (L::kSigned) {
        const auto over = L::or_(L::gt(s, k.hi), L::gt(k.lo, s));
        return L::blend(t, L::satBySign(s), over);
    } else {
        using S = Lane<std::make_signed_t<typename L::type>, L::kBytes>;
        return L::or_(t, S::gt(L::xor_(s, L::bias()), k.hi));  // the maximum is all ones
    }
}

// The bound of a very negative scale factor: the maximum for s > 0, the
// minimum for s < 0, 0 for s = 0.
template <class L>
inline typename L::R boundSign(typename L::R s) {
    static_assert(L::kSigned);
    return L::add(L::sign(L::set1(std::numeric_limits<typename L::type>::max()), s),
                  L::template shr<L::kBits - 1>(s));
}

// Unsigned lanes: all ones where s != 0.
template <class L>
inline typename L::R boundNonZero(typename L::R s) {
    return L::not_(L::eq(s, L::zero()));
}

}  // namespace zvp::ZVP_LEVEL

// SSE4.1 building blocks of the integer scaling rule
//     result = saturate(R * 2^-sf), rounded to nearest with ties to even,
// on 16-bit and 32-bit lanes. Every helper gives, lane by lane, exactly what
// zvp::scaleRule (scale.h) gives for the same exact R, so a vector body and a
// scalar tail built from the two agree bit for bit.
//
// Three ways of holding the exact result R are supported:
//
//  * R itself, when the lane has headroom for it (a sum of two 8-bit values
//    in a 16-bit lane, a sum of two 16-bit values in a 32-bit lane):
//    roundShiftEvenWide_*.
//
//  * R in halves, when R is one bit wider than the lane (the sum or
//    difference of two lane-wide values): R = 2*h + l with h = floor(R/2)
//    in the lane and l in {0, 1}. halvesAdd_* / halvesSub_* form h and l
//    without overflow; roundHalves1_* and roundHalvesPos_* round them.
//
//  * R already saturated to the lane (_mm_adds_epi16 and friends). Any
//    saturated value keeps its sign and stays saturated when multiplied by
//    2^k, k >= 1, so this is all that negative scale factors need:
//    shiftLeftSat_* and boundSign_*.
//
// Shift counts are passed in registers (ShiftCount) so one kernel serves
// every scale factor of a path.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace zvp::sse {

// ---- Small lane helpers ------------------------------------------------

inline __m128i ones() { return _mm_set1_epi32(-1); }

// a > b for unsigned 16-bit lanes.
inline __m128i cmpgtU16(__m128i a, __m128i b) {
    const __m128i bias = _mm_set1_epi16(std::int16_t(0x8000));
    return _mm_cmpgt_epi16(_mm_xor_si128(a, bias), _mm_xor_si128(b, bias));
}

// a > b for unsigned 32-bit lanes.
inline __m128i cmpgtU32(__m128i a, __m128i b) {
    const __m128i bias = _mm_set1_epi32(std::int32_t(0x80000000u));
    return _mm_cmpgt_epi32(_mm_xor_si128(a, bias), _mm_xor_si128(b, bias));
}

// Selects b where the sign bit of the 32-bit lane of m is set, else a.
inline __m128i select32(__m128i a, __m128i b, __m128i m) {
    return _mm_castps_si128(
        _mm_blendv_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), _mm_castsi128_ps(m)));
}

// A shift count held in a register (low 64 bits), as the _mm_sll/_mm_sra
// family takes it.
struct ShiftCount {
    __m128i v;
    explicit ShiftCount(int n) : v(_mm_cvtsi32_si128(n)) {}
};

// ---- Saturating 32-bit arithmetic ----------------------------------------

// a + b saturated to [-2^31, 2^31 - 1].
inline __m128i addsEpi32(__m128i a, __m128i b) {
    const __m128i s = _mm_add_epi32(a, b);
    // Overflow iff both operands have the sign that the sum lacks.
    const __m128i ovf = _mm_and_si128(_mm_xor_si128(a, s), _mm_xor_si128(b, s));
    const __m128i sat = _mm_xor_si128(_mm_srai_epi32(a, 31), _mm_set1_epi32(0x7FFFFFFF));
    return select32(s, sat, ovf);
}

// a - b saturated to [-2^31, 2^31 - 1].
inline __m128i subsEpi32(__m128i a, __m128i b) {
    const __m128i s = _mm_sub_epi32(a, b);
    // Overflow iff the operands differ in sign and the result lost a's sign.
    const __m128i ovf = _mm_and_si128(_mm_xor_si128(a, b), _mm_xor_si128(a, s));
    const __m128i sat = _mm_xor_si128(_mm_srai_epi32(a, 31), _mm_set1_epi32(0x7FFFFFFF));
    return select32(s, sat, ovf);
}

// a + b saturated to [0, 2^32 - 1] (unsigned lanes).
inline __m128i addsEpu32(__m128i a, __m128i b) {
    // ~a is the room left above a; taking at most that much cannot wrap.
    return _mm_add_epi32(a, _mm_min_epu32(b, _mm_xor_si128(a, ones())));
}

// ---- R in halves ---------------------------------------------------------

// h = floor((a + b) / 2) and l = (a + b) mod 2 for signed 16-bit lanes.
inline void halvesAddS16(__m128i a, __m128i b, __m128i& h, __m128i& l) {
    const __m128i x = _mm_xor_si128(a, b);
    h = _mm_add_epi16(_mm_and_si128(a, b), _mm_srai_epi16(x, 1));
    l = _mm_and_si128(x, _mm_set1_epi16(1));
}

// h = floor((a - b) / 2) and l = (a - b) mod 2 for signed 16-bit lanes.
// Uses a - b = (a ^ b) - 2 * (~a & b), which holds exactly for signed values.
inline void halvesSubS16(__m128i a, __m128i b, __m128i& h, __m128i& l) {
    const __m128i x = _mm_xor_si128(a, b);
    h = _mm_sub_epi16(_mm_srai_epi16(x, 1), _mm_andnot_si128(a, b));
    l = _mm_and_si128(x, _mm_set1_epi16(1));
}

// Unsigned 16-bit lanes: h = floor((a + b) / 2) as an unsigned lane.
inline void halvesAddU16(__m128i a, __m128i b, __m128i& h, __m128i& l) {
    const __m128i x = _mm_xor_si128(a, b);
    h = _mm_add_epi16(_mm_and_si128(a, b), _mm_srli_epi16(x, 1));
    l = _mm_and_si128(x, _mm_set1_epi16(1));
}

// Unsigned 16-bit lanes: h = floor((a - b) / 2), which lies in
// [-32768, 32767], as a signed lane.
inline void halvesSubU16(__m128i a, __m128i b, __m128i& h, __m128i& l) {
    const __m128i x = _mm_xor_si128(a, b);
    h = _mm_sub_epi16(_mm_srli_epi16(x, 1), _mm_andnot_si128(a, b));
    l = _mm_and_si128(x, _mm_set1_epi16(1));
}

// Signed 32-bit lanes, as halvesAddS16.
inline void halvesAddS32(__m128i a, __m128i b, __m128i& h, __m128i& l) {
    const __m128i x = _mm_xor_si128(a, b);
    h = _mm_add_epi32(_mm_and_si128(a, b), _mm_srai_epi32(x, 1));
    l = _mm_and_si128(x, _mm_set1_epi32(1));
}

// Signed 32-bit lanes, as halvesSubS16.
inline void halvesSubS32(__m128i a, __m128i b, __m128i& h, __m128i& l) {
    const __m128i x = _mm_xor_si128(a, b);
    h = _mm_sub_epi32(_mm_srai_epi32(x, 1), _mm_andnot_si128(a, b));
    l = _mm_and_si128(x, _mm_set1_epi32(1));
}

// R / 2 with ties to even from halves: h + (l AND h AND 1). The caller
// saturates the one lane value that can leave the type (h at its maximum
// with l = 1); for 16-bit lanes roundHalves1S16 does it with adds.
inline __m128i roundHalves1S16(__m128i h, __m128i l) {
    return _mm_adds_epi16(h, _mm_and_si128(l, h));
}
inline __m128i roundHalves1S32(__m128i h, __m128i l) {
    return _mm_add_epi32(h, _mm_and_si128(l, h));
}

// Constants of the rounding step for a scale factor sf in 2 .. lane bits + 1.
//   q   = floor(R / 2^sf)      = h >> (sf - 1)
//   rem = R mod 2^sf           = 2 * (h AND m) + l,  m = 2^(sf-1) - 1
// Round up iff rem > 2^(sf-1), or rem = 2^(sf-1) and q is odd, which is
//   (h AND m) > 2^(sf-2) - (l OR (q AND 1)).
// The quotient q + 1 never leaves the lane for sf >= 2.
struct PosConsts {
    ShiftCount c;   // sf - 1
    __m128i mask;   // 2^(sf-1) - 1
    __m128i quarter;  // 2^(sf-2), biased by the lane's sign bit for unsigned lanes
};

inline PosConsts posConsts16(int sf, bool unsignedLane) {
    const int m = (1 << (sf - 1)) - 1;
    int q = 1 << (sf - 2);
    if (unsignedLane) q ^= 0x8000;
    return {ShiftCount(sf - 1), _mm_set1_epi16(std::int16_t(m)), _mm_set1_epi16(std::int16_t(q))};
}

inline PosConsts posConsts32(int sf) {
    const std::uint32_t m = (std::uint32_t(1) << (sf - 1)) - 1;
    const std::uint32_t q = std::uint32_t(1) << (sf - 2);
    return {ShiftCount(sf - 1), _mm_set1_epi32(std::int32_t(m)), _mm_set1_epi32(std::int32_t(q))};
}

// Signed h (sf 2..16): the rounded quotient, in [-16384, 16384].
inline __m128i roundHalvesPosS16(__m128i h, __m128i l, const PosConsts& k) {
    const __m128i q = _mm_sra_epi16(h, k.c.v);
    const __m128i lo = _mm_or_si128(l, _mm_and_si128(q, _mm_set1_epi16(1)));
    const __m128i up = _mm_cmpgt_epi16(_mm_and_si128(h, k.mask), _mm_sub_epi16(k.quarter, lo));
    return _mm_sub_epi16(q, up);
}

// Unsigned h (sf 2..17, constants made with unsignedLane = true): the
// rounded quotient, in [0, 32768].
inline __m128i roundHalvesPosU16(__m128i h, __m128i l, const PosConsts& k) {
    const __m128i bias = _mm_set1_epi16(std::int16_t(0x8000));
    const __m128i q = _mm_srl_epi16(h, k.c.v);
    const __m128i lo = _mm_or_si128(l, _mm_and_si128(q, _mm_set1_epi16(1)));
    const __m128i rem = _mm_xor_si128(_mm_and_si128(h, k.mask), bias);
    const __m128i up = _mm_cmpgt_epi16(rem, _mm_sub_epi16(k.quarter, lo));
    return _mm_sub_epi16(q, up);
}

// Signed h (sf 2..32): the rounded quotient.
inline __m128i roundHalvesPosS32(__m128i h, __m128i l, const PosConsts& k) {
    const __m128i q = _mm_sra_epi32(h, k.c.v);
    const __m128i lo = _mm_or_si128(l, _mm_and_si128(q, _mm_set1_epi32(1)));
    const __m128i up = _mm_cmpgt_epi32(_mm_and_si128(h, k.mask), _mm_sub_epi32(k.quarter, lo));
    return _mm_sub_epi32(q, up);
}

// ---- R with headroom -------------------------------------------------------

// (R + 2^(sf-1) - 1 + ((R >> sf) AND 1)) >> sf on signed 16-bit lanes, for
// sf >= 1 and |R| + 2^(sf-1) < 2^15. halfMinusOne = 2^(sf-1) - 1.
inline __m128i roundShiftEvenWideS16(__m128i r, ShiftCount c, __m128i halfMinusOne) {
    const __m128i odd = _mm_and_si128(_mm_sra_epi16(r, c.v), _mm_set1_epi16(1));
    return _mm_sra_epi16(_mm_add_epi16(_mm_add_epi16(r, halfMinusOne), odd), c.v);
}

// The same on signed 32-bit lanes, for |R| + 2^(sf-1) < 2^31.
inline __m128i roundShiftEvenWideS32(__m128i r, ShiftCount c, __m128i halfMinusOne) {
    const __m128i odd = _mm_and_si128(_mm_sra_epi32(r, c.v), _mm_set1_epi32(1));
    return _mm_sra_epi32(_mm_add_epi32(_mm_add_epi32(r, halfMinusOne), odd), c.v);
}

// ---- R saturated to the lane ---------------------------------------------

// Constants of a left shift by k >= 1 with saturation.
struct NegConsts {
    ShiftCount k;
    __m128i hi;  // largest value that survives the shift
    __m128i lo;  // smallest value that survives the shift (signed lanes)
};

inline NegConsts negConstsS16(int k) {
    return {ShiftCount(k), _mm_set1_epi16(std::int16_t(32767 >> k)),
            _mm_set1_epi16(std::int16_t(-32768 >> k))};
}
inline NegConsts negConstsU16(int k) {
    // Compared with a sign-biased lane: see shiftLeftSatU16.
    return {ShiftCount(k), _mm_set1_epi16(std::int16_t((65535 >> k) ^ 0x8000)), _mm_setzero_si128()};
}
inline NegConsts negConstsS32(int k) {
    return {ShiftCount(k), _mm_set1_epi32(std::int32_t(0x7FFFFFFF >> k)),
            _mm_set1_epi32(std::int32_t(-2147483647 - 1) >> k)};
}

// s * 2^k saturated, for s already saturated to the lane.
inline __m128i shiftLeftSatS16(__m128i s, const NegConsts& k) {
    const __m128i t = _mm_sll_epi16(s, k.k.v);
    const __m128i over = _mm_or_si128(_mm_cmpgt_epi16(s, k.hi), _mm_cmpgt_epi16(k.lo, s));
    const __m128i sat = _mm_xor_si128(_mm_srai_epi16(s, 15), _mm_set1_epi16(0x7FFF));
    return _mm_blendv_epi8(t, sat, over);
}

inline __m128i shiftLeftSatU16(__m128i s, const NegConsts& k) {
    const __m128i t = _mm_sll_epi16(s, k.k.v);
    const __m128i over =
        _mm_cmpgt_epi16(_mm_xor_si128(s, _mm_set1_epi16(std::int16_t(0x8000))), k.hi);
    return _mm_or_si128(t, over);  // 65535 is all ones
}

inline __m128i shiftLeftSatS32(__m128i s, const NegConsts& k) {
    const __m128i t = _mm_sll_epi32(s, k.k.v);
    const __m128i over = _mm_or_si128(_mm_cmpgt_epi32(s, k.hi), _mm_cmpgt_epi32(k.lo, s));
    const __m128i sat = _mm_xor_si128(_mm_srai_epi32(s, 31), _mm_set1_epi32(0x7FFFFFFF));
    return select32(t, sat, over);
}

// The bound of a very negative scale factor: maximum for s > 0, minimum for
// s < 0, 0 for s = 0.
inline __m128i boundSignS16(__m128i s) {
    return _mm_add_epi16(_mm_sign_epi16(_mm_set1_epi16(0x7FFF), s), _mm_srai_epi16(s, 15));
}
inline __m128i boundSignS32(__m128i s) {
    return _mm_add_epi32(_mm_sign_epi32(_mm_set1_epi32(0x7FFFFFFF), s), _mm_srai_epi32(s, 31));
}
// Unsigned lanes (16 or 8 bits alike): all ones where s != 0.
inline __m128i boundNonZeroU16(__m128i s) {
    return _mm_xor_si128(_mm_cmpeq_epi16(s, _mm_setzero_si128()), ones());
}
inline __m128i boundNonZeroU8(__m128i s) {
    return _mm_xor_si128(_mm_cmpeq_epi8(s, _mm_setzero_si128()), ones());
}

}  // namespace zvp::sse

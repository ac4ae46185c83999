// Integer lanes of the lane layer (see lane.h for the shared interface).
//
// Lane<T, B> for T of 8, 16, 32 and 64 bits, signed or unsigned. Beyond the
// shared members:
//   adds, subs           saturating to T's range (32-bit lanes emulated)
//   mullo, mulhi         low half of the product; high half (16-bit lanes)
//   abs, sign(a, s)      |a|; a negated where s < 0, zeroed where s = 0
//   ones()               every bit set
//   gt, lt               compares in T's signedness
//   selectSign(a, b, s)  b where the sign bit of s's lane is set, else a
//   shl<k>, shr<k>       by a constant; shr is arithmetic for signed T
//   shl(v, c), shr(v, c) by a Count, one register for every lane
//   widenLo, widenHi     the low or high half of the lanes, sign- or
//                        zero-extended to twice the width
//   narrow<D>(lo, hi)    two registers of T to one of D (half the width),
//                        saturated to D's range
//   reverse              the lanes in reverse order (full lanes)
//   zipLo, zipHi, hiHalf, swapReIm   interleaving and pair swaps
//   mulWideLo/Hi, maddPairs, mulEven/Odd   products into wider lanes
//   lookup8(t, k)        16-bit lanes: entry k (0..7) of the table register t
// Rebind<L, W> is the lane type of W with L's count (capped at a full
// vector): the lanes a widened or narrowed L lands in.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "lane.h"

namespace zvp::ZVP_LEVEL {

// A shift count held in a register, for the shifts whose count is only
// known at run time (one kernel serves every scale factor of a path).
struct Count {
    __m128i v;
    explicit Count(int n) : v(_mm_cvtsi32_si128(n)) {}
};

template <class L, class W>
using Rebind = Lane<W, std::min(16, L::N * int(sizeof(W)))>;

namespace laneint {

template <class T>
using Wider = std::conditional_t<
    sizeof(T) == 1, std::conditional_t<std::is_signed_v<T>, std::int16_t, std::uint16_t>,
    std::conditional_t<sizeof(T) == 2,
                       std::conditional_t<std::is_signed_v<T>, std::int32_t, std::uint32_t>,
                       std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>>>;

template <class T, int B>
struct IntLane {
    static_assert(std::is_integral_v<T>);
    static_assert(B == 16 || (B >= int(sizeof(T)) && B < 16 && (B & (B - 1)) == 0));
    using R = __m128i;
    using M = __m128i;
    using type = T;
    static constexpr int N = B / int(sizeof(T));
    static constexpr int kBytes = B;
    static constexpr bool kScalar = N == 1;
    static constexpr int kBits = 8 * int(sizeof(T));
    static constexpr bool kSigned = std::is_signed_v<T>;

    // ---- memory
    static R load(const T* p) { return lanemem::load<B>(p); }
    static R loada(const T* p) { return lanemem::loada<B>(p); }
    static void store(T* p, R v) { lanemem::store<B>(p, v); }
    static void storea(T* p, R v) { lanemem::storea<B>(p, v); }
    static void stream(T* p, R v) {
        if constexpr (B == 16) _mm_stream_si128(reinterpret_cast<__m128i*>(p), v);
        else store(p, v);
    }
    static R loadN(const T* p, int n) {
        return lanemem::loadBytes<B>(p, std::size_t(n) * sizeof(T));
    }
    static void storeN(T* p, R v, int n) {
        lanemem::storeBytes<B>(p, v, std::size_t(n) * sizeof(T));
    }

    // ---- values
    static R set1(T x) {
        if constexpr (kBits == 8) return _mm_set1_epi8(char(x));
        else if constexpr (kBits == 16) return _mm_set1_epi16(short(x));
        else if constexpr (kBits == 32) return _mm_set1_epi32(int(x));
        else return _mm_set1_epi64x((long long)(x));
    }
    static R zero() { return _mm_setzero_si128(); }
    static R ones() { return _mm_set1_epi32(-1); }
    static R pair(T x0, T x1) {
        if constexpr (kBits == 8) {
            const int p = int(std::uint8_t(x0)) | int(std::uint8_t(x1)) << 8;
            return _mm_set1_epi16(short(p));
        } else if constexpr (kBits == 16) {
            return _mm_set1_epi32(int(std::uint16_t(x0)) | int(std::uint32_t(std::uint16_t(x1)) << 16));
        } else if constexpr (kBits == 32) {
            return _mm_setr_epi32(int(x0), int(x1), int(x0), int(x1));
        } else {
            return _mm_set_epi64x((long long)(x1), (long long)(x0));
        }
    }
    static T first(R v) {
        if constexpr (kBits == 64) {
            std::int64_t x;
            lanemem::store<8>(&x, v);
            return T(x);
        } else {
            return T(_mm_cvtsi128_si32(v));
        }
    }

    // ---- wrapping arithmetic
    static R add(R a, R b) {
        if constexpr (kBits == 8) return _mm_add_epi8(a, b);
        else if constexpr (kBits == 16) return _mm_add_epi16(a, b);
        else if constexpr (kBits == 32) return _mm_add_epi32(a, b);
        else return _mm_add_epi64(a, b);
    }
    static R sub(R a, R b) {
        if constexpr (kBits == 8) return _mm_sub_epi8(a, b);
        else if constexpr (kBits == 16) return _mm_sub_epi16(a, b);
        else if constexpr (kBits == 32) return _mm_sub_epi32(a, b);
        else return _mm_sub_epi64(a, b);
    }
    static R mullo(R a, R b) {
        if constexpr (kBits == 16) return _mm_mullo_epi16(a, b);
        else {
            static_assert(kBits == 32);
            return _mm_mullo_epi32(a, b);
        }
    }
    static R mulhi(R a, R b) {
        static_assert(kBits == 16);
        if constexpr (kSigned) return _mm_mulhi_epi16(a, b);
        else return _mm_mulhi_epu16(a, b);
    }

    // ---- bits, compares, selection
    static R and_(R a, R b) { return _mm_and_si128(a, b); }
    static R or_(R a, R b) { return _mm_or_si128(a, b); }
    static R xor_(R a, R b) { return _mm_xor_si128(a, b); }
    static R andnot(R a, R b) { return _mm_andnot_si128(a, b); }
    static R not_(R a) { return _mm_xor_si128(a, ones()); }

    static M eq(R a, R b) {
        if constexpr (kBits == 8) return _mm_cmpeq_epi8(a, b);
        else if constexpr (kBits == 16) return _mm_cmpeq_epi16(a, b);
        else if constexpr (kBits == 32) return _mm_cmpeq_epi32(a, b);
        else return _mm_cmpeq_epi64(a, b);
    }
    static M ne(R a, R b) { return not_(eq(a, b)); }
    // The lane's most negative value: adding it maps unsigned order onto
    // signed order.
    static R bias() {
        using S = std::make_signed_t<T>;
        return IntLane<S, B>::set1(std::numeric_limits<S>::min());
    }
    static M gtSigned(R a, R b) {
        if constexpr (kBits == 8) return _mm_cmpgt_epi8(a, b);
        else if constexpr (kBits == 16) return _mm_cmpgt_epi16(a, b);
        else if constexpr (kBits == 32) return _mm_cmpgt_epi32(a, b);
        else return _mm_cmpgt_epi64(a, b);
    }
    static M gt(R a, R b) {
        if constexpr (kSigned) return gtSigned(a, b);
        else return gtSigned(_mm_xor_si128(a, bias()), _mm_xor_si128(b, bias()));
    }
    static M lt(R a, R b) { return gt(b, a); }
    static M ge(R a, R b) { return not_(gt(b, a)); }
    static M le(R a, R b) { return not_(gt(a, b)); }
    // m ? b : a, for masks of whole lanes.
    static R blend(R a, R b, M m) { return _mm_blendv_epi8(a, b, m); }
    // b where the sign bit of s's lane is set, else a.
    static R selectSign(R a, R b, R s) {
        if constexpr (kBits == 8) return _mm_blendv_epi8(a, b, s);
        else if constexpr (kBits == 16) return _mm_blendv_epi8(a, b, _mm_srai_epi16(s, 15));
        else if constexpr (kBits == 32)
            return _mm_castps_si128(_mm_blendv_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b),
                                                  _mm_castsi128_ps(s)));
        else
            return _mm_castpd_si128(_mm_blendv_pd(_mm_castsi128_pd(a), _mm_castsi128_pd(b),
                                                  _mm_castsi128_pd(s)));
    }
    // Whether any of the N lanes of m is set.
    static bool anyOf(M m) {
        constexpr int bytes = B;
        constexpr int used = bytes >= 16 ? 0xFFFF : (1 << bytes) - 1;
        return (_mm_movemask_epi8(m) & used) != 0;
    }
    // The number of the first of the N lanes of m that is set; N if none is.
    static int firstOf(M m) {
        constexpr int used = B >= 16 ? 0xFFFF : (1 << B) - 1;
        const int bits = _mm_movemask_epi8(m) & used;
        return bits ? __builtin_ctz(unsigned(bits)) / int(sizeof(T)) : N;
    }

    // ---- min, max, saturating arithmetic
    static R min(R a, R b) {
        if constexpr (kBits == 8) return kSigned ? _mm_min_epi8(a, b) : _mm_min_epu8(a, b);
        else if constexpr (kBits == 16) return kSigned ? _mm_min_epi16(a, b) : _mm_min_epu16(a, b);
        else if constexpr (kBits == 32) return kSigned ? _mm_min_epi32(a, b) : _mm_min_epu32(a, b);
        else return blend(a, b, gt(a, b));
    }
    static R max(R a, R b) {
        if constexpr (kBits == 8) return kSigned ? _mm_max_epi8(a, b) : _mm_max_epu8(a, b);
        else if constexpr (kBits == 16) return kSigned ? _mm_max_epi16(a, b) : _mm_max_epu16(a, b);
        else if constexpr (kBits == 32) return kSigned ? _mm_max_epi32(a, b) : _mm_max_epu32(a, b);
        else return blend(a, b, gt(b, a));
    }
    // The signed type's maximum where s >= 0, its minimum where s < 0.
    static R satBySign(R s) {
        static_assert(kSigned);
        return _mm_xor_si128(shr<kBits - 1>(s), set1(std::numeric_limits<T>::max()));
    }
    static R adds(R a, R b) {
        if constexpr (kBits == 8) return kSigned ? _mm_adds_epi8(a, b) : _mm_adds_epu8(a, b);
        else if constexpr (kBits == 16) return kSigned ? _mm_adds_epi16(a, b) : _mm_adds_epu16(a, b);
        else if constexpr (kBits == 32 && kSigned) {
            const R s = add(a, b);
            // Overflow iff both operands have the sign that the sum lacks.
            const R ovf = and_(xor_(a, s), xor_(b, s));
            return selectSign(s, satBySign(a), ovf);
        } else {
            static_assert(kBits == 32);
            // ~a is the room left above a; taking at most that much cannot wrap.
            return add(a, min(b, not_(a)));
        }
    }
    static R subs(R a, R b) {
        if constexpr (kBits == 8) return kSigned ? _mm_subs_epi8(a, b) : _mm_subs_epu8(a, b);
        else if constexpr (kBits == 16) return kSigned ? _mm_subs_epi16(a, b) : _mm_subs_epu16(a, b);
        else if constexpr (kBits == 32 && kSigned) {
            const R s = sub(a, b);
            // Overflow iff the operands differ in sign and the result lost a's sign.
            const R ovf = and_(xor_(a, b), xor_(a, s));
            return selectSign(s, satBySign(a), ovf);
        } else {
            static_assert(kBits == 32);
            return sub(a, min(a, b));
        }
    }
    static R abs(R a) {
        static_assert(kSigned && kBits <= 32);
        if constexpr (kBits == 8) return _mm_abs_epi8(a);
        else if constexpr (kBits == 16) return _mm_abs_epi16(a);
        else return _mm_abs_epi32(a);
    }
    static R sign(R a, R s) {
        static_assert(kSigned && kBits <= 32);
        if constexpr (kBits == 8) return _mm_sign_epi8(a, s);
        else if constexpr (kBits == 16) return _mm_sign_epi16(a, s);
        else return _mm_sign_epi32(a, s);
    }

    // ---- shifts (16, 32 and 64-bit lanes)
    template <int k>
    static R shl(R v) {
        if constexpr (kBits == 16) return _mm_slli_epi16(v, k);
        else if constexpr (kBits == 32) return _mm_slli_epi32(v, k);
        else return _mm_slli_epi64(v, k);
    }
    template <int k>
    static R shr(R v) {
        if constexpr (kBits == 16) return kSigned ? _mm_srai_epi16(v, k) : _mm_srli_epi16(v, k);
        else if constexpr (kBits == 32) return kSigned ? _mm_srai_epi32(v, k) : _mm_srli_epi32(v, k);
        else if constexpr (!kSigned) return _mm_srli_epi64(v, k);
        else if constexpr (k == 0) return v;
        else {
            const R sign = _mm_cmpgt_epi64(_mm_setzero_si128(), v);
            return _mm_or_si128(_mm_srli_epi64(v, k), _mm_slli_epi64(sign, 64 - k));
        }
    }
    static R shl(R v, Count c) {
        if constexpr (kBits == 16) return _mm_sll_epi16(v, c.v);
        else if constexpr (kBits == 32) return _mm_sll_epi32(v, c.v);
        else return _mm_sll_epi64(v, c.v);
    }
    // Signed 64-bit lanes need the complementary count: see Count64.
    static R shr(R v, Count c) {
        static_assert(!(kBits == 64 && kSigned), "use shr(v, c, 64 - c)");
        if constexpr (kBits == 16) return kSigned ? _mm_sra_epi16(v, c.v) : _mm_srl_epi16(v, c.v);
        else if constexpr (kBits == 32) return kSigned ? _mm_sra_epi32(v, c.v) : _mm_srl_epi32(v, c.v);
        else return _mm_srl_epi64(v, c.v);
    }
    // Arithmetic right shift of signed 64-bit lanes by c (1..63); cInv = 64 - c.
    static R shr(R v, Count c, Count cInv) {
        static_assert(kBits == 64 && kSigned);
        const R sign = _mm_cmpgt_epi64(_mm_setzero_si128(), v);
        return _mm_or_si128(_mm_srl_epi64(v, c.v), _mm_sll_epi64(sign, cInv.v));
    }

    // ---- width changes
    using Wide = Lane<Wider<T>, std::min(16, 2 * B)>;
    static R widenLo(R v) {
        if constexpr (kBits == 8) return kSigned ? _mm_cvtepi8_epi16(v) : _mm_cvtepu8_epi16(v);
        else if constexpr (kBits == 16) return kSigned ? _mm_cvtepi16_epi32(v) : _mm_cvtepu16_epi32(v);
        else return kSigned ? _mm_cvtepi32_epi64(v) : _mm_cvtepu32_epi64(v);
    }
    static R widenHi(R v) {
        if constexpr (!kSigned) {
            const R z = _mm_setzero_si128();
            if constexpr (kBits == 8) return _mm_unpackhi_epi8(v, z);
            else if constexpr (kBits == 16) return _mm_unpackhi_epi16(v, z);
            else return _mm_unpackhi_epi32(v, z);
        } else {
            return widenLo(_mm_unpackhi_epi64(v, v));
        }
    }

    // Two registers of T, as lo then hi, into one of D (half the width),
    // saturated to D's range.
    template <class D>
    static R narrow(R lo, R hi) {
        static_assert(sizeof(D) * 2 == sizeof(T));
        if constexpr (kBits == 16) {
            if constexpr (kSigned) return std::is_signed_v<D> ? _mm_packs_epi16(lo, hi) : _mm_packus_epi16(lo, hi);
            else {
                static_assert(!std::is_signed_v<D>);
                const R m = set1(0xFF);
                return _mm_packus_epi16(_mm_min_epu16(lo, m), _mm_min_epu16(hi, m));
            }
        } else {
            static_assert(kBits == 32);
            if constexpr (kSigned) return std::is_signed_v<D> ? _mm_packs_epi32(lo, hi) : _mm_packus_epi32(lo, hi);
            else {
                static_assert(!std::is_signed_v<D>);
                const R m = set1(0xFFFF);
                return _mm_packus_epi32(_mm_min_epu32(lo, m), _mm_min_epu32(hi, m));
            }
        }
    }

    // ---- rearrangement
    // (a0, b0, a1, b1, ...) from the low halves of a and b; zipHi the same
    // from the high halves.
    static R zipLo(R a, R b) {
        if constexpr (kBits == 8) return _mm_unpacklo_epi8(a, b);
        else if constexpr (kBits == 16) return _mm_unpacklo_epi16(a, b);
        else if constexpr (kBits == 32) return _mm_unpacklo_epi32(a, b);
        else return _mm_unpacklo_epi64(a, b);
    }
    static R zipHi(R a, R b) {
        if constexpr (kBits == 8) return _mm_unpackhi_epi8(a, b);
        else if constexpr (kBits == 16) return _mm_unpackhi_epi16(a, b);
        else if constexpr (kBits == 32) return _mm_unpackhi_epi32(a, b);
        else return _mm_unpackhi_epi64(a, b);
    }
    // The 32-bit lanes in the order (0, 2, 1, 3): the even ones in the low
    // half, the odd ones in the high half.
    static R evensThenOdds(R v) {
        static_assert(kBits == 32);
        return _mm_shuffle_epi32(v, _MM_SHUFFLE(3, 1, 2, 0));
    }
    // The high 8 bytes moved to the low ones (and kept above).
    static R hiHalf(R v) { return _mm_unpackhi_epi64(v, v); }
    // Each pair of lanes swapped: (re, im) -> (im, re).
    static R swapReIm(R v) {
        if constexpr (kBits == 16)
            return _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, _MM_SHUFFLE(2, 3, 0, 1)), _MM_SHUFFLE(2, 3, 0, 1));
        else if constexpr (kBits == 32) return _mm_shuffle_epi32(v, _MM_SHUFFLE(2, 3, 0, 1));
        else return _mm_shuffle_epi32(v, _MM_SHUFFLE(1, 0, 3, 2));
    }

    // ---- widening products
    // The exact products of the low (mulWideLo) or high (mulWideHi) half of
    // the 16-bit lanes, as 32-bit lanes.
    static R mulWideLo(R a, R b) {
        static_assert(kBits == 16);
        return _mm_unpacklo_epi16(mullo(a, b), mulhi(a, b));
    }
    static R mulWideHi(R a, R b) {
        static_assert(kBits == 16);
        return _mm_unpackhi_epi16(mullo(a, b), mulhi(a, b));
    }
    // a0 b0 + a1 b1 for each pair of signed 16-bit lanes, as a 32-bit lane
    // (wraps only for all four values -32768).
    static R maddPairs(R a, R b) {
        static_assert(kBits == 16 && kSigned);
        return _mm_madd_epi16(a, b);
    }
    // The exact products of 32-bit lanes 0 and 2 (mulEven) or 1 and 3
    // (mulOdd), as 64-bit lanes.
    static R mulEven(R a, R b) {
        static_assert(kBits == 32);
        if constexpr (kSigned) return _mm_mul_epi32(a, b);
        else return _mm_mul_epu32(a, b);
    }
    static R mulOdd(R a, R b) {
        return mulEven(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
    }

    // Each 16-bit lane replaced by entry k of the eight 16-bit entries of t,
    // k being the lane's value (0..7). A table lookup within the register.
    static R lookup8(R t, R k) {
        static_assert(kBits == 16);
        // Byte indices 2k and 2k + 1 for the low and the high byte.
        const R idx = _mm_add_epi16(_mm_mullo_epi16(k, _mm_set1_epi16(0x0202)), _mm_set1_epi16(0x0100));
        return _mm_shuffle_epi8(t, idx);
    }

    static R reverse(R v) {
        if constexpr (kBits == 8)
            return _mm_shuffle_epi8(v, _mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0));
        else if constexpr (kBits == 16)
            return _mm_shuffle_epi8(v, _mm_setr_epi8(14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1));
        else if constexpr (kBits == 32) return _mm_shuffle_epi32(v, _MM_SHUFFLE(0, 1, 2, 3));
        else return _mm_shuffle_epi32(v, _MM_SHUFFLE(1, 0, 3, 2));
    }
};

}  // namespace laneint

#define ZVP_INT_LANE(T)                                   \
    template <int B>                                      \
    struct Lane<T, B> : laneint::IntLane<T, B> {};
ZVP_INT_LANE(std::int8_t)
ZVP_INT_LANE(std::uint8_t)
ZVP_INT_LANE(std::int16_t)
ZVP_INT_LANE(std::uint16_t)
ZVP_INT_LANE(std::int32_t)
ZVP_INT_LANE(std::uint32_t)
ZVP_INT_LANE(std::int64_t)
ZVP_INT_LANE(std::uint64_t)
#undef ZVP_INT_LANE

}  // namespace zvp::ZVP_LEVEL

// G.711 A-law and mu-law on lanes of 16-bit values, and the code conversion
// tables computed at compile time from the two decoders.
//
// Codes are the transmitted octets: A-law with the even bits inverted (XOR
// 0x55, sign bit set for positive values), mu-law with every bit inverted.
// Every lane function works at any lane width, one lane included, so the
// vector body and the scalar tail agree bit for bit.
#pragma once

#include <array>
#include <cstdint>

#include "lane.h"

namespace zvp::ZVP_LEVEL::g711 {

// ---- Scalar definitions (compile time) --------------------------------------

// Decoder outputs as 16-bit values: A-law on the 13-bit grid times 8, mu-law
// on the 14-bit grid times 4.
constexpr int alawDecode(int code) {
    const int x = code ^ 0x55;
    const int seg = (x >> 4) & 7, mant = x & 15;
    const int mag = seg == 0 ? (mant << 4) + 8 : ((mant << 4) + 0x108) << (seg - 1);
    return (x & 0x80) ? mag : -mag;
}
constexpr int mulawDecode(int code) {
    const int x = ~code & 0xFF;
    const int t = (((x & 15) << 3) + 0x84) << ((x >> 4) & 7);
    return (x & 0x80) ? 0x84 - t : t - 0x84;
}

// The conversion tables: each code goes to the code of the other law whose
// decoder output is nearest, the laws compared at their overload points (A-law
// 4096 units at +3.14 dBm0, mu-law 8159 units at +3.17 dBm0: a mu-law value u
// in 14-bit units stands for u / 8159 * 10^(0.03/20) of the A-law overload
// 4096 in 13-bit units, A-law value a for a / 4096). No two candidates are
// ever equally near, and the sign of a code is kept.
constexpr double kMuOverA = 1.0034598491478393;  // 10^(0.03/20)
constexpr double alawLevel(int code) { return alawDecode(code) / (8.0 * 4096.0); }
constexpr double mulawLevel(int code) { return mulawDecode(code) / (4.0 * 8159.0) * kMuOverA; }

template <double (*From)(int), double (*To)(int)>
constexpr std::array<std::uint8_t, 256> nearestCodes() {
    std::array<std::uint8_t, 256> t{};
    for (int c = 0; c < 256; ++c) {
        const double v = From(c);
        int best = -1;
        double bestDist = 0;
        for (int d = 0; d < 256; ++d) {
            const double w = To(d);
            // Only codes of the same sign: bit 7 is set for positive values
            // in both laws (and tells the two mu-law zeros apart).
            if ((c ^ d) & 0x80) continue;
            const double dist = v > w ? v - w : w - v;
            if (best < 0 || dist < bestDist) best = d, bestDist = dist;
        }
        t[c] = std::uint8_t(best);
    }
    return t;
}

inline constexpr std::array<std::uint8_t, 256> kALawToMuLaw = nearestCodes<alawLevel, mulawLevel>();
inline constexpr std::array<std::uint8_t, 256> kMuLawToALaw = nearestCodes<mulawLevel, alawLevel>();

// ---- Lanes ------------------------------------------------------------------

// Eight 16-bit table entries in one register, for Lane::lookup8.
template <std::int16_t... V>
inline __m128i table8() {
    static_assert(sizeof...(V) == 8);
    alignas(16) static constexpr std::int16_t t[8] = {V...};
    return Full<std::int16_t>::loada(t);
}

// Encoders: L holds signed 16-bit samples; the codes come back in the low
// byte of each lane.
template <class L>
[[gnu::always_inline]] inline typename L::R alawEncode(typename L::R x) {
    const auto v = L::template shr<3>(x);
    const auto neg = L::template shr<15>(x);
    const auto m = L::xor_(v, neg);  // v, or -v - 1 for negative v: 0..4095
    // Segment: how many of the ends 31, 63, ..., 2047 m exceeds.
    auto s = L::zero();
    for (int end = 31; end <= 2047; end = 2 * end + 1) s = L::sub(s, L::gt(m, L::set1(std::int16_t(end))));
    // m >> max(s, 1) as the high half of m * 2^(16 - max(s, 1)).
    const auto mult = L::lookup8(table8<-32768, -32768, 0x4000, 0x2000, 0x1000, 0x0800, 0x0400, 0x0200>(), s);
    const auto mant = L::and_(Lane<std::uint16_t, L::kBytes>::mulhi(m, mult), L::set1(15));
    const auto code = L::or_(mant, L::template shl<4>(s));
    return L::xor_(code, L::xor_(L::set1(0xD5), L::and_(neg, L::set1(0x80))));
}

template <class L>
[[gnu::always_inline]] inline typename L::R mulawEncode(typename L::R x) {
    using U = Lane<std::uint16_t, L::kBytes>;
    const auto neg = L::template shr<15>(x);
    // |x| (32768 for -32768, read unsigned), clipped, plus the bias: 132..32767.
    const auto m = L::add(U::min(L::abs(x), U::set1(32635)), L::set1(0x84));
    // Segment: the highest set bit of m, minus 7.
    auto s = L::zero();
    for (int b = 256; b <= 16384; b *= 2) s = L::sub(s, L::gt(m, L::set1(std::int16_t(b - 1))));
    // m >> (s + 3) as the high half of m * 2^(13 - s).
    const auto mult = L::lookup8(table8<0x2000, 0x1000, 0x0800, 0x0400, 0x0200, 0x0100, 0x0080, 0x0040>(), s);
    const auto mant = L::and_(U::mulhi(m, mult), L::set1(15));
    const auto code = L::or_(mant, L::template shl<4>(s));
    return L::xor_(code, L::xor_(L::set1(0xFF), L::and_(neg, L::set1(0x80))));
}

// Decoders: L holds codes 0..255 in 16-bit lanes; gives the 16-bit samples.
template <class L>
[[gnu::always_inline]] inline typename L::R alawDecode(typename L::R c) {
    const auto x = L::xor_(c, L::set1(0x55));
    const auto seg = L::and_(L::template shr<4>(x), L::set1(7));
    // (mant * 16 + 8 + (seg ? 256 : 0)) << max(seg - 1, 0)
    const auto base = L::add(L::template shl<4>(L::and_(x, L::set1(15))), L::set1(8));
    const auto first = L::and_(L::gt(seg, L::zero()), L::set1(256));
    const auto mult = L::lookup8(table8<1, 1, 2, 4, 8, 16, 32, 64>(), seg);
    const auto mag = L::mullo(L::add(base, first), mult);
    // Positive where bit 7 of x is set.
    const auto pos = L::gt(L::and_(x, L::set1(0x80)), L::zero());
    return L::blend(L::sub(L::zero(), mag), mag, pos);
}

template <class L>
[[gnu::always_inline]] inline typename L::R mulawDecode(typename L::R c) {
    const auto x = L::xor_(c, L::set1(0xFF));
    const auto seg = L::and_(L::template shr<4>(x), L::set1(7));
    const auto base = L::add(L::template shl<3>(L::and_(x, L::set1(15))), L::set1(0x84));
    const auto mult = L::lookup8(table8<1, 2, 4, 8, 16, 32, 64, 128>(), seg);
    const auto t = L::sub(L::mullo(base, mult), L::set1(0x84));  // the magnitude
    const auto neg = L::gt(L::and_(x, L::set1(0x80)), L::zero());
    return L::blend(t, L::sub(L::zero(), t), neg);
}

}  // namespace zvp::ZVP_LEVEL::g711

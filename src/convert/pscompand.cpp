// Companding: G.711 A-law and mu-law codes to and from linear samples, and
// between the two code sets. Encoders and decoders run on 16-bit lanes
// (g711_law.h); the code conversions look up the compile-time tables.
#include <cstdint>

#include "forms.h"
#include "g711_law.h"
#include "p8/companding.h"

namespace zvp::p8 {
namespace {

using I16 = std::int16_t;

// 32f samples to 16-bit ones: x * 32768, NaN as 0, saturated to the 16-bit
// range, otherwise rounded to nearest with halves away from zero. Exact
// whatever the rounding mode: truncation and the fraction are exact.
template <class L>
[[gnu::always_inline]] inline __m128i samplesOf(typename L::R x) {
    using I = Rebind<L, std::int32_t>;
    auto v = L::mul(x, L::set1(32768.0f));
    v = L::and_(v, L::ord(v, v));
    v = L::min(L::max(v, L::set1(-32768.0f)), L::set1(32767.0f));
    const auto t = L::toI32Trunc(v);
    const auto f = L::sub(v, L::fromI32(t));
    // t + 1 or t - 1 where |f| >= 0.5: the sign of f is the sign of v.
    const auto up = I::and_(L::bits(L::ge(L::abs(f), L::set1(0.5f))),
                            I::or_(I::template shr<31>(L::bits(f)), I::set1(1)));
    const auto r = I::add(t, up);
    return I::template narrow<I16>(r, r);
}

// The encoders: 16s or 32f samples to codes (low byte of each 16-bit lane).
template <class S, bool ALaw>
struct Encode {
    const S* s;
    template <class L>  // L: the destination's bytes
    typename L::R at(std::ptrdiff_t i) const {
        using W = Lanes<I16, L::N>;
        typename W::R x;
        if constexpr (sizeof(S) == 2) x = W::load(s + i);
        else x = samplesOf<Lanes<float, L::N>>(Lanes<float, L::N>::load(s + i));
        const auto c = ALaw ? g711::alawEncode<W>(x) : g711::mulawEncode<W>(x);
        return W::template narrow<std::uint8_t>(c, c);
    }
};

// The decoders: codes to 16s samples, or to 32f samples times 2^-15.
template <class D, bool ALaw>
struct Decode {
    const Zvp8u* s;
    template <class L>  // L: the destination's lanes
    typename L::R at(std::ptrdiff_t i) const {
        using W = Lanes<I16, L::N>;
        const auto c = Lanes<std::uint8_t, L::N>::widenLo(Lanes<std::uint8_t, L::N>::load(s + i));
        const auto x = ALaw ? g711::alawDecode<W>(c) : g711::mulawDecode<W>(c);
        if constexpr (sizeof(D) == 2) {
            return x;
        } else {
            const auto w = W::widenLo(x);
            return L::mul(L::fromI32(w), L::set1(1.0f / 32768.0f));
        }
    }
};

template <bool ALaw, class S>
ZvpStatus encode(const S* s, Zvp8u* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    // Eight codes a vector from 16-bit samples (their lanes fill one
    // register), four from single floats.
    form::each<Zvp8u, 1, 16 / int(sizeof(S) == 2 ? 2 : 4)>(Encode<S, ALaw>{s}, d, len);
    return zvpStsNoErr;
}

template <bool ALaw, class D>
ZvpStatus decode(const Zvp8u* s, D* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    form::each<D, 1, 16 / int(sizeof(D))>(Decode<D, ALaw>{s}, d, len);
    return zvpStsNoErr;
}

ZvpStatus convertCodes(const Zvp8u* s, Zvp8u* d, int len, const std::uint8_t* table) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    for (int i = 0; i < len; ++i) d[i] = table[s[i]];
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsALawToLin_8u16s(const Zvp8u* pSrc, Zvp16s* pDst, int len) { return decode<true>(pSrc, pDst, len); }
ZvpStatus zvpsALawToLin_8u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len) { return decode<true>(pSrc, pDst, len); }
ZvpStatus zvpsMuLawToLin_8u16s(const Zvp8u* pSrc, Zvp16s* pDst, int len) { return decode<false>(pSrc, pDst, len); }
ZvpStatus zvpsMuLawToLin_8u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len) { return decode<false>(pSrc, pDst, len); }
ZvpStatus zvpsLinToALaw_16s8u(const Zvp16s* pSrc, Zvp8u* pDst, int len) { return encode<true>(pSrc, pDst, len); }
ZvpStatus zvpsLinToALaw_32f8u(const Zvp32f* pSrc, Zvp8u* pDst, int len) { return encode<true>(pSrc, pDst, len); }
ZvpStatus zvpsLinToMuLaw_16s8u(const Zvp16s* pSrc, Zvp8u* pDst, int len) { return encode<false>(pSrc, pDst, len); }
ZvpStatus zvpsLinToMuLaw_32f8u(const Zvp32f* pSrc, Zvp8u* pDst, int len) { return encode<false>(pSrc, pDst, len); }
ZvpStatus zvpsALawToMuLaw_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len) {
    return convertCodes(pSrc, pDst, len, g711::kALawToMuLaw.data());
}
ZvpStatus zvpsMuLawToALaw_8u(const Zvp8u* pSrc, Zvp8u* pDst, int len) {
    return convertCodes(pSrc, pDst, len, g711::kMuLawToALaw.data());
}

}  // namespace zvp::p8

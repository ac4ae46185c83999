// Convert to and from packed 24-bit samples: three bytes each, least
// significant first, no alignment. Narrowing goes through 32-bit integers a
// block at a time, so the float path shares the lane kernel of the other
// float-to-integer conversions.
#include <algorithm>
#include <cstdint>

#include "convert_kernel.h"
#include "forms.h"
#include "p8/convert.h"
#include "scale.h"

namespace zvp::p8 {
namespace {

constexpr std::int32_t k24sMin = -8388608, k24sMax = 8388607, k24uMax = 16777215;

// The sample at p (3 bytes), zero- or sign-extended.
template <bool Signed>
std::int32_t load24(const Zvp8u* p) {
    const std::uint32_t u = std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16;
    if constexpr (Signed) return std::int32_t(u ^ 0x800000u) - 0x800000;
    else return std::int32_t(u);
}
inline void store24(Zvp8u* p, std::uint32_t v) {
    p[0] = Zvp8u(v);
    p[1] = Zvp8u(v >> 8);
    p[2] = Zvp8u(v >> 16);
}

template <bool Signed>
struct Widen24 {
    template <class D>
    static ZvpStatus run(form::Vec<Zvp8u> s, D* d, std::ptrdiff_t n) {
        for (std::ptrdiff_t i = 0; i < n; ++i) d[i] = D(load24<Signed>(s.p + 3 * i));
        return zvpStsNoErr;
    }
};
template <bool Signed, class D>
struct Widen24Policy : Widen24<Signed> {
    using type = D;
};

// 32-bit integers times 2^-sf, sf clamped to [-31, 31]: ties to even, left
// shifts saturating; then saturated to the 24-bit range. Exact in 64 bits.
template <class S, std::int32_t Lo, std::int32_t Hi>
struct Narrow24 {
    using type = Zvp8u;
    static ZvpStatus run(form::Vec<S> s, Zvp8u* d, std::ptrdiff_t n, int sf) {
        const int k = std::clamp(sf, -31, 31);
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            const std::int64_t x = s.p[i];
            const std::int64_t r = k >= 0 ? (k == 0 ? x : roundShiftEven(x, k)) : x * (std::int64_t(1) << -k);
            store24(d + 3 * i, std::uint32_t(std::clamp<std::int64_t>(r, Lo, Hi)));
        }
        return zvpStsNoErr;
    }
};

// Floats scaled as the other float-to-integer conversions, rounded to
// nearest even, saturated to 24 bits (NaN gives the maximum): the lane kernel fills a
// block of 32-bit results, which are then packed.
template <std::int32_t Lo, std::int32_t Hi>
struct Float24 {
    using type = Zvp8u;
    static ZvpStatus run(form::Vec<Zvp32f> s, Zvp8u* d, std::ptrdiff_t n, int sf) {
        constexpr std::ptrdiff_t kBlock = 256;
        alignas(16) std::int32_t tmp[kBlock];
        for (std::ptrdiff_t i = 0; i < n; i += kBlock) {
            const std::ptrdiff_t m = std::min(kBlock, n - i);
            conv::toInt<std::int32_t, Lo, Hi>(conv::FromFloat<float>{s.p + i}, tmp, m, conv::Rnd::Near, sf);
            for (std::ptrdiff_t j = 0; j < m; ++j) store24(d + 3 * (i + j), std::uint32_t(tmp[j]));
        }
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsConvert_24s32s(const Zvp8u* pSrc, Zvp32s* pDst, int len) {
    return form::v<Widen24Policy<true, Zvp32s>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_24u32u(const Zvp8u* pSrc, Zvp32u* pDst, int len) {
    return form::v<Widen24Policy<false, Zvp32u>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_24s32f(const Zvp8u* pSrc, Zvp32f* pDst, int len) {
    return form::v<Widen24Policy<true, Zvp32f>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_24u32f(const Zvp8u* pSrc, Zvp32f* pDst, int len) {
    return form::v<Widen24Policy<false, Zvp32f>>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_32s24s_Sfs(const Zvp32s* pSrc, Zvp8u* pDst, int len, int scaleFactor) {
    return form::v<Narrow24<Zvp32s, k24sMin, k24sMax>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsConvert_32u24u_Sfs(const Zvp32u* pSrc, Zvp8u* pDst, int len, int scaleFactor) {
    return form::v<Narrow24<Zvp32u, 0, k24uMax>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsConvert_32f24s_Sfs(const Zvp32f* pSrc, Zvp8u* pDst, int len, int scaleFactor) {
    return form::v<Float24<k24sMin, k24sMax>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsConvert_32f24u_Sfs(const Zvp32f* pSrc, Zvp8u* pDst, int len, int scaleFactor) {
    return form::v<Float24<0, k24uMax>>(pSrc, pDst, len, scaleFactor);
}

}  // namespace zvp::p8

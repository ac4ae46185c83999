// JoinScaled and SplitScaled: several float channels in [-1, 1] interleaved
// into one integer stream and back. The map x -> x * (2^(b-1) - 0.5) - 0.5,
// rounded to nearest even, uses the whole integer range (1.0 gives the
// maximum, -1.0 the minimum); the split is its exact inverse.
#include <cstdint>

#include "check.h"
#include "fpguard.h"
#include "lane.h"
#include "p8/convert.h"

namespace zvp::p8 {
namespace {

// Pointers and sizes in the family's order: the interleaved side first, then
// the sizes, then the channel array and its entries.
template <class I, class C>
ZvpStatus checkChannels(const I* interleaved, C* const* channels, int nChannels, int chanLen) {
    ZVP_CHECK_PTRS(interleaved);
    ZVP_CHECK_LENS(nChannels, chanLen);
    if (channels == nullptr) return zvpStsNullPtrErr;
    for (int c = 0; c < nChannels; ++c)
        if (channels[c] == nullptr) return zvpStsNullPtrErr;
    return zvpStsNoErr;
}

// The rounded value of a clamped sample in T (NaN gives 0), to nearest even.
template <class T>
std::int32_t joinSample(float x, T scale) {
    using O = One<T>;
    if (x != x) return 0;
    const T c = x > 1.0f ? T(1) : x < -1.0f ? T(-1) : T(x);
    return std::int32_t(O::first(O::roundNearest(O::set1(c * scale - T(0.5)))));
}

template <class T, class Store>
void join(const Zvp32f* const* src, int nc, int len, Store store, T scale) {
    MxcsrGuard g(MxcsrGuard::kNearest);
    for (int c = 0; c < nc; ++c)
        for (std::ptrdiff_t i = 0; i < len; ++i) store(i * nc + c, joinSample(src[c][i], scale));
}

template <class T, class Load>
void split(Load load, Zvp32f* const* dst, int nc, int len, T c1, T c2) {
    MxcsrGuard g(MxcsrGuard::kNearest);
    for (int c = 0; c < nc; ++c)
        for (std::ptrdiff_t i = 0; i < len; ++i) dst[c][i] = Zvp32f(T(load(i * nc + c)) * c1 + c2);
}

}  // namespace

ZvpStatus zvpsJoinScaled_32f16s_D2L(const Zvp32f* const pSrc[], int nChannels, int chanLen, Zvp16s* pDst) {
    ZVP_RETURN_IF_ERROR(checkChannels(pDst, pSrc, nChannels, chanLen));
    join(pSrc, nChannels, chanLen, [pDst](std::ptrdiff_t k, std::int32_t v) { pDst[k] = Zvp16s(v); }, 32767.5f);
    return zvpStsNoErr;
}

ZvpStatus zvpsJoinScaled_32f24s_D2L(const Zvp32f* const pSrc[], int nChannels, int chanLen, Zvp8u* pDst) {
    ZVP_RETURN_IF_ERROR(checkChannels(pDst, pSrc, nChannels, chanLen));
    join(pSrc, nChannels, chanLen, [pDst](std::ptrdiff_t k, std::int32_t v) {
        Zvp8u* p = pDst + 3 * k;
        p[0] = Zvp8u(v);
        p[1] = Zvp8u(v >> 8);
        p[2] = Zvp8u(v >> 16);
    }, 8388607.5);
    return zvpStsNoErr;
}

ZvpStatus zvpsSplitScaled_16s32f_D2L(const Zvp16s* pSrc, Zvp32f* const pDst[], int nChannels, int chanLen) {
    ZVP_RETURN_IF_ERROR(checkChannels(pSrc, pDst, nChannels, chanLen));
    split([pSrc](std::ptrdiff_t k) { return pSrc[k]; }, pDst, nChannels, chanLen,
          1.0f / 32767.5f, 0.5f / 32767.5f);
    return zvpStsNoErr;
}

ZvpStatus zvpsSplitScaled_24s32f_D2L(const Zvp8u* pSrc, Zvp32f* const pDst[], int nChannels, int chanLen) {
    ZVP_RETURN_IF_ERROR(checkChannels(pSrc, pDst, nChannels, chanLen));
    split([pSrc](std::ptrdiff_t k) {
        const Zvp8u* p = pSrc + 3 * k;
        const std::uint32_t u = std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16;
        return std::int32_t(u ^ 0x800000u) - 0x800000;
    }, pDst, nChannels, chanLen, 1.19209296656209e-07, 5.96046483281045e-08);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

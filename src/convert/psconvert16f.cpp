// Convert to and from IEEE binary16, built from integer lane operations
// (this level has no half-precision instructions): exact in both directions,
// rounding to nearest even or toward zero by the caller's choice.
#include <cstdint>

#include "convert_kernel.h"
#include "forms.h"
#include "p8/convert.h"

namespace zvp::p8 {
namespace {

using conv::Rnd;

// Rounding to binary16: 1 to nearest even, every other accepted mode
// toward zero; 2 (half away from zero) is refused.
inline ZvpStatus halfMode(int mode) {
    return mode == zvpRndFinancial ? zvpStsRoundModeNotSupportedErr : zvpStsNoErr;
}

template <class Src>
struct ToHalfPolicy {
    using type = Zvp16f;
    static ZvpStatus check(ZvpRoundMode mode) { return halfMode(mode); }
    template <class A>
    static ZvpStatus run(A s, Zvp16f* d, std::ptrdiff_t n, ZvpRoundMode mode) {
        const Src src{s.p};
        if (mode == zvpRndNear) form::each<Zvp16f, 1>(conv::ToHalf<Src, Rnd::Near>{src}, d, n);
        else form::each<Zvp16f, 1>(conv::ToHalf<Src, Rnd::Zero>{src}, d, n);
        return zvpStsNoErr;
    }
};

struct FromHalfPolicy {
    using type = Zvp32f;
    template <class A>
    static ZvpStatus run(A s, Zvp32f* d, std::ptrdiff_t n) {
        form::each<Zvp32f, 1>(conv::ToFloat<conv::FromHalf, false>{{s.p}, _mm_setzero_ps()}, d, n);
        return zvpStsNoErr;
    }
};

// binary16 to 16-bit integers: decoded exactly, then scaled, rounded (to
// nearest even for mode 1, toward zero otherwise) and saturated as from
// single precision.
struct HalfToIntPolicy {
    using type = Zvp16s;
    static ZvpStatus check(ZvpRoundMode mode, int) { return halfMode(mode); }
    template <class A>
    static ZvpStatus run(A s, Zvp16s* d, std::ptrdiff_t n, ZvpRoundMode mode, int sf) {
        conv::toIntFull<Zvp16s>(conv::FromHalf{s.p}, d, n, mode == zvpRndNear ? Rnd::Near : Rnd::Zero, sf);
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsConvert_32f16f(const Zvp32f* pSrc, Zvp16f* pDst, int len, ZvpRoundMode rndMode) {
    return form::v<ToHalfPolicy<conv::FromFloat<float>>>(pSrc, pDst, len, rndMode);
}
ZvpStatus zvpsConvert_16s16f(const Zvp16s* pSrc, Zvp16f* pDst, int len, ZvpRoundMode rndMode) {
    return form::v<ToHalfPolicy<conv::FromInt<Zvp16s>>>(pSrc, pDst, len, rndMode);
}
ZvpStatus zvpsConvert_16f32f(const Zvp16f* pSrc, Zvp32f* pDst, int len) {
    return form::v<FromHalfPolicy>(pSrc, pDst, len);
}
ZvpStatus zvpsConvert_16f16s_Sfs(const Zvp16f* pSrc, Zvp16s* pDst, int len, ZvpRoundMode rndMode, int scaleFactor) {
    return form::v<HalfToIntPolicy>(pSrc, pDst, len, rndMode, scaleFactor);
}

}  // namespace zvp::p8

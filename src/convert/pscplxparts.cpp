// Real, Imag, CplxToReal, RealToCplx, Conj and ConjFlip: taking complex
// vectors apart, putting them together and conjugating them, on full lanes
// of the part type with a one-element tail.
#include <cstdint>
#include <type_traits>

#include "cplx_kernel.h"
#include "forms.h"
#include "p8/cplx.h"

namespace zvp::p8 {
namespace {

template <class T>
using Part = form::Part<T>;

// ---- Parts out ------------------------------------------------------------------

// The real (Im = false) or imaginary parts of float elements.
template <class T, bool Im>
struct PartFn {
    cplx::Interleaved<T> s;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        typename L::R re, im;
        s.template get<L>(i, re, im);
        return Im ? im : re;
    }
};
// The same for 16-bit parts, four elements a step.
template <bool Im>
struct Part16Fn {
    cplx::Interleaved16 s;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using I = Lanes<std::int32_t, L::N>;
        __m128i re, im;
        s.template get<I>(i, re, im);
        const auto v = Im ? im : re;
        return I::template narrow<std::int16_t>(v, v);
    }
};

template <bool Im, class C>
void partOut(const C* s, Part<C>* d, std::ptrdiff_t n) {
    if constexpr (std::is_same_v<C, Zvp16sc>) form::each<Zvp16s, 1, 4>(Part16Fn<Im>{{form::parts(s)}}, d, n);
    else form::each<Part<C>, 1>(PartFn<Part<C>, Im>{{form::parts(s)}}, d, n);
}

template <bool Im, class C>
ZvpStatus partForm(const C* s, Part<C>* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    partOut<Im>(s, d, len);
    return zvpStsNoErr;
}

template <class C>
ZvpStatus cplxToReal(const C* s, Part<C>* re, Part<C>* im, int len) {
    ZVP_CHECK_PTRS(s, re, im);
    ZVP_CHECK_LENS(len);
    partOut<false>(s, re, len);
    partOut<true>(s, im, len);
    return zvpStsNoErr;
}

// ---- Parts in ---------------------------------------------------------------------

// Destination values i, i + 1, ... (i even) from the elements i / 2 on; a
// missing part is 0.
template <class P>
struct JoinFn {
    const P* re;
    const P* im;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using H = Lanes<P, L::N / 2>;
        const auto r = re ? H::load(re + i / 2) : H::zero();
        const auto m = im ? H::load(im + i / 2) : H::zero();
        return L::zipLo(r, m);
    }
};

template <class P, class C>
ZvpStatus realToCplx(const P* re, const P* im, C* d, int len) {
    ZVP_CHECK_PTRS(d);
    ZVP_CHECK_LENS(len);
    if (!re && !im) return zvpStsNullPtrErr;
    form::each<P, 2>(JoinFn<P>{re, im}, form::parts(d), 2 * std::ptrdiff_t(len));
    return zvpStsNoErr;
}

// ---- Conjugates -----------------------------------------------------------------

// The imaginary lanes (odd) negated; 16-bit lanes saturate (-32768 -> 32767).
template <class L>
typename L::R conjLanes(typename L::R v) {
    using P = typename L::type;
    if constexpr (std::is_floating_point_v<P>) return L::conj(v);
    else return L::blend(v, L::subs(L::zero(), v), L::pair(P(0), P(-1)));
}

template <class P>
struct ConjFn {
    const P* s;
    template <class L>
    typename L::R at(std::ptrdiff_t i) const { return conjLanes<L>(L::load(s + i)); }
};

// Destination values i .. i + L::N - 1 (whole elements) from the mirrored
// source elements, their order reversed within the lane.
template <class P>
struct ConjFlipFn {
    const P* s;
    std::ptrdiff_t n;  // values
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        auto v = L::load(s + n - i - L::N);
        if constexpr (L::N > 2) {
            // Reverse the pairs: as 32-bit units for 16-bit parts, as 64-bit
            // units for floats.
            using W = std::conditional_t<sizeof(P) == 2, std::uint32_t, std::uint64_t>;
            using F = Full<W>;
            if constexpr (std::is_floating_point_v<P>) v = L::fromBits(F::reverse(L::bits(v)));
            else v = F::reverse(v);
        }
        return conjLanes<L>(v);
    }
};

template <class C>
ZvpStatus conj(const C* s, C* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    using P = Part<C>;
    form::each<P, 2>(ConjFn<P>{form::parts(s)}, form::parts(d), 2 * std::ptrdiff_t(len));
    return zvpStsNoErr;
}

template <class C>
C conjOf(C c) {
    using P = Part<C>;
    if constexpr (std::is_floating_point_v<P>) c.im = -c.im;
    else c.im = c.im == -32768 ? P(32767) : P(-c.im);
    return c;
}

template <class C>
ZvpStatus conjFlip(const C* s, C* d, int len) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    if (s == d) {
        for (int i = 0, j = len - 1; i <= j; ++i, --j) {
            const C a = d[i], b = d[j];
            d[i] = conjOf(b);
            d[j] = conjOf(a);
        }
        return zvpStsNoErr;
    }
    using P = Part<C>;
    const std::ptrdiff_t n = 2 * std::ptrdiff_t(len);
    form::each<P, 2>(ConjFlipFn<P>{form::parts(s), n}, form::parts(d), n);
    return zvpStsNoErr;
}

}  // namespace

#define ZVP_PARTS(C, P)                                                                             \
    ZvpStatus zvpsReal_##C(const Zvp##C* pSrc, Zvp##P* pDstRe, int len) {                           \
        return partForm<false>(pSrc, pDstRe, len);                                                  \
    }                                                                                               \
    ZvpStatus zvpsImag_##C(const Zvp##C* pSrc, Zvp##P* pDstIm, int len) {                           \
        return partForm<true>(pSrc, pDstIm, len);                                                   \
    }                                                                                               \
    ZvpStatus zvpsCplxToReal_##C(const Zvp##C* pSrc, Zvp##P* pDstRe, Zvp##P* pDstIm, int len) {     \
        return cplxToReal(pSrc, pDstRe, pDstIm, len);                                               \
    }                                                                                               \
    ZvpStatus zvpsRealToCplx_##P(const Zvp##P* pSrcRe, const Zvp##P* pSrcIm, Zvp##C* pDst, int len) { \
        return realToCplx(pSrcRe, pSrcIm, pDst, len);                                               \
    }                                                                                               \
    ZvpStatus zvpsConj_##C(const Zvp##C* pSrc, Zvp##C* pDst, int len) { return conj(pSrc, pDst, len); } \
    ZvpStatus zvpsConj_##C##_I(Zvp##C* pSrcDst, int len) { return conj(pSrcDst, pSrcDst, len); }    \
    ZvpStatus zvpsConjFlip_##C(const Zvp##C* pSrc, Zvp##C* pDst, int len) { return conjFlip(pSrc, pDst, len); }
ZVP_PARTS(16sc, 16s)
ZVP_PARTS(32fc, 32f)
ZVP_PARTS(64fc, 64f)
#undef ZVP_PARTS

}  // namespace zvp::p8

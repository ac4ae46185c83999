// Sqr: x^2 element by element. Float forms use IEEE products; complex forms
// give (a^2 - b^2, 2ab). Integer forms take the exact square R and scale it
// by the library's rule (R * 2^-sf, ties to even, saturated).
//
// The 8u, 16u and 16s kernels form R in unsigned 32-bit lanes (at most
// 65535^2 < 2^32) and pick one of five lane rules by the scale factor, each
// giving exactly scaleRule's result: saturate (0), round-shift (1..32),
// zero (above 32), shift-saturate (-31..-1), bound (-32 and below).
#include <cstdint>
#include <limits>
#include <type_traits>

#include "forms.h"
#include "p8/powers.h"
#include "scale.h"

namespace zvp::p8 {
namespace {

// ---- Float ---------------------------------------------------------------

struct SqrOp {
    template <class L>
    typename L::R apply(typename L::R v) const { return L::mul(v, v); }
};

// (a + bi)^2 = (a*a - b*b) + (p + p)i with p = a*b, on (re, im) pairs.
struct SqrComplexOp {
    template <class L>
    typename L::R apply(typename L::R v) const {
        using T = typename L::type;
        using I = Rebind<L, std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>>;
        const auto sq = L::mul(v, v);                 // (a^2, b^2)
        const auto re = L::sub(sq, L::swapReIm(sq));  // a^2 - b^2 in the real lanes
        const auto p = L::mul(v, L::swapReIm(v));     // a*b in every lane
        return L::blend(re, L::add(p, p), L::fromBits(I::pair(0, -1)));
    }
};

template <class T>
struct SqrFloat {
    using type = T;
    template <class A, class P>
    static ZvpStatus run(A s, P* d, std::ptrdiff_t n) {
        if constexpr (form::Complex<T>) form::map<2>(s, d, n, SqrComplexOp{});
        else form::map(s, d, n, SqrOp{});
        return zvpStsNoErr;
    }
};

// ---- Scaled integers -----------------------------------------------------

enum class Path { Sat, Shift, Zero, ShiftLeft, Bound };

using W = Full<std::uint32_t>;

// The scale rule on unsigned 32-bit lanes R, saturated to maxOut.
struct LaneRule {
    Path path;
    Count count{0};   // shift count
    W::R mask;        // 2^sf - 1
    W::R half;        // 2^(sf-1)
    W::R keep;        // largest R that survives a left shift
    W::R maxOut;

    LaneRule(int sf, std::uint32_t mx) : maxOut(W::set1(mx)) {
        mask = half = keep = W::zero();
        if (sf == 0) {
            path = Path::Sat;
        } else if (sf > 32) {
            path = Path::Zero;
        } else if (sf > 0) {
            path = Path::Shift;
            count = Count(sf);
            mask = W::set1(std::uint32_t((std::uint64_t(1) << sf) - 1));
            half = W::set1(std::uint32_t(1) << (sf - 1));
        } else if (sf > -32) {
            path = Path::ShiftLeft;
            count = Count(-sf);
            keep = W::set1(mx >> -sf);
        } else {
            path = Path::Bound;
        }
    }

    template <Path P>
    W::R apply(W::R r) const {
        if constexpr (P == Path::Sat) {
            return W::min(r, maxOut);
        } else if constexpr (P == Path::Shift) {
            // Round up iff rem + (q AND 1) > 2^(sf-1) (no wrap: for sf = 32,
            // q = 0).
            const auto q = W::shr(r, count);
            const auto rem = W::add(W::and_(r, mask), W::and_(q, W::set1(1)));
            return W::min(W::sub(q, W::gt(rem, half)), maxOut);
        } else if constexpr (P == Path::Zero) {
            return W::zero();
        } else if constexpr (P == Path::ShiftLeft) {
            return W::blend(W::shl(r, count), maxOut, W::gt(r, keep));
        } else {
            return W::andnot(W::eq(r, W::zero()), maxOut);
        }
    }
};

// The scaled squares of the L::N elements from i on: 16-bit lanes squared
// into 32-bit ones, the rule applied, and packed back (every result lies in
// [0, 65535], so the signed-to-unsigned packs are exact).
template <Path P, class A>
struct SqrScaledLanes {
    A s;
    LaneRule rule;
    // The rule on the squares of the 16-bit lanes x, the low n of them.
    template <class L16, int n>
    __m128i squares(__m128i x) const {
        const auto pl = L16::mullo(x, x), ph = L16::mulhi(x, x);
        using H = Full<std::uint16_t>;
        const auto lo = rule.apply<P>(H::zipLo(pl, ph));
        const auto hi = n > 4 ? rule.apply<P>(H::zipHi(pl, ph)) : W::zero();
        return Full<std::int32_t>::narrow<std::uint16_t>(lo, hi);
    }
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        const auto v = s.template load<L>(i);
        if constexpr (sizeof(typename L::type) == 1) {
            using H = Full<std::uint16_t>;
            const auto a = squares<H, L::N>(L::widenLo(v));
            const auto b = L::N > 8 ? squares<H, L::N - 8>(L::widenHi(v)) : H::zero();
            return Full<std::int16_t>::narrow<std::uint8_t>(a, b);
        } else {
            return squares<Full<typename L::type>, L::N>(v);
        }
    }
};

template <class T>
struct SqrScaled {
    using type = T;
    template <class A>
    static ZvpStatus run(A s, T* d, std::ptrdiff_t n, int sf) {
        const LaneRule rule(sf, std::numeric_limits<T>::max());
        switch (rule.path) {
            case Path::Sat: form::each<T, 1>(SqrScaledLanes<Path::Sat, A>{s, rule}, d, n); break;
            case Path::Shift: form::each<T, 1>(SqrScaledLanes<Path::Shift, A>{s, rule}, d, n); break;
            case Path::Zero: form::each<T, 1>(SqrScaledLanes<Path::Zero, A>{s, rule}, d, n); break;
            case Path::ShiftLeft: form::each<T, 1>(SqrScaledLanes<Path::ShiftLeft, A>{s, rule}, d, n); break;
            case Path::Bound: form::each<T, 1>(SqrScaledLanes<Path::Bound, A>{s, rule}, d, n); break;
        }
        return zvpStsNoErr;
    }
};

// 16sc, as (re, im) pairs of 16-bit parts: both parts are read before
// either is written.
struct SqrScaled16sc {
    using type = Zvp16s;
    template <class A>
    static ZvpStatus run(A s, Zvp16s* d, std::ptrdiff_t n, int sf) {
        for (std::ptrdiff_t i = 0; i < n; i += 2) {
            const std::int64_t a = s.at(i), b = s.at(i + 1);
            d[i] = scaleRule<Zvp16s>(a * a - b * b, sf);
            d[i + 1] = scaleRule<Zvp16s>(2 * a * b, sf);
        }
        return zvpStsNoErr;
    }
};

template <class T>
using SqrSfs = std::conditional_t<std::is_same_v<T, Zvp16sc>, SqrScaled16sc, SqrScaled<T>>;

}  // namespace

#define ZVP_SQR(T)                                                                                    \
    ZvpStatus zvpsSqr_##T(const Zvp##T* pSrc, Zvp##T* pDst, int len) {                                \
        return form::v<SqrFloat<Zvp##T>>(pSrc, pDst, len);                                            \
    }                                                                                                 \
    ZvpStatus zvpsSqr_##T##_I(Zvp##T* pSrcDst, int len) { return form::vI<SqrFloat<Zvp##T>>(pSrcDst, len); }
ZVP_SQR(32f)
ZVP_SQR(32fc)
ZVP_SQR(64f)
ZVP_SQR(64fc)
#undef ZVP_SQR

#define ZVP_SQR_SFS(T)                                                                          \
    ZvpStatus zvpsSqr_##T##_Sfs(const Zvp##T* pSrc, Zvp##T* pDst, int len, int scaleFactor) {   \
        return form::v<SqrSfs<Zvp##T>>(pSrc, pDst, len, scaleFactor);                           \
    }                                                                                           \
    ZvpStatus zvpsSqr_##T##_ISfs(Zvp##T* pSrcDst, int len, int scaleFactor) {                   \
        return form::vI<SqrSfs<Zvp##T>>(pSrcDst, len, scaleFactor);                             \
    }
ZVP_SQR_SFS(8u)
ZVP_SQR_SFS(16s)
ZVP_SQR_SFS(16u)
ZVP_SQR_SFS(16sc)
#undef ZVP_SQR_SFS

}  // namespace zvp::p8

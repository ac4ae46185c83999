// Norm and NormDiff: the infinity, L1 and L2 norms of x (or of x - y).
//
//  * 16-bit data: the largest magnitude, the sum of magnitudes and the sum
//    of squares are exact (reduce_int.h); a float result is the exact value
//    rounded once (the L2 norm: the exact sum converted to double, its
//    square root in double, rounded to single).
//  * Float data: sixteen single or eight double partial results in the
//    driver's order (reduce_float.h). Single-precision reals keep single
//    precision throughout; single-precision complex data are widened to
//    double, where their squares are exact.
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>

#include "check.h"
#include "p8/norms.h"
#include "reduce_float.h"
#include "reduce_int.h"

namespace zvp::p8 {
namespace {

using F64 = Full<double>;

enum class Op { Inf, L1, L2 };

// The kernel over n values of T (2 len for complex data). A is the type
// the results gather in.
template <class T, Op op, bool Diff, bool Cplx>
struct NormK {
    using A = std::conditional_t<Cplx, double, T>;
    using FA = Full<A>;
    const T* x;
    const T* y;
    red::Acc<A> s;
    red::AccMax<A> m;

    template <class L, int u>
    void step(std::ptrdiff_t i) {
        if constexpr (Cplx && std::is_same_v<T, float>) {
            F64::R lo, hi;
            red::widen<L>(L::load(x + i), lo, hi);
            if constexpr (Diff) {
                F64::R lo2, hi2;
                red::widen<L>(L::load(y + i), lo2, hi2);
                lo = F64::sub(lo, lo2);
                hi = F64::sub(hi, hi2);
            }
            const auto sq = F64::pairSums(F64::mul(lo, lo), F64::mul(hi, hi));
            put<u>(sq, sq);
        } else if constexpr (Cplx) {
            auto d = L::load(x + i);
            if constexpr (Diff) d = F64::sub(d, L::load(y + i));
            const auto q = F64::mul(d, d);
            put<u>(F64::pairSums(q, F64::zero()), q);
        } else {
            auto d = L::load(x + i);
            if constexpr (Diff) d = L::sub(d, L::load(y + i));
            if constexpr (op == Op::L2) s.template add<u>(L::mul(d, d));
            else if constexpr (op == Op::L1) s.template add<u>(FA::abs(d));
            else m.template add<u>(FA::abs(d));
        }
    }
    // Complex data: squared magnitudes (zeros in unused lanes) and squares.
    template <int u>
    void put(F64::R mag2, F64::R sq) {
        if constexpr (op == Op::L2) s.template add<u>(sq);
        else if constexpr (op == Op::L1) s.template add<u>(F64::sqrt(mag2));
        else m.template add<u>(mag2);
    }

    // The norm, in A.
    A result() const {
        if constexpr (op == Op::Inf) {
            if (m.nan.any()) return std::numeric_limits<A>::quiet_NaN();
            const A v = red::maxLane<A>(m.fold());
            return Cplx ? std::sqrt(v) : v;
        } else if constexpr (op == Op::L1) {
            return s.total();
        } else {
            return std::sqrt(s.total());
        }
    }
};

template <Op op, bool Diff, class S, class D>
ZvpStatus normFloat(const S* x, const S* y, int len, D* pNorm) {
    if constexpr (Diff) ZVP_CHECK_PTRS(x, y, pNorm);
    else ZVP_CHECK_PTRS(x, pNorm);
    ZVP_CHECK_LENS(len);
    constexpr bool cplx = !std::is_floating_point_v<S>;
    using T = std::conditional_t<std::is_same_v<S, Zvp32fc>, float,
                                 std::conditional_t<std::is_same_v<S, Zvp64fc>, double, S>>;
    NormK<T, op, Diff, cplx> k{reinterpret_cast<const T*>(x), reinterpret_cast<const T*>(y), {}, {}};
    red::drive<T, cplx ? 2 : 1>(k, (cplx ? 2 : 1) * std::ptrdiff_t(len));
    *pNorm = D(k.result());
    return zvpStsNoErr;
}

// 16-bit data: the exact norms of x or x - y, then R(norms) into D.
template <bool Diff, class D, class Rule>
ZvpStatus norm16(const Zvp16s* x, const Zvp16s* y, int len, D* pNorm, Rule rule) {
    if constexpr (Diff) ZVP_CHECK_PTRS(x, y, pNorm);
    else ZVP_CHECK_PTRS(x, pNorm);
    ZVP_CHECK_LENS(len);
    *pNorm = rule(red::norms16<Diff>(x, y, len));
    return zvpStsNoErr;
}

// The rules of the 16-bit forms, shared by Norm and NormDiff.
#define ZVP_NORM16(Name, D, expr, ...)                                                                  \
    ZvpStatus zvpsNorm_##Name(const Zvp16s* pSrc, int len, D* pNorm __VA_OPT__(, ) __VA_ARGS__) {       \
        return norm16<false>(pSrc, nullptr, len, pNorm, [&](const red::Norms16& r) { return expr; });    \
    }                                                                                                    \
    ZvpStatus zvpsNormDiff_##Name(const Zvp16s* pSrc1, const Zvp16s* pSrc2, int len,                     \
                                  D* pNorm __VA_OPT__(, ) __VA_ARGS__) {                                \
        return norm16<true>(pSrc1, pSrc2, len, pNorm, [&](const red::Norms16& r) { return expr; });      \
    }

}  // namespace

ZVP_NORM16(Inf_16s32f, Zvp32f, Zvp32f(r.inf))
ZVP_NORM16(Inf_16s32s_Sfs, Zvp32s, scaleRule<Zvp32s>(std::int64_t(r.inf), scaleFactor), int scaleFactor)
ZVP_NORM16(L1_16s32f, Zvp32f, Zvp32f(r.l1))
ZVP_NORM16(L1_16s32s_Sfs, Zvp32s, red::l1Truncated(r.l1, scaleFactor), int scaleFactor)
ZVP_NORM16(L1_16s64s_Sfs, Zvp64s, scaleRule<Zvp64s>(Int128::from(r.l1), scaleFactor), int scaleFactor)
ZVP_NORM16(L2_16s32f, Zvp32f, Zvp32f(std::sqrt(double(r.l2))))
ZVP_NORM16(L2_16s32s_Sfs, Zvp32s, red::sqrtScaled<Zvp32s>(r.l2, scaleFactor), int scaleFactor)
ZVP_NORM16(L2Sqr_16s64s_Sfs, Zvp64s, scaleRule<Zvp64s>(Int128::from(r.l2), scaleFactor), int scaleFactor)
#undef ZVP_NORM16

#define ZVP_NORMF(Kind, K, S, D)                                                                    \
    ZvpStatus zvpsNorm_##Kind(const S* pSrc, int len, D* pNorm) {                                  \
        return normFloat<Op::K, false>(pSrc, static_cast<const S*>(nullptr), len, pNorm);          \
    }                                                                                              \
    ZvpStatus zvpsNormDiff_##Kind(const S* pSrc1, const S* pSrc2, int len, D* pNorm) {             \
        return normFloat<Op::K, true>(pSrc1, pSrc2, len, pNorm);                                   \
    }
ZVP_NORMF(Inf_32f, Inf, Zvp32f, Zvp32f)
ZVP_NORMF(Inf_64f, Inf, Zvp64f, Zvp64f)
ZVP_NORMF(Inf_32fc32f, Inf, Zvp32fc, Zvp32f)
ZVP_NORMF(Inf_64fc64f, Inf, Zvp64fc, Zvp64f)
ZVP_NORMF(L1_32f, L1, Zvp32f, Zvp32f)
ZVP_NORMF(L1_64f, L1, Zvp64f, Zvp64f)
ZVP_NORMF(L1_32fc64f, L1, Zvp32fc, Zvp64f)
ZVP_NORMF(L1_64fc64f, L1, Zvp64fc, Zvp64f)
ZVP_NORMF(L2_32f, L2, Zvp32f, Zvp32f)
ZVP_NORMF(L2_64f, L2, Zvp64f, Zvp64f)
ZVP_NORMF(L2_32fc64f, L2, Zvp32fc, Zvp64f)
ZVP_NORMF(L2_64fc64f, L2, Zvp64fc, Zvp64f)
#undef ZVP_NORMF

}  // namespace zvp::p8

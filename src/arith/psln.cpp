// Natural and decimal logarithms, and the sum of logarithms.
//
//  * Ln_32f: the vectorised polynomial kernel of mathpoly.h (relative error
//    below 2^-21). Ln_64f: the C library's double log (within one ulp);
//    Ln_64f32f rounds it to single. Special values: x < 0 -> NaN,
//    +-0 -> -inf, +inf -> +inf, NaN -> NaN.
//  * Ln of scaled integers: round(ln(x) * 2^-sf), ties to even, saturated,
//    correctly rounded as described in ddmath.h. Elements not above 0 give
//    the destination's minimum; the first such element decides the warning:
//    zvpStsLnZeroArg (7) for 0, zvpStsLnNegArg (8) for a negative one. With
//    scale factor 0 the 16s form rounds by a comparison ladder on x (e^1.5,
//    e^2.5, ... rounded to integers), which gives the same results.
//  * 10Log10_32s: the single-precision ln of each element, multiplied by 4.3429446 (10/ln 10)
//    and 2^-sf in double precision and rounded to the nearest integer (ties
//    to even), saturated. Elements not above 0 give -2147483648.
//  * SumLn: the sum of ln(x) over the vector. The elements are split into
//    exponent and mantissa; the exponents are summed exactly and the
//    mantissas multiplied in double precision (renormalised as they go), so
//    the sum is e * ln 2 + ln(product) with an error of about n * 2^-53.
//    Any element below 0 or NaN gives NaN; a 0 gives -inf, an infinity
//    +inf, and both together NaN.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "ddmath.h"
#include "forms.h"
#include "fpguard.h"
#include "mathpoly.h"
#include "p8/powers.h"

namespace zvp::p8 {
namespace {

// ---- Floats ----------------------------------------------------------------

template <class D>
D lnDouble(double x) { return D(std::log(x)); }
template <class D>
using LnDouble = form::PerElement<D, lnDouble<D>>;

// ---- Scaled integers ---------------------------------------------------------

// round(ln x) for 1 <= x <= 32767: the largest k with x above e^(k - 1/2).
inline int lnLadder16(int x) {
    static constexpr int kFirst[] = {2, 5, 13, 34, 91, 245, 666, 1809, 4915, 13360};
    int k = 0;
    while (k < 10 && x >= kFirst[k]) ++k;
    return k;
}

// Kernel policy of the unary forms with a scale factor.
template <class D>
struct LnScaled {
    using type = D;
    template <class A>
    static ZvpStatus run(A s, D* d, std::ptrdiff_t n, int sf) {
        const MxcsrGuard nearest(MxcsrGuard::kNearest);
        constexpr auto maxOut = std::int64_t(std::numeric_limits<D>::max());
        const bool ladder = sizeof(*s.p) == 2 && sf == 0;
        ZvpStatus st = zvpStsNoErr;
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            const auto x = s.at(i);
            if (x <= 0) {
                d[i] = std::numeric_limits<D>::min();
                if (st == zvpStsNoErr) st = x == 0 ? zvpStsLnZeroArg : zvpStsLnNegArg;
            } else if (ladder) {
                d[i] = D(lnLadder16(x));
            } else {
                d[i] = D(dd::lnScaled(x, sf, maxOut));
            }
        }
        return st;
    }
};

// ---- 10 log10 ----------------------------------------------------------------

// The single-precision ln of each element, multiplied by 4.3429446
// (10 / ln 10) and 2^-sf in double precision and rounded to the nearest
// integer, ties to even, saturated; elements not above 0 give the minimum.
template <class A>
struct TenLog10Lanes {
    A s;
    Full<double>::R mult, lo, hi;
    // The doubles of the float lanes w, to integers in the low lanes.
    template <class F>
    __m128i toInt(typename F::R w) const {
        using D = Lane<double, 2 * F::kBytes < 16 ? 2 * F::kBytes : 16>;
        // max(lo, v) and min(hi, v) keep a NaN, which converts to the minimum.
        const auto a = D::mul(D::fromF32(w), mult);
        return D::toI32Trunc(D::roundNearest(D::min(hi, D::max(lo, a))));
    }
    template <class L>
    typename L::R at(std::ptrdiff_t i) const {
        using F = Rebind<L, float>;
        const auto w = mathpoly::lnPs<F>(F::fromI32(s.template load<L>(i)));
        if constexpr (L::N <= 2) return toInt<F>(w);
        else return Full<std::int64_t>::zipLo(toInt<F>(w), toInt<F>(F::hiHalf(w)));
    }
};

struct TenLog10 {
    using type = Zvp32s;
    template <class A>
    static ZvpStatus run(A s, Zvp32s* d, std::ptrdiff_t n, int sf) {
        // The float logarithm and the products round under the library's own
        // mode, so the integer results do not follow the caller's.
        const MxcsrGuard nearest(MxcsrGuard::kNearest);
        // Beyond +-64 every result is 0 or saturated already (|10 log10 x| is
        // 0 or in [3.01, 93.4]), and the multiplier stays finite.
        const int k = sf > 64 ? 64 : sf < -64 ? -64 : sf;
        using D = Full<double>;
        form::each<Zvp32s, 1>(TenLog10Lanes<A>{s, D::set1(double(4.3429446f) * std::ldexp(1.0, -k)),
                                                D::set1(-2147483648.0), D::set1(2147483647.0)},
                              d, n);
        return zvpStsNoErr;
    }
};

// ---- Sum of logarithms ---------------------------------------------------------

class LnSum {
public:
    using Fd = Full<double>;
    using Fu = Full<std::uint64_t>;

    // Adds ln v for one double v.
    void add(double v) {
        if (!(v > 0.0) || v == HUGE_VAL) {
            special(v);
            return;
        }
        int e = 0;
        if (v < 2.2250738585072014e-308) {  // denormal: scale into the normal range
            v *= 0x1p54;
            e = -54;
        }
        std::uint64_t b;
        std::memcpy(&b, &v, sizeof b);
        e += int(b >> 52) - 1023;
        b = (b & 0x000FFFFFFFFFFFFFull) | 0x3FF0000000000000ull;
        double m;
        std::memcpy(&m, &b, sizeof m);
        exp_ += e;
        scalar_ *= m;
        if (++scalarCount_ == kRenorm) {
            renorm(scalar_);
            scalarCount_ = 0;
        }
    }

    // Adds the logarithms of n doubles known to be positive normal finite
    // values, two lanes at a time (n even, n/2 <= kRenorm).
    void addNormalPairs(const Fd::R* v, int pairs) {
        const auto mant = Fu::set1(0x000FFFFFFFFFFFFFull);
        const auto one = Fu::set1(0x3FF0000000000000ull);
        auto esum = Fu::zero();
        for (int j = 0; j < pairs; ++j) {
            const auto b = Fd::bits(v[j]);
            esum = Fu::add(esum, Fu::shr<52>(b));
            prod_ = Fd::mul(prod_, Fd::fromBits(Fu::or_(Fu::and_(b, mant), one)));
        }
        alignas(16) std::int64_t es[2];
        Full<std::int64_t>::storea(es, esum);
        exp_ += es[0] + es[1] - std::int64_t(2) * pairs * 1023;
        alignas(16) double p[2];
        Fd::storea(p, prod_);
        renorm(p[0]);
        renorm(p[1]);
        prod_ = Fd::loada(p);
    }

    double result() const {
        if (nan_ || (zero_ && inf_)) return std::numeric_limits<double>::quiet_NaN();
        if (zero_) return -HUGE_VAL;
        if (inf_) return HUGE_VAL;
        alignas(16) double p[2];
        Fd::storea(p, prod_);
        const double ln2 = 0.6931471805599453094;
        return double(exp_) * ln2 + (std::log(p[0]) + std::log(p[1]) + std::log(scalar_));
    }

    static constexpr int kRenorm = 512;  // [1, 2)^512 < 2^512: no overflow

private:
    void special(double v) {
        if (v == 0.0) zero_ = true;
        else if (v == HUGE_VAL) inf_ = true;
        else nan_ = true;  // negative or NaN
    }
    // Moves the binary exponent of the positive normal p into exp_.
    void renorm(double& p) {
        std::uint64_t b;
        std::memcpy(&b, &p, sizeof b);
        exp_ += std::int64_t(b >> 52) - 1023;
        b = (b & 0x000FFFFFFFFFFFFFull) | 0x3FF0000000000000ull;
        std::memcpy(&p, &b, sizeof p);
    }

    Fd::R prod_ = Fd::set1(1.0);
    double scalar_ = 1.0;
    int scalarCount_ = 0;
    std::int64_t exp_ = 0;
    bool nan_ = false, zero_ = false, inf_ = false;
};

// Widens a block of sources to doubles and adds their logarithms.
template <class S>
double sumLnKernel(const S* s, int len) {
    constexpr int kBlock = 2 * LnSum::kRenorm;
    LnSum acc;
    using Fd = LnSum::Fd;
    using Fi = Full<std::int64_t>;
    alignas(16) Fd::R buf[kBlock / 2];
    const auto lowest = Fi::set1(0x0010000000000000ll);
    const auto span = Fi::set1(0x7FDFFFFFFFFFFFFFll);
    for (int base = 0; base < len; base += kBlock) {
        const int n = len - base < kBlock ? len - base : kBlock;
        int pairs = 0;
        for (int j = 0; j + 2 <= n; j += 2) {
            Fd::R v;
            if constexpr (sizeof(S) == 8) v = Fd::load(s + base + j);
            else if constexpr (sizeof(S) == 4) v = Fd::fromF32(Lanes<float, 2>::load(s + base + j));
            else v = Fd::pair(double(s[base + j]), double(s[base + j + 1]));
            // Positive normal finite iff bits - 2^52 lies in [0, 0x7FDF...F].
            const auto t = Fi::sub(Fd::bits(v), lowest);
            const auto bad = Fi::or_(Fi::gt(Fi::zero(), t), Fi::gt(t, span));
            if (!Fi::anyOf(bad)) {
                buf[pairs++] = v;
            } else {
                acc.add(double(s[base + j]));
                acc.add(double(s[base + j + 1]));
            }
        }
        if (n & 1) acc.add(double(s[base + n - 1]));
        acc.addNormalPairs(buf, pairs);
    }
    return acc.result();
}

template <class S, class D>
ZvpStatus sumLn(const S* s, int len, D* sum) {
    ZVP_CHECK_PTRS(s, sum);
    ZVP_CHECK_LENS(len);
    *sum = D(sumLnKernel(s, len));
    return zvpStsNoErr;
}

}  // namespace

// ---- Exported operations -----------------------------------------------------

ZvpStatus zvpsLn_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) { return form::v<mathpoly::Ln32f>(pSrc, pDst, len); }
ZvpStatus zvpsLn_32f_I(Zvp32f* pSrcDst, int len) { return form::vI<mathpoly::Ln32f>(pSrcDst, len); }
ZvpStatus zvpsLn_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len) { return form::v<LnDouble<Zvp64f>>(pSrc, pDst, len); }
ZvpStatus zvpsLn_64f_I(Zvp64f* pSrcDst, int len) { return form::vI<LnDouble<Zvp64f>>(pSrcDst, len); }
ZvpStatus zvpsLn_64f32f(const Zvp64f* pSrc, Zvp32f* pDst, int len) {
    return form::v<LnDouble<Zvp32f>>(pSrc, pDst, len);
}

ZvpStatus zvpsLn_16s_ISfs(Zvp16s* pSrcDst, int len, int scaleFactor) {
    return form::vI<LnScaled<Zvp16s>>(pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsLn_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    // Equal pointers run the in-place form.
    if (pSrc == pDst) return zvpsLn_16s_ISfs(pDst, len, scaleFactor);
    return form::v<LnScaled<Zvp16s>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsLn_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor) {
    return form::v<LnScaled<Zvp32s>>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvpsLn_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor) {
    return form::vI<LnScaled<Zvp32s>>(pSrcDst, len, scaleFactor);
}
ZvpStatus zvpsLn_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    return form::v<LnScaled<Zvp16s>>(pSrc, pDst, len, scaleFactor);
}

ZvpStatus zvps10Log10_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor) {
    return form::v<TenLog10>(pSrc, pDst, len, scaleFactor);
}
ZvpStatus zvps10Log10_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor) {
    return form::vI<TenLog10>(pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsSumLn_32f(const Zvp32f* pSrc, int len, Zvp32f* pSum) { return sumLn(pSrc, len, pSum); }
ZvpStatus zvpsSumLn_64f(const Zvp64f* pSrc, int len, Zvp64f* pSum) { return sumLn(pSrc, len, pSum); }
ZvpStatus zvpsSumLn_32f64f(const Zvp32f* pSrc, int len, Zvp64f* pSum) { return sumLn(pSrc, len, pSum); }
ZvpStatus zvpsSumLn_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pSum) { return sumLn(pSrc, len, pSum); }

}  // namespace zvp::p8

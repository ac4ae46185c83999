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
//  * 10Log10_32s: blocks of at most 256 elements; single-precision ln of
//    each element into a work area, then multiplied by 4.3429446 (10/ln 10)
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

#include "check.h"
#include "ddmath.h"
#include "fpguard.h"
#include "mathpoly.h"
#include "p8.h"
#include "simd.h"

namespace zvp::p8 {
namespace {

// ---- Floats ----------------------------------------------------------------

template <class S, class D>
void lnDoubleKernel(const S* s, D* d, int len) {
    for (int i = 0; i < len; ++i) d[i] = D(std::log(double(s[i])));
}

// ---- Scaled integers ---------------------------------------------------------

// round(ln x) for 1 <= x <= 32767: the largest k with x above e^(k - 1/2).
inline int lnLadder16(int x) {
    static constexpr int kFirst[] = {2, 5, 13, 34, 91, 245, 666, 1809, 4915, 13360};
    int k = 0;
    while (k < 10 && x >= kFirst[k]) ++k;
    return k;
}

template <class S, class D>
ZvpStatus lnScaledKernel(const S* s, D* d, int len, int sf) {
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    constexpr auto maxOut = std::int64_t(std::numeric_limits<D>::max());
    const bool ladder = sizeof(S) == 2 && sf == 0;
    ZvpStatus st = zvpStsNoErr;
    for (int i = 0; i < len; ++i) {
        const S x = s[i];
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

template <class S, class D>
ZvpStatus lnSfs(const S* s, D* d, int len, int sf) {
    ZVP_CHECK_PTRS(s, d);
    ZVP_CHECK_LENS(len);
    return lnScaledKernel(s, d, len, sf);
}

// ---- 10 log10 ----------------------------------------------------------------

void tenLog10Kernel(const Zvp32s* s, Zvp32s* d, int len, int sf) {
    // The float logarithm and the products round under the library's own
    // mode, so the integer results do not follow the caller's.
    const MxcsrGuard nearest(MxcsrGuard::kNearest);
    constexpr int kBlock = 256;
    // Beyond +-64 every result is 0 or saturated already (|10 log10 x| is
    // 0 or in [3.01, 93.4]), and the multiplier stays finite.
    const int k = sf > 64 ? 64 : sf < -64 ? -64 : sf;
    const __m128d mult = _mm_set1_pd(double(4.3429446f) * std::ldexp(1.0, -k));
    const __m128d lo = _mm_set1_pd(-2147483648.0), hi = _mm_set1_pd(2147483647.0);
    constexpr int kNear = _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC;
    alignas(16) float work[kBlock + 4];
    for (int base = 0; base < len; base += kBlock) {
        const int n = len - base < kBlock ? len - base : kBlock;
        const int n4 = (n + 3) & ~3;
        for (int j = 0; j < n4; j += 4) {
            __m128i x;
            if (j + 4 <= n) {
                x = simd::loadu(s + base + j);
            } else {
                alignas(16) Zvp32s tail[4] = {1, 1, 1, 1};
                std::memcpy(tail, s + base + j, std::size_t(n - j) * sizeof(Zvp32s));
                x = simd::load(tail);
            }
            _mm_store_ps(work + j, _mm_cvtepi32_ps(x));
        }
        mathpoly::ownsLn_32f_A21(work, work, n4);
        for (int j = 0; j < n4; j += 4) {
            const __m128 w = _mm_load_ps(work + j);
            // max(lo, v) and min(hi, v) keep a NaN, which converts to the minimum.
            __m128d a = _mm_mul_pd(_mm_cvtps_pd(w), mult);
            __m128d b = _mm_mul_pd(_mm_cvtps_pd(_mm_movehl_ps(w, w)), mult);
            a = _mm_round_pd(_mm_min_pd(hi, _mm_max_pd(lo, a)), kNear);
            b = _mm_round_pd(_mm_min_pd(hi, _mm_max_pd(lo, b)), kNear);
            const __m128i r = _mm_unpacklo_epi64(_mm_cvttpd_epi32(a), _mm_cvttpd_epi32(b));
            if (j + 4 <= n) {
                simd::storeu(d + base + j, r);
            } else {
                alignas(16) Zvp32s tail[4];
                simd::store(tail, r);
                std::memcpy(d + base + j, tail, std::size_t(n - j) * sizeof(Zvp32s));
            }
        }
    }
}

// ---- Sum of logarithms ---------------------------------------------------------

class LnSum {
public:
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
    void addNormalPairs(const __m128d* v, int pairs) {
        const __m128i mant = _mm_set1_epi64x(0x000FFFFFFFFFFFFFll);
        const __m128i one = _mm_set1_epi64x(0x3FF0000000000000ll);
        __m128i esum = _mm_setzero_si128();
        for (int j = 0; j < pairs; ++j) {
            const __m128i b = _mm_castpd_si128(v[j]);
            esum = _mm_add_epi64(esum, _mm_srli_epi64(b, 52));
            prod_ = _mm_mul_pd(prod_, _mm_castsi128_pd(_mm_or_si128(_mm_and_si128(b, mant), one)));
        }
        alignas(16) std::int64_t es[2];
        simd::store(es, esum);
        exp_ += es[0] + es[1] - std::int64_t(2) * pairs * 1023;
        alignas(16) double p[2];
        _mm_store_pd(p, prod_);
        renorm(p[0]);
        renorm(p[1]);
        prod_ = _mm_load_pd(p);
    }

    double result() const {
        if (nan_ || (zero_ && inf_)) return std::numeric_limits<double>::quiet_NaN();
        if (zero_) return -HUGE_VAL;
        if (inf_) return HUGE_VAL;
        alignas(16) double p[2];
        _mm_store_pd(p, prod_);
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

    __m128d prod_ = _mm_set1_pd(1.0);
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
    alignas(16) __m128d buf[kBlock / 2];
    const __m128i lowest = _mm_set1_epi64x(0x0010000000000000ll);
    const __m128i span = _mm_set1_epi64x(0x7FDFFFFFFFFFFFFFll);
    for (int base = 0; base < len; base += kBlock) {
        const int n = len - base < kBlock ? len - base : kBlock;
        int pairs = 0;
        for (int j = 0; j + 2 <= n; j += 2) {
            __m128d v;
            if constexpr (sizeof(S) == 8) v = _mm_loadu_pd(s + base + j);
            else if constexpr (sizeof(S) == 4) v = _mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(s + base + j))));
            else v = _mm_set_pd(double(s[base + j + 1]), double(s[base + j]));
            // Positive normal finite iff bits - 2^52 lies in [0, 0x7FDF...F].
            const __m128i t = _mm_sub_epi64(_mm_castpd_si128(v), lowest);
            const __m128i bad = _mm_or_si128(_mm_cmpgt_epi64(_mm_setzero_si128(), t), _mm_cmpgt_epi64(t, span));
            if (_mm_movemask_epi8(bad) == 0) {
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

ZvpStatus zvpsLn_32f(const Zvp32f* pSrc, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    mathpoly::ownsLn_32f_A21(pSrc, pDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsLn_32f_I(Zvp32f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    mathpoly::ownsLn_32f_A21(pSrcDst, pSrcDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsLn_64f(const Zvp64f* pSrc, Zvp64f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    lnDoubleKernel(pSrc, pDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsLn_64f_I(Zvp64f* pSrcDst, int len) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    lnDoubleKernel(pSrcDst, pSrcDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsLn_64f32f(const Zvp64f* pSrc, Zvp32f* pDst, int len) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    lnDoubleKernel(pSrc, pDst, len);
    return zvpStsNoErr;
}

ZvpStatus zvpsLn_16s_ISfs(Zvp16s* pSrcDst, int len, int scaleFactor) {
    return lnSfs(static_cast<const Zvp16s*>(pSrcDst), pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsLn_16s_Sfs(const Zvp16s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    // Equal pointers run the in-place form.
    if (pSrc == pDst) return zvpsLn_16s_ISfs(pDst, len, scaleFactor);
    return lnSfs(pSrc, pDst, len, scaleFactor);
}

ZvpStatus zvpsLn_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor) {
    return lnSfs(pSrc, pDst, len, scaleFactor);
}

ZvpStatus zvpsLn_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor) {
    return lnSfs(static_cast<const Zvp32s*>(pSrcDst), pSrcDst, len, scaleFactor);
}

ZvpStatus zvpsLn_32s16s_Sfs(const Zvp32s* pSrc, Zvp16s* pDst, int len, int scaleFactor) {
    return lnSfs(pSrc, pDst, len, scaleFactor);
}

ZvpStatus zvps10Log10_32s_Sfs(const Zvp32s* pSrc, Zvp32s* pDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pDst);
    ZVP_CHECK_LENS(len);
    tenLog10Kernel(pSrc, pDst, len, scaleFactor);
    return zvpStsNoErr;
}

ZvpStatus zvps10Log10_32s_ISfs(Zvp32s* pSrcDst, int len, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrcDst);
    ZVP_CHECK_LENS(len);
    tenLog10Kernel(pSrcDst, pSrcDst, len, scaleFactor);
    return zvpStsNoErr;
}

ZvpStatus zvpsSumLn_32f(const Zvp32f* pSrc, int len, Zvp32f* pSum) { return sumLn(pSrc, len, pSum); }
ZvpStatus zvpsSumLn_64f(const Zvp64f* pSrc, int len, Zvp64f* pSum) { return sumLn(pSrc, len, pSum); }
ZvpStatus zvpsSumLn_32f64f(const Zvp32f* pSrc, int len, Zvp64f* pSum) { return sumLn(pSrc, len, pSum); }
ZvpStatus zvpsSumLn_16s32f(const Zvp16s* pSrc, int len, Zvp32f* pSum) { return sumLn(pSrc, len, pSum); }

}  // namespace zvp::p8

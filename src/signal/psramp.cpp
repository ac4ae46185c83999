// Ramps, slopes and the Jaehne signal: vectors whose element n is a closed
// function of n. Integer destinations round half away from zero and
// saturate; their arithmetic runs under the library's MXCSR guard, so they
// never depend on the caller's rounding mode or flush settings.
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "check.h"
#include "fpguard.h"
#include "gencore.h"
#include "lane.h"
#include "p8/generate.h"

namespace zvp::p8 {
namespace {

using gen::kBlock;

alignas(16) constexpr std::int32_t kIota[4] = {0, 1, 2, 3};

// ---- ramp: offset + slope * n ------------------------------------------------

// Single precision throughout: n converted to single, times the slope, plus
// the offset.
template <class L>
inline typename L::R rampSingle(int n, float offset, float slope) {
    using I = Lane<std::int32_t, L::kBytes>;
    const auto idx = I::add(I::set1(n), I::load(kIota));
    return L::add(L::mul(L::fromI32(idx), L::set1(slope)), L::set1(offset));
}

void ramp32f(float* p, int len, float offset, float slope) {
    int n = 0;
    for (; n + 4 <= len; n += 4) Full<float>::store(p + n, rampSingle<Full<float>>(n, offset, slope));
    for (; n < len; ++n) One<float>::store(p + n, rampSingle<One<float>>(n, offset, slope));
}

template <class L>
inline typename L::R rampDouble(int n, double offset, double slope) {
    using I = Lanes<std::int32_t, L::N>;
    const auto idx = I::add(I::set1(n), I::load(kIota));
    return L::add(L::mul(L::fromI32(idx), L::set1(slope)), L::set1(offset));
}

void ramp64f(double* p, int len, double offset, double slope) {
    int n = 0;
    for (; n + 2 <= len; n += 2) Full<double>::store(p + n, rampDouble<Full<double>>(n, offset, slope));
    for (; n < len; ++n) One<double>::store(p + n, rampDouble<One<double>>(n, offset, slope));
}

// Integers: the single-precision value widened to double, then rounded
// half away from zero and saturated.
template <class T>
void rampInt(T* p, int len, float offset, float slope) {
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    alignas(16) double v[kBlock];
    for (int b = 0; b < len; b += kBlock) {
        const int n = len - b < kBlock ? len - b : kBlock;
        int k = 0;
        for (; k + 4 <= n; k += 4) {
            const auto x = rampSingle<Full<float>>(b + k, offset, slope);
            Full<double>::store(v + k, Full<double>::fromF32(x));
            Full<double>::store(v + k + 2, Full<double>::fromF32(Full<float>::hiHalf(x)));
        }
        for (; k < n; ++k) One<double>::store(v + k, One<double>::fromF32(rampSingle<One<float>>(b + k, offset, slope)));
        gen::writeReal(p + b, v, n, 1.0);
    }
}

// ---- slope: first + (last - first) * n / (len - 1) ---------------------------

// Each half measured from its own end, so both ends are exact and the
// vector is symmetric about its middle: n <= m/2 gives
// first + d*n/m, the rest last - d*(m - n)/m (m = len - 1, d = last - first).
template <class L>
inline typename L::R slopeAt(typename L::R nv, double first, double last, double d, double m) {
    const auto dv = L::set1(d), mv = L::set1(m);
    const auto a = L::add(L::set1(first), L::div(L::mul(dv, nv), mv));
    const auto b = L::sub(L::set1(last), L::div(L::mul(dv, L::sub(mv, nv)), mv));
    return L::blend(a, b, L::gt(L::add(nv, nv), mv));
}

template <class T>
void slope(T* p, int len, double first, double last) {
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    alignas(16) double v[kBlock];
    const double d = last - first, m = double(len) - 1.0;
    for (int b = 0; b < len; b += kBlock) {
        const int n = len - b < kBlock ? len - b : kBlock;
        if (first == last || len == 1) {
            for (int k = 0; k < n; ++k) v[k] = first;
        } else {
            int k = 0;
            for (; k + 2 <= n; k += 2)
                Full<double>::store(v + k, slopeAt<Full<double>>(Full<double>::pair(b + k, b + k + 1), first, last, d, m));
            for (; k < n; ++k) One<double>::store(v + k, slopeAt<One<double>>(One<double>::set1(b + k), first, last, d, m));
        }
        gen::writeReal(p + b, v, n, 1.0);
    }
}

// ---- Jaehne: magn * sin(pi/2 * n^2 / len) -------------------------------------

// The argument is kept exact: n^2 modulo 4 len (one period of the sine) is
// advanced by 2n + 1 per sample in 64-bit integers, split into the nearest
// whole quarter turn k and a remainder of at most half a quarter turn, and
// only that remainder is scaled to radians.
template <class T>
void jaehne(T* p, int len, double magn) {
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    alignas(16) double q[kBlock], r[kBlock], v[kBlock];
    const std::int64_t L = len, period = 4 * L;
    std::int64_t m = 0;  // n^2 mod 4 len
    for (int b = 0; b < len; b += kBlock) {
        const int n = len - b < kBlock ? len - b : kBlock;
        for (int k = 0; k < n; ++k) {
            const std::int64_t quarter = (2 * m + L) / (2 * L);  // nearest, 0..4
            q[k] = double(quarter & 3);
            r[k] = double(m - quarter * L) / double(L) * gen::kHalfPi;
            m += 2 * std::int64_t(b + k) + 1;
            if (m >= period) m -= period;
        }
        int k = 0;
        for (; k + 2 <= n; k += 2) {
            using D = Full<double>;
            D::R s, c, co, si;
            gen::sinCosSmall<D>(D::load(r + k), s, c);
            gen::quadrant<D>(D::load(q + k), s, c, co, si);
            D::store(v + k, si);
        }
        for (; k < n; ++k) {
            using D = One<double>;
            D::R s, c, co, si;
            gen::sinCosSmall<D>(D::load(r + k), s, c);
            gen::quadrant<D>(D::load(q + k), s, c, co, si);
            D::store(v + k, si);
        }
        gen::writeReal(p + b, v, n, magn);
    }
}

}  // namespace

#define ZVP_RAMP_INT(t)                                                                  \
    ZvpStatus zvpsVectorRamp_##t(Zvp##t* pDst, int len, float offset, float slope) {     \
        ZVP_CHECK_PTRS(pDst);                                                            \
        ZVP_CHECK_LENS(len);                                                             \
        rampInt(pDst, len, offset, slope);                                               \
        return zvpStsNoErr;                                                              \
    }
ZVP_RAMP_INT(8u)
ZVP_RAMP_INT(8s)
ZVP_RAMP_INT(16u)
ZVP_RAMP_INT(16s)
ZVP_RAMP_INT(32u)
ZVP_RAMP_INT(32s)
#undef ZVP_RAMP_INT

ZvpStatus zvpsVectorRamp_32f(Zvp32f* pDst, int len, float offset, float slope) {
    ZVP_CHECK_PTRS(pDst);
    ZVP_CHECK_LENS(len);
    ramp32f(pDst, len, offset, slope);
    return zvpStsNoErr;
}

ZvpStatus zvpsVectorRamp_64f(Zvp64f* pDst, int len, double offset, double slope) {
    ZVP_CHECK_PTRS(pDst);
    ZVP_CHECK_LENS(len);
    ramp64f(pDst, len, offset, slope);
    return zvpStsNoErr;
}

#define ZVP_SLOPE(t)                                                                     \
    ZvpStatus zvpsVectorSlope_##t(Zvp##t* pDst, int len, Zvp64f first, Zvp64f last) {    \
        ZVP_CHECK_PTRS(pDst);                                                            \
        ZVP_CHECK_LENS(len);                                                             \
        slope(pDst, len, first, last);                                                   \
        return zvpStsNoErr;                                                              \
    }
ZVP_SLOPE(8u)
ZVP_SLOPE(8s)
ZVP_SLOPE(16u)
ZVP_SLOPE(16s)
ZVP_SLOPE(32u)
ZVP_SLOPE(32s)
ZVP_SLOPE(32f)
ZVP_SLOPE(64f)
#undef ZVP_SLOPE

// A magnitude below zero (or NaN) is refused after the pointer and length.
#define ZVP_JAEHNE(t)                                                                    \
    ZvpStatus zvpsVectorJaehne_##t(Zvp##t* pDst, int len, Zvp##t magn) {                 \
        ZVP_CHECK_PTRS(pDst);                                                            \
        ZVP_CHECK_LENS(len);                                                             \
        if (!(double(magn) >= 0.0)) return zvpStsBadArgErr;                              \
        jaehne(pDst, len, double(magn));                                                 \
        return zvpStsNoErr;                                                              \
    }
ZVP_JAEHNE(8u)
ZVP_JAEHNE(8s)
ZVP_JAEHNE(16u)
ZVP_JAEHNE(16s)
ZVP_JAEHNE(32u)
ZVP_JAEHNE(32s)
ZVP_JAEHNE(32f)
ZVP_JAEHNE(64f)
#undef ZVP_JAEHNE

}  // namespace zvp::p8

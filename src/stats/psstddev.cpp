// StdDev and MeanStdDev: the sample deviation from one pass over the data
// that forms S1 and S2 together (no second pass through the mean):
//     sqrt(max(n S2 - S1^2, 0) / (n (n - 1))).
// Float data are summed as differences from their first value (the
// deviation does not change; the cancellation of a common offset goes, and
// a constant vector gives exactly 0); see zvps_stats.h for the precision
// of each path.
#include <cmath>
#include <cstddef>

#include "check.h"
#include "p8/stats.h"
#include "reduce_float.h"
#include "reduce_int.h"

namespace zvp::p8 {
namespace {

using F32 = Full<float>;
using F64 = Full<double>;

double deviation(double n, double s1, double s2) {
    double num = n * s2 - s1 * s1;
    if (num < 0) num = 0;  // a NaN stays a NaN
    return std::sqrt(num / (n * (n - 1)));
}

// Sums of d and d^2 in single precision. A one-lane step subtracts in the
// low lane alone, so the zeros above stay zeros.
struct DevFast {
    const float* p;
    F32::R x0;
    red::Acc<float> s1, s2;
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        const auto d = L::sub(L::load(p + i), x0);
        s1.template add<u>(d);
        s2.template add<u>(L::mul(d, d));
    }
};

// Double-double sums of d and d^2, d formed in double; blocks of 16 values
// are summed in double first.
struct DevAccurate {
    const float* p;
    F64::R x0, x0low;  // (x0, x0) and (x0, 0)
    red::AccDD s1, s2;
    template <int u>
    void block(std::ptrdiff_t i) {
        F64::R t[8], q[8];
        red::widen16(p + i, t);
        for (int j = 0; j < 8; ++j) t[j] = F64::sub(t[j], x0), q[j] = F64::mul(t[j], t[j]);
        s1.template add<u>(red::tree8(t));
        s2.template add<u>(red::tree8(q));
    }
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        F64::R lo, hi;
        red::widen<L>(L::load(p + i), lo, hi);
        if constexpr (L::N == 1) {
            lo = F64::sub(lo, x0low);
            s1.template add<u>(lo);
            s2.template add<u>(F64::mul(lo, lo));
        } else {
            lo = F64::sub(lo, x0);
            hi = F64::sub(hi, x0);
            s1.template add<u>(F64::add(lo, hi));
            s2.template add<u>(F64::add(F64::mul(lo, lo), F64::mul(hi, hi)));
        }
    }
};

// Mean and deviation of single-precision data.
void moments32f(const float* p, std::ptrdiff_t n, bool fast, float* mean, float* dev) {
    const float x0 = p[0];
    double s1, s2;
    if (fast) {
        DevFast k{p, F32::set1(x0), {}, {}};
        red::drive<float, 1>(k, n);
        s1 = k.s1.total();
        s2 = k.s2.total();
    } else {
        DevAccurate k{p, F64::set1(x0), F64::pair(x0, 0), {}, {}};
        red::driveBlocks<1>(k, n);
        s1 = k.s1.total();
        s2 = k.s2.total();
    }
    if (mean) *mean = float(double(x0) + s1 / double(n));
    *dev = float(deviation(double(n), s1, s2));
}

struct Dev64 {
    const double* p;
    F64::R x0;
    red::Acc<double> s1, s2;
    template <class L, int u>
    void step(std::ptrdiff_t i) {
        const auto d = L::sub(L::load(p + i), x0);
        s1.template add<u>(d);
        s2.template add<u>(L::mul(d, d));
    }
};

void moments64f(const double* p, std::ptrdiff_t n, double* mean, double* dev) {
    Dev64 k{p, F64::set1(p[0]), {}, {}};
    red::drive<double, 1>(k, n);
    const double s1 = k.s1.total(), s2 = k.s2.total();
    if (mean) *mean = p[0] + s1 / double(n);
    *dev = deviation(double(n), s1, s2);
}

template <class D>
void moments16s(const Zvp16s* p, std::ptrdiff_t n, int sf, D* mean, D* dev) {
    std::uint64_t s2 = 0;
    const auto s = red::sums16<true>(p, n, &s2);
    const std::int64_t s1 = s.even + s.odd;
    if (mean) *mean = red::meanScaled<D>(s1, n, sf);
    *dev = red::stdDevScaled<D>(s1, s2, n, sf);
}

}  // namespace

ZvpStatus zvpsStdDev_32f(const Zvp32f* pSrc, int len, Zvp32f* pStdDev, ZvpHintAlgorithm hint) {
    ZVP_CHECK_PTRS(pSrc, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    moments32f(pSrc, len, hint == zvpAlgHintFast, nullptr, pStdDev);
    return zvpStsNoErr;
}
ZvpStatus zvpsStdDev_64f(const Zvp64f* pSrc, int len, Zvp64f* pStdDev) {
    ZVP_CHECK_PTRS(pSrc, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    moments64f(pSrc, len, nullptr, pStdDev);
    return zvpStsNoErr;
}
ZvpStatus zvpsStdDev_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pStdDev, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    moments16s<Zvp16s>(pSrc, len, scaleFactor, nullptr, pStdDev);
    return zvpStsNoErr;
}
ZvpStatus zvpsStdDev_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pStdDev, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    moments16s<Zvp32s>(pSrc, len, scaleFactor, nullptr, pStdDev);
    return zvpStsNoErr;
}
ZvpStatus zvpsMeanStdDev_32f(const Zvp32f* pSrc, int len, Zvp32f* pMean, Zvp32f* pStdDev) {
    ZVP_CHECK_PTRS(pSrc, pMean, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    float mean, dev;
    moments32f(pSrc, len, false, &mean, &dev);
    *pMean = mean;
    *pStdDev = dev;
    return zvpStsNoErr;
}
ZvpStatus zvpsMeanStdDev_64f(const Zvp64f* pSrc, int len, Zvp64f* pMean, Zvp64f* pStdDev) {
    ZVP_CHECK_PTRS(pSrc, pMean, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    double mean, dev;
    moments64f(pSrc, len, &mean, &dev);
    *pMean = mean;
    *pStdDev = dev;
    return zvpStsNoErr;
}
ZvpStatus zvpsMeanStdDev_16s_Sfs(const Zvp16s* pSrc, int len, Zvp16s* pMean, Zvp16s* pStdDev, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pMean, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    Zvp16s mean, dev;
    moments16s<Zvp16s>(pSrc, len, scaleFactor, &mean, &dev);
    *pMean = mean;
    *pStdDev = dev;
    return zvpStsNoErr;
}
ZvpStatus zvpsMeanStdDev_16s32s_Sfs(const Zvp16s* pSrc, int len, Zvp32s* pMean, Zvp32s* pStdDev, int scaleFactor) {
    ZVP_CHECK_PTRS(pSrc, pMean, pStdDev);
    if (len < 2) return zvpStsSizeErr;
    Zvp32s mean, dev;
    moments16s<Zvp32s>(pSrc, len, scaleFactor, &mean, &dev);
    *pMean = mean;
    *pStdDev = dev;
    return zvpStsNoErr;
}

}  // namespace zvp::p8

// Triangle waves. Over one period of 2 pi the wave falls from +magn at phase
// 0 to -magn at phase pi - asym and rises back to +magn at 2 pi: the rising
// edge takes pi + asym, the falling edge pi - asym, and asym = 0 gives the
// symmetric wave that meets the cosine at its peaks and zero crossings. A
// complex destination takes the same wave a quarter period later as its
// imaginary part, as sin follows cos.
//
// Every sample is computed from its own turn: the block's exact starting
// turn plus the exact fraction of j times the frequency (j < kBlock, a table
// made once per call), reduced to [0, 1); so the turn is within a few units
// of 2^-53 and only a steep edge magnifies that.
#include <cstdint>

#include "check.h"
#include "fpguard.h"
#include "gencore.h"
#include "genstate.h"
#include "lane.h"
#include "p8/generate.h"

namespace zvp::p8 {
namespace {

struct TriangleGen {
    double u0, f;
    double h;         // the falling edge's share of the period, (0, 1]
    double fall, rise;  // slopes per turn of the two edges
    bool complex;
    alignas(16) double step[gen::kBlock];  // frac(j * f)

    TriangleGen(double u0_, double f_, double asym, bool cplx)
        : u0(u0_), f(f_), h((gen::kPi - asym) / gen::kTwoPi), fall(2.0 / h), rise(2.0 / (1.0 - h)), complex(cplx) {
        for (int j = 0; j < gen::kBlock; ++j) step[j] = gen::fracMul(f, j);
    }

    template <class L>
    typename L::R wave(typename L::R u) const {
        const auto a = L::sub(L::set1(1.0), L::mul(u, L::set1(fall)));
        const auto b = L::sub(L::mul(L::sub(u, L::set1(h)), L::set1(rise)), L::set1(1.0));
        return L::blend(a, b, L::ge(u, L::set1(h)));
    }

    void block(std::int64_t start, double* re, double* im) const {
        using D = Full<double>;
        const double ub = gen::turnAt(u0, f, start);
        auto turns = [](D::R u) { return D::sub(u, D::roundTrunc(u)); };
        const D::R base = D::set1(ub), quarter = D::set1(0.75);
        for (int j = 0; j < gen::kBlock; j += 2) {
            const D::R u = turns(D::add(base, D::load(step + j)));
            D::store(re + j, wave<D>(u));
            if (complex) D::store(im + j, wave<D>(turns(D::add(u, quarter))));
        }
    }
};

template <bool Complex, class P>
void triangle(P* dst, int len, double magn, double u0, double f, double asym, std::int64_t n0) {
    const TriangleGen g(u0, f, asym, Complex);
    gen::runBlocks(g, n0, len, [&](int done, const double* re, const double* im, int n) {
        if constexpr (Complex) gen::writeComplex(dst + 2 * std::ptrdiff_t(done), re, im, n, magn);
        else gen::writeReal(dst + done, re, n, magn);
    });
}

// The checks in their fixed order: the phase pointer, the magnitude, the
// frequency, the asymmetry, the phase it points to, then the destination
// and the length.
template <class M, class F, class Ph>
ZvpStatus checkTriangle(const void* pDst, int len, M magn, F rFreq, F asym, const Ph* pPhase, double maxFreq) {
    if (!pPhase) return zvpStsNullPtrErr;
    if (!(double(magn) > 0.0)) return zvpStsTrnglMagnErr;
    if (!(double(rFreq) >= 0.0 && double(rFreq) < maxFreq)) return zvpStsTrnglFreqErr;
    if (!(double(asym) >= -gen::kPi && double(asym) < gen::kPi)) return zvpStsTrnglAsymErr;
    if (!(double(*pPhase) >= 0.0 && double(*pPhase) < gen::kTwoPi)) return zvpStsTrnglPhaseErr;
    if (!pDst) return zvpStsNullPtrErr;
    if (len < 1) return zvpStsSizeErr;
    return zvpStsNoErr;
}

template <bool Complex, class P, class M, class F, class Ph>
ZvpStatus triangleDirect(P* pDst, int len, M magn, F rFreq, F asym, Ph* pPhase) {
    const ZvpStatus st = checkTriangle(pDst, len, magn, rFreq, asym, pPhase, Complex ? 1.0 : 0.5);
    if (st != zvpStsNoErr) return st;
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    const double u0 = double(*pPhase) / gen::kTwoPi, f = double(rFreq);
    triangle<Complex>(pDst, len, double(magn), u0, f, double(asym), 0);
    *pPhase = gen::phaseOfTurn<Ph>(gen::turnAt(u0, f, len));
    return zvpStsNoErr;
}

// Q15 arguments: magnitude as an integer, frequency k / 2^15 in [0, 0.5),
// asymmetry and phase k / 2^15 radians in [-pi, pi) and [0, 2 pi).
ZvpStatus checkTriangleQ15(Zvp16s magn, Zvp16s rFreqQ15, Zvp32s asymQ15, Zvp32s phaseQ15) {
    if (magn <= 0) return zvpStsTrnglMagnErr;
    if (rFreqQ15 < 0 || rFreqQ15 >= 16384) return zvpStsTrnglFreqErr;
    const double asym = asymQ15 / gen::kQ15;
    if (asym < -gen::kPi || asym >= gen::kPi) return zvpStsTrnglAsymErr;
    if (phaseQ15 < 0 || phaseQ15 / gen::kQ15 >= gen::kTwoPi) return zvpStsTrnglPhaseErr;
    return zvpStsNoErr;
}

gen::Q15State* triState(ZvpsTriangleState_16s* p) { return reinterpret_cast<gen::Q15State*>(p); }

}  // namespace

ZvpStatus zvpsTriangle_Direct_32f(Zvp32f* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase) {
    return triangleDirect<false>(pDst, len, magn, rFreq, asym, pPhase);
}
ZvpStatus zvpsTriangle_Direct_64f(Zvp64f* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f asym, Zvp64f* pPhase) {
    return triangleDirect<false>(pDst, len, magn, rFreq, asym, pPhase);
}
ZvpStatus zvpsTriangle_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase) {
    return triangleDirect<false>(pDst, len, magn, rFreq, asym, pPhase);
}
ZvpStatus zvpsTriangle_Direct_32fc(Zvp32fc* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase) {
    return triangleDirect<true>(reinterpret_cast<Zvp32f*>(pDst), len, magn, rFreq, asym, pPhase);
}
ZvpStatus zvpsTriangle_Direct_64fc(Zvp64fc* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f asym, Zvp64f* pPhase) {
    return triangleDirect<true>(reinterpret_cast<Zvp64f*>(pDst), len, magn, rFreq, asym, pPhase);
}
ZvpStatus zvpsTriangle_Direct_16sc(Zvp16sc* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f asym, Zvp32f* pPhase) {
    return triangleDirect<true>(reinterpret_cast<Zvp16s*>(pDst), len, magn, rFreq, asym, pPhase);
}

ZvpStatus zvpsTriangleGetStateSizeQ15_16s(int* pStateSize) {
    ZVP_CHECK_PTRS(pStateSize);
    *pStateSize = gen::kStateBytes;
    return zvpStsNoErr;
}

ZvpStatus zvpsTriangleInitQ15_16s(ZvpsTriangleState_16s** ppState, Zvp8u* pMem, Zvp16s magn, Zvp16s rFreqQ15,
                                  Zvp32s asymQ15, Zvp32s phaseQ15) {
    ZVP_CHECK_PTRS(ppState, pMem);
    ZVP_RETURN_IF_ERROR(checkTriangleQ15(magn, rFreqQ15, asymQ15, phaseQ15));
    *ppState = reinterpret_cast<ZvpsTriangleState_16s*>(gen::buildState(pMem, gen::kTagTriangle, false, magn,
                                                                        phaseQ15 / gen::kQ15 / gen::kTwoPi,
                                                                        rFreqQ15 / gen::kQ15, asymQ15 / gen::kQ15));
    return zvpStsNoErr;
}

ZvpStatus zvpsTriangleInitAllocQ15_16s(ZvpsTriangleState_16s** ppState, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s asymQ15,
                                       Zvp32s phaseQ15) {
    ZVP_CHECK_PTRS(ppState);
    ZVP_RETURN_IF_ERROR(checkTriangleQ15(magn, rFreqQ15, asymQ15, phaseQ15));
    gen::Q15State* s = gen::allocState(gen::kTagTriangle, magn, phaseQ15 / gen::kQ15 / gen::kTwoPi,
                                       rFreqQ15 / gen::kQ15, asymQ15 / gen::kQ15);
    if (!s) return zvpStsMemAllocErr;
    *ppState = reinterpret_cast<ZvpsTriangleState_16s*>(s);
    return zvpStsNoErr;
}

ZvpStatus zvpsTriangleFree(ZvpsTriangleState_16s* pState) {
    return gen::freeState(gen::kTagTriangle, triState(pState));
}

ZvpStatus zvpsTriangleQ15_16s(Zvp16s* pDst, int len, ZvpsTriangleState_16s* pState) {
    ZVP_CHECK_PTRS(pDst, pState);
    ZVP_CHECK_LENS(len);
    gen::Q15State* s = triState(pState);
    if (s->tag != gen::kTagTriangle) return zvpStsContextMatchErr;
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    triangle<false>(pDst, len, s->magn, s->u0, s->f, s->asym, s->pos);
    s->pos = std::int32_t((s->pos + std::int64_t(len)) % gen::kQ15Period);
    return zvpStsNoErr;
}

ZvpStatus zvpsTriangleQ15_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s asymQ15,
                                     Zvp32s phaseQ15) {
    ZVP_RETURN_IF_ERROR(checkTriangleQ15(magn, rFreqQ15, asymQ15, phaseQ15));
    ZVP_CHECK_PTRS(pDst);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    triangle<false>(pDst, len, double(magn), phaseQ15 / gen::kQ15 / gen::kTwoPi, rFreqQ15 / gen::kQ15,
                    asymQ15 / gen::kQ15, 0);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

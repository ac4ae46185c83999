// Tones: magn * cos(2 pi rFreq n + phase), and for complex destinations
// magn * exp(i (2 pi rFreq n + phase)).
//
// Samples come in blocks of gen::kBlock. The first four of a block are
// computed directly from the block's exact starting turn; the rest follow by
// rotating the four (cos, sin) pairs by four samples at a time in double
// precision, so the rounding error grows over at most kBlock / 4 rotations
// before the next block starts afresh.
#include <cstdint>

#include "check.h"
#include "fpguard.h"
#include "gencore.h"
#include "genstate.h"
#include "lane.h"
#include "p8/generate.h"

namespace zvp::p8 {
namespace {

struct ToneGen {
    double u0, f;    // starting turn and turns per sample
    double wc, ws;   // the rotation by four samples

    ToneGen(double u0_, double f_) : u0(u0_), f(f_) {
        using D = One<double>;
        D::R c, s;
        gen::sinCosTurns<D>(D::set1(gen::fracPos(4.0 * f)), c, s);
        wc = D::first(c);
        ws = D::first(s);
    }

    void block(std::int64_t start, double* re, double* im) const {
        using D = Full<double>;
        const double ub = gen::turnAt(u0, f, start);
        auto turns = [](D::R u) { return D::sub(u, D::roundTrunc(u)); };
        D::R c0, s0, c1, s1;
        gen::sinCosTurns<D>(turns(D::pair(ub, ub + f)), c0, s0);
        gen::sinCosTurns<D>(turns(D::pair(ub + 2.0 * f, ub + 3.0 * f)), c1, s1);
        const D::R rc = D::set1(wc), rs = D::set1(ws);
        for (int j = 0; j < gen::kBlock; j += 4) {
            D::store(re + j, c0);
            D::store(re + j + 2, c1);
            D::store(im + j, s0);
            D::store(im + j + 2, s1);
            const D::R n0 = D::sub(D::mul(c0, rc), D::mul(s0, rs)), m0 = D::add(D::mul(s0, rc), D::mul(c0, rs));
            const D::R n1 = D::sub(D::mul(c1, rc), D::mul(s1, rs)), m1 = D::add(D::mul(s1, rc), D::mul(c1, rs));
            c0 = n0;
            s0 = m0;
            c1 = n1;
            s1 = m1;
        }
    }
};

// Fills dst (len samples of T, real or complex pairs of P) from sample n0.
template <bool Complex, class P>
void tone(P* dst, int len, double magn, double u0, double f, std::int64_t n0) {
    const ToneGen g(u0, f);
    gen::runBlocks(g, n0, len, [&](int done, const double* re, const double* im, int n) {
        if constexpr (Complex) gen::writeComplex(dst + 2 * std::ptrdiff_t(done), re, im, n, magn);
        else gen::writeReal(dst + done, re, n, magn);
    });
}

// Checks of the direct forms: the phase pointer, the magnitude, the
// frequency, the phase it points to, then the destination and the length.
template <class M, class F, class Ph>
ZvpStatus checkTone(const void* pDst, int len, M magn, F rFreq, const Ph* pPhase, double maxFreq) {
    if (!pPhase) return zvpStsNullPtrErr;
    if (!(double(magn) > 0.0)) return zvpStsToneMagnErr;
    if (!(double(rFreq) >= 0.0 && double(rFreq) < maxFreq)) return zvpStsToneFreqErr;
    if (!(double(*pPhase) >= 0.0 && double(*pPhase) < gen::kTwoPi)) return zvpStsTonePhaseErr;
    if (!pDst) return zvpStsNullPtrErr;
    if (len < 1) return zvpStsSizeErr;
    return zvpStsNoErr;
}

template <bool Complex, class P, class M, class F, class Ph>
ZvpStatus toneDirect(P* pDst, int len, M magn, F rFreq, Ph* pPhase) {
    const ZvpStatus st = checkTone(pDst, len, magn, rFreq, pPhase, Complex ? 1.0 : 0.5);
    if (st != zvpStsNoErr) return st;
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    const double u0 = double(*pPhase) / gen::kTwoPi, f = double(rFreq);
    tone<Complex>(pDst, len, double(magn), u0, f, 0);
    *pPhase = gen::phaseOfTurn<Ph>(gen::turnAt(u0, f, len));
    return zvpStsNoErr;
}

// Q15 arguments: magnitude as an integer, frequency k / 2^15 in [0, 0.5),
// phase k / 2^15 radians in [0, 2 pi).
ZvpStatus checkToneQ15(Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15) {
    if (magn <= 0) return zvpStsToneMagnErr;
    if (rFreqQ15 < 0 || rFreqQ15 >= 16384) return zvpStsToneFreqErr;
    if (phaseQ15 < 0 || double(phaseQ15) / gen::kQ15 >= gen::kTwoPi) return zvpStsTonePhaseErr;
    return zvpStsNoErr;
}

gen::Q15State* toneState(ZvpsToneState_16s* p) { return reinterpret_cast<gen::Q15State*>(p); }

}  // namespace

ZvpStatus zvpsTone_Direct_32f(Zvp32f* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm) {
    return toneDirect<false>(pDst, len, magn, rFreq, pPhase);
}
ZvpStatus zvpsTone_Direct_64f(Zvp64f* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f* pPhase, ZvpHintAlgorithm) {
    return toneDirect<false>(pDst, len, magn, rFreq, pPhase);
}
ZvpStatus zvpsTone_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm) {
    return toneDirect<false>(pDst, len, magn, rFreq, pPhase);
}
ZvpStatus zvpsTone_Direct_32fc(Zvp32fc* pDst, int len, Zvp32f magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm) {
    return toneDirect<true>(reinterpret_cast<Zvp32f*>(pDst), len, magn, rFreq, pPhase);
}
ZvpStatus zvpsTone_Direct_64fc(Zvp64fc* pDst, int len, Zvp64f magn, Zvp64f rFreq, Zvp64f* pPhase, ZvpHintAlgorithm) {
    return toneDirect<true>(reinterpret_cast<Zvp64f*>(pDst), len, magn, rFreq, pPhase);
}
ZvpStatus zvpsTone_Direct_16sc(Zvp16sc* pDst, int len, Zvp16s magn, Zvp32f rFreq, Zvp32f* pPhase, ZvpHintAlgorithm) {
    return toneDirect<true>(reinterpret_cast<Zvp16s*>(pDst), len, magn, rFreq, pPhase);
}

ZvpStatus zvpsToneGetStateSizeQ15_16s(int* pStateSize) {
    ZVP_CHECK_PTRS(pStateSize);
    *pStateSize = gen::kStateBytes;
    return zvpStsNoErr;
}

ZvpStatus zvpsToneInitQ15_16s(ZvpsToneState_16s** ppState, Zvp8u* pMem, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15) {
    ZVP_CHECK_PTRS(ppState, pMem);
    ZVP_RETURN_IF_ERROR(checkToneQ15(magn, rFreqQ15, phaseQ15));
    *ppState = reinterpret_cast<ZvpsToneState_16s*>(gen::buildState(
        pMem, gen::kTagTone, false, magn, phaseQ15 / gen::kQ15 / gen::kTwoPi, rFreqQ15 / gen::kQ15, 0.0));
    return zvpStsNoErr;
}

ZvpStatus zvpsToneInitAllocQ15_16s(ZvpsToneState_16s** ppState, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15) {
    ZVP_CHECK_PTRS(ppState);
    ZVP_RETURN_IF_ERROR(checkToneQ15(magn, rFreqQ15, phaseQ15));
    gen::Q15State* s = gen::allocState(gen::kTagTone, magn, phaseQ15 / gen::kQ15 / gen::kTwoPi, rFreqQ15 / gen::kQ15, 0.0);
    if (!s) return zvpStsMemAllocErr;
    *ppState = reinterpret_cast<ZvpsToneState_16s*>(s);
    return zvpStsNoErr;
}

ZvpStatus zvpsToneFree(ZvpsToneState_16s* pState) { return gen::freeState(gen::kTagTone, toneState(pState)); }

ZvpStatus zvpsToneQ15_16s(Zvp16s* pDst, int len, ZvpsToneState_16s* pState) {
    ZVP_CHECK_PTRS(pDst, pState);
    ZVP_CHECK_LENS(len);
    gen::Q15State* s = toneState(pState);
    if (s->tag != gen::kTagTone) return zvpStsContextMatchErr;
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    tone<false>(pDst, len, s->magn, s->u0, s->f, s->pos);
    s->pos = std::int32_t((s->pos + std::int64_t(len)) % gen::kQ15Period);
    return zvpStsNoErr;
}

ZvpStatus zvpsToneQ15_Direct_16s(Zvp16s* pDst, int len, Zvp16s magn, Zvp16s rFreqQ15, Zvp32s phaseQ15) {
    ZVP_RETURN_IF_ERROR(checkToneQ15(magn, rFreqQ15, phaseQ15));
    ZVP_CHECK_PTRS(pDst);
    ZVP_CHECK_LENS(len);
    const MxcsrGuard guard(MxcsrGuard::kNearest);
    tone<false>(pDst, len, double(magn), phaseQ15 / gen::kQ15 / gen::kTwoPi, rFreqQ15 / gen::kQ15, 0);
    return zvpStsNoErr;
}

}  // namespace zvp::p8

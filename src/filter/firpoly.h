// Rational-rate FIR filtering by polyphase branches, and the entry points of
// the multi-rate stream record that the single-rate block entry dispatches to.
//
// The input is up-sampled by U (sample t at position t U + upPhase, zeros
// between), filtered by L taps and every D-th output kept (position
// i D + downPhase). Output i uses the taps p, p + U, p + 2U, ... (branch
// p = (i D + downPhase - upPhase) mod U) against the inputs t0, t0 - 1, ...,
// t0 = floor((i D + downPhase - upPhase) / U), so no inserted zero is ever
// multiplied. The pattern repeats every U outputs with t0 advanced by D.
#pragma once

#include <algorithm>
#include <cstddef>

#include "lane_float.h"
#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::fir {

// One entry of the cycle table: branch, its length, and the newest input of
// output i of a cycle relative to the cycle's first input.
struct PolyStep {
    int branch, len, t0;
};

// Branch p of the taps reversed (oldest input first) at br + p * P, with
// P = (L + U - 1) / U slots each; table[i], i < U, for one cycle.
inline void polyPrepare(const float* taps, int L, int U, int upPhase, int D, int downPhase, float* br,
                        PolyStep* table) {
    const int P = (L + U - 1) / U;
    for (int p = 0; p < U; ++p) {
        const int len = p < L ? (L - p + U - 1) / U : 0;
        for (int q = 0; q < P; ++q) br[std::ptrdiff_t(p) * P + q] = 0.0f;
        for (int q = 0; q < len; ++q) br[std::ptrdiff_t(p) * P + (len - 1 - q)] = taps[p + std::ptrdiff_t(q) * U];
    }
    for (int i = 0; i < U; ++i) {
        const long long m = (long long)i * D + downPhase - upPhase;
        const long long t0 = m >= 0 ? m / U : -((-m + U - 1) / U);
        const int p = int(m - t0 * U);
        table[i] = PolyStep{p, p < L ? (L - p + U - 1) / U : 0, int(t0)};
    }
}

// Dot product of n taps with n samples, four lanes then the tail.
inline float polyDot(const float* h, const float* x, std::ptrdiff_t n) {
    using F = Full<float>;
    auto a0 = F::zero(), a1 = F::zero();
    std::ptrdiff_t k = 0;
    for (; k + 8 <= n; k += 8) {
        a0 = F::add(a0, F::mul(F::load(h + k), F::load(x + k)));
        a1 = F::add(a1, F::mul(F::load(h + k + 4), F::load(x + k + 4)));
    }
    for (; k + 4 <= n; k += 4) a0 = F::add(a0, F::mul(F::load(h + k), F::load(x + k)));
    float l[4];
    F::store(l, F::add(a0, a1));
    float s = (l[0] + l[1]) + (l[2] + l[3]);
    for (; k < n; ++k) s += h[k] * x[k];
    return s;
}

// cycles whole cycles: buf holds [P history | cycles * D inputs] (x[t] at
// buf[P + t]); writes cycles * U outputs.
inline void polyRun(const float* br, int P, const PolyStep* table, int U, int D, const float* buf,
                    std::ptrdiff_t cycles, float* out) {
    for (std::ptrdiff_t c = 0; c < cycles; ++c) {
        const float* base = buf + P + c * D;
        for (int i = 0; i < U; ++i) {
            const PolyStep& s = table[i];
            out[c * U + i] = polyDot(br + std::ptrdiff_t(s.branch) * P, base + s.t0 - s.len + 1, s.len);
        }
    }
}

// The multi-rate stream record (psfirmr.cpp).
ZvpStatus mrStreamGetStateSize(int tapsLen, int upFactor, int downFactor, int* pSize);
ZvpStatus mrStreamInit(void** ppState, const float* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor,
                       int downPhase, const float* pDlyLine, int roundMode, Zvp8u* pBuffer);
ZvpStatus mrStreamFilter(void* pState, const float* pSrc, float* pDst, int numIters);
ZvpStatus mrStreamFree(void* pState);

}  // namespace zvp::ZVP_LEVEL::fir

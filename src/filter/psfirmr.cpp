// The multi-rate 32f stream filter: a record of polyphase branches, a cycle
// table and a staging buffer [history | inputs of one piece], filtered
// through zvpsFIR_32f.
#include <algorithm>
#include <cstring>

#include "check.h"
#include "fir_tags.h"
#include "firpoly.h"
#include "p8/frame.h"
#include "workbuf.h"

namespace zvp::ZVP_LEVEL {
namespace {

struct MrRecord {
    std::int32_t tag;
    int tapsLen, up, upPhase, down, downPhase;
    int hist;         // P = (tapsLen + up - 1) / up inputs of history
    int cycles;       // whole cycles per piece
    int roundMode;
    int allocMark;    // 1 + offset of the record in its allocated block; 0: caller memory
    float* branches;  // up branches of P reversed taps
    fir::PolyStep* table;
    float* buf;       // [P history | cycles * down inputs]
};

constexpr long long a16(long long v) { return (v + 15) & ~15LL; }
constexpr long long kRec = 64;
static_assert(sizeof(MrRecord) <= kRec);

struct MrLayout {
    long long branches, table, buf, total;
    int P, C;
};

bool mrLayout(long long L, long long U, long long D, MrLayout& o) {
    o.P = int((L + U - 1) / U);
    o.C = int(std::max(1LL, 4096 / D));
    long long at = kRec;
    o.branches = at;
    at += a16(4 * U * o.P);
    o.table = at;
    at += a16(12 * U);
    o.buf = at;
    at += a16(4 * (o.P + (long long)o.C * D));
    o.total = at + 16;
    return o.total <= 0x7fffffffLL;
}

}  // namespace

namespace fir {

ZvpStatus mrStreamGetStateSize(int tapsLen, int upFactor, int downFactor, int* pSize) {
    ZVP_CHECK_PTRS(pSize);
    if (tapsLen < 1) return zvpStsFIRLenErr;
    if (upFactor < 1 || downFactor < 1) return zvpStsFIRMRFactorErr;
    MrLayout o;
    if (!mrLayout(tapsLen, upFactor, downFactor, o)) return zvpStsSizeErr;
    *pSize = int(o.total);
    return zvpStsNoErr;
}

ZvpStatus mrStreamInit(void** pp, const float* pTaps, int L, int U, int upPhase, int D, int downPhase,
                       const float* pDly, int roundMode, Zvp8u* pBuffer) {
    ZVP_CHECK_PTRS(pp, pTaps, pBuffer);
    if (L < 1) return zvpStsFIRLenErr;
    if (U < 1 || D < 1) return zvpStsFIRMRFactorErr;
    if (upPhase < 0 || upPhase >= U) return zvpStsFIRMRPhaseErr;
    if (downPhase < 0 || downPhase >= D) return zvpStsFIRMRPhaseErr;
    if (roundMode != zvpRndZero && roundMode != zvpRndNear && roundMode != zvpRndFinancial)
        return zvpStsRoundModeNotSupportedErr;
    MrLayout o;
    if (!mrLayout(L, U, D, o)) return zvpStsSizeErr;
    Zvp8u* at = alignUp(pBuffer, 16);
    auto* r = reinterpret_cast<MrRecord*>(at);
    std::memset(static_cast<void*>(r), 0, sizeof(MrRecord));
    r->tag = kTagMrStream32f;
    r->tapsLen = L;
    r->up = U;
    r->upPhase = upPhase;
    r->down = D;
    r->downPhase = downPhase;
    r->hist = o.P;
    r->cycles = o.C;
    r->roundMode = roundMode;
    r->branches = reinterpret_cast<float*>(at + o.branches);
    r->table = reinterpret_cast<PolyStep*>(at + o.table);
    r->buf = reinterpret_cast<float*>(at + o.buf);
    polyPrepare(pTaps, L, U, upPhase, D, downPhase, r->branches, r->table);
    for (int t = 0; t < o.P; ++t) r->buf[t] = pDly ? pDly[t] : 0.0f;
    *pp = r;
    return zvpStsNoErr;
}

ZvpStatus mrStreamFilter(void* p, const float* src, float* dst, int numIters) {
    auto* r = static_cast<MrRecord*>(p);
    const std::ptrdiff_t U = r->up, D = r->down, P = r->hist;
    float* buf = r->buf;
    for (std::ptrdiff_t c0 = 0; c0 < numIters; c0 += r->cycles) {
        const std::ptrdiff_t cc = std::min<std::ptrdiff_t>(r->cycles, numIters - c0);
        std::memcpy(buf + P, src + c0 * D, std::size_t(cc * D) * sizeof(float));
        polyRun(r->branches, int(P), r->table, int(U), int(D), buf, cc, dst + c0 * U);
        std::memmove(buf, buf + cc * D, std::size_t(P) * sizeof(float));
    }
    return zvpStsNoErr;
}

ZvpStatus mrStreamFree(void* p) {
    auto* r = static_cast<MrRecord*>(p);
    if (r->allocMark != 0) {
        r->tag = 0;
        p8::zvpsFree(reinterpret_cast<Zvp8u*>(r) - (r->allocMark - 1));
    }
    return zvpStsNoErr;
}

}  // namespace fir
}  // namespace zvp::ZVP_LEVEL

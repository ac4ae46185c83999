// The state record of the Q15 tone and triangle generators, in caller memory
// (aligned up to 16 bytes inside the block GetStateSize asks for) or in a
// block of the library allocator. It holds the waveform's parameters and the
// index of the next sample modulo 2^15: a Q15 frequency k / 2^15 repeats
// after 2^15 samples, so the index never needs more.
#pragma once

#include <cstdint>
#include <new>

#include "gencore.h"
#include "p8/frame.h"
#include "workbuf.h"

namespace zvp::ZVP_LEVEL::gen {

inline constexpr std::int32_t kTagTone = 0x544F4E31;      // "TON1"
inline constexpr std::int32_t kTagTriangle = 0x54524931;  // "TRI1"
inline constexpr std::int64_t kQ15Period = 32768;
inline constexpr double kQ15 = 32768.0;

struct Q15State {
    std::int32_t tag;
    std::int32_t allocated;   // 1: built by InitAlloc, released with its block
    std::int32_t baseOffset;  // record address minus the block's base
    std::int32_t pos;         // next sample, modulo 2^15
    double magn, u0, f, asym;
};

inline constexpr int kStateBytes = int(sizeof(Q15State)) + 15;

inline Q15State* buildState(Zvp8u* mem, std::int32_t tag, bool allocated, double magn, double u0, double f,
                            double asym) {
    auto* s = new (alignUp(mem, 16)) Q15State{};
    s->allocated = allocated ? 1 : 0;
    s->baseOffset = std::int32_t(reinterpret_cast<Zvp8u*>(s) - mem);
    s->pos = 0;
    s->magn = magn;
    s->u0 = u0;
    s->f = f;
    s->asym = asym;
    s->tag = tag;
    return s;
}

// Allocates and builds a record; null when the allocation fails.
inline Q15State* allocState(std::int32_t tag, double magn, double u0, double f, double asym) {
    Zvp8u* block = p8::zvpsMalloc_8u(kStateBytes);
    if (!block) return nullptr;
    return buildState(block, tag, true, magn, u0, f, asym);
}

inline ZvpStatus freeState(std::int32_t tag, Q15State* s) {
    if (!s) return zvpStsNullPtrErr;
    if (s->tag != tag) return zvpStsContextMatchErr;
    s->tag = 0;
    if (s->allocated == 1) p8::zvpsFree(reinterpret_cast<Zvp8u*>(s) - s->baseOffset);
    return zvpStsNoErr;
}

}  // namespace zvp::ZVP_LEVEL::gen

// The FFT specification record shared by the complex transforms: identity
// tags, the fixed leading part, the size rules of the size queries and the
// placement of the tables inside the record.
//
// The record lives at a 64-byte boundary inside memory given by the caller or
// allocated by the library. Every reference from the record to its tables is
// a 32-bit byte offset from the record's start, so the record is the same on
// both targets and can be copied or embedded in another record.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::fft {

// Identity tags of the power-of-two FFT records.
enum : std::int32_t {
    kTagC32fc = 4,
    kTagC32f = 5,
    kTagR32f = 6,
    kTagC64fc = 7,
    kTagC64f = 8,
    kTagR64f = 9,
};

// Fixed leading part; every field is 32 bits wide except the double scale
// at the end. Cleared by initialisation before anything is filled in.
struct SpecHeader {
    std::int32_t tag;         // identity tag; 0 when released or not usable
    std::int32_t order;       // N = 2^order
    std::int32_t fwdScaled;   // 1: the forward transform multiplies by scale
    std::int32_t invScaled;   // 1: the inverse transform multiplies by scale
    float scale;              // single-precision scale (0 for flag 8)
    std::int32_t hint;        // algorithm hint, stored as given
    std::int32_t workSize;    // work bytes a transform needs (0: none)
    std::int32_t allocated;   // 1: built by InitAlloc, released with the block
    std::int32_t reserved;
    std::int32_t baseOffset;  // record address minus the allocated block's base
    std::int32_t bitRevOff;   // engine: first-pass placement table;
                              // large scheme: 64x64 tile partner table
    std::int32_t twdOff;      // engine or row twiddles (0 when rows recurse)
    // Large scheme (orders from largeFrom()):
    std::int32_t blkOrder;    // log2 of the number of rows C
    std::int32_t bufOrder;    // log2 of the column-pass buffer in samples
    std::int32_t colTwdOff;   // column-pass twiddles of the whole transform
    std::int32_t tileRevOff;  // 64-entry 6-bit reversal table of the tiles
    std::int32_t stepTwdOff;  // rows of 2^18 points or more: their row twiddles
    std::int32_t stepColOff;  //   and their column-pass twiddles
    std::int32_t placeOff;    // first large order: first-pass placement table
                              // of the whole transform (out of place)
    std::int32_t reserved2;
    double scale64;           // double-precision scale of the 64-bit types
};
static_assert(sizeof(SpecHeader) == 88, "the record header must stay 88 bytes");
// The small-order record (152 bytes) must hold the header after alignment.
static_assert(sizeof(SpecHeader) + 63 <= 152);

// Tables start after the header at this offset from the record.
constexpr std::int32_t kTablesOffset = 128;

// Sample precision of a complex record: single (8-byte samples) or double
// (16-byte samples).
enum class Prec { Single, Double };

constexpr int maxOrder(Prec p) { return p == Prec::Single ? 28 : 27; }
// First order handled by the blocked large scheme.
constexpr int largeFrom(Prec p) { return p == Prec::Single ? 18 : 17; }
constexpr int sampleBytes(Prec p) { return p == Prec::Single ? 8 : 16; }

// Block order (log2 rows) and buffer order of the large scheme.
constexpr int blockOrder(Prec p, int m) {
    const int s = p == Prec::Single ? m : m + 1;  // same sizes in bytes
    return s <= 17 ? 0 : (s <= 20 ? 4 : 8);
}
constexpr int bufferOrder(Prec p, int m) {
    const int s = p == Prec::Single ? m : m + 1;
    return s <= 17 ? 0 : (s <= 20 ? 10 : 14);
}

struct Sizes {
    std::int64_t spec = 0, init = 0, work = 0;
};

constexpr std::int64_t pow2(int k) { return std::int64_t(1) << k; }
constexpr std::int64_t floor64(std::int64_t v) { return v & ~std::int64_t(63); }

// Bit-reversal area: N bytes plus alignment slack.
constexpr std::int64_t revArea(int m) { return floor64((pow2(m) & ~std::int64_t(3)) + 67); }
// Quarter-wave base table of N/4 + 1 samples, rounded up to 64 bytes.
constexpr std::int64_t baseArea(Prec p, int m) {
    return p == Prec::Single ? revArea(m) : floor64((2 * pow2(m) & ~std::int64_t(7)) + 71);
}

// Sizes of the large scheme before the final additions. A sub-order of the
// rows that would itself be large is handled by one more level of the same
// scheme (rows of 2^(s-4) points and a 16-row column pass).
inline Sizes largeRule(Prec p, int m) {
    const std::int64_t e = sampleBytes(p);
    const int b = blockOrder(p, m), c = bufferOrder(p, m), s = m - b;
    Sizes z;
    if (s < largeFrom(p)) {
        z.spec = floor64(e * pow2(s) + 71);
        z.work = floor64(e * pow2(s) + 63);
    } else {
        // step rule: rows of 2^(s-4) points, 16-row column pass over 2^s
        const int s2 = s - 4;
        z.spec = floor64(e * pow2(s2) + 71) + e * pow2(s - 1);
        z.work = std::max<std::int64_t>(floor64(e * pow2(s2) + 63), e * pow2(10));
    }
    z.spec += e * pow2(m - 1);
    z.work = std::max<std::int64_t>(z.work, e * pow2(c));
    if (m > largeFrom(p)) {
        z.spec += 4160 + 4 * pow2(m - 12);
        z.work = std::max<std::int64_t>(z.work, 8192 * e);
    } else {
        z.spec += revArea(m);
    }
    return z;
}

// The three sizes reported by the size query for a valid order.
inline Sizes complexSizes(Prec p, int m) {
    Sizes z;
    if (m <= 5) {
        z.spec = 152;
        return z;
    }
    const std::int64_t e = sampleBytes(p), n = pow2(m);
    if (m < largeFrom(p)) {
        z.spec = floor64(e * n + 71) + revArea(m) + 192;
        z.init = m <= 10 ? 0 : baseArea(p, m) + 64;
        z.work = floor64(e * n + 63) + 64;
        return z;
    }
    const Sizes l = largeRule(p, m);
    z.spec = l.spec + 192;
    z.init = l.init + baseArea(p, m) + 64;
    z.work = l.work > 0 ? l.work + 64 : 0;
    return z;
}

// Placement of the tables inside a record of order m (offsets from the
// record's start); computed once, used by initialisation and checked against
// the reported size.
struct Layout {
    std::int64_t bitRev = 0, bitRevBytes = 0;  // engine placement or tile partners
    std::int64_t tileRev = 0;                  // 64 bytes
    std::int64_t place = 0, placeBytes = 0;    // first large order only
    std::int64_t twd = 0, twdBytes = 0;        // engine / row twiddles
    std::int64_t col = 0, colBytes = 0;        // column twiddles
    std::int64_t stepTwd = 0, stepTwdBytes = 0;
    std::int64_t stepCol = 0, stepColBytes = 0;
    std::int64_t end = 0;                      // bytes used from the record start
    int rowOrder = 0;                          // log2 points per row
    int stepOrder = 0;                         // rows of the step (0: none)
};

constexpr std::int64_t ceil64(std::int64_t v) { return (v + 63) & ~std::int64_t(63); }

// Passes of a 2^k-point engine (k >= 6). The first pass does bits[0] levels
// (4-point butterflies) with the bit-reversal placement, every other pass 2
// or 3 levels (radix 4 or 8). Above 2^maxBlockBits points the first
// `blocked` passes build sub-transforms of 2^blockBits points one block at a
// time, so each block stays in the first-level cache.
struct PassPlan {
    int count = 0;
    int bits[16] = {};
    int blocked = 0;
    int blockBits = 0;
};

constexpr void appendLevels(PassPlan& p, int r) {  // r >= 2: threes, then twos
    while (r > 0) {
        const int b = (r % 2 == 1) ? 3 : 2;
        p.bits[p.count++] = b;
        r -= b;
    }
}

// Blocks hold at most 16 KiB of samples (2048 single or 1024 double complex
// points), half the first-level cache, so the pass twiddles stay there too.
constexpr int maxBlockBits(Prec pr) { return pr == Prec::Single ? 11 : 10; }

constexpr PassPlan passPlan(Prec pr, int k) {
    PassPlan p;
    p.bits[p.count++] = 2;
    const int mb = maxBlockBits(pr);
    if (k <= mb) {
        appendLevels(p, k - 2);
        return p;
    }
    p.blockBits = k - mb >= 2 ? mb : mb - 1;
    appendLevels(p, p.blockBits - 2);
    p.blocked = p.count;
    appendLevels(p, k - p.blockBits);
    return p;
}

// Bytes of the pass twiddles of a 2^k-point engine: r - 1 roots per position
// of a radix-r pass over transforms of L points, which sums to N - 8.
constexpr std::int64_t engineTwdBytes(Prec p, int k) {
    const std::int64_t e = p == Prec::Single ? 4 : 8;
    return 2 * (pow2(k) - pow2(passPlan(p, k).bits[0])) * e;
}
// Bytes of a column pass over 2^m points in rows of 2^r points: the last
// stage keeps one twiddle per position, the others three.
constexpr std::int64_t columnTwdBytes(Prec p, int m, int r) {
    const std::int64_t e = p == Prec::Single ? 4 : 8;
    return (pow2(m) / 2 - pow2(r)) * 2 * e;
}
constexpr int vecWidth(Prec p) { return p == Prec::Single ? 4 : 2; }

inline Layout layoutFor(Prec p, int m) {
    Layout L;
    std::int64_t off = kTablesOffset;
    if (m < largeFrom(p)) {
        const int lp = passPlan(p, m).bits[0];
        L.bitRev = off;
        L.bitRevBytes = 4 * (pow2(m - lp) / vecWidth(p));
        off = ceil64(off + L.bitRevBytes);
        L.twd = off;
        L.twdBytes = engineTwdBytes(p, m);
        off = ceil64(off + L.twdBytes);
        L.rowOrder = m;
        L.end = off;
        return L;
    }
    const int b = blockOrder(p, m);
    const int r = m - b;
    L.rowOrder = r;
    L.bitRev = off;
    L.bitRevBytes = 4 * pow2(m - 12);
    off = ceil64(off + L.bitRevBytes);
    L.tileRev = off;
    off += 64;
    if (m == largeFrom(p)) {
        // room reserved for the full permutation at this order: the placement
        // table of a first pass over the whole transform
        L.place = off;
        L.placeBytes = 4 * (pow2(m - 2) / vecWidth(p));
        off = ceil64(off + L.placeBytes);
    }
    if (r < largeFrom(p)) {
        L.twd = off;
        L.twdBytes = engineTwdBytes(p, r);
        off = ceil64(off + L.twdBytes);
    } else {
        L.stepOrder = r;
        L.stepTwd = off;
        L.stepTwdBytes = engineTwdBytes(p, r - 4);
        off = ceil64(off + L.stepTwdBytes);
        L.stepCol = off;
        L.stepColBytes = columnTwdBytes(p, r, r - 4);
        off = ceil64(off + L.stepColBytes);
    }
    L.col = off;
    L.colBytes = columnTwdBytes(p, m, r);
    off = ceil64(off + L.colBytes);
    L.end = off;
    return L;
}

}  // namespace zvp::ZVP_LEVEL::fft

// Bit-string copies at arbitrary bit offsets.
//
// Copy_1u (and CopyLE_1u, the same operation) numbers the bits of a byte from
// the most significant: offset k is the bit of weight 128 >> k. CopyBE_1u
// numbers them from the least significant: offset k is the bit of weight
// 1 << k. In both, after position 7 comes position 0 of the next byte, and
// the destination bits outside the copied range keep their values.
//
// Offsets of 8 or more address bit (offset mod 8) of byte (offset / 8): a bit
// offset is a position in the string, not only within the first byte.
#include <cstdint>

#include "check.h"
#include "p8/copy.h"

namespace zvp::p8 {
namespace {

// Bit order of a byte: which weight position k has, and how the two bytes
// that straddle an unaligned run of 8 bits combine.
struct MsbFirst {
    static unsigned weight(int k) { return 0x80u >> k; }
    // 8 bits starting at position sh (1..7) of a, continuing into b.
    static std::uint8_t join(std::uint8_t a, std::uint8_t b, int sh) {
        return std::uint8_t((a << sh) | (b >> (8 - sh)));
    }
};
struct LsbFirst {
    static unsigned weight(int k) { return 1u << k; }
    static std::uint8_t join(std::uint8_t a, std::uint8_t b, int sh) {
        return std::uint8_t((a >> sh) | (b << (8 - sh)));
    }
};

// Bits copied one at a time up to this length; longer strings take the
// byte-wide path (same result).
constexpr int kBitwiseMax = 48;

template <class Order>
void copyBit(const Zvp8u* s, int sp, Zvp8u* d, int dp) {
    const bool bit = (s[sp >> 3] & Order::weight(sp & 7)) != 0;
    const unsigned w = Order::weight(dp & 7);
    d[dp >> 3] = Zvp8u(bit ? (d[dp >> 3] | w) : (d[dp >> 3] & ~w));
}

template <class Order>
void copyBits(const Zvp8u* s, int so, Zvp8u* d, int dOff, int len) {
    s += so >> 3;
    d += dOff >> 3;
    so &= 7;
    dOff &= 7;
    if (len <= kBitwiseMax) {
        for (int j = 0; j < len; ++j) copyBit<Order>(s, so + j, d, dOff + j);
        return;
    }
    // Single bits until the destination reaches a byte boundary.
    int j = 0;
    for (; dOff != 0 && j < len; ++j, dOff = (dOff + 1) & 7) copyBit<Order>(s, so + j, d, dOff);
    if (j > 0) {  // the destination moved to the next byte
        d += 1;
        s += (so + j) >> 3;
        so = (so + j) & 7;
    }
    const int bytes = (len - j) >> 3;
    if (so == 0) {
        if (bytes > 0) zvpsCopy_8u(s, d, bytes);
    } else {
        for (int b = 0; b < bytes; ++b) d[b] = Order::join(s[b], s[b + 1], so);
    }
    s += bytes;
    d += bytes;
    const int rest = (len - j) & 7;
    for (int k = 0; k < rest; ++k) copyBit<Order>(s, so + k, d, k);
}

template <class Order>
ZvpStatus copy1u(const Zvp8u* s, int so, Zvp8u* d, int dOff, int len) {
    ZVP_CHECK_PTRS(s, d);
    if (len < 1 || so < 0 || dOff < 0) return zvpStsSizeErr;
    copyBits<Order>(s, so, d, dOff, len);
    return zvpStsNoErr;
}

}  // namespace

ZvpStatus zvpsCopy_1u(const Zvp8u* s, int so, Zvp8u* d, int dOff, int len) {
    return copy1u<MsbFirst>(s, so, d, dOff, len);
}

ZvpStatus zvpsCopyLE_1u(const Zvp8u* s, int so, Zvp8u* d, int dOff, int len) {
    return zvpsCopy_1u(s, so, d, dOff, len);
}

ZvpStatus zvpsCopyBE_1u(const Zvp8u* s, int so, Zvp8u* d, int dOff, int len) {
    return copy1u<LsbFirst>(s, so, d, dOff, len);
}

}  // namespace zvp::p8

// Move between overlapping ranges, the streaming fill, Flip and bit-string
// copies (values, checks, lengths, guards and in place of Copy, Move, Set
// and Zero are the shape table's).
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;

template <class T>
void moveBothWays(ZvpStatus (*move)(const T*, T*, int)) {
    for (int n : {1, 7, 33, 130}) {
        for (int shift : {1, 3, 16}) {
            const std::size_t total = (n + shift) * sizeof(T);
            const auto init = zvp::test::randomBytes(total, n * 31 + shift);
            std::vector<unsigned char> expect(init);
            // Right: elements [0, n) to [shift, shift + n).
            std::memmove(expect.data() + shift * sizeof(T), init.data(), n * sizeof(T));
            GuardedBuffer b(total, alignof(T));
            std::memcpy(b.data(), init.data(), total);
            ASSERT_EQ(move(b.as<T>(), b.as<T>() + shift, n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(b.data(), expect.data(), total), 0) << sizeof(T) << " " << n << " " << shift;
            // Left: elements [shift, shift + n) to [0, n).
            expect = init;
            std::memmove(expect.data(), init.data() + shift * sizeof(T), n * sizeof(T));
            std::memcpy(b.data(), init.data(), total);
            ASSERT_EQ(move(b.as<T>() + shift, b.as<T>(), n), zvpStsNoErr);
            EXPECT_EQ(std::memcmp(b.data(), expect.data(), total), 0) << sizeof(T) << " " << n << " " << shift;
            EXPECT_TRUE(b.guardsIntact());
        }
    }
}

TEST(Move, HandlesOverlapBothWays) {
    moveBothWays(zvpsMove_8u), moveBothWays(zvpsMove_16s), moveBothWays(zvpsMove_16sc), moveBothWays(zvpsMove_32s);
    moveBothWays(zvpsMove_32sc), moveBothWays(zvpsMove_32f), moveBothWays(zvpsMove_32fc), moveBothWays(zvpsMove_64s);
    moveBothWays(zvpsMove_64sc), moveBothWays(zvpsMove_64f), moveBothWays(zvpsMove_64fc);
}

TEST(Set, LargeFillTakesTheStreamingPathCorrectly) {
    const int n = (1 << 22) / 4 + 13;  // beyond the streaming threshold, odd tail
    GuardedBuffer d(n * sizeof(Zvp32f), 4);
    ASSERT_EQ(zvpsSet_32f(1.5f, d.as<Zvp32f>(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) ASSERT_EQ(d.as<Zvp32f>()[i], 1.5f) << i;
    EXPECT_TRUE(d.guardsIntact());
}

// Flip ------------------------------------------------------------------

template <class T>
void reverses(ZvpStatus (*flip)(const T*, T*, int)) {
    const int n = 67;
    const auto init = zvp::test::randomBytes(n * sizeof(T), 100);
    std::vector<T> d(n);
    ASSERT_EQ(flip(reinterpret_cast<const T*>(init.data()), d.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) ASSERT_EQ(std::memcmp(&d[i], &init[(n - 1 - i) * sizeof(T)], sizeof(T)), 0) << i;
}

TEST(Flip, ReversesWholeElements) {
    reverses(zvpsFlip_8u), reverses(zvpsFlip_16u), reverses(zvpsFlip_32f), reverses(zvpsFlip_32fc);
    reverses(zvpsFlip_64f), reverses(zvpsFlip_64fc);
}

// Bit strings -----------------------------------------------------------

// Reference: bit b of a string with byte pointer p and bit offset off, in
// the given numbering, one bit at a time.
bool getBit(const Zvp8u* p, long pos, bool msbFirst) {
    const int k = static_cast<int>(pos % 8);
    return (p[pos / 8] >> (msbFirst ? 7 - k : k)) & 1;
}
void putBit(Zvp8u* p, long pos, bool bit, bool msbFirst) {
    const int k = static_cast<int>(pos % 8);
    const Zvp8u w = static_cast<Zvp8u>(1u << (msbFirst ? 7 - k : k));
    p[pos / 8] = static_cast<Zvp8u>(bit ? (p[pos / 8] | w) : (p[pos / 8] & ~w));
}

using BitCopy = ZvpStatus (*)(const Zvp8u*, int, Zvp8u*, int, int);

void checkBitCopy(BitCopy fn, bool msbFirst) {
    const auto src = zvp::test::randomBytes(40, 1);
    const auto init = zvp::test::randomBytes(40, 2);
    for (int so = 0; so < 8; ++so) {
        for (int dOff = 0; dOff < 8; ++dOff) {
            for (int len = 1; len <= 130; ++len) {
                std::vector<Zvp8u> want(init), got(init);
                for (int j = 0; j < len; ++j)
                    putBit(want.data(), dOff + j, getBit(src.data(), so + j, msbFirst), msbFirst);
                ASSERT_EQ(fn(src.data(), so, got.data(), dOff, len), zvpStsNoErr);
                ASSERT_EQ(got, want) << "src offset " << so << " dst offset " << dOff << " len " << len;
            }
        }
    }
    // Offsets of 8 and more address later bytes.
    std::vector<Zvp8u> want(init), got(init);
    for (int j = 0; j < 77; ++j) putBit(want.data(), 19 + j, getBit(src.data(), 13 + j, msbFirst), msbFirst);
    ASSERT_EQ(fn(src.data(), 13, got.data(), 19, 77), zvpStsNoErr);
    EXPECT_EQ(got, want);
}

TEST(BitCopy, MsbFirstMatchesBitByBitOracle) { checkBitCopy(zvpsCopy_1u, true); }
TEST(BitCopy, LeIsTheSameOperation) { checkBitCopy(zvpsCopyLE_1u, true); }
TEST(BitCopy, LsbFirstMatchesBitByBitOracle) { checkBitCopy(zvpsCopyBE_1u, false); }

TEST(BitCopy, ThreeBitsFromOffsetSix) {
    const Zvp8u src[2] = {0x03, 0x80};
    Zvp8u dst = 0x15;
    ASSERT_EQ(zvpsCopy_1u(src, 6, &dst, 0, 3), zvpStsNoErr);
    EXPECT_EQ(dst, 0xF5);  // 111 on top, the low five bits 10101 kept
}

TEST(BitCopy, ChecksWriteNothing) {
    const Zvp8u src[4] = {1, 2, 3, 4};
    GuardedBuffer d(4);
    for (BitCopy fn : {zvpsCopy_1u, zvpsCopyLE_1u, zvpsCopyBE_1u}) {
        EXPECT_EQ(fn(nullptr, 0, d.data(), 0, 0), zvpStsNullPtrErr);
        EXPECT_EQ(fn(src, 0, nullptr, 0, 8), zvpStsNullPtrErr);
        EXPECT_EQ(fn(src, 0, d.data(), 0, 0), zvpStsSizeErr);
        EXPECT_EQ(fn(src, -1, d.data(), 0, 8), zvpStsSizeErr);
        EXPECT_EQ(fn(src, 0, d.data(), -1, 8), zvpStsSizeErr);
    }
    EXPECT_TRUE(d.untouched());
}

}  // namespace

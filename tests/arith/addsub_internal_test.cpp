// The portable 128-bit integer behind the 64-bit scaled forms: arithmetic
// and products against schoolbook arithmetic on 16-bit limbs, and its
// scaling rule against the 64-bit rule wherever both apply.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "int128.h"
#include "scale.h"

namespace {

using zvp::p8::Int128;

// Eight 16-bit limbs, least significant first: the two's complement value mod 2^128.
struct Limbs {
    std::uint32_t v[8] = {};
};

Limbs limbsOf(Int128 x) {
    Limbs l;
    for (int i = 0; i < 4; ++i) l.v[i] = std::uint32_t(x.lo >> (16 * i)) & 0xFFFF;
    for (int i = 0; i < 4; ++i) l.v[4 + i] = std::uint32_t(std::uint64_t(x.hi) >> (16 * i)) & 0xFFFF;
    return l;
}

Limbs limbsOf64(std::uint64_t x, bool signExtend) {
    Limbs l;
    const std::uint32_t fill = signExtend && (x >> 63) ? 0xFFFF : 0;
    for (int i = 0; i < 4; ++i) l.v[i] = std::uint32_t(x >> (16 * i)) & 0xFFFF;
    for (int i = 4; i < 8; ++i) l.v[i] = fill;
    return l;
}

Limbs mulLimbs(const Limbs& a, const Limbs& b) {
    std::uint64_t acc[8] = {};
    for (int i = 0; i < 8; ++i)
        for (int j = 0; i + j < 8; ++j) acc[i + j] += std::uint64_t(a.v[i]) * b.v[j];
    Limbs r;
    std::uint64_t carry = 0;
    for (int i = 0; i < 8; ++i) {
        const std::uint64_t t = acc[i] + carry;
        r.v[i] = std::uint32_t(t & 0xFFFF);
        carry = t >> 16;
    }
    return r;
}

bool same(const Limbs& a, const Limbs& b) {
    for (int i = 0; i < 8; ++i)
        if (a.v[i] != b.v[i]) return false;
    return true;
}

std::uint64_t draw(std::mt19937_64& rng) {
    static const std::uint64_t special[] = {0, 1, ~0ull, 1ull << 63, (1ull << 63) - 1, 0xFFFFFFFFull,
                                            1ull << 32};
    return rng() % 4 == 0 ? special[rng() % 7] : rng();
}

TEST(Int128, ProductsMatchSchoolbookMultiplication) {
    std::mt19937_64 rng(11);
    for (int k = 0; k < 20000; ++k) {
        const std::uint64_t a = draw(rng), b = draw(rng);
        ASSERT_TRUE(same(limbsOf(zvp::p8::mulWideU(a, b)),
                         mulLimbs(limbsOf64(a, false), limbsOf64(b, false))));
        ASSERT_TRUE(same(limbsOf(zvp::p8::mulWideS(std::int64_t(a), std::int64_t(b))),
                         mulLimbs(limbsOf64(a, true), limbsOf64(b, true))))
            << std::int64_t(a) << " * " << std::int64_t(b);
    }
}

TEST(Int128, RuleAgreesWithTheSixtyFourBitRule) {
    std::mt19937_64 rng(12);
    for (int k = 0; k < 20000; ++k) {
        // Sums that fit 64 bits, so both rules apply.
        const std::int64_t a = std::int64_t(draw(rng)) >> 1, b = std::int64_t(draw(rng)) >> 1;
        const Int128 r = Int128::from(a) + Int128::from(b);
        ASSERT_EQ(r.lo, std::uint64_t(a + b));
        for (int sf : {-70, -64, -63, -40, -31, -16, -1, 0, 1, 2, 15, 31, 32, 62, 63, 64, 65, 200}) {
            ASSERT_EQ(zvp::p8::scaleRule<std::int64_t>(r, sf), zvp::p8::scaleRule<std::int64_t>(a + b, sf))
                << a << " + " << b << " sf=" << sf;
            ASSERT_EQ(zvp::p8::scaleRule<std::int32_t>(r, sf), zvp::p8::scaleRule<std::int32_t>(a + b, sf))
                << a << " + " << b << " sf=" << sf;
            ASSERT_EQ(zvp::p8::scaleRule<std::int16_t>(r - Int128::from(b), sf),
                      zvp::p8::scaleRule<std::int16_t>(a, sf))
                << a << " sf=" << sf;
        }
    }
}

}  // namespace

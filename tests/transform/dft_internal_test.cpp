// The method each length takes, read from the records themselves: the worked
// examples of the size rule, and the records embedded by the chirp method
// and by the real records of even length.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "../../src/common/p8/dft.h"
#include "../../src/transform/dftspec.h"

namespace {

using namespace zvp::p8::dft;

struct Case {
    int length;
    std::int32_t method;
    std::vector<int> factors;  // mixed radix and small lengths
    int conv;                  // chirp: M, and the method of the inner record
    std::int32_t innerMethod;
};

TEST(DftMethod, WorkedExamples) {
    const Case cases[] = {
        {6, kSmall, {6}, 0, 0}, {12, kSmall, {4, 3}, 0, 0}, {13, kSmall, {13}, 0, 0},
        {16, kSmall, {}, 0, 0}, {17, kDirect, {}, 0, 0}, {18, kPrime, {6, 3}, 0, 0},
        {47, kDirect, {}, 0, 0}, {51, kPrime, {3, 17}, 0, 0}, {53, kConv, {}, 128, kFft},
        {96, kPrime, {2, 4, 4, 3}, 0, 0}, {298, kConv, {}, 640, kPrime}, {596, kPrime, {4, 149}, 0, 0},
        {604, kConv, {}, 1280, kPrime}, {1024, kFft, {}, 0, 0}, {1536, kPrime, {2, 4, 4, 4, 4, 3}, 0, 0},
        {4095, kPrime, {3, 3, 5, 7, 13}, 0, 0}, {4097, kConv, {}, 16384, kFft}, {10007, kConv, {}, 32768, kFft},
    };
    for (const auto& c : cases) {
        ZvpsDFTSpec_C_32fc* s = nullptr;
        ASSERT_EQ(zvp::p8::zvpsDFTInitAlloc_C_32fc(&s, c.length, 8, zvpAlgHintNone), zvpStsNoErr);
        const auto* h = reinterpret_cast<const Header*>(s);
        EXPECT_EQ(h->method, c.method) << c.length;
        EXPECT_TRUE(h->fftSwitch == (c.method == kFft) && h->pfSwitch == (c.method == kPrime)) << c.length;
        const std::vector<int> f(h->factors, h->factors + h->nFactors);
        EXPECT_TRUE(c.factors.empty() || f == c.factors) << c.length;
        if (c.method == kConv) {
            EXPECT_EQ(h->convLength, c.conv) << c.length;
            const auto* in = reinterpret_cast<const Header*>(reinterpret_cast<const unsigned char*>(h) + h->innerOff);
            EXPECT_EQ(in->method, c.innerMethod) << c.length;
            EXPECT_EQ(in->length, c.conv) << c.length;
        }
        EXPECT_EQ(zvp::p8::zvpsDFTFree_C_32fc(s), zvpStsNoErr);
    }
}

// A real record of even length holds the complex record of half the length.
TEST(DftMethod, RealEvenLengthsUseHalfTheLength) {
    for (int L : {18, 298, 1000, 4098}) {
        ZvpsDFTSpec_R_32f* s = nullptr;
        ASSERT_EQ(zvp::p8::zvpsDFTInitAlloc_R_32f(&s, L, 1, zvpAlgHintNone), zvpStsNoErr);
        const auto* h = reinterpret_cast<const Header*>(s);
        EXPECT_EQ(h->method, kHalf) << L;
        const auto* in = reinterpret_cast<const Header*>(reinterpret_cast<const unsigned char*>(h) + h->innerOff);
        EXPECT_EQ(in->length, L / 2) << L;
        EXPECT_EQ(in->fwdScaled + in->invScaled, 0) << L;  // the outer record scales
        EXPECT_EQ(zvp::p8::zvpsDFTFree_R_32f(s), zvpStsNoErr);
    }
}

}  // namespace

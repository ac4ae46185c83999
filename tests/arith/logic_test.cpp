// Bitwise operations and shifts: the deliberate check orders of the
// Copy/Zero shortcuts. Values, the ordinary check order, lengths and in
// place are the shape table's (tests/shapes).
#include <gtest/gtest.h>

#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;

template <class T>
struct Logic;
#define ZVP_LOGIC_OPS(T)                                                                          \
    template <>                                                                                   \
    struct Logic<Zvp##T> {                                                                        \
        using V = Zvp##T;                                                                         \
        static ZvpStatus opC(int w, const V* s, V c, V* d, int n) {                               \
            return w == 0 ? zvpsAndC_##T(s, c, d, n) : w == 1 ? zvpsOrC_##T(s, c, d, n) : zvpsXorC_##T(s, c, d, n); \
        }                                                                                         \
        static ZvpStatus opCI(int w, V c, V* sd, int n) {                                         \
            return w == 0 ? zvpsAndC_##T##_I(c, sd, n) : w == 1 ? zvpsOrC_##T##_I(c, sd, n) : zvpsXorC_##T##_I(c, sd, n); \
        }                                                                                         \
    };
ZVP_LOGIC_OPS(8u)
ZVP_LOGIC_OPS(16u)
ZVP_LOGIC_OPS(32u)
#undef ZVP_LOGIC_OPS

template <class T>
class LogicTest : public ::testing::Test {};
using LogicTypes = ::testing::Types<Zvp8u, Zvp16u, Zvp32u>;
TYPED_TEST_SUITE(LogicTest, LogicTypes);

TYPED_TEST(LogicTest, ChecksAndConstantShortcuts) {
    using T = TypeParam;
    using L = Logic<T>;
    const T a[4] = {1, 2, 3, 4};
    GuardedBuffer d(4 * sizeof(T));
    // Constant 0: And -> Zero (null source still -8), Or/Xor -> Copy.
    EXPECT_EQ(L::opC(0, nullptr, 0, d.as<T>(), 4), zvpStsNullPtrErr);
    EXPECT_EQ(L::opC(0, a, 0, d.as<T>(), 0), zvpStsSizeErr);  // from Zero
    EXPECT_EQ(L::opC(1, nullptr, 0, d.as<T>(), 4), zvpStsNullPtrErr);  // from Copy
    EXPECT_EQ(L::opC(2, a, 0, d.as<T>(), -2), zvpStsSizeErr);
    EXPECT_EQ(L::opCI(0, 0, nullptr, 4), zvpStsNullPtrErr);
    EXPECT_TRUE(d.untouched());
    ASSERT_EQ(L::opC(0, a, 0, d.as<T>(), 4), zvpStsNoErr);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(d.as<T>()[i], 0);
    ASSERT_EQ(L::opC(2, a, 0, d.as<T>(), 4), zvpStsNoErr);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(d.as<T>()[i], a[i]);
}

TEST(Logic, AndC16uWithZeroAndLengthZeroReportsZerosStatus) {
    const Zvp16u s[1] = {1};
    Zvp16u d[1] = {9};
    EXPECT_EQ(zvpsAndC_16u(s, 0, d, 0), zvpStsSizeErr);
    EXPECT_EQ(d[0], 9);
}

// Shifts ------------------------------------------------------------------

TEST(Shift, ShortcutsComeBeforeTheShiftsOwnChecks) {
    Zvp16u s[4] = {1, 2, 3, 4};
    GuardedBuffer d(8);
    // Count 0 -> Copy: its pointer and length checks.
    EXPECT_EQ(zvpsLShiftC_16u(nullptr, 0, d.as<Zvp16u>(), 4), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsLShiftC_16u(s, 0, d.as<Zvp16u>(), -1), zvpStsSizeErr);
    // Count >= width -> Zero (null source -8 first, then Zero's checks).
    EXPECT_EQ(zvpsLShiftC_16u(nullptr, 16, d.as<Zvp16u>(), 4), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsLShiftC_16u(s, 16, nullptr, 4), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRShiftC_8u(reinterpret_cast<Zvp8u*>(s), 9, d.as<Zvp8u>(), 0), zvpStsSizeErr);
    // Otherwise pointers, length, then the count.
    EXPECT_EQ(zvpsLShiftC_16u(s, -1, nullptr, 0), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsLShiftC_16u(s, -1, d.as<Zvp16u>(), 0), zvpStsSizeErr);
    EXPECT_EQ(zvpsLShiftC_16u(s, -1, d.as<Zvp16u>(), 4), zvpStsShiftErr);
    EXPECT_EQ(zvpsRShiftC_32s(nullptr, -1, d.as<Zvp32s>(), 1), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRShiftC_32s(reinterpret_cast<Zvp32s*>(s), -1, d.as<Zvp32s>(), 0), zvpStsSizeErr);
    EXPECT_EQ(zvpsRShiftC_32s(reinterpret_cast<Zvp32s*>(s), -1, d.as<Zvp32s>(), 1), zvpStsShiftErr);
    EXPECT_TRUE(d.untouched());
    // In place: a large count zeroes at once, so a null vector is Zero's -8.
    EXPECT_EQ(zvpsLShiftC_32s_I(40, nullptr, 4), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsLShiftC_8u_I(8, d.as<Zvp8u>(), 0), zvpStsSizeErr);
    EXPECT_EQ(zvpsRShiftC_16u_I(-3, nullptr, 4), zvpStsNullPtrErr);
    EXPECT_EQ(zvpsRShiftC_16u_I(-3, s, 0), zvpStsSizeErr);
    EXPECT_EQ(zvpsRShiftC_16u_I(-3, s, 4), zvpStsShiftErr);
    EXPECT_EQ(zvpsRShiftC_16s_I(-1, reinterpret_cast<Zvp16s*>(s), 4), zvpStsShiftErr);
    EXPECT_EQ(s[3], 4) << "nothing written on error";
    // A count of 0 in place succeeds without touching the data.
    EXPECT_EQ(zvpsLShiftC_16u_I(0, s, 4), zvpStsNoErr);
    EXPECT_EQ(s[0], 1);
}

}  // namespace

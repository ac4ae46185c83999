// Bitwise operations and shifts: values against plain per-element oracles
// and the deliberate check orders of the Copy/Zero shortcuts (the ordinary
// check order, lengths and in place are the shape table's).
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "sentinel.h"
#include "zvps.h"

namespace {

using zvp::test::GuardedBuffer;

template <class T>
std::vector<T> randomVec(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<T> v(n);
    for (auto& x : v) x = static_cast<T>(rng());
    return v;
}

template <class T>
struct Logic;
#define ZVP_LOGIC_OPS(T)                                                                          \
    template <>                                                                                   \
    struct Logic<Zvp##T> {                                                                        \
        using V = Zvp##T;                                                                         \
        static ZvpStatus op(int w, const V* a, const V* b, V* d, int n) {                         \
            return w == 0 ? zvpsAnd_##T(a, b, d, n) : w == 1 ? zvpsOr_##T(a, b, d, n) : zvpsXor_##T(a, b, d, n); \
        }                                                                                         \
        static ZvpStatus opC(int w, const V* s, V c, V* d, int n) {                               \
            return w == 0 ? zvpsAndC_##T(s, c, d, n) : w == 1 ? zvpsOrC_##T(s, c, d, n) : zvpsXorC_##T(s, c, d, n); \
        }                                                                                         \
        static ZvpStatus opCI(int w, V c, V* sd, int n) {                                         \
            return w == 0 ? zvpsAndC_##T##_I(c, sd, n) : w == 1 ? zvpsOrC_##T##_I(c, sd, n) : zvpsXorC_##T##_I(c, sd, n); \
        }                                                                                         \
        static ZvpStatus notOp(const V* s, V* d, int n) { return zvpsNot_##T(s, d, n); }         \
    };
ZVP_LOGIC_OPS(8u)
ZVP_LOGIC_OPS(16u)
ZVP_LOGIC_OPS(32u)
#undef ZVP_LOGIC_OPS

template <class T>
T apply(int w, T a, T b) {
    return static_cast<T>(w == 0 ? (a & b) : w == 1 ? (a | b) : (a ^ b));
}

template <class T>
class LogicTest : public ::testing::Test {};
using LogicTypes = ::testing::Types<Zvp8u, Zvp16u, Zvp32u>;
TYPED_TEST_SUITE(LogicTest, LogicTypes);

// Values (in place, lengths and alignment are the shape table's).
TYPED_TEST(LogicTest, MatchesOracle) {
    using T = TypeParam;
    using L = Logic<T>;
    const int n = 67;
    const auto a = randomVec<T>(n, n), b = randomVec<T>(n, n + 1000);
    const T c = static_cast<T>(0x5A3C96E1u);
    std::vector<T> d(n), e(n);
    for (int w = 0; w < 3; ++w) {
        ASSERT_EQ(L::op(w, a.data(), b.data(), d.data(), n), zvpStsNoErr);
        ASSERT_EQ(L::opC(w, a.data(), c, e.data(), n), zvpStsNoErr);
        for (int i = 0; i < n; ++i) {
            ASSERT_EQ(d[i], apply(w, a[i], b[i])) << w << " " << i;
            ASSERT_EQ(e[i], apply(w, a[i], c)) << w << " " << i;
        }
    }
    ASSERT_EQ(L::notOp(a.data(), d.data(), n), zvpStsNoErr);
    for (int i = 0; i < n; ++i) ASSERT_EQ(d[i], static_cast<T>(~a[i]));
}

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

template <class T>
T refShift(T x, int k, bool left) {
    constexpr int w = sizeof(T) * 8;
    if (left) return k >= w ? T(0) : static_cast<T>(static_cast<unsigned long long>(x) << k);
    if constexpr (std::is_signed_v<T>) return static_cast<T>(x >> (k >= w ? w - 1 : k));
    else return k >= w ? T(0) : static_cast<T>(x >> k);
}

template <class T>
struct Shift;
#define ZVP_SHIFT_OPS(T)                                                                           \
    template <>                                                                                    \
    struct Shift<Zvp##T> {                                                                         \
        using V = Zvp##T;                                                                          \
        static ZvpStatus out(bool l, const V* s, int k, V* d, int n) {                             \
            return l ? zvpsLShiftC_##T(s, k, d, n) : zvpsRShiftC_##T(s, k, d, n);                  \
        }                                                                                          \
    };
ZVP_SHIFT_OPS(8u)
ZVP_SHIFT_OPS(16u)
ZVP_SHIFT_OPS(16s)
ZVP_SHIFT_OPS(32s)
#undef ZVP_SHIFT_OPS

template <class T>
class ShiftTest : public ::testing::Test {};
using ShiftTypes = ::testing::Types<Zvp8u, Zvp16u, Zvp16s, Zvp32s>;
TYPED_TEST_SUITE(ShiftTest, ShiftTypes);

TYPED_TEST(ShiftTest, EveryCountMatchesOracle) {
    using T = TypeParam;
    const int n = 67;
    const auto a = randomVec<T>(n, n * 3);
    std::vector<T> d(n);
    for (bool left : {true, false})
        for (int k = 0; k <= int(sizeof(T)) * 8 + 3; ++k) {
            ASSERT_EQ(Shift<T>::out(left, a.data(), k, d.data(), n), zvpStsNoErr);
            for (int i = 0; i < n; ++i) ASSERT_EQ(d[i], refShift(a[i], k, left)) << left << " k=" << k << " i=" << i;
        }
}

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

TEST(Shift, LargeCountsZeroOrFillWithSign) {
    const Zvp16u s[2] = {0xFFFF, 1};
    Zvp16u d[2] = {7, 7};
    EXPECT_EQ(zvpsLShiftC_16u(s, 16, d, 2), zvpStsNoErr);
    EXPECT_EQ(d[0], 0);
    EXPECT_EQ(d[1], 0);
    const Zvp16s ss[3] = {-5, 5, 0};
    Zvp16s sd[3];
    EXPECT_EQ(zvpsRShiftC_16s(ss, 20, sd, 3), zvpStsNoErr);
    EXPECT_EQ(sd[0], -1);
    EXPECT_EQ(sd[1], 0);
    EXPECT_EQ(sd[2], 0);
    Zvp32s v[2] = {-7, 7};
    EXPECT_EQ(zvpsRShiftC_32s_I(100, v, 2), zvpStsNoErr);
    EXPECT_EQ(v[0], -1);
    EXPECT_EQ(v[1], 0);
    // The 16s left shift is the 16u one.
    const Zvp16s ls[1] = {-3};
    Zvp16s ld[1];
    EXPECT_EQ(zvpsLShiftC_16s(ls, 2, ld, 1), zvpStsNoErr);
    EXPECT_EQ(ld[0], -12);
}

}  // namespace

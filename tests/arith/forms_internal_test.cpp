// The element-wise forms: check order, and lengths that reach the kernels
// in full (a complex length of 2^30 or more is 2^31 or more reals).
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>

#include "forms.h"

namespace {

using namespace zvp::p8;

// Records what the form passed on, and touches nothing.
struct Recorder {
    using type = Zvp16s;
    static inline std::ptrdiff_t n = 0;
    template <class A, class B>
    static ZvpStatus run(A, B, Zvp16s*, std::ptrdiff_t count, int) {
        n = count;
        return zvpStsNoErr;
    }
    static ZvpStatus check(int sf) { return sf == 99 ? zvpStsBadArgErr : zvpStsNoErr; }
};

TEST(Forms, ComplexLengthsReachTheKernelDoubledWithoutOverflow) {
    // The pointers are never dereferenced by the recorder.
    alignas(16) Zvp16sc buf[1];
    for (int len : {1, (1 << 30) - 1, 1 << 30, INT_MAX}) {
        Recorder::n = 0;
        EXPECT_EQ(zvpStsNoErr, form::vv<Recorder>(buf, buf, buf, len, 0));
        EXPECT_EQ(2 * std::ptrdiff_t(len), Recorder::n);
        Recorder::n = 0;
        EXPECT_EQ(zvpStsNoErr, form::vvAsReals<Recorder>(buf, buf, buf, len, 0));
        EXPECT_EQ(2 * std::ptrdiff_t(len), Recorder::n);
        Recorder::n = 0;
        EXPECT_EQ(zvpStsNoErr, form::vcI<Recorder>(buf[0], buf, len, 0));
        EXPECT_EQ(2 * std::ptrdiff_t(len), Recorder::n);
    }
}

TEST(Forms, CheckOrder) {
    Zvp16s x[1] = {};
    Recorder::n = 0;
    // Pointers before lengths before the operation's own values.
    EXPECT_EQ(zvpStsNullPtrErr, form::vv<Recorder>(x, static_cast<Zvp16s*>(nullptr), x, 0, 99));
    EXPECT_EQ(zvpStsSizeErr, form::vv<Recorder>(x, x, x, 0, 99));
    EXPECT_EQ(zvpStsBadArgErr, form::vv<Recorder>(x, x, x, 1, 99));
    EXPECT_EQ(0, Recorder::n);
    // The complex-as-reals forms check the length first.
    Zvp16sc* none = nullptr;
    EXPECT_EQ(zvpStsSizeErr, form::vvAsReals<Recorder>(none, none, none, 0, 0));
    EXPECT_EQ(zvpStsNullPtrErr, form::vvAsReals<Recorder>(none, none, none, 1, 0));
}

}  // namespace

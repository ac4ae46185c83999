// The load-time decision on the merged-variant index.
#include <gtest/gtest.h>

#include "frame.h"
#include "zvpcore.h"

TEST(Frame, JumpIndexNeedsBits0x10And0x20) {
    EXPECT_EQ(zvp::p8::frame::jumpIndexFor(0), 0);
    EXPECT_EQ(zvp::p8::frame::jumpIndexFor(0x10), 0);
    EXPECT_EQ(zvp::p8::frame::jumpIndexFor(0x20), 0);
    EXPECT_EQ(zvp::p8::frame::jumpIndexFor(0x30), 1);
    EXPECT_EQ(zvp::p8::frame::jumpIndexFor(~Zvp64u(0)), 1);
    EXPECT_EQ(zvp::p8::frame::jumpIndexFor(~Zvp64u(0x10)), 0);
    EXPECT_EQ(zvp::p8::frame::mergedIndex(), zvp::p8::frame::jumpIndexFor(zvpGetEnabledCpuFeatures()));
}

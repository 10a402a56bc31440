#include <gtest/gtest.h>

#include "platform/values/Numbers.h"

namespace platform {
namespace {

TEST(Numbers, HaveAResultForEveryDouble) {
  EXPECT_EQ(ToInt32(-2.9), -2);
  EXPECT_EQ(ToInt32(1e10), 2147483647);
  EXPECT_EQ(ToInt32(-1e300), -2147483647 - 1);
  EXPECT_EQ(ToInt32(std::nan("")), 0);
  EXPECT_EQ(Round(-2.5), -2.0);
  EXPECT_EQ(Round(0.49999999999999994), 0.0);
}

}  // namespace
}  // namespace platform

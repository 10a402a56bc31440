#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

#include "platform/Parallel.h"

namespace {

class Parallel : public testing::TestWithParam<int> {
 protected:
  void SetUp() override { platform::SetParallelism(GetParam()); }
  void TearDown() override { platform::SetParallelism(0); }
};

TEST_P(Parallel, CallsEachIndexOnce) {
  for (const int count : {-1, 0, 1, 5, 1000}) {
    std::vector<std::atomic<int>> calls(1000);
    platform::ParallelFor(count, [&](int i) { ++calls[static_cast<std::size_t>(i)]; });
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(calls[static_cast<std::size_t>(i)], i < count ? 1 : 0);
  }
}

TEST_P(Parallel, PassesOneFailureOnAndEndsAllCalls) {
  std::atomic<int> running{0};
  const auto fail = [&](int i) {
    ++running;
    const bool fails = i >= 20;
    --running;
    if (fails) throw std::runtime_error("no more");
  };
  EXPECT_THROW(platform::ParallelFor(100, fail), std::runtime_error);
  EXPECT_EQ(running, 0);
}

INSTANTIATE_TEST_SUITE_P(Threads, Parallel, testing::Values(1, 2, 5));

}  // namespace

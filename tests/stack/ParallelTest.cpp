#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/values/Parallel.h"

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

TEST_P(Parallel, RethrowsOneFailureAfterAllCallsHaveEnded) {
  // The first call fails once every other thread is in a call; those calls end after the failure.
  const int threads = GetParam();
  std::atomic<int> inCalls{0}, ended{0};
  std::atomic<bool> failed{false};
  const auto work = [&](int i) {
    ++inCalls;
    if (i == 0) {
      while (inCalls < threads) std::this_thread::yield();
      failed = true;
      throw std::runtime_error("no more");
    }
    while (!failed) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    ++ended;
  };
  EXPECT_THROW(platform::ParallelFor(100, work), std::runtime_error);
  EXPECT_EQ(ended, inCalls - 1);
  EXPECT_LT(inCalls, 100);
}

INSTANTIATE_TEST_SUITE_P(Threads, Parallel, testing::Values(1, 2, 5));

}  // namespace

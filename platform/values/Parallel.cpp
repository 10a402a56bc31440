#include "platform/values/Parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace platform {
namespace {

std::atomic<int> threadLimit{0};

int ThreadsFor(int count) { return std::clamp(Parallelism(), 1, std::max(count, 1)); }

}  // namespace

int Parallelism() {
  const int limit = threadLimit;
  return limit > 0 ? limit : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

void ParallelFor(int count, const std::function<void(int)>& work) {
  const int threads = ThreadsFor(count);
  if (threads == 1) {
    for (int i = 0; i < count; ++i) work(i);
    return;
  }

  std::atomic<int> next{0};
  std::exception_ptr failure;
  std::mutex failureMutex;
  const auto takeTurns = [&] {
    try {
      for (int i = next++; i < count; i = next++) work(i);
    } catch (...) {
      next = count;
      const std::lock_guard lock(failureMutex);
      if (!failure) failure = std::current_exception();
    }
  };

  // Threads are created for each call: that costs some ten microseconds, a call takes milliseconds, and nothing
  // outlives the call. If the system refuses a thread, the call is only slower.
  {
    std::vector<std::jthread> helpers;
    helpers.reserve(static_cast<std::size_t>(threads - 1));
    try {
      while (static_cast<int>(helpers.size()) < threads - 1) helpers.emplace_back(takeTurns);
    } catch (const std::system_error&) {
    }
    takeTurns();
  }
  if (failure) std::rethrow_exception(failure);
}

void SetParallelism(int threads) { threadLimit = threads; }

}  // namespace platform

#pragma once

#include <atomic>

namespace platform {

/// The chance that a pass of a loop gives to work in the background. There is none beyond the one thread of events, so
/// this delivers nothing; but it is an access that the outside can see, which makes a loop that never ends well
/// defined.
inline void BackgroundTask() {
  static std::atomic<unsigned> passes{0};
  passes.store(passes.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

}  // namespace platform

#pragma once

#include <atomic>

namespace platform {

/// Called once per pass of a loop, to yield to background work. There is no such work, so this processes no events; its
/// observable side effect keeps a loop that never ends well defined.
inline void BackgroundTask() {
  static std::atomic<unsigned> passes{0};
  passes.store(passes.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

}  // namespace platform

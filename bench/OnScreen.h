#pragma once
/// What the benches ask the screen itself.

#include <functional>

namespace bench {

/// Returns when the X server has carried out everything that this program asked of it. Elsewhere at once.
void AwaitServer();

/// Acts, and handles events until so many windows have been painted that were not there before or not yet painted.
void AwaitNewWindows(int count, const std::function<void()>& act);

}  // namespace bench

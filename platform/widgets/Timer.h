#pragma once

#include "platform/widgets/Control.h"

namespace platform {

/// Calls Action on the event thread, between other events, never during a handler.
class Timer : public Control {
 public:
  static constexpr int kModeOff = 0, kModeSingle = 1, kModeMultiple = 2;

  explicit Timer(int periodMilliseconds);
  ~Timer() override;
  void Enabled(bool enabled);
  bool Enabled() const;
  void Mode(int mode);
  int Period() const { return period_; }
  std::function<void()> Action;

 private:
  void Update();
  int period_;
  bool enabled_ = false;
  int mode_ = kModeOff;
  struct Native;
  std::unique_ptr<Native> native_;
};

}  // namespace platform

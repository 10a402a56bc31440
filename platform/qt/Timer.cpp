#include "platform/widgets/Timer.h"

#include <QTimer>

#include "platform/qt/NativeToolkit.h"
#include "platform/widgets/Application.h"

namespace platform {

struct Timer::Native {
  QTimer timer;
};

Timer::Timer(int periodMilliseconds) : period_(periodMilliseconds), native_(std::make_unique<Native>()) {
  QObject::connect(&native_->timer, &QTimer::timeout, &native_->timer, [this] {
    // A tick during a handler is dropped; a single-shot timer keeps running, so its tick comes after the handler.
    if (HandlerRuns() || HandlerBegun()) return;
    if (mode_ == kModeSingle) Mode(kModeOff);
    if (Action) Dispatch(Action);
  });
}

Timer::~Timer() = default;

void Timer::Enabled(bool enabled) {
  enabled_ = enabled;
  Update();
}

bool Timer::Enabled() const { return enabled_; }

void Timer::Mode(int mode) {
  mode_ = mode;
  Update();
}

void Timer::Update() {
  const bool runs = enabled_ && mode_ != kModeOff;
  if (runs && !native_->timer.isActive()) native_->timer.start(period_);
  if (!runs) native_->timer.stop();
}

}  // namespace platform

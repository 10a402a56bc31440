#pragma once

#include "platform/widgets/Control.h"

namespace platform {

/// A popup menu; one row is chosen, or none (-1).
class PopupMenu : public RectControl {
 public:
  void DeleteAllRows();
  void AddRow(const String& text);
  int ListCount() const;
  int ListIndex() const;
  /// Raises Change, as a choice by the user does.
  void ListIndex(int index);
  std::function<void()> Change;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

struct SliderSettings {
  int minimum = 0, value = 0, maximum = 100, lineStep = 1, pageStep = 20;
  bool liveScroll = false;
};

class Slider : public RectControl {
 public:
  void Setup(const SliderSettings& settings);  ///< raises no event
  int Value() const;
  /// Raises ValueChanged if the value changes.
  void Value(int value);
  /// Without live scroll, dragging the thumb raises it once, at the release.
  std::function<void()> ValueChanged;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

}  // namespace platform

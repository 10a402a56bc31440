#pragma once

#include "platform/pictures/Picture.h"
#include "platform/widgets/Control.h"

namespace platform {

/// Buttons get the keyboard focus by Tab, never by a click.
class PushButton : public RectControl {
 public:
  /// Whether the Return key, or the Escape key, presses the button while it is shown and enabled.
  void Default(bool isDefault);
  void Cancel(bool isCancel);
  std::function<void()> Action;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

/// A button with an icon and, optionally, a caption.
class BevelButton : public RectControl {
 public:
  /// The picture's mask makes parts of the icon transparent. The picture is copied.
  void Icon(const Ref<Picture>& icon);
  std::function<void()> Action;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

class CheckBox : public RectControl {
 public:
  bool Value() const;
  /// Does not raise Action.
  void Value(bool checked);
  std::function<void()> Action;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

}  // namespace platform

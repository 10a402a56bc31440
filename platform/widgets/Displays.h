#pragma once

#include "platform/values/Color.h"
#include "platform/widgets/Control.h"

namespace platform {

enum class TextAlign { Left, Center, Right };

/// Text on one or several lines; text that does not fit is cut off at its end.
class StaticText : public RectControl {
 public:
  String Text() const;
  void Text(const String& text);
  void TextColor(Color color);
  void Bold(bool bold);
  void Align(TextAlign align);
  void MultiLine(bool multiLine);

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

/// A filled rectangle with a thin black frame.
class Rectangle : public RectControl {
 public:
  Color FillColor() const;
  void FillColor(Color color);

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

/// A line along the longer side of its rectangle.
class Separator : public RectControl {
 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

class ProgressBar : public RectControl {
 public:
  int Value() const;
  void Value(int value);
  int Maximum() const;
  void Maximum(int maximum);

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

/// A set of pages, one of which is current. Only the controls on the current page are shown and get events; they move
/// with the panel.
class PagePanel : public RectControl {
 public:
  void PanelCount(int count);
  int PanelCount() const;
  int Value() const;
  void Value(int page);

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

}  // namespace platform

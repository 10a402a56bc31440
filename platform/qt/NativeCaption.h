#pragma once

#include <QFont>

#include "platform/qt/NativeControl.h"

namespace platform {

/// A control with a caption. Its font is condensed if the caption would not fit otherwise.
struct NativeCaption : NativeControl {
  /// `besides` is the width that the control needs for itself.
  NativeCaption(NativeWindow& owner, QWidget* newWidget, int besides);

  void SetPlace(const Rect& newPlace) override;
  void SetFont(TextFont newFont) override;
  void SetAbout(const QString& newAbout) override;
  void SetCaption(const QString& newCaption);
  void SetBold(bool bold);
  void Fit();

  QFont font;
  QString caption;  ///< its widest line
  QString about;
  int besides;
};

/// A button that the Return or the Escape key may press.
struct NativePushButton : NativeCaption {
  using NativeCaption::NativeCaption;
  bool isDefault = false;
  bool isCancel = false;
};

}  // namespace platform

#include <QAbstractButton>
#include <QKeyEvent>

#include "platform/qt/NativeCaption.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

namespace platform {

namespace {

/// The key as a string of one character, or empty if it has none.
String KeyText(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Left:
      return Chr(28);
    case Qt::Key_Right:
      return Chr(29);
    case Qt::Key_Up:
      return Chr(30);
    case Qt::Key_Down:
      return Chr(31);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Chr(13);
    default:
      break;
  }
  if (key.modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) return {};
  return Left(FromQString(key.text()), 1);
}

}  // namespace

bool NativeWindow::KeyDown(QKeyEvent& key) {
  const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (isReturn || key.key() == Qt::Key_Escape)
    for (NativeControl* control : controls) {
      const auto* button = dynamic_cast<NativePushButton*>(control);
      if (!button || !(isReturn ? button->isDefault : button->isCancel)) continue;
      if (!button->widget->isVisible() || !button->widget->isEnabled()) continue;
      static_cast<QAbstractButton&>(*button->widget).click();
      return true;
    }
  if (key.key() == Qt::Key_Escape) content->setFocus();
  const String text = KeyText(key);
  if (text.Empty()) return false;
  bool used = false;
  Raise([&](Window& target) { used = target.Event_KeyDown(text); });
  return used;
}

}  // namespace platform

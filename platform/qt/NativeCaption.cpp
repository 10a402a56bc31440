#include "platform/qt/NativeCaption.h"

#include <QAbstractButton>
#include <QFontMetrics>

namespace platform {

NativeCaption::NativeCaption(NativeWindow& owner, QWidget* newWidget, int widthBesides)
    : NativeControl(owner, newWidget), font(SystemFont(TextFont::System)), besides(widthBesides) {}

void NativeCaption::SetPlace(const Rect& newPlace) {
  NativeControl::SetPlace(newPlace);
  Fit();
}

void NativeCaption::SetFont(TextFont newFont) {
  const bool bold = font.bold();
  font = SystemFont(newFont);
  font.setBold(bold);
  Fit();
}

void NativeCaption::SetCaption(const QString& newCaption) {
  caption.clear();
  const QFontMetrics metrics(font);
  for (const QString& line : newCaption.split('\n'))
    if (metrics.horizontalAdvance(line) >= metrics.horizontalAdvance(caption)) caption = line;
  SetAbout(about);
  Fit();
}

void NativeCaption::SetAbout(const QString& newAbout) {
  about = newAbout;
  const bool blank = caption.trimmed().isEmpty();
  widget->setAccessibleName(blank ? about : QString());  // else the caption is the name
  widget->setAccessibleDescription(blank ? QString() : about);
  if (qobject_cast<QAbstractButton*>(widget)) widget->setToolTip(widget->accessibleName());
}

void NativeCaption::SetBold(bool bold) {
  font.setBold(bold);
  Fit();
}

void NativeCaption::Fit() { widget->setFont(FittingFont(font, caption, place.width - besides)); }

}  // namespace platform

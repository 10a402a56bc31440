#include "platform/qt/NativeLook.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPalette>
#include <QProxyStyle>
#include <QToolTip>

#include "platform/qt/NativeControl.h"

namespace platform {

namespace {

/// Width of a vertical scroll bar; the species list leaves exactly this much beside its columns.
constexpr int kScrollBarExtent = 13;
constexpr int kSystemPixels = 12;
constexpr int kSmallSystemPixels = 11;

QPalette LightPalette() {
  const QColor window(239, 239, 239), text(0, 0, 0), base(255, 255, 255), button(239, 239, 239);
  const QColor dim(150, 150, 150), highlight(48, 140, 198);
  QPalette palette(text, button, button.lighter(150), button.darker(130), button.darker(110), text, base, base, window);
  palette.setColor(QPalette::Midlight, button.lighter(110));
  palette.setColor(QPalette::AlternateBase, QColor(247, 247, 247));
  palette.setColor(QPalette::Shadow, button.darker(200));
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, base);
  palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, dim);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
    palette.setColor(QPalette::Disabled, role, dim);
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(190, 190, 190));
  return palette;
}

/// Adapts Fusion: captions of small controls are not cut off, and Alt alone, a key of the linked cursor, opens no menu.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle("fusion") {}
  QPalette standardPalette() const override { return LightPalette(); }
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    switch (metric) {
      case PM_ScrollBarExtent:
        return kScrollBarExtent;
      case PM_ButtonMargin:
        return 2;
      case PM_CheckBoxLabelSpacing:
        return 4;
      case PM_ScrollView_ScrollBarSpacing:
        return 0;
      default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
  }
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override {
    if (hint == SH_MenuBar_AltKeyNavigation || hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, answer);
  }
};

}  // namespace

void ApplyLook() {
  QApplication::setStyle(new Style);
  QApplication::setPalette(LightPalette());
  QToolTip::setPalette(LightPalette());
  QFont font = QApplication::font();
  font.setPixelSize(kSystemPixels);
  QApplication::setFont(font);
  QToolTip::setFont(font);
}

QFont SystemFont(TextFont which) {
  QFont font = QApplication::font();
  font.setPixelSize(which == TextFont::System ? kSystemPixels : kSmallSystemPixels);
  return font;
}

QFont FittingFont(const QFont& font, const QString& text, int width) {
  QFont fitting = font;
  const auto fits = [&] { return QFontMetrics(fitting).horizontalAdvance(text) <= width; };
  if (width <= 0 || fits()) return fitting;
  for (const int stretch : {92, 84}) {
    fitting.setStretch(stretch);
    if (fits()) return fitting;
  }
  while (!fits() && fitting.pixelSize() > 9) fitting.setPixelSize(fitting.pixelSize() - 1);
  return fitting;
}

}  // namespace platform

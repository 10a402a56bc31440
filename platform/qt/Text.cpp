#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

#include "platform/pictures/Graphics.h"
#include "platform/qt/NativeControl.h"
#include "platform/qt/NativeLook.h"
#include "platform/qt/NativeToolkit.h"

namespace platform {

namespace {

QFont SurfaceFont(const Graphics& surface) {
  QFont font = SystemFont(TextFont::System);
  font.setPixelSize(std::max(1, surface.TextSize));
  font.setStyleStrategy(QFont::NoSubpixelAntialias);
  return font;
}

void Draw(const Graphics& surface, const Rect& clip, const String& text, int x, int y) {
  const auto device = surface.Device();
  if (text.Empty() || device.width <= 0 || device.height <= 0) return;
  const double scale = surface.Scale();
  QImage image(reinterpret_cast<uchar*>(device.data), device.width, device.height,
               static_cast<qsizetype>(device.pitch) * 4, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.scale(scale, scale);
  painter.setClipRect(clip.x, clip.y, clip.width, clip.height);
  painter.setFont(SurfaceFont(surface));
  painter.setPen(ToQColor(surface.ForeColor));
  painter.drawText(QPointF(x, y), ToQString(text));
}

double Width(const Graphics& surface, const String& text) {
  return QFontMetricsF(SurfaceFont(surface)).horizontalAdvance(ToQString(text));
}

}  // namespace

void InstallTextDrawing() { SetTextDrawing({.draw = Draw, .width = Width}); }

QString ToQString(const String& text) {
  const auto& characters = text.Characters();
  return QString::fromUcs4(characters.data(), static_cast<qsizetype>(characters.size()));
}

String FromQString(const QString& text) {
  const auto codes = text.toUcs4();
  return String(std::u32string(codes.begin(), codes.end()));
}

QString WithoutAccessKey(const String& text) { return ToQString(text).replace('&', "&&"); }

}  // namespace platform

#include <algorithm>

#include "platform/qt/NativeToolkit.h"

namespace platform {

Ref<Picture> ToPicture(const QImage& image) {
  const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
  auto picture = MakeRef<Picture>(pixels.width(), pixels.height());
  const auto view = picture->Pixels();
  for (int y = 0; y < view.height; ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
    std::copy_n(line, view.width, view.Row(y));
  }
  return picture;
}

QImage ToQImage(const Ref<Picture>& picture) {
  const auto view = picture->Pixels();
  QImage image(view.width, view.height, QImage::Format_ARGB32);
  const Ref<Picture> mask = picture->HasMask() ? picture->Mask() : Ref<Picture>();
  for (int y = 0; y < view.height; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < view.width; ++x) {
      const Color hidden = mask ? static_cast<Color>(qGray(mask->Pixels()(x, y))) : 0U;
      line[x] = view(x, y) - (hidden << 24);
    }
  }
  return image;
}

}  // namespace platform

#include "tools/xdriver/Bitmap.h"

#include <X11/Xutil.h>
#include <png.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace xdriver {

Bitmap Shoot(XScreen& screen, const Area& area) {
  const Area whole = AreaOf(screen, screen.Root());
  const int x0 = std::max(area.x, 0), y0 = std::max(area.y, 0);
  const int x1 = std::min(area.x + area.width, whole.width), y1 = std::min(area.y + area.height, whole.height);
  if (x0 >= x1 || y0 >= y1) throw Impossible("that area is off the screen");
  XImage* image = XGetImage(screen.X(), screen.Root(), x0, y0, static_cast<unsigned>(x1 - x0),
                            static_cast<unsigned>(y1 - y0), AllPlanes, ZPixmap);
  if (!image || image->red_mask != 0xFF0000 || image->blue_mask != 0xFF)
    throw Impossible("the screen does not have 24 bits a pixel");
  Bitmap shot{image->width, image->height, {}};
  shot.bytes.reserve(static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) * 3);
  for (int y = 0; y < image->height; ++y)
    for (int x = 0; x < image->width; ++x) {
      const unsigned long pixel = XGetPixel(image, x, y);
      for (const int shift : {16, 8, 0}) shot.bytes.push_back(static_cast<unsigned char>(pixel >> shift));
    }
  XDestroyImage(image);
  return shot;
}

Bitmap Halved(const Bitmap& bitmap) {
  Bitmap half{bitmap.width / 2, bitmap.height / 2, {}};
  const auto row = static_cast<std::size_t>(bitmap.width) * 3;
  for (std::size_t y = 0; y < static_cast<std::size_t>(half.height); ++y)
    for (std::size_t x = 0; x < static_cast<std::size_t>(half.width); ++x)
      for (std::size_t channel = 0; channel < 3; ++channel) {
        const unsigned char* at = &bitmap.bytes[2 * y * row + 6 * x + channel];
        const int step = (at[0] + at[3] + at[row] + at[row + 3]) / 4 / 8;
        half.bytes.push_back(static_cast<unsigned char>(step * 255 / 31));
      }
  return half;
}

void WritePng(const Bitmap& bitmap, const std::string& path) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(bitmap.width);
  png.height = static_cast<png_uint_32>(bitmap.height);
  png.format = PNG_FORMAT_RGB;
  if (!png_image_write_to_file(&png, path.c_str(), 0, bitmap.bytes.data(), 0, nullptr))
    throw Impossible("cannot write " + path + ": " + png.message);
}

Bitmap ReadPng(const std::string& path) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  Bitmap bitmap;
  if (png_image_begin_read_from_file(&png, path.c_str())) {
    png.format = PNG_FORMAT_RGB;
    bitmap = {static_cast<int>(png.width), static_cast<int>(png.height),
              std::vector<unsigned char>(PNG_IMAGE_SIZE(png))};
    if (png_image_finish_read(&png, nullptr, bitmap.bytes.data(), 0, nullptr)) return bitmap;
  }
  throw Impossible("cannot read " + path + ": " + png.message);
}

void ReportDifference(const Bitmap& shown, const Bitmap& wanted) {
  int count = 0, x = 0, y = 0;
  for (int i = 0; i < wanted.width * wanted.height && shown.width == wanted.width; ++i) {
    const auto at = static_cast<std::ptrdiff_t>(i) * 3;
    if (i / wanted.width < shown.height &&
        std::equal(wanted.bytes.begin() + at, wanted.bytes.begin() + at + 3, shown.bytes.begin() + at))
      continue;
    if (count++ == 0) x = i % wanted.width, y = i / wanted.width;
  }
  std::fprintf(stderr, "xdriver: %d x %d pixels shown, %d x %d wanted; %d differ, the first at %d, %d\n", shown.width,
               shown.height, wanted.width, wanted.height, count, x, y);
}

bool AwaitFrames(XScreen& screen, Window window, const Area& inside, int count, double limit) {
  const auto shoot = [&] {
    const Area area = AreaOf(screen, window);
    return Shoot(screen, {area.x + inside.x, area.y + inside.y, inside.width, inside.height});
  };
  Bitmap last = shoot();
  std::puts("watching");
  std::fflush(stdout);
  return WaitUntil(
      [&] {
        Bitmap now = shoot();
        if (now != last) --count;
        last = std::move(now);
        return count <= 0;
      },
      limit, std::chrono::milliseconds(1));
}

}  // namespace xdriver

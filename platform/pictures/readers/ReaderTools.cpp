#include "platform/pictures/readers/ReaderTools.h"

#include <unistd.h>

#include <algorithm>

namespace platform {

double MemoryForAPicture() {
  return 0.5 * static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void CheckSize(double width, double height, double bytesPerPixel) {
  if (width < 1 || height < 1) throw ReadFailure("unsupported: the image has no pixels");
  const double pixels = width * height;
  const std::string size =
      std::to_string(static_cast<long long>(width)) + " x " + std::to_string(static_cast<long long>(height));
  if (pixels > static_cast<double>(kMaximumPixels)) throw ReadFailure("unsupported size: " + size + " pixels");
  if (pixels * bytesPerPixel > MemoryForAPicture())
    throw ReadFailure("unsupported size: " + size + " pixels are more than the memory holds");
}

void CheckPlausible(double width, double height, std::size_t fileBytes, double pixelsPerByte) {
  if (width * height > pixelsPerByte * static_cast<double>(fileBytes))
    throw ReadFailure("truncated: " + std::to_string(fileBytes) + " bytes cannot hold " +
                      std::to_string(static_cast<long long>(width)) + " x " +
                      std::to_string(static_cast<long long>(height)) + " pixels");
}

bool MeansMissingPixels(std::string_view warning) {
  for (const char* phrase : {"premature end of data", "bad Huffman code", "bad arithmetic code", "instead of RST"})
    if (warning.find(phrase) != std::string_view::npos) return true;
  return false;
}

Ref<Picture> AsLevelsIfGrey(const Ref<Picture>& colors) {
  const PlaneView<OpaqueColor> pixels = colors->Pixels();
  const OpaqueColor* begin = pixels.data;
  const OpaqueColor* end = begin + pixels.pitch * pixels.height;
  if (!std::all_of(begin, end, [](OpaqueColor color) { return color == Opaque((color & 0xFF) * 0x010101); }))
    return colors;
  std::vector<std::uint8_t> levels(static_cast<std::size_t>(end - begin));
  std::transform(begin, end, levels.begin(), [](OpaqueColor color) { return static_cast<std::uint8_t>(color); });
  return MakeRef<Picture>(pixels.width, pixels.height, std::move(levels));
}

Orientation::Orientation(int tag, int storedWidth, int storedHeight)
    : tag_(tag >= 1 && tag <= 8 ? tag : 1), storedWidth_(storedWidth), storedHeight_(storedHeight) {}

}  // namespace platform

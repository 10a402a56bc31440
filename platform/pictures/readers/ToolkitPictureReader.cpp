#include <QBuffer>
#include <QImageReader>
#include <QLoggingCategory>
#include <algorithm>
#include <array>
#include <mutex>
#include <string_view>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

using Bytes = std::span<const std::uint8_t>;

[[noreturn]] void Truncated(const char* what) { throw ReadFailure(std::string("truncated: ") + what); }

/// Numbers at any place of the file. A place that the file lacks means that it is cut short.
class Numbers {
 public:
  explicit Numbers(Bytes bytes) : bytes_(bytes) {}
  std::size_t Size() const { return bytes_.size(); }
  std::uint32_t Byte(std::size_t place) const {
    if (place >= bytes_.size()) Truncated("the data end too early");
    return bytes_[place];
  }
  std::uint32_t Big16(std::size_t place) const { return Byte(place) << 8 | Byte(place + 1); }
  std::uint32_t Big32(std::size_t place) const { return Big16(place) << 16 | Big16(place + 2); }
  std::uint32_t Little16(std::size_t place) const { return Byte(place + 1) << 8 | Byte(place); }
  std::uint32_t Little32(std::size_t place) const { return Little16(place + 2) << 16 | Little16(place); }

 private:
  Bytes bytes_;
};

// The toolkit hands out half a picture where a file is cut short. So each format is first walked to its end.

/// Segments up to the end-of-image marker; the coded data behind a start of scan last until the next marker.
void CheckJpegIsWhole(const Numbers& file) {
  for (std::size_t place = 2;;) {
    while (file.Byte(place) != 0xFF) ++place;
    while (file.Byte(place) == 0xFF) ++place;
    const std::uint32_t marker = file.Byte(place++);
    if (marker == 0xD9) return;
    const bool alone = marker == 0 || marker == 1 || (marker >= 0xD0 && marker <= 0xD8);
    if (!alone) place += file.Big16(place);
  }
}

/// Blocks up to the end of the first image.
void CheckGifIsWhole(const Numbers& file) {
  const auto colorTable = [&file](std::size_t flags) {
    const std::uint32_t value = file.Byte(flags);
    return value & 0x80 ? std::size_t{3} << ((value & 7) + 1) : 0;
  };
  const auto behindBlocks = [&file](std::size_t place) {
    while (file.Byte(place) != 0) place += file.Byte(place) + 1;
    return place + 1;
  };
  std::size_t place = 13 + colorTable(10);
  while (file.Byte(place) == 0x21) place = behindBlocks(place + 2);
  if (file.Byte(place) != 0x2C) throw ReadFailure("truncated or damaged: no image in the GIF");
  behindBlocks(place + 10 + colorTable(place + 9) + 1);
}

/// Run lengths up to the end-of-bitmap code or the last row.
void CheckBmpRunsAreWhole(const Numbers& file, std::size_t place, std::int64_t height, bool nibbles) {
  for (std::int64_t row = 0; row < height; place += 2) {
    const std::uint32_t count = file.Byte(place);
    const std::uint32_t code = file.Byte(place + 1);
    if (count != 0) continue;
    if (code == 1) return;
    if (code == 0) ++row;
    if (code == 2) {
      row += file.Byte(place + 3);
      place += 2;
    }
    if (code > 2) place += ((nibbles ? (code + 1) / 2 : code) + 1) & ~std::size_t{1};
  }
}

void CheckBmpIsWhole(const Numbers& file) {
  const std::size_t data = file.Little32(10);
  const bool old = file.Little32(14) == 12;
  const std::int64_t width = old ? file.Little16(18) : static_cast<std::int32_t>(file.Little32(18));
  const std::int64_t signedHeight = old ? file.Little16(20) : static_cast<std::int32_t>(file.Little32(22));
  const std::int64_t height = std::abs(signedHeight);
  const std::int64_t bits = file.Little16(old ? 24 : 28);
  const std::uint32_t compression = old ? 0 : file.Little32(30);
  if (compression > 3 && compression != 6)
    throw ReadFailure("unsupported compression: BMP " + std::to_string(compression));
  if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32)
    throw ReadFailure("unsupported depth: BMP of " + std::to_string(bits) + " bits");
  CheckSize(static_cast<double>(width), static_cast<double>(height), 4);
  if (compression == 1 || compression == 2) {
    CheckBmpRunsAreWhole(file, data, height, compression == 2);
  } else {
    const std::int64_t rowBytes = (width * bits + 31) / 32 * 4;
    if (static_cast<std::int64_t>(file.Size()) - static_cast<std::int64_t>(data) < rowBytes * height)
      Truncated("the rows go past the end of the file");
  }
}

struct Format {
  const char* name;  // as QImageReader calls it
  std::string_view signature;
  void (*checkIsWhole)(const Numbers&);
};

constexpr std::array<Format, 3> kFormats = {
    {{"jpeg", "\xFF\xD8\xFF", CheckJpegIsWhole}, {"gif", "GIF8", CheckGifIsWhole}, {"bmp", "BM", CheckBmpIsWhole}}};

/// Keeps the toolkit's remarks on damaged images off the standard error stream, whatever the user's logging rules.
QLoggingCategory::CategoryFilter previousFilter = nullptr;
void FilterRemarks(QLoggingCategory* category) {
  if (previousFilter) previousFilter(category);
  if (!std::string_view(category->categoryName()).starts_with("qt.gui.imageio")) return;
  for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg}) category->setEnabled(type, false);
}

void PrepareToolkit() {
  static std::once_flag prepared;
  std::call_once(prepared, [] {
    previousFilter = QLoggingCategory::installFilter(FilterRemarks);
    QImageReader::setAllocationLimit(0);  // CheckSize has its own
  });
}

template <class Pixel>
const Pixel* Row(const QImage& image, int y) {
  return reinterpret_cast<const Pixel*>(image.constScanLine(y));
}

std::vector<std::uint8_t> Levels(const QImage& image) {
  std::vector<std::uint8_t> levels;
  levels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height(); ++y)
    levels.insert(levels.end(), image.constScanLine(y), image.constScanLine(y) + image.width());
  return levels;
}

Ref<Picture> Colors(const QImage& image) {
  const bool hasAlpha = image.hasAlphaChannel();
  const QImage colors = image.convertToFormat(hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  if (colors.isNull()) throw std::bad_alloc();
  const auto picture = MakeRef<Picture>(image.width(), image.height());
  const PlaneView<Color> pixels = picture->Pixels();
  for (int y = 0; y < pixels.height; ++y)
    std::transform(Row<QRgb>(colors, y), Row<QRgb>(colors, y) + pixels.width, pixels.Row(y), [hasAlpha](QRgb pixel) {
      if (!hasAlpha) return RGB(qRed(pixel), qGreen(pixel), qBlue(pixel));
      const int alpha = qAlpha(pixel);
      return RGB(OverWhite(qRed(pixel), alpha), OverWhite(qGreen(pixel), alpha), OverWhite(qBlue(pixel), alpha));
    });
  return AsLevelsIfGrey(picture);
}

Ref<Picture> Read(Bytes bytes) {
  PrepareToolkit();
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const auto format =
      std::find_if(kFormats.begin(), kFormats.end(), [text](const Format& f) { return text.starts_with(f.signature); });
  if (format == kFormats.end()) throw ReadFailure("not an image: no BMP, GIF or JPEG");
  const Numbers file(bytes);
  format->checkIsWhole(file);

  QByteArray array = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
  QBuffer buffer(&array);
  QImageReader reader(&buffer, format->name);
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  if (!QImageReader::supportedImageFormats().contains(format->name))
    throw ReadFailure(std::string("unsupported: the toolkit's plug-in for ") + format->name + " is not installed");
  const QSize size = reader.size();
  if (size.isValid()) {
    CheckSize(size.width(), size.height(), 8);
    CheckPlausible(size.width(), size.height(), bytes.size(), 16384);
  }
  QImage image;
  if (std::string_view(format->name) == "bmp") {
    // Run lengths may leave pixels out; these are the first colour of the palette and not what the memory held.
    image = QImage(size, reader.imageFormat());
    image.fill(0);
  }
  if (!reader.read(&image) || image.isNull()) {
    const bool unknown = reader.error() == QImageReader::UnsupportedFormatError;
    throw ReadFailure((unknown ? "unsupported: " : "truncated or damaged: ") + reader.errorString().toStdString());
  }
  if (image.format() == QImage::Format_Grayscale8)
    return MakeRef<Picture>(image.width(), image.height(), Levels(image));
  return Colors(image);
}

}  // namespace

OpenedPicture ReadToolkitPicture(Bytes bytes) {
  return Guarded([bytes] { return Read(bytes); });
}

}  // namespace platform

#include <QBuffer>
#include <QImageReader>
#include <QLoggingCategory>
#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

/// The size up to the end-of-image marker. Walks the segments; the coded data after a start of scan extend to the next
/// marker. The check is needed because Qt returns half a picture for a truncated file.
std::uint64_t SizeOf(ByteSource& source) {
  for (std::uint64_t place = 2;;) {
    while (source.Byte(place) != 0xFF) ++place;
    while (source.Byte(place) == 0xFF) ++place;
    const std::uint32_t marker = source.Byte(place++);
    if (marker == 0xD9) return place;
    const bool alone = marker == 0 || marker == 1 || (marker >= 0xD0 && marker <= 0xD8);
    if (!alone) place += source.Big16(place);
  }
}

constexpr const char* kCodecCategory = "qt.gui.imageio.jpeg";

/// Suppresses Qt's warnings about damaged images and profiles on standard error, whatever the user's logging rules,
/// except those of libjpeg.
QLoggingCategory::CategoryFilter previousFilter = nullptr;
void FilterMessages(QLoggingCategory* category) {
  if (previousFilter) previousFilter(category);
  const std::string_view name = category->categoryName();
  if (!name.starts_with("qt.gui.imageio") && !name.starts_with("qt.gui.icc")) return;
  for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
    category->setEnabled(type, type == QtWarningMsg && name == kCodecCategory);
}

/// The last error of libjpeg, or its first warning about an image: Qt returns a picture nevertheless and only logs it.
thread_local std::string codecMessage;
QtMessageHandler previousHandler = nullptr;
void KeepCodecMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (context.category && context.category == std::string_view(kCodecCategory))
    codecMessage = text.toStdString();
  else
    previousHandler(type, context, text);
}

void PrepareToolkit() {
  static std::once_flag prepared;
  std::call_once(prepared, [] {
    previousHandler = qInstallMessageHandler(KeepCodecMessage);
    previousFilter = QLoggingCategory::installFilter(FilterMessages);
    QImageReader::setAllocationLimit(0);  // CheckSize limits it
  });
}

std::vector<std::uint8_t> Levels(const QImage& image) {
  std::vector<std::uint8_t> levels;
  levels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height(); ++y)
    levels.insert(levels.end(), image.constScanLine(y), image.constScanLine(y) + image.width());
  return levels;
}

Ref<Picture> Colors(const QImage& image) {
  const QImage colors = image.convertToFormat(QImage::Format_RGB32);
  if (colors.isNull()) throw std::bad_alloc();
  const auto picture = MakeRef<Picture>(image.width(), image.height());
  const PlaneView<OpaqueColor> pixels = picture->Pixels();
  for (int y = 0; y < pixels.height; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(colors.constScanLine(y));
    std::transform(row, row + pixels.width, pixels.Row(y),
                   [](QRgb pixel) { return OpaqueRGB(qRed(pixel), qGreen(pixel), qBlue(pixel)); });
  }
  return AsLevelsIfGrey(picture);
}

Ref<Picture> Read(ByteSource& source) {
  if (source.Big16(0) != 0xFFD8 || source.Byte(2) != 0xFF) throw ReadFailure("not an image: no JPEG");
  const std::uint64_t size = SizeOf(source);
  const std::vector<std::uint8_t> bytes = source.Bytes(0, size);
  if (bytes.size() != size) throw ReadFailure("truncated: the data end too early");

  PrepareToolkit();
  if (!QImageReader::supportedImageFormats().contains("jpeg"))
    throw ReadFailure("unsupported: the toolkit's plug-in for JPEG is not installed");
  QByteArray array = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
  QBuffer buffer(&array);
  QImageReader reader(&buffer, "jpeg");
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  codecMessage.clear();
  const QSize pixels = reader.size();
  if (pixels.isValid()) {
    CheckSize(pixels.width(), pixels.height(), 8);
    CheckPlausible(pixels.width(), pixels.height(), bytes.size(), 16384);
  }
  const QImage image = reader.read();
  const bool unsupported = codecMessage.starts_with("Unsupported") || codecMessage.starts_with("Sorry");
  if (image.isNull() && unsupported) throw ReadFailure("unsupported: " + codecMessage);
  if (codecMessage.empty()) codecMessage = reader.errorString().toStdString();
  if (image.isNull() || MeansMissingPixels(codecMessage)) throw ReadFailure("truncated or damaged: " + codecMessage);
  if (image.format() == QImage::Format_Grayscale8)
    return MakeRef<Picture>(image.width(), image.height(), Levels(image));
  return Colors(image);
}

}  // namespace

OpenedPicture ReadJpeg(ByteSource&& source) {
  return Guarded([&source] { return Read(source); });
}

}  // namespace platform

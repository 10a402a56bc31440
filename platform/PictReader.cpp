#include <magick/api.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "platform/GreyScaling.h"
#include "platform/ReaderTools.h"

namespace platform {

namespace {

/// No PICT compresses more: run lengths reach 64 bytes for one, JPEG inside a PICT less than 1000.
constexpr std::int64_t kPixelsPerByte = 4096;

void DropMessage(ExceptionType, const char*, const char*) {}

/// The library ends the program when it lacks memory; here that ends the reading.
__attribute__((noreturn)) void LeaveReader(ExceptionType, const char*, const char*) { throw std::bad_alloc(); }

/// Starts the library without handlers for the program's signals, silent, and bound to what a picture may take.
void PrepareLibrary() {
  static std::once_flag prepared;
  std::call_once(prepared, [] {
    ExceptionInfo exception;
    GetExceptionInfo(&exception);
    InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception);
    DestroyExceptionInfo(&exception);
    SetErrorHandler(DropMessage);
    SetWarningHandler(DropMessage);
    SetFatalErrorHandler(LeaveReader);
    SetMagickResourceLimit(WidthResource, 32767);  // coordinates of a PICT have 16 bits
    SetMagickResourceLimit(HeightResource, 32767);
    SetMagickResourceLimit(MemoryResource, static_cast<magick_int64_t>(MemoryForAPicture()));
    SetMagickResourceLimit(MapResource, 0);
    SetMagickResourceLimit(DiskResource, 0);
    SetMagickResourceLimit(ThreadsResource, 1);
  });
}

class Complaint {
 public:
  Complaint() { GetExceptionInfo(&info_); }
  Complaint(const Complaint&) = delete;
  Complaint& operator=(const Complaint&) = delete;
  ~Complaint() { DestroyExceptionInfo(&info_); }
  ExceptionInfo* Info() { return &info_; }

  /// A warning too means that something of the picture is missing.
  void ThrowIfAny(const ExceptionInfo& info) const {
    if (info.severity < WarningException) return;
    std::string what = info.reason ? info.reason : "no reason given";
    if (info.description) what += std::string(", ") + info.description;
    const int subject = info.severity % 100;
    const bool damaged = subject == CorruptImageBase || subject == BlobBase || subject == FileOpenBase;
    if (what.find("nd-of-file") != std::string::npos) throw ReadFailure("truncated: " + what);
    throw ReadFailure((damaged ? "truncated or damaged: " : "unsupported: ") + what);
  }
  void ThrowIfAny() const { ThrowIfAny(info_); }

 private:
  ExceptionInfo info_;
};

Color ColorOnWhite(const PixelPacket& pixel, bool hasAlpha) {
  const auto toByte = [](unsigned quantum) { return static_cast<int>((quantum + 128) / 257); };
  const int alpha = hasAlpha ? 255 - toByte(pixel.opacity) : 255;
  return RGB(OverWhite(toByte(pixel.red), alpha), OverWhite(toByte(pixel.green), alpha),
             OverWhite(toByte(pixel.blue), alpha));
}

Ref<Picture> Read(std::span<const std::uint8_t> bytes) {
  std::vector<std::uint8_t> withPreamble;
  if (!PictBeginsAt(bytes, kPictPreamble)) {
    if (!PictBeginsAt(bytes, 0)) throw ReadFailure("not an image: no PICT");
    withPreamble.resize(kPictPreamble);
    withPreamble.insert(withPreamble.end(), bytes.begin(), bytes.end());
    bytes = withPreamble;
  }
  const auto coordinate = [&](std::size_t i) {
    return static_cast<std::int16_t>(bytes[kPictPreamble + i] << 8 | bytes[kPictPreamble + i + 1]);
  };
  const int frameHeight = coordinate(6) - coordinate(2);
  const int frameWidth = coordinate(8) - coordinate(4);
  CheckSize(frameWidth, frameHeight, sizeof(PixelPacket) + sizeof(Color));
  CheckPlausible(frameWidth, frameHeight, bytes.size(), kPixelsPerByte);

  PrepareLibrary();
  // The pixel maps inside a PICT have sizes of their own, which only the library sees. Its limits are those of the
  // whole process: one picture at a time.
  static std::mutex oneAtATime;
  const std::lock_guard lock(oneAtATime);
  SetMagickResourceLimit(PixelsResource, std::min(kMaximumPixels, kPixelsPerByte * std::ssize(bytes)));
  Complaint complaint;
  const std::unique_ptr<ImageInfo, decltype(&DestroyImageInfo)> info(CloneImageInfo(nullptr), DestroyImageInfo);
  // Both, so that the content of the preamble cannot ask for another decoder.
  std::strcpy(info->magick, "PICT");
  std::strcpy(info->filename, "PICT:");
  const std::unique_ptr<Image, decltype(&DestroyImageList)> image(
      BlobToImage(info.get(), bytes.data(), bytes.size(), complaint.Info()), DestroyImageList);
  complaint.ThrowIfAny();
  if (!image) throw ReadFailure("truncated or damaged: no picture in the PICT");
  complaint.ThrowIfAny(image->exception);
  CheckSize(static_cast<double>(image->columns), static_cast<double>(image->rows), sizeof(Color));

  const auto picture = MakeRef<Picture>(static_cast<int>(image->columns), static_cast<int>(image->rows));
  const PlaneView<Color> pixels = picture->Pixels();
  for (int y = 0; y < pixels.height; ++y) {
    const PixelPacket* row = AcquireImagePixels(image.get(), 0, y, image->columns, 1, complaint.Info());
    if (!row) throw ReadFailure("unsupported: the pixels of the PICT cannot be had");
    std::transform(row, row + pixels.width, pixels.Row(y),
                   [&](const PixelPacket& pixel) { return ColorOnWhite(pixel, image->matte != 0); });
  }
  return AsLevelsIfGrey(picture);
}

}  // namespace

OpenedPicture ReadPict(std::span<const std::uint8_t> bytes) {
  return Guarded([bytes] { return Read(bytes); });
}

}  // namespace platform

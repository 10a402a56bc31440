#pragma once
/// Shared by the picture readers: failures, limits, orientation, colour images whose colours are all grey.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/pictures/readers/PictureReaders.h"

namespace platform {

/// Thrown inside a reader to refuse a file; the text becomes OpenedPicture::failure.
class ReadFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs the body of a reader, which returns a picture or another reader's result. An exception becomes the failure.
template <class Body>
OpenedPicture Guarded(Body body) noexcept {
  try {
    if constexpr (std::is_same_v<decltype(body()), OpenedPicture>)
      return body();
    else
      return {body(), {}};
  } catch (const ReadFailure& failure) {
    return {nullptr, failure.what()};
  } catch (const std::exception&) {
    return {nullptr, "unsupported: the image is larger than the memory"};
  }
}

/// The position of the PICT in the file: after a preamble of 512 bytes, or 0. nullopt if the file is not a PICT.
std::optional<std::uint64_t> BeginOfPict(ByteSource& source);

/// Limit of the bytes for the pixels of one picture: half of the machine's memory.
double MemoryForAPicture();

/// Throws ReadFailure if the image has no pixels, more than kMaximumPixels, or more bytes than MemoryForAPicture.
void CheckSize(double width, double height, double bytesPerPixel);

/// Throws ReadFailure if the header claims more than `pixelsPerByte` pixels per byte of the file, which no compression
/// of the format reaches: the memory for a wrong size is never allocated.
void CheckPlausible(double width, double height, std::size_t fileBytes, double pixelsPerByte);

/// Whether a warning of libjpeg means that it invented pixels for a damaged image. Other warnings leave all pixels
/// right, such as one about extra bytes before a marker.
bool MeansMissingPixels(std::string_view warning);

/// The same picture; a picture of grey levels if all of its colours are grey.
Ref<Picture> AsLevelsIfGrey(const Ref<Picture>& colors);

/// The orientation tag of TIFF and EXIF: 1 is upright, 5 to 8 exchange rows and columns.
class Orientation {
 public:
  /// Numbers outside 1 to 8 count as 1.
  Orientation(int tag, int storedWidth, int storedHeight);
  bool Upright() const { return tag_ == 1; }
  int Width() const { return tag_ >= 5 ? storedHeight_ : storedWidth_; }
  int Height() const { return tag_ >= 5 ? storedWidth_ : storedHeight_; }

  /// Writes the upright image to `upright`; both hold width * height pixels.
  template <class Pixel>
  void Apply(const Pixel* stored, Pixel* upright) const {
    const bool fromRight = tag_ == 2 || tag_ == 3 || tag_ == 7 || tag_ == 8;
    const bool fromBottom = tag_ == 3 || tag_ == 4 || tag_ == 6 || tag_ == 7;
    for (int y = 0; y < Height(); ++y)
      for (int x = 0; x < Width(); ++x) {
        int column = tag_ >= 5 ? y : x;
        int row = tag_ >= 5 ? x : y;
        if (fromRight) column = storedWidth_ - 1 - column;
        if (fromBottom) row = storedHeight_ - 1 - row;
        *upright++ = stored[static_cast<std::size_t>(row) * static_cast<std::size_t>(storedWidth_) +
                            static_cast<std::size_t>(column)];
      }
  }

 private:
  int tag_;
  int storedWidth_;
  int storedHeight_;
};

}  // namespace platform

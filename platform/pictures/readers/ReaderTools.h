#pragma once
/// What the picture readers share: refusing, limits, orientation, colours that are grey after all.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/pictures/readers/PictureReaders.h"

namespace platform {

/// Thrown inside a reader to give a file up; the text is the OpenedPicture's failure.
class ReadFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs a reader's body, which returns a picture or what another reader has opened; what it throws becomes the failure.
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

/// A PICT begins behind 512 bytes that belong to nobody; a PICT taken from a resource lacks them.
constexpr std::size_t kPictPreamble = 512;
/// Whether the opcodes of a PICT begin at that place of the bytes, or at kPictPreamble.
bool PictBeginsAt(std::span<const std::uint8_t> bytes, std::size_t place);

/// How many bytes the pixels of one picture may take: half of the machine's memory.
double MemoryForAPicture();

/// Throws if an image of that size cannot be read: without pixels, of more than kMaximumPixels, or of more bytes than
/// MemoryForAPicture.
void CheckSize(double width, double height, double bytesPerPixel);

/// Throws if the header claims more than `pixelsPerByte` pixels for each byte of the file, which no compression of the
/// format reaches: such a header lies, and the claimed memory is better not touched.
void CheckPlausible(double width, double height, std::size_t fileBytes, double pixelsPerByte);

/// The same picture; made from grey levels if every one of its colours is grey.
Ref<Picture> AsLevelsIfGrey(const Ref<Picture>& colors);

/// Where the rows and columns of a stored image belong, by the orientation tag of TIFF and EXIF: 1 is upright, 5 to 8
/// exchange rows and columns.
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

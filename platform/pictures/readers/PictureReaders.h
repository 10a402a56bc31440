#pragma once
/// One reader per format, chosen by the content of the file. The program calls FolderItem::OpenAsPicture and
/// PictureSequence; the functions for bytes in memory and for a given format are for tests and fuzz targets.
///
/// All readers: the first image of a file counts. A grey image gives a picture of grey levels, any other one a picture
/// of colours. Unsigned eight-bit values are never changed. A grey plane of another depth (signed of 8 bits, 9 to 32 or
/// 64 bits of any kind, floating point) is scaled linearly by its own range, see ScaledToLevels. Alpha is composited on
/// white; a colour profile is ignored. Of a PICT the rasters and QuickTime images are read, not its vectors and text.
/// An image of more than kMaximumPixels, or one that does not fit in memory, is refused.

#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/pictures/Picture.h"
#include "platform/pictures/readers/ByteSource.h"
#include "platform/values/String.h"

namespace platform {

constexpr std::int64_t kMaximumPixels = std::int64_t{1} << 30;

struct OpenedPicture {
  Ref<Picture> picture;  ///< nil on failure
  String failure;        ///< "truncated", "unsupported", "not an image" or "cannot be read", then the details
};

OpenedPicture ReadPicture(const std::filesystem::path& path);

/// The same from memory. Never throws, never prints.
OpenedPicture ReadPicture(std::span<const std::uint8_t> bytes);
OpenedPicture ReadPicture(ByteSource&& source);

/// By format.
OpenedPicture ReadTiff(ByteSource&& source);
OpenedPicture ReadPict(ByteSource&& source);
OpenedPicture ReadPng(ByteSource&& source);
OpenedPicture ReadBmp(ByteSource&& source);
OpenedPicture ReadGif(ByteSource&& source);
OpenedPicture ReadJpeg(ByteSource&& source);

}  // namespace platform

#pragma once
/// Pictures in: one reader a format, chosen by the content of the file. FolderItem::OpenAsPicture is the way in for the
/// program; these are for the tests and fuzz targets of the readers.
///
/// All readers: the first image of a file counts. A grey image gives a picture made from grey levels, any other one
/// colours. Unsigned eight-bit values are never touched. A grey plane of another depth (signed of 8 bits, 9 to 32 or
/// 64 bits of any kind, floating point) is scaled linearly from what it holds, see ScaledToLevels. Alpha is composited
/// on white; a colour profile is ignored. Of a PICT the rasters and QuickTime images are read, not its vectors and
/// text. An image of more than kMaximumPixels, or one that memory does not hold, is refused.

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
  String failure;        ///< "truncated", "unsupported", "not an image" or "cannot be read", then the particulars
};

OpenedPicture ReadPicture(const std::filesystem::path& path);

/// The same from memory. Never throws, never prints.
OpenedPicture ReadPicture(std::span<const std::uint8_t> bytes);
OpenedPicture ReadPicture(ByteSource&& source);

/// By format.
OpenedPicture ReadTiff(ByteSource&& source);
OpenedPicture ReadPict(std::span<const std::uint8_t> bytes);
OpenedPicture ReadPng(ByteSource&& source);
OpenedPicture ReadBmp(ByteSource&& source);
OpenedPicture ReadGif(ByteSource&& source);
OpenedPicture ReadJpeg(ByteSource&& source);

}  // namespace platform

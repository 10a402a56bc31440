#include "platform/pictures/readers/PictureReaders.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

using namespace std::string_view_literals;

bool BeginsWithOneOf(std::span<const std::uint8_t> bytes, std::initializer_list<std::string_view> beginnings) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [text](std::string_view beginning) { return text.starts_with(beginning); });
}

bool LooksLikeTiff(std::span<const std::uint8_t> bytes) {
  return BeginsWithOneOf(bytes, {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv});
}

bool LooksLikeBmp(std::span<const std::uint8_t> bytes) {
  // Many texts begin with these two letters, so the size of the second header is checked too.
  return BeginsWithOneOf(bytes, {"BM"sv}) && bytes.size() > 18 && bytes[15] == 0 && bytes[16] == 0 && bytes[17] == 0 &&
         (bytes[14] == 12 || bytes[14] == 16 || (bytes[14] >= 40 && bytes[14] <= 124));
}

}  // namespace

OpenedPicture ReadPicture(const std::filesystem::path& path) {
  return Guarded([&path] { return ReadPicture(ByteSource(path)); });
}

OpenedPicture ReadPicture(std::span<const std::uint8_t> bytes) { return ReadPicture(ByteSource(bytes)); }

OpenedPicture ReadPicture(ByteSource&& source) {
  return Guarded([&source]() -> OpenedPicture {
    const std::vector<std::uint8_t> beginning = source.Bytes(0, 19);
    if (LooksLikeTiff(beginning)) return ReadTiff(std::move(source));
    if (BeginsWithOneOf(beginning, {"\x89PNG"sv})) return ReadPng(std::move(source));
    if (BeginsWithOneOf(beginning, {"\xFF\xD8\xFF"sv})) return ReadJpeg(std::move(source));
    if (BeginsWithOneOf(beginning, {"GIF87a"sv, "GIF89a"sv})) return ReadGif(std::move(source));
    if (LooksLikeBmp(beginning)) return ReadBmp(std::move(source));
    if (BeginOfPict(source)) return ReadPict(std::move(source));
    return {nullptr, "not an image: no TIFF, PNG, BMP, GIF, JPEG or PICT"};
  });
}

}  // namespace platform

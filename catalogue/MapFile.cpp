#include "catalogue/MapFile.h"

#include <algorithm>
#include <span>

#include "platform/values/Numbers.h"

using platform::Array;
using platform::BinaryStream;
using platform::Ref;
using platform::String;

namespace {

constexpr std::int64_t kCountPositions[] = {1390, 1394, 1746, 1750, 2144, 2148, 2570, 2820, 4292, 4556};
// The second position votes twice: with an odd number of votes the median is one of the values in the file.
constexpr std::int64_t kSizePositions[] = {2172, 2174, 2498, 2502, 2174};

constexpr std::int32_t kFirstNamePosition = 3072;
constexpr std::uint32_t kNamesStart = 4808;
constexpr std::uint32_t kBetweenImages = 1224;
constexpr std::uint32_t kBytesPerPixel = 2;
constexpr int kNameLength = 5;

Array<std::int32_t> ReadShorts(BinaryStream& stream, std::span<const std::int64_t> positions) {
  stream.LittleEndian = true;
  Array<std::int32_t> values;
  for (const std::int64_t position : positions) {
    stream.Position(position);
    values.Append(stream.ReadShort());
  }
  return values;
}

}  // namespace

std::optional<std::int32_t> MedianOf(Array<std::int32_t> values) {
  if (values.Empty()) return std::nullopt;
  values.Sort();
  const int last = values.Ubound();
  const double lower = values(last / 2);
  const double upper = values((last + 1) / 2);
  return platform::ToInt32(platform::Round((lower + upper) / 2.0));
}

std::optional<Vote> MostLikely(const Array<std::int32_t>& votes) {
  if (votes.Empty()) return std::nullopt;
  const std::int32_t first = votes(0);
  if (std::all_of(votes.begin(), votes.end(), [&](std::int32_t vote) { return vote == first; })) return Vote{first};
  return Vote{*MedianOf(votes), false};
}

Array<std::int32_t> ImageCountVotes(BinaryStream& stream) { return ReadShorts(stream, kCountPositions); }

Array<std::int32_t> PixelSizeVotes(BinaryStream& stream) { return ReadShorts(stream, kSizePositions); }

std::int32_t NamePosition(std::int32_t i, std::int32_t pixelSize) {
  if (i <= 1) return kFirstNamePosition;
  const auto edge = static_cast<std::uint32_t>(pixelSize);
  const auto number = static_cast<std::uint32_t>(i);
  const std::uint32_t imageBytes = edge * edge * kBytesPerPixel;
  return static_cast<std::int32_t>(kNamesStart + (number - 1) * imageBytes + (number - 2) * kBetweenImages);
}

bool Globals::IsXrayFile(const Ref<platform::FolderItem>& file) {
  return Lowercase(Right(file->DisplayName(), 5)) == ".xray";
}

String Globals::ReadXrayGetImageName(Ref<BinaryStream>& stream, std::int32_t i) {
  const std::int32_t pixelSize = i > 1 ? MostLikely(PixelSizeVotes(*stream))->value : 0;
  stream->Position(NamePosition(i, pixelSize));
  const auto field = stream->Read(kNameLength);
  return String::FromBytes({field.begin(), std::find(field.begin(), field.end(), 0)});
}

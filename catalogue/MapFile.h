#pragma once
/// The directory of a Vantage X-ray map file: the number of maps, their size, and their names. The file states the
/// count at ten positions and the size at four; the values vote. Nothing is validated: whatever a foreign or damaged
/// file holds takes part in the vote, numbers beyond its end are 0, names there are empty.
///
/// Numbers are little-endian. A nil stream throws NilObjectException.

#include <cstdint>
#include <optional>

#include "platform/pictures/FolderItem.h"
#include "platform/values/Array.h"
#include "platform/values/BinaryStream.h"
#include "platform/values/String.h"

namespace Globals {

/// Whether the file name ends in ".xray", regardless of letter case. The content is not checked.
bool IsXrayFile(const platform::Ref<platform::FolderItem>& file);

/// The name of map `i`, from 1: at most five characters. An `i` below 1 gives the name of map 1.
platform::String ReadXrayGetImageName(platform::Ref<platform::BinaryStream>& stream, std::int32_t i);

}  // namespace Globals

/// The median; for an even count, the mean of the two middle values, halves rounded upward. nullopt for no values.
std::optional<std::int32_t> MedianOf(platform::Array<std::int32_t> values);

struct Vote {
  std::int32_t value = 0;
  bool unanimous = true;
};
/// The result of the vote; nullopt if there are no votes.
std::optional<Vote> MostLikely(const platform::Array<std::int32_t>& votes);

/// The numbers at the positions of the file that state the count of maps and their size, in the order of the vote.
platform::Array<std::int32_t> ImageCountVotes(platform::BinaryStream& stream);
platform::Array<std::int32_t> PixelSizeVotes(platform::BinaryStream& stream);

/// The position of the name of map `i` in a file of maps of `pixelSize` by `pixelSize` pixels, in bytes from the start.
/// The 32-bit arithmetic wraps around, so the result may be negative.
std::int32_t NamePosition(std::int32_t i, std::int32_t pixelSize);

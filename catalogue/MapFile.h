#pragma once
/// The directory of a Vantage X-ray map file: how many maps it holds, how large they are, what each is called. The file
/// states the count at ten positions and the size at four; all are read and take a vote. Nothing is validated: whatever
/// a foreign or damaged file holds takes part in the vote, numbers beyond its end count as 0, names there are
/// empty.
///
/// Numbers are little-endian. A stream that is nil throws NilObjectException.

#include <cstdint>
#include <optional>

#include "platform/values/Array.h"
#include "platform/values/BinaryStream.h"
#include "platform/pictures/FolderItem.h"
#include "platform/values/String.h"

namespace Globals {

/// Whether the name of the file ends in ".xray", in any case. Its content is not looked at.
bool IsXrayFile(const platform::Ref<platform::FolderItem>& file);

/// The number of maps. With `warn`, a message tells when the positions disagree.
std::int32_t ReadXrayGetNbImages(platform::Ref<platform::BinaryStream>& stream, bool warn);

/// The edge of the square maps in pixels. With `warn`, a message tells when the positions disagree.
std::int32_t ReadXrayGet1dPixelsize(platform::Ref<platform::BinaryStream>& stream, bool warn);

/// The name of map `i`, from 1: at most five characters. An `i` below 1 gives the name of map 1.
platform::String ReadXrayGetImageName(platform::Ref<platform::BinaryStream>& stream, std::int32_t i);

/// The value of all votes, or their median if they disagree; with `warn`, a message then says so. No votes give 0 and a
/// message. `what` names the quantity in the messages.
std::int32_t CheckForMostLikely(const platform::Array<std::int32_t>& votes, const platform::String& what, bool warn);

/// The median of the values; 0 and a message if there are none.
std::int32_t MedianInteger(const platform::Array<std::int32_t>& values);

}  // namespace Globals

namespace catalogue {

/// The median; of an even count the mean of the two middle values, one half rounded upward. None for no values.
std::optional<std::int32_t> MedianOf(platform::Array<std::int32_t> values);

struct Vote {
  std::int32_t value = 0;
  bool unanimous = true;
};
/// Takes the vote; none if there are no votes.
std::optional<Vote> MostLikely(const platform::Array<std::int32_t>& votes);

/// The numbers at the positions of the file that state the count of maps and their size, in the order of the vote.
platform::Array<std::int32_t> ImageCountVotes(platform::BinaryStream& stream);
platform::Array<std::int32_t> PixelSizeVotes(platform::BinaryStream& stream);

/// Where the name of map `i` stands in a file of maps of `pixelSize` by `pixelSize` pixels, in bytes from the start.
/// The arithmetic is that of 32-bit signed integers and wraps around, so the answer may be negative.
std::int32_t NamePosition(std::int32_t i, std::int32_t pixelSize);

}  // namespace catalogue

#include "catalogue/MapFileMessages.h"

#include "catalogue/MapFile.h"
#include "platform/widgets/Dialogs.h"

using platform::Array;
using platform::BinaryStream;
using platform::Ref;
using platform::String;

std::int32_t Globals::ReadXrayGetNbImages(Ref<BinaryStream>& stream, bool warn) {
  return CheckForMostLikely(ImageCountVotes(*stream), "number of images", warn);
}

std::int32_t Globals::ReadXrayGet1dPixelsize(Ref<BinaryStream>& stream, bool warn) {
  return CheckForMostLikely(PixelSizeVotes(*stream), "pixel size", warn);
}

std::int32_t Globals::CheckForMostLikely(const Array<std::int32_t>& votes, const String& what, bool warn) {
  const auto vote = MostLikely(votes);
  if (!vote) {
    platform::MsgBox(what + " determination error");
    return 0;
  }
  if (warn && !vote->unanimous) {
    String list;
    for (const std::int32_t value : votes) list += platform::Format(value, "#") + " ";
    platform::MsgBox("Warning. The determination of the " + what + " is inconclusive. Using " +
                     platform::Format(vote->value, "#") + " as a best guess." + platform::EndOfLine() + list);
  }
  return vote->value;
}

std::int32_t Globals::MedianInteger(const Array<std::int32_t>& values) {
  const auto median = MedianOf(values);
  if (!median) platform::MsgBox("Median determination error");
  return median.value_or(0);
}

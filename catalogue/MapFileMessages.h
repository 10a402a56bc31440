#pragma once
/// The votes of a map file, with messages about doubtful values. A nil stream throws NilObjectException.

#include <cstdint>

#include "platform/values/Array.h"
#include "platform/values/BinaryStream.h"
#include "platform/values/Ref.h"
#include "platform/values/String.h"

namespace Globals {

/// The number of maps. With `warn`, shows a message if the positions disagree.
std::int32_t ReadXrayGetNbImages(platform::Ref<platform::BinaryStream>& stream, bool warn);

/// The edge of the square maps in pixels. With `warn`, shows a message if the positions disagree.
std::int32_t ReadXrayGet1dPixelsize(platform::Ref<platform::BinaryStream>& stream, bool warn);

/// The value of all votes, or their median if they disagree; `warn` shows a message then. Without votes, 0 and a
/// message. `what` names the quantity in the messages.
std::int32_t CheckForMostLikely(const platform::Array<std::int32_t>& votes, const platform::String& what, bool warn);

/// The median of the values; 0 and a message if there are none.
std::int32_t MedianInteger(const platform::Array<std::int32_t>& values);

}  // namespace Globals

#pragma once
/// The lengths of the opcodes that draw no raster: text, vectors, clips, patterns of two colours, comments.

#include "platform/pictures/readers/PictInput.h"

namespace platform::pict {

enum class Version { kOne = 1, kTwo = 2 };

/// Moves `input`, which is behind the opcode, past the opcode's data. Not for rasters, pixel patterns and QuickTime.
void SkipData(Input& input, int opcode, Version version);

}  // namespace platform::pict

#pragma once
/// The lengths of the opcodes that draw no raster: text, vectors, clips, patterns of two colours, comments.

#include "platform/pictures/readers/PictInput.h"

namespace platform::pict {

enum class Version { kOne = 1, kTwo = 2 };

/// Skips the data of an opcode that was just read. Not for rasters, pixel patterns and QuickTime.
void SkipData(Input& input, int opcode, Version version);

}  // namespace platform::pict

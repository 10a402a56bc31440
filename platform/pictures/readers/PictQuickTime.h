#pragma once
/// QuickTime images in a PICT: opcodes 8200 and 8201.

#include "platform/pictures/readers/PictCanvas.h"

namespace platform::pict {

constexpr int kCompressedQuickTime = 0x8200;
constexpr int kUncompressedQuickTime = 0x8201;

/// Reads and paints the image of an opcode: JPEG, PNG, TIFF, raw pixels or a raster. Other codecs, and a PICT within a
/// QuickTime image, are refused.
void PaintQuickTime(Input& input, int opcode, Canvas& canvas);

}  // namespace platform::pict

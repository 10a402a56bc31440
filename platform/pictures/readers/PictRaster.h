#pragma once
/// Bit maps and pixel maps: opcodes 90, 91 and 98 to 9B.

#include <array>
#include <cstddef>

#include "platform/pictures/readers/PictCanvas.h"

namespace platform::pict {

/// How the rows of a raster are stored.
enum class Packing {
  kNone,       ///< unpacked, padded to `rowBytes`
  kNoPadByte,  ///< 32 bits without the first byte of each pixel
  kBytes,      ///< each row run-length coded by bytes
  kWords,      ///< each row run-length coded by words
  kPlanes,     ///< each row run-length coded by bytes, its components one after the other
};

using Palette = std::array<OpaqueColor, 256>;

struct PixelMap {
  Rect bounds;
  std::size_t rowBytes = 0;
  int depth = 1;       ///< bits per pixel: 1, 2, 4 and 8 with the palette, or 16 and 32
  int components = 3;  ///< of a pixel of 32 bits: 3, or 4 with alpha first
  Packing packing = Packing::kNone;
  Palette palette{};
};

/// Entries that the table does not define are black.
Palette ReadColorTable(Input& input);

/// Reads the rows of `map` from the input and paints them. Alpha is composited on white; if it is 0 everywhere, it is
/// unused and ignored.
void PaintPixels(Input& input, const PixelMap& map, Canvas& canvas, const Placement& placement);

constexpr bool IsRaster(int opcode) { return opcode == 0x90 || opcode == 0x91 || (opcode >= 0x98 && opcode <= 0x9B); }
/// Reads and paints the raster of an opcode. Returns where it was painted.
Rect PaintRaster(Input& input, int opcode, Canvas& canvas);

constexpr bool IsPixelPattern(int opcode) { return opcode >= 0x12 && opcode <= 0x14; }
/// Skips the data of a pixel pattern.
void SkipPixelPattern(Input& input);

}  // namespace platform::pict

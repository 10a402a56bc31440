#include "platform/pictures/readers/PictOpcodes.h"
#include "platform/pictures/readers/PictQuickTime.h"
#include "platform/pictures/readers/PictRaster.h"

namespace platform {

namespace {

using namespace pict;

constexpr int kEnd = 0xFF;
constexpr int kHeader = 0x0C00;

/// The header of version 2. Its source rectangle, if it has one, gives the drawing coordinates and the size in pixels;
/// the frame is then the same area at 72 dots per inch. So the size is that of the pixels in the file; clips are
/// ignored.
void ReadHeader(Input& input, Canvas& canvas) {
  const bool extended = input.Word() == 0xFFFE;
  input.Skip(10);  // reserved, resolution
  const Rect source = input.Rectangle();
  input.Skip(4);
  if (extended && !source.Empty()) canvas.SetArea(source);
}

Ref<Picture> Read(std::span<const std::uint8_t> bytes) {
  const bool hasPreamble = PictBeginsAt(bytes, kPictPreamble);
  if (!hasPreamble && !PictBeginsAt(bytes, 0)) throw ReadFailure("not an image: no PICT");
  Input input(bytes.subspan(hasPreamble ? kPictPreamble : 0));
  input.Skip(2);  // size
  Canvas canvas(input.Rectangle(), bytes.size());
  const Version version = input.Word() == 0x1101 ? Version::kOne : Version::kTwo;
  if (version == Version::kTwo) input.Skip(2);
  for (;;) {
    if (version == Version::kTwo) input.Skip(input.Position() % 2);
    const int opcode = version == Version::kTwo ? input.Word() : input.Byte();
    if (opcode == kEnd) break;
    if (opcode == kHeader)
      ReadHeader(input, canvas);
    else if (IsRaster(opcode))
      PaintRaster(input, opcode, canvas);
    else if (IsPixelPattern(opcode))
      SkipPixelPattern(input);
    else if (opcode == kCompressedQuickTime || opcode == kUncompressedQuickTime)
      PaintQuickTime(input, opcode, canvas);
    else
      SkipData(input, opcode, version);
  }
  if (!canvas.Painted()) throw ReadFailure("unsupported: it holds no raster");
  return AsLevelsIfGrey(canvas.Painted());
}

}  // namespace

OpenedPicture ReadPict(std::span<const std::uint8_t> bytes) {
  return Guarded([bytes] { return Read(bytes); });
}

}  // namespace platform

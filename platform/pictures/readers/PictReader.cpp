#include "platform/pictures/readers/PictOpcodes.h"
#include "platform/pictures/readers/PictQuickTime.h"
#include "platform/pictures/readers/PictRaster.h"

namespace platform {

namespace {

using namespace pict;

/// Length of the header of a PICT file, whose content is up to the program that wrote it. A PICT taken from a resource
/// lacks it.
constexpr std::uint64_t kPreamble = 512;

/// No map needs more: without the limit, a PICT that lacks its end opcode would be searched to the end of its file.
constexpr int kMostOpcodes = 1 << 22;

constexpr int kEnd = 0xFF;
constexpr int kHeader = 0x0C00;

bool BeginsAt(ByteSource& source, std::uint64_t position) {
  if (source.Size() < position + 14) return false;
  Input input(source, position + 2, position + 14);  // after the size, whose high bytes are lost
  if (input.Rectangle().Empty()) return false;
  const std::uint32_t version = input.Long();
  return version == 0x001102FF || version >> 16 == 0x1101;
}

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

Ref<Picture> Read(ByteSource& source) {
  const auto begin = BeginOfPict(source);
  if (!begin) throw ReadFailure("not an image: no PICT");
  Input input(source, *begin, source.Size());
  input.Skip(2);  // size
  Canvas canvas(input.Rectangle(), source.Size());
  const Version version = input.Word() == 0x1101 ? Version::kOne : Version::kTwo;
  if (version == Version::kTwo) input.Skip(2);
  for (int count = 0;; ++count) {
    if (count == kMostOpcodes) throw ReadFailure("truncated or damaged: a PICT without an end");
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

std::optional<std::uint64_t> BeginOfPict(ByteSource& source) {
  for (const std::uint64_t position : {kPreamble, std::uint64_t{0}})
    if (BeginsAt(source, position)) return position;
  return std::nullopt;
}

OpenedPicture ReadPict(ByteSource&& source) {
  return Guarded([&source] { return Read(source); });
}

}  // namespace platform

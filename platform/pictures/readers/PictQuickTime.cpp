#include "platform/pictures/readers/PictQuickTime.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/PictRaster.h"

namespace platform::pict {

namespace {

/// How QuickTime moves and scales an image.
struct Transform {
  double scaleX, scaleY;
  double moveX, moveY;

  Rect Apply(const Rect& rect) const {
    const auto coordinate = [](double value) {
      if (std::abs(value) > 32767) throw ReadFailure("truncated or damaged: a QuickTime image far outside the PICT");
      return static_cast<int>(std::floor(value + 0.5));
    };
    return {coordinate(rect.top * scaleY + moveY), coordinate(rect.left * scaleX + moveX),
            coordinate(rect.bottom * scaleY + moveY), coordinate(rect.right * scaleX + moveX)};
  }
};

Transform ReadMatrix(Input& input) {
  std::array<double, 9> matrix;
  for (double& element : matrix) element = static_cast<std::int32_t>(input.Long()) / 65536.0;
  if (matrix[1] != 0 || matrix[3] != 0 || matrix[0] <= 0 || matrix[4] <= 0)
    throw ReadFailure("unsupported: a QuickTime image that is turned or mirrored");
  return {matrix[0], matrix[4], matrix[6], matrix[7]};
}

/// The part of an image description that says how the data are stored.
struct Description {
  std::string codec;
  int width = 0;
  int height = 0;
  std::size_t dataSize = 0;
  int depth = 0;  // bits a pixel; more than 32 for grey
  std::optional<Palette> palette;
};

Description ReadDescription(Input& input) {
  constexpr std::size_t kOwnSize = 4, kSizeWithoutExtensions = 86;
  const std::size_t size = input.Long();
  if (size < kSizeWithoutExtensions) throw ReadFailure("truncated or damaged: a QuickTime image without description");
  Input fields = input.Part(size - kOwnSize);
  Description description;
  while (description.codec.size() < 4) {
    const std::uint8_t letter = fields.Byte();
    description.codec += letter >= ' ' && letter <= '~' ? static_cast<char>(letter) : '?';
  }
  fields.Skip(24);  // versions, vendor, quality
  description.width = fields.Word();
  description.height = fields.Word();
  fields.Skip(8);  // resolution
  description.dataSize = fields.Long();
  fields.Skip(34);  // frames, name
  description.depth = fields.Word();
  const bool ownTable = fields.Word() == 0;
  if (description.codec == "raw " && description.depth <= 8 && ownTable) description.palette = ReadColorTable(fields);
  return description;
}

Palette GreyPalette(int bits) {
  Palette palette{};
  const std::array<std::uint8_t, 256> levels = LevelsOfBits(bits);
  for (std::size_t i = 0; i < palette.size(); ++i) palette[i] = Opaque((255u - levels[i]) * 0x010101u);  // 0 is white
  return palette;
}

/// The pixels of the codec "raw ": rows without padding.
PixelMap RawPixels(const Description& description) {
  PixelMap map;
  map.bounds = {0, 0, description.height, description.width};
  if (map.bounds.Empty()) throw ReadFailure("truncated or damaged: a QuickTime image without pixels");
  map.depth = description.depth;
  map.components = 4;
  if (map.depth == 24) {
    map.depth = 32;
    map.packing = Packing::kNoPadByte;
  } else if (map.depth > 32 && map.depth <= 40) {
    map.depth -= 32;
    map.palette = GreyPalette(map.depth);
  } else if (description.palette) {
    map.palette = *description.palette;
  }
  const bool indexed = map.depth == 1 || map.depth == 2 || map.depth == 4 || map.depth == 8;
  if (!(indexed ? description.depth > 32 || description.palette : map.depth == 16 || map.depth == 32))
    throw ReadFailure("unsupported depth: QuickTime raw of " + std::to_string(description.depth) + " bits");
  map.rowBytes = (static_cast<std::size_t>(description.width) * static_cast<std::size_t>(map.depth) + 7) / 8;
  return map;
}

OpenedPicture Decode(const std::string& codec, const Input& data) {
  if (codec == "jpeg") {
    const std::vector<std::uint8_t> kJpeg = {0xFF, 0xD8, 0xFF};
    return data.Rest().Bytes(0, kJpeg.size()) == kJpeg ? ReadJpeg(data.Rest()) : OpenedPicture{nullptr, "no JPEG"};
  }
  if (codec == "png ") return ReadPng(data.Rest());
  if (codec == "tiff") return ReadTiff(data.Rest());
  return {nullptr, String("unsupported compression: QuickTime " + codec)};
}

Ref<Picture> DecodeWhole(const std::string& codec, const Input& data) {
  const OpenedPicture opened = Decode(codec, data);
  const std::string failure = opened.failure.Utf8();
  if (failure.starts_with("unsupported")) throw ReadFailure(failure);
  if (!opened.picture) throw ReadFailure("truncated or damaged: QuickTime image: " + failure);
  return opened.picture;
}

void PaintCompressed(Input& data, const Transform& transform, Canvas& canvas) {
  data.Skip(2);  // transfer mode
  Placement placement;
  placement.source = data.Rectangle();
  placement.destination = transform.Apply(placement.source);
  data.Skip(4);  // accuracy
  if (const std::size_t maskSize = data.Long()) {
    Input mask = data.Part(maskSize);
    placement.mask = ReadRegion(mask);
  }
  const Description description = ReadDescription(data);
  Input content = data.Part(description.dataSize != 0 ? description.dataSize : data.Left());
  if (description.codec == "raw ") {
    const PixelMap map = RawPixels(description);
    placement.bounds = map.bounds;
    PaintPixels(content, map, canvas, placement);
  } else {
    const Ref<Picture> image = DecodeWhole(description.codec, content);
    const PlaneView<OpaqueColor> pixels = image->Pixels();
    canvas.CountWork(static_cast<double>(pixels.width) * pixels.height);
    placement.bounds = {0, 0, pixels.height, pixels.width};
    RowPainter painter = canvas.Begin(placement);
    for (int y = 0; y < pixels.height; ++y) painter.Paint(y, {pixels.Row(y), static_cast<std::size_t>(pixels.width)});
  }
  canvas.quickTime = placement.destination;
}

}  // namespace

void PaintQuickTime(Input& input, int opcode, Canvas& canvas) {
  const std::size_t size = input.Long();
  Input data = input.Part(size);
  data.Skip(2);  // version
  const Transform transform = ReadMatrix(data);
  if (data.Long() != 0) throw ReadFailure("unsupported: a QuickTime image with a matte");
  data.Skip(8);  // rectangle of the matte
  if (opcode == kCompressedQuickTime) return PaintCompressed(data, transform, canvas);
  const int raster = data.Word();
  if (!IsRaster(raster)) throw ReadFailure("unsupported: QuickTime without a raster");
  canvas.quickTime = PaintRaster(data, raster, canvas);
}

}  // namespace platform::pict

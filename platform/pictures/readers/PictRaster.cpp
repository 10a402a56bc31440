#include "platform/pictures/readers/PictRaster.h"

#include <algorithm>
#include <vector>

#include "platform/pictures/GreyScaling.h"

namespace platform::pict {

namespace {

/// Shorter rows are never packed.
constexpr std::size_t kShortestPackedRow = 8;
/// The byte count of a packed row takes one byte for rows up to this length, two bytes for longer ones. Some programs
/// use another limit.
constexpr std::size_t kLongestRowOfByteCount = 250;

bool IsDirect(int opcode) { return opcode == 0x9A || opcode == 0x9B; }
bool HasMask(int opcode) { return opcode % 2 == 1; }

Packing DirectPacking(int type, const PixelMap& map) {
  if (map.rowBytes < kShortestPackedRow) return Packing::kNone;
  if (type == 1) return Packing::kNone;
  if (type == 2 && map.depth == 32) return Packing::kNoPadByte;
  if ((type == 0 || type == 3) && map.depth == 16) return Packing::kWords;
  if ((type == 0 || type == 4) && map.depth == 32) return Packing::kPlanes;
  throw ReadFailure("unsupported compression: PICT pack type " + std::to_string(type) + " of " +
                    std::to_string(map.depth) + " bits");
}

/// Reads the fields from the row bytes up to the colour table.
PixelMap ReadPixelMap(Input& input, bool direct, bool packed) {
  PixelMap map;
  const int rowBytes = input.Word();
  map.rowBytes = rowBytes & 0x3FFF;
  map.bounds = input.Rectangle();
  if (map.bounds.Empty()) throw ReadFailure("truncated or damaged: a raster without pixels");
  map.packing = packed && map.rowBytes >= kShortestPackedRow ? Packing::kBytes : Packing::kNone;
  if (!direct && (rowBytes & 0x8000) == 0) {
    map.palette = {Opaque(kWhite), Opaque(kBlack)};
    return map;
  }
  input.Skip(2);  // version
  const int packType = input.Word();
  input.Skip(14);  // packed size, resolution, pixel type
  map.depth = input.Word();
  map.components = input.Word() == 4 ? 4 : 3;
  input.Skip(14);  // bits a component, offset of planes, table, reserved
  const bool known = direct ? map.depth == 16 || map.depth == 32
                            : map.depth == 1 || map.depth == 2 || map.depth == 4 || map.depth == 8;
  if (!known) throw ReadFailure("unsupported depth: PICT of " + std::to_string(map.depth) + " bits");
  if (direct)
    map.packing = DirectPacking(packType, map);
  else
    map.palette = ReadColorTable(input);
  return map;
}

/// Fills the row from PackBits data whose runs count units of 1 or 2 bytes. Excess bytes are dropped.
void Unpack(std::span<const std::uint8_t> packed, std::size_t unit, std::span<std::uint8_t> row) {
  while (!row.empty()) {
    const int code = packed.empty() ? 0 : packed.front();
    if (!packed.empty()) packed = packed.subspan(1);
    if (code == 128) continue;
    const bool repeated = code > 128;
    const std::size_t count = static_cast<std::size_t>(repeated ? 257 - code : code + 1) * unit;
    const std::size_t stored = repeated ? unit : count;
    if (packed.size() < stored) throw ReadFailure("truncated or damaged: a row of the PICT has too few pixels");
    const std::size_t used = std::min(count, row.size());
    if (repeated)
      for (std::size_t i = 0; i < used; ++i) row[i] = packed[i & (unit - 1)];
    else
      std::ranges::copy(packed.first(used), row.begin());
    packed = packed.subspan(stored);
    row = row.subspan(used);
  }
}

/// The number of bytes to which such data unpack; 0 if they end within a run.
std::size_t UnpackedSize(std::span<const std::uint8_t> packed, std::size_t unit) {
  std::size_t size = 0;
  for (std::size_t i = 0; i < packed.size();) {
    const std::size_t code = packed[i++];
    if (code == 128) continue;
    const std::size_t count = (code > 128 ? 257 - code : code + 1) * unit;
    i += code > 128 ? unit : count;
    if (i > packed.size()) return 0;
    size += count;
  }
  return size;
}

/// Decodes the rows of a pixel map one after the other.
class PixelRows {
 public:
  PixelRows(Input& input, const PixelMap& map);
  /// The colours of the next row. With four components the highest byte is the alpha, otherwise it is not defined.
  std::span<std::uint32_t> Next();

 private:
  std::span<const std::uint8_t> NextBytes();
  std::size_t Unit() const { return map_.packing == Packing::kWords ? 2 : 1; }
  bool FirstRowHas(bool longCount) const;
  std::span<const std::uint8_t> Stored(std::size_t count);
  std::uint32_t Direct(std::span<const std::uint8_t> row, std::size_t x) const;

  Input& input_;
  const PixelMap& map_;
  std::array<std::uint8_t, 256> levels5_ = LevelsOfBits(5);
  bool longCounts_;  // the byte count of a packed row takes two bytes
  std::vector<std::uint8_t> stored_;
  std::vector<std::uint8_t> unpacked_;
  std::vector<std::uint32_t> colors_;
};

PixelRows::PixelRows(Input& input, const PixelMap& map)
    : input_(input),
      map_(map),
      longCounts_(map.rowBytes > kLongestRowOfByteCount),
      colors_(static_cast<std::size_t>(map.bounds.Width())) {
  const std::size_t width = colors_.size();
  std::size_t needed = (width * static_cast<std::size_t>(map.depth) + 7) / 8;
  if (map.packing == Packing::kPlanes) needed = width * static_cast<std::size_t>(map.components);
  if (map.packing == Packing::kNoPadByte) needed = width * 3;
  if ((map.packing == Packing::kNone || map.packing == Packing::kBytes || map.packing == Packing::kWords) &&
      needed > map.rowBytes)
    throw ReadFailure("truncated or damaged: rows of the PICT shorter than its width");
  unpacked_.resize(needed);
  const bool counted = map.packing != Packing::kNone && map.packing != Packing::kNoPadByte;
  if (counted && !FirstRowHas(longCounts_) && FirstRowHas(!longCounts_)) longCounts_ = !longCounts_;
}

/// Whether a count of that length, and as many bytes that unpack to just one row, come next.
bool PixelRows::FirstRowHas(bool longCount) const {
  Input ahead = input_;
  if (ahead.Left() < 2) return false;
  const std::size_t count = longCount ? ahead.Word() : ahead.Byte();
  if (count > ahead.Left()) return false;
  std::vector<std::uint8_t> packed(count);
  ahead.Read(packed);
  const std::size_t size = UnpackedSize(packed, Unit());
  return size >= unpacked_.size() && size <= std::max(map_.rowBytes, unpacked_.size());
}

std::span<const std::uint8_t> PixelRows::Stored(std::size_t count) {
  stored_.resize(count);
  input_.Read(stored_);
  return stored_;
}

std::span<const std::uint8_t> PixelRows::NextBytes() {
  if (map_.packing == Packing::kNone) return Stored(map_.rowBytes);
  if (map_.packing == Packing::kNoPadByte) return Stored(unpacked_.size());
  Unpack(Stored(longCounts_ ? input_.Word() : input_.Byte()), Unit(), unpacked_);
  return unpacked_;
}

std::uint32_t PixelRows::Direct(std::span<const std::uint8_t> row, std::size_t x) const {
  const std::size_t width = colors_.size();
  switch (map_.packing) {
    case Packing::kNoPadByte:
      return OpaqueRGB(row[3 * x], row[3 * x + 1], row[3 * x + 2]);
    case Packing::kPlanes: {
      const auto plane = [&](std::size_t number) { return std::uint32_t{row[number * width + x]}; };
      return map_.components == 4 ? plane(0) << 24 | plane(1) << 16 | plane(2) << 8 | plane(3)
                                  : plane(0) << 16 | plane(1) << 8 | plane(2);
    }
    default: {
      const auto byte = [&](std::size_t number) { return std::uint32_t{row[4 * x + number]}; };
      return (map_.components == 4 ? byte(0) << 24 : 0) | byte(1) << 16 | byte(2) << 8 | byte(3);
    }
  }
}

std::span<std::uint32_t> PixelRows::Next() {
  const auto row = NextBytes();
  if (map_.depth == 32) {
    for (std::size_t x = 0; x < colors_.size(); ++x) colors_[x] = Direct(row, x);
  } else if (map_.depth == 16) {
    for (std::size_t x = 0; x < colors_.size(); ++x) {
      const int value = row[2 * x] << 8 | row[2 * x + 1];
      const auto level = [&](int shift) { return levels5_[static_cast<std::size_t>(value >> shift & 31)]; };
      colors_[x] = OpaqueRGB(level(10), level(5), level(0));
    }
  } else {
    const auto depth = static_cast<std::size_t>(map_.depth);
    for (std::size_t x = 0; x < colors_.size(); ++x) {
      const std::size_t bit = x * depth;
      colors_[x] = map_.palette[static_cast<std::size_t>(row[bit / 8] >> (8 - depth - bit % 8) & ((1 << depth) - 1))];
    }
  }
  return colors_;
}

int Alpha(std::uint32_t color) { return static_cast<int>(color >> 24); }

OpaqueColor OnWhite(std::uint32_t color) {
  const int alpha = Alpha(color);
  return OpaqueRGB(OverWhite(Red(color), alpha), OverWhite(Green(color), alpha), OverWhite(Blue(color), alpha));
}

/// A QuickTime image is followed by a fallback for programs without QuickTime: a bit map within its rectangle, or a
/// raster of any depth that would cover it.
bool IsFallback(const PixelMap& map, const Rect& destination, const Rect& quickTime) {
  return map.depth == 1 ? quickTime.Contains(destination) : destination == quickTime;
}

/// Whether any pixel of the following rows has an alpha other than 0.
bool HasAlpha(Input input, const PixelMap& map) {
  if (map.depth != 32 || map.components != 4) return false;
  PixelRows rows(input, map);
  for (int y = 0; y < map.bounds.Height(); ++y)
    if (std::ranges::any_of(rows.Next(), [](std::uint32_t color) { return Alpha(color) != 0; })) return true;
  return false;
}

}  // namespace

Palette ReadColorTable(Input& input) {
  input.Skip(4);  // seed
  const bool byPosition = (input.Word() & 0x8000) != 0;
  const int count = input.Word() + 1;
  Palette palette;
  palette.fill(Opaque(kBlack));
  for (int i = 0; i < count; ++i) {
    const int value = input.Word();
    const auto index = static_cast<std::size_t>(byPosition ? i : value);
    const int red = input.Word() >> 8;
    const int green = input.Word() >> 8;
    const int blue = input.Word() >> 8;
    if (index < palette.size()) palette[index] = OpaqueRGB(red, green, blue);
  }
  return palette;
}

void PaintPixels(Input& input, const PixelMap& map, Canvas& canvas, const Placement& placement) {
  const bool hasAlpha = HasAlpha(input, map);
  PixelRows rows(input, map);
  RowPainter painter = canvas.Begin(placement);
  for (int y = map.bounds.top; y < map.bounds.bottom; ++y) {
    const auto row = rows.Next();
    std::ranges::transform(row, row.begin(), hasAlpha ? OnWhite : Opaque);
    painter.Paint(y, row);
  }
}

Rect PaintRaster(Input& input, int opcode, Canvas& canvas) {
  if (IsDirect(opcode)) input.Skip(4);  // address
  const PixelMap map = ReadPixelMap(input, IsDirect(opcode), opcode >= 0x98);
  Placement placement{.bounds = map.bounds, .source = input.Rectangle(), .destination = input.Rectangle()};
  input.Skip(2);  // transfer mode
  if (HasMask(opcode)) placement.mask = ReadRegion(input);
  if (IsFallback(map, placement.destination, canvas.quickTime)) placement.destination = {};
  PaintPixels(input, map, canvas, placement);
  return placement.destination;
}

void SkipPixelPattern(Input& input) {
  const int type = input.Word();
  input.Skip(8);                        // the pattern in black and white
  if (type == 2) return input.Skip(6);  // one colour
  if (type != 1) throw ReadFailure("truncated or damaged: a pixel pattern of type " + std::to_string(type));
  const PixelMap map = ReadPixelMap(input, false, true);
  PixelRows rows(input, map);
  for (int y = 0; y < map.bounds.Height(); ++y) rows.Next();
}

}  // namespace platform::pict

#include <algorithm>
#include <array>
#include <bit>
#include <string>
#include <vector>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

enum Compression : std::uint32_t { kNone = 0, kRuns8 = 1, kRuns4 = 2, kMasks = 3, kMasksWithAlpha = 6 };

/// The contents of the headers.
struct Layout {
  std::int64_t width = 0;
  std::int64_t height = 0;
  bool topDown = false;
  std::uint32_t bits = 0;
  std::uint32_t compression = kNone;
  std::array<std::uint32_t, 4> masks{};  // of red, green, blue, alpha
  std::vector<OpaqueColor> palette;
  std::uint64_t data = 0;

  std::uint64_t RowBytes() const { return (static_cast<std::uint64_t>(width) * bits + 31) / 32 * 4; }
  /// Without the padding, which the last row of a file may lack.
  std::size_t UsedRowBytes() const { return (static_cast<std::size_t>(width) * bits + 7) / 8; }
};

constexpr std::uint64_t kHeader = 14;  // where the second header begins
constexpr std::uint64_t kMaskOffset = 54;

void ReadMasks(ByteSource& source, std::uint32_t headerSize, Layout& layout) {
  layout.masks = layout.bits == 16 ? std::array<std::uint32_t, 4>{0x7C00, 0x3E0, 0x1F, 0}
                                   : std::array<std::uint32_t, 4>{0xFF0000, 0xFF00, 0xFF, 0};
  if (layout.compression != kMasks && layout.compression != kMasksWithAlpha) return;
  if (layout.bits != 16 && layout.bits != 32)
    throw ReadFailure("unsupported depth: BMP of " + std::to_string(layout.bits) + " bits with masks");
  const bool alpha = headerSize >= 56 || layout.compression == kMasksWithAlpha;
  for (std::size_t i = 0; i < (alpha ? 4 : 3); ++i) layout.masks[i] = source.Little32(kMaskOffset + 4 * i);
}

/// The masks follow a header of 40 bytes; the palette or the pixels come after them.
std::uint64_t EndOfHeaders(std::uint32_t headerSize, std::uint32_t compression) {
  const std::uint64_t masks = compression == kMasks ? 12 : compression == kMasksWithAlpha ? 16 : 0;
  return kHeader + headerSize + (headerSize == 40 ? masks : 0);
}

Layout ReadLayout(ByteSource& source) {
  const std::uint32_t headerSize = source.Little32(kHeader);
  const bool old = headerSize == 12;
  const auto field = [&](std::uint64_t place) {
    return place + 4 <= kHeader + headerSize ? source.Little32(place) : 0;
  };
  Layout layout;
  const auto length = [&](std::uint64_t place) {
    return static_cast<std::int64_t>(old ? static_cast<std::int32_t>(source.Little16(place))
                                         : static_cast<std::int32_t>(source.Little32(place)));
  };
  layout.width = length(18);
  layout.height = length(old ? 20 : 22);
  layout.topDown = layout.height < 0;
  if (layout.topDown) layout.height = -layout.height;
  layout.bits = source.Little16(old ? 24 : 28);
  layout.compression = field(30);
  const bool os2 = headerSize == 64;  // there 3 and 4 mean other compressions
  if (layout.compression > kMasksWithAlpha || layout.compression == 4 || layout.compression == 5 ||
      (os2 && layout.compression > kRuns4))
    throw ReadFailure("unsupported compression: BMP " + std::to_string(layout.compression));
  constexpr std::array<std::uint32_t, 7> kDepths = {1, 2, 4, 8, 16, 24, 32};
  const bool runs = layout.compression == kRuns8 || layout.compression == kRuns4;
  if (std::find(kDepths.begin(), kDepths.end(), layout.bits) == kDepths.end() ||
      (runs && layout.bits != (layout.compression == kRuns8 ? 8 : 4)))
    throw ReadFailure("unsupported depth: BMP of " + std::to_string(layout.bits) + " bits, compression " +
                      std::to_string(layout.compression));
  CheckSize(static_cast<double>(layout.width), static_cast<double>(layout.height), 8);

  const std::uint64_t behindHeaders = EndOfHeaders(headerSize, layout.compression);
  layout.data = source.Little32(10);
  if (layout.bits > 8) {
    if (layout.data < behindHeaders) throw ReadFailure("truncated or damaged: the pixels lie inside the headers");
    ReadMasks(source, headerSize, layout);
    return layout;
  }
  // At most as many colours as fit before the pixels.
  const std::uint32_t entry = old ? 3 : 4;
  const std::uint32_t used = field(46);
  std::uint64_t colors = used > 0 ? std::min(used, 1u << layout.bits) : 1u << layout.bits;
  if (layout.data < behindHeaders) layout.data = behindHeaders + colors * entry;
  colors = std::min(colors, (layout.data - behindHeaders) / entry);
  if (colors == 0) throw ReadFailure("unsupported: a BMP without its colours");
  for (std::uint64_t i = 0; i < colors; ++i) {
    const std::uint64_t place = behindHeaders + i * entry;
    layout.palette.push_back(OpaqueRGB(static_cast<int>(source.Byte(place + 2)),
                                       static_cast<int>(source.Byte(place + 1)), static_cast<int>(source.Byte(place))));
  }
  layout.palette.resize(256, Opaque(kBlack));  // indices without a colour are black
  return layout;
}

/// The component of a pixel that the mask selects, scaled so that all bits set give 255.
class Component {
 public:
  explicit Component(std::uint32_t mask)
      : mask_(mask), shift_(mask ? std::countr_zero(mask) : 0), fullScale_(mask >> shift_) {}
  int operator()(std::uint32_t pixel) const {
    const std::uint64_t value = (pixel & mask_) >> shift_;
    if (fullScale_ == 255) return static_cast<int>(value);
    return fullScale_ ? static_cast<int>((value * 255 + fullScale_ / 2) / fullScale_) : 0;
  }

 private:
  std::uint32_t mask_;
  int shift_;
  std::uint32_t fullScale_;
};

/// Calls `take(y, bytes)` for every row of the picture, in the order of the file.
template <class Take>
void ForEachRow(ByteSource& source, const Layout& layout, Take take) {
  std::vector<std::uint8_t> row(layout.UsedRowBytes());
  for (std::int64_t i = 0; i < layout.height; ++i) {
    const std::uint64_t place = layout.data + static_cast<std::uint64_t>(i) * layout.RowBytes();
    if (source.Read(place, row.data(), row.size()) != row.size())
      throw ReadFailure("truncated: the rows go past the end of the file");
    take(static_cast<int>(layout.topDown ? i : layout.height - 1 - i), row);
  }
}

void ReadIndexed(ByteSource& source, const Layout& layout, const PlaneView<OpaqueColor>& pixels) {
  const std::uint32_t bits = layout.bits;
  ForEachRow(source, layout, [&](int y, const std::vector<std::uint8_t>& row) {
    OpaqueColor* out = pixels.Row(y);
    for (std::size_t x = 0; x < static_cast<std::size_t>(pixels.width); ++x) {
      const std::size_t place = x * bits;  // highest bits first
      out[x] = layout.palette[row[place / 8] >> (8 - bits - place % 8) & ((1u << bits) - 1)];
    }
  });
}

template <std::size_t kBytes>
void ReadDirect(ByteSource& source, const Layout& layout, const PlaneView<OpaqueColor>& pixels) {
  const auto pixel = [](const std::vector<std::uint8_t>& row, int x) {
    std::uint32_t value = 0;
    for (std::size_t i = kBytes; i > 0; --i) value = value << 8 | row[static_cast<std::size_t>(x) * kBytes + i - 1];
    return value;
  };
  // Many programs declare an alpha component and leave it at 0 everywhere; then it is ignored.
  bool hasAlpha = false;
  if (layout.masks[3] != 0)
    ForEachRow(source, layout, [&](int, const std::vector<std::uint8_t>& row) {
      for (int x = 0; x < pixels.width && !hasAlpha; ++x) hasAlpha = (pixel(row, x) & layout.masks[3]) != 0;
    });
  const Component red(layout.masks[0]), green(layout.masks[1]), blue(layout.masks[2]), alpha(layout.masks[3]);
  ForEachRow(source, layout, [&](int y, const std::vector<std::uint8_t>& row) {
    OpaqueColor* out = pixels.Row(y);
    for (int x = 0; x < pixels.width; ++x) {
      const std::uint32_t value = pixel(row, x);
      out[x] = OpaqueRGB(red(value), green(value), blue(value));
      if (hasAlpha) out[x] = ColorOverWhite(out[x], alpha(value));
    }
  });
}

/// Pairs of bytes: a run of one value, or a 0 and a command: next row, end, a jump, or that many single values.
void ReadRuns(ByteSource& source, const Layout& layout, const PlaneView<OpaqueColor>& pixels) {
  const bool nibbles = layout.compression == kRuns4;
  std::fill_n(pixels.data, pixels.pitch * pixels.height, layout.palette[0]);  // for pixels that no run covers
  std::int64_t x = 0;
  std::int64_t row = 0;
  const auto put = [&](std::uint32_t index) {
    if (x < layout.width)
      pixels.Row(static_cast<int>(layout.topDown ? row : layout.height - 1 - row))[x] = layout.palette[index];
    ++x;
  };
  const auto nibble = [](std::uint32_t byte, std::uint32_t i) { return i % 2 == 0 ? byte >> 4 : byte & 15; };
  for (std::uint64_t place = layout.data; row < layout.height; place += 2) {
    const std::uint32_t count = source.Byte(place);
    const std::uint32_t code = source.Byte(place + 1);
    for (std::uint32_t i = 0; i < count; ++i) put(nibbles ? nibble(code, i) : code);
    if (count != 0) continue;
    if (code == 0) {
      x = 0;
      ++row;
    } else if (code == 1) {
      return;
    } else if (code == 2) {
      x += source.Byte(place + 2);
      row += source.Byte(place + 3);
      place += 2;
    } else {
      for (std::uint32_t i = 0; i < code; ++i)
        put(nibbles ? nibble(source.Byte(place + 2 + i / 2), i) : source.Byte(place + 2 + i));
      place += ((nibbles ? (code + 1) / 2 : code) + 1) & ~1u;
    }
  }
}

Ref<Picture> Read(ByteSource& source) {
  if (source.Little16(0) != 0x4D42) throw ReadFailure("not an image: no BMP");
  const Layout layout = ReadLayout(source);
  const bool runs = layout.compression == kRuns8 || layout.compression == kRuns4;
  if (runs)
    CheckPlausible(static_cast<double>(layout.width), static_cast<double>(layout.height), source.Size(), 16384);
  else if (layout.data + layout.RowBytes() * static_cast<std::uint64_t>(layout.height - 1) + layout.UsedRowBytes() >
           source.Size())
    throw ReadFailure("truncated: the rows go past the end of the file");
  const auto picture = MakeRef<Picture>(static_cast<int>(layout.width), static_cast<int>(layout.height));
  const auto read = runs                ? ReadRuns
                    : layout.bits == 32 ? ReadDirect<4>
                    : layout.bits == 24 ? ReadDirect<3>
                    : layout.bits == 16 ? ReadDirect<2>
                                        : ReadIndexed;
  read(source, layout, picture->Pixels());
  return AsLevelsIfGrey(picture);
}

}  // namespace

OpenedPicture ReadBmp(ByteSource&& source) {
  return Guarded([&source] { return Read(source); });
}

}  // namespace platform

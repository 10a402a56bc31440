#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

using Palette = std::array<OpaqueColor, 256>;

/// The bytes of a chain of blocks, each preceded by its length; a length of 0 ends the chain.
class BlockReader {
 public:
  BlockReader(ByteSource& source, std::uint64_t position) : source_(source), position_(position) {}

  std::uint32_t Next() {
    if (left_ == 0) left_ = source_.Byte(position_++);
    if (left_ == 0) throw ReadFailure("truncated or damaged: the codes of the GIF end too early");
    --left_;
    return source_.Byte(position_++);
  }

 private:
  ByteSource& source_;
  std::uint64_t position_;
  std::uint32_t left_ = 0;
};

/// The colour indices of an image: LZW with codes of growing width, lowest bit first.
class IndexReader {
 public:
  IndexReader(ByteSource& source, std::uint64_t position)
      : bits_(BitsOfAnIndex(source.Byte(position))), clear_(1u << bits_), blocks_(source, position + 1) {
    Clear();
  }

  std::uint8_t Next() {
    if (waiting_ == 0) ReadCode();
    return string_[--waiting_];
  }

 private:
  static constexpr std::uint32_t kCodes = 4096;
  static constexpr std::uint32_t kNone = kCodes;

  static std::uint32_t BitsOfAnIndex(std::uint32_t bits) {
    if (bits < 1 || bits > 8) throw ReadFailure("truncated or damaged: indices of " + std::to_string(bits) + " bits");
    return bits;
  }

  void Clear() {
    width_ = bits_ + 1;
    next_ = clear_ + 2;
    previous_ = kNone;
  }

  std::uint32_t Code() {
    for (; held_ < width_; held_ += 8) window_ |= blocks_.Next() << held_;
    const std::uint32_t code = window_ & ((1u << width_) - 1);
    window_ >>= width_;
    held_ -= width_;
    return code;
  }

  /// Decodes the next code into string_, in reverse order.
  void ReadCode() {
    std::uint32_t code = Code();
    for (; code == clear_; code = Code()) Clear();
    if (code == clear_ + 1) throw ReadFailure("truncated or damaged: the codes of the GIF end too early");
    if (code > next_ || (code >= clear_ && previous_ == kNone))
      throw ReadFailure("truncated or damaged: a code of the GIF has no meaning yet");
    std::uint32_t rest = code;
    if (code == next_) {  // the code being defined now: the previous string followed by its own first index
      string_[waiting_++] = first_;
      rest = previous_;
    }
    for (; rest >= clear_; rest = prefix_[rest]) string_[waiting_++] = last_[rest];
    first_ = static_cast<std::uint8_t>(rest);
    string_[waiting_++] = first_;
    if (previous_ != kNone && next_ < kCodes) {
      prefix_[next_] = static_cast<std::uint16_t>(previous_);
      last_[next_] = first_;
      ++next_;
      if (next_ == 1u << width_ && width_ < 12) ++width_;
    }
    previous_ = code;
  }

  std::uint32_t bits_;
  std::uint32_t clear_;
  BlockReader blocks_;
  std::uint32_t window_ = 0;  // bits read and not used yet
  std::uint32_t held_ = 0;    // number of bits in window_
  std::uint32_t width_ = 0;   // of the next code
  std::uint32_t next_ = 0;    // the code to be defined next
  std::uint32_t previous_ = kNone;
  std::uint8_t first_ = 0;  // of the previous string
  std::array<std::uint16_t, kCodes> prefix_{};
  std::array<std::uint8_t, kCodes> last_{};
  std::array<std::uint8_t, kCodes + 1> string_{};
  std::size_t waiting_ = 0;
};

/// Size in bytes of the colour table that these flags describe.
std::uint32_t TableBytes(std::uint32_t flags) { return flags & 0x80 ? 3u << ((flags & 7) + 1) : 0; }

void ReadTable(ByteSource& source, std::uint64_t position, std::uint32_t bytes, Palette& palette) {
  for (std::uint32_t i = 0; i < bytes; i += 3)
    palette[i / 3] =
        OpaqueRGB(static_cast<int>(source.Byte(position + i)), static_cast<int>(source.Byte(position + i + 1)),
                  static_cast<int>(source.Byte(position + i + 2)));
}

/// The row numbers of an image of `height` rows, in the order in which they are stored.
std::vector<std::uint32_t> RowOrder(std::uint32_t height, bool interlaced) {
  constexpr std::array<std::array<std::uint32_t, 2>, 4> kPasses = {{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
  std::vector<std::uint32_t> rows;
  for (const auto& [first, step] : kPasses)
    for (std::uint32_t y = interlaced ? first : 0; y < height && rows.size() < height; y += interlaced ? step : 1)
      rows.push_back(y);
  return rows;
}

Ref<Picture> Read(ByteSource& source) {
  const std::vector<std::uint8_t> signature = source.Bytes(0, 4);
  if (std::string(signature.begin(), signature.end()) != "GIF8") throw ReadFailure("not an image: no GIF");
  const std::uint32_t globalBytes = TableBytes(source.Byte(10));
  Palette palette;
  palette.fill(Opaque(kBlack));
  ReadTable(source, 13, globalBytes, palette);
  const OpaqueColor background = palette[source.Byte(11)];

  // Skip to the first image and remember the transparent colour on the way.
  std::uint64_t place = 13 + globalBytes;
  std::uint32_t transparent = 256;
  for (; source.Byte(place) == 0x21; ++place) {
    const bool control = source.Byte(place + 1) == 0xF9 && source.Byte(place + 2) >= 4;
    if (control && (source.Byte(place + 3) & 1)) transparent = source.Byte(place + 6);
    for (place += 2; source.Byte(place) != 0;) place += source.Byte(place) + 1;
  }
  if (source.Byte(place) != 0x2C) throw ReadFailure("truncated or damaged: no image in the GIF");
  const std::uint32_t left = source.Little16(place + 1);
  const std::uint32_t top = source.Little16(place + 3);
  const std::uint32_t width = source.Little16(place + 5);
  const std::uint32_t height = source.Little16(place + 7);
  const std::uint32_t flags = source.Byte(place + 9);
  const std::uint32_t localBytes = TableBytes(flags);
  if (globalBytes + localBytes == 0) throw ReadFailure("unsupported: a GIF without colours");
  ReadTable(source, place + 10, localBytes, palette);
  if (transparent < 256) palette[transparent] = Opaque(kWhite);

  // The picture is the logical screen, because maps of one field of view must have one size; without a screen size, it
  // is as large as the first image requires.
  const std::uint32_t screenWidth = source.Little16(6) ? source.Little16(6) : left + width;
  const std::uint32_t screenHeight = source.Little16(8) ? source.Little16(8) : top + height;
  CheckSize(screenWidth, screenHeight, 8);
  CheckPlausible(screenWidth, screenHeight, source.Size(), 16384);
  const auto picture = MakeRef<Picture>(static_cast<int>(screenWidth), static_cast<int>(screenHeight));
  const PlaneView<OpaqueColor> pixels = picture->Pixels();
  std::fill_n(pixels.data, std::size_t{screenWidth} * screenHeight,
              transparent < 256 || globalBytes == 0 ? Opaque(kWhite) : background);
  IndexReader indices(source, place + 10 + localBytes);
  for (const std::uint32_t row : RowOrder(height, (flags & 0x40) != 0)) {
    const std::uint32_t y = top + row;
    for (std::uint32_t x = left; x < left + width; ++x) {
      const OpaqueColor color = palette[indices.Next()];
      if (x < screenWidth && y < screenHeight) pixels.Row(static_cast<int>(y))[x] = color;
    }
  }
  return AsLevelsIfGrey(picture);
}

}  // namespace

OpenedPicture ReadGif(ByteSource&& source) {
  return Guarded([&source] { return Read(source); });
}

}  // namespace platform

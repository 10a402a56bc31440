#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/pictures/Graphics.h"

namespace platform {

namespace {

__extension__ typedef unsigned __int128 Wide;

/// Positions in the picture, along one axis, of the centres of consecutive target pixels, in 1/256 of a picture pixel,
/// rounded down. Only visible pixels whose centre lies inside the picture are listed.
struct Positions {
  std::int64_t first = 0;  ///< the device pixel of the first position
  std::vector<std::int64_t> at;
  bool natural = false;  ///< one picture pixel per device pixel

  int Pixel(std::size_t i) const { return static_cast<int>(at[i] >> 8); }
};

/// The target extends from t0 to t1, of which s0 to s1 are visible; `size` is the picture's.
Positions PositionsAlong(std::int64_t t0, std::int64_t t1, std::int64_t s0, std::int64_t s1, int source, int sourceSize,
                         int size) {
  Positions positions;
  const auto length = static_cast<std::uint64_t>(t1 - t0);
  positions.natural = length == static_cast<std::uint64_t>(sourceSize);
  // The centre of pixel k is at (2k + 1) * sourceSize / (2 * length); quotient and remainder are updated as k grows.
  const auto divisor = 2 * length;
  const auto step = 512 * static_cast<std::uint64_t>(sourceSize);
  const Wide start = (2 * Wide(static_cast<std::uint64_t>(s0 - t0)) + 1) * static_cast<std::uint64_t>(sourceSize) * 256;
  auto whole = static_cast<std::int64_t>(start / divisor) + std::int64_t{source} * 256;
  auto part = static_cast<std::uint64_t>(start % divisor);
  for (std::int64_t pixel = s0; pixel < s1; ++pixel) {
    if (whole >= 0 && whole < std::int64_t{size} * 256) {
      if (positions.at.empty()) positions.first = pixel;
      positions.at.push_back(whole);
    }
    whole += static_cast<std::int64_t>(step / divisor);
    part += step % divisor;
    if (part >= divisor) part -= divisor, ++whole;
  }
  return positions;
}

/// Target rows by the nearest picture pixel.
class HardRows {
 public:
  HardRows(PlaneView<const OpaqueColor> picture, const Positions& columns)
      : picture_(picture), natural_(columns.natural) {
    for (std::size_t i = 0; i < columns.at.size(); ++i) from_.push_back(columns.Pixel(i));
  }

  void Row(std::int64_t position, OpaqueColor* to) {
    const int y = static_cast<int>(position >> 8);
    const OpaqueColor* const row = picture_.Row(y);
    if (y == lastY_ && to == last_) return;
    // A picture may be drawn on itself, hence no memcpy.
    if (y == lastY_)
      std::memmove(to, last_, from_.size() * sizeof(OpaqueColor));
    else if (natural_)
      std::memmove(to, row + from_.front(), from_.size() * sizeof(OpaqueColor));
    else
      std::transform(from_.begin(), from_.end(), to, [row](int x) { return row[x]; });
    lastY_ = y;
    last_ = to;
  }

 private:
  PlaneView<const OpaqueColor> picture_;
  bool natural_;
  std::vector<int> from_;
  int lastY_ = -1;
  const OpaqueColor* last_ = nullptr;
};

/// Target rows by bilinear interpolation between the centres of picture pixels; beyond the edge the edge pixels are
/// repeated. All sums are whole numbers: weights of 8 bits across and 8 bits down, rounded once.
class SmoothRows {
 public:
  SmoothRows(PlaneView<const OpaqueColor> picture, const Positions& columns) : picture_(picture) {
    for (const std::int64_t position : columns.at)
      across_.push_back({Inside((position - 128) >> 8, picture.width),
                         Inside(((position - 128) >> 8) + 1, picture.width),
                         static_cast<std::uint64_t>((position - 128) & 255)});
    upper_.sums.resize(across_.size());
    lower_.sums.resize(across_.size());
  }

  void Row(std::int64_t position, OpaqueColor* to) {
    const std::int64_t y = (position - 128) >> 8;
    const auto below = static_cast<std::uint64_t>((position - 128) & 255);
    Need(upper_, Inside(y, picture_.height));
    Need(lower_, Inside(y + 1, picture_.height));
    // Red and blue are 32 bits apart and green is separate, so that each sum has room for its 24 bits.
    constexpr std::uint64_t kRedBlue = 0x0000FFFF0000FFFF;
    for (std::size_t i = 0; i < across_.size(); ++i) {
      const std::uint64_t upper = upper_.sums[i];
      const std::uint64_t lower = lower_.sums[i];
      const std::uint64_t redBlue =
          (upper & kRedBlue) * (256 - below) + (lower & kRedBlue) * below + 0x0000800000008000;
      const std::uint64_t green = (upper >> 16 & 0xFFFF) * (256 - below) + (lower >> 16 & 0xFFFF) * below + 0x8000;
      to[i] = Opaque(
          static_cast<std::uint32_t>((redBlue >> 32 & 0xFF0000) | (green >> 8 & 0xFF00) | (redBlue >> 16 & 0xFF)));
    }
  }

 private:
  struct Across {
    int left, right;
    std::uint64_t share;  ///< of the right pixel, in 256ths
  };
  /// A picture row interpolated across: three sums of 16 bits per target pixel.
  struct Sums {
    int y = -1;
    std::vector<std::uint64_t> sums;
  };

  static int Inside(std::int64_t position, int size) {
    return static_cast<int>(std::clamp<std::int64_t>(position, 0, size - 1));
  }
  static std::uint64_t Spread(OpaqueColor color) {
    return static_cast<std::uint64_t>(color & 0xFF0000) << 16 | (color & 0xFF00) << 8 | (color & 0xFF);
  }
  void Need(Sums& row, int y) {
    if (row.y == y) return;
    if (&row == &upper_ && lower_.y == y) return std::swap(upper_, lower_);
    const OpaqueColor* const from = picture_.Row(y);
    for (std::size_t i = 0; i < across_.size(); ++i)
      row.sums[i] =
          Spread(from[across_[i].left]) * (256 - across_[i].share) + Spread(from[across_[i].right]) * across_[i].share;
    row.y = y;
  }

  PlaneView<const OpaqueColor> picture_;
  std::vector<Across> across_;
  Sums upper_, lower_;
};

/// Mixes each component by that of the mask: 0 shows the picture, 255 leaves what was there.
OpaqueColor Masked(OpaqueColor under, OpaqueColor over, OpaqueColor mask) {
  const auto mixed = [=](int shift) {
    const Color hides = mask >> shift & 0xFF;
    return ((under >> shift & 0xFF) * hides + (over >> shift & 0xFF) * (255 - hides) + 127) / 255 << shift;
  };
  return Opaque(mixed(16) | mixed(8) | mixed(0));
}

template <class Rows>
void DrawRows(Rows source, const Positions& columns, const Positions& rows, PlaneView<OpaqueColor> device,
              const Ref<Picture>& mask) {
  std::vector<OpaqueColor> line(mask ? columns.at.size() : 0);
  for (std::size_t j = 0; j < rows.at.size(); ++j) {
    OpaqueColor* const to = device.Row(static_cast<int>(rows.first) + static_cast<int>(j)) + columns.first;
    source.Row(rows.at[j], mask ? line.data() : to);
    if (!mask) continue;
    const OpaqueColor* const hides = mask->Pixels().Row(rows.Pixel(j));
    for (std::size_t i = 0; i < line.size(); ++i) to[i] = Masked(to[i], line[i], hides[columns.Pixel(i)]);
  }
}

}  // namespace

void Graphics::DrawPicture(const Ref<Picture>& picture, int x, int y, int w, int h, int sx, int sy, int sw, int sh) {
  if (!picture) return;
  const auto orOwn = [](int size, int own) { return size == kOwnSize ? own : size; };
  w = orOwn(w, picture->Width());
  h = orOwn(h, picture->Height());
  sw = orOwn(sw, picture->Width());
  sh = orOwn(sh, picture->Height());
  if (w < 1 || h < 1 || sw < 1 || sh < 1) return;

  const Span target = ToDevice(x, y, w, h);
  const Span seen = Visible(target);
  if (seen.x0 >= seen.x1 || seen.y0 >= seen.y1) return;
  const Positions columns = PositionsAlong(target.x0, target.x1, seen.x0, seen.x1, sx, sw, picture->Width());
  const Positions rows = PositionsAlong(target.y0, target.y1, seen.y0, seen.y1, sy, sh, picture->Height());
  if (columns.at.empty() || rows.at.empty()) return;

  const Ref<Picture> mask = picture->HasMask() ? picture->Mask() : nullptr;
  const bool natural = columns.natural && rows.natural;
  const Span area{columns.first, columns.first + std::ssize(columns.at), rows.first, rows.first + std::ssize(rows.at)};
  Touch(x, y, w, h);
  const bool covers = !mask && IsBackdrop(area);
  if (covers && natural && area.x1 == picture->Width() && area.y1 == picture->Height()) {
    *backdrop_ = {Opaque(kBlack), picture->SharedPixels()};
    return;
  }
  if (covers)
    backdrop_->reset();  // every pixel is overwritten
  else
    WriteBackdrop();
  if (UseOldRenderer || natural)
    DrawRows(HardRows(picture->PixelsToRead(), columns), columns, rows, device_, mask);
  else
    DrawRows(SmoothRows(picture->PixelsToRead(), columns), columns, rows, device_, mask);
}

}  // namespace platform

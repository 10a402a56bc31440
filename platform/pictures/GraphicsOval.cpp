#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <vector>

#include "platform/pictures/Graphics.h"

namespace platform {

namespace {

__extension__ typedef __int128 Wide;

/// An ellipse inscribed in a rectangle of w by h pixels. Coordinates are half pixels from its centre, so that every
/// pixel centre has whole coordinates.
struct Ellipse {
  std::int64_t w, h;

  /// The rightmost pixel of the row at v whose centre lies in the ellipse; -1 if there is none.
  std::int64_t Reach(std::int64_t v) const {
    if (w < 1 || v >= h) return -1;
    const double height = static_cast<double>(v) / static_cast<double>(h);
    auto u = static_cast<std::int64_t>(static_cast<double>(w) * std::sqrt(1.0 - height * height));
    // The square root is an estimate, corrected in exact arithmetic. Pixel centres have odd coordinates if w is even,
    // even ones if w is odd.
    u += (u + w + 1) % 2;
    while (u >= 0 && !Holds(u, v)) u -= 2;
    while (Holds(u + 2, v)) u += 2;
    return std::max<std::int64_t>(u, -1);
  }

 private:
  bool Holds(std::int64_t u, std::int64_t v) const {
    return Wide{u} * u * h * h <= Wide{w} * w * (Wide{h} * h - Wide{v} * v);
  }
};

/// A row of the upper left quarter of an outline: how much of each pixel from column `first` on it covers, in 256ths.
struct OutlineRow {
  std::int64_t first = 0;
  std::vector<std::uint32_t> parts;
};

/// The outline of an ellipse inscribed in a rectangle of device pixels. The other quarters mirror the upper left one.
struct Outline {
  std::int64_t width, height;
  double penWidth, penHeight;
  friend bool operator==(const Outline&, const Outline&) = default;

  std::int64_t Middle() const { return (width + 1) / 2; }
  bool IsKept() const { return std::max(width, height) <= 1024; }
  /// Columns `from` to `to`, excluded, of a row. The part of a pixel is averaged over 32 lines through it and exact
  /// along each line.
  OutlineRow Row(std::int64_t upper, std::int64_t from, std::int64_t to) const {
    constexpr int kLines = 32;
    const double a = static_cast<double>(width) / 2.0;
    const double b = static_cast<double>(height) / 2.0;
    const double freeA = a - penWidth;
    const double freeB = b - penHeight;
    double begin[kLines];
    double end[kLines];
    double first = a;
    double last = 0.0;
    for (int i = 0; i < kLines; ++i) {
      const double v = b - (static_cast<double>(upper) + (2 * i + 1) / (2.0 * kLines));
      begin[i] = a - a * std::sqrt(1.0 - (v / b) * (v / b));
      const bool hollow = freeA > 0.0 && std::fabs(v) < freeB;
      end[i] = hollow ? a - freeA * std::sqrt(1.0 - (v / freeB) * (v / freeB)) : a;
      first = std::min(first, begin[i]);
      last = std::max(last, end[i]);
    }

    OutlineRow row;
    row.first = std::max(from, static_cast<std::int64_t>(std::floor(first)));
    to = std::min(to, static_cast<std::int64_t>(std::ceil(last)));
    for (std::int64_t column = row.first; column < to; ++column) {
      const auto left = static_cast<double>(column);
      double covered = 0.0;
      for (int i = 0; i < kLines; ++i)
        covered += std::max(0.0, std::min(end[i], left + 1.0) - std::max(begin[i], left));
      // The left half of the ellipse covers only the left half of a central column.
      if (left + 1.0 > a) covered *= 2.0;
      row.parts.push_back(static_cast<std::uint32_t>(std::floor(covered * (256.0 / kLines) + 0.5)));
    }
    return row;
  }
};

/// All columns of a row. The rows of the last outline are kept: the same circle is drawn on all maps in turn.
const OutlineRow& KeptRow(const Outline& outline, std::int64_t upper) {
  thread_local Outline kept{};
  thread_local std::vector<std::optional<OutlineRow>> rows;
  if (kept != outline) {
    kept = outline;
    rows.assign(static_cast<std::size_t>((outline.height + 1) / 2), std::nullopt);
  }
  auto& row = rows[static_cast<std::size_t>(upper)];
  if (!row) row = outline.Row(upper, 0, outline.Middle());
  return *row;
}

/// Mixes two colours: `part` / 256 of `over`, the rest of `under`.
OpaqueColor Mix(OpaqueColor under, Color over, std::uint32_t part) {
  const std::uint32_t redBlue = (under & 0xFF00FF) * (256 - part) + (over & 0xFF00FF) * part + 0x800080;
  const std::uint32_t green = (under & 0x00FF00) * (256 - part) + (over & 0x00FF00) * part + 0x008000;
  return Opaque((redBlue >> 8 & 0xFF00FF) | (green >> 8 & 0x00FF00));
}

}  // namespace

void Graphics::DrawOval(int x, int y, int w, int h) {
  if (w < 1 || h < 1 || PenWidth < 1 || PenHeight < 1) return;
  if (UseOldRenderer)
    DrawHardOval(x, y, w, h);
  else
    DrawSmoothOval(x, y, w, h);
  Touch(x, y, w, h);
}

/// A pixel is part of the outline if its centre lies between the outer and the inner ellipse, or in the outer one with
/// one of its four neighbours outside: so the outline of a very flat ellipse has no gap.
void Graphics::DrawHardOval(int x, int y, int w, int h) {
  const Ellipse outer{w, h};
  const Ellipse inner{std::int64_t{w} - 2 * std::int64_t{PenWidth}, std::int64_t{h} - 2 * std::int64_t{PenHeight}};
  const std::int64_t top = std::max(y, clip_.y);
  const std::int64_t bottom = std::min(std::int64_t{y} + h, std::int64_t{clip_.y} + clip_.height);
  for (std::int64_t row = top; row < bottom; ++row) {
    const std::int64_t v = std::abs(2 * (row - y) + 1 - h);
    const std::int64_t reach = outer.Reach(v);
    if (reach < 0) continue;
    const std::int64_t free = std::min({inner.Reach(v), outer.Reach(v + 2), reach - 2});
    const std::int64_t left = x + (w - 1 - reach) / 2;
    if (free < 0) {
      Fill(left, row, reach + 1, 1);
    } else {
      Fill(left, row, (reach - free) / 2, 1);
      Fill(x + (w + free + 1) / 2, row, (reach - free) / 2, 1);
    }
  }
}

void Graphics::DrawSmoothOval(int x, int y, int w, int h) {
  const Span box = ToDevice(x, y, w, h);
  const Span seen = Visible(box);
  if (seen.x0 >= seen.x1) return;
  WriteBackdrop();
  const Outline outline{box.x1 - box.x0, box.y1 - box.y0, PenWidth * scale_, PenHeight * scale_};
  // Distances of the visible columns from the nearer side of the box.
  const std::int64_t from = std::min(seen.x0 - box.x0, box.x1 - seen.x1);
  const std::int64_t to = std::min({seen.x1 - box.x0, box.x1 - seen.x0, outline.Middle()});
  OutlineRow own;
  for (std::int64_t row = seen.y0; row < seen.y1; ++row) {
    const std::int64_t upper = std::min(row - box.y0, box.y1 - 1 - row);
    const OutlineRow& covered = outline.IsKept() ? KeptRow(outline, upper) : (own = outline.Row(upper, from, to));
    OpaqueColor* const pixels = device_.Row(static_cast<int>(row));
    const auto mix = [&](std::int64_t column, std::uint32_t part) {
      if (column >= seen.x0 && column < seen.x1) pixels[column] = Mix(pixels[column], ForeColor, part);
    };
    for (std::size_t i = 0; i < covered.parts.size(); ++i) {
      const std::int64_t left = covered.first + static_cast<std::int64_t>(i);
      mix(box.x0 + left, covered.parts[i]);
      if (2 * left + 1 != outline.width) mix(box.x1 - 1 - left, covered.parts[i]);
    }
  }
}

}  // namespace platform

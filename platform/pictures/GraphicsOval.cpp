#include <algorithm>
#include <cmath>
#include <cstdlib>

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

/// Mixes two colours: `part` / 256 of `over`, the rest of `under`.
Color Mix(Color under, Color over, std::uint32_t part) {
  const std::uint32_t redBlue = (under & 0xFF00FF) * (256 - part) + (over & 0xFF00FF) * part + 0x800080;
  const std::uint32_t green = (under & 0x00FF00) * (256 - part) + (over & 0x00FF00) * part + 0x008000;
  return (redBlue >> 8 & 0xFF00FF) | (green >> 8 & 0x00FF00);
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

/// The weight of the colour in a device pixel is the share of the pixel that the outline covers, averaged over 32 lines
/// through it and exact along each line. Only the upper left quarter is computed; the others mirror it.
void Graphics::DrawSmoothOval(int x, int y, int w, int h) {
  constexpr int kLines = 32;
  const Span box = ToDevice(x, y, w, h);
  const Span seen = Visible(box);
  Begin(seen, false);
  const std::int64_t width = box.x1 - box.x0;
  const std::int64_t height = box.y1 - box.y0;
  const double a = static_cast<double>(width) / 2.0;
  const double b = static_cast<double>(height) / 2.0;
  const double freeA = a - PenWidth * scale_;
  const double freeB = b - PenHeight * scale_;
  const Color over = ForeColor & kWhite;

  for (std::int64_t row = seen.y0; row < seen.y1; ++row) {
    const auto upper = static_cast<double>(std::min(row - box.y0, box.y1 - 1 - row));
    double begin[kLines];
    double end[kLines];
    double first = a;
    double last = 0.0;
    for (int i = 0; i < kLines; ++i) {
      const double v = b - (upper + (2 * i + 1) / (2.0 * kLines));
      begin[i] = a - a * std::sqrt(1.0 - (v / b) * (v / b));
      const bool hollow = freeA > 0.0 && std::fabs(v) < freeB;
      end[i] = hollow ? a - freeA * std::sqrt(1.0 - (v / freeB) * (v / freeB)) : a;
      first = std::min(first, begin[i]);
      last = std::max(last, end[i]);
    }

    Color* const pixels = device_.Row(static_cast<int>(row));
    const auto mix = [&](std::int64_t from, std::int64_t to) {
      for (std::int64_t column = std::max(from, seen.x0); column < std::min(to, seen.x1); ++column) {
        const auto left = static_cast<double>(std::min(column - box.x0, box.x1 - 1 - column));
        double covered = 0.0;
        for (int i = 0; i < kLines; ++i)
          covered += std::max(0.0, std::min(end[i], left + 1.0) - std::max(begin[i], left));
        // The left half of the ellipse covers only the left half of a central column.
        if (left + 1.0 > a) covered *= 2.0;
        const auto part = static_cast<std::uint32_t>(covered * (256.0 / kLines) + 0.5);
        pixels[column] = Mix(pixels[column], over, part) | upperByte_;
      }
    };
    const auto near = static_cast<std::int64_t>(std::floor(first));
    const auto far = static_cast<std::int64_t>(std::ceil(last));
    mix(box.x0 + near, box.x0 + far);
    mix(box.x1 - std::min(far, width / 2), box.x1 - near);
  }
}

}  // namespace platform

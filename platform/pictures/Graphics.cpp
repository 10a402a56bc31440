#include "platform/pictures/Graphics.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/values/Numbers.h"

namespace platform {

namespace {

TextDrawing textDrawing;

/// Part of a line or frame along one axis: from a to b, b excluded.
struct Range {
  std::int64_t a, b;
};

Range Common(Range one, Range other) { return {std::max(one.a, other.a), std::min(one.b, other.b)}; }

}  // namespace

void SetTextDrawing(TextDrawing drawing) { textDrawing = drawing; }

Graphics::Graphics(PlaneView<OpaqueColor> device, double scale, int width, int height, std::vector<Rect>* touched)
    : device_(device), scale_(scale), width_(width), height_(height), clip_{0, 0, width, height}, touched_(touched) {}

void Graphics::Clip(int x, int y, int w, int h) {
  const Range across = Common({x, std::int64_t{x} + w}, {0, width_});
  const Range down = Common({y, std::int64_t{y} + h}, {0, height_});
  clip_ = {};
  if (across.a < across.b && down.a < down.b)
    clip_ = {static_cast<int>(across.a), static_cast<int>(down.a), static_cast<int>(across.b - across.a),
             static_cast<int>(down.b - down.a)};
}

void Graphics::NoClip() { clip_ = {0, 0, width_, height_}; }

Graphics::Span Graphics::ToDevice(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h) const {
  // The surface ends with its last device pixel, which may be partly outside.
  const auto edge = [this](std::int64_t logical, int end, int deviceEnd) {
    if (scale_ == 1.0) return logical;
    return logical == end ? deviceEnd : static_cast<std::int64_t>(Round(static_cast<double>(logical) * scale_));
  };
  return {edge(x, width_, device_.width), edge(x + w, width_, device_.width), edge(y, height_, device_.height),
          edge(y + h, height_, device_.height)};
}

Graphics::Span Graphics::Visible(const Span& span) const {
  const Span clip = ToDevice(clip_.x, clip_.y, clip_.width, clip_.height);
  return {std::max(span.x0, clip.x0), std::min({span.x1, clip.x1, std::int64_t{device_.width}}),
          std::max(span.y0, clip.y0), std::min({span.y1, clip.y1, std::int64_t{device_.height}})};
}

bool Graphics::IsBackdrop(const Span& area) const {
  return backdrop_ && area.x0 == 0 && area.x1 == device_.width && area.y0 == 0 && area.y1 == device_.height;
}

void Graphics::WriteBackdrop() {
  if (!backdrop_ || !*backdrop_) return;
  const OpaqueColor* from = (*backdrop_)->pixels.get();
  for (int y = 0; y < device_.height; ++y, from += from ? device_.width : 0) {
    OpaqueColor* const to = device_.Row(y);
    if (from)
      std::copy_n(from, device_.width, to);
    else
      std::fill_n(to, device_.width, (*backdrop_)->color);
  }
  backdrop_->reset();
}

void Graphics::Fill(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h) {
  const Span area = Visible(ToDevice(x, y, w, h));
  if (area.x0 >= area.x1 || area.y0 >= area.y1) return;
  const OpaqueColor color = Opaque(ForeColor);
  if (IsBackdrop(area)) {
    *backdrop_ = {color, nullptr};
    return;
  }
  WriteBackdrop();
  for (std::int64_t row = area.y0; row < area.y1; ++row)
    std::fill_n(device_.Row(static_cast<int>(row)) + area.x0, area.x1 - area.x0, color);
}

void Graphics::Touch(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h) {
  if (!touched_) return;
  const Range across = Common({x, x + w}, {clip_.x, clip_.x + clip_.width});
  const Range down = Common({y, y + h}, {clip_.y, clip_.y + clip_.height});
  if (across.a < across.b && down.a < down.b)
    touched_->push_back({static_cast<int>(across.a), static_cast<int>(down.a), static_cast<int>(across.b - across.a),
                         static_cast<int>(down.b - down.a)});
}

void Graphics::DrawLine(int x1, int y1, int x2, int y2) {
  if (PenWidth < 1 || PenHeight < 1) return;
  const std::int64_t dx = std::int64_t{x2} - x1;
  const std::int64_t dy = std::int64_t{y2} - y1;
  Touch(std::min(x1, x2), std::min(y1, y2), std::abs(dx) + PenWidth, std::abs(dy) + PenHeight);
  if (dx == 0 || dy == 0)
    return Fill(std::min(x1, x2), std::min(y1, y2), std::abs(dx) + PenWidth, std::abs(dy) + PenHeight);

  // Pixel i of the line lies i steps along its longer axis and Floor(i * rise / length + 1/2) along the other. Only the
  // steps whose pen reaches into the clip are drawn; the products fit into 64 unsigned bits.
  const bool flat = std::abs(dx) >= std::abs(dy);
  const auto length = static_cast<std::uint64_t>(std::abs(flat ? dx : dy));
  const auto rise = static_cast<std::uint64_t>(std::abs(flat ? dy : dx));
  const bool forward = (flat ? dx : dy) > 0;
  const std::int64_t start = flat ? x1 : y1;
  const Range reach = flat ? Range{std::int64_t{clip_.x} - PenWidth + 1, std::int64_t{clip_.x} + clip_.width}
                           : Range{std::int64_t{clip_.y} - PenHeight + 1, std::int64_t{clip_.y} + clip_.height};
  const Range steps =
      Common(forward ? Range{reach.a - start, reach.b - start} : Range{start - reach.b + 1, start - reach.a + 1},
             {0, static_cast<std::int64_t>(length) + 1});
  if (steps.a >= steps.b) return;

  std::uint64_t whole = static_cast<std::uint64_t>(steps.a) * rise / length;
  std::uint64_t part = static_cast<std::uint64_t>(steps.a) * rise % length;
  for (std::int64_t i = steps.a; i < steps.b; ++i) {
    const auto across = static_cast<std::int64_t>(whole + (2 * part >= length));
    const std::int64_t x = flat ? x1 + (dx > 0 ? i : -i) : x1 + (dx > 0 ? across : -across);
    const std::int64_t y = flat ? y1 + (dy > 0 ? across : -across) : y1 + (dy > 0 ? i : -i);
    Fill(x, y, PenWidth, PenHeight);
    part += rise;
    if (part >= length) part -= length, ++whole;
  }
}

void Graphics::DrawRect(int x, int y, int w, int h) {
  if (w < 1 || h < 1 || PenWidth < 1 || PenHeight < 1) return;
  const std::int64_t across = std::min(PenWidth, w);
  const std::int64_t down = std::min(PenHeight, h);
  Fill(x, y, w, down);
  Fill(x, y + (h - down), w, down);
  Fill(x, y, across, h);
  Fill(x + (w - across), y, across, h);
  Touch(x, y, w, h);
}

void Graphics::FillRect(int x, int y, int w, int h) {
  if (w < 1 || h < 1) return;
  Fill(x, y, w, h);
  Touch(x, y, w, h);
}

void Graphics::DrawString(const String& text, int x, int y) {
  if (!textDrawing.draw || !device_.data) return;
  WriteBackdrop();
  textDrawing.draw(*this, clip_, text, x, y);
  // Glyphs may overhang their advance widths: the rectangle has a margin for that on every side.
  const auto width = static_cast<std::int64_t>(std::ceil(StringWidth(text)));
  const std::int64_t size = TextSize;
  Touch(x - size, y - 2 * size, width + 2 * size, 3 * size);
}

double Graphics::StringWidth(const String& text) const {
  return textDrawing.width ? textDrawing.width(*this, text) : 0.0;
}

}  // namespace platform

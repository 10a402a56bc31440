#include "stack/PlaneStack.h"

#include <algorithm>

#include "platform/values/Errors.h"
#include "platform/values/Memory.h"

namespace {

/// Levels from one row to the next: whole cache lines, but never a multiple of 4 KB, because the rows that a 3 by 3
/// filter uses together would then map to the same cache set.
constexpr std::size_t Pitch(int width) {
  constexpr std::size_t line = 64 / sizeof(PlaneStack::Level);
  const std::size_t pitch = (static_cast<std::size_t>(width) + line - 1) / line * line;
  return pitch % (4096 / sizeof(PlaneStack::Level)) == 0 ? pitch + line : pitch;
}

}  // namespace

/// Appends planes of zeroes until there are `count`.
void PlaneStack::Append(std::vector<Memory>& planes, std::size_t count, int width, int height) {
  const std::size_t size = Pitch(width) * static_cast<std::size_t>(height) * sizeof(Level);
  planes.reserve(count);
  if (size == 0) return planes.resize(count);
  // Planes that are smaller than a huge page lie together on some.
  constexpr std::size_t largestBlock = 8 * platform::kHugePage;
  while (planes.size() < count) {
    std::size_t together = std::min(count - planes.size(), largestBlock / size);
    if (size >= platform::kHugePage || together * size < platform::kHugePage) together = 1;
    const auto block = std::static_pointer_cast<Level>(platform::AllocateZeroed(together * size));
    for (std::size_t i = 0; i < together; ++i) planes.emplace_back(block, block.get() + i * size);
  }
}

int PlaneStack::Ubound(int dimension) const {
  switch (dimension) {
    case 1:
      return static_cast<int>(planes_.size()) - 1;
    case 2:
      return width_ - 1;
    case 3:
      return height_ - 1;
    default:
      platform::ThrowOutOfBounds("dimension", dimension, 3);
  }
}

void PlaneStack::Redim(int species, int x, int y) {
  for (int bound : {species, x, y})
    if (bound < -1) platform::ThrowOutOfBounds("Redim", bound, -1);
  const int width = x + 1, height = y + 1;
  const auto count = static_cast<std::size_t>(species) + 1;

  if (count < planes_.size()) planes_.resize(count);
  if (width != width_ || height != height_) {
    const auto sharedWidth = static_cast<std::size_t>(std::min(width, width_));
    const auto sharedHeight = static_cast<std::size_t>(std::min(height, height_));
    std::vector<Memory> resized;
    Append(resized, planes_.size(), width, height);
    // Plane by plane, so that old and new memory are not held for all planes at once. Zeroes are not copied.
    for (std::size_t s = 0; s < planes_.size(); ++s) {
      for (std::size_t row = 0; row < sharedHeight && sharedWidth > 0; ++row) {
        const Level* from = planes_[s].get() + row * Pitch(width_);
        if (std::any_of(from, from + sharedWidth, [](Level level) { return level != 0; }))
          std::copy_n(from, sharedWidth, resized[s].get() + row * Pitch(width));
      }
      planes_[s] = nullptr;
    }
    planes_ = std::move(resized);
    width_ = width;
    height_ = height;
  }
  Append(planes_, count, width, height);
}

void PlaneStack::Check(int species, int x, int y) const {
  if (species < 0 || species > Ubound(1)) platform::ThrowOutOfBounds("species", species, Ubound(1));
  if (x < 0 || x >= width_) platform::ThrowOutOfBounds("x", x, width_ - 1);
  if (y < 0 || y >= height_) platform::ThrowOutOfBounds("y", y, height_ - 1);
}

PlaneStack::Reference& PlaneStack::Reference::operator=(std::int32_t value) {
  if (value < 0 || value > 255) platform::ThrowOutOfBounds("grey level", value, 255);
  level_ = static_cast<Level>(value);
  return *this;
}

PlaneStack::Reference PlaneStack::operator()(int species, int x, int y) {
  Check(species, x, y);
  return Reference(Plane(species)(x, y));
}

std::int32_t PlaneStack::operator()(int species, int x, int y) const {
  Check(species, x, y);
  return Plane(species)(x, y);
}

platform::PlaneView<PlaneStack::Level> PlaneStack::Plane(int species) {
  if (species < 0 || species > Ubound(1)) platform::ThrowOutOfBounds("species", species, Ubound(1));
  Level* data = planes_[static_cast<std::size_t>(species)].get();
  return {data, width_, height_, static_cast<std::ptrdiff_t>(Pitch(width_))};
}

platform::PlaneView<const PlaneStack::Level> PlaneStack::Plane(int species) const {
  return const_cast<PlaneStack*>(this)->Plane(species);
}

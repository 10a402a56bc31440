#pragma once
/// What the pixel loops that stream through whole planes have in common. Planes are larger than the caches near the
/// processor, and the processor's own reading ahead stops at each page: a loop that asks for its memory early waits
/// half as long. Loops with table look-ups also gain from moving two 32-bit pixels at a time.

#include <bit>
#include <cstdint>
#include <cstring>

/// Pixels of a cache line: what a loop does between two requests.
constexpr int kPixelsPerLine = 16;
/// How far ahead memory is requested, in pixels. Measured; a quarter of it does as well.
constexpr int kPixelsAhead = 1024;

/// The address may lie beyond the plane, where a request does nothing: hence a number and not a pointer.
template <class Pixel>
const void* Ahead(const Pixel* pixels) {
  return reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(pixels) + kPixelsAhead * sizeof(Pixel));
}
template <class Pixel>
void RequestForReading(const Pixel* pixels) {
  __builtin_prefetch(Ahead(pixels), 0);
}
template <class Pixel>
void RequestForWriting(Pixel* pixels) {
  __builtin_prefetch(Ahead(pixels), 1);
}

/// Two neighbours in one word, the first in its lower half.
template <class Pixel>
std::uint64_t LoadPair(const Pixel* pixels) {
  static_assert(sizeof(Pixel) == 4 && std::endian::native == std::endian::little);
  std::uint64_t pair;
  std::memcpy(&pair, pixels, sizeof(pair));
  return pair;
}
template <class Pixel>
void StorePair(std::uint64_t pair, Pixel* pixels) {
  static_assert(sizeof(Pixel) == 4 && std::endian::native == std::endian::little);
  std::memcpy(pixels, &pair, sizeof(pair));
}

#pragma once
/// The bytes of an image file, read when a decoder asks for them.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace platform {

/// A file, or bytes in memory. Nothing is mapped, so a file that another program shortens meanwhile gives a short read
/// and no signal. Memory must outlive its source.
class ByteSource {
 public:
  // Implicit, so that a reader takes bytes in memory as they are.
  ByteSource(std::span<const std::uint8_t> memory) : window_(memory), size_(memory.size()) {}
  /// Opens a regular file. Throws ReadFailure if it is none, is empty or cannot be opened.
  explicit ByteSource(const std::filesystem::path& path);
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  ~ByteSource();

  /// The size when the source was opened.
  std::uint64_t Size() const { return size_; }

  /// Copies `count` bytes from `position` on; fewer where the file ends. Returns how many.
  std::size_t Read(std::uint64_t position, void* target, std::size_t count);

  /// The same, as a new array.
  std::vector<std::uint8_t> Bytes(std::uint64_t position, std::uint64_t count);

  /// Single numbers. Throw ReadFailure, "truncated", at a position that the file lacks.
  std::uint32_t Byte(std::uint64_t position) {
    if (position - windowStart_ >= window_.size()) RequireWindow(position);
    return window_[position - windowStart_];
  }
  std::uint32_t Big16(std::uint64_t position) { return Byte(position) << 8 | Byte(position + 1); }
  std::uint32_t Big32(std::uint64_t position) { return Big16(position) << 16 | Big16(position + 2); }
  std::uint32_t Little16(std::uint64_t position) { return Byte(position + 1) << 8 | Byte(position); }
  std::uint32_t Little32(std::uint64_t position) { return Little16(position + 2) << 16 | Little16(position); }

 private:
  std::size_t ReadFile(std::uint64_t position, void* target, std::size_t count) const;
  void MoveWindow(std::uint64_t position);
  void RequireWindow(std::uint64_t position);

  int file_ = -1;
  std::vector<std::uint8_t> buffer_;
  std::span<const std::uint8_t> window_;  // what is in memory: a part of the file, or all
  std::uint64_t windowStart_ = 0;
  std::uint64_t size_ = 0;
};

}  // namespace platform

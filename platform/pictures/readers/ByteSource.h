#pragma once
/// The bytes of an image file, read on demand.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace platform {

/// A file, or bytes in memory. Files are read, not mapped: if another program shortens the file meanwhile, a read comes
/// back short instead of raising a signal. The memory must outlive the source.
class ByteSource {
 public:
  // Implicit, so that bytes in memory can be passed to a reader.
  ByteSource(std::span<const std::uint8_t> memory) : window_(memory), size_(memory.size()) {}
  /// Opens a file. Throws ReadFailure if it is not a regular file, is empty or cannot be opened.
  explicit ByteSource(const std::filesystem::path& path);
  /// `count` bytes of `whole` from `position` on, fewer at its end. `whole` must outlive them.
  ByteSource(const ByteSource& whole, std::uint64_t position, std::uint64_t count);
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  ~ByteSource();

  /// The size when the source was opened.
  std::uint64_t Size() const { return size_; }

  /// Copies `count` bytes from `position` on, fewer at the end of the file. Returns how many.
  std::size_t Read(std::uint64_t position, void* target, std::size_t count);

  /// The same, as a new vector.
  std::vector<std::uint8_t> Bytes(std::uint64_t position, std::uint64_t count);

  /// Single numbers. Throw ReadFailure ("truncated") for a position past the end.
  std::uint32_t Byte(std::uint64_t position) {
    if (position - windowStart_ >= window_.size()) RequireWindow(position);
    return window_[position - windowStart_];
  }
  std::uint32_t Big16(std::uint64_t position) { return Byte(position) << 8 | Byte(position + 1); }
  std::uint32_t Little16(std::uint64_t position) { return Byte(position + 1) << 8 | Byte(position); }
  std::uint32_t Little32(std::uint64_t position) { return Little16(position + 2) << 16 | Little16(position); }

 private:
  std::size_t ReadFile(std::uint64_t position, void* target, std::size_t count) const;
  void MoveWindow(std::uint64_t position);
  void RequireWindow(std::uint64_t position);

  int file_ = -1;
  bool isPart_ = false;           // then the file is that of the whole
  std::uint64_t fileOffset_ = 0;  // of position 0 in the file
  std::vector<std::uint8_t> buffer_;
  std::span<const std::uint8_t> window_;  // the bytes in memory: a part of the file, or all
  std::uint64_t windowStart_ = 0;
  std::uint64_t size_ = 0;
};

}  // namespace platform

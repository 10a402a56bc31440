#pragma once
/// Reads the bytes of a file at any position. Past the end, ReadShort returns 0 and Read returns the bytes that the
/// file still has. A position below 0 or past the end is allowed; there is nothing to read there.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/values/Ref.h"

namespace platform {

class BinaryStream {
 public:
  /// nil if the file cannot be opened.
  static Ref<BinaryStream> Open(const std::filesystem::path& path);

  bool LittleEndian = false;
  void Position(std::int64_t position) { position_ = position; }
  std::int64_t Position() const { return position_; }

  /// A signed number of two bytes, or 0 if the file does not hold both. Moves the position by two.
  std::int16_t ReadShort();
  /// Up to `count` bytes. Moves the position by `count`.
  std::vector<std::uint8_t> Read(int count);
  void Close() { file_.reset(); }

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> file_;
  std::int64_t position_ = 0;
};

}  // namespace platform

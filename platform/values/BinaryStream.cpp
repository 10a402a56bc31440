#include "platform/values/BinaryStream.h"

#include <algorithm>
#include <limits>
#include <system_error>

namespace platform {

namespace {

/// Seeks to the position and returns the number of bytes from there to the end.
std::int64_t Seek(std::FILE* file, std::int64_t position) {
  static_assert(sizeof(off_t) == sizeof(std::int64_t));
  if (!file || position < 0 || fseeko(file, 0, SEEK_END) != 0) return 0;
  const std::int64_t left = ftello(file) - position;
  return left > 0 && fseeko(file, position, SEEK_SET) == 0 ? left : 0;
}

std::int64_t Moved(std::int64_t position, int count) {
  return position > std::numeric_limits<std::int64_t>::max() - count ? std::numeric_limits<std::int64_t>::max()
                                                                     : position + count;
}

}  // namespace

Ref<BinaryStream> BinaryStream::Open(const std::filesystem::path& path) {
  // A folder can be opened and then fails at every read; a pipe would keep the program waiting.
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return nullptr;
  auto stream = MakeRef<BinaryStream>();
  stream->file_.reset(std::fopen(path.c_str(), "rb"));
  return stream->file_ ? stream : nullptr;
}

std::int16_t BinaryStream::ReadShort() {
  const auto bytes = Read(2);
  if (bytes.size() < 2) return 0;
  const int low = bytes[LittleEndian ? 0 : 1];
  const int high = bytes[LittleEndian ? 1 : 0];
  return static_cast<std::int16_t>(high << 8 | low);
}

std::vector<std::uint8_t> BinaryStream::Read(int count) {
  if (count < 1) return {};
  // Allocate no more than the file holds: a wrong count in a file costs no memory.
  const auto room = std::min<std::int64_t>(count, Seek(file_.get(), position_));
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(room));
  if (room > 0) bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file_.get()));
  position_ = Moved(position_, count);
  return bytes;
}

}  // namespace platform

#include "platform/pictures/readers/ByteSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

/// Shorter reads go through the window; longer ones go straight to their target.
constexpr std::size_t kWindow = std::size_t{1} << 16;

}  // namespace

ByteSource::ByteSource(const std::filesystem::path& path) {
  // Opened without blocking, in case the name is that of a pipe.
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) throw ReadFailure(std::string("cannot be read: ") + std::strerror(errno));
  struct stat status {};
  const bool regular = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  if (!regular || status.st_size <= 0) {
    close(file);
    throw ReadFailure(regular ? "not an image: the file is empty" : "not an image: no regular file");
  }
  file_ = file;
  size_ = static_cast<std::uint64_t>(status.st_size);
}

ByteSource::ByteSource(const ByteSource& whole, std::uint64_t position, std::uint64_t count)
    : file_(whole.file_), isPart_(true) {
  position = std::min(position, whole.size_);
  size_ = std::min(count, whole.size_ - position);
  fileOffset_ = whole.fileOffset_ + position;
  if (file_ < 0) window_ = whole.window_.subspan(position, size_);
}

ByteSource::~ByteSource() {
  if (file_ >= 0 && !isPart_) close(file_);
}

std::size_t ByteSource::Read(std::uint64_t position, void* target, std::size_t count) {
  count = position < size_ ? static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - position)) : 0;
  if (count == 0) return 0;
  std::uint64_t inWindow = position - windowStart_;
  if (inWindow >= window_.size() || window_.size() - inWindow < count) {
    if (count >= kWindow) return ReadFile(position, target, count);
    MoveWindow(position);
    inWindow = 0;
    count = std::min(count, window_.size());
  }
  std::copy_n(window_.data() + inWindow, count, static_cast<std::uint8_t*>(target));
  return count;
}

std::vector<std::uint8_t> ByteSource::Bytes(std::uint64_t position, std::uint64_t count) {
  std::vector<std::uint8_t> bytes(position < size_ ? std::min(count, size_ - position) : 0);
  bytes.resize(Read(position, bytes.data(), bytes.size()));
  return bytes;
}

std::size_t ByteSource::ReadFile(std::uint64_t position, void* target, std::size_t count) const {
  auto* out = static_cast<std::uint8_t*>(target);
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = pread(file_, out + done, count - done, static_cast<off_t>(fileOffset_ + position + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

void ByteSource::MoveWindow(std::uint64_t position) {
  buffer_.resize(kWindow);
  const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(kWindow, size_ - position));
  window_ = std::span(buffer_).first(ReadFile(position, buffer_.data(), count));
  windowStart_ = position;
}

void ByteSource::RequireWindow(std::uint64_t position) {
  if (file_ >= 0 && position < size_) MoveWindow(position);
  if (position - windowStart_ >= window_.size()) throw ReadFailure("truncated: the data end too early");
}

}  // namespace platform

#include "platform/pictures/readers/PictureReaders.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

using namespace std::string_view_literals;

bool BeginsWithOneOf(std::span<const std::uint8_t> bytes, std::initializer_list<std::string_view> beginnings) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [text](std::string_view beginning) { return text.starts_with(beginning); });
}

bool LooksLikeTiff(std::span<const std::uint8_t> bytes) {
  return BeginsWithOneOf(bytes, {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv});
}

bool LooksLikeBmp(std::span<const std::uint8_t> bytes) {
  // Two letters alone are the beginning of many a text; the size of the second header tells.
  return BeginsWithOneOf(bytes, {"BM"sv}) && bytes.size() > 18 && bytes[15] == 0 && bytes[16] == 0 && bytes[17] == 0 &&
         (bytes[14] == 12 || (bytes[14] >= 40 && bytes[14] <= 124));
}

bool LooksLikeToolkitPicture(std::span<const std::uint8_t> bytes) {
  return BeginsWithOneOf(bytes, {"\xFF\xD8\xFF"sv, "GIF87a"sv, "GIF89a"sv}) || LooksLikeBmp(bytes);
}

/// The bytes of a file, mapped where the file system can do it, else read.
class FileBytes {
 public:
  explicit FileBytes(const std::filesystem::path& path) {
    // Opening without waiting, so that a pipe of that name does not hold the program up.
    const Descriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (file.number < 0) throw ReadFailure(std::string("cannot be read: ") + std::strerror(errno));
    struct stat status {};
    if (fstat(file.number, &status) != 0 || !S_ISREG(status.st_mode))
      throw ReadFailure("not an image: no regular file");
    if (status.st_size > 0) Load(file.number, static_cast<std::size_t>(status.st_size));
    if (Bytes().empty()) throw ReadFailure("not an image: the file is empty");
  }
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;
  ~FileBytes() {
    if (mapped_ != MAP_FAILED) munmap(mapped_, size_);
  }

  std::span<const std::uint8_t> Bytes() const {
    return mapped_ == MAP_FAILED ? std::span(read_) : std::span(static_cast<const std::uint8_t*>(mapped_), size_);
  }

 private:
  struct Descriptor {
    int number;
    ~Descriptor() {
      if (number >= 0) close(number);
    }
  };

  void Load(int file, std::size_t size) {
    mapped_ = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
    if (mapped_ != MAP_FAILED) {
      size_ = size;
      return;
    }
    read_.resize(size);
    std::size_t done = 0;
    for (ssize_t count = 1; count > 0 && done < size; done += static_cast<std::size_t>(std::max<ssize_t>(count, 0)))
      count = read(file, read_.data() + done, size - done);
    read_.resize(done);
  }

  void* mapped_ = MAP_FAILED;
  std::size_t size_ = 0;
  std::vector<std::uint8_t> read_;
};

}  // namespace

bool PictBeginsAt(std::span<const std::uint8_t> bytes, std::size_t place) {
  if (bytes.size() < place + 14) return false;
  const auto number = [&](std::size_t i) {
    return static_cast<std::int16_t>((bytes[place + i] << 8) | bytes[place + i + 1]);
  };
  // The size in bytes, the frame, the version.
  return number(6) > number(2) && number(8) > number(4) &&
         BeginsWithOneOf(bytes.subspan(place + 10), {"\0\x11\x02\xFF"sv, "\x11\x01"sv});
}

OpenedPicture ReadPicture(const std::filesystem::path& path) {
  OpenedPicture opened;
  const OpenedPicture failed = Guarded([&] {
    const FileBytes file(path);
    opened = ReadPicture(file.Bytes());
    return opened.picture;
  });
  return failed.failure.Empty() ? opened : failed;
}

OpenedPicture ReadPicture(std::span<const std::uint8_t> bytes) {
  if (LooksLikeTiff(bytes)) return ReadTiff(bytes);
  if (BeginsWithOneOf(bytes, {"\x89PNG"sv})) return ReadPng(bytes);
  if (LooksLikeToolkitPicture(bytes)) return ReadToolkitPicture(bytes);
  if (PictBeginsAt(bytes, kPictPreamble) || PictBeginsAt(bytes, 0)) return ReadPict(bytes);
  return {nullptr, "not an image: no TIFF, PNG, BMP, GIF, JPEG or PICT"};
}

}  // namespace platform

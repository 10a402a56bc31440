#include <libdeflate.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "platform/pictures/readers/PictureReaders.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// Corrects the checksum of every chunk; otherwise almost every mutation would be refused at the first one.
void CorrectChecksums(std::vector<std::uint8_t>& bytes) {
  std::size_t place = 8;
  while (bytes.size() >= place + 12) {
    const std::uint8_t* length = bytes.data() + place;
    const std::size_t content =
        std::size_t{length[0]} << 24 | std::size_t{length[1]} << 16 | std::size_t{length[2]} << 8 | length[3];
    if (content > bytes.size() - place - 12) return;
    const std::uint32_t sum = libdeflate_crc32(0, bytes.data() + place + 4, content + 4);
    for (std::size_t i = 0; i < 4; ++i) bytes[place + 8 + content + i] = static_cast<std::uint8_t>(sum >> (24 - 8 * i));
    place += 12 + content;
  }
}

}  // namespace

// Every input gives either a picture or a reason why there is none.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::uint8_t> bytes(data, data + size);
  CorrectChecksums(bytes);
  const platform::OpenedPicture opened = platform::ReadPng(std::span<const std::uint8_t>(bytes));
  if (static_cast<bool>(opened.picture) != opened.failure.Empty()) std::abort();
  return 0;
}

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "platform/pictures/readers/PictureReaders.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// VORNALITE_READER is one of the readers. Every input gives either a picture or a reason why there is none.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const platform::OpenedPicture opened = platform::VORNALITE_READER(std::span(data, size));
  if (static_cast<bool>(opened.picture) != opened.failure.Empty()) std::abort();
  return 0;
}

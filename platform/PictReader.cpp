#include "platform/ReaderTools.h"
namespace platform {
OpenedPicture ReadPict(std::span<const std::uint8_t>) {
  return {nullptr, "unsupported"};
}
}  // namespace platform

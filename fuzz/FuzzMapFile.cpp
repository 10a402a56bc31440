#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

#include "catalogue/MapFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

/// Streams read files, so each input is written to one, in memory: a disk would take longer than the test.
std::filesystem::path InputFile() {
  static const int file = memfd_create("input", MFD_CLOEXEC);
  return "/proc/self/fd/" + std::to_string(file);
}

void Require(bool holds) {
  if (!holds) std::abort();
}

std::int32_t VoteOn(const platform::Array<std::int32_t>& votes) {
  const std::int32_t value = MostLikely(votes)->value;
  const auto [low, high] = std::minmax_element(votes.begin(), votes.end());
  Require(value >= *low && value <= *high);
  return value;
}

}  // namespace

// The numbers that matter are few and far apart: the first bytes of the input are copied to their offsets in the file,
// which is the rest.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kPlaces[] = {1390, 1394, 1746, 1750, 2144, 2148, 2570,
                                     2820, 4292, 4556, 2172, 2174, 2498, 2502};
  constexpr std::size_t kNumbers = 2 * std::size(kPlaces);
  if (size < kNumbers) return 0;
  std::string bytes(data + kNumbers, data + size);
  for (std::size_t i = 0; i < std::size(kPlaces); ++i)
    if (kPlaces[i] + 2 <= bytes.size()) std::copy_n(data + 2 * i, 2, bytes.begin() + static_cast<int>(kPlaces[i]));
  std::ofstream(InputFile(), std::ios::binary) << bytes;

  auto stream = platform::BinaryStream::Open(InputFile());
  Require(static_cast<bool>(stream));
  const std::int32_t count = VoteOn(ImageCountVotes(*stream));
  VoteOn(PixelSizeVotes(*stream));
  const auto readName = [&](std::int32_t i) { Require(Len(Globals::ReadXrayGetImageName(stream, i)) <= 5); };
  for (std::int32_t i = 0; i <= std::min(count, 16); ++i) readName(i);
  for (const std::int32_t i :
       {count, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()})
    readName(i);
  return 0;
}

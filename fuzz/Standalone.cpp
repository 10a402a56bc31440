// Runs a fuzz target without a fuzzer on every file given: whole, truncated at many positions, and with bits flipped.
// The positions come from a fixed sequence, so that every run is the same.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kCuts = 48;
constexpr std::size_t kFlips = 96;

void Run(const Bytes& bytes) {
  // An exact copy on the heap, so that the sanitizer sees a read past the end.
  const Bytes copy(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(copy.data(), copy.size());
}

void Attack(const Bytes& whole) {
  Run(whole);
  for (std::size_t i = 0; i < kCuts; ++i)
    Run(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() * i / kCuts)));
  for (std::size_t i = 1; i <= 16 && i <= whole.size(); ++i)
    Run(Bytes(whole.begin(), whole.end() - static_cast<int>(i)));
  std::mt19937 random(1);
  for (std::size_t i = 0; i < kFlips && !whole.empty(); ++i) {
    Bytes damaged = whole;
    // Half of the flips hit the first or last 256 bytes, where headers and directories are.
    const std::size_t reach = i % 2 == 0 ? whole.size() : std::min<std::size_t>(whole.size(), 256);
    for (std::size_t flips = 1 + random() % 3; flips > 0; --flips) {
      const std::size_t place = random() % reach;
      damaged[i % 4 == 1 ? whole.size() - 1 - place : place] ^= static_cast<std::uint8_t>(1u << random() % 8);
    }
    Run(damaged);
  }
}

}  // namespace

int main(int count, char** arguments) {
  int files = 0;
  const auto attackFile = [&files](const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    Attack(Bytes(std::istreambuf_iterator<char>(file), {}));
    ++files;
  };
  for (int i = 1; i < count; ++i) {
    if (!std::filesystem::is_directory(arguments[i])) {
      attackFile(arguments[i]);
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[i]))
      if (entry.is_regular_file()) attackFile(entry.path());
  }
  if (files == 0) std::fprintf(stderr, "usage: %s file or folder ...\n", arguments[0]);
  return files == 0;
}

#include "platform/values/Memory.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <new>
#include <sstream>
#include <string>

namespace platform {

namespace {

constexpr double kUnlimited = std::numeric_limits<double>::infinity();
double testLimit = kUnlimited;

/// The number that follows `word` at the beginning of a line (the first number of the file if `word` is empty), or
/// `otherwise` if there is none.
double NumberIn(const std::filesystem::path& path, const std::string& word, double otherwise) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(word)) continue;
    std::istringstream rest(line.substr(word.size()));
    double number = 0;
    return rest >> number ? number : otherwise;
  }
  return otherwise;
}

/// Names of the files of a control group that describe its memory.
struct GroupFiles {
  const char *limit, *used, *reclaimable;
};

/// Bytes left by a control group and its ancestors. Inside a container the ancestors are not visible: its own group is
/// mounted at the top.
double LeftByGroups(const std::filesystem::path& mount, std::filesystem::path group, const GroupFiles& files) {
  double left = kUnlimited;
  for (group = group.relative_path();; group = group.parent_path()) {
    const auto folder = mount / group;
    const double limit = NumberIn(folder / files.limit, "", kUnlimited);
    const double used = NumberIn(folder / files.used, "", 0);
    left = std::min(left, limit - used + NumberIn(folder / "memory.stat", files.reclaimable, 0));
    if (group.empty()) return left;
  }
}

double LeftByGroups(const std::filesystem::path& root) {
  double left = kUnlimited;
  std::ifstream groups(root / "proc/self/cgroup");
  // A line is NUMBER:CONTROLLERS:PATH, with no controllers for the unified hierarchy.
  for (std::string line; std::getline(groups, line);) {
    const auto first = line.find(':'), second = line.find(':', first + 1);
    if (second == line.npos) continue;
    const std::string controllers = "," + line.substr(first + 1, second - first - 1) + ",",
                      path = line.substr(second + 1);
    if (controllers == ",,")
      left = std::min(left,
                      LeftByGroups(root / "sys/fs/cgroup", path, {"memory.max", "memory.current", "inactive_file "}));
    else if (controllers.find(",memory,") != controllers.npos)
      left = std::min(left, LeftByGroups(root / "sys/fs/cgroup/memory", path,
                                         {"memory.limit_in_bytes", "memory.usage_in_bytes", "total_inactive_file "}));
  }
  return left;
}

double LeftByAddressSpace() {
  rlimit limit{};
  if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return kUnlimited;
  const double used = NumberIn("/proc/self/statm", "", 0) * static_cast<double>(sysconf(_SC_PAGESIZE));
  return static_cast<double>(limit.rlim_cur) - used;
}

}  // namespace

double AvailableMemory(const std::filesystem::path& root) {
  const double bySystem = 1024 * NumberIn(root / "proc/meminfo", "MemAvailable:", kUnlimited);
  return std::max(0.0, std::min({bySystem, LeftByGroups(root), LeftByAddressSpace(), testLimit}));
}

void LimitAvailableMemory(double bytes) { testLimit = bytes; }

std::shared_ptr<void> AllocateZeroed(std::size_t bytes) {
  constexpr std::size_t line = 64;
  if (bytes < kHugePage) {
    const std::size_t space = std::max<std::size_t>(bytes + line - 1, line) / line * line;
    std::shared_ptr<void> block(std::aligned_alloc(line, space), std::free);
    if (!block) throw std::bad_alloc();
    std::memset(block.get(), 0, space);
    return block;
  }
  // calloc does not touch the pages of a large block.
  std::size_t space = bytes + kHugePage;
  const std::shared_ptr<void> block(std::calloc(space, 1), std::free);
  if (!block) throw std::bad_alloc();
  void* memory = block.get();
  std::align(kHugePage, bytes, memory, space);
  madvise(memory, bytes, MADV_HUGEPAGE);  // only advice: small pages work too
  return {block, memory};
}

}  // namespace platform

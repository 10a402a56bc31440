#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <string>

#include "platform/values/Memory.h"
#include "tests/support/Folder.h"

namespace {

using platform::AvailableMemory;

/// A proc/ and a sys/ of its own.
class Memory : public testing::Test {
 protected:
  void Write(const std::string& path, const std::string& text) {
    std::filesystem::create_directories((folder / path).parent_path());
    own.Write(path, text);
  }
  const platform::Folder own;
  const std::filesystem::path folder = own.Path();
};

TEST_F(Memory, IsWhatTheSystemHasAvailable) {
  EXPECT_TRUE(std::isinf(AvailableMemory(folder)));
  Write("proc/meminfo", "MemTotal:       24000 kB\nMemFree:          100 kB\nMemAvailable:    9000 kB\n");
  EXPECT_EQ(AvailableMemory(folder), 9000 * 1024.0);
}

TEST_F(Memory, IsBoundByEveryControlGroupAbove) {
  Write("proc/meminfo", "MemAvailable:    9000 kB\n");
  Write("proc/self/cgroup", "0::/outer/inner\n");
  Write("sys/fs/cgroup/outer/inner/memory.max", "max\n");
  Write("sys/fs/cgroup/outer/inner/memory.current", "400000\n");
  EXPECT_EQ(AvailableMemory(folder), 9000 * 1024.0);
  Write("sys/fs/cgroup/outer/memory.max", "1000000\n");
  Write("sys/fs/cgroup/outer/memory.current", "700000\n");
  // What is cached of files gives way.
  Write("sys/fs/cgroup/outer/memory.stat", "anon 500000\nactive_file 9\ninactive_file 50000\n");
  EXPECT_EQ(AvailableMemory(folder), 350000);
  Write("sys/fs/cgroup/outer/inner/memory.max", "410000\n");
  EXPECT_EQ(AvailableMemory(folder), 10000);
  Write("sys/fs/cgroup/outer/inner/memory.max", "300000\n");
  EXPECT_EQ(AvailableMemory(folder), 0);
}

TEST_F(Memory, IsBoundByTheOlderKindOfControlGroup) {
  Write("proc/meminfo", "MemAvailable:    9000 kB\n");
  // Seen from inside a container: the path is the machine's, the files stand at the top.
  Write("proc/self/cgroup", "9:cpu,cpuacct:/job\n8:hugetlb,memory:/job\n0::/\n");
  Write("sys/fs/cgroup/memory/memory.limit_in_bytes", "5000000\n");
  Write("sys/fs/cgroup/memory/memory.usage_in_bytes", "1000000\n");
  Write("sys/fs/cgroup/memory/memory.stat", "inactive_file 1\ntotal_inactive_file 200000\n");
  EXPECT_EQ(AvailableMemory(folder), 4200000);
}

TEST_F(Memory, IsBoundByTheAddressSpaceOfTheProcess) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
  std::ifstream file("/proc/self/statm");
  double pages = 0;
  file >> pages;
  constexpr double kRoom = 0x1p30;
  rlimit limit = before;
  limit.rlim_cur = static_cast<rlim_t>(pages * static_cast<double>(sysconf(_SC_PAGESIZE)) + kRoom);
  ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
  const double available = AvailableMemory(folder);
  setrlimit(RLIMIT_AS, &before);
  EXPECT_LE(available, kRoom);
  EXPECT_GT(available, kRoom / 2);
}

}  // namespace

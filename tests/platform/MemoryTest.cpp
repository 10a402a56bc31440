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

/// Simulated folders proc/ and sys/.
class Memory : public testing::Test {
 protected:
  void Expect(double available, const std::string& path, const std::string& text) {
    std::filesystem::create_directories((own.Path() / path).parent_path());
    own.Write(path, text);
    EXPECT_EQ(AvailableMemory(own.Path()), available) << path << ": " << text;
  }
  const platform::Folder own;
  static constexpr double kAll = 9000 * 1024;
};

TEST_F(Memory, IsBoundByEveryControlGroupAbove) {
  EXPECT_TRUE(std::isinf(AvailableMemory(own.Path())));
  Expect(kAll, "proc/meminfo", "MemTotal:       24000 kB\nMemFree:          100 kB\nMemAvailable:    9000 kB\n");
  Expect(kAll, "proc/self/cgroup", "0::/outer/inner\n");
  Expect(kAll, "sys/fs/cgroup/outer/inner/memory.max", "max\n");
  Expect(kAll, "sys/fs/cgroup/outer/inner/memory.current", "400000\n");
  Expect(1000000, "sys/fs/cgroup/outer/memory.max", "1000000\n");
  Expect(300000, "sys/fs/cgroup/outer/memory.current", "700000\n");
  // Cached file pages can be reclaimed.
  Expect(350000, "sys/fs/cgroup/outer/memory.stat", "anon 500000\nactive_file 9\ninactive_file 50000\n");
  Expect(10000, "sys/fs/cgroup/outer/inner/memory.max", "410000\n");
  Expect(0, "sys/fs/cgroup/outer/inner/memory.max", "300000\n");
}

TEST_F(Memory, IsBoundByTheOlderKindOfControlGroup) {
  Expect(kAll, "proc/meminfo", "MemAvailable:    9000 kB\n");
  // Seen from inside a container: the path is the host's, the files are at the top.
  Expect(kAll, "proc/self/cgroup", "9:cpu,cpuacct:/job\n8:hugetlb,memory:/job\n0::/\n");
  Expect(5000000, "sys/fs/cgroup/memory/memory.limit_in_bytes", "5000000\n");
  Expect(4000000, "sys/fs/cgroup/memory/memory.usage_in_bytes", "1000000\n");
  Expect(4200000, "sys/fs/cgroup/memory/memory.stat", "inactive_file 1\ntotal_inactive_file 200000\n");
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
  const double available = AvailableMemory(own.Path());
  setrlimit(RLIMIT_AS, &before);
  EXPECT_LE(available, kRoom);
  EXPECT_GT(available, kRoom / 2);
}

}  // namespace

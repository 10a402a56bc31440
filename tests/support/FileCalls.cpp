#include "tests/support/FileCalls.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

extern "C" {

int fsync(int file) {
  if (!fileCalls.flush) return static_cast<int>(syscall(SYS_fsync, file));
  errno = fileCalls.flush();
  return errno == 0 ? 0 : -1;
}

int access(const char* name, int type) noexcept {
  if (!fileCalls.unnamedFiles && std::strncmp(name, "/proc/self/fd", 13) == 0) {
    errno = ENOENT;
    return -1;
  }
  return static_cast<int>(syscall(SYS_faccessat, AT_FDCWD, name, type));
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) noexcept {
  if (!fileCalls.renamesWithoutReplacing) {
    errno = EINVAL;
    return -1;
  }
  return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}
}

#include "platform/pictures/NewFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr const char* kHiddenBeginning = ".vornalite-";
constexpr const char* kHiddenEnd = ".part";
constexpr const char* kOpenFiles = "/proc/self/fd/";

/// Removes the hidden files that no program has locked: the program that wrote them was killed.
void RemoveLeftOvers(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename();
    if (!name.starts_with(kHiddenBeginning) || !name.ends_with(kHiddenEnd)) continue;
    const int file = open(entry->path().c_str(), O_RDWR | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0) continue;
    if (flock(file, LOCK_EX | LOCK_NB) == 0) unlink(entry->path().c_str());
    close(file);
  }
}

/// Makes the new name durable. Errors are ignored: the file itself is complete.
void FlushFolder(const fs::path& folder) {
  const int opened = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) return;
  fsync(opened);
  close(opened);
}

/// Renames unless the new name is taken (errno EEXIST).
bool RenameToFree(const fs::path& from, const fs::path& to) {
#ifdef RENAME_NOREPLACE
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
#endif
  // This file system does not support it: reserve the name, if it is free, with an empty file, then replace that one.
  const int placeholder = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (placeholder < 0) return false;
  close(placeholder);
  if (std::rename(from.c_str(), to.c_str()) == 0) return true;
  unlink(to.c_str());
  return false;
}

}  // namespace

NewFile::NewFile(const fs::path& path, IfTaken taken)
    : path_(path), folder_(path.has_parent_path() ? path.parent_path() : "."), taken_(taken) {
  RemoveLeftOvers(folder_);
  int file = -1;
#ifdef O_TMPFILE
  if (taken == IfTaken::Keep && access(kOpenFiles, X_OK) == 0)
    file = open(folder_.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666);
#endif
  if (file < 0) file = OpenHidden();
  if (file >= 0) stream_ = fdopen(file, "wb");
}

NewFile::~NewFile() {
  if (stream_) std::fclose(stream_);
  if (!hidden_.empty()) unlink(hidden_.c_str());
}

int NewFile::OpenHidden() {
  for (int number = 0;; ++number) {
    const fs::path name =
        folder_ / (kHiddenBeginning + std::to_string(getpid()) + "-" + std::to_string(number) + kHiddenEnd);
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return file;
    // Before it was locked, another program may have removed it as a left-over.
    flock(file, LOCK_EX);
    struct stat status {};
    if (fstat(file, &status) == 0 && status.st_nlink > 0) {
      hidden_ = name;
      return file;
    }
    close(file);
  }
}

bool NewFile::Flush() const {
  const int file = fileno(stream_);
  if (std::fflush(stream_) != 0) return false;
  // EINVAL: this kind of file cannot be flushed, which is no failure.
  if (fsync(file) != 0 && errno != EINVAL) return false;
  // Network file systems report some failures only when a file is closed.
  const int copy = dup(file);
  return copy < 0 || close(copy) == 0;
}

bool NewFile::TakeName() const {
  if (hidden_.empty()) {
    const std::string self = kOpenFiles + std::to_string(fileno(stream_));
    return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path_.c_str(), AT_SYMLINK_FOLLOW) == 0;
  }
  return taken_ == IfTaken::Keep ? RenameToFree(hidden_, path_) : std::rename(hidden_.c_str(), path_.c_str()) == 0;
}

NewFile::Outcome NewFile::Finish() {
  if (!stream_ || !Flush()) return Outcome::Failed;
  if (!TakeName()) return taken_ == IfTaken::Keep && errno == EEXIST ? Outcome::NameTaken : Outcome::Failed;
  hidden_.clear();
  FlushFolder(folder_);
  return Outcome::Written;
}

}  // namespace platform

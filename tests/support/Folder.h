#pragma once
/// A temporary folder, removed with its content at the end.

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace platform {

class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "vornalite-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return path_ / name;
  }
  /// The number of files in the folder, hidden ones too.
  int Count() const {
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
  }

 private:
  std::filesystem::path path_;
};

}  // namespace platform

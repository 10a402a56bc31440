#pragma once
/// A file that appears under its name when it is whole, or not at all.

#include <cstdio>
#include <filesystem>

namespace platform {

enum class IfTaken { Replace, Keep };  ///< what happens to a file that has the name already

class NewFile {
 public:
  enum class Outcome { Written, NameTaken, Failed };

  /// Creates an empty file in the folder of the path, with the permissions that the user's mask leaves. With Keep it
  /// has no name yet where the file system can do so, else a hidden one, as with Replace. What killed programs have
  /// left there under hidden names is removed first.
  NewFile(const std::filesystem::path& path, IfTaken taken);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  /// Removes the file unless it has got its name.
  ~NewFile();

  /// For writing; nullptr if the file could not be created.
  std::FILE* Stream() const { return stream_; }
  /// Flushes the file to the disk and gives it its name. Once, as the last step. NameTaken comes with Keep alone and
  /// leaves the other file as it is.
  Outcome Finish();

 private:
  int OpenHidden();
  bool Flush() const;
  bool TakeName() const;

  std::filesystem::path path_, folder_;
  IfTaken taken_;
  std::filesystem::path hidden_;  ///< empty for a file without a name
  std::FILE* stream_ = nullptr;
};

}  // namespace platform

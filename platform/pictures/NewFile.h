#pragma once
/// A file that appears under its name when it is complete, or not at all.

#include <cstdio>
#include <filesystem>

namespace platform {

enum class IfTaken { Replace, Keep };  ///< what happens to an existing file of that name

class NewFile {
 public:
  enum class Outcome { Written, NameTaken, Failed };

  /// Creates an empty file in the folder of the path, with the permissions of the user's umask. With Keep it has no
  /// name yet if the file system supports that; otherwise, and with Replace, it has a hidden name. Hidden files left
  /// there by killed programs are removed first.
  NewFile(const std::filesystem::path& path, IfTaken taken);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  /// Removes the file unless Finish gave it its name.
  ~NewFile();

  /// For writing; nullptr if the file could not be created.
  std::FILE* Stream() const { return stream_; }
  /// Flushes the file to the disk and gives it its name. Call it once, as the last step. NameTaken is returned with
  /// Keep only; the existing file stays as it is.
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

#pragma once
/// A file or folder, given by its path; it need not exist. Always used through Ref<FolderItem>, which may be nil.

#include <filesystem>

#include "platform/pictures/Picture.h"
#include "platform/values/Array.h"
#include "platform/values/BinaryStream.h"
#include "platform/values/Ref.h"
#include "platform/values/String.h"

namespace platform {

class FolderItem {
 public:
  explicit FolderItem(std::filesystem::path path) : path_(std::move(path)) {}

  /// The name that the user sees, extension included, accented letters composed (NFC).
  String DisplayName() const;
  /// Whether the name is taken; a dangling link counts.
  bool Exists() const;
  /// Whether this is a file that can be opened for reading now.
  bool IsReadable() const { return WhyNotReadable().Empty(); }
  /// Why it cannot be read, in a few words; empty if it can. Does not block on a pipe.
  String WhyNotReadable() const;
  /// The folder that holds the item; nil for a root.
  Ref<FolderItem> Parent() const;
  /// The item of that name in this folder; it need not exist. Throws NilObjectException if this folder does not exist.
  Ref<FolderItem> Child(const String& name) const;
  /// Set the file codes of Mac OS, four characters each. No effect: on other systems the extension gives the type.
  void MacType(const String& code);
  void MacCreator(const String& code);

  /// The picture in the file, whatever its extension says, or nil. On failure, one line on standard error names the
  /// file and the reason. See PictureReaders.h for what is read and how.
  Ref<Picture> OpenAsPicture() const;
  /// The file for reading bytes, or nil. Writing is not provided: `write` true gives nil.
  Ref<BinaryStream> OpenAsBinaryFile(bool write) const;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// Sorts by display name, by exchanging each item with every later one that has a lower name.
void SortByDisplayName(Array<Ref<FolderItem>>& files);

/// The user's desktop folder; the home folder where there is no desktop folder.
Ref<FolderItem> DesktopFolder();

}  // namespace platform

#include "platform/pictures/FolderItem.h"

#include <QFile>
#include <QStandardPaths>
#include <QString>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// The path without a trailing slash, so that its last component is the name.
fs::path WithoutEndSlash(const fs::path& path) {
  return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}

fs::path StandardFolder(QStandardPaths::StandardLocation location) {
  return QFile::encodeName(QStandardPaths::writableLocation(location)).toStdString();
}

}  // namespace

String FolderItem::DisplayName() const {
  const fs::path whole = WithoutEndSlash(path_);
  const String name(whole.has_filename() ? whole.filename().native() : whole.native());
  const auto composed = QString::fromStdU32String(name.Characters()).normalized(QString::NormalizationForm_C);
  return String(composed.toStdU32String());
}

bool FolderItem::Exists() const {
  std::error_code error;
  return fs::exists(fs::symlink_status(path_, error));
}

String FolderItem::WhyNotReadable() const {
  std::error_code error;
  switch (fs::status(path_, error).type()) {
    case fs::file_type::regular:
      return std::ifstream(path_).is_open() ? String() : String(std::strerror(errno));
    case fs::file_type::directory:
      return "a folder, not a file";
    case fs::file_type::not_found:
      return Exists() ? "a link that leads nowhere" : "there is no such file";
    case fs::file_type::none:
      return error.message();
    default:
      return "a pipe or a device, not a file";
  }
}

Ref<FolderItem> FolderItem::Parent() const {
  const fs::path path = WithoutEndSlash(fs::absolute(path_));
  if (!path.has_relative_path()) return nullptr;
  return MakeRef<FolderItem>(path.parent_path());
}

Ref<FolderItem> FolderItem::Child(const String& name) const {
  std::error_code error;
  if (!fs::is_directory(path_, error)) ThrowNil(("The folder " + path_.string() + " does not exist.").c_str());
  // relative_path, because appending an absolute path would replace this folder's path.
  return MakeRef<FolderItem>(path_ / fs::path(name.Utf8()).relative_path());
}

void FolderItem::MacType(const String& /*code*/) {}

void FolderItem::MacCreator(const String& /*code*/) {}

Ref<BinaryStream> FolderItem::OpenAsBinaryFile(bool write) const { return write ? nullptr : BinaryStream::Open(path_); }

Ref<FolderItem> DesktopFolder() {
  const fs::path desktop = StandardFolder(QStandardPaths::DesktopLocation);
  std::error_code error;
  return MakeRef<FolderItem>(fs::is_directory(desktop, error) ? desktop : StandardFolder(QStandardPaths::HomeLocation));
}

void SortByDisplayName(Array<Ref<FolderItem>>& files) {
  for (int i = 0; i <= files.Ubound(); ++i)
    for (int j = i; j <= files.Ubound(); ++j)
      if (files(i)->DisplayName() > files(j)->DisplayName()) std::swap(files(i), files(j));
}

}  // namespace platform

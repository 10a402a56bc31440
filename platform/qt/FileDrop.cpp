#include <QDropEvent>
#include <QMimeData>
#include <QSysInfo>
#include <QUrl>
#include <algorithm>

#include "platform/pictures/DragItem.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/values/FileType.h"

namespace platform {

namespace {

std::vector<FileType>& FileTypes() {
  static std::vector<FileType> types;
  return types;
}

/// The file of a URL, from its bytes: a file name need not be valid in any encoding.
Ref<FolderItem> FileOf(const QUrl& url) {
  const QString host = url.host();
  const bool here = host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
                    host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
  if (url.scheme().compare("file", Qt::CaseInsensitive) != 0 || !here) return nullptr;
  const QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
  if (bytes.isEmpty() || bytes.contains('\0')) return nullptr;
  return MakeRef<FolderItem>(std::filesystem::path(bytes.toStdString()));
}

std::vector<Ref<FolderItem>> AcceptedFiles(const QMimeData& data, const std::vector<String>& types) {
  std::vector<Ref<FolderItem>> files;
  for (const QUrl& url : data.urls()) {
    const auto file = FileOf(url);
    const auto accepts = [&](const String& type) { return IsOfFileType(file->DisplayName(), type); };
    if (file && std::any_of(types.begin(), types.end(), accepts)) files.push_back(file);
  }
  return files;
}

}  // namespace

void RegisterFileType(const FileType& type) { FileTypes().push_back(type); }

bool IsOfFileType(const String& displayName, const String& typeName) {
  const auto& types = FileTypes();
  const auto type = std::find_if(types.begin(), types.end(), [&](const FileType& t) { return t.Name == typeName; });
  if (type == types.end()) return false;
  for (int i = 1;; ++i) {
    const String extension = NthField(type->Extensions, ";", i);
    if (extension.Empty()) return false;
    if (Right(displayName, Len(extension)) == extension) return true;
  }
}

void NativeWindow::AcceptDrops(const String& typeName) {
  acceptedTypes.push_back(typeName);
  frame->setAcceptDrops(true);
}

bool NativeWindow::Accepts(const QMimeData& data) const { return !AcceptedFiles(data, acceptedTypes).empty(); }

void NativeWindow::TakeDrop(const QMimeData& data) {
  RunSoon([guard = QPointer<QWidget>(frame.get()), this, files = AcceptedFiles(data, acceptedTypes)] {
    if (!guard || files.empty()) return;
    Raise([&](Window& target) {
      DragItem items(files);
      target.Event_DropObject(items, 0);
    });
  });
}

}  // namespace platform

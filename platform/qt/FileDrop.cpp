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

}  // namespace

void NativeWindow::AcceptDrops(const String& typeName) {
  acceptedTypes.push_back(typeName);
  frame->setAcceptDrops(true);
}

std::vector<Ref<FolderItem>> NativeWindow::AcceptedFiles(const QMimeData& data) const {
  std::vector<Ref<FolderItem>> files;
  for (const QUrl& url : data.urls()) {
    const auto file = FileOf(url);
    const auto accepts = [&](const String& type) { return IsOfFileType(file->DisplayName(), type); };
    if (file && std::any_of(acceptedTypes.begin(), acceptedTypes.end(), accepts)) files.push_back(file);
  }
  return files;
}

void NativeWindow::TakeDrop(std::vector<Ref<FolderItem>> dropped) {
  RunSoon([guard = QPointer<QWidget>(frame.get()), this, files = std::move(dropped)] {
    if (!guard || files.empty()) return;
    Raise([&](Window& target) {
      DragItem items(files);
      target.Event_DropObject(items, 0);
    });
  });
}

}  // namespace platform

#include <cstdio>

#include "platform/FolderItem.h"
#include "platform/PictureReaders.h"

namespace platform {

Ref<Picture> FolderItem::OpenAsPicture() const {
  const OpenedPicture opened = ReadPicture(path_);
  if (!opened.picture) std::fprintf(stderr, "vornalite: %s: %s\n", path_.c_str(), opened.failure.Utf8().c_str());
  return opened.picture;
}

}  // namespace platform

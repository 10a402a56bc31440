#include <utility>

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/PictureSequence.h"
#include "platform/pictures/readers/PictureReaders.h"
#include "platform/values/ErrorLine.h"

namespace platform {

namespace {

/// The picture, or nil and a line on standard error.
Ref<Picture> PictureOrErrorLine(const OpenedPicture& opened, const std::filesystem::path& path) {
  if (!opened.picture) WriteErrorLine(path.string() + ": " + opened.failure.Utf8());
  return opened.picture;
}

}  // namespace

Ref<Picture> FolderItem::OpenAsPicture() const { return PictureOrErrorLine(ReadPicture(path_), path_); }

PictureSequence::PictureSequence(Array<Ref<FolderItem>> files, int ahead) : files_(std::move(files)), ahead_(ahead) {
  BeginMore();
}

Ref<Picture> PictureSequence::Next() {
  const FolderItem& file = *files_(next_);
  const OpenedPicture opened = opening_.front().get();
  opening_.pop_front();
  ++next_;
  BeginMore();
  return PictureOrErrorLine(opened, file.Path());
}

void PictureSequence::BeginMore() {
  for (int i = next_ + static_cast<int>(opening_.size()); i <= files_.Ubound() && i < next_ + ahead_; ++i) {
    opening_.emplace_back();
    // If the system refuses a thread, std::async defers: the file is then read in Next.
    if (files_(i)) opening_.back() = std::async([path = files_(i)->Path()] { return ReadPicture(path); });
  }
}

}  // namespace platform

// Files as pictures.

#include <cstdio>
#include <utility>

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/readers/PictureReaders.h"
#include "platform/pictures/PictureSequence.h"

namespace platform {

namespace {

/// The picture, or nil and a line on standard error.
Ref<Picture> PictureOrWord(const OpenedPicture& opened, const std::filesystem::path& path) {
  if (!opened.picture) std::fprintf(stderr, "vornalite: %s: %s\n", path.c_str(), opened.failure.Utf8().c_str());
  return opened.picture;
}

}  // namespace

Ref<Picture> FolderItem::OpenAsPicture() const { return PictureOrWord(ReadPicture(path_), path_); }

PictureSequence::PictureSequence(Array<Ref<FolderItem>> files) : files_(std::move(files)) { BeginNext(); }

Ref<Picture> PictureSequence::Next() {
  const FolderItem& file = *files_(next_);
  const OpenedPicture opened = opening_.get();
  ++next_;
  BeginNext();
  return PictureOrWord(opened, file.Path());
}

void PictureSequence::BeginNext() {
  if (next_ > files_.Ubound() || !files_(next_)) return;
  // Where no thread is to be had the file is read when it is asked for.
  opening_ = std::async([path = files_(next_)->Path()] { return ReadPicture(path); });
}

}  // namespace platform

#pragma once

#include <future>

#include "platform/values/Array.h"
#include "platform/pictures/FolderItem.h"
#include "platform/pictures/readers/PictureReaders.h"

namespace platform {

/// Opens the pictures of a row of files, each on another core while the caller still works on the one before.
class PictureSequence {
 public:
  explicit PictureSequence(Array<Ref<FolderItem>> files);

  /// The picture of the next file, as its OpenAsPicture gives it. Throws NilObjectException for a nil file and
  /// OutOfBoundsException behind the last one.
  Ref<Picture> Next();

 private:
  void BeginNext();

  Array<Ref<FolderItem>> files_;
  int next_ = 0;
  std::future<OpenedPicture> opening_;  ///< of file next_; none for a nil file and behind the last
};

}  // namespace platform

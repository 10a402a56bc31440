#pragma once

#include <deque>
#include <future>

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/readers/PictureReaders.h"
#include "platform/values/Array.h"

namespace platform {

/// Opens the pictures of a row of files, several at once on other cores, while the caller still works on those before.
class PictureSequence {
 public:
  /// Holds at most `ahead` pictures, one or more, that have not been asked for yet.
  PictureSequence(Array<Ref<FolderItem>> files, int ahead);

  /// The picture of the next file, as its OpenAsPicture gives it: what a failure prints is printed here. Throws
  /// NilObjectException for a nil file and OutOfBoundsException behind the last one.
  Ref<Picture> Next();

 private:
  void BeginMore();

  Array<Ref<FolderItem>> files_;
  int ahead_;
  int next_ = 0;
  /// Of the file next_ and those behind it; without a state for a nil file.
  std::deque<std::future<OpenedPicture>> opening_;
};

}  // namespace platform

#pragma once

#include <deque>
#include <future>

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/readers/PictureReaders.h"
#include "platform/values/Array.h"

namespace platform {

/// Opens a sequence of pictures in order, prefetching the next ones on other threads.
class PictureSequence {
 public:
  /// `ahead`, 1 or more, is the largest number of pictures that are prefetched.
  PictureSequence(Array<Ref<FolderItem>> files, int ahead);

  /// The picture of the next file, as its OpenAsPicture returns it; a failure is printed now. Throws NilObjectException
  /// for a nil file and OutOfBoundsException after the last one.
  Ref<Picture> Next();

 private:
  void BeginMore();

  Array<Ref<FolderItem>> files_;
  int ahead_;
  int next_ = 0;
  /// For the files from next_ on; an invalid future for a nil file.
  std::deque<std::future<OpenedPicture>> opening_;
};

}  // namespace platform

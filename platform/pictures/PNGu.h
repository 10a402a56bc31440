#pragma once

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/NewFile.h"
#include "platform/pictures/Picture.h"

namespace platform::PNGu {

/// Writes the picture to the file as a PNG of 8-bit RGB without alpha, replacing what is there. The file is written
/// completely or not at all, see NewFile. On failure, returns false and leaves the old file untouched. A nil file or
/// picture throws NilObjectException. `gamma` is accepted and has no effect: the pixels are written as they are.
bool SavePicture(const Ref<FolderItem>& file, const Ref<Picture>& image, float gamma = 0.0F);
/// The same, but never replaces an existing file: then the outcome is NameTaken.
NewFile::Outcome SaveNewPicture(const Ref<FolderItem>& file, const Ref<Picture>& image);

}  // namespace platform::PNGu

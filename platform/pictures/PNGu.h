#pragma once

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/Picture.h"
#include "platform/pictures/NewFile.h"

namespace platform::PNGu {

/// Writes the picture to the file as a PNG of 8-bit RGB without alpha, replacing what is there. The file is written
/// whole or not at all, see NewFile. Returns false, with nothing left behind and the old file untouched, if that fails.
/// A nil file or picture throws NilObjectException. `gamma` is accepted and has no effect: the pixels are written as
/// they are.
bool SavePicture(const Ref<FolderItem>& file, const Ref<Picture>& image, float gamma = 0.0F);
/// The same for a name that is not to be taken yet: whatever has it when the picture is written stays as it is.
NewFile::Outcome SaveNewPicture(const Ref<FolderItem>& file, const Ref<Picture>& image);

}  // namespace platform::PNGu

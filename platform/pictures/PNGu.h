#pragma once

#include "platform/pictures/FolderItem.h"
#include "platform/pictures/Picture.h"

namespace platform::PNGu {

/// Writes the picture to the file as a PNG of 8-bit RGB without alpha, replacing what is there. The file is written
/// whole or not at all: into a temporary file beside it, flushed to the disk, then renamed. Returns false, with nothing
/// left behind and the old file untouched, if that fails. A nil file or picture throws NilObjectException. `gamma` is
/// accepted and has no effect: the pixels are written as they are.
bool SavePicture(const Ref<FolderItem>& file, const Ref<Picture>& image, float gamma = 0.0F);

}  // namespace platform::PNGu

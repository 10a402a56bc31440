#pragma once

#include "platform/pictures/FolderItem.h"
#include "platform/values/Ref.h"

namespace GlobalUniversal {

/// Replaces a file that exists by the first one of the row name_02, name_03 ... beside it that does not. After 99 a
/// message comes and name_100 serves, taken or not.
void FileNameIncrement(platform::Ref<platform::FolderItem>& file);

}  // namespace GlobalUniversal

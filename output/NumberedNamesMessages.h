#pragma once

#include "platform/pictures/FolderItem.h"
#include "platform/values/Ref.h"

namespace GlobalUniversal {

/// If the file exists, replaces it by the first of name_02 to name_99 beside it that does not. If all of these exist,
/// shows a message and uses name_100, taken or not.
void FileNameIncrement(platform::Ref<platform::FolderItem>& file);

}  // namespace GlobalUniversal

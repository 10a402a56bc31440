#pragma once

#include <vector>

#include "platform/pictures/FolderItem.h"

namespace platform {

/// The items of a drop, one at a time, in the order of the drag.
class DragItem {
 public:
  explicit DragItem(std::vector<Ref<platform::FolderItem>> files) : files_(std::move(files)) {}
  bool FolderItemAvailable() const { return current_ < files_.size() && files_[current_] != nullptr; }
  /// The file of the current item; nil if the item has none.
  Ref<platform::FolderItem> FolderItem() const {
    return current_ < files_.size() ? files_[current_] : Ref<platform::FolderItem>();
  }
  /// Advances to the next item; false if there is none.
  bool NextItem() { return ++current_ < files_.size(); }

 private:
  std::vector<Ref<platform::FolderItem>> files_;
  std::size_t current_ = 0;
};

}  // namespace platform

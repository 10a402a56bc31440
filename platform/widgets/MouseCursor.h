#pragma once
/// The program's own pictures and pointers, by number. Each is loaded at its first use and cached.

#include <memory>

#include "platform/pictures/Picture.h"

namespace platform {

/// A shape of the pointer.
class MouseCursor {
 public:
  struct Native;
  explicit MouseCursor(std::shared_ptr<Native> native) : native_(std::move(native)) {}
  const Native& Shape() const { return *native_; }

 private:
  std::shared_ptr<Native> native_;
};

class ResourceFork {
 public:
  /// Throws NilObjectException if there is no picture of that number.
  Ref<Picture> GetPicture(int id) const;
  const MouseCursor& getCursor(int id) const;
};

}  // namespace platform

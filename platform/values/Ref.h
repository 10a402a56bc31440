#pragma once
/// A counted reference that may be nil. The object lives as long as its last reference. Dereferencing nil throws
/// NilObjectException; testing for nil is always allowed.

#include <memory>
#include <utility>

#include "platform/values/Errors.h"

namespace platform {

template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  explicit Ref(std::shared_ptr<T> object) : object_(std::move(object)) {}

  T* operator->() const { return &**this; }
  T& operator*() const {
    if (!object_) ThrowNil("a nil reference was used");
    return *object_;
  }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }
  friend bool operator==(const Ref& a, std::nullptr_t) { return !a.object_; }

 private:
  std::shared_ptr<T> object_;
};

/// Creates an object of class T.
template <class T, class... Arguments>
Ref<T> MakeRef(Arguments&&... arguments) {
  return Ref<T>(std::make_shared<T>(std::forward<Arguments>(arguments)...));
}

}  // namespace platform

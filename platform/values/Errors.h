#pragma once
/// Exceptions that the platform throws. An uncaught one ends the event that is being handled and is reported in a
/// message (Dispatch in Application.h).

#include <stdexcept>

namespace platform {

/// An index outside an array, a row outside a list, a position outside a plane.
class OutOfBoundsException : public std::out_of_range {
 public:
  using std::out_of_range::out_of_range;
};

/// A nil reference was used.
class NilObjectException : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

[[noreturn]] void ThrowOutOfBounds(const char* what, long long index, long long upperBound);
[[noreturn]] void ThrowNil(const char* what);

}  // namespace platform

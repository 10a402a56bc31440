#include "platform/values/Errors.h"

#include <string>

namespace platform {

void ThrowOutOfBounds(const char* what, long long index, long long upperBound) {
  throw OutOfBoundsException(std::string(what) + ": index " + std::to_string(index) + ", upper bound " +
                             std::to_string(upperBound));
}

void ThrowNil(const char* what) { throw NilObjectException(what); }

}  // namespace platform

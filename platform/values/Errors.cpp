#include "platform/values/Errors.h"

#include <cstdio>

#include "platform/values/ErrorLine.h"

namespace platform {

void ThrowOutOfBounds(const char* what, long long index, long long upperBound) {
  throw OutOfBoundsException(std::string(what) + ": index " + std::to_string(index) + ", upper bound " +
                             std::to_string(upperBound));
}

void ThrowNil(const char* what) { throw NilObjectException(what); }

std::string CurrentFailure() {
  try {
    throw;
  } catch (const std::exception& failure) {
    return failure.what();
  } catch (...) {
    return "unknown failure";
  }
}

void WriteErrorLine(const std::string& text) { std::fprintf(stderr, "vornalite: %s\n", text.c_str()); }

}  // namespace platform

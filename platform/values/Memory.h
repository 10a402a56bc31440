#pragma once

#include <filesystem>

namespace platform {

/// Bytes that this program can still use: what the system reports as available, limited by control groups and by the
/// address space of the process. Infinite if none of these is known. The system allocates more than that, but kills the
/// program when it uses the memory. `root` is the folder of proc/ and sys/; tests pass their own.
double AvailableMemory(const std::filesystem::path& root = "/");

/// Caps what AvailableMemory returns; for tests.
void LimitAvailableMemory(double bytes);

}  // namespace platform

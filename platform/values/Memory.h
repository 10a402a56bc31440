#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

namespace platform {

/// Bytes that this program can still use: what the system reports as available, limited by control groups and by the
/// address space of the process. Infinite if none of these is known. The system allocates more than that, but kills the
/// program when it uses the memory. `root` is the folder of proc/ and sys/; tests pass their own.
double AvailableMemory(const std::filesystem::path& root = "/");

/// Caps what AvailableMemory returns; for tests.
void LimitAvailableMemory(double bytes);

constexpr std::size_t kHugePage = std::size_t{1} << 21;
/// A block of zeroes that begins on a cache line. The pages of a block of kHugePage bytes or more are not touched
/// before they are written, and are huge if the system provides such: in a tenth of the time of as many small pages,
/// and with fewer TLB misses in loops over them. Throws std::bad_alloc.
std::shared_ptr<void> AllocateZeroed(std::size_t bytes);

}  // namespace platform

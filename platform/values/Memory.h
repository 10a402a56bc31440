#pragma once
/// How much memory there is to be had.

#include <filesystem>

namespace platform {

/// Bytes that this program may still fill: what the system has available, no more than its control groups and the
/// limits of the process leave. Infinite where nothing is known. The system grants more than that when asked, and ends
/// the program once it is used. `root` holds proc/ and sys/; another one than the system's is for tests.
double AvailableMemory(const std::filesystem::path& root = "/");

/// Makes AvailableMemory return no more than that; for tests.
void LimitAvailableMemory(double bytes);

}  // namespace platform

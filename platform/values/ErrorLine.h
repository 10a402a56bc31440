#pragma once
/// Diagnostics on standard error, for users who start the program in a terminal.

#include <string>

namespace platform {

/// The text of the exception that is being handled. Call it only in a catch block.
std::string CurrentFailure();
/// Writes "vornalite: " and the text as one line.
void WriteErrorLine(const std::string& text);

}  // namespace platform

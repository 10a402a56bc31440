#pragma once
/// What goes to standard error, for whoever started the program in a terminal.

#include <string>

namespace platform {

/// The text of the failure that is being handled. Within a catch block only.
std::string CurrentFailure();
/// Writes "vornalite: " and the text as one line.
void WriteErrorLine(const std::string& text);

}  // namespace platform

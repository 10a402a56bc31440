#pragma once

#include <string>
#include <vector>

/// What the code under test said to the user, in place of the real message boxes.
std::vector<std::string>& Messages();
